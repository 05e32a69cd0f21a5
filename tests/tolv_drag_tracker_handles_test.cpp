#include "gui_test.h"
#include "picture.h"
#include "recording_paint_device.h"
#include "tolv_color.h"
#include "tolv_drag_tracker.h"
#include "tolv_pen.h"

#include <QImage>
#include <QPainter>

#include <type_traits>
#include <vector>

namespace
{
struct HANDLE_CASE
{
    RESIZE_HANDLES handle;
    int value;
    QPoint box;
    Qt::CursorShape cursor;
    QPoint fixed_1;
    QPoint fixed_2;
};

/// Columns 100 to 299, rows 50 to 149.
const QRect RECT(100, 50, 200, 100);

const std::vector<HANDLE_CASE>& get_cases()
{
    static const std::vector<HANDLE_CASE> cases = {
        {RESIZE_HANDLE_TOP_LEFT, 1, {100, 50}, Qt::SizeFDiagCursor, {300, 150}, {300, 150}},
        {RESIZE_HANDLE_TOP, 2, {196, 50}, Qt::SizeVerCursor, {100, 150}, {300, 150}},
        {RESIZE_HANDLE_TOP_RIGHT, 4, {292, 50}, Qt::SizeBDiagCursor, {100, 150}, {100, 150}},
        {RESIZE_HANDLE_RIGHT, 8, {292, 96}, Qt::SizeHorCursor, {100, 50}, {100, 150}},
        {RESIZE_HANDLE_BOTTOM_RIGHT, 16, {292, 142}, Qt::SizeFDiagCursor, {100, 50}, {100, 50}},
        {RESIZE_HANDLE_BOTTOM, 32, {196, 142}, Qt::SizeVerCursor, {100, 50}, {300, 50}},
        {RESIZE_HANDLE_BOTTOM_LEFT, 64, {100, 142}, Qt::SizeBDiagCursor, {300, 50}, {300, 50}},
        {RESIZE_HANDLE_LEFT, 128, {100, 96}, Qt::SizeHorCursor, {300, 50}, {300, 150}},
    };
    return cases;
}

class TOLV_DRAG_TRACKER_HANDLES_TEST : public TOLV_GUI_TEST
{
protected:
    void TearDown() override
    {
        TOLV_DRAG_TRACKER::s_ACTIVE_RESIZE_HANDLES = 255;
        TOLV_GUI_TEST::TearDown();
    }
};

QStringList record(const std::function<void(QPainter&)>& draw)
{
    RECORDING_PAINT_DEVICE device;
    QPainter painter(&device);
    draw(painter);
    painter.end();
    return device.get_texts();
}

TOLV_PEN make_pen(const QColor& color)
{
    return {QPen(color, 1)};
}
} // namespace

