#include "workbench_documents.h"

#include "drawing_pane.h"
#include "floorplan_view.h"
#include "hierarchy_graph_pane.h"
#include "hierarchy_graph_view.h"
#include "schematic_view.h"
#include "workbench_module_view.h"

#include "tolv_global.h"
#include "tolv_icon.h"
#include "tolv_mdi_area.h"
#include "tolv_tool_bar.h"

#include <QAction>
#include <QEvent>
#include <QMdiSubWindow>

WORKBENCH_DOCUMENTS::WORKBENCH_DOCUMENTS(TOLV_MDI_AREA* area, QObject* parent)
    : QObject(parent), m_area(area), m_module_view(new WORKBENCH_MODULE_VIEW), m_schematic_view(new SCHEMATIC_VIEW),
      m_floorplan_view(new FLOORPLAN_VIEW), m_schematic(new DRAWING_PANE(m_schematic_view, tr("Schematic"))),
      m_floorplan(new DRAWING_PANE(m_floorplan_view, tr("Floorplan"))), m_hierarchy(new HIERARCHY_GRAPH_PANE),
      m_widgets(DOCUMENT_COUNT), m_windows(DOCUMENT_COUNT)
{
    m_module_view->setObjectName(QStringLiteral("module_view"));
    m_schematic->setObjectName(QStringLiteral("schematic"));
    m_floorplan->setObjectName(QStringLiteral("floorplan"));
    m_hierarchy->setObjectName(QStringLiteral("hierarchy_graph"));
    add_document(DOCUMENT_SCHEMATIC, m_schematic, tr("Schematic"), TOLV_NETLIST_VIEW_ICON);
    add_document(DOCUMENT_TABLES, m_module_view, tr("Cells, Ports and Nets"), TOLV_NETLIST_ANALYSIS_ICON);
    add_document(DOCUMENT_FLOORPLAN, m_floorplan, tr("Floorplan"), TOLV_FLOORPLAN_ICON);
    add_document(DOCUMENT_HIERARCHY, m_hierarchy, tr("Hierarchy Graph"), TOLV_HIERARCHY_ICON);

    QAction* const by_module = m_floorplan->get_tool_bar()->addAction(tr("By Module"));
    by_module->setObjectName(QStringLiteral("color_by_module"));
    by_module->setCheckable(true);
    by_module->setChecked(true);
    by_module->setToolTip(tr("Colours the cells by their module instead of by their kind"));
    TOLV_SAFE_CONNECT(by_module, SIGNAL(toggled(bool)), m_floorplan_view, SLOT(set_colored_by_module(bool)));
    QAction* const routing = m_floorplan->get_tool_bar()->addAction(tr("Routing"));
    routing->setObjectName(QStringLiteral("show_routing"));
    routing->setCheckable(true);
    routing->setChecked(true);
    routing->setToolTip(tr("Shows the wires of the nets"));
    TOLV_SAFE_CONNECT(routing, SIGNAL(toggled(bool)), m_floorplan_view, SLOT(set_shows_wires(bool)));

    TOLV_SAFE_CONNECT(m_module_view, SIGNAL(cell_activated(int)), this, SIGNAL(cell_activated(int)));
    TOLV_SAFE_CONNECT(m_schematic_view, SIGNAL(cell_activated(int)), this, SIGNAL(cell_activated(int)));
    TOLV_SAFE_CONNECT(m_floorplan_view, SIGNAL(cell_activated(int)), this, SLOT(enter_floorplan_cell(int)));
    TOLV_SAFE_CONNECT(m_schematic_view, SIGNAL(selection_changed()), this, SLOT(report_schematic_cell()));
    TOLV_SAFE_CONNECT(m_floorplan_view, SIGNAL(selection_changed()), this, SLOT(report_floorplan_cell()));
    TOLV_SAFE_CONNECT(m_schematic_view, SIGNAL(drawn()), this, SLOT(fit_schematic()));
    TOLV_SAFE_CONNECT(m_hierarchy->get_view(), SIGNAL(drawn()), this, SIGNAL(drawn()));
    TOLV_SAFE_CONNECT(m_hierarchy->get_view(), SIGNAL(module_activated(int)), this, SLOT(enter_module(int)));
}

