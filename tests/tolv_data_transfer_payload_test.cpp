// The bytes of the private payloads, and what becomes of damaged ones. The largest request to malloc() and realloc() is
// watched, so that a length that lies can be seen.

#include "gui_test.h"

#include "tolv_assignment.h"
#include "tolv_data_transfer_manager.h"
#include "tolv_instance_name.h"

#include <QMimeData>

#include <algorithm>
#include <cstdlib>
#include <random>

#if !defined(__SANITIZE_ADDRESS__)

static thread_local std::size_t s_largest_request = 0;

extern "C"
{
    void* __libc_malloc(std::size_t size);                // NOLINT: the C library's own names
    void* __libc_realloc(void* memory, std::size_t size); // NOLINT
    void* malloc(std::size_t size)
    {
        s_largest_request = std::max(s_largest_request, size);
        return __libc_malloc(size);
    }
    void* realloc(void* memory, std::size_t size)
    {
        s_largest_request = std::max(s_largest_request, size);
        return __libc_realloc(memory, size);
    }
}

#endif

namespace
{
using MANAGER = TOLV_DATA_TRANSFER_MANAGER;

/// What Qt makes room for before it has read anything of a text, however long that says it is.
[[maybe_unused]] constexpr std::size_t QT_FIRST_STEP = 4200000;

const char* const STRING_LIST = "application/x-norvane_string_list_data";
const char* const ID_LIST = "application/x-norvane_id_list_data";
const char* const REGION_ID_LIST = "application/x-norvane_region_id_list_data";
const char* const ASSIGNMENT_LIST = "application/x-norvane_assignment_list_data";
const char* const INSTANCE_NAME_LIST = "application/x-norvane_instance_name_list_data";

class TOLV_DATA_TRANSFER_PAYLOAD_TEST : public PLAIN_GUI_TEST
{
protected:
    void SetUp() override
    {
        PLAIN_GUI_TEST::SetUp();
        manager().create_mime_data();
    }

    void TearDown() override
    {
        manager().clear_mime_data();
        PLAIN_GUI_TEST::TearDown();
    }

    static MANAGER& manager()
    {
        return *MANAGER::get_instance();
    }

    /// The payload that has been added, in hexadecimal.
    static QByteArray payload(const char* format)
    {
        return manager().get_mime_data()->data(QString::fromLatin1(format)).toHex();
    }

    /// Data with one payload, written in hexadecimal (blanks for the eye).
    static void set_payload(const char* format, const QByteArray& hex)
    {
        set_bytes(format, QByteArray::fromHex(hex));
    }
    static void set_bytes(const char* format, const QByteArray& bytes)
    {
        manager().get_mime_data()->clear();
        manager().get_mime_data()->setData(QString::fromLatin1(format), bytes);
    }

    static QStringList read_texts()
    {
        return manager().get_string_list_transfer_data(manager().get_mime_data()).toStringList();
    }
    static QList<QVariant> read_ids()
    {
        return manager().get_id_list_transfer_data(manager().get_mime_data()).toList();
    }
    static QList<TOLV_INSTANCE_NAME> read_names()
    {
        return manager()
            .get_instance_name_list_transfer_data(manager().get_mime_data())
            .value<TOLV_INSTANCE_NAME_LIST>()
            .get_list();
    }
    static QList<TOLV_ASSIGNMENT> read_assignments()
    {
        return manager()
            .get_assignment_list_transfer_data(manager().get_mime_data())
            .value<TOLV_ASSIGNMENT_LIST>()
            .get_list();
    }

    /// Reads the bytes as each of the five payloads. Each record takes four bytes or what is left, and no request to
    /// the heap goes beyond what the payload can justify.
    static void expect_bounded(const QByteArray& bytes)
    {
        const int most = (bytes.size() + 3) / 4;
        for (const char* format : {STRING_LIST, ID_LIST, REGION_ID_LIST, ASSIGNMENT_LIST, INSTANCE_NAME_LIST})
        {
            set_bytes(format, bytes);
#if !defined(__SANITIZE_ADDRESS__)
            s_largest_request = 0;
#endif
            const QList<QVariant> all = manager().get_all_transfer_data(manager().get_mime_data());
#if !defined(__SANITIZE_ADDRESS__)
            EXPECT_GE(static_cast<std::size_t>(bytes.size()) * 8 + QT_FIRST_STEP, s_largest_request) << format;
#endif
            ASSERT_EQ(1, all.size()) << format;
            EXPECT_GE(most, count_records(all.at(0))) << format;
        }
    }

private:
    static int count_records(const QVariant& found)
    {
        if (found.userType() == qMetaTypeId<TOLV_ASSIGNMENT_LIST>())
            return found.value<TOLV_ASSIGNMENT_LIST>().get_list().size();
        if (found.userType() == qMetaTypeId<TOLV_INSTANCE_NAME_LIST>())
            return found.value<TOLV_INSTANCE_NAME_LIST>().get_list().size();
        return found.toList().size();
    }
};

/// Without the blanks.
QByteArray hex(const char* text)
{
    return QByteArray::fromHex(text).toHex();
}

const char* const FULL_ASSIGNMENT = "00000002 0031"
                                    "00000004 0032 20ac"
                                    "ffffffff"
                                    "00000000"
                                    "00"
                                    "00000002 0035"
                                    "00000002 0036"
                                    "00000002 0037";

const char* const FULL_NAME = "00000004 0061 0062"
                              "00000001"
                              "01"
                              "00000005"
                              "0000001f"
                              "00000000"
                              "ffffffff"
                              "00000007";
} // namespace

