#include "put.h"

#include <algorithm>
#include <atomic>

namespace
{
std::atomic<int> s_core_count{1};
std::atomic<int> s_logical_count{1};
std::atomic<bool> s_is_initialized{false};
} // namespace

void PUT_PROCESSOR_MANAGER::initialize(int core_count, int logical_count)
{
    s_core_count = std::max(core_count, 1);
    s_logical_count = std::max(logical_count, 1);
    s_is_initialized = true;
}

int PUT_PROCESSOR_MANAGER::get_core_count()
{
    return s_core_count;
}

int PUT_PROCESSOR_MANAGER::get_logical_count()
{
    return s_logical_count;
}

bool PUT_PROCESSOR_MANAGER::is_initialized()
{
    return s_is_initialized;
}
