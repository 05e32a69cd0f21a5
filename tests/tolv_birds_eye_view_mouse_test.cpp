#include "input_script.h"
#include "internal_error_trap.h"
#include "picture.h"
#include "tolv_birds_eye_view_fixture.h"

#include <QApplication>
#include <QDialog>
#include <QMouseEvent>
#include <QRubberBand>

namespace
{
class TOLV_BIRDS_EYE_VIEW_MOUSE_TEST : public TOLV_BIRDS_EYE_VIEW_TEST
{
protected:
    void SetUp() override
    {
        TOLV_BIRDS_EYE_VIEW_TEST::SetUp();
        set_bars(Qt::ScrollBarAlwaysOff);
        open();
    }

    /// Draws a rectangle with the right button, corner by corner.
    void draw_rect(const QPoint& from, const QPoint& to, const std::function<void()>& before_release = {})
    {
        INPUT_SCRIPT script;
        script.then([&] { GUI_DRIVER::press(body, from, Qt::RightButton); });
        script.then([&] { GUI_DRIVER::move_to(body, to); });
        script.then(
            [&]
            {
                if (before_release)
                    before_release();
            });
        script.then([&] { GUI_DRIVER::release(body, to, Qt::RightButton); });
        EXPECT_TRUE(script.run());
    }

    /// Releases the right button although its widget may be gone.
    static void let_go()
    {
        QWidget rest;
        rest.setGeometry(40, 40, 100, 100);
        GUI_DRIVER::show(&rest);
        GUI_DRIVER::release(&rest, QPoint(10, 10), Qt::RightButton);
    }

    std::unique_ptr<QDialog> dialog;
};
} // namespace

// ---- Painting -------------------------------------------------------------------------------------------------------

TEST_F(TOLV_BIRDS_EYE_VIEW_MOUSE_TEST, the_drawing_is_stretched_over_the_overview)
{
    view->set_logical_size(QRect(-100, 50, 1000, 333)); // 300 by 99: the scales differ
    GUI_DRIVER::process_posted();
    view->overview_count = 0;
    EXPECT_FALSE(render_widget(body).isNull());
    EXPECT_EQ(1, view->overview_count);
    const float fx = 300.0F / 1000.0F;
    const float fy = 99.0F / 333.0F;
    EXPECT_EQ(QTransform(fx, 0, 0, fy, 30, -14), view->overview_transform); // 50 * 99 / 333 = 14.86, cut off
    EXPECT_TRUE(view->is_antialiased);
    EXPECT_EQ(view, view->overview_widget);
    EXPECT_EQ(QRect(0, 0, 300, 99), view->overview_rect);
}

TEST_F(TOLV_BIRDS_EYE_VIEW_MOUSE_TEST, the_overlay_marks_the_visible_part)
{
    zoom_to(4, QPoint(400, 100)); // 175 by 125 units are visible
    ASSERT_EQ(QPoint(1600, 400), get_scroll_position());
    // 400 * 0.3, 100 * 0.3, and 699 / 4 = 174.75 and 499 / 4 = 124.75 units further.
    EXPECT_EQ(QRect(QPoint(120, 30), QPoint(172, 67)), body->get_focus_rect());

    const QImage picture = render_widget(body);
    QColor highlight = body->palette().color(QPalette::Highlight);
    const auto get_mixed = [&](int below, int above) { return (below * 175 + above * 80) / 255; };
    const QColor over_red(get_mixed(255, highlight.red()), get_mixed(0, highlight.green()),
                          get_mixed(0, highlight.blue()));
    EXPECT_TRUE(is_same_color(over_red, picture.pixelColor(140, 50), 2));
    EXPECT_TRUE(is_same_color(Qt::red, picture.pixelColor(119, 50)));
    EXPECT_TRUE(is_same_color(Qt::green, picture.pixelColor(173, 50)));
    for (const QPoint& corner : {QPoint(120, 30), QPoint(172, 30), QPoint(120, 67), QPoint(172, 67)})
        EXPECT_TRUE(is_same_color(Qt::black, picture.pixelColor(corner))) << corner.x() << ' ' << corner.y();
    EXPECT_TRUE(is_same_color(body->palette().color(QPalette::WindowText), picture.pixelColor(1, 1)))
        << "the frame is two pixels wide";
    EXPECT_TRUE(is_same_color(Qt::red, picture.pixelColor(2, 2)));
}

