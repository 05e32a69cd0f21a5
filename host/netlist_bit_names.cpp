#include "netlist_bit_names.h"

namespace
{
/// The index that the source has for a bit of a net.
std::int64_t get_index(const NETLIST_NET& net, std::uint32_t position)
{
    return net.offset + static_cast<std::int64_t>(net.is_upward ? net.bits.count - 1 - position : position);
}
} // namespace

NETLIST_BIT_NAMES::NETLIST_BIT_NAMES(const NETLIST& netlist, const NETLIST_MODULE& module)
    : m_netlist(&netlist), m_module(&module)
{
    add_names(false);
    add_names(true);
}

std::string NETLIST_BIT_NAMES::get_text(NETLIST_RANGE bits) const
{
    std::string text;
    int pieces = 0;
    for (std::uint32_t left = bits.count; left > 0; ++pieces)
    {
        text += pieces > 0 ? ", " : "";
        const bool is_net = m_module->bits[bits.first + left - 1].is_net();
        text += is_net ? get_piece(bits, left) : get_constants(bits, left);
    }
    return pieces > 1 ? "{" + text + "}" : text;
}

void NETLIST_BIT_NAMES::add_names(bool hidden)
{
    for (std::uint32_t i = 0; i < m_module->nets.size(); ++i)
    {
        const NETLIST_NET& net = m_module->nets[i];
        for (std::uint32_t position = 0; net.has_hidden_name == hidden && position < net.bits.count; ++position)
        {
            const NETLIST_BIT bit = m_module->bits[net.bits.first + position];
            if (bit.is_net())
                m_positions.emplace(bit.get_net(), POSITION{i, position});
        }
    }
}

/// The run of constants that ends at the highest bit left, as a Verilog number.
std::string NETLIST_BIT_NAMES::get_constants(NETLIST_RANGE bits, std::uint32_t& left) const
{
    std::string digits;
    while (left > 0 && !m_module->bits[bits.first + left - 1].is_net())
        digits += m_module->bits[bits.first + --left].get_constant();
    return std::to_string(digits.size()) + "'b" + digits;
}

/// The run of neighbouring bits of one net that ends at the highest bit left.
std::string NETLIST_BIT_NAMES::get_piece(NETLIST_RANGE bits, std::uint32_t& left) const
{
    const std::uint32_t number = m_module->bits[bits.first + left - 1].get_net();
    const auto high = m_positions.find(number);
    --left;
    if (high == m_positions.end())
        return "#" + std::to_string(number);
    const NETLIST_NET& net = m_module->nets[high->second.net];
    std::uint32_t low = high->second.position;
    while (left > 0 && low > 0)
    {
        const NETLIST_BIT next = m_module->bits[bits.first + left - 1];
        const auto found = next.is_net() ? m_positions.find(next.get_net()) : m_positions.end();
        if (found == m_positions.end() || found->second.net != high->second.net || found->second.position != low - 1)
            break;
        --low;
        --left;
    }
    std::string text(m_netlist->names.get(net.name));
    if (low == 0 && high->second.position == net.bits.count - 1)
        return text;
    text += "[" + std::to_string(get_index(net, high->second.position));
    if (low != high->second.position)
        text += ":" + std::to_string(get_index(net, low));
    return text + "]";
}
