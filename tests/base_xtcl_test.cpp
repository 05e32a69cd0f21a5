#include "internal_error_trap.h"
#include "msg.h"
#include "msg_internal_error.h"
#include "msg_prompt.h"
#include "xtcl.h"

#include <gtest/gtest.h>

#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <deque>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <stdexcept>
#include <thread>
#include <vector>

namespace
{
constexpr int OK = 0;
constexpr int ERROR = 1;
constexpr int SHUT_DOWN = -1;
const char* const SHUT_DOWN_TEXT = "the Tcl service is shut down";

/// Evaluates on the main thread and gives the result, or "code: text" where it fails.
std::string evaluate(const std::string& command)
{
    std::string result;
    const int code = xtcl_post(command.c_str(), true, &result);
    return code == OK ? result : std::to_string(code) + ": " + result;
}

/// Messaging with a display whose reactions a test chooses.
class DISPLAY : public MSG_DISPLAY
{
public:
    DISPLAY()
    {
        msg_exe_init(0, nullptr);
        msg_get_default_report()->set_display(this);
    }
    ~DISPLAY() override
    {
        msg_exe_fini();
    }
    void post_display(MSG_POST*, unsigned int) override
    {
    }
    int prompt_display(MSG_PROMPT* prompt) override
    {
        return on_prompt ? on_prompt(prompt) : 0;
    }
    void internal_error_display(std::string text) override
    {
        error_texts.push_back(text);
    }

    std::function<int(MSG_PROMPT*)> on_prompt;
    std::vector<std::string> error_texts;
};

std::string display_command(MSG_PROMPT* prompt)
{
    char text[XTCL_POINTER_TEXT_SIZE];
    xtcl_ptr_to_string(text, prompt);
    return std::string("msg_tcl_prompt_display ") + text;
}

/// Waits until a thread sleeps in the kernel, as one does that waits for its post.
void wait_until_asleep(pid_t thread)
{
    const std::string path = "/proc/self/task/" + std::to_string(thread) + "/stat";
    char state = 0;
    while (state != 'S')
    {
        std::ifstream file(path);
        const std::string line{std::istreambuf_iterator<char>(file), {}};
        const std::size_t parenthesis = line.rfind(')');
        ASSERT_NE(std::string::npos, parenthesis);
        state = line[parenthesis + 2];
        std::this_thread::yield();
    }
}

/// A thread that posts and waits; the constructor returns when it does.
class WAITING_POST
{
public:
    explicit WAITING_POST(const std::string& command)
        : m_thread(
              [this, command]
              {
                  m_id = static_cast<pid_t>(syscall(SYS_gettid));
                  code = xtcl_post(command.c_str(), true, &result);
                  has_returned = true;
              })
    {
        while (m_id == 0)
            std::this_thread::yield();
        wait_until_asleep(m_id);
    }
    ~WAITING_POST()
    {
        join();
    }
    void join()
    {
        if (m_thread.joinable())
            m_thread.join();
    }

    int code = 999;
    std::string result;
    std::atomic<bool> has_returned{false};

private:
    std::atomic<pid_t> m_id{0};
    std::thread m_thread;
};
} // namespace

TEST(base_xtcl, the_interpreter_is_made_once_and_is_a_real_one)
{
    Tcl_Interp* interpreter = xtcl_get_interpreter();
    ASSERT_NE(nullptr, interpreter);
    EXPECT_EQ(interpreter, xtcl_get_interpreter());
    EXPECT_EQ("8.6", evaluate("info tclversion"));
    EXPECT_EQ("3 b", evaluate("list [llength {a b c}] [lindex {a b c} 1]"));
    EXPECT_EQ("::msg_tcl_internal_error_display ::msg_tcl_prompt_display",
              evaluate("lsort [info commands ::msg_tcl_*]"));
    EXPECT_NE("", evaluate("clock format 0 -gmt 1"));
}

