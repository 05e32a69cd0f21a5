#pragma once

#include "tolv_color.h"

#include <QBrush>

/// A brush that drawing code keeps and passes around: a named one, or a custom one, which is a brush that all objects
/// with the same attributes share. Copying is cheap. GUI thread only.
///
/// Changing one attribute of a named brush makes it custom. It then remembers the named colour, but fills with the
/// value which that colour had at this moment.
class TOLV_EXPORT TOLV_BRUSH
{
public:
    /// A named brush. TOLV_MIN_BRUSH is the internal error "brush != TOLV_MIN_BRUSH".
    TOLV_BRUSH(TOLV_BRUSH_RESOURCE brush); // implicit, as is the next one: a brush stands wherever one is wanted
    /// A custom brush with the style and colour of this one; gradients and textures are not kept.
    TOLV_BRUSH(const QBrush& brush);
    /// A custom brush; a named colour is remembered as such.
    TOLV_BRUSH(Qt::BrushStyle style, const TOLV_COLOR& color);
    TOLV_BRUSH(const TOLV_BRUSH& rhs);
    virtual ~TOLV_BRUSH();

    /// Writes the brush: 1 (the format), the resource, the colour. The style is not written.
    virtual QDataStream& operator<<(QDataStream& stream) const;
    /// Reads what operator<<() wrote, and leaves get_brush() null, which is meant: the reader must call set_brush().
    /// Another format is the internal error "Error in TOLV_BRUSH::operator >>". A stream that ends too soon or names no
    /// brush of the table leaves the object as it is; the stream's status says so.
    virtual QDataStream& operator>>(QDataStream& stream);

    TOLV_BRUSH& operator=(const TOLV_BRUSH& rhs);
    /// A named brush never equals a custom one or another named one. Custom ones are equal if the colour, and the
    /// brushes' style and colour are.
    bool operator==(const TOLV_BRUSH& rhs) const;
    bool operator!=(const TOLV_BRUSH& rhs) const;

    /// Makes it another brush, as the constructor of the same argument does.
    void set_brush(TOLV_BRUSH_RESOURCE brush);
    void set_brush(const QBrush& brush);
    void set_brush(Qt::BrushStyle style, const TOLV_COLOR& color);
    /// The brush to fill with; it belongs to the manager. Null only behind operator>>().
    QBrush* get_brush() const;
    /// The named brush; TOLV_MIN_BRUSH for a custom one.
    TOLV_BRUSH_RESOURCE get_brush_resource() const;

    /// Makes the brush custom, in this colour's value of the moment: get_color() gives a custom colour from then on.
    void set_color(const TOLV_COLOR& color);
    TOLV_COLOR get_color() const;
    void set_style(Qt::BrushStyle style);
    Qt::BrushStyle get_style() const;

    /// Changes a named brush; see TOLV_GDI_MANAGER::set_brush_color(). No manager is the internal error
    /// "gdi_mgr != NULL".
    static void set_default_brush_color(TOLV_BRUSH_RESOURCE resource, TOLV_COLOR_RESOURCE color);

private:
    TOLV_BRUSH_RESOURCE m_brush_resource; ///< TOLV_MIN_BRUSH: custom
    QBrush* m_brush;                      ///< belongs to the manager
    TOLV_COLOR m_color;                   ///< means something only if custom
};

/// The stream forms in the notation of Qt.
TOLV_EXPORT QDataStream& operator<<(QDataStream& stream, const TOLV_BRUSH& brush);
TOLV_EXPORT QDataStream& operator>>(QDataStream& stream, TOLV_BRUSH& brush);
