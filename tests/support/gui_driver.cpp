#include "gui_driver.h"

#include "x11_pointer.h"

#include <QApplication>
#include <QCursor>
#include <QDragEnterEvent>
#include <QElapsedTimer>
#include <QMimeData>
#include <QPointer>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>
#include <QtTest/QtTest>

#include <cmath>

namespace
{
/// The pointer as the driver has left it.
struct POINTER
{
    Qt::MouseButtons buttons;
    QPointer<QWindow> grabber; // the window of the press, which gets all until the release

    static POINTER& get()
    {
        static POINTER* const pointer = new POINTER;
        return *pointer;
    }
};

/// Delivers an event as the platform does: as one that comes from outside. Qt passes on only such wheel events to
/// parents.
void send_spontaneous(QObject* receiver, QEvent* event)
{
    QSpontaneKeyEvent::setSpontaneous(event);
    qApp->notify(receiver, event);
}

/// Keeps away what setting the cursor's position does besides: the offscreen platform tells windows that the pointer
/// has left or entered them by geometry alone, without regard to a held button or to the window on top. cross_to() says
/// it rightly.
class CROSSING_FILTER : public QObject
{
public:
    static CROSSING_FILTER& get()
    {
        static CROSSING_FILTER* const filter = new CROSSING_FILTER;
        return *filter;
    }

    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        if (!receiver->isWindowType())
            return false;
        if (event->type() == QEvent::Hide && receiver == m_inside)
            m_inside = nullptr;
        return m_active && (event->type() == QEvent::Enter || event->type() == QEvent::Leave);
    }

    bool set_active(bool active)
    {
        const bool was_active = m_active;
        m_active = active;
        if (active)
            qApp->installEventFilter(this); // in front of all others
        return was_active;
    }

    /// The pointer is over another window: the events of leaving and entering.
    void cross_to(QWindow* window, const QPoint& global_position)
    {
        if (window == m_inside)
            return;
        const bool was_active = set_active(false);
        if (m_inside != nullptr)
        {
            QEvent leave(QEvent::Leave);
            send_spontaneous(m_inside, &leave);
        }
        m_inside = window;
        const QPoint position = window->mapFromGlobal(global_position);
        QEnterEvent enter(position, position, global_position);
        send_spontaneous(window, &enter);
        set_active(was_active);
    }

private:
    bool m_active = false;
    QPointer<QWindow> m_inside;
};

bool is_offscreen()
{
    return QGuiApplication::platformName() == QLatin1String("offscreen");
}

/// Under a window system the pointer is the system's own, and a move of it while a button is held only in our events
/// would come back as a move without buttons. The system tells of the move later than it makes it: all of it is waited
/// for, because what came behind the driver's own events would lead the pointer away again.
void set_cursor(const QPoint& global_position)
{
    if (is_offscreen())
    {
        QCursor::setPos(global_position);
        return;
    }
    if (POINTER::get().buttons != Qt::NoButton || QCursor::pos() == global_position)
        return;
    QCursor::setPos(global_position);
    QElapsedTimer timer;
    timer.start();
    while (QCursor::pos() != global_position && timer.elapsed() < 500)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    if (QGuiApplication::platformName() == QLatin1String("xcb"))
        X11_POINTER::wait_for_events();
}

void deliver_pending()
{
    const bool was_active = CROSSING_FILTER::get().set_active(is_offscreen());
    QCoreApplication::processEvents();
    CROSSING_FILTER::get().set_active(was_active);
}

void send_mouse(QWindow* window, const QPoint& global_position, QEvent::Type type, Qt::MouseButton button,
                Qt::KeyboardModifiers modifiers)
{
    set_cursor(global_position);
    const QPointer<QWindow> guard(window);
    if (is_offscreen() && type == QEvent::MouseMove && POINTER::get().buttons == Qt::NoButton)
        CROSSING_FILTER::get().cross_to(window, global_position);
    if (guard == nullptr)
        return;
    const bool was_active = CROSSING_FILTER::get().set_active(false);
    qt_handleMouseEvent(window, window->mapFromGlobal(global_position), global_position, POINTER::get().buttons, button,
                        type, modifiers, ++QTest::lastMouseTimestamp);
    CROSSING_FILTER::get().set_active(was_active);
    deliver_pending();
}

