// A tool that runs the entry sequence of a host, for what must be seen from outside or ends the process.
// usage: tolv_app_child names | warning | warning_before_application | fatal | fatal_before_application

#include "gen.h"
#include "mem.h"
#include "tolv_app.h"

#include <QWidget>

#include <cstdio>
#include <string>

static void say_before_application(const std::string& mode)
{
    if (mode == "warning_before_application")
        qWarning("the pump leaks");
    else if (mode == "fatal_before_application")
        qFatal("no water");
}

static void say_in_application(const std::string& mode)
{
    if (mode == "names")
        std::printf("%s %s\n", mem_get_tbb_exe_string().c_str(), GEN_PROFILE_BINS::get_program_name().c_str());
    else if (mode == "fatal")
        qFatal("no water");
    else if (mode == "warning")
    {
        qWarning("the pump leaks");
        QCoreApplication::processEvents();
        std::printf("windows: %d\n", static_cast<int>(QApplication::topLevelWidgets().size()));
    }
}

int main(int argc, char** argv)
{
    const char** const arguments = const_cast<const char**>(argv);
    const std::string mode = argc > 1 ? argv[1] : "";
    char** const qt_argv = TOLV_APP::copy_argv_for_qt(argc, arguments);
    say_before_application(mode);
    {
        int qt_argc = argc;
        TOLV_APP app(qt_argc, qt_argv);
        app.init_instance(argc, arguments);
        say_in_application(mode);
        app.exit_instance();
    }
    return 0;
}
