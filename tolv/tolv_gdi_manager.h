#pragma once

#include "tolv_export.h"
#include "tolv_gdi_enums.h"
#include "tolv_resource_map.h"

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QPen>

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

class TOLV_FONT;
struct TOLV_FONT_ATTRIBUTES;
struct TOLV_INITIAL_COLOR;
struct TOLV_INITIAL_FONT;
struct TOLV_INITIAL_PEN;

/// Makes the drawing resources. Called by TOLV_APP's constructor, once the settings have been migrated.
TOLV_EXPORT void tolv_create_gdi_manager();

/// Ends the drawing resources. Called by TOLV_APP's destructor; no value object may be used from then on.
TOLV_EXPORT void tolv_delete_gdi_manager();

/// The named colours, pens, brushes and fonts of the process, and its ad-hoc pens, brushes and fonts.
///
/// A named resource has a built-in default, may be changed by the user and is kept in the registry of user settings;
/// colours of the system follow the palette. Drawing code does not ask the manager: it holds the value classes
/// TOLV_COLOR, TOLV_PEN, TOLV_BRUSH and TOLV_FONT. Preference pages change a resource through their statics.
///
/// The pointers that are handed out belong to the manager and stay valid until it goes; those of named resources are
/// live, they show later changes. Pens and brushes hold the value that their colour had when they last took it: after
/// changes of colours call refresh_pen_and_brush_colors(). A palette change does not do that by itself.
///
/// An enumerator of no row is the internal error "i != m_colors.end()", "i != m_pens.end()", "i != m_brushes.end()" or
/// "i != m_fonts.end()". Stored values that do not fit are passed over in silence, the row has its default then.
/// Everything belongs to the GUI thread.
class TOLV_EXPORT TOLV_GDI_MANAGER
{
public:
    class COLOR_DATA;
    class PEN_DATA;
    class BRUSH_DATA;
    class FONT_DATA;

    // ---- Life ----

    /// Makes the manager; nothing happens where there is one.
    static void create_instance();
    /// Deletes the manager. get_instance() is an internal error from now on, even if there was no manager.
    static void delete_instance();
    /// The manager, made at need. After delete_instance() the internal error
    /// "!TOLV_GDI_MANAGER::m_instance_has_been_deleted".
    static TOLV_GDI_MANAGER* get_instance()
    {
        return m_instance != nullptr ? m_instance : make_instance();
    }

    virtual ~TOLV_GDI_MANAGER();
    TOLV_GDI_MANAGER(const TOLV_GDI_MANAGER&) = delete;
    TOLV_GDI_MANAGER& operator=(const TOLV_GDI_MANAGER&) = delete;

    // ---- Colours ----

    /// The colour at this moment; one of the system is looked up in the palette at each call.
    QColor get_color(TOLV_COLOR_RESOURCE resource) const;
    /// The colour as it is without the user's change.
    QColor get_default_color(TOLV_COLOR_RESOURCE resource) const;
    /// Changes a colour for this process; neither stores it nor refreshes pens and brushes. Nothing happens to a
    /// colour of the system; one that cannot be changed is the internal error "m_change_non_windows_color".
    void set_color(TOLV_COLOR_RESOURCE resource, const QColor& color);
    /// Whether a user may change the colour.
    bool can_change_color(TOLV_COLOR_RESOURCE resource) const;
    /// Gives colours their defaults back, and refreshes pens and brushes; those that cannot be changed stay. Nothing is
    /// stored. An empty set is the internal error "!color_set.empty()".
    void reset_colors(const std::set<TOLV_COLOR_RESOURCE>& color_set);
    /// Stores the colours that differ from their defaults (without alpha), removes the others from the registry, and
    /// refreshes pens and brushes.
    void save_colors_in_registry();
    /// The colour of that name, TOLV_MIN_COLOR for none. An empty name is the internal error "!color_name.empty()".
    TOLV_COLOR_RESOURCE get_color_resource(const std::string& color_name) const;
    /// Whether there is a row for the enumerator.
    bool has_color(TOLV_COLOR_RESOURCE resource) const;

    // ---- Pens ----

    /// The pen to draw with, live.
    QPen* get_pen(TOLV_PEN_RESOURCE resource) const;
    /// The named colour that the pen draws in.
    TOLV_COLOR_RESOURCE get_pen_color(TOLV_PEN_RESOURCE resource) const;
    /// @param width in pixels; a negative one is the internal error "width >= 0"
    void set_pen_width(TOLV_PEN_RESOURCE resource, int width);
    /// Gives the pen another named colour, whose present value it takes at once.
    void set_pen_color(TOLV_PEN_RESOURCE resource, TOLV_COLOR_RESOURCE color_resource);
    /// Stores all pens, changed or not. No other save calls this one.
    void save_pens_in_registry() const;
    /// Whether there is a row for the enumerator.
    bool has_pen(TOLV_PEN_RESOURCE resource) const;
    /// The shared pen with these attributes, made at the first call.
    QPen* get_custom_pen(Qt::PenStyle style, Qt::PenCapStyle cap, Qt::PenJoinStyle join, int width,
                         const QColor& color);

    // ---- Brushes ----

