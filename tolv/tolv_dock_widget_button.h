#pragma once

#include "tolv_export.h"

#include <QPointer>
#include <QToolButton>

class TOLV_DOCK_WIDGET;

/// The button of a dock window that is not pinned, on the bar at an edge of the main window. A click shows the window
/// and hides the others of that edge, a second one hides it; the state of the dock window in its life stays as it is.
/// On the bars at the left and at the right its picture and text are turned: they run upwards at the left and downwards
/// at the right.
///
/// The dock window makes its button when it first needs one, keeps it, and puts it on the bar and takes it off. Off the
/// bar a button has no parent. One that is deleted leaves the bar by itself.
class TOLV_EXPORT TOLV_DOCK_WIDGET_BUTTON : public QToolButton
{
    Q_OBJECT

public:
    /// Stands for the left edge at first. The text is the title of the dock window; the icon is that of the action in
    /// the main menu with the same text, or none where there is no such action.
    /// @param dock not owned; a button whose dock is null or gone does nothing when it is clicked
    explicit TOLV_DOCK_WIDGET_BUTTON(TOLV_DOCK_WIDGET* dock, QWidget* parent = nullptr);
    ~TOLV_DOCK_WIDGET_BUTTON() override;

    /// The edge that the button is painted and measured for. Setting it moves the button to no other bar.
    void set_area(Qt::ToolBarArea area);
    Qt::ToolBarArea get_area() const;

    /// The dock window; null when it is gone.
    TOLV_DOCK_WIDGET* get_dock() const;

    /// That of a QToolButton, width and height exchanged at the left and the right edge.
    QSize sizeHint() const override;

public slots:
    /// Unchecked: hides the dock window and, where it floats, docks it again. Checked: shows and raises it; then of all
    /// other buttons on the bar of this edge the windows are hidden and the buttons unchecked.
    void on_clicked(bool checked);

protected:
    /// Takes over the title of the dock window first, so that a change of it is seen at the next painting.
    void paintEvent(QPaintEvent* event) override;

private:
    bool is_turned() const;
    void hide_other_docks() const;

    Qt::ToolBarArea m_toolbar_area = Qt::LeftToolBarArea;
    QPointer<TOLV_DOCK_WIDGET> m_dock;
};
