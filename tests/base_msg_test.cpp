#include "internal_error_trap.h"
#include "msg.h"
#include "msg_crash_report.h"
#include "msg_internal_error.h"
#include "msg_prompt.h"
#include "test_environment.h"

#include <gtest/gtest.h>

#include <climits>
#include <csignal>
#include <cstdarg>
#include <thread>
#include <utility>

namespace
{
/// A display that notes what it is told.
class NOTING_DISPLAY : public MSG_DISPLAY
{
public:
    void post_display(MSG_POST* post, unsigned int indent) override
    {
        lines.push_back(post != nullptr ? post->get_display_text(indent) : "no post");
    }
    int prompt_display(MSG_PROMPT* prompt) override
    {
        lines.push_back(prompt != nullptr ? prompt->get_text() : "no prompt");
        return answer;
    }
    void internal_error_display(std::string text) override
    {
        lines.push_back(text);
    }

    std::vector<std::string> lines;
    int answer = 0;
};

/// Messaging for the length of a test.
class MESSAGING
{
public:
    MESSAGING()
    {
        msg_exe_init(0, nullptr);
    }
    ~MESSAGING()
    {
        msg_exe_fini();
    }
};

void vdebug(const char* key, const char* text, ...)
{
    va_list arguments;
    va_start(arguments, text);
    msg_local_vdebug(key, text, arguments);
    va_end(arguments);
}

template <typename... ARGUMENTS>
std::string fill(const char* format, ARGUMENTS... arguments)
{
    MSG_BASE message;
    message.fill_args(format, arguments...);
    return message.get_text();
}

std::string identifier_of(const char* format)
{
    MSG_BASE message;
    message.fill_args(format, "", "", "");
    return message.get_identifier();
}
} // namespace

TEST(base_msg_text, a_new_message_is_empty)
{
    const MSG_BASE message;
    EXPECT_EQ("", message.get_text());
    EXPECT_EQ("", message.get_identifier());
    EXPECT_EQ(0u, message.get_number());
}

TEST(base_msg_text, text_and_identifier_are_divided_and_filled)
{
    MSG_BASE message;
    message.set_number(189000);
    message.fill_args("Can't open dockable window -- can't load library \"%1!s!\". %2!s!./OTOLV_FAILED_TO_LOAD_LIBRARY",
                      "mod_help", "No such file");
    EXPECT_EQ("Can't open dockable window -- can't load library \"mod_help\". No such file.", message.get_text());
    EXPECT_EQ("OTOLV_FAILED_TO_LOAD_LIBRARY", message.get_identifier());
    EXPECT_EQ(189000u, message.get_number());
}

TEST(base_msg_text, inserts_stand_in_any_order_and_repeat)
{
    EXPECT_EQ("b a b", fill("%2!s! %1!s! %2!s!", "a", "b"));
    EXPECT_EQ("123456789",
              fill("%1!s!%2!s!%3!s!%4!s!%5!s!%6!s!%7!s!%8!s!%9!s!", "1", "2", "3", "4", "5", "6", "7", "8", "9"));
}

TEST(base_msg_text, numbers_are_inserted_with_and_without_a_sign)
{
    EXPECT_EQ("-2147483648 4294967295 x", fill("%2!d! %3!u! %1!s!", "x", INT_MIN, UINT_MAX));
}

TEST(base_msg_text, a_number_left_out_takes_its_argument_unread)
{
    EXPECT_EQ("one three", fill("%1!s! %3!s!", "one", reinterpret_cast<const char*>(1), "three"));
}

TEST(base_msg_text, the_first_insert_of_a_number_decides_its_kind)
{
    EXPECT_EQ("-5 -5", fill("%1!d! %1!s!", -5));
}

TEST(base_msg_text, a_null_argument_gives_nothing)
{
    EXPECT_EQ("<>", fill("<%1!s!>", static_cast<const char*>(nullptr)));
}

TEST(base_msg_text, what_is_inserted_stays_as_it_is)
{
    EXPECT_EQ("file /tmp/%2!s!/NET_A%% and %1!s!", fill("file %1!s! and %2!s!/OTOLV_X", "/tmp/%2!s!/NET_A%%", "%1!s!"));
    MSG_BASE message;
    message.fill_args("%1!s!", "text/IDENTIFIER");
    EXPECT_EQ("text/IDENTIFIER", message.get_text());
    EXPECT_EQ("", message.get_identifier());
}

