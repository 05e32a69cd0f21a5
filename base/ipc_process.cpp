#include "ipc_process_p.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace
{
/// How often a child's end is looked for where the system has no descriptor for it.
constexpr int END_CHECK_MILLISECONDS = 10;

/// Wait status of a child whose end somebody else has collected: exit status 255.
constexpr int UNKNOWN_WAIT_STATUS = 0xff00;

bool is_blank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f';
}

std::string system_text(int error_number)
{
    return std::generic_category().message(error_number);
}

/// Cuts one word off a command line, and takes its quotes away.
class WORD_SCANNER
{
public:
    explicit WORD_SCANNER(const std::string& command) : m_command(command)
    {
    }

    /// False where there is no more word.
    bool skip_blanks()
    {
        while (m_position < m_command.size() && is_blank(m_command[m_position]))
            ++m_position;
        return m_position < m_command.size();
    }

    /// False where a quote is not closed.
    bool take_word(std::string* word)
    {
        char quote = 0;
        for (; m_position < m_command.size(); ++m_position)
        {
            const char c = m_command[m_position];
            if (quote == 0 && is_blank(c))
                break;
            if (quote == 0 && (c == '"' || c == '\''))
                quote = c;
            else if (quote != 0 && c == quote)
                quote = 0;
            else if (c == '\\' && does_escape(quote))
                *word += m_command[++m_position];
            else
                *word += c;
        }
        return quote == 0;
    }

private:
    /// A backslash stands for itself at the end, in single quotes, and in double quotes before all but '"' and "\".
    bool does_escape(char quote) const
    {
        if (quote == '\'' || m_position + 1 == m_command.size())
            return false;
        const char next = m_command[m_position + 1];
        return quote == 0 || next == '"' || next == '\\';
    }

    const std::string& m_command;
    std::size_t m_position = 0;
};

/// Makes a pipe whose ends lie above the standard descriptors, so that giving one to a child as its input or output
/// never overwrites the other, also where this process runs with its standard descriptors closed.
bool make_pipe(IPC_DESCRIPTOR* read_end, IPC_DESCRIPTOR* write_end)
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return false;
    read_end->reset(ends[0]);
    write_end->reset(ends[1]);
    for (IPC_DESCRIPTOR* end : {read_end, write_end})
    {
        if (end->get() > STDERR_FILENO)
            continue;
        const int moved = fcntl(end->get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
        if (moved < 0)
            return false;
        end->reset(moved);
    }
    return true;
}

/// Only our end: the flag belongs to the end, and the child's must block as usual.
void set_non_blocking(const IPC_DESCRIPTOR& descriptor)
{
    fcntl(descriptor.get(), F_SETFL, fcntl(descriptor.get(), F_GETFL) | O_NONBLOCK);
}

/// What a child starts with: its own group, the usual signal handling, its descriptors and its folder.
class SPAWN_SETTINGS
{
public:
    SPAWN_SETTINGS()
    {
        posix_spawnattr_init(&m_attributes);
        posix_spawn_file_actions_init(&m_actions);
        sigset_t signals;
        sigemptyset(&signals);
        posix_spawnattr_setsigmask(&m_attributes, &signals);
        for (const int signal : {SIGPIPE, SIGTERM, SIGINT, SIGQUIT, SIGCHLD})
            sigaddset(&signals, signal);
        posix_spawnattr_setsigdefault(&m_attributes, &signals);
        posix_spawnattr_setpgroup(&m_attributes, 0);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }

    ~SPAWN_SETTINGS()
    {
        posix_spawn_file_actions_destroy(&m_actions);
        posix_spawnattr_destroy(&m_attributes);
    }

    SPAWN_SETTINGS(const SPAWN_SETTINGS&) = delete;
    SPAWN_SETTINGS& operator=(const SPAWN_SETTINGS&) = delete;

    void set_descriptors(const IPC_DESCRIPTOR& input, const IPC_DESCRIPTOR& output, bool merge_error_output)
    {
        if (input.is_open())
            posix_spawn_file_actions_adddup2(&m_actions, input.get(), STDIN_FILENO);
        else
            posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_adddup2(&m_actions, output.get(), STDOUT_FILENO);
        if (merge_error_output)
            posix_spawn_file_actions_adddup2(&m_actions, STDOUT_FILENO, STDERR_FILENO);
    }

