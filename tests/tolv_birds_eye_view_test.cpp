#include "input_script.h"
#include "internal_error_trap.h"
#include "picture.h"
#include "tolv_birds_eye_view_fixture.h"
#include "tolv_icon.h"

#include <QGridLayout>

#include <iterator>

// ---- Size and construction ------------------------------------------------------------------------------------------

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, the_overview_has_300_pixels_in_the_longer_direction)
{
    const std::pair<QRect, QSize> sizes[] = {
        {QRect(0, 0, 500, 500), QSize(300, 300)},  {QRect(0, 0, 1000, 500), QSize(300, 150)},
        {QRect(0, 0, 500, 1000), QSize(150, 300)}, {QRect(-70, 30, 7, 3), QSize(300, 128)},
        {QRect(0, 0, 1, 1), QSize(300, 300)},      {QRect(0, 0, 10000, 1), QSize(300, 0)},
        {QRect(5, 5, 100, 3000), QSize(10, 300)},
    };
    for (const auto& [logical, size] : sizes)
    {
        view->set_logical_size(logical);
        EXPECT_EQ(size, body->get_size());
        EXPECT_EQ(size, body->sizeHint());
        EXPECT_EQ(size + QSize(0, 20), dock->get_size());
        EXPECT_EQ(size + QSize(0, 20), dock->sizeHint());
        EXPECT_EQ(QSize(size.width(), 20), dock->findChild<TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET*>()->sizeHint());
    }
}

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, it_is_a_closable_dock_that_qt_neither_moves_nor_floats)
{
    EXPECT_EQ(QStringLiteral("Bird's Eye View"), dock->windowTitle());
    EXPECT_EQ(QDockWidget::DockWidgetFeatures(QDockWidget::DockWidgetClosable), dock->features());
    EXPECT_EQ(15, int(dock->allowedAreas()));
    EXPECT_EQ(body, dock->widget());
    EXPECT_TRUE(dock->autoFillBackground());
    EXPECT_EQ(area.get(), dock->parentWidget());
    EXPECT_NE(nullptr, qobject_cast<TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET*>(dock->titleBarWidget()));
    EXPECT_EQ(nullptr, dock->get_graphics_view_widget());
    EXPECT_EQ(BIRDS_EYE_TOP_LEFT, dock->get_location());
    EXPECT_EQ(17, body->frameStyle());
    EXPECT_EQ(2, body->lineWidth());
    EXPECT_EQ(Qt::ArrowCursor, body->cursor().shape());
    EXPECT_TRUE(body->hasMouseTracking());
}

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, the_title_bar_is_built_as_its_form_says)
{
    auto* const bar = dock->titleBarWidget();
    EXPECT_EQ(QStringLiteral("Title bar"), bar->windowTitle());
    EXPECT_EQ(QSize(100, 20), bar->minimumSize());
    EXPECT_EQ(QSize(300, 20), bar->maximumSize());
    const std::pair<const char*, TOLV_ICON_ENUM> buttons[] = {
        {"m_icon_button", TOLV_BIRDS_EYE_VIEW_ICON},
        {"m_goto_bottom_right_button", TOLV_GOTO_BOTTOM_RIGHT_ICON},
        {"m_goto_bottom_left_button", TOLV_GOTO_BOTTOM_LEFT_ICON},
        {"m_goto_top_right_button", TOLV_GOTO_TOP_RIGHT_ICON},
        {"m_goto_top_left_button", TOLV_GOTO_TOP_LEFT_ICON},
        {"m_goto_top_button", TOLV_GOTO_TOP_ICON},
        {"m_goto_bottom_button", TOLV_GOTO_BOTTOM_ICON},
        {"m_goto_right_button", TOLV_GOTO_ICON},
        {"m_goto_left_button", TOLV_GOTO_LEFT_ICON},
        {"m_close_button", TOLV_CLOSE_PANE_ICON},
    };
    for (const auto& [name, icon] : buttons)
    {
        SCOPED_TRACE(name);
        const QToolButton* const button = get_button(name);
        EXPECT_TRUE(button->autoRaise());
        EXPECT_EQ(QSize(16, 16), button->maximumSize());
        EXPECT_TRUE(expect_same_picture(tolv_get_icon(icon).pixmap(16).toImage(), button->icon().pixmap(16).toImage()));
    }
}

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, the_title_bar_lays_its_buttons_out_in_one_row)
{
    auto* const bar = dock->titleBarWidget();
    const auto* const frame = GUI_DRIVER::find_widget<QFrame>(bar, QStringLiteral("frame"));
    EXPECT_EQ(QSize(100, 20), frame->minimumSize());
    EXPECT_EQ(QSize(300, 20), frame->maximumSize());
    const auto* const outer = qobject_cast<QGridLayout*>(bar->layout());
    const auto* const inner = qobject_cast<QGridLayout*>(frame->layout());
    ASSERT_NE(nullptr, outer);
    ASSERT_NE(nullptr, inner);
    EXPECT_EQ(QStringLiteral("gridLayout_2"), outer->objectName());
    EXPECT_EQ(QMargins(0, 0, 0, 0), outer->contentsMargins());
    EXPECT_EQ(0, outer->spacing());
    EXPECT_EQ(QStringLiteral("gridLayout"), inner->objectName());
    EXPECT_EQ(QMargins(3, 0, 0, 0), inner->contentsMargins());
    EXPECT_EQ(0, inner->spacing());
    const char* const row[] = {"m_icon_button",
                               nullptr,
                               "m_goto_bottom_right_button",
                               "m_goto_bottom_left_button",
                               "m_goto_top_right_button",
                               "m_goto_top_left_button",
                               "m_goto_top_button",
                               "m_goto_bottom_button",
                               "m_goto_right_button",
                               "m_goto_left_button",
                               "m_close_button"};
    EXPECT_EQ(1, inner->rowCount());
    ASSERT_EQ(int(std::size(row)), inner->columnCount());
    for (int i = 0; i < inner->columnCount(); ++i)
    {
        QLayoutItem* const item = inner->itemAtPosition(0, i);
        ASSERT_NE(nullptr, item) << i;
        if (row[i] == nullptr)
        {
            EXPECT_NE(nullptr, item->spacerItem());
            EXPECT_TRUE(item->expandingDirections().testFlag(Qt::Horizontal));
            continue;
        }
        EXPECT_EQ(get_button(row[i]), item->widget());
    }
}

