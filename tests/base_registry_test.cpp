#include "cfgq_registry.h"

#include "test_environment.h"

#include <QDataStream>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QPoint>
#include <QSize>
#include <QVariant>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace
{
CFGQ_REGISTRY_KEY gui_key()
{
    return CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_GUI);
}

/// The value after the store was read anew from the disk; "(none)" where there is none.
QVariant read_back(const CFGQ_REGISTRY_KEY& key, const QString& name)
{
    CFGQ_REGISTRY::close();
    QVariant value;
    return key.get_value(name, &value) ? value : QVariant(QStringLiteral("(none)"));
}

void expect_kept(const QVariant& value)
{
    CFGQ_REGISTRY_KEY key = gui_key();
    ASSERT_TRUE(key.set_value("value", value)) << value.typeName();
    QVariant live;
    EXPECT_TRUE(key.get_value("value", &live));
    EXPECT_EQ(value, live) << value.typeName();
    const QVariant kept = read_back(key, "value");
    EXPECT_EQ(value.userType(), kept.userType()) << value.typeName();
    EXPECT_EQ(value, kept) << value.typeName();
    EXPECT_EQ(value.isNull(), kept.isNull()) << value.typeName();
}

std::string store_text()
{
    return TEST_ENVIRONMENT::read_file(TEST_ENVIRONMENT::get_registry_file());
}
} // namespace

struct UNSTREAMED
{
    int number = 0;
};
Q_DECLARE_METATYPE(UNSTREAMED)

TEST(registry, sub_keys_have_their_stored_numbers)
{
    EXPECT_EQ(2, CFGQ_REGISTRY_KEY::SUB_KEY_MDI_AREA);
    EXPECT_EQ(21, CFGQ_REGISTRY_KEY::SUB_KEY_TREE_COLUMNS);
    EXPECT_EQ(52, CFGQ_REGISTRY_KEY::SUB_KEY_GUI);
    EXPECT_EQ(59, CFGQ_REGISTRY_KEY::SUB_KEY_TOOL_BARS);
}

TEST(registry, names_of_shared_values_differ)
{
    EXPECT_STRNE("", CFGQ_TOLV_TOOLBAR_LARGE_ICONS);
    EXPECT_STRNE("", CFGQ_TOLV_SHOW_MDI_TABS);
    EXPECT_STRNE(CFGQ_TOLV_TOOLBAR_LARGE_ICONS, CFGQ_TOLV_SHOW_MDI_TABS);
}

TEST(registry, a_missing_value_leaves_the_variable_as_it_is)
{
    QVariant value = 7;
    EXPECT_FALSE(gui_key().get_value("missing", &value));
    EXPECT_EQ(QVariant(7), value);
    EXPECT_FALSE(gui_key().get_value("missing", nullptr));
}

TEST(registry, reading_creates_no_file)
{
    EXPECT_FALSE(gui_key().get_value("missing", nullptr));
    CFGQ_REGISTRY::migrate_registry_settings();
    CFGQ_REGISTRY::close();
    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(TEST_ENVIRONMENT::get_registry_file())));
}

TEST(registry, a_null_variable_asks_for_existence)
{
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_TRUE(key.set_value("name", 1));
    EXPECT_TRUE(key.get_value("name", nullptr));
}

TEST(registry, readable_values_are_kept_with_their_types)
{
    for (const QVariant& value :
         {QVariant(true), QVariant(false), QVariant(0), QVariant(-1), QVariant(std::numeric_limits<int>::min()),
          QVariant(std::numeric_limits<int>::max()), QVariant(0.1), QVariant(-1e300), QVariant(5e-324), QVariant(3.0),
          QVariant("text"), QVariant(""), QVariant(" blanks "), QVariant("@int(3)"), QVariant("@"), QVariant("100%"),
          QVariant("%41"), QVariant("a=b;c#d[e]\\"), QVariant("two\nlines\r\n\ttab")})
        expect_kept(value);
}

TEST(registry, values_of_other_types_are_kept_with_their_types)
{
    for (const QVariant& value :
         {QVariant(QStringList{"a", "", "b\nc"}), QVariant(QStringList()), QVariant(QByteArray("\0a\0\n\xff", 5)),
          QVariant(QByteArray()), QVariant(QString()), QVariant(12u), QVariant(-(qlonglong(1) << 40)),
          QVariant(QPoint(-3, 4)), QVariant(QSize(1, 2)), QVariant(QDateTime(QDate(2024, 2, 29), QTime(1, 2, 3))),
          QVariant(2.5f), QVariant(QVariantList{1, "x", QVariant()}), QVariant(QVariantMap{{"k", 1.5}}),
          QVariant(QVariant::Int)})
        expect_kept(value);
}

