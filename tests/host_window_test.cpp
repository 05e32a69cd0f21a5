#include "host_workbench_fixture.h"
#include "netlist_generator.h"
#include "netlist_reader.h"
#include "workbench_documents.h"
#include "workbench_loader.h"
#include "workbench_module_view.h"
#include "workbench_recent_files.h"

#include "cfgq_registry.h"
#include "gui_answers.h"
#include "test_environment.h"

#include <QAbstractItemView>
#include <QDialog>
#include <QDockWidget>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTabWidget>
#include <QTest>
#include <QTreeView>
#include <QUrl>

#include <memory>

namespace
{
QString get_design(const char* name)
{
    return QStringLiteral(WORKBENCH_DESIGNS "/serial_station_%1.json").arg(QLatin1String(name));
}

QString write_file(const std::string& name, const std::string& content)
{
    return QString::fromStdString(TEST_ENVIRONMENT::write_file(name, content));
}

QString write_large_file(const std::string& name = "large.json")
{
    return write_file(name, NETLIST_GENERATOR::make(12000));
}
} // namespace

class host_window : public WORKBENCH_TEST
{
protected:
    void SetUp() override
    {
        WORKBENCH_TEST::SetUp();
        WORKBENCH_RECENT_FILES::clear();
        make_and_show_window();
        m_window->get_documents()->show_document(WORKBENCH_DOCUMENTS::DOCUMENT_TABLES);
    }

    WORKBENCH_WINDOW& window() const
    {
        return *m_window;
    }

    template <typename T>
    T* find(const char* object_name) const
    {
        return GUI_DRIVER::find_widget<T>(m_window.get(), QString::fromLatin1(object_name));
    }

    void wait_for_load() const
    {
        GUI_DRIVER::wait_for([this] { return !m_window->is_loading(); }, 30000);
    }

    void load(const QString& file) const
    {
        m_window->open_file(file);
        wait_for_load();
    }

    QString get_messages() const
    {
        return find<QPlainTextEdit>("messages")->toPlainText();
    }

    QString text_at(const char* view, int row, int column) const
    {
        return find<QAbstractItemView>(view)->model()->index(row, column).data().toString();
    }

    /// The first property of the first group with that name.
    QString get_property(const QString& name) const
    {
        const QAbstractItemModel* const model = find<QTreeView>("property_view")->model();
        for (int group = 0; group < model->rowCount(); ++group)
        {
            const QModelIndex parent = model->index(group, 0);
            for (int row = 0; row < model->rowCount(parent); ++row)
            {
                if (model->index(row, 0, parent).data().toString() == name)
                    return model->index(row, 1, parent).data().toString();
            }
        }
        return QString();
    }

    /// A click on the row of a table.
    void click_row(const char* view_name, int row) const
    {
        auto* const view = find<QAbstractItemView>(view_name);
        GUI_DRIVER::click(view->viewport(), view->visualRect(view->model()->index(row, 0)).center());
    }
};

// ---- Opening --------------------------------------------------------------------------------------------------------

TEST_F(host_window, is_empty_at_first)
{
    EXPECT_EQ("Norvane Workbench", window().windowTitle());
    EXPECT_EQ("No design is open.", find<QLabel>("module_title")->text());
    EXPECT_EQ("No design is open", find<QLabel>("file_label")->text());
    EXPECT_FALSE(find<QProgressBar>("progress_bar")->isVisible());
    EXPECT_FALSE(find<QPushButton>("cancel_button")->isVisible());
    EXPECT_EQ(nullptr, window().get_netlist());
    EXPECT_EQ(QStringList(), window().get_selected_path());
    window().reload();
    EXPECT_FALSE(window().is_loading());
}

