// Instances of the navigator on their way into the table of assignments, and the table on its way into its file.

#include "assignment_model.h"
#include "assignment_view.h"
#include "hierarchy_model.h"
#include "host_workbench_fixture.h"
#include "netlist_generator.h"
#include "workbench_constraints.h"
#include "workbench_documents.h"

#include "gui_answers.h"
#include "test_environment.h"

#include "tolv_data_transfer_manager.h"
#include "tolv_dock_widget.h"
#include "tolv_instance_name.h"
#include "tolv_tree_view.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QScrollBar>

namespace
{
class host_constraints : public WORKBENCH_TEST
{
protected:
    void SetUp() override
    {
        WORKBENCH_TEST::SetUp();
        for (const char* name : {"station.constraints", "other.constraints"}) // of another test in this process
            QFile::remove(write_file(name, QByteArray()));
        make_and_show_window();
        m_constraints = m_window->get_constraints();
        m_model = m_constraints->get_model();
        m_table = find<ASSIGNMENT_VIEW>("assignments");
        m_tree = find<TOLV_TREE_VIEW>("hierarchy");
        find<TOLV_DOCK_WIDGET>("assignments_dock")->set_visible_and_raise(true);
        GUI_DRIVER::process_posted();
    }

    template <typename T>
    T* find(const char* object_name) const
    {
        return GUI_DRIVER::find_widget<T>(m_window.get(), QString::fromLatin1(object_name));
    }

    void load(const QString& file) const
    {
        m_window->open_file(file);
        GUI_DRIVER::wait_for([this] { return !m_window->is_loading(); }, 30000);
    }

    /// A copy of the shipped design, in a folder where files may be written.
    QString load_design(const char* name = "station.json") const
    {
        QFile design(QStringLiteral(WORKBENCH_DESIGNS "/serial_station_synth.json"));
        EXPECT_TRUE(design.open(QIODevice::ReadOnly));
        const QString file = write_file(name, design.readAll());
        load(file);
        return file;
    }

    static QString write_file(const char* name, const QByteArray& content)
    {
        return QString::fromStdString(TEST_ENVIRONMENT::write_file(name, content.toStdString()));
    }

    static QByteArray read_file(const QString& name)
    {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }

    /// The row of an instance in the tree, by the end of its path.
    QModelIndex instance(const char* name) const
    {
        QAbstractItemModel& model = *m_tree->model();
        const QModelIndexList found = model.match(model.index(0, 0), Qt::DisplayRole, QString::fromLatin1(name), 1,
                                                  Qt::MatchExactly | Qt::MatchRecursive);
        EXPECT_EQ(1, found.size()) << name;
        return found.value(0);
    }

    /// The view whose names can be clicked: in a narrow window they stand in a view of their own.
    TOLV_TREE_VIEW* names() const
    {
        auto* const view = find<TOLV_TREE_VIEW>("hierarchy_names");
        return view->isVisible() ? view : m_tree;
    }

    void click_instance(const char* name, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        m_tree->scrollTo(instance(name));
        GUI_DRIVER::click(names()->viewport(), names()->visualRect(instance(name)).center(), Qt::LeftButton, modifiers);
    }

    QPoint cell(int row, int column) const
    {
        const QModelIndex index = m_model->index(row, column);
        m_table->scrollTo(index);
        return m_table->visualRect(index).center();
    }

    QStringList rows() const
    {
        QStringList texts;
        for (int row = 0; row < m_model->rowCount(); ++row)
        {
            QStringList parts;
            for (int column = 0; column < 3; ++column)
                parts << m_model->index(row, column).data().toString();
            texts << parts.join('|');
        }
        return texts;
    }

    QString messages() const
    {
        return find<QPlainTextEdit>("messages")->toPlainText();
    }

    void paste_text(const char* text) const
    {
        QGuiApplication::clipboard()->setText(QString::fromLatin1(text));
        GUI_DRIVER::key_click(m_table, Qt::Key_V, Qt::ControlModifier);
    }

