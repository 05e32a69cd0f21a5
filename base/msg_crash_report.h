#pragma once

#include "base_export.h"

#include <string>
#include <vector>

/// What is known of a crash: one record per process, as the crash report shows and sends it.
struct MSG_CRASH_RECORD
{
    std::string error_text;             ///< text of the internal error, or the name of the fatal signal
    std::string tag;                    ///< library that reported it; empty for a signal
    std::string file;                   ///< source file's name; empty for a signal
    int line = 0;                       ///< line in it
    std::string executable;             ///< file name of the program
    std::vector<std::string> arguments; ///< its command line
    std::string comment;                ///< what the user wrote
    std::string platform;               ///< "linux64"
    std::string os_name;                ///< "Debian GNU/Linux"
    std::string os_version;             ///< "12 (bookworm)"
    int address_bits = 0;               ///< 64
    std::string version;                ///< of the product
    std::string build;                  ///< number of the build
    std::string edition;                ///< kind of the installation
    std::string time;                   ///< ISO 8601, UTC
    /// Innermost first: "function at file:line", "function (module+0x1234)" or "module+0x1234"
    std::vector<std::string> backtrace;
    std::vector<std::string> debug_records; ///< the last debug messages, oldest first: "key: text"
};

/// Collects and keeps the crash record. One object per process; its operations may be called on any thread.
///
/// A record is a JSON file "crash_<time>_<process>_<n>.json" in the folder named by the configuration text
/// "crash_report_folder", or else in "norvane_crash_reports" below the user's profile folder. The folder is made where
/// it is missing. Each crash has a file of its own, which appears under its name when it is complete. A fatal signal
/// writes its record from the signal handler; the folder and the facts of the system are those of arm_fatal_signals().
///
/// A tool that reports crashes of another process hands that one's file to set_crash_from_ipc(), shows the record, and
/// ends with update_comment_and_send_crash_report() or remove_crash_report().
class TOLV_BASE_EXPORT MSG_CRASH_REPORT_MANAGER
{
public:
    /// The one object, made at the first call; it lives as long as the process.
    static MSG_CRASH_REPORT_MANAGER* get_crash_report_manager();

    /// Fills the record for an error at this place of the program, with the backtrace of the calling thread from the
    /// function outwards that `return_address` leads back to; by default the caller. It replaces an earlier or a
    /// handed-over record; the comment is empty again.
    void collect(const std::string& error_text, const std::string& tag, const std::string& file, int line,
                 const void* return_address = nullptr);

    /// The record as it stands. Before any collect() it holds the facts of the system only. The reference is for the
    /// thread that collects or hands over; both replace what it refers to.
    const MSG_CRASH_RECORD& get_record() const;

    /// Whether the record is that of another process, handed over by a file (set_crash_from_ipc()).
    bool get_crash_from_ipc() const;
    /// Takes the record of another process from its file. False, with everything as it was, where the file is missing,
    /// damaged, no crash record, or larger than 16 MB.
    bool set_crash_from_ipc(const std::string& record_file);

    /// Builds the JSON text of the record anew and returns it.
    std::string build_json_object_from_crash_report();

    /// Puts the user's words into the record.
    void set_crash_comment(const std::string& comment);

    /// Whether records are written; on at first, except with the configuration switch "no_crash_report".
    void set_crash_report_generation(bool generate);
    bool get_crash_report_generation() const;

    /// Writes this process's record to its file where generation is on, and returns the file's path. A later call
    /// replaces the same file, so that it takes up the comment. With generation off a file that was written is removed.
    /// An empty text is returned where no file is left, also without a crash and for a handed-over record.
    std::string write_crash_report();

    /// Puts the comment into a handed-over record and moves it into "to_send" below the folder of the records, where
    /// the reports wait for their delivery. Returns whether it could be written; if not, the handed-over file stays.
    bool update_comment_and_send_crash_report(const std::string& comment);

    /// Removes a handed-over record's file. The record itself stays readable.
    void remove_crash_report();

    /// Has SIGSEGV, SIGBUS, SIGILL, SIGFPE and SIGABRT write a record before they take their course; the process still
    /// ends by the same signal, or goes to the handler that was set before. An overflow of the stack is recorded on
    /// this thread and on those inside thr_thread_wrapper(). A record that cannot be finished within the seconds of the
    /// configuration number "crash_report_seconds" (20) does not hold up the end. A second call changes nothing.
    static void arm_fatal_signals();
    /// Restores the handlers that were there before; on the thread that armed.
    static void disarm_fatal_signals();

private:
    MSG_CRASH_REPORT_MANAGER();
    ~MSG_CRASH_REPORT_MANAGER();
    struct IMPL;
    IMPL* m_impl;
};
