#pragma once

#include <QLineEdit>
#include <QStringList>
#include <QWidget>

class QPlainTextEdit;
class TCL_SESSION;

/// A line for commands. The up and down keys go through what was entered, Tab completes the word before the cursor.
class CONSOLE_LINE : public QLineEdit
{
    Q_OBJECT

public:
    /// @param session must outlive the line
    CONSOLE_LINE(TCL_SESSION* session, QWidget* parent);

    void add_to_history(const QString& command);

signals:
    /// Tab has found several names.
    void choices_found(const QStringList& names);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void complete();
    void go_in_history(int step);

    TCL_SESSION* m_session;
    QStringList m_history;
    int m_place = 0; ///< in the history; its size for the line that is not entered yet
    QString m_pending;
};

/// The console: what was entered and what came out, above a line for the next command. A command with an open brace or
/// quote goes on in the next line; Escape gives it up.
class CONSOLE_VIEW : public QWidget
{
    Q_OBJECT

public:
    explicit CONSOLE_VIEW(QWidget* parent = nullptr);

    TCL_SESSION* get_session() const;

public slots:
    /// Evaluates a command as if the user had entered it.
    void run(const QString& command);
    void clear();
    void scroll_to_bottom();

signals:
    /// A command has been evaluated.
    void command_finished(const QString& command, bool ok);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private slots:
    void enter();
    void print(const QString& text);
    void show_choices(const QStringList& names);

private:
    void add(const QString& text, const QColor& color);

    TCL_SESSION* m_session;
    QPlainTextEdit* m_output;
    CONSOLE_LINE* m_line;
    QString m_command; ///< the lines of one that is not complete
};
