// The base services that the application object calls, with which arguments and in which order. This program brings its
// own form of each of them, which writes down the call; the dynamic linker prefers it to that of the library.

#include "cfgq_registry.h"
#include "gen.h"
#include "mem.h"
#include "msg.h"
#include "put.h"
#include "test_environment.h"
#include "thr.h"
#include "tolv_app.h"
#include "xtcl.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QFontDatabase>
#include <QTest>
#include <QTimer>

#include <memory>

namespace
{
using CALLS = std::vector<std::string>;

CALLS& get_calls()
{
    static CALLS* const calls = new CALLS; // services are called before main(), too
    return *calls;
}

void record(const std::string& call)
{
    get_calls().push_back(call);
}

CALLS take_calls()
{
    CALLS calls;
    calls.swap(get_calls());
    return calls;
}

std::string get_text(bool value)
{
    return value ? "true" : "false";
}

/// How far the application object is: it has its pump once there is a timer.
std::string get_pump_text()
{
    return QCoreApplication::instance()->findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly).isEmpty()
               ? " without pump"
               : " with pump";
}

double s_release_rate = 1.0;
} // namespace

// ---- The services ---------------------------------------------------------------------------------------------------

void MEM::MALLOC_EXTENSION::set_memory_release_rate(double rate)
{
    record("set_memory_release_rate " + std::to_string(rate));
    s_release_rate = rate;
}

double MEM::MALLOC_EXTENSION::get_memory_release_rate()
{
    record("get_memory_release_rate");
    return s_release_rate;
}

void MEM::MALLOC_EXTENSION::print_message(const char* text)
{
    record(std::string("print_message ") + text);
}

bool thr_setenv(const char* name, const char* value)
{
    record(std::string("thr_setenv ") + name + " " + value);
    return true;
}

GEN_UNDO_REDO_MGR::GEN_UNDO_REDO_MGR()
{
    record("GEN_UNDO_REDO_MGR made");
}

GEN_UNDO_REDO_MGR::~GEN_UNDO_REDO_MGR()
{
    record("GEN_UNDO_REDO_MGR destroyed");
}

void CFGQ_REGISTRY::migrate_registry_settings()
{
    record("migrate_registry_settings");
}

bool gen_get_is_ui_process()
{
    record("gen_get_is_ui_process");
    return false;
}

bool gen_get_is_qt()
{
    record("gen_get_is_qt");
    return true;
}

void gen_set_is_ui_process(bool is_ui_process)
{
    record("gen_set_is_ui_process " + get_text(is_ui_process));
}

void gen_set_is_qt(bool is_qt)
{
    record("gen_set_is_qt " + get_text(is_qt));
}

void msg_exe_init(int argc, const char** argv)
{
    record("msg_exe_init " + std::to_string(argc) + " " + argv[0] + get_pump_text());
}

void msg_exe_fini()
{
    record("msg_exe_fini" + get_pump_text());
}

void mem_set_tbb_exe_string(const std::string& exe_name)
{
    record("mem_set_tbb_exe_string " + exe_name + get_pump_text());
}

void mem_shutdown_tbb_tracking()
{
    record("mem_shutdown_tbb_tracking");
}

bool MSG_D::debug_messages_enabled(const char* key)
{
    record(std::string("debug_messages_enabled ") + (key != nullptr ? key : "null"));
    return true;
}

void GEN_PROFILE_BINS::initialize(const std::string& program_name, bool debug_messages_enabled)
{
    record("GEN_PROFILE_BINS::initialize " + program_name + " " + get_text(debug_messages_enabled));
}

void GEN_PROFILE_BINS::finalize(const std::string& program_name, bool write_report)
{
    record("GEN_PROFILE_BINS::finalize " + program_name + " " + get_text(write_report));
}

bool GEN_MACHINE_INFO::get_core_cpu_count(int* count)
{
    record("get_core_cpu_count of " + std::to_string(*count));
    *count = 3;
    return true;
}

bool GEN_MACHINE_INFO::get_logical_cpu_count(int* count)
{
    record("get_logical_cpu_count");
    *count = 2;
    return true;
}

void PUT_PROCESSOR_MANAGER::initialize(int core_count, int logical_count)
{
    record("PUT_PROCESSOR_MANAGER::initialize " + std::to_string(core_count) + " " + std::to_string(logical_count));
}

int xtcl_flush_queue(int max_commands, int max_milliseconds)
{
    record("xtcl_flush_queue " + std::to_string(max_commands) + " " + std::to_string(max_milliseconds));
    return 0;
}

// ---- The order ------------------------------------------------------------------------------------------------------

TEST(TOLV_APP_ORDER_TEST, a_tools_life_calls_the_services_in_this_order)
{
    const SCOPED_ENVIRONMENT_VARIABLE no_rate("TCMALLOC_RELEASE_RATE", nullptr);
    const char* arguments[] = {"tool", "design.json", nullptr};
    take_calls();

    char** const qt_arguments = TOLV_APP::copy_argv_for_qt(2, arguments);
    EXPECT_EQ((CALLS{"set_memory_release_rate 256.000000",
                     "print_message TCMALLOC_RELEASE_RATE set to approporiate rate by GUI", "get_memory_release_rate",
                     "print_message TCMALLOC_RELEASE_RATE is: 256.000000", "thr_setenv QT_NO_GLIB 1",
                     "thr_setenv QML_DISABLE_DISK_CACHE 1"}),
              take_calls());

    int qt_count = 2;
    auto app = std::make_unique<TOLV_APP>(qt_count, qt_arguments);
    EXPECT_EQ((CALLS{"GEN_UNDO_REDO_MGR made", "migrate_registry_settings", "gen_get_is_ui_process", "gen_get_is_qt",
                     "gen_set_is_ui_process true", "gen_set_is_qt true"}),
              take_calls());

    EXPECT_TRUE(app->init_instance(2, arguments));
    EXPECT_EQ((CALLS{"msg_exe_init 2 tool without pump", "mem_set_tbb_exe_string tolv_app_order_test with pump",
                     "debug_messages_enabled null", "GEN_PROFILE_BINS::initialize tolv_app_order_test true",
                     "get_core_cpu_count of 0", "get_logical_cpu_count", "PUT_PROCESSOR_MANAGER::initialize 2 2"}),
              take_calls());

    EXPECT_TRUE(QTest::qWaitFor([] { return !get_calls().empty(); }, 10000));
    EXPECT_EQ("xtcl_flush_queue 0 0", get_calls().front());
    take_calls();

    app->exit_instance();
    EXPECT_EQ((CALLS{"msg_exe_fini with pump", "GEN_PROFILE_BINS::finalize tolv_app_order_test true",
                     "mem_shutdown_tbb_tracking"}),
              take_calls());

    QFile font(QStringLiteral("/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf"));
    ASSERT_TRUE(font.open(QIODevice::ReadOnly));
    ASSERT_LE(0, QFontDatabase::addApplicationFontFromData(font.readAll()));
    QObject::connect(app.get(), &QGuiApplication::fontDatabaseChanged, [] { record("fonts removed"); });
    app.reset();
    EXPECT_EQ(
        (CALLS{"GEN_UNDO_REDO_MGR destroyed", "fonts removed", "gen_set_is_ui_process false", "gen_set_is_qt true"}),
        take_calls());
}
