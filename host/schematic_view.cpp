#include "schematic_view.h"

#include "tolv_color.h"
#include "tolv_global.h"

#include <QPainter>
#include <QtConcurrent>

namespace
{
const float SMALLEST_LEVEL = 0.05F;
const float LARGEST_LEVEL = 8;
} // namespace

SCHEMATIC_VIEW::SCHEMATIC_VIEW(QWidget* parent) : DRAWING_VIEW(parent)
{
    setAccessibleName(tr("Schematic"));
    set_zoom_min_max(SMALLEST_LEVEL, LARGEST_LEVEL);
    TOLV_SAFE_CONNECT(&m_watcher, SIGNAL(finished()), this, SLOT(take_drawing()));
}

SCHEMATIC_VIEW::~SCHEMATIC_VIEW() = default;

void SCHEMATIC_VIEW::set_module(const std::shared_ptr<const NETLIST>& netlist, std::uint32_t module)
{
    m_netlist = netlist;
    m_module = module;
    m_schematic = nullptr;
    set_drawing(nullptr);
    m_is_drawing = netlist != nullptr;
    // The watcher hears no more of the drawing that it watched before; that one keeps its netlist until it is done.
    m_watcher.setFuture(netlist != nullptr ? QtConcurrent::run(&SCHEMATIC::make, netlist, module)
                                           : QFuture<std::shared_ptr<const SCHEMATIC>>());
}

const std::shared_ptr<const SCHEMATIC>& SCHEMATIC_VIEW::get_schematic() const
{
    return m_schematic;
}

bool SCHEMATIC_VIEW::is_drawing() const
{
    return m_is_drawing;
}

void SCHEMATIC_VIEW::take_drawing()
{
    if (!m_is_drawing)
        return;
    m_is_drawing = false;
    m_schematic = m_watcher.result();
    set_drawing(m_schematic);
    emit drawn();
}

QString SCHEMATIC_VIEW::get_state_text() const
{
    if (m_netlist == nullptr)
        return QString();
    if (is_drawing())
        return tr("Drawing the schematic ...");
    const std::size_t count = SCHEMATIC::get_box_count(m_netlist->modules[m_module]);
    if (count > SCHEMATIC::LARGEST_BOX_COUNT)
        return tr("The module has %L1 cells and ports, more than a schematic can show (%L2).")
            .arg(count)
            .arg(SCHEMATIC::LARGEST_BOX_COUNT);
    return tr("The schematic could not be drawn.");
}

void SCHEMATIC_VIEW::paint_drawing(QPainter* painter, const QRect& exposed, TARGET target)
{
    {
        const TOLV_PHYSICAL_DRAWING_HANDLE physical(painter);
        if (target != TARGET_PAPER)
            painter->fillRect(exposed, m_painter.get_background_color());
        if (m_schematic == nullptr)
        {
            painter->setPen(TOLV_COLOR(TOLV_RTLV_TEXT_COLOR).get_color());
            painter->drawText(target == TARGET_SCREEN ? get_viewport_rect() : exposed,
                              int(Qt::AlignCenter) | int(Qt::TextWordWrap), get_state_text());
            return;
        }
    }
    const QTransform transform = painter->transform();
    const QRect visible = transform.inverted().mapRect(QRectF(exposed)).toAlignedRect().adjusted(-1, -1, 1, 1);
    SCHEMATIC_PAINTER::STYLE style;
    if (target == TARGET_PAPER)
    {
        painter->fillRect(m_schematic->bounds, m_painter.get_background_color());
        style.line_width = DRAWING::get_pixel_size(*painter) / transform.m11();
    }
    else
    {
        style.selected_boxes = get_selection();
        style.lit_nets = get_lit_nets();
    }
    m_painter.paint(*painter, *m_schematic, visible, transform.m11(), style);
}

QString SCHEMATIC_VIEW::get_item_text(std::uint32_t item) const
{
    const SCHEMATIC::BOX& box = m_schematic->boxes[item];
    if (box.is_port())
        return tr("Port %1").arg(box.title);
    return tr("%1\n%2, %n pin(s)", nullptr, int(box.pins.size())).arg(box.name, box.title);
}

QString SCHEMATIC_VIEW::get_net_text(std::uint32_t net) const
{
    const SCHEMATIC::NET& lit = m_schematic->nets[net];
    return lit.width > 1 ? tr("Bus %1, %2 bits").arg(lit.name).arg(lit.width) : tr("Net %1").arg(lit.name);
}

QColor SCHEMATIC_VIEW::get_highlight_color() const
{
    return TOLV_COLOR(TOLV_RTLV_SELECTED_FILL_COLOR).get_color();
}
