// Starting commands, their words, their input and their output. How they end: base_ipc_command_end_test.cpp.

#include "support/ipc_recorder.h"
#include "support/test_environment.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <csignal>

namespace
{
using LINES = std::vector<std::string>;

LINES run_and_get_lines(const std::string& command, const std::string& input = {})
{
    IPC_RECORDER recorder;
    EXPECT_TRUE(recorder.run_here(command, input).started) << command;
    return recorder.get_lines();
}

/// The lines of a program that writes this text.
LINES get_lines_of(const std::string& text)
{
    return run_and_get_lines(get_child_command("copy"), text);
}

/// A command that cannot be started, and why.
std::string get_start_error(const std::string& command, const std::string& working_directory = {})
{
    const std::ptrdiff_t descriptor_count = count_descriptors();
    IPC_COMMAND ipc_command;
    THR_PROCESS_EXIT_CODE exit_code = 0;
    EXPECT_FALSE(ipc_command.run(command, working_directory, false, &exit_code, "input", true));
    EXPECT_EQ(127u << 8, exit_code);
    EXPECT_EQ(IPC_COMMAND::STATUS_FINISHED, ipc_command.get_process_status(0));
    EXPECT_EQ("", ipc_command.get_output());
    EXPECT_EQ(descriptor_count, count_descriptors());
    EXPECT_EQ(-1, waitpid(-1, nullptr, WNOHANG));
    return ipc_command.get_start_error();
}

std::size_t get_total_size(const LINES& lines)
{
    std::size_t size = 0;
    for (const std::string& line : lines)
        size += line.size();
    return size;
}

/// Counts lines, for output that is too much to keep.
class COUNTER : public IPC_COMMAND
{
public:
    std::size_t line_count = 0;
    std::size_t byte_count = 0;
    std::size_t longest_line = 0;

protected:
    void process_line(const std::string& line) override
    {
        ++line_count;
        byte_count += line.size();
        longest_line = std::max(longest_line, line.size());
    }
};
} // namespace

TEST(base_ipc_command, exit_status_is_the_second_byte_of_the_exit_code)
{
    IPC_RECORDER recorder;
    for (const int exit_status : {0, 1, 42, 255})
    {
        const auto outcome = recorder.run_here(get_child_command("exit " + std::to_string(exit_status)));
        EXPECT_TRUE(outcome.started);
        EXPECT_EQ(static_cast<THR_PROCESS_EXIT_CODE>(exit_status) << 8, outcome.exit_code);
        EXPECT_EQ("", recorder.get_start_error());
    }
}

TEST(base_ipc_command, number_of_a_signal_is_the_first_byte_of_the_exit_code)
{
    IPC_RECORDER recorder;
    const auto outcome = recorder.run_here(get_child_command("signal " + std::to_string(SIGUSR1)));
    EXPECT_TRUE(outcome.started);
    EXPECT_EQ(static_cast<THR_PROCESS_EXIT_CODE>(SIGUSR1), outcome.exit_code);
}

TEST(base_ipc_command, exit_code_is_optional)
{
    IPC_COMMAND command;
    EXPECT_TRUE(command.run(get_child_command("exit 3"), "", false, nullptr, "", false));
    EXPECT_FALSE(command.run("", "", false, nullptr, "", false));
}

TEST(base_ipc_command, program_is_searched_on_the_path)
{
    const std::filesystem::path program = get_child_path("base_ipc_command_child");
    const SCOPED_ENVIRONMENT_VARIABLE path("PATH", program.parent_path().c_str());
    EXPECT_EQ(LINES{"[x]"}, run_and_get_lines(program.filename().string() + " arguments x"));
}

TEST(base_ipc_command, program_that_does_not_exist_is_not_started)
{
    EXPECT_EQ("no_such_program: No such file or directory", get_start_error("no_such_program -x"));
    EXPECT_EQ("/no/such/program: No such file or directory", get_start_error("/no/such/program"));
    EXPECT_EQ(": No such file or directory", get_start_error("\"\""));
}

TEST(base_ipc_command, file_that_is_not_executable_is_not_started)
{
    const std::string file = TEST_ENVIRONMENT::write_file("plain_file", "text");
    EXPECT_EQ(file + ": Permission denied", get_start_error(file));
    chmod(file.c_str(), 0755);
    EXPECT_EQ(file + ": Exec format error", get_start_error(file));
    EXPECT_EQ("/tmp: Permission denied", get_start_error("/tmp"));
}

