#include "hierarchy_graph_view.h"

#include "hierarchy_graph_scene.h"
#include "hierarchy_graph_stroke.h"

#include "tolv_birds_eye_view.h"
#include "tolv_global.h"
#include "tolv_image.h"
#include "tolv_set_zoom_dlg.h"
#include "tolv_view_arithmetic.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <QtConcurrent>

#include <algorithm>
#include <cmath>

namespace
{
const double STEP = 1.25;
const double FINE_STEP = 1.01; ///< with Alt
const int WHEEL_NOTCH = 120;
const int FINE_WHEEL_NOTCH = 3000; ///< with Alt
const int STEPS_PER_NOTCH = 3;
const int REVEAL_MARGIN = 30; ///< around a module that the keys go to, in pixels
const int TEXT_MARGIN = 20;
} // namespace

HIERARCHY_GRAPH_VIEW::HIERARCHY_GRAPH_VIEW(QWidget* parent)
    : TOLV_GRAPHICS_VIEW(parent), m_scene(new HIERARCHY_GRAPH_SCENE(this))
{
    setAccessibleName(tr("Hierarchy Graph"));
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    setTransformationAnchor(QGraphicsView::NoAnchor);
    setResizeAnchor(QGraphicsView::NoAnchor);
    // A selection changes edges all over the drawing.
    setViewportUpdateMode(QGraphicsView::BoundingRectViewportUpdate);
    setScene(m_scene);
    TOLV_SAFE_CONNECT(&m_watcher, SIGNAL(finished()), this, SLOT(take_graph()));
    TOLV_SAFE_CONNECT(m_scene, SIGNAL(selection_of_nodes_changed()), this, SLOT(describe_selection()));
}

HIERARCHY_GRAPH_VIEW::~HIERARCHY_GRAPH_VIEW()
{
    m_scene->disconnect(this);
}

void HIERARCHY_GRAPH_VIEW::set_netlist(const std::shared_ptr<const NETLIST>& netlist)
{
    if (netlist == m_netlist)
        return;
    m_netlist = netlist;
    m_current_module = HIERARCHY_GRAPH::NONE;
    m_error.clear();
    m_scene->set_graph(nullptr);
    m_is_drawing = false;
    m_is_pending = netlist != nullptr;
    // The watcher hears no more of the graph that it watched before; that one keeps its netlist until it is done.
    m_watcher.setFuture(QFuture<HIERARCHY_GRAPH::RESULT>());
    if (get_birds_eye_view_action() != nullptr)
    {
        hide_birds_eye_view();
        get_birds_eye_view_action()->setEnabled(false);
    }
    if (isVisible())
        begin_drawing();
    viewport()->update();
}

void HIERARCHY_GRAPH_VIEW::begin_drawing()
{
    if (!m_is_pending)
        return;
    m_is_pending = false;
    m_is_drawing = true;
    m_watcher.setFuture(QtConcurrent::run(&HIERARCHY_GRAPH::make, m_netlist));
    viewport()->update();
}

void HIERARCHY_GRAPH_VIEW::take_graph()
{
    if (!m_is_drawing)
        return;
    m_is_drawing = false;
    const HIERARCHY_GRAPH::RESULT result = m_watcher.result();
    m_error = result.error;
    m_scene->set_graph(result.graph);
    set_current_module(m_current_module);
    if (result.graph != nullptr)
        create_birds_eye_view(); // its overview keeps the size of the scene that it was made for
    viewport()->update();
    emit drawn();
}

void HIERARCHY_GRAPH_VIEW::set_current_module(std::uint32_t module)
{
    m_current_module = module;
    m_scene->set_current_node(get_graph() != nullptr ? get_graph()->find_node(module) : HIERARCHY_GRAPH::NONE);
}

HIERARCHY_GRAPH_SCENE* HIERARCHY_GRAPH_VIEW::get_scene() const
{
    return m_scene;
}

const std::shared_ptr<const HIERARCHY_GRAPH>& HIERARCHY_GRAPH_VIEW::get_graph() const
{
    return m_scene->get_graph();
}

bool HIERARCHY_GRAPH_VIEW::is_drawing() const
{
    return m_is_drawing;
}

QString HIERARCHY_GRAPH_VIEW::get_state_text() const
{
    if (get_graph() != nullptr || m_netlist == nullptr)
        return QString();
    return m_error.isEmpty() ? tr("Drawing the hierarchy ...") : m_error;
}

void HIERARCHY_GRAPH_VIEW::set_tool(TOOL tool)
{
    m_tool = tool;
    update_cursor();
}

