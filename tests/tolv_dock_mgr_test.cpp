#include "tolv_dock_mgr.h"

#include "gui_test.h"
#include "msg_prompt.h"
#include "test_environment.h"
#include "thr_drl.h"
#include "tolv_dock_widget.h"
#include "tolv_main_window.h"

#include <QApplication>

#include <dlfcn.h>
#include <tinyxml2.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <set>
#include <sstream>

namespace
{
using LINES = std::vector<std::string>;

struct STANDARD_ROW
{
    TOLV_DOCK_ENUM dock;
    int value;
    const char* entry;
    const char* module;
    const char* factory;
};

const STANDARD_ROW ROWS[] = {
    {TOLV_DOCK_MESSAGES, 0, "mod_messages", "mod_messages", "mod_messages_create_dock_widget"},
    {TOLV_DOCK_NAVIGATOR, 1, "mod_navigator", "mod_navigator", "mod_navigator_create_dock_widget"},
    {TOLV_DOCK_NODE_FINDER, 2, "mod_nodefind", "mod_nodefind", "mod_nodefind_create_dock_widget"},
    {TOLV_DOCK_CONSOLE, 3, "mod_console", "mod_console", "mod_console_create_dock_widget"},
    {TOLV_DOCK_STATUS, 4, "mod_status", "mod_status", "mod_status_create_dock_widget"},
    {TOLV_DOCK_CHANGES, 5, "mod_changes", "mod_changes", "mod_changes_create_dock_widget"},
    {TOLV_DOCK_REGIONS, 6, "mod_regions", "mod_regions", "mod_regions_create_dock_widget"},
    {TOLV_DOCK_PARTITIONS, 7, "mod_partitions", "mod_partitions", "mod_partitions_create_dock_widget"},
    {TOLV_DOCK_ASSIGNMENTS, 8, "mod_assign", "mod_assign", "mod_assign_create_dock_widget"},
    {TOLV_DOCK_FLOW, 9, "mod_flow", "mod_flow", "mod_flow_create_dock_widget"},
    {TOLV_DOCK_CATALOG, 10, "mod_catalog", "mod_catalog", "mod_catalog_create_dock_widget"},
    {TOLV_DOCK_TASKS, 11, "mod_tasks", "mod_tasks", "mod_tasks_create_dock_widget"},
    {TOLV_DOCK_TCL_SCRIPTS, 12, "mod_console:tcl_scripts", "mod_console", "mod_console_tcl_scripts_create_dock_widget"},
    {TOLV_DOCK_NAVIGATOR_HIERARCHY, 13, "mod_navigator:hierarchy", "mod_navigator",
     "mod_navigator_hierarchy_create_dock_widget"},
    {TOLV_DOCK_NAVIGATOR_FILES, 14, "mod_navigator:files", "mod_navigator", "mod_navigator_files_create_dock_widget"},
    {TOLV_DOCK_NAVIGATOR_DESIGN_UNITS, 15, "mod_navigator:design_units", "mod_navigator",
     "mod_navigator_design_units_create_dock_widget"},
    {TOLV_DOCK_NAVIGATOR_IP_COMPONENTS, 16, "mod_navigator:ip_components", "mod_navigator",
     "mod_navigator_ip_components_create_dock_widget"},
};

bool has_page(const STANDARD_ROW& row)
{
    return std::string(row.entry) != row.module;
}

std::string get_message(const std::string& library, const std::string& reason)
{
    return "Can't open dockable window -- can't load library \"" + library + "\". " + reason + ".";
}

/// Keeps the prompts, and notes their place among the lines of the modules.
class PROMPT_KEEPER : public MSG_DISPLAY
{
public:
    explicit PROMPT_KEEPER(std::string log_file) : m_log_file(std::move(log_file))
    {
    }
    void post_display(MSG_POST*, unsigned int) override
    {
    }
    int prompt_display(MSG_PROMPT* prompt) override
    {
        m_texts.push_back(prompt->get_text());
        EXPECT_EQ(189000U, prompt->get_number());
        EXPECT_EQ("OTOLV_FAILED_TO_LOAD_LIBRARY", prompt->get_identifier());
        EXPECT_EQ(MSG_PROMPT_TYPE_O, prompt->get_type());
        if (std::FILE* const file = std::fopen(m_log_file.c_str(), "a"); file != nullptr)
        {
            std::fputs("message\n", file);
            std::fclose(file);
        }
        return MSG_PROMPT_RESULT_OK;
    }
    void internal_error_display(std::string) override
    {
    }

