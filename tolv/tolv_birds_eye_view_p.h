#pragma once

#include <QRect>
#include <QRectF>
#include <QSize>

/// What the parts of a bird's eye view have in common. Private to the library.

/// The size of the overview of a drawing with these bounds, in pixels.
QSize tolv_get_overview_size(const QRect& bounds);
/// The bounds of a scene, rounded.
QRect tolv_get_scene_bounds(const QRectF& scene_rect);
