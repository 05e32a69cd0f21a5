#include "gen.h"
#include "test_environment.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <thread>

namespace
{
/// The report that finalize() writes into a fresh folder; empty where it writes none.
std::string finalize_in_folder(const std::string& program_name, bool write_report, const std::string& file_name)
{
    const std::string folder = TEST_ENVIRONMENT::get_folder() + "/report";
    std::filesystem::create_directories(folder);
    std::filesystem::current_path(folder);
    GEN_PROFILE_BINS::finalize(program_name, write_report);
    std::string content = TEST_ENVIRONMENT::read_file(folder + "/" + file_name);
    std::filesystem::current_path("/");
    std::filesystem::remove_all(folder);
    return content;
}
} // namespace

TEST(gen_profile, nothing_is_counted_before_the_beginning)
{
    EXPECT_FALSE(GEN_PROFILE_BINS::is_active());
    EXPECT_EQ("", GEN_PROFILE_BINS::get_program_name());
    EXPECT_FALSE(GEN_PROFILE_BINS::get_debug_messages_enabled());
    GEN_PROFILE_BINS::add("load", 5);
    EXPECT_TRUE(GEN_PROFILE_BINS::get_bins().empty());
}

TEST(gen_profile, the_beginning_remembers_its_arguments)
{
    GEN_PROFILE_BINS::initialize("first", true);
    EXPECT_TRUE(GEN_PROFILE_BINS::is_active());
    EXPECT_EQ("first", GEN_PROFILE_BINS::get_program_name());
    EXPECT_TRUE(GEN_PROFILE_BINS::get_debug_messages_enabled());
    GEN_PROFILE_BINS::initialize("second", false);
    EXPECT_EQ("second", GEN_PROFILE_BINS::get_program_name());
    EXPECT_FALSE(GEN_PROFILE_BINS::get_debug_messages_enabled());
}

TEST(gen_profile, times_and_calls_add_up_by_name)
{
    GEN_PROFILE_BINS::initialize("tool", false);
    GEN_PROFILE_BINS::add("load", 5);
    GEN_PROFILE_BINS::add("load", 7);
    GEN_PROFILE_BINS::add("draw", 0);
    const auto bins = GEN_PROFILE_BINS::get_bins();
    ASSERT_EQ(2u, bins.size());
    EXPECT_EQ(12u, bins.at("load").usec);
    EXPECT_EQ(2u, bins.at("load").calls);
    EXPECT_EQ(0u, bins.at("draw").usec);
    EXPECT_EQ(1u, bins.at("draw").calls);
    GEN_PROFILE_BINS::initialize("tool", false);
    EXPECT_TRUE(GEN_PROFILE_BINS::get_bins().empty());
}

TEST(gen_profile, counters_stay_readable_after_the_end)
{
    GEN_PROFILE_BINS::initialize("tool", false);
    GEN_PROFILE_BINS::add("load", 5);
    GEN_PROFILE_BINS::finalize("tool", false);
    EXPECT_FALSE(GEN_PROFILE_BINS::is_active());
    GEN_PROFILE_BINS::add("load", 5);
    EXPECT_EQ(5u, GEN_PROFILE_BINS::get_bins().at("load").usec);
}

TEST(gen_profile, threads_lose_no_counts)
{
    GEN_PROFILE_BINS::initialize("tool", false);
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(
            []
            {
                for (int k = 0; k < 1000; ++k)
                    GEN_PROFILE_BINS::add("load", 2);
            });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(8000u, GEN_PROFILE_BINS::get_bins().at("load").usec);
    EXPECT_EQ(4000u, GEN_PROFILE_BINS::get_bins().at("load").calls);
}

TEST(gen_profile, a_scope_counts_its_life_time)
{
    GEN_PROFILE_BINS::initialize("tool", false);
    std::uint64_t inner_usec = 0;
    {
        const GEN_PROFILE_SCOPE scope("work");
        const std::uint64_t begin = gen_get_usec_wallclock();
        while (gen_get_usec_wallclock() < begin + 2000)
            std::this_thread::yield();
        inner_usec = 2000;
        EXPECT_TRUE(GEN_PROFILE_BINS::get_bins().empty());
    }
    const auto bins = GEN_PROFILE_BINS::get_bins();
    ASSERT_EQ(1u, bins.count("work"));
    EXPECT_EQ(1u, bins.at("work").calls);
    EXPECT_GE(bins.at("work").usec + 1, inner_usec);
}

TEST(gen_profile, a_scope_outside_the_counting_or_without_a_name_adds_nothing)
{
    {
        const GEN_PROFILE_SCOPE too_early("early");
        GEN_PROFILE_BINS::initialize("tool", false);
        const GEN_PROFILE_SCOPE nameless(nullptr);
    }
    EXPECT_TRUE(GEN_PROFILE_BINS::get_bins().empty());
    {
        const GEN_PROFILE_SCOPE too_late("late");
        GEN_PROFILE_BINS::finalize("tool", false);
    }
    EXPECT_TRUE(GEN_PROFILE_BINS::get_bins().empty());
}

TEST(gen_profile, the_report_lists_the_longest_time_first)
{
    const SCOPED_CONFIGURATION value("write_profile", "1");
    GEN_PROFILE_BINS::initialize("tool", false);
    GEN_PROFILE_BINS::add("a short one", 5);
    GEN_PROFILE_BINS::add("long one", 123456);
    GEN_PROFILE_BINS::add("a short one", 5);
    EXPECT_EQ("  microseconds        calls  counter\n"
              "        123456            1  long one\n"
              "            10            2  a short one\n",
              finalize_in_folder("tool", true, "tool_profile.txt"));
}

TEST(gen_profile, a_slash_in_the_program_s_name_does_not_leave_the_folder)
{
    const SCOPED_CONFIGURATION value("write_profile", "1");
    GEN_PROFILE_BINS::initialize("tool", false);
    GEN_PROFILE_BINS::add("load", 5);
    EXPECT_NE("", finalize_in_folder("../tool", true, ".._tool_profile.txt"));
}

TEST(gen_profile, no_report_without_the_switch_the_argument_or_a_counter)
{
    GEN_PROFILE_BINS::initialize("tool", false);
    GEN_PROFILE_BINS::add("load", 5);
    EXPECT_EQ("", finalize_in_folder("tool", true, "tool_profile.txt"));
    const SCOPED_CONFIGURATION value("write_profile", "1");
    EXPECT_EQ("", finalize_in_folder("tool", true, "tool_profile.txt")) << "it was over already";
    GEN_PROFILE_BINS::initialize("tool", false);
    EXPECT_EQ("", finalize_in_folder("tool", true, "tool_profile.txt"));
    GEN_PROFILE_BINS::initialize("tool", false);
    GEN_PROFILE_BINS::add("load", 5);
    EXPECT_EQ("", finalize_in_folder("tool", false, "tool_profile.txt"));
}

TEST(gen_profile, a_report_that_cannot_be_written_is_dropped)
{
    const SCOPED_CONFIGURATION value("write_profile", "1");
    GEN_PROFILE_BINS::initialize("tool", false);
    GEN_PROFILE_BINS::add("load", 5);
    const std::string folder = TEST_ENVIRONMENT::get_folder() + "/report";
    std::filesystem::create_directories(folder + "/tool_profile.txt");
    std::filesystem::current_path(folder);
    GEN_PROFILE_BINS::finalize("tool", true);
    std::filesystem::current_path("/");
    EXPECT_TRUE(std::filesystem::is_directory(folder + "/tool_profile.txt"));
    EXPECT_FALSE(GEN_PROFILE_BINS::is_active());
}
