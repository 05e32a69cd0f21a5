// Counts what tolv_string_cmp() takes from the heap: malloc() of the whole process is this file's.

#include "tolv_string_cmp.h"

#include <gtest/gtest.h>

#include <QVector>

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
/// Number of allocations of all comparisons of two of these texts.
long count_allocations(const QVector<QString>& texts)
{
    const long first = s_allocation_count;
    for (const QString& a : texts)
    {
        for (const QString& b : texts)
            tolv_string_cmp(a, b);
    }
    return s_allocation_count - first;
}
} // namespace

TEST(TOLV_STRING_CMP_ALLOCATION, the_counter_counts)
{
    EXPECT_LT(0, count_allocations({QStringLiteral("a text that is far longer than what fits into a string object")}));
}

TEST(TOLV_STRING_CMP_ALLOCATION, numbers_need_no_memory)
{
    EXPECT_EQ(0, count_allocations({QStringLiteral("0"), QStringLiteral("1,234,567"), QStringLiteral("-12.75"),
                                    QStringLiteral("1.5e-9"), QStringLiteral("12\n"),
                                    QStringLiteral("0.12345678901234567890123e-12"), QString(100, QLatin1Char('7'))}));
}

TEST(TOLV_STRING_CMP_ALLOCATION, short_names_need_no_memory)
{
    tolv_string_cmp(QStringLiteral("clk"), QStringLiteral("rst_n")); // Qt finds out the local encoding
    EXPECT_EQ(0,
              count_allocations({QStringLiteral("clk"), QStringLiteral("rst_n"), QStringLiteral("12 ns"), QString()}));
}

#endif
