#include "workbench_window.h"

#include "gallery_window.h"
#include "hierarchy_model.h"
#include "netlist_properties.h"
#include "preferences_dialog.h"
#include "tolv_font.h"
#include "tolv_global.h"
#include "ver.h"
#include "workbench_loader.h"
#include "workbench_messages.h"
#include "workbench_module_view.h"
#include "workbench_recent_files.h"
#include "workbench_text.h"
#include "workbench_totals_view.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QStyle>
#include <QToolBar>
#include <QTreeView>
#include <QUrl>

namespace
{
// A design with no more instances than this is shown with its whole hierarchy open.
constexpr std::uint64_t LARGEST_OPEN_HIERARCHY = 100;

/// The local file of a drag; empty where it is something else, or several.
QString get_dragged_file(const QMimeData* data)
{
    const QList<QUrl> urls = data->urls();
    return urls.size() == 1 ? urls.front().toLocalFile() : QString();
}

/// A path as short as it can be said: below the working folder without it, below the user's own with "~".
QString get_shown_path(const QString& file)
{
    QString relative = QDir::current().relativeFilePath(file);
    if (!relative.startsWith(QLatin1String("..")))
        return relative;
    const QString home = QDir::homePath() + QLatin1Char('/');
    return file.startsWith(home) ? QStringLiteral("~/") + file.mid(home.size()) : file;
}

/// Wishes of a dock for its width, in characters of its font.
QSize get_dock_size(const QWidget* widget, int characters, int lines)
{
    const QFontMetrics metrics = widget->fontMetrics();
    return QSize(metrics.averageCharWidth() * characters, metrics.height() * lines);
}
} // namespace

WORKBENCH_WINDOW::WORKBENCH_WINDOW(QWidget* parent)
    : QMainWindow(parent), m_window_font(*TOLV_FONT(TOLV_GUI_FONT).get_font()), m_loader(new WORKBENCH_LOADER(this)),
      m_hierarchy(new HIERARCHY_MODEL(this)), m_properties(new PROPERTY_MODEL(this))
{
    setObjectName(QStringLiteral("workbench_window"));
    setAcceptDrops(true);
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    create_central_view();
    create_hierarchy_dock();
    create_totals_dock();
    create_property_dock();
    create_message_dock();
    create_file_menu();
    create_view_menu();
    create_tools_menu();
    create_help_menu();
    create_status_bar();
    set_tab_order();
    TOLV_SAFE_CONNECT(m_loader, SIGNAL(progressed(int)), this, SLOT(show_progress(int)));
    TOLV_SAFE_CONNECT(m_loader, SIGNAL(finished()), this, SLOT(take_result()));
    resize(1280, 800);
    resizeDocks({m_docks[0], m_docks[1]}, {get_dock_size(this, 48, 1).width(), get_dock_size(this, 42, 1).width()},
                Qt::Horizontal);
    resizeDocks({m_docks[1], m_docks[2]}, {340, 420}, Qt::Vertical);
    resizeDocks({m_docks[3]}, {get_dock_size(this, 1, 6).height()}, Qt::Vertical);
    set_loading(false);
    show_status();
}

WORKBENCH_WINDOW::~WORKBENCH_WINDOW() = default;

const std::shared_ptr<const NETLIST>& WORKBENCH_WINDOW::get_netlist() const
{
    return m_netlist;
}

bool WORKBENCH_WINDOW::is_loading() const
{
    return m_loader->is_running();
}

const QString& WORKBENCH_WINDOW::get_load_error() const
{
    return m_load_error;
}

bool WORKBENCH_WINDOW::select_path(const QStringList& path)
{
    const QModelIndex index = m_hierarchy->find_path(path);
    if (!index.isValid())
        return false;
    m_hierarchy_view->setCurrentIndex(index);
    m_hierarchy_view->scrollTo(index);
    return true;
}

QStringList WORKBENCH_WINDOW::get_selected_path() const
{
    return m_hierarchy->get_path(m_hierarchy_view->currentIndex());
}

PREFERENCES_DIALOG* WORKBENCH_WINDOW::open_preferences()
{
    if (m_preferences == nullptr)
    {
        m_preferences = new PREFERENCES_DIALOG(this);
        m_preferences->setAttribute(Qt::WA_DeleteOnClose);
        m_preferences->setAttribute(Qt::WA_DontShowOnScreen, testAttribute(Qt::WA_DontShowOnScreen));
        TOLV_SAFE_CONNECT(m_preferences, SIGNAL(resources_changed()), this, SLOT(apply_drawing_resources()));
        m_preferences->open();
    }
    return m_preferences;
}

