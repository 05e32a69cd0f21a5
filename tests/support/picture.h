#pragma once

#include "test_place.h"

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QRect>

class QWidget;

/// Pictures of widgets, and what can be asked of them. Positions and sizes are in the pixels of the picture.

/// Paints a widget with its children as it would stand on a screen of that density: a picture of the widget's size
/// times the ratio, the ratio set, on a transparent ground. The widget need not be shown. A null widget fails the test
/// and gives a null picture.
QImage render_widget(QWidget* widget, qreal device_pixel_ratio = 1.0, TEST_PLACE place = TEST_PLACE::here());

/// Whether two pictures are alike: the same size in pixels, and no channel of any pixel further apart than the
/// tolerance. If not, the test fails with the first difference, and where the environment variable TEST_ARTIFACTS names
/// a folder both and their difference (red where they differ) are written there as <test>_<line>_expected.png,
/// _actual.png, _difference.png.
bool expect_same_picture(const QImage& expected, const QImage& actual, int tolerance = 0,
                         TEST_PLACE place = TEST_PLACE::here());

/// Whether two colours, alpha included, are no further apart than the tolerance in any channel.
bool is_same_color(const QColor& a, const QColor& b, int tolerance = 0);

/// The first pixel of a colour, line by line from the top; (-1, -1) where there is none.
QPoint find_color(const QImage& picture, const QColor& color, int tolerance = 0);

/// The smallest rectangle around all pixels of a colour; empty where there is none.
QRect find_color_rect(const QImage& picture, const QColor& color, int tolerance = 0);

/// How many pixels have a colour, in the whole picture or in a rectangle of it.
int count_pixels(const QImage& picture, const QColor& color, int tolerance = 0, const QRect& rect = QRect());
