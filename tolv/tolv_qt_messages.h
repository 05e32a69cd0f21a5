#pragma once

#include "tolv_export.h"

#include <QtGlobal>

/// Where Qt's own messages go (qDebug, qWarning, qCritical, qFatal and what Qt itself has to say). A user sees none of
/// them; a developer makes them visible by configuration. Qt calls the handlers on any thread.

/// The handler in force from TOLV_APP::copy_argv_for_qt() to the constructor of TOLV_APP. It drops the message, unless the
/// environment variable `NORVANE_SHOW_QT_MESSAGES` or `NORVANE_ENABLE_QT_MESSAGES` is set (to anything): then the
/// handler that was there before gets it unchanged.
TOLV_EXPORT void tolv_startup_QtMsgHandler(QtMsgType type, const QMessageLogContext& context, const QString& message);

/// The handler in force from the constructor of TOLV_APP to the end of the process; it passes nothing on to an earlier
/// one. With the configuration switch "qt_msg" on, each message becomes a debug record under the name of its kind
/// ("qDebug", "qWarning", "qCritical", "qFatal", all else "qUnknown"), and, but for a build delivered to customers, a
/// line on the debugger's output and on standard error: "qWarning: text", or with the switch "qt_msg_with_source" also
/// on "qWarning (file:line): text". If the environment variable `KORVEX_QT_DEBUG_BREAK_ON_QT_MSG` is set, the debugger
/// is entered at each such line. With "qt_msg_wnd" on as well, the first such message of the GUI thread behind the making
/// of the application's main window opens a window that shows it and all that follow, of all threads. It goes with the
/// main window; closing it only hides it. The switches are read once, at the first message.
///
/// A fatal message ends as an internal error, whatever the switches say.
TOLV_EXPORT void tolv_QtMsgHandler(QtMsgType type, const QMessageLogContext& context, const QString& message);

/// Puts a handler in force and keeps the one before for tolv_startup_QtMsgHandler(). For the application object.
void tolv_install_QtMsgHandler(QtMessageHandler handler);
