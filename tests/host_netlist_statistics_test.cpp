#include "host_netlist_fixture.h"
#include "netlist_connectivity.h"
#include "netlist_generator.h"
#include "netlist_reader.h"
#include "netlist_statistics.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace
{
std::uint32_t find_module(const NETLIST& netlist, const std::string& name)
{
    for (std::uint32_t i = 0; i < netlist.modules.size(); ++i)
    {
        if (netlist.get_display_name(netlist.modules[i]) == name)
            return i;
    }
    ADD_FAILURE() << "no module " << name;
    return 0;
}

/// Cells of the technology by type, through the hierarchy below the top.
std::map<std::string, std::uint64_t> count_leaves(const NETLIST& netlist)
{
    std::map<std::string, std::uint64_t> counts;
    for (const NETLIST_TYPE_COUNT& count : netlist_count_by_type(netlist, netlist.top_modules.front()))
    {
        if (!count.is_module)
            counts[std::string(netlist.names.get(count.type))] = count.in_hierarchy;
    }
    return counts;
}

const NETLIST_NET& find_net(const NETLIST& netlist, const NETLIST_MODULE& module, const std::string& name)
{
    for (const NETLIST_NET& net : module.nets)
    {
        if (netlist.names.get(net.name) == name)
            return net;
    }
    ADD_FAILURE() << "no net " << name;
    return module.nets.front();
}
} // namespace

// The counts are those that "stat" of yosys gives for the same files.

TEST(host_netlist_statistics, the_mapped_design_has_the_cells_that_yosys_counts)
{
    const auto netlist = read_design("synth");
    ASSERT_NE(nullptr, netlist);
    EXPECT_EQ((std::map<std::string, std::uint64_t>{{"SB_CARRY", 76},
                                                    {"SB_DFF", 64},
                                                    {"SB_DFFER", 4},
                                                    {"SB_DFFESR", 113},
                                                    {"SB_DFFESS", 17},
                                                    {"SB_DFFR", 2},
                                                    {"SB_DFFSR", 37},
                                                    {"SB_LUT4", 305},
                                                    {"SB_RAM40_4K", 2}}),
              count_leaves(*netlist));
}

TEST(host_netlist_statistics, the_elaborated_design_has_the_cells_that_yosys_counts)
{
    const auto netlist = read_design("rtl");
    ASSERT_NE(nullptr, netlist);
    EXPECT_EQ((std::map<std::string, std::uint64_t>{
                  {"$add", 10},        {"$adff", 1},        {"$adffe", 1},      {"$dff", 2},      {"$eq", 19},
                  {"$ge", 1},          {"$logic_and", 20},  {"$logic_not", 18}, {"$logic_or", 6}, {"$lt", 2},
                  {"$mem_v2", 2},      {"$mux", 39},        {"$ne", 12},        {"$not", 8},      {"$pmux", 6},
                  {"$reduce_and", 14}, {"$reduce_bool", 6}, {"$reduce_or", 5},  {"$sdff", 12},    {"$sdffe", 25},
                  {"$sub", 2},         {"$xor", 4}}),
              count_leaves(*netlist));
}

TEST(host_netlist_statistics, the_placed_design_has_the_cells_that_nextpnr_placed)
{
    const auto netlist = read_design("placed");
    ASSERT_NE(nullptr, netlist);
    EXPECT_EQ(
        (std::map<std::string, std::uint64_t>{{"ICESTORM_LC", 446}, {"ICESTORM_RAM", 2}, {"SB_GB", 3}, {"SB_IO", 12}}),
        count_leaves(*netlist));
    const NETLIST_TOTALS totals = netlist_get_totals(*netlist, netlist->top_modules.front());
    EXPECT_EQ(463u, totals.leaf_cells);
    EXPECT_EQ(0u, totals.instances);
    EXPECT_EQ(1u, totals.levels);
}

TEST(host_netlist_statistics, totals_of_the_mapped_design)
{
    const auto netlist = read_design("synth");
    ASSERT_NE(nullptr, netlist);
    ASSERT_EQ(1u, netlist->top_modules.size());
    const std::uint32_t top = netlist->top_modules.front();
    EXPECT_EQ("serial_station", netlist->get_display_name(netlist->modules[top]));
    const NETLIST_TOTALS totals = netlist_get_totals(*netlist, top);
    EXPECT_EQ(620u, totals.leaf_cells);
    EXPECT_EQ(13u, totals.instances);
    EXPECT_EQ(342u, totals.nets);
    EXPECT_EQ(1101u, totals.net_bits);
    EXPECT_EQ(3u, totals.levels);
    EXPECT_EQ(620u, netlist->modules[top].leaf_cell_count);
}

TEST(host_netlist_statistics, a_module_in_the_middle_counts_itself_and_what_is_below)
{
    const auto netlist = read_design("synth");
    ASSERT_NE(nullptr, netlist);
    const std::uint32_t timer = find_module(*netlist, "timer_block");
    EXPECT_EQ(3u, netlist_get_totals(*netlist, timer).instances);
    EXPECT_EQ(2u, netlist_get_totals(*netlist, timer).levels);
    std::map<std::string, NETLIST_TYPE_COUNT> by_type;
    for (const NETLIST_TYPE_COUNT& count : netlist_count_by_type(*netlist, timer))
        by_type[std::string(netlist->names.get(count.type))] = count;
    EXPECT_TRUE(by_type["pwm_channel"].is_module);
    EXPECT_EQ(2u, by_type["pwm_channel"].in_module);
    EXPECT_EQ(2u, by_type["pwm_channel"].in_hierarchy);
    EXPECT_FALSE(by_type["SB_LUT4"].is_module);
    EXPECT_LT(by_type["SB_LUT4"].in_module, by_type["SB_LUT4"].in_hierarchy);
    EXPECT_EQ(0u, by_type.count("uart"));
}

