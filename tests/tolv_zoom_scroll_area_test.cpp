#include "internal_error_trap.h"
#include "tolv_create_action.h"
#include "tolv_tool_bar.h"
#include "tolv_zoom_fixture.h"

#include <QActionGroup>
#include <QApplication>
#include <QMenu>

namespace
{
constexpr TOLV_ACTION_ENUM COMMANDS[] = {TOLV_ZOOM_TOOL_ACTION,       TOLV_PAN_TOOL_ACTION, TOLV_ZOOM_FIT_ACTION,
                                         TOLV_ZOOM_SELECTION_ACTION,  TOLV_ZOOM_IN_ACTION,  TOLV_ZOOM_OUT_ACTION,
                                         TOLV_MAGNIFYING_TOOL_ACTION, TOLV_ZOOM_ACTION,     TOLV_BIRDS_EYE_VIEW_ACTION};

class TOLV_ZOOM_SCROLL_AREA_TEST : public ZOOM_TEST
{
protected:
    void SetUp() override
    {
        ZOOM_TEST::SetUp();
        levels = std::make_unique<QSignalSpy>(area.get(), SIGNAL(zoom_level_changed(float)));
    }
    /// The one level that was signalled since the last call.
    float take_level()
    {
        EXPECT_EQ(1, levels->count());
        return levels->isEmpty() ? 0.0F : levels->takeFirst().value(0).toFloat();
    }

    std::unique_ptr<QSignalSpy> levels;
};

/// Areas that need not be on the screen.
class TOLV_ZOOM_SCROLL_AREA_SETUP_TEST : public TOLV_GUI_TEST
{
};
} // namespace

// ---- Actions --------------------------------------------------------------------------------------------------------

TEST_F(TOLV_ZOOM_SCROLL_AREA_SETUP_TEST, the_nine_actions_are_those_of_the_suite)
{
    const TOLV_ZOOM_SCROLL_AREA area;
    QList<QAction*> children;
    for (const TOLV_ACTION_ENUM command : COMMANDS)
    {
        QAction* const action = area.get_action(command);
        ASSERT_NE(nullptr, action);
        const std::unique_ptr<QAction> expected(tolv_create_action(command, nullptr));
        EXPECT_EQ(expected->text(), action->text());
        EXPECT_EQ(expected->isCheckable(), action->isCheckable());
        EXPECT_EQ(&area, action->parent());
        EXPECT_FALSE(action->isChecked());
        children << action;
    }
    EXPECT_EQ(children, area.findChildren<QAction*>(QString(), Qt::FindDirectChildrenOnly)); // in this order
    EXPECT_EQ(nullptr, area.get_action(TOLV_COPY_ACTION));
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_SETUP_TEST, enabling_and_showing_reach_all_actions)
{
    TOLV_ZOOM_SCROLL_AREA area;
    for (const bool is_on : {false, true})
    {
        area.set_enabled(is_on);
        area.show_actions(is_on);
        EXPECT_EQ(is_on, area.isEnabled());
        for (const TOLV_ACTION_ENUM command : COMMANDS)
        {
            EXPECT_EQ(is_on, area.get_action(command)->isEnabled());
            EXPECT_EQ(is_on, area.get_action(command)->isVisible());
        }
    }
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_SETUP_TEST, the_tools_go_into_a_group_and_out_again)
{
    TOLV_ZOOM_SCROLL_AREA area;
    QActionGroup group(nullptr);
    area.insert_modes(nullptr);
    area.insert_modes(&group);
    EXPECT_EQ(QList<QAction*>() << area.get_action(TOLV_ZOOM_TOOL_ACTION)
                                << area.get_action(TOLV_MAGNIFYING_TOOL_ACTION)
                                << area.get_action(TOLV_PAN_TOOL_ACTION),
              group.actions());
    area.remove_modes(&group);
    EXPECT_TRUE(group.actions().isEmpty());
    area.remove_modes(nullptr);
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_SETUP_TEST, the_tools_go_onto_a_tool_bar_and_off_again)
{
    TOLV_ZOOM_SCROLL_AREA area;
    TOLV_TOOL_BAR bar;
    area.add_mode_actions(&bar);
    EXPECT_EQ(QList<QAction*>() << area.get_action(TOLV_ZOOM_TOOL_ACTION)
                                << area.get_action(TOLV_MAGNIFYING_TOOL_ACTION)
                                << area.get_action(TOLV_PAN_TOOL_ACTION),
              bar.actions());
    area.remove_mode_actions(&bar);
    EXPECT_TRUE(bar.actions().isEmpty());
    EXPECT_INTERNAL_ERROR(area.add_mode_actions(nullptr), "bar != NULL");
    EXPECT_INTERNAL_ERROR(area.remove_mode_actions(nullptr), "bar != NULL");
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_SETUP_TEST, the_zoom_commands_go_before_an_action)
{
    TOLV_ZOOM_SCROLL_AREA area;
    QMenu menu;
    QAction* const first = menu.addAction(QStringLiteral("first"));
    QAction* const last = menu.addAction(QStringLiteral("last"));
    area.insert_actions(&menu, last);
    EXPECT_EQ(QList<QAction*>() << first << area.get_action(TOLV_ZOOM_IN_ACTION)
                                << area.get_action(TOLV_ZOOM_OUT_ACTION) << area.get_action(TOLV_ZOOM_ACTION)
                                << area.get_action(TOLV_ZOOM_FIT_ACTION) << area.get_action(TOLV_ZOOM_SELECTION_ACTION)
                                << last,
              menu.actions());
    area.remove_actions(&menu);
    EXPECT_EQ(QList<QAction*>() << first << last, menu.actions());
    area.insert_actions(nullptr, nullptr);
    area.remove_actions(nullptr);
}

