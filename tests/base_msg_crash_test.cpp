#include "gen.h"
#include "msg.h"
#include "msg_crash_report.h"
#include "msg_utc_time_p.h"
#include "test_environment.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <filesystem>
#include <fstream>
#include <set>
#include <thread>

namespace fs = std::filesystem;

namespace
{
MSG_CRASH_REPORT_MANAGER& manager()
{
    return *MSG_CRASH_REPORT_MANAGER::get_crash_report_manager();
}

std::string default_folder()
{
    return gen_get_user_profile_directory() + "/norvane_crash_reports";
}

std::set<std::string> files_in(const std::string& folder)
{
    std::set<std::string> names;
    if (fs::exists(folder))
        for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        {
            if (entry.is_regular_file())
                names.insert(entry.path().filename().string());
        }
    return names;
}

QJsonObject parse(const std::string& json)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(QByteArray::fromStdString(json), &error);
    EXPECT_EQ(QJsonParseError::NoError, error.error) << error.errorString().toStdString() << "\n" << json;
    return document.object();
}

std::string collect_and_write(const std::string& error_text)
{
    manager().collect(error_text, "TOLV", "tolv_view", 42);
    return manager().write_crash_report();
}

std::string file_with(const std::string& content)
{
    return TEST_ENVIRONMENT::write_file("handed_over.json", content);
}

/// A record that is complete but for what a test replaces in it.
std::string changed_record(const std::string& key, const QJsonValue& value)
{
    manager().collect("error", "TOLV", "tolv_view", 1);
    QJsonObject object = parse(manager().build_json_object_from_crash_report());
    object.insert(QString::fromStdString(key), value);
    return QJsonDocument(object).toJson().toStdString();
}

__attribute__((noinline)) const MSG_CRASH_RECORD& collect_here()
{
    manager().collect("error", "TOLV", "tolv_view", 1);
    return manager().get_record();
}
} // namespace

TEST(base_msg_crash, before_a_crash_there_are_the_facts_of_the_system)
{
    const MSG_CRASH_RECORD& record = manager().get_record();
    EXPECT_EQ("", record.error_text);
    EXPECT_EQ("", record.time);
    EXPECT_TRUE(record.backtrace.empty());
    EXPECT_EQ("base_msg_crash_test", record.executable);
    EXPECT_EQ("linux64", record.platform);
    EXPECT_EQ(64, record.address_bits);
    EXPECT_NE("", record.os_name);
    EXPECT_NE("", record.version);
    EXPECT_NE("", record.build);
    EXPECT_EQ("Community Edition", record.edition);
    EXPECT_FALSE(manager().get_crash_from_ipc());
    EXPECT_TRUE(manager().get_crash_report_generation());
    EXPECT_EQ("", manager().write_crash_report());
    EXPECT_FALSE(fs::exists(default_folder()));
}

TEST(base_msg_crash, collecting_fills_the_record)
{
    msg_clear_debug_records();
    MSG_D message("TOLV", MSG_D_LEVEL_2);
    message.set_text("the last words");
    message.send();
    const QDateTime before = QDateTime::currentDateTimeUtc().addSecs(-1);
    collect_here();
    const MSG_CRASH_RECORD& record = manager().get_record();
    EXPECT_EQ("error", record.error_text);
    EXPECT_EQ("TOLV", record.tag);
    EXPECT_EQ("tolv_view", record.file);
    EXPECT_EQ(1, record.line);
    EXPECT_EQ(std::vector<std::string>{"TOLV: the last words"}, record.debug_records);
    const QDateTime time = QDateTime::fromString(QString::fromStdString(record.time), Qt::ISODate);
    EXPECT_EQ(Qt::UTC, time.timeSpec()) << record.time;
    EXPECT_GE(time, before);
    EXPECT_LE(time, QDateTime::currentDateTimeUtc());
    ASSERT_GE(record.backtrace.size(), 3u);
    EXPECT_EQ(0u, record.backtrace[0].find("(anonymous namespace)::collect_here()")) << record.backtrace[0];
    EXPECT_NE(std::string::npos, record.backtrace[0].find("base_msg_crash_test.cpp:")) << record.backtrace[0];
}

