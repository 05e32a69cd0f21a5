#include "tolv_gdi_fixture.h"

#include "child_process.h"
#include "test_environment.h"
#include "tolv_font.h"
#include "tolv_font_attributes.h"
#include "tolv_gdi_data_p.h"
#include "tolv_gdi_tables.h"

#include <QApplication>
#include <QEvent>
#include <QPalette>
#include <QWidget>

#include <memory>
#include <vector>

using TOLV_GDI_MANAGER_TEST = GDI_TEST;

namespace
{
constexpr auto NO_COLOR = static_cast<TOLV_COLOR_RESOURCE>(9999);
constexpr auto NEGATIVE_COLOR = static_cast<TOLV_COLOR_RESOURCE>(-1);
constexpr auto COLOR_IN_A_GAP = static_cast<TOLV_COLOR_RESOURCE>(89);

/// The built-in value of a colour.
QColor color_of(const std::string& name)
{
    for (const TOLV_INITIAL_COLOR& row : tolv_get_initial_colors())
    {
        if (name == row.name)
            return row.color;
    }
    return {};
}

/// Changes a role of the application's palette for a scope.
class SCOPED_PALETTE_COLOR
{
public:
    SCOPED_PALETTE_COLOR(QPalette::ColorRole role, const QColor& color) : m_old(QApplication::palette())
    {
        QPalette palette = m_old;
        palette.setColor(role, color);
        QApplication::setPalette(palette);
    }
    ~SCOPED_PALETTE_COLOR()
    {
        QApplication::setPalette(m_old);
    }

private:
    QPalette m_old;
};

/// A widget that looks a colour up whenever it hears of another font of the application.
class COLOR_READER : public QWidget
{
public:
    const std::vector<QColor>& get_colors() const
    {
        return m_colors;
    }

protected:
    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::ApplicationFontChange)
            m_colors.push_back(TOLV_COLOR(TOLV_RED_COLOR).get_color());
        return QWidget::event(event);
    }

private:
    std::vector<QColor> m_colors;
};
} // namespace

// ---- The map of the rows --------------------------------------------------------------------------------------------

TEST(TOLV_RESOURCE_MAP_TEST, finds_what_was_put_in_and_nothing_else)
{
    TOLV_RESOURCE_MAP<TOLV_COLOR_RESOURCE, int> map;
    EXPECT_TRUE(map.find(TOLV_RED_COLOR) == map.end());
    EXPECT_TRUE(map.insert(TOLV_RED_COLOR, std::make_unique<int>(7)).second);
    const int* const value = map.find(TOLV_RED_COLOR)->second.get();
    EXPECT_TRUE(map.insert(COLOR_IN_A_GAP, std::make_unique<int>(8)).second);
    EXPECT_EQ(value, map.find(TOLV_RED_COLOR)->second.get()); // the object stays where it is
    EXPECT_EQ(TOLV_RED_COLOR, map.find(TOLV_RED_COLOR)->first);
    for (const TOLV_COLOR_RESOURCE other : {TOLV_MIN_COLOR, TOLV_GREEN_COLOR, NO_COLOR, NEGATIVE_COLOR})
        EXPECT_TRUE(map.find(other) == map.end()) << other;
}

TEST(TOLV_RESOURCE_MAP_TEST, keeps_the_first_of_two_objects)
{
    TOLV_RESOURCE_MAP<TOLV_COLOR_RESOURCE, int> map;
    map.insert(TOLV_RED_COLOR, std::make_unique<int>(7));
    const auto second = map.insert(TOLV_RED_COLOR, std::make_unique<int>(8));
    EXPECT_FALSE(second.second);
    EXPECT_EQ(7, *second.first->second);
}

TEST(TOLV_RESOURCE_MAP_TEST, goes_through_its_objects_by_number_until_it_is_cleared)
{
    TOLV_RESOURCE_MAP<TOLV_COLOR_RESOURCE, int> map;
    map.insert(COLOR_IN_A_GAP, std::make_unique<int>(3));
    map.insert(TOLV_BLACK_COLOR, std::make_unique<int>(1));
    map.insert(TOLV_RED_COLOR, std::make_unique<int>(2));
    std::vector<int> values;
    map.for_each([&values](int value) { values.push_back(value); });
    EXPECT_EQ((std::vector<int>{1, 2, 3}), values);
    map.clear();
    EXPECT_TRUE(map.find(TOLV_RED_COLOR) == map.end());
}

// ---- Life -----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_GDI_MANAGER_TEST, is_made_once)
{
    TOLV_GDI_MANAGER* const first = TOLV_GDI_MANAGER::get_instance();
    tolv_create_gdi_manager();
    EXPECT_EQ(first, TOLV_GDI_MANAGER::get_instance());
}

