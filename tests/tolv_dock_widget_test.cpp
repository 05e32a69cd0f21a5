#include "tolv_dock_widget.h"

#include "internal_error_trap.h"
#include "tolv_dock_fixture.h"

#include <QAction>
#include <QMenu>
#include <QProxyStyle>
#include <QStyleOptionFrame>

namespace
{
using TOLV_DOCK_WIDGET_TEST = TOLV_DOCK_FIXTURE;

/// Notes the frames that are painted.
class FRAME_NOTING_STYLE : public QProxyStyle
{
public:
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        const auto* const frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
        if (element == PE_FrameWindow && frame != nullptr)
            m_frames.append(QRect(frame->rect.topLeft(), QSize(frame->rect.width(), frame->lineWidth)));
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }

    mutable QList<QRect> m_frames; // place and width of the frame, with the width of the line as height
};
} // namespace

// ---- Beginning ------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_WIDGET_TEST, the_states_have_their_values)
{
    EXPECT_EQ(0, TOLV_DOCK_WIDGET::DOCK_STATE_DOCKED);
    EXPECT_EQ(1, TOLV_DOCK_WIDGET::DOCK_STATE_UNPINNED);
    EXPECT_EQ(2, TOLV_DOCK_WIDGET::DOCK_STATE_FLOATING);
    EXPECT_EQ(3, TOLV_DOCK_WIDGET::DOCK_STATE_CLOSED);
}

TEST_F(TOLV_DOCK_WIDGET_TEST, a_new_window_is_docked_and_pinned_with_a_title_bar_and_without_a_side_button)
{
    const TEST_DOCK dock("Console", m_window.get());
    EXPECT_EQ("Console", dock.windowTitle());
    EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_DOCKED, dock.m_state);
    EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_DOCKED, dock.get_state());
    EXPECT_TRUE(dock.m_is_pinned);
    EXPECT_TRUE(dock.get_is_pinned());
    EXPECT_EQ(Qt::BottomDockWidgetArea, dock.m_area);
    EXPECT_EQ(m_window.get(), dock.m_main_window);
    EXPECT_TRUE(dock.m_button.isNull());
    EXPECT_TRUE(dock.m_show_close_button);
    EXPECT_TRUE(dock.m_show_detach_button);
    EXPECT_TRUE(dock.m_show_pushpin_button);
    EXPECT_EQ(QSize(-1, -1), dock.m_saved_min_size);
    EXPECT_EQ(QSize(-1, -1), dock.m_saved_max_size);
    EXPECT_EQ(dock.titleBarWidget(), dock.m_titlebar);
    EXPECT_EQ(&dock, dock.m_titlebar->parent());
    EXPECT_FALSE(dock.m_delay_timer->isActive());
    EXPECT_EQ(&dock, dock.m_delay_timer->parent());
    EXPECT_TRUE(dock.hasMouseTracking());
    EXPECT_EQ(200, dock.minimumWidth());
    EXPECT_EQ(1, dock.get_pin_checked());
    EXPECT_EQ(1, dock.get_shown("pin"));
    EXPECT_EQ(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable,
              dock.features());
}

TEST_F(TOLV_DOCK_WIDGET_TEST, flags_reach_the_window)
{
    const TEST_DOCK with_title("Console", m_window.get(), Qt::Tool);
    EXPECT_EQ(Qt::Tool, with_title.windowType());
    const TEST_DOCK without_title(m_window.get(), Qt::Tool);
    EXPECT_EQ(Qt::Tool, without_title.windowType());
    EXPECT_EQ(QString(), without_title.windowTitle());
    EXPECT_EQ(m_window.get(), without_title.m_main_window);
}

TEST_F(TOLV_DOCK_WIDGET_TEST, a_window_in_another_parent_has_no_pin)
{
    QWidget plain;
    const TEST_DOCK in_plain("Console", &plain);
    EXPECT_TRUE(in_plain.m_main_window.isNull());
    EXPECT_FALSE(in_plain.m_show_pushpin_button);
    EXPECT_EQ(0, in_plain.get_shown("pin"));

    QMainWindow stock;
    const TEST_DOCK in_stock("Console", &stock);
    EXPECT_TRUE(in_stock.m_main_window.isNull());
    EXPECT_EQ(0, in_stock.get_shown("pin"));
}

