#include "msg_utf8_p.h"
#include "xtcl.h"
#include "xtcl_p.h"

#include <tcl.h>

#include <cstdint>
#include <cstdio>
#include <cstring>

namespace
{
constexpr char POINTER_PREFIX[] = "ptr_";
constexpr int POINTER_PREFIX_LENGTH = sizeof(POINTER_PREFIX) - 1;
constexpr int POINTER_DIGITS = 16;
static_assert(POINTER_PREFIX_LENGTH + POINTER_DIGITS + 1 <= XTCL_POINTER_TEXT_SIZE, "a pointer's text fits");

/// Value of a digit as xtcl_ptr_to_string() writes it; -1 for any other character.
int hex_digit_value(char digit)
{
    if (digit >= '0' && digit <= '9')
        return digit - '0';
    return digit >= 'a' && digit <= 'f' ? digit - 'a' + 10 : -1;
}

constexpr char TCL_NUL[] = "\xC0\x80";
constexpr std::size_t SURROGATE_LENGTH = 3;

/// The half of a surrogate pair that stands at a position, in the three bytes of Tcl's form; 0 where none does.
unsigned int get_surrogate(const std::string& text, std::size_t position)
{
    if (position + SURROGATE_LENGTH > text.size() || text[position] != '\xED')
        return 0;
    const auto second = static_cast<unsigned char>(text[position + 1]);
    const auto third = static_cast<unsigned char>(text[position + 2]);
    if (second < 0xA0 || second > 0xBF || (third & 0xC0) != 0x80)
        return 0;
    return 0xD000u | (second & 0x3Fu) << 6 | (third & 0x3Fu);
}

/// Length of what is Tcl's form at a position and not UTF-8; 0 where it is neither.
std::size_t get_tcl_length(const std::string& text, std::size_t position)
{
    if (text.compare(position, 2, TCL_NUL) == 0)
        return 2;
    return get_surrogate(text, position) != 0 ? SURROGATE_LENGTH : 0;
}

/// Appends the low six bits of a number as the next byte of a character.
void append_continuation(std::string& text, unsigned int bits)
{
    text += static_cast<char>(0x80u | (bits & 0x3Fu));
}

void append_surrogate(std::string& text, unsigned int surrogate)
{
    text += '\xED';
    append_continuation(text, surrogate >> 6);
    append_continuation(text, surrogate);
}

/// Appends a character of four bytes in Tcl's form.
void append_surrogate_pair(std::string& text, const char* bytes)
{
    unsigned int character = static_cast<unsigned char>(bytes[0]) & 0x07u;
    for (int i = 1; i < 4; ++i)
        character = character << 6 | (static_cast<unsigned char>(bytes[i]) & 0x3Fu);
    append_surrogate(text, 0xD800u + ((character - 0x10000u) >> 10));
    append_surrogate(text, 0xDC00u + ((character - 0x10000u) & 0x3FFu));
}

void append_character_beyond_ffff(std::string& text, unsigned int character)
{
    text += static_cast<char>(0xF0u | character >> 18);
    append_continuation(text, character >> 12);
    append_continuation(text, character >> 6);
    append_continuation(text, character);
}

void append_latin1(std::string& text, unsigned char byte)
{
    text += static_cast<char>(0xC0u | byte >> 6);
    append_continuation(text, byte);
}
} // namespace

void xtcl_ptr_to_string(char* text, void* pointer)
{
    if (text == nullptr)
        return;
    std::snprintf(text, XTCL_POINTER_TEXT_SIZE, "%s%0*llx", POINTER_PREFIX, POINTER_DIGITS,
                  static_cast<unsigned long long>(reinterpret_cast<std::uintptr_t>(pointer)));
}

void* xtcl_string_to_ptr(const char* text)
{
    if (text == nullptr || std::strlen(text) != POINTER_PREFIX_LENGTH + POINTER_DIGITS ||
        std::strncmp(text, POINTER_PREFIX, POINTER_PREFIX_LENGTH) != 0)
        return nullptr;
    std::uintptr_t value = 0;
    for (const char* digit = text + POINTER_PREFIX_LENGTH; *digit != '\0'; ++digit)
    {
        if (hex_digit_value(*digit) < 0)
            return nullptr;
        value = value * 16 + static_cast<std::uintptr_t>(hex_digit_value(*digit));
    }
    return reinterpret_cast<void*>(value);
}

std::string xtcl_transform_string(const std::string& text)
{
    std::string transformed;
    transformed.reserve(text.size() + text.size() / 8);
    for (const char character : text)
    {
        if (character == '\n')
            transformed += "\\n";
        else if (character == '\r')
            transformed += "\\r";
        else if (character == '\0')
            transformed += "\\u0000";
        else
        {
            if (std::strchr("\\\"[]{}$", character) != nullptr)
                transformed += '\\';
            transformed += character;
        }
    }
    return transformed;
}

std::string xtcl_to_tcl_text(const std::string& text)
{
    std::string tcl_text;
    tcl_text.reserve(text.size() + 1);
    for (std::size_t i = 0; i < text.size();)
    {
        const std::size_t kept = get_tcl_length(text, i);
        const std::size_t length = kept != 0 ? kept : msg_get_utf8_length(text.data() + i, text.size() - i);
        if (text[i] == '\0')
            tcl_text += TCL_NUL;
        else if (length == 4 && TCL_UTF_MAX <= 3)
            append_surrogate_pair(tcl_text, text.data() + i);
        else if (length != 0)
            tcl_text.append(text, i, length);
        else
            append_latin1(tcl_text, static_cast<unsigned char>(text[i]));
        i += length != 0 ? length : 1;
    }
    return tcl_text;
}

std::string xtcl_get_text(Tcl_Obj* value)
{
    int length = 0;
    const char* bytes = Tcl_GetStringFromObj(value, &length);
    const std::string tcl_text(bytes, static_cast<std::size_t>(length));
    std::string text;
    text.reserve(tcl_text.size());
    for (std::size_t i = 0; i < tcl_text.size();)
    {
        const unsigned int high = get_surrogate(tcl_text, i);
        const unsigned int low = get_surrogate(tcl_text, i + SURROGATE_LENGTH);
        if (high >= 0xD800 && high < 0xDC00 && low >= 0xDC00)
        {
            append_character_beyond_ffff(text, 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00));
            i += 2 * SURROGATE_LENGTH;
        }
        else if (high != 0)
        {
            text += "\xEF\xBF\xBD";
            i += SURROGATE_LENGTH;
        }
        else
        {
            const bool is_nul = tcl_text.compare(i, 2, TCL_NUL) == 0;
            text += is_nul ? '\0' : tcl_text[i];
            i += is_nul ? 2 : 1;
        }
    }
    return text;
}
