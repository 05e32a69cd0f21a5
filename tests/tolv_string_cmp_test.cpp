#include "gen.h"
#include "tolv_string_cmp.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

#include <array>
#include <cstdint>
#include <cstring>
#include <random>

namespace
{
const QRegularExpression& get_expression()
{
    static const QRegularExpression expression = []
    {
        QRegularExpression result(QStringLiteral("^[-+]?[0-9]*(\\,[0-9]+)*\\.?[0-9]+([eE][-+]?[0-9]+)?$"));
        result.optimize();
        return result;
    }();
    return expression;
}

/// What tolv_scan_number() must find, by the expression and QString::toDouble().
TOLV_NUMBER_SCAN scan_by_expression(const QString& text, double* value)
{
    if (!text.contains(get_expression()))
        return TOLV_NUMBER_SCAN_NONE;
    bool is_in_range = false;
    *value = QString(text).remove(QLatin1Char(',')).toDouble(&is_in_range);
    return is_in_range ? TOLV_NUMBER_SCAN_VALUE : TOLV_NUMBER_SCAN_OUT_OF_RANGE;
}

std::string get_local_text(const QString& text)
{
    return text.toLocal8Bit().constData();
}

/// What tolv_string_cmp() must give, step by step.
int compare_by_expression(const QString& a, const QString& b)
{
    double value_a = 0;
    double value_b = 0;
    if (scan_by_expression(a, &value_a) == TOLV_NUMBER_SCAN_VALUE &&
        scan_by_expression(b, &value_b) == TOLV_NUMBER_SCAN_VALUE)
    {
        if (QString(a).remove(QLatin1Char(',')) == QString(b).remove(QLatin1Char(',')))
            return 0;
        const double difference = value_b - value_a;
        return difference > 0 ? -1 : (difference < 0 ? 1 : 0);
    }
    return gen_signed_lexcmp(get_local_text(a), get_local_text(b));
}

/// Tells -0 from 0, too.
std::uint64_t get_bits(double value)
{
    std::uint64_t bits = 0;
    static_assert(sizeof bits == sizeof value);
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

/// Compares the scanner with the expression, one text after the other, and counts what came by.
class SCAN_COMPARISON
{
public:
    void compare(const QString& text)
    {
        double expected_value = 0;
        double value = 0;
        const TOLV_NUMBER_SCAN expected = scan_by_expression(text, &expected_value);
        const TOLV_NUMBER_SCAN found = tolv_scan_number(text, &value);
        ++m_counts[expected];
        const bool is_same =
            found == expected && (expected != TOLV_NUMBER_SCAN_VALUE || get_bits(value) == get_bits(expected_value));
        if (!is_same && ++m_failure_count <= 10)
        {
            ADD_FAILURE() << "\"" << text.toStdString() << "\": expected " << expected << " " << expected_value
                          << ", found " << found << " " << value;
        }
    }

    int get_count(TOLV_NUMBER_SCAN result) const
    {
        return m_counts[result];
    }
    int get_count() const
    {
        return m_counts[0] + m_counts[1] + m_counts[2];
    }
    int get_failure_count() const
    {
        return m_failure_count;
    }

private:
    std::array<int, 3> m_counts = {};
    int m_failure_count = 0;
};

/// Texts around the grammar of numbers, always the same ones.
class TEXT_GENERATOR
{
public:
    QString get_number()
    {
        QString text;
        text.reserve(40);
        add_sign(&text);
        switch (draw(8))
        {
        case 0:
        case 1:
            add_digits(&text, 1 + draw(6));
            break;
        case 2:
            add_grouped_digits(&text);
            break;
        case 3:
        case 4:
            add_digits(&text, draw(8));
            add_fraction(&text, 1 + draw(12));
            break;
        case 5:
            add_digits(&text, 1 + draw(24));
            add_fraction(&text, 1 + draw(24));
            break;
        case 6:
            add_grouped_digits(&text);
            add_fraction(&text, 1 + draw(4));
            break;
        default:
            add_digits(&text, 1 + draw(3));
            break;
        }
        if (draw(3) == 0)
            add_exponent(&text);
        if (draw(50) == 0)
            text += QLatin1Char('\n');
        return text;
    }

    /// At the ends of the range of a double, and with more digits than one holds.
    QString get_extreme_number()
    {
        static constexpr const char* NUMBERS[] = {
            "1.7976931348623157e308",  "1.7976931348623158e308",  "1.7976931348623159e308",  "1.797693134862315807e308",
            "4.9406564584124654e-324", "2.4703282292062327e-324", "2.4703282292062328e-324", "2.2250738585072014e-308",
            "2.2250738585072011e-308", "9007199254740993",        "9007199254740992.5",      "18446744073709551616"};
        QString text;
        add_sign(&text);
        if (draw(4) == 0)
            return text + QLatin1String(NUMBERS[draw(std::size(NUMBERS))]);
        add_digits(&text, 1 + draw(draw(20) == 0 ? 1200 : 25));
        if (draw(2) == 0)
            add_fraction(&text, 1 + draw(draw(20) == 0 ? 1200 : 25));
        text += draw(2) == 0 ? QLatin1String("e-") : QLatin1String("e");
        text += QString::number(draw(4) == 0 ? draw(100000) : 280 + draw(70));
        return text;
    }

    /// A number with one to three small faults, which may still be a number.
    QString get_damaged_number()
    {
        QString text = draw(10) == 0 ? get_extreme_number() : get_number();
        for (int i = 1 + draw(3); i > 0; --i)
        {
            const int position = draw(text.size() + 1);
            switch (draw(4))
            {
            case 0:
                text.insert(position, get_character());
                break;
            case 1:
                text.remove(position, 1);
                break;
            case 2:
                text.replace(position, 1, get_character());
                break;
            default:
                text.insert(position, text.mid(draw(text.size() + 1), 2));
                break;
            }
        }
        return text;
    }

    QString get_soup()
    {
        QString text;
        for (int i = draw(9); i > 0; --i)
            text += get_character();
        return text;
    }

    QString get_text()
    {
        switch (draw(10))
        {
        case 0:
            return get_extreme_number();
        case 1:
        case 2:
        case 3:
            return get_damaged_number();
        case 4:
            return get_soup();
        default:
            return get_number();
        }
    }

    int draw(int limit)
    {
        return static_cast<int>(m_engine() % static_cast<unsigned int>(limit));
    }

private:
    QChar get_character()
    {
        static constexpr char ASCII_CHARACTERS[] = "0123456789001199,,,...eeE+--\n\r\t xaf_'"; // and the NUL behind
        // Digits, a minus and a point of other scripts, and the halves of a character beyond 16 bits.
        static constexpr ushort OTHER_CHARACTERS[] = {0x0661, 0xff11, 0x00b2, 0x2212, 0x066b, 0xd835, 0xdfcf};
        if (draw(8) == 0)
            return QChar(OTHER_CHARACTERS[draw(std::size(OTHER_CHARACTERS))]);
        return QLatin1Char(ASCII_CHARACTERS[draw(std::size(ASCII_CHARACTERS))]);
    }

    void add_sign(QString* text)
    {
        const int sign = draw(6);
        if (sign < 2)
            *text += QLatin1Char(sign == 0 ? '-' : '+');
    }

    void add_digits(QString* text, int count)
    {
        const bool has_leading_zeros = draw(6) == 0;
        for (int i = 0; i < count; ++i)
            *text += QLatin1Char(static_cast<char>('0' + (has_leading_zeros && i * 2 < count ? 0 : draw(10))));
    }

    void add_grouped_digits(QString* text)
    {
        add_digits(text, draw(4));
        for (int i = 1 + draw(4); i > 0; --i)
        {
            *text += QLatin1Char(',');
            add_digits(text, draw(5) == 0 ? 1 + draw(5) : 3);
        }
    }

    void add_fraction(QString* text, int count)
    {
        *text += QLatin1Char('.');
        add_digits(text, count);
    }

    void add_exponent(QString* text)
    {
        *text += QLatin1Char(draw(2) == 0 ? 'e' : 'E');
        add_sign(text);
        add_digits(text, draw(10) == 0 ? 1 + draw(12) : 1 + draw(2));
    }

    std::mt19937 m_engine{20240229};
};

double get_value(const char* text)
{
    double value = -1;
    EXPECT_EQ(TOLV_NUMBER_SCAN_VALUE, tolv_scan_number(QString::fromUtf8(text), &value)) << text;
    return value;
}

TOLV_NUMBER_SCAN get_kind(const QString& text)
{
    double value = 0;
    return tolv_scan_number(text, &value);
}

int compare(const char* a, const char* b)
{
    return tolv_string_cmp(QString::fromUtf8(a), QString::fromUtf8(b));
}
} // namespace

// ---- The order ------------------------------------------------------------------------------------------------------

TEST(TOLV_STRING_CMP, numbers_order_by_value_and_not_by_text)
{
    EXPECT_EQ(1, compare("10", "9"));
    EXPECT_EQ(-1, compare("9", "10"));
    EXPECT_EQ(1, compare("1,000", "999"));
    EXPECT_EQ(-1, compare("-10", "-9"));
    EXPECT_EQ(-1, compare("1e2", "1e3"));
    EXPECT_EQ(1, compare("+0.5", "-0.5"));
}

TEST(TOLV_STRING_CMP, numbers_of_equal_value_are_equal_however_they_are_written)
{
    EXPECT_EQ(0, compare(".5", "0.5"));
    EXPECT_EQ(0, compare("1.0", "1.00"));
    EXPECT_EQ(0, compare("1,000", "1000"));
    EXPECT_EQ(0, compare("1,000", "10,00"));
    EXPECT_EQ(0, compare("0", "-0"));
    EXPECT_EQ(0, compare("1e3", "+1000"));
    EXPECT_EQ(0, compare("12", "12\n"));
}

TEST(TOLV_STRING_CMP, a_text_beside_a_number_goes_by_the_lexical_order)
{
    EXPECT_EQ(gen_signed_lexcmp("abc", "10"), compare("abc", "10"));
    EXPECT_LT(0, compare("abc", "10"));
    EXPECT_GT(0, compare("10", "9 ns"));
    EXPECT_EQ(0, compare("abc", "abc"));
    EXPECT_GT(0, compare("", "0"));
    EXPECT_EQ(0, compare("", ""));
}

TEST(TOLV_STRING_CMP, a_number_beyond_the_range_goes_by_the_lexical_order)
{
    EXPECT_EQ(gen_signed_lexcmp("1e999", "1"), compare("1e999", "1"));
    EXPECT_GT(0, compare("1e999", "2"));
    EXPECT_GT(0, compare("10", "1e999"));
    EXPECT_LT(0, compare("2", "1e999"));
    EXPECT_GT(0, compare("1e-999", "2e-999"));
    EXPECT_LT(0, compare("1e-999", "+5"));
}

TEST(TOLV_STRING_CMP, the_lexical_order_is_that_of_signed_characters_of_the_local_encoding)
{
    // The first byte of a letter beyond ASCII is negative as a signed character.
    EXPECT_GT(0, compare("\u00e4", "a"));
    EXPECT_LT(0, compare("a", "\u00e4"));
    EXPECT_EQ(gen_signed_lexcmp("\u00e4", "\u20ac"), compare("\u00e4", "\u20ac"));
    EXPECT_EQ(gen_signed_lexcmp("clk_100MHz", "clk_25MHz"), compare("clk_100MHz", "clk_25MHz"));
}

TEST(TOLV_STRING_CMP, a_text_ends_at_its_first_nul)
{
    const QString with_tail = QStringLiteral("net") + QChar(0) + QStringLiteral("b");
    EXPECT_EQ(0, tolv_string_cmp(with_tail, QStringLiteral("net")));
    EXPECT_EQ(0, tolv_string_cmp(with_tail, QStringLiteral("net") + QChar(0) + QStringLiteral("a")));
    // A number with a NUL in it is no number.
    EXPECT_GT(0, tolv_string_cmp(QStringLiteral("10") + QChar(0), QStringLiteral("9")));
}

TEST(TOLV_STRING_CMP, null_strings_are_empty_texts)
{
    EXPECT_EQ(0, tolv_string_cmp(QString(), QString()));
    EXPECT_EQ(0, tolv_string_cmp(QString(), QLatin1String("")));
    EXPECT_GT(0, tolv_string_cmp(QString(), QStringLiteral("1")));
}

// ---- What is a number -----------------------------------------------------------------------------------------------

TEST(TOLV_SCAN_NUMBER, forms_of_a_number)
{
    EXPECT_EQ(0.0, get_value("0"));
    EXPECT_EQ(1234.0, get_value("1234"));
    EXPECT_EQ(-1234567.25, get_value("-1,234,567.25"));
    EXPECT_EQ(55.0, get_value(",55"));
    EXPECT_EQ(12.5, get_value("1,2.5"));
    EXPECT_EQ(0.5, get_value("+.5"));
    EXPECT_EQ(1.5e10, get_value("1.5e+10"));
    EXPECT_EQ(1.5e-10, get_value("1.5E-10"));
    EXPECT_EQ(0.0, get_value("0e99999999999"));
}

TEST(TOLV_SCAN_NUMBER, what_is_no_number)
{
    for (const char* text :
         {"",   "+",   "-",   ".",  ",",  "5.", "1,",    "1,2",  ",5",  "1,,23", "1,.5",  "1.5,00", "1e",   "1e+",
          "e5", ".e5", "--1", "1-", " 1", "1 ", "1 000", "0x10", "nan", "inf",   "1e5.0", "1.2.3",  "1_000"})
        EXPECT_EQ(TOLV_NUMBER_SCAN_NONE, get_kind(QString::fromUtf8(text))) << "\"" << text << "\"";
}

TEST(TOLV_SCAN_NUMBER, one_line_feed_may_stand_behind)
{
    EXPECT_EQ(12.0, get_value("12\n"));
    EXPECT_EQ(1200.0, get_value("1.2e3\n"));
    for (const char* text : {"12\n\n", "\n12", "12\r\n", "12\n ", "\n", "1\n2"})
        EXPECT_EQ(TOLV_NUMBER_SCAN_NONE, get_kind(QString::fromUtf8(text))) << "\"" << text << "\"";
}

TEST(TOLV_SCAN_NUMBER, only_the_digits_0_to_9_count)
{
    for (const char* text : {"\u0661\u0662", "\uff11", "1\u00b2", "\u22125", "1\u066b5"})
        EXPECT_EQ(TOLV_NUMBER_SCAN_NONE, get_kind(QString::fromUtf8(text))) << text;
}

TEST(TOLV_SCAN_NUMBER, values_beyond_the_range)
{
    for (const char* text : {"1e999", "-1e999", "1e309", "1e-999", "2.4703282292062327e-324", "1e99999999999",
                             "1e-99999999999", "0.0001e-9999"})
        EXPECT_EQ(TOLV_NUMBER_SCAN_OUT_OF_RANGE, get_kind(QString::fromUtf8(text))) << text;
    EXPECT_EQ(TOLV_NUMBER_SCAN_OUT_OF_RANGE, get_kind(QString(400, QLatin1Char('9'))));
}

TEST(TOLV_SCAN_NUMBER, values_at_the_ends_of_the_range)
{
    EXPECT_EQ(1.7976931348623157e308, get_value("1.7976931348623157e308"));
    EXPECT_EQ(2.2250738585072014e-308, get_value("2.2250738585072014e-308"));
    EXPECT_EQ(4.9406564584124654e-324, get_value("4.9406564584124654e-324"));
    EXPECT_EQ(4.9406564584124654e-324, get_value("2.4703282292062328e-324"));
}

TEST(TOLV_SCAN_NUMBER, numbers_longer_than_any_screen)
{
    double value = 0;
    const QString ones = QString(300, QLatin1Char('1'));
    EXPECT_EQ(TOLV_NUMBER_SCAN_VALUE, tolv_scan_number(ones, &value));
    EXPECT_EQ(ones.toDouble(), value);
    // The exponent brings back what the zeros took away.
    EXPECT_EQ(
        TOLV_NUMBER_SCAN_VALUE,
        tolv_scan_number(QStringLiteral("0.") + QString(2000, QLatin1Char('0')) + QStringLiteral("15e2001"), &value));
    EXPECT_EQ(1.5, value);
    EXPECT_EQ(TOLV_NUMBER_SCAN_VALUE,
              tolv_scan_number(QString(200, QLatin1Char('0')) + QStringLiteral(",000.25"), &value));
    EXPECT_EQ(0.25, value);
}

// ---- Proof against the expression -----------------------------------------------------------------------------------

TEST(TOLV_SCAN_NUMBER, every_text_of_up_to_six_characters_is_taken_as_the_expression_takes_it)
{
    static constexpr char CHARACTERS[] = {'0', '7', ',', '.', 'e', '-', '+', '\n'};
    SCAN_COMPARISON comparison;
    QString text;
    comparison.compare(text);
    for (int size = 1; size <= 6; ++size)
    {
        text.resize(size);
        for (int number = 0; number < 1 << (3 * size); ++number)
        {
            for (int i = 0; i < size; ++i)
                text[i] = QLatin1Char(CHARACTERS[(number >> (3 * i)) & 7]);
            comparison.compare(text);
        }
    }
    EXPECT_EQ(299593, comparison.get_count());
    EXPECT_EQ(0, comparison.get_failure_count());
}

TEST(TOLV_SCAN_NUMBER, two_million_generated_texts_are_taken_as_the_expression_takes_them)
{
    TEXT_GENERATOR generator;
    SCAN_COMPARISON comparison;
    for (int i = 0; i < 2000000; ++i)
        comparison.compare(generator.get_text());
    EXPECT_EQ(0, comparison.get_failure_count());
    // The generator has not gone astray: much of everything came by.
    EXPECT_LT(1000000, comparison.get_count(TOLV_NUMBER_SCAN_VALUE));
    EXPECT_LT(400000, comparison.get_count(TOLV_NUMBER_SCAN_NONE));
    EXPECT_LT(80000, comparison.get_count(TOLV_NUMBER_SCAN_OUT_OF_RANGE));
}

TEST(TOLV_STRING_CMP, generated_pairs_are_ordered_as_the_expression_orders_them)
{
    TEXT_GENERATOR generator;
    std::array<int, 3> counts = {};
    int failure_count = 0;
    QString previous = generator.get_text();
    for (int i = 0; i < 300000; ++i)
    {
        // Near neighbours too: another form of the same number, or nearly the same text.
        const QString text = generator.draw(10) != 0  ? generator.get_text()
                             : generator.draw(2) != 0 ? previous + QLatin1Char('0')
                                                      : QLatin1Char('+') + previous;
        const int expected = compare_by_expression(previous, text);
        const int found = tolv_string_cmp(previous, text);
        ++counts[expected < 0 ? 0 : (expected > 0 ? 2 : 1)];
        if (found != expected && ++failure_count <= 10)
            ADD_FAILURE() << "\"" << previous.toStdString() << "\" and \"" << text.toStdString() << "\": expected "
                          << expected << ", found " << found;
        previous = text;
    }
    EXPECT_EQ(0, failure_count);
    EXPECT_LT(100000, counts[0]);
    EXPECT_LT(3000, counts[1]);
    EXPECT_LT(100000, counts[2]);
}
