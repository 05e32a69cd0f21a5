#include "tolv_global.h"

#include "gen.h"
#include "msg_internal_error.h"
#include "tolv_action_auto.h"
#include "tolv_mem.h"

#include <QMetaMethod>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>
#include <vector>

TOLV_MEM_INITIALIZER();

namespace
{
/// The name and arguments of a member text, without the digit in front that SIGNAL() and SLOT() put there.
QByteArray get_member_signature(const char* member)
{
    return QMetaObject::normalizedSignature(member != nullptr && *member != '\0' ? member + 1 : nullptr);
}

/// QMetaObject::checkConnectArgs() for texts of any form: Qt's own reads beyond a text that has no parenthesis.
bool check_connect_args(const char* signal, const char* method)
{
    const QByteArray normalized_signal = QMetaObject::normalizedSignature(signal);
    const QByteArray normalized_method = QMetaObject::normalizedSignature(method);
    return normalized_signal.contains('(') && normalized_method.contains('(') &&
           QMetaObject::checkConnectArgs(normalized_signal.constData(), normalized_method.constData());
}

/// "valid and maps to QTimer::timeout()", for the member with this index in the class; -1 for none.
QString describe_member(const QMetaObject* meta_object, int index)
{
    return QStringLiteral("%1 and maps to %2::%3")
        .arg(index != -1 ? QStringLiteral("valid") : QStringLiteral("invalid"),
             QString::fromLocal8Bit(meta_object->className()),
             index != -1 ? QString::fromLocal8Bit(meta_object->method(index).methodSignature()) : QString());
}

QString describe_failed_connection(const QObject& sender, const char* signal, const QObject& receiver,
                                   const char* method)
{
    const QMetaObject* const sender_class = sender.metaObject();
    const QMetaObject* const receiver_class = receiver.metaObject();
    QString text = QStringLiteral("Error connecting SIGNAL %1::%2 to SLOT %3::%4")
                       .arg(QString::fromLocal8Bit(sender_class->className()), QString::fromLocal8Bit(signal),
                            QString::fromLocal8Bit(receiver_class->className()), QString::fromLocal8Bit(method));
    text += QStringLiteral("\n\tQMetaObject::checkConnectArgs() returns %1")
                .arg(check_connect_args(signal, method) ? QStringLiteral("true") : QStringLiteral("false"));

    const int signal_index = sender_class->indexOfSignal(get_member_signature(signal).constData());
    text += QStringLiteral("\n\tSIGNAL signature is %1").arg(describe_member(sender_class, signal_index));
    const int slot_index = receiver_class->indexOfSlot(get_member_signature(method).constData());
    text += QStringLiteral("\n\tSLOT signature is %1\n").arg(describe_member(receiver_class, slot_index));
    return text;
}

QString describe_null_partner(const QObject* sender, const QObject* receiver)
{
    if (sender == nullptr && receiver == nullptr)
        return QStringLiteral("Error connecting SIGNALS: The sender and the receiver pointers are NULL!");
    if (sender == nullptr)
        return QStringLiteral("Error connecting SIGNALS: The sender pointer is NULL!");
    return QStringLiteral("Error connecting SIGNALS: The receiver pointer is NULL!");
}

/// The encoders' common check. The crash report is their main user and stands in the report as the file.
bool check_string_to_encode(const QString* string_to_encode, int line)
{
    if (string_to_encode != nullptr)
        return true;
    MSG_INTERNAL_ERROR::report("string_to_encode != 0", "TOLV", "tolv_crash_reporter_dlg", line);
    return false;
}
} // namespace

void tolv_safe_connect(const QObject* sender, const char* signal, const QObject* receiver, const char* method,
                       Qt::ConnectionType type, const char* file, int line)
{
    if (QObject::connect(sender, signal, receiver, method, type))
        return;

    QString text = sender != nullptr && receiver != nullptr
                       ? describe_failed_connection(*sender, signal, *receiver, method)
                       : describe_null_partner(sender, receiver);
    if (file != nullptr)
    {
        text =
            text.trimmed() +
            QStringLiteral("\n\tConnect location: %1: %2\n").arg(QString::fromLocal8Bit(file), QString::number(line));
    }
    MSG_INTERNAL_ERROR::report(text.toLocal8Bit().constData(), "TOLV", "tolv_global", 476);
}

QString tolv_escape_regexp_chars(QString text)
{
    static const QRegularExpression special_characters(QStringLiteral("([.^$|()\\[\\]{}*+?\\\\])"));
    return text.replace(special_characters, QStringLiteral("\\\\1"));
}

