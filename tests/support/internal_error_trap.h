#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

/// An internal error that a test caught. It is thrown from MSG_INTERNAL_ERROR::report() while a trap is set, so that
/// the code behind the report does not run, as in a real process.
struct TRAPPED_INTERNAL_ERROR
{
    std::string text;
    std::string tag;
    std::string file;
    int line = 0;
};

/// While it lives, internal errors are thrown as TRAPPED_INTERNAL_ERROR.
class INTERNAL_ERROR_TRAP
{
public:
    INTERNAL_ERROR_TRAP();
    ~INTERNAL_ERROR_TRAP();
    INTERNAL_ERROR_TRAP(const INTERNAL_ERROR_TRAP&) = delete;
    INTERNAL_ERROR_TRAP& operator=(const INTERNAL_ERROR_TRAP&) = delete;

    /// Runs a piece of code and returns the internal error that it ended in. A piece that ends otherwise fails the
    /// test and gives an empty record.
    static TRAPPED_INTERNAL_ERROR catch_from(const std::function<void()>& code, const char* file, int line);

private:
    struct IMPL;
    IMPL* m_impl;
};

/// The statement must end in an internal error with this very text.
#define EXPECT_INTERNAL_ERROR(statement, expected_text)                                                                \
    EXPECT_EQ(std::string(expected_text), INTERNAL_ERROR_TRAP::catch_from([&] { statement; }, __FILE__, __LINE__).text)

/// The internal error itself, for a closer look at tag, file and line.
#define CATCH_INTERNAL_ERROR(statement) INTERNAL_ERROR_TRAP::catch_from([&] { statement; }, __FILE__, __LINE__)
