#include "tolv_dock_fixture.h"

// The life of dock windows: docked, unpinned, floating, closed.

namespace
{
using TOLV_DOCK_WIDGET_STATE_TEST = TOLV_DOCK_FIXTURE;

constexpr int DOCKED = TOLV_DOCK_WIDGET::DOCK_STATE_DOCKED;
constexpr int UNPINNED = TOLV_DOCK_WIDGET::DOCK_STATE_UNPINNED;
constexpr int FLOATING = TOLV_DOCK_WIDGET::DOCK_STATE_FLOATING;
constexpr int CLOSED = TOLV_DOCK_WIDGET::DOCK_STATE_CLOSED;

constexpr int VERTICAL = QDockWidget::DockWidgetVerticalTitleBar;

struct SIDE
{
    Qt::DockWidgetArea dock_area;
    Qt::ToolBarArea bar_area;
};
const SIDE SIDES[] = {{Qt::LeftDockWidgetArea, Qt::LeftToolBarArea},
                      {Qt::RightDockWidgetArea, Qt::RightToolBarArea},
                      {Qt::TopDockWidgetArea, Qt::TopToolBarArea},
                      {Qt::BottomDockWidgetArea, Qt::BottomToolBarArea}};
} // namespace

// ---- Pin ------------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, unpinning_by_program_hides_the_window_and_leaves_the_bars_as_they_are)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    const QSignalSpy spy(dock, SIGNAL(dock_widget_active_state_changed(bool)));
    dock->set_is_pinned(false);
    EXPECT_TRUE(dock->isHidden());
    EXPECT_EQ((QList<QVariantList>{{false}}), spy);
    EXPECT_EQ(UNPINNED, dock->m_state);
    EXPECT_FALSE(dock->m_is_pinned);
    EXPECT_EQ(0, dock->get_pin_checked());
    EXPECT_TRUE(dock->m_button.isNull());
    EXPECT_FALSE(get_bar(Qt::LeftToolBarArea)->isVisible());

    dock->set_is_pinned(true);
    EXPECT_TRUE(dock->isHidden()); // pinning shows nothing
    EXPECT_EQ(DOCKED, dock->m_state);
    EXPECT_TRUE(dock->m_is_pinned);
    EXPECT_EQ(1, dock->get_pin_checked());
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, pinning_leads_to_docked_and_unpinning_to_unpinned_from_any_state)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    for (const int state : {DOCKED, UNPINNED, FLOATING, CLOSED})
    {
        dock->m_state = state;
        dock->set_is_pinned(true);
        EXPECT_EQ(DOCKED, dock->m_state);
        dock->m_state = state;
        dock->set_is_pinned(false);
        EXPECT_EQ(UNPINNED, dock->m_state);
    }
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, the_pin_puts_the_window_on_the_bar_of_its_side)
{
    for (const SIDE& side : SIDES)
    {
        SCOPED_TRACE(side.dock_area);
        TEST_DOCK* const dock = add_dock("Console", side.dock_area);
        ASSERT_TRUE(show());
        GUI_DRIVER::process_posted();
        click_titlebar(dock, "pin");
        EXPECT_EQ(UNPINNED, dock->m_state);
        EXPECT_TRUE(dock->isHidden());
        EXPECT_EQ(0, dock->get_pin_checked());
        ASSERT_FALSE(dock->m_button.isNull());
        EXPECT_EQ(side.bar_area, dock->m_button->get_area());
        EXPECT_TRUE(is_on_bar(dock, side.bar_area));
        EXPECT_TRUE(dock->m_button->isVisible());
        EXPECT_FALSE(dock->m_button->isChecked());
        EXPECT_EQ("Console", dock->m_button->text());
        delete dock;
        EXPECT_TRUE(get_bar(side.bar_area)->m_buttons.isEmpty());
    }
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, a_new_button_goes_on_the_bar_twice_and_an_old_one_once)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = get_bar(Qt::LeftToolBarArea);
    ASSERT_EQ(0, bar->actions().size());
    click_titlebar(dock, "pin");
    EXPECT_EQ(2, bar->actions().size());
    ASSERT_EQ(1, bar->m_buttons.size());
    EXPECT_EQ(bar->actions().at(1), bar->m_buttons.value(dock->m_button)); // the map keeps the second
    EXPECT_EQ(1, bar->findChildren<TOLV_DOCK_WIDGET_BUTTON*>().size());

    dock->open_widget(); // while unpinned: the button that is there goes on the bar once more
    EXPECT_EQ(3, bar->actions().size());
    EXPECT_EQ(bar->actions().at(2), bar->m_buttons.value(dock->m_button));
    GUI_DRIVER::process_posted();
    EXPECT_TRUE(dock->m_button->isVisible());
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, pinning_again_takes_the_button_off_and_keeps_it)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    click_titlebar(dock, "pin");
    const TOLV_DOCK_WIDGET_BUTTON* const button = dock->m_button;
    GUI_DRIVER::click(dock->m_button);
    ASSERT_TRUE(dock->isVisible());
    GUI_DRIVER::process_posted();
    click_titlebar(dock, "pin");
    EXPECT_EQ(DOCKED, dock->m_state);
    EXPECT_TRUE(dock->isVisible());
    EXPECT_EQ(1, dock->get_pin_checked());
    EXPECT_TRUE(is_on_no_bar(dock));
    EXPECT_FALSE(get_bar(Qt::LeftToolBarArea)->isVisible());
    EXPECT_EQ(button, dock->m_button);
    EXPECT_EQ(nullptr, dock->m_button->parent());

    click_titlebar(dock, "pin");
    EXPECT_EQ(button, dock->m_button);
    EXPECT_TRUE(is_on_bar(dock, Qt::LeftToolBarArea));
    EXPECT_TRUE(dock->m_button->isVisible());
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, the_button_is_put_where_the_window_is_now)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    dock->click_titlebar_button(TITLEBAR_BUTTON_PIN);
    ASSERT_TRUE(is_on_bar(dock, Qt::LeftToolBarArea));
    dock->click_titlebar_button(TITLEBAR_BUTTON_PIN);
    m_window->addDockWidget(Qt::RightDockWidgetArea, dock);
    dock->m_button->setChecked(true);
    dock->click_titlebar_button(TITLEBAR_BUTTON_PIN);
    EXPECT_TRUE(is_on_bar(dock, Qt::RightToolBarArea));
    EXPECT_FALSE(dock->m_button->isChecked());
    EXPECT_TRUE(get_bar(Qt::RightToolBarArea)->isVisible());
    EXPECT_FALSE(get_bar(Qt::LeftToolBarArea)->isVisible());
}

