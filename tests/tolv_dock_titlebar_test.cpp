#include "gui_answers.h"
#include "internal_error_trap.h"
#include "paint_counter.h"
#include "tolv_dock_titlebar_fixture.h"
#include "tolv_dock_widget_button.h"
#include "tolv_dock_widget_button_bar.h"

#include <QBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPointer>
#include <QSignalSpy>

#include <vector>

/// What the buttons of the title bar do, and the widgets that are added to it.

namespace
{
class TOLV_DOCK_TITLEBAR_TEST : public TOLV_DOCK_TITLEBAR_FIXTURE
{
protected:
    TOLV_DOCK_WIDGET_BUTTON_BAR& get_bar(Qt::ToolBarArea area) const
    {
        return *m_window->m_button_bars.value(area);
    }

    void expect_pins(bool pinned) const
    {
        EXPECT_EQ(pinned, m_dock->get_is_pinned());
        EXPECT_EQ(pinned, m_bar->get_pinned());
        EXPECT_EQ(pinned, get_button("pin", false)->isChecked());
        EXPECT_EQ(pinned, get_button("pin", true)->isChecked());
    }

    /// The names of what the form in force holds, in its order.
    std::vector<std::string> get_names(bool vertical) const
    {
        const auto* const layout =
            GUI_DRIVER::find_widget<QBoxLayout>(m_bar, QLatin1String(vertical ? "m_v_layout" : "m_h_layout"));
        std::vector<std::string> names;
        names.reserve(layout->count());
        for (int i = 0; i < layout->count(); ++i)
            names.push_back(layout->itemAt(i)->widget()->objectName().toStdString());
        return names;
    }

    /// Adds a label of a name to the bar.
    QLabel* add_label(const char* name)
    {
        auto* const label = new QLabel(QLatin1String(name));
        label->setObjectName(QLatin1String(name));
        m_bar->add_widget(label);
        return label;
    }
};
} // namespace

// ---- Pin ------------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_TITLEBAR_TEST, a_click_on_the_pin_puts_the_window_on_the_bar_at_its_edge)
{
    for (const bool vertical : {false, true})
    {
        SCOPED_TRACE(vertical);
        set_vertical(vertical);
        expect_pins(true);
        GUI_DRIVER::click(get_button("pin", vertical));
        expect_pins(false);
        EXPECT_FALSE(m_dock->isVisible());
        EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_UNPINNED, m_dock->get_state());
        ASSERT_EQ(1, get_bar(Qt::LeftToolBarArea).m_buttons.size());
        EXPECT_TRUE(get_bar(Qt::LeftToolBarArea).isVisible());

        m_dock->show();
        GUI_DRIVER::process_posted();
        GUI_DRIVER::click(get_button("pin", vertical));
        expect_pins(true);
        EXPECT_TRUE(m_dock->isVisible());
        EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_DOCKED, m_dock->get_state());
        EXPECT_TRUE(get_bar(Qt::LeftToolBarArea).m_buttons.isEmpty());
        EXPECT_FALSE(get_bar(Qt::LeftToolBarArea).isVisible());
    }
}

TEST_F(TOLV_DOCK_TITLEBAR_TEST, pinning_repaints_the_bar_that_the_button_leaves)
{
    auto* const other = new TOLV_DOCK_WIDGET(QStringLiteral("Status"), m_window.get());
    m_window->addDockWidget(Qt::LeftDockWidgetArea, other);
    other->findChild<TOLV_DOCK_WIDGET_TITLEBAR_WIDGET*>()->toggle_pin(false);
    m_bar->toggle_pin(false);
    TOLV_DOCK_WIDGET_BUTTON_BAR& bar = get_bar(Qt::LeftToolBarArea);
    ASSERT_EQ(2, bar.m_buttons.size());
    GUI_DRIVER::process_posted();

    const PAINT_COUNTER paintings(&bar);
    m_bar->toggle_pin(true);
    EXPECT_EQ(1, paintings.m_count);
    ASSERT_EQ(1, bar.m_buttons.size());
    EXPECT_EQ(other, bar.m_buttons.firstKey()->get_dock());
    EXPECT_TRUE(bar.isVisible());
}

