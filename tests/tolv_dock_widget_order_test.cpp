#include "paint_counter.h"
#include "tolv_dock_fixture.h"

#include <QEvent>
#include <QMouseEvent>

#include <functional>
#include <vector>

// In which order dock windows do what they do, what they paint at once, and what they do when something is missing.

namespace
{
constexpr int DOCKED = TOLV_DOCK_WIDGET::DOCK_STATE_DOCKED;
constexpr int FLOATING = TOLV_DOCK_WIDGET::DOCK_STATE_FLOATING;
constexpr int CLOSED = TOLV_DOCK_WIDGET::DOCK_STATE_CLOSED;

constexpr int VERTICAL = QDockWidget::DockWidgetVerticalTitleBar;

/// What a host sees of a window that tells it has been shown or hidden.
struct SIGHT
{
    bool is_active;
    int state;
    bool is_pinned;
    int pin_checked;
    bool has_bar;
};

class TOLV_DOCK_WIDGET_ORDER_TEST : public TOLV_DOCK_FIXTURE
{
protected:
    /// Writes down what there is to see each time that the window tells.
    void watch(TEST_DOCK* dock)
    {
        QObject::connect(dock, &TOLV_DOCK_WIDGET::dock_widget_active_state_changed, &m_watcher,
                         [this, dock](bool is_active)
                         {
                             m_sights.push_back({is_active, dock->m_state, dock->m_is_pinned, dock->get_pin_checked(),
                                                 dock->m_button != nullptr && dock->m_button->parent() != nullptr});
                         });
    }
    void expect_sight(const SIGHT& expected) const
    {
        ASSERT_EQ(1U, m_sights.size());
        const SIGHT& seen = m_sights.back();
        EXPECT_EQ(expected.is_active, seen.is_active);
        EXPECT_EQ(expected.state, seen.state);
        EXPECT_EQ(expected.is_pinned, seen.is_pinned);
        EXPECT_EQ(expected.pin_checked, seen.pin_checked);
        EXPECT_EQ(expected.has_bar, seen.has_bar);
    }

    /// Two windows on the left: the button of the second stands on the bar, which so stays visible.
    TEST_DOCK* show_beside_an_unpinned_one()
    {
        TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
        TEST_DOCK* const other = add_dock("Status", Qt::LeftDockWidgetArea);
        show();
        unpin(other);
        return dock;
    }

    std::vector<SIGHT> m_sights;
    QObject m_watcher;
};
} // namespace

// ---- Order ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_WIDGET_ORDER_TEST, a_window_that_is_unpinned_tells_of_its_hiding_while_it_is_still_docked)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    watch(dock);
    dock->click_titlebar_button(TITLEBAR_BUTTON_PIN);
    expect_sight({false, DOCKED, false, 1, false});
}

TEST_F(TOLV_DOCK_WIDGET_ORDER_TEST, a_window_that_closes_tells_of_its_hiding_when_all_the_rest_is_done)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    unpin(dock);
    GUI_DRIVER::click(dock->m_button);
    dock->m_is_pinned = true; // so that the closing has something to do
    dock->m_titlebar->set_pinned(true);
    watch(dock);
    dock->close_widget();
    expect_sight({false, CLOSED, false, 0, false});
}

TEST_F(TOLV_DOCK_WIDGET_ORDER_TEST, a_closed_window_that_is_shown_tells_so_before_it_is_pinned)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    dock->close_widget();
    watch(dock);
    dock->show();
    expect_sight({true, CLOSED, false, 0, false});
    EXPECT_EQ(DOCKED, dock->m_state);
    EXPECT_TRUE(dock->m_is_pinned);
}

TEST_F(TOLV_DOCK_WIDGET_ORDER_TEST, a_window_that_was_closed_afloat_is_pinned_when_it_docks)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    dock->detach();
    dock->close_widget();
    ASSERT_FALSE(dock->m_is_pinned);
    dock->setFloating(false);
    EXPECT_TRUE(dock->isVisible());
    EXPECT_EQ(DOCKED, dock->m_state);
    EXPECT_TRUE(dock->m_is_pinned);
    EXPECT_EQ(1, dock->get_pin_checked());
}

TEST_F(TOLV_DOCK_WIDGET_ORDER_TEST, a_window_that_opens_afloat_leaves_its_button_off_the_bar)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    unpin(dock); // which makes the button
    dock->detach();
    dock->close_widget();
    dock->open_widget();
    EXPECT_TRUE(dock->isVisible());
    EXPECT_TRUE(dock->isWindow());
    ASSERT_FALSE(dock->m_button.isNull());
    EXPECT_TRUE(is_on_no_bar(dock));
}

TEST_F(TOLV_DOCK_WIDGET_ORDER_TEST, a_closed_window_that_is_moved_takes_the_vertical_title_but_no_button)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    dock->close_widget();
    ASSERT_FALSE(dock->m_is_pinned);
    dock->dock_location_changed(Qt::TopDockWidgetArea);
    EXPECT_TRUE(dock->features() & VERTICAL);
    EXPECT_TRUE(dock->m_button.isNull());
    EXPECT_EQ(CLOSED, dock->m_state);
}

TEST_F(TOLV_DOCK_WIDGET_ORDER_TEST, widgets_in_the_title_bar_lie_as_soon_as_the_window_floats)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::TopDockWidgetArea);
    auto* const mark = new QLabel("m");
    dock->add_titlebar_widget(mark);
    ASSERT_TRUE(show());
    dock->dock_location_changed(Qt::TopDockWidgetArea);
    ASSERT_TRUE(dock->m_titlebar->findChild<QWidget*>("m_frame_v")->isAncestorOf(mark));
    dock->floating_status_changed(true); // before Qt tells of the place
    EXPECT_TRUE(dock->m_titlebar->findChild<QWidget*>("m_frame")->isAncestorOf(mark));
}

