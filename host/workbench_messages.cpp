#include "workbench_messages.h"

#include <QScrollBar>
#include <QTextCursor>
#include <QTime>

namespace
{
constexpr int LARGEST_COUNT = 10000; // older lines go

/// A red that can be read on the background.
QColor get_error_color(const QPalette& palette)
{
    return palette.color(QPalette::Base).lightness() < 128 ? QColor(0xff, 0x80, 0x78) : QColor(0xb0, 0x10, 0x10);
}
} // namespace

WORKBENCH_MESSAGES::WORKBENCH_MESSAGES(QWidget* parent) : QPlainTextEdit(parent)
{
    setAccessibleName(tr("Messages"));
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    setMaximumBlockCount(LARGEST_COUNT);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
}

void WORKBENCH_MESSAGES::add_note(const QString& text)
{
    add(text, false);
}

void WORKBENCH_MESSAGES::add_error(const QString& text)
{
    add(text, true);
}

void WORKBENCH_MESSAGES::add(const QString& text, bool is_error)
{
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    if (!document()->isEmpty())
        cursor.insertBlock();
    QTextCharFormat plain;
    QTextCharFormat mark = plain;
    mark.setForeground(get_error_color(palette()));
    mark.setFontWeight(QFont::Bold);
    cursor.insertText(QTime::currentTime().toString(QStringLiteral("HH:mm:ss  ")), plain);
    if (is_error)
        cursor.insertText(tr("Error: "), mark);
    cursor.insertText(text, plain);
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}
