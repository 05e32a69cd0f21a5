#include "msg_crash_record_p.h"

#include "cfg.h"
#include "gen.h"
#include "msg_fixed_text_p.h"
#include "msg_utf8_p.h"
#include "ver.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <cstring>
#include <fstream>
#include <iterator>
#include <limits>
#include <map>

namespace
{
constexpr char FORMAT[] = "norvane_crash_record";
constexpr int FORMAT_VERSION = 1;

/// The members that are texts, in the order of the file.
struct TEXT_MEMBER
{
    const char* key;
    std::string MSG_CRASH_RECORD::*member;
};
constexpr TEXT_MEMBER TEXT_MEMBERS[] = {
    {"error_text", &MSG_CRASH_RECORD::error_text},
    {"tag", &MSG_CRASH_RECORD::tag},
    {"file", &MSG_CRASH_RECORD::file},
    {"executable", &MSG_CRASH_RECORD::executable},
    {"comment", &MSG_CRASH_RECORD::comment},
    {"platform", &MSG_CRASH_RECORD::platform},
    {"os_name", &MSG_CRASH_RECORD::os_name},
    {"os_version", &MSG_CRASH_RECORD::os_version},
    {"version", &MSG_CRASH_RECORD::version},
    {"build", &MSG_CRASH_RECORD::build},
    {"edition", &MSG_CRASH_RECORD::edition},
    {"time", &MSG_CRASH_RECORD::time},
};

struct NUMBER_MEMBER
{
    const char* key;
    int MSG_CRASH_RECORD::*member;
};
constexpr NUMBER_MEMBER NUMBER_MEMBERS[] = {
    {"line", &MSG_CRASH_RECORD::line},
    {"address_bits", &MSG_CRASH_RECORD::address_bits},
};

struct ARRAY_MEMBER
{
    const char* key;
    std::vector<std::string> MSG_CRASH_RECORD::*member;
};
constexpr ARRAY_MEMBER ARGUMENTS = {"arguments", &MSG_CRASH_RECORD::arguments};
constexpr ARRAY_MEMBER BACKTRACE = {"backtrace", &MSG_CRASH_RECORD::backtrace};
constexpr ARRAY_MEMBER DEBUG_RECORDS = {"debug_records", &MSG_CRASH_RECORD::debug_records};

void write_array(MSG_CRASH_JSON_WRITER& writer, const MSG_CRASH_RECORD& record, const ARRAY_MEMBER& array)
{
    writer.begin_array(array.key);
    for (const std::string& text : record.*array.member)
        writer.add_element(text.data(), text.size());
    writer.end_array();
}

bool read_text(const QJsonObject& object, const TEXT_MEMBER& text, MSG_CRASH_RECORD& record)
{
    const QJsonValue value = object.value(QLatin1String(text.key));
    if (value.isUndefined())
        return true;
    record.*text.member = value.toString().toStdString();
    return value.isString();
}

bool read_number(const QJsonObject& object, const NUMBER_MEMBER& number, MSG_CRASH_RECORD& record)
{
    const QJsonValue value = object.value(QLatin1String(number.key));
    if (value.isUndefined())
        return true;
    const double exact = value.toDouble(0.5);
    if (exact != std::floor(exact) || std::fabs(exact) > std::numeric_limits<int>::max())
        return false;
    record.*number.member = static_cast<int>(exact);
    return true;
}

bool read_array(const QJsonObject& object, const ARRAY_MEMBER& array, MSG_CRASH_RECORD& record)
{
    const QJsonValue value = object.value(QLatin1String(array.key));
    if (value.isUndefined())
        return true;
    bool are_all_texts = value.isArray();
    for (const QJsonValue element : value.toArray())
    {
        are_all_texts = are_all_texts && element.isString();
        (record.*array.member).push_back(element.toString().toStdString());
    }
    return are_all_texts;
}

std::vector<std::string>& stored_arguments()
{
    static auto* arguments = new std::vector<std::string>;
    return *arguments;
}

std::vector<std::string> read_system_arguments()
{
    std::ifstream file("/proc/self/cmdline", std::ios::binary);
    std::vector<std::string> arguments;
    for (std::string argument; std::getline(file, argument, '\0');)
        arguments.push_back(argument);
    return arguments;
}

/// The assignments of the system's description of itself.
std::map<std::string, std::string> read_os_release()
{
    std::map<std::string, std::string> values;
    std::ifstream file("/etc/os-release");
    for (std::string line; std::getline(file, line);)
    {
        const std::size_t equals = line.find('=');
        if (equals == std::string::npos)
            continue;
        std::string value = line.substr(equals + 1);
        if (value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front())
            value = value.substr(1, value.size() - 2);
        values[line.substr(0, equals)] = value;
    }
    return values;
}

/// A value of it, read once; an empty text where it has none.
std::string get_os_release_value(const std::string& key)
{
    static const auto* values = new std::map<std::string, std::string>(read_os_release());
    const auto found = values->find(key);
    return found != values->end() ? found->second : std::string();
}
} // namespace

MSG_CRASH_JSON_WRITER::MSG_CRASH_JSON_WRITER(SINK sink, void* context) : m_sink(sink), m_context(context)
{
}

void MSG_CRASH_JSON_WRITER::begin_object()
{
    put("{");
}

void MSG_CRASH_JSON_WRITER::end_object()
{
    put("\n}\n");
}

void MSG_CRASH_JSON_WRITER::add_text(const char* key, const char* text, std::size_t length)
{
    put_key(key);
    put_string(text, length);
}

