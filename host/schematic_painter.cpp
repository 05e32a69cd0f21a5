#include "schematic_painter.h"

#include "tolv_font.h"

#include <QFontMetrics>
#include <QHash>
#include <QPainter>
#include <QPolygon>
#include <QStaticText>

#include <algorithm>
#include <cmath>

namespace
{
using namespace SCHEMATIC_MEASURES;

const double SMALLEST_TEXT_SCALE = 0.45; ///< pixels for a unit: smaller texts cannot be read
const int TITLE_SIZE = 12;               ///< of letters, in units of the drawing
const int NAME_SIZE = 11;
const int LINE_HEIGHT = 16;
const int JUNCTION_RADIUS = 3;

bool contains(const std::vector<std::uint32_t>& sorted, std::uint32_t value)
{
    return std::binary_search(sorted.begin(), sorted.end(), value);
}
} // namespace

/// A named font in a size of the drawing's own, with its measures and the texts that it has written.
class SCHEMATIC_PAINTER::TEXT_FONT
{
public:
    TEXT_FONT(TOLV_FONT_RESOURCE resource, int size) : m_resource(resource), m_size(size)
    {
        refresh();
    }

    /// Follows a change of the named font. Forgets texts where they have become too many.
    void refresh()
    {
        QFont font = *TOLV_FONT(m_resource).get_font();
        font.setPixelSize(m_size);
        if (font == m_font && m_texts.size() < MOST_TEXTS)
            return;
        m_font = font;
        m_metrics = QFontMetrics(font);
        m_texts.clear();
    }

    /// On one line, in the middle of the height; shortened in the middle where the width is too small.
    void draw(QPainter& painter, const QRect& rect, Qt::Alignment alignment, const QString& text)
    {
        if (text.isEmpty())
            return;
        const TEXT& laid_out = get_text(text, rect.width());
        const int gap = rect.width() - laid_out.width;
        const int indent = alignment == Qt::AlignLeft ? 0 : alignment == Qt::AlignRight ? gap : gap / 2;
        painter.setFont(m_font);
        painter.drawStaticText(rect.x() + indent,
                               rect.y() + (rect.height() - m_metrics.ascent() - m_metrics.descent()) / 2,
                               laid_out.text);
    }

private:
    static constexpr int MOST_TEXTS = 20000;

    struct TEXT
    {
        QStaticText text;
        int width = 0;
    };

    const TEXT& get_text(const QString& text, int width)
    {
        TEXT& result = m_texts[qMakePair(text, width)];
        if (result.width == 0)
        {
            const QString shown = m_metrics.elidedText(text, Qt::ElideMiddle, width);
            result.width = m_metrics.horizontalAdvance(shown);
            result.text.setTextFormat(Qt::PlainText);
            result.text.setText(shown);
        }
        return result;
    }

    TOLV_FONT_RESOURCE m_resource;
    int m_size;
    QFont m_font;
    QFontMetrics m_metrics{QFont()};
    QHash<QPair<QString, int>, TEXT> m_texts; ///< by text and room for it
};

struct SCHEMATIC_PAINTER::TEXT_FONTS
{
    void refresh()
    {
        for (TEXT_FONT* font : {&title, &name, &port, &pin, &label})
            font->refresh();
    }

    TEXT_FONT title{TOLV_RTLV_MODULE_NAME_FONT, TITLE_SIZE};
    TEXT_FONT name{TOLV_RTLV_INSTANCE_NAME_FONT, NAME_SIZE};
    TEXT_FONT port{TOLV_RTLV_PORT_NAME_FONT, TITLE_SIZE};
    TEXT_FONT pin{TOLV_RTLV_PORT_NAME_FONT, NAME_SIZE};
    TEXT_FONT label{TOLV_RTLV_NET_NAME_FONT, NAME_SIZE};
};

/// One paint.
struct SCHEMATIC_PAINTER::CONTEXT
{
    CONTEXT(QPainter& to, double with_scale, const STYLE& with, TEXT_FONTS& texts)
        : painter(to), style(with), fonts(texts), scale(with_scale),
          has_text(with_scale >= SMALLEST_TEXT_SCALE || with.line_width > 0)
    {
    }

