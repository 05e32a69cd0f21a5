// Filtering large trees: TOLV_TREE_FILTER_PROXY_MODEL beside QSortFilterProxyModel with recursive filtering and beside
// KRecursiveFilterProxyModel. All answer the same question: a row stays if it or something below it matches. "cold" is a
// filter on a tree that nobody has looked at, and then the whole way through what it shows, or (first_level) only through
// its top; "warm" is a filter, and its clearing, on a tree that has been shown in full.

#include "tolv_tree_filter_proxy_model.h"

#ifdef TOLV_HAS_KITEMMODELS
#include <KRecursiveFilterProxyModel>
#endif

#include <QApplication>
#include <QStandardItemModel>
#include <QTreeView>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace
{
enum SHAPE
{
    FLAT,
    TEN_CHILDREN
};

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
            rows.append(new QStandardItem(make_text(number++, hits)));
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

/// The same with all rows selected.
template <class FILTER>
void warm_selected(benchmark::State& state)
{
    QStandardItemModel& tree = get_tree(FLAT, static_cast<int>(state.range(0)), HALF);
    FILTER filter;
    filter.setSourceModel(&tree);
    QTreeView view;
    view.setUniformRowHeights(true);
    view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    view.setModel(&filter);
    view.show();
    for ([[maybe_unused]] auto _ : state)
    {
        view.selectAll();
        filter.filter(QStringLiteral("_x_"));
        QCoreApplication::processEvents();
        filter.filter(QString());
        QCoreApplication::processEvents();
    }
}

template <class... PARAMETERS>
void add(const char* way, const char* filter, const char* name, int count,
         void (*measure)(benchmark::State&, PARAMETERS...), PARAMETERS... parameters)
{
    benchmark::RegisterBenchmark((std::string(way) + "/" + name + "/" + filter).c_str(), measure, parameters...)
        ->Arg(count)
        ->Unit(benchmark::kMillisecond);
}

void add_cold(const char* name, SHAPE shape, HITS hits, bool has_view)
{
    constexpr int COUNT = 1000000;
    add("cold", "stock", name, COUNT, cold<STOCK>, shape, hits, has_view);
#ifdef TOLV_HAS_KITEMMODELS
    add("cold", "kde", name, COUNT, cold<KDE>, shape, hits, has_view);
#endif
    add("cold", "ours", name, COUNT, cold<OURS>, shape, hits, has_view);
    add("cold", "ours_with_children", name, COUNT, cold<OURS_WITH_CHILDREN>, shape, hits, has_view);
}

void add_first_level(const char* name, SHAPE shape, HITS hits)
{
    constexpr int COUNT = 1000000;
    add("first_level", "stock", name, COUNT, first_level<STOCK>, shape, hits);
    add("first_level", "ours", name, COUNT, first_level<OURS>, shape, hits);
    add("first_level", "ours_with_children", name, COUNT, first_level<OURS_WITH_CHILDREN>, shape, hits);
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
} // namespace

int main(int argc, char** argv)
{
    const QApplication app(argc, argv);
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
    add_warm("flat_half", 10000, FLAT, HALF, false);
    add_warm("flat_half_with_view", 10000, FLAT, HALF, true);
    add_warm("ten_children_half_with_view", 5000, TEN_CHILDREN, HALF, true);
    add("warm_selected", "stock", "flat_half", 10000, warm_selected<STOCK>);
    add("warm_selected", "ours", "flat_half", 10000, warm_selected<OURS>);
    add("warm_selected", "ours", "flat_half", 100000, warm_selected<OURS>);
    add("warm", "stock", "flat_half", 100000, warm<STOCK>, FLAT, HALF, false);
    add("warm", "ours", "flat_half", 100000, warm<OURS>, FLAT, HALF, false);
    add("warm", "ours_with_children", "flat_half", 100000, warm<OURS_WITH_CHILDREN>, FLAT, HALF, false);
    add("warm", "stock", "flat_half_with_view", 100000, warm<STOCK>, FLAT, HALF, true);
    add("warm", "ours", "flat_half_with_view", 100000, warm<OURS>, FLAT, HALF, true);
    add("warm", "ours", "ten_children_one_in_1000_with_view", 100000, warm<OURS>, TEN_CHILDREN, ONE_IN_1000, true);
    add("warm", "ours", "flat_half_with_view", 1000000, warm<OURS>, FLAT, HALF, true);
    add("warm", "ours", "ten_children_half", 1000000, warm<OURS>, TEN_CHILDREN, HALF, false);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