    LINES m_texts;

private:
    std::string m_log_file;
};

/// A folder of modules, empty at first, of each test's own: a file of the same path would count as the one that an
/// earlier test has loaded.
class TOLV_DOCK_MGR_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        const char* const name = testing::UnitTest::GetInstance()->current_test_info()->name();
        m_folder = TEST_ENVIRONMENT::get_folder() + "/" + name;
        std::filesystem::create_directory(m_folder);
        m_path = std::make_unique<SCOPED_ENVIRONMENT_VARIABLE>("NORVANE_MODULE_PATH", m_folder.c_str());
        m_log_file = TEST_ENVIRONMENT::write_file("dock_module_log.txt", "");
        m_log = std::make_unique<SCOPED_ENVIRONMENT_VARIABLE>("TEST_MODULE_LOG", m_log_file.c_str());
        m_keeper = std::make_unique<PROMPT_KEEPER>(m_log_file);
        m_old_display = msg_get_default_report()->get_display();
        msg_get_default_report()->set_display(m_keeper.get());
        m_window = std::make_unique<TOLV_MAIN_WINDOW>();
    }
    void TearDown() override
    {
        m_window.reset();
        msg_get_default_report()->set_display(m_old_display);
        m_log.reset();
        m_path.reset();
        TOLV_GUI_TEST::TearDown();
    }

    /// A module of this name with factories that take the main window, that and where from, or with no function.
    void add_module(const std::string& name, const std::string& kind = "dock_factories") const
    {
        std::filesystem::copy_file(std::string(TOLV_TEST_MODULES) + "/" + kind + ".so", m_folder + "/" + name + ".so");
    }
    void add_all_modules(const std::string& kind = "dock_factories") const
    {
        for (const STANDARD_ROW& row : ROWS)
        {
            if (!has_page(row))
                add_module(row.module, kind);
        }
    }
    LINES take_lines() const
    {
        LINES lines;
        std::istringstream text(TEST_ENVIRONMENT::read_file(m_log_file));
        for (std::string line; std::getline(text, line);)
            lines.push_back(line);
        std::remove(m_log_file.c_str());
        return lines;
    }
    LINES take_messages() const
    {
        LINES texts;
        texts.swap(m_keeper->m_texts);
        return texts;
    }

    TOLV_DOCK_MGR m_manager;
    std::unique_ptr<TOLV_MAIN_WINDOW> m_window;
    std::string m_folder;

private:
    std::string m_log_file;
    std::unique_ptr<SCOPED_ENVIRONMENT_VARIABLE> m_path;
    std::unique_ptr<SCOPED_ENVIRONMENT_VARIABLE> m_log;
    std::unique_ptr<PROMPT_KEEPER> m_keeper;
    MSG_DISPLAY* m_old_display = nullptr;
};
} // namespace

// ---- Standard windows -----------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_MGR_TEST, the_standard_windows_have_their_values)
{
    for (const STANDARD_ROW& row : ROWS)
        EXPECT_EQ(row.value, static_cast<int>(row.dock)) << row.entry;
    EXPECT_EQ(17U, std::size(ROWS));
}

