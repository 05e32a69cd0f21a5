// How the main window is put together: documents, dock windows, menus, tool bar and status bar.

#include "workbench_window.h"

#include "hierarchy_filter_model.h"
#include "property_model.h"
#include "tolv_create_action.h"
#include "tolv_dock_widget.h"
#include "tolv_dock_widget_button_bar.h"
#include "tolv_global.h"
#include "tolv_icon.h"
#include "tolv_mdi_area.h"
#include "tolv_tool_bar.h"
#include "tolv_tree_view.h"
#include "workbench_actions.h"
#include "workbench_constraints.h"
#include "workbench_docks.h"
#include "workbench_documents.h"
#include "workbench_module_view.h"
#include "workbench_recent_menu.h"
#include "workbench_totals_view.h"

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTreeView>

#include <algorithm>

namespace
{
/// Wishes of a dock for its width, in characters of its font.
QSize get_dock_size(const QWidget* widget, int characters, int lines)
{
    const QFontMetrics metrics = widget->fontMetrics();
    return QSize(metrics.averageCharWidth() * characters, metrics.height() * lines);
}
} // namespace

void WORKBENCH_WINDOW::create_documents()
{
    m_mdi_area = new TOLV_MDI_AREA(this);
    m_mdi_area->setObjectName(QStringLiteral("documents"));
    m_mdi_area->setAccessibleName(tr("Documents"));
    setCentralWidget(m_mdi_area);
    m_documents = new WORKBENCH_DOCUMENTS(m_mdi_area, this);
    TOLV_SAFE_CONNECT(m_documents->get_module_view(), SIGNAL(current_changed()), this, SLOT(show_selected_object()));
    TOLV_SAFE_CONNECT(m_documents, SIGNAL(cell_activated(int)), this, SLOT(enter_cell(int)));
    TOLV_SAFE_CONNECT(m_documents, SIGNAL(cell_chosen(int)), this, SLOT(choose_cell(int)));
    TOLV_SAFE_CONNECT(m_documents, SIGNAL(instance_activated(QStringList)), this, SLOT(enter_instance(QStringList)));
}

void WORKBENCH_WINDOW::create_docks()
{
    m_navigator =
        m_docks->add_from_module(TOLV_DOCK_NAVIGATOR_HIERARCHY, TOLV_SHOW_HIERARCHY_ACTION, Qt::LeftDockWidgetArea);
    m_totals_view = new WORKBENCH_TOTALS_VIEW(this);
    TOLV_DOCK_WIDGET* const totals =
        m_docks->add("totals_dock", tr("Totals"), m_totals_view, TOLV_ACTION_NONE, Qt::RightDockWidgetArea);
    create_property_view();
    TOLV_DOCK_WIDGET* const properties = m_docks->add("property_dock", tr("Properties"), m_property_view,
                                                      TOLV_SHOW_PROPERTIES_ACTION, Qt::RightDockWidgetArea);
    m_messages = m_docks->add_from_module(TOLV_DOCK_MESSAGES, TOLV_SHOW_MESSAGES_ACTION, Qt::BottomDockWidgetArea);
    m_console = m_docks->add_from_module(TOLV_DOCK_CONSOLE, TOLV_SHOW_TCL_CONSOLE_ACTION, Qt::BottomDockWidgetArea);
    m_task_status = m_docks->add_from_module(TOLV_DOCK_STATUS, TOLV_SHOW_TASKS_ACTION, Qt::BottomDockWidgetArea);
    TOLV_DOCK_WIDGET* const assignments = m_docks->add(
        "assignments_dock", tr("Assignments"), m_constraints->get_panel(), TOLV_ACTION_NONE, Qt::BottomDockWidgetArea);
    for (TOLV_DOCK_WIDGET* dock : {m_console, m_task_status, assignments})
    {
        if (m_messages != nullptr && dock != nullptr)
            tabifyDockWidget(m_messages, dock);
    }
    if (m_messages != nullptr)
    {
        m_messages->raise();
        resizeDocks({m_messages}, {get_dock_size(this, 1, 8).height()}, Qt::Vertical);
    }
    if (m_navigator != nullptr)
    {
        QAbstractItemModel* const hierarchy = m_hierarchy_filter;
        QMetaObject::invokeMethod(m_navigator, "set_source_model", Q_ARG(QAbstractItemModel*, hierarchy));
        TOLV_SAFE_CONNECT(m_navigator, SIGNAL(current_changed(QModelIndex)), this, SLOT(show_instance(QModelIndex)));
        TOLV_SAFE_CONNECT(m_navigator, SIGNAL(icon_clicked(QModelIndex)), this, SLOT(show_schematic_of(QModelIndex)));
        resizeDocks({m_navigator, totals}, {get_dock_size(this, 48, 1).width(), get_dock_size(this, 42, 1).width()},
                    Qt::Horizontal);
    }
    resizeDocks({totals, properties}, {340, 420}, Qt::Vertical);
    TOLV_SAFE_CONNECT(m_docks, SIGNAL(focus_lost()), m_documents, SLOT(focus_document()));
    TOLV_SAFE_CONNECT(m_constraints, SIGNAL(noted(QString)), this, SLOT(add_note(QString)));
    TOLV_SAFE_CONNECT(m_constraints, SIGNAL(warned(QString)), this, SLOT(add_warning(QString)));
    TOLV_SAFE_CONNECT(m_constraints, SIGNAL(failed(QString)), this, SLOT(add_error(QString)));
}

