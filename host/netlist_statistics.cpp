#include "netlist_statistics.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

namespace
{
constexpr std::uint64_t LIMIT = std::numeric_limits<std::uint64_t>::max();

void add_up_to_limit(std::uint64_t& sum, std::uint64_t value, std::uint64_t times)
{
    const bool is_too_much = value != 0 && times > (LIMIT - sum) / value;
    sum = is_too_much ? LIMIT : sum + value * times;
}

/// How often each module stands below a module, that one once.
std::vector<std::uint64_t> count_occurrences(const NETLIST& netlist, std::uint32_t top)
{
    std::vector<std::uint64_t> counts(netlist.modules.size(), 0);
    counts[top] = 1;
    for (auto index = netlist.bottom_up.rbegin(); index != netlist.bottom_up.rend(); ++index)
    {
        const NETLIST_MODULE& module = netlist.modules[*index];
        for (std::size_t i = 0; counts[*index] > 0 && i < module.instances.size(); ++i)
            add_up_to_limit(counts[module.cells[module.instances[i]].module], counts[*index], 1);
    }
    return counts;
}

std::uint32_t count_levels(const NETLIST& netlist, std::uint32_t top)
{
    std::vector<std::uint32_t> levels(netlist.modules.size(), 1);
    for (const std::uint32_t index : netlist.bottom_up)
    {
        const NETLIST_MODULE& module = netlist.modules[index];
        for (const std::uint32_t cell : module.instances)
            levels[index] = std::max(levels[index], levels[module.cells[cell].module] + 1);
    }
    return levels[top];
}
} // namespace

std::vector<NETLIST_TYPE_COUNT> netlist_count_by_type(const NETLIST& netlist, std::uint32_t module)
{
    const std::vector<std::uint64_t> occurrences = count_occurrences(netlist, module);
    std::unordered_map<NETLIST_NAME, NETLIST_TYPE_COUNT> by_type;
    for (std::uint32_t i = 0; i < netlist.modules.size(); ++i)
    {
        if (occurrences[i] == 0)
            continue;
        for (const NETLIST_CELL& cell : netlist.modules[i].cells)
        {
            NETLIST_TYPE_COUNT& count = by_type[cell.type];
            count.type = cell.type;
            count.is_module = netlist.is_instance(cell);
            count.module = count.is_module ? cell.module : NETLIST_CELL::NO_MODULE;
            count.in_module += i == module ? 1 : 0;
            add_up_to_limit(count.in_hierarchy, occurrences[i], 1);
        }
    }
    std::vector<NETLIST_TYPE_COUNT> counts;
    counts.reserve(by_type.size());
    for (const auto& [type, count] : by_type)
        counts.push_back(count);
    std::sort(counts.begin(), counts.end(),
              [&netlist](const NETLIST_TYPE_COUNT& a, const NETLIST_TYPE_COUNT& b)
              {
                  return a.in_hierarchy != b.in_hierarchy ? a.in_hierarchy > b.in_hierarchy
                                                          : netlist.names.get(a.type) < netlist.names.get(b.type);
              });
    return counts;
}

NETLIST_TOTALS netlist_get_totals(const NETLIST& netlist, std::uint32_t module)
{
    const std::vector<std::uint64_t> occurrences = count_occurrences(netlist, module);
    NETLIST_TOTALS totals;
    totals.levels = count_levels(netlist, module);
    for (std::uint32_t i = 0; i < netlist.modules.size(); ++i)
    {
        const NETLIST_MODULE& each = netlist.modules[i];
        add_up_to_limit(totals.leaf_cells, each.cells.size() - each.instances.size(), occurrences[i]);
        add_up_to_limit(totals.instances, each.instances.size(), occurrences[i]);
        add_up_to_limit(totals.nets, each.nets.size(), occurrences[i]);
        std::uint64_t width = 0;
        for (const NETLIST_NET& net : each.nets)
            width += net.bits.count;
        add_up_to_limit(totals.net_bits, width, occurrences[i]);
    }
    return totals;
}
