#include "netlist_builder.h"

#include "netlist_error.h"

#include <algorithm>
#include <limits>

NETLIST_BUILDER::NETLIST_BUILDER(NETLIST& netlist) : m_netlist(netlist), m_slot{KIND::OBJECT, CONTEXT::TOP, FIELD::NONE}
{
}

void NETLIST_BUILDER::refuse_cell(std::uint32_t module, std::uint32_t cell, const std::string& reason)
{
    m_refused_module = module;
    m_refused_cell = cell;
    m_refusal = reason;
}

bool NETLIST_BUILDER::add_null()
{
    return m_slot.kind == KIND::ANY || fail_kind("null");
}

bool NETLIST_BUILDER::add_boolean(bool value)
{
    return m_slot.kind == KIND::ANY || fail_kind(value ? "true" : "false");
}

bool NETLIST_BUILDER::add_integer(std::int64_t value)
{
    switch (m_slot.kind)
    {
    case KIND::ANY:
        return true;
    case KIND::INTEGER:
        return set_integer(value);
    case KIND::SCALAR:
        return set_text(std::to_string(value));
    case KIND::BIT:
        if (value < 0 || value > NETLIST_BIT::LARGEST_NET)
        {
            return fail("the number " + std::to_string(value) + " is no net number: 0 to " +
                        std::to_string(NETLIST_BIT::LARGEST_NET) + " are");
        }
        return add_bit(NETLIST_BIT::from_net(static_cast<std::uint32_t>(value)));
    default:
        return fail_kind("a number");
    }
}

bool NETLIST_BUILDER::add_unsigned(std::uint64_t value)
{
    if (value <= static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max()))
        return add_integer(static_cast<std::int64_t>(value));
    return add_float(std::to_string(value));
}

bool NETLIST_BUILDER::add_float(std::string_view text)
{
    const std::string shown = netlist_make_printable(text, 40);
    switch (m_slot.kind)
    {
    case KIND::ANY:
        return true;
    case KIND::BIT:
        return fail("the number " + shown + " is no net number: 0 to " + std::to_string(NETLIST_BIT::LARGEST_NET) +
                    " are");
    case KIND::INTEGER:
    case KIND::SCALAR:
        return fail("the number " + shown + " is no whole number, or too large for one");
    default:
        return fail_kind("a number");
    }
}

bool NETLIST_BUILDER::add_text(std::string_view value)
{
    switch (m_slot.kind)
    {
    case KIND::ANY:
        return true;
    case KIND::TEXT:
    case KIND::SCALAR:
        return set_text(value);
    case KIND::BIT:
        if (value == "0" || value == "1" || value == "x" || value == "z")
            return add_bit(NETLIST_BIT::from_constant(value.front()));
        return fail("the text \"" + netlist_make_printable(value) +
                    "\" is no bit: a net number, \"0\", \"1\", \"x\" or \"z\" is");
    default:
        return fail_kind("a text");
    }
}

bool NETLIST_BUILDER::add_key(std::string_view key)
{
    if (m_skipped_levels > 0)
        return true;
    FRAME& frame = m_frames.back();
    frame.key = m_netlist.names.add(key);
    m_slot = find_slot(frame.context, key);
    return check_duplicate(frame.key);
}

bool NETLIST_BUILDER::begin_object()
{
    return begin_container(KIND::OBJECT, "an object");
}

bool NETLIST_BUILDER::end_object()
{
    return end_container();
}

bool NETLIST_BUILDER::begin_list()
{
    return begin_container(KIND::LIST, "a list");
}

bool NETLIST_BUILDER::end_list()
{
    return end_container();
}

bool NETLIST_BUILDER::is_complete() const
{
    return m_is_complete;
}

const std::string& NETLIST_BUILDER::get_reason() const
{
    return m_reason;
}

std::string NETLIST_BUILDER::get_place() const
{
    std::string place;
    for (const FRAME& frame : m_frames)
    {
        std::string step;
        if (frame.context == CONTEXT::BITS)
            step = std::to_string(frame.count);
        else if (frame.key != NETLIST_NAMES::NONE)
            step = netlist_make_printable(m_netlist.names.get(frame.key));
        else
            continue;
        place += (place.empty() ? "" : "/") + step;
    }
    return place;
}