// ---- Side buttons ---------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, a_side_button_shows_and_hides_its_window_and_leaves_the_state)
{
    for (const SIDE& side : SIDES)
    {
        SCOPED_TRACE(side.dock_area);
        TEST_DOCK* const dock = add_dock("Console", side.dock_area);
        ASSERT_TRUE(show());
        unpin(dock);
        for (const bool shown : {true, false, true})
        {
            GUI_DRIVER::click(dock->m_button);
            EXPECT_EQ(shown, dock->isVisible());
            EXPECT_EQ(shown, dock->m_button->isChecked());
            EXPECT_EQ(UNPINNED, dock->m_state);
            EXPECT_FALSE(dock->m_is_pinned);
            EXPECT_EQ(0, dock->get_pin_checked());
        }
        EXPECT_EQ(side.dock_area, m_window->dockWidgetArea(dock));
        delete dock;
    }
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, one_window_of_each_side_is_out_at_a_time)
{
    std::vector<TEST_DOCK*> docks;
    for (const SIDE& side : SIDES)
    {
        docks.push_back(add_dock("First", side.dock_area));
        docks.push_back(add_dock("Second", side.dock_area));
    }
    ASSERT_TRUE(show());
    for (TEST_DOCK* const dock : docks)
        unpin(dock);
    for (const std::size_t turn : {0U, 1U})
    {
        for (std::size_t side = 0; side < std::size(SIDES); ++side)
        {
            GUI_DRIVER::click(docks.at(2 * side + turn)->m_button);
            EXPECT_TRUE(docks.at(2 * side + turn)->isVisible());
            EXPECT_FALSE(docks.at(2 * side + 1 - turn)->isVisible());
            EXPECT_FALSE(docks.at(2 * side + 1 - turn)->m_button->isChecked());
        }
    }
    for (std::size_t i = 0; i < docks.size(); ++i) // the other sides stayed
        EXPECT_EQ(i % 2 == 1, docks.at(i)->isVisible());
}

