#include "test_environment.h"

#include "cfg.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace
{
std::string& test_folder()
{
    static std::string folder;
    return folder;
}
} // namespace

TEST_ENVIRONMENT::TEST_ENVIRONMENT()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "tolv_test_XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no folder for the test could be made at " + pattern);
    test_folder() = pattern;
    for (const char* name : {"user", "modules", "tmp", "run"})
        std::filesystem::create_directory(pattern + "/" + name);
    std::filesystem::permissions(pattern + "/run", std::filesystem::perms::owner_all);

    const std::vector<std::pair<const char*, std::string>> variables = {
        {"HOME", pattern + "/user"},
        {"XDG_CONFIG_HOME", pattern + "/user/.config"},
        {"XDG_DATA_HOME", pattern + "/user/.local/share"},
        {"XDG_CACHE_HOME", pattern + "/user/.cache"},
        {"XDG_RUNTIME_DIR", pattern + "/run"},
        {"TMPDIR", pattern + "/tmp"},
        {"NORVANE_REGISTRY_FILE", get_registry_file()},
        {"NORVANE_CFG_FILE", get_configuration_file()},
        {"NORVANE_MODULE_PATH", get_module_folder()},
        {"NORVANE_USER_PROFILE", pattern + "/user"},
    };
    for (const auto& [name, value] : variables)
        setenv(name, value.c_str(), 1);
    for (const char* name : {"NORVANE_CFG", "NORVANE_ALT_MODE", "NORVANE_REGTEST", "NORVANE_SHOW_QT_MESSAGES",
                             "NORVANE_ENABLE_QT_MESSAGES", "KORVEX_QT_DEBUG_BREAK_ON_QT_MSG", "TCMALLOC_RELEASE_RATE",
                             "NORVANE_DONT_SHARE_OPENGL_CONTEXTS", "NORVANE_EVENT_LOGGING", "QT_STYLE_OVERRIDE",
                             "QT_QPA_PLATFORMTHEME", "QT_LOGGING_RULES"})
        unsetenv(name);
}

TEST_ENVIRONMENT::~TEST_ENVIRONMENT()
{
    std::error_code ignored;
    if (getenv("KEEP_TEST_FOLDER") == nullptr)
        std::filesystem::remove_all(test_folder(), ignored);
}

const std::string& TEST_ENVIRONMENT::get_folder()
{
    return test_folder();
}

std::string TEST_ENVIRONMENT::get_registry_file()
{
    return test_folder() + "/registry.ini";
}

std::string TEST_ENVIRONMENT::get_configuration_file()
{
    return test_folder() + "/norvane.ini";
}

std::string TEST_ENVIRONMENT::get_module_folder()
{
    return test_folder() + "/modules";
}

std::string TEST_ENVIRONMENT::write_file(const std::string& name, const std::string& content)
{
    const std::filesystem::path path = std::filesystem::path(test_folder()) / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file << content;
    file.close();
    if (!file)
        throw std::runtime_error("could not write " + path.string());
    return path.string();
}

std::string TEST_ENVIRONMENT::read_file(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

SCOPED_ENVIRONMENT_VARIABLE::SCOPED_ENVIRONMENT_VARIABLE(const char* name, const char* value) : m_name(name)
{
    const char* old_value = getenv(name);
    m_was_set = old_value != nullptr;
    if (m_was_set)
        m_old_value = old_value;
    if (value != nullptr)
        setenv(name, value, 1);
    else
        unsetenv(name);
}

SCOPED_ENVIRONMENT_VARIABLE::~SCOPED_ENVIRONMENT_VARIABLE()
{
    if (m_was_set)
        setenv(m_name.c_str(), m_old_value.c_str(), 1);
    else
        unsetenv(m_name.c_str());
}

SCOPED_CONFIGURATION::SCOPED_CONFIGURATION(const char* key, const char* value) : m_key(key)
{
    cfg_set_value(key, value);
}

SCOPED_CONFIGURATION::~SCOPED_CONFIGURATION()
{
    cfg_unset_value(m_key);
}