TEST_F(TOLV_DOCK_MGR_TEST, each_standard_window_comes_from_its_module_and_its_factory)
{
    for (const STANDARD_ROW& row : ROWS)
    {
        SCOPED_TRACE(row.entry);
        const std::string old_folder = m_folder;
        m_folder += std::string("/") + row.factory;
        std::filesystem::create_directory(m_folder);
        const SCOPED_ENVIRONMENT_VARIABLE path("NORVANE_MODULE_PATH", m_folder.c_str());
        add_module(row.module); // the only one that there is
        const TOLV_DOCK_WIDGET* const window = m_manager.create_dock_widget(row.dock, m_window.get());
        ASSERT_NE(nullptr, window);
        EXPECT_EQ(QLatin1String(row.factory), window->windowTitle());
        EXPECT_EQ(m_window.get(), window->parentWidget());
        EXPECT_EQ((LINES{std::string("load ") + row.module, std::string("call ") + row.factory}), take_lines());
        EXPECT_EQ(LINES{}, take_messages());
        m_folder = old_folder;
    }
}

TEST_F(TOLV_DOCK_MGR_TEST, asking_twice_makes_two_windows_of_one_module)
{
    add_all_modules();
    const TOLV_DOCK_WIDGET* const first = m_manager.create_dock_widget(TOLV_DOCK_STATUS, m_window.get());
    const TOLV_DOCK_WIDGET* const second = m_manager.create_dock_widget(TOLV_DOCK_STATUS, m_window.get());
    ASSERT_NE(nullptr, first);
    ASSERT_NE(nullptr, second);
    EXPECT_NE(first, second);
    const std::string call = "call mod_status_create_dock_widget";
    EXPECT_EQ((LINES{"load mod_status", call, call}), take_lines());
}

TEST_F(TOLV_DOCK_MGR_TEST, a_window_is_neither_shown_nor_placed)
{
    add_all_modules();
    m_window->show();
    auto* const window = m_manager.create_dock_widget(TOLV_DOCK_FLOW, m_window.get());
    ASSERT_NE(nullptr, window);
    EXPECT_EQ(Qt::NoDockWidgetArea, m_window->dockWidgetArea(window));
    EXPECT_FALSE(window->isVisible());
    m_window->hide();
}

TEST_F(TOLV_DOCK_MGR_TEST, a_module_that_made_a_window_stays_loaded_when_the_window_is_gone)
{
    add_all_modules();
    delete m_manager.create_dock_widget(TOLV_DOCK_TASKS, m_window.get());
    EXPECT_EQ((LINES{"load mod_tasks", "call mod_tasks_create_dock_widget"}), take_lines());
}

TEST_F(TOLV_DOCK_MGR_TEST, an_unknown_window_is_null_without_a_message)
{
    add_all_modules();
    for (const int value : {-1, 17, 1000})
    {
        const auto dock = static_cast<TOLV_DOCK_ENUM>(value);
        EXPECT_EQ(nullptr, m_manager.create_dock_widget(dock, m_window.get()));
        EXPECT_EQ(nullptr, m_manager.create_dock_widget(dock, TOLV_DOCK_FROM_ENUM(1), m_window.get()));
    }
    EXPECT_EQ(LINES{}, take_lines());
    EXPECT_EQ(LINES{}, take_messages());
}

TEST_F(TOLV_DOCK_MGR_TEST, without_a_main_window_the_factory_gets_a_new_one)
{
    add_all_modules();
    m_window->setObjectName("refused"); // to tell it apart
    const auto window = std::unique_ptr<TOLV_DOCK_WIDGET>(m_manager.create_dock_widget(TOLV_DOCK_CONSOLE, nullptr));
    ASSERT_NE(nullptr, window);
    const std::unique_ptr<TOLV_MAIN_WINDOW> made(qobject_cast<TOLV_MAIN_WINDOW*>(window->parentWidget()));
    ASSERT_NE(nullptr, made);
    EXPECT_NE(m_window, made);
    EXPECT_EQ(nullptr, made->parent());
    EXPECT_EQ(QMainWindow(nullptr, Qt::WindowFlags()).windowFlags(), made->windowFlags());
    EXPECT_FALSE(made->isVisible());
    window->setParent(nullptr);
}

