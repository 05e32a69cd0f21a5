#include "gui_driver.h"
#include "gui_test.h"
#include "input_script.h"
#include "internal_error_trap.h"
#include "picture.h"
#include "tolv_drag_tracker.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>
#include <QRubberBand>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalSpy>
#include <QTimer>

namespace
{
/// Begins a drag at a press, and remembers what reaches it.
class TRACKED_WIDGET : public QWidget
{
public:
    using QWidget::QWidget;
    std::function<void(const QPoint&)> on_press;
    QList<QEvent::Type> seen;
    bool is_tracking = false;

protected:
    bool event(QEvent* event) override
    {
        seen << event->type();
        return QWidget::event(event);
    }
    void mousePressEvent(QMouseEvent* event) override
    {
        if (!on_press)
            return;
        const QPointer<TRACKED_WIDGET> guard(this);
        seen.clear();
        is_tracking = true;
        const auto handler = on_press; // outlives this widget, which may go in the middle
        handler(event->pos());
        if (guard != nullptr)
            is_tracking = false;
    }
};

/// Remembers the moves that it is told of.
class RECORDING_CALLBACK : public TOLV_DRAG_TRACKER_CALLBACK
{
public:
    QVector<QPair<QPoint, QPoint>> moves;
    std::function<QPoint(const QPoint&)> adjust;

    void update_drag_position(const QPoint& from, const QPoint& to) override
    {
        moves << qMakePair(from, to);
    }
    QPoint adjust_mouse_point(const QPoint& point) override
    {
        return adjust ? adjust(point) : TOLV_DRAG_TRACKER_CALLBACK::adjust_mouse_point(point);
    }
};

class EXPOSED_TRACKER : public TOLV_DRAG_TRACKER
{
public:
    using TOLV_DRAG_TRACKER::mouseMoveEvent;
    using TOLV_DRAG_TRACKER::TOLV_DRAG_TRACKER;
};

/// A drag of a rectangle on a widget of 300 by 200 pixels in a window.
class TOLV_DRAG_TRACKER_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        window = std::make_unique<QWidget>();
        window->setGeometry(50, 50, 400, 300);
        widget = new TRACKED_WIDGET(window.get());
        widget->setGeometry(20, 30, 300, 200);
        widget->setFocusPolicy(Qt::StrongFocus);
        edit = new QLineEdit(window.get());
        edit->setGeometry(20, 250, 100, 30);
        ASSERT_TRUE(GUI_DRIVER::show(window.get()));
        track_free(0.0);
    }
    void TearDown() override
    {
        if (GUI_DRIVER::get_buttons() & Qt::LeftButton) // the widget went away under a held button
        {
            QWidget rest;
            rest.setGeometry(50, 50, 100, 100);
            GUI_DRIVER::show(&rest);
            GUI_DRIVER::release(&rest, QPoint(10, 10));
        }
        window.reset();
        TOLV_GUI_TEST::TearDown();
    }

    /// The next press drags a free rectangle.
    void track_free(double aspect_ratio, QScrollArea* area = nullptr)
    {
        widget->on_press = [=](const QPoint& point)
        { result = TOLV_DRAG_TRACKER::track_rect(widget, point, area, aspect_ratio); };
    }
    /// The next press drags a handle of a rectangle.
    void track_handle(const QPoint& fixed_1, const QPoint& fixed_2, double aspect_ratio)
    {
        widget->on_press = [=](const QPoint& grab)
        { result = TOLV_DRAG_TRACKER::track_rect(widget, grab, fixed_1, fixed_2, nullptr, aspect_ratio); };
    }

    /// Press, one move, release.
    QRect drag(const QPoint& from, const QPoint& to)
    {
        INPUT_SCRIPT script;
        script.then([&] { GUI_DRIVER::press(widget, from); })
            .then([&] { GUI_DRIVER::move_to(widget, to); })
            .then([&] { GUI_DRIVER::release(widget, to); });
        EXPECT_TRUE(script.run());
        return result;
    }

    /// A release without the move that a real one comes with.
    void send_release()
    {
        QMouseEvent event(QEvent::MouseButtonRelease, QPointF(1, 1), widget->mapToGlobal(QPoint(1, 1)), Qt::LeftButton,
                          Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(widget, &event);
    }

    QRubberBand* get_rubber_band() const
    {
        return widget->findChild<QRubberBand*>();
    }

    /// Presses, runs a step in the middle of the drag, and expects that the drag ends by it and without a result.
    void expect_that_it_ends(const std::function<void()>& step)
    {
        result = QRect(1, 2, 3, 4);
        INPUT_SCRIPT script;
        script.then([&] { GUI_DRIVER::press(widget, QPoint(20, 30)); })
            .then([&] { GUI_DRIVER::move_to(widget, QPoint(120, 80)); })
            .then([&] { step(); });
        EXPECT_TRUE(script.run());
        EXPECT_EQ(QRect(), result);
        EXPECT_EQ(QSize(0, 0), result.size());
    }

    std::unique_ptr<QWidget> window;
    TRACKED_WIDGET* widget = nullptr;
    QLineEdit* edit = nullptr;
    QRect result;
};