// ---- Hits -----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, all_eight_handles_are_in_use_at_first)
{
    static_assert(std::is_same_v<decltype(TOLV_DRAG_TRACKER::s_ACTIVE_RESIZE_HANDLES), quint64>);
    EXPECT_EQ(255U, TOLV_DRAG_TRACKER::s_ACTIVE_RESIZE_HANDLES);
}

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, each_handle_is_a_square_of_eight_pixels_inside_of_the_rectangle)
{
    for (const HANDLE_CASE& expected : get_cases())
    {
        SCOPED_TRACE(expected.value);
        EXPECT_EQ(expected.value, expected.handle);
        const QRect box(expected.box, QSize(8, 8));
        for (const QPoint& inside : {box.topLeft(), box.topRight(), box.bottomLeft(), box.bottomRight(), box.center()})
            EXPECT_EQ(expected.handle, TOLV_DRAG_TRACKER::hit_handle(RECT, inside, nullptr, nullptr, 8));
        for (const QPoint& outside : {box.topLeft() - QPoint(1, 0), box.topLeft() - QPoint(0, 1),
                                      box.bottomRight() + QPoint(1, 0), box.bottomRight() + QPoint(0, 1)})
            EXPECT_EQ(RESIZE_HANDLE_NONE, TOLV_DRAG_TRACKER::hit_handle(RECT, outside, nullptr, nullptr, 8));
    }
}

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, a_hit_gives_the_points_that_stay_in_place)
{
    for (const HANDLE_CASE& expected : get_cases())
    {
        SCOPED_TRACE(expected.value);
        QPoint fixed_1;
        QPoint fixed_2;
        TOLV_DRAG_TRACKER::hit_handle(RECT, expected.box, &fixed_1, &fixed_2, 8);
        EXPECT_EQ(expected.fixed_1, fixed_1);
        EXPECT_EQ(expected.fixed_2, fixed_2);
    }
}

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, each_of_the_fixed_points_may_be_left_out)
{
    QPoint fixed_1;
    QPoint fixed_2;
    EXPECT_EQ(RESIZE_HANDLE_LEFT, TOLV_DRAG_TRACKER::hit_handle(RECT, QPoint(100, 96), nullptr, &fixed_2, 8));
    EXPECT_EQ(QPoint(300, 150), fixed_2);
    EXPECT_EQ(RESIZE_HANDLE_LEFT, TOLV_DRAG_TRACKER::hit_handle(RECT, QPoint(100, 96), &fixed_1, nullptr, 8));
    EXPECT_EQ(QPoint(300, 50), fixed_1);
}

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, a_miss_leaves_the_points_as_they_are)
{
    QPoint fixed_1(1, 2);
    QPoint fixed_2(3, 4);
    EXPECT_EQ(RESIZE_HANDLE_NONE, TOLV_DRAG_TRACKER::hit_handle(RECT, QPoint(150, 80), &fixed_1, &fixed_2, 8));
    EXPECT_EQ(QPoint(1, 2), fixed_1);
    EXPECT_EQ(QPoint(3, 4), fixed_2);
}

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, a_size_below_one_means_eight)
{
    for (const int size : {0, -1, -100})
    {
        SCOPED_TRACE(size);
        EXPECT_EQ(RESIZE_HANDLE_TOP_LEFT, TOLV_DRAG_TRACKER::hit_handle(RECT, QPoint(107, 57), nullptr, nullptr, size));
        EXPECT_EQ(RESIZE_HANDLE_NONE, TOLV_DRAG_TRACKER::hit_handle(RECT, QPoint(108, 57), nullptr, nullptr, size));
        EXPECT_TRUE(TOLV_DRAG_TRACKER::hit_handle(QPoint(50, 60), QPoint(46, 56), size));
        EXPECT_FALSE(TOLV_DRAG_TRACKER::hit_handle(QPoint(50, 60), QPoint(45, 56), size));
    }
    EXPECT_EQ(RESIZE_HANDLE_TOP_LEFT, TOLV_DRAG_TRACKER::hit_handle(RECT, QPoint(100, 50), nullptr, nullptr, 1));
    EXPECT_EQ(RESIZE_HANDLE_NONE, TOLV_DRAG_TRACKER::hit_handle(RECT, QPoint(101, 50), nullptr, nullptr, 1));
}

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, an_odd_size_is_halved_downwards)
{
    // 200 - 7 / 2 = 197 to 203, and 300 - 7 = 293.
    EXPECT_EQ(RESIZE_HANDLE_NONE, TOLV_DRAG_TRACKER::hit_handle(RECT, QPoint(196, 50), nullptr, nullptr, 7));
    EXPECT_EQ(RESIZE_HANDLE_TOP, TOLV_DRAG_TRACKER::hit_handle(RECT, QPoint(197, 50), nullptr, nullptr, 7));
    EXPECT_EQ(RESIZE_HANDLE_TOP, TOLV_DRAG_TRACKER::hit_handle(RECT, QPoint(203, 56), nullptr, nullptr, 7));
    EXPECT_EQ(RESIZE_HANDLE_NONE, TOLV_DRAG_TRACKER::hit_handle(RECT, QPoint(204, 56), nullptr, nullptr, 7));
    EXPECT_EQ(RESIZE_HANDLE_BOTTOM_RIGHT, TOLV_DRAG_TRACKER::hit_handle(RECT, QPoint(293, 143), nullptr, nullptr, 7));
}

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, the_middle_of_a_side_is_truncated_toward_zero)
{
    const QRect rect(-41, -61, 41, 61); // to column -1 and row -1: (0 - 41) / 2 = -20, (0 - 61) / 2 = -30
    EXPECT_EQ(RESIZE_HANDLE_NONE, TOLV_DRAG_TRACKER::hit_handle(rect, QPoint(-25, -61), nullptr, nullptr, 8));
    EXPECT_EQ(RESIZE_HANDLE_TOP, TOLV_DRAG_TRACKER::hit_handle(rect, QPoint(-24, -61), nullptr, nullptr, 8));
    EXPECT_EQ(RESIZE_HANDLE_TOP, TOLV_DRAG_TRACKER::hit_handle(rect, QPoint(-17, -61), nullptr, nullptr, 8));
    EXPECT_EQ(RESIZE_HANDLE_NONE, TOLV_DRAG_TRACKER::hit_handle(rect, QPoint(-41, -35), nullptr, nullptr, 8));
    EXPECT_EQ(RESIZE_HANDLE_LEFT, TOLV_DRAG_TRACKER::hit_handle(rect, QPoint(-41, -34), nullptr, nullptr, 8));
}

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, where_handles_overlap_the_lowest_value_in_use_wins)
{
    const QRect small(0, 0, 10, 10);
    const QPoint middle(5, 5); // in all eight
    EXPECT_EQ(1, TOLV_DRAG_TRACKER::hit_handle(small, middle, nullptr, nullptr, 8));
    for (int lowest = 1; lowest <= 128; lowest *= 2)
    {
        TOLV_DRAG_TRACKER::s_ACTIVE_RESIZE_HANDLES = quint64(256 - lowest); // this one and all above
        EXPECT_EQ(lowest, TOLV_DRAG_TRACKER::hit_handle(small, middle, nullptr, nullptr, 8));
    }
    TOLV_DRAG_TRACKER::s_ACTIVE_RESIZE_HANDLES = 0;
    EXPECT_EQ(0, TOLV_DRAG_TRACKER::hit_handle(small, middle, nullptr, nullptr, 8));
}

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, a_single_handle_lies_around_its_point)
{
    EXPECT_TRUE(TOLV_DRAG_TRACKER::hit_handle(QPoint(50, 60), QPoint(46, 56), 8));
    EXPECT_TRUE(TOLV_DRAG_TRACKER::hit_handle(QPoint(50, 60), QPoint(53, 63), 8));
    EXPECT_FALSE(TOLV_DRAG_TRACKER::hit_handle(QPoint(50, 60), QPoint(54, 63), 8));
    EXPECT_FALSE(TOLV_DRAG_TRACKER::hit_handle(QPoint(50, 60), QPoint(46, 55), 8));
    EXPECT_TRUE(TOLV_DRAG_TRACKER::hit_handle(QPoint(50, 60), QPoint(48, 62), 5));
    EXPECT_FALSE(TOLV_DRAG_TRACKER::hit_handle(QPoint(50, 60), QPoint(47, 62), 5));
}

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, a_line_has_a_handle_at_both_ends)
{
    const QPoint a(10, 10);
    const QPoint b(90, 10);
    EXPECT_TRUE(TOLV_DRAG_TRACKER::hit_handle(a, b, QPoint(12, 12), 8));
    EXPECT_TRUE(TOLV_DRAG_TRACKER::hit_handle(a, b, QPoint(88, 8), 8));
    EXPECT_FALSE(TOLV_DRAG_TRACKER::hit_handle(a, b, QPoint(50, 10), 8));
}

