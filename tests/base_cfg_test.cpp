#include "cfg.h"
#include "child_process.h"
#include "test_environment.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <sys/stat.h>
#include <thread>
#include <vector>

// Environment and file are read once per process: a test of them writes both before its first look-up.

namespace
{
void write_configuration(const std::string& text)
{
    TEST_ENVIRONMENT::write_file("norvane.ini", text);
}
} // namespace

TEST(cfg, a_missing_value_gives_the_default)
{
    EXPECT_FALSE(cfg_is_on("no_such_key"));
    EXPECT_TRUE(cfg_is_on("no_such_key", true));
    EXPECT_EQ(0, cfg_get_int_value("no_such_key"));
    EXPECT_EQ(-7, cfg_get_int_value("no_such_key", -7));
    EXPECT_EQ("", cfg_get_string_value("no_such_key"));
    EXPECT_EQ("text", cfg_get_string_value("no_such_key", "text"));
}

TEST(cfg, a_null_key_gives_the_default)
{
    EXPECT_TRUE(cfg_is_on(nullptr, true));
    EXPECT_FALSE(cfg_is_on(nullptr, false));
    EXPECT_EQ(3, cfg_get_int_value(nullptr, 3));
    EXPECT_EQ("text", cfg_get_string_value(nullptr, "text"));
}

TEST(cfg, an_empty_key_cannot_be_set)
{
    cfg_set_value("", "1");
    EXPECT_FALSE(cfg_is_on(""));
}

TEST(cfg, a_switch_is_on_for_the_words_and_any_non_zero_integer)
{
    for (const char* text : {"1", "on", "ON", "On", "true", "TRUE", "yes", "Yes", "2", "-1", "+1", "007", "0x10",
                             " on ", "\t1\n", "99999999999999999999999"})
    {
        const SCOPED_CONFIGURATION value("switch", text);
        EXPECT_TRUE(cfg_is_on("switch", false)) << text;
    }
}

TEST(cfg, a_switch_is_off_for_the_words_zero_and_the_empty_text)
{
    for (const char* text : {"0", "off", "OFF", "false", "False", "no", "NO", "", "  ", "00", "-0", "0x0"})
    {
        const SCOPED_CONFIGURATION value("switch", text);
        EXPECT_FALSE(cfg_is_on("switch", true)) << text;
    }
}

TEST(cfg, a_switch_with_another_text_has_the_default)
{
    for (const char* text : {"onn", "o n", "enabled", "1.0", "1a", "-", "0x", "--1", "y", "t"})
    {
        const SCOPED_CONFIGURATION value("switch", text);
        EXPECT_FALSE(cfg_is_on("switch", false)) << text;
        EXPECT_TRUE(cfg_is_on("switch", true)) << text;
    }
}

TEST(cfg, an_integer_is_decimal_or_hexadecimal)
{
    const std::vector<std::pair<const char*, int>> rows = {
        {"0", 0},
        {"42", 42},
        {"-42", -42},
        {"+42", 42},
        {" 42 ", 42},
        {"010", 10},
        {"0x1F", 31},
        {"0X1f", 31},
        {"-0x10", -16},
        {"2147483647", 2147483647},
        {"-2147483648", -2147483647 - 1},
        {"0x7fffffff", 2147483647},
    };
    for (const auto& [text, number] : rows)
    {
        const SCOPED_CONFIGURATION value("number", text);
        EXPECT_EQ(number, cfg_get_int_value("number", 5)) << text;
    }
}

TEST(cfg, an_integer_that_is_none_or_does_not_fit_gives_the_default)
{
    for (const char* text : {"", " ", "x", "4 2", "42x", "4.2", "1e3", "0x", "0xg", "+-1", "-+1", "--1", "0x-1", "on",
                             "2147483648", "-2147483649", "0x80000000", "99999999999999999999999"})
    {
        const SCOPED_CONFIGURATION value("number", text);
        EXPECT_EQ(5, cfg_get_int_value("number", 5)) << text;
    }
}

