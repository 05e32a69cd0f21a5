#include "gui_answers.h"
#include "gui_driver.h"
#include "gui_test.h"
#include "input_script.h"

#include <gtest/gtest-spi.h>

#include <QApplication>
#include <QDialog>
#include <QEventLoop>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QSignalSpy>
#include <QTimer>

namespace
{
/// Tracks a drag in an event loop of its own, begun inside the press.
class TRACKER : public QWidget
{
public:
    TRACKER()
    {
        setFixedSize(300, 200);
    }
    QVector<QPoint> way;
    bool track_in_press = true;
    bool returned = false;

    void track()
    {
        QEventLoop loop;
        m_loop = &loop;
        loop.exec();
        m_loop = nullptr;
        returned = true;
    }

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        way << event->pos();
        if (track_in_press)
            track();
    }
    void mouseMoveEvent(QMouseEvent* event) override
    {
        way << event->pos();
    }
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        way << event->pos();
        if (m_loop != nullptr)
            m_loop->quit();
    }

private:
    QEventLoop* m_loop = nullptr;
};

class SUPPORT_SCRIPT_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        tracker = std::make_unique<TRACKER>();
        tracker->move(100, 100);
        ASSERT_TRUE(GUI_DRIVER::show(tracker.get()));
    }
    void TearDown() override
    {
        tracker.reset();
        TOLV_GUI_TEST::TearDown();
    }
    std::unique_ptr<TRACKER> tracker;
};
} // namespace

TEST_F(SUPPORT_SCRIPT_TEST, a_drag_goes_on_inside_a_loop_that_the_press_runs)
{
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(tracker.get(), QPoint(10, 10)); })
        .then([&] { EXPECT_FALSE(tracker->returned); })
        .then([&] { GUI_DRIVER::move_to(tracker.get(), QPoint(20, 15)); })
        .then([&] { GUI_DRIVER::release(tracker.get(), QPoint(30, 20)); });
    EXPECT_TRUE(script.run());
    EXPECT_TRUE(tracker->returned);
    EXPECT_EQ(QVector<QPoint>({QPoint(10, 10), QPoint(20, 15), QPoint(30, 20), QPoint(30, 20)}), tracker->way);
}

TEST_F(SUPPORT_SCRIPT_TEST, steps_run_inside_a_call_that_blocks)
{
    tracker->track_in_press = false;
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::drag(tracker.get(), QPoint(10, 10), QPoint(13, 10)); });
    script.start();
    tracker->track();
    EXPECT_TRUE(script.finish());
    EXPECT_EQ(5, tracker->way.size());
}

TEST_F(SUPPORT_SCRIPT_TEST, a_step_is_not_broken_into_by_the_next_one)
{
    QStringList log;
    INPUT_SCRIPT script;
    script
        .then(
            [&]
            {
                log << QStringLiteral("begin");
                for (int i = 0; i < 20; ++i)
                    GUI_DRIVER::process_posted();
                log << QStringLiteral("end");
            })
        .then([&] { log << QStringLiteral("next"); });
    EXPECT_TRUE(script.run());
    EXPECT_EQ(QStringList({QStringLiteral("begin"), QStringLiteral("end"), QStringLiteral("next")}), log);
}

TEST_F(SUPPORT_SCRIPT_TEST, a_step_can_wait_for_a_condition)
{
    bool done = false;
    QTimer::singleShot(20, qApp, [&] { done = true; });
    INPUT_SCRIPT script;
    script.wait_until([&] { return done; }).then([&] { EXPECT_TRUE(done); });
    EXPECT_TRUE(script.run());
}

TEST_F(SUPPORT_SCRIPT_TEST, a_step_can_add_steps)
{
    int count = 0;
    INPUT_SCRIPT script;
    script.then([&] { script.then([&] { ++count; }); });
    EXPECT_TRUE(script.run());
    EXPECT_EQ(1, count);
}

TEST_F(SUPPORT_SCRIPT_TEST, a_loop_that_never_ends_is_ended_and_fails_the_test)
{
    INPUT_SCRIPT script(50);
    script.start();
    EXPECT_NONFATAL_FAILURE(tracker->track(), "the script did not come to its end");
    EXPECT_FALSE(script.finish());
    EXPECT_TRUE(tracker->returned);

    QEventLoop loop; // later loops run again
    QTimer::singleShot(0, &loop, [&] { loop.exit(7); });
    EXPECT_EQ(7, loop.exec());
}

