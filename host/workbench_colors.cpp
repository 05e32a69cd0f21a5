#include "workbench_colors.h"

#include "tolv_color.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>

#include <algorithm>
#include <cmath>

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

/// Those of a dark desktop, for the Fusion style.
QPalette get_dark_palette()
{
    QPalette palette(QColor(0x35, 0x38, 0x3c), QColor(0x2b, 0x2d, 0x30));
    palette.setColor(QPalette::Base, QColor(0x1f, 0x21, 0x23));
    palette.setColor(QPalette::AlternateBase, QColor(0x27, 0x29, 0x2c));
    palette.setColor(QPalette::ToolTipBase, QColor(0x35, 0x38, 0x3c));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
    {
        palette.setColor(role, QColor(0xe4, 0xe6, 0xe8));
        palette.setColor(QPalette::Disabled, role, QColor(0x85, 0x88, 0x8c));
    }
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, QColor(0x95, 0x98, 0x9c));
    palette.setColor(QPalette::Link, QColor(0x78, 0xb4, 0xff));
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x65, 0xa8));
    palette.setColor(QPalette::Inactive, QPalette::Highlight, QColor(0x45, 0x50, 0x5e));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}
} // namespace

double workbench_get_contrast(const QColor& a, const QColor& b)
{
    const double first = get_luminance(a) + 0.05;
    const double second = get_luminance(b) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

QColor workbench_get_contrast_color(const QColor& ground)
{
    const QColor black(Qt::black);
    const QColor white(Qt::white);
    return workbench_get_contrast(black, ground) > workbench_get_contrast(white, ground) ? black : white;
}

QColor workbench_get_text_color(TOLV_COLOR_RESOURCE resource)
{
    QColor chosen = TOLV_COLOR(resource).get_color();
    const QColor ground = QApplication::palette().color(QPalette::Base);
    if (chosen != TOLV_COLOR::get_default_color(resource) || ground.lightness() >= 128)
        return chosen;
    QColor color = chosen.toHsl();
    for (int lightness = color.lightness(); lightness < 256; lightness += 5)
    {
        color.setHsl(color.hslHue(), color.hslSaturation(), lightness);
        if (workbench_get_contrast(color, ground) >= READABLE_CONTRAST)
            break;
    }
    return color.toRgb();
}

QPalette workbench_get_palette(bool is_dark)
{
    return is_dark ? get_dark_palette() : QApplication::style()->standardPalette();
}
