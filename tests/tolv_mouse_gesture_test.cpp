#include "internal_error_trap.h"
#include "paint_counter.h"
#include "picture.h"
#include "tolv_mouse_gesture_widget.h"
#include "tolv_zoom_overlay_fixture.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QWindow>

namespace
{
class TOLV_MOUSE_GESTURE_TEST : public TOLV_ZOOM_OVERLAY_TEST
{
protected:
    void SetUp() override
    {
        TOLV_ZOOM_OVERLAY_TEST::SetUp();
        begin_gesture();
    }

    void begin_gesture()
    {
        view->on_press = [this](QMouseEvent* event)
        { TOLV_MOUSE_GESTURE_WIDGET::show_mouse_gesture(area.get(), view, event->pos()); };
    }
    void begin_selection()
    {
        view->on_press = [this](QMouseEvent* event)
        { TOLV_SELECTION_MODE_MOUSE_GESTURE_WIDGET::show_mouse_gesture(area.get(), view, event->pos()); };
    }

    /// Makes a stroke with the left button; a step runs in front of the release. Returns the commands that came of it.
    QStringList stroke(
        const QPoint& from, const QPoint& to, const std::function<void()>& step = [] {})
    {
        area->commands.clear();
        view->commands.clear();
        run_to_the_end({from, to}, Qt::LeftButton,
                       [&]
                       {
                           step();
                           GUI_DRIVER::release(view, to);
                       });
        EXPECT_FALSE(view->is_busy);
        EXPECT_EQ(nullptr, get_gesture());
        return area->commands + view->commands;
    }

    /// The text that the label shows during a stroke.
    QString get_text(const QPoint& from, const QPoint& to)
    {
        QString text;
        stroke(from, to, [&] { text = get_label()->isVisible() ? get_label()->text() : QStringLiteral("hidden"); });
        return text;
    }

    /// Begins a stroke to the north-west and breaks it by a step, after which the button is released.
    QStringList break_stroke(const std::function<void()>& step)
    {
        area->commands.clear();
        view->commands.clear();
        INPUT_SCRIPT script;
        script.then([&] { GUI_DRIVER::press(view, QPoint(300, 300)); })
            .then([&] { GUI_DRIVER::move_to(view, QPoint(200, 200)); })
            .then(step)
            .then([&] { EXPECT_FALSE(view->is_busy); });
        EXPECT_TRUE(script.run());
        EXPECT_EQ(nullptr, get_gesture());
        let_go();
        return area->commands + view->commands;
    }

    TOLV_MOUSE_GESTURE_WIDGET* get_gesture() const
    {
        return view->findChild<TOLV_MOUSE_GESTURE_WIDGET*>();
    }
    QLabel* get_label() const
    {
        return get_gesture()->findChild<QLabel*>();
    }
};

QStringList one(const char* text)
{
    return {QString::fromLatin1(text)};
}
} // namespace

// ---- Directions -----------------------------------------------------------------------------------------------------