TEST(base_msg_text, two_percent_signs_are_one_and_others_stand_for_themselves)
{
    EXPECT_EQ("100% % 5%", fill("100%% %% 5%"));
    EXPECT_EQ("%1!s!", fill("%%1!s!", "a"));
    EXPECT_EQ("%a", fill("%%%1!s!", "a"));
    for (const char* literal : {"%0!s!", "%10!s!", "%1!x!", "%1!s", "%1s", "%!s!", "%s", "%1!", "%"})
        EXPECT_EQ(literal, fill(literal, "a"));
}

TEST(base_msg_text, only_capitals_digits_and_underlines_behind_the_last_slash_are_an_identifier)
{
    EXPECT_EQ("CO_9", identifier_of("text/CO_9"));
    EXPECT_EQ("B", identifier_of("a/A/B"));
    EXPECT_EQ("", identifier_of("read and/or write"));
    EXPECT_EQ("", identifier_of("text/NOT THIS"));
    EXPECT_EQ("", identifier_of("text/A/b"));
    EXPECT_EQ("", identifier_of("text/"));
    EXPECT_EQ("", identifier_of("text"));
    EXPECT_EQ("ID", identifier_of("/ID"));
    EXPECT_EQ("a/A", fill("a/A/B"));
    EXPECT_EQ("read and/or write", fill("read and/or write"));
    EXPECT_EQ("text/", fill("text/"));
    EXPECT_EQ("", fill("/ID"));
}

TEST(base_msg_text, a_null_format_empties_the_message)
{
    MSG_BASE message;
    message.fill_args("text/ID");
    message.fill_args(nullptr);
    EXPECT_EQ("", message.get_text());
    EXPECT_EQ("", message.get_identifier());
}

TEST(base_msg_text, a_text_set_as_it_is_has_no_identifier)
{
    MSG_BASE message;
    message.fill_args("text/ID");
    message.set_text("100%% of %1!s!/ID");
    EXPECT_EQ("100%% of %1!s!/ID", message.get_text());
    EXPECT_EQ("", message.get_identifier());
}

TEST(base_msg_post, a_line_has_indent_severity_number_and_text)
{
    MSG_POST info;
    info.set_text("net unused");
    EXPECT_EQ(MSG_POST::SEVERITY_INFO, info.get_severity());
    EXPECT_EQ("Info: net unused", info.get_display_text(0));
    EXPECT_EQ("      Info: net unused", info.get_display_text(2));
    MSG_POST warning(MSG_POST::SEVERITY_WARNING);
    warning.set_number(42);
    EXPECT_EQ("Warning (42): ", warning.get_display_text(0));
    MSG_POST error(MSG_POST::SEVERITY_ERROR);
    error.set_number(189000);
    error.set_text("no clock");
    EXPECT_EQ("   Error (189000): no clock", error.get_display_text(1));
}

TEST(base_msg_post, line_ends_become_blanks)
{
    MSG_POST post;
    post.set_text("a\nb\r\nc\rd\n");
    EXPECT_EQ("Info: a b c d ", post.get_display_text(0));
}

TEST(base_msg_post, messages_below_are_owned_and_null_is_ignored)
{
    MSG_POST post;
    post.add_sub_post(nullptr);
    EXPECT_TRUE(post.get_sub_posts().empty());
    auto below = std::make_unique<MSG_POST>(MSG_POST::SEVERITY_ERROR);
    MSG_POST* pointer = below.get();
    post.add_sub_post(std::move(below));
    ASSERT_EQ(1u, post.get_sub_posts().size());
    EXPECT_EQ(pointer, post.get_sub_posts().front().get());
}

TEST(base_msg_post, a_chain_of_very_many_messages_is_destroyed_without_a_stack_of_its_length)
{
    auto outer = std::make_unique<MSG_POST>();
    for (int i = 0; i < 500000; ++i)
    {
        auto post = std::make_unique<MSG_POST>();
        post->add_sub_post(std::move(outer));
        outer = std::move(post);
    }
    outer.reset();
    EXPECT_EQ(nullptr, outer);
}

