// A filter that stands while its source model does all that a source model can do, at random. After a change the filter
// must show what the rules say, found anew; a watcher that only hears the filter's signals must have come to the same; and
// persistent indexes must still stand for the rows for which they were made.

#include "tolv_tree_filter_fixture.h"

#include <QAbstractItemModelTester>
#include <QStandardItemModel>
#include <QTreeView>

namespace
{
using NODE = TEXT_TREE::NODE;

/// The settings of a filter.
struct SETTINGS
{
    QString keyword;
    bool include_child = true;
    bool include_invisible_root_child = false;
    int key_column = 0;
    QList<int> columns;
};

/// How many rows a model has there that can be asked for: a level of items may have rows before it has a column.
int count_rows(const QAbstractItemModel& model, const QModelIndex& parent)
{
    return model.columnCount(parent) > 0 ? model.rowCount(parent) : 0;
}

/// All rows of a model in the order of the model, or, where rows are sorted, those that compare equal in the order of
/// their texts and of what is below them, as a sorting leaves their order open.
QStringList get_canonical_rows(const QSortFilterProxyModel& model, const QModelIndex& parent = QModelIndex())
{
    QList<QStringList> rows;
    for (int row = 0; row < count_rows(model, parent); ++row)
    {
        const QModelIndex index = model.index(row, 0, parent);
        QStringList texts(index.data().toString() + QLatin1Char('|') + index.sibling(row, 1).data().toString());
        const QStringList below = get_canonical_rows(model, index);
        for (const QString& text : below)
            texts.append(QLatin1Char('.') + text);
        rows.append(texts);
    }
    if (model.sortColumn() >= 0)
        std::sort(rows.begin(), rows.end());
    QStringList result;
    for (const QStringList& texts : qAsConst(rows))
        result.append(texts);
    return result;
}

/// What rows are sorted by, so that texts compare as they do in a sorting, in which cells without data stand last.
QString get_sort_key(const QModelIndex& index, int column)
{
    const QVariant data = index.sibling(index.row(), column).data();
    return data.isValid() ? QLatin1Char('0') + data.toString() : QStringLiteral("1");
}

/// Whether all rows stand in the order by which the filter sorts.
bool is_in_order(const QSortFilterProxyModel& model, const QModelIndex& parent = QModelIndex())
{
    QString key_above;
    for (int row = 0; row < count_rows(model, parent); ++row)
    {
        const QModelIndex index = model.index(row, 0, parent);
        const QString key = get_sort_key(index, model.sortColumn());
        const bool is_after = model.sortOrder() == Qt::AscendingOrder ? key < key_above : key_above < key;
        if ((row > 0 && is_after) || !is_in_order(model, index))
            return false;
        key_above = key;
    }
    return true;
}

/// What is known of a model to somebody who only hears its signals and asks for what they announce.
class LISTENER : public QObject
{
public:
    explicit LISTENER(const QAbstractItemModel& model) : m_model(model)
    {
        fetch_all();
        connect(&model, &QAbstractItemModel::modelReset, this, &LISTENER::fetch_all);
        connect(&model, &QAbstractItemModel::layoutChanged, this, &LISTENER::fetch_all);
        connect(&model, &QAbstractItemModel::rowsMoved, this, &LISTENER::fetch_all);
        connect(&model, &QAbstractItemModel::columnsInserted, this, &LISTENER::fetch_all);
        connect(&model, &QAbstractItemModel::columnsRemoved, this, &LISTENER::fetch_all);
        connect(&model, &QAbstractItemModel::columnsMoved, this, &LISTENER::fetch_all);
        connect(&model, &QAbstractItemModel::dataChanged, this, &LISTENER::fetch_texts);
        connect(&model, &QAbstractItemModel::rowsInserted, this, &LISTENER::fetch_rows);
        connect(&model, &QAbstractItemModel::rowsRemoved, this, &LISTENER::drop_rows);
    }

    QStringList get_rows() const
    {
        QStringList result;
        append_rows(m_root, 0, result);
        return result;
    }

private:
    struct ROW
    {
        QString text;
        std::vector<ROW> below;
    };

    static void append_rows(const ROW& parent, int depth, QStringList& result)
    {
        for (const ROW& row : parent.below)
        {
            result.append(QString(depth, QLatin1Char('.')) + row.text);
            append_rows(row, depth + 1, result);
        }
    }

    ROW& find(const QModelIndex& index)
    {
        return index.isValid() ? find(index.parent()).below.at(static_cast<std::size_t>(index.row())) : m_root;
    }

