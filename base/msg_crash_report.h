#pragma once

#include "base_export.h"

#include <string>
#include <vector>

/// What is known of a crash: one record per process, as the crash report shows and sends it.
struct MSG_CRASH_RECORD
{
    std::string error_text;                 ///< text of the internal error, or the name of the fatal signal
    std::string tag;                        ///< library that reported it; empty for a signal
    std::string file;                       ///< source file's name; empty for a signal
    int line = 0;                           ///< line in it
    std::string executable;                 ///< file name of the program
    std::vector<std::string> arguments;     ///< its command line
    std::string comment;                    ///< what the user wrote
    std::string platform;                   ///< "linux64"
    std::string os_name;                    ///< "Debian GNU/Linux"
    std::string os_version;                 ///< "12 (bookworm)"
    int address_bits = 0;                   ///< 64
    std::string version;                    ///< of the product
    std::string build;                      ///< number of the build
    std::string edition;                    ///< kind of the installation
    std::string time;                       ///< ISO 8601, UTC
    std::vector<std::string> backtrace;     ///< innermost first: "function at file:line" or "module+0x1234"
    std::vector<std::string> debug_records; ///< the last debug messages, oldest first
};

/// Collects and keeps the crash record. One object per process. The record is a JSON file in the folder named by the
/// configuration text "crash_report_folder", or else in "norvane_crash_reports" below the user's profile folder.
class TOLV_BASE_EXPORT MSG_CRASH_REPORT_MANAGER
{
public:
    static MSG_CRASH_REPORT_MANAGER* get_crash_report_manager();

    /// Fills the record for an error at this place of the program, with the backtrace of the calling thread.
    void collect(const std::string& error_text, const std::string& tag, const std::string& file, int line);

    /// The record as it stands. Before any collect() it holds the facts of the system only.
    const MSG_CRASH_RECORD& get_record() const;

    /// Whether the crash happened in another process, which handed its record over by a file (set_crash_from_ipc()).
    bool get_crash_from_ipc() const;
    /// Takes the record of another process from its file. False where it is missing or no crash record.
    bool set_crash_from_ipc(const std::string& record_file);

    /// Builds the JSON text of the record anew and returns it.
    std::string build_json_object_from_crash_report();

    /// Puts the user's words into the record.
    void set_crash_comment(const std::string& comment);

    /// Whether the record is written when the process ends; on at first, except with the switch "no_crash_report".
    void set_crash_report_generation(bool generate);
    bool get_crash_report_generation() const;

    /// Writes the record to its file where generation is on; returns the file's path, or an empty text.
    std::string write_crash_report();

    /// Puts the comment into a handed-over record and writes it to the folder of reports that wait to be sent.
    /// Returns whether it could be written.
    bool update_comment_and_send_crash_report(const std::string& comment);

    /// Removes a handed-over record's file.
    void remove_crash_report();

    /// Writes the record for SIGSEGV, SIGBUS, SIGILL, SIGFPE and SIGABRT, then lets the signal take its course.
    static void arm_fatal_signals();
    static void disarm_fatal_signals();

private:
    MSG_CRASH_REPORT_MANAGER();
    ~MSG_CRASH_REPORT_MANAGER();
    struct IMPL;
    IMPL* m_impl;
};
