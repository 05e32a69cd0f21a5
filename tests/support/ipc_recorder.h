#pragma once

#include "child_process.h"
#include "ipc_command.h"

#include <gtest/gtest.h>

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

/// Longer than any test of commands waits for something that does come.
constexpr int IPC_LONG_MILLISECONDS = 60000;

/// The command line of the child program in one of its behaviours.
inline std::string get_child_command(const std::string& arguments)
{
    return get_child_path("base_ipc_command_child") + " " + arguments;
}

/// Waits for the end of a process that may be nobody's child. A zombie has ended.
inline bool wait_for_end(pid_t pid)
{
    const int descriptor = static_cast<int>(syscall(SYS_pidfd_open, pid, 0));
    if (descriptor < 0)
        return errno == ESRCH;
    pollfd event{descriptor, POLLIN, 0};
    const bool has_ended = poll(&event, 1, IPC_LONG_MILLISECONDS) == 1;
    close(descriptor);
    return has_ended;
}

/// Whether a process lives now.
inline bool is_alive(pid_t pid)
{
    const int descriptor = static_cast<int>(syscall(SYS_pidfd_open, pid, 0));
    if (descriptor < 0)
        return false;
    pollfd event{descriptor, POLLIN, 0};
    const bool has_ended = poll(&event, 1, 0) == 1;
    close(descriptor);
    return !has_ended;
}

/// How many descriptors this process has open.
inline std::ptrdiff_t count_descriptors()
{
    const std::filesystem::directory_iterator descriptors("/proc/self/fd");
    return std::distance(begin(descriptors), end(descriptors));
}

/// A command that keeps its lines, and lets a test wait for them.
class IPC_RECORDER : public IPC_COMMAND
{
public:
    using IPC_COMMAND::parse_output;

    struct OUTCOME
    {
        bool started = false;
        THR_PROCESS_EXIT_CODE exit_code = 0;

        int get_exit_status() const
        {
            return thr_get_exit_status(exit_code);
        }
    };

    /// Runs a command on this thread.
    OUTCOME run_here(const std::string& command, const std::string& input = {}, bool keep_output = false)
    {
        OUTCOME outcome;
        outcome.started = run(command, "", true, &outcome.exit_code, input, keep_output);
        return outcome;
    }

    std::vector<std::string> get_lines() const
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_lines;
    }

    /// The first lines, as soon as there are so many; all there are after a long time.
    std::vector<std::string> wait_for_lines(std::size_t count) const
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        const bool are_there = m_changed.wait_for(lock, std::chrono::milliseconds(IPC_LONG_MILLISECONDS),
                                                  [&] { return m_lines.size() >= count; });
        EXPECT_TRUE(are_there) << count << " lines did not come";
        return m_lines;
    }

    void clear()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_lines.clear();
    }

protected:
    void process_line(const std::string& line) override
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_lines.push_back(line);
        m_changed.notify_all();
    }

private:
    mutable std::mutex m_mutex;
    mutable std::condition_variable m_changed;
    std::vector<std::string> m_lines;
};

/// A run on a thread of its own, which is expected from now on. The destructor waits for its end.
class IPC_BACKGROUND_RUN
{
public:
    IPC_BACKGROUND_RUN(IPC_COMMAND& command, std::string command_line) : m_command(command)
    {
        command.expect_run();
        m_thread = std::thread([this, line = std::move(command_line)]
                               { m_outcome.started = m_command.run(line, "", true, &m_outcome.exit_code, "", false); });
    }

    ~IPC_BACKGROUND_RUN()
    {
        if (m_thread.joinable())
            m_thread.join();
    }

    IPC_BACKGROUND_RUN(const IPC_BACKGROUND_RUN&) = delete;
    IPC_BACKGROUND_RUN& operator=(const IPC_BACKGROUND_RUN&) = delete;

    IPC_RECORDER::OUTCOME wait()
    {
        m_thread.join();
        return m_outcome;
    }

private:
    IPC_COMMAND& m_command;
    IPC_RECORDER::OUTCOME m_outcome;
    std::thread m_thread;
};