void WORKBENCH_WINDOW::create_property_view()
{
    m_property_view = new QTreeView(this);
    m_property_view->setObjectName(QStringLiteral("property_view"));
    m_property_view->setAccessibleName(tr("Properties"));
    m_property_view->setModel(m_properties);
    m_property_view->setUniformRowHeights(true);
    m_property_view->setAlternatingRowColors(true);
    m_property_view->setAllColumnsShowFocus(true);
    m_property_view->setTextElideMode(Qt::ElideMiddle);
    m_property_view->setIndentation(m_property_view->indentation() * 3 / 4);
    m_property_view->header()->resizeSection(0, get_dock_size(this, 21, 1).width());
}

void WORKBENCH_WINDOW::create_file_menu()
{
    QMenu* const menu = m_actions->add_menu(tr("&File"), "file_menu");
    menu->addAction(m_actions->create(TOLV_OPEN_ACTION, SLOT(ask_for_file())));
    QMenu* const recent_menu = menu->addMenu(QString());
    recent_menu->setObjectName(QStringLiteral("recent_menu"));
    auto* const recent_files = new WORKBENCH_RECENT_MENU(recent_menu);
    TOLV_SAFE_CONNECT(recent_files, SIGNAL(file_chosen(QString)), this, SLOT(open_file(QString)));
    QAction* const reload_action = m_actions->create(TOLV_RELOAD_ACTION, SLOT(reload()));
    reload_action->setShortcut(QKeySequence::Refresh);
    menu->addAction(reload_action);
    menu->addSeparator();
    m_constraints->fill_menu(menu);
    menu->addSeparator();
    menu->addAction(m_actions->create(TOLV_PRINT_ACTION, SLOT(print())));
    menu->addSeparator();
    menu->addAction(m_actions->create(TOLV_EXIT_ACTION, SLOT(close())));
}

