// Filtering large trees: TOLV_TREE_FILTER_PROXY_MODEL beside QSortFilterProxyModel with recursive filtering and beside
// KRecursiveFilterProxyModel. All answer the same question: a row stays if it or something below it matches. "cold" is a
// filter on a tree that nobody has looked at, and then the whole way through what it shows, or (first_level) only through
// its top; "warm" is a filter, and its clearing, on a tree that has been shown in full; "sort" turns the order of such a
// tree round and back.

#include "bench_rows.h"
#include "gui_bench.h"

#include "tolv_tree_filter_proxy_model.h"

#ifdef TOLV_HAS_KITEMMODELS
#include <KRecursiveFilterProxyModel>
#endif

#include <QStandardItemModel>
#include <QTreeView>

#include <memory>
#include <string>

namespace
{
enum SHAPE
{
    FLAT,
    FLAT_WITH_BRANCHES, ///< every thousandth row has a child
    TEN_CHILDREN
};

constexpr int ALL = 1000000;

/// Rows that match: an "x" is in their texts.
enum HITS
{
    ONE_IN_1000,
    HALF,
    NONE
};

bool is_hit(int number, HITS hits)
{
    return hits == HALF ? number % 2 == 0 : hits == ONE_IN_1000 && number % 1000 == 500;
}

QString make_text(int number, HITS hits)
{
    return is_hit(number, hits) ? QStringLiteral("instance_x_%1").arg(number)
                                : QStringLiteral("instance_%1").arg(number);
}

void append_children(QStandardItem* parent, int count, int& number, HITS hits)
{
    if (count <= 0)
        return;
    QList<QStandardItem*> rows;
    for (int i = 0; i < 10 && count > 0; ++i)
    {
        auto* item = new QStandardItem(make_text(number++, hits));
        append_children(item, count / 10 - 1, number, hits);
        rows.append(item);
    }
    parent->appendRows(rows);
}

/// One tree is kept: its making takes longer than all that is measured.
QStandardItemModel& get_tree(SHAPE shape, int count, HITS hits)
{
    static std::unique_ptr<QStandardItemModel> model;
    static int shape_of_model = -1;
    static int count_of_model = 0;
    static int hits_of_model = -1;
    if (shape == shape_of_model && count == count_of_model && hits == hits_of_model)
        return *model;
    model = std::make_unique<QStandardItemModel>();
    shape_of_model = shape;
    count_of_model = count;
    hits_of_model = hits;
    int number = 0;
    if (shape == TEN_CHILDREN)
        append_children(model->invisibleRootItem(), count, number, hits);
    else
    {
        QList<QStandardItem*> rows;
        while (number < count)
        {
            rows.append(new QStandardItem(make_text(number++, hits)));
            if (shape == FLAT_WITH_BRANCHES && number % 1000 == 1)
                rows.constLast()->appendRow(new QStandardItem(QStringLiteral("child")));
        }
        model->invisibleRootItem()->appendRows(rows);
    }
    return *model;
}

int walk(const QAbstractItemModel& model, const QModelIndex& parent)
{
    const int count = model.rowCount(parent);
    int sum = count;
    for (int row = 0; row < count; ++row)
    {
        const QModelIndex index = model.index(row, 0, parent);
        if (model.hasChildren(index))
            sum += walk(model, index);
    }
    return sum;
}

/// The three by one face.
struct OURS : TOLV_TREE_FILTER_PROXY_MODEL
{
    OURS()
    {
        set_include_child(false);
    }
    void filter(const QString& keyword)
    {
        regexp_filter(keyword);
    }
};

/// With the descendants of matches, as it comes.
struct OURS_WITH_CHILDREN : TOLV_TREE_FILTER_PROXY_MODEL
{
    void filter(const QString& keyword)
    {
        regexp_filter(keyword);
    }
};

struct STOCK : QSortFilterProxyModel
{
    STOCK()
    {
        setRecursiveFilteringEnabled(true);
    }
    void filter(const QString& keyword)
    {
        setFilterRegularExpression(QRegularExpression(keyword, QRegularExpression::CaseInsensitiveOption));
    }
};

#ifdef TOLV_HAS_KITEMMODELS
// Deprecated, as Qt has taken up what it does; it is measured all the same.
QT_WARNING_PUSH
QT_WARNING_DISABLE_DEPRECATED
struct KDE : KRecursiveFilterProxyModel
{
    KDE() : KRecursiveFilterProxyModel(nullptr)
    {
    }
    void filter(const QString& keyword)
    {
        setFilterRegularExpression(QRegularExpression(keyword, QRegularExpression::CaseInsensitiveOption));
    }
};
QT_WARNING_POP
#endif

template <class FILTER>
void cold(benchmark::State& state, SHAPE shape, HITS hits, bool has_view)
{
    QStandardItemModel& tree = get_tree(shape, static_cast<int>(state.range(0)), hits);
    for ([[maybe_unused]] auto _ : state)
    {
        FILTER filter;
        filter.setSourceModel(&tree);
        QTreeView view;
        view.setUniformRowHeights(true);
        filter.filter(QStringLiteral("_x_"));
        if (has_view)
        {
            view.setModel(&filter);
            view.show();
            view.doItemsLayout();
            QCoreApplication::processEvents();
        }
        benchmark::DoNotOptimize(walk(filter, QModelIndex()));
    }
}

template <class FILTER>
void first_level(benchmark::State& state, SHAPE shape, HITS hits)
{
    QStandardItemModel& tree = get_tree(shape, static_cast<int>(state.range(0)), hits);
    for ([[maybe_unused]] auto _ : state)
    {
        FILTER filter;
        filter.setSourceModel(&tree);
        filter.filter(QStringLiteral("_x_"));
        benchmark::DoNotOptimize(filter.rowCount());
    }
}

/// Shows all, filters, and takes the filter away again.
template <class FILTER>
void warm(benchmark::State& state, SHAPE shape, HITS hits, bool has_view)
{
    QStandardItemModel& tree = get_tree(shape, static_cast<int>(state.range(0)), hits);
    FILTER filter;
    filter.setSourceModel(&tree);
    QTreeView view;
    if (has_view)
    {
        view.setUniformRowHeights(true);
        view.setModel(&filter);
        view.show();
        if (shape == TEN_CHILDREN)
            view.expandAll();
        const QModelIndex middle = filter.index(filter.rowCount() / 2, 0);
        view.setCurrentIndex(middle);
        QCoreApplication::processEvents();
    }
    walk(filter, QModelIndex());
    for ([[maybe_unused]] auto _ : state)
    {
        filter.filter(QStringLiteral("_x_"));
        if (has_view)
            QCoreApplication::processEvents();
        filter.filter(QString());
        if (has_view)
            QCoreApplication::processEvents();
    }
}

void show_for_selecting(QTreeView& view, QAbstractItemModel& model)
{
    view.setUniformRowHeights(true);
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    view.setModel(&model);
    view.show();
}

/// With what a view does behind each.
template <class FILTER>
void filter_and_clear(FILTER& filter)
{
    filter.filter(QStringLiteral("_x_"));
    QCoreApplication::processEvents();
    filter.filter(QString());
    QCoreApplication::processEvents();
}

/// The same with all rows selected.
template <class FILTER>
void warm_selected(benchmark::State& state)
{
    QStandardItemModel& tree = get_tree(FLAT, static_cast<int>(state.range(0)), HALF);
    FILTER filter;
    filter.setSourceModel(&tree);
    QTreeView view;
    show_for_selecting(view, filter);
    for ([[maybe_unused]] auto _ : state)
    {
        state.PauseTiming();
        view.clearSelection();
        view.selectAll();
        state.ResumeTiming();
        filter_and_clear(filter);
    }
}

/// With what a user holds in a view: a current row, a hundred rows selected here and there, and all branches expanded.
template <class FILTER>
void warm_held(benchmark::State& state)
{
    QStandardItemModel& tree = get_tree(FLAT_WITH_BRANCHES, static_cast<int>(state.range(0)), HALF);
    FILTER filter;
    filter.setSourceModel(&tree);
    QTreeView view;
    show_for_selecting(view, filter);
    const int count = filter.rowCount();
    for ([[maybe_unused]] auto _ : state)
    {
        state.PauseTiming();
        view.expandAll();
        view.setCurrentIndex(filter.index(count / 2 + 1, 0));
        for (int row = 7; row < count; row += count / 100 + 1)
            view.selectionModel()->select(filter.index(row, 0), QItemSelectionModel::Select);
        QCoreApplication::processEvents();
        state.ResumeTiming();
        filter_and_clear(filter);
    }
    state.counters["selected"] = view.selectionModel()->selectedRows().size();
}

/// Turns the order round and back.
template <class FILTER>
void sort(benchmark::State& state, SHAPE shape, bool is_filtered, bool has_view)
{
    QStandardItemModel& tree = get_tree(shape, static_cast<int>(state.range(0)), HALF);
    FILTER filter;
    filter.setSourceModel(&tree);
    if (is_filtered)
        filter.filter(QStringLiteral("_x_"));
    filter.sort(0, Qt::AscendingOrder);
    QTreeView view;
    if (has_view)
    {
        view.setUniformRowHeights(true);
        view.setModel(&filter);
        view.show();
        view.expandAll();
    }
    walk(filter, QModelIndex());
    for ([[maybe_unused]] auto _ : state)
    {
        for (const Qt::SortOrder order : {Qt::DescendingOrder, Qt::AscendingOrder})
        {
            filter.sort(0, order);
            if (has_view)
                QCoreApplication::processEvents();
        }
    }
}

template <class... PARAMETERS>
void add(const char* way, const char* filter, const char* name, int count,
         void (*measure)(benchmark::State&, PARAMETERS...), PARAMETERS... parameters)
{
    benchmark::RegisterBenchmark((std::string(way) + "/" + name + "/" + filter).c_str(), measure, parameters...)
        ->Arg(get_row_count(count))
        ->Unit(benchmark::kMillisecond);
}

void add_cold(const char* name, SHAPE shape, HITS hits, bool has_view)
{
    add("cold", "stock", name, ALL, cold<STOCK>, shape, hits, has_view);
#ifdef TOLV_HAS_KITEMMODELS
    add("cold", "kde", name, ALL, cold<KDE>, shape, hits, has_view);
#endif
    add("cold", "ours", name, ALL, cold<OURS>, shape, hits, has_view);
    add("cold", "ours_with_children", name, ALL, cold<OURS_WITH_CHILDREN>, shape, hits, has_view);
}

void add_first_level(const char* name, SHAPE shape, HITS hits)
{
    add("first_level", "stock", name, ALL, first_level<STOCK>, shape, hits);
    add("first_level", "ours", name, ALL, first_level<OURS>, shape, hits);
    add("first_level", "ours_with_children", name, ALL, first_level<OURS_WITH_CHILDREN>, shape, hits);
}

void add_warm(const char* name, int count, SHAPE shape, HITS hits, bool has_view)
{
    add("warm", "stock", name, count, warm<STOCK>, shape, hits, has_view);
#ifdef TOLV_HAS_KITEMMODELS
    add("warm", "kde", name, count, warm<KDE>, shape, hits, has_view);
#endif
    add("warm", "ours", name, count, warm<OURS>, shape, hits, has_view);
    add("warm", "ours_with_children", name, count, warm<OURS_WITH_CHILDREN>, shape, hits, has_view);
}

void add_sort(const char* name, SHAPE shape, bool is_filtered, bool has_view)
{
    add("sort", "stock", name, ALL, sort<STOCK>, shape, is_filtered, has_view);
#ifdef TOLV_HAS_KITEMMODELS
    add("sort", "kde", name, ALL, sort<KDE>, shape, is_filtered, has_view);
#endif
    add("sort", "ours", name, ALL, sort<OURS>, shape, is_filtered, has_view);
}
} // namespace

