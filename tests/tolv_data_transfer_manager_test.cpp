#include "gui_driver.h"
#include "gui_test.h"
#include "internal_error_trap.h"

#include "tolv_assignment.h"
#include "tolv_data_transfer_manager.h"
#include "tolv_instance_name.h"

#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>

namespace
{
using MANAGER = TOLV_DATA_TRANSFER_MANAGER;
using ID_LIST = QList<unsigned int>;

/// The manager, with a new object under construction and an empty clipboard.
class TOLV_DATA_TRANSFER_MANAGER_TEST : public PLAIN_GUI_TEST
{
protected:
    void SetUp() override
    {
        PLAIN_GUI_TEST::SetUp();
        QGuiApplication::clipboard()->clear();
        manager().create_mime_data();
    }

    void TearDown() override
    {
        manager().clear_mime_data();
        QGuiApplication::clipboard()->clear();
        PLAIN_GUI_TEST::TearDown();
    }

    static MANAGER& manager()
    {
        return *MANAGER::get_instance();
    }

    static const QMimeData* made()
    {
        return manager().get_mime_data();
    }
};

QStringList make_texts()
{
    return {QStringLiteral("clk"), QStringLiteral("rst n")};
}

QImage make_image()
{
    QImage image(2, 1, QImage::Format_ARGB32);
    image.fill(Qt::red);
    return image;
}

TOLV_ASSIGNMENT_LIST make_assignments()
{
    TOLV_ASSIGNMENT_LIST list;
    for (const char* name : {"b", "a", "c", "a"})
    {
        TOLV_ASSIGNMENT assignment;
        assignment.m_value = 5;
        assignment.m_field_1 = QString::fromLatin1(name);
        assignment.m_field_2 = QStringLiteral("two");
        assignment.m_field_3 = QStringLiteral("three");
        assignment.m_field_4 = QStringLiteral("four");
        assignment.m_flag = list.get_list().size() == 1;
        assignment.m_field_5 = QStringLiteral("five");
        assignment.m_field_6 = QStringLiteral("six");
        assignment.m_field_7 = QString::fromUtf8("sieben \xe2\x82\xac");
        list.insert(assignment);
    }
    return list;
}

TOLV_INSTANCE_NAME_LIST make_names()
{
    TOLV_INSTANCE_NAME_LIST list;
    list.insert(TOLV_INSTANCE_NAME("top|a", TOLV_INSTANCE_NAME_TYPE_ARRAY, true, 1, 2, 3, 4, 5, 6, "one", "two"));
    list.insert(TOLV_INSTANCE_NAME());
    return list;
}

void expect_same_assignments(const TOLV_ASSIGNMENT_LIST& expected, const TOLV_ASSIGNMENT_LIST& actual)
{
    ASSERT_EQ(expected.get_list().size(), actual.get_list().size());
    for (int i = 0; i < expected.get_list().size(); ++i)
    {
        const TOLV_ASSIGNMENT& a = expected.get_list().at(i);
        const TOLV_ASSIGNMENT& b = actual.get_list().at(i);
        EXPECT_EQ(QStringList({a.m_field_1, a.m_field_2, a.m_field_3, a.m_field_4, a.m_field_5, a.m_field_6}),
                  QStringList({b.m_field_1, b.m_field_2, b.m_field_3, b.m_field_4, b.m_field_5, b.m_field_6}));
        EXPECT_EQ(a.m_field_7, b.m_field_7);
        EXPECT_EQ(a.m_flag, b.m_flag);
        EXPECT_FALSE(b.m_value.isValid());
    }
}

void expect_made_names(const TOLV_INSTANCE_NAME_LIST& list)
{
    ASSERT_EQ(2, list.get_list().size());
    const TOLV_INSTANCE_NAME& name = list.get_list().at(0);
    EXPECT_EQ("top|a", name.m_name);
    EXPECT_EQ(TOLV_INSTANCE_NAME_TYPE_ARRAY, name.m_type);
    EXPECT_TRUE(name.m_flag);
    EXPECT_EQ(1U, name.m_number);
    EXPECT_EQ(2U, name.m_first_dimension_low);
    EXPECT_EQ(3U, name.m_first_dimension_high);
    EXPECT_EQ(4U, name.m_second_dimension_low);
    EXPECT_EQ(5U, name.m_second_dimension_high);
    // These stay at home.
    EXPECT_EQ(0U, name.m_extra_number);
    EXPECT_EQ("", name.m_extra_string_1);
    EXPECT_EQ("", name.m_extra_string_2);
    EXPECT_EQ(TOLV_INSTANCE_NAME_TYPE_PLAIN, list.get_list().at(1).m_type);
}

QVariant make_ids(std::initializer_list<unsigned int> ids)
{
    QList<QVariant> list;
    for (const unsigned int id : ids)
        list.append(QVariant(id));
    return QVariant(list);
}

/// Takes what is dropped on it as regions.
class REGION_TARGET : public QWidget
{
public:
    REGION_TARGET()
    {
        setAcceptDrops(true);
    }

