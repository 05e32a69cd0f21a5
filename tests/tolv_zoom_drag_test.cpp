#include "internal_error_trap.h"
#include "picture.h"
#include "tolv_font.h"
#include "tolv_zoom_drag.h"
#include "tolv_zoom_overlay_fixture.h"

#include <QApplication>
#include <QLabel>

namespace
{
class TOLV_ZOOM_DRAG_TEST : public TOLV_ZOOM_OVERLAY_TEST
{
protected:
    void SetUp() override
    {
        TOLV_ZOOM_OVERLAY_TEST::SetUp();
        begin_drag();
    }
    void TearDown() override
    {
        TOLV_ZOOM_DRAG_WIDGET::m_use_zoom_drag = false;
        TOLV_ZOOM_OVERLAY_TEST::TearDown();
    }

    void begin_drag()
    {
        view->on_press = [this](QMouseEvent* event)
        { TOLV_ZOOM_DRAG_WIDGET::start_zoom_drag(area.get(), view, event->pos()); };
    }

    /// Drags with the right button; a step runs in front of the release. Returns the commands that came of it.
    QStringList drag(
        const QPoint& from, const QPoint& to, const std::function<void()>& step = [] {})
    {
        area->commands.clear();
        run_to_the_end({from, to}, Qt::RightButton,
                       [&]
                       {
                           step();
                           GUI_DRIVER::release(view, to, Qt::RightButton);
                       });
        EXPECT_FALSE(view->is_busy);
        EXPECT_EQ(nullptr, get_drag());
        return area->commands;
    }

    TOLV_ZOOM_DRAG_WIDGET* get_drag() const
    {
        return view->findChild<TOLV_ZOOM_DRAG_WIDGET*>();
    }
    QLabel* get_label() const
    {
        return get_drag()->findChild<QLabel*>();
    }
    void send_move(const QPoint& position, Qt::MouseButtons buttons)
    {
        QMouseEvent event(QEvent::MouseMove, position, view->mapToGlobal(position), Qt::NoButton, buttons,
                          Qt::NoModifier);
        QApplication::sendEvent(view, &event);
    }
};

QStringList one(const char* text)
{
    return {QString::fromLatin1(text)};
}

constexpr QPoint START(300, 200);
} // namespace

// ---- Commands -------------------------------------------------------------------------------------------------------

TEST_F(TOLV_ZOOM_DRAG_TEST, a_drag_up_zooms_in_by_a_fifth_of_a_percent_for_each_pixel)
{
    EXPECT_EQ(one("in 1.1"), drag(START, QPoint(300, 150)));
    EXPECT_EQ(one("in 1.4"), drag(START, QPoint(450, 0))); // the width does not count
    EXPECT_EQ(one("in 1.002"), drag(START, QPoint(300, 199)));
}

TEST_F(TOLV_ZOOM_DRAG_TEST, a_drag_down_zooms_out_by_a_fifth_of_a_percent_for_each_pixel)
{
    EXPECT_EQ(one("out 1.25"), drag(START, QPoint(300, 300)));
    EXPECT_EQ(one("out 2"), drag(QPoint(300, 100), QPoint(100, 350)));
}

TEST_F(TOLV_ZOOM_DRAG_TEST, a_level_drag_zooms_by_nothing)
{
    EXPECT_EQ(one("in 1"), drag(START, QPoint(400, 200)));
    EXPECT_TRUE(TOLV_ZOOM_DRAG_WIDGET::m_use_zoom_drag);
}

TEST_F(TOLV_ZOOM_DRAG_TEST, zooming_out_stops_at_half_a_percent)
{
    EXPECT_EQ(one("out 200"), drag(QPoint(300, 10), QPoint(300, 610)));
    QString text;
    drag(QPoint(300, 10), QPoint(300, 507), [&] { text = get_label()->text(); }); // 497 pixels
    EXPECT_EQ(QStringLiteral("0.6%"), text);
    drag(QPoint(300, 10), QPoint(300, 508), [&] { text = get_label()->text(); });
    EXPECT_EQ(QStringLiteral("0.5%"), text);
}

