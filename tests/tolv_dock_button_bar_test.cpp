#include "gui_driver.h"
#include "gui_test.h"
#include "picture.h"
#include "tolv_dock_widget.h"
#include "tolv_dock_widget_button.h"
#include "tolv_dock_widget_button_bar.h"
#include "tolv_dock_widget_titlebar.h"
#include "tolv_main_window.h"

#include <QAction>
#include <QPointer>
#include <QTextEdit>

#include <functional>
#include <memory>
#include <vector>

namespace
{
class TOLV_DOCK_BUTTON_BAR_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        m_window = std::make_unique<TOLV_MAIN_WINDOW>();
        m_window->resize(700, 480);
        m_window->setCentralWidget(new QTextEdit);
        GUI_DRIVER::show(m_window.get());
    }

    void TearDown() override
    {
        m_window.reset();
        TOLV_GUI_TEST::TearDown();
    }

    TOLV_DOCK_WIDGET_BUTTON_BAR* get_bar(Qt::ToolBarArea area) const
    {
        return m_window->m_button_bars.value(area);
    }

    /// A dock window in the main window's care, without a place.
    TOLV_DOCK_WIDGET* make_dock(const char* title = "Messages") const
    {
        auto* const dock = new TOLV_DOCK_WIDGET(QLatin1String(title), m_window.get());
        dock->hide();
        return dock;
    }

    TOLV_DOCK_WIDGET* add_dock(Qt::DockWidgetArea area) const
    {
        auto* const dock = new TOLV_DOCK_WIDGET(QStringLiteral("Messages"), m_window.get());
        m_window->addDockWidget(area, dock);
        return dock;
    }

    std::unique_ptr<TOLV_MAIN_WINDOW> m_window;
};
} // namespace

TEST_F(TOLV_DOCK_BUTTON_BAR_TEST, each_bar_has_the_title_of_its_edge)
{
    const struct
    {
        Qt::ToolBarArea area;
        const char* title;
    } rows[] = {{Qt::LeftToolBarArea, "Left Button Toolbar"},
                {Qt::RightToolBarArea, "Right Button Toolbar"},
                {Qt::TopToolBarArea, "Top Button Toolbar"},
                {Qt::BottomToolBarArea, "Bottom Button Toolbar"},
                {Qt::NoToolBarArea, ""},
                {Qt::AllToolBarAreas, ""},
                {static_cast<Qt::ToolBarArea>(1 | 2), ""}};
    for (const auto& row : rows)
    {
        const TOLV_DOCK_WIDGET_BUTTON_BAR bar(row.area, m_window.get());
        EXPECT_EQ(QLatin1String(row.title), bar.windowTitle());
        EXPECT_EQ(m_window.get(), bar.parent());
    }
}

TEST_F(TOLV_DOCK_BUTTON_BAR_TEST, a_bar_cannot_be_moved_and_has_small_icons)
{
    const TOLV_DOCK_WIDGET_BUTTON_BAR bar(Qt::LeftToolBarArea);
    EXPECT_FALSE(bar.isMovable());
    EXPECT_EQ(QSize(16, 16), bar.iconSize());
    EXPECT_TRUE(bar.m_buttons.isEmpty());
}

TEST_F(TOLV_DOCK_BUTTON_BAR_TEST, the_first_button_shows_the_bar_and_the_last_one_hides_it)
{
    TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = get_bar(Qt::LeftToolBarArea);
    EXPECT_FALSE(bar->isVisible());
    TOLV_DOCK_WIDGET_BUTTON first(make_dock());
    TOLV_DOCK_WIDGET_BUTTON second(make_dock());
    bar->add_button(&first);
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(bar, first.parent());
    bar->add_button(&second);
    bar->remove_button(&first);
    GUI_DRIVER::process_posted();
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(nullptr, first.parent());
    EXPECT_FALSE(first.isVisible());
    EXPECT_TRUE(second.isVisible());
    bar->remove_button(&second);
    EXPECT_FALSE(bar->isVisible());
    EXPECT_TRUE(bar->m_buttons.isEmpty());
    EXPECT_TRUE(bar->actions().isEmpty());
    EXPECT_EQ(QStringLiteral("Left Button Toolbar"), bar->windowTitle());
}

