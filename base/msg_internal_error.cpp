#include "msg_internal_error.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <mutex>

namespace
{
std::mutex& handler_mutex()
{
    static std::mutex mutex;
    return mutex;
}

MSG_INTERNAL_ERROR::HANDLER& handler_in_force()
{
    static MSG_INTERNAL_ERROR::HANDLER handler;
    return handler;
}

std::atomic<bool> s_is_reporting{false};
} // namespace

void MSG_INTERNAL_ERROR::report(const char* text, const char* tag, const char* file, int line)
{
    HANDLER handler;
    {
        const std::lock_guard<std::mutex> lock(handler_mutex());
        handler = handler_in_force();
    }
    if (handler)
    {
        handler(text, tag, file, line);
        return;
    }
    if (s_is_reporting.exchange(true))
        std::abort();
    std::fprintf(stderr, "Internal Error: %s (%s, %s:%d)\n", text != nullptr ? text : "", tag != nullptr ? tag : "",
                 file != nullptr ? file : "", line);
    std::abort();
}

MSG_INTERNAL_ERROR::HANDLER MSG_INTERNAL_ERROR::set_handler(HANDLER handler)
{
    const std::lock_guard<std::mutex> lock(handler_mutex());
    handler_in_force().swap(handler);
    return handler;
}
