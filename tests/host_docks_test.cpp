#include "host_workbench_fixture.h"
#include "workbench_docks.h"

#include "schematic_view.h"
#include "workbench_documents.h"

#include "cfgq_registry.h"

#include "tolv_dock_widget.h"
#include "tolv_dock_widget_button.h"
#include "tolv_dock_widget_button_bar.h"
#include "tolv_dock_widget_titlebar.h"
#include "tolv_mdi_area.h"

#include <QAction>
#include <QApplication>
#include <QMdiSubWindow>
#include <QTabBar>
#include <QToolBar>

#include <memory>

namespace
{
/// The workbench's dock windows, pinned, unpinned and hidden by a user.
class host_docks : public WORKBENCH_TEST
{
protected:
    void SetUp() override
    {
        WORKBENCH_TEST::SetUp();
        make_window();
    }

    void show()
    {
        ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
        GUI_DRIVER::process_posted();
    }

    TOLV_DOCK_WIDGET* dock(const char* name) const
    {
        return GUI_DRIVER::find_widget<TOLV_DOCK_WIDGET>(m_window.get(), QString::fromLatin1(name));
    }

    QAction* action(const char* name) const
    {
        return GUI_DRIVER::find_widget<QAction>(m_window.get(), QString::fromLatin1(name));
    }

    TOLV_DOCK_WIDGET* unpin(const char* name) const
    {
        TOLV_DOCK_WIDGET* const window = dock(name);
        window->click_titlebar_button(TITLEBAR_BUTTON_PIN);
        GUI_DRIVER::process_posted();
        EXPECT_EQ(window->get_state(), TOLV_DOCK_WIDGET::DOCK_STATE_UNPINNED);
        return window;
    }

    TOLV_DOCK_WIDGET_BUTTON* button(const TOLV_DOCK_WIDGET* window) const
    {
        return GUI_DRIVER::find_widget<TOLV_DOCK_WIDGET_BUTTON>(m_window.get(),
                                                                [window](const TOLV_DOCK_WIDGET_BUTTON* candidate)
                                                                { return candidate->get_dock() == window; });
    }

    TOLV_DOCK_WIDGET_BUTTON_BAR* side_bar(Qt::ToolBarArea area) const
    {
        return m_window->m_button_bars.value(area);
    }

    TOLV_MDI_AREA* area() const
    {
        return m_window->findChild<TOLV_MDI_AREA*>();
    }
};
} // namespace

TEST_F(host_docks, a_side_button_tells_whether_its_window_is_out_by_whatever_route_it_came)
{
    show();
    const TOLV_DOCK_WIDGET* const totals = unpin("totals_dock");
    const TOLV_DOCK_WIDGET* const properties = unpin("property_dock");
    EXPECT_FALSE(button(totals)->isChecked());
    action("totals_dock_action")->trigger();
    EXPECT_TRUE(totals->isVisible());
    EXPECT_TRUE(button(totals)->isChecked());
    EXPECT_FALSE(button(properties)->isChecked());
    GUI_DRIVER::click(button(properties));
    EXPECT_FALSE(button(totals)->isChecked());
    EXPECT_TRUE(button(properties)->isChecked());
    action("property_dock_action")->trigger();
    EXPECT_FALSE(properties->isVisible());
    EXPECT_FALSE(button(properties)->isChecked());
    GUI_DRIVER::click(button(properties)); // one click is enough
    EXPECT_TRUE(properties->isVisible());
}

TEST_F(host_docks, the_document_in_front_gets_the_focus_of_a_window_that_goes)
{
    show();
    QMdiSubWindow* const schematic = area()->activeSubWindow();
    ASSERT_NE(nullptr, schematic);
    ASSERT_EQ(QStringLiteral("Schematic"), schematic->windowTitle());
    for (const char* name : {"hierarchy_dock", "totals_dock", "property_dock", "messages_dock"})
    {
        SCOPED_TRACE(name);
        dock(name)->setFocus();
        GUI_DRIVER::wait_for([&] { return dock(name)->isAncestorOf(QApplication::focusWidget()); });
        unpin(name);
        EXPECT_EQ(schematic, area()->activeSubWindow());
        EXPECT_TRUE(schematic->isAncestorOf(QApplication::focusWidget()));
    }
}

TEST_F(host_docks, a_window_that_goes_without_the_focus_leaves_it_where_it_is)
{
    show();
    dock("hierarchy_dock")->setFocus();
    const QWidget* const focus = QApplication::focusWidget();
    ASSERT_NE(nullptr, focus);
    unpin("messages_dock");
    EXPECT_EQ(focus, QApplication::focusWidget());
}

TEST_F(host_docks, without_a_document_the_focus_goes_to_their_place)
{
    show();
    const QList<QMdiSubWindow*> documents = area()->subWindowList();
    for (QMdiSubWindow* document : documents)
        document->close();
    GUI_DRIVER::process_posted();
    ASSERT_TRUE(GUI_DRIVER::focus(dock("messages_dock")->widget()));
    unpin("messages_dock");
    EXPECT_EQ(area(), QApplication::focusWidget());
}

