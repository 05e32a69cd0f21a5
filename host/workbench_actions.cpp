#include "workbench_actions.h"

#include "tolv_create_action.h"
#include "tolv_global.h"
#include "tolv_main_window.h"
#include "tolv_tool_bar.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

WORKBENCH_ACTIONS::WORKBENCH_ACTIONS(TOLV_MAIN_WINDOW* window) : QObject(window), m_window(window)
{
}

QAction* WORKBENCH_ACTIONS::create(TOLV_ACTION_ENUM command, const char* slot)
{
    QAction* const action = tolv_create_action(command, m_window);
    action->setObjectName(tolv_get_action_enum_string(command));
    TOLV_SAFE_CONNECT(action, SIGNAL(triggered()), m_window, slot);
    return action;
}

QAction* WORKBENCH_ACTIONS::get(TOLV_ACTION_ENUM command) const
{
    return m_window->findChild<QAction*>(tolv_get_action_enum_string(command), Qt::FindDirectChildrenOnly);
}

QMenu* WORKBENCH_ACTIONS::add_menu(const QString& title, const char* object_name)
{
    QMenu* const menu = m_window->menuBar()->addMenu(title);
    menu->setObjectName(QString::fromLatin1(object_name));
    return menu;
}

TOLV_TOOL_BAR* WORKBENCH_ACTIONS::get_tool_bar()
{
    if (m_tool_bar == nullptr)
    {
        m_tool_bar = new TOLV_TOOL_BAR(tr("Main Tool Bar"), m_window);
        m_tool_bar->setObjectName(QStringLiteral("main_tool_bar"));
        m_window->addToolBar(m_tool_bar);
    }
    return m_tool_bar;
}