/// Who gets the next event: the window of the press while a button is held, as long as it lives.
QWindow* get_target(QWindow* window, const QPoint& global_position)
{
    const POINTER& pointer = POINTER::get();
    if (pointer.buttons == Qt::NoButton)
        return window;
    if (pointer.grabber != nullptr && pointer.grabber->isVisible())
        return pointer.grabber;
    QWindow* const below = QGuiApplication::topLevelAt(global_position);
    return below != nullptr ? below : window;
}

void move_at(QWindow* window, const QPoint& global_position, Qt::KeyboardModifiers modifiers)
{
    QWindow* const target = get_target(window, global_position);
    if (target != nullptr)
        send_mouse(target, global_position, QEvent::MouseMove, Qt::NoButton, modifiers);
}

void press_at(QWindow* window, const QPoint& global_position, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    POINTER& pointer = POINTER::get();
    QWindow* const target = get_target(window, global_position);
    if (pointer.buttons == Qt::NoButton)
        pointer.grabber = target;
    pointer.buttons |= button;
    send_mouse(target, global_position, QEvent::MouseButtonPress, button, modifiers);
}

void release_at(QWindow* window, const QPoint& global_position, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    POINTER& pointer = POINTER::get();
    QWindow* const target = get_target(window, global_position);
    pointer.buttons &= ~button;
    if (pointer.buttons == Qt::NoButton)
        pointer.grabber = nullptr;
    if (target != nullptr)
        send_mouse(target, global_position, QEvent::MouseButtonRelease, button, modifiers);
}

/// So much time passes behind each release that no two clicks make a double click.
void let_double_click_time_pass()
{
    QTest::lastMouseTimestamp += QTest::mouseDoubleClickInterval;
}

/// The modal dialog that keeps input from a window; null for none.
QWidget* get_blocking_dialog(const QWidget* window)
{
    QWidget* const modal = QApplication::activeModalWidget();
    if (modal == nullptr || modal == window || window->windowType() == Qt::Popup)
        return nullptr;
    const auto is_above = [](const QObject* ancestor, const QObject* object)
    {
        while (object != nullptr && object != ancestor)
            object = object->parent();
        return object != nullptr;
    };
    if (is_above(modal, window) || (modal->windowModality() == Qt::WindowModal && !is_above(window, modal)))
        return nullptr;
    return modal;
}

QString describe(const QWidget* widget)
{
    return QStringLiteral("%1 \"%2\"")
        .arg(QString::fromLatin1(widget->metaObject()->className()), widget->objectName());
}

/// Why input cannot reach the widget; empty where it can.
QString get_obstacle(const QWidget* widget)
{
    if (widget == nullptr)
        return QStringLiteral("the widget is null");
    const QWidget* const window = widget->window();
    if (!widget->isVisible())
        return describe(widget) + QStringLiteral(" is hidden");
    if (!widget->isEnabled())
        return describe(widget) + QStringLiteral(" is disabled");
    if (window->windowHandle() == nullptr || !window->windowHandle()->isExposed())
        return describe(window) + QStringLiteral(" is not on the screen");
    const QWidget* const dialog = get_blocking_dialog(window);
    if (dialog != nullptr)
        return describe(widget) + QStringLiteral(" is behind the modal dialog ") + describe(dialog);
    return {};
}

QString get_obstacle(const QWidget* widget, const QPoint& position)
{
    QString obstacle = get_obstacle(widget);
    if (!obstacle.isEmpty())
        return obstacle;
    const QWidget* const window = widget->window();
    const QPoint in_window = widget->mapTo(window, position);
    if (!widget->rect().contains(position) || !window->rect().contains(in_window))
        return QStringLiteral("(%1, %2) is outside of %3, which has %4 x %5 pixels")
            .arg(position.x())
            .arg(position.y())
            .arg(describe(widget))
            .arg(widget->width())
            .arg(widget->height());
    const QWidget* const hit = window->childAt(in_window);
    if (hit != nullptr && hit != widget && !widget->isAncestorOf(hit) && !hit->isAncestorOf(widget))
        return QStringLiteral("%1 is covered by %2 at (%3, %4)")
            .arg(describe(widget), describe(hit))
            .arg(position.x())
            .arg(position.y());
    return {};
}

bool report_obstacle(const QString& obstacle, const TEST_PLACE& place)
{
    if (obstacle.isEmpty())
        return true;
    ADD_FAILURE_AT(place.file, place.line) << obstacle.toStdString();
    return false;
}

