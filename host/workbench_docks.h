#pragma once

#include "tolv_action_auto.h"
#include "tolv_dock_mgr.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QVector>

class QAction;
class QMenu;
class TOLV_DOCK_WIDGET;
class TOLV_MAIN_WINDOW;

/// The dock windows of the workbench: those that run-time modules make and those of its own, with their entries in the
/// View menu, and the layout, which is kept in the registry from one session to the next.
class WORKBENCH_DOCKS : public QObject
{
    Q_OBJECT

public:
    explicit WORKBENCH_DOCKS(TOLV_MAIN_WINDOW* window);

    /// A window from a module. Null where the module is not there, which the user has then been told.
    /// @param command the one in the View menu; TOLV_ACTION_NONE makes one of the window's title
    TOLV_DOCK_WIDGET* add_from_module(TOLV_DOCK_ENUM dock, TOLV_ACTION_ENUM command, Qt::DockWidgetArea area);
    /// A window of the workbench's own.
    TOLV_DOCK_WIDGET* add(const char* object_name, const QString& title, QWidget* widget, TOLV_ACTION_ENUM command,
                          Qt::DockWidgetArea area);
    /// All windows, in the order in which they were added.
    const QVector<TOLV_DOCK_WIDGET*>& get_docks() const;

    /// Adds an entry for each window.
    void fill_menu(QMenu* menu);

    /// Remembers the present layout as the one that reset_layout() goes back to.
    void keep_default_layout();
    void save_layout() const;
    /// Takes over what save_layout() stored, in an earlier session, too. A layout that is damaged, or of another
    /// version, is left alone.
    void restore_layout();

public slots:
    void reset_layout();

signals:
    /// A docked window goes that had the keyboard focus, which has to go somewhere now.
    void focus_lost();

private slots:
    void follow_visibility();

private:
    void add_to_window(TOLV_DOCK_WIDGET* dock, TOLV_ACTION_ENUM command, Qt::DockWidgetArea area);
    QAction* create_action(int dock, QString* used_mnemonics);
    void show_side_bars();

    TOLV_MAIN_WINDOW* m_window;
    QVector<TOLV_DOCK_WIDGET*> m_docks;
    QVector<TOLV_ACTION_ENUM> m_commands; ///< of each
    QByteArray m_default_layout;
};
