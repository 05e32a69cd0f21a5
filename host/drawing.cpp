#include "drawing.h"

#include <QPaintDevice>
#include <QPainter>

#include <algorithm>

namespace
{
const double SCREEN_RESOLUTION = 96; ///< dots per inch
} // namespace

DRAWING::~DRAWING() = default;

double DRAWING::get_pixel_size(const QPainter& painter)
{
    return std::max(1.0, painter.device()->logicalDpiX() / SCREEN_RESOLUTION);
}
