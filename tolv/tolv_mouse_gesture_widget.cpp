#include "tolv_mouse_gesture_widget.h"

#include "tolv_check.h"
#include "tolv_interaction_loop_p.h"
#include "tolv_mem.h"
#include "tolv_view.h"
#include "tolv_view_arithmetic.h"
#include "tolv_zoom_scroll_area.h"

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>

TOLV_MEM_INITIALIZER();

namespace
{
constexpr float PERCENT_PER_PIXEL = 0.2F;
constexpr float LEAST_PERCENT = 0.5F;
constexpr int CLICK_SPAN = 9;  // pixels
constexpr int LABEL_RISE = 32; // of the label's top above the pointer
constexpr int REPAINT_MARGIN = 100;
} // namespace

void TOLV_MOUSE_GESTURE_WIDGET::show_mouse_gesture(TOLV_ZOOM_SCROLL_AREA* scroll_area, TOLV_VIEW* view,
                                                   const QPoint& point)
{
    TOLV_CHECK(view != nullptr);
    TOLV_CHECK(scroll_area != nullptr);
    if (view != nullptr && scroll_area != nullptr)
        run_stroke(new TOLV_MOUSE_GESTURE_WIDGET(scroll_area, view, point));
}

TOLV_MOUSE_GESTURE_WIDGET::TOLV_MOUSE_GESTURE_WIDGET(TOLV_ZOOM_SCROLL_AREA* scroll_area, TOLV_VIEW* view,
                                                     const QPoint& point)
    : QWidget(view), m_scroll_area(scroll_area), m_view(view),
      m_label(new QLabel(QStringLiteral("Gesture Label"), this))
{
    TOLV_CHECK(m_view != nullptr);
    TOLV_CHECK(m_scroll_area != nullptr);
    m_start_point = m_end_point = mapToParent(point);
    m_label->setForegroundRole(QPalette::Highlight);
    m_label->setAlignment(Qt::AlignLeft);
    m_label->setAutoFillBackground(true);
    m_label->setStyleSheet(QStringLiteral("background-color: rgba(255, 255, 255, 200);"));
    m_label->hide();
    setMouseTracking(true);
    hide();
}

TOLV_MOUSE_GESTURE_WIDGET::~TOLV_MOUSE_GESTURE_WIDGET()
{
    if (m_event_loop != nullptr)
        m_event_loop->exit(0);
}

void TOLV_MOUSE_GESTURE_WIDGET::update_label_for_southeast(QString& text)
{
    text = QStringLiteral("zoom in");
}

void TOLV_MOUSE_GESTURE_WIDGET::do_action_for_southeast(const QRect& rect, const QPoint& /*point*/)
{
    const QRect clipped = clip_to_view(rect);
    if (!clipped.isEmpty())
        m_scroll_area->zoom_rect(clipped);
}

void TOLV_MOUSE_GESTURE_WIDGET::no_mouse_gesture_action(QMouseEvent* event)
{
    m_scroll_area->zoom_mode_no_mouse_gesture(event, true);
}

bool TOLV_MOUSE_GESTURE_WIDGET::eventFilter(QObject* watched, QEvent* event)
{
    auto* const mouse_event = dynamic_cast<QMouseEvent*>(event);
    if (mouse_event == nullptr || !is_under_way() || watched != m_view)
        return false;
    switch (event->type())
    {
    case QEvent::MouseButtonRelease:
        mouseReleaseEvent(mouse_event);
        return true;
    case QEvent::MouseMove:
        mouseMoveEvent(mouse_event);
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        if (mouse_event->buttons() == mouse_event->button())
            return false;
        stop_event_filter();
        return true;
    default:
        return false;
    }
}

void TOLV_MOUSE_GESTURE_WIDGET::mouseReleaseEvent(QMouseEvent* event)
{
    const QPoint end = mapFromParent(m_end_point);
    const QRect rect = QRect(mapFromParent(m_start_point), end).normalized();
    stop_event_filter();
    if (m_scroll_area == nullptr || m_view == nullptr)
        return;
    const QSize span = tolv_get_span(rect);
    if (span.width() <= CLICK_SPAN && span.height() <= CLICK_SPAN)
        no_mouse_gesture_action(event);
    else if (event->modifiers() == Qt::NoModifier) // one that came behind the last move breaks the stroke, too
        run_command(rect, end);
}