TEST(base_ipc_command, line_without_a_word_is_not_started)
{
    for (const std::string command : {"", " ", " \t\r\n "})
        EXPECT_EQ("the command is empty", get_start_error(command));
}

TEST(base_ipc_command, quote_that_is_not_closed_is_not_started)
{
    for (const std::string command : {"program \"a b", "program 'a b", "program \"a\\\"", "'", "a 'b' \"c'"})
        EXPECT_EQ("the command has a quote that is not closed", get_start_error(command)) << command;
}

TEST(base_ipc_command, nul_in_command_or_folder_is_not_started)
{
    EXPECT_EQ("the command has a NUL character in it", get_start_error(std::string("true\0x", 6)));
    EXPECT_EQ(std::string("/tmp\0x: Invalid argument", 24), get_start_error("true", std::string("/tmp\0x", 6)));
}

TEST(base_ipc_command, missing_working_directory_is_not_started)
{
    const std::string file = TEST_ENVIRONMENT::write_file("file", "");
    EXPECT_EQ("/no/such/folder: No such file or directory", get_start_error("true", "/no/such/folder"));
    EXPECT_EQ(file + ": Not a directory", get_start_error("true", file));
}

TEST(base_ipc_command, words_are_divided_by_blanks)
{
    EXPECT_EQ((LINES{"[a]", "[b]", "[c]", "[d]"}), run_and_get_lines(get_child_command("arguments  a\tb\nc \r\n d  ")));
    EXPECT_EQ(LINES{}, run_and_get_lines(get_child_command("arguments ")));
}

TEST(base_ipc_command, quotes_and_backslashes_keep_blanks)
{
    const auto get_words = [](const std::string& words)
    { return run_and_get_lines(get_child_command("arguments " + words)); };
    EXPECT_EQ((LINES{"[a b]", "[c\td]", "[e f]"}), get_words("\"a b\" 'c\td' e\\ f"));
    EXPECT_EQ((LINES{"[]", "[]"}), get_words("\"\" ''"));
    EXPECT_EQ(LINES{"[one two]"}, get_words("o\"ne t\"w'o'"));
    EXPECT_EQ((LINES{"[it's]", "[a\"b]"}), get_words("\"it's\" 'a\"b'"));
    EXPECT_EQ((LINES{"[a\"b\\c]", "[\\n]"}), get_words("\"a\\\"b\\\\c\" \"\\n\""));
    EXPECT_EQ(LINES{"[a\\b]"}, get_words("'a\\b'"));
    EXPECT_EQ((LINES{"['\"n]", "[\\]"}), get_words("\\'\\\"\\n \\"));
}

TEST(base_ipc_command, no_shell_takes_part)
{
    EXPECT_EQ((LINES{"[$HOME]", "[*]", "[|]", "[a;b]", "[>x]", "[~]"}),
              run_and_get_lines(get_child_command("arguments $HOME * | a;b >x ~")));
}

TEST(base_ipc_command, argument_may_have_100000_characters_but_no_more_than_the_system_takes)
{
    EXPECT_EQ(LINES{"100000"}, run_and_get_lines(get_child_command("argument_size " + std::string(100000, 'x'))));
    const std::string error = get_start_error(get_child_command("argument_size " + std::string(500000, 'x')));
    EXPECT_NE(std::string::npos, error.find("Argument list too long")) << error;
}

TEST(base_ipc_command, command_runs_in_its_working_directory)
{
    IPC_RECORDER recorder;
    const std::string folder = std::filesystem::canonical(TEST_ENVIRONMENT::get_folder());
    EXPECT_TRUE(recorder.run(get_child_command("folder"), folder, false, nullptr, "", false));
    EXPECT_TRUE(recorder.run(get_child_command("folder"), "", false, nullptr, "", false));
    EXPECT_EQ((LINES{folder, std::filesystem::current_path()}), recorder.get_lines());
}

TEST(base_ipc_command, program_s_path_is_seen_from_the_working_directory)
{
    const std::filesystem::path program = get_child_path("base_ipc_command_child");
    IPC_COMMAND command;
    EXPECT_TRUE(command.run("./base_ipc_command_child exit 0", program.parent_path(), false, nullptr, "", false));
    EXPECT_FALSE(command.run("./base_ipc_command_child exit 0", "/", false, nullptr, "", false));
}