// ---- Showing and closing --------------------------------------------------------------------------------------------

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, it_is_hidden_until_its_action_is_triggered)
{
    QAction* const action = area->get_action(TOLV_BIRDS_EYE_VIEW_ACTION);
    EXPECT_FALSE(dock->isVisible());
    EXPECT_FALSE(action->isChecked());
    open();
    EXPECT_TRUE(dock->isVisible());
    EXPECT_TRUE(action->isChecked());
    EXPECT_EQ(QRect(0, 0, 300, 170), dock->geometry());
    EXPECT_EQ(QRect(0, 20, 300, 150), body->geometry());
}

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, the_action_never_hides_it)
{
    open();
    open();
    EXPECT_TRUE(dock->isVisible());
    EXPECT_TRUE(area->get_action(TOLV_BIRDS_EYE_VIEW_ACTION)->isChecked());
}

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, the_close_button_hides_it_and_unchecks_the_action)
{
    open();
    GUI_DRIVER::click(get_button("m_close_button"));
    EXPECT_FALSE(dock->isVisible());
    EXPECT_FALSE(area->get_action(TOLV_BIRDS_EYE_VIEW_ACTION)->isChecked());
}

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, it_follows_the_proportions_of_the_drawing)
{
    open();
    view->set_logical_size(QRect(0, 0, 500, 1000));
    GUI_DRIVER::process_posted();
    EXPECT_EQ(QRect(0, 0, 150, 320), dock->geometry());
    EXPECT_EQ(QSize(150, 300), body->size());
}

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, an_area_whose_view_is_gone_goes_on)
{
    open();
    delete view;
    GUI_DRIVER::process_posted();
    area->resize(600, 400);
    GUI_DRIVER::process_posted();
    EXPECT_EQ(nullptr, area->get_birds_eye_view()); // it went with the view
    EXPECT_FALSE(render_widget(area.get()).isNull());
}

