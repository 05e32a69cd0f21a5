// What the main window does with the dock windows that are not pinned.

#include "gui_driver.h"
#include "gui_test.h"
#include "tolv_dock_widget.h"
#include "tolv_dock_widget_button.h"
#include "tolv_dock_widget_button_bar.h"
#include "tolv_main_window.h"

#include <QMouseEvent>
#include <QWindow>

#include <algorithm>
#include <memory>

namespace
{
class TOLV_UNPINNED_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        m_window = std::make_unique<TOLV_MAIN_WINDOW>();
        m_window->setGeometry(150, 100, 500, 400);
        m_window->show();
    }
    void TearDown() override
    {
        m_window.reset();
        TOLV_GUI_TEST::TearDown();
    }

    /// An unpinned dock with a checked button on the bar of a side, out, at a place of its own.
    TOLV_DOCK_WIDGET* add(Qt::ToolBarArea area, const QRect& geometry)
    {
        auto* const dock = new TOLV_DOCK_WIDGET(m_window.get());
        auto* const button = new TOLV_DOCK_WIDGET_BUTTON(dock, nullptr);
        m_window->m_button_bars.value(area)->add_button(button);
        m_buttons.insert(dock, button);
        dock->set_is_pinned(false);
        button->setChecked(true);
        dock->setGeometry(geometry);
        dock->show();
        EXPECT_EQ(geometry, dock->frameGeometry());
        EXPECT_FALSE(dock->get_is_pinned());
        return dock;
    }

    static QMouseEvent move_at(const QPointF& screen_position)
    {
        return {QEvent::MouseMove, QPointF(), QPointF(), screen_position, Qt::NoButton, Qt::NoButton, Qt::NoModifier};
    }
    void hide_at(const QPointF& screen_position)
    {
        QMouseEvent event = move_at(screen_position);
        m_window->hide_unpinned_widgets(&event);
    }

    const QRect PLACE{20, 30, 200, 100};
    std::unique_ptr<TOLV_MAIN_WINDOW> m_window;
    QMap<TOLV_DOCK_WIDGET*, TOLV_DOCK_WIDGET_BUTTON*> m_buttons;
};
} // namespace

TEST_F(TOLV_UNPINNED_TEST, a_window_away_from_the_mouse_is_hidden_and_its_button_left_alone)
{
    const TOLV_DOCK_WIDGET* const dock = add(Qt::LeftToolBarArea, PLACE);
    hide_at(QPointF(300, 300));
    EXPECT_TRUE(dock->isHidden());
    EXPECT_TRUE(m_buttons.first()->isChecked());
    EXPECT_TRUE(m_window->m_button_bars.value(Qt::LeftToolBarArea)->m_buttons.contains(m_buttons.first()));
}

TEST_F(TOLV_UNPINNED_TEST, the_place_in_the_window_is_compared_with_the_position_on_the_screen)
{
    const TOLV_DOCK_WIDGET* const dock = add(Qt::LeftToolBarArea, PLACE);
    hide_at(QPointF(20, 30)); // outside of the window that stands at 150, 100
    EXPECT_FALSE(dock->isHidden());
    hide_at(QPointF(219, 129));
    EXPECT_FALSE(dock->isHidden());
    hide_at(dock->mapToGlobal(QPoint(100, 90))); // 270, 220 on the screen
    EXPECT_TRUE(dock->isHidden());
}

TEST_F(TOLV_UNPINNED_TEST, the_position_is_rounded)
{
    const TOLV_DOCK_WIDGET* const dock = add(Qt::LeftToolBarArea, PLACE);
    hide_at(QPointF(219.4, 129.4));
    hide_at(QPointF(19.5, 29.6));
    EXPECT_FALSE(dock->isHidden());
    hide_at(QPointF(219.6, 129.4)); // 220 is the first column outside
    EXPECT_TRUE(dock->isHidden());
}

