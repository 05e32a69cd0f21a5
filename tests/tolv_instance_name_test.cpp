#include "gui_test.h"

#include "tolv_instance_name.h"

#include <QMetaType>

using TOLV_INSTANCE_NAME_TEST = TOLV_TEST;

namespace
{
TOLV_INSTANCE_NAME make_name()
{
    return TOLV_INSTANCE_NAME("top|fifo", TOLV_INSTANCE_NAME_TYPE_ARRAY, true, 1, 2, 3, 4, 5, 6, "one", "two");
}

void expect_dimensions(const TOLV_INSTANCE_NAME& name, unsigned int first_low, unsigned int first_high,
                       unsigned int second_low, unsigned int second_high)
{
    unsigned int low = 99;
    unsigned int high = 99;
    name.get_first_dimension(low, high);
    EXPECT_EQ(first_low, low);
    EXPECT_EQ(first_high, high);
    name.get_second_dimension(low, high);
    EXPECT_EQ(second_low, low);
    EXPECT_EQ(second_high, high);
}

void expect_as_made(const TOLV_INSTANCE_NAME& name)
{
    EXPECT_EQ("top|fifo", name.m_name);
    EXPECT_EQ(1, name.m_type);
    EXPECT_TRUE(name.m_flag);
    EXPECT_EQ(1U, name.m_number);
    expect_dimensions(name, 2, 3, 4, 5);
    EXPECT_EQ(6U, name.m_extra_number);
    EXPECT_EQ("one", name.m_extra_string_1);
    EXPECT_EQ("two", name.m_extra_string_2);
}

void expect_new(const TOLV_INSTANCE_NAME& name)
{
    EXPECT_FALSE(name.m_value.isValid());
    EXPECT_EQ(3, name.m_type);
    EXPECT_EQ("", name.m_name);
    EXPECT_EQ(0U, name.m_number);
    expect_dimensions(name, 0, 0, 0, 0);
    EXPECT_FALSE(name.m_flag);
    EXPECT_EQ(0U, name.m_extra_number);
    EXPECT_EQ("", name.m_extra_string_1);
    EXPECT_EQ("", name.m_extra_string_2);
}
} // namespace

TEST_F(TOLV_INSTANCE_NAME_TEST, a_new_record_is_plain_and_empty)
{
    expect_new(TOLV_INSTANCE_NAME());
    EXPECT_EQ(3, TOLV_INSTANCE_NAME_TYPE_PLAIN);
}

TEST_F(TOLV_INSTANCE_NAME_TEST, the_full_constructor_fills_every_field)
{
    expect_as_made(make_name());
    EXPECT_FALSE(make_name().m_value.isValid());
}

TEST_F(TOLV_INSTANCE_NAME_TEST, a_copy_has_all_but_the_value)
{
    TOLV_INSTANCE_NAME name = make_name();
    name.m_value = 5;
    const TOLV_INSTANCE_NAME copy(name);
    expect_as_made(copy);
    EXPECT_FALSE(copy.m_value.isValid());
    EXPECT_EQ(QVariant(5), name.m_value);
}

TEST_F(TOLV_INSTANCE_NAME_TEST, assigning_takes_all_but_the_value_and_leaves_none)
{
    TOLV_INSTANCE_NAME source = make_name();
    source.m_value = 5;
    TOLV_INSTANCE_NAME target;
    target.m_value = 6;
    target = source;
    expect_as_made(target);
    EXPECT_FALSE(target.m_value.isValid());
}

TEST_F(TOLV_INSTANCE_NAME_TEST, assigning_a_record_to_itself_changes_nothing)
{
    TOLV_INSTANCE_NAME name = make_name();
    name.m_value = 5;
    const TOLV_INSTANCE_NAME& same = name;
    name = same;
    expect_as_made(name);
    EXPECT_EQ(QVariant(5), name.m_value);
}

TEST_F(TOLV_INSTANCE_NAME_TEST, a_cleared_record_equals_a_new_one)
{
    TOLV_INSTANCE_NAME name = make_name();
    name.m_value = 5;
    name.clear();
    expect_new(name);
}

TEST_F(TOLV_INSTANCE_NAME_TEST, set_dimension_sets_type_and_ranges_and_nothing_else)
{
    TOLV_INSTANCE_NAME name = make_name();
    name.set_dimension(TOLV_INSTANCE_NAME_TYPE_TWO_DIMENSION_ARRAY, 31, 0, 0xFFFFFFFF, 7);
    EXPECT_EQ(TOLV_INSTANCE_NAME_TYPE_TWO_DIMENSION_ARRAY, name.m_type);
    expect_dimensions(name, 31, 0, 0xFFFFFFFF, 7);
    name.set_dimension(TOLV_INSTANCE_NAME_TYPE_ARRAY, 2, 3, 4, 5);
    expect_as_made(name);
}

TEST_F(TOLV_INSTANCE_NAME_TEST, a_type_without_a_name_is_kept)
{
    TOLV_INSTANCE_NAME name;
    name.set_dimension(static_cast<TOLV_INSTANCE_NAME_TYPE>(-7), 0, 0, 0, 0);
    EXPECT_EQ(-7, TOLV_INSTANCE_NAME(name).m_type);
}

TEST_F(TOLV_INSTANCE_NAME_TEST, a_list_keeps_order_and_duplicates)
{
    TOLV_INSTANCE_NAME_LIST list;
    EXPECT_TRUE(list.get_list().isEmpty());
    EXPECT_FALSE(list.m_value.isValid());
    TOLV_INSTANCE_NAME name;
    for (const char* text : {"b", "a", "c", "a"})
    {
        name.m_name = text;
        list.insert(name);
    }
    ASSERT_EQ(4, list.get_list().size());
    EXPECT_EQ("b", list.get_list().at(0).m_name);
    EXPECT_EQ("a", list.get_list().at(1).m_name);
    EXPECT_EQ("c", list.get_list().at(2).m_name);
    EXPECT_EQ("a", list.get_list().at(3).m_name);
    list.clear();
    EXPECT_TRUE(list.get_list().isEmpty());
}

TEST_F(TOLV_INSTANCE_NAME_TEST, a_list_is_a_metatype_under_its_own_name)
{
    const int type = qMetaTypeId<TOLV_INSTANCE_NAME_LIST>();
    EXPECT_STREQ("TOLV_INSTANCE_NAME_LIST", QMetaType::typeName(type));
    EXPECT_EQ(type, QMetaType::type("TOLV_INSTANCE_NAME_LIST"));

    // Also when it is the first type of all that a process registers.
    const QVariant made(type, nullptr);
    EXPECT_TRUE(made.value<TOLV_INSTANCE_NAME_LIST>().get_list().isEmpty());

    TOLV_INSTANCE_NAME_LIST list;
    list.insert(make_name());
    const QVariant variant = QVariant::fromValue(list);
    EXPECT_EQ(type, variant.userType());
    const auto read = variant.value<TOLV_INSTANCE_NAME_LIST>();
    ASSERT_EQ(1, read.get_list().size());
    expect_as_made(read.get_list().at(0));
}