void MSG_CRASH_JSON_WRITER::add_number(const char* key, int number)
{
    put_key(key);
    MSG_FIXED_TEXT digits;
    if (number < 0)
        digits.append('-');
    digits.append_number(static_cast<unsigned long long>(std::abs(static_cast<long long>(number))));
    put(digits.get());
}

void MSG_CRASH_JSON_WRITER::begin_array(const char* key)
{
    put_key(key);
    put("[");
    m_is_first_element = true;
}

void MSG_CRASH_JSON_WRITER::add_element(const char* text, std::size_t length)
{
    put(m_is_first_element ? "\n    " : ",\n    ");
    m_is_first_element = false;
    put_string(text, length);
}

void MSG_CRASH_JSON_WRITER::end_array()
{
    put(m_is_first_element ? "]" : "\n  ]");
}

void MSG_CRASH_JSON_WRITER::put(const char* text)
{
    m_sink(m_context, text, std::strlen(text));
}

void MSG_CRASH_JSON_WRITER::put_string(const char* text, std::size_t length)
{
    put("\"");
    for (std::size_t i = 0; i < length;)
    {
        const std::size_t size = msg_get_utf8_length(text + i, length - i);
        if (size == 0)
            put("\xEF\xBF\xBD");
        else if (static_cast<unsigned char>(text[i]) < 0x20)
        {
            MSG_FIXED_TEXT escape;
            escape.append("\\u");
            escape.append_number(static_cast<unsigned char>(text[i]), 16, 4);
            put(escape.get());
        }
        else
        {
            if (text[i] == '"' || text[i] == '\\')
                put("\\");
            m_sink(m_context, text + i, size);
        }
        i += size == 0 ? 1 : size;
    }
    put("\"");
}

void MSG_CRASH_JSON_WRITER::put_key(const char* key)
{
    put(m_is_first ? "\n  " : ",\n  ");
    m_is_first = false;
    put_string(key, std::strlen(key));
    put(": ");
}

void msg_crash_write_facts(MSG_CRASH_JSON_WRITER& writer, const MSG_CRASH_RECORD& record)
{
    writer.add_text("format", FORMAT, sizeof FORMAT - 1);
    writer.add_number("format_version", FORMAT_VERSION);
    for (const TEXT_MEMBER& text : TEXT_MEMBERS)
    {
        const std::string& value = record.*text.member;
        writer.add_text(text.key, value.data(), value.size());
    }
    for (const NUMBER_MEMBER& number : NUMBER_MEMBERS)
        writer.add_number(number.key, record.*number.member);
    write_array(writer, record, ARGUMENTS);
}

void msg_crash_write_record(MSG_CRASH_JSON_WRITER& writer, const MSG_CRASH_RECORD& record)
{
    writer.begin_object();
    msg_crash_write_facts(writer, record);
    write_array(writer, record, BACKTRACE);
    write_array(writer, record, DEBUG_RECORDS);
    writer.end_object();
}

std::string msg_crash_record_to_json(const MSG_CRASH_RECORD& record)
{
    std::string json;
    MSG_CRASH_JSON_WRITER writer([](void* context, const char* bytes, std::size_t count)
                                 { static_cast<std::string*>(context)->append(bytes, count); },
                                 &json);
    msg_crash_write_record(writer, record);
    return json;
}

bool msg_crash_record_from_json(const std::string& json, MSG_CRASH_RECORD* record)
{
    const QJsonObject object = QJsonDocument::fromJson(QByteArray::fromStdString(json)).object();
    if (object.value(QLatin1String("format")) != QLatin1String(FORMAT) ||
        object.value(QLatin1String("format_version")) != FORMAT_VERSION ||
        !object.value(QLatin1String("error_text")).isString())
        return false;

    MSG_CRASH_RECORD read;
    for (const TEXT_MEMBER& text : TEXT_MEMBERS)
    {
        if (!read_text(object, text, read))
            return false;
    }
    for (const NUMBER_MEMBER& number : NUMBER_MEMBERS)
    {
        if (!read_number(object, number, read))
            return false;
    }
    for (const ARRAY_MEMBER& array : {ARGUMENTS, BACKTRACE, DEBUG_RECORDS})
    {
        if (!read_array(object, array, read))
            return false;
    }
    *record = read;
    return true;
}

void msg_crash_set_arguments(int argc, const char** argv)
{
    stored_arguments().clear();
    for (int i = 0; argv != nullptr && i < argc && argv[i] != nullptr; ++i)
        stored_arguments().emplace_back(argv[i]);
}

MSG_CRASH_RECORD msg_crash_make_system_record()
{
    MSG_CRASH_RECORD record;
    record.executable = gen_get_module_filename();
    record.arguments = stored_arguments().empty() ? read_system_arguments() : stored_arguments();
    record.os_name = get_os_release_value("NAME");
    if (record.os_name.empty())
        record.os_name = "Linux";
    record.os_version = get_os_release_value("VERSION");
    if (record.os_version.empty())
        record.os_version = get_os_release_value("VERSION_ID");
    record.address_bits = static_cast<int>(sizeof(void*)) * 8;
    record.platform = "linux" + std::to_string(record.address_bits);
    record.version = ver_get_version_number();
    record.build = std::to_string(ver_get_build_number());
    record.edition = ver_get_install_type_string();
    return record;
}

std::string msg_crash_get_folder()
{
    const std::string folder = cfg_get_string_value("crash_report_folder");
    return folder.empty() ? gen_get_user_profile_directory() + "/norvane_crash_reports" : folder;
}