    QVariant m_regions;

protected:
    void dragEnterEvent(QDragEnterEvent* event) override
    {
        event->acceptProposedAction();
    }
    void dropEvent(QDropEvent* event) override
    {
        m_regions = MANAGER::get_instance()->get_region_id_list_transfer_data(event->mimeData());
        event->acceptProposedAction();
    }
};
} // namespace

// ---- The object under construction ----------------------------------------------------------------------------------

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, there_is_one_manager)
{
    EXPECT_EQ(MANAGER::get_instance(), MANAGER::get_instance());
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, a_new_object_lets_the_old_one_live)
{
    const QPointer<QMimeData> old_object = manager().get_mime_data();
    manager().create_mime_data();
    ASSERT_NE(nullptr, old_object);
    EXPECT_NE(old_object, manager().get_mime_data());
    delete old_object;
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, clearing_frees_the_object_and_is_harmless_twice)
{
    const QPointer<QMimeData> object = manager().get_mime_data();
    manager().clear_mime_data();
    EXPECT_EQ(nullptr, object);
    EXPECT_EQ(nullptr, manager().get_mime_data());
    manager().clear_mime_data();
    EXPECT_EQ(nullptr, manager().get_mime_data());
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, clearing_leaves_the_clipboard_what_it_owns)
{
    manager().add_text_format_into_clipboard(QStringLiteral("kept"));
    manager().clear_mime_data();
    EXPECT_EQ(nullptr, manager().get_mime_data());
    EXPECT_EQ(QStringLiteral("kept"), QGuiApplication::clipboard()->text());
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, an_object_that_its_owner_has_freed_is_no_longer_there)
{
    manager().add_text_format_into_clipboard(QStringLiteral("text"));
    EXPECT_NE(nullptr, manager().get_mime_data());
    QGuiApplication::clipboard()->clear();
    EXPECT_EQ(nullptr, manager().get_mime_data());
    EXPECT_EQ(QStringList(), manager().get_mime_types());
    EXPECT_INTERNAL_ERROR(manager().add_text_format(QStringLiteral("x")), "m_mime_data != NULL");
    manager().clear_mime_data();
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, the_formats_are_listed_as_they_are_stacked)
{
    EXPECT_EQ(QStringList(), manager().get_mime_types());
    manager().add_text_format(QStringLiteral("x"));
    manager().add_id_format({1});
    manager().add_region_id_format({1});
    manager().add_assignment_list_format(TOLV_ASSIGNMENT_LIST());
    manager().add_instance_name_format(TOLV_INSTANCE_NAME_LIST());
    manager().add_text_format(make_texts());
    EXPECT_EQ(QStringList({QStringLiteral("text/plain"), QStringLiteral("application/x-norvane_id_list_data"),
                           QStringLiteral("application/x-norvane_region_id_list_data"),
                           QStringLiteral("application/x-norvane_assignment_list_data"),
                           QStringLiteral("application/x-norvane_instance_name_list_data"),
                           QStringLiteral("application/x-norvane_string_list_data")}),
              manager().get_mime_types());
    manager().clear_mime_data();
    EXPECT_EQ(QStringList(), manager().get_mime_types());
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, adding_needs_an_object)
{
    manager().clear_mime_data();
    const char* const error = "m_mime_data != NULL";
    EXPECT_INTERNAL_ERROR(manager().set_transfer_data(QStringLiteral("x")), error);
    EXPECT_INTERNAL_ERROR(manager().set_transfer_data(QByteArray("x"), QStringLiteral("a/b")), error);
    EXPECT_INTERNAL_ERROR(manager().set_transfer_data(QVariant(1)), error);
    EXPECT_INTERNAL_ERROR(manager().add_text_format(QStringLiteral("x")), error);
    EXPECT_INTERNAL_ERROR(manager().add_text_format(make_texts()), error);
    EXPECT_INTERNAL_ERROR(manager().add_text_format(QStringList()), error);
    EXPECT_INTERNAL_ERROR(manager().add_image_format(QVariant(1)), error);
    EXPECT_INTERNAL_ERROR(manager().add_id_format({}), error);
    EXPECT_INTERNAL_ERROR(manager().add_region_id_format({}), error);
    EXPECT_INTERNAL_ERROR(manager().add_assignment_list_format(TOLV_ASSIGNMENT_LIST()), error);
    EXPECT_INTERNAL_ERROR(manager().add_instance_name_format(TOLV_INSTANCE_NAME_LIST()), error);
    EXPECT_INTERNAL_ERROR(manager().add_text_format_into_clipboard(QStringLiteral("x")), error);
    EXPECT_INTERNAL_ERROR(manager().add_id_format_into_clipboard({}), error);
    const TRAPPED_INTERNAL_ERROR report = CATCH_INTERNAL_ERROR(manager().add_image_format_into_clipboard(QVariant(1)));
    EXPECT_EQ(error, report.text);
    EXPECT_EQ("TOLV", report.tag);
    EXPECT_EQ("tolv_data_transfer_manager", report.file);
}