TEST_F(host_window, a_design_shows_its_hierarchy_tables_totals_and_status)
{
    QSignalSpy ended(&window(), SIGNAL(load_ended()));
    load(get_design("synth"));
    EXPECT_EQ(1, ended.count());
    ASSERT_NE(nullptr, window().get_netlist());
    EXPECT_EQ("", window().get_load_error());
    EXPECT_EQ("serial_station_synth.json - Norvane Workbench", window().windowTitle());
    EXPECT_EQ((QStringList{"serial_station"}), window().get_selected_path());
    EXPECT_EQ("<b>serial_station</b>", find<QLabel>("module_title")->text());
    const auto* const tabs = find<QTabWidget>("module_tabs");
    EXPECT_EQ("&Cells (15)", tabs->tabText(0));
    EXPECT_EQ("&Ports (8)", tabs->tabText(1));
    EXPECT_EQ("&Nets (24)", tabs->tabText(2));
    EXPECT_EQ("620", find<QLabel>("total_cells")->text());
    EXPECT_EQ("13", find<QLabel>("total_instances")->text());
    EXPECT_EQ("342", find<QLabel>("total_nets")->text());
    EXPECT_EQ("3", find<QLabel>("total_levels")->text());
    EXPECT_EQ("SB_LUT4", text_at("type_table", 0, 0));
    EXPECT_EQ("305", text_at("type_table", 0, 2));
    EXPECT_EQ("620 cells, 13 module instances, 342 nets", find<QLabel>("totals_label")->text());
    EXPECT_TRUE(find<QLabel>("file_label")->text().endsWith("host/designs/serial_station_synth.json"));
    EXPECT_TRUE(get_messages().contains("written by Yosys"));
}

TEST_F(host_window, a_placed_design_shows_where_its_cells_lie)
{
    load(get_design("placed"));
    EXPECT_FALSE(find<QTableView>("cell_table")->isColumnHidden(CELL_TABLE_MODEL::COLUMN_LOCATION));
    EXPECT_TRUE(text_at("cell_table", 0, CELL_TABLE_MODEL::COLUMN_LOCATION).startsWith("X"));
    load(get_design("synth"));
    EXPECT_TRUE(find<QTableView>("cell_table")->isColumnHidden(CELL_TABLE_MODEL::COLUMN_LOCATION));
}

TEST_F(host_window, a_bad_file_gets_a_message_and_the_design_stays)
{
    load(get_design("rtl"));
    const auto before = window().get_netlist();
    const QString bad = write_file("bad.json", "{\"modules\":\n[]}");
    QSignalSpy ended(&window(), SIGNAL(load_ended()));
    load(bad);
    EXPECT_EQ(1, ended.count());
    const QString text = bad + ":2:1: modules: a list stands where an object is expected";
    EXPECT_EQ(text, window().get_load_error());
    EXPECT_TRUE(get_messages().endsWith("Error: " + text)) << get_messages().toStdString();
    EXPECT_EQ("bad.json could not be opened", window().statusBar()->currentMessage());
    EXPECT_EQ(before, window().get_netlist());
    EXPECT_EQ("serial_station_rtl.json - Norvane Workbench", window().windowTitle());
    EXPECT_FALSE(find<QProgressBar>("progress_bar")->isVisible());
    // The window is as usable as before.
    EXPECT_TRUE(window().select_path({"serial_station", "u_timer"}));
    load(get_design("synth"));
    EXPECT_EQ("", window().get_load_error());
    EXPECT_EQ("", window().statusBar()->currentMessage());
    EXPECT_NE(before, window().get_netlist());
}

TEST_F(host_window, a_message_brings_its_dock_back)
{
    auto* const dock = find<QDockWidget>("messages_dock");
    dock->hide();
    load(QStringLiteral("/nonexistent/file.json"));
    EXPECT_TRUE(dock->isVisible());
    EXPECT_EQ("/nonexistent/file.json: there is no such file", window().get_load_error());
    EXPECT_EQ("Norvane Workbench", window().windowTitle());
}

TEST_F(host_window, every_kind_of_bad_file_leaves_the_window_usable)
{
    const std::string good = TEST_ENVIRONMENT::read_file(get_design("rtl").toStdString());
    const QString files[] = {write_file("empty.json", ""),
                             write_file("cut.json", good.substr(0, good.size() / 2)),
                             write_file("noise.json", std::string("\x7f\x45LF\0\xff\xfe", 7)),
                             write_file("list.json", "[1]"),
                             write_file("other.json", "{\"a\":1}"),
                             write_file("deep.json", "{\"a\":" + std::string(100000, '[')),
                             write_file("types.json", "{\"modules\":{\"m\":{\"cells\":{\"c\":{\"type\":1}}}}}"),
                             write_file("self.json", "{\"modules\":{\"m\":{\"cells\":{\"c\":{\"type\":\"m\"}}}}}"),
                             QString::fromStdString(TEST_ENVIRONMENT::get_folder())};
    for (const QString& file : files)
    {
        load(file);
        EXPECT_TRUE(window().get_load_error().startsWith(file + ":")) << window().get_load_error().toStdString();
        EXPECT_TRUE(get_messages().contains(window().get_load_error()));
    }
    load(get_design("rtl"));
    EXPECT_EQ("", window().get_load_error());
    EXPECT_NE(nullptr, window().get_netlist());
}

