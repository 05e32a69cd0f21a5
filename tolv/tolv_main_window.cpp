#include "tolv_main_window.h"

#include "tolv_check.h"
#include "tolv_dock_mgr.h"
#include "tolv_dock_widget.h"
#include "tolv_dock_widget_button.h"
#include "tolv_dock_widget_button_bar.h"
#include "tolv_f1_action.h"
#include "tolv_help_dyn.h"
#include "tolv_mem.h"
#include "tolv_tree_view.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>

TOLV_MEM_INITIALIZER();

namespace
{
constexpr Qt::ToolBarArea SIDES[] = {Qt::LeftToolBarArea, Qt::RightToolBarArea, Qt::TopToolBarArea,
                                     Qt::BottomToolBarArea};

/// The name under which QMainWindow::saveState() keeps a side bar.
QString get_bar_name(Qt::ToolBarArea area)
{
    return QStringLiteral("tolv_button_bar_%1").arg(static_cast<int>(area));
}

QString remove_mnemonics(QString text)
{
    return text.remove(QLatin1Char('&'));
}

QString get_menu_topic(const QMenu& menu)
{
    const QAction* const action = menu.activeAction();
    return action != nullptr ? action->text() : menu.title();
}

/// The first accessible name on the way up; empty where there is none.
QString get_topic_above(const QObject* object)
{
    for (; object != nullptr; object = object->parent())
    {
        const auto* const widget = qobject_cast<const QWidget*>(object);
        if (widget != nullptr && !widget->accessibleName().isEmpty())
            return widget->accessibleName();
    }
    return QString();
}

void show_help(const QString& topic)
{
    help_dyn_show_context(topic.toLocal8Bit().toStdString());
}
} // namespace

TOLV_MAIN_WINDOW::TOLV_MAIN_WINDOW(QWidget* parent, Qt::WindowFlags flags) : QMainWindow(parent, flags)
{
    setDockNestingEnabled(true);
    for (const Qt::ToolBarArea area : SIDES)
        add_button_bar(area);
    setStyleSheet(QStringLiteral("QMainWindow::separator:hover { background: darkgray; }"));
    new TOLV_F1_ACTION(this, SLOT(f1_help()));
}

TOLV_MAIN_WINDOW::~TOLV_MAIN_WINDOW()
{
    delete m_dock_mgr;
}

TOLV_DOCK_MGR* TOLV_MAIN_WINDOW::get_dock_mgr()
{
    if (m_dock_mgr == nullptr)
        m_dock_mgr = new TOLV_DOCK_MGR;
    return m_dock_mgr;
}

QAction* TOLV_MAIN_WINDOW::get_main_menu_action(const QString& name) const
{
    // menuBar() would make one where there is none.
    const auto* const bar = qobject_cast<const QMenuBar*>(menuWidget());
    return bar != nullptr ? find_main_menu_action(remove_mnemonics(name), bar->actions()) : nullptr;
}

QAction* TOLV_MAIN_WINDOW::find_main_menu_action(const QString& name, const QList<QAction*>& actions) const
{
    for (QAction* a : actions)
    {
        TOLV_CHECK_TEXT(a != nullptr, "a != NULL");
        if (a == nullptr)
            continue;
        if (a->menu() != nullptr)
        {
            if (QAction* const found = find_main_menu_action(name, a->menu()->actions()); found != nullptr)
                return found;
        }
        else if (!a->text().isEmpty() && remove_mnemonics(a->text()) == name)
        {
            return a;
        }
    }
    return nullptr;
}

void TOLV_MAIN_WINDOW::add_button_bar(Qt::ToolBarArea area)
{
    auto* const bar = new TOLV_DOCK_WIDGET_BUTTON_BAR(area, this);
    bar->setObjectName(get_bar_name(area));
    addToolBar(area, bar);
    m_button_bars[area] = bar;
    bar->hide();
}

void TOLV_MAIN_WINDOW::hide_unpinned_widgets(QMouseEvent* event)
{
    for (const Qt::ToolBarArea area : SIDES)
        hide_unpinned_widgets(event, area);
}

void TOLV_MAIN_WINDOW::hide_unpinned_widgets(QMouseEvent* event, Qt::ToolBarArea area)
{
    const TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = m_button_bars.value(area);
    if (bar == nullptr || event == nullptr)
        return;
    // A host that hears of the hiding may take buttons from the bar.
    const QList<TOLV_DOCK_WIDGET_BUTTON*> buttons = bar->m_buttons.keys();
    for (TOLV_DOCK_WIDGET_BUTTON* button : buttons)
    {
        TOLV_DOCK_WIDGET* const dock = bar->m_buttons.contains(button) ? button->get_dock() : nullptr;
        if (dock != nullptr && !dock->get_is_pinned() && !dock->frameGeometry().contains(event->globalPos()))
            dock->hide();
    }
}

void TOLV_MAIN_WINDOW::update_actions()
{
}

void TOLV_MAIN_WINDOW::f1_help()
{
    QWidget* widget = QApplication::activePopupWidget();
    if (const auto* const menu = qobject_cast<const QMenu*>(widget); menu != nullptr)
    {
        show_help(get_menu_topic(*menu));
        return;
    }
    if (widget == nullptr)
        widget = QApplication::focusWidget();
    if (auto* const tree = qobject_cast<TOLV_TREE_VIEW*>(widget); tree != nullptr && tree->handle_f1_help())
        return;
    show_help(get_topic_above(widget));
}
