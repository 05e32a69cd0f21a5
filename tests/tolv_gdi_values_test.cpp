#include "tolv_gdi_fixture.h"

#include "msg_internal_error.h"
#include "tolv_brush.h"
#include "tolv_font.h"
#include "tolv_pen.h"

#include <QDataStream>

#include <functional>
#include <string>
#include <vector>

using TOLV_COLOR_TEST = GDI_TEST;
using TOLV_PEN_TEST = GDI_TEST;
using TOLV_BRUSH_TEST = GDI_TEST;
using TOLV_FONT_TEST = GDI_TEST;

namespace
{
/// A brush without its pointer, as reading leaves it.
TOLV_BRUSH brush_without_pointer(const TOLV_BRUSH& source)
{
    QByteArray bytes;
    QDataStream writer(&bytes, QIODevice::WriteOnly);
    source.operator<<(writer);
    QDataStream reader(bytes);
    TOLV_BRUSH brush(TOLV_RED_BRUSH);
    brush.operator>>(reader);
    return brush;
}
} // namespace

// ---- Colour ---------------------------------------------------------------------------------------------------------

TEST_F(TOLV_COLOR_TEST, a_named_color_follows_its_row)
{
    const TOLV_COLOR color(TOLV_EMPTY_VIEW_COLOR);
    EXPECT_EQ(QColor(192, 192, 192), color.get_color());
    TOLV_COLOR::set_default_color(TOLV_EMPTY_VIEW_COLOR, QColor(1, 2, 3));
    EXPECT_EQ(QColor(1, 2, 3), color.get_color());
    EXPECT_EQ(TOLV_EMPTY_VIEW_COLOR, color.get_color_resource());
    EXPECT_EQ(QColor(192, 192, 192), TOLV_COLOR::get_default_color(TOLV_EMPTY_VIEW_COLOR));
    TOLV_COLOR::reset_colors({TOLV_EMPTY_VIEW_COLOR});
    EXPECT_EQ(QColor(192, 192, 192), color.get_color());
    EXPECT_TRUE(TOLV_COLOR::can_change_default_color(TOLV_EMPTY_VIEW_COLOR));
    EXPECT_FALSE(TOLV_COLOR::can_change_default_color(TOLV_RED_COLOR));
    EXPECT_INTERNAL_ERROR(TOLV_COLOR::reset_colors({}), "!color_set.empty()");
}

TEST_F(TOLV_COLOR_TEST, a_custom_color_keeps_its_value)
{
    TOLV_COLOR color(QColor(1, 2, 3, 4));
    EXPECT_EQ(QColor(1, 2, 3, 4), color.get_color());
    EXPECT_EQ(TOLV_MIN_COLOR, color.get_color_resource());
    color.set_color(TOLV_RED_COLOR);
    EXPECT_EQ(QColor(255, 0, 0), color.get_color());
    color.set_color(QColor(5, 6, 7));
    EXPECT_EQ(TOLV_MIN_COLOR, color.get_color_resource());
    EXPECT_EQ(QColor(5, 6, 7), color.get_color());
    EXPECT_INTERNAL_ERROR(color.set_color(TOLV_MIN_COLOR), "color != TOLV_MIN_COLOR");
}

TEST_F(TOLV_COLOR_TEST, equality_is_by_resource_before_value)
{
    EXPECT_FALSE(TOLV_COLOR(TOLV_RED_COLOR) == TOLV_COLOR(QColor(255, 0, 0)));
    EXPECT_FALSE(TOLV_COLOR(QColor(255, 0, 0)) == TOLV_COLOR(TOLV_RED_COLOR));
    EXPECT_FALSE(TOLV_COLOR(TOLV_RED_COLOR) == TOLV_COLOR(TOLV_MSW_ERROR_COLOR)); // both are 255, 0, 0
    EXPECT_EQ(TOLV_COLOR(TOLV_RED_COLOR).get_color(), TOLV_COLOR(TOLV_MSW_ERROR_COLOR).get_color());
    EXPECT_TRUE(TOLV_COLOR(TOLV_RED_COLOR) == TOLV_COLOR(TOLV_RED_COLOR));
    EXPECT_TRUE(TOLV_COLOR(QColor(1, 2, 3)) == TOLV_COLOR(QColor(1, 2, 3)));
    EXPECT_TRUE(TOLV_COLOR(QColor(1, 2, 3)) != TOLV_COLOR(QColor(1, 2, 3, 4)));
}