TEST_F(TOLV_DOCK_TITLEBAR_TEST, pinning_looks_for_the_button_on_the_bar_of_the_buttons_own_edge)
{
    m_bar->toggle_pin(false);
    TOLV_DOCK_WIDGET_BUTTON* const button = get_bar(Qt::LeftToolBarArea).m_buttons.firstKey();
    m_window->addDockWidget(Qt::RightDockWidgetArea, m_dock);
    EXPECT_EQ(Qt::LeftToolBarArea, button->get_area());
    m_bar->toggle_pin(true);
    EXPECT_TRUE(get_bar(Qt::LeftToolBarArea).m_buttons.isEmpty());
    EXPECT_EQ(nullptr, button->parent());
    m_bar->toggle_pin(false);
    EXPECT_EQ(Qt::RightToolBarArea, button->get_area());
    EXPECT_TRUE(get_bar(Qt::RightToolBarArea).m_buttons.contains(button));
}

TEST_F(TOLV_DOCK_TITLEBAR_TEST, pinning_without_a_button_or_a_main_window_only_sets_the_pin)
{
    m_bar->toggle_pin(true);
    expect_pins(true);
    TOLV_DOCK_WIDGET lonely(QStringLiteral("Lonely"), nullptr);
    auto* const bar = lonely.findChild<TOLV_DOCK_WIDGET_TITLEBAR_WIDGET*>();
    bar->toggle_pin(false);
    EXPECT_FALSE(lonely.get_is_pinned());
    bar->toggle_pin(true);
    EXPECT_TRUE(lonely.get_is_pinned());
}

TEST_F(TOLV_DOCK_TITLEBAR_TEST, a_pin_without_a_dock_window_is_an_internal_error)
{
    TOLV_DOCK_WIDGET_TITLEBAR_WIDGET bar(nullptr);
    EXPECT_INTERNAL_ERROR(bar.toggle_pin(false), "Dock widget parent is not set up yet");
    EXPECT_INTERNAL_ERROR(bar.press_button(TITLEBAR_BUTTON_PIN), "Dock widget parent is not set up yet");
}

// ---- Close, detach, search, float -----------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_TITLEBAR_TEST, a_click_on_close_closes_the_window)
{
    for (const bool vertical : {false, true})
    {
        SCOPED_TRACE(vertical);
        set_vertical(vertical);
        GUI_DRIVER::click(get_button("close", vertical));
        EXPECT_FALSE(m_dock->isVisible());
        EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_CLOSED, m_dock->get_state());
        m_dock->show();
        GUI_DRIVER::process_posted();
        expect_pins(true);
    }
}

TEST_F(TOLV_DOCK_TITLEBAR_TEST, a_click_on_detach_lets_the_window_float)
{
    for (const bool vertical : {false, true})
    {
        SCOPED_TRACE(vertical);
        set_vertical(vertical);
        GUI_DRIVER::click(get_button("detach", vertical));
        EXPECT_TRUE(m_dock->isFloating());
        EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_FLOATING, m_dock->get_state());
        // The bar of a floating window lies: it is docked again by the lying form's button.
        GUI_DRIVER::show(m_dock);
        GUI_DRIVER::wait_for([&] { return get_button("detach", false)->isVisible(); });
        GUI_DRIVER::click(get_button("detach", false));
        EXPECT_FALSE(m_dock->isFloating());
        EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_DOCKED, m_dock->get_state());
    }
}

TEST_F(TOLV_DOCK_TITLEBAR_TEST, a_click_on_search_sets_both_buttons_and_is_told)
{
    m_dock->set_search_button_visibility(true);
    const QSignalSpy bar_signal(m_bar, SIGNAL(search_button_clicked(bool)));
    const QSignalSpy dock_signal(m_dock, SIGNAL(search_button_clicked(bool)));
    bool checked = false;
    for (const bool vertical : {false, true, false, true})
    {
        set_vertical(vertical);
        checked = !checked;
        const int count = bar_signal.count();
        GUI_DRIVER::click(get_button("search", vertical));
        EXPECT_EQ(checked, get_button("search", false)->isChecked());
        EXPECT_EQ(checked, get_button("search", true)->isChecked());
        ASSERT_EQ(count + 1, bar_signal.count());
        EXPECT_EQ(checked, bar_signal.last().value(0).toBool());
    }
    EXPECT_EQ(4, dock_signal.count());
}