TEST(base_msg_post, a_post_goes_to_the_default_reports_display)
{
    const MESSAGING messaging;
    NOTING_DISPLAY display;
    msg_get_default_report()->set_display(&display);
    MSG_POST post;
    post.set_text("hello");
    post.post();
    msg_get_default_report()->post(&post);
    msg_get_default_report()->post(nullptr);
    EXPECT_EQ((std::vector<std::string>{"Info: hello", "Info: hello"}), display.lines);
}

TEST(base_msg_post, the_basic_display_writes_the_tree_to_standard_error)
{
    MSG_POST post(MSG_POST::SEVERITY_ERROR);
    post.set_text("top");
    auto below = std::make_unique<MSG_POST>(MSG_POST::SEVERITY_WARNING);
    below->set_text("below");
    below->add_sub_post(std::make_unique<MSG_POST>());
    post.add_sub_post(std::move(below));
    testing::internal::CaptureStderr();
    post.post();
    msg_get_basic_report()->get_display()->post_display(nullptr, 0);
    EXPECT_EQ("Error: top\n   Warning: below\n      Info: \n", testing::internal::GetCapturedStderr());
}

TEST(base_msg_debug, a_message_has_tag_level_and_printf_text)
{
    MSG_D message("TOLV", MSG_D_LEVEL_3);
    message.format("%d of %s", 7, "nine");
    EXPECT_EQ("TOLV", message.get_tag());
    EXPECT_EQ(MSG_D_LEVEL_3, message.get_level());
    EXPECT_EQ("7 of nine", message.get_text());
    message.format("%s", std::string(100000, 'x').c_str());
    EXPECT_EQ(std::string(100000, 'x'), message.get_text());
    message.format("%s", "");
    EXPECT_EQ("", message.get_text());
    EXPECT_EQ("", MSG_D(nullptr, MSG_D_LEVEL_2).get_tag());
    va_list unused{};
    message.format("not empty %d", 1);
    message.format_v(nullptr, unused);
    EXPECT_EQ("", message.get_text());
}

TEST(base_msg_debug, a_sent_message_is_recorded_under_its_tag)
{
    msg_clear_debug_records();
    MSG_D message("TOLV", MSG_D_LEVEL_1);
    message.format("%s", "100%");
    EXPECT_TRUE(msg_get_debug_records().empty());
    message.send();
    const std::vector<MSG_DEBUG_RECORD> records = msg_get_debug_records();
    ASSERT_EQ(1u, records.size());
    EXPECT_EQ("TOLV", records[0].key);
    EXPECT_EQ("100%", records[0].text);
    EXPECT_EQ(MSG_D_LEVEL_1, records[0].level);
}

TEST(base_msg_debug, a_debug_text_is_no_format)
{
    msg_clear_debug_records();
    vdebug("qWarning", "%s %n %d");
    vdebug(nullptr, nullptr);
    const std::vector<MSG_DEBUG_RECORD> records = msg_get_debug_records();
    ASSERT_EQ(2u, records.size());
    EXPECT_EQ("qWarning", records[0].key);
    EXPECT_EQ("%s %n %d", records[0].text);
    EXPECT_EQ(MSG_D_LEVEL_2, records[0].level);
    EXPECT_EQ("", records[1].key);
    EXPECT_EQ("", records[1].text);
}

TEST(base_msg_debug, the_last_256_records_are_kept_oldest_first)
{
    msg_clear_debug_records();
    for (int i = 0; i < 256; ++i)
        vdebug("k", std::to_string(i).c_str());
    EXPECT_EQ("0", msg_get_debug_records().front().text);
    for (int i = 256; i < 300; ++i)
        vdebug("k", std::to_string(i).c_str());
    const std::vector<MSG_DEBUG_RECORD> records = msg_get_debug_records();
    ASSERT_EQ(256u, records.size());
    for (std::size_t i = 0; i < records.size(); ++i)
        EXPECT_EQ(std::to_string(i + 44), records[i].text);
    msg_clear_debug_records();
    EXPECT_TRUE(msg_get_debug_records().empty());
    vdebug("k", "after");
    ASSERT_EQ(1u, msg_get_debug_records().size());
}

