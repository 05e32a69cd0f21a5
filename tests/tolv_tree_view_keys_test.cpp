// Keys that go from cell to cell, and scrolling.

#include "tolv_tree_view_fixture.h"

#include "gui_driver.h"

#include <QHeaderView>
#include <QScrollBar>

namespace
{
class TOLV_TREE_VIEW_KEYS_TEST : public TREE_VIEW_TEST
{
protected:
    void SetUp() override
    {
        TREE_VIEW_TEST::SetUp();
        m_view->setSelectionBehavior(QAbstractItemView::SelectItems);
        m_view->expand(index(m_top));
        ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    }

    /// Where the keys lead from a cell.
    QModelIndex press(const QModelIndex& from, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        m_view->setCurrentIndex(from);
        GUI_DRIVER::key_click(m_view, key, modifiers);
        return m_view->currentIndex();
    }
};
} // namespace

TEST_F(TOLV_TREE_VIEW_KEYS_TEST, left_and_right_go_from_cell_to_cell)
{
    EXPECT_EQ(index(m_fifo, 1), press(index(m_fifo), Qt::Key_Right));
    EXPECT_EQ(index(m_fifo, 2), press(index(m_fifo, 1), Qt::Key_Right));
    EXPECT_EQ(index(m_fifo, 1), press(index(m_fifo, 2), Qt::Key_Left));
    EXPECT_EQ(index(m_fifo), press(index(m_fifo, 1), Qt::Key_Left));
    EXPECT_EQ(QModelIndexList{index(m_fifo)}, m_view->selectionModel()->selectedIndexes());
}

TEST_F(TOLV_TREE_VIEW_KEYS_TEST, right_on_the_last_and_left_on_the_first_column_do_nothing)
{
    EXPECT_EQ(index(m_top, 2), press(index(m_top, 2), Qt::Key_Right));
    EXPECT_EQ(index(m_top), press(index(m_top), Qt::Key_Left));
    m_view->setColumnHidden(2, true);
    EXPECT_EQ(index(m_top, 1), press(index(m_top, 1), Qt::Key_Right));
    m_view->setColumnHidden(0, true);
    EXPECT_EQ(index(m_top, 1), press(index(m_top, 1), Qt::Key_Left));
}

TEST_F(TOLV_TREE_VIEW_KEYS_TEST, left_and_right_never_expand_or_collapse)
{
    press(index(m_fifo), Qt::Key_Right);
    EXPECT_FALSE(m_view->isExpanded(index(m_fifo)));
    press(index(m_top), Qt::Key_Left);
    EXPECT_TRUE(m_view->isExpanded(index(m_top)));
}

TEST_F(TOLV_TREE_VIEW_KEYS_TEST, hidden_columns_are_jumped_over_both_ways)
{
    m_view->setColumnHidden(1, true);
    EXPECT_EQ(index(m_fifo, 2), press(index(m_fifo), Qt::Key_Right));
    EXPECT_EQ(index(m_fifo), press(index(m_fifo, 2), Qt::Key_Left));
}

TEST_F(TOLV_TREE_VIEW_KEYS_TEST, left_and_right_follow_columns_that_were_moved)
{
    m_view->header()->moveSection(2, 0); // Area, Name, Type
    EXPECT_EQ(index(m_fifo), press(index(m_fifo, 2), Qt::Key_Right));
    EXPECT_EQ(index(m_fifo, 2), press(index(m_fifo), Qt::Key_Left));
    EXPECT_EQ(index(m_fifo, 1), press(index(m_fifo, 1), Qt::Key_Right));
}

TEST_F(TOLV_TREE_VIEW_KEYS_TEST, left_is_left_where_columns_count_from_the_right)
{
    m_view->setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(index(m_fifo, 1), press(index(m_fifo), Qt::Key_Left));
    EXPECT_EQ(index(m_fifo), press(index(m_fifo, 1), Qt::Key_Right));
}

