#pragma once

#include "msg_crash_report.h"

#include <cstddef>

/// The crash record as JSON. Writing allocates nothing, so that the handler of a fatal signal writes by the same code.

/// Writes one flat JSON object of texts, numbers and arrays of texts, piece by piece. Bytes that are no UTF-8 become
/// U+FFFD.
class MSG_CRASH_JSON_WRITER
{
public:
    using SINK = void (*)(void* context, const char* bytes, std::size_t count);
    MSG_CRASH_JSON_WRITER(SINK sink, void* context);

    void begin_object();
    void end_object();
    void add_text(const char* key, const char* text, std::size_t length);
    void add_number(const char* key, int number);
    void begin_array(const char* key);
    void add_element(const char* text, std::size_t length);
    void end_array();

private:
    void put(const char* text);
    void put_string(const char* text, std::size_t length);
    void put_key(const char* key);

    SINK m_sink;
    void* m_context;
    bool m_is_first = true;         ///< of the object's members
    bool m_is_first_element = true; ///< of the array
};

/// Writes everything but the two long arrays, the backtrace and the debug records.
void msg_crash_write_facts(MSG_CRASH_JSON_WRITER& writer, const MSG_CRASH_RECORD& record);

/// Writes the whole record as a JSON text.
void msg_crash_write_record(MSG_CRASH_JSON_WRITER& writer, const MSG_CRASH_RECORD& record);
std::string msg_crash_record_to_json(const MSG_CRASH_RECORD& record);

/// Reads a record. False, with `*record` as it was, for a text that is no crash record: no JSON, another format or
/// version, no error text, or a member of the wrong type. A missing member keeps its default, an unknown one is
/// ignored.
bool msg_crash_record_from_json(const std::string& json, MSG_CRASH_RECORD* record);

/// The command line that msg_exe_init() was given; without one, the system's own.
void msg_crash_set_arguments(int argc, const char** argv);

/// A record with the facts of the program and the system, and no error.
MSG_CRASH_RECORD msg_crash_make_system_record();

/// The folder of the records, which may not exist yet.
std::string msg_crash_get_folder();
