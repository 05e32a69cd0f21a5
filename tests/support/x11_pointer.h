#pragma once

#include <Qt>

class QPoint;

/// The pointer of the X server itself: what the window manager sees, too. For tests that run under a window system only,
/// of frames, activation by a click, dragging a window by its title. Positions are those of the screen, in its pixels.
///
/// The operations return when the server has taken the input; the events come through the event loop as a user's do, so
/// wait for what they bring about. Without an X server, or one without the test extension, they fail the test.
class X11_POINTER
{
public:
    static void move_to(const QPoint& position);
    static void press(Qt::MouseButton button = Qt::LeftButton);
    static void release(Qt::MouseButton button = Qt::LeftButton);
    /// Moves there, presses and releases.
    static void click(const QPoint& position, Qt::MouseButton button = Qt::LeftButton);
    /// Moves to the beginning, presses, moves one pixel at a time with the event loop running, releases.
    static void drag(const QPoint& from, const QPoint& to, Qt::MouseButton button = Qt::LeftButton);
};
