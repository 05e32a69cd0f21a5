#include "tolv_tree_filter_fixture.h"

#include <QAbstractItemModelTester>
#include <QItemSelectionModel>
#include <QSignalSpy>
#include <QTreeView>

#include <functional>

// A view on the filter beside a view on Qt's own way with the same rules: what is selected, current and expanded must be
// the same after each filtering, however it was announced.

namespace
{
using NODE = TEXT_TREE::NODE;

/// A filter, and a view on it.
struct SIDE
{
    explicit SIDE(QSortFilterProxyModel& model) : filter(model)
    {
        view.setModel(&filter);
        view.setSelectionMode(QAbstractItemView::ExtendedSelection);
        view.setFocusPolicy(Qt::NoFocus); // a view that gets the focus makes its first row current
        view.show();
    }

    QItemSelectionModel& selection()
    {
        return *view.selectionModel();
    }

    /// The paths of the rows that the view knows, with marks for current, selected and expanded ones.
    QStringList get_state()
    {
        view.doItemsLayout();
        QStringList result;
        append_state(QModelIndex(), QString(), result);
        return result;
    }

    QSortFilterProxyModel& filter;
    QTreeView view;

private:
    void append_state(const QModelIndex& parent, const QString& path, QStringList& result)
    {
        for (int row = 0; row < filter.rowCount(parent); ++row)
        {
            const QModelIndex index = filter.index(row, 0, parent);
            const QString name = path + QLatin1Char('/') + index.data().toString();
            const bool is_expanded = view.isExpanded(index);
            result.append(name + (selection().currentIndex() == index ? QLatin1String(" current") : QLatin1String()) +
                          (selection().isRowSelected(row, parent) ? QLatin1String(" selected") : QLatin1String()) +
                          (is_expanded ? QLatin1String(" expanded") : QLatin1String()));
            append_state(index, name, result);
        }
    }
};

class TREE_FILTER_VIEW : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        m_tree = std::make_unique<TEXT_TREE>();
        m_ours.setSourceModel(m_tree.get());
        m_plain.setSourceModel(m_tree.get());
    }
    void TearDown() override
    {
        m_ours.setSourceModel(nullptr);
        m_plain.setSourceModel(nullptr);
        m_tree.reset();
        TOLV_GUI_TEST::TearDown();
    }

    /// Rows at the top named by their numbers, those that `is_match` picks with an "x" before it.
    void fill(int count, const std::function<bool(int)>& is_match)
    {
        QStringList names;
        for (int i = 0; i < count; ++i)
            names.append((is_match(i) ? QStringLiteral("x%1") : QStringLiteral("%1")).arg(i));
        m_tree->insert(m_tree->root(), 0, names);
    }

    void filter(const QString& keyword)
    {
        m_ours.regexp_filter(keyword);
        m_plain.setFilterRegularExpression(m_ours.process_keyword_expression(keyword));
    }

    QModelIndex top(int source_row, int column = 0) const
    {
        return m_tree->index(source_row, column);
    }

    std::unique_ptr<TEXT_TREE> m_tree;
    TOLV_TREE_FILTER_PROXY_MODEL m_ours;
    PLAIN_FILTER m_plain;
    int m_layout_count = 0;
    QList<int> m_child_counts;
};

/// Does the same to both sides.
void on_both(SIDE& ours, SIDE& plain, const std::function<void(SIDE&)>& action)
{
    action(ours);
    action(plain);
}

const auto IS_EVEN = [](int i) { return i % 2 == 0; };

TEST_F(TREE_FILTER_VIEW, a_filtering_of_few_rows_is_announced_row_by_row)
{
    fill(40, IS_EVEN);
    ASSERT_EQ(40, m_ours.rowCount());
    QSignalSpy removed(&m_ours, SIGNAL(rowsRemoved(QModelIndex, int, int)));
    QSignalSpy layout(&m_ours, SIGNAL(layoutChanged()));
    m_ours.regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(20, removed.size());
    EXPECT_EQ(0, layout.size());
}

TEST_F(TREE_FILTER_VIEW, a_filtering_of_rows_in_many_places_is_announced_as_one_change_of_layout)
{
    fill(4000, IS_EVEN);
    ASSERT_EQ(4000, m_ours.rowCount());
    QSignalSpy removed(&m_ours, SIGNAL(rowsRemoved(QModelIndex, int, int)));
    QSignalSpy layout(&m_ours, SIGNAL(layoutChanged()));
    m_ours.regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(2000, m_ours.rowCount());
    EXPECT_EQ(0, removed.size());
    EXPECT_EQ(1, layout.size());
}

