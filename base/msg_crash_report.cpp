#include "msg_crash_report.h"

#include "cfg.h"
#include "msg_backtrace_p.h"
#include "msg_crash_file_p.h"
#include "msg_crash_record_p.h"
#include "msg_debug_p.h"
#include "msg_utc_time_p.h"

#include <unistd.h>

#include <atomic>
#include <ctime>
#include <fstream>
#include <iterator>
#include <mutex>

namespace
{
constexpr std::size_t LARGEST_RECORD_FILE = std::size_t{16} * 1024 * 1024;

std::string get_time()
{
    MSG_FIXED_TEXT text;
    msg_append_utc_time(text, std::time(nullptr));
    return text.get();
}

/// Reading the debug information is costly in time and memory: one thread at a time.
std::vector<std::string> get_frames(std::uintptr_t first_address)
{
    static auto* mutex = new std::mutex;
    const std::lock_guard<std::mutex> lock(*mutex);
    MSG_BACKTRACE backtrace;
    msg_take_backtrace(first_address, &backtrace);
    std::vector<std::string> frames;
    const auto add = [](void* context, const char* text, std::size_t length)
    { static_cast<std::vector<std::string>*>(context)->emplace_back(text, length); };
    msg_visit_frames(backtrace, add, &frames);
    return frames;
}

void write_content(void* record, MSG_CRASH_JSON_WRITER& writer)
{
    msg_crash_write_record(writer, *static_cast<const MSG_CRASH_RECORD*>(record));
}

/// Writes a record as a new file below a folder; returns its path, or an empty text.
std::string write_new_file(const std::string& folder, MSG_CRASH_RECORD& record)
{
    MSG_FIXED_TEXT path;
    const bool is_written =
        msg_crash_write_new_file(folder.c_str(), record.time.c_str(), write_content, &record, &path);
    return is_written ? path.get() : std::string();
}

/// The whole of a file, or nothing where it cannot be read or is too large.
std::string read_record_file(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string content(LARGEST_RECORD_FILE + 1, '\0');
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    const auto count = static_cast<std::size_t>(file.gcount());
    content.resize(count <= LARGEST_RECORD_FILE ? count : 0);
    return content;
}
} // namespace

struct MSG_CRASH_REPORT_MANAGER::IMPL
{
    mutable std::mutex mutex;
    MSG_CRASH_RECORD record;
    bool has_crash = false;   ///< of this process
    std::string written_file; ///< of this process's record
    bool is_from_ipc = false;
    std::string ipc_file; ///< of the handed-over record, empty once it is gone
    std::atomic<bool> generates{true};
};

MSG_CRASH_REPORT_MANAGER* MSG_CRASH_REPORT_MANAGER::get_crash_report_manager()
{
    static auto* manager = new MSG_CRASH_REPORT_MANAGER;
    return manager;
}

MSG_CRASH_REPORT_MANAGER::MSG_CRASH_REPORT_MANAGER() : m_impl(new IMPL)
{
    m_impl->record = msg_crash_make_system_record();
    m_impl->generates = !cfg_is_on("no_crash_report");
}

MSG_CRASH_REPORT_MANAGER::~MSG_CRASH_REPORT_MANAGER()
{
    delete m_impl;
}

void MSG_CRASH_REPORT_MANAGER::collect(const std::string& error_text, const std::string& tag, const std::string& file,
                                       int line, const void* return_address)
{
    if (return_address == nullptr)
        return_address = __builtin_return_address(0);
    MSG_CRASH_RECORD record = msg_crash_make_system_record();
    record.error_text = error_text;
    record.tag = tag;
    record.file = file;
    record.line = line;
    record.time = get_time();
    record.backtrace = get_frames(reinterpret_cast<std::uintptr_t>(return_address));
    for (const MSG_DEBUG_RECORD& debug_record : msg_get_debug_records())
        record.debug_records.push_back(debug_record.key + ": " + debug_record.text);

    const std::lock_guard<std::mutex> lock(m_impl->mutex);
    m_impl->record = std::move(record);
    m_impl->has_crash = true;
    m_impl->written_file.clear();
    m_impl->is_from_ipc = false;
    m_impl->ipc_file.clear();
}

const MSG_CRASH_RECORD& MSG_CRASH_REPORT_MANAGER::get_record() const
{
    return m_impl->record;
}

bool MSG_CRASH_REPORT_MANAGER::get_crash_from_ipc() const
{
    const std::lock_guard<std::mutex> lock(m_impl->mutex);
    return m_impl->is_from_ipc;
}

bool MSG_CRASH_REPORT_MANAGER::set_crash_from_ipc(const std::string& record_file)
{
    MSG_CRASH_RECORD record;
    if (!msg_crash_record_from_json(read_record_file(record_file), &record))
        return false;
    const std::lock_guard<std::mutex> lock(m_impl->mutex);
    m_impl->record = std::move(record);
    m_impl->has_crash = false;
    m_impl->written_file.clear();
    m_impl->is_from_ipc = true;
    m_impl->ipc_file = record_file;
    return true;
}

std::string MSG_CRASH_REPORT_MANAGER::build_json_object_from_crash_report()
{
    const std::lock_guard<std::mutex> lock(m_impl->mutex);
    return msg_crash_record_to_json(m_impl->record);
}

void MSG_CRASH_REPORT_MANAGER::set_crash_comment(const std::string& comment)
{
    const std::lock_guard<std::mutex> lock(m_impl->mutex);
    m_impl->record.comment = comment;
}

void MSG_CRASH_REPORT_MANAGER::set_crash_report_generation(bool generate)
{
    m_impl->generates = generate;
}

bool MSG_CRASH_REPORT_MANAGER::get_crash_report_generation() const
{
    return m_impl->generates;
}

std::string MSG_CRASH_REPORT_MANAGER::write_crash_report()
{
    const std::lock_guard<std::mutex> lock(m_impl->mutex);
    if (!m_impl->has_crash)
        return std::string();
    std::string& file = m_impl->written_file;
    if (!m_impl->generates)
    {
        if (!file.empty())
            unlink(file.c_str());
        file.clear();
    }
    else if (file.empty())
        file = write_new_file(msg_crash_get_folder(), m_impl->record);
    else
        msg_crash_replace_file(file.c_str(), write_content, &m_impl->record);
    return file;
}

bool MSG_CRASH_REPORT_MANAGER::update_comment_and_send_crash_report(const std::string& comment)
{
    const std::lock_guard<std::mutex> lock(m_impl->mutex);
    if (!m_impl->is_from_ipc)
        return false;
    m_impl->record.comment = comment;
    if (write_new_file(msg_crash_get_folder() + "/to_send", m_impl->record).empty())
        return false;
    if (!m_impl->ipc_file.empty())
        unlink(m_impl->ipc_file.c_str());
    m_impl->ipc_file.clear();
    return true;
}

void MSG_CRASH_REPORT_MANAGER::remove_crash_report()
{
    const std::lock_guard<std::mutex> lock(m_impl->mutex);
    if (!m_impl->ipc_file.empty())
        unlink(m_impl->ipc_file.c_str());
    m_impl->ipc_file.clear();
}
