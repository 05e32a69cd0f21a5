#include "xtcl.h"

#include "gen.h"
#include "msg_debug_p.h"
#include "msg_tcl_p.h"
#include "thr.h"
#include "xtcl_p.h"

#include <tcl.h>

#include <chrono>
#include <climits>
#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <utility>

namespace
{
constexpr int CODE_SHUT_DOWN = -1;
constexpr char TEXT_SHUT_DOWN[] = "the Tcl service is shut down";

/// How deep flushes may be nested: a command may run an event loop of its own, as a message box does, and its timer
/// flushes again.
constexpr int HIGHEST_FLUSH_DEPTH = 50;

/// A command on its way to the main thread. Shared by the queue and the thread that waits for it.
struct POSTED_COMMAND
{
    std::string command;
    bool is_waited_for = false;
    unsigned long long serial = 0;
    std::condition_variable done_condition;
    bool is_done = false;
    int code = CODE_SHUT_DOWN;
    std::string result;
};

/// Everything there is. Never destroyed: threads may post while the process ends.
struct XTCL_SERVICE
{
    std::mutex mutex; ///< guards what stands up to the blank line
    std::deque<std::shared_ptr<POSTED_COMMAND>> queue;
    unsigned long long last_serial = 0;
    bool is_up = true;

    Tcl_Interp* interpreter = nullptr; ///< main thread only, like all below
    bool is_executable_known = false;
    int flush_depth = 0;
    std::exception_ptr exception; ///< on its way out of the evaluation under way
};

XTCL_SERVICE& service()
{
    static XTCL_SERVICE* the_service = new XTCL_SERVICE;
    return *the_service;
}

bool is_main_thread()
{
    return thr_thread_self() == THR_THREAD_MAIN_ID;
}

bool is_service_up()
{
    const std::lock_guard<std::mutex> lock(service().mutex);
    return service().is_up;
}

void record_failure(const std::string& what)
{
    msg_add_debug_record({"xtcl", what, MSG_D_LEVEL_1});
}

/// Keeps an interpreter's memory while it is in use, also where a command ends the service.
class INTERPRETER_USE
{
public:
    explicit INTERPRETER_USE(Tcl_Interp* interpreter) : m_interpreter(interpreter)
    {
        Tcl_Preserve(m_interpreter);
    }
    ~INTERPRETER_USE()
    {
        Tcl_Release(m_interpreter);
    }
    INTERPRETER_USE(const INTERPRETER_USE&) = delete;
    INTERPRETER_USE& operator=(const INTERPRETER_USE&) = delete;

private:
    Tcl_Interp* m_interpreter;
};

/// Lets a command run inside another one without a trace in the outer one's result.
class INTERPRETER_STATE
{
public:
    explicit INTERPRETER_STATE(Tcl_Interp* interpreter)
        : m_interpreter(interpreter), m_state(Tcl_SaveInterpState(interpreter, TCL_OK))
    {
    }
    ~INTERPRETER_STATE()
    {
        Tcl_RestoreInterpState(m_interpreter, m_state);
    }
    INTERPRETER_STATE(const INTERPRETER_STATE&) = delete;
    INTERPRETER_STATE& operator=(const INTERPRETER_STATE&) = delete;

private:
    Tcl_Interp* m_interpreter;
    Tcl_InterpState m_state;
};

Tcl_Interp* make_interpreter()
{
    if (!service().is_executable_known)
    {
        Tcl_FindExecutable((gen_get_module_path() + "/" + gen_get_module_filename()).c_str());
        service().is_executable_known = true;
    }
    Tcl_Interp* interpreter = Tcl_CreateInterp();
    if (Tcl_Init(interpreter) != TCL_OK)
        record_failure("Tcl's own library was not found: " + xtcl_get_text(Tcl_GetObjResult(interpreter)));
    Tcl_ResetResult(interpreter);
    msg_tcl_create_commands(interpreter);
    return interpreter;
}

void delete_interpreter()
{
    Tcl_Interp* interpreter = std::exchange(service().interpreter, nullptr);
    if (interpreter != nullptr)
        Tcl_DeleteInterp(interpreter);
}

int evaluate(Tcl_Interp* interpreter, const std::string& command, int flags)
{
    const std::string text = xtcl_to_tcl_text(command);
    if (text.size() > static_cast<std::size_t>(INT_MAX))
    {
        Tcl_SetObjResult(interpreter, Tcl_NewStringObj("the command is too long", -1));
        return TCL_ERROR;
    }
    const std::exception_ptr outer_exception = std::exchange(service().exception, nullptr);
    const int code = Tcl_EvalEx(interpreter, text.data(), static_cast<int>(text.size()), flags);
    const std::exception_ptr exception = std::exchange(service().exception, outer_exception);
    if (exception != nullptr)
        std::rethrow_exception(exception);
    return code;
}

/// Runs a command on the main thread's interpreter and tells its code and result.
std::pair<int, std::string> run_command(const std::string& command)
{
    Tcl_Interp* interpreter = xtcl_get_interpreter();
    if (interpreter == nullptr)
        return {CODE_SHUT_DOWN, TEXT_SHUT_DOWN};
    const INTERPRETER_USE use(interpreter);
    const INTERPRETER_STATE state(interpreter);
    const int code = evaluate(interpreter, command, TCL_EVAL_GLOBAL);
    return {code, xtcl_get_text(Tcl_GetObjResult(interpreter))};
}

/// Hands the outcome to the thread that waits.
void finish(POSTED_COMMAND& posted, int code, std::string result)
{
    const std::lock_guard<std::mutex> lock(service().mutex);
    posted.code = code;
    posted.result = std::move(result);
    posted.is_done = true;
    posted.done_condition.notify_all();
}

void run_posted(POSTED_COMMAND& posted)
{
    try
    {
        auto [code, result] = run_command(posted.command);
        if (code != TCL_OK && !posted.is_waited_for)
            record_failure("a posted command failed: " + result);
        finish(posted, code, std::move(result));
    }
    catch (...)
    {
        finish(posted, TCL_ERROR, "the command was ended by an exception");
        throw;
    }
}

/// The next command up to a serial number, null where there is none.
std::shared_ptr<POSTED_COMMAND> take_from_queue(unsigned long long last_serial)
{
    const std::lock_guard<std::mutex> lock(service().mutex);
    if (service().queue.empty() || service().queue.front()->serial > last_serial)
        return nullptr;
    std::shared_ptr<POSTED_COMMAND> posted = std::move(service().queue.front());
    service().queue.pop_front();
    return posted;
}

unsigned long long get_last_serial()
{
    const std::lock_guard<std::mutex> lock(service().mutex);
    return service().last_serial;
}

/// Queues a command; a waiting one returns when it is done or dropped.
int post_to_queue(const char* command, bool wait, std::string& result)
{
    const auto posted = std::make_shared<POSTED_COMMAND>();
    posted->command = command;
    posted->is_waited_for = wait;
    std::unique_lock<std::mutex> lock(service().mutex);
    if (!service().is_up)
    {
        result = TEXT_SHUT_DOWN;
        return CODE_SHUT_DOWN;
    }
    posted->serial = ++service().last_serial;
    service().queue.push_back(posted);
    if (!wait)
        return TCL_OK;
    posted->done_condition.wait(lock, [&] { return posted->is_done; });
    result = std::move(posted->result);
    return posted->code;
}
} // namespace

