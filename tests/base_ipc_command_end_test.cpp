// How commands end: terminate(), children that stay, threads, the Tcl mode, exceptions.

#include "support/ipc_recorder.h"
#include "support/test_environment.h"

#include "xtcl.h"

#include <sys/stat.h>
#include <sys/wait.h>

#include <csignal>
#include <future>
#include <memory>
#include <stdexcept>

namespace
{
using LINES = std::vector<std::string>;
using CLOCK = std::chrono::steady_clock;
using std::chrono::milliseconds;

std::string make_pipe(const std::string& name)
{
    std::string pipe = TEST_ENVIRONMENT::get_folder() + "/" + name;
    EXPECT_EQ(0, mkfifo(pipe.c_str(), 0600));
    return pipe;
}

std::vector<pid_t> get_numbers(const LINES& lines)
{
    std::vector<pid_t> numbers;
    for (const std::string& line : lines)
        numbers.push_back(static_cast<pid_t>(std::stol(line)));
    return numbers;
}

/// Flushes the Tcl queue, as an application does, until something is ready.
template <typename RESULT>
RESULT flush_until(std::future<RESULT>&& future)
{
    while (future.wait_for(milliseconds(1)) != std::future_status::ready)
        xtcl_flush_queue(0, 0);
    return future.get();
}

/// Fails a test that leaves descriptors or zombies.
class base_ipc_command_end : public testing::Test
{
protected:
    ~base_ipc_command_end() override
    {
        EXPECT_EQ(m_descriptor_count, count_descriptors());
        EXPECT_EQ(-1, waitpid(-1, nullptr, WNOHANG));
    }

    const std::ptrdiff_t m_descriptor_count = count_descriptors();
};
} // namespace

TEST_F(base_ipc_command_end, status_goes_from_idle_over_running_to_finished)
{
    IPC_RECORDER recorder;
    EXPECT_EQ(1u, recorder.get_process_status(0));
    EXPECT_EQ(1u, recorder.get_process_status(IPC_LONG_MILLISECONDS));
    const std::string pipe = make_pipe("pipe");
    IPC_BACKGROUND_RUN run(recorder, get_child_command("say_and_await_pipe " + pipe + " 6"));
    recorder.wait_for_lines(1);
    EXPECT_EQ(2u, recorder.get_process_status(0));
    EXPECT_EQ(2u, recorder.get_process_status(1));
    std::ofstream(pipe) << "go";
    EXPECT_EQ(3u, recorder.get_process_status(IPC_LONG_MILLISECONDS));
    EXPECT_EQ(6, run.wait().get_exit_status());
    EXPECT_EQ(3u, recorder.get_process_status(0));
}

TEST_F(base_ipc_command_end, expected_run_is_starting_until_it_comes_or_is_withdrawn)
{
    IPC_RECORDER recorder;
    recorder.expect_run();
    EXPECT_EQ(0u, recorder.get_process_status(0));
    EXPECT_EQ(0u, recorder.get_process_status(5));
    recorder.run_here(get_child_command("exit 0"));
    EXPECT_EQ(3u, recorder.get_process_status(0));

    recorder.expect_run();
    recorder.expect_run();
    recorder.run_here(get_child_command("exit 0"));
    EXPECT_EQ(0u, recorder.get_process_status(0));
    recorder.withdraw_run();
    EXPECT_EQ(3u, recorder.get_process_status(0));
    recorder.withdraw_run();
    EXPECT_EQ(3u, recorder.get_process_status(0));
}

TEST_F(base_ipc_command_end, status_waits_at_most_the_given_time)
{
    IPC_RECORDER recorder;
    IPC_BACKGROUND_RUN run(recorder, get_child_command("stay"));
    recorder.wait_for_lines(1);
    const auto begin = CLOCK::now();
    EXPECT_EQ(2u, recorder.get_process_status(50));
    EXPECT_GE(CLOCK::now() - begin, milliseconds(50));
    recorder.terminate(0);
    EXPECT_EQ(3u, recorder.get_process_status(static_cast<unsigned long>(-1)));
}