TEST(base_xtcl, other_threads_have_no_interpreter)
{
    Tcl_Interp* interpreter = xtcl_get_interpreter();
    std::thread(
        [interpreter]
        {
            EXPECT_EQ(nullptr, xtcl_get_interpreter());
            EXPECT_EQ(ERROR, xtcl_tcl_eval(interpreter, "set from_elsewhere 1", 0));
        })
        .join();
    EXPECT_EQ("0", evaluate("info exists from_elsewhere"));
}

TEST(base_xtcl, evaluating_tells_success_and_leaves_the_error_trace)
{
    Tcl_Interp* interpreter = xtcl_get_interpreter();
    EXPECT_EQ(OK, xtcl_tcl_eval(interpreter, "set x 5", 0));
    EXPECT_EQ("5", evaluate("set x"));
    EXPECT_EQ(OK, xtcl_tcl_eval(interpreter, "", 0));
    EXPECT_EQ(ERROR, xtcl_tcl_eval(interpreter, "no_such_command a b", 0));
    EXPECT_EQ("invalid command name \"no_such_command\"\n    while executing\n\"no_such_command a b\"",
              evaluate("set ::errorInfo"));
    EXPECT_EQ(ERROR, xtcl_tcl_eval(nullptr, "set x 6", 0));
    EXPECT_EQ("5", evaluate("set x"));
}

TEST(base_xtcl, results_carry_every_character)
{
    EXPECT_EQ("\xC3\x84\xC3\x96 \xE2\x82\xAC \xF0\x9F\x94\xA7",
              evaluate("set text \"\xC3\xA4\xC3\xB6 \xE2\x82\xAC \xF0\x9F\x94\xA7\"; string toupper $text"));
    EXPECT_EQ(std::string("a\0b", 3), evaluate("set text a\\u0000b"));
    EXPECT_EQ(OK, xtcl_tcl_eval(xtcl_get_interpreter(), std::string("set text {c\0d}", 14), 0));
    EXPECT_EQ("3", evaluate("string length $text"));
    EXPECT_EQ(std::string("c\0d", 3), evaluate("set text"));
}

TEST(base_xtcl, characters_beyond_ffff_pass_through_the_string_commands)
{
    const std::string tools = "\xF0\x9F\x94\xA7\xF0\x9F\x94\xA9";
    EXPECT_EQ(OK, xtcl_tcl_eval(xtcl_get_interpreter(), "set text {a" + tools + "z}", 0));
    EXPECT_EQ("A" + tools + "Z", evaluate("string toupper $text"));
    EXPECT_EQ("a" + tools + "z", evaluate("string tolower [string totitle $text]"));
    EXPECT_EQ("a" + tools + "z" + tools, evaluate("append text " + tools));
    EXPECT_EQ(tools, evaluate("string map {a {} z {}} {a" + tools + "z}"));
    EXPECT_EQ("1", evaluate("string equal $text [encoding convertfrom utf-8 [encoding convertto utf-8 $text]]"));
    EXPECT_EQ("\xF4\x8F\xBF\xBF \xF0\x90\x80\x80", evaluate("set text \xF4\x8F\xBF\xBF\\ \xF0\x90\x80\x80"));
}

TEST(base_xtcl, half_a_surrogate_pair_and_bytes_that_are_no_utf8_become_characters)
{
    EXPECT_EQ("\xEF\xBF\xBD", evaluate("set text \\uD83D"));
    EXPECT_EQ("\xEF\xBF\xBD.", evaluate("set text \\uDD27."));
    EXPECT_EQ("\xC3\xA9t\xC3\xA9", evaluate("set text \xE9t\xE9"));
    EXPECT_EQ("\xC3\xB0\xC2\x9F", evaluate("set text \xF0\x9F"));
    EXPECT_EQ("4", evaluate("string length \xFF\xFE\xC0\xF8"));
    EXPECT_EQ(std::string("\0", 1), evaluate("set text \xC0\x80"));
    EXPECT_EQ("\xF0\x9F\x94\xA7", evaluate("set text \xED\xA0\xBD\xED\xB4\xA7"));
}

