#pragma once

#include "base_export.h"
#include "thr.h"

#include <gsl/span>

#include <cstddef>
#include <memory>
#include <string>

/// Runs one external command at a time, synchronously, and feeds its output line by line to a virtual operation.
///
/// A tool derives from it, overrides process_line(), and calls run() on a worker thread; get_process_status(),
/// terminate() and get_output() may be called from any other thread meanwhile. The command runs in a process group of
/// its own, so that terminate() ends it with all its children. One object runs as many commands as one likes, one after
/// the other: a run() that begins while another is under way waits for its turn.
///
/// The end of a run. A run ends when the process has ended and all its output is read, that is, when nobody holds its
/// output open any more. Children that it left behind with its output get DRAIN_MILLISECONDS to come to an end; then
/// the run ends without them, and they live on. After terminate() the run ends when no process of the group is left.
/// All that the process itself wrote is always handed on.
///
/// The object outlives the run: where it does not, the destructor ends the command and waits for that.
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

    /// How long after terminate() asked them processes may go on, before they are killed.
    static constexpr int KILL_DELAY_MILLISECONDS = 2000;

    /// How long output is awaited from others behind the end of the process.
    static constexpr int DRAIN_MILLISECONDS = 1000;

    /// The longest line in bytes. A longer one comes in pieces of this size and a rest.
    static constexpr std::size_t MAX_LINE_SIZE = std::size_t{1} << 20;

    /// How much output is kept, in bytes: its beginning.
    static constexpr std::size_t MAX_KEPT_OUTPUT = std::size_t{16} << 20;

    IPC_COMMAND();
    virtual ~IPC_COMMAND();
    IPC_COMMAND(const IPC_COMMAND&) = delete;
    IPC_COMMAND& operator=(const IPC_COMMAND&) = delete;

    /// The command is a plain program, not a command of the Tcl service. This is the mode of a new object, too.
    void disable_tcl_mode();

    /// The command is a script that the Tcl service evaluates on the main thread; its result, or its error text, is
    /// the output, and the Tcl code is the exit status. The other arguments of run() that concern a process do not
    /// count. A script that is handed over cannot be ended.
    void enable_tcl_mode();

    /// Runs a command and returns when it has ended and its output is read. Words are divided by blanks (also tabs and
    /// line ends). Between single quotes all stands for itself, between double quotes all but a "\" before '"' and
    /// "\", elsewhere "\" keeps the next character as it is. No shell takes part.
    /// @param command            program (searched on PATH) and arguments; a program with a "/" in it is a path, seen
    ///                           from the working directory
    /// @param working_directory  where it runs; empty for the present one
    /// @param merge_error_output whether its standard error comes through process_line() too; otherwise it stays ours
    /// @param exit_code          receives the wait status; may be null. Written before the status says finished.
    /// @param input              text for its standard input, which ends behind it; empty for none
    /// @param keep_output        whether get_output() gives all output (at most MAX_KEPT_OUTPUT) afterwards
    /// @return true where the process could be started. Where not, get_start_error() says why. A run that was
    ///         terminated before its start has the exit code of a process that SIGTERM ended.
    bool run(const std::string& command, const std::string& working_directory, bool merge_error_output,
             THR_PROCESS_EXIT_CODE* exit_code, const std::string& input, bool keep_output);

    /// Says that a run() will follow on another thread: from now on the status is "starting", and a terminate() holds
    /// for that run. Harmless to leave out; then both begin with run().
    void expect_run();

    /// Takes one expect_run() back: no thread could be had for it. Without others the status is "finished".
    void withdraw_run();

    /// The status number (STATUS). Callable from any thread at any time. With `wait_milliseconds` above 0 it waits at
    /// most that long for the end of a run under way.
    unsigned long get_process_status(unsigned long wait_milliseconds) const;

    /// Ends all runs under way: asks the command and its children first (SIGTERM), and kills what is left after
    /// KILL_DELAY_MILLISECONDS, provided that process_line() returns. Runs that have no process yet get none. Returns
    /// at once; harmless where nothing runs. A non-zero `exit_code` replaces the one that run() stores.
    void terminate(THR_PROCESS_EXIT_CODE exit_code);

    /// Output of the last run with `keep_output`, after its end.
    std::string get_output() const;

    /// Why the last run could not be started, for the user ("nosuch: No such file or directory"); empty where it could.
    std::string get_start_error() const;

protected:
    /// Receives raw output as it comes, on the thread of run(). This class cuts it into lines and calls
    /// process_line(); an override that does not call it takes the output as it is. What it throws, or process_line()
    /// or is_stopped(), kills the command and comes out of run().
    virtual void parse_output(gsl::span<char> output);

    /// Receives one line without its line end ("\n" or "\r\n"), whatever else is in it, NUL characters included; the
    /// last one also where the line end is missing. Does nothing here.
    virtual void process_line(const std::string& line);

    /// Asked while output is awaited, at least ten times a second, on the thread of run(): true ends the command as
    /// terminate() does. Always false here.
    virtual bool is_stopped();

private:
    struct IMPL;
    std::shared_ptr<IMPL> m_impl;
};
