#include "cfgq_registry.h"
#include "test_environment.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QVariant>
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <set>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
const char FIRST_LINE[] = "# Norvane user settings. The last line tells that the file is whole: keep it.\n";
const char LAST_LINE[] = "# End of the user settings.\n";

CFGQ_REGISTRY_KEY gui_key()
{
    return CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_GUI);
}

std::string store_path()
{
    return TEST_ENVIRONMENT::get_registry_file();
}

void write_store(const std::string& content)
{
    TEST_ENVIRONMENT::write_file("registry.ini", content);
}

/// Names of the files that were set aside.
QStringList damaged_files()
{
    const QFileInfo store(QString::fromStdString(store_path()));
    return QDir(store.path())
        .entryList({store.fileName() + ".damaged-*"}, QDir::AllEntries | QDir::Hidden | QDir::System);
}

/// A store of several folders and kinds of values, as the registry writes it.
std::string make_whole_store()
{
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_TRUE(key.set_value("Color_version", 11));
    EXPECT_TRUE(key.set_value("Gr\u00f6\u00dfe", QStringList{"a", "b"}));
    EXPECT_TRUE(CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_TREE_COLUMNS, "tree").set_value("Name", "text"));
    CFGQ_REGISTRY::close();
    return TEST_ENVIRONMENT::read_file(store_path());
}

/// The superuser may read and write everything: for a scope, be somebody else.
class ORDINARY_USER
{
public:
    ORDINARY_USER() : m_is_changed(::geteuid() == 0)
    {
        EXPECT_EQ(0, m_is_changed ? ::seteuid(NOBODY) : 0);
    }
    ~ORDINARY_USER()
    {
        EXPECT_EQ(0, m_is_changed ? ::seteuid(0) : 0);
    }
    ORDINARY_USER(const ORDINARY_USER&) = delete;
    ORDINARY_USER& operator=(const ORDINARY_USER&) = delete;

    /// Gives a file to that user.
    static void give(const std::string& path)
    {
        EXPECT_EQ(0, ::geteuid() == 0 ? ::chown(path.c_str(), NOBODY, NOBODY) : 0);
    }

private:
    static constexpr unsigned int NOBODY = 65534;
    bool m_is_changed;
};

/// Sets an environment with the store in a folder that takes no new files.
class LOCKED_FOLDER
{
public:
    explicit LOCKED_FOLDER(const std::string& content)
        : m_path(TEST_ENVIRONMENT::write_file("locked/registry.ini", content)),
          m_folder(TEST_ENVIRONMENT::get_folder() + "/locked"), m_variable("NORVANE_REGISTRY_FILE", m_path.c_str())
    {
        EXPECT_EQ(0, ::chmod(m_folder.c_str(), 0555));
        EXPECT_EQ(0, ::chmod(TEST_ENVIRONMENT::get_folder().c_str(), 0755));
    }
    ~LOCKED_FOLDER()
    {
        EXPECT_EQ(0, ::chmod(m_folder.c_str(), 0755));
    }
    LOCKED_FOLDER(const LOCKED_FOLDER&) = delete;
    LOCKED_FOLDER& operator=(const LOCKED_FOLDER&) = delete;

    const std::string& get_store() const
    {
        return m_path;
    }

private:
    std::string m_path;
    std::string m_folder;
    SCOPED_ENVIRONMENT_VARIABLE m_variable;
};

/// The store comes up with its defaults, works, and the content lies in a file beside it.
void expect_set_aside(const std::string& content)
{
    CFGQ_REGISTRY::close();
    write_store(content);
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_FALSE(key.get_value("Color_version", nullptr));
    EXPECT_EQ(QStringList(), key.get_value_names());
    const std::string file = CFGQ_REGISTRY::get_set_aside_file().toStdString();
    EXPECT_EQ(store_path() + ".damaged-", file.substr(0, store_path().size() + 9));
    EXPECT_TRUE(QFileInfo(QString::fromStdString(file)).isFile());
    EXPECT_EQ(content, TEST_ENVIRONMENT::read_file(file));
    EXPECT_TRUE(key.set_value("new", 1));
    CFGQ_REGISTRY::close();
    EXPECT_TRUE(key.get_value("new", nullptr));
    EXPECT_EQ("", CFGQ_REGISTRY::get_set_aside_file().toStdString());
}
} // namespace

