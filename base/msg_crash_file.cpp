#include "msg_crash_file_p.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace
{
constexpr int HIGHEST_FILE_NUMBER = 9999;

/// Collects what goes to a file, and notes a failure.
struct FILE_SINK
{
    int file = -1;
    bool is_good = true;
    std::size_t count = 0;
    char buffer[4096];

    void flush()
    {
        for (std::size_t written = 0; is_good && written < count;)
        {
            const ssize_t result = write(file, buffer + written, count - written);
            if (result < 0 && errno != EINTR)
                is_good = false;
            else if (result > 0)
                written += static_cast<std::size_t>(result);
        }
        count = 0;
    }
    void add(const char* bytes, std::size_t size)
    {
        for (std::size_t i = 0; i < size; ++i)
        {
            if (count == sizeof buffer)
                flush();
            buffer[count++] = bytes[i];
        }
    }
};

/// Makes the folder and those above it; what is there already stays.
void make_folder(const char* folder)
{
    MSG_FIXED_TEXT path;
    for (const char* position = folder; *position != '\0'; ++position)
    {
        if (*position == '/' && position != folder)
            mkdir(path.get(), 0700);
        path.append(*position);
    }
    mkdir(path.get(), 0700);
}

enum PART_RESULT
{
    PART_WRITTEN,
    PART_IS_THERE,
    PART_FAILED
};

/// Path of the part being written, null while there is none.
std::atomic<const char*> s_unfinished_part{nullptr};

/// Writes a file that must not be there yet.
PART_RESULT write_part(const char* path, MSG_CRASH_CONTENT content, void* context)
{
    FILE_SINK sink;
    sink.file = open(path, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    if (sink.file < 0)
        return errno == EEXIST ? PART_IS_THERE : PART_FAILED;
    s_unfinished_part = path;
    MSG_CRASH_JSON_WRITER writer([](void* target, const char* bytes, std::size_t count)
                                 { static_cast<FILE_SINK*>(target)->add(bytes, count); },
                                 &sink);
    content(context, writer);
    sink.flush();
    s_unfinished_part = nullptr;
    if (close(sink.file) == 0 && sink.is_good)
        return PART_WRITTEN;
    unlink(path);
    return PART_FAILED;
}

/// Gives the complete part its name, unless a file has that name. Where the file system has no hard links, the name was
/// free a moment ago.
bool publish_part(const char* part, const char* path)
{
    if (link(part, path) == 0)
    {
        unlink(part);
        return true;
    }
    return errno != EEXIST && rename(part, path) == 0;
}

void build_path(MSG_FIXED_TEXT& path, const char* folder, const char* time, int number)
{
    path.clear();
    path.append(folder);
    path.append("/crash_");
    for (const char* character = time; *character != '\0'; ++character)
    {
        if (*character != '-' && *character != ':')
            path.append(*character);
    }
    path.append('_');
    path.append_number(static_cast<unsigned long long>(getpid()));
    path.append('_');
    path.append_number(static_cast<unsigned long long>(number));
    path.append(".json");
}
} // namespace

bool msg_crash_write_new_file(const char* folder, const char* time, MSG_CRASH_CONTENT content, void* context,
                              MSG_FIXED_TEXT* path)
{
    make_folder(folder);
    for (int number = 0; number <= HIGHEST_FILE_NUMBER; ++number)
    {
        build_path(*path, folder, time, number);
        MSG_FIXED_TEXT part = *path;
        part.append(".part");
        if (part.is_cut())
            return false;
        if (access(path->get(), F_OK) == 0)
            continue;
        const PART_RESULT result = write_part(part.get(), content, context);
        if (result == PART_FAILED)
            return false;
        if (result == PART_IS_THERE)
            continue;
        if (publish_part(part.get(), path->get()))
            return true;
        const bool is_name_taken = access(path->get(), F_OK) == 0;
        unlink(part.get());
        if (!is_name_taken)
            return false;
    }
    return false;
}

bool msg_crash_replace_file(const char* path, MSG_CRASH_CONTENT content, void* context)
{
    MSG_FIXED_TEXT part;
    part.append(path);
    part.append(".");
    part.append_number(static_cast<unsigned long long>(getpid()));
    part.append(".part");
    if (part.is_cut())
        return false;
    unlink(part.get());
    if (write_part(part.get(), content, context) != PART_WRITTEN)
        return false;
    if (std::rename(part.get(), path) == 0)
        return true;
    unlink(part.get());
    return false;
}

void msg_crash_drop_unfinished_file()
{
    const char* path = s_unfinished_part;
    if (path != nullptr)
        unlink(path);
}
