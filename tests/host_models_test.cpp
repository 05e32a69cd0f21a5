#include "host_netlist_fixture.h"
#include "netlist_properties.h"
#include "netlist_reader.h"
#include "netlist_table_model.h"

#include "qt_printers.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>

namespace
{
using TESTER = QAbstractItemModelTester;

const char* const TEXT = R"({"modules":{
    "leaf":{"attributes":{"hdlname":"\\leaf_source","src":"leaf.v:1"},
        "ports":{"a":{"direction":"input","bits":[2]},
                 "q":{"direction":"output","bits":[3,4,5,6]},
                 "up":{"direction":"inout","bits":[3,4],"offset":4,"upto":1},
                 "none":{"direction":"input","bits":[]}},
        "cells":{"c10":{"type":"LUT","connections":{"I":[2]},"attributes":{"src":"dir.d/leaf.v:7.2","NEXTPNR_BEL":"X1/Y2/lc3"}},
                 "c9":{"type":"LUT","connections":{"I":[2],"O":[3]},"port_directions":{"I":"input","O":"output"}},
                 "b":{"type":"DFF","connections":{},"attributes":{"src":"unknown"}}},
        "netnames":{"a":{"bits":[2],"attributes":{"src":"leaf.v:3.1-4.2|top.v:5|+/map.v:1.1|leaf.v:3.7-3.9"}},"q":{"bits":[3,4,5,6],"attributes":{"src":"+/map.v:9.1-9.2"}},
                    "$1":{"hide_name":1,"bits":[7]}}},
    "mid":{"cells":{"u1":{"type":"leaf","connections":{"a":[2]}},"x":{"type":"LUT"},"u2":{"type":"leaf"}}},
    "top":{"attributes":{"top":"1"},"cells":{"m":{"type":"mid"},"l":{"type":"leaf"}}},
    "other":{"cells":{"x":{"type":"DFF"}}}}})";
enum MODULE
{
    LEAF,
    MID,
    TOP,
    OTHER
};

std::shared_ptr<const NETLIST> read(const std::string& text = TEXT)
{
    return read_netlist(text);
}

QString text_at(const QAbstractItemModel& model, int row, int column, const QModelIndex& parent = QModelIndex())
{
    return model.index(row, column, parent).data().toString();
}

QStringList row_at(const QAbstractItemModel& model, int row, const QModelIndex& parent = QModelIndex())
{
    QStringList texts;
    for (int column = 0; column < model.columnCount(parent); ++column)
        texts.append(text_at(model, row, column, parent));
    return texts;
}

QStringList column_of(const QAbstractItemModel& model, int column)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts.append(text_at(model, row, column));
    return texts;
}

QStringList titles_of(const QAbstractItemModel& model)
{
    QStringList texts;
    for (int column = 0; column < model.columnCount(); ++column)
        texts.append(model.headerData(column, Qt::Horizontal).toString());
    return texts;
}

QStringList rows_of(const PROPERTY_MODEL::GROUP& group)
{
    QStringList texts{group.title};
    for (const auto& row : group.rows)
        texts.append(row.first + QStringLiteral(" = ") + row.second);
    return texts;
}
} // namespace

// ---- Tables ---------------------------------------------------------------------------------------------------------

TEST(host_table_models, keep_the_rules_of_models_while_they_are_filled_and_emptied)
{
    CELL_TABLE_MODEL cells;
    PORT_TABLE_MODEL ports;
    NET_TABLE_MODEL nets;
    TYPE_TABLE_MODEL types;
    for (NETLIST_TABLE_MODEL* model : std::initializer_list<NETLIST_TABLE_MODEL*>{&cells, &ports, &nets, &types})
    {
        NETLIST_SORT_PROXY proxy(model);
        const TESTER tester(model, TESTER::FailureReportingMode::Fatal);
        const TESTER proxy_tester(&proxy, TESTER::FailureReportingMode::Fatal);
        EXPECT_EQ(0, model->rowCount());
        model->set_module(read(), LEAF);
        EXPECT_GT(model->rowCount(), 0);
        proxy.sort(0);
        proxy.sort(model->columnCount() - 1, Qt::DescendingOrder);
        const auto design = read_design("placed");
        model->set_module(design, design->top_modules[0]);
        model->set_module(nullptr, 0);
        EXPECT_EQ(0, model->rowCount());
    }
}

