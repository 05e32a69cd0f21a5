#include "tolv_birds_eye_view.h"

#include "tolv_birds_eye_view_p.h"
#include "tolv_check.h"
#include "tolv_drag_tracker.h"
#include "tolv_global.h"
#include "tolv_graphics_scene.h"
#include "tolv_mem.h"
#include "tolv_view.h"
#include "tolv_view_arithmetic.h"
#include "tolv_zoom_scroll_area.h"

#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>

TOLV_MEM_INITIALIZER();

namespace
{
constexpr int LONGER_SIDE = 300;
constexpr int FRAME_LINE_WIDTH = 2;
constexpr int OVERLAY_ALPHA = 80;
/// Right and bottom of the smallest overlay, from its left and top.
constexpr int SMALLEST_OVERLAY_SPAN = 4;
/// What is painted anew around an overlay that has moved.
constexpr int UPDATE_MARGIN = 10;

QRect get_grown(const QRect& rect, int margin)
{
    return rect.adjusted(-margin, -margin, margin, margin);
}

/// The rectangle grown to the right and downwards to five pixels at least.
QRect get_overlay_rect(const QRect& rect)
{
    return rect.united(tolv_make_rect(rect.left(), rect.top(), rect.left() + SMALLEST_OVERLAY_SPAN,
                                      rect.top() + SMALLEST_OVERLAY_SPAN));
}

/// Sets the brush of the overlay.
void set_overlay_brush(QPainter& painter, const QWidget& widget)
{
    QColor color = widget.palette().color(QPalette::Highlight);
    color.setAlpha(OVERLAY_ALPHA);
    painter.setBrush(color);
}

/// Width by height of an overview, 0 for one that has no area.
double get_aspect_ratio(const QSize& size)
{
    return size.isEmpty() ? 0.0 : double(size.width()) / double(size.height());
}

/// Scrolls by so many pixels of an overview of that length.
void scroll_by_overview(QScrollBar& bar, int distance, int length)
{
    if (length <= 0)
        return;
    const int extent = bar.maximum() - bar.minimum() + bar.pageStep();
    bar.setValue(bar.value() + tolv_truncate(float(distance) * float(extent) / float(length)));
}

/// A press on an overview, in coordinates of the overlay: the left button begins to drag the overlay. True where it is
/// the right button, with which a rectangle is to be drawn.
/// @param last_point takes the point from which the next move scrolls
bool press_overview(QWidget& overview, const QMouseEvent& e, const QRect& focus_rect, QPoint& last_point)
{
    if (e.button() == Qt::RightButton)
    {
        overview.setCursor(Qt::SizeAllCursor);
        return true;
    }
    if (e.button() != Qt::LeftButton)
        return false;
    const QPoint position = tolv_get_local_position(e);
    const bool is_in_overlay = focus_rect.contains(position);
    if (is_in_overlay)
        overview.setCursor(Qt::ClosedHandCursor);
    // From outside of the overlay, the next move brings its centre to the pointer.
    last_point = is_in_overlay ? position : focus_rect.center();
    return false;
}

/// A move over an overview. With exactly the left button it scrolls.
/// @param area what the overview is of; null for nothing to scroll
void move_over_overview(QWidget& overview, const QMouseEvent& e, QAbstractScrollArea* area, QPoint& last_point)
{
    if (e.buttons() != Qt::LeftButton)
    {
        overview.setCursor(Qt::OpenHandCursor);
        return;
    }
    overview.setCursor(Qt::ClosedHandCursor);
    const QPoint position = tolv_get_local_position(e);
    const QPoint distance = position - last_point;
    last_point = position;
    if (area == nullptr)
        return;
    scroll_by_overview(*area->horizontalScrollBar(), distance.x(), overview.width());
    scroll_by_overview(*area->verticalScrollBar(), distance.y(), overview.height());
}
} // namespace

// ---- In common ------------------------------------------------------------------------------------------------------