TEST_F(TOLV_GDI_MANAGER_TEST, must_not_be_used_behind_its_end)
{
    tolv_delete_gdi_manager();
    EXPECT_INTERNAL_ERROR(TOLV_GDI_MANAGER::get_instance(), "!TOLV_GDI_MANAGER::m_instance_has_been_deleted");
    EXPECT_INTERNAL_ERROR(TOLV_COLOR(TOLV_RED_COLOR).get_color(), "!TOLV_GDI_MANAGER::m_instance_has_been_deleted");
    tolv_create_gdi_manager();
    EXPECT_EQ(QColor(255, 0, 0), TOLV_COLOR(TOLV_RED_COLOR).get_color());
}

TEST_F(TOLV_GDI_MANAGER_TEST, refuses_an_enumerator_that_two_rows_have)
{
    // The colour table lies in memory that can be written: the manager itself puts a colour of the palette there.
    auto& row = const_cast<TOLV_INITIAL_COLOR&>(tolv_get_initial_colors()[1]);
    row.resource = TOLV_BLACK_COLOR;
    EXPECT_INTERNAL_ERROR(restart(), "inserted.second");
    row.resource = TOLV_WHITE_COLOR;
    restart();
    EXPECT_EQ(QColor(255, 255, 255), manager().get_color(TOLV_WHITE_COLOR));
}

TEST_F(TOLV_GDI_MANAGER_TEST, can_be_used_by_widgets_that_hear_of_the_font)
{
    COLOR_READER reader;
    restart();
    EXPECT_EQ((std::vector<QColor>{QColor(255, 0, 0)}), reader.get_colors());
}

TEST_F(TOLV_GDI_MANAGER_TEST, holds_every_row_of_the_tables)
{
    for (const TOLV_INITIAL_COLOR& row : tolv_get_initial_colors())
    {
        EXPECT_TRUE(manager().has_color(row.resource)) << row.name;
        if (!row.is_system)
        {
            EXPECT_EQ(row.color, manager().get_color(row.resource)) << row.name;
        }
    }
    for (const TOLV_INITIAL_PEN& row : tolv_get_initial_pens())
    {
        const QPen pen = *manager().get_pen(row.resource);
        EXPECT_EQ(QPen(manager().get_color(row.color), row.width, row.style, row.cap, row.join), pen) << row.name;
        EXPECT_EQ(row.color, manager().get_pen_color(row.resource)) << row.name;
    }
    for (const TOLV_INITIAL_BRUSH& row : tolv_get_initial_brushes())
    {
        EXPECT_EQ(QBrush(manager().get_color(row.color), row.style), *manager().get_brush(row.resource));
        EXPECT_EQ(row.color, manager().get_brush_color(row.resource));
    }
    for (const TOLV_INITIAL_FONT& row : tolv_get_initial_fonts())
    {
        const QFont font = *manager().get_font(row.resource, nullptr, nullptr);
        EXPECT_EQ(row.point_size, font.pointSize()) << row.name;
        EXPECT_EQ(row.bold ? 75 : 50, font.weight()) << row.name;
        EXPECT_EQ(row.italic, font.italic()) << row.name;
        EXPECT_EQ(row.underline, font.underline()) << row.name;
        EXPECT_EQ(row.strikeout, font.strikeOut()) << row.name;
        EXPECT_EQ(row.fixed_pitch, font.fixedPitch()) << row.name;
        EXPECT_EQ(row.style_hint, font.styleHint()) << row.name;
        EXPECT_EQ(QFont::PreferDefault, font.styleStrategy()) << row.name;
        EXPECT_EQ(QLatin1String(row.family), font.family()) << row.name;
        EXPECT_FALSE(font.kerning()) << row.name;
    }
}