TEST_F(TOLV_DOCK_WIDGET_TEST, a_window_without_a_parent_has_a_pin_that_only_hides_it)
{
    TEST_DOCK dock("Console", nullptr);
    EXPECT_EQ(1, dock.get_shown("pin"));
    ASSERT_TRUE(GUI_DRIVER::show(&dock));
    GUI_DRIVER::click(dock.get_button_in_force("pin"));
    EXPECT_FALSE(dock.isVisible());
    EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_UNPINNED, dock.m_state);
    EXPECT_TRUE(dock.m_button.isNull());
    dock.add_button();
    EXPECT_TRUE(dock.m_button.isNull());
}

// ---- Title bar ------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_WIDGET_TEST, the_buttons_of_the_title_bar_come_and_go_in_both_forms)
{
    struct KIND
    {
        const char* name;
        void (TOLV_DOCK_WIDGET::*set)(bool);
        bool is_shown_at_first;
        bool TEST_DOCK::*wish; // null where the window itself keeps none
    };
    const KIND kinds[] = {
        {"close", &TOLV_DOCK_WIDGET::set_close_button_visibility, true, &TEST_DOCK::m_show_close_button},
        {"detach", &TOLV_DOCK_WIDGET::set_detach_button_visibility, true, &TEST_DOCK::m_show_detach_button},
        {"pin", &TOLV_DOCK_WIDGET::set_pushpin_button_visibility, true, &TEST_DOCK::m_show_pushpin_button},
        {"menu", &TOLV_DOCK_WIDGET::set_menu_button_visibility, false, nullptr},
        {"float", &TOLV_DOCK_WIDGET::set_float_button_visibility, false, nullptr},
        {"search", &TOLV_DOCK_WIDGET::set_search_button_visibility, false, nullptr},
    };
    TEST_DOCK dock("Console", m_window.get());
    for (const KIND& kind : kinds)
    {
        SCOPED_TRACE(kind.name);
        EXPECT_EQ(int(kind.is_shown_at_first), dock.get_shown(kind.name));
        for (const bool visible : {false, true, false})
        {
            (dock.*kind.set)(visible);
            EXPECT_EQ(int(visible), dock.get_shown(kind.name));
            if (kind.wish != nullptr)
            {
                EXPECT_EQ(visible, dock.*kind.wish);
            }
        }
        for (const KIND& other : kinds)
            (dock.*other.set)(other.is_shown_at_first);
    }
}

TEST_F(TOLV_DOCK_WIDGET_TEST, the_squares_of_the_title_bar_follow_the_buttons)
{
    TEST_DOCK dock("Console", m_window.get());
    const QRect rect(0, 0, 200, 20);
    const auto get_hit = [&](int x)
    {
        auto button = TITLEBAR_BUTTON_NONE;
        dock.m_titlebar->icon_hit_test(QPoint(x, 10), rect, button);
        return button;
    };
    EXPECT_EQ(TITLEBAR_BUTTON_CLOSE, get_hit(190));
    dock.set_close_button_visibility(false);
    EXPECT_EQ(TITLEBAR_BUTTON_DETACH, get_hit(190));
    dock.set_detach_button_visibility(false);
    EXPECT_EQ(TITLEBAR_BUTTON_PIN, get_hit(190));
    dock.set_pushpin_button_visibility(false);
    EXPECT_EQ(TITLEBAR_BUTTON_NONE, get_hit(190));
    dock.set_menu_button_visibility(true);
    EXPECT_EQ(TITLEBAR_BUTTON_MENU, get_hit(190));
    EXPECT_EQ(TITLEBAR_BUTTON_NONE, get_hit(2));
}

TEST_F(TOLV_DOCK_WIDGET_TEST, a_menu_shows_its_button_and_stays_the_callers)
{
    QMenu menu;
    {
        TEST_DOCK dock("Console", m_window.get());
        dock.set_menu(&menu);
        EXPECT_EQ(1, dock.get_shown("menu"));
        EXPECT_EQ(nullptr, menu.parent());
    }
    menu.addAction("alive");
}