TEST(registry_damage, a_file_cut_at_any_byte_is_set_aside)
{
    const std::string whole = make_whole_store();
    ASSERT_LT(200u, whole.size());
    std::set<std::string> kept;
    for (size_t size = 0; size < whole.size(); ++size)
    {
        CFGQ_REGISTRY::close();
        write_store(whole.substr(0, size));
        ASSERT_FALSE(gui_key().get_value("Color_version", nullptr)) << size;
        const std::string file = CFGQ_REGISTRY::get_set_aside_file().toStdString();
        ASSERT_EQ(whole.substr(0, size), TEST_ENVIRONMENT::read_file(file)) << size;
        kept.insert(file);
    }
    EXPECT_EQ(whole.size(), kept.size());
    EXPECT_EQ(int(whole.size()), damaged_files().size());
}

TEST(registry_damage, a_whole_file_is_left_alone)
{
    const std::string whole = make_whole_store();
    EXPECT_TRUE(gui_key().get_value("Color_version", nullptr));
    EXPECT_EQ("", CFGQ_REGISTRY::get_set_aside_file().toStdString());
    EXPECT_EQ(QStringList(), damaged_files());
    EXPECT_EQ(whole, TEST_ENVIRONMENT::read_file(store_path()));
}

TEST(registry_damage, an_empty_file_is_set_aside)
{
    expect_set_aside("");
}

TEST(registry_damage, a_foreign_file_is_set_aside)
{
    expect_set_aside("[General]\nColor_version=11\n");
    expect_set_aside("[52]\nColor_version=@int(11)\n");
    expect_set_aside("{\"52\": {\"Color_version\": 11}}\n");
    expect_set_aside("\n");
}

TEST(registry_damage, a_file_with_a_line_that_is_none_of_ours_is_set_aside)
{
    const std::string first = FIRST_LINE;
    const std::string last = LAST_LINE;
    for (const char* middle :
         {"noise\n", "Color_version=@int(11)\n", "[52\n", "[]\n", "[52//x]\n", "[52]\n%4=1\n", "[52]\n%u12=1\n",
          "[52]\n=1\n", "[52%]\n", "[52]\nx=\x01\n", "[52]\nx=1\r\n", "[52]\nx=\xff\n", "[52]\nx=\xc3\n", "[52]\nx=1"})
        expect_set_aside(std::string(first).append(middle).append(last));
    expect_set_aside(first + std::string("[52]\nx=\0\n", 9) + last);
    expect_set_aside(first + last + last.substr(0, last.size() - 1));
    expect_set_aside("\xef\xbb\xbf" + first + last);
}

TEST(registry_damage, a_hole_in_the_middle_is_noticed)
{
    std::string whole = make_whole_store();
    whole.replace(whole.size() / 2, 16, std::string(16, '\0'));
    expect_set_aside(whole);
}

TEST(registry_damage, noise_is_set_aside)
{
    std::mt19937 random(7);
    for (const size_t size : {1, 100, 4096, 70000})
    {
        std::string noise;
        for (size_t i = 0; i < size; ++i)
            noise += char(random());
        expect_set_aside(noise);
        expect_set_aside(FIRST_LINE + noise + LAST_LINE);
    }
}

TEST(registry_damage, fifty_megabytes_of_noise_are_set_aside)
{
    std::mt19937 random(7);
    std::string noise(std::size_t{50} * 1024 * 1024, ' ');
    for (size_t i = 0; i < noise.size(); i += 4)
    {
        const auto word = random();
        memcpy(&noise[i], &word, 4);
    }
    expect_set_aside(noise);
    expect_set_aside(FIRST_LINE + noise);
}

TEST(registry_damage, a_directory_in_its_place_is_set_aside)
{
    const QString path = QString::fromStdString(store_path());
    ASSERT_TRUE(QDir().mkpath(path + "/inner"));
    EXPECT_FALSE(gui_key().get_value("x", nullptr));
    EXPECT_TRUE(QFileInfo(CFGQ_REGISTRY::get_set_aside_file() + "/inner").isDir());
    EXPECT_TRUE(gui_key().set_value("x", 1));
    EXPECT_TRUE(QFileInfo(path).isFile());
}

TEST(registry_damage, a_pipe_in_its_place_is_set_aside_without_waiting_for_it)
{
    ASSERT_EQ(0, ::mkfifo(store_path().c_str(), 0600));
    EXPECT_FALSE(gui_key().get_value("x", nullptr));
    EXPECT_TRUE(gui_key().set_value("x", 1));
    EXPECT_EQ(1, damaged_files().size());
    EXPECT_TRUE(QFileInfo(QString::fromStdString(store_path())).isFile());
}

