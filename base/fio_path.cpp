#include "fio.h"

#include <algorithm>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace
{
bool is_absolute(const std::string& path)
{
    return !path.empty() && path.front() == '/';
}

/// Without "/" at the end, except for the root.
std::string trim(std::string path)
{
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    return path;
}

std::string join(const std::string& directory, const std::string& name)
{
    if (directory.empty() || directory.back() == '/')
        return directory + name;
    return directory + '/' + name;
}

/// A directory without ".", "x/.." and doubled "/". Empty where a relative one comes back to its start.
std::string flatten_directory(const std::string& directory)
{
    std::vector<std::string> segments;
    for (size_t start = 0; start < directory.size();)
    {
        const size_t end = std::min(directory.find('/', start), directory.size());
        const std::string segment = directory.substr(start, end - start);
        start = end + 1;
        if (segment.empty() || segment == ".")
            continue;
        const bool can_go_up = !segments.empty() && segments.back() != "..";
        if (segment == ".." && can_go_up)
            segments.pop_back();
        else if (segment != ".." || !is_absolute(directory))
            segments.push_back(segment);
    }
    std::string result = is_absolute(directory) ? "/" : "";
    for (const std::string& segment : segments)
        result = join(result, segment);
    return result;
}

/// stat() of a text: the system would read one with a NUL in it only up to there.
bool get_status(const std::string& path, struct stat* status)
{
    return path.find('\0') == std::string::npos && ::stat(path.c_str(), status) == 0;
}
} // namespace

FIO_PATH::FIO_PATH() = default;

FIO_PATH::FIO_PATH(const std::string& path)
{
    const size_t slash = path.rfind('/');
    const size_t start = slash == std::string::npos ? 0 : slash + 1;
    const std::string last = path.substr(start);
    if (last == "." || last == "..")
    {
        m_directory = path;
        return;
    }
    m_directory = trim(path.substr(0, start));
    m_filename = last;
}

std::string FIO_PATH::filename() const
{
    return m_filename;
}

void FIO_PATH::set_filename(const std::string& name)
{
    m_filename = FIO_PATH(name).filename();
}

void FIO_PATH::clear_filename()
{
    m_filename.clear();
}

std::string FIO_PATH::base() const
{
    return m_filename.substr(0, m_filename.size() - extension().size());
}

std::string FIO_PATH::extension() const
{
    const size_t dot = m_filename.rfind('.');
    return dot == std::string::npos || dot == 0 ? std::string() : m_filename.substr(dot);
}

bool FIO_PATH::has_extension() const
{
    return !extension().empty();
}

bool FIO_PATH::has_filename() const
{
    return !m_filename.empty();
}

std::string FIO_PATH::directory() const
{
    return m_directory;
}

bool FIO_PATH::has_directory() const
{
    return !m_directory.empty();
}

void FIO_PATH::cd(const std::string& directory)
{
    if (is_absolute(directory))
        m_directory = trim(directory);
    else if (!directory.empty())
        m_directory = trim(join(m_directory, directory));
}

void FIO_PATH::flatten()
{
    const bool was_empty = is_empty();
    m_directory = flatten_directory(m_directory);
    if (is_empty() && !was_empty)
        m_directory = ".";
}

std::string FIO_PATH::fullpath() const
{
    if (is_empty())
        return std::string();
    FIO_PATH result(*this);
    if (!is_absolute(m_directory))
        result.m_directory = join(FIO_FILE_SYSTEM::get_current_directory(), m_directory);
    result.flatten();
    return result.has_filename() ? join(result.m_directory, result.m_filename) : result.m_directory;
}

std::string FIO_PATH::path() const
{
    return m_directory.empty() ? m_filename : join(m_directory, m_filename);
}

bool FIO_PATH::is_empty() const
{
    return m_directory.empty() && m_filename.empty();
}

bool FIO_PATH::exists() const
{
    struct stat status;
    return get_status(path(), &status);
}

bool FIO_PATH::is_same(const FIO_PATH& other) const
{
    if (fullpath() == other.fullpath())
        return true;
    struct stat status;
    struct stat other_status;
    return get_status(path(), &status) && get_status(other.path(), &other_status) &&
           status.st_dev == other_status.st_dev && status.st_ino == other_status.st_ino;
}

std::string FIO_FILE_SYSTEM::get_current_directory()
{
    std::error_code error;
    const std::string directory = std::filesystem::current_path(error).string();
    return error || !is_absolute(directory) ? std::string() : directory;
}

bool FIO_FILE_SYSTEM::set_current_directory(const FIO_PATH& directory)
{
    return change_current_directory(directory.path());
}

bool FIO_FILE_SYSTEM::change_current_directory(const std::string& directory)
{
    return directory.find('\0') == std::string::npos && ::chdir(directory.c_str()) == 0;
}

bool FIO_FILE_SYSTEM::file_exists(const std::string& path)
{
    struct stat status;
    return get_status(path, &status) && !S_ISDIR(status.st_mode);
}

bool FIO_FILE_SYSTEM::directory_exists(const std::string& path)
{
    struct stat status;
    return get_status(path, &status) && S_ISDIR(status.st_mode);
}

bool FIO_FILE_SYSTEM::is_writable(const std::string& path)
{
    return path.find('\0') == std::string::npos && ::access(path.c_str(), W_OK) == 0;
}
