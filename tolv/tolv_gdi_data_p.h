#pragma once

#include "tolv_gdi_enums.h"
#include "tolv_gdi_manager.h"

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QPen>

#include <string>

/// What the manager keeps for each named resource. Hosts have no use for these classes.

/// A row of the colour table.
class TOLV_EXPORT TOLV_GDI_MANAGER::COLOR_DATA
{
public:
    /// @param is_windows_color         the colour is read from the application's palette, never from `color`
    /// @param palette_role             role of the current value; 0 for a value that a user stored
    /// @param default_palette_role     role of the default
    /// @param change_non_windows_color a user may change the row
    /// @param name                     the enumerator's name; null is the internal error "name != NULL"
    COLOR_DATA(bool is_windows_color, int palette_role, int default_palette_role, bool change_non_windows_color,
               const QColor& color, const QColor& default_color, const char* name);

    /// The current value; a system colour is looked up in the palette at each call.
    QColor get_color() const
    {
        return !m_is_windows_color ? m_color : get_palette_color(m_palette_role);
    }
    /// The default value; a system colour's is that of its default role in the palette.
    QColor get_default_color() const;
    /// Whether a user may change the row; never for a system colour.
    bool can_change_color() const;
    /// Takes a new value. Nothing happens to a system colour, which is meant; a row that nobody may change is the
    /// internal error "m_change_non_windows_color".
    void set_color(const QColor& color);
    /// Whether the value differs from the default, so that it has to be stored.
    bool need_to_write_to_registry() const;
    bool is_windows_color() const;
    const std::string& get_name() const;

private:
    static QColor get_palette_color(int role);

    bool m_is_windows_color;
    int m_palette_role;
    int m_default_palette_role;
    bool m_change_non_windows_color;
    QColor m_color;
    QColor m_default_color;
    std::string m_name;
};

/// A row of the pen table.
class TOLV_EXPORT TOLV_GDI_MANAGER::PEN_DATA
{
public:
    /// @param name the enumerator's name; null is the internal error "name != NULL"
    PEN_DATA(const QPen& pen, TOLV_COLOR_RESOURCE color_resource, const char* name);

    QPen m_pen; ///< value objects point at it
    TOLV_COLOR_RESOURCE m_color_resource;
    std::string m_name;
};

/// A row of the brush table. It has no name, as it is never stored.
class TOLV_EXPORT TOLV_GDI_MANAGER::BRUSH_DATA
{
public:
    BRUSH_DATA(TOLV_COLOR_RESOURCE color_resource, const QBrush& brush);

    TOLV_COLOR_RESOURCE m_color_resource;
    QBrush m_brush; ///< value objects point at it
};

/// A row of the font table.
class TOLV_EXPORT TOLV_GDI_MANAGER::FONT_DATA
{
public:
    /// Makes the font from its attributes; kerning is off unless the configuration switch "tolv_enable_kerning" is on.
    /// @param name the enumerator's name; null is the internal error "name != NULL"
    FONT_DATA(bool can_change, TOLV_COLOR_RESOURCE text_color_resource, TOLV_COLOR_RESOURCE background_color_resource,
              const TOLV_FONT_ATTRIBUTES& attributes, const char* name);

    bool m_can_change;
    TOLV_COLOR_RESOURCE m_text_color_resource;
    TOLV_COLOR_RESOURCE m_background_color_resource;
    QFont m_font; ///< value objects point at it
    std::string m_name;
};
