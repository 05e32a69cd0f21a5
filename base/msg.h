#pragma once

#include "base_export.h"

#include <atomic>
#include <cstdarg>
#include <memory>
#include <string>
#include <vector>

/// The message system: message objects, debug records, displays and reports. Prompts stand in msg_prompt.h, broken
/// invariants in msg_internal_error.h, the crash record in msg_crash_report.h.

class MSG_PROMPT;

/// A message: a text, an identifier and a number. The creator owns it. Texts are UTF-8. One object is used by one
/// thread at a time.
class TOLV_BASE_EXPORT MSG_BASE
{
public:
    MSG_BASE();
    virtual ~MSG_BASE();
    MSG_BASE(const MSG_BASE&) = delete;
    MSG_BASE& operator=(const MSG_BASE&) = delete;

    /// Fills the text. `format` is the text, optionally followed by "/" and an identifier of capital letters, digits
    /// and "_", divided at the last "/" of the format. The insert `%n!s!` stands for the n-th argument, a `const char*`
    /// (null gives nothing), `%n!d!` and `%n!u!` for an int and an unsigned; n is 1 to 9. Arguments are taken in the
    /// order of their numbers, wherever and however often the inserts stand; the first insert of a number decides its
    /// kind. "%%" is a percent sign; any other "%" stands for itself. What is inserted stays as it is, "%" and "/"
    /// included. A null format gives an empty text.
    void fill_args(const char* format, ...);
    void fill_args_v(const char* format, va_list arguments);

    /// Takes a text as it is, with no inserts and no identifier.
    void set_text(const std::string& text);

    /// The filled text, without the identifier.
    const std::string& get_text() const;
    /// The identifier behind the last "/", such as "COTOLV_TOLV_FILE_EXISTS"; may be empty.
    const std::string& get_identifier() const;
    /// The message number; 0 for none.
    unsigned int get_number() const;
    void set_number(unsigned int number);

private:
    std::string m_text;
    std::string m_identifier;
    unsigned int m_number = 0;
};

/// A message that is posted to the message window and the log, with messages below it.
class TOLV_BASE_EXPORT MSG_POST : public MSG_BASE
{
public:
    /// How bad it is; get_display_text() names it.
    enum SEVERITY
    {
        SEVERITY_INFO,
        SEVERITY_WARNING,
        SEVERITY_ERROR
    };
    explicit MSG_POST(SEVERITY severity = SEVERITY_INFO);
    ~MSG_POST() override;

    /// As given to the constructor.
    SEVERITY get_severity() const;
    /// One line for display: three blanks for each step of `indent`, "Info: ", "Warning: " or "Error: ", with the
    /// number in parentheses where there is one ("Error (189000): "), and the text, with blanks in place of its line
    /// ends.
    std::string get_display_text(unsigned int indent) const;
    /// Adds a message below this one and takes ownership; null is ignored.
    void add_sub_post(std::unique_ptr<MSG_POST> post);
    const std::vector<std::unique_ptr<MSG_POST>>& get_sub_posts() const;
    /// Hands the message to the display in force, also outside msg_exe_init() and msg_exe_fini().
    void post();

private:
    SEVERITY m_severity;
    std::vector<std::unique_ptr<MSG_POST>> m_sub_posts;
};

/// Level of a debug message; the lower, the more important. The usual one is 2.
enum MSG_D_LEVEL
{
    MSG_D_LEVEL_0 = 0,
    MSG_D_LEVEL_1 = 1,
    MSG_D_LEVEL_2 = 2,
    MSG_D_LEVEL_3 = 3
};

/// One debug record: a text under a key.
struct MSG_DEBUG_RECORD
{
    std::string key;
    std::string text;
    int level = MSG_D_LEVEL_2;
};

/// A debug message of a library.
class TOLV_BASE_EXPORT MSG_D : public MSG_BASE
{
public:
    MSG_D(const char* tag, MSG_D_LEVEL level);
    ~MSG_D() override;

