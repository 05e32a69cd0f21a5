#include "netlist_error.h"

namespace
{
bool is_continuation(char c)
{
    return (static_cast<unsigned char>(c) & 0xc0) == 0x80;
}

/// Length of the UTF-8 sequence at the position: 0 where there is none. Overlong forms and the like are for others to
/// find: the parser lets none through, and a message may show what it complains of.
std::size_t get_sequence_length(std::string_view text, std::size_t at)
{
    const auto lead = static_cast<unsigned char>(text[at]);
    const std::size_t length = lead < 0x80   ? 1
                               : lead < 0xc2 ? 0
                               : lead < 0xe0 ? 2
                               : lead < 0xf0 ? 3
                               : lead < 0xf5 ? 4
                                             : 0;
    if (length == 0 || at + length > text.size())
        return 0;
    for (std::size_t i = 1; i < length; ++i)
    {
        if (!is_continuation(text[at + i]))
            return 0;
    }
    return length;
}

void append_escaped(std::string& result, char c)
{
    static const char digits[] = "0123456789abcdef";
    result += "\\x";
    result += digits[static_cast<unsigned char>(c) >> 4];
    result += digits[static_cast<unsigned char>(c) & 0xf];
}

std::string escape(std::string_view text)
{
    std::string result;
    for (std::size_t at = 0; at < text.size();)
    {
        const std::size_t length = get_sequence_length(text, at);
        if (length == 0 || (length == 1 && (static_cast<unsigned char>(text[at]) < 0x20 || text[at] == 0x7f)))
            append_escaped(result, text[at++]);
        else
        {
            result += text.substr(at, length);
            at += length;
        }
    }
    return result;
}
} // namespace

std::string NETLIST_ERROR::get_text() const
{
    std::string text = file;
    if (line > 0)
        text += ":" + std::to_string(line) + ":" + std::to_string(column);
    if (!place.empty())
        text += ": " + place;
    return text + ": " + reason;
}

std::string netlist_make_printable(std::string_view text, std::size_t limit)
{
    if (text.size() <= limit)
        return escape(text);
    std::size_t head = limit / 2;
    std::size_t tail = text.size() - limit / 2;
    while (head > 0 && is_continuation(text[head]))
        --head;
    while (tail < text.size() && is_continuation(text[tail]))
        ++tail;
    return escape(text.substr(0, head)) + " ... " + escape(text.substr(tail));
}
