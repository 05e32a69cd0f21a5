#pragma once

#include <QtGlobal>

#include <algorithm>

/// How many rows a benchmark measures with: `count`, or no more than the environment variable TOLV_BENCH_MAX_ROWS says.
/// tools/check_bench sets that, since it only wants to see each benchmark run.
inline int get_row_count(int count)
{
    static const int limit = qEnvironmentVariableIntValue("TOLV_BENCH_MAX_ROWS");
    return limit > 0 ? std::min(count, limit) : count;
}
