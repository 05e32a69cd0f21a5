#include "tolv_drag_tracker.h"

#include "tolv_check.h"
#include "tolv_color.h"
#include "tolv_global.h"
#include "tolv_interaction_loop_p.h"
#include "tolv_mem.h"
#include "tolv_pen.h"
#include "tolv_view_arithmetic.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QRubberBand>
#include <QScrollArea>
#include <QTimer>

#include <algorithm>
#include <cstdlib>
#include <limits>

TOLV_MEM_INITIALIZER();

namespace
{
constexpr int DEFAULT_HANDLE_SIZE = 8;
constexpr int SCROLL_INTERVAL = 300; // milliseconds
constexpr int SCROLL_MARGIN = 50;

/// Where along one side of a rectangle something stands.
enum SIDE_PLACE
{
    NEAR,
    MIDDLE,
    FAR
};

/// A corner of a rectangle, the far sides being those behind the last pixel.
struct CORNER
{
    SIDE_PLACE x;
    SIDE_PLACE y;

    QPoint get_point(const QRect& rect) const
    {
        return {x == FAR ? rect.right() + 1 : rect.left(), y == FAR ? rect.bottom() + 1 : rect.top()};
    }
};

struct HANDLE_ROW
{
    RESIZE_HANDLES handle;
    SIDE_PLACE x;
    SIDE_PLACE y;
    Qt::CursorShape cursor;
    CORNER fixed_1;
    CORNER fixed_2;
};

/// In the order in which they are tested and drawn.
constexpr HANDLE_ROW HANDLE_ROWS[] = {
    {RESIZE_HANDLE_TOP_LEFT, NEAR, NEAR, Qt::SizeFDiagCursor, {FAR, FAR}, {FAR, FAR}},
    {RESIZE_HANDLE_TOP, MIDDLE, NEAR, Qt::SizeVerCursor, {NEAR, FAR}, {FAR, FAR}},
    {RESIZE_HANDLE_TOP_RIGHT, FAR, NEAR, Qt::SizeBDiagCursor, {NEAR, FAR}, {NEAR, FAR}},
    {RESIZE_HANDLE_RIGHT, FAR, MIDDLE, Qt::SizeHorCursor, {NEAR, NEAR}, {NEAR, FAR}},
    {RESIZE_HANDLE_BOTTOM_RIGHT, FAR, FAR, Qt::SizeFDiagCursor, {NEAR, NEAR}, {NEAR, NEAR}},
    {RESIZE_HANDLE_BOTTOM, MIDDLE, FAR, Qt::SizeVerCursor, {NEAR, NEAR}, {FAR, NEAR}},
    {RESIZE_HANDLE_BOTTOM_LEFT, NEAR, FAR, Qt::SizeBDiagCursor, {FAR, NEAR}, {FAR, NEAR}},
    {RESIZE_HANDLE_LEFT, NEAR, MIDDLE, Qt::SizeHorCursor, {FAR, NEAR}, {FAR, FAR}},
};

bool is_active(const HANDLE_ROW& row)
{
    return (TOLV_DRAG_TRACKER::s_ACTIVE_RESIZE_HANDLES & quint64(row.handle)) != 0;
}

int get_handle_side(int handle_size)
{
    return handle_size < 1 ? DEFAULT_HANDLE_SIZE : handle_size;
}

/// Where the box of a handle begins along one side, in whole pixels, truncating.
/// @param first the first pixel of the side
/// @param end   the pixel behind the last one
int get_box_begin(SIDE_PLACE place, int first, int end, int box_side)
{
    if (place == NEAR)
        return first;
    return place == FAR ? end - box_side : (first + end) / 2 - box_side / 2;
}

QRect get_hit_box(const HANDLE_ROW& row, const QRect& rect, int side)
{
    return {get_box_begin(row.x, rect.left(), rect.right() + 1, side),
            get_box_begin(row.y, rect.top(), rect.bottom() + 1, side), side, side};
}

/// The same in whole and broken units, for drawing.
double get_drawn_begin(SIDE_PLACE place, int first, int end, double box_side)
{
    if (place == NEAR)
        return first;
    return place == FAR ? end - box_side : (double(first) + end) * 0.5 - box_side * 0.5;
}

QRectF get_drawn_box(const HANDLE_ROW& row, const QRect& rect, double side)
{
    return {get_drawn_begin(row.x, rect.left(), rect.right() + 1, side),
            get_drawn_begin(row.y, rect.top(), rect.bottom() + 1, side), side, side};
}

/// How much larger the painter draws than it is told.
double get_horizontal_scale(const QPainter* painter)
{
    const double scale = painter->transform().m11();
    return scale == 0.0 ? 1.0 : scale;
}

/// The rectangle that has both points as corners, inclusive.
QRect get_spanned_rect(const QPoint& a, const QPoint& b)
{
    return QRect(a, b).normalized();
}

/// A distance by the aspect ratio, cut off, and kept far below what would make a coordinate overflow.
int get_correction(double value)
{
    constexpr int LIMIT = std::numeric_limits<int>::max() / 4;
    return std::clamp(tolv_truncate(value), -LIMIT, LIMIT);
}
} // namespace

