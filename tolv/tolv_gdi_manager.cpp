#include "tolv_gdi_manager.h"

#include "cfgq_registry.h"
#include "tolv_check.h"
#include "tolv_color.h"
#include "tolv_font.h"
#include "tolv_gdi_data_p.h"
#include "tolv_gdi_stored_form_p.h"
#include "tolv_gdi_tables.h"
#include "tolv_mem.h"
#include "tst.h"

#include <QApplication>
#include <QPalette>
#include <QVariant>

#include <algorithm>

TOLV_MEM_INITIALIZER();

TOLV_GDI_MANAGER* TOLV_GDI_MANAGER::m_instance = nullptr;
bool TOLV_GDI_MANAGER::m_instance_has_been_deleted = false;

namespace
{
/// A table's version in the registry.
struct VERSION
{
    const char* name;
    int number;
};
constexpr VERSION COLOR_VERSION = {"Color_version", 11};
constexpr VERSION PEN_VERSION = {"Pen_version", 2};
constexpr VERSION FONT_VERSION = {"Font_version", 11};

/// The stored values of one table. They count only if the table was stored in the version of today and the process is
/// no regression test; another version is no error, and what it left behind stays until the next save.
class STORED_TABLE
{
public:
    explicit STORED_TABLE(const VERSION& version) : m_key(CFGQ_REGISTRY_KEY::SUB_KEY_GUI)
    {
        QVariant number;
        m_is_valid = m_key.get_value(QString::fromLatin1(version.name), &number) && number.toInt() == version.number &&
                     !tst_is_regtest_mode();
    }

    bool is_valid() const
    {
        return m_is_valid;
    }

    /// The value as a text. Returns false where there is none, or none that is a text.
    bool get_text(const char* name, QString* text) const
    {
        QVariant value;
        if (!m_is_valid || !m_key.get_value(QString::fromLatin1(name), &value) || !value.canConvert<QString>())
            return false;
        *text = value.toString();
        return true;
    }

private:
    CFGQ_REGISTRY_KEY m_key;
    bool m_is_valid;
};

/// Opens the registry for a save and writes the version.
CFGQ_REGISTRY_KEY open_for_save(const VERSION& version)
{
    CFGQ_REGISTRY_KEY key(CFGQ_REGISTRY_KEY::SUB_KEY_GUI);
    key.set_value(QString::fromLatin1(version.name), version.number);
    return key;
}

/// Families for which fonts of other systems stand in.
void insert_font_substitutions()
{
    static constexpr const char* SUBSTITUTIONS[][2] = {
        {"Bitstream Vera Sans", "DejaVu Sans"},
        {"Bitstream Vera Sans", "Luxi Sans"},
        {"Bitstream Vera Sans", "Monospace"},
        {"Arial", "Bitstream Vera Sans"},
        {"Arial", "DejaVu Sans"},
        {"Tahoma", "Bitstream Vera Sans"},
        {"Tahoma", "DejaVu Sans"},
        {"Courier New", "Courier"},
        {"Courier New", "DejaVu Sans Mono"},
        {"Courier New", "Liberation Mono"},
        {"Courier New", "Bitstream Sans Mono"},
        {"Courier New", "Monospace"},
        {"DejaVu Sans", "Monospace"},
    };
    for (const auto& [family, substitute] : SUBSTITUTIONS)
        QFont::insertSubstitution(QString::fromLatin1(family), QString::fromLatin1(substitute));
}
} // namespace

void tolv_create_gdi_manager()
{
    TOLV_GDI_MANAGER::create_instance();
}

void tolv_delete_gdi_manager()
{
    TOLV_GDI_MANAGER::delete_instance();
}

// ---- Life -----------------------------------------------------------------------------------------------------------

void TOLV_GDI_MANAGER::create_instance()
{
    if (m_instance != nullptr)
        return;
    m_instance = new TOLV_GDI_MANAGER;
    m_instance_has_been_deleted = false;
    m_instance->give_font_to_application();
}

void TOLV_GDI_MANAGER::delete_instance()
{
    delete m_instance;
    m_instance = nullptr;
    m_instance_has_been_deleted = true; // meant: also where there was none to delete
}

TOLV_GDI_MANAGER* TOLV_GDI_MANAGER::make_instance()
{
    TOLV_CHECK(!TOLV_GDI_MANAGER::m_instance_has_been_deleted);
    if (!m_instance_has_been_deleted)
        create_instance();
    return m_instance;
}

