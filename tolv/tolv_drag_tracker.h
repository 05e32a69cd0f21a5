#pragma once

#include "tolv_export.h"

#include <QCursor>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QWidget>

class QEventLoop;
class QMouseEvent;
class QPainter;
class QRubberBand;
class QScrollArea;
class QTimer;
class TOLV_COLOR;
class TOLV_PEN;

/// The eight handles by which a selected rectangle is resized. The values are bits; masks of them are 64 bits wide.
enum RESIZE_HANDLES : int
{
    RESIZE_HANDLE_NONE = 0,
    RESIZE_HANDLE_TOP_LEFT = 1,
    RESIZE_HANDLE_TOP = 2,
    RESIZE_HANDLE_TOP_RIGHT = 4,
    RESIZE_HANDLE_RIGHT = 8,
    RESIZE_HANDLE_BOTTOM_RIGHT = 16,
    RESIZE_HANDLE_BOTTOM = 32,
    RESIZE_HANDLE_BOTTOM_LEFT = 64,
    RESIZE_HANDLE_LEFT = 128
};

/// What a drag does: told by TOLV_DRAG_TRACKER of each move of the pointer. Derive from it for a drag of one's own, and
/// make it on the stack around TOLV_DRAG_TRACKER::track().
class TOLV_EXPORT TOLV_DRAG_TRACKER_CALLBACK : public QObject
{
    Q_OBJECT

public:
    TOLV_DRAG_TRACKER_CALLBACK();
    ~TOLV_DRAG_TRACKER_CALLBACK() override;

    /// The pointer has moved. Points are in the coordinates of the tracked widget and may lie outside of it.
    /// @param from where it was at the move before; with an aspect ratio, where the drag began
    /// @param to   where it is, adjusted by adjust_mouse_point() and by the aspect ratio
    virtual void update_drag_position(const QPoint& from, const QPoint& to) = 0;
    /// The point that counts in place of the pointer's own. Override it to snap or to limit the drag; here it is the
    /// point itself.
    virtual QPoint adjust_mouse_point(const QPoint& point);

    /// Whether the drag ended without a result: by Escape, or because the widget went away.
    bool is_cancelled() const;

protected:
    bool m_cancelled = false;

private:
    friend class TOLV_DRAG_TRACKER;
};

/// The drag that draws a rubber band on the widget and yields its rectangle; TOLV_DRAG_TRACKER::track_rect() uses it.
/// The rubber band never leaves the widget. With a scroll area the content scrolls while the pointer stays near or
/// beyond the edge of the visible part.
class TOLV_EXPORT TOLV_RECT_DRAG_TRACKER_CALLBACK : public TOLV_DRAG_TRACKER_CALLBACK
{
    Q_OBJECT

public:
    /// A free rectangle with one corner at `start`.
    /// @param widget      the parent of the rubber band
    /// @param scroll_area what scrolls the widget; null for no scrolling
    TOLV_RECT_DRAG_TRACKER_CALLBACK(QWidget* widget, QPoint start, QScrollArea* scroll_area);
    /// The resizing of a rectangle by a handle. `fixed_1` and `fixed_2` are the points that
    /// TOLV_DRAG_TRACKER::hit_handle() gives: equal for a corner, which then moves freely; the ends of the opposite side
    /// for an edge, which then moves only across itself. Two points on neither a vertical nor a horizontal line are the
    /// internal error "Incorrect fixed points".
    TOLV_RECT_DRAG_TRACKER_CALLBACK(QWidget* widget, QPoint grab, QPoint fixed_1, QPoint fixed_2,
                                    QScrollArea* scroll_area);
    ~TOLV_RECT_DRAG_TRACKER_CALLBACK() override;

    /// Spans the rubber band from the fixed corner to the point, cut off at the edges of the widget.
    void update_drag_position(const QPoint& from, const QPoint& to) override;
    /// The rectangle of the rubber band, in the widget's coordinates; the default QRect() for a cancelled drag.
    virtual QRect get_geometry();

protected slots:
    /// Scrolls until the pointer is 50 pixels inside the visible part, as far as the content goes. The rubber band
    /// follows at the next move.
    void drag_scroll_timer();

private:
    void create_rubber_band(QWidget* widget, const QPoint& start);
    void start_timer();

    QPointer<QRubberBand> m_rubber_band; ///< owned; a widget that is deleted in the middle takes it along
    QTimer* m_timer = nullptr;           ///< null without a scroll area
    QPoint m_anchor;
    QRect m_rect; ///< the rectangle at the beginning
    QPointer<QScrollArea> m_scroll_area;
    QPoint m_fixed_point_1;
    QPoint m_fixed_point_2;
    bool m_fix_x = false;
    bool m_fix_y = false;
};

/// A modal drag on any widget, and the handles by which rectangles are resized.
///
/// track() and track_rect() are called with a mouse button held, usually from the handler of the press. They return when
/// the drag is over: a button is released, Escape is pressed, the widget is hidden or deleted, or a modal dialog opens
/// over it. Meanwhile a nested event loop runs, so that the caller has to expect timers and posted events; of the events
/// of the widget itself only paint events reach it. Keys reach nothing, whichever widget of the application has the focus.
/// For a widget that is not visible the drag is cancelled at once.
///
/// A host draws the handles of its selection by draw_resize_handles(), shows get_cursor() over them, asks hit_handle() at
/// a press, and hands the fixed points that it gives to track_rect().
class TOLV_EXPORT TOLV_DRAG_TRACKER : public QObject
{
    Q_OBJECT

public:
    /// Which handles are in use, for the whole process: at first all eight. What is not among them is neither drawn nor
    /// hit.
    static quint64 s_ACTIVE_RESIZE_HANDLES;

