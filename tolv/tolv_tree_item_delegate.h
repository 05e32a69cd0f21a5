#pragma once

#include "tolv_export.h"

#include <QStyledItemDelegate>

/// The delegate that every tree view installs, for TOLV_TREE_VIEW and the classes derived from it alone. It draws items
/// as Qt does, and in a tree with TOLV_TREE_STYLE_CLICKABLE_ICONS it draws on top the icon of an item that has
/// TOLV_TREE_ROLE_CLICKABLE_ICON as a small tool button, which lights up under the pointer and sinks when it is
/// pressed. The view does the clicking. The configuration's "test_clickable_icons", read once in the process, makes all
/// icons such buttons and writes where they are drawn to qDebug().
class TOLV_EXPORT TOLV_TREE_ITEM_DELEGATE : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// How far the frame of a clickable icon's button stands around the icon, in pixels.
    static constexpr int ICON_BUTTON_PADDING = 3;

    explicit TOLV_TREE_ITEM_DELEGATE(QObject* parent = nullptr);
    ~TOLV_TREE_ITEM_DELEGATE() override;

    /// Draws an item of the tree view that `option` names. Internal errors "index.isValid()", and
    /// "tree_view != nullptr" where the option's widget is no TOLV_TREE_VIEW.
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// Qt's size and 2 pixels of height, 3 more for an item with a clickable icon, whatever the tree's style. Asked for
    /// the height of a row of a tree with TOLV_TREE_STYLE_GRID, 1 more for the line.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// Public here, so that the view can ask where it has drawn an item's parts.
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