TOLV_GDI_MANAGER::TOLV_GDI_MANAGER()
{
    initialize_colors();
    initialize_pens();
    initialize_brushes();
    initialize_fonts();
}

TOLV_GDI_MANAGER::~TOLV_GDI_MANAGER()
{
    m_brushes.clear();
    m_fonts.clear();
    m_colors.clear();
    m_pens.clear();
    m_custom_pens.clear();
    m_custom_brushes.clear();
    m_custom_fonts.clear();
}

// ---- Colours --------------------------------------------------------------------------------------------------------

void TOLV_GDI_MANAGER::initialize_colors()
{
    const STORED_TABLE stored_table(COLOR_VERSION);
    const QPalette palette = QGuiApplication::palette();
    m_color_names.reserve(TOLV_COLOR_COUNT);
    for (TOLV_INITIAL_COLOR& row : tolv_initial_colors)
    {
        QString text;
        const bool is_stored = !row.is_system && row.can_change && stored_table.get_text(row.name, &text);
        QColor stored_color;
        if (is_stored)
            stored_color.setNamedColor(text); // a text that is no colour leaves the colour invalid, which is meant
        if (!row.is_system && row.palette_role != 0)
        {
            const auto role = static_cast<QPalette::ColorRole>(row.palette_role);
            row.color = palette.brush(palette.currentColorGroup(), role).color();
        }
        insert_color(row, is_stored ? &stored_color : nullptr);
    }
}

void TOLV_GDI_MANAGER::insert_color(TOLV_INITIAL_COLOR& row, const QColor* stored_color)
{
    const bool is_system = stored_color == nullptr && row.is_system;
    const int role = stored_color == nullptr ? row.palette_role : 0;
    const QColor color = stored_color == nullptr ? row.color : *stored_color;
    const auto inserted =
        m_colors.insert(row.resource, std::make_unique<COLOR_DATA>(is_system, role, row.palette_role, row.can_change,
                                                                   color, row.color, row.name));
    TOLV_CHECK(inserted.second);
    m_color_names.emplace(row.name, row.resource);
}

TOLV_GDI_MANAGER::COLOR_DATA* TOLV_GDI_MANAGER::find_color_data(TOLV_COLOR_RESOURCE resource) const
{
    const auto i = m_colors.find(resource);
    TOLV_CHECK(i != m_colors.end());
    COLOR_DATA* const color_data = i != m_colors.end() ? i->second.get() : nullptr;
    TOLV_CHECK_TEXT(color_data != nullptr, "color_data != NULL");
    return color_data;
}

QColor TOLV_GDI_MANAGER::get_color(TOLV_COLOR_RESOURCE resource) const
{
    const COLOR_DATA* const color_data = find_color_data(resource);
    return color_data != nullptr ? color_data->get_color() : QColor();
}

QColor TOLV_GDI_MANAGER::get_default_color(TOLV_COLOR_RESOURCE resource) const
{
    const COLOR_DATA* const color_data = find_color_data(resource);
    return color_data != nullptr ? color_data->get_default_color() : QColor();
}

void TOLV_GDI_MANAGER::set_color(TOLV_COLOR_RESOURCE resource, const QColor& color)
{
    COLOR_DATA* const color_data = find_color_data(resource);
    if (color_data != nullptr)
        color_data->set_color(color);
}

bool TOLV_GDI_MANAGER::can_change_color(TOLV_COLOR_RESOURCE resource) const
{
    const COLOR_DATA* const color_data = find_color_data(resource);
    return color_data != nullptr && color_data->can_change_color();
}

void TOLV_GDI_MANAGER::reset_colors(const std::set<TOLV_COLOR_RESOURCE>& color_set)
{
    TOLV_CHECK(!color_set.empty());
    for (const TOLV_INITIAL_COLOR& row : tolv_initial_colors)
    {
        if (color_set.count(row.resource) == 0)
            continue;
        const auto j = m_colors.find(row.resource);
        TOLV_CHECK(j != m_colors.end());
        if (j != m_colors.end() && j->second->can_change_color())
            j->second->set_color(row.color);
    }
    refresh_pen_and_brush_colors();
}