    /// On a screen one pixel wide at any scale, or thicker where `width` units are more.
    QPen make_pen(const QColor& color, int width) const
    {
        const bool is_on_paper = style.line_width > 0;
        QPen pen(color, is_on_paper ? width * style.line_width : width, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
        pen.setCosmetic(!is_on_paper && width <= 1);
        return pen;
    }

    /// The same in pixels: a whole number of those of the device.
    double get_width(int width) const
    {
        if (style.line_width > 0)
            return std::max(1.0, std::round(width * style.line_width * scale));
        return width <= 1 ? 1 : std::max(1.0, std::round(width * scale));
    }

    QPainter& painter;
    const STYLE& style;
    TEXT_FONTS& fonts;
    const double scale;
    const bool has_text;
};

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
    m_fonts = std::make_unique<TEXT_FONTS>();
}

SCHEMATIC_PAINTER::~SCHEMATIC_PAINTER() = default;

void SCHEMATIC_PAINTER::paint(QPainter& painter, const SCHEMATIC& schematic, const QRect& visible, double scale,
                              const STYLE& style) const
{
    painter.save();
    m_fonts->refresh();
    const CONTEXT context(painter, scale, style, *m_fonts);
    paint_wires(context, schematic, visible, false);
    paint_wires(context, schematic, visible, true);
    for (std::uint32_t i = 0; i < schematic.boxes.size(); ++i)
    {
        const SCHEMATIC::BOX& box = schematic.boxes[i];
        // Labels of the pins stand beside it.
        if (box.rect.adjusted(-LARGEST_LABEL_WIDTH, 0, LARGEST_LABEL_WIDTH, 0).intersects(visible))
            paint_box(context, box, contains(style.selected_boxes, i));
    }
    painter.restore();
}

QColor SCHEMATIC_PAINTER::get_background_color() const
{
    return m_background.get_color();
}

void SCHEMATIC_PAINTER::paint_wires(const CONTEXT& context, const SCHEMATIC& schematic, const QRect& visible,
                                    bool lit) const
{
    QPainter& painter = context.painter;
    const STYLE& style = context.style;
    const QColor colors[3] = {m_net.get_color(), m_bus.get_color(), m_clock.get_color()};
    const QColor lit_color = m_lit_net.get_color();
    const QTransform transform = painter.transform();
    const double ratio = painter.device()->devicePixelRatioF();
    // Lines along the axes are rectangles, which fill many times faster than pens draw; at whole pixels they are sharp.
    const auto get_pixel = [&](const QPoint& place)
    {
        const QPointF mapped = transform.map(QPointF(place)) * ratio;
        return QPointF(std::floor(mapped.x()), std::floor(mapped.y())) / ratio;
    };
    painter.resetTransform();
    for (const SCHEMATIC::WIRE& wire : schematic.wires)
    {
        if (!visible.intersects(QRect(wire.from, wire.to)) || contains(style.lit_nets, wire.net) != lit)
            continue;
        const SCHEMATIC::NET& net = schematic.nets[wire.net];
        const double width = context.get_width((net.width > 1 ? 3 : 1) + (lit ? 1 : 0));
        const double before = std::floor(width * ratio / 2) / ratio;
        const QRectF rect(get_pixel(wire.from), get_pixel(wire.to) + QPointF(width, width));
        painter.fillRect(rect.translated(-before, -before), lit ? lit_color
                                                                : colors[net.width > 1  ? 1
                                                                         : net.is_clock ? 2
                                                                                        : 0]);
    }
    painter.setTransform(transform);
    for (const SCHEMATIC::JUNCTION& junction : schematic.junctions)
    {
        if (contains(style.lit_nets, junction.net) != lit || !visible.contains(junction.position))
            continue;
        const SCHEMATIC::NET& net = schematic.nets[junction.net];
        painter.setPen(Qt::NoPen);
        painter.setBrush(lit ? lit_color : colors[net.width > 1 ? 1 : net.is_clock ? 2 : 0]);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.drawEllipse(QPointF(junction.position) + QPointF(0.5, 0.5), JUNCTION_RADIUS, JUNCTION_RADIUS);
        painter.setRenderHint(QPainter::Antialiasing, false);
    }
}

void SCHEMATIC_PAINTER::paint_box(const CONTEXT& context, const SCHEMATIC::BOX& box, bool selected) const
{
    const QColor fill = selected ? m_selected_fill.get_color() : m_fills[std::size_t(box.kind)].get_color();
    if (box.is_port())
        paint_port(context, box, fill);
    else
        paint_cell(context, box, fill);
    if (context.has_text)
        paint_pins(context, box);
}

