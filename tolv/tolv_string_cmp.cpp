#include "tolv_string_cmp.h"

#include "gen.h"
#include "tolv_global.h"
#include "tolv_mem.h"

#include <QTextCodec>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

TOLV_MEM_INITIALIZER();

namespace
{
/// The parts of a number's text, found in one pass.
struct NUMBER_PARTS
{
    const QChar* mantissa_begin = nullptr; ///< behind the sign
    const QChar* end = nullptr;            ///< behind the exponent
    bool is_negative = false;
    std::uint64_t mantissa = 0;    ///< all digits without their point, while they are at most 19
    std::size_t mantissa_size = 0; ///< digits of the mantissa from the first that is not 0
    std::size_t fraction_size = 0; ///< digits behind the point
    int exponent = 0;              ///< the written exponent, held at EXPONENT_LIMIT
};

/// Every exponent of this size is far outside of what is computed here: no mantissa is long enough to bring it back.
constexpr int EXPONENT_LIMIT = 100000;

/// So many decimal digits always fit 64 bits.
constexpr std::size_t MAX_MANTISSA_SIZE = 19;

/// Numbers up to this length are converted on the stack.
constexpr std::size_t STACK_TEXT_SIZE = 128;

class NUMBER_SCANNER
{
public:
    explicit NUMBER_SCANNER(const QString& text) : m_position(text.constData()), m_end(m_position + text.size())
    {
    }

    /// Whether the whole text is a number; fills the parts if so.
    bool scan(NUMBER_PARTS* parts);

private:
    bool at(char character) const
    {
        return m_position != m_end && *m_position == QLatin1Char(character);
    }

    std::size_t skip_digits(NUMBER_PARTS* parts);
    bool scan_mantissa(NUMBER_PARTS* parts);
    bool scan_exponent(NUMBER_PARTS* parts);

