#include "tolv_zoom_drag.h"

#include "tolv_check.h"
#include "tolv_font.h"
#include "tolv_image.h"
#include "tolv_interaction_loop_p.h"
#include "tolv_mem.h"
#include "tolv_view.h"
#include "tolv_view_arithmetic.h"
#include "tolv_zoom_scroll_area.h"

#include <QApplication>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

TOLV_MEM_INITIALIZER();

namespace
{
constexpr double PERCENT_PER_PIXEL = 0.2;
constexpr double LEAST_PERCENT = 0.5;
constexpr int LABEL_OFFSET = 40; // pixels to the left of the press, and above it for a drag down
} // namespace

bool TOLV_ZOOM_DRAG_WIDGET::m_use_zoom_drag = false;

void TOLV_ZOOM_DRAG_WIDGET::start_zoom_drag(TOLV_ZOOM_SCROLL_AREA* scroll_area, TOLV_VIEW* source_view,
                                            const QPoint& point)
{
    TOLV_CHECK_TEXT(source_view != nullptr, "source_view != NULL");
    TOLV_CHECK_TEXT(scroll_area != nullptr, "scroll_area != NULL");
    if (source_view == nullptr || scroll_area == nullptr)
        return;
    const QPointer<TOLV_ZOOM_DRAG_WIDGET> drag(new TOLV_ZOOM_DRAG_WIDGET(scroll_area, source_view));
    m_use_zoom_drag = false;
    drag->setGeometry(source_view->rect());
    drag->on_r_button_down(point);
    drag->run();
    delete drag;
}

TOLV_ZOOM_DRAG_WIDGET::TOLV_ZOOM_DRAG_WIDGET(TOLV_ZOOM_SCROLL_AREA* scroll_area, TOLV_VIEW* source_view)
    : QWidget(source_view), m_label(new QLabel(QStringLiteral("100%"), this)), m_scroll_area(scroll_area),
      m_view(source_view)
{
    TOLV_CHECK_TEXT(source_view != nullptr, "source_view != NULL");
    TOLV_CHECK_TEXT(scroll_area != nullptr, "scroll_area != NULL");
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    hide();
    m_label->setForegroundRole(QPalette::Highlight);
    m_label->setBackgroundRole(QPalette::Base);
    m_label->setAlignment(Qt::AlignLeft);
    m_label->setAutoFillBackground(true);
    m_label->setStyleSheet(QStringLiteral("background-color: rgba(255, 255, 255, 200);"));
    m_label->setFont(*TOLV_FONT(TOLV_RUI_ZOOM_DRAG_FONT).get_font());
    m_label->hide();
}

TOLV_ZOOM_DRAG_WIDGET::~TOLV_ZOOM_DRAG_WIDGET()
{
    if (m_event_loop != nullptr)
        m_event_loop->exit(0);
}

bool TOLV_ZOOM_DRAG_WIDGET::eventFilter(QObject* watched, QEvent* event)
{
    auto* const mouse_event = dynamic_cast<QMouseEvent*>(event);
    if (mouse_event == nullptr || !is_under_way() || watched != m_view)
        return false;
    switch (event->type())
    {
    case QEvent::MouseButtonRelease:
        if (m_use_zoom_drag)
        {
            mouseReleaseEvent(mouse_event);
            return true;
        }
        stop_event_filter();
        return false;
    case QEvent::MouseMove:
        mouseMoveEvent(mouse_event);
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return mouse_event->buttons() != mouse_event->button();
    default:
        return false;
    }
}

void TOLV_ZOOM_DRAG_WIDGET::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    const QPointer<TOLV_ZOOM_DRAG_WIDGET> guard(this);
    if (m_scroll_area != nullptr && m_zoom_percent >= 100)
        m_scroll_area->zoom_in(nullptr, float(m_zoom_percent / 100));
    else if (m_scroll_area != nullptr)
        m_scroll_area->zoom_out(nullptr, float(100 / m_zoom_percent));
    if (guard != nullptr)
        stop_event_filter();
}

void TOLV_ZOOM_DRAG_WIDGET::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons() != Qt::RightButton)
        return;
    show();
    m_end_point = mapToParent(tolv_get_local_position(*event));
    m_use_zoom_drag = true;
    m_view->update(); // and this widget with it; a paint that asked for the next one would never come to rest
}

void TOLV_ZOOM_DRAG_WIDGET::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setOpacity(m_opacity);
    draw_line(painter);
}

void TOLV_ZOOM_DRAG_WIDGET::run()
{
    const QPointer<TOLV_ZOOM_DRAG_WIDGET> guard(this);
    TOLV_INTERACTION_LOOP loop(m_view, this);
    m_event_loop = &loop;
    if (!loop.run())
        m_use_zoom_drag = true; // there is nothing left to treat the press in
    if (guard != nullptr)
        m_event_loop = nullptr;
}

bool TOLV_ZOOM_DRAG_WIDGET::is_under_way() const
{
    return m_event_loop != nullptr && m_event_loop->isRunning();
}

void TOLV_ZOOM_DRAG_WIDGET::on_r_button_down(const QPoint& point)
{
    m_start_point = m_end_point = mapToParent(point);
}

void TOLV_ZOOM_DRAG_WIDGET::stop_event_filter()
{
    hide();
    m_label->hide();
    if (m_view != nullptr)
        m_view->setCursor(tolv_get_cursor(TOLV_ZOOM_IN_CURSOR));
    if (is_under_way())
        m_event_loop->exit(0);
}

void TOLV_ZOOM_DRAG_WIDGET::draw_line(QPainter& painter)
{
    painter.setFont(*TOLV_FONT(TOLV_RUI_ZOOM_DRAG_FONT).get_font());
    painter.setPen(QPen(QApplication::palette().color(QPalette::Current, QPalette::Highlight), 2.0));
    QPainterPath path(m_start_point);
    path.lineTo(m_end_point);
    painter.drawPath(path);
    if (!m_use_zoom_drag)
        return;
    update_percent();
    update_label();
}

void TOLV_ZOOM_DRAG_WIDGET::update_percent()
{
    const int rise = m_start_point.y() - m_end_point.y();
    m_zoom_percent = std::max(100 + rise * PERCENT_PER_PIXEL, LEAST_PERCENT);
    m_view->setCursor(tolv_get_cursor(rise < 0 ? TOLV_ZOOM_OUT_CURSOR : TOLV_ZOOM_IN_CURSOR));
}

void TOLV_ZOOM_DRAG_WIDGET::update_label()
{
    const QString text = QString::number(m_zoom_percent, 'g', 6) + QLatin1Char('%');
    const QFontMetrics metrics = m_label->fontMetrics();
    const bool is_down = m_end_point.y() > m_start_point.y();
    m_label->setText(text);
    m_label->setFixedWidth(metrics.boundingRect(text).width() + metrics.averageCharWidth());
    m_label->move(m_start_point.x() - LABEL_OFFSET, m_start_point.y() - (is_down ? LABEL_OFFSET : 0));
    m_label->show();
}
