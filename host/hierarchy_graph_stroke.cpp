#include "hierarchy_graph_stroke.h"

#include "tolv_view_arithmetic.h"

#include <QCoreApplication>
#include <QLabel>
#include <QPainter>
#include <QWidget>

#include <algorithm>

namespace
{
const double FACTOR_PER_PIXEL = 0.002;
const double SMALLEST_FACTOR = 0.005;
const int CLICK_SPAN = 9;   ///< pixels
const int LABEL_RISE = 32;  ///< of the label's top above the pointer
const int LABEL_MARGIN = 4; ///< of its text
} // namespace

/// What is seen of a stroke.
class HIERARCHY_GRAPH_STROKE::OVERLAY : public QWidget
{
public:
    explicit OVERLAY(QWidget* parent) : QWidget(parent), label(new QLabel(this))
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setGeometry(parent->rect());
        label->setAutoFillBackground(true);
        label->setMargin(LABEL_MARGIN);
    }

    void show_stroke(const QPoint& from, const QPoint& to, bool is_rectangle)
    {
        m_from = from;
        m_to = to;
        m_is_rectangle = is_rectangle;
        show();
        update();
    }

    QLabel* label;

protected:
    void paintEvent(QPaintEvent* /*event*/) override
    {
        const QColor color = palette().color(QPalette::Highlight);
        QColor fill = color.lighter(150);
        fill.setAlphaF(0.5);
        QPainter painter(this);
        painter.setPen(QPen(color, 2.0));
        painter.setBrush(fill);
        if (m_is_rectangle)
            painter.drawRect(QRect(m_from, m_to));
        else
            painter.drawLine(m_from, m_to);
    }

private:
    QPoint m_from;
    QPoint m_to;
    bool m_is_rectangle = false;
};

HIERARCHY_GRAPH_STROKE::HIERARCHY_GRAPH_STROKE(QWidget* widget, const QPoint& start, const QString& rectangle_text)
    : m_widget(widget), m_overlay(new OVERLAY(widget)), m_start(start), m_end(start), m_rectangle_text(rectangle_text)
{
}

HIERARCHY_GRAPH_STROKE::~HIERARCHY_GRAPH_STROKE()
{
    delete m_overlay.data();
}

HIERARCHY_GRAPH_STROKE::COMMAND HIERARCHY_GRAPH_STROKE::run()
{
    TOLV_DRAG_TRACKER::track(m_widget, m_start, this, 0.0);
    delete m_overlay.data();
    return is_cancelled() || m_widget == nullptr ? COMMAND_NONE : get_command();
}

QRect HIERARCHY_GRAPH_STROKE::get_rect() const
{
    const QRect rect = QRect(m_start, m_end).normalized();
    return m_widget != nullptr ? rect & m_widget->rect() : QRect();
}

double HIERARCHY_GRAPH_STROKE::get_factor() const
{
    const double change = FACTOR_PER_PIXEL * (m_start.y() - m_end.y());
    return get_command() == COMMAND_ZOOM_OUT ? 1 / std::max(1 - change, SMALLEST_FACTOR) : 1 + change;
}

void HIERARCHY_GRAPH_STROKE::update_drag_position(const QPoint& /*from*/, const QPoint& to)
{
    m_end = to;
    if (m_overlay == nullptr)
        return;
    m_overlay->show_stroke(m_start, m_end, get_command() == COMMAND_RECTANGLE);
    show_text();
}

HIERARCHY_GRAPH_STROKE::COMMAND HIERARCHY_GRAPH_STROKE::get_command() const
{
    const QSize span = tolv_get_span(QRect(m_start, m_end).normalized());
    if (span.width() <= CLICK_SPAN && span.height() <= CLICK_SPAN)
        return COMMAND_CLICK;
    const bool is_west = m_end.x() < m_start.x();
    if (m_end.y() < m_start.y())
        return is_west ? COMMAND_ZOOM_IN : COMMAND_ZOOM_OUT;
    return is_west ? COMMAND_ZOOM_FIT : COMMAND_RECTANGLE;
}

QString HIERARCHY_GRAPH_STROKE::get_text() const
{
    const auto get_percent = [](double factor) { return QString::number(factor * 100, 'g', 4); };
    switch (get_command())
    {
    case COMMAND_ZOOM_OUT:
        return QCoreApplication::translate("HIERARCHY_GRAPH_STROKE", "zoom out %1%").arg(get_percent(1 / get_factor()));
    case COMMAND_RECTANGLE:
        return m_rectangle_text;
    case COMMAND_ZOOM_FIT:
        return QCoreApplication::translate("HIERARCHY_GRAPH_STROKE", "zoom fit");
    case COMMAND_ZOOM_IN:
        return QCoreApplication::translate("HIERARCHY_GRAPH_STROKE", "zoom in %1%").arg(get_percent(get_factor()));
    default:
        return QString();
    }
}

/// Beside the pointer, on the side that the stroke goes to.
void HIERARCHY_GRAPH_STROKE::show_text()
{
    QLabel& label = *m_overlay->label;
    const QString text = get_text();
    label.setVisible(!text.isEmpty());
    label.setText(text);
    label.adjustSize();
    const int gap = label.fontMetrics().averageCharWidth();
    const bool is_east = m_end.x() >= m_start.x();
    label.move(is_east ? m_end.x() + gap : m_end.x() - label.width(), m_end.y() - LABEL_RISE);
}
