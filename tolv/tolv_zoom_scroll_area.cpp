#include "tolv_zoom_scroll_area.h"

#include "tolv_birds_eye_view.h"
#include "tolv_check.h"
#include "tolv_create_action.h"
#include "tolv_drag_tracker.h"
#include "tolv_global.h"
#include "tolv_image.h"
#include "tolv_magnifying_glass_widget.h"
#include "tolv_mem.h"
#include "tolv_mouse_gesture_widget.h"
#include "tolv_set_zoom_dlg.h"
#include "tolv_tool_bar.h"
#include "tolv_view.h"
#include "tolv_view_arithmetic.h"
#include "tolv_zoom_drag.h"

#include <QAction>
#include <QActionGroup>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QCursor>
#include <QDragMoveEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>

TOLV_MEM_INITIALIZER();

namespace
{
constexpr float STANDARD_STEP = 1.25F;
constexpr float FINE_STEP = 1.01F;
/// Single steps for each key, and for each notch of the wheel.
constexpr int STEPS_PER_KEY = 3;
constexpr int STEPS_PER_NOTCH = 3;
/// What an event of the wheel is divided by: a notch is 120.
constexpr int NOTCH = 120;
constexpr int FINE_NOTCH = 3000;
/// A drag that spans less than this in both directions is a click.
constexpr int SHORTEST_DRAG = 10;
/// What stays visible around the pointer while data is dragged.
constexpr int DRAG_MOVE_MARGIN = 50;
/// More steps than any zoom needs that comes to an end at all.
constexpr int MOST_STEPS_TO_SELECTION = 64;

bool is_mouse_event(const QEvent& e)
{
    return e.type() == QEvent::MouseButtonPress || e.type() == QEvent::MouseButtonRelease ||
           e.type() == QEvent::MouseButtonDblClick || e.type() == QEvent::MouseMove;
}

/// Whether a press in zoom mode zooms in; if not, it zooms out.
bool is_zoom_in_gesture(const QMouseEvent& e)
{
    return (e.button() == Qt::RightButton) == e.modifiers().testFlag(Qt::ShiftModifier);
}

/// Whether the release of a key scrolls. Its press is taken, too, so that nobody else acts on it.
bool is_scroll_key(int key)
{
    return key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Up || key == Qt::Key_Down ||
           key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

/// The turn of the wheel. While Alt is held, the window system turns the axes round, and a notch comes as one to the
/// side.
int get_wheel_delta(const QWheelEvent& e)
{
    const QPoint delta = e.angleDelta();
    return delta.y() == 0 && e.modifiers().testFlag(Qt::AltModifier) ? delta.x() : delta.y();
}
} // namespace

// ---- Construction ---------------------------------------------------------------------------------------------------

TOLV_ZOOM_SCROLL_AREA::TOLV_ZOOM_SCROLL_AREA(QWidget* parent)
    : QScrollArea(parent), m_zoom_tool_action(tolv_create_action(TOLV_ZOOM_TOOL_ACTION, this)),
      m_pan_tool_action(tolv_create_action(TOLV_PAN_TOOL_ACTION, this)),
      m_zoom_fit_action(tolv_create_action(TOLV_ZOOM_FIT_ACTION, this)),
      m_zoom_selection_action(tolv_create_action(TOLV_ZOOM_SELECTION_ACTION, this)),
      m_zoom_in_action(tolv_create_action(TOLV_ZOOM_IN_ACTION, this)),
      m_zoom_out_action(tolv_create_action(TOLV_ZOOM_OUT_ACTION, this)),
      m_magnifying_tool_action(tolv_create_action(TOLV_MAGNIFYING_TOOL_ACTION, this)),
      m_zoom_dialog_action(tolv_create_action(TOLV_ZOOM_ACTION, this)),
      m_birds_eye_view_action(tolv_create_action(TOLV_BIRDS_EYE_VIEW_ACTION, this))
{
    TOLV_SAFE_CONNECT(m_zoom_in_action, SIGNAL(triggered()), this, SLOT(zoom_in()));
    TOLV_SAFE_CONNECT(m_zoom_out_action, SIGNAL(triggered()), this, SLOT(zoom_out()));
    TOLV_SAFE_CONNECT(m_zoom_fit_action, SIGNAL(triggered()), this, SLOT(zoom_fit()));
    TOLV_SAFE_CONNECT(m_zoom_dialog_action, SIGNAL(triggered()), this, SLOT(open_set_zoom_dlg()));
    TOLV_SAFE_CONNECT(m_zoom_selection_action, SIGNAL(triggered()), this, SLOT(zoom_selected()));
}

TOLV_ZOOM_SCROLL_AREA::~TOLV_ZOOM_SCROLL_AREA() = default;

void TOLV_ZOOM_SCROLL_AREA::set_view(TOLV_VIEW* view, bool has_birds_eye_view)
{
    TOLV_CHECK_TEXT(view != nullptr, "view != NULL");
    if (view == nullptr)
        return;
    m_view = view;
    if (view->parentWidget() == nullptr || view->parentWidget() == this)
    {
        setWidget(view);
        setWidgetResizable(true);
    }
    view->installEventFilter(this);
    m_magnifying_tool_action->setVisible(has_birds_eye_view);
    m_birds_eye_view_action->setVisible(has_birds_eye_view);
    delete m_birds_eye_view.data(); // of a view before this one
    if (has_birds_eye_view)
        create_birds_eye_view();
}

TOLV_VIEW* TOLV_ZOOM_SCROLL_AREA::get_view() const
{
    return m_view;
}

TOLV_BIRDS_EYE_VIEW* TOLV_ZOOM_SCROLL_AREA::get_birds_eye_view() const
{
    return m_birds_eye_view;
}

void TOLV_ZOOM_SCROLL_AREA::hide_birds_eye_view() const
{
    if (m_birds_eye_view != nullptr)
        m_birds_eye_view->hide();
}

void TOLV_ZOOM_SCROLL_AREA::create_birds_eye_view()
{
    m_birds_eye_view = new TOLV_BIRDS_EYE_VIEW(this, m_view);
    m_birds_eye_view->hide();
    m_birds_eye_view_action->setChecked(false);
    TOLV_BIRDS_EYE_VIEW* const dock = m_birds_eye_view;
    connect(m_birds_eye_view_action, &QAction::triggered, dock,
            [this, dock] { dock->set_visible_and_raise(m_birds_eye_view_action); });
    TOLV_SAFE_CONNECT(dock, SIGNAL(dock_widget_active_state_changed(bool)), m_birds_eye_view_action,
                      SLOT(setChecked(bool)));
    TOLV_SAFE_CONNECT(m_view.data(), SIGNAL(update_birds_eye_view_size()), dock, SLOT(update_geometry()));
}

QAction* TOLV_ZOOM_SCROLL_AREA::get_action(TOLV_ACTION_ENUM action) const
{
    switch (action)
    {
    case TOLV_ZOOM_TOOL_ACTION:
        return m_zoom_tool_action;
    case TOLV_PAN_TOOL_ACTION:
        return m_pan_tool_action;
    case TOLV_ZOOM_FIT_ACTION:
        return m_zoom_fit_action;
    case TOLV_ZOOM_SELECTION_ACTION:
        return m_zoom_selection_action;
    case TOLV_ZOOM_IN_ACTION:
        return m_zoom_in_action;
    case TOLV_ZOOM_OUT_ACTION:
        return m_zoom_out_action;
    case TOLV_MAGNIFYING_TOOL_ACTION:
        return m_magnifying_tool_action;
    case TOLV_ZOOM_ACTION:
        return m_zoom_dialog_action;
    case TOLV_BIRDS_EYE_VIEW_ACTION:
        return m_birds_eye_view_action;
    default:
        return nullptr;
    }
}

QList<QAction*> TOLV_ZOOM_SCROLL_AREA::get_actions() const
{
    return {m_zoom_tool_action,       m_pan_tool_action,    m_zoom_fit_action,
            m_zoom_selection_action,  m_zoom_in_action,     m_zoom_out_action,
            m_magnifying_tool_action, m_zoom_dialog_action, m_birds_eye_view_action};
}

QList<QAction*> TOLV_ZOOM_SCROLL_AREA::get_tool_actions() const
{
    return {m_zoom_tool_action, m_magnifying_tool_action, m_pan_tool_action};
}

QList<QAction*> TOLV_ZOOM_SCROLL_AREA::get_zoom_actions() const
{
    return {m_zoom_in_action, m_zoom_out_action, m_zoom_dialog_action, m_zoom_fit_action, m_zoom_selection_action};
}

void TOLV_ZOOM_SCROLL_AREA::set_enabled(bool enabled)
{
    setEnabled(enabled);
    const QList<QAction*> actions = get_actions();
    for (QAction* const action : actions)
        action->setEnabled(enabled);
}

void TOLV_ZOOM_SCROLL_AREA::show_actions(bool visible)
{
    const QList<QAction*> actions = get_actions();
    for (QAction* const action : actions)
        action->setVisible(visible);
}

void TOLV_ZOOM_SCROLL_AREA::insert_modes(QActionGroup* group)
{
    if (group == nullptr)
        return;
    const QList<QAction*> actions = get_tool_actions();
    for (QAction* const action : actions)
        group->addAction(action);
    TOLV_SAFE_CONNECT(group, SIGNAL(triggered(QAction*)), this, SLOT(on_switch_mode(QAction*)));
}

void TOLV_ZOOM_SCROLL_AREA::remove_modes(QActionGroup* group)
{
    if (group == nullptr)
        return;
    const QList<QAction*> actions = get_tool_actions();
    for (QAction* const action : actions)
        group->removeAction(action);
}

void TOLV_ZOOM_SCROLL_AREA::add_mode_actions(TOLV_TOOL_BAR* bar)
{
    TOLV_CHECK_TEXT(bar != nullptr, "bar != NULL");
    if (bar != nullptr)
        bar->addActions(get_tool_actions());
}

void TOLV_ZOOM_SCROLL_AREA::remove_mode_actions(TOLV_TOOL_BAR* bar)
{
    TOLV_CHECK_TEXT(bar != nullptr, "bar != NULL");
    if (bar == nullptr)
        return;
    const QList<QAction*> actions = get_tool_actions();
    for (QAction* const action : actions)
        bar->removeAction(action);
}

void TOLV_ZOOM_SCROLL_AREA::insert_actions(QWidget* widget, QAction* before)
{
    if (widget != nullptr)
        widget->insertActions(before, get_zoom_actions());
}

void TOLV_ZOOM_SCROLL_AREA::remove_actions(QWidget* widget)
{
    if (widget == nullptr)
        return;
    const QList<QAction*> actions = get_zoom_actions();
    for (QAction* const action : actions)
        widget->removeAction(action);
}

bool TOLV_ZOOM_SCROLL_AREA::is_zoom_drag_enabled() const
{
    return m_zoom_drag_enabled;
}

void TOLV_ZOOM_SCROLL_AREA::set_zoom_drag_enabled(bool enabled)
{
    m_zoom_drag_enabled = enabled;
}

bool TOLV_ZOOM_SCROLL_AREA::is_scroll_on_drag_move() const
{
    return m_scroll_on_drag_move;
}

void TOLV_ZOOM_SCROLL_AREA::set_scroll_on_drag_move(bool enabled)
{
    m_scroll_on_drag_move = enabled;
}

QPoint TOLV_ZOOM_SCROLL_AREA::map_coord_from_scroll_area_to_view(QPoint point) const
{
    return point + QPoint(horizontalScrollBar()->value(), verticalScrollBar()->value());
}

bool TOLV_ZOOM_SCROLL_AREA::current_mode_supports_mouse_gesture(const QPoint& point) const
{
    if (m_pan_tool_action->isChecked() || m_magnifying_tool_action->isChecked())
        return false;
    return m_view != nullptr && m_view->current_mode_supports_mouse_gesture(point);
}

void TOLV_ZOOM_SCROLL_AREA::send_fake_mouse_event()
{
    if (m_view == nullptr)
        return;
    const QPoint global = QCursor::pos();
    QCoreApplication::postEvent(m_view, new QMouseEvent(QEvent::MouseMove, m_view->mapFromGlobal(global),
                                                        m_view->window()->mapFromGlobal(global), global, Qt::NoButton,
                                                        Qt::NoButton, Qt::NoModifier));
}

// ---- Zoom to rectangles ---------------------------------------------------------------------------------------------

void TOLV_ZOOM_SCROLL_AREA::zoom_on_logical_rect(const QRect& rect)
{
    check_rect(rect);
    QSize max_size = maximumViewportSize();
    if (verticalScrollBar() != nullptr)
        max_size.rwidth() -= verticalScrollBar()->width();
    if (horizontalScrollBar() != nullptr)
        max_size.rheight() -= horizontalScrollBar()->height();
    TOLV_CHECK(max_size.width() > 0 && max_size.height() > 0);
    set_fit_zoom(rect, max_size);
    set_scroll_maxima();
    scroll_to_centre(m_view->get_physical(rect), max_size);
    finish_zoom();
}

void TOLV_ZOOM_SCROLL_AREA::scroll_to_logical_rect(const QRect& rect)
{
    check_rect(rect);
    const QSize max_size = maximumViewportSize();
    TOLV_CHECK(max_size.width() > 0 && max_size.height() > 0);
    scroll_to_centre(m_view->get_physical(rect), max_size);
    m_view->update();
}

void TOLV_ZOOM_SCROLL_AREA::zoom_rect(const QRect& rect)
{
    check_rect(rect);
    const QRect logical = m_view->get_logical(rect);
    set_fit_zoom(logical, get_max_size());
    set_scroll_maxima();
    scroll_to_centre(m_view->get_physical(logical), get_page_size());
    finish_zoom();
}

void TOLV_ZOOM_SCROLL_AREA::zoom_out_rect(const QRect& rect)
{
    check_rect(rect);
    const QSize max_size = get_max_size();
    const QRect logical = m_view->get_logical(rect);
    // Not divided by the scaling, unlike in zoom_rect(); this is meant.
    m_view->set_zoom(std::max(float(logical.width() + 1) / float(max_size.width()),
                              float(logical.height() + 1) / float(max_size.height())));
    set_scroll_maxima();
    const QPoint top_left = m_view->get_physical(logical).topLeft();
    verticalScrollBar()->setValue(top_left.y());
    horizontalScrollBar()->setValue(top_left.x());
    finish_zoom();
}

void TOLV_ZOOM_SCROLL_AREA::zoom_selected()
{
    TOLV_CHECK_TEXT(m_view != nullptr, "m_view != NULL");
    const QRect selected = m_view->get_selected_rect();
    if (!selected.isValid())
        return;
    zoom_until_visible(selected);
    const QRect physical = m_view->get_physical(selected);
    if (physical.isValid())
        zoom_rect(physical);
}

void TOLV_ZOOM_SCROLL_AREA::zoom_until_visible(const QRect& logical)
{
    float step = 1.1F;
    for (int i = 0; i < MOST_STEPS_TO_SELECTION && !m_view->get_physical(logical).isValid(); ++i)
    {
        step = step / m_view->get_zoom_level();
        zoom_in(nullptr, step);
    }
    // Steps about a scaling that is far off can go to and fro for ever, and the maximum can be too low.
    if (!m_view->get_physical(logical).isValid())
        set_fit_zoom(logical, get_max_size());
}

void TOLV_ZOOM_SCROLL_AREA::set_fit_zoom(const QRect& logical, const QSize& max_size)
{
    const float factor = std::min(float(max_size.width() + 1) / float(logical.width()),
                                  float(max_size.height() + 1) / float(logical.height()));
    m_view->set_zoom(factor / m_view->get_zoom_scaling());
}

void TOLV_ZOOM_SCROLL_AREA::set_scroll_maxima()
{
    verticalScrollBar()->setMaximum(m_view->height());
    horizontalScrollBar()->setMaximum(m_view->width());
}

void TOLV_ZOOM_SCROLL_AREA::scroll_to_centre(const QRect& physical, const QSize& visible_size)
{
    verticalScrollBar()->setValue(physical.top() - (visible_size.height() - physical.height()) / 2);
    horizontalScrollBar()->setValue(physical.left() - (visible_size.width() - physical.width()) / 2);
}

QSize TOLV_ZOOM_SCROLL_AREA::get_page_size() const
{
    return {horizontalScrollBar()->pageStep(), verticalScrollBar()->pageStep()};
}

QSize TOLV_ZOOM_SCROLL_AREA::get_max_size() const
{
    return maximumViewportSize().expandedTo(QSize(0, 0)); // an area that is squeezed flat has less than nothing
}

void TOLV_ZOOM_SCROLL_AREA::check_rect(const QRect& rect) const
{
    TOLV_CHECK_TEXT(m_view != nullptr, "m_view != NULL");
    TOLV_CHECK(rect.isNull() == false);
    TOLV_CHECK(rect.isEmpty() == false);
}

void TOLV_ZOOM_SCROLL_AREA::finish_zoom()
{
    emit zoom_level_changed(m_view->get_zoom_level());
    if (m_view != nullptr)
        m_view->update();
}

// ---- Tools and steps ------------------------------------------------------------------------------------------------

void TOLV_ZOOM_SCROLL_AREA::on_switch_mode(QAction* action)
{
    if (m_view == nullptr)
        return;
    if (action == m_zoom_tool_action)
        m_view->setCursor(tolv_get_cursor(QGuiApplication::keyboardModifiers().testFlag(Qt::ShiftModifier)
                                              ? TOLV_ZOOM_OUT_CURSOR
                                              : TOLV_ZOOM_IN_CURSOR));
    else if (action == m_pan_tool_action)
        m_view->setCursor(Qt::OpenHandCursor);
    else if (action == m_magnifying_tool_action)
        m_view->setCursor(tolv_get_cursor(TOLV_MAGNIFYING_CURSOR));
}

void TOLV_ZOOM_SCROLL_AREA::zoom_in(QPoint* p, float delta)
{
    TOLV_CHECK_TEXT(m_view != nullptr, "m_view != NULL");
    TOLV_CHECK(delta != 0);
    QScrollBar* const h = horizontalScrollBar();
    QScrollBar* const v = verticalScrollBar();
    const QPoint centre(h->value() + h->pageStep() / 2, v->value() + v->pageStep() / 2);
    const bool is_about_pointer = p == nullptr && m_view->testAttribute(Qt::WA_UnderMouse);
    QPoint anchor = p != nullptr ? *p : centre;
    if (is_about_pointer)
    {
        anchor = m_view->mapFromGlobal(QCursor::pos());
        m_logical_anchor = m_view->get_logical(anchor);
    }
    const QPoint offset = centre - anchor;

    // The page steps are crossed; this is meant.
    const int h_size = h->maximum() + v->pageStep();
    const int v_size = v->maximum() + h->pageStep();
    // The ratio that was really applied: at the limits another one than was asked for.
    const float factor = delta > 1.0F ? m_view->zoom_in(delta) : 1.0F / m_view->zoom_out(1.0F / delta);
    h->setMaximum(tolv_truncate(float(h_size) * factor));
    v->setMaximum(tolv_truncate(float(v_size) * factor));
    anchor = QPoint(tolv_round(float(anchor.x()) * factor), tolv_round(float(anchor.y()) * factor));
    h->setValue(anchor.x() - h->pageStep() / 2 + offset.x());
    v->setValue(anchor.y() - v->pageStep() / 2 + offset.y());

    finish_zoom();
    send_fake_mouse_event();
    if (is_about_pointer)
        adjust_cursor_later();
}

void TOLV_ZOOM_SCROLL_AREA::zoom_out(QPoint* p, float delta)
{
    TOLV_CHECK(delta != 0);
    zoom_in(p, float(1.0 / delta));
}

void TOLV_ZOOM_SCROLL_AREA::zoom_fit()
{
    TOLV_CHECK_TEXT(m_view != nullptr, "m_view != NULL");
    m_view->zoom_fit(maximumViewportSize());
    finish_zoom();
}

bool TOLV_ZOOM_SCROLL_AREA::pan_view(QEvent::Type event_type, QPoint point, Qt::MouseButtons mouse_button)
{
    switch (event_type)
    {
    case QEvent::MouseButtonPress:
        m_mouse_position = point;
        m_pan_start_h = horizontalScrollBar()->value();
        m_pan_start_v = verticalScrollBar()->value();
        if (mouse_button == Qt::LeftButton)
        {
            m_panning = true;
            if (m_view != nullptr)
                m_view->setCursor(Qt::ClosedHandCursor);
        }
        return true;
    case QEvent::MouseMove:
        if (m_panning)
        {
            horizontalScrollBar()->setValue(m_mouse_position.x() - point.x() + m_pan_start_h);
            verticalScrollBar()->setValue(m_mouse_position.y() - point.y() + m_pan_start_v);
        }
        return true;
    case QEvent::MouseButtonRelease:
        m_panning = false;
        if (m_view != nullptr)
            m_view->setCursor(Qt::OpenHandCursor);
        return true;
    case QEvent::ContextMenu:
        return true;
    default:
        return false;
    }
}

void TOLV_ZOOM_SCROLL_AREA::zoom_mode_no_mouse_gesture(QMouseEvent* mouse_event, bool show_right_click_rect)
{
    if (m_view == nullptr)
        return;
    const bool zooms_in = is_zoom_in_gesture(*mouse_event);
    if (!zooms_in && show_right_click_rect)
    {
        const QPointer<TOLV_ZOOM_SCROLL_AREA> self(this);
        const bool was_visible = m_view->isVisible();
        const QRect rect = TOLV_DRAG_TRACKER::track_rect(m_view, m_mouse_position, nullptr, 0.0);
        if (self == nullptr || m_view == nullptr || m_view->isVisible() != was_visible)
            return;
        const QSize span = tolv_get_span(rect);
        if (span.width() >= SHORTEST_DRAG || span.height() >= SHORTEST_DRAG)
        {
            zoom_out_rect(rect);
            return;
        }
    }
    m_logical_anchor = m_view->get_logical(tolv_get_local_position(*mouse_event));
    if (zooms_in)
        zoom_in(&m_mouse_position, STANDARD_STEP);
    else
        zoom_out(&m_mouse_position, STANDARD_STEP);
    adjust_cursor_later();
}

void TOLV_ZOOM_SCROLL_AREA::adjust_cursor()
{
    if (m_view == nullptr || !m_view->isVisible())
        return;
    const QPoint global = m_view->mapToGlobal(m_view->get_physical(m_logical_anchor));
    m_view->repaint();
    QCursor::setPos(global);
}

void TOLV_ZOOM_SCROLL_AREA::adjust_cursor_later()
{
    QTimer::singleShot(0, this, &TOLV_ZOOM_SCROLL_AREA::adjust_cursor);
}

void TOLV_ZOOM_SCROLL_AREA::set_zoom(float factor)
{
    TOLV_CHECK_TEXT(m_view != nullptr, "m_view != NULL");
    m_view->set_zoom(factor);
}

void TOLV_ZOOM_SCROLL_AREA::open_set_zoom_dlg()
{
    TOLV_CHECK_TEXT(m_view != nullptr, "m_view != NULL");
    const float scaling = m_view->get_zoom_scaling();
    const QPointer<TOLV_ZOOM_SCROLL_AREA> self(this);
    const QPointer<TOLV_SET_ZOOM_DLG> dialog =
        new TOLV_SET_ZOOM_DLG(100 * m_view->get_zoom_min() / scaling, 100 * m_view->get_zoom_max() / scaling, this);
    select_current_level(*dialog->get_combo_box());
    // The dialog runs an event loop, in which anything here can go away.
    if (dialog->exec() == QDialog::Accepted && self != nullptr && m_view != nullptr && dialog != nullptr)
        apply_chosen_level(dialog->get_current_text(), dialog->get_selected_zoom() / 100);
    delete dialog.data();
}

/// A level that is not in the list is added to it.
void TOLV_ZOOM_SCROLL_AREA::select_current_level(QComboBox& combo_box) const
{
    const QString text = TOLV_SET_ZOOM_DLG::get_percent_text(m_view->get_zoom_level() * 100);
    if (combo_box.findData(text, Qt::DisplayRole, Qt::MatchCaseSensitive) < 0)
    {
        combo_box.setInsertPolicy(QComboBox::InsertAtTop);
        combo_box.insertItem(combo_box.count(), text, QVariant());
    }
    combo_box.setCurrentIndex(combo_box.findData(text, Qt::DisplayRole, Qt::MatchCaseSensitive));
}

void TOLV_ZOOM_SCROLL_AREA::apply_chosen_level(const QString& text, float wanted)
{
    const float current = m_view->get_zoom_level();
    if (text == QLatin1String("Fit in Window"))
        zoom_fit();
    else if (wanted > current)
        zoom_in(nullptr, wanted / current);
    else
        zoom_out(nullptr, current / wanted);
}

// ---- Events of the view ---------------------------------------------------------------------------------------------

bool TOLV_ZOOM_SCROLL_AREA::eventFilter(QObject* obj, QEvent* e)
{
    if (obj != m_view || m_view == nullptr)
        return QScrollArea::eventFilter(obj, e);
    if (e->type() == QEvent::Resize)
        QScrollArea::eventFilter(obj, e); // brings the scroll bars in line
    begin_temporary_pan(*e);
    end_temporary_pan(*e);
    bool is_consumed = false;
    if (m_zoom_tool_action->isChecked())
        is_consumed = zoom_mode_event_filter(e);
    else if (m_pan_tool_action->isChecked())
        is_consumed = pan_mode_event_filter(e);
    else if (m_magnifying_tool_action->isChecked())
        is_consumed = magnifying_mode_event_filter(e);
    else
        is_consumed = no_mode_event_filter(e);
    return is_consumed || other_event_filter(e); // a press consumed may have been the end of this object
}

void TOLV_ZOOM_SCROLL_AREA::begin_temporary_pan(const QEvent& e)
{
    if (e.type() != QEvent::MouseButtonPress)
        return;
    const auto& press = static_cast<const QMouseEvent&>(e);
    if (press.button() == Qt::LeftButton && press.modifiers().testFlag(Qt::ControlModifier) &&
        press.modifiers().testFlag(Qt::ShiftModifier))
        m_pan_tool_action->activate(QAction::Trigger);
}

bool TOLV_ZOOM_SCROLL_AREA::end_temporary_pan(const QEvent& e)
{
    if (e.type() != QEvent::KeyRelease || !m_pan_tool_action->isChecked())
        return false;
    const int key = static_cast<const QKeyEvent&>(e).key();
    if (key != Qt::Key_Shift && key != Qt::Key_Control)
        return false;
    m_pan_tool_action->setChecked(false);
    emit pan_mode_off();
    return true;
}

bool TOLV_ZOOM_SCROLL_AREA::zoom_mode_event_filter(QEvent* e)
{
    switch (e->type())
    {
    case QEvent::MouseButtonPress:
        zoom_mode_press(static_cast<QMouseEvent*>(e));
        return true;
    case QEvent::MouseMove:
        m_mouse_position = tolv_get_local_position(*static_cast<QMouseEvent*>(e));
        return false;
    case QEvent::MouseButtonDblClick:
        zoom_mode_double_click(*static_cast<QMouseEvent*>(e));
        return true;
    case QEvent::KeyPress:
        keyPressEvent(static_cast<QKeyEvent*>(e));
        return true;
    case QEvent::MouseButtonRelease:
    case QEvent::ContextMenu:
        return true;
    default:
        return false;
    }
}

void TOLV_ZOOM_SCROLL_AREA::zoom_mode_press(QMouseEvent* e)
{
    const bool is_drag = (e->button() == Qt::RightButton) != e->modifiers().testFlag(Qt::ControlModifier);
    if (!is_drag || !m_zoom_drag_enabled)
    {
        zoom_mode_mouse_press_event(e, true);
        return;
    }
    m_mouse_position = tolv_get_local_position(*e);
    if (!run_zoom_drag())
        zoom_mode_mouse_press_event(e, false);
}

/// True where the drag has done all there was to do, or was the end of its surroundings.
bool TOLV_ZOOM_SCROLL_AREA::run_zoom_drag()
{
    const QPointer<TOLV_ZOOM_SCROLL_AREA> self(this);
    TOLV_ZOOM_DRAG_WIDGET::start_zoom_drag(this, m_view, m_mouse_position);
    return self == nullptr || m_view == nullptr || TOLV_ZOOM_DRAG_WIDGET::m_use_zoom_drag;
}

void TOLV_ZOOM_SCROLL_AREA::zoom_mode_mouse_press_event(QEvent* e, bool allow_gesture)
{
    auto* const press = static_cast<QMouseEvent*>(e);
    m_mouse_position = tolv_get_local_position(*press);
    const bool zooms_in = is_zoom_in_gesture(*press);
    m_view->setCursor(tolv_get_cursor(zooms_in ? TOLV_ZOOM_IN_CURSOR : TOLV_ZOOM_OUT_CURSOR));
    if (zooms_in && allow_gesture)
    {
        TOLV_MOUSE_GESTURE_WIDGET::show_mouse_gesture(this, m_view, m_mouse_position);
        return;
    }
    zoom_mode_no_mouse_gesture(press, allow_gesture);
}

void TOLV_ZOOM_SCROLL_AREA::zoom_mode_double_click(const QMouseEvent& e)
{
    m_mouse_position = tolv_get_local_position(e);
    if (is_zoom_in_gesture(e))
    {
        m_view->setCursor(tolv_get_cursor(TOLV_ZOOM_IN_CURSOR));
        zoom_in(&m_mouse_position, STANDARD_STEP);
    }
    else
    {
        m_view->setCursor(tolv_get_cursor(TOLV_ZOOM_OUT_CURSOR));
        zoom_out(&m_mouse_position, STANDARD_STEP);
    }
    adjust_cursor_later();
}

bool TOLV_ZOOM_SCROLL_AREA::pan_mode_event_filter(QEvent* e)
{
    QPoint point;
    Qt::MouseButton button = Qt::NoButton;
    if (is_mouse_event(*e))
    {
        const auto& mouse_event = *static_cast<QMouseEvent*>(e);
        point = tolv_get_global_position(mouse_event);
        button = mouse_event.button();
    }
    else if (e->type() == QEvent::ContextMenu)
    {
        point = static_cast<QContextMenuEvent*>(e)->globalPos();
        button = Qt::RightButton;
    }
    return pan_view(e->type(), point, button);
}

bool TOLV_ZOOM_SCROLL_AREA::magnifying_mode_event_filter(QEvent* e)
{
    if (e->type() == QEvent::MouseButtonPress)
    {
        m_mouse_position = tolv_get_global_position(*static_cast<QMouseEvent*>(e));
        TOLV_MAGNIFYING_GLASS_WIDGET::magnifying(this, m_view, m_mouse_position);
        return true;
    }
    return e->type() == QEvent::MouseButtonRelease;
}

bool TOLV_ZOOM_SCROLL_AREA::no_mode_event_filter(QEvent* e)
{
    if (e->type() == QEvent::DragMove && m_scroll_on_drag_move)
    {
        const QPoint position = tolv_round_position(static_cast<QDragMoveEvent*>(e)->posF());
        ensureVisible(position.x(), position.y(), DRAG_MOVE_MARGIN, DRAG_MOVE_MARGIN);
    }
    else if (e->type() == QEvent::Paint && m_birds_eye_view != nullptr)
    {
        m_birds_eye_view->update();
        return QScrollArea::eventFilter(m_view, e);
    }
    return false;
}

bool TOLV_ZOOM_SCROLL_AREA::other_event_filter(QEvent* e)
{
    if (e->type() != QEvent::MouseButtonPress)
        return false;
    auto* const press = static_cast<QMouseEvent*>(e);
    const QPoint position = tolv_get_local_position(*press);
    if (!current_mode_supports_mouse_gesture(position))
        return false;
    if (press->button() == Qt::LeftButton && press->modifiers() == Qt::NoModifier)
    {
        TOLV_SELECTION_MODE_MOUSE_GESTURE_WIDGET::show_mouse_gesture(this, m_view, position);
        return true;
    }
    m_view->selection_mode_no_mouse_gesture(press);
    return true;
}

// ---- Events of the area ---------------------------------------------------------------------------------------------

void TOLV_ZOOM_SCROLL_AREA::wheelEvent(QWheelEvent* e)
{
    e->accept();
    if (e->modifiers().testFlag(Qt::ControlModifier))
        zoom_by_wheel(*e);
    else
        scroll_by_wheel(*e);
    send_fake_mouse_event();
}

void TOLV_ZOOM_SCROLL_AREA::zoom_by_wheel(const QWheelEvent& e)
{
    if (m_view == nullptr)
        return;
    QPoint position = m_view->mapFromGlobal(tolv_round_position(e.globalPosition()));
    m_logical_anchor = m_view->get_logical(position);
    const float step = e.modifiers().testFlag(Qt::AltModifier) ? FINE_STEP : STANDARD_STEP;
    if (get_wheel_delta(e) > 0)
        zoom_in(&position, step);
    else
        zoom_out(&position, step);
    adjust_cursor_later();
}

void TOLV_ZOOM_SCROLL_AREA::scroll_by_wheel(const QWheelEvent& e)
{
    const bool is_horizontal = QGuiApplication::keyboardModifiers().testFlag(Qt::ShiftModifier);
    QScrollBar* const bar = is_horizontal ? horizontalScrollBar() : verticalScrollBar();
    const int divisor = e.modifiers().testFlag(Qt::AltModifier) ? FINE_NOTCH : NOTCH;
    bar->setSliderPosition(bar->sliderPosition() - bar->singleStep() * get_wheel_delta(e) * STEPS_PER_NOTCH / divisor);
}

void TOLV_ZOOM_SCROLL_AREA::keyPressEvent(QKeyEvent* e)
{
    const bool is_zoom_out = m_zoom_tool_action->isChecked() && e->key() == Qt::Key_Shift;
    if (m_view != nullptr && is_zoom_out)
        m_view->setCursor(tolv_get_cursor(TOLV_ZOOM_OUT_CURSOR));
    e->setAccepted(is_zoom_out || is_scroll_key(e->key()));
}

void TOLV_ZOOM_SCROLL_AREA::keyReleaseEvent(QKeyEvent* e)
{
    if (end_temporary_pan(*e))
        return;
    if (m_zoom_tool_action->isChecked() && e->key() == Qt::Key_Shift)
    {
        if (m_view != nullptr)
            m_view->setCursor(tolv_get_cursor(TOLV_ZOOM_IN_CURSOR));
        send_fake_mouse_event();
        return;
    }
    e->setAccepted(is_scroll_key(e->key()));
    if (!e->isAccepted() || e->isAutoRepeat()) // a key that is held repeats its release
        return;
    scroll_by_key(*e);
    send_fake_mouse_event();
}

void TOLV_ZOOM_SCROLL_AREA::scroll_by_key(const QKeyEvent& e)
{
    QScrollBar* const h = horizontalScrollBar();
    QScrollBar* const v = verticalScrollBar();
    QScrollBar* const paged = e.modifiers().testFlag(Qt::ShiftModifier) ? h : v;
    switch (e.key())
    {
    case Qt::Key_Left:
        h->setSliderPosition(h->sliderPosition() - STEPS_PER_KEY * h->singleStep());
        break;
    case Qt::Key_Right:
        h->setSliderPosition(h->sliderPosition() + STEPS_PER_KEY * h->singleStep());
        break;
    case Qt::Key_Up:
        v->setSliderPosition(v->sliderPosition() - STEPS_PER_KEY * v->singleStep());
        break;
    case Qt::Key_Down:
        v->setSliderPosition(v->sliderPosition() + STEPS_PER_KEY * v->singleStep());
        break;
    case Qt::Key_PageUp:
        paged->triggerAction(QAbstractSlider::SliderPageStepSub);
        break;
    case Qt::Key_PageDown:
        paged->triggerAction(QAbstractSlider::SliderPageStepAdd);
        break;
    default:
        break;
    }
}

void TOLV_ZOOM_SCROLL_AREA::resizeEvent(QResizeEvent* e)
{
    QScrollArea::resizeEvent(e);
    if (m_birds_eye_view != nullptr && m_view != nullptr)
        m_birds_eye_view->update_geometry();
    if (m_view != nullptr)
        m_view->update_transform();
}
