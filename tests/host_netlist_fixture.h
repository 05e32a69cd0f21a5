#pragma once

#include "netlist.h"
#include "netlist_reader.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

/// A netlist of a test's own. Null, and a failure, for a text that is none.
inline std::shared_ptr<const NETLIST> read_netlist(const std::string& text)
{
    const NETLIST_READ_RESULT result = NETLIST_READER::read_text(text, "some.json");
    EXPECT_NE(nullptr, result.netlist) << result.error.get_text();
    return result.netlist;
}

/// The shipped design in one of its stages: "rtl", "synth" or "placed".
inline std::shared_ptr<const NETLIST> read_design(const std::string& name)
{
    const NETLIST_READ_RESULT result =
        NETLIST_READER::read_file(std::string(WORKBENCH_DESIGNS) + "/serial_station_" + name + ".json");
    EXPECT_NE(nullptr, result.netlist) << result.error.get_text();
    return result.netlist;
}
