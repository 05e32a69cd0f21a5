#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>
#include <vector>

/// Private to the embedded form of IPC_COMMAND: command lines, descriptors and one child process.

/// Cuts a command line into words, as IPC_COMMAND::run() describes it. False, with a reason, where it is none.
bool ipc_split_command(const std::string& command, std::vector<std::string>* words, std::string* error);

/// A descriptor that is closed with its owner.
class IPC_DESCRIPTOR
{
public:
    IPC_DESCRIPTOR() = default;
    ~IPC_DESCRIPTOR();
    IPC_DESCRIPTOR(const IPC_DESCRIPTOR&) = delete;
    IPC_DESCRIPTOR& operator=(const IPC_DESCRIPTOR&) = delete;

    void reset(int descriptor = -1);
    int get() const
    {
        return m_descriptor;
    }
    bool is_open() const
    {
        return m_descriptor >= 0;
    }

private:
    int m_descriptor = -1;
};

/// A child process, leader of a group of its own, with a pipe for its output and perhaps one for its input.
///
/// The ended child stays unreaped until reap(): so long its number, which is the group's number too, cannot be given to
/// a stranger, and signalling the group is safe. The destructor kills and reaps what was not reaped. All operations
/// are called on one thread.
class IPC_PROCESS
{
public:
    struct REQUEST
    {
        std::vector<std::string> words;
        std::string working_directory;
        bool merge_error_output = false;
        bool has_input = false;
    };

    IPC_PROCESS() = default;
    ~IPC_PROCESS();
    IPC_PROCESS(const IPC_PROCESS&) = delete;
    IPC_PROCESS& operator=(const IPC_PROCESS&) = delete;

    /// Starts the child. False, with a reason, where that is not possible.
    bool start(const REQUEST& request, std::string* error);

    /// Number of the process and of its group.
    pid_t get_group() const;

    /// Waits for output, room for input, the child's end or `wake_descriptor`, which it empties.
    void wait_for_event(int milliseconds, int wake_descriptor);

    /// Reads what is there. 0 where nothing is, or at the end of the output, which closes it.
    std::size_t read_output(char* buffer, std::size_t size);
    bool is_output_open() const;
    /// How much a pipe can hold that nobody reads.
    std::size_t get_output_capacity() const;

    /// Writes what the child takes at present. Closes the input behind the last byte, or where nobody reads it.
    void write_input(const std::string& input);
    void close_input();

    /// Whether the child itself, the leader, has ended.
    bool has_ended();

    /// Whether a process of the group lives, apart from those that have ended and wait for their parent.
    bool does_group_live() const;

    /// Gives the ended child's wait status and lets go of its number. Waits where it has not ended.
    int reap();

private:
    pid_t m_pid = 0;
    bool m_has_ended = false;
    std::size_t m_input_offset = 0;
    IPC_DESCRIPTOR m_output;
    IPC_DESCRIPTOR m_input;
    IPC_DESCRIPTOR m_pid_descriptor; ///< readable when the child has ended; not open on systems without
};
