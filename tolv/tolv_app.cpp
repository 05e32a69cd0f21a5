#include "tolv_app.h"

#include "cfg.h"
#include "cfgq_registry.h"
#include "gen.h"
#include "mem.h"
#include "msg.h"
#include "put.h"
#include "thr.h"
#include "tolv_gdi_manager.h"
#include "tolv_global.h"
#include "tolv_mem.h"
#include "tolv_msg.h"
#include "tolv_proxy_style.h"
#include "tolv_qt_messages.h"
#include "xtcl.h"

#include <QFile>
#include <QFontDatabase>
#include <QTimer>

#include <algorithm>
#include <cstdlib>
#include <cstring>

TOLV_MEM_INITIALIZER();

/// The memory release rate that the library asks for.
static double m_tolv_release_rate = 256.0;

namespace
{
constexpr int TCL_PUMP_INTERVAL = 100; // milliseconds

/// The name up to its first point.
std::string cut_at_first_point(const std::string& name)
{
    return name.substr(0, name.find('.'));
}

/// The environment that Qt reads when it starts.
void set_qt_environment()
{
    qputenv("QMLSCENE_DEVICE", "software");
    setenv("GNOME_DESKTOP_SESSION_ID", "1", 0);
    if (!qEnvironmentVariableIsSet("NORVANE_DONT_SHARE_OPENGL_CONTEXTS"))
        QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts, true);
    thr_setenv("QT_NO_GLIB", "1");
    thr_setenv("QML_DISABLE_DISK_CACHE", "1");
}

/// Copies the arguments into the array, up to a null among them. What lies behind that one is left as it is.
void copy_arguments(int argc, const char** argv, char** copy)
{
    for (int i = 0; i < argc && argv[i] != nullptr; ++i)
    {
        const std::size_t size = std::strlen(argv[i]) + 1;
        copy[i] = new char[size];
        std::memcpy(copy[i], argv[i], size);
    }
}
} // namespace

char** TOLV_APP::copy_argv_for_qt(int argc, const char** argv)
{
    char** copy = nullptr;
    if (argc > 0 && argv != nullptr)
    {
        copy = new char*[static_cast<std::size_t>(argc) + 1];
        copy[argc] = nullptr;
    }
    tolv_install_QtMsgHandler(tolv_startup_QtMsgHandler);
    set_release_rate();
    set_qt_environment();
    QApplication::setStyle(new TOLV_PROXY_STYLE);
    if (copy != nullptr)
        copy_arguments(argc, argv, copy);
    return copy;
}

TOLV_APP::TOLV_APP(int& argc, char** argv) : QApplication(argc, argv)
{
    if (cfg_is_on("tolv_app_debug_break"))
        gen_debug_break(true);
    tolv_install_QtMsgHandler(tolv_QtMsgHandler);
    m_undo_redo_mgr = new GEN_UNDO_REDO_MGR;
    tolv_load_fonts_from_resources();
    CFGQ_REGISTRY::migrate_registry_settings(); // first: the drawing resources are read from the registry
    tolv_create_gdi_manager();
    m_was_ui_process = gen_get_is_ui_process();
    m_was_qt = gen_get_is_qt();
    gen_set_is_ui_process(true);
    gen_set_is_qt(true);
}

TOLV_APP::~TOLV_APP()
{
    delete m_undo_redo_mgr;
    m_undo_redo_mgr = nullptr;
    QFontDatabase::removeAllApplicationFonts();
    tolv_delete_gdi_manager();
    gen_set_is_ui_process(m_was_ui_process);
    gen_set_is_qt(m_was_qt);
}

