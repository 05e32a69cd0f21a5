// Reading a netlist of about 15 MB, as yosys writes it: to a model that can be shown, beside Qt's plain JSON document of
// the same text.

#include "netlist_connectivity.h"
#include "netlist_generator.h"
#include "netlist_reader.h"
#include "netlist_statistics.h"

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QJsonDocument>

namespace
{
constexpr std::size_t CELLS = 17500;

const std::string& get_text()
{
    static const std::string text = NETLIST_GENERATOR::make(CELLS);
    return text;
}

void read_netlist(benchmark::State& state)
{
    const std::string& text = get_text();
    for (auto _ : state)
    {
        const NETLIST_READ_RESULT result = NETLIST_READER::read_text(text, "large.json");
        if (result.netlist == nullptr)
            state.SkipWithError(result.error.get_text().c_str());
        benchmark::DoNotOptimize(result.netlist.get());
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
    state.counters["MB"] = static_cast<double>(text.size()) / 1e6;
}

void read_json_document(benchmark::State& state)
{
    const std::string& text = get_text();
    const QByteArray bytes = QByteArray::fromRawData(text.data(), static_cast<int>(text.size()));
    for (auto _ : state)
    {
        const QJsonDocument document = QJsonDocument::fromJson(bytes);
        if (!document.isObject())
            state.SkipWithError("no object");
        benchmark::DoNotOptimize(&document);
    }
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

void count_connectivity(benchmark::State& state)
{
    const NETLIST_READ_RESULT result = NETLIST_READER::read_text(get_text(), "large.json");
    for (auto _ : state)
    {
        const NETLIST_CONNECTIVITY connectivity(result.netlist->modules[0]);
        benchmark::DoNotOptimize(&connectivity);
    }
}

void count_totals(benchmark::State& state)
{
    const NETLIST_READ_RESULT result = NETLIST_READER::read_text(get_text(), "large.json");
    for (auto _ : state)
        benchmark::DoNotOptimize(netlist_count_by_type(*result.netlist, result.netlist->top_modules.front()));
}
} // namespace

BENCHMARK(read_netlist)->Unit(benchmark::kMillisecond);
BENCHMARK(read_json_document)->Unit(benchmark::kMillisecond);
BENCHMARK(count_connectivity)->Unit(benchmark::kMillisecond);
BENCHMARK(count_totals)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
