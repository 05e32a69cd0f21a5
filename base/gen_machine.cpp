#include "cfg.h"
#include "gen.h"
#include "gen_machine_p.h"

#include <fstream>
#include <sched.h>
#include <set>

namespace
{
/// Sets of processors beyond this number are not asked for.
constexpr int max_processor_count = 1 << 20;

/// The logical processors on which the process may run; empty where the system does not say.
std::vector<int> get_allowed_processors()
{
    for (int size = 1024; size <= max_processor_count; size *= 2)
    {
        const std::size_t bytes = CPU_ALLOC_SIZE(size);
        std::vector<cpu_set_t> sets((bytes + sizeof(cpu_set_t) - 1) / sizeof(cpu_set_t));
        // The system refuses a set that is too small for its own.
        if (sched_getaffinity(0, bytes, sets.data()) != 0)
            continue;
        std::vector<int> processors;
        for (int processor = 0; processor < size; ++processor)
            if (CPU_ISSET_S(processor, bytes, sets.data()))
                processors.push_back(processor);
        return processors;
    }
    return {};
}

/// The first line of a file; empty where there is none.
std::string read_line(const std::string& path)
{
    std::ifstream file(path);
    std::string line;
    std::getline(file, line);
    return line;
}

/// A text that the processors of one core share and no other core has: the list of the core's processors, or on older
/// systems package and core number.
std::string get_core_name(const std::string& topology_folder)
{
    for (const char* name : {"/core_cpus_list", "/thread_siblings_list"})
        if (std::string list = read_line(topology_folder + name); !list.empty())
            return list;
    const std::string core = read_line(topology_folder + "/core_id");
    return core.empty() ? core : read_line(topology_folder + "/physical_package_id") + ":" + core;
}

enum OVERRIDE
{
    OVERRIDE_NONE,
    OVERRIDE_COUNT,
    OVERRIDE_FAIL
};

/// What the configuration says in place of the machine.
OVERRIDE read_override(const char* key, int* count)
{
    // Two defaults tell a number that is set from one that is not.
    const int number = cfg_get_int_value(key, 0);
    if (number != cfg_get_int_value(key, 1))
        return OVERRIDE_NONE;
    if (number <= 0)
        return OVERRIDE_FAIL;
    *count = number;
    return OVERRIDE_COUNT;
}
} // namespace

bool gen_count_cores(const std::string& folder, const std::vector<int>& processors, int* count)
{
    std::set<std::string> cores;
    for (const int processor : processors)
    {
        const std::string core = get_core_name(folder + "/cpu" + std::to_string(processor) + "/topology");
        if (core.empty())
            return false;
        cores.insert(core);
    }
    if (cores.empty())
        return false;
    *count = static_cast<int>(cores.size());
    return true;
}

bool GEN_MACHINE_INFO::get_core_cpu_count(int* count)
{
    int cores = 0;
    const OVERRIDE override_kind = read_override("core_cpu_count", &cores);
    if (override_kind == OVERRIDE_FAIL)
        return false;
    if (override_kind == OVERRIDE_NONE && !gen_count_cores("/sys/devices/system/cpu", get_allowed_processors(), &cores))
        return false;
    if (count != nullptr)
        *count = cores;
    return true;
}

bool GEN_MACHINE_INFO::get_logical_cpu_count(int* count)
{
    int processors = 0;
    const OVERRIDE override_kind = read_override("logical_cpu_count", &processors);
    if (override_kind == OVERRIDE_FAIL)
        return false;
    if (override_kind == OVERRIDE_NONE)
        processors = static_cast<int>(get_allowed_processors().size());
    if (processors == 0)
        return false;
    if (count != nullptr)
        *count = processors;
    return true;
}
