#include "gui_test.h"
#include "picture.h"
#include "recording_paint_device.h"
#include "test_environment.h"

#include <gtest/gtest-spi.h>

#include <QFileInfo>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>

namespace
{
using SUPPORT_PICTURE_TEST = TOLV_GUI_TEST;

class FLAG : public QWidget
{
public:
    FLAG()
    {
        resize(30, 20);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), Qt::white);
        painter.fillRect(QRect(10, 5, 4, 3), Qt::red);
    }
};

QImage get_gray_picture()
{
    QImage picture(8, 4, QImage::Format_ARGB32);
    picture.fill(QColor(100, 100, 100));
    return picture;
}
} // namespace

TEST_F(SUPPORT_PICTURE_TEST, a_widget_is_painted_at_a_device_pixel_ratio)
{
    FLAG flag;
    const QImage plain = render_widget(&flag);
    EXPECT_EQ(QSize(30, 20), plain.size());
    EXPECT_EQ(QRect(10, 5, 4, 3), find_color_rect(plain, Qt::red));
    const QImage dense = render_widget(&flag, 2.0);
    EXPECT_EQ(QSize(60, 40), dense.size());
    EXPECT_EQ(2.0, dense.devicePixelRatio());
    EXPECT_EQ(QRect(20, 10, 8, 6), find_color_rect(dense, Qt::red));
}

TEST_F(SUPPORT_PICTURE_TEST, a_null_widget_fails_the_test)
{
    QImage picture;
    EXPECT_NONFATAL_FAILURE(picture = render_widget(nullptr), "the widget is null");
    EXPECT_TRUE(picture.isNull());
}

TEST_F(SUPPORT_PICTURE_TEST, colours_are_found_and_counted)
{
    QImage picture = get_gray_picture();
    picture.setPixelColor(5, 2, Qt::blue);
    picture.setPixelColor(1, 3, Qt::blue);
    EXPECT_EQ(QPoint(5, 2), find_color(picture, Qt::blue));
    EXPECT_EQ(QPoint(-1, -1), find_color(picture, Qt::green));
    EXPECT_EQ(QRect(1, 2, 5, 2), find_color_rect(picture, Qt::blue));
    EXPECT_TRUE(find_color_rect(picture, Qt::green).isEmpty());
    EXPECT_EQ(2, count_pixels(picture, Qt::blue));
    EXPECT_EQ(1, count_pixels(picture, Qt::blue, 0, QRect(4, 0, 100, 100)));
    EXPECT_EQ(0, count_pixels(picture, QColor(103, 100, 100), 2));
    EXPECT_EQ(30, count_pixels(picture, QColor(102, 100, 98), 2));
}

TEST_F(SUPPORT_PICTURE_TEST, colours_are_the_same_within_a_tolerance)
{
    EXPECT_TRUE(is_same_color(QColor(10, 20, 30), QColor(12, 18, 30), 2));
    EXPECT_FALSE(is_same_color(QColor(10, 20, 30), QColor(13, 20, 30), 2));
    EXPECT_FALSE(is_same_color(QColor(10, 20, 30, 255), QColor(10, 20, 30, 250), 2));
}

TEST_F(SUPPORT_PICTURE_TEST, pictures_are_the_same_within_a_tolerance)
{
    QImage other = get_gray_picture();
    EXPECT_TRUE(expect_same_picture(get_gray_picture(), other));
    other.setPixelColor(3, 1, QColor(100, 104, 100));
    EXPECT_TRUE(expect_same_picture(get_gray_picture(), other, 4));
    EXPECT_NONFATAL_FAILURE(expect_same_picture(get_gray_picture(), other, 3),
                            "1 pixels differ, the first at (3, 1): #ff646864 instead of #ff646464");
    EXPECT_NONFATAL_FAILURE(expect_same_picture(get_gray_picture(), QImage(8, 5, QImage::Format_ARGB32)),
                            "the picture has 8 x 5 pixels instead of 8 x 4");
}

