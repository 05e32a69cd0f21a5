// The handlers are called as Qt calls them. The watch on Qt's messages stays out: what is under test is what it stands
// in front of. Each case needs a process of its own, as the switches are read once.

#include "cfg.h"
#include "child_process.h"
#include "gen.h"
#include "internal_error_trap.h"
#include "msg.h"
#include "test_environment.h"
#include "tolv_app.h"
#include "tolv_qt_messages.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <thread>

namespace
{
struct MESSAGE_KIND
{
    QtMsgType type;
    const char* name;
};

constexpr MESSAGE_KIND HARMLESS_KINDS[] = {{QtDebugMsg, "qDebug"},
                                           {QtWarningMsg, "qWarning"},
                                           {QtCriticalMsg, "qCritical"},
                                           {QtInfoMsg, "qUnknown"},
                                           {static_cast<QtMsgType>(7), "qUnknown"}};

/// Switches on what makes messages visible, and collects what becomes of them.
class TOLV_QT_MESSAGES_TEST : public testing::Test
{
protected:
    void SetUp() override
    {
        m_output_file = TEST_ENVIRONMENT::get_folder() + "/debug_output.txt";
        cfg_set_value("debug_output_file", m_output_file);
        msg_clear_debug_records();
        gen_set_debug_break_handler([this](bool only_if_traced) { m_breaks.push_back(only_if_traced); });
    }
    void TearDown() override
    {
        gen_set_debug_break_handler({});
        cfg_unset_value("debug_output_file");
    }

    /// Hands a message to the handler and returns what came on standard error.
    static std::string handle(QtMsgType type, const QString& text, const QMessageLogContext& context = {})
    {
        testing::internal::CaptureStderr();
        tolv_QtMsgHandler(type, context, text);
        return testing::internal::GetCapturedStderr();
    }

    static std::vector<std::pair<std::string, std::string>> get_records()
    {
        std::vector<std::pair<std::string, std::string>> result;
        for (const MSG_DEBUG_RECORD& record : msg_get_debug_records())
            result.emplace_back(record.key, record.text);
        return result;
    }

    std::string get_debugger_output() const
    {
        return TEST_ENVIRONMENT::read_file(m_output_file);
    }

    using RECORDS = std::vector<std::pair<std::string, std::string>>;
    std::vector<bool> m_breaks;

private:
    std::string m_output_file;
};

class TOLV_STARTUP_QT_MESSAGES_TEST : public testing::Test
{
protected:
    struct MESSAGE
    {
        QtMsgType type;
        const QMessageLogContext* context;
        QString text;
    };

    void SetUp() override
    {
        get_messages().clear();
        qInstallMessageHandler(
            [](QtMsgType type, const QMessageLogContext& context, const QString& text) {
                get_messages().push_back({type, &context, text});
            });
        TOLV_APP::copy_argv_for_qt(0, nullptr);
    }
    void TearDown() override
    {
        qInstallMessageHandler(nullptr);
    }

    /// What came to the handler that was there before the library's.
    static std::vector<MESSAGE>& get_messages()
    {
        static std::vector<MESSAGE> messages;
        return messages;
    }
};
} // namespace

// ---- Before the application -----------------------------------------------------------------------------------------

TEST_F(TOLV_STARTUP_QT_MESSAGES_TEST, a_message_is_dropped)
{
    testing::internal::CaptureStderr();
    qWarning("lost");
    qCritical("lost");
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    EXPECT_TRUE(get_messages().empty());
    EXPECT_TRUE(msg_get_debug_records().empty());
}

TEST_F(TOLV_STARTUP_QT_MESSAGES_TEST, either_variable_hands_messages_on_unchanged)
{
    const QMessageLogContext context("a.cpp", 7, "f()", "default");
    for (const char* variable : {"NORVANE_SHOW_QT_MESSAGES", "NORVANE_ENABLE_QT_MESSAGES"})
    {
        const SCOPED_ENVIRONMENT_VARIABLE set(variable, ""); // presence alone counts
        get_messages().clear();
        tolv_startup_QtMsgHandler(QtCriticalMsg, context, QStringLiteral("100% <seen>"));
        ASSERT_EQ(1U, get_messages().size()) << variable;
        EXPECT_EQ(QtCriticalMsg, get_messages()[0].type);
        EXPECT_EQ(&context, get_messages()[0].context);
        EXPECT_EQ(QStringLiteral("100% <seen>"), get_messages()[0].text);
    }
    tolv_startup_QtMsgHandler(QtCriticalMsg, context, QStringLiteral("lost"));
    EXPECT_EQ(1U, get_messages().size());
}

TEST_F(TOLV_STARTUP_QT_MESSAGES_TEST, a_process_prepared_twice_drops_messages_and_does_not_run_in_circles)
{
    TOLV_APP::copy_argv_for_qt(0, nullptr);
    const SCOPED_ENVIRONMENT_VARIABLE set("NORVANE_SHOW_QT_MESSAGES", "1");
    qWarning("lost");
    EXPECT_TRUE(get_messages().empty());
}

