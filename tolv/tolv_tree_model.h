#pragma once

#include "tolv_export.h"

#include <QList>
#include <QModelIndex>
#include <QStandardItemModel>

/// Roles of tree items to which the library gives a meaning. Plain integers, which a host stores with
/// QStandardItem::setData(); views and delegates read them with data() from whichever model they show.
enum TOLV_TREE_ROLE
{
    /// int: 256 draws the radio indicator on, 257 off, anything else neither.
    TOLV_TREE_ROLE_RADIO_STATE = Qt::UserRole + 2,
    /// bool: the cell is drawn with a radio indicator.
    TOLV_TREE_ROLE_RADIO_BUTTON = Qt::UserRole + 3,
    /// bool: the item's decoration behaves as a small tool button, and a click on it raises the view's icon_clicked().
    TOLV_TREE_ROLE_CLICKABLE_ICON = Qt::UserRole + 7000
};

/// The order of all that stands in a tree: whether `a` stands before `b`. Ancestors stand before their descendants;
/// otherwise the rows decide at the first level where the two part. Two cells of one row answer false both ways, so a
/// stable sort keeps them in their input order. An index stands before itself: this is meant, and harmless in a stable
/// sort, but it makes the function unfit for containers and algorithms that ask for a strict order.
///
/// Works on any model. An invalid index is the internal error "Not a valid index!", two models are "Models for given
/// indices do not match!"; should the report return, the answer is false.
TOLV_EXPORT bool tolv_tree_order_indexes(const QModelIndex& a, const QModelIndex& b);

/// Sorts indexes of one model, all of them valid, as std::stable_sort() with tolv_tree_order_indexes() does, to the same
/// result, but looks up each index's place in the tree only once; for selections of any size. The internal errors are
/// those of tolv_tree_order_indexes(); should the report return, the list stays as it was.
TOLV_EXPORT void tolv_tree_sort_indexes(QList<QModelIndex>& list);

/// The item model behind every tree of the library: a QStandardItemModel with a walk from node to node, counting, levels
/// and an order of indexes, so that a host need not know the tree's shape. It adds nothing to the state of its base.
///
/// A node is the item in column 0 of a row, and the walk follows the children in column 0; the other columns are only
/// cells of the row. What a view has expanded plays no part. An index without a model or with a negative row or column
/// is invalid.
class TOLV_EXPORT TOLV_TREE_MODEL : public QStandardItemModel
{
    Q_OBJECT

public:
    explicit TOLV_TREE_MODEL(QObject* parent = nullptr);
    ~TOLV_TREE_MODEL() override;

    /// The index one row below in the same column of the same parent; invalid behind the last row and for an invalid
    /// index.
    QModelIndex get_next_sibling(QModelIndex index) const;
    /// The index one row above in the same column of the same parent; invalid before the first row and for an invalid
    /// index.
    QModelIndex get_prev_sibling(QModelIndex index) const;
    /// The node behind `index` in depth-first order, parents before children; invalid behind the last one, for an
    /// invalid index and for one of another model.
    QModelIndex get_next(QModelIndex index) const;
    /// The node before `index` in the same order; invalid before the first one and for an invalid index.
    QModelIndex get_prev(QModelIndex index) const;
    /// The deepest last descendant of `index`, which is `index` itself if it has no children. For an invalid index the
    /// last node of the whole tree; invalid if the tree is empty.
    QModelIndex get_last(QModelIndex index) const;

    /// How many nodes stand below `item`, at any depth; below the invisible root, that is in the whole model, for null.
    /// A row without an item in column 0 is the internal error "child != NULL", at which the counting stops.
    int get_total_count(QStandardItem* item) const;

    /// 0 for an item at the top, one more for each ancestor; -1 for null and for the invisible root.
    int get_level(const QStandardItem* item) const;
    /// The same for the item at an index; -1 for an invalid index.
    int get_level(QModelIndex index) const;

    /// Sorts in place: first all invalid indexes, as they stand in the list, then the valid ones, which must be of one
    /// model, in the order of tolv_tree_order_indexes(). A list of one entry is not touched.
    void sort_index_list_by_positions(QList<QModelIndex>& list) const;
};