bool TOLV_APP::init_instance(int argc, const char** argv)
{
    msg_exe_init(argc, argv);

    auto* const tcl_pump = new QTimer(this);
    TOLV_SAFE_CONNECT(tcl_pump, SIGNAL(timeout()), this, SLOT(flush_tcl_queue()));
    tcl_pump->start(TCL_PUMP_INTERVAL);

    static std::string app_name = gen_get_module_filename();
    app_name = cut_at_first_point(app_name);
    mem_set_tbb_exe_string(app_name);
    const bool debug_messages_enabled = MSG_D::debug_messages_enabled(nullptr);
    GEN_PROFILE_BINS::initialize(app_name, debug_messages_enabled);
    initialize_processor_manager();
    return true;
}

void TOLV_APP::exit_instance()
{
    const std::string name = cut_at_first_point(gen_get_module_filename());
    msg_exe_fini();
    GEN_PROFILE_BINS::finalize(name, true);
    mem_shutdown_tbb_tracking();
}

QWidget* TOLV_APP::get_main_window()
{
    return nullptr;
}

void TOLV_APP::flush_tcl_queue()
{
    xtcl_flush_queue(0, 0);
}

/// Sizes the budget of processors: what the machine has, at most so many as configured. Without hyper-threading there
/// are no more cores than logical processors; the number of these is passed on as it is in either case.
void TOLV_APP::initialize_processor_manager()
{
    int core = 0;
    if (!GEN_MACHINE_INFO::get_core_cpu_count(&core))
        core = 1;
    int logical = 0;
    if (!GEN_MACHINE_INFO::get_logical_cpu_count(&logical))
        logical = core;

    static const int tolv_max_tbb_concurrency = cfg_get_int_value("tolv_max_tbb_concurrency", 4);
    core = std::min(core, tolv_max_tbb_concurrency);
    logical = std::min(logical, tolv_max_tbb_concurrency);

    static const bool enable_hyperthreading = cfg_is_on("enable_norvane_hyperthreading", false);
    if (!enable_hyperthreading)
        core = std::min(core, logical);
    PUT_PROCESSOR_MANAGER::initialize(core, logical);
}

TOLV_APP* tolv_get_app()
{
    return qobject_cast<TOLV_APP*>(QCoreApplication::instance());
}

void tolv_load_fonts_from_resources()
{
    // Sets Qt's font database up: set up after the first font of ours, it would be thrown away and set up again.
    const QFontDatabase database;
    for (const char* name : {"KorvexClear_Bd.ttf", "KorvexClear_BdIt.ttf", "KorvexClear_It.ttf", "KorvexClear_Rg.ttf",
                             "korvex-clear-headline.woff", "korvex-clear-latin-bold.woff",
                             "korvex-clear-latin-lite.woff", "korvex-clear-latin.woff"})
    {
        // Open as long as the application lives: the font stands on the bytes in the library, not on a copy of them.
        auto* const file = new QFile(QStringLiteral(":/fonts/") + QLatin1String(name), QCoreApplication::instance());
        if (!file->open(QIODevice::ReadOnly))
            continue;
        const uchar* const bytes = file->map(0, file->size());
        QFontDatabase::addApplicationFontFromData(
            bytes != nullptr ? QByteArray::fromRawData(reinterpret_cast<const char*>(bytes), int(file->size()))
                             : file->readAll());
    }
}

void tolv_remove_loaded_fonts()
{
    QFontDatabase::removeAllApplicationFonts();
}

void set_release_rate()
{
    if (std::getenv("TCMALLOC_RELEASE_RATE") == nullptr)
    {
        MEM::MALLOC_EXTENSION::set_memory_release_rate(m_tolv_release_rate);
        MEM::MALLOC_EXTENSION::print_message("TCMALLOC_RELEASE_RATE set to approporiate rate by GUI");
    }
    else
    {
        MSG_TOLV::DEBUG_MSG(MSG_D_LEVEL_2, "%s", "TCMALLOC_RELEASE_RATE set by user")->send();
    }
    const QByteArray rate = QByteArray("TCMALLOC_RELEASE_RATE is: ") +
                            QString::asprintf("%f", MEM::MALLOC_EXTENSION::get_memory_release_rate()).toLatin1();
    MEM::MALLOC_EXTENSION::print_message(rate.constData());
}
