#include "cfgq_registry_format_p.h"

#include <QDataStream>
#include <QIODevice>
#include <QLocale>
#include <QStringList>

#include <cmath>

namespace
{
const char FIRST_LINE[] = "# Norvane user settings. The last line tells that the file is whole: keep it.\n";
const char LAST_LINE[] = "# End of the user settings.\n";
const qint64 SIZE_LIMIT = qint64(512) * 1024 * 1024; ///< of a store, in bytes: nothing that settings ever reach

/// Characters that would not survive in a line of text, or that an editor would not show.
bool is_unsafe(const QString& text, int i)
{
    const QChar c = text.at(i);
    if (c.isHighSurrogate())
        return i + 1 >= text.size() || !text.at(i + 1).isLowSurrogate();
    if (c.isLowSurrogate())
        return i == 0 || !text.at(i - 1).isHighSurrogate();
    if (c.unicode() > 0x20 && c.unicode() < 0x7f)
        return false;
    const QChar::Category category = c.category();
    return category == QChar::Other_Control || category == QChar::Other_Format || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
}

bool must_escape(const QString& text, int i, QLatin1String special)
{
    const QChar c = text.at(i);
    return c == QLatin1Char('%') || is_unsafe(text, i) || special.contains(c);
}

QString escape(const QString& text, const char* more)
{
    const QLatin1String special(more);
    int unchanged = 0;
    while (unchanged < text.size() && !must_escape(text, unchanged, special))
        ++unchanged;
    if (unchanged == text.size())
        return text;

    QString result = text.left(unchanged);
    result.reserve(text.size() + 8);
    for (int i = unchanged; i < text.size(); ++i)
    {
        const QChar c = text.at(i);
        if (!must_escape(text, i, special))
            result += c;
        else if (c.unicode() < 0x80)
            result += QLatin1Char('%') + QString::number(c.unicode(), 16).rightJustified(2, QLatin1Char('0')).toUpper();
        else
            result +=
                QLatin1String("%u") + QString::number(c.unicode(), 16).rightJustified(4, QLatin1Char('0')).toUpper();
    }
    return result;
}

bool unescape(const QString& text, QString* result)
{
    if (!text.contains(QLatin1Char('%')))
    {
        *result = text;
        return true;
    }
    result->clear();
    result->reserve(text.size());
    for (int i = 0; i < text.size(); ++i)
    {
        if (text.at(i) != QLatin1Char('%'))
        {
            *result += text.at(i);
            continue;
        }
        const bool is_long = i + 1 < text.size() && text.at(i + 1) == QLatin1Char('u');
        const int start = is_long ? i + 2 : i + 1;
        const int length = is_long ? 4 : 2;
        const QStringRef digits = text.midRef(start, length);
        bool ok = false;
        const ushort code = digits.toUShort(&ok, 16);
        if (!ok || digits.size() != length || digits.at(0) == QLatin1Char('+'))
            return false;
        *result += QChar(code);
        i = start + length - 1;
    }
    return true;
}

/// The part of `text` between `prefix` and a closing parenthesis.
bool take_argument(const QString& text, const char* prefix, QString* argument)
{
    const QLatin1String start(prefix);
    if (!text.startsWith(start) || !text.endsWith(QLatin1Char(')')))
        return false;
    *argument = text.mid(start.size(), text.size() - start.size() - 1);
    return true;
}

bool decode_stream(const QByteArray& bytes, QVariant* value)
{
    QDataStream stream(bytes);
    stream.setVersion(QDataStream::Qt_5_15);
    stream >> *value;
    return stream.status() == QDataStream::Ok && stream.atEnd();
}

bool encode_stream(const QVariant& value, QString* text)
{
    QByteArray bytes;
    {
        // Asked beforehand, since QVariant only prints a warning for a type that no stream takes.
        QDataStream probe(&bytes, QIODevice::WriteOnly);
        if (value.isValid() && !QMetaType::save(probe, value.userType(), value.constData()))
            return false;
    }
    bytes.clear();
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << value;
    if (stream.status() != QDataStream::Ok)
        return false;
    *text = QLatin1String("@variant(") + QString::fromLatin1(bytes.toBase64()) + QLatin1Char(')');
    return true;
}

bool has_only_text(const QString& text)
{
    for (const QChar c : text)
    {
        if ((c.unicode() < 0x20 && c != QLatin1Char('\n')) || c.unicode() == 0x7f)
            return false;
    }
    return true;
}

/// The lines between the first and the last one; false where these are missing or the file is no text.
bool read_lines(QIODevice& device, QVector<QStringRef>* lines, QString* text)
{
    if (device.readLine(sizeof(FIRST_LINE)) != FIRST_LINE || device.size() > SIZE_LIMIT)
        return false;
    QByteArray data = device.readAll();
    if (!data.endsWith(LAST_LINE))
        return false;
    data.chop(int(sizeof(LAST_LINE)) - 1);
    if (!data.isEmpty() && !data.endsWith('\n'))
        return false;
    *text = QString::fromUtf8(data);
    if (text->toUtf8() != data || !has_only_text(*text))
        return false;
    *lines = text->splitRef(QLatin1Char('\n'), Qt::SkipEmptyParts);
    return true;
}

/// Brings a folder as it was read to the spelling that escape_name() gives.
bool normalise_folder(const QString& text, QString* folder)
{
    QStringList segments;
    for (const QString& segment : text.split(QLatin1Char('/')))
    {
        QString name;
        if (!CFGQ_REGISTRY_FORMAT::unescape_name(segment, &name))
            return false;
        segments << CFGQ_REGISTRY_FORMAT::escape_name(name);
    }
    *folder = segments.join(QLatin1Char('/'));
    return true;
}

bool read_line(const QStringRef& line, QString* folder, std::vector<CFGQ_REGISTRY_FORMAT::ROW>* rows)
{
    if (line.startsWith(QLatin1Char('#')) || line.startsWith(QLatin1Char(';')))
        return true;
    if (line.startsWith(QLatin1Char('[')))
        return line.endsWith(QLatin1Char(']')) && normalise_folder(line.mid(1, line.size() - 2).toString(), folder);
    const int equals = line.indexOf(QLatin1Char('='));
    QString name;
    if (equals < 0 || folder->isEmpty() || !CFGQ_REGISTRY_FORMAT::unescape_name(line.left(equals).toString(), &name))
        return false;
    rows->push_back({*folder, name, line.mid(equals + 1).toString()});
    return true;
}
} // namespace

