#pragma once

#include "tolv_export.h"

#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QWidget>

class QEventLoop;
class QLabel;
class TOLV_VIEW;
class TOLV_ZOOM_SCROLL_AREA;

/// The directions of a stroke and the commands that they stand for. A stroke straight to one side counts as south, one
/// straight up or down as east.
enum GESTURE_DIRECTION : int
{
    GESTURE_NONE = -1,     ///< no move yet
    GESTURE_NORTHEAST = 0, ///< zoom out
    GESTURE_SOUTHEAST = 1, ///< a rectangle to zoom to, or to select in
    GESTURE_SOUTHWEST = 2, ///< zoom fit
    GESTURE_NORTHWEST = 3  ///< zoom in
};

/// A stroke of the mouse over a view, read as one of four commands by its direction, and drawn while it lasts. The zoom
/// scroll area begins it at a press of the left button by show_mouse_gesture(), which returns when the stroke is over.
///
/// The stroke ends with the release of the button. A stroke that spans at most 9 pixels in both directions is a click.
/// One that a second button or a modifier breaks ends without a command, as does one whose view is hidden or deleted, or
/// is cut off from the mouse by a modal dialog.
///
/// The widget is a transparent child of the view, made for one stroke. It belongs to show_mouse_gesture(), and goes with
/// a view that is deleted in the middle.
class TOLV_EXPORT TOLV_MOUSE_GESTURE_WIDGET : public QWidget
{
    Q_OBJECT

public:
    /// Runs a stroke in a nested event loop, and its command at the end. A null view is the internal error
    /// "view != nullptr", a null scroll area "scroll_area != nullptr".
    /// @param point the point of the press, in the view's coordinates
    static void show_mouse_gesture(TOLV_ZOOM_SCROLL_AREA* scroll_area, TOLV_VIEW* view, const QPoint& point);

    /// Made by show_mouse_gesture(). Null arguments are the internal errors "m_view != nullptr" and
    /// "m_scroll_area != nullptr".
    TOLV_MOUSE_GESTURE_WIDGET(TOLV_ZOOM_SCROLL_AREA* scroll_area, TOLV_VIEW* view, const QPoint& point);
    ~TOLV_MOUSE_GESTURE_WIDGET() override;

protected:
    /// Sets the text that the label shows for the stroke to the south-east: "zoom in".
    virtual void update_label_for_southeast(QString& text);
    /// The command of the stroke to the south-east: zooms to the rectangle, as far as it lies in the view.
    /// @param rect  from the beginning of the stroke to its end, in the view's coordinates
    /// @param point its end
    virtual void do_action_for_southeast(const QRect& rect, const QPoint& point);
    /// What a click does: TOLV_ZOOM_SCROLL_AREA::zoom_mode_no_mouse_gesture().
    /// @param event the release
    virtual void no_mouse_gesture_action(QMouseEvent* event);

    /// Takes moves and the release from the view. The press of a second button ends the stroke and goes no further: it
    /// would begin another interaction inside of this one.
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// Ends the stroke and runs its command. May delete the widget, by what the command does.
    void mouseReleaseEvent(QMouseEvent* event) override;
    /// Continues the stroke while exactly the left button is held and no modifier is down, else ends it without a command.
    void mouseMoveEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

    /// The rectangle as far as it lies in the view.
    QRect clip_to_view(const QRect& rect) const;

    QPointer<TOLV_ZOOM_SCROLL_AREA> m_scroll_area; ///< null once it is deleted
    QPointer<TOLV_VIEW> m_view;                    ///< the parent; null once it is deleted

    /// Runs the stroke of a widget that was made for it, and deletes it.
    static void run_stroke(TOLV_MOUSE_GESTURE_WIDGET* gesture);

private:
    void run();
    bool is_under_way() const;
    void stop_event_filter();
    void run_command(const QRect& rect, const QPoint& end);
    void update_quadrant();
    void update_label(const QPoint& pos);
    void draw_gesture_indicator(QPainter& painter) const;
    void update_rect();
    bool has_points() const;

    QEventLoop* m_event_loop = nullptr; ///< set while the stroke goes on
    QPoint m_start_point;               ///< (0, 0) when idle, as is the next one
    QPoint m_end_point;
    QLabel* m_label;
    float m_zoom_percent = 100.0F;
    int m_quadrant = GESTURE_NONE;
};

/// The stroke where no tool is chosen: to the south-east it selects what lies in the rectangle, if the view allows it,
/// and a click is the view's own.
class TOLV_EXPORT TOLV_SELECTION_MODE_MOUSE_GESTURE_WIDGET : public TOLV_MOUSE_GESTURE_WIDGET
{
    Q_OBJECT

public:
    /// As TOLV_MOUSE_GESTURE_WIDGET::show_mouse_gesture().
    static void show_mouse_gesture(TOLV_ZOOM_SCROLL_AREA* scroll_area, TOLV_VIEW* view, const QPoint& point);

    TOLV_SELECTION_MODE_MOUSE_GESTURE_WIDGET(TOLV_ZOOM_SCROLL_AREA* scroll_area, TOLV_VIEW* view, const QPoint& point);

protected:
    /// "select" where the view allows selection by rectangles, else "zoom in".
    void update_label_for_southeast(QString& text) override;
    /// TOLV_VIEW::do_rect_selection() where the view allows it, else zooms to the rectangle.
    void do_action_for_southeast(const QRect& rect, const QPoint& point) override;
    /// TOLV_VIEW::selection_mode_no_mouse_gesture().
    void no_mouse_gesture_action(QMouseEvent* event) override;
};