WORKBENCH_DOCUMENTS::~WORKBENCH_DOCUMENTS()
{
    for (int i = 0; i < DOCUMENT_COUNT; ++i)
        close_window(i);
    for (const QPointer<QWidget>& widget : qAsConst(m_widgets))
        delete widget.data();
}

void WORKBENCH_DOCUMENTS::add_document(DOCUMENT document, QWidget* widget, const QString& title, TOLV_ICON_ENUM icon)
{
    widget->setWindowTitle(title);
    widget->setWindowIcon(tolv_get_icon(icon)); // for its tab, and its title bar where it is a window
    m_widgets[document] = widget;
}

void WORKBENCH_DOCUMENTS::open_window(int document)
{
    if (m_windows[document] != nullptr)
        return;
    QMdiSubWindow* const window = m_area->addSubWindow(m_widgets[document]);
    window->setObjectName(m_widgets[document]->objectName() + QStringLiteral("_window"));
    window->installEventFilter(this);
    m_windows[document] = window;
    m_widgets[document]->show();
    update_tooltips();
}

/// Takes the document out of its window, which would take it along into its end.
void WORKBENCH_DOCUMENTS::close_window(int document)
{
    if (m_windows[document] == nullptr)
        return;
    QMdiSubWindow* const window = m_windows[document];
    window->removeEventFilter(this);
    m_windows[document] = nullptr;
    m_area->removeSubWindow(m_widgets[document]);
    m_widgets[document]->hide();
    m_area->removeSubWindow(window);
    window->deleteLater();
}

bool WORKBENCH_DOCUMENTS::eventFilter(QObject* watched, QEvent* event)
{
    for (int i = 0; event->type() == QEvent::Close && i < DOCUMENT_COUNT; ++i)
    {
        if (watched != m_windows[i])
            continue;
        close_window(i);
        return true;
    }
    return QObject::eventFilter(watched, event);
}

WORKBENCH_MODULE_VIEW* WORKBENCH_DOCUMENTS::get_module_view() const
{
    return m_module_view;
}

DRAWING_PANE* WORKBENCH_DOCUMENTS::get_schematic() const
{
    return m_schematic;
}

DRAWING_PANE* WORKBENCH_DOCUMENTS::get_floorplan() const
{
    return m_floorplan;
}

HIERARCHY_GRAPH_PANE* WORKBENCH_DOCUMENTS::get_hierarchy() const
{
    return m_hierarchy;
}

DRAWING_FRAME* WORKBENCH_DOCUMENTS::get_active_drawing() const
{
    QMdiSubWindow* const active = m_area->activeSubWindow();
    return active != nullptr ? qobject_cast<DRAWING_FRAME*>(active->widget()) : nullptr;
}

bool WORKBENCH_DOCUMENTS::is_drawing() const
{
    return m_schematic_view->is_drawing() || m_hierarchy->get_view()->is_drawing();
}

bool WORKBENCH_DOCUMENTS::has_floorplan() const
{
    return m_floorplan_view->get_plan() != nullptr;
}

void WORKBENCH_DOCUMENTS::set_module(const std::shared_ptr<const NETLIST>& netlist, std::uint32_t module,
                                     const QStringList& path)
{
    m_module = module;
    m_path = path;
    m_module_view->set_module(netlist, module, path);
    m_schematic_view->set_module(netlist, module);
    update_tooltips();
    m_hierarchy->get_view()->set_netlist(netlist);
    m_hierarchy->get_view()->set_current_module(module);
    set_floorplan_module(netlist, module);
}

/// Each tab tells its title, and that of the schematic, wherever it stands, the instance that it shows.
void WORKBENCH_DOCUMENTS::update_tooltips()
{
    m_area->update_tab_tooltips();
    for (int tab = 0; tab < DOCUMENT_COUNT; ++tab)
        m_area->update_tab_tooltip(m_schematic->windowTitle(), m_path.join(QLatin1Char('/')), tab);
}