    void set_working_directory(const std::string& folder)
    {
        posix_spawn_file_actions_addchdir_np(&m_actions, folder.c_str());
    }

    /// An error number, 0 for none.
    int spawn(pid_t* pid, const std::vector<std::string>& words)
    {
        std::vector<char*> arguments;
        arguments.reserve(words.size() + 1);
        for (const std::string& word : words)
            arguments.push_back(const_cast<char*>(word.c_str()));
        arguments.push_back(nullptr);
        return posix_spawnp(pid, arguments.front(), &m_actions, &m_attributes, arguments.data(), environ);
    }

private:
    posix_spawnattr_t m_attributes{};
    posix_spawn_file_actions_t m_actions{};
};

/// An error number, 0 for none: why a folder cannot be worked in.
int check_working_directory(const std::string& folder)
{
    if (folder.find('\0') != std::string::npos)
        return EINVAL;
    struct stat status
    {
    };
    if (stat(folder.c_str(), &status) != 0)
        return errno;
    return S_ISDIR(status.st_mode) ? 0 : ENOTDIR;
}

/// write() that gives EPIPE without the signal, whatever the process does with it.
ssize_t write_without_signal(int descriptor, const char* data, std::size_t size)
{
    sigset_t pipe_signal;
    sigemptyset(&pipe_signal);
    sigaddset(&pipe_signal, SIGPIPE);
    sigset_t pending;
    sigpending(&pending);
    sigset_t old_mask;
    pthread_sigmask(SIG_BLOCK, &pipe_signal, &old_mask);

    const ssize_t written = write(descriptor, data, size);
    const int error = errno;
    if (written < 0 && error == EPIPE && sigismember(&pending, SIGPIPE) == 0)
    {
        const timespec no_time{};
        while (sigtimedwait(&pipe_signal, nullptr, &no_time) < 0 && errno == EINTR)
        {
        }
    }
    pthread_sigmask(SIG_SETMASK, &old_mask, nullptr);
    errno = error;
    return written;
}

/// Whether a process, by its folder's name under /proc, is of the group and has not ended.
bool is_live_member(const std::string& process, pid_t group)
{
    if (process.find_first_not_of("0123456789") != std::string::npos)
        return false;
    std::ifstream file("/proc/" + process + "/stat");
    std::string record;
    std::getline(file, record, '\0');
    // The name may hold anything; what follows its ")" is: state, parent, group.
    const std::size_t name_end = record.rfind(')');
    char state = 0;
    int parent = 0;
    int its_group = 0;
    if (name_end == std::string::npos ||
        std::sscanf(record.c_str() + name_end + 1, " %c %d %d", &state, &parent, &its_group) != 3)
        return false;
    return its_group == group && state != 'Z' && state != 'X';
}
} // namespace

bool ipc_split_command(const std::string& command, std::vector<std::string>* words, std::string* error)
{
    words->clear();
    if (command.find('\0') != std::string::npos)
    {
        *error = "the command has a NUL character in it";
        return false;
    }
    WORD_SCANNER scanner(command);
    while (scanner.skip_blanks())
    {
        words->emplace_back();
        if (!scanner.take_word(&words->back()))
        {
            *error = "the command has a quote that is not closed";
            return false;
        }
    }
    if (words->empty())
        *error = "the command is empty";
    return !words->empty();
}

IPC_DESCRIPTOR::~IPC_DESCRIPTOR()
{
    reset();
}

void IPC_DESCRIPTOR::reset(int descriptor)
{
    if (m_descriptor >= 0)
        close(m_descriptor);
    m_descriptor = descriptor;
}

IPC_PROCESS::~IPC_PROCESS()
{
    if (m_pid == 0)
        return;
    kill(-m_pid, SIGKILL);
    reap();
}

