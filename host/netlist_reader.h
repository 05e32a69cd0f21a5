#pragma once

#include "netlist.h"
#include "netlist_error.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

/// What reading a file came to: a netlist, or an error, or neither where it was stopped.
struct NETLIST_READ_RESULT
{
    std::shared_ptr<const NETLIST> netlist; ///< null unless all went well
    NETLIST_ERROR error;                    ///< with a reason where something is wrong
    bool was_stopped = false;
};

/// Reads the JSON netlists of yosys (`write_json`) and nextpnr (`--write`). Safe on any input: a file that is missing,
/// cut, damaged or something else gives an error that says where and why. Memory is bounded by the file, and so is the
/// stack: nothing here calls itself. Usable from any thread.
class NETLIST_READER
{
public:
    /// Larger files are refused: positions are 32 bits wide.
    static constexpr std::size_t LARGEST_FILE = 0x7fffffff;

    /// Told of the progress in percent, 0 to 100, never falling; called often enough for a quick stop. Returns whether
    /// to go on.
    using PROGRESS = std::function<bool(int percent)>;

    /// Reads a file, UTF-8 path. Anything but a regular file is refused without waiting for it.
    static NETLIST_READ_RESULT read_file(const std::string& file, const PROGRESS& progress = {});

    /// Reads a text that stands for the content of a file of that name.
    static NETLIST_READ_RESULT read_text(std::string_view text, const std::string& file, const PROGRESS& progress = {});
};