TEST_F(TOLV_COLOR_TEST, copies_are_independent)
{
    TOLV_COLOR first(TOLV_RED_COLOR);
    const TOLV_COLOR copy(first);
    TOLV_COLOR assigned(Qt::blue);
    assigned = first;
    first.set_color(QColor(1, 2, 3));
    EXPECT_EQ(TOLV_RED_COLOR, copy.get_color_resource());
    EXPECT_EQ(TOLV_RED_COLOR, assigned.get_color_resource());
}

// ---- Pen ------------------------------------------------------------------------------------------------------------

TEST_F(TOLV_PEN_TEST, a_named_pen_hands_out_the_tables_pen)
{
    const TOLV_PEN pen(TOLV_WAVE_EVENT_PEN);
    EXPECT_EQ(manager().get_pen(TOLV_WAVE_EVENT_PEN), pen.get_pen());
    EXPECT_EQ(2, pen.get_width());
    EXPECT_EQ(Qt::SolidLine, pen.get_style());
    EXPECT_EQ(Qt::FlatCap, pen.get_cap_style());
    EXPECT_EQ(TOLV_COLOR(TOLV_WAVE_EVENT_LINE_COLOR), pen.get_color());
    EXPECT_EQ(TOLV_WAVE_EVENT_PEN, pen.get_pen_resource());
    EXPECT_INTERNAL_ERROR((TOLV_PEN(TOLV_MIN_PEN)), "pen != TOLV_MIN_PEN");
    EXPECT_INTERNAL_ERROR(TOLV_PEN(TOLV_RED_PEN).set_pen(TOLV_MIN_PEN), "pen != TOLV_MIN_PEN");
}

TEST_F(TOLV_PEN_TEST, a_named_pen_draws_in_a_new_color_only_after_a_refresh)
{
    const TOLV_PEN pen(TOLV_WAVE_EVENT_PEN);
    TOLV_COLOR::set_default_color(TOLV_WAVE_EVENT_LINE_COLOR, QColor(1, 2, 3));
    EXPECT_NE(QColor(1, 2, 3), pen.get_pen()->color());
    EXPECT_EQ(QColor(1, 2, 3), pen.get_color().get_color());
    TOLV_COLOR::refresh_pen_and_brush_colors();
    EXPECT_EQ(QColor(1, 2, 3), pen.get_pen()->color());
}

TEST_F(TOLV_PEN_TEST, a_custom_pen_is_shared)
{
    const QPen source(QColor(1, 2, 3), 4, Qt::DashLine, Qt::RoundCap, Qt::BevelJoin);
    const TOLV_PEN pen(source);
    EXPECT_EQ(source, *pen.get_pen());
    EXPECT_EQ(pen.get_pen(), TOLV_PEN(source).get_pen());
    EXPECT_EQ(pen.get_pen(), TOLV_PEN(pen).get_pen());
    EXPECT_EQ(TOLV_MIN_PEN, pen.get_pen_resource());
    EXPECT_EQ(TOLV_COLOR(QColor(1, 2, 3)), pen.get_color());
    EXPECT_EQ(4, pen.get_width());
    EXPECT_EQ(Qt::DashLine, pen.get_style());
    EXPECT_EQ(Qt::RoundCap, pen.get_cap_style());
}

