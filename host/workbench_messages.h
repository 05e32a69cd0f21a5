#pragma once

#include <QPlainTextEdit>

/// What the workbench has to say, one message a line, the latest at the end. The user can select and copy it.
class WORKBENCH_MESSAGES : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit WORKBENCH_MESSAGES(QWidget* parent = nullptr);

    void add_note(const QString& text);
    /// The same, marked as an error.
    void add_error(const QString& text);

private:
    void add(const QString& text, bool is_error);
};
