#pragma once

#include "tolv_export.h"

#include <cstdint>
#include <map>
#include <string>

/// Counters of the time that a paint spends, by name, and their text for display. Each TOLV_VIEWPORT has one: the items
/// of a drawing add to it while they paint. GUI thread only.
class TOLV_EXPORT TOLV_PERF_DEBUG
{
public:
    /// Adds one call of so long, in microseconds, to a counter.
    void add(const std::string& name, std::uint64_t usec);
    /// Forgets all counters.
    void clear();

    /// A line for each counter, in the order of the names, each begun with a line feed: "\nitems: 9000 usec (12 calls)".
    /// A time of more than 10000 microseconds is given in "msec", the fraction cut off.
    std::string get_performance_info_string() const;

private:
    std::map<std::string, std::uint64_t> m_times; ///< microseconds
    std::map<std::string, std::uint64_t> m_calls;
};
