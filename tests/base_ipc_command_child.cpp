// What tests of IPC_COMMAND run: one behaviour per first argument.

#include "ipc_command.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace
{
using ARGUMENTS = std::vector<std::string>;

void write_all(int descriptor, const std::string& text)
{
    for (std::size_t done = 0; done < text.size();)
    {
        const ssize_t count = write(descriptor, text.data() + done, text.size() - done);
        if (count < 0)
            std::_Exit(99);
        done += static_cast<std::size_t>(count);
    }
}

void say(const std::string& line)
{
    write_all(STDOUT_FILENO, line + "\n");
}

[[noreturn]] void stay()
{
    for (;;)
        pause();
}

/// A child of this program that runs the function and stays.
pid_t fork_with(const std::function<void()>& body)
{
    const pid_t pid = fork();
    if (pid != 0)
        return pid;
    body();
    stay();
}

void ignore_term()
{
    signal(SIGTERM, SIG_IGN);
}

/// Says its number, so that the caller knows that it is set up.
void ignore_term_and_say_number()
{
    ignore_term();
    say(std::to_string(getpid()));
}

void say_bye_on_term(int)
{
    write_all(STDOUT_FILENO, "bye\n");
    std::_Exit(0);
}

int print(const ARGUMENTS& arguments)
{
    std::size_t rest = std::stoul(arguments.at(1));
    const std::size_t line_size = std::stoul(arguments.at(2));
    std::string block;
    while (block.size() < std::min<std::size_t>(rest, std::size_t{1} << 20))
        block += line_size == 0 ? std::string(4096, 'x') : std::string(line_size - 1, 'x') + "\n";
    for (; rest > block.size(); rest -= block.size())
        write_all(STDOUT_FILENO, block);
    write_all(STDOUT_FILENO, block.substr(0, rest));
    return 0;
}

int copy(const ARGUMENTS&)
{
    std::array<char, 65536> buffer{};
    for (;;)
    {
        const ssize_t count = read(STDIN_FILENO, buffer.data(), buffer.size());
        if (count <= 0)
            return count < 0 ? 99 : 0;
        write_all(STDOUT_FILENO, std::string(buffer.data(), static_cast<std::size_t>(count)));
    }
}

int show_arguments(const ARGUMENTS& arguments)
{
    for (std::size_t i = 1; i < arguments.size(); ++i)
        say("[" + arguments[i] + "]");
    return 0;
}

int show_descriptors(const ARGUMENTS&)
{
    for (int descriptor = 0; descriptor < 1024; ++descriptor)
    {
        std::error_code error;
        const std::string target =
            std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), error).string();
        if (!error)
            say(std::to_string(descriptor) + " " + target);
    }
    return 0;
}

/// Signals that do not begin in the usual way.
int show_signals(const ARGUMENTS&)
{
    sigset_t blocked;
    sigprocmask(SIG_BLOCK, nullptr, &blocked);
    for (const int signal_number : {SIGTERM, SIGPIPE, SIGCHLD, SIGINT})
    {
        struct sigaction action
        {
        };
        sigaction(signal_number, nullptr, &action);
        if (action.sa_handler != SIG_DFL || sigismember(&blocked, signal_number) != 0)
            say(std::to_string(signal_number));
    }
    return 0;
}

/// Waits until somebody opens and closes the named pipe's other end.
int await_pipe(const ARGUMENTS& arguments)
{
    std::ifstream pipe(arguments.at(1));
    std::string line;
    std::getline(pipe, line);
    return std::stoi(arguments.at(2));
}

int close_output(const ARGUMENTS& arguments)
{
    close(STDOUT_FILENO);
    return await_pipe(arguments);
}

int tell_number(const ARGUMENTS& arguments)
{
    std::ofstream(arguments.at(1)) << getpid() << std::endl;
    stay();
}

