#include "internal_error_trap.h"

#include "msg_internal_error.h"

struct INTERNAL_ERROR_TRAP::IMPL
{
    MSG_INTERNAL_ERROR::HANDLER old_handler;
};

INTERNAL_ERROR_TRAP::INTERNAL_ERROR_TRAP() : m_impl(new IMPL)
{
    m_impl->old_handler = MSG_INTERNAL_ERROR::set_handler(
        [](const char* text, const char* tag, const char* file, int line)
        {
            throw TRAPPED_INTERNAL_ERROR{text != nullptr ? text : "", tag != nullptr ? tag : "",
                                         file != nullptr ? file : "", line};
        });
}

INTERNAL_ERROR_TRAP::~INTERNAL_ERROR_TRAP()
{
    MSG_INTERNAL_ERROR::set_handler(m_impl->old_handler);
    delete m_impl;
}

TRAPPED_INTERNAL_ERROR INTERNAL_ERROR_TRAP::catch_from(const std::function<void()>& code, const char* file, int line)
{
    const INTERNAL_ERROR_TRAP trap;
    try
    {
        code();
    }
    catch (const TRAPPED_INTERNAL_ERROR& error)
    {
        return error;
    }
    ADD_FAILURE_AT(file, line) << "no internal error was reported";
    return {};
}