void WORKBENCH_WINDOW::create_view_menu()
{
    QMenu* const menu = m_actions->add_menu(tr("&View"), "view_menu");
    m_docks->fill_menu(menu);
    menu->addSeparator();
    auto* const hierarchy = new QAction(tolv_get_icon(TOLV_HIERARCHY_ICON), tr("Hierarchy &Graph"), this);
    hierarchy->setObjectName(QStringLiteral("hierarchy_graph_action"));
    hierarchy->setStatusTip(tr("Shows the modules of the design and which of them holds which, as a graph"));
    hierarchy->setToolTip(tr("Hierarchy Graph"));
    TOLV_SAFE_CONNECT(hierarchy, SIGNAL(triggered()), this, SLOT(show_hierarchy()));
    menu->addAction(hierarchy);
    menu->addAction(m_actions->create(TOLV_FULLSCREEN_ACTION, SLOT(toggle_full_screen())));
}

void WORKBENCH_WINDOW::create_go_menu()
{
    QMenu* const menu = m_actions->add_menu(tr("&Go"), "go_menu");
    menu->addAction(m_actions->create(TOLV_HIERARCHY_UP_ACTION, SLOT(go_up())));
    menu->addAction(m_actions->create(TOLV_HIERARCHY_DOWN_ACTION, SLOT(go_down())));
    menu->addAction(m_actions->create(TOLV_GOTO_TOP_LEVEL_ACTION, SLOT(go_to_top())));
}

void WORKBENCH_WINDOW::create_tools_menu()
{
    QMenu* const menu = m_actions->add_menu(tr("&Tools"), "tools_menu");
    menu->addAction(m_actions->create(TOLV_NETLIST_VIEW_ACTION, SLOT(show_schematic())));
    QAction* const floorplan = m_actions->create(TOLV_FLOORPLAN_ACTION, SLOT(show_floorplan()));
    floorplan->setEnabled(false);
    TOLV_SAFE_CONNECT(m_documents, SIGNAL(floorplan_available(bool)), floorplan, SLOT(setEnabled(bool)));
    menu->addAction(floorplan);
    menu->addAction(m_actions->create(TOLV_NETLIST_ANALYSIS_ACTION, SLOT(show_tables())));
    menu->addSeparator();
    QAction* const options = m_actions->create(TOLV_OPTIONS_ACTION, SLOT(show_preferences()));
    options->setObjectName(QStringLiteral("preferences_action"));
    options->setMenuRole(QAction::PreferencesRole);
    const QList<QKeySequence> shortcuts = QKeySequence::keyBindings(QKeySequence::Preferences);
    options->setShortcut(shortcuts.isEmpty() ? QKeySequence(Qt::CTRL + Qt::Key_Comma) : shortcuts.front());
    menu->addAction(options);
}

void WORKBENCH_WINDOW::create_window_menu()
{
    QMenu* const menu = m_actions->add_menu(tr("&Window"), "window_menu");
    menu->addAction(m_actions->create(TOLV_NEXT_WINDOW_ACTION, SLOT(next_window())));
    menu->addAction(m_actions->create(TOLV_CASCADE_ACTION, SLOT(cascade())));
    menu->addAction(m_actions->create(TOLV_TILE_ACTION, SLOT(tile())));
    menu->addSeparator();
    menu->addAction(m_actions->create(TOLV_RESET_LAYOUT_ACTION, SLOT(reset_layout())));
}

void WORKBENCH_WINDOW::create_help_menu()
{
    QMenu* const menu = m_actions->add_menu(tr("&Help"), "help_menu");
    menu->addAction(m_actions->create(TOLV_NORVANE_HELP_ACTION, SLOT(show_help_topics())));
    QAction* const gallery_action = menu->addAction(tr("&Gallery..."));
    gallery_action->setObjectName(QStringLiteral("gallery_action"));
    gallery_action->setStatusTip(tr("Shows all actions, pictures, colours and fonts that tools can use by name"));
    TOLV_SAFE_CONNECT(gallery_action, SIGNAL(triggered()), this, SLOT(show_gallery()));
    menu->addSeparator();
    menu->addAction(m_actions->create(TOLV_ABOUT_NORVANE_ACTION, SLOT(show_about())));
    QAction* const about_qt = tolv_create_action(TOLV_ABOUT_QT_ACTION, this);
    TOLV_SAFE_CONNECT(about_qt, SIGNAL(triggered()), qApp, SLOT(aboutQt()));
    menu->addAction(about_qt);
}