TEST(base_msg_debug, records_of_four_threads_stay_whole)
{
    msg_clear_debug_records();
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int t = 0; t < 4; ++t)
        threads.emplace_back(
            [t]
            {
                const std::string key(20, static_cast<char>('a' + t));
                for (int i = 0; i < 5000; ++i)
                {
                    vdebug(key.c_str(), (key + std::to_string(i)).c_str());
                    if (i % 1000 == 0)
                        msg_get_debug_records();
                }
            });
    for (std::thread& thread : threads)
        thread.join();
    const std::vector<MSG_DEBUG_RECORD> records = msg_get_debug_records();
    ASSERT_EQ(256u, records.size());
    for (const MSG_DEBUG_RECORD& record : records)
        EXPECT_EQ(0u, record.text.find(record.key)) << record.text;
}

TEST(base_msg_debug, records_go_to_the_configured_file)
{
    const std::string path = TEST_ENVIRONMENT::get_folder() + "/debug.txt";
    const SCOPED_CONFIGURATION file("debug_message_file", path.c_str());
    vdebug("first", "one");
    vdebug("second", "zw\xC3\xB6lf");
    EXPECT_EQ("first: one\nsecond: zw\xC3\xB6lf\n", TEST_ENVIRONMENT::read_file(path));
}

TEST(base_msg_debug, a_file_that_cannot_be_written_is_passed_over)
{
    const SCOPED_CONFIGURATION file("debug_message_file", "/no/such/folder/debug.txt");
    msg_clear_debug_records();
    vdebug("k", "kept");
    ASSERT_EQ(1u, msg_get_debug_records().size());
    EXPECT_EQ("kept", msg_get_debug_records()[0].text);
}

TEST(base_msg_debug, messages_are_wanted_by_the_keys_switch_or_else_the_general_one)
{
    EXPECT_FALSE(MSG_D::debug_messages_enabled(nullptr));
    EXPECT_FALSE(MSG_D::debug_messages_enabled("TOLV"));
    {
        const SCOPED_CONFIGURATION one("debug_messages_TOLV", "on");
        EXPECT_FALSE(MSG_D::debug_messages_enabled(nullptr));
        EXPECT_TRUE(MSG_D::debug_messages_enabled("TOLV"));
        EXPECT_FALSE(MSG_D::debug_messages_enabled("IPC"));
    }
    const SCOPED_CONFIGURATION all("debug_messages", "on");
    const SCOPED_CONFIGURATION off("debug_messages_IPC", "off");
    EXPECT_TRUE(MSG_D::debug_messages_enabled(nullptr));
    EXPECT_TRUE(MSG_D::debug_messages_enabled("TOLV"));
    EXPECT_FALSE(MSG_D::debug_messages_enabled("IPC"));
}

namespace
{
template <typename PROMPT>
void expect_kind(MSG_PROMPT_TYPE type, int default_result)
{
    PROMPT prompt;
    prompt.set_text("Go on?");
    EXPECT_EQ(type, prompt.get_type());
    EXPECT_EQ(default_result, prompt.get_default_result());
    testing::internal::CaptureStderr();
    const int answer = prompt.display();
    EXPECT_EQ("Go on?\n", testing::internal::GetCapturedStderr());
    EXPECT_EQ(default_result, answer);
}
} // namespace

TEST(base_msg_prompt, each_kind_has_its_type_and_the_basic_display_gives_its_default_answer)
{
    expect_kind<MSG_CO>(MSG_PROMPT_TYPE_CO, 2);
    expect_kind<MSG_O>(MSG_PROMPT_TYPE_O, 1);
    expect_kind<MSG_RC>(MSG_PROMPT_TYPE_RC, 4);
    expect_kind<MSG_OC>(MSG_PROMPT_TYPE_OC, 1);
    expect_kind<MSG_YNC>(MSG_PROMPT_TYPE_YNC, 6);
    expect_kind<MSG_YN>(MSG_PROMPT_TYPE_YN, 6);
    expect_kind<MSG_NYC>(MSG_PROMPT_TYPE_NYC, 7);
    expect_kind<MSG_ARI>(MSG_PROMPT_TYPE_ARI, 3);
}