QRect get_rect(int left, int top, int right, int bottom)
{
    return {QPoint(left, top), QPoint(right, bottom)};
}

/// Where two pictures differ.
QRect get_difference(const QImage& a, const QImage& b)
{
    QRect result;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if (a.pixel(x, y) != b.pixel(x, y))
                result |= QRect(x, y, 1, 1);
    return result;
}
} // namespace

// ---- A free rectangle -----------------------------------------------------------------------------------------------

TEST_F(TOLV_DRAG_TRACKER_TEST, a_rectangle_spans_from_the_press_to_the_release_inclusively)
{
    EXPECT_EQ(get_rect(20, 30, 120, 80), drag(QPoint(20, 30), QPoint(120, 80)));
    EXPECT_EQ(get_rect(20, 30, 120, 80), drag(QPoint(120, 80), QPoint(20, 30)));
    EXPECT_EQ(get_rect(20, 30, 120, 80), drag(QPoint(120, 30), QPoint(20, 80)));
}

TEST_F(TOLV_DRAG_TRACKER_TEST, a_drag_without_a_move_gives_an_empty_rectangle_at_the_press)
{
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(widget, QPoint(20, 30)); }).then([&] { send_release(); });
    EXPECT_TRUE(script.run());
    EXPECT_EQ(get_rect(20, 30, 19, 29), result);
    GUI_DRIVER::release(widget, QPoint(20, 30));
}

TEST_F(TOLV_DRAG_TRACKER_TEST, the_rectangle_never_leaves_the_widget)
{
    EXPECT_EQ(get_rect(20, 0, 299, 30), drag(QPoint(20, 30), QPoint(1000, -40)));
    EXPECT_EQ(get_rect(0, 30, 20, 199), drag(QPoint(20, 30), QPoint(-1000, 200)));
}

TEST_F(TOLV_DRAG_TRACKER_TEST, the_rubber_band_shows_the_rectangle_of_the_moment)
{
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(widget, QPoint(20, 30)); })
        .then(
            [&]
            {
                ASSERT_NE(nullptr, get_rubber_band());
                EXPECT_EQ(QRubberBand::Rectangle, get_rubber_band()->shape());
                EXPECT_TRUE(get_rubber_band()->isVisible());
                EXPECT_TRUE(get_rubber_band()->hasMouseTracking());
                EXPECT_EQ(QRect(20, 30, 0, 0), get_rubber_band()->geometry());
                GUI_DRIVER::move_to(widget, QPoint(90, 40));
                EXPECT_EQ(get_rect(20, 30, 90, 40), get_rubber_band()->geometry());
                GUI_DRIVER::move_to(widget, QPoint(-5, 20));
                EXPECT_EQ(get_rect(0, 20, 20, 30), get_rubber_band()->geometry());
            })
        .then([&] { GUI_DRIVER::release(widget, QPoint(5, 5)); });
    EXPECT_TRUE(script.run());
    EXPECT_EQ(nullptr, get_rubber_band());
    EXPECT_EQ(get_rect(5, 5, 20, 30), result);
}

TEST_F(TOLV_DRAG_TRACKER_TEST, the_rubber_band_is_painted_where_the_rectangle_is)
{
    for (const int ratio : {1, 2})
    {
        SCOPED_TRACE(ratio);
        const QImage before = render_widget(widget, ratio);
        QImage during;
        INPUT_SCRIPT script;
        script.then([&] { GUI_DRIVER::press(widget, QPoint(20, 30)); })
            .then([&] { GUI_DRIVER::move_to(widget, QPoint(119, 79)); })
            .then([&] { during = render_widget(widget, ratio); })
            .then([&] { GUI_DRIVER::release(widget, QPoint(119, 79)); });
        EXPECT_TRUE(script.run());
        EXPECT_EQ(QRect(20 * ratio, 30 * ratio, 100 * ratio, 50 * ratio), get_difference(before, during));
    }
}

