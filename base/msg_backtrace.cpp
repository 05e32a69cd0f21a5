#include "msg_backtrace_p.h"

#include "msg_fixed_text_p.h"

#include <dlfcn.h>
#include <link.h>
#include <unwind.h>

#include <atomic>
#include <cerrno>
#include <cstring>

#if defined(TOLV_HAS_LIBBACKTRACE) && __has_include(<backtrace.h>)
#include <backtrace.h>
#define TOLV_SYMBOLISES 1
#endif

#ifdef TOLV_HAS_DEMANGLE_CALLBACK
// The one form of the C++ run time's demangler that allocates nothing; no header declares it.
extern "C" int __gcclibcxx_demangle_callback(const char* mangled_name,
                                             void (*callback)(const char* text, std::size_t length, void* context),
                                             void* context);
#endif

namespace
{
/// The demangler takes stack space in proportion to the name's length; a signal's stack is small.
[[maybe_unused]] constexpr std::size_t LONGEST_DEMANGLED_NAME = 1000;

/// What the unwinder fills.
struct WALK
{
    MSG_BACKTRACE* backtrace;
    std::uintptr_t first_address;
    bool has_begun;
};

_Unwind_Reason_Code take_frame(_Unwind_Context* context, void* data)
{
    auto& walk = *static_cast<WALK*>(data);
    int is_interrupted = 0;
    const std::uintptr_t address = _Unwind_GetIPInfo(context, &is_interrupted);
    if (address == walk.first_address)
        walk.has_begun = true;
    if (!walk.has_begun)
        return _URC_NO_REASON;
    MSG_BACKTRACE& backtrace = *walk.backtrace;
    if (backtrace.count == MSG_BACKTRACE::CAPACITY)
        return _URC_END_OF_STACK;
    // A return address lies behind the call, perhaps already in the next line.
    if (address != 0)
        backtrace.addresses[backtrace.count++] = is_interrupted != 0 ? address : address - 1;
    return _URC_NO_REASON;
}

/// Appends "module+0x1234"; the bare address where it lies in no module.
void append_module(MSG_FIXED_TEXT& text, std::uintptr_t address)
{
    dl_find_object found{};
    const bool is_found = _dl_find_object(reinterpret_cast<void*>(address), &found) == 0;
    if (is_found)
    {
        const char* path = found.dlfo_link_map->l_name;
        const char* slash = path != nullptr ? std::strrchr(path, '/') : nullptr;
        const char* name = slash != nullptr ? slash + 1 : path;
        text.append(name == nullptr || *name == '\0' ? program_invocation_short_name : name);
        text.append('+');
        address -= found.dlfo_link_map->l_addr;
    }
    text.append("0x");
    text.append_number(address, 16);
}

#ifdef TOLV_SYMBOLISES
void append_function(MSG_FIXED_TEXT& text, const char* function)
{
#ifdef TOLV_HAS_DEMANGLE_CALLBACK
    if (std::strncmp(function, "_Z", 2) == 0 && std::strlen(function) <= LONGEST_DEMANGLED_NAME)
    {
        const auto append = [](const char* piece, std::size_t length, void* context)
        { static_cast<MSG_FIXED_TEXT*>(context)->append(piece, length); };
        const std::size_t old_length = text.get_length();
        if (__gcclibcxx_demangle_callback(function, append, &text) == 0 && text.get_length() > old_length)
            return;
    }
#endif
    text.append(function);
}

void ignore_error(void*, const char*, int)
{
}

backtrace_state* symbol_state()
{
    static std::atomic<backtrace_state*> s_state{nullptr};
    if (s_state == nullptr)
        s_state = backtrace_create_state(nullptr, 1, ignore_error, nullptr);
    return s_state;
}

/// One address on its way to its texts.
struct SYMBOLISATION
{
    std::uintptr_t address;
    void (*visit)(void* context, const char* text, std::size_t length);
    void* context;
    const char* function; ///< of the place that is found and not yet visited; null for none
    const char* file;
    int line;
    const char* symbol; ///< what the symbol table says; null for nothing
};

void visit_place(const SYMBOLISATION& symbolisation, const char* function)
{
    MSG_FIXED_TEXT text;
    append_function(text, function);
    text.append(" at ");
    text.append(symbolisation.file);
    text.append(':');
    text.append_number(static_cast<unsigned long long>(symbolisation.line > 0 ? symbolisation.line : 0));
    symbolisation.visit(symbolisation.context, text.get(), text.get_length());
}

/// Called for the functions at one address from the innermost that was placed in another one outwards.
int take_place(void* data, std::uintptr_t, const char* file, int line, const char* function)
{
    auto& symbolisation = *static_cast<SYMBOLISATION*>(data);
    if (function == nullptr || file == nullptr)
        return 0;
    if (symbolisation.function != nullptr)
        visit_place(symbolisation, symbolisation.function);
    symbolisation.function = function;
    symbolisation.file = file;
    symbolisation.line = line;
    return 0;
}

void take_symbol(void* data, std::uintptr_t, const char* symbol, std::uintptr_t, std::uintptr_t)
{
    static_cast<SYMBOLISATION*>(data)->symbol = symbol;
}

/// Visits the functions at one address. False where neither a line nor a name is known.
bool visit_symbolised(backtrace_state* state, SYMBOLISATION& symbolisation)
{
    backtrace_pcinfo(state, symbolisation.address, take_place, ignore_error, &symbolisation);
    backtrace_syminfo(state, symbolisation.address, take_symbol, ignore_error, &symbolisation);
    if (symbolisation.function != nullptr)
    {
        // The debug information has the bare name of what is local to a file; the symbol table has all of it.
        const bool is_bare = std::strncmp(symbolisation.function, "_Z", 2) != 0 && symbolisation.symbol != nullptr;
        visit_place(symbolisation, is_bare ? symbolisation.symbol : symbolisation.function);
        return true;
    }
    if (symbolisation.symbol == nullptr)
        return false;
    MSG_FIXED_TEXT text;
    append_function(text, symbolisation.symbol);
    text.append(" (");
    append_module(text, symbolisation.address);
    text.append(')');
    symbolisation.visit(symbolisation.context, text.get(), text.get_length());
    return true;
}
#endif

void visit_raw_frame(std::uintptr_t address, void (*visit)(void* context, const char* text, std::size_t length),
                     void* context)
{
    MSG_FIXED_TEXT text;
    append_module(text, address);
    visit(context, text.get(), text.get_length());
}
} // namespace

