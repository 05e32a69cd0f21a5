#pragma once

#include "tolv_export.h"

#include <QStyledItemDelegate>

/// The delegate that every tree view installs.
class TOLV_EXPORT TOLV_TREE_ITEM_DELEGATE : public QStyledItemDelegate
{
    Q_OBJECT

public:
    explicit TOLV_TREE_ITEM_DELEGATE(QObject* parent = nullptr);
    ~TOLV_TREE_ITEM_DELEGATE() override;

    /// Public here, so that the view can ask where it has drawn an item's parts.
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