TEST_F(TOLV_ZOOM_DRAG_TEST, what_was_painted_last_is_what_the_release_applies)
{
    run_to_the_end({START, QPoint(300, 150)}, Qt::RightButton,
                   [&]
                   {
                       send_move(QPoint(300, 350), Qt::RightButton); // is not painted
                       send_release(QPoint(300, 350), Qt::RightButton);
                   });
    EXPECT_EQ(one("in 1.1"), area->commands);
}

TEST_F(TOLV_ZOOM_DRAG_TEST, a_drag_that_has_moved_has_done_all)
{
    drag(START, QPoint(300, 150));
    EXPECT_TRUE(TOLV_ZOOM_DRAG_WIDGET::m_use_zoom_drag);
    EXPECT_FALSE(view->seen.contains(QEvent::MouseMove));
    EXPECT_FALSE(view->seen.contains(QEvent::MouseButtonRelease));
}

TEST_F(TOLV_ZOOM_DRAG_TEST, a_drag_without_a_move_has_done_nothing_and_its_release_reaches_the_view)
{
    TOLV_ZOOM_DRAG_WIDGET::m_use_zoom_drag = true;
    run_to_the_end({START}, Qt::RightButton,
                   [&]
                   {
                       EXPECT_FALSE(TOLV_ZOOM_DRAG_WIDGET::m_use_zoom_drag);
                       GUI_DRIVER::release(view, START, Qt::RightButton);
                   });
    EXPECT_FALSE(TOLV_ZOOM_DRAG_WIDGET::m_use_zoom_drag);
    EXPECT_TRUE(view->seen.contains(QEvent::MouseButtonRelease));
    EXPECT_EQ(QStringList(), area->commands);
    EXPECT_TRUE(has_cursor(TOLV_ZOOM_IN_CURSOR));
}

TEST_F(TOLV_ZOOM_DRAG_TEST, with_another_button_moves_count_for_nothing)
{
    run_to_the_end({START, QPoint(300, 150)}, Qt::LeftButton,
                   [&]
                   {
                       EXPECT_FALSE(get_drag()->isVisible());
                       EXPECT_FALSE(TOLV_ZOOM_DRAG_WIDGET::m_use_zoom_drag);
                       EXPECT_FALSE(view->seen.contains(QEvent::MouseMove)); // swallowed
                       GUI_DRIVER::release(view, QPoint(300, 150));
                   });
    EXPECT_FALSE(TOLV_ZOOM_DRAG_WIDGET::m_use_zoom_drag);
    EXPECT_EQ(QStringList(), area->commands);
}

TEST_F(TOLV_ZOOM_DRAG_TEST, while_two_buttons_are_held_the_drag_rests)
{
    run_to_the_end({START, QPoint(300, 150)}, Qt::RightButton,
                   [&]
                   {
                       view->seen.clear();
                       GUI_DRIVER::press(view, QPoint(300, 150), Qt::LeftButton);
                       EXPECT_FALSE(view->seen.contains(QEvent::MouseButtonPress)); // begins nothing
                       GUI_DRIVER::move_to(view, QPoint(300, 350));
                       EXPECT_EQ(QStringLiteral("110%"), get_label()->text());
                       GUI_DRIVER::release(view, QPoint(300, 350), Qt::LeftButton);
                   });
    EXPECT_EQ(one("in 1.1"), area->commands);
}

TEST_F(TOLV_ZOOM_DRAG_TEST, other_events_reach_the_view_during_a_drag)
{
    drag(START, QPoint(300, 150),
         [&]
         {
             view->seen.clear();
             QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
             QApplication::sendEvent(view, &key);
             EXPECT_TRUE(view->seen.contains(QEvent::KeyPress));
         });
}

TEST_F(TOLV_ZOOM_DRAG_TEST, a_drag_ends_without_a_command_when_its_view_goes_away)
{
    for_each_way_of_going([&] { begin_drag(); },
                          [&](const char* /*way*/)
                          {
                              EXPECT_TRUE(TOLV_ZOOM_DRAG_WIDGET::m_use_zoom_drag);
                              if (area != nullptr)
                              {
                                  EXPECT_EQ(QStringList(), area->commands);
                              }
                          },
                          {START, QPoint(300, 150)}, Qt::RightButton);
}