// ---- The drag as such -----------------------------------------------------------------------------------------------

TOLV_DRAG_TRACKER_CALLBACK::TOLV_DRAG_TRACKER_CALLBACK() = default;
TOLV_DRAG_TRACKER_CALLBACK::~TOLV_DRAG_TRACKER_CALLBACK() = default;

QPoint TOLV_DRAG_TRACKER_CALLBACK::adjust_mouse_point(const QPoint& point)
{
    return point;
}

bool TOLV_DRAG_TRACKER_CALLBACK::is_cancelled() const
{
    return m_cancelled;
}

// ---- The drag of a rectangle ----------------------------------------------------------------------------------------

TOLV_RECT_DRAG_TRACKER_CALLBACK::TOLV_RECT_DRAG_TRACKER_CALLBACK(QWidget* widget, QPoint start,
                                                                 QScrollArea* scroll_area)
    : m_anchor(start), m_scroll_area(scroll_area), m_fixed_point_1(start), m_fixed_point_2(start)
{
    create_rubber_band(widget, start);
    start_timer();
}

TOLV_RECT_DRAG_TRACKER_CALLBACK::TOLV_RECT_DRAG_TRACKER_CALLBACK(QWidget* widget, QPoint grab, QPoint fixed_1,
                                                                 QPoint fixed_2, QScrollArea* scroll_area)
    : m_anchor(fixed_1), m_scroll_area(scroll_area), m_fixed_point_1(fixed_1), m_fixed_point_2(fixed_2)
{
    m_fix_y = fixed_1.x() == fixed_2.x() && fixed_1.y() != fixed_2.y();
    m_fix_x = fixed_1.x() != fixed_2.x() && fixed_1.y() == fixed_2.y();
    TOLV_CHECK_TEXT(m_fix_x || m_fix_y || fixed_1 == fixed_2, "Incorrect fixed points");
    QPoint corner = fixed_1;
    if (m_fix_y)
        corner = QPoint(grab.x(), fixed_2.y());
    else if (m_fix_x)
        corner = QPoint(fixed_2.x(), grab.y());
    m_rect = get_spanned_rect(fixed_1, corner);
    create_rubber_band(widget, fixed_1);
    m_rubber_band->setGeometry(m_rect);
    start_timer();
}

TOLV_RECT_DRAG_TRACKER_CALLBACK::~TOLV_RECT_DRAG_TRACKER_CALLBACK()
{
    delete m_rubber_band;
}