    ROW fetch(const QModelIndex& index) const
    {
        ROW row;
        row.text = index.data().toString();
        for (int i = 0; i < count_rows(m_model, index); ++i)
            row.below.push_back(fetch(m_model.index(i, 0, index)));
        return row;
    }

    void fetch_all()
    {
        m_root = fetch(QModelIndex());
    }

    void fetch_texts(const QModelIndex& top_left, const QModelIndex& bottom_right)
    {
        ROW& parent = find(top_left.parent());
        for (int row = top_left.row(); row <= bottom_right.row(); ++row)
            parent.below.at(static_cast<std::size_t>(row)).text = top_left.sibling(row, 0).data().toString();
    }

    void fetch_rows(const QModelIndex& parent, int first, int last)
    {
        std::vector<ROW> rows;
        for (int row = first; row <= std::min(last, count_rows(m_model, parent) - 1); ++row)
            rows.push_back(fetch(m_model.index(row, 0, parent)));
        std::vector<ROW>& below = find(parent).below;
        ASSERT_LE(static_cast<std::size_t>(first), below.size());
        below.insert(below.begin() + first, rows.begin(), rows.end());
    }

    void drop_rows(const QModelIndex& parent, int first, int last)
    {
        std::vector<ROW>& below = find(parent).below;
        ASSERT_LT(static_cast<std::size_t>(last), below.size());
        below.erase(below.begin() + first, below.begin() + last + 1);
    }

    const QAbstractItemModel& m_model;
    ROW m_root;
};

QString make_name(std::mt19937& engine)
{
    static const char* const NAMES[] = {"a", "b", "ab", "x", "c d", "x y", "bx", "q", "r", "s"};
    return QLatin1String(NAMES[engine() % 10]);
}

int pick(std::mt19937& engine, int count)
{
    return static_cast<int>(engine() % static_cast<unsigned>(count));
}

/// Changes a tree of texts.
class TEXT_CHANGES
{
public:
    TEXT_CHANGES(std::mt19937& engine, bool is_sorted) : m_engine(engine)
    {
        Q_UNUSED(is_sorted)
    }

    TEXT_TREE& source()
    {
        return m_tree;
    }

    void change()
    {
        NODE* node = pick_node();
        const int count = static_cast<int>(node->children.size());
        switch (pick(16))
        {
        case 0:
            m_tree.insert(node, pick(count + 1), {make_name(m_engine), make_name(m_engine), make_name(m_engine)});
            break;
        case 1:
        case 2:
        case 3:
            m_tree.insert(node, pick(count + 1), make_subtree(3));
            break;
        case 4:
        case 5:
            if (count > 0)
            {
                const int first = pick(count);
                m_tree.remove(node, first, first + pick(std::min(3, count - first)));
            }
            break;
        case 6:
        case 7:
            move(node, pick_node());
            break;
        case 8:
            if (count > 1)
                m_tree.set_texts(node, pick(count - 1), {make_name(m_engine), make_name(m_engine)});
            break;
        case 9:
            if (pick(4) == 0)
                m_tree.reverse(node, pick(2) == 0);
            break;
        case 10:
            if (pick(20) == 0)
                m_tree.reset(make_subtree(4));
            break;
        default:
            if (node != m_tree.root())
                m_tree.set_text(node, make_name(m_engine), pick(3) == 0 ? 1 : 0);
        }
    }

private:
    int pick(int count)
    {
        return ::pick(m_engine, count);
    }

    NODE* pick_node()
    {
        NODE* node = m_tree.root();
        while (!node->children.empty() && pick(4) != 0)
            node = node->children[static_cast<std::size_t>(pick(static_cast<int>(node->children.size())))].get();
        return node;
    }

    std::unique_ptr<NODE> make_subtree(int depth)
    {
        auto node = std::make_unique<NODE>();
        node->texts[0] = make_name(m_engine);
        node->texts[1] = make_name(m_engine);
        for (int i = depth > 0 ? pick(4) : 0; i > 0; --i)
        {
            node->children.push_back(make_subtree(depth - 1));
            node->children.back()->parent = node.get();
        }
        return node;
    }

    void move(NODE* from, NODE* to)
    {
        const int count = static_cast<int>(from->children.size());
        if (count == 0)
            return;
        const int first = pick(count);
        const int last = first + pick(std::min(2, count - first));
        m_tree.move(from, first, last, to, pick(static_cast<int>(to->children.size()) + 1));
    }

