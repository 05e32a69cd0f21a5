#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

/// Number of a text in a NETLIST_NAMES.
using NETLIST_NAME = std::uint32_t;

/// Every text of a netlist, each stored once: the names of ports and parameters come back with each cell, and equal
/// numbers mean equal texts. Texts are UTF-8 and live as long as this object.
class NETLIST_NAMES
{
public:
    /// Holds the empty text from the start, under EMPTY.
    NETLIST_NAMES();
    NETLIST_NAMES(const NETLIST_NAMES&) = delete;
    NETLIST_NAMES& operator=(const NETLIST_NAMES&) = delete;
    NETLIST_NAMES(NETLIST_NAMES&&) = default;
    NETLIST_NAMES& operator=(NETLIST_NAMES&&) = default;

    static constexpr NETLIST_NAME EMPTY = 0;
    static constexpr NETLIST_NAME NONE = 0xffffffff;

    /// The number of the text; takes the text in where it is new.
    NETLIST_NAME add(std::string_view text);
    /// The number of the text; NONE where it was never taken in.
    NETLIST_NAME find(std::string_view text) const;
    /// The text of a number that add() or find() gave; the empty text for NONE.
    std::string_view get(NETLIST_NAME name) const;
    /// How many texts there are; their numbers lie below.
    std::uint32_t size() const;

private:
    std::deque<std::string> m_texts; ///< a deque, as the keys of the map point into it
    std::unordered_map<std::string_view, NETLIST_NAME> m_numbers;
};
