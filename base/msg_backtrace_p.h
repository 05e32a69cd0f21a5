#pragma once

#include <cstddef>
#include <cstdint>

/// The calling thread's stack, without allocating: for the handler of a fatal signal as well.

/// Addresses of a stack, innermost first.
struct MSG_BACKTRACE
{
    static constexpr std::size_t CAPACITY = 128;
    std::uintptr_t addresses[CAPACITY]; ///< each inside the instruction that was under way
    std::size_t count = 0;
};

/// Takes the stack from the frame whose address is `first_address` outwards: the return address of a function, to begin
/// with its caller, or the address of the instruction that a signal interrupted. An address that is not found, and 0,
/// give the whole stack.
void msg_take_backtrace(std::uintptr_t first_address, MSG_BACKTRACE* backtrace);

/// Visits a stack's frames as texts: "function at file:line", with one text for each function that the compiler placed
/// in one; "function (module+0x1234)" where no line is known; "module+0x1234" without a name.
void msg_visit_frames(const MSG_BACKTRACE& backtrace,
                      void (*visit)(void* context, const char* text, std::size_t length), void* context);

/// The same with "module+0x1234" throughout: quick, and waits for no lock of the program.
void msg_visit_raw_frames(const MSG_BACKTRACE& backtrace,
                          void (*visit)(void* context, const char* text, std::size_t length), void* context);