// ---- Adding and reading ---------------------------------------------------------------------------------------------

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, set_transfer_data_sets_text_image_and_any_format)
{
    manager().set_transfer_data(QStringLiteral("text"));
    manager().set_transfer_data(QByteArray("bytes"), QStringLiteral("application/x-own"));
    manager().set_transfer_data(QVariant(make_image()));
    EXPECT_EQ(QStringLiteral("text"), made()->text());
    EXPECT_EQ(QByteArray("bytes"), made()->data(QStringLiteral("application/x-own")));
    EXPECT_EQ(make_image(), made()->imageData().value<QImage>());
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, a_text_and_an_image_come_back)
{
    manager().add_text_format(QStringLiteral("text"));
    manager().add_image_format(make_image());
    EXPECT_EQ(QVariant(QStringLiteral("text")), manager().get_string_transfer_data(made()));
    EXPECT_EQ(make_image(), manager().get_image_transfer_data(made()).value<QImage>());
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, a_text_list_is_a_text_of_lines_and_a_list)
{
    manager().add_text_format(make_texts());
    EXPECT_EQ(QStringLiteral("clk\nrst n\n"), made()->text());
    const QVariant list = manager().get_string_list_transfer_data(made());
    EXPECT_EQ(QVariant::StringList, list.type());
    EXPECT_EQ(make_texts(), list.toStringList());
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, an_empty_text_list_is_no_text_but_an_empty_list)
{
    manager().add_text_format(QStringList());
    EXPECT_FALSE(made()->hasText());
    EXPECT_TRUE(made()->hasFormat(QStringLiteral("application/x-norvane_string_list_data")));
    const QVariant list = manager().get_string_list_transfer_data(made());
    EXPECT_EQ(QVariant::StringList, list.type());
    EXPECT_TRUE(list.toStringList().isEmpty());
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, a_plain_text_is_taken_where_a_list_is_asked_for)
{
    manager().add_text_format(QStringLiteral("plain"));
    const QVariant found = manager().get_string_list_transfer_data(made());
    EXPECT_EQ(QVariant::String, found.type());
    EXPECT_EQ(QStringLiteral("plain"), found.toString());
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, what_is_not_there_is_invalid)
{
    manager().set_transfer_data(QByteArray("x"), QStringLiteral("application/x-foreign"));
    EXPECT_FALSE(manager().get_string_transfer_data(made()).isValid());
    EXPECT_FALSE(manager().get_image_transfer_data(made()).isValid());
    EXPECT_FALSE(manager().get_string_list_transfer_data(made()).isValid());
    EXPECT_FALSE(manager().get_id_list_transfer_data(made()).isValid());
    EXPECT_FALSE(manager().get_region_id_list_transfer_data(made()).isValid());
    EXPECT_FALSE(manager().get_instance_name_list_transfer_data(made()).isValid());
    EXPECT_FALSE(manager().get_assignment_list_transfer_data(made()).isValid());
    EXPECT_TRUE(manager().get_all_transfer_data(made()).isEmpty());
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, reading_of_null_is_an_internal_error)
{
    const char* const error = "data != NULL";
    EXPECT_INTERNAL_ERROR(manager().get_string_transfer_data(nullptr), error);
    EXPECT_INTERNAL_ERROR(manager().get_image_transfer_data(nullptr), error);
    EXPECT_INTERNAL_ERROR(manager().get_string_list_transfer_data(nullptr), error);
    EXPECT_INTERNAL_ERROR(manager().get_id_list_transfer_data(nullptr), error);
    EXPECT_INTERNAL_ERROR(manager().get_region_id_list_transfer_data(nullptr), error);
    EXPECT_INTERNAL_ERROR(manager().get_instance_name_list_transfer_data(nullptr), error);
    EXPECT_INTERNAL_ERROR(manager().get_assignment_list_transfer_data(nullptr), error);
    EXPECT_INTERNAL_ERROR(manager().get_all_transfer_data(nullptr), error);
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, identifiers_come_back_as_unsigned_numbers)
{
    manager().add_id_format({1, 0xFFFFFFFE});
    manager().add_region_id_format({7});
    const QVariant ids = manager().get_id_list_transfer_data(made());
    EXPECT_EQ(make_ids({1, 0xFFFFFFFE}), ids);
    EXPECT_EQ(QVariant::UInt, ids.toList().at(1).type());
    EXPECT_EQ(make_ids({7}), manager().get_region_id_list_transfer_data(made()));
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, empty_lists_come_back_as_empty_lists)
{
    manager().add_id_format({});
    manager().add_region_id_format({});
    manager().add_instance_name_format(TOLV_INSTANCE_NAME_LIST());
    manager().add_assignment_list_format(TOLV_ASSIGNMENT_LIST());
    EXPECT_EQ(make_ids({}), manager().get_id_list_transfer_data(made()));
    EXPECT_EQ(make_ids({}), manager().get_region_id_list_transfer_data(made()));
    const QVariant names = manager().get_instance_name_list_transfer_data(made());
    EXPECT_EQ(qMetaTypeId<TOLV_INSTANCE_NAME_LIST>(), names.userType());
    EXPECT_TRUE(names.value<TOLV_INSTANCE_NAME_LIST>().get_list().isEmpty());
    const QVariant assignments = manager().get_assignment_list_transfer_data(made());
    EXPECT_EQ(qMetaTypeId<TOLV_ASSIGNMENT_LIST>(), assignments.userType());
    EXPECT_TRUE(assignments.value<TOLV_ASSIGNMENT_LIST>().get_list().isEmpty());
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, stacked_formats_survive_each_other)
{
    manager().add_text_format(QStringLiteral("text"));
    manager().add_id_format({5});
    EXPECT_EQ(QVariant(QStringLiteral("text")), manager().get_string_transfer_data(made()));
    EXPECT_EQ(make_ids({5}), manager().get_id_list_transfer_data(made()));
}