// ---- Bytes ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DATA_TRANSFER_PAYLOAD_TEST, texts_are_counted_and_big_endian)
{
    manager().add_text_format(
        QStringList({QStringLiteral("Az"), QString(), QString(QLatin1String("")), QString(0x20ac)}));
    const char* const bytes = "00000004 0041 007a ffffffff 00000000 00000002 20ac";
    EXPECT_EQ(hex(bytes), payload(STRING_LIST));

    set_payload(STRING_LIST, bytes);
    const QStringList texts = read_texts();
    ASSERT_EQ(4, texts.size());
    EXPECT_EQ(QStringLiteral("Az"), texts.at(0));
    EXPECT_TRUE(texts.at(1).isNull());
    EXPECT_TRUE(texts.at(2).isEmpty() && !texts.at(2).isNull());
    EXPECT_EQ(QString(0x20ac), texts.at(3));
}

TEST_F(TOLV_DATA_TRANSFER_PAYLOAD_TEST, identifiers_are_32_bits)
{
    manager().add_id_format({1, 0xFFFFFFFE, 0x12345678});
    const char* const bytes = "00000001 fffffffe 12345678";
    EXPECT_EQ(hex(bytes), payload(ID_LIST));

    set_payload(ID_LIST, bytes);
    EXPECT_EQ(QList<QVariant>({QVariant(1U), QVariant(0xFFFFFFFEU), QVariant(0x12345678U)}), read_ids());
}

TEST_F(TOLV_DATA_TRANSFER_PAYLOAD_TEST, regions_are_32_bits)
{
    manager().add_region_id_format({0x80000000});
    EXPECT_EQ(hex("80000000"), payload(REGION_ID_LIST));
    EXPECT_FALSE(manager().get_mime_data()->hasFormat(QString::fromLatin1(ID_LIST)));

    set_payload(REGION_ID_LIST, "80000000 00000002");
    EXPECT_EQ(QVariant(QList<QVariant>({QVariant(0x80000000U), QVariant(2U)})),
              manager().get_region_id_list_transfer_data(manager().get_mime_data()));
}

TEST_F(TOLV_DATA_TRANSFER_PAYLOAD_TEST, an_assignment_is_four_texts_the_flag_and_three_texts)
{
    TOLV_ASSIGNMENT assignment;
    assignment.m_value = 5;
    assignment.m_field_1 = QStringLiteral("1");
    assignment.m_field_2 = QStringLiteral("2") + QChar(0x20ac);
    assignment.m_field_4 = QString(QLatin1String(""));
    assignment.m_flag = false;
    assignment.m_field_5 = QStringLiteral("5");
    assignment.m_field_6 = QStringLiteral("6");
    assignment.m_field_7 = QStringLiteral("7");
    TOLV_ASSIGNMENT_LIST list;
    list.insert(assignment);
    list.insert(TOLV_ASSIGNMENT());
    list.m_value = 6;
    manager().add_assignment_list_format(list);
    const QByteArray bytes = QByteArray(FULL_ASSIGNMENT) + "ffffffff ffffffff ffffffff ffffffff"
                                                           "01"
                                                           "ffffffff ffffffff ffffffff";
    EXPECT_EQ(hex(bytes.constData()), payload(ASSIGNMENT_LIST));

    set_payload(ASSIGNMENT_LIST, bytes);
    const QList<TOLV_ASSIGNMENT> read = read_assignments();
    ASSERT_EQ(2, read.size());
    EXPECT_EQ(QStringLiteral("1"), read.at(0).m_field_1);
    EXPECT_EQ(assignment.m_field_2, read.at(0).m_field_2);
    EXPECT_TRUE(read.at(0).m_field_3.isNull());
    EXPECT_TRUE(read.at(0).m_field_4.isEmpty() && !read.at(0).m_field_4.isNull());
    EXPECT_FALSE(read.at(0).m_flag);
    EXPECT_EQ(QStringLiteral("5"), read.at(0).m_field_5);
    EXPECT_EQ(QStringLiteral("6"), read.at(0).m_field_6);
    EXPECT_EQ(QStringLiteral("7"), read.at(0).m_field_7);
    EXPECT_TRUE(read.at(1).m_flag);
    EXPECT_TRUE(read.at(1).m_field_7.isNull());
}