TEST_F(TOLV_GDI_MANAGER_TEST, refuses_enumerators_of_no_row)
{
    EXPECT_FALSE(manager().has_color(NO_COLOR));
    EXPECT_FALSE(manager().has_color(NEGATIVE_COLOR));
    EXPECT_FALSE(manager().has_color(COLOR_IN_A_GAP));
    EXPECT_FALSE(manager().has_color(TOLV_MIN_COLOR));
    for (const TOLV_COLOR_RESOURCE resource : {NO_COLOR, NEGATIVE_COLOR, COLOR_IN_A_GAP, TOLV_MIN_COLOR})
    {
        EXPECT_INTERNAL_ERROR(manager().get_color(resource), "i != m_colors.end()");
        EXPECT_INTERNAL_ERROR(manager().get_default_color(resource), "i != m_colors.end()");
        EXPECT_INTERNAL_ERROR(manager().can_change_color(resource), "i != m_colors.end()");
        EXPECT_INTERNAL_ERROR(manager().set_color(resource, Qt::red), "i != m_colors.end()");
    }
    EXPECT_INTERNAL_ERROR(manager().get_pen(TOLV_MIN_PEN), "i != m_pens.end()");
    EXPECT_INTERNAL_ERROR(manager().get_pen_color(TOLV_MIN_PEN), "i != m_pens.end()");
    EXPECT_INTERNAL_ERROR(manager().set_pen_width(TOLV_MIN_PEN, 1), "i != m_pens.end()");
    EXPECT_INTERNAL_ERROR(manager().set_pen_color(TOLV_MIN_PEN, TOLV_RED_COLOR), "i != m_pens.end()");
    EXPECT_INTERNAL_ERROR(manager().set_pen_color(TOLV_RED_PEN, NO_COLOR), "i != m_colors.end()");
    EXPECT_EQ(TOLV_RED_COLOR, manager().get_pen_color(TOLV_RED_PEN));
    EXPECT_INTERNAL_ERROR(manager().get_brush(TOLV_MIN_BRUSH), "i != m_brushes.end()");
    EXPECT_INTERNAL_ERROR(manager().get_brush_color(TOLV_MIN_BRUSH), "i != m_brushes.end()");
    EXPECT_INTERNAL_ERROR(manager().set_brush_color(TOLV_MIN_BRUSH, TOLV_RED_COLOR), "i != m_brushes.end()");
    EXPECT_INTERNAL_ERROR(manager().get_font(TOLV_MIN_FONT, nullptr, nullptr), "i != m_fonts.end()");
    EXPECT_INTERNAL_ERROR(manager().can_change_font(TOLV_MIN_FONT), "i != m_fonts.end()");
    EXPECT_INTERNAL_ERROR(manager().reset_colors({}), "!color_set.empty()");
    EXPECT_INTERNAL_ERROR(manager().reset_fonts({}), "!font_set.empty()");
}

TEST_F(TOLV_GDI_MANAGER_TEST, reports_as_the_library_from_its_source_file)
{
    const TRAPPED_INTERNAL_ERROR error = CATCH_INTERNAL_ERROR(manager().get_color(NO_COLOR));
    EXPECT_EQ("TOLV", error.tag);
    EXPECT_EQ("tolv_gdi_manager", error.file);
    EXPECT_GT(error.line, 0);
}

TEST_F(TOLV_GDI_MANAGER_TEST, rows_refuse_a_null_name)
{
    EXPECT_INTERNAL_ERROR(TOLV_GDI_MANAGER::COLOR_DATA(false, 0, 0, true, Qt::red, Qt::red, nullptr), "name != NULL");
    EXPECT_INTERNAL_ERROR(TOLV_GDI_MANAGER::PEN_DATA(QPen(), TOLV_RED_COLOR, nullptr), "name != NULL");
    EXPECT_INTERNAL_ERROR(
        TOLV_GDI_MANAGER::FONT_DATA(true, TOLV_RED_COLOR, TOLV_RED_COLOR, TOLV_FONT_ATTRIBUTES(), nullptr),
        "name != NULL");
}

// ---- Colours --------------------------------------------------------------------------------------------------------

TEST_F(TOLV_GDI_MANAGER_TEST, system_colors_follow_the_palette_at_once)
{
    const SCOPED_PALETTE_COLOR base(QPalette::Base, QColor(1, 2, 3));
    const SCOPED_PALETTE_COLOR alternate(QPalette::AlternateBase, QColor(4, 5, 6));
    EXPECT_EQ(QColor(1, 2, 3), manager().get_color(TOLV_WINDOW_BACKGROUND_COLOR));
    EXPECT_EQ(QColor(1, 2, 3), manager().get_default_color(TOLV_WINDOW_BACKGROUND_COLOR));
    EXPECT_EQ(QColor(4, 5, 6), manager().get_color(TOLV_WINDOW_TOOLTIP_BKGND_COLOR));
}

TEST_F(TOLV_GDI_MANAGER_TEST, the_general_background_is_the_palettes_of_the_start)
{
    {
        const SCOPED_PALETTE_COLOR window(QPalette::Window, QColor(11, 12, 13));
        restart();
    }
    EXPECT_EQ(QColor(11, 12, 13), manager().get_color(TOLV_GENERAL_BACKGROUND_COLOR));
    EXPECT_EQ(QColor(11, 12, 13), manager().get_default_color(TOLV_GENERAL_BACKGROUND_COLOR));
    manager().set_color(TOLV_GENERAL_BACKGROUND_COLOR, Qt::red);
    manager().reset_colors({TOLV_GENERAL_BACKGROUND_COLOR});
    EXPECT_EQ(QColor(11, 12, 13), manager().get_color(TOLV_GENERAL_BACKGROUND_COLOR));
    restart();
    EXPECT_EQ(QApplication::palette().color(QPalette::Window), manager().get_color(TOLV_GENERAL_BACKGROUND_COLOR));
}

