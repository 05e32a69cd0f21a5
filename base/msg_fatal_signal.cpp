#include "msg_fatal_signal_p.h"

#include "cfg.h"
#include "msg_backtrace_p.h"
#include "msg_crash_file_p.h"
#include "msg_debug_p.h"
#include "msg_utc_time_p.h"

#include <sys/mman.h>
#include <sys/uio.h>
#include <ucontext.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>
#include <iterator>

namespace
{
/// Demangling and reading line tables want room; the pages are taken only when they are touched.
constexpr std::size_t SIGNAL_STACK_SIZE = std::size_t{512} * 1024;
constexpr std::size_t GUARD_SIZE = std::size_t{64} * 1024;

struct FATAL_SIGNAL
{
    int number;
    const char* name;
};
constexpr FATAL_SIGNAL FATAL_SIGNALS[] = {
    {SIGSEGV, "SIGSEGV"}, {SIGBUS, "SIGBUS"}, {SIGILL, "SIGILL"}, {SIGFPE, "SIGFPE"}, {SIGABRT, "SIGABRT"},
};
constexpr std::size_t LONGEST_ERROR_TEXT = 128;

/// What the handler needs, made ready beforehand. Written by arm_fatal_signals() alone.
struct PREPARATION
{
    MSG_CRASH_RECORD record; ///< its error text and time have room, so that the handler can set them
    std::string folder;
    unsigned int seconds = 0; ///< limit for the handler
    struct sigaction old_actions[std::size(FATAL_SIGNALS)];
    MSG_SIGNAL_STACK* stack = nullptr;
    bool is_armed = false;
};

PREPARATION& preparation()
{
    static auto* the_preparation = new PREPARATION;
    return *the_preparation;
}

PREPARATION* s_preparation = nullptr; ///< the same, for the handler
std::atomic<int> s_handling_thread{0};
std::atomic<int> s_signal_in_work{0};

std::size_t find_signal(int number)
{
    const auto* const found = std::find_if(std::begin(FATAL_SIGNALS), std::end(FATAL_SIGNALS),
                                           [number](const FATAL_SIGNAL& entry) { return entry.number == number; });
    return static_cast<std::size_t>(found - std::begin(FATAL_SIGNALS));
}

/// One crash, from the handler to the file.
struct CRASH
{
    MSG_BACKTRACE backtrace;
    bool symbolises = false;
};

void add_frame(void* writer, const char* text, std::size_t length)
{
    static_cast<MSG_CRASH_JSON_WRITER*>(writer)->add_element(text, length);
}

void add_debug_record(void* writer, const MSG_DEBUG_RECORD& record)
{
    MSG_FIXED_TEXT text;
    text.append(record.key.data(), record.key.size());
    text.append(": ");
    text.append(record.text.data(), record.text.size());
    static_cast<MSG_CRASH_JSON_WRITER*>(writer)->add_element(text.get(), text.get_length());
}

void write_content(void* context, MSG_CRASH_JSON_WRITER& writer)
{
    const CRASH& crash = *static_cast<const CRASH*>(context);
    writer.begin_object();
    msg_crash_write_facts(writer, s_preparation->record);
    writer.begin_array("backtrace");
    if (crash.symbolises)
        msg_visit_frames(crash.backtrace, add_frame, &writer);
    else
        msg_visit_raw_frames(crash.backtrace, add_frame, &writer);
    writer.end_array();
    writer.begin_array("debug_records");
    msg_try_visit_debug_records(add_debug_record, &writer);
    writer.end_array();
    writer.end_object();
}

/// The interrupted instruction's address; 0 on machines that this does not know.
std::uintptr_t get_interrupted_address(const void* context)
{
#if defined(__x86_64__)
    return static_cast<std::uintptr_t>(static_cast<const ucontext_t*>(context)->uc_mcontext.gregs[REG_RIP]);
#elif defined(__aarch64__)
    return static_cast<std::uintptr_t>(static_cast<const ucontext_t*>(context)->uc_mcontext.pc);
#else
    (void)context;
    return 0;
#endif
}

/// A call through a bad pointer leaves no frame to unwind from, but its return address: on top of the stack, or in a
/// register.
std::uintptr_t get_return_address(const void* context)
{
#if defined(__x86_64__)
    std::uintptr_t address = 0;
    const auto top = static_cast<std::uintptr_t>(static_cast<const ucontext_t*>(context)->uc_mcontext.gregs[REG_RSP]);
    const iovec target = {&address, sizeof address};
    const iovec source = {reinterpret_cast<void*>(top), sizeof address};
    return process_vm_readv(getpid(), &target, 1, &source, 1, 0) == sizeof address ? address : 0;
#elif defined(__aarch64__)
    return static_cast<std::uintptr_t>(static_cast<const ucontext_t*>(context)->uc_mcontext.regs[30]);
#else
    (void)context;
    return 0;
#endif
}

void take_backtrace(const void* context, MSG_BACKTRACE* backtrace)
{
    const std::uintptr_t address = get_interrupted_address(context);
    if (address != 0)
        msg_take_backtrace(address, backtrace);
    if (address != 0 && backtrace->count > 1)
        return;
    const std::uintptr_t caller = get_return_address(context);
    backtrace->count = 0;
    backtrace->addresses[backtrace->count++] = address;
    if (caller != 0)
        backtrace->addresses[backtrace->count++] = caller - 1;
}

void set_error_text(int number, const siginfo_t* info)
{
    MSG_FIXED_TEXT text;
    text.append(FATAL_SIGNALS[find_signal(number)].name);
    if (info->si_code > 0 && number != SIGABRT)
    {
        text.append(" at address 0x");
        text.append_number(reinterpret_cast<std::uintptr_t>(info->si_addr), 16);
    }
    MSG_FIXED_TEXT time_text;
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    msg_append_utc_time(time_text, now.tv_sec);
    s_preparation->record.error_text.assign(text.get(), std::min(text.get_length(), LONGEST_ERROR_TEXT));
    s_preparation->record.time.assign(time_text.get(), MSG_UTC_TIME_LENGTH);
}

/// First the record with bare addresses, which nothing can hold up, then once more with functions and lines.
void write_record(int number, const siginfo_t* info, const void* context)
{
    set_error_text(number, info);
    CRASH crash;
    take_backtrace(context, &crash.backtrace);
    MSG_FIXED_TEXT path;
    if (!msg_crash_write_new_file(s_preparation->folder.c_str(), s_preparation->record.time.c_str(), write_content,
                                  &crash, &path))
        return;
    crash.symbolises = true;
    msg_crash_replace_file(path.get(), write_content, &crash);
}

void on_time_over(int)
{
    msg_crash_drop_unfinished_file();
    const int number = s_signal_in_work;
    std::signal(number, SIG_DFL);
    sigset_t only;
    sigemptyset(&only);
    sigaddset(&only, number);
    pthread_sigmask(SIG_UNBLOCK, &only, nullptr);
    raise(number);
}

void start_time_limit(int number)
{
    s_signal_in_work = number;
    struct sigaction action = {};
    action.sa_handler = on_time_over;
    sigemptyset(&action.sa_mask);
    sigaction(SIGALRM, &action, nullptr);
    sigset_t only;
    sigemptyset(&only);
    sigaddset(&only, SIGALRM);
    pthread_sigmask(SIG_UNBLOCK, &only, nullptr);
    alarm(s_preparation->seconds);
}

void restore_old_actions()
{
    for (std::size_t i = 0; i < std::size(FATAL_SIGNALS); ++i)
        sigaction(FATAL_SIGNALS[i].number, &s_preparation->old_actions[i], nullptr);
}

/// Lets the signal take its course as if it had not been caught. It comes again when the handler returns: by itself
/// where an instruction raised it, so that an older handler sees the true address, and otherwise because it is raised
/// here.
void let_signal_take_its_course(int number, const siginfo_t* info)
{
    const struct sigaction& old_action = s_preparation->old_actions[find_signal(number)];
    const bool has_old_handler = old_action.sa_handler != SIG_DFL && old_action.sa_handler != SIG_IGN;
    restore_old_actions();
    if (!has_old_handler)
        std::signal(number, SIG_DFL);
    if (info->si_code <= 0 || !has_old_handler)
        raise(number);
}

extern "C" void msg_on_fatal_signal(int number, siginfo_t* info, void* context)
{
    const int saved_errno = errno;
    int nobody = 0;
    const int self = gettid();
    if (!s_handling_thread.compare_exchange_strong(nobody, self) && nobody != self)
    {
        // Another thread crashed first and is about to end the process.
        for (;;)
            pause();
    }
    if (nobody == 0 && MSG_CRASH_REPORT_MANAGER::get_crash_report_manager()->get_crash_report_generation())
    {
        start_time_limit(number);
        write_record(number, info, context);
        alarm(0);
    }
    let_signal_take_its_course(number, info);
    errno = saved_errno;
}

/// Leaves a handler alone that somebody has set since.
void restore_own_actions()
{
    for (std::size_t i = 0; i < std::size(FATAL_SIGNALS); ++i)
    {
        struct sigaction current = {};
        sigaction(FATAL_SIGNALS[i].number, nullptr, &current);
        if ((current.sa_flags & SA_SIGINFO) != 0 && current.sa_sigaction == msg_on_fatal_signal)
            sigaction(FATAL_SIGNALS[i].number, &preparation().old_actions[i], nullptr);
    }
}
} // namespace

