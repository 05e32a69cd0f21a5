#include "thr.h"

#include "msg_fatal_signal_p.h"

#include <algorithm>
#include <atomic>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <mutex>
#include <pthread.h>
#include <unistd.h>

namespace
{
std::atomic<THR_THREAD_ID> s_next_id{THR_THREAD_MAIN_ID + 1};
std::atomic<int> s_running_count{0};
thread_local THR_THREAD_ID t_id = 0;
thread_local int t_wrapper_depth = 0;

/// Runs before every other initialisation of this library: what asks on this thread finds the main thread.
__attribute__((constructor(101))) void mark_main_thread()
{
    t_id = THR_THREAD_MAIN_ID;
}

/// Counts a thread while it is inside a wrapper, once however deep the wrappers are nested.
class RUNNING_MARK
{
public:
    RUNNING_MARK()
    {
        if (t_wrapper_depth++ == 0)
            ++s_running_count;
    }
    ~RUNNING_MARK()
    {
        if (--t_wrapper_depth == 0)
            --s_running_count;
    }
    RUNNING_MARK(const RUNNING_MARK&) = delete;
    RUNNING_MARK& operator=(const RUNNING_MARK&) = delete;
};

struct START
{
    THR_THREAD_FUNCTION function;
    void* argument;
    THR_THREAD_ID id;
};

extern "C" void* run_thread(void* data)
{
    const std::unique_ptr<START> start(static_cast<START*>(data));
    t_id = start->id;
    thr_thread_wrapper(start->function, start->argument);
    return nullptr;
}

/// The attributes of a detached thread, freed at the end of the scope.
class THREAD_ATTRIBUTES
{
public:
    THREAD_ATTRIBUTES()
    {
        pthread_attr_init(&m_attributes);
        pthread_attr_setdetachstate(&m_attributes, PTHREAD_CREATE_DETACHED);
    }
    ~THREAD_ATTRIBUTES()
    {
        pthread_attr_destroy(&m_attributes);
    }
    THREAD_ATTRIBUTES(const THREAD_ATTRIBUTES&) = delete;
    THREAD_ATTRIBUTES& operator=(const THREAD_ATTRIBUTES&) = delete;

    /// Whole pages, at least what the system asks for. False for a size that overflows.
    bool set_stack_size(unsigned long bytes)
    {
        const auto page = static_cast<unsigned long>(sysconf(_SC_PAGESIZE));
        bytes = std::max(bytes, static_cast<unsigned long>(PTHREAD_STACK_MIN));
        if (bytes > ULONG_MAX - page)
            return false;
        return pthread_attr_setstacksize(&m_attributes, (bytes + page - 1) / page * page) == 0;
    }
    const pthread_attr_t* get() const
    {
        return &m_attributes;
    }

private:
    pthread_attr_t m_attributes;
};
} // namespace

THR_THREAD_ID thr_thread_self()
{
    if (t_id == 0)
        t_id = s_next_id++;
    return t_id;
}

THR_THREAD_ID thr_thread_create(THR_THREAD_FUNCTION function, void* argument, unsigned long stack_size)
{
    THREAD_ATTRIBUTES attributes;
    if (function == nullptr || (stack_size != 0 && !attributes.set_stack_size(stack_size)))
        return 0;
    const THR_THREAD_ID id = s_next_id++;
    auto start = std::make_unique<START>(START{function, argument, id});
    pthread_t thread;
    if (pthread_create(&thread, attributes.get(), run_thread, start.get()) != 0)
        return 0;
    static_cast<void>(start.release());
    return id;
}

THR_THREAD_RESULT thr_thread_wrapper(THR_THREAD_FUNCTION function, void* argument)
{
    if (function == nullptr)
        return 0;
    const RUNNING_MARK mark;
    const MSG_SIGNAL_STACK signal_stack;
    return function(argument);
}

int thr_get_running_thread_count()
{
    return s_running_count;
}

bool thr_setenv(const char* name, const char* value)
{
    static std::mutex mutex;
    if (name == nullptr || *name == '\0' || std::strchr(name, '=') != nullptr)
        return false;
    const std::lock_guard<std::mutex> lock(mutex);
    return (value != nullptr ? setenv(name, value, 1) : unsetenv(name)) == 0;
}
