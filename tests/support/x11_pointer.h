#pragma once

#include <Qt>

#include <cstdint>

class QPoint;

/// The pointer of the X server itself: what the window manager sees, too. For tests that run under a window system
/// only, of frames, activation by a click, dragging a window by its title. Positions are those of the screen, in its
/// pixels.
///
/// The operations return when the server has taken the input; the events come through the event loop as a user's do, so
/// wait for what they bring about, or for the events. In a drag of a window by its title wait after the first moves and before the
/// release, too: the window manager needs time to take the pointer over, and tells the application of the place at the
/// end. Without an X server, or one without the test extension, they fail the test.
class X11_POINTER
{
public:
    static void move_to(const QPoint& position);
    static void press(Qt::MouseButton button = Qt::LeftButton);
    static void release(Qt::MouseButton button = Qt::LeftButton);
    /// Moves there, presses and releases.
    static void click(const QPoint& position, Qt::MouseButton button = Qt::LeftButton);
    /// Runs the event loop until the application has got all events that the server has made so far. It cannot be told
    /// from the pointer's position, which the server knows before.
    static void wait_for_events();
    /// Where the server has the top left pixel of a window (QWidget::winId()), also while the window manager moves it.
    static QPoint get_window_position(std::uintptr_t window);
};
