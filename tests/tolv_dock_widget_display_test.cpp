#include "tolv_dock_fixture.h"
#include "x11_pointer.h"

#include <QCursor>
#include <QtTest/QtTest>

// Dock windows under a window manager, with the pointer of the X server.

namespace
{
constexpr int DOCKED = TOLV_DOCK_WIDGET::DOCK_STATE_DOCKED;
constexpr int UNPINNED = TOLV_DOCK_WIDGET::DOCK_STATE_UNPINNED;
constexpr int FLOATING = TOLV_DOCK_WIDGET::DOCK_STATE_FLOATING;
constexpr int CLOSED = TOLV_DOCK_WIDGET::DOCK_STATE_CLOSED;

class TOLV_DOCK_WIDGET_DISPLAY_TEST : public TOLV_DOCK_FIXTURE
{
protected:
    void SetUp() override
    {
        TOLV_DOCK_FIXTURE::SetUp();
        ASSERT_EQ("xcb", QGuiApplication::platformName()) << "run it through tests/tools/with_display";
        m_window->setAnimated(true); // as a user has it
        m_window->setGeometry(200, 150, 800, 600);
    }
    void TearDown() override
    {
        X11_POINTER::move_to(QPoint(5, 5));
        TOLV_DOCK_FIXTURE::TearDown();
    }

    /// Shows the window and waits until the window manager has placed it.
    bool show_settled()
    {
        return show() &&
               GUI_DRIVER::wait_for(
                   [&]
                   {
                       return X11_POINTER::get_window_position(m_window->winId()) == m_window->geometry().topLeft() &&
                              m_window->geometry().top() > m_window->frameGeometry().top();
                   });
    }
    static bool wait_for_visible(const QWidget* widget)
    {
        return GUI_DRIVER::wait_for([&] { return widget->isVisible() && !widget->visibleRegion().isEmpty(); });
    }
    /// Moves the pointer to the middle of a widget, wherever that is when the layout has come to rest.
    static bool hover(const QWidget* widget)
    {
        return GUI_DRIVER::wait_for(
            [&]
            {
                const QPoint middle = widget->mapToGlobal(widget->rect().center());
                if (QCursor::pos() == middle && widget->underMouse())
                    return true;
                X11_POINTER::move_to(middle);
                return false;
            });
    }
    static void click(const QWidget* widget)
    {
        ASSERT_TRUE(wait_for_visible(widget));
        ASSERT_TRUE(hover(widget));
        X11_POINTER::press();
        X11_POINTER::release();
        GUI_DRIVER::process_posted();
    }
    /// Drags a window by its title to a position of the main window.
    void drag(const TEST_DOCK* dock, const QPoint& to)
    {
        const QLabel* const title = dock->get_title_label();
        ASSERT_TRUE(wait_for_visible(title));
        ASSERT_TRUE(hover(title));
        const QPoint from = title->mapToGlobal(title->rect().center());
        X11_POINTER::press();
        for (const QPoint& position : GUI_DRIVER::get_way(from, m_window->mapToGlobal(to)))
        {
            X11_POINTER::move_to(position);
            GUI_DRIVER::process_posted();
        }
        ASSERT_TRUE(GUI_DRIVER::wait_for([&] { return QCursor::pos() == m_window->mapToGlobal(to); }));
        GUI_DRIVER::process_posted();
        X11_POINTER::release();
    }
    bool wait_until_docked(TEST_DOCK* dock, Qt::DockWidgetArea area)
    {
        return GUI_DRIVER::wait_for(
            [&] { return dock->m_state == DOCKED && !dock->isFloating() && m_window->dockWidgetArea(dock) == area; });
    }
};
} // namespace

TEST_F(TOLV_DOCK_WIDGET_DISPLAY_TEST, a_window_is_dragged_to_all_sides)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show_settled());
    const struct
    {
        Qt::DockWidgetArea area;
        QPoint place;
        const char* frame;
    } rows[] = {{Qt::RightDockWidgetArea, QPoint(m_window->width() - 20, 300), "m_frame"},
                {Qt::BottomDockWidgetArea, QPoint(400, m_window->height() - 20), "m_frame_v"},
                {Qt::TopDockWidgetArea, QPoint(400, 20), "m_frame_v"},
                {Qt::LeftDockWidgetArea, QPoint(20, 300), "m_frame"}};
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.area);
        drag(dock, row.place);
        ASSERT_TRUE(wait_until_docked(dock, row.area));
        EXPECT_TRUE(wait_for_visible(dock->m_titlebar->findChild<QWidget*>(row.frame)));
        EXPECT_EQ(row.area, dock->m_area);
        EXPECT_TRUE(dock->m_is_pinned);
        EXPECT_EQ(1, dock->get_shown("pin"));
    }
}

