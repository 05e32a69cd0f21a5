#include "child_process.h"
#include "mem.h"
#include "test_environment.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace
{
std::vector<std::string> get_tags_that_begin_with(const std::string& prefix)
{
    std::vector<std::string> found;
    for (const std::string& tag : MEM_INITIALIZER::get_registered_tags())
        if (tag.compare(0, prefix.size(), prefix) == 0)
            found.push_back(tag);
    return found;
}

/// Name of the allocator's library, or null where it cannot be put under a child: not installed, or the sanitizer
/// brings an allocator of its own.
const char* get_tcmalloc_library()
{
#ifdef __SANITIZE_ADDRESS__
    return nullptr;
#else
    constexpr const char* name = "libtcmalloc_minimal.so.4";
    const CHILD_RESULT probe = run_child("base_facts_child", {"tags"}, {{"LD_PRELOAD", name}});
    return probe.exit_status == 0 && probe.err.empty() ? name : nullptr;
#endif
}
} // namespace

TEST(mem, tags_are_listed_sorted_and_once_while_an_object_lives)
{
    EXPECT_TRUE(get_tags_that_begin_with("TEST_").empty());
    {
        const MEM_INITIALIZER second("TEST_B");
        auto first = std::make_unique<MEM_INITIALIZER>("TEST_A");
        const MEM_INITIALIZER second_again("TEST_B");
        EXPECT_EQ(std::vector<std::string>({"TEST_A", "TEST_B"}), get_tags_that_begin_with("TEST_"));
        first.reset();
        EXPECT_EQ(std::vector<std::string>({"TEST_B"}), get_tags_that_begin_with("TEST_"));
        {
            const MEM_INITIALIZER third("TEST_B");
        }
        EXPECT_EQ(std::vector<std::string>({"TEST_B"}), get_tags_that_begin_with("TEST_"));
    }
    EXPECT_TRUE(get_tags_that_begin_with("TEST_").empty());
}

TEST(mem, a_null_tag_registers_nothing)
{
    const std::vector<std::string> before = MEM_INITIALIZER::get_registered_tags();
    const MEM_INITIALIZER object(nullptr);
    EXPECT_EQ(before, MEM_INITIALIZER::get_registered_tags());
}

TEST(mem, a_static_object_registers_before_main)
{
    const CHILD_RESULT result = run_child("base_facts_child", {"tags"});
    EXPECT_EQ(0, result.exit_status);
    EXPECT_NE(std::string::npos, ("\n" + result.out).find("\nEARLY\n")) << result.out;
}

TEST(mem, the_name_for_the_thread_pool_is_kept_until_the_tracking_ends)
{
    EXPECT_EQ("", mem_get_tbb_exe_string());
    mem_set_tbb_exe_string("norvane_workbench");
    EXPECT_EQ("norvane_workbench", mem_get_tbb_exe_string());
    mem_set_tbb_exe_string("other");
    EXPECT_EQ("other", mem_get_tbb_exe_string());
    mem_shutdown_tbb_tracking();
    EXPECT_EQ("", mem_get_tbb_exe_string());
    mem_shutdown_tbb_tracking();
}

TEST(mem, the_release_rate_is_1_at_first_and_then_what_was_set)
{
    EXPECT_EQ(1.0, MEM::MALLOC_EXTENSION::get_memory_release_rate());
    for (const double rate : {256.0, 0.0, 0.5, 10.0, 1e9})
    {
        MEM::MALLOC_EXTENSION::set_memory_release_rate(rate);
        EXPECT_EQ(rate, MEM::MALLOC_EXTENSION::get_memory_release_rate());
    }
}

TEST(mem, a_release_rate_below_0_or_no_number_counts_as_0)
{
    for (const double rate : {-1.0, -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()})
    {
        MEM::MALLOC_EXTENSION::set_memory_release_rate(5.0);
        MEM::MALLOC_EXTENSION::set_memory_release_rate(rate);
        EXPECT_EQ(0.0, MEM::MALLOC_EXTENSION::get_memory_release_rate());
    }
}

TEST(mem, another_allocator_only_remembers_the_rate)
{
    const CHILD_RESULT result = run_child("base_facts_child", {"allocator"}, {{"TCMALLOC_RELEASE_RATE", "7"}});
    EXPECT_EQ("tcmalloc 0\n"
              "at first: rate 1, at once 0, freed block given back\n"
              "fast: rate 256, at once 0, freed block given back\n"
              "slow: rate 10, at once 0, freed block given back\n",
              result.out);
}

TEST(mem, a_fast_rate_makes_tcmalloc_give_memory_back_at_once)
{
    const char* library = get_tcmalloc_library();
    if (library == nullptr)
        GTEST_SKIP() << "tcmalloc cannot be put under a child here";
    const CHILD_RESULT result = run_child("base_facts_child", {"allocator"}, {{"LD_PRELOAD", library}});
    EXPECT_EQ("tcmalloc 1\n"
              "at first: rate 1, at once 0, freed block kept\n"
              "fast: rate 256, at once 1, freed block given back\n"
              "slow: rate 10, at once 0, freed block kept\n",
              result.out)
        << result.err;
}

TEST(mem, the_user_s_choices_for_tcmalloc_are_seen_and_kept)
{
    const char* library = get_tcmalloc_library();
    if (library == nullptr)
        GTEST_SKIP() << "tcmalloc cannot be put under a child here";
    const CHILD_RESULT result =
        run_child("base_facts_child", {"allocator"},
                  {{"LD_PRELOAD", library}, {"TCMALLOC_RELEASE_RATE", "2.5"}, {"TCMALLOC_AGGRESSIVE_DECOMMIT", "1"}});
    EXPECT_EQ("tcmalloc 1\n"
              "at first: rate 2.5, at once 1, freed block given back\n"
              "fast: rate 256, at once 1, freed block given back\n"
              "slow: rate 10, at once 1, freed block given back\n",
              result.out)
        << result.err;
}

TEST(mem, the_last_64_messages_are_kept_oldest_first)
{
    EXPECT_TRUE(MEM::MALLOC_EXTENSION::get_messages().empty());
    MEM::MALLOC_EXTENSION::print_message(nullptr);
    EXPECT_TRUE(MEM::MALLOC_EXTENSION::get_messages().empty());
    for (int i = 0; i < 65; ++i)
        MEM::MALLOC_EXTENSION::print_message(std::to_string(i).c_str());
    const std::vector<std::string> messages = MEM::MALLOC_EXTENSION::get_messages();
    ASSERT_EQ(64u, messages.size());
    EXPECT_EQ("1", messages.front());
    EXPECT_EQ("64", messages.back());
}

TEST(mem, a_message_goes_to_standard_error_only_with_the_switch)
{
    testing::internal::CaptureStderr();
    MEM::MALLOC_EXTENSION::print_message("silent");
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    const SCOPED_CONFIGURATION value("mem_print_messages", "1");
    testing::internal::CaptureStderr();
    MEM::MALLOC_EXTENSION::print_message("100% aloud");
    EXPECT_EQ("100% aloud\n", testing::internal::GetCapturedStderr());
    const std::vector<std::string> messages = MEM::MALLOC_EXTENSION::get_messages();
    EXPECT_EQ((std::vector<std::string>{"silent", "100% aloud"}),
              std::vector<std::string>(messages.end() - 2, messages.end()));
}
