#include "schematic_painter.h"

#include "tolv_font.h"

#include <QFontMetrics>
#include <QPainter>
#include <QPolygon>

#include <algorithm>

namespace
{
using namespace SCHEMATIC_MEASURES;

const double SMALLEST_TEXT_SCALE = 0.45; ///< pixels for a unit: smaller texts cannot be read
const int TITLE_SIZE = 12;               ///< of letters, in units of the drawing
const int NAME_SIZE = 11;
const int LINE_HEIGHT = 16;
const int JUNCTION_RADIUS = 3;

QFont get_font(TOLV_FONT_RESOURCE resource, int size)
{
    QFont font = *TOLV_FONT(resource).get_font();
    font.setPixelSize(size);
    return font;
}

void draw_text(QPainter& painter, const QRect& rect, int alignment, const QString& text)
{
    painter.drawText(rect, alignment | int(Qt::AlignVCenter) | int(Qt::TextSingleLine),
                     painter.fontMetrics().elidedText(text, Qt::ElideMiddle, rect.width()));
}

bool contains(const std::vector<std::uint32_t>& sorted, std::uint32_t value)
{
    return std::binary_search(sorted.begin(), sorted.end(), value);
}

/// One pixel of the view wide at any scale, or thicker where `width` units are more.
QPen make_pen(const QColor& color, int width)
{
    QPen pen(color, width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
    pen.setCosmetic(width <= 1);
    return pen;
}
} // namespace

SCHEMATIC_PAINTER::SCHEMATIC_PAINTER()
    : m_background(TOLV_RTLV_BACKGROUND_COLOR), m_box_line(TOLV_RTLV_INSTANCE_LINE_COLOR),
      m_selected_fill(TOLV_RTLV_SELECTED_FILL_COLOR), m_net(TOLV_RTLV_NET_LINE_COLOR), m_bus(TOLV_RTLV_BUS_LINE_COLOR),
      m_clock(TOLV_RTLV_CLOCK_NET_LINE_COLOR), m_constant(TOLV_RTLV_CONSTANT_NET_LINE_COLOR),
      m_stub(TOLV_RTLV_OFF_PAGE_CONNECTOR_LINE_COLOR), m_lit_net(TOLV_RTLV_SELECTED_NET_LINE_COLOR),
      m_title_text(TOLV_RTLV_MODULE_NAME_TEXT_COLOR), m_name_text(TOLV_RTLV_INSTANCE_NAME_TEXT_COLOR),
      m_port_text(TOLV_RTLV_PORT_NAME_TEXT_COLOR), m_net_text(TOLV_RTLV_NET_NAME_TEXT_COLOR)
{
    for (const TOLV_COLOR_RESOURCE color :
         {TOLV_RTLV_INSTANCE_FILL_COLOR, TOLV_RTLV_REGISTER_FILL_COLOR, TOLV_RTLV_MULTIPLEXER_FILL_COLOR,
          TOLV_RTLV_OPERATOR_FILL_COLOR, TOLV_RTLV_MEMORY_FILL_COLOR, TOLV_RTLV_ENCRYPTED_INSTANCE_FILL_COLOR,
          TOLV_RTLV_INPUT_PORT_FILL_COLOR, TOLV_RTLV_OUTPUT_PORT_FILL_COLOR, TOLV_RTLV_BIDIR_PORT_FILL_COLOR})
        m_fills.emplace_back(color);
}

void SCHEMATIC_PAINTER::paint(QPainter& painter, const SCHEMATIC& schematic, const QRect& visible, double scale,
                              const STYLE& style) const
{
    painter.save();
    paint_wires(painter, schematic, visible, style, false);
    paint_wires(painter, schematic, visible, style, true);
    for (std::uint32_t i = 0; i < schematic.boxes.size(); ++i)
    {
        const SCHEMATIC::BOX& box = schematic.boxes[i];
        // Labels of the pins stand beside it.
        if (box.rect.adjusted(-LARGEST_LABEL_WIDTH, 0, LARGEST_LABEL_WIDTH, 0).intersects(visible))
            paint_box(painter, box, scale, contains(style.selected_boxes, i));
    }
    painter.restore();
}

QColor SCHEMATIC_PAINTER::get_background_color() const
{
    return m_background.get_color();
}

void SCHEMATIC_PAINTER::paint_wires(QPainter& painter, const SCHEMATIC& schematic, const QRect& visible,
                                    const STYLE& style, bool lit) const
{
    QVector<QLine> lines[3]; // nets, buses, clocks
    for (const SCHEMATIC::WIRE& wire : schematic.wires)
    {
        if (contains(style.lit_nets, wire.net) != lit || !visible.intersects(QRect(wire.from, wire.to)))
            continue;
        const SCHEMATIC::NET& net = schematic.nets[wire.net];
        lines[net.width > 1 ? 1 : net.is_clock ? 2 : 0].append(QLine(wire.from, wire.to));
    }
    const QColor colors[3] = {m_net.get_color(), m_bus.get_color(), m_clock.get_color()};
    for (int i = 0; i < 3; ++i)
    {
        painter.setPen(make_pen(lit ? m_lit_net.get_color() : colors[i], (i == 1 ? 3 : 1) + (lit ? 1 : 0)));
        painter.drawLines(lines[i]);
    }
    for (const SCHEMATIC::JUNCTION& junction : schematic.junctions)
    {
        if (contains(style.lit_nets, junction.net) != lit || !visible.contains(junction.position))
            continue;
        const SCHEMATIC::NET& net = schematic.nets[junction.net];
        painter.setPen(Qt::NoPen);
        painter.setBrush(lit ? m_lit_net.get_color() : colors[net.width > 1 ? 1 : net.is_clock ? 2 : 0]);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.drawEllipse(QPointF(junction.position) + QPointF(0.5, 0.5), JUNCTION_RADIUS, JUNCTION_RADIUS);
        painter.setRenderHint(QPainter::Antialiasing, false);
    }
}

void SCHEMATIC_PAINTER::paint_box(QPainter& painter, const SCHEMATIC::BOX& box, double scale, bool selected) const
{
    const QColor fill = selected ? m_selected_fill.get_color() : m_fills[std::size_t(box.kind)].get_color();
    const bool has_text = scale >= SMALLEST_TEXT_SCALE;
    if (box.is_port())
    {
        paint_port(painter, box, has_text, fill);
    }
    else
    {
        painter.setPen(make_pen(m_box_line.get_color(), 1));
        painter.setBrush(fill);
        painter.drawRect(box.rect.adjusted(0, 0, -1, -1));
        if (has_text)
        {
            const QRect text = box.rect.adjusted(PIN_NAME_MARGIN, 2, -PIN_NAME_MARGIN, 0);
            painter.setFont(get_font(TOLV_RTLV_MODULE_NAME_FONT, TITLE_SIZE));
            painter.setPen(m_title_text.get_color());
            draw_text(painter, QRect(text.x(), text.y(), text.width(), LINE_HEIGHT), Qt::AlignHCenter, box.title);
            painter.setFont(get_font(TOLV_RTLV_INSTANCE_NAME_FONT, NAME_SIZE));
            painter.setPen(m_name_text.get_color());
            draw_text(painter, QRect(text.x(), text.y() + LINE_HEIGHT, text.width(), LINE_HEIGHT), Qt::AlignHCenter,
                      box.name);
        }
    }
    if (has_text)
        paint_pins(painter, box);
}

/// A flag that points along the signal.
void SCHEMATIC_PAINTER::paint_port(QPainter& painter, const SCHEMATIC::BOX& box, bool has_text,
                                   const QColor& fill) const
{
    const QRect rect = box.rect.adjusted(0, 0, -1, -1);
    const int tip = rect.height() / 2;
    const int left_tip = box.kind == SCHEMATIC::KIND::INOUT_PORT ? tip : 0;
    const QPolygon flag({QPoint(rect.left() + left_tip, rect.top()), QPoint(rect.right() - tip, rect.top()),
                         QPoint(rect.right(), rect.center().y()), QPoint(rect.right() - tip, rect.bottom()),
                         QPoint(rect.left() + left_tip, rect.bottom()),
                         QPoint(rect.left(), left_tip > 0 ? rect.center().y() : rect.bottom())});
    painter.setPen(make_pen(m_box_line.get_color(), 1));
    painter.setBrush(fill);
    painter.drawPolygon(flag);
    if (!has_text)
        return;
    painter.setFont(get_font(TOLV_RTLV_PORT_NAME_FONT, TITLE_SIZE));
    painter.setPen(m_name_text.get_color());
    draw_text(painter, rect.adjusted(PIN_NAME_MARGIN, 0, -tip, 0), Qt::AlignHCenter, box.title);
}

void SCHEMATIC_PAINTER::paint_pins(QPainter& painter, const SCHEMATIC::BOX& box) const
{
    const QFont pin_font = get_font(TOLV_RTLV_PORT_NAME_FONT, NAME_SIZE);
    const QFont label_font = get_font(TOLV_RTLV_NET_NAME_FONT, NAME_SIZE);
    for (const SCHEMATIC::PIN& pin : box.pins)
    {
        const int top = pin.position.y() - LINE_HEIGHT / 2;
        painter.setFont(pin_font);
        painter.setPen(m_port_text.get_color());
        const int half = box.rect.width() - 2 * PIN_NAME_MARGIN;
        draw_text(painter,
                  QRect(pin.is_left ? pin.position.x() + PIN_NAME_MARGIN : pin.position.x() - PIN_NAME_MARGIN - half,
                        top, half, LINE_HEIGHT),
                  pin.is_left ? Qt::AlignLeft : Qt::AlignRight, pin.name);
        if (pin.label.isEmpty())
            continue;
        const int direction = pin.is_left ? -1 : 1;
        painter.setPen(make_pen(pin.is_constant ? m_constant.get_color() : m_stub.get_color(), 1));
        painter.drawLine(pin.position.x() + direction, pin.position.y(), pin.position.x() + direction * STUB_LENGTH,
                         pin.position.y());
        const int x = pin.position.x() + direction * (STUB_LENGTH + PIN_NAME_MARGIN);
        painter.setFont(label_font);
        painter.setPen(pin.is_constant ? m_constant.get_color() : m_net_text.get_color());
        draw_text(painter, QRect(pin.is_left ? x - LARGEST_LABEL_WIDTH : x, top, LARGEST_LABEL_WIDTH, LINE_HEIGHT),
                  pin.is_left ? Qt::AlignRight : Qt::AlignLeft, pin.label);
    }
}
