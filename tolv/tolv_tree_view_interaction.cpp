// Look of a tree, mouse, keyboard and tool tips.

#include "tolv_tree_view.h"

#include "tolv_mem.h"
#include "tolv_tree_item_delegate.h"
#include "tolv_tree_model.h"

#include "cfg.h"

#include <QDebug>
#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <utility>

TOLV_MEM_INITIALIZER();

// ---- Look -----------------------------------------------------------------------------------------------------------

void TOLV_TREE_VIEW::set_style(unsigned int style)
{
    const int old_height = get_grid_line_height();
    m_style = style;
    if (get_grid_line_height() != old_height)
        scheduleDelayedItemsLayout();
    viewport()->update();
}

unsigned int TOLV_TREE_VIEW::get_style() const
{
    return m_style;
}

bool TOLV_TREE_VIEW::has_style(TOLV_TREE_STYLE flag) const
{
    return (m_style & flag) != 0;
}

int TOLV_TREE_VIEW::get_grid_line_height() const
{
    return has_style(TOLV_TREE_STYLE_GRID) ? 1 : 0;
}

QSize TOLV_TREE_VIEW::sizeHintForIndex(const QModelIndex& index) const
{
    QSize size = QTreeView::sizeHintForIndex(index);
    if (size.isValid())
        size.rheight() += get_grid_line_height();
    return size;
}

int TOLV_TREE_VIEW::get_item_level(const QModelIndex& index) const
{
    if (index == QModelIndex())
        return model() == nullptr ? -1 : 0;
    if (index.column() != 0 || index.model() == nullptr)
        return 0;
    const QModelIndex parent = index.parent();
    return parent == QModelIndex() ? 0 : get_item_level(parent) + 1;
}

QModelIndex TOLV_TREE_VIEW::get_pressed_icon_index() const
{
    return m_pressed_icon_index;
}

void TOLV_TREE_VIEW::scrollTo(const QModelIndex& index, ScrollHint hint)
{
    const int value = horizontalScrollBar()->value();
    QTreeView::scrollTo(index, hint);
    horizontalScrollBar()->setValue(value);
}

void TOLV_TREE_VIEW::drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QTreeView::drawRow(painter, option, index);
    if (has_style(TOLV_TREE_STYLE_GRID))
        draw_grid(painter, option);
}

/// The lines to the right of the cells of a row, and the one below them, as far as there are cells.
void TOLV_TREE_VIEW::draw_grid(QPainter* painter, const QStyleOptionViewItem& option) const
{
    const QPen old_pen = painter->pen();
    painter->setPen(QColor(static_cast<QRgb>(style()->styleHint(QStyle::SH_Table_GridLineColor, &option, this))));
    const int limit = painter->window().width() - 1;
    const QHeaderView* const view_header = header();
    // In a layout from right to left the columns count from the right.
    const auto [from, to] = isRightToLeft() ? std::make_pair(option.rect.right(), option.rect.left())
                                            : std::make_pair(option.rect.left(), option.rect.right());
    const int first = std::max(view_header->visualIndexAt(from), 0);
    const int found_last = view_header->visualIndexAt(to);
    const int last = found_last == -1 ? view_header->count() - 1 : found_last;
    int last_x = -1;
    for (int visual = first; visual <= last; ++visual)
    {
        const int logical = view_header->logicalIndex(visual);
        if (view_header->isSectionHidden(logical))
            continue;
        const int x = columnViewportPosition(logical) + view_header->sectionSize(logical) - 1;
        last_x = std::max(last_x, x);
        if (x <= limit + 1)
            painter->drawLine(x, option.rect.top(), x, option.rect.bottom());
    }
    painter->drawLine(option.rect.left(), option.rect.bottom(), last_x, option.rect.bottom());
    painter->setPen(old_pen);
}

void TOLV_TREE_VIEW::drawBranches(QPainter* painter, const QRect& rect, const QModelIndex& index) const
{
    if (!has_style(TOLV_TREE_STYLE_NO_BRANCHES))
        QTreeView::drawBranches(painter, rect, index);
}

