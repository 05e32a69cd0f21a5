#include "hierarchy_graph_pane.h"

#include "drawing.h"
#include "hierarchy_graph_scene.h"
#include "hierarchy_graph_view.h"

#include "tolv_create_action.h"
#include "tolv_global.h"
#include "tolv_tool_bar.h"

#include <QAction>
#include <QActionGroup>
#include <QPainter>
#include <QPrinter>

HIERARCHY_GRAPH_PANE::HIERARCHY_GRAPH_PANE(QWidget* parent)
    : DRAWING_FRAME(tr("Hierarchy Graph"), parent), m_view(new HIERARCHY_GRAPH_VIEW(this))
{
    set_drawing(m_view, m_view);
    fill_tool_bar();
    TOLV_SAFE_CONNECT(m_view, SIGNAL(zoom_level_changed(float)), this, SLOT(show_level(float)));
    TOLV_SAFE_CONNECT(m_view, SIGNAL(drawn()), this, SLOT(take_graph()));
}

HIERARCHY_GRAPH_PANE::~HIERARCHY_GRAPH_PANE() = default;

HIERARCHY_GRAPH_VIEW* HIERARCHY_GRAPH_PANE::get_view() const
{
    return m_view;
}

void HIERARCHY_GRAPH_PANE::fill_tool_bar()
{
    add_selection_tool()->setData(HIERARCHY_GRAPH_VIEW::TOOL_SELECT);
    add_tool(TOLV_ZOOM_TOOL_ACTION, HIERARCHY_GRAPH_VIEW::TOOL_ZOOM);
    add_tool(TOLV_PAN_TOOL_ACTION, HIERARCHY_GRAPH_VIEW::TOOL_PAN);
    TOLV_SAFE_CONNECT(get_tools(), SIGNAL(triggered(QAction*)), this, SLOT(choose_tool(QAction*)));
    get_tool_bar()->addSeparator();
    add_step(TOLV_ZOOM_IN_ACTION, SLOT(zoom_in()));
    add_step(TOLV_ZOOM_OUT_ACTION, SLOT(zoom_out()));
    add_step(TOLV_ZOOM_ACTION, SLOT(ask_for_zoom()));
    add_step(TOLV_ZOOM_FIT_ACTION, SLOT(zoom_fit()));
    add_step(TOLV_ZOOM_SELECTION_ACTION, SLOT(zoom_selected()));
    add_level();
    const QList<QAction*> actions = get_tool_bar()->actions();
    m_behind_overview = actions[actions.size() - 2]; // the line before the level
}

QAction* HIERARCHY_GRAPH_PANE::add_tool(TOLV_ACTION_ENUM command, int tool)
{
    QAction* const action = tolv_create_action(command, this);
    action->setCheckable(true);
    action->setData(tool);
    get_tools()->addAction(action);
    get_tool_bar()->addAction(action);
    return action;
}

void HIERARCHY_GRAPH_PANE::add_step(TOLV_ACTION_ENUM command, const char* slot)
{
    QAction* const action = tolv_create_action(command, this);
    TOLV_SAFE_CONNECT(action, SIGNAL(triggered()), m_view, slot);
    get_tool_bar()->addAction(action);
}

void HIERARCHY_GRAPH_PANE::choose_tool(QAction* action)
{
    m_view->set_tool(static_cast<HIERARCHY_GRAPH_VIEW::TOOL>(action->data().toInt()));
}

void HIERARCHY_GRAPH_PANE::take_graph()
{
    if (m_view->get_graph() == nullptr)
        return;
    get_tool_bar()->insertAction(m_behind_overview, m_view->get_birds_eye_view_action());
    show_all();
}

void HIERARCHY_GRAPH_PANE::paint_page(QPainter* painter, const QPrinter* printer) const
{
    const QRect page = printer->pageLayout().paintRectPixels(printer->resolution());
    painter->save();
    m_view->get_scene()->print(painter, QRectF(QPointF(), page.size()), DRAWING::get_pixel_size(*painter));
    painter->restore();
}

void HIERARCHY_GRAPH_PANE::fit_drawing()
{
    m_view->zoom_fit();
}

QSizeF HIERARCHY_GRAPH_PANE::get_drawing_size() const
{
    return m_view->sceneRect().size();
}