void TOLV_RECT_DRAG_TRACKER_CALLBACK::update_drag_position(const QPoint& /*from*/, const QPoint& to)
{
    if (m_rubber_band == nullptr)
        return;
    QPoint corner = to;
    if (m_fix_x)
        corner.setX(m_fixed_point_2.x());
    else if (m_fix_y)
        corner.setY(m_fixed_point_2.y());
    QRect rect = get_spanned_rect(m_anchor, corner);
    if (m_rubber_band->parentWidget() != nullptr)
        rect &= m_rubber_band->parentWidget()->rect();
    m_rubber_band->setGeometry(rect);
}

QRect TOLV_RECT_DRAG_TRACKER_CALLBACK::get_geometry()
{
    return m_cancelled || m_rubber_band == nullptr ? QRect() : m_rubber_band->geometry();
}

void TOLV_RECT_DRAG_TRACKER_CALLBACK::drag_scroll_timer()
{
    if (m_rubber_band == nullptr || m_scroll_area == nullptr)
        return;
    const QPoint pointer = m_rubber_band->mapToParent(m_rubber_band->mapFromGlobal(QCursor::pos()));
    m_scroll_area->ensureVisible(pointer.x(), pointer.y(), SCROLL_MARGIN, SCROLL_MARGIN);
}

void TOLV_RECT_DRAG_TRACKER_CALLBACK::create_rubber_band(QWidget* widget, const QPoint& start)
{
    m_rubber_band = new QRubberBand(QRubberBand::Rectangle, widget);
    m_rubber_band->setGeometry(QRect(start, QSize(0, 0)));
    m_rubber_band->setMouseTracking(true);
    m_rubber_band->show();
}

void TOLV_RECT_DRAG_TRACKER_CALLBACK::start_timer()
{
    if (m_scroll_area == nullptr)
        return;
    m_timer = new QTimer(this);
    TOLV_SAFE_CONNECT(m_timer, SIGNAL(timeout()), this, SLOT(drag_scroll_timer()));
    m_timer->start(SCROLL_INTERVAL);
}

// ---- The tracker ----------------------------------------------------------------------------------------------------

quint64 TOLV_DRAG_TRACKER::s_ACTIVE_RESIZE_HANDLES = 255;

TOLV_DRAG_TRACKER::TOLV_DRAG_TRACKER(QWidget* widget, const QPoint& start, TOLV_DRAG_TRACKER_CALLBACK* callback,
                                     double aspect_ratio)
    : m_widget(widget), m_callback(callback), m_last_point(start), m_aspect_ratio(aspect_ratio)
{
}

TOLV_DRAG_TRACKER::~TOLV_DRAG_TRACKER() = default;

void TOLV_DRAG_TRACKER::track(QWidget* widget, const QPoint& start, TOLV_DRAG_TRACKER_CALLBACK* callback,
                              double aspect_ratio)
{
    TOLV_CHECK_TEXT(widget != nullptr, "m_widget != NULL");
    TOLV_CHECK_TEXT(callback != nullptr, "m_callback != NULL");
    if (widget == nullptr || callback == nullptr)
        return;
    TOLV_DRAG_TRACKER tracker(widget, start, callback, aspect_ratio);
    tracker.run();
}

QRect TOLV_DRAG_TRACKER::track_rect(QWidget* widget, const QPoint& start, QScrollArea* scroll_area, double aspect_ratio)
{
    TOLV_RECT_DRAG_TRACKER_CALLBACK callback(widget, start, scroll_area);
    track(widget, start, &callback, aspect_ratio);
    return callback.get_geometry();
}

QRect TOLV_DRAG_TRACKER::track_rect(QWidget* widget, const QPoint& grab, const QPoint& fixed_1, const QPoint& fixed_2,
                                    QScrollArea* scroll_area, double aspect_ratio)
{
    TOLV_RECT_DRAG_TRACKER_CALLBACK callback(widget, grab, fixed_1, fixed_2, scroll_area);
    track(widget, fixed_1, &callback, aspect_ratio);
    return callback.get_geometry();
}