// ---- A rectangle by its handles -------------------------------------------------------------------------------------

TEST_F(TOLV_DRAG_TRACKER_TEST, each_handle_moves_what_is_not_fixed)
{
    // Columns 100 to 199, rows 50 to 129; the far ends count as 200 and 130.
    const QPoint to(70, 40);
    const auto drag_handle = [&](const QPoint& grab, RESIZE_HANDLES handle)
    {
        QPoint fixed_1;
        QPoint fixed_2;
        EXPECT_EQ(handle, TOLV_DRAG_TRACKER::hit_handle(QRect(100, 50, 100, 80), grab, &fixed_1, &fixed_2, 0));
        track_handle(fixed_1, fixed_2, 0.0);
        return drag(grab, to);
    };
    EXPECT_EQ(get_rect(70, 40, 200, 130), drag_handle(QPoint(103, 53), RESIZE_HANDLE_TOP_LEFT));
    EXPECT_EQ(get_rect(100, 40, 200, 130), drag_handle(QPoint(150, 53), RESIZE_HANDLE_TOP));
    EXPECT_EQ(get_rect(70, 40, 100, 130), drag_handle(QPoint(196, 53), RESIZE_HANDLE_TOP_RIGHT));
    EXPECT_EQ(get_rect(70, 50, 100, 130), drag_handle(QPoint(196, 90), RESIZE_HANDLE_RIGHT));
    EXPECT_EQ(get_rect(70, 40, 100, 50), drag_handle(QPoint(196, 126), RESIZE_HANDLE_BOTTOM_RIGHT));
    EXPECT_EQ(get_rect(100, 40, 200, 50), drag_handle(QPoint(150, 126), RESIZE_HANDLE_BOTTOM));
    EXPECT_EQ(get_rect(70, 40, 200, 50), drag_handle(QPoint(103, 126), RESIZE_HANDLE_BOTTOM_LEFT));
    EXPECT_EQ(get_rect(70, 50, 200, 130), drag_handle(QPoint(103, 90), RESIZE_HANDLE_LEFT));
}

TEST_F(TOLV_DRAG_TRACKER_TEST, each_handle_heeds_the_aspect_ratio_measured_from_the_first_fixed_point)
{
    // Ratio 2, pointer at (170, 110). The greater distance from the fixed point, halved or doubled, is added to the
    // other coordinate.
    const auto drag_handle = [&](const QPoint& fixed_1, const QPoint& fixed_2)
    {
        track_handle(fixed_1, fixed_2, 2.0);
        return drag(QPoint(150, 90), QPoint(170, 110));
    };
    EXPECT_EQ(get_rect(170, 95, 200, 130), drag_handle(QPoint(200, 130), QPoint(200, 130))); // top left: y 110 - 15
    EXPECT_EQ(get_rect(100, 75, 200, 130), drag_handle(QPoint(100, 130), QPoint(200, 130))); // top: y 110 - 35
    EXPECT_EQ(get_rect(100, 75, 170, 130), drag_handle(QPoint(100, 130), QPoint(100, 130))); // top right: y 110 - 35
    EXPECT_EQ(get_rect(100, 50, 170, 130), drag_handle(QPoint(100, 50), QPoint(100, 130)));  // right: x as it is
    EXPECT_EQ(get_rect(100, 50, 170, 145), drag_handle(QPoint(100, 50), QPoint(100, 50)));   // bottom right: y 110 + 35
    EXPECT_EQ(get_rect(100, 50, 200, 145), drag_handle(QPoint(100, 50), QPoint(200, 50)));   // bottom: y 110 + 35
    EXPECT_EQ(get_rect(50, 50, 200, 110), drag_handle(QPoint(200, 50), QPoint(200, 50)));    // bottom left: x 170 - 120
    EXPECT_EQ(get_rect(50, 50, 200, 130), drag_handle(QPoint(200, 50), QPoint(200, 130)));   // left: x 170 - 120
}

