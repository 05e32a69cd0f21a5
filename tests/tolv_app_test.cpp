#include "cfg.h"
#include "cfgq_registry.h"
#include "child_process.h"
#include "gen.h"
#include "gui_test.h"
#include "mem.h"
#include "msg.h"
#include "put.h"
#include "test_environment.h"
#include "tolv_qt_messages.h"
#include "xtcl.h"

#include <QFile>
#include <QFontDatabase>
#include <QLibraryInfo>
#include <QProxyStyle>
#include <QResource>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <atomic>
#include <cstring>
#include <filesystem>
#include <memory>
#include <thread>

namespace
{
/// The process before the application exists. Each case needs a process of its own.
class TOLV_APP_START_TEST : public TOLV_TEST
{
protected:
    /// Makes the application as a host does, up to its constructor.
    TOLV_APP& make_app(std::vector<const char*> arguments = {"tool"})
    {
        m_arguments = std::move(arguments);
        m_argc = static_cast<int>(m_arguments.size());
        m_arguments.push_back(nullptr);
        m_qt_argc = m_argc;
        m_app = std::make_unique<TOLV_APP>(m_qt_argc, TOLV_APP::copy_argv_for_qt(m_argc, m_arguments.data()));
        return *m_app;
    }

    /// The same up to init_instance().
    TOLV_APP& make_initialized_app()
    {
        TOLV_APP& app = make_app();
        EXPECT_TRUE(app.init_instance(m_argc, m_arguments.data()));
        return app;
    }

    bool init_again()
    {
        return m_app->init_instance(m_argc, m_arguments.data());
    }

    void TearDown() override
    {
        m_app.reset();
        TOLV_TEST::TearDown();
    }

    std::unique_ptr<TOLV_APP> m_app;

private:
    std::vector<const char*> m_arguments;
    int m_argc = 0;
    int m_qt_argc = 0;
};

/// The counts that the processor manager gets on a machine with so many cores and logical processors (0: the query
/// fails).
class TOLV_APP_PROCESSOR_TEST : public TOLV_APP_START_TEST
{
protected:
    using COUNTS = std::pair<int, int>;

    COUNTS get_counts(const char* core_count, const char* logical_count)
    {
        const SCOPED_CONFIGURATION cores("core_cpu_count", core_count);
        const SCOPED_CONFIGURATION logical_processors("logical_cpu_count", logical_count);
        make_initialized_app();
        return {PUT_PROCESSOR_MANAGER::get_core_count(), PUT_PROCESSOR_MANAGER::get_logical_count()};
    }
};

/// Everything in a complete tool.
class TOLV_APP_TEST : public TOLV_GUI_TEST
{
};

/// Nothing of the library but its functions.
class TOLV_APP_PLAIN_TEST : public PLAIN_GUI_TEST
{
};

QtMessageHandler get_message_handler()
{
    const QtMessageHandler handler = qInstallMessageHandler(nullptr);
    qInstallMessageHandler(handler);
    return handler;
}

std::string get_variable(const char* name)
{
    const char* value = std::getenv(name);
    return value != nullptr ? value : "(not set)";
}

/// The allocator's messages since a number of them.
std::vector<std::string> get_allocator_messages(std::size_t first)
{
    std::vector<std::string> messages = MEM::MALLOC_EXTENSION::get_messages();
    messages.erase(messages.begin(), messages.begin() + static_cast<std::ptrdiff_t>(std::min(first, messages.size())));
    return messages;
}

/// Copies the child program under another name and returns what it says its names are.
std::string get_names_of_program(const std::string& file_name)
{
    const std::string path = TEST_ENVIRONMENT::get_folder() + "/" + file_name;
    std::filesystem::copy_file(get_child_path("tolv_app_child"), path);
    const CHILD_RESULT result = run_child(path, {"names"});
    EXPECT_EQ(0, result.exit_status) << result.err;
    return result.out;
}
} // namespace

// ---- copy_argv_for_qt -----------------------------------------------------------------------------------------------