TEST(registry, doubles_without_a_number_are_kept)
{
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_TRUE(key.set_value("nan", std::numeric_limits<double>::quiet_NaN()));
    EXPECT_TRUE(key.set_value("infinite", -std::numeric_limits<double>::infinity()));
    EXPECT_TRUE(key.set_value("negative zero", -0.0));
    EXPECT_TRUE(std::isnan(read_back(key, "nan").toDouble()));
    EXPECT_EQ(-std::numeric_limits<double>::infinity(), read_back(key, "infinite").toDouble());
    EXPECT_TRUE(std::signbit(read_back(key, "negative zero").toDouble()));
}

TEST(registry, an_invalid_value_exists)
{
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_TRUE(key.set_value("invalid", QVariant()));
    CFGQ_REGISTRY::close();
    QVariant value = 1;
    EXPECT_TRUE(key.get_value("invalid", &value));
    EXPECT_FALSE(value.isValid());
}

TEST(registry, a_text_of_a_megabyte_is_kept)
{
    QString text;
    for (int i = 0; i < 1024 * 1024; ++i)
        text += QChar(1 + i % 0xd7ff);
    expect_kept(text);
    expect_kept(QByteArray(1024 * 1024, '\0'));
}

TEST(registry, texts_of_every_single_character_are_kept)
{
    CFGQ_REGISTRY_KEY key = gui_key();
    QString all;
    for (int code = 0; code <= 0xffff; ++code) // halves of surrogate pairs included
        all += QString(QChar(code)) + QLatin1Char('a');
    EXPECT_TRUE(key.set_value("all", all));
    EXPECT_TRUE(key.set_value(all, 1));
    EXPECT_EQ(all, read_back(key, "all").toString());
    EXPECT_EQ(QVariant(1), read_back(key, all));
    EXPECT_EQ((QStringList{all, "all"}), key.get_value_names());
}

TEST(registry, names_hold_any_characters)
{
    QStringList names = {"",
                         "/",
                         "//",
                         "a/b",
                         "/a",
                         "a/",
                         "\\",
                         "%",
                         "%25",
                         "=",
                         "[52]",
                         "]",
                         "#remark",
                         ";remark",
                         "@x",
                         "line\nend",
                         " blank ",
                         "Gr\u00f6\u00dfe \u4e2d\u6587",
                         QString(1500, 'n'),
                         "name",
                         "Name",
                         "NAME",
                         "General",
                         ".."};
    names << QString(QChar(0xd800)) << QString(QChar(0xfeff)) + "bom" << QString(QChar(0)) + "nul";
    CFGQ_REGISTRY_KEY key = gui_key();
    for (int i = 0; i < names.size(); ++i)
        EXPECT_TRUE(key.set_value(names[i], i)) << names[i].toStdString();
    CFGQ_REGISTRY::close();
    for (int i = 0; i < names.size(); ++i)
    {
        QVariant value;
        EXPECT_TRUE(key.get_value(names[i], &value)) << names[i].toStdString();
        EXPECT_EQ(QVariant(i), value) << names[i].toStdString();
    }
    names.sort();
    EXPECT_EQ(names, key.get_value_names());
}

TEST(registry, a_null_name_is_the_empty_name)
{
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_TRUE(key.set_value(QString(), 5));
    EXPECT_EQ(QVariant(5), read_back(key, ""));
}

TEST(registry, a_name_with_a_slash_is_no_folder)
{
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_TRUE(key.set_value("a/b", 1));
    EXPECT_TRUE(CFGQ_REGISTRY_KEY(key, "a").set_value("b", 2));
    EXPECT_EQ(QVariant(1), read_back(key, "a/b"));
    EXPECT_EQ(QVariant(2), read_back(CFGQ_REGISTRY_KEY(key, "a"), "b"));
}

TEST(registry, a_path_and_a_chain_of_child_keys_lead_to_the_same_folder)
{
    CFGQ_REGISTRY_KEY path(CFGQ_REGISTRY_KEY::SUB_KEY_TREE_COLUMNS, "outer/inner");
    const CFGQ_REGISTRY_KEY root(CFGQ_REGISTRY_KEY::SUB_KEY_TREE_COLUMNS);
    EXPECT_TRUE(path.set_value("x", 1));
    EXPECT_TRUE(CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY(root, "outer"), "inner").get_value("x", nullptr));
    EXPECT_TRUE(CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_TREE_COLUMNS, "//outer///inner/").get_value("x", nullptr));
    EXPECT_FALSE(CFGQ_REGISTRY_KEY(root, "outer/inner").get_value("x", nullptr));
    EXPECT_FALSE(gui_key().get_value("x", nullptr));
}