TEST(host_table_models, cells)
{
    CELL_TABLE_MODEL model;
    model.set_module(read(), LEAF);
    EXPECT_EQ((QStringList{"Name", "Type", "Location", "Source", "Ports"}), titles_of(model));
    ASSERT_EQ(3, model.rowCount());
    EXPECT_EQ((QStringList{"c10", "LUT", "X1/Y2/lc3", "dir.d/leaf.v:7", "1"}), row_at(model, 0));
    EXPECT_EQ((QStringList{"c9", "LUT", "", "", "2"}), row_at(model, 1));
    EXPECT_EQ((QStringList{"b", "DFF", "", "unknown", "0"}), row_at(model, 2));
    EXPECT_TRUE(model.has_locations());
    model.set_module(read(), MID);
    EXPECT_EQ((QStringList{"u1", "leaf_source", "", "", "1"}), row_at(model, 0));
    EXPECT_FALSE(model.has_locations());
}

TEST(host_table_models, ports)
{
    PORT_TABLE_MODEL model;
    model.set_module(read(), LEAF);
    EXPECT_EQ((QStringList{"Name", "Direction", "Range", "Width"}), titles_of(model));
    ASSERT_EQ(4, model.rowCount());
    EXPECT_EQ((QStringList{"a", "input", "", "1"}), row_at(model, 0));
    EXPECT_EQ((QStringList{"q", "output", "[3:0]", "4"}), row_at(model, 1));
    EXPECT_EQ((QStringList{"up", "inout", "[4:5]", "2"}), row_at(model, 2));
    EXPECT_EQ((QStringList{"none", "input", "", "0"}), row_at(model, 3));
}

TEST(host_table_models, nets)
{
    NET_TABLE_MODEL model;
    model.set_module(read(), LEAF);
    EXPECT_EQ((QStringList{"Name", "Source", "Width", "Drivers", "Sinks", "Fan-out"}), titles_of(model));
    ASSERT_EQ(3, model.rowCount());
    // Cell c10 does not say which way its pins go.
    EXPECT_EQ((QStringList{"a", "leaf.v:3, top.v:5", "1", "1", "1", "1"}), row_at(model, 0));
    EXPECT_EQ((QStringList{"q", "+/map.v:9", "4", "3", "6", "2"}), row_at(model, 1));
    EXPECT_EQ((QStringList{"$1", "", "1", "0", "0", "0"}), row_at(model, 2));
    EXPECT_EQ("leaf.v:3.1-4.2<br>top.v:5<br>+/map.v:1.1<br>leaf.v:3.7-3.9",
              model.index(0, NET_TABLE_MODEL::COLUMN_SOURCE).data(Qt::ToolTipRole).toString());
}

TEST(host_table_models, types)
{
    TYPE_TABLE_MODEL model;
    model.set_module(read(), MID);
    EXPECT_EQ((QStringList{"Type", "Here", "In total"}), titles_of(model));
    ASSERT_EQ(3, model.rowCount());
    EXPECT_EQ((QStringList{"LUT", "1", "5"}), row_at(model, 0));
    EXPECT_EQ((QStringList{"DFF", "0", "2"}), row_at(model, 1));
    EXPECT_EQ((QStringList{"leaf_source", "2", "2"}), row_at(model, 2));
}

