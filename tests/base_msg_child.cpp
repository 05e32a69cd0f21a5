// A program that dies for real, in the way that its first argument names.

#include "msg.h"
#include "msg_crash_report.h"
#include "msg_internal_error.h"
#include "thr.h"
#include "xtcl.h"

#include <link.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <future>
#include <map>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#define NOT_INSTRUMENTED __attribute__((noinline, no_sanitize("address"), no_sanitize("undefined")))

namespace child
{
/// Zero, which no compiler and no analyser sees.
volatile std::intptr_t s_zero = 0;

void say(const std::string& text)
{
    std::fputs((text + "\n").c_str(), stdout);
    std::fflush(stdout);
}

__attribute__((noinline)) void break_an_invariant()
{
    MSG_INTERNAL_ERROR::report("m_view != NULL", "TOLV", "tolv_view", 42);
    say("the report returned");
}

/// A display whose reaction to an internal error a case chooses.
class DISPLAY : public MSG_DISPLAY
{
public:
    explicit DISPLAY(std::function<void(const std::string&)> reaction) : m_reaction(std::move(reaction))
    {
        msg_get_default_report()->set_display(this);
    }
    void post_display(MSG_POST*, unsigned int) override
    {
    }
    int prompt_display(MSG_PROMPT*) override
    {
        return 1;
    }
    void internal_error_display(std::string text) override
    {
        say("displayed " + text);
        m_reaction(text);
    }

private:
    std::function<void(const std::string&)> m_reaction;
};

void report_plainly()
{
    MSG_D message("child", MSG_D_LEVEL_2);
    message.format("about to break, with \"%s\"", "quotes");
    message.send();
    break_an_invariant();
}

void report_before_the_begin()
{
    msg_exe_fini();
    break_an_invariant();
}

void report_with_null_texts()
{
    MSG_INTERNAL_ERROR::report(nullptr, nullptr, nullptr, 0);
}

void report_with_comment()
{
    const DISPLAY display([](const std::string&)
                          { MSG_CRASH_REPORT_MANAGER::get_crash_report_manager()->set_crash_comment("I pressed F1"); });
    break_an_invariant();
}

void report_and_cancel()
{
    const DISPLAY display(
        [](const std::string&)
        {
            MSG_CRASH_REPORT_MANAGER* manager = MSG_CRASH_REPORT_MANAGER::get_crash_report_manager();
            say("written before: " + std::string(manager->write_crash_report().empty() ? "no" : "yes"));
            manager->set_crash_report_generation(false);
        });
    break_an_invariant();
}

void report_in_a_report()
{
    const DISPLAY display([](const std::string&)
                          { MSG_INTERNAL_ERROR::report("second", "TOLV", "tolv_crash_reporter_dlg", 7); });
    break_an_invariant();
}

void report_with_a_display_that_throws()
{
    const DISPLAY display([](const std::string&) { throw std::runtime_error("no display"); });
    break_an_invariant();
}

/// Four threads meet the same broken invariant; the display waits until all four are in their report.
void report_from_four_threads()
{
    std::atomic<int> at_the_edge{0};
    std::atomic<int> count{0};
    const DISPLAY display(
        [&](const std::string&)
        {
            ++count;
            while (at_the_edge < 4)
                std::this_thread::yield();
            say("displays " + std::to_string(count));
        });
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(
            [&]
            {
                ++at_the_edge;
                break_an_invariant();
            });
    for (std::thread& thread : threads)
        thread.join();
}

/// The worker's display needs the main thread, which breaks an invariant itself.
void report_from_a_worker_and_the_main_thread()
{
    std::promise<void> worker_displays;
    std::promise<void> never;
    const DISPLAY display(
        [&](const std::string&)
        {
            worker_displays.set_value();
            never.get_future().wait();
        });
    std::thread worker([] { break_an_invariant(); });
    worker_displays.get_future().wait();
    MSG_INTERNAL_ERROR::report("main", "TOLV", "tolv_app", 1);
    worker.join();
}

NOT_INSTRUMENTED void write_through_null()
{
    auto* pointer = reinterpret_cast<volatile int*>(s_zero);
    *pointer = 1;
}

NOT_INSTRUMENTED int recurse_forever(volatile char* above)
{
    volatile char block[4096];
    block[0] = *above;
    return block[0] == 0 ? 0 : recurse_forever(block) + block[0];
}

void overflow_the_stack()
{
    volatile char first = 1;
    say(std::to_string(recurse_forever(&first)));
}

void overflow_a_workers_stack()
{
    thr_thread_create(
        [](void*) -> THR_THREAD_RESULT
        {
            overflow_the_stack();
            return 0;
        },
        nullptr, 0);
    for (;;)
        pause();
}

NOT_INSTRUMENTED void divide_by_zero()
{
    const std::intptr_t number = s_zero + 7;
    say(std::to_string(number / s_zero));
}

void run_into_a_trap()
{
    __builtin_trap();
}

NOT_INSTRUMENTED void touch_a_cut_file()
{
    FILE* file = std::tmpfile();
    if (ftruncate(fileno(file), 4096) != 0)
        return;
    auto* page = static_cast<volatile char*>(mmap(nullptr, 4096, PROT_READ, MAP_SHARED, fileno(file), 0));
    if (ftruncate(fileno(file), 0) != 0)
        return;
    say(std::to_string(*page));
}

NOT_INSTRUMENTED void call_through_null()
{
    auto* function = reinterpret_cast<void (*)()>(s_zero);
    function();
    say("returned");
}

void throw_uncaught()
{
    throw std::runtime_error("uncaught");
}

void raise_a_signal()
{
    raise(SIGSEGV);
    say("returned");
}

void crash_with_an_older_handler()
{
    msg_exe_fini();
    std::signal(SIGSEGV,
                [](int)
                {
                    [[maybe_unused]] const ssize_t written = write(1, "older handler\n", 14);
                    _exit(3);
                });
    msg_exe_init(0, nullptr);
    write_through_null();
}

void crash_after_the_end()
{
    msg_exe_fini();
    write_through_null();
}

void crash_without_generation()
{
    MSG_CRASH_REPORT_MANAGER::get_crash_report_manager()->set_crash_report_generation(false);
    write_through_null();
}

/// The loader's lock is held for ever, so that names and lines cannot be found.
void crash_while_the_loader_is_locked()
{
    std::promise<void> is_locked;
    std::thread holder(
        [&]
        {
            dl_iterate_phdr(
                [](dl_phdr_info*, size_t, void* promise)
                {
                    static_cast<std::promise<void>*>(promise)->set_value();
                    for (;;)
                        pause();
                    return 0;
                },
                &is_locked);
        });
    is_locked.get_future().wait();
    write_through_null();
    holder.join();
}

/// Every further allocation of some size would end in abort().
NOT_INSTRUMENTED void crash_with_a_ruined_heap()
{
    constexpr std::size_t SIZE = 100000;
    auto* block = static_cast<volatile char*>(std::malloc(SIZE));
    for (std::size_t i = 0; i < SIZE + 64; ++i)
        block[i] = '\xB4';
    write_through_null();
}

/// Both end the process; one record.
void crash_on_two_threads()
{
    std::atomic<int> at_the_edge{0};
    const auto crash = [&]
    {
        ++at_the_edge;
        while (at_the_edge < 2)
            std::this_thread::yield();
        write_through_null();
    };
    std::thread other(crash);
    crash();
    other.join();
}

/// A worker waits for the main thread, which ends without ever flushing.
void end_under_a_waiting_post()
{
    std::promise<int> code;
    std::thread worker([&] { code.set_value(xtcl_post("set x 1", true, nullptr)); });
    msg_exe_fini();
    say("post returned " + std::to_string(code.get_future().get()));
    worker.join();
}
} // namespace child

