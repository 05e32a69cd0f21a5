#pragma once

#include "tolv_color.h"

#include <QPen>

/// A pen that drawing code keeps and passes around: a named one, or a custom one, which is a pen that all objects with
/// the same attributes share. Copying is cheap. GUI thread only.
///
/// Changing one attribute of a named pen makes it custom. It then remembers the named colour, but draws in the value
/// which that colour had at this moment.
class TOLV_EXPORT TOLV_PEN
{
public:
    /// A named pen. TOLV_MIN_PEN is the internal error "pen != TOLV_MIN_PEN".
    TOLV_PEN(TOLV_PEN_RESOURCE pen); // implicit, as is the next one: a pen stands wherever one is wanted
    /// A custom pen with the style, cap, join, whole width and colour of this one.
    TOLV_PEN(const QPen& pen);
    /// Copying a custom pen looks its shared pen up again; null there is the internal error "rhs.m_pen != NULL".
    TOLV_PEN(const TOLV_PEN& rhs);
    virtual ~TOLV_PEN();

    /// Writes the pen: 1 (the format), the resource, whether there is a pen, the pen, the colour.
    virtual QDataStream& operator<<(QDataStream& stream) const;
    /// Reads what operator<<() wrote. Another format is the internal error "Error at TOLV_PEN::operator >>". A stream
    /// that ends too soon, names no pen of the table or holds a pen with a texture, a gradient or dashes beyond reason
    /// leaves the object as it is; the stream's status says so.
    /// Reading a named pen leaves get_pen() what it was, which is meant; set_pen() brings it in line.
    virtual QDataStream& operator>>(QDataStream& stream);

    /// Copies the pointer alone.
    TOLV_PEN& operator=(const TOLV_PEN& rhs);
    /// A named pen never equals a custom one or another named one. Custom ones are equal if the colour, and the pens'
    /// style, cap, join, width and colour are.
    bool operator==(const TOLV_PEN& rhs) const;
    bool operator!=(const TOLV_PEN& rhs) const;

    /// Makes it another pen, as the constructor of the same argument does.
    void set_pen(TOLV_PEN_RESOURCE pen);
    void set_pen(const QPen& pen);
    /// The pen to draw with; it belongs to the manager and is never null, except in a process without one.
    QPen* get_pen() const;
    /// The named pen; TOLV_MIN_PEN for a custom one.
    TOLV_PEN_RESOURCE get_pen_resource() const;

    /// Makes the pen custom, in this colour; a named colour is remembered as such.
    void set_color(const TOLV_COLOR& color);
    TOLV_COLOR get_color() const;
    /// @param width in pixels; 0 is one pixel at any zoom
    void set_width(int width);
    int get_width() const;
    void set_style(Qt::PenStyle style);
    Qt::PenStyle get_style() const;
    Qt::PenCapStyle get_cap_style() const;

    /// Changes a named pen; see TOLV_GDI_MANAGER::set_pen_width(). No manager is the internal error "gdi_mgr != NULL".
    static void set_default_pen_width(TOLV_PEN_RESOURCE resource, int width);
    static void set_default_pen_color(TOLV_PEN_RESOURCE resource, TOLV_COLOR_RESOURCE color);
    static void save_pens_in_registry();

private:
    void detach();
    const QPen* get_current_pen() const;

    TOLV_PEN_RESOURCE m_pen_resource; ///< TOLV_MIN_PEN: custom
    QPen* m_pen;                      ///< belongs to the manager
    TOLV_COLOR m_color;               ///< means something only if custom
};

/// The stream forms in the notation of Qt.
TOLV_EXPORT QDataStream& operator<<(QDataStream& stream, const TOLV_PEN& pen);
TOLV_EXPORT QDataStream& operator>>(QDataStream& stream, TOLV_PEN& pen);
