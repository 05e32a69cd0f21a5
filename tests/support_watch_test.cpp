#include "gui_test.h"

#include "msg.h"

#include <gtest/gtest-spi.h>

#include <QWidget>

#include <cstdarg>
#include <thread>

namespace
{
class SUPPORT_WATCH_TEST : public TOLV_TEST
{
};

void make_record(const char* key, const char* text, ...)
{
    va_list arguments;
    va_start(arguments, text);
    msg_local_vdebug(key, text, arguments);
    va_end(arguments);
}
} // namespace

TEST_F(SUPPORT_WATCH_TEST, an_unexpected_warning_fails_the_test_with_its_text)
{
    qWarning("the pump leaks");
    EXPECT_NONFATAL_FAILURE(MESSAGE_WATCH::end(), "unexpected warning: the pump leaks");
}

TEST_F(SUPPORT_WATCH_TEST, an_unexpected_critical_message_fails_the_test)
{
    qCritical("the tank is empty");
    EXPECT_NONFATAL_FAILURE(MESSAGE_WATCH::end(), "unexpected critical: the tank is empty");
}

TEST_F(SUPPORT_WATCH_TEST, a_warning_of_another_thread_counts)
{
    std::thread([] { qWarning("said elsewhere"); }).join();
    EXPECT_NONFATAL_FAILURE(MESSAGE_WATCH::end(), "said elsewhere");
}

TEST_F(SUPPORT_WATCH_TEST, a_fault_is_told_once)
{
    qWarning("once");
    EXPECT_NONFATAL_FAILURE(MESSAGE_WATCH::end(), "once");
    MESSAGE_WATCH::end();
}

TEST_F(SUPPORT_WATCH_TEST, debug_and_information_pass)
{
    qDebug("chatter");
    qInfo("news");
    MESSAGE_WATCH::end();
}

TEST_F(SUPPORT_WATCH_TEST, an_expected_warning_passes_and_is_counted)
{
    const SCOPED_EXPECTED_WARNING expected("leaks");
    EXPECT_EQ(0, expected.get_count());
    qWarning("the pump leaks");
    qCritical("the tank leaks");
    EXPECT_EQ(2, expected.get_count());
}

TEST_F(SUPPORT_WATCH_TEST, an_expected_warning_can_be_an_expression)
{
    const SCOPED_EXPECTED_WARNING expected(QRegularExpression(QStringLiteral("^pump [0-9]+ leaks$")));
    qWarning("pump 17 leaks");
    EXPECT_EQ(1, expected.get_count());
}

TEST_F(SUPPORT_WATCH_TEST, another_warning_than_the_expected_one_fails_the_test)
{
    {
        const SCOPED_EXPECTED_WARNING expected("pump");
        qWarning("the pump leaks");
        qWarning("the tank leaks");
    }
    EXPECT_NONFATAL_FAILURE(MESSAGE_WATCH::end(), "the tank leaks");
}

TEST_F(SUPPORT_WATCH_TEST, an_expected_warning_that_does_not_come_fails_the_test)
{
    EXPECT_NONFATAL_FAILURE({ const SCOPED_EXPECTED_WARNING expected("pump"); },
                            "the expected warning did not come: \"pump\"");
}

TEST_F(SUPPORT_WATCH_TEST, a_warning_behind_the_scope_is_unexpected_again)
{
    {
        const SCOPED_EXPECTED_WARNING expected("pump");
        qWarning("pump");
    }
    qWarning("pump again");
    EXPECT_NONFATAL_FAILURE(MESSAGE_WATCH::end(), "pump again");
}

TEST_F(SUPPORT_WATCH_TEST, what_the_platform_plugin_cannot_do_is_nobodys_fault)
{
    qWarning("This plugin does not support propagateSizeHints()");
    qWarning("QXcbConnection: XCB error: 3 (BadWindow), sequence: 2681, resource id: 2101087");
    MESSAGE_WATCH::end();
}

TEST_F(SUPPORT_WATCH_TEST, an_unexpected_debug_record_fails_the_test_with_key_and_text)
{
    make_record("boiler", "pressure 7 bar");
    EXPECT_NONFATAL_FAILURE(MESSAGE_WATCH::end(), "unexpected debug record under \"boiler\": pressure 7 bar");
}

TEST_F(SUPPORT_WATCH_TEST, an_expected_debug_record_passes)
{
    const SCOPED_EXPECTED_DEBUG_RECORD expected("boiler", "pressure");
    make_record("boiler", "pressure 7 bar");
}

TEST_F(SUPPORT_WATCH_TEST, a_debug_record_under_another_key_is_not_the_expected_one)
{
    EXPECT_NONFATAL_FAILURE(
        {
            const SCOPED_EXPECTED_DEBUG_RECORD expected("boiler", "pressure");
            make_record("valve", "pressure 7 bar");
        },
        "the expected debug record did not come: \"pressure\" under \"boiler\"");
    EXPECT_NONFATAL_FAILURE(MESSAGE_WATCH::end(), "under \"valve\"");
}

TEST_F(SUPPORT_WATCH_TEST, a_debug_record_behind_the_scope_is_unexpected_again)
{
    {
        const SCOPED_EXPECTED_DEBUG_RECORD expected("boiler", "pressure");
        make_record("boiler", "pressure 7 bar");
    }
    make_record("boiler", "pressure 8 bar");
    EXPECT_NONFATAL_FAILURE(MESSAGE_WATCH::end(), "under \"boiler\"");
}

TEST_F(SUPPORT_WATCH_TEST, the_watch_hands_messages_on_to_the_handler_that_was_in_force)
{
    static QString received;
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) { received = text; });
    MESSAGE_WATCH::install();
    const SCOPED_EXPECTED_WARNING expected("handed on");
    qWarning("handed on");
    EXPECT_EQ(QStringLiteral("handed on"), received);
    qInstallMessageHandler(nullptr);
    MESSAGE_WATCH::install();
}
