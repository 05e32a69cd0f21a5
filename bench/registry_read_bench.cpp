#include "cfgq_registry.h"

#include <QCoreApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <QVariant>
#include <benchmark/benchmark.h>

/// What a window pays for a user setting: a read through a registry key beside a read from a living QSettings object
/// and from one made for the purpose, and the save of a whole table beside the same save by QSettings. Both stores hold
/// the same 600 values.

namespace
{
const int COUNT = 600;

QString get_folder()
{
    static const QTemporaryDir folder;
    return folder.path();
}

QString get_settings_path()
{
    return get_folder() + QLatin1String("/settings.ini");
}

QString make_name(int i)
{
    return QStringLiteral("TOLV_COLOR_%1").arg(i);
}

QString make_value(int i)
{
    return QStringLiteral("#%1").arg(i * 977, 6, 16, QLatin1Char('0'));
}

CFGQ_REGISTRY_KEY open_key()
{
    qputenv("NORVANE_REGISTRY_FILE", (get_folder() + QLatin1String("/registry.ini")).toLocal8Bit());
    return CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_GUI);
}

void save_to_registry(CFGQ_REGISTRY_KEY* key)
{
    for (int i = 0; i < COUNT; ++i)
        key->set_value(make_name(i), make_value(i));
    CFGQ_REGISTRY::flush();
}

void save_to_settings(QSettings* settings)
{
    settings->beginGroup(QStringLiteral("52"));
    for (int i = 0; i < COUNT; ++i)
        settings->setValue(make_name(i), make_value(i));
    settings->endGroup();
    settings->sync();
}

void settings_value(benchmark::State& state)
{
    QSettings settings(get_settings_path(), QSettings::IniFormat);
    save_to_settings(&settings);
    const QString name = QStringLiteral("52/TOLV_COLOR_300");
    for (auto _ : state)
        benchmark::DoNotOptimize(settings.value(name));
}
BENCHMARK(settings_value);

void registry_key_get_value(benchmark::State& state)
{
    CFGQ_REGISTRY_KEY key = open_key();
    save_to_registry(&key);
    const QString name = QStringLiteral("TOLV_COLOR_300");
    QVariant value;
    for (auto _ : state)
        benchmark::DoNotOptimize(key.get_value(name, &value));
}
BENCHMARK(registry_key_get_value);

/// As a window does that reads one value: with a key of its own.
void registry_key_made_anew(benchmark::State& state)
{
    CFGQ_REGISTRY_KEY saving_key = open_key();
    save_to_registry(&saving_key);
    const QString name = QStringLiteral("TOLV_COLOR_300");
    QVariant value;
    for (auto _ : state)
    {
        const CFGQ_REGISTRY_KEY key(CFGQ_REGISTRY_KEY::SUB_KEY_GUI);
        benchmark::DoNotOptimize(key.get_value(name, &value));
    }
}
BENCHMARK(registry_key_made_anew);

void settings_made_anew(benchmark::State& state)
{
    QSettings saving_settings(get_settings_path(), QSettings::IniFormat);
    save_to_settings(&saving_settings);
    const QString name = QStringLiteral("52/TOLV_COLOR_300");
    for (auto _ : state)
    {
        const QSettings settings(get_settings_path(), QSettings::IniFormat);
        benchmark::DoNotOptimize(settings.value(name));
    }
}
BENCHMARK(settings_made_anew);

void settings_save_of_600_values(benchmark::State& state)
{
    QSettings settings(get_settings_path(), QSettings::IniFormat);
    for (auto _ : state)
        save_to_settings(&settings);
}
BENCHMARK(settings_save_of_600_values)->Unit(benchmark::kMillisecond)->UseRealTime();

void registry_save_of_600_values(benchmark::State& state)
{
    CFGQ_REGISTRY_KEY key = open_key();
    for (auto _ : state)
        save_to_registry(&key);
}
BENCHMARK(registry_save_of_600_values)->Unit(benchmark::kMillisecond)->UseRealTime();

/// What the window waits for; the rest is done when its event loop comes to turn.
void registry_set_value_of_600_values(benchmark::State& state)
{
    CFGQ_REGISTRY_KEY key = open_key();
    for (auto _ : state)
    {
        for (int i = 0; i < COUNT; ++i)
            key.set_value(make_name(i), make_value(i));
        state.PauseTiming();
        CFGQ_REGISTRY::flush();
        state.ResumeTiming();
    }
}
BENCHMARK(registry_set_value_of_600_values)->Unit(benchmark::kMillisecond)->UseRealTime();
} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    CFGQ_REGISTRY::close();
    return 0;
}