TEST(registry_damage, an_unreadable_file_is_set_aside)
{
    make_whole_store();
    ASSERT_EQ(0, ::chmod(store_path().c_str(), 0));
    for (const std::string& path : {TEST_ENVIRONMENT::get_folder(), store_path(), store_path() + ".lockfile"})
        ORDINARY_USER::give(path);
    const ORDINARY_USER user;
    EXPECT_FALSE(gui_key().get_value("Color_version", nullptr));
    EXPECT_EQ(1, damaged_files().size());
    EXPECT_TRUE(gui_key().set_value("x", 1));
    CFGQ_REGISTRY::close();
    EXPECT_TRUE(gui_key().get_value("x", nullptr));
}

TEST(registry_damage, a_file_that_cannot_be_set_aside_still_gives_defaults)
{
    const LOCKED_FOLDER folder("noise");
    {
        const ORDINARY_USER user;
        CFGQ_REGISTRY_KEY key = gui_key();
        EXPECT_FALSE(key.get_value("x", nullptr));
        EXPECT_FALSE(key.set_value("x", 1));
        EXPECT_FALSE(CFGQ_REGISTRY::flush());
        EXPECT_TRUE(key.get_value("x", nullptr));
        EXPECT_EQ("", CFGQ_REGISTRY::get_set_aside_file().toStdString());
        CFGQ_REGISTRY::close();
    }
    EXPECT_EQ("noise", TEST_ENVIRONMENT::read_file(folder.get_store()));
}

TEST(registry_damage, a_store_in_a_folder_that_takes_no_files_is_read)
{
    const std::string content = std::string(FIRST_LINE) + "[52]\nx=@int(4)\n" + LAST_LINE;
    const LOCKED_FOLDER folder(content);
    {
        const ORDINARY_USER user;
        CFGQ_REGISTRY_KEY key = gui_key();
        QVariant value;
        EXPECT_TRUE(key.get_value("x", &value));
        EXPECT_EQ(QVariant(4), value);
        EXPECT_TRUE(CFGQ_REGISTRY::flush());
        EXPECT_FALSE(key.set_value("x", 5));
        EXPECT_TRUE(key.get_value("x", &value));
        EXPECT_EQ(QVariant(5), value);
        CFGQ_REGISTRY::close();
    }
    EXPECT_EQ(content, TEST_ENVIRONMENT::read_file(folder.get_store()));
}

TEST(registry_damage, a_store_that_cannot_exist_keeps_its_values_in_the_process)
{
    TEST_ENVIRONMENT::write_file("file", "");
    for (const std::string& path :
         {TEST_ENVIRONMENT::get_folder() + "/file/registry.ini", std::string("/proc/self/nothing/registry.ini")})
    {
        const SCOPED_ENVIRONMENT_VARIABLE file("NORVANE_REGISTRY_FILE", path.c_str());
        CFGQ_REGISTRY_KEY key = gui_key();
        EXPECT_FALSE(key.get_value("x", nullptr));
        EXPECT_FALSE(key.set_value("x", 1));
        EXPECT_FALSE(key.set_value("y", 2));
        EXPECT_FALSE(CFGQ_REGISTRY::flush());
        EXPECT_FALSE(key.remove("y"));
        QVariant value;
        EXPECT_TRUE(key.get_value("x", &value));
        EXPECT_EQ(QVariant(1), value);
        EXPECT_EQ(QStringList{"x"}, key.get_value_names());
        CFGQ_REGISTRY::close();
        EXPECT_FALSE(key.get_value("x", nullptr));
        CFGQ_REGISTRY::close();
    }
}

TEST(registry_damage, values_that_could_not_be_written_are_written_when_it_is_possible)
{
    const std::string blocker = TEST_ENVIRONMENT::write_file("place", "");
    const SCOPED_ENVIRONMENT_VARIABLE file("NORVANE_REGISTRY_FILE", (blocker + "/registry.ini").c_str());
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_FALSE(key.set_value("x", 1));
    ASSERT_EQ(0, ::unlink(blocker.c_str()));
    EXPECT_TRUE(CFGQ_REGISTRY::flush());
    CFGQ_REGISTRY::close();
    EXPECT_TRUE(key.get_value("x", nullptr));
    CFGQ_REGISTRY::close();
}

TEST(registry_damage, a_store_that_is_damaged_while_the_process_runs_gets_its_values_again)
{
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_TRUE(key.set_value("old", 1));
    write_store("noise");
    EXPECT_TRUE(key.set_value("new", 2));
    CFGQ_REGISTRY::close();
    EXPECT_EQ((QStringList{"new", "old"}), key.get_value_names());
    const QStringList files = damaged_files();
    ASSERT_EQ(1, files.size());
    EXPECT_EQ("noise", TEST_ENVIRONMENT::read_file(TEST_ENVIRONMENT::get_folder() + "/" + files.front().toStdString()));
}

