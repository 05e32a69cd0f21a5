#pragma once

#include "netlist.h"

#include <cstdint>
#include <string>
#include <vector>

/// Where a hierarchy bites its own tail.
struct NETLIST_RECURSION
{
    std::uint32_t module = 0; ///< the module with the offending instance
    std::uint32_t cell = 0;   ///< that cell
    std::string chain;        ///< "a > b > a"
};

/// Ties the modules of a netlist together after reading: which cell is an instance of which module, directions that the
/// cells do not tell themselves, the tops, the order from the bottom up and the counts through the hierarchy.
/// Works without recursion, however deep the hierarchy is. Returns false where a module contains itself, and says where.
bool netlist_resolve_hierarchy(NETLIST& netlist, NETLIST_RECURSION& recursion);