void msg_let_abort_pass()
{
    if (preparation().is_armed)
        restore_own_actions();
}

MSG_SIGNAL_STACK::MSG_SIGNAL_STACK()
{
    stack_t old_stack{};
    if (sigaltstack(nullptr, &old_stack) != 0)
        return;
    if ((old_stack.ss_flags & SS_DISABLE) == 0 && old_stack.ss_size >= SIGNAL_STACK_SIZE)
        return;
    void* memory = mmap(nullptr, GUARD_SIZE + SIGNAL_STACK_SIZE, PROT_READ | PROT_WRITE,
                        MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED)
        return;
    mprotect(memory, GUARD_SIZE, PROT_NONE);
    stack_t stack{};
    stack.ss_sp = static_cast<char*>(memory) + GUARD_SIZE;
    stack.ss_size = SIGNAL_STACK_SIZE;
    if (sigaltstack(&stack, nullptr) != 0)
    {
        munmap(memory, GUARD_SIZE + SIGNAL_STACK_SIZE);
        return;
    }
    m_memory = memory;
    m_old_stack = old_stack.ss_sp;
    m_old_size = old_stack.ss_size;
    m_old_flags = old_stack.ss_flags;
}

MSG_SIGNAL_STACK::~MSG_SIGNAL_STACK()
{
    if (m_memory == nullptr)
        return;
    stack_t stack{};
    stack.ss_sp = m_old_stack;
    stack.ss_size = m_old_size;
    stack.ss_flags = m_old_flags & SS_DISABLE;
    sigaltstack(&stack, nullptr);
    munmap(m_memory, GUARD_SIZE + SIGNAL_STACK_SIZE);
}

