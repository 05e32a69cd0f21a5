#include "hierarchy_graph_scene.h"

#include "tolv_color.h"
#include "tolv_font.h"
#include "workbench_text.h"

#include <QFontMetrics>
#include <QGraphicsItem>
#include <QPainter>
#include <QPainterPathStroker>
#include <QStyleOptionGraphicsItem>

#include <algorithm>

namespace
{
const qreal SMALLEST_TEXT_SCALE = 0.45; ///< pixels for a unit: smaller texts cannot be read
const qreal SMALLEST_COUNT_SCALE = 0.6;
const int NAME_SIZE = 13; ///< of letters, in units
const int DETAILS_SIZE = 11;
const int TEXT_MARGIN = 8;
const qreal CORNER_RADIUS = 3;
const qreal CURRENT_WIDTH = 3; ///< of the outline
const qreal ARROW_LENGTH = 9;
const qreal ARROW_WIDTH = 6;
const qreal REACH = 4; ///< around a line that still counts as the line

QFont get_font(TOLV_FONT_RESOURCE resource, int size)
{
    QFont font = *TOLV_FONT(resource).get_font();
    font.setPixelSize(size);
    return font;
}

bool is_in(const std::vector<std::uint32_t>& sorted, std::uint32_t value)
{
    return std::binary_search(sorted.begin(), sorted.end(), value);
}

/// Whether texts can be read from that many pixels for a unit; on paper they always can.
bool is_readable(const QPainter& painter, const HIERARCHY_GRAPH_SCENE::STYLE& style, qreal smallest_scale)
{
    return style.line_width > 0 ||
           QStyleOptionGraphicsItem::levelOfDetailFromTransform(painter.worldTransform()) >= smallest_scale;
}

/// On the screen a line of width 1 is one pixel wide at any scale.
QPen make_pen(const QColor& color, qreal width, const HIERARCHY_GRAPH_SCENE::STYLE& style)
{
    const bool is_on_paper = style.line_width > 0;
    QPen pen(color, is_on_paper ? width * style.line_width : width);
    pen.setCosmetic(!is_on_paper && width <= 1);
    return pen;
}
} // namespace

/// A module: a box with its name, and below it how often it is there.
class HIERARCHY_GRAPH_SCENE::NODE_ITEM : public QGraphicsItem
{
public:
    NODE_ITEM(const HIERARCHY_GRAPH_SCENE& scene, std::uint32_t number)
        : m_scene(scene), m_node(scene.get_graph()->get_nodes()[number]), m_number(number)
    {
        setZValue(1);
        setToolTip(scene.get_node_text(number));
    }

    std::uint32_t get_number() const
    {
        return m_number;
    }

    QRectF boundingRect() const override
    {
        return m_node.rect.adjusted(-CURRENT_WIDTH, -CURRENT_WIDTH, CURRENT_WIDTH, CURRENT_WIDTH);
    }

    QPainterPath shape() const override
    {
        QPainterPath path;
        path.addRect(m_node.rect);
        return path;
    }

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* /*option*/, QWidget* /*widget*/) override
    {
        const STYLE& style = m_scene.get_style();
        const bool is_current = style.shows_selection && m_number == m_scene.get_current_node();
        painter->setPen(make_pen(style.outline, is_current ? CURRENT_WIDTH : 1, style));
        painter->setBrush(get_fill());
        painter->setRenderHint(QPainter::Antialiasing);
        painter->drawRoundedRect(m_node.rect.adjusted(0.5, 0.5, -0.5, -0.5), CORNER_RADIUS, CORNER_RADIUS);
        if (is_readable(*painter, style, SMALLEST_TEXT_SCALE))
            paint_texts(*painter);
    }

