#include "cfg.h"
#include "gen.h"
#include "mem.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <new>
#include <string>
#include <unistd.h>

/// Prints what the base services say about a process of its own: one under another name, under another allocator,
/// without a debugger. Usage: base_facts_child <command> [<argument>].

namespace
{
void print_program()
{
    std::printf("%s\n%s\n", gen_get_module_filename().c_str(), gen_get_module_path().c_str());
}

std::size_t get_allocator_number(const char* name)
{
    using GET = int (*)(const char*, std::size_t*);
    const auto get = reinterpret_cast<GET>(dlsym(RTLD_DEFAULT, "MallocExtension_GetNumericProperty"));
    std::size_t value = 0;
    return get != nullptr && get(name, &value) != 0 ? value : 0;
}

void print_allocator_state(const char* moment)
{
    constexpr std::size_t block_bytes = std::size_t(64) << 20;
    void* block = std::malloc(block_bytes);
    if (block == nullptr)
        return;
    std::memset(block, 1, block_bytes);
    std::free(block);
    const bool is_kept = get_allocator_number("tcmalloc.pageheap_free_bytes") >= block_bytes;
    std::printf("%s: rate %g, at once %zu, freed block %s\n", moment, MEM::MALLOC_EXTENSION::get_memory_release_rate(),
                get_allocator_number("tcmalloc.aggressive_memory_decommit"), is_kept ? "kept" : "given back");
}

void print_allocator()
{
    std::printf("tcmalloc %d\n", MEM::MALLOC_EXTENSION::is_tcmalloc() ? 1 : 0);
    print_allocator_state("at first");
    MEM::MALLOC_EXTENSION::set_memory_release_rate(256.0);
    print_allocator_state("fast");
    MEM::MALLOC_EXTENSION::set_memory_release_rate(10.0);
    print_allocator_state("slow");
}

MEM_INITIALIZER s_early_tag("EARLY");
} // namespace

int main(int argc, char** argv)
{
    const std::string command = argc > 1 ? argv[1] : "";
    const std::string argument = argc > 2 ? argv[2] : "";
    if (command == "program")
        print_program();
    else if (command == "program_removed")
    {
        if (unlink(argument.c_str()) != 0)
            return 2;
        print_program();
    }
    else if (command == "configuration")
        std::printf("%s\n", cfg_get_string_value(argument.c_str(), "(none)").c_str());
    else if (command == "break")
    {
        gen_debug_break(argument == "only_if_traced");
        std::puts("went on");
    }
    else if (command == "allocator")
        print_allocator();
    else if (command == "tags")
    {
        for (const std::string& tag : MEM_INITIALIZER::get_registered_tags())
            std::puts(tag.c_str());
    }
    else
        return 1;
    return 0;
}
