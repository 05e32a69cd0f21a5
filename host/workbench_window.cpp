#include "workbench_window.h"

#include "drawing_frame.h"
#include "gallery_window.h"
#include "hierarchy_filter_model.h"
#include "hierarchy_model.h"
#include "netlist_properties.h"
#include "preferences_dialog.h"
#include "tolv_dock_widget.h"
#include "tolv_font.h"
#include "tolv_global.h"
#include "tolv_help_dyn.h"
#include "tolv_mdi_area.h"
#include "tolv_tree_view.h"
#include "ver.h"
#include "workbench_actions.h"
#include "workbench_constraints.h"
#include "workbench_docks.h"
#include "workbench_documents.h"
#include "workbench_loader.h"
#include "workbench_module_view.h"
#include "workbench_recent_files.h"
#include "workbench_text.h"
#include "workbench_totals_view.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QMimeData>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
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
} // namespace

WORKBENCH_WINDOW::WORKBENCH_WINDOW(QWidget* parent)
    : TOLV_MAIN_WINDOW(parent, Qt::WindowFlags()), m_window_font(*TOLV_FONT(TOLV_GUI_FONT).get_font()),
      m_loader(new WORKBENCH_LOADER(this)), m_hierarchy(new HIERARCHY_MODEL(this)),
      m_hierarchy_filter(new HIERARCHY_FILTER_MODEL(m_hierarchy, this)), m_properties(new PROPERTY_MODEL(this)),
      m_actions(new WORKBENCH_ACTIONS(this)), m_docks(new WORKBENCH_DOCKS(this)),
      m_constraints(new WORKBENCH_CONSTRAINTS(this))
{
    setObjectName(QStringLiteral("workbench_window"));
    setAccessibleName(QStringLiteral("Norvane Workbench"));
    setAcceptDrops(true);
    setCorner(Qt::BottomRightCorner, Qt::RightDockWidgetArea);
    resize(1280, 800);
    create_documents();
    create_docks();
    create_file_menu();
    create_view_menu();
    create_go_menu();
    create_tools_menu();
    create_window_menu();
    create_help_menu();
    fill_tool_bar();
    create_status_bar();
    TOLV_SAFE_CONNECT(m_loader, SIGNAL(progressed(int)), this, SLOT(show_progress(int)));
    TOLV_SAFE_CONNECT(m_loader, SIGNAL(finished()), this, SLOT(take_result()));
    set_loading(false);
    show_status();
    m_docks->keep_default_layout();
}

WORKBENCH_WINDOW::~WORKBENCH_WINDOW()
{
    // Their models go with the window, and their last words are no longer wanted.
    if (m_navigator != nullptr)
        m_navigator->disconnect(this);
}

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
    show_instance(index);
    return true;
}

QStringList WORKBENCH_WINDOW::get_selected_path() const
{
    return m_hierarchy->get_path(m_instance);
}

WORKBENCH_DOCUMENTS* WORKBENCH_WINDOW::get_documents() const
{
    return m_documents;
}

WORKBENCH_CONSTRAINTS* WORKBENCH_WINDOW::get_constraints() const
{
    return m_constraints;
}