/// While a button is held the pointer may be anywhere, and the widget only gives the coordinates.
bool can_move(QWidget* widget, const QPoint& position, const TEST_PLACE& place)
{
    if (GUI_DRIVER::get_buttons() == Qt::NoButton)
        return GUI_DRIVER::can_reach(widget, position, place);
    return report_obstacle(widget == nullptr ? QStringLiteral("the widget is null") : QString(), place);
}

QWindow* get_window(const QWidget* widget)
{
    return widget->window()->windowHandle();
}
} // namespace

QList<QObject*> GUI_DRIVER::get_objects(const QObject* parent)
{
    if (parent != nullptr)
        return parent->findChildren<QObject*>();
    QList<QObject*> result;
    for (QWidget* window : QApplication::topLevelWidgets())
    {
        if (window->parent() != nullptr) // found below its parent
            continue;
        result << window;
        result += window->findChildren<QObject*>();
    }
    return result;
}

bool GUI_DRIVER::show(QWidget* window, TEST_PLACE place)
{
    if (window == nullptr)
        return report_obstacle(QStringLiteral("the widget is null"), place);
    window->show();
    window->activateWindow();
    return wait_for([&] { return window->windowHandle()->isExposed() && window->isActiveWindow(); }, 5000, place);
}

void GUI_DRIVER::move_to(QWidget* widget, const QPoint& position, Qt::KeyboardModifiers modifiers, TEST_PLACE place)
{
    if (can_move(widget, position, place))
        move_at(get_window(widget), widget->mapToGlobal(position), modifiers);
}

void GUI_DRIVER::hover(QWidget* widget, TEST_PLACE place)
{
    hover(widget, widget != nullptr ? widget->rect().center() : QPoint(), place);
}

void GUI_DRIVER::hover(QWidget* widget, const QPoint& position, TEST_PLACE place)
{
    if (get_buttons() != Qt::NoButton)
        ADD_FAILURE_AT(place.file, place.line) << "a button is held";
    else
        move_to(widget, position, Qt::NoModifier, place);
}

void GUI_DRIVER::place_pointer(const QPoint& screen_position)
{
    set_cursor(screen_position);
    QCoreApplication::processEvents();
}

void GUI_DRIVER::press(QWidget* widget, const QPoint& position, Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
                       TEST_PLACE place)
{
    if (get_buttons() & button)
    {
        ADD_FAILURE_AT(place.file, place.line) << "the button is held already";
        return;
    }
    if (!can_move(widget, position, place))
        return;
    const QPoint global_position = widget->mapToGlobal(position);
    const QPointer<QWindow> window = get_window(widget);
    move_at(window, global_position, modifiers);
    if (window != nullptr)
        press_at(window, global_position, button, modifiers);
}

void GUI_DRIVER::release(QWidget* widget, const QPoint& position, Qt::MouseButton button,
                         Qt::KeyboardModifiers modifiers, TEST_PLACE place)
{
    if (!(get_buttons() & button))
    {
        ADD_FAILURE_AT(place.file, place.line) << "the button is not held";
        return;
    }
    if (!can_move(widget, position, place))
        return;
    const QPoint global_position = widget->mapToGlobal(position);
    const QPointer<QWindow> window = get_window(widget);
    move_at(window, global_position, modifiers);
    release_at(window, global_position, button, modifiers);
    let_double_click_time_pass();
}

void GUI_DRIVER::click(QWidget* widget, const QPoint& position, Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
                       TEST_PLACE place)
{
    if (!can_reach(widget, position, place))
        return;
    const QPoint global_position = widget->mapToGlobal(position);
    const QPointer<QWindow> window = get_window(widget);
    press(widget, position, button, modifiers, place);
    release_at(window, global_position, button, modifiers); // the press may have closed the window
    let_double_click_time_pass();
}

void GUI_DRIVER::click(QWidget* widget, TEST_PLACE place)
{
    click(widget, widget != nullptr ? widget->rect().center() : QPoint(), Qt::LeftButton, Qt::NoModifier, place);
}

void GUI_DRIVER::double_click(QWidget* widget, const QPoint& position, Qt::MouseButton button,
                              Qt::KeyboardModifiers modifiers, TEST_PLACE place)
{
    if (!can_reach(widget, position, place))
        return;
    const QPoint global_position = widget->mapToGlobal(position);
    const QPointer<QWindow> window = get_window(widget);
    press(widget, position, button, modifiers, place);
    release_at(window, global_position, button, modifiers);
    if (window != nullptr && window->isVisible())
    {
        press_at(window, global_position, button, modifiers);
        release_at(window, global_position, button, modifiers);
    }
    else
        ADD_FAILURE_AT(place.file, place.line) << "the first click closed the window";
    let_double_click_time_pass();
}

