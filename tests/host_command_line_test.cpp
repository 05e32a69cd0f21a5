#include "command_line.h"

#include "child_process.h"
#include "test_environment.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QSet>

#include <vector>

namespace
{
COMMAND_LINE parse(std::vector<const char*> arguments)
{
    arguments.insert(arguments.begin(), "norvane_workbench");
    return COMMAND_LINE::parse(static_cast<int>(arguments.size()), arguments.data());
}

std::string get_error(const std::vector<const char*>& arguments)
{
    return parse(arguments).error;
}

const char* const DESIGN = WORKBENCH_DESIGNS "/serial_station_synth.json";

/// Runs the workbench without a display.
CHILD_RESULT run_workbench(const std::vector<std::string>& arguments)
{
    const SCOPED_ENVIRONMENT_VARIABLE platform("QT_QPA_PLATFORM", nullptr);
    const SCOPED_ENVIRONMENT_VARIABLE display("DISPLAY", nullptr);
    const SCOPED_ENVIRONMENT_VARIABLE wayland("WAYLAND_DISPLAY", nullptr);
    return run_child("norvane_workbench", arguments);
}

std::string get_picture(const char* name)
{
    return TEST_ENVIRONMENT::get_folder() + "/" + name;
}

QImage load_picture(const std::string& file)
{
    return QImage(QString::fromStdString(file));
}

/// How many different colours there are; a blank window has few.
int count_colors(const QImage& image)
{
    QSet<QRgb> colors;
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
            colors.insert(image.pixel(x, y));
    }
    return colors.size();
}

double get_lightness(const QImage& image)
{
    double sum = 0;
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
            sum += QColor(image.pixel(x, y)).lightnessF();
    }
    return sum / (image.width() * image.height());
}
} // namespace

// ---- Reading the command line ---------------------------------------------------------------------------------------

TEST(host_command_line, an_empty_one_asks_for_nothing)
{
    for (const COMMAND_LINE& line : {parse({}), COMMAND_LINE::parse(0, nullptr), COMMAND_LINE::parse(3, nullptr)})
    {
        EXPECT_EQ("", line.error);
        EXPECT_EQ("", line.file);
        EXPECT_EQ("", line.screenshot);
        EXPECT_EQ(0, line.width);
        EXPECT_EQ(0, line.scale);
        EXPECT_FALSE(line.is_dark || line.wants_help || line.wants_version);
    }
}

TEST(host_command_line, all_options_are_understood)
{
    const COMMAND_LINE line = parse(
        {"--screenshot", "a.png", "--size=640x480", "--scale", "1.5", "--dark", "--select", "top/u", "design.json"});
    EXPECT_EQ("", line.error);
    EXPECT_EQ("a.png", line.screenshot);
    EXPECT_EQ(640, line.width);
    EXPECT_EQ(480, line.height);
    EXPECT_EQ(1.5, line.scale);
    EXPECT_TRUE(line.is_dark);
    EXPECT_EQ("top/u", line.select);
    EXPECT_EQ("design.json", line.file);
    EXPECT_TRUE(parse({"-h"}).wants_help);
    EXPECT_TRUE(parse({"--help"}).wants_help);
    EXPECT_TRUE(parse({"-v"}).wants_version);
    EXPECT_TRUE(parse({"--version"}).wants_version);
    EXPECT_EQ("-odd.json", parse({"--", "-odd.json"}).file);
    EXPECT_EQ("b.png", parse({"--screenshot", "a.png", "--screenshot=b.png"}).screenshot);
    EXPECT_EQ("", line.preferences);
    EXPECT_EQ("colours", parse({"--preferences"}).preferences);
    EXPECT_EQ("TOLV_GUI_FONT", parse({"--preferences=TOLV_GUI_FONT"}).preferences);
    EXPECT_EQ("a.json", parse({"--preferences", "a.json"}).file);
    EXPECT_EQ("", line.gallery);
    EXPECT_EQ("actions", parse({"--gallery"}).gallery);
    for (const char* document : {"schematic", "tables", "floorplan", "hierarchy"})
        EXPECT_EQ(document, parse({"--document", document}).document);
    EXPECT_EQ("TOLV_COPY_ICON", parse({"--gallery=TOLV_COPY_ICON"}).gallery);
    EXPECT_EQ("a.json", parse({"--gallery", "a.json"}).file);
}

TEST(host_command_line, options_of_qt_pass_by)
{
    const COMMAND_LINE line = parse({"-platform", "offscreen", "--style=fusion", "-reverse", "design.json"});
    EXPECT_EQ("", line.error);
    EXPECT_EQ("design.json", line.file);
}

