#include "schematic_graph_p.h"

#include <algorithm>

std::shared_ptr<const SCHEMATIC> SCHEMATIC::make(const std::shared_ptr<const NETLIST>& netlist, std::uint32_t module)
{
    const NETLIST_MODULE& drawn = netlist->modules[module];
    if (get_box_count(drawn) > LARGEST_BOX_COUNT)
        return nullptr;
    auto schematic = std::make_shared<SCHEMATIC>();
    const SCHEMATIC_GRAPH graph = schematic_build(*netlist, drawn, schematic.get());
    if (!schematic_place(graph, schematic.get()))
        return nullptr;
    return schematic;
}

std::size_t SCHEMATIC::get_box_count(const NETLIST_MODULE& module)
{
    return module.cells.size() + module.ports.size();
}

bool SCHEMATIC::BOX::is_port() const
{
    return kind == KIND::INPUT_PORT || kind == KIND::OUTPUT_PORT || kind == KIND::INOUT_PORT;
}

QRect SCHEMATIC::get_bounds() const
{
    return bounds;
}

std::uint32_t SCHEMATIC::find_item(const QPoint& position) const
{
    const auto box = std::find_if(boxes.begin(), boxes.end(), [&](const BOX& b) { return b.rect.contains(position); });
    return box == boxes.end() ? NONE : std::uint32_t(box - boxes.begin());
}

std::vector<std::uint32_t> SCHEMATIC::find_items_within(const QRect& rect) const
{
    std::vector<std::uint32_t> result;
    for (std::uint32_t i = 0; i < boxes.size(); ++i)
    {
        if (rect.contains(boxes[i].rect))
            result.push_back(i);
    }
    return result;
}

std::uint32_t SCHEMATIC::find_item_of_cell(std::uint32_t cell) const
{
    const auto box =
        std::find_if(boxes.begin(), boxes.end(), [&](const BOX& b) { return !b.is_port() && b.index == cell; });
    return box == boxes.end() ? NONE : std::uint32_t(box - boxes.begin());
}

QRect SCHEMATIC::get_item_rect(std::uint32_t item) const
{
    return boxes[item].rect;
}

std::uint32_t SCHEMATIC::get_cell_of_item(std::uint32_t item) const
{
    return boxes[item].is_port() ? NONE : boxes[item].index;
}

std::uint32_t SCHEMATIC::find_net(const QPoint& position, int distance) const
{
    const auto get_gap = [](int value, int low, int high) { return std::max({low - value, value - high, 0}); };
    std::uint32_t nearest = NONE;
    for (const WIRE& wire : wires)
    {
        const int gap = std::max(get_gap(position.x(), wire.from.x(), wire.to.x()),
                                 get_gap(position.y(), wire.from.y(), wire.to.y()));
        if (gap > distance)
            continue;
        distance = gap - 1;
        nearest = wire.net;
    }
    return nearest;
}

std::vector<std::uint32_t> SCHEMATIC::get_nets_of_item(std::uint32_t item) const
{
    std::vector<std::uint32_t> found;
    for (const PIN& pin : boxes[item].pins)
    {
        const std::uint32_t net = pin.is_connected ? find_net(pin.position, 0) : NONE;
        if (net != NONE)
            found.push_back(net);
    }
    std::sort(found.begin(), found.end());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}
