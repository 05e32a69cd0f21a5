#include "netlist_generator.h"
#include "netlist_reader.h"

#include "test_environment.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace
{
const char* const SMALL = R"({
  "creator": "hand",
  "modules": {
    "counter": {
      "attributes": { "top": "00000000000000000000000000000001", "cells_not_processed": 1 },
      "ports": {
        "clk": { "direction": "input", "bits": [ 2 ] },
        "q": { "direction": "output", "bits": [ 3, 4, "0", "x" ], "offset": 4, "upto": 1, "signed": 1 }
      },
      "cells": {
        "$1": {
          "hide_name": 1,
          "type": "SB_DFF",
          "parameters": { "INIT": "0", "WIDTH": 12 },
          "attributes": { "src": "counter.v:3" },
          "port_directions": { "C": "input", "Q": "output", "D": "input" },
          "connections": { "C": [ 2 ], "D": [ 4 ], "Q": [ 3 ] }
        },
        "open": { "type": "SB_LUT4", "connections": { "O": [ 4 ], "I0": [ ], "I1": [ "1" ], "I2": [ "z" ] } }
      },
      "netnames": {
        "clk": { "hide_name": 0, "bits": [ 2 ], "attributes": { } },
        "q": { "hide_name": 1, "bits": [ 3, 4 ], "attributes": { "keep": -1 } }
      }
    }
  }
})";

NETLIST_READ_RESULT read(const std::string& text)
{
    return NETLIST_READER::read_text(text, "some.json");
}

/// The message of a text that must not be a netlist.
std::string get_error(const std::string& text)
{
    const NETLIST_READ_RESULT result = read(text);
    EXPECT_EQ(nullptr, result.netlist);
    EXPECT_FALSE(result.was_stopped);
    return result.error.get_text();
}

/// The same for a module's content.
std::string get_module_error(const std::string& content)
{
    return get_error(R"({"modules":{"m":)" + content + "}}");
}

std::string replace(std::string text, const std::string& what, const std::string& by)
{
    const std::size_t at = text.find(what);
    EXPECT_NE(std::string::npos, at) << what;
    return text.replace(at, what.size(), by);
}

std::string text_of(const NETLIST& netlist, NETLIST_NAME name)
{
    return std::string(netlist.names.get(name));
}

std::string bits_of(const NETLIST_MODULE& module, NETLIST_RANGE range)
{
    std::string text;
    for (const NETLIST_BIT bit : module.get_bits(range))
        text += (text.empty() ? "" : " ") +
                (bit.is_net() ? std::to_string(bit.get_net()) : std::string(1, bit.get_constant()));
    return text;
}
} // namespace

// ---- What is read ---------------------------------------------------------------------------------------------------

TEST(host_netlist_reader, reads_the_head_and_the_modules)
{
    const NETLIST_READ_RESULT result = read(SMALL);
    ASSERT_NE(nullptr, result.netlist) << result.error.get_text();
    EXPECT_EQ("", result.error.reason);
    EXPECT_EQ("some.json", result.netlist->file);
    EXPECT_EQ("hand", result.netlist->creator);
    ASSERT_EQ(1u, result.netlist->modules.size());
    EXPECT_EQ("counter", text_of(*result.netlist, result.netlist->modules[0].name));
    EXPECT_EQ(std::vector<std::uint32_t>{0}, result.netlist->top_modules);
    EXPECT_EQ(2u, result.netlist->modules[0].leaf_cell_count);
}

TEST(host_netlist_reader, reads_ports)
{
    const auto netlist = read(SMALL).netlist;
    ASSERT_NE(nullptr, netlist);
    const NETLIST_MODULE& module = netlist->modules[0];
    ASSERT_EQ(2u, module.ports.size());
    EXPECT_EQ("clk", text_of(*netlist, module.ports[0].name));
    EXPECT_EQ(NETLIST_DIRECTION::INPUT, module.ports[0].direction);
    EXPECT_EQ("2", bits_of(module, module.ports[0].bits));
    EXPECT_EQ(0, module.ports[0].offset);
    EXPECT_FALSE(module.ports[0].is_upward);
    EXPECT_EQ(NETLIST_DIRECTION::OUTPUT, module.ports[1].direction);
    EXPECT_EQ("3 4 0 x", bits_of(module, module.ports[1].bits));
    EXPECT_EQ(4, module.ports[1].offset);
    EXPECT_TRUE(module.ports[1].is_upward);
}

