#include "child_process.h"
#include "gen.h"
#include "gen_machine_p.h"
#include "test_environment.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <pwd.h>
#include <sched.h>
#include <set>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace
{
/// Goes to a folder for a scope.
class SCOPED_CURRENT_FOLDER
{
public:
    explicit SCOPED_CURRENT_FOLDER(const std::string& folder) : m_old(std::filesystem::current_path())
    {
        std::filesystem::current_path(folder);
    }
    ~SCOPED_CURRENT_FOLDER()
    {
        std::filesystem::current_path(m_old);
    }
    SCOPED_CURRENT_FOLDER(const SCOPED_CURRENT_FOLDER&) = delete;
    SCOPED_CURRENT_FOLDER& operator=(const SCOPED_CURRENT_FOLDER&) = delete;

private:
    std::filesystem::path m_old;
};

/// Copies the child program under another name into a folder of its own and returns the folder.
std::string copy_child(const std::string& name)
{
    std::string folder = TEST_ENVIRONMENT::get_folder() + "/bin";
    std::filesystem::create_directory(folder);
    std::filesystem::copy_file(get_child_path("base_facts_child"), folder + "/" + name);
    return folder;
}

int sign(int number)
{
    return (number > 0) - (number < 0);
}

void describe_processor(int number, const std::string& file, const std::string& text)
{
    TEST_ENVIRONMENT::write_file("cpu/cpu" + std::to_string(number) + "/topology/" + file, text + "\n");
}
} // namespace

// ---- The process ----------------------------------------------------------------------------------------------------

TEST(gen_program, name_and_folder_are_those_of_the_running_file)
{
    EXPECT_EQ("base_gen_test", gen_get_module_filename());
    EXPECT_EQ(std::filesystem::read_symlink("/proc/self/exe").parent_path().string(), gen_get_module_path());
}

TEST(gen_program, all_endings_belong_to_the_name)
{
    const std::string folder = copy_child("tool.exe.bak");
    EXPECT_EQ("tool.exe.bak\n" + folder + "\n", run_child(folder + "/tool.exe.bak", {"program"}).out);
}

TEST(gen_program, a_symbolic_link_does_not_change_the_name)
{
    const std::string folder = copy_child("tool");
    const std::string link = TEST_ENVIRONMENT::get_folder() + "/link";
    std::filesystem::create_symlink(folder + "/tool", link);
    EXPECT_EQ("tool\n" + folder + "\n", run_child(link, {"program"}).out);
}

TEST(gen_program, a_file_that_was_removed_keeps_its_name)
{
    const std::string folder = copy_child("tool.exe");
    EXPECT_EQ("tool.exe\n" + folder + "\n",
              run_child(folder + "/tool.exe", {"program_removed", folder + "/tool.exe"}).out);
    EXPECT_FALSE(std::filesystem::exists(folder + "/tool.exe"));
}

TEST(gen_program, a_name_that_looks_like_a_removed_file_stays)
{
    const std::string name = "tool (deleted)";
    const std::string folder = copy_child(name);
    EXPECT_EQ(name + "\n" + folder + "\n", run_child(folder + "/" + name, {"program"}).out);
    EXPECT_EQ(name + "\n" + folder + "\n",
              run_child(folder + "/" + name, {"program_removed", folder + "/" + name}).out);
}

TEST(gen_folders, the_user_s_folder_is_the_first_variable_that_is_set)
{
    const SCOPED_ENVIRONMENT_VARIABLE profile("NORVANE_USER_PROFILE", "/first");
    const SCOPED_ENVIRONMENT_VARIABLE home("HOME", "/second");
    EXPECT_EQ("/first", gen_get_user_profile_directory());
    const SCOPED_ENVIRONMENT_VARIABLE empty_profile("NORVANE_USER_PROFILE", "");
    EXPECT_EQ("/second", gen_get_user_profile_directory());
    const SCOPED_ENVIRONMENT_VARIABLE no_profile("NORVANE_USER_PROFILE", nullptr);
    EXPECT_EQ("/second", gen_get_user_profile_directory());
}