HIERARCHY_GRAPH_VIEW::TOOL HIERARCHY_GRAPH_VIEW::get_tool() const
{
    return m_tool;
}

void HIERARCHY_GRAPH_VIEW::update_cursor()
{
    if (m_is_panning)
        viewport()->setCursor(Qt::ClosedHandCursor);
    else if (m_tool == TOOL_PAN)
        viewport()->setCursor(Qt::OpenHandCursor);
    else if (m_tool == TOOL_ZOOM)
        viewport()->setCursor(tolv_get_cursor(TOLV_ZOOM_IN_CURSOR));
    else
        viewport()->setCursor(Qt::ArrowCursor);
}

// ---- Zoom -----------------------------------------------------------------------------------------------------------

double HIERARCHY_GRAPH_VIEW::get_level() const
{
    return transform().m11();
}

void HIERARCHY_GRAPH_VIEW::set_level(double level)
{
    const double bounded = qBound(SMALLEST_LEVEL, level, LARGEST_LEVEL);
    setTransform(QTransform::fromScale(bounded, bounded));
}

void HIERARCHY_GRAPH_VIEW::zoom_by(double factor, const QPoint& point)
{
    const QPointF held = mapToScene(point);
    set_level(get_level() * factor);
    const QPoint moved = mapFromScene(held) - point;
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + moved.x());
    verticalScrollBar()->setValue(verticalScrollBar()->value() + moved.y());
    emit zoom_level_changed(float(get_level()));
}

void HIERARCHY_GRAPH_VIEW::zoom_by(double factor)
{
    zoom_by(factor, viewport()->rect().center());
}

void HIERARCHY_GRAPH_VIEW::focus_on_scene_rect(const QRectF& rect)
{
    if (rect.isEmpty())
        return;
    const QSize room = maximumViewportSize();
    set_level(std::min(room.width() / rect.width(), room.height() / rect.height()));
    centerOn(rect.center());
    emit zoom_level_changed(float(get_level()));
}

void HIERARCHY_GRAPH_VIEW::zoom_in()
{
    zoom_by(STEP);
}

void HIERARCHY_GRAPH_VIEW::zoom_out()
{
    zoom_by(1 / STEP);
}

void HIERARCHY_GRAPH_VIEW::zoom_fit()
{
    const QRectF rect = sceneRect();
    if (rect.isEmpty())
        return;
    const QSize room = maximumViewportSize();
    set_level(std::min({room.width() / rect.width(), room.height() / rect.height(), LARGEST_FIT_LEVEL}));
    centerOn(rect.center());
    emit zoom_level_changed(float(get_level()));
}

void HIERARCHY_GRAPH_VIEW::zoom_selected()
{
    focus_on_scene_rect(m_scene->get_selected_rect());
}

void HIERARCHY_GRAPH_VIEW::ask_for_zoom()
{
    TOLV_SET_ZOOM_DLG dialog(100 * float(SMALLEST_LEVEL), 100 * float(LARGEST_LEVEL), this);
    dialog.get_combo_box()->setCurrentText(TOLV_SET_ZOOM_DLG::get_percent_text(float(100 * get_level())));
    const QPointer<HIERARCHY_GRAPH_VIEW> self(this);
    if (dialog.exec() != QDialog::Accepted || self == nullptr)
        return;
    if (dialog.get_current_text() == QLatin1String("Fit in Window"))
        zoom_fit();
    else
        zoom_by(double(dialog.get_selected_zoom()) / 100 / get_level());
}

void HIERARCHY_GRAPH_VIEW::apply_drawing_resources()
{
    m_scene->apply_drawing_resources();
}

// ---- Events ---------------------------------------------------------------------------------------------------------

void HIERARCHY_GRAPH_VIEW::showEvent(QShowEvent* event)
{
    TOLV_GRAPHICS_VIEW::showEvent(event);
    begin_drawing();
}

void HIERARCHY_GRAPH_VIEW::drawForeground(QPainter* painter, const QRectF& /*rect*/)
{
    const QString text = get_state_text();
    if (text.isEmpty())
        return;
    painter->save();
    painter->resetTransform();
    painter->setPen(m_scene->get_style().name);
    painter->setFont(font());
    painter->drawText(viewport()->rect().adjusted(TEXT_MARGIN, TEXT_MARGIN, -TEXT_MARGIN, -TEXT_MARGIN),
                      int(Qt::AlignCenter) | int(Qt::TextWordWrap), text);
    painter->restore();
}