TEST_F(host_window, loading_shows_progress_and_ends_with_a_cancel)
{
    load(get_design("synth"));
    const auto before = window().get_netlist();
    window().open_file(write_large_file());
    EXPECT_TRUE(window().is_loading());
    auto* const cancel = find<QPushButton>("cancel_button");
    EXPECT_TRUE(find<QProgressBar>("progress_bar")->isVisible());
    EXPECT_TRUE(cancel->isVisible());
    EXPECT_FALSE(find<QLabel>("totals_label")->isVisible());
    // Without the event loop in between, so that the file cannot be there first.
    cancel->click();
    wait_for_load();
    EXPECT_FALSE(find<QProgressBar>("progress_bar")->isVisible());
    EXPECT_FALSE(cancel->isVisible());
    EXPECT_EQ("", window().get_load_error());
    EXPECT_EQ(before, window().get_netlist());
    EXPECT_TRUE(get_messages().endsWith("large.json was cancelled"));
    EXPECT_EQ("Cancelled", window().statusBar()->currentMessage());
}

TEST_F(host_window, the_design_can_be_used_while_another_is_loaded)
{
    load(get_design("synth"));
    window().open_file(write_large_file());
    EXPECT_TRUE(window().select_path({"serial_station", "u_uart"}));
    EXPECT_TRUE(window().is_loading());
    EXPECT_EQ("&Cells (10)", find<QTabWidget>("module_tabs")->tabText(0));
    wait_for_load();
    EXPECT_EQ((QStringList{"large_top"}), window().get_selected_path());
    EXPECT_EQ("36003", find<QLabel>("total_cells")->text().remove(','));
}

TEST_F(host_window, a_second_file_takes_the_place_of_one_that_is_loaded)
{
    QSignalSpy ended(&window(), SIGNAL(load_ended()));
    window().open_file(write_large_file());
    window().open_file(get_design("rtl"));
    wait_for_load();
    EXPECT_EQ(1, ended.count());
    EXPECT_EQ("serial_station_rtl.json - Norvane Workbench", window().windowTitle());
    EXPECT_EQ((QStringList{"serial_station"}), window().get_selected_path());
}

TEST_F(host_window, a_window_can_go_while_it_loads)
{
    window().open_file(write_large_file());
    m_window.reset();
}

TEST_F(host_window, reload_reads_the_file_anew_and_stays_where_the_user_was)
{
    const QString file = write_file("copy.json", TEST_ENVIRONMENT::read_file(get_design("synth").toStdString()));
    load(file);
    ASSERT_TRUE(window().select_path({"serial_station", "u_uart", "u_tx_fifo"}));
    TEST_ENVIRONMENT::write_file("copy.json", TEST_ENVIRONMENT::read_file(get_design("rtl").toStdString()));
    window().reload();
    wait_for_load();
    EXPECT_EQ((QStringList{"serial_station", "u_uart", "u_tx_fifo"}), window().get_selected_path());
    EXPECT_EQ("215", find<QLabel>("totals_label")->text().section(' ', 0, 0));
    // Where the instance is gone, the top is shown.
    TEST_ENVIRONMENT::write_file("copy.json", R"({"modules":{"serial_station":{}}})");
    window().reload();
    wait_for_load();
    EXPECT_EQ((QStringList{"serial_station"}), window().get_selected_path());
}

TEST_F(host_window, a_file_that_is_dropped_is_opened)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(get_design("rtl"))});
    EXPECT_EQ(Qt::CopyAction, GUI_DRIVER::drop(&window(), window().rect().center(), &data));
    wait_for_load();
    EXPECT_EQ("serial_station_rtl.json - Norvane Workbench", window().windowTitle());
    QMimeData two_files;
    two_files.setUrls({QUrl::fromLocalFile(get_design("rtl")), QUrl::fromLocalFile(get_design("synth"))});
    EXPECT_EQ(Qt::IgnoreAction, GUI_DRIVER::drop(&window(), window().rect().center(), &two_files));
    EXPECT_FALSE(window().is_loading());
}

// ---- Choosing -------------------------------------------------------------------------------------------------------