TEST_F(TOLV_DOCK_TITLEBAR_TEST, a_click_on_float_sets_both_buttons_and_is_told)
{
    m_dock->set_float_button_visibility(true);
    const QSignalSpy bar_signal(m_bar, SIGNAL(float_button_clicked(bool)));
    const QSignalSpy search_signal(m_bar, SIGNAL(search_button_clicked(bool)));
    bool checked = false;
    for (const bool vertical : {false, true, false, true})
    {
        set_vertical(vertical);
        checked = !checked;
        const int count = bar_signal.count();
        GUI_DRIVER::click(get_button("float", vertical));
        EXPECT_EQ(checked, get_button("float", false)->isChecked());
        EXPECT_EQ(checked, get_button("float", true)->isChecked());
        ASSERT_EQ(count + 1, bar_signal.count());
        EXPECT_EQ(checked, bar_signal.last().value(0).toBool());
    }
    EXPECT_EQ(0, search_signal.count());
    EXPECT_FALSE(m_dock->isFloating());
}

TEST_F(TOLV_DOCK_TITLEBAR_TEST, each_kind_of_button_is_shown_and_hidden_in_both_forms)
{
    using SETTER = void (TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::*)(bool);
    const struct
    {
        const char* kind;
        SETTER set_visible;
    } rows[] = {{"close", &TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::set_close_visible},
                {"detach", &TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::set_detach_visible},
                {"pin", &TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::set_pin_visible},
                {"menu", &TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::set_menu_visible},
                {"search", &TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::set_search_visible},
                {"float", &TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::set_float_visible}};
    TOLV_DOCK_WIDGET_TITLEBAR_WIDGET* const bar = m_bar;
    for (const auto& row : rows)
        for (const bool visible : {true, false})
        {
            (bar->*row.set_visible)(visible);
            EXPECT_EQ(visible, !get_button(row.kind, false)->isHidden()) << row.kind;
            EXPECT_EQ(visible, !get_button(row.kind, true)->isHidden()) << row.kind;
        }
}

// ---- Menu -----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_TITLEBAR_TEST, the_menu_opens_below_the_button_of_the_form_in_force)
{
    QMenu menu;
    const QAction* const clear = menu.addAction(QStringLiteral("Clear"));
    const QSignalSpy triggered(clear, SIGNAL(triggered()));
    m_dock->set_menu(&menu);
    int count = 0;
    for (const bool vertical : {false, true})
    {
        SCOPED_TRACE(vertical);
        set_vertical(vertical);
        QToolButton* const button = get_button("menu", vertical);
        const QPoint expected = button->parentWidget()->mapToGlobal(button->geometry().bottomLeft());
        QPoint place;
        answer_next_menu(
            [&](QMenu* shown)
            {
                EXPECT_EQ(&menu, shown);
                place = shown->pos();
                const QPoint entry = shown->actionGeometry(shown->actions().constFirst()).center();
                GUI_DRIVER::release(shown, entry);
                GUI_DRIVER::click(shown, entry);
            });
        GUI_DRIVER::press(button, button->rect().center());
        EXPECT_EQ(expected, place);
        EXPECT_EQ(++count, triggered.count());
        EXPECT_FALSE(get_button("menu", false)->isDown());
        EXPECT_FALSE(get_button("menu", true)->isDown());
    }
}

TEST_F(TOLV_DOCK_TITLEBAR_TEST, the_menu_button_shows_with_the_menu_in_both_forms)
{
    QMenu menu;
    m_dock->set_menu(&menu);
    EXPECT_FALSE(get_button("menu", false)->isHidden());
    EXPECT_FALSE(get_button("menu", true)->isHidden());
}

TEST_F(TOLV_DOCK_TITLEBAR_TEST, a_menu_button_without_a_menu_comes_up_again)
{
    m_dock->set_menu_button_visibility(true);
    GUI_DRIVER::process_posted();
    auto menu = std::make_unique<QMenu>();
    menu->addAction(QStringLiteral("Clear"));
    m_bar->set_menu(menu.get());
    menu.reset();
    GUI_DRIVER::click(get_button("menu", false));
    EXPECT_FALSE(get_button("menu", false)->isDown());
}