// ---- Everything at once ---------------------------------------------------------------------------------------------

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, a_copied_text_list_is_a_text_and_a_list)
{
    manager().add_text_format(make_texts());
    EXPECT_EQ(QList<QVariant>({QVariant(QStringLiteral("clk\nrst n\n")), QVariant(make_texts())}),
              manager().get_all_transfer_data(made()));
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, a_text_stands_before_the_identifiers)
{
    manager().add_id_format({5});
    manager().add_text_format(QStringLiteral("text"));
    // A second time for the list of texts, for which a plain text is taken.
    EXPECT_EQ(QList<QVariant>({QVariant(QStringLiteral("text")), QVariant(QStringLiteral("text")), make_ids({5})}),
              manager().get_all_transfer_data(made()));
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, all_kinds_come_in_their_order)
{
    manager().add_assignment_list_format(make_assignments());
    manager().add_instance_name_format(make_names());
    manager().add_image_format(make_image());
    manager().add_region_id_format({2});
    manager().add_id_format({1});
    manager().add_text_format(make_texts());
    const QList<QVariant> all = manager().get_all_transfer_data(made());
    ASSERT_EQ(7, all.size());
    EXPECT_EQ(QVariant::String, all.at(0).type());
    EXPECT_EQ(QVariant::StringList, all.at(1).type());
    EXPECT_EQ(make_ids({1}), all.at(2));
    EXPECT_EQ(make_ids({2}), all.at(3));
    EXPECT_EQ(make_image(), all.at(4).value<QImage>());
    EXPECT_EQ(qMetaTypeId<TOLV_INSTANCE_NAME_LIST>(), all.at(5).userType());
    EXPECT_EQ(qMetaTypeId<TOLV_ASSIGNMENT_LIST>(), all.at(6).userType());
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, values_that_are_valid_but_null_are_left_out)
{
    manager().set_transfer_data(QVariant(QImage()));
    const QVariant image = manager().get_image_transfer_data(made());
    EXPECT_TRUE(image.isValid());
    EXPECT_TRUE(image.isNull());
    EXPECT_TRUE(manager().get_all_transfer_data(made()).isEmpty());
}