TEST(TOLV_QT_MESSAGES_OF_A_TOOL, nothing_is_printed_before_the_application_exists)
{
    const CHILD_RESULT result = run_child("tolv_app_child", {"warning_before_application"});
    EXPECT_EQ(0, result.exit_status);
    EXPECT_EQ("", result.err);
}

TEST(TOLV_QT_MESSAGES_OF_A_TOOL, a_variable_shows_what_is_said_before_the_application_exists)
{
    const CHILD_RESULT result =
        run_child("tolv_app_child", {"warning_before_application"}, {{"NORVANE_ENABLE_QT_MESSAGES", "1"}});
    EXPECT_EQ(0, result.exit_status);
    EXPECT_EQ("the pump leaks\n", result.err);
}

TEST(TOLV_QT_MESSAGES_OF_A_TOOL, a_fatal_message_before_the_application_ends_the_process_by_qts_own_hand)
{
    const CHILD_RESULT result = run_child("tolv_app_child", {"fatal_before_application"});
    EXPECT_EQ(SIGABRT, result.signal);
    EXPECT_EQ("", result.err);
}

// ---- In the application ---------------------------------------------------------------------------------------------

TEST_F(TOLV_QT_MESSAGES_TEST, without_the_switch_a_message_leaves_no_trace)
{
    const SCOPED_CONFIGURATION with_source("qt_msg_with_source", "1");
    const SCOPED_ENVIRONMENT_VARIABLE with_break("KORVEX_QT_DEBUG_BREAK_ON_QT_MSG", "1");
    for (const MESSAGE_KIND& kind : HARMLESS_KINDS)
        EXPECT_EQ("", handle(kind.type, QStringLiteral("text")));
    EXPECT_EQ(RECORDS{}, get_records());
    EXPECT_EQ("", get_debugger_output());
    EXPECT_TRUE(m_breaks.empty());
}

TEST_F(TOLV_QT_MESSAGES_TEST, each_kind_is_recorded_and_printed_under_its_name)
{
    const SCOPED_CONFIGURATION on("qt_msg", "1");
    std::string expected_output;
    RECORDS expected_records;
    for (const MESSAGE_KIND& kind : HARMLESS_KINDS)
    {
        const std::string line = std::string(kind.name) + ": the text\n";
        EXPECT_EQ(line, handle(kind.type, QStringLiteral("the text")));
        expected_output += line;
        expected_records.emplace_back(kind.name, "the text");
    }
    EXPECT_EQ(expected_records, get_records());
    EXPECT_EQ(expected_output, get_debugger_output());
    EXPECT_TRUE(m_breaks.empty());
}

TEST_F(TOLV_QT_MESSAGES_TEST, the_source_stands_in_parentheses)
{
    const SCOPED_CONFIGURATION on("qt_msg", "1");
    const SCOPED_CONFIGURATION with_source("qt_msg_with_source", "1");
    EXPECT_EQ("qWarning (pump.cpp:12): leaks\n",
              handle(QtWarningMsg, QStringLiteral("leaks"), {"pump.cpp", 12, "f()", "default"}));
    EXPECT_EQ("qDebug (:0): leaks\n", handle(QtDebugMsg, QStringLiteral("leaks")));
    EXPECT_EQ((RECORDS{{"qWarning", "leaks"}, {"qDebug", "leaks"}}), get_records());
}

TEST_F(TOLV_QT_MESSAGES_TEST, a_text_is_neither_escaped_nor_taken_as_a_format)
{
    const SCOPED_CONFIGURATION on("qt_msg", "1");
    const SCOPED_CONFIGURATION with_source("qt_msg_with_source", "1");
    const QString text = QStringLiteral("<b>&amp; %s %n %1 %4 \u00e4");
    const std::string local_text = text.toLocal8Bit().toStdString();
    EXPECT_EQ("qDebug (%4:1): " + local_text + "\n", handle(QtDebugMsg, text, {"%4", 1, "", ""}));
    EXPECT_EQ((RECORDS{{"qDebug", local_text}}), get_records());
    EXPECT_EQ("qDebug (%4:1): " + local_text + "\n", get_debugger_output());
}

TEST_F(TOLV_QT_MESSAGES_TEST, a_build_for_customers_keeps_the_record_and_is_silent)
{
    const SCOPED_CONFIGURATION on("qt_msg", "1");
    const SCOPED_CONFIGURATION customer("customer_build", "1");
    const SCOPED_ENVIRONMENT_VARIABLE with_break("KORVEX_QT_DEBUG_BREAK_ON_QT_MSG", "1");
    EXPECT_EQ("", handle(QtWarningMsg, QStringLiteral("leaks")));
    EXPECT_EQ((RECORDS{{"qWarning", "leaks"}}), get_records());
    EXPECT_EQ("", get_debugger_output());
    EXPECT_TRUE(m_breaks.empty());
}