TEST(host_netlist_reader, reads_cells_with_everything_on_them)
{
    const auto netlist = read(SMALL).netlist;
    ASSERT_NE(nullptr, netlist);
    const NETLIST_MODULE& module = netlist->modules[0];
    ASSERT_EQ(2u, module.cells.size());
    const NETLIST_CELL& cell = module.cells[0];
    EXPECT_EQ("$1", text_of(*netlist, cell.name));
    EXPECT_EQ("SB_DFF", text_of(*netlist, cell.type));
    EXPECT_TRUE(cell.has_hidden_name);
    EXPECT_FALSE(module.cells[1].has_hidden_name);
    EXPECT_EQ(NETLIST_CELL::NO_MODULE, cell.module);
    EXPECT_EQ("0", text_of(*netlist, module.find_property(cell.parameters, netlist->names.find("INIT"))));
    EXPECT_EQ("12", text_of(*netlist, module.find_property(cell.parameters, netlist->names.find("WIDTH"))));
    EXPECT_EQ("counter.v:3", text_of(*netlist, module.find_property(cell.attributes, netlist->names.find("src"))));
    EXPECT_EQ(NETLIST_NAMES::NONE, module.find_property(cell.attributes, netlist->names.find("INIT")));
    const auto connections = module.get_connections(cell.connections);
    ASSERT_EQ(3u, connections.size());
    EXPECT_EQ("C", text_of(*netlist, connections[0].port));
    EXPECT_EQ(NETLIST_DIRECTION::INPUT, connections[0].direction);
    EXPECT_EQ("Q", text_of(*netlist, connections[2].port));
    EXPECT_EQ(NETLIST_DIRECTION::OUTPUT, connections[2].direction);
    EXPECT_EQ("3", bits_of(module, connections[2].bits));
}

TEST(host_netlist_reader, reads_open_ports_constants_and_unknown_directions)
{
    const auto netlist = read(SMALL).netlist;
    ASSERT_NE(nullptr, netlist);
    const NETLIST_MODULE& module = netlist->modules[0];
    const auto connections = module.get_connections(module.cells[1].connections);
    ASSERT_EQ(4u, connections.size());
    EXPECT_EQ("4", bits_of(module, connections[0].bits));
    EXPECT_EQ("", bits_of(module, connections[1].bits));
    EXPECT_EQ("1", bits_of(module, connections[2].bits));
    EXPECT_EQ("z", bits_of(module, connections[3].bits));
    EXPECT_EQ(NETLIST_DIRECTION::UNKNOWN, connections[0].direction);
}

TEST(host_netlist_reader, reads_nets)
{
    const auto netlist = read(SMALL).netlist;
    ASSERT_NE(nullptr, netlist);
    const NETLIST_MODULE& module = netlist->modules[0];
    ASSERT_EQ(2u, module.nets.size());
    EXPECT_FALSE(module.nets[0].has_hidden_name);
    EXPECT_TRUE(module.nets[1].has_hidden_name);
    EXPECT_EQ("3 4", bits_of(module, module.nets[1].bits));
    EXPECT_EQ("-1", text_of(*netlist, module.find_property(module.nets[1].attributes, netlist->names.find("keep"))));
}

TEST(host_netlist_reader, attributes_before_or_behind_the_bits_make_no_difference)
{
    const auto netlist =
        read(
            R"({"modules":{"m":{"netnames":{"a":{"attributes":{"k":"v"},"bits":[2]},"b":{"bits":[3],"attributes":{}}}}}})")
            .netlist;
    ASSERT_NE(nullptr, netlist);
    EXPECT_EQ("2", bits_of(netlist->modules[0], netlist->modules[0].nets[0].bits));
    EXPECT_EQ("3", bits_of(netlist->modules[0], netlist->modules[0].nets[1].bits));
}

TEST(host_netlist_reader, directions_may_stand_behind_the_connections)
{
    const auto netlist = read(R"({"modules":{"m":{"cells":{"c":{"type":"T","connections":{"A":[2],"B":[3]},
                                 "port_directions":{"B":"inout"}}}}}})")
                             .netlist;
    ASSERT_NE(nullptr, netlist);
    EXPECT_EQ(NETLIST_DIRECTION::UNKNOWN, netlist->modules[0].connections[0].direction);
    EXPECT_EQ(NETLIST_DIRECTION::INOUT, netlist->modules[0].connections[1].direction);
}

TEST(host_netlist_reader, an_instance_takes_missing_directions_from_its_module)
{
    const auto netlist = read(R"({"modules":{
        "leaf":{"ports":{"A":{"direction":"input","bits":[2]},"Y":{"direction":"output","bits":[2]}}},
        "top":{"cells":{"u":{"type":"leaf","connections":{"Y":[7],"A":[8],"other":[9]}}}}}})")
                             .netlist;
    ASSERT_NE(nullptr, netlist);
    const NETLIST_MODULE& top = netlist->modules[1];
    EXPECT_EQ(NETLIST_DIRECTION::OUTPUT, top.connections[0].direction);
    EXPECT_EQ(NETLIST_DIRECTION::INPUT, top.connections[1].direction);
    EXPECT_EQ(NETLIST_DIRECTION::UNKNOWN, top.connections[2].direction);
}

