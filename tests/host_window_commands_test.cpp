#include "drawing_pane.h"
#include "host_workbench_fixture.h"
#include "workbench_recent_files.h"

#include "gui_answers.h"
#include "tolv_create_action.h"
#include "tolv_dock_widget.h"
#include "tolv_icon.h"
#include "tolv_tool_bar.h"

#include <QAction>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QShortcut>
#include <QTableView>

#include <map>
#include <memory>
#include <set>

namespace
{
QString get_design(const char* name)
{
    return QStringLiteral(WORKBENCH_DESIGNS "/serial_station_%1.json").arg(QLatin1String(name));
}

/// All actions of a menu and those below it, without lines and menus.
QList<QAction*> get_commands(const QList<QAction*>& actions)
{
    QList<QAction*> commands;
    for (QAction* action : actions)
    {
        if (action->menu() != nullptr)
            commands += get_commands(action->menu()->actions());
        else if (!action->isSeparator())
            commands.append(action);
    }
    return commands;
}

/// Where a key works: in the document or the dock window with the focus, or (null) in the whole window.
const QWidget* get_scope(const QObject* owner, Qt::ShortcutContext context)
{
    for (const QObject* object = owner; object != nullptr; object = object->parent())
    {
        const auto* const widget = qobject_cast<const QWidget*>(object);
        if (widget == nullptr)
            continue;
        if (qobject_cast<const QMdiSubWindow*>(widget) != nullptr || context != Qt::WindowShortcut)
            return widget;
    }
    return nullptr;
}
} // namespace

/// The workbench with a design.
class host_window_commands : public WORKBENCH_TEST
{
protected:
    void SetUp() override
    {
        WORKBENCH_TEST::SetUp();
        WORKBENCH_RECENT_FILES::clear();
        make_and_show_window();
    }

    void load(const char* design) const
    {
        m_window->open_file(get_design(design));
        ASSERT_TRUE(GUI_DRIVER::wait_for([this] { return !m_window->is_loading(); }, 30000));
    }

    QAction* find_command(TOLV_ACTION_ENUM command) const
    {
        return GUI_DRIVER::find_widget<QAction>(m_window.get(), tolv_get_action_enum_string(command));
    }

    void choose_cell(const QString& name) const
    {
        auto* const table = GUI_DRIVER::find_widget<QTableView>(m_window.get(), QStringLiteral("cell_table"));
        for (int row = 0; row < table->model()->rowCount(); ++row)
        {
            if (table->model()->index(row, 0).data().toString() == name)
                table->selectRow(row);
        }
    }
};

TEST_F(host_window_commands, the_commands_of_the_menus_are_the_named_ones)
{
    const std::pair<TOLV_ACTION_ENUM, const char*> commands[] = {
        {TOLV_OPEN_ACTION, "file_menu"},           {TOLV_RELOAD_ACTION, "file_menu"},
        {TOLV_PRINT_ACTION, "file_menu"},          {TOLV_EXIT_ACTION, "file_menu"},
        {TOLV_SHOW_HIERARCHY_ACTION, "view_menu"}, {TOLV_SHOW_PROPERTIES_ACTION, "view_menu"},
        {TOLV_SHOW_MESSAGES_ACTION, "view_menu"},  {TOLV_SHOW_TCL_CONSOLE_ACTION, "view_menu"},
        {TOLV_SHOW_TASKS_ACTION, "view_menu"},     {TOLV_FULLSCREEN_ACTION, "view_menu"},
        {TOLV_HIERARCHY_UP_ACTION, "go_menu"},     {TOLV_HIERARCHY_DOWN_ACTION, "go_menu"},
        {TOLV_GOTO_TOP_LEVEL_ACTION, "go_menu"},   {TOLV_OPTIONS_ACTION, "tools_menu"},
        {TOLV_FLOORPLAN_ACTION, "tools_menu"},     {TOLV_CASCADE_ACTION, "window_menu"},
        {TOLV_TILE_ACTION, "window_menu"},         {TOLV_NORVANE_HELP_ACTION, "help_menu"},
        {TOLV_ABOUT_NORVANE_ACTION, "help_menu"},  {TOLV_ABOUT_QT_ACTION, "help_menu"}};
    for (const auto& [command, menu_name] : commands)
    {
        const std::unique_ptr<QAction> named(tolv_create_action(command, nullptr));
        const QList<QAction*> actions =
            GUI_DRIVER::find_widget<QMenu>(m_window.get(), QString::fromLatin1(menu_name))->actions();
        const auto action = std::find_if(actions.begin(), actions.end(),
                                         [&named](const QAction* each) { return each->text() == named->text(); });
        ASSERT_NE(actions.end(), action) << qPrintable(named->text());
        EXPECT_EQ(named->icon().cacheKey(), (*action)->icon().cacheKey()) << qPrintable(named->text());
        EXPECT_EQ(named->statusTip(), (*action)->statusTip());
        EXPECT_EQ(named->isCheckable(), (*action)->isCheckable());
        if (!named->shortcut().isEmpty())
        {
            EXPECT_EQ(named->shortcut(), (*action)->shortcut()) << qPrintable(named->text());
        }
    }
}

