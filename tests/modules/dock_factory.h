#pragma once

#include "recording_module.h"
#include "tolv_dock_widget.h"
#include "tolv_main_window.h"

#include <string>

/// What the modules of dockable windows share. They write down when they are loaded and unloaded, by the name of the
/// file they came in, and each call of a factory.

/// A window with the name of its factory as its title. A main window named "refused" gets none.
TOLV_DOCK_WIDGET* make_window(const char* factory, TOLV_MAIN_WINDOW* main_window,
                              const std::string& from = std::string());

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
