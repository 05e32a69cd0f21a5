#pragma once

/// The named drawing resources. A value is an enumerator of its table and stays what it is for ever; the values are
/// not dense. 0 is reserved in each enum: no resource is meant. The rows themselves stand in tolv_color_table.def,
/// tolv_pen_table.def, tolv_brush_table.def and tolv_font_table.def.

/// A named colour.
enum TOLV_COLOR_RESOURCE : int
{
    TOLV_MIN_COLOR = 0, ///< no colour resource
#define TOLV_COLOR_ROW(resource, value, is_system, can_change, red, green, blue, role) resource = (value),
#include "tolv_color_table.def"
#undef TOLV_COLOR_ROW
};

/// A named pen.
enum TOLV_PEN_RESOURCE : int
{
    TOLV_MIN_PEN = 0, ///< no pen resource
#define TOLV_PEN_ROW(resource, value, color, style, cap, join, width) resource = (value),
#include "tolv_pen_table.def"
#undef TOLV_PEN_ROW
};

/// A named brush.
enum TOLV_BRUSH_RESOURCE : int
{
    TOLV_MIN_BRUSH = 0, ///< no brush resource
#define TOLV_BRUSH_ROW(resource, value, color, style) resource = (value),
#include "tolv_brush_table.def"
#undef TOLV_BRUSH_ROW
};

/// A named font.
enum TOLV_FONT_RESOURCE : int
{
    TOLV_MIN_FONT = 0, ///< no font resource
#define TOLV_FONT_ROW(resource, value, can_change, text, background, size, bold, italic, underline, strikeout, fixed,  \
                      hint, family)                                                                                    \
    resource = (value),
#include "tolv_font_table.def"
#undef TOLV_FONT_ROW
};