TEST_F(host_window, a_click_on_an_instance_shows_its_module)
{
    load(get_design("synth"));
    // In a narrow window the names stand in a view of their own.
    auto* const names = find<QTreeView>("hierarchy_names");
    auto* const tree = names->isVisible() ? names : find<QTreeView>("hierarchy");
    const QModelIndex top = tree->model()->index(0, 0);
    ASSERT_TRUE(tree->isExpanded(top));
    QModelIndex timer;
    for (int row = 0; row < tree->model()->rowCount(top); ++row)
    {
        if (tree->model()->index(row, 0, top).data().toString() == "u_timer")
            timer = tree->model()->index(row, 0, top);
    }
    GUI_DRIVER::click(tree->viewport(), tree->visualRect(timer).center());
    EXPECT_EQ((QStringList{"serial_station", "u_timer"}), window().get_selected_path());
    EXPECT_EQ("<b>timer_block</b> &nbsp; serial_station &rsaquo; u_timer", find<QLabel>("module_title")->text());
    EXPECT_EQ("&Ports (10)", find<QTabWidget>("module_tabs")->tabText(1));
    EXPECT_EQ("2", find<QLabel>("total_levels")->text());
    EXPECT_EQ("timer_block", get_property("Name"));
}

TEST_F(host_window, the_chosen_cell_port_or_net_shows_its_properties)
{
    load(get_design("synth"));
    ASSERT_TRUE(window().select_path({"serial_station", "u_reset"}));
    EXPECT_EQ("reset_synchroniser", get_property("Name"));
    click_row("cell_table", 0);
    EXPECT_EQ(text_at("cell_table", 0, 0), get_property("Name"));
    EXPECT_EQ(text_at("cell_table", 0, 1), get_property("Type"));
    auto* const tabs = find<QTabWidget>("module_tabs");
    tabs->setCurrentIndex(WORKBENCH_MODULE_VIEW::TAB_PORTS);
    EXPECT_EQ("reset_synchroniser", get_property("Name")); // nothing is chosen in this tab
    click_row("port_table", 1);
    EXPECT_EQ(text_at("port_table", 1, 0), get_property("Name"));
    EXPECT_EQ(text_at("port_table", 1, 1), get_property("Direction"));
    tabs->setCurrentIndex(WORKBENCH_MODULE_VIEW::TAB_NETS);
    click_row("net_table", 2);
    EXPECT_EQ(text_at("net_table", 2, 0), get_property("Name"));
    tabs->setCurrentIndex(WORKBENCH_MODULE_VIEW::TAB_CELLS);
    EXPECT_EQ(text_at("cell_table", 0, 0), get_property("Name"));
    // Another module has nothing chosen.
    ASSERT_TRUE(window().select_path({"serial_station", "u_lamps"}));
    EXPECT_EQ("lamp_register", get_property("Name"));
}

TEST_F(host_window, a_double_click_on_an_instance_among_the_cells_goes_into_it)
{
    load(get_design("synth"));
    auto* const table = find<QTableView>("cell_table");
    int row = 0;
    while (text_at("cell_table", row, 0) != "u_uart")
        ASSERT_LT(++row, table->model()->rowCount());
    table->scrollTo(table->model()->index(row, 0));
    GUI_DRIVER::double_click(table->viewport(), table->visualRect(table->model()->index(row, 0)).center());
    EXPECT_EQ((QStringList{"serial_station", "u_uart"}), window().get_selected_path());
    // A cell of the technology has no inside.
    GUI_DRIVER::double_click(table->viewport(), table->visualRect(table->model()->index(0, 0)).center());
    EXPECT_EQ((QStringList{"serial_station", "u_uart"}), window().get_selected_path());
}

TEST_F(host_window, a_click_on_a_header_sorts_and_the_properties_follow_the_row)
{
    load(get_design("synth"));
    auto* const table = find<QTableView>("cell_table");
    EXPECT_EQ("bus_read_data_SB_LUT4_O", text_at("cell_table", 0, 0));
    QHeaderView* const header = table->horizontalHeader();
    const QPoint ports(header->sectionViewportPosition(CELL_TABLE_MODEL::COLUMN_PORTS) + 5, header->height() / 2);
    GUI_DRIVER::click(header->viewport(), ports);
    EXPECT_EQ("u_reset", text_at("cell_table", 0, 0)); // 3 ports
    GUI_DRIVER::click(header->viewport(), ports);
    EXPECT_EQ("u_bridge", text_at("cell_table", 0, 0)); // 13 ports
    click_row("cell_table", 0);
    EXPECT_EQ("u_bridge", get_property("Name"));
}