TEST_F(TOLV_MOUSE_GESTURE_TEST, the_directions_have_fixed_values)
{
    EXPECT_EQ(-1, GESTURE_NONE);
    EXPECT_EQ(0, GESTURE_NORTHEAST);
    EXPECT_EQ(1, GESTURE_SOUTHEAST);
    EXPECT_EQ(2, GESTURE_SOUTHWEST);
    EXPECT_EQ(3, GESTURE_NORTHWEST);
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, right_and_up_zooms_out_by_a_fifth_of_a_percent_for_each_pixel_of_height)
{
    EXPECT_EQ(one("out 1.25"), stroke(QPoint(100, 300), QPoint(160, 200))); // 100 - 100 / 5 = 80
    EXPECT_EQ(one("out 1.25"), stroke(QPoint(100, 300), QPoint(400, 200))); // the width does not count
    EXPECT_EQ(one("out 2"), stroke(QPoint(100, 350), QPoint(160, 100)));
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, left_and_up_zooms_in_by_a_fifth_of_a_percent_for_each_pixel_of_height)
{
    EXPECT_EQ(one("in 1.1"), stroke(QPoint(300, 300), QPoint(200, 250)));
    EXPECT_EQ(one("in 1.5"), stroke(QPoint(300, 300), QPoint(299, 50)));
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, left_and_down_zooms_to_fit)
{
    EXPECT_EQ(one("fit"), stroke(QPoint(300, 100), QPoint(200, 150)));
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, right_and_down_zooms_to_the_rectangle)
{
    EXPECT_EQ(one("rect 100 110 101 51"), stroke(QPoint(100, 110), QPoint(200, 160)));
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, the_rectangle_is_cut_off_at_the_edge_of_the_view)
{
    EXPECT_EQ(one("rect 450 110 50 290"), stroke(QPoint(450, 110), QPoint(600, 900)));
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, a_rectangle_outside_of_the_view_is_no_command)
{
    EXPECT_EQ(QStringList(), stroke(QPoint(400, 110), QPoint(450, 160),
                                    [&]
                                    {
                                        area->setWidgetResizable(false);
                                        view->set_logical_size(QRect(0, 0, 300, 100));
                                        view->resize(300, 100);
                                    }));
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, a_level_stroke_counts_as_south)
{
    EXPECT_EQ(one("fit"), stroke(QPoint(300, 100), QPoint(250, 100)));
    EXPECT_EQ(one("rect 300 100 51 1"), stroke(QPoint(300, 100), QPoint(350, 100)));
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, an_upright_stroke_counts_as_east)
{
    EXPECT_EQ(one("out 1.25"), stroke(QPoint(300, 200), QPoint(300, 100)));
    EXPECT_EQ(one("rect 300 200 1 51"), stroke(QPoint(300, 200), QPoint(300, 250)));
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, zooming_out_stops_at_half_a_percent)
{
    EXPECT_EQ(one("out 200"), stroke(QPoint(100, 390), QPoint(120, -210))); // 600 pixels would be -20 percent
    EXPECT_EQ(QStringLiteral("zoom out 0.5%"), get_text(QPoint(100, 390), QPoint(120, -210)));
    EXPECT_EQ(QStringLiteral("zoom out 0.599998%"), get_text(QPoint(100, 390), QPoint(120, -107))); // float, 497 pixels
    EXPECT_EQ(QStringLiteral("zoom out 0.5%"), get_text(QPoint(100, 390), QPoint(120, -108)));      // 0.4
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, the_last_direction_counts)
{
    EXPECT_EQ(one("fit"), stroke(QPoint(300, 200), QPoint(400, 100),
                                 [&]
                                 {
                                     GUI_DRIVER::move_to(view, QPoint(200, 100));
                                     GUI_DRIVER::move_to(view, QPoint(200, 300));
                                     send_release(QPoint(200, 300));
                                 }));
}

// ---- Clicks ---------------------------------------------------------------------------------------------------------

TEST_F(TOLV_MOUSE_GESTURE_TEST, a_stroke_of_nine_pixels_is_a_click_whatever_its_direction)
{
    begin_selection();
    for (const QPoint& way : {QPoint(9, 9), QPoint(9, -9), QPoint(-9, 9), QPoint(-9, -9), QPoint(9, 0), QPoint(0, 1)})
        EXPECT_EQ(one("click 1"), stroke(QPoint(200, 200), QPoint(200, 200) + way)) << way.x() << " " << way.y();
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, a_stroke_of_ten_pixels_in_one_direction_is_a_stroke)
{
    begin_selection();
    EXPECT_EQ(one("select 200 200 11 1 to 210 200"), stroke(QPoint(200, 200), QPoint(210, 200)));
    EXPECT_EQ(one("select 200 200 1 11 to 200 210"), stroke(QPoint(200, 200), QPoint(200, 210)));
    EXPECT_EQ(one("fit"), stroke(QPoint(200, 200), QPoint(190, 200)));
    EXPECT_EQ(one("in 1.02"), stroke(QPoint(200, 200), QPoint(191, 190)));
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, a_release_without_a_move_is_a_click)
{
    begin_selection();
    EXPECT_EQ(one("click 1"), stroke(QPoint(200, 200), QPoint(200, 200)));
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, a_click_in_zoom_mode_zooms_in_by_one_step_at_the_press)
{
    view->on_press = nullptr;
    area->set_view(view, false);
    area->get_action(TOLV_ZOOM_TOOL_ACTION)->setChecked(true);
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(view, QPoint(200, 150)); })
        .then([&] { EXPECT_NE(nullptr, get_gesture()); })
        .then([&] { GUI_DRIVER::release(view, QPoint(205, 155)); });
    EXPECT_TRUE(script.run());
    EXPECT_EQ(one("in 1.25 at a point"), area->commands);
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, a_click_may_come_with_a_modifier)
{
    begin_selection();
    run_to_the_end({QPoint(200, 200)}, Qt::LeftButton,
                   [&] { send_release(QPoint(200, 200), Qt::LeftButton, Qt::ShiftModifier); });
    EXPECT_EQ(one("click 1"), view->commands);
}

// ---- Selection mode -------------------------------------------------------------------------------------------------

