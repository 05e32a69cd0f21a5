#include "tolv_magnifying_glass_widget.h"
#include "tolv_mouse_gesture_widget.h"
#include "tolv_zoom_drag.h"
#include "tolv_zoom_overlay_fixture.h"

#include <QAction>
#include <QApplication>
#include <QRubberBand>

namespace
{
/// The interactions as a scroll area begins them, by its tools.
class TOLV_MOUSE_GESTURE_TOOLS_TEST : public TOLV_ZOOM_OVERLAY_TEST
{
protected:
    void SetUp() override
    {
        TOLV_ZOOM_OVERLAY_TEST::SetUp();
        area->set_view(view, false);
    }

    void choose(TOLV_ACTION_ENUM tool)
    {
        area->get_action(tool)->setChecked(true);
    }

    /// Presses, moves and releases, by real input.
    QStringList drag(const QPoint& from, const QPoint& to, Qt::MouseButton button,
                     Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        area->commands.clear();
        view->commands.clear();
        INPUT_SCRIPT script;
        script.then([=] { GUI_DRIVER::press(view, from, button, modifiers); })
            .then([=] { GUI_DRIVER::move_to(view, to, modifiers); })
            .then([=] { GUI_DRIVER::release(view, to, button, modifiers); });
        EXPECT_TRUE(script.run());
        EXPECT_EQ(nullptr, get_overlay());
        return area->commands + view->commands;
    }

    /// Whatever lies over the view.
    QWidget* get_overlay() const
    {
        for (const auto* const owner : {static_cast<QWidget*>(area.get()), static_cast<QWidget*>(view)})
            for (QWidget* const child : owner->findChildren<QWidget*>())
                if (dynamic_cast<TOLV_MOUSE_GESTURE_WIDGET*>(child) != nullptr ||
                    dynamic_cast<TOLV_ZOOM_DRAG_WIDGET*>(child) != nullptr ||
                    dynamic_cast<TOLV_MAGNIFYING_GLASS_WIDGET*>(child) != nullptr ||
                    dynamic_cast<QRubberBand*>(child) != nullptr)
                    return child;
        return nullptr;
    }
};

QStringList one(const char* text)
{
    return {QString::fromLatin1(text)};
}
} // namespace

TEST_F(TOLV_MOUSE_GESTURE_TOOLS_TEST, the_zoom_tool_reads_strokes_of_the_left_button)
{
    choose(TOLV_ZOOM_TOOL_ACTION);
    EXPECT_EQ(one("out 1.25"), drag(QPoint(100, 300), QPoint(160, 200), Qt::LeftButton));
    EXPECT_EQ(one("rect 100 110 101 51"), drag(QPoint(100, 110), QPoint(200, 160), Qt::LeftButton));
    EXPECT_EQ(one("fit"), drag(QPoint(300, 100), QPoint(200, 150), Qt::LeftButton));
    EXPECT_EQ(one("in 1.1"), drag(QPoint(300, 300), QPoint(200, 250), Qt::LeftButton));
}

TEST_F(TOLV_MOUSE_GESTURE_TOOLS_TEST, the_zoom_tool_reads_drags_of_the_right_button)
{
    choose(TOLV_ZOOM_TOOL_ACTION);
    EXPECT_EQ(one("in 1.1"), drag(QPoint(300, 200), QPoint(300, 150), Qt::RightButton));
    EXPECT_EQ(one("out 1.25"), drag(QPoint(300, 200), QPoint(300, 300), Qt::RightButton));
}

TEST_F(TOLV_MOUSE_GESTURE_TOOLS_TEST, a_press_of_the_right_button_without_a_drag_zooms_out_by_a_step)
{
    choose(TOLV_ZOOM_TOOL_ACTION);
    EXPECT_EQ(one("out 1.25 at a point"), drag(QPoint(300, 200), QPoint(300, 200), Qt::RightButton));
}

TEST_F(TOLV_MOUSE_GESTURE_TOOLS_TEST, a_press_with_control_without_a_drag_zooms_in_by_a_step)
{
    choose(TOLV_ZOOM_TOOL_ACTION);
    EXPECT_EQ(one("in 1.25 at a point"), drag(QPoint(300, 200), QPoint(300, 100), Qt::LeftButton, Qt::ControlModifier));
}

TEST_F(TOLV_MOUSE_GESTURE_TOOLS_TEST, a_second_button_begins_nothing_inside_of_a_stroke)
{
    choose(TOLV_ZOOM_TOOL_ACTION);
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(view, QPoint(300, 300)); })
        .then([&] { GUI_DRIVER::move_to(view, QPoint(200, 200)); })
        .then([&] { GUI_DRIVER::press(view, QPoint(200, 200), Qt::RightButton); })
        .then([&] { EXPECT_EQ(nullptr, get_overlay()); })
        .then([&] { GUI_DRIVER::release(view, QPoint(190, 190), Qt::RightButton); })
        .then([&] { GUI_DRIVER::release(view, QPoint(180, 180)); });
    EXPECT_TRUE(script.run());
    EXPECT_EQ(QStringList(), area->commands);
}