TEST_F(TOLV_DRAG_TRACKER_TEST, a_handle_that_is_not_moved_gives_the_rectangle_to_the_press)
{
    const auto press_and_release = [&](const QPoint& grab, const QPoint& fixed_1, const QPoint& fixed_2)
    {
        track_handle(fixed_1, fixed_2, 0.0);
        INPUT_SCRIPT script;
        script.then([&] { GUI_DRIVER::press(widget, grab); }).then([&] { send_release(); });
        EXPECT_TRUE(script.run());
        GUI_DRIVER::release(widget, grab);
        return result;
    };
    // A corner begins as the one point that is fixed.
    EXPECT_EQ(get_rect(200, 130, 200, 130), press_and_release(QPoint(103, 53), QPoint(200, 130), QPoint(200, 130)));
    // A vertical side: to the column of the press. A horizontal one: to its row.
    EXPECT_EQ(get_rect(100, 50, 195, 130), press_and_release(QPoint(195, 90), QPoint(100, 50), QPoint(100, 130)));
    EXPECT_EQ(get_rect(103, 50, 200, 130), press_and_release(QPoint(103, 90), QPoint(200, 50), QPoint(200, 130)));
    EXPECT_EQ(get_rect(100, 53, 200, 130), press_and_release(QPoint(150, 53), QPoint(100, 130), QPoint(200, 130)));
}

TEST_F(TOLV_DRAG_TRACKER_TEST, fixed_points_that_span_an_area_are_an_internal_error)
{
    EXPECT_INTERNAL_ERROR(
        TOLV_RECT_DRAG_TRACKER_CALLBACK(widget, QPoint(5, 5), QPoint(10, 10), QPoint(20, 30), nullptr),
        "Incorrect fixed points");
}

// ---- What a callback is told ----------------------------------------------------------------------------------------

TEST_F(TOLV_DRAG_TRACKER_TEST, a_callback_is_told_of_each_move_from_the_last_point_on)
{
    RECORDING_CALLBACK callback;
    widget->on_press = [&](const QPoint& point) { TOLV_DRAG_TRACKER::track(widget, point, &callback, 0.0); };
    GUI_DRIVER::move_to(widget, QPoint(10, 10));
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(widget, QPoint(10, 10)); })
        .then([&] { GUI_DRIVER::move_to(widget, QPoint(20, 15)); })
        .then([&] { GUI_DRIVER::move_to(widget, QPoint(400, -20)); })
        .then([&] { GUI_DRIVER::release(widget, QPoint(30, 30)); });
    EXPECT_TRUE(script.run());
    ASSERT_EQ(3, callback.moves.size());
    EXPECT_EQ(qMakePair(QPoint(10, 10), QPoint(20, 15)), callback.moves.at(0));
    EXPECT_EQ(qMakePair(QPoint(20, 15), QPoint(400, -20)), callback.moves.at(1));
    EXPECT_EQ(qMakePair(QPoint(400, -20), QPoint(30, 30)), callback.moves.at(2));
    EXPECT_FALSE(callback.is_cancelled());
}

TEST_F(TOLV_DRAG_TRACKER_TEST, a_callback_can_snap_the_pointer)
{
    RECORDING_CALLBACK callback;
    callback.adjust = [](const QPoint& point) { return QPoint(point.x() / 10 * 10, point.y() / 10 * 10); };
    widget->on_press = [&](const QPoint& point) { TOLV_DRAG_TRACKER::track(widget, point, &callback, 0.0); };
    drag(QPoint(11, 12), QPoint(37, 48));
    EXPECT_EQ(qMakePair(QPoint(11, 12), QPoint(30, 40)), callback.moves.value(0));
    drag(QPoint(11, 12), QPoint(59, 69));
    EXPECT_EQ(qMakePair(QPoint(11, 12), QPoint(50, 60)), callback.moves.value(1));
}