TEST_F(TOLV_MOUSE_GESTURE_TEST, in_selection_mode_right_and_down_selects)
{
    begin_selection();
    EXPECT_EQ(one("select 100 110 101 51 to 200 160"), stroke(QPoint(100, 110), QPoint(200, 160)));
    EXPECT_EQ(one("select 450 110 50 290 to 600 900"), stroke(QPoint(450, 110), QPoint(600, 900)));
    EXPECT_EQ(QStringLiteral("select"), get_text(QPoint(100, 110), QPoint(200, 160)));
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, where_selection_is_disabled_right_and_down_zooms_in_selection_mode_too)
{
    begin_selection();
    view->allows_selection = false;
    EXPECT_EQ(one("rect 100 110 101 51"), stroke(QPoint(100, 110), QPoint(200, 160)));
    EXPECT_EQ(QStringLiteral("zoom in"), get_text(QPoint(100, 110), QPoint(200, 160)));
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, in_selection_mode_the_other_directions_zoom)
{
    begin_selection();
    EXPECT_EQ(one("out 1.25"), stroke(QPoint(100, 300), QPoint(160, 200)));
    EXPECT_EQ(one("fit"), stroke(QPoint(300, 100), QPoint(200, 150)));
    EXPECT_EQ(one("in 1.1"), stroke(QPoint(300, 300), QPoint(200, 250)));
}

// ---- Strokes that are broken ----------------------------------------------------------------------------------------

TEST_F(TOLV_MOUSE_GESTURE_TEST, a_modifier_breaks_the_stroke)
{
    for (const Qt::KeyboardModifier modifier : {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier})
        EXPECT_EQ(QStringList(), break_stroke([&] { GUI_DRIVER::move_to(view, QPoint(150, 150), modifier); }))
            << int(modifier);
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, a_modifier_at_the_release_breaks_the_stroke)
{
    EXPECT_EQ(QStringList(), break_stroke([&] { send_release(QPoint(200, 200), Qt::LeftButton, Qt::ShiftModifier); }));
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, a_second_button_breaks_the_stroke_and_begins_nothing)
{
    begin_selection();
    EXPECT_EQ(QStringList(), break_stroke(
                                 [&]
                                 {
                                     view->seen.clear();
                                     QMouseEvent event(QEvent::MouseButtonPress, QPointF(200, 200), Qt::RightButton,
                                                       Qt::LeftButton | Qt::RightButton, Qt::NoModifier);
                                     QApplication::sendEvent(view, &event);
                                     EXPECT_FALSE(view->seen.contains(QEvent::MouseButtonPress));
                                 }));
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, a_move_with_two_buttons_breaks_the_stroke)
{
    EXPECT_EQ(QStringList(), break_stroke(
                                 [&]
                                 {
                                     QMouseEvent event(QEvent::MouseMove, QPointF(150, 150), Qt::NoButton,
                                                       Qt::LeftButton | Qt::RightButton, Qt::NoModifier);
                                     QApplication::sendEvent(view, &event);
                                 }));
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, a_move_with_no_button_ends_a_stroke_whose_release_was_lost)
{
    EXPECT_EQ(QStringList(), break_stroke(
                                 [&]
                                 {
                                     QMouseEvent event(QEvent::MouseMove, QPointF(150, 150), Qt::NoButton, Qt::NoButton,
                                                       Qt::NoModifier);
                                     QApplication::sendEvent(get_gesture(), &event); // it lies under the pointer
                                 }));
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, a_stroke_ends_without_a_command_when_its_view_goes_away)
{
    for_each_way_of_going([&] { begin_selection(); },
                          [&](const char* /*way*/)
                          {
                              if (area != nullptr)
                              {
                                  EXPECT_EQ(QStringList(), area->commands);
                              }
                          },
                          {QPoint(300, 300), QPoint(200, 200)}, Qt::LeftButton);
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, the_stroke_is_out_of_sight_before_its_command_runs)
{
    int count = 0;
    area->on_command = [&]
    {
        ++count;
        EXPECT_FALSE(get_gesture()->isVisible());
        EXPECT_TRUE(get_label()->isHidden());
        EXPECT_FALSE(get_gesture()->hasMouseTracking());
    };
    stroke(QPoint(300, 300), QPoint(200, 200));
    stroke(QPoint(300, 300), QPoint(400, 200));
    EXPECT_EQ(2, count);
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, a_command_may_delete_the_view)
{
    area->on_command = [&] { delete view; };
    run_to_the_end({QPoint(300, 300), QPoint(200, 200)}, Qt::LeftButton, [&] { send_release(QPoint(200, 200)); });
    EXPECT_EQ(one("in 1.2"), area->commands);
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, other_events_reach_the_view_during_a_stroke)
{
    stroke(QPoint(300, 300), QPoint(200, 200),
           [&]
           {
               view->seen.clear();
               QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
               QApplication::sendEvent(view, &key);
               EXPECT_TRUE(view->seen.contains(QEvent::KeyPress));
               EXPECT_FALSE(view->seen.contains(QEvent::MouseMove));
           });
    EXPECT_FALSE(view->seen.contains(QEvent::MouseButtonRelease));
    GUI_DRIVER::hover(view, QPoint(10, 10));
    view->on_press = nullptr;
    GUI_DRIVER::click(view, QPoint(20, 20));
    EXPECT_TRUE(view->seen.contains(QEvent::MouseButtonRelease)); // the filter is gone
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, null_arguments_are_internal_errors)
{
    const QPoint point(5, 5);
    EXPECT_INTERNAL_ERROR(TOLV_MOUSE_GESTURE_WIDGET::show_mouse_gesture(area.get(), nullptr, point), "view != nullptr");
    EXPECT_INTERNAL_ERROR(TOLV_MOUSE_GESTURE_WIDGET::show_mouse_gesture(nullptr, view, point),
                          "scroll_area != nullptr");
    EXPECT_INTERNAL_ERROR(TOLV_SELECTION_MODE_MOUSE_GESTURE_WIDGET::show_mouse_gesture(area.get(), nullptr, point),
                          "view != nullptr");
    EXPECT_INTERNAL_ERROR(TOLV_SELECTION_MODE_MOUSE_GESTURE_WIDGET::show_mouse_gesture(nullptr, view, point),
                          "scroll_area != nullptr");
    EXPECT_INTERNAL_ERROR(TOLV_MOUSE_GESTURE_WIDGET(area.get(), nullptr, point), "m_view != nullptr");
    EXPECT_INTERNAL_ERROR(TOLV_MOUSE_GESTURE_WIDGET(nullptr, view, point), "m_scroll_area != nullptr");
}

