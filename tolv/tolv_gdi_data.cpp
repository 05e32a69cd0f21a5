#include "tolv_gdi_data_p.h"

#include "cfg.h"
#include "tolv_check.h"
#include "tolv_font_attributes.h"
#include "tolv_gdi_tables.h"
#include "tolv_mem.h"

#include <QGuiApplication>
#include <QPalette>

TOLV_MEM_INITIALIZER();

namespace
{
constexpr int LEAST_BOLD_WEIGHT = 58;

/// The name of a row. A null name is a programming error.
std::string take_name(const char* name)
{
    TOLV_CHECK_TEXT(name != nullptr, "name != NULL");
    return name != nullptr ? name : "";
}

bool is_kerning_enabled()
{
    static const bool enabled = cfg_is_on("tolv_enable_kerning");
    return enabled;
}
} // namespace

// ---- Colour ---------------------------------------------------------------------------------------------------------

TOLV_GDI_MANAGER::COLOR_DATA::COLOR_DATA(bool is_windows_color, int palette_role, int default_palette_role,
                                         bool change_non_windows_color, const QColor& color,
                                         const QColor& default_color, const char* name)
    : m_is_windows_color(is_windows_color), m_palette_role(palette_role), m_default_palette_role(default_palette_role),
      m_change_non_windows_color(change_non_windows_color), m_color(color), m_default_color(default_color),
      m_name(take_name(name))
{
}

QColor TOLV_GDI_MANAGER::COLOR_DATA::get_default_color() const
{
    return !m_is_windows_color ? m_default_color : get_palette_color(m_default_palette_role);
}

bool TOLV_GDI_MANAGER::COLOR_DATA::can_change_color() const
{
    return !m_is_windows_color && m_change_non_windows_color;
}

void TOLV_GDI_MANAGER::COLOR_DATA::set_color(const QColor& color)
{
    if (m_is_windows_color)
        return; // meant: the system's colours are not ours to change, and no caller need know which they are
    TOLV_CHECK(m_change_non_windows_color);
    if (m_change_non_windows_color)
        m_color = color;
}

bool TOLV_GDI_MANAGER::COLOR_DATA::need_to_write_to_registry() const
{
    // Meant: a row with a default role that was once stored keeps role 0, and so counts as changed for ever.
    return m_palette_role != m_default_palette_role || m_color != m_default_color;
}

bool TOLV_GDI_MANAGER::COLOR_DATA::is_windows_color() const
{
    return m_is_windows_color;
}

const std::string& TOLV_GDI_MANAGER::COLOR_DATA::get_name() const
{
    return m_name;
}

QColor TOLV_GDI_MANAGER::COLOR_DATA::get_palette_color(int role)
{
    const QPalette palette = QGuiApplication::palette();
    return palette.brush(palette.currentColorGroup(), static_cast<QPalette::ColorRole>(role)).color();
}

// ---- Pen, brush, font -----------------------------------------------------------------------------------------------

TOLV_GDI_MANAGER::PEN_DATA::PEN_DATA(const QPen& pen, TOLV_COLOR_RESOURCE color_resource, const char* name)
    : m_pen(pen), m_color_resource(color_resource), m_name(take_name(name))
{
}

TOLV_GDI_MANAGER::BRUSH_DATA::BRUSH_DATA(TOLV_COLOR_RESOURCE color_resource, const QBrush& brush)
    : m_color_resource(color_resource), m_brush(brush)
{
}

TOLV_GDI_MANAGER::FONT_DATA::FONT_DATA(bool can_change, TOLV_COLOR_RESOURCE text_color_resource,
                                       TOLV_COLOR_RESOURCE background_color_resource,
                                       const TOLV_FONT_ATTRIBUTES& attributes, const char* name)
    : m_can_change(can_change), m_text_color_resource(text_color_resource),
      m_background_color_resource(background_color_resource), m_font(attributes.family), m_name(take_name(name))
{
    attributes.apply_to(m_font);
    if (!is_kerning_enabled())
        m_font.setKerning(false);
}

// ---- Attributes of a font -------------------------------------------------------------------------------------------

TOLV_FONT_ATTRIBUTES TOLV_FONT_ATTRIBUTES::from_font(const QFont& font)
{
    return {font.pointSize(),
            is_bold_weight(font.weight()),
            font.style() != QFont::StyleNormal,
            font.underline(),
            font.strikeOut(),
            font.fixedPitch(),
            font.styleHint(),
            font.family()};
}

TOLV_FONT_ATTRIBUTES TOLV_FONT_ATTRIBUTES::from_row(const TOLV_INITIAL_FONT& row)
{
    return {row.point_size, row.bold,        row.italic,     row.underline,
            row.strikeout,  row.fixed_pitch, row.style_hint, QString::fromLatin1(row.family)};
}

void TOLV_FONT_ATTRIBUTES::apply_to(QFont& font) const
{
    if (point_size > 0)
        font.setPointSize(point_size);
    font.setWeight(bold ? QFont::Bold : QFont::Normal);
    font.setItalic(italic);
    font.setUnderline(underline);
    font.setStrikeOut(strikeout);
    font.setFixedPitch(fixed_pitch);
    font.setStyleHint(style_hint, QFont::PreferDefault);
    font.setFamily(family);
}

std::string TOLV_FONT_ATTRIBUTES::get_key() const
{
    const QByteArray numbers = QByteArray::number(point_size) + ',' + (bold ? '1' : '0') + ',' + (italic ? '1' : '0') +
                               ',' + (underline ? '1' : '0') + ',' + (strikeout ? '1' : '0') + ',' +
                               (fixed_pitch ? '1' : '0') + ',' + QByteArray::number(style_hint) + ',';
    return (numbers + family.toLocal8Bit()).toStdString();
}

bool TOLV_FONT_ATTRIBUTES::is_bold_weight(int weight)
{
    return weight >= LEAST_BOLD_WEIGHT;
}