TEST(base_msg_crash, the_command_line_is_that_of_the_begin_or_else_the_systems)
{
    collect_here();
    ASSERT_FALSE(manager().get_record().arguments.empty());
    EXPECT_NE(std::string::npos, manager().get_record().arguments[0].find("base_msg_crash_test"));
    const char* arguments[] = {"norvane_workbench", "--screenshot", "out.png", nullptr};
    msg_exe_init(3, arguments);
    collect_here();
    EXPECT_EQ((std::vector<std::string>{"norvane_workbench", "--screenshot", "out.png"}),
              manager().get_record().arguments);
    msg_exe_fini();
}

TEST(base_msg_crash, the_file_holds_the_whole_record)
{
    const std::string path = collect_and_write("m_view != NULL");
    EXPECT_EQ(0u, path.find(default_folder() + "/crash_")) << path;
    const std::string content = TEST_ENVIRONMENT::read_file(path);
    EXPECT_EQ(manager().build_json_object_from_crash_report(), content);
    const QJsonObject object = parse(content);
    const MSG_CRASH_RECORD& record = manager().get_record();
    EXPECT_EQ("norvane_crash_record", object["format"].toString().toStdString());
    EXPECT_EQ(1, object["format_version"].toInt());
    EXPECT_EQ("m_view != NULL", object["error_text"].toString().toStdString());
    EXPECT_EQ("TOLV", object["tag"].toString().toStdString());
    EXPECT_EQ("tolv_view", object["file"].toString().toStdString());
    EXPECT_EQ(42, object["line"].toInt());
    EXPECT_EQ(record.os_name, object["os_name"].toString().toStdString());
    EXPECT_EQ(record.os_version, object["os_version"].toString().toStdString());
    EXPECT_EQ(static_cast<int>(record.backtrace.size()), object["backtrace"].toArray().size());
    EXPECT_EQ(static_cast<int>(record.arguments.size()), object["arguments"].toArray().size());
    EXPECT_EQ(fs::perms::owner_read | fs::perms::owner_write, fs::status(path).permissions());
    EXPECT_EQ(fs::perms::owner_all, fs::status(default_folder()).permissions());
}

TEST(base_msg_crash, each_crash_has_a_file_of_its_own_and_its_rewriting_keeps_it)
{
    std::set<std::string> paths;
    for (int i = 0; i < 30; ++i)
    {
        const std::string path = collect_and_write("error " + std::to_string(i));
        EXPECT_EQ(path, manager().write_crash_report());
        EXPECT_TRUE(paths.insert(path).second);
    }
    EXPECT_EQ(30u, files_in(default_folder()).size());
    std::set<std::string> texts;
    for (const std::string& path : paths)
        texts.insert(parse(TEST_ENVIRONMENT::read_file(path))["error_text"].toString().toStdString());
    EXPECT_EQ(30u, texts.size());
}

TEST(base_msg_crash, a_later_write_takes_up_the_comment)
{
    const std::string path = collect_and_write("error");
    manager().set_crash_comment("I pressed \"F1\"\nand it went");
    EXPECT_EQ("I pressed \"F1\"\nand it went", manager().get_record().comment);
    EXPECT_EQ(path, manager().write_crash_report());
    EXPECT_EQ("I pressed \"F1\"\nand it went",
              parse(TEST_ENVIRONMENT::read_file(path))["comment"].toString().toStdString());
    EXPECT_EQ(1u, files_in(default_folder()).size());
    collect_here();
    EXPECT_EQ("", manager().get_record().comment);
}

TEST(base_msg_crash, without_generation_nothing_is_written_and_what_was_is_removed)
{
    manager().set_crash_report_generation(false);
    EXPECT_FALSE(manager().get_crash_report_generation());
    EXPECT_EQ("", collect_and_write("error"));
    EXPECT_FALSE(fs::exists(default_folder()));
    manager().set_crash_report_generation(true);
    const std::string path = manager().write_crash_report();
    EXPECT_TRUE(fs::exists(path));
    manager().set_crash_report_generation(false);
    EXPECT_EQ("", manager().write_crash_report());
    EXPECT_FALSE(fs::exists(path));
    EXPECT_EQ("", manager().write_crash_report());
}

