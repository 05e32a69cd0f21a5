#include "fio.h"
#include "test_environment.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
struct PARTS
{
    const char* path;
    const char* directory;
    const char* filename;
    const char* base;
    const char* extension;
};

std::string flat(const std::string& text)
{
    FIO_PATH path(text);
    path.flatten();
    return path.path();
}

std::string gone_to(const std::string& text, const std::string& directory)
{
    FIO_PATH path(text);
    path.cd(directory);
    return path.path();
}
} // namespace

TEST(fio_path, parts_of_a_path)
{
    const PARTS rows[] = {
        {"", "", "", "", ""},
        {"a.v", "", "a.v", "a", ".v"},
        {"/a.v", "/", "a.v", "a", ".v"},
        {"/a", "/", "a", "a", ""},
        {"/", "/", "", "", ""},
        {"//", "/", "", "", ""},
        {"//a", "/", "a", "a", ""},
        {"dir/", "dir", "", "", ""},
        {"dir//", "dir", "", "", ""},
        {"/x.d/y/a.tar.gz", "/x.d/y", "a.tar.gz", "a.tar", ".gz"},
        {"x.d/a", "x.d", "a", "a", ""},
        {".hidden", "", ".hidden", ".hidden", ""},
        {".hidden.v", "", ".hidden.v", ".hidden", ".v"},
        {"a.", "", "a.", "a", "."},
        {"a..", "", "a..", "a.", "."},
        {"...", "", "...", "..", "."},
        {".", ".", "", "", ""},
        {"..", "..", "", "", ""},
        {"a/..", "a/..", "", "", ""},
        {"a/.", "a/.", "", "", ""},
        {"../a.v", "..", "a.v", "a", ".v"},
        {" ", "", " ", " ", ""},
        {"\xff\xfe/\x80.\xc3", "\xff\xfe", "\x80.\xc3", "\x80", ".\xc3"},
    };
    for (const PARTS& row : rows)
    {
        const FIO_PATH path(row.path);
        EXPECT_EQ(row.directory, path.directory()) << row.path;
        EXPECT_EQ(row.filename, path.filename()) << row.path;
        EXPECT_EQ(row.base, path.base()) << row.path;
        EXPECT_EQ(row.extension, path.extension()) << row.path;
        EXPECT_EQ(*row.directory != '\0', path.has_directory()) << row.path;
        EXPECT_EQ(*row.filename != '\0', path.has_filename()) << row.path;
        EXPECT_EQ(*row.extension != '\0', path.has_extension()) << row.path;
        EXPECT_EQ(*row.path == '\0', path.is_empty()) << row.path;
        EXPECT_EQ(path.path(), FIO_PATH(path.path()).path()) << row.path;
    }
}

TEST(fio_path, the_whole_path_stands_as_it_was_given)
{
    for (const char* text : {"", "a.v", "/a.v", "/", "dir/", "x/../y/a", "./a", "a//b/c", "../"})
        EXPECT_EQ(text, FIO_PATH(text).path());
    EXPECT_EQ("../", FIO_PATH("..").path());
    EXPECT_EQ("/", FIO_PATH("///").path());
    EXPECT_EQ("", FIO_PATH().path());
    EXPECT_TRUE(FIO_PATH().is_empty());
}

TEST(fio_path, the_file_name_is_replaced_and_cleared)
{
    FIO_PATH path("/x/a.v");
    path.set_filename("b.sv");
    EXPECT_EQ("/x/b.sv", path.path());
    path.set_filename("/etc/c.vhd");
    EXPECT_EQ("/x/c.vhd", path.path());
    path.set_filename("..");
    EXPECT_EQ("/x/", path.path());
    path.set_filename("d");
    path.clear_filename();
    EXPECT_EQ("/x/", path.path());
    EXPECT_FALSE(path.has_filename());
    path.set_filename("e");
    path.set_filename("");
    EXPECT_EQ("/x/", path.path());
}

TEST(fio_path, cd_goes_down_up_and_elsewhere)
{
    EXPECT_EQ("/x/y/a.v", gone_to("/x/a.v", "y"));
    EXPECT_EQ("y/a.v", gone_to("a.v", "y/"));
    EXPECT_EQ("/x/../a.v", gone_to("/x/a.v", ".."));
    EXPECT_EQ("/z/a.v", gone_to("/x/a.v", "/z"));
    EXPECT_EQ("/a.v", gone_to("/x/a.v", "//"));
    EXPECT_EQ("/x/a.v", gone_to("/x/a.v", ""));
    EXPECT_EQ("y/", gone_to("", "y"));
}

TEST(fio_path, a_directory_given_as_a_file_is_folded_into_the_directory)
{
    FIO_PATH path("/designs/uart/work");
    ASSERT_TRUE(path.has_filename());
    path.cd(path.filename());
    path.clear_filename();
    EXPECT_EQ("/designs/uart/work", path.fullpath());
    path.cd("..");
    path.flatten();
    EXPECT_EQ("/designs/uart", path.fullpath());
    EXPECT_EQ("/designs/uart", path.directory());
}

