#pragma once

#include "base_export.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

/// A task that runs for a while and can be watched: what progress displays show. All operations are called on the GUI
/// thread.
class TOLV_BASE_EXPORT UIB_TASK
{
public:
    virtual ~UIB_TASK();

    /// Blocks at most that long for the end of the task.
    virtual void wait(int milliseconds) = 0;
    /// Whether the task has finished, well or not.
    virtual bool is_done() = 0;
    /// Progress in percent, 0 to 100.
    virtual std::uint8_t get_progress() = 0;
    /// What the task does at present, for the user.
    virtual std::string get_text() = 0;
    /// Starts the task.
    virtual void start() = 0;
    /// Collects the result after success.
    virtual void finish() = 0;
    /// Asks the task to stop; returns at once.
    virtual void cancel() = 0;
};

/// A task that runs a function on a thread of its own, once. The function gets a CONTROL through which it tells its
/// progress and learns that it shall stop. The destructor cancels and waits for the function's return.
///
/// Order: start(), wait() and is_done() until the task is done, finish(). A task that is cancelled before its start is
/// done with the start, and its function does not run. A cancel() behind the end changes nothing.
class TOLV_BASE_EXPORT UIB_THREAD_TASK : public UIB_TASK
{
public:
    /// The function's side; usable from its thread.
    class TOLV_BASE_EXPORT CONTROL
    {
    public:
        virtual ~CONTROL();
        /// Percent, clamped to 0 to 100.
        virtual void set_progress(int percent) = 0;
        virtual void set_text(const std::string& text) = 0;
        /// Whether the watcher has asked to stop; the function returns soon then.
        virtual bool is_cancelled() const = 0;
    };
    using FUNCTION = std::function<void(CONTROL& control)>;

    /// @param function  runs on the thread; what it throws is caught and kept for get_error(). Empty: nothing to do.
    /// @param on_finish runs once inside finish(), on the caller's thread, where the function returned and was not
    ///                  cancelled; may be empty
    explicit UIB_THREAD_TASK(FUNCTION function, std::function<void()> on_finish = {});
    ~UIB_THREAD_TASK() override;

    /// Returns as soon as the task is done; at once before start().
    void wait(int milliseconds) override;
    bool is_done() override;
    std::uint8_t get_progress() override;
    std::string get_text() override;
    /// A second call does nothing. Where the system refuses a thread the task is done, with get_error().
    void start() override;
    /// Waits for the end where it is not yet there; does nothing before start().
    void finish() override;
    void cancel() override;

    /// Text of what the function threw; empty where it returned.
    std::string get_error() const;

private:
    struct IMPL;
    std::unique_ptr<IMPL> m_impl;
};
