#include "assignment_file.h"
#include "assignment_model.h"

#include "gui_test.h"
#include "test_environment.h"

#include "tolv_data_transfer_manager.h"
#include "tolv_instance_name.h"

#include <QAbstractItemModelTester>
#include <QDataStream>
#include <QFile>
#include <QFileInfo>
#include <QMimeData>
#include <QSignalSpy>
#include <QUrl>

namespace
{
using TESTER = QAbstractItemModelTester;

const char* const ASSIGNMENT_FORMAT = "application/x-norvane_assignment_list_data";
const char* const INSTANCE_FORMAT = "application/x-norvane_instance_name_list_data";

TOLV_ASSIGNMENT make(const char* to, const char* name = "", const char* value = "", bool is_enabled = true)
{
    TOLV_ASSIGNMENT assignment;
    assignment.m_field_1 = QString::fromUtf8(to);
    assignment.m_field_2 = QString::fromUtf8(name);
    assignment.m_field_3 = QString::fromUtf8(value);
    assignment.m_flag = is_enabled;
    return assignment;
}

TOLV_ASSIGNMENT_LIST make_list(const QList<TOLV_ASSIGNMENT>& rows)
{
    TOLV_ASSIGNMENT_LIST list;
    for (const TOLV_ASSIGNMENT& row : rows)
        list.insert(row);
    return list;
}

/// The rows as "to|name|value|on".
QStringList texts_of(const TOLV_ASSIGNMENT_LIST& list)
{
    QStringList texts;
    for (const TOLV_ASSIGNMENT& row : list.get_list())
        texts << row.m_field_1 + '|' + row.m_field_2 + '|' + row.m_field_3 + '|' + (row.m_flag ? "on" : "off");
    return texts;
}

std::unique_ptr<QMimeData> make_data(const char* format, const QByteArray& bytes)
{
    auto data = std::make_unique<QMimeData>();
    data->setData(QString::fromLatin1(format), bytes);
    return data;
}

std::unique_ptr<QMimeData> make_text(const QString& text)
{
    auto data = std::make_unique<QMimeData>();
    data->setText(text);
    return data;
}

/// As another tool would write them, byte for byte.
QByteArray make_instances(const QStringList& names)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    for (const QString& name : names)
        stream << name << 3 << false << 0 << 0 << 0 << 0 << 0;
    return bytes;
}

class host_assignment_model : public TOLV_GUI_TEST
{
protected:
    QStringList rows() const
    {
        return texts_of(m_model.get_assignments());
    }

    void fill()
    {
        m_model.set_assignments(
            make_list({make("top/a", "LOCATION", "X1"), make("top/b", "KEEP", "1", false), make("top/c")}));
    }

    ASSIGNMENT_MODEL m_model;
};

class host_assignment_file : public TOLV_TEST
{
protected:
    static QString write(const QByteArray& content)
    {
        return QString::fromStdString(TEST_ENVIRONMENT::write_file("some.constraints", content.toStdString()));
    }

    /// What is wrong with a file of this content, without the file's name.
    static QString error_of(const QByteArray& content)
    {
        const QString file = write(content);
        TOLV_ASSIGNMENT_LIST list = make_list({make("kept")});
        const QString error = assignment_file_read(file, &list);
        EXPECT_EQ(QStringList("kept|||on"), error.isEmpty() ? QStringList("kept|||on") : texts_of(list));
        EXPECT_TRUE(error.isEmpty() || error.startsWith(file + ':')) << error.toStdString();
        return error.mid(file.size() + 1);
    }
};
} // namespace

// ---- The model ------------------------------------------------------------------------------------------------------

TEST_F(host_assignment_model, keeps_the_rules_of_models_through_all_changes)
{
    const TESTER tester(&m_model, TESTER::FailureReportingMode::Fatal);
    fill();
    m_model.insertRows(1, 2);
    m_model.setData(m_model.index(1, 0), "top/new");
    m_model.setData(m_model.index(1, 3), Qt::Unchecked, Qt::CheckStateRole);
    m_model.remove({4, 0, 2});
    m_model.paste(make_text("x\ny").get(), 1);
    m_model.removeRows(0, 2);
    while (m_model.can_undo())
        m_model.undo();
    while (m_model.can_redo())
        m_model.redo();
    m_model.set_assignments(TOLV_ASSIGNMENT_LIST());
    EXPECT_EQ(0, m_model.rowCount());
}