void tolv_html_encode_text(QString* string_to_encode)
{
    if (!check_string_to_encode(string_to_encode, __LINE__))
        return;
    string_to_encode->replace(QLatin1Char('&'), QLatin1String("&amp;"));
    string_to_encode->replace(QLatin1Char('<'), QLatin1String("&lt;"));
    string_to_encode->replace(QLatin1Char('>'), QLatin1String("&gt;"));
    string_to_encode->replace(QLatin1Char('"'), QLatin1String("&quot;"));
    string_to_encode->replace(QLatin1Char('\''), QLatin1String("&apos;"));
}

void tolv_url_encode_text(QString* string_to_encode)
{
    if (!check_string_to_encode(string_to_encode, __LINE__))
        return;
    string_to_encode->replace(QLatin1Char('%'), QLatin1String("%25"));
    string_to_encode->replace(QLatin1Char('\t'), QLatin1String("%09"));
    string_to_encode->replace(QLatin1Char('\n'), QLatin1String("%0A"));
    *string_to_encode = string_to_encode->simplified();
    string_to_encode->replace(QLatin1Char('+'), QLatin1String("%2B"));
    string_to_encode->replace(QLatin1Char(' '), QLatin1String("+"));
    string_to_encode->replace(QLatin1Char('&'), QLatin1String("%26"));
}

void tolv_email_encode_text(QString* string_to_encode)
{
    if (!check_string_to_encode(string_to_encode, __LINE__))
        return;
    *string_to_encode = QString::fromUtf8(QUrl::toPercentEncoding(*string_to_encode));
}

// By value, as hosts know it.
std::string tolv_qstring_to_stl_string(QString text) // NOLINT(performance-unnecessary-value-param)
{
    return text.toLocal8Bit().constData();
}

QString tolv_get_menu_text_without_symbol(TOLV_ACTION_ENUM action)
{
    QString text = QString::fromLatin1(tolv_get_menu_text(action));
    text.replace(QLatin1String(" && "), QLatin1String(" AND ")); // past the removal of the marks
    text.remove(QLatin1Char('&'));
    text.remove(QLatin1String("..."));
    text.replace(QLatin1String(" AND "), QLatin1String(" & "));
    return text;
}

std::string tolv_create_filter(std::string description, const std::list<FIO_FILE_TYPE>& types)
{
    std::vector<std::string> seen_extensions;
    description += " (";
    for (const FIO_FILE_TYPE type : types)
    {
        std::list<FIO_EXTENSION_TYPE> extension_types;
        FIO_EXTENSION_TYPE_INFO::get_extension_type_list(type, &extension_types);
        for (const FIO_EXTENSION_TYPE extension_type : extension_types)
        {
            const std::string extension = fio_get_extension_string(extension_type);
            const auto is_same = [&extension](const std::string& seen)
            { return gen_stricmp(seen.c_str(), extension.c_str()) == 0; };
            if (extension.empty() || std::any_of(seen_extensions.begin(), seen_extensions.end(), is_same))
                continue;
            seen_extensions.push_back(extension);
            description += "*" + extension + " ";
        }
    }
    description.back() = ')'; // the blank behind the last pattern, or the "(" where there is none
    return description;
}

std::string tolv_create_filter(FIO_FILE_TYPE_FLAG flag, std::string description, FIO_EDITOR_TYPE editor)
{
    if (description.empty())
        description = fio_get_file_type_trait_string(flag);
    std::list<FIO_FILE_TYPE> types;
    FIO_FILE_TYPE_INFO::get_file_type_list(flag, editor, &types);
    return tolv_create_filter(std::move(description), types);
}

QColor tolv_get_random_partition_color()
{
    static GEN_RAND random(gen_get_tick_count());
    const unsigned int saturation = random.draw() % 125 + 75;
    const unsigned int hue = random.draw() % 360;
    return QColor::fromHsv(static_cast<int>(hue), static_cast<int>(saturation), 255, 255);
}

QColor tolv_get_heatmap_color(int percent)
{
    const float hue = (100.0F - static_cast<float>(percent)) * 2.4F / 360.0F; // single precision is meant
    QColor color;
    color.setHsvF(static_cast<qreal>(hue), 1.0, 1.0, 1.0);
    return color;
}

QLinearGradient tolv_get_heatmap_gradient()
{
    QLinearGradient gradient(0, 0, 1, 0);
    gradient.setCoordinateMode(QGradient::ObjectBoundingMode);
    for (const qreal position : {0.0, 0.25, 0.5, 0.75, 1.0})
        gradient.setColorAt(position, tolv_get_heatmap_color(static_cast<int>(position * 100)));
    return gradient;
}