TEST_F(TOLV_DOCK_MGR_TEST, without_a_main_window_a_new_one_is_made_before_the_window_is_looked_up)
{
    const QWidgetList before = QApplication::topLevelWidgets();
    EXPECT_EQ(nullptr, m_manager.create_dock_widget(static_cast<TOLV_DOCK_ENUM>(17), nullptr));
    QWidgetList made = QApplication::topLevelWidgets();
    for (QWidget* window : before)
        made.removeOne(window);
    ASSERT_EQ(1, made.size());
    EXPECT_NE(nullptr, qobject_cast<TOLV_MAIN_WINDOW*>(made.constFirst()));
    EXPECT_EQ(LINES{}, take_messages());
    delete made.constFirst();
}

// ---- Failures -------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_MGR_TEST, a_module_that_is_missing_gives_the_message_with_its_name)
{
    // Some of the modules lie beside the test.
    const std::set<std::string> present{"mod_messages", "mod_navigator", "mod_console", "mod_status"};
    for (const STANDARD_ROW& row : ROWS)
    {
        if (present.count(row.module) > 0)
            continue;
        SCOPED_TRACE(row.entry);
        EXPECT_EQ(nullptr, m_manager.create_dock_widget(row.dock, m_window.get()));
        EXPECT_EQ((LINES{get_message(row.module, "No such file or directory")}), take_messages());
    }
}

TEST_F(TOLV_DOCK_MGR_TEST, a_broken_module_gives_the_message_with_the_systems_reason)
{
    TEST_ENVIRONMENT::write_file(std::filesystem::path(m_folder).filename().string() + "/mod_flow.so", "no module");
    EXPECT_EQ(nullptr, m_manager.create_dock_widget(TOLV_DOCK_FLOW, m_window.get()));
    const std::string reason = thr_drl_get_system_error();
    EXPECT_NE(std::string::npos, reason.find("mod_flow.so")) << reason;
    EXPECT_EQ((LINES{get_message("mod_flow", reason)}), take_messages());
}

TEST_F(TOLV_DOCK_MGR_TEST, a_module_without_the_function_is_null_without_a_message_and_stays_loaded)
{
    // It has the factories of all windows, but not this page's in a module of another name.
    add_module("mod_console", "dock_factories_with_from");
    EXPECT_EQ(nullptr, m_manager.create_dock_widget(TOLV_DOCK_TCL_SCRIPTS, m_window.get()));
    EXPECT_EQ((LINES{"load mod_console"}), take_lines());
    EXPECT_EQ(LINES{}, take_messages());
}

TEST_F(TOLV_DOCK_MGR_TEST, a_factory_that_makes_nothing_gives_the_message_and_the_module_is_unloaded_behind_it)
{
    add_all_modules();
    m_window->setObjectName("refused");
    EXPECT_EQ(nullptr, thr_drl_load("mod_other")); // what the message tells is the last failure
    const LINES message{get_message("mod_other", "No such file or directory")};

    EXPECT_EQ(nullptr, m_manager.create_dock_widget(TOLV_DOCK_TASKS, m_window.get()));
    EXPECT_EQ(message, take_messages());
    EXPECT_EQ((LINES{"load mod_tasks", "call mod_tasks_create_dock_widget", "message", "unload mod_tasks"}),
              take_lines());

    EXPECT_EQ(nullptr, m_manager.create_dock_widget(TOLV_DOCK_NAVIGATOR_FILES, m_window.get()));
    EXPECT_EQ(message, take_messages());
    EXPECT_EQ(
        (LINES{"load mod_navigator", "call mod_navigator_files_create_dock_widget", "message", "unload mod_navigator"}),
        take_lines());
}