TEST(host_table_models, numbers_stand_at_the_right_and_texts_at_the_left)
{
    PORT_TABLE_MODEL model;
    model.set_module(read(), LEAF);
    const int left = Qt::AlignLeft | Qt::AlignVCenter;
    const int right = Qt::AlignRight | Qt::AlignVCenter;
    EXPECT_EQ(left, model.index(0, PORT_TABLE_MODEL::COLUMN_NAME).data(Qt::TextAlignmentRole).toInt());
    EXPECT_EQ(right, model.index(0, PORT_TABLE_MODEL::COLUMN_WIDTH).data(Qt::TextAlignmentRole).toInt());
    EXPECT_EQ(right, model.headerData(PORT_TABLE_MODEL::COLUMN_WIDTH, Qt::Horizontal, Qt::TextAlignmentRole).toInt());
}

TEST(host_table_models, sorting_orders_texts_and_values_and_gives_the_order_of_the_file_back)
{
    PORT_TABLE_MODEL ports;
    ports.set_module(read(), LEAF);
    NETLIST_SORT_PROXY proxy(&ports);
    EXPECT_EQ((QStringList{"a", "q", "up", "none"}), column_of(proxy, 0));
    proxy.sort(PORT_TABLE_MODEL::COLUMN_NAME, Qt::DescendingOrder);
    EXPECT_EQ((QStringList{"up", "q", "none", "a"}), column_of(proxy, 0));
    proxy.sort(PORT_TABLE_MODEL::COLUMN_WIDTH);
    EXPECT_EQ((QStringList{"none", "a", "up", "q"}), column_of(proxy, 0));
    proxy.sort(-1);
    EXPECT_EQ((QStringList{"a", "q", "up", "none"}), column_of(proxy, 0));
}

TEST(host_table_models, sorting_takes_names_that_are_numbers_for_numbers)
{
    PORT_TABLE_MODEL ports;
    ports.set_module(read(R"({"modules":{"m":{"ports":{
        "10":{"direction":"input","bits":[]},"9":{"direction":"input","bits":[]},"1e1":{"direction":"input","bits":[]}}}}})"),
                     0);
    NETLIST_SORT_PROXY proxy(&ports);
    proxy.sort(PORT_TABLE_MODEL::COLUMN_NAME);
    EXPECT_EQ((QStringList{"9", "10", "1e1"}), column_of(proxy, 0));
}

TEST(host_table_models, a_table_keeps_its_netlist_alive)
{
    CELL_TABLE_MODEL model;
    auto netlist = read();
    const std::weak_ptr<const NETLIST> watch = netlist;
    model.set_module(std::move(netlist), LEAF);
    ASSERT_FALSE(watch.expired());
    EXPECT_EQ("c10", text_at(model, 0, 0));
    model.set_module(nullptr, 0);
    EXPECT_TRUE(watch.expired());
}

// ---- Names of bits --------------------------------------------------------------------------------------------------

TEST(host_bit_names, bits_are_named_as_an_engineer_writes_them)
{
    const auto netlist = read(R"({"modules":{"m":{
        "ports":{"whole":{"direction":"input","bits":[2,3,4,5]},
                 "bit":{"direction":"input","bits":[4]},
                 "slice":{"direction":"input","bits":[3,4]},
                 "mix":{"direction":"input","bits":[2,3,"x","0",9]},
                 "swapped":{"direction":"input","bits":[3,2]},
                 "constant":{"direction":"input","bits":["0","1","z"]},
                 "upward":{"direction":"input","bits":[10,11]},
                 "part":{"direction":"input","bits":[10]},
                 "unnamed":{"direction":"input","bits":[99,98]},
                 "empty":{"direction":"input","bits":[]},
                 "single":{"direction":"input","bits":[9]}},
        "netnames":{"$made":{"hide_name":1,"bits":[2,3,4,5]},"count":{"bits":[2,3,4,5]},"alias":{"bits":[2,3,4,5]},
                    "flag":{"bits":[9]},"lanes":{"bits":[10,11,12],"offset":4,"upto":1},"$x":{"hide_name":1,"bits":[97]}}}}})");
    ASSERT_NE(nullptr, netlist);
    const NETLIST_BIT_NAMES names(*netlist, netlist->modules[0]);
    QStringList texts;
    for (const NETLIST_PORT& port : netlist->modules[0].ports)
        texts.append(
            QString::fromStdString(std::string(netlist->names.get(port.name)) + ": " + names.get_text(port.bits)));
    EXPECT_EQ((QStringList{"whole: count", "bit: count[2]", "slice: count[2:1]", "mix: {flag, 2'b0x, count[1:0]}",
                           "swapped: {count[0], count[1]}", "constant: 3'bz10", "upward: lanes[5:6]", "part: lanes[6]",
                           "unnamed: {#98, #99}", "empty: ", "single: flag"}),
              texts);
}

