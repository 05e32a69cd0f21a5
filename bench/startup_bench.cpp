// Time from main() to the first painted empty window: the entry sequence of a host beside a plain QApplication with a
// QMainWindow. Each start is a process of its own; the two kinds take turns, so that a change of the machine's mood
// meets both.
// usage: startup_bench [number of starts of each kind]

#include "tolv_app.h"

#include <QMainWindow>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

namespace
{
using CLOCK = std::chrono::steady_clock;

/// Ends the event loop when it has been painted.
class PAINTED_WINDOW : public QMainWindow
{
protected:
    void paintEvent(QPaintEvent* event) override
    {
        QMainWindow::paintEvent(event);
        QCoreApplication::quit();
    }
};

/// Shows an empty window until it is painted, and prints the microseconds since the start.
void show_window(CLOCK::time_point start)
{
    PAINTED_WINDOW window;
    window.resize(640, 480);
    window.show();
    QCoreApplication::exec();
    const auto elapsed = std::chrono::duration_cast<std::chrono::microseconds>(CLOCK::now() - start);
    std::printf("%lld\n", static_cast<long long>(elapsed.count()));
}

int run_plain(int argc, char** argv, CLOCK::time_point start)
{
    const QApplication app(argc, argv);
    show_window(start);
    return 0;
}

int run_entry_sequence(int argc, char** argv, CLOCK::time_point start)
{
    const char** const arguments = const_cast<const char**>(argv);
    char** const qt_argv = TOLV_APP::copy_argv_for_qt(argc, arguments);
    int qt_argc = argc;
    TOLV_APP app(qt_argc, qt_argv);
    app.init_instance(argc, arguments);
    show_window(start);
    app.exit_instance();
    return 0;
}

/// The times that a process needed: from its main(), as it says itself, and from outside, all in milliseconds.
struct START_TIMES
{
    std::vector<double> from_main;
    std::vector<double> whole;
};

bool start_process(const char* program, const char* kind, const QProcessEnvironment& environment, START_TIMES* times)
{
    const CLOCK::time_point start = CLOCK::now();
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QString::fromLocal8Bit(program), {QLatin1String(kind)});
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
    {
        std::fprintf(stderr, "%s %s failed\n", program, kind);
        return false;
    }
    times->whole.push_back(std::chrono::duration<double, std::milli>(CLOCK::now() - start).count());
    times->from_main.push_back(process.readAllStandardOutput().trimmed().toDouble() / 1000);
    return true;
}

double get_median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void print_times(const char* name, const START_TIMES& times)
{
    std::printf("%-16s %10.2f ms from main  (fastest %.2f), %10.2f ms whole process\n", name,
                get_median(times.from_main), *std::min_element(times.from_main.begin(), times.from_main.end()),
                get_median(times.whole));
}

/// The user's own, with a settings folder and a run-time folder of the measurement, and without a display unless the
/// user has chosen a platform.
QProcessEnvironment make_environment(const QTemporaryDir& folder)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("NORVANE_REGISTRY_FILE"), folder.filePath(QStringLiteral("registry.ini")));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder.path());
    if (!environment.contains(QStringLiteral("QT_QPA_PLATFORM")))
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    return environment;
}

int measure(const char* program, int count)
{
    const QTemporaryDir folder;
    const QProcessEnvironment environment = make_environment(folder);
    START_TIMES plain;
    START_TIMES entry_sequence;
    for (int i = 0; i < count; ++i)
    {
        if (!start_process(program, "plain", environment, &plain) ||
            !start_process(program, "entry_sequence", environment, &entry_sequence))
            return 1;
    }
    std::printf("medians of %d starts of each kind\n", count);
    print_times("plain", plain);
    print_times("entry sequence", entry_sequence);
    std::printf("ratio from main: %.2f\n", get_median(entry_sequence.from_main) / get_median(plain.from_main));
    return 0;
}
} // namespace

int main(int argc, char** argv)
{
    const CLOCK::time_point start = CLOCK::now();
    const std::string argument = argc > 1 ? argv[1] : "";
    if (argument == "plain")
        return run_plain(argc, argv, start);
    if (argument == "entry_sequence")
        return run_entry_sequence(argc, argv, start);
    // Run with the other benchmarks and their options, a few starts show that it works.
    const bool is_short = argument.compare(0, 2, "--") == 0;
    const int count = is_short ? 3 : (argument.empty() ? 101 : std::atoi(argument.c_str()));
    return measure(argv[0], std::max(count, 1));
}
