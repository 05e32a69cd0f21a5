#include "workbench_module_view.h"

#include "tolv_font.h"
#include "tolv_global.h"
#include "workbench_text.h"

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace
{
/// The last column of texts gets the space that is left: the numbers behind it stay together at the right.
int get_stretched_column(const NETLIST_TABLE_MODEL& model)
{
    int column = model.get_columns().size() - 1;
    while (column > 0 && model.get_columns()[column].is_number)
        --column;
    return column;
}
} // namespace

// ---- The table ------------------------------------------------------------------------------------------------------

NETLIST_TABLE_VIEW::NETLIST_TABLE_VIEW(NETLIST_TABLE_MODEL* model, const QString& accessible_name, QWidget* parent)
    : QTableView(parent), m_proxy(new NETLIST_SORT_PROXY(model, this))
{
    setAccessibleName(accessible_name);
    setModel(m_proxy);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTextElideMode(Qt::ElideMiddle);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(1);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionResizeMode(get_stretched_column(*model), QHeaderView::Stretch);
    horizontalHeader()->setResizeContentsPrecision(100);
    horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    setSortingEnabled(true);
    apply_drawing_resources();
    TOLV_SAFE_CONNECT(selectionModel(), SIGNAL(currentRowChanged(QModelIndex, QModelIndex)), this,
                      SLOT(report_current_row()));
    TOLV_SAFE_CONNECT(selectionModel(), SIGNAL(selectionChanged(QItemSelection, QItemSelection)), this,
                      SLOT(report_current_row()));
    TOLV_SAFE_CONNECT(m_proxy, SIGNAL(modelReset()), this, SLOT(report_current_row()));
    TOLV_SAFE_CONNECT(this, SIGNAL(activated(QModelIndex)), this, SLOT(report_activation(QModelIndex)));
}

void NETLIST_TABLE_VIEW::apply_drawing_resources()
{
    setFont(*TOLV_FONT(TOLV_TABLE_MONOSPACE_FONT).get_font());
    horizontalHeader()->setFont(QApplication::font()); // titles are texts of the window
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    fit_columns();
}

void NETLIST_TABLE_VIEW::fit_columns()
{
    ensurePolished(); // sizes depend on the style
    const int character = fontMetrics().averageCharWidth();
    const int largest = std::max(character * 16, std::min(viewport()->width() * 2 / 5, character * 48));
    for (int column = 0; column < model()->columnCount(); ++column)
    {
        if (horizontalHeader()->sectionResizeMode(column) == QHeaderView::Stretch)
            continue;
        const int content = std::max(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column));
        setColumnWidth(column, std::min(content + character, largest));
    }
}

int NETLIST_TABLE_VIEW::get_current_row() const
{
    // The keyboard focus makes a row current without choosing it.
    const QModelIndexList rows = selectionModel()->selectedRows();
    const bool is_chosen = selectionModel()->isRowSelected(currentIndex().row(), QModelIndex());
    if (rows.isEmpty())
        return -1;
    return m_proxy->mapToSource(is_chosen ? currentIndex() : rows.front()).row();
}

void NETLIST_TABLE_VIEW::select_row(int row)
{
    const QModelIndex index = m_proxy->mapFromSource(m_proxy->sourceModel()->index(row, 0));
    setCurrentIndex(index);
    if (index.isValid())
        scrollTo(index);
    else
        clearSelection();
}

void NETLIST_TABLE_VIEW::report_current_row()
{
    const int row = get_current_row();
    if (row == m_reported_row)
        return;
    m_reported_row = row;
    emit current_row_changed(row);
}

void NETLIST_TABLE_VIEW::report_activation(const QModelIndex& index)
{
    emit row_activated(m_proxy->mapToSource(index).row());
}

// ---- The module -----------------------------------------------------------------------------------------------------

