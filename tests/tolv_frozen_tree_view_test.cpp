// The tree of frozen columns: how it takes expansion and position from the main tree.

#include "tolv_frozen_tree_view_fixture.h"

#include "tolv_global.h"
#include "tolv_tree_header_view.h"

#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>

using TOLV_FROZEN_TREE_VIEW_TEST = FROZEN_TREE_VIEW_TEST;

namespace
{
/// A chain of items, each the only child of the one before: its number is the item's depth.
class CHAIN_MODEL : public QAbstractItemModel
{
public:
    explicit CHAIN_MODEL(int depth) : m_depth(depth)
    {
    }

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override
    {
        const int depth = parent.isValid() ? static_cast<int>(parent.internalId()) + 1 : 0;
        return row == 0 && column == 0 && depth < m_depth ? at(depth) : QModelIndex();
    }
    QModelIndex parent(const QModelIndex& child) const override
    {
        return child.isValid() && child.internalId() > 0 ? at(static_cast<int>(child.internalId()) - 1) : QModelIndex();
    }
    int rowCount(const QModelIndex& parent = QModelIndex()) const override
    {
        return !parent.isValid() || static_cast<int>(parent.internalId()) + 1 < m_depth ? 1 : 0;
    }
    int columnCount(const QModelIndex& /*parent*/ = QModelIndex()) const override
    {
        return 1;
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        return role == Qt::DisplayRole ? QVariant(static_cast<int>(index.internalId())) : QVariant();
    }

    QModelIndex at(int depth) const
    {
        return createIndex(0, 0, static_cast<quintptr>(depth));
    }

private:
    int m_depth;
};

/// Items that promise rows and have none.
class PROMISING_MODEL : public QStandardItemModel
{
public:
    bool hasChildren(const QModelIndex& parent = QModelIndex()) const override
    {
        return !parent.isValid() || parent.column() == 0;
    }
};
} // namespace

// ---- The view -------------------------------------------------------------------------------------------------------

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, a_new_view_is_a_plain_tree_in_the_main_one)
{
    const TOLV_FROZEN_TREE_VIEW view(m_main);
    EXPECT_EQ(m_main, view.parentWidget());
    EXPECT_EQ(0U, view.get_style());
    EXPECT_EQ(nullptr, view.model());
    EXPECT_NE(nullptr, qobject_cast<TOLV_TREE_HEADER_VIEW*>(view.header()));
    EXPECT_EQ(Qt::Horizontal, view.header()->orientation());
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, the_view_dies_with_the_main_one)
{
    const QPointer<TOLV_FROZEN_TREE_VIEW> frozen(m_frozen);
    delete m_main;
    EXPECT_EQ(nullptr, frozen);
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, nothing_follows_before_the_host_asks_for_it)
{
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    m_main->expand(block(2));
    m_main->verticalScrollBar()->setValue(9);
    GUI_DRIVER::process_posted();
    ASSERT_EQ(9, scroll_value(m_main));
    EXPECT_EQ(QStringList(), get_expanded(*m_frozen));
    EXPECT_EQ(0, scroll_value(m_frozen));
    m_frozen->expand(block(3));
    m_frozen->verticalScrollBar()->setValue(4);
    GUI_DRIVER::process_posted();
    EXPECT_EQ(QStringList("2"), get_expanded(*m_main));
    EXPECT_EQ(9, scroll_value(m_main));
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, the_header_tells_when_the_pointer_enters_it)
{
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    GUI_DRIVER::hover(m_frozen->viewport());
    const QSignalSpy entered_header(m_frozen->header(), SIGNAL(mouse_enter()));
    const QSignalSpy entered(m_frozen, SIGNAL(header_mouse_enter()));
    const QSignalSpy entered_main(m_main, SIGNAL(header_mouse_enter()));
    GUI_DRIVER::hover(m_frozen->header()->viewport(), QPoint(30, 5));
    GUI_DRIVER::hover(m_frozen->header()->viewport(), QPoint(40, 5));
    EXPECT_EQ(1, entered_header.count());
    EXPECT_EQ(1, entered.count());
    EXPECT_EQ(0, entered_main.count());
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, the_signals_and_slots_have_the_arguments_that_hosts_connect)
{
    const QMetaObject& meta = TOLV_FROZEN_TREE_VIEW::staticMetaObject;
    EXPECT_LE(0, meta.indexOfSignal("mouse_hover_entered(QModelIndex)"));
    EXPECT_LE(0, meta.indexOfSignal("mouse_hover_leave()"));
    EXPECT_LE(0, meta.indexOfSlot("expand_all()"));
    EXPECT_LE(0, meta.indexOfSlot("collapse_all()"));
}

