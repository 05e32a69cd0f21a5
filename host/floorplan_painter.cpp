#include "floorplan_painter.h"

#include "workbench_text.h"

#include "tolv_contrast.h"
#include "tolv_font.h"

#include <QFontMetrics>
#include <QImage>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace
{
// In pixels of the view.
const double SMALLEST_WIRED_TILE = 6;    ///< of its side: in smaller ones wires would be a blot
const double SMALLEST_LINED_TILE = 10;   ///< has its outline
const double SMALLEST_LINED_SITE = 5;    ///< of its height: has its outline
const double SMALLEST_NAMED_TILE = 90;   ///< of its side: the names of its cells are written where they fit
const double SMALLEST_PLACED_TILE = 130; ///< has its place written in it
const int NAME_MARGIN = 3;
const int MOST_NAME_LINES = 3;

/// A rectangle of device pixels: the first ones in it and the first ones behind it.
struct PIXELS
{
    int x1;
    int y1;
    int x2;
    int y2;
};
} // namespace

/// Fills rectangles given in the drawing's coordinates. What is visible has at least one pixel.
class FLOORPLAN_PAINTER::CANVAS
{
public:
    /// @param image for what is painted; kept from paint to paint, since new memory costs more than the painting
    CANVAS(QPainter& painter, const QTransform& transform, const QRect& exposed, double pixel_size, QImage& image)
        : m_painter(painter), m_exposed(exposed), m_pixel_size(pixel_size),
          m_ratio(painter.device()->devicePixelRatioF()),
          m_is_image(painter.paintEngine()->type() == QPaintEngine::Raster), m_scale_x(transform.m11() * get_ratio()),
          m_scale_y(transform.m22() * get_ratio()), m_offset_x((transform.dx() - exposed.x()) * get_ratio()),
          m_offset_y((transform.dy() - exposed.y()) * get_ratio()),
          m_tile_side(transform.m11() * FLOORPLAN::TILE_SIZE / pixel_size), m_image(image)
    {
        m_size = QSize(int(std::ceil(exposed.width() * get_ratio())), int(std::ceil(exposed.height() * get_ratio())));
        if (!m_is_image)
            return;
        if (m_image.size() != m_size)
            m_image = QImage(m_size, QImage::Format_RGB32);
        m_image.setDevicePixelRatio(m_ratio);
        m_bits = reinterpret_cast<QRgb*>(m_image.bits());
        m_stride = m_image.bytesPerLine() / int(sizeof(QRgb));
    }

    /// The part of the drawing that shows.
    QRect get_visible() const
    {
        const int left = int(std::floor(-m_offset_x / m_scale_x)) - 1;
        const int top = int(std::floor(-m_offset_y / m_scale_y)) - 1;
        return QRect(left, top, int(std::ceil(m_size.width() / m_scale_x)) + 3,
                     int(std::ceil(m_size.height() / m_scale_y)) + 3);
    }

    /// Side of a tile in pixels of the screen.
    double get_tile_side() const
    {
        return m_tile_side;
    }

    /// Where a rectangle of the drawing lies in the view.
    QRect get_view_rect(const QRect& rect) const
    {
        const PIXELS pixels = get_pixels(rect.x(), rect.y(), rect.x() + rect.width(), rect.y() + rect.height());
        const double ratio = get_ratio();
        return QRect(QPoint(int(pixels.x1 / ratio), int(pixels.y1 / ratio)),
                     QPoint(int(pixels.x2 / ratio) - 1, int(pixels.y2 / ratio) - 1))
            .translated(m_exposed.topLeft());
    }

    void fill_all(QRgb color)
    {
        fill({0, 0, m_size.width(), m_size.height()}, color);
    }

    void fill_rect(const QRect& rect, QRgb color)
    {
        fill(get_pixels(rect.x(), rect.y(), rect.x() + rect.width(), rect.y() + rect.height()), color);
    }