TEST_F(TOLV_DRAG_TRACKER_TEST, an_aspect_ratio_corrects_the_lesser_coordinate_by_the_greater_distance)
{
    const auto get_point = [&](const QPoint& to, double aspect_ratio)
    {
        RECORDING_CALLBACK callback;
        EXPOSED_TRACKER tracker(widget, QPoint(100, 100), &callback, aspect_ratio);
        for (const QPoint& point : {QPoint(160, 90), to}) // the first move does not shift the beginning
        {
            QMouseEvent event(QEvent::MouseMove, point, widget->mapToGlobal(point), Qt::NoButton, Qt::LeftButton,
                              Qt::NoModifier);
            tracker.mouseMoveEvent(&event);
        }
        EXPECT_EQ(QPoint(100, 100), callback.moves.value(1).first);
        return callback.moves.value(1).second;
    };
    EXPECT_EQ(QPoint(110, 104), get_point(QPoint(110, 101), 3.0)); // 1 + trunc(10 / 3)
    EXPECT_EQ(QPoint(90, 96), get_point(QPoint(90, 99), 3.0));
    EXPECT_EQ(QPoint(110, 103), get_point(QPoint(110, 100), 3.0));  // no distance counts as down
    EXPECT_EQ(QPoint(106, 110), get_point(QPoint(101, 110), 0.55)); // 1 + trunc(10 * 0.55)
    EXPECT_EQ(QPoint(94, 90), get_point(QPoint(99, 90), 0.55));
    EXPECT_EQ(QPoint(105, 90), get_point(QPoint(100, 90), 0.55));  // ... and as right
    EXPECT_EQ(QPoint(110, 115), get_point(QPoint(110, 110), 2.0)); // equal distances correct y
    EXPECT_EQ(QPoint(100, 100), get_point(QPoint(100, 100), 2.0));
}

TEST_F(TOLV_DRAG_TRACKER_TEST, an_absurd_aspect_ratio_does_no_harm)
{
    for (const double ratio : {1e-300, 1e300, -1.0, std::numeric_limits<double>::quiet_NaN()})
    {
        track_free(ratio);
        EXPECT_TRUE(widget->rect().contains(drag(QPoint(20, 30), QPoint(120, 80)))) << ratio;
        EXPECT_TRUE(widget->rect().contains(drag(QPoint(20, 30), QPoint(50, 180)))) << ratio;
    }
}

TEST_F(TOLV_DRAG_TRACKER_TEST, positions_on_the_screen_are_rounded_half_away_from_zero)
{
    RECORDING_CALLBACK callback;
    EXPOSED_TRACKER tracker(widget, QPoint(0, 0), &callback, 0.0);
    const auto get_point = [&](const QPointF& screen)
    {
        QMouseEvent event(QEvent::MouseMove, QPointF(), QPointF(), screen, Qt::NoButton, Qt::LeftButton,
                          Qt::NoModifier);
        tracker.mouseMoveEvent(&event);
        return widget->mapToGlobal(callback.moves.constLast().second);
    };
    EXPECT_EQ(QPoint(101, 100), get_point(QPointF(100.5, 100.49)));
    EXPECT_EQ(QPoint(-101, -100), get_point(QPointF(-100.5, -100.49)));
}

TEST_F(TOLV_DRAG_TRACKER_TEST, a_move_counts_by_its_place_on_the_screen)
{
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(widget, QPoint(20, 30)); })
        .then([&] { widget->move(widget->x() - 15, widget->y() + 5); })
        .then([&] { GUI_DRIVER::move_to(window.get(), QPoint(20 + 100, 30 + 100)); })
        .then([&] { GUI_DRIVER::release(window.get(), QPoint(20 + 100, 30 + 100)); });
    EXPECT_TRUE(script.run());
    EXPECT_EQ(get_rect(20, 30, 115, 95), result);
}

// ---- What does not get through --------------------------------------------------------------------------------------

TEST_F(TOLV_DRAG_TRACKER_TEST, only_paint_events_reach_the_widget)
{
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(widget, QPoint(20, 30)); })
        .then([&] { widget->seen.clear(); }) // of what making the rubber band said
        .then([&] { GUI_DRIVER::wheel(widget, QPoint(50, 50), QPoint(0, 120)); })
        .then([&] { GUI_DRIVER::key_click(widget, Qt::Key_A); })
        .then(
            [&]
            {
                QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(50, 50));
                QApplication::sendEvent(widget, &event);
                QMouseEvent press(QEvent::MouseButtonPress, QPointF(50, 50), Qt::RightButton,
                                  Qt::LeftButton | Qt::RightButton, Qt::NoModifier);
                QApplication::sendEvent(widget, &press);
                widget->repaint();
            })
        .then(
            [&]
            {
                EXPECT_TRUE(widget->is_tracking);
                EXPECT_TRUE(widget->seen.contains(QEvent::Paint));
                widget->seen.removeAll(QEvent::Paint);
                EXPECT_EQ(QList<QEvent::Type>(), widget->seen);
            })
        .then([&] { GUI_DRIVER::release(widget, QPoint(50, 50)); });
    EXPECT_TRUE(script.run());
}

