#include "gui_test.h"
#include "internal_error_trap.h"

#include "msg_internal_error.h"
#include "tolv_tree_model.h"

#include <QAbstractItemModelTester>

#include <algorithm>
#include <random>

namespace
{
/// Three rows at the top, two below the first, one below the second of these:
///     a (a1, a2 (a21)), b, c
class TREE_MODEL : public TOLV_TEST
{
protected:
    void SetUp() override
    {
        TOLV_TEST::SetUp();
        m_model.setColumnCount(2);
        m_a = add(m_model.invisibleRootItem(), "a");
        m_a1 = add(m_a, "a1");
        m_a2 = add(m_a, "a2");
        m_a21 = add(m_a2, "a21");
        m_b = add(m_model.invisibleRootItem(), "b");
        m_c = add(m_model.invisibleRootItem(), "c");
    }

    static QStandardItem* add(QStandardItem* parent, const char* name)
    {
        auto* item = new QStandardItem(QString::fromLatin1(name));
        parent->appendRow({item, new QStandardItem(QStringLiteral("cell of %1").arg(QLatin1String(name)))});
        return item;
    }

    QString name_of(const QModelIndex& index) const
    {
        return index.isValid() ? index.data().toString() : QStringLiteral("none");
    }

    QStringList names_of(const QList<QModelIndex>& list) const
    {
        QStringList names;
        for (const QModelIndex& index : list)
            names.append(name_of(index));
        return names;
    }