// ---- What is seen ---------------------------------------------------------------------------------------------------

TEST_F(TOLV_MOUSE_GESTURE_TEST, nothing_is_seen_before_the_first_move)
{
    run_to_the_end({QPoint(200, 200)}, Qt::LeftButton,
                   [&]
                   {
                       EXPECT_FALSE(get_gesture()->isVisible());
                       EXPECT_EQ(view->rect(), get_gesture()->geometry());
                       EXPECT_TRUE(get_gesture()->hasMouseTracking());
                       EXPECT_EQ(QStringLiteral("Gesture Label"), get_label()->text());
                       EXPECT_TRUE(get_label()->isHidden());
                       EXPECT_EQ(QPalette::Highlight, get_label()->foregroundRole());
                       EXPECT_EQ(Qt::AlignLeft, get_label()->alignment());
                       EXPECT_EQ(QStringLiteral("background-color: rgba(255, 255, 255, 200);"),
                                 get_label()->styleSheet());
                       GUI_DRIVER::move_to(view, QPoint(201, 200));
                       EXPECT_TRUE(get_gesture()->isVisible());
                       GUI_DRIVER::release(view, QPoint(201, 200));
                   });
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, the_label_tells_the_command)
{
    EXPECT_EQ(QStringLiteral("zoom out 80%"), get_text(QPoint(100, 300), QPoint(160, 200)));
    EXPECT_EQ(QStringLiteral("zoom out 99.8%"), get_text(QPoint(100, 300), QPoint(160, 299)));
    EXPECT_EQ(QStringLiteral("zoom in"), get_text(QPoint(100, 110), QPoint(200, 160)));
    EXPECT_EQ(QStringLiteral("zoom fit"), get_text(QPoint(300, 100), QPoint(200, 150)));
    EXPECT_EQ(QStringLiteral("zoom in 110%"), get_text(QPoint(300, 300), QPoint(200, 250)));
    EXPECT_EQ(QStringLiteral("zoom in 124.6%"), get_text(QPoint(300, 300), QPoint(200, 177)));
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, the_label_stands_on_the_side_of_the_direction)
{
    const auto check = [&](const QPoint& to, bool is_right)
    {
        stroke(QPoint(250, 200), to,
               [&]
               {
                   const QFontMetrics metrics(get_label()->font());
                   const int character = metrics.averageCharWidth();
                   const int width = metrics.boundingRect(get_label()->text()).width() + character;
                   EXPECT_EQ(width, get_label()->width());
                   EXPECT_EQ(QPoint(is_right ? to.x() + character : to.x() - width, to.y() - 32), get_label()->pos());
               });
    };
    check(QPoint(300, 100), true);
    check(QPoint(300, 250), true);
    check(QPoint(200, 250), false);
    check(QPoint(200, 100), false);
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, the_rectangle_is_drawn_in_the_colour_of_highlights)
{
    const QColor color = QApplication::palette().color(QPalette::Highlight);
    const QColor fill = color.lighter(150);
    const QColor on_white((255 + fill.red()) / 2, (255 + fill.green()) / 2, (255 + fill.blue()) / 2);
    for (const int ratio : {1, 2})
    {
        SCOPED_TRACE(ratio);
        QImage picture;
        stroke(QPoint(100, 110), QPoint(200, 160),
               [&]
               {
                   get_label()->hide();
                   picture = render_widget(view, ratio);
               });
        // The outline runs from 100 to 201 and from 110 to 161, a pixel to both sides of it.
        EXPECT_EQ(QRect(99 * ratio, 109 * ratio, 103 * ratio, 53 * ratio), find_color_rect(picture, color));
        EXPECT_TRUE(is_same_color(on_white, picture.pixelColor(150 * ratio, 135 * ratio), 2));
        EXPECT_EQ(QColor(Qt::white), picture.pixelColor(210 * ratio, 135 * ratio));
    }
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, the_other_directions_are_drawn_as_a_line)
{
    const QColor color = QApplication::palette().color(QPalette::Highlight);
    for (const QPoint& to : {QPoint(350, 100), QPoint(150, 300), QPoint(150, 100)})
    {
        QImage picture;
        stroke(QPoint(250, 200), to,
               [&]
               {
                   get_label()->hide();
                   picture = render_widget(view);
               });
        EXPECT_EQ(color, picture.pixelColor((to + QPoint(250, 200)) / 2));
        EXPECT_EQ(QColor(Qt::white), picture.pixelColor(to.x(), 200));
        EXPECT_EQ(QColor(Qt::white), picture.pixelColor(250, to.y()));
    }
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, a_stroke_from_the_corner_of_the_view_is_not_drawn)
{
    const QColor color = QApplication::palette().color(QPalette::Highlight);
    QImage picture;
    const QStringList commands = stroke(QPoint(0, 0), QPoint(100, 60),
                                        [&]
                                        {
                                            get_label()->hide();
                                            picture = render_widget(view);
                                        });
    EXPECT_EQ(one("rect 0 0 101 61"), commands);
    EXPECT_EQ(0, count_pixels(picture, color));
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, the_stroke_on_the_screen_follows_each_move)
{
    const QColor color = QApplication::palette().color(QPalette::Highlight);
    stroke(QPoint(100, 110), QPoint(450, 350),
           [&]
           {
               get_label()->hide();
               GUI_DRIVER::move_to(view, QPoint(150, 140));
               get_label()->hide();
               GUI_DRIVER::process_posted();
               const QImage screen = area->windowHandle()->screen()->grabWindow(area->winId()).toImage();
               const QPoint origin = view->mapTo(area.get(), QPoint(0, 0));
               const QImage picture = screen.copy(QRect(origin, view->size()));
               EXPECT_EQ(QRect(99, 109, 53, 33), find_color_rect(picture, color));
           });
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, each_move_has_the_surroundings_painted_a_hundred_pixels_around_the_stroke)
{
    stroke(QPoint(250, 200), QPoint(260, 220),
           [&]
           {
               GUI_DRIVER::process_posted();
               const PAINT_COUNTER watch(get_gesture());
               GUI_DRIVER::move_to(view, QPoint(240, 230));
               GUI_DRIVER::process_posted();
               // The stroke of before, from column 250 to 260, and the new one, from 240 to 250 and to row 230.
               EXPECT_EQ(QRect(QPoint(140, 100), QPoint(360, 330)), watch.m_painted.boundingRect());
           });
}

TEST_F(TOLV_MOUSE_GESTURE_TEST, a_stroke_that_rests_is_not_painted_again_and_again)
{
    for (const QPoint& from : {QPoint(100, 110), QPoint(0, 0)})
        stroke(from, QPoint(200, 160),
               [&]
               {
                   for (int i = 0; i < 5; ++i)
                       GUI_DRIVER::process_posted();
                   const int before = view->paint_count;
                   for (int i = 0; i < 20; ++i)
                       GUI_DRIVER::process_posted();
                   EXPECT_EQ(before, view->paint_count);
               });
}