TEST(base_xtcl, errors_come_back_with_code_and_text)
{
    std::string result;
    EXPECT_EQ(ERROR, xtcl_post("error {broken \xC3\xBC}", true, &result));
    EXPECT_EQ("broken \xC3\xBC", result);
    EXPECT_EQ(ERROR, xtcl_post("{", true, &result));
    EXPECT_EQ("missing close-brace", result);
    EXPECT_EQ(ERROR, xtcl_post("proc endless {} {endless}; endless", true, &result));
    EXPECT_NE(std::string::npos, result.find("too many nested evaluations")) << result;
    EXPECT_EQ(OK, xtcl_post("set x 1", true, nullptr));
    EXPECT_EQ(ERROR, xtcl_post("error e", true, nullptr));
    EXPECT_EQ(OK, xtcl_post(nullptr, true, &result));
    EXPECT_EQ("", result);
    EXPECT_EQ(OK, xtcl_post("", true, nullptr));
}

TEST(base_xtcl, unbalanced_noise_is_an_error_or_nothing_but_never_a_crash)
{
    std::mt19937 random(7);
    const std::string characters = "{}[]\"\\$;# \n()\xC3\xA4\xFF";
    int failures = 0;
    for (int i = 0; i < 5000; ++i)
    {
        std::string command;
        for (unsigned int length = random() % 20; length > 0; --length)
            command += characters[random() % characters.size()];
        failures += xtcl_post(command.c_str(), true, nullptr) == OK ? 0 : 1;
    }
    EXPECT_GT(failures, 100);
    EXPECT_EQ("2", evaluate("expr 1 + 1"));
}

TEST(base_xtcl, a_waiting_post_of_the_main_thread_runs_before_what_is_queued)
{
    std::string result = "untouched";
    EXPECT_EQ(OK, xtcl_post("lappend order queued", false, &result));
    EXPECT_EQ("untouched", result);
    EXPECT_EQ(OK, xtcl_post("lappend order waiting", true, &result));
    EXPECT_EQ("waiting", result);
    EXPECT_EQ(1, xtcl_flush_queue(0, 0));
    EXPECT_EQ("waiting queued", evaluate("set order"));
}

TEST(base_xtcl, posts_run_at_global_level)
{
    evaluate("proc make_local {} { uplevel #0 {}; set name local; return $name }");
    evaluate("make_local");
    xtcl_post("set name global", false, nullptr);
    xtcl_flush_queue(0, 0);
    EXPECT_EQ("global", evaluate("set ::name"));
}

TEST(base_xtcl, a_flush_runs_the_queue_in_the_order_of_posting)
{
    EXPECT_EQ(0, xtcl_flush_queue(0, 0));
    for (int i = 0; i < 10; ++i)
        xtcl_post(("lappend order " + std::to_string(i)).c_str(), false, nullptr);
    EXPECT_EQ("0", evaluate("info exists order"));
    EXPECT_EQ(3, xtcl_flush_queue(3, 0));
    EXPECT_EQ("0 1 2", evaluate("set order"));
    EXPECT_EQ(7, xtcl_flush_queue(0, 0));
    EXPECT_EQ("0 1 2 3 4 5 6 7 8 9", evaluate("set order"));
    EXPECT_EQ(0, xtcl_flush_queue(0, 0));
}

TEST(base_xtcl, a_flush_stops_behind_the_command_that_exceeds_the_time)
{
    const std::string busy =
        "set end [expr {[clock milliseconds] + 30}]; while {[clock milliseconds] < $end} {}; incr n";
    evaluate("set n 0");
    for (int i = 0; i < 3; ++i)
        xtcl_post(busy.c_str(), false, nullptr);
    EXPECT_EQ(1, xtcl_flush_queue(0, 5));
    EXPECT_EQ("1", evaluate("set n"));
    EXPECT_EQ(2, xtcl_flush_queue(0, 60000));
    EXPECT_EQ("3", evaluate("set n"));
}