void SCHEMATIC_PAINTER::paint_cell(const CONTEXT& context, const SCHEMATIC::BOX& box, const QColor& fill) const
{
    QPainter& painter = context.painter;
    painter.setPen(context.make_pen(m_box_line.get_color(), 1));
    painter.setBrush(fill);
    painter.drawRect(box.rect.adjusted(0, 0, -1, -1));
    if (!context.has_text)
        return;
    const QRect text = box.rect.adjusted(PIN_NAME_MARGIN, 2, -PIN_NAME_MARGIN, 0);
    const QRect line(text.x(), text.y(), text.width(), LINE_HEIGHT);
    painter.setPen(m_title_text.get_color());
    context.fonts.title.draw(painter, line, Qt::AlignHCenter, box.title);
    painter.setPen(m_name_text.get_color());
    context.fonts.name.draw(painter, line.translated(0, LINE_HEIGHT), Qt::AlignHCenter, box.name);
}

/// A flag that points along the signal.
void SCHEMATIC_PAINTER::paint_port(const CONTEXT& context, const SCHEMATIC::BOX& box, const QColor& fill) const
{
    QPainter& painter = context.painter;
    const QRect rect = box.rect.adjusted(0, 0, -1, -1);
    const int tip = rect.height() / 2;
    const int left_tip = box.kind == SCHEMATIC::KIND::INOUT_PORT ? tip : 0;
    const QPolygon flag({QPoint(rect.left() + left_tip, rect.top()), QPoint(rect.right() - tip, rect.top()),
                         QPoint(rect.right(), rect.center().y()), QPoint(rect.right() - tip, rect.bottom()),
                         QPoint(rect.left() + left_tip, rect.bottom()),
                         QPoint(rect.left(), left_tip > 0 ? rect.center().y() : rect.bottom())});
    painter.setPen(context.make_pen(m_box_line.get_color(), 1));
    painter.setBrush(fill);
    painter.drawPolygon(flag);
    if (!context.has_text)
        return;
    painter.setPen(m_name_text.get_color());
    context.fonts.port.draw(painter, rect.adjusted(PIN_NAME_MARGIN, 0, -tip, 0), Qt::AlignHCenter, box.title);
}

void SCHEMATIC_PAINTER::paint_pins(const CONTEXT& context, const SCHEMATIC::BOX& box) const
{
    const int room = box.rect.width() - 2 * PIN_NAME_MARGIN;
    const QColor color = m_port_text.get_color();
    for (const SCHEMATIC::PIN& pin : box.pins)
    {
        const int left = pin.is_left ? pin.position.x() + PIN_NAME_MARGIN : pin.position.x() - PIN_NAME_MARGIN - room;
        context.painter.setPen(color);
        context.fonts.pin.draw(context.painter, QRect(left, pin.position.y() - LINE_HEIGHT / 2, room, LINE_HEIGHT),
                               pin.is_left ? Qt::AlignLeft : Qt::AlignRight, pin.name);
        if (!pin.label.isEmpty())
            paint_label(context, pin);
    }
}

/// A short line out of the pin, and its text.
void SCHEMATIC_PAINTER::paint_label(const CONTEXT& context, const SCHEMATIC::PIN& pin) const
{
    QPainter& painter = context.painter;
    const QPoint direction(pin.is_left ? -1 : 1, 0);
    painter.setPen(context.make_pen(pin.is_constant ? m_constant.get_color() : m_stub.get_color(), 1));
    painter.drawLine(pin.position + direction, pin.position + direction * STUB_LENGTH);
    const QPoint end = pin.position + direction * (STUB_LENGTH + PIN_NAME_MARGIN);
    painter.setPen(pin.is_constant ? m_constant.get_color() : m_net_text.get_color());
    context.fonts.label.draw(painter,
                             QRect(pin.is_left ? end.x() - LARGEST_LABEL_WIDTH : end.x(), end.y() - LINE_HEIGHT / 2,
                                   LARGEST_LABEL_WIDTH, LINE_HEIGHT),
                             pin.is_left ? Qt::AlignRight : Qt::AlignLeft, pin.label);
}
