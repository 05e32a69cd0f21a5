#pragma once

#include "floorplan.h"

#include "tolv_color.h"

#include <QColor>
#include <QImage>

#include <vector>

class QPainter;
class QTransform;

/// Paints a floorplan with the named colours, which it asks for at each paint. More shows the nearer one comes: tiles and
/// sites always, wires where a tile has some pixels, outlines, the places of tiles, and names, types and places of
/// cells where there is room for them.
///
/// Sites and wires by the ten thousand are written into an image of the exposed part, pixel for pixel of the device,
/// since they are rectangles and lines along the axes; what is few is drawn by the painter itself. On a device that is no
/// screen all of it is drawn by the painter.
class FLOORPLAN_PAINTER
{
public:
    enum COLORING
    {
        COLORING_MODULE, ///< by FLOORPLAN::SITE::group
        COLORING_KIND    ///< by FLOORPLAN::SITE::kind
    };

    struct STYLE
    {
        COLORING coloring = COLORING_KIND;
        bool shows_wires = true;
        bool shows_names = true; ///< of cells, where there is room
        bool is_on_paper = false;
        double pixel_size = 1;                     ///< pixels that count as one of a screen; more on paper
        std::vector<std::uint32_t> selected_sites; ///< indices, in ascending order
        std::vector<std::uint32_t> lit_nets;       ///< indices of nets in the module
    };

    FLOORPLAN_PAINTER();

    /// @param painter   in pixels of the view, origin at its upper left
    /// @param transform from the drawing to those pixels; scaling and moving only
    /// @param exposed   the part to paint, in those pixels
    void paint(QPainter& painter, const FLOORPLAN& plan, const QTransform& transform, const QRect& exposed,
               const STYLE& style) const;

    /// Fill colour of a site.
    QColor get_site_color(const FLOORPLAN::SITE& site, COLORING coloring) const;
    QColor get_group_color(std::uint32_t group) const;
    QColor get_kind_color(FLOORPLAN::KIND kind) const;

private:
    class CANVAS;

    void paint_tiles(CANVAS& canvas, const FLOORPLAN& plan) const;
    void paint_wires(CANVAS& canvas, const FLOORPLAN& plan) const;
    void paint_sites(CANVAS& canvas, const FLOORPLAN& plan, COLORING coloring) const;
    void paint_lit_nets(CANVAS& canvas, const FLOORPLAN& plan, const STYLE& style) const;
    void paint_places(QPainter& painter, const CANVAS& canvas, const FLOORPLAN& plan) const;
    void paint_names(QPainter& painter, const CANVAS& canvas, const FLOORPLAN& plan, COLORING coloring) const;
    QColor get_tile_color(FLOORPLAN::KIND kind) const;

    mutable QImage m_image; ///< of the last paint
    TOLV_COLOR m_background;
    TOLV_COLOR m_empty_tile;
    TOLV_COLOR m_tile_line;
    TOLV_COLOR m_die_edge;
    TOLV_COLOR m_wire;
    TOLV_COLOR m_lit_wire;
    TOLV_COLOR m_selected_site;
    TOLV_COLOR m_place_text;
    std::vector<TOLV_COLOR> m_kind_colors;  ///< by FLOORPLAN::KIND
    std::vector<TOLV_COLOR> m_tile_colors;  ///< by FLOORPLAN::KIND
    std::vector<TOLV_COLOR> m_group_colors; ///< gone round
};
