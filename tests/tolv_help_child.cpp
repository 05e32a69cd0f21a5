// Prints the size of the question mark on this screen: in logical pixels, in those of the picture, and their ratio.
// usage: tolv_help_child [high_dpi]   (with the application's attribute for fine screens)

#include "tolv_app.h"
#include "tolv_help.h"

#include <QPixmap>

#include <cstdio>
#include <string>

int main(int argc, char** argv)
{
    const char** const arguments = const_cast<const char**>(argv);
    char** const qt_argv = TOLV_APP::copy_argv_for_qt(argc, arguments);
    if (argc > 1 && std::string(argv[1]) == "high_dpi")
        QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    int qt_argc = argc;
    TOLV_APP app(qt_argc, qt_argv);
    const TOLV_HELP_LABEL label;
    const QPixmap pixmap = label.pixmap(Qt::ReturnByValue);
    std::printf("%d %d %g\n", label.sizeHint().width(), pixmap.width(), pixmap.devicePixelRatio());
    return 0;
}