void msg_take_backtrace(std::uintptr_t first_address, MSG_BACKTRACE* backtrace)
{
    WALK walk = {backtrace, first_address, first_address == 0};
    backtrace->count = 0;
    _Unwind_Backtrace(take_frame, &walk);
    if (walk.has_begun)
        return;
    walk.has_begun = true;
    _Unwind_Backtrace(take_frame, &walk);
}

void msg_visit_frames(const MSG_BACKTRACE& backtrace,
                      void (*visit)(void* context, const char* text, std::size_t length), void* context)
{
#ifdef TOLV_SYMBOLISES
    backtrace_state* state = symbol_state();
    for (std::size_t i = 0; i < backtrace.count; ++i)
    {
        SYMBOLISATION symbolisation = {backtrace.addresses[i], visit, context, nullptr, nullptr, 0, nullptr};
        if (state == nullptr || !visit_symbolised(state, symbolisation))
            visit_raw_frame(symbolisation.address, visit, context);
    }
#else
    msg_visit_raw_frames(backtrace, visit, context);
#endif
}

void msg_visit_raw_frames(const MSG_BACKTRACE& backtrace,
                          void (*visit)(void* context, const char* text, std::size_t length), void* context)
{
    for (std::size_t i = 0; i < backtrace.count; ++i)
        visit_raw_frame(backtrace.addresses[i], visit, context);
}
