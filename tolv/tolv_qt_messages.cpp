#include "tolv_qt_messages.h"

#include "cfg.h"
#include "gen.h"
#include "msg.h"
#include "msg_internal_error.h"
#include "tolv_mem.h"

#include <QString>

#include <cstdarg>
#include <cstdio>

TOLV_MEM_INITIALIZER();

/// The handler that was in force before the last installation.
static QtMessageHandler tolv_old_QtMsgHandler = nullptr;

namespace
{
const char* get_message_name(QtMsgType type)
{
    switch (type)
    {
    case QtDebugMsg:
        return "qDebug";
    case QtWarningMsg:
        return "qWarning";
    case QtCriticalMsg:
        return "qCritical";
    case QtFatalMsg:
        return "qFatal";
    default: // QtInfoMsg has deliberately no name of its own
        return "qUnknown";
    }
}

/// msg_local_vdebug() with an empty list of arguments.
void record_debug_text(const char* key, const char* text, ...)
{
    va_list arguments;
    va_start(arguments, text);
    msg_local_vdebug(key, text, arguments);
    va_end(arguments);
}

QString get_message_line(const char* name, const QMessageLogContext& context, const QString& message, bool with_source)
{
    if (!with_source)
        return QStringLiteral("%1: %2\n").arg(QLatin1String(name), message);
    return QStringLiteral("%1 (%2:%3): %4\n")
        .arg(QLatin1String(name), QString::fromLocal8Bit(context.file), QString::number(context.line), message);
}

void show_message_line(const QString& line)
{
    const QByteArray local_line = line.toLocal8Bit();
    gen_debug_output_string(local_line.constData());
    std::fprintf(stderr, "%s", local_line.constData());
    if (qEnvironmentVariableIsSet("KORVEX_QT_DEBUG_BREAK_ON_QT_MSG"))
        gen_debug_break(true);
}
} // namespace

void tolv_startup_QtMsgHandler(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (!qEnvironmentVariableIsSet("NORVANE_SHOW_QT_MESSAGES") &&
        !qEnvironmentVariableIsSet("NORVANE_ENABLE_QT_MESSAGES"))
        return;
    // Installed twice, this handler is its own predecessor.
    if (tolv_old_QtMsgHandler != nullptr && tolv_old_QtMsgHandler != tolv_startup_QtMsgHandler)
        tolv_old_QtMsgHandler(type, context, message);
}

void tolv_QtMsgHandler(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    static const bool qt_msg_on = cfg_is_on("qt_msg");
    static const bool qt_msg_with_source_on = cfg_is_on("qt_msg_with_source");

    if (qt_msg_on)
    {
        const char* const name = get_message_name(type);
        record_debug_text(name, message.toLocal8Bit().constData());
        if (!gen_debug_is_customer_build())
            show_message_line(get_message_line(name, context, message, qt_msg_with_source_on));
    }
    if (type == QtFatalMsg)
        MSG_INTERNAL_ERROR::report(message.toLocal8Bit().constData(), "TOLV", "tolv_app", 611);
}

void tolv_install_QtMsgHandler(QtMessageHandler handler)
{
    tolv_old_QtMsgHandler = qInstallMessageHandler(handler);
}