TEST_F(TOLV_APP_START_TEST, the_arguments_are_copied_deeply_and_all_of_them)
{
    std::string program = "tool";
    const char* arguments[] = {program.c_str(), "-style", "windows", "", "a b", nullptr};
    char** const copy = TOLV_APP::copy_argv_for_qt(5, arguments);
    ASSERT_NE(nullptr, copy);
    for (int i = 0; i < 5; ++i)
    {
        EXPECT_STREQ(arguments[i], copy[i]);
        EXPECT_NE(arguments[i], copy[i]);
    }
    EXPECT_EQ(nullptr, copy[5]);
    program[0] = 'p';
    EXPECT_STREQ("tool", copy[0]);
}

TEST_F(TOLV_APP_START_TEST, copying_stops_at_a_null_argument)
{
    const char* arguments[] = {"tool", nullptr, "never seen"};
    char** const copy = TOLV_APP::copy_argv_for_qt(3, arguments);
    ASSERT_NE(nullptr, copy);
    EXPECT_STREQ("tool", copy[0]);
    EXPECT_EQ(nullptr, copy[3]);
}

TEST_F(TOLV_APP_START_TEST, without_arguments_the_process_is_prepared_all_the_same)
{
    EXPECT_EQ(nullptr, TOLV_APP::copy_argv_for_qt(0, nullptr));
    EXPECT_EQ(&tolv_startup_QtMsgHandler, get_message_handler());
    EXPECT_EQ(256.0, MEM::MALLOC_EXTENSION::get_memory_release_rate());
    EXPECT_EQ("software", get_variable("QMLSCENE_DEVICE"));
    EXPECT_EQ("1", get_variable("GNOME_DESKTOP_SESSION_ID"));
    EXPECT_TRUE(QCoreApplication::testAttribute(Qt::AA_ShareOpenGLContexts));
    EXPECT_EQ("1", get_variable("QT_NO_GLIB"));
    EXPECT_EQ("1", get_variable("QML_DISABLE_DISK_CACHE"));
    EXPECT_NE(nullptr, qobject_cast<QProxyStyle*>(QApplication::style()));
}

TEST_F(TOLV_APP_START_TEST, no_count_or_no_array_is_no_arguments)
{
    const char* arguments[] = {"tool", nullptr};
    EXPECT_EQ(nullptr, TOLV_APP::copy_argv_for_qt(0, arguments));
    EXPECT_EQ(nullptr, TOLV_APP::copy_argv_for_qt(-1, arguments));
    EXPECT_EQ(nullptr, TOLV_APP::copy_argv_for_qt(1, nullptr));
}

TEST_F(TOLV_APP_START_TEST, the_library_is_registered_with_the_memory_tracking)
{
    const std::vector<std::string> tags = MEM_INITIALIZER::get_registered_tags();
    EXPECT_EQ(1, std::count(tags.begin(), tags.end(), "TOLV"));
}

TEST_F(TOLV_APP_START_TEST, the_desktop_session_that_the_user_has_set_stays)
{
    const SCOPED_ENVIRONMENT_VARIABLE session("GNOME_DESKTOP_SESSION_ID", "mine");
    const SCOPED_ENVIRONMENT_VARIABLE device("QMLSCENE_DEVICE", "hardware");
    const SCOPED_ENVIRONMENT_VARIABLE glib("QT_NO_GLIB", "0");
    const SCOPED_ENVIRONMENT_VARIABLE cache("QML_DISABLE_DISK_CACHE", "0");
    TOLV_APP::copy_argv_for_qt(0, nullptr);
    EXPECT_EQ("mine", get_variable("GNOME_DESKTOP_SESSION_ID"));
    // The others are the library's own.
    EXPECT_EQ("software", get_variable("QMLSCENE_DEVICE"));
    EXPECT_EQ("1", get_variable("QT_NO_GLIB"));
    EXPECT_EQ("1", get_variable("QML_DISABLE_DISK_CACHE"));
}