Tcl_Interp* xtcl_get_interpreter()
{
    if (!is_main_thread() || !is_service_up())
        return nullptr;
    if (service().interpreter == nullptr)
        service().interpreter = make_interpreter();
    return service().interpreter;
}

int xtcl_tcl_eval(Tcl_Interp* interpreter, const std::string& command, int flags)
{
    if (interpreter == nullptr || !is_main_thread())
        return TCL_ERROR;
    const INTERPRETER_USE use(interpreter);
    return evaluate(interpreter, command, flags);
}

int xtcl_post(const char* command, bool wait, std::string* result)
{
    if (command == nullptr)
        command = "";
    std::string ignored_result;
    std::string& outcome = result != nullptr ? *result : ignored_result;
    if (!wait || !is_main_thread())
        return post_to_queue(command, wait, outcome);
    auto [code, text] = run_command(command);
    outcome = std::move(text);
    return code;
}

int xtcl_flush_queue(int max_commands, int max_milliseconds)
{
    if (!is_main_thread() || service().flush_depth >= HIGHEST_FLUSH_DEPTH)
        return 0;
    struct DEPTH_COUNT
    {
        DEPTH_COUNT()
        {
            ++service().flush_depth;
        }
        ~DEPTH_COUNT()
        {
            --service().flush_depth;
        }
    };
    const DEPTH_COUNT depth_count;
    const auto start = std::chrono::steady_clock::now();
    const unsigned long long last_serial = get_last_serial();
    int count = 0;
    while (const std::shared_ptr<POSTED_COMMAND> posted = take_from_queue(last_serial))
    {
        run_posted(*posted);
        ++count;
        if (max_commands > 0 && count >= max_commands)
            break;
        const auto elapsed = std::chrono::steady_clock::now() - start;
        if (max_milliseconds > 0 && elapsed > std::chrono::milliseconds(max_milliseconds))
            break;
    }
    return count;
}

void xtcl_shutdown()
{
    std::deque<std::shared_ptr<POSTED_COMMAND>> dropped;
    {
        const std::lock_guard<std::mutex> lock(service().mutex);
        service().is_up = false;
        dropped.swap(service().queue);
    }
    for (const std::shared_ptr<POSTED_COMMAND>& posted : dropped)
        finish(*posted, CODE_SHUT_DOWN, TEXT_SHUT_DOWN);
    if (is_main_thread())
        delete_interpreter();
}

void xtcl_startup()
{
    if (is_main_thread() && !is_service_up())
        delete_interpreter();
    const std::lock_guard<std::mutex> lock(service().mutex);
    service().is_up = true;
}

int xtcl_call_guarded(Tcl_Interp* interpreter, const std::function<void()>& body)
{
    try
    {
        body();
        return TCL_OK;
    }
    catch (...)
    {
        service().exception = std::current_exception();
        Tcl_SetObjResult(interpreter, Tcl_NewStringObj("the command was ended by an exception", -1));
        return TCL_ERROR;
    }
}
