#include "thr_drl.h"

#include "support/child_process.h"
#include "support/test_environment.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <filesystem>
#include <thread>

namespace
{
const char* const FUNCTION = "mod_sample_count_call";

std::string get_sample_file()
{
    return std::string(TOLV_TEST_MODULES) + "/mod_sample.so";
}

/// A copy of the sample module below the test's folder.
std::string copy_sample(const std::string& name)
{
    return TEST_ENVIRONMENT::write_file(name, TEST_ENVIRONMENT::read_file(get_sample_file()));
}

std::string get_file(THR_DRL_HANDLE handle)
{
    Dl_info info{};
    void* function = thr_drl_find_function(handle, FUNCTION);
    if (function == nullptr || dladdr(function, &info) == 0)
        return {};
    return info.dli_fname;
}

bool is_in_memory(const std::string& path)
{
    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (handle == nullptr)
        return false;
    dlclose(handle);
    return true;
}

int count_call(THR_DRL_HANDLE handle)
{
    return reinterpret_cast<int (*)()>(thr_drl_find_function(handle, FUNCTION))();
}

class base_thr_drl : public testing::Test
{
protected:
    const SCOPED_ENVIRONMENT_VARIABLE m_module_path{"NORVANE_MODULE_PATH", TOLV_TEST_MODULES};
};
} // namespace

TEST_F(base_thr_drl, bare_name_finds_the_file_of_that_name)
{
    EXPECT_EQ(get_sample_file(), get_file(thr_drl_load("mod_sample")));
}

TEST_F(base_thr_drl, endings_dll_and_so_name_the_same_module)
{
    THR_DRL_HANDLE handle = thr_drl_load("mod_sample");
    ASSERT_NE(nullptr, handle);
    EXPECT_EQ(handle, thr_drl_load("mod_sample.dll"));
    EXPECT_EQ(handle, thr_drl_load(std::string("mod_sample.so")));
}

TEST_F(base_thr_drl, file_with_the_prefix_lib_is_found_by_all_names)
{
    for (const char* name : {"mod_sample_prefixed", "mod_sample_prefixed.dll", "mod_sample_prefixed.so",
                             "libmod_sample_prefixed", "libmod_sample_prefixed.so"})
        EXPECT_EQ(TOLV_TEST_MODULES "/libmod_sample_prefixed.so", get_file(thr_drl_load(name))) << name;
}

TEST_F(base_thr_drl, prefixed_file_goes_before_the_plain_one_of_a_folder)
{
    copy_sample("modules/mod_both.so");
    const std::string prefixed = copy_sample("modules/libmod_both.so");
    const SCOPED_ENVIRONMENT_VARIABLE path("NORVANE_MODULE_PATH", TEST_ENVIRONMENT::get_module_folder().c_str());
    EXPECT_EQ(prefixed, get_file(thr_drl_load("mod_both")));
}

TEST_F(base_thr_drl, earlier_folder_of_the_path_wins_and_empty_and_missing_ones_are_skipped)
{
    const std::string first = copy_sample("first/mod_twice.so");
    copy_sample("second/mod_twice.so");
    const std::string folder = TEST_ENVIRONMENT::get_folder();
    const std::string folders = "::" + folder + "/none:" + folder + "/first:" + folder + "/second:";
    const SCOPED_ENVIRONMENT_VARIABLE path("NORVANE_MODULE_PATH", folders.c_str());
    EXPECT_EQ(first, get_file(thr_drl_load("mod_twice")));
}

TEST_F(base_thr_drl, empty_folder_of_the_path_is_not_the_present_folder)
{
    copy_sample("here/mod_here.so");
    std::filesystem::current_path(TEST_ENVIRONMENT::get_folder() + "/here");
    const SCOPED_ENVIRONMENT_VARIABLE path("NORVANE_MODULE_PATH", ":");
    EXPECT_EQ(nullptr, thr_drl_load("mod_here"));
    std::filesystem::current_path("/");
}

TEST_F(base_thr_drl, executable_s_folder_follows_the_path_and_the_installation_comes_last)
{
    const std::string folder = TEST_ENVIRONMENT::get_folder();
    const std::string child = folder + "/tool/bin/child";
    std::filesystem::create_directories(folder + "/tool/bin");
    std::filesystem::copy_file(get_child_path("base_thr_drl_child"), child);
    const std::string in_path = copy_sample("path/mod_own.so");
    const std::string beside = copy_sample("tool/bin/mod_own.so");
    const std::string installed = copy_sample("tool/" TOLV_INSTALL_MODULE_FOLDER "/mod_own.so");
    const auto load = [&](const std::string& path) {
        return run_child(child, {"mod_own.dll"}, {{"NORVANE_MODULE_PATH", path}}).out;
    };

    EXPECT_EQ(in_path, load(folder + "/path"));
    EXPECT_EQ(beside, load(""));
    std::filesystem::remove(beside);
    EXPECT_EQ(installed, std::filesystem::canonical(load("")));
    std::filesystem::remove(installed);
    EXPECT_EQ("Can't load module mod_own.dll: No such file or directory", load(""));
}