TEST_F(TOLV_DOCK_WIDGET_DISPLAY_TEST, a_window_is_dragged_out_floats_and_is_put_back)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show_settled());
    drag(dock, QPoint(500, 300));
    ASSERT_TRUE(GUI_DRIVER::wait_for([&] { return dock->m_state == FLOATING && dock->isFloating(); }));
    EXPECT_TRUE(wait_for_visible(dock));
    EXPECT_EQ(0, dock->get_shown("pin"));
    drag(dock, QPoint(20, 300));
    ASSERT_TRUE(wait_until_docked(dock, Qt::LeftDockWidgetArea));
    EXPECT_EQ(1, dock->get_shown("pin"));
}

TEST_F(TOLV_DOCK_WIDGET_DISPLAY_TEST, the_detach_button_floats_and_docks_the_window)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::BottomDockWidgetArea);
    ASSERT_TRUE(show_settled());
    click(dock->get_button_in_force("detach"));
    ASSERT_TRUE(GUI_DRIVER::wait_for([&] { return dock->m_state == FLOATING; }));
    EXPECT_TRUE(wait_for_visible(dock->m_titlebar->findChild<QWidget*>("m_frame")));
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dock));
    click(dock->get_button_in_force("detach"));
    ASSERT_TRUE(wait_until_docked(dock, Qt::BottomDockWidgetArea));
}

TEST_F(TOLV_DOCK_WIDGET_DISPLAY_TEST, windows_are_unpinned_shown_and_hidden_on_all_four_sides)
{
    const std::vector<TEST_DOCK*> docks = {
        add_dock("Left", Qt::LeftDockWidgetArea), add_dock("Right", Qt::RightDockWidgetArea),
        add_dock("Top", Qt::TopDockWidgetArea), add_dock("Bottom", Qt::BottomDockWidgetArea)};
    ASSERT_TRUE(show_settled());
    for (TEST_DOCK* const dock : docks)
    {
        SCOPED_TRACE(dock->windowTitle().toStdString());
        click(dock->get_button_in_force("pin"));
        ASSERT_TRUE(GUI_DRIVER::wait_for([&] { return dock->m_state == UNPINNED; }));
        EXPECT_TRUE(dock->isHidden());
    }
    for (TEST_DOCK* const dock : docks)
    {
        SCOPED_TRACE(dock->windowTitle().toStdString());
        click(dock->m_button);
        EXPECT_TRUE(wait_for_visible(dock));
        EXPECT_EQ(UNPINNED, dock->m_state);
    }
    for (TEST_DOCK* const dock : docks)
    {
        SCOPED_TRACE(dock->windowTitle().toStdString());
        EXPECT_TRUE(dock->isVisible()); // the others of the other sides stayed
        click(dock->m_button);
        EXPECT_TRUE(GUI_DRIVER::wait_for([&] { return dock->isHidden(); }));
        EXPECT_EQ(UNPINNED, dock->m_state);
    }
}

TEST_F(TOLV_DOCK_WIDGET_DISPLAY_TEST, an_unpinned_window_that_the_mouse_has_left_hides_once_the_hiding_is_started)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show_settled());
    click(dock->get_button_in_force("pin"));
    ASSERT_TRUE(GUI_DRIVER::wait_for([&] { return dock->m_state == UNPINNED; }));
    click(dock->m_button);
    ASSERT_TRUE(wait_for_visible(dock->widget()));
    ASSERT_TRUE(hover(dock->widget()));
    dock->delay_tick();
    EXPECT_TRUE(dock->isVisible());
    EXPECT_TRUE(dock->m_delay_timer->isActive());
    ASSERT_TRUE(hover(m_window->centralWidget())); // which stops it
    EXPECT_FALSE(dock->m_delay_timer->isActive());
    EXPECT_TRUE(dock->isVisible());
    dock->delay_tick();
    EXPECT_TRUE(dock->isHidden());
    EXPECT_FALSE(dock->m_button->isChecked());
}

TEST_F(TOLV_DOCK_WIDGET_DISPLAY_TEST, an_unpinned_window_is_closed_and_opened_again)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::RightDockWidgetArea);
    ASSERT_TRUE(show_settled());
    click(dock->get_button_in_force("pin"));
    ASSERT_TRUE(GUI_DRIVER::wait_for([&] { return dock->m_state == UNPINNED; }));
    click(dock->m_button);
    ASSERT_TRUE(wait_for_visible(dock));
    click(dock->get_button_in_force("close"));
    ASSERT_TRUE(GUI_DRIVER::wait_for([&] { return dock->m_state == CLOSED; }));
    EXPECT_TRUE(is_on_no_bar(dock));
    dock->open_widget();
    EXPECT_TRUE(wait_for_visible(dock));
    EXPECT_EQ(DOCKED, dock->m_state);
    EXPECT_TRUE(is_on_bar(dock, Qt::RightToolBarArea));
    EXPECT_TRUE(wait_for_visible(dock->m_button));
}