private:
    QColor get_fill() const
    {
        const STYLE& style = m_scene.get_style();
        if (style.shows_selection && is_in(m_scene.get_selection(), m_number))
            return style.selected_fill;
        if (m_node.is_top)
            return style.top_fill;
        return m_node.is_empty ? style.empty_fill : style.fill;
    }

    void paint_texts(QPainter& painter) const
    {
        const STYLE& style = m_scene.get_style();
        const QRectF room = m_node.rect.adjusted(TEXT_MARGIN, 3, -TEXT_MARGIN, -3);
        const QRectF upper(room.x(), room.y(), room.width(), room.height() / 2);
        painter.setPen(m_node.is_top ? style.top_name : style.name);
        painter.setFont(m_node.is_top ? style.top_name_font : style.name_font);
        paint_text(painter, upper, m_node.name);
        painter.setPen(style.details);
        painter.setFont(style.details_font);
        paint_text(painter, upper.translated(0, upper.height()), m_node.details);
    }

    static void paint_text(QPainter& painter, const QRectF& rect, const QString& text)
    {
        // Letters of a font in pixels measure the same on any device.
        const QString elided = QFontMetricsF(painter.font()).elidedText(text, Qt::ElideMiddle, rect.width());
        painter.drawText(rect, int(Qt::AlignCenter) | int(Qt::TextSingleLine), elided);
    }

    const HIERARCHY_GRAPH_SCENE& m_scene;
    const HIERARCHY_GRAPH::NODE& m_node;
    std::uint32_t m_number;
};

/// A line from a module to one that it holds, with the number of instances.
class HIERARCHY_GRAPH_SCENE::EDGE_ITEM : public QGraphicsItem
{
public:
    EDGE_ITEM(const HIERARCHY_GRAPH_SCENE& scene, std::uint32_t number)
        : m_scene(scene), m_edge(scene.get_graph()->get_edges()[number]),
          m_text(QChar(0x00d7) + workbench_format_count(m_edge.count))
    {
        QPainterPathStroker stroker;
        stroker.setWidth(2 * REACH);
        m_shape = stroker.createStroke(m_edge.line);
        setToolTip(scene.get_edge_text(number));
        make_arrow();
    }

    QRectF boundingRect() const override
    {
        return m_shape.boundingRect() | m_edge.label_rect | m_arrow.boundingRect();
    }

    QPainterPath shape() const override
    {
        return m_shape;
    }

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* /*option*/, QWidget* /*widget*/) override
    {
        const STYLE& style = m_scene.get_style();
        const bool is_lit = this->is_lit();
        const QColor color = is_lit ? style.lit_edge : style.edge;
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(make_pen(color, is_lit ? 2 : 1, style));
        painter->setBrush(Qt::NoBrush);
        painter->drawPath(m_edge.line);
        painter->setPen(Qt::NoPen);
        painter->setBrush(color);
        painter->drawPolygon(m_arrow);
        if (is_readable(*painter, style, SMALLEST_COUNT_SCALE))
            paint_count(*painter, color);
    }

    void update_level()
    {
        setZValue(is_lit() ? 0.5 : 0); // above the other edges, below the modules
        update();
    }

private:
    bool is_lit() const
    {
        const std::vector<std::uint32_t>& selection = m_scene.get_selection();
        return m_scene.get_style().shows_selection &&
               (is_in(selection, m_edge.parent) || is_in(selection, m_edge.child));
    }

    /// Points along the end of the line.
    void make_arrow()
    {
        const QPointF tip = m_edge.line.currentPosition();
        const qreal length = m_edge.line.length();
        const QPointF before =
            m_edge.line.pointAtPercent(length > ARROW_LENGTH ? m_edge.line.percentAtLength(length - ARROW_LENGTH) : 0);
        const QLineF axis(tip, before);
        QLineF side = axis.normalVector();
        side.setLength(ARROW_WIDTH / 2);
        const QPointF half = side.p2() - side.p1();
        m_arrow << tip << axis.p2() + half << axis.p2() - half;
    }

    /// On the ground of the drawing, which keeps lines out of the number.
    void paint_count(QPainter& painter, const QColor& color) const
    {
        const STYLE& style = m_scene.get_style();
        painter.setPen(Qt::NoPen);
        painter.setBrush(style.background);
        painter.drawRect(m_edge.label_rect);
        painter.setPen(is_lit() ? color : style.details);
        painter.setFont(style.details_font);
        painter.drawText(m_edge.label_rect, int(Qt::AlignCenter) | int(Qt::TextSingleLine), m_text);
    }

    const HIERARCHY_GRAPH_SCENE& m_scene;
    const HIERARCHY_GRAPH::EDGE& m_edge;
    QString m_text;
    QPainterPath m_shape;
    QPolygonF m_arrow;
};