// ---- Hiding by itself -----------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, an_unpinned_window_stays_until_somebody_starts_the_hiding)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    unpin(dock);
    GUI_DRIVER::click(dock->m_button);
    GUI_DRIVER::hover(dock->widget());
    GUI_DRIVER::hover(m_window->centralWidget());
    EXPECT_FALSE(dock->m_delay_timer->isActive());
    EXPECT_TRUE(dock->isVisible());
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, the_hiding_looks_every_half_second_while_the_mouse_is_in_the_window)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    unpin(dock);
    GUI_DRIVER::click(dock->m_button);
    GUI_DRIVER::place_pointer(dock->mapToGlobal(QPoint(50, 50)));
    dock->delay_tick();
    EXPECT_TRUE(dock->isVisible());
    ASSERT_TRUE(dock->m_delay_timer->isActive());
    EXPECT_EQ(500, dock->m_delay_timer->interval());
    dock->m_delay_timer->stop();

    // Out of it, but within the 3 pixels. From here the mouse goes on without leaving the window, which would stop it.
    GUI_DRIVER::hover(m_window->centralWidget());
    GUI_DRIVER::place_pointer(dock->mapToGlobal(QPoint(dock->width() + 2, 50)));
    dock->delay_tick();
    EXPECT_TRUE(dock->isVisible());
    ASSERT_TRUE(dock->m_delay_timer->isActive());
    GUI_DRIVER::place_pointer(dock->mapToGlobal(QPoint(dock->width() + 50, 50)));
    EXPECT_TRUE(GUI_DRIVER::wait_for([&] { return dock->isHidden(); }));
    EXPECT_FALSE(dock->m_button->isChecked());
    EXPECT_FALSE(dock->m_delay_timer->isActive());
    EXPECT_EQ(UNPINNED, dock->m_state);
    EXPECT_TRUE(is_on_bar(dock, Qt::LeftToolBarArea));
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, the_hiding_goes_on_looking_at_a_pinned_window_and_never_hides_it)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    GUI_DRIVER::place_pointer(m_window->centralWidget()->mapToGlobal(m_window->centralWidget()->rect().center()));
    dock->delay_tick();
    EXPECT_TRUE(dock->isVisible());
    EXPECT_TRUE(dock->m_delay_timer->isActive());
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, the_hiding_of_a_window_without_a_button_needs_none)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    dock->set_is_pinned(false);
    dock->show();
    GUI_DRIVER::place_pointer(dock->mapToGlobal(QPoint(dock->width() + 50, 50)));
    dock->delay_tick();
    EXPECT_TRUE(dock->isHidden());
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, leaving_stops_the_hiding_of_an_unpinned_window_only)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    GUI_DRIVER::hover(dock->widget());
    dock->delay_tick();
    ASSERT_TRUE(dock->m_delay_timer->isActive());
    GUI_DRIVER::hover(m_window->centralWidget());
    EXPECT_TRUE(dock->m_delay_timer->isActive());

    unpin(dock); // its button stops it as well
    EXPECT_FALSE(dock->m_delay_timer->isActive());
    GUI_DRIVER::click(dock->m_button);
    GUI_DRIVER::process_posted();
    GUI_DRIVER::hover(dock->widget());
    dock->delay_tick();
    ASSERT_TRUE(dock->m_delay_timer->isActive());
    GUI_DRIVER::hover(m_window->centralWidget());
    EXPECT_FALSE(dock->m_delay_timer->isActive());
    EXPECT_TRUE(dock->isVisible());
}