TEST(base_ipc_command, command_leads_a_process_group_of_its_own)
{
    EXPECT_EQ(LINES{"leader"}, run_and_get_lines(get_child_command("group")));
}

TEST(base_ipc_command, error_output_is_merged_only_on_request)
{
    IPC_RECORDER recorder;
    testing::internal::CaptureStderr();
    EXPECT_TRUE(recorder.run(get_child_command("both_outputs"), "", false, nullptr, "", false));
    EXPECT_EQ("error\n", testing::internal::GetCapturedStderr());
    EXPECT_EQ(LINES{"output"}, recorder.get_lines());

    recorder.clear();
    testing::internal::CaptureStderr();
    EXPECT_TRUE(recorder.run(get_child_command("both_outputs"), "", true, nullptr, "", false));
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
    EXPECT_EQ((LINES{"output", "error"}), recorder.get_lines());
}

TEST(base_ipc_command, command_has_only_its_standard_descriptors)
{
    // What the surroundings of the test left open is not at issue.
    for (int descriptor = STDERR_FILENO + 1; descriptor < 1024; ++descriptor)
        fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    const auto take_pipe = [](const std::string& line) { return line.substr(0, line.find(":[")); };
    for (const std::string& input : {std::string(), std::string("x")})
    {
        const LINES lines = run_and_get_lines(get_child_command("descriptors"), input);
        ASSERT_EQ(3u, lines.size()) << testing::PrintToString(lines);
        EXPECT_EQ(input.empty() ? "0 /dev/null" : "0 pipe", take_pipe(lines[0]));
        EXPECT_EQ("1 pipe", take_pipe(lines[1]));
        EXPECT_EQ("2 pipe", take_pipe(lines[2]));
    }
}

TEST(base_ipc_command, command_starts_with_the_usual_signal_handling)
{
    sigset_t signals;
    sigfillset(&signals);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    signal(SIGPIPE, SIG_IGN);
    signal(SIGTERM, SIG_IGN);
    EXPECT_EQ(LINES{}, run_and_get_lines(get_child_command("signals")));
}

TEST(base_ipc_command, process_without_standard_descriptors_can_run_commands)
{
    const std::string file = TEST_ENVIRONMENT::get_folder() + "/result";
    const std::string child = get_child_path("base_ipc_command_child");
    EXPECT_EQ(0, run_child(child, {"run_without_descriptors", child, file}).exit_status);
    EXPECT_EQ("through the pipes", TEST_ENVIRONMENT::read_file(file));
}

TEST(base_ipc_command, lines_come_without_their_line_ends)
{
    EXPECT_EQ((LINES{"one", "two", "", "", "last"}), get_lines_of("one\ntwo\r\n\n\r\nlast\n"));
    EXPECT_EQ(LINES{"no line end"}, get_lines_of("no line end"));
    EXPECT_EQ(LINES{"only a return\r"}, get_lines_of("only a return\r"));
    EXPECT_EQ((LINES{"10%\r20%\r30%", "a\r"}), get_lines_of("10%\r20%\r30%\na\r\r\n"));
    EXPECT_EQ((LINES{std::string("a\0b", 3), std::string("\0", 1)}), get_lines_of(std::string("a\0b\n\0", 5)));
}

TEST(base_ipc_command, lines_do_not_depend_on_how_the_output_is_cut)
{
    const std::string text = "one\r\ntwo\r\r\n\r\nthree\rfour\n\nfive\n";
    for (std::size_t piece = 1; piece <= text.size(); ++piece)
    {
        IPC_RECORDER recorder;
        for (std::size_t begin = 0; begin < text.size(); begin += piece)
        {
            std::string part = text.substr(begin, piece);
            recorder.parse_output(gsl::span<char>(part.data(), part.size()));
        }
        EXPECT_EQ((LINES{"one", "two\r", "", "three\rfour", "", "five"}), recorder.get_lines()) << piece;
    }
    IPC_RECORDER recorder;
    recorder.parse_output({});
    EXPECT_EQ(LINES{}, recorder.get_lines());
}

