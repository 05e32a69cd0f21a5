// The tree view on a tree of a million rows (1000 blocks of 10 groups of 99 rows, and those above them): the copy of
// everything, the memory of what is expanded, and the dump. Beside each the plain Qt way: the sorted list of all selected
// indexes with a text made of it, and one QTreeView::setExpanded() after the other.

#include "tolv_tree_model.h"
#include "tolv_tree_view.h"

#include <QApplication>
#include <QClipboard>
#include <QStandardItem>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <fstream>
#include <memory>

namespace
{
constexpr int BLOCK_COUNT = 1000;
constexpr int GROUP_COUNT = 10;
constexpr int LEAF_COUNT = 99;

QList<QStandardItem*> make_row(const QString& name)
{
    return {new QStandardItem(name), new QStandardItem(QStringLiteral("cell")), new QStandardItem(QStringLiteral("7"))};
}

/// The model, made once for all.
TOLV_TREE_MODEL* get_model()
{
    static const std::unique_ptr<TOLV_TREE_MODEL> model = []
    {
        auto made = std::make_unique<TOLV_TREE_MODEL>(nullptr);
        made->setHorizontalHeaderLabels({QStringLiteral("Name"), QStringLiteral("Type"), QStringLiteral("Area")});
        for (int block = 0; block < BLOCK_COUNT; ++block)
        {
            const QList<QStandardItem*> block_row = make_row(QStringLiteral("block_%1").arg(block));
            for (int group = 0; group < GROUP_COUNT; ++group)
            {
                const QList<QStandardItem*> group_row = make_row(QStringLiteral("group_%1").arg(group));
                for (int leaf = 0; leaf < LEAF_COUNT; ++leaf)
                    group_row.at(0)->appendRow(make_row(QStringLiteral("cell_%1").arg(leaf)));
                block_row.at(0)->appendRow(group_row);
            }
            made->appendRow(block_row);
        }
        return made;
    }();
    return model.get();
}

/// A view on the model, all expanded.
template <typename VIEW>
std::unique_ptr<VIEW> make_view()
{
    auto view = std::make_unique<VIEW>(nullptr);
    view->setModel(get_model());
    view->setUniformRowHeights(true);
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view->resize(600, 400);
    view->expandAll();
    return view;
}

/// Every index of the first column with children, parents before children.
std::vector<QModelIndex> get_branches()
{
    std::vector<QModelIndex> branches;
    for (int block = 0; block < BLOCK_COUNT; ++block)
    {
        branches.push_back(get_model()->index(block, 0));
        for (int group = 0; group < GROUP_COUNT; ++group)
            branches.push_back(get_model()->index(group, 0, branches[branches.size() - 1 - group]));
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
    const auto view = make_view<TOLV_TREE_VIEW>();
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
    const auto view = make_view<QTreeView>();
    const std::vector<QModelIndex> branches = get_branches();
    for ([[maybe_unused]] auto _ : state)
    {
        state.PauseTiming();
        view->collapseAll();
        QCoreApplication::processEvents();
        view->updateGeometry();
        state.ResumeTiming();
        for (const QModelIndex& index : branches)
            view->setExpanded(index, true);
    }
}

void expand_all(benchmark::State& state)
{
    const auto view = make_view<TOLV_TREE_VIEW>();
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

BENCHMARK(copy_all)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(copy_all_from_selected_indexes)->Unit(benchmark::kMillisecond);
BENCHMARK(save_expansion)->Unit(benchmark::kMillisecond);
BENCHMARK(restore_expansion)->Unit(benchmark::kMillisecond);
BENCHMARK(set_expanded_one_by_one)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(expand_all)->Unit(benchmark::kMillisecond);
BENCHMARK(dump_all)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
