#pragma once

#include "base_export.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

/// General services: the process, the machine, time, text, random numbers, undo. Free functions and static operations
/// may be called on any thread; objects belong to the thread that uses them.

// ---- The process ----------------------------------------------------------------------------------------------------

/// File name of the running program, without its folder ("norvane_workbench"): the file's own name with all of its
/// endings, also where the program was started by a symbolic link, and also when the file has been removed since. As it
/// was at the first call; empty on a system without /proc.
TOLV_BASE_EXPORT std::string gen_get_module_filename();

/// Folder of the running program, absolute, without a trailing "/".
TOLV_BASE_EXPORT std::string gen_get_module_path();

/// The user's profile folder, absolute: the environment variable `NORVANE_USER_PROFILE`, else `HOME`, else what the
/// system's user database says ("/" where it says nothing). Empty variables count as unset, relative ones start at the
/// current directory; no trailing "/".
TOLV_BASE_EXPORT std::string gen_get_user_profile_directory();

/// Folder of the open project, absolute, without a trailing "/"; the current directory while none is set ("/" where
/// that was removed).
TOLV_BASE_EXPORT std::string gen_get_project_dir_path();

/// Sets the folder that gen_get_project_dir_path() answers; empty for none. A relative path starts at the directory
/// that is current now. Called by the host.
TOLV_BASE_EXPORT void gen_set_project_dir_path(const std::string& path);

/// Whether the process has a graphical user interface; set by the application object. False at first.
TOLV_BASE_EXPORT bool gen_get_is_ui_process();
TOLV_BASE_EXPORT void gen_set_is_ui_process(bool is_ui_process);

/// Whether that interface is Qt's; set by the application object. False at first.
TOLV_BASE_EXPORT bool gen_get_is_qt();
TOLV_BASE_EXPORT void gen_set_is_qt(bool is_qt);

// ---- Debugging ------------------------------------------------------------------------------------------------------

/// Breaks into the debugger that traces the process. Without one: nothing with `only_if_traced`, else SIGTRAP all the
/// same.
TOLV_BASE_EXPORT void gen_debug_break(bool only_if_traced);

/// Replaces what gen_debug_break() does; an empty function restores it. Returns the one before. For hosts with a debugger service
/// of their own, and for tests.
TOLV_BASE_EXPORT std::function<void(bool)> gen_set_debug_break_handler(std::function<void(bool)> handler);

/// Whether this is a build delivered to customers: the build option TOLV_CUSTOMER_BUILD, or the configuration switch
/// "customer_build" (which cannot turn a customer build back).
TOLV_BASE_EXPORT bool gen_debug_is_customer_build();

/// Writes to the platform's debugger output: appends the text as it stands to the file named by the configuration text
/// "debug_output_file", nowhere without it or where it cannot be written. A pipe that nobody reads never holds up the
/// caller. Null is harmless.
TOLV_BASE_EXPORT void gen_debug_output_string(const char* text);

// ---- Time -----------------------------------------------------------------------------------------------------------

/// Milliseconds since the machine started; wraps.
TOLV_BASE_EXPORT unsigned int gen_get_tick_count();

/// Wall clock in microseconds since 1970-01-01 00:00 UTC.
TOLV_BASE_EXPORT std::uint64_t gen_get_usec_wallclock();

// ---- Text -----------------------------------------------------------------------------------------------------------

/// Three-way comparison of two texts up to their first NUL, byte by byte as signed characters, so that bytes above 127
/// stand before all others: below zero, zero, above zero. A text that the other one begins with is below it.
TOLV_BASE_EXPORT int gen_signed_lexcmp(const std::string& a, const std::string& b);

/// Three-way comparison that takes the letters A to Z as a to z, other bytes as unsigned. A null text is below every
/// other and equal to null.
TOLV_BASE_EXPORT int gen_stricmp(const char* a, const char* b);

/// Turns the other system's path separators into this one's ("\" into "/"), in place. Null is harmless.
TOLV_BASE_EXPORT void gen_sync_path_separators(std::string* path);

// ---- Random numbers -------------------------------------------------------------------------------------------------

/// A generator of random numbers with a seed; equal seeds give equal sequences on every platform.
class TOLV_BASE_EXPORT GEN_RAND
{
public:
    explicit GEN_RAND(unsigned int seed);
    /// The next number, 0 to 2^32 - 1.
    unsigned int draw();

private:
    std::mt19937 m_engine;
};

// ---- The machine ----------------------------------------------------------------------------------------------------