TEST_F(TOLV_ZOOM_DRAG_TEST, a_drag_ends_without_a_command_when_its_view_is_deleted)
{
    for (const bool is_moved : {false, true})
    {
        INPUT_SCRIPT script;
        script
            .then(
                [&]
                {
                    if (is_moved)
                        send_move(QPoint(300, 150), Qt::RightButton);
                })
            .then([&] { delete view; });
        script.start();
        TOLV_ZOOM_DRAG_WIDGET::start_zoom_drag(area.get(), view, START);
        EXPECT_TRUE(script.finish());
        EXPECT_TRUE(TOLV_ZOOM_DRAG_WIDGET::m_use_zoom_drag); // there is nothing left to treat the press in
        EXPECT_EQ(QStringList(), area->commands);
        TearDown();
        SetUp();
    }
}

TEST_F(TOLV_ZOOM_DRAG_TEST, the_drag_stays_to_be_seen_until_the_zoom_is_done)
{
    int count = 0;
    area->on_command = [&]
    {
        ++count;
        EXPECT_TRUE(get_drag()->isVisible());
        EXPECT_TRUE(has_cursor(TOLV_ZOOM_OUT_CURSOR));
    };
    drag(START, QPoint(300, 250));
    EXPECT_EQ(1, count);
    EXPECT_TRUE(has_cursor(TOLV_ZOOM_IN_CURSOR));
}

TEST_F(TOLV_ZOOM_DRAG_TEST, the_zoom_may_delete_the_view)
{
    area->on_command = [&] { delete view; };
    INPUT_SCRIPT script;
    script.then([&] { send_move(QPoint(300, 150), Qt::RightButton); })
        .then([&] { send_release(QPoint(300, 150), Qt::RightButton); });
    script.start();
    TOLV_ZOOM_DRAG_WIDGET::start_zoom_drag(area.get(), view, START);
    EXPECT_TRUE(script.finish());
    EXPECT_EQ(one("in 1.1"), area->commands);
}

TEST_F(TOLV_ZOOM_DRAG_TEST, null_arguments_are_internal_errors)
{
    EXPECT_INTERNAL_ERROR(TOLV_ZOOM_DRAG_WIDGET::start_zoom_drag(area.get(), nullptr, START), "source_view != NULL");
    EXPECT_INTERNAL_ERROR(TOLV_ZOOM_DRAG_WIDGET::start_zoom_drag(nullptr, view, START), "scroll_area != NULL");
    EXPECT_INTERNAL_ERROR(TOLV_ZOOM_DRAG_WIDGET(area.get(), nullptr), "source_view != NULL");
    EXPECT_INTERNAL_ERROR(TOLV_ZOOM_DRAG_WIDGET(nullptr, view), "scroll_area != NULL");
}

// ---- What is seen ---------------------------------------------------------------------------------------------------

TEST_F(TOLV_ZOOM_DRAG_TEST, nothing_is_seen_before_the_first_move)
{
    run_to_the_end({START}, Qt::RightButton,
                   [&]
                   {
                       EXPECT_FALSE(get_drag()->isVisible());
                       EXPECT_EQ(view->rect(), get_drag()->geometry());
                       EXPECT_TRUE(get_drag()->hasMouseTracking());
                       EXPECT_EQ(Qt::StrongFocus, get_drag()->focusPolicy());
                       EXPECT_EQ(QStringLiteral("100%"), get_label()->text());
                       EXPECT_TRUE(get_label()->isHidden());
                       EXPECT_EQ(QPalette::Highlight, get_label()->foregroundRole());
                       EXPECT_EQ(QPalette::Base, get_label()->backgroundRole());
                       EXPECT_EQ(Qt::AlignLeft, get_label()->alignment());
                       EXPECT_EQ(QStringLiteral("background-color: rgba(255, 255, 255, 200);"),
                                 get_label()->styleSheet());
                       GUI_DRIVER::release(view, START, Qt::RightButton);
                   });
}