void TOLV_GDI_MANAGER::save_colors_in_registry()
{
    CFGQ_REGISTRY_KEY key = open_for_save(COLOR_VERSION);
    m_colors.for_each(
        [&key](const COLOR_DATA& color_data)
        {
            if (!color_data.can_change_color())
                return;
            // A row at its default leaves no trace, so that a better default of a later release reaches its user.
            const QString name = QString::fromStdString(color_data.get_name());
            if (color_data.need_to_write_to_registry())
                key.set_value(name, color_data.get_color().name());
            else
                key.remove(name);
        });
    refresh_pen_and_brush_colors();
}

TOLV_COLOR_RESOURCE TOLV_GDI_MANAGER::get_color_resource(const std::string& color_name) const
{
    TOLV_CHECK(!color_name.empty());
    return get_color_resource_or(color_name, TOLV_MIN_COLOR);
}

TOLV_COLOR_RESOURCE TOLV_GDI_MANAGER::get_color_resource_or(const std::string& color_name,
                                                            TOLV_COLOR_RESOURCE fallback) const
{
    const auto i = m_color_names.find(color_name);
    return i != m_color_names.end() ? i->second : fallback;
}

bool TOLV_GDI_MANAGER::has_color(TOLV_COLOR_RESOURCE resource) const
{
    return m_colors.find(resource) != m_colors.end();
}

std::string TOLV_GDI_MANAGER::get_color_name(TOLV_COLOR_RESOURCE resource) const
{
    const auto j = m_colors.find(resource);
    TOLV_CHECK(j != m_colors.end());
    const COLOR_DATA* const color_data = j != m_colors.end() ? j->second.get() : nullptr;
    TOLV_CHECK_TEXT(color_data != nullptr, "color_data != NULL");
    return color_data != nullptr ? color_data->get_name() : std::string();
}

// ---- Pens -----------------------------------------------------------------------------------------------------------

void TOLV_GDI_MANAGER::initialize_pens()
{
    const STORED_TABLE stored_table(PEN_VERSION);
    for (const TOLV_INITIAL_PEN& row : tolv_initial_pens)
    {
        QString text;
        insert_pen(row, stored_table.get_text(row.name, &text) ? &text : nullptr);
    }
}

void TOLV_GDI_MANAGER::insert_pen(const TOLV_INITIAL_PEN& row, const QString* stored_form)
{
    TOLV_STORED_PEN pen = {std::string(), row.style, row.cap, row.join, row.width};
    TOLV_COLOR_RESOURCE color_resource = row.color;
    if (stored_form != nullptr && TOLV_STORED_PEN::parse(*stored_form, &pen))
        color_resource = get_color_resource_or(pen.color_name, row.color);
    const QPen qt_pen(get_color(color_resource), pen.width, pen.style, pen.cap, pen.join);
    const auto inserted = m_pens.insert(row.resource, std::make_unique<PEN_DATA>(qt_pen, color_resource, row.name));
    TOLV_CHECK(inserted.second);
}

TOLV_GDI_MANAGER::PEN_DATA* TOLV_GDI_MANAGER::find_pen_data(TOLV_PEN_RESOURCE resource) const
{
    const auto i = m_pens.find(resource);
    TOLV_CHECK(i != m_pens.end());
    PEN_DATA* const pen_data = i != m_pens.end() ? i->second.get() : nullptr;
    TOLV_CHECK_TEXT(pen_data != nullptr, "pen_data != NULL");
    return pen_data;
}

QPen* TOLV_GDI_MANAGER::get_pen(TOLV_PEN_RESOURCE resource) const
{
    PEN_DATA* const pen_data = find_pen_data(resource);
    return pen_data != nullptr ? &pen_data->m_pen : nullptr;
}

TOLV_COLOR_RESOURCE TOLV_GDI_MANAGER::get_pen_color(TOLV_PEN_RESOURCE resource) const
{
    const PEN_DATA* const pen_data = find_pen_data(resource);
    return pen_data != nullptr ? pen_data->m_color_resource : TOLV_MIN_COLOR;
}

void TOLV_GDI_MANAGER::set_pen_width(TOLV_PEN_RESOURCE resource, int width)
{
    TOLV_CHECK(width >= 0);
    PEN_DATA* const pen_data = find_pen_data(resource);
    if (pen_data != nullptr && width >= 0)
        pen_data->m_pen.setWidth(width);
}