TEST(gen_folders, without_variables_the_user_database_says_the_user_s_folder)
{
    const SCOPED_ENVIRONMENT_VARIABLE no_profile("NORVANE_USER_PROFILE", nullptr);
    const passwd* entry = getpwuid(getuid());
    const std::string expected = entry != nullptr && *entry->pw_dir != '\0' ? entry->pw_dir : "/";
    for (const char* value : {static_cast<const char*>(nullptr), ""})
    {
        const SCOPED_ENVIRONMENT_VARIABLE home("HOME", value);
        EXPECT_EQ(expected, gen_get_user_profile_directory());
    }
}

TEST(gen_folders, the_user_s_folder_is_absolute_and_has_no_slash_behind)
{
    const SCOPED_CURRENT_FOLDER current("/usr");
    const std::vector<std::pair<const char*, const char*>> rows = {
        {"relative/folder", "/usr/relative/folder"}, {"/profiles/ann//", "/profiles/ann"}, {"/", "/"}, {"//", "/"}};
    for (const auto& [given, expected] : rows)
    {
        const SCOPED_ENVIRONMENT_VARIABLE profile("NORVANE_USER_PROFILE", given);
        EXPECT_EQ(expected, gen_get_user_profile_directory()) << given;
    }
}

TEST(gen_folders, the_project_s_folder_is_the_current_one_while_none_is_set)
{
    const SCOPED_CURRENT_FOLDER current("/usr");
    EXPECT_EQ("/usr", gen_get_project_dir_path());
    gen_set_project_dir_path("/design/board/");
    EXPECT_EQ("/design/board", gen_get_project_dir_path());
    gen_set_project_dir_path("");
    EXPECT_EQ("/usr", gen_get_project_dir_path());
}

TEST(gen_folders, a_relative_project_folder_starts_where_it_was_set)
{
    {
        const SCOPED_CURRENT_FOLDER current("/usr");
        gen_set_project_dir_path("share");
    }
    EXPECT_EQ("/usr/share", gen_get_project_dir_path());
}

TEST(gen_folders, a_removed_current_folder_is_harmless)
{
    const std::string folder = TEST_ENVIRONMENT::get_folder() + "/gone";
    std::filesystem::create_directory(folder);
    const SCOPED_CURRENT_FOLDER current(folder);
    std::filesystem::remove(folder);
    EXPECT_EQ("/", gen_get_project_dir_path());
    gen_set_project_dir_path("/design");
    EXPECT_EQ("/design", gen_get_project_dir_path());
}

TEST(gen_flags, user_interface_and_qt_are_off_at_first_and_independent)
{
    EXPECT_FALSE(gen_get_is_ui_process());
    EXPECT_FALSE(gen_get_is_qt());
    gen_set_is_ui_process(true);
    EXPECT_TRUE(gen_get_is_ui_process());
    EXPECT_FALSE(gen_get_is_qt());
    gen_set_is_qt(true);
    gen_set_is_ui_process(false);
    EXPECT_FALSE(gen_get_is_ui_process());
    EXPECT_TRUE(gen_get_is_qt());
    gen_set_is_qt(false);
    EXPECT_FALSE(gen_get_is_qt());
}

// ---- Debugging ------------------------------------------------------------------------------------------------------

TEST(gen_debug, a_break_without_a_debugger_is_nothing_or_a_trap)
{
    const CHILD_RESULT soft = run_child("base_facts_child", {"break", "only_if_traced"});
    EXPECT_EQ(0, soft.exit_status);
    EXPECT_EQ("went on\n", soft.out);
    const CHILD_RESULT hard = run_child("base_facts_child", {"break", "always"});
    EXPECT_EQ(SIGTRAP, hard.signal);
    EXPECT_EQ("", hard.out);
}

