#include "ipc_command.h"

#include "ipc_process_p.h"
#include "xtcl.h"

#include <sys/eventfd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstring>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace
{
using CLOCK = std::chrono::steady_clock;
using std::chrono::milliseconds;

/// How often IPC_COMMAND::is_stopped() is asked.
constexpr int STOP_CHECK_MILLISECONDS = 100;

/// How often a group is looked at whose end is near.
constexpr int GROUP_CHECK_MILLISECONDS = 20;

/// How long the end of a killed group is awaited: a process may hang inside the system.
constexpr milliseconds KILLED_GROUP_PATIENCE{1000};

constexpr std::size_t READ_SIZE = std::size_t{64} << 10;

constexpr THR_PROCESS_EXIT_CODE make_exit_code(int exit_status)
{
    return static_cast<THR_PROCESS_EXIT_CODE>(exit_status & 0xff) << 8;
}
} // namespace

/// What all threads share. A run keeps it alive, so that its end never depends on the object's.
struct IPC_COMMAND::IMPL
{
    struct REQUEST
    {
        const std::string& command;
        const std::string& working_directory;
        bool merge_error_output;
        const std::string& input;
        bool keep_output;
    };

    /// One run() from its turn to its end.
    class TURN;

    explicit IMPL(IPC_COMMAND* command) : owner(command)
    {
    }

    bool is_under_way() const
    {
        return entered > 0 || !expected.empty();
    }

    /// To be called with the mutex locked.
    void set_status(STATUS new_status)
    {
        status.store(new_status, std::memory_order_release);
        changed.notify_all();
    }

    /// Asks the processes once. To be called with the mutex locked.
    void ask_group_to_end()
    {
        if (group == 0 || is_group_asked)
            return;
        is_group_asked = true;
        kill(-group, SIGTERM);
        // One that is stopped would not hear it.
        kill(-group, SIGCONT);
    }

    IPC_COMMAND* const owner;
    std::atomic<bool> is_tcl_mode{false};
    std::atomic<unsigned long> status{STATUS_IDLE};
    /// Grows with each terminate(). A run is ended that began, or was expected, when it was lower.
    std::atomic<std::uint64_t> terminate_count{0};

    mutable std::mutex mutex;
    mutable std::condition_variable changed;
    /// Guarded by the mutex.
    std::deque<std::uint64_t> expected; ///< terminate_count at each expect_run()
    int entered = 0;                    ///< run() calls that have not returned
    std::uint64_t next_ticket = 0;
    std::uint64_t ticket_in_turn = 0;
    std::thread::id runner; ///< thread of the run whose turn it is
    bool uses_owner = false;
    bool is_owner_gone = false;
    THR_PROCESS_EXIT_CODE terminate_code = 0;
    pid_t group = 0; ///< the group that may be signalled, 0 for none
    bool is_group_asked = false;
    int wake_descriptor = -1;
    std::string output;
    std::string start_error;

    /// Only on the thread whose turn it is.
    std::string line;
    bool is_line_cut = false; ///< pieces of the line are handed on already
};

class IPC_COMMAND::IMPL::TURN
{
public:
    TURN(IMPL& impl, THR_PROCESS_EXIT_CODE* exit_code) : m_impl(impl), m_exit_code(exit_code)
    {
        enter();
    }

    ~TURN()
    {
        if (m_is_refused)
            store_exit_code();
        else
            leave();
    }

    TURN(const TURN&) = delete;
    TURN& operator=(const TURN&) = delete;

    /// Whether the process could be started.
    bool run(const REQUEST& request)
    {
        if (m_is_refused)
            return false;
        if (is_terminated())
            return fail(SIGTERM, "ended before its start");
        return m_impl.is_tcl_mode ? run_script(request) : run_process(request);
    }

private:
    void enter()
    {
        std::unique_lock<std::mutex> lock(m_impl.mutex);
        if (m_impl.runner == std::this_thread::get_id())
        {
            // From inside process_line(): its turn would never come.
            m_is_refused = true;
            m_code = make_exit_code(EXIT_STATUS_NOT_STARTED);
            return;
        }
        m_terminate_count = m_impl.terminate_count;
        if (!m_impl.expected.empty())
        {
            m_terminate_count = m_impl.expected.front();
            m_impl.expected.pop_front();
        }
        const std::uint64_t ticket = m_impl.next_ticket++;
        if (++m_impl.entered == 1)
            m_impl.set_status(STATUS_STARTING);
        m_impl.changed.wait(lock, [&] { return m_impl.ticket_in_turn == ticket; });

        m_impl.runner = std::this_thread::get_id();
        m_impl.uses_owner = !m_impl.is_owner_gone;
        m_impl.output.clear();
        m_impl.start_error.clear();
        m_impl.line.clear();
        m_impl.is_line_cut = false;
        m_impl.is_group_asked = false;
        if (!is_terminated())
            m_impl.terminate_code = 0;
    }