/// What the process runs on. Processors that the process's affinity keeps it from do not count.
class TOLV_BASE_EXPORT GEN_MACHINE_INFO
{
public:
    /// Number of physical cores that this process may use, into `*count`. Returns whether it could be found out; `*count` stays as
    /// it is otherwise; a null `count` only asks. The configuration number "core_cpu_count" replaces the machine's answer; 0 or below makes the
    /// query fail.
    static bool get_core_cpu_count(int* count);

    /// The same for logical processors, with "logical_cpu_count".
    static bool get_logical_cpu_count(int* count);
};

// ---- Profiling ------------------------------------------------------------------------------------------------------

/// Time counters of the process by name. The application object begins and ends the counting; code in between adds its
/// times, mostly by a GEN_PROFILE_SCOPE.
class TOLV_BASE_EXPORT GEN_PROFILE_BINS
{
public:
    /// One counter.
    struct BIN
    {
        std::uint64_t usec = 0;  ///< time spent, microseconds
        std::uint64_t calls = 0; ///< times entered
    };

    /// Begins: forgets what was counted, remembers the program's name.
    static void initialize(const std::string& program_name, bool debug_messages_enabled);

    /// Ends the counting; the counters can be read until the next initialize(). With `write_report`, the configuration
    /// switch "write_profile" on and something counted, they go to `<program_name>_profile.txt` in the current directory
    /// (a "/" in the name becomes "_"), the longest time first. Nothing while not active.
    static void finalize(const std::string& program_name, bool write_report);

    /// Whether initialize() has run and finalize() has not.
    static bool is_active();

    /// Arguments of the last initialize().
    static std::string get_program_name();
    static bool get_debug_messages_enabled();

    /// Adds one call of so long to a counter; ignored while not active.
    static void add(const std::string& name, std::uint64_t usec);

    /// A copy of all counters.
    static std::map<std::string, BIN> get_bins();
};

/// Adds the life time of the object to a counter. The name must outlive the object (a literal). An object that is made
/// while nothing is counted, or with a null name, adds nothing.
class TOLV_BASE_EXPORT GEN_PROFILE_SCOPE
{
public:
    explicit GEN_PROFILE_SCOPE(const char* name);
    ~GEN_PROFILE_SCOPE();
    GEN_PROFILE_SCOPE(const GEN_PROFILE_SCOPE&) = delete;
    GEN_PROFILE_SCOPE& operator=(const GEN_PROFILE_SCOPE&) = delete;

private:
    const char* m_name;
    std::uint64_t m_start_usec;
};

// ---- Undo -----------------------------------------------------------------------------------------------------------

/// One step that can be taken back.
class TOLV_BASE_EXPORT GEN_UNDO_REDO_COMMAND
{
public:
    virtual ~GEN_UNDO_REDO_COMMAND();
    /// Does the step, at first and again.
    virtual void redo() = 0;
    /// Takes it back.
    virtual void undo() = 0;
    /// What the user reads behind "Undo".
    virtual std::string get_text() const = 0;
};

/// The process's stack of steps. The application object owns the one there is; it belongs to the GUI thread.
///
/// A command that throws leaves the stack as it was, and the exception goes on to the caller: a step that failed to be
/// done is not remembered, one that failed to be taken back can be taken back again. A command may execute further
/// commands while it runs: those are done at once as a part of it, are not remembered on their own, and its undo() must
/// take them back. undo(), redo() and clear() are ignored meanwhile.
class TOLV_BASE_EXPORT GEN_UNDO_REDO_MGR
{
public:
    GEN_UNDO_REDO_MGR();
    ~GEN_UNDO_REDO_MGR();
    GEN_UNDO_REDO_MGR(const GEN_UNDO_REDO_MGR&) = delete;
    GEN_UNDO_REDO_MGR& operator=(const GEN_UNDO_REDO_MGR&) = delete;

    /// Does a step and remembers it; what was taken back before is forgotten. A null command is ignored.
    void execute(std::unique_ptr<GEN_UNDO_REDO_COMMAND> command);
    /// Whether there is a step to take back, or to do again. False while a command runs.
    bool can_undo() const;
    bool can_redo() const;
    /// Take back, or do again, the nearest step; nothing where there is none.
    void undo();
    void redo();
    /// Text of the step that undo() or redo() would take; empty where there is none.
    std::string get_undo_text() const;
    std::string get_redo_text() const;
    /// Forgets all steps, the latest first, without taking them back.
    void clear();

private:
    void forget_from(std::size_t first);

    std::vector<std::unique_ptr<GEN_UNDO_REDO_COMMAND>> m_commands;
    std::size_t m_done = 0;
    bool m_is_running = false;
};
