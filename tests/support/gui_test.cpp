#include "gui_test.h"

#include "gui_answers.h"

#include <QApplication>
#include <QWidget>

namespace
{
/// Fails the test for each window that it left on the screen, and removes them for the sake of the next one.
void check_open_windows()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    for (QWidget* window : QApplication::topLevelWidgets())
    {
        if (!window->isVisible() || window->windowType() == Qt::Desktop)
            continue;
        ADD_FAILURE() << "the test left a window open: " << window->metaObject()->className() << " \""
                      << window->objectName().toStdString() << "\" \"" << window->windowTitle().toStdString() << "\"";
        window->hide();
    }
}
} // namespace

void TOLV_TEST::SetUp()
{
    MESSAGE_WATCH::begin();
}

void TOLV_TEST::TearDown()
{
    MESSAGE_WATCH::end();
}

void TOLV_GUI_TEST::SetUp()
{
    TOLV_TEST::SetUp();
    ASSERT_NO_FATAL_FAILURE(TEST_APPLICATION::require(TEST_APPLICATION::KIND_TOLV));
    watch_for_answers();
}

void TOLV_GUI_TEST::TearDown()
{
    if (TEST_APPLICATION::get_test_app() != nullptr)
    {
        check_answers();
        check_open_windows();
        app().set_main_window(nullptr);
    }
    TOLV_TEST::TearDown();
}

TEST_APP& TOLV_GUI_TEST::app() const
{
    return *TEST_APPLICATION::get_test_app();
}

void PLAIN_GUI_TEST::SetUp()
{
    TOLV_TEST::SetUp();
    ASSERT_NO_FATAL_FAILURE(TEST_APPLICATION::require(TEST_APPLICATION::KIND_PLAIN));
    watch_for_answers();
}

void PLAIN_GUI_TEST::TearDown()
{
    check_answers();
    check_open_windows();
    TOLV_TEST::TearDown();
}