TEST(registry_damage, a_store_that_is_deleted_while_the_process_runs_is_empty)
{
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_TRUE(key.set_value("old", 1));
    ASSERT_EQ(0, ::unlink(store_path().c_str()));
    EXPECT_TRUE(key.set_value("new", 2));
    EXPECT_EQ(QStringList{"new"}, key.get_value_names());
}

TEST(registry_damage, locks_left_by_a_dead_process_hold_nobody_up)
{
    make_whole_store();
    TEST_ENVIRONMENT::write_file("registry.ini.lock", "1\nother\nmachine\n");
    EXPECT_TRUE(gui_key().set_value("x", 1));
    CFGQ_REGISTRY::close();
    EXPECT_TRUE(gui_key().get_value("x", nullptr));
    EXPECT_TRUE(gui_key().get_value("Color_version", nullptr));
}

TEST(registry_damage, a_journal_of_a_dead_process_is_brought_in)
{
    make_whole_store();
    const std::string journal = TEST_ENVIRONMENT::write_file(
        "registry.ini.journal-1-1", "+52/=kept\t@int(7)\n-52/=Color_version\n+52/=Gr%u00F6e\tx\n+52/=torn\t@int(");
    CFGQ_REGISTRY_KEY key = gui_key();
    QVariant value;
    EXPECT_TRUE(key.get_value("kept", &value));
    EXPECT_EQ(QVariant(7), value);
    EXPECT_FALSE(key.get_value("Color_version", nullptr));
    EXPECT_TRUE(key.get_value("Gr\u00f6e", nullptr));
    EXPECT_FALSE(key.get_value("torn", nullptr));
    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(journal)));
    CFGQ_REGISTRY::close();
    EXPECT_TRUE(key.get_value("kept", nullptr));
    EXPECT_EQ(QStringList(), damaged_files());
}

TEST(registry_damage, a_damaged_journal_gives_what_it_has_and_is_set_aside)
{
    const std::string content = "+52/=kept\t@int(7)\nnoise\n+noise\n-52/=a\tb\n+52/=c\n+=\tx\n\xff\n+52/=last\t1\n";
    const std::string journal = TEST_ENVIRONMENT::write_file("registry.ini.journal-1-1", content);
    EXPECT_EQ((QStringList{"kept", "last"}), gui_key().get_value_names());
    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(journal)));
    const QStringList kept = QDir(QString::fromStdString(TEST_ENVIRONMENT::get_folder())).entryList({"*.damaged-*"});
    ASSERT_EQ(1, kept.size());
    EXPECT_EQ(content, TEST_ENVIRONMENT::read_file(TEST_ENVIRONMENT::get_folder() + "/" + kept[0].toStdString()));
    CFGQ_REGISTRY::close();
    EXPECT_EQ((QStringList{"kept", "last"}), gui_key().get_value_names());
}

TEST(registry_migration, the_layout_version_is_1_and_stands_in_the_store)
{
    EXPECT_EQ(1, CFGQ_REGISTRY::get_layout_version());
    EXPECT_NE(std::string::npos, make_whole_store().find("[store]\nlayout=@int(1)\n"));
}

TEST(registry_migration, the_flat_layout_is_taken_over_once)
{
    const std::string old = "[General]\nloose=1\n[52]\nColor_version=11\nTOLV_TEXT_COLOR=#102030\nlist=a, b\n"
                            "[21]\ntree\\inner\\Name_column_size=140\n[other]\nx=1\n[59]\nName with blank=true\n"
                            "Gr%F6%DFe=\"\xc3\xbc\"\n";
    const std::string file = TEST_ENVIRONMENT::write_file("registry.conf", old);
    CFGQ_REGISTRY::migrate_registry_settings();
    CFGQ_REGISTRY::close();
    CFGQ_REGISTRY_KEY key = gui_key();
    QVariant value;
    EXPECT_TRUE(key.get_value("Color_version", &value));
    EXPECT_EQ(11, value.toInt());
    EXPECT_TRUE(key.get_value("TOLV_TEXT_COLOR", &value));
    EXPECT_EQ("#102030", value.toString().toStdString());
    EXPECT_TRUE(key.get_value("list", &value));
    EXPECT_EQ((QStringList{"a", "b"}), value.toStringList());
    const CFGQ_REGISTRY_KEY inner(CFGQ_REGISTRY_KEY::SUB_KEY_TREE_COLUMNS, "tree/inner");
    EXPECT_TRUE(inner.get_value("Name_column_size", &value));
    EXPECT_EQ(140, value.toInt());
    const CFGQ_REGISTRY_KEY bars(CFGQ_REGISTRY_KEY::SUB_KEY_TOOL_BARS);
    EXPECT_TRUE(bars.get_value("Name with blank", &value));
    EXPECT_TRUE(value.toBool());
    EXPECT_TRUE(bars.get_value(QString::fromUtf8("Gr\xc3\xb6\xc3\x9f"
                                                 "e"),
                               &value));
    EXPECT_EQ(QString::fromUtf8("\xc3\xbc"), value.toString());
    EXPECT_EQ(old, TEST_ENVIRONMENT::read_file(file));

    EXPECT_TRUE(key.remove("Color_version"));
    CFGQ_REGISTRY::close();
    CFGQ_REGISTRY::migrate_registry_settings();
    EXPECT_FALSE(key.get_value("Color_version", nullptr));
}

