#include "cfgq_registry.h"
#include "tolv_color.h"
#include "tolv_font.h"
#include "tolv_gdi_manager.h"
#include "tolv_gdi_tables.h"
#include "tolv_pen.h"

#include <QApplication>
#include <QFile>
#include <QPalette>
#include <QSettings>
#include <QTemporaryDir>
#include <QVariant>
#include <benchmark/benchmark.h>

#include <array>
#include <unordered_map>

/// What painting code pays for a named colour or pen, beside the plain ways to get at one; and what the start of the
/// drawing resources costs, beside one load of the same file by QSettings.

namespace
{
/// The resources that the look-ups go through, in an order that jumps over the table.
const std::array<TOLV_COLOR_RESOURCE, 64>& get_colors()
{
    static const std::array<TOLV_COLOR_RESOURCE, 64> colors = []
    {
        std::array<TOLV_COLOR_RESOURCE, 64> result{};
        const auto rows = tolv_get_initial_colors();
        for (std::size_t i = 0, next = 31; i < result.size(); next = (next + 37) % rows.size())
        {
            if (!rows[next].is_system)
                result[i++] = rows[next].resource;
        }
        return result;
    }();
    return colors;
}

template <class LOOK_UP>
void measure(benchmark::State& state, const LOOK_UP& look_up)
{
    std::size_t i = 0;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(look_up(i));
        i = (i + 1) % 64;
    }
}

// ---- Colours --------------------------------------------------------------------------------------------------------

void color_unordered_map_find(benchmark::State& state)
{
    std::unordered_map<int, QColor*> map;
    for (const TOLV_INITIAL_COLOR& row : tolv_get_initial_colors())
        map.emplace(row.resource, new QColor(row.color));
    const auto& colors = get_colors();
    measure(state, [&](std::size_t i) { return QColor(*map.find(colors[i])->second); });
    for (const auto& entry : map)
        delete entry.second;
}
BENCHMARK(color_unordered_map_find);

void color_qpalette_color(benchmark::State& state)
{
    const QPalette palette = QApplication::palette();
    measure(state, [&](std::size_t i) { return palette.color(static_cast<QPalette::ColorRole>(i % 16)); });
}
BENCHMARK(color_qpalette_color);

void color_qapplication_palette_color(benchmark::State& state)
{
    measure(state,
            [](std::size_t i) { return QApplication::palette().color(static_cast<QPalette::ColorRole>(i % 16)); });
}
BENCHMARK(color_qapplication_palette_color);

void color_manager_get_color(benchmark::State& state)
{
    const TOLV_GDI_MANAGER* const manager = TOLV_GDI_MANAGER::get_instance();
    const auto& colors = get_colors();
    measure(state, [&](std::size_t i) { return manager->get_color(colors[i]); });
}
BENCHMARK(color_manager_get_color);

void color_value_object_get_color(benchmark::State& state)
{
    const auto& resources = get_colors();
    const std::vector<TOLV_COLOR> colors(resources.begin(), resources.end());
    measure(state, [&](std::size_t i) { return colors[i].get_color(); });
}
BENCHMARK(color_value_object_get_color);

void color_system_row_get_color(benchmark::State& state)
{
    const TOLV_COLOR color(TOLV_WINDOW_TEXT_COLOR);
    measure(state, [&](std::size_t) { return color.get_color(); });
}
BENCHMARK(color_system_row_get_color);

// ---- Pens -----------------------------------------------------------------------------------------------------------

void pen_unordered_map_find(benchmark::State& state)
{
    std::unordered_map<int, QPen*> map;
    for (const TOLV_INITIAL_PEN& row : tolv_get_initial_pens())
        map.emplace(row.resource, TOLV_GDI_MANAGER::get_instance()->get_pen(row.resource));
    const auto rows = tolv_get_initial_pens();
    measure(state, [&](std::size_t i) { return map.find(rows[2 * i].resource)->second; });
}
BENCHMARK(pen_unordered_map_find);

void pen_manager_get_pen(benchmark::State& state)
{
    const TOLV_GDI_MANAGER* const manager = TOLV_GDI_MANAGER::get_instance();
    const auto rows = tolv_get_initial_pens();
    measure(state, [&](std::size_t i) { return manager->get_pen(rows[2 * i].resource); });
}
BENCHMARK(pen_manager_get_pen);

void pen_value_object_get_pen(benchmark::State& state)
{
    const TOLV_PEN pen(TOLV_RED_PEN);
    measure(state, [&](std::size_t) { return pen.get_pen(); });
}
BENCHMARK(pen_value_object_get_pen);

void pen_qpen_made_anew(benchmark::State& state)
{
    measure(state, [](std::size_t i)
            { return QPen(QColor(1, 2, 3), static_cast<int>(i), Qt::DashLine, Qt::RoundCap, Qt::MiterJoin); });
}
BENCHMARK(pen_qpen_made_anew);

void pen_get_custom_pen_known(benchmark::State& state)
{
    TOLV_GDI_MANAGER* const manager = TOLV_GDI_MANAGER::get_instance();
    measure(state,
            [&](std::size_t i) {
                return manager->get_custom_pen(Qt::DashLine, Qt::RoundCap, Qt::MiterJoin, static_cast<int>(i),
                                               QColor(1, 2, 3));
            });
}
BENCHMARK(pen_get_custom_pen_known);

