#pragma once

#include "tolv_export.h"
#include "tolv_gdi_enums.h"

#include <QColor>

#include <set>

class QDataStream;

/// A colour that drawing code keeps and passes around: a named one, which follows the user's settings and the palette,
/// or a custom one. Copying is cheap. GUI thread only.
///
/// The statics change the named colours for the whole process; each is the internal error "gdi_mgr != NULL" where there
/// is no manager. All classes of this family stream in the version that the stream is set to.
class TOLV_EXPORT TOLV_COLOR
{
public:
    /// A named colour.
    TOLV_COLOR(TOLV_COLOR_RESOURCE color); // implicit, as is the next one: a colour stands wherever one is wanted
    /// A custom colour.
    TOLV_COLOR(const QColor& color);
    TOLV_COLOR(const TOLV_COLOR& rhs);
    virtual ~TOLV_COLOR();

    /// Writes the colour: 1 (the format), the resource, the custom colour.
    virtual QDataStream& operator<<(QDataStream& stream) const;
    /// Reads what operator<<() wrote. Another format is the internal error "Error in TOLV_COLOR::operator >>". A
    /// stream that ends too soon or names no colour of the table leaves the object as it is; the stream's status says
    /// so.
    virtual QDataStream& operator>>(QDataStream& stream);

    TOLV_COLOR& operator=(const TOLV_COLOR& rhs);
    /// A named colour never equals a custom one or another named one, whatever their values.
    bool operator==(const TOLV_COLOR& rhs) const;
    bool operator!=(const TOLV_COLOR& rhs) const;

    /// Makes it a named colour. TOLV_MIN_COLOR is the internal error "color != TOLV_MIN_COLOR".
    void set_color(TOLV_COLOR_RESOURCE color);
    /// Makes it a custom colour.
    void set_color(const QColor& color);
    /// The value at this moment.
    QColor get_color() const;
    /// The named colour; TOLV_MIN_COLOR for a custom one.
    TOLV_COLOR_RESOURCE get_color_resource() const;

    /// Changes a named colour; see TOLV_GDI_MANAGER::set_color(), which it calls, as the others call their namesakes.
    static void set_default_color(TOLV_COLOR_RESOURCE resource, const QColor& color);
    static bool can_change_default_color(TOLV_COLOR_RESOURCE resource);
    static void save_colors_in_registry();
    /// An empty set is the internal error "!color_set.empty()".
    static void reset_colors(const std::set<TOLV_COLOR_RESOURCE>& color_set);
    static void refresh_pen_and_brush_colors();
    static QColor get_default_color(TOLV_COLOR_RESOURCE resource);

private:
    TOLV_COLOR_RESOURCE m_color_resource; ///< TOLV_MIN_COLOR: custom
    QColor m_color;                       ///< means something only if custom
};

/// The stream forms in the notation of Qt.
TOLV_EXPORT QDataStream& operator<<(QDataStream& stream, const TOLV_COLOR& color);
TOLV_EXPORT QDataStream& operator>>(QDataStream& stream, TOLV_COLOR& color);