    /// The outline, one pixel of the view wide and within the rectangle.
    void outline_rect(const QRect& rect, QRgb color)
    {
        const PIXELS all = get_pixels(rect.x(), rect.y(), rect.x() + rect.width(), rect.y() + rect.height());
        const int width = get_line_width();
        fill({all.x1, all.y1, all.x2, all.y1 + width}, color);
        fill({all.x1, all.y2 - width, all.x2, all.y2}, color);
        fill({all.x1, all.y1, all.x1 + width, all.y2}, color);
        fill({all.x2 - width, all.y1, all.x2, all.y2}, color);
    }

    /// A wire, `width` pixels of the view wide.
    void fill_wire(const FLOORPLAN::WIRE& wire, int width, QRgb color)
    {
        const int pixels = width * get_line_width();
        const int before = pixels / 2;
        const int x1 = get_x(wire.x1) - before;
        const int y1 = get_y(wire.y1) - before;
        fill({x1, y1, get_x(wire.x2) - before + pixels, get_y(wire.y2) - before + pixels}, color);
    }

    /// A line of the view's own width, for wires in numbers.
    void fill_wires(const FLOORPLAN::WIRE* wires, std::size_t count, QRgb color)
    {
        const int width = get_line_width();
        for (const FLOORPLAN::WIRE* wire = wires; wire != wires + count; ++wire)
            fill({get_x(wire->x1), get_y(wire->y1), get_x(wire->x2) + width, get_y(wire->y2) + width}, color);
    }

    /// Brings the image onto the view.
    void finish()
    {
        if (m_is_image)
            m_painter.drawImage(m_exposed.topLeft(), m_image);
    }

private:
    double get_ratio() const
    {
        return m_is_image ? m_ratio : 1.0;
    }

    int get_line_width() const
    {
        return std::max(1, int(std::lround(get_ratio() * m_pixel_size)));
    }

    int get_x(int x) const
    {
        return int(std::floor(x * m_scale_x + m_offset_x));
    }

    int get_y(int y) const
    {
        return int(std::floor(y * m_scale_y + m_offset_y));
    }

    PIXELS get_pixels(int x1, int y1, int x2, int y2) const
    {
        const int left = get_x(x1);
        const int top = get_y(y1);
        return {left, top, std::max(get_x(x2), left + 1), std::max(get_y(y2), top + 1)};
    }

    void fill(PIXELS area, QRgb color)
    {
        area.x1 = std::max(area.x1, 0);
        area.y1 = std::max(area.y1, 0);
        area.x2 = std::min(area.x2, m_size.width());
        area.y2 = std::min(area.y2, m_size.height());
        if (area.x1 >= area.x2 || area.y1 >= area.y2)
            return;
        if (!m_is_image)
        {
            m_painter.fillRect(area.x1 + m_exposed.x(), area.y1 + m_exposed.y(), area.x2 - area.x1, area.y2 - area.y1,
                               QColor(color));
            return;
        }
        QRgb* line = m_bits + std::ptrdiff_t(area.y1) * m_stride;
        for (int y = area.y1; y < area.y2; ++y, line += m_stride)
            std::fill(line + area.x1, line + area.x2, color);
    }

    QPainter& m_painter;
    QRect m_exposed;
    double m_pixel_size;
    double m_ratio;
    bool m_is_image;
    double m_scale_x; ///< from the drawing to pixels of the device
    double m_scale_y;
    double m_offset_x;
    double m_offset_y;
    double m_tile_side;
    QSize m_size; ///< of the exposed part, in pixels of the device
    QImage& m_image;
    QRgb* m_bits = nullptr;
    std::ptrdiff_t m_stride = 0;
};