QString CFGQ_REGISTRY_FORMAT::escape_name(const QString& name)
{
    return name.isEmpty() ? QStringLiteral("%") : escape(name, "/=[]\\#;");
}

bool CFGQ_REGISTRY_FORMAT::unescape_name(const QString& text, QString* name)
{
    if (text == QLatin1String("%"))
    {
        *name = QLatin1String("");
        return true;
    }
    return !text.isEmpty() && unescape(text, name);
}

QString CFGQ_REGISTRY_FORMAT::make_key(const QString& folder, const QString& name)
{
    return folder + QLatin1String("/=") + escape_name(name);
}

bool CFGQ_REGISTRY_FORMAT::split_key(const QString& key, QString* folder, QString* name)
{
    const int slash = key.lastIndexOf(QLatin1String("/="));
    if (slash <= 0 || !unescape_name(key.mid(slash + 2), name))
        return false;
    *folder = key.left(slash);
    return true;
}

bool CFGQ_REGISTRY_FORMAT::encode(const QVariant& value, QString* text)
{
    if (!value.isValid())
    {
        *text = QStringLiteral("@invalid()");
        return true;
    }
    // What counts as null has more to it than its text: that goes to the stream.
    const int type = value.isNull() ? QMetaType::UnknownType : value.userType();
    switch (type)
    {
    case QMetaType::QString:
        *text = escape(value.toString(), "");
        if (text->startsWith(QLatin1Char('@')))
            text->replace(0, 1, QLatin1String("%40"));
        return true;
    case QMetaType::Bool:
        *text = value.toBool() ? QStringLiteral("@bool(true)") : QStringLiteral("@bool(false)");
        return true;
    case QMetaType::Int:
        *text = QLatin1String("@int(") + QString::number(value.toInt()) + QLatin1Char(')');
        return true;
    case QMetaType::Double:
        if (std::isfinite(value.toDouble()) && !(value.toDouble() == 0.0 && std::signbit(value.toDouble())))
        {
            *text = QLatin1String("@double(") + QString::number(value.toDouble(), 'g', QLocale::FloatingPointShortest) +
                    QLatin1Char(')');
            return true;
        }
        return encode_stream(value, text);
    default:
        return encode_stream(value, text);
    }
}