TEST_F(TOLV_TREE_VIEW_KEYS_TEST, up_and_down_stay_in_the_column)
{
    EXPECT_EQ(index(m_clk, 2), press(index(m_fifo, 2), Qt::Key_Down));
    EXPECT_EQ(index(m_spare, 1), press(index(m_clk, 1), Qt::Key_Down));
    EXPECT_EQ(index(m_top, 1), press(index(m_fifo, 1), Qt::Key_Up));
    EXPECT_EQ(index(m_top, 1), press(index(m_top, 1), Qt::Key_Up));
    EXPECT_EQ(index(m_spare, 2), press(index(m_spare, 2), Qt::Key_Down));
}

TEST_F(TOLV_TREE_VIEW_KEYS_TEST, a_row_without_the_column_is_entered_in_the_first_one_alone)
{
    auto* const short_row = new QStandardItem(QStringLiteral("short"));
    m_ram->appendRow(short_row); // the only row below: one column
    m_view->expandAll();
    EXPECT_EQ(index(m_ram, 2), press(index(m_ram, 2), Qt::Key_Down));
    EXPECT_EQ(index(short_row), press(index(m_ram), Qt::Key_Down));
}

TEST_F(TOLV_TREE_VIEW_KEYS_TEST, the_row_that_a_derived_class_finds_is_entered_in_the_same_column_where_it_has_it)
{
    /// Goes to a row of its own choice.
    class CHOOSING_VIEW : public TOLV_TREE_VIEW
    {
    public:
        using TOLV_TREE_VIEW::TOLV_TREE_VIEW;
        QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override
        {
            m_is_up = action == MoveUp;
            m_is_down = action == MoveDown;
            m_modifiers = modifiers;
            return m_choice;
        }
        QPersistentModelIndex m_choice;
        bool m_is_up = false;
        bool m_is_down = false;
        Qt::KeyboardModifiers m_modifiers;
    };
    auto* const short_row = new QStandardItem(QStringLiteral("short"));
    m_ram->appendRow(short_row);
    CHOOSING_VIEW view(m_window.get(), 0);
    view.setModel(m_model.get());
    view.setSelectionBehavior(QAbstractItemView::SelectItems);
    view.resize(600, 400);
    view.show();

    view.m_choice = index(m_spare);
    view.setCurrentIndex(index(m_top, 2));
    GUI_DRIVER::key_click(&view, Qt::Key_Down, Qt::ControlModifier);
    EXPECT_TRUE(view.m_is_down);
    EXPECT_EQ(Qt::ControlModifier, view.m_modifiers);
    EXPECT_EQ(index(m_spare, 2), view.currentIndex());
    view.m_choice = index(short_row);
    GUI_DRIVER::key_click(&view, Qt::Key_Up, Qt::ShiftModifier);
    EXPECT_TRUE(view.m_is_up);
    EXPECT_EQ(Qt::ShiftModifier, view.m_modifiers);
    EXPECT_EQ(index(short_row), view.currentIndex());
}

TEST_F(TOLV_TREE_VIEW_KEYS_TEST, plus_expands_and_minus_collapses)
{
    for (const int column : {0, 2})
    {
        EXPECT_EQ(index(m_fifo, column), press(index(m_fifo, column), Qt::Key_Plus));
        EXPECT_TRUE(m_view->isExpanded(index(m_fifo)));
        EXPECT_EQ(index(m_fifo, column), press(index(m_fifo, column), Qt::Key_Minus));
        EXPECT_FALSE(m_view->isExpanded(index(m_fifo)));
    }
}

TEST_F(TOLV_TREE_VIEW_KEYS_TEST, plus_on_a_leaf_keeps_the_current_cell)
{
    const QRect below = m_view->visualRect(index(m_spare));
    EXPECT_EQ(index(m_clk), press(index(m_clk), Qt::Key_Plus));
    EXPECT_EQ(below, m_view->visualRect(index(m_spare)));
}

