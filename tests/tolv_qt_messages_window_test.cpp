// The window in which a developer sees what Qt says. The handler is called as Qt calls it.

#include "gen.h"
#include "gui_driver.h"
#include "gui_test.h"
#include "internal_error_trap.h"
#include "msg.h"
#include "test_environment.h"
#include "tolv_dialog.h"
#include "tolv_qt_messages.h"

#include <QPlainTextEdit>
#include <QTextBlock>
#include <QVBoxLayout>

#include <memory>
#include <thread>

namespace
{
class TOLV_QT_MESSAGES_WINDOW_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        testing::internal::CaptureStderr();
        make_main_window();
    }
    void TearDown() override
    {
        m_main_window.reset();
        msg_clear_debug_records(); // tested elsewhere
        testing::internal::GetCapturedStderr();
        TOLV_GUI_TEST::TearDown();
    }

    void make_main_window()
    {
        m_main_window = std::make_unique<QWidget>();
        app().set_main_window(m_main_window.get());
    }

    static void say(const QString& text, QtMsgType type = QtWarningMsg)
    {
        tolv_QtMsgHandler(type, {}, text);
        GUI_DRIVER::process_posted();
    }

    /// The windows of messages that there are.
    QList<TOLV_DIALOG*> get_windows() const
    {
        return m_main_window->findChildren<TOLV_DIALOG*>();
    }
    QPlainTextEdit* get_log() const
    {
        return m_main_window->findChild<QPlainTextEdit*>();
    }
    /// Its lines, without what the platform says of things that it cannot do.
    QStringList get_lines() const
    {
        QStringList lines;
        const QStringList all_lines = get_log()->toPlainText().split(QLatin1Char('\n'));
        for (const QString& line : all_lines)
        {
            if (!line.contains(QLatin1String("This plugin does not support")))
                lines << line;
        }
        return lines;
    }

    /// The format of the character at a place of the last line.
    QTextCharFormat get_format(int position) const
    {
        QTextCursor cursor(get_log()->document()->lastBlock());
        cursor.movePosition(QTextCursor::Right, QTextCursor::MoveAnchor, position + 1);
        return cursor.charFormat();
    }

    static void expect_line(const QString& beginning, const QString& line)
    {
        const QRegularExpression expression(
            QStringLiteral("^%1\\(\\d+ ms elapsed\\)$").arg(QRegularExpression::escape(beginning)));
        EXPECT_TRUE(expression.match(line).hasMatch()) << line.toStdString();
    }

    const SCOPED_CONFIGURATION m_messages{"qt_msg", "1"};
    const SCOPED_CONFIGURATION m_window{"qt_msg_wnd", "1"};
    std::unique_ptr<QWidget> m_main_window;
};

class TOLV_QT_MESSAGES_NO_WINDOW_TEST : public TOLV_GUI_TEST
{
};
} // namespace

TEST_F(TOLV_QT_MESSAGES_WINDOW_TEST, the_first_message_brings_the_window_up)
{
    EXPECT_TRUE(get_windows().isEmpty());
    say(QStringLiteral("the pump leaks"));
    ASSERT_EQ(1, get_windows().size());
    const TOLV_DIALOG* const window = get_windows().at(0);
    EXPECT_EQ(QStringLiteral("qt_msg for ") + QString::fromStdString(gen_get_module_filename()), window->windowTitle());
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(window->isModal());
    ASSERT_NE(nullptr, window->layout());
    EXPECT_EQ(get_log(), window->layout()->itemAt(0)->widget());
    ASSERT_EQ(1, get_lines().size());
    expect_line(QStringLiteral("qWarning: the pump leaks"), get_lines().at(0));
}

TEST_F(TOLV_QT_MESSAGES_WINDOW_TEST, all_messages_go_to_one_window)
{
    say(QStringLiteral("one"));
    say(QStringLiteral("two"), QtCriticalMsg);
    ASSERT_EQ(1, get_windows().size());
    ASSERT_EQ(2, get_lines().size());
    expect_line(QStringLiteral("qCritical: two"), get_lines().at(1));
}

