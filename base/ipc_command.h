#pragma once

#include "base_export.h"
#include "thr.h"

#include <gsl/span>

#include <memory>
#include <string>

/// Runs one external command at a time, synchronously, and feeds its output line by line to a virtual operation.
///
/// A tool derives from it, overrides process_line(), and calls run() on a worker thread; get_process_status() and
/// terminate() may be called from any other thread meanwhile. The command runs in a process group of its own, so that
/// terminate() ends it with all its children. The object outlives the run.
class TOLV_BASE_EXPORT IPC_COMMAND
{
public:
    /// Numbers that get_process_status() answers.
    enum STATUS
    {
        STATUS_STARTING = 0, ///< run() has been entered, or will be: no process yet
        STATUS_IDLE = 1,     ///< never run
        STATUS_RUNNING = 2,  ///< the process exists
        STATUS_FINISHED = 3  ///< the process has ended and its exit code is stored
    };

    /// Exit status of a command that cannot be started (no such program, not executable, not a command line).
    static constexpr int EXIT_STATUS_NOT_STARTED = 127;

    IPC_COMMAND();
    virtual ~IPC_COMMAND();
    IPC_COMMAND(const IPC_COMMAND&) = delete;
    IPC_COMMAND& operator=(const IPC_COMMAND&) = delete;

    /// The command is a plain program, not a command of the Tcl service. This is the mode of a new object, too.
    void disable_tcl_mode();

    /// The command is a script that the Tcl service evaluates on the main thread; its result is the output.
    void enable_tcl_mode();

    /// Runs a command and returns when it has ended and its output is read. Words are divided by blanks; double and
    /// single quotes and "\" keep blanks, no shell takes part.
    /// @param command            program (searched on PATH) and arguments
    /// @param working_directory  where it runs; empty for the present one
    /// @param merge_error_output whether its standard error comes through process_line() too; otherwise it stays ours
    /// @param exit_code          receives the wait status; may be null. Written before the status says finished.
    /// @param input              text for its standard input; empty for none
    /// @param keep_output        whether get_output() gives all output (at most 16 MiB) afterwards
    /// @return true where the process could be started
    bool run(const std::string& command, const std::string& working_directory, bool merge_error_output,
             THR_PROCESS_EXIT_CODE* exit_code, const std::string& input, bool keep_output);

    /// The status number (STATUS). Callable from any thread at any time. With `wait_milliseconds` above 0 it waits at
    /// most that long for the end of a run under way.
    unsigned long get_process_status(unsigned long wait_milliseconds) const;

    /// Ends a running command and its children: asks first (SIGTERM), and kills what is left after a short while.
    /// Returns at once; harmless where nothing runs. A non-zero `exit_code` replaces the one that run() stores.
    void terminate(THR_PROCESS_EXIT_CODE exit_code);

    /// Output of the last run with `keep_output`, after its end.
    std::string get_output() const;

protected:
    /// Receives raw output as it comes, on the thread of run(). This class cuts it into lines and calls
    /// process_line(); an override that does not call it takes the output as it is.
    virtual void parse_output(gsl::span<char> output);

    /// Receives one line without its line end; the last one also where the line end is missing. Does nothing here.
    virtual void process_line(const std::string& line);

    /// Asked while output is awaited, on the thread of run(): true ends the command. Always false here.
    virtual bool is_stopped();

private:
    struct IMPL;
    std::unique_ptr<IMPL> m_impl;
};
