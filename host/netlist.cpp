#include "netlist.h"

namespace
{
constexpr std::uint32_t CONSTANT_FLAG = 0x80000000;

template <typename ELEMENT>
gsl::span<const ELEMENT> get_piece(const std::vector<ELEMENT>& all, NETLIST_RANGE range)
{
    return gsl::span<const ELEMENT>(all).subspan(range.first, range.count);
}
} // namespace

NETLIST_BIT NETLIST_BIT::from_net(std::uint32_t net)
{
    return NETLIST_BIT(net);
}

NETLIST_BIT NETLIST_BIT::from_constant(char sign)
{
    return NETLIST_BIT(CONSTANT_FLAG | static_cast<unsigned char>(sign));
}

bool NETLIST_BIT::is_net() const
{
    return (m_code & CONSTANT_FLAG) == 0;
}

std::uint32_t NETLIST_BIT::get_net() const
{
    return m_code;
}

char NETLIST_BIT::get_constant() const
{
    return static_cast<char>(m_code & 0x7f);
}

NETLIST_BIT::NETLIST_BIT(std::uint32_t code) : m_code(code)
{
}

gsl::span<const NETLIST_BIT> NETLIST_MODULE::get_bits(NETLIST_RANGE range) const
{
    return get_piece(bits, range);
}

gsl::span<const NETLIST_CONNECTION> NETLIST_MODULE::get_connections(NETLIST_RANGE range) const
{
    return get_piece(connections, range);
}

gsl::span<const NETLIST_PROPERTY> NETLIST_MODULE::get_properties(NETLIST_RANGE range) const
{
    return get_piece(properties, range);
}

NETLIST_NAME NETLIST_MODULE::find_property(NETLIST_RANGE range, NETLIST_NAME key) const
{
    for (const NETLIST_PROPERTY& property : get_properties(range))
    {
        if (property.key == key)
            return property.value;
    }
    return NETLIST_NAMES::NONE;
}

bool NETLIST::is_instance(const NETLIST_CELL& cell) const
{
    return cell.module != NETLIST_CELL::NO_MODULE && !modules[cell.module].is_library;
}

std::string_view NETLIST::get_display_name(const NETLIST_MODULE& module) const
{
    const NETLIST_NAME hdl_name = module.find_property(module.attributes, names.find("hdlname"));
    std::string_view name = names.get(hdl_name);
    if (!name.empty() && name.front() == '\\')
        name.remove_prefix(1);
    return name.empty() ? names.get(module.name) : name;
}

const char* netlist_get_direction_text(NETLIST_DIRECTION direction)
{
    switch (direction)
    {
    case NETLIST_DIRECTION::INPUT:
        return "input";
    case NETLIST_DIRECTION::OUTPUT:
        return "output";
    case NETLIST_DIRECTION::INOUT:
        return "inout";
    case NETLIST_DIRECTION::UNKNOWN:
        break;
    }
    return "";
}