QSize tolv_get_overview_size(const QRect& bounds)
{
    const double w = double(bounds.right()) - double(bounds.left()) + 1;
    const double h = double(bounds.bottom()) - double(bounds.top()) + 1;
    if (w > h)
    {
        const double ratio = w / h;
        const int width = std::max(tolv_truncate(LONGER_SIDE / ratio), LONGER_SIDE);
        return {width, tolv_truncate(width / ratio)};
    }
    const double ratio = h / w;
    const int height = std::max(tolv_truncate(LONGER_SIDE / ratio), LONGER_SIDE);
    return {tolv_truncate(height / ratio), height};
}

QRect tolv_get_scene_bounds(const QRectF& scene_rect)
{
    return tolv_make_rect(tolv_round(scene_rect.left()), tolv_round(scene_rect.top()),
                          tolv_round(scene_rect.right()) - 1, tolv_round(scene_rect.bottom()) - 1);
}

// ---- Of a view ------------------------------------------------------------------------------------------------------

TOLV_BIRDS_EYE_VIEW_WIDGET::TOLV_BIRDS_EYE_VIEW_WIDGET(TOLV_ZOOM_SCROLL_AREA* scroll_area, TOLV_VIEW* view,
                                                       QWidget* parent)
    : QFrame(parent), m_scroll_area(scroll_area), m_source_view(view)
{
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setLineWidth(FRAME_LINE_WIDTH);
    setCursor(Qt::ArrowCursor);
    setMouseTracking(true);
    setContextMenuPolicy(Qt::PreventContextMenu); // the right button draws
    if (scroll_area == nullptr)
        return;
    // Whatever tool is at work, and whether or not the view itself has been painted yet.
    TOLV_SAFE_CONNECT(scroll_area->horizontalScrollBar(), SIGNAL(valueChanged(int)), this, SLOT(update()));
    TOLV_SAFE_CONNECT(scroll_area->verticalScrollBar(), SIGNAL(valueChanged(int)), this, SLOT(update()));
    TOLV_SAFE_CONNECT(scroll_area, SIGNAL(zoom_level_changed(float)), this, SLOT(update()));
}

TOLV_BIRDS_EYE_VIEW_WIDGET::~TOLV_BIRDS_EYE_VIEW_WIDGET() = default;

QSize TOLV_BIRDS_EYE_VIEW_WIDGET::get_size() const
{
    TOLV_CHECK_TEXT(m_source_view != nullptr, "m_source_view != NULL");
    return m_source_view != nullptr ? tolv_get_overview_size(m_source_view->get_logical_rect()) : QSize(0, 0);
}

QSize TOLV_BIRDS_EYE_VIEW_WIDGET::sizeHint() const
{
    return get_size();
}

TOLV_ZOOM_SCROLL_AREA* TOLV_BIRDS_EYE_VIEW_WIDGET::get_scroll_area() const
{
    return m_scroll_area;
}

QRect TOLV_BIRDS_EYE_VIEW_WIDGET::get_focus_rect() const
{
    return m_focus_rect;
}

float TOLV_BIRDS_EYE_VIEW_WIDGET::get_scale_x() const
{
    return float(get_size().width()) / float(m_source_view->get_logical_rect().width());
}

float TOLV_BIRDS_EYE_VIEW_WIDGET::get_scale_y() const
{
    return float(get_size().height()) / float(m_source_view->get_logical_rect().height());
}

QPoint TOLV_BIRDS_EYE_VIEW_WIDGET::get_offset() const
{
    const QRect logical = m_source_view->get_logical_rect();
    return {-tolv_truncate(float(logical.left()) * get_scale_x()),
            -tolv_truncate(float(logical.top()) * get_scale_y())};
}

