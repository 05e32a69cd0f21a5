#pragma once

#include "netlist.h"

#include <cstdint>
#include <vector>

/// Counts over a netlist, made when they are asked for.

/// How often cells of a type stand in a module.
struct NETLIST_TYPE_COUNT
{
    NETLIST_NAME type = NETLIST_NAMES::EMPTY;
    bool is_module = false;                         ///< the type is a module of the design
    std::uint32_t module = NETLIST_CELL::NO_MODULE; ///< that module's index
    std::uint64_t in_module = 0;                    ///< in the module itself
    std::uint64_t in_hierarchy = 0;                 ///< in it and in all instances below it; stops at the largest value
};

/// The cells of a module by type, the most frequent in the hierarchy first, equal counts by name. Takes time in
/// proportion to the cells of the modules below it, each module once however often it is instantiated.
std::vector<NETLIST_TYPE_COUNT> netlist_count_by_type(const NETLIST& netlist, std::uint32_t module);

/// Sums over everything below a module, itself included.
struct NETLIST_TOTALS
{
    std::uint64_t leaf_cells = 0;
    std::uint64_t instances = 0; ///< of modules
    std::uint64_t nets = 0;      ///< named nets and buses
    std::uint64_t net_bits = 0;  ///< their widths
    std::uint32_t levels = 0;    ///< levels of hierarchy: 1 where it has no instances
};

NETLIST_TOTALS netlist_get_totals(const NETLIST& netlist, std::uint32_t module);
