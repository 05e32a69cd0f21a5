#include "command_line.h"
#include "ver.h"
#include "workbench_app.h"

#include <cstdio>
#include <cstdlib>

namespace
{
constexpr int EXIT_USAGE = 2;

/// Whether Qt has something to draw on.
bool has_platform(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i)
    {
        const std::string argument = argv[i];
        if (argument.rfind("-platform", 0) == 0 || argument.rfind("--platform", 0) == 0)
            return true;
    }
    return std::getenv("DISPLAY") != nullptr || std::getenv("WAYLAND_DISPLAY") != nullptr ||
           std::getenv("QT_QPA_PLATFORM") != nullptr;
}
} // namespace

int main(int argc, char** argv)
{
    const COMMAND_LINE command_line = COMMAND_LINE::parse(argc, argv);
    if (!command_line.error.empty())
    {
        std::fprintf(stderr, "norvane_workbench: %s\nTry \"norvane_workbench --help\".\n", command_line.error.c_str());
        return EXIT_USAGE;
    }
    if (command_line.wants_help)
    {
        std::fputs(COMMAND_LINE::get_help().c_str(), stdout);
        return EXIT_SUCCESS;
    }
    if (command_line.wants_version)
    {
        std::printf("norvane_workbench %s\n", ver_get_version_number().c_str());
        return EXIT_SUCCESS;
    }
    if (command_line.screenshot.empty() && !has_platform(argc, argv))
    {
        std::fputs("norvane_workbench: there is no display; --screenshot PICTURE does without\n", stderr);
        return EXIT_FAILURE;
    }
    return WORKBENCH_APP::run(argc, const_cast<const char**>(argv), command_line);
}