FLOORPLAN_PAINTER::FLOORPLAN_PAINTER()
    : m_background(TOLV_FLP_BACKGROUND_COLOR), m_empty_tile(TOLV_FLP_EMPTY_SITE_FILL_COLOR),
      m_tile_line(TOLV_FLP_SITE_GRID_COLOR), m_die_edge(TOLV_FLP_DIE_EDGE_LINE_COLOR), m_wire(TOLV_FLP_NET_LINE_COLOR),
      m_lit_wire(TOLV_FLP_SELECTED_NET_LINE_COLOR), m_selected_site(TOLV_FLP_SELECTED_SITE_FILL_COLOR),
      m_place_text(TOLV_FLP_LOCATION_TEXT_COLOR)
{
    for (const TOLV_COLOR_RESOURCE color :
         {TOLV_FLP_USED_LOGIC_BLOCK_FILL_COLOR, TOLV_FLP_USED_RAM_BLOCK_FILL_COLOR, TOLV_FLP_USED_DSP_BLOCK_FILL_COLOR,
          TOLV_FLP_USED_IO_CELL_FILL_COLOR, TOLV_FLP_USED_TRANSCEIVER_FILL_COLOR, TOLV_FLP_HARD_PROCESSOR_FILL_COLOR})
        m_kind_colors.emplace_back(color);
    for (const TOLV_COLOR_RESOURCE color :
         {TOLV_FLP_LOGIC_BLOCK_FILL_COLOR, TOLV_FLP_RAM_BLOCK_FILL_COLOR, TOLV_FLP_DSP_BLOCK_FILL_COLOR,
          TOLV_FLP_IO_BANK_FILL_COLOR, TOLV_FLP_TRANSCEIVER_FILL_COLOR, TOLV_FLP_EMPTY_SITE_FILL_COLOR})
        m_tile_colors.emplace_back(color);
    for (const TOLV_COLOR_RESOURCE color :
         {TOLV_FLP_USED_LOGIC_BLOCK_FILL_COLOR, TOLV_FLP_USED_RAM_BLOCK_FILL_COLOR,
          TOLV_FLP_USED_TRANSCEIVER_FILL_COLOR, TOLV_FLP_USED_DSP_BLOCK_FILL_COLOR, TOLV_FLP_USED_IO_CELL_FILL_COLOR,
          TOLV_FLP_FAN_OUT_SITE_FILL_COLOR, TOLV_FLP_FAN_IN_SITE_FILL_COLOR, TOLV_FLP_PLL_BLOCK_FILL_COLOR,
          TOLV_FLP_LOCKED_REGION_LINE_COLOR, TOLV_FLP_CLOCK_REGION_LINE_COLOR, TOLV_FLP_CARRY_BLOCK_FILL_COLOR,
          TOLV_FLP_HARD_PROCESSOR_FILL_COLOR})
        m_group_colors.emplace_back(color);
}

void FLOORPLAN_PAINTER::paint(QPainter& painter, const FLOORPLAN& plan, const QTransform& transform,
                              const QRect& exposed, const STYLE& style) const
{
    if (exposed.isEmpty() || transform.m11() <= 0 || transform.m22() <= 0)
        return;
    CANVAS canvas(painter, transform, exposed, style.pixel_size, m_image);
    // On paper the ground ends with the chip.
    if (!style.is_on_paper && !plan.get_bounds().contains(canvas.get_visible()))
        canvas.fill_all(m_background.get_color().rgb());
    paint_tiles(canvas, plan);
    if (style.shows_wires && canvas.get_tile_side() >= SMALLEST_WIRED_TILE)
        paint_wires(canvas, plan);
    paint_sites(canvas, plan, style.coloring);
    for (const std::uint32_t site : style.selected_sites)
        canvas.fill_rect(plan.get_sites()[site].rect, m_selected_site.get_color().rgb());
    paint_lit_nets(canvas, plan, style);
    canvas.outline_rect(plan.get_bounds(), m_die_edge.get_color().rgb());
    canvas.finish();
    if (style.shows_names && canvas.get_tile_side() >= SMALLEST_NAMED_TILE)
        paint_names(painter, canvas, plan, style.coloring);
    if (style.shows_names && canvas.get_tile_side() >= SMALLEST_PLACED_TILE)
        paint_places(painter, canvas, plan);
}

