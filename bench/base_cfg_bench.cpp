#include "cfg.h"

#include <benchmark/benchmark.h>

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

/// Look-ups of configuration values, beside those of a live QSettings object on the same file.

namespace
{
/// A file of 200 keys, read by both.
class CONFIGURATION_FILE
{
public:
    CONFIGURATION_FILE() : m_path(m_folder.filePath(QStringLiteral("norvane.ini")))
    {
        QFile file(m_path);
        if (!file.open(QIODevice::WriteOnly))
            return;
        for (int i = 0; i < 200; ++i)
            file.write(QByteArrayLiteral("tolv_some_switch_") + QByteArray::number(i) + QByteArrayLiteral("=1\n"));
        file.close();
        qputenv("NORVANE_CFG_FILE", QFile::encodeName(m_path));
    }
    const QString& get_path() const
    {
        return m_path;
    }

private:
    QTemporaryDir m_folder;
    QString m_path;
};

const CONFIGURATION_FILE& configuration_file()
{
    static const CONFIGURATION_FILE file;
    return file;
}

void look_up_a_switch(benchmark::State& state, const char* key)
{
    configuration_file();
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(cfg_is_on(key));
}

void cfg_switch_of_the_file(benchmark::State& state)
{
    look_up_a_switch(state, "tolv_some_switch_117");
}

void cfg_switch_that_is_not_set(benchmark::State& state)
{
    look_up_a_switch(state, "tolv_no_such_switch");
}

void cfg_switch_beside_a_value_of_the_host(benchmark::State& state)
{
    cfg_set_value("tolv_host_switch", "1");
    look_up_a_switch(state, "tolv_some_switch_117");
    cfg_unset_value("tolv_host_switch");
}

void qsettings_switch_of_the_file(benchmark::State& state)
{
    const QSettings settings(configuration_file().get_path(), QSettings::IniFormat);
    const QString key = QStringLiteral("tolv_some_switch_117");
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(settings.value(key).toBool());
}
} // namespace

BENCHMARK(cfg_switch_of_the_file);
BENCHMARK(cfg_switch_that_is_not_set);
BENCHMARK(cfg_switch_beside_a_value_of_the_host);
BENCHMARK(qsettings_switch_of_the_file);

BENCHMARK_MAIN();