TEST_F(TOLV_BIRDS_EYE_VIEW_MOUSE_TEST, the_frame_is_drawn_over_the_overlay)
{
    zoom_to(4, QPoint(0, 0));
    ASSERT_EQ(QPoint(0, 0), body->get_focus_rect().topLeft());
    const QImage picture = render_widget(body);
    EXPECT_TRUE(is_same_color(body->palette().color(QPalette::WindowText), picture.pixelColor(1, 1)));
    EXPECT_FALSE(is_same_color(Qt::red, picture.pixelColor(2, 2))) << "behind the frame lies the overlay";
}

TEST_F(TOLV_BIRDS_EYE_VIEW_MOUSE_TEST, the_overlay_has_the_colours_of_a_dark_palette)
{
    QPalette palette = area->palette();
    palette.setColor(QPalette::WindowText, Qt::white);
    palette.setColor(QPalette::Highlight, QColor(40, 130, 220));
    area->setPalette(palette);
    for (const int ratio : {1, 2})
    {
        SCOPED_TRACE(ratio);
        zoom_to(4, QPoint(400, 100));
        const QImage picture = render_widget(body, ratio);
        const auto get_color = [&](int x, int y) { return picture.pixelColor(x * ratio, y * ratio); };
        // 80 parts of 255 of the highlight colour over red.
        EXPECT_TRUE(is_same_color(QColor(187, 41, 69), get_color(140, 50), 2));
        EXPECT_TRUE(is_same_color(Qt::white, get_color(120, 50)));
        EXPECT_TRUE(is_same_color(Qt::white, get_color(172, 50)));
        EXPECT_TRUE(is_same_color(Qt::white, get_color(140, 30)));
        EXPECT_TRUE(is_same_color(Qt::white, get_color(140, 67)));
        EXPECT_TRUE(is_same_color(Qt::white, get_color(1, 75))) << "the frame";
        EXPECT_TRUE(is_same_color(Qt::red, get_color(118, 50)));
        EXPECT_TRUE(is_same_color(Qt::green, get_color(174, 50)));
    }
}

TEST_F(TOLV_BIRDS_EYE_VIEW_MOUSE_TEST, the_smallest_overlay_has_five_pixels)
{
    zoom_to(1000, QPoint(400, 100));
    EXPECT_EQ(QSize(5, 5), body->get_focus_rect().size());
    EXPECT_EQ(QPoint(120, 30), body->get_focus_rect().topLeft());
}

TEST_F(TOLV_BIRDS_EYE_VIEW_MOUSE_TEST, the_overlay_follows_with_every_tool)
{
    for (const TOLV_ACTION_ENUM tool : {TOLV_ACTION_NONE, TOLV_PAN_TOOL_ACTION, TOLV_ZOOM_TOOL_ACTION})
    {
        SCOPED_TRACE(tool);
        if (QAction* const action = area->get_action(tool); action != nullptr)
            action->setChecked(true);
        zoom_to(4, QPoint(400, 100));
        EXPECT_EQ(QPoint(120, 30), body->get_focus_rect().topLeft());
        zoom_to(4, QPoint(200, 200));
        EXPECT_EQ(QPoint(60, 60), body->get_focus_rect().topLeft());
        if (QAction* const action = area->get_action(tool); action != nullptr)
            action->setChecked(false);
    }
}

