// Commands: the look-ups of their texts and names, and tolv_create_action() beside a QAction made by hand.

#include "gui_bench.h"
#include "tolv_create_action.h"
#include "tolv_icon.h"

#include <QAction>
#include <QHash>
#include <QKeySequence>

#include <vector>

namespace
{
TOLV_ACTION_ENUM get_next(TOLV_ACTION_ENUM action)
{
    return static_cast<TOLV_ACTION_ENUM>(action % TOLV_ACTION_COUNT + 1);
}

void look_up_menu_text(benchmark::State& state)
{
    TOLV_ACTION_ENUM action = TOLV_ABOUT_NORVANE_ACTION;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(tolv_get_menu_text(action));
        action = get_next(action);
    }
}

/// The rival: texts in Qt's own container.
void look_up_menu_text_in_hash(benchmark::State& state)
{
    QHash<int, const char*> texts;
    for (int value = 1; value <= TOLV_ACTION_COUNT; ++value)
        texts.insert(value, tolv_get_menu_text(static_cast<TOLV_ACTION_ENUM>(value)));
    TOLV_ACTION_ENUM action = TOLV_ABOUT_NORVANE_ACTION;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(texts.value(action));
        action = get_next(action);
    }
}

void look_up_enumerator_by_name(benchmark::State& state)
{
    std::vector<QString> names;
    for (int value = 1; value <= TOLV_ACTION_COUNT; ++value)
        names.push_back(tolv_get_action_enum_string(static_cast<TOLV_ACTION_ENUM>(value)));
    std::size_t index = 0;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(tolv_get_action_enum(names[index]));
        index = (index + 1) % names.size();
    }
}

void make_enumerator_name(benchmark::State& state)
{
    TOLV_ACTION_ENUM action = TOLV_ABOUT_NORVANE_ACTION;
    for (auto _ : state)
    {
        benchmark::DoNotOptimize(tolv_get_action_enum_string(action));
        action = get_next(action);
    }
}

void create_copy_action(benchmark::State& state)
{
    QObject parent;
    delete tolv_create_action(TOLV_COPY_ACTION, &parent); // the icons are made at the first call
    for (auto _ : state)
        delete tolv_create_action(TOLV_COPY_ACTION, &parent);
}

void create_copy_action_by_hand(benchmark::State& state)
{
    QObject parent;
    const QIcon icon = tolv_get_icon(TOLV_COPY_ICON);
    for (auto _ : state)
    {
        auto* const action = new QAction(&parent);
        action->setText(QStringLiteral("&Copy"));
        action->setIcon(icon);
        action->setShortcut(QKeySequence(QKeySequence::Copy));
        action->setStatusTip(QStringLiteral("Copies the selection to the Clipboard"));
        action->setToolTip(QStringLiteral("Copy - Ctrl+C"));
        delete action;
    }
}

/// The whole suite at once, as a test of a host's windows may do.
void create_all_actions(benchmark::State& state)
{
    delete tolv_create_action(TOLV_COPY_ACTION, nullptr);
    for (auto _ : state)
    {
        QObject parent;
        for (int value = 1; value <= TOLV_ACTION_COUNT; ++value)
            tolv_create_action(static_cast<TOLV_ACTION_ENUM>(value), &parent);
    }
}
} // namespace

BENCHMARK(look_up_menu_text);
BENCHMARK(look_up_menu_text_in_hash);
BENCHMARK(look_up_enumerator_by_name);
BENCHMARK(make_enumerator_name);
BENCHMARK(create_copy_action);
BENCHMARK(create_copy_action_by_hand);
BENCHMARK(create_all_actions)->Unit(benchmark::kMicrosecond);

int main(int argc, char** argv)
{
    return GUI_BENCH::run(argc, argv);
}
