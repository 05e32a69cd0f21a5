// Columns of the tree view: their state in the registry, and the menu on the header.

#include "tolv_tree_view_fixture.h"

#include "gui_answers.h"
#include "gui_driver.h"

#include <QHeaderView>
#include <QMenu>
#include <QSignalSpy>

namespace
{
class TOLV_TREE_VIEW_COLUMNS_TEST : public TREE_VIEW_TEST
{
protected:
    static void store(const char* folder, const char* name, const QVariant& value)
    {
        open_folder(folder).set_value(QString::fromUtf8(name), value);
    }

    static QVariant stored(const char* folder, const char* name)
    {
        QVariant value;
        open_folder(folder).get_value(QString::fromUtf8(name), &value);
        return value;
    }

    /// The width that the contents of a column ask for.
    int contents_width(int column) const
    {
        OPEN_TREE_VIEW* const other = make_view();
        other->header()->setStretchLastSection(false);
        other->resizeColumnToContents(column);
        const int width = other->columnWidth(column);
        delete other;
        return width;
    }

    static QStringList get_texts(const QMenu& menu)
    {
        QStringList texts;
        const QList<QAction*> actions = menu.actions();
        for (const QAction* action : actions)
            texts << action->text();
        return texts;
    }

    QStringList get_menu_texts() const
    {
        QMenu menu;
        m_view->populate_column_selection_menu(&menu);
        return get_texts(menu);
    }

    QPoint header_position(int column) const
    {
        return QPoint(m_view->header()->sectionViewportPosition(column) + 5, 5);
    }

    void request_menu(int column) const
    {
        GUI_DRIVER::click(m_view->header()->viewport(), header_position(column), Qt::RightButton);
    }
};
} // namespace

