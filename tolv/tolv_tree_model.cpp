#include "tolv_tree_model.h"

#include "tolv_check.h"
#include "tolv_mem.h"

#include <QVarLengthArray>

#include <algorithm>
#include <iterator>
#include <vector>

TOLV_MEM_INITIALIZER();

namespace
{
/// An index and its ancestors, the index itself first.
using ANCESTORS = QVarLengthArray<QModelIndex, 16>;

ANCESTORS get_ancestors(const QModelIndex& index)
{
    ANCESTORS result;
    for (QModelIndex i = index; i.isValid(); i = i.parent())
        result.append(i);
    return result;
}

/// The place of an index in its tree: the rows and columns of its ancestors and of itself, from the top, in a table that
/// many indexes share.
struct PLACE
{
    QModelIndex index;
    std::size_t begin;
    std::size_t end;
};

struct CELL
{
    int row;
    int column;
};

/// Says of two places in one table what tolv_tree_order_indexes() says of their indexes.
class PLACE_ORDER
{
public:
    explicit PLACE_ORDER(const std::vector<CELL>& cells) : m_cells(cells)
    {
    }

    bool operator()(const PLACE& a, const PLACE& b) const
    {
        const std::size_t a_size = a.end - a.begin;
        const std::size_t b_size = b.end - b.begin;
        for (std::size_t i = 0; i < std::min(a_size, b_size); ++i)
        {
            const CELL a_cell = m_cells[a.begin + i];
            const CELL b_cell = m_cells[b.begin + i];
            if (a_cell.row != b_cell.row || a_cell.column != b_cell.column)
                return a_cell.row < b_cell.row;
        }
        return a_size <= b_size;
    }

private:
    const std::vector<CELL>& m_cells;
};

/// Fills the table, the ancestors of the indexes first. Indexes of one parent share what stands before their own cell
/// only as long as they follow each other, which is enough to look up few parents in a selection.
std::vector<PLACE> get_places(const QList<QModelIndex>& list, std::vector<CELL>& cells)
{
    std::vector<PLACE> places;
    places.reserve(static_cast<std::size_t>(list.size()));
    QModelIndex last_parent;
    for (const QModelIndex& index : list)
    {
        const QModelIndex parent = index.parent();
        const std::size_t begin = cells.size();
        if (!places.empty() && parent == last_parent)
        {
            const PLACE last = places.back();
            for (std::size_t i = last.begin; i + 1 < last.end; ++i)
                cells.push_back(CELL(cells[i]));
        }
        else
        {
            const ANCESTORS ancestors = get_ancestors(parent);
            for (auto i = ancestors.crbegin(); i != ancestors.crend(); ++i)
                cells.push_back({i->row(), i->column()});
            last_parent = parent;
        }
        cells.push_back({index.row(), index.column()});
        places.push_back({index, begin, cells.size()});
    }
    return places;
}
} // namespace

bool tolv_tree_order_indexes(const QModelIndex& a, const QModelIndex& b)
{
    const bool are_valid = a.isValid() && b.isValid();
    TOLV_CHECK_TEXT(are_valid, "Not a valid index!");
    const bool is_one_model = a.model() == b.model();
    TOLV_CHECK_TEXT(is_one_model, "Models for given indices do not match!");
    if (!are_valid || !is_one_model)
        return false;
    if (a == b)
        return true;

    const ANCESTORS a_ancestors = get_ancestors(a);
    const ANCESTORS b_ancestors = get_ancestors(b);
    auto a_element = a_ancestors.crbegin();
    auto b_element = b_ancestors.crbegin();
    for (; a_element != a_ancestors.crend() && b_element != b_ancestors.crend(); ++a_element, ++b_element)
    {
        if (*a_element != *b_element)
            return a_element->row() < b_element->row();
    }
    return a_element == a_ancestors.crend();
}

