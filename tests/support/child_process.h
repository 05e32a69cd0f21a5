#pragma once

#include <string>
#include <utility>
#include <vector>

/// What a child program left behind.
struct CHILD_RESULT
{
    bool started = false;
    bool timed_out = false; ///< it was killed after the time limit
    int exit_status = -1;   ///< -1 where a signal ended it
    int signal = 0;         ///< the signal that ended it, 0 for none
    std::string out;        ///< its standard output
    std::string err;        ///< its standard error
};

/// Runs a program to its end: for paths that end the process, and for what must be seen by a second process. The
/// program is one that the tests build (its bare name) or a path. The child's surroundings are this test's, plus the
/// given variables.
CHILD_RESULT run_child(const std::string& program, const std::vector<std::string>& arguments,
                       const std::vector<std::pair<std::string, std::string>>& environment = {},
                       int timeout_milliseconds = 60000);

/// Path of a program that the tests build.
std::string get_child_path(const std::string& name);