void TOLV_GDI_MANAGER::set_pen_color(TOLV_PEN_RESOURCE resource, TOLV_COLOR_RESOURCE color_resource)
{
    PEN_DATA* const pen_data = find_pen_data(resource);
    const COLOR_DATA* const color_data = find_color_data(color_resource);
    if (pen_data == nullptr || color_data == nullptr)
        return;
    pen_data->m_color_resource = color_resource;
    pen_data->m_pen.setColor(color_data->get_color());
}

void TOLV_GDI_MANAGER::save_pens_in_registry() const
{
    CFGQ_REGISTRY_KEY key = open_for_save(PEN_VERSION);
    m_pens.for_each(
        [this, &key](const PEN_DATA& pen_data)
        {
            key.set_value(QString::fromStdString(pen_data.m_name),
                          TOLV_STORED_PEN::format(get_color_name(pen_data.m_color_resource), pen_data.m_pen));
        });
}

bool TOLV_GDI_MANAGER::has_pen(TOLV_PEN_RESOURCE resource) const
{
    return m_pens.find(resource) != m_pens.end();
}

bool TOLV_GDI_MANAGER::PEN_KEY::operator==(const PEN_KEY& other) const
{
    return style == other.style && cap == other.cap && join == other.join && width == other.width &&
           color == other.color;
}

std::size_t TOLV_GDI_MANAGER::PEN_KEY_HASH::operator()(const PEN_KEY& key) const
{
    const int attributes = (key.join * 2) ^ key.width ^ (key.cap << 4) ^ (key.style << 8);
    return static_cast<std::size_t>(attributes) ^ key.color; // the int is extended with its sign
}

QPen* TOLV_GDI_MANAGER::get_custom_pen(Qt::PenStyle style, Qt::PenCapStyle cap, Qt::PenJoinStyle join, int width,
                                       const QColor& color)
{
    const PEN_KEY key = {style, cap, join, width, color.rgba()};
    const auto i = m_custom_pens.find(key);
    if (i != m_custom_pens.end())
        return i->second.get();
    return m_custom_pens.emplace(key, std::make_unique<QPen>(color, width, style, cap, join)).first->second.get();
}

// ---- Brushes --------------------------------------------------------------------------------------------------------

void TOLV_GDI_MANAGER::initialize_brushes()
{
    for (const TOLV_INITIAL_BRUSH& row : tolv_initial_brushes)
    {
        const QBrush brush(get_color(row.color), row.style);
        const auto inserted = m_brushes.insert(row.resource, std::make_unique<BRUSH_DATA>(row.color, brush));
        TOLV_CHECK(inserted.second);
    }
}

TOLV_GDI_MANAGER::BRUSH_DATA* TOLV_GDI_MANAGER::find_brush_data(TOLV_BRUSH_RESOURCE resource) const
{
    const auto i = m_brushes.find(resource);
    TOLV_CHECK(i != m_brushes.end());
    BRUSH_DATA* const brush_data = i != m_brushes.end() ? i->second.get() : nullptr;
    TOLV_CHECK_TEXT(brush_data != nullptr, "brush_data != NULL");
    return brush_data;
}

QBrush* TOLV_GDI_MANAGER::get_brush(TOLV_BRUSH_RESOURCE resource) const
{
    BRUSH_DATA* const brush_data = find_brush_data(resource);
    return brush_data != nullptr ? &brush_data->m_brush : nullptr;
}

TOLV_COLOR_RESOURCE TOLV_GDI_MANAGER::get_brush_color(TOLV_BRUSH_RESOURCE resource) const
{
    const BRUSH_DATA* const brush_data = find_brush_data(resource);
    return brush_data != nullptr ? brush_data->m_color_resource : TOLV_MIN_COLOR;
}

void TOLV_GDI_MANAGER::set_brush_color(TOLV_BRUSH_RESOURCE resource, TOLV_COLOR_RESOURCE color_resource)
{
    BRUSH_DATA* const brush_data = find_brush_data(resource);
    const COLOR_DATA* const color_data = find_color_data(color_resource);
    if (brush_data == nullptr || color_data == nullptr)
        return;
    brush_data->m_color_resource = color_resource;
    brush_data->m_brush.setColor(color_data->get_color());
}

bool TOLV_GDI_MANAGER::has_brush(TOLV_BRUSH_RESOURCE resource) const
{
    return m_brushes.find(resource) != m_brushes.end();
}