bool IPC_PROCESS::start(const REQUEST& request, std::string* error)
{
    IPC_DESCRIPTOR child_input;
    IPC_DESCRIPTOR child_output;
    if (!make_pipe(&m_output, &child_output) || (request.has_input && !make_pipe(&child_input, &m_input)))
    {
        *error = "no pipe could be made: " + system_text(errno);
        return false;
    }
    SPAWN_SETTINGS settings;
    if (!request.working_directory.empty())
    {
        const int error_number = check_working_directory(request.working_directory);
        if (error_number != 0)
        {
            *error = request.working_directory + ": " + system_text(error_number);
            return false;
        }
        settings.set_working_directory(request.working_directory);
    }
    settings.set_descriptors(child_input, child_output, request.merge_error_output);
    const int error_number = settings.spawn(&m_pid, request.words);
    if (error_number != 0)
    {
        m_pid = 0;
        *error = request.words.front() + ": " + system_text(error_number);
        return false;
    }
    set_non_blocking(m_output);
    if (m_input.is_open())
        set_non_blocking(m_input);
    m_pid_descriptor.reset(static_cast<int>(syscall(SYS_pidfd_open, m_pid, 0)));
    return true;
}

pid_t IPC_PROCESS::get_group() const
{
    return m_pid;
}

void IPC_PROCESS::wait_for_event(int milliseconds, int wake_descriptor)
{
    // poll() passes over descriptors below 0.
    const bool awaits_end = !m_has_ended && m_pid_descriptor.is_open();
    std::array<pollfd, 4> events{{{m_output.get(), POLLIN, 0},
                                  {m_input.get(), POLLOUT, 0},
                                  {awaits_end ? m_pid_descriptor.get() : -1, POLLIN, 0},
                                  {wake_descriptor, POLLIN, 0}}};
    if (!m_has_ended && !m_pid_descriptor.is_open())
        milliseconds = std::min(milliseconds, END_CHECK_MILLISECONDS);
    if (poll(events.data(), events.size(), milliseconds) > 0 && events[3].revents != 0)
    {
        std::array<char, 8> counter{};
        // An empty one only means that somebody else was quicker.
        [[maybe_unused]] const ssize_t ignored = read(wake_descriptor, counter.data(), counter.size());
    }
}

std::size_t IPC_PROCESS::read_output(char* buffer, std::size_t size)
{
    if (!m_output.is_open())
        return 0;
    const ssize_t count = read(m_output.get(), buffer, size);
    if (count > 0)
        return static_cast<std::size_t>(count);
    if (count == 0 || (errno != EAGAIN && errno != EINTR))
        m_output.reset();
    return 0;
}

bool IPC_PROCESS::is_output_open() const
{
    return m_output.is_open();
}

std::size_t IPC_PROCESS::get_output_capacity() const
{
    const int capacity = m_output.is_open() ? fcntl(m_output.get(), F_GETPIPE_SZ) : 0;
    return static_cast<std::size_t>(std::max(capacity, 0));
}

void IPC_PROCESS::write_input(const std::string& input)
{
    if (!m_input.is_open())
        return;
    const ssize_t count =
        write_without_signal(m_input.get(), input.data() + m_input_offset, input.size() - m_input_offset);
    if (count >= 0)
        m_input_offset += static_cast<std::size_t>(count);
    if (m_input_offset == input.size() || (count < 0 && errno != EAGAIN && errno != EINTR))
        m_input.reset();
}

void IPC_PROCESS::close_input()
{
    m_input.reset();
}

bool IPC_PROCESS::has_ended()
{
    if (m_has_ended)
        return true;
    siginfo_t info{};
    const int result = waitid(P_PID, static_cast<id_t>(m_pid), &info, WEXITED | WNOHANG | WNOWAIT);
    m_has_ended = result == 0 ? info.si_pid == m_pid : errno == ECHILD;
    return m_has_ended;
}

bool IPC_PROCESS::does_group_live() const
{
    std::error_code error;
    std::filesystem::directory_iterator process("/proc", error);
    for (; !error && process != std::filesystem::directory_iterator(); process.increment(error))
    {
        if (is_live_member(process->path().filename(), m_pid))
            return true;
    }
    // Without a list of the processes nobody can say: then it counts as alive, and is killed in the end.
    return static_cast<bool>(error);
}

int IPC_PROCESS::reap()
{
    int status = UNKNOWN_WAIT_STATUS;
    while (waitpid(m_pid, &status, 0) < 0 && errno == EINTR)
    {
    }
    m_pid = 0;
    return status;
}