TEST(fio_path, flattening_goes_by_text_alone)
{
    EXPECT_EQ("/a/c/f", flat("/a/b/../c/./f"));
    EXPECT_EQ("/f", flat("/../../f"));
    EXPECT_EQ("../../f", flat("a/../../../f"));
    EXPECT_EQ("f", flat("./f"));
    EXPECT_EQ("f", flat("a/../f"));
    EXPECT_EQ("a/b/f", flat("a//b///f"));
    EXPECT_EQ("./", flat("a/.."));
    EXPECT_EQ("./", flat("."));
    EXPECT_EQ("../", flat(".."));
    EXPECT_EQ("/", flat("/a/.."));
    EXPECT_EQ("", flat(""));
    EXPECT_EQ("/.../f", flat("/.../f"));
}

TEST(fio_path, a_full_path_is_absolute_and_flat)
{
    const std::string current = FIO_FILE_SYSTEM::get_current_directory();
    ASSERT_EQ('/', current.at(0));
    EXPECT_EQ("", FIO_PATH("").fullpath());
    EXPECT_EQ("/", FIO_PATH("//").fullpath());
    EXPECT_EQ("/", FIO_PATH("/..").fullpath());
    EXPECT_EQ("/a/b", FIO_PATH("/a/b/").fullpath());
    EXPECT_EQ("/a/b", FIO_PATH("/a/x/../b").fullpath());
    EXPECT_EQ(current + "/a.v", FIO_PATH("a.v").fullpath());
    EXPECT_EQ(current + "/a", FIO_PATH("a/").fullpath());
    EXPECT_EQ(current, FIO_PATH(".").fullpath());
    EXPECT_EQ(current, FIO_PATH("a/..").fullpath());
    EXPECT_EQ(std::filesystem::path(current).parent_path().string(), FIO_PATH("..").fullpath());
}

TEST(fio_path, existence_is_asked_of_the_disk)
{
    const std::string file = TEST_ENVIRONMENT::write_file("files/a.v", "module a; endmodule\n");
    const std::string folder = TEST_ENVIRONMENT::get_folder() + "/files";
    EXPECT_TRUE(FIO_PATH(file).exists());
    EXPECT_TRUE(FIO_PATH(folder).exists());
    EXPECT_TRUE(FIO_PATH(folder + "/").exists());
    EXPECT_FALSE(FIO_PATH(file + "/").exists());
    EXPECT_FALSE(FIO_PATH(file + "x").exists());
    EXPECT_FALSE(FIO_PATH("").exists());
    EXPECT_FALSE(FIO_PATH(file + std::string("\0x", 2)).exists());
    EXPECT_TRUE(FIO_FILE_SYSTEM::file_exists(file));
    EXPECT_FALSE(FIO_FILE_SYSTEM::file_exists(folder));
    EXPECT_FALSE(FIO_FILE_SYSTEM::directory_exists(file));
    EXPECT_TRUE(FIO_FILE_SYSTEM::directory_exists(folder));
    EXPECT_FALSE(FIO_FILE_SYSTEM::file_exists(""));
    EXPECT_FALSE(FIO_FILE_SYSTEM::directory_exists(""));
    EXPECT_FALSE(FIO_FILE_SYSTEM::file_exists(file + std::string("\0x", 2)));
    EXPECT_FALSE(FIO_FILE_SYSTEM::directory_exists(folder + std::string("\0x", 2)));
    EXPECT_TRUE(FIO_FILE_SYSTEM::is_writable(file));
    EXPECT_TRUE(FIO_FILE_SYSTEM::is_writable(folder));
    EXPECT_FALSE(FIO_FILE_SYSTEM::is_writable(file + "x"));
    EXPECT_FALSE(FIO_FILE_SYSTEM::is_writable(""));
    EXPECT_FALSE(FIO_FILE_SYSTEM::is_writable(file + std::string("\0x", 2)));
}

TEST(fio_path, a_file_that_may_not_be_written_is_not_writable)
{
    const std::string file = TEST_ENVIRONMENT::write_file("a.v", "");
    ASSERT_EQ(0, ::chmod(file.c_str(), 0444));
    ASSERT_EQ(0, ::chmod(TEST_ENVIRONMENT::get_folder().c_str(), 0755));
    const bool is_superuser = ::getuid() == 0;
    // The system asks for the real user, and the superuser may write everything.
    ASSERT_EQ(0, is_superuser ? ::setresuid(65534, 65534, 0) : 0);
    EXPECT_FALSE(FIO_FILE_SYSTEM::is_writable(file));
    EXPECT_TRUE(FIO_FILE_SYSTEM::file_exists(file));
    ASSERT_EQ(0, is_superuser ? ::setresuid(0, 0, 0) : 0);
}

