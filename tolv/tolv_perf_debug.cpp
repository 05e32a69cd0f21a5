#include "tolv_perf_debug.h"

#include "tolv_mem.h"

TOLV_MEM_INITIALIZER();

void TOLV_PERF_DEBUG::add(const std::string& name, std::uint64_t usec)
{
    m_times[name] += usec;
    ++m_calls[name];
}

void TOLV_PERF_DEBUG::clear()
{
    m_times.clear();
    m_calls.clear();
}

std::string TOLV_PERF_DEBUG::get_performance_info_string() const
{
    std::string result;
    for (const auto& [name, usec] : m_times)
    {
        const bool is_long = usec > 10000;
        result += "\n" + name + ": " + std::to_string(is_long ? usec / 1000 : usec) + (is_long ? " msec" : " usec") +
                  " (" + std::to_string(m_calls.at(name)) + " calls)";
    }
    return result;
}
