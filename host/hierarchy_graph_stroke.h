#pragma once

#include "tolv_drag_tracker.h"

#include <QPoint>
#include <QRect>
#include <QString>

#include <memory>

class QLabel;
class QWidget;

/// A stroke with the left button on a drawing that is no TOLV_VIEW, read and shown as TOLV_MOUSE_GESTURE_WIDGET reads
/// and shows it: up to the right zooms out, down to the left shows all, up to the left zooms in, down to the right draws
/// a rectangle. Made on the stack by the handler of the press.
class HIERARCHY_GRAPH_STROKE : public TOLV_DRAG_TRACKER_CALLBACK
{
    Q_OBJECT

public:
    enum COMMAND
    {
        COMMAND_NONE, ///< the stroke was broken off
        COMMAND_CLICK,
        COMMAND_ZOOM_OUT,
        COMMAND_RECTANGLE,
        COMMAND_ZOOM_FIT,
        COMMAND_ZOOM_IN
    };

    /// @param widget         what is stroked, not null
    /// @param start          where the button was pressed
    /// @param rectangle_text what a stroke down to the right does
    HIERARCHY_GRAPH_STROKE(QWidget* widget, const QPoint& start, const QString& rectangle_text);
    ~HIERARCHY_GRAPH_STROKE() override;

    /// Waits for the end of the stroke, in an event loop of its own, and tells what it means. The widget can be gone then.
    COMMAND run();
    /// From the beginning of the stroke to its end, as far as it lies in the widget.
    QRect get_rect() const;
    /// By what a stroke up zooms: above 1 for either direction.
    double get_factor() const;

    void update_drag_position(const QPoint& from, const QPoint& to) override;

private:
    class OVERLAY;

    COMMAND get_command() const;
    QString get_text() const;
    void show_text();

    QPointer<QWidget> m_widget;
    QPointer<OVERLAY> m_overlay; ///< a child of the widget
    QPoint m_start;
    QPoint m_end;
    QString m_rectangle_text;
};
