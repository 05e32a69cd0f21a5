#pragma once

#include "netlist_table_model.h"

#include <QWidget>

class NETLIST_TABLE_VIEW;
class QGridLayout;
class QLabel;

/// The chosen module and all below it in numbers: sums, and the cells by type.
class WORKBENCH_TOTALS_VIEW : public QWidget
{
    Q_OBJECT

public:
    explicit WORKBENCH_TOTALS_VIEW(QWidget* parent = nullptr);

    /// Shows a module. A null netlist empties the view.
    void set_module(std::shared_ptr<const NETLIST> netlist, std::uint32_t module);

    /// Takes over the font that is in force.
    void apply_drawing_resources();

    /// The table of types.
    QWidget* get_table() const;

private:
    QLabel* add_sum(QGridLayout* layout, int row, const QString& title, const char* object_name);

    TYPE_TABLE_MODEL* m_types;
    NETLIST_TABLE_VIEW* m_type_view;
    QLabel* m_leaf_cells;
    QLabel* m_instances;
    QLabel* m_nets;
    QLabel* m_net_bits;
    QLabel* m_levels;
};
