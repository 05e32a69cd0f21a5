#pragma once

#include <QPlainTextEdit>

class MESSAGE_COLORS;

/// What a tool has to say, one message a line, the latest at the end. The user can select and copy it. Font and
/// colours are named ones of the drawing resources: TOLV_MSG_TEXT_FONT, TOLV_MSW_INFO_COLOR, TOLV_MSW_ERROR_COLOR.
class MESSAGE_VIEW : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit MESSAGE_VIEW(QWidget* parent = nullptr);

    void add_note(const QString& text);
    /// The same, marked as an error.
    void add_error(const QString& text);

    /// Takes over the font and the colours that are in force, for what is there and what will come.
    void apply_drawing_resources();

protected:
    void changeEvent(QEvent* event) override;

private:
    void add(const QString& text, bool is_error);

    MESSAGE_COLORS* m_colors;
};
