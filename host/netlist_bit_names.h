#pragma once

#include "netlist.h"

#include <cstdint>
#include <string>
#include <unordered_map>

/// Names for the bits of a module, as an engineer writes them: "count", "count[3]", "{2'b00, count[5:0]}". Of several
/// names of a bit the one from the source wins over one that a tool made up, and the first in the file over later ones.
class NETLIST_BIT_NAMES
{
public:
    /// Names nothing.
    NETLIST_BIT_NAMES() = default;
    /// Keeps references to both: they must outlive this object.
    NETLIST_BIT_NAMES(const NETLIST& netlist, const NETLIST_MODULE& module);

    /// The text for the bits, from the highest to the lowest; empty for an empty range. A bit without a name is its
    /// number: "#12".
    std::string get_text(NETLIST_RANGE bits) const;

private:
    struct POSITION
    {
        std::uint32_t net = 0;      ///< index in the module
        std::uint32_t position = 0; ///< of the bit in it
    };

    void add_names(bool hidden);
    std::string get_constants(NETLIST_RANGE bits, std::uint32_t& left) const;
    std::string get_piece(NETLIST_RANGE bits, std::uint32_t& left) const;

    const NETLIST* m_netlist = nullptr;
    const NETLIST_MODULE* m_module = nullptr;
    std::unordered_map<std::uint32_t, POSITION> m_positions; ///< by net number
};
