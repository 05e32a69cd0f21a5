#include "drawing_pane.h"

#include "drawing_view.h"

#include "tolv_global.h"
#include "tolv_tool_bar.h"
#include "tolv_zoom_scroll_area.h"

#include <QAction>
#include <QPainter>
#include <QPrinter>

DRAWING_PANE::DRAWING_PANE(DRAWING_VIEW* view, const QString& help_topic, QWidget* parent)
    : DRAWING_FRAME(help_topic, parent), m_view(view), m_area(new TOLV_ZOOM_SCROLL_AREA(this))
{
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->set_view(view, true);
    set_drawing(m_area, view);
    fill_tool_bar();
    TOLV_SAFE_CONNECT(m_area, SIGNAL(zoom_level_changed(float)), this, SLOT(show_level(float)));
    TOLV_SAFE_CONNECT(m_area, SIGNAL(pan_mode_off()), this, SLOT(end_temporary_tool()));
    TOLV_SAFE_CONNECT(view, SIGNAL(reveal_requested(QRect)), this, SLOT(reveal(QRect)));
}

DRAWING_VIEW* DRAWING_PANE::get_view() const
{
    return m_view;
}

TOLV_ZOOM_SCROLL_AREA* DRAWING_PANE::get_area() const
{
    return m_area;
}

void DRAWING_PANE::fill_tool_bar()
{
    m_selection_tool = m_tool = m_tool_before = add_selection_tool();
    m_area->insert_modes(get_tools());
    TOLV_SAFE_CONNECT(get_tools(), SIGNAL(triggered(QAction*)), this, SLOT(follow_tool(QAction*)));
    m_area->add_mode_actions(get_tool_bar());
    get_tool_bar()->addSeparator();
    m_area->insert_actions(get_tool_bar(), nullptr);
    get_tool_bar()->addAction(m_area->get_action(TOLV_BIRDS_EYE_VIEW_ACTION));
    add_level();
}

void DRAWING_PANE::paint_page(QPainter* painter, const QPrinter* printer) const
{
    const QRect page = printer->pageLayout().paintRectPixels(printer->resolution());
    painter->save();
    m_view->adjust_painter(painter, printer);
    // The view's transform goes from the corner of the paper, and counts the margins in units of the drawing; what a
    // printer draws on begins behind the margins.
    const QTransform from_corner = painter->transform();
    const QRectF drawn = from_corner.mapRect(QRectF(m_view->get_logical_rect()));
    const QPointF to_middle((page.width() - drawn.width()) / 2, (page.height() - drawn.height()) / 2);
    const QPointF moved = to_middle - drawn.topLeft();
    painter->setTransform(from_corner * QTransform::fromTranslate(moved.x(), moved.y()));
    m_view->paint(painter, nullptr, m_view, QRect(QPoint(0, 0), page.size()), true);
    painter->restore();
}

void DRAWING_PANE::fit_drawing()
{
    m_area->zoom_fit();
}

QSizeF DRAWING_PANE::get_drawing_size() const
{
    return m_view->get_logical_rect().size();
}

void DRAWING_PANE::reveal(const QRect& rect)
{
    if (isVisible() && !rect.isEmpty())
        m_area->scroll_to_logical_rect(rect);
}

/// The tools of the area set their cursors by themselves, and nobody takes them off again.
void DRAWING_PANE::follow_tool(QAction* tool)
{
    if (tool == m_tool)
        return;
    m_tool_before = m_tool;
    m_tool = tool;
    if (tool == m_selection_tool)
        m_view->unsetCursor();
}

void DRAWING_PANE::end_temporary_tool()
{
    m_tool_before->trigger();
}