TEST(host_command_line, what_makes_no_sense_is_named)
{
    EXPECT_EQ("unknown option \"--wrong\"", get_error({"--wrong"}));
    EXPECT_EQ("unknown option \"-x\"", get_error({"a.json", "-x"}));
    EXPECT_EQ("there is more than one file: \"a.json\" and \"b.json\"", get_error({"a.json", "b.json"}));
    EXPECT_EQ("the name of the file is empty", get_error({""}));
    EXPECT_EQ("the option \"--screenshot\" needs a value", get_error({"--screenshot"}));
    EXPECT_EQ("the option \"--screenshot\" needs a value", get_error({"--screenshot="}));
    EXPECT_EQ("the option \"--dark\" takes no value", get_error({"--dark=1"}));
    EXPECT_EQ("the option \"--preferences\" needs a value behind \"=\"", get_error({"--preferences="}));
    EXPECT_EQ("the option \"--gallery\" needs a value behind \"=\"", get_error({"--gallery="}));
    EXPECT_EQ("\"--preferences\" and \"--gallery\" do not go together", get_error({"--gallery", "--preferences"}));
    EXPECT_EQ("\"graph\" is no document: \"schematic\", \"tables\", \"floorplan\" and \"hierarchy\" are",
              get_error({"--document", "graph"}));
    for (const char* size : {"640", "x480", "640x", "640x480x1", "0x480", "640x-1", "99999x1", "a", " 640x480 "})
        EXPECT_EQ("\"" + std::string(size) + "\" is no size: such as 1280x800, at most 16000 either way, is",
                  get_error({"--size", size}));
    for (const char* scale : {"0", "-1", "0.4", "9", "nan", "2x", "two"})
        EXPECT_EQ("\"" + std::string(scale) + "\" is no scale: a number from 0.5 to 8 is",
                  get_error({"--scale", scale}));
}

// ---- Running the program --------------------------------------------------------------------------------------------

TEST(host_program, help_and_version_need_no_display)
{
    const CHILD_RESULT help = run_workbench({"--help"});
    EXPECT_EQ(0, help.exit_status);
    EXPECT_EQ(COMMAND_LINE::get_help(), help.out);
    const CHILD_RESULT version = run_workbench({"--version"});
    EXPECT_EQ(0, version.exit_status);
    EXPECT_EQ(0u, version.out.find("norvane_workbench "));
}

TEST(host_program, a_command_line_that_makes_no_sense_ends_with_status_2)
{
    const CHILD_RESULT result = run_workbench({"--wrong"});
    EXPECT_EQ(2, result.exit_status);
    EXPECT_EQ("norvane_workbench: unknown option \"--wrong\"\nTry \"norvane_workbench --help\".\n", result.err);
}

TEST(host_program, without_a_display_it_says_so)
{
    const CHILD_RESULT result = run_workbench({DESIGN});
    EXPECT_EQ(1, result.exit_status);
    EXPECT_EQ("norvane_workbench: there is no display; --screenshot PICTURE does without\n", result.err);
}

TEST(host_program, a_screenshot_shows_the_design_without_a_display)
{
    const std::string picture = get_picture("window.png");
    const CHILD_RESULT result = run_workbench({"--screenshot", picture, DESIGN});
    EXPECT_EQ(0, result.exit_status) << result.err;
    const QImage image = load_picture(picture);
    EXPECT_EQ(QSize(1280, 800), image.size());
    EXPECT_GT(count_colors(image), 50);
}

TEST(host_program, without_a_file_it_shows_the_shipped_design)
{
    const std::string given = get_picture("given.png");
    const std::string shipped = get_picture("shipped.png");
    EXPECT_EQ(0, run_workbench({"--screenshot", given, DESIGN}).exit_status);
    EXPECT_EQ(0, run_workbench({"--screenshot", shipped}).exit_status);
    // All but the messages, which tell the time.
    const QRect upper(0, 0, 1280, 600);
    EXPECT_EQ(load_picture(given).copy(upper), load_picture(shipped).copy(upper));
    EXPECT_FALSE(load_picture(given).isNull());
}

TEST(host_program, size_and_scale_are_those_of_the_picture)
{
    const std::string picture = get_picture("scaled.png");
    const CHILD_RESULT result = run_workbench({"--screenshot", picture, "--size", "900x640", "--scale", "2", DESIGN});
    EXPECT_EQ(0, result.exit_status) << result.err;
    EXPECT_EQ(QSize(1800, 1280), load_picture(picture).size());
}

TEST(host_program, a_dark_window_is_dark)
{
    const std::string light = get_picture("light.png");
    const std::string dark = get_picture("dark.png");
    EXPECT_EQ(0, run_workbench({"--screenshot", light, "--document", "tables", DESIGN}).exit_status);
    EXPECT_EQ(0, run_workbench({"--screenshot", dark, "--document", "tables", "--dark", DESIGN}).exit_status);
    EXPECT_GT(get_lightness(load_picture(light)), 0.8);
    EXPECT_LT(get_lightness(load_picture(dark)), 0.3);
}