TEST(host_netlist_reader, unknown_fields_are_skipped_whatever_they_hold)
{
    const std::string noise = R"("noise":{"a":[1,[2.5,{"b":null}],true,"t"],"a":{}})";
    std::string text = replace(SMALL, R"("creator")", noise + R"(,"creator")");
    text = replace(text, R"("ports")", noise + R"(,"memories":[[]],"ports")");
    text = replace(text, R"("type": "SB_DFF")", noise + R"(,"type": "SB_DFF")");
    const NETLIST_READ_RESULT result = read(text);
    ASSERT_NE(nullptr, result.netlist) << result.error.get_text();
    EXPECT_EQ(2u, result.netlist->modules[0].cells.size());
    EXPECT_EQ("SB_DFF", text_of(*result.netlist, result.netlist->modules[0].cells[0].type));
}

TEST(host_netlist_reader, a_byte_order_mark_is_allowed)
{
    EXPECT_NE(nullptr, read(std::string("\xef\xbb\xbf") + SMALL).netlist);
}

TEST(host_netlist_reader, names_keep_their_characters)
{
    const auto netlist = read("{\"modules\":{\"a\\u00e4\\n\xe2\x82\xac/b\":{}}}").netlist;
    ASSERT_NE(nullptr, netlist);
    EXPECT_EQ("a\xc3\xa4\n\xe2\x82\xac/b", text_of(*netlist, netlist->modules[0].name));
}

TEST(host_netlist_reader, the_largest_net_number_is_read)
{
    const auto netlist = read(R"({"modules":{"m":{"netnames":{"n":{"bits":[2147483647]}}}}})").netlist;
    ASSERT_NE(nullptr, netlist);
    EXPECT_EQ("2147483647", bits_of(netlist->modules[0], netlist->modules[0].nets[0].bits));
}

// ---- Hierarchy ------------------------------------------------------------------------------------------------------

TEST(host_netlist_reader, modules_that_are_instantiated_nowhere_begin_the_hierarchy_behind_the_marked_one)
{
    const auto netlist = read(R"({"modules":{
        "stray":{}, "leaf":{}, "t":{"attributes":{"top":1},"cells":{"u":{"type":"leaf"}}},
        "not_top":{"attributes":{"top":"0000"}},
        "SB_IO":{"attributes":{"blackbox":1}}, "SB_X":{"attributes":{"whitebox":"1"}}}})")
                             .netlist;
    ASSERT_NE(nullptr, netlist);
    EXPECT_EQ((std::vector<std::uint32_t>{2, 0, 3}), netlist->top_modules);
}

TEST(host_netlist_reader, a_library_module_is_no_instance_and_its_inside_does_not_count)
{
    const auto netlist = read(R"({"modules":{
        "LIB":{"attributes":{"whitebox":"1"},"cells":{"x":{"type":"inner"},"y":{"type":"z"}}}, "inner":{},
        "t":{"cells":{"u":{"type":"LIB"},"v":{"type":"LUT"}}}}})")
                             .netlist;
    ASSERT_NE(nullptr, netlist);
    const NETLIST_MODULE& top = netlist->modules[2];
    EXPECT_EQ(2u, top.leaf_cell_count);
    EXPECT_TRUE(top.instances.empty());
    EXPECT_FALSE(netlist->is_instance(top.cells[0]));
    EXPECT_EQ((std::vector<std::uint32_t>{1, 2}), netlist->top_modules);
}

TEST(host_netlist_reader, a_file_of_descriptions_only_shows_them)
{
    const auto netlist =
        read(R"({"modules":{"A":{"attributes":{"blackbox":1}},"B":{"attributes":{"blackbox":1}}}})").netlist;
    ASSERT_NE(nullptr, netlist);
    EXPECT_EQ((std::vector<std::uint32_t>{0, 1}), netlist->top_modules);
}

TEST(host_netlist_reader, a_module_that_contains_itself_is_refused_with_the_chain)
{
    EXPECT_EQ("some.json:3:43: modules/c/cells/back: a module contains itself: b > c > b",
              get_error("{\"modules\":{\"a\":{\"cells\":{\"u\":{\"type\":\"b\"}}},\n"
                        "\"b\":{\"cells\":{\"u\":{\"type\":\"c\"}}},\n"
                        "\"c\":{\"cells\":{\"ok\":{\"type\":\"x\"},\"back\":   {\"type\":\"b\"}}}}}"));
    EXPECT_EQ("some.json:1:36: modules/a/cells/me: a module contains itself: a > a",
              get_error(R"({"modules":{"a":{"cells":    {"me":{"type":"a"}}}}})"));
}

