#include "tolv_dock_fixture.h"

#include <QMap>

// Layouts that a host saves and restores, with windows in all states.

namespace
{
constexpr int DOCKED = TOLV_DOCK_WIDGET::DOCK_STATE_DOCKED;
constexpr int UNPINNED = TOLV_DOCK_WIDGET::DOCK_STATE_UNPINNED;
constexpr int FLOATING = TOLV_DOCK_WIDGET::DOCK_STATE_FLOATING;

/// What a host keeps from one run to the next: Qt's state, and of each window whether it is pinned, which Qt does not
/// know of.
struct SAVED_LAYOUT
{
    QByteArray state;
    QMap<QString, bool> is_pinned;
};

class TOLV_DOCK_WIDGET_LAYOUT_TEST : public TOLV_DOCK_FIXTURE
{
protected:
    SAVED_LAYOUT save() const
    {
        SAVED_LAYOUT layout{m_window->saveState(), {}};
        const QList<TOLV_DOCK_WIDGET*> docks = m_window->findChildren<TOLV_DOCK_WIDGET*>();
        for (const TOLV_DOCK_WIDGET* const dock : docks)
            layout.is_pinned[dock->objectName()] = dock->get_is_pinned();
        return layout;
    }

    /// The next run of the tool: a new main window with the same dock windows, and its layout restored before it is
    /// shown.
    void run_again(const SAVED_LAYOUT& layout)
    {
        m_window = std::make_unique<TOLV_MAIN_WINDOW>();
        m_window->setGeometry(40, 40, 700, 500);
        m_window->setCentralWidget(new QLabel("document"));
        for (auto entry = layout.is_pinned.begin(); entry != layout.is_pinned.end(); ++entry)
        {
            auto* const dock = new TEST_DOCK(entry.key(), m_window.get());
            dock->setObjectName(entry.key());
            dock->setWidget(new QLabel("content of " + entry.key()));
            if (!entry.value())
                dock->set_is_pinned(false); // before it gets its place
        }
        ASSERT_TRUE(m_window->restoreState(layout.state));
        ASSERT_TRUE(show());
        GUI_DRIVER::process_posted();
    }
    TEST_DOCK* find(const QString& name) const
    {
        return dynamic_cast<TEST_DOCK*>(m_window->findChild<TOLV_DOCK_WIDGET*>(name));
    }
};
} // namespace

TEST_F(TOLV_DOCK_WIDGET_LAYOUT_TEST, docked_unpinned_floating_and_closed_windows_come_back_as_they_were)
{
    add_dock("docked left", Qt::LeftDockWidgetArea);
    add_dock("docked bottom", Qt::BottomDockWidgetArea);
    TEST_DOCK* const unpinned_right = add_dock("unpinned right", Qt::RightDockWidgetArea);
    TEST_DOCK* const unpinned_top = add_dock("unpinned top", Qt::TopDockWidgetArea);
    TEST_DOCK* const floating = add_dock("floating", Qt::LeftDockWidgetArea);
    TEST_DOCK* const closed = add_dock("closed", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    unpin(unpinned_right);
    unpin(unpinned_top);
    floating->detach();
    ASSERT_TRUE(GUI_DRIVER::show(floating)); // a window manager has placed it then
    floating->setGeometry(300, 200, 260, 180);
    closed->close_widget();
    GUI_DRIVER::process_posted();
    SAVED_LAYOUT layout = save();
    layout.is_pinned["closed"] = true; // a closed window comes back pinned: there is nothing to remember

    run_again(layout);
    const TEST_DOCK* const left = find("docked left");
    EXPECT_EQ(DOCKED, left->m_state);
    EXPECT_TRUE(left->isVisible());
    EXPECT_EQ(Qt::LeftDockWidgetArea, left->m_area);
    EXPECT_TRUE(left->m_button.isNull());
    EXPECT_FALSE(left->features() & QDockWidget::DockWidgetVerticalTitleBar);

    const TEST_DOCK* const bottom = find("docked bottom");
    EXPECT_EQ(Qt::BottomDockWidgetArea, bottom->m_area);
    EXPECT_TRUE(bottom->features() & QDockWidget::DockWidgetVerticalTitleBar);

    for (const auto& [name, dock_area, bar_area] :
         {std::make_tuple("unpinned right", Qt::RightDockWidgetArea, Qt::RightToolBarArea),
          std::make_tuple("unpinned top", Qt::TopDockWidgetArea, Qt::TopToolBarArea)})
    {
        SCOPED_TRACE(name);
        TEST_DOCK* const dock = find(name);
        EXPECT_EQ(UNPINNED, dock->m_state);
        EXPECT_FALSE(dock->m_is_pinned);
        EXPECT_EQ(0, dock->get_pin_checked());
        EXPECT_TRUE(dock->isHidden());
        EXPECT_EQ(dock_area, m_window->dockWidgetArea(dock));
        ASSERT_FALSE(dock->m_button.isNull());
        EXPECT_TRUE(is_on_bar(dock, bar_area));
        GUI_DRIVER::click(dock->m_button);
        EXPECT_TRUE(dock->isVisible());
        GUI_DRIVER::click(dock->m_button);
        EXPECT_TRUE(dock->isHidden());
    }

    TEST_DOCK* const afloat = find("floating");
    EXPECT_EQ(FLOATING, afloat->m_state);
    EXPECT_TRUE(afloat->isFloating());
    EXPECT_TRUE(afloat->isVisible());
    EXPECT_TRUE(GUI_DRIVER::wait_for([&] { return afloat->size() == QSize(260, 180); }));
    EXPECT_TRUE(afloat->m_is_pinned);
    EXPECT_EQ(0, afloat->get_shown("pin"));
    afloat->detach();
    EXPECT_EQ(DOCKED, afloat->m_state);
    EXPECT_EQ(Qt::LeftDockWidgetArea, m_window->dockWidgetArea(afloat));
    EXPECT_EQ(1, afloat->get_shown("pin"));

    TEST_DOCK* const shut = find("closed");
    EXPECT_TRUE(shut->isHidden());
    EXPECT_EQ(DOCKED, shut->m_state);
    shut->open_widget();
    EXPECT_TRUE(shut->isVisible());
    EXPECT_EQ(Qt::LeftDockWidgetArea, m_window->dockWidgetArea(shut));
}

TEST_F(TOLV_DOCK_WIDGET_LAYOUT_TEST, an_unpinned_window_that_was_out_is_out_again)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::RightDockWidgetArea);
    ASSERT_TRUE(show());
    unpin(dock);
    GUI_DRIVER::click(dock->m_button);
    GUI_DRIVER::process_posted();
    const SAVED_LAYOUT layout = save();

    run_again(layout);
    TEST_DOCK* const again = find("Console");
    EXPECT_EQ(UNPINNED, again->m_state);
    EXPECT_TRUE(again->isVisible());
    EXPECT_TRUE(is_on_bar(again, Qt::RightToolBarArea));
    again->click_titlebar_button(TITLEBAR_BUTTON_PIN);
    EXPECT_EQ(DOCKED, again->m_state);
    EXPECT_TRUE(again->isVisible());
    EXPECT_TRUE(is_on_no_bar(again));
}

