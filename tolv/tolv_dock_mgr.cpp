#include "tolv_dock_mgr.h"

#include "tolv_dock_widget.h"
#include "tolv_main_window.h"
#include "tolv_mem.h"
#include "tolv_module.h"
#include "tolv_msg.h"

#include <QString>
#include <QStringList>

#include <tinyxml2.h>

TOLV_MEM_INITIALIZER();

namespace
{
using STANDARD_FACTORY = TOLV_DOCK_WIDGET*(TOLV_MAIN_WINDOW*);
using STANDARD_FACTORY_WITH_FROM = TOLV_DOCK_WIDGET*(TOLV_MAIN_WINDOW*, TOLV_DOCK_FROM_ENUM);
using XML_FACTORY = TOLV_DOCK_WIDGET*(const tinyxml2::XMLElement*, QWidget*, Qt::WindowFlags);

constexpr const char* FACTORY_SUFFIX = "_create_dock_widget";

/// What the table's entry "module" or "module:page" stands for; what follows a second colon counts for nothing.
struct ENTRY_PARTS
{
    std::string module;
    std::string prefix; ///< of the factory's name
};

ENTRY_PARTS split_entry(const std::string& entry)
{
    const QStringList parts = QString::fromStdString(entry).split(QLatin1Char(':'), Qt::KeepEmptyParts);
    const std::string module = parts.value(0).toStdString();
    if (parts.size() == 1)
        return {module, module};
    return {module, module + '_' + parts.value(1).toStdString()};
}

void report_failure()
{
    MSG_TOLV::O::FAILED_TO_LOAD_LIBRARY(thr_drl_get_error_data().c_str(), thr_drl_get_system_error().c_str())
        ->display();
}

/// Loads the module, finds the factory, calls it.
template <class FACTORY, class... ARGUMENTS>
TOLV_DOCK_WIDGET* call_factory(const std::string& module_name, const std::string& function_name, ARGUMENTS... arguments)
{
    TOLV_MODULE module(module_name);
    if (!module.is_loaded())
    {
        report_failure();
        return nullptr;
    }
    FACTORY* const factory = module.find_function<FACTORY>(function_name);
    if (factory == nullptr)
    {
        module.keep();
        return nullptr;
    }
    TOLV_DOCK_WIDGET* const window = factory(arguments...);
    if (window == nullptr)
        report_failure();
    else
        module.keep();
    return window;
}

/// The text of a child element; empty where there is no such child, or no text in it.
std::string get_child_text(const tinyxml2::XMLElement& element, const char* name)
{
    const tinyxml2::XMLElement* const child = element.FirstChildElement(name);
    const tinyxml2::XMLNode* const text = child != nullptr ? child->FirstChild() : nullptr;
    return text != nullptr ? text->Value() : "";
}
} // namespace

TOLV_DOCK_MGR::TOLV_DOCK_MGR()
    : m_entries({{TOLV_DOCK_MESSAGES, "mod_messages"},
                 {TOLV_DOCK_NAVIGATOR, "mod_navigator"},
                 {TOLV_DOCK_NODE_FINDER, "mod_nodefind"},
                 {TOLV_DOCK_CONSOLE, "mod_console"},
                 {TOLV_DOCK_STATUS, "mod_status"},
                 {TOLV_DOCK_CHANGES, "mod_changes"},
                 {TOLV_DOCK_REGIONS, "mod_regions"},
                 {TOLV_DOCK_PARTITIONS, "mod_partitions"},
                 {TOLV_DOCK_ASSIGNMENTS, "mod_assign"},
                 {TOLV_DOCK_FLOW, "mod_flow"},
                 {TOLV_DOCK_CATALOG, "mod_catalog"},
                 {TOLV_DOCK_TASKS, "mod_tasks"},
                 {TOLV_DOCK_TCL_SCRIPTS, "mod_console:tcl_scripts"},
                 {TOLV_DOCK_NAVIGATOR_HIERARCHY, "mod_navigator:hierarchy"},
                 {TOLV_DOCK_NAVIGATOR_FILES, "mod_navigator:files"},
                 {TOLV_DOCK_NAVIGATOR_DESIGN_UNITS, "mod_navigator:design_units"},
                 {TOLV_DOCK_NAVIGATOR_IP_COMPONENTS, "mod_navigator:ip_components"}})
{
}

TOLV_DOCK_WIDGET* TOLV_DOCK_MGR::create_dock_widget(TOLV_DOCK_ENUM dock, TOLV_MAIN_WINDOW* main_window) const
{
    if (main_window == nullptr)
        main_window = new TOLV_MAIN_WINDOW(nullptr, Qt::WindowFlags()); // the window that is made belongs to it
    const std::string entry = m_entries.value(dock);
    if (entry.empty())
        return nullptr;
    const ENTRY_PARTS parts = split_entry(entry);
    return call_factory<STANDARD_FACTORY>(parts.module, parts.prefix + FACTORY_SUFFIX, main_window);
}

TOLV_DOCK_WIDGET* TOLV_DOCK_MGR::create_dock_widget(TOLV_DOCK_ENUM dock, TOLV_DOCK_FROM_ENUM from,
                                                    TOLV_MAIN_WINDOW* main_window) const
{
    const std::string entry = m_entries.value(dock);
    if (entry.empty())
        return nullptr;
    // Not split, which is meant: see the header.
    return call_factory<STANDARD_FACTORY_WITH_FROM>(entry, entry + FACTORY_SUFFIX, main_window, from);
}

TOLV_DOCK_WIDGET* TOLV_DOCK_MGR::create_dock_widget(const tinyxml2::XMLElement* element, QWidget* parent,
                                                    Qt::WindowFlags flags) const
{
    if (element == nullptr)
        return nullptr;
    const std::string module = get_child_text(*element, "dll_name");
    if (module.empty())
        return nullptr;
    return call_factory<XML_FACTORY>(module, get_child_text(*element, "access_function"), element, parent, flags);
}

TOLV_DOCK_WIDGET* TOLV_DOCK_MGR::create_dock_widget(const std::string& xml, QWidget* parent,
                                                    Qt::WindowFlags flags) const
{
    tinyxml2::XMLDocument document;
    document.Parse(xml.c_str());
    return create_dock_widget(document.FirstChildElement(), parent, flags);
}

TOLV_DOCK_WIDGET* vkl_tolv_test_create_dock_widget1(const tinyxml2::XMLElement*, QWidget*, Qt::WindowFlags)
{
    return nullptr;
}

TOLV_DOCK_WIDGET* vkl_tolv_test_create_dock_widget2(const tinyxml2::XMLElement* element, QWidget* parent,
                                                    Qt::WindowFlags flags)
{
    return new TOLV_DOCK_WIDGET(element, parent, flags);
}
