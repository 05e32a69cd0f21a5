#pragma once

#include "base_export.h"

#include <cstdint>

/// Threads. All functions may be called on any thread.

/// What a thread's body returns and takes.
using THR_THREAD_RESULT = int;
using THR_THREAD_FUNCTION = THR_THREAD_RESULT (*)(void* argument);

/// Number of a thread within the process, as thr_thread_self() gives it.
using THR_THREAD_ID = std::uint64_t;

/// The thread that loaded the base services, that is the one that runs main().
constexpr THR_THREAD_ID THR_THREAD_MAIN_ID = 1;

/// Exit code of a process in the form of the operating system's wait status: the second byte holds the exit status, the
/// first the number of the signal that ended it (0 for none).
using THR_PROCESS_EXIT_CODE = std::uint64_t;
static_assert(sizeof(THR_PROCESS_EXIT_CODE) == 8, "an exit code has 8 bytes");

/// The exit status in the second byte, 0 to 255.
constexpr int thr_get_exit_status(THR_PROCESS_EXIT_CODE exit_code)
{
    return static_cast<int>((exit_code >> 8) & 0xffu);
}

/// The calling thread's number: THR_THREAD_MAIN_ID on the main thread, another and unique one elsewhere.
TOLV_BASE_EXPORT THR_THREAD_ID thr_thread_self();

/// Starts a detached thread that runs `function(argument)` inside thr_thread_wrapper(); the result of the function is
/// lost. `stack_size` in bytes, rounded up to what the system can give; 0 for the system's default. Returns the new
/// thread's number, or 0 for a null function and where the system refuses a thread (nothing ran then). As with
/// std::thread, an exception that leaves the function ends the process.
TOLV_BASE_EXPORT THR_THREAD_ID thr_thread_create(THR_THREAD_FUNCTION function, void* argument,
                                                 unsigned long stack_size);

/// Calls `function(argument)` on the calling thread between the base services' own set-up and tear-down of a thread,
/// and returns its result. A null function returns 0. An exception passes through.
TOLV_BASE_EXPORT THR_THREAD_RESULT thr_thread_wrapper(THR_THREAD_FUNCTION function, void* argument);

/// Number of threads now inside thr_thread_wrapper(); a thread with nested wrappers counts once.
TOLV_BASE_EXPORT int thr_get_running_thread_count();

/// Sets an environment variable, replacing a value that is there; a null value removes it. Serialised against itself,
/// not against getenv() of other code: change variables that other threads read before they start. False, with nothing
/// done, for a null or empty name or a name with "=" in it.
TOLV_BASE_EXPORT bool thr_setenv(const char* name, const char* value);