TEST_F(base_ipc_command_end, exit_code_is_there_when_the_status_says_finished)
{
    IPC_COMMAND command;
    for (int i = 1; i <= 100; ++i)
    {
        THR_PROCESS_EXIT_CODE exit_code = 0;
        command.expect_run();
        const std::string line = get_child_command("exit " + std::to_string(i));
        std::thread thread([&] { command.run(line, "", false, &exit_code, "", false); });
        while (command.get_process_status(0) != IPC_COMMAND::STATUS_FINISHED)
            std::this_thread::yield();
        EXPECT_EQ(i, thr_get_exit_status(exit_code));
        thread.join();
    }
}

TEST_F(base_ipc_command_end, terminate_asks_the_command_to_end)
{
    IPC_RECORDER recorder;
    IPC_BACKGROUND_RUN run(recorder, get_child_command("stay"));
    recorder.wait_for_lines(1);
    recorder.terminate(0);
    const auto outcome = run.wait();
    EXPECT_TRUE(outcome.started);
    EXPECT_EQ(static_cast<THR_PROCESS_EXIT_CODE>(SIGTERM), outcome.exit_code);
}

TEST_F(base_ipc_command_end, exit_code_of_terminate_replaces_the_command_s)
{
    IPC_RECORDER recorder;
    IPC_BACKGROUND_RUN run(recorder, get_child_command("stay"));
    recorder.wait_for_lines(1);
    recorder.terminate(0x1700);
    recorder.terminate(0);
    EXPECT_EQ(0x1700u, run.wait().exit_code);

    EXPECT_EQ(2, recorder.run_here(get_child_command("exit 2")).get_exit_status());
    recorder.terminate(0x1800);
    EXPECT_EQ(2, recorder.run_here(get_child_command("exit 2")).get_exit_status());
}

TEST_F(base_ipc_command_end, terminate_is_harmless_where_nothing_runs)
{
    IPC_RECORDER recorder;
    recorder.terminate(0x700);
    EXPECT_EQ(1u, recorder.get_process_status(0));
    EXPECT_EQ(0u, recorder.run_here(get_child_command("exit 0")).exit_code);
    recorder.terminate(0x700);
    EXPECT_EQ(3u, recorder.get_process_status(0));
    EXPECT_EQ(0u, recorder.run_here(get_child_command("exit 0")).exit_code);
}

TEST_F(base_ipc_command_end, terminate_before_the_process_exists_keeps_it_from_starting)
{
    IPC_RECORDER recorder;
    recorder.expect_run();
    recorder.terminate(0);
    const auto outcome = recorder.run_here(get_child_command("exit 3"));
    EXPECT_FALSE(outcome.started);
    EXPECT_EQ(static_cast<THR_PROCESS_EXIT_CODE>(SIGTERM), outcome.exit_code);
    EXPECT_EQ("ended before its start", recorder.get_start_error());
    EXPECT_EQ(3, recorder.run_here(get_child_command("exit 3")).get_exit_status());
}

TEST_F(base_ipc_command_end, command_that_ignores_the_request_is_killed)
{
    IPC_RECORDER recorder;
    IPC_BACKGROUND_RUN run(recorder, get_child_command("ignore_term"));
    const pid_t pid = get_numbers(recorder.wait_for_lines(1)).front();
    const auto begin = CLOCK::now();
    recorder.terminate(0);
    EXPECT_LT(CLOCK::now() - begin, milliseconds(IPC_COMMAND::KILL_DELAY_MILLISECONDS));
    EXPECT_EQ(static_cast<THR_PROCESS_EXIT_CODE>(SIGKILL), run.wait().exit_code);
    EXPECT_GE(CLOCK::now() - begin, milliseconds(IPC_COMMAND::KILL_DELAY_MILLISECONDS));
    EXPECT_FALSE(is_alive(pid));
}

