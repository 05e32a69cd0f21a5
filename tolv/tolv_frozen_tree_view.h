#pragma once

#include "tolv_export.h"
#include "tolv_tree_view.h"

#include <QPointer>

/// A second tree over the left part of a main tree: it shows the first columns, which so stay on the screen while the
/// main tree scrolls sideways. It is a child of the main tree and dies with it.
///
/// The view keeps the expansion and the vertical position of the main tree whenever one of its operations is called, and
/// calls none of them by itself. All else is the host's: the same model (and selection model) in both views, the place
/// over the main tree's viewport, the columns hidden in either, and the connections of the main tree's signals expanded()
/// and collapsed() and of its vertical scroll bar. While the models differ, only the scroll bar follows.
///
/// The other way it tells the host over which item the pointer is, say to mark the row in the main tree, too.
class TOLV_EXPORT TOLV_FROZEN_TREE_VIEW : public TOLV_TREE_VIEW
{
    Q_OBJECT

public:
    /// `main_view` is the parent; without one, scroll bar and expansion follow nothing.
    explicit TOLV_FROZEN_TREE_VIEW(TOLV_TREE_VIEW* main_view);
    ~TOLV_FROZEN_TREE_VIEW() override;

    /// Expands and collapses all items as they are in the main tree, visible or below a collapsed one, then scrolls
    /// to its vertical position. Visits all rows of the model. Internal error "view_model != NULL" where neither view has
    /// a model.
    void sync_expanded_state();
    /// Expands and collapses an item and all below it, for an invalid index all items, as they are in `main_view`, and
    /// does not scroll. Items without rows are left alone. Nothing happens where the two views have different models, or
    /// for an index of another one. Internal error as above.
    void sync_expanded_state(TOLV_TREE_VIEW* main_view, const QModelIndex& index);

public slots:
    /// Expands all items, then scrolls to the main tree's vertical position.
    void expand_all();
    /// Collapses all items, then scrolls to the main tree's vertical position.
    void collapse_all();

signals:
    /// The pointer moves over an item; sent for each move.
    void mouse_hover_entered(QModelIndex index);
    /// The pointer has left the viewport.
    void mouse_hover_leave();

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    void follow_scroll_bar();

    QPointer<TOLV_TREE_VIEW> m_main_view;
};