TEST_F(TOLV_DOCK_WIDGET_TEST, a_widget_goes_into_the_title_bar)
{
    TEST_DOCK dock("Console", m_window.get());
    auto* const mark = new QLabel("mark");
    dock.add_titlebar_widget(mark);
    EXPECT_TRUE(dock.m_titlebar->isAncestorOf(mark));
}

TEST_F(TOLV_DOCK_WIDGET_TEST, the_buttons_of_the_title_bar_can_be_clicked_by_program)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    dock->click_titlebar_button(TITLEBAR_BUTTON_NONE);
    dock->click_titlebar_button(TITLEBAR_BUTTON_MENU);
    EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_DOCKED, dock->m_state);
    dock->click_titlebar_button(TITLEBAR_BUTTON_DETACH);
    EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_FLOATING, dock->m_state);
    dock->click_titlebar_button(TITLEBAR_BUTTON_DETACH);
    EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_DOCKED, dock->m_state);
    dock->click_titlebar_button(TITLEBAR_BUTTON_PIN);
    EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_UNPINNED, dock->m_state);
    dock->click_titlebar_button(TITLEBAR_BUTTON_CLOSE);
    EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_CLOSED, dock->m_state);
}

TEST_F(TOLV_DOCK_WIDGET_TEST, without_a_title_bar_a_click_by_program_is_an_internal_error_and_the_rest_does_nothing)
{
    TEST_DOCK dock("Console", m_window.get());
    TOLV_DOCK_WIDGET_TITLEBAR_WIDGET* const titlebar = dock.m_titlebar;
    dock.m_titlebar = nullptr;
    const TRAPPED_INTERNAL_ERROR error = CATCH_INTERNAL_ERROR(dock.click_titlebar_button(TITLEBAR_BUTTON_CLOSE));
    EXPECT_EQ("m_titlebar != NULL", error.text);
    EXPECT_EQ("TOLV", error.tag);
    EXPECT_EQ("tolv_dock_widget", error.file);
    dock.set_search_button_visibility(true);
    dock.set_close_button_visibility(false);
    EXPECT_FALSE(dock.m_show_close_button);
    dock.setWindowTitle("Other");
    EXPECT_EQ(QString(), dock.accessibleName());
    dock.m_titlebar = titlebar;
    EXPECT_EQ(0, dock.get_shown("search"));
    EXPECT_EQ(1, dock.get_shown("close"));
}

TEST_F(TOLV_DOCK_WIDGET_TEST, the_float_and_search_buttons_tell_through_the_window)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    dock->set_float_button_visibility(true);
    dock->set_search_button_visibility(true);
    ASSERT_TRUE(show());
    const QSignalSpy floats(dock, SIGNAL(float_button_clicked(bool)));
    const QSignalSpy searches(dock, SIGNAL(search_button_clicked(bool)));
    GUI_DRIVER::click(dock->get_button_in_force("float"));
    EXPECT_EQ((QList<QVariantList>{{true}}), floats);
    GUI_DRIVER::click(dock->get_button_in_force("search"));
    GUI_DRIVER::click(dock->get_button_in_force("search"));
    EXPECT_EQ((QList<QVariantList>{{true}, {false}}), searches);
    EXPECT_EQ(1, floats.count());
}

// ---- Title ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_WIDGET_TEST, a_new_title_reaches_both_forms_at_once)
{
    TEST_DOCK dock(m_window.get());
    dock.setWindowTitle("Messages");
    EXPECT_EQ("Messages", dock.m_titlebar->get_title());
    EXPECT_EQ("Messages", dock.m_titlebar->findChild<QLabel*>("m_title")->text());
    EXPECT_EQ("Messages", dock.m_titlebar->findChild<QLabel*>("m_title_v")->text());
}