TEST_F(TOLV_DOCK_BUTTON_BAR_TEST, the_map_has_the_action_of_each_button)
{
    TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = get_bar(Qt::TopToolBarArea);
    TOLV_DOCK_WIDGET_BUTTON first(make_dock());
    TOLV_DOCK_WIDGET_BUTTON second(make_dock());
    bar->add_button(&first);
    bar->add_button(&second);
    ASSERT_EQ(2, bar->m_buttons.size());
    EXPECT_EQ(&first, bar->widgetForAction(bar->m_buttons.value(&first)));
    EXPECT_EQ(&second, bar->widgetForAction(bar->m_buttons.value(&second)));
    EXPECT_TRUE(bar->m_buttons.value(&first)->isVisible());
    bar->remove_button(&first);
    bar->remove_button(&second);
}

TEST_F(TOLV_DOCK_BUTTON_BAR_TEST, a_button_that_comes_back_is_seen_again)
{
    TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = get_bar(Qt::LeftToolBarArea);
    TOLV_DOCK_WIDGET_BUTTON button(make_dock());
    for (int i = 0; i < 3; ++i)
    {
        bar->add_button(&button);
        EXPECT_TRUE(button.isVisible());
        EXPECT_TRUE(bar->m_buttons.value(&button)->isVisible());
        bar->remove_button(&button);
        EXPECT_FALSE(button.isVisible());
    }
}

TEST_F(TOLV_DOCK_BUTTON_BAR_TEST, buttons_stand_in_the_order_of_their_coming)
{
    // Enough of them that the order of their addresses is another one.
    std::vector<std::unique_ptr<TOLV_DOCK_WIDGET_BUTTON>> buttons;
    for (const char* title : {"A", "B", "C", "D"})
        buttons.push_back(std::make_unique<TOLV_DOCK_WIDGET_BUTTON>(make_dock(title)));
    std::swap(buttons[0], buttons[3]);
    std::swap(buttons[1], buttons[0]);
    const auto expect_order = [&](Qt::ToolBarArea area, const std::function<int(const QWidget&)>& get_place)
    {
        for (const auto& button : buttons)
        {
            button->set_area(area);
            get_bar(area)->add_button(button.get());
        }
        GUI_DRIVER::process_posted();
        for (std::size_t i = 1; i < buttons.size(); ++i)
            EXPECT_LT(get_place(*buttons[i - 1]), get_place(*buttons[i])) << area;
        for (const auto& button : buttons)
            get_bar(area)->remove_button(button.get());
    };
    for (const Qt::ToolBarArea area : {Qt::LeftToolBarArea, Qt::RightToolBarArea})
        expect_order(area, [](const QWidget& button) { return button.y(); });
    for (const Qt::ToolBarArea area : {Qt::TopToolBarArea, Qt::BottomToolBarArea})
        expect_order(area, [](const QWidget& button) { return button.x(); });
}

TEST_F(TOLV_DOCK_BUTTON_BAR_TEST, buttons_stand_at_the_sides_and_lie_at_the_top_and_the_bottom)
{
    const struct
    {
        Qt::DockWidgetArea area;
        Qt::ToolBarArea bar_area;
        bool stands;
    } rows[] = {{Qt::LeftDockWidgetArea, Qt::LeftToolBarArea, true},
                {Qt::RightDockWidgetArea, Qt::RightToolBarArea, true},
                {Qt::TopDockWidgetArea, Qt::TopToolBarArea, false},
                {Qt::BottomDockWidgetArea, Qt::BottomToolBarArea, false}};
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.area);
        add_dock(row.area)->click_titlebar_button(TITLEBAR_BUTTON_PIN);
        GUI_DRIVER::process_posted();
        TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = get_bar(row.bar_area);
        ASSERT_EQ(1, bar->m_buttons.size());
        const TOLV_DOCK_WIDGET_BUTTON* const button = bar->m_buttons.firstKey();
        EXPECT_TRUE(button->isVisible());
        EXPECT_EQ(QRegion(button->rect()), button->visibleRegion());
        EXPECT_EQ(row.stands, button->height() > button->width());
        EXPECT_EQ(row.stands ? Qt::Vertical : Qt::Horizontal, bar->orientation());
        EXPECT_EQ(row.bar_area, m_window->toolBarArea(bar));
    }
}

