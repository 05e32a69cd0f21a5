#pragma once

#include "tolv_export.h"

/// Checks of invariants. A failed check is a programming error and goes to MSG_INTERNAL_ERROR::report() with the tag
/// "TOLV", the name of the source file (without folder and ending) and the line. The report ends the process, except
/// where a host or a test has installed a handler of its own; code that must not run then returns by itself.

/// Reports an internal error from a source file.
/// @param text        the failed condition, or a sentence
/// @param source_path the source file as `__FILE__` gives it
/// @param line        the line in it
TOLV_EXPORT void tolv_report_internal_error(const char* text, const char* source_path, int line);

/// Checks a condition; its own text is what is reported.
#define TOLV_CHECK(condition) TOLV_CHECK_TEXT(condition, #condition)

/// Checks a condition and reports another text.
#define TOLV_CHECK_TEXT(condition, text)                                                                               \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!(condition))                                                                                              \
            tolv_report_internal_error(text, __FILE__, __LINE__);                                                      \
    } while (false)
