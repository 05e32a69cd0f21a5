#include "cfg.h"

#include "gen.h"

#include <atomic>
#include <charconv>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <map>
#include <mutex>
#include <optional>
#include <shared_mutex>
#include <string_view>
#include <sys/stat.h>
#include <system_error>

namespace
{
using VALUE_MAP = std::map<std::string, std::string, std::less<>>;

constexpr off_t max_file_bytes = off_t(16) * 1024 * 1024;
constexpr std::string_view own_section = "norvane";
constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n\v\f";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::string_view without_quotes(std::string_view text)
{
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"')
        return text.substr(1, text.size() - 2);
    return text;
}

/// Cuts the text before the next divider off the front of `*rest`.
std::string_view take_until(std::string_view* rest, char divider)
{
    const std::size_t end = rest->find(divider);
    const std::string_view piece = rest->substr(0, end);
    rest->remove_prefix(end == std::string_view::npos ? rest->size() : end + 1);
    return piece;
}

/// One `key = value`; nothing for what is none.
std::optional<std::pair<std::string_view, std::string_view>> read_assignment(std::string_view text)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos || text.find('\0') != std::string_view::npos)
        return std::nullopt;
    const std::string_view key = trimmed(text.substr(0, equals));
    if (key.empty())
        return std::nullopt;
    return std::make_pair(key, trimmed(text.substr(equals + 1)));
}

/// Content of the file; empty where it is none that could be a configuration. Asking for the kind first keeps a pipe
/// or a device from holding up the start.
std::string read_whole_file(const std::string& path)
{
    struct stat facts = {};
    if (stat(path.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode) || facts.st_size > max_file_bytes)
        return {};
    std::ifstream file(path, std::ios::binary);
    std::string content(static_cast<std::size_t>(facts.st_size), '\0');
    file.read(content.data(), static_cast<std::streamsize>(content.size()));
    content.resize(static_cast<std::size_t>(file.gcount()));
    return content;
}

/// What stands before the keys that follow a section line; nothing for a damaged line.
std::optional<std::string> read_section(std::string_view line)
{
    if (line.back() != ']')
        return std::nullopt;
    const std::string_view name = trimmed(line.substr(1, line.size() - 2));
    if (name.empty() || name.find('\0') != std::string_view::npos)
        return std::nullopt;
    return name == own_section ? std::string() : std::string(name) + "/";
}

void read_ini_text(std::string_view text, VALUE_MAP* values)
{
    if (text.substr(0, byte_order_mark.size()) == byte_order_mark)
        text.remove_prefix(byte_order_mark.size());
    std::optional<std::string> prefix = std::string();
    while (!text.empty())
    {
        const std::string_view line = trimmed(take_until(&text, '\n'));
        if (line.empty() || line.front() == ';' || line.front() == '#')
            continue;
        if (line.front() == '[')
            prefix = read_section(line);
        else if (const auto assignment = read_assignment(line); assignment && prefix)
            (*values)[*prefix + std::string(assignment->first)] = without_quotes(assignment->second);
    }
}

void read_environment_text(std::string_view text, VALUE_MAP* values)
{
    while (!text.empty())
    {
        if (const auto assignment = read_assignment(take_until(&text, ';')))
            (*values)[std::string(assignment->first)] = assignment->second;
    }
}

std::string get_file_path()
{
    const char* path = std::getenv("NORVANE_CFG_FILE");
    return path != nullptr && *path != '\0' ? path : gen_get_module_path() + "/norvane.ini";
}

VALUE_MAP* read_given_values()
{
    auto* values = new VALUE_MAP;
    read_ini_text(read_whole_file(get_file_path()), values);
    if (const char* text = std::getenv("NORVANE_CFG"))
        read_environment_text(text, values);
    return values;
}

/// What environment and file say. Never freed, as the destructors of other static objects may still ask.
const VALUE_MAP& given_values()
{
    static const VALUE_MAP* const values = read_given_values();
    return *values;
}

/// What the host set. The count spares the usual look-up the lock.
struct HOST_VALUES
{
    std::shared_mutex mutex;
    VALUE_MAP values;
    std::atomic<std::size_t> count{0};
};

HOST_VALUES& host_values()
{
    static auto* const values = new HOST_VALUES;
    return *values;
}

