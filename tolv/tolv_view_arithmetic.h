#pragma once

#include <QMouseEvent>
#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QSize>

#include <cmath>
#include <limits>

/// The rules of arithmetic that all zoomable views and their tools share. QPointF::toPoint() and qRound() do not do for
/// them: those round -0.5 to 0.

/// A number that has no fraction as an int; what an int cannot hold becomes the int nearest to it, "not a number" 0.
inline int tolv_limit_to_int(double value)
{
    if (std::isnan(value))
        return 0;
    if (value <= double(std::numeric_limits<int>::min()))
        return std::numeric_limits<int>::min();
    return value >= double(std::numeric_limits<int>::max()) ? std::numeric_limits<int>::max() : int(value);
}

/// Rounded to the nearest int, halves away from zero: 0.5 gives 1, -0.5 gives -1.
inline int tolv_round(double value)
{
    return tolv_limit_to_int(std::round(value));
}

/// Rounded towards zero: 1.9 gives 1, -1.9 gives -1.
inline int tolv_truncate(double value)
{
    return tolv_limit_to_int(value);
}

/// The pixel of a position that an event carries: each coordinate rounded by tolv_round().
inline QPoint tolv_round_position(const QPointF& position)
{
    return {tolv_round(position.x()), tolv_round(position.y())};
}

/// Where a mouse event happened, in pixels of the widget that gets it.
inline QPoint tolv_get_local_position(const QMouseEvent& event)
{
    return tolv_round_position(event.localPos());
}

/// Where a mouse event happened, in pixels of the screen.
inline QPoint tolv_get_global_position(const QMouseEvent& event)
{
    return tolv_round_position(event.screenPos());
}

/// The rectangle with these corner pixels, both of which belong to it: its width is `right - left + 1`.
inline QRect tolv_make_rect(int left, int top, int right, int bottom)
{
    return {QPoint(left, top), QPoint(right, bottom)};
}

/// `right - left` and `bottom - top`: the distances of the corner pixels, one less than width and height. Thresholds of
/// drags are measured by them. A cancelled drag, QRect(), has (-1, -1).
inline QSize tolv_get_span(const QRect& rect)
{
    return {rect.right() - rect.left(), rect.bottom() - rect.top()};
}
