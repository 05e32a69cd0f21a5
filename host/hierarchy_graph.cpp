#include "hierarchy_graph.h"

#include "graph_layout.h"
#include "netlist_error.h"
#include "workbench_text.h"

#include <algorithm>
#include <limits>
#include <map>

namespace
{
const int CHARACTER_WIDTH = 7; ///< room for a character of a name
const int NODE_MARGIN = 10;
const int SMALLEST_NODE_WIDTH = 110;
const int LARGEST_NODE_WIDTH = 300;
const int NODE_HEIGHT = 42;
const int LABEL_HEIGHT = 14;
const int DRAWING_MARGIN = 24;
const int LONGEST_NAME = 80;   ///< in a message
const int LONGEST_CHAIN = 400; ///< likewise
/// Up to so many edges the layout leaves room for the counts; beyond, it would take many times as long.
const std::size_t MANY_EDGES = 400;

using COUNT = std::uint64_t;
const COUNT LARGEST_COUNT = std::numeric_limits<COUNT>::max();

COUNT add(COUNT a, COUNT b)
{
    return a > LARGEST_COUNT - b ? LARGEST_COUNT : a + b;
}

COUNT multiply(COUNT a, COUNT b)
{
    return b != 0 && a > LARGEST_COUNT / b ? LARGEST_COUNT : a * b;
}

int get_label_width(COUNT count)
{
    return int(std::to_string(count).size() + 1) * CHARACTER_WIDTH + 4;
}
} // namespace

class HIERARCHY_GRAPH::BUILDER
{
public:
    explicit BUILDER(HIERARCHY_GRAPH& graph)
        : m_graph(graph), m_netlist(*graph.m_netlist), m_node_of_module(m_netlist.modules.size(), NONE)
    {
    }

    /// The error; empty where all went well.
    QString run()
    {
        QString error = add_nodes();
        if (error.isEmpty())
            error = add_edges();
        if (error.isEmpty())
            error = sort();
        if (!error.isEmpty())
            return error;
        count_instances();
        describe_nodes();
        if (!place())
            return tr("There is not enough memory to draw the hierarchy.");
        sort_neighbours();
        return QString();
    }

private:
    QString add_nodes()
    {
        std::vector<bool> is_top(m_netlist.modules.size(), false);
        for (const std::uint32_t top : m_netlist.top_modules)
        {
            if (top >= m_netlist.modules.size())
                return tr("The netlist is damaged: its top module is not there.");
            is_top[top] = true;
        }
        for (std::uint32_t i = 0; i < m_netlist.modules.size(); ++i)
        {
            if (m_netlist.modules[i].is_library && !is_top[i])
                continue;
            NODE node;
            node.module = i;
            node.is_top = is_top[i];
            m_node_of_module[i] = std::uint32_t(m_graph.m_nodes.size());
            m_graph.m_nodes.push_back(std::move(node));
        }
        if (m_graph.m_nodes.empty())
            return tr("The netlist has no modules.");
        if (m_graph.m_nodes.size() > LARGEST_NODE_COUNT)
            return get_size_error(tr("modules"), m_graph.m_nodes.size(), LARGEST_NODE_COUNT);
        return QString();
    }

    static QString get_size_error(const QString& what, std::size_t count, std::size_t limit)
    {
        //: %1 a number, %2 "modules" or "pairs ...", %3 a number
        return tr("The hierarchy has %1 %2, more than a graph can show (%3).")
            .arg(workbench_format_count(count), what, workbench_format_count(limit));
    }

    QString add_edges()
    {
        for (std::uint32_t i = 0; i < m_graph.m_nodes.size(); ++i)
        {
            const NETLIST_MODULE& module = m_netlist.modules[m_graph.m_nodes[i].module];
            std::map<std::uint32_t, std::size_t> edges; // by child
            for (const std::uint32_t cell : module.instances)
            {
                if (cell >= module.cells.size() || module.cells[cell].module >= m_netlist.modules.size())
                    return tr("The netlist is damaged: the module \"%1\" refers to a module that is not there.")
                        .arg(get_name(i));
                const std::uint32_t child = m_node_of_module[module.cells[cell].module];
                if (child == NONE)
                    continue;
                const auto [entry, is_new] = edges.emplace(child, m_graph.m_edges.size());
                if (is_new)
                    add_edge(i, child, cell);
                ++m_graph.m_edges[entry->second].count;
            }
        }
        if (m_graph.m_edges.size() > LARGEST_EDGE_COUNT)
            return get_size_error(tr("pairs of a module and one that it holds"), m_graph.m_edges.size(),
                                  LARGEST_EDGE_COUNT);
        return QString();
    }

    void add_edge(std::uint32_t parent, std::uint32_t child, std::uint32_t cell)
    {
        EDGE edge;
        edge.parent = parent;
        edge.child = child;
        edge.first_cell = cell;
        m_graph.m_edges.push_back(edge);
        m_graph.m_nodes[parent].children.push_back(child);
        m_graph.m_nodes[child].parents.push_back(parent);
    }