TEST(gen_debug, a_break_stops_a_traced_process)
{
    for (const bool only_if_traced : {true, false})
    {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0)
        {
            if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
                _exit(2);
            gen_debug_break(only_if_traced);
            _exit(0);
        }
        int status = 0;
        ASSERT_EQ(child, waitpid(child, &status, 0));
        if (WIFEXITED(status) && WEXITSTATUS(status) == 2)
            GTEST_SKIP() << "the system allows no tracing";
        ASSERT_TRUE(WIFSTOPPED(status)) << status;
        EXPECT_EQ(SIGTRAP, WSTOPSIG(status));
        ASSERT_EQ(0, ptrace(PTRACE_CONT, child, nullptr, nullptr));
        ASSERT_EQ(child, waitpid(child, &status, 0));
        EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    }
}

TEST(gen_debug, a_handler_takes_breaks_over_until_it_is_taken_out)
{
    std::vector<bool> calls;
    EXPECT_FALSE(gen_set_debug_break_handler([&](bool only_if_traced) { calls.push_back(only_if_traced); }));
    gen_debug_break(true);
    gen_debug_break(false);
    EXPECT_EQ(std::vector<bool>({true, false}), calls);
    const std::function<void(bool)> old = gen_set_debug_break_handler({});
    ASSERT_TRUE(old);
    old(true);
    EXPECT_EQ(3u, calls.size());
    gen_debug_break(true);
    EXPECT_EQ(3u, calls.size());
}

TEST(gen_debug, the_switch_makes_a_customer_build)
{
#ifndef TOLV_CUSTOMER_BUILD
    EXPECT_FALSE(gen_debug_is_customer_build());
#endif
    const SCOPED_CONFIGURATION value("customer_build", "1");
    EXPECT_TRUE(gen_debug_is_customer_build());
}

TEST(gen_debug, debugger_output_is_appended_to_the_configured_file)
{
    const std::string path = TEST_ENVIRONMENT::write_file("debug.txt", "before|");
    gen_debug_output_string("nowhere");
    const SCOPED_CONFIGURATION value("debug_output_file", path.c_str());
    gen_debug_output_string("100%s|");
    gen_debug_output_string(nullptr);
    gen_debug_output_string("");
    gen_debug_output_string("end\n");
    EXPECT_EQ("before|100%s|end\n", TEST_ENVIRONMENT::read_file(path));
}

TEST(gen_debug, debugger_output_of_several_threads_is_not_mixed)
{
    const std::string path = TEST_ENVIRONMENT::get_folder() + "/debug.txt";
    const SCOPED_CONFIGURATION value("debug_output_file", path.c_str());
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (char letter = 'a'; letter < 'e'; ++letter)
        threads.emplace_back(
            [letter]
            {
                for (int i = 0; i < 100; ++i)
                    gen_debug_output_string((std::string(50, letter) + "\n").c_str());
            });
    for (std::thread& thread : threads)
        thread.join();
    const std::string content = TEST_ENVIRONMENT::read_file(path);
    ASSERT_EQ(4u * 100u * 51u, content.size());
    for (std::size_t line = 0; line < 400; ++line)
        EXPECT_EQ(std::string(50, content[line * 51]) + "\n", content.substr(line * 51, 51));
}

TEST(gen_debug, debugger_output_that_cannot_be_written_is_dropped)
{
    const std::string pipe = TEST_ENVIRONMENT::get_folder() + "/pipe";
    ASSERT_EQ(0, mkfifo(pipe.c_str(), 0600));
    for (const std::string& path : {pipe, TEST_ENVIRONMENT::get_folder(), std::string("/no/such/folder/file")})
    {
        const SCOPED_CONFIGURATION value("debug_output_file", path.c_str());
        gen_debug_output_string("text");
    }
    EXPECT_FALSE(std::filesystem::exists("/no/such/folder"));
}

// ---- Time -----------------------------------------------------------------------------------------------------------

