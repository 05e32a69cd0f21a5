#include "msg_debug_p.h"

#include "cfg.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <mutex>
#include <utility>

namespace
{
/// The last records, in a ring. Never destroyed: code that runs at the very end of the process may still report.
struct DEBUG_STORE
{
    std::mutex mutex;
    std::array<MSG_DEBUG_RECORD, MSG_DEBUG_RECORD_COUNT> ring;
    std::size_t count = 0; ///< of records made since the last clearing
};

DEBUG_STORE& debug_store()
{
    static DEBUG_STORE* store = new DEBUG_STORE;
    return *store;
}

/// The kept records' positions are [first_position, count), modulo the size of the ring.
std::size_t first_position(const DEBUG_STORE& store)
{
    return store.count < MSG_DEBUG_RECORD_COUNT ? 0 : store.count - MSG_DEBUG_RECORD_COUNT;
}

/// Descriptor of the debug message file, -1 where there is none or it cannot be written. Opened once.
int debug_message_file()
{
    static const int file = []
    {
        const std::string path = cfg_get_string_value("debug_message_file");
        return path.empty() ? -1 : open(path.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    }();
    return file;
}

/// Appends the record as one piece, so that the lines of several threads and processes stay whole.
void write_to_file(const MSG_DEBUG_RECORD& record)
{
    const int file = debug_message_file();
    if (file < 0)
        return;
    const std::string line = record.key + ": " + record.text + "\n";
    [[maybe_unused]] const ssize_t written = write(file, line.data(), line.size());
}
} // namespace

void msg_add_debug_record(MSG_DEBUG_RECORD record)
{
    write_to_file(record);
    DEBUG_STORE& store = debug_store();
    {
        const std::lock_guard<std::mutex> lock(store.mutex);
        std::swap(store.ring[store.count % MSG_DEBUG_RECORD_COUNT], record);
        ++store.count;
    }
}

bool msg_try_visit_debug_records(void (*visit)(void* context, const MSG_DEBUG_RECORD& record), void* context)
{
    DEBUG_STORE& store = debug_store();
    const std::unique_lock<std::mutex> lock(store.mutex, std::try_to_lock);
    if (!lock.owns_lock())
        return false;
    for (std::size_t i = first_position(store); i < store.count; ++i)
        visit(context, store.ring[i % MSG_DEBUG_RECORD_COUNT]);
    return true;
}

void msg_local_vdebug(const char* key, const char* text, va_list)
{
    msg_add_debug_record({key != nullptr ? key : "", text != nullptr ? text : "", MSG_D_LEVEL_2});
}

std::vector<MSG_DEBUG_RECORD> msg_get_debug_records()
{
    DEBUG_STORE& store = debug_store();
    const std::lock_guard<std::mutex> lock(store.mutex);
    std::vector<MSG_DEBUG_RECORD> records;
    for (std::size_t i = first_position(store); i < store.count; ++i)
        records.push_back(store.ring[i % MSG_DEBUG_RECORD_COUNT]);
    return records;
}

void msg_clear_debug_records()
{
    DEBUG_STORE& store = debug_store();
    const std::lock_guard<std::mutex> lock(store.mutex);
    store.ring.fill(MSG_DEBUG_RECORD());
    store.count = 0;
}
