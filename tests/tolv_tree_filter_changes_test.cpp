#include "tolv_tree_filter_fixture.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>
#include <QStandardItemModel>

namespace
{
using NODE = TEXT_TREE::NODE;

class TREE_FILTER_CHANGES : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        m_tree = std::make_unique<TEXT_TREE>();
        m_filter = std::make_unique<TOLV_TREE_FILTER_PROXY_MODEL>();
        m_filter->setSourceModel(m_tree.get());
        m_tester = std::make_unique<QAbstractItemModelTester>(m_filter.get(),
                                                              QAbstractItemModelTester::FailureReportingMode::Fatal);
    }
    void TearDown() override
    {
        m_tester.reset();
        m_filter.reset();
        m_tree.reset();
        TOLV_GUI_TEST::TearDown();
    }

    QStringList rows() const
    {
        return get_rows(*m_filter);
    }

    std::unique_ptr<TEXT_TREE> m_tree;
    std::unique_ptr<TOLV_TREE_FILTER_PROXY_MODEL> m_filter;
    std::unique_ptr<QAbstractItemModelTester> m_tester;
};

TEST_F(TREE_FILTER_CHANGES, a_match_inserted_below_hidden_rows_shows_them)
{
    NODE* a = m_tree->append(m_tree->root(), QStringLiteral("a"));
    NODE* b = m_tree->append(a, QStringLiteral("b"));
    m_tree->append(m_tree->root(), QStringLiteral("c"));
    m_filter->regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(QStringList(), rows());
    m_tree->append(b, QStringLiteral("x1"));
    EXPECT_EQ(QStringList({"a", ".b", "..x1"}), rows());
    m_tree->append(b, QStringLiteral("y"));
    EXPECT_EQ(QStringList({"a", ".b", "..x1"}), rows());
}

TEST_F(TREE_FILTER_CHANGES, the_last_match_that_goes_hides_its_ancestors)
{
    NODE* a = m_tree->append(m_tree->root(), QStringLiteral("a"));
    NODE* b = m_tree->append(a, QStringLiteral("b"));
    m_tree->append(b, QStringLiteral("x1"));
    NODE* x2 = m_tree->append(b, QStringLiteral("x2"));
    m_tree->append(a, QStringLiteral("x3"));
    m_filter->regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(QStringList({"a", ".b", "..x1", "..x2", ".x3"}), rows());
    m_tree->remove(b, 0, 0);
    EXPECT_EQ(QStringList({"a", ".b", "..x2", ".x3"}), rows());
    m_tree->set_text(x2, QStringLiteral("y"));
    EXPECT_EQ(QStringList({"a", ".x3"}), rows());
    m_tree->remove(a, 1, 1);
    EXPECT_EQ(QStringList(), rows());
}

TEST_F(TREE_FILTER_CHANGES, a_row_that_becomes_a_match_shows_what_is_below_it_and_hides_it_again)
{
    NODE* a = m_tree->append(m_tree->root(), QStringLiteral("a"));
    NODE* b = m_tree->append(a, QStringLiteral("b"));
    m_tree->append(b, QStringLiteral("x1"));
    m_tree->append(m_tree->append(a, QStringLiteral("c")), QStringLiteral("d"));
    m_filter->regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(QStringList({"a", ".b", "..x1"}), rows());
    m_tree->set_text(a, QStringLiteral("ax"));
    EXPECT_EQ(QStringList({"ax", ".b", "..x1", ".c", "..d"}), rows());
    m_tree->set_text(a, QStringLiteral("a"));
    EXPECT_EQ(QStringList({"a", ".b", "..x1"}), rows());
}

TEST_F(TREE_FILTER_CHANGES, of_all_rows_only_one_that_has_changed_counts_again)
{
    NODE* a = m_tree->append(m_tree->root(), QStringLiteral("a"));
    m_tree->append(a, QStringLiteral("b"));
    m_tree->append(a, QStringLiteral("x1"));
    NODE* x2 = m_tree->append(m_tree->append(m_tree->root(), QStringLiteral("c")), QStringLiteral("x2"));
    m_tree->append(m_tree->root(), QStringLiteral("x3"));
    m_filter->regexp_filter(QStringLiteral("x"));
    ASSERT_EQ(QStringList({"a", ".x1", "c", ".x2", "x3"}), rows());
    ASSERT_EQ(3, TOLV_TREE_FILTER_PROXY_MODEL::get_search_result_count());
    m_tree->set_text(a, QStringLiteral("ax"));
    ASSERT_EQ(QStringList({"ax", ".b", ".x1", "c", ".x2", "x3"}), rows());
    EXPECT_EQ(4, TOLV_TREE_FILTER_PROXY_MODEL::get_search_result_count());
    m_tree->set_text(x2, QStringLiteral("y"));
    ASSERT_EQ(QStringList({"ax", ".b", ".x1", "x3"}), rows());
    EXPECT_EQ(4, TOLV_TREE_FILTER_PROXY_MODEL::get_search_result_count());
}