TEST_F(TOLV_DOCK_WIDGET_LAYOUT_TEST, a_layout_survives_ten_runs)
{
    add_dock("docked", Qt::BottomDockWidgetArea);
    TEST_DOCK* const unpinned = add_dock("unpinned", Qt::LeftDockWidgetArea);
    TEST_DOCK* const floating = add_dock("floating", Qt::RightDockWidgetArea);
    ASSERT_TRUE(show());
    unpin(unpinned);
    floating->detach();
    GUI_DRIVER::process_posted();
    for (int run = 0; run < 10; ++run)
    {
        SCOPED_TRACE(run);
        run_again(save());
        EXPECT_EQ(DOCKED, find("docked")->m_state);
        EXPECT_TRUE(find("docked")->isVisible());
        EXPECT_EQ(UNPINNED, find("unpinned")->m_state);
        EXPECT_TRUE(find("unpinned")->isHidden());
        EXPECT_TRUE(is_on_bar(find("unpinned"), Qt::LeftToolBarArea));
        EXPECT_EQ(1, get_bar(Qt::LeftToolBarArea)->m_buttons.size());
        EXPECT_EQ(FLOATING, find("floating")->m_state);
        EXPECT_TRUE(find("floating")->isVisible());
    }
}

TEST_F(TOLV_DOCK_WIDGET_LAYOUT_TEST, a_layout_is_restored_in_the_window_that_is_open)
{
    TEST_DOCK* const first = add_dock("first", Qt::LeftDockWidgetArea);
    TEST_DOCK* const second = add_dock("second", Qt::RightDockWidgetArea);
    ASSERT_TRUE(show());
    GUI_DRIVER::process_posted();
    const QByteArray old_state = m_window->saveState();

    first->detach();
    second->close_widget();
    GUI_DRIVER::process_posted();
    ASSERT_TRUE(m_window->restoreState(old_state));
    GUI_DRIVER::process_posted();
    EXPECT_EQ(DOCKED, first->m_state);
    EXPECT_FALSE(first->isFloating());
    EXPECT_TRUE(first->isVisible());
    EXPECT_EQ(1, first->get_shown("pin"));
    EXPECT_EQ(DOCKED, second->m_state);
    EXPECT_TRUE(second->isVisible());
    EXPECT_TRUE(second->m_is_pinned);
    EXPECT_EQ(Qt::RightDockWidgetArea, m_window->dockWidgetArea(second));
}

TEST_F(TOLV_DOCK_WIDGET_LAYOUT_TEST, a_damaged_layout_changes_nothing)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    unpin(dock);
    QByteArray state = m_window->saveState();
    state[0] = char(0x55);
    EXPECT_FALSE(m_window->restoreState(state));
    EXPECT_EQ(UNPINNED, dock->m_state);
    EXPECT_TRUE(dock->isHidden());
    EXPECT_TRUE(is_on_bar(dock, Qt::LeftToolBarArea));
}