TEST_F(TREE_FILTER_VIEW, a_filtering_that_lets_all_rows_stay_is_not_announced)
{
    fill(4000, IS_EVEN);
    m_ours.rowCount();
    m_ours.regexp_filter(QStringLiteral("x"));
    QSignalSpy layout(&m_ours, SIGNAL(layoutChanged()));
    m_ours.regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(0, layout.size());
    EXPECT_EQ(2000, m_ours.rowCount());
}

TEST_F(TREE_FILTER_VIEW, the_current_row_that_goes_moves_to_the_row_above_that_stays)
{
    fill(4000, [](int i) { return i % 3 == 0; });
    SIDE ours(m_ours);
    SIDE plain(m_plain);
    on_both(ours, plain,
            [this](SIDE& side)
            {
                side.view.setCurrentIndex(side.filter.mapFromSource(top(2000)));
                side.view.doItemsLayout();
            });
    QSignalSpy changed(&ours.selection(), SIGNAL(currentChanged(QModelIndex, QModelIndex)));
    filter(QStringLiteral("x"));
    EXPECT_EQ(QStringLiteral("x1998"), ours.selection().currentIndex().data().toString());
    EXPECT_EQ(1, changed.size());
    EXPECT_EQ(plain.get_state(), ours.get_state());
    filter(QString());
    EXPECT_EQ(plain.get_state(), ours.get_state());
}

TEST_F(TREE_FILTER_VIEW, in_single_selection_the_current_row_that_goes_moves_to_the_row_below_that_stays)
{
    fill(4000, [](int i) { return i % 3 == 0; });
    SIDE ours(m_ours);
    SIDE plain(m_plain);
    on_both(ours, plain,
            [this](SIDE& side)
            {
                side.view.setSelectionMode(QAbstractItemView::SingleSelection);
                side.view.setCurrentIndex(side.filter.mapFromSource(top(2000)));
            });
    filter(QStringLiteral("x"));
    EXPECT_EQ(QStringLiteral("x2001"), ours.selection().currentIndex().data().toString());
    EXPECT_EQ(plain.get_state(), ours.get_state());
}