// ---- Place ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, right_and_bottom_of_the_place_are_exclusive)
{
    open();
    set_bars(Qt::ScrollBarAlwaysOff);
    EXPECT_EQ(QRect(0, 0, 700, 500), dock->get_scroll_area_visible_rect());
    GUI_DRIVER::click(get_button("m_goto_bottom_right_button"));
    EXPECT_EQ(BIRDS_EYE_BOTTOM_RIGHT, dock->get_location());
    EXPECT_EQ(QRect(700 - 1 - 300, 500 - 1 - 170, 300, 170), dock->geometry());
    dock->update_geometry(QRect(10, 20, 401, 301), 200, 100);
    EXPECT_EQ(QPoint(410 - 200, 320 - 100), dock->pos());
}

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, visible_scroll_bars_stay_clear)
{
    open();
    set_bars(Qt::ScrollBarAlwaysOn);
    const int bar_width = area->verticalScrollBar()->width();
    const int bar_height = area->horizontalScrollBar()->height();
    EXPECT_EQ(QRect(0, 0, 700 - bar_width, 500 - bar_height), dock->get_scroll_area_visible_rect());
    GUI_DRIVER::click(get_button("m_goto_bottom_right_button"));
    EXPECT_EQ(QPoint(699 - bar_width - 300, 499 - bar_height - 170), dock->pos());
    set_bars(Qt::ScrollBarAlwaysOff);
    EXPECT_EQ(QPoint(399, 329), dock->pos());
}

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, it_keeps_its_corner_when_the_area_is_resized)
{
    open();
    set_bars(Qt::ScrollBarAlwaysOff);
    GUI_DRIVER::click(get_button("m_goto_right_button"));
    area->resize(640, 420);
    GUI_DRIVER::process_posted();
    EXPECT_EQ(QRect(339, 0, 300, 170), dock->geometry());
}

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, only_the_moves_that_are_possible_show)
{
    open();
    EXPECT_EQ(QStringList({"bottom_right", "bottom", "right"}), get_moves());
    dock->do_move_widget_to_right();
    EXPECT_EQ(QStringList({"bottom_left", "bottom", "left"}), get_moves());
    dock->do_move_widget_to_bottom();
    EXPECT_EQ(QStringList({"top_left", "top", "left"}), get_moves());
    dock->do_move_widget_to_left();
    EXPECT_EQ(QStringList({"top_right", "top", "right"}), get_moves());
}

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, each_button_moves_to_its_corner)
{
    struct MOVE
    {
        const char* button;
        int location;
        QPoint place;
    };
    const MOVE moves[] = {
        {"m_goto_right_button", 1, QPoint(399, 0)},
        {"m_goto_bottom_button", 3, QPoint(399, 329)},
        {"m_goto_left_button", 2, QPoint(0, 329)},
        {"m_goto_top_button", 0, QPoint(0, 0)},
        {"m_goto_bottom_button", 2, QPoint(0, 329)},
        {"m_goto_right_button", 3, QPoint(399, 329)},
        {"m_goto_top_button", 1, QPoint(399, 0)},
        {"m_goto_left_button", 0, QPoint(0, 0)},
        {"m_goto_bottom_right_button", 3, QPoint(399, 329)},
        {"m_goto_top_left_button", 0, QPoint(0, 0)},
        {"m_goto_right_button", 1, QPoint(399, 0)},
        {"m_goto_bottom_left_button", 2, QPoint(0, 329)},
        {"m_goto_top_right_button", 1, QPoint(399, 0)},
    };
    open();
    set_bars(Qt::ScrollBarAlwaysOff);
    for (const MOVE& move : moves)
    {
        SCOPED_TRACE(move.button);
        GUI_DRIVER::click(get_button(move.button));
        EXPECT_EQ(move.location, int(dock->get_location()));
        EXPECT_EQ(move.place, dock->pos());
        EXPECT_EQ(QSize(300, 170), dock->size());
    }
}

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, a_move_to_a_side_keeps_the_place_along_it)
{
    open();
    set_bars(Qt::ScrollBarAlwaysOff);
    dock->do_update_geometry(area->mapToGlobal(QPoint(50, 60)));
    ASSERT_EQ(QPoint(50, 60), dock->pos());
    dock->do_move_widget_to_right();
    EXPECT_EQ(QPoint(399, 60), dock->pos());
    dock->do_move_widget_to_left();
    EXPECT_EQ(QPoint(0, 60), dock->pos());
    dock->do_update_geometry(area->mapToGlobal(QPoint(50, 60)));
    dock->do_move_widget_to_bottom();
    EXPECT_EQ(QPoint(50, 329), dock->pos());
    dock->do_move_widget_to_right();
    EXPECT_EQ(QPoint(399, 329), dock->pos());
    dock->do_update_geometry(area->mapToGlobal(QPoint(380, 300)));
    ASSERT_EQ(BIRDS_EYE_BOTTOM_RIGHT, dock->get_location());
    dock->do_move_widget_to_left();
    EXPECT_EQ(QPoint(0, 300), dock->pos());
    dock->do_move_widget_to_top();
    EXPECT_EQ(QPoint(0, 0), dock->pos());
}

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, a_move_that_is_not_offered_is_an_internal_error)
{
    const char* const text = "Unsupported bird's eye view location enum";
    EXPECT_INTERNAL_ERROR(dock->do_move_widget_to_left(), text);
    EXPECT_INTERNAL_ERROR(dock->do_move_widget_to_top(), text);
    dock->do_move_widget_to_diagonal();
    EXPECT_INTERNAL_ERROR(dock->do_move_widget_to_right(), text);
    EXPECT_INTERNAL_ERROR(dock->do_move_widget_to_bottom(), text);
    EXPECT_EQ(BIRDS_EYE_BOTTOM_RIGHT, dock->get_location());
}