TEST(registry, empty_paths_and_names_lead_to_the_key_itself)
{
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_TRUE(key.set_value("x", 1));
    EXPECT_TRUE(CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_GUI, "").get_value("x", nullptr));
    EXPECT_TRUE(CFGQ_REGISTRY_KEY(key, nullptr).get_value("x", nullptr));
    EXPECT_TRUE(CFGQ_REGISTRY_KEY(key, "").get_value("x", nullptr));
}

TEST(registry, child_names_are_listed_sorted_and_once)
{
    CFGQ_REGISTRY_KEY key = gui_key();
    for (const char* name : {"zeta", "a/b", "alpha",
                             "Gr\xc3\xb6\xc3\x9f"
                             "e"})
    {
        EXPECT_TRUE(CFGQ_REGISTRY_KEY(key, name).set_value("x", 1));
        EXPECT_TRUE(CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY(key, name), "below").set_value("x", 1));
    }
    EXPECT_TRUE(CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY(key, "only"), "below").set_value("x", 1));
    EXPECT_FALSE(CFGQ_REGISTRY_KEY(key, "never written").get_value("x", nullptr));
    EXPECT_TRUE(key.set_value("value", 1));
    const QStringList expected = {QString::fromUtf8("Gr\xc3\xb6\xc3\x9f"
                                                    "e"),
                                  "a/b", "alpha", "only", "zeta"};
    EXPECT_EQ(expected, key.get_child_names());
    CFGQ_REGISTRY::close();
    EXPECT_EQ(expected, key.get_child_names());
    EXPECT_EQ(QStringList{"value"}, key.get_value_names());
    EXPECT_EQ(QStringList{"below"}, CFGQ_REGISTRY_KEY(key, "zeta").get_child_names());
}

TEST(registry, a_removed_value_is_gone_and_its_namesake_folder_stays)
{
    CFGQ_REGISTRY_KEY key = gui_key();
    CFGQ_REGISTRY_KEY child(key, "x");
    EXPECT_TRUE(key.set_value("x", 1));
    EXPECT_TRUE(child.set_value("y", 2));
    EXPECT_TRUE(key.remove("x"));
    EXPECT_FALSE(key.get_value("x", nullptr));
    EXPECT_EQ(QVariant("(none)"), read_back(key, "x"));
    EXPECT_EQ(QVariant(2), read_back(child, "y"));
}

TEST(registry, removing_a_missing_value_is_harmless)
{
    EXPECT_TRUE(gui_key().remove("never there"));
    EXPECT_FALSE(QFileInfo::exists(QString::fromStdString(TEST_ENVIRONMENT::get_registry_file())));
}

TEST(registry, keys_are_copied_as_values)
{
    CFGQ_REGISTRY_KEY key = gui_key();
    CFGQ_REGISTRY_KEY other(CFGQ_REGISTRY_KEY::SUB_KEY_MDI_AREA);
    EXPECT_TRUE(other.set_value("x", 2));
    CFGQ_REGISTRY_KEY copy(key);
    EXPECT_TRUE(copy.set_value("x", 52));
    copy = other;
    QVariant value;
    EXPECT_TRUE(copy.get_value("x", &value));
    EXPECT_EQ(QVariant(2), value);
    EXPECT_TRUE(key.get_value("x", &value));
    EXPECT_EQ(QVariant(52), value);
}

TEST(registry, a_key_outlives_the_closing_of_the_store)
{
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_TRUE(key.set_value("x", 1));
    CFGQ_REGISTRY::close();
    EXPECT_TRUE(key.set_value("y", 2));
    EXPECT_EQ(QVariant(1), read_back(key, "x"));
    EXPECT_EQ(QVariant(2), read_back(key, "y"));
}

TEST(registry, a_type_without_a_stream_lives_as_long_as_the_process)
{
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_TRUE(key.set_value("x", 1));
    EXPECT_FALSE(key.set_value("x", QVariant::fromValue(UNSTREAMED{8})));
    EXPECT_FALSE(key.set_value("pointer", QVariant::fromValue(static_cast<void*>(&key))));
    EXPECT_TRUE(CFGQ_REGISTRY::flush());
    QVariant value;
    EXPECT_TRUE(key.get_value("x", &value));
    EXPECT_EQ(8, value.value<UNSTREAMED>().number);
    EXPECT_EQ(QVariant(1), read_back(key, "x"));
    EXPECT_EQ(QVariant("(none)"), read_back(key, "pointer"));
}

