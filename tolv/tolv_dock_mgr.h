#pragma once

#include "tolv_export.h"

#include <QMap>
#include <Qt>

#include <string>

class QWidget;
class TOLV_DOCK_WIDGET;
class TOLV_MAIN_WINDOW;

namespace tinyxml2
{
class XMLElement;
}

/// The standard dockable windows.
enum TOLV_DOCK_ENUM : int
{
    TOLV_DOCK_MESSAGES = 0,
    TOLV_DOCK_NAVIGATOR = 1,
    TOLV_DOCK_NODE_FINDER = 2,
    TOLV_DOCK_CONSOLE = 3,
    TOLV_DOCK_STATUS = 4,
    TOLV_DOCK_CHANGES = 5,
    TOLV_DOCK_REGIONS = 6,
    TOLV_DOCK_PARTITIONS = 7,
    TOLV_DOCK_ASSIGNMENTS = 8,
    TOLV_DOCK_FLOW = 9,
    TOLV_DOCK_CATALOG = 10,
    TOLV_DOCK_TASKS = 11,
    TOLV_DOCK_TCL_SCRIPTS = 12,
    TOLV_DOCK_NAVIGATOR_HIERARCHY = 13,
    TOLV_DOCK_NAVIGATOR_FILES = 14,
    TOLV_DOCK_NAVIGATOR_DESIGN_UNITS = 15,
    TOLV_DOCK_NAVIGATOR_IP_COMPONENTS = 16
};

/// From where a window is asked for. The values are the host's; they are only passed on to the factory.
enum TOLV_DOCK_FROM_ENUM : int
{
};

/// Makes dockable windows. A window lives in a module, which is loaded when the window is asked for and has a factory:
/// a plain exported function with an unmangled name that returns a TOLV_DOCK_WIDGET. Nothing is remembered: asking twice
/// makes two windows. Each main window has one manager, TOLV_MAIN_WINDOW::get_dock_mgr(). GUI thread.
///
/// A window belongs to the caller, or to the parent that the factory gave it; showing and placing it is the caller's
/// business. The result is null on failure. Where the module cannot be loaded, and where the factory returns null, the
/// user is told by MSG_TOLV::O::FAILED_TO_LOAD_LIBRARY(); a missing function or a bad description gets no message.
/// A module whose factory returned null is released; one that made a window stays loaded.
class TOLV_EXPORT TOLV_DOCK_MGR
{
public:
    TOLV_DOCK_MGR();

    /// A standard window, from the factory `<module>_create_dock_widget(TOLV_MAIN_WINDOW*)` or, for a page of a module,
    /// `<module>_<page>_create_dock_widget`. Null for the main window makes a new one for the factory; it has no parent
    /// and belongs to nobody here. An unknown enumerator gives null.
    TOLV_DOCK_WIDGET* create_dock_widget(TOLV_DOCK_ENUM dock, TOLV_MAIN_WINDOW* main_window) const;
    /// The same from a factory that also takes from where it is asked for,
    /// `<module>_create_dock_widget(TOLV_MAIN_WINDOW*, TOLV_DOCK_FROM_ENUM)`. The pages of modules cannot be made so:
    /// their entry counts as the name of a module as it stands, which cannot be loaded. That is meant. A null main
    /// window is passed on.
    TOLV_DOCK_WIDGET* create_dock_widget(TOLV_DOCK_ENUM dock, TOLV_DOCK_FROM_ENUM from,
                                         TOLV_MAIN_WINDOW* main_window) const;
    /// A window that an XML element describes: the text of its child `dll_name` is the module, that of
    /// `access_function` the factory, `TOLV_DOCK_WIDGET* (const tinyxml2::XMLElement*, QWidget*, Qt::WindowFlags)`,
    /// which gets all three arguments. A null element or no `dll_name` gives null.
    TOLV_DOCK_WIDGET* create_dock_widget(const tinyxml2::XMLElement* element, QWidget* parent,
                                         Qt::WindowFlags flags) const;
    /// The same from a text in UTF-8, whose first element is taken. A text that is no XML gives null.
    TOLV_DOCK_WIDGET* create_dock_widget(const std::string& xml, QWidget* parent, Qt::WindowFlags flags) const;

private:
    QMap<TOLV_DOCK_ENUM, std::string> m_entries; ///< "module" or "module:page"
};

/// Factories in the library itself, to try out descriptions in XML: the first makes nothing, the second a plain window
/// with the title and the features of the description.
extern "C" TOLV_EXPORT TOLV_DOCK_WIDGET* vkl_tolv_test_create_dock_widget1(const tinyxml2::XMLElement* element,
                                                                           QWidget* parent, Qt::WindowFlags flags);
extern "C" TOLV_EXPORT TOLV_DOCK_WIDGET* vkl_tolv_test_create_dock_widget2(const tinyxml2::XMLElement* element,
                                                                           QWidget* parent, Qt::WindowFlags flags);