TEST(base_msg_crash, generation_is_off_with_the_switch)
{
    const SCOPED_CONFIGURATION off("no_crash_report", "1");
    EXPECT_FALSE(manager().get_crash_report_generation());
    EXPECT_EQ("", collect_and_write("error"));
}

TEST(base_msg_crash, the_folder_is_the_configured_one_and_is_made)
{
    const std::string folder = TEST_ENVIRONMENT::get_folder() + "/deep/in/the/r\xC3\xB6" + "cords";
    const SCOPED_CONFIGURATION configured("crash_report_folder", folder.c_str());
    const std::string path = collect_and_write("error");
    EXPECT_EQ(0u, path.find(folder + "/crash_"));
    EXPECT_EQ(1u, files_in(folder).size());
}

TEST(base_msg_crash, a_folder_that_cannot_be_written_leaves_no_file_and_no_harm)
{
    const std::string file = TEST_ENVIRONMENT::write_file("a_file", "content");
    const std::string too_long = "/" + std::string(5000, 'x');
    for (const std::string& folder : {file, file + "/below", std::string("/proc/no/folder"), too_long})
    {
        const SCOPED_CONFIGURATION configured("crash_report_folder", folder.c_str());
        EXPECT_EQ("", collect_and_write("error"));
    }
    EXPECT_EQ("content", TEST_ENVIRONMENT::read_file(file));
}

TEST(base_msg_crash, any_text_gives_valid_json)
{
    std::string all_bytes;
    for (int byte = 0; byte < 256; ++byte)
        all_bytes += static_cast<char>(byte);
    manager().collect(all_bytes, "t\"a\\g", "f\nile", -7);
    manager().set_crash_comment(
        "gr\xC3\xBC\xC3\x9F \xE2\x82\xAC \xF0\x9F\x94\xA7 \xC0\x80 \xED\xA0\x80 \xF4\x90\x80\x80 "
        "\xE2\x82");
    const QJsonObject object = parse(manager().build_json_object_from_crash_report());
    const QString text = object["error_text"].toString();
    ASSERT_EQ(256, text.size());
    for (int byte = 0; byte < 128; ++byte)
        EXPECT_EQ(byte, text[byte].unicode());
    for (int byte = 128; byte < 256; ++byte)
        EXPECT_EQ(0xFFFD, text[byte].unicode()) << byte;
    EXPECT_EQ("t\"a\\g", object["tag"].toString().toStdString());
    EXPECT_EQ("f\nile", object["file"].toString().toStdString());
    EXPECT_EQ(-7, object["line"].toInt());
    const QString bad = QString(QChar(0xFFFD));
    EXPECT_EQ(QString::fromUtf8("gr\xC3\xBC\xC3\x9F \xE2\x82\xAC \xF0\x9F\x94\xA7 ") + bad + bad + " " + bad + bad +
                  bad + " " + bad + bad + bad + bad + " " + bad + bad,
              object["comment"].toString());
}

TEST(base_msg_crash, a_record_is_handed_over_whole)
{
    msg_clear_debug_records();
    MSG_D message("TOLV", MSG_D_LEVEL_2);
    message.set_text("gr\xC3\xBC\xC3\x9F");
    message.send();
    const std::string path = collect_and_write("line one\nline two");
    const MSG_CRASH_RECORD sent = manager().get_record();
    manager().collect("another", "", "", 0);
    ASSERT_TRUE(manager().set_crash_from_ipc(path));
    EXPECT_TRUE(manager().get_crash_from_ipc());
    const MSG_CRASH_RECORD& received = manager().get_record();
    EXPECT_EQ(sent.error_text, received.error_text);
    EXPECT_EQ(sent.tag, received.tag);
    EXPECT_EQ(sent.file, received.file);
    EXPECT_EQ(sent.line, received.line);
    EXPECT_EQ(sent.executable, received.executable);
    EXPECT_EQ(sent.arguments, received.arguments);
    EXPECT_EQ(sent.platform, received.platform);
    EXPECT_EQ(sent.os_name, received.os_name);
    EXPECT_EQ(sent.os_version, received.os_version);
    EXPECT_EQ(sent.address_bits, received.address_bits);
    EXPECT_EQ(sent.version, received.version);
    EXPECT_EQ(sent.build, received.build);
    EXPECT_EQ(sent.edition, received.edition);
    EXPECT_EQ(sent.time, received.time);
    EXPECT_EQ(sent.backtrace, received.backtrace);
    EXPECT_EQ(sent.debug_records, received.debug_records);
    EXPECT_EQ("", manager().write_crash_report());
    collect_here();
    EXPECT_FALSE(manager().get_crash_from_ipc());
}

