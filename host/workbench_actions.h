#pragma once

#include "tolv_action_auto.h"

#include <QObject>

class QAction;
class QMenu;
class TOLV_MAIN_WINDOW;
class TOLV_TOOL_BAR;

/// The named commands of the main window: each is made once, and stands in its menu and, where it is wanted often, in
/// the tool bar, too.
class WORKBENCH_ACTIONS : public QObject
{
    Q_OBJECT

public:
    explicit WORKBENCH_ACTIONS(TOLV_MAIN_WINDOW* window);

    /// Makes a command that calls a slot of the window when it is triggered.
    /// @param slot as SLOT() gives it
    QAction* create(TOLV_ACTION_ENUM command, const char* slot);
    /// The command; null where it was not made.
    QAction* get(TOLV_ACTION_ENUM command) const;
    /// Adds a menu to the menu bar.
    QMenu* add_menu(const QString& title, const char* object_name);
    /// The tool bar, made with the first call.
    TOLV_TOOL_BAR* get_tool_bar();

private:
    TOLV_MAIN_WINDOW* m_window;
    TOLV_TOOL_BAR* m_tool_bar = nullptr;
};