TEST_F(host_docks, the_side_bar_of_the_top_stands_below_the_tool_bar_in_a_line_of_its_own)
{
    show();
    const auto* const tools = GUI_DRIVER::find_widget<QToolBar>(m_window.get(), QStringLiteral("main_tool_bar"));
    EXPECT_FALSE(side_bar(Qt::TopToolBarArea)->isVisible());
    m_window->addDockWidget(Qt::TopDockWidgetArea, dock("status_dock"));
    unpin("status_dock");
    ASSERT_TRUE(side_bar(Qt::TopToolBarArea)->isVisible());
    EXPECT_GT(side_bar(Qt::TopToolBarArea)->y(), tools->geometry().bottom());
    EXPECT_EQ(m_window->width(), side_bar(Qt::TopToolBarArea)->width());
}

TEST_F(host_docks, a_layout_from_elsewhere_shows_the_side_bars_that_have_buttons_and_no_others)
{
    CFGQ_REGISTRY_KEY key(CFGQ_REGISTRY_KEY::SUB_KEY_GUI, "norvane_workbench/layout");
    m_window->keep_layout();
    show();
    unpin("totals_dock");
    m_window->close();
    // The window at the right is pinned now, and one at the left is not.
    key.set_value("unpinned", QStringList{"hierarchy_dock"});
    make_window();
    m_window->keep_layout();
    show();
    EXPECT_TRUE(side_bar(Qt::LeftToolBarArea)->isVisible());
    EXPECT_FALSE(side_bar(Qt::RightToolBarArea)->isVisible());
    action("TOLV_RESET_LAYOUT_ACTION")->trigger();
    EXPECT_FALSE(side_bar(Qt::LeftToolBarArea)->isVisible());
}

TEST_F(host_docks, documents_that_were_arranged_as_windows_are_in_tabs_again_in_the_usual_layout)
{
    show();
    const QMdiSubWindow* const active = area()->activeSubWindow();
    for (const char* command : {"TOLV_CASCADE_ACTION", "TOLV_TILE_ACTION"})
    {
        SCOPED_TRACE(command);
        action(command)->trigger();
        ASSERT_EQ(QMdiArea::SubWindowView, area()->viewMode());
        action("TOLV_RESET_LAYOUT_ACTION")->trigger();
        EXPECT_EQ(QMdiArea::TabbedView, area()->viewMode());
        EXPECT_EQ(active, area()->activeSubWindow());
        const auto* const tabs = area()->findChild<QTabBar*>(QString(), Qt::FindDirectChildrenOnly);
        ASSERT_NE(nullptr, tabs);
        EXPECT_EQ(2, tabs->count());
        EXPECT_FALSE(tabs->expanding());
        EXPECT_EQ(QStringLiteral("Cells, Ports and Nets"), tabs->tabToolTip(0));
    }
}

TEST_F(host_docks, each_document_has_a_picture_in_its_tab_and_its_window)
{
    show();
    const auto* const tabs = area()->findChild<QTabBar*>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_EQ(2, tabs->count());
    EXPECT_NE(tabs->tabIcon(0).pixmap(16).toImage(), tabs->tabIcon(1).pixmap(16).toImage());
    const QList<QMdiSubWindow*> windows = area()->subWindowList();
    for (int i = 0; i < windows.size(); ++i)
    {
        EXPECT_FALSE(tabs->tabIcon(i).isNull());
        EXPECT_FALSE(windows.at(i)->windowIcon().isNull());
    }
}

TEST_F(host_docks, the_tab_of_the_schematic_tells_which_instance_it_shows)
{
    show();
    m_window->open_file(QStringLiteral(WORKBENCH_DESIGNS "/serial_station_rtl.json"));
    GUI_DRIVER::wait_for([this] { return !m_window->is_loading() && !m_window->get_documents()->is_drawing(); }, 30000);
    auto* const tabs = area()->findChild<QTabBar*>(QString(), Qt::FindDirectChildrenOnly);
    const auto get_tooltip = [tabs](const char* text)
    {
        for (int i = 0; i < tabs->count(); ++i)
        {
            if (tabs->tabText(i) == QLatin1String(text))
                return tabs->tabToolTip(i);
        }
        return QStringLiteral("no such tab");
    };
    EXPECT_EQ(get_tooltip("Schematic"), QStringLiteral("serial_station"));
    ASSERT_TRUE(m_window->select_path({QStringLiteral("serial_station"), QStringLiteral("u_uart")}));
    EXPECT_EQ(get_tooltip("Schematic"), QStringLiteral("serial_station/u_uart"));
    tabs->moveTab(0, 1);
    m_window->get_documents()->show_document(WORKBENCH_DOCUMENTS::DOCUMENT_TABLES);
    EXPECT_EQ(get_tooltip("Schematic"), QStringLiteral("serial_station/u_uart"));
    EXPECT_EQ(get_tooltip("Cells, Ports and Nets"), QStringLiteral("Cells, Ports and Nets"));
}
