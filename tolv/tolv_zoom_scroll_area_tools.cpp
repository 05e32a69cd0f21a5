#include "tolv_zoom_scroll_area.h"

#include "tolv_birds_eye_view.h"
#include "tolv_drag_tracker.h"
#include "tolv_image.h"
#include "tolv_magnifying_glass_widget.h"
#include "tolv_mem.h"
#include "tolv_mouse_gesture_widget.h"
#include "tolv_view.h"
#include "tolv_view_arithmetic.h"
#include "tolv_zoom_drag.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QDragMoveEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

// The tools of the scroll area, and what mouse and keys do with them.

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

// ---- Tools ----------------------------------------------------------------------------------------------------------

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

/// Where the release of the button will not be seen: with another tool, or with the view off the screen.
void TOLV_ZOOM_SCROLL_AREA::end_pan()
{
    if (m_panning)
        pan_view(QEvent::MouseButtonRelease, QPoint());
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
        const QSize span = tolv_get_span(rect); // of a drag given up by Escape (-1, -1): a click, too; this is meant
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

// ---- Events of the view ---------------------------------------------------------------------------------------------

bool TOLV_ZOOM_SCROLL_AREA::eventFilter(QObject* obj, QEvent* e)
{
    if (obj != m_view || m_view == nullptr)
        return QScrollArea::eventFilter(obj, e);
    if (e->type() == QEvent::Resize || e->type() == QEvent::Paint)
        follow_view(e);
    else if (e->type() == QEvent::Hide)
        end_pan();
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

void TOLV_ZOOM_SCROLL_AREA::follow_view(QEvent* e)
{
    if (e->type() == QEvent::Paint && m_birds_eye_view != nullptr)
        m_birds_eye_view->update();
    QScrollArea::eventFilter(m_view, e); // brings the scroll bars in line with the size
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