TEST_F(TOLV_GDI_MANAGER_TEST, a_changed_color_keeps_its_default_until_a_reset)
{
    const QColor old_color = manager().get_color(TOLV_TXED_KEYWORD_TEXT_COLOR);
    manager().set_color(TOLV_TXED_KEYWORD_TEXT_COLOR, QColor(9, 8, 7));
    EXPECT_EQ(QColor(9, 8, 7), manager().get_color(TOLV_TXED_KEYWORD_TEXT_COLOR));
    EXPECT_EQ(old_color, manager().get_default_color(TOLV_TXED_KEYWORD_TEXT_COLOR));
    EXPECT_FALSE(is_stored("TOLV_TXED_KEYWORD_TEXT_COLOR"));
    manager().reset_colors({TOLV_TXED_KEYWORD_TEXT_COLOR});
    EXPECT_EQ(old_color, manager().get_color(TOLV_TXED_KEYWORD_TEXT_COLOR));
}

TEST_F(TOLV_GDI_MANAGER_TEST, a_fixed_color_refuses_a_change_and_a_system_color_ignores_it)
{
    EXPECT_INTERNAL_ERROR(manager().set_color(TOLV_RED_COLOR, Qt::blue), "m_change_non_windows_color");
    EXPECT_EQ(QColor(255, 0, 0), manager().get_color(TOLV_RED_COLOR));
    const QColor highlight = manager().get_color(TOLV_WINDOW_HIGHLIGHT_COLOR);
    manager().set_color(TOLV_WINDOW_HIGHLIGHT_COLOR, QColor(3, 2, 1));
    EXPECT_EQ(highlight, manager().get_color(TOLV_WINDOW_HIGHLIGHT_COLOR));
    EXPECT_FALSE(manager().can_change_color(TOLV_RED_COLOR));
    EXPECT_FALSE(manager().can_change_color(TOLV_WINDOW_HIGHLIGHT_COLOR));
    EXPECT_FALSE(manager().can_change_color(TOLV_PWRH_HOT_FILL_COLOR));
    EXPECT_TRUE(manager().can_change_color(TOLV_GENERAL_BACKGROUND_COLOR));
    EXPECT_TRUE(manager().can_change_color(TOLV_EMPTY_VIEW_COLOR));
}

TEST_F(TOLV_GDI_MANAGER_TEST, a_reset_of_fixed_and_system_colors_does_nothing)
{
    manager().set_color(TOLV_EMPTY_VIEW_COLOR, Qt::red);
    manager().reset_colors({TOLV_RED_COLOR, TOLV_WINDOW_TEXT_COLOR});
    EXPECT_EQ(QColor(255, 0, 0), manager().get_color(TOLV_RED_COLOR));
    EXPECT_EQ(QColor(Qt::red), manager().get_color(TOLV_EMPTY_VIEW_COLOR));
}

TEST_F(TOLV_GDI_MANAGER_TEST, finds_colors_by_name)
{
    EXPECT_EQ(TOLV_DARK_ORANGE_COLOR, manager().get_color_resource("TOLV_DARK_ORANGE_COLOR"));
    for (const TOLV_INITIAL_COLOR& row : tolv_get_initial_colors())
        EXPECT_EQ(row.resource, manager().get_color_resource(row.name));
    EXPECT_EQ(TOLV_MIN_COLOR, manager().get_color_resource("TOLV_dark_orange_COLOR"));
    EXPECT_EQ(TOLV_MIN_COLOR, manager().get_color_resource("TOLV_MIN_COLOR"));
    EXPECT_INTERNAL_ERROR(manager().get_color_resource(""), "!color_name.empty()");
}

// ---- Pens and brushes -----------------------------------------------------------------------------------------------

