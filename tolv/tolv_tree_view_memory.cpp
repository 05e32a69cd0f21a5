// Paths of items, and the memory of which of them are expanded.

#include "tolv_tree_view.h"

#include "tolv_mem.h"
#include "tolv_tree_view_p.h"

#include <QStandardItemModel>

TOLV_MEM_INITIALIZER();

namespace
{
QString get_text(const QModelIndex& index)
{
    return index.data(Qt::DisplayRole).toString();
}

QString join_path(const QString& parent_path, const QString& text)
{
    return parent_path + QLatin1String("||") + text;
}
} // namespace

/// One restoring. The first changes are made one by one, each with its own layout of what it touches; when they become
/// many, the layout waits until the end, because each would move all the rows behind it.
class TOLV_TREE_VIEW::RESTORING
{
public:
    explicit RESTORING(TOLV_TREE_VIEW* view) : m_view(view)
    {
    }

    void set_expanded(const QModelIndex& index, bool is_expanded)
    {
        if (m_view->isExpanded(index) == is_expanded)
            return;
        if (++m_change_count == MANY_CHANGES)
            m_view->scheduleDelayedItemsLayout();
        m_view->setExpanded(index, is_expanded);
    }

    /// Brings rows and scroll bars up to date.
    void finish()
    {
        if (m_change_count >= MANY_CHANGES)
            m_view->executeDelayedItemsLayout();
    }

private:
    static constexpr int MANY_CHANGES = 16;

    TOLV_TREE_VIEW* m_view;
    int m_change_count = 0;
};

// ---- Paths ----------------------------------------------------------------------------------------------------------

QString TOLV_TREE_VIEW::get_path(QModelIndex index) const
{
    if (!has_model())
        return QString();
    QString path = get_text(index);
    if (qobject_cast<QStandardItemModel*>(model()) == nullptr)
        return path;
    for (QModelIndex i = index.parent(); i.isValid(); i = i.parent())
        path = join_path(get_text(i), path);
    return path;
}

QString TOLV_TREE_VIEW::get_path(QStandardItem* item) const
{
    const auto* const standard_model = qobject_cast<QStandardItemModel*>(model());
    return standard_model != nullptr ? get_path(standard_model->indexFromItem(item)) : QString();
}

Qt::CheckState TOLV_TREE_VIEW::get_check_state(Qt::CheckState state) const
{
    return get_check_state(static_cast<int>(state));
}

Qt::CheckState TOLV_TREE_VIEW::get_check_state(int state) const
{
    return state == Qt::Checked || state == Qt::Unchecked ? static_cast<Qt::CheckState>(state) : Qt::PartiallyChecked;
}

// ---- Saving ---------------------------------------------------------------------------------------------------------

void TOLV_TREE_VIEW::save_expandable_state(bool clear)
{
    if (!has_model())
        return;
    // Hands `clear` on for each row, on purpose: the last row alone is remembered then.
    for (int row = 0; row < model()->rowCount(); ++row)
        save_expandable_state(model()->index(row, 0), clear);
}

void TOLV_TREE_VIEW::save_expandable_state(const QModelIndex& index, bool clear)
{
    if (!has_model())
        return;
    if (clear)
    {
        m_expansion_memory.clear();
        m_check_state_memory.clear();
    }
    const auto* const standard_model = qobject_cast<QStandardItemModel*>(model());
    QStandardItem* const item = standard_model != nullptr ? standard_model->itemFromIndex(index) : nullptr;
    if (item != nullptr)
    {
        save_expandable_state(item, QModelIndex(), clear);
        return;
    }
    for (int row = 0; row < model()->rowCount(index); ++row)
    {
        const QModelIndex item_index = model()->index(row, 0, index);
        TOLV_TREE_VIEW_CHECK(item_index.isValid(), "item_index.isValid()");
        if (item_index.isValid())
            save_expandable_state(nullptr, item_index, clear);
    }
}