TEST_F(host_assignment_model, shows_texts_and_whether_they_count)
{
    fill();
    QStringList titles;
    for (int column = 0; column < m_model.columnCount(); ++column)
        titles << m_model.headerData(column, Qt::Horizontal).toString();
    EXPECT_EQ((QStringList{"To", "Assignment", "Value", "Enabled"}), titles);
    EXPECT_EQ("top/b", m_model.index(1, 0).data().toString());
    EXPECT_EQ("KEEP", m_model.index(1, 1).data(Qt::EditRole).toString());
    EXPECT_EQ("1", m_model.index(1, 2).data().toString());
    EXPECT_EQ("off", m_model.index(1, 3).data().toString());
    EXPECT_EQ("on", m_model.index(0, 3).data().toString());
    EXPECT_EQ(Qt::Unchecked, m_model.index(1, 3).data(Qt::CheckStateRole).toInt());
    EXPECT_EQ(Qt::Checked, m_model.index(0, 3).data(Qt::CheckStateRole).toInt());
    EXPECT_FALSE(m_model.index(0, 0).data(Qt::CheckStateRole).isValid());
    EXPECT_TRUE(m_model.flags(m_model.index(0, 0)).testFlag(Qt::ItemIsEditable));
    EXPECT_FALSE(m_model.flags(m_model.index(0, 3)).testFlag(Qt::ItemIsEditable));
    EXPECT_TRUE(m_model.flags(m_model.index(0, 3)).testFlag(Qt::ItemIsUserCheckable));
}

TEST_F(host_assignment_model, cells_are_edited_as_single_lines)
{
    fill();
    QSignalSpy spy(&m_model, SIGNAL(changed()));
    EXPECT_TRUE(m_model.setData(m_model.index(2, 1), "RE\nGION\t1"));
    EXPECT_TRUE(m_model.setData(m_model.index(2, 3), Qt::Unchecked, Qt::CheckStateRole));
    EXPECT_EQ("top/c|RE GION 1||off", rows().at(2));
    EXPECT_EQ(2, spy.count());
    EXPECT_FALSE(m_model.setData(m_model.index(2, 3), "text"));
    EXPECT_FALSE(m_model.setData(m_model.index(2, 0), Qt::Unchecked, Qt::CheckStateRole));
    EXPECT_FALSE(m_model.setData(QModelIndex(), "text"));
    EXPECT_TRUE(m_model.is_modified());
}

TEST_F(host_assignment_model, a_cell_that_stays_as_it_is_is_no_change)
{
    fill();
    EXPECT_TRUE(m_model.setData(m_model.index(0, 0), "top/a"));
    EXPECT_TRUE(m_model.setData(m_model.index(0, 3), Qt::Checked, Qt::CheckStateRole));
    EXPECT_FALSE(m_model.is_modified());
    EXPECT_FALSE(m_model.can_undo());
}

TEST_F(host_assignment_model, changes_are_undone_and_done_again)
{
    fill();
    const QStringList before = rows();
    m_model.remove({0, 2});
    const QStringList behind{"top/b|KEEP|1|off"};
    EXPECT_EQ(behind, rows());
    m_model.insertRows(0, 1);
    m_model.undo();
    EXPECT_EQ(behind, rows());
    m_model.undo();
    EXPECT_EQ(before, rows());
    EXPECT_FALSE(m_model.can_undo());
    m_model.undo();
    EXPECT_EQ(before, rows());
    m_model.redo();
    EXPECT_EQ(behind, rows());
    m_model.setData(m_model.index(0, 0), "other");
    EXPECT_FALSE(m_model.can_redo());
    fill();
    EXPECT_FALSE(m_model.can_undo());
    EXPECT_FALSE(m_model.is_modified());
}

TEST_F(host_assignment_model, the_last_hundred_changes_are_kept)
{
    for (int i = 0; i < 130; ++i)
        m_model.insertRows(0, 1);
    int count = 0;
    for (; m_model.can_undo(); ++count)
        m_model.undo();
    EXPECT_EQ(100, count);
    EXPECT_EQ(30, m_model.rowCount());
}

