#include "cfgq_registry.h"
#include "child_process.h"
#include "test_environment.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QVariant>
#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>

namespace
{
const int TIMEOUT = 60000;

CFGQ_REGISTRY_KEY gui_key()
{
    return CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_GUI);
}

QString value_of(const QString& name)
{
    QVariant value;
    return gui_key().get_value(name, &value) ? value.toString() : QStringLiteral("(none)");
}

QStringList journals()
{
    return QDir(QString::fromStdString(TEST_ENVIRONMENT::get_folder())).entryList({"registry.ini.journal-*"});
}

std::string store_text()
{
    return TEST_ENVIRONMENT::read_file(TEST_ENVIRONMENT::get_registry_file());
}

/// A second process on the same registry, ready to work.
class CHILD
{
public:
    explicit CHILD(const QStringList& arguments)
    {
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QString::fromStdString(get_child_path("base_registry_child")), arguments);
        EXPECT_EQ("ready\n", read_line());
    }
    ~CHILD()
    {
        m_process.closeWriteChannel();
        EXPECT_TRUE(has_ended_well());
    }
    CHILD(const CHILD&) = delete;
    CHILD& operator=(const CHILD&) = delete;

    std::string ask(const QString& line)
    {
        m_process.write(line.toUtf8() + '\n');
        return read_line();
    }

    bool has_ended_well()
    {
        const bool has_ended = m_process.state() == QProcess::NotRunning || m_process.waitForFinished(TIMEOUT);
        return has_ended && m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
    }

private:
    std::string read_line()
    {
        while (!m_process.canReadLine())
        {
            if (!m_process.waitForReadyRead(TIMEOUT))
                return "no answer";
        }
        return m_process.readLine().toStdString();
    }

    QProcess m_process;
};

struct APPLICATION
{
    int count = 1;
    char name[5] = "test";
    char* names[2] = {name, nullptr};
    QCoreApplication application{count, names};
};
} // namespace

TEST(registry_processes, three_processes_that_write_at_once_lose_nothing)
{
    const int count = 500;
    const QString go_file = QString::fromStdString(TEST_ENVIRONMENT::get_folder() + "/go");
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_TRUE(key.set_value("shared", 0));
    {
        CHILD first({"write", "first", QString::number(count), go_file});
        CHILD second({"write", "second", QString::number(count), go_file});
        TEST_ENVIRONMENT::write_file("go", "");
        for (int i = 0; i < count / 5; ++i)
        {
            EXPECT_TRUE(key.set_value("own" + QString::number(i), i));
            EXPECT_TRUE(key.set_value("shared", i));
        }
        EXPECT_TRUE(first.has_ended_well());
        EXPECT_TRUE(second.has_ended_well());
    }
    CFGQ_REGISTRY::close();
    EXPECT_EQ(2 * count + count / 5 + 1, key.get_value_names().size());
    for (int i = 0; i < count; ++i)
    {
        EXPECT_EQ(QString::number(i), value_of("first" + QString::number(i)));
        EXPECT_EQ(QString::number(i), value_of("second" + QString::number(i)));
    }
    EXPECT_EQ(QString::number(count / 5 - 1), value_of("shared"));
    EXPECT_EQ(QStringList(), journals());
}

TEST(registry_processes, changes_of_equal_length_in_the_same_moment_are_seen)
{
    CHILD child({"serve"});
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_TRUE(key.set_value("mine", "0"));
    EXPECT_EQ("1 \n", child.ask("set theirs 0"));
    for (int i = 1; i < 40; ++i)
    {
        const QString digit = QString::number(i % 10);
        ASSERT_EQ("1 \n", child.ask("set theirs " + digit));
        ASSERT_TRUE(key.set_value("mine", digit));
        ASSERT_EQ(digit, value_of("theirs")) << i;
        ASSERT_EQ("1 " + digit.toStdString() + "\n", child.ask("get mine"));
        ASSERT_EQ("1 " + digit.toStdString() + "\n", child.ask("get theirs"));
    }
}

TEST(registry_processes, each_save_has_a_later_time_than_the_one_before)
{
    // What a clock that stands still, or goes back, would make of two saves: files that look the same from outside.
    const std::string path = TEST_ENVIRONMENT::get_registry_file();
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_TRUE(key.set_value("x", "0"));
    const timespec future[2] = {{4000000000, 0}, {4000000000, 999500000}};
    ASSERT_EQ(0, ::utimensat(AT_FDCWD, path.c_str(), future, 0));
    EXPECT_TRUE(key.set_value("x", "1"));
    struct stat status;
    ASSERT_EQ(0, ::stat(path.c_str(), &status));
    EXPECT_EQ(4000000001, status.st_mtim.tv_sec);
    EXPECT_EQ(0, status.st_mtim.tv_nsec);
    EXPECT_TRUE(key.set_value("x", "2"));
    ASSERT_EQ(0, ::stat(path.c_str(), &status));
    EXPECT_EQ(4000000001, status.st_mtim.tv_sec);
    EXPECT_EQ(1000000, status.st_mtim.tv_nsec);
    CFGQ_REGISTRY::close();
    EXPECT_EQ("2", value_of("x"));
}