// ---- Expansion ------------------------------------------------------------------------------------------------------

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, items_are_expanded_and_collapsed_as_in_the_main_tree)
{
    m_main->expand(block(1));
    m_main->expand(pin(1, 0));
    m_main->expand(block(5));
    m_frozen->expand(block(0));
    m_frozen->expand(block(5));
    m_frozen->sync_expanded_state();
    EXPECT_EQ(QStringList({"1", "1/0", "5"}), get_expanded(*m_frozen));
    EXPECT_EQ(QStringList({"1", "1/0", "5"}), get_expanded(*m_main));

    m_main->collapse(block(1));
    m_frozen->sync_expanded_state();
    EXPECT_FALSE(m_frozen->isExpanded(block(1)));
    EXPECT_EQ(get_expanded(*m_main), get_expanded(*m_frozen));
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, an_expanded_item_below_a_collapsed_one_stays_expanded_in_both)
{
    m_main->expand(block(1));
    m_main->expand(pin(1, 0));
    m_frozen->sync_expanded_state();
    m_main->collapse(block(1));
    m_frozen->sync_expanded_state();
    EXPECT_EQ(QStringList("1/0"), get_expanded(*m_main));
    EXPECT_EQ(QStringList("1/0"), get_expanded(*m_frozen));

    // Also where it was never visible in this view.
    TOLV_FROZEN_TREE_VIEW late(m_main);
    late.setModel(m_model.get());
    late.sync_expanded_state();
    EXPECT_EQ(QStringList("1/0"), get_expanded(late));
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, many_changes_are_as_good_as_few)
{
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    m_frozen->expandAll();
    for (int row = 0; row < BLOCK_COUNT; row += 2)
    {
        m_main->expand(block(row));
        m_main->expand(pin(row, 0));
    }
    m_frozen->sync_expanded_state(m_main, QModelIndex());
    ASSERT_EQ(m_main->viewport()->height(), m_frozen->viewport()->height());
    EXPECT_EQ(m_main->verticalScrollBar()->maximum(), m_frozen->verticalScrollBar()->maximum());
    EXPECT_EQ(BLOCK_COUNT, get_expanded(*m_frozen).size());
    EXPECT_EQ(get_expanded(*m_main), get_expanded(*m_frozen));
    // The rows stand where they should, at once.
    const QModelIndex seen = pin(2, 0);
    EXPECT_EQ(m_main->visualRect(seen).top(), m_frozen->visualRect(seen).top());
    EXPECT_LT(0, m_frozen->visualRect(seen).top());
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, items_without_rows_are_left_alone)
{
    m_main->expand(block(1));
    m_main->expand(pin(1, 1));
    m_frozen->expand(block(2));
    m_frozen->expand(pin(2, 1));
    ASSERT_TRUE(m_main->isExpanded(pin(1, 1)));
    m_frozen->sync_expanded_state();
    EXPECT_FALSE(m_frozen->isExpanded(pin(1, 1)));
    EXPECT_TRUE(m_frozen->isExpanded(pin(2, 1)));
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, items_that_only_promise_rows_are_left_alone)
{
    PROMISING_MODEL promising;
    fill(promising);
    m_main->setModel(&promising);
    m_frozen->setModel(&promising);
    const QModelIndex empty = promising.index(1, 0, promising.index(0, 0));
    m_main->expand(promising.index(0, 0));
    m_main->expand(empty);
    m_frozen->sync_expanded_state();
    EXPECT_TRUE(m_frozen->isExpanded(promising.index(0, 0)));
    EXPECT_TRUE(m_main->isExpanded(empty));
    EXPECT_FALSE(m_frozen->isExpanded(empty));
    m_main->setModel(nullptr);
    m_frozen->setModel(nullptr);
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, only_what_changes_is_told_parents_first)
{
    m_main->expand(block(1));
    m_main->expand(pin(1, 0));
    m_main->expand(block(5));
    m_frozen->expand(block(5));
    m_frozen->expand(block(7));
    QStringList told;
    const auto note = [log = &told](QChar sign)
    { return [log, sign](const QModelIndex& index) { *log << sign + index.data().toString(); }; };
    QObject::connect(m_frozen, &QTreeView::expanded, note(QLatin1Char('+')));
    QObject::connect(m_frozen, &QTreeView::collapsed, note(QLatin1Char('-')));
    m_frozen->sync_expanded_state();
    EXPECT_EQ(QStringList({"+block 1", "+pin 0", "-block 7"}), told);
    m_frozen->sync_expanded_state();
    EXPECT_EQ(3, told.size());
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, one_item_can_be_brought_in_line_with_all_below_it)
{
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    for (const int row : {1, 2})
    {
        m_main->expand(block(row));
        m_main->expand(pin(row, 0));
    }
    m_main->verticalScrollBar()->setValue(3);
    ASSERT_EQ(3, scroll_value(m_main));
    m_frozen->sync_expanded_state(m_main, block(2));
    EXPECT_EQ(QStringList({"2", "2/0"}), get_expanded(*m_frozen));
    EXPECT_EQ(0, scroll_value(m_frozen));
    m_frozen->sync_expanded_state(m_main, pin(1, 0));
    EXPECT_EQ(QStringList({"1/0", "2", "2/0"}), get_expanded(*m_frozen));
    m_frozen->sync_expanded_state(m_main, QModelIndex());
    EXPECT_EQ(QStringList({"1", "1/0", "2", "2/0"}), get_expanded(*m_frozen));
    EXPECT_EQ(0, scroll_value(m_frozen));
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, any_other_tree_can_stand_for_the_main_one)
{
    TOLV_TREE_VIEW other(m_window.get(), 0);
    other.setModel(m_model.get());
    other.expand(block(4));
    m_main->expand(block(1));
    m_frozen->sync_expanded_state(&other, QModelIndex());
    EXPECT_EQ(QStringList("4"), get_expanded(*m_frozen));
    m_frozen->sync_expanded_state(nullptr, QModelIndex());
    EXPECT_EQ(QStringList("4"), get_expanded(*m_frozen));
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, an_index_of_another_model_is_ignored)
{
    CHAIN_MODEL chain(9);
    const CHAIN_MODEL foreign(9);
    m_main->setModel(&chain);
    m_frozen->setModel(&chain);
    m_main->expand(chain.at(3));
    m_frozen->sync_expanded_state(m_main, foreign.at(2));
    EXPECT_FALSE(m_frozen->isExpanded(chain.at(3)));
    m_frozen->sync_expanded_state(m_main, chain.at(2));
    EXPECT_TRUE(m_frozen->isExpanded(chain.at(3)));
    m_main->setModel(nullptr);
    m_frozen->setModel(nullptr);
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, a_tree_may_be_deeper_than_a_stack_of_calls)
{
    constexpr int DEPTH = 400000;
    CHAIN_MODEL chain(DEPTH);
    m_main->setModel(&chain);
    m_frozen->setModel(&chain);
    m_main->expand(chain.at(DEPTH - 2));
    ASSERT_TRUE(m_main->isExpanded(chain.at(DEPTH - 2)));
    m_frozen->sync_expanded_state();
    EXPECT_TRUE(m_frozen->isExpanded(chain.at(DEPTH - 2)));
    EXPECT_FALSE(m_frozen->isExpanded(chain.at(DEPTH - 3)));
    m_main->setModel(nullptr);
    m_frozen->setModel(nullptr);
}