// ---- The clipboard --------------------------------------------------------------------------------------------------

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, the_clipboard_takes_the_object)
{
    manager().add_text_format_into_clipboard(QStringLiteral("text"));
    EXPECT_EQ(made(), manager().get_mime_data_from_clipboard());
    EXPECT_EQ(QVariant(QStringLiteral("text")), manager().get_string_transfer_data_from_clipboard());
    EXPECT_EQ(QStringLiteral("text"), QGuiApplication::clipboard()->text());
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, a_text_list_goes_through_the_clipboard)
{
    manager().add_text_format_into_clipboard(make_texts());
    EXPECT_EQ(QVariant(make_texts()), manager().get_string_list_transfer_data_from_clipboard());
    EXPECT_EQ(QStringLiteral("clk\nrst n\n"), QGuiApplication::clipboard()->text());
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, an_image_goes_through_the_clipboard)
{
    manager().add_image_format_into_clipboard(make_image());
    EXPECT_EQ(make_image(), manager().get_image_transfer_data_from_clipboard().value<QImage>());
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, identifiers_go_through_the_clipboard)
{
    manager().add_id_format_into_clipboard({3, 2});
    EXPECT_EQ(make_ids({3, 2}), manager().get_id_list_transfer_data_from_clipboard());
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, assignments_go_through_the_clipboard_in_their_order)
{
    const TOLV_ASSIGNMENT_LIST list = make_assignments();
    manager().add_assignment_list_format_into_clipboard(list);
    const QVariant found = manager().get_assignment_list_transfer_data_from_clipboard();
    ASSERT_EQ(qMetaTypeId<TOLV_ASSIGNMENT_LIST>(), found.userType());
    expect_same_assignments(list, found.value<TOLV_ASSIGNMENT_LIST>());
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, instance_names_go_through_the_clipboard_without_their_extra_fields)
{
    manager().add_instance_name_format_into_clipboard(make_names());
    const QVariant found = manager().get_instance_name_list_transfer_data_from_clipboard();
    ASSERT_EQ(qMetaTypeId<TOLV_INSTANCE_NAME_LIST>(), found.userType());
    expect_made_names(found.value<TOLV_INSTANCE_NAME_LIST>());
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, formats_can_be_stacked_on_the_clipboard_one_by_one)
{
    manager().add_text_format_into_clipboard(QStringLiteral("text"));
    manager().add_id_format_into_clipboard({5});
    const QList<QVariant> all = manager().get_all_transfer_data_from_clipboard();
    ASSERT_EQ(3, all.size());
    EXPECT_EQ(QVariant(QStringLiteral("text")), all.at(0));
    EXPECT_EQ(make_ids({5}), all.at(2));
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, an_empty_clipboard_has_nothing_of_any_kind)
{
    EXPECT_FALSE(manager().get_string_transfer_data_from_clipboard().isValid());
    EXPECT_FALSE(manager().get_image_transfer_data_from_clipboard().isValid());
    EXPECT_FALSE(manager().get_string_list_transfer_data_from_clipboard().isValid());
    EXPECT_FALSE(manager().get_id_list_transfer_data_from_clipboard().isValid());
    EXPECT_FALSE(manager().get_instance_name_list_transfer_data_from_clipboard().isValid());
    EXPECT_FALSE(manager().get_assignment_list_transfer_data_from_clipboard().isValid());
    EXPECT_TRUE(manager().get_all_transfer_data_from_clipboard().isEmpty());
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, null_cannot_go_to_the_clipboard)
{
    EXPECT_INTERNAL_ERROR(manager().inserting_to_clipboard(nullptr), "mime_data != NULL");
}