TEST_F(TOLV_APP_START_TEST, an_empty_desktop_session_counts_as_set)
{
    const SCOPED_ENVIRONMENT_VARIABLE session("GNOME_DESKTOP_SESSION_ID", "");
    TOLV_APP::copy_argv_for_qt(0, nullptr);
    EXPECT_EQ("", get_variable("GNOME_DESKTOP_SESSION_ID"));
}

TEST_F(TOLV_APP_START_TEST, contexts_are_not_shared_where_the_variable_is_present)
{
    const SCOPED_ENVIRONMENT_VARIABLE variable("NORVANE_DONT_SHARE_OPENGL_CONTEXTS", "");
    TOLV_APP::copy_argv_for_qt(0, nullptr);
    EXPECT_FALSE(QCoreApplication::testAttribute(Qt::AA_ShareOpenGLContexts));
}

TEST_F(TOLV_APP_START_TEST, a_style_argument_is_looked_at_later_and_wins)
{
    make_app({"tool", "-style", "windows"});
    EXPECT_EQ(QStringLiteral("windows"), QApplication::style()->objectName());
}

TEST_F(TOLV_APP_START_TEST, the_style_is_set_before_the_application_exists)
{
    make_app();
    const auto* const style = qobject_cast<QProxyStyle*>(QApplication::style());
    ASSERT_NE(nullptr, style);
    EXPECT_EQ(QStringLiteral("fusion"), style->baseStyle()->objectName().toLower());
}

// ---- set_release_rate -----------------------------------------------------------------------------------------------

TEST_F(TOLV_APP_START_TEST, the_release_rate_is_raised_and_reported)
{
    MEM::MALLOC_EXTENSION::set_memory_release_rate(3.0);
    const std::size_t first = MEM::MALLOC_EXTENSION::get_messages().size();
    set_release_rate();
    EXPECT_EQ(256.0, MEM::MALLOC_EXTENSION::get_memory_release_rate());
    EXPECT_EQ((std::vector<std::string>{"TCMALLOC_RELEASE_RATE set to approporiate rate by GUI",
                                        "TCMALLOC_RELEASE_RATE is: 256.000000"}),
              get_allocator_messages(first));
    EXPECT_TRUE(msg_get_debug_records().empty());
}

TEST_F(TOLV_APP_START_TEST, a_release_rate_of_the_user_is_left_alone_and_the_one_in_force_reported)
{
    const SCOPED_ENVIRONMENT_VARIABLE variable("TCMALLOC_RELEASE_RATE", "17");
    const SCOPED_EXPECTED_DEBUG_RECORD record("TOLV", "TCMALLOC_RELEASE_RATE set by user");
    MEM::MALLOC_EXTENSION::set_memory_release_rate(3.5);
    const std::size_t first = MEM::MALLOC_EXTENSION::get_messages().size();
    set_release_rate();
    EXPECT_EQ(3.5, MEM::MALLOC_EXTENSION::get_memory_release_rate());
    EXPECT_EQ(std::vector<std::string>{"TCMALLOC_RELEASE_RATE is: 3.500000"}, get_allocator_messages(first));
    const std::vector<MSG_DEBUG_RECORD> records = msg_get_debug_records();
    ASSERT_EQ(1U, records.size());
    EXPECT_EQ("TCMALLOC_RELEASE_RATE set by user", records[0].text);
    EXPECT_EQ(2, records[0].level);
}

TEST_F(TOLV_APP_START_TEST, an_empty_release_rate_of_the_user_is_one_all_the_same)
{
    const SCOPED_ENVIRONMENT_VARIABLE variable("TCMALLOC_RELEASE_RATE", "");
    const SCOPED_EXPECTED_DEBUG_RECORD record("TOLV", "TCMALLOC_RELEASE_RATE set by user");
    MEM::MALLOC_EXTENSION::set_memory_release_rate(3.5);
    set_release_rate();
    EXPECT_EQ(3.5, MEM::MALLOC_EXTENSION::get_memory_release_rate());
}