TEST_F(host_window_commands, every_command_says_what_it_does)
{
    for (const QAction* action : get_commands(m_window->menuBar()->actions()))
    {
        if (action->text() != tolv_get_menu_text(TOLV_NO_RECENT_FILES_ACTION))
        {
            EXPECT_FALSE(action->statusTip().isEmpty()) << qPrintable(action->text());
        }
    }
}

TEST_F(host_window_commands, the_tool_bar_shows_named_pictures)
{
    const auto* const bar = GUI_DRIVER::find_widget<TOLV_TOOL_BAR>(m_window.get(), QStringLiteral("main_tool_bar"));
    int count = 0;
    std::set<qint64> icons;
    for (const QAction* action : bar->actions())
    {
        if (action->isSeparator())
            continue;
        ++count;
        EXPECT_FALSE(action->icon().isNull()) << qPrintable(action->text());
        icons.insert(action->icon().cacheKey());
    }
    EXPECT_GE(count, 8);
    EXPECT_EQ(static_cast<std::size_t>(count), icons.size());
}

TEST_F(host_window_commands, no_key_stands_for_two_commands)
{
    load("placed");
    find_command(TOLV_FLOORPLAN_ACTION)->trigger(); // all documents are there
    std::map<QString, std::set<const QObject*>> uses;
    for (const QAction* action : m_window->findChildren<QAction*>())
    {
        for (const QKeySequence& key : action->shortcuts())
            uses[key.toString()].insert(action);
    }
    for (const QShortcut* shortcut : m_window->findChildren<QShortcut*>())
        uses[shortcut->key().toString()].insert(shortcut);
    EXPECT_GT(uses.size(), 12U);
    for (const auto& [key, owners] : uses)
    {
        std::set<const QWidget*> scopes;
        for (const QObject* owner : owners)
        {
            const auto* const action = qobject_cast<const QAction*>(owner);
            const Qt::ShortcutContext context =
                action != nullptr ? action->shortcutContext() : qobject_cast<const QShortcut*>(owner)->context();
            const QWidget* const scope = get_scope(owner->parent(), context);
            EXPECT_TRUE(scopes.insert(scope).second) << key.toStdString() << " twice in one place";
        }
        EXPECT_TRUE(scopes.count(nullptr) == 0 || scopes.size() == 1)
            << key.toStdString() << " in the window and below";
    }
}

