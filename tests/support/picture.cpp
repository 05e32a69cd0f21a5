#include "picture.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QPainter>
#include <QWidget>

#include <cmath>
#include <cstdlib>
#include <functional>

QImage render_widget(QWidget* widget, qreal device_pixel_ratio, TEST_PLACE place)
{
    if (widget == nullptr)
    {
        ADD_FAILURE_AT(place.file, place.line) << "the widget is null";
        return {};
    }
    QImage picture((QSizeF(widget->size()) * device_pixel_ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(device_pixel_ratio);
    picture.fill(Qt::transparent);
    widget->render(&picture);
    return picture;
}

static bool is_same_pixel(QRgb a, QRgb b, int tolerance)
{
    return std::abs(qRed(a) - qRed(b)) <= tolerance && std::abs(qGreen(a) - qGreen(b)) <= tolerance &&
           std::abs(qBlue(a) - qBlue(b)) <= tolerance && std::abs(qAlpha(a) - qAlpha(b)) <= tolerance;
}

/// The picture of the difference: a pale form of the first one, red where the second differs.
static QImage get_difference(const QImage& expected, const QImage& actual, int tolerance)
{
    QImage result(expected.size().expandedTo(actual.size()), QImage::Format_RGB32);
    for (int y = 0; y < result.height(); ++y)
        for (int x = 0; x < result.width(); ++x)
        {
            const QPoint position(x, y);
            const bool in_both = expected.rect().contains(position) && actual.rect().contains(position);
            const bool same = in_both && is_same_pixel(expected.pixel(position), actual.pixel(position), tolerance);
            const int gray = same ? 192 + qGray(expected.pixel(position)) / 4 : 0;
            result.setPixel(position, same ? qRgb(gray, gray, gray) : qRgb(255, 0, 0));
        }
    return result;
}

/// Writes the pictures of a failed comparison; a sentence about where they are.
static std::string write_artifacts(const QImage& expected, const QImage& actual, int tolerance, const TEST_PLACE& place)
{
    const char* const folder = getenv("TEST_ARTIFACTS");
    if (folder == nullptr || *folder == '\0')
        return "set TEST_ARTIFACTS to a folder to see the pictures";
    const testing::TestInfo* const test = testing::UnitTest::GetInstance()->current_test_info();
    const QString base = QDir(QString::fromLocal8Bit(folder))
                             .absoluteFilePath(QStringLiteral("%1.%2_%3")
                                                   .arg(QLatin1String(test != nullptr ? test->test_suite_name() : "no"),
                                                        QLatin1String(test != nullptr ? test->name() : "test"))
                                                   .arg(place.line)
                                                   .replace(QLatin1Char('/'), QLatin1Char('_')));
    const bool written = QDir().mkpath(QString::fromLocal8Bit(folder)) &&
                         expected.save(base + QStringLiteral("_expected.png")) &&
                         actual.save(base + QStringLiteral("_actual.png")) &&
                         get_difference(expected, actual, tolerance).save(base + QStringLiteral("_difference.png"));
    return (written ? "pictures: " : "pictures could not be written: ") + base.toStdString() + "_*.png";
}

bool expect_same_picture(const QImage& expected, const QImage& actual, int tolerance, TEST_PLACE place)
{
    const QImage a = expected.convertToFormat(QImage::Format_ARGB32);
    const QImage b = actual.convertToFormat(QImage::Format_ARGB32);
    if (a.size() != b.size())
    {
        ADD_FAILURE_AT(place.file, place.line)
            << "the picture has " << b.width() << " x " << b.height() << " pixels instead of " << a.width() << " x "
            << a.height() << "; " << write_artifacts(a, b, tolerance, place);
        return false;
    }
    int count = 0;
    QPoint first;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if (!is_same_pixel(a.pixel(x, y), b.pixel(x, y), tolerance) && count++ == 0)
                first = QPoint(x, y);
    if (count == 0)
        return true;
    ADD_FAILURE_AT(place.file, place.line)
        << count << " pixels differ, the first at (" << first.x() << ", " << first.y()
        << "): " << QColor::fromRgba(b.pixel(first)).name(QColor::HexArgb).toStdString() << " instead of "
        << QColor::fromRgba(a.pixel(first)).name(QColor::HexArgb).toStdString() << "; "
        << write_artifacts(a, b, tolerance, place);
    return false;
}

bool is_same_color(const QColor& a, const QColor& b, int tolerance)
{
    return is_same_pixel(a.rgba(), b.rgba(), tolerance);
}

/// Calls a function for each pixel of the colour, line by line, until it returns false.
static void for_each_pixel(const QImage& picture, const QColor& color, int tolerance, const QRect& rect,
                           const std::function<bool(const QPoint&)>& function)
{
    for (int y = rect.top(); y <= rect.bottom(); ++y)
        for (int x = rect.left(); x <= rect.right(); ++x)
            if (is_same_pixel(picture.pixel(x, y), color.rgba(), tolerance) && !function(QPoint(x, y)))
                return;
}

QPoint find_color(const QImage& picture, const QColor& color, int tolerance)
{
    QPoint result(-1, -1);
    for_each_pixel(picture, color, tolerance, picture.rect(),
                   [&](const QPoint& position)
                   {
                       result = position;
                       return false;
                   });
    return result;
}

QRect find_color_rect(const QImage& picture, const QColor& color, int tolerance)
{
    QRect result;
    for_each_pixel(picture, color, tolerance, picture.rect(),
                   [&](const QPoint& position)
                   {
                       result |= QRect(position, QSize(1, 1));
                       return true;
                   });
    return result;
}

int count_pixels(const QImage& picture, const QColor& color, int tolerance, const QRect& rect)
{
    int result = 0;
    for_each_pixel(picture, color, tolerance, rect.isNull() ? picture.rect() : rect & picture.rect(),
                   [&](const QPoint&)
                   {
                       ++result;
                       return true;
                   });
    return result;
}
