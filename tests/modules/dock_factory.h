#pragma once

#include "recording_module.h"
#include "tolv_dock_widget.h"
#include "tolv_main_window.h"

#include <dlfcn.h>

/// What the modules of dockable windows share. They write down when they are loaded and unloaded, by the name of the
/// file they came in, and each call of a factory.

namespace
{
/// "mod_x" for the file mod_x.so that this module is.
std::string get_own_name()
{
    Dl_info info;
    if (dladdr(reinterpret_cast<const void*>(&get_own_name), &info) == 0)
        return "unknown";
    const std::string path = info.dli_fname;
    const std::size_t begin = path.rfind('/') + 1;
    return path.substr(begin, path.rfind('.') - begin);
}

__attribute__((constructor)) void on_load()
{
    write_module_line("load " + get_own_name());
}

__attribute__((destructor)) void on_unload()
{
    write_module_line("unload " + get_own_name());
}

/// A window with the name of its factory as its title. A main window named "refused" gets none.
[[maybe_unused]] TOLV_DOCK_WIDGET* make_window(const char* factory, TOLV_MAIN_WINDOW* main_window,
                                               const std::string& from = std::string())
{
    write_module_line("call " + std::string(factory) + from);
    if (main_window != nullptr && main_window->objectName() == QLatin1String("refused"))
        return nullptr;
    return new TOLV_DOCK_WIDGET(QLatin1String(factory), main_window);
}
} // namespace

/// Calls ROW(factory) for each factory of the standard windows.
#define FOR_EACH_STANDARD_FACTORY(ROW)                                                                                 \
    ROW(mod_messages_create_dock_widget)                                                                               \
    ROW(mod_navigator_create_dock_widget)                                                                              \
    ROW(mod_nodefind_create_dock_widget)                                                                               \
    ROW(mod_console_create_dock_widget)                                                                                \
    ROW(mod_status_create_dock_widget)                                                                                 \
    ROW(mod_changes_create_dock_widget)                                                                                \
    ROW(mod_regions_create_dock_widget)                                                                                \
    ROW(mod_partitions_create_dock_widget)                                                                             \
    ROW(mod_assign_create_dock_widget)                                                                                 \
    ROW(mod_flow_create_dock_widget)                                                                                   \
    ROW(mod_catalog_create_dock_widget)                                                                                \
    ROW(mod_tasks_create_dock_widget)