TEST(base_xtcl, a_failing_command_does_not_stop_the_queue_and_is_recorded)
{
    msg_clear_debug_records();
    xtcl_post("error {first \xC3\xBC}", false, nullptr);
    xtcl_post("set x second", false, nullptr);
    EXPECT_EQ(2, xtcl_flush_queue(0, 0));
    EXPECT_EQ("second", evaluate("set x"));
    const std::vector<MSG_DEBUG_RECORD> records = msg_get_debug_records();
    ASSERT_EQ(1u, records.size());
    EXPECT_EQ("xtcl", records[0].key);
    EXPECT_EQ("a posted command failed: first \xC3\xBC", records[0].text);
}

TEST(base_xtcl, a_flush_on_another_thread_does_nothing)
{
    xtcl_post("set x 1", false, nullptr);
    std::thread([] { EXPECT_EQ(0, xtcl_flush_queue(0, 0)); }).join();
    EXPECT_EQ(1, xtcl_flush_queue(0, 0));
}

TEST(base_xtcl, what_a_flush_posts_waits_for_the_next_flush)
{
    DISPLAY display;
    MSG_O prompt;
    display.on_prompt = [](MSG_PROMPT*) { return xtcl_post("lappend order posted", false, nullptr); };
    xtcl_post(display_command(&prompt).c_str(), false, nullptr);
    xtcl_post("lappend order queued", false, nullptr);
    EXPECT_EQ(2, xtcl_flush_queue(0, 0));
    EXPECT_EQ("queued", evaluate("set order"));
    EXPECT_EQ(1, xtcl_flush_queue(0, 0));
    EXPECT_EQ("queued posted", evaluate("set order"));
}

TEST(base_xtcl, a_waiting_post_inside_a_command_runs_at_once_and_leaves_its_result_alone)
{
    DISPLAY display;
    MSG_O prompt;
    std::string inner;
    display.on_prompt = [&](MSG_PROMPT*)
    {
        inner = evaluate("lappend order inner");
        evaluate("error {inner failure}");
        return 6;
    };
    EXPECT_EQ("6", evaluate(display_command(&prompt)));
    EXPECT_EQ("inner", inner);
}

TEST(base_xtcl, a_flush_inside_a_command_runs_what_is_still_queued)
{
    DISPLAY display;
    MSG_O prompt;
    int inner_count = -1;
    display.on_prompt = [&](MSG_PROMPT*)
    {
        inner_count = xtcl_flush_queue(0, 0);
        return 1;
    };
    xtcl_post("lappend order first", false, nullptr);
    xtcl_post(("lappend order [" + display_command(&prompt) + "]").c_str(), false, nullptr);
    xtcl_post("lappend order third", false, nullptr);
    EXPECT_EQ(2, xtcl_flush_queue(0, 0));
    EXPECT_EQ(1, inner_count);
    EXPECT_EQ("first third 1", evaluate("set order"));
}

TEST(base_xtcl, a_worker_is_served_while_a_command_runs_an_event_loop)
{
    DISPLAY display;
    MSG_O prompt;
    std::atomic<bool> is_served{false};
    std::thread worker;
    display.on_prompt = [&](MSG_PROMPT*)
    {
        worker = std::thread([&] { is_served = xtcl_post("set x 1", true, nullptr) == OK; });
        while (!is_served)
            xtcl_flush_queue(0, 0);
        return 1;
    };
    xtcl_post(display_command(&prompt).c_str(), false, nullptr);
    EXPECT_EQ(1, xtcl_flush_queue(0, 0));
    EXPECT_TRUE(is_served);
    worker.join();
}

TEST(base_xtcl, flushes_in_one_another_have_a_highest_depth_and_lose_nothing)
{
    DISPLAY display;
    MSG_O prompt;
    int depth = 0;
    int highest_depth = 0;
    int count = 0;
    display.on_prompt = [&](MSG_PROMPT*)
    {
        ++count;
        highest_depth = std::max(highest_depth, ++depth);
        xtcl_flush_queue(0, 0);
        --depth;
        return 1;
    };
    for (int i = 0; i < 120; ++i)
        xtcl_post(display_command(&prompt).c_str(), false, nullptr);
    xtcl_flush_queue(0, 0);
    EXPECT_EQ(120, count);
    EXPECT_EQ(50, highest_depth);
    EXPECT_EQ(0, xtcl_flush_queue(0, 0));
}

