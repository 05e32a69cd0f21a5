#include "gui_test.h"
#include "host_netlist_fixture.h"
#include "netlist_generator.h"
#include "netlist_reader.h"
#include "schematic.h"
#include "schematic_painter.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <set>
#include <thread>

namespace
{
std::shared_ptr<const SCHEMATIC> draw(const std::string& module)
{
    const std::shared_ptr<const NETLIST> netlist = read_netlist(R"({"modules":{"m":)" + module + "}}");
    return SCHEMATIC::make(netlist, netlist->top_modules[0]);
}

/// a -> buffer -> y, and a register whose input is its own output.
const char CHAIN[] = R"({
"ports":{"a":{"direction":"input","bits":[2]},"y":{"direction":"output","bits":[3]}},
"cells":{"b":{"type":"BUF","port_directions":{"I":"input","O":"output"},"connections":{"I":[2],"O":[3]}},
         "r":{"type":"SB_DFF","port_directions":{"C":"input","D":"input","Q":"output"},
              "connections":{"C":[2],"D":[4],"Q":[4]}}},
"netnames":{"a":{"bits":[2]},"y":{"bits":[3]},"loop":{"bits":[4]}}})";

/// Whether the lines of a net hold two points together.
bool is_connected(const SCHEMATIC& schematic, std::uint32_t net, const QPoint& from, const QPoint& to)
{
    std::vector<const SCHEMATIC::WIRE*> left;
    for (const SCHEMATIC::WIRE& wire : schematic.wires)
    {
        if (wire.net == net)
            left.push_back(&wire);
    }
    const auto contains = [](const SCHEMATIC::WIRE& wire, const QPoint& point)
    { return QRect(wire.from, wire.to).contains(point); };
    const auto touches = [](const SCHEMATIC::WIRE& a, const SCHEMATIC::WIRE& b)
    { return QRect(a.from, a.to).intersects(QRect(b.from, b.to)); };
    std::vector<const SCHEMATIC::WIRE*> reached;
    const auto reach = [&](const auto& condition)
    {
        const auto end = std::stable_partition(left.begin(), left.end(),
                                               [&](const SCHEMATIC::WIRE* wire) { return !condition(*wire); });
        reached.insert(reached.end(), end, left.end());
        left.erase(end, left.end());
    };
    reach([&](const SCHEMATIC::WIRE& wire) { return contains(wire, from); });
    for (std::size_t i = 0; i < reached.size(); ++i)
        reach([&, wire = reached[i]](const SCHEMATIC::WIRE& other) { return touches(*wire, other); });
    return std::any_of(reached.begin(), reached.end(), [&](const auto* wire) { return contains(*wire, to); });
}

std::shared_ptr<const NETLIST> read_shipped(const char* file)
{
    return NETLIST_READER::read_file(std::string(WORKBENCH_DESIGNS "/") + file).netlist;
}

class SCHEMATIC_TEST : public TOLV_GUI_TEST
{
};

TEST_F(SCHEMATIC_TEST, signals_run_from_left_to_right)
{
    const auto schematic = draw(CHAIN);
    ASSERT_EQ(schematic->boxes.size(), 4u);
    const SCHEMATIC::BOX& a = schematic->boxes[0];
    const SCHEMATIC::BOX& y = schematic->boxes[1];
    const SCHEMATIC::BOX& buffer = schematic->boxes[schematic->find_item_of_cell(0)];
    EXPECT_EQ(a.kind, SCHEMATIC::KIND::INPUT_PORT);
    EXPECT_EQ(a.title, "a");
    EXPECT_EQ(y.kind, SCHEMATIC::KIND::OUTPUT_PORT);
    EXPECT_EQ(buffer.title, "BUF");
    EXPECT_EQ(buffer.name, "b");
    EXPECT_LT(a.rect.right(), buffer.rect.left());
    EXPECT_LT(buffer.rect.right(), y.rect.left());
    EXPECT_TRUE(buffer.pins[0].is_left);
    EXPECT_FALSE(buffer.pins[1].is_left);
    EXPECT_EQ(buffer.pins[0].position.x(), buffer.rect.left());
    EXPECT_EQ(buffer.pins[1].position.x(), buffer.rect.right());
    EXPECT_EQ(schematic->boxes[schematic->find_item_of_cell(1)].kind, SCHEMATIC::KIND::REGISTER);
}