TEST_F(TOLV_DRAG_TRACKER_TEST, keys_for_another_widget_reach_nothing)
{
    widget->setFocusPolicy(Qt::NoFocus);
    ASSERT_TRUE(GUI_DRIVER::focus(edit));
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(widget, QPoint(20, 30)); })
        .then([&] { GUI_DRIVER::key_click(edit, Qt::Key_A); })
        .then([&] { GUI_DRIVER::release(widget, QPoint(50, 50)); });
    EXPECT_TRUE(script.run());
    EXPECT_EQ(QString(), edit->text());
    EXPECT_EQ(get_rect(20, 30, 50, 50), result);
    GUI_DRIVER::key_click(edit, Qt::Key_A);
    EXPECT_EQ(QStringLiteral("a"), edit->text());
}

TEST_F(TOLV_DRAG_TRACKER_TEST, every_key_is_accepted)
{
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(widget, QPoint(20, 30)); })
        .then(
            [&]
            {
                for (const auto& [type, code] :
                     {std::pair(QEvent::KeyPress, Qt::Key_A), std::pair(QEvent::KeyRelease, Qt::Key_A),
                      std::pair(QEvent::KeyPress, Qt::Key_Escape)})
                {
                    QKeyEvent key(type, code, Qt::NoModifier);
                    key.ignore();
                    QApplication::sendEvent(widget, &key);
                    EXPECT_TRUE(key.isAccepted()) << type << " " << code;
                }
            });
    EXPECT_TRUE(script.run());
    EXPECT_EQ(QRect(), result);
}

TEST_F(TOLV_DRAG_TRACKER_TEST, shortcuts_do_not_act_during_a_drag)
{
    QShortcut shortcut(QKeySequence(Qt::Key_F5), window.get());
    const QSignalSpy activated(&shortcut, SIGNAL(activated()));
    ASSERT_TRUE(GUI_DRIVER::focus(widget));
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(widget, QPoint(20, 30)); })
        .then([&] { GUI_DRIVER::key_click(widget, Qt::Key_F5); })
        .then([&] { GUI_DRIVER::release(widget, QPoint(50, 50)); });
    EXPECT_TRUE(script.run());
    EXPECT_EQ(0, activated.count());
    GUI_DRIVER::key_click(widget, Qt::Key_F5);
    EXPECT_EQ(1, activated.count());
}

// ---- The end --------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DRAG_TRACKER_TEST, escape_cancels_the_drag)
{
    ASSERT_TRUE(GUI_DRIVER::focus(widget));
    expect_that_it_ends([&] { GUI_DRIVER::key_press(widget, Qt::Key_Escape); });
    EXPECT_EQ(nullptr, get_rubber_band());
}

TEST_F(TOLV_DRAG_TRACKER_TEST, the_release_of_escape_cancels_as_well)
{
    ASSERT_TRUE(GUI_DRIVER::focus(widget));
    expect_that_it_ends([&] { GUI_DRIVER::key_release(widget, Qt::Key_Escape); });
}

TEST_F(TOLV_DRAG_TRACKER_TEST, escape_cancels_where_another_widget_has_the_focus)
{
    widget->setFocusPolicy(Qt::NoFocus);
    ASSERT_TRUE(GUI_DRIVER::focus(edit));
    expect_that_it_ends([&] { GUI_DRIVER::key_press(edit, Qt::Key_Escape); });
}

TEST_F(TOLV_DRAG_TRACKER_TEST, all_events_reach_the_widget_again_after_the_end)
{
    ASSERT_TRUE(GUI_DRIVER::focus(widget));
    expect_that_it_ends([&] { GUI_DRIVER::key_press(widget, Qt::Key_Escape); });
    widget->seen.clear();
    GUI_DRIVER::key_release(widget, Qt::Key_Escape);
    GUI_DRIVER::release(widget, QPoint(50, 50));
    GUI_DRIVER::wheel(widget, QPoint(50, 50), QPoint(0, 120));
    EXPECT_TRUE(widget->seen.contains(QEvent::KeyRelease));
    EXPECT_TRUE(widget->seen.contains(QEvent::MouseButtonRelease));
    EXPECT_TRUE(widget->seen.contains(QEvent::Wheel));
}

