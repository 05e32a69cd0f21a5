#pragma once

#include "base_export.h"

#include <string>

struct Tcl_Interp;

/// The Tcl service: the process's one interpreter, which belongs to the main thread, and a queue through which any
/// thread has it evaluate a command. The application flushes the queue ten times a second. Commands and results are
/// UTF-8. An exception that leaves a display called by a command comes out of the function that evaluated the command.

/// The interpreter, made at the first call. It has the commands `msg_tcl_prompt_display` and
/// `msg_tcl_internal_error_display`, through which worker threads reach the display in force. Null on other threads
/// than the main one, and after xtcl_shutdown(). Without Tcl's script library it has the built-in commands only.
TOLV_BASE_EXPORT Tcl_Interp* xtcl_get_interpreter();

/// Evaluates a command; main thread only. Returns 0 (TCL_OK) on success; the result or the error text is the
/// interpreter's result. `flags` are those of Tcl_EvalEx. A null interpreter and another thread give 1 (TCL_ERROR).
TOLV_BASE_EXPORT int xtcl_tcl_eval(Tcl_Interp* interpreter, const std::string& command, int flags);

/// Has the main thread evaluate a command, at global level; from any thread.
/// @param command UTF-8 text; null counts as empty
/// @param wait    true: return when it is done. On the main thread it then runs at once, before what is queued.
/// @param result  receives the interpreter's result or error text of a waiting post, or the reason of a -1; may be null
/// @return 0 on success, for a post that does not wait as soon as it is queued; otherwise the Tcl code, or -1 where the
///         service is shut down (also for posts that were waiting when it was). A failure that nobody waits for becomes
///         a debug record under the key "xtcl".
TOLV_BASE_EXPORT int xtcl_post(const char* command, bool wait, std::string* result);

/// Runs what is queued, in the order of posting; main thread only, nothing elsewhere. A command that runs an event loop
/// may flush again: the inner flush runs what is still queued, so that a worker is served while a message box is open.
/// Beyond 50 flushes in one another the innermost does nothing.
/// @param max_commands at most so many; 0 for all that is queued at the time of the call
/// @param max_milliseconds stops behind the command that exceeds it; 0 for no limit
/// @return how many commands ran
TOLV_BASE_EXPORT int xtcl_flush_queue(int max_commands, int max_milliseconds);

/// Writes a pointer as a text that a command can carry, at most XTCL_POINTER_TEXT_SIZE bytes with its NUL.
constexpr int XTCL_POINTER_TEXT_SIZE = 24;
TOLV_BASE_EXPORT void xtcl_ptr_to_string(char* text, void* pointer);

/// The pointer of such a text; null for any other text.
TOLV_BASE_EXPORT void* xtcl_string_to_ptr(const char* text);

/// Makes a text safe to stand between double quotes in a command: backslashes, quotes, brackets, braces, "$", line ends
/// and NULs are escaped, so that the interpreter sees the original.
TOLV_BASE_EXPORT std::string xtcl_transform_string(const std::string& text);

/// Ends the service: queued commands are dropped, waiting posts return -1, the interpreter is deleted. A command that
/// is running keeps its waiting thread until it returns. Called by msg_exe_fini(); later posts return -1 until
/// xtcl_startup(). Called on another thread than the main one it leaves the interpreter for the next call of this
/// function or of xtcl_startup() on the main thread to delete.
TOLV_BASE_EXPORT void xtcl_shutdown();

/// Begins the service again after a shutdown (it is begun at load time), with a new interpreter. Called by
/// msg_exe_init(); harmless while the service runs.
TOLV_BASE_EXPORT void xtcl_startup();
