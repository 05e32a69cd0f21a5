// The tree of frozen columns under the pointer.

#include "tolv_frozen_tree_view_fixture.h"

#include "tolv_tree_item_delegate.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QHoverEvent>
#include <QSignalSpy>
#include <QToolTip>

namespace
{
class TOLV_FROZEN_TREE_VIEW_HOVER_TEST : public FROZEN_TREE_VIEW_TEST
{
protected:
    void SetUp() override
    {
        FROZEN_TREE_VIEW_TEST::SetUp();
        ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
        GUI_DRIVER::hover(m_main->viewport(), QPoint(300, 100));
    }

    QPoint middle(const QModelIndex& index) const
    {
        return m_frozen->visualRect(index).center();
    }
};
} // namespace

TEST_F(TOLV_FROZEN_TREE_VIEW_HOVER_TEST, each_move_over_an_item_tells_it)
{
    const QSignalSpy entered(m_frozen, SIGNAL(mouse_hover_entered(QModelIndex)));
    GUI_DRIVER::hover(m_frozen->viewport(), middle(block(1)));
    GUI_DRIVER::hover(m_frozen->viewport(), middle(block(1)) + QPoint(1, 0));
    GUI_DRIVER::hover(m_frozen->viewport(), middle(block(2)));
    ASSERT_EQ(3, entered.count());
    EXPECT_EQ(block(1), entered.at(0).at(0).toModelIndex());
    EXPECT_EQ(block(1), entered.at(1).at(0).toModelIndex());
    EXPECT_EQ(block(2), entered.at(2).at(0).toModelIndex());
}

TEST_F(TOLV_FROZEN_TREE_VIEW_HOVER_TEST, the_cell_is_told_not_the_row)
{
    m_frozen->setColumnWidth(0, 70);
    const QSignalSpy entered(m_frozen, SIGNAL(mouse_hover_entered(QModelIndex)));
    GUI_DRIVER::hover(m_frozen->viewport(), QPoint(90, middle(block(3)).y()));
    ASSERT_EQ(1, entered.count());
    EXPECT_EQ(m_model->index(3, 1), entered.at(0).at(0).toModelIndex());
}

TEST_F(TOLV_FROZEN_TREE_VIEW_HOVER_TEST, the_main_tree_tells_nothing)
{
    const QSignalSpy entered(m_frozen, SIGNAL(mouse_hover_entered(QModelIndex)));
    const QSignalSpy left(m_frozen, SIGNAL(mouse_hover_leave()));
    GUI_DRIVER::hover(m_main->viewport(), QPoint(300, 60));
    EXPECT_EQ(0, entered.count());
    EXPECT_EQ(0, left.count());
}

TEST_F(TOLV_FROZEN_TREE_VIEW_HOVER_TEST, below_the_rows_nothing_is_told_until_the_pointer_leaves)
{
    m_model->removeRows(3, BLOCK_COUNT - 3);
    GUI_DRIVER::process_posted();
    const QSignalSpy entered(m_frozen, SIGNAL(mouse_hover_entered(QModelIndex)));
    const QSignalSpy left(m_frozen, SIGNAL(mouse_hover_leave()));
    const int below = m_frozen->visualRect(block(2)).bottom() + 20;
    GUI_DRIVER::hover(m_frozen->viewport(), QPoint(40, below));
    GUI_DRIVER::hover(m_frozen->viewport(), QPoint(41, below));
    EXPECT_EQ(0, entered.count());
    EXPECT_EQ(0, left.count());
    GUI_DRIVER::hover(m_main->viewport(), QPoint(300, below));
    EXPECT_EQ(0, entered.count());
    EXPECT_EQ(1, left.count());
}

