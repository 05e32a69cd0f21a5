#include "netlist_reader.h"

#include "netlist_builder.h"
#include "netlist_hierarchy.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <iterator>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
// Shares of the progress: the file's bytes, then the parsing, then tying the modules together.
constexpr int PERCENT_LOADED = 10;
constexpr int PERCENT_PARSED = 95;
constexpr std::size_t LOAD_STEP = std::size_t(1024) * 1024;
constexpr std::size_t PARSE_STEP = std::size_t(64) * 1024;

constexpr int NUMBER_OVERFLOW = 406; // the parser's number for it

/// Reads a text byte by byte and lets others see how far it has come. The parser owns its copy of the iterator, so the
/// position lies outside.
class WATCHED_ITERATOR
{
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = const char*;
    using reference = const char&;

    explicit WATCHED_ITERATOR(const char** position) : m_position(position)
    {
    }

    reference operator*() const
    {
        return **m_position;
    }

    WATCHED_ITERATOR& operator++()
    {
        ++*m_position;
        return *this;
    }

    WATCHED_ITERATOR operator++(int)
    {
        ++*m_position;
        return *this;
    }

    bool operator==(const WATCHED_ITERATOR& other) const
    {
        return *m_position == *other.m_position;
    }

    bool operator!=(const WATCHED_ITERATOR& other) const
    {
        return !(*this == other);
    }

private:
    const char** m_position;
};

/// Says what the parser's own text says, without its preamble and its positions.
std::string describe_syntax_error(const std::string& what, bool is_at_end)
{
    std::string detail = what;
    for (const char* preamble : {": syntax error ", "] "})
    {
        const std::size_t at = detail.find(preamble);
        if (at != std::string::npos)
        {
            detail.erase(0, at + std::strlen(preamble));
            break;
        }
    }
    return (is_at_end ? "the file is cut off here: " : "this is not JSON: ") + netlist_make_printable(detail);
}

/// The parser's partner: hands each value to the builder and keeps an eye on the position.
class NETLIST_SAX
{
public:
    using number_integer_t = nlohmann::json::number_integer_t;
    using number_unsigned_t = nlohmann::json::number_unsigned_t;
    using number_float_t = nlohmann::json::number_float_t;
    using string_t = nlohmann::json::string_t;
    using binary_t = nlohmann::json::binary_t;

    NETLIST_SAX(NETLIST& netlist, std::string_view text, const NETLIST_READER::PROGRESS& progress)
        : m_builder(netlist), m_text(text), m_progress(progress), m_position(text.data()), m_value_end(text.data()),
          m_next_report(text.data())
    {
    }

    void refuse_cell(const NETLIST_RECURSION& recursion)
    {
        m_builder.refuse_cell(recursion.module, recursion.cell, "a module contains itself: " + recursion.chain);
    }

    bool parse()
    {
        const char* end = m_text.data() + m_text.size();
        return nlohmann::json::sax_parse(WATCHED_ITERATOR(&m_position), WATCHED_ITERATOR(&end), this);
    }

    bool null()
    {
        return m_builder.add_null() && go_on();
    }

    bool boolean(bool value)
    {
        return m_builder.add_boolean(value) && go_on();
    }

    bool number_integer(number_integer_t value)
    {
        return m_builder.add_integer(value) && go_on();
    }

    bool number_unsigned(number_unsigned_t value)
    {
        return m_builder.add_unsigned(value) && go_on();
    }

    bool number_float(number_float_t, const string_t& text)
    {
        return m_builder.add_float(text) && go_on();
    }

    bool string(string_t& value)
    {
        return m_builder.add_text(value) && go_on();
    }

    bool binary(binary_t&)
    {
        return false; // JSON has none
    }

    bool start_object(std::size_t)
    {
        return m_builder.begin_object() && go_on();
    }

    bool key(string_t& value)
    {
        return m_builder.add_key(value) && go_on();
    }

    bool end_object()
    {
        return m_builder.end_object() && go_on();
    }

    bool start_array(std::size_t)
    {
        return m_builder.begin_list() && go_on();
    }

    bool end_array()
    {
        return m_builder.end_list() && go_on();
    }

    bool parse_error(std::size_t, const std::string& token, const nlohmann::json::exception& error)
    {
        if (error.id == NUMBER_OVERFLOW)
        {
            m_syntax_error = "the number " + netlist_make_printable(token, 40) + " is too large";
            m_value_end = find_value_begin();
            return false;
        }
        const bool is_at_end = std::strstr(error.what(), "unexpected end of input") != nullptr ||
                               std::strstr(error.what(), "missing closing quote") != nullptr;
        m_syntax_error = describe_syntax_error(error.what(), is_at_end);
        // The parser has read the character that it complains of.
        m_value_end = is_at_end ? m_text.data() + m_text.size() : std::max(m_text.data(), m_position - 1);
        return false;
    }

    bool was_stopped() const
    {
        return m_was_stopped;
    }

    /// Line, column, place and reason of what ended the parsing.
    void fill_error(NETLIST_ERROR& error) const
    {
        const bool is_syntax = !m_syntax_error.empty();
        const char* const at = is_syntax ? m_value_end : find_value_begin();
        const std::string_view before = m_text.substr(0, static_cast<std::size_t>(at - m_text.data()));
        const std::size_t line_begin = before.rfind('\n') + 1; // npos + 1 is the first line's begin
        error.line = 1 + static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
        error.column =
            1 + static_cast<std::size_t>(std::count_if(before.begin() + static_cast<long>(line_begin), before.end(),
                                                       [](char c) { return (c & 0xc0) != 0x80; }));
        error.place = m_builder.get_place();
        error.reason = is_syntax ? m_syntax_error : m_builder.get_reason();
    }

private:
    /// A value has been taken: remembers where it ends and reports progress.
    bool go_on()
    {
        m_value_end = m_position;
        if (m_position < m_next_report || !m_progress)
            return true;
        m_next_report = m_position + PARSE_STEP;
        const double share = static_cast<double>(m_position - m_text.data()) / static_cast<double>(m_text.size());
        m_was_stopped = !m_progress(PERCENT_LOADED + static_cast<int>(share * (PERCENT_PARSED - PERCENT_LOADED)));
        return !m_was_stopped;
    }

