#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

/// What the recording modules share: see MODULE_RECORDER.

#define MODULE_EXPORT extern "C" __attribute__((visibility("default")))

/// Writes a line to the file that the environment variable names.
inline void write_module_line(const std::string& line)
{
    const char* const path = getenv("TEST_MODULE_LOG");
    std::FILE* const file = path != nullptr ? std::fopen(path, "a") : nullptr;
    if (file == nullptr)
        return;
    std::fputs((line + "\n").c_str(), file);
    std::fclose(file);
}
