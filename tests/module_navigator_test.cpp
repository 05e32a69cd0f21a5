// The page of the navigator under a user's hands, as a host sees it: by name alone.

#include "gui_answers.h"
#include "gui_driver.h"
#include "gui_test.h"

#include "tolv_dock_mgr.h"
#include "tolv_dock_widget.h"
#include "tolv_icon.h"
#include "tolv_main_window.h"
#include "tolv_tree_model.h"
#include "tolv_tree_view.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStandardItemModel>

namespace
{
class MODULE_NAVIGATOR_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        m_window = std::make_unique<TOLV_MAIN_WINDOW>(nullptr, Qt::WindowFlags());
        m_window->resize(600, 500);
        m_model = std::make_unique<QStandardItemModel>();
        m_dock = make_dock();
        ASSERT_NE(nullptr, m_dock);
        m_tree = GUI_DRIVER::find_widget<TOLV_TREE_VIEW>(m_dock, "hierarchy");
        m_names = GUI_DRIVER::find_widget<TOLV_TREE_VIEW>(m_dock, "hierarchy_names");
        m_note = GUI_DRIVER::find_widget<QLabel>(m_dock, "hierarchy_note");
    }

    void TearDown() override
    {
        m_window.reset();
        m_model.reset();
        TOLV_GUI_TEST::TearDown();
    }

    TOLV_DOCK_WIDGET* make_dock()
    {
        TOLV_DOCK_WIDGET* const dock =
            m_window->get_dock_mgr()->create_dock_widget(TOLV_DOCK_NAVIGATOR_HIERARCHY, m_window.get());
        m_window->addDockWidget(Qt::LeftDockWidgetArea, dock);
        GUI_DRIVER::show(m_window.get());
        return dock;
    }

    static QList<QStandardItem*> make_row(const QString& name)
    {
        QList<QStandardItem*> row{new QStandardItem(name), new QStandardItem(name + "_module"), new QStandardItem("42"),
                                  new QStandardItem("extra")};
        row.at(0)->setIcon(tolv_get_icon(TOLV_MODULE_ICON));
        row.at(0)->setData(true, TOLV_TREE_ROLE_CLICKABLE_ICON);
        return row;
    }

    /// Blocks with two pins each, of which the first has a bit: block_0, pin_0_0, bit_0 ...
    void fill(int block_count = 40)
    {
        m_model->setHorizontalHeaderLabels({"Instance", "Module", "Cells", "Extra"});
        m_model->setHeaderData(3, Qt::Horizontal, true, Qt::UserRole);
        for (int block = 0; block < block_count; ++block)
        {
            const QList<QStandardItem*> row = make_row(QStringLiteral("block_%1").arg(block));
            for (int pin = 0; pin < 2; ++pin)
                row.at(0)->appendRow(make_row(QStringLiteral("pin_%1_%2").arg(block).arg(pin)));
            row.at(0)->child(0)->appendRow(make_row(QStringLiteral("bit_%1").arg(block)));
            m_model->appendRow(row);
        }
    }

    void show_model(QAbstractItemModel* model)
    {
        EXPECT_TRUE(QMetaObject::invokeMethod(m_dock, "set_source_model", Q_ARG(QAbstractItemModel*, model)));
        GUI_DRIVER::process_posted();
    }

    /// The columns are much wider than the dock.
    void make_wide(int name_width = 150)
    {
        m_tree->setColumnWidth(0, name_width);
        m_tree->setColumnWidth(1, 400);
        m_tree->setColumnWidth(2, 300);
        GUI_DRIVER::process_posted();
    }

    QModelIndex shown(int row, const QModelIndex& parent = QModelIndex()) const
    {
        return m_tree->model()->index(row, 0, parent);
    }

    static void press_icon(TOLV_TREE_VIEW* view, const QModelIndex& index)
    {
        const QRect rect = view->visualRect(index);
        GUI_DRIVER::click(view->viewport(), QPoint(rect.left() + 10, rect.center().y()));
    }

    static QPoint branch(const TOLV_TREE_VIEW* view, const QModelIndex& index)
    {
        const QRect rect = view->visualRect(index);
        return QPoint(rect.left() - view->indentation() / 2, rect.center().y());
    }

    void filter(const char* text)
    {
        auto* const line = GUI_DRIVER::find_widget<QLineEdit>(m_dock, [this](const QLineEdit* edit)
                                                              { return edit->parent() == m_dock->widget(); });
        if (!line->isVisible())
            emit m_dock->search_button_clicked(true);
        GUI_DRIVER::focus(line);
        line->selectAll();
        if (*text == '\0')
            GUI_DRIVER::key_click(line, Qt::Key_Delete);
        else
            GUI_DRIVER::type(line, text);
    }

    void expect_in_step() const
    {
        EXPECT_EQ(m_tree->verticalScrollBar()->value(), m_names->verticalScrollBar()->value());
        QModelIndex index = m_tree->indexAt(QPoint(2, 2)).siblingAtColumn(0);
        for (; index.isValid() && m_tree->visualRect(index).bottom() < m_tree->viewport()->height();
             index = m_tree->indexBelow(index).siblingAtColumn(0))
        {
            EXPECT_EQ(m_tree->visualRect(index).top(), m_names->visualRect(index).top())
                << index.data().toString().toStdString();
            EXPECT_EQ(m_tree->isExpanded(index), m_names->isExpanded(index));
        }
    }

    std::unique_ptr<TOLV_MAIN_WINDOW> m_window;
    std::unique_ptr<QStandardItemModel> m_model;
    TOLV_DOCK_WIDGET* m_dock = nullptr;
    TOLV_TREE_VIEW* m_tree = nullptr;
    TOLV_TREE_VIEW* m_names = nullptr;
    QLabel* m_note = nullptr;
};
} // namespace