TEST_F(TOLV_PEN_TEST, a_new_width_detaches_and_remembers_the_named_color)
{
    TOLV_PEN pen(TOLV_BLACK_PEN);
    pen.set_width(3);
    EXPECT_EQ(TOLV_MIN_PEN, pen.get_pen_resource());
    EXPECT_EQ(TOLV_COLOR(TOLV_BLACK_COLOR), pen.get_color());
    EXPECT_EQ(3, pen.get_width());
    EXPECT_EQ(Qt::SquareCap, pen.get_cap_style());
    EXPECT_EQ(1, manager().get_pen(TOLV_BLACK_PEN)->width());
    EXPECT_EQ(pen.get_pen(), manager().get_custom_pen(Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin, 3, QColor(0, 0, 0)));
}

TEST_F(TOLV_PEN_TEST, a_new_style_detaches_and_a_later_color_change_does_not_reach_it)
{
    TOLV_PEN pen(TOLV_WAVE_EVENT_PEN);
    const QColor color = pen.get_pen()->color();
    pen.set_style(Qt::DotLine);
    EXPECT_EQ(Qt::DotLine, pen.get_style());
    EXPECT_EQ(2, pen.get_width());
    TOLV_COLOR::set_default_color(TOLV_WAVE_EVENT_LINE_COLOR, QColor(1, 2, 3));
    TOLV_COLOR::refresh_pen_and_brush_colors();
    EXPECT_EQ(color, pen.get_pen()->color());
    EXPECT_EQ(QColor(1, 2, 3), pen.get_color().get_color()); // the name is kept, and its value has changed
}

TEST_F(TOLV_PEN_TEST, set_color_keeps_a_named_color_named)
{
    TOLV_PEN pen(TOLV_WAVE_EVENT_PEN);
    pen.set_color(TOLV_COLOR(TOLV_GREEN_COLOR));
    EXPECT_EQ(TOLV_MIN_PEN, pen.get_pen_resource());
    EXPECT_EQ(TOLV_COLOR(TOLV_GREEN_COLOR), pen.get_color());
    EXPECT_EQ(QColor(0, 255, 0), pen.get_pen()->color());
    EXPECT_EQ(2, pen.get_width());
    pen.set_color(TOLV_COLOR(QColor(1, 2, 3)));
    EXPECT_EQ(TOLV_COLOR(QColor(1, 2, 3)), pen.get_color());
    pen.set_pen(TOLV_RED_PEN);
    EXPECT_EQ(TOLV_COLOR(TOLV_RED_COLOR), pen.get_color());
}

TEST_F(TOLV_PEN_TEST, equality_is_by_resource_then_color_then_pen)
{
    const QPen red(QColor(255, 0, 0), 1, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin);
    EXPECT_TRUE(TOLV_PEN(TOLV_RED_PEN) == TOLV_PEN(TOLV_RED_PEN));
    EXPECT_FALSE(TOLV_PEN(TOLV_RED_PEN) == TOLV_PEN(TOLV_BLUE_PEN));
    EXPECT_FALSE(TOLV_PEN(TOLV_RED_PEN) == TOLV_PEN(red));
    EXPECT_TRUE(TOLV_PEN(red) == TOLV_PEN(red));
    const QPen others[] = {
        QPen(QColor(254, 0, 0), 1, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin),
        QPen(QColor(255, 0, 0), 2, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin),
        QPen(QColor(255, 0, 0), 1, Qt::DotLine, Qt::SquareCap, Qt::MiterJoin),
        QPen(QColor(255, 0, 0), 1, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin),
        QPen(QColor(255, 0, 0), 1, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin),
    };
    for (const QPen& other : others)
        EXPECT_TRUE(TOLV_PEN(red) != TOLV_PEN(other));
    TOLV_PEN detached(TOLV_RED_PEN);
    detached.set_width(2);
    detached.set_width(1);
    EXPECT_FALSE(detached == TOLV_PEN(red)); // the same pen, but the one remembers a named colour
}