void TOLV_MOUSE_GESTURE_WIDGET::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() != Qt::LeftButton || event->modifiers() != Qt::NoModifier)
    {
        stop_event_filter();
        return;
    }
    show();
    const QPoint position = tolv_get_local_position(*event);
    update_rect(); // before and behind the move; a paint that asked for the next one would never come to rest
    m_end_point = mapToParent(position);
    update_rect();
    update_quadrant();
    update_label(position);
}

void TOLV_MOUSE_GESTURE_WIDGET::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    draw_gesture_indicator(painter);
}

QRect TOLV_MOUSE_GESTURE_WIDGET::clip_to_view(const QRect& rect) const
{
    return rect.normalized() & m_view->rect();
}

void TOLV_MOUSE_GESTURE_WIDGET::run_stroke(TOLV_MOUSE_GESTURE_WIDGET* gesture)
{
    const QPointer<TOLV_MOUSE_GESTURE_WIDGET> guard(gesture);
    gesture->run();
    delete guard;
}

void TOLV_MOUSE_GESTURE_WIDGET::run()
{
    const QPointer<TOLV_MOUSE_GESTURE_WIDGET> guard(this);
    setGeometry(m_view->rect());
    TOLV_INTERACTION_LOOP loop(m_view, this);
    m_event_loop = &loop;
    loop.run();
    if (guard != nullptr)
        m_event_loop = nullptr;
}

bool TOLV_MOUSE_GESTURE_WIDGET::is_under_way() const
{
    return m_event_loop != nullptr && m_event_loop->isRunning();
}

void TOLV_MOUSE_GESTURE_WIDGET::stop_event_filter()
{
    setMouseTracking(false);
    if (m_event_loop == nullptr)
        return;
    hide();
    m_label->hide();
    m_start_point = m_end_point = QPoint();
    if (m_event_loop->isRunning())
        m_event_loop->exit(0);
}

void TOLV_MOUSE_GESTURE_WIDGET::run_command(const QRect& rect, const QPoint& end)
{
    switch (m_quadrant)
    {
    case GESTURE_NORTHEAST:
        m_scroll_area->zoom_out(nullptr, 100 / m_zoom_percent);
        break;
    case GESTURE_SOUTHEAST:
        do_action_for_southeast(rect, end);
        break;
    case GESTURE_SOUTHWEST:
        m_scroll_area->zoom_fit();
        break;
    case GESTURE_NORTHWEST:
        m_scroll_area->zoom_in(nullptr, m_zoom_percent / 100);
        break;
    default:
        break;
    }
}

void TOLV_MOUSE_GESTURE_WIDGET::update_quadrant()
{
    const int dy = m_end_point.y() - m_start_point.y();
    const bool is_west = m_end_point.x() < m_start_point.x();
    const bool is_north = dy < 0;
    if (is_north)
        m_quadrant = is_west ? GESTURE_NORTHWEST : GESTURE_NORTHEAST;
    else
        m_quadrant = is_west ? GESTURE_SOUTHWEST : GESTURE_SOUTHEAST;
    if (m_quadrant == GESTURE_NORTHEAST)
        m_zoom_percent = std::max(100 + PERCENT_PER_PIXEL * float(dy), LEAST_PERCENT);
    else if (m_quadrant == GESTURE_NORTHWEST)
        m_zoom_percent = 100 - PERCENT_PER_PIXEL * float(dy);
}

