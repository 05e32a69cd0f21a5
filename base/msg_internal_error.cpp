#include "msg_internal_error.h"

#include "msg.h"
#include "msg_crash_report.h"
#include "msg_fatal_signal_p.h"
#include "thr.h"

#include <unistd.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <string>

namespace
{
/// How long a second report waits for the first one's record to be in its file.
constexpr std::chrono::seconds RECORD_TIME_LIMIT{5};

/// Never destroyed: an error may be reported while the process's static objects go.
struct REPORTING
{
    std::mutex mutex;
    std::condition_variable changed;
    MSG_INTERNAL_ERROR::HANDLER handler;
    THR_THREAD_ID reporter = 0; ///< the thread that reports, 0 for none
    bool is_record_written = false;
};

REPORTING& reporting()
{
    static auto* the_reporting = new REPORTING;
    return *the_reporting;
}

[[noreturn]] void end_process()
{
    msg_let_abort_pass();
    std::abort();
}

void write_to_standard_error(const std::string& text, const std::string& tag, const std::string& file, int line)
{
    const std::string message =
        "Internal Error: " + text + " (" + tag + ", " + file + ":" + std::to_string(line) + ")\n";
    std::fwrite(message.data(), 1, message.size(), stderr);
    std::fflush(stderr);
}

/// Returns on the one thread whose report goes on.
void become_reporter()
{
    REPORTING& state = reporting();
    const THR_THREAD_ID self = thr_thread_self();
    std::unique_lock<std::mutex> lock(state.mutex);
    if (state.reporter == 0)
    {
        state.reporter = self;
        return;
    }
    if (state.reporter != self && self != THR_THREAD_MAIN_ID)
        state.changed.wait(lock, [] { return false; });
    if (state.reporter != self)
        state.changed.wait_for(lock, RECORD_TIME_LIMIT, [&] { return state.is_record_written; });
    end_process();
}

void write_record(const std::string& text, const std::string& tag, const std::string& file, int line,
                  const void* return_address)
{
    MSG_CRASH_REPORT_MANAGER* manager = MSG_CRASH_REPORT_MANAGER::get_crash_report_manager();
    manager->collect(text, tag, file, line, return_address);
    manager->write_crash_report();
}

void tell_record_is_written()
{
    const std::lock_guard<std::mutex> lock(reporting().mutex);
    reporting().is_record_written = true;
    reporting().changed.notify_all();
}

/// The display on standard error is passed over: the text stands there already.
void display(const std::string& text)
{
    MSG_DISPLAY* in_force = msg_get_display_in_force();
    if (in_force != msg_get_basic_report()->get_display())
        in_force->internal_error_display(text);
}

/// What fails here must not keep the steps behind it from being taken.
template <typename STEP>
void attempt(STEP step)
{
    try
    {
        step();
    }
    catch (...)
    {
        std::fputs("A step of the report failed.\n", stderr);
    }
}
} // namespace

void MSG_INTERNAL_ERROR::report(const char* text, const char* tag, const char* file, int line)
{
    HANDLER handler;
    {
        const std::lock_guard<std::mutex> lock(reporting().mutex);
        handler = reporting().handler;
    }
    if (handler)
    {
        handler(text, tag, file, line);
        return;
    }
    const void* return_address = __builtin_return_address(0);
    const std::string text_copy = text != nullptr ? text : "";
    const std::string tag_copy = tag != nullptr ? tag : "";
    const std::string file_copy = file != nullptr ? file : "";
    write_to_standard_error(text_copy, tag_copy, file_copy, line);
    become_reporter();
    attempt([&] { write_record(text_copy, tag_copy, file_copy, line, return_address); });
    tell_record_is_written();
    attempt([&] { display(text_copy); });
    attempt([] { MSG_CRASH_REPORT_MANAGER::get_crash_report_manager()->write_crash_report(); });
    end_process();
}

MSG_INTERNAL_ERROR::HANDLER MSG_INTERNAL_ERROR::set_handler(HANDLER handler)
{
    const std::lock_guard<std::mutex> lock(reporting().mutex);
    reporting().handler.swap(handler);
    return handler;
}
