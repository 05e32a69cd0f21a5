#pragma once

#include <QObject>
#include <QString>

#include <memory>

/// Commands of the user in the process's one Tcl interpreter, and what they print. While there is a session, `puts` to
/// the standard output and the standard error goes to printed() of all sessions, too. GUI thread.
class TCL_SESSION : public QObject
{
    Q_OBJECT

public:
    explicit TCL_SESSION(QObject* parent = nullptr);
    ~TCL_SESSION() override;

    struct RESULT
    {
        bool is_ok = false;
        QString text; ///< the result, or what went wrong
    };
    /// Evaluates a command at global level.
    RESULT evaluate(const QString& command);

    /// Whether the text is a whole command: an open brace or quote wants more lines.
    static bool is_complete(const QString& command);
    /// Names of commands and, behind "$", of variables that begin with a text.
    QStringList get_completions(const QString& start);

signals:
    /// A command has printed a text, line ends included.
    void printed(const QString& text);
};
