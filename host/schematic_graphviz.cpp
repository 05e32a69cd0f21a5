#include "schematic_graph_p.h"

#include <graphviz/gvc.h>

#include <algorithm>
#include <mutex>
#include <string>

namespace
{
const double UNITS_PER_INCH = 72;
const int STEPS = 12; ///< points taken of each curve
const std::size_t MANY_BOXES = 300;

/// A text that Graphviz may keep; it takes texts by pointers to what it might change, and changes none.
char* get_text(const char* text)
{
    return const_cast<char*>(text);
}

void set_size(Agnode_t* node, int width, int height)
{
    agsafeset(node, get_text("width"), get_text(std::to_string(width / UNITS_PER_INCH).c_str()), get_text(""));
    agsafeset(node, get_text("height"), get_text(std::to_string(height / UNITS_PER_INCH).c_str()), get_text(""));
}

void set_default(Agraph_t* graph, int kind, const char* name, const char* value)
{
    agattr(graph, kind, get_text(name), get_text(value));
}

void set_defaults(Agraph_t* graph, std::size_t box_count)
{
    set_default(graph, AGRAPH, "rankdir", "LR");
    set_default(graph, AGRAPH, "nodesep", "0.3");
    set_default(graph, AGRAPH, "ranksep", "0.6");
    // The search for the best order grows faster than the graph: a good one must do for a large one.
    set_default(graph, AGRAPH, "nslimit", box_count > MANY_BOXES ? "2" : "20");
    set_default(graph, AGRAPH, "mclimit", box_count > MANY_BOXES ? "0.3" : "1");
    set_default(graph, AGNODE, "shape", "box");
    set_default(graph, AGNODE, "fixedsize", "true");
    set_default(graph, AGNODE, "label", "");
    set_default(graph, AGEDGE, "arrowhead", "none");
}

/// The ports of the module stand at its edges.
void add_edge_column(Agraph_t* graph, const SCHEMATIC& schematic, const std::vector<Agnode_t*>& nodes,
                     SCHEMATIC::KIND kind, const char* name, const char* rank)
{
    Agraph_t* const column = agsubg(graph, get_text(name), 1);
    agsafeset(column, get_text("rank"), get_text(rank), get_text(""));
    for (std::size_t i = 0; i < nodes.size(); ++i)
    {
        if (schematic.boxes[i].kind == kind)
            agsubnode(column, nodes[i], 1);
    }
}

QPointF get_point(const pointf& point)
{
    return QPointF(point.x, -point.y); // theirs grows upwards
}

void add_curve(const pointf* p, std::vector<QPointF>* points)
{
    for (int i = 0; i <= STEPS; ++i)
    {
        const double t = double(i) / STEPS;
        const double s = 1 - t;
        points->push_back(s * s * s * get_point(p[0]) + 3 * s * s * t * get_point(p[1]) +
                          3 * s * t * t * get_point(p[2]) + t * t * t * get_point(p[3]));
    }
}

std::vector<QPointF> get_points(Agedge_t* edge)
{
    std::vector<QPointF> points;
    const splines* const curves = ED_spl(edge);
    if (curves == nullptr)
        return points;
    for (std::size_t i = 0; i < std::size_t(curves->size); ++i)
    {
        const bezier& curve = curves->list[i];
        for (std::size_t j = 0; j + 3 < std::size_t(curve.size); j += 3)
            add_curve(curve.list + j, &points);
    }
    return points;
}
} // namespace

bool schematic_run_graphviz(const SCHEMATIC_GRAPH& graph, const SCHEMATIC& schematic, SCHEMATIC_PLACES* places)
{
    static std::mutex mutex;
    const std::lock_guard<std::mutex> guard(mutex);

    GVC_t* const context = gvContext();
    Agraph_t* const drawing = agopen(get_text("module"), Agdirected, nullptr);
    if (context == nullptr || drawing == nullptr)
        return false;
    set_defaults(drawing, schematic.boxes.size());
    std::vector<Agnode_t*> nodes;
    for (std::size_t i = 0; i < schematic.boxes.size(); ++i)
    {
        nodes.push_back(agnode(drawing, get_text(std::to_string(i).c_str()), 1));
        set_size(nodes.back(), schematic.boxes[i].rect.width() + graph.left_margins[i] + graph.right_margins[i],
                 schematic.boxes[i].rect.height());
    }
    add_edge_column(drawing, schematic, nodes, SCHEMATIC::KIND::INPUT_PORT, "inputs", "source");
    add_edge_column(drawing, schematic, nodes, SCHEMATIC::KIND::OUTPUT_PORT, "outputs", "sink");
    std::vector<Agedge_t*> edges;
    for (std::size_t i = 0; i < graph.edges.size(); ++i)
        edges.push_back(agedge(drawing, nodes[graph.edges[i].from.box], nodes[graph.edges[i].to.box],
                               get_text(std::to_string(i).c_str()), 1));

    const bool is_placed = gvLayout(context, drawing, "dot") == 0;
    if (is_placed)
    {
        for (Agnode_t* node : nodes)
            places->boxes.push_back(get_point(ND_coord(node)));
        for (Agedge_t* edge : edges)
            places->edges.push_back(get_points(edge));
        gvFreeLayout(context, drawing);
    }
    agclose(drawing);
    gvFreeContext(context);
    return is_placed;
}