    /// What track() makes on its stack. Null arguments are its internal errors.
    TOLV_DRAG_TRACKER(QWidget* widget, const QPoint& start, TOLV_DRAG_TRACKER_CALLBACK* callback, double aspect_ratio);
    ~TOLV_DRAG_TRACKER() override;

    /// Drags until the end and tells the callback of each move.
    ///
    /// An aspect ratio corrects each point by its distance from `start`: where the vertical distance is the greater one,
    /// that distance times the ratio is added to x, otherwise the horizontal distance divided by the ratio to y, away
    /// from the start (to the right and down where there is no distance). The correction is added to the coordinate, not
    /// put in its place, which is meant.
    ///
    /// A null widget is the internal error "m_widget != NULL", a null callback "m_callback != NULL".
    /// @param start        where the drag begins, in the widget's coordinates
    /// @param aspect_ratio width by height; 0 for none
    static void track(QWidget* widget, const QPoint& start, TOLV_DRAG_TRACKER_CALLBACK* callback, double aspect_ratio);
    /// Drags a rectangle from `start`. Returns it in the widget's coordinates, or the default QRect() where the drag was
    /// cancelled. A drag without a move gives the empty rectangle at `start`.
    /// @param scroll_area what scrolls the widget when the pointer comes near the edge; null for no scrolling
    static QRect track_rect(QWidget* widget, const QPoint& start, QScrollArea* scroll_area, double aspect_ratio);
    /// Resizes a rectangle by a handle; see TOLV_RECT_DRAG_TRACKER_CALLBACK. The aspect ratio is measured from
    /// `fixed_1`. A drag without a move gives the rectangle spanned by the fixed points and `grab`.
    /// @param grab the point of the press
    static QRect track_rect(QWidget* widget, const QPoint& grab, const QPoint& fixed_1, const QPoint& fixed_2,
                            QScrollArea* scroll_area, double aspect_ratio);

    /// The handle of a rectangle at a point. The handles are squares inside of the rectangle, at its corners and at the
    /// middle of its sides; where they overlap the lowest value wins.
    /// @param fixed_1     takes the first of the two points that a drag of the handle leaves in place; may be null, and
    ///                    stays as it is where no handle is hit
    /// @param fixed_2     takes the second one; may be null
    /// @param handle_size side of the squares; below 1 means 8
    static RESIZE_HANDLES hit_handle(const QRect& rect, const QPoint& p, QPoint* fixed_1 = nullptr,
                                     QPoint* fixed_2 = nullptr, int handle_size = 0);
    /// Whether a point is in the handle around a centre.
    static bool hit_handle(const QPoint& centre, const QPoint& p, int handle_size = 0);
    /// Whether a point is in the handle at either end of a line.
    static bool hit_handle(const QPoint& a, const QPoint& b, const QPoint& p, int handle_size = 0);
    /// The cursor of the handle, of default size, that a rectangle has at a point; `default_cursor` where there is none.
    static QCursor get_cursor(const QRect& rect, const QPoint& p, const QCursor& default_cursor);

    /// Draws a rectangle and its handles in use. Handles measure 8 pixels on the screen at any horizontal scale of the
    /// painter's transform. The painter is left as it was. The brush set in it fills the rectangle.
    /// @param filled whether the handles are filled with the pen's colour or outlined
    static void draw_resize_handles(QPainter* painter, const TOLV_PEN& pen, const QRect& rect, bool filled);
    /// Draws the handles at both ends of a line.
    static void draw_resize_handles(QPainter* painter, const TOLV_PEN& pen, const QPoint& a, const QPoint& b);
    /// Draws one handle around a point.
    /// @param handle_size in pixels on the screen; -1 means 8
    static void draw_resize_handle(QPainter* painter, const TOLV_PEN& pen, const QPoint& point, int handle_size = -1);
    /// The same in a colour, without saving the state of the painter.
    static void draw_handle_helper(QPainter* painter, const QPoint& point, const TOLV_COLOR& color,
                                   int handle_size = -1);

protected:
    /// Lets nothing but paint events through while the drag goes on.
    bool eventFilter(QObject* watched, QEvent* event) override;
    /// Ends the drag, whichever button it is.
    virtual void mouseReleaseEvent(QMouseEvent* event);
    /// Tells the callback of the move, whichever buttons are held.
    virtual void mouseMoveEvent(QMouseEvent* event);

private slots:
    void watch_focus_widget();

private:
    void run();
    bool is_under_way() const;
    bool filter_key(QEvent* event);
    QPoint correct_aspect_ratio(QPoint point) const;
    void cancel();

    QEventLoop* m_event_loop = nullptr; ///< set while the drag goes on
    QPointer<QWidget> m_widget;
    TOLV_DRAG_TRACKER_CALLBACK* m_callback;
    QPoint m_last_point;
    double m_aspect_ratio;
    QPointer<QWidget> m_key_widget; ///< another widget, which gets the keys
};