TEST_F(TOLV_QT_MESSAGES_TEST, a_variable_breaks_into_the_debugger_at_each_line)
{
    const SCOPED_CONFIGURATION on("qt_msg", "1");
    const SCOPED_ENVIRONMENT_VARIABLE with_break("KORVEX_QT_DEBUG_BREAK_ON_QT_MSG", ""); // presence alone counts
    EXPECT_EQ("qDebug: a\n", handle(QtDebugMsg, QStringLiteral("a")));
    EXPECT_EQ("qUnknown: b\n", handle(QtInfoMsg, QStringLiteral("b")));
    EXPECT_EQ((std::vector<bool>{true, true}), m_breaks);
}

TEST_F(TOLV_QT_MESSAGES_TEST, the_switches_are_read_at_the_first_message)
{
    handle(QtDebugMsg, QStringLiteral("first"));
    const SCOPED_CONFIGURATION on("qt_msg", "1");
    EXPECT_EQ("", handle(QtDebugMsg, QStringLiteral("second")));
    EXPECT_EQ(RECORDS{}, get_records());
}

TEST_F(TOLV_QT_MESSAGES_TEST, a_switch_that_goes_off_later_stays_on)
{
    {
        const SCOPED_CONFIGURATION on("qt_msg", "1");
        handle(QtDebugMsg, QStringLiteral("first"));
    }
    EXPECT_EQ("qDebug: second\n", handle(QtDebugMsg, QStringLiteral("second")));
    const SCOPED_CONFIGURATION with_source("qt_msg_with_source", "1");
    EXPECT_EQ("qDebug: third\n", handle(QtDebugMsg, QStringLiteral("third")));
}

TEST_F(TOLV_QT_MESSAGES_TEST, messages_come_from_any_thread)
{
    const SCOPED_CONFIGURATION on("qt_msg", "1");
    const QtMessageHandler old_handler = qInstallMessageHandler(tolv_QtMsgHandler);
    testing::internal::CaptureStderr();
    std::array<std::thread, 4> threads;
    for (std::thread& thread : threads)
    {
        thread = std::thread(
            []
            {
                for (int message = 0; message < 25; ++message)
                    qWarning("leaks");
            });
    }
    for (std::thread& thread : threads)
        thread.join();
    const std::string error_output = testing::internal::GetCapturedStderr();
    qInstallMessageHandler(old_handler);
    EXPECT_EQ(RECORDS(100, {"qWarning", "leaks"}), get_records());
    EXPECT_EQ(100 * std::string("qWarning: leaks\n").size(), error_output.size());
}

TEST_F(TOLV_QT_MESSAGES_TEST, a_fatal_message_is_an_internal_error)
{
    const TRAPPED_INTERNAL_ERROR error = CATCH_INTERNAL_ERROR(handle(QtFatalMsg, QStringLiteral("no \u00e4ther")));
    testing::internal::GetCapturedStderr();
    EXPECT_EQ(QStringLiteral("no \u00e4ther").toLocal8Bit().toStdString(), error.text);
    EXPECT_EQ("TOLV", error.tag);
    EXPECT_EQ("tolv_app", error.file);
    EXPECT_EQ(611, error.line);
    EXPECT_EQ(RECORDS{}, get_records());
}

TEST_F(TOLV_QT_MESSAGES_TEST, a_fatal_message_is_shown_first)
{
    const SCOPED_CONFIGURATION on("qt_msg", "1");
    EXPECT_INTERNAL_ERROR(handle(QtFatalMsg, QStringLiteral("no water")), "no water");
    EXPECT_EQ("qFatal: no water\n", testing::internal::GetCapturedStderr());
    EXPECT_EQ((RECORDS{{"qFatal", "no water"}}), get_records());
}

TEST_F(TOLV_QT_MESSAGES_TEST, a_fatal_message_of_a_build_for_customers_is_an_internal_error)
{
    const SCOPED_CONFIGURATION customer("customer_build", "1");
    EXPECT_INTERNAL_ERROR(handle(QtFatalMsg, QStringLiteral("no water")), "no water");
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
}

// ---- In a tool of its own -------------------------------------------------------------------------------------------

TEST(TOLV_QT_MESSAGES_OF_A_TOOL, a_user_sees_no_warning)
{
    const CHILD_RESULT result = run_child("tolv_app_child", {"warning"});
    EXPECT_EQ(0, result.exit_status);
    EXPECT_EQ("", result.err);
}

TEST(TOLV_QT_MESSAGES_OF_A_TOOL, a_developer_sees_the_warning_and_no_window_comes_up)
{
    const CHILD_RESULT result = run_child("tolv_app_child", {"warning"}, {{"NORVANE_CFG", "qt_msg=1"}});
    EXPECT_EQ(0, result.exit_status);
    EXPECT_EQ("qWarning: the pump leaks\n", result.err);
    EXPECT_EQ("windows: 0\n", result.out);
}

TEST(TOLV_QT_MESSAGES_OF_A_TOOL, a_fatal_message_ends_the_process_as_an_internal_error)
{
    const CHILD_RESULT result = run_child("tolv_app_child", {"fatal"});
    EXPECT_EQ(SIGABRT, result.signal);
    EXPECT_NE(std::string::npos, result.err.find("no water")) << result.err;
    EXPECT_NE(std::string::npos, result.err.find("tolv_app")) << result.err;
    EXPECT_NE(std::string::npos, result.err.find("611")) << result.err;
}