void GUI_DRIVER::drag(QWidget* widget, const QPoint& from, const QPoint& to, Qt::MouseButton button,
                      Qt::KeyboardModifiers modifiers, TEST_PLACE place)
{
    if (!can_reach(widget, from, place))
        return;
    const QPoint global_from = widget->mapToGlobal(from);
    const QPoint global_to = widget->mapToGlobal(to);
    const QPointer<QWindow> window = get_window(widget);
    press(widget, from, button, modifiers, place);
    for (const QPoint& position : get_way(global_from, global_to))
        move_at(window, position, modifiers);
    release_at(window, global_to, button, modifiers);
    let_double_click_time_pass();
}

QVector<QPoint> GUI_DRIVER::get_way(const QPoint& from, const QPoint& to)
{
    const QPoint whole = to - from;
    const int count = std::max(std::abs(whole.x()), std::abs(whole.y()));
    QVector<QPoint> result;
    result.reserve(count);
    for (int step = 1; step <= count; ++step)
        result << from + QPoint(qRound(double(whole.x()) * step / count), qRound(double(whole.y()) * step / count));
    return result;
}

void GUI_DRIVER::wheel(QWidget* widget, const QPoint& position, const QPoint& angle_delta,
                       Qt::KeyboardModifiers modifiers, TEST_PLACE place)
{
    if (!can_reach(widget, position, place))
        return;
    const QPoint global_position = widget->mapToGlobal(position);
    QWindow* const window = get_window(widget);
    move_at(window, global_position, modifiers);
    QWheelEvent event(window->mapFromGlobal(global_position), global_position, QPoint(), angle_delta, get_buttons(),
                      modifiers, Qt::NoScrollPhase, false);
    event.setTimestamp(ulong(++QTest::lastMouseTimestamp));
    send_spontaneous(window, &event);
    deliver_pending();
}

Qt::MouseButtons GUI_DRIVER::get_buttons()
{
    return POINTER::get().buttons;
}

bool GUI_DRIVER::focus(QWidget* widget, TEST_PLACE place)
{
    if (!report_obstacle(get_obstacle(widget), place))
        return false;
    const auto has_focus = [&]
    {
        QWidget* const focus_widget = QApplication::focusWidget();
        return focus_widget != nullptr && (focus_widget == widget || widget->isAncestorOf(focus_widget));
    };
    QWidget* const window = widget->window();
    if (!window->isActiveWindow())
        window->activateWindow();
    if (!wait_for([&] { return window->isActiveWindow(); }, 5000, place))
        return false;
    if (has_focus())
        return true;
    const QWidget* last = widget;
    while (last->focusProxy() != nullptr)
        last = last->focusProxy();
    if (last->focusPolicy() == Qt::NoFocus && widget != window)
        return report_obstacle(describe(widget) + QStringLiteral(" does not take the focus"), place);
    widget->setFocus(Qt::OtherFocusReason);
    return wait_for([&] { return QApplication::focusWidget() == last || has_focus(); }, 5000, place);
}

/// The window that takes a key for the widget, which has the focus then; null, and a failed test, for none.
static QWindow* prepare_key(QWidget* widget, const TEST_PLACE& place)
{
    if (!report_obstacle(get_obstacle(widget), place))
        return nullptr;
    if (widget->window()->windowType() != Qt::Popup && !GUI_DRIVER::focus(widget, place))
        return nullptr;
    return get_window(widget);
}

void GUI_DRIVER::key_click(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers, TEST_PLACE place)
{
    key_press(widget, key, modifiers, place);
    const QPointer<QWindow> window = QGuiApplication::focusWindow();
    if (window != nullptr)
        QTest::keyRelease(window, key, modifiers);
    deliver_pending();
}

void GUI_DRIVER::key_press(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers, TEST_PLACE place)
{
    QWindow* const window = prepare_key(widget, place);
    if (window == nullptr)
        return;
    QTest::keyPress(window, key, modifiers);
    deliver_pending();
}

void GUI_DRIVER::key_release(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers, TEST_PLACE place)
{
    QWindow* const window = prepare_key(widget, place);
    if (window == nullptr)
        return;
    QTest::keyRelease(window, key, modifiers);
    deliver_pending();
}