NETLIST_BUILDER::SLOT NETLIST_BUILDER::find_slot(CONTEXT context, std::string_view key)
{
    static constexpr FIELD_ROW rows[] = {
        {"creator", CONTEXT::TOP, {KIND::TEXT, CONTEXT::NONE, FIELD::CREATOR}},
        {"modules", CONTEXT::TOP, {KIND::OBJECT, CONTEXT::MODULES, FIELD::NONE}},
        {nullptr, CONTEXT::MODULES, {KIND::OBJECT, CONTEXT::MODULE, FIELD::NONE}},
        {"attributes", CONTEXT::MODULE, {KIND::OBJECT, CONTEXT::PROPERTIES, FIELD::NONE}},
        {"ports", CONTEXT::MODULE, {KIND::OBJECT, CONTEXT::PORTS, FIELD::NONE}},
        {"cells", CONTEXT::MODULE, {KIND::OBJECT, CONTEXT::CELLS, FIELD::NONE}},
        {"netnames", CONTEXT::MODULE, {KIND::OBJECT, CONTEXT::NETS, FIELD::NONE}},
        {nullptr, CONTEXT::PORTS, {KIND::OBJECT, CONTEXT::PORT, FIELD::NONE}},
        {"direction", CONTEXT::PORT, {KIND::TEXT, CONTEXT::NONE, FIELD::DIRECTION}},
        {"bits", CONTEXT::PORT, {KIND::LIST, CONTEXT::BITS, FIELD::NONE}},
        {"offset", CONTEXT::PORT, {KIND::INTEGER, CONTEXT::NONE, FIELD::OFFSET}},
        {"upto", CONTEXT::PORT, {KIND::INTEGER, CONTEXT::NONE, FIELD::UPTO}},
        {"signed", CONTEXT::PORT, {KIND::INTEGER, CONTEXT::NONE, FIELD::NONE}},
        {nullptr, CONTEXT::CELLS, {KIND::OBJECT, CONTEXT::CELL, FIELD::NONE}},
        {"hide_name", CONTEXT::CELL, {KIND::INTEGER, CONTEXT::NONE, FIELD::HIDE_NAME}},
        {"type", CONTEXT::CELL, {KIND::TEXT, CONTEXT::NONE, FIELD::TYPE}},
        {"parameters", CONTEXT::CELL, {KIND::OBJECT, CONTEXT::PROPERTIES, FIELD::NONE}},
        {"attributes", CONTEXT::CELL, {KIND::OBJECT, CONTEXT::PROPERTIES, FIELD::NONE}},
        {"port_directions", CONTEXT::CELL, {KIND::OBJECT, CONTEXT::PORT_DIRECTIONS, FIELD::NONE}},
        {"connections", CONTEXT::CELL, {KIND::OBJECT, CONTEXT::CONNECTIONS, FIELD::NONE}},
        {nullptr, CONTEXT::PORT_DIRECTIONS, {KIND::TEXT, CONTEXT::NONE, FIELD::PORT_DIRECTION}},
        {nullptr, CONTEXT::CONNECTIONS, {KIND::LIST, CONTEXT::BITS, FIELD::NONE}},
        {nullptr, CONTEXT::NETS, {KIND::OBJECT, CONTEXT::NET, FIELD::NONE}},
        {"hide_name", CONTEXT::NET, {KIND::INTEGER, CONTEXT::NONE, FIELD::HIDE_NAME}},
        {"bits", CONTEXT::NET, {KIND::LIST, CONTEXT::BITS, FIELD::NONE}},
        {"attributes", CONTEXT::NET, {KIND::OBJECT, CONTEXT::PROPERTIES, FIELD::NONE}},
        {"offset", CONTEXT::NET, {KIND::INTEGER, CONTEXT::NONE, FIELD::OFFSET}},
        {"upto", CONTEXT::NET, {KIND::INTEGER, CONTEXT::NONE, FIELD::UPTO}},
        {"signed", CONTEXT::NET, {KIND::INTEGER, CONTEXT::NONE, FIELD::NONE}},
        {nullptr, CONTEXT::PROPERTIES, {KIND::SCALAR, CONTEXT::NONE, FIELD::PROPERTY}},
    };
    for (const FIELD_ROW& row : rows)
    {
        if (row.context == context && (row.key == nullptr || key == row.key))
            return row.slot;
    }
    return {KIND::ANY, CONTEXT::NONE, FIELD::NONE};
}

bool NETLIST_BUILDER::fail(std::string reason)
{
    m_reason = std::move(reason);
    return false;
}

bool NETLIST_BUILDER::fail_kind(const char* found)
{
    static constexpr const char* expected[] = {"anything",
                                               "an object is expected",
                                               "a list is expected",
                                               "a text is expected",
                                               "a whole number is expected",
                                               "a text or a whole number is expected",
                                               "a net number, \"0\", \"1\", \"x\" or \"z\" is expected"};
    const std::string what = std::string(found) + " stands where " + expected[static_cast<int>(m_slot.kind)];
    return fail(m_frames.empty() ? "this is no netlist: " + what : what);
}

