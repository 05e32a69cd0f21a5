#include "test_environment.h"
#include "thr.h"

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cstdlib>
#include <future>
#include <mutex>
#include <pthread.h>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

namespace
{
constexpr std::chrono::seconds time_limit(30);

template <typename CONDITION>
bool wait_for(CONDITION condition)
{
    const auto end = std::chrono::steady_clock::now() + time_limit;
    while (!condition())
    {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::yield();
    }
    return true;
}

/// A thread's body that reports and stays until it is let go.
struct VISIT
{
    std::promise<THR_THREAD_ID> id;
    std::promise<int> count_inside;
    std::promise<void> may_leave;
    std::promise<std::size_t> stack_bytes;
};

int visit(void* argument)
{
    auto* visit = static_cast<VISIT*>(argument);
    pthread_attr_t attributes;
    pthread_getattr_np(pthread_self(), &attributes);
    std::size_t stack_bytes = 0;
    pthread_attr_getstacksize(&attributes, &stack_bytes);
    pthread_attr_destroy(&attributes);
    visit->stack_bytes.set_value(stack_bytes);
    visit->count_inside.set_value(thr_get_running_thread_count());
    // The test may end as soon as it has this answer and has given leave: nothing of it is used afterwards.
    std::future<void> leave = visit->may_leave.get_future();
    visit->id.set_value(thr_thread_self());
    leave.wait();
    return 5;
}

int add_one(void* argument)
{
    ++*static_cast<int*>(argument);
    return 41 + *static_cast<int*>(argument);
}

int throw_away(void*)
{
    throw std::runtime_error("thrown in a thread's body");
}

int count_nested(void* argument)
{
    auto* counts = static_cast<std::vector<int>*>(argument);
    counts->push_back(thr_get_running_thread_count());
    if (counts->size() < 3)
        thr_thread_wrapper(count_nested, argument);
    counts->push_back(thr_get_running_thread_count());
    return 0;
}
} // namespace

TEST(thr, the_main_thread_is_number_1)
{
    EXPECT_EQ(1u, THR_THREAD_MAIN_ID);
    EXPECT_EQ(THR_THREAD_MAIN_ID, thr_thread_self());
}

TEST(thr, every_other_thread_has_a_number_of_its_own)
{
    std::mutex mutex;
    std::set<THR_THREAD_ID> ids = {THR_THREAD_MAIN_ID};
    std::vector<std::thread> threads;
    threads.reserve(20);
    for (int i = 0; i < 20; ++i)
        threads.emplace_back(
            [&]
            {
                const THR_THREAD_ID id = thr_thread_self();
                const std::lock_guard<std::mutex> lock(mutex);
                EXPECT_EQ(id, thr_thread_self());
                EXPECT_TRUE(ids.insert(id).second);
            });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(21u, ids.size());
    EXPECT_EQ(0u, ids.count(0));
}

TEST(thr, a_created_thread_runs_the_function_in_a_wrapper_and_has_the_number_returned)
{
    VISIT argument;
    const THR_THREAD_ID id = thr_thread_create(visit, &argument, 0);
    ASSERT_NE(0u, id);
    EXPECT_NE(THR_THREAD_MAIN_ID, id);
    std::future<THR_THREAD_ID> seen = argument.id.get_future();
    ASSERT_EQ(std::future_status::ready, seen.wait_for(time_limit));
    EXPECT_EQ(id, seen.get());
    EXPECT_EQ(1, argument.count_inside.get_future().get());
    EXPECT_EQ(1, thr_get_running_thread_count());
    argument.may_leave.set_value();
    EXPECT_TRUE(wait_for([] { return thr_get_running_thread_count() == 0; }));
}

TEST(thr, a_created_thread_has_at_least_the_stack_asked_for)
{
    for (const unsigned long bytes : {1ul, 100000ul, 64ul << 20})
    {
        VISIT argument;
        ASSERT_NE(0u, thr_thread_create(visit, &argument, bytes));
        std::future<THR_THREAD_ID> seen = argument.id.get_future();
        ASSERT_EQ(std::future_status::ready, seen.wait_for(time_limit));
        EXPECT_GE(argument.stack_bytes.get_future().get(), bytes);
        argument.may_leave.set_value();
        EXPECT_TRUE(wait_for([] { return thr_get_running_thread_count() == 0; }));
    }
}