TEST_F(TOLV_PEN_TEST, statics_change_the_named_pens)
{
    TOLV_PEN::set_default_pen_width(TOLV_RED_PEN, 6);
    TOLV_PEN::set_default_pen_color(TOLV_RED_PEN, TOLV_BLUE_COLOR);
    EXPECT_EQ(6, TOLV_PEN(TOLV_RED_PEN).get_width());
    EXPECT_EQ(QColor(0, 0, 255), TOLV_PEN(TOLV_RED_PEN).get_pen()->color());
    TOLV_PEN::save_pens_in_registry();
    EXPECT_EQ("TOLV_BLUE_COLOR 1 16 0 6 4278190335", stored("TOLV_RED_PEN"));
}

// ---- Brush ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_BRUSH_TEST, a_named_brush_hands_out_the_tables_brush)
{
    const TOLV_BRUSH brush(TOLV_FLP_RESERVED_SITE_BRUSH);
    EXPECT_EQ(manager().get_brush(TOLV_FLP_RESERVED_SITE_BRUSH), brush.get_brush());
    EXPECT_EQ(Qt::DiagCrossPattern, brush.get_style());
    EXPECT_EQ(TOLV_COLOR(TOLV_FLP_RESERVED_SITE_FILL_COLOR), brush.get_color());
    EXPECT_EQ(TOLV_FLP_RESERVED_SITE_BRUSH, brush.get_brush_resource());
    EXPECT_INTERNAL_ERROR((TOLV_BRUSH(TOLV_MIN_BRUSH)), "brush != TOLV_MIN_BRUSH");
}

TEST_F(TOLV_BRUSH_TEST, a_custom_brush_is_shared)
{
    const TOLV_BRUSH brush(QBrush(QColor(1, 2, 3), Qt::Dense4Pattern));
    EXPECT_EQ(brush.get_brush(), manager().get_custom_brush(Qt::Dense4Pattern, QColor(1, 2, 3)));
    EXPECT_EQ(TOLV_COLOR(QColor(1, 2, 3)), brush.get_color());
    EXPECT_EQ(Qt::Dense4Pattern, brush.get_style());
    const TOLV_BRUSH copy(brush); // NOLINT(performance-unnecessary-copy-initialization): it is what is tested
    EXPECT_EQ(brush.get_brush(), copy.get_brush());
    const TOLV_BRUSH from_parts(Qt::SolidPattern, TOLV_COLOR(TOLV_GREEN_COLOR));
    EXPECT_EQ(QBrush(QColor(0, 255, 0), Qt::SolidPattern), *from_parts.get_brush());
    EXPECT_EQ(TOLV_COLOR(TOLV_GREEN_COLOR), from_parts.get_color());
}

TEST_F(TOLV_BRUSH_TEST, set_color_keeps_only_the_value)
{
    TOLV_BRUSH brush(TOLV_FLP_RESERVED_SITE_BRUSH);
    brush.set_color(TOLV_COLOR(TOLV_GREEN_COLOR));
    EXPECT_EQ(TOLV_MIN_BRUSH, brush.get_brush_resource());
    EXPECT_EQ(TOLV_COLOR(QColor(0, 255, 0)), brush.get_color()); // unlike a pen's
    EXPECT_EQ(QBrush(QColor(0, 255, 0), Qt::DiagCrossPattern), *brush.get_brush());
}

TEST_F(TOLV_BRUSH_TEST, set_style_detaches_and_remembers_the_named_color)
{
    TOLV_BRUSH brush(TOLV_FLP_RESERVED_SITE_BRUSH);
    brush.set_style(Qt::SolidPattern);
    EXPECT_EQ(TOLV_MIN_BRUSH, brush.get_brush_resource());
    EXPECT_EQ(TOLV_COLOR(TOLV_FLP_RESERVED_SITE_FILL_COLOR), brush.get_color());
    EXPECT_EQ(Qt::SolidPattern, brush.get_style());
    EXPECT_EQ(manager().get_color(TOLV_FLP_RESERVED_SITE_FILL_COLOR), brush.get_brush()->color());
    EXPECT_EQ(Qt::DiagCrossPattern, manager().get_brush(TOLV_FLP_RESERVED_SITE_BRUSH)->style());
}