// ---- The registry ---------------------------------------------------------------------------------------------------

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, columns_come_back_as_they_were_saved)
{
    m_view->setColumnWidth(0, 217);
    m_view->setColumnWidth(1, 91);
    m_view->setColumnHidden(1, true);
    m_view->save_column_visibility_to_registry();

    OPEN_TREE_VIEW* const next = make_view();
    next->load_column_visibility_from_registry();
    EXPECT_EQ(217, next->columnWidth(0));
    EXPECT_FALSE(next->isColumnHidden(0));
    EXPECT_TRUE(next->isColumnHidden(1));
    EXPECT_FALSE(next->isColumnHidden(2));
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, values_stand_under_the_parents_name_and_the_title)
{
    m_view->setColumnWidth(0, 217);
    m_view->setColumnHidden(1, true);
    m_view->save_column_visibility_to_registry();
    EXPECT_EQ(QVariant(false), stored("design_window", "Name_column_visibility"));
    EXPECT_EQ(QVariant(217), stored("design_window", "Name_column_size"));
    // True for a hidden column, whatever the name says; and the width that the view says it has.
    EXPECT_EQ(QVariant(true), stored("design_window", "Type_column_visibility"));
    EXPECT_EQ(QVariant(m_view->columnWidth(1)), stored("design_window", "Type_column_size"));
    EXPECT_EQ(QVariant(false), stored("design_window", "Area_column_visibility"));
    EXPECT_EQ(QVariant::Bool, stored("design_window", "Type_column_visibility").type());
    EXPECT_EQ(QVariant::Int, stored("design_window", "Name_column_size").type());
    EXPECT_EQ(6, open_folder("design_window").get_value_names().size());
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, the_registry_string_goes_before_the_parents_name)
{
    m_view->set_registry_string(QString::fromUtf8("net/list \xc3\xa4"));
    m_view->setColumnHidden(2, true);
    m_view->save_column_visibility_to_registry();
    EXPECT_EQ(QVariant(true), stored("net/list \xc3\xa4", "Area_column_visibility"));
    EXPECT_FALSE(stored("design_window", "Area_column_visibility").isValid());
    EXPECT_EQ(QString::fromUtf8("net/list \xc3\xa4"), m_view->get_registry_string());

    OPEN_TREE_VIEW* const other_name = make_view();
    other_name->load_column_visibility_from_registry();
    EXPECT_FALSE(other_name->isColumnHidden(2));
    other_name->set_registry_string(m_view->get_registry_string());
    other_name->load_column_visibility_from_registry();
    EXPECT_TRUE(other_name->isColumnHidden(2));
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, a_column_is_found_by_its_title_wherever_it_stands)
{
    m_view->setColumnHidden(1, true);
    m_view->setColumnWidth(0, 211);
    m_view->save_column_visibility_to_registry();
    m_model->setHorizontalHeaderLabels({QStringLiteral("Type"), QStringLiteral("Name"), QStringLiteral("Area")});
    OPEN_TREE_VIEW* const next = make_view();
    next->load_column_visibility_from_registry();
    EXPECT_TRUE(next->isColumnHidden(0));
    EXPECT_FALSE(next->isColumnHidden(1));
    EXPECT_EQ(211, next->columnWidth(1));
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, a_column_whose_title_has_changed_gets_the_width_of_its_contents)
{
    m_view->setColumnWidth(0, 217);
    m_view->setColumnWidth(1, 219);
    m_view->save_column_visibility_to_registry();
    m_model->setHorizontalHeaderLabels({QStringLiteral("Name"), QStringLiteral("Kind"), QStringLiteral("Area")});
    OPEN_TREE_VIEW* const next = make_view();
    next->setColumnWidth(1, 300);
    next->load_column_visibility_from_registry();
    EXPECT_EQ(217, next->columnWidth(0));
    EXPECT_EQ(contents_width(1), next->columnWidth(1));
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, a_column_of_which_nothing_is_stored_stays_hidden_or_shown)
{
    m_view->setColumnHidden(1, true);
    m_view->load_column_visibility_from_registry();
    EXPECT_FALSE(m_view->isColumnHidden(0));
    EXPECT_TRUE(m_view->isColumnHidden(1));
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, columns_of_one_title_share_their_values)
{
    m_model->setHorizontalHeaderLabels({QStringLiteral("Name"), QStringLiteral("Area"), QStringLiteral("Area")});
    m_view->setColumnHidden(1, true);
    m_view->save_column_visibility_to_registry();
    EXPECT_EQ(QVariant(false), stored("design_window", "Area_column_visibility")); // the last one
    store("design_window", "Area_column_visibility", true);
    OPEN_TREE_VIEW* const next = make_view();
    next->load_column_visibility_from_registry();
    EXPECT_TRUE(next->isColumnHidden(1));
    EXPECT_TRUE(next->isColumnHidden(2));
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, an_always_hidden_column_stays_hidden_whatever_is_stored)
{
    store("design_window", "Type_column_visibility", false);
    m_view->set_column_always_hidden(1, true);
    EXPECT_FALSE(m_view->isColumnHidden(1)); // the mark alone hides nothing
    m_view->load_column_visibility_from_registry();
    EXPECT_TRUE(m_view->isColumnHidden(1));
    EXPECT_EQ(QStringList({QStringLiteral("Area")}), get_menu_texts());
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, an_always_hidden_column_of_which_nothing_is_stored_keeps_its_state)
{
    m_view->set_column_always_hidden(1, true);
    m_view->load_column_visibility_from_registry();
    EXPECT_FALSE(m_view->isColumnHidden(1));
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, damaged_values_count_as_missing)
{
    const QList<QVariant> switches = {QVariant(QStringLiteral("noise")), QVariant(2),   QVariant(-1),
                                      QVariant(QByteArray("true")),      QVariant(1.0), QVariant(QSize(1, 1))};
    for (const QVariant& value : switches)
    {
        store("design_window", "Type_column_visibility", value);
        m_view->setColumnHidden(1, false);
        m_view->load_column_visibility_from_registry();
        EXPECT_FALSE(m_view->isColumnHidden(1)) << value.toString().toStdString();
        m_view->setColumnHidden(1, true);
        m_view->load_column_visibility_from_registry();
        EXPECT_TRUE(m_view->isColumnHidden(1)) << value.toString().toStdString();
    }
    m_view->setColumnHidden(1, false);
    const int width = contents_width(0);
    const QList<QVariant> sizes = {QVariant(QStringLiteral("wide")), QVariant(-1),   QVariant(1 << 20),
                                   QVariant(9000000000LL),           QVariant(true), QVariant(QSize(1, 1))};
    for (const QVariant& value : sizes)
    {
        store("design_window", "Name_column_size", value);
        m_view->setColumnWidth(0, 400);
        m_view->load_column_visibility_from_registry();
        EXPECT_EQ(width, m_view->columnWidth(0)) << value.toString().toStdString();
    }
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, the_narrowest_and_the_widest_column_that_qt_takes_come_back)
{
    m_view->header()->setMinimumSectionSize(0);
    for (const int width : {0, (1 << 20) - 1})
    {
        store("design_window", "Name_column_size", width);
        m_view->load_column_visibility_from_registry();
        EXPECT_EQ(width, m_view->columnWidth(0));
    }
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, values_that_older_tools_stored_as_texts_are_understood)
{
    store("design_window", "Type_column_visibility", QStringLiteral("true"));
    store("design_window", "Area_column_visibility", QStringLiteral("0"));
    store("design_window", "Name_column_size", QStringLiteral("217"));
    m_view->setColumnHidden(2, true);
    m_view->load_column_visibility_from_registry();
    EXPECT_TRUE(m_view->isColumnHidden(1));
    EXPECT_FALSE(m_view->isColumnHidden(2));
    EXPECT_EQ(217, m_view->columnWidth(0));
    store("design_window", "Type_column_visibility", QStringLiteral("false"));
    store("design_window", "Area_column_visibility", 1);
    m_view->load_column_visibility_from_registry();
    EXPECT_FALSE(m_view->isColumnHidden(1));
    EXPECT_TRUE(m_view->isColumnHidden(2));
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, a_stored_value_that_is_invalid_is_an_internal_error)
{
    store("design_window", "Type_column_visibility", QVariant());
    EXPECT_INTERNAL_ERROR(m_view->load_column_visibility_from_registry(), "variant.isValid()");
    store("design_window", "Type_column_visibility", false);
    store("design_window", "Area_column_size", QVariant());
    EXPECT_INTERNAL_ERROR(m_view->load_column_visibility_from_registry(), "variant.isValid()");
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, a_column_that_comes_back_hidden_has_its_width_when_it_is_shown)
{
    store("design_window", "Type_column_visibility", true);
    store("design_window", "Type_column_size", 91);
    m_view->load_column_visibility_from_registry();
    EXPECT_TRUE(m_view->isColumnHidden(1));
    m_view->setColumnHidden(1, false);
    EXPECT_EQ(91, m_view->columnWidth(1));
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, stored_titles_without_a_column_are_kept)
{
    store("design_window", "Power_column_visibility", true);
    store("design_window", "Power_column_size", 77);
    m_view->load_column_visibility_from_registry();
    m_view->save_column_visibility_to_registry();
    EXPECT_EQ(QVariant(true), stored("design_window", "Power_column_visibility"));
    EXPECT_EQ(QVariant(77), stored("design_window", "Power_column_size"));
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, the_view_saves_and_loads_nothing_by_itself)
{
    store("design_window", "Type_column_visibility", true);
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    EXPECT_FALSE(m_view->isColumnHidden(1));
    m_window->close();
    m_window.reset();
    EXPECT_EQ(1, open_folder("design_window").get_value_names().size());
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, saving_and_loading_need_a_parent_a_name_and_a_model)
{
    OPEN_TREE_VIEW orphan(nullptr, 0);
    orphan.set_registry_string(QStringLiteral("name"));
    orphan.setModel(m_model.get());
    EXPECT_INTERNAL_ERROR(orphan.save_column_visibility_to_registry(), "parent_widget != NULL");
    EXPECT_INTERNAL_ERROR(orphan.load_column_visibility_from_registry(), "parent_widget != NULL");

    m_window->setObjectName(QString());
    EXPECT_INTERNAL_ERROR(m_view->save_column_visibility_to_registry(), "!registry_string.isEmpty()");
    EXPECT_INTERNAL_ERROR(m_view->load_column_visibility_from_registry(), "!registry_string.isEmpty()");

    m_view->set_registry_string(QStringLiteral("name"));
    m_view->setModel(nullptr);
    EXPECT_INTERNAL_ERROR(m_view->save_column_visibility_to_registry(), "view_model != NULL");
    const TRAPPED_INTERNAL_ERROR report = CATCH_INTERNAL_ERROR(m_view->load_column_visibility_from_registry());
    EXPECT_EQ("view_model != NULL", report.text);
    EXPECT_EQ("TOLV", report.tag);
    EXPECT_EQ("tolv_tree_view", report.file);
}

