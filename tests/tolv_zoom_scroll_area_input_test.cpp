#include "input_script.h"
#include "tolv_zoom_fixture.h"

#include <QActionGroup>
#include <QApplication>
#include <QMap>
#include <QMimeData>

namespace
{
class TOLV_ZOOM_SCROLL_AREA_INPUT_TEST : public ZOOM_TEST
{
protected:
    bool is_pan_tool() const
    {
        return action(TOLV_PAN_TOOL_ACTION)->isChecked();
    }
};

/// The same where the tools are in a group, as in a host, and a tool is chosen.
class TOLV_ZOOM_SCROLL_AREA_TOOL_TEST : public TOLV_ZOOM_SCROLL_AREA_INPUT_TEST
{
protected:
    void SetUp() override
    {
        TOLV_ZOOM_SCROLL_AREA_INPUT_TEST::SetUp();
        group = std::make_unique<QActionGroup>(nullptr);
        selection_tool = group->addAction(QStringLiteral("Select"));
        selection_tool->setCheckable(true);
        area->insert_modes(group.get());
        view->setFocusPolicy(Qt::StrongFocus);
        scroll_to(100, 200);
    }
    void TearDown() override
    {
        TOLV_ZOOM_SCROLL_AREA_INPUT_TEST::TearDown();
        group.reset();
    }
    void choose(TOLV_ACTION_ENUM tool)
    {
        action(tool)->trigger();
    }

    std::unique_ptr<QActionGroup> group;
    QAction* selection_tool = nullptr;
};
} // namespace