TEST_F(TOLV_BRUSH_TEST, equality_is_by_resource_then_color_then_brush)
{
    const QBrush red(QColor(255, 0, 0));
    EXPECT_TRUE(TOLV_BRUSH(TOLV_RED_BRUSH) == TOLV_BRUSH(TOLV_RED_BRUSH));
    EXPECT_TRUE(TOLV_BRUSH(TOLV_RED_BRUSH) != TOLV_BRUSH(TOLV_BLUE_BRUSH));
    EXPECT_TRUE(TOLV_BRUSH(TOLV_RED_BRUSH) != TOLV_BRUSH(red));
    EXPECT_TRUE(TOLV_BRUSH(red) == TOLV_BRUSH(red));
    EXPECT_TRUE(TOLV_BRUSH(red) != TOLV_BRUSH(QBrush(QColor(254, 0, 0))));
    EXPECT_TRUE(TOLV_BRUSH(red) != TOLV_BRUSH(QBrush(QColor(255, 0, 0), Qt::Dense1Pattern)));
    EXPECT_TRUE(TOLV_BRUSH(red) != TOLV_BRUSH(Qt::SolidPattern, TOLV_COLOR(TOLV_RED_COLOR)));
}

TEST_F(TOLV_BRUSH_TEST, a_brush_without_a_pointer_is_refused)
{
    TOLV_BRUSH brush = brush_without_pointer(TOLV_BRUSH(QBrush(QColor(1, 2, 3))));
    EXPECT_EQ(nullptr, brush.get_brush());
    EXPECT_INTERNAL_ERROR(brush.set_style(Qt::NoBrush), "m_brush != NULL");
    EXPECT_INTERNAL_ERROR(brush.set_color(TOLV_COLOR(TOLV_RED_COLOR)), "m_brush != NULL");
    EXPECT_INTERNAL_ERROR(brush.get_style(), "m_brush != NULL");
    EXPECT_INTERNAL_ERROR((void)(brush == brush), "m_brush != NULL");
    const TOLV_BRUSH copy(brush); // NOLINT(performance-unnecessary-copy-initialization): it is what is tested
    EXPECT_EQ(nullptr, copy.get_brush());
    brush.set_brush(TOLV_RED_BRUSH);
    EXPECT_EQ(manager().get_brush(TOLV_RED_BRUSH), brush.get_brush());
}

TEST_F(TOLV_BRUSH_TEST, statics_change_the_named_brushes)
{
    TOLV_BRUSH::set_default_brush_color(TOLV_RED_BRUSH, TOLV_BLUE_COLOR);
    EXPECT_EQ(TOLV_COLOR(TOLV_BLUE_COLOR), TOLV_BRUSH(TOLV_RED_BRUSH).get_color());
    EXPECT_EQ(QColor(0, 0, 255), TOLV_BRUSH(TOLV_RED_BRUSH).get_brush()->color());
}

// ---- Font -----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_FONT_TEST, a_named_font_hands_out_the_tables_font)
{
    const TOLV_FONT font(TOLV_TXED_KEYWORD_FONT);
    EXPECT_EQ(manager().get_font(TOLV_TXED_KEYWORD_FONT, nullptr, nullptr), font.get_font());
    EXPECT_EQ(TOLV_COLOR(TOLV_TXED_KEYWORD_TEXT_COLOR), font.get_text_color());
    EXPECT_EQ(TOLV_COLOR(TOLV_TXED_BACKGROUND_COLOR), font.get_background_color());
    EXPECT_EQ(QStringLiteral("Monospace"), font.get_face_name());
    EXPECT_EQ(10, font.get_point_size());
    EXPECT_TRUE(font.get_bold());
    EXPECT_FALSE(font.get_italic());
    EXPECT_EQ(TOLV_TXED_KEYWORD_FONT, font.get_font_resource());
    EXPECT_INTERNAL_ERROR((TOLV_FONT(TOLV_MIN_FONT)), "font != TOLV_MIN_FONT");
}

