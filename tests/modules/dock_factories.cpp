// All factories that take the main window alone, and two for windows that are described in XML.

#include "dock_factory.h"

#define PAGE_FACTORIES(ROW)                                                                                            \
    ROW(mod_console_tcl_scripts_create_dock_widget)                                                                    \
    ROW(mod_navigator_hierarchy_create_dock_widget)                                                                    \
    ROW(mod_navigator_files_create_dock_widget)                                                                        \
    ROW(mod_navigator_design_units_create_dock_widget)                                                                 \
    ROW(mod_navigator_ip_components_create_dock_widget)

#define FACTORY(name)                                                                                                  \
    MODULE_EXPORT TOLV_DOCK_WIDGET* name(TOLV_MAIN_WINDOW* main_window);                                               \
    TOLV_DOCK_WIDGET* name(TOLV_MAIN_WINDOW* main_window)                                                              \
    {                                                                                                                  \
        return make_window(#name, main_window);                                                                        \
    }
FOR_EACH_STANDARD_FACTORY(FACTORY)
PAGE_FACTORIES(FACTORY)
#undef FACTORY

MODULE_EXPORT TOLV_DOCK_WIDGET* make_described(const tinyxml2::XMLElement* element, QWidget* parent,
                                               Qt::WindowFlags flags);
MODULE_EXPORT TOLV_DOCK_WIDGET* make_nothing(const tinyxml2::XMLElement* element, QWidget* parent,
                                             Qt::WindowFlags flags);

TOLV_DOCK_WIDGET* make_described(const tinyxml2::XMLElement* element, QWidget* parent, Qt::WindowFlags flags)
{
    write_module_line("call make_described " + std::to_string(static_cast<int>(flags)));
    return new TOLV_DOCK_WIDGET(element, parent, flags);
}

TOLV_DOCK_WIDGET* make_nothing(const tinyxml2::XMLElement*, QWidget*, Qt::WindowFlags)
{
    write_module_line("call make_nothing");
    return nullptr;
}
