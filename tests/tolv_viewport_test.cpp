#include "gui_test.h"
#include "tolv_perf_debug.h"
#include "tolv_viewport.h"

namespace
{
class TOLV_VIEWPORT_TEST : public TOLV_GUI_TEST
{
};
} // namespace

TEST_F(TOLV_VIEWPORT_TEST, a_viewport_has_counters_of_its_own_and_no_parent)
{
    const TOLV_VIEWPORT viewport;
    const TOLV_VIEWPORT other;
    EXPECT_EQ(nullptr, viewport.parent());
    ASSERT_NE(nullptr, viewport.perf_debug());
    EXPECT_NE(other.perf_debug(), viewport.perf_debug());
    EXPECT_EQ("", viewport.perf_debug()->get_performance_info_string());
    viewport.perf_debug()->add("wires", 3);
    EXPECT_EQ("", other.perf_debug()->get_performance_info_string());
}

TEST_F(TOLV_VIEWPORT_TEST, counters_are_told_in_the_order_of_their_names)
{
    TOLV_PERF_DEBUG counters;
    counters.add("wires", 7);
    counters.add("cells", 20);
    counters.add("wires", 5);
    EXPECT_EQ("\ncells: 20 usec (1 calls)\nwires: 12 usec (2 calls)", counters.get_performance_info_string());
    counters.clear();
    EXPECT_EQ("", counters.get_performance_info_string());
}

TEST_F(TOLV_VIEWPORT_TEST, more_than_ten_thousand_microseconds_are_milliseconds)
{
    TOLV_PERF_DEBUG counters;
    counters.add("a", 10000);
    counters.add("b", 10001);
    counters.add("c", 25999);
    EXPECT_EQ("\na: 10000 usec (1 calls)\nb: 10 msec (1 calls)\nc: 25 msec (1 calls)",
              counters.get_performance_info_string());
}