TEST_F(base_ipc_command_end, grandchildren_end_with_the_command)
{
    IPC_RECORDER recorder;
    IPC_BACKGROUND_RUN run(recorder, get_child_command("family"));
    const std::vector<pid_t> family = get_numbers(recorder.wait_for_lines(3));
    for (const pid_t pid : family)
        EXPECT_TRUE(is_alive(pid));
    recorder.terminate(0);
    run.wait();
    for (const pid_t pid : family)
        EXPECT_TRUE(wait_for_end(pid));
}

TEST_F(base_ipc_command_end, last_words_of_a_grandchild_are_heard)
{
    IPC_RECORDER recorder;
    IPC_BACKGROUND_RUN run(recorder, get_child_command("polite"));
    recorder.wait_for_lines(1);
    recorder.terminate(0);
    EXPECT_EQ(static_cast<THR_PROCESS_EXIT_CODE>(SIGTERM), run.wait().exit_code);
    EXPECT_EQ((LINES{"ready", "bye"}), recorder.get_lines());
}

TEST_F(base_ipc_command_end, stopped_command_hears_the_request)
{
    IPC_RECORDER recorder;
    IPC_BACKGROUND_RUN run(recorder, get_child_command("stop"));
    const pid_t pid = get_numbers(recorder.wait_for_lines(1)).front();
    siginfo_t info{};
    EXPECT_EQ(0, waitid(P_PID, static_cast<id_t>(pid), &info, WSTOPPED | WNOWAIT));
    recorder.terminate(0);
    EXPECT_EQ(static_cast<THR_PROCESS_EXIT_CODE>(SIGTERM), run.wait().exit_code);
}

TEST_F(base_ipc_command_end, silent_process_left_behind_does_not_hold_the_run)
{
    for (const std::string kind : {"silent", "session"})
    {
        IPC_RECORDER recorder;
        const auto begin = CLOCK::now();
        EXPECT_EQ(3, recorder.run_here(get_child_command("leave_child " + kind)).get_exit_status());
        EXPECT_GE(CLOCK::now() - begin, milliseconds(IPC_COMMAND::DRAIN_MILLISECONDS));
        const pid_t pid = get_numbers(recorder.wait_for_lines(1)).front();
        EXPECT_TRUE(is_alive(pid)) << kind;
        kill(pid, SIGKILL);
        EXPECT_TRUE(wait_for_end(pid));
    }
}

TEST_F(base_ipc_command_end, process_left_behind_that_writes_without_end_does_not_hold_the_run)
{
    IPC_RECORDER recorder;
    EXPECT_EQ(3, recorder.run_here(get_child_command("leave_child flood")).get_exit_status());
    // Nobody reads it any more: its next write ends it.
    EXPECT_TRUE(wait_for_end(static_cast<pid_t>(std::stol(recorder.wait_for_lines(1).front()))));
    EXPECT_EQ("flood", recorder.wait_for_lines(2)[1]);
}

TEST_F(base_ipc_command_end, terminate_ends_what_the_command_left_behind)
{
    IPC_RECORDER recorder;
    IPC_BACKGROUND_RUN run(recorder, get_child_command("leave_child silent"));
    const pid_t pid = get_numbers(recorder.wait_for_lines(1)).front();
    recorder.terminate(0);
    run.wait();
    EXPECT_TRUE(wait_for_end(pid));
}

TEST_F(base_ipc_command_end, command_without_output_runs_on)
{
    IPC_RECORDER recorder;
    const std::string pipe = make_pipe("pipe");
    IPC_BACKGROUND_RUN run(recorder, get_child_command("close_output " + pipe + " 8"));
    std::ofstream other_end(pipe);
    // The command opens the pipe behind the end of its output.
    EXPECT_EQ(2u, recorder.get_process_status(100));
    other_end << "go" << std::endl;
    EXPECT_EQ(8, run.wait().get_exit_status());
}