    /// Brings the nodes into an order in which each stands before its children.
    QString sort()
    {
        std::vector<std::size_t> missing; // parents that are not in the order yet
        for (std::uint32_t i = 0; i < m_graph.m_nodes.size(); ++i)
        {
            missing.push_back(m_graph.m_nodes[i].parents.size());
            if (missing.back() == 0)
                m_order.push_back(i);
        }
        for (std::size_t i = 0; i < m_order.size(); ++i)
        {
            for (const std::uint32_t child : m_graph.m_nodes[m_order[i]].children)
            {
                if (--missing[child] == 0)
                    m_order.push_back(child);
            }
        }
        return m_order.size() == m_graph.m_nodes.size() ? QString() : get_cycle_error(missing);
    }

    /// From a node that was left over one comes back to it by going from parent to parent among those left over.
    QString get_cycle_error(const std::vector<std::size_t>& missing) const
    {
        std::vector<std::uint32_t> way;
        auto at =
            std::uint32_t(std::find_if(missing.begin(), missing.end(), [](std::size_t count) { return count > 0; }) -
                          missing.begin());
        while (std::find(way.begin(), way.end(), at) == way.end())
        {
            way.push_back(at);
            const std::vector<std::uint32_t>& parents = m_graph.m_nodes[at].parents;
            at = *std::find_if(parents.begin(), parents.end(), [&](std::uint32_t node) { return missing[node] > 0; });
        }
        way.erase(way.begin(), std::find(way.begin(), way.end(), at));
        QStringList chain(get_name(at));
        for (auto node = way.rbegin(); node != way.rend(); ++node)
            chain << get_name(*node);
        QString text = chain.join(QStringLiteral(" > "));
        if (text.size() > LONGEST_CHAIN)
            text = text.left(LONGEST_CHAIN) + QStringLiteral(" ...");
        return tr("The netlist is damaged: a module contains itself (%1).").arg(text);
    }

    /// Name of a node's module in a message.
    QString get_name(std::uint32_t node) const
    {
        const NETLIST_MODULE& module = m_netlist.modules[m_graph.m_nodes[node].module];
        return QString::fromStdString(netlist_make_printable(m_netlist.get_display_name(module), LONGEST_NAME));
    }

    void count_instances()
    {
        std::vector<std::vector<std::size_t>> edges_of_node(m_graph.m_nodes.size());
        for (std::size_t i = 0; i < m_graph.m_edges.size(); ++i)
            edges_of_node[m_graph.m_edges[i].parent].push_back(i);
        for (const std::uint32_t i : m_order)
        {
            NODE& node = m_graph.m_nodes[i];
            node.instance_count = add(node.instance_count, node.is_top ? 1 : 0);
            for (const std::size_t edge : edges_of_node[i])
            {
                COUNT& count = m_graph.m_nodes[m_graph.m_edges[edge].child].instance_count;
                count = add(count, multiply(node.instance_count, m_graph.m_edges[edge].count));
            }
        }
    }

    void describe_nodes()
    {
        for (NODE& node : m_graph.m_nodes)
        {
            const NETLIST_MODULE& module = m_netlist.modules[node.module];
            node.name = workbench_to_qstring(m_netlist.get_display_name(module));
            node.is_empty = module.leaf_cell_count == 0;
            const QString cells = module.leaf_cell_count == 1
                                      ? tr("1 cell")
                                      : tr("%1 cells").arg(workbench_format_count(module.leaf_cell_count));
            const QString count = workbench_format_count(node.instance_count);
            QString instances = node.instance_count == 1 ? tr("1 instance") : tr("%1 instances").arg(count);
            if (node.is_top && node.instance_count == 1)
                instances = tr("top");
            else if (node.instance_count == LARGEST_COUNT)
                instances = tr("countless instances");
            node.details = tr("%1, %2").arg(instances, cells);
        }
        // All as wide as the widest one: a column is even at both sides.
        int characters = 0;
        for (const NODE& node : m_graph.m_nodes)
            characters = std::max({characters, node.name.size(), node.details.size()});
        const int width =
            qBound(SMALLEST_NODE_WIDTH, characters * CHARACTER_WIDTH + 2 * NODE_MARGIN, LARGEST_NODE_WIDTH);
        for (NODE& node : m_graph.m_nodes)
            node.rect.setSize(QSizeF(width, NODE_HEIGHT));
    }

