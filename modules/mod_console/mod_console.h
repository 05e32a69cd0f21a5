#pragma once

#include "module_export.h"

#include "tolv_dock_widget.h"

class CONSOLE_VIEW;
class QFileSystemWatcher;
class QListWidget;
class QPushButton;
class TCL_SESSION;
class TOLV_MAIN_WINDOW;

/// The window of the Tcl console. A tool that does not link to the module uses the slots by name.
class CONSOLE_DOCK : public TOLV_DOCK_WIDGET
{
    Q_OBJECT

public:
    explicit CONSOLE_DOCK(QWidget* parent);

    void scroll_to_bottom() const override;

public slots:
    /// Evaluates a command as if the user had entered it.
    void run(const QString& command);
    void clear();

private:
    CONSOLE_VIEW* m_view;
};

/// The scripts of a folder, which follows what happens there: a double click, Enter or the button runs one.
class TCL_SCRIPTS_DOCK : public TOLV_DOCK_WIDGET
{
    Q_OBJECT

public:
    explicit TCL_SCRIPTS_DOCK(QWidget* parent);

public slots:
    /// The folder whose "*.tcl" files are listed; at first the working folder.
    void set_folder(const QString& folder);
    void run_selected();

signals:
    /// A script has run.
    /// @param result what it returned, or what went wrong
    void script_finished(const QString& file, bool ok, const QString& result);

private slots:
    void refresh();
    void update_button();

private:
    QString m_folder;
    TCL_SESSION* m_session;
    QListWidget* m_list;
    QPushButton* m_run_button;
    QFileSystemWatcher* m_watcher;
};

MODULE_EXPORT TOLV_DOCK_WIDGET* mod_console_create_dock_widget(TOLV_MAIN_WINDOW* main_window);
MODULE_EXPORT TOLV_DOCK_WIDGET* mod_console_tcl_scripts_create_dock_widget(TOLV_MAIN_WINDOW* main_window);