TEST_F(SCHEMATIC_TEST, a_net_joins_its_pins_even_where_it_leads_back)
{
    const auto schematic = draw(CHAIN);
    const SCHEMATIC::BOX& a = schematic->boxes[0];
    const SCHEMATIC::BOX& buffer = schematic->boxes[schematic->find_item_of_cell(0)];
    const SCHEMATIC::BOX& loop = schematic->boxes[schematic->find_item_of_cell(1)];
    ASSERT_EQ(schematic->nets.size(), 3u);
    EXPECT_EQ(schematic->nets[0].name, "a");
    EXPECT_TRUE(schematic->nets[0].is_clock);
    EXPECT_TRUE(is_connected(*schematic, 0, a.pins[0].position, buffer.pins[0].position));
    EXPECT_TRUE(is_connected(*schematic, 0, a.pins[0].position, loop.pins[0].position));
    EXPECT_EQ(schematic->nets[2].name, "loop");
    EXPECT_TRUE(is_connected(*schematic, 2, loop.pins[2].position, loop.pins[1].position));
    EXPECT_EQ(schematic->junctions.size(), 1u);
    EXPECT_EQ(schematic->junctions[0].net, 0u);
}

TEST_F(SCHEMATIC_TEST, constants_and_undriven_bits_stand_at_their_pin)
{
    const auto schematic =
        draw(R"({"cells":{"c":{"type":"$add","port_directions":{"A":"input","B":"input","Y":"output"},
        "connections":{"A":["0","1","1"],"B":[7,"x"],"Y":[8]}}},"netnames":{"lost":{"bits":[7]}}})");
    const SCHEMATIC::BOX& box = schematic->boxes[0];
    EXPECT_EQ(box.kind, SCHEMATIC::KIND::OPERATOR);
    EXPECT_EQ(box.pins[0].label, "3'b110");
    EXPECT_TRUE(box.pins[0].is_constant);
    EXPECT_EQ(box.pins[1].label, "{1'bx, lost}");
    EXPECT_FALSE(box.pins[1].is_constant);
    EXPECT_TRUE(box.pins[2].label.isEmpty());
    EXPECT_EQ(box.pins[0].width, 3u);
    EXPECT_TRUE(schematic->wires.empty());
}

TEST_F(SCHEMATIC_TEST, a_net_with_many_sinks_is_told_by_name)
{
    for (const int sinks : {14, 15})
    {
        std::string cells;
        for (int i = 0; i < sinks; ++i)
            cells += (i > 0 ? ",\"b" : "\"b") + std::to_string(i) +
                     R"(":{"type":"BUF","port_directions":{"I":"input"},"connections":{"I":[2]}})";
        const auto schematic = draw(R"({"ports":{"go":{"direction":"input","bits":[2]}},"cells":{)" + cells +
                                    R"(},"netnames":{"go":{"bits":[2]}}})");
        EXPECT_EQ(schematic->wires.empty(), sinks == 15);
        EXPECT_EQ(schematic->boxes[0].pins[0].label, sinks == 15 ? "go" : "");
        EXPECT_EQ(schematic->boxes[1].pins[0].label, sinks == 15 ? "go" : "");
    }
}

TEST_F(SCHEMATIC_TEST, boxes_keep_apart_lines_follow_the_axes_and_every_edge_is_there)
{
    for (const char* file : {"serial_station_rtl.json", "serial_station_synth.json"})
    {
        const std::shared_ptr<const NETLIST> netlist = read_shipped(file);
        for (std::uint32_t i = 0; i < netlist->modules.size(); ++i)
        {
            if (netlist->modules[i].is_library)
                continue;
            const auto schematic = SCHEMATIC::make(netlist, i);
            ASSERT_NE(schematic, nullptr);
            for (const SCHEMATIC::BOX& box : schematic->boxes)
            {
                EXPECT_TRUE(schematic->bounds.contains(box.rect));
                EXPECT_EQ(std::count_if(schematic->boxes.begin(), schematic->boxes.end(),
                                        [&](const SCHEMATIC::BOX& other) { return other.rect.intersects(box.rect); }),
                          1);
                for (const SCHEMATIC::WIRE& wire : schematic->wires)
                    EXPECT_FALSE(box.rect.adjusted(1, 1, -1, -1).intersects(QRect(wire.from, wire.to)));
                for (const SCHEMATIC::PIN& pin : box.pins)
                    EXPECT_EQ(pin.is_connected, schematic->find_net(pin.position, 0) != SCHEMATIC::NONE);
            }
            for (const SCHEMATIC::WIRE& wire : schematic->wires)
                EXPECT_TRUE(wire.from.x() == wire.to.x() || wire.from.y() == wire.to.y());
        }
    }
}