// ---- The view -------------------------------------------------------------------------------------------------------

TEST_F(TOLV_ZOOM_SCROLL_AREA_SETUP_TEST, without_a_view_zooming_is_an_internal_error)
{
    TOLV_ZOOM_SCROLL_AREA area;
    EXPECT_EQ(nullptr, area.get_view());
    EXPECT_INTERNAL_ERROR(area.set_view(nullptr, false), "view != NULL");
    EXPECT_INTERNAL_ERROR(area.zoom_in(), "m_view != NULL");
    EXPECT_INTERNAL_ERROR(area.zoom_out(), "m_view != NULL");
    EXPECT_INTERNAL_ERROR(area.zoom_fit(), "m_view != NULL");
    EXPECT_INTERNAL_ERROR(area.zoom_selected(), "m_view != NULL");
    EXPECT_INTERNAL_ERROR(area.set_zoom(1.0F), "m_view != NULL");
    EXPECT_INTERNAL_ERROR(area.open_set_zoom_dlg(), "m_view != NULL");
    const QRect rect(1, 2, 3, 4);
    EXPECT_INTERNAL_ERROR(area.zoom_rect(rect), "m_view != NULL");
    EXPECT_INTERNAL_ERROR(area.zoom_out_rect(rect), "m_view != NULL");
    EXPECT_INTERNAL_ERROR(area.zoom_on_logical_rect(rect), "m_view != NULL");
    EXPECT_INTERNAL_ERROR(area.scroll_to_logical_rect(rect), "m_view != NULL");
    EXPECT_FALSE(area.current_mode_supports_mouse_gesture(QPoint()));
    area.send_fake_mouse_event();
    area.adjust_cursor();
    area.on_switch_mode(area.get_action(TOLV_PAN_TOOL_ACTION));
    area.hide_birds_eye_view();
    area.resize(30, 40);
    area.show();
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_SETUP_TEST, a_view_that_nobody_has_placed_becomes_the_content)
{
    TOLV_ZOOM_SCROLL_AREA area;
    auto* const view = new TOLV_VIEW;
    area.set_view(view, false);
    EXPECT_EQ(view, area.widget());
    EXPECT_TRUE(area.widgetResizable());
    EXPECT_EQ(view, area.get_view());
    auto* const other = new TOLV_VIEW(&area);
    area.set_view(other, false);
    EXPECT_EQ(other, area.widget());
    EXPECT_EQ(other, area.get_view());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_SETUP_TEST, a_view_that_has_been_placed_stays_there)
{
    TOLV_ZOOM_SCROLL_AREA area;
    auto* const container = new QWidget;
    auto* const view = new TOLV_VIEW(container);
    area.setWidget(container);
    area.set_view(view, false);
    EXPECT_EQ(container, area.widget());
    EXPECT_EQ(container, view->parent());
    EXPECT_FALSE(area.widgetResizable());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_SETUP_TEST, without_a_birds_eye_view_there_is_no_magnifying_tool_either)
{
    TOLV_ZOOM_SCROLL_AREA area;
    area.set_view(new TOLV_VIEW, false);
    EXPECT_FALSE(area.get_action(TOLV_MAGNIFYING_TOOL_ACTION)->isVisible());
    EXPECT_FALSE(area.get_action(TOLV_BIRDS_EYE_VIEW_ACTION)->isVisible());
    EXPECT_TRUE(area.get_action(TOLV_ZOOM_TOOL_ACTION)->isVisible());
    area.get_action(TOLV_BIRDS_EYE_VIEW_ACTION)->setChecked(true);
    area.set_view(new TOLV_VIEW, true);
    EXPECT_TRUE(area.get_action(TOLV_MAGNIFYING_TOOL_ACTION)->isVisible());
    EXPECT_FALSE(area.get_action(TOLV_BIRDS_EYE_VIEW_ACTION)->isChecked()); // it is hidden at first
    area.set_view(new TOLV_VIEW, false);
    EXPECT_EQ(nullptr, area.get_birds_eye_view());
    area.hide_birds_eye_view();
    area.resize(100, 100);
    area.show();
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, a_view_that_was_deleted_is_forgotten)
{
    delete view;
    EXPECT_EQ(nullptr, area->get_view());
    area->adjust_cursor();
    area->send_fake_mouse_event();
    area->resize(200, 200);
    GUI_DRIVER::wheel(area->viewport(), QPoint(10, 10), QPoint(0, 120), Qt::ControlModifier);
    EXPECT_TRUE(area->pan_view(QEvent::MouseButtonPress, QPoint(), Qt::LeftButton));
    EXPECT_TRUE(area->pan_view(QEvent::MouseButtonRelease, QPoint(), Qt::LeftButton));
    EXPECT_INTERNAL_ERROR(area->zoom_in(), "m_view != NULL");
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_SETUP_TEST, a_view_that_was_replaced_is_let_alone)
{
    auto* const first = new PROBE_VIEW;
    auto* const second = new PROBE_VIEW;
    TOLV_ZOOM_SCROLL_AREA area;
    auto* const container = new QWidget;
    first->setParent(container);
    second->setParent(container);
    area.setWidget(container);
    area.set_view(first, false);
    area.set_view(second, false);
    area.get_action(TOLV_PAN_TOOL_ACTION)->setChecked(true); // which takes releases
    for (PROBE_VIEW* const view : {first, second})
    {
        QMouseEvent release(QEvent::MouseButtonRelease, QPointF(1, 1), Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view, &release);
        EXPECT_EQ(view == first, view->seen.contains(QEvent::MouseButtonRelease));
    }
    delete first;
    EXPECT_EQ(second, area.get_view());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_SETUP_TEST, what_a_group_triggers_is_followed_even_without_the_tools_in_it)
{
    TOLV_ZOOM_SCROLL_AREA area;
    QActionGroup group(nullptr);
    auto* const view = new TOLV_VIEW;
    area.set_view(view, false);
    area.insert_modes(&group);
    area.remove_modes(&group);
    emit group.triggered(area.get_action(TOLV_PAN_TOOL_ACTION));
    EXPECT_EQ(Qt::OpenHandCursor, view->cursor().shape());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_SETUP_TEST, a_drawing_is_not_turned_round_where_texts_run_from_right_to_left)
{
    const Qt::LayoutDirection direction = QApplication::layoutDirection();
    QApplication::setLayoutDirection(Qt::RightToLeft);
    {
        TOLV_ZOOM_SCROLL_AREA area;
        area.setFrameShape(QFrame::NoFrame);
        area.setGeometry(100, 100, 400, 300);
        auto* const view = new PROBE_VIEW;
        view->set_logical_size(QRect(0, 0, 1000, 1000));
        area.set_view(view, false);
        EXPECT_TRUE(GUI_DRIVER::show(&area));
        area.horizontalScrollBar()->setValue(100);
        area.verticalScrollBar()->setValue(200);
        EXPECT_EQ(QPoint(-100, -200), view->pos());
        GUI_DRIVER::wheel(view, QPoint(160, 280), QPoint(0, 120), Qt::ControlModifier);
        EXPECT_EQ(QPoint(60 - 200, 80 - 350), view->pos());
        EXPECT_EQ(QPoint(160, 280), view->get_logical(view->mapFromGlobal(QCursor::pos())));
    }
    QApplication::setLayoutDirection(direction);
}

