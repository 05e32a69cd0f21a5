#include "tolv_gdi_tables.h"

#include "tolv_mem.h"

#include <QPalette>

#include <iterator>

TOLV_MEM_INITIALIZER();

// The arrays take their size from the rows: a row too many or too few does not compile.

#define TOLV_COLOR_ROW(resource, value, is_system, can_change, red, green, blue, role)                                 \
    {resource, #resource, is_system, can_change, QColor(red, green, blue), role},
TOLV_INITIAL_COLOR tolv_initial_colors[] = {
#include "tolv_color_table.def"
};
#undef TOLV_COLOR_ROW

#define TOLV_PEN_ROW(resource, value, color, style, cap, join, width)                                                  \
    {resource, #resource, color, style, cap, join, width},
const TOLV_INITIAL_PEN tolv_initial_pens[] = {
#include "tolv_pen_table.def"
};
#undef TOLV_PEN_ROW

#define TOLV_BRUSH_ROW(resource, value, color, style) {resource, color, style},
const TOLV_INITIAL_BRUSH tolv_initial_brushes[] = {
#include "tolv_brush_table.def"
};
#undef TOLV_BRUSH_ROW

#define TOLV_FONT_ROW(resource, value, can_change, text, background, size, bold, italic, underline, strikeout, fixed,  \
                      hint, family)                                                                                    \
    {resource, #resource, can_change, text, background, size, bold, italic, underline, strikeout, fixed, hint, family},
const TOLV_INITIAL_FONT tolv_initial_fonts[] = {
#include "tolv_font_table.def"
};
#undef TOLV_FONT_ROW

static_assert(std::size(tolv_initial_colors) == TOLV_COLOR_COUNT);
static_assert(std::size(tolv_initial_pens) == TOLV_PEN_COUNT);
static_assert(std::size(tolv_initial_brushes) == TOLV_BRUSH_COUNT);
static_assert(std::size(tolv_initial_fonts) == TOLV_FONT_COUNT);

// Values that are stored, streamed or known to hosts.
static_assert(TOLV_BLACK_COLOR == 1 && TOLV_DARK_ORANGE_COLOR == 19);
static_assert(TOLV_WINDOW_TEXT_COLOR == 20 && TOLV_WINDOW_TOOLTIP_TEXT_COLOR == 30);
static_assert(TOLV_GENERAL_BACKGROUND_COLOR == 31 && TOLV_KORVEX_RED_COLOR == 32 && TOLV_KORVEX_CHARCOAL_COLOR == 42);
static_assert(TOLV_COLOR_KORVEX_INK == 32 + 57 - 1);
static_assert(TOLV_BLACK_PEN == 1 && TOLV_GRAY_PEN == 16 && TOLV_WINDOW_TEXT_PEN == 18);
static_assert(TOLV_RECT_TRACKER_SOLID_PEN == 29 && TOLV_RECT_TRACKER_DOTTED_PEN == 30);
static_assert(TOLV_HOLLOW_BRUSH == 17);
static_assert(TOLV_GUI_FONT == 1 && TOLV_MDI_BACKGROUND_FONT == 7 && TOLV_MSG_TEXT_FONT == 86);
static_assert(TOLV_MSG_COLUMN_HEADER_FONT == 87 && TOLV_TABLE_MONOSPACE_FONT == 102);

/// The one row whose colour is no constant.
[[maybe_unused]] static const bool dark_orange_is_filled_in = []
{
    for (TOLV_INITIAL_COLOR& row : tolv_initial_colors)
    {
        if (row.resource == TOLV_DARK_ORANGE_COLOR)
            row.color.setNamedColor(QStringLiteral("darkorange"));
    }
    return true;
}();

gsl::span<const TOLV_INITIAL_COLOR, TOLV_COLOR_COUNT> tolv_get_initial_colors()
{
    return tolv_initial_colors;
}

gsl::span<const TOLV_INITIAL_PEN, TOLV_PEN_COUNT> tolv_get_initial_pens()
{
    return tolv_initial_pens;
}

gsl::span<const TOLV_INITIAL_BRUSH, TOLV_BRUSH_COUNT> tolv_get_initial_brushes()
{
    return tolv_initial_brushes;
}

gsl::span<const TOLV_INITIAL_FONT, TOLV_FONT_COUNT> tolv_get_initial_fonts()
{
    return tolv_initial_fonts;
}