TEST_F(TOLV_DOCK_WIDGET_ORDER_TEST, a_window_that_is_seated_anew_goes_and_comes_back)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    GUI_DRIVER::process_posted();
    GUI_DRIVER::press(dock->get_title_label(), QPoint(5, 5));
    dock->m_area = Qt::RightDockWidgetArea;
    watch(dock);
    GUI_DRIVER::release(dock->get_title_label(), QPoint(5, 5));
    ASSERT_EQ(2U, m_sights.size());
    EXPECT_FALSE(m_sights.at(0).is_active);
    EXPECT_TRUE(m_sights.at(1).is_active);
}

// ---- Painting -------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_WIDGET_ORDER_TEST, the_side_bar_is_painted_at_once_when_a_button_comes_or_goes)
{
    TEST_DOCK* const dock = show_beside_an_unpinned_one();
    TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = get_bar(Qt::LeftToolBarArea);
    const auto count = [bar](const std::function<void()>& action)
    {
        GUI_DRIVER::process_posted();
        const PAINT_COUNTER paintings(bar);
        action();
        return paintings.m_count;
    };
    EXPECT_EQ(1, count([dock] { dock->add_button(); }));
    EXPECT_EQ(1, count([dock] { dock->close_widget(); }));
    EXPECT_EQ(2, count([dock] { dock->open_widget(); })); // as it gets its button, and for itself
    EXPECT_EQ(1, count([dock] { dock->floating_status_changed(true); }));
    ASSERT_TRUE(dock->m_is_pinned);
    EXPECT_EQ(1, count([dock] { dock->open_widget(); })); // a pinned window, too
}

TEST_F(TOLV_DOCK_WIDGET_ORDER_TEST, a_window_paints_itself_anew_when_it_moves_or_floats)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::TopDockWidgetArea);
    ASSERT_TRUE(show());
    const auto count = [dock](const std::function<void()>& action)
    {
        action(); // once more changes nothing that is to be seen
        GUI_DRIVER::process_posted();
        GUI_DRIVER::process_posted(); // the painting of a new layout
        const PAINT_COUNTER paintings(dock);
        action();
        EXPECT_EQ(0, paintings.m_count); // not before the event loop goes on
        GUI_DRIVER::process_posted();
        return paintings.m_count;
    };
    EXPECT_EQ(1, count([dock] { dock->dock_location_changed(Qt::TopDockWidgetArea); }));
    EXPECT_EQ(1, count([dock] { dock->floating_status_changed(true); }));
    EXPECT_EQ(1, count([dock] { dock->floating_status_changed(false); }));
}

// ---- What is missing ------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_WIDGET_ORDER_TEST, a_release_on_a_window_without_a_place_leaves_it_alone)
{
    auto* const dock = new TEST_DOCK("Console", m_window.get());
    ASSERT_EQ(Qt::NoDockWidgetArea, m_window->dockWidgetArea(dock));
    const QSignalSpy top_level(dock, SIGNAL(topLevelChanged(bool)));
    QMouseEvent release(QEvent::MouseButtonRelease, QPoint(5, 5), Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(dock, &release);
    EXPECT_EQ(0, top_level.count());
    EXPECT_EQ(Qt::BottomDockWidgetArea, dock->m_area);
}

TEST_F(TOLV_DOCK_WIDGET_ORDER_TEST, an_event_that_the_base_does_not_take_is_not_taken)
{
    TEST_DOCK dock("Console", m_window.get());
    QEvent foreign(QEvent::Quit);
    EXPECT_FALSE(QCoreApplication::sendEvent(&dock, &foreign));
    QEvent leave(QEvent::Leave);
    EXPECT_TRUE(QCoreApplication::sendEvent(&dock, &leave));
}

TEST_F(TOLV_DOCK_WIDGET_ORDER_TEST, the_hiding_of_a_window_on_the_right_allows_three_pixels)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::RightDockWidgetArea);
    ASSERT_TRUE(show());
    unpin(dock);
    GUI_DRIVER::click(dock->m_button);
    GUI_DRIVER::process_posted();
    GUI_DRIVER::place_pointer(dock->mapToGlobal(QPoint(-3, 50)));
    dock->delay_tick();
    EXPECT_TRUE(dock->isVisible());
    GUI_DRIVER::place_pointer(dock->mapToGlobal(QPoint(-4, 50)));
    dock->delay_tick();
    EXPECT_TRUE(dock->isHidden());
}

TEST_F(TOLV_DOCK_WIDGET_ORDER_TEST, a_window_lives_on_without_its_title_bar)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::BottomDockWidgetArea);
    ASSERT_TRUE(show());
    delete dock->m_titlebar;
    dock->setTitleBarWidget(new QLabel("own title"));
    dock->setWindowTitle("Messages");
    dock->set_close_button_visibility(false);
    dock->add_titlebar_widget(nullptr);
    dock->set_menu(nullptr);
    dock->repaint();
    dock->set_is_pinned(false);
    dock->add_button();
    EXPECT_TRUE(is_on_bar(dock, Qt::BottomToolBarArea));
    dock->open_widget();
    EXPECT_TRUE(dock->isVisible());
    dock->detach();
    EXPECT_EQ(FLOATING, dock->m_state);
    dock->detach();
    EXPECT_EQ(DOCKED, dock->m_state);
    dock->close_widget();
    EXPECT_EQ(CLOSED, dock->m_state);
}
