#include "cfg.h"
#include "gen.h"

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <mutex>
#include <time.h>

namespace
{
struct PROFILE
{
    std::mutex mutex;
    std::map<std::string, GEN_PROFILE_BINS::BIN> bins;
    std::string program_name;
    bool debug_messages_enabled = false;
    std::atomic<bool> is_active{false};
};

/// Never freed: objects that die after main() may still count.
PROFILE& profile()
{
    static auto* const object = new PROFILE;
    return *object;
}

/// Never 0, which stands for a scope that does not count.
std::uint64_t get_steady_usec()
{
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<std::uint64_t>(now.tv_sec) * 1000000 + static_cast<std::uint64_t>(now.tv_nsec) / 1000 + 1;
}

using NAMED_BIN = std::pair<std::string, GEN_PROFILE_BINS::BIN>;

void write_report_file(const std::string& program_name, const std::map<std::string, GEN_PROFILE_BINS::BIN>& bins)
{
    std::vector<NAMED_BIN> sorted(bins.begin(), bins.end());
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const NAMED_BIN& a, const NAMED_BIN& b) { return a.second.usec > b.second.usec; });
    std::string name = program_name;
    std::replace(name.begin(), name.end(), '/', '_');
    std::FILE* file = std::fopen((name + "_profile.txt").c_str(), "we");
    if (file == nullptr)
        return;
    std::fprintf(file, "%14s %12s  %s\n", "microseconds", "calls", "counter");
    for (const auto& [counter, bin] : sorted)
        std::fprintf(file, "%14llu %12llu  %s\n", static_cast<unsigned long long>(bin.usec),
                     static_cast<unsigned long long>(bin.calls), counter.c_str());
    std::fclose(file);
}
} // namespace

void GEN_PROFILE_BINS::initialize(const std::string& program_name, bool debug_messages_enabled)
{
    PROFILE& state = profile();
    const std::lock_guard<std::mutex> lock(state.mutex);
    state.bins.clear();
    state.program_name = program_name;
    state.debug_messages_enabled = debug_messages_enabled;
    state.is_active = true;
}

void GEN_PROFILE_BINS::finalize(const std::string& program_name, bool write_report)
{
    PROFILE& state = profile();
    std::map<std::string, BIN> bins;
    {
        const std::lock_guard<std::mutex> lock(state.mutex);
        if (!state.is_active.exchange(false))
            return;
        bins = state.bins;
    }
    if (write_report && !bins.empty() && cfg_is_on("write_profile"))
        write_report_file(program_name, bins);
}

bool GEN_PROFILE_BINS::is_active()
{
    return profile().is_active;
}

std::string GEN_PROFILE_BINS::get_program_name()
{
    PROFILE& state = profile();
    const std::lock_guard<std::mutex> lock(state.mutex);
    return state.program_name;
}

bool GEN_PROFILE_BINS::get_debug_messages_enabled()
{
    PROFILE& state = profile();
    const std::lock_guard<std::mutex> lock(state.mutex);
    return state.debug_messages_enabled;
}

void GEN_PROFILE_BINS::add(const std::string& name, std::uint64_t usec)
{
    PROFILE& state = profile();
    const std::lock_guard<std::mutex> lock(state.mutex);
    if (!state.is_active)
        return;
    BIN& bin = state.bins[name];
    bin.usec += usec;
    ++bin.calls;
}

std::map<std::string, GEN_PROFILE_BINS::BIN> GEN_PROFILE_BINS::get_bins()
{
    PROFILE& state = profile();
    const std::lock_guard<std::mutex> lock(state.mutex);
    return state.bins;
}

GEN_PROFILE_SCOPE::GEN_PROFILE_SCOPE(const char* name)
    : m_name(name), m_start_usec(name != nullptr && GEN_PROFILE_BINS::is_active() ? get_steady_usec() : 0)
{
}

GEN_PROFILE_SCOPE::~GEN_PROFILE_SCOPE()
{
    if (m_start_usec != 0)
        GEN_PROFILE_BINS::add(m_name, get_steady_usec() - m_start_usec);
}
