#include "internal_error_trap.h"
#include "tolv_check.h"

#include <gtest/gtest.h>

#include <cstddef>

TEST(TOLV_CHECK_TEST, a_condition_that_holds_is_evaluated_once_and_reports_nothing)
{
    int count = 0;
    TOLV_CHECK(++count == 1);
    TOLV_CHECK_TEXT(++count == 2, "never seen");
    EXPECT_EQ(2, count);
}

TEST(TOLV_CHECK_TEST, a_failed_condition_is_reported_in_its_own_words_with_its_place)
{
    const int* m_view = nullptr;
    const int line = __LINE__ + 2;
    const TRAPPED_INTERNAL_ERROR error =
        CATCH_INTERNAL_ERROR(TOLV_CHECK(m_view != NULL)); // NOLINT(modernize-use-nullptr)
    EXPECT_EQ("m_view != NULL", error.text);              // the macro in it is not replaced by what it stands for
    EXPECT_EQ("TOLV", error.tag);
    EXPECT_EQ("tolv_check_test", error.file);
    EXPECT_EQ(line, error.line);
}

TEST(TOLV_CHECK_TEST, a_failed_condition_is_reported_in_other_words)
{
    const TRAPPED_INTERNAL_ERROR error = CATCH_INTERNAL_ERROR(TOLV_CHECK_TEXT(1 > 2, "inserted.second"));
    EXPECT_EQ("inserted.second", error.text);
    EXPECT_EQ("TOLV", error.tag);
    EXPECT_EQ("tolv_check_test", error.file);
}

TEST(TOLV_CHECK_TEST, a_check_is_one_statement)
{
    bool is_else = false;
    if (is_else)
        TOLV_CHECK(false);
    else
        is_else = true;
    EXPECT_TRUE(is_else);
}

TEST(TOLV_CHECK_TEST, a_source_file_is_named_without_its_folder_and_its_ending)
{
    const auto get_name = [](const char* source_path)
    { return CATCH_INTERNAL_ERROR(tolv_report_internal_error("text", source_path, 7)).file; };
    EXPECT_EQ("tolv_view", get_name("/a/b/tolv_view.cpp"));
    EXPECT_EQ("tolv_view", get_name("../tolv/tolv_view.h"));
    EXPECT_EQ("tolv_view", get_name("tolv_view.cpp"));
    EXPECT_EQ("tolv_view", get_name("tolv_view"));
    EXPECT_EQ("", get_name(""));
}