TEST_F(host_assignment_model, rows_out_of_range_are_neither_inserted_nor_removed)
{
    fill();
    EXPECT_FALSE(m_model.insertRows(-1, 1));
    EXPECT_FALSE(m_model.insertRows(4, 1));
    EXPECT_FALSE(m_model.insertRows(0, 0));
    EXPECT_FALSE(m_model.insertRows(0, 1, m_model.index(0, 0)));
    EXPECT_FALSE(m_model.removeRows(2, 2));
    EXPECT_FALSE(m_model.removeRows(-1, 1));
    m_model.remove({-1, 3, 7});
    EXPECT_EQ(3, m_model.rowCount());
    EXPECT_FALSE(m_model.is_modified());
}

// ---- Copy and paste -------------------------------------------------------------------------------------------------

TEST_F(host_assignment_model, rows_are_copied_in_order_with_all_their_fields)
{
    TOLV_ASSIGNMENT whole = make("top/a", "LOCATION", "X1");
    whole.m_field_4 = "four";
    whole.m_field_7 = "seven";
    m_model.set_assignments(make_list({whole, make("top/b", "KEEP", "1", false)}));
    const std::unique_ptr<QMimeData> data(
        m_model.mimeData({m_model.index(1, 2), m_model.index(0, 0), m_model.index(1, 0)}));
    EXPECT_EQ("top/a\tLOCATION\tX1\ton\ntop/b\tKEEP\t1\toff\n", data->text());
    QByteArray expected;
    QDataStream stream(&expected, QIODevice::WriteOnly);
    stream << QString("top/a") << QString("LOCATION") << QString("X1") << QString("four") << true << QString()
           << QString() << QString("seven");
    stream << QString("top/b") << QString("KEEP") << QString("1") << QString() << false << QString() << QString()
           << QString();
    EXPECT_EQ(expected, data->data(ASSIGNMENT_FORMAT));
    EXPECT_EQ(nullptr, m_model.mimeData({}));

    EXPECT_EQ(2, m_model.paste(data.get(), 1));
    EXPECT_EQ((QStringList{"top/a|LOCATION|X1|on", "top/a|LOCATION|X1|on", "top/b|KEEP|1|off", "top/b|KEEP|1|off"}),
              rows());
    EXPECT_EQ("seven", m_model.get_assignments().get_list().at(1).m_field_7);
}

TEST_F(host_assignment_model, instance_names_become_rows_of_their_own)
{
    fill();
    EXPECT_EQ(2, m_model.paste(make_data(INSTANCE_FORMAT, make_instances({"top/u", "", "top/v"})).get(), 0));
    EXPECT_EQ((QStringList{"top/u|||on", "top/v|||on"}), rows().mid(0, 2));
    m_model.undo();
    EXPECT_EQ(3, m_model.rowCount());
}

TEST_F(host_assignment_model, lines_of_a_text_become_rows)
{
    EXPECT_EQ(4,
              m_model.paste(make_text("top/u\r\n\n  top/v  \ntop/w\tKEEP\t1\toff\ttoo many\n \t \n\tKEEP").get(), -1));
    EXPECT_EQ((QStringList{"top/u|||on", "top/v|||on", "top/w|KEEP|1|off", "|KEEP||on"}), rows());
}

TEST_F(host_assignment_model, assignments_are_preferred_to_names_and_names_to_a_text)
{
    TOLV_DATA_TRANSFER_MANAGER* const manager = TOLV_DATA_TRANSFER_MANAGER::get_instance();
    manager->create_mime_data();
    manager->add_text_format(QStringLiteral("from text"));
    const std::unique_ptr<QMimeData> data(manager->get_mime_data());
    data->setData(INSTANCE_FORMAT, make_instances({"from names"}));
    m_model.paste(data.get(), -1);
    manager->add_assignment_list_format(make_list({make("from assignments")}));
    m_model.paste(data.get(), -1);
    EXPECT_EQ((QStringList{"from names|||on", "from assignments|||on"}), rows());
}

