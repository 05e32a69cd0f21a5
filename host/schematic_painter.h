#pragma once

#include "schematic.h"

#include "tolv_color.h"

#include <memory>
#include <vector>

class QPainter;
class QTransform;

/// Paints a schematic with the named colours and fonts, which it asks for at each paint. Texts and pins show where they
/// can be read, and always on paper. Texts are kept as they are laid out, from paint to paint: at one level of zoom that is most of the work.
class SCHEMATIC_PAINTER
{
public:
    struct STYLE
    {
        std::vector<std::uint32_t> selected_boxes; ///< indices, in ascending order
        std::vector<std::uint32_t> lit_nets;       ///< indices, in ascending order
        double line_width = 0;                     ///< on paper, in units; 0 for one pixel of the screen
    };

    SCHEMATIC_PAINTER();
    ~SCHEMATIC_PAINTER();

    /// @param painter   its transform maps the drawing to the view; `scale` pixels of the view for a unit of it
    /// @param visible   the part of the drawing to paint
    void paint(QPainter& painter, const SCHEMATIC& schematic, const QRect& visible, double scale,
               const STYLE& style) const;

    QColor get_background_color() const;

private:
    class TEXT_FONT;
    struct TEXT_FONTS;
    struct CONTEXT;

    void paint_wires(const CONTEXT& context, const SCHEMATIC& schematic, const QRect& visible, bool lit) const;
    void paint_box(const CONTEXT& context, const SCHEMATIC::BOX& box, bool selected) const;
    void paint_cell(const CONTEXT& context, const SCHEMATIC::BOX& box, const QColor& fill) const;
    void paint_port(const CONTEXT& context, const SCHEMATIC::BOX& box, const QColor& fill) const;
    void paint_pins(const CONTEXT& context, const SCHEMATIC::BOX& box) const;
    void paint_label(const CONTEXT& context, const SCHEMATIC::PIN& pin) const;

    TOLV_COLOR m_background;
    TOLV_COLOR m_box_line;
    TOLV_COLOR m_selected_fill;
    TOLV_COLOR m_net;
    TOLV_COLOR m_bus;
    TOLV_COLOR m_clock;
    TOLV_COLOR m_constant;
    TOLV_COLOR m_stub;
    TOLV_COLOR m_lit_net;
    TOLV_COLOR m_title_text;
    TOLV_COLOR m_name_text;
    TOLV_COLOR m_port_text;
    TOLV_COLOR m_net_text;
    std::vector<TOLV_COLOR> m_fills; ///< by SCHEMATIC::KIND
    std::unique_ptr<TEXT_FONTS> m_fonts;
};