TEST(host_netlist_reader, a_hierarchy_of_a_hundred_thousand_levels_is_walked)
{
    std::string text = R"({"modules":{"m0":{"cells":{"x":{"type":"LUT"}}})";
    for (int i = 1; i <= 100000; ++i)
        text += ",\"m" + std::to_string(i) + R"(":{"cells":{"u":{"type":"m)" + std::to_string(i - 1) + "\"}}}";
    const auto netlist = read(text + "}}").netlist;
    ASSERT_NE(nullptr, netlist);
    EXPECT_EQ(std::vector<std::uint32_t>{100000}, netlist->top_modules);
    EXPECT_EQ(1u, netlist->modules[100000].leaf_cell_count);
}

TEST(host_netlist_reader, counts_stop_at_the_largest_value)
{
    const auto netlist = read(NETLIST_GENERATOR::make_doubling(70, 1)).netlist;
    ASSERT_NE(nullptr, netlist);
    EXPECT_EQ(std::uint64_t(1) << 63, netlist->modules[63].leaf_cell_count);
    EXPECT_EQ(~std::uint64_t(0), netlist->modules[70].leaf_cell_count);
}

TEST(host_netlist_reader, a_module_is_shown_by_the_name_of_its_source)
{
    const auto netlist = read(R"({"modules":{"$paramod\\fifo\\W=8":{"attributes":{"hdlname":"\\fifo"}},
                                 "plain":{}, "empty":{"attributes":{"hdlname":""}}}})")
                             .netlist;
    ASSERT_NE(nullptr, netlist);
    EXPECT_EQ("fifo", netlist->get_display_name(netlist->modules[0]));
    EXPECT_EQ("plain", netlist->get_display_name(netlist->modules[1]));
    EXPECT_EQ("empty", netlist->get_display_name(netlist->modules[2]));
}

// ---- What is no JSON ------------------------------------------------------------------------------------------------

TEST(host_netlist_reader, an_empty_text_says_so)
{
    EXPECT_EQ("some.json: the file is empty", get_error(""));
    EXPECT_EQ("some.json: the file is empty", get_error(" \n\t\r\n"));
}

TEST(host_netlist_reader, a_text_that_is_no_json_says_where)
{
    EXPECT_EQ("some.json:1:1: this is not JSON: while parsing value - invalid literal; last read: 'm'",
              get_error("module top;"));
    EXPECT_EQ("some.json:2:4: modules: this is not JSON: while parsing object separator - unexpected '}'; expected ':'",
              get_error("{\"modules\"\n   }"));
    EXPECT_EQ("some.json:1:15: this is not JSON: while parsing value - unexpected '}'; expected end of input",
              get_error("{\"modules\":{}}}"));
}

TEST(host_netlist_reader, a_column_counts_characters_and_not_bytes)
{
    EXPECT_EQ("some.json:1:20: modules/\xc3\xa4\xe2\x82\xac: a number stands where an object is expected",
              get_error("{\"modules\":  {\"\xc3\xa4\xe2\x82\xac\":5}}"));
}

TEST(host_netlist_reader, noise_is_refused_in_printable_form)
{
    std::string noise = "\x7f\x45LF";
    noise.push_back('\0');
    noise += "\x01\xff\xfe";
    EXPECT_EQ("some.json:1:1: this is not JSON: while parsing value - invalid literal; last read: '\\x7f'",
              get_error(noise));
}

TEST(host_netlist_reader, invalid_utf_8_says_where)
{
    EXPECT_EQ("some.json:1:5: this is not JSON: while parsing object key - invalid string: ill-formed UTF-8 byte; last "
              "read: '\"mo\\xff'; expected string literal",
              get_error("{\"mo\xff\":1}"));
}

TEST(host_netlist_reader, a_number_beyond_all_bounds_is_refused)
{
    EXPECT_EQ("some.json:1:43: modules/m/netnames/n/bits/0: the number 1e999 is too large",
              get_error(R"({"modules":{"m":{"netnames":{"n":{"bits":[1e999]}}}}})"));
}

TEST(host_netlist_reader, a_file_cut_anywhere_is_an_error_at_its_end)
{
    const std::string whole = SMALL;
    std::size_t cut_off = 0;
    for (std::size_t size = 1; size < whole.size(); ++size)
    {
        const NETLIST_READ_RESULT result = read(whole.substr(0, size));
        ASSERT_EQ(nullptr, result.netlist) << size;
        ASSERT_GT(result.error.line, 0u) << size;
        ASSERT_NE("", result.error.reason) << size;
        if (result.error.reason.rfind("the file is cut off here: ", 0) == 0)
            ++cut_off;
    }
    // All but those that end within a number, a literal or the like are seen for what they are.
    EXPECT_GT(cut_off, whole.size() * 95 / 100);
}

TEST(host_netlist_reader, a_changed_byte_anywhere_gives_a_netlist_or_a_reason)
{
    const std::string whole = SMALL;
    std::size_t refused = 0;
    for (std::size_t at = 0; at < whole.size(); ++at)
    {
        for (const char byte : {'\0', '"', '{', '}', '[', ']', ',', '5', '-', '\\', '\xff'})
        {
            std::string changed = whole;
            changed[at] = byte;
            const NETLIST_READ_RESULT result = read(changed);
            ASSERT_NE(result.netlist == nullptr, result.error.reason.empty()) << at << " " << int(byte);
            ASSERT_FALSE(result.was_stopped);
            refused += result.netlist == nullptr ? 1 : 0;
        }
    }
    EXPECT_GT(refused, whole.size());
}

TEST(host_netlist_reader, a_cut_file_names_place_and_reason)
{
    EXPECT_EQ(
        "some.json:1:43: modules/m/netnames/n/bits/0: the file is cut off here: while parsing value - unexpected end "
        "of input; expected '[', '{', or a literal",
        get_error(R"({"modules":{"m":{"netnames":{"n":{"bits":[)"));
    EXPECT_EQ(
        "some.json:1:9: the file is cut off here: while parsing object key - invalid string: missing closing quote; "
        "last read: '\"module'; expected string literal",
        get_error("{\"module"));
}

TEST(host_netlist_reader, a_long_text_in_a_message_is_shortened)
{
    const std::string error = get_error("{\"" + std::string(1000000, 'n'));
    EXPECT_LT(error.size(), 400u);
    EXPECT_NE(std::string::npos, error.find("missing closing quote"));
}

// ---- JSON of another kind -------------------------------------------------------------------------------------------

TEST(host_netlist_reader, json_of_another_kind_is_no_netlist)
{
    EXPECT_EQ("some.json:1:1: this is no netlist: a list stands where an object is expected", get_error("[1, 2]"));
    EXPECT_EQ("some.json:1:1: this is no netlist: a text stands where an object is expected", get_error("\"modules\""));
    EXPECT_EQ("some.json:2:1: this is no netlist: a number stands where an object is expected", get_error("\n17"));
    EXPECT_EQ("some.json:1:1: this is no netlist: null stands where an object is expected", get_error("null"));
    EXPECT_EQ("some.json:1:1: this is no netlist: true stands where an object is expected", get_error("true"));
    EXPECT_EQ("some.json:1:12: this is no netlist: the field \"modules\" is missing", get_error(R"({"name": 5 })"));
    EXPECT_EQ("some.json:1:2: this is no netlist: the field \"modules\" is missing", get_error("{}"));
    EXPECT_EQ("some.json: modules: the netlist has no modules", get_error(R"({"modules":{}})"));
}

TEST(host_netlist_reader, deep_nesting_is_refused)
{
    EXPECT_EQ("some.json:1:1: this is no netlist: a list stands where an object is expected",
              get_error(std::string(100000, '[')));
    const std::string levels = "lists and objects are nested more than 64 levels deep";
    EXPECT_EQ("some.json:1:69: x: " + levels, get_error("{\"x\":" + std::string(100000, '[')));
    std::string objects = "{\"x\":";
    for (int i = 0; i < 100000; ++i)
        objects += "{\"a\":";
    EXPECT_NE(std::string::npos, get_error(objects).find(": x: " + levels));
    // The last level that is allowed.
    const std::string allowed = R"({"modules":{"m":{}},"x":)" + std::string(63, '[') + std::string(63, ']') + "}";
    EXPECT_NE(nullptr, read(allowed).netlist);
    EXPECT_EQ(nullptr, read(replace(allowed, "[]", "[[]]")).netlist);
}

// ---- Wrong types ----------------------------------------------------------------------------------------------------

struct WRONG_TYPE
{
    const char* good; ///< a piece of SMALL
    const char* bad;  ///< what stands there instead
    const char* place;
    const char* reason;
};

TEST(host_netlist_reader, a_wrong_type_in_any_field_says_which_and_what_is_expected)
{
    const char* const whole = " stands where a whole number is expected";
    const WRONG_TYPE rows[] = {
        {R"("creator": "hand")", R"("creator": 5)", "creator", "a number stands where a text is expected"},
        {R"("creator": "hand")", R"("creator": {})", "creator", "an object stands where a text is expected"},
        {R"("attributes": { "top": "00000000000000000000000000000001", "cells_not_processed": 1 })",
         R"("attributes": [])", "modules/counter/attributes", "a list stands where an object is expected"},
        {R"("top": "00000000000000000000000000000001")", R"("top": true)", "modules/counter/attributes/top",
         "true stands where a text or a whole number is expected"},
        {R"("cells_not_processed": 1)", R"("cells_not_processed": 1.5)",
         "modules/counter/attributes/cells_not_processed", "the number 1.5 is no whole number, or too large for one"},
        {R"("cells_not_processed": 1)", R"("cells_not_processed": 99999999999999999999)",
         "modules/counter/attributes/cells_not_processed",
         "the number 99999999999999999999 is no whole number, or too large for one"},
        {R"({ "direction": "input", "bits": [ 2 ] })", "3", "modules/counter/ports/clk",
         "a number stands where an object is expected"},
        {R"("direction": "input", "bits": [ 2 ])", R"("direction": "sideways", "bits": [ 2 ])",
         "modules/counter/ports/clk/direction",
         R"(the text "sideways" is no direction: "input", "output" or "inout" is)"},
        {R"("direction": "input", "bits": [ 2 ])", R"("direction": 1, "bits": [ 2 ])",
         "modules/counter/ports/clk/direction", "a number stands where a text is expected"},
        {R"("direction": "input", "bits": [ 2 ])", R"("direction": "input")", "modules/counter/ports/clk",
         R"(the field "bits" is missing)"},
        {R"("direction": "input", "bits": [ 2 ])", R"("bits": [ 2 ])", "modules/counter/ports/clk",
         R"(the field "direction" is missing)"},
        {R"("direction": "input", "bits": [ 2 ])", R"("direction": "input", "bits": 2)",
         "modules/counter/ports/clk/bits", "a number stands where a list is expected"},
        {R"([ 3, 4, "0", "x" ])", R"([ 3, 4, [], "x" ])", "modules/counter/ports/q/bits/2",
         R"(a list stands where a net number, "0", "1", "x" or "z" is expected)"},
        {R"([ 3, 4, "0", "x" ])", R"([ 3, 4, "0", "X" ])", "modules/counter/ports/q/bits/3",
         R"(the text "X" is no bit: a net number, "0", "1", "x" or "z" is)"},
        {R"([ 3, 4, "0", "x" ])", R"([ 3, -1 ])", "modules/counter/ports/q/bits/1",
         "the number -1 is no net number: 0 to 2147483647 are"},
        {R"([ 3, 4, "0", "x" ])", R"([ 2147483648 ])", "modules/counter/ports/q/bits/0",
         "the number 2147483648 is no net number: 0 to 2147483647 are"},
        {R"([ 3, 4, "0", "x" ])", R"([ 18446744073709551615 ])", "modules/counter/ports/q/bits/0",
         "the number 18446744073709551615 is no net number: 0 to 2147483647 are"},
        {R"([ 3, 4, "0", "x" ])", R"([ 3.0 ])", "modules/counter/ports/q/bits/0",
         "the number 3.0 is no net number: 0 to 2147483647 are"},
        {R"([ 3, 4, "0", "x" ])", R"([ null ])", "modules/counter/ports/q/bits/0",
         R"(null stands where a net number, "0", "1", "x" or "z" is expected)"},
        {R"("offset": 4)", R"("offset": "4")", "modules/counter/ports/q/offset", "a text$"},
        {R"("offset": 4)", R"("offset": 4294967296)", "modules/counter/ports/q/offset",
         "the number 4294967296 is too large for an index"},
        {R"("upto": 1)", R"("upto": false)", "modules/counter/ports/q/upto", "false$"},
        {R"("signed": 1)", R"("signed": {})", "modules/counter/ports/q/signed", "an object$"},
        {R"("hide_name": 1,
          "type")",
         R"("hide_name": "1", "type")", "modules/counter/cells/$1/hide_name", "a text$"},
        {R"("type": "SB_DFF",)", R"("type": null,)", "modules/counter/cells/$1/type",
         "null stands where a text is expected"},
        {R"("type": "SB_DFF",)", "", "modules/counter/cells/$1", R"(the field "type" is missing)"},
        {R"("parameters": { "INIT": "0", "WIDTH": 12 })", R"("parameters": "none")",
         "modules/counter/cells/$1/parameters", "a text stands where an object is expected"},
        {R"("WIDTH": 12)", R"("WIDTH": [])", "modules/counter/cells/$1/parameters/WIDTH",
         "a list stands where a text or a whole number is expected"},
        {R"("attributes": { "src": "counter.v:3" })", R"("attributes": null)", "modules/counter/cells/$1/attributes",
         "null stands where an object is expected"},
        {R"({ "C": "input", "Q": "output", "D": "input" })", R"([ "input" ])",
         "modules/counter/cells/$1/port_directions", "a list stands where an object is expected"},
        {R"("Q": "output")", R"("Q": "OUTPUT")", "modules/counter/cells/$1/port_directions/Q",
         R"(the text "OUTPUT" is no direction: "input", "output" or "inout" is)"},
        {R"("connections": { "C": [ 2 ], "D": [ 4 ], "Q": [ 3 ] })", R"("connections": [ ])",
         "modules/counter/cells/$1/connections", "a list stands where an object is expected"},
        {R"("D": [ 4 ])", R"("D": 4)", "modules/counter/cells/$1/connections/D",
         "a number stands where a list is expected"},
        {R"("D": [ 4 ])", R"("D": [ 4, true ])", "modules/counter/cells/$1/connections/D/1",
         R"(true stands where a net number, "0", "1", "x" or "z" is expected)"},
        {R"("hide_name": 0, "bits": [ 2 ])", R"("hide_name": 0)", "modules/counter/netnames/clk",
         R"(the field "bits" is missing)"},
        {R"("hide_name": 0, "bits": [ 2 ])", R"("hide_name": 0, "bits": "2")", "modules/counter/netnames/clk/bits",
         "a text stands where a list is expected"},
        {R"("hide_name": 0, "bits": [ 2 ])", R"("hide_name": [], "bits": [ 2 ])",
         "modules/counter/netnames/clk/hide_name", "a list$"},
        {R"("attributes": { "keep": -1 })", R"("attributes": { "keep": {} })",
         "modules/counter/netnames/q/attributes/keep", "an object stands where a text or a whole number is expected"},
    };
    for (const WRONG_TYPE& row : rows)
    {
        const NETLIST_READ_RESULT result = read(replace(SMALL, row.good, row.bad));
        EXPECT_EQ(nullptr, result.netlist) << row.bad;
        EXPECT_EQ(row.place, result.error.place) << row.bad;
        std::string reason = row.reason;
        if (reason.back() == '$')
            reason = reason.substr(0, reason.size() - 1) + whole;
        EXPECT_EQ(reason, result.error.reason) << row.bad;
        EXPECT_GT(result.error.line, 1u) << row.bad;
    }
    for (const char* field : {"ports", "cells", "netnames", "attributes"})
    {
        EXPECT_EQ("some.json:1:" + std::to_string(21 + std::string(field).size()) + ": modules/m/" + field +
                      ": a list stands where an object is expected",
                  get_module_error("{\"" + std::string(field) + "\":[]}"));
        EXPECT_NE(std::string::npos, get_module_error("{\"" + std::string(field) + "\":{\"x\":[]}}")
                                         .find(std::string(field) + "/x: a list stands where"));
    }
    EXPECT_EQ("some.json:1:17: modules/m: a number stands where an object is expected", get_module_error("7"));
    EXPECT_EQ("some.json:1:12: modules: a list stands where an object is expected", get_error(R"({"modules":[]})"));
}

