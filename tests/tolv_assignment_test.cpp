#include "gui_test.h"

#include "tolv_assignment.h"

#include <QMetaType>

using TOLV_ASSIGNMENT_TEST = TOLV_TEST;

namespace
{
TOLV_ASSIGNMENT make_assignment()
{
    TOLV_ASSIGNMENT assignment;
    assignment.m_field_1 = QStringLiteral("1");
    assignment.m_field_2 = QStringLiteral("2");
    assignment.m_field_3 = QStringLiteral("3");
    assignment.m_field_4 = QStringLiteral("4");
    assignment.m_flag = false;
    assignment.m_field_5 = QStringLiteral("5");
    assignment.m_field_6 = QStringLiteral("6");
    assignment.m_field_7 = QStringLiteral("7");
    return assignment;
}

QStringList get_fields(const TOLV_ASSIGNMENT& assignment)
{
    return {assignment.m_field_1, assignment.m_field_2, assignment.m_field_3, assignment.m_field_4,
            assignment.m_field_5, assignment.m_field_6, assignment.m_field_7};
}

QStringList get_made_fields()
{
    return get_fields(make_assignment());
}

void expect_new(const TOLV_ASSIGNMENT& assignment)
{
    EXPECT_TRUE(assignment.m_flag);
    const QStringList fields = get_fields(assignment);
    for (const QString& field : fields)
        EXPECT_TRUE(field.isNull());
}
} // namespace

TEST_F(TOLV_ASSIGNMENT_TEST, a_new_record_has_null_texts_and_the_flag_set)
{
    const TOLV_ASSIGNMENT assignment;
    expect_new(assignment);
    EXPECT_FALSE(assignment.m_value.isValid());
}

TEST_F(TOLV_ASSIGNMENT_TEST, a_copy_has_texts_and_flag_but_no_value)
{
    TOLV_ASSIGNMENT assignment = make_assignment();
    assignment.m_value = 5;
    const TOLV_ASSIGNMENT copy(assignment);
    EXPECT_EQ(QStringList({QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"), QStringLiteral("4"),
                           QStringLiteral("5"), QStringLiteral("6"), QStringLiteral("7")}),
              get_fields(copy));
    EXPECT_FALSE(copy.m_flag);
    EXPECT_FALSE(copy.m_value.isValid());
    EXPECT_EQ(QVariant(5), assignment.m_value);
}

TEST_F(TOLV_ASSIGNMENT_TEST, assigning_takes_texts_and_flag_and_leaves_no_value)
{
    TOLV_ASSIGNMENT source = make_assignment();
    source.m_value = 5;
    TOLV_ASSIGNMENT target;
    target.m_value = 6;
    target = source;
    EXPECT_EQ(get_made_fields(), get_fields(target));
    EXPECT_FALSE(target.m_flag);
    EXPECT_FALSE(target.m_value.isValid());
}

TEST_F(TOLV_ASSIGNMENT_TEST, assigning_a_record_to_itself_changes_nothing)
{
    TOLV_ASSIGNMENT assignment = make_assignment();
    assignment.m_value = 5;
    const TOLV_ASSIGNMENT& same = assignment;
    assignment = same;
    EXPECT_EQ(get_made_fields(), get_fields(assignment));
    EXPECT_EQ(QVariant(5), assignment.m_value);
}

TEST_F(TOLV_ASSIGNMENT_TEST, reset_leaves_the_value_alone)
{
    TOLV_ASSIGNMENT assignment = make_assignment();
    assignment.m_value = 5;
    assignment.reset();
    expect_new(assignment);
    EXPECT_EQ(QVariant(5), assignment.m_value);
}

TEST_F(TOLV_ASSIGNMENT_TEST, a_list_keeps_order_and_duplicates)
{
    TOLV_ASSIGNMENT_LIST list;
    EXPECT_TRUE(list.get_list().isEmpty());
    EXPECT_FALSE(list.m_value.isValid());
    TOLV_ASSIGNMENT assignment;
    for (const char* name : {"b", "a", "c", "a"})
    {
        assignment.m_field_1 = QString::fromLatin1(name);
        list.insert(assignment);
    }
    ASSERT_EQ(4, list.get_list().size());
    EXPECT_EQ(QStringLiteral("b"), list.get_list().at(0).m_field_1);
    EXPECT_EQ(QStringLiteral("a"), list.get_list().at(1).m_field_1);
    EXPECT_EQ(QStringLiteral("c"), list.get_list().at(2).m_field_1);
    EXPECT_EQ(QStringLiteral("a"), list.get_list().at(3).m_field_1);
    list.clear();
    EXPECT_TRUE(list.get_list().isEmpty());
}

TEST_F(TOLV_ASSIGNMENT_TEST, a_list_is_a_copy_of_its_own)
{
    TOLV_ASSIGNMENT_LIST list;
    list.insert(make_assignment());
    TOLV_ASSIGNMENT_LIST copy(list);
    copy.insert(TOLV_ASSIGNMENT());
    EXPECT_EQ(1, list.get_list().size());
    ASSERT_EQ(2, copy.get_list().size());
    EXPECT_EQ(get_made_fields(), get_fields(copy.get_list().at(0)));
}

TEST_F(TOLV_ASSIGNMENT_TEST, a_list_is_a_metatype_under_its_own_name)
{
    const int type = qMetaTypeId<TOLV_ASSIGNMENT_LIST>();
    EXPECT_STREQ("TOLV_ASSIGNMENT_LIST", QMetaType::typeName(type));
    EXPECT_EQ(type, QMetaType::type("TOLV_ASSIGNMENT_LIST"));

    // Also when it is the first type of all that a process registers.
    const QVariant made(type, nullptr);
    EXPECT_TRUE(made.value<TOLV_ASSIGNMENT_LIST>().get_list().isEmpty());

    TOLV_ASSIGNMENT_LIST list;
    list.insert(make_assignment());
    const QVariant variant = QVariant::fromValue(list);
    EXPECT_EQ(type, variant.userType());
    ASSERT_EQ(1, variant.value<TOLV_ASSIGNMENT_LIST>().get_list().size());
}
