// The registry of icons beside Qt's own way to the same icons, in one run: making all of them, getting one, the first
// picture, and pictures that are there already; and what each start of a tool pays for the resource tree.

#include "tolv_icon.h"
#include "tolv_lazy_icon_engine.h"

#include <QApplication>
#include <QIcon>
#include <QMap>
#include <QPainter>

#include <benchmark/benchmark.h>

#include <chrono>

// What the loading and the unloading of the library do. The macros want to stand outside of namespaces.
static void register_resources()
{
    Q_INIT_RESOURCE(tolv);
}

static void remove_resources()
{
    Q_CLEANUP_RESOURCE(tolv);
}

namespace
{
void register_and_remove_resources(benchmark::State& state)
{
    remove_resources();
    for ([[maybe_unused]] auto _ : state)
    {
        register_resources();
        remove_resources();
    }
    register_resources();
}
BENCHMARK(register_and_remove_resources);

QStringList get_files()
{
    QStringList files;
    for (int i = 1; i <= TOLV_ICON_COUNT; ++i)
        files << tolv_get_icon_file_names(static_cast<TOLV_ICON_ENUM>(i)).at(0);
    return files;
}

/// The one pass over the table: an icon for each file into a map, on the engine that `make` gives.
template <typename MAKE>
void make_all(benchmark::State& state, MAKE make)
{
    const QStringList files = get_files();
    for ([[maybe_unused]] auto _ : state)
    {
        QMap<int, QIcon> icons;
        int value = 0;
        for (const QString& file : files)
        {
            QIcon icon = make();
            icon.addFile(file);
            icons.insert(icons.constEnd(), ++value, icon);
        }
        benchmark::DoNotOptimize(icons);
    }
}

void make_all_lazily(benchmark::State& state)
{
    make_all(state, [] { return QIcon(new TOLV_LAZY_ICON_ENGINE); });
}
BENCHMARK(make_all_lazily)->Unit(benchmark::kMicrosecond);

void make_all_stock(benchmark::State& state)
{
    make_all(state, [] { return QIcon(); });
}
BENCHMARK(make_all_stock)->Unit(benchmark::kMicrosecond);

void get_icon_again(benchmark::State& state)
{
    int value = 0;
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(tolv_get_icon(static_cast<TOLV_ICON_ENUM>(value++ % TOLV_ICON_COUNT + 1)));
}
BENCHMARK(get_icon_again);

void look_up_and_copy(benchmark::State& state)
{
    QMap<int, QIcon> icons;
    for (int i = 1; i <= TOLV_ICON_COUNT; ++i)
        icons.insert(i, tolv_get_icon(static_cast<TOLV_ICON_ENUM>(i)));
    int value = 0;
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(icons.value(value++ % TOLV_ICON_COUNT + 1));
}
BENCHMARK(look_up_and_copy);

void paint(benchmark::State& state, const QIcon& icon)
{
    QImage picture(16, 16, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&picture);
    for ([[maybe_unused]] auto _ : state)
        icon.paint(&painter, picture.rect());
}

void paint_again(benchmark::State& state)
{
    paint(state, tolv_get_icon(TOLV_COPY_ICON));
}
BENCHMARK(paint_again);

void paint_again_stock(benchmark::State& state)
{
    paint(state, QIcon(tolv_get_icon_file_names(TOLV_COPY_ICON).at(0)));
}
BENCHMARK(paint_again_stock);

/// The very first call of the process, which no loop can measure.
void report_first_call()
{
    const auto start = std::chrono::steady_clock::now();
    const QIcon icon = tolv_get_icon(TOLV_COPY_ICON);
    benchmark::DoNotOptimize(icon.cacheKey());
    const std::chrono::duration<double, std::micro> time = std::chrono::steady_clock::now() - start;
    benchmark::AddCustomContext("first_call_microseconds", std::to_string(time.count()));
}
} // namespace

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    report_first_call();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