TEST_F(TOLV_GDI_MANAGER_TEST, pens_and_brushes_take_a_new_color_only_at_a_refresh)
{
    const QColor old_color = manager().get_color(TOLV_EMPTY_VIEW_COLOR);
    manager().set_pen_color(TOLV_RED_PEN, TOLV_EMPTY_VIEW_COLOR);
    manager().set_color(TOLV_EMPTY_VIEW_COLOR, QColor(1, 1, 2));
    EXPECT_EQ(old_color, manager().get_pen(TOLV_RED_PEN)->color());
    EXPECT_EQ(old_color, manager().get_brush(TOLV_EMPTY_VIEW_BRUSH)->color());
    manager().refresh_pen_and_brush_colors();
    EXPECT_EQ(QColor(1, 1, 2), manager().get_pen(TOLV_RED_PEN)->color());
    EXPECT_EQ(QColor(1, 1, 2), manager().get_brush(TOLV_EMPTY_VIEW_BRUSH)->color());
    manager().reset_colors({TOLV_EMPTY_VIEW_COLOR});
    EXPECT_EQ(old_color, manager().get_pen(TOLV_RED_PEN)->color());
    EXPECT_EQ(old_color, manager().get_brush(TOLV_EMPTY_VIEW_BRUSH)->color());
}

TEST_F(TOLV_GDI_MANAGER_TEST, a_palette_change_alone_does_not_reach_pens)
{
    const QColor old_color = manager().get_pen(TOLV_WINDOW_TEXT_PEN)->color();
    const SCOPED_PALETTE_COLOR text(QPalette::WindowText, QColor(90, 80, 70));
    EXPECT_EQ(old_color, manager().get_pen(TOLV_WINDOW_TEXT_PEN)->color());
    manager().refresh_pen_and_brush_colors();
    EXPECT_EQ(QColor(90, 80, 70), manager().get_pen(TOLV_WINDOW_TEXT_PEN)->color());
}

TEST_F(TOLV_GDI_MANAGER_TEST, a_new_color_resource_reaches_its_pen_or_brush_at_once)
{
    QPen* const pen = manager().get_pen(TOLV_BLACK_PEN);
    manager().set_pen_color(TOLV_BLACK_PEN, TOLV_GREEN_COLOR);
    EXPECT_EQ(pen, manager().get_pen(TOLV_BLACK_PEN));
    EXPECT_EQ(QColor(0, 255, 0), pen->color());
    EXPECT_EQ(TOLV_GREEN_COLOR, manager().get_pen_color(TOLV_BLACK_PEN));
    QBrush* const brush = manager().get_brush(TOLV_BLACK_BRUSH);
    manager().set_brush_color(TOLV_BLACK_BRUSH, TOLV_GREEN_COLOR);
    EXPECT_EQ(QColor(0, 255, 0), brush->color());
    EXPECT_EQ(TOLV_GREEN_COLOR, manager().get_brush_color(TOLV_BLACK_BRUSH));
}

TEST_F(TOLV_GDI_MANAGER_TEST, pen_widths_are_not_negative)
{
    manager().set_pen_width(TOLV_BLACK_PEN, 0);
    EXPECT_EQ(0, manager().get_pen(TOLV_BLACK_PEN)->width());
    manager().set_pen_width(TOLV_BLACK_PEN, 7);
    EXPECT_INTERNAL_ERROR(manager().set_pen_width(TOLV_BLACK_PEN, -1), "width >= 0");
    EXPECT_EQ(7, manager().get_pen(TOLV_BLACK_PEN)->width());
}

TEST_F(TOLV_GDI_MANAGER_TEST, shares_custom_pens_by_all_their_attributes)
{
    const QColor color(10, 20, 30);
    QPen* const pen = manager().get_custom_pen(Qt::DashLine, Qt::RoundCap, Qt::BevelJoin, 3, color);
    EXPECT_EQ(QPen(color, 3, Qt::DashLine, Qt::RoundCap, Qt::BevelJoin), *pen);
    EXPECT_EQ(pen, manager().get_custom_pen(Qt::DashLine, Qt::RoundCap, Qt::BevelJoin, 3, color));
    const QColor translucent(10, 20, 30, 100);
    EXPECT_NE(pen, manager().get_custom_pen(Qt::DotLine, Qt::RoundCap, Qt::BevelJoin, 3, color));
    EXPECT_NE(pen, manager().get_custom_pen(Qt::DashLine, Qt::FlatCap, Qt::BevelJoin, 3, color));
    EXPECT_NE(pen, manager().get_custom_pen(Qt::DashLine, Qt::RoundCap, Qt::RoundJoin, 3, color));
    EXPECT_NE(pen, manager().get_custom_pen(Qt::DashLine, Qt::RoundCap, Qt::BevelJoin, 4, color));
    EXPECT_NE(pen, manager().get_custom_pen(Qt::DashLine, Qt::RoundCap, Qt::BevelJoin, 3, translucent));
    EXPECT_EQ(100,
              manager().get_custom_pen(Qt::DashLine, Qt::RoundCap, Qt::BevelJoin, 3, translucent)->color().alpha());
    EXPECT_NE(pen, manager().get_pen(TOLV_BLACK_PEN));
}