    const QChar* m_position;
    const QChar* m_end;
};

bool NUMBER_SCANNER::scan(NUMBER_PARTS* parts)
{
    if (at('-') || at('+'))
    {
        parts->is_negative = at('-');
        ++m_position;
    }
    parts->mantissa_begin = m_position;
    if (!scan_mantissa(parts) || !scan_exponent(parts))
        return false;
    parts->end = m_position;
    return m_position == m_end || (at('\n') && m_position + 1 == m_end);
}

/// Takes digits into the mantissa and returns how many there were.
std::size_t NUMBER_SCANNER::skip_digits(NUMBER_PARTS* parts)
{
    const QChar* const begin = m_position;
    for (; m_position != m_end; ++m_position)
    {
        const unsigned int digit = m_position->unicode() - unsigned{'0'};
        if (digit > 9)
            break;
        if (parts->mantissa_size < MAX_MANTISSA_SIZE)
            parts->mantissa = parts->mantissa * 10 + digit;
        if (digit != 0 || parts->mantissa_size != 0)
            ++parts->mantissa_size;
    }
    return static_cast<std::size_t>(m_position - begin);
}

/// Without a point the expression wants one digit more behind the last comma than the comma itself takes.
bool NUMBER_SCANNER::scan_mantissa(NUMBER_PARTS* parts)
{
    std::size_t needed_size = 1;
    std::size_t size = skip_digits(parts);
    while (at(','))
    {
        ++m_position;
        needed_size = 2;
        size = skip_digits(parts);
        if (size == 0)
            return false;
    }
    if (!at('.'))
        return size >= needed_size;
    ++m_position;
    parts->fraction_size = skip_digits(parts);
    return parts->fraction_size != 0;
}

bool NUMBER_SCANNER::scan_exponent(NUMBER_PARTS* parts)
{
    if (!at('e') && !at('E'))
        return true;
    ++m_position;
    const bool is_negative = at('-');
    if (is_negative || at('+'))
        ++m_position;
    const QChar* const begin = m_position;
    int exponent = 0;
    for (; m_position != m_end; ++m_position)
    {
        const unsigned int digit = m_position->unicode() - unsigned{'0'};
        if (digit > 9)
            break;
        if (exponent < EXPONENT_LIMIT)
            exponent = exponent * 10 + static_cast<int>(digit);
    }
    parts->exponent = is_negative ? -exponent : exponent;
    return m_position != begin;
}

/// The value where one multiplication or division gives it exactly rounded: a mantissa and a power of ten that a double
/// both holds exactly. That is nearly every number on a screen.
bool get_value_directly(const NUMBER_PARTS& parts, double* value)
{
    constexpr std::uint64_t MAX_EXACT_MANTISSA = std::uint64_t{1} << 53;
    static constexpr std::array<double, 23> POWERS = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                      1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                      1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    double result = 0;
    if (parts.mantissa_size != 0)
    {
        if (parts.mantissa_size > MAX_MANTISSA_SIZE || parts.mantissa > MAX_EXACT_MANTISSA)
            return false;
        const std::int64_t power = parts.exponent - static_cast<std::int64_t>(parts.fraction_size);
        const std::size_t power_size = static_cast<std::size_t>(power < 0 ? -power : power);
        if (power_size >= POWERS.size())
            return false;
        result = static_cast<double>(parts.mantissa);
        result = power < 0 ? result / POWERS[power_size] : result * POWERS[power_size];
    }
    *value = parts.is_negative ? -result : result;
    return true;
}

/// The value by the standard library's conversion, which rounds correctly as QString::toDouble() does.
/// False for what is too long for the stack or out of a double's range.
bool get_value_on_stack(const NUMBER_PARTS& parts, double* value)
{
    if (static_cast<std::size_t>(parts.end - parts.mantissa_begin) > STACK_TEXT_SIZE)
        return false;
    std::array<char, STACK_TEXT_SIZE> text;
    char* text_end = text.data();
    for (const QChar* character = parts.mantissa_begin; character != parts.end; ++character)
    {
        if (*character != QLatin1Char(','))
            *text_end++ = character->toLatin1();
    }
    double result = 0;
    const std::from_chars_result conversion = std::from_chars(text.data(), text_end, result);
    if (conversion.ec != std::errc() || conversion.ptr != text_end || !std::isfinite(result) || result == 0)
        return false;
    *value = parts.is_negative ? -result : result;
    return true;
}

/// Whether ASCII characters are themselves in the local 8-bit encoding, of the encodings that are in use.
bool is_local_encoding_ascii_based()
{
    constexpr int MIB_ISO_8859_1 = 4;
    constexpr int MIB_UTF_8 = 106;
    const QTextCodec* const codec = QTextCodec::codecForLocale();
    return codec != nullptr && (codec->mibEnum() == MIB_UTF_8 || codec->mibEnum() == MIB_ISO_8859_1);
}

/// tolv_qstring_to_stl_string() without the detour through a QByteArray for plain texts.
std::string get_lexical_key(const QString& text)
{
    const auto is_nul_or_beyond_ascii = [](QChar character) { return character.unicode() - 1U > 0x7eU; };
    const QChar* const begin = text.constData();
    const QChar* const end = std::find_if(begin, begin + text.size(), is_nul_or_beyond_ascii);
    const bool is_plain = end == begin + text.size() || end->isNull();
    if (!is_plain || !is_local_encoding_ascii_based())
        return tolv_qstring_to_stl_string(text);
    std::string key(static_cast<std::size_t>(end - begin), '\0');
    std::transform(begin, end, key.begin(), [](QChar character) { return static_cast<char>(character.unicode()); });
    return key;
}
} // namespace

TOLV_NUMBER_SCAN tolv_scan_number(const QString& text, double* value)
{
    NUMBER_PARTS parts;
    if (!NUMBER_SCANNER(text).scan(&parts))
        return TOLV_NUMBER_SCAN_NONE;
    if (get_value_directly(parts, value) || get_value_on_stack(parts, value))
        return TOLV_NUMBER_SCAN_VALUE;

    bool is_in_range = false;
    const double result = QString(text).remove(QLatin1Char(',')).toDouble(&is_in_range);
    if (!is_in_range)
        return TOLV_NUMBER_SCAN_OUT_OF_RANGE;
    *value = result;
    return TOLV_NUMBER_SCAN_VALUE;
}

int tolv_string_cmp(const QString& a, const QString& b)
{
    double value_a = 0;
    double value_b = 0;
    if (tolv_scan_number(a, &value_a) == TOLV_NUMBER_SCAN_VALUE &&
        tolv_scan_number(b, &value_b) == TOLV_NUMBER_SCAN_VALUE)
        return value_a < value_b ? -1 : static_cast<int>(value_a > value_b);
    return gen_signed_lexcmp(get_lexical_key(a), get_lexical_key(b));
}
