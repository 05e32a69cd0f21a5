#pragma once

#include "tolv_brush.h"
#include "tolv_font.h"
#include "tolv_pen.h"

#include <QRect>
#include <QString>

#include <optional>

class QPainter;

/// How one row of the preferences looks on the sheet of its tool. It holds value objects of the drawing resources: a
/// sample that is painted anew shows what is in force.
class PREFERENCES_SAMPLE
{
public:
    /// @param resource the enumerator
    /// @param name     its name
    static PREFERENCES_SAMPLE of_color(int resource, const QString& name);
    static PREFERENCES_SAMPLE of_font(int resource, const QString& name);
    static PREFERENCES_SAMPLE of_pen(int resource, const QString& name);

    int get_resource() const;
    /// Whether the sample wants the whole width.
    bool is_wide() const;
    /// The height that it needs, in logical pixels.
    int get_height(const QFont& label_font) const;

    /// Where it stands.
    const QRect& get_rect() const;
    void set_rect(const QRect& rect);

    /// Paints it there, the label in the painter's font.
    /// @param label colour that can be read on the tool's ground
    void paint(QPainter& painter, const QColor& label) const;

private:
    enum KIND
    {
        KIND_GROUND, ///< lies under a text
        KIND_FILL,   ///< fills a shape
        KIND_LINE,
        KIND_TEXT,
        KIND_FONT ///< a text in its font
    };

    PREFERENCES_SAMPLE(KIND kind, int resource, const QString& name, TOLV_COLOR_RESOURCE color);

    static KIND get_color_kind(const QString& name);
    void paint_ground(QPainter& painter, const QColor& label) const;
    void paint_fill(QPainter& painter, const QColor& label) const;
    void paint_line(QPainter& painter, const QColor& label) const;
    void paint_text(QPainter& painter) const;
    void paint_label(QPainter& painter, const QRect& rect, const QColor& color) const;
    QColor get_text_color() const;
    QRect get_figure() const;

    KIND m_kind;
    int m_resource;
    QString m_title;
    TOLV_COLOR m_color;
    TOLV_COLOR m_ground;               ///< what lies under the sample
    TOLV_COLOR m_text;                 ///< what is written on a ground
    std::optional<TOLV_BRUSH> m_brush; ///< a named one that fills with the colour
    std::optional<TOLV_PEN> m_pen;     ///< a named one that draws in the colour
    std::optional<TOLV_FONT> m_font;   ///< a named one that writes in the colour
    QRect m_rect;
};

/// The named colour on which a tool draws: its row "Background", and the window's own ground for a tool without.
TOLV_COLOR_RESOURCE preferences_get_ground(const QString& group);

/// A colour for texts beside the samples of a tool: its own text colour where that can be read, or black or white.
QColor preferences_get_label_color(const QString& group);