TEST_F(TOLV_DRAG_TRACKER_TEST, the_release_of_any_button_ends_the_drag)
{
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(widget, QPoint(20, 30)); })
        .then([&] { GUI_DRIVER::press(widget, QPoint(60, 70), Qt::RightButton); })
        .then([&] { EXPECT_TRUE(widget->is_tracking); })
        .then([&] { GUI_DRIVER::release(widget, QPoint(60, 70), Qt::RightButton); });
    EXPECT_TRUE(script.run());
    EXPECT_FALSE(widget->is_tracking);
    EXPECT_EQ(get_rect(20, 30, 60, 70), result);
    GUI_DRIVER::release(widget, QPoint(60, 70));
}

TEST_F(TOLV_DRAG_TRACKER_TEST, a_drag_ends_when_its_widget_is_hidden)
{
    expect_that_it_ends([&] { widget->hide(); });
    EXPECT_FALSE(widget->is_tracking);
    EXPECT_EQ(nullptr, get_rubber_band());
}

TEST_F(TOLV_DRAG_TRACKER_TEST, a_drag_ends_when_its_window_is_closed)
{
    expect_that_it_ends([&] { window->close(); });
}

TEST_F(TOLV_DRAG_TRACKER_TEST, a_drag_ends_when_its_widget_is_deleted)
{
    expect_that_it_ends([&] { delete widget; });
}

TEST_F(TOLV_DRAG_TRACKER_TEST, a_drag_ends_when_its_widget_is_to_be_deleted_later)
{
    const QPointer<QWidget> guard(widget);
    expect_that_it_ends([&] { widget->deleteLater(); });
    EXPECT_EQ(nullptr, guard);
}

TEST_F(TOLV_DRAG_TRACKER_TEST, a_drag_ends_when_its_window_is_deleted)
{
    expect_that_it_ends([&] { window.reset(); });
}

TEST_F(TOLV_DRAG_TRACKER_TEST, a_callback_may_delete_the_widget)
{
    RECORDING_CALLBACK callback;
    callback.adjust = [&](const QPoint& point)
    {
        delete widget;
        widget = nullptr;
        return point;
    };
    TRACKED_WIDGET* const tracked = widget;
    widget->on_press = [&](const QPoint& point) { TOLV_DRAG_TRACKER::track(tracked, point, &callback, 0.0); };
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(tracked, QPoint(20, 30)); })
        .then([&] { GUI_DRIVER::move_to(window.get(), QPoint(120, 80)); });
    EXPECT_TRUE(script.run());
    EXPECT_TRUE(callback.is_cancelled());
}

// ---- Scrolling by itself --------------------------------------------------------------------------------------------

namespace
{
/// The widget, 1000 by 800 pixels, in a scroll area that shows 200 by 150 of them.
class TOLV_DRAG_TRACKER_SCROLL_TEST : public TOLV_DRAG_TRACKER_TEST
{
protected:
    void SetUp() override
    {
        TOLV_DRAG_TRACKER_TEST::SetUp();
        area = new QScrollArea(window.get());
        area->setFrameShape(QFrame::NoFrame);
        area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        area->setGeometry(20, 30, 200, 150);
        widget->setFixedSize(1000, 800);
        area->setWidget(widget);
        area->show();
        track_free(0.0, area);
    }

    int get_column() const
    {
        return area->horizontalScrollBar()->value();
    }
    int get_row() const
    {
        return area->verticalScrollBar()->value();
    }

    QScrollArea* area = nullptr;
};
} // namespace

TEST_F(TOLV_DRAG_TRACKER_SCROLL_TEST, a_pointer_near_the_edge_scrolls_the_content)
{
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(widget, QPoint(20, 30)); })
        .then([&] { GUI_DRIVER::move_to(area, QPoint(195, 70)); })
        .wait_until([&] { return get_column() != 0; })
        .then(
            [&]
            {
                EXPECT_EQ(45, get_column()); // 195 + 50 - 200
                EXPECT_EQ(0, get_row());
                EXPECT_EQ(get_rect(20, 30, 195, 70), get_rubber_band()->geometry()); // follows at the next move
                GUI_DRIVER::move_to(area, QPoint(190, 70));
                EXPECT_EQ(get_rect(20, 30, 235, 70), get_rubber_band()->geometry());
            })
        .wait_until([&] { return get_column() > 45; })
        .then([&] { EXPECT_EQ(85, get_column()); }) // 235 + 50 - 200
        .then([&] { GUI_DRIVER::release(area, QPoint(190, 70)); });
    EXPECT_TRUE(script.run());
    EXPECT_EQ(get_rect(20, 30, 235, 70), result); // no move behind the last scrolling
}