void HIERARCHY_GRAPH_VIEW::mousePressEvent(QMouseEvent* event)
{
    event->accept();
    const bool is_left = event->button() == Qt::LeftButton;
    const Qt::KeyboardModifiers modifiers = event->modifiers();
    const QPoint point = tolv_get_local_position(*event);
    if (is_left && (m_tool == TOOL_PAN || modifiers == (Qt::ControlModifier | Qt::ShiftModifier)))
        begin_pan(tolv_get_global_position(*event));
    else if (is_left && modifiers == Qt::NoModifier)
        run_stroke(point);
    else if (m_tool == TOOL_SELECT && is_left)
        click(point, modifiers == Qt::ControlModifier);
    else if (m_tool == TOOL_ZOOM && (is_left || event->button() == Qt::RightButton))
        zoom_by(is_left == ((modifiers & Qt::ShiftModifier) != 0) ? 1 / STEP : STEP, point);
}

/// The stroke runs an event loop, in which the view can go away.
void HIERARCHY_GRAPH_VIEW::run_stroke(const QPoint& start)
{
    const QPointer<HIERARCHY_GRAPH_VIEW> self(this);
    HIERARCHY_GRAPH_STROKE stroke(viewport(), start, m_tool == TOOL_ZOOM ? tr("zoom in") : tr("select"));
    const HIERARCHY_GRAPH_STROKE::COMMAND command = stroke.run();
    if (self == nullptr)
        return;
    const QRectF rect = mapToScene(stroke.get_rect()).boundingRect();
    switch (command)
    {
    case HIERARCHY_GRAPH_STROKE::COMMAND_CLICK:
        if (m_tool == TOOL_ZOOM)
            zoom_by(STEP, start);
        else
            click(start, false);
        break;
    case HIERARCHY_GRAPH_STROKE::COMMAND_RECTANGLE:
        if (m_tool == TOOL_ZOOM)
            focus_on_scene_rect(rect);
        else
            m_scene->select_within(rect);
        break;
    case HIERARCHY_GRAPH_STROKE::COMMAND_ZOOM_OUT:
        zoom_by(1 / stroke.get_factor());
        break;
    case HIERARCHY_GRAPH_STROKE::COMMAND_ZOOM_IN:
        zoom_by(stroke.get_factor());
        break;
    case HIERARCHY_GRAPH_STROKE::COMMAND_ZOOM_FIT:
        zoom_fit();
        break;
    case HIERARCHY_GRAPH_STROKE::COMMAND_NONE:
        break;
    }
}

void HIERARCHY_GRAPH_VIEW::begin_pan(const QPoint& global)
{
    m_is_panning = true;
    m_pan_start = global;
    m_pan_values = QPoint(horizontalScrollBar()->value(), verticalScrollBar()->value());
    update_cursor();
}

void HIERARCHY_GRAPH_VIEW::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_is_panning)
    {
        TOLV_GRAPHICS_VIEW::mouseMoveEvent(event);
        return;
    }
    const QPoint values = m_pan_values + m_pan_start - tolv_get_global_position(*event);
    horizontalScrollBar()->setValue(values.x());
    verticalScrollBar()->setValue(values.y());
}

void HIERARCHY_GRAPH_VIEW::mouseReleaseEvent(QMouseEvent* event)
{
    event->accept();
    m_is_panning = false;
    update_cursor();
}

void HIERARCHY_GRAPH_VIEW::mouseDoubleClickEvent(QMouseEvent* event)
{
    event->accept();
    const QPoint point = tolv_get_local_position(*event);
    if (m_tool == TOOL_SELECT && event->button() == Qt::LeftButton)
        activate(m_scene->find_node(mapToScene(point)));
    else
        mousePressEvent(event);
}

void HIERARCHY_GRAPH_VIEW::click(const QPoint& point, bool is_more)
{
    const std::uint32_t node = m_scene->find_node(mapToScene(point));
    if (node == HIERARCHY_GRAPH::NONE)
        m_scene->select({});
    else if (is_more)
        m_scene->toggle(node);
    else
        m_scene->select({node});
}

void HIERARCHY_GRAPH_VIEW::activate(std::uint32_t node)
{
    if (node != HIERARCHY_GRAPH::NONE)
        emit module_activated(int(get_graph()->get_nodes()[node].module));
}

void HIERARCHY_GRAPH_VIEW::wheelEvent(QWheelEvent* event)
{
    event->accept();
    if ((event->modifiers() & Qt::ControlModifier) == 0)
    {
        scroll_by_wheel(*event);
        return;
    }
    // With Alt, Qt takes a turn for one to the side.
    const QPoint delta = event->angleDelta();
    const double step = (event->modifiers() & Qt::AltModifier) != 0 ? FINE_STEP : STEP;
    zoom_by((delta.y() != 0 ? delta.y() : delta.x()) > 0 ? step : 1 / step, tolv_round_position(event->position()));
}