TEST_F(TOLV_DOCK_WIDGET_TEST, the_title_of_the_constructor_is_there_with_the_first_painting)
{
    TEST_DOCK* const dock = add_dock("Messages", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    ASSERT_TRUE(GUI_DRIVER::wait_for([&] { return dock->get_title_label()->text() == "Messages"; }));
    dock->m_titlebar->set_title("overwritten");
    dock->repaint();
    EXPECT_EQ("Messages", dock->m_titlebar->get_title());
    EXPECT_EQ("Messages", dock->get_title_label()->text());
}

TEST_F(TOLV_DOCK_WIDGET_TEST, a_floating_window_has_a_frame_one_pixel_wide)
{
    FRAME_NOTING_STYLE style;
    TEST_DOCK* const dock = add_dock("Messages", Qt::LeftDockWidgetArea);
    dock->setStyle(&style);
    ASSERT_TRUE(show());
    dock->repaint();
    EXPECT_EQ(QList<QRect>(), style.m_frames);
    dock->setFloating(true);
    ASSERT_TRUE(GUI_DRIVER::wait_for([&] { return !style.m_frames.isEmpty(); }));
    EXPECT_EQ(QRect(0, 0, dock->width(), 1), style.m_frames.last());
    delete dock;
}

// ---- Size -----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_WIDGET_TEST, a_size_is_forced_and_the_limits_come_back)
{
    TEST_DOCK* const dock = add_dock("Messages", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    const QSize old_size = dock->size();
    const QSize old_minimum = dock->minimumSize();
    const QSize old_maximum = dock->maximumSize();
    dock->set_size(320, old_size.height() - 100);
    EXPECT_EQ(QSize(320, old_minimum.height()), dock->minimumSize());
    EXPECT_EQ(QSize(old_maximum.width(), old_size.height() - 100), dock->maximumSize());
    EXPECT_EQ(old_minimum, dock->m_saved_min_size);
    EXPECT_EQ(old_maximum, dock->m_saved_max_size);
    ASSERT_TRUE(GUI_DRIVER::wait_for([&] { return dock->maximumSize() == old_maximum; }));
    EXPECT_EQ(old_minimum, dock->minimumSize());
    EXPECT_EQ(320, dock->width());
}

TEST_F(TOLV_DOCK_WIDGET_TEST, the_size_that_is_there_becomes_the_maximum)
{
    TEST_DOCK* const dock = add_dock("Messages", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    const QSize old_minimum = dock->minimumSize();
    dock->set_size(dock->width(), dock->height());
    EXPECT_EQ(dock->size(), dock->maximumSize());
    EXPECT_EQ(old_minimum, dock->minimumSize());
    dock->restore_min_max_sizes();
}

TEST_F(TOLV_DOCK_WIDGET_TEST, two_sizes_in_a_row_are_forced_together_and_the_limits_come_back)
{
    TEST_DOCK* const dock = add_dock("Messages", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    const QSize old_minimum = dock->minimumSize();
    const QSize old_maximum = dock->maximumSize();
    const int height = dock->height() - 100;
    dock->set_size(320, -1);
    dock->set_size(-1, height);
    EXPECT_EQ(QSize(320, old_minimum.height()), dock->minimumSize());
    EXPECT_EQ(QSize(old_maximum.width(), height), dock->maximumSize());
    dock->restore_min_max_sizes();
    EXPECT_EQ(old_minimum, dock->minimumSize());
    EXPECT_EQ(old_maximum, dock->maximumSize());
    EXPECT_EQ(QSize(-1, -1), dock->m_saved_min_size);
    EXPECT_EQ(QSize(-1, -1), dock->m_saved_max_size);
    dock->setMaximumWidth(900); // the end of the forcing is behind
    GUI_DRIVER::process_posted();
    EXPECT_EQ(900, dock->maximumWidth());
}

TEST_F(TOLV_DOCK_WIDGET_TEST, a_height_beyond_the_present_one_becomes_the_minimum)
{
    TEST_DOCK* const dock = add_dock("Messages", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    const QSize old_minimum = dock->minimumSize();
    const QSize old_maximum = dock->maximumSize();
    const int height = dock->height() + 1;
    dock->set_size(-1, height);
    EXPECT_EQ(QSize(old_minimum.width(), height), dock->minimumSize());
    EXPECT_EQ(old_maximum, dock->maximumSize());
    ASSERT_TRUE(GUI_DRIVER::wait_for([&] { return dock->minimumSize() == old_minimum; }));
}

TEST_F(TOLV_DOCK_WIDGET_TEST, a_length_of_nothing_is_a_length)
{
    TEST_DOCK dock("Messages", m_window.get());
    dock.set_size(0, 0);
    EXPECT_EQ(QSize(0, 0), dock.maximumSize());
    EXPECT_EQ(200, dock.minimumWidth());
    dock.restore_min_max_sizes();
    EXPECT_EQ(QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX), dock.maximumSize());
}

TEST_F(TOLV_DOCK_WIDGET_TEST, a_negative_length_is_left_alone)
{
    TEST_DOCK* const dock = add_dock("Messages", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    const QSize old_minimum = dock->minimumSize();
    const QSize old_maximum = dock->maximumSize();
    dock->set_size(-1, 300);
    EXPECT_EQ(old_minimum, dock->minimumSize());
    EXPECT_EQ(QSize(old_maximum.width(), 300), dock->maximumSize());
    dock->restore_min_max_sizes();
    dock->set_size(-1, -1);
    EXPECT_EQ(old_minimum, dock->minimumSize());
    EXPECT_EQ(old_maximum, dock->maximumSize());
    dock->setMinimumHeight(90); // and what somebody sets meanwhile is lost
    ASSERT_TRUE(GUI_DRIVER::wait_for([&] { return dock->minimumSize() == old_minimum; }));
}

TEST_F(TOLV_DOCK_WIDGET_TEST, limits_that_were_never_narrowed_stay)
{
    TEST_DOCK dock("Messages", m_window.get());
    const QSize old_minimum = dock.minimumSize();
    dock.restore_min_max_sizes();
    EXPECT_EQ(old_minimum, dock.minimumSize());
}

// ---- Places ---------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_WIDGET_TEST, each_area_has_its_side_bar_and_the_rest_the_left_one)
{
    const TEST_DOCK dock("Messages", m_window.get());
    EXPECT_EQ(Qt::TopToolBarArea, dock.to_toolbar_area(Qt::TopDockWidgetArea));
    EXPECT_EQ(Qt::BottomToolBarArea, dock.to_toolbar_area(Qt::BottomDockWidgetArea));
    EXPECT_EQ(Qt::RightToolBarArea, dock.to_toolbar_area(Qt::RightDockWidgetArea));
    EXPECT_EQ(Qt::LeftToolBarArea, dock.to_toolbar_area(Qt::LeftDockWidgetArea));
    EXPECT_EQ(Qt::LeftToolBarArea, dock.to_toolbar_area(Qt::NoDockWidgetArea));
    EXPECT_EQ(Qt::LeftToolBarArea, dock.to_toolbar_area(Qt::AllDockWidgetAreas));
}

TEST_F(TOLV_DOCK_WIDGET_TEST, the_mouse_is_within_a_window_on_the_left_or_top_up_to_three_pixels_right_and_below)
{
    for (const Qt::DockWidgetArea area : {Qt::LeftDockWidgetArea, Qt::TopDockWidgetArea})
    {
        SCOPED_TRACE(area);
        TEST_DOCK* const dock = add_dock("Messages", area);
        ASSERT_TRUE(show());
        GUI_DRIVER::process_posted(); // its title turns with the first painting
        EXPECT_EQ(area, dock->m_area);
        const auto is_within = [&](int x, int y, int margin)
        {
            GUI_DRIVER::place_pointer(dock->mapToGlobal(QPoint(x, y)));
            return dock->is_within_widget(margin);
        };
        const int right = dock->width() - 1;
        const int bottom = dock->height() - 1;
        for (const int margin : {0, 3, 50}) // which counts for nothing here
        {
            SCOPED_TRACE(margin);
            EXPECT_TRUE(is_within(0, 0, margin));
            EXPECT_TRUE(is_within(right + 3, bottom + 3, margin));
            EXPECT_FALSE(is_within(right + 4, 10, margin));
            EXPECT_FALSE(is_within(10, bottom + 4, margin));
            EXPECT_FALSE(is_within(-1, 10, margin));
            EXPECT_FALSE(is_within(10, -1, margin));
        }
        delete dock;
    }
}

TEST_F(TOLV_DOCK_WIDGET_TEST, the_mouse_is_within_a_window_on_the_right_or_bottom_however_far_right_and_below)
{
    for (const Qt::DockWidgetArea area : {Qt::RightDockWidgetArea, Qt::BottomDockWidgetArea})
    {
        SCOPED_TRACE(area);
        TEST_DOCK* const dock = add_dock("Messages", area);
        ASSERT_TRUE(show());
        GUI_DRIVER::process_posted(); // its title turns with the first painting
        const auto is_within = [&](int x, int y, int margin)
        {
            GUI_DRIVER::place_pointer(dock->mapToGlobal(QPoint(x, y)));
            return dock->is_within_widget(margin);
        };
        EXPECT_TRUE(is_within(5, 5, 3));
        EXPECT_TRUE(is_within(dock->width() + 20, dock->height() + 20, 3));
        EXPECT_TRUE(is_within(-3, -3, 3));
        EXPECT_FALSE(is_within(-4, 5, 3));
        EXPECT_FALSE(is_within(5, -4, 3));
        EXPECT_TRUE(is_within(-20, 5, 20));
        EXPECT_FALSE(is_within(-21, 5, 20));
        EXPECT_FALSE(is_within(-1, 5, 0));
        delete dock;
    }
}

// ---- Showing --------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_WIDGET_TEST, showing_and_hiding_is_told)
{
    TEST_DOCK* const dock = add_dock("Messages", Qt::LeftDockWidgetArea);
    const QSignalSpy spy(dock, SIGNAL(dock_widget_active_state_changed(bool)));
    ASSERT_TRUE(show());
    EXPECT_EQ((QList<QVariantList>{{true}}), spy);
    dock->hide();
    EXPECT_EQ((QList<QVariantList>{{true}, {false}}), spy);
    EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_DOCKED, dock->m_state); // hidden, but not closed
    dock->show();
    EXPECT_EQ((QList<QVariantList>{{true}, {false}, {true}}), spy);
}

TEST_F(TOLV_DOCK_WIDGET_TEST, a_window_is_shown_in_front_or_hidden)
{
    TEST_DOCK* const dock = add_dock("Messages", Qt::LeftDockWidgetArea);
    TEST_DOCK* const other = add_dock("Console", Qt::LeftDockWidgetArea);
    m_window->tabifyDockWidget(dock, other);
    ASSERT_TRUE(show());
    other->raise();
    GUI_DRIVER::process_posted();
    EXPECT_TRUE(dock->visibleRegion().isEmpty());
    dock->set_visible_and_raise(true);
    GUI_DRIVER::process_posted();
    EXPECT_FALSE(dock->visibleRegion().isEmpty());
    dock->set_visible_and_raise(false);
    EXPECT_TRUE(dock->isHidden());
    dock->set_visible_and_raise(true);
    EXPECT_FALSE(dock->isHidden());
}

TEST_F(TOLV_DOCK_WIDGET_TEST, a_window_is_shown_in_front_for_an_action_which_is_checked)
{
    TEST_DOCK* const dock = add_dock("Messages", Qt::LeftDockWidgetArea);
    TEST_DOCK* const other = add_dock("Console", Qt::LeftDockWidgetArea);
    m_window->tabifyDockWidget(dock, other);
    ASSERT_TRUE(show());
    dock->hide();
    other->raise();
    GUI_DRIVER::process_posted();
    QAction action;
    action.setCheckable(true);
    dock->set_visible_and_raise(&action);
    GUI_DRIVER::process_posted();
    EXPECT_TRUE(action.isChecked());
    EXPECT_FALSE(dock->visibleRegion().isEmpty());
    dock->set_visible_and_raise(&action); // not a switch
    EXPECT_TRUE(action.isChecked());
    EXPECT_FALSE(dock->isHidden());
}

TEST_F(TOLV_DOCK_WIDGET_TEST, no_action_is_an_internal_error)
{
    TEST_DOCK dock("Messages", m_window.get());
    EXPECT_INTERNAL_ERROR(dock.set_visible_and_raise(static_cast<QAction*>(nullptr)), "action");
    EXPECT_FALSE(dock.testAttribute(Qt::WA_WState_ExplicitShowHide));
}

TEST_F(TOLV_DOCK_WIDGET_TEST, the_hooks_and_announcements_are_left_to_hosts)
{
    TEST_DOCK* const dock = add_dock("Messages", Qt::LeftDockWidgetArea);
    const QSignalSpy spy(dock, SIGNAL(pre_window_existing()));
    EXPECT_TRUE(spy.isValid());
    ASSERT_TRUE(show());
    dock->scroll_to_bottom();
    dock->close_widget();
    dock->open_widget();
    dock->detach();
    dock->detach();
    EXPECT_EQ(0, spy.count());
}
