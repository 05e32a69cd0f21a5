#include "tolv_tree_item_delegate.h"

#include "tolv_mem.h"

TOLV_MEM_INITIALIZER();

TOLV_TREE_ITEM_DELEGATE::TOLV_TREE_ITEM_DELEGATE(QObject* parent) : QStyledItemDelegate(parent)
{
}

TOLV_TREE_ITEM_DELEGATE::~TOLV_TREE_ITEM_DELEGATE() = default;

void TOLV_TREE_ITEM_DELEGATE::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
}