TEST_F(TREE_FILTER_CHANGES, a_hidden_row_that_becomes_a_match_shows_what_was_mapped_below_it_while_it_was_hidden)
{
    NODE* a = m_tree->append(m_tree->root(), QStringLiteral("a"));
    NODE* b = m_tree->append(a, QStringLiteral("b"));
    m_filter->regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(QStringList(), rows());
    m_tree->set_text(b, QStringLiteral("bb"));
    EXPECT_EQ(QStringList(), rows());
    m_tree->append(a, QStringLiteral("c"));
    m_tree->set_text(a, QStringLiteral("ax"));
    EXPECT_EQ(QStringList({"ax", ".bb", ".c"}), rows());
}

TEST_F(TREE_FILTER_CHANGES, a_hidden_child_that_becomes_a_match_shows_its_ancestors)
{
    NODE* a = m_tree->append(m_tree->root(), QStringLiteral("a"));
    NODE* b = m_tree->append(a, QStringLiteral("b"));
    NODE* c = m_tree->append(b, QStringLiteral("c"));
    m_filter->regexp_filter(QStringLiteral("x"));
    m_tree->set_text(c, QStringLiteral("c1"));
    m_tree->set_text(c, QStringLiteral("cx"));
    EXPECT_EQ(QStringList({"a", ".b", "..cx"}), rows());
}

TEST_F(TREE_FILTER_CHANGES, a_match_that_moves_takes_its_ancestors_along)
{
    NODE* a = m_tree->append(m_tree->root(), QStringLiteral("a"));
    NODE* b = m_tree->append(m_tree->root(), QStringLiteral("b"));
    m_tree->append(a, QStringLiteral("x"));
    m_filter->regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(QStringList({"a", ".x"}), rows());
    ASSERT_TRUE(m_tree->move(a, 0, b, 0));
    EXPECT_EQ(QStringList({"b", ".x"}), rows());
}

/// A row that goes with its match in a move leaves its level mapped, if somebody holds on to it.
class TREE_FILTER_MAPPED_BELOW_HIDDEN : public TREE_FILTER_CHANGES
{
protected:
    void SetUp() override
    {
        TREE_FILTER_CHANGES::SetUp();
        m_a = m_tree->append(m_tree->root(), QStringLiteral("a"));
        NODE* c = m_tree->append(m_a, QStringLiteral("c"));
        m_tree->append(c, QStringLiteral("x"));
        NODE* b = m_tree->append(m_tree->root(), QStringLiteral("b"));
        m_filter->regexp_filter(QStringLiteral("x"));
        ASSERT_EQ(QStringList({"a", ".c", "..x"}), rows());
        m_held = m_filter->mapFromSource(m_tree->get_index(c));
        ASSERT_TRUE(m_tree->move(c, 0, b, 0));
        ASSERT_EQ(QStringList({"b", ".x"}), rows());
        ASSERT_FALSE(m_held.isValid());
    }

    NODE* m_a = nullptr;
    QPersistentModelIndex m_held;
};

TEST_F(TREE_FILTER_MAPPED_BELOW_HIDDEN, a_match_that_is_inserted_is_shown)
{
    m_tree->append(m_a, QStringLiteral("x2"));
    EXPECT_EQ(QStringList({"a", ".x2", "b", ".x"}), rows());
}

TEST_F(TREE_FILTER_MAPPED_BELOW_HIDDEN, a_row_that_becomes_a_match_shows_what_is_below_it)
{
    m_tree->set_text(m_a, QStringLiteral("ax"));
    EXPECT_EQ(QStringList({"ax", ".c", "b", ".x"}), rows());
}

TEST_F(TREE_FILTER_MAPPED_BELOW_HIDDEN, a_row_that_moves_from_one_hidden_row_to_another_is_there_when_they_are_shown)
{
    NODE* d = m_tree->append(m_tree->root(), QStringLiteral("d"));
    m_tree->append(d, QStringLiteral("e"));
    ASSERT_TRUE(m_tree->move(d, 0, m_a, 0));
    m_filter->regexp_filter(QString());
    EXPECT_EQ(QStringList({"a", ".e", ".c", "b", ".x", "d"}), rows());
}