// ---- Names that stand still -----------------------------------------------------------------------------------------

TEST_F(MODULE_NAVIGATOR_TEST, names_stand_still_where_the_columns_are_wider_than_the_window)
{
    fill();
    show_model(m_model.get());
    make_wide();
    ASSERT_TRUE(m_names->isVisible());
    EXPECT_EQ(150, m_names->width());
    EXPECT_EQ(QPoint(m_tree->viewport()->x(), m_tree->header()->y()), m_names->pos());
    m_tree->horizontalScrollBar()->setValue(200);
    EXPECT_EQ(m_tree->viewport()->x(), m_names->x());
    EXPECT_EQ(0, m_names->horizontalScrollBar()->value());
    for (int column = 1; column < 4; ++column)
        EXPECT_TRUE(m_names->isColumnHidden(column));
    GUI_DRIVER::wheel(m_names->viewport(), QPoint(40, 60), QPoint(0, -360));
    EXPECT_LT(0, m_tree->verticalScrollBar()->value());
    expect_in_step();
    GUI_DRIVER::wheel(m_tree->viewport(), QPoint(200, 60), QPoint(0, 120));
    expect_in_step();
}

TEST_F(MODULE_NAVIGATOR_TEST, names_give_way_where_all_can_be_seen_or_they_would_cover_most)
{
    fill();
    show_model(m_model.get());
    m_tree->setColumnWidth(0, 60);
    m_tree->setColumnWidth(1, 60);
    m_tree->setColumnWidth(2, 40);
    GUI_DRIVER::process_posted();
    EXPECT_EQ(0, m_tree->horizontalScrollBar()->maximum());
    EXPECT_FALSE(m_names->isVisible());
    make_wide(m_tree->viewport()->width() * 72 / 100);
    EXPECT_FALSE(m_names->isVisible());
    make_wide(m_tree->viewport()->width() * 68 / 100);
    EXPECT_TRUE(m_names->isVisible());
}

