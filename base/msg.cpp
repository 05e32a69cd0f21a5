#include "msg.h"

#include "cfg.h"
#include "msg_debug_p.h"

#include <array>
#include <cstdio>
#include <utility>

namespace
{
constexpr int HIGHEST_INSERT = 9;

/// One insert of a format, `%n!k!`.
struct INSERT
{
    int number = 0; ///< 1 to 9; 0 where there is no insert
    char kind = 0;  ///< 's', 'd' or 'u'
};
constexpr std::size_t INSERT_LENGTH = 5;

/// The insert that begins at `position`, if one does.
INSERT find_insert(const std::string& format, std::size_t position)
{
    if (position + INSERT_LENGTH > format.size())
        return {};
    const char number = format[position + 1];
    const char kind = format[position + 3];
    const bool is_insert = format[position] == '%' && number >= '1' && number <= '9' && format[position + 2] == '!' &&
                           (kind == 's' || kind == 'd' || kind == 'u') && format[position + 4] == '!';
    return is_insert ? INSERT{number - '0', kind} : INSERT{};
}

/// Where the text of a format ends: before the "/" of its identifier, or at its end.
std::size_t find_text_end(const std::string& format)
{
    const std::size_t slash = format.rfind('/');
    if (slash == std::string::npos || slash + 1 == format.size())
        return format.size();
    const char* allowed = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";
    return format.find_first_not_of(allowed, slash + 1) == std::string::npos ? slash : format.size();
}

/// Calls `insert(INSERT)` for each insert and `literal(char)` for each other character, "%%" being one of them.
template <typename ON_INSERT, typename ON_LITERAL>
void scan_format(const std::string& format, ON_INSERT insert, ON_LITERAL literal)
{
    for (std::size_t position = 0; position < format.size();)
    {
        const INSERT found = find_insert(format, position);
        if (found.number != 0)
        {
            insert(found);
            position += INSERT_LENGTH;
            continue;
        }
        literal(format[position]);
        position += format.compare(position, 2, "%%") == 0 ? 2 : 1;
    }
}

/// The arguments of a format as texts, by number. A number that the format leaves out still takes its argument, which
/// is passed over unread.
std::array<std::string, HIGHEST_INSERT + 1> read_arguments(const std::string& format, va_list arguments)
{
    std::array<char, HIGHEST_INSERT + 1> kinds{};
    int highest = 0;
    scan_format(
        format,
        [&](INSERT insert)
        {
            char& kind = kinds[static_cast<std::size_t>(insert.number)];
            kind = kind == 0 ? insert.kind : kind;
            highest = insert.number > highest ? insert.number : highest;
        },
        [](char) {});

    std::array<std::string, HIGHEST_INSERT + 1> texts;
    for (int number = 1; number <= highest; ++number)
    {
        const auto index = static_cast<std::size_t>(number);
        if (kinds[index] == 'd')
            texts[index] = std::to_string(va_arg(arguments, int));
        else if (kinds[index] == 'u')
            texts[index] = std::to_string(va_arg(arguments, unsigned int));
        else
        {
            const char* text = va_arg(arguments, const char*);
            if (kinds[index] == 's' && text != nullptr)
                texts[index] = text;
        }
    }
    return texts;
}

/// The text with each line end turned into a blank.
std::string join_lines(const std::string& text)
{
    std::string line;
    for (std::size_t i = 0; i < text.size(); ++i)
    {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
            continue;
        line += text[i] == '\n' || text[i] == '\r' ? ' ' : text[i];
    }
    return line;
}
} // namespace

MSG_BASE::MSG_BASE() = default;

MSG_BASE::~MSG_BASE() = default;

void MSG_BASE::fill_args(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    fill_args_v(format, arguments);
    va_end(arguments);
}

void MSG_BASE::fill_args_v(const char* format, va_list arguments)
{
    const std::string whole = format != nullptr ? format : "";
    const std::size_t end = find_text_end(whole);
    const std::string text_format = whole.substr(0, end);
    const auto texts = read_arguments(text_format, arguments);

    std::string text;
    scan_format(
        text_format, [&](INSERT insert) { text += texts[static_cast<std::size_t>(insert.number)]; },
        [&](char character) { text += character; });
    m_identifier = end < whole.size() ? whole.substr(end + 1) : std::string();
    m_text = std::move(text);
}

void MSG_BASE::set_text(const std::string& text)
{
    m_text = text;
    m_identifier.clear();
}

const std::string& MSG_BASE::get_text() const
{
    return m_text;
}

const std::string& MSG_BASE::get_identifier() const
{
    return m_identifier;
}

unsigned int MSG_BASE::get_number() const
{
    return m_number;
}

void MSG_BASE::set_number(unsigned int number)
{
    m_number = number;
}

MSG_POST::MSG_POST(SEVERITY severity) : m_severity(severity)
{
}

MSG_POST::~MSG_POST()
{
    // Level by level: a chain of very many messages must not take as many stack frames.
    std::vector<std::unique_ptr<MSG_POST>> level = std::move(m_sub_posts);
    while (!level.empty())
    {
        std::vector<std::unique_ptr<MSG_POST>> next;
        for (const std::unique_ptr<MSG_POST>& post : level)
        {
            for (std::unique_ptr<MSG_POST>& sub_post : post->m_sub_posts)
                next.push_back(std::move(sub_post));
            post->m_sub_posts.clear();
        }
        level = std::move(next);
    }
}

MSG_POST::SEVERITY MSG_POST::get_severity() const
{
    return m_severity;
}

std::string MSG_POST::get_display_text(unsigned int indent) const
{
    std::string line(std::size_t{3} * indent, ' ');
    line += m_severity == SEVERITY_ERROR ? "Error" : m_severity == SEVERITY_WARNING ? "Warning" : "Info";
    if (get_number() != 0)
        line += " (" + std::to_string(get_number()) + ")";
    return line + ": " + join_lines(get_text());
}

void MSG_POST::add_sub_post(std::unique_ptr<MSG_POST> post)
{
    if (post != nullptr)
        m_sub_posts.push_back(std::move(post));
}

const std::vector<std::unique_ptr<MSG_POST>>& MSG_POST::get_sub_posts() const
{
    return m_sub_posts;
}

void MSG_POST::post()
{
    msg_get_display_in_force()->post_display(this, 0);
}

MSG_D::MSG_D(const char* tag, MSG_D_LEVEL level) : m_tag(tag != nullptr ? tag : ""), m_level(level)
{
}

MSG_D::~MSG_D() = default;

const std::string& MSG_D::get_tag() const
{
    return m_tag;
}

MSG_D_LEVEL MSG_D::get_level() const
{
    return m_level;
}

void MSG_D::format(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    format_v(format, arguments);
    va_end(arguments);
}

void MSG_D::format_v(const char* format, va_list arguments)
{
    if (format == nullptr)
    {
        set_text(std::string());
        return;
    }
    va_list measured;
    va_copy(measured, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    std::string text(length > 0 ? static_cast<std::size_t>(length) : 0, '\0');
    if (length > 0)
        std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    set_text(text);
}

void MSG_D::send() const
{
    msg_add_debug_record({m_tag, get_text(), m_level});
}

bool MSG_D::debug_messages_enabled(const char* key)
{
    const bool are_all_enabled = cfg_is_on("debug_messages");
    if (key == nullptr)
        return are_all_enabled;
    return cfg_is_on((std::string("debug_messages_") + key).c_str(), are_all_enabled);
}
