// The tree view on trees of a million rows: opening and expanding, the copy of everything, the memory of what is expanded, frozen columns, and the
// dump. One tree is deep, one has thirty thousand rows at the top. Beside them the plain Qt way: the sorted list of all
// selected indexes with a text made of it, and one QTreeView::setExpanded() after the other (of the branches alone,
// while the memory brings leaves back, too).

#include "bench_rows.h"
#include "gui_bench.h"

#include "tolv_frozen_tree_view.h"
#include "tolv_tree_model.h"
#include "tolv_tree_view.h"

#include <QClipboard>
#include <QStandardItem>

#include <algorithm>
#include <fstream>
#include <memory>

namespace
{
struct SHAPE
{
    int block_count;
    int group_count;
    int leaf_count;
};

/// With fewer blocks, if there shall be fewer rows.
SHAPE fit(SHAPE shape)
{
    const int rows_in_block = 1 + shape.group_count * (1 + shape.leaf_count);
    shape.block_count = std::min(shape.block_count, std::max(1, get_row_count(2000000) / rows_in_block));
    return shape;
}

const SHAPE& get_deep_shape()
{
    static const SHAPE shape = fit({1000, 10, 99});
    return shape;
}

const SHAPE& get_shape(const benchmark::State& state)
{
    static const SHAPE broad = fit({30000, 3, 10});
    return state.range(0) == 0 ? get_deep_shape() : broad;
}

QList<QStandardItem*> make_row(const QString& name)
{
    return {new QStandardItem(name), new QStandardItem(QStringLiteral("cell")), new QStandardItem(QStringLiteral("7"))};
}

/// A million rows; the last one that was asked for is kept.
TOLV_TREE_MODEL* get_model(const SHAPE& shape)
{
    static std::unique_ptr<TOLV_TREE_MODEL> model;
    static const SHAPE* shape_of_model = nullptr;
    if (shape_of_model == &shape)
        return model.get();
    model = std::make_unique<TOLV_TREE_MODEL>(nullptr);
    shape_of_model = &shape;
    model->setHorizontalHeaderLabels({QStringLiteral("Name"), QStringLiteral("Type"), QStringLiteral("Area")});
    for (int block = 0; block < shape.block_count; ++block)
    {
        const QList<QStandardItem*> block_row = make_row(QStringLiteral("block_%1").arg(block));
        for (int group = 0; group < shape.group_count; ++group)
        {
            const QList<QStandardItem*> group_row = make_row(QStringLiteral("group_%1").arg(group));
            for (int leaf = 0; leaf < shape.leaf_count; ++leaf)
                group_row.at(0)->appendRow(make_row(QStringLiteral("cell_%1").arg(leaf)));
            block_row.at(0)->appendRow(group_row);
        }
        model->appendRow(block_row);
    }
    return model.get();
}

/// A view on the model, all expanded.
template <typename VIEW>
std::unique_ptr<VIEW> make_view(const SHAPE& shape = get_deep_shape())
{
    auto view = std::make_unique<VIEW>(nullptr);
    view->setModel(get_model(shape));
    view->setUniformRowHeights(true);
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view->resize(600, 400);
    view->expandAll();
    return view;
}

/// Every index of the first column with children, parents before children.
std::vector<QModelIndex> get_branches(const QAbstractItemModel& model)
{
    std::vector<QModelIndex> branches;
    for (int row = 0; row < model.rowCount(); ++row)
    {
        const QModelIndex block = model.index(row, 0);
        branches.push_back(block);
        for (int group = 0; group < model.rowCount(block); ++group)
            branches.push_back(model.index(group, 0, block));
    }
    return branches;
}

void copy_all(benchmark::State& state)
{
    const auto view = make_view<TOLV_TREE_VIEW>();
    view->selectAll();
    for ([[maybe_unused]] auto _ : state)
        view->on_copy_selection(state.range(0) != 0, nullptr);
    state.counters["characters"] = static_cast<double>(QGuiApplication::clipboard()->text().size());
    QGuiApplication::clipboard()->clear();
}

void copy_all_from_selected_indexes(benchmark::State& state)
{
    const auto view = make_view<QTreeView>();
    view->selectAll();
    for ([[maybe_unused]] auto _ : state)
    {
        QModelIndexList indexes = view->selectionModel()->selectedIndexes();
        std::stable_sort(indexes.begin(), indexes.end(), tolv_tree_order_indexes);
        QString text;
        for (const QModelIndex& index : qAsConst(indexes))
        {
            if (index.column() == 0)
                text += index.data().toString() + QLatin1String("\t\n");
        }
        QGuiApplication::clipboard()->setText(text);
    }
    QGuiApplication::clipboard()->clear();
}

void save_expansion(benchmark::State& state)
{
    const auto view = make_view<TOLV_TREE_VIEW>();
    for ([[maybe_unused]] auto _ : state)
        view->save_expandable_state(QModelIndex(), true);
}

void restore_expansion(benchmark::State& state)
{
    const auto view = make_view<TOLV_TREE_VIEW>(get_shape(state));
    view->save_expandable_state(QModelIndex(), true);
    for ([[maybe_unused]] auto _ : state)
    {
        state.PauseTiming();
        view->collapseAll();
        QCoreApplication::processEvents();
        state.ResumeTiming();
        view->restore_expandable_state();
    }
}

/// The branches alone, as a host would do it by hand.
void set_expanded_one_by_one(benchmark::State& state)
{
    const auto view = make_view<QTreeView>(get_shape(state));
    const std::vector<QModelIndex> branches = get_branches(*view->model());
    for ([[maybe_unused]] auto _ : state)
    {
        state.PauseTiming();
        view->collapseAll();
        QCoreApplication::processEvents();
        state.ResumeTiming();
        for (const QModelIndex& index : branches)
            view->setExpanded(index, true);
    }
}

/// Frozen columns that are all collapsed take the expansion of the main tree.
void sync_frozen_columns(benchmark::State& state)
{
    const auto view = make_view<TOLV_TREE_VIEW>(get_shape(state));
    TOLV_FROZEN_TREE_VIEW frozen(view.get());
    frozen.setModel(view->model());
    for ([[maybe_unused]] auto _ : state)
    {
        state.PauseTiming();
        frozen.collapseAll();
        state.ResumeTiming();
        frozen.sync_expanded_state();
    }
}

/// The same where nothing has changed.
void sync_frozen_columns_in_step(benchmark::State& state)
{
    const auto view = make_view<TOLV_TREE_VIEW>(get_shape(state));
    TOLV_FROZEN_TREE_VIEW frozen(view.get());
    frozen.setModel(view->model());
    frozen.sync_expanded_state();
    for ([[maybe_unused]] auto _ : state)
        frozen.sync_expanded_state();
}

/// A view is made and shown, all collapsed.
template <typename VIEW>
void open_view(benchmark::State& state)
{
    get_model(get_shape(state));
    for ([[maybe_unused]] auto _ : state)
    {
        VIEW view(nullptr);
        view.setModel(get_model(get_shape(state)));
        view.setUniformRowHeights(true);
        view.resize(600, 400);
        view.show();
        QCoreApplication::processEvents();
    }
}

template <typename VIEW>
void expand_all(benchmark::State& state)
{
    const auto view = make_view<VIEW>();
    for ([[maybe_unused]] auto _ : state)
    {
        state.PauseTiming();
        view->collapseAll();
        state.ResumeTiming();
        view->expandAll();
    }
}

void dump_all(benchmark::State& state)
{
    const auto view = make_view<TOLV_TREE_VIEW>();
    for ([[maybe_unused]] auto _ : state)
    {
        std::ofstream out("/dev/null");
        view->dump_tree_view_data(QModelIndex(), out, 0);
    }
}
} // namespace

BENCHMARK(copy_all)->ArgName("all_columns")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(copy_all_from_selected_indexes)->Unit(benchmark::kMillisecond);
BENCHMARK(save_expansion)->Unit(benchmark::kMillisecond);
BENCHMARK(restore_expansion)->ArgName("broad")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(set_expanded_one_by_one)->ArgName("broad")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(sync_frozen_columns)->ArgName("broad")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(sync_frozen_columns_in_step)->ArgName("broad")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(open_view, QTreeView)->ArgName("broad")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(open_view, TOLV_TREE_VIEW)->ArgName("broad")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(expand_all, QTreeView)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(expand_all, TOLV_TREE_VIEW)->Unit(benchmark::kMillisecond);
BENCHMARK(dump_all)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    return GUI_BENCH::run(argc, argv);
}
