#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Why a file could not be read: which file, where in it, and what is wrong.
struct NETLIST_ERROR
{
    std::string file;
    std::size_t line = 0;   ///< from 1; 0 where the trouble is with the file as a whole
    std::size_t column = 0; ///< from 1, in characters
    std::string place;      ///< the way to the value: "modules/uart/cells/$1/connections/A"; may be empty
    std::string reason;     ///< one sentence without a full stop; never empty

    /// "counter.json:12:7: modules/uart/cells/$1: the field "type" is missing". Parts that are unknown are left out.
    std::string get_text() const;
};

/// The text made fit for a message: control characters as "\x0a", bytes that are no UTF-8 likewise, and what is longer
/// than `limit` bytes cut in the middle.
std::string netlist_make_printable(std::string_view text, std::size_t limit = 200);