TEST(cfg, host_wins_over_environment_and_environment_over_file)
{
    write_configuration("in_all = file\nin_two = file\nin_file = file\n");
    const SCOPED_ENVIRONMENT_VARIABLE environment("NORVANE_CFG", "in_all=environment;in_two=environment");
    cfg_set_value("in_all", "host");
    EXPECT_EQ("host", cfg_get_string_value("in_all"));
    EXPECT_EQ("environment", cfg_get_string_value("in_two"));
    EXPECT_EQ("file", cfg_get_string_value("in_file"));
}

TEST(cfg, a_value_taken_back_uncovers_what_lies_below)
{
    write_configuration("key = file\n");
    cfg_set_value("key", "host");
    cfg_set_value("key", "host again");
    EXPECT_EQ("host again", cfg_get_string_value("key"));
    cfg_unset_value("key");
    EXPECT_EQ("file", cfg_get_string_value("key"));
    cfg_unset_value("key");
    cfg_unset_value("no_such_key");
    EXPECT_EQ("file", cfg_get_string_value("key"));
}

TEST(cfg, an_empty_value_of_the_host_covers_the_file)
{
    write_configuration("key = 1\n");
    EXPECT_TRUE(cfg_is_on("key"));
    cfg_set_value("key", "");
    EXPECT_FALSE(cfg_is_on("key", true));
    EXPECT_EQ("", cfg_get_string_value("key", "default"));
}

TEST(cfg, environment_and_file_are_read_once)
{
    write_configuration("in_file = 1\n");
    const SCOPED_ENVIRONMENT_VARIABLE environment("NORVANE_CFG", "in_environment=1");
    EXPECT_EQ(1, cfg_get_int_value("in_file"));
    write_configuration("in_file = 2\n");
    const SCOPED_ENVIRONMENT_VARIABLE later("NORVANE_CFG", "in_environment=2");
    EXPECT_EQ(1, cfg_get_int_value("in_file"));
    EXPECT_EQ(1, cfg_get_int_value("in_environment"));
}

TEST(cfg, keys_are_case_sensitive)
{
    write_configuration("key = lower\nKey = upper\n");
    EXPECT_EQ("lower", cfg_get_string_value("key"));
    EXPECT_EQ("upper", cfg_get_string_value("Key"));
    EXPECT_EQ("none", cfg_get_string_value("KEY", "none"));
}

TEST(cfg, the_file_may_have_sections)
{
    write_configuration("before = 1\n"
                        "[tools]\nkey = 2\n"
                        "[norvane]\nown = 3\n"
                        "[ a b ]\nkey = 4\n"
                        "[Norvane]\nother = 5\n");
    EXPECT_EQ(1, cfg_get_int_value("before"));
    EXPECT_EQ(2, cfg_get_int_value("tools/key"));
    EXPECT_EQ(3, cfg_get_int_value("own"));
    EXPECT_EQ(4, cfg_get_int_value("a b/key"));
    EXPECT_EQ(5, cfg_get_int_value("Norvane/other"));
    EXPECT_EQ(0, cfg_get_int_value("key"));
    EXPECT_EQ(0, cfg_get_int_value("norvane/own"));
}

TEST(cfg, the_file_may_have_comments_blanks_quotes_and_other_line_ends)
{
    write_configuration("\xEF\xBB\xBF"
                        "first=1\r\n"
                        "\r\n"
                        "; second = 2\r\n"
                        "  # third = 3\r\n"
                        "\t fourth \t=  4 ; 5  \r\n"
                        "fifth = \"  quoted  \"\r\n"
                        "sixth = \"\r\n"
                        "seventh = a=b\r\n"
                        "eighth =\r\n"
                        "ninth = \xC3\xA9t\xC3\xA9");
    EXPECT_EQ("1", cfg_get_string_value("first"));
    EXPECT_EQ("none", cfg_get_string_value("second", "none"));
    EXPECT_EQ("none", cfg_get_string_value("; second", "none"));
    EXPECT_EQ("none", cfg_get_string_value("third", "none"));
    EXPECT_EQ("4 ; 5", cfg_get_string_value("fourth"));
    EXPECT_EQ("  quoted  ", cfg_get_string_value("fifth"));
    EXPECT_EQ("\"", cfg_get_string_value("sixth"));
    EXPECT_EQ("a=b", cfg_get_string_value("seventh"));
    EXPECT_EQ("", cfg_get_string_value("eighth", "none"));
    EXPECT_EQ("\xC3\xA9t\xC3\xA9", cfg_get_string_value("ninth"));
}