TEST_F(TOLV_DATA_TRANSFER_MANAGER_TEST, regions_travel_by_drag)
{
    REGION_TARGET target;
    target.resize(100, 100);
    ASSERT_TRUE(GUI_DRIVER::show(&target));
    manager().add_region_id_format({9, 8});
    EXPECT_EQ(Qt::CopyAction, GUI_DRIVER::drop(&target, QPoint(50, 50), made()));
    EXPECT_EQ(make_ids({9, 8}), target.m_regions);
}

// ---- Without an application -----------------------------------------------------------------------------------------

using TOLV_DATA_TRANSFER_ALONE_TEST = TOLV_TEST;

TEST_F(TOLV_DATA_TRANSFER_ALONE_TEST, without_an_application_there_is_no_clipboard)
{
    ASSERT_NO_FATAL_FAILURE(TEST_APPLICATION::require(TEST_APPLICATION::KIND_NONE));
    MANAGER* const manager = MANAGER::get_instance();
    manager->create_mime_data();
    manager->add_text_format(QStringLiteral("text"));
    EXPECT_INTERNAL_ERROR(manager->inserting_to_clipboard(manager->get_mime_data()), "clipboard != NULL");
    EXPECT_INTERNAL_ERROR(manager->get_mime_data_from_clipboard(), "clipboard != NULL");
    EXPECT_INTERNAL_ERROR(manager->get_all_transfer_data_from_clipboard(), "clipboard != NULL");
    manager->clear_mime_data();
    EXPECT_EQ(nullptr, manager->get_mime_data());
}
