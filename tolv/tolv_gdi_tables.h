#pragma once

#include "tolv_export.h"
#include "tolv_gdi_enums.h"

#include <QColor>
#include <QFont>
#include <QPen>

#include <gsl/span>

/// The built-in rows of the drawing resources, as they are before any user's setting. Each function gives the whole
/// table in the order in which rows are initialised and reset, which is not everywhere that of the enumerators.

// NOLINTBEGIN(clang-analyzer-optin.performance.Padding): the fields are in the order of the columns.

/// A row of the colour table.
struct TOLV_INITIAL_COLOR
{
    TOLV_COLOR_RESOURCE resource;
    const char* name; ///< the enumerator's name, also the name of the stored value
    bool is_system;   ///< the colour is always that of the palette role, never `color`
    bool can_change;  ///< a user may change it
    QColor color;     ///< the default
    int palette_role; ///< a QPalette::ColorRole; with `is_system` false, 0 means no role
};

/// A row of the pen table.
struct TOLV_INITIAL_PEN
{
    TOLV_PEN_RESOURCE resource;
    const char* name;
    TOLV_COLOR_RESOURCE color;
    Qt::PenStyle style;
    Qt::PenCapStyle cap;
    Qt::PenJoinStyle join;
    int width; ///< pixels; 0 is one pixel at any zoom
};

/// A row of the brush table.
struct TOLV_INITIAL_BRUSH
{
    TOLV_BRUSH_RESOURCE resource;
    TOLV_COLOR_RESOURCE color;
    Qt::BrushStyle style;
};

/// A row of the font table.
struct TOLV_INITIAL_FONT
{
    TOLV_FONT_RESOURCE resource;
    const char* name;
    bool can_change;
    TOLV_COLOR_RESOURCE text_color;
    TOLV_COLOR_RESOURCE background_color;
    int point_size;
    bool bold;
    bool italic;
    bool underline;
    bool strikeout;
    bool fixed_pitch;
    QFont::StyleHint style_hint;
    const char* family;
};

// NOLINTEND(clang-analyzer-optin.performance.Padding)

constexpr int TOLV_COLOR_COUNT = 593;
constexpr int TOLV_PEN_COUNT = 153;
constexpr int TOLV_BRUSH_COUNT = 194;
constexpr int TOLV_FONT_COUNT = 102;

/// The colour rows. TOLV_GENERAL_BACKGROUND_COLOR's default is the palette's once the manager has been made.
TOLV_EXPORT gsl::span<const TOLV_INITIAL_COLOR, TOLV_COLOR_COUNT> tolv_get_initial_colors();

/// The pen rows.
TOLV_EXPORT gsl::span<const TOLV_INITIAL_PEN, TOLV_PEN_COUNT> tolv_get_initial_pens();

/// The brush rows.
TOLV_EXPORT gsl::span<const TOLV_INITIAL_BRUSH, TOLV_BRUSH_COUNT> tolv_get_initial_brushes();

/// The font rows.
TOLV_EXPORT gsl::span<const TOLV_INITIAL_FONT, TOLV_FONT_COUNT> tolv_get_initial_fonts();

/// The tables themselves, for the manager: it overwrites the defaults that come from the palette, in place.
extern TOLV_INITIAL_COLOR tolv_initial_colors[TOLV_COLOR_COUNT];
extern const TOLV_INITIAL_PEN tolv_initial_pens[TOLV_PEN_COUNT];
extern const TOLV_INITIAL_BRUSH tolv_initial_brushes[TOLV_BRUSH_COUNT];
extern const TOLV_INITIAL_FONT tolv_initial_fonts[TOLV_FONT_COUNT];