TEST(cfg, the_last_line_with_a_key_holds)
{
    write_configuration("key = 1\nkey = 2\n[norvane]\nkey = 3\n");
    const SCOPED_ENVIRONMENT_VARIABLE environment("NORVANE_CFG", "other=1;other=2");
    EXPECT_EQ(3, cfg_get_int_value("key"));
    EXPECT_EQ(2, cfg_get_int_value("other"));
}

TEST(cfg, damaged_lines_are_skipped_alone)
{
    using namespace std::string_literals;
    write_configuration("no equals sign\n= no key\nzero\0byte = 1\nvalue = a\0b\ngood = 1\n"s);
    EXPECT_EQ(1, cfg_get_int_value("good"));
    EXPECT_EQ("none", cfg_get_string_value("", "none"));
    EXPECT_EQ("none", cfg_get_string_value("zero", "none"));
    EXPECT_EQ("none", cfg_get_string_value("value", "none"));
}

TEST(cfg, lines_below_a_damaged_section_are_skipped_up_to_the_next)
{
    write_configuration("[cut\nlost = 1\n[]\nalso_lost = 1\n[]]x\nstill_lost = 1\n[norvane]\nfound = 1\n");
    for (const char* key : {"lost", "cut/lost", "[cut/lost", "also_lost", "/also_lost", "still_lost"})
        EXPECT_FALSE(cfg_is_on(key)) << key;
    EXPECT_TRUE(cfg_is_on("found"));
}

TEST(cfg, a_file_of_noise_is_harmless)
{
    std::mt19937 random(7);
    std::string noise;
    for (int i = 0; i < 200000; ++i)
        noise += static_cast<char>(random() & 0xff);
    write_configuration(noise + "\n[norvane]\ngood = 1\n");
    EXPECT_TRUE(cfg_is_on("good"));
    EXPECT_FALSE(cfg_is_on("tolv_enable_kerning"));
}

TEST(cfg, a_folder_in_place_of_the_file_is_harmless)
{
    std::filesystem::create_directory(TEST_ENVIRONMENT::get_configuration_file());
    EXPECT_EQ(3, cfg_get_int_value("key", 3));
}

TEST(cfg, a_pipe_in_place_of_the_file_does_not_hold_up_the_start)
{
    ASSERT_EQ(0, mkfifo(TEST_ENVIRONMENT::get_configuration_file().c_str(), 0600));
    EXPECT_EQ(3, cfg_get_int_value("key", 3));
}

TEST(cfg, a_file_of_more_than_16_mib_is_not_read)
{
    write_configuration("key = 1\n");
    std::filesystem::resize_file(TEST_ENVIRONMENT::get_configuration_file(), std::uintmax_t(16) * 1024 * 1024 + 1);
    EXPECT_EQ(3, cfg_get_int_value("key", 3));
}

TEST(cfg, a_file_of_16_mib_is_read)
{
    write_configuration("key = 1\n");
    std::filesystem::resize_file(TEST_ENVIRONMENT::get_configuration_file(), std::uintmax_t(16) * 1024 * 1024);
    EXPECT_EQ(1, cfg_get_int_value("key", 3));
}

TEST(cfg, the_environment_list_may_be_untidy)
{
    const SCOPED_ENVIRONMENT_VARIABLE environment("NORVANE_CFG",
                                                  ";; =lost;word; first = 1 ;second=;third=a=b;tools/key=4;");
    EXPECT_EQ("none", cfg_get_string_value("word", "none"));
    EXPECT_EQ("none", cfg_get_string_value("", "none"));
    EXPECT_EQ("1", cfg_get_string_value("first"));
    EXPECT_EQ("", cfg_get_string_value("second", "none"));
    EXPECT_EQ("a=b", cfg_get_string_value("third"));
    EXPECT_EQ(4, cfg_get_int_value("tools/key"));
}