WORKBENCH_MODULE_VIEW::WORKBENCH_MODULE_VIEW(QWidget* parent)
    : QWidget(parent), m_cells(new CELL_TABLE_MODEL(this)), m_ports(new PORT_TABLE_MODEL(this)),
      m_nets(new NET_TABLE_MODEL(this)), m_title(new QLabel(this)), m_tabs(new QTabWidget(this))
{
    m_title->setObjectName(QStringLiteral("module_title"));
    m_title->setTextFormat(Qt::RichText);
    m_title->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_title->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); // a long path must not widen the window
    m_tabs->setObjectName(QStringLiteral("module_tabs"));
    m_tabs->setAccessibleName(tr("Contents of the module"));
    m_tabs->setDocumentMode(true);
    // The bar takes the focus itself: with a proxy for it, the Tab key would reach the bar from two places.
    m_tabs->setFocusProxy(nullptr);
    m_tabs->setFocusPolicy(Qt::NoFocus);
    add_tab(m_cells, "cell_table", tr("Cells of the module"));
    add_tab(m_ports, "port_table", tr("Ports of the module"));
    add_tab(m_nets, "net_table", tr("Nets of the module"));
    TOLV_SAFE_CONNECT(m_tabs, SIGNAL(currentChanged(int)), this, SIGNAL(current_changed()));
    TOLV_SAFE_CONNECT(m_views[TAB_CELLS], SIGNAL(row_activated(int)), this, SIGNAL(cell_activated(int)));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 0);
    layout->addWidget(m_title);
    layout->addWidget(m_tabs);
    setMinimumWidth(fontMetrics().averageCharWidth() * 44); // the docks give way
    set_module(nullptr, 0, QStringList());
}

void WORKBENCH_MODULE_VIEW::set_module(const std::shared_ptr<const NETLIST>& netlist, std::uint32_t module,
                                       const QStringList& path)
{
    set_title(netlist.get(), module, path);
    const char* const titles[] = {QT_TR_NOOP("&Cells (%1)"), QT_TR_NOOP("&Ports (%1)"), QT_TR_NOOP("&Nets (%1)")};
    NETLIST_TABLE_MODEL* const models[] = {m_cells, m_ports, m_nets};
    for (int tab = TAB_CELLS; tab <= TAB_NETS; ++tab)
    {
        models[tab]->set_module(netlist, module);
        m_views[tab]->fit_columns();
        m_tabs->setTabText(tab, tr(titles[tab]).arg(workbench_format_count(models[tab]->rowCount())));
    }
    m_views[TAB_CELLS]->setColumnHidden(CELL_TABLE_MODEL::COLUMN_LOCATION, !m_cells->has_locations());
}

void WORKBENCH_MODULE_VIEW::apply_drawing_resources()
{
    for (NETLIST_TABLE_VIEW* const view : m_views)
        view->apply_drawing_resources();
}

WORKBENCH_MODULE_VIEW::TAB WORKBENCH_MODULE_VIEW::get_tab() const
{
    return static_cast<TAB>(m_tabs->currentIndex());
}

int WORKBENCH_MODULE_VIEW::get_current_row() const
{
    return m_views[get_tab()]->get_current_row();
}

void WORKBENCH_MODULE_VIEW::select_cell(int cell)
{
    m_tabs->setCurrentIndex(TAB_CELLS);
    m_views[TAB_CELLS]->select_row(cell);
}

QWidgetList WORKBENCH_MODULE_VIEW::get_tab_chain() const
{
    QWidgetList chain{m_tabs->tabBar()};
    for (NETLIST_TABLE_VIEW* const view : m_views)
        chain.append(view);
    return chain;
}

NETLIST_TABLE_VIEW* WORKBENCH_MODULE_VIEW::add_tab(NETLIST_TABLE_MODEL* model, const char* object_name,
                                                   const QString& accessible_name)
{
    auto* const view = new NETLIST_TABLE_VIEW(model, accessible_name, m_tabs);
    view->setObjectName(QString::fromLatin1(object_name));
    view->setFrameShape(QFrame::NoFrame);
    m_views.append(view);
    m_tabs->addTab(view, QString());
    TOLV_SAFE_CONNECT(view, SIGNAL(current_row_changed(int)), this, SIGNAL(current_changed()));
    return view;
}

void WORKBENCH_MODULE_VIEW::set_title(const NETLIST* netlist, std::uint32_t module, const QStringList& path)
{
    if (netlist == nullptr)
    {
        m_title->setText(tr("No design is open."));
        m_title->setToolTip(QString());
        return;
    }
    const QString name = workbench_to_qstring(netlist->get_display_name(netlist->modules[module]));
    QStringList steps;
    for (const QString& step : path)
        steps.append(step.toHtmlEscaped());
    QString title = QStringLiteral("<b>%1</b>").arg(name.toHtmlEscaped());
    if (steps.size() > 1)
        title += QStringLiteral(" &nbsp; ") + steps.join(QStringLiteral(" &rsaquo; "));
    m_title->setText(title);
    m_title->setToolTip(workbench_to_qstring(netlist->names.get(netlist->modules[module].name)).toHtmlEscaped());
}
