#pragma once

#include "gui_test.h"

#include "tolv_tree_filter_model.h"
#include "tolv_tree_filter_proxy_model.h"

#include <QAbstractItemModel>
#include <QStandardItemModel>

#include <algorithm>
#include <iterator>
#include <memory>
#include <random>
#include <vector>

/// A tree of texts in two columns that can do all that a source model may do, also move rows and change its layout.
class TEXT_TREE : public QAbstractItemModel
{
public:
    struct NODE
    {
        QString texts[2];
        NODE* parent = nullptr;
        std::vector<std::unique_ptr<NODE>> children;
    };

    NODE* get_node(const QModelIndex& index) const
    {
        return index.isValid() ? static_cast<NODE*>(index.internalPointer()) : const_cast<NODE*>(&m_root);
    }

    QModelIndex get_index(NODE* node, int column = 0) const
    {
        return node == &m_root ? QModelIndex() : createIndex(get_row(node), column, node);
    }

    NODE* insert(NODE* parent, int row, const QStringList& names)
    {
        beginInsertRows(get_index(parent), row, row + names.size() - 1);
        for (int i = 0; i < names.size(); ++i)
        {
            auto node = std::make_unique<NODE>();
            node->texts[0] = names[i];
            node->parent = parent;
            parent->children.insert(parent->children.begin() + row + i, std::move(node));
        }
        endInsertRows();
        return parent->children[static_cast<std::size_t>(row)].get();
    }

    /// Inserts one row with all that it has below itself.
    void insert(NODE* parent, int row, std::unique_ptr<NODE> node)
    {
        beginInsertRows(get_index(parent), row, row);
        node->parent = parent;
        parent->children.insert(parent->children.begin() + row, std::move(node));
        endInsertRows();
    }

    NODE* append(NODE* parent, const QString& name)
    {
        return insert(parent, static_cast<int>(parent->children.size()), QStringList(name));
    }

    void remove(NODE* parent, int first, int last)
    {
        beginRemoveRows(get_index(parent), first, last);
        parent->children.erase(parent->children.begin() + first, parent->children.begin() + last + 1);
        endRemoveRows();
    }

    bool move(NODE* from, int row, NODE* to, int before)
    {
        return move(from, row, row, to, before);
    }

    /// Moves neighbours. False for a place within or beside themselves, and for one below them.
    bool move(NODE* from, int first, int last, NODE* to, int before)
    {
        if (!beginMoveRows(get_index(from), first, last, get_index(to), before))
            return false;
        std::vector<std::unique_ptr<NODE>> nodes;
        for (int row = first; row <= last; ++row)
        {
            nodes.push_back(std::move(from->children[static_cast<std::size_t>(row)]));
            nodes.back()->parent = to;
        }
        from->children.erase(from->children.begin() + first, from->children.begin() + last + 1);
        const int place = from == to && before > last ? before - (last - first + 1) : before;
        to->children.insert(to->children.begin() + place, std::make_move_iterator(nodes.begin()),
                            std::make_move_iterator(nodes.end()));
        endMoveRows();
        return true;
    }

    /// Puts other rows in the place of all.
    void reset(std::unique_ptr<NODE> root)
    {
        beginResetModel();
        m_root.children = std::move(root->children);
        for (const std::unique_ptr<NODE>& child : m_root.children)
            child->parent = &m_root;
        endResetModel();
    }

    void set_text(NODE* node, const QString& text, int column = 0)
    {
        node->texts[column] = text;
        emit dataChanged(get_index(node, column), get_index(node, column), {Qt::DisplayRole});
    }

    /// Changes the first column of neighbours at once.
    void set_texts(NODE* parent, int first, const QStringList& texts)
    {
        for (int i = 0; i < texts.size(); ++i)
            get_node(index(first + i, 0, get_index(parent)))->texts[0] = texts[i];
        emit dataChanged(index(first, 0, get_index(parent)), index(first + texts.size() - 1, 0, get_index(parent)));
    }

