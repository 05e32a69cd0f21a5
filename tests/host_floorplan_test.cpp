#include "floorplan.h"
#include "floorplan_painter.h"
#include "gui_test.h"
#include "netlist_generator.h"
#include "netlist_reader.h"
#include "recording_paint_device.h"

#include <QImage>
#include <QPainter>
#include <QTransform>

#include <set>

namespace
{
/// A netlist with one module "chip" of these cells and nets, both in the file's own form.
std::shared_ptr<const NETLIST> read(const std::string& cells, const std::string& nets)
{
    const NETLIST_READ_RESULT result = NETLIST_READER::read_text(
        R"({"modules":{"chip":{"cells":{)" + cells + R"(},"netnames":{)" + nets + "}}}}", "chip.json");
    EXPECT_NE(result.netlist, nullptr) << "the test's own text is bad";
    return result.netlist;
}

std::string make_cell(const std::string& name, const std::string& place, int bit = 2,
                      const std::string& type = "ICESTORM_LC")
{
    return "\"" + name + R"(":{"type":")" + type + R"(","attributes":{"NEXTPNR_BEL":")" + place +
           R"("},"connections":{"O":[)" + std::to_string(bit) + "]}}";
}

std::string make_net(const std::string& name, int bit, const std::string& routing)
{
    return "\"" + name + R"(":{"bits":[)" + std::to_string(bit) + R"(],"attributes":{"ROUTING":")" + routing + "\"}}";
}

class FLOORPLAN_TEST : public TOLV_GUI_TEST
{
protected:
    static FLOORPLAN make(const std::string& cells, const std::string& nets = "")
    {
        return FLOORPLAN(read(cells, nets), 0);
    }

    /// The shipped design, placed and routed.
    static FLOORPLAN make_shipped()
    {
        const NETLIST_READ_RESULT result = NETLIST_READER::read_file(WORKBENCH_DESIGNS "/serial_station_placed.json");
        return FLOORPLAN(result.netlist, result.netlist->top_modules[0]);
    }

    static QImage render(const FLOORPLAN& plan, const QSize& size, const QRectF& part,
                         const FLOORPLAN_PAINTER::STYLE& style, double ratio = 1)
    {
        QImage image(size * ratio, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::magenta);
        const double scale = size.width() / part.width();
        QTransform transform = QTransform::fromScale(scale, scale);
        transform.translate(-part.x(), -part.y());
        QPainter painter(&image);
        FLOORPLAN_PAINTER().paint(painter, plan, transform, QRect(QPoint(0, 0), size), style);
        return image;
    }
};

TEST_F(FLOORPLAN_TEST, row_0_is_at_the_bottom_and_site_0_lowest_in_its_tile)
{
    const FLOORPLAN plan = make(make_cell("a", "X0/Y0/lc0") + "," + make_cell("b", "X1/Y2/lc7"));
    EXPECT_EQ(plan.get_tile_count(), QSize(2, 3));
    EXPECT_EQ(plan.get_bounds(), QRect(0, 0, 512, 768));
    EXPECT_EQ(plan.get_tile_rect(0, 0), QRect(0, 512, 256, 256));
    EXPECT_EQ(plan.get_tile_at(QPoint(300, 10)), QPoint(1, 2));
    EXPECT_EQ(plan.get_tile_at(QPoint(512, 10)), QPoint(-1, -1));
    // Eight sites in the 232 units between the margins: 29 each, with a gap of 4.
    const FLOORPLAN::SITE& a = plan.get_sites()[plan.find_item_of_cell(0)];
    const FLOORPLAN::SITE& b = plan.get_sites()[plan.find_item_of_cell(1)];
    EXPECT_EQ(a.rect, QRect(104, 512 + 256 - 12 - 29, 140, 25));
    EXPECT_EQ(b.rect, QRect(256 + 104, 12, 140, 25));
    EXPECT_EQ(plan.find_item(a.rect.center()), plan.find_item_of_cell(0));
    EXPECT_EQ(plan.find_item(QPoint(10, 10)), FLOORPLAN::NONE);
    EXPECT_EQ(plan.find_item(QPoint(-1, 900)), FLOORPLAN::NONE);
}

TEST_F(FLOORPLAN_TEST, places_that_are_none_leave_a_cell_unplaced)
{
    for (const char* place : {"", "X1Y1/lc0", "X-1/Y1/lc0", "X1/Y4096/lc0", "X99999999999/Y1/lc0", "X1/Y1/", "Y1/X1/a"})
    {
        const FLOORPLAN plan = make(make_cell("a", place));
        EXPECT_EQ(plan.get_unplaced_count(), 1u) << place;
        EXPECT_TRUE(plan.get_bounds().isEmpty()) << place;
        EXPECT_TRUE(plan.get_sites().empty()) << place;
        EXPECT_FALSE(FLOORPLAN::is_placed(plan.get_netlist(), plan.get_module())) << place;
        EXPECT_EQ(plan.find_item(QPoint(0, 0)), FLOORPLAN::NONE) << place;
        EXPECT_EQ(plan.find_net(QPoint(0, 0), 100), FLOORPLAN::NONE) << place;
    }
    EXPECT_EQ(make(make_cell("a", "X4095/Y0/lc0")).get_unplaced_count(), 0u);
}

TEST_F(FLOORPLAN_TEST, cells_belong_to_the_instance_that_their_name_begins_with)
{
    const FLOORPLAN plan = make(make_cell("u_b.c.d", "X0/Y0/lc0") + "," + make_cell("top", "X0/Y0/lc1") + "," +
                                make_cell("u_a.x", "X0/Y0/lc2") + "," + make_cell("$nextpnr.y", "X0/Y0/lc3"));
    EXPECT_EQ(plan.get_groups(), (std::vector<std::string>{"", "u_a", "u_b"}));
    const auto get_group = [&](std::uint32_t cell) { return plan.get_sites()[plan.find_item_of_cell(cell)].group; };
    EXPECT_EQ(get_group(0), 2u);
    EXPECT_EQ(get_group(1), 0u);
    EXPECT_EQ(get_group(2), 1u);
    EXPECT_EQ(get_group(3), 0u);
}

TEST_F(FLOORPLAN_TEST, a_pip_gives_a_horizontal_and_a_vertical_piece_from_its_source_to_its_wire)
{
    const FLOORPLAN plan =
        make(make_cell("a", "X0/Y0/lc0", 7) + "," + make_cell("b", "X3/Y3/lc0", 9),
             make_net("n", 7, "X0/Y0/lutff_0:out;;1;X2/Y3/wire_a;X0/Y0/0.0.lutff_0:out.->.2.3.wire_a;1"));
    ASSERT_EQ(plan.get_wires().size(), 2u);
    const FLOORPLAN::WIRE& across = plan.get_wires()[0];
    const FLOORPLAN::WIRE& up = plan.get_wires()[1];
    EXPECT_EQ(across.y1, across.y2);
    EXPECT_EQ(up.x1, up.x2);
    EXPECT_TRUE(plan.get_tile_rect(0, 0).contains(across.x1, across.y1));
    EXPECT_EQ(across.x2, up.x1);
    EXPECT_EQ(up.y2, across.y1);
    EXPECT_TRUE(plan.get_tile_rect(2, 3).contains(up.x1, up.y1));
    EXPECT_EQ(plan.get_nets_of_cell(0), std::vector<std::uint32_t>{0});
    EXPECT_TRUE(plan.get_nets_of_cell(1).empty());
    EXPECT_EQ(plan.get_wires_of_net(0).count, 2u);
    EXPECT_EQ(plan.find_net(QPoint(up.x1 + 3, (up.y1 + up.y2) / 2), 3), 0u);
    EXPECT_EQ(plan.find_net(QPoint(up.x1 + 4, (up.y1 + up.y2) / 2), 3), FLOORPLAN::NONE);
}

TEST_F(FLOORPLAN_TEST, routing_that_is_noise_gives_no_wires_or_wires_within_the_chip)
{
    for (const char* routing : {";;;", "X1/Y1/a", "X1/Y1/a;b", "a;b;c;d;e;f;g", "X1/Y1/a;X2/Y2/.->.;1",
                                "X1/Y1/a;X2/Y2/9999999999.1.b.->.c;1", "X4095/Y4095/a;X0/Y0/0.0.q.->.r;1"})
    {
        const FLOORPLAN plan = make(make_cell("a", "X0/Y0/lc0"), make_net("n", 2, routing));
        for (const FLOORPLAN::WIRE& wire : plan.get_wires())
        {
            EXPECT_TRUE(plan.get_bounds().contains(wire.x1, wire.y1)) << routing;
            EXPECT_TRUE(plan.get_bounds().contains(wire.x2, wire.y2)) << routing;
        }
    }
}

TEST_F(FLOORPLAN_TEST, each_wire_and_site_of_a_part_comes_once)
{
    const NETLIST_READ_RESULT result = NETLIST_READER::read_text(NETLIST_GENERATOR::make_placed(12, 8), "chip.json");
    const FLOORPLAN plan(result.netlist, result.netlist->top_modules[0]);
    EXPECT_EQ(plan.get_sites().size(), 12u * 12u * 8u);
    for (const QRect& part : {QRect(0, 0, 300, 300), QRect(500, 700, 900, 100), QRect(-50, -50, 60, 4000),
                              QRect(1000, 1000, 1, 1), plan.get_bounds()})
    {
        std::multiset<std::tuple<int, int, int, int, std::uint32_t>> seen;
        plan.visit_wires(part,
                         [&](const FLOORPLAN::WIRE* wires, std::size_t count)
                         {
                             for (std::size_t i = 0; i < count; ++i)
                                 seen.insert({wires[i].x1, wires[i].y1, wires[i].x2, wires[i].y2, wires[i].net});
                         });
        std::multiset<std::tuple<int, int, int, int, std::uint32_t>> all;
        std::multiset<std::tuple<int, int, int, int, std::uint32_t>> expected;
        for (const FLOORPLAN::WIRE& wire : plan.get_wires())
        {
            all.insert({wire.x1, wire.y1, wire.x2, wire.y2, wire.net});
            if (part.intersects(QRect(QPoint(wire.x1, wire.y1), QPoint(wire.x2, wire.y2))))
                expected.insert({wire.x1, wire.y1, wire.x2, wire.y2, wire.net});
        }
        EXPECT_TRUE(std::includes(seen.begin(), seen.end(), expected.begin(), expected.end()));
        EXPECT_TRUE(std::includes(all.begin(), all.end(), seen.begin(), seen.end()));
        for (const std::uint32_t site : plan.find_items_within(part))
            EXPECT_TRUE(part.contains(plan.get_sites()[site].rect));
    }
    EXPECT_EQ(plan.find_items_within(plan.get_bounds()).size(), plan.get_sites().size());
}

TEST_F(FLOORPLAN_TEST, the_shipped_design_has_its_cells_kinds_and_routing)
{
    const FLOORPLAN plan = make_shipped();
    EXPECT_EQ(plan.get_tile_count(), QSize(14, 15));
    EXPECT_EQ(plan.get_sites().size(), 463u);
    EXPECT_EQ(plan.get_unplaced_count(), 0u);
    EXPECT_GT(plan.get_wires().size(), 4000u);
    std::map<FLOORPLAN::KIND, int> kinds;
    for (const FLOORPLAN::SITE& site : plan.get_sites())
        ++kinds[site.kind];
    EXPECT_EQ(kinds, (std::map<FLOORPLAN::KIND, int>{{FLOORPLAN::KIND::LOGIC, 446},
                                                     {FLOORPLAN::KIND::MEMORY, 2},
                                                     {FLOORPLAN::KIND::IO, 12},
                                                     {FLOORPLAN::KIND::CLOCK, 3}}));
}

TEST_F(FLOORPLAN_TEST, a_site_has_the_colour_of_its_kind_its_module_or_the_selection)
{
    const FLOORPLAN plan = make(make_cell("u.a", "X0/Y0/ram", 2, "ICESTORM_RAM"));
    const QPoint middle(174, 128);
    FLOORPLAN_PAINTER::STYLE style;
    style.shows_names = false;
    const auto get_pixel = [&](double ratio = 1)
    { return QColor(render(plan, QSize(256, 256), QRectF(0, 0, 256, 256), style, ratio).pixel(middle * ratio)); };
    EXPECT_EQ(get_pixel(), TOLV_COLOR(TOLV_FLP_USED_RAM_BLOCK_FILL_COLOR).get_color());
    EXPECT_EQ(get_pixel(2), TOLV_COLOR(TOLV_FLP_USED_RAM_BLOCK_FILL_COLOR).get_color());
    style.coloring = FLOORPLAN_PAINTER::COLORING_MODULE;
    EXPECT_EQ(get_pixel(), FLOORPLAN_PAINTER().get_group_color(1));
    style.selected_sites = {0};
    EXPECT_EQ(get_pixel(), TOLV_COLOR(TOLV_FLP_SELECTED_SITE_FILL_COLOR).get_color());
    // Nothing is left over around it.
    EXPECT_EQ(render(plan, QSize(256, 256), QRectF(0, 0, 256, 256), style).pixelColor(0, 0),
              TOLV_COLOR(TOLV_FLP_DIE_EDGE_LINE_COLOR).get_color());
    EXPECT_EQ(render(plan, QSize(256, 256), QRectF(-512, -512, 1024, 1024), style).pixelColor(3, 3),
              TOLV_COLOR(TOLV_FLP_BACKGROUND_COLOR).get_color());
}

TEST_F(FLOORPLAN_TEST, wires_show_where_a_tile_has_room_and_lit_nets_always)
{
    const FLOORPLAN plan = make(make_cell("a", "X0/Y0/lc0"), make_net("n", 2, "X3/Y0/w;X0/Y0/0.0.sp4.->.3.0.w;1"));
    const FLOORPLAN::WIRE& across = plan.get_wires()[0];
    const QPoint place((across.x1 + across.x2) / 2, across.y1);
    const auto get_pixel = [&](int side, const FLOORPLAN_PAINTER::STYLE& style)
    {
        const QImage image = render(plan, QSize(side * 4, side), QRectF(0, 0, 1024, 256), style);
        return image.pixelColor(place.x() * side / 256, place.y() * side / 256);
    };
    FLOORPLAN_PAINTER::STYLE style;
    FLOORPLAN_PAINTER::STYLE without_wires;
    without_wires.shows_wires = false;
    EXPECT_NE(get_pixel(64, style), get_pixel(64, without_wires));
    EXPECT_EQ(get_pixel(5, style), get_pixel(5, without_wires));
    without_wires.lit_nets = {0};
    EXPECT_EQ(get_pixel(64, without_wires), TOLV_COLOR(TOLV_FLP_SELECTED_NET_LINE_COLOR).get_color());
    EXPECT_EQ(get_pixel(5, without_wires), TOLV_COLOR(TOLV_FLP_SELECTED_NET_LINE_COLOR).get_color());
}

TEST_F(FLOORPLAN_TEST, names_types_and_places_show_where_there_is_room)
{
    const FLOORPLAN plan = make(make_cell("u.a", "X0/Y1/ram", 2, "ICESTORM_RAM") + "," + make_cell("b", "X0/Y0/lc0") +
                                "," + make_cell("c", "X0/Y0/lc7"));
    const auto get_texts = [&](int side, bool shows_names)
    {
        RECORDING_PAINT_DEVICE device(QSize(side, 2 * side));
        FLOORPLAN_PAINTER::STYLE style;
        style.shows_names = shows_names;
        QPainter painter(&device);
        const double scale = double(side) / FLOORPLAN::TILE_SIZE;
        FLOORPLAN_PAINTER().paint(painter, plan, QTransform::fromScale(scale, scale), QRect(0, 0, side, 2 * side),
                                  style);
        painter.end();
        QStringList texts;
        for (const PAINT_COMMAND& command : device.find("text"))
            texts << command.text.section('"', 1, 1);
        return texts;
    };
    EXPECT_EQ(get_texts(80, true), QStringList());
    EXPECT_EQ(get_texts(1000, false), QStringList());
    // A site of the height of the tile has room for all three lines; one of an eighth of it gets them one by one.
    EXPECT_FALSE(get_texts(100, true).contains("X0/Y1"));
    const QStringList near = get_texts(200, true);
    EXPECT_TRUE(near.contains("u.a"));
    EXPECT_TRUE(near.contains("ICESTORM_RAM"));
    EXPECT_TRUE(near.contains("X0/Y1/ram"));
    EXPECT_TRUE(near.contains("X0/Y0"));
    EXPECT_TRUE(near.contains("X0/Y1"));
    EXPECT_TRUE(near.contains("b"));
    EXPECT_FALSE(near.contains("X0/Y0/lc0"));
    EXPECT_TRUE(get_texts(1000, true).contains("X0/Y0/lc0"));
}
} // namespace