// ---- Floating -------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, a_floating_window_is_pinned_without_a_pin_and_lies)
{
    for (const SIDE& side : SIDES)
    {
        SCOPED_TRACE(side.dock_area);
        TEST_DOCK* const dock = add_dock("Console", side.dock_area);
        ASSERT_TRUE(show());
        GUI_DRIVER::process_posted();
        const bool stands = side.dock_area == Qt::TopDockWidgetArea || side.dock_area == Qt::BottomDockWidgetArea;
        EXPECT_EQ(stands, bool(dock->features() & VERTICAL));
        click_titlebar(dock, "detach");
        EXPECT_TRUE(dock->isWindow());
        EXPECT_TRUE(dock->isVisible());
        EXPECT_EQ(FLOATING, dock->m_state);
        EXPECT_TRUE(dock->m_is_pinned);
        EXPECT_EQ(0, dock->get_shown("pin"));
        EXPECT_TRUE(dock->m_show_pushpin_button);
        EXPECT_FALSE(dock->features() & VERTICAL);
        EXPECT_EQ(side.dock_area, dock->m_area);

        ASSERT_TRUE(GUI_DRIVER::show(dock));
        click_titlebar(dock, "detach");
        EXPECT_FALSE(dock->isWindow());
        EXPECT_TRUE(dock->isVisible());
        EXPECT_EQ(DOCKED, dock->m_state);
        EXPECT_EQ(1, dock->get_shown("pin"));
        EXPECT_EQ(1, dock->get_pin_checked());
        EXPECT_EQ(side.dock_area, m_window->dockWidgetArea(dock));
        delete dock;
    }
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, a_window_without_a_pin_has_none_when_it_docks_again)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    dock->set_pushpin_button_visibility(false);
    ASSERT_TRUE(show());
    dock->setFloating(true);
    dock->setFloating(false);
    EXPECT_EQ(0, dock->get_shown("pin"));
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, an_unpinned_window_that_floats_leaves_its_bar_and_docks_as_pinned)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::RightDockWidgetArea);
    ASSERT_TRUE(show());
    unpin(dock);
    GUI_DRIVER::click(dock->m_button);
    GUI_DRIVER::process_posted();
    click_titlebar(dock, "detach");
    EXPECT_EQ(FLOATING, dock->m_state);
    EXPECT_TRUE(dock->m_is_pinned);
    EXPECT_TRUE(is_on_no_bar(dock));
    EXPECT_FALSE(get_bar(Qt::RightToolBarArea)->isVisible());
    dock->detach();
    EXPECT_EQ(DOCKED, dock->m_state);
    EXPECT_TRUE(dock->m_is_pinned);
    EXPECT_EQ(1, dock->get_pin_checked());
    EXPECT_TRUE(is_on_no_bar(dock));
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, floating_from_any_state_leads_to_floating_and_docking_to_docked)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    for (const int state : {DOCKED, UNPINNED, FLOATING, CLOSED})
    {
        dock->m_state = state;
        dock->m_is_pinned = false;
        dock->floating_status_changed(true);
        EXPECT_EQ(FLOATING, dock->m_state);
        EXPECT_TRUE(dock->m_is_pinned);
        dock->m_state = state;
        dock->hide();
        dock->floating_status_changed(false);
        EXPECT_EQ(DOCKED, dock->m_state);
        EXPECT_TRUE(dock->isVisible());
        EXPECT_EQ(1, dock->get_shown("pin"));
    }
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, a_window_that_floats_is_docked_when_it_is_told_that_it_is)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    dock->setFloating(true);
    dock->floating_status_changed(false);
    EXPECT_FALSE(dock->isFloating());
    EXPECT_EQ(DOCKED, dock->m_state);
}