TEST(base_msg_crash, sending_moves_a_handed_over_record_with_the_comment)
{
    const std::string path = collect_and_write("error");
    ASSERT_TRUE(manager().set_crash_from_ipc(path));
    EXPECT_TRUE(manager().update_comment_and_send_crash_report("it w\xC3\xA4r"));
    EXPECT_FALSE(fs::exists(path));
    const std::set<std::string> sent = files_in(default_folder() + "/to_send");
    ASSERT_EQ(1u, sent.size());
    const QJsonObject object = parse(TEST_ENVIRONMENT::read_file(default_folder() + "/to_send/" + *sent.begin()));
    EXPECT_EQ("it w\xC3\xA4r", object["comment"].toString().toStdString());
    EXPECT_EQ("error", object["error_text"].toString().toStdString());
    manager().remove_crash_report();
    EXPECT_EQ(1u, files_in(default_folder() + "/to_send").size());
}

TEST(base_msg_crash, a_record_that_cannot_be_sent_stays)
{
    const std::string path = collect_and_write("error");
    ASSERT_TRUE(manager().set_crash_from_ipc(path));
    std::ofstream(default_folder() + "/to_send") << "in the way";
    EXPECT_FALSE(manager().update_comment_and_send_crash_report("comment"));
    EXPECT_TRUE(fs::exists(path));
}

TEST(base_msg_crash, only_a_handed_over_record_is_sent_or_removed)
{
    const std::string path = collect_and_write("error");
    EXPECT_FALSE(manager().update_comment_and_send_crash_report("comment"));
    manager().remove_crash_report();
    EXPECT_TRUE(fs::exists(path));
    EXPECT_FALSE(fs::exists(default_folder() + "/to_send"));
    ASSERT_TRUE(manager().set_crash_from_ipc(path));
    manager().remove_crash_report();
    EXPECT_FALSE(fs::exists(path));
    EXPECT_EQ("error", manager().get_record().error_text);
    manager().remove_crash_report();
}

TEST(base_msg_crash, a_damaged_file_is_refused_and_changes_nothing)
{
    manager().collect("mine", "TOLV", "tolv_view", 42);
    const std::string good = manager().build_json_object_from_crash_report();
    const std::vector<std::string> damaged = {
        "",
        std::string("\0\1\2\xFF\xFE noise", 11),
        "{}",
        "[]",
        "null",
        "\"norvane_crash_record\"",
        good.substr(0, good.size() / 2),
        good.substr(1),
        good.substr(0, good.size() - 2),
        good + "}",
        std::string(100000, '['),
        changed_record("format", "something_else"),
        changed_record("format_version", 2),
        changed_record("format_version", "1"),
        changed_record("error_text", 5),
        changed_record("error_text", QJsonValue::Undefined),
        changed_record("tag", QJsonArray()),
        changed_record("comment", QJsonValue::Null),
        changed_record("line", "42"),
        changed_record("line", 1.5),
        changed_record("line", 1e300),
        changed_record("address_bits", true),
        changed_record("backtrace", "main"),
        changed_record("backtrace", QJsonArray{"main", 5}),
        changed_record("arguments", QJsonObject()),
        changed_record("debug_records", QJsonArray{QJsonArray()}),
    };
    manager().collect("mine", "TOLV", "tolv_view", 42);
    for (const std::string& content : damaged)
    {
        EXPECT_FALSE(manager().set_crash_from_ipc(file_with(content))) << content.substr(0, 200);
        EXPECT_EQ("mine", manager().get_record().error_text);
        EXPECT_FALSE(manager().get_crash_from_ipc());
    }
    EXPECT_FALSE(manager().set_crash_from_ipc("/no/such/file"));
    EXPECT_FALSE(manager().set_crash_from_ipc(TEST_ENVIRONMENT::get_folder()));
    EXPECT_FALSE(manager().set_crash_from_ipc(""));
    EXPECT_TRUE(manager().set_crash_from_ipc(file_with(good)));
}