// ---- Marks ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, a_mark_can_be_set_and_taken_away)
{
    m_view->set_column_always_hidden(1, true);
    EXPECT_TRUE(m_view->is_column_always_hidden(1));
    EXPECT_FALSE(m_view->is_column_always_hidden(0));
    m_view->set_column_always_hidden(1, false);
    EXPECT_FALSE(m_view->is_column_always_hidden(1));
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, no_mark_for_a_column_that_is_negative_or_unknown)
{
    m_view->set_column_always_hidden(-1, true);
    EXPECT_FALSE(m_view->is_column_always_hidden(-1));
    EXPECT_FALSE(m_view->is_column_always_hidden(0));
    EXPECT_FALSE(m_view->is_column_always_hidden(1000));
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, a_mark_on_a_lower_column_forgets_those_on_higher_ones)
{
    m_view->set_column_always_hidden(0, true);
    m_view->set_column_always_hidden(5, true);
    m_view->set_column_always_hidden(2, true);
    EXPECT_TRUE(m_view->is_column_always_hidden(0));
    EXPECT_TRUE(m_view->is_column_always_hidden(2));
    EXPECT_FALSE(m_view->is_column_always_hidden(5));
    EXPECT_EQ(3, m_view->m_always_hidden_columns.size());
}

// ---- The menu -------------------------------------------------------------------------------------------------------

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, the_menu_lists_all_columns_but_the_first)
{
    m_view->setColumnHidden(2, true);
    QMenu menu;
    m_view->populate_column_selection_menu(&menu);
    ASSERT_EQ(QStringList({QStringLiteral("Type"), QStringLiteral("Area")}), get_texts(menu));
    EXPECT_TRUE(menu.actions().at(0)->isCheckable());
    EXPECT_TRUE(menu.actions().at(0)->isChecked());
    EXPECT_TRUE(menu.actions().at(1)->isCheckable());
    EXPECT_FALSE(menu.actions().at(1)->isChecked());
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, columns_without_a_title_or_always_hidden_are_not_listed)
{
    m_model->setHorizontalHeaderLabels({QStringLiteral("Name"), QString(QLatin1String("")), QStringLiteral("Area"),
                                        QStringLiteral("Delay"), QStringLiteral("Fan-out")});
    m_view->set_column_always_hidden(3, true);
    EXPECT_EQ(QStringList({QStringLiteral("Area"), QStringLiteral("Fan-out")}), get_menu_texts());
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, a_tree_of_one_column_has_an_empty_menu)
{
    m_model->setColumnCount(1);
    EXPECT_EQ(QStringList(), get_menu_texts());
    m_model->setColumnCount(0);
    EXPECT_EQ(QStringList(), get_menu_texts());
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, a_tree_of_two_columns_lists_the_second)
{
    m_model->setColumnCount(2);
    EXPECT_EQ(QStringList({QStringLiteral("Type")}), get_menu_texts());
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, an_ampersand_in_a_title_is_shown)
{
    m_model->setHorizontalHeaderLabels({QStringLiteral("Name"), QStringLiteral("Place & Route")});
    EXPECT_EQ(QStringLiteral("Place && Route"), get_menu_texts().value(0));
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, filling_the_menu_needs_menu_and_model)
{
    EXPECT_INTERNAL_ERROR(m_view->populate_column_selection_menu(nullptr), "menu != NULL");
    m_view->setModel(nullptr);
    QMenu menu;
    EXPECT_INTERNAL_ERROR(m_view->populate_column_selection_menu(&menu), "view_model != NULL");
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, toggling_tells_which_column_has_changed)
{
    const QSignalSpy changed(m_view, SIGNAL(column_visibility_changed(int)));
    m_view->header()->setStretchLastSection(false);
    m_view->setColumnWidth(1, 400);
    m_view->perform_signal_mapper_menu_action(1);
    EXPECT_TRUE(m_view->isColumnHidden(1));
    m_view->perform_signal_mapper_menu_action(1);
    EXPECT_FALSE(m_view->isColumnHidden(1));
    EXPECT_EQ(contents_width(1), m_view->columnWidth(1)); // a column shown again is as wide as its contents
    ASSERT_EQ(2, changed.count());
    EXPECT_EQ(1, changed.at(0).at(0).toInt());
    EXPECT_EQ(1, changed.at(1).at(0).toInt());
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, toggling_a_column_that_does_not_exist_is_ignored)
{
    const QSignalSpy changed(m_view, SIGNAL(column_visibility_changed(int)));
    m_view->perform_signal_mapper_menu_action(-1);
    m_view->perform_signal_mapper_menu_action(3);
    EXPECT_EQ(0, changed.count());
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, a_user_hides_and_shows_a_column_by_the_headers_menu)
{
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    const QSignalSpy changed(m_view, SIGNAL(column_visibility_changed(int)));
    answer_next_menu(QStringLiteral("Type"));
    request_menu(0);
    EXPECT_TRUE(m_view->isColumnHidden(1));
    answer_next_menu(QStringLiteral("Type"));
    request_menu(2);
    EXPECT_FALSE(m_view->isColumnHidden(1));
    ASSERT_EQ(2, changed.count());
    EXPECT_EQ(1, changed.at(1).at(0).toInt());
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, the_menu_comes_up_at_the_pointer)
{
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    GUI_DRIVER::hover(m_view->viewport(), QPoint(120, 150));
    QPoint position;
    answer_next_menu(
        [&](QMenu* menu)
        {
            position = menu->pos();
            EXPECT_EQ(nullptr, menu->parent());
            menu->close();
        });
    m_view->custom_context_menu(QPoint(3, 3));
    EXPECT_EQ(QCursor::pos(), position);
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, a_derived_class_fills_the_menu_in_its_own_way)
{
    class OWN_MENU_VIEW : public TOLV_TREE_VIEW
    {
    public:
        using TOLV_TREE_VIEW::TOLV_TREE_VIEW;
        void populate_column_selection_menu(QMenu* menu) override
        {
            menu->addAction(QStringLiteral("Own entry"));
        }
    };
    OWN_MENU_VIEW view(m_window.get(), 0);
    QStringList texts;
    answer_next_menu(
        [&](QMenu* menu)
        {
            texts = get_texts(*menu);
            menu->close();
        });
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    view.custom_context_menu(QPoint());
    EXPECT_EQ(QStringList({QStringLiteral("Own entry")}), texts);
}

TEST_F(TOLV_TREE_VIEW_COLUMNS_TEST, the_rows_have_no_menu_of_the_view)
{
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    GUI_DRIVER::click(m_view->viewport(), QPoint(20, 20), Qt::RightButton);
    EXPECT_EQ(nullptr, QApplication::activePopupWidget());
}