// ---- Closing --------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, closing_hides_the_window_and_showing_it_docks_and_pins_it)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    const QSignalSpy spy(dock, SIGNAL(dock_widget_active_state_changed(bool)));
    click_titlebar(dock, "close");
    EXPECT_EQ(CLOSED, dock->m_state);
    EXPECT_TRUE(dock->isHidden());
    EXPECT_FALSE(dock->m_is_pinned);
    EXPECT_EQ(0, dock->get_pin_checked());
    EXPECT_EQ((QList<QVariantList>{{false}}), spy);

    dock->toggleViewAction()->trigger();
    EXPECT_EQ(DOCKED, dock->m_state);
    EXPECT_TRUE(dock->isVisible());
    EXPECT_TRUE(dock->m_is_pinned);
    EXPECT_EQ(1, dock->get_pin_checked());
    EXPECT_EQ((QList<QVariantList>{{false}, {true}}), spy);
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, the_argument_of_closing_counts_for_nothing)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    for (const bool value : {false, true})
    {
        dock->close_widget(value);
        EXPECT_EQ(CLOSED, dock->m_state);
        EXPECT_TRUE(dock->isHidden());
        dock->show();
    }
    EXPECT_TRUE(QMetaObject::invokeMethod(dock, "close_widget")); // the slot without an argument
    EXPECT_EQ(CLOSED, dock->m_state);
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, closing_a_floating_window_leaves_it_floating_for_the_next_time)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    dock->setFloating(true);
    ASSERT_TRUE(GUI_DRIVER::show(dock));
    click_titlebar(dock, "close");
    EXPECT_EQ(CLOSED, dock->m_state);
    GUI_DRIVER::hover(m_window->centralWidget()); // away from where its title bar will be, and its tool tips
    dock->open_widget();
    EXPECT_TRUE(dock->isFloating());
    EXPECT_TRUE(dock->isVisible());
    EXPECT_EQ(DOCKED, dock->m_state); // through being shown
    dock->close_widget();
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, an_unpinned_window_that_is_closed_and_opened_is_pinned_with_its_button_on_the_bar)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    click_titlebar(dock, "pin");
    GUI_DRIVER::click(dock->m_button);
    GUI_DRIVER::process_posted();
    const TOLV_DOCK_WIDGET_BUTTON* const button = dock->m_button;
    click_titlebar(dock, "close");
    EXPECT_EQ(CLOSED, dock->m_state);
    EXPECT_TRUE(dock->isHidden());
    EXPECT_TRUE(is_on_no_bar(dock));
    EXPECT_FALSE(get_bar(Qt::LeftToolBarArea)->isVisible());
    EXPECT_EQ(button, dock->m_button);

    dock->open_widget();
    EXPECT_TRUE(dock->isVisible());
    EXPECT_EQ(DOCKED, dock->m_state);
    EXPECT_TRUE(dock->m_is_pinned);
    EXPECT_EQ(1, dock->get_pin_checked());
    EXPECT_TRUE(is_on_bar(dock, Qt::LeftToolBarArea)); // beside a pinned window: that is how it is
    EXPECT_TRUE(get_bar(Qt::LeftToolBarArea)->isVisible());
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, opening_shows_the_pin_as_it_is)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    dock->hide();
    dock->m_titlebar->set_pinned(false);
    dock->open_widget();
    EXPECT_TRUE(dock->isVisible());
    EXPECT_EQ(1, dock->get_pin_checked());
    EXPECT_EQ(DOCKED, dock->m_state);

    dock->set_is_pinned(false); // no button yet: none is made
    dock->open_widget();
    EXPECT_TRUE(dock->m_button.isNull());
    EXPECT_TRUE(dock->isVisible());
    EXPECT_EQ(UNPINNED, dock->m_state);
    EXPECT_EQ(0, dock->get_pin_checked());
}

