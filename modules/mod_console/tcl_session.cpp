#include "tcl_session.h"

#include "xtcl.h"

#include <QPointer>
#include <QStringList>
#include <QVector>

#include <tcl.h>

namespace
{
QVector<QPointer<TCL_SESSION>>& get_sessions()
{
    static QVector<QPointer<TCL_SESSION>> sessions;
    return sessions;
}

// The interpreter's own command keeps its work under another name.
const char REDIRECT[] = R"(
rename ::puts ::tolv_console_puts
proc ::puts {args} {
    set words $args
    set end "\n"
    if {[lindex $words 0] eq "-nonewline"} {
        set end ""
        set words [lrange $words 1 end]
    }
    if {[llength $words] == 1} {
        set words [linsert $words 0 stdout]
    }
    if {[llength $words] == 2 && [lindex $words 0] in {stdout stderr}} {
        ::tolv_console_print "[lindex $words 1]$end"
    }
    ::tolv_console_puts {*}$args
}
)";

const char RESTORE[] = "rename ::puts {}; rename ::tolv_console_puts ::puts; rename ::tolv_console_print {}";

int print(ClientData, Tcl_Interp* interpreter, int count, Tcl_Obj* const words[])
{
    if (count != 2)
    {
        Tcl_WrongNumArgs(interpreter, 1, words, "text");
        return TCL_ERROR;
    }
    const QString text = QString::fromUtf8(Tcl_GetString(words[1]));
    const QVector<QPointer<TCL_SESSION>> sessions = get_sessions();
    for (const QPointer<TCL_SESSION>& session : sessions)
    {
        if (session != nullptr)
            emit session->printed(text);
    }
    return TCL_OK;
}
} // namespace

TCL_SESSION::TCL_SESSION(QObject* parent) : QObject(parent)
{
    Tcl_Interp* const interpreter = xtcl_get_interpreter();
    if (get_sessions().isEmpty() && interpreter != nullptr)
    {
        Tcl_CreateObjCommand(interpreter, "::tolv_console_print", &print, nullptr, nullptr);
        xtcl_tcl_eval(interpreter, REDIRECT, 0);
    }
    get_sessions().append(this);
}

TCL_SESSION::~TCL_SESSION()
{
    get_sessions().removeAll(this);
    Tcl_Interp* const interpreter = xtcl_get_interpreter();
    if (get_sessions().isEmpty() && interpreter != nullptr)
        xtcl_tcl_eval(interpreter, RESTORE, 0);
}

TCL_SESSION::RESULT TCL_SESSION::evaluate(const QString& command)
{
    Tcl_Interp* const interpreter = xtcl_get_interpreter();
    if (interpreter == nullptr)
        return {false, tr("The Tcl interpreter has been shut down.")};
    RESULT result;
    result.is_ok = xtcl_tcl_eval(interpreter, command.toStdString(), TCL_EVAL_GLOBAL) == TCL_OK;
    Tcl_Interp* const present = xtcl_get_interpreter(); // null where the command has ended the service
    result.text = present != nullptr ? QString::fromUtf8(Tcl_GetStringResult(present)) : QString();
    return result;
}

bool TCL_SESSION::is_complete(const QString& command)
{
    return Tcl_CommandComplete(command.toUtf8().constData()) != 0;
}

QStringList TCL_SESSION::get_completions(const QString& start)
{
    const bool is_variable = start.startsWith(QLatin1Char('$'));
    const QString name = is_variable ? start.mid(1) : start;
    if (name.contains(QRegExp(QStringLiteral("[^A-Za-z0-9_:.]"))))
        return QStringList();
    const RESULT result = evaluate(
        (is_variable ? QStringLiteral("lsort [info vars {%1*}]") : QStringLiteral("lsort [info commands {%1*}]"))
            .arg(name));
    QStringList names = result.is_ok ? result.text.split(QLatin1Char(' '), Qt::SkipEmptyParts) : QStringList();
    if (is_variable)
        names.replaceInStrings(QRegExp(QStringLiteral("^")), QStringLiteral("$"));
    return names;
}
