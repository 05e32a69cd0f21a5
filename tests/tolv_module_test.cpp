#include "internal_error_trap.h"
#include "module_recorder.h"
#include "msg_internal_error.h"
#include "tolv_module.h"

#include <gtest/gtest.h>

namespace
{
using LINES = std::vector<std::string>;

const char* const PAGE_FUNCTION = "webnav_dyn_locate_to_web_page_based_on_enum";

class TOLV_MODULE_TEST : public testing::Test
{
protected:
    MODULE_RECORDER m_recorder;
};

/// Lets reports return to the code behind them.
class SILENT_REPORTS
{
public:
    SILENT_REPORTS()
    {
        m_old_handler =
            MSG_INTERNAL_ERROR::set_handler([this](const char*, const char*, const char*, int) { ++m_count; });
    }
    ~SILENT_REPORTS()
    {
        MSG_INTERNAL_ERROR::set_handler(m_old_handler);
    }
    SILENT_REPORTS(const SILENT_REPORTS&) = delete;
    SILENT_REPORTS& operator=(const SILENT_REPORTS&) = delete;

    int m_count = 0;

private:
    MSG_INTERNAL_ERROR::HANDLER m_old_handler;
};
} // namespace

TEST_F(TOLV_MODULE_TEST, a_call_loads_calls_and_unloads)
{
    TOLV_MODULE("mod_webnav.dll").call<void(int)>(PAGE_FUNCTION, 7);
    EXPECT_EQ((LINES{"load webnav", "page 7", "unload webnav"}), m_recorder.take_lines());
}

TEST_F(TOLV_MODULE_TEST, a_kept_module_stays_loaded)
{
    THR_DRL_HANDLE handle = nullptr;
    {
        TOLV_MODULE module("mod_webnav");
        handle = module.keep();
        ASSERT_NE(nullptr, handle);
    }
    EXPECT_EQ((LINES{"load webnav"}), m_recorder.take_lines());
    EXPECT_NE(nullptr, thr_drl_find_function(handle, PAGE_FUNCTION));
    thr_drl_unload(handle);
    EXPECT_EQ((LINES{"unload webnav"}), m_recorder.take_lines());
}

TEST_F(TOLV_MODULE_TEST, a_function_is_found_or_null)
{
    const TOLV_MODULE module("mod_webnav");
    ASSERT_TRUE(module.is_loaded());
    auto* const function = module.find_function<void(int)>(PAGE_FUNCTION);
    ASSERT_NE(nullptr, function);
    function(3);
    EXPECT_EQ(nullptr, module.find_function<void(int)>("webnav_dyn_other"));
    EXPECT_EQ((LINES{"load webnav", "page 3"}), m_recorder.take_lines());
}

TEST_F(TOLV_MODULE_TEST, a_module_that_is_missing_is_no_error_until_it_is_required)
{
    const TOLV_MODULE module("mod_missing");
    EXPECT_FALSE(module.is_loaded());
    EXPECT_EQ("mod_missing", thr_drl_get_error_data());
    EXPECT_EQ(nullptr, module.find_function<void(int)>(PAGE_FUNCTION));
    const TOLV_MODULE again("mod_missing");
    EXPECT_INTERNAL_ERROR(again.require_loaded(), thr_drl_get_error());
}

TEST_F(TOLV_MODULE_TEST, a_report_names_the_caller)
{
    int line = 0;
    const auto call = [&line]
    {
        line = __LINE__ + 1;
        TOLV_MODULE("mod_missing").call<void(int)>(PAGE_FUNCTION, 1);
    };
    const TRAPPED_INTERNAL_ERROR error = CATCH_INTERNAL_ERROR(call());
    EXPECT_EQ(thr_drl_get_error(), error.text);
    EXPECT_EQ("TOLV", error.tag);
    EXPECT_EQ("tolv_module_test", error.file);
    EXPECT_EQ(line, error.line);
}

TEST_F(TOLV_MODULE_TEST, a_function_that_is_missing_is_an_internal_error)
{
    const HOLLOW_MODULES hollow;
    const TRAPPED_INTERNAL_ERROR error =
        CATCH_INTERNAL_ERROR(TOLV_MODULE("mod_webnav").call<void(int)>(PAGE_FUNCTION, 1));
    EXPECT_EQ(thr_drl_get_error(), error.text);
    EXPECT_EQ(PAGE_FUNCTION, thr_drl_get_error_data());
}

TEST_F(TOLV_MODULE_TEST, a_call_returns_an_empty_result_where_the_report_returns)
{
    const SILENT_REPORTS reports;
    EXPECT_EQ(nullptr, TOLV_MODULE("mod_missing").call<int*(int)>(PAGE_FUNCTION, 1));
    EXPECT_EQ(1, reports.m_count);
    const HOLLOW_MODULES hollow;
    EXPECT_EQ(0, TOLV_MODULE("mod_webnav").call<int(int)>(PAGE_FUNCTION, 1));
    EXPECT_EQ(2, reports.m_count);
}

TEST_F(TOLV_MODULE_TEST, a_call_hands_the_result_on)
{
    const HOLLOW_MODULES hollow; // which count their calls
    TOLV_MODULE module("mod_help");
    EXPECT_EQ(1, module.call<int()>("mod_sample_count_call"));
    EXPECT_EQ(2, module.call<int()>("mod_sample_count_call"));
}