bool CFGQ_REGISTRY_FORMAT::decode(const QString& text, QVariant* value)
{
    QString argument;
    bool ok = false;
    if (!text.startsWith(QLatin1Char('@')))
    {
        ok = unescape(text, &argument);
        *value = ok ? QVariant(argument.isNull() ? QLatin1String("") : argument) : QVariant();
    }
    else if (take_argument(text, "@int(", &argument))
        *value = argument.toInt(&ok);
    else if (take_argument(text, "@double(", &argument))
        *value = argument.toDouble(&ok);
    else if (take_argument(text, "@bool(", &argument))
    {
        *value = argument == QLatin1String("true");
        ok = value->toBool() || argument == QLatin1String("false");
    }
    else if (take_argument(text, "@variant(", &argument))
        ok = decode_stream(QByteArray::fromBase64(argument.toLatin1()), value);
    else if (text == QLatin1String("@invalid()"))
    {
        *value = QVariant();
        ok = true;
    }
    return ok;
}

bool CFGQ_REGISTRY_FORMAT::read_rows(QIODevice& device, std::vector<ROW>* rows)
{
    QVector<QStringRef> lines;
    QString text;
    if (!read_lines(device, &lines, &text))
        return false;
    rows->reserve(size_t(lines.size()));
    QString folder;
    for (const QStringRef& line : qAsConst(lines))
    {
        if (!read_line(line, &folder, rows))
            return false;
    }
    return true;
}

bool CFGQ_REGISTRY_FORMAT::read(QIODevice& device, QSettings::SettingsMap& map)
{
    std::vector<ROW> rows;
    if (!read_rows(device, &rows))
        return false;
    for (const ROW& row : rows)
        map.insert(make_key(row.folder, row.name), row.text);
    return true;
}

bool CFGQ_REGISTRY_FORMAT::write(QIODevice& device, const QSettings::SettingsMap& map)
{
    // The map's own order would open a folder anew behind each of its folders.
    QMap<QString, QByteArray> folders;
    for (auto i = map.constBegin(); i != map.constEnd(); ++i)
    {
        const int slash = i.key().lastIndexOf(QLatin1String("/="));
        if (slash > 0)
            folders[i.key().left(slash)] +=
                i.key().mid(slash + 2).toUtf8() + '=' + i.value().toString().toUtf8() + '\n';
    }
    QByteArray data = FIRST_LINE;
    for (auto i = folders.constBegin(); i != folders.constEnd(); ++i)
        data += '[' + i.key().toUtf8() + "]\n" + i.value();
    data += LAST_LINE;
    return device.write(data) == data.size();
}

QSettings::Format CFGQ_REGISTRY_FORMAT::get_settings_format()
{
    static const QSettings::Format format =
        QSettings::registerFormat(QStringLiteral("norvane_registry"), read, write, Qt::CaseSensitive);
    return format;
}