TEST(base_msg_prompt, types_and_answers_have_their_numbers)
{
    EXPECT_EQ(0, MSG_PROMPT_TYPE_CO);
    EXPECT_EQ(1, MSG_PROMPT_TYPE_O);
    EXPECT_EQ(2, MSG_PROMPT_TYPE_RC);
    EXPECT_EQ(3, MSG_PROMPT_TYPE_OC);
    EXPECT_EQ(4, MSG_PROMPT_TYPE_YNC);
    EXPECT_EQ(5, MSG_PROMPT_TYPE_YN);
    EXPECT_EQ(6, MSG_PROMPT_TYPE_NYC);
    EXPECT_EQ(7, MSG_PROMPT_TYPE_ARI);
    EXPECT_EQ(1, MSG_PROMPT_RESULT_OK);
    EXPECT_EQ(2, MSG_PROMPT_RESULT_CANCEL);
    EXPECT_EQ(3, MSG_PROMPT_RESULT_ABORT);
    EXPECT_EQ(4, MSG_PROMPT_RESULT_RETRY);
    EXPECT_EQ(5, MSG_PROMPT_RESULT_IGNORE);
    EXPECT_EQ(6, MSG_PROMPT_RESULT_YES);
    EXPECT_EQ(7, MSG_PROMPT_RESULT_NO);
}

TEST(base_msg_prompt, without_boxes_the_basic_display_answers_1)
{
    EXPECT_FALSE(MSG_DISPLAY::m_no_msg_box);
    MSG_DISPLAY::m_no_msg_box = true;
    MSG_NYC prompt;
    prompt.set_text("Lose it?");
    testing::internal::CaptureStderr();
    EXPECT_EQ(1, prompt.display());
    EXPECT_EQ("Lose it?\n", testing::internal::GetCapturedStderr());
    MSG_DISPLAY::m_no_msg_box = false;
}

TEST(base_msg_prompt, the_basic_display_answers_a_null_prompt)
{
    EXPECT_EQ(1, msg_get_basic_report()->get_display()->prompt_display(nullptr));
}

TEST(base_msg_prompt, the_display_in_force_is_asked)
{
    const MESSAGING messaging;
    NOTING_DISPLAY display;
    display.answer = MSG_PROMPT_RESULT_IGNORE;
    msg_get_default_report()->set_display(&display);
    MSG_ARI prompt;
    prompt.set_text("Write failed");
    EXPECT_EQ(5, prompt.display());
    EXPECT_EQ(std::vector<std::string>{"Write failed"}, display.lines);
}

TEST(base_msg_prompt, the_check_box_is_off_at_first)
{
    MSG_O prompt;
    EXPECT_FALSE(prompt.get_offer_dont_show_again());
    EXPECT_FALSE(prompt.get_dont_show_again());
    prompt.set_offer_dont_show_again(true);
    EXPECT_TRUE(prompt.get_offer_dont_show_again());
    EXPECT_FALSE(prompt.get_dont_show_again());
    prompt.set_dont_show_again(true);
    EXPECT_TRUE(prompt.get_dont_show_again());
}

TEST(base_msg_report, the_default_report_lives_between_begin_and_end)
{
    EXPECT_EQ(nullptr, msg_get_default_report());
    msg_exe_init(0, nullptr);
    MSG_REPORT* report = msg_get_default_report();
    ASSERT_NE(nullptr, report);
    EXPECT_EQ(nullptr, report->get_display());
    NOTING_DISPLAY display;
    report->set_display(&display);
    msg_exe_init(0, nullptr);
    EXPECT_EQ(report, msg_get_default_report());
    EXPECT_EQ(&display, report->get_display());
    msg_exe_fini();
    EXPECT_EQ(nullptr, msg_get_default_report());
    msg_exe_fini();
    msg_exe_init(0, nullptr);
    ASSERT_NE(nullptr, msg_get_default_report());
    EXPECT_EQ(nullptr, msg_get_default_report()->get_display());
    msg_exe_fini();
}