TEST_F(TREE_FILTER_CHANGES, a_match_in_a_level_that_nobody_has_asked_for_hides_its_ancestors_when_it_goes)
{
    NODE* x = m_tree->append(m_tree->append(m_tree->root(), QStringLiteral("a")), QStringLiteral("x"));
    TOLV_TREE_FILTER_PROXY_MODEL unseen;
    unseen.setSourceModel(m_tree.get());
    unseen.regexp_filter(QStringLiteral("x"));
    ASSERT_EQ(1, unseen.rowCount());
    m_tree->set_text(x, QStringLiteral("y"));
    EXPECT_EQ(0, unseen.rowCount());
}

TEST_F(TREE_FILTER_CHANGES, rows_shown_by_a_match_are_told_of_one_by_one_and_others_not_at_all)
{
    NODE* a = m_tree->append(m_tree->root(), QStringLiteral("a"));
    NODE* b = m_tree->append(m_tree->root(), QStringLiteral("b"));
    m_tree->append(b, QStringLiteral("x"));
    NODE* d = m_tree->append(m_tree->append(m_tree->root(), QStringLiteral("c")), QStringLiteral("d"));
    m_filter->regexp_filter(QStringLiteral("x"));
    ASSERT_EQ(QStringList({"b", ".x"}), rows());
    QSignalSpy inserted(m_filter.get(), SIGNAL(rowsInserted(QModelIndex, int, int)));
    QSignalSpy removed(m_filter.get(), SIGNAL(rowsRemoved(QModelIndex, int, int)));
    QSignalSpy layout(m_filter.get(), SIGNAL(layoutChanged()));
    m_tree->append(a, QStringLiteral("y"));
    EXPECT_EQ(0, inserted.size());
    m_tree->append(a, QStringLiteral("x2"));
    ASSERT_EQ(1, inserted.size());
    EXPECT_EQ(0, inserted[0][1].toInt());
    EXPECT_EQ(0, removed.size());
    EXPECT_EQ(0, layout.size());
    m_tree->append(d, QStringLiteral("x3"));
    EXPECT_EQ(QStringList({"a", ".x2", "b", ".x", "c", ".d", "..x3"}), rows());
    EXPECT_EQ(2, inserted.size()) << "the topmost row, with all that is below it";
    EXPECT_EQ(0, layout.size());
}

TEST_F(TREE_FILTER_CHANGES, a_filter_that_is_not_dynamic_leaves_ancestors_alone_until_the_next_filtering)
{
    NODE* b = m_tree->append(m_tree->append(m_tree->root(), QStringLiteral("a")), QStringLiteral("b"));
    m_filter->setDynamicSortFilter(false);
    m_filter->regexp_filter(QStringLiteral("x"));
    ASSERT_EQ(QStringList(), rows());
    m_tree->append(b, QStringLiteral("x"));
    EXPECT_EQ(QStringList(), rows());
    m_filter->regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(QStringList({"a", ".b", "..x"}), rows());
}

TEST_F(TREE_FILTER_CHANGES, a_row_that_a_subclass_lets_stay_is_announced_when_a_match_below_it_shows_it)
{
    class STUBBORN : public TOLV_TREE_FILTER_PROXY_MODEL
    {
    public:
        bool lets_all_stay = false;

    protected:
        bool filterAcceptsRow(int row, const QModelIndex& parent) const override
        {
            return lets_all_stay || TOLV_TREE_FILTER_PROXY_MODEL::filterAcceptsRow(row, parent);
        }
    };
    NODE* b = m_tree->append(m_tree->append(m_tree->root(), QStringLiteral("a")), QStringLiteral("b"));
    STUBBORN filter;
    filter.setSourceModel(m_tree.get());
    filter.regexp_filter(QStringLiteral("x"));
    ASSERT_EQ(0, filter.rowCount());
    QSignalSpy layout(&filter, SIGNAL(layoutChanged()));
    QSignalSpy inserted(&filter, SIGNAL(rowsInserted(QModelIndex, int, int)));
    filter.lets_all_stay = true;
    m_tree->append(b, QStringLiteral("x"));
    EXPECT_EQ(QStringList({"a", ".b", "..x"}), get_rows(filter));
    EXPECT_LT(0, layout.size() + inserted.size());
}

/// A tree of items that counts how often it is asked for a text.
class COUNTING_MODEL : public QStandardItemModel
{
public:
    mutable int text_count = 0;

    QVariant data(const QModelIndex& index, int role) const override
    {
        text_count += role == Qt::DisplayRole ? 1 : 0;
        return QStandardItemModel::data(index, role);
    }
};

