#include "input_script.h"
#include "tolv_magnifying_glass_widget.h"
#include "tolv_zoom_drag.h"
#include "tolv_zoom_fixture.h"

#include <QActionGroup>
#include <QRubberBand>

namespace
{
/// Presses with the zoom or magnifying tool, which run event loops of their own. Scrolled to (100, 200).
class TOLV_ZOOM_SCROLL_AREA_DRAG_TEST : public ZOOM_TEST
{
protected:
    void SetUp() override
    {
        ZOOM_TEST::SetUp();
        action(TOLV_ZOOM_TOOL_ACTION)->setChecked(true);
        view->setFocusPolicy(Qt::StrongFocus);
        scroll_to(100, 200);
    }

    /// Press, moves, release.
    void drag(const QPoint& from, const QPoint& to, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
    {
        INPUT_SCRIPT script;
        script.then([=] { GUI_DRIVER::press(view, from, button, modifiers); });
        script.then([=] { GUI_DRIVER::move_to(view, from + (to - from) / 2, modifiers); });
        script.then([=] { GUI_DRIVER::move_to(view, to, modifiers); });
        script.then([=] { GUI_DRIVER::release(view, to, button, modifiers); });
        EXPECT_TRUE(script.run());
    }
    void click(const QPoint& point, Qt::MouseButton button, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        INPUT_SCRIPT script;
        script.then([=] { GUI_DRIVER::press(view, point, button, modifiers); });
        script.then([=] { GUI_DRIVER::release(view, point, button, modifiers); });
        EXPECT_TRUE(script.run());
    }
    /// What the zoom, the values and the cursor are after a step of 1.25 in or out about (60, 80) of the viewport.
    void expect_step_in() const
    {
        EXPECT_EQ(1.25F, view->get_zoom());
        EXPECT_EQ(QPoint(200 - 60, 350 - 80), values());
    }
    void expect_step_out() const
    {
        EXPECT_FLOAT_EQ(0.8F, view->get_zoom());
        EXPECT_EQ(QPoint(128 - 60, 224 - 80), values());
    }
};
} // namespace

// ---- Clicks ---------------------------------------------------------------------------------------------------------

TEST_F(TOLV_ZOOM_SCROLL_AREA_DRAG_TEST, a_left_click_zooms_in_at_its_place)
{
    click(in_view(60, 80), Qt::LeftButton);
    expect_step_in();
    EXPECT_TRUE(has_cursor(TOLV_ZOOM_IN_CURSOR));
    EXPECT_EQ(QPoint(160, 280), view->get_logical(view->mapFromGlobal(QCursor::pos())));
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DRAG_TEST, a_right_click_zooms_out_at_its_place)
{
    click(in_view(60, 80), Qt::RightButton);
    expect_step_out();
    EXPECT_EQ(QPoint(160, 280), view->get_logical(view->mapFromGlobal(QCursor::pos())));
    EXPECT_FALSE(TOLV_ZOOM_DRAG_WIDGET::m_use_zoom_drag);
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DRAG_TEST, the_pointer_follows_its_point_where_the_drawing_cannot_be_scrolled)
{
    scroll_to(0, 0);
    click(in_view(100, 50), Qt::RightButton);
    EXPECT_EQ(QPoint(0, 0), values());
    EXPECT_TRUE(has_cursor(TOLV_ZOOM_OUT_CURSOR));
    EXPECT_EQ(QPoint(80, 40), view->mapFromGlobal(QCursor::pos()));
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DRAG_TEST, shift_turns_the_direction_round)
{
    click(in_view(60, 80), Qt::RightButton, Qt::ShiftModifier);
    expect_step_in();
    EXPECT_TRUE(has_cursor(TOLV_ZOOM_IN_CURSOR));
    scroll_to(100, 200);
    view->set_zoom(1.0F);
    GUI_DRIVER::process_posted();
    scroll_to(100, 200);
    click(in_view(60, 80), Qt::LeftButton, Qt::ShiftModifier);
    expect_step_out();
    EXPECT_TRUE(has_cursor(TOLV_ZOOM_OUT_CURSOR));
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DRAG_TEST, control_and_a_left_click_zoom_in)
{
    click(in_view(60, 80), Qt::LeftButton, Qt::ControlModifier); // through an idle zoom drag
    expect_step_in();
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DRAG_TEST, the_view_sees_nothing_of_all_this)
{
    view->seen.clear();
    click(in_view(60, 80), Qt::LeftButton);
    click(in_view(60, 80), Qt::RightButton);
    EXPECT_FALSE(view->seen.contains(QEvent::MouseButtonPress));
    EXPECT_FALSE(view->seen.contains(QEvent::MouseButtonRelease));
}

// ---- Zoom drags and strokes -----------------------------------------------------------------------------------------

TEST_F(TOLV_ZOOM_SCROLL_AREA_DRAG_TEST, a_right_drag_upwards_zooms_in_by_its_height)
{
    INPUT_SCRIPT script;
    script.then([=] { GUI_DRIVER::press(view, in_view(60, 200), Qt::RightButton); });
    script.then([=] { GUI_DRIVER::move_to(view, in_view(60, 100)); });
    script.then([=] { GUI_DRIVER::process_posted(); }); // the painted value counts
    script.then([=] { GUI_DRIVER::release(view, in_view(60, 100), Qt::RightButton); });
    EXPECT_TRUE(script.run());
    EXPECT_TRUE(TOLV_ZOOM_DRAG_WIDGET::m_use_zoom_drag);
    EXPECT_FLOAT_EQ(1.2F, view->get_zoom());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DRAG_TEST, a_stroke_to_the_south_east_zooms_to_its_rectangle)
{
    drag(in_view(50, 50), in_view(149, 135), Qt::LeftButton, Qt::NoModifier); // 100 by 86
    EXPECT_EQ(3.5F, view->get_zoom());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DRAG_TEST, a_stroke_to_the_south_west_fits)
{
    drag(in_view(250, 50), in_view(150, 100), Qt::LeftButton, Qt::NoModifier);
    EXPECT_EQ(0.299F, view->get_zoom());
}

// ---- Rectangles to zoom out to --------------------------------------------------------------------------------------

TEST_F(TOLV_ZOOM_SCROLL_AREA_DRAG_TEST, a_drag_that_zooms_out_takes_a_rectangle)
{
    // Without zoom drags, or with both the right button and Control, or with the left button and Shift.
    const auto expect_zoomed_out = [this](Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
    {
        view->set_zoom(1.0F);
        GUI_DRIVER::process_posted();
        scroll_to(0, 0);
        drag(in_view(100, 90), in_view(298, 238), button, modifiers); // 199 by 149
        EXPECT_EQ(0.5F, view->get_zoom());
        EXPECT_EQ(QPoint(50, 45), values());
    };
    expect_zoomed_out(Qt::RightButton, Qt::ControlModifier);
    expect_zoomed_out(Qt::LeftButton, Qt::ShiftModifier);
    area->set_zoom_drag_enabled(false);
    EXPECT_FALSE(area->is_zoom_drag_enabled());
    expect_zoomed_out(Qt::RightButton, Qt::NoModifier);
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DRAG_TEST, a_span_of_nine_pixels_is_a_click_and_one_of_ten_is_a_rectangle)
{
    area->set_zoom_drag_enabled(false);
    drag(in_view(60, 80), in_view(69, 89), Qt::RightButton, Qt::NoModifier);
    expect_step_out();
    view->set_zoom(1.0F);
    GUI_DRIVER::process_posted();
    scroll_to(100, 200);
    drag(in_view(60, 80), in_view(70, 80), Qt::RightButton, Qt::NoModifier); // 11 by 1: 12 / 400
    EXPECT_EQ(0.03F, view->get_zoom());
    view->set_zoom(1.0F);
    GUI_DRIVER::process_posted();
    scroll_to(100, 200);
    drag(in_view(60, 80), in_view(60, 90), Qt::RightButton, Qt::NoModifier); // 1 by 11: 12 / 300
    EXPECT_EQ(0.04F, view->get_zoom());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DRAG_TEST, a_rectangle_given_up_by_escape_counts_as_a_click)
{
    area->set_zoom_drag_enabled(false);
    INPUT_SCRIPT script;
    script.then([=] { GUI_DRIVER::press(view, in_view(60, 80), Qt::RightButton); });
    script.then([=] { GUI_DRIVER::move_to(view, in_view(160, 180)); });
    script.then([=] { GUI_DRIVER::key_click(view, Qt::Key_Escape); });
    EXPECT_TRUE(script.run());
    expect_step_out();
    GUI_DRIVER::release(view, in_view(60, 80), Qt::RightButton);
    expect_step_out();
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DRAG_TEST, the_rubber_band_is_seen_during_the_drag)
{
    area->set_zoom_drag_enabled(false);
    QRect seen;
    INPUT_SCRIPT script;
    script.then([=] { GUI_DRIVER::press(view, in_view(60, 80), Qt::RightButton); });
    script.then([=] { GUI_DRIVER::move_to(view, in_view(160, 130)); });
    script.then([&] { seen = view->findChild<QRubberBand*>()->geometry(); });
    script.then([=] { GUI_DRIVER::release(view, in_view(160, 130), Qt::RightButton); });
    EXPECT_TRUE(script.run());
    EXPECT_EQ(QRect(160, 280, 101, 51), seen);
}

// ---- The magnifying glass -------------------------------------------------------------------------------------------

TEST_F(TOLV_ZOOM_SCROLL_AREA_DRAG_TEST, the_magnifying_tool_marks_the_paint_of_its_lens)
{
    action(TOLV_ZOOM_TOOL_ACTION)->setChecked(false);
    action(TOLV_MAGNIFYING_TOOL_ACTION)->setChecked(true);
    int lens_paints = 0;
    view->draw = [&](QPainter*) { lens_paints += view->is_magnifying() ? 1 : 0; };
    view->seen.clear();
    INPUT_SCRIPT script;
    script.then([=] { GUI_DRIVER::press(view, in_view(60, 80)); });
    script.wait_until([&] { return lens_paints > 0; });
    QPoint lens;
    script.then(
        [&]
        {
            const auto* const glass = area->findChild<TOLV_MAGNIFYING_GLASS_WIDGET*>();
            ASSERT_NE(nullptr, glass);
            lens = glass->pos();
        });
    script.then([=] { GUI_DRIVER::release(view, in_view(60, 80)); });
    EXPECT_TRUE(script.run());
    EXPECT_EQ(QPoint(60 - 100, 80 - 100), lens); // of a radius of 100, about the press
    EXPECT_FALSE(view->is_magnifying());
    EXPECT_FALSE(view->seen.contains(QEvent::MouseButtonPress));
    EXPECT_FALSE(view->seen.contains(QEvent::MouseButtonRelease));
    EXPECT_TRUE(has_cursor(TOLV_MAGNIFYING_CURSOR));
    EXPECT_EQ(1.0F, view->get_zoom());
}

// ---- Views that go in the middle ------------------------------------------------------------------------------------

TEST_F(TOLV_ZOOM_SCROLL_AREA_DRAG_TEST, a_view_deleted_in_the_middle_ends_every_interaction)
{
    struct CASE
    {
        TOLV_ACTION_ENUM tool;
        Qt::MouseButton button;
        Qt::KeyboardModifiers modifiers;
    };
    const std::vector<CASE> cases = {{TOLV_ZOOM_TOOL_ACTION, Qt::LeftButton, Qt::NoModifier},
                                     {TOLV_ZOOM_TOOL_ACTION, Qt::RightButton, Qt::NoModifier},
                                     {TOLV_ZOOM_TOOL_ACTION, Qt::RightButton, Qt::ControlModifier},
                                     {TOLV_PAN_TOOL_ACTION, Qt::LeftButton, Qt::NoModifier},
                                     {TOLV_MAGNIFYING_TOOL_ACTION, Qt::LeftButton, Qt::NoModifier}};
    for (const CASE& c : cases)
    {
        SCOPED_TRACE(c.tool * 100 + c.button);
        QWidget window;
        window.setGeometry(100, 100, 400, 300);
        auto* const other_area = new TOLV_ZOOM_SCROLL_AREA(&window);
        other_area->setGeometry(0, 0, 400, 300);
        const QPointer<PROBE_VIEW> other_view(new PROBE_VIEW);
        other_view->set_logical_size(QRect(0, 0, 1000, 1000));
        other_area->set_view(other_view, false);
        other_area->get_action(c.tool)->setChecked(true);
        ASSERT_TRUE(GUI_DRIVER::show(&window));
        INPUT_SCRIPT script;
        script.then([&] { GUI_DRIVER::press(other_view, QPoint(60, 80), c.button, c.modifiers); });
        script.then([&] { GUI_DRIVER::move_to(other_view, QPoint(100, 120), c.modifiers); });
        script.then(
            [&]
            {
                // Qt itself cannot bear the deletion of a widget that a press with the right button is on its way to.
                if (c.button == Qt::RightButton)
                    other_view->deleteLater();
                else
                    delete other_view;
            });
        EXPECT_TRUE(script.run());
        GUI_DRIVER::process_posted();
        EXPECT_EQ(nullptr, other_area->get_view());
        GUI_DRIVER::release(&window, QPoint(390, 290), c.button, c.modifiers);
    }
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DRAG_TEST, an_area_deleted_in_the_middle_ends_every_interaction)
{
    for (const auto& [button, modifiers] :
         std::vector<std::pair<Qt::MouseButton, Qt::KeyboardModifiers>>{{Qt::LeftButton, Qt::NoModifier},
                                                                        {Qt::RightButton, Qt::NoModifier},
                                                                        {Qt::RightButton, Qt::ControlModifier}})
    {
        SCOPED_TRACE(button);
        QWidget window;
        window.setGeometry(100, 100, 400, 300);
        const QPointer<TOLV_ZOOM_SCROLL_AREA> other_area(new TOLV_ZOOM_SCROLL_AREA(&window));
        other_area->setGeometry(0, 0, 400, 300);
        auto* const other_view = new PROBE_VIEW;
        other_view->set_logical_size(QRect(0, 0, 1000, 1000));
        other_area->set_view(other_view, false);
        other_area->get_action(TOLV_ZOOM_TOOL_ACTION)->setChecked(true);
        ASSERT_TRUE(GUI_DRIVER::show(&window));
        INPUT_SCRIPT script;
        script.then([&, b = button, m = modifiers] { GUI_DRIVER::press(other_view, QPoint(60, 80), b, m); });
        script.then([&, m = modifiers] { GUI_DRIVER::move_to(other_view, QPoint(100, 120), m); });
        script.then([&] { other_area->deleteLater(); });
        EXPECT_TRUE(script.run());
        GUI_DRIVER::process_posted();
        EXPECT_EQ(nullptr, other_area);
        GUI_DRIVER::release(&window, QPoint(390, 290), button, modifiers);
    }
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DRAG_TEST, a_view_hidden_in_the_middle_is_not_zoomed)
{
    for (const Qt::KeyboardModifiers modifiers :
         {Qt::KeyboardModifiers(Qt::NoModifier), Qt::KeyboardModifiers(Qt::ControlModifier)})
    {
        INPUT_SCRIPT script;
        script.then([&] { GUI_DRIVER::press(view, in_view(60, 80), Qt::RightButton, modifiers); });
        script.then([&] { GUI_DRIVER::move_to(view, in_view(100, 120), modifiers); });
        script.then([&] { view->hide(); });
        EXPECT_TRUE(script.run());
        EXPECT_EQ(1.0F, view->get_zoom());
        view->show();
        GUI_DRIVER::release(view, in_view(100, 120), Qt::RightButton, modifiers);
        EXPECT_EQ(1.0F, view->get_zoom());
    }
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DRAG_TEST, what_is_still_to_come_of_a_step_survives_the_end_of_the_area)
{
    GUI_DRIVER::hover(view, in_view(60, 80));
    area->zoom_in();
    area.reset();
    GUI_DRIVER::process_posted();
    EXPECT_EQ(nullptr, view);
}