TEST_F(TOLV_GDI_MANAGER_TEST, keeps_custom_objects_in_place_however_many_there_are)
{
    QPen* const pen = manager().get_custom_pen(Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin, 1, QColor(0, 0, 0));
    QBrush* const brush = manager().get_custom_brush(Qt::SolidPattern, QColor(0, 0, 0));
    QFont* const font = manager().get_custom_font(9, false, false, false, false, false, QFont::Serif, "Serif");
    for (int i = 1; i < 5000; ++i)
    {
        const QColor color(i % 256, i / 256, 7);
        manager().get_custom_pen(Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin, i, color);
        manager().get_custom_brush(Qt::SolidPattern, color);
        manager().get_custom_font(9 + i % 300, false, false, false, false, false, QFont::Serif, "Serif");
    }
    EXPECT_EQ(pen, manager().get_custom_pen(Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin, 1, QColor(0, 0, 0)));
    EXPECT_EQ(1, pen->width());
    EXPECT_EQ(brush, manager().get_custom_brush(Qt::SolidPattern, QColor(0, 0, 0)));
    EXPECT_EQ(font, manager().get_custom_font(9, false, false, false, false, false, QFont::Serif, "Serif"));
}

TEST_F(TOLV_GDI_MANAGER_TEST, shares_custom_brushes_by_style_and_color)
{
    QBrush* const brush = manager().get_custom_brush(Qt::Dense4Pattern, QColor(1, 2, 3));
    EXPECT_EQ(QBrush(QColor(1, 2, 3), Qt::Dense4Pattern), *brush);
    EXPECT_EQ(brush, manager().get_custom_brush(Qt::Dense4Pattern, QColor(1, 2, 3)));
    EXPECT_NE(brush, manager().get_custom_brush(Qt::Dense5Pattern, QColor(1, 2, 3)));
    EXPECT_NE(brush, manager().get_custom_brush(Qt::Dense4Pattern, QColor(1, 2, 3, 4)));
}

// ---- Fonts ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_GDI_MANAGER_TEST, shares_custom_fonts_by_all_their_attributes)
{
    const auto get = [](const TOLV_FONT_ATTRIBUTES& attributes) { return manager().get_custom_font(attributes); };
    const TOLV_FONT_ATTRIBUTES base = {11, true, false, true, false, true, QFont::Serif, QStringLiteral("Some Family")};
    QFont* const font = manager().get_custom_font(11, true, false, true, false, true, QFont::Serif, "Some Family");
    EXPECT_EQ(font, get(base));
    EXPECT_EQ(11, font->pointSize());
    EXPECT_EQ(75, font->weight());
    EXPECT_FALSE(font->italic());
    EXPECT_TRUE(font->underline());
    EXPECT_FALSE(font->strikeOut());
    EXPECT_TRUE(font->fixedPitch());
    EXPECT_EQ(QFont::Serif, font->styleHint());
    EXPECT_EQ(QStringLiteral("Some Family"), font->family());
    EXPECT_TRUE(font->kerning()); // only the named fonts go without
    EXPECT_NE(font, get({12, true, false, true, false, true, QFont::Serif, "Some Family"}));
    EXPECT_NE(font, get({11, false, false, true, false, true, QFont::Serif, "Some Family"}));
    EXPECT_NE(font, get({11, true, true, true, false, true, QFont::Serif, "Some Family"}));
    EXPECT_NE(font, get({11, true, false, false, false, true, QFont::Serif, "Some Family"}));
    EXPECT_NE(font, get({11, true, false, true, true, true, QFont::Serif, "Some Family"}));
    EXPECT_NE(font, get({11, true, false, true, false, false, QFont::Serif, "Some Family"}));
    EXPECT_NE(font, get({11, true, false, true, false, true, QFont::SansSerif, "Some Family"}));
    EXPECT_NE(font, get({11, true, false, true, false, true, QFont::Serif, "Other Family"}));
}

TEST_F(TOLV_GDI_MANAGER_TEST, the_key_of_a_font_is_its_numbers_and_its_family)
{
    const TOLV_FONT_ATTRIBUTES attributes = {
        11, true, false, true, false, true, QFont::TypeWriter, QString::fromUtf8("Größe, mono")};
    EXPECT_EQ("11,1,0,1,0,1,2,Größe, mono", attributes.get_key());
}