    TOLV_TREE_MODEL m_model;
    QStandardItem* m_a = nullptr;
    QStandardItem* m_a1 = nullptr;
    QStandardItem* m_a2 = nullptr;
    QStandardItem* m_a21 = nullptr;
    QStandardItem* m_b = nullptr;
    QStandardItem* m_c = nullptr;
};

TEST_F(TREE_MODEL, is_a_sound_item_model)
{
    const QAbstractItemModelTester tester(&m_model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    add(m_b, "b1");
    m_model.removeRow(0);
    EXPECT_EQ(3, m_model.get_total_count(nullptr));
}

TEST_F(TREE_MODEL, has_its_parent)
{
    QObject parent;
    auto* model = new TOLV_TREE_MODEL(&parent);
    EXPECT_EQ(&parent, model->parent());
}

TEST_F(TREE_MODEL, roles_have_their_values)
{
    EXPECT_EQ(7256, TOLV_TREE_ROLE_CLICKABLE_ICON);
    EXPECT_EQ(258, TOLV_TREE_ROLE_RADIO_STATE);
    EXPECT_EQ(259, TOLV_TREE_ROLE_RADIO_BUTTON);
}

TEST_F(TREE_MODEL, the_next_sibling_is_one_row_down_in_the_same_column)
{
    EXPECT_EQ(m_b->index(), m_model.get_next_sibling(m_a->index()));
    EXPECT_EQ(m_model.index(1, 1), m_model.get_next_sibling(m_model.index(0, 1)));
    EXPECT_FALSE(m_model.get_next_sibling(m_c->index()).isValid());
    EXPECT_FALSE(m_model.get_next_sibling(QModelIndex()).isValid());
}

TEST_F(TREE_MODEL, the_previous_sibling_is_one_row_up_in_the_same_column)
{
    EXPECT_EQ(m_b->index(), m_model.get_prev_sibling(m_c->index()));
    EXPECT_EQ(m_model.index(1, 1), m_model.get_prev_sibling(m_model.index(2, 1)));
    EXPECT_FALSE(m_model.get_prev_sibling(m_a->index()).isValid());
    EXPECT_FALSE(m_model.get_prev_sibling(QModelIndex()).isValid());
}

TEST_F(TREE_MODEL, the_walk_forward_goes_depth_first_and_ends)
{
    QStringList names;
    for (QModelIndex i = m_a->index(); i.isValid(); i = m_model.get_next(i))
        names.append(name_of(i));
    EXPECT_EQ(QStringList({"a", "a1", "a2", "a21", "b", "c"}), names);
    EXPECT_FALSE(m_model.get_next(m_c->index()).isValid());
    EXPECT_FALSE(m_model.get_next(QModelIndex()).isValid());
}

TEST_F(TREE_MODEL, the_walk_forward_climbs_out_of_the_last_branch_and_ends)
{
    add(add(m_c, "c1"), "c11");
    EXPECT_FALSE(m_model.get_next(m_c->child(0)->child(0)->index()).isValid());
}

TEST_F(TREE_MODEL, an_index_of_another_model_has_no_next_one)
{
    QStandardItemModel other;
    other.appendRow(new QStandardItem(QStringLiteral("other")));
    other.appendRow(new QStandardItem(QStringLiteral("more")));
    EXPECT_FALSE(m_model.get_next(other.index(0, 0)).isValid());
}

TEST_F(TREE_MODEL, the_walk_backward_is_the_walk_forward_reversed)
{
    QStringList names;
    for (QModelIndex i = m_c->index(); i.isValid(); i = m_model.get_prev(i))
        names.append(name_of(i));
    EXPECT_EQ(QStringList({"c", "b", "a21", "a2", "a1", "a"}), names);
    EXPECT_FALSE(m_model.get_prev(m_a->index()).isValid());
    EXPECT_FALSE(m_model.get_prev(QModelIndex()).isValid());
}

TEST_F(TREE_MODEL, the_last_node_is_the_deepest_last_descendant)
{
    EXPECT_EQ("a21", name_of(m_model.get_last(m_a->index())).toStdString());
    EXPECT_EQ("b", name_of(m_model.get_last(m_b->index())).toStdString());
    EXPECT_EQ("c", name_of(m_model.get_last(QModelIndex())).toStdString());
    add(m_c, "c1");
    EXPECT_EQ("c1", name_of(m_model.get_last(QModelIndex())).toStdString());
}

TEST_F(TREE_MODEL, an_empty_model_has_no_last_node)
{
    const TOLV_TREE_MODEL empty;
    EXPECT_FALSE(empty.get_last(QModelIndex()).isValid());
}

TEST_F(TREE_MODEL, a_branch_whose_last_row_has_no_item_ends_there)
{
    m_c->setChild(1, 1, new QStandardItem(QStringLiteral("only a cell")));
    EXPECT_EQ(m_c->index(), m_model.get_last(QModelIndex()));
}

TEST_F(TREE_MODEL, the_total_count_is_that_of_all_descendants)
{
    EXPECT_EQ(6, m_model.get_total_count(nullptr));
    EXPECT_EQ(6, m_model.get_total_count(m_model.invisibleRootItem()));
    EXPECT_EQ(3, m_model.get_total_count(m_a));
    EXPECT_EQ(0, m_model.get_total_count(m_b));
    m_a2->removeRow(0);
    EXPECT_EQ(5, m_model.get_total_count(nullptr));
}

TEST_F(TREE_MODEL, a_row_without_an_item_stops_the_count)
{
    m_b->setRowCount(1);
    const TRAPPED_INTERNAL_ERROR error = CATCH_INTERNAL_ERROR(m_model.get_total_count(nullptr));
    EXPECT_EQ("child != NULL", error.text);
    EXPECT_EQ("TOLV", error.tag);
    EXPECT_EQ("tolv_tree_model", error.file);
}

TEST_F(TREE_MODEL, behind_a_row_without_an_item_nothing_is_counted_when_the_report_returns)
{
    m_b->setRowCount(3);
    int report_count = 0;
    const auto old_handler = MSG_INTERNAL_ERROR::set_handler([&report_count](auto&&...) { ++report_count; });
    EXPECT_EQ(3, m_model.get_total_count(m_b));
    MSG_INTERNAL_ERROR::set_handler(old_handler);
    EXPECT_EQ(1, report_count);
}

TEST_F(TREE_MODEL, a_very_deep_tree_is_counted)
{
    QStandardItem* item = m_b;
    for (int i = 0; i < 20000; ++i)
    {
        auto* child = new QStandardItem;
        item->appendRow(child);
        item = child;
    }
    EXPECT_EQ(20006, m_model.get_total_count(nullptr));
    EXPECT_EQ(20000, m_model.get_level(item));
}

TEST_F(TREE_MODEL, the_level_counts_the_ancestors)
{
    EXPECT_EQ(-1, m_model.get_level(static_cast<const QStandardItem*>(nullptr)));
    EXPECT_EQ(-1, m_model.get_level(m_model.invisibleRootItem()));
    EXPECT_EQ(0, m_model.get_level(m_a));
    EXPECT_EQ(2, m_model.get_level(m_a21));
    EXPECT_EQ(-1, m_model.get_level(QModelIndex()));
    EXPECT_EQ(0, m_model.get_level(m_b->index()));
    EXPECT_EQ(2, m_model.get_level(m_a21->index()));
    EXPECT_EQ(1, m_model.get_level(m_a1->index().sibling(0, 1)));
}

TEST_F(TREE_MODEL, ancestors_stand_before_descendants_and_rows_decide_the_rest)
{
    EXPECT_TRUE(tolv_tree_order_indexes(m_a->index(), m_a21->index()));
    EXPECT_FALSE(tolv_tree_order_indexes(m_a21->index(), m_a->index()));
    EXPECT_TRUE(tolv_tree_order_indexes(m_a21->index(), m_b->index()));
    EXPECT_FALSE(tolv_tree_order_indexes(m_b->index(), m_a21->index()));
    EXPECT_TRUE(tolv_tree_order_indexes(m_a1->index(), m_a2->index()));
    EXPECT_FALSE(tolv_tree_order_indexes(m_a2->index(), m_a1->index()));
}

TEST_F(TREE_MODEL, a_parent_stands_before_its_children_though_its_row_is_greater)
{
    QStandardItem* child = add(m_c, "c1");
    EXPECT_TRUE(tolv_tree_order_indexes(m_c->index(), child->index()));
    EXPECT_FALSE(tolv_tree_order_indexes(child->index(), m_c->index()));
}

TEST_F(TREE_MODEL, an_index_stands_before_itself)
{
    EXPECT_TRUE(tolv_tree_order_indexes(m_a->index(), m_a->index()));
}

TEST_F(TREE_MODEL, two_cells_of_a_row_stand_in_no_order)
{
    EXPECT_FALSE(tolv_tree_order_indexes(m_model.index(2, 0), m_model.index(2, 1)));
    EXPECT_FALSE(tolv_tree_order_indexes(m_model.index(2, 1), m_model.index(2, 0)));
}

TEST_F(TREE_MODEL, the_order_asks_for_valid_indexes_of_one_model)
{
    EXPECT_INTERNAL_ERROR(tolv_tree_order_indexes(QModelIndex(), m_a->index()), "Not a valid index!");
    EXPECT_INTERNAL_ERROR(tolv_tree_order_indexes(m_a->index(), QModelIndex()), "Not a valid index!");
    QStandardItemModel other;
    other.appendRow(new QStandardItem);
    const TRAPPED_INTERNAL_ERROR error = CATCH_INTERNAL_ERROR(tolv_tree_order_indexes(m_a->index(), other.index(0, 0)));
    EXPECT_EQ("Models for given indices do not match!", error.text);
    EXPECT_EQ("tolv_tree_model", error.file);
}

TEST_F(TREE_MODEL, sorting_asks_for_valid_indexes_of_one_model)
{
    QStandardItemModel other;
    other.appendRow(new QStandardItem);
    QList<QModelIndex> invalid{m_a->index(), QModelIndex()};
    EXPECT_INTERNAL_ERROR(tolv_tree_sort_indexes(invalid), "Not a valid index!");
    QList<QModelIndex> mixed{m_a->index(), other.index(0, 0)};
    EXPECT_INTERNAL_ERROR(tolv_tree_sort_indexes(mixed), "Models for given indices do not match!");
    EXPECT_INTERNAL_ERROR(m_model.sort_index_list_by_positions(mixed), "Models for given indices do not match!");
}

TEST_F(TREE_MODEL, sorting_puts_invalid_indexes_first_and_the_others_in_the_order_of_the_tree)
{
    QList<QModelIndex> list{m_c->index(), QModelIndex(), m_a21->index(), m_a->index(), QModelIndex(), m_b->index()};
    m_model.sort_index_list_by_positions(list);
    EXPECT_EQ(QStringList({"none", "none", "a", "a21", "b", "c"}), names_of(list));
}

TEST_F(TREE_MODEL, sorting_keeps_the_cells_of_a_row_as_they_came)
{
    QList<QModelIndex> list{m_model.index(2, 1), m_model.index(2, 0), m_model.index(0, 0)};
    m_model.sort_index_list_by_positions(list);
    EXPECT_EQ(QStringList({"a", "cell of c", "c"}), names_of(list));
}

TEST_F(TREE_MODEL, sorting_a_list_of_one_leaves_it)
{
    QList<QModelIndex> list{QModelIndex()};
    m_model.sort_index_list_by_positions(list);
    EXPECT_EQ(1, list.size());
    list = {m_a->index()};
    m_model.sort_index_list_by_positions(list);
    EXPECT_EQ(QList<QModelIndex>{m_a->index()}, list);
}

TEST_F(TREE_MODEL, sorting_gives_what_a_stable_sort_by_the_order_gives)
{
    std::mt19937 engine(7);
    std::vector<QStandardItem*> items{m_a, m_a1, m_a2, m_a21, m_b, m_c};
    for (int i = 0; i < 300; ++i)
        items.push_back(add(items[engine() % items.size()], "more"));
    for (int round = 0; round < 20; ++round)
    {
        QList<QModelIndex> list;
        for (int i = 0; i < 200; ++i)
        {
            const QModelIndex index = items[engine() % items.size()]->index();
            list.append(index.sibling(index.row(), static_cast<int>(engine() % 2)));
        }
        QList<QModelIndex> expected = list;
        std::stable_sort(expected.begin(), expected.end(), tolv_tree_order_indexes);
        tolv_tree_sort_indexes(list);
        ASSERT_EQ(expected, list);
    }
}
} // namespace
