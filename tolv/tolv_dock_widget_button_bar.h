#pragma once

#include "tolv_export.h"

#include <QMap>
#include <QToolBar>

class QAction;
class TOLV_DOCK_WIDGET_BUTTON;

/// The bar at an edge of a main window with the buttons of the dock windows there that are not pinned. The main window
/// owns one for each edge. It is hidden while it is empty, cannot be moved, and shows its buttons in the order in which
/// they came.
class TOLV_EXPORT TOLV_DOCK_WIDGET_BUTTON_BAR : public QToolBar
{
    Q_OBJECT

public:
    /// @param area the edge; it gives the title, which is empty for a value that is no single edge's
    explicit TOLV_DOCK_WIDGET_BUTTON_BAR(Qt::ToolBarArea area, QWidget* parent = nullptr);
    ~TOLV_DOCK_WIDGET_BUTTON_BAR() override;

    /// Puts a button at the end of the bar and shows the bar. The button becomes a child of the bar and leaves another
    /// one that it is on. One that is on this bar already gets a second action, and the map keeps that one only. Nothing
    /// happens for null.
    void add_button(TOLV_DOCK_WIDGET_BUTTON* button);
    /// Takes a button off the bar; it has no parent then and belongs to the caller. The bar is hidden with its last
    /// button. One that is not on it only loses its parent, leaving another bar by that. Nothing happens for null.
    void remove_button(TOLV_DOCK_WIDGET_BUTTON* button);

    /// The buttons on the bar, each with its action, in no order that means anything.
    QMap<TOLV_DOCK_WIDGET_BUTTON*, QAction*> m_buttons;

protected:
    /// On the colour that the buttons have behind them, within the edges that the style draws.
    void paintEvent(QPaintEvent* event) override;

private:
    void leave_other_bar(TOLV_DOCK_WIDGET_BUTTON* button);
};