bool TOLV_GDI_MANAGER::BRUSH_KEY::operator==(const BRUSH_KEY& other) const
{
    return style == other.style && color == other.color;
}

std::size_t TOLV_GDI_MANAGER::BRUSH_KEY_HASH::operator()(const BRUSH_KEY& key) const
{
    return static_cast<std::size_t>(key.color) ^ static_cast<std::size_t>(key.style);
}

QBrush* TOLV_GDI_MANAGER::get_custom_brush(Qt::BrushStyle style, const QColor& color)
{
    const BRUSH_KEY key = {style, color.rgba()};
    const auto i = m_custom_brushes.find(key);
    if (i != m_custom_brushes.end())
        return i->second.get();
    return m_custom_brushes.emplace(key, std::make_unique<QBrush>(color, style)).first->second.get();
}

// ---- Fonts ----------------------------------------------------------------------------------------------------------

void TOLV_GDI_MANAGER::initialize_fonts()
{
    const STORED_TABLE stored_table(FONT_VERSION);
    insert_font_substitutions();
    for (const TOLV_INITIAL_FONT& row : tolv_initial_fonts)
    {
        QString text;
        insert_font(row, stored_table.get_text(row.name, &text) ? &text : nullptr);
    }
}

/// The last step of the start. It comes when the manager can be reached: widgets hear of the font at once, and may ask
/// for colours in their answer.
void TOLV_GDI_MANAGER::give_font_to_application() const
{
    const QFont* const default_gui_font = get_font(TOLV_GUI_FONT, nullptr, nullptr);
    TOLV_CHECK_TEXT(default_gui_font != nullptr, "default_gui_font != NULL");
    if (default_gui_font != nullptr)
        QApplication::setFont(*default_gui_font);
}

void TOLV_GDI_MANAGER::insert_font(const TOLV_INITIAL_FONT& row, const QString* stored_form)
{
    TOLV_STORED_FONT font;
    std::unique_ptr<FONT_DATA> font_data;
    if (stored_form != nullptr && TOLV_STORED_FONT::parse(*stored_form, &font))
    {
        font_data = std::make_unique<FONT_DATA>(
            font.can_change, get_color_resource_or(font.text_color_name, row.text_color),
            get_color_resource_or(font.background_color_name, row.background_color), font.attributes, row.name);
    }
    else
    {
        font_data = std::make_unique<FONT_DATA>(row.can_change, row.text_color, row.background_color,
                                                TOLV_FONT_ATTRIBUTES::from_row(row), row.name);
    }
    const auto inserted = m_fonts.insert(row.resource, std::move(font_data));
    TOLV_CHECK(inserted.second);
}

TOLV_GDI_MANAGER::FONT_DATA* TOLV_GDI_MANAGER::find_font_data(TOLV_FONT_RESOURCE resource) const
{
    const auto i = m_fonts.find(resource);
    TOLV_CHECK(i != m_fonts.end());
    FONT_DATA* const font_data = i != m_fonts.end() ? i->second.get() : nullptr;
    TOLV_CHECK_TEXT(font_data != nullptr, "font_data != NULL");
    return font_data;
}

QFont* TOLV_GDI_MANAGER::get_font(TOLV_FONT_RESOURCE resource, TOLV_COLOR_RESOURCE* text_color,
                                  TOLV_COLOR_RESOURCE* background_color) const
{
    FONT_DATA* const font_data = find_font_data(resource);
    if (font_data == nullptr)
        return nullptr;
    if (text_color != nullptr)
        *text_color = font_data->m_text_color_resource;
    if (background_color != nullptr)
        *background_color = font_data->m_background_color_resource;
    return &font_data->m_font;
}

TOLV_FONT TOLV_GDI_MANAGER::get_default_font(TOLV_FONT_RESOURCE resource) const
{
    TOLV_FONT font(resource);
    const auto row =
        std::find_if(std::begin(tolv_initial_fonts), std::end(tolv_initial_fonts),
                     [resource](const TOLV_INITIAL_FONT& candidate) { return candidate.resource == resource; });
    if (row == std::end(tolv_initial_fonts))
        return font;
    TOLV_COLOR_RESOURCE text_color = TOLV_MIN_COLOR;
    TOLV_COLOR_RESOURCE background_color = TOLV_MIN_COLOR;
    get_font(resource, &text_color, &background_color);
    font.set_font(get_default_color(text_color), get_default_color(background_color), QString::fromLatin1(row->family),
                  row->point_size, row->bold, row->italic);
    return font;
}