TEST_F(TOLV_DOCK_MGR_TEST, a_module_that_has_windows_survives_a_factory_that_makes_nothing)
{
    add_all_modules();
    const TOLV_DOCK_WIDGET* const window = m_manager.create_dock_widget(TOLV_DOCK_STATUS, m_window.get());
    ASSERT_NE(nullptr, window);
    m_window->setObjectName("refused");
    EXPECT_EQ(nullptr, m_manager.create_dock_widget(TOLV_DOCK_STATUS, m_window.get()));
    const std::string call = "call mod_status_create_dock_widget";
    EXPECT_EQ((LINES{"load mod_status", call, call, "message"}), take_lines());
}

TEST_F(TOLV_DOCK_MGR_TEST, the_main_window_stays_as_it_was_when_a_window_fails)
{
    add_all_modules();
    m_window->setObjectName("refused");
    const QList<QObject*> children = m_window->findChildren<QObject*>();
    m_manager.create_dock_widget(TOLV_DOCK_TASKS, m_window.get());
    EXPECT_EQ(children, m_window->findChildren<QObject*>());
}

// ---- With where from ------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_MGR_TEST, a_factory_gets_the_main_window_and_where_from)
{
    add_all_modules("dock_factories_with_from");
    for (const STANDARD_ROW& row : ROWS)
    {
        if (has_page(row))
            continue;
        SCOPED_TRACE(row.entry);
        const auto from = static_cast<TOLV_DOCK_FROM_ENUM>(row.value + 40);
        const TOLV_DOCK_WIDGET* const window = m_manager.create_dock_widget(row.dock, from, m_window.get());
        ASSERT_NE(nullptr, window);
        EXPECT_EQ(QLatin1String(row.factory), window->windowTitle());
        EXPECT_EQ(m_window.get(), window->parentWidget());
        EXPECT_EQ((LINES{std::string("load ") + row.module,
                         std::string("call ") + row.factory + " from " + std::to_string(row.value + 40)}),
                  take_lines());
    }
    EXPECT_EQ(LINES{}, take_messages());
}

TEST_F(TOLV_DOCK_MGR_TEST, with_where_from_a_page_is_taken_for_a_module_and_gives_the_message_with_the_whole_entry)
{
    add_all_modules("dock_factories_with_from");
    add_module("mod_navigator_files", "dock_factories_with_from");
    for (const STANDARD_ROW& row : ROWS)
    {
        if (!has_page(row))
            continue;
        SCOPED_TRACE(row.entry);
        EXPECT_EQ(nullptr, m_manager.create_dock_widget(row.dock, TOLV_DOCK_FROM_ENUM(1), m_window.get()));
        EXPECT_EQ((LINES{get_message(row.entry, "No such file or directory")}), take_messages());
        EXPECT_EQ((LINES{"message"}), take_lines());
    }
}

TEST_F(TOLV_DOCK_MGR_TEST, with_where_from_no_main_window_stays_none)
{
    add_all_modules("dock_factories_with_from");
    const auto windows_before = QApplication::topLevelWidgets().size();
    const std::unique_ptr<TOLV_DOCK_WIDGET> window(
        m_manager.create_dock_widget(TOLV_DOCK_MESSAGES, TOLV_DOCK_FROM_ENUM(1), nullptr));
    ASSERT_NE(nullptr, window);
    EXPECT_EQ(nullptr, window->parentWidget());
    EXPECT_EQ(windows_before + 1, QApplication::topLevelWidgets().size());
}

