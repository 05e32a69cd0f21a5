#include "gui_test.h"
#include "tolv_view_arithmetic.h"

#include <cfloat>
#include <limits>

namespace
{
constexpr int LOWEST = std::numeric_limits<int>::min();
constexpr int HIGHEST = std::numeric_limits<int>::max();

class TOLV_VIEW_ARITHMETIC_TEST : public TOLV_TEST
{
};
} // namespace

TEST_F(TOLV_VIEW_ARITHMETIC_TEST, halves_round_away_from_zero)
{
    EXPECT_EQ(1, tolv_round(0.5));
    EXPECT_EQ(-1, tolv_round(-0.5));
    EXPECT_EQ(3, tolv_round(2.5));
    EXPECT_EQ(-3, tolv_round(-2.5));
    EXPECT_EQ(2, tolv_round(2.499));
    EXPECT_EQ(-2, tolv_round(-2.499));
    EXPECT_EQ(0, tolv_round(-0.49));
}

TEST_F(TOLV_VIEW_ARITHMETIC_TEST, truncation_goes_towards_zero)
{
    EXPECT_EQ(1, tolv_truncate(1.999));
    EXPECT_EQ(-1, tolv_truncate(-1.999));
    EXPECT_EQ(0, tolv_truncate(-0.999));
}

TEST_F(TOLV_VIEW_ARITHMETIC_TEST, what_an_int_cannot_hold_becomes_the_nearest_int)
{
    EXPECT_EQ(HIGHEST, tolv_truncate(FLT_MAX));
    EXPECT_EQ(LOWEST, tolv_truncate(-FLT_MAX));
    EXPECT_EQ(HIGHEST, tolv_round(std::numeric_limits<double>::infinity()));
    EXPECT_EQ(LOWEST, tolv_round(-std::numeric_limits<double>::infinity()));
    EXPECT_EQ(0, tolv_truncate(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ(HIGHEST, tolv_truncate(2147483647.0));
    EXPECT_EQ(2147483646, tolv_truncate(2147483646.9));
    EXPECT_EQ(LOWEST, tolv_round(-2147483648.0));
}

TEST_F(TOLV_VIEW_ARITHMETIC_TEST, positions_of_events_round_each_coordinate)
{
    EXPECT_EQ(QPoint(3, -3), tolv_round_position(QPointF(2.5, -2.5)));
    const QMouseEvent event(QEvent::MouseMove, QPointF(-0.5, 7.4), QPointF(1, 1), QPointF(100.5, -100.5), Qt::NoButton,
                            Qt::NoButton, Qt::NoModifier);
    EXPECT_EQ(QPoint(-1, 7), tolv_get_local_position(event));
    EXPECT_EQ(QPoint(101, -101), tolv_get_global_position(event));
}

TEST_F(TOLV_VIEW_ARITHMETIC_TEST, both_corners_belong_to_a_rectangle)
{
    EXPECT_EQ(QRect(3, 4, 8, 6), tolv_make_rect(3, 4, 10, 9));
    EXPECT_EQ(QSize(7, 5), tolv_get_span(tolv_make_rect(3, 4, 10, 9)));
    EXPECT_EQ(QSize(-1, -1), tolv_get_span(QRect()));
}