TEST_F(TREE_FILTER_VIEW, a_selected_row_that_goes_is_told_of_as_deselected)
{
    fill(4000, IS_EVEN);
    SIDE ours(m_ours);
    ours.selection().select(m_ours.mapFromSource(top(301)), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QSignalSpy changed(&ours.selection(), SIGNAL(selectionChanged(QItemSelection, QItemSelection)));
    m_ours.regexp_filter(QStringLiteral("x"));
    EXPECT_FALSE(ours.selection().hasSelection());
    EXPECT_EQ(1, changed.size());
}

TEST_F(TREE_FILTER_VIEW, of_a_range_of_selected_rows_those_that_stay_stay_selected)
{
    fill(4000, [](int i) { return i % 3 == 0; });
    SIDE ours(m_ours);
    SIDE plain(m_plain);
    on_both(ours, plain,
            [this](SIDE& side)
            {
                const QItemSelection range(side.filter.mapFromSource(top(100)),
                                           side.filter.mapFromSource(top(3001, 1)));
                side.selection().select(range, QItemSelectionModel::Select);
                side.selection().select(side.filter.mapFromSource(top(3100)),
                                        QItemSelectionModel::Select | QItemSelectionModel::Rows);
            });
    filter(QStringLiteral("x"));
    EXPECT_EQ(plain.get_state(), ours.get_state());
    EXPECT_FALSE(ours.selection().selectedRows().isEmpty());
    filter(QString());
    EXPECT_EQ(plain.get_state(), ours.get_state());
}

TEST_F(TREE_FILTER_VIEW, when_all_rows_are_selected_those_that_stay_stay_selected_and_those_that_come_are_not)
{
    fill(4000, [](int i) { return i % 3 == 0; });
    SIDE ours(m_ours);
    SIDE plain(m_plain);
    on_both(ours, plain, [](SIDE& side) { side.view.selectAll(); });
    filter(QStringLiteral("x"));
    EXPECT_EQ(1334, ours.selection().selectedRows().size());
    EXPECT_EQ(plain.get_state(), ours.get_state());
    on_both(ours, plain, [](SIDE& side) { side.view.selectAll(); });
    filter(QString());
    EXPECT_EQ(1334, ours.selection().selectedRows().size());
    EXPECT_EQ(plain.get_state(), ours.get_state());
}

TEST_F(TREE_FILTER_VIEW, from_one_filter_to_another_the_selection_of_all_keeps_to_the_rows_that_stay)
{
    fill(6000, [](int i) { return i % 3 == 0; });
    filter(QStringLiteral("[0-4]$"));
    SIDE ours(m_ours);
    SIDE plain(m_plain);
    on_both(ours, plain, [](SIDE& side) { side.view.selectAll(); });
    filter(QStringLiteral("x"));
    EXPECT_EQ(plain.get_state(), ours.get_state());
    EXPECT_GT(ours.selection().selectedRows().size(), 100);
}

TEST_F(TREE_FILTER_VIEW, expanded_rows_that_stay_stay_expanded_and_others_come_back_collapsed)
{
    for (int i = 0; i < 3000; ++i)
    {
        NODE* node = m_tree->append(m_tree->root(), QStringLiteral("%1").arg(i));
        m_tree->append(node, i % 3 == 0 ? QStringLiteral("x") : QStringLiteral("y"));
    }
    SIDE ours(m_ours);
    SIDE plain(m_plain);
    on_both(ours, plain,
            [](SIDE& side)
            {
                for (int row = 0; row < 200; ++row)
                    side.view.expand(side.filter.index(row, 0));
                side.view.doItemsLayout();
            });
    filter(QStringLiteral("x"));
    EXPECT_EQ(plain.get_state(), ours.get_state());
    filter(QString());
    EXPECT_EQ(plain.get_state(), ours.get_state());
    EXPECT_TRUE(ours.view.isExpanded(m_ours.index(3, 0)));
    EXPECT_FALSE(ours.view.isExpanded(m_ours.index(4, 0)));
}

TEST_F(TREE_FILTER_VIEW, a_sorted_filter_stays_sorted)
{
    fill(4000, IS_EVEN);
    m_ours.sort(0, Qt::DescendingOrder);
    m_ours.rowCount();
    m_ours.regexp_filter(QStringLiteral("x"));
    ASSERT_EQ(2000, m_ours.rowCount());
    EXPECT_EQ(QStringLiteral("x998"), m_ours.index(0, 0).data().toString());
    EXPECT_EQ(QStringLiteral("x0"), m_ours.index(1999, 0).data().toString());
    m_ours.regexp_filter(QString());
    EXPECT_EQ(4000, m_ours.rowCount());
    EXPECT_EQ(QStringLiteral("1"), m_ours.index(3999, 0).data().toString());
}

TEST_F(TREE_FILTER_VIEW, rows_that_are_sorted_once_keep_their_order_in_a_filtering)
{
    fill(4000, [](int) { return false; });
    m_ours.setDynamicSortFilter(false);
    m_ours.sort(0, Qt::DescendingOrder);
    ASSERT_EQ(4000, m_ours.rowCount());
    m_tree->set_text(m_tree->root()->children[998].get(), QStringLiteral("0000"));
    ASSERT_EQ(QStringLiteral("999"), m_ours.index(0, 0).data().toString());
    ASSERT_EQ(QStringLiteral("0000"), m_ours.index(1, 0).data().toString());
    QSignalSpy layout(&m_ours, SIGNAL(layoutChanged()));
    m_ours.regexp_filter(QStringLiteral("[02468]$"));
    ASSERT_EQ(2000, m_ours.rowCount());
    EXPECT_EQ(QStringLiteral("0000"), m_ours.index(0, 0).data().toString());
    EXPECT_EQ(0, layout.size());
}

TEST_F(TREE_FILTER_VIEW, a_subclass_that_rejects_rows_on_top_of_the_rules_is_heard)
{
    class NARROW : public TOLV_TREE_FILTER_PROXY_MODEL
    {
    public:
        using TOLV_TREE_FILTER_PROXY_MODEL::invalidateFilter;
        int divisor = 1;

    protected:
        bool filterAcceptsRow(int row, const QModelIndex& parent) const override
        {
            return row % divisor == 0 && TOLV_TREE_FILTER_PROXY_MODEL::filterAcceptsRow(row, parent);
        }
    };
    fill(6000, IS_EVEN);
    NARROW narrow;
    narrow.setSourceModel(m_tree.get());
    QTreeView view;
    view.setModel(&narrow);
    view.show();
    narrow.divisor = 4;
    narrow.invalidateFilter();
    EXPECT_EQ(1500, narrow.rowCount());
    narrow.divisor = 3;
    narrow.regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(1000, narrow.rowCount());
    EXPECT_EQ(QStringLiteral("x6"), narrow.index(1, 0).data().toString());
    const QAbstractItemModelTester tester(&narrow, QAbstractItemModelTester::FailureReportingMode::Fatal);
    narrow.divisor = 1;
    narrow.regexp_filter(QString());
    EXPECT_EQ(6000, narrow.rowCount());
}

TEST_F(TREE_FILTER_VIEW, rows_that_come_while_a_filtering_is_announced_are_filtered)
{
    fill(4000, IS_EVEN);
    SIDE ours(m_ours);
    QObject::connect(&m_ours, &QAbstractItemModel::layoutChanged, m_tree.get(),
                     [this]
                     {
                         if (m_tree->rowCount() == 4000)
                             m_tree->insert(m_tree->root(), 0, {QStringLiteral("x new"), QStringLiteral("new")});
                     });
    m_ours.regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(2001, m_ours.rowCount());
    EXPECT_EQ(QStringLiteral("x new"), m_ours.index(0, 0).data().toString());
}

TEST_F(TREE_FILTER_VIEW, a_level_that_is_asked_for_while_rows_go_is_filtered_by_the_rules)
{
    fill(4000, IS_EVEN);
    NODE* child = m_tree->append(m_tree->root()->children[2000].get(), QStringLiteral("child"));
    m_tree->append(child, QStringLiteral("below it")); // a view asks for the levels below the rows that it shows
    SIDE ours(m_ours);
    ours.selection().select(m_ours.mapFromSource(top(301)), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QObject::connect(&m_ours, &QAbstractItemModel::rowsRemoved, &m_ours,
                     [this, child]
                     { m_child_counts.append(m_ours.rowCount(m_ours.mapFromSource(m_tree->get_index(child)))); });
    m_ours.regexp_filter(QStringLiteral("x"));
    ASSERT_FALSE(m_child_counts.isEmpty());
    EXPECT_EQ(1, m_child_counts.constFirst());
}

class TREE_FILTER_RANDOM_VIEW : public TREE_FILTER_VIEW, public testing::WithParamInterface<unsigned>
{
};

TEST_P(TREE_FILTER_RANDOM_VIEW, large_filterings_keep_what_small_ones_keep)
{
    std::mt19937 engine(GetParam());
    const auto pick = [&engine](int count) { return static_cast<int>(engine() % static_cast<unsigned>(count)); };
    QStringList names;
    for (int i = 0; i < 3000; ++i)
        names.append(QStringLiteral("%1%2").arg(QLatin1Char("abcdefghij"[pick(10)])).arg(i));
    m_tree->insert(m_tree->root(), 0, names);
    for (int i = 0; i < 300; ++i)
    {
        NODE* parent = m_tree->root()->children[static_cast<std::size_t>(pick(3000))].get();
        m_tree->append(m_tree->append(parent, QStringLiteral("b%1").arg(i)), QStringLiteral("c%1").arg(i));
    }
    SIDE ours(m_ours);
    SIDE plain(m_plain);
    static const QStringList KEYWORDS{QString(), QStringLiteral("[abcde]"), QStringLiteral("[cdefgh]"),
                                      QStringLiteral("c"), QStringLiteral("nothing")};
    QObject::connect(&m_ours, &QAbstractItemModel::layoutChanged, &m_ours, [this] { ++m_layout_count; });
    for (int step = 0; step < 12; ++step)
    {
        const int count = m_ours.rowCount();
        for (int i = 0; i < 12 && count > 0; ++i)
        {
            const int row = pick(count);
            const int what = pick(3);
            on_both(ours, plain,
                    [&](SIDE& side)
                    {
                        const QModelIndex index = side.filter.index(row, 0);
                        if (what == 0)
                            side.view.expand(index);
                        else if (what == 1)
                            side.selection().select(index, QItemSelectionModel::Toggle | QItemSelectionModel::Rows);
                        else
                            side.selection().setCurrentIndex(index, QItemSelectionModel::Current);
                    });
        }
        m_tree->insert(m_tree->root(), pick(3000),
                       {QStringLiteral("a new"), QStringLiteral("h new"), QStringLiteral("c new")});
        NODE* node = m_tree->root()->children[static_cast<std::size_t>(pick(3000))].get();
        if (node->children.empty())
            m_tree->set_text(node, QStringLiteral("f%1").arg(step));
        filter(KEYWORDS[pick(KEYWORDS.size())]);
        ASSERT_EQ(plain.get_state(), ours.get_state()) << "step " << step;
    }
    EXPECT_GT(m_layout_count, 0);
    const QAbstractItemModelTester tester(&m_ours, QAbstractItemModelTester::FailureReportingMode::Fatal);
}

INSTANTIATE_TEST_SUITE_P(seeds, TREE_FILTER_RANDOM_VIEW, testing::Range(1U, 7U));
} // namespace