TEST_F(TOLV_FONT_TEST, each_new_attribute_detaches_and_remembers_the_named_colors)
{
    const std::vector<std::function<void(TOLV_FONT&)>> changes = {
        [](TOLV_FONT& font) { font.set_face_name(QStringLiteral("Other")); },
        [](TOLV_FONT& font) { font.set_point_size(20); },
        [](TOLV_FONT& font) { font.set_bold(false); },
        [](TOLV_FONT& font) { font.set_italic(true); },
    };
    for (std::size_t i = 0; i < changes.size(); ++i)
    {
        TOLV_FONT font(TOLV_TXED_KEYWORD_FONT);
        changes[i](font);
        EXPECT_EQ(TOLV_MIN_FONT, font.get_font_resource());
        EXPECT_EQ(TOLV_COLOR(TOLV_TXED_KEYWORD_TEXT_COLOR), font.get_text_color());
        EXPECT_EQ(TOLV_COLOR(TOLV_TXED_BACKGROUND_COLOR), font.get_background_color());
        EXPECT_EQ(i == 0 ? QStringLiteral("Other") : QStringLiteral("Monospace"), font.get_face_name());
        EXPECT_EQ(i == 1 ? 20 : 10, font.get_point_size());
        EXPECT_EQ(i != 2, font.get_bold());
        EXPECT_EQ(i == 3, font.get_italic());
        EXPECT_EQ(QFont::TypeWriter, font.get_font()->styleHint());
        EXPECT_TRUE(font.get_font()->fixedPitch());
    }
    TOLV_FONT underlined(TOLV_GUI_UNDERLINE_FONT);
    underlined.set_point_size(12);
    EXPECT_TRUE(underlined.get_font()->underline());
    EXPECT_EQ(10, TOLV_FONT(TOLV_GUI_UNDERLINE_FONT).get_point_size());
    EXPECT_INTERNAL_ERROR(underlined.set_face_name(QString()), "!face_name.isEmpty()");
}

TEST_F(TOLV_FONT_TEST, weights_of_58_and_above_are_bold)
{
    QFont* const font = manager().get_font(TOLV_GUI_FONT, nullptr, nullptr);
    font->setWeight(57);
    EXPECT_FALSE(TOLV_FONT(TOLV_GUI_FONT).get_bold());
    font->setWeight(58);
    EXPECT_TRUE(TOLV_FONT(TOLV_GUI_FONT).get_bold());
    font->setStyle(QFont::StyleOblique);
    EXPECT_TRUE(TOLV_FONT(TOLV_GUI_FONT).get_italic());
}

TEST_F(TOLV_FONT_TEST, a_new_color_detaches_a_named_font_and_is_kept_by_value)
{
    TOLV_FONT font(TOLV_TXED_KEYWORD_FONT);
    font.set_text_color(TOLV_COLOR(TOLV_GREEN_COLOR));
    EXPECT_EQ(TOLV_MIN_FONT, font.get_font_resource());
    EXPECT_EQ(TOLV_COLOR(QColor(0, 255, 0)), font.get_text_color());
    EXPECT_EQ(TOLV_COLOR(TOLV_TXED_BACKGROUND_COLOR), font.get_background_color());
    EXPECT_NE(manager().get_font(TOLV_TXED_KEYWORD_FONT, nullptr, nullptr), font.get_font());
    EXPECT_TRUE(font.get_bold());

    TOLV_FONT other(TOLV_TXED_KEYWORD_FONT);
    other.set_background_color(TOLV_COLOR(TOLV_GREEN_COLOR));
    EXPECT_EQ(TOLV_COLOR(TOLV_TXED_KEYWORD_TEXT_COLOR), other.get_text_color());
    EXPECT_EQ(TOLV_COLOR(QColor(0, 255, 0)), other.get_background_color());

    QFont* const pointer = font.get_font();
    font.set_background_color(TOLV_COLOR(TOLV_RED_COLOR));
    EXPECT_EQ(TOLV_COLOR(QColor(255, 0, 0)), font.get_background_color());
    EXPECT_EQ(pointer, font.get_font()); // nothing else happens to a custom font
}