TEST_F(host_assignment_model, damaged_payloads_bring_what_can_be_read_and_never_empty_rows)
{
    const QByteArray whole = make_instances({"top/u", "top/v"});
    for (int size = 0; size < whole.size(); ++size)
    {
        ASSIGNMENT_MODEL model;
        model.paste(make_data(INSTANCE_FORMAT, whole.left(size)).get(), 0);
        const TOLV_ASSIGNMENT_LIST pasted = model.get_assignments();
        for (const TOLV_ASSIGNMENT& row : pasted.get_list())
            EXPECT_FALSE(row.m_field_1.isEmpty()) << size;
        EXPECT_LE(model.rowCount(), 2);
    }
    QByteArray huge_count("\x7f\xff\xff\xfe\x00t", 6);
    EXPECT_EQ(0, m_model.paste(make_data(ASSIGNMENT_FORMAT, huge_count).get(), 0));
    EXPECT_EQ(0, m_model.paste(make_data(INSTANCE_FORMAT, huge_count).get(), 0));
    QByteArray noise;
    unsigned int state = 1;
    for (int i = 0; i < 5000; ++i)
        noise += char((state = state * 1664525u + 1013904223u) >> 24);
    m_model.paste(make_data(ASSIGNMENT_FORMAT, noise).get(), 0);
    m_model.paste(make_data(INSTANCE_FORMAT, noise).get(), 0);
    const TOLV_ASSIGNMENT_LIST pasted = m_model.get_assignments();
    for (const TOLV_ASSIGNMENT& row : pasted.get_list())
        EXPECT_NE(QString(), row.m_field_1 + row.m_field_2 + row.m_field_3 + row.m_field_4 + row.m_field_5 +
                                 row.m_field_6 + row.m_field_7);
}

TEST_F(host_assignment_model, texts_of_a_payload_are_single_lines)
{
    m_model.paste(make_data(INSTANCE_FORMAT, make_instances({QString("a\nb") + QChar(0) + "c"})).get(), 0);
    EXPECT_EQ(QStringList("a b c|||on"), rows());
}

TEST_F(host_assignment_model, nothing_is_pasted_from_data_of_another_kind)
{
    QMimeData urls;
    urls.setUrls({QUrl::fromLocalFile("/tmp/file")});
    urls.setText("file:///tmp/file");
    EXPECT_EQ(0, m_model.paste(&urls, 0));
    EXPECT_EQ(0, m_model.paste(nullptr, 0));
    EXPECT_EQ(0, m_model.paste(make_text(" \n\n").get(), 0));
    EXPECT_FALSE(m_model.canDropMimeData(&urls, Qt::CopyAction, 0, 0, QModelIndex()));
    EXPECT_FALSE(m_model.canDropMimeData(nullptr, Qt::CopyAction, 0, 0, QModelIndex()));
    EXPECT_FALSE(m_model.canDropMimeData(make_text("a").get(), Qt::MoveAction, 0, 0, QModelIndex()));
    EXPECT_FALSE(m_model.is_modified());
}

TEST_F(host_assignment_model, more_than_the_largest_paste_is_left_out_and_counted)
{
    int left_out = 0;
    const QString text = QStringLiteral("top/u\n").repeated(ASSIGNMENT_MODEL::LARGEST_PASTE + 7);
    EXPECT_EQ(100000, m_model.paste(make_text(text).get(), 0, &left_out));
    EXPECT_EQ(7, left_out);
    m_model.paste(make_text("a").get(), 0, &left_out);
    EXPECT_EQ(0, left_out);
}

TEST_F(host_assignment_model, what_is_dropped_on_a_row_comes_before_it)
{
    fill();
    EXPECT_TRUE(m_model.dropMimeData(make_text("new").get(), Qt::CopyAction, -1, -1, m_model.index(1, 0)));
    EXPECT_EQ("new|||on", rows().at(1));
    EXPECT_TRUE(m_model.dropMimeData(make_text("last").get(), Qt::CopyAction, -1, -1, QModelIndex()));
    EXPECT_EQ("last|||on", rows().constLast());
    EXPECT_FALSE(m_model.dropMimeData(make_text("").get(), Qt::CopyAction, 0, 0, QModelIndex()));
    EXPECT_EQ((QStringList{ASSIGNMENT_FORMAT, INSTANCE_FORMAT, "text/plain"}), m_model.mimeTypes());
}

// ---- The file -------------------------------------------------------------------------------------------------------

