#include "child_process.h"
#include "gen.h"
#include "msg_crash_report.h"
#include "test_environment.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

namespace fs = std::filesystem;

namespace
{
const char* const DISPLAYED = "displayed m_view != NULL\n";
const char* const REPORTED = "Internal Error: m_view != NULL (TOLV, tolv_view:42)\n";

std::string records_folder()
{
    return gen_get_user_profile_directory() + "/norvane_crash_reports";
}

/// Runs the program that dies; a sanitizer must not take its signals.
CHILD_RESULT run_case(const std::string& name, const std::string& configuration = std::string())
{
    CHILD_RESULT result =
        run_child("base_msg_child", {name},
                  {{"ASAN_OPTIONS", "detect_leaks=0:handle_segv=0:handle_sigbus=0:handle_abort=0:handle_sigfpe=0:"
                                    "handle_sigill=0"},
                   {"NORVANE_CFG", configuration}});
    EXPECT_TRUE(result.started);
    EXPECT_FALSE(result.timed_out);
    return result;
}

std::vector<std::string> get_files()
{
    std::vector<std::string> files;
    if (fs::exists(records_folder()))
        for (const fs::directory_entry& entry : fs::directory_iterator(records_folder()))
            files.push_back(entry.path().string());
    return files;
}

/// The one record that the child left, taken over as a reporting tool would.
MSG_CRASH_RECORD get_only_record()
{
    const std::vector<std::string> files = get_files();
    EXPECT_EQ(1u, files.size());
    MSG_CRASH_REPORT_MANAGER* manager = MSG_CRASH_REPORT_MANAGER::get_crash_report_manager();
    if (files.size() != 1 || !manager->set_crash_from_ipc(files[0]))
    {
        ADD_FAILURE() << "no record";
        return {};
    }
    return manager->get_record();
}

bool has_frame(const MSG_CRASH_RECORD& record, const std::string& function, const std::string& place)
{
    return std::any_of(record.backtrace.begin(), record.backtrace.end(),
                       [&](const std::string& frame)
                       { return frame.find(function) != std::string::npos && frame.find(place) != std::string::npos; });
}

/// The child died by the signal, and the innermost frame of its record is the given function.
MSG_CRASH_RECORD expect_death(const std::string& name, int signal, const std::string& error_text,
                              const std::string& innermost)
{
    const CHILD_RESULT result = run_case(name);
    EXPECT_EQ(signal, result.signal) << result.out << result.err;
    MSG_CRASH_RECORD record = get_only_record();
    EXPECT_EQ(0u, record.error_text.find(error_text)) << record.error_text;
    EXPECT_EQ("", record.tag);
    EXPECT_EQ("base_msg_child", record.executable);
    EXPECT_EQ(name, record.arguments.size() == 2 ? record.arguments[1] : "");
    EXPECT_EQ(20u, record.time.size());
    const std::string first = record.backtrace.empty() ? "" : record.backtrace[0];
    EXPECT_EQ(0u, first.find(innermost)) << first;
    if (innermost.find("child::") == 0)
    {
        EXPECT_NE(std::string::npos, first.find("base_msg_child.cpp:")) << first;
    }
    return record;
}
} // namespace

TEST(base_msg_death, an_internal_error_is_written_recorded_and_ends_by_abort)
{
    const CHILD_RESULT result = run_case("report");
    EXPECT_EQ(SIGABRT, result.signal);
    EXPECT_EQ(REPORTED, result.err);
    EXPECT_EQ("", result.out);
    const MSG_CRASH_RECORD record = get_only_record();
    EXPECT_EQ("m_view != NULL", record.error_text);
    EXPECT_EQ("TOLV", record.tag);
    EXPECT_EQ("tolv_view", record.file);
    EXPECT_EQ(42, record.line);
    EXPECT_EQ("base_msg_child", record.executable);
    ASSERT_EQ(2u, record.arguments.size());
    EXPECT_EQ("report", record.arguments[1]);
    EXPECT_EQ(std::vector<std::string>{"child: about to break, with \"quotes\""}, record.debug_records);
    ASSERT_GE(record.backtrace.size(), 3u);
    EXPECT_EQ(0u, record.backtrace[0].find("child::break_an_invariant() at ")) << record.backtrace[0];
    EXPECT_NE(std::string::npos, record.backtrace[0].find("base_msg_child.cpp:")) << record.backtrace[0];
    EXPECT_TRUE(has_frame(record, "child::report_plainly() at ", "base_msg_child.cpp:"));
    EXPECT_TRUE(has_frame(record, "main at ", "base_msg_child.cpp:"));
}

TEST(base_msg_death, an_internal_error_without_messaging_is_recorded_too)
{
    const CHILD_RESULT result = run_case("report_before_the_begin");
    EXPECT_EQ(SIGABRT, result.signal);
    EXPECT_EQ(REPORTED, result.err);
    EXPECT_EQ("m_view != NULL", get_only_record().error_text);
}