    /// Turns the order of rows round, and says in which place, or not.
    void reverse(NODE* parent, bool is_place_said = false)
    {
        const QList<QPersistentModelIndex> places =
            is_place_said ? QList<QPersistentModelIndex>{get_index(parent)} : QList<QPersistentModelIndex>();
        emit layoutAboutToBeChanged(places);
        const QModelIndexList from = persistentIndexList();
        std::vector<NODE*> nodes;
        for (const QModelIndex& index : from)
            nodes.push_back(get_node(index));
        std::reverse(parent->children.begin(), parent->children.end());
        QModelIndexList to;
        for (int i = 0; i < from.size(); ++i)
            to.append(get_index(nodes[static_cast<std::size_t>(i)], from[i].column()));
        changePersistentIndexList(from, to);
        emit layoutChanged(places);
    }

    NODE* root()
    {
        return &m_root;
    }

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override
    {
        if (!hasIndex(row, column, parent))
            return QModelIndex();
        return createIndex(row, column, get_node(parent)->children[static_cast<std::size_t>(row)].get());
    }
    QModelIndex parent(const QModelIndex& index) const override
    {
        return index.isValid() ? get_index(get_node(index)->parent) : QModelIndex();
    }
    int rowCount(const QModelIndex& parent = QModelIndex()) const override
    {
        return parent.column() > 0 ? 0 : static_cast<int>(get_node(parent)->children.size());
    }
    int columnCount(const QModelIndex& parent = QModelIndex()) const override
    {
        Q_UNUSED(parent)
        return 2;
    }
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override
    {
        return index.isValid() && role == Qt::DisplayRole ? get_node(index)->texts[index.column()] : QVariant();
    }

private:
    int get_row(const NODE* node) const
    {
        const auto& siblings = node->parent->children;
        const auto place =
            std::find_if(siblings.begin(), siblings.end(), [node](const auto& i) { return i.get() == node; });
        return static_cast<int>(place - siblings.begin());
    }

    NODE m_root;
};

/// All that a model shows, one line for a row, indented by its depth.
inline void append_rows(const QAbstractItemModel& model, const QModelIndex& parent, int depth, QStringList& result)
{
    const int count = model.columnCount(parent) > 0 ? model.rowCount(parent) : 0;
    for (int row = 0; row < count; ++row)
    {
        const QModelIndex index = model.index(row, 0, parent);
        result.append(QString(depth, QLatin1Char('.')) + index.data().toString());
        append_rows(model, index, depth + 1, result);
    }
}

inline QStringList get_rows(const QAbstractItemModel& model)
{
    QStringList result;
    append_rows(model, QModelIndex(), 0, result);
    return result;
}

/// The rules at their plainest, with nothing kept and nothing done in advance, on Qt's own way to filter.
class PLAIN_FILTER : public QSortFilterProxyModel
{
public:
    bool include_child = true;
    bool include_invisible_root_child = false;
    QList<int> columns;
    mutable int count = 0;

    using QSortFilterProxyModel::invalidateFilter;

    bool filterAcceptsRow(int row, const QModelIndex& parent) const override
    {
        if (does_match(row, parent) || (include_invisible_root_child && !parent.isValid()))
        {
            ++count;
            return true;
        }
        for (QModelIndex p = parent; include_child && p.isValid(); p = p.parent())
        {
            if (does_match(p.row(), p.parent()))
                return true;
        }
        return has_match_below(sourceModel()->index(row, 0, parent));
    }

private:
    bool does_match(int row, const QModelIndex& parent) const
    {
        if (QSortFilterProxyModel::filterAcceptsRow(row, parent))
            return true;
        QString text;
        for (const int column : columns)
            text += sourceModel()->index(row, column, parent).data().toString() + QLatin1Char(' ');
        return !columns.isEmpty() && text.contains(filterRegularExpression());
    }

    bool has_match_below(const QModelIndex& index) const
    {
        for (int row = 0; row < sourceModel()->rowCount(index); ++row)
        {
            if (does_match(row, index) || has_match_below(sourceModel()->index(row, 0, index)))
                return true;
        }
        return false;
    }
};