    std::mt19937& m_engine;
    TEXT_TREE m_tree;
};

/// Changes a tree of items, whose rows may lack items and whose levels may have different columns.
class ITEM_CHANGES
{
public:
    /// Columns come and go behind the first one, below whose cells the tree goes on. QSortFilterProxyModel does not sort
    /// anew by columns that have changed places, so in a tree that is sorted they stay.
    ITEM_CHANGES(std::mt19937& engine, bool is_sorted) : m_engine(engine), m_has_column_changes(!is_sorted)
    {
    }

    QStandardItemModel& source()
    {
        return m_model;
    }

    void change()
    {
        QStandardItem* item = pick_item();
        const int count = item->rowCount();
        switch (pick(16))
        {
        case 0:
        case 1:
        case 2:
            item->insertRow(pick(count + 1), make_row(3));
            break;
        case 3:
            if (item->columnCount() > 0)
                item->insertRows(pick(count + 1), pick(3)); // without items
            break;
        case 4:
        case 5:
            if (count > 0)
            {
                const int first = pick(count);
                item->removeRows(first, 1 + pick(std::min(3, count - first)));
            }
            break;
        case 6:
            if (count > 0)
            {
                const QList<QStandardItem*> row = item->takeRow(pick(count));
                QStandardItem* to = pick_item();
                to->insertRow(pick(to->rowCount() + 1), row);
            }
            break;
        case 7:
            if (pick(4) == 0)
                m_model.sort(pick(2), pick(2) == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
            break;
        case 8:
            if (m_has_column_changes)
                item->insertColumns(1 + pick(std::max(1, item->columnCount())), 1);
            break;
        case 9:
            if (m_has_column_changes && item->columnCount() > 1)
                item->removeColumns(1 + pick(item->columnCount() - 1), 1);
            break;
        case 10:
            replace(item);
            break;
        case 11:
            if (pick(40) == 0)
                m_model.clear();
            break;
        default:
            if (count > 0)
                m_model.setData(m_model.index(pick(count), pick(item->columnCount()), item->index()),
                                make_name(m_engine));
        }
    }

private:
    int pick(int count)
    {
        return ::pick(m_engine, count);
    }

    QStandardItem* pick_item()
    {
        QStandardItem* item = m_model.invisibleRootItem();
        while (item->rowCount() > 0 && pick(4) != 0)
        {
            QStandardItem* child = item->child(pick(item->rowCount()));
            if (child == nullptr)
                break;
            item = child;
        }
        return item;
    }

    /// Puts another item in a place that has nothing below it: of what is, QStandardItemModel keeps persistent indexes.
    void replace(QStandardItem* parent)
    {
        if (parent->rowCount() == 0)
            return;
        const int row = pick(parent->rowCount());
        const QStandardItem* old_item = parent->child(row);
        if (old_item == nullptr || !old_item->hasChildren())
            parent->setChild(row, make_row(1).constFirst());
    }

    QList<QStandardItem*> make_row(int depth)
    {
        auto* item = new QStandardItem(make_name(m_engine));
        for (int i = depth > 0 ? pick(4) : 0; i > 0; --i)
            item->appendRow(make_row(depth - 1));
        return {item, new QStandardItem(make_name(m_engine))};
    }

    std::mt19937& m_engine;
    const bool m_has_column_changes;
    QStandardItemModel m_model;
};

class TREE_FILTER_RANDOM : public TOLV_GUI_TEST, public testing::WithParamInterface<unsigned>
{
protected:
    /// By the seed: a view is there; somebody listens, so that all levels are mapped at once; rows are sorted at times;
    /// the filter is looked at after every change, or at times, so that levels are mapped late.
    bool has_view() const
    {
        return GetParam() % 2 == 0;
    }
    bool has_listener() const
    {
        return GetParam() % 5 < 2;
    }
    bool is_sorted_at_times() const
    {
        return GetParam() % 3 == 0;
    }
    /// Else rows are filtered only by a filtering, and what they show in between is left open.
    bool is_dynamic() const
    {
        return GetParam() % 7 != 6;
    }
    bool is_looked_at_always() const
    {
        return GetParam() % 4 < 2;
    }