    void leave()
    {
        const std::lock_guard<std::mutex> lock(m_impl.mutex);
        if (is_terminated() && m_impl.terminate_code != 0)
            m_code = m_impl.terminate_code;
        store_exit_code();
        m_impl.output.swap(m_output);
        m_impl.start_error = m_error;
        m_impl.runner = {};
        m_impl.uses_owner = false;
        ++m_impl.ticket_in_turn;
        --m_impl.entered;
        m_impl.set_status(m_impl.is_under_way() ? STATUS_STARTING : STATUS_FINISHED);
    }

    void store_exit_code()
    {
        if (m_exit_code != nullptr)
            *m_exit_code = m_code;
    }

    bool is_terminated() const
    {
        return m_impl.terminate_count != m_terminate_count;
    }

    bool fail(THR_PROCESS_EXIT_CODE code, const std::string& error)
    {
        m_code = code;
        m_error = error;
        return false;
    }

    bool run_script(const REQUEST& request);
    bool lend_owner(bool is_lent);
    bool run_process(const REQUEST& request);
    void watch(IPC_PROCESS& process, const REQUEST& request, int waker);
    void hand_on(char* data, std::size_t size, bool keep_output);
    void hand_on_last_line();

    class END_WATCH;
    class GROUP_REGISTRATION;

    IMPL& m_impl;
    THR_PROCESS_EXIT_CODE* const m_exit_code;
    bool m_is_refused = false;
    std::uint64_t m_terminate_count = 0;
    /// What an exception leaves behind: the process is killed.
    THR_PROCESS_EXIT_CODE m_code = SIGKILL;
    std::string m_error;
    std::string m_output;
};

/// Gives the object back to its owner's thread, or takes it again; false where it is gone meanwhile.
bool IPC_COMMAND::IMPL::TURN::lend_owner(bool is_lent)
{
    const std::lock_guard<std::mutex> lock(m_impl.mutex);
    m_impl.uses_owner = !is_lent && !m_impl.is_owner_gone;
    m_impl.changed.notify_all();
    return m_impl.uses_owner;
}

bool IPC_COMMAND::IMPL::TURN::run_script(const REQUEST& request)
{
    if (request.command.find('\0') != std::string::npos)
        return fail(make_exit_code(EXIT_STATUS_NOT_STARTED), "the command has a NUL character in it");
    {
        const std::lock_guard<std::mutex> lock(m_impl.mutex);
        m_impl.set_status(STATUS_RUNNING);
    }
    // The script runs on the main thread, which may be the one that destroys the object.
    lend_owner(true);
    std::string result;
    const int code = xtcl_post(request.command.c_str(), true, &result);
    const bool has_owner = lend_owner(false);
    if (code < 0)
        return fail(make_exit_code(EXIT_STATUS_NOT_STARTED), result);
    if (has_owner)
    {
        hand_on(result.data(), result.size(), request.keep_output);
        hand_on_last_line();
    }
    m_code = make_exit_code(code);
    return true;
}

/// Lets terminate() signal the group, as long as the group's number is the process's own.
class IPC_COMMAND::IMPL::TURN::GROUP_REGISTRATION
{
public:
    GROUP_REGISTRATION(IMPL& impl, pid_t group, int wake_descriptor) : m_impl(impl)
    {
        const std::lock_guard<std::mutex> lock(m_impl.mutex);
        m_impl.group = group;
        m_impl.wake_descriptor = wake_descriptor;
        m_impl.set_status(STATUS_RUNNING);
    }

    ~GROUP_REGISTRATION()
    {
        const std::lock_guard<std::mutex> lock(m_impl.mutex);
        m_impl.group = 0;
        m_impl.wake_descriptor = -1;
    }

    GROUP_REGISTRATION(const GROUP_REGISTRATION&) = delete;
    GROUP_REGISTRATION& operator=(const GROUP_REGISTRATION&) = delete;

private:
    IMPL& m_impl;
};