TEST_F(TOLV_BIRDS_EYE_VIEW_MOUSE_TEST, painting_comes_to_an_end)
{
    zoom_to(4, QPoint(400, 100));
    view->overview_count = 0;
    for (int i = 0; i < 20; ++i)
        GUI_DRIVER::process_posted();
    EXPECT_EQ(0, view->overview_count);
}

// ---- Left button ----------------------------------------------------------------------------------------------------

TEST_F(TOLV_BIRDS_EYE_VIEW_MOUSE_TEST, a_drag_of_the_overlay_scrolls)
{
    zoom_to(4, QPoint(400, 100));
    GUI_DRIVER::press(body, QPoint(140, 50));
    EXPECT_EQ(Qt::ClosedHandCursor, body->cursor().shape());
    EXPECT_EQ(QPoint(1600, 400), get_scroll_position());
    GUI_DRIVER::move_to(body, QPoint(150, 45));
    // The whole drawing has 4000 by 2000 pixels: 10 * 4000 / 300 = 133.3, -5 * 2000 / 150 = -66.7.
    EXPECT_EQ(QPoint(1733, 334), get_scroll_position());
    GUI_DRIVER::move_to(body, QPoint(151, 45));
    EXPECT_EQ(QPoint(1746, 334), get_scroll_position());
    EXPECT_EQ(Qt::ClosedHandCursor, body->cursor().shape());
    GUI_DRIVER::release(body, QPoint(151, 45));
    EXPECT_EQ(Qt::ArrowCursor, body->cursor().shape());
}

TEST_F(TOLV_BIRDS_EYE_VIEW_MOUSE_TEST, a_press_outside_of_the_overlay_scrolls_at_the_first_move)
{
    zoom_to(4, QPoint(400, 100));
    const QPoint centre = body->get_focus_rect().center();
    ASSERT_EQ(QPoint(146, 48), centre);
    GUI_DRIVER::move_to(body, QPoint(20, 120));
    EXPECT_EQ(Qt::OpenHandCursor, body->cursor().shape());
    GUI_DRIVER::press(body, QPoint(20, 120));
    EXPECT_EQ(Qt::OpenHandCursor, body->cursor().shape()) << "it stays as it was";
    EXPECT_EQ(QPoint(1600, 400), get_scroll_position());
    GUI_DRIVER::move_to(body, QPoint(46, 118));
    EXPECT_EQ(QPoint(1600 - 1333, 400 + 933), get_scroll_position());
    EXPECT_EQ(Qt::ClosedHandCursor, body->cursor().shape());
    GUI_DRIVER::release(body, QPoint(46, 118));
}

TEST_F(TOLV_BIRDS_EYE_VIEW_MOUSE_TEST, a_drag_is_reckoned_in_float)
{
    zoom_to(10000, QPoint(0, 0));
    ASSERT_EQ(QRect(0, 0, 5, 5), body->get_focus_rect());
    GUI_DRIVER::press(body, QPoint(2, 2));
    GUI_DRIVER::move_to(body, QPoint(227, 2));
    EXPECT_EQ(QPoint(7499999, 0), get_scroll_position()); // 225 * 10000000 / 300
    GUI_DRIVER::release(body, QPoint(227, 2));
}

TEST_F(TOLV_BIRDS_EYE_VIEW_MOUSE_TEST, the_middle_button_does_nothing)
{
    zoom_to(4, QPoint(400, 100));
    GUI_DRIVER::move_to(body, QPoint(140, 50));
    GUI_DRIVER::press(body, QPoint(140, 50), Qt::MiddleButton);
    EXPECT_EQ(Qt::OpenHandCursor, body->cursor().shape());
    EXPECT_EQ(nullptr, body->findChild<QRubberBand*>());
    GUI_DRIVER::move_to(body, QPoint(160, 60));
    GUI_DRIVER::release(body, QPoint(160, 60), Qt::MiddleButton);
    EXPECT_EQ(QPoint(1600, 400), get_scroll_position());
}

