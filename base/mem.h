#pragma once

#include "base_export.h"

#include <string>
#include <vector>

/// Memory tracking and the allocator. All functions may be called on any thread, also before and after main().

/// Registers a library with the memory tracking: each source file holds one static object of this class, built with
/// the library's tag. The tag must outlive the object (a literal); a null tag registers nothing.
class TOLV_BASE_EXPORT MEM_INITIALIZER
{
public:
    explicit MEM_INITIALIZER(const char* tag);
    ~MEM_INITIALIZER();
    MEM_INITIALIZER(const MEM_INITIALIZER&) = delete;
    MEM_INITIALIZER& operator=(const MEM_INITIALIZER&) = delete;

    /// Tags of all libraries registered at present, sorted, each once.
    static std::vector<std::string> get_registered_tags();

private:
    const char* m_tag;
};

/// Names the executable in the memory tracking of the thread pool.
TOLV_BASE_EXPORT void mem_set_tbb_exe_string(const std::string& exe_name);

/// The name last given to mem_set_tbb_exe_string(); empty before it and after mem_shutdown_tbb_tracking().
TOLV_BASE_EXPORT std::string mem_get_tbb_exe_string();

/// Ends the memory tracking of the thread pool.
TOLV_BASE_EXPORT void mem_shutdown_tbb_tracking();

namespace MEM
{
/// The allocator's own controls. Where the process runs on tcmalloc its C extension interface is used; on another
/// allocator the rate is only remembered.
///
/// The C interface has no rate, only a switch between the allocator's own pace and the release of every freed range at
/// once. A rate above 10, which is as fast as the own pace is meant to go, turns that switch on and gives back at once
/// what is free already; a rate of 10 or below returns to the own pace. A switch that the user's environment
/// has set (`TCMALLOC_AGGRESSIVE_DECOMMIT`) stays on.
class TOLV_BASE_EXPORT MALLOC_EXTENSION
{
public:
    /// Rate at which freed memory goes back to the system: 0 slowest, 10 fast, higher at once. What is below 0 or no
    /// number counts as 0.
    static void set_memory_release_rate(double rate);

    /// The rate last set. Before that the rate with which tcmalloc began (the environment variable
    /// `TCMALLOC_RELEASE_RATE`), and 1.0 without the variable or without tcmalloc.
    static double get_memory_release_rate();

    /// Reports a text about the allocator: to standard error if the configuration switch "mem_print_messages" is on,
    /// and always to the messages kept for get_messages(). Null is harmless.
    static void print_message(const char* text);

    /// The texts of the last 64 calls of print_message(), oldest first.
    static std::vector<std::string> get_messages();

    /// Whether the process runs on tcmalloc.
    static bool is_tcmalloc();
};
} // namespace MEM