// ---- Properties -----------------------------------------------------------------------------------------------------

TEST(host_property_model, keeps_the_rules_of_models)
{
    PROPERTY_MODEL model;
    const TESTER tester(&model, TESTER::FailureReportingMode::Fatal);
    model.set_groups({{"One", {{"a", "1"}, {"b", "2"}}}, {"Empty", {}}, {"Two", {{"c", "3"}}}});
    EXPECT_EQ((QStringList{"Property", "Value"}), titles_of(model));
    ASSERT_EQ(2, model.rowCount());
    EXPECT_EQ((QStringList{"One", ""}), row_at(model, 0));
    EXPECT_EQ((QStringList{"b", "2"}), row_at(model, 1, model.index(0, 0)));
    EXPECT_EQ((QStringList{"Two", ""}), row_at(model, 1));
    EXPECT_EQ((QStringList{"c", "3"}), row_at(model, 0, model.index(1, 0)));
    model.set_groups({});
    EXPECT_EQ(0, model.rowCount());
}

TEST(host_properties, a_cell_tells_its_connections_parameters_and_attributes)
{
    const auto netlist = read(R"({"modules":{"m":{"cells":{"c":{"type":"LUT","parameters":{"INIT":"01"},
        "attributes":{"src":"a.v:1"},"port_directions":{"I":"input","O":"output"},
        "connections":{"I":[2],"O":[],"P":["1"]}}},"netnames":{"in":{"bits":[2],"attributes":{"keep":1}}},
        "ports":{"in":{"direction":"input","bits":[2]}},"attributes":{"top":"1"}}}})");
    ASSERT_NE(nullptr, netlist);
    const NETLIST_MODULE& module = netlist->modules[0];
    const NETLIST_BIT_NAMES names(*netlist, module);
    const auto cell = netlist_describe_cell(*netlist, module, module.cells[0], names);
    ASSERT_EQ(4, cell.size());
    EXPECT_EQ((QStringList{"Cell", "Name = c", "Type = LUT"}), rows_of(cell[0]));
    EXPECT_EQ((QStringList{"Connections", "I (input) = in", "O (output) = not connected", "P (?) = 1'b1"}),
              rows_of(cell[1]));
    EXPECT_EQ((QStringList{"Parameters", "INIT = 01"}), rows_of(cell[2]));
    EXPECT_EQ((QStringList{"Attributes", "src = a.v:1"}), rows_of(cell[3]));
    const auto port = netlist_describe_port(*netlist, module.ports[0], names);
    EXPECT_EQ((QStringList{"Port", "Name = in", "Direction = input", "Width = 1", "Bits = in"}), rows_of(port[0]));
    const auto net = netlist_describe_net(*netlist, module, module.nets[0]);
    EXPECT_EQ((QStringList{"Net", "Name = in", "Width = 1"}), rows_of(net[0]));
    EXPECT_EQ((QStringList{"Attributes", "keep = 1"}), rows_of(net[1]));
    const auto described = netlist_describe_module(*netlist, module);
    EXPECT_EQ((QStringList{"Module", "Name = m", "Ports = 1", "Cells = 1", "Nets = 1"}), rows_of(described[0]));
    EXPECT_EQ((QStringList{"Attributes", "top = 1"}), rows_of(described[1]));
}