int main(int argc, char** argv)
{
    using namespace child;
    const std::map<std::string, void (*)()> cases = {
        {"report", report_plainly},
        {"report_before_the_begin", report_before_the_begin},
        {"report_with_null_texts", report_with_null_texts},
        {"report_with_comment", report_with_comment},
        {"report_and_cancel", report_and_cancel},
        {"report_in_a_report", report_in_a_report},
        {"report_with_a_display_that_throws", report_with_a_display_that_throws},
        {"report_from_four_threads", report_from_four_threads},
        {"report_from_a_worker_and_the_main_thread", report_from_a_worker_and_the_main_thread},
        {"write_through_null", write_through_null},
        {"overflow_the_stack", overflow_the_stack},
        {"overflow_a_workers_stack", overflow_a_workers_stack},
        {"divide_by_zero", divide_by_zero},
        {"run_into_a_trap", run_into_a_trap},
        {"touch_a_cut_file", touch_a_cut_file},
        {"call_through_null", call_through_null},
        {"throw_uncaught", throw_uncaught},
        {"raise_a_signal", raise_a_signal},
        {"crash_with_an_older_handler", crash_with_an_older_handler},
        {"crash_after_the_end", crash_after_the_end},
        {"crash_without_generation", crash_without_generation},
        {"crash_while_the_loader_is_locked", crash_while_the_loader_is_locked},
        {"crash_with_a_ruined_heap", crash_with_a_ruined_heap},
        {"crash_on_two_threads", crash_on_two_threads},
        {"end_under_a_waiting_post", end_under_a_waiting_post},
    };
    const rlimit no_core = {0, 0};
    setrlimit(RLIMIT_CORE, &no_core);
    const auto found = argc > 1 ? cases.find(argv[1]) : cases.end();
    if (found == cases.end())
        return 2;
    msg_exe_init(argc, const_cast<const char**>(argv));
    found->second();
    return 0;
}
