#include "module_recorder.h"

#include <cstdio>
#include <sstream>

MODULE_RECORDER::MODULE_RECORDER()
    : m_log_file(TEST_ENVIRONMENT::write_file("module_log.txt", "")),
      m_module_path("NORVANE_MODULE_PATH", TEST_RECORDING_MODULES), m_log("TEST_MODULE_LOG", m_log_file.c_str())
{
}

std::vector<std::string> MODULE_RECORDER::take_lines()
{
    std::vector<std::string> lines;
    std::istringstream text(TEST_ENVIRONMENT::read_file(m_log_file));
    for (std::string line; std::getline(text, line);)
        lines.push_back(line);
    std::remove(m_log_file.c_str());
    return lines;
}

std::vector<std::string> MODULE_RECORDER::take_topics()
{
    const std::string beginning = "topic ";
    std::vector<std::string> topics;
    for (const std::string& line : take_lines())
    {
        if (line.compare(0, beginning.size(), beginning) == 0)
            topics.push_back(line.substr(beginning.size()));
    }
    return topics;
}

HOLLOW_MODULES::HOLLOW_MODULES() : m_module_path("NORVANE_MODULE_PATH", TEST_HOLLOW_MODULES)
{
}