/// Leaves behind a process that has its output: a silent one, one that writes without end ("flood"), or a silent one in
/// a session of its own ("session"). Ends as soon as that is set up.
int leave_child(const ARGUMENTS& arguments)
{
    const std::string& kind = arguments.at(1);
    std::array<int, 2> ready{};
    if (pipe(ready.data()) != 0)
        return 99;
    fork_with(
        [&]
        {
            if (kind == "session")
                setsid();
            ignore_term_and_say_number();
            close(ready[0]);
            close(ready[1]);
            while (kind == "flood")
                say("flood");
        });
    close(ready[1]);
    char none = 0;
    return read(ready[0], &none, 1) == 0 ? 3 : 99;
}

/// Three generations; none hears SIGTERM.
int family(const ARGUMENTS&)
{
    fork_with(
        []
        {
            fork_with(ignore_term_and_say_number);
            ignore_term_and_say_number();
        });
    ignore_term_and_say_number();
    stay();
}

/// The child writes when it is asked to end, and ends later than its parent.
int polite(const ARGUMENTS&)
{
    fork_with(
        []
        {
            signal(SIGTERM, say_bye_on_term);
            say("ready");
        });
    stay();
}

/// Runs a command in a process without standard descriptors, and writes the command's output into a file.
int run_without_descriptors(const ARGUMENTS& arguments)
{
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        close(descriptor);
    IPC_COMMAND command;
    command.run(arguments.at(1) + " copy", "", true, nullptr, "through the pipes", true);
    std::ofstream(arguments.at(2)) << command.get_output() << command.get_start_error();
    return 0;
}

const std::map<std::string, std::function<int(const ARGUMENTS&)>>& get_behaviours()
{
    static const std::map<std::string, std::function<int(const ARGUMENTS&)>> behaviours = {
        {"exit", [](const ARGUMENTS& arguments) { return std::stoi(arguments.at(1)); }},
        {"signal", [](const ARGUMENTS& arguments) { return raise(std::stoi(arguments.at(1))); }},
        {"print", print},
        {"copy", copy},
        {"arguments", show_arguments},
        {"argument_size",
         [](const ARGUMENTS& arguments)
         {
             say(std::to_string(arguments.at(1).size()));
             return 0;
         }},
        {"folder",
         [](const ARGUMENTS&)
         {
             say(std::filesystem::current_path().string());
             return 0;
         }},
        {"group",
         [](const ARGUMENTS&)
         {
             say(getpgrp() == getpid() ? "leader" : "member");
             return 0;
         }},
        {"both_outputs",
         [](const ARGUMENTS&)
         {
             write_all(STDOUT_FILENO, "output\n");
             write_all(STDERR_FILENO, "error\n");
             return 0;
         }},
        {"descriptors", show_descriptors},
        {"signals", show_signals},
        {"stay",
         [](const ARGUMENTS&)
         {
             say("ready");
             stay();
             return 0;
         }},
        {"ignore_term",
         [](const ARGUMENTS&)
         {
             ignore_term_and_say_number();
             stay();
             return 0;
         }},
        {"stop",
         [](const ARGUMENTS&)
         {
             say(std::to_string(getpid()));
             raise(SIGSTOP);
             stay();
             return 0;
         }},
        {"close_input",
         [](const ARGUMENTS& arguments)
         {
             close(STDIN_FILENO);
             return await_pipe(arguments);
         }},
        {"say_and_await_pipe",
         [](const ARGUMENTS& arguments)
         {
             say("ready");
             const int exit_status = await_pipe(arguments);
             say("done");
             return exit_status;
         }},
        {"close_output", close_output},
        {"tell_number", tell_number},
        {"leave_child", leave_child},
        {"family", family},
        {"polite", polite},
        {"run_without_descriptors", run_without_descriptors},
    };
    return behaviours;
}
} // namespace

int main(int argc, char** argv)
{
    const ARGUMENTS arguments(argv + 1, argv + argc);
    const auto behaviour = get_behaviours().find(arguments.empty() ? "" : arguments.front());
    return behaviour != get_behaviours().end() ? behaviour->second(arguments) : 98;
}