QColor FLOORPLAN_PAINTER::get_site_color(const FLOORPLAN::SITE& site, COLORING coloring) const
{
    return coloring == COLORING_MODULE ? get_group_color(site.group) : get_kind_color(site.kind);
}

QColor FLOORPLAN_PAINTER::get_group_color(std::uint32_t group) const
{
    return m_group_colors[group % m_group_colors.size()].get_color();
}

QColor FLOORPLAN_PAINTER::get_kind_color(FLOORPLAN::KIND kind) const
{
    return m_kind_colors[std::size_t(kind)].get_color();
}

QColor FLOORPLAN_PAINTER::get_tile_color(FLOORPLAN::KIND kind) const
{
    const QColor fill = m_tile_colors[std::size_t(kind)].get_color();
    const QColor ground = m_background.get_color();
    // A quarter of it: the cells in the tile stand out.
    return QColor((fill.red() + 3 * ground.red()) / 4, (fill.green() + 3 * ground.green()) / 4,
                  (fill.blue() + 3 * ground.blue()) / 4);
}

void FLOORPLAN_PAINTER::paint_tiles(CANVAS& canvas, const FLOORPLAN& plan) const
{
    const QRect visible = canvas.get_visible() & plan.get_bounds();
    if (visible.isEmpty())
        return;
    std::vector<QRgb> fills;
    for (std::size_t kind = 0; kind < m_tile_colors.size(); ++kind)
        fills.push_back(get_tile_color(FLOORPLAN::KIND(kind)).rgb());
    const QRgb line = m_tile_line.get_color().rgb();
    const QPoint first = plan.get_tile_at(visible.topLeft());
    const QPoint last = plan.get_tile_at(visible.bottomRight());
    for (int row = last.y(); row <= first.y(); ++row)
    {
        for (int column = first.x(); column <= last.x(); ++column)
        {
            const QRect rect = plan.get_tile_rect(column, row);
            canvas.fill_rect(rect, fills[std::size_t(plan.get_tile_kind(column, row))]);
            if (canvas.get_tile_side() >= SMALLEST_LINED_TILE)
                canvas.outline_rect(rect, line);
        }
    }
}

void FLOORPLAN_PAINTER::paint_wires(CANVAS& canvas, const FLOORPLAN& plan) const
{
    const QColor wire = m_wire.get_color();
    const QColor ground = m_background.get_color();
    // Half of it: the nets that are lit stand out.
    const QRgb color =
        qRgb((wire.red() + ground.red()) / 2, (wire.green() + ground.green()) / 2, (wire.blue() + ground.blue()) / 2);
    plan.visit_wires(canvas.get_visible(),
                     [&](const FLOORPLAN::WIRE* wires, std::size_t count) { canvas.fill_wires(wires, count, color); });
}

void FLOORPLAN_PAINTER::paint_sites(CANVAS& canvas, const FLOORPLAN& plan, COLORING coloring) const
{
    std::vector<QRgb> colors;
    if (coloring == COLORING_MODULE)
        std::transform(m_group_colors.begin(), m_group_colors.end(), std::back_inserter(colors),
                       [](const TOLV_COLOR& color) { return color.get_color().rgb(); });
    else
        std::transform(m_kind_colors.begin(), m_kind_colors.end(), std::back_inserter(colors),
                       [](const TOLV_COLOR& color) { return color.get_color().rgb(); });
    const double scale = canvas.get_tile_side() / FLOORPLAN::TILE_SIZE;
    plan.visit_sites(canvas.get_visible(),
                     [&](const FLOORPLAN::SITE* sites, std::size_t count)
                     {
                         for (const FLOORPLAN::SITE* site = sites; site != sites + count; ++site)
                         {
                             const std::size_t number =
                                 coloring == COLORING_MODULE ? site->group : std::size_t(site->kind);
                             const QRgb color = colors[number % colors.size()];
                             canvas.fill_rect(site->rect, color);
                             if (site->rect.height() * scale >= SMALLEST_LINED_SITE)
                                 canvas.outline_rect(site->rect, QColor(color).darker(140).rgb());
                         }
                     });
}