TEST(base_xtcl, four_threads_wait_for_their_own_results_while_the_main_thread_flushes)
{
    constexpr int COUNT = 250;
    std::atomic<int> running{4};
    std::atomic<int> right{0};
    evaluate("set total 0");
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int t = 0; t < 4; ++t)
        threads.emplace_back(
            [&, t]
            {
                for (int i = 0; i < COUNT; ++i)
                {
                    const std::string text = std::to_string(t) + "\xC3\xA4" + std::to_string(i);
                    const bool fails = i % 10 == 0;
                    std::string result;
                    const int code = xtcl_post(
                        ("incr total; " + std::string(fails ? "error " : "set x ") + text).c_str(), true, &result);
                    right += code == (fails ? ERROR : OK) && result == text ? 1 : 0;
                }
                --running;
            });
    int flushed = 0;
    while (running > 0)
        flushed += xtcl_flush_queue(0, 0);
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(4 * COUNT, right);
    EXPECT_EQ(4 * COUNT, flushed);
    EXPECT_EQ("1000", evaluate("set total"));
}

TEST(base_xtcl, after_a_shutdown_posts_return_an_error_until_the_next_begin)
{
    evaluate("set kept 1");
    xtcl_post("set queued 1", false, nullptr);
    xtcl_shutdown();
    xtcl_shutdown();
    EXPECT_EQ(nullptr, xtcl_get_interpreter());
    for (const bool wait : {true, false})
    {
        std::string result;
        EXPECT_EQ(SHUT_DOWN, xtcl_post("set x 1", wait, &result));
        EXPECT_EQ(SHUT_DOWN_TEXT, result);
        EXPECT_EQ(SHUT_DOWN, xtcl_post("set x 1", wait, nullptr));
        std::thread(
            [wait]
            {
                std::string text;
                EXPECT_EQ(SHUT_DOWN, xtcl_post("set x 1", wait, &text));
                EXPECT_EQ(SHUT_DOWN_TEXT, text);
            })
            .join();
    }
    EXPECT_EQ(0, xtcl_flush_queue(0, 0));
    xtcl_startup();
    xtcl_startup();
    EXPECT_EQ(0, xtcl_flush_queue(0, 0));
    EXPECT_EQ("0", evaluate("info exists kept"));
    EXPECT_EQ("0", evaluate("info exists x"));
    EXPECT_EQ("2", evaluate("llength [info commands ::msg_tcl_*]"));
}

TEST(base_xtcl, a_queued_waiting_post_returns_an_error_at_the_shutdown)
{
    std::deque<WAITING_POST> posts;
    for (int i = 0; i < 4; ++i)
        posts.emplace_back("set x 1");
    for (const WAITING_POST& post : posts)
        EXPECT_FALSE(post.has_returned);
    xtcl_shutdown();
    for (WAITING_POST& post : posts)
    {
        post.join();
        EXPECT_EQ(SHUT_DOWN, post.code);
        EXPECT_EQ(SHUT_DOWN_TEXT, post.result);
    }
}

TEST(base_xtcl, the_end_of_messaging_releases_waiting_posts)
{
    msg_exe_init(0, nullptr);
    WAITING_POST post("set x 1");
    msg_exe_fini();
    post.join();
    EXPECT_EQ(SHUT_DOWN, post.code);
    msg_exe_init(0, nullptr);
    EXPECT_EQ("1", evaluate("set x 1"));
    msg_exe_fini();
}

TEST(base_xtcl, posts_that_race_with_the_shutdown_all_return)
{
    for (int round = 0; round < 50; ++round)
    {
        std::atomic<int> served{0};
        std::atomic<int> wrong{0};
        std::vector<std::thread> threads;
        threads.reserve(4);
        for (int t = 0; t < 4; ++t)
            threads.emplace_back(
                [&, t]
                {
                    for (int code = OK; code != SHUT_DOWN;)
                    {
                        std::string result;
                        code = xtcl_post(("set x " + std::to_string(t)).c_str(), true, &result);
                        const std::string expected = code == OK ? std::to_string(t) : SHUT_DOWN_TEXT;
                        wrong += result == expected ? 0 : 1;
                        served += code == OK ? 1 : 0;
                    }
                });
        while (served < 20)
            xtcl_flush_queue(0, 0);
        xtcl_shutdown();
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_EQ(0, wrong);
        xtcl_startup();
    }
}