TEST_F(TOLV_FONT_TEST, set_font_makes_a_custom_font)
{
    TOLV_FONT font(TOLV_GUI_UNDERLINE_FONT);
    font.set_font(TOLV_COLOR(TOLV_RED_COLOR), TOLV_COLOR(QColor(1, 2, 3)), QStringLiteral("Other"), 17, true, true);
    EXPECT_EQ(TOLV_MIN_FONT, font.get_font_resource());
    EXPECT_EQ(TOLV_COLOR(TOLV_RED_COLOR), font.get_text_color());
    EXPECT_EQ(TOLV_COLOR(QColor(1, 2, 3)), font.get_background_color());
    EXPECT_EQ(QStringLiteral("Other"), font.get_face_name());
    EXPECT_EQ(17, font.get_point_size());
    EXPECT_TRUE(font.get_bold() && font.get_italic());
    EXPECT_TRUE(font.get_font()->underline());
    font.set_font(TOLV_GUI_FONT);
    EXPECT_EQ(TOLV_GUI_FONT, font.get_font_resource());
    EXPECT_EQ(10, font.get_point_size());
}

TEST_F(TOLV_FONT_TEST, equality_is_by_resource_then_colors_then_font)
{
    EXPECT_TRUE(TOLV_FONT(TOLV_GUI_FONT) == TOLV_FONT(TOLV_GUI_FONT));
    EXPECT_TRUE(TOLV_FONT(TOLV_GUI_FONT) != TOLV_FONT(TOLV_GUI_BOLD_FONT));
    TOLV_FONT first(TOLV_GUI_FONT);
    first.set_point_size(17);
    EXPECT_TRUE(first != TOLV_FONT(TOLV_GUI_FONT));
    TOLV_FONT second(TOLV_GUI_FONT);
    second.set_point_size(17);
    EXPECT_TRUE(first == second);
    second.set_point_size(18);
    EXPECT_TRUE(first != second);
    second.set_point_size(17);
    second.set_text_color(TOLV_COLOR(Qt::red));
    EXPECT_TRUE(first != second);
    first.set_text_color(TOLV_COLOR(Qt::red));
    EXPECT_TRUE(first == second);
    first.set_background_color(TOLV_COLOR(Qt::red));
    EXPECT_TRUE(first != second);
    const TOLV_FONT copy(first);
    EXPECT_TRUE(copy == first);
    second = first;
    EXPECT_EQ(first.get_font(), second.get_font());
}

TEST_F(TOLV_FONT_TEST, statics_change_the_named_fonts)
{
    TOLV_FONT font(TOLV_GUI_FONT);
    font.set_point_size(19);
    TOLV_FONT::set_default_font(TOLV_GUI_FONT, &font);
    EXPECT_EQ(19, TOLV_FONT(TOLV_GUI_FONT).get_point_size());
    EXPECT_EQ(10, TOLV_FONT::get_default_font(TOLV_GUI_FONT).get_point_size());
    TOLV_FONT::save_fonts_in_registry();
    EXPECT_EQ("1 TOLV_WINDOW_TEXT_COLOR TOLV_WINDOW_BACKGROUND_COLOR 19 0 0 0 0 0 4, Korvex Clear",
              stored("TOLV_GUI_FONT"));
    TOLV_FONT::reset_fonts({TOLV_GUI_FONT});
    EXPECT_EQ(10, TOLV_FONT(TOLV_GUI_FONT).get_point_size());
    EXPECT_TRUE(TOLV_FONT::can_change_default_font(TOLV_GUI_FONT));
    EXPECT_FALSE(TOLV_FONT::can_change_default_font(TOLV_TOOLTIP_FONT));
    EXPECT_INTERNAL_ERROR(TOLV_FONT::set_default_font(TOLV_GUI_FONT, nullptr), "font != NULL");
    EXPECT_INTERNAL_ERROR(TOLV_FONT::reset_fonts({}), "!font_set.empty()");
}