TEST(base_msg_death, null_texts_count_as_empty)
{
    const CHILD_RESULT result = run_case("report_with_null_texts");
    EXPECT_EQ(SIGABRT, result.signal);
    EXPECT_EQ("Internal Error:  (, :0)\n", result.err);
    EXPECT_EQ("", get_only_record().error_text);
}

TEST(base_msg_death, the_display_adds_the_comment)
{
    const CHILD_RESULT result = run_case("report_with_comment");
    EXPECT_EQ(SIGABRT, result.signal);
    EXPECT_EQ(DISPLAYED, result.out);
    EXPECT_EQ(REPORTED, result.err);
    EXPECT_EQ("I pressed F1", get_only_record().comment);
}

TEST(base_msg_death, the_display_can_take_the_record_back)
{
    const CHILD_RESULT result = run_case("report_and_cancel");
    EXPECT_EQ(SIGABRT, result.signal);
    EXPECT_EQ(std::string(DISPLAYED) + "written before: yes\n", result.out);
    EXPECT_TRUE(get_files().empty());
}

TEST(base_msg_death, a_report_in_a_report_ends_at_once)
{
    const CHILD_RESULT result = run_case("report_in_a_report");
    EXPECT_EQ(SIGABRT, result.signal);
    EXPECT_EQ(DISPLAYED, result.out);
    EXPECT_EQ(std::string(REPORTED) + "Internal Error: second (TOLV, tolv_crash_reporter_dlg:7)\n", result.err);
    EXPECT_EQ("m_view != NULL", get_only_record().error_text);
}

TEST(base_msg_death, a_display_that_throws_does_not_stop_the_report)
{
    const CHILD_RESULT result = run_case("report_with_a_display_that_throws");
    EXPECT_EQ(SIGABRT, result.signal);
    EXPECT_EQ(DISPLAYED, result.out);
    EXPECT_EQ("m_view != NULL", get_only_record().error_text);
}

TEST(base_msg_death, of_four_threads_at_once_one_is_displayed_and_all_are_written)
{
    const CHILD_RESULT result = run_case("report_from_four_threads");
    EXPECT_EQ(SIGABRT, result.signal);
    EXPECT_EQ(std::string(DISPLAYED) + "displays 1\n", result.out);
    EXPECT_EQ(0u, result.err.find(REPORTED)) << result.err;
    EXPECT_EQ("m_view != NULL", get_only_record().error_text);
}

TEST(base_msg_death, a_report_of_the_main_thread_ends_a_workers_that_needs_it)
{
    const CHILD_RESULT result = run_case("report_from_a_worker_and_the_main_thread");
    EXPECT_EQ(SIGABRT, result.signal);
    EXPECT_EQ(DISPLAYED, result.out);
    EXPECT_EQ(std::string(REPORTED) + "Internal Error: main (TOLV, tolv_app:1)\n", result.err);
    EXPECT_EQ("m_view != NULL", get_only_record().error_text);
}

TEST(base_msg_death, the_switch_suppresses_the_record)
{
    const CHILD_RESULT result = run_case("report", "no_crash_report=1");
    EXPECT_EQ(SIGABRT, result.signal);
    EXPECT_EQ(REPORTED, result.err);
    EXPECT_TRUE(get_files().empty());
    EXPECT_EQ(SIGSEGV, run_case("write_through_null", "no_crash_report=1").signal);
    EXPECT_TRUE(get_files().empty());
}

TEST(base_msg_death, a_write_through_null_is_recorded)
{
    const MSG_CRASH_RECORD record =
        expect_death("write_through_null", SIGSEGV, "SIGSEGV at address 0x0", "child::write_through_null() at ");
    EXPECT_EQ("linux64", record.platform);
    EXPECT_EQ(64, record.address_bits);
    EXPECT_NE("", record.os_name);
    EXPECT_NE("", record.version);
    EXPECT_TRUE(has_frame(record, "main at ", "base_msg_child.cpp:"));
}

TEST(base_msg_death, an_overflow_of_the_stack_is_recorded)
{
    const MSG_CRASH_RECORD record = expect_death("overflow_the_stack", SIGSEGV, "SIGSEGV at address 0x",
                                                 "child::recurse_forever(char volatile*) at ");
    EXPECT_EQ(128u, record.backtrace.size());
}

TEST(base_msg_death, an_overflow_of_a_workers_stack_is_recorded)
{
    expect_death("overflow_a_workers_stack", SIGSEGV, "SIGSEGV at address 0x",
                 "child::recurse_forever(char volatile*) at ");
}

TEST(base_msg_death, a_division_by_zero_is_recorded)
{
    expect_death("divide_by_zero", SIGFPE, "SIGFPE at address 0x", "child::divide_by_zero() at ");
}

TEST(base_msg_death, an_illegal_instruction_is_recorded)
{
    expect_death("run_into_a_trap", SIGILL, "SIGILL at address 0x", "child::run_into_a_trap() at ");
}

