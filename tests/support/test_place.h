#pragma once

/// A place in a test's source. As the default argument of a helper it is the helper's call, so that a failure points at
/// the line of the test and not into the support.
struct TEST_PLACE
{
    const char* file;
    int line;

    /// The place of the call.
    static constexpr TEST_PLACE here(const char* file = __builtin_FILE(), int line = __builtin_LINE())
    {
        return {file, line};
    }
};