TEST_F(TOLV_TREE_VIEW_KEYS_TEST, all_other_keys_are_qts)
{
    press(index(m_top), Qt::Key_Asterisk);
    EXPECT_TRUE(m_view->isExpanded(index(m_fifo)));
    EXPECT_EQ(index(m_spare), press(index(m_top), Qt::Key_End));
    EXPECT_EQ(index(m_top), press(index(m_spare), Qt::Key_Home));
}

TEST_F(TOLV_TREE_VIEW_KEYS_TEST, no_current_cell_is_no_obstacle)
{
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Plus, Qt::Key_Minus})
        EXPECT_EQ(QModelIndex(), press(QModelIndex(), key)) << key;
    EXPECT_EQ(index(m_top), press(QModelIndex(), Qt::Key_Down));
    m_view->setModel(nullptr);
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down, Qt::Key_Plus, Qt::Key_Minus})
        EXPECT_EQ(QModelIndex(), press(QModelIndex(), key)) << key;
}

TEST_F(TOLV_TREE_VIEW_KEYS_TEST, where_rows_or_columns_are_selected_the_keys_are_those_of_a_plain_tree)
{
    for (const auto behavior : {QAbstractItemView::SelectRows, QAbstractItemView::SelectColumns})
    {
        m_view->setSelectionBehavior(behavior);
        EXPECT_EQ(index(m_fifo), press(index(m_fifo), Qt::Key_Right));
        EXPECT_TRUE(m_view->isExpanded(index(m_fifo)));
        EXPECT_EQ(index(m_fifo), press(index(m_fifo), Qt::Key_Left));
        EXPECT_FALSE(m_view->isExpanded(index(m_fifo)));
        EXPECT_EQ(index(m_clk), press(index(m_fifo), Qt::Key_Down));
    }
}

// ---- Scrolling ------------------------------------------------------------------------------------------------------

namespace
{
class TOLV_TREE_VIEW_SCROLLING_TEST : public TOLV_TREE_VIEW_KEYS_TEST
{
protected:
    void SetUp() override
    {
        TOLV_TREE_VIEW_KEYS_TEST::SetUp();
        for (int row = 0; row < 100; ++row)
            add_row(m_spare, "pin", "net", row);
        m_view->expandAll();
        for (int column = 0; column < 3; ++column)
            m_view->setColumnWidth(column, 500);
        GUI_DRIVER::process_posted();
        ASSERT_LT(800, m_view->horizontalScrollBar()->maximum());
    }
};
} // namespace

TEST_F(TOLV_TREE_VIEW_SCROLLING_TEST, scrolling_to_an_item_keeps_the_columns_where_they_are)
{
    const QModelIndex last = index(m_spare->child(m_spare->rowCount() - 1), 2);
    for (const int value : {0, 123})
    {
        m_view->scrollToTop();
        m_view->horizontalScrollBar()->setValue(value);
        m_view->scrollTo(last);
        EXPECT_EQ(value, m_view->horizontalScrollBar()->value());
        EXPECT_TRUE(m_view->viewport()->rect().intersects(m_view->visualRect(last.sibling(last.row(), 0))));
        EXPECT_LT(0, m_view->verticalScrollBar()->value());
    }
    m_view->scrollTo(index(m_top), QAbstractItemView::PositionAtTop);
    EXPECT_EQ(0, m_view->verticalScrollBar()->value());
}

TEST_F(TOLV_TREE_VIEW_SCROLLING_TEST, the_keys_scroll_sideways)
{
    press(index(m_top), Qt::Key_Right);
    EXPECT_LT(0, m_view->horizontalScrollBar()->value());
    EXPECT_TRUE(m_view->viewport()->rect().contains(m_view->visualRect(index(m_top, 1))));
    GUI_DRIVER::key_click(m_view, Qt::Key_Left);
    EXPECT_EQ(0, m_view->horizontalScrollBar()->value());
}