TEST_F(TOLV_DRAG_TRACKER_SCROLL_TEST, a_pointer_beyond_the_edge_scrolls_back_to_the_beginning)
{
    area->horizontalScrollBar()->setValue(100);
    area->verticalScrollBar()->setValue(60);
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(widget, QPoint(250, 170)); })
        .then([&] { GUI_DRIVER::move_to(area, QPoint(-10, 145)); })
        .wait_until([&] { return get_column() != 100; })
        .then(
            [&]
            {
                EXPECT_EQ(40, get_column()); // 100 - 10 - 50
                EXPECT_EQ(105, get_row());   // 60 + 145 + 50 - 150
                GUI_DRIVER::move_to(area, QPoint(-60, 75));
            })
        .wait_until([&] { return get_column() == 0; })
        .then([&] { GUI_DRIVER::release(area, QPoint(100, 75)); });
    EXPECT_TRUE(script.run());
}

TEST_F(TOLV_DRAG_TRACKER_SCROLL_TEST, a_drag_with_a_scroll_area_has_a_timer_of_300_milliseconds)
{
    const TOLV_RECT_DRAG_TRACKER_CALLBACK callback(widget, QPoint(5, 5), area);
    const auto timers = callback.findChildren<QTimer*>();
    ASSERT_EQ(1, timers.size());
    EXPECT_TRUE(timers.constFirst()->isActive());
    EXPECT_EQ(300, timers.constFirst()->interval());
    const TOLV_RECT_DRAG_TRACKER_CALLBACK handle(widget, QPoint(5, 5), QPoint(1, 1), QPoint(1, 1), area);
    EXPECT_EQ(1, handle.findChildren<QTimer*>().size());
}

TEST_F(TOLV_DRAG_TRACKER_SCROLL_TEST, without_a_scroll_area_nothing_scrolls)
{
    const TOLV_RECT_DRAG_TRACKER_CALLBACK callback(widget, QPoint(5, 5), nullptr);
    EXPECT_EQ(0, callback.findChildren<QTimer*>().size());
    track_free(0.0);
    QTimer clock;
    clock.setSingleShot(true);
    clock.setInterval(700);
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(widget, QPoint(20, 30)); })
        .then([&] { GUI_DRIVER::move_to(area, QPoint(195, 145)); })
        .then([&] { clock.start(); })
        .wait_until([&] { return !clock.isActive(); }) // two periods of the timer that there is not
        .then([&] { EXPECT_EQ(QPoint(0, 0), QPoint(get_column(), get_row())); })
        .then([&] { GUI_DRIVER::release(area, QPoint(195, 145)); });
    EXPECT_TRUE(script.run());
}

TEST_F(TOLV_DRAG_TRACKER_SCROLL_TEST, a_drag_ends_when_its_scroll_area_is_deleted)
{
    expect_that_it_ends([&] { delete area; });
}

// ---- Mistakes of the caller -----------------------------------------------------------------------------------------

TEST_F(TOLV_DRAG_TRACKER_TEST, a_drag_without_a_widget_or_callback_is_an_internal_error)
{
    RECORDING_CALLBACK callback;
    EXPECT_INTERNAL_ERROR(TOLV_DRAG_TRACKER::track(nullptr, QPoint(), &callback, 0.0), "m_widget != NULL");
    EXPECT_INTERNAL_ERROR(TOLV_DRAG_TRACKER::track(widget, QPoint(), nullptr, 0.0), "m_callback != NULL");
    QMouseEvent event(QEvent::MouseMove, QPointF(1, 1), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    EXPECT_INTERNAL_ERROR(EXPOSED_TRACKER(nullptr, QPoint(), &callback, 0.0).mouseMoveEvent(&event),
                          "m_widget != NULL");
    EXPECT_INTERNAL_ERROR(EXPOSED_TRACKER(widget, QPoint(), nullptr, 0.0).mouseMoveEvent(&event), "m_callback != NULL");
}