TEST(base_ipc_command, line_above_the_limit_comes_in_pieces)
{
    const std::size_t limit = IPC_COMMAND::MAX_LINE_SIZE;
    const auto get_sizes = [](const std::string& text)
    {
        std::vector<std::size_t> sizes;
        for (const std::string& line : get_lines_of(text))
            sizes.push_back(line.size());
        return sizes;
    };
    using SIZES = std::vector<std::size_t>;
    EXPECT_EQ((SIZES{limit, 1}), get_sizes(std::string(limit, 'x') + "\ny"));
    EXPECT_EQ((SIZES{limit, 1}), get_sizes(std::string(limit, 'x') + "\r\ny"));
    EXPECT_EQ((SIZES{limit, 1, 1}), get_sizes(std::string(limit + 1, 'x') + "\ny"));
    EXPECT_EQ((SIZES{limit, 2}), get_sizes(std::string(limit, 'x') + "\ry\r\n"));
    EXPECT_EQ((SIZES{limit, limit, 0, 1}), get_sizes(std::string(2 * limit, 'x') + "\n\ny"));
    EXPECT_EQ((SIZES{limit, limit, 5}), get_sizes(std::string(2 * limit + 5, 'x')));
}

TEST(base_ipc_command, pieces_of_a_long_line_are_its_text_in_order)
{
    std::string text;
    for (int i = 0; text.size() < 3 * IPC_COMMAND::MAX_LINE_SIZE; ++i)
        text += std::to_string(i) + " ";
    std::string joined;
    for (const std::string& line : get_lines_of(text))
        joined += line;
    EXPECT_TRUE(text == joined);
}

TEST(base_ipc_command, hundred_megabytes_arrive_whole)
{
    COUNTER counter;
    THR_PROCESS_EXIT_CODE exit_code = 1;
    EXPECT_TRUE(counter.run(get_child_command("print 100000000 80"), "", false, &exit_code, "", false));
    EXPECT_EQ(0u, exit_code);
    EXPECT_EQ(1250000u, counter.line_count);
    EXPECT_EQ(1250000u * 79, counter.byte_count);
    EXPECT_EQ(79u, counter.longest_line);
}

TEST(base_ipc_command, hundred_megabytes_without_a_line_end_are_never_held_whole)
{
    COUNTER counter;
    EXPECT_TRUE(counter.run(get_child_command("print 100000000 0"), "", false, nullptr, "", false));
    EXPECT_EQ(100000000u, counter.byte_count);
    EXPECT_EQ(IPC_COMMAND::MAX_LINE_SIZE, counter.longest_line);
}

TEST(base_ipc_command, output_is_kept_only_on_request_and_raw)
{
    IPC_RECORDER recorder;
    EXPECT_TRUE(recorder.run_here(get_child_command("copy"), "one\r\ntwo", true).started);
    EXPECT_EQ("one\r\ntwo", recorder.get_output());
    EXPECT_EQ((LINES{"one", "two"}), recorder.get_lines());
    EXPECT_TRUE(recorder.run_here(get_child_command("copy"), "three", false).started);
    EXPECT_EQ("", recorder.get_output());
}

TEST(base_ipc_command, only_the_beginning_of_much_output_is_kept)
{
    IPC_COMMAND command;
    EXPECT_TRUE(command.run(get_child_command("print 20000000 10"), "", false, nullptr, "", true));
    const std::string output = command.get_output();
    EXPECT_EQ(std::size_t{16} << 20, output.size());
    EXPECT_EQ("xxxxxxxxx\nxxxxxxxxx\n", output.substr(0, 20));
}

TEST(base_ipc_command, override_of_the_raw_output_takes_the_place_of_lines)
{
    class RAW : public IPC_RECORDER
    {
    public:
        std::string text;

    protected:
        void parse_output(gsl::span<char> output) override
        {
            text.append(output.data(), output.size());
        }
    };
    RAW raw;
    EXPECT_TRUE(raw.run_here(get_child_command("copy"), "a\r\nb").started);
    EXPECT_EQ("a\r\nb", raw.text);
    EXPECT_EQ(LINES{}, raw.get_lines());
}

TEST(base_ipc_command, command_that_reads_all_input_gets_it_and_its_end)
{
    EXPECT_EQ(LINES{}, run_and_get_lines(get_child_command("copy")));
    const std::size_t size = 10000000;
    EXPECT_EQ(size, get_total_size(get_lines_of(std::string(size, 'x'))));
}

