#include "workbench_totals_view.h"

#include "workbench_module_view.h"
#include "workbench_text.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

WORKBENCH_TOTALS_VIEW::WORKBENCH_TOTALS_VIEW(QWidget* parent) : QWidget(parent), m_types(new TYPE_TABLE_MODEL(this))
{
    auto* const sums = new QGridLayout;
    m_leaf_cells = add_sum(sums, 0, tr("Cells"), "total_cells");
    m_instances = add_sum(sums, 1, tr("Module instances"), "total_instances");
    m_nets = add_sum(sums, 2, tr("Nets"), "total_nets");
    m_net_bits = add_sum(sums, 3, tr("Bits of the nets"), "total_net_bits");
    m_levels = add_sum(sums, 4, tr("Levels of hierarchy"), "total_levels");
    sums->setColumnStretch(1, 1);
    sums->setVerticalSpacing(2);
    m_type_view = new NETLIST_TABLE_VIEW(m_types, tr("Cells by type"), this);
    m_type_view->setObjectName(QStringLiteral("type_table"));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addLayout(sums);
    layout->addWidget(m_type_view);
    set_module(nullptr, 0);
}

void WORKBENCH_TOTALS_VIEW::set_module(std::shared_ptr<const NETLIST> netlist, std::uint32_t module)
{
    const NETLIST_TOTALS totals = netlist == nullptr ? NETLIST_TOTALS() : netlist_get_totals(*netlist, module);
    m_leaf_cells->setText(workbench_format_count(totals.leaf_cells));
    m_instances->setText(workbench_format_count(totals.instances));
    m_nets->setText(workbench_format_count(totals.nets));
    m_net_bits->setText(workbench_format_count(totals.net_bits));
    m_levels->setText(workbench_format_count(totals.levels));
    m_types->set_module(std::move(netlist), module);
    m_type_view->fit_columns();
}

void WORKBENCH_TOTALS_VIEW::apply_drawing_resources()
{
    m_type_view->apply_drawing_resources();
}

QWidget* WORKBENCH_TOTALS_VIEW::get_table() const
{
    return m_type_view;
}

QLabel* WORKBENCH_TOTALS_VIEW::add_sum(QGridLayout* layout, int row, const QString& title, const char* object_name)
{
    auto* const value = new QLabel(this);
    value->setObjectName(QString::fromLatin1(object_name));
    value->setAccessibleName(title);
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(new QLabel(title, this), row, 0);
    layout->addWidget(value, row, 1);
    return value;
}