TEST(fio_path, equal_paths_and_links_to_one_file_are_the_same)
{
    const std::string file = TEST_ENVIRONMENT::write_file("files/a.v", "");
    const std::string other = TEST_ENVIRONMENT::write_file("files/A.v", "");
    const std::string link = TEST_ENVIRONMENT::get_folder() + "/link";
    ASSERT_EQ(0, ::symlink("files", link.c_str()));
    EXPECT_TRUE(FIO_PATH(file).is_same(FIO_PATH(file)));
    EXPECT_TRUE(FIO_PATH(file).is_same(FIO_PATH(TEST_ENVIRONMENT::get_folder() + "/x/..//files/./a.v")));
    EXPECT_TRUE(FIO_PATH(file).is_same(FIO_PATH(link + "/a.v")));
    EXPECT_TRUE(FIO_PATH(link).is_same(FIO_PATH(TEST_ENVIRONMENT::get_folder() + "/files/")));
    EXPECT_FALSE(FIO_PATH(file).is_same(FIO_PATH(other)));
    EXPECT_TRUE(FIO_PATH("/not/there").is_same(FIO_PATH("/not/./there")));
    EXPECT_FALSE(FIO_PATH("/not/there").is_same(FIO_PATH("/not/There")));
    EXPECT_FALSE(FIO_PATH("").is_same(FIO_PATH(".")));
    EXPECT_TRUE(FIO_PATH("").is_same(FIO_PATH()));
}

TEST(fio_path, the_current_directory_is_changed_or_left)
{
    const std::string start = FIO_FILE_SYSTEM::get_current_directory();
    const std::string folder = TEST_ENVIRONMENT::get_folder() + "/work";
    const std::string file = TEST_ENVIRONMENT::write_file("work/inner/a.v", "");
    EXPECT_TRUE(FIO_FILE_SYSTEM::change_current_directory(folder));
    EXPECT_EQ(folder, FIO_FILE_SYSTEM::get_current_directory());
    EXPECT_TRUE(FIO_FILE_SYSTEM::change_current_directory("inner"));
    EXPECT_EQ(folder + "/inner", FIO_FILE_SYSTEM::get_current_directory());
    EXPECT_TRUE(FIO_FILE_SYSTEM::set_current_directory(FIO_PATH("..")));
    EXPECT_EQ(folder, FIO_FILE_SYSTEM::get_current_directory());
    EXPECT_TRUE(FIO_FILE_SYSTEM::set_current_directory(FIO_PATH(folder + "/inner")));
    EXPECT_EQ(folder + "/inner", FIO_FILE_SYSTEM::get_current_directory());
    for (const std::string& bad : {file, std::string(), folder + "/missing", folder + std::string("\0x", 2),
                                   std::string(10000, 'x'), "/" + std::string(5000, '\xff')})
    {
        EXPECT_FALSE(FIO_FILE_SYSTEM::change_current_directory(bad));
        EXPECT_FALSE(FIO_FILE_SYSTEM::set_current_directory(FIO_PATH(bad)));
        EXPECT_EQ(folder + "/inner", FIO_FILE_SYSTEM::get_current_directory());
    }
    EXPECT_TRUE(FIO_FILE_SYSTEM::change_current_directory(start));
}

TEST(fio_path, without_a_current_directory_a_relative_path_stays_relative)
{
    const std::string folder = TEST_ENVIRONMENT::get_folder() + "/gone";
    ASSERT_EQ(0, ::mkdir(folder.c_str(), 0700));
    ASSERT_TRUE(FIO_FILE_SYSTEM::change_current_directory(folder));
    ASSERT_EQ(0, ::rmdir(folder.c_str()));
    EXPECT_EQ("", FIO_FILE_SYSTEM::get_current_directory());
    EXPECT_EQ("a.v", FIO_PATH("./a.v").fullpath());
    EXPECT_EQ(".", FIO_PATH("a/..").fullpath());
    EXPECT_EQ("/a.v", FIO_PATH("/a.v").fullpath());
    EXPECT_TRUE(FIO_FILE_SYSTEM::change_current_directory("/"));
}

TEST(fio_path, hostile_texts_are_harmless)
{
    std::string many_up;
    std::string many_slashes(10000, '/');
    for (int i = 0; i < 5000; ++i)
        many_up += "../";
    for (const std::string& text :
         {std::string(10000, 'x'), std::string(10000, '.'), many_slashes, many_up, "/" + many_up + "x",
          std::string(10000, '\0'), std::string("a\0b/c\0.d", 8), std::string(10000, '\xff'), many_slashes + ".."})
    {
        FIO_PATH path(text);
        EXPECT_EQ(path.base() + path.extension(), path.filename());
        EXPECT_FALSE(path.is_empty());
        FIO_PATH flattened(path);
        flattened.flatten();
        const std::string once = flattened.path();
        flattened.flatten();
        EXPECT_EQ(once, flattened.path());
        EXPECT_EQ('/', path.fullpath().at(0));
        EXPECT_TRUE(path.is_same(path));
        path.cd(text);
        path.set_filename(text);
        path.clear_filename();
        EXPECT_FALSE(FIO_FILE_SYSTEM::file_exists(text));
    }
    EXPECT_EQ("/x", FIO_PATH("/" + many_up + "x").fullpath());
    EXPECT_EQ("/", FIO_PATH(many_slashes).fullpath());
    EXPECT_EQ(std::string("\0.d", 3), FIO_PATH(std::string("a\0b/\0.d", 7)).filename());
}