TEST(host_netlist_reader, a_position_is_the_begin_of_the_value)
{
    EXPECT_EQ("some.json:3:12: modules/m/cells/c/type: a number stands where a text is expected",
              get_error("{\"modules\":{\"m\":{\"cells\":{\n  \"c\":{\n  \"type\" :\t12345}}}}}"));
    EXPECT_EQ("some.json:2:4: modules/m/netnames/n/bits/1: the number -5 is no net number: 0 to 2147483647 are",
              get_error("{\"modules\":{\"m\":{\"netnames\":{\"n\":{\"bits\":[1\n,  -5]}}}}}"));
}

TEST(host_netlist_reader, a_name_that_stands_twice_is_refused)
{
    EXPECT_EQ("some.json:1:20: modules/m: the name \"m\" stands twice in one object",
              get_error(R"({"modules":{"m":{},"m":{}}})"));
    EXPECT_EQ("some.json:1:15: modules: the name \"modules\" stands twice in one object",
              get_error(R"({"modules":{},"modules":{}})"));
    EXPECT_NE(std::string::npos,
              get_module_error(R"({"cells":{"A":{"type":"T","connections":{"A":[]}},"A":{"type":"T"}}})")
                  .find("modules/m/cells/A: the name \"A\" stands twice"));
    EXPECT_NE(std::string::npos, get_module_error(R"({"cells":{"A":{"type":"T","connections":{"P":[],"P":[]}}}})")
                                     .find("modules/m/cells/A/connections/P: the name \"P\" stands twice"));
    EXPECT_NE(std::string::npos, get_module_error(R"({"ports":{"p":{"bits":[],"direction":"input","bits":[]}}})")
                                     .find("modules/m/ports/p/bits: the name \"bits\" stands twice"));
    EXPECT_NE(std::string::npos,
              get_module_error(R"({"netnames":{"n":{"bits":[]},"n":{"bits":[]}}})").find("stands twice"));
    EXPECT_NE(std::string::npos, get_module_error(R"({"attributes":{"a":1,"a":1}})").find("stands twice"));
    // The same name in different objects is none of that.
    EXPECT_NE(nullptr, read(R"({"modules":{"m":{"cells":{"A":{"type":"A","parameters":{"A":1},"attributes":{"A":1},
                            "connections":{"A":[]}},"B":{"type":"A","connections":{"A":[]}}},
                            "netnames":{"A":{"bits":[]}}},"A":{}}})")
                           .netlist);
}