TEST_F(base_ipc_command_end, stop_request_of_the_object_ends_the_command)
{
    class STOPPING : public IPC_RECORDER
    {
    protected:
        bool is_stopped() override
        {
            return !get_lines().empty();
        }
    };
    STOPPING stopping;
    EXPECT_EQ(static_cast<THR_PROCESS_EXIT_CODE>(SIGTERM), stopping.run_here(get_child_command("stay")).exit_code);
}

TEST_F(base_ipc_command_end, exception_kills_the_command_and_comes_out)
{
    class THROWING : public IPC_RECORDER
    {
    public:
        bool throws = true;

    protected:
        void process_line(const std::string& line) override
        {
            IPC_RECORDER::process_line(line);
            if (throws)
                throw std::runtime_error(line);
        }
    };
    THROWING throwing;
    THR_PROCESS_EXIT_CODE exit_code = 0;
    EXPECT_THROW(throwing.run(get_child_command("ignore_term"), "", true, &exit_code, "", false), std::runtime_error);
    EXPECT_EQ(static_cast<THR_PROCESS_EXIT_CODE>(SIGKILL), exit_code);
    EXPECT_EQ(3u, throwing.get_process_status(0));
    EXPECT_FALSE(is_alive(get_numbers(throwing.get_lines()).front()));
    throwing.throws = false;
    EXPECT_EQ(4, throwing.run_here(get_child_command("exit 4")).get_exit_status());
}

TEST_F(base_ipc_command_end, second_run_waits_for_the_end_of_the_first)
{
    IPC_RECORDER recorder;
    const std::string pipe = make_pipe("pipe");
    IPC_BACKGROUND_RUN first(recorder, get_child_command("say_and_await_pipe " + pipe + " 1"));
    recorder.wait_for_lines(1);
    IPC_BACKGROUND_RUN second(recorder, get_child_command("arguments second"));
    EXPECT_EQ(2u, recorder.get_process_status(50));
    EXPECT_EQ(LINES{"ready"}, recorder.get_lines());
    std::ofstream(pipe) << "go";
    EXPECT_EQ(3u, recorder.get_process_status(IPC_LONG_MILLISECONDS));
    EXPECT_EQ(1, first.wait().get_exit_status());
    EXPECT_EQ(0, second.wait().get_exit_status());
    EXPECT_EQ((LINES{"ready", "done", "[second]"}), recorder.get_lines());
}

TEST_F(base_ipc_command_end, terminate_ends_the_waiting_run_too)
{
    IPC_RECORDER recorder;
    IPC_BACKGROUND_RUN first(recorder, get_child_command("stay"));
    recorder.wait_for_lines(1);
    IPC_BACKGROUND_RUN second(recorder, get_child_command("stay"));
    recorder.terminate(0x2000);
    EXPECT_EQ(0x2000u, first.wait().exit_code);
    const auto outcome = second.wait();
    EXPECT_FALSE(outcome.started);
    EXPECT_EQ(0x2000u, outcome.exit_code);
    EXPECT_EQ(LINES{"ready"}, recorder.get_lines());
}

TEST_F(base_ipc_command_end, terminate_and_status_are_hammered_from_other_threads)
{
    IPC_RECORDER recorder;
    std::atomic<bool> is_over{false};
    std::vector<std::thread> hammers(3);
    for (std::thread& hammer : hammers)
    {
        hammer = std::thread(
            [&]
            {
                while (!is_over)
                {
                    recorder.terminate(0);
                    EXPECT_LE(recorder.get_process_status(0), 3u);
                    EXPECT_LE(recorder.get_process_status(1), 3u);
                    EXPECT_EQ("", recorder.get_output());
                }
            });
    }
    for (int i = 0; i < 100; ++i)
    {
        // Whenever the request comes, before the start or behind it: the command never ends by itself.
        EXPECT_EQ(static_cast<THR_PROCESS_EXIT_CODE>(SIGTERM), recorder.run_here(get_child_command("stay")).exit_code);
    }
    is_over = true;
    for (std::thread& hammer : hammers)
        hammer.join();
    EXPECT_EQ(0u, recorder.run_here(get_child_command("exit 0")).exit_code);
}