    /// Begin of the value behind the last one that was taken. A number's last character may be one that the parser only
    /// looked at, never one of the next value.
    const char* find_value_begin() const
    {
        const char* at = m_value_end;
        while (at < m_position && std::strchr(" \t\r\n,:", *at) != nullptr)
            ++at;
        return at;
    }

    NETLIST_BUILDER m_builder;
    std::string_view m_text;
    NETLIST_READER::PROGRESS m_progress;
    const char* m_position;  ///< how far the parser has read
    const char* m_value_end; ///< how far it had at the end of the last value
    const char* m_next_report;
    bool m_was_stopped = false;
    std::string m_syntax_error;
};

/// A file that closes itself.
class OPEN_FILE
{
public:
    explicit OPEN_FILE(const std::string& file) : m_handle(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK))
    {
    }

    ~OPEN_FILE()
    {
        if (m_handle >= 0)
            ::close(m_handle);
    }

    OPEN_FILE(const OPEN_FILE&) = delete;
    OPEN_FILE& operator=(const OPEN_FILE&) = delete;

    int get() const
    {
        return m_handle;
    }

private:
    int m_handle;
};

std::string describe_open_error(int error_number)
{
    switch (error_number)
    {
    case ENOENT:
        return "there is no such file";
    case EACCES:
        return "there is no permission to read it";
    default:
        return std::string("it cannot be opened: ") + std::strerror(error_number);
    }
}

/// Why a file that is open is none to read; empty where it is one.
std::string find_objection(int handle, std::size_t& size)
{
    struct stat status = {};
    if (::fstat(handle, &status) != 0)
        return std::string("it cannot be read: ") + std::strerror(errno);
    if (S_ISDIR(status.st_mode))
        return "this is a folder";
    if (!S_ISREG(status.st_mode))
        return "this is no regular file";
    if (static_cast<std::uint64_t>(status.st_size) > NETLIST_READER::LARGEST_FILE)
    {
        return "the file is too large: " + std::to_string(status.st_size) + " bytes, at most " +
               std::to_string(NETLIST_READER::LARGEST_FILE) + " can be read";
    }
    size = static_cast<std::size_t>(status.st_size);
    return {};
}

/// Reads the whole file; a file that grows meanwhile is read as far as it was long at first. Returns false with a
/// reason, or without one where it was stopped.
bool load(const std::string& file, std::string& content, const NETLIST_READER::PROGRESS& progress, std::string& reason)
{
    const OPEN_FILE open_file(file);
    if (open_file.get() < 0)
    {
        reason = describe_open_error(errno);
        return false;
    }
    std::size_t size = 0;
    reason = find_objection(open_file.get(), size);
    if (!reason.empty())
        return false;
    content.resize(size);
    std::size_t done = 0;
    while (done < size)
    {
        if (progress && !progress(static_cast<int>(done * PERCENT_LOADED / size)))
            return false;
        const ssize_t count = ::read(open_file.get(), &content[done], std::min(LOAD_STEP, size - done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
        {
            reason = std::string("it cannot be read: ") + std::strerror(errno);
            return false;
        }
        if (count == 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    content.resize(done);
    return true;
}

/// The error for an instance that makes its module contain itself. Where it stands in the file is known no more: a
/// second run finds it.
void find_recursion(NETLIST_ERROR& error, std::string_view text, const NETLIST_RECURSION& recursion)
{
    NETLIST scratch;
    NETLIST_SAX sax(scratch, text, {});
    sax.refuse_cell(recursion);
    sax.parse();
    sax.fill_error(error);
}
} // namespace

NETLIST_READ_RESULT NETLIST_READER::read_file(const std::string& file, const PROGRESS& progress)
{
    NETLIST_READ_RESULT result;
    std::string content;
    if (load(file, content, progress, result.error.reason))
        return read_text(content, file, progress);
    result.error.file = file;
    result.was_stopped = result.error.reason.empty();
    return result;
}

NETLIST_READ_RESULT NETLIST_READER::read_text(std::string_view text, const std::string& file, const PROGRESS& progress)
{
    NETLIST_READ_RESULT result;
    result.error.file = file;
    if (text.find_first_not_of(" \t\r\n") == std::string_view::npos)
    {
        result.error.reason = "the file is empty";
        return result;
    }
    auto netlist = std::make_shared<NETLIST>();
    netlist->file = file;
    NETLIST_SAX sax(*netlist, text, progress);
    if (!sax.parse())
    {
        result.was_stopped = sax.was_stopped();
        if (!result.was_stopped)
            sax.fill_error(result.error);
        return result;
    }
    if (netlist->modules.empty())
    {
        result.error.place = "modules";
        result.error.reason = "the netlist has no modules";
        return result;
    }
    NETLIST_RECURSION recursion;
    if (!netlist_resolve_hierarchy(*netlist, recursion))
    {
        find_recursion(result.error, text, recursion);
        return result;
    }
    result.was_stopped = progress && !progress(100);
    if (!result.was_stopped)
        result.netlist = std::move(netlist);
    return result;
}