GALLERY_WINDOW* WORKBENCH_WINDOW::open_gallery()
{
    if (m_gallery == nullptr)
    {
        m_gallery = new GALLERY_WINDOW(this);
        m_gallery->setAttribute(Qt::WA_DeleteOnClose);
        if (testAttribute(Qt::WA_DontShowOnScreen))
        {
            m_gallery->setAttribute(Qt::WA_DontShowOnScreen);
            m_gallery->use_size(m_gallery->size()); // pictures are alike whatever the user has done
        }
    }
    m_gallery->show();
    m_gallery->raise();
    m_gallery->activateWindow();
    return m_gallery;
}

void WORKBENCH_WINDOW::open_file(const QString& file)
{
    m_load_error.clear();
    statusBar()->clearMessage(); // what it says of an earlier file
    m_loader->start(QFileInfo(file).absoluteFilePath());
    set_loading(true);
    m_messages->add_note(tr("Reading %1").arg(get_shown_path(m_loader->get_file())));
}

void WORKBENCH_WINDOW::reload()
{
    if (!m_loader->get_file().isEmpty())
        open_file(m_loader->get_file());
}

void WORKBENCH_WINDOW::cancel_loading()
{
    m_loader->cancel();
}

void WORKBENCH_WINDOW::show_preferences()
{
    open_preferences();
}

void WORKBENCH_WINDOW::show_gallery()
{
    open_gallery();
}

