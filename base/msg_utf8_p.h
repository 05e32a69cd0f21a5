#pragma once

#include <cstddef>

/// Length of the UTF-8 character at the start of `text`, of which `left` bytes (at least 1) are there: 1 to 4; 0 where
/// it is none, as defined by Unicode: too long a form, half of a surrogate pair, beyond U+10FFFF, or cut.
inline std::size_t msg_get_utf8_length(const char* text, std::size_t left)
{
    const auto byte_at = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char first = byte_at(0);
    if (first < 0x80)
        return 1;
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || left < length)
        return 0;
    for (std::size_t i = 1; i < length; ++i)
    {
        if ((byte_at(i) & 0xC0) != 0x80)
            return 0;
    }
    const unsigned char second = byte_at(1);
    const bool is_too_long = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
    const bool is_no_character = (first == 0xED && second > 0x9F) || (first == 0xF4 && second > 0x8F);
    return is_too_long || is_no_character ? 0 : length;
}
