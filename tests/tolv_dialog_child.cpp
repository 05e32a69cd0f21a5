// Saves the geometry of a dialog with the title "My Dialog" and prints the names of what is stored then.
// usage: tolv_dialog_child [GEOMETRY_KEY]

#include "cfgq_registry.h"
#include "tolv_app.h"
#include "tolv_dialog.h"

#include <cstdio>

namespace
{
class KEYED_DIALOG : public TOLV_DIALOG
{
public:
    explicit KEYED_DIALOG(const QString& geometry_key)
    {
        m_geometry_key = geometry_key;
    }
};
} // namespace

int main(int argc, char** argv)
{
    char** const qt_argv = TOLV_APP::copy_argv_for_qt(argc, const_cast<const char**>(argv));
    int qt_argc = argc;
    TOLV_APP app(qt_argc, qt_argv);
    KEYED_DIALOG dialog(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString());
    dialog.setWindowTitle(QStringLiteral("My Dialog"));
    dialog.save_geometry();
    const QStringList names = CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_GUI).get_value_names();
    for (const QString& name : names)
        std::printf("%s\n", qPrintable(name));
    return 0;
}