void WORKBENCH_WINDOW::fill_tool_bar()
{
    TOLV_TOOL_BAR* const bar = m_actions->get_tool_bar();
    for (const TOLV_ACTION_ENUM command : {TOLV_OPEN_ACTION, TOLV_RELOAD_ACTION, TOLV_PRINT_ACTION})
        bar->addAction(m_actions->get(command));
    bar->addSeparator();
    for (const TOLV_ACTION_ENUM command : {TOLV_HIERARCHY_UP_ACTION, TOLV_HIERARCHY_DOWN_ACTION})
        bar->addAction(m_actions->get(command));
    bar->addSeparator();
    for (const TOLV_ACTION_ENUM command :
         {TOLV_NETLIST_VIEW_ACTION, TOLV_FLOORPLAN_ACTION, TOLV_NETLIST_ANALYSIS_ACTION})
        bar->addAction(m_actions->get(command));
    bar->addSeparator();
    bar->addAction(m_actions->get(TOLV_NORVANE_HELP_ACTION));

    // The side bar of the top stands in a line of its own, beside its windows and not among the tools.
    TOLV_DOCK_WIDGET_BUTTON_BAR* const side_bar = m_button_bars.value(Qt::TopToolBarArea);
    removeToolBar(side_bar);
    addToolBarBreak(Qt::TopToolBarArea);
    addToolBar(Qt::TopToolBarArea, side_bar);
}

void WORKBENCH_WINDOW::create_status_bar()
{
    m_file_label = new QLabel(this);
    m_file_label->setObjectName(QStringLiteral("file_label"));
    m_file_label->setContentsMargins(6, 0, 0, 0);
    m_file_label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_totals_label = new QLabel(this);
    m_totals_label->setContentsMargins(0, 0, 6, 0);
    m_totals_label->setObjectName(QStringLiteral("totals_label"));
    m_progress_bar = new QProgressBar(this);
    m_progress_bar->setObjectName(QStringLiteral("progress_bar"));
    m_progress_bar->setAccessibleName(tr("Progress of reading"));
    m_progress_bar->setFixedWidth(fontMetrics().averageCharWidth() * 32);
    m_progress_bar->setMaximumHeight(fontMetrics().height() + 4);
    m_cancel_button = new QPushButton(tr("Cancel"), this);
    m_cancel_button->setObjectName(QStringLiteral("cancel_button"));
    TOLV_SAFE_CONNECT(m_cancel_button, SIGNAL(clicked()), this, SLOT(cancel_loading()));
    statusBar()->addWidget(m_file_label, 1);
    statusBar()->addPermanentWidget(m_progress_bar);
    statusBar()->addPermanentWidget(m_cancel_button);
    statusBar()->addPermanentWidget(m_totals_label);
}

void WORKBENCH_WINDOW::set_tab_order()
{
    auto* const hierarchy = m_navigator != nullptr ? m_navigator->findChild<TOLV_TREE_VIEW*>() : nullptr;
    QWidgetList chain;
    if (hierarchy != nullptr)
        chain << hierarchy;
    chain << m_totals_view->get_table() << m_property_view;
    if (m_messages != nullptr)
        chain << m_messages->widget();
    // Last, as Tab stays within a document; Ctrl+Tab goes to the next one.
    chain << m_cancel_button << m_documents->get_module_view()->get_tab_chain();
    // A window that floats goes its own way.
    const auto is_elsewhere = [this](const QWidget* widget) { return widget->window() != this; };
    chain.erase(std::remove_if(chain.begin(), chain.end(), is_elsewhere), chain.end());
    for (int i = 1; i < chain.size(); ++i)
        setTabOrder(chain[i - 1], chain[i]);
    chain.constFirst()->setFocus();
}
