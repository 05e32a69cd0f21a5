#include "floorplan_view.h"

#include "tolv_color.h"
#include "workbench_text.h"

#include <QPainter>

namespace
{
const float PIXELS_PER_UNIT = 0.5F; ///< at 100 percent
const float SMALLEST_LEVEL = 0.02F;
const float LARGEST_LEVEL = 8;
} // namespace

FLOORPLAN_VIEW::FLOORPLAN_VIEW(QWidget* parent) : DRAWING_VIEW(parent)
{
    setAccessibleName(tr("Floorplan"));
    set_zoom_scaling(PIXELS_PER_UNIT);
    set_zoom_min_max(SMALLEST_LEVEL, LARGEST_LEVEL);
}

FLOORPLAN_VIEW::~FLOORPLAN_VIEW() = default;

void FLOORPLAN_VIEW::set_plan(std::shared_ptr<const FLOORPLAN> plan)
{
    m_plan = std::move(plan);
    set_drawing(m_plan);
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

/// The painter of the plan counts in pixels of what is painted on.
void FLOORPLAN_VIEW::paint_drawing(QPainter* painter, const QRect& exposed, TARGET target)
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
    style.shows_wires = m_shows_wires && target != TARGET_OVERVIEW;
    style.shows_names = target != TARGET_OVERVIEW;
    if (target == TARGET_PAPER)
    {
        style.is_on_paper = true;
        style.pixel_size = DRAWING::get_pixel_size(*painter);
    }
    else
    {
        style.selected_sites = get_selection();
        style.lit_nets = get_lit_nets();
    }
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

bool FLOORPLAN_VIEW::shows_nets() const
{
    return m_shows_wires;
}

QString FLOORPLAN_VIEW::get_item_text(std::uint32_t item) const
{
    const FLOORPLAN::SITE& site = m_plan->get_sites()[item];
    const NETLIST_CELL& cell = m_plan->get_module().cells[site.cell];
    const NETLIST& netlist = m_plan->get_netlist();
    const NETLIST_NAME place = m_plan->get_module().find_property(cell.attributes, netlist.names.find("NEXTPNR_BEL"));
    return tr("%1\n%2 at %3\n%4")
        .arg(workbench_to_qstring(netlist.names.get(cell.name)), workbench_to_qstring(netlist.names.get(cell.type)),
             workbench_to_qstring(netlist.names.get(place)), floorplan_get_kind_text(site.kind));
}

QString FLOORPLAN_VIEW::get_net_text(std::uint32_t net) const
{
    return tr("Net %1").arg(workbench_to_qstring(m_plan->get_netlist().names.get(m_plan->get_module().nets[net].name)));
}

QColor FLOORPLAN_VIEW::get_highlight_color() const
{
    return TOLV_COLOR(TOLV_FLP_SELECTED_SITE_FILL_COLOR).get_color();
}