TEST_F(MODULE_NAVIGATOR_TEST, rows_are_opened_and_chosen_in_either_part)
{
    fill();
    show_model(m_model.get());
    make_wide();
    const QSignalSpy current(m_dock, SIGNAL(current_changed(QModelIndex)));
    GUI_DRIVER::click(m_names->viewport(), branch(m_names, shown(1)));
    EXPECT_TRUE(m_tree->isExpanded(shown(1)));
    expect_in_step();
    GUI_DRIVER::click(m_names->viewport(), m_names->visualRect(shown(0, shown(1))).center());
    EXPECT_EQ(m_model->index(0, 0, m_model->index(1, 0)), current.constLast().constFirst().toModelIndex());
    EXPECT_TRUE(m_tree->hasFocus()); // keys go to the tree
    GUI_DRIVER::key_click(m_tree, Qt::Key_Right);
    EXPECT_TRUE(m_names->isExpanded(shown(0, shown(1))));
    expect_in_step();
    GUI_DRIVER::key_click(m_tree, Qt::Key_Left);
    expect_in_step();
    GUI_DRIVER::click(m_tree->viewport(), QPoint(200, m_tree->visualRect(shown(2)).center().y()), Qt::LeftButton,
                      Qt::ShiftModifier);
    EXPECT_EQ(3, m_names->selectionModel()->selectedRows().size());
    GUI_DRIVER::click(m_names->viewport(), branch(m_names, shown(1)));
    EXPECT_FALSE(m_tree->isExpanded(shown(1)));
    expect_in_step();
}

TEST_F(MODULE_NAVIGATOR_TEST, the_header_of_the_names_resizes_both)
{
    fill();
    show_model(m_model.get());
    make_wide();
    GUI_DRIVER::drag(m_names->header()->viewport(), QPoint(148, 8), QPoint(118, 8));
    EXPECT_EQ(120, m_tree->columnWidth(0));
    EXPECT_EQ(120, m_names->width());
    m_tree->setColumnWidth(0, 140);
    EXPECT_EQ(140, m_names->width());
}

TEST_F(MODULE_NAVIGATOR_TEST, both_parts_follow_a_model_that_changes)
{
    fill(5);
    show_model(m_model.get());
    make_wide();
    m_tree->expand(shown(1));
    m_model->insertRow(0, make_row("new"));
    m_model->removeRows(2, 1);
    GUI_DRIVER::process_posted();
    expect_in_step();
    m_model->clear();
    fill(60);
    GUI_DRIVER::process_posted();
    m_tree->verticalScrollBar()->setValue(20);
    expect_in_step();
    show_model(nullptr);
    EXPECT_EQ(nullptr, m_tree->model());
    EXPECT_EQ(nullptr, m_names->model());
    EXPECT_FALSE(m_names->isVisible());
}

// ---- Icons ----------------------------------------------------------------------------------------------------------

TEST_F(MODULE_NAVIGATOR_TEST, a_click_on_an_icon_is_told_and_chooses_nothing)
{
    fill();
    show_model(m_model.get());
    const QSignalSpy clicked(m_dock, SIGNAL(icon_clicked(QModelIndex)));
    const QSignalSpy current(m_dock, SIGNAL(current_changed(QModelIndex)));
    m_tree->setColumnWidth(0, 100);
    m_tree->setColumnWidth(1, 40);
    m_tree->setColumnWidth(2, 40);
    GUI_DRIVER::process_posted();
    ASSERT_FALSE(m_names->isVisible());
    press_icon(m_tree, shown(3));
    ASSERT_EQ(1, clicked.count());
    EXPECT_EQ(m_model->index(3, 0), clicked.at(0).at(0).toModelIndex());
    make_wide();
    press_icon(m_names, shown(4));
    ASSERT_EQ(2, clicked.count());
    EXPECT_EQ(m_model->index(4, 0), clicked.at(1).at(0).toModelIndex());
    EXPECT_EQ(0, current.count());
    EXPECT_FALSE(m_tree->selectionModel()->hasSelection());
}

// ---- Filtering ------------------------------------------------------------------------------------------------------