void WORKBENCH_WINDOW::dragEnterEvent(QDragEnterEvent* event)
{
    if (!get_dragged_file(event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void WORKBENCH_WINDOW::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    open_file(get_dragged_file(event->mimeData()));
}

void WORKBENCH_WINDOW::ask_for_file()
{
    const QString folder = QFileInfo(m_loader->get_file()).path();
    const QString file =
        QFileDialog::getOpenFileName(this, tr("Open Netlist"), folder, tr("Netlists (*.json);;All files (*)"));
    if (!file.isEmpty())
        open_file(file);
}

void WORKBENCH_WINDOW::open_recent_file()
{
    const auto* const action = qobject_cast<QAction*>(sender());
    if (action != nullptr)
        open_file(action->data().toString());
}

void WORKBENCH_WINDOW::clear_recent_files()
{
    WORKBENCH_RECENT_FILES::clear();
}

void WORKBENCH_WINDOW::fill_recent_menu()
{
    m_recent_menu->clear();
    const QStringList files = WORKBENCH_RECENT_FILES::get();
    for (int i = 0; i < files.size(); ++i)
    {
        QString shown = fontMetrics().elidedText(files[i], Qt::ElideMiddle, fontMetrics().averageCharWidth() * 80);
        shown.replace(QLatin1Char('&'), QStringLiteral("&&"));
        QAction* const action = m_recent_menu->addAction(QStringLiteral("&%1  %2").arg(i + 1).arg(shown));
        action->setData(files[i]);
        TOLV_SAFE_CONNECT(action, SIGNAL(triggered()), this, SLOT(open_recent_file()));
    }
    m_recent_menu->addSeparator();
    QAction* const clear_action = m_recent_menu->addAction(tr("&Clear List"));
    clear_action->setEnabled(!files.isEmpty());
    TOLV_SAFE_CONNECT(clear_action, SIGNAL(triggered()), this, SLOT(clear_recent_files()));
}

void WORKBENCH_WINDOW::show_about()
{
    QMessageBox box(QMessageBox::Information, tr("About Norvane Workbench"),
                    tr("<b>Norvane Workbench</b><br>%1").arg(QString::fromStdString(ver_get_version_string())),
                    QMessageBox::Close, this);
    box.setObjectName(QStringLiteral("about_box"));
    box.setInformativeText(tr("Shows netlists of yosys and nextpnr: their hierarchy, cells, ports and nets."));
    box.exec();
}

void WORKBENCH_WINDOW::apply_drawing_resources()
{
    const QFont font = *TOLV_FONT(TOLV_GUI_FONT).get_font();
    if (font != m_window_font) // only the user's change: another font may be in force for good reasons
    {
        m_window_font = font;
        QApplication::setFont(font);
    }
    m_messages->apply_drawing_resources();
    m_module_view->apply_drawing_resources();
    m_totals_view->apply_drawing_resources();
    if (m_gallery != nullptr)
        m_gallery->apply_drawing_resources();
}

void WORKBENCH_WINDOW::show_progress(int percent)
{
    m_progress_bar->setValue(percent);
}

void WORKBENCH_WINDOW::take_result()
{
    set_loading(false);
    show_result();
    emit load_ended();
}

void WORKBENCH_WINDOW::show_selected_instance()
{
    const QModelIndex index = m_hierarchy_view->currentIndex();
    if (!index.isValid())
        return;
    const std::uint32_t module = m_hierarchy->get_module(index);
    m_bit_names = std::make_unique<NETLIST_BIT_NAMES>(*m_netlist, m_netlist->modules[module]);
    m_module_view->set_module(m_netlist, module, m_hierarchy->get_path(index));
    m_totals_view->set_module(m_netlist, module);
    show_selected_object();
}

void WORKBENCH_WINDOW::show_selected_object()
{
    const QModelIndex index = m_hierarchy_view->currentIndex();
    if (!index.isValid())
        return;
    const NETLIST_MODULE& module = m_netlist->modules[m_hierarchy->get_module(index)];
    const int row = m_module_view->get_current_row();
    const auto at = static_cast<std::size_t>(row);
    if (row < 0)
        m_properties->set_groups(netlist_describe_module(*m_netlist, module));
    else if (m_module_view->get_tab() == WORKBENCH_MODULE_VIEW::TAB_CELLS)
        m_properties->set_groups(netlist_describe_cell(*m_netlist, module, module.cells[at], *m_bit_names));
    else if (m_module_view->get_tab() == WORKBENCH_MODULE_VIEW::TAB_PORTS)
        m_properties->set_groups(netlist_describe_port(*m_netlist, module.ports[at], *m_bit_names));
    else
        m_properties->set_groups(netlist_describe_net(*m_netlist, module, module.nets[at]));
    m_property_view->expandAll();
}

void WORKBENCH_WINDOW::enter_cell(int cell)
{
    const QModelIndex instance =
        m_hierarchy->find_instance(m_hierarchy_view->currentIndex(), static_cast<std::uint32_t>(cell));
    if (instance.isValid())
        m_hierarchy_view->setCurrentIndex(instance);
}

// ---- Building -------------------------------------------------------------------------------------------------------

void WORKBENCH_WINDOW::create_central_view()
{
    m_module_view = new WORKBENCH_MODULE_VIEW(this);
    m_module_view->setObjectName(QStringLiteral("module_view"));
    TOLV_SAFE_CONNECT(m_module_view, SIGNAL(current_changed()), this, SLOT(show_selected_object()));
    TOLV_SAFE_CONNECT(m_module_view, SIGNAL(cell_activated(int)), this, SLOT(enter_cell(int)));
    setCentralWidget(m_module_view);
}

void WORKBENCH_WINDOW::create_hierarchy_dock()
{
    m_hierarchy_view = new QTreeView(this);
    m_hierarchy_view->setObjectName(QStringLiteral("hierarchy_view"));
    m_hierarchy_view->setAccessibleName(tr("Hierarchy of the design"));
    m_hierarchy_view->setModel(m_hierarchy);
    m_hierarchy_view->setUniformRowHeights(true);
    m_hierarchy_view->setAllColumnsShowFocus(true);
    m_hierarchy_view->setTextElideMode(Qt::ElideMiddle);
    QHeaderView* const header = m_hierarchy_view->header();
    header->setStretchLastSection(false);
    header->setMinimumSectionSize(fontMetrics().averageCharWidth() * 8);
    header->setSectionResizeMode(HIERARCHY_MODEL::COLUMN_INSTANCE, QHeaderView::Stretch);
    header->setSectionResizeMode(HIERARCHY_MODEL::COLUMN_MODULE, QHeaderView::Interactive);
    header->setSectionResizeMode(HIERARCHY_MODEL::COLUMN_CELLS, QHeaderView::ResizeToContents);
    header->setResizeContentsPrecision(100);
    header->resizeSection(HIERARCHY_MODEL::COLUMN_MODULE, get_dock_size(this, 19, 1).width());
    TOLV_SAFE_CONNECT(m_hierarchy_view->selectionModel(), SIGNAL(currentRowChanged(QModelIndex, QModelIndex)), this,
                      SLOT(show_selected_instance()));
    add_dock("hierarchy_dock", tr("Hierarchy"), m_hierarchy_view, Qt::LeftDockWidgetArea);
}

void WORKBENCH_WINDOW::create_totals_dock()
{
    m_totals_view = new WORKBENCH_TOTALS_VIEW(this);
    add_dock("totals_dock", tr("Totals"), m_totals_view, Qt::RightDockWidgetArea);
}

void WORKBENCH_WINDOW::create_property_dock()
{
    m_property_view = new QTreeView(this);
    m_property_view->setObjectName(QStringLiteral("property_view"));
    m_property_view->setAccessibleName(tr("Properties of the chosen object"));
    m_property_view->setModel(m_properties);
    m_property_view->setUniformRowHeights(true);
    m_property_view->setAlternatingRowColors(true);
    m_property_view->setAllColumnsShowFocus(true);
    m_property_view->setTextElideMode(Qt::ElideMiddle);
    m_property_view->setIndentation(m_property_view->indentation() * 3 / 4);
    m_property_view->header()->resizeSection(0, get_dock_size(this, 21, 1).width());
    add_dock("property_dock", tr("Properties"), m_property_view, Qt::RightDockWidgetArea);
}

void WORKBENCH_WINDOW::create_message_dock()
{
    m_messages = new WORKBENCH_MESSAGES(this);
    m_messages->setObjectName(QStringLiteral("messages"));
    add_dock("message_dock", tr("Messages"), m_messages, Qt::BottomDockWidgetArea);
}

QDockWidget* WORKBENCH_WINDOW::add_dock(const char* object_name, const QString& title, QWidget* widget,
                                        Qt::DockWidgetArea area)
{
    auto* const dock = new QDockWidget(title, this);
    dock->setObjectName(QString::fromLatin1(object_name));
    dock->setWidget(widget);
    addDockWidget(area, dock);
    m_docks.append(dock);
    return dock;
}

void WORKBENCH_WINDOW::create_file_menu()
{
    QMenu* const menu = menuBar()->addMenu(tr("&File"));
    menu->setObjectName(QStringLiteral("file_menu"));
    QAction* const open_action = menu->addAction(style()->standardIcon(QStyle::SP_DialogOpenButton), tr("&Open..."));
    open_action->setShortcut(QKeySequence::Open);
    open_action->setStatusTip(tr("Opens a netlist of yosys or nextpnr"));
    TOLV_SAFE_CONNECT(open_action, SIGNAL(triggered()), this, SLOT(ask_for_file()));
    m_recent_menu = menu->addMenu(tr("Open Re&cent"));
    m_recent_menu->setObjectName(QStringLiteral("recent_menu"));
    TOLV_SAFE_CONNECT(m_recent_menu, SIGNAL(aboutToShow()), this, SLOT(fill_recent_menu()));
    m_reload_action = menu->addAction(style()->standardIcon(QStyle::SP_BrowserReload), tr("&Reload"));
    m_reload_action->setShortcut(QKeySequence::Refresh);
    m_reload_action->setStatusTip(tr("Reads the file anew"));
    TOLV_SAFE_CONNECT(m_reload_action, SIGNAL(triggered()), this, SLOT(reload()));
    menu->addSeparator();
    QAction* const quit_action = menu->addAction(tr("&Quit"));
    quit_action->setShortcut(QKeySequence::Quit);
    quit_action->setStatusTip(tr("Ends the workbench"));
    TOLV_SAFE_CONNECT(quit_action, SIGNAL(triggered()), this, SLOT(close()));
}

void WORKBENCH_WINDOW::create_view_menu()
{
    QMenu* const menu = menuBar()->addMenu(tr("&View"));
    menu->setObjectName(QStringLiteral("view_menu"));
    const QString titles[] = {tr("&Hierarchy"), tr("&Totals"), tr("&Properties"), tr("&Messages")};
    for (int i = 0; i < m_docks.size(); ++i)
    {
        QAction* const action = m_docks[i]->toggleViewAction();
        action->setText(titles[i]);
        menu->addAction(action);
    }
}

void WORKBENCH_WINDOW::create_tools_menu()
{
    QMenu* const menu = menuBar()->addMenu(tr("&Tools"));
    menu->setObjectName(QStringLiteral("tools_menu"));
    QAction* const action = menu->addAction(tr("&Preferences..."));
    action->setObjectName(QStringLiteral("preferences_action"));
    action->setMenuRole(QAction::PreferencesRole);
    const QList<QKeySequence> shortcuts = QKeySequence::keyBindings(QKeySequence::Preferences);
    action->setShortcut(shortcuts.isEmpty() ? QKeySequence(Qt::CTRL + Qt::Key_Comma) : shortcuts.front());
    action->setStatusTip(tr("Changes colours, fonts and lines"));
    TOLV_SAFE_CONNECT(action, SIGNAL(triggered()), this, SLOT(show_preferences()));
}

void WORKBENCH_WINDOW::create_help_menu()
{
    QMenu* const menu = menuBar()->addMenu(tr("&Help"));
    menu->setObjectName(QStringLiteral("help_menu"));
    QAction* const gallery_action = menu->addAction(tr("&Gallery..."));
    gallery_action->setObjectName(QStringLiteral("gallery_action"));
    TOLV_SAFE_CONNECT(gallery_action, SIGNAL(triggered()), this, SLOT(show_gallery()));
    QAction* const action = menu->addAction(tr("&About Norvane Workbench"));
    TOLV_SAFE_CONNECT(action, SIGNAL(triggered()), this, SLOT(show_about()));
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
    const QWidgetList chain = QWidgetList{m_hierarchy_view} + m_module_view->get_tab_chain() +
                              QWidgetList{m_totals_view->get_table(), m_property_view, m_messages, m_cancel_button};
    for (int i = 1; i < chain.size(); ++i)
        setTabOrder(chain[i - 1], chain[i]);
    m_hierarchy_view->setFocus();
}

// ---- Showing --------------------------------------------------------------------------------------------------------

void WORKBENCH_WINDOW::set_loading(bool is_loading)
{
    m_progress_bar->setVisible(is_loading);
    m_cancel_button->setVisible(is_loading);
    m_totals_label->setVisible(!is_loading);
    m_reload_action->setEnabled(!m_loader->get_file().isEmpty());
}

void WORKBENCH_WINDOW::show_result()
{
    const NETLIST_READ_RESULT& result = m_loader->get_result();
    if (result.netlist != nullptr)
    {
        WORKBENCH_RECENT_FILES::add(m_loader->get_file());
        show_netlist(result.netlist);
    }
    else if (result.was_stopped)
    {
        m_messages->add_note(tr("Reading %1 was cancelled").arg(get_shown_path(m_loader->get_file())));
        statusBar()->showMessage(tr("Cancelled"), 5000);
    }
    else
    {
        show_error(workbench_to_qstring(result.error.get_text()));
    }
}

void WORKBENCH_WINDOW::show_netlist(std::shared_ptr<const NETLIST> netlist)
{
    const QStringList path = get_selected_path(); // a design that is read anew stays where the user was
    m_hierarchy->set_netlist(netlist);
    m_netlist = std::move(netlist);
    const QModelIndex top = m_hierarchy->index(0, 0);
    if (netlist_get_totals(*m_netlist, m_hierarchy->get_module(top)).instances <= LARGEST_OPEN_HIERARCHY)
        m_hierarchy_view->expandAll();
    else
        m_hierarchy_view->expand(top);
    if (path.isEmpty() || !select_path(path))
        m_hierarchy_view->setCurrentIndex(top);
    const QString creator = workbench_to_qstring(m_netlist->creator);
    m_messages->add_note(
        tr("Opened %1, written by %2")
            .arg(get_shown_path(m_loader->get_file()), creator.isEmpty() ? tr("an unknown tool") : creator));
    show_status();
}

void WORKBENCH_WINDOW::show_error(const QString& error)
{
    m_load_error = error;
    m_messages->add_error(error);
    m_docks.back()->show();
    m_docks.back()->raise();
    statusBar()->showMessage(tr("%1 could not be opened").arg(QFileInfo(m_loader->get_file()).fileName()), 10000);
}

void WORKBENCH_WINDOW::show_status()
{
    const QString product = tr("Norvane Workbench");
    if (m_netlist == nullptr)
    {
        setWindowTitle(product);
        m_file_label->setText(tr("No design is open"));
        m_totals_label->clear();
        return;
    }
    const QString file = QFile::decodeName(m_netlist->file.c_str());
    setWindowTitle(tr("%1 - %2").arg(QFileInfo(file).fileName(), product));
    m_file_label->setText(get_shown_path(file));
    m_file_label->setToolTip(file.toHtmlEscaped());
    const NETLIST_TOTALS totals = netlist_get_totals(*m_netlist, m_netlist->top_modules.front());
    m_totals_label->setText(tr("%1 cells, %2 module instances, %3 nets")
                                .arg(workbench_format_count(totals.leaf_cells),
                                     workbench_format_count(totals.instances), workbench_format_count(totals.nets)));
}
