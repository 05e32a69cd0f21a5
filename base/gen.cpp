#include "gen.h"

#include "cfg.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <pwd.h>
#include <string_view>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

namespace
{
std::atomic<bool> s_is_ui_process{false};
std::atomic<bool> s_is_qt{false};

/// Whether the running program's file still lies at the path.
bool is_running_program(const std::string& path)
{
    struct stat at_path = {};
    struct stat running = {};
    return stat(path.c_str(), &at_path) == 0 && stat("/proc/self/exe", &running) == 0 &&
           at_path.st_dev == running.st_dev && at_path.st_ino == running.st_ino;
}

std::string read_program_path()
{
    constexpr std::string_view deleted_mark = " (deleted)";
    std::error_code error;
    std::string path = std::filesystem::read_symlink("/proc/self/exe", error).string();
    // The system marks the path of a program whose file was removed or replaced, as an update does.
    const std::size_t mark = path.rfind(deleted_mark);
    if (mark != std::string::npos && mark + deleted_mark.size() == path.size() && !is_running_program(path))
        path.erase(mark);
    return path;
}

/// Absolute path of the program as it was when first asked for. Never freed: it is wanted up to the very end.
const std::string& get_program_path()
{
    static const std::string* const path = new std::string(read_program_path());
    return *path;
}

/// Absolute, without a trailing "/"; "/" itself stays.
std::string get_absolute_folder(const std::string& folder)
{
    std::error_code error;
    std::string path = std::filesystem::absolute(folder, error).string();
    if (error)
        path = folder;
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

std::string get_home_of_user_database()
{
    std::vector<char> buffer(1024);
    passwd entry = {};
    passwd* found = nullptr;
    while (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) == ERANGE)
        buffer.resize(buffer.size() * 2);
    return found != nullptr && found->pw_dir != nullptr && *found->pw_dir != '\0' ? found->pw_dir : "/";
}

struct PROJECT_FOLDER
{
    std::mutex mutex;
    std::string path;
};

PROJECT_FOLDER& project_folder()
{
    static auto* const folder = new PROJECT_FOLDER;
    return *folder;
}

struct DEBUG_BREAK
{
    std::mutex mutex;
    std::function<void(bool)> handler;
};

DEBUG_BREAK& debug_break()
{
    static auto* const object = new DEBUG_BREAK;
    return *object;
}

bool is_traced()
{
    constexpr std::string_view name = "TracerPid:";
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.compare(0, name.size(), name) == 0)
            return std::atoi(line.c_str() + name.size()) != 0;
    return false;
}

void write_all(int file, const char* text, std::size_t size)
{
    while (size > 0)
    {
        const ssize_t written = write(file, text, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return;
        text += written;
        size -= static_cast<std::size_t>(written);
    }
}

char lower_letter(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
} // namespace

std::string gen_get_module_filename()
{
    const std::string& path = get_program_path();
    return path.substr(path.rfind('/') + 1);
}

std::string gen_get_module_path()
{
    const std::string& path = get_program_path();
    const std::size_t slash = path.rfind('/');
    return slash == 0 ? "/" : path.substr(0, slash == std::string::npos ? 0 : slash);
}

std::string gen_get_user_profile_directory()
{
    for (const char* name : {"NORVANE_USER_PROFILE", "HOME"})
        if (const char* folder = std::getenv(name); folder != nullptr && *folder != '\0')
            return get_absolute_folder(folder);
    return get_absolute_folder(get_home_of_user_database());
}

std::string gen_get_project_dir_path()
{
    PROJECT_FOLDER& folder = project_folder();
    {
        const std::lock_guard<std::mutex> lock(folder.mutex);
        if (!folder.path.empty())
            return folder.path;
    }
    std::error_code error;
    const std::string current = std::filesystem::current_path(error).string();
    return error ? "/" : current;
}

void gen_set_project_dir_path(const std::string& path)
{
    const std::string absolute = path.empty() ? path : get_absolute_folder(path);
    PROJECT_FOLDER& folder = project_folder();
    const std::lock_guard<std::mutex> lock(folder.mutex);
    folder.path = absolute;
}

bool gen_get_is_ui_process()
{
    return s_is_ui_process;
}

void gen_set_is_ui_process(bool is_ui_process)
{
    s_is_ui_process = is_ui_process;
}

bool gen_get_is_qt()
{
    return s_is_qt;
}

void gen_set_is_qt(bool is_qt)
{
    s_is_qt = is_qt;
}

void gen_debug_break(bool only_if_traced)
{
    std::function<void(bool)> handler;
    {
        DEBUG_BREAK& object = debug_break();
        const std::lock_guard<std::mutex> lock(object.mutex);
        handler = object.handler;
    }
    if (handler)
        handler(only_if_traced);
    else if (!only_if_traced || is_traced())
        std::raise(SIGTRAP);
}

std::function<void(bool)> gen_set_debug_break_handler(std::function<void(bool)> handler)
{
    DEBUG_BREAK& object = debug_break();
    const std::lock_guard<std::mutex> lock(object.mutex);
    std::swap(object.handler, handler);
    return handler;
}

bool gen_debug_is_customer_build()
{
#ifdef TOLV_CUSTOMER_BUILD
    return true;
#else
    return cfg_is_on("customer_build");
#endif
}

void gen_debug_output_string(const char* text)
{
    if (text == nullptr || *text == '\0')
        return;
    const std::string path = cfg_get_string_value("debug_output_file");
    if (path.empty())
        return;
    static std::mutex mutex;
    const std::lock_guard<std::mutex> lock(mutex);
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666);
    if (file < 0)
        return;
    write_all(file, text, std::strlen(text));
    close(file);
}

unsigned int gen_get_tick_count()
{
    timespec now = {};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return static_cast<unsigned int>(static_cast<std::uint64_t>(now.tv_sec) * 1000 +
                                     static_cast<std::uint64_t>(now.tv_nsec) / 1000000);
}

std::uint64_t gen_get_usec_wallclock()
{
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    return static_cast<std::uint64_t>(now.tv_sec) * 1000000 + static_cast<std::uint64_t>(now.tv_nsec) / 1000;
}

int gen_signed_lexcmp(const std::string& a, const std::string& b)
{
    // The NUL behind the last character of both is part of the comparison's end, so that no length is needed.
    const char* left = a.c_str();
    const char* right = b.c_str();
    while (*left == *right && *left != '\0')
    {
        ++left;
        ++right;
    }
    if (*left == '\0' || *right == '\0')
        return (*left != '\0') - (*right != '\0');
    return static_cast<signed char>(*left) < static_cast<signed char>(*right) ? -1 : 1;
}

int gen_stricmp(const char* a, const char* b)
{
    if (a == nullptr || b == nullptr)
        return (a != nullptr) - (b != nullptr);
    while (lower_letter(*a) == lower_letter(*b) && *a != '\0')
    {
        ++a;
        ++b;
    }
    return static_cast<unsigned char>(lower_letter(*a)) - static_cast<unsigned char>(lower_letter(*b));
}

void gen_sync_path_separators(std::string* path)
{
    if (path != nullptr)
        std::replace(path->begin(), path->end(), '\\', '/');
}

GEN_RAND::GEN_RAND(unsigned int seed) : m_engine(seed)
{
}

unsigned int GEN_RAND::draw()
{
    return static_cast<unsigned int>(m_engine());
}