TEST_F(TOLV_GDI_MANAGER_TEST, gives_a_font_with_the_colors_asked_for)
{
    TOLV_COLOR_RESOURCE text = TOLV_MIN_COLOR;
    TOLV_COLOR_RESOURCE background = TOLV_MIN_COLOR;
    QFont* const font = manager().get_font(TOLV_MDI_BACKGROUND_FONT, &text, &background);
    EXPECT_EQ(TOLV_GRAY_COLOR, text);
    EXPECT_EQ(TOLV_DARK_GRAY_COLOR, background);
    EXPECT_EQ(font, manager().get_font(TOLV_MDI_BACKGROUND_FONT, nullptr, nullptr));
    EXPECT_TRUE(manager().can_change_font(TOLV_GUI_FONT));
    EXPECT_FALSE(manager().can_change_font(TOLV_TOOLTIP_FONT));
    EXPECT_FALSE(manager().can_change_font(TOLV_MDI_BACKGROUND_FONT));
}

TEST_F(TOLV_GDI_MANAGER_TEST, the_application_takes_the_gui_font)
{
    EXPECT_EQ(*manager().get_font(TOLV_GUI_FONT, nullptr, nullptr), QApplication::font());
    EXPECT_EQ(QStringLiteral("Korvex Clear"), QApplication::font().family());
}

TEST_F(TOLV_GDI_MANAGER_TEST, registers_the_substitutes_in_order)
{
    const auto ends_in = [](const char* family, const QStringList& expected)
    {
        const QStringList substitutes = QFont::substitutes(QString::fromLatin1(family));
        EXPECT_EQ(expected, substitutes) << family;
    };
    ends_in("Bitstream Vera Sans", {"dejavu sans", "luxi sans", "monospace"});
    ends_in("Arial", {"bitstream vera sans", "dejavu sans"});
    ends_in("Tahoma", {"bitstream vera sans", "dejavu sans"});
    ends_in("Courier New", {"courier", "dejavu sans mono", "liberation mono", "bitstream sans mono", "monospace"});
    ends_in("DejaVu Sans", {"monospace"});
}

TEST_F(TOLV_GDI_MANAGER_TEST, set_font_takes_over_four_attributes_and_the_colors)
{
    manager().get_font(TOLV_TXED_KEYWORD_FONT, nullptr, nullptr)->setUnderline(true);
    TOLV_FONT font(TOLV_GUI_FONT);
    font.set_font(QColor(1, 2, 3), QColor(4, 5, 6), QStringLiteral("Other Mono"), 17, false, true);
    manager().set_font(TOLV_TXED_KEYWORD_FONT, &font);
    const QFont* const changed = manager().get_font(TOLV_TXED_KEYWORD_FONT, nullptr, nullptr);
    EXPECT_EQ(17, changed->pointSize());
    EXPECT_EQ(50, changed->weight());
    EXPECT_TRUE(changed->italic());
    EXPECT_EQ(QStringLiteral("Other Mono"), changed->family());
    EXPECT_TRUE(changed->underline());
    EXPECT_TRUE(changed->fixedPitch());
    EXPECT_EQ(QFont::TypeWriter, changed->styleHint());
    EXPECT_EQ(QColor(1, 2, 3), manager().get_color(TOLV_TXED_KEYWORD_TEXT_COLOR));
    // The background is that of all fonts of the editor.
    EXPECT_EQ(QColor(4, 5, 6), manager().get_color(TOLV_TXED_BACKGROUND_COLOR));
    EXPECT_INTERNAL_ERROR(manager().set_font(TOLV_TXED_KEYWORD_FONT, nullptr), "font != NULL");
}

TEST_F(TOLV_GDI_MANAGER_TEST, set_font_leaves_system_colors_alone_and_cannot_recolor_fixed_ones)
{
    const QColor window_text = manager().get_color(TOLV_WINDOW_TEXT_COLOR);
    TOLV_FONT font(TOLV_GUI_FONT);
    font.set_text_color(QColor(1, 2, 3));
    font.set_point_size(21);
    manager().set_font(TOLV_GUI_FONT, &font);
    EXPECT_EQ(21, manager().get_font(TOLV_GUI_FONT, nullptr, nullptr)->pointSize());
    EXPECT_EQ(window_text, manager().get_color(TOLV_WINDOW_TEXT_COLOR));

    TOLV_FONT footer(TOLV_HEADER_FOOTER_FONT);
    footer.set_point_size(12);
    manager().set_font(TOLV_HEADER_FOOTER_FONT, &footer);
    EXPECT_EQ(12, manager().get_font(TOLV_HEADER_FOOTER_FONT, nullptr, nullptr)->pointSize());
    footer.set_text_color(QColor(1, 2, 3));
    EXPECT_INTERNAL_ERROR(manager().set_font(TOLV_HEADER_FOOTER_FONT, &footer), "m_change_non_windows_color");
    EXPECT_EQ(QColor(0, 0, 0), manager().get_color(TOLV_BLACK_COLOR));
}