// ---- Files ----------------------------------------------------------------------------------------------------------

TEST(host_netlist_reader, a_missing_file_says_so)
{
    const std::string file = TEST_ENVIRONMENT::get_folder() + "/none.json";
    EXPECT_EQ(file + ": there is no such file", NETLIST_READER::read_file(file).error.get_text());
    EXPECT_EQ(": there is no such file", NETLIST_READER::read_file("").error.get_text());
}

TEST(host_netlist_reader, a_folder_a_pipe_and_a_device_are_refused_at_once)
{
    const std::string folder = TEST_ENVIRONMENT::get_folder();
    EXPECT_EQ(folder + ": this is a folder", NETLIST_READER::read_file(folder).error.get_text());
    const std::string pipe = folder + "/pipe";
    ASSERT_EQ(0, mkfifo(pipe.c_str(), 0600));
    EXPECT_EQ(pipe + ": this is no regular file", NETLIST_READER::read_file(pipe).error.get_text());
    EXPECT_EQ("/dev/zero: this is no regular file", NETLIST_READER::read_file("/dev/zero").error.get_text());
}

TEST(host_netlist_reader, a_path_through_a_file_says_what_the_system_says)
{
    const std::string file = TEST_ENVIRONMENT::write_file("plain.json", SMALL) + "/x.json";
    EXPECT_EQ(file + ": it cannot be opened: Not a directory", NETLIST_READER::read_file(file).error.get_text());
}