TEST_F(TOLV_UNPINNED_TEST, the_frame_of_a_window_belongs_to_it)
{
    TOLV_DOCK_WIDGET* const dock = add(Qt::LeftToolBarArea, PLACE);
    dock->setWindowFlags(Qt::Window);
    dock->setGeometry(QRect(300, 200, 200, 100));
    dock->show();
    // Qt keeps the frame that it saw last until the window moves, and the window manager puts its own around it later.
    ASSERT_TRUE(GUI_DRIVER::wait_for([dock] { return dock->windowHandle()->frameMargins().bottom() > 0; }));
    dock->move(dock->pos() + QPoint(10, 10));
    ASSERT_TRUE(GUI_DRIVER::wait_for([dock] { return dock->frameGeometry().bottom() > dock->geometry().bottom(); }));
    hide_at(dock->frameGeometry().bottomRight());
    EXPECT_FALSE(dock->isHidden());
    hide_at(dock->frameGeometry().bottomRight() + QPoint(0, 1));
    EXPECT_TRUE(dock->isHidden());
}

TEST_F(TOLV_UNPINNED_TEST, a_pinned_window_stays)
{
    TOLV_DOCK_WIDGET* const dock = add(Qt::LeftToolBarArea, PLACE);
    dock->set_is_pinned(true);
    hide_at(QPointF(300, 300));
    EXPECT_FALSE(dock->isHidden());
}

TEST_F(TOLV_UNPINNED_TEST, all_sides_are_looked_at)
{
    QList<TOLV_DOCK_WIDGET*> docks;
    for (const Qt::ToolBarArea area :
         {Qt::LeftToolBarArea, Qt::RightToolBarArea, Qt::TopToolBarArea, Qt::BottomToolBarArea})
    {
        docks << add(area, PLACE) << add(area, PLACE);
    }
    hide_at(QPointF(300, 300));
    for (const TOLV_DOCK_WIDGET* dock : qAsConst(docks))
        EXPECT_TRUE(dock->isHidden());
}

TEST_F(TOLV_UNPINNED_TEST, the_sides_are_looked_at_left_right_top_bottom)
{
    QList<TOLV_DOCK_WIDGET*> docks; // in another order than they are expected in
    for (const Qt::ToolBarArea area :
         {Qt::BottomToolBarArea, Qt::LeftToolBarArea, Qt::TopToolBarArea, Qt::RightToolBarArea})
        docks << add(area, PLACE);
    QList<const QObject*> hidden;
    QObject host;
    const auto add_to_hidden = [&](const TOLV_DOCK_WIDGET* dock) { return [&hidden, dock] { hidden << dock; }; };
    for (const TOLV_DOCK_WIDGET* dock : qAsConst(docks))
        QObject::connect(dock, &QDockWidget::visibilityChanged, &host, add_to_hidden(dock));
    hide_at(QPointF(300, 300));
    EXPECT_EQ((QList<const QObject*>{docks[1], docks[3], docks[2], docks[0]}), hidden);
}

TEST_F(TOLV_UNPINNED_TEST, one_side_can_be_looked_at)
{
    const TOLV_DOCK_WIDGET* const left = add(Qt::LeftToolBarArea, PLACE);
    const TOLV_DOCK_WIDGET* const right = add(Qt::RightToolBarArea, PLACE);
    QMouseEvent event = move_at(QPointF(300, 300));
    m_window->hide_unpinned_widgets(&event, Qt::RightToolBarArea);
    EXPECT_FALSE(left->isHidden());
    EXPECT_TRUE(right->isHidden());
    m_window->hide_unpinned_widgets(&event, Qt::NoToolBarArea);
    m_window->hide_unpinned_widgets(nullptr);
    EXPECT_FALSE(left->isHidden());
}

TEST_F(TOLV_UNPINNED_TEST, a_host_may_take_buttons_away_while_windows_are_hidden)
{
    QList<TOLV_DOCK_WIDGET*> docks;
    for (int i = 0; i < 3; ++i)
        docks << add(Qt::LeftToolBarArea, PLACE);
    TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = m_window->m_button_bars.value(Qt::LeftToolBarArea);
    QObject host;
    const auto remove_all = [&](bool)
    {
        qDeleteAll(m_buttons); // each leaves the bar
        m_buttons.clear();
    };
    for (const TOLV_DOCK_WIDGET* dock : qAsConst(docks))
        QObject::connect(dock, &TOLV_DOCK_WIDGET::dock_widget_active_state_changed, &host, remove_all);
    hide_at(QPointF(300, 300));
    EXPECT_TRUE(bar->m_buttons.isEmpty());
    const auto is_hidden = [](const TOLV_DOCK_WIDGET* dock) { return dock->isHidden(); };
    EXPECT_EQ(1, std::count_if(docks.cbegin(), docks.cend(), is_hidden)); // the first; the others have no button then
}
