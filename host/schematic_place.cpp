#include "schematic_graph_p.h"

#include <algorithm>
#include <cmath>
#include <set>

namespace
{
using namespace SCHEMATIC_MEASURES;

/// Boxes that Graphviz put into one column have their middles at one x.
std::vector<std::uint32_t> find_columns(const std::vector<QPointF>& places)
{
    std::set<long> middles;
    for (const QPointF& place : places)
        middles.insert(std::lround(place.x()));
    std::vector<std::uint32_t> columns;
    columns.reserve(places.size());
    for (const QPointF& place : places)
        columns.push_back(std::uint32_t(std::distance(middles.begin(), middles.find(std::lround(place.x())))));
    return columns;
}
} // namespace

bool schematic_place(const SCHEMATIC_GRAPH& graph, SCHEMATIC* schematic)
{
    SCHEMATIC_PLACES places;
    if (!schematic->boxes.empty() && !schematic_run_graphviz(graph, *schematic, &places))
        return false;
    for (std::size_t i = 0; i < schematic->boxes.size(); ++i)
    {
        SCHEMATIC::BOX& box = schematic->boxes[i];
        box.rect.moveTop(int(std::lround(places.boxes[i].y() - box.rect.height() / 2.0)));
    }
    schematic_route(graph, places, find_columns(places.boxes), schematic);
    return true;
}
