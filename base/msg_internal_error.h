#pragma once

#include "base_export.h"

#include <functional>

/// Reports of broken invariants: programming errors that nothing can repair.
class TOLV_BASE_EXPORT MSG_INTERNAL_ERROR
{
public:
    using HANDLER = std::function<void(const char* text, const char* tag, const char* file, int line)>;

    /// Reports a broken invariant: writes it to standard error ("Internal Error: text (tag, file:line)"), writes the
    /// crash record, hands the text to the display in force, brings the record's file up to date with what the user
    /// wrote and decided there, and ends the process with abort().
    ///
    /// A report during a report ends the process at once: one made by the display, or one of the main thread, which the
    /// display of another thread's report may need. Any other thread that reports meanwhile writes its text to standard
    /// error and stands still, so that the user can answer the first. Null texts count as empty. Any thread.
    /// @param text  the failed condition, or a sentence
    /// @param tag   the reporting library ("TOLV")
    /// @param file  source file's name without folder and ending
    /// @param line  line in it
    static void report(const char* text, const char* tag, const char* file, int line);

    /// Lets a host or a test take over: report() calls the handler in place of all of the above, and returns to its
    /// caller if the handler does. An empty handler restores the usual way. Returns the one before.
    static HANDLER set_handler(HANDLER handler);
};

/// The same as MSG_INTERNAL_ERROR::report().
inline void MSG_INTERNAL_ERROR_report(const char* text, const char* tag, const char* file, int line)
{
    MSG_INTERNAL_ERROR::report(text, tag, file, line);
}