TEST_F(host_window, an_unknown_path_changes_nothing)
{
    EXPECT_FALSE(window().select_path({"serial_station"}));
    load(get_design("synth"));
    EXPECT_FALSE(window().select_path({"serial_station", "nobody"}));
    EXPECT_EQ((QStringList{"serial_station"}), window().get_selected_path());
}

// ---- Menus ----------------------------------------------------------------------------------------------------------

TEST_F(host_window, recent_files_are_offered_the_latest_first)
{
    load(get_design("rtl"));
    load(get_design("synth"));
    load(QStringLiteral("/nonexistent.json")); // not one that was opened
    EXPECT_EQ((QStringList{get_design("synth"), get_design("rtl")}), WORKBENCH_RECENT_FILES::get());
    auto* const menu = find<QMenu>("recent_menu");
    emit menu->aboutToShow();
    ASSERT_EQ(4, menu->actions().size());
    EXPECT_TRUE(menu->actions().at(0)->text().startsWith("&1  "));
    menu->actions().at(1)->trigger();
    wait_for_load();
    EXPECT_EQ("serial_station_rtl.json - Norvane Workbench", window().windowTitle());
    emit menu->aboutToShow();
    EXPECT_EQ("&Clear Recent Files", menu->actions().at(3)->text());
    menu->actions().at(3)->trigger();
    EXPECT_EQ(QStringList(), WORKBENCH_RECENT_FILES::get());
    emit menu->aboutToShow();
    ASSERT_EQ(3, menu->actions().size());
    EXPECT_EQ("&No Recent Files", menu->actions().at(0)->text());
    EXPECT_FALSE(menu->actions().at(0)->isEnabled());
    EXPECT_FALSE(menu->actions().at(2)->isEnabled());
}

TEST_F(host_window, recent_files_keep_eight_and_ignore_a_list_of_another_version)
{
    for (int i = 0; i < 10; ++i)
        WORKBENCH_RECENT_FILES::add(QStringLiteral("/%1").arg(i));
    WORKBENCH_RECENT_FILES::add(QStringLiteral("/5"));
    EXPECT_EQ((QStringList{"/5", "/9", "/8", "/7", "/6", "/4", "/3", "/2"}), WORKBENCH_RECENT_FILES::get());
    CFGQ_REGISTRY_KEY key(CFGQ_REGISTRY_KEY::SUB_KEY_GUI, "norvane_workbench/recent_files");
    key.set_value("version", 2);
    EXPECT_EQ(QStringList(), WORKBENCH_RECENT_FILES::get());
}

TEST_F(host_window, the_view_menu_hides_and_shows_the_docks)
{
    auto* const menu = find<QMenu>("view_menu");
    const char* const docks[] = {"hierarchy_dock", "totals_dock", "property_dock",   "messages_dock",
                                 "console_dock",   "status_dock", "assignments_dock"};
    ASSERT_EQ(10, menu->actions().size()); // and behind a line the graph of the hierarchy, and full screen
    for (int i = 0; i < 7; ++i)
    {
        if (!find<QDockWidget>(docks[i])->isVisible()) // behind the tab of another one
            menu->actions().at(i)->trigger();
        EXPECT_TRUE(find<QDockWidget>(docks[i])->isVisible());
        EXPECT_TRUE(menu->actions().at(i)->isChecked());
        menu->actions().at(i)->trigger();
        EXPECT_FALSE(find<QDockWidget>(docks[i])->isVisible()) << docks[i];
        menu->actions().at(i)->trigger();
        EXPECT_TRUE(find<QDockWidget>(docks[i])->isVisible()) << docks[i];
    }
}

TEST_F(host_window, the_about_box_names_the_product_and_goes)
{
    QString title;
    answer_next_dialog(
        [&title](QDialog* dialog)
        {
            title = dialog->windowTitle();
            dialog->reject();
        });
    find<QAction>("TOLV_ABOUT_NORVANE_ACTION")->trigger();
    EXPECT_EQ("About Norvane Workbench", title);
}

TEST_F(host_window, quit_closes_the_window)
{
    find<QMenu>("file_menu")->actions().back()->trigger();
    EXPECT_FALSE(window().isVisible());
}

// ---- What every window owes its user --------------------------------------------------------------------------------

