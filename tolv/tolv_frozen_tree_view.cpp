#include "tolv_frozen_tree_view.h"

#include "tolv_check.h"
#include "tolv_mem.h"

#include <QEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QVector>

TOLV_MEM_INITIALIZER();

namespace
{
constexpr int MANY_CHANGES = 16;

/// The items with rows, `top` and below, that are expanded in one of two views of a model and not in the other; parents
/// come first. Trees may be deeper than a stack of calls.
QVector<QPersistentModelIndex> get_differing_items(const QTreeView& view, const QTreeView& other,
                                                   const QModelIndex& top)
{
    struct LEVEL
    {
        QModelIndex parent;
        int row_count;
        int next_row;
    };
    QVector<QPersistentModelIndex> differing;
    QVector<LEVEL> levels;
    const auto visit = [&](const QModelIndex& index)
    {
        const int row_count = view.model()->rowCount(index);
        if (row_count == 0)
            return;
        if (index.isValid() && view.isExpanded(index) != other.isExpanded(index))
            differing.append(index);
        levels.append({index, row_count, 0});
    };
    visit(top);
    while (!levels.isEmpty())
    {
        LEVEL& level = levels.last();
        if (level.next_row == level.row_count)
        {
            levels.removeLast();
            continue;
        }
        const QModelIndex child = view.model()->index(level.next_row++, 0, level.parent);
        if (child.isValid())
            visit(child);
    }
    return differing;
}
} // namespace

TOLV_FROZEN_TREE_VIEW::TOLV_FROZEN_TREE_VIEW(TOLV_TREE_VIEW* main_view)
    : TOLV_TREE_VIEW(main_view, 0), m_main_view(main_view)
{
    // Styles need not ask for hover events, and without them nothing tells that the pointer has left.
    viewport()->setAttribute(Qt::WA_Hover);
}

TOLV_FROZEN_TREE_VIEW::~TOLV_FROZEN_TREE_VIEW() = default;

void TOLV_FROZEN_TREE_VIEW::sync_expanded_state()
{
    sync_expanded_state(m_main_view, QModelIndex());
    // Only now has the scroll bar its range.
    executeDelayedItemsLayout();
    follow_scroll_bar();
}

void TOLV_FROZEN_TREE_VIEW::sync_expanded_state(TOLV_TREE_VIEW* main_view, const QModelIndex& index)
{
    if (main_view == nullptr || main_view->model() != model())
        return;
    const QAbstractItemModel* const view_model = model();
    TOLV_CHECK_TEXT(view_model != nullptr, "view_model != NULL");
    if (view_model == nullptr || (index.isValid() && index.model() != view_model))
        return;
    const QVector<QPersistentModelIndex> differing = get_differing_items(*this, *main_view, index);
    if (differing.isEmpty())
        return;
    // Each change moves all the rows behind it: when there are many, the layout waits until the end.
    const bool are_many = differing.size() >= MANY_CHANGES;
    if (are_many)
        scheduleDelayedItemsLayout();
    // An animation would leave the scroll bar without its range for a while.
    const bool was_animated = isAnimated();
    setAnimated(false);
    for (const QPersistentModelIndex& item : differing)
        setExpanded(item, main_view->isExpanded(item));
    setAnimated(was_animated);
    if (are_many)
        executeDelayedItemsLayout();
}

void TOLV_FROZEN_TREE_VIEW::expand_all()
{
    expandAll();
    follow_scroll_bar();
}

void TOLV_FROZEN_TREE_VIEW::collapse_all()
{
    collapseAll();
    follow_scroll_bar();
}

void TOLV_FROZEN_TREE_VIEW::mouseMoveEvent(QMouseEvent* event)
{
    const QModelIndex index = indexAt(event->pos());
    if (index.isValid())
        emit mouse_hover_entered(index);
    // Past TOLV_TREE_VIEW, on purpose: no icon is clicked here.
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QTreeView::mouseMoveEvent(event); // clazy:exclude=skipped-base-method
}

bool TOLV_FROZEN_TREE_VIEW::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::HoverLeave)
        emit mouse_hover_leave();
    return TOLV_TREE_VIEW::viewportEvent(event);
}

void TOLV_FROZEN_TREE_VIEW::follow_scroll_bar()
{
    if (m_main_view != nullptr)
        verticalScrollBar()->setValue(m_main_view->verticalScrollBar()->value());
}
