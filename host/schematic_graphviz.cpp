#include "graph_layout.h"
#include "schematic_graph_p.h"

namespace
{
const int STEPS = 12; ///< points taken of each curve
const std::size_t MANY_BOXES = 300;

void set_effort(GRAPH_LAYOUT& layout, std::size_t box_count)
{
    layout.set_attribute("nodesep", "0.3");
    layout.set_attribute("ranksep", "0.6");
    // The search for the best order grows faster than the graph: a good one must do for a large one.
    layout.set_attribute("nslimit", box_count > MANY_BOXES ? "2" : "20");
    layout.set_attribute("mclimit", box_count > MANY_BOXES ? "0.3" : "1");
}

std::vector<std::uint32_t> find_boxes(const SCHEMATIC& schematic, SCHEMATIC::KIND kind)
{
    std::vector<std::uint32_t> result;
    for (std::uint32_t i = 0; i < schematic.boxes.size(); ++i)
    {
        if (schematic.boxes[i].kind == kind)
            result.push_back(i);
    }
    return result;
}

std::vector<QPointF> get_points(const std::vector<GRAPH_LAYOUT::CURVE>& curves)
{
    std::vector<QPointF> points;
    for (const GRAPH_LAYOUT::CURVE& p : curves)
    {
        for (int i = 0; i <= STEPS; ++i)
        {
            const double t = double(i) / STEPS;
            const double s = 1 - t;
            points.push_back(s * s * s * p[0] + 3 * s * s * t * p[1] + 3 * s * t * t * p[2] + t * t * t * p[3]);
        }
    }
    return points;
}
} // namespace

bool schematic_run_graphviz(const SCHEMATIC_GRAPH& graph, const SCHEMATIC& schematic, SCHEMATIC_PLACES* places)
{
    GRAPH_LAYOUT layout;
    set_effort(layout, schematic.boxes.size());
    for (std::size_t i = 0; i < schematic.boxes.size(); ++i)
    {
        const QSize size = schematic.boxes[i].rect.size();
        layout.add_box(QSize(size.width() + graph.left_margins[i] + graph.right_margins[i], size.height()));
    }
    // The ports of the module stand at its edges.
    layout.set_first_column(find_boxes(schematic, SCHEMATIC::KIND::INPUT_PORT));
    layout.set_last_column(find_boxes(schematic, SCHEMATIC::KIND::OUTPUT_PORT));
    for (const SCHEMATIC_GRAPH::EDGE& edge : graph.edges)
        layout.add_line(edge.from.box, edge.to.box);
    if (!layout.run())
        return false;
    for (std::uint32_t i = 0; i < schematic.boxes.size(); ++i)
        places->boxes.push_back(layout.get_box(i));
    for (std::uint32_t i = 0; i < graph.edges.size(); ++i)
        places->edges.push_back(get_points(layout.get_line(i)));
    return true;
}