TEST(host_netlist_statistics, an_instance_counts_as_often_as_it_stands)
{
    const auto netlist = read_netlist(R"({"modules":{
        "leaf":{"cells":{"a":{"type":"LUT"},"b":{"type":"LUT"},"c":{"type":"DFF"}},"netnames":{"n":{"bits":[2,3]}}},
        "mid":{"cells":{"u":{"type":"leaf"},"v":{"type":"leaf"},"x":{"type":"LUT"}}},
        "top":{"cells":{"m":{"type":"mid"},"n":{"type":"mid"},"l":{"type":"leaf"}}}}})");
    ASSERT_NE(nullptr, netlist);
    const auto counts = netlist_count_by_type(*netlist, 2);
    ASSERT_EQ(4u, counts.size());
    EXPECT_EQ("LUT", netlist->names.get(counts[0].type));
    EXPECT_EQ(12u, counts[0].in_hierarchy); // 5 leaves of 2, 2 in the middle
    EXPECT_EQ(0u, counts[0].in_module);
    EXPECT_EQ("DFF", netlist->names.get(counts[1].type)); // 5 as well as "leaf": by name
    EXPECT_EQ(5u, counts[1].in_hierarchy);
    EXPECT_EQ("leaf", netlist->names.get(counts[2].type));
    EXPECT_EQ(5u, counts[2].in_hierarchy);
    EXPECT_EQ(1u, counts[2].in_module);
    EXPECT_EQ("mid", netlist->names.get(counts[3].type));
    const NETLIST_TOTALS totals = netlist_get_totals(*netlist, 2);
    EXPECT_EQ(17u, totals.leaf_cells);
    EXPECT_EQ(7u, totals.instances);
    EXPECT_EQ(5u, totals.nets);
    EXPECT_EQ(10u, totals.net_bits);
    EXPECT_EQ(3u, totals.levels);
}

TEST(host_netlist_statistics, counts_stop_at_the_largest_value)
{
    const auto netlist = read_netlist(NETLIST_GENERATOR::make_doubling(70, 2));
    ASSERT_NE(nullptr, netlist);
    EXPECT_EQ(~std::uint64_t(0), netlist_get_totals(*netlist, 70).leaf_cells);
    EXPECT_EQ(71u, netlist_get_totals(*netlist, 70).levels);
    EXPECT_EQ(~std::uint64_t(0), netlist_count_by_type(*netlist, 70).front().in_hierarchy);
}

// ---- Connectivity ---------------------------------------------------------------------------------------------------

TEST(host_netlist_connectivity, pins_and_ports_count_by_their_directions)
{
    const auto netlist = read_netlist(R"({"modules":{"m":{
        "ports":{"in":{"direction":"input","bits":[2]},"out":{"direction":"output","bits":[3]},
                 "pad":{"direction":"inout","bits":[4]}},
        "cells":{
          "a":{"type":"T","port_directions":{"I":"input","O":"output","P":"inout"},
               "connections":{"I":[2,2,"1"],"O":[3],"P":[4]}},
          "b":{"type":"T","connections":{"Q":[3]}}},
        "netnames":{"in":{"bits":[2]},"out":{"bits":[3]},"pad":{"bits":[4]},"bus":{"bits":[2,3,"0"]},
                    "alone":{"bits":[2147483647]}}}}})");
    ASSERT_NE(nullptr, netlist);
    const NETLIST_MODULE& module = netlist->modules[0];
    const NETLIST_CONNECTIVITY connectivity(module);
    const auto get = [&](const char* name)
    {
        const auto counts = connectivity.get_net(module, find_net(*netlist, module, name));
        return std::to_string(counts.drivers) + " " + std::to_string(counts.sinks) + " " +
               std::to_string(counts.fan_out);
    };
    EXPECT_EQ("1 2 2", get("in"));
    EXPECT_EQ("1 1 1", get("out")); // the pin of unknown direction counts as neither
    EXPECT_EQ("2 2 2", get("pad"));
    EXPECT_EQ("2 3 2", get("bus"));
    EXPECT_EQ("0 0 0", get("alone"));
}

TEST(host_netlist_connectivity, net_numbers_of_any_size_are_counted)
{
    const auto netlist = read_netlist(R"({"modules":{"m":{"ports":{"p":{"direction":"input","bits":[2147483647]}},
                                   "netnames":{"n":{"bits":[2147483647]}}}}})");
    ASSERT_NE(nullptr, netlist);
    const NETLIST_CONNECTIVITY connectivity(netlist->modules[0]);
    EXPECT_EQ(1u, connectivity.get_net(netlist->modules[0], netlist->modules[0].nets[0]).drivers);
    EXPECT_EQ(0u, NETLIST_CONNECTIVITY().get_bit(NETLIST_BIT::from_net(2147483647)).drivers);
}

TEST(host_netlist_connectivity, every_net_of_the_placed_design_has_one_driver)
{
    const auto netlist = read_design("placed");
    ASSERT_NE(nullptr, netlist);
    const NETLIST_MODULE& module = netlist->modules[0];
    const NETLIST_CONNECTIVITY connectivity(module);
    std::size_t driven = 0;
    for (const NETLIST_NET& net : module.nets)
        driven += connectivity.get_net(module, net).drivers == 1 ? 1 : 0;
    EXPECT_GT(driven, module.nets.size() * 9 / 10);
}
