#include "drawing_view.h"

#include "tolv_view_arithmetic.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace
{
const int TOLERANCE = 4;        ///< pixels by which a click may miss a line
const int ANIMATION_TIME = 700; ///< milliseconds
} // namespace

DRAWING_VIEW::DRAWING_VIEW(QWidget* parent) : TOLV_VIEW(parent)
{
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

const std::vector<std::uint32_t>& DRAWING_VIEW::get_selection() const
{
    return m_selection;
}

const std::vector<std::uint32_t>& DRAWING_VIEW::get_lit_nets() const
{
    return m_lit_nets;
}

void DRAWING_VIEW::select(std::vector<std::uint32_t> items)
{
    std::sort(items.begin(), items.end());
    m_selection = std::move(items);
    m_lit_nets =
        m_selection.size() == 1 ? m_drawing->get_nets_of_item(m_selection.front()) : std::vector<std::uint32_t>();
    update();
    emit selection_changed();
}

void DRAWING_VIEW::light_up(std::uint32_t net)
{
    m_selection.clear();
    m_lit_nets.clear();
    if (net != NONE)
        m_lit_nets.push_back(net);
    update();
    emit selection_changed();
}

bool DRAWING_VIEW::locate_cell(std::uint32_t cell)
{
    const std::uint32_t item = m_drawing != nullptr ? m_drawing->find_item_of_cell(cell) : NONE;
    if (item == NONE)
        return false;
    const QRect rect = m_drawing->get_item_rect(item);
    if (m_selection != std::vector<std::uint32_t>{item})
        select({item});
    emit reveal_requested(rect);
    animate_selection_rect(get_physical(rect), get_highlight_color(), ANIMATION_TIME);
    return true;
}

void DRAWING_VIEW::set_drawing(std::shared_ptr<const DRAWING> drawing)
{
    m_selection.clear();
    m_lit_nets.clear();
    m_drawing = std::move(drawing);
    if (m_drawing != nullptr && !m_drawing->get_bounds().isEmpty())
        set_logical_size(m_drawing->get_bounds());
    update();
}

std::uint32_t DRAWING_VIEW::get_cell_of_item(std::uint32_t item) const
{
    return m_drawing->get_cell_of_item(item);
}

void DRAWING_VIEW::paint(QPainter* painter, QPaintEvent* event, QWidget*, QRect rect, bool printing)
{
    paint_drawing(painter, event != nullptr ? event->region().boundingRect() & rect : rect,
                  printing ? TARGET_PAPER : TARGET_SCREEN);
}

void DRAWING_VIEW::paint_birds_eye_view(QPainter* painter, QPaintEvent* event, QWidget*, QRect rect)
{
    paint_drawing(painter, event != nullptr ? event->region().boundingRect() & rect : rect, TARGET_OVERVIEW);
}

bool DRAWING_VIEW::shows_nets() const
{
    return true;
}

QRect DRAWING_VIEW::get_selected_rect() const
{
    QRect rect;
    for (const std::uint32_t item : m_selection)
        rect |= m_drawing->get_item_rect(item);
    return rect;
}

void DRAWING_VIEW::do_rect_selection(const QRect& rect, const QPoint&)
{
    if (m_drawing != nullptr)
        select(m_drawing->find_items_within(get_logical(rect)));
}

void DRAWING_VIEW::selection_mode_no_mouse_gesture(QMouseEvent* event)
{
    const QPoint logical = get_logical(tolv_get_local_position(*event));
    const std::uint32_t item = find_item(logical);
    if (item == NONE)
        light_up(find_net(logical));
    else
        select({item});
}

bool DRAWING_VIEW::current_mode_supports_mouse_gesture(const QPoint&)
{
    return true;
}

bool DRAWING_VIEW::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return TOLV_VIEW::event(event);
    const auto* const help = static_cast<QHelpEvent*>(event);
    const QPoint logical = get_logical(help->pos());
    const std::uint32_t item = find_item(logical);
    const std::uint32_t net = item == NONE ? find_net(logical) : NONE;
    const QString text = item != NONE ? get_item_text(item) : net != NONE ? get_net_text(net) : QString();
    QToolTip::showText(help->globalPos(), text, this);
    return true;
}

void DRAWING_VIEW::mouseDoubleClickEvent(QMouseEvent* event)
{
    const std::uint32_t item = find_item(get_logical(tolv_get_local_position(*event)));
    const std::uint32_t cell = item != NONE ? get_cell_of_item(item) : NONE;
    if (event->button() == Qt::LeftButton && cell != NONE)
        emit cell_activated(int(cell));
    else
        TOLV_VIEW::mouseDoubleClickEvent(event);
}

std::uint32_t DRAWING_VIEW::find_item(const QPoint& logical) const
{
    return m_drawing != nullptr ? m_drawing->find_item(logical) : NONE;
}

std::uint32_t DRAWING_VIEW::find_net(const QPoint& logical) const
{
    return m_drawing != nullptr && shows_nets() ? m_drawing->find_net(logical, get_tolerance()) : NONE;
}

int DRAWING_VIEW::get_tolerance() const
{
    return std::max(1, int(std::lround(TOLERANCE / get_zoom())));
}
