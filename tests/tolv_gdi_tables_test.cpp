#include "tolv_gdi_tables.h"

#include "tolv_gdi_manager.h"

#include <gtest/gtest.h>

#include <QPalette>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace
{
const TOLV_INITIAL_COLOR& color_row(const std::string& name)
{
    for (const TOLV_INITIAL_COLOR& row : tolv_get_initial_colors())
    {
        if (name == row.name)
            return row;
    }
    throw std::runtime_error("no colour " + name);
}

const TOLV_INITIAL_COLOR& color_row(TOLV_COLOR_RESOURCE resource)
{
    for (const TOLV_INITIAL_COLOR& row : tolv_get_initial_colors())
    {
        if (row.resource == resource)
            return row;
    }
    throw std::runtime_error("no such colour");
}

bool has_color(const std::string& name)
{
    const auto rows = tolv_get_initial_colors();
    return std::any_of(rows.begin(), rows.end(), [&](const TOLV_INITIAL_COLOR& row) { return name == row.name; });
}

const TOLV_INITIAL_PEN& pen_row(TOLV_PEN_RESOURCE resource)
{
    const auto rows = tolv_get_initial_pens();
    return *std::find_if(rows.begin(), rows.end(),
                         [=](const TOLV_INITIAL_PEN& row) { return row.resource == resource; });
}

const TOLV_INITIAL_FONT& font_row(TOLV_FONT_RESOURCE resource)
{
    const auto rows = tolv_get_initial_fonts();
    return *std::find_if(rows.begin(), rows.end(),
                         [=](const TOLV_INITIAL_FONT& row) { return row.resource == resource; });
}

template <class ROWS>
std::vector<int> numbers_of(const ROWS& rows)
{
    std::vector<int> numbers;
    for (const auto& row : rows)
        numbers.push_back(row.resource);
    return numbers;
}

double linear(int channel)
{
    const double value = channel / 255.0;
    return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color)
{
    return 0.2126 * linear(color.red()) + 0.7152 * linear(color.green()) + 0.0722 * linear(color.blue());
}

double contrast(const QColor& a, const QColor& b)
{
    const auto [dark, light] = std::minmax({luminance(a), luminance(b)});
    return (light + 0.05) / (dark + 0.05);
}

bool ends_with(const std::string& text, const std::string& end)
{
    return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/// The rows of the tools: all behind the brand's rows and the few that the library itself uses.
std::vector<TOLV_INITIAL_COLOR> tool_colors()
{
    std::vector<TOLV_INITIAL_COLOR> rows;
    for (const TOLV_INITIAL_COLOR& row : tolv_get_initial_colors())
    {
        if (row.resource > TOLV_PROJECT_NAVIGATOR_TREE_CTRL_COLOR)
            rows.push_back(row);
    }
    return rows;
}

/// "TXED" of "TOLV_TXED_KEYWORD_TEXT_COLOR".
std::string tool_of(const std::string& name)
{
    const std::size_t begin = std::string("TOLV_").size();
    return name.substr(begin, name.find('_', begin) - begin);
}

/// The colour behind a row: its own background where it has one, else its tool's.
QColor background_of(const std::string& name)
{
    const std::string::size_type end = name.rfind("_TEXT_COLOR");
    const std::string own = end != std::string::npos ? name.substr(0, end) + "_BACKGROUND_COLOR" : std::string();
    return has_color(own) ? color_row(own).color : color_row("TOLV_" + tool_of(name) + "_BACKGROUND_COLOR").color;
}

struct GIVEN_COLOR
{
    int value;
    const char* name;
    QColor color;
};

void expect_colors(const std::vector<GIVEN_COLOR>& given, bool can_change)
{
    for (const auto& [value, name, color] : given)
    {
        const TOLV_INITIAL_COLOR& row = color_row(name);
        if (value != 0)
        {
            EXPECT_EQ(value, row.resource) << name;
        }
        EXPECT_EQ(color.rgba(), row.color.rgba()) << name;
        EXPECT_FALSE(row.is_system) << name;
        EXPECT_EQ(can_change, row.can_change) << name;
        EXPECT_EQ(0, row.palette_role) << name;
    }
}
} // namespace

TEST(TOLV_GDI_TABLES, have_their_numbers_of_rows)
{
    EXPECT_EQ(593U, tolv_get_initial_colors().size());
    EXPECT_EQ(153U, tolv_get_initial_pens().size());
    EXPECT_EQ(194U, tolv_get_initial_brushes().size());
    EXPECT_EQ(102U, tolv_get_initial_fonts().size());
}

TEST(TOLV_GDI_TABLES, reserve_zero_for_no_resource)
{
    EXPECT_EQ(0, TOLV_MIN_COLOR);
    EXPECT_EQ(0, TOLV_MIN_PEN);
    EXPECT_EQ(0, TOLV_MIN_BRUSH);
    EXPECT_EQ(0, TOLV_MIN_FONT);
}

TEST(TOLV_GDI_TABLES, number_each_row_once_with_gaps_and_not_always_in_order)
{
    for (const std::vector<int>& numbers :
         {numbers_of(tolv_get_initial_colors()), numbers_of(tolv_get_initial_pens()),
          numbers_of(tolv_get_initial_brushes()), numbers_of(tolv_get_initial_fonts())})
    {
        const std::set<int> distinct(numbers.begin(), numbers.end());
        EXPECT_EQ(numbers.size(), distinct.size());
        EXPECT_EQ(1, *distinct.begin());
        EXPECT_GT(*distinct.rbegin(), static_cast<int>(numbers.size()));
        EXPECT_FALSE(std::is_sorted(numbers.begin(), numbers.end()));
        EXPECT_EQ(1, numbers.front());
    }
}

TEST(TOLV_GDI_TABLES, give_each_row_a_name_of_its_own)
{
    std::set<std::string> names;
    for (const TOLV_INITIAL_COLOR& row : tolv_get_initial_colors())
        EXPECT_TRUE(names.insert(row.name).second) << row.name;
    for (const TOLV_INITIAL_PEN& row : tolv_get_initial_pens())
        EXPECT_TRUE(names.insert(row.name).second) << row.name;
    for (const TOLV_INITIAL_FONT& row : tolv_get_initial_fonts())
        EXPECT_TRUE(names.insert(row.name).second) << row.name;
    EXPECT_STREQ("TOLV_TXED_KEYWORD_TEXT_COLOR", color_row(TOLV_TXED_KEYWORD_TEXT_COLOR).name);
    EXPECT_STREQ("TOLV_BLACK_PEN", pen_row(TOLV_BLACK_PEN).name);
    EXPECT_STREQ("TOLV_GUI_FONT", font_row(TOLV_GUI_FONT).name);
}

// ---- Colours --------------------------------------------------------------------------------------------------------

TEST(TOLV_GDI_TABLES, hold_the_plain_colors)
{
    expect_colors(
        {
            {1, "TOLV_BLACK_COLOR", {0, 0, 0}},
            {2, "TOLV_WHITE_COLOR", {255, 255, 255}},
            {3, "TOLV_BLUE_COLOR", {0, 0, 255}},
            {4, "TOLV_GREEN_COLOR", {0, 255, 0}},
            {5, "TOLV_RED_COLOR", {255, 0, 0}},
            {6, "TOLV_CYAN_COLOR", {0, 255, 255}},
            {7, "TOLV_PINK_COLOR", {255, 0, 255}},
            {8, "TOLV_YELLOW_COLOR", {255, 255, 0}},
            {9, "TOLV_DARK_BLUE_COLOR", {0, 0, 128}},
            {10, "TOLV_DARK_GREEN_COLOR", {0, 128, 0}},
            {11, "TOLV_DARK_RED_COLOR", {128, 0, 0}},
            {12, "TOLV_DARK_CYAN_COLOR", {0, 128, 128}},
            {13, "TOLV_DARK_PINK_COLOR", {128, 0, 128}},
            {14, "TOLV_BROWN_COLOR", {128, 128, 0}},
            {15, "TOLV_DARK_GRAY_COLOR", {128, 128, 128}},
            {16, "TOLV_GRAY_COLOR", {192, 192, 192}},
            {17, "TOLV_STEEL_BLUE_COLOR", {0, 75, 230}},
            {18, "TOLV_PURPLE_COLOR", {67, 47, 219}},
            {19, "TOLV_DARK_ORANGE_COLOR", QColor(QStringLiteral("darkorange"))},
        },
        false);
}

TEST(TOLV_GDI_TABLES, hold_the_colors_of_the_system)
{
    // The tool tip's rows are meant to use roles that are not the palette's tool-tip roles.
    const std::vector<std::tuple<int, const char*, QPalette::ColorRole>> given = {
        {20, "TOLV_WINDOW_TEXT_COLOR", QPalette::WindowText},
        {21, "TOLV_WINDOW_BACKGROUND_COLOR", QPalette::Base},
        {22, "TOLV_WINDOW_HIGHLIGHT_COLOR", QPalette::Highlight},
        {23, "TOLV_WINDOW_HIGHLIGHT_TEXT_COLOR", QPalette::HighlightedText},
        {24, "TOLV_WINDOW_3D_FACE_COLOR", QPalette::Button},
        {25, "TOLV_WINDOW_3D_HIGHLIGHT_COLOR", QPalette::Light},
        {26, "TOLV_WINDOW_3D_LIGHT_COLOR", QPalette::Midlight},
        {27, "TOLV_WINDOW_3D_SHADOW_COLOR", QPalette::Mid},
        {28, "TOLV_WINDOW_3D_DARK_SHADOW_COLOR", QPalette::Dark},
        {29, "TOLV_WINDOW_TOOLTIP_BKGND_COLOR", QPalette::AlternateBase},
        {30, "TOLV_WINDOW_TOOLTIP_TEXT_COLOR", QPalette::Text},
    };
    for (const auto& [value, name, role] : given)
    {
        const TOLV_INITIAL_COLOR& row = color_row(name);
        EXPECT_EQ(value, row.resource) << name;
        EXPECT_TRUE(row.is_system) << name;
        EXPECT_FALSE(row.can_change) << name;
        EXPECT_EQ(role, row.palette_role) << name;
    }
}

TEST(TOLV_GDI_TABLES, have_one_changeable_color_with_a_palette_role)
{
    const TOLV_INITIAL_COLOR& row = color_row("TOLV_GENERAL_BACKGROUND_COLOR");
    EXPECT_EQ(31, row.resource);
    EXPECT_FALSE(row.is_system);
    EXPECT_TRUE(row.can_change);
    EXPECT_EQ(QPalette::Window, row.palette_role);
    const auto rows = tolv_get_initial_colors();
    EXPECT_EQ(1, std::count_if(rows.begin(), rows.end(),
                               [](const TOLV_INITIAL_COLOR& other)
                               { return !other.is_system && other.palette_role != 0; }));
}

TEST(TOLV_GDI_TABLES, hold_the_brand_from_32_on)
{
    expect_colors(
        {
            {32, "TOLV_KORVEX_RED_COLOR", {252, 76, 2}},
            {33, "TOLV_KORVEX_ORANGE_COLOR", {255, 163, 0}},
            {34, "TOLV_KORVEX_YELLOW_COLOR", {243, 213, 78}},
            {35, "TOLV_KORVEX_GREEN_COLOR", {196, 214, 0}},
            {36, "TOLV_KORVEX_LIGHT_BLUE_COLOR", {0, 174, 239}},
            {37, "TOLV_KORVEX_BLUE_COLOR", {0, 113, 197}},
            {38, "TOLV_KORVEX_DARK_BLUE_COLOR", {0, 60, 113}},
            {39, "TOLV_KORVEX_LIGHT_GRAY_COLOR", {243, 243, 243}},
            {40, "TOLV_KORVEX_GRAY_COLOR", {187, 187, 187}},
            {41, "TOLV_KORVEX_DARK_GRAY_COLOR", {85, 85, 85}},
            {42, "TOLV_KORVEX_CHARCOAL_COLOR", {37, 37, 37}},
            {0, "TOLV_COLOR_KORVEX_CARBON_T2", {233, 233, 233}},
            {0, "TOLV_COLOR_KORVEX_CARBON", {128, 128, 128}},
            {0, "TOLV_COLOR_KORVEX_CARBON_S2", {38, 38, 38}},
        },
        false);
    int count = 0;
    for (const TOLV_INITIAL_COLOR& row : tolv_get_initial_colors())
    {
        if (std::string(row.name).find("_KORVEX_") == std::string::npos)
            continue;
        EXPECT_EQ(32 + count, row.resource);
        EXPECT_FALSE(row.can_change || row.is_system) << row.name;
        ++count;
    }
    EXPECT_EQ(57, count);
}

TEST(TOLV_GDI_TABLES, order_each_tint_family_from_light_to_dark)
{
    int families = 0;
    for (const TOLV_INITIAL_COLOR& row : tolv_get_initial_colors())
    {
        const std::string name = row.name;
        if (name.rfind("TOLV_COLOR_KORVEX_", 0) != 0 || !ends_with(name, "_T2"))
            continue;
        ++families;
        const std::string hue = name.substr(0, name.size() - 3);
        int value = row.resource;
        double last = luminance(row.color);
        for (const char* variant : {"_T1", "", "_S1", "_S2"})
        {
            const TOLV_INITIAL_COLOR& next = color_row(hue + variant);
            EXPECT_EQ(++value, next.resource) << next.name;
            EXPECT_LT(luminance(next.color), last) << next.name;
            last = luminance(next.color);
        }
    }
    EXPECT_EQ(9, families);
}

TEST(TOLV_GDI_TABLES, hold_the_colors_of_progress_bars_messages_and_empty_views)
{
    expect_colors(
        {
            {0, "TOLV_PROG_BAR_BLANK_COLOR", {255, 0, 0}},
            {0, "TOLV_PROG_BAR_BORDER_COLOR", {0, 0, 0}},
            {0, "TOLV_PROG_BAR_BACKGROUND_COLOR", {128, 128, 128}},
            {0, "TOLV_PROG_BAR_IN_PROGRESS_COLOR", {0, 255, 0}},
            {0, "TOLV_PROG_BAR_COMPLETE_COLOR", {0, 0, 255}},
            {0, "TOLV_PROG_BAR_IN_PROGRESS_TEXT_COLOR", {0, 0, 0}},
            {0, "TOLV_PROG_BAR_COMPLETE_TEXT_COLOR", {255, 255, 255}},
            {0, "TOLV_MSW_EXTRA_INFO_COLOR", {0, 128, 0}},
            {0, "TOLV_MSW_INFO_COLOR", {0, 128, 0}},
            {0, "TOLV_MSW_WARNING_COLOR", {0, 0, 255}},
            {0, "TOLV_MSW_CRITICAL_WARNING_COLOR", {255, 0, 255}},
            {0, "TOLV_MSW_ERROR_COLOR", {255, 0, 0}},
            {0, "TOLV_MSW_HIGHLIGHT_KEYWORD_COLOR", {0, 0, 0}},
            {0, "TOLV_MSW_HIGHLIGHT_KEYWORD_BG_COLOR", {255, 255, 0}},
            {0, "TOLV_EMPTY_VIEW_COLOR", {192, 192, 192}},
            {0, "TOLV_PROJECT_NAVIGATOR_TREE_CTRL_COLOR", {123, 233, 54}},
        },
        true);
}

TEST(TOLV_GDI_TABLES, let_users_change_the_tools_colors_except_in_three_groups)
{
    std::map<std::string, std::set<bool>> groups;
    for (const TOLV_INITIAL_COLOR& row : tool_colors())
    {
        EXPECT_FALSE(row.is_system) << row.name;
        groups[tool_of(row.name)].insert(row.can_change);
    }
    std::set<std::string> fixed;
    for (const auto& [tool, flags] : groups)
    {
        EXPECT_EQ(1U, flags.size()) << tool;
        if (*flags.begin() == false)
            fixed.insert(tool);
    }
    EXPECT_EQ((std::set<std::string>{"CGST", "PGST", "PWRH"}), fixed);
    EXPECT_EQ(489U, tool_colors().size());
}

TEST(TOLV_GDI_TABLES, keep_every_tool_legible_on_its_own_background)
{
    int texts = 0;
    int lines = 0;
    for (const TOLV_INITIAL_COLOR& row : tool_colors())
    {
        const std::string name = row.name;
        if (!row.can_change || ends_with(name, "_BACKGROUND_COLOR"))
            continue;
        const double value = contrast(row.color, background_of(name));
        if (ends_with(name, "_TEXT_COLOR"))
        {
            EXPECT_GE(value, 4.5) << name;
            ++texts;
        }
        else if (ends_with(name, "_LINE_COLOR"))
        {
            EXPECT_GE(value, 3.0) << name;
            ++lines;
        }
        else if (ends_with(name, "_GRID_COLOR"))
        {
            EXPECT_GE(value, 1.2) << name; // seen, but never in front of what is drawn
            EXPECT_LE(value, 2.0) << name;
        }
        else
        {
            EXPECT_TRUE(ends_with(name, "_FILL_COLOR")) << name;
            EXPECT_GE(value, 1.1) << name;
        }
    }
    EXPECT_GE(texts, 130);
    EXPECT_GE(lines, 100);
}

// ---- Pens -----------------------------------------------------------------------------------------------------------

TEST(TOLV_GDI_TABLES, hold_the_plain_pens)
{
    const auto rows = tolv_get_initial_pens();
    const auto is_plain = [](const TOLV_INITIAL_PEN& row)
    { return row.style == Qt::SolidLine && row.cap == Qt::SquareCap && row.join == Qt::MiterJoin && row.width == 1; };
    for (int i = 0; i < 16; ++i)
    {
        EXPECT_EQ(i + 1, rows[i].resource);
        EXPECT_EQ(i + 1, rows[i].color); // the colour of the same name has the same value
        EXPECT_TRUE(is_plain(rows[i]));
    }
    EXPECT_EQ(1, TOLV_BLACK_PEN);
    EXPECT_EQ(16, TOLV_GRAY_PEN);
    for (int i = 0; i < 11; ++i)
    {
        const TOLV_INITIAL_PEN& row = rows[16 + i];
        EXPECT_EQ(18 + i, row.resource);
        EXPECT_EQ(20 + i, row.color);
        EXPECT_TRUE(is_plain(row));
        std::string name = row.name;
        EXPECT_EQ(0U, name.rfind("TOLV_WINDOW_", 0)) << name;
        EXPECT_EQ(name.substr(0, name.size() - 3) + "COLOR", color_row(row.color).name);
    }
    EXPECT_EQ(65, std::count_if(rows.begin(), rows.end(), is_plain));
}

TEST(TOLV_GDI_TABLES, hold_the_pens_of_the_rectangle_tracker)
{
    EXPECT_EQ(29, TOLV_RECT_TRACKER_SOLID_PEN);
    EXPECT_EQ(30, TOLV_RECT_TRACKER_DOTTED_PEN);
    EXPECT_EQ(TOLV_WINDOW_HIGHLIGHT_COLOR, pen_row(TOLV_RECT_TRACKER_SOLID_PEN).color);
    EXPECT_EQ(TOLV_WINDOW_HIGHLIGHT_COLOR, pen_row(TOLV_RECT_TRACKER_DOTTED_PEN).color);
    EXPECT_EQ(Qt::SolidLine, pen_row(TOLV_RECT_TRACKER_SOLID_PEN).style);
    EXPECT_EQ(Qt::DotLine, pen_row(TOLV_RECT_TRACKER_DOTTED_PEN).style);
}

TEST(TOLV_GDI_TABLES, vary_the_other_pens_in_width_style_and_cap)
{
    std::set<int> widths;
    std::set<int> styles;
    std::set<int> caps;
    for (const TOLV_INITIAL_PEN& row : tolv_get_initial_pens())
    {
        widths.insert(row.width);
        styles.insert(row.style);
        caps.insert(row.cap);
        EXPECT_EQ(Qt::MiterJoin, row.join) << row.name;
        EXPECT_NO_THROW(color_row(row.color)) << row.name;
    }
    EXPECT_EQ(0, *widths.begin());
    EXPECT_EQ(10, *widths.rbegin());
    EXPECT_EQ((std::set<int>{Qt::SolidLine, Qt::DashLine, Qt::DotLine}), styles);
    EXPECT_EQ((std::set<int>{Qt::FlatCap, Qt::SquareCap, Qt::RoundCap}), caps);
}

// ---- Brushes --------------------------------------------------------------------------------------------------------

TEST(TOLV_GDI_TABLES, fill_solid_except_for_seven_brushes)
{
    std::multiset<int> hatches;
    for (const TOLV_INITIAL_BRUSH& row : tolv_get_initial_brushes())
    {
        EXPECT_NO_THROW(color_row(row.color)) << row.resource;
        if (row.style == Qt::NoBrush)
        {
            EXPECT_EQ(17, row.resource);
            EXPECT_EQ(TOLV_WINDOW_BACKGROUND_COLOR, row.color);
        }
        else if (row.style != Qt::SolidPattern)
        {
            hatches.insert(row.style);
        }
    }
    EXPECT_EQ(6U, hatches.size());
    EXPECT_EQ((std::set<int>{9, 10, 12, 14}), std::set<int>(hatches.begin(), hatches.end()));
    const auto rows = tolv_get_initial_brushes();
    EXPECT_EQ(187, std::count_if(rows.begin(), rows.end(),
                                 [](const TOLV_INITIAL_BRUSH& row) { return row.style == Qt::SolidPattern; }));
}

// ---- Fonts ----------------------------------------------------------------------------------------------------------

namespace
{
void expect_font(TOLV_FONT_RESOURCE resource, int value, const TOLV_INITIAL_FONT& expected)
{
    const TOLV_INITIAL_FONT& row = font_row(resource);
    EXPECT_EQ(value, row.resource) << row.name;
    EXPECT_EQ(expected.can_change, row.can_change) << row.name;
    EXPECT_EQ(expected.text_color, row.text_color) << row.name;
    EXPECT_EQ(expected.background_color, row.background_color) << row.name;
    EXPECT_EQ(expected.point_size, row.point_size) << row.name;
    EXPECT_EQ(expected.bold, row.bold) << row.name;
    EXPECT_EQ(expected.italic, row.italic) << row.name;
    EXPECT_EQ(expected.underline, row.underline) << row.name;
    EXPECT_EQ(expected.strikeout, row.strikeout) << row.name;
    EXPECT_EQ(expected.fixed_pitch, row.fixed_pitch) << row.name;
    EXPECT_EQ(expected.style_hint, row.style_hint) << row.name;
    EXPECT_STREQ(expected.family, row.family) << row.name;
}
} // namespace

TEST(TOLV_GDI_TABLES, hold_the_fonts_that_all_hosts_share)
{
    const char* const clear = "Korvex Clear";
    const char* const mono = "Monospace";
    const auto text = TOLV_WINDOW_TEXT_COLOR;
    const auto back = TOLV_WINDOW_BACKGROUND_COLOR;
    const auto tip_text = TOLV_WINDOW_TOOLTIP_TEXT_COLOR;
    const auto tip_back = TOLV_WINDOW_TOOLTIP_BKGND_COLOR;
    const auto none = TOLV_MIN_FONT;
    const auto system = QFont::System;
    const auto sans = QFont::SansSerif;
    const auto typewriter = QFont::TypeWriter;
    expect_font(TOLV_GUI_FONT, 1, {none, "", true, text, back, 10, false, false, false, false, false, system, clear});
    expect_font(TOLV_GUI_BOLD_FONT, 2,
                {none, "", true, text, back, 10, true, false, false, false, false, system, clear});
    expect_font(TOLV_GUI_BOLD_UNDERLINE_FONT, 3,
                {none, "", true, text, back, 10, true, false, true, false, false, system, clear});
    expect_font(TOLV_GUI_UNDERLINE_FONT, 4,
                {none, "", true, text, back, 10, false, false, true, false, false, system, clear});
    expect_font(TOLV_TOOLTIP_FONT, 5,
                {none, "", false, tip_text, tip_back, 10, false, false, false, false, false, sans, clear});
    expect_font(
        TOLV_HEADER_FOOTER_FONT, 6,
        {none, "", true, TOLV_BLACK_COLOR, TOLV_WHITE_COLOR, 10, false, false, false, false, false, sans, clear});
    expect_font(
        TOLV_MDI_BACKGROUND_FONT, 7,
        {none, "", false, TOLV_GRAY_COLOR, TOLV_DARK_GRAY_COLOR, 10, false, false, false, false, false, sans, clear});
    expect_font(TOLV_MSG_TEXT_FONT, 86,
                {none, "", true, text, back, 10, false, false, false, false, true, typewriter, mono});
    expect_font(TOLV_MSG_COLUMN_HEADER_FONT, 87,
                {none, "", true, text, back, 10, false, false, false, false, true, typewriter, mono});
    expect_font(TOLV_TABLE_MONOSPACE_FONT, 102,
                {none, "", true, text, back, 8, false, false, false, false, true, typewriter, mono});
}

TEST(TOLV_GDI_TABLES, have_a_font_for_the_zoom_drag)
{
    EXPECT_STREQ("TOLV_RUI_ZOOM_DRAG_FONT", font_row(TOLV_RUI_ZOOM_DRAG_FONT).name);
    EXPECT_EQ(TOLV_WINDOW_TEXT_COLOR, font_row(TOLV_RUI_ZOOM_DRAG_FONT).text_color);
}

TEST(TOLV_GDI_TABLES, keep_fonts_between_6_and_24_points_in_two_families)
{
    std::set<int> sizes;
    for (const TOLV_INITIAL_FONT& row : tolv_get_initial_fonts())
    {
        sizes.insert(row.point_size);
        const bool is_mono = std::string(row.family) == "Monospace";
        EXPECT_TRUE(is_mono || std::string(row.family) == "Korvex Clear") << row.name;
        EXPECT_EQ(is_mono, row.fixed_pitch) << row.name;
        EXPECT_EQ(is_mono, row.style_hint == QFont::TypeWriter) << row.name;
        const std::string tool = tool_of(row.name);
        if (tool == "CONS")
        {
            EXPECT_TRUE(is_mono) << row.name;
        }
    }
    EXPECT_EQ(6, *sizes.begin());
    EXPECT_EQ(24, *sizes.rbegin());
}

TEST(TOLV_GDI_TABLES, write_the_tools_fonts_in_legible_colors_that_users_can_change)
{
    for (const TOLV_INITIAL_FONT& row : tolv_get_initial_fonts())
    {
        const TOLV_INITIAL_COLOR& text = color_row(row.text_color);
        const TOLV_INITIAL_COLOR& background = color_row(row.background_color);
        if (row.resource <= TOLV_MDI_BACKGROUND_FONT || text.is_system)
            continue;
        EXPECT_TRUE(text.can_change && background.can_change) << row.name;
        EXPECT_GE(contrast(text.color, background.color), 4.5) << row.name;
    }
}