TEST_F(host_window_commands, go_leads_through_the_hierarchy)
{
    QAction* const up = find_command(TOLV_HIERARCHY_UP_ACTION);
    QAction* const down = find_command(TOLV_HIERARCHY_DOWN_ACTION);
    QAction* const top = find_command(TOLV_GOTO_TOP_LEVEL_ACTION);
    for (const QAction* action : {up, down, top})
        EXPECT_FALSE(action->isEnabled());
    load("synth");
    for (const QAction* action : {up, down, top})
        EXPECT_FALSE(action->isEnabled()); // at the top, and no cell is chosen
    choose_cell(QStringLiteral("u_uart"));
    ASSERT_TRUE(down->isEnabled());
    down->trigger();
    EXPECT_EQ((QStringList{"serial_station", "u_uart"}), m_window->get_selected_path());
    EXPECT_FALSE(down->isEnabled());
    choose_cell(QStringLiteral("u_rx_fifo"));
    GUI_DRIVER::key_click(m_window.get(), Qt::Key_PageDown, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ((QStringList{"serial_station", "u_uart", "u_rx_fifo"}), m_window->get_selected_path());
    GUI_DRIVER::key_click(m_window.get(), Qt::Key_PageUp, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ((QStringList{"serial_station", "u_uart"}), m_window->get_selected_path());
    ASSERT_TRUE(top->isEnabled());
    ASSERT_TRUE(m_window->select_path({"serial_station", "u_uart", "u_rx_fifo"}));
    top->trigger();
    EXPECT_EQ((QStringList{"serial_station"}), m_window->get_selected_path());
    EXPECT_FALSE(up->isEnabled());
}

TEST_F(host_window_commands, a_cell_without_an_inside_cannot_be_entered)
{
    load("synth");
    ASSERT_TRUE(m_window->select_path({"serial_station", "u_reset"}));
    auto* const table = GUI_DRIVER::find_widget<QTableView>(m_window.get(), QStringLiteral("cell_table"));
    table->selectRow(0);
    EXPECT_FALSE(find_command(TOLV_HIERARCHY_DOWN_ACTION)->isEnabled());
}

TEST_F(host_window_commands, full_screen_is_turned_on_and_off_and_follows_the_window_manager)
{
    QAction* const action = find_command(TOLV_FULLSCREEN_ACTION);
    EXPECT_FALSE(action->isChecked());
    action->trigger();
    EXPECT_TRUE(m_window->isFullScreen());
    EXPECT_TRUE(action->isChecked());
    action->trigger();
    EXPECT_FALSE(m_window->isFullScreen());
    EXPECT_FALSE(action->isChecked());
    m_window->showFullScreen();
    EXPECT_TRUE(action->isChecked());
    m_window->showNormal();
    EXPECT_FALSE(action->isChecked());
}

TEST_F(host_window_commands, a_recent_file_has_the_picture_of_its_kind)
{
    load("synth");
    auto* const menu = GUI_DRIVER::find_widget<QMenu>(m_window.get(), QStringLiteral("recent_menu"));
    EXPECT_EQ(tolv_get_menu_text(TOLV_RECENT_FILES_ACTION), menu->title());
    emit menu->aboutToShow();
    EXPECT_EQ(tolv_get_icon(TOLV_DESIGN_UNITS_JSON_ICON).cacheKey(), menu->actions().at(0)->icon().cacheKey());
    EXPECT_EQ(get_design("synth"), menu->actions().at(0)->statusTip());
}

TEST_F(host_window_commands, keys_show_and_hide_the_docks)
{
    auto* const dock = GUI_DRIVER::find_widget<TOLV_DOCK_WIDGET>(m_window.get(), QStringLiteral("hierarchy_dock"));
    ASSERT_TRUE(dock->isVisible());
    GUI_DRIVER::key_click(m_window.get(), Qt::Key_1, Qt::AltModifier);
    EXPECT_FALSE(dock->isVisible());
    GUI_DRIVER::key_click(m_window.get(), Qt::Key_1, Qt::AltModifier);
    EXPECT_TRUE(dock->isVisible());
}