TEST_F(TOLV_QT_MESSAGES_WINDOW_TEST, each_kind_has_its_name_and_colour)
{
    const struct
    {
        QtMsgType type;
        const char* name;
        QColor color;
    } kinds[] = {{QtDebugMsg, "qDebug", Qt::black},
                 {QtWarningMsg, "qWarning", Qt::blue},
                 {QtCriticalMsg, "qCritical", QColor(0xff, 0xa5, 0x00)},
                 {QtInfoMsg, "qUnknown", Qt::cyan},
                 {static_cast<QtMsgType>(7), "qUnknown", Qt::cyan}};
    for (const auto& kind : kinds)
    {
        SCOPED_TRACE(kind.name);
        say(QStringLiteral("text"), kind.type);
        const QStringList lines = get_lines();
        ASSERT_FALSE(lines.isEmpty());
        const QString& line = lines.last();
        expect_line(QString::fromLatin1(kind.name) + QStringLiteral(": text"), line);
        EXPECT_EQ(kind.color, get_format(0).foreground().color());
        EXPECT_EQ(QStringLiteral("monospace"), get_format(0).fontFamily());
        const int elapsed = line.lastIndexOf(QLatin1Char('('));
        EXPECT_EQ(kind.color, get_format(elapsed - 1).foreground().color());
        EXPECT_EQ(QColor(0xa5, 0x2a, 0x2a), get_format(elapsed).foreground().color()); // brown
    }
}

TEST_F(TOLV_QT_MESSAGES_WINDOW_TEST, a_fatal_message_is_handed_over_in_red_before_the_process_ends)
{
    EXPECT_INTERNAL_ERROR(say(QStringLiteral("no water"), QtFatalMsg), "no water");
    GUI_DRIVER::process_posted();
    expect_line(QStringLiteral("qFatal: no water"), get_lines().at(0));
    EXPECT_EQ(QColor(Qt::red), get_format(0).foreground().color());
}

TEST_F(TOLV_QT_MESSAGES_WINDOW_TEST, a_text_is_shown_to_the_letter)
{
    say(QStringLiteral("<b>a & b</b> &amp; %1 %4"));
    expect_line(QStringLiteral("qWarning: <b>a & b</b> &amp; %1 %4"), get_lines().at(0));
}

TEST_F(TOLV_QT_MESSAGES_WINDOW_TEST, the_window_waits_for_the_main_window)
{
    app().set_main_window(nullptr);
    say(QStringLiteral("early"));
    EXPECT_TRUE(get_windows().isEmpty());
    app().set_main_window(m_main_window.get());
    EXPECT_TRUE(get_windows().isEmpty());
    say(QStringLiteral("late"));
    ASSERT_EQ(1, get_lines().size());
    expect_line(QStringLiteral("qWarning: late"), get_lines().at(0));
}

TEST_F(TOLV_QT_MESSAGES_WINDOW_TEST, a_window_that_the_user_closes_goes_on_collecting)
{
    say(QStringLiteral("one"));
    get_windows().at(0)->close();
    say(QStringLiteral("two"));
    ASSERT_EQ(1, get_windows().size());
    EXPECT_FALSE(get_windows().at(0)->isVisible());
    EXPECT_EQ(2, get_lines().size());
}

TEST_F(TOLV_QT_MESSAGES_WINDOW_TEST, messages_of_other_threads_are_shown)
{
    const auto say_elsewhere = [](const char* text)
    { std::thread([text] { tolv_QtMsgHandler(QtWarningMsg, {}, QString::fromLatin1(text)); }).join(); };
    say_elsewhere("too early"); // another thread makes no window
    GUI_DRIVER::process_posted();
    EXPECT_TRUE(get_windows().isEmpty());
    say(QStringLiteral("one"));
    say_elsewhere("two");
    EXPECT_EQ(1, get_lines().size()); // handed over, not written
    GUI_DRIVER::process_posted();
    ASSERT_EQ(2, get_lines().size());
    expect_line(QStringLiteral("qWarning: two"), get_lines().at(1));
}

TEST_F(TOLV_QT_MESSAGES_WINDOW_TEST, the_window_goes_with_the_main_window_and_comes_with_the_next)
{
    say(QStringLiteral("one"));
    m_main_window.reset();
    say(QStringLiteral("two"));
    make_main_window();
    say(QStringLiteral("three"));
    ASSERT_EQ(1, get_windows().size());
    ASSERT_EQ(1, get_lines().size());
    expect_line(QStringLiteral("qWarning: three"), get_lines().at(0));
}

TEST_F(TOLV_QT_MESSAGES_NO_WINDOW_TEST, without_the_switch_of_the_window_a_message_of_qt_opens_none)
{
    const SCOPED_CONFIGURATION messages("qt_msg", "1");
    QWidget main_window;
    app().set_main_window(&main_window);
    testing::internal::CaptureStderr();
    tolv_QtMsgHandler(QtWarningMsg, {}, QStringLiteral("leaks"));
    EXPECT_EQ("qWarning: leaks\n", testing::internal::GetCapturedStderr());
    EXPECT_TRUE(main_window.findChildren<QWidget*>().isEmpty());
    msg_clear_debug_records();
}