TEST_F(TOLV_DOCK_TITLEBAR_TEST, an_action_of_the_menu_may_do_away_with_the_window)
{
    QMenu menu;
    menu.addAction(QStringLiteral("Remove"));
    m_dock->set_menu(&menu);
    GUI_DRIVER::process_posted();
    const QPointer<TOLV_DOCK_WIDGET> dock(m_dock);
    answer_next_menu(
        [&](QMenu* shown)
        {
            delete dock;
            shown->close();
        });
    m_bar->menu_button_pressed();
    EXPECT_EQ(nullptr, dock);
}

// ---- Added widgets --------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_TITLEBAR_TEST, an_added_widget_comes_in_front_of_the_menu_button)
{
    add_label("first");
    add_label("second");
    EXPECT_EQ(std::vector<std::string>({"m_title", "m_float_button", "m_search_button", "first", "second",
                                        "m_menu_button", "m_pin_button", "m_detach_button", "m_close_button"}),
              get_names(false));
}

TEST_F(TOLV_DOCK_TITLEBAR_TEST, a_move_puts_added_widgets_behind_the_title_the_later_ones_first)
{
    const QLabel* const label = add_label("first");
    add_label("second");
    for (int i = 0; i < 2; ++i)
    {
        m_bar->update_added_widget_to_vert_or_horz();
        EXPECT_EQ(std::vector<std::string>({"m_title", "second", "first", "m_float_button", "m_search_button",
                                            "m_menu_button", "m_pin_button", "m_detach_button", "m_close_button"}),
                  get_names(false));
    }
    GUI_DRIVER::process_posted();
    EXPECT_TRUE(label->isVisible());
}

TEST_F(TOLV_DOCK_TITLEBAR_TEST, in_a_standing_bar_added_widgets_come_behind_the_menu_button)
{
    const QLabel* const label = add_label("first");
    add_label("second");
    set_vertical(true);
    m_bar->update_added_widget_to_vert_or_horz();
    EXPECT_EQ(std::vector<std::string>({"m_close_button_v", "m_detach_button_v", "m_pin_button_v", "m_menu_button_v",
                                        "second", "first", "m_search_button_v", "m_float_button_v", "m_title_v"}),
              get_names(true));
    EXPECT_EQ(7U, get_names(false).size());
    GUI_DRIVER::process_posted();
    EXPECT_TRUE(label->isVisible());

    set_vertical(false);
    m_bar->update_added_widget_to_vert_or_horz();
    EXPECT_EQ(7U, get_names(true).size());
    EXPECT_EQ("second", get_names(false).at(1));
    EXPECT_EQ("first", get_names(false).at(2));
}

TEST_F(TOLV_DOCK_TITLEBAR_TEST, added_widgets_follow_the_window_to_the_bottom)
{
    m_dock->add_titlebar_widget(new QToolButton);
    EXPECT_EQ(8U, get_names(false).size());
    m_window->addDockWidget(Qt::BottomDockWidgetArea, m_dock);
    EXPECT_EQ(7U, get_names(false).size());
    EXPECT_EQ(8U, get_names(true).size());
}

TEST_F(TOLV_DOCK_TITLEBAR_TEST, added_widgets_go_into_any_layout_each_at_the_same_index)
{
    const QPointer<QLabel> gone(add_label("gone"));
    add_label("first");
    add_label("second");
    delete gone;
    m_bar->add_widget(nullptr);

    QWidget window;
    auto* const layout = new QHBoxLayout(&window);
    layout->addWidget(new QLabel);
    layout->addWidget(new QLabel);
    m_bar->insert_added_widgets_to_layout(layout, 1);
    ASSERT_EQ(4, layout->count());
    EXPECT_EQ(QStringLiteral("second"), layout->itemAt(1)->widget()->objectName());
    EXPECT_EQ(QStringLiteral("first"), layout->itemAt(2)->widget()->objectName());
}

TEST_F(TOLV_DOCK_TITLEBAR_TEST, added_widgets_without_a_layout_are_an_internal_error)
{
    EXPECT_INTERNAL_ERROR(m_bar->insert_added_widgets_to_layout(nullptr, 0), "layout");
}
