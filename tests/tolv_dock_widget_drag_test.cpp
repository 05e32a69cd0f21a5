#include "tolv_dock_fixture.h"

// Dock windows that are dragged by their titles.

namespace
{
constexpr int DOCKED = TOLV_DOCK_WIDGET::DOCK_STATE_DOCKED;
constexpr int FLOATING = TOLV_DOCK_WIDGET::DOCK_STATE_FLOATING;

/// With and without the animation that Qt makes of a drop: the order of events differs.
class TOLV_DOCK_WIDGET_DRAG_TEST : public TOLV_DOCK_FIXTURE, public testing::WithParamInterface<bool>
{
protected:
    void SetUp() override
    {
        TOLV_DOCK_FIXTURE::SetUp();
        m_window->setAnimated(GetParam());
    }

    /// By the title, to a position in the main window.
    void drag(TEST_DOCK* dock, const QPoint& to)
    {
        QLabel* const title = dock->get_title_label();
        const QPoint from = title->rect().center();
        GUI_DRIVER::drag(title, from, title->mapFromGlobal(m_window->mapToGlobal(to)));
    }
    bool wait_until_docked(const TEST_DOCK* dock, Qt::DockWidgetArea area)
    {
        return GUI_DRIVER::wait_for(
            [&]
            {
                return !dock->isFloating() && m_window->dockWidgetArea(const_cast<TEST_DOCK*>(dock)) == area &&
                       dock->get_title_label()->isVisible();
            });
    }
    /// Inside of the window, where an area without a window takes one in.
    QPoint get_edge(Qt::DockWidgetArea area) const
    {
        const QRect rect = m_window->rect();
        switch (area)
        {
        case Qt::LeftDockWidgetArea:
            return QPoint(20, rect.center().y());
        case Qt::RightDockWidgetArea:
            return QPoint(rect.right() - 20, rect.center().y());
        case Qt::TopDockWidgetArea:
            return QPoint(rect.center().x(), 20);
        default:
            return QPoint(rect.center().x(), rect.bottom() - 20);
        }
    }
};
} // namespace

INSTANTIATE_TEST_SUITE_P(DROP, TOLV_DOCK_WIDGET_DRAG_TEST, testing::Bool(),
                         [](const testing::TestParamInfo<bool>& drop)
                         { return std::string(drop.param ? "animated" : "at_once"); });

TEST_P(TOLV_DOCK_WIDGET_DRAG_TEST, a_window_is_dragged_around_the_main_window)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    for (const Qt::DockWidgetArea area : {Qt::RightDockWidgetArea, Qt::TopDockWidgetArea, Qt::BottomDockWidgetArea,
                                          Qt::LeftDockWidgetArea, Qt::BottomDockWidgetArea, Qt::RightDockWidgetArea})
    {
        SCOPED_TRACE(area);
        drag(dock, get_edge(area));
        ASSERT_TRUE(wait_until_docked(dock, area));
        EXPECT_EQ(area, dock->m_area);
        EXPECT_EQ(DOCKED, dock->m_state);
        EXPECT_TRUE(dock->m_is_pinned);
        EXPECT_TRUE(dock->isVisible());
        EXPECT_EQ(1, dock->get_shown("pin"));
        EXPECT_EQ(1, dock->get_pin_checked());
        const bool stands = area == Qt::TopDockWidgetArea || area == Qt::BottomDockWidgetArea;
        EXPECT_EQ(stands, dock->features().testFlag(QDockWidget::DockWidgetVerticalTitleBar));
    }
}