    /// Tag of the library and level, as given to the constructor.
    const std::string& get_tag() const;
    MSG_D_LEVEL get_level() const;
    /// Fills the text as printf does. A null format gives the empty text.
    void format(const char* format, ...) __attribute__((format(printf, 2, 3)));
    void format_v(const char* format, va_list arguments);
    /// Makes the debug record, with the tag as its key.
    void send() const;

    /// Whether debug messages under `key` (null: at all) are wanted: the configuration switch "debug_messages_<key>"
    /// or, where that is not set and for null, "debug_messages". Makers of costly messages ask first; what is sent is
    /// recorded in any case.
    static bool debug_messages_enabled(const char* key);

private:
    std::string m_tag;
    MSG_D_LEVEL m_level;
};

/// Makes a debug record of `text` under `key`, at level 2; null counts as empty. The text is taken as it stands: it is
/// not a format, and `arguments` are not read; they are there for services that forward them. Records are kept in
/// memory (the last 256), and appended as lines "key: text" to the file named by the configuration text
/// "debug_message_file" where there is one; that text is read once, at the first record. A file that cannot be written
/// is passed over. Any thread.
TOLV_BASE_EXPORT void msg_local_vdebug(const char* key, const char* text, va_list arguments);

/// The kept records, oldest first.
TOLV_BASE_EXPORT std::vector<MSG_DEBUG_RECORD> msg_get_debug_records();
TOLV_BASE_EXPORT void msg_clear_debug_records();

/// Where messages go: a tool installs its own in a report.
class TOLV_BASE_EXPORT MSG_DISPLAY
{
public:
    virtual ~MSG_DISPLAY();
    /// Shows a posted message and those below it.
    virtual void post_display(MSG_POST* post, unsigned int indent) = 0;
    /// Asks the user; returns 1 OK, 2 Cancel, 3 Abort, 4 Retry, 5 Ignore, 6 Yes, 7 No. Any thread.
    virtual int prompt_display(MSG_PROMPT* prompt) = 0;
    /// Tells of a broken invariant, just before the process ends. Any thread.
    virtual void internal_error_display(std::string text) = 0;

    /// Suppresses all boxes: prompts take their answer without asking. Set by batch tools and tests.
    static bool m_no_msg_box;
};

/// A destination of messages with its display. Any thread.
class TOLV_BASE_EXPORT MSG_REPORT
{
public:
    MSG_REPORT();
    MSG_REPORT(const MSG_REPORT&) = delete;
    MSG_REPORT& operator=(const MSG_REPORT&) = delete;

    /// The display; may be null. Not owned.
    MSG_DISPLAY* get_display() const;
    /// Sets the display, null for none. The caller keeps it and takes it out before it dies.
    void set_display(MSG_DISPLAY* display);
    /// Hands a post to the display; nothing without one or for null.
    void post(MSG_POST* post);

private:
    std::atomic<MSG_DISPLAY*> m_display{nullptr};
};

/// The process's report, between msg_exe_init() and msg_exe_fini(); null outside.
TOLV_BASE_EXPORT MSG_REPORT* msg_get_default_report();

/// The report that always exists. Its display writes to standard error: posts as lines, internal errors as they are. It
/// asks nobody: a prompt gets the answer of its default button, or 1 with `MSG_DISPLAY::m_no_msg_box`.
TOLV_BASE_EXPORT MSG_REPORT* msg_get_basic_report();

/// The display in force: that of the default report, or else that of the basic report. Never null.
TOLV_BASE_EXPORT MSG_DISPLAY* msg_get_display_in_force();

/// Begins messaging for a process: makes the default report, with no display, begins the Tcl service, arms the crash
/// record for fatal signals. A second call changes nothing; after msg_exe_fini() a new begin is allowed. `argv` is
/// copied into the crash record; it may be null. Main thread.
TOLV_BASE_EXPORT void msg_exe_init(int argc, const char** argv);

/// Ends it: the default report goes, the Tcl service ends (waiting posts get an error), the signals are disarmed. What
/// is posted later goes to the basic report. Harmless without a begin. Main thread.
TOLV_BASE_EXPORT void msg_exe_fini();
