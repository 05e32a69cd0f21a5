#include "uib_task.h"

#include "thr.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <stdexcept>
#include <thread>

namespace
{
/// Longer than any test waits for something that does come.
constexpr int LONG_MILLISECONDS = 60000;

/// A task whose function stays inside until it is let go or cancelled.
class HELD_TASK
{
public:
    HELD_TASK()
        : task([this](UIB_THREAD_TASK::CONTROL& control) { stay(control); },
               [this] { finish_thread = thr_thread_self(); })
    {
    }

    void start_and_wait_for_entry()
    {
        task.start();
        entered.get_future().wait();
    }

    std::promise<void> let_go;
    THR_THREAD_ID function_thread = 0;
    THR_THREAD_ID finish_thread = 0;
    std::promise<void> entered;
    UIB_THREAD_TASK task;

private:
    void stay(UIB_THREAD_TASK::CONTROL& control)
    {
        function_thread = thr_thread_self();
        control.set_progress(40);
        control.set_text("Reading nets");
        entered.set_value();
        const std::future<void> gate = let_go.get_future();
        while (gate.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready && !control.is_cancelled())
        {
        }
    }
};
} // namespace

TEST(base_uib_task, new_task_is_not_done_and_has_neither_progress_nor_text)
{
    UIB_THREAD_TASK task([](UIB_THREAD_TASK::CONTROL&) {});
    EXPECT_FALSE(task.is_done());
    EXPECT_EQ(0, task.get_progress());
    EXPECT_EQ("", task.get_text());
    EXPECT_EQ("", task.get_error());
}

TEST(base_uib_task, function_runs_on_a_thread_of_its_own_and_finish_on_the_caller_s)
{
    HELD_TASK held;
    held.start_and_wait_for_entry();
    held.let_go.set_value();
    held.task.wait(LONG_MILLISECONDS);
    EXPECT_TRUE(held.task.is_done());
    EXPECT_EQ(0u, held.finish_thread);
    held.task.finish();
    EXPECT_EQ(THR_THREAD_MAIN_ID, held.finish_thread);
    EXPECT_NE(THR_THREAD_MAIN_ID, held.function_thread);
    EXPECT_NE(0u, held.function_thread);
}

TEST(base_uib_task, progress_and_text_are_seen_while_the_function_runs)
{
    HELD_TASK held;
    held.start_and_wait_for_entry();
    EXPECT_FALSE(held.task.is_done());
    EXPECT_EQ(40, held.task.get_progress());
    EXPECT_EQ("Reading nets", held.task.get_text());
}

TEST(base_uib_task, progress_is_clamped)
{
    for (const auto& [given, expected] : {std::pair(-1, 0), std::pair(0, 0), std::pair(100, 100), std::pair(101, 100),
                                          std::pair(256, 100), std::pair(-257, 0)})
    {
        UIB_THREAD_TASK task([percent = given](UIB_THREAD_TASK::CONTROL& control) { control.set_progress(percent); });
        task.start();
        task.wait(LONG_MILLISECONDS);
        EXPECT_EQ(expected, task.get_progress()) << given;
    }
}

TEST(base_uib_task, wait_returns_after_its_time_while_the_function_runs)
{
    HELD_TASK held;
    held.start_and_wait_for_entry();
    const auto begin = std::chrono::steady_clock::now();
    held.task.wait(50);
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(50));
    EXPECT_FALSE(held.task.is_done());
}

TEST(base_uib_task, wait_returns_with_the_end_of_the_task)
{
    HELD_TASK held;
    held.start_and_wait_for_entry();
    held.let_go.set_value();
    const auto begin = std::chrono::steady_clock::now();
    held.task.wait(LONG_MILLISECONDS);
    EXPECT_TRUE(held.task.is_done());
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(LONG_MILLISECONDS));
}

TEST(base_uib_task, wait_returns_at_once_before_start_after_the_end_and_for_no_time)
{
    const auto begin = std::chrono::steady_clock::now();
    HELD_TASK held;
    held.task.wait(LONG_MILLISECONDS);
    held.start_and_wait_for_entry();
    held.task.wait(0);
    held.task.wait(-5);
    EXPECT_FALSE(held.task.is_done());
    held.let_go.set_value();
    held.task.wait(LONG_MILLISECONDS);
    held.task.wait(LONG_MILLISECONDS);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(LONG_MILLISECONDS));
}