TEST_F(host_assignment_file, has_a_line_for_each_assignment)
{
    TOLV_ASSIGNMENT whole = make("top/a", "NOTE", "tab\there \\ and\r\nthere");
    whole.m_field_7 = "seven";
    const QString file = write("");
    EXPECT_EQ("",
              assignment_file_write(file, make_list({whole, make("\xc3\xbc", "KEEP", "1", false), TOLV_ASSIGNMENT()})));
    QFile written(file);
    ASSERT_TRUE(written.open(QIODevice::ReadOnly));
    EXPECT_EQ(QByteArray("norvane-constraints 1\n"
                         "on\ttop/a\tNOTE\ttab\\there \\\\ and\\r\\nthere\t\t\t\tseven\n"
                         "off\t\xc3\xbc\tKEEP\t1\n"
                         "on\n"),
              written.readAll());
}

TEST_F(host_assignment_file, comes_back_as_it_was_written)
{
    TOLV_ASSIGNMENT whole = make("top/a", "NOTE", "tab\there \\t and\r\nthere");
    whole.m_field_4 = "4";
    whole.m_field_5 = "5";
    whole.m_field_6 = " 6 ";
    whole.m_field_7 = "7\\";
    const QString file = write("");
    ASSERT_EQ("", assignment_file_write(file, make_list({whole, make("b", "", "1", false)})));
    TOLV_ASSIGNMENT_LIST list;
    ASSERT_EQ("", assignment_file_read(file, &list));
    EXPECT_EQ(texts_of(make_list({whole, make("b", "", "1", false)})), texts_of(list));
    const TOLV_ASSIGNMENT& first = list.get_list().constFirst();
    EXPECT_EQ((QStringList{"4", "5", " 6 ", "7\\"}),
              (QStringList{first.m_field_4, first.m_field_5, first.m_field_6, first.m_field_7}));
}

TEST_F(host_assignment_file, empty_lines_and_line_ends_of_other_systems_count_for_nothing)
{
    const QString file = write("norvane-constraints 1\r\n\r\non\ta\tKEEP\r\n\noff\tb");
    TOLV_ASSIGNMENT_LIST list;
    EXPECT_EQ("", assignment_file_read(file, &list));
    EXPECT_EQ((QStringList{"a|KEEP||on", "b|||off"}), texts_of(list));
}

TEST_F(host_assignment_file, what_is_wrong_is_told_with_its_line)
{
    const QByteArray head = "norvane-constraints 1\n";
    const QString first = "1: a file of constraints begins with the line \"norvane-constraints 1\"";
    EXPECT_EQ(first, error_of(""));
    EXPECT_EQ(first, error_of("norvane-constraints 2\non\ta\n"));
    EXPECT_EQ(first, error_of("{\"modules\":{}}"));
    EXPECT_EQ("3: a line begins with \"on\" or \"off\", and a tab", error_of(head + "on\ta\nyes\tb\n"));
    EXPECT_EQ("2: a line begins with \"on\" or \"off\", and a tab", error_of(head + "on a b\n"));
    EXPECT_EQ("2: there are 8 texts instead of at most 7", error_of(head + "on\t1\t2\t3\t4\t5\t6\t7\t8\n"));
    EXPECT_EQ("2: a backslash is followed by another sign than \\, t, n or r", error_of(head + "on\ta\\x\n"));
    EXPECT_EQ("4: a backslash is followed by another sign than \\, t, n or r", error_of(head + "on\ta\n\non\ta\\"));
    EXPECT_EQ("2: the text is not in UTF-8", error_of(head + "on\t\xff\xfe\n"));
    EXPECT_EQ("2: the text is not in UTF-8", error_of(head + "on\t\xc3"));
    EXPECT_EQ("", error_of(head));
}

TEST_F(host_assignment_file, a_file_that_cannot_be_opened_is_told_by_its_name)
{
    TOLV_ASSIGNMENT_LIST list;
    EXPECT_EQ("/nowhere/a.constraints: No such file or directory",
              assignment_file_read("/nowhere/a.constraints", &list));
    EXPECT_TRUE(assignment_file_write("/nowhere/a.constraints", list).startsWith("/nowhere/a.constraints: "));
    EXPECT_FALSE(QFileInfo::exists("/nowhere/a.constraints"));
}

TEST_F(host_assignment_file, a_file_that_is_too_large_is_not_read)
{
    const QString file = write("norvane-constraints 1\n");
    ASSERT_TRUE(QFile::resize(file, 64 * 1024 * 1024 + 1)); // a hole, no bytes on the disk
    TOLV_ASSIGNMENT_LIST list;
    EXPECT_EQ(file + ": the file is larger than 64 MB", assignment_file_read(file, &list));
}