TEST(registry_migration, a_store_of_the_present_layout_is_left_untouched)
{
    const std::string whole = make_whole_store();
    TEST_ENVIRONMENT::write_file("registry.conf", "[52]\nold=1\n");
    CFGQ_REGISTRY::migrate_registry_settings();
    CFGQ_REGISTRY::close();
    EXPECT_FALSE(gui_key().get_value("old", nullptr));
    EXPECT_EQ(whole, TEST_ENVIRONMENT::read_file(store_path()));
}

TEST(registry_migration, a_store_of_a_newer_layout_is_left_untouched_and_read)
{
    const std::string newer =
        std::string(FIRST_LINE) + "[52]\nx=@int(4)\n[store]\nlayout=@int(7)\n[store/more]\ny=z\n" + LAST_LINE;
    write_store(newer);
    TEST_ENVIRONMENT::write_file("registry.conf", "[52]\nold=1\n");
    CFGQ_REGISTRY::migrate_registry_settings();
    EXPECT_TRUE(gui_key().get_value("x", nullptr));
    EXPECT_FALSE(gui_key().get_value("old", nullptr));
    CFGQ_REGISTRY::close();
    EXPECT_EQ(newer, TEST_ENVIRONMENT::read_file(store_path()));
    EXPECT_TRUE(gui_key().set_value("x", 5));
    CFGQ_REGISTRY::close();
    EXPECT_EQ(std::string(FIRST_LINE) + "[52]\nx=@int(5)\n[store]\nlayout=@int(7)\n[store/more]\ny=z\n" + LAST_LINE,
              TEST_ENVIRONMENT::read_file(store_path()));
}

TEST(registry_migration, values_of_the_store_win_over_the_flat_layout)
{
    write_store(std::string(FIRST_LINE) + "[52]\nx=new\n" + LAST_LINE);
    TEST_ENVIRONMENT::write_file("registry.conf", "[52]\nx=old\ny=old\n");
    CFGQ_REGISTRY::migrate_registry_settings();
    QVariant value;
    EXPECT_TRUE(gui_key().get_value("x", &value));
    EXPECT_EQ("new", value.toString().toStdString());
    EXPECT_TRUE(gui_key().get_value("y", &value));
    EXPECT_EQ("old", value.toString().toStdString());
}

TEST(registry_migration, defaults_after_damage_are_not_filled_from_the_flat_layout)
{
    TEST_ENVIRONMENT::write_file("registry.conf", "[52]\nold=1\n");
    write_store("noise");
    CFGQ_REGISTRY::migrate_registry_settings();
    EXPECT_FALSE(gui_key().get_value("old", nullptr));
    CFGQ_REGISTRY::close();
    CFGQ_REGISTRY::migrate_registry_settings();
    EXPECT_FALSE(gui_key().get_value("old", nullptr));
}

TEST(registry_migration, an_old_file_of_noise_or_of_another_kind_is_harmless)
{
    std::mt19937 random(3);
    std::string noise;
    for (int i = 0; i < 100000; ++i)
        noise += char(random());
    TEST_ENVIRONMENT::write_file("registry.conf", noise);
    CFGQ_REGISTRY::migrate_registry_settings();
    EXPECT_TRUE(gui_key().set_value("x", 1));
    CFGQ_REGISTRY::close();
    ASSERT_EQ(0, ::unlink((TEST_ENVIRONMENT::get_folder() + "/registry.conf").c_str()));
    ASSERT_EQ(0, ::unlink(store_path().c_str()));
    ASSERT_EQ(0, ::mkfifo((TEST_ENVIRONMENT::get_folder() + "/registry.conf").c_str(), 0600));
    CFGQ_REGISTRY::migrate_registry_settings();
    EXPECT_TRUE(gui_key().set_value("x", 1));
}
