#pragma once

#include "netlist.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

/// Who drives and who reads the nets of one module. A pin of a cell counts by its direction; a port of the module
/// counts from inside: an input drives. An inout pin counts as both, a pin of unknown direction as neither.
class NETLIST_CONNECTIVITY
{
public:
    /// Empty: every count is 0.
    NETLIST_CONNECTIVITY() = default;
    /// Counts at once; does not keep the module.
    explicit NETLIST_CONNECTIVITY(const NETLIST_MODULE& module);

    struct COUNTS
    {
        std::uint32_t drivers = 0;
        std::uint32_t sinks = 0;
    };
    /// Counts of one bit; zeros for constants and nets that nothing touches.
    COUNTS get_bit(NETLIST_BIT bit) const;

    struct NET_COUNTS
    {
        std::uint64_t drivers = 0; ///< over all its bits
        std::uint64_t sinks = 0;   ///< over all its bits
        std::uint32_t fan_out = 0; ///< sinks of the bit that has the most
    };
    /// Counts of a net of the module.
    NET_COUNTS get_net(const NETLIST_MODULE& module, const NETLIST_NET& net) const;

private:
    COUNTS& at(NETLIST_BIT bit);
    void add(const NETLIST_MODULE& module, NETLIST_RANGE bits, bool drives, bool reads);

    std::vector<COUNTS> m_dense;                        ///< net numbers below its size
    std::unordered_map<std::uint32_t, COUNTS> m_sparse; ///< numbers far above what the module has bits for
};
