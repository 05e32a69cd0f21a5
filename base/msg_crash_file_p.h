#pragma once

#include "msg_crash_record_p.h"
#include "msg_fixed_text_p.h"

/// The files of crash records. A file appears under its name only when it is complete. Nothing here allocates, so that
/// the handler of a fatal signal can use it.

/// Writes the content of a file.
using MSG_CRASH_CONTENT = void (*)(void* context, MSG_CRASH_JSON_WRITER& writer);

/// Makes a new file "crash_<time>_<process>_<n>.json" in the folder, which is made where it is missing. The file and
/// the folder are the user's alone. Never touches a file that is there. `time` is ISO 8601; `path` receives the file's
/// path. False where nothing could be written.
bool msg_crash_write_new_file(const char* folder, const char* time, MSG_CRASH_CONTENT content, void* context,
                              MSG_FIXED_TEXT* path);

/// Replaces a file, or leaves it as it was and returns false.
bool msg_crash_replace_file(const char* path, MSG_CRASH_CONTENT content, void* context);

/// Removes what another thread has written of a file that it will never finish.
void msg_crash_drop_unfinished_file();