TEST(base_msg_report, an_end_without_a_begin_is_harmless)
{
    msg_exe_fini();
    EXPECT_EQ(nullptr, msg_get_default_report());
}

TEST(base_msg_report, the_display_in_force_falls_back_to_the_basic_one)
{
    MSG_DISPLAY* basic = msg_get_basic_report()->get_display();
    ASSERT_NE(nullptr, basic);
    EXPECT_EQ(basic, msg_get_display_in_force());
    const MESSAGING messaging;
    EXPECT_EQ(basic, msg_get_display_in_force());
    NOTING_DISPLAY display;
    msg_get_default_report()->set_display(&display);
    EXPECT_EQ(&display, msg_get_display_in_force());
    msg_get_default_report()->set_display(nullptr);
    EXPECT_EQ(basic, msg_get_display_in_force());
    msg_get_basic_report()->set_display(nullptr);
    EXPECT_NE(nullptr, msg_get_display_in_force());
    msg_get_basic_report()->set_display(&display);
    EXPECT_EQ(&display, msg_get_display_in_force());
    msg_get_basic_report()->set_display(basic);
}

TEST(base_msg_report, what_is_posted_after_the_end_reaches_standard_error)
{
    msg_exe_init(0, nullptr);
    NOTING_DISPLAY display;
    msg_get_default_report()->set_display(&display);
    msg_exe_fini();
    MSG_POST post;
    post.set_text("late");
    testing::internal::CaptureStderr();
    post.post();
    EXPECT_EQ("Info: late\n", testing::internal::GetCapturedStderr());
    EXPECT_TRUE(display.lines.empty());
}

TEST(base_msg_report, the_begin_arms_the_signals_and_the_end_restores_them)
{
    const auto get_handler = []
    {
        struct sigaction action = {};
        sigaction(SIGSEGV, nullptr, &action);
        return action.sa_sigaction;
    };
    const auto before = get_handler();
    msg_exe_init(0, nullptr);
    const auto armed = get_handler();
    EXPECT_NE(before, armed);
    msg_exe_init(0, nullptr);
    EXPECT_EQ(armed, get_handler());
    msg_exe_fini();
    EXPECT_EQ(before, get_handler());
    msg_exe_fini();
    EXPECT_EQ(before, get_handler());
}

TEST(base_msg_report, the_end_leaves_a_later_handler_alone)
{
    msg_exe_init(0, nullptr);
    const auto before = std::signal(SIGFPE, SIG_IGN);
    msg_exe_fini();
    EXPECT_EQ(SIG_IGN, std::signal(SIGFPE, SIG_DFL));
    EXPECT_NE(SIG_IGN, before);
}

TEST(base_msg_internal_error, a_handler_takes_over_and_returns_to_the_caller)
{
    std::vector<std::string> calls;
    MSG_INTERNAL_ERROR::HANDLER old_handler = MSG_INTERNAL_ERROR::set_handler(
        [&calls](const char* text, const char* tag, const char* file, int line)
        { calls.push_back(std::string(text) + "|" + tag + "|" + file + "|" + std::to_string(line)); });
    EXPECT_FALSE(old_handler);
    MSG_INTERNAL_ERROR::report("okay", "TOLV", "tolv_tcl_action", 12);
    MSG_INTERNAL_ERROR_report("okay", "TOLV", "tolv_tcl_action", 13);
    EXPECT_EQ((std::vector<std::string>{"okay|TOLV|tolv_tcl_action|12", "okay|TOLV|tolv_tcl_action|13"}), calls);
    EXPECT_TRUE(MSG_INTERNAL_ERROR::set_handler(old_handler));
    EXPECT_FALSE(MSG_INTERNAL_ERROR::set_handler(nullptr));
}

TEST(base_msg_internal_error, the_trap_catches_place_and_text)
{
    const TRAPPED_INTERNAL_ERROR error =
        CATCH_INTERNAL_ERROR(MSG_INTERNAL_ERROR::report("m_view != NULL", "TOLV", "tolv_view", 42));
    EXPECT_EQ("m_view != NULL", error.text);
    EXPECT_EQ("TOLV", error.tag);
    EXPECT_EQ("tolv_view", error.file);
    EXPECT_EQ(42, error.line);
}