int main(int argc, char** argv)
{
    add_cold("flat_one_in_1000", FLAT, ONE_IN_1000, false);
    add_first_level("flat_one_in_1000", FLAT, ONE_IN_1000);
    add_cold("flat_half", FLAT, HALF, false);
    add_cold("flat_half_with_view", FLAT, HALF, true);
    add_cold("flat_none", FLAT, NONE, false);
    add_cold("ten_children_one_in_1000", TEN_CHILDREN, ONE_IN_1000, false);
    add_first_level("ten_children_one_in_1000", TEN_CHILDREN, ONE_IN_1000);
    add_cold("ten_children_half", TEN_CHILDREN, HALF, false);
    add_cold("ten_children_half_with_view", TEN_CHILDREN, HALF, true);
    add_first_level("ten_children_half", TEN_CHILDREN, HALF);
    add_cold("ten_children_none", TEN_CHILDREN, NONE, false);

    add_sort("flat", FLAT, false, false);
    add_sort("flat_with_view", FLAT, false, true);
    add_sort("flat_half", FLAT, true, false);
    add_sort("ten_children", TEN_CHILDREN, false, false);
    add_sort("ten_children_with_view", TEN_CHILDREN, false, true);

    // The rivals take time by the square of these, or more.
    const int ten_thousand = get_row_count(ALL) / 100;
    add_warm("ten_children_half_with_view", ten_thousand / 2, TEN_CHILDREN, HALF, true);
    add("warm_selected", "stock", "flat_half", ten_thousand, warm_selected<STOCK>);
    add("warm_selected", "ours", "flat_half", ten_thousand, warm_selected<OURS>);
    add("warm_selected", "ours", "flat_half", 100000, warm_selected<OURS>);
    add_warm("flat_half", 100000, FLAT, HALF, false);
    add_warm("flat_half_with_view", 100000, FLAT, HALF, true);
    add("warm_held", "stock", "flat_half", ten_thousand, warm_held<STOCK>);
    add("warm_held", "ours", "flat_half", ten_thousand, warm_held<OURS>);
    add("warm_held", "ours", "flat_half", 100000, warm_held<OURS>);
    add("warm", "ours", "ten_children_one_in_1000_with_view", 100000, warm<OURS>, TEN_CHILDREN, ONE_IN_1000, true);
    add("warm", "ours", "flat_half_with_view", ALL, warm<OURS>, FLAT, HALF, true);
    add("warm", "ours", "ten_children_half", ALL, warm<OURS>, TEN_CHILDREN, HALF, false);
    return GUI_BENCH::run(argc, argv);
}