// ---- The vertical position ------------------------------------------------------------------------------------------

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, the_position_is_taken_when_the_expansion_allows_it)
{
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    m_main->expandAll();
    m_main->verticalScrollBar()->setValue(100);
    ASSERT_EQ(100, scroll_value(m_main));
    ASSERT_GT(100, m_frozen->verticalScrollBar()->maximum());
    m_frozen->sync_expanded_state();
    EXPECT_EQ(100, scroll_value(m_frozen));
    EXPECT_EQ(m_main->indexAt(QPoint(5, 5)), m_frozen->indexAt(QPoint(5, 5)));
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, the_position_is_taken_at_once_by_a_view_with_a_new_model)
{
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    m_main->verticalScrollBar()->setValue(17);
    ASSERT_EQ(17, scroll_value(m_main));
    m_frozen->setModel(nullptr);
    m_frozen->setModel(m_model.get());
    m_frozen->sync_expanded_state();
    EXPECT_EQ(17, scroll_value(m_frozen));
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, an_animated_view_takes_the_position_at_once_too)
{
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    m_main->expand(block(1));
    m_main->verticalScrollBar()->setValue(m_main->verticalScrollBar()->maximum());
    m_frozen->setAnimated(true);
    const int maximum = m_frozen->verticalScrollBar()->maximum();
    ASSERT_EQ(m_main->viewport()->height(), m_frozen->viewport()->height());
    ASSERT_LT(maximum, scroll_value(m_main));
    m_frozen->sync_expanded_state();
    EXPECT_EQ(scroll_value(m_main), scroll_value(m_frozen));
    EXPECT_TRUE(m_frozen->isAnimated());
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, with_another_model_the_position_alone_is_taken)
{
    TOLV_TREE_MODEL other(nullptr);
    fill(other);
    m_frozen->setModel(&other);
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    m_main->expand(block(1));
    m_frozen->expand(other.index(3, 0));
    m_main->verticalScrollBar()->setValue(6);
    m_frozen->sync_expanded_state();
    EXPECT_EQ(6, scroll_value(m_frozen));
    EXPECT_EQ(QStringList("3"), get_expanded(*m_frozen));
    EXPECT_EQ(QStringList("1"), get_expanded(*m_main));

    m_frozen->sync_expanded_state(m_main, QModelIndex());
    EXPECT_EQ(QStringList("3"), get_expanded(*m_frozen));
    m_frozen->setModel(nullptr);
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, one_view_without_a_model_is_a_view_with_another_one)
{
    m_main->expand(block(1));
    m_frozen->setModel(nullptr);
    m_frozen->sync_expanded_state();
    m_frozen->setModel(m_model.get());
    m_frozen->expand(block(2));
    m_main->setModel(nullptr);
    m_frozen->sync_expanded_state();
    EXPECT_EQ(QStringList("2"), get_expanded(*m_frozen));
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, two_views_without_a_model_are_an_internal_error)
{
    m_main->setModel(nullptr);
    m_frozen->setModel(nullptr);
    const INTERNAL_ERROR_TRAP trap;
    const TRAPPED_INTERNAL_ERROR error = CATCH_INTERNAL_ERROR(m_frozen->sync_expanded_state());
    EXPECT_EQ("view_model != NULL", error.text);
    EXPECT_EQ("TOLV", error.tag);
    EXPECT_EQ("tolv_frozen_tree_view", error.file);
    EXPECT_INTERNAL_ERROR(m_frozen->sync_expanded_state(m_main, QModelIndex()), "view_model != NULL");
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, a_view_without_a_main_one_stays_as_it_is)
{
    TOLV_FROZEN_TREE_VIEW alone(nullptr);
    alone.resize(140, 300);
    alone.setModel(m_model.get());
    ASSERT_TRUE(GUI_DRIVER::show(&alone));
    alone.expand(block(1));
    alone.verticalScrollBar()->setValue(5);
    ASSERT_EQ(5, scroll_value(&alone));
    alone.sync_expanded_state();
    EXPECT_EQ(QStringList("1"), get_expanded(alone));
    EXPECT_EQ(5, scroll_value(&alone));
    alone.expand_all();
    EXPECT_EQ(5, scroll_value(&alone));
    alone.collapse_all();
    EXPECT_EQ(QStringList(), get_expanded(alone));
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, expanding_all_ends_where_the_main_tree_stands)
{
    QPushButton button(m_window.get());
    TOLV_SAFE_CONNECT(&button, SIGNAL(clicked()), m_frozen, SLOT(expand_all()));
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    m_main->expandAll();
    const int middle = m_main->verticalScrollBar()->maximum() / 2;
    m_main->verticalScrollBar()->setValue(middle);
    m_frozen->verticalScrollBar()->setValue(20);
    ASSERT_GT(middle, m_frozen->verticalScrollBar()->maximum());
    button.click();
    EXPECT_EQ(middle, scroll_value(m_frozen));
    EXPECT_TRUE(m_frozen->isExpanded(block(BLOCK_COUNT - 1)));
    EXPECT_TRUE(m_frozen->isExpanded(pin(BLOCK_COUNT - 1, 0)));
    EXPECT_EQ(get_expanded(*m_main), get_expanded(*m_frozen));
}

TEST_F(TOLV_FROZEN_TREE_VIEW_TEST, collapsing_all_ends_where_the_main_tree_stands)
{
    QPushButton button(m_window.get());
    TOLV_SAFE_CONNECT(&button, SIGNAL(clicked()), m_frozen, SLOT(collapse_all()));
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    m_main->verticalScrollBar()->setValue(7);
    m_frozen->expandAll();
    m_frozen->verticalScrollBar()->setValue(60);
    ASSERT_EQ(60, scroll_value(m_frozen));
    button.click();
    EXPECT_EQ(7, scroll_value(m_frozen));
    EXPECT_EQ(QStringList(), get_expanded(*m_frozen));
}
