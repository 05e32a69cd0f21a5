#include "tolv_magnifying_glass_widget.h"

#include "tolv_check.h"
#include "tolv_image.h"
#include "tolv_interaction_loop_p.h"
#include "tolv_mem.h"
#include "tolv_view.h"
#include "tolv_view_arithmetic.h"
#include "tolv_zoom_scroll_area.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

TOLV_MEM_INITIALIZER();

namespace
{
constexpr double RADIUS_UNIT = 50.0; // pixels
constexpr double LARGEST_SIZE = 5.0;
} // namespace

double TOLV_MAGNIFYING_GLASS_WIDGET::s_size_factor = 2.0;
double TOLV_MAGNIFYING_GLASS_WIDGET::s_scale_factor = 3.0;

void TOLV_MAGNIFYING_GLASS_WIDGET::magnifying(TOLV_ZOOM_SCROLL_AREA* scroll_area, TOLV_VIEW* view, QPoint global_point)
{
    TOLV_CHECK_TEXT(scroll_area != nullptr, "scroll_area != NULL");
    TOLV_CHECK_TEXT(view != nullptr, "view != NULL");
    if (scroll_area == nullptr || view == nullptr)
        return;
    const QPointer<TOLV_VIEW> view_guard(view);
    const QPointer<TOLV_MAGNIFYING_GLASS_WIDGET> glass(
        new TOLV_MAGNIFYING_GLASS_WIDGET(scroll_area, view, global_point));
    glass->show();
    view->setCursor(Qt::CrossCursor);
    glass->run();
    delete glass;
    if (view_guard != nullptr)
        view->setCursor(tolv_get_cursor(TOLV_MAGNIFYING_CURSOR));
}

TOLV_MAGNIFYING_GLASS_WIDGET::TOLV_MAGNIFYING_GLASS_WIDGET(TOLV_ZOOM_SCROLL_AREA* scroll_area, TOLV_VIEW* view,
                                                           QPoint global_point)
    : QWidget(scroll_area), m_scroll_area(scroll_area), m_view(view), m_radius(RADIUS_UNIT * s_size_factor)
{
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    update_widget_geometry(convert_to_widget_coordinate(global_point));
}

TOLV_MAGNIFYING_GLASS_WIDGET::~TOLV_MAGNIFYING_GLASS_WIDGET()
{
    if (m_event_loop != nullptr)
        m_event_loop->exit(0);
}

QRect TOLV_MAGNIFYING_GLASS_WIDGET::get_bounding_box(const QPointF& centre, double radius, double extra)
{
    const int side = tolv_round((radius + extra) * 3);
    return {tolv_round(centre.x() - radius - extra), tolv_round(centre.y() - radius - extra), side, side};
}

bool TOLV_MAGNIFYING_GLASS_WIDGET::eventFilter(QObject* watched, QEvent* event)
{
    if (!is_under_way() || watched != m_view)
        return false;
    switch (event->type())
    {
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
        follow_pointer(static_cast<QMouseEvent*>(event));
        return true;
    case QEvent::MouseButtonRelease:
        m_event_loop->exit(0);
        return true;
    case QEvent::Wheel:
        wheelEvent(static_cast<QWheelEvent*>(event));
        return true;
    default:
        return false;
    }
}

void TOLV_MAGNIFYING_GLASS_WIDGET::mouseMoveEvent(QMouseEvent* event)
{
    follow_pointer(event);
}

/// Where the press went to another widget than the view, the lens lies under the pointer and gets the release itself.
void TOLV_MAGNIFYING_GLASS_WIDGET::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    if (is_under_way())
        m_event_loop->exit(0);
}

void TOLV_MAGNIFYING_GLASS_WIDGET::wheelEvent(QWheelEvent* event)
{
    event->accept();
    const double step = event->angleDelta().y() >= 1 ? 1.0 : -1.0;
    if (event->modifiers() & Qt::ControlModifier)
    {
        s_size_factor = std::clamp(s_size_factor + step, 1.0, LARGEST_SIZE);
        m_radius = s_size_factor * RADIUS_UNIT;
        update_widget_geometry(m_center);
        update();
    }
    else
    {
        s_scale_factor = std::max(s_scale_factor + step, 1.0);
        update();
    }
}