void GUI_DRIVER::type(QWidget* widget, const QString& text, TEST_PLACE place)
{
    for (const QChar character : text)
    {
        QWindow* const window = prepare_key(widget, place);
        if (window == nullptr)
            return;
        QTest::keyClick(window, character.toLatin1());
        deliver_pending();
    }
}

Qt::DropAction GUI_DRIVER::drop(QWidget* widget, const QPoint& position, const QMimeData* data, Qt::DropActions actions,
                                Qt::KeyboardModifiers modifiers, TEST_PLACE place)
{
    if (!can_reach(widget, position, place))
        return Qt::IgnoreAction;
    QWindow* const window = get_window(widget);
    const QPoint in_window = widget->mapTo(widget->window(), position);
    QDragEnterEvent enter(in_window, actions, data, Qt::LeftButton, modifiers);
    send_spontaneous(window, &enter);
    QDragMoveEvent move(in_window, actions, data, Qt::LeftButton, modifiers);
    if (enter.isAccepted() && (actions & enter.dropAction())) // who accepts the entering need not accept the moves
    {
        move.setDropAction(enter.dropAction());
        move.accept();
    }
    send_spontaneous(window, &move);
    Qt::DropAction result = Qt::IgnoreAction;
    if (move.isAccepted())
    {
        QDropEvent event(in_window, actions, data, Qt::NoButton, modifiers);
        event.setDropAction(move.dropAction());
        send_spontaneous(window, &event);
        result = event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
    }
    else
    {
        QDragLeaveEvent leave;
        send_spontaneous(window, &leave);
    }
    deliver_pending();
    return result;
}

bool GUI_DRIVER::wait_for(const std::function<bool()>& condition, int timeout_milliseconds, TEST_PLACE place)
{
    QTimer tick; // so that the event loop returns although nothing happens
    tick.start(2);
    QElapsedTimer timer;
    timer.start();
    while (!condition())
    {
        if (timer.elapsed() >= timeout_milliseconds)
        {
            ADD_FAILURE_AT(place.file, place.line)
                << "the condition did not come about within " << timeout_milliseconds << " ms";
            return false;
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

void GUI_DRIVER::process_posted()
{
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

bool GUI_DRIVER::can_reach(QWidget* widget, const QPoint& position, TEST_PLACE place)
{
    return report_obstacle(get_obstacle(widget, position), place);
}

MAPPED_DRIVER::MAPPED_DRIVER(QWidget* widget, MAPPING mapping) : m_widget(widget), m_mapping(std::move(mapping))
{
}

void MAPPED_DRIVER::move_to(const QPointF& position, Qt::KeyboardModifiers modifiers, TEST_PLACE place) const
{
    GUI_DRIVER::move_to(m_widget, get_pixel(position), modifiers, place);
}

void MAPPED_DRIVER::press(const QPointF& position, Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
                          TEST_PLACE place) const
{
    GUI_DRIVER::press(m_widget, get_pixel(position), button, modifiers, place);
}

void MAPPED_DRIVER::release(const QPointF& position, Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
                            TEST_PLACE place) const
{
    GUI_DRIVER::release(m_widget, get_pixel(position), button, modifiers, place);
}

void MAPPED_DRIVER::click(const QPointF& position, Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
                          TEST_PLACE place) const
{
    GUI_DRIVER::click(m_widget, get_pixel(position), button, modifiers, place);
}

void MAPPED_DRIVER::double_click(const QPointF& position, Qt::MouseButton button, Qt::KeyboardModifiers modifiers,
                                 TEST_PLACE place) const
{
    GUI_DRIVER::double_click(m_widget, get_pixel(position), button, modifiers, place);
}

void MAPPED_DRIVER::drag(const QPointF& from, const QPointF& to, Qt::MouseButton button,
                         Qt::KeyboardModifiers modifiers, TEST_PLACE place) const
{
    GUI_DRIVER::drag(m_widget, get_pixel(from), get_pixel(to), button, modifiers, place);
}

void MAPPED_DRIVER::wheel(const QPointF& position, const QPoint& angle_delta, Qt::KeyboardModifiers modifiers,
                          TEST_PLACE place) const
{
    GUI_DRIVER::wheel(m_widget, get_pixel(position), angle_delta, modifiers, place);
}

QPoint MAPPED_DRIVER::get_pixel(const QPointF& position) const
{
    return m_mapping(position).toPoint();
}
