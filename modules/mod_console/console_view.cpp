#include "console_view.h"

#include "tcl_session.h"

#include "tolv_contrast.h"
#include "tolv_font.h"
#include "tolv_global.h"

#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextCursor>
#include <QVBoxLayout>

#include <algorithm>

namespace
{
const int LARGEST_LINE_COUNT = 20000; ///< older lines go
const int LARGEST_HISTORY = 500;

/// The beginning that all names have.
QString get_common_start(const QStringList& names)
{
    QString start = names.constFirst();
    for (const QString& name : names)
    {
        while (!name.startsWith(start))
            start.chop(1);
    }
    return start;
}
} // namespace

CONSOLE_LINE::CONSOLE_LINE(TCL_SESSION* session, QWidget* parent) : QLineEdit(parent), m_session(session)
{
}

void CONSOLE_LINE::add_to_history(const QString& command)
{
    if (!command.isEmpty() && (m_history.isEmpty() || m_history.constLast() != command))
        m_history.append(command);
    while (m_history.size() > LARGEST_HISTORY)
        m_history.removeFirst();
    m_place = m_history.size();
    m_pending.clear();
}

bool CONSOLE_LINE::event(QEvent* event)
{
    // Otherwise Tab would go to the next widget before keyPressEvent() sees it. In an empty line it does.
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Tab && !text().isEmpty())
    {
        complete();
        return true;
    }
    return QLineEdit::event(event);
}

void CONSOLE_LINE::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Up)
        go_in_history(-1);
    else if (event->key() == Qt::Key_Down)
        go_in_history(1);
    else
        QLineEdit::keyPressEvent(event);
}

void CONSOLE_LINE::complete()
{
    const QString before = text().left(cursorPosition());
    const int start = before.lastIndexOf(QRegExp(QStringLiteral("[\\s\\[\\{;\"]"))) + 1;
    const QStringList names = m_session->get_completions(before.mid(start));
    if (names.isEmpty())
        return;
    const QString word = get_common_start(names) + (names.size() == 1 ? QStringLiteral(" ") : QString());
    const QString behind = text().mid(cursorPosition());
    setText(before.left(start) + word + behind);
    setCursorPosition(start + word.size());
    if (names.size() > 1)
        emit choices_found(names);
}

void CONSOLE_LINE::go_in_history(int step)
{
    const int place = std::min(std::max(m_place + step, 0), m_history.size());
    if (place == m_place)
        return;
    if (m_place == m_history.size())
        m_pending = text();
    m_place = place;
    setText(m_place < m_history.size() ? m_history.at(m_place) : m_pending);
}

CONSOLE_VIEW::CONSOLE_VIEW(QWidget* parent)
    : QWidget(parent), m_session(new TCL_SESSION(this)), m_output(new QPlainTextEdit(this)),
      m_line(new CONSOLE_LINE(m_session, this))
{
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_output);
    layout->addWidget(m_line);
    m_output->setObjectName(QStringLiteral("console_output"));
    m_output->setAccessibleName(tr("Output of the Tcl console"));
    m_output->setReadOnly(true);
    m_output->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    m_output->setTabChangesFocus(true);
    m_output->setMaximumBlockCount(LARGEST_LINE_COUNT);
    m_output->setFont(*TOLV_FONT(TOLV_MSG_TEXT_FONT).get_font());
    m_line->setObjectName(QStringLiteral("console_line"));
    m_line->setAccessibleName(tr("Tcl command"));
    m_line->setPlaceholderText(tr("Tcl command"));
    m_line->setFont(m_output->font());
    setFocusProxy(m_line);
    TOLV_SAFE_CONNECT(m_line, SIGNAL(returnPressed()), this, SLOT(enter()));
    TOLV_SAFE_CONNECT(m_line, SIGNAL(choices_found(QStringList)), this, SLOT(show_choices(QStringList)));
    TOLV_SAFE_CONNECT(m_session, SIGNAL(printed(QString)), this, SLOT(print(QString)));
}

TCL_SESSION* CONSOLE_VIEW::get_session() const
{
    return m_session;
}

void CONSOLE_VIEW::run(const QString& command)
{
    add((m_command.isEmpty() ? QStringLiteral("% ") : QStringLiteral("> ")) + command + QLatin1Char('\n'),
        tolv_get_readable_color(TOLV_MSW_INFO_COLOR));
    m_line->add_to_history(command);
    m_command += command + QLatin1Char('\n');
    if (!TCL_SESSION::is_complete(m_command))
    {
        m_line->setPlaceholderText(tr("The command goes on; Escape gives it up"));
        return;
    }
    m_line->setPlaceholderText(tr("Tcl command"));
    const QString whole = m_command.trimmed();
    m_command.clear();
    const TCL_SESSION::RESULT result = m_session->evaluate(whole);
    if (!result.text.isEmpty())
        add(result.text + QLatin1Char('\n'),
            result.is_ok ? palette().color(QPalette::Text) : tolv_get_readable_color(TOLV_MSW_ERROR_COLOR));
    emit command_finished(whole, result.is_ok);
}

void CONSOLE_VIEW::clear()
{
    m_output->clear();
}

void CONSOLE_VIEW::scroll_to_bottom()
{
    m_output->verticalScrollBar()->setValue(m_output->verticalScrollBar()->maximum());
}

void CONSOLE_VIEW::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape || (m_command.isEmpty() && m_line->text().isEmpty()))
    {
        QWidget::keyPressEvent(event);
        return;
    }
    m_command.clear();
    m_line->clear();
    m_line->setPlaceholderText(tr("Tcl command"));
}

void CONSOLE_VIEW::enter()
{
    const QString command = m_line->text();
    m_line->clear();
    if (!command.trimmed().isEmpty() || !m_command.isEmpty())
        run(command);
}

void CONSOLE_VIEW::print(const QString& text)
{
    add(text, palette().color(QPalette::Text));
}

void CONSOLE_VIEW::show_choices(const QStringList& names)
{
    add(names.join(QLatin1Char(' ')) + QLatin1Char('\n'), palette().color(QPalette::Text));
}

void CONSOLE_VIEW::add(const QString& text, const QColor& color)
{
    QTextCursor cursor(m_output->document());
    cursor.movePosition(QTextCursor::End);
    QTextCharFormat format;
    format.setForeground(color);
    cursor.insertText(text, format);
    scroll_to_bottom();
}
