#pragma once

#include "tolv_export.h"

#include <QHash>
#include <QList>
#include <QMainWindow>
#include <QString>

class QAction;
class QMouseEvent;
class TOLV_DOCK_MGR;
class TOLV_DOCK_WIDGET_BUTTON_BAR;

/// The main window that hosts derive theirs from. It has a side bar at each edge for the dock windows that are not
/// pinned, makes dockable windows by a manager, opens the help on F1 wherever the focus is, and finds an action of the
/// main menu by its text. Saving the layout is the host's business; the side bars have object names for it.
///
/// A widget takes part in the help by its accessible name, which is the topic.
class TOLV_EXPORT TOLV_MAIN_WINDOW : public QMainWindow
{
    Q_OBJECT

public:
    explicit TOLV_MAIN_WINDOW(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~TOLV_MAIN_WINDOW() override;

    /// The window's manager of dockable windows, made at the first call; the window owns it.
    TOLV_DOCK_MGR* get_dock_mgr();

    /// The first action of the main menu, menus before what follows them, that has this text; marks of mnemonics do not
    /// count, neither in the name nor in the action. The titles of menus are not looked at. Null where there is none.
    QAction* get_main_menu_action(const QString& name) const;
    /// The same in a list of actions and the menus below it, for a name without "&". A null action is the internal error
    /// "a != NULL".
    QAction* find_main_menu_action(const QString& name, const QList<QAction*>& actions) const;

    /// Makes the side bar of an edge, hidden. The constructor has done so for each.
    void add_button_bar(Qt::ToolBarArea area);

    /// Hides each dock window that is not pinned and that the mouse is not in, of all edges or of one; its button stays
    /// as it is. For hosts, which call it from their mouse events. A dock's geometry in its parent is compared with the
    /// position on the screen as it stands, which is meant.
    void hide_unpinned_widgets(QMouseEvent* event);
    void hide_unpinned_widgets(QMouseEvent* event, Qt::ToolBarArea area);

    /// The side bars, children of the window, which dock windows and their buttons read.
    QHash<Qt::ToolBarArea, TOLV_DOCK_WIDGET_BUTTON_BAR*> m_button_bars;

public slots:
    /// Called when something has changed that actions depend on. Nothing here; hosts override it.
    virtual void update_actions();
    /// Opens the help. The topic is, of an open menu, the text of the active action as it stands, or else its title; of
    /// any other popup, or else of the focus widget, the first accessible name on the way from it to its outermost
    /// parent; otherwise it is empty. A TOLV_TREE_VIEW with the focus may show its own help instead.
    void f1_help();

private:
    TOLV_DOCK_MGR* m_dock_mgr = nullptr; ///< owned
};
