#include "uib_task.h"

#include "thr.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <utility>

UIB_TASK::~UIB_TASK() = default;

UIB_THREAD_TASK::CONTROL::~CONTROL() = default;

struct UIB_THREAD_TASK::IMPL : CONTROL
{
    void set_progress(int percent) override
    {
        progress = static_cast<std::uint8_t>(std::clamp(percent, 0, 100));
    }

    void set_text(const std::string& new_text) override
    {
        const std::lock_guard<std::mutex> lock(mutex);
        text = new_text;
    }

    bool is_cancelled() const override
    {
        return cancelled;
    }

    /// Body of the thread.
    static THR_THREAD_RESULT run(void* argument)
    {
        IMPL* impl = static_cast<IMPL*>(argument);
        std::string message;
        try
        {
            impl->function(*impl);
        }
        catch (const std::exception& exception)
        {
            message = exception.what();
            if (message.empty())
                message = "exception without a text";
        }
        catch (...)
        {
            message = "unknown exception";
        }
        impl->set_done(message);
        return 0;
    }

    void set_done(const std::string& message)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        error = message;
        done = true;
        changed.notify_all();
    }

    FUNCTION function;
    std::function<void()> on_finish;
    std::thread thread;
    bool started = false;
    std::atomic<std::uint8_t> progress{0};
    std::atomic<bool> cancelled{false};

    std::mutex mutex;
    std::condition_variable changed;
    std::string text;
    std::string error;
    bool done = false;
};

UIB_THREAD_TASK::UIB_THREAD_TASK(FUNCTION function, std::function<void()> on_finish) : m_impl(new IMPL)
{
    m_impl->function = std::move(function);
    m_impl->on_finish = std::move(on_finish);
}

UIB_THREAD_TASK::~UIB_THREAD_TASK()
{
    UIB_THREAD_TASK::cancel();
    if (m_impl->thread.joinable())
        m_impl->thread.join();
}

void UIB_THREAD_TASK::wait(int milliseconds)
{
    if (!m_impl->started)
        return;
    std::unique_lock<std::mutex> lock(m_impl->mutex);
    m_impl->changed.wait_for(lock, std::chrono::milliseconds(std::max(milliseconds, 0)),
                             [this] { return m_impl->done; });
}

bool UIB_THREAD_TASK::is_done()
{
    const std::lock_guard<std::mutex> lock(m_impl->mutex);
    return m_impl->done;
}

std::uint8_t UIB_THREAD_TASK::get_progress()
{
    return m_impl->progress;
}

std::string UIB_THREAD_TASK::get_text()
{
    const std::lock_guard<std::mutex> lock(m_impl->mutex);
    return m_impl->text;
}

void UIB_THREAD_TASK::start()
{
    if (std::exchange(m_impl->started, true))
        return;
    if (m_impl->cancelled || !m_impl->function)
    {
        m_impl->set_done({});
        return;
    }
    try
    {
        m_impl->thread = std::thread([impl = m_impl.get()] { thr_thread_wrapper(&IMPL::run, impl); });
    }
    catch (const std::exception& exception)
    {
        m_impl->set_done(exception.what());
    }
}

void UIB_THREAD_TASK::finish()
{
    if (!m_impl->started)
        return;
    if (m_impl->thread.joinable())
        m_impl->thread.join();
    const std::function<void()> on_finish = std::exchange(m_impl->on_finish, {});
    if (on_finish && !m_impl->cancelled && get_error().empty())
        on_finish();
}

void UIB_THREAD_TASK::cancel()
{
    const std::lock_guard<std::mutex> lock(m_impl->mutex);
    if (!m_impl->done)
        m_impl->cancelled = true;
}

std::string UIB_THREAD_TASK::get_error() const
{
    const std::lock_guard<std::mutex> lock(m_impl->mutex);
    return m_impl->error;
}
