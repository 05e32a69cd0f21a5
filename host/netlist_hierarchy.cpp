#include "netlist_hierarchy.h"

#include "netlist_error.h"

#include <algorithm>
#include <limits>
#include <unordered_map>

namespace
{
/// Whether the text of an attribute says yes: tools write "1", "00000000000000000000000000000001" and the like.
bool is_set(const NETLIST& netlist, const NETLIST_MODULE& module, const char* attribute)
{
    const NETLIST_NAME value = module.find_property(module.attributes, netlist.names.find(attribute));
    return netlist.names.get(value).find_first_not_of('0') != std::string_view::npos;
}

void find_instances(NETLIST& netlist)
{
    std::unordered_map<NETLIST_NAME, std::uint32_t> by_name;
    for (std::uint32_t i = 0; i < netlist.modules.size(); ++i)
    {
        NETLIST_MODULE& module = netlist.modules[i];
        module.is_library = is_set(netlist, module, "blackbox") || is_set(netlist, module, "whitebox");
        by_name.emplace(module.name, i);
    }
    for (NETLIST_MODULE& module : netlist.modules)
    {
        for (std::uint32_t i = 0; i < module.cells.size(); ++i)
        {
            const auto found = by_name.find(module.cells[i].type);
            if (found == by_name.end())
                continue;
            module.cells[i].module = found->second;
            if (netlist.is_instance(module.cells[i]))
                module.instances.push_back(i);
        }
    }
}

/// Gives connections of unknown direction the one that the module of the cell's type declares.
class DIRECTION_FILLER
{
public:
    explicit DIRECTION_FILLER(NETLIST& netlist) : m_netlist(netlist), m_ports(netlist.modules.size())
    {
    }

    void fill()
    {
        for (NETLIST_MODULE& module : m_netlist.modules)
        {
            for (const NETLIST_CELL& cell : module.cells)
            {
                if (cell.module != NETLIST_CELL::NO_MODULE)
                    fill(module, cell);
            }
        }
    }

private:
    using PORTS = std::unordered_map<NETLIST_NAME, NETLIST_DIRECTION>;

    void fill(NETLIST_MODULE& module, const NETLIST_CELL& cell)
    {
        for (std::uint32_t i = 0; i < cell.connections.count; ++i)
        {
            NETLIST_CONNECTION& connection = module.connections[cell.connections.first + i];
            if (connection.direction != NETLIST_DIRECTION::UNKNOWN)
                continue;
            const PORTS& ports = get_ports(cell.module);
            const auto found = ports.find(connection.port);
            if (found != ports.end())
                connection.direction = found->second;
        }
    }

    const PORTS& get_ports(std::uint32_t module)
    {
        PORTS& ports = m_ports[module];
        if (ports.empty())
        {
            for (const NETLIST_PORT& port : m_netlist.modules[module].ports)
                ports.emplace(port.name, port.direction);
        }
        return ports;
    }

    NETLIST& m_netlist;
    std::vector<PORTS> m_ports; ///< per module, filled when first needed
};

/// Depth-first walk that keeps its own stack.
class BOTTOM_UP_WALK
{
public:
    BOTTOM_UP_WALK(NETLIST& netlist, NETLIST_RECURSION& recursion)
        : m_netlist(netlist), m_recursion(recursion), m_states(netlist.modules.size(), STATE::NEW)
    {
    }

    bool run()
    {
        for (std::uint32_t i = 0; i < m_netlist.modules.size(); ++i)
        {
            if (m_states[i] == STATE::NEW && !walk_from(i))
                return false;
        }
        return true;
    }

private:
    enum class STATE : std::uint8_t
    {
        NEW,
        OPEN, ///< on the stack
        DONE
    };
    struct STEP
    {
        std::uint32_t module;
        std::uint32_t next; ///< the next of its instances to look at
    };

    bool walk_from(std::uint32_t start)
    {
        open(start);
        while (!m_stack.empty())
        {
            STEP& step = m_stack.back();
            const NETLIST_MODULE& module = m_netlist.modules[step.module];
            if (step.next == module.instances.size())
            {
                m_states[step.module] = STATE::DONE;
                m_netlist.bottom_up.push_back(step.module);
                m_stack.pop_back();
                continue;
            }
            const std::uint32_t cell = module.instances[step.next++];
            const std::uint32_t child = module.cells[cell].module;
            if (m_states[child] == STATE::OPEN)
                return report(step.module, cell, child);
            if (m_states[child] == STATE::NEW)
                open(child);
        }
        return true;
    }

    void open(std::uint32_t module)
    {
        m_states[module] = STATE::OPEN;
        m_stack.push_back({module, 0});
    }

    bool report(std::uint32_t module, std::uint32_t cell, std::uint32_t child)
    {
        std::string chain;
        bool is_within = false;
        for (const STEP& step : m_stack)
        {
            is_within |= step.module == child;
            if (is_within)
                chain += netlist_make_printable(get_name(step.module), 80) + " > ";
        }
        chain += netlist_make_printable(get_name(child), 80);
        m_recursion = {module, cell, netlist_make_printable(chain, 400)};
        return false;
    }

    std::string_view get_name(std::uint32_t module) const
    {
        return m_netlist.names.get(m_netlist.modules[module].name);
    }

    NETLIST& m_netlist;
    NETLIST_RECURSION& m_recursion;
    std::vector<STATE> m_states;
    std::vector<STEP> m_stack;
};

std::uint64_t add_up_to_limit(std::uint64_t a, std::uint64_t b)
{
    return a > std::numeric_limits<std::uint64_t>::max() - b ? std::numeric_limits<std::uint64_t>::max() : a + b;
}

void count_leaf_cells(NETLIST& netlist)
{
    for (const std::uint32_t index : netlist.bottom_up)
    {
        NETLIST_MODULE& module = netlist.modules[index];
        module.leaf_cell_count = module.cells.size() - module.instances.size();
        for (const std::uint32_t cell : module.instances)
        {
            const std::uint64_t below = netlist.modules[module.cells[cell].module].leaf_cell_count;
            module.leaf_cell_count = add_up_to_limit(module.leaf_cell_count, below);
        }
    }
}

void find_tops(NETLIST& netlist)
{
    std::vector<bool> is_used(netlist.modules.size(), false);
    for (const NETLIST_MODULE& module : netlist.modules)
    {
        // What a description of the technology is made of is no part of the design.
        for (std::size_t i = 0; !module.is_library && i < module.instances.size(); ++i)
            is_used[module.cells[module.instances[i]].module] = true;
    }
    std::vector<std::uint32_t> others;
    std::vector<std::uint32_t> libraries;
    for (std::uint32_t i = 0; i < netlist.modules.size(); ++i)
    {
        const NETLIST_MODULE& module = netlist.modules[i];
        if (is_set(netlist, module, "top"))
            netlist.top_modules.push_back(i);
        else if (module.is_library)
            libraries.push_back(i);
        else if (!is_used[i])
            others.push_back(i);
    }
    netlist.top_modules.insert(netlist.top_modules.end(), others.begin(), others.end());
    if (netlist.top_modules.empty())
        netlist.top_modules = libraries; // a file of nothing but descriptions
}
} // namespace

bool netlist_resolve_hierarchy(NETLIST& netlist, NETLIST_RECURSION& recursion)
{
    find_instances(netlist);
    DIRECTION_FILLER(netlist).fill();
    netlist.bottom_up.reserve(netlist.modules.size());
    if (!BOTTOM_UP_WALK(netlist, recursion).run())
        return false;
    count_leaf_cells(netlist);
    find_tops(netlist);
    return true;
}
