#pragma once

#include "netlist_table_model.h"

#include <QTableView>
#include <QWidget>

class QLabel;
class QTabWidget;

/// A table of a NETLIST_TABLE_MODEL: compact rows, whole rows selected, sorted by a click on a header and in the order
/// of the file before the first one.
class NETLIST_TABLE_VIEW : public QTableView
{
    Q_OBJECT

public:
    /// @param model           not owned; must outlive the view
    /// @param accessible_name what a screen reader calls the table
    NETLIST_TABLE_VIEW(NETLIST_TABLE_MODEL* model, const QString& accessible_name, QWidget* parent = nullptr);

    /// Takes over the font that is in force: the named TOLV_TABLE_MONOSPACE_FONT.
    void apply_drawing_resources();
    /// Widths that fit what is there, within reason.
    void fit_columns();
    /// Row of the model that is chosen, of several the one with the focus; -1 for none.
    int get_current_row() const;
    /// Chooses a row of the model and makes it visible; -1 for none.
    void select_row(int row);

signals:
    /// get_current_row() gives another row, or none any more (-1).
    void current_row_changed(int row);
    /// A row was double-clicked, or Enter pressed on it.
    void row_activated(int row);

private slots:
    void report_current_row();
    void report_activation(const QModelIndex& index);

private:
    NETLIST_SORT_PROXY* m_proxy;
    int m_reported_row = -1;
};

/// The chosen module: its name and three tabs with its cells, ports and nets.
class WORKBENCH_MODULE_VIEW : public QWidget
{
    Q_OBJECT

public:
    enum TAB
    {
        TAB_CELLS,
        TAB_PORTS,
        TAB_NETS
    };

    explicit WORKBENCH_MODULE_VIEW(QWidget* parent = nullptr);

    /// Shows a module. A null netlist empties the view.
    /// @param path names of the instances from the top to the one that is shown
    void set_module(const std::shared_ptr<const NETLIST>& netlist, std::uint32_t module, const QStringList& path);

    /// Takes over the font that is in force.
    void apply_drawing_resources();

    TAB get_tab() const;
    /// The chosen row of the tab that is shown; -1 for none.
    int get_current_row() const;
    /// Chooses a cell of the module and shows its tab.
    void select_cell(int cell);
    /// What the Tab key goes through, in order.
    QWidgetList get_tab_chain() const;

signals:
    /// Another tab is shown, or another row of it is chosen.
    void current_changed();
    /// The user wants to go into this cell of the module.
    void cell_activated(int cell);

private:
    NETLIST_TABLE_VIEW* add_tab(NETLIST_TABLE_MODEL* model, const char* object_name, const QString& accessible_name);
    NETLIST_TABLE_VIEW* get_view(TAB tab) const;
    void set_title(const NETLIST* netlist, std::uint32_t module, const QStringList& path);

    CELL_TABLE_MODEL* m_cells;
    PORT_TABLE_MODEL* m_ports;
    NET_TABLE_MODEL* m_nets;
    QLabel* m_title;
    QTabWidget* m_tabs;
    QVector<NETLIST_TABLE_VIEW*> m_views; ///< by TAB
};