// ---- Dragging the title bar -----------------------------------------------------------------------------------------

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, the_title_bar_drags_it)
{
    open();
    set_bars(Qt::ScrollBarAlwaysOff);
    QWidget* const bar = dock->titleBarWidget();
    GUI_DRIVER::drag(bar, QPoint(100, 10), QPoint(140, 60));
    EXPECT_EQ(QPoint(40, 50), dock->pos());
    GUI_DRIVER::drag(bar, QPoint(100, 10), QPoint(140, 60), Qt::RightButton);
    EXPECT_EQ(QPoint(40, 50), dock->pos());
    EXPECT_EQ(BIRDS_EYE_TOP_LEFT, dock->get_location());
}

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, a_drag_beyond_the_edge_is_ignored)
{
    open();
    set_bars(Qt::ScrollBarAlwaysOff);
    QWidget* const bar = dock->titleBarWidget();
    GUI_DRIVER::drag(bar, QPoint(100, 10), QPoint(90, 10));
    EXPECT_EQ(QPoint(0, 0), dock->pos());
    dock->do_update_geometry(area->mapToGlobal(QPoint(400, 330))); // just fits
    EXPECT_EQ(QPoint(400, 330), dock->pos());
    EXPECT_EQ(BIRDS_EYE_BOTTOM_RIGHT, dock->get_location());
    for (const QPoint& beyond : {QPoint(401, 330), QPoint(400, 331), QPoint(-1, 0), QPoint(0, -1)})
    {
        dock->do_update_geometry(area->mapToGlobal(beyond));
        EXPECT_EQ(QPoint(400, 330), dock->pos());
    }
}

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, the_quadrant_of_a_drop_is_the_new_corner)
{
    open();
    set_bars(Qt::ScrollBarAlwaysOff);
    const std::pair<QPoint, int> drops[] = {
        {QPoint(349, 249), 0}, {QPoint(351, 249), 1}, {QPoint(349, 251), 2}, {QPoint(351, 251), 3},
        {QPoint(350, 250), 3}, {QPoint(350, 10), 3},  {QPoint(10, 250), 3},
    };
    for (const auto& [point, location] : drops)
    {
        dock->do_update_geometry(area->mapToGlobal(point));
        EXPECT_EQ(point, dock->pos());
        EXPECT_EQ(location, int(dock->get_location()));
    }
    EXPECT_EQ(QStringList({"top_left", "top", "left"}), get_moves());
}

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, docking_puts_it_at_the_top_left)
{
    open();
    dock->do_update_geometry(area->mapToGlobal(QPoint(30, 40)));
    dock->on_top_level_changed(true);
    EXPECT_EQ(QPoint(30, 40), dock->pos());
    emit dock->topLevelChanged(false);
    EXPECT_EQ(QRect(0, 0, 300, 170), dock->geometry());
}

TEST_F(TOLV_BIRDS_EYE_VIEW_TEST, the_buttons_of_a_very_narrow_overview_stay_inside)
{
    open();
    set_bars(Qt::ScrollBarAlwaysOff);
    view->set_logical_size(QRect(0, 0, 10, 1000));
    GUI_DRIVER::process_posted();
    EXPECT_EQ(100, dock->width());
    dock->do_move_widget_to_right();
    dock->update_geometry();
    EXPECT_EQ(599, dock->x());
}
