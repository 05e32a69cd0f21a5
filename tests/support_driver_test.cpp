#include "gui_driver.h"
#include "gui_test.h"

#include <gtest/gtest-spi.h>

#include <QApplication>
#include <QCheckBox>
#include <QCursor>
#include <QDialog>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMimeData>
#include <QMouseEvent>
#include <QPushButton>
#include <QShortcut>
#include <QSignalSpy>
#include <QTimer>
#include <QWheelEvent>

namespace
{
/// Writes down what it gets.
class PAD : public QWidget
{
public:
    explicit PAD(QWidget* parent = nullptr) : QWidget(parent)
    {
        setMouseTracking(true);
        setAcceptDrops(true);
        setFixedSize(200, 100);
    }

    QStringList log;
    QVector<QPoint> moves;
    QPoint cursor_in_move;

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        note("press", event);
    }
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        note("release", event);
    }
    void mouseDoubleClickEvent(QMouseEvent* event) override
    {
        note("double", event);
    }
    void mouseMoveEvent(QMouseEvent* event) override
    {
        cursor_in_move = QCursor::pos();
        moves << event->pos();
        if (event->buttons() != Qt::NoButton)
            log << QStringLiteral("move %1 %2").arg(event->x()).arg(event->y());
    }
    void wheelEvent(QWheelEvent* event) override
    {
        log << QStringLiteral("wheel %1 %2 at %3 %4 with %5")
                   .arg(event->angleDelta().x())
                   .arg(event->angleDelta().y())
                   .arg(event->position().x())
                   .arg(event->position().y())
                   .arg(int(event->modifiers()), 0, 16);
    }
    void enterEvent(QEvent*) override
    {
        log << "enter";
    }
    void leaveEvent(QEvent*) override
    {
        log << "leave";
    }
    void dragEnterEvent(QDragEnterEvent* event) override
    {
        event->setAccepted(event->mimeData()->hasText());
    }
    void dropEvent(QDropEvent* event) override
    {
        log << QStringLiteral("drop %1 at %2 %3")
                   .arg(event->mimeData()->text())
                   .arg(event->pos().x())
                   .arg(event->pos().y());
        event->acceptProposedAction();
    }

private:
    void note(const char* what, const QMouseEvent* event)
    {
        log << QStringLiteral("%1 %2 at %3 %4 with %5")
                   .arg(QLatin1String(what))
                   .arg(int(event->button()))
                   .arg(event->x())
                   .arg(event->y())
                   .arg(int(event->modifiers()), 0, 16);
    }
};

class SUPPORT_DRIVER_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        window = std::make_unique<QWidget>();
        window->setGeometry(100, 100, 400, 200);
        pad = new PAD(window.get());
        pad->setObjectName("pad");
        pad->move(20, 20);
        button = new QPushButton("Go", window.get());
        button->setObjectName("button");
        button->setGeometry(260, 20, 80, 30);
        edit = new QLineEdit(window.get());
        edit->setGeometry(260, 60, 120, 30);
        ASSERT_TRUE(GUI_DRIVER::show(window.get()));
        GUI_DRIVER::hover(window.get(), QPoint(390, 190));
        pad->log.clear();
        pad->moves.clear();
    }
    void TearDown() override
    {
        window.reset();
        TOLV_GUI_TEST::TearDown();
    }

    std::unique_ptr<QWidget> window;
    PAD* pad = nullptr;
    QPushButton* button = nullptr;
    QLineEdit* edit = nullptr;
};
} // namespace

TEST_F(SUPPORT_DRIVER_TEST, a_widget_is_found_by_its_name_below_a_parent_and_anywhere)
{
    EXPECT_EQ(button, GUI_DRIVER::find_widget<QPushButton>(window.get(), "button"));
    EXPECT_EQ(button, GUI_DRIVER::find_widget<QPushButton>(nullptr, "button"));
    EXPECT_EQ(pad,
              GUI_DRIVER::find_widget<PAD>(nullptr, [](const PAD* candidate) { return candidate->width() == 200; }));
}

TEST_F(SUPPORT_DRIVER_TEST, a_widget_that_is_missing_or_not_unique_fails_the_test)
{
    EXPECT_NONFATAL_FAILURE(GUI_DRIVER::find_widget<QPushButton>(window.get(), "pad"),
                            "there are 0 objects of QPushButton named \"pad\"");
    button->setObjectName("pad");
    EXPECT_NONFATAL_FAILURE(GUI_DRIVER::find_widget<QWidget>(window.get(), "pad"), "there are 2 objects");
}

TEST_F(SUPPORT_DRIVER_TEST, a_click_is_a_press_and_a_release_with_button_place_and_modifiers)
{
    GUI_DRIVER::click(pad, QPoint(30, 40), Qt::RightButton, Qt::ControlModifier);
    EXPECT_EQ(QStringList({"enter", "press 2 at 30 40 with 4000000", "release 2 at 30 40 with 4000000"}), pad->log);
    EXPECT_EQ(Qt::NoButton, QGuiApplication::mouseButtons());
}

