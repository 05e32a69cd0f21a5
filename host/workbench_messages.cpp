#include "workbench_messages.h"

#include "tolv_font.h"
#include "tolv_contrast.h"

#include <QEvent>
#include <QScrollBar>
#include <QSyntaxHighlighter>
#include <QTextBlock>
#include <QTextCursor>
#include <QTime>

namespace
{
constexpr int LARGEST_COUNT = 10000; // older lines go
constexpr int IS_ERROR = QTextFormat::UserProperty;
} // namespace

/// Colours the lines by what they say. The document itself holds no colours: they can change at any time.
class WORKBENCH_MESSAGE_COLORS : public QSyntaxHighlighter
{
public:
    explicit WORKBENCH_MESSAGE_COLORS(QTextDocument* document) : QSyntaxHighlighter(document)
    {
        take_colors();
    }

    /// The colours that are in force.
    void take_colors()
    {
        m_note.setForeground(tolv_get_readable_color(TOLV_MSW_INFO_COLOR));
        m_error.setForeground(tolv_get_readable_color(TOLV_MSW_ERROR_COLOR));
    }

protected:
    void highlightBlock(const QString& text) override
    {
        const int begin = text.indexOf(QLatin1String("  ")) + 2; // behind the time
        const bool is_error = currentBlock().blockFormat().boolProperty(IS_ERROR);
        setFormat(begin, text.size() - begin, is_error ? m_error : m_note);
    }

private:
    QTextCharFormat m_note;
    QTextCharFormat m_error;
};

WORKBENCH_MESSAGES::WORKBENCH_MESSAGES(QWidget* parent)
    : QPlainTextEdit(parent), m_colors(new WORKBENCH_MESSAGE_COLORS(document()))
{
    setAccessibleName(tr("Messages"));
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    setMaximumBlockCount(LARGEST_COUNT);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    apply_drawing_resources();
}

void WORKBENCH_MESSAGES::add_note(const QString& text)
{
    add(text, false);
}

void WORKBENCH_MESSAGES::add_error(const QString& text)
{
    add(text, true);
}

void WORKBENCH_MESSAGES::apply_drawing_resources()
{
    setFont(*TOLV_FONT(TOLV_MSG_TEXT_FONT).get_font());
    m_colors->take_colors();
    m_colors->rehighlight();
}

void WORKBENCH_MESSAGES::changeEvent(QEvent* event)
{
    QPlainTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) // the ground has another colour
    {
        m_colors->take_colors();
        m_colors->rehighlight();
    }
}

void WORKBENCH_MESSAGES::add(const QString& text, bool is_error)
{
    QTextBlockFormat format;
    format.setProperty(IS_ERROR, is_error);
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    if (document()->isEmpty())
        cursor.setBlockFormat(format);
    else
        cursor.insertBlock(format);
    const QString time = QTime::currentTime().toString(QStringLiteral("HH:mm:ss  "));
    cursor.insertText(time + (is_error ? tr("Error: ") : QString()) + text);
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}
