// tolv_string_cmp() beside its rivals, in one run: the regular expression kept in a static, the expression compiled anew
// at each comparison, and QCollator in its numeric mode. Each comparison is one of two neighbours in a column of values.

#include "gen.h"
#include "tolv_string_cmp.h"

#include <QCollator>
#include <QRegularExpression>
#include <QVector>

#include <benchmark/benchmark.h>

#include <random>

namespace
{
constexpr int COLUMN_SIZE = 1024;

/// A column of a timing or resource table: integers, thousands commas, fractions.
QVector<QString> make_numbers()
{
    std::mt19937 engine(1);
    QVector<QString> column;
    for (int i = 0; i < COLUMN_SIZE; ++i)
    {
        switch (engine() % 4)
        {
        case 0:
            column << QString::number(engine() % 100000);
            break;
        case 1:
            column << QStringLiteral("%1,%2").arg(engine() % 1000).arg(engine() % 1000, 3, 10, QLatin1Char('0'));
            break;
        case 2:
            column << QString::number(engine() % 1000000 / 1000.0, 'f', 3);
            break;
        default:
            column << QString::number(engine() % 1000000 / -1000.0, 'f', 3);
            break;
        }
    }
    return column;
}

/// Numbers with more digits than a double holds, and exponents.
QVector<QString> make_long_numbers()
{
    std::mt19937_64 engine(2);
    QVector<QString> column;
    for (int i = 0; i < COLUMN_SIZE; ++i)
        column << QStringLiteral("0.%1%2e-%3").arg(engine()).arg(engine() % 1000).arg(engine() % 30);
    return column;
}

/// A column of names.
QVector<QString> make_names()
{
    std::mt19937 engine(3);
    QVector<QString> column;
    for (int i = 0; i < COLUMN_SIZE; ++i)
        column << QStringLiteral("top|uart_%1|fifo:rx_fifo|mem[%2]").arg(engine() % 8).arg(engine() % 512);
    return column;
}

const char* const PATTERN = "^[-+]?[0-9]*(\\,[0-9]+)*\\.?[0-9]+([eE][-+]?[0-9]+)?$";

int compare_by_expression(const QRegularExpression& expression, const QString& a, const QString& b)
{
    if (a.contains(expression) && b.contains(expression))
    {
        const QString plain_a = QString(a).remove(QLatin1Char(','));
        const QString plain_b = QString(b).remove(QLatin1Char(','));
        bool is_a_in_range = false;
        bool is_b_in_range = false;
        const double value_a = plain_a.toDouble(&is_a_in_range);
        const double value_b = plain_b.toDouble(&is_b_in_range);
        if (is_a_in_range && is_b_in_range)
        {
            if (plain_a == plain_b)
                return 0;
            const double difference = value_b - value_a;
            return difference > 0 ? -1 : (difference < 0 ? 1 : 0);
        }
    }
    return gen_signed_lexcmp(a.toLocal8Bit().constData(), b.toLocal8Bit().constData());
}

template <class COMPARE>
void run_column(benchmark::State& state, const QVector<QString>& column, COMPARE compare)
{
    int i = 0;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(compare(column[i], column[i + 1]));
        i = (i + 1) % (COLUMN_SIZE - 1);
    }
}

void with_tolv_string_cmp(benchmark::State& state, const QVector<QString>& column)
{
    run_column(state, column, [](const QString& a, const QString& b) { return tolv_string_cmp(a, b); });
}

void with_static_expression(benchmark::State& state, const QVector<QString>& column)
{
    static const QRegularExpression expression{QLatin1String(PATTERN)};
    run_column(state, column,
               [](const QString& a, const QString& b) { return compare_by_expression(expression, a, b); });
}

void with_expression_compiled_anew(benchmark::State& state, const QVector<QString>& column)
{
    run_column(state, column,
               [](const QString& a, const QString& b)
               { return compare_by_expression(QRegularExpression(QLatin1String(PATTERN)), a, b); });
}

void with_numeric_collator(benchmark::State& state, const QVector<QString>& column)
{
    static const QCollator collator = []
    {
        QCollator result(QLocale(QLocale::English, QLocale::UnitedStates)); // the C locale knows no numeric mode
        result.setNumericMode(true);
        return result;
    }();
    run_column(state, column, [](const QString& a, const QString& b) { return collator.compare(a, b); });
}
} // namespace

BENCHMARK_CAPTURE(with_tolv_string_cmp, numbers, make_numbers());
BENCHMARK_CAPTURE(with_static_expression, numbers, make_numbers());
BENCHMARK_CAPTURE(with_expression_compiled_anew, numbers, make_numbers());
BENCHMARK_CAPTURE(with_numeric_collator, numbers, make_numbers());
BENCHMARK_CAPTURE(with_tolv_string_cmp, long_numbers, make_long_numbers());
BENCHMARK_CAPTURE(with_static_expression, long_numbers, make_long_numbers());
BENCHMARK_CAPTURE(with_numeric_collator, long_numbers, make_long_numbers());
BENCHMARK_CAPTURE(with_tolv_string_cmp, names, make_names());
BENCHMARK_CAPTURE(with_static_expression, names, make_names());
BENCHMARK_CAPTURE(with_numeric_collator, names, make_names());

BENCHMARK_MAIN();
