#include "thr_drl.h"

#include <dlfcn.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <map>
#include <mutex>
#include <system_error>
#include <vector>

namespace
{
struct LAST_FAILURE
{
    std::string error;
    std::string data;
    std::string system_error;
};

LAST_FAILURE& last_failure()
{
    thread_local LAST_FAILURE failure;
    return failure;
}

void fail(const std::string& what, const std::string& data, const std::string& system_error)
{
    last_failure() = {what + ": " + system_error, data, system_error};
}

std::string system_text(int error_number)
{
    return std::generic_category().message(error_number);
}

std::string take_loader_text()
{
    const char* text = dlerror();
    return text != nullptr ? text : "unknown error of the dynamic loader";
}

/// The loads that are not yet released, per handle. A handle that is not here is never given to the loader, which
/// would not survive it. Never destroyed: modules may be unloaded while the process ends.
class LOAD_COUNTS
{
public:
    static LOAD_COUNTS& get()
    {
        static LOAD_COUNTS& counts = *new LOAD_COUNTS;
        return counts;
    }

    void add(THR_DRL_HANDLE handle)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++m_counts[handle];
    }

    bool contains(THR_DRL_HANDLE handle)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_counts.count(handle) != 0;
    }

    bool remove(THR_DRL_HANDLE handle)
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        const auto position = m_counts.find(handle);
        if (position == m_counts.end())
            return false;
        if (--position->second == 0)
            m_counts.erase(position);
        return true;
    }

private:
    std::mutex m_mutex;
    std::map<THR_DRL_HANDLE, int> m_counts;
};

std::string get_executable_folder()
{
    std::array<char, PATH_MAX> path{};
    const ssize_t length = readlink("/proc/self/exe", path.data(), path.size());
    if (length <= 0)
        return ".";
    const std::string executable(path.data(), static_cast<std::size_t>(length));
    return executable.substr(0, executable.rfind('/'));
}

std::vector<std::string> get_folders()
{
    std::vector<std::string> folders;
    const char* variable = getenv("NORVANE_MODULE_PATH");
    const std::string path = variable != nullptr ? variable : "";
    for (std::size_t begin = 0; begin <= path.size();)
    {
        const std::size_t end = std::min(path.find(':', begin), path.size());
        if (end > begin)
            folders.push_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    const std::string executable_folder = get_executable_folder();
    const std::string install_folder = TOLV_INSTALL_MODULE_FOLDER;
    folders.push_back(executable_folder);
    folders.push_back(install_folder.front() == '/' ? install_folder : executable_folder + "/../" + install_folder);
    return folders;
}

std::string strip_ending(const std::string& name)
{
    for (const std::string ending : {".dll", ".so"})
    {
        if (name.size() > ending.size() && name.compare(name.size() - ending.size(), ending.size(), ending) == 0)
            return name.substr(0, name.size() - ending.size());
    }
    return name;
}

bool is_file(const std::string& path)
{
    struct stat status
    {
    };
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

/// Path of the first file that bears the module's name; empty where there is none.
std::string find_module_file(const std::string& name)
{
    if (name.find('/') != std::string::npos)
        return is_file(name) ? name : std::string();
    const std::string stem = strip_ending(name);
    for (const std::string& folder : get_folders())
    {
        for (const std::string& file : {"lib" + stem + ".so", stem + ".so"})
        {
            std::string path = folder;
            path.append("/").append(file);
            if (is_file(path))
                return path;
        }
    }
    return {};
}
} // namespace

THR_DRL_HANDLE thr_drl_load(const char* name)
{
    return thr_drl_load(std::string(name != nullptr ? name : ""));
}

THR_DRL_HANDLE thr_drl_load(const std::string& name)
{
    const std::string what = "Can't load module " + name;
    if (name.empty() || name.find('\0') != std::string::npos)
    {
        fail("Can't load a module without a proper name", name, system_text(EINVAL));
        return nullptr;
    }
    const std::string path = find_module_file(name);
    if (path.empty())
    {
        fail(what, name, system_text(ENOENT));
        return nullptr;
    }
    THR_DRL_HANDLE handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr)
    {
        fail(what, name, take_loader_text());
        return nullptr;
    }
    LOAD_COUNTS::get().add(handle);
    return handle;
}

void* thr_drl_find_function(THR_DRL_HANDLE handle, const char* function_name)
{
    return thr_drl_find_function(handle, std::string(function_name != nullptr ? function_name : ""));
}

void* thr_drl_find_function(THR_DRL_HANDLE handle, const std::string& function_name)
{
    const std::string what = "Can't find function " + function_name;
    if (function_name.empty() || function_name.find('\0') != std::string::npos || !LOAD_COUNTS::get().contains(handle))
    {
        fail(what, function_name, system_text(EINVAL));
        return nullptr;
    }
    void* function = dlsym(handle, function_name.c_str());
    if (function == nullptr)
        fail(what, function_name, take_loader_text());
    return function;
}

void thr_drl_unload(THR_DRL_HANDLE handle)
{
    if (handle == nullptr)
        return;
    if (!LOAD_COUNTS::get().remove(handle))
        fail("Can't unload a module that is not loaded", "", system_text(EINVAL));
    else if (dlclose(handle) != 0)
        fail("Can't unload a module", "", take_loader_text());
}

std::string thr_drl_get_error()
{
    return last_failure().error;
}

std::string thr_drl_get_error_data()
{
    return last_failure().data;
}

std::string thr_drl_get_system_error()
{
    return last_failure().system_error;
}