bool NETLIST_BUILDER::begin_container(KIND kind, const char* found)
{
    if (m_skipped_levels > 0 || m_slot.kind == KIND::ANY)
    {
        if (static_cast<int>(m_frames.size()) + m_skipped_levels >= DEEPEST_LEVEL)
            return fail("lists and objects are nested more than " + std::to_string(DEEPEST_LEVEL) + " levels deep");
        ++m_skipped_levels;
        return true;
    }
    if (m_slot.kind != kind)
        return fail_kind(found);
    if (is_refused(m_slot.child))
        return fail(m_refusal);
    FRAME frame;
    frame.context = m_slot.child;
    frame.serial = m_next_serial++;
    begin_context(frame.context);
    m_frames.push_back(frame);
    if (frame.context == CONTEXT::BITS)
        m_slot = {KIND::BIT, CONTEXT::NONE, FIELD::BIT};
    return true;
}

bool NETLIST_BUILDER::end_container()
{
    if (m_skipped_levels > 0)
    {
        --m_skipped_levels;
        return true;
    }
    const CONTEXT ended = m_frames.back().context;
    if (ended != CONTEXT::BITS)
        m_frames.back().key = NETLIST_NAMES::NONE;
    if (!end_context(ended))
        return false;
    m_frames.pop_back();
    m_is_complete = m_frames.empty();
    return true;
}

bool NETLIST_BUILDER::is_refused(CONTEXT context) const
{
    return context == CONTEXT::CELL && m_netlist.modules.size() == std::size_t(m_refused_module) + 1 &&
           m_netlist.modules.back().cells.size() == m_refused_cell;
}

bool NETLIST_BUILDER::check_duplicate(NETLIST_NAME key)
{
    if (m_seen_keys.size() < m_frames.size())
        m_seen_keys.resize(m_frames.size());
    std::vector<std::uint32_t>& seen = m_seen_keys[m_frames.size() - 1];
    if (seen.size() <= key)
        seen.resize(std::max<std::size_t>(m_netlist.names.size(), seen.size() * 2));
    if (seen[key] == m_frames.back().serial)
        return fail("the name \"" + netlist_make_printable(m_netlist.names.get(key)) + "\" stands twice in one object");
    seen[key] = m_frames.back().serial;
    return true;
}

/// Makes the record that the values of the object go to. The frame of the object is not there yet: the key at hand is
/// its name.
void NETLIST_BUILDER::begin_context(CONTEXT context)
{
    const NETLIST_NAME name = m_frames.empty() ? NETLIST_NAMES::EMPTY : m_frames.back().key;
    m_has_modules |= context == CONTEXT::MODULES;
    m_has_bits = context == CONTEXT::BITS || (m_has_bits && context == CONTEXT::PROPERTIES);
    switch (context)
    {
    case CONTEXT::MODULE:
        m_netlist.modules.emplace_back();
        get_module().name = name;
        break;
    case CONTEXT::PORT:
        get_module().ports.emplace_back();
        get_module().ports.back().name = name;
        m_has_direction = false;
        break;
    case CONTEXT::CELL:
        get_module().cells.emplace_back();
        get_module().cells.back().name = name;
        m_has_type = false;
        m_has_port_directions = false;
        ++m_cell_serial;
        break;
    case CONTEXT::CONNECTIONS:
        get_module().cells.back().connections.first = static_cast<std::uint32_t>(get_module().connections.size());
        break;
    case CONTEXT::NET:
        get_module().nets.emplace_back();
        get_module().nets.back().name = name;
        break;
    case CONTEXT::PROPERTIES:
        get_properties_owner().first = static_cast<std::uint32_t>(get_module().properties.size());
        break;
    case CONTEXT::BITS:
        if (m_frames.back().context == CONTEXT::CONNECTIONS)
        {
            get_module().connections.emplace_back();
            get_module().connections.back().port = name;
            ++get_module().cells.back().connections.count;
        }
        get_bits_owner().first = static_cast<std::uint32_t>(get_module().bits.size());
        break;
    default:
        break;
    }
}

/// Checks and finishes the object that ends; its frame is still the last.
bool NETLIST_BUILDER::end_context(CONTEXT context)
{
    switch (context)
    {
    case CONTEXT::TOP:
        if (!m_has_modules)
            return fail("this is no netlist: the field \"modules\" is missing");
        return true;
    case CONTEXT::PORT:
        if (!m_has_direction)
            return fail_missing("direction");
        return m_has_bits || fail_missing("bits");
    case CONTEXT::CELL:
        return end_cell();
    case CONTEXT::NET:
        return m_has_bits || fail_missing("bits");
    default:
        return true;
    }
}

bool NETLIST_BUILDER::end_cell()
{
    if (!m_has_type)
        return fail_missing("type");
    if (m_has_port_directions)
        take_port_directions();
    return true;
}