QRect TOLV_BIRDS_EYE_VIEW_WIDGET::compute_focus_rect() const
{
    const QRect visible = m_source_view->get_logical(m_source_view->get_viewport_rect());
    const QPoint offset = get_offset();
    const auto get_x = [&](int x) { return tolv_truncate(float(x) * get_scale_x() + float(offset.x())); };
    const auto get_y = [&](int y) { return tolv_truncate(float(y) * get_scale_y() + float(offset.y())); };
    return get_overlay_rect(
        tolv_make_rect(get_x(visible.left()), get_y(visible.top()), get_x(visible.right()), get_y(visible.bottom())));
}

void TOLV_BIRDS_EYE_VIEW_WIDGET::paintEvent(QPaintEvent* e)
{
    if (m_source_view != nullptr)
    {
        paint_drawing(e);
        paint_focus_rect();
    }
    QFrame::paintEvent(e);
}

void TOLV_BIRDS_EYE_VIEW_WIDGET::paint_drawing(QPaintEvent* e)
{
    const QSize size = get_size();
    const QPoint offset = get_offset();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(QTransform(get_scale_x(), 0, 0, get_scale_y(), offset.x(), offset.y()));
    m_source_view->paint_birds_eye_view(&painter, e, m_source_view, QRect(QPoint(0, 0), size));
}

void TOLV_BIRDS_EYE_VIEW_WIDGET::paint_focus_rect()
{
    m_focus_rect = compute_focus_rect();
    QPainter painter(this);
    set_overlay_brush(painter, *this);
    painter.drawRect(m_focus_rect.adjusted(0, 0, -1, -1)); // the outline adds one pixel
}

void TOLV_BIRDS_EYE_VIEW_WIDGET::mousePressEvent(QMouseEvent* e)
{
    if (press_overview(*this, *e, m_focus_rect, m_last_point))
        zoom_by_rect(tolv_get_local_position(*e));
}

/// The drag runs a nested event loop, in which anything here can go away.
void TOLV_BIRDS_EYE_VIEW_WIDGET::zoom_by_rect(const QPoint& start)
{
    if (m_source_view == nullptr)
        return;
    const QPointer<TOLV_BIRDS_EYE_VIEW_WIDGET> self(this);
    const QRect rect = TOLV_DRAG_TRACKER::track_rect(this, start, nullptr, get_aspect_ratio(get_size()));
    if (self == nullptr || m_source_view == nullptr || m_scroll_area == nullptr || !rect.isValid())
        return;
    m_focus_rect = rect;
    const float fx = get_scale_x();
    const float fy = get_scale_y();
    // The origin of the drawing is not added; this is meant.
    const QRect logical =
        tolv_make_rect(tolv_truncate(float(rect.left()) / fx), tolv_truncate(float(rect.top()) / fy),
                       tolv_truncate(float(rect.right()) / fx), tolv_truncate(float(rect.bottom()) / fy));
    const QRect physical = m_source_view->get_physical(logical);
    if (physical.isValid())
        m_scroll_area->zoom_rect(physical);
    if (self != nullptr)
        update();
}

void TOLV_BIRDS_EYE_VIEW_WIDGET::mouseMoveEvent(QMouseEvent* e)
{
    move_over_overview(*this, *e, m_scroll_area, m_last_point);
}

void TOLV_BIRDS_EYE_VIEW_WIDGET::mouseReleaseEvent(QMouseEvent* /*e*/)
{
    setCursor(Qt::ArrowCursor);
}

// ---- Of a scene -----------------------------------------------------------------------------------------------------

TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET::TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET(TOLV_GRAPHICS_SCENE* scene, QWidget* parent)
    : TOLV_GRAPHICS_VIEW(parent), m_source_graphics_scene(scene)
{
    const QObject* const dock = QObject::parent();
    TOLV_CHECK_TEXT(dock != nullptr && dock->parent() != nullptr, "parent()->parent() != nullptr");
    if (dock != nullptr)
        m_source_graphics_view = qobject_cast<TOLV_GRAPHICS_VIEW*>(dock->parent());
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setCursor(Qt::ArrowCursor);
    setMouseTracking(true);
    viewport()->setMouseTracking(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setContextMenuPolicy(Qt::PreventContextMenu); // the right button draws
    setInteractive(false);                        // the items are those of the drawing itself
    setFixedSize(TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET::sizeHint());
    viewport()->setFixedSize(maximumViewportSize());
    if (scene == nullptr)
        return;
    setScene(scene);
    fitInView(scene->sceneRect(), Qt::IgnoreAspectRatio);
    m_default_transform = transform();
}

TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET::~TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET() = default;

QSize TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET::get_size() const
{
    TOLV_CHECK_TEXT(m_source_graphics_scene != nullptr, "m_source_graphics_scene != NULL");
    return m_source_graphics_scene != nullptr
               ? tolv_get_overview_size(tolv_get_scene_bounds(m_source_graphics_scene->sceneRect()))
               : QSize(0, 0);
}

QSize TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET::sizeHint() const
{
    return get_size();
}

void TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET::set_focus_rect(const QRectF& scene_rect)
{
    const QRect rect = get_overlay_rect(mapFromScene(scene_rect).boundingRect());
    if (rect == m_focus_rect)
        return;
    viewport()->update(get_grown(m_focus_rect, UPDATE_MARGIN));
    m_focus_rect = rect;
    viewport()->update(get_grown(m_focus_rect, UPDATE_MARGIN));
}

QRect TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET::get_focus_rect() const
{
    return m_focus_rect;
}

void TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET::paint_focus_rect()
{
    QPainter painter(viewport());
    set_overlay_brush(painter, *this);
    painter.drawRect(m_focus_rect);
    painter.end();
    // One paint more where it has moved; none for one that stands still, as that would never come to an end.
    if (m_painted_focus_rect != m_focus_rect)
        viewport()->update(get_grown(m_focus_rect, UPDATE_MARGIN));
    m_painted_focus_rect = m_focus_rect;
}

TOLV_GRAPHICS_VIEW* TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET::get_source_graphics_view() const
{
    return m_source_graphics_view;
}

void TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET::set_source_graphics_view(TOLV_GRAPHICS_VIEW* view)
{
    m_source_graphics_view = view;
}

const QTransform& TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET::get_default_transform() const
{
    return m_default_transform;
}

void TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET::set_default_transform(const QTransform& transform)
{
    m_default_transform = transform;
}

void TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET::paintEvent(QPaintEvent* e)
{
    TOLV_GRAPHICS_VIEW::paintEvent(e);
    paint_focus_rect();
}

void TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET::mousePressEvent(QMouseEvent* e)
{
    if (press_overview(*this, *e, m_focus_rect, m_last_point))
        focus_by_rect(tolv_get_local_position(*e));
}

/// The drag runs a nested event loop, in which anything here can go away.
void TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET::focus_by_rect(const QPoint& start)
{
    if (m_source_graphics_scene == nullptr)
        return;
    const QPointer<TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET> self(this);
    const QRect rect = TOLV_DRAG_TRACKER::track_rect(viewport(), start, nullptr, get_aspect_ratio(get_size()));
    if (self == nullptr || m_source_graphics_view == nullptr || rect == QRect()) // the last one: cancelled
        return;
    const QRect old_focus_rect = m_focus_rect;
    m_source_graphics_view->focus_on_scene_rect(mapToScene(get_overlay_rect(rect)).boundingRect());
    if (self != nullptr)
        viewport()->update(get_grown(old_focus_rect, 1));
}

void TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET::mouseMoveEvent(QMouseEvent* e)
{
    move_over_overview(*this, *e, m_source_graphics_view, m_last_point);
}

void TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET::mouseReleaseEvent(QMouseEvent* /*e*/)
{
    setCursor(Qt::ArrowCursor);
}

void TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET::mouseDoubleClickEvent(QMouseEvent* e)
{
    mousePressEvent(e);
}