TEST(base_xtcl, a_shutdown_inside_a_command_lets_the_command_finish_and_keeps_its_waiting_thread_until_then)
{
    DISPLAY display;
    MSG_O prompt;
    WAITING_POST* shown = nullptr;
    bool had_returned = true;
    display.on_prompt = [&](MSG_PROMPT*)
    {
        xtcl_shutdown();
        EXPECT_EQ(nullptr, xtcl_get_interpreter());
        EXPECT_EQ(SHUT_DOWN, xtcl_post("set x 1", true, nullptr));
        had_returned = shown->has_returned;
        return 4;
    };
    WAITING_POST running(display_command(&prompt));
    shown = &running;
    WAITING_POST queued("set x 1");
    EXPECT_EQ(1, xtcl_flush_queue(0, 0));
    running.join();
    queued.join();
    EXPECT_FALSE(had_returned);
    EXPECT_EQ(OK, running.code);
    EXPECT_EQ("4", running.result);
    EXPECT_EQ(SHUT_DOWN, queued.code);
    xtcl_startup();
    EXPECT_EQ("1", evaluate("set x 1"));
}

TEST(base_xtcl, a_shutdown_and_a_new_begin_inside_a_command_make_a_new_interpreter)
{
    DISPLAY display;
    MSG_O prompt;
    evaluate("set old 1");
    display.on_prompt = [&](MSG_PROMPT*)
    {
        xtcl_shutdown();
        xtcl_startup();
        EXPECT_EQ("0", evaluate("info exists old"));
        return 1;
    };
    EXPECT_EQ("1", evaluate(display_command(&prompt)));
    EXPECT_EQ("0", evaluate("info exists old"));
}

TEST(base_xtcl, a_shutdown_on_another_thread_ends_the_queue_and_the_next_begin_has_a_new_interpreter)
{
    evaluate("set old 1");
    std::thread(xtcl_shutdown).join();
    EXPECT_EQ(nullptr, xtcl_get_interpreter());
    EXPECT_EQ(SHUT_DOWN, xtcl_post("set x 1", true, nullptr));
    xtcl_startup();
    EXPECT_EQ("0", evaluate("info exists old"));
}

TEST(base_xtcl, a_pointer_travels_as_a_text)
{
    int value = 0;
    for (void* pointer : {static_cast<void*>(&value), reinterpret_cast<void*>(1), reinterpret_cast<void*>(~0ul)})
    {
        char text[XTCL_POINTER_TEXT_SIZE];
        xtcl_ptr_to_string(text, pointer);
        EXPECT_LT(std::string(text).size(), std::size_t{XTCL_POINTER_TEXT_SIZE});
        EXPECT_EQ(pointer, xtcl_string_to_ptr(text));
        EXPECT_EQ(text, evaluate(std::string("lindex ") + text + " 0"));
    }
    char text[XTCL_POINTER_TEXT_SIZE];
    xtcl_ptr_to_string(text, nullptr);
    EXPECT_EQ(nullptr, xtcl_string_to_ptr(text));
    xtcl_ptr_to_string(nullptr, &value);
}

TEST(base_xtcl, any_other_text_is_no_pointer)
{
    EXPECT_EQ(nullptr, xtcl_string_to_ptr(nullptr));
    for (const char* text :
         {"", "0", "ptr_", "12345", "0x00007fff00001234", "ptr_00007fff0000123", "ptr_00007fff000012345",
          "ptr_00007fff0000123g", "ptr_00007FFF00001234", "PTR_00007fff00001234", " ptr_00007fff00001234",
          "ptr_00007fff00001234 ", "ptr_-0007fff00001234", "ptr_0x007fff00001234"})
        EXPECT_EQ(nullptr, xtcl_string_to_ptr(text)) << text;
}