// ---- Keyboard -------------------------------------------------------------------------------------------------------

void TOLV_TREE_VIEW::keyPressEvent(QKeyEvent* event)
{
    if (selectionBehavior() != SelectItems)
    {
        QTreeView::keyPressEvent(event);
        return;
    }
    // Persistent: expanding, and looking for the next row, can make the model fetch rows.
    const QPersistentModelIndex old_index = currentIndex();
    QPersistentModelIndex new_index;
    const int step_to_right = isRightToLeft() ? -1 : 1;
    switch (event->key())
    {
    case Qt::Key_Plus:
        expand(old_index.sibling(old_index.row(), 0));
        break;
    case Qt::Key_Minus:
        collapse(old_index.sibling(old_index.row(), 0)); // Qt collapses by the first cell alone
        break;
    case Qt::Key_Left:
        new_index = get_cell_beside(old_index, -step_to_right);
        break;
    case Qt::Key_Right:
        new_index = get_cell_beside(old_index, step_to_right);
        break;
    case Qt::Key_Up:
        new_index = get_cell_in_next_row(MoveUp, event->modifiers());
        break;
    case Qt::Key_Down:
        new_index = get_cell_in_next_row(MoveDown, event->modifiers());
        break;
    default:
        QTreeView::keyPressEvent(event);
        break;
    }
    if (new_index == old_index || !new_index.isValid())
        return;
    setCurrentIndex(new_index);
    QTreeView::scrollTo(new_index, EnsureVisible); // of the base: keys scroll sideways, too
}

/// The nearest cell of the row in a visible column, to the next visual columns (1) or to those before (-1); invalid
/// where there is none.
QModelIndex TOLV_TREE_VIEW::get_cell_beside(const QModelIndex& index, int step) const
{
    const QHeaderView* const view_header = header();
    if (!index.isValid())
        return QModelIndex();
    int visual = view_header->visualIndex(index.column()) + step;
    while (visual >= 0 && visual < view_header->count())
    {
        const int logical = view_header->logicalIndex(visual);
        if (!view_header->isSectionHidden(logical))
            return index.sibling(index.row(), logical);
        visual += step;
    }
    return QModelIndex();
}

/// The cell in the current column of the row to which the cursor moves; the cursor's own where the row has no such cell.
QModelIndex TOLV_TREE_VIEW::get_cell_in_next_row(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const int column = currentIndex().column();
    const QModelIndex found = moveCursor(action, modifiers);
    const QModelIndex sibling = found.sibling(found.row(), column);
    return sibling.isValid() ? sibling : found;
}

// ---- Clickable icons ------------------------------------------------------------------------------------------------

/// The delegate that draws a clickable icon; null where another one draws the item, and for an invalid index.
const TOLV_TREE_ITEM_DELEGATE* TOLV_TREE_VIEW::get_icon_delegate(const QModelIndex& index) const
{
    return index.isValid() ? qobject_cast<const TOLV_TREE_ITEM_DELEGATE*>(itemDelegate(index)) : nullptr;
}

/// Whether a position of the viewport is on the item's icon or on the frame of its button. An item without an icon has
/// neither.
bool TOLV_TREE_VIEW::is_on_icon(const TOLV_TREE_ITEM_DELEGATE& delegate, const QModelIndex& index,
                                const QPoint& position) const
{
    constexpr int PADDING = TOLV_TREE_ITEM_DELEGATE::ICON_BUTTON_PADDING;
    QStyleOptionViewItem option = viewOptions();
    option.rect = visualRect(index);
    delegate.initStyleOption(&option, index);
    const QRect rect = style()->subElementRect(QStyle::SE_ItemViewItemDecoration, &option, this);
    return rect.isValid() && rect.adjusted(-PADDING, -PADDING, PADDING, PADDING).contains(position);
}