TEST_F(TOLV_DOCK_MGR_TEST, with_where_from_the_failures_are_the_same)
{
    EXPECT_EQ(nullptr, m_manager.create_dock_widget(TOLV_DOCK_FLOW, TOLV_DOCK_FROM_ENUM(1), m_window.get()));
    EXPECT_EQ((LINES{get_message("mod_flow", "No such file or directory")}), take_messages());
    EXPECT_EQ((LINES{"message"}), take_lines());

    add_all_modules("dock_factories_with_from");
    m_window->setObjectName("refused");
    EXPECT_EQ(nullptr, m_manager.create_dock_widget(TOLV_DOCK_FLOW, TOLV_DOCK_FROM_ENUM(2), m_window.get()));
    EXPECT_EQ(1U, take_messages().size());
    EXPECT_EQ((LINES{"load mod_flow", "call mod_flow_create_dock_widget from 2", "message", "unload mod_flow"}),
              take_lines());
}

// ---- Descriptions in XML --------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_MGR_TEST, a_described_window_comes_from_the_module_and_the_function_that_the_description_names)
{
    add_module("mod_own");
    const std::unique_ptr<QWidget> parent = std::make_unique<QWidget>();
    const TOLV_DOCK_WIDGET* const window = m_manager.create_dock_widget(
        std::string("<?xml version=\"1.0\"?><!-- ours --><any><setWindowTitle>Own</setWindowTitle>"
                    "<access_function>make_described</access_function><dll_name>mod_own.dll</dll_name></any><other/>"),
        parent.get(), Qt::Tool);
    ASSERT_NE(nullptr, window);
    EXPECT_EQ(QStringLiteral("Own"), window->windowTitle());
    EXPECT_EQ(parent.get(), window->parentWidget());
    EXPECT_EQ((LINES{"load mod_own", "call make_described " + std::to_string(int(Qt::Tool))}), take_lines());
    EXPECT_EQ(LINES{}, take_messages());
}

TEST_F(TOLV_DOCK_MGR_TEST, the_factory_gets_the_element_itself)
{
    add_module("mod_own");
    tinyxml2::XMLDocument document;
    document.Parse("<list><skip/><dock><dll_name>mod_own</dll_name><access_function>make_described</access_function>"
                   "<setWindowTitle>Second</setWindowTitle></dock></list>");
    const tinyxml2::XMLElement* const element = document.FirstChildElement()->FirstChildElement("dock");
    const std::unique_ptr<TOLV_DOCK_WIDGET> window(m_manager.create_dock_widget(element, nullptr, Qt::WindowFlags()));
    ASSERT_NE(nullptr, window);
    EXPECT_EQ(QStringLiteral("Second"), window->windowTitle());
    EXPECT_EQ(nullptr, window->parentWidget());
}

TEST_F(TOLV_DOCK_MGR_TEST, the_text_of_a_child_is_its_first_node)
{
    add_module("mod_own");
    const std::unique_ptr<TOLV_DOCK_WIDGET> window(m_manager.create_dock_widget(
        std::string("<d><dll_name>mod_own<more/>mod_other</dll_name><dll_name>mod_other</dll_name>"
                    "<access_function>make_described<!-- ours --></access_function></d>"),
        nullptr, Qt::WindowFlags()));
    EXPECT_NE(nullptr, window);
    EXPECT_EQ(LINES{}, take_messages());
}

TEST_F(TOLV_DOCK_MGR_TEST, a_bad_description_is_null_without_a_message)
{
    add_module("mod_own");
    const tinyxml2::XMLElement* const no_element = nullptr;
    EXPECT_EQ(nullptr, m_manager.create_dock_widget(no_element, m_window.get(), Qt::WindowFlags()));
    for (const char* const xml : {"", "no XML", "<", "<!-- only this -->", "<dock/>", "<dock><dll_name/></dock>",
                                  "<dock><access_function>make_described</access_function></dock>",
                                  "<dock><dll_name></dll_name><access_function>make_described</access_function></dock>",
                                  "<dock><dll_name>mod_own</dll_name><access_function>make_descr"})
    {
        SCOPED_TRACE(xml);
        EXPECT_EQ(nullptr, m_manager.create_dock_widget(std::string(xml), m_window.get(), Qt::WindowFlags()));
    }
    EXPECT_EQ(LINES{}, take_messages());
    EXPECT_EQ(LINES{}, take_lines());
}