TEST_P(TOLV_DOCK_WIDGET_DRAG_TEST, a_window_dropped_over_the_document_floats_and_is_dragged_back)
{
    for (const Qt::DockWidgetArea area : {Qt::LeftDockWidgetArea, Qt::BottomDockWidgetArea})
    {
        SCOPED_TRACE(area);
        TEST_DOCK* const dock = add_dock("Console", area);
        ASSERT_TRUE(show());
        const QSignalSpy top_level(dock, SIGNAL(topLevelChanged(bool)));
        drag(dock, m_window->centralWidget()->geometry().center());
        ASSERT_TRUE(GUI_DRIVER::wait_for([&] { return dock->get_title_label()->isVisible(); }));
        EXPECT_TRUE(dock->isFloating());
        EXPECT_TRUE(dock->isVisible());
        EXPECT_EQ(FLOATING, dock->m_state);
        EXPECT_EQ(area, dock->m_area); // the last one
        EXPECT_EQ(0, dock->get_shown("pin"));
        EXPECT_EQ((QList<QVariantList>{{true}}), top_level);

        drag(dock, get_edge(area));
        ASSERT_TRUE(wait_until_docked(dock, area));
        EXPECT_EQ(DOCKED, dock->m_state);
        EXPECT_EQ(1, dock->get_shown("pin"));
        delete dock;
    }
}

TEST_P(TOLV_DOCK_WIDGET_DRAG_TEST, a_floating_window_stays_afloat_when_it_is_dragged_over_the_document)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::RightDockWidgetArea);
    ASSERT_TRUE(show());
    const QPoint middle = m_window->centralWidget()->geometry().center();
    drag(dock, middle);
    ASSERT_TRUE(GUI_DRIVER::wait_for([&] { return dock->get_title_label()->isVisible(); }));
    const QPoint place = dock->pos();
    drag(dock, middle + QPoint(60, 40));
    EXPECT_TRUE(dock->isFloating());
    EXPECT_EQ(FLOATING, dock->m_state);
    // It is off by a few pixels of the frame and of the way that makes a drag of a press.
    EXPECT_LE((dock->pos() - place - QPoint(60, 40)).manhattanLength(), 20);
}

TEST_P(TOLV_DOCK_WIDGET_DRAG_TEST, an_unpinned_window_that_is_dragged_is_pinned_where_it_lands)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    unpin(dock);
    GUI_DRIVER::click(dock->m_button);
    ASSERT_TRUE(GUI_DRIVER::wait_for([&] { return dock->get_title_label()->isVisible(); }));
    drag(dock, get_edge(Qt::BottomDockWidgetArea));
    ASSERT_TRUE(wait_until_docked(dock, Qt::BottomDockWidgetArea));
    EXPECT_EQ(DOCKED, dock->m_state);
    EXPECT_TRUE(dock->m_is_pinned);
    EXPECT_TRUE(is_on_no_bar(dock));
    EXPECT_FALSE(get_bar(Qt::LeftToolBarArea)->isVisible());
    unpin(dock);
    EXPECT_TRUE(is_on_bar(dock, Qt::BottomToolBarArea));
}

TEST_P(TOLV_DOCK_WIDGET_DRAG_TEST, a_window_that_may_not_move_stays)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    dock->setFeatures(QDockWidget::DockWidgetClosable);
    ASSERT_TRUE(show());
    const QSignalSpy top_level(dock, SIGNAL(topLevelChanged(bool)));
    drag(dock, get_edge(Qt::RightDockWidgetArea));
    EXPECT_EQ(Qt::LeftDockWidgetArea, m_window->dockWidgetArea(dock));
    EXPECT_EQ(DOCKED, dock->m_state);
    EXPECT_EQ(0, top_level.count());
}

TEST_P(TOLV_DOCK_WIDGET_DRAG_TEST, a_double_click_on_the_title_floats_the_window_and_docks_it_again)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    ASSERT_TRUE(show());
    ASSERT_TRUE(GUI_DRIVER::wait_for([&] { return dock->get_title_label()->isVisible(); }));
    GUI_DRIVER::double_click(dock->get_title_label(), QPoint(5, 5));
    EXPECT_EQ(FLOATING, dock->m_state);
    EXPECT_TRUE(dock->isFloating());
    ASSERT_TRUE(GUI_DRIVER::show(dock));
    ASSERT_TRUE(GUI_DRIVER::wait_for([&] { return dock->get_title_label()->isVisible(); }));
    GUI_DRIVER::double_click(dock->get_title_label(), QPoint(5, 5));
    ASSERT_TRUE(wait_until_docked(dock, Qt::LeftDockWidgetArea));
    EXPECT_EQ(DOCKED, dock->m_state);
}