TEST(base_msg_crash, a_missing_member_keeps_its_default_and_an_unknown_one_is_ignored)
{
    ASSERT_TRUE(manager().set_crash_from_ipc(
        file_with(R"({"format": "norvane_crash_record", "format_version": 1, "error_text": "e", "later": [1]})")));
    EXPECT_EQ("e", manager().get_record().error_text);
    EXPECT_EQ("", manager().get_record().executable);
    EXPECT_EQ(0, manager().get_record().line);
    EXPECT_TRUE(manager().get_record().backtrace.empty());
}

TEST(base_msg_crash, a_file_of_more_than_16_mb_is_refused)
{
    const std::string head = R"({"format": "norvane_crash_record", "format_version": 1, "error_text": ")";
    const std::string tail = "\"}";
    const std::size_t limit = std::size_t{16} * 1024 * 1024;
    const std::string fitting = head + std::string(limit - head.size() - tail.size(), 'x') + tail;
    EXPECT_TRUE(manager().set_crash_from_ipc(file_with(fitting)));
    EXPECT_FALSE(manager().set_crash_from_ipc(file_with(fitting + " ")));
}

TEST(base_msg_crash, records_of_several_threads_do_not_mix)
{
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int t = 0; t < 4; ++t)
        threads.emplace_back(
            [t]
            {
                for (int i = 0; i < 10; ++i)
                {
                    manager().collect("error of " + std::to_string(t), "TOLV", "tolv_view", t);
                    manager().write_crash_report();
                    manager().set_crash_comment("comment");
                    manager().build_json_object_from_crash_report();
                }
            });
    for (std::thread& thread : threads)
        thread.join();
    for (const std::string& name : files_in(default_folder()))
    {
        const QJsonObject object = parse(TEST_ENVIRONMENT::read_file(default_folder() + "/" + name));
        EXPECT_EQ("error of " + std::to_string(object["line"].toInt()), object["error_text"].toString().toStdString());
    }
}

TEST(base_msg_crash, the_date_is_right_on_every_day_of_800_years)
{
    const QDate first(1970, 1, 1);
    for (long long day = 0; day < 800LL * 366; ++day)
    {
        const QDate expected = first.addDays(day);
        const MSG_UTC_DATE date = msg_get_utc_date(day);
        ASSERT_TRUE(date.year == expected.year() && date.month == expected.month() && date.day == expected.day())
            << expected.toString(Qt::ISODate).toStdString();
    }
    MSG_FIXED_TEXT text;
    msg_append_utc_time(text, 1709251199);
    EXPECT_STREQ("2024-02-29T23:59:59Z", text.get());
    EXPECT_EQ(MSG_UTC_TIME_LENGTH, text.get_length());
}

TEST(base_msg_crash, a_fixed_text_is_cut_at_its_capacity)
{
    MSG_FIXED_TEXT text;
    text.append_number(0);
    text.append_number(255, 16, 4);
    text.append_number(18446744073709551615ull);
    EXPECT_STREQ("000ff18446744073709551615", text.get());
    EXPECT_FALSE(text.is_cut());
    for (int i = 0; i < 5000; ++i)
        text.append('x');
    EXPECT_TRUE(text.is_cut());
    EXPECT_EQ(MSG_FIXED_TEXT::CAPACITY - 1, text.get_length());
    EXPECT_EQ('\0', text.get()[text.get_length()]);
    text.clear();
    EXPECT_STREQ("", text.get());
    EXPECT_FALSE(text.is_cut());
}