void HIERARCHY_GRAPH_VIEW::scroll_by_wheel(const QWheelEvent& event)
{
    const QPoint delta = event.angleDelta();
    const bool is_fine = (event.modifiers() & Qt::AltModifier) != 0;
    const bool is_sideways = (event.modifiers() & Qt::ShiftModifier) != 0 || (!is_fine && delta.y() == 0);
    QScrollBar* const bar = is_sideways ? horizontalScrollBar() : verticalScrollBar();
    const int turn = delta.y() != 0 ? delta.y() : delta.x();
    bar->setValue(bar->value() -
                  bar->singleStep() * turn * STEPS_PER_NOTCH / (is_fine ? FINE_WHEEL_NOTCH : WHEEL_NOTCH));
}

void HIERARCHY_GRAPH_VIEW::keyPressEvent(QKeyEvent* event)
{
    if (get_graph() == nullptr)
    {
        TOLV_GRAPHICS_VIEW::keyPressEvent(event);
        return;
    }
    const std::vector<std::uint32_t>& selection = m_scene->get_selection();
    if (event->matches(QKeySequence::SelectAll))
        m_scene->select_within(sceneRect());
    else if (event->key() == Qt::Key_Escape && !selection.empty())
        m_scene->select({});
    else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && selection.size() == 1)
        activate(selection.front());
    else if (event->modifiers() != Qt::NoModifier || !go(event->key()))
        TOLV_GRAPHICS_VIEW::keyPressEvent(event);
}

/// Goes on by an arrow key. False for other keys.
bool HIERARCHY_GRAPH_VIEW::go(int key)
{
    if (key != Qt::Key_Left && key != Qt::Key_Right && key != Qt::Key_Up && key != Qt::Key_Down)
        return false;
    const std::vector<std::uint32_t>& selection = m_scene->get_selection();
    std::uint32_t next = selection.empty() ? m_scene->get_current_node() : find_neighbour(selection.front(), key);
    if (next == HIERARCHY_GRAPH::NONE && selection.empty())
        next = 0;
    if (next == HIERARCHY_GRAPH::NONE)
        return true;
    m_scene->select({next});
    ensureVisible(get_graph()->get_nodes()[next].rect, REVEAL_MARGIN, REVEAL_MARGIN);
    return true;
}

/// The next module along an edge, or in the column; NONE for none.
std::uint32_t HIERARCHY_GRAPH_VIEW::find_neighbour(std::uint32_t node, int key) const
{
    const std::vector<HIERARCHY_GRAPH::NODE>& nodes = get_graph()->get_nodes();
    const QPointF from = nodes[node].rect.center();
    const auto get_distance = [&](std::uint32_t other) { return std::abs(nodes[other].rect.center().y() - from.y()); };
    std::vector<std::uint32_t> candidates;
    if (key == Qt::Key_Left)
        candidates = nodes[node].parents;
    else if (key == Qt::Key_Right)
        candidates = nodes[node].children;
    for (std::uint32_t i = 0; (key == Qt::Key_Up || key == Qt::Key_Down) && i < nodes.size(); ++i)
    {
        const QPointF centre = nodes[i].rect.center();
        // Boxes of a column stand above each other with their middles, but for what rounding does.
        if (std::abs(centre.x() - from.x()) <= 1 && (key == Qt::Key_Up ? centre.y() < from.y() : centre.y() > from.y()))
            candidates.push_back(i);
    }
    const auto nearest =
        std::min_element(candidates.begin(), candidates.end(),
                         [&](std::uint32_t a, std::uint32_t b) { return get_distance(a) < get_distance(b); });
    return nearest != candidates.end() ? *nearest : HIERARCHY_GRAPH::NONE;
}

/// For those who do not see it.
void HIERARCHY_GRAPH_VIEW::describe_selection()
{
    const std::vector<std::uint32_t>& selection = m_scene->get_selection();
    if (selection.size() == 1)
    {
        const HIERARCHY_GRAPH::NODE& node = get_graph()->get_nodes()[selection.front()];
        setAccessibleDescription(tr("%1, %2").arg(node.name, node.details));
    }
    else
    {
        setAccessibleDescription(selection.empty() ? QString() : tr("%1 modules").arg(selection.size()));
    }
    emit selection_changed();
}