// ---- Start ----------------------------------------------------------------------------------------------------------

QString get_folder()
{
    static const QTemporaryDir folder;
    return folder.path();
}

/// Points the registry at a file, and reads it as the application does before it makes the manager.
void use_registry(const QString& path)
{
    CFGQ_REGISTRY::close();
    qputenv("NORVANE_REGISTRY_FILE", path.toLocal8Bit());
    CFGQ_REGISTRY::migrate_registry_settings();
}

/// A registry file in which every row that can be stored is.
const QString& get_full_registry()
{
    static const QString path = []
    {
        QString result = get_folder() + QLatin1String("/full.ini");
        use_registry(result);
        for (const TOLV_INITIAL_COLOR& row : tolv_get_initial_colors())
        {
            if (row.can_change)
                TOLV_COLOR::set_default_color(row.resource, QColor(row.color.red() ^ 1, row.color.green(), 77));
        }
        TOLV_PEN::save_pens_in_registry();
        TOLV_FONT::save_fonts_in_registry();
        CFGQ_REGISTRY::flush();
        CFGQ_REGISTRY::close();
        return result;
    }();
    return path;
}

/// A copy under a name that nobody has read yet: QSettings keeps what it has parsed, by the name of the file.
QString make_fresh_copy(const QString& path)
{
    static int count = 0;
    QString copy = get_folder() + QStringLiteral("/copy_%1.ini").arg(++count);
    QFile::copy(path, copy);
    return copy;
}

/// Together with the lock that the registry leaves beside it: a user's folder holds one.
void remove_copy(const QString& copy)
{
    QFile::remove(copy);
    QFile::remove(copy + QLatin1String(".lockfile"));
}

void start_with_empty_registry(benchmark::State& state)
{
    for (auto _ : state)
    {
        state.PauseTiming();
        tolv_delete_gdi_manager();
        const QString copy = make_fresh_copy(QStringLiteral("/dev/null"));
        use_registry(copy);
        state.ResumeTiming();
        tolv_create_gdi_manager();
        state.PauseTiming();
        remove_copy(copy);
        state.ResumeTiming();
    }
}
BENCHMARK(start_with_empty_registry)->Unit(benchmark::kMicrosecond)->Iterations(200);

/// The rows of a registry file in a file of QSettings' own.
const QString& get_full_settings()
{
    static const QString path = []
    {
        use_registry(get_full_registry());
        QString result = get_folder() + QLatin1String("/settings.ini");
        QSettings settings(result, QSettings::IniFormat);
        const CFGQ_REGISTRY_KEY key(CFGQ_REGISTRY_KEY::SUB_KEY_GUI);
        for (const QString& name : key.get_value_names())
        {
            QVariant value;
            key.get_value(name, &value);
            settings.setValue(QStringLiteral("52/") + name, value);
        }
        return result;
    }();
    return path;
}

void start_qsettings_loads_and_gives_all_rows(benchmark::State& state)
{
    const QString& path = get_full_settings();
    for (auto _ : state)
    {
        state.PauseTiming();
        const QString copy = make_fresh_copy(path);
        state.ResumeTiming();
        const QSettings settings(copy, QSettings::IniFormat);
        for (const QString& key : settings.allKeys())
            benchmark::DoNotOptimize(settings.value(key));
        state.PauseTiming();
        remove_copy(copy);
        state.ResumeTiming();
    }
}
BENCHMARK(start_qsettings_loads_and_gives_all_rows)->Unit(benchmark::kMicrosecond)->Iterations(200);

void start_with_all_rows_stored(benchmark::State& state)
{
    const QString& path = get_full_registry();
    for (auto _ : state)
    {
        state.PauseTiming();
        tolv_delete_gdi_manager();
        const QString copy = make_fresh_copy(path);
        use_registry(copy);
        state.ResumeTiming();
        tolv_create_gdi_manager();
        state.PauseTiming();
        remove_copy(copy);
        state.ResumeTiming();
    }
}
BENCHMARK(start_with_all_rows_stored)->Unit(benchmark::kMicrosecond)->Iterations(200);

void start_with_all_rows_stored_and_the_registry_read(benchmark::State& state)
{
    const QString& path = get_full_registry();
    for (auto _ : state)
    {
        state.PauseTiming();
        tolv_delete_gdi_manager();
        const QString copy = make_fresh_copy(path);
        CFGQ_REGISTRY::close();
        state.ResumeTiming();
        use_registry(copy);
        tolv_create_gdi_manager();
        state.PauseTiming();
        remove_copy(copy);
        state.ResumeTiming();
    }
}
BENCHMARK(start_with_all_rows_stored_and_the_registry_read)->Unit(benchmark::kMicrosecond)->Iterations(200);
} // namespace

int main(int argc, char** argv)
{
    qputenv("NORVANE_REGISTRY_FILE", (get_folder() + QLatin1String("/empty.ini")).toLocal8Bit());
    const QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