void TOLV_MAGNIFYING_GLASS_WIDGET::paintEvent(QPaintEvent* event)
{
    paint_handle();
    paint_content(event);
    paint_rim();
}

void TOLV_MAGNIFYING_GLASS_WIDGET::run()
{
    const QPointer<TOLV_MAGNIFYING_GLASS_WIDGET> guard(this);
    TOLV_INTERACTION_LOOP loop(m_view, this);
    m_event_loop = &loop;
    loop.run();
    if (guard != nullptr)
        m_event_loop = nullptr;
}

bool TOLV_MAGNIFYING_GLASS_WIDGET::is_under_way() const
{
    return m_event_loop != nullptr && m_event_loop->isRunning();
}

void TOLV_MAGNIFYING_GLASS_WIDGET::follow_pointer(QMouseEvent* event)
{
    if (event->buttons() == Qt::LeftButton)
        update_widget_geometry(convert_to_widget_coordinate(tolv_get_global_position(*event)));
}

QPoint TOLV_MAGNIFYING_GLASS_WIDGET::convert_to_widget_coordinate(const QPoint& global) const
{
    return mapToParent(mapFromGlobal(global));
}

void TOLV_MAGNIFYING_GLASS_WIDGET::update_widget_geometry(const QPoint& center)
{
    m_center = center;
    setGeometry(get_bounding_box(center, m_radius, 0));
}

QRectF TOLV_MAGNIFYING_GLASS_WIDGET::get_lens_rect() const
{
    return {0, 0, 2 * m_radius, 2 * m_radius};
}

/// From the drawing to the lens, in whose middle stands what lies under m_center.
QTransform TOLV_MAGNIFYING_GLASS_WIDGET::get_lens_transform() const
{
    const QPoint origin = m_view->get_logical(QPoint(0, 0));
    const float zoom = m_view->get_zoom();
    const double scale = double(zoom) * s_scale_factor;
    const float center_x = float(m_scroll_area->horizontalScrollBar()->value() + m_center.x()) / zoom;
    const float center_y = float(m_scroll_area->verticalScrollBar()->value() + m_center.y()) / zoom;
    QTransform transform;
    transform.scale(scale, scale);
    transform.translate(-(double(center_x + float(origin.x())) - m_radius / scale),
                        -(double(center_y + float(origin.y())) - m_radius / scale));
    return transform;
}

/// Only the part outside of the lens stays to be seen.
void TOLV_MAGNIFYING_GLASS_WIDGET::paint_handle()
{
    const int width = tolv_truncate(m_radius / 5);
    const int half_width = width / 2;
    QPainter painter(this);
    painter.setBrush(QBrush(Qt::gray, Qt::Dense2Pattern));
    painter.rotate(-45);
    painter.translate(-m_radius, m_radius);
    painter.drawRoundedRect(tolv_truncate(m_radius - half_width), tolv_truncate(m_radius), width,
                            tolv_truncate(2 * m_radius), 15, 15, Qt::AbsoluteSize);
}

void TOLV_MAGNIFYING_GLASS_WIDGET::paint_content(QPaintEvent* event)
{
    if (m_view == nullptr || m_scroll_area == nullptr)
        return;
    QPainterPath lens;
    lens.addEllipse(get_lens_rect());
    QPainter painter(this);
    painter.setClipPath(lens, Qt::ReplaceClip);
    // A view need not paint its own ground, and the drawing in its own size must not show through.
    painter.fillRect(get_lens_rect(), m_view->palette().brush(m_view->backgroundRole()));
    painter.setTransform(get_lens_transform());
    m_view->m_magnifying = true;
    m_view->m_magnifying_rect = rect();
    m_view->paint(&painter, event, m_view, m_view->m_magnifying_rect, false);
    m_view->m_magnifying = false;
    m_view->m_magnifying_rect = QRect();
}

void TOLV_MAGNIFYING_GLASS_WIDGET::paint_rim()
{
    const QPointF center(m_radius, m_radius);
    QRadialGradient gradient(center, m_radius, center);
    gradient.setColorAt(0.9, QColor(150, 150, 200, 63));
    gradient.setColorAt(0.95, QColor(0, 0, 0, 127));
    gradient.setColorAt(1.0, QColor(0, 0, 0, 0));
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(gradient);
    painter.drawEllipse(get_lens_rect());
}