TEST_F(base_ipc_command_end, destructor_ends_the_command_and_waits)
{
    const std::string pipe = make_pipe("pipe");
    auto command = std::make_unique<IPC_COMMAND>();
    std::thread thread([object = command.get(), line = get_child_command("tell_number " + pipe)]
                       { object->run(line, "", true, nullptr, "", false); });
    pid_t pid = 0;
    std::ifstream(pipe) >> pid;
    EXPECT_TRUE(is_alive(pid));
    command.reset();
    EXPECT_FALSE(is_alive(pid));
    thread.join();
}

TEST_F(base_ipc_command_end, script_runs_on_the_main_thread_and_its_result_is_the_output)
{
    IPC_RECORDER recorder;
    recorder.enable_tcl_mode();
    const auto outcome = flush_until(std::async(
        std::launch::async, [&recorder]
        { return recorder.run_here("set list {}\nlappend list [expr {6 * 7}] b\njoin $list \\n", "", true); }));
    EXPECT_TRUE(outcome.started);
    EXPECT_EQ(0u, outcome.exit_code);
    EXPECT_EQ((LINES{"42", "b"}), recorder.get_lines());
    EXPECT_EQ("42\nb", recorder.get_output());
    EXPECT_EQ(3u, recorder.get_process_status(0));
}

TEST_F(base_ipc_command_end, failing_script_gives_its_code_and_error_text)
{
    IPC_RECORDER recorder;
    recorder.enable_tcl_mode();
    const auto outcome = recorder.run_here("error {no such net}");
    EXPECT_TRUE(outcome.started);
    EXPECT_EQ(1, outcome.get_exit_status());
    EXPECT_EQ(LINES{"no such net"}, recorder.get_lines());
    EXPECT_FALSE(recorder.run_here(std::string("set a\0b", 7)).started);

    recorder.disable_tcl_mode();
    EXPECT_EQ(3, recorder.run_here(get_child_command("exit 3")).get_exit_status());
}

TEST_F(base_ipc_command_end, script_is_not_started_without_the_service_or_after_terminate)
{
    IPC_RECORDER recorder;
    recorder.enable_tcl_mode();
    recorder.expect_run();
    recorder.terminate(0);
    EXPECT_EQ(static_cast<THR_PROCESS_EXIT_CODE>(SIGTERM), recorder.run_here("set has_run 1").exit_code);
    EXPECT_EQ(0u, recorder.run_here("info exists has_run").exit_code);
    EXPECT_EQ(LINES{"0"}, recorder.get_lines());

    xtcl_shutdown();
    const auto outcome = recorder.run_here("set a 1");
    EXPECT_FALSE(outcome.started);
    EXPECT_EQ(127, outcome.get_exit_status());
    EXPECT_NE("", recorder.get_start_error());
    xtcl_startup();
}

TEST_F(base_ipc_command_end, object_of_a_queued_script_may_go_on_the_main_thread)
{
    auto command = std::make_unique<IPC_COMMAND>();
    command->enable_tcl_mode();
    auto future = std::async(std::launch::async, [object = command.get()]
                             { return object->run("set has_run 1", "", true, nullptr, "", true); });
    // The status says running as soon as the script is on its way, and then the object is not touched any more.
    while (command->get_process_status(1) != IPC_COMMAND::STATUS_RUNNING)
        std::this_thread::yield();
    command.reset();
    EXPECT_TRUE(flush_until(std::move(future)));
}