TEST(registry, a_value_of_an_unknown_type_counts_as_missing_and_passes_through)
{
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_TRUE(key.set_value("x", 1));
    CFGQ_REGISTRY::close();
    std::string text = store_text();
    const std::string unknown = "x=@other(of a later version)";
    text.replace(text.find("x=@int(1)"), 9, unknown + "\nbad=@int(one)\nbroken=@variant(AAAA)\nhalf=50%");
    TEST_ENVIRONMENT::write_file("registry.ini", text);

    for (const char* name : {"x", "bad", "broken", "half"})
        EXPECT_FALSE(key.get_value(name, nullptr)) << name;
    EXPECT_EQ("", CFGQ_REGISTRY::get_set_aside_file().toStdString());
    EXPECT_TRUE(key.set_value("y", 2));
    EXPECT_NE(std::string::npos, store_text().find(unknown + "\n")) << store_text();
    EXPECT_TRUE(key.set_value("x", 3));
    EXPECT_EQ(QVariant(3), read_back(key, "x"));
}

TEST(registry, the_store_is_text_in_the_manner_of_an_ini_file)
{
    EXPECT_TRUE(gui_key().set_value("Color_version", 11));
    EXPECT_TRUE(gui_key().set_value("TOLV_TEXT_COLOR", "#102030"));
    EXPECT_TRUE(CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_TREE_COLUMNS, "hierarchy").set_value("Name", true));
    EXPECT_EQ("# Norvane user settings. The last line tells that the file is whole: keep it.\n"
              "[21/hierarchy]\n"
              "Name=@bool(true)\n"
              "[52]\n"
              "Color_version=@int(11)\n"
              "TOLV_TEXT_COLOR=#102030\n"
              "[store]\n"
              "layout=@int(1)\n"
              "# End of the user settings.\n",
              store_text());
}

TEST(registry, remarks_blank_lines_and_repeated_folders_are_read)
{
    TEST_ENVIRONMENT::write_file("registry.ini",
                                 "# Norvane user settings. The last line tells that the file is whole: keep it.\n"
                                 "[52]\na=1\n\n# a remark\n; another\n[2]\nb=2\n[52]\nc=3\n%41bc=4\n"
                                 "# End of the user settings.\n");
    EXPECT_EQ((QStringList{"Abc", "a", "c"}), gui_key().get_value_names());
    EXPECT_EQ(QStringList{"b"}, CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_MDI_AREA).get_value_names());
}

TEST(registry, without_the_variable_the_store_lies_in_the_configuration_folder)
{
    const SCOPED_ENVIRONMENT_VARIABLE no_file("NORVANE_REGISTRY_FILE", nullptr);
    EXPECT_TRUE(gui_key().set_value("x", 1));
    const QFileInfo file(qEnvironmentVariable("XDG_CONFIG_HOME") + "/norvane/registry.ini");
    EXPECT_TRUE(file.isFile());
    EXPECT_EQ(QFile::ExeOwner | QFile::ReadOwner | QFile::WriteOwner,
              QFile::permissions(file.path()) & (QFile::ExeOwner | QFile::ReadOwner | QFile::WriteOwner |
                                                 QFile::ReadGroup | QFile::ReadOther | QFile::WriteOther));
    CFGQ_REGISTRY::close();
}

TEST(registry, another_file_is_another_store)
{
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_TRUE(key.set_value("x", 1));
    CFGQ_REGISTRY::close();
    {
        const std::string file = TEST_ENVIRONMENT::get_folder() + "/new/folders/other.ini";
        const SCOPED_ENVIRONMENT_VARIABLE other_file("NORVANE_REGISTRY_FILE", file.c_str());
        EXPECT_FALSE(key.get_value("x", nullptr));
        EXPECT_TRUE(key.set_value("x", 2));
        EXPECT_EQ(QVariant(2), read_back(key, "x"));
        CFGQ_REGISTRY::close();
    }
    EXPECT_EQ(QVariant(1), read_back(key, "x"));
}

TEST(registry, a_store_behind_a_link_stays_behind_it)
{
    const QString target = QString::fromStdString(TEST_ENVIRONMENT::get_folder() + "/real.ini");
    ASSERT_TRUE(QFile::link(target, QString::fromStdString(TEST_ENVIRONMENT::get_registry_file())));
    EXPECT_TRUE(gui_key().set_value("x", 1));
    EXPECT_TRUE(QFileInfo(QString::fromStdString(TEST_ENVIRONMENT::get_registry_file())).isSymLink());
    EXPECT_TRUE(QFileInfo(target).isFile());
    EXPECT_EQ(QVariant(1), read_back(gui_key(), "x"));
}