// ---- The constructor and the destructor -----------------------------------------------------------------------------

TEST_F(TOLV_APP_START_TEST, the_full_message_handler_is_in_force_from_the_constructor_on)
{
    make_app();
    EXPECT_EQ(&tolv_QtMsgHandler, get_message_handler());
    m_app.reset();
    EXPECT_EQ(&tolv_QtMsgHandler, get_message_handler());
}

TEST_F(TOLV_APP_START_TEST, a_switch_breaks_into_the_debugger_before_anything_else)
{
    const SCOPED_CONFIGURATION on("tolv_app_debug_break", "1");
    std::vector<bool> breaks;
    gen_set_debug_break_handler(
        [&breaks](bool only_if_traced)
        {
            breaks.push_back(only_if_traced);
            EXPECT_NE(nullptr, QCoreApplication::instance());
            EXPECT_EQ(&tolv_startup_QtMsgHandler, get_message_handler());
            EXPECT_FALSE(gen_get_is_qt());
        });
    make_app();
    gen_set_debug_break_handler({});
    EXPECT_EQ(std::vector<bool>{true}, breaks);
}

TEST_F(TOLV_APP_START_TEST, without_the_switch_the_debugger_is_not_entered)
{
    int break_count = 0;
    gen_set_debug_break_handler([&break_count](bool) { ++break_count; });
    make_initialized_app();
    gen_set_debug_break_handler({});
    EXPECT_EQ(0, break_count);
}

TEST_F(TOLV_APP_START_TEST, the_process_is_marked_as_a_qt_user_interface_while_the_application_lives)
{
    make_app();
    EXPECT_TRUE(gen_get_is_ui_process());
    EXPECT_TRUE(gen_get_is_qt());
    m_app.reset();
    EXPECT_FALSE(gen_get_is_ui_process());
    EXPECT_FALSE(gen_get_is_qt());
}

TEST_F(TOLV_APP_START_TEST, marks_that_were_set_before_are_restored)
{
    gen_set_is_ui_process(true);
    make_app();
    m_app.reset();
    EXPECT_TRUE(gen_get_is_ui_process());
    EXPECT_FALSE(gen_get_is_qt());
    gen_set_is_ui_process(false);
}

TEST_F(TOLV_APP_START_TEST, settings_of_an_older_layout_are_there_behind_the_constructor)
{
    TEST_ENVIRONMENT::write_file("registry.conf", "[52]\nColor_version=3\n");
    make_app();
    QVariant value;
    EXPECT_TRUE(CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_GUI).get_value(QStringLiteral("Color_version"), &value));
    EXPECT_EQ(3, value.toInt());
}