/// The chip stays where the new module has no places itself.
void WORKBENCH_DOCUMENTS::set_floorplan_module(const std::shared_ptr<const NETLIST>& netlist, std::uint32_t module)
{
    const std::shared_ptr<const FLOORPLAN>& old_plan = m_floorplan_view->get_plan();
    const bool is_placed = netlist != nullptr && FLOORPLAN::is_placed(*netlist, netlist->modules[module]);
    const bool is_same_netlist = old_plan != nullptr && &old_plan->get_netlist() == netlist.get();
    if (is_same_netlist && (!is_placed || &old_plan->get_module() == &netlist->modules[module]))
        return;
    const bool had_floorplan = has_floorplan();
    m_floorplan_view->set_plan(is_placed ? std::make_shared<const FLOORPLAN>(netlist, module) : nullptr);
    if (is_placed)
        m_floorplan->show_all();
    if (has_floorplan() == had_floorplan)
        return;
    if (has_floorplan())
    {
        QMdiSubWindow* const active = m_area->activeSubWindow();
        open_window(DOCUMENT_FLOORPLAN);
        m_windows[DOCUMENT_FLOORPLAN]->showMaximized();
        m_area->setActiveSubWindow(active);
    }
    else
        close_window(DOCUMENT_FLOORPLAN);
    emit floorplan_available(has_floorplan());
}

void WORKBENCH_DOCUMENTS::apply_drawing_resources()
{
    m_module_view->apply_drawing_resources();
    m_schematic_view->update();
    m_floorplan_view->update();
    m_hierarchy->get_view()->apply_drawing_resources();
}

void WORKBENCH_DOCUMENTS::show_document(int document)
{
    if (document < 0 || document >= DOCUMENT_COUNT || (document == DOCUMENT_FLOORPLAN && !has_floorplan()))
        return;
    open_window(document);
    QMdiSubWindow* const window = m_windows[document];
    window->showMaximized();
    m_area->setActiveSubWindow(window);
    update_tooltips();
    window->widget()->setFocus();
}

void WORKBENCH_DOCUMENTS::reset_view()
{
    m_area->set_tabs();
    update_tooltips();
}

void WORKBENCH_DOCUMENTS::focus_document()
{
    // The current one is the one in front also while another window is active.
    QMdiSubWindow* const current = m_area->currentSubWindow();
    if (current != nullptr && current->widget() != nullptr)
        current->widget()->setFocus();
    else
        m_area->setFocus();
}

void WORKBENCH_DOCUMENTS::show_cell(int cell)
{
    if (m_is_reporting || cell < 0)
        return;
    m_is_reporting = true;
    m_schematic_view->locate_cell(std::uint32_t(cell));
    if (has_floorplan())
        m_floorplan_view->locate_cell(std::uint32_t(cell));
    m_is_reporting = false;
}

void WORKBENCH_DOCUMENTS::report_schematic_cell()
{
    report_cell(m_schematic);
}

void WORKBENCH_DOCUMENTS::report_floorplan_cell()
{
    report_cell(m_floorplan);
}

void WORKBENCH_DOCUMENTS::report_cell(DRAWING_PANE* pane)
{
    const std::vector<std::uint32_t>& items = pane->get_view()->get_selection();
    const std::uint32_t cell =
        items.size() == 1 ? pane->get_view()->get_cell_of_item(items.front()) : DRAWING_VIEW::NONE;
    if (m_is_reporting || cell == DRAWING_VIEW::NONE)
        return;
    m_is_reporting = true;
    emit cell_chosen(int(cell));
    m_is_reporting = false;
}

void WORKBENCH_DOCUMENTS::fit_schematic()
{
    m_schematic->show_all();
    emit drawn();
}

/// A cell of the chip is no instance to go into: its schematic is what there is to see.
void WORKBENCH_DOCUMENTS::enter_floorplan_cell(int cell)
{
    show_document(DOCUMENT_SCHEMATIC);
    show_cell(cell);
}

/// The instance that is shown, where it is one of the module; else the first one that there is.
void WORKBENCH_DOCUMENTS::enter_module(int module)
{
    const HIERARCHY_GRAPH& graph = *m_hierarchy->get_view()->get_graph();
    const std::uint32_t node = graph.find_node(std::uint32_t(module));
    const QStringList path = std::uint32_t(module) == m_module ? m_path : graph.get_path(node);
    emit instance_activated(path);
}