TEST_F(SUPPORT_SCRIPT_TEST, a_dialog_in_which_a_script_hangs_is_closed_and_fails_the_test)
{
    QDialog dialog;
    INPUT_SCRIPT script(50);
    script.then([&] { dialog.exec(); });
    EXPECT_NONFATAL_FAILURE(script.run(), "the script did not come to its end");
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(SUPPORT_SCRIPT_TEST, a_condition_that_never_holds_fails_the_test)
{
    INPUT_SCRIPT script(50);
    script.wait_until([] { return false; });
    EXPECT_NONFATAL_FAILURE(script.run(), "1 were waiting after 50 ms");
}

TEST_F(SUPPORT_SCRIPT_TEST, a_script_that_is_never_started_fails_the_test)
{
    EXPECT_NONFATAL_FAILURE(INPUT_SCRIPT().then([] {}), "the script was never started");
}

TEST_F(SUPPORT_SCRIPT_TEST, a_dialog_is_answered_by_the_text_of_a_button)
{
    QMessageBox box(QMessageBox::Question, QStringLiteral("title"), QStringLiteral("Overwrite?"),
                    QMessageBox::Yes | QMessageBox::No);
    answer_next_dialog(QStringLiteral("No"));
    EXPECT_EQ(QMessageBox::No, box.exec());
    answer_next_dialog(QStringLiteral("Yes"));
    EXPECT_EQ(QMessageBox::Yes, box.exec());
}

TEST_F(SUPPORT_SCRIPT_TEST, dialogs_are_answered_in_the_order_of_the_orders)
{
    answer_next_dialog(
        [&](QDialog* outer)
        {
            QDialog inner(outer);
            EXPECT_EQ(7, inner.exec());
            outer->done(9);
        });
    answer_next_dialog([&](QDialog* inner) { inner->done(7); });
    EXPECT_EQ(9, QDialog().exec());
}

TEST_F(SUPPORT_SCRIPT_TEST, a_button_that_is_missing_fails_the_test_and_closes_the_dialog)
{
    QMessageBox box(QMessageBox::Question, QStringLiteral("title"), QStringLiteral("Overwrite?"), QMessageBox::Cancel);
    answer_next_dialog(QStringLiteral("Yes"));
    EXPECT_NONFATAL_FAILURE(box.exec(), "there are 0 objects of QAbstractButton with the text \"Yes\"");
}

TEST_F(SUPPORT_SCRIPT_TEST, a_button_that_is_disabled_fails_the_test_and_closes_the_dialog)
{
    QMessageBox box(QMessageBox::Question, QStringLiteral("title"), QStringLiteral("Overwrite?"),
                    QMessageBox::Yes | QMessageBox::Cancel);
    box.button(QMessageBox::Yes)->setEnabled(false);
    answer_next_dialog(QStringLiteral("Yes"));
    EXPECT_NONFATAL_FAILURE(box.exec(), "is disabled");
}

TEST_F(SUPPORT_SCRIPT_TEST, a_dialog_that_never_comes_fails_the_test)
{
    answer_next_dialog(QStringLiteral("Yes"));
    EXPECT_NONFATAL_FAILURE(check_answers(), "no dialog came up for this answer");
    check_answers();
    answer_next_menu(QStringLiteral("Open"));
    EXPECT_NONFATAL_FAILURE(check_answers(), "no menu came up for this answer");
}

TEST_F(SUPPORT_SCRIPT_TEST, a_menu_is_answered_by_the_text_of_an_action)
{
    QMenu menu;
    menu.addAction(QStringLiteral("&Open...\tCtrl+O"));
    QAction* const cut = menu.addAction(QStringLiteral("Cut && &Paste"));
    answer_next_menu(QStringLiteral("Cut & Paste"));
    EXPECT_EQ(cut, menu.exec(QPoint(150, 150)));
    answer_next_menu(QStringLiteral("Open..."));
    EXPECT_EQ(menu.actions().constFirst(), menu.exec(QPoint(150, 150)));
}

TEST_F(SUPPORT_SCRIPT_TEST, a_menu_below_a_menu_is_answered_by_a_second_answer)
{
    QMenu menu;
    QMenu* const below = menu.addMenu(QStringLiteral("Export"));
    below->addAction(QStringLiteral("As text"));
    QAction* const picture = below->addAction(QStringLiteral("As picture"));
    answer_next_menu(QStringLiteral("Export"));
    answer_next_menu(QStringLiteral("As picture"));
    EXPECT_EQ(picture, menu.exec(QPoint(150, 150)));
}

TEST_F(SUPPORT_SCRIPT_TEST, an_action_that_is_missing_or_disabled_fails_the_test_and_closes_the_menu)
{
    QMenu menu;
    menu.addAction(QStringLiteral("Open"))->setEnabled(false);
    answer_next_menu(QStringLiteral("Close"));
    EXPECT_NONFATAL_FAILURE(menu.exec(QPoint(150, 150)), "the menu has no action \"Close\"");
    answer_next_menu(QStringLiteral("Open"));
    EXPECT_NONFATAL_FAILURE(menu.exec(QPoint(150, 150)), "the action \"Open\" is disabled");
}