    template <class CHANGES>
    void run()
    {
        CHANGES changes(m_engine, is_sorted_at_times());
        TOLV_TREE_FILTER_PROXY_MODEL filter;
        filter.setDynamicSortFilter(is_dynamic());
        filter.setSourceModel(&changes.source());
        const QAbstractItemModelTester tester(&filter, QAbstractItemModelTester::FailureReportingMode::Fatal);
        QTreeView view;
        if (has_view())
        {
            view.setModel(&filter);
            view.show();
        }
        const auto listener = has_listener() ? std::make_unique<LISTENER>(filter) : nullptr;
        for (int step = 0; step < 300; ++step)
        {
            SCOPED_TRACE(step);
            const int what = pick(m_engine, 20);
            if (what == 0)
                filter_anew(filter);
            else if (what == 1 && is_sorted_at_times())
                filter.sort(pick(m_engine, 3) - 1, pick(m_engine, 2) == 0 ? Qt::AscendingOrder : Qt::DescendingOrder);
            else if (what == 2 && has_view())
                view.expandAll();
            else if (what == 3)
                hold_row(filter);
            else
                changes.change();
            if (HasFatalFailure())
                return;
            check_held_rows(filter);
            if (is_dynamic() && (is_looked_at_always() || pick(m_engine, 3) == 0))
                check_rows(filter);
            if (listener != nullptr)
            {
                ASSERT_EQ(get_rows(filter), listener->get_rows());
            }
            if (HasFailure())
                return;
        }
    }

private:
    void filter_anew(TOLV_TREE_FILTER_PROXY_MODEL& filter)
    {
        static const QStringList KEYWORDS{QString(),
                                          QStringLiteral("x"),
                                          QStringLiteral("a"),
                                          QStringLiteral("c*"),
                                          QStringLiteral("y x"),
                                          QStringLiteral("nothing")};
        m_settings.include_child = pick(m_engine, 3) != 0;
        m_settings.include_invisible_root_child = pick(m_engine, 4) == 0;
        m_settings.keyword = KEYWORDS[pick(m_engine, KEYWORDS.size())];
        if (pick(m_engine, 4) == 0)
            m_settings.columns.append(pick(m_engine, 2));
        else if (pick(m_engine, 3) == 0)
            m_settings.columns.clear();
        filter.set_include_child(m_settings.include_child);
        filter.set_include_invisible_root_child(m_settings.include_invisible_root_child);
        filter.clear_filter_column_list();
        for (const int column : qAsConst(m_settings.columns))
            filter.insert_filter_column(column);
        filter.regexp_filter(m_settings.keyword);
        // Counting looks at all levels, as somebody may do or not do.
        const bool is_counted = pick(m_engine, 2) == 0;
        const int count = is_counted ? TOLV_TREE_FILTER_PROXY_MODEL::get_search_result_count() : 0;
        if (is_counted || is_looked_at_always())
            check_rows(filter);
        ASSERT_TRUE(!is_counted || count == m_expected_count) << count << " instead of " << m_expected_count;
    }

    void check_rows(const TOLV_TREE_FILTER_PROXY_MODEL& filter)
    {
        PLAIN_FILTER plain;
        plain.include_child = m_settings.include_child;
        plain.include_invisible_root_child = m_settings.include_invisible_root_child;
        plain.columns = m_settings.columns;
        plain.setFilterRegularExpression(filter.filterRegularExpression());
        plain.setSourceModel(filter.sourceModel());
        if (filter.sortColumn() >= 0)
            plain.sort(filter.sortColumn(), filter.sortOrder());
        plain.count = 0;
        plain.invalidate();
        ASSERT_EQ(get_canonical_rows(plain), get_canonical_rows(filter));
        m_expected_count = plain.count;
        ASSERT_TRUE(filter.sortColumn() < 0 || !filter.dynamicSortFilter() || is_in_order(filter));
    }

    void hold_row(const TOLV_TREE_FILTER_PROXY_MODEL& filter)
    {
        QModelIndex index;
        while (count_rows(filter, index) > 0 && (!index.isValid() || pick(m_engine, 3) != 0))
            index = filter.index(pick(m_engine, filter.rowCount(index)), 0, index);
        m_held.push_back({filter.mapToSource(index), index});
    }

    void check_held_rows(const TOLV_TREE_FILTER_PROXY_MODEL& filter)
    {
        for (const auto& [source, shown] : m_held)
        {
            ASSERT_TRUE(!shown.isValid() || filter.mapToSource(shown) == source);
        }
        if (m_held.size() > 20)
            m_held.erase(m_held.begin());
    }

    std::mt19937 m_engine{GetParam()};
    SETTINGS m_settings;
    int m_expected_count = 0;
    std::vector<std::pair<QPersistentModelIndex, QPersistentModelIndex>> m_held;
};

TEST_P(TREE_FILTER_RANDOM, a_standing_filter_follows_a_tree_of_texts)
{
    run<TEXT_CHANGES>();
}

TEST_P(TREE_FILTER_RANDOM, a_standing_filter_follows_a_tree_of_items)
{
    run<ITEM_CHANGES>();
}

INSTANTIATE_TEST_SUITE_P(seeds, TREE_FILTER_RANDOM, testing::Range(1U, 17U));
} // namespace
