#pragma once

#include "base_export.h"

#include <string>

/// Dynamic modules: shared libraries that a tool loads by name while it runs.
///
/// A name is given with or without the ending ".dll" or ".so" and without a folder: "mod_help", "mod_help.dll". Looked
/// for are, per folder, `lib<name>.so` and `<name>.so`; the folders are those of the environment variable
/// `NORVANE_MODULE_PATH` (divided by ":"), then the executable's, then the installation's module folder. A name with a
/// "/" in it is a path and is taken as it is. The first file that exists is taken, also where it turns out to be broken.
/// Any thread; the error texts are per thread and stay until the thread's next failure. Null and empty names fail.

/// Handle of a loaded module.
using THR_DRL_HANDLE = void*;

/// Loads a module, or counts one more load of it. Null on failure. Loading twice is harmless; each load wants its
/// unload. Symbols are bound at once, so that a broken module fails here.
TOLV_BASE_EXPORT THR_DRL_HANDLE thr_drl_load(const char* name);
TOLV_BASE_EXPORT THR_DRL_HANDLE thr_drl_load(const std::string& name);

/// The address of an exported (unmangled) function; null where it is missing, or the handle is null or not loaded.
TOLV_BASE_EXPORT void* thr_drl_find_function(THR_DRL_HANDLE handle, const char* function_name);
TOLV_BASE_EXPORT void* thr_drl_find_function(THR_DRL_HANDLE handle, const std::string& function_name);

/// Releases one load. Null is harmless, and so is a handle whose loads are all released.
TOLV_BASE_EXPORT void thr_drl_unload(THR_DRL_HANDLE handle);

/// The last failure on this thread as a sentence, for internal errors ("Can't load module mod_x: ...").
TOLV_BASE_EXPORT std::string thr_drl_get_error();

/// The module or function name that the last failure on this thread concerns, as the caller gave it.
TOLV_BASE_EXPORT std::string thr_drl_get_error_data();

/// The operating system's text for the last failure on this thread.
TOLV_BASE_EXPORT std::string thr_drl_get_system_error();
