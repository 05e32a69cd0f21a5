#include "hierarchy_filter_model.h"

#include "hierarchy_model.h"
#include "workbench_text.h"

#include <limits>

namespace
{
constexpr std::uint64_t LARGEST = std::numeric_limits<std::uint64_t>::max();

std::uint64_t add_up_to_limit(std::uint64_t a, std::uint64_t b)
{
    return a > LARGEST - b ? LARGEST : a + b;
}

QString get_module_name(const NETLIST& netlist, std::uint32_t module)
{
    return workbench_to_qstring(netlist.get_display_name(netlist.modules[module]));
}
} // namespace

// ---- The filter -----------------------------------------------------------------------------------------------------

HIERARCHY_FILTER::HIERARCHY_FILTER(HIERARCHY_MODEL* hierarchy, QObject* parent)
    : TOLV_TREE_FILTER_PROXY_MODEL(parent), m_hierarchy(hierarchy)
{
    setSourceModel(hierarchy);
    setFilterKeyColumn(HIERARCHY_MODEL::COLUMN_INSTANCE);
}

HIERARCHY_FILTER::~HIERARCHY_FILTER() = default;

qulonglong HIERARCHY_FILTER::get_match_count() const
{
    const NETLIST* const netlist = prepare();
    if (netlist == nullptr)
        return 0;
    std::uint64_t count = 0;
    for (const std::uint32_t top : netlist->top_modules)
    {
        count = add_up_to_limit(count, m_matches[top].below);
        count = add_up_to_limit(count, is_top_match(*netlist, top) ? 1 : 0);
    }
    return count;
}

bool HIERARCHY_FILTER::filter_accepts_row_itself(int row, const QModelIndex& parent) const
{
    if (filterRegularExpression().pattern().isEmpty())
        return true;
    const NETLIST* const netlist = prepare();
    if (netlist == nullptr)
        return false;
    if (!parent.isValid())
        return is_top_match(*netlist, netlist->top_modules[static_cast<std::size_t>(row)]);
    return m_matches[m_hierarchy->get_module(parent)].instances[static_cast<std::size_t>(row)];
}

bool HIERARCHY_FILTER::children_is_accepted(int row, const QModelIndex& parent) const
{
    const NETLIST* const netlist = prepare();
    const QModelIndex index = m_hierarchy->index(row, 0, parent);
    return netlist != nullptr && index.isValid() && m_matches[m_hierarchy->get_module(index)].below > 0;
}

/// Brings the matches up to date. Null without a netlist.
const NETLIST* HIERARCHY_FILTER::prepare() const
{
    const std::shared_ptr<const NETLIST>& netlist = m_hierarchy->get_netlist();
    if (netlist == nullptr)
        return nullptr;
    if (m_netlist.lock() == netlist && m_expression == filterRegularExpression())
        return netlist.get();
    m_netlist = netlist;
    m_expression = filterRegularExpression();
    m_matches.clear();
    m_matches.resize(netlist->modules.size());
    for (const std::uint32_t module : netlist->bottom_up)
        m_matches[module] = find_matches(*netlist, netlist->modules[module]);
    return netlist.get();
}

/// As the base class searches its key column, and then several columns as one text.
bool HIERARCHY_FILTER::matches(const QString& instance, const QString& module) const
{
    if (m_expression.pattern().isEmpty())
        return true;
    if (!m_expression.isValid())
        return false;
    return m_expression.match(instance).hasMatch() ||
           m_expression.match(instance + QLatin1Char(' ') + module + QLatin1Char(' ')).hasMatch();
}

/// The modules below have been searched before.
HIERARCHY_FILTER::MATCHES HIERARCHY_FILTER::find_matches(const NETLIST& netlist, const NETLIST_MODULE& module) const
{
    MATCHES result;
    result.instances.reserve(module.instances.size());
    for (const std::uint32_t each : module.instances)
    {
        const NETLIST_CELL& cell = module.cells[each];
        const bool is_match =
            matches(workbench_to_qstring(netlist.names.get(cell.name)), get_module_name(netlist, cell.module));
        result.instances.push_back(is_match);
        result.below = add_up_to_limit(result.below, m_matches[cell.module].below);
        result.below = add_up_to_limit(result.below, is_match ? 1 : 0);
    }
    return result;
}

bool HIERARCHY_FILTER::is_top_match(const NETLIST& netlist, std::uint32_t module) const
{
    const QString name = get_module_name(netlist, module);
    return matches(name, name);
}

// ---- The model ------------------------------------------------------------------------------------------------------

HIERARCHY_FILTER_MODEL::HIERARCHY_FILTER_MODEL(HIERARCHY_MODEL* hierarchy, QObject* parent)
    : TOLV_TREE_FILTER_MODEL(parent)
{
    m_filter_model = new HIERARCHY_FILTER(hierarchy, parent);
}

HIERARCHY_FILTER_MODEL::~HIERARCHY_FILTER_MODEL() = default;
