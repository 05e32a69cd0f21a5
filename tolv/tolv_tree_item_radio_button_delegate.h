#pragma once

#include "tolv_tree_item_delegate.h"

/// A delegate that draws a radio indicator in front of the text of items with TOLV_TREE_ROLE_RADIO_BUTTON, on or off as
/// their TOLV_TREE_ROLE_RADIO_STATE says (256 on, 257 off, anything else neither). A host installs it in place of the
/// delegate of its tree, and changes the state itself. It draws no clickable icons, and the items of a view of any class.
class TOLV_EXPORT TOLV_TREE_ITEM_RADIO_BUTTON_DELEGATE : public TOLV_TREE_ITEM_DELEGATE
{
    Q_OBJECT

public:
    explicit TOLV_TREE_ITEM_RADIO_BUTTON_DELEGATE(QObject* parent = nullptr);
    ~TOLV_TREE_ITEM_RADIO_BUTTON_DELEGATE() override;

    /// An item without the indicator is drawn as QStyledItemDelegate does. A selection runs under the indicator.
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// The size of TOLV_TREE_ITEM_DELEGATE, at least as high as the indicator where there is one.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