TEST(base_uib_task, cancel_reaches_the_function_and_its_result_is_not_collected)
{
    HELD_TASK held;
    held.start_and_wait_for_entry();
    held.task.cancel();
    held.task.wait(LONG_MILLISECONDS);
    EXPECT_TRUE(held.task.is_done());
    held.task.finish();
    EXPECT_EQ(0u, held.finish_thread);
    EXPECT_EQ("", held.task.get_error());
}

TEST(base_uib_task, cancel_before_start_keeps_the_function_from_running)
{
    bool has_run = false;
    UIB_THREAD_TASK task([&has_run](UIB_THREAD_TASK::CONTROL&) { has_run = true; });
    task.cancel();
    EXPECT_FALSE(task.is_done());
    task.start();
    EXPECT_TRUE(task.is_done());
    EXPECT_FALSE(has_run);
}

TEST(base_uib_task, cancel_behind_the_end_changes_nothing)
{
    HELD_TASK held;
    held.start_and_wait_for_entry();
    held.let_go.set_value();
    held.task.wait(LONG_MILLISECONDS);
    held.task.cancel();
    held.task.finish();
    EXPECT_EQ(THR_THREAD_MAIN_ID, held.finish_thread);
}

TEST(base_uib_task, exception_ends_the_task_with_its_text_and_without_a_result)
{
    bool has_finished = false;
    UIB_THREAD_TASK task([](UIB_THREAD_TASK::CONTROL&) { throw std::runtime_error("line 3: no such cell"); },
                         [&has_finished] { has_finished = true; });
    task.start();
    task.wait(LONG_MILLISECONDS);
    EXPECT_TRUE(task.is_done());
    task.finish();
    EXPECT_EQ("line 3: no such cell", task.get_error());
    EXPECT_FALSE(has_finished);
}

TEST(base_uib_task, exception_without_a_text_is_an_error_all_the_same)
{
    UIB_THREAD_TASK odd([](UIB_THREAD_TASK::CONTROL&) { throw 5; });
    odd.start();
    odd.finish();
    EXPECT_EQ("unknown exception", odd.get_error());

    UIB_THREAD_TASK silent([](UIB_THREAD_TASK::CONTROL&) { throw std::runtime_error(""); });
    silent.start();
    silent.finish();
    EXPECT_EQ("exception without a text", silent.get_error());
}

TEST(base_uib_task, destructor_cancels_and_waits_for_the_function)
{
    bool was_cancelled = false;
    {
        std::promise<void> entered;
        UIB_THREAD_TASK task(
            [&](UIB_THREAD_TASK::CONTROL& control)
            {
                entered.set_value();
                while (!control.is_cancelled())
                    std::this_thread::yield();
                was_cancelled = true;
            });
        task.start();
        entered.get_future().wait();
    }
    EXPECT_TRUE(was_cancelled);
    EXPECT_EQ(0, thr_get_running_thread_count());
}

TEST(base_uib_task, finish_waits_for_the_end_and_collects_once)
{
    int finish_count = 0;
    bool has_run = false;
    UIB_THREAD_TASK task([&has_run](UIB_THREAD_TASK::CONTROL&) { has_run = true; },
                         [&]
                         {
                             EXPECT_TRUE(has_run);
                             ++finish_count;
                         });
    task.finish();
    EXPECT_EQ(0, finish_count);
    task.start();
    task.finish();
    EXPECT_TRUE(task.is_done());
    task.finish();
    EXPECT_EQ(1, finish_count);
}

TEST(base_uib_task, second_start_does_nothing)
{
    std::atomic<int> run_count{0};
    UIB_THREAD_TASK task([&run_count](UIB_THREAD_TASK::CONTROL&) { ++run_count; });
    task.start();
    task.start();
    task.finish();
    task.start();
    task.finish();
    EXPECT_EQ(1, run_count);
}

TEST(base_uib_task, empty_function_is_done_with_the_start_and_finishes)
{
    bool has_finished = false;
    UIB_THREAD_TASK task({}, [&has_finished] { has_finished = true; });
    task.start();
    EXPECT_TRUE(task.is_done());
    task.finish();
    EXPECT_TRUE(has_finished);
}

TEST(base_uib_task, task_may_go_inside_its_own_finish)
{
    bool has_finished = false;
    std::unique_ptr<UIB_THREAD_TASK> task;
    task = std::make_unique<UIB_THREAD_TASK>([](UIB_THREAD_TASK::CONTROL&) {},
                                             [&]
                                             {
                                                 task.reset();
                                                 has_finished = true;
                                             });
    task->start();
    task->finish();
    EXPECT_TRUE(has_finished);
}