TEST(host_program, an_instance_can_be_chosen)
{
    const std::string top = get_picture("top.png");
    const std::string chosen = get_picture("chosen.png");
    EXPECT_EQ(0, run_workbench({"--screenshot", top, DESIGN}).exit_status);
    EXPECT_EQ(0, run_workbench({"--screenshot", chosen, "--select", "serial_station/u_uart", DESIGN}).exit_status);
    const QRect upper(0, 0, 1280, 600);
    EXPECT_NE(load_picture(top).copy(upper), load_picture(chosen).copy(upper));
    const CHILD_RESULT result = run_workbench({"--screenshot", chosen, "--select", "serial_station/nobody", DESIGN});
    EXPECT_EQ(1, result.exit_status);
    EXPECT_EQ("norvane_workbench: there is no instance \"serial_station/nobody\"\n", result.err);
}

TEST(host_program, the_hierarchy_graph_can_be_pictured)
{
    const std::string picture = get_picture("graph.png");
    const CHILD_RESULT result = run_workbench({"--screenshot", picture, "--document", "hierarchy", DESIGN});
    EXPECT_EQ(0, result.exit_status) << result.err;
    const QImage image = load_picture(picture);
    int module_pixels = 0;
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
            module_pixels += image.pixel(x, y) == qRgb(197, 223, 247) ? 1 : 0; // their fill, as it is built in
    }
    EXPECT_GT(module_pixels, 10000);
}

TEST(host_program, the_preferences_can_be_pictured_alone)
{
    const std::string colors = get_picture("colors.png");
    const std::string fonts = get_picture("fonts.png");
    const CHILD_RESULT first = run_workbench({"--screenshot", colors, "--preferences", "--size", "900x600", DESIGN});
    EXPECT_EQ(0, first.exit_status) << first.err;
    EXPECT_EQ(QSize(900, 600), load_picture(colors).size());
    EXPECT_GT(count_colors(load_picture(colors)), 50);
    EXPECT_EQ(0, run_workbench({"--screenshot", fonts, "--preferences=fonts", "--size", "900x600"}).exit_status);
    EXPECT_NE(load_picture(colors), load_picture(fonts));
    const CHILD_RESULT result = run_workbench({"--screenshot", fonts, "--preferences=NOBODY", DESIGN});
    EXPECT_EQ(1, result.exit_status);
    EXPECT_EQ("norvane_workbench: there are no preferences \"NOBODY\"\n", result.err);
}

TEST(host_program, the_gallery_can_be_pictured_alone)
{
    const std::string icons = get_picture("icons.png");
    const std::string cursors = get_picture("cursors.png");
    const CHILD_RESULT first = run_workbench({"--screenshot", icons, "--gallery=icons", "--size", "900x600", DESIGN});
    EXPECT_EQ(0, first.exit_status) << first.err;
    EXPECT_EQ(QSize(900, 600), load_picture(icons).size());
    EXPECT_GT(count_colors(load_picture(icons)), 50);
    EXPECT_EQ(0, run_workbench({"--screenshot", cursors, "--gallery=cursors", "--size", "900x600"}).exit_status);
    EXPECT_NE(load_picture(icons), load_picture(cursors));
    const CHILD_RESULT result = run_workbench({"--screenshot", icons, "--gallery=NOBODY", DESIGN});
    EXPECT_EQ(1, result.exit_status);
    EXPECT_EQ("norvane_workbench: the gallery has no \"NOBODY\"\n", result.err);
}

TEST(host_program, colours_of_the_desktop_are_dark_in_a_dark_window)
{
    const std::string dark = get_picture("dark_preferences.png");
    EXPECT_EQ(0, run_workbench({"--screenshot", dark, "--dark", "--preferences", DESIGN}).exit_status);
    EXPECT_LT(get_lightness(load_picture(dark)), 0.3); // with the preview of the general background
}

TEST(host_program, a_bad_file_fails_with_its_reason_and_leaves_no_picture)
{
    const std::string picture = get_picture("none.png");
    const CHILD_RESULT missing = run_workbench({"--screenshot", picture, "/nonexistent.json"});
    EXPECT_EQ(1, missing.exit_status);
    EXPECT_EQ("norvane_workbench: /nonexistent.json: there is no such file\n", missing.err);
    const std::string bad = TEST_ENVIRONMENT::write_file("bad.json", "[]");
    const CHILD_RESULT result = run_workbench({"--screenshot", picture, bad});
    EXPECT_EQ(1, result.exit_status);
    EXPECT_EQ("norvane_workbench: " + bad + ":1:1: this is no netlist: a list stands where an object is expected\n",
              result.err);
    EXPECT_TRUE(load_picture(picture).isNull());
}

TEST(host_program, a_picture_that_cannot_be_written_fails)
{
    const CHILD_RESULT result = run_workbench({"--screenshot", "/nonexistent/window.png", DESIGN});
    EXPECT_EQ(1, result.exit_status);
    EXPECT_EQ("norvane_workbench: the picture \"/nonexistent/window.png\" cannot be written\n", result.err);
}
