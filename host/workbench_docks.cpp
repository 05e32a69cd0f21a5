#include "workbench_docks.h"

#include "cfgq_registry.h"
#include "tolv_create_action.h"
#include "tolv_dock_widget.h"
#include "tolv_dock_widget_button.h"
#include "tolv_dock_widget_button_bar.h"
#include "tolv_global.h"
#include "tolv_main_window.h"

#include <QAction>
#include <QApplication>
#include <QMenu>

#include <algorithm>

namespace
{
const int LAYOUT_VERSION = 2; ///< other windows, other number

CFGQ_REGISTRY_KEY get_layout_key()
{
    return CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_GUI, "norvane_workbench/layout");
}

/// A title with a mnemonic that none of the titles before has.
QString add_mnemonic(const QString& title, QString* used)
{
    for (int i = 0; i < title.size(); ++i)
    {
        const QChar letter = title.at(i).toLower();
        if (!letter.isLetter() || used->contains(letter))
            continue;
        *used += letter;
        return title.left(i) + QLatin1Char('&') + title.mid(i);
    }
    return title;
}
} // namespace

WORKBENCH_DOCKS::WORKBENCH_DOCKS(TOLV_MAIN_WINDOW* window) : QObject(window), m_window(window)
{
}

TOLV_DOCK_WIDGET* WORKBENCH_DOCKS::add_from_module(TOLV_DOCK_ENUM dock, TOLV_ACTION_ENUM command,
                                                   Qt::DockWidgetArea area)
{
    TOLV_DOCK_WIDGET* const widget = m_window->get_dock_mgr()->create_dock_widget(dock, m_window);
    if (widget != nullptr)
        add_to_window(widget, command, area);
    return widget;
}

TOLV_DOCK_WIDGET* WORKBENCH_DOCKS::add(const char* object_name, const QString& title, QWidget* widget,
                                       TOLV_ACTION_ENUM command, Qt::DockWidgetArea area)
{
    auto* const dock = new TOLV_DOCK_WIDGET(title, m_window);
    dock->setObjectName(QString::fromLatin1(object_name));
    dock->setWidget(widget);
    add_to_window(dock, command, area);
    return dock;
}

void WORKBENCH_DOCKS::add_to_window(TOLV_DOCK_WIDGET* dock, TOLV_ACTION_ENUM command, Qt::DockWidgetArea area)
{
    m_window->addDockWidget(area, dock);
    m_docks.append(dock);
    m_commands.append(command);
    TOLV_SAFE_CONNECT(dock, SIGNAL(dock_widget_active_state_changed(bool)), this, SLOT(follow_visibility()));
}

const QVector<TOLV_DOCK_WIDGET*>& WORKBENCH_DOCKS::get_docks() const
{
    return m_docks;
}

void WORKBENCH_DOCKS::fill_menu(QMenu* menu)
{
    // The named commands keep their mnemonics.
    QString used_mnemonics;
    for (const TOLV_ACTION_ENUM command : qAsConst(m_commands))
    {
        if (command != TOLV_ACTION_NONE)
            used_mnemonics += QKeySequence::mnemonic(QString::fromLatin1(tolv_get_menu_text(command)))
                                  .toString(QKeySequence::PortableText)
                                  .right(1)
                                  .toLower();
    }
    for (int i = 0; i < m_docks.size(); ++i)
    {
        TOLV_DOCK_WIDGET* const dock = m_docks[i];
        QAction* const action = create_action(i, &used_mnemonics);
        action->setObjectName(dock->objectName() + QStringLiteral("_action"));
        menu->addAction(action);
        TOLV_SAFE_CONNECT(action, SIGNAL(triggered(bool)), dock, SLOT(set_visible_and_raise(bool)));
        TOLV_SAFE_CONNECT(dock, SIGNAL(dock_widget_active_state_changed(bool)), action, SLOT(setChecked(bool)));
    }
}

