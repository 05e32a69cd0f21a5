#pragma once

#include "tolv_export.h"

#include "msg.h"
#include "msg_prompt.h"

#include <memory>

/// The library's own messages. Each factory makes a message object with its text filled and its number set; the caller
/// owns it and shows it by display() or send().
namespace MSG_TOLV
{
/// Prompts with OK and Cancel, Cancel the default.
namespace CO
{
/// A file that is about to be written exists.
TOLV_EXPORT std::unique_ptr<MSG_CO> TOLV_FILE_EXISTS();
} // namespace CO

/// Prompts with OK alone.
namespace O
{
/// The module of a dockable window cannot be loaded. A null argument leaves its place empty.
TOLV_EXPORT std::unique_ptr<MSG_O> FAILED_TO_LOAD_LIBRARY(const char* library, const char* reason);
/// Several names were wanted, or taken, from the node finder, and there is one.
TOLV_EXPORT std::unique_ptr<MSG_O> ONE_NAME_SELECTED_FROM_NODE_FINDER();
/// A file may not be written. Null leaves its place empty.
TOLV_EXPORT std::unique_ptr<MSG_O> TOLV_READ_ONLY(const char* file);
} // namespace O

/// Prompts with Yes, No and Cancel, Yes the default.
namespace YNC
{
/// Changes would be lost.
TOLV_EXPORT std::unique_ptr<MSG_YNC> CONFIRM_SAVE();
} // namespace YNC

/// A debug message of this library, filled as printf does. A null format gives the empty text.
TOLV_EXPORT std::unique_ptr<MSG_D> DEBUG_MSG(MSG_D_LEVEL level, const char* format, ...)
    __attribute__((format(printf, 2, 3)));
/// The same at level 2.
TOLV_EXPORT std::unique_ptr<MSG_D> DEBUG_MSG(const char* format, ...) __attribute__((format(printf, 1, 2)));
} // namespace MSG_TOLV