TEST_F(TOLV_GDI_MANAGER_TEST, a_reset_brings_all_attributes_of_a_font_back_but_not_its_colors)
{
    TOLV_FONT font(TOLV_GUI_FONT);
    font.set_font(QColor(1, 2, 3), QColor(4, 5, 6), QStringLiteral("Other"), 17, false, true);
    manager().set_font(TOLV_TXED_KEYWORD_FONT, &font);
    QFont* const changed = manager().get_font(TOLV_TXED_KEYWORD_FONT, nullptr, nullptr);
    changed->setUnderline(true);
    changed->setStrikeOut(true);
    changed->setFixedPitch(false);
    changed->setStyleHint(QFont::Serif);
    manager().reset_fonts({TOLV_TXED_KEYWORD_FONT});
    EXPECT_EQ(10, changed->pointSize());
    EXPECT_EQ(75, changed->weight());
    EXPECT_FALSE(changed->italic());
    EXPECT_FALSE(changed->underline());
    EXPECT_FALSE(changed->strikeOut());
    EXPECT_TRUE(changed->fixedPitch());
    EXPECT_EQ(QFont::TypeWriter, changed->styleHint());
    EXPECT_EQ(QStringLiteral("Monospace"), changed->family());
    EXPECT_EQ(QColor(1, 2, 3), manager().get_color(TOLV_TXED_KEYWORD_TEXT_COLOR));
}

TEST_F(TOLV_GDI_MANAGER_TEST, the_default_font_is_a_custom_one_in_default_colors)
{
    TOLV_FONT changed(TOLV_GUI_FONT);
    changed.set_font(QColor(1, 2, 3), QColor(4, 5, 6), QStringLiteral("Other"), 17, false, true);
    manager().set_font(TOLV_TXED_KEYWORD_FONT, &changed);
    const TOLV_FONT font = manager().get_default_font(TOLV_TXED_KEYWORD_FONT);
    EXPECT_EQ(TOLV_MIN_FONT, font.get_font_resource());
    EXPECT_EQ(10, font.get_point_size());
    EXPECT_TRUE(font.get_bold());
    EXPECT_FALSE(font.get_italic());
    EXPECT_EQ(QStringLiteral("Monospace"), font.get_face_name());
    EXPECT_EQ(TOLV_COLOR(color_of("TOLV_TXED_KEYWORD_TEXT_COLOR")), font.get_text_color());
    EXPECT_EQ(TOLV_COLOR(color_of("TOLV_TXED_BACKGROUND_COLOR")), font.get_background_color());
    EXPECT_INTERNAL_ERROR(manager().get_default_font(TOLV_MIN_FONT), "font != TOLV_MIN_FONT");
}

TEST(TOLV_GDI_MANAGER_PROCESS, works_before_the_application_object)
{
    const CHILD_RESULT result = run_child("tolv_gdi_child", {"before_application"});
    EXPECT_EQ(0, result.exit_status) << result.err;
    EXPECT_EQ("#ff0000 1 10\n", result.out);
}

TEST(TOLV_GDI_MANAGER_PROCESS, ends_the_process_that_uses_it_too_late)
{
    const CHILD_RESULT result = run_child("tolv_gdi_child", {"behind_the_end"});
    EXPECT_NE(0, result.exit_status);
    EXPECT_NE(std::string::npos, result.err.find("!TOLV_GDI_MANAGER::m_instance_has_been_deleted")) << result.err;
    EXPECT_EQ(std::string::npos, result.out.find("survived"));
}

TEST(TOLV_GDI_MANAGER_PROCESS, remembers_its_end_even_where_there_was_none_to_end)
{
    const CHILD_RESULT result = run_child("tolv_gdi_child", {"end_before_start"});
    EXPECT_NE(0, result.exit_status);
    EXPECT_NE(std::string::npos, result.err.find("!TOLV_GDI_MANAGER::m_instance_has_been_deleted")) << result.err;
    EXPECT_EQ("", result.out);
}

TEST(TOLV_GDI_MANAGER_PROCESS, kerns_named_fonts_only_if_configured)
{
    const CHILD_RESULT off = run_child("tolv_gdi_child", {"kerning"});
    EXPECT_EQ("0 1\n", off.out) << off.err;
    const CHILD_RESULT on = run_child("tolv_gdi_child", {"kerning"}, {{"NORVANE_CFG", "tolv_enable_kerning=on"}});
    EXPECT_EQ("1 1\n", on.out) << on.err;
}