TEST_F(TOLV_DOCK_BUTTON_BAR_TEST, a_button_that_is_added_twice_has_two_actions_and_the_map_the_later)
{
    TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = get_bar(Qt::LeftToolBarArea);
    TOLV_DOCK_WIDGET_BUTTON button(make_dock());
    bar->add_button(&button);
    QAction* const former = bar->m_buttons.value(&button);
    bar->add_button(&button);
    QAction* const later = bar->m_buttons.value(&button);
    EXPECT_NE(former, later);
    EXPECT_EQ(1, bar->m_buttons.size());
    EXPECT_EQ(QList<QAction*>({former, later}), bar->actions());
    GUI_DRIVER::process_posted();
    EXPECT_TRUE(button.isVisible());
    bar->remove_button(&button);
    EXPECT_EQ(QList<QAction*>({former}), bar->actions());
    EXPECT_TRUE(bar->m_buttons.isEmpty());
    EXPECT_FALSE(bar->isVisible());
    EXPECT_EQ(nullptr, button.parent());
}

TEST_F(TOLV_DOCK_BUTTON_BAR_TEST, the_first_unpinning_adds_a_windows_button_twice_and_later_ones_once)
{
    TOLV_DOCK_WIDGET* const dock = add_dock(Qt::LeftDockWidgetArea);
    const TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = get_bar(Qt::LeftToolBarArea);
    dock->click_titlebar_button(TITLEBAR_BUTTON_PIN);
    EXPECT_EQ(2, bar->actions().size());
    EXPECT_EQ(1, bar->m_buttons.size());
    const TOLV_DOCK_WIDGET_BUTTON* const button = bar->m_buttons.firstKey();
    dock->click_titlebar_button(TITLEBAR_BUTTON_PIN);
    EXPECT_EQ(1, bar->actions().size());
    dock->click_titlebar_button(TITLEBAR_BUTTON_PIN);
    EXPECT_EQ(2, bar->actions().size());
    EXPECT_EQ(button, bar->m_buttons.firstKey());
}

TEST_F(TOLV_DOCK_BUTTON_BAR_TEST, removing_a_button_that_is_not_there_changes_nothing)
{
    TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = get_bar(Qt::LeftToolBarArea);
    TOLV_DOCK_WIDGET_BUTTON button(make_dock());
    TOLV_DOCK_WIDGET_BUTTON stranger(make_dock());
    bar->add_button(&button);
    bar->remove_button(&stranger);
    bar->remove_button(nullptr);
    bar->add_button(nullptr);
    EXPECT_EQ(1, bar->m_buttons.size());
    EXPECT_EQ(1, bar->actions().size());
    EXPECT_TRUE(bar->isVisible());
    EXPECT_TRUE(button.isVisible());
    bar->remove_button(&button);
}

TEST_F(TOLV_DOCK_BUTTON_BAR_TEST, removing_a_button_that_is_elsewhere_takes_it_out_of_there)
{
    QWidget elsewhere;
    auto button = std::make_unique<TOLV_DOCK_WIDGET_BUTTON>(make_dock(), &elsewhere);
    get_bar(Qt::LeftToolBarArea)->remove_button(button.get());
    EXPECT_EQ(nullptr, button->parent());
    EXPECT_FALSE(get_bar(Qt::LeftToolBarArea)->isVisible());
}

TEST_F(TOLV_DOCK_BUTTON_BAR_TEST, a_button_is_on_one_bar_at_most)
{
    TOLV_DOCK_WIDGET_BUTTON_BAR* const left = get_bar(Qt::LeftToolBarArea);
    TOLV_DOCK_WIDGET_BUTTON_BAR* const right = get_bar(Qt::RightToolBarArea);
    TOLV_DOCK_WIDGET_BUTTON button(make_dock());
    left->add_button(&button);
    right->add_button(&button);
    EXPECT_TRUE(left->m_buttons.isEmpty());
    EXPECT_FALSE(left->isVisible());
    EXPECT_EQ(1, right->m_buttons.size());
    EXPECT_EQ(right, button.parent());
    left->remove_button(&button);
    EXPECT_TRUE(right->m_buttons.isEmpty());
    EXPECT_FALSE(right->isVisible());
    EXPECT_EQ(nullptr, button.parent());
}

TEST_F(TOLV_DOCK_BUTTON_BAR_TEST, a_button_that_is_deleted_leaves_its_bar)
{
    TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = get_bar(Qt::RightToolBarArea);
    auto button = std::make_unique<TOLV_DOCK_WIDGET_BUTTON>(make_dock());
    bar->add_button(button.get());
    button.reset();
    EXPECT_TRUE(bar->m_buttons.isEmpty());
    EXPECT_TRUE(bar->actions().isEmpty());
    EXPECT_FALSE(bar->isVisible());
}

