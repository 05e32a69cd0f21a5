#pragma once

#include <string>

/// The private surroundings of a test process: registry, configuration, module path, home and temporary files lie in
/// one fresh folder that goes when the process ends, and nothing of the user's own settings shines through.
class TEST_ENVIRONMENT
{
public:
    /// Makes the folder and sets the environment variables. First thing in main().
    TEST_ENVIRONMENT();
    /// Removes the folder, unless KEEP_TEST_FOLDER is set in the environment.
    ~TEST_ENVIRONMENT();
    TEST_ENVIRONMENT(const TEST_ENVIRONMENT&) = delete;
    TEST_ENVIRONMENT& operator=(const TEST_ENVIRONMENT&) = delete;

    /// The folder, absolute, without a trailing "/".
    static const std::string& get_folder();
    /// Paths below it.
    static std::string get_registry_file();
    static std::string get_configuration_file();
    static std::string get_module_folder();

    /// Writes a file below the folder and returns its path.
    static std::string write_file(const std::string& name, const std::string& content);
    /// The whole content of a file; an empty text where it cannot be read.
    static std::string read_file(const std::string& path);
};

/// Sets an environment variable for a scope and restores what was there. A null value unsets it.
class SCOPED_ENVIRONMENT_VARIABLE
{
public:
    SCOPED_ENVIRONMENT_VARIABLE(const char* name, const char* value);
    ~SCOPED_ENVIRONMENT_VARIABLE();
    SCOPED_ENVIRONMENT_VARIABLE(const SCOPED_ENVIRONMENT_VARIABLE&) = delete;
    SCOPED_ENVIRONMENT_VARIABLE& operator=(const SCOPED_ENVIRONMENT_VARIABLE&) = delete;

private:
    std::string m_name;
    std::string m_old_value;
    bool m_was_set;
};

/// Sets a configuration value for a scope.
class SCOPED_CONFIGURATION
{
public:
    SCOPED_CONFIGURATION(const char* key, const char* value);
    ~SCOPED_CONFIGURATION();
    SCOPED_CONFIGURATION(const SCOPED_CONFIGURATION&) = delete;
    SCOPED_CONFIGURATION& operator=(const SCOPED_CONFIGURATION&) = delete;

private:
    std::string m_key;
};
