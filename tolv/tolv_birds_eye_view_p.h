#pragma once

#include <QPoint>
#include <QRect>
#include <QRectF>
#include <QSize>

class QAbstractScrollArea;
class QPainter;
class QWidget;

/// What the parts of a bird's eye view have in common. Private to the library.

/// The size of the overview of a drawing with these bounds, in pixels.
QSize tolv_get_overview_size(const QRect& bounds);
/// The bounds of a scene, rounded.
QRect tolv_get_scene_bounds(const QRectF& scene_rect);

/// The rectangle grown to the right and downwards to five pixels at least.
QRect tolv_get_overlay_rect(const QRect& rect);
/// Sets the brush of the overlay.
void tolv_set_overlay_brush(QPainter& painter, const QWidget& widget);

/// Width by height of an overview, 0 for one that has no area.
double tolv_get_aspect_ratio(const QSize& size);
/// Scrolls by so many pixels of an overview of that size.
void tolv_scroll_by_overview(QAbstractScrollArea& area, const QPoint& distance, const QSize& overview_size);
