#pragma once

#include <QString>

#include <cstdint>
#include <string_view>

/// Texts of the netlist as the user sees them.

/// From UTF-8.
QString workbench_to_qstring(std::string_view text);

/// A count with the digits grouped as the user's locale has it: "1,101".
QString workbench_format_count(std::uint64_t count);
