#pragma once

#include "netlist.h"

#include <QAbstractItemModel>
#include <QStringList>

#include <memory>
#include <vector>

/// The instances of a netlist as a tree, with the tops at its root. Instances appear when a view fetches them: a design
/// whose modules hold each other many times over would have more of them than any memory. Keeps the netlist alive.
class HIERARCHY_MODEL : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum COLUMN_NUMBER
    {
        COLUMN_INSTANCE, ///< name of the instance; of a top, the module's
        COLUMN_MODULE,
        COLUMN_CELLS, ///< cells of the technology in it and below
        COLUMN_COUNT
    };

    explicit HIERARCHY_MODEL(QObject* parent = nullptr);
    ~HIERARCHY_MODEL() override;

    /// Shows another netlist; null for none.
    void set_netlist(std::shared_ptr<const NETLIST> netlist);

    /// The module at an index, which must be valid.
    std::uint32_t get_module(const QModelIndex& index) const;
    /// Names from the top down to the index; empty for an invalid one.
    QStringList get_path(const QModelIndex& index) const;
    /// The instance with that path, fetching what is on the way; invalid where there is none.
    QModelIndex find_path(const QStringList& path);
    /// The instance below `parent` for a cell of its module; invalid where the cell is none.
    QModelIndex find_instance(const QModelIndex& parent, std::uint32_t cell);

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    bool hasChildren(const QModelIndex& parent = QModelIndex()) const override;
    bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    struct NODE;

    NODE* get_node(const QModelIndex& index) const;
    QString get_name(const NODE& node) const;

    std::shared_ptr<const NETLIST> m_netlist;
    std::unique_ptr<NODE> m_root; ///< its children are the tops
};