RESIZE_HANDLES TOLV_DRAG_TRACKER::hit_handle(const QRect& rect, const QPoint& p, QPoint* fixed_1, QPoint* fixed_2,
                                             int handle_size)
{
    for (const HANDLE_ROW& row : HANDLE_ROWS)
    {
        if (!is_active(row) || !get_hit_box(row, rect, get_handle_side(handle_size)).contains(p))
            continue;
        if (fixed_1 != nullptr)
            *fixed_1 = row.fixed_1.get_point(rect);
        if (fixed_2 != nullptr)
            *fixed_2 = row.fixed_2.get_point(rect);
        return row.handle;
    }
    return RESIZE_HANDLE_NONE;
}

bool TOLV_DRAG_TRACKER::hit_handle(const QPoint& centre, const QPoint& p, int handle_size)
{
    const int side = get_handle_side(handle_size);
    return QRect(centre.x() - side / 2, centre.y() - side / 2, side, side).contains(p);
}

bool TOLV_DRAG_TRACKER::hit_handle(const QPoint& a, const QPoint& b, const QPoint& p, int handle_size)
{
    return hit_handle(a, p, handle_size) || hit_handle(b, p, handle_size);
}

QCursor TOLV_DRAG_TRACKER::get_cursor(const QRect& rect, const QPoint& p, const QCursor& default_cursor)
{
    const RESIZE_HANDLES handle = hit_handle(rect, p, nullptr, nullptr, 0);
    if (handle == RESIZE_HANDLE_NONE)
        return default_cursor;
    const auto* const row = std::find_if(std::begin(HANDLE_ROWS), std::end(HANDLE_ROWS),
                                         [&](const HANDLE_ROW& candidate) { return candidate.handle == handle; });
    const bool is_known = row != std::end(HANDLE_ROWS);
    TOLV_CHECK_TEXT(is_known, "Unknow RESIZE_HANDLES encountered at TOLV_DRAG_TRACKER::get_cursor");
    return is_known ? QCursor(row->cursor) : default_cursor;
}

void TOLV_DRAG_TRACKER::draw_resize_handles(QPainter* painter, const TOLV_PEN& pen, const QRect& rect, bool filled)
{
    const double side = DEFAULT_HANDLE_SIZE / get_horizontal_scale(painter);
    const QColor color = pen.get_color().get_color();
    painter->save();
    painter->setPen(*pen.get_pen());
    painter->drawRects(&rect, 1);
    for (const HANDLE_ROW& row : HANDLE_ROWS)
    {
        if (!is_active(row))
            continue;
        const QRectF box = get_drawn_box(row, rect, side);
        if (filled)
            painter->fillRect(box, color);
        else
            painter->drawRects(&box, 1);
    }
    painter->restore();
}

void TOLV_DRAG_TRACKER::draw_resize_handles(QPainter* painter, const TOLV_PEN& pen, const QPoint& a, const QPoint& b)
{
    draw_resize_handle(painter, pen, a);
    draw_resize_handle(painter, pen, b);
}

void TOLV_DRAG_TRACKER::draw_resize_handle(QPainter* painter, const TOLV_PEN& pen, const QPoint& point, int handle_size)
{
    painter->save();
    painter->setPen(*pen.get_pen());
    draw_handle_helper(painter, point, pen.get_color(), handle_size);
    painter->restore();
}

void TOLV_DRAG_TRACKER::draw_handle_helper(QPainter* painter, const QPoint& point, const TOLV_COLOR& color,
                                           int handle_size)
{
    const double side = (handle_size == -1 ? DEFAULT_HANDLE_SIZE : handle_size) / get_horizontal_scale(painter);
    painter->fillRect(QRectF(point.x() - side * 0.5, point.y() - side * 0.5, side, side), color.get_color());
}

