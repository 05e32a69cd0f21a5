// A hierarchy of 1.1 million instances, ten of each module in the one above: opening it in a view, unfolding it, and
// filtering it by its own filter, beside Qt's recursive filter on the same model. Then the same of a module that holds a
// million instances side by side, all of them on show.

#include "gui_bench.h"
#include "hierarchy_filter_model.h"
#include "hierarchy_model.h"
#include "netlist_reader.h"

#include <QRegularExpression>
#include <QSortFilterProxyModel>
#include <QTreeView>

#include <memory>
#include <string>

namespace
{
constexpr int LEVELS = 6;
constexpr int FAN_OUT = 10;

/// Modules "m0" to "m6", each with ten instances of the one before; "m0" has two cells.
std::shared_ptr<const NETLIST> get_netlist()
{
    static const std::shared_ptr<const NETLIST> netlist = []
    {
        std::string text = R"({"modules":{"m0":{"cells":{"c":{"type":"LUT"},"d":{"type":"DFF"}}})";
        for (int level = 1; level <= LEVELS; ++level)
        {
            text += ",\"m" + std::to_string(level) + R"(":{"cells":{)";
            for (int i = 0; i < FAN_OUT; ++i)
            {
                text += (i > 0 ? ",\"u_" : "\"u_") + std::to_string(level) + "_" + std::to_string(i);
                text += R"(":{"type":"m)" + std::to_string(level - 1) + "\"}";
            }
            text += "}}";
        }
        return NETLIST_READER::read_text(text + "}}", "deep.json").netlist;
    }();
    return netlist;
}

/// A top with a million instances.
std::shared_ptr<const NETLIST> get_flat_netlist()
{
    static const std::shared_ptr<const NETLIST> netlist = []
    {
        std::string text = R"({"modules":{"leaf":{"cells":{"c":{"type":"LUT"}}},"top":{"cells":{)";
        for (int i = 0; i < 1000000; ++i)
            text.append(i > 0 ? ",\"u_" : "\"u_").append(std::to_string(i)).append(R"(":{"type":"leaf"})");
        return NETLIST_READER::read_text(text + "}}}}", "flat.json").netlist;
    }();
    return netlist;
}

/// What a user types: about one instance in a thousand, every second one, none.
const char* get_keyword(std::int64_t number)
{
    static const char* const keywords[] = {"u_4_", "^u_1_[0-4]", "nowhere"};
    return keywords[number];
}

struct SHOWN
{
    explicit SHOWN(bool is_own, bool is_flat = false) : hierarchy(nullptr), own(&hierarchy, nullptr)
    {
        view.setUniformRowHeights(true);
        view.resize(400, 700);
        plain.setSourceModel(&hierarchy);
        plain.setRecursiveFilteringEnabled(true);
        view.setModel(is_own ? own.get_view_model() : static_cast<QAbstractItemModel*>(&plain));
        hierarchy.set_netlist(is_flat ? get_flat_netlist() : get_netlist());
        if (is_flat)
            view.expand(view.model()->index(0, 0));
    }

    HIERARCHY_MODEL hierarchy;
    HIERARCHY_FILTER_MODEL own;
    QSortFilterProxyModel plain;
    QTreeView view;
};

void open_hierarchy(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state)
    {
        SHOWN shown(true);
        shown.view.expand(shown.view.model()->index(0, 0));
        benchmark::DoNotOptimize(shown.view.grab());
    }
}

void walk_hierarchy(benchmark::State& state)
{
    HIERARCHY_MODEL hierarchy;
    std::int64_t count = 0;
    const std::function<void(const QModelIndex&)> walk = [&](const QModelIndex& parent)
    {
        const int rows = hierarchy.rowCount(parent);
        count += rows;
        for (int row = 0; row < rows; ++row)
            walk(hierarchy.index(row, 0, parent));
    };
    for ([[maybe_unused]] auto _ : state)
    {
        hierarchy.set_netlist(get_netlist());
        count = 0;
        walk(QModelIndex());
    }
    state.counters["instances"] = static_cast<double>(count);
}

void expand_all(benchmark::State& state)
{
    SHOWN shown(state.range(0) != 0);
    for ([[maybe_unused]] auto _ : state)
    {
        shown.view.expandAll();
        state.PauseTiming();
        shown.view.collapseAll();
        state.ResumeTiming();
    }
}

void filter_own(benchmark::State& state)
{
    SHOWN shown(true);
    TOLV_TREE_FILTER_PROXY_MODEL& filter = *shown.own.get_filter_model();
    for ([[maybe_unused]] auto _ : state)
    {
        filter.regexp_filter(QString::fromLatin1(get_keyword(state.range(0))));
        benchmark::DoNotOptimize(filter.property("match_count"));
        benchmark::DoNotOptimize(shown.view.grab());
        filter.regexp_filter(QString());
    }
    filter.regexp_filter(QString::fromLatin1(get_keyword(state.range(0))));
    state.counters["matches"] = filter.property("match_count").toDouble();
}

void filter_stock(benchmark::State& state)
{
    SHOWN shown(false);
    for ([[maybe_unused]] auto _ : state)
    {
        shown.plain.setFilterRegularExpression(QString::fromLatin1(get_keyword(state.range(0))));
        benchmark::DoNotOptimize(shown.view.grab());
        shown.plain.setFilterRegularExpression(QString());
    }
}

void open_flat(benchmark::State& state)
{
    get_flat_netlist();
    for ([[maybe_unused]] auto _ : state)
    {
        SHOWN shown(true, true);
        benchmark::DoNotOptimize(shown.view.grab());
    }
}

/// Filtering, a picture, and the end of the filter. About one in a thousand, every second one, none.
template <bool IS_OWN>
void filter_flat(benchmark::State& state)
{
    static const char* const keywords[] = {"u_\\d*777$", "[02468]$", "nowhere"};
    const QString keyword = QString::fromLatin1(keywords[state.range(0)]);
    SHOWN shown(IS_OWN, true);
    TOLV_TREE_FILTER_PROXY_MODEL& own = *shown.own.get_filter_model();
    own.set_include_child(false); // the top's own name must not bring all
    for ([[maybe_unused]] auto _ : state)
    {
        for (const QString& each : {keyword, QString()})
        {
            if (IS_OWN)
                own.regexp_filter(each);
            else
                shown.plain.setFilterRegularExpression(each);
            shown.view.expand(shown.view.model()->index(0, 0));
            benchmark::DoNotOptimize(shown.view.grab());
        }
    }
}

BENCHMARK(open_hierarchy)->Unit(benchmark::kMillisecond);
BENCHMARK(walk_hierarchy)->Unit(benchmark::kMillisecond);
BENCHMARK(expand_all)->Unit(benchmark::kMillisecond)->ArgName("own")->Arg(1)->Arg(0);
BENCHMARK(filter_own)->Unit(benchmark::kMillisecond)->ArgName("keyword")->DenseRange(0, 2);
BENCHMARK(filter_stock)->Unit(benchmark::kMillisecond)->ArgName("keyword")->DenseRange(0, 2);
BENCHMARK(open_flat)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(filter_flat, true)->Unit(benchmark::kMillisecond)->ArgName("keyword")->DenseRange(0, 2);
// Qt takes rows out and in run by run: minutes for the others.
BENCHMARK_TEMPLATE(filter_flat, false)->Unit(benchmark::kMillisecond)->ArgName("keyword")->Arg(2);
} // namespace

int main(int argc, char** argv)
{
    return GUI_BENCH::run(argc, argv);
}
