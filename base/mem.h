#pragma once

#include "base_export.h"

#include <string>
#include <vector>

/// Memory tracking and the allocator.

/// Registers a library with the memory tracking: each source file holds one static object of this class, built with
/// the library's tag. The tag must outlive the object (a literal).
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
/// The allocator's own controls. Where the process runs on tcmalloc its extension interface is used; on another
/// allocator the rate is only remembered.
class TOLV_BASE_EXPORT MALLOC_EXTENSION
{
public:
    /// Rate at which freed memory goes back to the system: 0 never, 10 fast, higher more eagerly.
    static void set_memory_release_rate(double rate);

    /// The rate in force. Without tcmalloc: the rate last set, 1.0 before.
    static double get_memory_release_rate();

    /// Reports a text about the allocator: to standard error if the configuration switch "mem_print_messages" is on,
    /// else only to the messages kept for get_messages().
    static void print_message(const char* text);

    /// The texts of the last 64 calls of print_message(), oldest first.
    static std::vector<std::string> get_messages();

    /// Whether the process runs on tcmalloc.
    static bool is_tcmalloc();
};
} // namespace MEM