void WORKBENCH_WINDOW::keep_layout()
{
    m_keeps_layout = true;
    m_docks->restore_layout();
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
    say("add_note", tr("Reading %1").arg(get_shown_path(m_loader->get_file())));
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

void WORKBENCH_WINDOW::update_actions()
{
    m_actions->get(TOLV_RELOAD_ACTION)->setEnabled(!m_loader->get_file().isEmpty());
    m_actions->get(TOLV_HIERARCHY_UP_ACTION)->setEnabled(m_instance.parent().isValid());
    m_actions->get(TOLV_GOTO_TOP_LEVEL_ACTION)->setEnabled(m_instance.parent().isValid());
    m_actions->get(TOLV_HIERARCHY_DOWN_ACTION)->setEnabled(get_chosen_instance().isValid());
}

void WORKBENCH_WINDOW::show_preferences()
{
    open_preferences();
}

void WORKBENCH_WINDOW::show_gallery()
{
    open_gallery();
}

void WORKBENCH_WINDOW::showEvent(QShowEvent* event)
{
    TOLV_MAIN_WINDOW::showEvent(event);
    if (m_was_shown)
        return;
    // Only now: documents of an area that has no size yet are not laid out as tabs.
    m_was_shown = true;
    m_documents->show_document(WORKBENCH_DOCUMENTS::DOCUMENT_TABLES);
    m_documents->show_document(WORKBENCH_DOCUMENTS::DOCUMENT_SCHEMATIC);
    set_tab_order();
}

void WORKBENCH_WINDOW::closeEvent(QCloseEvent* event)
{
    if (!m_constraints->confirm_close())
    {
        event->ignore();
        return;
    }
    if (m_keeps_layout)
        m_docks->save_layout();
    TOLV_MAIN_WINDOW::closeEvent(event);
}

void WORKBENCH_WINDOW::changeEvent(QEvent* event)
{
    TOLV_MAIN_WINDOW::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange) // by the window manager, too
        m_actions->get(TOLV_FULLSCREEN_ACTION)->setChecked(isFullScreen());
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

void WORKBENCH_WINDOW::show_about()
{
    QMessageBox box(QMessageBox::Information, tr("About Norvane Workbench"),
                    tr("<b>Norvane Workbench</b><br>%1").arg(QString::fromStdString(ver_get_version_string())),
                    QMessageBox::Close, this);
    box.setObjectName(QStringLiteral("about_box"));
    box.setInformativeText(tr("Shows netlists of yosys and nextpnr: their hierarchy, cells, ports and nets."));
    box.exec();
}

void WORKBENCH_WINDOW::add_note(const QString& text)
{
    say("add_note", text);
    statusBar()->showMessage(text, 5000);
}

void WORKBENCH_WINDOW::add_warning(const QString& text)
{
    say("add_error", text);
    statusBar()->showMessage(text, 10000);
}

void WORKBENCH_WINDOW::add_error(const QString& text)
{
    add_warning(text);
    if (m_messages != nullptr)
        m_messages->set_visible_and_raise(true);
}

void WORKBENCH_WINDOW::apply_drawing_resources()
{
    const QFont font = *TOLV_FONT(TOLV_GUI_FONT).get_font();
    if (font != m_window_font) // only the user's change: another font may be in force for good reasons
    {
        m_window_font = font;
        QApplication::setFont(font);
    }
    if (m_messages != nullptr)
        QMetaObject::invokeMethod(m_messages, "apply_drawing_resources");
    m_documents->apply_drawing_resources();
    m_totals_view->apply_drawing_resources();
    if (m_gallery != nullptr)
        m_gallery->apply_drawing_resources();
}

void WORKBENCH_WINDOW::show_progress(int percent)
{
    m_progress_bar->setValue(percent);
    show_task(percent, tr("Running"));
}

void WORKBENCH_WINDOW::take_result()
{
    set_loading(false);
    show_result();
    emit load_ended();
}

void WORKBENCH_WINDOW::show_instance(const QModelIndex& index)
{
    if (!index.isValid() || (index == m_instance && m_bit_names != nullptr))
        return;
    m_instance = index.siblingAtColumn(0);
    const std::uint32_t module = m_hierarchy->get_module(m_instance);
    m_bit_names = std::make_unique<NETLIST_BIT_NAMES>(*m_netlist, m_netlist->modules[module]);
    if (m_navigator != nullptr)
        QMetaObject::invokeMethod(m_navigator, "set_current", Q_ARG(QModelIndex, m_instance));
    m_documents->set_module(m_netlist, module, m_hierarchy->get_path(m_instance));
    m_totals_view->set_module(m_netlist, module);
    show_selected_object();
}

void WORKBENCH_WINDOW::show_schematic_of(const QModelIndex& index)
{
    show_instance(index);
    show_schematic();
}

void WORKBENCH_WINDOW::show_selected_object()
{
    if (!m_instance.isValid())
        return;
    const NETLIST_MODULE& module = m_netlist->modules[m_hierarchy->get_module(m_instance)];
    const WORKBENCH_MODULE_VIEW& tables = *m_documents->get_module_view();
    const int row = tables.get_current_row();
    const auto at = static_cast<std::size_t>(row);
    if (row < 0)
        m_properties->set_groups(netlist_describe_module(*m_netlist, module));
    else if (tables.get_tab() == WORKBENCH_MODULE_VIEW::TAB_CELLS)
        m_properties->set_groups(netlist_describe_cell(*m_netlist, module, module.cells[at], *m_bit_names));
    else if (tables.get_tab() == WORKBENCH_MODULE_VIEW::TAB_PORTS)
        m_properties->set_groups(netlist_describe_port(*m_netlist, module.ports[at], *m_bit_names));
    else
        m_properties->set_groups(netlist_describe_net(*m_netlist, module, module.nets[at]));
    m_property_view->expandAll();
    if (tables.get_tab() == WORKBENCH_MODULE_VIEW::TAB_CELLS)
        m_documents->show_cell(row);
    update_actions();
}

void WORKBENCH_WINDOW::enter_cell(int cell)
{
    show_instance(m_hierarchy->find_instance(m_instance, static_cast<std::uint32_t>(cell)));
}

void WORKBENCH_WINDOW::choose_cell(int cell)
{
    m_documents->get_module_view()->select_cell(cell);
}

void WORKBENCH_WINDOW::go_up()
{
    show_instance(m_instance.parent());
}

void WORKBENCH_WINDOW::go_down()
{
    show_instance(get_chosen_instance());
}

void WORKBENCH_WINDOW::go_to_top()
{
    show_instance(m_hierarchy->index(0, 0));
}

void WORKBENCH_WINDOW::toggle_full_screen()
{
    setWindowState(windowState() ^ Qt::WindowFullScreen);
}

void WORKBENCH_WINDOW::show_schematic()
{
    m_documents->show_document(WORKBENCH_DOCUMENTS::DOCUMENT_SCHEMATIC);
}

void WORKBENCH_WINDOW::show_floorplan()
{
    m_documents->show_document(WORKBENCH_DOCUMENTS::DOCUMENT_FLOORPLAN);
}

void WORKBENCH_WINDOW::show_tables()
{
    m_documents->show_document(WORKBENCH_DOCUMENTS::DOCUMENT_TABLES);
}

void WORKBENCH_WINDOW::show_hierarchy()
{
    m_documents->show_document(WORKBENCH_DOCUMENTS::DOCUMENT_HIERARCHY);
}

void WORKBENCH_WINDOW::enter_instance(const QStringList& path)
{
    if (select_path(path))
        show_schematic();
}

void WORKBENCH_WINDOW::show_help_topics()
{
    help_dyn_show_context(std::string());
}

void WORKBENCH_WINDOW::print()
{
    if (DRAWING_FRAME* const drawing = m_documents->get_active_drawing())
        drawing->print();
    else
        statusBar()->showMessage(tr("Bring a drawing to the front to print it"), 5000);
}

void WORKBENCH_WINDOW::reset_layout()
{
    m_docks->reset_layout();
    m_documents->reset_view();
}

void WORKBENCH_WINDOW::cascade()
{
    m_mdi_area->setViewMode(QMdiArea::SubWindowView);
    m_mdi_area->cascadeSubWindows();
}

void WORKBENCH_WINDOW::tile()
{
    m_mdi_area->setViewMode(QMdiArea::SubWindowView);
    m_mdi_area->tileSubWindows();
}

void WORKBENCH_WINDOW::next_window()
{
    m_mdi_area->activateNextSubWindow();
}

/// The instance that is chosen among the cells of the module that is shown; invalid for none.
QModelIndex WORKBENCH_WINDOW::get_chosen_instance() const
{
    const WORKBENCH_MODULE_VIEW& tables = *m_documents->get_module_view();
    const int cell = tables.get_tab() == WORKBENCH_MODULE_VIEW::TAB_CELLS ? tables.get_current_row() : -1;
    if (cell < 0 || !m_instance.isValid())
        return QModelIndex();
    return m_hierarchy->find_instance(m_instance, static_cast<std::uint32_t>(cell));
}

// ---- Showing --------------------------------------------------------------------------------------------------------

void WORKBENCH_WINDOW::set_loading(bool is_loading)
{
    m_progress_bar->setVisible(is_loading);
    m_cancel_button->setVisible(is_loading);
    m_totals_label->setVisible(!is_loading);
    update_actions();
}

void WORKBENCH_WINDOW::show_result()
{
    const NETLIST_READ_RESULT& result = m_loader->get_result();
    show_task(result.netlist != nullptr ? 100 : m_progress_bar->value(), result.netlist != nullptr ? tr("Done")
                                                                         : result.was_stopped      ? tr("Cancelled")
                                                                                                   : tr("Failed"));
    if (result.netlist != nullptr)
    {
        WORKBENCH_RECENT_FILES::add(m_loader->get_file());
        show_netlist(result.netlist);
        m_constraints->set_design(m_loader->get_file());
    }
    else if (result.was_stopped)
    {
        say("add_note", tr("Reading %1 was cancelled").arg(get_shown_path(m_loader->get_file())));
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
    m_bit_names = nullptr;
    m_hierarchy->set_netlist(netlist);
    m_netlist = std::move(netlist);
    const QModelIndex top = m_hierarchy->index(0, 0);
    const NETLIST_TOTALS totals = netlist_get_totals(*m_netlist, m_hierarchy->get_module(top));
    auto* const view = m_navigator != nullptr ? m_navigator->findChild<TOLV_TREE_VIEW*>() : nullptr;
    if (view != nullptr && totals.instances <= LARGEST_OPEN_HIERARCHY)
        QMetaObject::invokeMethod(m_navigator, "unfold_all");
    else if (view != nullptr)
        view->expand(view->model()->index(0, 0));
    if (path.isEmpty() || !select_path(path))
        show_instance(top);
    const QString creator = workbench_to_qstring(m_netlist->creator);
    say("add_note",
        tr("Opened %1, written by %2")
            .arg(get_shown_path(m_loader->get_file()), creator.isEmpty() ? tr("an unknown tool") : creator));
    if (totals.levels > std::uint32_t(HIERARCHY_MODEL::LARGEST_DEPTH))
        say("add_note", tr("The design has %1 levels of hierarchy; the navigator shows the first %2")
                            .arg(workbench_format_count(totals.levels))
                            .arg(HIERARCHY_MODEL::LARGEST_DEPTH));
    show_status();
}

void WORKBENCH_WINDOW::show_error(const QString& error)
{
    m_load_error = error;
    say("add_error", error);
    if (m_messages != nullptr)
        m_messages->set_visible_and_raise(true);
    statusBar()->showMessage(tr("%1 could not be opened").arg(QFileInfo(m_loader->get_file()).fileName()), 10000);
}

/// Hands a text to a slot of the window of messages.
void WORKBENCH_WINDOW::say(const char* slot, const QString& text)
{
    if (m_messages != nullptr)
        QMetaObject::invokeMethod(m_messages, slot, Q_ARG(QString, text));
}

/// Says how far the reading is.
void WORKBENCH_WINDOW::show_task(int percent, const QString& state)
{
    if (m_task_status != nullptr)
        QMetaObject::invokeMethod(m_task_status, "set_task",
                                  Q_ARG(QString, tr("Read %1").arg(QFileInfo(m_loader->get_file()).fileName())),
                                  Q_ARG(int, percent), Q_ARG(QString, state));
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