TEST_F(SUPPORT_DRIVER_TEST, the_top_left_corner_can_be_clicked)
{
    GUI_DRIVER::click(pad, QPoint(0, 0));
    EXPECT_TRUE(pad->log.contains("press 1 at 0 0 with 0"));
}

TEST_F(SUPPORT_DRIVER_TEST, a_button_reacts_to_a_click)
{
    QSignalSpy spy(button, &QPushButton::clicked);
    GUI_DRIVER::click(button);
    EXPECT_EQ(1, spy.count());
}

TEST_F(SUPPORT_DRIVER_TEST, two_clicks_are_not_a_double_click)
{
    GUI_DRIVER::click(pad, QPoint(30, 40));
    GUI_DRIVER::click(pad, QPoint(30, 40));
    EXPECT_EQ(2, pad->log.filter("press 1").size());
    EXPECT_TRUE(pad->log.filter("double").isEmpty());
}

TEST_F(SUPPORT_DRIVER_TEST, a_double_click_comes_as_press_release_double_release)
{
    GUI_DRIVER::double_click(pad, QPoint(30, 40));
    EXPECT_EQ(QStringList({"enter", "press 1 at 30 40 with 0", "release 1 at 30 40 with 0", "double 1 at 30 40 with 0",
                           "release 1 at 30 40 with 0"}),
              pad->log);
}

TEST_F(SUPPORT_DRIVER_TEST, a_drag_moves_one_pixel_at_a_time_with_the_button_held)
{
    GUI_DRIVER::drag(pad, QPoint(10, 10), QPoint(14, 8));
    EXPECT_EQ(QStringList({"enter", "press 1 at 10 10 with 0", "move 11 10", "move 12 9", "move 13 9", "move 14 8",
                           "release 1 at 14 8 with 0"}),
              pad->log);
}

TEST_F(SUPPORT_DRIVER_TEST, a_drag_out_of_the_window_stays_with_the_widget_and_sends_no_leave_before_the_release)
{
    GUI_DRIVER::press(pad, QPoint(2, 50));
    for (int x = 1; x >= -60; --x)
        GUI_DRIVER::move_to(pad, QPoint(x, 50));
    EXPECT_TRUE(pad->log.contains("move -60 50"));
    EXPECT_FALSE(pad->log.contains("leave"));
    GUI_DRIVER::release(pad, QPoint(-60, 50));
    EXPECT_TRUE(pad->log.contains("release 1 at -60 50 with 0"));
    EXPECT_EQ(Qt::NoButton, GUI_DRIVER::get_buttons());
}

TEST_F(SUPPORT_DRIVER_TEST, the_way_of_a_drag_follows_its_longer_side)
{
    EXPECT_EQ(QVector<QPoint>({QPoint(1, 1), QPoint(1, 2), QPoint(2, 3)}),
              GUI_DRIVER::get_way(QPoint(0, 0), QPoint(2, 3)));
    EXPECT_TRUE(GUI_DRIVER::get_way(QPoint(5, 5), QPoint(5, 5)).isEmpty());
    EXPECT_EQ(300, GUI_DRIVER::get_way(QPoint(0, 0), QPoint(-300, 7)).size());
}

TEST_F(SUPPORT_DRIVER_TEST, hovering_enters_moves_and_leaves)
{
    GUI_DRIVER::hover(pad, QPoint(50, 50));
    EXPECT_EQ(QStringList("enter"), pad->log);
    EXPECT_EQ(QPoint(50, 50), pad->moves.value(0));
    EXPECT_TRUE(pad->underMouse());
    GUI_DRIVER::hover(button);
    EXPECT_EQ("leave", pad->log.last());
}

TEST_F(SUPPORT_DRIVER_TEST, a_pointer_that_is_placed_has_been_told_of_at_once_and_leaves_nothing_behind)
{
    for (int x = 10; x < 60; x += 10)
    {
        GUI_DRIVER::place_pointer(pad->mapToGlobal(QPoint(x, 30)));
        ASSERT_FALSE(pad->moves.isEmpty());
        EXPECT_EQ(QPoint(x, 30), pad->moves.last());
    }
    EXPECT_EQ((QStringList{"enter"}), pad->log);
    GUI_DRIVER::place_pointer(window->mapToGlobal(QPoint(390, 190)));
    EXPECT_EQ((QStringList{"enter", "leave"}), pad->log);
    EXPECT_EQ(QPoint(50, 30), pad->moves.last());
}