// ---- Cursors --------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, each_handle_has_its_cursor)
{
    for (const HANDLE_CASE& expected : get_cases())
    {
        SCOPED_TRACE(expected.value);
        EXPECT_EQ(expected.cursor, TOLV_DRAG_TRACKER::get_cursor(RECT, expected.box, Qt::CrossCursor).shape());
        EXPECT_EQ(expected.cursor,
                  TOLV_DRAG_TRACKER::get_cursor(RECT, expected.box + QPoint(7, 7), Qt::CrossCursor).shape());
    }
}

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, elsewhere_the_cursor_is_the_default_one)
{
    EXPECT_EQ(Qt::CrossCursor, TOLV_DRAG_TRACKER::get_cursor(RECT, QPoint(108, 58), Qt::CrossCursor).shape());
    TOLV_DRAG_TRACKER::s_ACTIVE_RESIZE_HANDLES = 254;
    EXPECT_EQ(Qt::IBeamCursor, TOLV_DRAG_TRACKER::get_cursor(RECT, QPoint(100, 50), Qt::IBeamCursor).shape());
}

// ---- Drawing --------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, a_rectangle_is_drawn_with_its_handles)
{
    const QStringList expected = {
        QStringLiteral("rect 100 50 200 100"), QStringLiteral("rect 100 50 8 8"),  QStringLiteral("rect 196 50 8 8"),
        QStringLiteral("rect 292 50 8 8"),     QStringLiteral("rect 292 96 8 8"),  QStringLiteral("rect 292 142 8 8"),
        QStringLiteral("rect 196 142 8 8"),    QStringLiteral("rect 100 142 8 8"), QStringLiteral("rect 100 96 8 8")};
    for (const bool filled : {false, true})
        EXPECT_EQ(expected,
                  record([&](QPainter& painter)
                         { TOLV_DRAG_TRACKER::draw_resize_handles(&painter, make_pen(Qt::red), RECT, filled); }));
}

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, handles_keep_their_size_on_the_screen)
{
    const auto draw_at = [](double scale)
    {
        return record(
            [=](QPainter& painter)
            {
                painter.scale(scale, 3.0); // only the horizontal scale counts
                TOLV_DRAG_TRACKER::draw_resize_handles(&painter, make_pen(Qt::red), RECT, false);
            });
    };
    const QStringList twice = draw_at(2.0);
    EXPECT_EQ(QStringLiteral("rect 100 50 200 100"), twice.value(0));
    EXPECT_EQ(QStringLiteral("rect 100 50 4 4"), twice.value(1));
    EXPECT_EQ(QStringLiteral("rect 198 50 4 4"), twice.value(2));
    EXPECT_EQ(QStringLiteral("rect 296 146 4 4"), twice.value(5));
    const QStringList large = draw_at(16.0);
    EXPECT_EQ(QStringLiteral("rect 199.75 50 0.5 0.5"), large.value(2));
    EXPECT_EQ(QStringLiteral("rect 299.5 99.75 0.5 0.5"), large.value(4));
}

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, the_middle_of_a_side_is_drawn_unrounded)
{
    const QStringList texts =
        record([](QPainter& painter)
               { TOLV_DRAG_TRACKER::draw_resize_handles(&painter, make_pen(Qt::red), QRect(0, 0, 41, 61), false); });
    EXPECT_EQ(QStringLiteral("rect 16.5 0 8 8"), texts.value(2));
    EXPECT_EQ(QStringLiteral("rect 33 26.5 8 8"), texts.value(4));
}

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, a_turned_painter_counts_as_unscaled)
{
    const QStringList texts = record(
        [](QPainter& painter)
        {
            painter.setTransform(QTransform(0, 2, -2, 0, 500, 0));
            TOLV_DRAG_TRACKER::draw_resize_handles(&painter, make_pen(Qt::red), RECT, false);
        });
    EXPECT_EQ(QStringLiteral("rect 100 50 8 8"), texts.value(1));
}

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, only_handles_in_use_are_drawn)
{
    TOLV_DRAG_TRACKER::s_ACTIVE_RESIZE_HANDLES = RESIZE_HANDLE_RIGHT | RESIZE_HANDLE_BOTTOM_LEFT;
    EXPECT_EQ(QStringList({QStringLiteral("rect 100 50 200 100"), QStringLiteral("rect 292 96 8 8"),
                           QStringLiteral("rect 100 142 8 8")}),
              record([](QPainter& painter)
                     { TOLV_DRAG_TRACKER::draw_resize_handles(&painter, make_pen(Qt::red), RECT, true); }));
}

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, filled_handles_have_the_colour_of_the_pen_inside_and_others_only_around)
{
    for (const bool filled : {false, true})
    {
        SCOPED_TRACE(filled);
        QImage picture(400, 200, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::white);
        QPainter painter(&picture);
        TOLV_DRAG_TRACKER::draw_resize_handles(&painter, make_pen(Qt::red), RECT, filled);
        painter.end();
        EXPECT_EQ(QRect(100, 50, 201, 101), find_color_rect(picture, Qt::red)); // an outline has one pixel more
        for (const HANDLE_CASE& expected : get_cases())
        {
            const QRect inside(expected.box + QPoint(1, 1), QSize(6, 6));
            EXPECT_EQ(filled ? 36 : 0, count_pixels(picture, Qt::red, 0, inside)) << expected.value;
            EXPECT_EQ(8, count_pixels(picture, Qt::red, 0, QRect(expected.box, QSize(8, 1)))) << expected.value;
        }
        EXPECT_EQ(QColor(Qt::white), picture.pixelColor(150, 80));
    }
}

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, handles_at_points_are_filled_squares_around_them)
{
    EXPECT_EQ(QStringList(QStringLiteral("rect 46 36 8 8")),
              record([](QPainter& painter)
                     { TOLV_DRAG_TRACKER::draw_resize_handle(&painter, make_pen(Qt::red), QPoint(50, 40), -1); }));
    EXPECT_EQ(QStringList(QStringLiteral("rect 44.5 34.5 11 11")),
              record([](QPainter& painter)
                     { TOLV_DRAG_TRACKER::draw_resize_handle(&painter, make_pen(Qt::red), QPoint(50, 40), 11); }));
    EXPECT_EQ(QStringList(QStringLiteral("rect 50 40 0 0")), // only -1 stands for eight
              record([](QPainter& painter)
                     { TOLV_DRAG_TRACKER::draw_resize_handle(&painter, make_pen(Qt::red), QPoint(50, 40), 0); }));
    EXPECT_EQ(QStringList({QStringLiteral("rect 48 38 4 4"), QStringLiteral("rect -2 8 4 4")}),
              record(
                  [](QPainter& painter)
                  {
                      painter.scale(2, 2);
                      TOLV_DRAG_TRACKER::draw_resize_handles(&painter, make_pen(Qt::red), QPoint(50, 40),
                                                             QPoint(0, 10));
                  }));
}

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, a_handle_at_a_point_is_drawn_in_the_colour_of_the_pen)
{
    RECORDING_PAINT_DEVICE device;
    QPainter painter(&device);
    TOLV_DRAG_TRACKER::draw_resize_handle(&painter, make_pen(Qt::red), QPoint(50, 40), 8);
    TOLV_DRAG_TRACKER::draw_handle_helper(&painter, QPoint(50, 40), TOLV_COLOR(QColor(Qt::blue)), -1);
    painter.end();
    ASSERT_EQ(2, device.get_commands().size());
    EXPECT_EQ(QColor(Qt::red), device.get_commands().at(0).brush.color());
    EXPECT_EQ(QColor(Qt::blue), device.get_commands().at(1).brush.color());
    EXPECT_EQ(QStringLiteral("rect 46 36 8 8"), device.get_commands().at(1).text);
}

TEST_F(TOLV_DRAG_TRACKER_HANDLES_TEST, the_painter_is_left_as_it_was)
{
    RECORDING_PAINT_DEVICE device;
    QPainter painter(&device);
    const QPen pen(Qt::green, 5);
    painter.setPen(pen);
    TOLV_DRAG_TRACKER::draw_resize_handles(&painter, make_pen(Qt::red), RECT, true);
    EXPECT_EQ(pen, painter.pen());
    TOLV_DRAG_TRACKER::draw_resize_handle(&painter, make_pen(Qt::red), QPoint(50, 40), 8);
    EXPECT_EQ(pen, painter.pen());
    EXPECT_EQ(QColor(Qt::red), device.get_commands().constFirst().pen.color());
}