TEST(host_netlist_reader, a_file_without_permission_says_so)
{
    const std::string file = TEST_ENVIRONMENT::write_file("secret.json", SMALL);
    ASSERT_EQ(0, chmod(TEST_ENVIRONMENT::get_folder().c_str(), 0755));
    ASSERT_EQ(0, chmod(file.c_str(), 0));
    const bool is_root = geteuid() == 0; // root reads everything, so somebody else has to try
    if (is_root)
    {
        ASSERT_EQ(0, seteuid(65534));
    }
    const std::string text = NETLIST_READER::read_file(file).error.get_text();
    if (is_root)
    {
        ASSERT_EQ(0, seteuid(0));
    }
    EXPECT_EQ(file + ": there is no permission to read it", text);
}

TEST(host_netlist_reader, a_file_that_is_too_large_is_refused_unread)
{
    const std::string file = TEST_ENVIRONMENT::write_file("huge.json", "{");
    ASSERT_EQ(0, truncate(file.c_str(), 3000000000));
    EXPECT_EQ(file + ": the file is too large: 3000000000 bytes, at most 2147483647 can be read",
              NETLIST_READER::read_file(file).error.get_text());
}

TEST(host_netlist_reader, a_good_file_is_read_under_its_name)
{
    const std::string file = TEST_ENVIRONMENT::write_file("good \xc3\xa4.json", SMALL);
    const auto netlist = NETLIST_READER::read_file(file).netlist;
    ASSERT_NE(nullptr, netlist);
    EXPECT_EQ(file, netlist->file);
}