void TOLV_GDI_MANAGER::set_font(TOLV_FONT_RESOURCE resource, const TOLV_FONT* font)
{
    TOLV_CHECK_TEXT(font != nullptr, "font != NULL");
    FONT_DATA* const font_data = find_font_data(resource);
    if (font == nullptr || font_data == nullptr || font->get_font() == nullptr)
        return;
    const QFont source = *font->get_font(); // a copy: the caller's font may be the row's own
    const QColor text_color = font->get_text_color().get_color();
    const QColor background_color = font->get_background_color().get_color();
    if (source.pointSize() > 0)
        font_data->m_font.setPointSize(source.pointSize());
    font_data->m_font.setWeight(source.weight());
    font_data->m_font.setItalic(source.style() != QFont::StyleNormal);
    font_data->m_font.setFamily(source.family());
    store_font_color(font_data->m_text_color_resource, text_color);
    store_font_color(font_data->m_background_color_resource, background_color);
}

/// Stores a font's colour in its row. A row that has this colour is left alone: fonts on black and white, which nobody
/// can change, are fonts that a user can change.
void TOLV_GDI_MANAGER::store_font_color(TOLV_COLOR_RESOURCE resource, const QColor& color) const
{
    if (get_color(resource) != color)
        TOLV_COLOR::set_default_color(resource, color);
}

bool TOLV_GDI_MANAGER::can_change_font(TOLV_FONT_RESOURCE resource) const
{
    const FONT_DATA* const font_data = find_font_data(resource);
    return font_data != nullptr && font_data->m_can_change;
}

void TOLV_GDI_MANAGER::reset_fonts(const std::set<TOLV_FONT_RESOURCE>& font_set)
{
    TOLV_CHECK(!font_set.empty());
    for (const TOLV_INITIAL_FONT& row : tolv_initial_fonts)
    {
        if (font_set.count(row.resource) == 0)
            continue;
        const auto j = m_fonts.find(row.resource);
        TOLV_CHECK(j != m_fonts.end());
        if (j != m_fonts.end())
            TOLV_FONT_ATTRIBUTES::from_row(row).apply_to(j->second->m_font);
    }
}

void TOLV_GDI_MANAGER::save_fonts_in_registry()
{
    CFGQ_REGISTRY_KEY key = open_for_save(FONT_VERSION);
    m_fonts.for_each(
        [this, &key](const FONT_DATA& font_data)
        {
            key.set_value(
                QString::fromStdString(font_data.m_name),
                TOLV_STORED_FONT::format(font_data.m_can_change, get_color_name(font_data.m_text_color_resource),
                                         get_color_name(font_data.m_background_color_resource), font_data.m_font));
        });
    save_colors_in_registry();
}

bool TOLV_GDI_MANAGER::has_font(TOLV_FONT_RESOURCE resource) const
{
    return m_fonts.find(resource) != m_fonts.end();
}

QFont* TOLV_GDI_MANAGER::get_custom_font(int point_size, bool bold, bool italic, bool underline, bool strikeout,
                                         bool fixed_pitch, QFont::StyleHint style_hint, const QString& face)
{
    return get_custom_font({point_size, bold, italic, underline, strikeout, fixed_pitch, style_hint, face});
}

QFont* TOLV_GDI_MANAGER::get_custom_font(const TOLV_FONT_ATTRIBUTES& attributes)
{
    std::string key = attributes.get_key();
    const auto i = m_custom_fonts.find(key);
    if (i != m_custom_fonts.end())
        return i->second.get();
    auto font = std::make_unique<QFont>(attributes.family);
    attributes.apply_to(*font); // kerning stays at Qt's default, unlike that of the named fonts
    return m_custom_fonts.emplace(std::move(key), std::move(font)).first->second.get();
}

void TOLV_GDI_MANAGER::refresh_pen_and_brush_colors()
{
    m_brushes.for_each([this](BRUSH_DATA& brush_data)
                       { brush_data.m_brush.setColor(get_color(brush_data.m_color_resource)); });
    m_pens.for_each([this](PEN_DATA& pen_data) { pen_data.m_pen.setColor(get_color(pen_data.m_color_resource)); });
}
