#pragma once

#include "netlist.h"

#include "tolv_main_window.h"

#include <QFont>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QStringList>

#include <memory>

class GALLERY_WINDOW;
class HIERARCHY_FILTER_MODEL;
class HIERARCHY_MODEL;
class NETLIST_BIT_NAMES;
class PREFERENCES_DIALOG;
class PROPERTY_MODEL;
class QLabel;
class QProgressBar;
class QPushButton;
class QTreeView;
class TOLV_DOCK_WIDGET;
class TOLV_MDI_AREA;
class WORKBENCH_ACTIONS;
class WORKBENCH_CONSTRAINTS;
class WORKBENCH_DOCKS;
class WORKBENCH_DOCUMENTS;
class WORKBENCH_LOADER;
class WORKBENCH_TOTALS_VIEW;

/// The main window: the hierarchy of the open design at the left; the chosen module in the middle, as a schematic, in
/// tables and on the chip; its totals and the properties of the chosen object at the right; messages, the Tcl console and
/// the status of tasks below. Hierarchy, messages, console and status come from run-time modules; where one is missing
/// the window works without it. A file is read in the background; the design that is shown stays until the new one is
/// there, and stays for good where the new one turns out to be bad.
class WORKBENCH_WINDOW : public TOLV_MAIN_WINDOW
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

    /// The documents in the middle.
    WORKBENCH_DOCUMENTS* get_documents() const;
    /// The assignments of the open design.
    WORKBENCH_CONSTRAINTS* get_constraints() const;
    /// Takes over the layout of the session before, and keeps the present one when the window is closed.
    void keep_layout();

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
    /// Enables the commands that make sense now.
    void update_actions() final;
    void show_preferences();
    void show_gallery();

signals:
    /// A loading has ended in one way or another.
    void load_ended();

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private slots:
    void ask_for_file();
    void show_about();
    void add_note(const QString& text);
    void add_warning(const QString& text);
    void add_error(const QString& text);
    void apply_drawing_resources();
    void show_progress(int percent);
    void take_result();
    void show_instance(const QModelIndex& index);
    void show_schematic_of(const QModelIndex& index);
    void show_selected_object();
    void enter_cell(int cell);
    void choose_cell(int cell);
    void go_up();
    void go_down();
    void go_to_top();
    void toggle_full_screen();
    void show_schematic();
    void show_floorplan();
    void show_tables();
    void show_hierarchy();
    void enter_instance(const QStringList& path);
    void show_help_topics();
    void print();
    void reset_layout();
    void cascade();
    void tile();
    void next_window();

private:
    void create_documents();
    void create_docks();
    void create_property_view();
    void create_file_menu();
    void create_view_menu();
    void create_go_menu();
    void create_tools_menu();
    void create_window_menu();
    void create_help_menu();
    void fill_tool_bar();
    void create_status_bar();
    void set_tab_order();
    QModelIndex get_chosen_instance() const;
    void set_loading(bool is_loading);
    void show_result();
    void show_netlist(std::shared_ptr<const NETLIST> netlist);
    void show_error(const QString& error);
    void show_status();
    void say(const char* slot, const QString& text);
    void show_task(int percent, const QString& state);

    std::shared_ptr<const NETLIST> m_netlist;
    std::unique_ptr<NETLIST_BIT_NAMES> m_bit_names; ///< of the chosen module
    QString m_load_error;
    QFont m_window_font; ///< the named font that the application was last given
    QPointer<PREFERENCES_DIALOG> m_preferences;
    QPointer<GALLERY_WINDOW> m_gallery;

    WORKBENCH_LOADER* m_loader;
    HIERARCHY_MODEL* m_hierarchy;
    HIERARCHY_FILTER_MODEL* m_hierarchy_filter; ///< what the navigator shows
    PROPERTY_MODEL* m_properties;
    WORKBENCH_ACTIONS* m_actions;
    WORKBENCH_DOCKS* m_docks;
    WORKBENCH_CONSTRAINTS* m_constraints;
    TOLV_MDI_AREA* m_mdi_area = nullptr;
    WORKBENCH_DOCUMENTS* m_documents = nullptr;
    QPersistentModelIndex m_instance; ///< the chosen one
    // From modules; null where the module is missing.
    TOLV_DOCK_WIDGET* m_navigator = nullptr;
    TOLV_DOCK_WIDGET* m_messages = nullptr;
    TOLV_DOCK_WIDGET* m_console = nullptr;
    TOLV_DOCK_WIDGET* m_task_status = nullptr;
    WORKBENCH_TOTALS_VIEW* m_totals_view = nullptr;
    QTreeView* m_property_view = nullptr;
    bool m_keeps_layout = false;
    bool m_was_shown = false;
    QLabel* m_file_label = nullptr;
    QLabel* m_totals_label = nullptr;
    QProgressBar* m_progress_bar = nullptr;
    QPushButton* m_cancel_button = nullptr;
};