TEST_F(TOLV_BIRDS_EYE_VIEW_MOUSE_TEST, the_second_press_of_a_double_click_begins_a_drag_like_any_other)
{
    zoom_to(4, QPoint(400, 100));
    const QPoint centre = body->get_focus_rect().center();
    QMouseEvent press(QEvent::MouseButtonDblClick, QPointF(20, 120), body->mapToGlobal(QPoint(20, 120)), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(body, &press);
    QMouseEvent move(QEvent::MouseMove, centre + QPoint(3, 0), body->mapToGlobal(centre + QPoint(3, 0)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(body, &move);
    EXPECT_EQ(QPoint(1640, 400), get_scroll_position());
}

TEST_F(TOLV_BIRDS_EYE_VIEW_MOUSE_TEST, a_move_with_other_buttons_only_opens_the_hand)
{
    zoom_to(4, QPoint(400, 100));
    GUI_DRIVER::hover(body, QPoint(140, 50));
    EXPECT_EQ(Qt::OpenHandCursor, body->cursor().shape());
    QMouseEvent both(QEvent::MouseMove, QPointF(10, 10), body->mapToGlobal(QPoint(10, 10)), Qt::NoButton,
                     Qt::LeftButton | Qt::MiddleButton, Qt::NoModifier);
    QApplication::sendEvent(body, &both);
    EXPECT_EQ(Qt::OpenHandCursor, body->cursor().shape());
    EXPECT_EQ(QPoint(1600, 400), get_scroll_position());
}

// ---- Right button ---------------------------------------------------------------------------------------------------

TEST_F(TOLV_BIRDS_EYE_VIEW_MOUSE_TEST, a_rectangle_drawn_with_the_right_button_is_zoomed_to)
{
    view->set_zoom(1);
    draw_rect(QPoint(60, 30), QPoint(120, 60), [&] { EXPECT_EQ(Qt::SizeAllCursor, body->cursor().shape()); });
    // The ratio 2 adds half of the width to the height: 60 by 60 pixels, from 30 to 90 downwards. In units from 199 to
    // 399, and from 99 to 300: 202 of them in 500 + 1 pixels.
    EXPECT_EQ(QList<QRect>({QRect(QPoint(199, 99), QPoint(399, 300))}), area->rects); // in float, 60 / 0.3 is below 200
    EXPECT_FLOAT_EQ(501.0F / 202.0F, view->get_zoom());
    EXPECT_NEAR(300, view->get_logical(QPoint(get_scroll_position().x() + 350, 0)).x(), 2);
    EXPECT_NEAR(200, view->get_logical(QPoint(0, get_scroll_position().y() + 250)).y(), 2);
}

TEST_F(TOLV_BIRDS_EYE_VIEW_MOUSE_TEST, a_rectangle_that_has_no_pixel_in_the_view_is_not_zoomed_to)
{
    view->set_zoom(0.001F);
    draw_rect(QPoint(60, 30), QPoint(62, 31));
    EXPECT_TRUE(area->rects.isEmpty());
    EXPECT_FLOAT_EQ(0.001F, view->get_zoom());
}

TEST_F(TOLV_BIRDS_EYE_VIEW_MOUSE_TEST, the_origin_of_the_drawing_is_left_out_of_a_drawn_rectangle)
{
    view->set_logical_size(QRect(-500, 0, 1000, 500));
    GUI_DRIVER::process_posted();
    view->set_zoom(1);
    draw_rect(QPoint(60, 30), QPoint(120, 60));
    EXPECT_NEAR(300, view->get_logical(QPoint(get_scroll_position().x() + 350, 0)).x(), 2)
        << "not 300 - 500, where it was drawn";
}

TEST_F(TOLV_BIRDS_EYE_VIEW_MOUSE_TEST, a_right_click_and_a_cancelled_rectangle_change_nothing)
{
    zoom_to(4, QPoint(400, 100));
    INPUT_SCRIPT click;
    click.then([&] { GUI_DRIVER::press(body, QPoint(60, 30), Qt::RightButton); });
    click.then([&] { GUI_DRIVER::release(body, QPoint(60, 30), Qt::RightButton); });
    EXPECT_TRUE(click.run());
    EXPECT_EQ(4.0F, view->get_zoom());
    ASSERT_TRUE(GUI_DRIVER::focus(area.get()));
    draw_rect(QPoint(60, 30), QPoint(120, 60), [&] { GUI_DRIVER::key_click(area.get(), Qt::Key_Escape); });
    EXPECT_EQ(4.0F, view->get_zoom());
    EXPECT_EQ(QPoint(1600, 400), get_scroll_position());
    EXPECT_EQ(QRect(QPoint(120, 30), QPoint(172, 67)), body->get_focus_rect());
}

TEST_F(TOLV_BIRDS_EYE_VIEW_MOUSE_TEST, an_overview_that_goes_away_in_the_middle_of_a_rectangle_ends_it)
{
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"it is closed", [&] { dock->hide(); }},
        {"the window is closed", [&] { area->close(); }},
        {"the drawing goes", [&] { delete view; }},
        {"another drawing comes", [&] { area->set_view(new TWO_COLOR_VIEW, true); }},
        {"a modal dialog opens",
         [&]
         {
             dialog = std::make_unique<QDialog>();
             dialog->setModal(true);
             GUI_DRIVER::show(dialog.get());
         }},
        {"it is to be deleted later", [&] { dock->deleteLater(); }},
    };
    for (const auto& [name, go] : ways)
    {
        SCOPED_TRACE(name);
        zoom_to(4, QPoint(400, 100));
        INPUT_SCRIPT script;
        script.then([&] { GUI_DRIVER::press(body, QPoint(60, 30), Qt::RightButton); });
        script.then([&] { GUI_DRIVER::move_to(body, QPoint(120, 60)); });
        script.then(go);
        EXPECT_TRUE(script.run());
        GUI_DRIVER::process_posted();
        EXPECT_EQ(nullptr, area->findChild<QRubberBand*>());
        if (area->get_view() == view)
        {
            EXPECT_EQ(4.0F, view->get_zoom());
            EXPECT_EQ(QPoint(1600, 400), get_scroll_position());
        }
        dialog.reset();
        let_go();
        TearDown();
        SetUp();
    }
}

TEST_F(TOLV_BIRDS_EYE_VIEW_MOUSE_TEST, a_second_button_ends_a_rectangle_by_its_release)
{
    view->set_zoom(1);
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(body, QPoint(60, 30), Qt::RightButton); });
    script.then([&] { GUI_DRIVER::move_to(body, QPoint(120, 60)); });
    script.then([&] { GUI_DRIVER::press(body, QPoint(120, 60)); });
    script.then([&] { EXPECT_NE(nullptr, body->findChild<QRubberBand*>()); });
    script.then([&] { GUI_DRIVER::release(body, QPoint(120, 60)); });
    script.then([&] { GUI_DRIVER::release(body, QPoint(120, 60), Qt::RightButton); });
    EXPECT_TRUE(script.run());
    EXPECT_EQ(nullptr, body->findChild<QRubberBand*>());
    EXPECT_NEAR(501.0F / 201.0F, view->get_zoom(), 0.02F);
}

TEST_F(TOLV_BIRDS_EYE_VIEW_MOUSE_TEST, an_area_that_goes_away_in_the_middle_of_a_rectangle_ends_it)
{
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(body, QPoint(60, 30), Qt::RightButton); });
    script.then([&] { GUI_DRIVER::move_to(body, QPoint(120, 60)); });
    script.then([&] { area.release()->deleteLater(); });
    EXPECT_TRUE(script.run());
    GUI_DRIVER::process_posted();
    let_go();
}