// ---- A step ---------------------------------------------------------------------------------------------------------

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, a_step_without_a_point_is_about_the_middle_of_the_visible_part)
{
    scroll_to(100, 200);
    // The middle is (100 + 190, 200 + 140); times 1.25 (362.5, 425), whose half goes up.
    area->zoom_in();
    EXPECT_EQ(1.25F, view->get_zoom());
    EXPECT_EQ(QPoint(363 - 190, 425 - 140), values());
    EXPECT_EQ(1.25F, take_level());
    GUI_DRIVER::process_posted();
    EXPECT_EQ(QPoint(173, 285), values());
    EXPECT_EQ(1250 - 380, h()->maximum());
    EXPECT_EQ(1250 - 280, v()->maximum());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, the_page_steps_are_crossed_in_the_new_ranges)
{
    area->zoom_in();
    EXPECT_EQ(1125, h()->maximum()); // (620 + 280) * 1.25
    EXPECT_EQ(1375, v()->maximum()); // (720 + 380) * 1.25
    GUI_DRIVER::process_posted();    // the layout sets the true ranges
    area->zoom_in(nullptr, 1.5F);
    EXPECT_EQ(1725, h()->maximum()); // (870 + 280) * 1.5
    EXPECT_EQ(2025, v()->maximum()); // (970 + 380) * 1.5
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, a_step_holds_the_given_point_in_place)
{
    scroll_to(100, 200);
    QPoint point(160, 280);
    area->zoom_in(&point, 2.0F);
    EXPECT_EQ(QPoint(160, 280), point);
    // It was at (60, 80) of the viewport and is at (320, 560) of the view now.
    EXPECT_EQ(QPoint(320 - 60, 560 - 80), values());
    GUI_DRIVER::process_posted();
    EXPECT_EQ(QPoint(260, 480), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, a_scaled_anchor_rounds_half_away_from_zero)
{
    scroll_to(100, 200);
    QPoint point(-2, 10); // (-2.5, 12.5)
    area->zoom_in(&point, 1.25F);
    EXPECT_EQ(QPoint(-3 - 190 + 292, 13 - 140 + 330), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, zooming_out_is_zooming_in_by_the_inverse)
{
    scroll_to(100, 200);
    area->zoom_out();
    EXPECT_FLOAT_EQ(0.8F, view->get_zoom());
    EXPECT_EQ(QPoint(232 - 190, 272 - 140), values());
    EXPECT_FLOAT_EQ(0.8F, take_level());
    GUI_DRIVER::process_posted();
    EXPECT_EQ(QPoint(42, 132), values());
    EXPECT_EQ(800 - 380, h()->maximum());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, a_step_at_the_maximum_changes_neither_zoom_nor_place)
{
    view->set_max(1.0F);
    scroll_to(100, 200);
    const QTransform transform = view->get_transform();
    QPoint point(150, 333);
    area->zoom_in(&point, 1.25F);
    EXPECT_EQ(1.0F, view->get_zoom());
    EXPECT_EQ(QPoint(100, 200), values());
    EXPECT_EQ(1.0F, take_level());
    GUI_DRIVER::process_posted();
    EXPECT_EQ(transform, view->get_transform());
    EXPECT_EQ(QPoint(100, 200), values());
    EXPECT_EQ(620, h()->maximum());
    EXPECT_EQ(720, v()->maximum());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, a_step_is_reckoned_in_float)
{
    QPoint point(50, 150);
    area->zoom_in(&point, 1.01F); // a little less than 1.01: in double 50 would become 50.4999995, and 900 908.99999
    EXPECT_EQ(QPoint(51 - 50, 152 - 150), values());
    EXPECT_EQ(909, h()->maximum());
    EXPECT_EQ(1111, v()->maximum());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, new_ranges_are_cut_off)
{
    area->zoom_in(nullptr, 1.0007F); // 900.63 and 1100.77
    EXPECT_EQ(900, h()->maximum());
    EXPECT_EQ(1100, v()->maximum());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, the_middle_of_an_odd_viewport_is_cut_off)
{
    area->resize(401, 301);
    GUI_DRIVER::process_posted();
    ASSERT_EQ(QSize(381, 281), QSize(h()->pageStep(), v()->pageStep()));
    scroll_to(100, 200);
    area->zoom_in(nullptr, 2.0F); // about (100 + 190, 200 + 140)
    EXPECT_EQ(QPoint(580 - 190, 680 - 140), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_SETUP_TEST, a_step_up_zooms_the_view_in_and_any_other_zooms_it_out)
{
    class STEPPED_VIEW : public TOLV_VIEW
    {
    public:
        QList<float> steps; // those out are negative
        float zoom_in(float delta) override
        {
            steps << delta;
            return delta;
        }
        float zoom_out(float delta) override
        {
            steps << -delta;
            return delta;
        }
    };
    TOLV_ZOOM_SCROLL_AREA area;
    auto* const view = new STEPPED_VIEW;
    area.set_view(view, false);
    area.zoom_in(nullptr, 1.5F);
    area.zoom_in(nullptr, 0.5F);
    area.zoom_in(nullptr, 1.0F);
    area.zoom_out(nullptr, 4.0F);
    area.zoom_out(nullptr, 0.25F);
    EXPECT_EQ(QList<float>() << 1.5F << -2.0F << -1.0F << -4.0F << 4.0F, view->steps);
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, a_step_cut_short_by_the_maximum_scrolls_by_what_was_really_applied)
{
    view->set_max(1.1F);
    scroll_to(100, 200);
    area->zoom_in(nullptr, 2.0F); // (290, 340) * 1.1
    EXPECT_EQ(1.1F, view->get_zoom());
    EXPECT_EQ(QPoint(319 - 190, 374 - 140), values());
    EXPECT_EQ(990, h()->maximum());
    EXPECT_EQ(1210, v()->maximum());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, steps_at_the_minimum_change_neither_zoom_nor_place)
{
    view->set_min(0.9F);
    scroll_to(100, 200);
    area->zoom_out(nullptr, 2.0F); // (290, 340) * 0.9
    EXPECT_EQ(0.9F, view->get_zoom());
    EXPECT_EQ(QPoint(261 - 190, 306 - 140), values());
    GUI_DRIVER::process_posted();
    area->zoom_out();
    EXPECT_EQ(0.9F, view->get_zoom());
    EXPECT_EQ(QPoint(71, 166), values());
    GUI_DRIVER::process_posted();
    EXPECT_EQ(QPoint(71, 166), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, a_delta_of_zero_is_an_internal_error)
{
    EXPECT_INTERNAL_ERROR(area->zoom_in(nullptr, 0.0F), "delta != 0");
    EXPECT_INTERNAL_ERROR(area->zoom_out(nullptr, 0.0F), "delta != 0");
    EXPECT_INTERNAL_ERROR(area->zoom_in(nullptr, -1.0F), "delta > 0.0f");
    EXPECT_EQ(1.0F, view->get_zoom());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, a_step_away_from_the_pointer_leaves_the_pointer_alone)
{
    const QPoint before = QCursor::pos();
    area->zoom_in();
    GUI_DRIVER::process_posted();
    EXPECT_EQ(before, QCursor::pos());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, a_step_with_the_pointer_over_the_view_is_about_the_pointer)
{
    scroll_to(100, 200);
    GUI_DRIVER::hover(view, QPoint(163, 281)); // (63, 81) of the viewport
    ASSERT_TRUE(view->testAttribute(Qt::WA_UnderMouse));
    const QPoint before = QCursor::pos();
    area->zoom_in(nullptr, 2.0F);
    EXPECT_EQ(QPoint(326 - 63, 562 - 81), values());
    GUI_DRIVER::process_posted();
    EXPECT_EQ(before, QCursor::pos());
    EXPECT_EQ(QPoint(163, 281), view->get_logical(view->mapFromGlobal(QCursor::pos())));
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, the_pointer_follows_its_point_where_the_content_cannot_be_scrolled_to_it)
{
    GUI_DRIVER::hover(view, QPoint(100, 50)); // scrolled to the corner: the point comes nearer to it
    area->zoom_out(nullptr, 1.25F);
    GUI_DRIVER::process_posted();
    EXPECT_EQ(QPoint(0, 0), values());
    EXPECT_EQ(QPoint(80, 40), view->mapFromGlobal(QCursor::pos()));
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, the_pointer_stays_where_it_is_for_a_view_that_is_not_seen)
{
    GUI_DRIVER::hover(view, QPoint(100, 50));
    area->zoom_out(nullptr, 1.25F);
    view->hide(); // before the pointer is moved
    const QPoint before = QCursor::pos();
    GUI_DRIVER::process_posted();
    EXPECT_EQ(before, QCursor::pos());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, a_view_inside_of_another_widget_is_centred_when_the_area_is_resized)
{
    TOLV_ZOOM_SCROLL_AREA other;
    other.setFrameShape(QFrame::NoFrame);
    auto* const container = new QWidget;
    container->setFixedSize(100, 100);
    auto* const other_view = new TOLV_VIEW(container);
    other_view->set_logical_size(QRect(0, 0, 100, 100));
    other.setWidget(container);
    other.set_view(other_view, false);
    other.resize(200, 150);
    ASSERT_TRUE(GUI_DRIVER::show(&other));
    EXPECT_EQ(QTransform(1, 0, 0, 1, 50, 25), other_view->get_transform());
    other.resize(300, 250);
    GUI_DRIVER::process_posted();
    EXPECT_EQ(QTransform(1, 0, 0, 1, 100, 75), other_view->get_transform());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, the_level_is_the_raw_zoom_by_the_scaling)
{
    view->set_zoom_scaling(2.0F);
    area->zoom_in();
    EXPECT_EQ(0.625F, take_level());
    area->zoom_fit();
    EXPECT_FLOAT_EQ(0.1495F, take_level());
    area->set_zoom(0.75F); // leaves the signal to the caller
    EXPECT_EQ(1.5F, view->get_zoom());
    EXPECT_EQ(0, levels->count());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, each_step_lets_the_view_feel_a_move_without_buttons)
{
    view->moves_without_buttons.clear();
    area->zoom_in();
    EXPECT_TRUE(view->moves_without_buttons.isEmpty()); // posted
    GUI_DRIVER::process_posted();
    EXPECT_EQ(QList<QPoint>() << view->mapFromGlobal(QCursor::pos()), view->moves_without_buttons);
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, a_view_may_be_deleted_when_the_level_is_told)
{
    QObject::connect(area.get(), &TOLV_ZOOM_SCROLL_AREA::zoom_level_changed, view, [this] { delete view; });
    area->zoom_in();
    GUI_DRIVER::process_posted();
    EXPECT_EQ(nullptr, area->get_view());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, the_commands_do_what_they_say)
{
    action(TOLV_ZOOM_IN_ACTION)->trigger();
    EXPECT_EQ(1.25F, take_level());
    action(TOLV_ZOOM_OUT_ACTION)->trigger();
    EXPECT_FLOAT_EQ(1.0F, take_level());
    action(TOLV_ZOOM_FIT_ACTION)->trigger();
    EXPECT_EQ(0.299F, take_level());
    view->selected = QRect(100, 200, 100, 86);
    view->set_zoom(1.0F);
    GUI_DRIVER::process_posted();
    action(TOLV_ZOOM_SELECTION_ACTION)->trigger();
    EXPECT_EQ(3.5F, take_level());
}

// ---- Rectangles -----------------------------------------------------------------------------------------------------

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, fitting_shows_all_and_needs_no_bars)
{
    scroll_to(100, 200);
    area->zoom_fit(); // the lesser of 399 / 1000 and 299 / 1000
    EXPECT_EQ(0.299F, view->get_zoom());
    EXPECT_EQ(0.299F, take_level());
    GUI_DRIVER::process_posted();
    EXPECT_EQ(0, h()->maximum());
    EXPECT_EQ(0, v()->maximum());
    EXPECT_EQ(QPoint((400 - 299) / 2, 0), view->get_physical(QPoint(0, 0)));
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, a_rectangle_fills_the_largest_viewport_and_is_centred_by_the_page_steps)
{
    scroll_to(10, 20);
    area->zoom_rect(QRect(100, 200, 100, 86)); // the lesser of 401 / 100 and 301 / 86
    EXPECT_EQ(3.5F, view->get_zoom());
    EXPECT_EQ(3.5F, take_level());
    // (350, 700), 350 by 301: 350 - (380 - 350) / 2 and 700 - (280 - 301) / 2, whose half is cut off
    EXPECT_EQ(QPoint(335, 710), values());
    EXPECT_EQ(3500, h()->maximum());
    EXPECT_EQ(3500, v()->maximum());
    GUI_DRIVER::process_posted();
    EXPECT_EQ(QPoint(335, 710), values());
    EXPECT_EQ(3500 - 380, h()->maximum());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, each_bar_reaches_as_far_as_the_view_does)
{
    view->set_logical_size(QRect(0, 0, 1000, 2000));
    GUI_DRIVER::process_posted();
    area->zoom_rect(QRect(100, 200, 100, 86));
    EXPECT_EQ(QPoint(3500, 7000), QPoint(h()->maximum(), v()->maximum()));
    area->zoom_on_logical_rect(QRect(40, 200, 100, 100)); // 281 / 100; the view shrinks with the layout
    EXPECT_EQ(QPoint(3500, 7000), QPoint(h()->maximum(), v()->maximum()));
    GUI_DRIVER::process_posted();
    area->zoom_out_rect(QRect(100, 200, 199, 149));
    EXPECT_EQ(QPoint(2810, 5620), QPoint(h()->maximum(), v()->maximum()));
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, the_bars_follow_a_view_that_is_resized_by_itself)
{
    TOLV_ZOOM_SCROLL_AREA other;
    other.setFrameShape(QFrame::NoFrame);
    other.resize(400, 300);
    auto* const other_view = new TOLV_VIEW;
    other.setWidget(other_view);
    other_view->resize(900, 800);
    other.set_view(other_view, false);
    ASSERT_TRUE(GUI_DRIVER::show(&other));
    const int before = other.horizontalScrollBar()->maximum();
    other_view->resize(1000, 800);
    EXPECT_EQ(before + 100, other.horizontalScrollBar()->maximum()); // at once
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, a_rectangle_is_zoomed_to_at_any_zoom_and_scaling)
{
    view->set_zoom_scaling(4.0F);
    view->set_zoom(0.5F); // raw 2
    GUI_DRIVER::process_posted();
    area->zoom_rect(QRect(200, 400, 200, 172)); // logical (100, 200), 100 by 86
    EXPECT_EQ(3.5F, view->get_zoom());
    EXPECT_EQ(0.875F, take_level());
    EXPECT_EQ(QPoint(335, 710), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, a_logical_rectangle_fills_what_the_bars_leave)
{
    area->zoom_on_logical_rect(QRect(40, 200, 254, 100)); // the lesser of 381 / 254 and 281 / 100
    EXPECT_EQ(1.5F, view->get_zoom());
    EXPECT_EQ(1.5F, take_level());
    // (60, 300), 381 by 150: 60 - (380 - 381) / 2, whose half is cut off, and 300 - (280 - 150) / 2
    EXPECT_EQ(QPoint(60, 235), values());
    EXPECT_EQ(1500, h()->maximum());
    EXPECT_EQ(1500, v()->maximum());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, a_logical_rectangle_leaves_room_for_bars_that_are_off_for_good)
{
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    GUI_DRIVER::process_posted();
    ASSERT_EQ(QSize(400, 300), area->viewport()->size());
    area->zoom_on_logical_rect(QRect(40, 200, 254, 100));
    EXPECT_EQ(1.5F, view->get_zoom());
    EXPECT_EQ(QPoint(60, 235), values()); // centred in 380 by 280
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, the_view_is_painted_anew_even_where_nothing_has_changed)
{
    int paints = 0;
    view->draw = [&](QPainter*) { ++paints; };
    view->set_max(1.0F);
    scroll_to(300, 350);
    const std::function<void()> commands[] = {
        [this] { area->zoom_in(); }, [this] { area->scroll_to_logical_rect(QRect(490, 490, 20, 20)); },
        [this] { area->zoom_rect(QRect(490, 490, 1, 1)); }, [this] { area->zoom_out_rect(QRect(300, 350, 400, 300)); },
        [this] { area->zoom_on_logical_rect(QRect(490, 490, 1, 1)); }};
    for (const auto& command : commands)
    {
        command();
        GUI_DRIVER::process_posted();
        paints = 0;
        command(); // now at its goal already
        EXPECT_TRUE(GUI_DRIVER::wait_for([&] { return paints > 0; }));
    }
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, scrolling_to_a_rectangle_does_not_zoom)
{
    area->scroll_to_logical_rect(QRect(500, 600, 101, 87)); // 500 - (400 - 101) / 2, 600 - (300 - 87) / 2
    EXPECT_EQ(QPoint(351, 494), values());
    EXPECT_EQ(1.0F, view->get_zoom());
    EXPECT_EQ(0, levels->count());
    EXPECT_EQ(620, h()->maximum());
    view->set_zoom(2.0F);
    GUI_DRIVER::process_posted();
    area->scroll_to_logical_rect(QRect(500, 600, 101, 87)); // (1000, 1200), 202 by 174
    EXPECT_EQ(QPoint(1000 - 99, 1200 - 63), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, zooming_out_to_a_rectangle_shrinks_the_drawing_towards_it)
{
    area->zoom_out_rect(QRect(100, 200, 199, 149)); // the greater of 200 / 400 and 150 / 300
    EXPECT_EQ(0.5F, view->get_zoom());
    EXPECT_EQ(0.5F, take_level());
    EXPECT_EQ(QPoint(50, 100), values()); // not centred
    GUI_DRIVER::process_posted();
    EXPECT_EQ(QPoint(50, 100), values());
    EXPECT_EQ(500 - 380, h()->maximum());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, zooming_out_to_a_rectangle_takes_the_greater_ratio)
{
    area->zoom_out_rect(QRect(0, 0, 99, 224)); // 100 / 400 and 225 / 300
    EXPECT_EQ(0.75F, view->get_zoom());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, zooming_out_to_a_rectangle_does_not_divide_by_the_scaling)
{
    view->set_zoom_scaling(2.0F);
    area->zoom_out_rect(QRect(100, 200, 199, 149)); // a level of 0.5 is a raw zoom of 1
    EXPECT_EQ(1.0F, view->get_zoom());
    EXPECT_EQ(0.5F, take_level());
    EXPECT_EQ(QPoint(100, 200), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, rectangles_of_nothing_are_internal_errors)
{
    const QRect null;
    const QRect empty(5, 5, 10, 0);
    EXPECT_INTERNAL_ERROR(area->zoom_rect(null), "rect.isNull() == false");
    EXPECT_INTERNAL_ERROR(area->zoom_rect(empty), "rect.isEmpty() == false");
    EXPECT_INTERNAL_ERROR(area->zoom_out_rect(null), "rect.isNull() == false");
    EXPECT_INTERNAL_ERROR(area->zoom_out_rect(empty), "rect.isEmpty() == false");
    EXPECT_INTERNAL_ERROR(area->zoom_on_logical_rect(null), "rect.isNull() == false");
    EXPECT_INTERNAL_ERROR(area->zoom_on_logical_rect(empty), "rect.isEmpty() == false");
    EXPECT_INTERNAL_ERROR(area->scroll_to_logical_rect(null), "rect.isNull() == false");
    EXPECT_INTERNAL_ERROR(area->scroll_to_logical_rect(empty), "rect.isEmpty() == false");
    EXPECT_EQ(1.0F, view->get_zoom());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_SETUP_TEST, logical_rectangles_need_a_visible_part)
{
    TOLV_ZOOM_SCROLL_AREA area;
    area.setFrameShape(QFrame::NoFrame);
    area.verticalScrollBar()->setFixedWidth(20);
    area.horizontalScrollBar()->setFixedHeight(30);
    auto* const view = new TOLV_VIEW;
    view->set_logical_size(QRect(0, 0, 100, 100));
    area.set_view(view, false);
    const char* const text = "max_size.width() > 0 && max_size.height() > 0";
    area.resize(20, 100);
    EXPECT_INTERNAL_ERROR(area.zoom_on_logical_rect(QRect(0, 0, 10, 10)), text);
    area.resize(100, 30);
    EXPECT_INTERNAL_ERROR(area.zoom_on_logical_rect(QRect(0, 0, 10, 10)), text);
    area.scroll_to_logical_rect(QRect(0, 0, 10, 10));
    area.resize(0, 30);
    EXPECT_INTERNAL_ERROR(area.scroll_to_logical_rect(QRect(0, 0, 10, 10)), text);
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_SETUP_TEST, an_area_squeezed_to_nothing_survives_all_commands)
{
    TOLV_ZOOM_SCROLL_AREA area;
    auto* const view = new PROBE_VIEW;
    view->set_logical_size(QRect(0, 0, 100, 100));
    view->selected = QRect(10, 10, 5, 5);
    area.set_view(view, false);
    area.resize(0, 0);
    ASSERT_LT(area.maximumViewportSize().width(), 0); // the frame takes more than there is
    area.zoom_fit();
    EXPECT_EQ(view->get_zoom_min(), view->get_zoom());
    area.zoom_in();
    area.zoom_selected();
    area.zoom_out();
    area.zoom_out_rect(QRect(0, 0, 10, 10));
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_SETUP_TEST, bars_that_were_never_shown_count_with_the_size_that_they_would_have)
{
    const TOLV_ZOOM_SCROLL_AREA area;
    EXPECT_EQ(area.verticalScrollBar()->sizeHint().width(), area.verticalScrollBar()->width());
    EXPECT_EQ(area.horizontalScrollBar()->sizeHint().height(), area.horizontalScrollBar()->height());
}

// ---- Selection ------------------------------------------------------------------------------------------------------

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, nothing_selected_is_nothing_to_zoom_to)
{
    for (const QRect& rect : {QRect(), QRect(QPoint(10, 10), QPoint(9, 20)), QRect(QPoint(10, 10), QPoint(20, 8))})
    {
        view->selected = rect;
        area->zoom_selected();
    }
    EXPECT_EQ(0, levels->count());
    EXPECT_EQ(1.0F, view->get_zoom());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, the_selection_is_zoomed_to_as_a_rectangle)
{
    view->selected = QRect(100, 200, 100, 86);
    area->zoom_selected();
    EXPECT_EQ(3.5F, take_level());
    EXPECT_EQ(QPoint(335, 710), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, a_selection_too_small_for_a_pixel_is_zoomed_in_on_first)
{
    view->set_logical_size(QRect(0, 0, 1000000, 1000000));
    view->set_zoom(0.001F);
    view->selected = QRect(500000, 500000, 1, 1);
    GUI_DRIVER::process_posted();
    area->zoom_selected();
    ASSERT_EQ(2, levels->count()); // by 1.1 / 0.001, then to the rectangle
    EXPECT_FLOAT_EQ(1.1F, levels->at(0).at(0).toFloat());
    EXPECT_EQ(16.0F, levels->at(1).at(0).toFloat()); // 301, but for 16777215 / 1000000
    GUI_DRIVER::process_posted();
    const QPoint middle = view->get_physical(QPoint(500000, 500000)) - values();
    EXPECT_NEAR(190, middle.x(), 16);
    EXPECT_NEAR(140, middle.y(), 16);
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, the_step_towards_a_small_selection_is_a_running_value)
{
    view->set_logical_size(QRect(0, 0, 1000000, 1000000));
    view->set_zoom_scaling(0.1F);
    view->set_min(0.001F);
    view->set_max(16.0F);
    view->set_zoom(0.01F); // raw 0.001
    view->selected = QRect(500000, 500000, 1, 1);
    GUI_DRIVER::process_posted();
    area->zoom_selected();
    ASSERT_EQ(3, levels->count());
    EXPECT_FLOAT_EQ(1.1F, levels->at(0).at(0).toFloat());       // by 1.1 / 0.01 = 110, to a raw 0.11
    EXPECT_NEAR(110.0F, levels->at(1).at(0).toFloat(), 0.001F); // by 110 / 1.1 = 100
    EXPECT_FLOAT_EQ(160.0F, levels->at(2).at(0).toFloat());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, steps_that_would_go_to_and_fro_for_ever_come_to_an_end)
{
    view->set_logical_size(QRect(0, 0, 1000000, 1000000));
    view->set_zoom_scaling(0.0001F);
    view->set_max(16.0F);
    view->set_zoom(10.0F); // raw 0.001
    view->selected = QRect(500000, 500000, 1, 1);
    GUI_DRIVER::process_posted();
    area->zoom_selected();
    EXPECT_TRUE(view->get_physical(view->selected).isValid());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, a_maximum_too_low_for_the_selection_comes_to_an_end)
{
    view->selected = QRect(500, 500, 1, 1);
    view->set_max(0.3F);
    view->set_zoom(0.2F);
    area->zoom_selected();
    EXPECT_EQ(0.3F, view->get_zoom());
}

// ---- Coordinates ----------------------------------------------------------------------------------------------------

TEST_F(TOLV_ZOOM_SCROLL_AREA_TEST, a_point_of_the_area_is_moved_by_the_bars)
{
    scroll_to(100, 200);
    EXPECT_EQ(QPoint(107, 208), area->map_coord_from_scroll_area_to_view(QPoint(7, 8)));
}
