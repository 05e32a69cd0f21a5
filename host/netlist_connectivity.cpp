#include "netlist_connectivity.h"

#include <algorithm>

NETLIST_CONNECTIVITY::NETLIST_CONNECTIVITY(const NETLIST_MODULE& module)
{
    m_dense.resize(module.bits.size() * 4 + 256);
    for (const NETLIST_PORT& port : module.ports)
        add(module, port.bits, port.direction != NETLIST_DIRECTION::OUTPUT, port.direction != NETLIST_DIRECTION::INPUT);
    for (const NETLIST_CONNECTION& connection : module.connections)
    {
        if (connection.direction != NETLIST_DIRECTION::UNKNOWN)
        {
            add(module, connection.bits, connection.direction != NETLIST_DIRECTION::INPUT,
                connection.direction != NETLIST_DIRECTION::OUTPUT);
        }
    }
}

NETLIST_CONNECTIVITY::COUNTS NETLIST_CONNECTIVITY::get_bit(NETLIST_BIT bit) const
{
    if (!bit.is_net())
        return {};
    if (bit.get_net() < m_dense.size())
        return m_dense[bit.get_net()];
    const auto found = m_sparse.find(bit.get_net());
    return found == m_sparse.end() ? COUNTS() : found->second;
}

NETLIST_CONNECTIVITY::NET_COUNTS NETLIST_CONNECTIVITY::get_net(const NETLIST_MODULE& module,
                                                               const NETLIST_NET& net) const
{
    NET_COUNTS sum;
    for (const NETLIST_BIT bit : module.get_bits(net.bits))
    {
        const COUNTS counts = get_bit(bit);
        sum.drivers += counts.drivers;
        sum.sinks += counts.sinks;
        sum.fan_out = std::max(sum.fan_out, counts.sinks);
    }
    return sum;
}

NETLIST_CONNECTIVITY::COUNTS& NETLIST_CONNECTIVITY::at(NETLIST_BIT bit)
{
    return bit.get_net() < m_dense.size() ? m_dense[bit.get_net()] : m_sparse[bit.get_net()];
}

void NETLIST_CONNECTIVITY::add(const NETLIST_MODULE& module, NETLIST_RANGE bits, bool drives, bool reads)
{
    for (const NETLIST_BIT bit : module.get_bits(bits))
    {
        if (!bit.is_net())
            continue;
        COUNTS& counts = at(bit);
        counts.drivers += drives ? 1 : 0;
        counts.sinks += reads ? 1 : 0;
    }
}