TEST(host_netlist_reader, an_error_in_a_file_names_it)
{
    const std::string file = TEST_ENVIRONMENT::write_file("bad.json", "[]");
    EXPECT_EQ(file + ":1:1: this is no netlist: a list stands where an object is expected",
              NETLIST_READER::read_file(file).error.get_text());
}

// ---- Progress and stop ----------------------------------------------------------------------------------------------

TEST(host_netlist_reader, progress_rises_from_0_to_100)
{
    std::vector<int> seen;
    const std::string file = std::string(WORKBENCH_DESIGNS) + "/serial_station_placed.json";
    const NETLIST_READ_RESULT result = NETLIST_READER::read_file(file,
                                                                 [&seen](int percent)
                                                                 {
                                                                     seen.push_back(percent);
                                                                     return true;
                                                                 });
    ASSERT_NE(nullptr, result.netlist);
    EXPECT_GT(seen.size(), 10u);
    EXPECT_EQ(0, seen.front());
    EXPECT_EQ(100, seen.back());
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
}

TEST(host_netlist_reader, a_stop_at_any_time_leaves_neither_netlist_nor_error)
{
    const std::string file = std::string(WORKBENCH_DESIGNS) + "/serial_station_rtl.json";
    for (const int limit : {0, 10, 50, 94, 100})
    {
        const NETLIST_READ_RESULT result =
            NETLIST_READER::read_file(file, [limit](int percent) { return percent < limit; });
        EXPECT_TRUE(result.was_stopped) << limit;
        EXPECT_EQ(nullptr, result.netlist) << limit;
        EXPECT_EQ("", result.error.reason) << limit;
    }
}