/// Returns what `read(text)` makes of the value in force, or `default_value` where none is set.
template <typename RESULT, typename READ>
RESULT look_up(std::string_view key, const RESULT& default_value, READ read)
{
    HOST_VALUES& host = host_values();
    if (host.count.load(std::memory_order_acquire) != 0)
    {
        const std::shared_lock<std::shared_mutex> lock(host.mutex);
        if (const auto found = host.values.find(key); found != host.values.end())
            return read(found->second);
    }
    const VALUE_MAP& given = given_values();
    const auto found = given.find(key);
    return found != given.end() ? read(found->second) : default_value;
}

/// An integer with its sign; `*is_out_of_range` tells that the text is one, but too large. Nothing for other texts.
std::optional<long long> read_integer(std::string_view text, bool* is_out_of_range)
{
    *is_out_of_range = false;
    const bool is_negative = !text.empty() && text.front() == '-';
    if (!text.empty() && (text.front() == '-' || text.front() == '+'))
        text.remove_prefix(1);
    int base = 10;
    if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X'))
    {
        base = 16;
        text.remove_prefix(2);
    }
    if (!text.empty() && text.front() == '-')
        return std::nullopt;
    long long number = 0;
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (result.ec == std::errc::invalid_argument || result.ptr != text.data() + text.size())
        return std::nullopt;
    *is_out_of_range = result.ec == std::errc::result_out_of_range;
    return is_negative ? -number : number;
}

bool is_same_word(std::string_view text, std::string_view lower_case_word)
{
    if (text.size() != lower_case_word.size())
        return false;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        const char c = text[i] >= 'A' && text[i] <= 'Z' ? static_cast<char>(text[i] - 'A' + 'a') : text[i];
        if (c != lower_case_word[i])
            return false;
    }
    return true;
}

bool read_switch(std::string_view text, bool default_value)
{
    text = trimmed(text);
    for (const std::string_view word : {"on", "true", "yes"})
        if (is_same_word(text, word))
            return true;
    for (const std::string_view word : {"", "off", "false", "no"})
        if (is_same_word(text, word))
            return false;
    bool is_out_of_range = false;
    const std::optional<long long> number = read_integer(text, &is_out_of_range);
    return number ? is_out_of_range || *number != 0 : default_value;
}

int read_int(std::string_view text, int default_value)
{
    bool is_out_of_range = false;
    const std::optional<long long> number = read_integer(trimmed(text), &is_out_of_range);
    if (!number || is_out_of_range || *number < std::numeric_limits<int>::min() ||
        *number > std::numeric_limits<int>::max())
        return default_value;
    return static_cast<int>(*number);
}

const char* ini_var_name(CFG_INI_VAR_ENUM variable)
{
    switch (variable)
    {
    case CFG_INI_VAR_DEVELOPER_INTERNAL_ERROR_FORM:
        return "developer_internal_error_form";
    case CFG_INI_VAR_SHOW_DIALOG_HELP_TOPIC:
        return "show_dialog_help_topic";
    case CFG_INI_VAR_LOG_USER_ACTIONS:
        return "log_user_actions";
    }
    return nullptr;
}
} // namespace

std::string cfg_get_ini_var_name(CFG_INI_VAR_ENUM variable)
{
    const char* name = ini_var_name(variable);
    return name != nullptr ? name : "";
}

bool cfg_is_on(const char* key, bool default_value)
{
    if (key == nullptr)
        return default_value;
    return look_up(key, default_value, [&](const std::string& text) { return read_switch(text, default_value); });
}

bool cfg_is_on(CFG_INI_VAR_ENUM variable, bool default_value)
{
    return cfg_is_on(ini_var_name(variable), default_value);
}

int cfg_get_int_value(const char* key, int default_value)
{
    if (key == nullptr)
        return default_value;
    return look_up(key, default_value, [&](const std::string& text) { return read_int(text, default_value); });
}

std::string cfg_get_string_value(const char* key, const std::string& default_value)
{
    if (key == nullptr)
        return default_value;
    return look_up(key, default_value, [](const std::string& text) { return text; });
}

void cfg_set_value(const std::string& key, const std::string& value)
{
    if (key.empty())
        return;
    HOST_VALUES& host = host_values();
    const std::lock_guard<std::shared_mutex> lock(host.mutex);
    host.values[key] = value;
    host.count.store(host.values.size(), std::memory_order_release);
}

void cfg_unset_value(const std::string& key)
{
    HOST_VALUES& host = host_values();
    const std::lock_guard<std::shared_mutex> lock(host.mutex);
    host.values.erase(key);
    host.count.store(host.values.size(), std::memory_order_release);
}