TEST(cfg, without_a_path_the_file_lies_beside_the_executable)
{
    const std::string folder = TEST_ENVIRONMENT::get_folder() + "/bin";
    std::filesystem::create_directory(folder);
    std::filesystem::copy_file(get_child_path("base_facts_child"), folder + "/tool");
    TEST_ENVIRONMENT::write_file("bin/norvane.ini", "key = beside\n");
    write_configuration("key = named\n");
    const std::vector<std::string> arguments = {"configuration", "key"};
    EXPECT_EQ("named\n", run_child(folder + "/tool", arguments).out);
    EXPECT_EQ("beside\n", run_child(folder + "/tool", arguments, {{"NORVANE_CFG_FILE", ""}}).out);
    const SCOPED_ENVIRONMENT_VARIABLE no_path("NORVANE_CFG_FILE", nullptr);
    EXPECT_EQ("beside\n", run_child(folder + "/tool", arguments).out);
}

TEST(cfg, numbered_switches_have_names)
{
    EXPECT_EQ(12, CFG_INI_VAR_DEVELOPER_INTERNAL_ERROR_FORM);
    EXPECT_EQ(17, CFG_INI_VAR_SHOW_DIALOG_HELP_TOPIC);
    EXPECT_EQ(29, CFG_INI_VAR_LOG_USER_ACTIONS);
    EXPECT_EQ("developer_internal_error_form", cfg_get_ini_var_name(CFG_INI_VAR_DEVELOPER_INTERNAL_ERROR_FORM));
    EXPECT_EQ("show_dialog_help_topic", cfg_get_ini_var_name(CFG_INI_VAR_SHOW_DIALOG_HELP_TOPIC));
    EXPECT_EQ("log_user_actions", cfg_get_ini_var_name(CFG_INI_VAR_LOG_USER_ACTIONS));
    EXPECT_EQ("", cfg_get_ini_var_name(static_cast<CFG_INI_VAR_ENUM>(13)));
}

TEST(cfg, numbered_switches_are_looked_up_by_their_names)
{
    for (const CFG_INI_VAR_ENUM variable :
         {CFG_INI_VAR_DEVELOPER_INTERNAL_ERROR_FORM, CFG_INI_VAR_SHOW_DIALOG_HELP_TOPIC, CFG_INI_VAR_LOG_USER_ACTIONS})
    {
        EXPECT_FALSE(cfg_is_on(variable));
        EXPECT_TRUE(cfg_is_on(variable, true));
        const SCOPED_CONFIGURATION value(cfg_get_ini_var_name(variable).c_str(), "on");
        EXPECT_TRUE(cfg_is_on(variable));
    }
    EXPECT_TRUE(cfg_is_on(static_cast<CFG_INI_VAR_ENUM>(13), true));
    EXPECT_FALSE(cfg_is_on(static_cast<CFG_INI_VAR_ENUM>(13), false));
}

TEST(cfg, look_ups_on_other_threads_see_whole_values)
{
    const std::string first(100, 'a');
    const std::string second(200, 'b');
    write_configuration("key = " + first + "\n");
    std::atomic<bool> is_over{false};
    std::atomic<int> torn_count{0};
    std::atomic<int> readers_begun{0};
    std::vector<std::thread> readers;
    readers.reserve(4);
    for (int i = 0; i < 4; ++i)
        readers.emplace_back(
            [&]
            {
                ++readers_begun;
                while (!is_over)
                {
                    const std::string value = cfg_get_string_value("key");
                    if (value != first && value != second)
                        ++torn_count;
                }
            });
    while (readers_begun < 4)
        std::this_thread::yield();
    for (int i = 0; i < 2000; ++i)
    {
        cfg_set_value("key", second);
        cfg_unset_value("key");
    }
    is_over = true;
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(0, torn_count);
}