HIERARCHY_GRAPH_SCENE::HIERARCHY_GRAPH_SCENE(QObject* parent) : TOLV_GRAPHICS_SCENE(parent)
{
    apply_drawing_resources();
}

HIERARCHY_GRAPH_SCENE::~HIERARCHY_GRAPH_SCENE()
{
    clear(); // the items refer to the graph
}

void HIERARCHY_GRAPH_SCENE::set_graph(std::shared_ptr<const HIERARCHY_GRAPH> graph)
{
    m_selection.clear();
    m_current_node = NONE;
    m_node_items.clear();
    m_edge_items.clear();
    clear();
    m_graph = std::move(graph);
    setSceneRect(m_graph != nullptr ? m_graph->get_bounds() : QRectF());
    for (std::uint32_t i = 0; m_graph != nullptr && i < m_graph->get_edges().size(); ++i)
    {
        m_edge_items.push_back(new EDGE_ITEM(*this, i));
        addItem(m_edge_items.back());
    }
    for (std::uint32_t i = 0; m_graph != nullptr && i < m_graph->get_nodes().size(); ++i)
    {
        m_node_items.push_back(new NODE_ITEM(*this, i));
        addItem(m_node_items.back());
    }
    emit selection_of_nodes_changed();
}

const std::shared_ptr<const HIERARCHY_GRAPH>& HIERARCHY_GRAPH_SCENE::get_graph() const
{
    return m_graph;
}

const std::vector<std::uint32_t>& HIERARCHY_GRAPH_SCENE::get_selection() const
{
    return m_selection;
}

void HIERARCHY_GRAPH_SCENE::select(std::vector<std::uint32_t> nodes)
{
    std::sort(nodes.begin(), nodes.end());
    if (nodes == m_selection)
        return;
    m_selection = std::move(nodes);
    show_selection();
    emit selection_of_nodes_changed();
}

void HIERARCHY_GRAPH_SCENE::toggle(std::uint32_t node)
{
    std::vector<std::uint32_t> nodes = m_selection;
    const auto place = std::lower_bound(nodes.begin(), nodes.end(), node);
    if (place != nodes.end() && *place == node)
        nodes.erase(place);
    else
        nodes.insert(place, node);
    select(std::move(nodes));
}

void HIERARCHY_GRAPH_SCENE::select_within(const QRectF& rect)
{
    std::vector<std::uint32_t> nodes;
    for (std::uint32_t i = 0; m_graph != nullptr && i < m_graph->get_nodes().size(); ++i)
    {
        if (rect.contains(m_graph->get_nodes()[i].rect))
            nodes.push_back(i);
    }
    select(std::move(nodes));
}

QRectF HIERARCHY_GRAPH_SCENE::get_selected_rect() const
{
    QRectF rect;
    for (const std::uint32_t node : m_selection)
        rect |= m_graph->get_nodes()[node].rect;
    return rect;
}

void HIERARCHY_GRAPH_SCENE::set_current_node(std::uint32_t node)
{
    m_current_node = node;
    update();
}

std::uint32_t HIERARCHY_GRAPH_SCENE::get_current_node() const
{
    return m_current_node;
}

std::uint32_t HIERARCHY_GRAPH_SCENE::find_node(const QPointF& position) const
{
    const QList<QGraphicsItem*> found = items(position);
    for (const QGraphicsItem* item : found)
    {
        if (const auto* const node = dynamic_cast<const NODE_ITEM*>(item))
            return node->get_number();
    }
    return NONE;
}