TEST_F(SUPPORT_DRIVER_TEST, the_cursor_is_where_the_pointer_is_already_in_the_handler)
{
    GUI_DRIVER::hover(pad, QPoint(50, 50));
    EXPECT_EQ(pad->mapToGlobal(QPoint(50, 50)), pad->cursor_in_move);
    EXPECT_EQ(pad->mapToGlobal(QPoint(50, 50)), QCursor::pos());
}

TEST_F(SUPPORT_DRIVER_TEST, the_cursor_follows_a_drag_without_a_window_system)
{
    if (QGuiApplication::platformName() != QLatin1String("offscreen"))
        GTEST_SKIP() << "the pointer is the window system's own";
    GUI_DRIVER::press(pad, QPoint(50, 50));
    GUI_DRIVER::move_to(pad, QPoint(60, 55));
    EXPECT_EQ(pad->mapToGlobal(QPoint(60, 55)), pad->cursor_in_move);
    GUI_DRIVER::release(pad, QPoint(60, 55));
}

TEST_F(SUPPORT_DRIVER_TEST, the_wheel_turns_with_modifiers_at_its_place)
{
    GUI_DRIVER::wheel(pad, QPoint(70, 20), QPoint(0, -120), Qt::ControlModifier | Qt::AltModifier);
    EXPECT_EQ("wheel 0 -120 at 70 20 with c000000", pad->log.last());
}

TEST_F(SUPPORT_DRIVER_TEST, a_wheel_event_that_a_child_ignores_goes_to_its_parent)
{
    QWidget child(pad);
    child.setGeometry(10, 10, 50, 50);
    child.show();
    GUI_DRIVER::wheel(&child, QPoint(5, 5), QPoint(0, 120));
    EXPECT_EQ(QStringList({"enter", "wheel 0 120 at 15 15 with 0"}), pad->log);
}

TEST_F(SUPPORT_DRIVER_TEST, typing_focuses_the_edit_and_fills_it)
{
    GUI_DRIVER::type(edit, "Net_1 [7]");
    EXPECT_TRUE(edit->hasFocus());
    EXPECT_EQ("Net_1 [7]", edit->text());
    GUI_DRIVER::key_click(edit, Qt::Key_Backspace);
    EXPECT_EQ("Net_1 [7", edit->text());
    GUI_DRIVER::key_click(edit, Qt::Key_Home, Qt::ShiftModifier);
    EXPECT_EQ("Net_1 [7", edit->selectedText());
}

