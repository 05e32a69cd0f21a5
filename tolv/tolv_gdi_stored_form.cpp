#include "tolv_gdi_stored_form_p.h"

#include "tolv_mem.h"

#include <QStringList>

#include <algorithm>
#include <charconv>
#include <initializer_list>

TOLV_MEM_INITIALIZER();

namespace
{
constexpr int PEN_PARTS = 6;
constexpr std::size_t NAME_BUFFER_SIZE = 1000;
constexpr int LONGEST_FAMILY = 999;
constexpr int GREATEST_PEN_WIDTH = 32767; // the raster engine's own limit of coordinates
constexpr int GREATEST_POINT_SIZE = 4096;

/// A number that must be one of an enumeration's bits or its zero.
bool is_one_of(int value, std::initializer_list<int> values)
{
    return std::find(values.begin(), values.end(), value) != values.end();
}

/// Reads the fields of a stored font one after the other, as sscanf() would with "%d" and "%s", except that a number
/// beyond an int and a name beyond its buffer end the reading.
class FIELD_READER
{
public:
    explicit FIELD_READER(const char* text) : m_next(text)
    {
    }

    /// The next number; the characters behind its digits are left for the next field.
    bool read_number(int* number)
    {
        skip_blanks();
        const char* const digits = *m_next == '-' || *m_next == '+' ? m_next + 1 : m_next;
        const char* end = digits;
        while (*end >= '0' && *end <= '9')
            ++end;
        const std::from_chars_result result = std::from_chars(*m_next == '+' ? digits : m_next, end, *number);
        if (end == digits || result.ec != std::errc())
            return false;
        m_next = end;
        return true;
    }

    /// The next characters up to a blank.
    bool read_name(std::string* name)
    {
        skip_blanks();
        const char* const begin = m_next;
        while (*m_next != '\0' && !is_blank(*m_next))
            ++m_next;
        name->assign(begin, m_next);
        return !name->empty() && name->size() < NAME_BUFFER_SIZE;
    }

private:
    static bool is_blank(char character)
    {
        return character == ' ' || (character >= '\t' && character <= '\r');
    }

    void skip_blanks()
    {
        while (is_blank(*m_next))
            ++m_next;
    }

    const char* m_next;
};

/// The family: what stands between the first comma and the second, or nothing.
QString get_stored_family(const QString& text)
{
    const int begin = text.indexOf(QLatin1Char(',')) + 1;
    if (begin == 0)
        return QString();
    const int end = text.indexOf(QLatin1Char(','), begin);
    return text.mid(begin, end < 0 ? -1 : end - begin).trimmed();
}
} // namespace

bool TOLV_STORED_PEN::parse(const QString& text, TOLV_STORED_PEN* pen)
{
    const QStringList parts = text.simplified().split(QLatin1Char(' '));
    if (parts.size() != PEN_PARTS)
        return false;
    int numbers[4] = {};
    for (int i = 0; i < 4; ++i)
    {
        bool is_number = false;
        numbers[i] = parts[i + 1].toInt(&is_number);
        if (!is_number)
            return false;
    }
    const auto [style, cap, join, width] = numbers;
    if (style < Qt::NoPen || style > Qt::DashDotDotLine || !is_one_of(cap, {Qt::FlatCap, Qt::SquareCap, Qt::RoundCap}))
        return false;
    if (!is_one_of(join, {Qt::MiterJoin, Qt::BevelJoin, Qt::RoundJoin, Qt::SvgMiterJoin}))
        return false;
    if (width < 0 || width > GREATEST_PEN_WIDTH)
        return false;
    *pen = {parts[0].toStdString(), static_cast<Qt::PenStyle>(style), static_cast<Qt::PenCapStyle>(cap),
            static_cast<Qt::PenJoinStyle>(join), width};
    return true;
}

QString TOLV_STORED_PEN::format(const std::string& color_name, const QPen& pen)
{
    return QString::asprintf("%s %d %d %d %d %u", color_name.c_str(), static_cast<int>(pen.style()),
                             static_cast<int>(pen.capStyle()), static_cast<int>(pen.joinStyle()), pen.width(),
                             pen.color().rgba());
}

bool TOLV_STORED_FONT::parse(const QString& text, TOLV_STORED_FONT* font)
{
    const QByteArray local_text = text.toLocal8Bit();
    FIELD_READER reader(local_text.constData());
    TOLV_STORED_FONT stored;
    int can_change = 0;
    if (!reader.read_number(&can_change) || !reader.read_name(&stored.text_color_name) ||
        !reader.read_name(&stored.background_color_name))
        return false;
    int numbers[7] = {};
    for (int& number : numbers)
    {
        if (!reader.read_number(&number))
            return false;
    }
    const auto [point_size, bold, italic, underline, strikeout, fixed_pitch, style_hint] = numbers;
    const QString family = get_stored_family(text);
    if (family.isEmpty() || family.size() > LONGEST_FAMILY || point_size < 1 || point_size > GREATEST_POINT_SIZE ||
        style_hint < QFont::Helvetica || style_hint > QFont::Fantasy)
        return false;
    stored.can_change = can_change != 0;
    // Meant: the flags of the font count as set only for 1 itself.
    stored.attributes = {point_size,
                         bold == 1,
                         italic == 1,
                         underline == 1,
                         strikeout == 1,
                         fixed_pitch == 1,
                         static_cast<QFont::StyleHint>(style_hint),
                         family};
    *font = stored;
    return true;
}

QString TOLV_STORED_FONT::format(bool can_change, const std::string& text_color_name,
                                 const std::string& background_color_name, const QFont& font)
{
    return QStringLiteral("%1 %2 %3 %4 %5 %6 %7 %8 %9 %10, %11")
        .arg(can_change ? 1 : 0)
        .arg(QString::fromStdString(text_color_name), QString::fromStdString(background_color_name))
        .arg(font.pointSize())
        .arg(TOLV_FONT_ATTRIBUTES::is_bold_weight(font.weight()) ? 1 : 0)
        .arg(font.style() != QFont::StyleNormal ? 1 : 0)
        .arg(font.underline() ? 1 : 0)
        .arg(font.strikeOut() ? 1 : 0)
        .arg(font.fixedPitch() ? 1 : 0)
        .arg(static_cast<int>(font.styleHint()))
        .arg(font.family());
}