TEST_F(host_window, mnemonics_do_not_clash)
{
    load(get_design("synth"));
    emit find<QMenu>("recent_menu")->aboutToShow();
    QStringList window_texts;
    for (const QAction* action : window().menuBar()->actions())
        window_texts.append(action->text());
    const auto* const tabs = find<QTabWidget>("module_tabs");
    for (int tab = 0; tab < tabs->count(); ++tab)
        window_texts.append(tabs->tabText(tab));
    QVector<QStringList> groups{window_texts};
    for (const char* name :
         {"file_menu", "recent_menu", "view_menu", "go_menu", "tools_menu", "window_menu", "help_menu"})
    {
        QStringList texts;
        for (const QAction* action : find<QMenu>(name)->actions())
        {
            if (!action->isSeparator())
                texts.append(action->text());
        }
        groups.append(texts);
    }
    for (const QStringList& group : groups)
    {
        QString seen;
        for (const QString& text : group)
        {
            const int mark = text.indexOf('&');
            ASSERT_GE(mark, 0) << text.toStdString();
            EXPECT_FALSE(seen.contains(text[mark + 1].toLower())) << text.toStdString();
            seen += text[mark + 1].toLower();
        }
    }
}

TEST_F(host_window, every_view_has_a_name_for_a_screen_reader)
{
    for (const char* name :
         {"hierarchy", "cell_table", "port_table", "net_table", "type_table", "property_view", "messages"})
        EXPECT_NE("", find<QWidget>(name)->accessibleName()) << name;
    EXPECT_NE("", find<QWidget>("progress_bar")->accessibleName());
}

TEST_F(host_window, tab_goes_through_the_docks_into_the_document)
{
    load(get_design("synth"));
    auto* const first = find<QWidget>("hierarchy");
    ASSERT_TRUE(GUI_DRIVER::focus(first));
    QStringList order;
    for (int i = 0; i < 20; ++i)
    {
        order.append(QApplication::focusWidget()->objectName());
        GUI_DRIVER::key_click(QApplication::focusWidget(), Qt::Key_Tab);
        if (order.contains(QApplication::focusWidget()->objectName()))
            break;
    }
    order.removeAll(QStringLiteral("qt_tabwidget_tabbar"));
    // A document keeps the focus.
    EXPECT_EQ((QStringList{"hierarchy", "type_table", "property_view", "messages", "cell_table"}), order);
}

// ---- The loader -----------------------------------------------------------------------------------------------------

class host_loader : public TOLV_GUI_TEST
{
};

TEST_F(host_loader, progress_rises_and_the_end_comes_once)
{
    WORKBENCH_LOADER loader;
    QSignalSpy progressed(&loader, SIGNAL(progressed(int)));
    QSignalSpy finished(&loader, SIGNAL(finished()));
    loader.start(write_large_file());
    EXPECT_TRUE(loader.is_running());
    ASSERT_TRUE(GUI_DRIVER::wait_for([&loader] { return !loader.is_running(); }, 30000));
    EXPECT_EQ(1, finished.count());
    ASSERT_NE(nullptr, loader.get_result().netlist);
    int last = 0;
    for (const QList<QVariant>& arguments : progressed)
    {
        EXPECT_GE(arguments.at(0).toInt(), last);
        last = arguments.at(0).toInt();
    }
    EXPECT_GE(progressed.count(), 1);
    EXPECT_LE(last, 100);
}

TEST_F(host_loader, a_cancel_without_a_file_is_harmless)
{
    WORKBENCH_LOADER loader;
    QSignalSpy finished(&loader, SIGNAL(finished()));
    loader.cancel();
    GUI_DRIVER::process_posted();
    EXPECT_EQ(0, finished.count());
    EXPECT_FALSE(loader.is_running());
}

TEST_F(host_loader, many_starts_in_a_row_end_with_the_last_file)
{
    WORKBENCH_LOADER loader;
    QSignalSpy finished(&loader, SIGNAL(finished()));
    const QString large = write_large_file();
    for (int i = 0; i < 5; ++i)
        loader.start(large);
    loader.start(get_design("rtl"));
    EXPECT_EQ(get_design("rtl"), loader.get_file());
    ASSERT_TRUE(GUI_DRIVER::wait_for([&loader] { return !loader.is_running(); }, 30000));
    EXPECT_EQ(1, finished.count());
    ASSERT_NE(nullptr, loader.get_result().netlist);
    EXPECT_EQ(get_design("rtl").toStdString(), loader.get_result().netlist->file);
}