QAction* WORKBENCH_DOCKS::create_action(int dock, QString* used_mnemonics)
{
    if (m_commands[dock] != TOLV_ACTION_NONE)
        return tolv_create_action(m_commands[dock], m_window);
    const QString title = m_docks[dock]->windowTitle();
    auto* const action = new QAction(add_mnemonic(title, used_mnemonics), m_window);
    action->setCheckable(true);
    action->setStatusTip(tr("Shows or hides the window \"%1\"").arg(title));
    return action;
}

void WORKBENCH_DOCKS::keep_default_layout()
{
    m_default_layout = m_window->saveState(LAYOUT_VERSION);
}

void WORKBENCH_DOCKS::save_layout() const
{
    QStringList unpinned;
    for (const TOLV_DOCK_WIDGET* dock : m_docks)
    {
        if (dock->get_state() == TOLV_DOCK_WIDGET::DOCK_STATE_UNPINNED)
            unpinned << dock->objectName();
    }
    CFGQ_REGISTRY_KEY key = get_layout_key();
    key.set_value(QStringLiteral("version"), LAYOUT_VERSION);
    key.set_value(QStringLiteral("geometry"), m_window->saveGeometry());
    key.set_value(QStringLiteral("state"), m_window->saveState(LAYOUT_VERSION));
    key.set_value(QStringLiteral("unpinned"), unpinned);
}

void WORKBENCH_DOCKS::restore_layout()
{
    const CFGQ_REGISTRY_KEY key = get_layout_key();
    QVariant version;
    QVariant geometry;
    QVariant state;
    QVariant unpinned;
    if (!key.get_value(QStringLiteral("version"), &version) || version.toInt() != LAYOUT_VERSION ||
        !key.get_value(QStringLiteral("geometry"), &geometry) || !key.get_value(QStringLiteral("state"), &state))
        return;
    key.get_value(QStringLiteral("unpinned"), &unpinned);
    const QStringList names = unpinned.toStringList();
    // Before the windows get their places: each makes its side button with its place.
    for (TOLV_DOCK_WIDGET* dock : qAsConst(m_docks))
    {
        if (names.contains(dock->objectName()))
            dock->set_is_pinned(false);
    }
    m_window->restoreGeometry(geometry.toByteArray());
    if (!m_window->restoreState(state.toByteArray(), LAYOUT_VERSION))
        reset_layout();
    show_side_bars();
}

void WORKBENCH_DOCKS::reset_layout()
{
    for (TOLV_DOCK_WIDGET* dock : qAsConst(m_docks))
    {
        if (dock->get_state() != TOLV_DOCK_WIDGET::DOCK_STATE_UNPINNED)
            continue;
        dock->close_widget(); // takes its side button away
        dock->show();         // and this pins it again
    }
    m_window->restoreState(m_default_layout, LAYOUT_VERSION);
    show_side_bars();
}

/// Whatever a layout says, a side bar is shown where it has buttons: windows may be missing, or unpinned, since.
void WORKBENCH_DOCKS::show_side_bars()
{
    for (TOLV_DOCK_WIDGET_BUTTON_BAR* bar : qAsConst(m_window->m_button_bars))
        bar->setVisible(!bar->m_buttons.isEmpty());
}

/// A window has come or gone, by whatever route.
void WORKBENCH_DOCKS::follow_visibility()
{
    if (!m_window->isVisible())
        return; // all go together, perhaps because the main window is being destroyed
    // A side button follows its own clicks only.
    for (const TOLV_DOCK_WIDGET_BUTTON_BAR* bar : qAsConst(m_window->m_button_bars))
    {
        const QList<TOLV_DOCK_WIDGET_BUTTON*> buttons = bar->m_buttons.keys();
        for (TOLV_DOCK_WIDGET_BUTTON* button : buttons)
            button->setChecked(button->get_dock() != nullptr && button->get_dock()->isVisible());
    }
    // Left to itself, Qt hands the focus to the next widget in the row, in a document that lies behind others, too.
    const QWidget* const focus = QApplication::focusWidget();
    const bool is_lost =
        std::any_of(m_docks.cbegin(), m_docks.cend(),
                    [focus](const TOLV_DOCK_WIDGET* dock) {
                        return focus != nullptr && !dock->isWindow() && !dock->isVisible() && dock->isAncestorOf(focus);
                    });
    if (is_lost)
        emit focus_lost();
}