// ---- Keys -----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_ZOOM_SCROLL_AREA_INPUT_TEST, arrows_scroll_when_they_are_released)
{
    scroll_to(100, 200);
    GUI_DRIVER::key_press(area.get(), Qt::Key_Right);
    EXPECT_EQ(QPoint(100, 200), values());
    GUI_DRIVER::key_release(area.get(), Qt::Key_Right);
    EXPECT_EQ(QPoint(160, 200), values());
    GUI_DRIVER::key_click(area.get(), Qt::Key_Down);
    EXPECT_EQ(QPoint(160, 260), values());
    GUI_DRIVER::key_click(area.get(), Qt::Key_Left);
    EXPECT_EQ(QPoint(100, 260), values());
    GUI_DRIVER::key_click(area.get(), Qt::Key_Up);
    EXPECT_EQ(QPoint(100, 200), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_INPUT_TEST, a_key_that_is_held_scrolls_once)
{
    GUI_DRIVER::focus(area.get());
    for (int i = 0; i < 5; ++i) // what a window system sends meanwhile
    {
        QKeyEvent release(QEvent::KeyRelease, Qt::Key_Down, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(area.get(), &release);
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(area.get(), &press);
    }
    EXPECT_EQ(QPoint(0, 0), values());
    GUI_DRIVER::key_click(area.get(), Qt::Key_Down);
    EXPECT_EQ(QPoint(0, 60), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_INPUT_TEST, page_keys_scroll_a_page_and_with_shift_to_the_side)
{
    GUI_DRIVER::key_click(area.get(), Qt::Key_PageDown);
    EXPECT_EQ(QPoint(0, 280), values());
    GUI_DRIVER::key_click(area.get(), Qt::Key_PageDown, Qt::ShiftModifier);
    EXPECT_EQ(QPoint(380, 280), values());
    GUI_DRIVER::key_click(area.get(), Qt::Key_PageUp);
    EXPECT_EQ(QPoint(380, 0), values());
    GUI_DRIVER::key_click(area.get(), Qt::Key_PageUp, Qt::ShiftModifier);
    EXPECT_EQ(QPoint(0, 0), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_INPUT_TEST, keys_that_scroll_let_the_view_feel_a_move_and_others_do_nothing)
{
    GUI_DRIVER::focus(area.get());
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown})
    {
        take_moves();
        GUI_DRIVER::key_click(area.get(), key);
        EXPECT_EQ(1, take_moves()) << key;
    }
    scroll_to(100, 200);
    GUI_DRIVER::process_posted();
    take_moves();
    for (const Qt::Key key : {Qt::Key_Home, Qt::Key_End, Qt::Key_A, Qt::Key_Shift, Qt::Key_Control, Qt::Key_Space})
        GUI_DRIVER::key_click(area.get(), key);
    EXPECT_EQ(QPoint(100, 200), values());
    EXPECT_EQ(0, take_moves());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_INPUT_TEST, keys_of_no_use_here_reach_the_surroundings)
{
    class PARENT : public QWidget
    {
    public:
        QList<int> keys;

    protected:
        void keyPressEvent(QKeyEvent* event) override
        {
            keys << event->key();
        }
        void keyReleaseEvent(QKeyEvent* event) override
        {
            keys << -event->key();
        }
    };
    PARENT parent;
    parent.resize(200, 200);
    TOLV_ZOOM_SCROLL_AREA inner(&parent);
    inner.setGeometry(0, 0, 200, 200);
    inner.set_view(new TOLV_VIEW, false);
    ASSERT_TRUE(GUI_DRIVER::show(&parent));
    GUI_DRIVER::key_click(&inner, Qt::Key_Escape);
    GUI_DRIVER::key_click(&inner, Qt::Key_Down);
    GUI_DRIVER::key_click(&inner, Qt::Key_PageUp);
    EXPECT_EQ(QList<int>() << int(Qt::Key_Escape) << -int(Qt::Key_Escape), parent.keys);
}

// ---- Tools and cursors ----------------------------------------------------------------------------------------------

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, choosing_a_tool_sets_its_cursor)
{
    choose(TOLV_ZOOM_TOOL_ACTION);
    EXPECT_TRUE(has_cursor(TOLV_ZOOM_IN_CURSOR));
    choose(TOLV_PAN_TOOL_ACTION);
    EXPECT_EQ(Qt::OpenHandCursor, view->cursor().shape());
    choose(TOLV_MAGNIFYING_TOOL_ACTION);
    EXPECT_TRUE(has_cursor(TOLV_MAGNIFYING_CURSOR));
    selection_tool->trigger();
    EXPECT_TRUE(has_cursor(TOLV_MAGNIFYING_CURSOR)); // left alone
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, the_zoom_tool_shows_zooming_out_while_shift_is_down)
{
    choose(TOLV_ZOOM_TOOL_ACTION);
    GUI_DRIVER::key_press(view, Qt::Key_Shift);
    EXPECT_TRUE(has_cursor(TOLV_ZOOM_OUT_CURSOR));
    take_moves();
    GUI_DRIVER::key_release(view, Qt::Key_Shift);
    EXPECT_TRUE(has_cursor(TOLV_ZOOM_IN_CURSOR));
    EXPECT_EQ(1, take_moves());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, shift_shows_nothing_where_there_is_no_zoom_tool)
{
    for (const bool pans : {false, true})
    {
        pans ? choose(TOLV_PAN_TOOL_ACTION) : selection_tool->trigger();
        view->setCursor(Qt::IBeamCursor);
        take_moves();
        GUI_DRIVER::key_press(area.get(), Qt::Key_Shift);
        EXPECT_EQ(Qt::IBeamCursor, view->cursor().shape());
        GUI_DRIVER::key_release(area.get(), Qt::Key_Shift);
        EXPECT_EQ(Qt::IBeamCursor, view->cursor().shape());
        EXPECT_EQ(0, take_moves());
    }
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, the_zoom_tool_chosen_with_shift_down_zooms_out)
{
    GUI_DRIVER::key_press(view, Qt::Key_A, Qt::ShiftModifier);
    ASSERT_TRUE(QGuiApplication::keyboardModifiers().testFlag(Qt::ShiftModifier));
    choose(TOLV_ZOOM_TOOL_ACTION);
    EXPECT_TRUE(has_cursor(TOLV_ZOOM_OUT_CURSOR));
    GUI_DRIVER::key_release(view, Qt::Key_A);
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, the_zoom_tool_keeps_presses_of_keys_from_the_view)
{
    choose(TOLV_ZOOM_TOOL_ACTION);
    view->seen.clear();
    GUI_DRIVER::key_click(view, Qt::Key_Right);
    EXPECT_FALSE(view->seen.contains(QEvent::KeyPress));
    EXPECT_TRUE(view->seen.contains(QEvent::KeyRelease));
    EXPECT_EQ(QPoint(160, 200), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, a_double_click_of_the_zoom_tool_zooms_a_step)
{
    choose(TOLV_ZOOM_TOOL_ACTION);
    const auto double_click = [this](Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
    {
        const QPoint point = in_view(60, 80);
        QMouseEvent event(QEvent::MouseButtonDblClick, point, view->mapToGlobal(point), button, button, modifiers);
        QCoreApplication::sendEvent(view, &event);
        const QPoint after = values();
        GUI_DRIVER::process_posted();
        return after;
    };
    EXPECT_EQ(QPoint(140, 270), double_click(Qt::LeftButton, Qt::NoModifier)); // (160, 280) * 1.25 - (60, 80)
    EXPECT_EQ(1.25F, view->get_zoom());
    EXPECT_TRUE(has_cursor(TOLV_ZOOM_IN_CURSOR));
    EXPECT_EQ(QPoint(100, 200), double_click(Qt::RightButton, Qt::NoModifier));
    EXPECT_FLOAT_EQ(1.0F, view->get_zoom());
    EXPECT_TRUE(has_cursor(TOLV_ZOOM_OUT_CURSOR));
    double_click(Qt::RightButton, Qt::ShiftModifier);
    EXPECT_EQ(1.25F, view->get_zoom());
    double_click(Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_FLOAT_EQ(1.0F, view->get_zoom());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, a_double_click_leaves_the_pointer_on_its_point)
{
    choose(TOLV_ZOOM_TOOL_ACTION);
    const auto double_click = [this](const QPoint& start, Qt::MouseButton button)
    {
        INPUT_SCRIPT script;
        script.then([=] { GUI_DRIVER::press(view, start, button); });
        script.then([=] { GUI_DRIVER::release(view, start, button); });
        EXPECT_TRUE(script.run());
        const QPoint point = view->mapFromGlobal(QCursor::pos());
        QMouseEvent event(QEvent::MouseButtonDblClick, point, view->mapToGlobal(point), button, button, Qt::NoModifier);
        QCoreApplication::sendEvent(view, &event);
        GUI_DRIVER::process_posted();
    };
    double_click(in_view(60, 80), Qt::LeftButton);
    EXPECT_EQ(1.5625F, view->get_zoom());
    EXPECT_EQ(QPoint(160, 280), view->get_logical(view->mapFromGlobal(QCursor::pos())));
    view->set_zoom(1.0F);
    GUI_DRIVER::process_posted();
    scroll_to(0, 0); // from where the drawing cannot be scrolled along
    double_click(QPoint(200, 150), Qt::RightButton);
    EXPECT_FLOAT_EQ(0.64F, view->get_zoom());
    EXPECT_EQ(QPoint(0, 0), values());
    EXPECT_EQ(view->get_physical(QPoint(200, 150)), view->mapFromGlobal(QCursor::pos()));
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, each_tool_leaves_to_the_view_what_it_has_no_use_for)
{
    const auto reaches_view = [this](QEvent::Type type)
    {
        view->seen.clear();
        if (type == QEvent::ContextMenu)
        {
            QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(1, 1));
            QCoreApplication::sendEvent(view, &event);
        }
        else if (type == QEvent::KeyPress || type == QEvent::KeyRelease)
        {
            QKeyEvent event(type, Qt::Key_F5, Qt::NoModifier);
            QCoreApplication::sendEvent(view, &event);
        }
        else
        {
            QMouseEvent event(type, QPointF(1, 1), Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(view, &event);
        }
        return view->seen.contains(type);
    };
    const QList<QEvent::Type> types = {QEvent::MouseMove,   QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick,
                                       QEvent::ContextMenu, QEvent::KeyPress,           QEvent::KeyRelease};
    const QMap<TOLV_ACTION_ENUM, QList<bool>> expected = {
        {TOLV_ZOOM_TOOL_ACTION, {true, false, false, false, false, true}},
        {TOLV_PAN_TOOL_ACTION, {false, false, true, false, true, true}},
        {TOLV_MAGNIFYING_TOOL_ACTION, {true, false, true, true, true, true}}};
    for (auto it = expected.begin(); it != expected.end(); ++it)
    {
        choose(it.key());
        for (int i = 0; i < types.size(); ++i)
            EXPECT_EQ(it.value().at(i), reaches_view(types.at(i))) << it.key() << " " << types.at(i);
    }
    selection_tool->trigger();
    for (const QEvent::Type type : types)
        EXPECT_TRUE(reaches_view(type)) << type;
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, the_zoom_tool_takes_releases_and_context_menus)
{
    choose(TOLV_ZOOM_TOOL_ACTION);
    view->seen.clear();
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(1, 1), Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view, &release);
    QContextMenuEvent menu(QContextMenuEvent::Mouse, QPoint(1, 1));
    QCoreApplication::sendEvent(view, &menu);
    EXPECT_TRUE(view->seen.isEmpty());
    GUI_DRIVER::hover(view, in_view(10, 10));
    EXPECT_TRUE(view->seen.contains(QEvent::MouseMove));
}

// ---- Pan ------------------------------------------------------------------------------------------------------------

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, the_pan_tool_drags_the_content_along)
{
    choose(TOLV_PAN_TOOL_ACTION);
    view->seen.clear();
    const QPoint start = in_view(200, 150);
    const QPoint grabbed = view->mapToGlobal(start);
    GUI_DRIVER::press(view, start);
    EXPECT_EQ(Qt::ClosedHandCursor, view->cursor().shape());
    GUI_DRIVER::move_to(view, start - QPoint(37, 21));
    EXPECT_EQ(QPoint(137, 221), values());
    EXPECT_EQ(start, view->mapFromGlobal(grabbed - QPoint(37, 21))); // the content is where it was grabbed
    GUI_DRIVER::move_to(view, start + QPoint(50, 60));               // (13, 39) to the right and below of the press
    EXPECT_EQ(QPoint(87, 161), values());
    EXPECT_EQ(start, view->mapFromGlobal(grabbed + QPoint(13, 39)));
    GUI_DRIVER::release(view, start);
    EXPECT_EQ(Qt::OpenHandCursor, view->cursor().shape());
    GUI_DRIVER::hover(view, in_view(20, 20));
    EXPECT_EQ(QPoint(87, 161), values());
    EXPECT_TRUE(view->seen.isEmpty());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, the_pan_tool_follows_a_drag_of_many_moves)
{
    choose(TOLV_PAN_TOOL_ACTION);
    GUI_DRIVER::drag(view, in_view(200, 150), in_view(120, 110));
    EXPECT_EQ(QPoint(180, 240), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, other_buttons_do_not_pan_but_are_taken)
{
    choose(TOLV_PAN_TOOL_ACTION);
    view->seen.clear();
    GUI_DRIVER::drag(view, in_view(200, 150), in_view(120, 110), Qt::RightButton);
    GUI_DRIVER::drag(view, in_view(200, 150), in_view(120, 110), Qt::MiddleButton);
    QContextMenuEvent menu(QContextMenuEvent::Mouse, QPoint(1, 1));
    QCoreApplication::sendEvent(view, &menu);
    EXPECT_EQ(QPoint(100, 200), values());
    EXPECT_TRUE(view->seen.isEmpty());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, a_host_can_pan_by_its_own_events)
{
    EXPECT_TRUE(area->pan_view(QEvent::MouseButtonPress, QPoint(500, 500)));
    EXPECT_EQ(Qt::ClosedHandCursor, view->cursor().shape());
    EXPECT_TRUE(area->pan_view(QEvent::MouseMove, QPoint(480, 510)));
    EXPECT_EQ(QPoint(120, 190), values());
    EXPECT_TRUE(area->pan_view(QEvent::MouseButtonRelease, QPoint(480, 510)));
    EXPECT_TRUE(area->pan_view(QEvent::MouseMove, QPoint(400, 400)));
    EXPECT_EQ(QPoint(120, 190), values());
    EXPECT_TRUE(area->pan_view(QEvent::ContextMenu, QPoint(), Qt::RightButton));
    EXPECT_FALSE(area->pan_view(QEvent::MouseButtonDblClick, QPoint(400, 400)));
    EXPECT_FALSE(area->pan_view(QEvent::Wheel, QPoint(400, 400)));
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, control_and_shift_pan_for_the_time_being)
{
    for (const Qt::Key key : {Qt::Key_Shift, Qt::Key_Control})
    {
        selection_tool->trigger();
        scroll_to(100, 200);
        const QSignalSpy off(area.get(), SIGNAL(pan_mode_off()));
        GUI_DRIVER::focus(view);
        GUI_DRIVER::drag(view, in_view(200, 150), in_view(120, 110), Qt::LeftButton,
                         Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_TRUE(is_pan_tool());
        EXPECT_EQ(QPoint(180, 240), values());
        EXPECT_EQ(0, off.count());
        GUI_DRIVER::key_release(view, key); // and no other key
        EXPECT_FALSE(is_pan_tool()) << key;
        EXPECT_EQ(1, off.count());
        GUI_DRIVER::key_release(view, key);
        EXPECT_EQ(1, off.count());
    }
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, the_pan_for_the_time_being_ends_wherever_the_keys_go)
{
    view->setFocusPolicy(Qt::NoFocus); // keys go to the area
    const QSignalSpy off(area.get(), SIGNAL(pan_mode_off()));
    GUI_DRIVER::click(view, in_view(200, 150), Qt::LeftButton, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_TRUE(is_pan_tool());
    GUI_DRIVER::key_release(area.get(), Qt::Key_Control);
    EXPECT_FALSE(is_pan_tool());
    EXPECT_EQ(1, off.count());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, a_pan_that_its_keys_end_in_the_middle_is_over_for_good)
{
    const QPoint start = in_view(200, 150);
    GUI_DRIVER::focus(view);
    GUI_DRIVER::press(view, start, Qt::LeftButton, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_TRUE(is_pan_tool());
    GUI_DRIVER::key_release(view, Qt::Key_Control);
    EXPECT_FALSE(is_pan_tool());
    GUI_DRIVER::move_to(view, start - QPoint(30, 40));
    GUI_DRIVER::release(view, start - QPoint(30, 40));
    EXPECT_EQ(QPoint(100, 200), values());
    choose(TOLV_PAN_TOOL_ACTION);
    GUI_DRIVER::hover(view, in_view(120, 110));
    EXPECT_EQ(QPoint(100, 200), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, a_pan_ends_where_another_tool_is_chosen_in_the_middle)
{
    choose(TOLV_PAN_TOOL_ACTION);
    GUI_DRIVER::press(view, in_view(200, 150));
    selection_tool->trigger(); // by a shortcut
    GUI_DRIVER::release(view, in_view(200, 150));
    choose(TOLV_PAN_TOOL_ACTION);
    GUI_DRIVER::hover(view, in_view(120, 110));
    EXPECT_EQ(QPoint(100, 200), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, a_pan_ends_with_the_view_hidden_in_the_middle)
{
    choose(TOLV_PAN_TOOL_ACTION);
    GUI_DRIVER::press(view, in_view(200, 150));
    view->hide();
    GUI_DRIVER::release(area.get(), QPoint(200, 150));
    view->show();
    EXPECT_EQ(Qt::OpenHandCursor, view->cursor().shape());
    const QPoint before = values();
    GUI_DRIVER::hover(view, in_view(120, 110));
    EXPECT_EQ(before, values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, a_pan_ends_with_its_view)
{
    choose(TOLV_PAN_TOOL_ACTION);
    GUI_DRIVER::press(view, in_view(200, 150));
    delete view;
    GUI_DRIVER::release(area.get(), QPoint(200, 150));
    auto* const other = new PROBE_VIEW;
    other->setMouseTracking(true);
    other->set_logical_size(QRect(0, 0, 1000, 1000));
    area->set_view(other, false);
    other->show();
    GUI_DRIVER::process_posted();
    scroll_to(100, 200);
    GUI_DRIVER::hover(other, in_view(120, 110));
    EXPECT_EQ(QPoint(100, 200), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, control_or_shift_alone_does_not_pan)
{
    for (const Qt::KeyboardModifiers modifiers :
         {Qt::KeyboardModifiers(Qt::ControlModifier), Qt::KeyboardModifiers(Qt::ShiftModifier)})
    {
        GUI_DRIVER::click(view, in_view(200, 150), Qt::LeftButton, modifiers);
        EXPECT_FALSE(is_pan_tool());
    }
    GUI_DRIVER::click(view, in_view(200, 150), Qt::MiddleButton, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_FALSE(is_pan_tool());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, releases_of_other_keys_keep_the_pan_tool)
{
    choose(TOLV_PAN_TOOL_ACTION);
    GUI_DRIVER::key_click(view, Qt::Key_A);
    EXPECT_TRUE(is_pan_tool());
}

// ---- No tool --------------------------------------------------------------------------------------------------------

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, without_a_tool_and_gestures_the_view_gets_its_presses)
{
    view->seen.clear();
    GUI_DRIVER::click(view, in_view(50, 50));
    EXPECT_TRUE(view->seen.contains(QEvent::MouseButtonPress));
    EXPECT_TRUE(view->seen.contains(QEvent::MouseButtonRelease));
    EXPECT_TRUE(view->plain_presses.isEmpty());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, a_press_that_is_no_stroke_is_handed_to_the_view)
{
    view->supports_gestures = true;
    view->seen.clear();
    GUI_DRIVER::click(view, in_view(50, 60), Qt::RightButton);
    GUI_DRIVER::click(view, in_view(51, 61), Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(QList<QPoint>() << in_view(50, 60) << in_view(51, 61), view->plain_presses);
    EXPECT_FALSE(view->seen.contains(QEvent::MouseButtonPress));
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, a_click_where_strokes_are_supported_is_handed_to_the_view)
{
    view->supports_gestures = true;
    INPUT_SCRIPT script;
    script.then([=] { GUI_DRIVER::press(view, in_view(50, 60)); });
    script.then([=] { GUI_DRIVER::release(view, in_view(50, 60)); });
    EXPECT_TRUE(script.run());
    EXPECT_EQ(QList<QPoint>() << in_view(50, 60), view->plain_presses);
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, the_view_says_where_strokes_are_supported_except_for_two_tools)
{
    EXPECT_FALSE(area->current_mode_supports_mouse_gesture(QPoint()));
    view->supports_gestures = true;
    EXPECT_TRUE(area->current_mode_supports_mouse_gesture(QPoint()));
    choose(TOLV_ZOOM_TOOL_ACTION);
    EXPECT_TRUE(area->current_mode_supports_mouse_gesture(QPoint()));
    choose(TOLV_PAN_TOOL_ACTION);
    EXPECT_FALSE(area->current_mode_supports_mouse_gesture(QPoint()));
    choose(TOLV_MAGNIFYING_TOOL_ACTION);
    EXPECT_FALSE(area->current_mode_supports_mouse_gesture(QPoint()));
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_TOOL_TEST, data_dragged_near_the_edge_scrolls)
{
    view->setAcceptDrops(true);
    QMimeData data;
    data.setText(QStringLiteral("clk"));
    GUI_DRIVER::drop(view, in_view(370, 150), &data); // 50 pixels beyond (470, 350) are to be visible
    EXPECT_EQ(QPoint(470 + 50 - 380, 200), values());
    scroll_to(100, 200);
    GUI_DRIVER::drop(view, in_view(190, 270), &data); // beyond (290, 470)
    EXPECT_EQ(QPoint(100, 470 + 50 - 280), values());
    scroll_to(100, 200);
    area->set_scroll_on_drag_move(false);
    EXPECT_FALSE(area->is_scroll_on_drag_move());
    GUI_DRIVER::drop(view, in_view(370, 270), &data);
    EXPECT_EQ(QPoint(100, 200), values());
    area->set_scroll_on_drag_move(true);
    choose(TOLV_PAN_TOOL_ACTION);
    GUI_DRIVER::drop(view, in_view(370, 270), &data);
    EXPECT_EQ(QPoint(100, 200), values());
}
