#include "assignment_file.h"

#include <QCoreApplication>
#include <QFile>
#include <QSaveFile>
#include <QStringList>
#include <QTextCodec>

#include <array>

namespace
{
const qint64 LARGEST_FILE = qint64(64) * 1024 * 1024;
const char* const FIRST_LINE = "norvane-constraints 1";
const int TEXT_COUNT = 7;

QString tr(const char* text)
{
    return QCoreApplication::translate("ASSIGNMENT_FILE", text);
}

template <typename ASSIGNMENT>
auto get_texts(ASSIGNMENT& a)
{
    return std::array{&a.m_field_1, &a.m_field_2, &a.m_field_3, &a.m_field_4, &a.m_field_5, &a.m_field_6, &a.m_field_7};
}

QString escape(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    text.replace(QLatin1Char('\t'), QLatin1String("\\t"));
    text.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    return text.replace(QLatin1Char('\r'), QLatin1String("\\r"));
}

/// False where a backslash has no meaning.
bool unescape(const QString& text, QString* plain)
{
    plain->clear();
    for (int i = 0; i < text.size(); ++i)
    {
        if (text.at(i) != QLatin1Char('\\'))
        {
            *plain += text.at(i);
            continue;
        }
        const QChar sign = ++i < text.size() ? text.at(i) : QChar();
        if (sign == QLatin1Char('\\'))
            *plain += sign;
        else if (sign == QLatin1Char('t'))
            *plain += QLatin1Char('\t');
        else if (sign == QLatin1Char('n'))
            *plain += QLatin1Char('\n');
        else if (sign == QLatin1Char('r'))
            *plain += QLatin1Char('\r');
        else
            return false;
    }
    return true;
}

/// What is wrong with a line; empty for nothing.
QString read_line(const QByteArray& line, TOLV_ASSIGNMENT* assignment)
{
    QTextCodec::ConverterState state;
    const QString decoded = QTextCodec::codecForName("UTF-8")->toUnicode(line.constData(), line.size(), &state);
    if (state.invalidChars > 0 || state.remainingChars > 0)
        return tr("the text is not in UTF-8");
    const QStringList parts = decoded.split(QLatin1Char('\t'));
    const QString& first = parts.constFirst();
    if (first != QLatin1String("on") && first != QLatin1String("off"))
        return tr("a line begins with \"on\" or \"off\", and a tab");
    if (parts.size() > TEXT_COUNT + 1)
        return tr("there are %1 texts instead of at most %2").arg(parts.size() - 1).arg(TEXT_COUNT);
    assignment->m_flag = first == QLatin1String("on");
    const auto texts = get_texts(*assignment);
    for (int i = 1; i < parts.size(); ++i)
    {
        if (!unescape(parts.at(i), texts.at(static_cast<std::size_t>(i - 1))))
            return tr("a backslash is followed by another sign than \\, t, n or r");
    }
    return QString();
}

QString write_line(const TOLV_ASSIGNMENT& assignment)
{
    QStringList parts{assignment.m_flag ? QStringLiteral("on") : QStringLiteral("off")};
    for (const QString* text : get_texts(assignment))
        parts.append(escape(*text));
    while (parts.constLast().isEmpty())
        parts.removeLast();
    return parts.join(QLatin1Char('\t')) + QLatin1Char('\n');
}
} // namespace

QString assignment_file_read(const QString& file, TOLV_ASSIGNMENT_LIST* assignments)
{
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly))
        return tr("%1: %2").arg(file, source.errorString());
    if (source.size() > LARGEST_FILE)
        return tr("%1: the file is larger than %2 MB").arg(file, QString::number(LARGEST_FILE / 1024 / 1024));
    const auto fail = [&file](int line, const QString& text)
    { return QStringLiteral("%1:%2: %3").arg(file, QString::number(line), text); };
    const auto read_next = [&source]
    {
        QByteArray line = source.readLine();
        while (line.endsWith('\n') || line.endsWith('\r'))
            line.chop(1);
        return line;
    };
    if (read_next() != FIRST_LINE)
        return fail(1, tr("a file of constraints begins with the line \"%1\"").arg(QLatin1String(FIRST_LINE)));
    TOLV_ASSIGNMENT_LIST result;
    for (int line = 2; !source.atEnd(); ++line)
    {
        const QByteArray text = read_next();
        TOLV_ASSIGNMENT assignment;
        const QString error = text.isEmpty() ? QString() : read_line(text, &assignment);
        if (!error.isEmpty())
            return fail(line, error);
        if (!text.isEmpty())
            result.insert(assignment);
    }
    if (source.error() != QFileDevice::NoError)
        return tr("%1: %2").arg(file, source.errorString());
    *assignments = result;
    return QString();
}

QString assignment_file_write(const QString& file, const TOLV_ASSIGNMENT_LIST& assignments)
{
    QByteArray content = QByteArray(FIRST_LINE) + '\n';
    for (const TOLV_ASSIGNMENT& assignment : assignments.get_list())
        content += write_line(assignment).toUtf8();
    QSaveFile target(file);
    if (!target.open(QIODevice::WriteOnly) || target.write(content) != content.size() || !target.commit())
        return tr("%1: %2").arg(file, target.errorString());
    return QString();
}
