#include "gui_test.h"

#include "gen.h"
#include "test_environment.h"

#include <gtest/gtest-spi.h>

#include <QApplication>
#include <QFontInfo>
#include <QWidget>

using SUPPORT_APPLICATION_TEST = TOLV_GUI_TEST;
using SUPPORT_PLAIN_APPLICATION_TEST = PLAIN_GUI_TEST;
using SUPPORT_NO_APPLICATION_TEST = TOLV_TEST;

TEST_F(SUPPORT_NO_APPLICATION_TEST, no_application_is_made_unasked)
{
    EXPECT_EQ(nullptr, QCoreApplication::instance());
    EXPECT_EQ(TEST_APPLICATION::KIND_NONE, TEST_APPLICATION::get_kind());
}

TEST_F(SUPPORT_NO_APPLICATION_TEST, the_command_line_is_at_hand)
{
    ASSERT_LE(1, TEST_APPLICATION::get_argc());
    EXPECT_EQ(gen_get_module_filename(), std::string(TEST_APPLICATION::get_argv()[0])
                                             .substr(std::string(TEST_APPLICATION::get_argv()[0]).rfind('/') + 1));
    EXPECT_EQ(nullptr, TEST_APPLICATION::get_argv()[TEST_APPLICATION::get_argc()]);
}

TEST_F(SUPPORT_PLAIN_APPLICATION_TEST, the_plain_application_is_not_the_librarys)
{
    ASSERT_NE(nullptr, qApp);
    EXPECT_EQ(nullptr, dynamic_cast<TOLV_APP*>(qApp));
    EXPECT_EQ(nullptr, TEST_APPLICATION::get_test_app());
}

TEST_F(SUPPORT_PLAIN_APPLICATION_TEST, the_font_does_not_depend_on_the_platform)
{
    EXPECT_EQ(QStringLiteral("DejaVu Sans"), QFontInfo(QWidget().font()).family());
    EXPECT_EQ(9, QWidget().font().pointSize());
}

TEST_F(SUPPORT_APPLICATION_TEST, the_font_does_not_depend_on_the_platform)
{
    EXPECT_EQ(QStringLiteral("DejaVu Sans"), QFontInfo(QWidget().font()).family());
    EXPECT_EQ(9, QWidget().font().pointSize());
}

TEST_F(SUPPORT_APPLICATION_TEST, the_application_is_the_librarys)
{
    EXPECT_EQ(qApp, &app());
    EXPECT_EQ(qApp, dynamic_cast<TOLV_APP*>(qApp));
    EXPECT_TRUE(gen_get_is_qt());
}

TEST_F(SUPPORT_APPLICATION_TEST, the_main_window_is_what_the_test_sets)
{
    EXPECT_EQ(nullptr, app().get_main_window());
    {
        QWidget window;
        app().set_main_window(&window);
        EXPECT_EQ(&window, app().get_main_window());
    }
    EXPECT_EQ(nullptr, app().get_main_window());
}

TEST_F(SUPPORT_APPLICATION_TEST, a_window_left_open_fails_the_test)
{
    QWidget window;
    window.setObjectName(QStringLiteral("forgotten"));
    window.show();
    EXPECT_NONFATAL_FAILURE(TearDown(), "the test left a window open: QWidget \"forgotten\"");
    EXPECT_FALSE(window.isVisible());
}

TEST_F(SUPPORT_APPLICATION_TEST, qt_warnings_are_seen_in_front_of_the_librarys_handler)
{
    qWarning("through the watch");
    EXPECT_NONFATAL_FAILURE(MESSAGE_WATCH::end(), "through the watch");
}