TEST_F(TOLV_ZOOM_DRAG_TEST, the_label_tells_the_percentage_beside_the_press)
{
    const auto check = [&](const QPoint& to, const char* text, const QPoint& place)
    {
        drag(START, to,
             [&]
             {
                 const QFontMetrics metrics(*TOLV_FONT(TOLV_RUI_ZOOM_DRAG_FONT).get_font());
                 EXPECT_TRUE(get_label()->isVisible());
                 EXPECT_EQ(QString::fromLatin1(text), get_label()->text());
                 EXPECT_EQ(place, get_label()->pos());
                 EXPECT_EQ(metrics.boundingRect(get_label()->text()).width() + metrics.averageCharWidth(),
                           get_label()->width());
             });
    };
    check(QPoint(300, 150), "110%", QPoint(260, 200));
    check(QPoint(320, 77), "124.6%", QPoint(260, 200));
    check(QPoint(320, 200), "100%", QPoint(260, 200));
    check(QPoint(300, 201), "99.8%", QPoint(260, 160));
    check(QPoint(250, 300), "80%", QPoint(260, 160));
}

TEST_F(TOLV_ZOOM_DRAG_TEST, the_label_follows_the_drag)
{
    drag(START, QPoint(300, 150),
         [&]
         {
             GUI_DRIVER::move_to(view, QPoint(300, 250));
             EXPECT_EQ(QStringLiteral("90%"), get_label()->text());
             EXPECT_EQ(QPoint(260, 160), get_label()->pos());
             GUI_DRIVER::move_to(view, QPoint(300, 100));
             EXPECT_EQ(QStringLiteral("120%"), get_label()->text());
             EXPECT_EQ(QPoint(260, 200), get_label()->pos());
         });
    EXPECT_EQ(one("in 1.1"), drag(START, QPoint(300, 150)));
}

TEST_F(TOLV_ZOOM_DRAG_TEST, the_cursor_tells_the_direction)
{
    drag(START, QPoint(300, 150),
         [&]
         {
             EXPECT_TRUE(has_cursor(TOLV_ZOOM_IN_CURSOR));
             GUI_DRIVER::move_to(view, QPoint(300, 250));
             EXPECT_TRUE(has_cursor(TOLV_ZOOM_OUT_CURSOR));
             GUI_DRIVER::move_to(view, QPoint(300, 200));
             EXPECT_TRUE(has_cursor(TOLV_ZOOM_IN_CURSOR));
             GUI_DRIVER::move_to(view, QPoint(300, 250));
         });
    EXPECT_TRUE(has_cursor(TOLV_ZOOM_IN_CURSOR)); // at the end, whatever the direction
}

TEST_F(TOLV_ZOOM_DRAG_TEST, the_drag_is_drawn_as_a_line)
{
    const QColor color = QApplication::palette().color(QPalette::Highlight);
    for (const int ratio : {1, 2})
    {
        SCOPED_TRACE(ratio);
        QImage picture;
        drag(START, QPoint(300, 120), [&] { picture = render_widget(get_drag(), ratio); });
        const QRect line =
            find_color_rect(picture.copy(0, 0, picture.width(), 190 * ratio), color); // without the label
        EXPECT_EQ(299 * ratio, line.left());                                          // two wide around column 300
        EXPECT_EQ(2 * ratio, line.width());
        EXPECT_NEAR(120 * ratio, line.top(), ratio);
        EXPECT_EQ(190 * ratio - 1, line.bottom());
    }
}

TEST_F(TOLV_ZOOM_DRAG_TEST, a_drag_that_rests_is_not_painted_again_and_again)
{
    drag(START, QPoint(300, 120),
         [&]
         {
             for (int i = 0; i < 5; ++i)
                 GUI_DRIVER::process_posted();
             const int before = view->paint_count;
             for (int i = 0; i < 20; ++i)
                 GUI_DRIVER::process_posted();
             EXPECT_EQ(before, view->paint_count);
             GUI_DRIVER::move_to(view, QPoint(300, 130));
             GUI_DRIVER::process_posted();
             EXPECT_LT(before, view->paint_count); // the view is painted anew with each move
         });
}