void tolv_tree_sort_indexes(QList<QModelIndex>& list)
{
    if (list.size() < 2)
        return;
    const bool are_valid = std::all_of(list.cbegin(), list.cend(), [](const QModelIndex& i) { return i.isValid(); });
    TOLV_CHECK_TEXT(are_valid, "Not a valid index!");
    const QAbstractItemModel* model = list.constFirst().model();
    const bool is_one_model =
        std::all_of(list.cbegin(), list.cend(), [model](const QModelIndex& i) { return i.model() == model; });
    TOLV_CHECK_TEXT(is_one_model, "Models for given indices do not match!");
    if (!are_valid || !is_one_model)
        return;

    std::vector<CELL> cells;
    std::vector<PLACE> places = get_places(list, cells);
    std::stable_sort(places.begin(), places.end(), PLACE_ORDER(cells));
    std::transform(places.cbegin(), places.cend(), list.begin(), [](const PLACE& place) { return place.index; });
}

TOLV_TREE_MODEL::TOLV_TREE_MODEL(QObject* parent) : QStandardItemModel(parent)
{
}

TOLV_TREE_MODEL::~TOLV_TREE_MODEL() = default;

QModelIndex TOLV_TREE_MODEL::get_next_sibling(QModelIndex index) const
{
    return index.isValid() ? index.sibling(index.row() + 1, index.column()) : QModelIndex();
}

QModelIndex TOLV_TREE_MODEL::get_prev_sibling(QModelIndex index) const
{
    return index.isValid() ? index.sibling(index.row() - 1, index.column()) : QModelIndex();
}

QModelIndex TOLV_TREE_MODEL::get_next(QModelIndex index) const
{
    if (!index.isValid())
        return QModelIndex();
    const QStandardItem* item = itemFromIndex(index);
    if (item == nullptr)
        return QModelIndex();
    if (item->hasChildren())
    {
        const QModelIndex first_child = this->index(0, 0, index);
        if (first_child.isValid())
            return first_child;
    }
    for (QModelIndex i = index; i.isValid(); i = i.parent())
    {
        const QModelIndex next = get_next_sibling(i);
        if (next.isValid())
            return next;
    }
    return QModelIndex();
}

QModelIndex TOLV_TREE_MODEL::get_prev(QModelIndex index) const
{
    const QModelIndex sibling = get_prev_sibling(index);
    return sibling.isValid() ? get_last(sibling) : index.parent();
}

QModelIndex TOLV_TREE_MODEL::get_last(QModelIndex index) const
{
    if (!index.isValid())
    {
        if (rowCount() == 0)
            return index;
        index = this->index(rowCount() - 1, 0);
    }
    const QStandardItem* item = itemFromIndex(index);
    while (item != nullptr && item->hasChildren())
    {
        const QStandardItem* child = item->child(item->rowCount() - 1, 0);
        if (child == nullptr)
            break;
        item = child;
    }
    return indexFromItem(item);
}

int TOLV_TREE_MODEL::get_total_count(QStandardItem* item) const
{
    int count = 0;
    std::vector<const QStandardItem*> open{item != nullptr ? item : invisibleRootItem()};
    while (!open.empty())
    {
        const QStandardItem* parent = open.back();
        open.pop_back();
        count += parent->rowCount();
        for (int row = 0; row < parent->rowCount(); ++row)
        {
            const QStandardItem* child = parent->child(row, 0);
            TOLV_CHECK_TEXT(child != nullptr, "child != NULL");
            if (child == nullptr)
                return count;
            if (child->rowCount() > 0)
                open.push_back(child);
        }
    }
    return count;
}

int TOLV_TREE_MODEL::get_level(const QStandardItem* item) const
{
    if (item == invisibleRootItem())
        return -1;
    int level = -1;
    for (; item != nullptr; item = item->parent())
        ++level;
    return level;
}

int TOLV_TREE_MODEL::get_level(QModelIndex index) const
{
    return index.isValid() ? get_level(itemFromIndex(index)) : -1;
}

void TOLV_TREE_MODEL::sort_index_list_by_positions(QList<QModelIndex>& list) const
{
    if (list.size() < 2)
        return;
    QList<QModelIndex> invalid;
    QList<QModelIndex> valid;
    for (const QModelIndex& index : qAsConst(list))
        (index.isValid() ? valid : invalid).append(index);
    tolv_tree_sort_indexes(valid);
    list = invalid + valid;
}