// ---- Under a handler of internal errors that comes back -------------------------------------------------------------

namespace
{
/// The texts of the internal errors of some code, which goes on behind each.
std::vector<std::string> collect_internal_errors(const std::function<void()>& code)
{
    static std::vector<std::string> texts;
    texts.clear();
    const MSG_INTERNAL_ERROR::HANDLER old_handler =
        MSG_INTERNAL_ERROR::set_handler([](const char* text, const char*, const char*, int) { texts.push_back(text); });
    code();
    MSG_INTERNAL_ERROR::set_handler(old_handler);
    return texts;
}
} // namespace

TEST_F(TOLV_COLOR_TEST, what_is_refused_changes_nothing)
{
    TOLV_COLOR color(TOLV_RED_COLOR);
    TOLV_PEN pen(TOLV_RED_PEN);
    TOLV_BRUSH brush(TOLV_RED_BRUSH);
    TOLV_FONT font(TOLV_GUI_FONT);
    const std::vector<std::string> texts = collect_internal_errors(
        [&]
        {
            TOLV_COLOR::set_default_color(TOLV_RED_COLOR, QColor(1, 2, 3));
            color.set_color(TOLV_MIN_COLOR);
            pen.set_pen(TOLV_MIN_PEN);
            brush.set_brush(TOLV_MIN_BRUSH);
            font.set_font(TOLV_MIN_FONT);
            font.set_face_name(QString());
            manager().set_pen_width(TOLV_RED_PEN, -1);
            manager().set_font(TOLV_GUI_FONT, nullptr);
        });
    EXPECT_EQ((std::vector<std::string>{"m_change_non_windows_color", "color != TOLV_MIN_COLOR", "pen != TOLV_MIN_PEN",
                                        "brush != TOLV_MIN_BRUSH", "font != TOLV_MIN_FONT", "!face_name.isEmpty()",
                                        "width >= 0", "font != NULL"}),
              texts);
    EXPECT_EQ(QColor(255, 0, 0), color.get_color());
    EXPECT_EQ(TOLV_RED_PEN, pen.get_pen_resource());
    EXPECT_EQ(manager().get_pen(TOLV_RED_PEN), pen.get_pen());
    EXPECT_EQ(1, pen.get_width());
    EXPECT_EQ(TOLV_RED_BRUSH, brush.get_brush_resource());
    EXPECT_EQ(manager().get_brush(TOLV_RED_BRUSH), brush.get_brush());
    EXPECT_EQ(TOLV_GUI_FONT, font.get_font_resource());
    EXPECT_EQ(manager().get_font(TOLV_GUI_FONT, nullptr, nullptr), font.get_font());
}

// ---- Without a manager ----------------------------------------------------------------------------------------------

TEST_F(TOLV_COLOR_TEST, no_class_of_the_family_works_without_a_manager)
{
    tolv_delete_gdi_manager();
    // A handler that comes back shows the second check behind the first.
    static std::vector<std::string> texts;
    texts.clear();
    const MSG_INTERNAL_ERROR::HANDLER old_handler = MSG_INTERNAL_ERROR::set_handler(
        [](const char* text, const char*, const char*, int)
        {
            texts.push_back(text);
            if (texts.size() == 2)
                throw TRAPPED_INTERNAL_ERROR{text, "", "", 0};
        });
    EXPECT_THROW(TOLV_COLOR(TOLV_RED_COLOR).get_color(), TRAPPED_INTERNAL_ERROR);
    MSG_INTERNAL_ERROR::set_handler(old_handler);
    EXPECT_EQ((std::vector<std::string>{"!TOLV_GDI_MANAGER::m_instance_has_been_deleted", "gdi_mgr != NULL"}), texts);
    tolv_create_gdi_manager();
}