TEST(base_msg_death, a_read_behind_the_end_of_a_mapped_file_is_recorded)
{
    expect_death("touch_a_cut_file", SIGBUS, "SIGBUS at address 0x", "child::touch_a_cut_file() at ");
}

TEST(base_msg_death, a_call_through_null_names_the_caller)
{
    const MSG_CRASH_RECORD record = expect_death("call_through_null", SIGSEGV, "SIGSEGV at address 0x0", "0x0");
    ASSERT_EQ(2u, record.backtrace.size());
    EXPECT_EQ(0u, record.backtrace[1].find("child::call_through_null() at ")) << record.backtrace[1];
}

TEST(base_msg_death, an_uncaught_exception_is_recorded)
{
    const MSG_CRASH_RECORD record = expect_death("throw_uncaught", SIGABRT, "SIGABRT", "");
    EXPECT_EQ("SIGABRT", record.error_text);
    EXPECT_TRUE(has_frame(record, "child::throw_uncaught() at ", "base_msg_child.cpp:"));
}

TEST(base_msg_death, a_signal_from_outside_is_recorded_without_an_address)
{
    const MSG_CRASH_RECORD record = expect_death("raise_a_signal", SIGSEGV, "SIGSEGV", "");
    EXPECT_EQ("SIGSEGV", record.error_text);
    EXPECT_TRUE(has_frame(record, "child::raise_a_signal() at ", "base_msg_child.cpp:"));
}

TEST(base_msg_death, a_crash_with_a_ruined_heap_is_recorded)
{
    expect_death("crash_with_a_ruined_heap", SIGSEGV, "SIGSEGV at address 0x0", "child::write_through_null() at ");
}

TEST(base_msg_death, two_crashes_at_once_leave_a_record_and_end_by_the_signal)
{
    expect_death("crash_on_two_threads", SIGSEGV, "SIGSEGV at address 0x0", "child::write_through_null() at ");
}

TEST(base_msg_death, an_older_handler_has_the_last_word)
{
    const CHILD_RESULT result = run_case("crash_with_an_older_handler");
    EXPECT_EQ(3, result.exit_status);
    EXPECT_EQ("older handler\n", result.out);
    EXPECT_EQ("SIGSEGV at address 0x0", get_only_record().error_text);
}

TEST(base_msg_death, after_the_end_of_messaging_nothing_is_recorded)
{
    EXPECT_EQ(SIGSEGV, run_case("crash_after_the_end").signal);
    EXPECT_TRUE(get_files().empty());
}

TEST(base_msg_death, a_signal_without_generation_is_not_recorded)
{
    EXPECT_EQ(SIGSEGV, run_case("crash_without_generation").signal);
    EXPECT_TRUE(get_files().empty());
}

TEST(base_msg_death, a_record_that_cannot_be_finished_has_bare_addresses_and_does_not_hold_up_the_end)
{
    EXPECT_EQ(SIGSEGV, run_case("crash_while_the_loader_is_locked", "crash_report_seconds=1").signal);
    const MSG_CRASH_RECORD record = get_only_record();
    EXPECT_EQ("SIGSEGV at address 0x0", record.error_text);
    ASSERT_FALSE(record.backtrace.empty());
    EXPECT_EQ(0u, record.backtrace[0].find("base_msg_child+0x")) << record.backtrace[0];
}

TEST(base_msg_death, the_record_of_a_signal_goes_to_the_configured_folder)
{
    const std::string folder = TEST_ENVIRONMENT::get_folder() + "/some/where";
    EXPECT_EQ(SIGSEGV, run_case("write_through_null", "crash_report_folder=" + folder).signal);
    EXPECT_TRUE(get_files().empty());
    ASSERT_TRUE(fs::exists(folder));
    EXPECT_EQ(1, std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

TEST(base_msg_death, a_childs_record_is_sent_with_the_comment_of_the_reporting_tool)
{
    run_case("report");
    EXPECT_EQ("m_view != NULL", get_only_record().error_text);
    MSG_CRASH_REPORT_MANAGER* manager = MSG_CRASH_REPORT_MANAGER::get_crash_report_manager();
    EXPECT_TRUE(manager->update_comment_and_send_crash_report("seen by the parent"));
    const std::string folder = records_folder() + "/to_send";
    ASSERT_TRUE(fs::exists(folder));
    const std::string sent = fs::directory_iterator(folder)->path().string();
    ASSERT_TRUE(manager->set_crash_from_ipc(sent));
    EXPECT_EQ("seen by the parent", manager->get_record().comment);
    EXPECT_TRUE(has_frame(manager->get_record(), "child::break_an_invariant() at ", "base_msg_child.cpp:"));
}

TEST(base_msg_death, a_post_that_waits_does_not_hold_up_the_end_of_the_process)
{
    const CHILD_RESULT result = run_case("end_under_a_waiting_post");
    EXPECT_EQ(0, result.exit_status);
    EXPECT_EQ("post returned -1\n", result.out);
}
