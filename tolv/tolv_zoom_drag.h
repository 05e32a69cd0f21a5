#pragma once

#include "tolv_export.h"

#include <QPoint>
#include <QPointer>
#include <QWidget>

class QEventLoop;
class QLabel;
class TOLV_VIEW;
class TOLV_ZOOM_SCROLL_AREA;

/// A vertical drag with the right button that sets how much to zoom: up to zoom in, down to zoom out, a fifth of a
/// percent for each pixel. The zoom scroll area begins it at a press by start_zoom_drag(), which returns when the drag is
/// over.
///
/// The drag ends with the release of any button. While other buttons than exactly the right one are held, moves count
/// for nothing: a press with another button so ends as a plain click. The drag also ends, without a command, when the
/// view is hidden or deleted, or cut off from the mouse by a modal dialog.
///
/// A host that removes a view in the middle of a drag does it by deleteLater(): behind a press of the right button Qt
/// itself still sends a context menu event to where the press went.
///
/// The widget is a transparent child of the view, made for one drag. It belongs to start_zoom_drag(), and goes with a
/// view that is deleted in the middle.
class TOLV_EXPORT TOLV_ZOOM_DRAG_WIDGET : public QWidget
{
    Q_OBJECT

public:
    /// Whether the last drag has done all there was to do: it has really moved, or its view went away in the middle or
    /// was not visible in the first place.
    /// Otherwise its press is still to be treated as one without a drag. For the whole process, as only one drag can be
    /// under way.
    static bool m_use_zoom_drag;

    /// Runs a drag in a nested event loop, and zooms at the end. A null view is the internal error
    /// "source_view != NULL", a null scroll area "scroll_area != NULL".
    /// @param point the point of the press, in the view's coordinates
    static void start_zoom_drag(TOLV_ZOOM_SCROLL_AREA* scroll_area, TOLV_VIEW* source_view, const QPoint& point);

    /// Made by start_zoom_drag(), with the same internal errors.
    TOLV_ZOOM_DRAG_WIDGET(TOLV_ZOOM_SCROLL_AREA* scroll_area, TOLV_VIEW* source_view);
    ~TOLV_ZOOM_DRAG_WIDGET() override;

protected:
    /// Takes moves and, once the drag has moved, the release from the view. The press of a second button goes no further:
    /// it would begin another interaction inside of this one.
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// Zooms by the percentage that was painted last, and ends the drag. May delete the widget, by what the zoom does.
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    /// Draws the drag, and brings percentage, label and cursor in line with it.
    void paintEvent(QPaintEvent* event) override;

private:
    void run();
    bool is_under_way() const;
    void on_r_button_down(const QPoint& point);
    void stop_event_filter();
    void draw_line(QPainter& painter);
    void update_percent();
    void update_label();

    double m_zoom_percent = 100.0;
    double m_opacity = 1.0;
    QPoint m_start_point;
    QPoint m_end_point;
    QEventLoop* m_event_loop = nullptr; ///< set while the drag goes on
    QLabel* m_label;
    QPointer<TOLV_ZOOM_SCROLL_AREA> m_scroll_area; ///< null once it is deleted
    QPointer<TOLV_VIEW> m_view;                    ///< the parent; null once it is deleted
};