    /// The brush to fill with, live.
    QBrush* get_brush(TOLV_BRUSH_RESOURCE resource) const;
    /// The named colour that the brush fills with.
    TOLV_COLOR_RESOURCE get_brush_color(TOLV_BRUSH_RESOURCE resource) const;
    /// Gives the brush another named colour, whose present value it takes at once. Brushes are never stored.
    void set_brush_color(TOLV_BRUSH_RESOURCE resource, TOLV_COLOR_RESOURCE color_resource);
    /// Whether there is a row for the enumerator.
    bool has_brush(TOLV_BRUSH_RESOURCE resource) const;
    /// The shared brush with these attributes, made at the first call.
    QBrush* get_custom_brush(Qt::BrushStyle style, const QColor& color);

    // ---- Fonts ----

    /// The font, and the named colours that its text is drawn with; either pointer may be null.
    QFont* get_font(TOLV_FONT_RESOURCE resource, TOLV_COLOR_RESOURCE* text_color,
                    TOLV_COLOR_RESOURCE* background_color) const;
    /// The font as it is without the user's changes: a custom font, in the default values of its present colours.
    TOLV_FONT get_default_font(TOLV_FONT_RESOURCE resource) const;
    /// Takes point size, weight, italic and family over, and puts the font's colours into the colour rows that the
    /// named font refers to: fonts that share a colour row share the change. Colours of the system stay as they are,
    /// and another colour for a row that cannot be changed is an internal error as in set_color(). Null is the internal
    /// error "font != NULL".
    void set_font(TOLV_FONT_RESOURCE resource, const TOLV_FONT* font);
    /// Whether a user may change the font.
    bool can_change_font(TOLV_FONT_RESOURCE resource) const;
    /// Gives fonts all their default attributes back, their colours excepted. Nothing is stored. An empty set is the
    /// internal error "!font_set.empty()".
    void reset_fonts(const std::set<TOLV_FONT_RESOURCE>& font_set);
    /// Stores all fonts, changed or not, and then the colours as save_colors_in_registry() does.
    void save_fonts_in_registry();
    /// Whether there is a row for the enumerator.
    bool has_font(TOLV_FONT_RESOURCE resource) const;
    /// The shared font with these attributes, made at the first call. `face` is the family.
    QFont* get_custom_font(int point_size, bool bold, bool italic, bool underline, bool strikeout, bool fixed_pitch,
                           QFont::StyleHint style_hint, const QString& face);
    /// The same from attributes in one piece.
    QFont* get_custom_font(const TOLV_FONT_ATTRIBUTES& attributes);

    /// Gives all brushes and pens the present values of their colours.
    void refresh_pen_and_brush_colors();

private:
    struct PEN_KEY
    {
        Qt::PenStyle style;
        Qt::PenCapStyle cap;
        Qt::PenJoinStyle join;
        int width;
        QRgb color;

        bool operator==(const PEN_KEY& other) const;
    };
    struct PEN_KEY_HASH
    {
        std::size_t operator()(const PEN_KEY& key) const;
    };
    struct BRUSH_KEY
    {
        Qt::BrushStyle style;
        QRgb color;

        bool operator==(const BRUSH_KEY& other) const;
    };
    struct BRUSH_KEY_HASH
    {
        std::size_t operator()(const BRUSH_KEY& key) const;
    };

    TOLV_GDI_MANAGER();
    static TOLV_GDI_MANAGER* make_instance();
    void initialize_colors();
    void insert_color(TOLV_INITIAL_COLOR& row, const QColor* stored_color);
    void initialize_pens();
    void insert_pen(const TOLV_INITIAL_PEN& row, const QString* stored_form);
    void initialize_brushes();
    void initialize_fonts();
    void give_font_to_application() const;
    void insert_font(const TOLV_INITIAL_FONT& row, const QString* stored_form);
    COLOR_DATA* find_color_data(TOLV_COLOR_RESOURCE resource) const;
    PEN_DATA* find_pen_data(TOLV_PEN_RESOURCE resource) const;
    BRUSH_DATA* find_brush_data(TOLV_BRUSH_RESOURCE resource) const;
    FONT_DATA* find_font_data(TOLV_FONT_RESOURCE resource) const;
    TOLV_COLOR_RESOURCE get_color_resource_or(const std::string& color_name, TOLV_COLOR_RESOURCE fallback) const;
    void store_font_color(TOLV_COLOR_RESOURCE resource, const QColor& color) const;
    std::string get_color_name(TOLV_COLOR_RESOURCE resource) const;

    static TOLV_GDI_MANAGER* m_instance;
    static bool m_instance_has_been_deleted;

    TOLV_RESOURCE_MAP<TOLV_COLOR_RESOURCE, COLOR_DATA> m_colors;
    TOLV_RESOURCE_MAP<TOLV_PEN_RESOURCE, PEN_DATA> m_pens;
    TOLV_RESOURCE_MAP<TOLV_BRUSH_RESOURCE, BRUSH_DATA> m_brushes;
    TOLV_RESOURCE_MAP<TOLV_FONT_RESOURCE, FONT_DATA> m_fonts;
    std::unordered_map<PEN_KEY, std::unique_ptr<QPen>, PEN_KEY_HASH> m_custom_pens;
    std::unordered_map<BRUSH_KEY, std::unique_ptr<QBrush>, BRUSH_KEY_HASH> m_custom_brushes;
    std::unordered_map<std::string, std::unique_ptr<QFont>> m_custom_fonts;
    /// The colours by name; the names belong to the table of initial colours.
    std::unordered_map<std::string_view, TOLV_COLOR_RESOURCE> m_color_names;
};