TEST_F(TOLV_MOUSE_GESTURE_TOOLS_TEST, a_second_button_begins_nothing_inside_of_a_zoom_drag)
{
    choose(TOLV_ZOOM_TOOL_ACTION);
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(view, QPoint(300, 200), Qt::RightButton); })
        .then([&] { GUI_DRIVER::move_to(view, QPoint(300, 150)); })
        .then([&] { GUI_DRIVER::press(view, QPoint(300, 150)); })
        .then([&] { EXPECT_EQ(nullptr, view->findChild<TOLV_MOUSE_GESTURE_WIDGET*>()); })
        .then([&] { GUI_DRIVER::release(view, QPoint(300, 100), Qt::RightButton); })
        .then([&] { GUI_DRIVER::release(view, QPoint(300, 100)); });
    EXPECT_TRUE(script.run());
    EXPECT_EQ(nullptr, get_overlay());
    EXPECT_EQ(one("in 1.1"), area->commands);
}

TEST_F(TOLV_MOUSE_GESTURE_TOOLS_TEST, without_a_tool_a_view_that_wants_them_gets_selecting_strokes)
{
    view->supports_gestures = true;
    EXPECT_EQ(one("select 100 110 101 51 to 200 160"), drag(QPoint(100, 110), QPoint(200, 160), Qt::LeftButton));
    EXPECT_EQ(one("click 1"), drag(QPoint(100, 110), QPoint(105, 112), Qt::LeftButton));
    EXPECT_EQ(one("click 2"), drag(QPoint(100, 110), QPoint(200, 160), Qt::RightButton)); // its own press
    view->supports_gestures = false;
    EXPECT_EQ(QStringList(), drag(QPoint(100, 110), QPoint(200, 160), Qt::LeftButton));
}

TEST_F(TOLV_MOUSE_GESTURE_TOOLS_TEST, the_magnifying_tool_shows_the_lens)
{
    choose(TOLV_MAGNIFYING_TOOL_ACTION);
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(view, QPoint(250, 200)); })
        .then([&] { EXPECT_NE(nullptr, area->findChild<TOLV_MAGNIFYING_GLASS_WIDGET*>()); })
        .then([&] { GUI_DRIVER::release(view, QPoint(200, 100)); });
    EXPECT_TRUE(script.run());
    EXPECT_EQ(nullptr, get_overlay());
}

TEST_F(TOLV_MOUSE_GESTURE_TOOLS_TEST, escape_ends_the_rectangle_to_zoom_out_to)
{
    choose(TOLV_ZOOM_TOOL_ACTION);
    ASSERT_TRUE(GUI_DRIVER::focus(area.get())); // the view itself takes no focus
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(view, QPoint(100, 100), Qt::LeftButton, Qt::ShiftModifier); })
        .then([&] { GUI_DRIVER::move_to(view, QPoint(200, 200), Qt::ShiftModifier); })
        .then([&] { EXPECT_NE(nullptr, view->findChild<QRubberBand*>()); })
        .then([&] { GUI_DRIVER::key_click(area.get(), Qt::Key_Escape); })
        .then([&] { EXPECT_EQ(nullptr, view->findChild<QRubberBand*>()); });
    EXPECT_TRUE(script.run());
    EXPECT_EQ(nullptr, get_overlay());
}

TEST_F(TOLV_MOUSE_GESTURE_TOOLS_TEST, every_interaction_of_the_tools_survives_the_end_of_its_view)
{
    struct INTERACTION
    {
        TOLV_ACTION_ENUM tool;
        Qt::MouseButton button;
        Qt::KeyboardModifiers modifiers;
    };
    const std::vector<INTERACTION> interactions = {
        {TOLV_ZOOM_TOOL_ACTION, Qt::LeftButton, Qt::NoModifier},    // stroke
        {TOLV_ZOOM_TOOL_ACTION, Qt::RightButton, Qt::NoModifier},   // zoom drag
        {TOLV_ZOOM_TOOL_ACTION, Qt::LeftButton, Qt::ShiftModifier}, // rectangle
        {TOLV_MAGNIFYING_TOOL_ACTION, Qt::LeftButton, Qt::NoModifier},
        {TOLV_ACTION_NONE, Qt::LeftButton, Qt::NoModifier}, // selecting stroke
    };
    for (const INTERACTION& interaction : interactions)
        for_each_way_of_going(
            [&]
            {
                view->supports_gestures = true;
                if (interaction.tool != TOLV_ACTION_NONE)
                    choose(interaction.tool);
            },
            [&](const char* /*way*/)
            {
                // A rectangle that is cancelled counts as a click, also in a view that is to be deleted later.
                if (area != nullptr && interaction.modifiers == Qt::NoModifier)
                {
                    EXPECT_EQ(QStringList(), area->commands);
                }
            },
            {QPoint(300, 300), QPoint(200, 200)}, interaction.button, interaction.modifiers);
}