class TREE_FILTER_COLUMN_CHANGES : public TREE_FILTER_CHANGES
{
protected:
    void SetUp() override
    {
        TREE_FILTER_CHANGES::SetUp();
        add({QStringLiteral("x"), QStringLiteral("b")});
        add({QStringLiteral("a"), QStringLiteral("x")});
        m_tester.reset();
        m_filter->setSourceModel(&m_items);
    }
    void TearDown() override
    {
        m_filter->setSourceModel(nullptr);
        TREE_FILTER_CHANGES::TearDown();
    }

    void add(const QStringList& cells)
    {
        QList<QStandardItem*> row;
        for (const QString& cell : cells)
            row.append(new QStandardItem(cell));
        m_items.appendRow(row);
    }

    /// The numbers, in the source model, of the rows that stay.
    QString get_row_names() const
    {
        QString names;
        for (int row = 0; row < m_filter->rowCount(); ++row)
            names += QString::number(m_filter->mapToSource(m_filter->index(row, 0)).row());
        return names;
    }

    COUNTING_MODEL m_items;
};

TEST_F(TREE_FILTER_COLUMN_CHANGES, rows_are_searched_in_the_column_that_takes_the_place_of_the_key_column)
{
    m_filter->regexp_filter(QStringLiteral("x"));
    ASSERT_EQ(QStringLiteral("0"), get_row_names());
    m_items.removeColumn(0);
    EXPECT_EQ(QStringLiteral("1"), get_row_names());
    m_items.insertColumn(0);
    EXPECT_EQ(QString(), get_row_names());
}

TEST_F(TREE_FILTER_COLUMN_CHANGES, rows_are_searched_in_the_columns_that_take_the_places_of_joined_columns)
{
    m_filter->insert_filter_column(1);
    m_filter->regexp_filter(QStringLiteral("x"));
    ASSERT_EQ(QStringLiteral("01"), get_row_names());
    m_items.insertColumn(1);
    EXPECT_EQ(QStringLiteral("0"), get_row_names());
    m_items.removeColumn(1);
    EXPECT_EQ(QStringLiteral("01"), get_row_names());
}

TEST_F(TREE_FILTER_COLUMN_CHANGES, where_all_columns_are_searched_a_new_one_at_the_end_is)
{
    m_filter->setFilterKeyColumn(-1);
    m_filter->regexp_filter(QStringLiteral("b"));
    ASSERT_EQ(QStringLiteral("0"), get_row_names());
    m_items.removeColumn(1);
    EXPECT_EQ(QString(), get_row_names());
}

TEST_F(TREE_FILTER_COLUMN_CHANGES, a_column_behind_all_that_are_searched_asks_no_row)
{
    m_filter->regexp_filter(QStringLiteral("x"));
    ASSERT_EQ(QStringLiteral("0"), get_row_names());
    m_items.text_count = 0;
    m_items.insertColumn(1);
    EXPECT_EQ(0, m_items.text_count);
}

TEST_F(TREE_FILTER_COLUMN_CHANGES, the_first_row_below_a_row_asks_no_other_row)
{
    for (int i = 0; i < 100; ++i)
        add({QStringLiteral("x")});
    m_filter->regexp_filter(QStringLiteral("x"));
    ASSERT_EQ(101, m_filter->rowCount());
    m_items.text_count = 0;
    m_items.item(50)->appendRow(new QStandardItem(QStringLiteral("a")));
    EXPECT_GT(10, m_items.text_count);
}

/// Columns of text that can change places.
class COLUMNS_THAT_MOVE : public QAbstractTableModel
{
public:
    int rowCount(const QModelIndex& parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : 1;
    }
    int columnCount(const QModelIndex& parent = QModelIndex()) const override
    {
        return parent.isValid() ? 0 : m_texts.size();
    }
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override
    {
        return role == Qt::DisplayRole ? m_texts.at(index.column()) : QVariant();
    }
    void move_last_to(int column)
    {
        beginMoveColumns(QModelIndex(), m_texts.size() - 1, m_texts.size() - 1, QModelIndex(), column);
        m_texts.move(m_texts.size() - 1, column);
        endMoveColumns();
    }

private:
    QStringList m_texts{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
};

TEST_F(TREE_FILTER_COLUMN_CHANGES, rows_are_searched_in_a_column_that_moves_to_the_place_of_the_key_column)
{
    COLUMNS_THAT_MOVE columns;
    m_filter->setSourceModel(&columns);
    m_filter->regexp_filter(QStringLiteral("c"));
    ASSERT_EQ(0, m_filter->rowCount());
    columns.move_last_to(0); // c a b
    EXPECT_EQ(1, m_filter->rowCount());
    columns.move_last_to(0); // b c a
    EXPECT_EQ(0, m_filter->rowCount());
    m_filter->setSourceModel(&m_items);
}
} // namespace
