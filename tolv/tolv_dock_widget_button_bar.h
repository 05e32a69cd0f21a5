#pragma once

#include "tolv_export.h"

#include <QMap>
#include <QToolBar>

class QAction;
class TOLV_DOCK_WIDGET_BUTTON;

/// The bar at an edge of a main window with the buttons of the dock windows there that are not pinned. The main window
/// owns one for each edge. It is hidden while it is empty.
class TOLV_EXPORT TOLV_DOCK_WIDGET_BUTTON_BAR : public QToolBar
{
    Q_OBJECT

public:
    /// @param area the edge; it gives the title, which is empty for a value that is no single edge's
    explicit TOLV_DOCK_WIDGET_BUTTON_BAR(Qt::ToolBarArea area, QWidget* parent = nullptr);
    ~TOLV_DOCK_WIDGET_BUTTON_BAR() override;

    /// The buttons on the bar, each with its action, in no order that means anything.
    QMap<TOLV_DOCK_WIDGET_BUTTON*, QAction*> m_buttons;
};