TEST_F(base_thr_drl, name_with_a_slash_is_a_path)
{
    const std::string file = copy_sample("modules/deep/mod_deep.so");
    EXPECT_EQ(file, get_file(thr_drl_load(file)));
    EXPECT_EQ(nullptr, thr_drl_load(TEST_ENVIRONMENT::get_module_folder() + "/deep/mod_deep"));
    EXPECT_EQ("No such file or directory", thr_drl_get_system_error());
}

TEST_F(base_thr_drl, name_with_dots_does_not_lead_out_of_the_module_folders)
{
    copy_sample("modules/mod_outside.so");
    std::filesystem::create_directories(TEST_ENVIRONMENT::get_module_folder() + "/inner");
    const std::string inner = TEST_ENVIRONMENT::get_module_folder() + "/inner";
    const SCOPED_ENVIRONMENT_VARIABLE path("NORVANE_MODULE_PATH", inner.c_str());
    for (const char* name : {"../mod_outside", "../mod_outside.so", "..", "../", ".", ".so", ".dll"})
    {
        EXPECT_EQ(nullptr, thr_drl_load(name)) << name;
        EXPECT_EQ(name, thr_drl_get_error_data());
    }
}

TEST_F(base_thr_drl, missing_module_gives_its_name_and_the_system_s_text)
{
    EXPECT_EQ(nullptr, thr_drl_load("mod_nowhere.dll"));
    EXPECT_EQ("Can't load module mod_nowhere.dll: No such file or directory", thr_drl_get_error());
    EXPECT_EQ("mod_nowhere.dll", thr_drl_get_error_data());
    EXPECT_EQ("No such file or directory", thr_drl_get_system_error());
}

TEST_F(base_thr_drl, null_and_empty_names_fail_with_a_text)
{
    for (const char* name : {static_cast<const char*>(nullptr), ""})
    {
        EXPECT_EQ(nullptr, thr_drl_load(name));
        EXPECT_EQ("Can't load a module without a proper name: Invalid argument", thr_drl_get_error());
        EXPECT_EQ("", thr_drl_get_error_data());
    }
    EXPECT_EQ(nullptr, thr_drl_load(std::string("mod_sample\0x", 12)));
    EXPECT_EQ("Invalid argument", thr_drl_get_system_error());
}

TEST_F(base_thr_drl, overlong_name_fails)
{
    EXPECT_EQ(nullptr, thr_drl_load(std::string(100000, 'x')));
    EXPECT_EQ(std::string(100000, 'x'), thr_drl_get_error_data());
}

TEST_F(base_thr_drl, file_that_is_no_library_fails_with_the_loader_s_text)
{
    TEST_ENVIRONMENT::write_file("modules/mod_noise.so", "this is no library");
    TEST_ENVIRONMENT::write_file("modules/mod_nothing.so", "");
    const std::string content = TEST_ENVIRONMENT::read_file(get_sample_file());
    TEST_ENVIRONMENT::write_file("modules/mod_short.so", content.substr(0, 100));
    const SCOPED_ENVIRONMENT_VARIABLE path("NORVANE_MODULE_PATH", TEST_ENVIRONMENT::get_module_folder().c_str());
    for (const std::string name : {"mod_noise", "mod_nothing", "mod_short"})
    {
        EXPECT_EQ(nullptr, thr_drl_load(name)) << name;
        EXPECT_NE(std::string::npos, thr_drl_get_system_error().find(name + ".so")) << thr_drl_get_system_error();
        EXPECT_EQ("Can't load module " + name + ": " + thr_drl_get_system_error(), thr_drl_get_error());
    }
}

TEST_F(base_thr_drl, folder_that_bears_the_name_is_passed_over)
{
    std::filesystem::create_directories(TEST_ENVIRONMENT::get_module_folder() + "/mod_sample.so");
    const std::string folders = TEST_ENVIRONMENT::get_module_folder() + ":" TOLV_TEST_MODULES;
    const SCOPED_ENVIRONMENT_VARIABLE path("NORVANE_MODULE_PATH", folders.c_str());
    EXPECT_EQ(get_sample_file(), get_file(thr_drl_load("mod_sample")));
}

TEST_F(base_thr_drl, broken_module_is_not_replaced_by_a_later_one)
{
    TEST_ENVIRONMENT::write_file("modules/mod_sample.so", "noise");
    const std::string folders = TEST_ENVIRONMENT::get_module_folder() + ":" TOLV_TEST_MODULES;
    const SCOPED_ENVIRONMENT_VARIABLE path("NORVANE_MODULE_PATH", folders.c_str());
    EXPECT_EQ(nullptr, thr_drl_load("mod_sample"));
}