TEST_F(MODULE_NAVIGATOR_TEST, a_filter_unfolds_the_ways_to_its_matches_and_counts_them)
{
    fill();
    show_model(m_model.get());
    filter("bit_17");
    ASSERT_EQ(1, m_tree->model()->rowCount());
    const QModelIndex pin = shown(0, shown(0));
    EXPECT_TRUE(m_tree->isExpanded(shown(0)));
    EXPECT_TRUE(m_tree->isExpanded(pin));
    EXPECT_EQ("bit_17", shown(0, pin).data().toString());
    EXPECT_TRUE(m_note->isVisible());
    EXPECT_EQ("1 match", m_note->text());
    filter("pin_1_");
    EXPECT_EQ("2 matches", m_note->text());
    EXPECT_TRUE(m_tree->isExpanded(shown(0)));
    EXPECT_FALSE(m_tree->isExpanded(shown(0, shown(0)))); // a match itself, with nothing that matches below
    filter("nowhere");
    EXPECT_EQ("No matches", m_note->text());
    expect_in_step();
    filter("");
    EXPECT_FALSE(m_note->isVisible());
    EXPECT_EQ(40, m_tree->model()->rowCount());
}

TEST_F(MODULE_NAVIGATOR_TEST, what_was_unfolded_before_filtering_is_so_again_and_nothing_else)
{
    fill();
    show_model(m_model.get());
    m_tree->expand(shown(2));
    m_tree->expand(shown(0, shown(2)));
    m_tree->expand(shown(5));
    m_tree->expand(shown(0, shown(7))); // below a row that is folded
    GUI_DRIVER::click(m_tree->viewport(), QPoint(200, m_tree->visualRect(shown(5)).center().y()));
    filter("bit_3");
    filter("bit_31");
    filter("block_9");
    filter("");
    for (int row = 0; row < 40; ++row)
    {
        EXPECT_EQ(row == 2 || row == 5, m_tree->isExpanded(shown(row))) << row;
        EXPECT_EQ(row == 2 || row == 7, m_tree->isExpanded(shown(0, shown(row)))) << row;
    }
    expect_in_step();
}

TEST_F(MODULE_NAVIGATOR_TEST, a_model_that_starts_anew_is_filtered_as_before)
{
    fill();
    show_model(m_model.get());
    m_tree->expand(shown(1));
    filter("bit_17");
    m_model->clear();
    EXPECT_EQ("No matches", m_note->text());
    fill(20);
    EXPECT_EQ(1, m_tree->model()->rowCount());
    filter("");
    EXPECT_EQ(20, m_tree->model()->rowCount());
    EXPECT_FALSE(m_tree->isExpanded(shown(1)));
}

TEST_F(MODULE_NAVIGATOR_TEST, unfolding_stops_at_ten_thousand_rows_and_says_so)
{
    fill(4000);
    show_model(m_model.get());
    EXPECT_TRUE(QMetaObject::invokeMethod(m_dock, "unfold_all"));
    EXPECT_EQ("Only the first 10,000 rows are unfolded", m_note->text());
    EXPECT_TRUE(m_tree->isExpanded(shown(2999)));
    EXPECT_FALSE(m_tree->isExpanded(shown(3000)));
    expect_in_step();
    filter("bit");
    EXPECT_EQ("4,000 matches; only the first 10,000 rows are unfolded", m_note->text());
    EXPECT_EQ(4000, m_tree->model()->rowCount());
    filter("bit_400");
    EXPECT_EQ("1 match", m_note->text());
    filter("");
    EXPECT_FALSE(m_note->isVisible());
}

TEST_F(MODULE_NAVIGATOR_TEST, the_asterisk_unfolds_what_is_below_the_current_row)
{
    fill();
    show_model(m_model.get());
    m_tree->setCurrentIndex(shown(3));
    GUI_DRIVER::key_click(m_tree, Qt::Key_Asterisk);
    EXPECT_TRUE(m_tree->isExpanded(shown(3)));
    EXPECT_TRUE(m_tree->isExpanded(shown(0, shown(3))));
    EXPECT_FALSE(m_tree->isExpanded(shown(4)));
    expect_in_step();

    QStandardItemModel large; // one row with more than anybody can look at
    auto* const top = new QStandardItem("top");
    for (int i = 0; i < 12000; ++i)
        top->appendRow(new QStandardItem("leaf"));
    large.appendRow(top);
    large.appendRow(new QStandardItem("other"));
    show_model(&large);
    m_tree->setCurrentIndex(shown(0));
    GUI_DRIVER::key_click(m_tree, Qt::Key_Asterisk);
    EXPECT_TRUE(m_tree->isExpanded(shown(0))); // as a click on its branch would do
    EXPECT_EQ("Only the first 10,000 rows are unfolded", m_note->text());
    show_model(nullptr);
}

