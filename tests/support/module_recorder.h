#pragma once

#include "test_environment.h"

#include <string>
#include <vector>

/// While it lives, modules that write down what they are called for stand in for those of a tool: "mod_help" and
/// "mod_webnav". Each writes "load help" and "unload help" (or "webnav"); calls give "topic <text>" and "page <number>".
class MODULE_RECORDER
{
public:
    MODULE_RECORDER();
    MODULE_RECORDER(const MODULE_RECORDER&) = delete;
    MODULE_RECORDER& operator=(const MODULE_RECORDER&) = delete;

    /// The lines since the last call.
    std::vector<std::string> take_lines();
    /// The help topics since the last call; other lines are dropped.
    std::vector<std::string> take_topics();

private:
    std::string m_log_file;
    SCOPED_ENVIRONMENT_VARIABLE m_module_path;
    SCOPED_ENVIRONMENT_VARIABLE m_log;
};

/// While it lives, these modules are found and have none of the functions that tools call.
class HOLLOW_MODULES
{
public:
    HOLLOW_MODULES();
    HOLLOW_MODULES(const HOLLOW_MODULES&) = delete;
    HOLLOW_MODULES& operator=(const HOLLOW_MODULES&) = delete;

private:
    SCOPED_ENVIRONMENT_VARIABLE m_module_path;
};