// ---- Places ---------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, the_vertical_title_stays_until_the_window_floats)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::BottomDockWidgetArea);
    ASSERT_TRUE(show());
    EXPECT_TRUE(dock->features() & VERTICAL);
    m_window->addDockWidget(Qt::LeftDockWidgetArea, dock);
    EXPECT_EQ(Qt::LeftDockWidgetArea, dock->m_area);
    EXPECT_TRUE(dock->features() & VERTICAL);
    dock->setFloating(true);
    EXPECT_FALSE(dock->features() & VERTICAL);
    dock->setFloating(false);
    EXPECT_FALSE(dock->features() & VERTICAL);
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, other_features_stay_when_the_title_turns)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
    ASSERT_TRUE(show());
    dock->dock_location_changed(Qt::TopDockWidgetArea);
    EXPECT_EQ(2 | 4 | VERTICAL, int(dock->features()));
    dock->setFloating(true);
    EXPECT_EQ(2 | 4, int(dock->features()));
    dock->dock_location_changed(Qt::TopDockWidgetArea); // afloat it does not turn
    EXPECT_EQ(2 | 4, int(dock->features()));
    EXPECT_EQ(Qt::TopDockWidgetArea, dock->m_area);
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, a_window_that_is_unpinned_before_it_gets_its_place_gets_its_button_with_it)
{
    for (const SIDE& side : SIDES)
    {
        SCOPED_TRACE(side.dock_area);
        auto* const dock = new TEST_DOCK("Console", m_window.get());
        dock->set_is_pinned(false);
        dock->dock_location_changed(side.dock_area);
        ASSERT_FALSE(dock->m_button.isNull());
        EXPECT_TRUE(is_on_bar(dock, side.bar_area));
        EXPECT_EQ(1, get_bar(side.bar_area)->actions().size()); // once
        delete dock;
    }
    auto* const pinned = new TEST_DOCK("Console", m_window.get());
    pinned->dock_location_changed(Qt::LeftDockWidgetArea);
    EXPECT_TRUE(pinned->m_button.isNull());
    TEST_DOCK alone("Console", nullptr);
    alone.set_is_pinned(false);
    alone.dock_location_changed(Qt::LeftDockWidgetArea);
    EXPECT_TRUE(alone.m_button.isNull());
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, widgets_in_the_title_bar_follow_its_form)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    auto* const mark = new QLabel("m");
    dock->add_titlebar_widget(mark);
    ASSERT_TRUE(show());
    const auto* const lying = dock->m_titlebar->findChild<QWidget*>("m_frame");
    const auto* const standing = dock->m_titlebar->findChild<QWidget*>("m_frame_v");
    EXPECT_TRUE(lying->isAncestorOf(mark));
    m_window->addDockWidget(Qt::TopDockWidgetArea, dock);
    EXPECT_TRUE(standing->isAncestorOf(mark));
    dock->setFloating(true);
    EXPECT_TRUE(lying->isAncestorOf(mark));
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, a_press_looks_up_the_place_and_a_release_elsewhere_seats_the_window_anew)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    GUI_DRIVER::process_posted();
    dock->m_area = Qt::TopDockWidgetArea;
    GUI_DRIVER::press(dock->get_title_label(), QPoint(5, 5));
    EXPECT_EQ(Qt::LeftDockWidgetArea, dock->m_area);

    QSignalSpy top_level(dock, SIGNAL(topLevelChanged(bool)));
    dock->m_area = Qt::RightDockWidgetArea;
    GUI_DRIVER::release(dock->get_title_label(), QPoint(5, 5));
    EXPECT_EQ((QList<QVariantList>{{false}}), top_level);
    EXPECT_EQ(Qt::LeftDockWidgetArea, dock->m_area);
    EXPECT_EQ(Qt::LeftDockWidgetArea, m_window->dockWidgetArea(dock));
    EXPECT_TRUE(dock->isVisible());
    EXPECT_EQ(DOCKED, dock->m_state);

    GUI_DRIVER::click(dock->get_title_label(), QPoint(5, 5)); // where it stays, nothing happens
    EXPECT_EQ(1, top_level.count());
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, a_window_without_a_parent_cannot_dock)
{
    TEST_DOCK dock("Console", nullptr);
    ASSERT_TRUE(GUI_DRIVER::show(&dock));
    GUI_DRIVER::process_posted();
    click_titlebar(&dock, "detach");
    EXPECT_TRUE(dock.isWindow());
    EXPECT_TRUE(dock.isVisible());
    EXPECT_EQ(DOCKED, dock.m_state);
}

