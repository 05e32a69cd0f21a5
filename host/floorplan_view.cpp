#include "floorplan_view.h"

#include "tolv_color.h"

#include <QPaintEvent>
#include <QPainter>

namespace
{
const float PIXELS_PER_UNIT = 0.5F; ///< at 100 percent
const float SMALLEST_LEVEL = 0.02F;
const float LARGEST_LEVEL = 8;

QString to_text(std::string_view text)
{
    return QString::fromUtf8(text.data(), int(text.size()));
}
} // namespace

FLOORPLAN_VIEW::FLOORPLAN_VIEW(QWidget* parent) : DRAWING_VIEW(parent)
{
    setAccessibleName(tr("Floorplan"));
    setAttribute(Qt::WA_OpaquePaintEvent);
    set_zoom_scaling(PIXELS_PER_UNIT);
    set_zoom_min_max(SMALLEST_LEVEL, LARGEST_LEVEL);
}

FLOORPLAN_VIEW::~FLOORPLAN_VIEW() = default;

void FLOORPLAN_VIEW::set_plan(std::shared_ptr<const FLOORPLAN> plan)
{
    forget_selection();
    m_plan = std::move(plan);
    if (m_plan != nullptr && !m_plan->get_bounds().isEmpty())
        set_logical_size(m_plan->get_bounds());
    update();
}

const std::shared_ptr<const FLOORPLAN>& FLOORPLAN_VIEW::get_plan() const
{
    return m_plan;
}

FLOORPLAN_PAINTER::COLORING FLOORPLAN_VIEW::get_coloring() const
{
    return m_coloring;
}

bool FLOORPLAN_VIEW::get_shows_wires() const
{
    return m_shows_wires;
}

std::uint32_t FLOORPLAN_VIEW::get_cell_of_item(std::uint32_t item) const
{
    return m_plan->get_sites()[item].cell;
}

void FLOORPLAN_VIEW::paint(QPainter* painter, QPaintEvent* event, QWidget*, QRect rect, bool)
{
    paint_plan(painter, event != nullptr ? event->region().boundingRect() & rect : rect, false);
}

void FLOORPLAN_VIEW::paint_birds_eye_view(QPainter* painter, QPaintEvent* event, QWidget*, QRect rect)
{
    paint_plan(painter, event != nullptr ? event->region().boundingRect() & rect : rect, true);
}

/// The painter of the plan counts in pixels of what is painted on.
void FLOORPLAN_VIEW::paint_plan(QPainter* painter, const QRect& exposed, bool is_overview) const
{
    const QTransform transform = painter->transform();
    const TOLV_PHYSICAL_DRAWING_HANDLE physical(painter);
    if (m_plan == nullptr)
    {
        painter->fillRect(exposed, palette().brush(QPalette::Base));
        return;
    }
    FLOORPLAN_PAINTER::STYLE style;
    style.coloring = m_coloring;
    style.shows_wires = m_shows_wires && !is_overview;
    style.shows_names = !is_overview;
    style.selected_sites = get_selection();
    style.lit_nets = get_lit_nets();
    m_painter.paint(*painter, *m_plan, transform, exposed, style);
}

void FLOORPLAN_VIEW::set_colored_by_module(bool by_module)
{
    m_coloring = by_module ? FLOORPLAN_PAINTER::COLORING_MODULE : FLOORPLAN_PAINTER::COLORING_KIND;
    update();
}

void FLOORPLAN_VIEW::set_shows_wires(bool shows_wires)
{
    m_shows_wires = shows_wires;
    update();
}

std::uint32_t FLOORPLAN_VIEW::find_item(const QPoint& logical) const
{
    return m_plan != nullptr ? m_plan->find_site(logical) : NONE;
}

std::uint32_t FLOORPLAN_VIEW::find_net(const QPoint& logical, int distance) const
{
    return m_plan != nullptr && m_shows_wires ? m_plan->find_net(logical, distance) : NONE;
}

std::vector<std::uint32_t> FLOORPLAN_VIEW::find_items_within(const QRect& logical) const
{
    return m_plan != nullptr ? m_plan->find_sites_within(logical) : std::vector<std::uint32_t>();
}

std::uint32_t FLOORPLAN_VIEW::find_item_of_cell(std::uint32_t cell) const
{
    return m_plan != nullptr ? m_plan->find_site_of_cell(cell) : NONE;
}

QRect FLOORPLAN_VIEW::get_item_rect(std::uint32_t item) const
{
    return m_plan->get_sites()[item].rect;
}

std::vector<std::uint32_t> FLOORPLAN_VIEW::get_nets_of_item(std::uint32_t item) const
{
    return m_plan->get_nets_of_cell(m_plan->get_sites()[item].cell);
}

QString FLOORPLAN_VIEW::get_item_text(std::uint32_t item) const
{
    const FLOORPLAN::SITE& site = m_plan->get_sites()[item];
    const NETLIST_CELL& cell = m_plan->get_module().cells[site.cell];
    const NETLIST& netlist = m_plan->get_netlist();
    const NETLIST_NAME place = m_plan->get_module().find_property(cell.attributes, netlist.names.find("NEXTPNR_BEL"));
    return tr("%1\n%2 at %3\n%4")
        .arg(to_text(netlist.names.get(cell.name)), to_text(netlist.names.get(cell.type)),
             to_text(netlist.names.get(place)), floorplan_get_kind_text(site.kind));
}

QString FLOORPLAN_VIEW::get_net_text(std::uint32_t net) const
{
    return tr("Net %1").arg(to_text(m_plan->get_netlist().names.get(m_plan->get_module().nets[net].name)));
}

QColor FLOORPLAN_VIEW::get_highlight_color() const
{
    return TOLV_COLOR(TOLV_FLP_SELECTED_SITE_FILL_COLOR).get_color();
}
