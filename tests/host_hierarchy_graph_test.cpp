#include "gui_test.h"
#include "hierarchy_graph.h"
#include "host_netlist_fixture.h"
#include "netlist_generator.h"
#include "netlist_reader.h"
#include "workbench_text.h"

#include <algorithm>
#include <limits>
#include <thread>

namespace
{
/// A cell in the file's own form.
std::string make_cell(const std::string& name, const std::string& type)
{
    return "\"" + name + R"(":{"type":")" + type + "\"}";
}

/// A module with those cells.
std::string make_module(const std::string& name, const std::vector<std::pair<std::string, std::string>>& cells,
                        const std::string& attributes = "")
{
    std::string text;
    for (const auto& [cell, type] : cells)
        text += (text.empty() ? "" : ",") + make_cell(cell, type);
    return "\"" + name + R"(":{"attributes":{)" + attributes + R"(},"cells":{)" + text + "}}";
}

std::shared_ptr<const NETLIST> read_modules(const std::vector<std::string>& modules)
{
    std::string text;
    for (const std::string& module : modules)
        text += (text.empty() ? "" : ",") + module;
    return read_netlist(R"({"modules":{)" + text + "}}");
}

/// "top" holds two of "a" and one of "b"; "a" holds three of "b", which has one cell.
std::shared_ptr<const NETLIST> make_sample()
{
    return read_modules({make_module("top", {{"u_a", "a"}, {"u_b", "b"}, {"u_c", "a"}}),
                         make_module("a", {{"x", "b"}, {"y", "b"}, {"z", "b"}, {"l", "LUT"}}),
                         make_module("b", {{"f", "FF"}})});
}

std::shared_ptr<const HIERARCHY_GRAPH> make(const std::shared_ptr<const NETLIST>& netlist)
{
    const HIERARCHY_GRAPH::RESULT result = HIERARCHY_GRAPH::make(netlist);
    EXPECT_NE(result.graph, nullptr) << result.error.toStdString();
    EXPECT_EQ(result.error, "");
    return result.graph;
}

const HIERARCHY_GRAPH::NODE& find(const HIERARCHY_GRAPH& graph, const QString& name)
{
    return *std::find_if(graph.get_nodes().begin(), graph.get_nodes().end(),
                         [&](const HIERARCHY_GRAPH::NODE& node) { return node.name == name; });
}

const HIERARCHY_GRAPH::EDGE* find_edge(const HIERARCHY_GRAPH& graph, const QString& parent, const QString& child)
{
    const auto edge =
        std::find_if(graph.get_edges().begin(), graph.get_edges().end(),
                     [&](const HIERARCHY_GRAPH::EDGE& e) {
                         return graph.get_nodes()[e.parent].name == parent && graph.get_nodes()[e.child].name == child;
                     });
    return edge != graph.get_edges().end() ? &*edge : nullptr;
}

/// A netlist as no reader gives it out: modules by name, each with instances of modules by index.
std::shared_ptr<NETLIST> make_raw(const std::vector<std::pair<const char*, std::vector<std::uint32_t>>>& modules)
{
    auto netlist = std::make_shared<NETLIST>();
    for (const auto& [name, instances] : modules)
    {
        NETLIST_MODULE module;
        module.name = netlist->names.add(name);
        for (const std::uint32_t instance : instances)
        {
            NETLIST_CELL cell;
            cell.module = instance;
            module.instances.push_back(std::uint32_t(module.cells.size()));
            module.cells.push_back(cell);
        }
        netlist->modules.push_back(std::move(module));
    }
    return netlist;
}

class host_hierarchy_graph : public TOLV_GUI_TEST
{
};

TEST_F(host_hierarchy_graph, each_module_is_one_node_with_the_number_of_its_instances)
{
    const auto graph = make(make_sample());
    ASSERT_EQ(graph->get_nodes().size(), 3u);
    EXPECT_EQ(find(*graph, "top").instance_count, 1u);
    EXPECT_EQ(find(*graph, "a").instance_count, 2u);
    EXPECT_EQ(find(*graph, "b").instance_count, 7u);
    EXPECT_TRUE(find(*graph, "top").is_top);
    EXPECT_FALSE(find(*graph, "a").is_top);
    EXPECT_EQ(find(*graph, "top").details, "top, 9 cells");
    EXPECT_EQ(find(*graph, "a").details, "2 instances, 4 cells");
    EXPECT_EQ(find(*graph, "b").details, "7 instances, 1 cell");
}

TEST_F(host_hierarchy_graph, an_edge_tells_how_many_instances_a_module_holds_of_another)
{
    const auto graph = make(make_sample());
    ASSERT_EQ(graph->get_edges().size(), 3u);
    EXPECT_EQ(find_edge(*graph, "top", "a")->count, 2u);
    EXPECT_EQ(find_edge(*graph, "top", "b")->count, 1u);
    EXPECT_EQ(find_edge(*graph, "a", "b")->count, 3u);
    EXPECT_EQ(find(*graph, "b").parents.size(), 2u);
    EXPECT_EQ(find(*graph, "top").children.size(), 2u);
}

TEST_F(host_hierarchy_graph, a_path_leads_to_an_instance_of_the_module)
{
    const auto graph = make(make_sample());
    const auto get_path = [&](std::uint32_t module) { return graph->get_path(graph->find_node(module)); };
    EXPECT_EQ(get_path(0), QStringList("top"));
    EXPECT_EQ(get_path(1), QStringList({"top", "u_a"}));
    EXPECT_EQ(get_path(2), QStringList({"top", "u_b"}));
    EXPECT_EQ(graph->find_node(3), HIERARCHY_GRAPH::NONE);
}

TEST_F(host_hierarchy_graph, cells_and_modules_of_libraries_are_no_nodes)
{
    const auto graph = make(read_modules({make_module("top", {{"u_a", "a"}, {"l", "LUT4"}, {"m", "UNKNOWN"}}),
                                          make_module("a", {}), make_module("LUT4", {}, R"("blackbox":"1")")}));
    ASSERT_EQ(graph->get_nodes().size(), 2u);
    EXPECT_EQ(graph->get_edges().size(), 1u);
    EXPECT_TRUE(find(*graph, "a").is_empty);
    EXPECT_FALSE(find(*graph, "top").is_empty);
}

TEST_F(host_hierarchy_graph, parents_stand_to_the_left_of_what_they_hold_and_nothing_overlaps)
{
    const NETLIST_READ_RESULT shipped = NETLIST_READER::read_file(WORKBENCH_DESIGNS "/serial_station_rtl.json");
    for (const auto& netlist : {make_sample(), shipped.netlist})
    {
        const auto graph = make(netlist);
        for (const HIERARCHY_GRAPH::EDGE& edge : graph->get_edges())
        {
            const QRectF parent = graph->get_nodes()[edge.parent].rect;
            const QRectF child = graph->get_nodes()[edge.child].rect;
            EXPECT_LT(parent.right(), child.left());
            // A line begins and ends at its boxes, but for the rounding of their places.
            EXPECT_NEAR(edge.line.elementAt(0).x, parent.right(), 2);
            EXPECT_NEAR(edge.line.currentPosition().x(), child.left(), 2);
            EXPECT_TRUE(graph->get_bounds().contains(edge.line.boundingRect().adjusted(-1, -1, 1, 1)));
            for (const HIERARCHY_GRAPH::NODE& node : graph->get_nodes())
                EXPECT_FALSE(edge.label_rect.intersects(node.rect));
        }
        for (const HIERARCHY_GRAPH::NODE& node : graph->get_nodes())
        {
            EXPECT_TRUE(graph->get_bounds().contains(node.rect));
            EXPECT_EQ(node.rect, QRectF(node.rect.toRect())); // whole units: sharp lines
            EXPECT_EQ(std::count_if(graph->get_nodes().begin(), graph->get_nodes().end(),
                                    [&](const auto& other) { return other.rect.intersects(node.rect); }),
                      1);
        }
    }
}

TEST_F(host_hierarchy_graph, counts_beyond_any_number_stop_at_the_largest)
{
    const auto graph = make(read_netlist(NETLIST_GENERATOR::make_doubling(70, 1)));
    EXPECT_EQ(find(*graph, "m69").instance_count, 2u);
    EXPECT_EQ(find(*graph, "m7").instance_count, std::uint64_t(1) << 63);
    EXPECT_EQ(find(*graph, "m0").instance_count, std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(find(*graph, "m0").details, "countless instances, 1 cell");
}

TEST_F(host_hierarchy_graph, a_netlist_in_which_a_module_contains_itself_says_so)
{
    const auto get_error = [](const std::shared_ptr<const NETLIST>& netlist)
    {
        const HIERARCHY_GRAPH::RESULT result = HIERARCHY_GRAPH::make(netlist);
        EXPECT_EQ(result.graph, nullptr);
        return result.error;
    };
    EXPECT_EQ(get_error(make_raw({{"top", {1}}, {"a", {2, 3}}, {"b", {1}}, {"c", {}}})),
              "The netlist is damaged: a module contains itself (a > b > a).");
    EXPECT_EQ(get_error(make_raw({{"own", {0}}})), "The netlist is damaged: a module contains itself (own > own).");
    // What hangs below a circle is no part of it.
    EXPECT_EQ(get_error(make_raw({{"below", {}}, {"a", {2, 0}}, {"b", {1, 0}}})),
              "The netlist is damaged: a module contains itself (a > b > a).");
}

TEST_F(host_hierarchy_graph, a_netlist_that_refers_to_what_is_not_there_says_so)
{
    EXPECT_EQ(HIERARCHY_GRAPH::make(make_raw({{"top", {7}}})).error,
              "The netlist is damaged: the module \"top\" refers to a module that is not there.");
    const std::shared_ptr<NETLIST> no_cell = make_raw({{"top", {}}});
    no_cell->modules[0].instances.push_back(3);
    EXPECT_EQ(HIERARCHY_GRAPH::make(no_cell).error,
              "The netlist is damaged: the module \"top\" refers to a module that is not there.");
    const std::shared_ptr<NETLIST> no_top = make_raw({{"top", {}}});
    no_top->top_modules = {1};
    EXPECT_EQ(HIERARCHY_GRAPH::make(no_top).error, "The netlist is damaged: its top module is not there.");
    EXPECT_EQ(HIERARCHY_GRAPH::make(std::make_shared<NETLIST>()).error, "The netlist has no modules.");
}

TEST_F(host_hierarchy_graph, a_hierarchy_of_a_thousand_modules_is_drawn)
{
    std::vector<std::string> modules;
    for (int i = 0; i < 1000; ++i)
    {
        std::vector<std::pair<std::string, std::string>> cells;
        for (int child = 4 * i + 1; child <= 4 * i + 4 && child < 1000; ++child)
            cells.emplace_back("u" + std::to_string(child), "m" + std::to_string(child));
        modules.push_back(make_module("m" + std::to_string(i), cells));
    }
    const auto graph = make(read_modules(modules));
    EXPECT_EQ(graph->get_nodes().size(), 1000u);
    EXPECT_EQ(graph->get_edges().size(), 999u);
    EXPECT_EQ(graph->get_path(999).size(), 6);
}

TEST_F(host_hierarchy_graph, a_hierarchy_that_nobody_could_read_says_how_large_it_is)
{
    std::vector<std::pair<const char*, std::vector<std::uint32_t>>> modules(3001, {"m", {}});
    EXPECT_EQ(HIERARCHY_GRAPH::make(make_raw(modules)).error,
              QString("The hierarchy has %1 modules, more than a graph can show (%2).")
                  .arg(workbench_format_count(3001), workbench_format_count(3000)));
    modules.resize(128);
    for (std::uint32_t i = 0; i < 64; ++i)
    {
        for (std::uint32_t child = 64; child < 128; ++child)
            modules[i].second.push_back(child);
    }
    EXPECT_EQ(HIERARCHY_GRAPH::make(make_raw(modules)).error,
              QString("The hierarchy has %1 pairs of a module and one that it holds, more than a graph can show (%2).")
                  .arg(workbench_format_count(4096), workbench_format_count(4000)));
}

TEST_F(host_hierarchy_graph, threads_may_draw_at_the_same_time)
{
    const auto netlist = make_sample();
    std::shared_ptr<const HIERARCHY_GRAPH> results[2];
    std::thread other([&] { results[1] = HIERARCHY_GRAPH::make(netlist).graph; });
    results[0] = HIERARCHY_GRAPH::make(netlist).graph;
    other.join();
    ASSERT_NE(results[0], nullptr);
    ASSERT_NE(results[1], nullptr);
    EXPECT_EQ(results[0]->get_bounds(), results[1]->get_bounds());
}
} // namespace