bool TOLV_DRAG_TRACKER::eventFilter(QObject* watched, QEvent* event)
{
    if (!is_under_way())
        return false;
    const bool is_tracked = watched == m_widget; // known before a callback may delete the widget
    switch (event->type())
    {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
        return filter_key(event);
    case QEvent::MouseMove:
        if (is_tracked)
            mouseMoveEvent(static_cast<QMouseEvent*>(event));
        break;
    case QEvent::MouseButtonRelease:
        if (is_tracked)
            mouseReleaseEvent(static_cast<QMouseEvent*>(event));
        break;
    case QEvent::Paint:
    case QEvent::UpdateRequest: // by which a window has itself and its children painted
        return false;
    default:
        break;
    }
    return is_tracked;
}

void TOLV_DRAG_TRACKER::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    if (m_event_loop != nullptr)
        m_event_loop->exit(0);
}

void TOLV_DRAG_TRACKER::mouseMoveEvent(QMouseEvent* event)
{
    TOLV_CHECK_TEXT(m_widget != nullptr, "m_widget != NULL");
    TOLV_CHECK_TEXT(m_callback != nullptr, "m_callback != NULL");
    if (m_widget == nullptr || m_callback == nullptr)
        return;
    // By way of the screen, so that the point is right although the widget scrolls under the pointer.
    const QPoint point = m_callback->adjust_mouse_point(m_widget->mapFromGlobal(tolv_get_global_position(*event)));
    if (m_aspect_ratio != 0.0)
    {
        // The last point stays the beginning of the drag, from which the ratio is measured; this is meant.
        m_callback->update_drag_position(m_last_point, correct_aspect_ratio(point));
        return;
    }
    m_callback->update_drag_position(m_last_point, point);
    m_last_point = point;
}

/// Views take no focus, so that the keys mostly go to their scroll area; where nothing has it, to the window.
void TOLV_DRAG_TRACKER::watch_focus_widget()
{
    if (m_key_widget != nullptr)
        m_key_widget->removeEventFilter(this);
    m_key_widget = QApplication::focusWidget();
    if (m_key_widget == nullptr && m_widget != nullptr)
        m_key_widget = m_widget->window();
    if (m_key_widget == m_widget)
        m_key_widget = nullptr;
    if (m_key_widget != nullptr)
        m_key_widget->installEventFilter(this);
}

void TOLV_DRAG_TRACKER::run()
{
    watch_focus_widget();
    TOLV_SAFE_CONNECT(QCoreApplication::instance(), SIGNAL(focusChanged(QWidget*, QWidget*)), this,
                      SLOT(watch_focus_widget()));
    TOLV_INTERACTION_LOOP loop(m_widget, this);
    m_event_loop = &loop;
    if (!loop.run())
        m_callback->m_cancelled = true;
    m_event_loop = nullptr;
    if (m_key_widget != nullptr)
        m_key_widget->removeEventFilter(this);
}

bool TOLV_DRAG_TRACKER::is_under_way() const
{
    return m_event_loop != nullptr && m_event_loop->isRunning();
}

/// Accepting the question whether a key is a shortcut keeps shortcuts from acting in the middle of the drag.
bool TOLV_DRAG_TRACKER::filter_key(QEvent* event)
{
    event->accept();
    if (event->type() != QEvent::ShortcutOverride && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
        cancel();
    return true;
}

/// Adds to the lesser coordinate what the greater distance asks for, truncated.
QPoint TOLV_DRAG_TRACKER::correct_aspect_ratio(QPoint point) const
{
    const int dx = point.x() - m_last_point.x();
    const int dy = point.y() - m_last_point.y();
    if (std::abs(dx) < std::abs(dy))
    {
        const int correction = get_correction(std::abs(dy) * m_aspect_ratio);
        point.rx() += dx < 0 ? -correction : correction;
    }
    else
    {
        const int correction = get_correction(std::abs(dx) / m_aspect_ratio);
        point.ry() += dy < 0 ? -correction : correction;
    }
    return point;
}

void TOLV_DRAG_TRACKER::cancel()
{
    m_callback->m_cancelled = true;
    m_event_loop->exit(0);
}
