#include "tolv_contrast.h"

#include "tolv_color.h"
#include "tolv_mem.h"

#include <QGuiApplication>
#include <QPalette>

#include <algorithm>
#include <cmath>

TOLV_MEM_INITIALIZER();

namespace
{
constexpr double READABLE_CONTRAST = 4.5;

/// The share of one channel in the lightness that the eye sees.
double get_linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double get_luminance(const QColor& color)
{
    return 0.2126 * get_linear(color.redF()) + 0.7152 * get_linear(color.greenF()) + 0.0722 * get_linear(color.blueF());
}
} // namespace

double tolv_get_contrast(const QColor& a, const QColor& b)
{
    const double first = get_luminance(a) + 0.05;
    const double second = get_luminance(b) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

QColor tolv_get_contrast_color(const QColor& ground)
{
    const QColor black(Qt::black);
    const QColor white(Qt::white);
    return tolv_get_contrast(black, ground) > tolv_get_contrast(white, ground) ? black : white;
}

QColor tolv_get_readable_color(TOLV_COLOR_RESOURCE resource)
{
    QColor chosen = TOLV_COLOR(resource).get_color();
    const QColor ground = QGuiApplication::palette().color(QPalette::Base);
    if (chosen != TOLV_COLOR::get_default_color(resource) || ground.lightness() >= 128)
        return chosen;
    QColor color = chosen.toHsl();
    for (int lightness = color.lightness(); lightness < 256; lightness += 5)
    {
        color.setHsl(color.hslHue(), color.hslSaturation(), lightness);
        if (tolv_get_contrast(color, ground) >= READABLE_CONTRAST)
            break;
    }
    return color.toRgb();
}
