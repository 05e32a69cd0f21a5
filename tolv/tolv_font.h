#pragma once

#include "tolv_color.h"

#include <QFont>
#include <QString>

#include <set>

struct TOLV_FONT_ATTRIBUTES;

/// A font with the colours of its text and of what lies behind it, which drawing code keeps and passes around: a named
/// one, or a custom one, which is a font that all objects with the same attributes share. Copying is cheap. GUI thread
/// only.
///
/// Changing one attribute of a named font makes it custom; it then remembers its named colours.
class TOLV_EXPORT TOLV_FONT
{
public:
    /// A named font. TOLV_MIN_FONT is the internal error "font != TOLV_MIN_FONT".
    TOLV_FONT(TOLV_FONT_RESOURCE font); // implicit: a font stands wherever one is wanted
    TOLV_FONT(const TOLV_FONT& rhs);
    virtual ~TOLV_FONT();

    /// Writes the font: 1 (the format), the resource, whether there is a font, the font, both colours.
    virtual QDataStream& operator<<(QDataStream& stream) const;
    /// Reads what operator<<() wrote. Another format is the internal error "Error at TOLV_FONT::operator >>". A stream
    /// that ends too soon or names no font of the table leaves the object as it is; the stream's status says so.
    virtual QDataStream& operator>>(QDataStream& stream);

    TOLV_FONT& operator=(const TOLV_FONT& rhs);
    /// A named font never equals a custom one or another named one. Custom ones are equal if both colours and the fonts
    /// are.
    bool operator==(const TOLV_FONT& rhs) const;
    bool operator!=(const TOLV_FONT& rhs) const;

    /// Makes it a named font, as the constructor does.
    void set_font(TOLV_FONT_RESOURCE font);
    /// Makes it a custom font. What is not among the arguments (underline, strikeout, pitch, hint) stays.
    /// @param point in points, above 0
    void set_font(const TOLV_COLOR& text, const TOLV_COLOR& background, const QString& face, int point, bool bold,
                  bool italic);
    /// The font to write in; it belongs to the manager.
    QFont* get_font() const;
    /// The named font; TOLV_MIN_FONT for a custom one.
    TOLV_FONT_RESOURCE get_font_resource() const;

    /// The value of the colour at this moment is what is kept, not its name.
    void set_text_color(const TOLV_COLOR& color);
    void set_background_color(const TOLV_COLOR& color);
    /// The family. An empty one is the internal error "!face_name.isEmpty()".
    void set_face_name(const QString& face_name);
    void set_point_size(int point_size);
    void set_bold(bool bold);
    void set_italic(bool italic);
    TOLV_COLOR get_text_color() const;
    TOLV_COLOR get_background_color() const;
    QString get_face_name() const;
    int get_point_size() const;
    /// Whether the weight is 58 or more.
    bool get_bold() const;
    bool get_italic() const;

    /// Whether a user may change the named font. This and the others call their namesakes in TOLV_GDI_MANAGER; no
    /// manager is the internal error "gdi_mgr != NULL".
    static bool can_change_default_font(TOLV_FONT_RESOURCE resource);
    static void set_default_font(TOLV_FONT_RESOURCE resource, const TOLV_FONT* font);
    static void save_fonts_in_registry();
    /// An empty set is the internal error "!font_set.empty()".
    static void reset_fonts(const std::set<TOLV_FONT_RESOURCE>& font_set);
    static TOLV_FONT get_default_font(TOLV_FONT_RESOURCE resource);

private:
    void detach();
    bool has_font() const;
    template <class CHANGE>
    void change_attributes(const CHANGE& change);
    void change_color(TOLV_COLOR* member, const QColor& value);

    TOLV_FONT_RESOURCE m_font_resource; ///< TOLV_MIN_FONT: custom
    QFont* m_font;                      ///< belongs to the manager, or, once read from a stream, to nobody
    TOLV_COLOR m_text_color;            ///< means something only if custom
    TOLV_COLOR m_background_color;      ///< means something only if custom
};

/// The stream forms in the notation of Qt.
TOLV_EXPORT QDataStream& operator<<(QDataStream& stream, const TOLV_FONT& font);
TOLV_EXPORT QDataStream& operator>>(QDataStream& stream, TOLV_FONT& font);