void TOLV_TREE_VIEW::save_expandable_state(QStandardItem* item, QModelIndex index, bool clear)
{
    if (!has_model())
        return;
    if (const auto* const standard_model = qobject_cast<QStandardItemModel*>(model()))
    {
        if (item != nullptr)
            index = standard_model->indexFromItem(item);
        else
            item = standard_model->itemFromIndex(index);
    }
    if (item != nullptr)
    {
        remember_with_children(item, index, get_path(index));
        return;
    }
    remember(index, get_path(index));
    for (int row = 0; row < model()->rowCount(index); ++row)
    {
        const QModelIndex child = model()->index(row, 0, index);
        if (child.isValid())
            save_expandable_state(nullptr, child, clear);
    }
}

/// The entry of one index. A leaf is remembered as expanded, on purpose.
void TOLV_TREE_VIEW::remember(const QModelIndex& index, const QString& path)
{
    if (!index.isValid())
        return;
    m_expansion_memory.insert(path, !model()->hasChildren(index) || isExpanded(index));
    if (m_is_check_state_tracked)
        m_check_state_memory.insert(path, get_check_state(index.data(Qt::CheckStateRole).toInt()));
}

/// The entries of an item and all below it. Paths are handed down instead of being made from the top each time.
void TOLV_TREE_VIEW::remember_with_children(QStandardItem* item, const QModelIndex& index, const QString& path)
{
    remember(index, path);
    for (int row = 0; row < item->rowCount(); ++row)
    {
        QStandardItem* const child = item->child(row, 0);
        if (child == nullptr)
            continue;
        const QModelIndex child_index = model()->index(row, 0, index);
        remember_with_children(child, child_index, join_path(path, get_text(child_index)));
    }
}

// ---- Restoring ------------------------------------------------------------------------------------------------------

bool TOLV_TREE_VIEW::restore_expandable_state()
{
    if (model() == nullptr)
        return false;
    RESTORING restoring(this);
    const int row_count = model()->rowCount();
    for (int row = 0; row < model()->rowCount(); ++row)
        restore_index(model()->index(row, 0), restoring);
    restoring.finish();
    return row_count > 0 && !m_expansion_memory.isEmpty();
}

bool TOLV_TREE_VIEW::restore_expandable_state(const QModelIndex& index)
{
    if (!has_model())
        return false;
    RESTORING restoring(this);
    restore_index(index, restoring);
    restoring.finish();
    return !m_expansion_memory.isEmpty();
}

void TOLV_TREE_VIEW::restore_expandable_state(QStandardItem* item)
{
    RESTORING restoring(this);
    restore_item(item, get_path(item), restoring);
    restoring.finish();
}

void TOLV_TREE_VIEW::restore_index(const QModelIndex& index, RESTORING& restoring)
{
    if (!index.isValid())
    {
        for (int row = 0; row < model()->rowCount(); ++row)
        {
            const QModelIndex item_index = model()->index(row, 0);
            TOLV_TREE_VIEW_CHECK(item_index.isValid(), "item_index.isValid()");
            if (item_index.isValid())
                restore_index(item_index, restoring);
        }
    }
    else if (const auto* const standard_model = qobject_cast<QStandardItemModel*>(model()))
    {
        QStandardItem* const item = standard_model->itemFromIndex(index);
        restore_item(item, get_path(item), restoring);
    }
    else
    {
        // This one alone: in other models the texts of children are no paths.
        restoring.set_expanded(index, m_expansion_memory.value(get_text(index), false));
    }
}

void TOLV_TREE_VIEW::restore_item(QStandardItem* item, const QString& path, RESTORING& restoring)
{
    const auto* const standard_model = qobject_cast<QStandardItemModel*>(model());
    if (standard_model == nullptr || item == nullptr)
        return;
    restoring.set_expanded(standard_model->indexFromItem(item), m_expansion_memory.value(path, false));
    // The remembered state is not read back, on purpose: derived classes restore their own marks.
    if (m_is_check_state_tracked)
        item->setData(static_cast<int>(get_check_state(-1)), Qt::CheckStateRole);
    for (int row = 0; row < item->rowCount(); ++row)
    {
        QStandardItem* const child = item->child(row, 0);
        if (child != nullptr)
            restore_item(child, join_path(path, child->text()), restoring);
    }
}

bool TOLV_TREE_VIEW::was_item_expanded_previously(const QModelIndex& index) const
{
    return has_model() && index.isValid() && m_expansion_memory.value(get_path(index), false);
}