TEST(registry_processes, what_another_process_wrote_is_seen_after_a_flush)
{
    CHILD child({"serve"});
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_TRUE(key.set_value("x", "old"));
    EXPECT_EQ("1 \n", child.ask("set x new"));
    EXPECT_EQ("1 \n", child.ask("set y other"));
    EXPECT_EQ("old", value_of("x"));
    EXPECT_TRUE(CFGQ_REGISTRY::flush());
    EXPECT_EQ("new", value_of("x"));
    EXPECT_EQ("other", value_of("y"));
}

TEST(registry_processes, what_another_process_wrote_is_seen_after_a_write)
{
    CHILD child({"serve"});
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_EQ("(none)", value_of("x"));
    EXPECT_EQ("1 \n", child.ask("set x new"));
    EXPECT_TRUE(key.set_value("y", 1));
    EXPECT_EQ("new", value_of("x"));
}

TEST(registry_processes, a_removal_by_one_process_is_kept_by_the_others)
{
    CHILD child({"serve"});
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_TRUE(key.set_value("x", 1));
    EXPECT_TRUE(key.set_value("z", 1));
    EXPECT_EQ("1 1\n", child.ask("get x"));
    EXPECT_EQ("1 \n", child.ask("remove x"));
    EXPECT_TRUE(key.set_value("y", 2));
    EXPECT_TRUE(key.remove("z"));
    EXPECT_EQ("(none)", value_of("x"));
    EXPECT_EQ("1 \n", child.ask("set w 3"));
    CFGQ_REGISTRY::close();
    EXPECT_EQ((QStringList{"w", "y"}), key.get_value_names());
}

TEST(registry_processes, a_value_that_only_another_process_knows_can_be_removed)
{
    CHILD child({"serve"});
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_EQ("(none)", value_of("x"));
    EXPECT_EQ("1 \n", child.ask("set x 1"));
    EXPECT_TRUE(key.remove("x"));
    CFGQ_REGISTRY::close();
    EXPECT_EQ("(none)", value_of("x"));
}

TEST(registry_processes, the_later_save_of_the_same_value_wins)
{
    CHILD child({"serve"});
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_TRUE(key.set_value("x", "mine"));
    EXPECT_EQ("1 \n", child.ask("set x theirs"));
    EXPECT_TRUE(key.set_value("x", "mine"));
    EXPECT_EQ("1 mine\n", child.ask("get x"));
}

/// What a process left that stored 600 values and ended before its event loop came to turn.
class registry_ends : public testing::TestWithParam<const char*>
{
};

TEST_P(registry_ends, lose_nothing)
{
    const CHILD_RESULT result = run_child("base_registry_child", {"collect", "600", GetParam()});
    ASSERT_TRUE(result.started);
    ASSERT_FALSE(result.timed_out);
    EXPECT_NE(1, result.exit_status) << "a value was refused";
    for (int i = 0; i < 600; ++i)
        EXPECT_EQ(QStringLiteral("text %1").arg(i), value_of(QStringLiteral("value%1").arg(i)));
    EXPECT_EQ(QStringList(), journals());
    CFGQ_REGISTRY::close();
    EXPECT_EQ("text 599", value_of("value599"));
}

INSTANTIATE_TEST_SUITE_P(by, registry_ends, testing::Values("return", "abort", "kill", "quick", "loop"),
                         [](const auto& test) { return std::string(test.param); });

TEST(registry_processes, the_end_of_a_process_brings_its_values_into_the_store)
{
    EXPECT_EQ(0, run_child("base_registry_child", {"collect", "5", "return"}).exit_status);
    EXPECT_NE(std::string::npos, store_text().find("value4=text 4\n"));
    EXPECT_EQ(QStringList(), journals());
}

TEST(registry_processes, the_end_of_a_process_brings_its_values_into_a_store_that_is_there)
{
    ASSERT_EQ(0, run_child("base_registry_child", {"collect", "1", "return"}).exit_status);
    const CHILD_RESULT result = run_child("base_registry_child", {"collect", "5", "save"});
    EXPECT_EQ(0, result.exit_status);
    EXPECT_EQ(0, result.signal);
    EXPECT_NE(std::string::npos, store_text().find("value4=text 4\n"));
    EXPECT_NE(std::string::npos, store_text().find("last=text\n"));
    EXPECT_EQ(QStringList(), journals());
}

TEST(registry_processes, a_turn_of_the_event_loop_brings_its_values_into_the_store)
{
    EXPECT_EQ(0, run_child("base_registry_child", {"collect", "5", "loop"}).exit_status);
    EXPECT_NE(std::string::npos, store_text().find("value4=text 4\n"));
    EXPECT_EQ(QStringList(), journals());
}