TEST(base_xtcl, a_prompt_is_displayed_by_its_pointer)
{
    DISPLAY display;
    MSG_YNC prompt;
    MSG_PROMPT* shown = nullptr;
    for (const int answer : {7, 0, -2147483647})
    {
        display.on_prompt = [&](MSG_PROMPT* asked)
        {
            shown = asked;
            return answer;
        };
        EXPECT_EQ(std::to_string(answer), evaluate(display_command(&prompt)));
        EXPECT_EQ(&prompt, shown);
    }
}

TEST(base_xtcl, a_worker_gets_the_answer_of_the_main_threads_display)
{
    DISPLAY display;
    const std::thread::id main_thread = std::this_thread::get_id();
    display.on_prompt = [&](MSG_PROMPT* prompt)
    {
        EXPECT_EQ(main_thread, std::this_thread::get_id());
        return prompt->get_text() == "Go on?" ? 6 : 7;
    };
    MSG_YN prompt;
    prompt.set_text("Go on?");
    WAITING_POST post(display_command(&prompt));
    EXPECT_EQ(1, xtcl_flush_queue(0, 0));
    post.join();
    EXPECT_EQ(OK, post.code);
    EXPECT_EQ("6", post.result);
}

TEST(base_xtcl, what_is_no_living_prompt_is_a_tcl_error)
{
    DISPLAY display;
    bool is_asked = false;
    display.on_prompt = [&](MSG_PROMPT*)
    {
        is_asked = true;
        return 1;
    };
    auto gone = std::make_unique<MSG_O>();
    const std::string gone_command = display_command(gone.get());
    EXPECT_EQ("1", evaluate(gone_command));
    is_asked = false;
    gone.reset();
    const std::string gone_text = gone_command.substr(gone_command.find(' ') + 1);
    EXPECT_EQ("1: \"" + gone_text + "\" is not the pointer of a prompt", evaluate(gone_command));
    EXPECT_EQ("1: \"ptr_0000000000000000\" is not the pointer of a prompt",
              evaluate("msg_tcl_prompt_display ptr_0000000000000000"));
    EXPECT_EQ("1: \"gr\xC3\xBCn\" is not the pointer of a prompt", evaluate("msg_tcl_prompt_display gr\xC3\xBCn"));
    EXPECT_EQ("1: \"\" is not the pointer of a prompt", evaluate("msg_tcl_prompt_display {}"));
    EXPECT_EQ("1: \"ptr_00007fff00001234\" is not the pointer of a prompt",
              evaluate("msg_tcl_prompt_display ptr_00007fff00001234"));
    EXPECT_FALSE(is_asked);
}

TEST(base_xtcl, the_commands_want_one_argument)
{
    const DISPLAY display;
    EXPECT_EQ("1: wrong # args: should be \"msg_tcl_prompt_display pointer\"", evaluate("msg_tcl_prompt_display"));
    EXPECT_EQ("1: wrong # args: should be \"msg_tcl_prompt_display pointer\"", evaluate("msg_tcl_prompt_display a b"));
    EXPECT_EQ("1: wrong # args: should be \"msg_tcl_internal_error_display text\"",
              evaluate("msg_tcl_internal_error_display"));
    EXPECT_EQ("1: wrong # args: should be \"msg_tcl_internal_error_display text\"",
              evaluate("msg_tcl_internal_error_display a b"));
    EXPECT_TRUE(display.error_texts.empty());
}

namespace
{
/// The text as it reaches the display through a command.
std::string send_through_command(DISPLAY& display, const std::string& text)
{
    display.error_texts.clear();
    EXPECT_EQ("", evaluate("msg_tcl_internal_error_display \"" + xtcl_transform_string(text) + "\""));
    return display.error_texts.size() == 1 ? display.error_texts[0] : "not displayed";
}
} // namespace