TEST(gen_time, the_tick_count_counts_milliseconds_since_the_machine_started)
{
    timespec before = {};
    clock_gettime(CLOCK_BOOTTIME, &before);
    const unsigned int ticks = gen_get_tick_count();
    timespec after = {};
    clock_gettime(CLOCK_BOOTTIME, &after);
    const auto in_milliseconds = [](const timespec& time)
    { return static_cast<unsigned int>(time.tv_sec * 1000ll + time.tv_nsec / 1000000); };
    // Differences, as the count wraps.
    EXPECT_LE(ticks - in_milliseconds(before), in_milliseconds(after) - in_milliseconds(before));
}

TEST(gen_time, the_wall_clock_counts_microseconds_since_1970)
{
    using std::chrono::duration_cast, std::chrono::microseconds, std::chrono::system_clock;
    const auto before = duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
    const std::uint64_t now = gen_get_usec_wallclock();
    const auto after = duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
    EXPECT_GE(now, static_cast<std::uint64_t>(before));
    EXPECT_LE(now, static_cast<std::uint64_t>(after));
}

// ---- Text -----------------------------------------------------------------------------------------------------------

TEST(gen_text, lexical_comparison_takes_bytes_as_signed)
{
    using namespace std::string_literals;
    EXPECT_EQ(0, gen_signed_lexcmp("", ""));
    EXPECT_EQ(0, gen_signed_lexcmp("same", "same"));
    EXPECT_GT(0, gen_signed_lexcmp("a", "b"));
    EXPECT_LT(0, gen_signed_lexcmp("b", "a"));
    EXPECT_GT(0, gen_signed_lexcmp("A", "a"));
    EXPECT_GT(0, gen_signed_lexcmp("\xC3\xA9", "a"));
    EXPECT_LT(0, gen_signed_lexcmp("a", "\xC3\xA9"));
    EXPECT_GT(0, gen_signed_lexcmp("\x80", "\xFF"));
    EXPECT_GT(0, gen_signed_lexcmp("\xFF", "\x01"));
}

TEST(gen_text, lexical_comparison_puts_a_beginning_first)
{
    EXPECT_GT(0, gen_signed_lexcmp("", "a"));
    EXPECT_GT(0, gen_signed_lexcmp("", "\xC3\xA9"));
    EXPECT_GT(0, gen_signed_lexcmp("a", "a\xC3\xA9"));
    EXPECT_LT(0, gen_signed_lexcmp("ab", "a"));
}

TEST(gen_text, lexical_comparison_ends_at_a_nul)
{
    using namespace std::string_literals;
    EXPECT_EQ(0, gen_signed_lexcmp("a\0b"s, "a\0c"s));
    EXPECT_EQ(0, gen_signed_lexcmp("a\0b"s, "a"s));
    EXPECT_GT(0, gen_signed_lexcmp("a\0b"s, "ab"s));
    EXPECT_LT(0, gen_signed_lexcmp("ab"s, "a\0z"s));
}

TEST(gen_text, lexical_comparison_agrees_with_that_of_signed_sequences)
{
    GEN_RAND random(3);
    const auto draw_text = [&]
    {
        std::string text;
        for (unsigned int length = random.draw() % 6; length > 0; --length)
            text += static_cast<char>(random.draw() % 4 * 85 + random.draw() % 2);
        return text;
    };
    const auto is_less = [](const std::string& a, const std::string& b)
    {
        const auto to_end = [](const std::string& text)
        { return std::vector<signed char>(text.c_str(), text.c_str() + std::char_traits<char>::length(text.c_str())); };
        return to_end(a) < to_end(b);
    };
    for (int i = 0; i < 100000; ++i)
    {
        const std::string a = draw_text();
        const std::string b = draw_text();
        ASSERT_EQ(is_less(b, a) - is_less(a, b), sign(gen_signed_lexcmp(a, b)));
    }
}

