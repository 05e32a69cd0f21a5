#pragma once

#include "netlist.h"

#include <QAbstractItemModel>
#include <QIcon>
#include <QStringList>

#include <deque>
#include <memory>
#include <vector>

/// The instances of a netlist as a tree, with the tops at its root. All of them are there from the beginning, without
/// fetching, so that a filter finds each: what an instance holds is read from its module. Only instances that somebody
/// has looked into cost memory, as a design whose modules hold each other many times over has more instances than any
/// memory. Keeps the netlist alive.
///
/// A hierarchy deeper than LARGEST_DEPTH is shown down to there; the instances at its end say so in their tips.
///
/// The icon of an instance is a button (TOLV_TREE_ROLE_CLICKABLE_ICON). As data of a copy or a drag, instances are their
/// paths, joined by "/": as instance names, and as a text with a line for each.
class HIERARCHY_MODEL : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum COLUMN_NUMBER
    {
        COLUMN_INSTANCE, ///< name of the instance; of a top, the module's
        COLUMN_MODULE,
        COLUMN_CELLS,     ///< cells of the technology in it and below
        COLUMN_NETS,      ///< named nets and buses of its module
        COLUMN_INSTANCES, ///< instances of modules below it
        COLUMN_PORTS,     ///< ports of its module
        COLUMN_COUNT
    };

    /// Of a header: bool, the column is one that not everybody wants to see.
    static constexpr int HIDDEN_AT_FIRST_ROLE = Qt::UserRole;
    /// Levels that are shown.
    static constexpr int LARGEST_DEPTH = 500;

    explicit HIERARCHY_MODEL(QObject* parent = nullptr);
    ~HIERARCHY_MODEL() override;

    /// Shows another netlist; null for none.
    void set_netlist(std::shared_ptr<const NETLIST> netlist);
    /// Null for none.
    const std::shared_ptr<const NETLIST>& get_netlist() const;

    /// The module at an index, which must be valid.
    std::uint32_t get_module(const QModelIndex& index) const;
    /// Names from the top down to the index; empty for an invalid one.
    QStringList get_path(const QModelIndex& index) const;
    /// The instance with that path; invalid where there is none.
    QModelIndex find_path(const QStringList& path) const;
    /// The instance below `parent` for a cell of its module; invalid where the cell is none.
    QModelIndex find_instance(const QModelIndex& parent, std::uint32_t cell) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    QModelIndex sibling(int row, int column, const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    bool hasChildren(const QModelIndex& parent = QModelIndex()) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    QStringList mimeTypes() const override;
    /// The caller owns it; null without an index.
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    Qt::DropActions supportedDragActions() const override;

private:
    struct NODE;

    NODE* get_node(const QModelIndex& index) const;
    int get_child_count(const NODE& node) const;
    std::uint32_t get_child_module(const NODE& node, int row) const;
    QString get_child_name(const NODE& node, int row) const;
    QString get_tip(const NODE& parent, int row) const;
    std::uint64_t get_number(const NETLIST_MODULE& module, int column) const;
    void count_instances();

    std::shared_ptr<const NETLIST> m_netlist;
    std::vector<std::uint64_t> m_instance_counts; ///< below each module; stops at the largest value
    // An index points to the node of its parent. Nodes are made when a child of theirs is asked for.
    mutable std::deque<NODE> m_nodes;
    mutable QIcon m_top_icon; ///< made when it is first asked for, as is the other
    mutable QIcon m_instance_icon;
};