TEST(thr, a_thread_that_the_system_refuses_is_number_0_and_runs_nothing)
{
    int calls = 0;
    EXPECT_EQ(0u, thr_thread_create(add_one, &calls, ULONG_MAX));
    EXPECT_EQ(0u, thr_thread_create(add_one, &calls, 1ul << 62));
    EXPECT_EQ(0u, thr_thread_create(nullptr, &calls, 0));
    EXPECT_EQ(0, calls);
    EXPECT_EQ(0, thr_get_running_thread_count());
}

TEST(thr, the_wrapper_calls_on_the_calling_thread_and_returns_the_result)
{
    int calls = 0;
    EXPECT_EQ(42, thr_thread_wrapper(add_one, &calls));
    EXPECT_EQ(1, calls);
    EXPECT_EQ(0, thr_get_running_thread_count());
}

TEST(thr, a_wrapper_around_null_returns_0)
{
    EXPECT_EQ(0, thr_thread_wrapper(nullptr, nullptr));
}

TEST(thr, nested_wrappers_count_a_thread_once)
{
    std::vector<int> counts;
    thr_thread_wrapper(count_nested, &counts);
    EXPECT_EQ(std::vector<int>({1, 1, 1, 1, 1, 1}), counts);
    EXPECT_EQ(0, thr_get_running_thread_count());
}

TEST(thr, an_exception_passes_through_the_wrapper)
{
    EXPECT_THROW(thr_thread_wrapper(throw_away, nullptr), std::runtime_error);
    EXPECT_EQ(0, thr_get_running_thread_count());
}

TEST(thr, an_exit_status_is_the_second_byte)
{
    static_assert(sizeof(THR_PROCESS_EXIT_CODE) == 8);
    EXPECT_EQ(0, thr_get_exit_status(0));
    EXPECT_EQ(3, thr_get_exit_status(0x300));
    EXPECT_EQ(255, thr_get_exit_status(0xff00));
    EXPECT_EQ(0, thr_get_exit_status(9));
    EXPECT_EQ(1, thr_get_exit_status(0xabcd0109));
}

TEST(thr, a_variable_is_set_replaced_and_removed)
{
    EXPECT_TRUE(thr_setenv("TOLV_TEST_VARIABLE", "first"));
    EXPECT_STREQ("first", std::getenv("TOLV_TEST_VARIABLE"));
    EXPECT_TRUE(thr_setenv("TOLV_TEST_VARIABLE", "second"));
    EXPECT_STREQ("second", std::getenv("TOLV_TEST_VARIABLE"));
    EXPECT_TRUE(thr_setenv("TOLV_TEST_VARIABLE", ""));
    EXPECT_STREQ("", std::getenv("TOLV_TEST_VARIABLE"));
    EXPECT_TRUE(thr_setenv("TOLV_TEST_VARIABLE", nullptr));
    EXPECT_EQ(nullptr, std::getenv("TOLV_TEST_VARIABLE"));
}

TEST(thr, a_variable_without_a_proper_name_is_refused)
{
    EXPECT_FALSE(thr_setenv(nullptr, "value"));
    EXPECT_FALSE(thr_setenv("", "value"));
    EXPECT_FALSE(thr_setenv("TOLV_TEST=VARIABLE", "value"));
    EXPECT_EQ(nullptr, std::getenv("TOLV_TEST"));
}

TEST(thr, variables_set_on_many_threads_are_all_there)
{
    std::vector<std::thread> threads;
    threads.reserve(8);
    for (int i = 0; i < 8; ++i)
        threads.emplace_back(
            [i]
            {
                for (int k = 0; k < 200; ++k)
                {
                    const std::string name = "TOLV_TEST_" + std::to_string(i) + "_" + std::to_string(k);
                    thr_setenv(name.c_str(), name.c_str());
                }
            });
    for (std::thread& thread : threads)
        thread.join();
    for (int i = 0; i < 8; ++i)
        for (int k = 0; k < 200; ++k)
        {
            const std::string name = "TOLV_TEST_" + std::to_string(i) + "_" + std::to_string(k);
            ASSERT_STREQ(name.c_str(), std::getenv(name.c_str()));
        }
}