QString HIERARCHY_GRAPH_SCENE::get_node_text(std::uint32_t node) const
{
    const HIERARCHY_GRAPH::NODE& shown = m_graph->get_nodes()[node];
    const NETLIST& netlist = m_graph->get_netlist();
    const QString full_name = workbench_to_qstring(netlist.names.get(netlist.modules[shown.module].name));
    const QString name = shown.name == full_name ? full_name : shown.name + QLatin1Char('\n') + full_name;
    const QString text = tr("%1\n%2\nModules that hold it: %3, that it holds: %4")
                             .arg(name, shown.details)
                             .arg(shown.parents.size())
                             .arg(shown.children.size());
    return text.toHtmlEscaped().replace(QLatin1Char('\n'), QStringLiteral("<br>"));
}

QString HIERARCHY_GRAPH_SCENE::get_edge_text(std::uint32_t edge) const
{
    const HIERARCHY_GRAPH::EDGE& shown = m_graph->get_edges()[edge];
    const QString parent = m_graph->get_nodes()[shown.parent].name;
    const QString child = m_graph->get_nodes()[shown.child].name;
    const QString text =
        shown.count == 1 ? tr("%1 holds one %2").arg(parent, child)
                         : tr("%1 holds %3 instances of %2").arg(parent, child, workbench_format_count(shown.count));
    return text.toHtmlEscaped();
}

const HIERARCHY_GRAPH_SCENE::STYLE& HIERARCHY_GRAPH_SCENE::get_style() const
{
    return m_style;
}

void HIERARCHY_GRAPH_SCENE::apply_drawing_resources()
{
    const auto get_color = [](TOLV_COLOR_RESOURCE resource) { return TOLV_COLOR(resource).get_color(); };
    m_style.background = get_color(TOLV_HIER_BACKGROUND_COLOR);
    m_style.fill = get_color(TOLV_HIER_PARTITION_FILL_COLOR);
    m_style.top_fill = get_color(TOLV_HIER_TOP_LEVEL_BACKGROUND_COLOR);
    m_style.empty_fill = get_color(TOLV_HIER_EMPTY_PARTITION_FILL_COLOR);
    m_style.selected_fill = get_color(TOLV_RTLV_SELECTED_FILL_COLOR);
    m_style.outline = get_color(TOLV_HIER_PARTITION_LINE_COLOR);
    m_style.name = get_color(TOLV_HIER_TEXT_COLOR);
    m_style.top_name = get_color(TOLV_HIER_TOP_LEVEL_TEXT_COLOR);
    m_style.details = get_color(TOLV_HIER_TEXT_COLOR);
    m_style.edge = get_color(TOLV_HIER_TREE_BRANCH_LINE_COLOR);
    m_style.lit_edge = get_color(TOLV_RTLV_SELECTED_NET_LINE_COLOR);
    m_style.name_font = get_font(TOLV_RTLV_MODULE_NAME_FONT, NAME_SIZE);
    m_style.top_name_font = get_font(TOLV_HIER_TOP_LEVEL_FONT, NAME_SIZE);
    m_style.details_font = get_font(TOLV_RTLV_INSTANCE_NAME_FONT, DETAILS_SIZE);
    update();
}

void HIERARCHY_GRAPH_SCENE::print(QPainter* painter, const QRectF& page, qreal line_width)
{
    const QRectF source = sceneRect();
    if (source.isEmpty() || page.isEmpty())
        return;
    const qreal scale = std::min(page.width() / source.width(), page.height() / source.height());
    QRectF target(QPointF(), source.size() * scale);
    target.moveCenter(page.center());
    const STYLE screen_style = m_style;
    m_style.shows_selection = false;
    m_style.line_width = line_width / scale;
    render(painter, target, source, Qt::IgnoreAspectRatio);
    m_style = screen_style;
}

void HIERARCHY_GRAPH_SCENE::drawBackground(QPainter* painter, const QRectF& rect)
{
    painter->fillRect(rect, m_style.background);
}

void HIERARCHY_GRAPH_SCENE::show_selection()
{
    for (EDGE_ITEM* const item : m_edge_items)
        item->update_level();
    for (NODE_ITEM* const item : m_node_items)
        item->update();
}
