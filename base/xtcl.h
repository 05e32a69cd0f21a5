#pragma once

#include "base_export.h"

#include <string>

struct Tcl_Interp;

/// The Tcl service: the process's one interpreter, which belongs to the main thread, and a queue through which any
/// thread has it evaluate a command. The application flushes the queue ten times a second.

/// The interpreter, made at the first call on the main thread. It has the commands `msg_tcl_prompt_display` and
/// `msg_tcl_internal_error_display`, through which worker threads reach the display in force. Null after
/// xtcl_shutdown().
TOLV_BASE_EXPORT Tcl_Interp* xtcl_get_interpreter();

/// Evaluates a command; main thread only. Returns 0 (TCL_OK) on success; the result or the error text is the
/// interpreter's result. `flags` are those of Tcl_EvalEx.
TOLV_BASE_EXPORT int xtcl_tcl_eval(Tcl_Interp* interpreter, const std::string& command, int flags);

/// Has the main thread evaluate a command; from any thread.
/// @param command UTF-8 text
/// @param wait    true: return when it is done. On the main thread it then runs at once, before what is queued.
/// @param result  receives the interpreter's result or error text of a waiting post; may be null
/// @return 0 on success; otherwise the Tcl code, or -1 where the service is shut down (also for posts that were
///         waiting when it was)
TOLV_BASE_EXPORT int xtcl_post(const char* command, bool wait, std::string* result);

/// Runs what is queued, in the order of posting; main thread only, harmless elsewhere and while a flush is under way.
/// @param max_commands at most so many; 0 for all that is queued at the time of the call
/// @param max_milliseconds stops behind the command that exceeds it; 0 for no limit
/// @return how many commands ran
TOLV_BASE_EXPORT int xtcl_flush_queue(int max_commands, int max_milliseconds);

/// Writes a pointer as a text that a command can carry, at most XTCL_POINTER_TEXT_SIZE bytes with its NUL.
constexpr int XTCL_POINTER_TEXT_SIZE = 24;
TOLV_BASE_EXPORT void xtcl_ptr_to_string(char* text, void* pointer);

/// The pointer of such a text; null for any other text.
TOLV_BASE_EXPORT void* xtcl_string_to_ptr(const char* text);

/// Makes a text safe to stand between double quotes in a command: backslashes, quotes, brackets, braces, "$" and line ends are
/// escaped, so that the interpreter sees the original.
TOLV_BASE_EXPORT std::string xtcl_transform_string(const std::string& text);

/// Ends the service: queued commands are dropped, waiting posts return -1, the interpreter is deleted. Called by
/// msg_exe_fini(); later posts return -1 until xtcl_startup().
TOLV_BASE_EXPORT void xtcl_shutdown();

/// Begins the service again after a shutdown (it is begun at load time). Called by msg_exe_init().
TOLV_BASE_EXPORT void xtcl_startup();