TEST_F(TOLV_APP_START_TEST, the_application_takes_its_fonts_along)
{
    make_app();
    const QSignalSpy changes(m_app.get(), &QGuiApplication::fontDatabaseChanged);
    QFile file(QStringLiteral("/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    ASSERT_LE(0, QFontDatabase::addApplicationFontFromData(file.readAll()));
    ASSERT_EQ(1, changes.size());
    m_app.reset();
    EXPECT_EQ(2, changes.size());
}

TEST_F(TOLV_APP_START_TEST, there_is_no_application_before_the_constructor_and_behind_the_destructor)
{
    EXPECT_EQ(nullptr, tolv_get_app());
    TOLV_APP* const app = &make_app();
    EXPECT_EQ(app, tolv_get_app());
    m_app.reset();
    EXPECT_EQ(nullptr, tolv_get_app());
}

TEST_F(TOLV_APP_PLAIN_TEST, an_application_of_another_class_is_not_ours)
{
    ASSERT_NE(nullptr, QCoreApplication::instance());
    EXPECT_EQ(nullptr, tolv_get_app());
}

TEST_F(TOLV_APP_TEST, an_application_of_a_subclass_is_ours)
{
    EXPECT_EQ(&app(), tolv_get_app());
}

TEST_F(TOLV_APP_TEST, the_main_window_is_the_subclass_s)
{
    EXPECT_EQ(nullptr, tolv_get_app()->TOLV_APP::get_main_window());
    QWidget window;
    app().set_main_window(&window);
    EXPECT_EQ(&window, tolv_get_app()->get_main_window());
}

// ---- Fonts ----------------------------------------------------------------------------------------------------------

/// Takes the library's own files out of the resource tree: of two files with one path the first one counts.
static void remove_fonts_of_the_library()
{
    Q_CLEANUP_RESOURCE(tolv); // declares a function, and so stands in no namespace
}

namespace
{
/// Puts a resource tree with these files under :/fonts, made by Qt's resource compiler.
bool register_fonts(const std::vector<std::pair<std::string, std::string>>& names_and_files)
{
    remove_fonts_of_the_library();
    std::string collection = "<RCC><qresource prefix=\"/fonts\">";
    for (const auto& [name, file] : names_and_files)
    {
        collection += "<file alias=\"";
        collection += name;
        collection += "\">";
        collection += file;
        collection += "</file>";
    }
    const std::string source = TEST_ENVIRONMENT::write_file("fonts.qrc", collection + "</qresource></RCC>");
    const std::string target = TEST_ENVIRONMENT::get_folder() + "/fonts.rcc";
    const std::string compiler = (QLibraryInfo::location(QLibraryInfo::BinariesPath) + "/rcc").toStdString();
    const CHILD_RESULT result = run_child(compiler, {"-binary", source, "-o", target});
    EXPECT_EQ(0, result.exit_status) << result.err;
    return QResource::registerResource(QString::fromStdString(target));
}

constexpr const char* FONT_FOLDER = "/usr/share/fonts/truetype/dejavu/";
} // namespace

TEST_F(TOLV_APP_PLAIN_TEST, fonts_of_the_resources_are_loaded_in_order_and_bad_ones_skipped)
{
    const std::string damaged = TEST_ENVIRONMENT::write_file("damaged.ttf", "this is no font");
    const std::string folder = FONT_FOLDER;
    ASSERT_TRUE(register_fonts({{"korvex-clear-latin.woff", folder + "DejaVuSansMono.ttf"},
                                {"KorvexClear_Rg.ttf", folder + "DejaVuSerif.ttf"},
                                {"KorvexClear_It.ttf", damaged},
                                {"another.ttf", folder + "DejaVuSans.ttf"}}));
    QFontDatabase::removeAllApplicationFonts();
    tolv_load_fonts_from_resources();

    QStringList families;
    for (int id = 0; id < 10; ++id)
        families += QFontDatabase::applicationFontFamilies(id);
    EXPECT_EQ((QStringList{QStringLiteral("DejaVu Serif"), QStringLiteral("DejaVu Sans Mono")}), families);
}

TEST_F(TOLV_APP_START_TEST, the_constructor_loads_the_fonts)
{
    ASSERT_TRUE(register_fonts({{"KorvexClear_Rg.ttf", std::string(FONT_FOLDER) + "DejaVuSerif.ttf"}}));
    make_app();
    EXPECT_EQ(QStringList{QStringLiteral("DejaVu Serif")}, QFontDatabase::applicationFontFamilies(0));
}

TEST_F(TOLV_APP_PLAIN_TEST, every_font_name_of_the_list_is_looked_for)
{
    const std::string font = std::string(FONT_FOLDER) + "DejaVuSansMono.ttf";
    std::vector<std::pair<std::string, std::string>> fonts;
    for (const char* name : {"KorvexClear_Bd.ttf", "KorvexClear_BdIt.ttf", "KorvexClear_It.ttf", "KorvexClear_Rg.ttf",
                             "korvex-clear-headline.woff", "korvex-clear-latin-bold.woff",
                             "korvex-clear-latin-lite.woff", "korvex-clear-latin.woff"})
        fonts.emplace_back(name, font);
    ASSERT_TRUE(register_fonts(fonts));
    tolv_remove_loaded_fonts();
    const QSignalSpy changes(qApp, &QGuiApplication::fontDatabaseChanged);
    tolv_load_fonts_from_resources();
    EXPECT_EQ(8, changes.size());
}

TEST_F(TOLV_APP_PLAIN_TEST, all_application_fonts_can_be_removed)
{
    const int id = QFontDatabase::addApplicationFont(QLatin1String(FONT_FOLDER) + QLatin1String("DejaVuSansMono.ttf"));
    ASSERT_LE(0, id);
    ASSERT_FALSE(QFontDatabase::applicationFontFamilies(id).isEmpty());
    tolv_remove_loaded_fonts();
    EXPECT_TRUE(QFontDatabase::applicationFontFamilies(id).isEmpty());
}

// ---- init_instance --------------------------------------------------------------------------------------------------

TEST_F(TOLV_APP_TEST, messaging_is_up)
{
    EXPECT_NE(nullptr, msg_get_default_report());
}

TEST_F(TOLV_APP_TEST, the_tcl_queue_is_pumped_ten_times_a_second)
{
    const QList<QTimer*> timers = app().findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_EQ(1, timers.size());
    EXPECT_EQ(100, timers[0]->interval());
    EXPECT_TRUE(timers[0]->isActive());
    EXPECT_FALSE(timers[0]->isSingleShot());
}

TEST_F(TOLV_APP_TEST, a_command_of_another_thread_runs_on_this_one_by_the_pump)
{
    std::atomic<bool> is_done{false};
    std::string result;
    int code = -1;
    std::thread thread(
        [&]
        {
            code = xtcl_post("expr {6 * 7}", true, &result);
            is_done = true;
        });
    EXPECT_TRUE(QTest::qWaitFor([&is_done] { return is_done.load(); }, 10000));
    thread.join();
    EXPECT_EQ(0, code);
    EXPECT_EQ("42", result);
}

TEST_F(TOLV_APP_TEST, the_programs_name_goes_to_memory_tracking_and_profiling)
{
    EXPECT_EQ("tolv_app_test", mem_get_tbb_exe_string());
    EXPECT_TRUE(GEN_PROFILE_BINS::is_active());
    EXPECT_EQ("tolv_app_test", GEN_PROFILE_BINS::get_program_name());
    EXPECT_FALSE(GEN_PROFILE_BINS::get_debug_messages_enabled());
}

TEST_F(TOLV_APP_START_TEST, profiling_hears_of_debug_messages)
{
    const SCOPED_CONFIGURATION on("debug_messages", "1");
    make_initialized_app();
    EXPECT_TRUE(GEN_PROFILE_BINS::get_debug_messages_enabled());
    m_app->exit_instance();
}

TEST(TOLV_APP_NAME_TEST, a_name_ends_at_its_first_point)
{
    EXPECT_EQ("tool tool\n", get_names_of_program("tool.exe.bak"));
}

TEST(TOLV_APP_NAME_TEST, a_name_without_a_point_stays_whole)
{
    EXPECT_EQ("tool-1_x tool-1_x\n", get_names_of_program("tool-1_x"));
}

// ---- The budget of processors ---------------------------------------------------------------------------------------

TEST_F(TOLV_APP_PROCESSOR_TEST, a_large_machine_is_held_to_four)
{
    EXPECT_EQ(COUNTS(4, 4), get_counts("32", "64"));
}

TEST_F(TOLV_APP_PROCESSOR_TEST, a_small_machine_keeps_what_it_has)
{
    EXPECT_EQ(COUNTS(2, 3), get_counts("2", "3"));
}

TEST_F(TOLV_APP_PROCESSOR_TEST, the_limit_can_be_set)
{
    const SCOPED_CONFIGURATION limit("tolv_max_tbb_concurrency", "48");
    EXPECT_EQ(COUNTS(32, 48), get_counts("32", "64"));
}

TEST_F(TOLV_APP_PROCESSOR_TEST, hyper_threading_does_not_change_a_usual_machine)
{
    const SCOPED_CONFIGURATION limit("tolv_max_tbb_concurrency", "48");
    const SCOPED_CONFIGURATION hyper_threading("enable_norvane_hyperthreading", "1");
    EXPECT_EQ(COUNTS(32, 48), get_counts("32", "64"));
}

TEST_F(TOLV_APP_PROCESSOR_TEST, more_cores_than_logical_processors_are_cut)
{
    const SCOPED_CONFIGURATION limit("tolv_max_tbb_concurrency", "48");
    EXPECT_EQ(COUNTS(8, 8), get_counts("32", "8"));
}

TEST_F(TOLV_APP_PROCESSOR_TEST, more_cores_than_logical_processors_stay_with_hyper_threading)
{
    const SCOPED_CONFIGURATION limit("tolv_max_tbb_concurrency", "48");
    const SCOPED_CONFIGURATION hyper_threading("enable_norvane_hyperthreading", "1");
    EXPECT_EQ(COUNTS(32, 8), get_counts("32", "8"));
}

TEST_F(TOLV_APP_PROCESSOR_TEST, an_unknown_number_of_cores_is_one)
{
    EXPECT_EQ(COUNTS(1, 3), get_counts("0", "3"));
}

TEST_F(TOLV_APP_PROCESSOR_TEST, an_unknown_number_of_logical_processors_is_that_of_the_cores)
{
    EXPECT_EQ(COUNTS(3, 3), get_counts("3", "0"));
}

TEST_F(TOLV_APP_PROCESSOR_TEST, a_machine_that_tells_nothing_has_one)
{
    EXPECT_EQ(COUNTS(1, 1), get_counts("0", "0"));
}

TEST_F(TOLV_APP_PROCESSOR_TEST, the_limits_are_read_once)
{
    EXPECT_EQ(COUNTS(4, 4), get_counts("8", "16"));
    const SCOPED_CONFIGURATION limit("tolv_max_tbb_concurrency", "48");
    const SCOPED_CONFIGURATION hyper_threading("enable_norvane_hyperthreading", "1");
    const SCOPED_CONFIGURATION cores("core_cpu_count", "3");
    const SCOPED_CONFIGURATION logical_processors("logical_cpu_count", "2");
    EXPECT_TRUE(init_again());
    // The machine is asked anew; limit and switch stay as they were.
    EXPECT_EQ(2, PUT_PROCESSOR_MANAGER::get_core_count());
    EXPECT_EQ(2, PUT_PROCESSOR_MANAGER::get_logical_count());
}

// ---- exit_instance --------------------------------------------------------------------------------------------------

TEST_F(TOLV_APP_START_TEST, exit_takes_the_services_down_and_leaves_the_pump)
{
    TOLV_APP& app = make_initialized_app();
    app.exit_instance();
    EXPECT_EQ(nullptr, msg_get_default_report());
    EXPECT_FALSE(GEN_PROFILE_BINS::is_active());
    EXPECT_EQ("", mem_get_tbb_exe_string());
    const QList<QTimer*> timers = app.findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_EQ(1, timers.size());
    EXPECT_TRUE(timers[0]->isActive());
    EXPECT_TRUE(gen_get_is_qt());
    // The pump finds a service that is down, and does no harm.
    const QSignalSpy ticks(timers[0], &QTimer::timeout);
    EXPECT_TRUE(QTest::qWaitFor([&ticks] { return ticks.size() >= 2; }, 10000));
}

TEST_F(TOLV_APP_START_TEST, exit_has_the_profile_written_under_the_programs_name)
{
    const SCOPED_CONFIGURATION on("write_profile", "1");
    const std::filesystem::path old_folder = std::filesystem::current_path();
    std::filesystem::current_path(TEST_ENVIRONMENT::get_folder());
    make_initialized_app();
    GEN_PROFILE_BINS::add("painting", 17);
    m_app->exit_instance();
    std::filesystem::current_path(old_folder);
    EXPECT_TRUE(std::filesystem::exists(TEST_ENVIRONMENT::get_folder() + "/tolv_app_test_profile.txt"));
}