// ---- Lives ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, fifty_windows_come_and_go_in_all_states)
{
    ASSERT_TRUE(show());
    const QList<QObject*> children = m_window->findChildren<QObject*>();
    const int window_count = QApplication::allWidgets().size();
    for (int i = 0; i < 50; ++i)
    {
        TEST_DOCK* const dock = add_dock("Console", SIDES[i % 4].dock_area);
        dock->show();
        if (i % 5 >= 1)
            dock->click_titlebar_button(i % 5 == 4 ? TITLEBAR_BUTTON_DETACH : TITLEBAR_BUTTON_PIN);
        GUI_DRIVER::process_posted();
        if (i % 5 == 2)
            GUI_DRIVER::click(dock->m_button);
        if (i % 5 == 3)
            dock->close_widget();
        GUI_DRIVER::process_posted();
        delete dock;
        for (const SIDE& side : SIDES)
        {
            EXPECT_TRUE(get_bar(side.bar_area)->m_buttons.isEmpty());
            EXPECT_FALSE(get_bar(side.bar_area)->isVisible());
        }
    }
    EXPECT_EQ(window_count, QApplication::allWidgets().size());
    QList<QObject*> left = m_window->findChildren<QObject*>(QString(), Qt::FindDirectChildrenOnly);
    for (QObject* const child : children)
        left.removeAll(child);
    for (const QObject* const child : qAsConst(left))
        ADD_FAILURE() << "left behind: " << child->metaObject()->className();
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, fifty_windows_go_with_their_main_window)
{
    std::vector<QPointer<TEST_DOCK>> docks;
    std::vector<QPointer<TOLV_DOCK_WIDGET_BUTTON>> buttons;
    ASSERT_TRUE(show());
    for (int i = 0; i < 50; ++i)
    {
        TEST_DOCK* const dock = add_dock("Console", SIDES[i % 4].dock_area);
        docks.emplace_back(dock);
        if (i % 3 == 0)
            dock->click_titlebar_button(TITLEBAR_BUTTON_DETACH);
        else if (i % 3 == 1)
            dock->click_titlebar_button(TITLEBAR_BUTTON_PIN);
        if (i % 6 == 1)
            dock->close_widget(); // its button has no parent now
        if (i % 7 == 0)
            dock->raise();
        if (!dock->m_button.isNull())
            buttons.emplace_back(dock->m_button);
    }
    GUI_DRIVER::process_posted();
    m_window.reset();
    for (const QPointer<TEST_DOCK>& dock : docks)
        EXPECT_TRUE(dock.isNull());
    EXPECT_FALSE(buttons.empty());
    for (const QPointer<TOLV_DOCK_WIDGET_BUTTON>& button : buttons)
        EXPECT_TRUE(button.isNull());
}

TEST_F(TOLV_DOCK_WIDGET_STATE_TEST, a_window_outlives_its_main_window_where_a_host_took_it_out)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    dock->click_titlebar_button(TITLEBAR_BUTTON_PIN);
    m_window->removeDockWidget(dock);
    dock->setParent(nullptr);
    m_window.reset();
    EXPECT_TRUE(dock->m_main_window.isNull());
    EXPECT_TRUE(dock->m_button.isNull()); // it went with its bar
    dock->add_button();
    dock->open_widget();
    dock->close_widget();
    dock->dock_location_changed(Qt::TopDockWidgetArea);
    dock->floating_status_changed(true);
    dock->floating_status_changed(false);
    EXPECT_TRUE(dock->m_button.isNull());
    delete dock;
}