TEST_F(TOLV_FROZEN_TREE_VIEW_HOVER_TEST, the_header_is_outside_of_the_viewport)
{
    GUI_DRIVER::hover(m_frozen->viewport(), middle(block(1)));
    const QSignalSpy entered(m_frozen, SIGNAL(mouse_hover_entered(QModelIndex)));
    const QSignalSpy left(m_frozen, SIGNAL(mouse_hover_leave()));
    GUI_DRIVER::hover(m_frozen->header()->viewport(), QPoint(30, 5));
    EXPECT_EQ(1, left.count());
    GUI_DRIVER::hover(m_frozen->viewport(), middle(block(1)));
    EXPECT_EQ(1, left.count());
    EXPECT_EQ(1, entered.count());
}

TEST_F(TOLV_FROZEN_TREE_VIEW_HOVER_TEST, the_end_of_hovering_alone_tells_that_the_pointer_has_left)
{
    const QSignalSpy left(m_frozen, SIGNAL(mouse_hover_leave()));
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(m_frozen->viewport(), &leave);
    EXPECT_EQ(0, left.count());
    QHoverEvent hover_leave(QEvent::HoverLeave, QPoint(-1, -1), QPoint(5, 5));
    QCoreApplication::sendEvent(m_frozen->viewport(), &hover_leave);
    EXPECT_EQ(1, left.count());
}

TEST_F(TOLV_FROZEN_TREE_VIEW_HOVER_TEST, a_drag_selects_as_in_every_tree)
{
    m_frozen->setSelectionMode(QAbstractItemView::ExtendedSelection);
    const QSignalSpy entered(m_frozen, SIGNAL(mouse_hover_entered(QModelIndex)));
    GUI_DRIVER::drag(m_frozen->viewport(), middle(block(1)), middle(block(3)));
    EXPECT_EQ(3, m_frozen->selectionModel()->selectedRows().size());
    EXPECT_LT(10, entered.count());
}

TEST_F(TOLV_FROZEN_TREE_VIEW_HOVER_TEST, a_drag_from_an_icon_selects_unlike_in_other_trees)
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::red);
    m_model->item(1)->setIcon(QIcon(pixmap));
    for (TOLV_TREE_VIEW* const view : {static_cast<TOLV_TREE_VIEW*>(m_frozen), m_main})
    {
        view->set_style(TOLV_TREE_STYLE_CLICKABLE_ICONS);
        view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    }
    const QPoint icon(m_frozen->visualRect(block(1)).left() + 10, middle(block(1)).y());
    GUI_DRIVER::press(m_frozen->viewport(), icon);
    ASSERT_EQ(block(1), m_frozen->get_pressed_icon_index());
    GUI_DRIVER::move_to(m_frozen->viewport(), middle(block(2)));
    GUI_DRIVER::move_to(m_frozen->viewport(), middle(block(3)));
    EXPECT_TRUE(m_frozen->selectionModel()->isSelected(block(3)));
    GUI_DRIVER::release(m_frozen->viewport(), middle(block(3)));

    m_frozen->hide();
    m_main->clearSelection();
    GUI_DRIVER::press(m_main->viewport(), icon);
    ASSERT_EQ(block(1), m_main->get_pressed_icon_index());
    GUI_DRIVER::move_to(m_main->viewport(), middle(block(2)));
    GUI_DRIVER::move_to(m_main->viewport(), middle(block(3)));
    EXPECT_TRUE(m_main->selectionModel()->selectedIndexes().isEmpty());
    GUI_DRIVER::release(m_main->viewport(), middle(block(3)));
}

TEST_F(TOLV_FROZEN_TREE_VIEW_HOVER_TEST, a_text_that_is_cut_off_shows_in_a_tool_tip)
{
    m_model->item(2)->setText(QStringLiteral("a block with a name that no frozen column can show as a whole"));
    GUI_DRIVER::hover(m_frozen->viewport(), middle(block(2)));
    EXPECT_TRUE(GUI_DRIVER::wait_for([] { return QToolTip::isVisible(); }));
    EXPECT_EQ(m_model->item(2)->text(), QToolTip::text());
    QToolTip::hideText();
    EXPECT_TRUE(GUI_DRIVER::wait_for([] { return !QToolTip::isVisible(); }));
}