TEST_F(TOLV_DATA_TRANSFER_PAYLOAD_TEST, an_instance_name_is_its_name_and_seven_fields)
{
    TOLV_INSTANCE_NAME_LIST list;
    list.insert(TOLV_INSTANCE_NAME("ab", TOLV_INSTANCE_NAME_TYPE_ARRAY, true, 5, 31, 0, 0xFFFFFFFF, 7, 8, "x", "y"));
    list.insert(TOLV_INSTANCE_NAME());
    list.m_value = 6;
    manager().add_instance_name_format(list);
    const QByteArray bytes =
        QByteArray(FULL_NAME) + "00000000 00000003 00 00000000 00000000 00000000 00000000 00000000";
    EXPECT_EQ(hex(bytes.constData()), payload(INSTANCE_NAME_LIST));

    set_payload(INSTANCE_NAME_LIST, bytes);
    const QList<TOLV_INSTANCE_NAME> read = read_names();
    ASSERT_EQ(2, read.size());
    EXPECT_EQ("ab", read.at(0).m_name);
    EXPECT_EQ(TOLV_INSTANCE_NAME_TYPE_ARRAY, read.at(0).m_type);
    EXPECT_TRUE(read.at(0).m_flag);
    EXPECT_EQ(5U, read.at(0).m_number);
    EXPECT_EQ(31U, read.at(0).m_first_dimension_low);
    EXPECT_EQ(0U, read.at(0).m_first_dimension_high);
    EXPECT_EQ(0xFFFFFFFFU, read.at(0).m_second_dimension_low);
    EXPECT_EQ(7U, read.at(0).m_second_dimension_high);
    EXPECT_EQ("", read.at(1).m_name);
    EXPECT_EQ(3, read.at(1).m_type);
}

TEST_F(TOLV_DATA_TRANSFER_PAYLOAD_TEST, a_type_without_a_name_travels)
{
    TOLV_INSTANCE_NAME name;
    name.set_dimension(static_cast<TOLV_INSTANCE_NAME_TYPE>(-2), 0, 0, 0, 0);
    TOLV_INSTANCE_NAME_LIST list;
    list.insert(name);
    manager().add_instance_name_format(list);
    EXPECT_EQ(hex("00000000 fffffffe 00 00000000 00000000 00000000 00000000 00000000"), payload(INSTANCE_NAME_LIST));
    ASSERT_EQ(1, read_names().size());
    EXPECT_EQ(-2, read_names().at(0).m_type);
}

TEST_F(TOLV_DATA_TRANSFER_PAYLOAD_TEST, names_are_written_byte_by_byte_and_read_in_the_local_encoding)
{
    TOLV_INSTANCE_NAME name;
    name.m_name = "\xc3\xbc"; // a u with two dots in UTF-8
    TOLV_INSTANCE_NAME_LIST list;
    list.insert(name);
    manager().add_instance_name_format(list);
    EXPECT_EQ(hex("00000004 00c3 00bc 00000003 00 00000000 00000000 00000000 00000000 00000000"),
              payload(INSTANCE_NAME_LIST));
    ASSERT_EQ(1, read_names().size());
    EXPECT_EQ(QString::fromLatin1("\xc3\xbc").toLocal8Bit().toStdString(), read_names().at(0).m_name);
}

TEST_F(TOLV_DATA_TRANSFER_PAYLOAD_TEST, an_empty_list_is_no_bytes_under_its_format)
{
    manager().add_text_format(QStringList());
    manager().add_id_format({});
    manager().add_region_id_format({});
    manager().add_assignment_list_format(TOLV_ASSIGNMENT_LIST());
    manager().add_instance_name_format(TOLV_INSTANCE_NAME_LIST());
    for (const char* format : {STRING_LIST, ID_LIST, REGION_ID_LIST, ASSIGNMENT_LIST, INSTANCE_NAME_LIST})
    {
        EXPECT_TRUE(manager().get_mime_data()->hasFormat(QString::fromLatin1(format))) << format;
        EXPECT_EQ(QByteArray(), payload(format)) << format;
    }
}

// ---- Damage ---------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DATA_TRANSFER_PAYLOAD_TEST, a_payload_that_ends_within_a_number_gives_a_zero_for_it)
{
    set_payload(ID_LIST, "00000001 ffff");
    EXPECT_EQ(QList<QVariant>({QVariant(1U), QVariant(0U)}), read_ids());
}