TEST_F(base_thr_drl, module_that_lacks_a_symbol_fails_when_it_is_loaded)
{
    EXPECT_EQ(nullptr, thr_drl_load("mod_incomplete"));
    EXPECT_EQ("mod_incomplete", thr_drl_get_error_data());
    EXPECT_NE(std::string::npos, thr_drl_get_system_error().find("mod_incomplete_missing_part"))
        << thr_drl_get_system_error();
}

TEST_F(base_thr_drl, missing_function_gives_its_name)
{
    THR_DRL_HANDLE handle = thr_drl_load("mod_sample");
    EXPECT_EQ(nullptr, thr_drl_find_function(handle, "mod_sample_nothing"));
    EXPECT_EQ("mod_sample_nothing", thr_drl_get_error_data());
    EXPECT_EQ("Can't find function mod_sample_nothing: " + thr_drl_get_system_error(), thr_drl_get_error());
    EXPECT_NE(std::string::npos, thr_drl_get_system_error().find("undefined symbol"));
}

TEST_F(base_thr_drl, empty_function_name_or_foreign_handle_finds_nothing)
{
    THR_DRL_HANDLE handle = thr_drl_load("mod_sample");
    int foreign = 0;
    EXPECT_EQ(nullptr, thr_drl_find_function(handle, ""));
    EXPECT_EQ(nullptr, thr_drl_find_function(handle, static_cast<const char*>(nullptr)));
    EXPECT_EQ(nullptr, thr_drl_find_function(nullptr, FUNCTION));
    EXPECT_EQ(nullptr, thr_drl_find_function(&foreign, FUNCTION));
    EXPECT_EQ("Invalid argument", thr_drl_get_system_error());
}

TEST_F(base_thr_drl, module_stays_until_each_load_has_its_unload)
{
    THR_DRL_HANDLE handle = thr_drl_load("mod_sample");
    ASSERT_NE(nullptr, handle);
    EXPECT_EQ(handle, thr_drl_load("mod_sample"));
    EXPECT_EQ(1, count_call(handle));
    thr_drl_unload(handle);
    EXPECT_EQ(2, count_call(handle));
    thr_drl_unload(handle);
    EXPECT_FALSE(is_in_memory(get_sample_file()));

    THR_DRL_HANDLE again = thr_drl_load("mod_sample");
    EXPECT_EQ(1, count_call(again));
}

TEST_F(base_thr_drl, unload_too_many_is_harmless)
{
    THR_DRL_HANDLE handle = thr_drl_load("mod_sample");
    thr_drl_unload(handle);
    thr_drl_unload(handle);
    EXPECT_EQ("Can't unload a module that is not loaded: Invalid argument", thr_drl_get_error());
    EXPECT_EQ(nullptr, thr_drl_find_function(handle, FUNCTION));
    thr_drl_unload(nullptr);
    EXPECT_NE(nullptr, thr_drl_load("mod_sample"));
}

TEST_F(base_thr_drl, symbols_of_a_module_stay_its_own)
{
    ASSERT_NE(nullptr, thr_drl_load("mod_sample"));
    EXPECT_EQ(nullptr, dlsym(RTLD_DEFAULT, FUNCTION));
}

TEST_F(base_thr_drl, error_texts_belong_to_their_thread)
{
    EXPECT_EQ("", thr_drl_get_error());
    EXPECT_EQ(nullptr, thr_drl_load("mod_mine"));
    std::thread(
        []
        {
            EXPECT_EQ("", thr_drl_get_error());
            EXPECT_EQ("", thr_drl_get_error_data());
            EXPECT_EQ("", thr_drl_get_system_error());
            EXPECT_EQ(nullptr, thr_drl_load("mod_theirs"));
            EXPECT_EQ("mod_theirs", thr_drl_get_error_data());
        })
        .join();
    EXPECT_EQ("mod_mine", thr_drl_get_error_data());
}

TEST_F(base_thr_drl, success_keeps_the_last_error)
{
    EXPECT_EQ(nullptr, thr_drl_load("mod_nowhere"));
    EXPECT_NE(nullptr, thr_drl_load("mod_sample"));
    EXPECT_EQ("mod_nowhere", thr_drl_get_error_data());
}

TEST_F(base_thr_drl, threads_load_and_unload_at_once)
{
    const auto body = []
    {
        for (int i = 0; i < 500; ++i)
        {
            THR_DRL_HANDLE handle = thr_drl_load("mod_sample");
            ASSERT_NE(nullptr, thr_drl_find_function(handle, FUNCTION));
            thr_drl_unload(handle);
        }
    };
    std::thread first(body);
    std::thread second(body);
    first.join();
    second.join();
    EXPECT_FALSE(is_in_memory(get_sample_file()));
}
