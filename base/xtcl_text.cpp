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

std::string xtcl_get_text(Tcl_Obj* value)
{
    int length = 0;
    const char* bytes = Tcl_GetStringFromObj(value, &length);
    std::string text(bytes, static_cast<std::size_t>(length));
    for (std::size_t nul = text.find("\xC0\x80"); nul != std::string::npos; nul = text.find("\xC0\x80", nul))
        text.replace(nul++, 2, 1, '\0');
    return text;
}
