#pragma once

#include <cstddef>

/// Gives the fatal signals back to the handlers before ours, on any thread: the process is about to call abort(), and
/// its record is written.
void msg_let_abort_pass();

/// A stack of its own for the handlers of fatal signals on the calling thread, as long as the object lives: without
/// one, an overflow of the thread's stack ends the process unrecorded. Destroyed on the same thread, in reverse order.
class MSG_SIGNAL_STACK
{
public:
    MSG_SIGNAL_STACK();
    ~MSG_SIGNAL_STACK();
    MSG_SIGNAL_STACK(const MSG_SIGNAL_STACK&) = delete;
    MSG_SIGNAL_STACK& operator=(const MSG_SIGNAL_STACK&) = delete;

private:
    void* m_memory = nullptr; ///< with a guard page below; null where this thread has such a stack already
    void* m_old_stack = nullptr;
    std::size_t m_old_size = 0;
    int m_old_flags = 0;
};