void FLOORPLAN_PAINTER::paint_lit_nets(CANVAS& canvas, const FLOORPLAN& plan, const STYLE& style) const
{
    const QRgb color = m_lit_wire.get_color().rgb();
    for (const std::uint32_t net : style.lit_nets)
    {
        const NETLIST_RANGE range = plan.get_wires_of_net(net);
        for (std::uint32_t i = range.first; i < range.first + range.count; ++i)
            canvas.fill_wire(plan.get_wires()[i], 2, color);
    }
}

/// The name of each site's cell and, in a higher site, its type and its place below.
void FLOORPLAN_PAINTER::paint_names(QPainter& painter, const CANVAS& canvas, const FLOORPLAN& plan,
                                    COLORING coloring) const
{
    const TOLV_FONT font(TOLV_FLP_LOCATION_FONT);
    painter.save();
    painter.setFont(*font.get_font());
    const QFontMetrics metrics = painter.fontMetrics(); // of the device
    const NETLIST_NAMES& names = plan.get_netlist().names;
    const NETLIST_NAME place_key = names.find("NEXTPNR_BEL");
    const auto paint_site = [&](const FLOORPLAN::SITE& site)
    {
        const QRect rect = canvas.get_view_rect(site.rect).adjusted(NAME_MARGIN, 0, -NAME_MARGIN, 0);
        const int line_count = std::min(rect.height() / metrics.height(), MOST_NAME_LINES);
        if (line_count == 0)
            return;
        const NETLIST_CELL& cell = plan.get_module().cells[site.cell];
        const NETLIST_NAME lines[MOST_NAME_LINES] = {cell.name, cell.type,
                                                     plan.get_module().find_property(cell.attributes, place_key)};
        painter.setPen(tolv_get_contrast_color(get_site_color(site, coloring)));
        int top = rect.y() + (rect.height() - line_count * metrics.height()) / 2;
        for (int i = 0; i < line_count; ++i, top += metrics.height())
        {
            // At a point: a text in a rectangle would be laid out twice.
            painter.drawText(
                rect.x(), top + metrics.ascent(),
                metrics.elidedText(workbench_to_qstring(names.get(lines[i])), Qt::ElideMiddle, rect.width()));
        }
    };
    plan.visit_sites(canvas.get_visible(), [&](const FLOORPLAN::SITE* sites, std::size_t count)
                     { std::for_each(sites, sites + count, paint_site); });
    painter.restore();
}

/// Column and row of each tile, on its own ground, in the corner that no site reaches.
void FLOORPLAN_PAINTER::paint_places(QPainter& painter, const CANVAS& canvas, const FLOORPLAN& plan) const
{
    const QRect visible = canvas.get_visible() & plan.get_bounds();
    if (visible.isEmpty())
        return;
    const TOLV_FONT font(TOLV_FLP_LOCATION_FONT);
    painter.save();
    painter.setFont(*font.get_font());
    painter.setPen(m_place_text.get_color());
    const QFontMetrics metrics = painter.fontMetrics(); // of the device
    const QPoint first = plan.get_tile_at(visible.topLeft());
    const QPoint last = plan.get_tile_at(visible.bottomRight());
    for (int row = last.y(); row <= first.y(); ++row)
    {
        for (int column = first.x(); column <= last.x(); ++column)
        {
            const QString text = QStringLiteral("X%1/Y%2").arg(column).arg(row);
            const QRect tile = canvas.get_view_rect(plan.get_tile_rect(column, row));
            const QRect ground(tile.x() + 1, tile.y() + 1, metrics.horizontalAdvance(text) + 2 * NAME_MARGIN,
                               metrics.height());
            painter.fillRect(ground, get_tile_color(plan.get_tile_kind(column, row)));
            painter.drawText(ground.x() + NAME_MARGIN, ground.y() + metrics.ascent(), text);
        }
    }
    painter.restore();
}