    bool place()
    {
        GRAPH_LAYOUT layout;
        const std::size_t edge_count = m_graph.m_edges.size();
        const bool is_large = edge_count > MANY_EDGES;
        layout.use_middles_of_sides();
        layout.set_attribute("nodesep", "0.25");
        layout.set_attribute("ranksep", is_large ? "1.2" : "0.5"); // a column of labels stands between two
        // The search for the best order grows faster than the graph: a good one must do for a large one.
        layout.set_attribute("nslimit", is_large ? "1" : "20");
        layout.set_attribute("nslimit1", is_large ? "1" : "20");
        layout.set_attribute("mclimit", is_large ? "0.2" : "1");
        for (const NODE& node : m_graph.m_nodes)
            layout.add_box(node.rect.size().toSize());
        for (const EDGE& edge : m_graph.m_edges)
            layout.add_line(edge.parent, edge.child, is_large ? std::string() : "x" + std::to_string(edge.count));
        if (!layout.run())
            return false;
        for (std::uint32_t i = 0; i < m_graph.m_nodes.size(); ++i)
            place_node(m_graph.m_nodes[i], layout.get_box(i));
        for (std::uint32_t i = 0; i < edge_count; ++i)
            place_edge(m_graph.m_edges[i], layout, i);
        m_graph.m_bounds.adjust(-DRAWING_MARGIN, -DRAWING_MARGIN, DRAWING_MARGIN, DRAWING_MARGIN);
        return true;
    }

    /// At whole units, so that its lines are sharp.
    void place_node(NODE& node, const QPointF& middle)
    {
        node.rect.moveTopLeft((middle - QPointF(node.rect.width() / 2, node.rect.height() / 2)).toPoint());
        m_graph.m_bounds |= node.rect;
    }

    void place_edge(EDGE& edge, const GRAPH_LAYOUT& layout, std::uint32_t number)
    {
        const QRectF& parent = m_graph.m_nodes[edge.parent].rect;
        const QRectF& child = m_graph.m_nodes[edge.child].rect;
        const std::vector<GRAPH_LAYOUT::CURVE> curves = layout.get_line(number);
        if (curves.empty())
        {
            edge.line.moveTo(parent.right(), parent.center().y());
            edge.line.lineTo(child.left(), child.center().y());
        }
        else
        {
            edge.line.moveTo(curves.front()[0]);
        }
        for (const GRAPH_LAYOUT::CURVE& curve : curves)
            edge.line.cubicTo(curve[1], curve[2], curve[3]);
        QPointF middle;
        if (!layout.get_label(number, &middle))
            middle = edge.line.pointAtPercent(0.5);
        edge.label_rect = QRectF(0, 0, get_label_width(edge.count), LABEL_HEIGHT);
        edge.label_rect.moveTopLeft(
            (middle - QPointF(edge.label_rect.width() / 2, edge.label_rect.height() / 2)).toPoint());
        m_graph.m_bounds |= edge.line.boundingRect() | edge.label_rect;
    }

    void sort_neighbours()
    {
        const auto is_above = [this](std::uint32_t a, std::uint32_t b)
        { return m_graph.m_nodes[a].rect.y() < m_graph.m_nodes[b].rect.y(); };
        for (NODE& node : m_graph.m_nodes)
        {
            std::stable_sort(node.parents.begin(), node.parents.end(), is_above);
            std::stable_sort(node.children.begin(), node.children.end(), is_above);
        }
    }

    HIERARCHY_GRAPH& m_graph;
    const NETLIST& m_netlist;
    std::vector<std::uint32_t> m_node_of_module;
    std::vector<std::uint32_t> m_order;
};

HIERARCHY_GRAPH::RESULT HIERARCHY_GRAPH::make(const std::shared_ptr<const NETLIST>& netlist)
{
    auto graph = std::make_shared<HIERARCHY_GRAPH>();
    graph->m_netlist = netlist;
    const QString error = BUILDER(*graph).run();
    if (!error.isEmpty())
        return {nullptr, error};
    return {graph, QString()};
}

const NETLIST& HIERARCHY_GRAPH::get_netlist() const
{
    return *m_netlist;
}

const std::vector<HIERARCHY_GRAPH::NODE>& HIERARCHY_GRAPH::get_nodes() const
{
    return m_nodes;
}

const std::vector<HIERARCHY_GRAPH::EDGE>& HIERARCHY_GRAPH::get_edges() const
{
    return m_edges;
}

QRectF HIERARCHY_GRAPH::get_bounds() const
{
    return m_bounds;
}

std::uint32_t HIERARCHY_GRAPH::find_node(std::uint32_t module) const
{
    const auto node = std::lower_bound(m_nodes.begin(), m_nodes.end(), module,
                                       [](const NODE& n, std::uint32_t wanted) { return n.module < wanted; });
    return node != m_nodes.end() && node->module == module ? std::uint32_t(node - m_nodes.begin()) : NONE;
}

QStringList HIERARCHY_GRAPH::get_path(std::uint32_t node) const
{
    QStringList path;
    while (!m_nodes[node].is_top)
    {
        // A node that is no top has a parent: the graph has no circle, and what nobody instantiates is a top.
        const auto edge =
            std::find_if(m_edges.begin(), m_edges.end(), [node](const EDGE& e) { return e.child == node; });
        if (edge == m_edges.end())
            break;
        const NETLIST_MODULE& parent = m_netlist->modules[m_nodes[edge->parent].module];
        path.prepend(workbench_to_qstring(m_netlist->names.get(parent.cells[edge->first_cell].name)));
        node = edge->parent;
    }
    path.prepend(m_nodes[node].name);
    return path;
}