TEST_F(SUPPORT_DRIVER_TEST, a_key_reaches_shortcuts)
{
    QShortcut shortcut(QKeySequence("Ctrl+K"), window.get());
    QSignalSpy spy(&shortcut, &QShortcut::activated);
    GUI_DRIVER::key_click(edit, Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(1, spy.count());
}

TEST_F(SUPPORT_DRIVER_TEST, a_null_target_fails_the_test)
{
    EXPECT_NONFATAL_FAILURE(GUI_DRIVER::click(nullptr), "the widget is null");
    EXPECT_NONFATAL_FAILURE(GUI_DRIVER::key_click(nullptr, Qt::Key_A), "the widget is null");
    EXPECT_NONFATAL_FAILURE(GUI_DRIVER::wheel(nullptr, QPoint(), QPoint(0, 120)), "the widget is null");
    EXPECT_NONFATAL_FAILURE(GUI_DRIVER::show(nullptr), "the widget is null");
}

TEST_F(SUPPORT_DRIVER_TEST, a_hidden_target_fails_the_test)
{
    pad->hide();
    EXPECT_NONFATAL_FAILURE(GUI_DRIVER::click(pad), "QWidget \"pad\" is hidden");
    EXPECT_TRUE(pad->log.filter("press").isEmpty());
}

TEST_F(SUPPORT_DRIVER_TEST, a_disabled_target_fails_the_test)
{
    button->setEnabled(false);
    EXPECT_NONFATAL_FAILURE(GUI_DRIVER::click(button), "QPushButton \"button\" is disabled");
    EXPECT_NONFATAL_FAILURE(GUI_DRIVER::key_click(button, Qt::Key_Space), "QPushButton \"button\" is disabled");
}

TEST_F(SUPPORT_DRIVER_TEST, a_position_outside_fails_the_test)
{
    EXPECT_NONFATAL_FAILURE(GUI_DRIVER::click(pad, QPoint(200, 10)), "(200, 10) is outside of");
    EXPECT_NONFATAL_FAILURE(GUI_DRIVER::drag(pad, QPoint(-1, 0), QPoint(5, 5)), "(-1, 0) is outside of");
    EXPECT_EQ(Qt::NoButton, GUI_DRIVER::get_buttons());
}

TEST_F(SUPPORT_DRIVER_TEST, a_target_scrolled_out_of_its_window_fails_the_test)
{
    pad->move(20, 190);
    EXPECT_NONFATAL_FAILURE(GUI_DRIVER::click(pad, QPoint(50, 50)), "is outside of");
}

TEST_F(SUPPORT_DRIVER_TEST, a_covered_target_fails_the_test)
{
    QWidget cover(window.get());
    cover.setObjectName("cover");
    cover.setGeometry(pad->geometry());
    cover.show();
    EXPECT_NONFATAL_FAILURE(GUI_DRIVER::click(pad, QPoint(5, 5)), "is covered by QWidget \"cover\"");
}

TEST_F(SUPPORT_DRIVER_TEST, a_target_behind_a_modal_dialog_fails_the_test_and_one_in_it_does_not)
{
    QDialog dialog;
    dialog.setObjectName("question");
    dialog.setModal(true);
    QPushButton* const answer = new QPushButton("Yes", &dialog);
    ASSERT_TRUE(GUI_DRIVER::show(&dialog));
    EXPECT_NONFATAL_FAILURE(GUI_DRIVER::click(button), "is behind the modal dialog QDialog \"question\"");
    QSignalSpy spy(answer, &QPushButton::clicked);
    GUI_DRIVER::click(answer);
    EXPECT_EQ(1, spy.count());
}

TEST_F(SUPPORT_DRIVER_TEST, a_release_of_a_button_that_is_not_held_fails_the_test)
{
    EXPECT_NONFATAL_FAILURE(GUI_DRIVER::release(pad, QPoint(5, 5)), "the button is not held");
    GUI_DRIVER::press(pad, QPoint(5, 5));
    EXPECT_NONFATAL_FAILURE(GUI_DRIVER::press(pad, QPoint(5, 5)), "the button is held already");
    EXPECT_NONFATAL_FAILURE(GUI_DRIVER::hover(pad), "a button is held");
    GUI_DRIVER::release(pad, QPoint(5, 5));
}

TEST_F(SUPPORT_DRIVER_TEST, a_widget_that_takes_no_focus_takes_no_keys)
{
    EXPECT_NONFATAL_FAILURE(GUI_DRIVER::key_click(pad, Qt::Key_A), "QWidget \"pad\" does not take the focus");
}

TEST_F(SUPPORT_DRIVER_TEST, a_click_that_closes_the_window_is_released_all_the_same)
{
    QObject::connect(button, &QPushButton::pressed, window.get(), &QWidget::close);
    GUI_DRIVER::click(button);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(Qt::NoButton, GUI_DRIVER::get_buttons());
}

TEST_F(SUPPORT_DRIVER_TEST, what_is_dropped_arrives_where_it_is_accepted)
{
    QMimeData text;
    text.setText("cell");
    EXPECT_EQ(Qt::CopyAction, GUI_DRIVER::drop(pad, QPoint(12, 34), &text));
    EXPECT_EQ("drop cell at 12 34", pad->log.last());
    QMimeData other;
    other.setData("application/x-other", "1");
    EXPECT_EQ(Qt::IgnoreAction, GUI_DRIVER::drop(pad, QPoint(12, 34), &other));
    EXPECT_EQ(1, pad->log.filter("drop").size());
}

TEST_F(SUPPORT_DRIVER_TEST, positions_of_a_drawing_are_mapped)
{
    const MAPPED_DRIVER driver(pad, [](const QPointF& point) { return point / 10 + QPointF(0, 50); });
    EXPECT_EQ(QPoint(2, 50), driver.get_pixel(QPointF(16, 4)));
    driver.drag(QPointF(10, 10), QPointF(30, -10));
    EXPECT_EQ(QStringList({"enter", "press 1 at 1 51 with 0", "move 2 50", "move 3 49", "release 1 at 3 49 with 0"}),
              pad->log);
    EXPECT_NONFATAL_FAILURE(driver.click(QPointF(3000, 0)), "is outside of");
}

TEST_F(SUPPORT_DRIVER_TEST, waiting_ends_when_the_condition_holds)
{
    bool done = false;
    QTimer::singleShot(20, qApp, [&] { done = true; });
    EXPECT_TRUE(GUI_DRIVER::wait_for([&] { return done; }));
}

TEST_F(SUPPORT_DRIVER_TEST, waiting_in_vain_fails_the_test)
{
    EXPECT_NONFATAL_FAILURE(GUI_DRIVER::wait_for([] { return false; }, 30),
                            "the condition did not come about within 30 ms");
}

TEST_F(SUPPORT_DRIVER_TEST, posted_events_and_deletions_are_delivered)
{
    auto* const victim = new QObject;
    QSignalSpy spy(victim, &QObject::destroyed);
    bool called = false;
    QMetaObject::invokeMethod(
        window.get(), [&] { called = true; }, Qt::QueuedConnection);
    victim->deleteLater();
    GUI_DRIVER::process_posted();
    EXPECT_TRUE(called);
    EXPECT_EQ(1, spy.count());
}
