#pragma once

#include "netlist_connectivity.h"
#include "netlist_statistics.h"

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>
#include <QVector>

#include <memory>

/// A table about one module of a netlist: the base of the tables of cells, ports, nets and totals. Texts are made when a
/// view asks for them, so that a module of 10^5 cells costs nothing until it is looked at. The model keeps the netlist
/// alive while it shows it.
class NETLIST_TABLE_MODEL : public QAbstractTableModel
{
    Q_OBJECT

public:
    struct COLUMN
    {
        QString title;
        bool is_number; ///< right-aligned, and sorted by value
    };

    /// Shows a module from now on; a null netlist empties the table.
    void set_module(std::shared_ptr<const NETLIST> netlist, std::uint32_t module);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

    const QVector<COLUMN>& get_columns() const;
    /// Value of a cell of a column of numbers.
    virtual std::uint64_t get_number(int row, int column) const = 0;
    /// Text of a cell of any other column.
    virtual QString get_text(int row, int column) const = 0;
    /// The same in full, for the tip; get_text() where nothing is left out.
    virtual QString get_full_text(int row, int column) const;

protected:
    NETLIST_TABLE_MODEL(QVector<COLUMN> columns, QObject* parent);

    /// Only while there is a module.
    const NETLIST& get_netlist() const;
    const NETLIST_MODULE& get_module() const;
    std::uint32_t get_module_index() const;

private:
    /// Takes in what the table needs of the new module; called between the reset's begin and end.
    virtual void prepare() = 0;
    virtual int get_row_count() const = 0;

    QVector<COLUMN> m_columns;
    std::shared_ptr<const NETLIST> m_netlist;
    std::uint32_t m_module = 0;
};

/// The cells of a module, in the order of the file. Row numbers are indices of cells.
class CELL_TABLE_MODEL : public NETLIST_TABLE_MODEL
{
    Q_OBJECT

public:
    enum COLUMN_NUMBER
    {
        COLUMN_NAME,
        COLUMN_TYPE,
        COLUMN_LOCATION, ///< where a placed cell lies: "X5/Y14/lc4"
        COLUMN_SOURCE,   ///< files and lines: "uart.v:34, fifo.v:12"
        COLUMN_PORTS     ///< how many ports it has connections for
    };

    explicit CELL_TABLE_MODEL(QObject* parent = nullptr);

    /// Whether any cell has a location.
    bool has_locations() const;

    std::uint64_t get_number(int row, int column) const override;
    QString get_text(int row, int column) const override;
    QString get_full_text(int row, int column) const override;

private:
    void prepare() override;
    int get_row_count() const override;

    NETLIST_NAME m_location_key = NETLIST_NAMES::NONE;
    NETLIST_NAME m_source_key = NETLIST_NAMES::NONE;
    bool m_has_locations = false;
};

/// The ports of a module, in the order of the file.
class PORT_TABLE_MODEL : public NETLIST_TABLE_MODEL
{
    Q_OBJECT

public:
    enum COLUMN_NUMBER
    {
        COLUMN_NAME,
        COLUMN_DIRECTION,
        COLUMN_RANGE, ///< "[7:0]"; empty for a single bit at 0
        COLUMN_WIDTH
    };

    explicit PORT_TABLE_MODEL(QObject* parent = nullptr);

    std::uint64_t get_number(int row, int column) const override;
    QString get_text(int row, int column) const override;

private:
    void prepare() override;
    int get_row_count() const override;
};

/// The named nets and buses of a module, in the order of the file.
class NET_TABLE_MODEL : public NETLIST_TABLE_MODEL
{
    Q_OBJECT

public:
    enum COLUMN_NUMBER
    {
        COLUMN_NAME,
        COLUMN_SOURCE,
        COLUMN_WIDTH,
        COLUMN_DRIVERS, ///< over all bits
        COLUMN_SINKS,   ///< over all bits
        COLUMN_FAN_OUT  ///< of the bit with the most sinks
    };

    explicit NET_TABLE_MODEL(QObject* parent = nullptr);

    std::uint64_t get_number(int row, int column) const override;
    QString get_text(int row, int column) const override;
    QString get_full_text(int row, int column) const override;

private:
    void prepare() override;
    int get_row_count() const override;

    NETLIST_CONNECTIVITY m_connectivity;
    NETLIST_NAME m_source_key = NETLIST_NAMES::NONE;
};

/// The cells of a module by type, the most frequent first.
class TYPE_TABLE_MODEL : public NETLIST_TABLE_MODEL
{
    Q_OBJECT

public:
    enum COLUMN_NUMBER
    {
        COLUMN_TYPE,
        COLUMN_IN_MODULE,
        COLUMN_IN_HIERARCHY
    };

    explicit TYPE_TABLE_MODEL(QObject* parent = nullptr);

    std::uint64_t get_number(int row, int column) const override;
    QString get_text(int row, int column) const override;

private:
    void prepare() override;
    int get_row_count() const override;

    std::vector<NETLIST_TYPE_COUNT> m_counts;
};

/// Sorts such a table: numbers by value, texts as tolv_string_cmp() orders them, equal ones in the order of the file.
/// Column -1 gives the file's own order back.
class NETLIST_SORT_PROXY : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    /// @param table the source model; not owned, and must outlive the proxy
    explicit NETLIST_SORT_PROXY(NETLIST_TABLE_MODEL* table, QObject* parent = nullptr);

protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    NETLIST_TABLE_MODEL* m_table;
};