TEST(gen_text, comparison_without_case_folds_the_latin_letters_only)
{
    EXPECT_EQ(0, gen_stricmp("", ""));
    EXPECT_EQ(0, gen_stricmp("Verilog.SV", "vERILOG.sv"));
    EXPECT_GT(0, gen_stricmp("alpha", "Beta"));
    EXPECT_LT(0, gen_stricmp("BETA", "alpha"));
    EXPECT_GT(0, gen_stricmp("ab", "ABC"));
    EXPECT_LT(0, gen_stricmp("ABC", "ab"));
    EXPECT_GT(0, gen_stricmp("_", "A"));
    EXPECT_NE(0, gen_stricmp("[", "{"));
    EXPECT_NE(0, gen_stricmp("@", "`"));
    EXPECT_NE(0, gen_stricmp("\xC9", "\xE9"));
    EXPECT_LT(0, gen_stricmp("\xC9", "z"));
}

TEST(gen_text, null_is_below_every_text)
{
    EXPECT_EQ(0, gen_stricmp(nullptr, nullptr));
    EXPECT_GT(0, gen_stricmp(nullptr, ""));
    EXPECT_LT(0, gen_stricmp("", nullptr));
}

TEST(gen_text, separators_of_paths_are_turned)
{
    std::string path = "C:\\design\\board/top.v";
    gen_sync_path_separators(&path);
    EXPECT_EQ("C:/design/board/top.v", path);
    path.clear();
    gen_sync_path_separators(&path);
    EXPECT_EQ("", path);
    gen_sync_path_separators(nullptr);
}

// ---- Random numbers -------------------------------------------------------------------------------------------------

TEST(gen_rand, the_sequence_of_a_seed_is_fixed)
{
    // The values are those that the definition of the generator gives, the same on every platform.
    GEN_RAND random(5489);
    EXPECT_EQ(3499211612u, random.draw());
    for (int i = 2; i < 10000; ++i)
        random.draw();
    EXPECT_EQ(4123659995u, random.draw());
}

TEST(gen_rand, generators_are_independent)
{
    GEN_RAND first(1);
    GEN_RAND second(1);
    GEN_RAND other(2);
    const unsigned int number = first.draw();
    first.draw();
    EXPECT_EQ(number, second.draw());
    EXPECT_NE(number, other.draw());
}

// ---- The machine ----------------------------------------------------------------------------------------------------

TEST(gen_machine, the_counts_are_those_of_the_process)
{
    cpu_set_t allowed;
    ASSERT_EQ(0, sched_getaffinity(0, sizeof(allowed), &allowed));
    int logical = 0;
    ASSERT_TRUE(GEN_MACHINE_INFO::get_logical_cpu_count(&logical));
    EXPECT_EQ(CPU_COUNT(&allowed), logical);
    int cores = 0;
    if (!std::filesystem::exists("/sys/devices/system/cpu/cpu0/topology"))
    {
        EXPECT_FALSE(GEN_MACHINE_INFO::get_core_cpu_count(&cores));
        return;
    }
    ASSERT_TRUE(GEN_MACHINE_INFO::get_core_cpu_count(&cores));
    EXPECT_GE(cores, 1);
    EXPECT_LE(cores, logical);
}

TEST(gen_machine, processors_that_the_process_may_not_use_do_not_count)
{
    cpu_set_t allowed;
    ASSERT_EQ(0, sched_getaffinity(0, sizeof(allowed), &allowed));
    cpu_set_t one;
    CPU_ZERO(&one);
    for (int processor = 0; processor < CPU_SETSIZE && CPU_COUNT(&one) == 0; ++processor)
        if (CPU_ISSET(processor, &allowed))
            CPU_SET(processor, &one);
    ASSERT_EQ(0, sched_setaffinity(0, sizeof(one), &one));
    int count = 0;
    EXPECT_TRUE(GEN_MACHINE_INFO::get_logical_cpu_count(&count));
    EXPECT_EQ(1, count);
    if (std::filesystem::exists("/sys/devices/system/cpu/cpu0/topology"))
    {
        count = 0;
        EXPECT_TRUE(GEN_MACHINE_INFO::get_core_cpu_count(&count));
        EXPECT_EQ(1, count);
    }
    ASSERT_EQ(0, sched_setaffinity(0, sizeof(allowed), &allowed));
}

