#pragma once

#include <cstddef>

/// A text in a fixed buffer, for the handler of a fatal signal, where nothing may be allocated. What does not fit is
/// cut off. Always ends in a NUL.
class MSG_FIXED_TEXT
{
public:
    static constexpr std::size_t CAPACITY = 4096;

    void append(const char* text, std::size_t length)
    {
        for (std::size_t i = 0; i < length; ++i)
            append(text[i]);
    }
    void append(const char* text)
    {
        for (; *text != '\0'; ++text)
            append(*text);
    }
    void append(char character)
    {
        if (m_length + 1 == CAPACITY)
        {
            m_is_cut = true;
            return;
        }
        m_bytes[m_length++] = character;
        m_bytes[m_length] = '\0';
    }
    /// The number in decimal or with lower-case hexadecimal digits, at least `digits` of them.
    void append_number(unsigned long long number, unsigned int base = 10, int digits = 1)
    {
        char reversed[24];
        int count = 0;
        for (; number != 0 || count < digits; number /= base)
            reversed[count++] = "0123456789abcdef"[number % base];
        while (count > 0)
            append(reversed[--count]);
    }
    void clear()
    {
        m_length = 0;
        m_bytes[0] = '\0';
        m_is_cut = false;
    }

    const char* get() const
    {
        return m_bytes;
    }
    std::size_t get_length() const
    {
        return m_length;
    }
    /// Whether something did not fit.
    bool is_cut() const
    {
        return m_is_cut;
    }

private:
    char m_bytes[CAPACITY] = "";
    std::size_t m_length = 0;
    bool m_is_cut = false;
};