void TOLV_MOUSE_GESTURE_WIDGET::update_label(const QPoint& pos)
{
    const QString percent = QString::number(double(m_zoom_percent), 'g', 6) + QLatin1Char('%');
    QString text;
    if (m_quadrant == GESTURE_NORTHEAST)
        text = QStringLiteral("zoom out ") + percent;
    else if (m_quadrant == GESTURE_SOUTHEAST)
        update_label_for_southeast(text);
    else if (m_quadrant == GESTURE_SOUTHWEST)
        text = QStringLiteral("zoom fit");
    else
        text = QStringLiteral("zoom in ") + percent;
    const QFontMetrics metrics = m_label->fontMetrics();
    m_label->setText(text);
    m_label->setFixedWidth(metrics.boundingRect(text).width() + metrics.averageCharWidth());
    const bool is_east = m_quadrant == GESTURE_NORTHEAST || m_quadrant == GESTURE_SOUTHEAST;
    const int x = is_east ? pos.x() + metrics.averageCharWidth() : pos.x() - m_label->width();
    m_label->move(x, pos.y() - LABEL_RISE);
    m_label->show();
}

void TOLV_MOUSE_GESTURE_WIDGET::draw_gesture_indicator(QPainter& painter) const
{
    if (!has_points())
        return;
    const QColor color = QApplication::palette().color(QPalette::Current, QPalette::Highlight);
    QColor fill = color.lighter(150);
    fill.setAlphaF(0.5);
    painter.setPen(QPen(color, 2.0));
    painter.setBrush(QBrush(fill, Qt::SolidPattern));
    const QRect rect(m_start_point, m_end_point);
    const QLine line(m_start_point, m_end_point);
    if (m_quadrant == GESTURE_SOUTHEAST)
        painter.drawRects(&rect, 1);
    else
        painter.drawLines(&line, 1);
}

/// Has the surroundings of the stroke painted again; all, where there is no stroke to be seen.
void TOLV_MOUSE_GESTURE_WIDGET::update_rect()
{
    if (!has_points())
    {
        update();
        return;
    }
    update(QRect(m_start_point, m_end_point)
               .normalized()
               .adjusted(-REPAINT_MARGIN, -REPAINT_MARGIN, REPAINT_MARGIN, REPAINT_MARGIN));
}

/// A stroke that begins or ends at the view's very corner is not drawn, which is meant.
bool TOLV_MOUSE_GESTURE_WIDGET::has_points() const
{
    return !m_start_point.isNull() && !m_end_point.isNull();
}

// ---- In selection mode ----------------------------------------------------------------------------------------------

void TOLV_SELECTION_MODE_MOUSE_GESTURE_WIDGET::show_mouse_gesture(TOLV_ZOOM_SCROLL_AREA* scroll_area, TOLV_VIEW* view,
                                                                  const QPoint& point)
{
    TOLV_CHECK(view != nullptr);
    TOLV_CHECK(scroll_area != nullptr);
    if (view != nullptr && scroll_area != nullptr)
        run_stroke(new TOLV_SELECTION_MODE_MOUSE_GESTURE_WIDGET(scroll_area, view, point));
}

TOLV_SELECTION_MODE_MOUSE_GESTURE_WIDGET::TOLV_SELECTION_MODE_MOUSE_GESTURE_WIDGET(TOLV_ZOOM_SCROLL_AREA* scroll_area,
                                                                                   TOLV_VIEW* view, const QPoint& point)
    : TOLV_MOUSE_GESTURE_WIDGET(scroll_area, view, point)
{
}

void TOLV_SELECTION_MODE_MOUSE_GESTURE_WIDGET::update_label_for_southeast(QString& text)
{
    if (m_view->is_rect_selection_enabled())
        text = QStringLiteral("select");
    else
        TOLV_MOUSE_GESTURE_WIDGET::update_label_for_southeast(text);
}

void TOLV_SELECTION_MODE_MOUSE_GESTURE_WIDGET::do_action_for_southeast(const QRect& rect, const QPoint& point)
{
    if (m_view->is_rect_selection_enabled())
        m_view->do_rect_selection(clip_to_view(rect), point);
    else
        TOLV_MOUSE_GESTURE_WIDGET::do_action_for_southeast(rect, point);
}

void TOLV_SELECTION_MODE_MOUSE_GESTURE_WIDGET::no_mouse_gesture_action(QMouseEvent* event)
{
    m_view->selection_mode_no_mouse_gesture(event);
}