TEST(gen_machine, the_configuration_replaces_the_machine)
{
    const SCOPED_CONFIGURATION cores("core_cpu_count", "32");
    const SCOPED_CONFIGURATION logical("logical_cpu_count", "64");
    int count = 0;
    EXPECT_TRUE(GEN_MACHINE_INFO::get_core_cpu_count(&count));
    EXPECT_EQ(32, count);
    EXPECT_TRUE(GEN_MACHINE_INFO::get_logical_cpu_count(&count));
    EXPECT_EQ(64, count);
    EXPECT_TRUE(GEN_MACHINE_INFO::get_core_cpu_count(nullptr));
    EXPECT_TRUE(GEN_MACHINE_INFO::get_logical_cpu_count(nullptr));
}

TEST(gen_machine, a_configured_count_below_1_makes_the_query_fail)
{
    for (const char* text : {"0", "-1"})
    {
        const SCOPED_CONFIGURATION cores("core_cpu_count", text);
        const SCOPED_CONFIGURATION logical("logical_cpu_count", text);
        int count = 17;
        EXPECT_FALSE(GEN_MACHINE_INFO::get_core_cpu_count(&count));
        EXPECT_FALSE(GEN_MACHINE_INFO::get_logical_cpu_count(&count));
        EXPECT_EQ(17, count);
    }
}

TEST(gen_machine, a_configured_count_that_is_no_number_is_ignored)
{
    int expected = 0;
    ASSERT_TRUE(GEN_MACHINE_INFO::get_logical_cpu_count(&expected));
    const SCOPED_CONFIGURATION logical("logical_cpu_count", "many");
    int count = 0;
    EXPECT_TRUE(GEN_MACHINE_INFO::get_logical_cpu_count(&count));
    EXPECT_EQ(expected, count);
}

TEST(gen_machine, processors_of_one_core_count_once)
{
    for (int processor = 0; processor < 8; ++processor)
        describe_processor(processor, "core_cpus_list",
                           std::to_string(processor % 4) + "," + std::to_string(processor % 4 + 4));
    const std::string folder = TEST_ENVIRONMENT::get_folder() + "/cpu";
    int count = 0;
    EXPECT_TRUE(gen_count_cores(folder, {0, 1, 2, 3, 4, 5, 6, 7}, &count));
    EXPECT_EQ(4, count);
    EXPECT_TRUE(gen_count_cores(folder, {1, 5}, &count));
    EXPECT_EQ(1, count);
    EXPECT_TRUE(gen_count_cores(folder, {1, 4, 6}, &count));
    EXPECT_EQ(3, count);
}

TEST(gen_machine, older_descriptions_of_cores_are_read)
{
    describe_processor(0, "thread_siblings_list", "0-1");
    describe_processor(1, "thread_siblings_list", "0-1");
    for (int processor = 2; processor < 6; ++processor)
    {
        describe_processor(processor, "core_id", "0");
        describe_processor(processor, "physical_package_id", std::to_string(processor / 2));
    }
    int count = 0;
    EXPECT_TRUE(gen_count_cores(TEST_ENVIRONMENT::get_folder() + "/cpu", {0, 1, 2, 3, 4, 5}, &count));
    EXPECT_EQ(3, count);
}

TEST(gen_machine, cores_that_are_not_described_cannot_be_counted)
{
    describe_processor(0, "core_cpus_list", "0");
    const std::string folder = TEST_ENVIRONMENT::get_folder() + "/cpu";
    int count = 17;
    EXPECT_FALSE(gen_count_cores(folder, {0, 1}, &count));
    EXPECT_FALSE(gen_count_cores(folder, {}, &count));
    EXPECT_FALSE(gen_count_cores(folder + "/missing", {0}, &count));
    EXPECT_EQ(17, count);
}