TEST_F(TOLV_DOCK_MGR_TEST, a_description_without_a_function_that_exists_is_null_without_a_message)
{
    add_module("mod_own");
    for (const char* const function :
         {"", "<access_function/>", "<access_function></access_function>", "<access_function>make</access_function>",
          "<access_function>make_described_create_dock_widget</access_function>"})
    {
        SCOPED_TRACE(function);
        const std::string xml = std::string("<dock><dll_name>mod_own</dll_name>") + function + "</dock>";
        EXPECT_EQ(nullptr, m_manager.create_dock_widget(xml, m_window.get(), Qt::WindowFlags()));
    }
    EXPECT_EQ(LINES{}, take_messages());
    EXPECT_EQ((LINES{"load mod_own"}), take_lines()); // and it stays loaded
}

TEST_F(TOLV_DOCK_MGR_TEST, a_described_window_fails_as_a_standard_one_does)
{
    const std::string missing = "<d><dll_name>mod_x</dll_name><access_function>make_nothing</access_function></d>";
    EXPECT_EQ(nullptr, m_manager.create_dock_widget(missing, m_window.get(), Qt::WindowFlags()));
    EXPECT_EQ((LINES{get_message("mod_x", "No such file or directory")}), take_messages());
    EXPECT_EQ((LINES{"message"}), take_lines());

    add_module("mod_own");
    const std::string nothing = "<d><dll_name>mod_own</dll_name><access_function>make_nothing</access_function></d>";
    EXPECT_EQ(nullptr, m_manager.create_dock_widget(nothing, m_window.get(), Qt::WindowFlags()));
    EXPECT_EQ(1U, take_messages().size());
    EXPECT_EQ((LINES{"load mod_own", "call make_nothing", "message", "unload mod_own"}), take_lines());
}

TEST_F(TOLV_DOCK_MGR_TEST, the_library_itself_has_two_factories_to_try_descriptions_with)
{
    Dl_info info;
    ASSERT_NE(0, dladdr(reinterpret_cast<const void*>(&vkl_tolv_test_create_dock_widget2), &info));
    const std::string begin = "<d><setWindowTitle>Tried</setWindowTitle><setFeatures><f>DockWidgetMovable</f>"
                              "</setFeatures><dll_name>" +
                              std::string(info.dli_fname) + "</dll_name><access_function>vkl_tolv_test_create_dock_";
    EXPECT_EQ(nullptr,
              m_manager.create_dock_widget(begin + "widget1</access_function></d>", m_window.get(), Qt::WindowFlags()));
    EXPECT_EQ(1U, take_messages().size());

    const TOLV_DOCK_WIDGET* const window =
        m_manager.create_dock_widget(begin + "widget2</access_function></d>", m_window.get(), Qt::WindowFlags());
    ASSERT_NE(nullptr, window);
    EXPECT_EQ(QStringLiteral("Tried"), window->windowTitle());
    EXPECT_EQ(QDockWidget::DockWidgetMovable, window->features());
    EXPECT_EQ(m_window.get(), window->parentWidget());
    EXPECT_EQ(&TOLV_DOCK_WIDGET::staticMetaObject, window->metaObject());
    EXPECT_EQ(LINES{}, take_messages());
}

// ---- The main window's ----------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_MGR_TEST, each_main_window_has_one_manager_which_works)
{
    add_all_modules();
    const TOLV_DOCK_MGR* const manager = m_window->get_dock_mgr();
    ASSERT_NE(nullptr, manager);
    EXPECT_EQ(manager, m_window->get_dock_mgr());
    TOLV_MAIN_WINDOW other;
    EXPECT_NE(manager, other.get_dock_mgr());
    EXPECT_NE(nullptr, manager->create_dock_widget(TOLV_DOCK_CHANGES, m_window.get()));
}