TEST(base_xtcl, each_character_of_a_transformed_text_arrives)
{
    DISPLAY display;
    std::string all;
    for (int byte = 0; byte < 128; ++byte)
    {
        const std::string text(1, static_cast<char>(byte));
        EXPECT_EQ(text, send_through_command(display, text)) << byte;
        EXPECT_EQ(text + text, send_through_command(display, text + text)) << byte;
        EXPECT_EQ("a" + text + "b", send_through_command(display, "a" + text + "b")) << byte;
        all += text;
    }
    EXPECT_EQ(all, send_through_command(display, all));
    EXPECT_EQ("", send_through_command(display, ""));
    const std::string unicode = "\xC3\xA4\\\xC3\xB6[\xE2\x82\xAC]$\xF0\x9F\x94\xA7\"";
    EXPECT_EQ(unicode, send_through_command(display, unicode));
    const std::string script =
        std::string("[exit 1] $env(HOME) \\n \\u0041 {unbalanced \\\n;# \"quoted\" %s\r\n") + '\0' + "12";
    EXPECT_EQ(script, send_through_command(display, script));
    const std::string large(1000000, '\\');
    EXPECT_EQ(large, send_through_command(display, large));
}

TEST(base_xtcl, random_texts_arrive)
{
    DISPLAY display;
    std::mt19937 random(11);
    const std::vector<std::string> pieces = {"\\",
                                             "\"",
                                             "[",
                                             "]",
                                             "{",
                                             "}",
                                             "$",
                                             "\n",
                                             "\r",
                                             "\t",
                                             ";",
                                             "#",
                                             " ",
                                             "a",
                                             "u",
                                             "x",
                                             "0",
                                             "7",
                                             "f",
                                             "(",
                                             ")",
                                             "\xC3\xA4",
                                             "\xE2\x82\xAC",
                                             "\xF0\x9F\x94\xA7",
                                             "%",
                                             "*",
                                             "?",
                                             "~",
                                             "\x7F"};
    for (int i = 0; i < 20000; ++i)
    {
        std::string text;
        for (unsigned int length = random() % 12; length > 0; --length)
            text += pieces[random() % pieces.size()];
        ASSERT_EQ(text, send_through_command(display, text));
    }
}

TEST(base_xtcl, the_transformation_escapes_what_tcl_reads_in_quotes)
{
    EXPECT_EQ("\\\\ \\\" \\[ \\] \\{ \\} \\$ \\n \\r a\t;#", xtcl_transform_string("\\ \" [ ] { } $ \n \r a\t;#"));
    EXPECT_EQ("\\u0000", xtcl_transform_string(std::string(1, '\0')));
    EXPECT_EQ("gr\xC3\xBCn", xtcl_transform_string("gr\xC3\xBCn"));
}

TEST(base_xtcl, an_exception_of_a_display_passes_the_interpreter_and_leaves_it_usable)
{
    DISPLAY display;
    MSG_O prompt;
    display.on_prompt = [](MSG_PROMPT*) -> int { throw std::runtime_error("no display"); };
    EXPECT_THROW(evaluate(display_command(&prompt)), std::runtime_error);
    EXPECT_THROW(evaluate("catch {" + display_command(&prompt) + "}; set x 1"), std::runtime_error);
    EXPECT_EQ("1", evaluate("set x"));
    WAITING_POST post(display_command(&prompt));
    EXPECT_THROW(xtcl_flush_queue(0, 0), std::runtime_error);
    post.join();
    EXPECT_EQ(ERROR, post.code);
    EXPECT_EQ("the command was ended by an exception", post.result);
    EXPECT_EQ("2", evaluate("expr 1 + 1"));
    EXPECT_EQ(0, xtcl_flush_queue(0, 0));
}

TEST(base_xtcl, an_internal_error_of_a_display_is_trapped)
{
    DISPLAY display;
    MSG_O prompt;
    display.on_prompt = [](MSG_PROMPT*)
    {
        MSG_INTERNAL_ERROR::report("qApp != nullptr", "TOLV", "tolv_msg_display", 1);
        return 1;
    };
    EXPECT_INTERNAL_ERROR(evaluate(display_command(&prompt)), "qApp != nullptr");
}