bool IPC_COMMAND::IMPL::TURN::run_process(const REQUEST& request)
{
    IPC_PROCESS::REQUEST start_request;
    start_request.working_directory = request.working_directory;
    start_request.merge_error_output = request.merge_error_output;
    start_request.has_input = !request.input.empty();
    IPC_DESCRIPTOR waker;
    waker.reset(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    IPC_PROCESS process;
    std::string error;
    if (!ipc_split_command(request.command, &start_request.words, &error) || !process.start(start_request, &error))
        return fail(make_exit_code(EXIT_STATUS_NOT_STARTED), error);
    {
        const GROUP_REGISTRATION registration(m_impl, process.get_group(), waker.get());
        watch(process, request, waker.get());
        hand_on_last_line();
    }
    m_code = static_cast<THR_PROCESS_EXIT_CODE>(static_cast<unsigned>(process.reap()));
    return true;
}

/// Decides when a run is over, and kills what does not hear.
class IPC_COMMAND::IMPL::TURN::END_WATCH
{
public:
    END_WATCH(IMPL& impl, IPC_PROCESS& process) : m_impl(impl), m_process(process)
    {
    }

    int get_timeout() const
    {
        return has_happened(m_ended_at) || has_happened(m_asked_at) ? GROUP_CHECK_MILLISECONDS
                                                                    : STOP_CHECK_MILLISECONDS;
    }

    bool is_over(bool is_terminated)
    {
        const CLOCK::time_point now = CLOCK::now();
        if (!has_happened(m_ended_at) && m_process.has_ended())
        {
            m_ended_at = now;
            m_process.close_input();
        }
        if (is_terminated)
            return is_group_over(now);
        return has_happened(m_ended_at) &&
               (!m_process.is_output_open() || now - m_ended_at >= milliseconds(DRAIN_MILLISECONDS));
    }

private:
    static bool has_happened(CLOCK::time_point moment)
    {
        return moment != CLOCK::time_point{};
    }

    bool is_group_over(CLOCK::time_point now)
    {
        if (!has_happened(m_asked_at))
        {
            m_asked_at = now;
            const std::lock_guard<std::mutex> lock(m_impl.mutex);
            m_impl.ask_group_to_end();
        }
        if (now - m_asked_at >= milliseconds(KILL_DELAY_MILLISECONDS))
            kill(-m_process.get_group(), SIGKILL);
        if (!has_happened(m_ended_at) || now < m_next_group_check)
            return false;
        m_next_group_check = now + milliseconds(GROUP_CHECK_MILLISECONDS);
        return !m_process.does_group_live() ||
               now - m_asked_at >= milliseconds(KILL_DELAY_MILLISECONDS) + KILLED_GROUP_PATIENCE;
    }

    IMPL& m_impl;
    IPC_PROCESS& m_process;
    CLOCK::time_point m_ended_at{}; ///< the process ended; the clock's beginning before that
    CLOCK::time_point m_asked_at{}; ///< the group was asked to end; likewise
    CLOCK::time_point m_next_group_check{};
};

void IPC_COMMAND::IMPL::TURN::watch(IPC_PROCESS& process, const REQUEST& request, int waker)
{
    std::vector<char> buffer(READ_SIZE);
    END_WATCH end(m_impl, process);
    while (!end.is_over(is_terminated()))
    {
        process.wait_for_event(end.get_timeout(), waker);
        process.write_input(request.input);
        const std::size_t count = process.read_output(buffer.data(), buffer.size());
        hand_on(buffer.data(), count, request.keep_output);
        if (!is_terminated() && m_impl.owner->is_stopped())
            m_impl.owner->terminate(0);
    }
    // What the process itself wrote is in the pipe by now; what others add without end is not waited for.
    std::size_t rest = process.get_output_capacity();
    while (rest > 0)
    {
        const std::size_t count = process.read_output(buffer.data(), std::min(rest, buffer.size()));
        if (count == 0)
            break;
        hand_on(buffer.data(), count, request.keep_output);
        rest -= count;
    }
}

void IPC_COMMAND::IMPL::TURN::hand_on(char* data, std::size_t size, bool keep_output)
{
    if (size == 0)
        return;
    if (keep_output)
        m_output.append(data, std::min(size, MAX_KEPT_OUTPUT - m_output.size()));
    m_impl.owner->parse_output(gsl::span<char>(data, size));
}

void IPC_COMMAND::IMPL::TURN::hand_on_last_line()
{
    if (!m_impl.line.empty())
        m_impl.owner->process_line(m_impl.line);
}

IPC_COMMAND::IPC_COMMAND() : m_impl(std::make_shared<IMPL>(this))
{
}

IPC_COMMAND::~IPC_COMMAND()
{
    terminate(0);
    std::unique_lock<std::mutex> lock(m_impl->mutex);
    m_impl->is_owner_gone = true;
    m_impl->changed.wait(lock, [this] { return !m_impl->uses_owner; });
}

void IPC_COMMAND::disable_tcl_mode()
{
    m_impl->is_tcl_mode = false;
}

void IPC_COMMAND::enable_tcl_mode()
{
    m_impl->is_tcl_mode = true;
}

bool IPC_COMMAND::run(const std::string& command, const std::string& working_directory, bool merge_error_output,
                      THR_PROCESS_EXIT_CODE* exit_code, const std::string& input, bool keep_output)
{
    const std::shared_ptr<IMPL> impl = m_impl;
    IMPL::TURN turn(*impl, exit_code);
    return turn.run({command, working_directory, merge_error_output, input, keep_output});
}

void IPC_COMMAND::expect_run()
{
    const std::lock_guard<std::mutex> lock(m_impl->mutex);
    m_impl->expected.push_back(m_impl->terminate_count);
    if (m_impl->entered == 0)
        m_impl->set_status(STATUS_STARTING);
}

void IPC_COMMAND::withdraw_run()
{
    const std::lock_guard<std::mutex> lock(m_impl->mutex);
    if (m_impl->expected.empty())
        return;
    m_impl->expected.pop_back();
    if (!m_impl->is_under_way())
        m_impl->set_status(STATUS_FINISHED);
}

unsigned long IPC_COMMAND::get_process_status(unsigned long wait_milliseconds) const
{
    const auto get_status = [this] { return m_impl->status.load(std::memory_order_acquire); };
    const auto is_at_rest = [&get_status] { return get_status() == STATUS_IDLE || get_status() == STATUS_FINISHED; };
    if (wait_milliseconds > 0 && !is_at_rest())
    {
        constexpr unsigned long LONGEST_WAIT = 24UL * 3600 * 1000;
        std::unique_lock<std::mutex> lock(m_impl->mutex);
        m_impl->changed.wait_for(lock, milliseconds(std::min(wait_milliseconds, LONGEST_WAIT)), is_at_rest);
    }
    return get_status();
}

void IPC_COMMAND::terminate(THR_PROCESS_EXIT_CODE exit_code)
{
    const std::lock_guard<std::mutex> lock(m_impl->mutex);
    if (!m_impl->is_under_way())
        return;
    ++m_impl->terminate_count;
    if (exit_code != 0)
        m_impl->terminate_code = exit_code;
    m_impl->ask_group_to_end();
    if (m_impl->wake_descriptor >= 0)
        eventfd_write(m_impl->wake_descriptor, 1);
}

std::string IPC_COMMAND::get_output() const
{
    const std::lock_guard<std::mutex> lock(m_impl->mutex);
    return m_impl->output;
}

std::string IPC_COMMAND::get_start_error() const
{
    const std::lock_guard<std::mutex> lock(m_impl->mutex);
    return m_impl->start_error;
}

void IPC_COMMAND::parse_output(gsl::span<char> output)
{
    std::string& line = m_impl->line;
    const char* position = output.data();
    const char* const end = position + output.size();
    while (position != end)
    {
        const void* found = std::memchr(position, '\n', static_cast<std::size_t>(end - position));
        const char* const stop = found != nullptr ? static_cast<const char*>(found) : end;
        line.append(position, stop);
        position = stop;
        // A "\r" in the last place may belong to the line end.
        while (line.size() > MAX_LINE_SIZE + 1 || (line.size() == MAX_LINE_SIZE + 1 && line.back() != '\r'))
        {
            std::string rest = line.substr(MAX_LINE_SIZE);
            line.resize(MAX_LINE_SIZE);
            m_impl->is_line_cut = true;
            process_line(line);
            line.swap(rest);
        }
        if (found == nullptr)
            return;
        ++position;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        if (!line.empty() || !m_impl->is_line_cut)
            process_line(line);
        line.clear();
        m_impl->is_line_cut = false;
    }
}

void IPC_COMMAND::process_line(const std::string&)
{
}

bool IPC_COMMAND::is_stopped()
{
    return false;
}
