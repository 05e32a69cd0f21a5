#include "tolv_qt_messages.h"

#include "cfg.h"
#include "gen.h"
#include "msg.h"
#include "msg_internal_error.h"
#include "tolv_app.h"
#include "tolv_dialog.h"
#include "tolv_mem.h"

#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QThread>
#include <QVBoxLayout>

#include <cstdarg>
#include <cstdio>
#include <mutex>

TOLV_MEM_INITIALIZER();

/// The handler that was in force before the last installation.
static QtMessageHandler tolv_old_QtMsgHandler = nullptr;

namespace
{
/// The window in which a developer sees the messages of the running tool. It lives as long as the main window.
class MESSAGE_WINDOW
{
public:
    static MESSAGE_WINDOW& get();

    /// Brings the window up, where there is none and there is a main window. Only the GUI thread can; a message of
    /// another thread leaves it to the next one.
    void create();
    /// Adds a line, on any thread.
    void show(const char* name, const char* color, const QString& message);

private:
    void forget_log();

    std::recursive_mutex m_mutex; ///< guards what follows; handing over may itself cause a message
    QPlainTextEdit* m_log = nullptr;
    QElapsedTimer m_timer;      ///< since the message before
    bool m_is_creating = false; ///< GUI thread only: what Qt says of the window's making makes no other window
};

MESSAGE_WINDOW& MESSAGE_WINDOW::get()
{
    static MESSAGE_WINDOW* const window = new MESSAGE_WINDOW; // outlives all that may say something
    return *window;
}

void MESSAGE_WINDOW::create()
{
    TOLV_APP* const app = tolv_get_app();
    if (app == nullptr || QThread::currentThread() != app->thread() || m_is_creating || m_log != nullptr)
        return;
    QWidget* const main_window = app->get_main_window();
    if (main_window == nullptr)
        return;
    m_is_creating = true;
    auto* const dlg = new TOLV_DIALOG(main_window, Qt::WindowFlags());
    dlg->setWindowTitle(QStringLiteral("qt_msg for %1").arg(QString::fromLocal8Bit(gen_get_module_filename().c_str())));
    auto* const log = new QPlainTextEdit(dlg);
    auto* const layout = new QVBoxLayout(dlg);
    layout->addWidget(log);
    QObject::connect(log, &QObject::destroyed, log, [this] { forget_log(); });
    {
        const std::lock_guard<std::recursive_mutex> lock(m_mutex);
        m_timer.start();
        m_log = log;
    }
    dlg->show();
    m_is_creating = false;
}

void MESSAGE_WINDOW::show(const char* name, const char* color, const QString& message)
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    if (m_log == nullptr)
        return;
    const QString text = QStringLiteral("<font face=\"monospace\" color=\"%1\">%2: %3</font>"
                                        "<font color=\"brown\">(%4 ms elapsed)</font>")
                             .arg(QLatin1String(color), QLatin1String(name), message.toHtmlEscaped(),
                                  QString::number(m_timer.restart()));
    // Queued: the message may come from another thread, or from inside a paint event.
    QMetaObject::invokeMethod(m_log, "appendHtml", Qt::QueuedConnection, Q_ARG(QString, text));
}

void MESSAGE_WINDOW::forget_log()
{
    const std::lock_guard<std::recursive_mutex> lock(m_mutex);
    m_log = nullptr;
}

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

const char* get_message_color(QtMsgType type)
{
    switch (type)
    {
    case QtDebugMsg:
        return "black";
    case QtWarningMsg:
        return "blue";
    case QtCriticalMsg:
        return "orange";
    case QtFatalMsg:
        return "red";
    default: // QtInfoMsg included, as with its name
        return "cyan";
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
    static const bool qt_msg_wnd_on = cfg_is_on("qt_msg_wnd");

    if (qt_msg_on)
    {
        const char* const name = get_message_name(type);
        record_debug_text(name, message.toLocal8Bit().constData());
        if (!gen_debug_is_customer_build())
        {
            show_message_line(get_message_line(name, context, message, qt_msg_with_source_on));
            if (qt_msg_wnd_on)
                MESSAGE_WINDOW::get().create();
            MESSAGE_WINDOW::get().show(name, get_message_color(type), message);
        }
    }
    if (type == QtFatalMsg)
        MSG_INTERNAL_ERROR::report(message.toLocal8Bit().constData(), "TOLV", "tolv_app", 611);
}

void tolv_install_QtMsgHandler(QtMessageHandler handler)
{
    tolv_old_QtMsgHandler = qInstallMessageHandler(handler);
}
