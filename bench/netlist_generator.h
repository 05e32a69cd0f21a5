#pragma once

#include <algorithm>
#include <cstddef>
#include <string>

/// Large netlists for benchmarks and tests, laid out as yosys writes them. All names are fixed by the size.
class NETLIST_GENERATOR
{
public:
    /// A top with `instances` instances of one module, which has `cells` look-up tables and as many nets, plus one
    /// flip-flop. About 860 bytes a cell.
    static std::string make(std::size_t cells, std::size_t instances = 3)
    {
        std::string text = "{\n  \"creator\": \"Yosys 0.23\",\n  \"modules\": {\n    \"block\": {\n";
        text.reserve(cells * 1000 + 4096);
        text +=
            "      \"attributes\": {\n        \"src\": \"block.v:1.1-99.10\"\n      },\n      \"ports\": {\n"
            "        \"clk\": {\n          \"direction\": \"input\",\n          \"bits\": [ 2 ]\n        }\n      },\n"
            "      \"cells\": {\n";
        for (std::size_t i = 0; i < cells; ++i)
            add_cell(text, i);
        text += "        \"state\": {\n          \"hide_name\": 0,\n          \"type\": \"SB_DFF\",\n"
                "          \"connections\": {\n            \"C\": [ 2 ],\n            \"D\": [ 3 ]\n          }\n      "
                "  }\n"
                "      },\n      \"netnames\": {\n";
        for (std::size_t i = 0; i < cells; ++i)
            add_net(text, i, i + 1 == cells);
        text += "      }\n    },\n    \"large_top\": {\n      \"attributes\": {\n        \"top\": \"1\"\n      },\n"
                "      \"cells\": {\n";
        for (std::size_t i = 0; i < instances; ++i)
            text += "        \"u_" + std::to_string(i) + "\": {\n          \"type\": \"block\"\n        }" +
                    (i + 1 == instances ? "\n" : ",\n");
        return text + "      }\n    }\n  }\n}\n";
    }

    /// A chain of modules "m0" to "m<levels>", each with two instances of the one before; "m0" has `cells` cells. The top
    /// stands for 2 to the power of `levels` instances.
    static std::string make_doubling(int levels, int cells)
    {
        std::string text = R"({"modules":{"m0":{"cells":{)";
        for (int i = 0; i < cells; ++i)
            text += (i > 0 ? ",\"c" : "\"c") + std::to_string(i) + R"(":{"type":"LUT"})";
        text += "}}";
        for (int i = 1; i <= levels; ++i)
        {
            const std::string type = R"({"type":"m)" + std::to_string(i - 1) + "\"}";
            text.append(",\"m").append(std::to_string(i)).append(R"(":{"cells":{"u":)");
            text.append(type).append(",\"v\":").append(type).append("}}");
        }
        return text + "}}";
    }

    /// A placed and routed top "chip" as nextpnr writes it: `side` by `side` tiles with eight cells each, and for each
    /// cell one net of `pips` pips that goes from its tile to tiles near by.
    static std::string make_placed(int side, int pips)
    {
        std::string cells;
        std::string nets;
        for (int i = 0; i < side * side * 8; ++i)
        {
            const int x = i / 8 % side;
            const int y = i / 8 / side;
            const std::string number = std::to_string(i);
            const char* const comma = i == 0 ? "" : ",";
            cells.append(comma).append("\"u_").append(std::to_string(x * 5 / side)).append(".c").append(number);
            cells.append(R"(":{"type":"ICESTORM_LC","attributes":{"NEXTPNR_BEL":"X)").append(std::to_string(x));
            cells.append("/Y").append(std::to_string(y)).append("/lc").append(std::to_string(i % 8));
            cells.append(R"("},"connections":{"O":[)").append(std::to_string(i + 2)).append("]}}");
            nets.append(comma).append("\"n").append(number).append(R"(":{"bits":[)").append(std::to_string(i + 2));
            nets.append(R"(],"attributes":{"ROUTING":")").append(make_route(i, x, y, side, pips)).append("\"}}");
        }
        return R"({"creator":"nextpnr","modules":{"chip":{"attributes":{"top":"1"},"cells":{)" + cells +
               R"(},"netnames":{)" + nets + "}}}}";
    }

private:
    static std::string make_route(int i, int x, int y, int side, int pips)
    {
        const auto name = [](int column, int row) { return "X" + std::to_string(column) + "/Y" + std::to_string(row); };
        std::string source = std::to_string(x) + "." + std::to_string(y) + ".lutff_" + std::to_string(i % 8) + ":out";
        std::string route = name(x, y) + "/lutff_" + std::to_string(i % 8) + ":out;;1";
        unsigned int state = unsigned(i) * 2654435761u + 1;
        for (int pip = 0; pip < pips; ++pip)
        {
            state = state * 1664525u + 1013904223u;
            const int step = int(state >> 28) % 5 - 2;
            int& moved = (state >> 24 & 1) != 0 ? x : y;
            moved = std::min(std::max(moved + step, 0), side - 1);
            const std::string wire = "sp4_h_r_" + std::to_string(state >> 16 & 63);
            const std::string target = std::to_string(x) + "." + std::to_string(y) + "." + wire;
            route.append(";").append(name(x, y)).append("/").append(wire).append(";").append(name(x, y)).append("/");
            route.append(source).append(".->.").append(target).append(";1");
            source = target;
        }
        return route;
    }

    static void add_cell(std::string& text, std::size_t i)
    {
        const std::string number = std::to_string(i);
        text +=
            "        \"data_" + number +
            "_SB_LUT4_O\": {\n          \"hide_name\": 0,\n          \"type\": \"SB_LUT4\",\n"
            "          \"parameters\": {\n            \"LUT_INIT\": \"1010101011001100\"\n          },\n"
            "          \"attributes\": {\n            \"module_not_derived\": \"00000000000000000000000000000001\",\n"
            "            \"src\": \"block.v:" +
            number + ".34-" + number +
            ".52\"\n          },\n"
            "          \"port_directions\": {\n            \"I0\": \"input\",\n            \"I1\": \"input\",\n"
            "            \"I2\": \"input\",\n            \"I3\": \"input\",\n            \"O\": \"output\"\n          "
            "},\n"
            "          \"connections\": {\n            \"I0\": [ \"0\" ],\n            \"I1\": [ \"0\" ],\n"
            "            \"I2\": [ 2 ],\n            \"I3\": [ " +
            std::to_string(i + 2) + " ],\n            \"O\": [ " + std::to_string(i + 3) +
            " ]\n          }\n        },\n";
    }

    static void add_net(std::string& text, std::size_t i, bool is_last)
    {
        const std::string number = std::to_string(i);
        text += "        \"data_" + number + "\": {\n          \"hide_name\": 0,\n          \"bits\": [ " +
                std::to_string(i + 3) + " ],\n          \"attributes\": {\n            \"src\": \"block.v:" + number +
                ".17-" + number + ".21\"\n          }\n        }" + (is_last ? "\n" : ",\n");
    }
};
