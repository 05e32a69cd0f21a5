#pragma once

#include "netlist.h"

#include <QFont>
#include <QMainWindow>
#include <QPointer>
#include <QStringList>

#include <memory>

class GALLERY_WINDOW;
class HIERARCHY_MODEL;
class NETLIST_BIT_NAMES;
class PREFERENCES_DIALOG;
class PROPERTY_MODEL;
class QLabel;
class QProgressBar;
class QPushButton;
class QTreeView;
class WORKBENCH_LOADER;
class WORKBENCH_MESSAGES;
class WORKBENCH_MODULE_VIEW;
class WORKBENCH_TOTALS_VIEW;

/// The main window: the hierarchy of the open design at the left, the chosen module in the middle, its totals and the
/// properties of the chosen object at the right, messages below. A file is read in the background; the design that is
/// shown stays until the new one is there, and stays for good where the new one turns out to be bad.
class WORKBENCH_WINDOW : public QMainWindow
{
    Q_OBJECT

public:
    explicit WORKBENCH_WINDOW(QWidget* parent = nullptr);
    ~WORKBENCH_WINDOW() override;

    /// The design that is shown; null for none.
    const std::shared_ptr<const NETLIST>& get_netlist() const;
    bool is_loading() const;
    /// Text of the error that ended the last loading; empty where it went well or was cancelled.
    const QString& get_load_error() const;

    /// Chooses an instance by the names from the top down to it. Returns whether there is one.
    bool select_path(const QStringList& path);
    /// Names from the top down to the chosen instance.
    QStringList get_selected_path() const;

    /// Opens the preferences, unless they are open. The window keeps them; they go when they are closed.
    PREFERENCES_DIALOG* open_preferences();

    /// Opens the gallery, unless it is open. The window keeps it; it goes when it is closed.
    GALLERY_WINDOW* open_gallery();

public slots:
    /// Begins to read a file. One that is being read is given up for it.
    void open_file(const QString& file);
    /// Reads the open file anew, or the one that failed last.
    void reload();
    void cancel_loading();
    void show_preferences();
    void show_gallery();

signals:
    /// A loading has ended in one way or another.
    void load_ended();

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private slots:
    void ask_for_file();
    void open_recent_file();
    void clear_recent_files();
    void fill_recent_menu();
    void show_about();
    void apply_drawing_resources();
    void show_progress(int percent);
    void take_result();
    void show_selected_instance();
    void show_selected_object();
    void enter_cell(int cell);

private:
    void create_central_view();
    void create_hierarchy_dock();
    void create_totals_dock();
    void create_property_dock();
    void create_message_dock();
    QDockWidget* add_dock(const char* object_name, const QString& title, QWidget* widget, Qt::DockWidgetArea area);
    void create_file_menu();
    void create_view_menu();
    void create_tools_menu();
    void create_help_menu();
    void create_status_bar();
    void set_tab_order();
    void set_loading(bool is_loading);
    void show_result();
    void show_netlist(std::shared_ptr<const NETLIST> netlist);
    void show_error(const QString& error);
    void show_status();

    std::shared_ptr<const NETLIST> m_netlist;
    std::unique_ptr<NETLIST_BIT_NAMES> m_bit_names; ///< of the chosen module
    QString m_load_error;
    QFont m_window_font; ///< the named font that the application was last given
    QPointer<PREFERENCES_DIALOG> m_preferences;
    QPointer<GALLERY_WINDOW> m_gallery;

    WORKBENCH_LOADER* m_loader;
    HIERARCHY_MODEL* m_hierarchy;
    PROPERTY_MODEL* m_properties;
    QTreeView* m_hierarchy_view = nullptr;
    WORKBENCH_MODULE_VIEW* m_module_view = nullptr;
    WORKBENCH_TOTALS_VIEW* m_totals_view = nullptr;
    QTreeView* m_property_view = nullptr;
    WORKBENCH_MESSAGES* m_messages = nullptr;
    QVector<QDockWidget*> m_docks; ///< in the order of the view menu
    QMenu* m_recent_menu = nullptr;
    QAction* m_reload_action = nullptr;
    QLabel* m_file_label = nullptr;
    QLabel* m_totals_label = nullptr;
    QProgressBar* m_progress_bar = nullptr;
    QPushButton* m_cancel_button = nullptr;
};
