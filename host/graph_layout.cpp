#include "graph_layout.h"

#include <graphviz/gvc.h>

#include <mutex>

namespace
{
const double UNITS_PER_INCH = 72;

std::mutex& get_mutex()
{
    static std::mutex mutex;
    return mutex;
}

/// The one context of the process, which is never freed: Graphviz' measuring of texts looks at the font that it measured last,
/// and that font goes with its context. Under the mutex only.
GVC_t* get_context()
{
    static GVC_t* const context = gvContext();
    return context;
}

/// A text that Graphviz may keep; it takes texts by pointers to what it might change, and changes none.
char* get_text(const char* text)
{
    return const_cast<char*>(text);
}

QPointF get_point(const pointf& point)
{
    return QPointF(point.x, -point.y); // theirs grows upwards
}
} // namespace

struct GRAPH_LAYOUT::IMPL
{
    std::lock_guard<std::mutex> guard{get_mutex()};
    GVC_t* context = get_context();
    Agraph_t* graph = agopen(get_text("drawing"), Agdirected, nullptr);
    std::vector<Agnode_t*> nodes;
    std::vector<Agedge_t*> edges;
    bool is_placed = false;

    bool is_usable() const
    {
        return context != nullptr && graph != nullptr;
    }

    void set_default(int kind, const char* name, const char* value) const
    {
        agattr(graph, kind, get_text(name), get_text(value));
    }

    void set_side(Agnode_t* node, const char* name, int length) const
    {
        agsafeset(node, get_text(name), get_text(std::to_string(length / UNITS_PER_INCH).c_str()), get_text(""));
    }

    void set_column(const std::vector<std::uint32_t>& boxes, const char* name, const char* rank) const
    {
        if (!is_usable())
            return;
        Agraph_t* const column = agsubg(graph, get_text(name), 1);
        agsafeset(column, get_text("rank"), get_text(rank), get_text(""));
        for (const std::uint32_t number : boxes)
            agsubnode(column, nodes[number], 1);
    }
};

GRAPH_LAYOUT::GRAPH_LAYOUT() : m_impl(std::make_unique<IMPL>())
{
    if (!m_impl->is_usable())
        return;
    m_impl->set_default(AGRAPH, "rankdir", "LR");
    m_impl->set_default(AGNODE, "shape", "box");
    m_impl->set_default(AGNODE, "fixedsize", "true");
    m_impl->set_default(AGNODE, "label", "");
    m_impl->set_default(AGEDGE, "arrowhead", "none");
    m_impl->set_default(AGEDGE, "label", "");
}

GRAPH_LAYOUT::~GRAPH_LAYOUT()
{
    if (m_impl->is_placed)
        gvFreeLayout(m_impl->context, m_impl->graph);
    if (m_impl->graph != nullptr)
        agclose(m_impl->graph);
}

void GRAPH_LAYOUT::set_attribute(const char* name, const std::string& value)
{
    if (m_impl->is_usable())
        m_impl->set_default(AGRAPH, name, value.c_str());
}

void GRAPH_LAYOUT::use_middles_of_sides()
{
    if (!m_impl->is_usable())
        return;
    m_impl->set_default(AGEDGE, "tailport", "e");
    m_impl->set_default(AGEDGE, "headport", "w");
}

void GRAPH_LAYOUT::add_box(const QSize& size)
{
    if (!m_impl->is_usable())
        return;
    Agnode_t* const node = agnode(m_impl->graph, get_text(std::to_string(m_impl->nodes.size()).c_str()), 1);
    m_impl->set_side(node, "width", size.width());
    m_impl->set_side(node, "height", size.height());
    m_impl->nodes.push_back(node);
}

void GRAPH_LAYOUT::add_line(std::uint32_t from, std::uint32_t to, const std::string& label)
{
    if (!m_impl->is_usable())
        return;
    Agedge_t* const edge = agedge(m_impl->graph, m_impl->nodes[from], m_impl->nodes[to],
                                  get_text(std::to_string(m_impl->edges.size()).c_str()), 1);
    if (!label.empty())
        agsafeset(edge, get_text("label"), get_text(label.c_str()), get_text(""));
    m_impl->edges.push_back(edge);
}

void GRAPH_LAYOUT::set_first_column(const std::vector<std::uint32_t>& boxes)
{
    m_impl->set_column(boxes, "first", "source");
}

void GRAPH_LAYOUT::set_last_column(const std::vector<std::uint32_t>& boxes)
{
    m_impl->set_column(boxes, "last", "sink");
}

bool GRAPH_LAYOUT::run()
{
    m_impl->is_placed = m_impl->is_usable() && gvLayout(m_impl->context, m_impl->graph, "dot") == 0;
    return m_impl->is_placed;
}

QPointF GRAPH_LAYOUT::get_box(std::uint32_t number) const
{
    return get_point(ND_coord(m_impl->nodes[number]));
}

std::vector<GRAPH_LAYOUT::CURVE> GRAPH_LAYOUT::get_line(std::uint32_t number) const
{
    std::vector<CURVE> result;
    const splines* const pieces = ED_spl(m_impl->edges[number]);
    for (std::size_t i = 0; pieces != nullptr && i < std::size_t(pieces->size); ++i)
    {
        const bezier& piece = pieces->list[i];
        for (std::size_t j = 0; j + 3 < std::size_t(piece.size); j += 3)
        {
            const pointf* const p = piece.list + j;
            result.push_back({get_point(p[0]), get_point(p[1]), get_point(p[2]), get_point(p[3])});
        }
    }
    return result;
}

bool GRAPH_LAYOUT::get_label(std::uint32_t number, QPointF* middle) const
{
    const textlabel_t* const label = ED_label(m_impl->edges[number]);
    if (label == nullptr || !label->set)
        return false;
    *middle = get_point(label->pos);
    return true;
}
