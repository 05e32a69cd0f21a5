// Counts what the drawing resources take from the heap: malloc() of the whole process is this file's.

#include "tolv_gdi_fixture.h"

#include "tolv_brush.h"
#include "tolv_font.h"
#include "tolv_pen.h"

#include <cstdlib>

#if !defined(__SANITIZE_ADDRESS__)

static thread_local long s_allocation_count = 0;

extern "C"
{
    void* __libc_malloc(std::size_t size); // NOLINT: the C library's own name
    void* malloc(std::size_t size)
    {
        ++s_allocation_count;
        return __libc_malloc(size);
    }
}

namespace
{
template <class CODE>
long count_allocations(const CODE& code)
{
    const long first = s_allocation_count;
    code();
    return s_allocation_count - first;
}
} // namespace

using TOLV_GDI_ALLOCATION_TEST = GDI_TEST;

TEST_F(TOLV_GDI_ALLOCATION_TEST, a_custom_pen_or_brush_takes_memory_only_the_first_time)
{
    const auto get_pen = []
    { manager().get_custom_pen(Qt::DashLine, Qt::RoundCap, Qt::MiterJoin, 3, QColor(1, 2, 3)); };
    EXPECT_LT(0, count_allocations(get_pen));
    EXPECT_EQ(0, count_allocations(get_pen));
    const auto get_brush = [] { manager().get_custom_brush(Qt::Dense1Pattern, QColor(1, 2, 3)); };
    EXPECT_LT(0, count_allocations(get_brush));
    EXPECT_EQ(0, count_allocations(get_brush));
}

TEST_F(TOLV_GDI_ALLOCATION_TEST, copies_of_value_objects_take_no_memory)
{
    const TOLV_COLOR color(TOLV_RED_COLOR);
    const TOLV_PEN named_pen(TOLV_RED_PEN);
    const TOLV_PEN custom_pen(QPen(QColor(1, 2, 3), 4, Qt::DashLine));
    const TOLV_BRUSH brush(QBrush(QColor(1, 2, 3)));
    TOLV_FONT font(TOLV_GUI_FONT);
    font.set_point_size(17);
    // NOLINTBEGIN(performance-unnecessary-copy-initialization): the copies are what is tested
    EXPECT_EQ(0, count_allocations(
                     [&]
                     {
                         const TOLV_COLOR color_copy(color);
                         const TOLV_PEN named_copy(named_pen);
                         TOLV_PEN custom_copy(custom_pen);
                         custom_copy = named_copy;
                         const TOLV_BRUSH brush_copy(brush);
                         const TOLV_FONT font_copy(font);
                     }));
    // NOLINTEND(performance-unnecessary-copy-initialization)
}

TEST_F(TOLV_GDI_ALLOCATION_TEST, look_ups_take_no_memory)
{
    const TOLV_PEN pen(TOLV_RED_PEN);
    const TOLV_COLOR color(TOLV_RED_COLOR);
    EXPECT_EQ(0, count_allocations(
                     [&]
                     {
                         pen.get_pen();
                         pen.get_width();
                         color.get_color();
                         manager().get_brush(TOLV_RED_BRUSH);
                         manager().get_font(TOLV_GUI_FONT, nullptr, nullptr);
                     }));
}

#endif