TEST_F(TOLV_DOCK_BUTTON_BAR_TEST, a_dock_window_that_is_deleted_takes_its_button_off_the_bar)
{
    TOLV_DOCK_WIDGET* const dock = add_dock(Qt::LeftDockWidgetArea);
    dock->click_titlebar_button(TITLEBAR_BUTTON_PIN);
    const TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = get_bar(Qt::LeftToolBarArea);
    const QPointer<TOLV_DOCK_WIDGET_BUTTON> button(bar->m_buttons.firstKey());
    delete dock;
    EXPECT_EQ(nullptr, button);
    EXPECT_TRUE(bar->m_buttons.isEmpty());
    EXPECT_FALSE(bar->isVisible());
}

TEST_F(TOLV_DOCK_BUTTON_BAR_TEST, a_main_window_goes_with_buttons_on_and_off_its_bars)
{
    TOLV_DOCK_WIDGET* const kept = add_dock(Qt::LeftDockWidgetArea);
    kept->click_titlebar_button(TITLEBAR_BUTTON_PIN);
    const QPointer<TOLV_DOCK_WIDGET_BUTTON> on_bar(get_bar(Qt::LeftToolBarArea)->m_buttons.firstKey());
    TOLV_DOCK_WIDGET* const moved = add_dock(Qt::TopDockWidgetArea);
    moved->click_titlebar_button(TITLEBAR_BUTTON_PIN);
    const QPointer<TOLV_DOCK_WIDGET_BUTTON> elsewhere(get_bar(Qt::TopToolBarArea)->m_buttons.firstKey());
    moved->click_titlebar_button(TITLEBAR_BUTTON_PIN);
    m_window->addDockWidget(Qt::BottomDockWidgetArea, moved);
    moved->click_titlebar_button(TITLEBAR_BUTTON_PIN);
    ASSERT_EQ(elsewhere, get_bar(Qt::BottomToolBarArea)->m_buttons.firstKey());
    TOLV_DOCK_WIDGET* const pinned = add_dock(Qt::RightDockWidgetArea);
    pinned->click_titlebar_button(TITLEBAR_BUTTON_PIN);
    const QPointer<TOLV_DOCK_WIDGET_BUTTON> off_bar(get_bar(Qt::RightToolBarArea)->m_buttons.firstKey());
    pinned->click_titlebar_button(TITLEBAR_BUTTON_PIN);
    m_window.reset();
    EXPECT_EQ(nullptr, on_bar);
    EXPECT_EQ(nullptr, elsewhere);
    EXPECT_EQ(nullptr, off_bar);
}

TEST_F(TOLV_DOCK_BUTTON_BAR_TEST, a_button_does_not_stand_out_from_its_bar)
{
    for (const Qt::ToolBarArea area :
         {Qt::LeftToolBarArea, Qt::RightToolBarArea, Qt::TopToolBarArea, Qt::BottomToolBarArea})
    {
        TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = get_bar(area);
        const QColor color = bar->palette().color(QPalette::Window);
        TOLV_DOCK_WIDGET_BUTTON button(make_dock());
        button.set_area(area);
        bar->add_button(&button);
        GUI_DRIVER::process_posted();
        const QImage picture = render_widget(bar);
        EXPECT_EQ(color, picture.pixelColor(button.geometry().topLeft())) << area;
        const QRect ground = bar->rect().adjusted(2, 2, -2, -2);
        for (const QPoint& point : {ground.topLeft(), ground.topRight(), ground.bottomLeft(), ground.bottomRight()})
            EXPECT_EQ(color, picture.pixelColor(point)) << area;
        bar->remove_button(&button);
    }
}

TEST_F(TOLV_DOCK_BUTTON_BAR_TEST, a_full_bar_keeps_its_window_usable)
{
    // More buttons than there is room for: the others are reached by the bar's extension.
    const QSize size = m_window->size();
    for (int i = 0; i < 20; ++i)
        add_dock(Qt::LeftDockWidgetArea)->click_titlebar_button(TITLEBAR_BUTTON_PIN);
    GUI_DRIVER::process_posted();
    EXPECT_EQ(20, get_bar(Qt::LeftToolBarArea)->m_buttons.size());
    EXPECT_EQ(size, m_window->size());
}