TEST_F(SCHEMATIC_TEST, a_module_that_is_too_large_is_not_drawn)
{
    const std::shared_ptr<const NETLIST> netlist =
        read_netlist(NETLIST_GENERATOR::make(SCHEMATIC::LARGEST_BOX_COUNT + 1));
    const auto block =
        std::find_if(netlist->modules.begin(), netlist->modules.end(),
                     [&](const NETLIST_MODULE& module) { return netlist->names.get(module.name) == "block"; });
    EXPECT_EQ(SCHEMATIC::make(netlist, std::uint32_t(block - netlist->modules.begin())), nullptr);
}

TEST_F(SCHEMATIC_TEST, an_empty_module_has_an_empty_drawing)
{
    const auto schematic = draw("{}");
    ASSERT_NE(schematic, nullptr);
    EXPECT_TRUE(schematic->boxes.empty());
    EXPECT_EQ(schematic->find_item(QPoint(0, 0)), SCHEMATIC::NONE);
    EXPECT_EQ(schematic->find_net(QPoint(0, 0), 10), SCHEMATIC::NONE);
}

TEST_F(SCHEMATIC_TEST, threads_may_draw_at_the_same_time)
{
    const std::shared_ptr<const NETLIST> netlist = read_shipped("serial_station_rtl.json");
    std::shared_ptr<const SCHEMATIC> results[2];
    std::thread other([&] { results[1] = SCHEMATIC::make(netlist, netlist->top_modules[0]); });
    results[0] = SCHEMATIC::make(netlist, netlist->top_modules[0]);
    other.join();
    ASSERT_NE(results[0], nullptr);
    ASSERT_NE(results[1], nullptr);
    EXPECT_EQ(results[0]->wires.size(), results[1]->wires.size());
    EXPECT_EQ(results[0]->bounds, results[1]->bounds);
}

TEST_F(SCHEMATIC_TEST, boxes_and_lines_have_their_named_colours)
{
    const auto schematic = draw(CHAIN);
    const SCHEMATIC_PAINTER schematic_painter;
    SCHEMATIC_PAINTER::STYLE style;
    const auto get_pixel = [&](const QPoint& place)
    {
        QImage image(schematic->bounds.size(), QImage::Format_RGB32);
        image.fill(schematic_painter.get_background_color());
        QPainter painter(&image);
        painter.translate(-schematic->bounds.topLeft());
        schematic_painter.paint(painter, *schematic, schematic->bounds, 1, style);
        painter.end();
        return image.pixelColor(place - schematic->bounds.topLeft());
    };
    const std::uint32_t box = schematic->find_item_of_cell(0);
    const QPoint in_box = schematic->boxes[box].rect.bottomLeft() + QPoint(3, -3);
    EXPECT_EQ(get_pixel(in_box), TOLV_COLOR(TOLV_RTLV_ENCRYPTED_INSTANCE_FILL_COLOR).get_color());
    style.selected_boxes = {box};
    EXPECT_EQ(get_pixel(in_box), TOLV_COLOR(TOLV_RTLV_SELECTED_FILL_COLOR).get_color());
    const auto wire = std::find_if(schematic->wires.begin(), schematic->wires.end(),
                                   [](const SCHEMATIC::WIRE& w) { return w.net == 1; });
    EXPECT_EQ(get_pixel((wire->from + wire->to) / 2), TOLV_COLOR(TOLV_RTLV_NET_LINE_COLOR).get_color());
    style.lit_nets = {1};
    EXPECT_EQ(get_pixel((wire->from + wire->to) / 2), TOLV_COLOR(TOLV_RTLV_SELECTED_NET_LINE_COLOR).get_color());
    EXPECT_EQ(get_pixel(schematic->bounds.topLeft()), TOLV_COLOR(TOLV_RTLV_BACKGROUND_COLOR).get_color());
}
} // namespace