TEST_F(SUPPORT_PICTURE_TEST, pictures_that_differ_are_written_with_their_difference)
{
    const SCOPED_ENVIRONMENT_VARIABLE folder("TEST_ARTIFACTS", (TEST_ENVIRONMENT::get_folder() + "/artifacts").c_str());
    QImage other = get_gray_picture();
    other.setPixelColor(3, 1, Qt::green);
    static const TEST_PLACE place{"file", 12};
    EXPECT_NONFATAL_FAILURE(expect_same_picture(get_gray_picture(), other, 0, place), "pictures: ");
    const QString base =
        QString::fromStdString(TEST_ENVIRONMENT::get_folder()) +
        QStringLiteral(
            "/artifacts/SUPPORT_PICTURE_TEST.pictures_that_differ_are_written_with_their_difference_12_%1.png");
    EXPECT_EQ(get_gray_picture(), QImage(base.arg(QStringLiteral("expected"))).convertToFormat(QImage::Format_ARGB32));
    EXPECT_EQ(other, QImage(base.arg(QStringLiteral("actual"))).convertToFormat(QImage::Format_ARGB32));
    const QImage difference(base.arg(QStringLiteral("difference")));
    EXPECT_EQ(QRect(3, 1, 1, 1), find_color_rect(difference, Qt::red));
}

TEST_F(SUPPORT_PICTURE_TEST, a_recording_tells_what_was_drawn)
{
    RECORDING_PAINT_DEVICE device;
    QPainter painter(&device);
    painter.drawRect(QRect(10, 20, 30, 40));
    painter.drawLine(QPointF(0, 0), QPointF(10.5, 10));
    painter.drawPoint(3, 4);
    painter.drawEllipse(QRectF(0, 0, 8, 8));
    painter.drawPolygon(QPolygon({QPoint(0, 0), QPoint(10, 0), QPoint(5, 8)}));
    painter.drawPolyline(QPolygonF(QVector<QPointF>{QPointF(0, 0), QPointF(10, 0)}));
    QPainterPath path(QPointF(0, 0));
    path.lineTo(10, 0);
    path.cubicTo(1, 2, 3, 4, 5, 6);
    painter.drawPath(path);
    painter.drawText(QPointF(5, 15), QStringLiteral("clk"));
    painter.drawPixmap(1, 2, QPixmap(16, 16));
    painter.drawImage(QPointF(3, 4), get_gray_picture());
    painter.end();
    EXPECT_EQ(QStringList({QStringLiteral("rect 10 20 30 40"), QStringLiteral("line 0 0 10.5 10"),
                           QStringLiteral("point 3 4"), QStringLiteral("ellipse 0 0 8 8"),
                           QStringLiteral("polygon 0,0 10,0 5,8"), QStringLiteral("polyline 0,0 10,0"),
                           QStringLiteral("path M0,0 L10,0 C1,2 3,4 5,6"), QStringLiteral("text 5 15 \"clk\""),
                           QStringLiteral("pixmap 16x16 at 1 2 16 16"), QStringLiteral("image 8x4 at 3 4 8 4")}),
              device.get_texts());
    EXPECT_TRUE(device.contains(QStringLiteral("point 3 4")));
    EXPECT_FALSE(device.contains(QStringLiteral("point 3")));
    EXPECT_EQ(2, device.find(QStringLiteral("poly")).size());
    device.clear();
    EXPECT_TRUE(device.get_commands().isEmpty());
}

TEST_F(SUPPORT_PICTURE_TEST, a_recording_tells_the_state_of_each_command)
{
    RECORDING_PAINT_DEVICE device;
    QPainter painter(&device);
    painter.setPen(QPen(Qt::red, 3, Qt::DashLine));
    painter.setBrush(Qt::blue);
    painter.translate(7, 9);
    painter.setOpacity(0.5);
    painter.setClipRect(QRect(1, 2, 30, 40));
    painter.drawRect(0, 0, 5, 5);
    painter.setClipping(false);
    painter.resetTransform();
    painter.setPen(Qt::NoPen);
    painter.drawRect(0, 0, 6, 6);
    painter.end();
    ASSERT_EQ(2, device.get_commands().size());
    const PAINT_COMMAND first = device.get_commands()[0];
    EXPECT_EQ(QPen(Qt::red, 3, Qt::DashLine), first.pen);
    EXPECT_EQ(QBrush(Qt::blue), first.brush);
    EXPECT_EQ(QTransform::fromTranslate(7, 9), first.transform);
    EXPECT_EQ(0.5, first.opacity);
    EXPECT_EQ(QRectF(1, 2, 30, 40), first.clip);
    const PAINT_COMMAND second = device.get_commands()[1];
    EXPECT_EQ(QPen(Qt::NoPen), second.pen);
    EXPECT_TRUE(second.transform.isIdentity());
    EXPECT_TRUE(second.clip.isNull());
}

TEST_F(SUPPORT_PICTURE_TEST, a_recording_takes_a_whole_widget)
{
    FLAG flag;
    RECORDING_PAINT_DEVICE device(flag.size());
    flag.render(&device);
    EXPECT_TRUE(device.contains(QStringLiteral("rect 10 5 4 3")));
}