TEST_F(TOLV_DATA_TRANSFER_PAYLOAD_TEST, a_payload_that_ends_within_a_text_gives_an_empty_one_for_it)
{
    set_payload(STRING_LIST, "00000002 0041 00000008 0041 0042");
    const QStringList texts = read_texts();
    ASSERT_EQ(2, texts.size());
    EXPECT_EQ(QStringLiteral("A"), texts.at(0));
    EXPECT_TRUE(texts.at(1).isEmpty());
}

TEST_F(TOLV_DATA_TRANSFER_PAYLOAD_TEST, a_cut_instance_name_is_read_as_far_as_it_goes)
{
    const QByteArray bytes = QByteArray::fromHex(FULL_NAME);
    for (int size = 1; size < bytes.size(); ++size)
    {
        SCOPED_TRACE(size);
        set_bytes(INSTANCE_NAME_LIST, bytes + bytes.left(size));
        const QList<TOLV_INSTANCE_NAME> read = read_names();
        ASSERT_EQ(2, read.size());
        EXPECT_EQ("ab", read.at(0).m_name);
        EXPECT_EQ(7U, read.at(0).m_second_dimension_high);
        EXPECT_EQ(size >= 8 ? "ab" : "", read.at(1).m_name);
        EXPECT_EQ(size >= 12 ? 1 : 0, read.at(1).m_type);
        EXPECT_EQ(size >= 13, read.at(1).m_flag);
        EXPECT_EQ(size >= 17 ? 5U : 0U, read.at(1).m_number);
        EXPECT_EQ(size >= 21 ? 31U : 0U, read.at(1).m_first_dimension_low);
        EXPECT_EQ(size >= 29 ? 0xFFFFFFFFU : 0U, read.at(1).m_second_dimension_low);
        EXPECT_EQ(0U, read.at(1).m_second_dimension_high);
    }
}

TEST_F(TOLV_DATA_TRANSFER_PAYLOAD_TEST, a_cut_assignment_is_read_as_far_as_it_goes)
{
    const QByteArray bytes = QByteArray::fromHex(FULL_ASSIGNMENT);
    for (int size = 1; size < bytes.size(); ++size)
    {
        SCOPED_TRACE(size);
        set_bytes(ASSIGNMENT_LIST, bytes + bytes.left(size));
        const QList<TOLV_ASSIGNMENT> read = read_assignments();
        ASSERT_EQ(2, read.size());
        EXPECT_EQ(QStringLiteral("7"), read.at(0).m_field_7);
        EXPECT_EQ(size >= 6 ? QStringLiteral("1") : QString(), read.at(1).m_field_1);
        EXPECT_EQ(size >= 29 ? QStringLiteral("5") : QString(), read.at(1).m_field_5);
        EXPECT_EQ(QString(), read.at(1).m_field_7);
    }
}

TEST_F(TOLV_DATA_TRANSFER_PAYLOAD_TEST, a_length_that_lies_takes_no_memory)
{
    for (const char* length : {"7fffffff", "7ffffffe", "80000000", "fffffffe", "fffffffd", "40000000", "00800000"})
    {
        SCOPED_TRACE(length);
        expect_bounded(QByteArray::fromHex(length));
        expect_bounded(QByteArray::fromHex(length) + QByteArray(1000, 'x'));
        expect_bounded(QByteArray::fromHex(QByteArray(length).repeated(1000)));
        expect_bounded(QByteArray::fromHex(FULL_NAME) + QByteArray::fromHex(length));
    }
    set_payload(STRING_LIST, "00000002 0041 7ffffffe 0042");
    EXPECT_EQ(QStringList({QStringLiteral("A"), QString()}), read_texts());
}

TEST_F(TOLV_DATA_TRANSFER_PAYLOAD_TEST, noise_gives_no_more_records_than_it_has_room_for)
{
    std::mt19937 engine(1);
    for (int round = 0; round < 300; ++round)
    {
        QByteArray noise(static_cast<int>(engine() % 500), Qt::Uninitialized);
        // Every second round is full of small numbers, which pass for lengths more often.
        for (char& byte : noise)
            byte = static_cast<char>(round % 2 == 0 ? engine() : engine() % 16 == 0 ? engine() % 4 : 0);
        expect_bounded(noise);
    }
}

TEST_F(TOLV_DATA_TRANSFER_PAYLOAD_TEST, a_large_payload_is_read_whole)
{
    QByteArray bytes;
    const QByteArray name = QByteArray::fromHex(FULL_NAME);
    for (int i = 0; i < 100000; ++i)
        bytes += name;
    set_bytes(INSTANCE_NAME_LIST, bytes);
    EXPECT_EQ(100000, read_names().size());
    expect_bounded(QByteArray(4000000, '\0'));
}