void TOLV_TREE_VIEW::mousePressEvent(QMouseEvent* event)
{
    static const bool s_is_tested = cfg_is_on("test_clickable_icons");
    m_pressed_icon_index = QModelIndex();
    if ((has_style(TOLV_TREE_STYLE_CLICKABLE_ICONS) || s_is_tested) && event->button() == Qt::LeftButton)
    {
        const QModelIndex index = indexAt(event->pos());
        const TOLV_TREE_ITEM_DELEGATE* const delegate = get_icon_delegate(index);
        if (delegate != nullptr)
        {
            update(index);
            // Whatever the item's role: a press on any icon selects nothing, on purpose.
            if (is_on_icon(*delegate, index, event->pos()))
            {
                qDebug() << "Hit the icon!" << index;
                m_pressed_icon_index = index;
                return;
            }
        }
    }
    QTreeView::mousePressEvent(event);
}

void TOLV_TREE_VIEW::mouseReleaseEvent(QMouseEvent* event)
{
    static const bool s_is_tested = cfg_is_on("test_clickable_icons");
    const QPersistentModelIndex pressed = std::exchange(m_pressed_icon_index, QPersistentModelIndex());
    if (has_style(TOLV_TREE_STYLE_CLICKABLE_ICONS) || s_is_tested)
    {
        const QModelIndex index = indexAt(event->pos());
        const TOLV_TREE_ITEM_DELEGATE* const delegate = get_icon_delegate(index);
        if (delegate != nullptr && index.flags().testFlag(Qt::ItemIsEnabled))
        {
            update(index);
            if (index.data(TOLV_TREE_ROLE_CLICKABLE_ICON).toBool() && index == pressed &&
                is_on_icon(*delegate, index, event->pos()))
            {
                qDebug() << "Released over the icon" << index;
                emit icon_clicked(index);
                return;
            }
        }
    }
    QTreeView::mouseReleaseEvent(event);
}

void TOLV_TREE_VIEW::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QPointer<TOLV_TREE_VIEW> self(this);
    emit mouse_double_click(event);
    if (self != nullptr)
        QTreeView::mouseDoubleClickEvent(event);
}

void TOLV_TREE_VIEW::mouseMoveEvent(QMouseEvent* event)
{
    static const bool s_is_tested = cfg_is_on("test_clickable_icons");
    const bool has_clickable_icons = has_style(TOLV_TREE_STYLE_CLICKABLE_ICONS);
    // A drag that began on an icon selects nothing.
    if (!has_clickable_icons || !m_pressed_icon_index.isValid())
        QTreeView::mouseMoveEvent(event);
    if (has_clickable_icons || s_is_tested)
        update(indexAt(event->pos()));
}

// ---- Tool tips ------------------------------------------------------------------------------------------------------

bool TOLV_TREE_VIEW::viewportEvent(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QTreeView::viewportEvent(event);
    const auto* const help_event = static_cast<QHelpEvent*>(event);
    const QModelIndex index = indexAt(help_event->pos());
    if (!index.isValid())
    {
        QToolTip::showText(help_event->globalPos(), QString());
        return false;
    }
    const QVariant tip = index.data(Qt::ToolTipRole);
    const QVariant display = index.data(Qt::DisplayRole);
    if (!display.isValid())
        return QTreeView::viewportEvent(event);
    QString text = tip.toString();
    if (text.isEmpty() && is_text_clipped(index))
        text = display.toString();
    if (!text.isEmpty())
        QToolTip::showText(help_event->globalPos(), text, viewport(), visualRect(index));
    return false;
}

/// Whether the column is too narrow for the item.
bool TOLV_TREE_VIEW::is_text_clipped(const QModelIndex& index) const
{
    const bool is_tree_column = index.column() == 0;
    int width = indentation() * get_item_level(index) + sizeHintForIndex(index).width();
    if (is_tree_column && index.data(Qt::DecorationRole).isValid())
        width += indentation();
    if (is_tree_column && !rootIsDecorated())
        width -= indentation();
    return width > columnWidth(index.column());
}