TEST(base_ipc_command, input_that_nobody_reads_is_dropped_without_a_signal)
{
    ASSERT_EQ(SIG_DFL, signal(SIGPIPE, SIG_DFL));
    const std::string pipe = TEST_ENVIRONMENT::get_folder() + "/pipe";
    ASSERT_EQ(0, mkfifo(pipe.c_str(), 0600));
    // The command closes its input, and lives on until the other end of the pipe is closed.
    std::thread other_end([&pipe] { std::ofstream stream(pipe); });
    IPC_RECORDER recorder;
    EXPECT_EQ(7, recorder.run_here(get_child_command("close_input " + pipe + " 7"), std::string(1000000, 'x'))
                     .get_exit_status());
    other_end.join();
    EXPECT_EQ(2, recorder.run_here(get_child_command("exit 2"), std::string(1000000, 'x')).get_exit_status());
    sigset_t pending;
    sigpending(&pending);
    EXPECT_EQ(0, sigismember(&pending, SIGPIPE));
}

TEST(base_ipc_command, object_runs_one_command_after_the_other)
{
    IPC_RECORDER recorder;
    EXPECT_EQ(5, recorder.run_here(get_child_command("exit 5")).get_exit_status());
    EXPECT_FALSE(recorder.run_here("no_such_program").started);
    EXPECT_NE("", recorder.get_start_error());
    EXPECT_EQ(0, recorder.run_here(get_child_command("copy"), "unended", true).exit_code);
    EXPECT_EQ("", recorder.get_start_error());
    EXPECT_EQ(0, recorder.run_here(get_child_command("copy"), "next\n").exit_code);
    EXPECT_EQ((LINES{"unended", "next"}), recorder.get_lines());
}

TEST(base_ipc_command, run_inside_a_run_is_refused)
{
    class NESTED : public IPC_RECORDER
    {
    public:
        OUTCOME inner{true, 0};

    protected:
        void process_line(const std::string& line) override
        {
            IPC_RECORDER::process_line(line);
            inner = run_here(get_child_command("exit 0"));
        }
    };
    NESTED nested;
    EXPECT_EQ(0u, nested.run_here(get_child_command("copy"), "line").exit_code);
    EXPECT_FALSE(nested.inner.started);
    EXPECT_EQ(127, nested.inner.get_exit_status());
    EXPECT_EQ(LINES{"line"}, nested.get_lines());
}

TEST(base_ipc_command, neither_descriptors_nor_zombies_are_left)
{
    const std::ptrdiff_t descriptor_count = count_descriptors();
    IPC_RECORDER recorder;
    for (int i = 0; i < 50; ++i)
    {
        recorder.run_here(get_child_command("exit 1"), i % 2 == 0 ? "input" : "");
        recorder.run_here("no_such_program", "input");
        recorder.run_here(get_child_command("copy"), "line");
    }
    EXPECT_EQ(descriptor_count, count_descriptors());
    EXPECT_EQ(-1, waitpid(-1, nullptr, WNOHANG));
    EXPECT_EQ(ECHILD, errno);
}

TEST(base_ipc_command, process_without_free_descriptors_gives_a_reason)
{
    rlimit limit{};
    getrlimit(RLIMIT_NOFILE, &limit);
    const rlimit no_more{4, limit.rlim_max};
    IPC_RECORDER recorder;
    // Once with all of them: a sanitizer that sees the object for the first time wants descriptors, too.
    EXPECT_TRUE(recorder.run_here(get_child_command("exit 0")).started);
    setrlimit(RLIMIT_NOFILE, &no_more);
    const auto outcome = recorder.run_here(get_child_command("exit 0"), "input");
    setrlimit(RLIMIT_NOFILE, &limit);
    EXPECT_FALSE(outcome.started);
    EXPECT_EQ(127, outcome.get_exit_status());
    EXPECT_EQ("no pipe could be made: Too many open files", recorder.get_start_error());
    EXPECT_TRUE(recorder.run_here(get_child_command("exit 0")).started);
}

TEST(base_ipc_command, host_that_ignores_the_end_of_children_gets_an_exit_status_all_the_same)
{
    signal(SIGCHLD, SIG_IGN);
    IPC_RECORDER recorder;
    const auto outcome = recorder.run_here(get_child_command("copy"), "line");
    signal(SIGCHLD, SIG_DFL);
    EXPECT_TRUE(outcome.started);
    EXPECT_EQ(255, outcome.get_exit_status());
    EXPECT_EQ(LINES{"line"}, recorder.get_lines());
}
