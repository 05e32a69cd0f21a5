#include "mem.h"

#include "cfg.h"

#include <cstdio>
#include <cstdlib>
#include <deque>
#include <dlfcn.h>
#include <map>
#include <memory>
#include <mutex>

namespace
{
constexpr std::size_t max_message_count = 64;
constexpr double default_release_rate = 1.0;

/// Above it the caller wants memory back at once: the allocator calls 10 the end of the usual range.
constexpr double fast_release_rate = 10.0;

/// The part of tcmalloc's C interface that is used here, looked up in the running process.
struct TCMALLOC
{
    int (*get_ownership)(const void* block) = nullptr;
    int (*get_numeric_property)(const char* name, std::size_t* value) = nullptr;
    int (*set_numeric_property)(const char* name, std::size_t value) = nullptr;
    void (*release_free_memory)() = nullptr;
    bool is_in_use = false;
};

/// An address as a pointer to a function: there is no cast for it that the language blesses.
template <typename FUNCTION>
void find_function(const char* name, FUNCTION* function)
{
    *function = reinterpret_cast<FUNCTION>(dlsym(RTLD_DEFAULT, name));
}

/// Finds tcmalloc; in use it is only where it knows a block of malloc() as its own.
TCMALLOC find_tcmalloc()
{
    constexpr int owned = 1;
    TCMALLOC found;
    find_function("MallocExtension_GetOwnership", &found.get_ownership);
    find_function("MallocExtension_GetNumericProperty", &found.get_numeric_property);
    find_function("MallocExtension_SetNumericProperty", &found.set_numeric_property);
    find_function("MallocExtension_ReleaseFreeMemory", &found.release_free_memory);
    if (found.get_ownership == nullptr || found.get_numeric_property == nullptr ||
        found.set_numeric_property == nullptr || found.release_free_memory == nullptr)
        return found;
    const std::unique_ptr<void, decltype(&std::free)> block(std::malloc(64), &std::free);
    found.is_in_use = block != nullptr && found.get_ownership(block.get()) == owned;
    return found;
}

const TCMALLOC& tcmalloc()
{
    static const TCMALLOC found = find_tcmalloc();
    return found;
}

/// All that this service remembers. Never freed: the static objects of other libraries die after it.
struct TRACKING
{
    std::mutex mutex;
    std::map<std::string, int> registrations;
    std::string tbb_exe_name;
    std::deque<std::string> messages;
    double release_rate = default_release_rate;
    bool is_eager = false;
};

/// The rate with which tcmalloc itself has begun.
double get_initial_release_rate()
{
    const char* text = std::getenv("TCMALLOC_RELEASE_RATE");
    return tcmalloc().is_in_use && text != nullptr ? std::strtod(text, nullptr) : default_release_rate;
}

TRACKING* make_tracking()
{
    auto* made = new TRACKING;
    made->release_rate = get_initial_release_rate();
    return made;
}

TRACKING& tracking()
{
    static TRACKING* const object = make_tracking();
    return *object;
}

/// Turns tcmalloc's immediate release on or off. What the user's environment turned on is left on.
void set_eager(TRACKING* state, bool wanted)
{
    constexpr const char* property = "tcmalloc.aggressive_memory_decommit";
    if (!tcmalloc().is_in_use || wanted == state->is_eager)
        return;
    std::size_t present = 0;
    if (tcmalloc().get_numeric_property(property, &present) == 0 || (wanted && present != 0))
        return;
    if (tcmalloc().set_numeric_property(property, wanted ? 1 : 0) == 0)
        return;
    state->is_eager = wanted;
    if (wanted)
        tcmalloc().release_free_memory();
}
} // namespace

MEM_INITIALIZER::MEM_INITIALIZER(const char* tag) : m_tag(tag)
{
    if (m_tag == nullptr)
        return;
    TRACKING& state = tracking();
    const std::lock_guard<std::mutex> lock(state.mutex);
    ++state.registrations[m_tag];
}

MEM_INITIALIZER::~MEM_INITIALIZER()
{
    if (m_tag == nullptr)
        return;
    TRACKING& state = tracking();
    const std::lock_guard<std::mutex> lock(state.mutex);
    const auto found = state.registrations.find(m_tag);
    if (found != state.registrations.end() && --found->second == 0)
        state.registrations.erase(found);
}

std::vector<std::string> MEM_INITIALIZER::get_registered_tags()
{
    TRACKING& state = tracking();
    const std::lock_guard<std::mutex> lock(state.mutex);
    std::vector<std::string> tags;
    for (const auto& [tag, count] : state.registrations)
        tags.push_back(tag);
    return tags;
}

void mem_set_tbb_exe_string(const std::string& exe_name)
{
    TRACKING& state = tracking();
    const std::lock_guard<std::mutex> lock(state.mutex);
    state.tbb_exe_name = exe_name;
}

std::string mem_get_tbb_exe_string()
{
    TRACKING& state = tracking();
    const std::lock_guard<std::mutex> lock(state.mutex);
    return state.tbb_exe_name;
}

void mem_shutdown_tbb_tracking()
{
    mem_set_tbb_exe_string(std::string());
}

void MEM::MALLOC_EXTENSION::set_memory_release_rate(double rate)
{
    TRACKING& state = tracking();
    const std::lock_guard<std::mutex> lock(state.mutex);
    state.release_rate = rate > 0 ? rate : 0;
    set_eager(&state, state.release_rate > fast_release_rate);
}

double MEM::MALLOC_EXTENSION::get_memory_release_rate()
{
    TRACKING& state = tracking();
    const std::lock_guard<std::mutex> lock(state.mutex);
    return state.release_rate;
}

void MEM::MALLOC_EXTENSION::print_message(const char* text)
{
    if (text == nullptr)
        return;
    if (cfg_is_on("mem_print_messages"))
        std::fprintf(stderr, "%s\n", text);
    TRACKING& state = tracking();
    const std::lock_guard<std::mutex> lock(state.mutex);
    state.messages.emplace_back(text);
    if (state.messages.size() > max_message_count)
        state.messages.pop_front();
}

std::vector<std::string> MEM::MALLOC_EXTENSION::get_messages()
{
    TRACKING& state = tracking();
    const std::lock_guard<std::mutex> lock(state.mutex);
    return {state.messages.begin(), state.messages.end()};
}

bool MEM::MALLOC_EXTENSION::is_tcmalloc()
{
    return tcmalloc().is_in_use;
}