void NETLIST_BUILDER::take_port_directions()
{
    NETLIST_MODULE& module = get_module();
    const NETLIST_RANGE range = module.cells.back().connections;
    for (std::uint32_t i = range.first; i < range.first + range.count; ++i)
    {
        NETLIST_CONNECTION& connection = module.connections[i];
        if (connection.port < m_port_directions.size() &&
            m_port_directions[connection.port].cell_serial == m_cell_serial)
            connection.direction = m_port_directions[connection.port].direction;
    }
}

bool NETLIST_BUILDER::set_text(std::string_view value)
{
    switch (m_slot.field)
    {
    case FIELD::CREATOR:
        m_netlist.creator = value;
        return true;
    case FIELD::TYPE:
        m_has_type = true;
        get_module().cells.back().type = m_netlist.names.add(value);
        return true;
    case FIELD::PROPERTY:
        get_module().properties.push_back({m_frames.back().key, m_netlist.names.add(value)});
        ++get_properties_owner().count;
        return true;
    default:
        return set_direction(value);
    }
}

bool NETLIST_BUILDER::set_integer(std::int64_t value)
{
    NETLIST_MODULE& module = get_module();
    const bool is_port = m_frames.back().context == CONTEXT::PORT;
    switch (m_slot.field)
    {
    case FIELD::HIDE_NAME:
        if (m_frames.back().context == CONTEXT::CELL)
            module.cells.back().has_hidden_name = value != 0;
        else
            module.nets.back().has_hidden_name = value != 0;
        return true;
    case FIELD::UPTO:
        (is_port ? module.ports.back().is_upward : module.nets.back().is_upward) = value != 0;
        return true;
    case FIELD::OFFSET:
        if (value < std::numeric_limits<std::int32_t>::min() || value > std::numeric_limits<std::int32_t>::max())
            return fail("the number " + std::to_string(value) + " is too large for an index");
        (is_port ? module.ports.back().offset : module.nets.back().offset) = static_cast<std::int32_t>(value);
        return true;
    default:
        return true;
    }
}

bool NETLIST_BUILDER::set_direction(std::string_view value)
{
    NETLIST_DIRECTION direction = NETLIST_DIRECTION::UNKNOWN;
    for (const NETLIST_DIRECTION each : {NETLIST_DIRECTION::INPUT, NETLIST_DIRECTION::OUTPUT, NETLIST_DIRECTION::INOUT})
    {
        if (value == netlist_get_direction_text(each))
            direction = each;
    }
    if (direction == NETLIST_DIRECTION::UNKNOWN)
    {
        return fail("the text \"" + netlist_make_printable(value) +
                    "\" is no direction: \"input\", \"output\" or \"inout\" is");
    }
    if (m_slot.field == FIELD::DIRECTION)
    {
        m_has_direction = true;
        get_module().ports.back().direction = direction;
        return true;
    }
    const NETLIST_NAME port = m_frames.back().key;
    if (m_port_directions.size() <= port)
        m_port_directions.resize(m_netlist.names.size());
    m_port_directions[port] = {m_cell_serial, direction};
    m_has_port_directions = true;
    return true;
}

bool NETLIST_BUILDER::add_bit(NETLIST_BIT bit)
{
    get_module().bits.push_back(bit);
    ++get_bits_owner().count;
    ++m_frames.back().count;
    return true;
}

bool NETLIST_BUILDER::fail_missing(const char* field)
{
    return fail("the field \"" + std::string(field) + "\" is missing");
}

NETLIST_MODULE& NETLIST_BUILDER::get_module()
{
    return m_netlist.modules.back();
}

/// The range of the bits at hand. While their list is open its own frame is the last; before, its owner's.
NETLIST_RANGE& NETLIST_BUILDER::get_bits_owner()
{
    const std::size_t last = m_frames.size() - 1;
    const CONTEXT owner = m_frames[m_frames[last].context == CONTEXT::BITS ? last - 1 : last].context;
    if (owner == CONTEXT::PORT)
        return get_module().ports.back().bits;
    return owner == CONTEXT::NET ? get_module().nets.back().bits : get_module().connections.back().bits;
}

/// The range of the attributes or parameters at hand; see get_bits_owner().
NETLIST_RANGE& NETLIST_BUILDER::get_properties_owner()
{
    const std::size_t last = m_frames.size() - 1;
    const FRAME& owner = m_frames[m_frames[last].context == CONTEXT::PROPERTIES ? last - 1 : last];
    if (owner.context == CONTEXT::CELL)
    {
        NETLIST_CELL& cell = get_module().cells.back();
        return m_netlist.names.get(owner.key) == "parameters" ? cell.parameters : cell.attributes;
    }
    return owner.context == CONTEXT::NET ? get_module().nets.back().attributes : get_module().attributes;
}