// ---- Columns and menus ----------------------------------------------------------------------------------------------

TEST_F(MODULE_NAVIGATOR_TEST, rows_are_copied_with_their_columns)
{
    fill();
    show_model(m_model.get());
    QGuiApplication::clipboard()->setText("before");
    GUI_DRIVER::key_click(m_tree, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ("before", QGuiApplication::clipboard()->text());
    m_tree->setCurrentIndex(shown(3));
    m_tree->selectionModel()->select(shown(1), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    GUI_DRIVER::key_click(m_tree, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ("block_1\tblock_1_module\t42\t\nblock_3\tblock_3_module\t42\t\n", QGuiApplication::clipboard()->text());
}

TEST_F(MODULE_NAVIGATOR_TEST, the_menu_of_rows_copies_and_unfolds)
{
    fill();
    show_model(m_model.get());
    make_wide();
    const auto choose = [this](TOLV_TREE_VIEW* view, int row, const char* text)
    {
        const QPoint position = view == m_names ? view->visualRect(shown(row)).center()
                                                : QPoint(200, view->visualRect(shown(row)).center().y());
        GUI_DRIVER::click(view->viewport(), position);
        answer_next_menu(QString::fromLatin1(text));
        QContextMenuEvent event(QContextMenuEvent::Mouse, position, view->viewport()->mapToGlobal(position));
        QCoreApplication::sendEvent(view->viewport(), &event);
    };
    choose(m_names, 1, "Expand Selected");
    EXPECT_TRUE(m_tree->isExpanded(shown(0, shown(1))));
    EXPECT_FALSE(m_tree->isExpanded(shown(2)));
    choose(m_tree, 0, "Expand All");
    EXPECT_TRUE(m_tree->isExpanded(shown(39)));
    expect_in_step();
    choose(m_tree, 0, "Collapse All");
    EXPECT_FALSE(m_tree->isExpanded(shown(39)));
    expect_in_step();
    choose(m_names, 2, "Copy Rows");
    EXPECT_EQ("block_2\tblock_2_module\t42\t\n", QGuiApplication::clipboard()->text());
}

TEST_F(MODULE_NAVIGATOR_TEST, columns_are_hidden_by_the_menu_of_the_header_and_stay_as_they_were)
{
    fill();
    show_model(m_model.get());
    EXPECT_TRUE(m_tree->isColumnHidden(3)); // not everybody wants to see it
    EXPECT_FALSE(m_tree->isColumnHidden(2));
    make_wide();
    answer_next_menu("Extra");
    QMetaObject::invokeMethod(m_names->header(), "customContextMenuRequested", Q_ARG(QPoint, QPoint(5, 5)));
    EXPECT_FALSE(m_tree->isColumnHidden(3));
    EXPECT_TRUE(m_names->isColumnHidden(3));
    answer_next_menu("Cells");
    QMetaObject::invokeMethod(m_tree->header(), "customContextMenuRequested", Q_ARG(QPoint, QPoint(5, 5)));
    EXPECT_TRUE(m_tree->isColumnHidden(2));
    m_tree->setColumnWidth(0, 123);
    m_tree->setColumnWidth(1, 177);
    delete m_dock;

    m_dock = make_dock();
    m_tree = GUI_DRIVER::find_widget<TOLV_TREE_VIEW>(m_dock, "hierarchy");
    show_model(m_model.get());
    EXPECT_TRUE(m_tree->isColumnHidden(2));
    EXPECT_FALSE(m_tree->isColumnHidden(3));
    EXPECT_EQ(123, m_tree->columnWidth(0));
    EXPECT_EQ(177, m_tree->columnWidth(1));
}