TEST(registry_processes, an_abort_leaves_its_values_for_a_process_that_already_runs)
{
    EXPECT_EQ("(none)", value_of("value0"));
    EXPECT_EQ(SIGABRT, run_child("base_registry_child", {"collect", "5", "abort"}).signal);
    EXPECT_EQ(1, journals().size());
    EXPECT_TRUE(CFGQ_REGISTRY::flush());
    EXPECT_EQ("text 4", value_of("value4"));
    EXPECT_EQ(QStringList(), journals());
}

TEST(registry_collecting, changes_reach_the_store_together_with_the_next_turn_of_the_event_loop)
{
    const APPLICATION application;
    CFGQ_REGISTRY_KEY key = gui_key();
    for (int i = 0; i < 600; ++i)
        EXPECT_TRUE(key.set_value("value" + QString::number(i), i));
    EXPECT_TRUE(key.remove("value7"));
    EXPECT_EQ("599", value_of("value599"));
    EXPECT_EQ("(none)", value_of("value7"));
    EXPECT_EQ("", store_text());
    QCoreApplication::processEvents();
    EXPECT_NE(std::string::npos, store_text().find("value599=@int(599)\n"));
    EXPECT_EQ(std::string::npos, store_text().find("value7="));
    EXPECT_EQ(QStringList(), journals());

    EXPECT_TRUE(key.set_value("later", 1));
    EXPECT_EQ(std::string::npos, store_text().find("later="));
    QCoreApplication::processEvents();
    EXPECT_NE(std::string::npos, store_text().find("later=@int(1)\n"));
}

TEST(registry_collecting, a_value_that_no_file_can_hold_stays_in_force_over_a_pending_one)
{
    const APPLICATION application;
    CFGQ_REGISTRY_KEY key = gui_key();
    EXPECT_TRUE(key.set_value("x", 1));
    EXPECT_TRUE(key.set_value("y", 1));
    EXPECT_TRUE(key.remove("y"));
    EXPECT_FALSE(key.set_value("x", QVariant::fromValue(static_cast<void*>(&key))));
    EXPECT_FALSE(key.set_value("y", QVariant::fromValue(static_cast<void*>(&key))));
    QCoreApplication::processEvents();
    for (const char* name : {"x", "y"})
    {
        QVariant value;
        EXPECT_TRUE(key.get_value(name, &value)) << name;
        EXPECT_EQ(&key, value.value<void*>()) << name;
    }
    CFGQ_REGISTRY::close();
    EXPECT_EQ("1", value_of("x"));
    EXPECT_EQ("(none)", value_of("y"));
}

TEST(registry_collecting, a_flush_does_not_wait_for_the_event_loop)
{
    const APPLICATION application;
    EXPECT_TRUE(gui_key().set_value("x", 1));
    EXPECT_TRUE(CFGQ_REGISTRY::flush());
    EXPECT_NE(std::string::npos, store_text().find("x=@int(1)\n"));
    EXPECT_EQ(QStringList(), journals());
    QCoreApplication::processEvents();
    EXPECT_EQ("1", value_of("x"));
}

TEST(registry_collecting, a_closed_store_is_not_reopened_by_the_event_loop)
{
    const APPLICATION application;
    EXPECT_TRUE(gui_key().set_value("x", 1));
    CFGQ_REGISTRY::close();
    TEST_ENVIRONMENT::write_file("registry.ini", "noise");
    QCoreApplication::processEvents();
    EXPECT_EQ("noise", store_text());
}

TEST(registry_collecting, a_second_application_collects_as_the_first_did)
{
    {
        const APPLICATION application;
        EXPECT_TRUE(gui_key().set_value("x", 1));
    }
    EXPECT_EQ("", store_text());
    const APPLICATION application;
    EXPECT_TRUE(gui_key().set_value("y", 2));
    QCoreApplication::processEvents();
    EXPECT_NE(std::string::npos, store_text().find("x=@int(1)\ny=@int(2)\n"));
}

TEST(registry_collecting, without_an_application_a_change_is_in_the_store_at_once)
{
    EXPECT_TRUE(gui_key().set_value("x", 1));
    EXPECT_NE(std::string::npos, store_text().find("x=@int(1)\n"));
    EXPECT_TRUE(gui_key().remove("x"));
    EXPECT_EQ(std::string::npos, store_text().find("x="));
}

TEST(registry_collecting, a_store_that_cannot_exist_refuses_values_at_once)
{
    const APPLICATION application;
    const std::string blocker = TEST_ENVIRONMENT::write_file("place", "");
    const SCOPED_ENVIRONMENT_VARIABLE file("NORVANE_REGISTRY_FILE", (blocker + "/registry.ini").c_str());
    EXPECT_FALSE(gui_key().set_value("x", 1));
    EXPECT_EQ("1", value_of("x"));
    QCoreApplication::processEvents();
    EXPECT_EQ("1", value_of("x"));
    CFGQ_REGISTRY::close();
}