void MSG_CRASH_REPORT_MANAGER::arm_fatal_signals()
{
    PREPARATION& prepared = preparation();
    if (prepared.is_armed)
        return;
    // What is made at its first use is made here: the handler may find the heap in ruins.
    get_crash_report_manager();
    msg_try_visit_debug_records([](void*, const MSG_DEBUG_RECORD&) {}, nullptr);
    prepared.record = msg_crash_make_system_record();
    prepared.record.error_text.reserve(LONGEST_ERROR_TEXT);
    prepared.record.time.reserve(MSG_UTC_TIME_LENGTH);
    prepared.folder = msg_crash_get_folder();
    prepared.seconds = static_cast<unsigned int>(std::max(1, cfg_get_int_value("crash_report_seconds", 20)));
    prepared.stack = new MSG_SIGNAL_STACK;
    prepared.is_armed = true;
    s_preparation = &prepared;

    struct sigaction action = {};
    action.sa_sigaction = msg_on_fatal_signal;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigfillset(&action.sa_mask);
    sigdelset(&action.sa_mask, SIGALRM);
    for (std::size_t i = 0; i < std::size(FATAL_SIGNALS); ++i)
        sigaction(FATAL_SIGNALS[i].number, &action, &prepared.old_actions[i]);
}

void MSG_CRASH_REPORT_MANAGER::disarm_fatal_signals()
{
    PREPARATION& prepared = preparation();
    if (!prepared.is_armed)
        return;
    restore_own_actions();
    delete prepared.stack;
    prepared.stack = nullptr;
    prepared.is_armed = false;
}