    WORKBENCH_CONSTRAINTS* m_constraints = nullptr;
    ASSIGNMENT_MODEL* m_model = nullptr;
    ASSIGNMENT_VIEW* m_table = nullptr;
    TOLV_TREE_VIEW* m_tree = nullptr;
};
} // namespace

// ---- From the navigator ---------------------------------------------------------------------------------------------

TEST_F(host_constraints, selected_instances_are_copied_as_text_and_as_instance_names)
{
    load_design();
    click_instance("u_rx_fifo");
    click_instance("u_timer", Qt::ControlModifier);
    GUI_DRIVER::key_click(m_tree, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ("serial_station/u_timer\nserial_station/u_uart/u_rx_fifo\n", QGuiApplication::clipboard()->text());
    const auto copied = TOLV_DATA_TRANSFER_MANAGER::get_instance()
                            ->get_instance_name_list_transfer_data_from_clipboard()
                            .value<TOLV_INSTANCE_NAME_LIST>();
    ASSERT_EQ(2, copied.get_list().size());
    EXPECT_EQ("serial_station/u_timer", copied.get_list().at(0).m_name);
    EXPECT_EQ("serial_station/u_uart/u_rx_fifo", copied.get_list().at(1).m_name);
}

TEST_F(host_constraints, copied_instances_are_pasted_behind_the_selected_rows)
{
    load_design();
    paste_text("first\tKEEP\t1\nlast");
    GUI_DRIVER::click(m_table->viewport(), cell(0, 0));
    click_instance("u_bridge");
    click_instance("u_reset", Qt::ShiftModifier);
    GUI_DRIVER::key_click(m_tree, Qt::Key_C, Qt::ControlModifier);
    GUI_DRIVER::key_click(m_table, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ((QStringList{"first|KEEP|1", "serial_station/u_bridge||", "serial_station/u_lamps||",
                           "serial_station/u_reset||", "last||"}),
              rows());
    EXPECT_EQ((QVector<int>{1, 2, 3}), m_table->get_selected_rows());
    GUI_DRIVER::key_click(m_table, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ((QStringList{"first|KEEP|1", "last||"}), rows());
}

TEST_F(host_constraints, instances_are_dragged_to_the_row_under_the_pointer)
{
    load_design();
    paste_text("first\nlast");
    const QModelIndexList dragged{instance("u_uart"), instance("u_timer")};
    EXPECT_TRUE(m_tree->dragEnabled());
    EXPECT_TRUE(names()->dragEnabled());
    for (const QModelIndex& index : dragged)
        EXPECT_TRUE(index.flags().testFlag(Qt::ItemIsDragEnabled));
    const std::unique_ptr<QMimeData> data(m_tree->model()->mimeData(dragged));
    const QRect last = m_table->visualRect(m_model->index(1, 0));
    EXPECT_EQ(Qt::CopyAction, GUI_DRIVER::drop(m_table->viewport(), QPoint(20, last.top() + 2), data.get()));
    EXPECT_EQ((QStringList{"first||", "serial_station/u_timer||", "serial_station/u_uart||", "last||"}), rows());
    EXPECT_EQ(Qt::CopyAction, GUI_DRIVER::drop(m_table->viewport(), QPoint(20, cell(3, 0).y() + 6), data.get()));
    EXPECT_EQ("serial_station/u_uart||", rows().constLast());
}

TEST_F(host_constraints, a_payload_that_is_damaged_brings_nothing_and_is_told)
{
    auto* const data = new QMimeData;
    data->setData("application/x-norvane_instance_name_list_data", QByteArray("\x7f\xff\xff\xff\x00", 5));
    data->setData("application/x-norvane_assignment_list_data", QByteArray("\xff", 1));
    QGuiApplication::clipboard()->setMimeData(data);
    GUI_DRIVER::key_click(m_table, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(0, m_model->rowCount());
    EXPECT_TRUE(messages().endsWith("Error: There is nothing among the pasted data that can be assigned to"));
    EXPECT_TRUE(m_table->isVisible()); // not behind the messages
    QMimeData other;
    other.setData("application/x-other", "top/a");
    EXPECT_EQ(Qt::IgnoreAction, GUI_DRIVER::drop(m_table->viewport(), QPoint(20, 10), &other));
    EXPECT_FALSE(m_model->is_modified());
}

TEST_F(host_constraints, the_icon_of_an_instance_opens_the_schematic_of_its_module)
{
    load_design();
    m_window->get_documents()->show_document(WORKBENCH_DOCUMENTS::DOCUMENT_TABLES);
    const QModelIndex uart = instance("u_uart");
    const QRect rect = names()->visualRect(uart);
    GUI_DRIVER::click(names()->viewport(), QPoint(rect.left() + 10, rect.center().y()));
    EXPECT_EQ((QStringList{"serial_station", "u_uart"}), m_window->get_selected_path());
    auto* const area = GUI_DRIVER::find_widget<QMdiArea>(m_window.get(), QStringLiteral("documents"));
    ASSERT_NE(nullptr, area->activeSubWindow());
    EXPECT_EQ("schematic_window", area->activeSubWindow()->objectName());
}

TEST_F(host_constraints, the_filter_finds_instances_that_nobody_has_unfolded)
{
    load(write_file("deep.json", QByteArray::fromStdString(NETLIST_GENERATOR::make_doubling(20, 1))));
    auto* const dock = find<TOLV_DOCK_WIDGET>("hierarchy_dock");
    emit dock->filter_option_changed("m0");
    EXPECT_EQ("1,048,576 matches; only the first 10,000 rows are unfolded", find<QLabel>("hierarchy_note")->text());
    EXPECT_TRUE(m_tree->isExpanded(m_tree->model()->index(0, 0)));
    QModelIndex index = m_tree->model()->index(0, 0);
    for (int i = 0; i < 20; ++i)
        index = m_tree->model()->index(0, 0, index);
    EXPECT_EQ("m0", index.siblingAtColumn(1).data().toString());
    emit dock->filter_option_changed("");
    EXPECT_TRUE(m_tree->isExpanded(m_tree->model()->index(0, 0)));
    EXPECT_FALSE(m_tree->isExpanded(m_tree->model()->index(0, 0, m_tree->model()->index(0, 0))));
}

TEST_F(host_constraints, a_hierarchy_that_is_too_deep_is_told)
{
    load(write_file("deep.json", QByteArray::fromStdString(NETLIST_GENERATOR::make_doubling(600, 1))));
    EXPECT_TRUE(messages().endsWith("The design has 601 levels of hierarchy; the navigator shows the first 500"));
}

// ---- The table ------------------------------------------------------------------------------------------------------

TEST_F(host_constraints, cells_are_edited_in_place)
{
    paste_text("top/a");
    GUI_DRIVER::double_click(m_table->viewport(), cell(0, 2));
    GUI_DRIVER::type(find<QLineEdit>("assignment_editor"), "X1/Y2");
    GUI_DRIVER::key_click(find<QLineEdit>("assignment_editor"), Qt::Key_Return);
    EXPECT_EQ(QStringList("top/a||X1/Y2"), rows());
    GUI_DRIVER::key_click(m_table, Qt::Key_Left);
    EXPECT_EQ(m_model->index(0, 1), m_table->currentIndex());
    GUI_DRIVER::key_click(m_table, Qt::Key_F2);
    GUI_DRIVER::type(find<QLineEdit>("assignment_editor"), "loc");
    EXPECT_EQ("loc", find<QLineEdit>("assignment_editor")->text().left(3));
    GUI_DRIVER::key_click(find<QLineEdit>("assignment_editor"), Qt::Key_Escape);
    if (auto* const popup = QApplication::activePopupWidget())
        popup->close();
    EXPECT_EQ(QStringList("top/a||X1/Y2"), rows());
}

TEST_F(host_constraints, the_box_of_a_row_switches_it_off)
{
    paste_text("top/a");
    const QRect rect = m_table->visualRect(m_model->index(0, 3));
    m_table->scrollTo(m_model->index(0, 3));
    m_table->horizontalScrollBar()->setValue(m_table->horizontalScrollBar()->maximum());
    const QRect shown = m_table->visualRect(m_model->index(0, 3));
    EXPECT_EQ(rect.width(), shown.width());
    GUI_DRIVER::click(m_table->viewport(), QPoint(shown.left() + 10, shown.center().y()));
    EXPECT_EQ(Qt::Unchecked, m_model->index(0, 3).data(Qt::CheckStateRole).toInt());
}

TEST_F(host_constraints, rows_are_added_removed_and_copied_by_commands)
{
    QAction* const remove = find<QAction>("remove_assignments");
    EXPECT_FALSE(remove->isEnabled());
    find<QAction>("add_assignment")->trigger();
    GUI_DRIVER::type(find<QLineEdit>("assignment_editor"), "top/a");
    GUI_DRIVER::key_click(find<QLineEdit>("assignment_editor"), Qt::Key_Return);
    EXPECT_EQ(QStringList("top/a||"), rows());
    EXPECT_TRUE(remove->isEnabled());
    GUI_DRIVER::key_click(m_table, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ("top/a\t\t\ton\n", QGuiApplication::clipboard()->text());
    const auto copied = TOLV_DATA_TRANSFER_MANAGER::get_instance()
                            ->get_assignment_list_transfer_data_from_clipboard()
                            .value<TOLV_ASSIGNMENT_LIST>();
    ASSERT_EQ(1, copied.get_list().size());
    EXPECT_EQ("top/a", copied.get_list().constFirst().m_field_1);
    GUI_DRIVER::key_click(m_table, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ((QStringList{"top/a||", "top/a||"}), rows());
    GUI_DRIVER::key_click(m_table, Qt::Key_Delete);
    EXPECT_EQ(QStringList("top/a||"), rows());
    find<QAction>("undo_assignments")->trigger();
    EXPECT_EQ(2, m_model->rowCount());
    find<QAction>("redo_assignments")->trigger();
    EXPECT_EQ(1, m_model->rowCount());
    EXPECT_FALSE(find<QAction>("redo_assignments")->isEnabled());
    m_constraints->get_model()->set_saved();
}

TEST_F(host_constraints, the_menu_of_the_table_has_its_commands)
{
    paste_text("top/a\ntop/b");
    GUI_DRIVER::click(m_table->viewport(), cell(0, 0));
    answer_next_menu("Remove Assignments");
    QContextMenuEvent event(QContextMenuEvent::Mouse, cell(0, 0), m_table->viewport()->mapToGlobal(cell(0, 0)));
    QCoreApplication::sendEvent(m_table->viewport(), &event);
    EXPECT_EQ(QStringList("top/b||"), rows());
}

TEST_F(host_constraints, columns_of_the_table_stay_as_wide_as_they_were_made)
{
    EXPECT_LT(200, m_table->columnWidth(0)); // not those of an empty table
    m_table->setColumnWidth(0, 222);
    m_window.reset();
    make_window();
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    EXPECT_EQ(222, find<ASSIGNMENT_VIEW>("assignments")->columnWidth(0));
}

// ---- The file -------------------------------------------------------------------------------------------------------

TEST_F(host_constraints, assignments_are_saved_beside_the_design_and_read_with_it)
{
    const QString design = load_design();
    QAction* const save = find<QAction>("save_constraints");
    EXPECT_FALSE(save->isEnabled());
    paste_text("top/a\tKEEP\t1");
    save->trigger();
    EXPECT_FALSE(save->isEnabled());
    const QString file = QFileInfo(design).path() + "/station.constraints";
    EXPECT_EQ(file, m_constraints->get_file());
    EXPECT_EQ(QByteArray("norvane-constraints 1\non\ttop/a\tKEEP\t1\n"), read_file(file));
    EXPECT_TRUE(messages().endsWith("Saved station.constraints"));

    load_design("other.json");
    EXPECT_EQ(0, m_model->rowCount());
    EXPECT_EQ("", m_constraints->get_file());
    load_design();
    EXPECT_EQ(QStringList("top/a|KEEP|1"), rows());
    EXPECT_TRUE(messages().endsWith("Opened station.constraints, assignments: 1"));
    EXPECT_FALSE(m_model->is_modified());
}

TEST_F(host_constraints, unsaved_assignments_stay_when_another_design_is_opened)
{
    const QString design = load_design();
    paste_text("top/a");
    load_design("other.json");
    EXPECT_EQ(QStringList("top/a||"), rows());
    EXPECT_TRUE(messages().endsWith("The assignments are those of the design before, and not saved yet"));
    EXPECT_TRUE(m_constraints->save());
    EXPECT_EQ(QFileInfo(design).path() + "/station.constraints", m_constraints->get_file());
}

TEST_F(host_constraints, assignments_made_before_a_design_is_open_belong_to_it)
{
    paste_text("top/a");
    const QString design = load_design();
    EXPECT_EQ(QStringList("top/a||"), rows());
    EXPECT_TRUE(m_constraints->save());
    EXPECT_EQ(QFileInfo(design).path() + "/station.constraints", m_constraints->get_file());
}

TEST_F(host_constraints, a_bad_file_is_told_with_its_line_and_changes_nothing)
{
    paste_text("top/a");
    const QString file = write_file("bad.constraints", "norvane-constraints 1\non\tx\nmaybe\ty\n");
    EXPECT_FALSE(m_constraints->open_file(file));
    EXPECT_EQ(QStringList("top/a||"), rows());
    EXPECT_TRUE(messages().endsWith("Error: " + file + ":3: a line begins with \"on\" or \"off\", and a tab"));
    EXPECT_EQ("", m_constraints->get_file());
    m_model->set_saved();
}

TEST_F(host_constraints, a_file_that_cannot_be_written_is_told_and_the_assignments_stay_unsaved)
{
    ASSERT_TRUE(m_constraints->open_file(write_file("some.constraints", "norvane-constraints 1\non\tx\n")));
    ASSERT_TRUE(QFile::remove(m_constraints->get_file()));
    ASSERT_TRUE(QDir().mkdir(m_constraints->get_file())); // a folder in its place
    paste_text("top/a");
    EXPECT_FALSE(m_constraints->save());
    EXPECT_TRUE(m_model->is_modified());
    EXPECT_TRUE(messages().contains("Error: " + m_constraints->get_file() + ": "));
    m_model->set_saved();
}

TEST_F(host_constraints, closing_the_window_asks_about_unsaved_assignments)
{
    const QString design = load_design();
    paste_text("top/a");
    answer_next_dialog("Cancel");
    EXPECT_FALSE(m_window->close());
    EXPECT_TRUE(m_window->isVisible());
    answer_next_dialog("Save");
    EXPECT_TRUE(m_window->close());
    EXPECT_EQ(QByteArray("norvane-constraints 1\non\ttop/a\n"),
              read_file(QFileInfo(design).path() + "/station.constraints"));

    m_window->show();
    m_model->remove({0});
    answer_next_dialog("Discard");
    EXPECT_TRUE(m_window->close());
    EXPECT_EQ(QByteArray("norvane-constraints 1\non\ttop/a\n"),
              read_file(QFileInfo(design).path() + "/station.constraints"));
    m_model->set_saved();
}

TEST_F(host_constraints, a_file_that_lies_there_already_is_not_overwritten_without_a_question)
{
    load_design();
    const QString file = write_file("station.constraints", "somebody else's");
    paste_text("top/a");
    answer_next_dialog([](QDialog* dialog) { dialog->reject(); });
    EXPECT_FALSE(m_constraints->save());
    EXPECT_EQ(QByteArray("somebody else's"), read_file(file));
    m_model->set_saved();
}
