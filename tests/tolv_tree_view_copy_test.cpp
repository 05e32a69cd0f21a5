// Copying of selected rows to the clipboard, and dumps.

#include "tolv_tree_view_fixture.h"

#include "gui_driver.h"
#include "test_environment.h"
#include "tolv_data_transfer_manager.h"
#include "tolv_instance_name.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QIdentityProxyModel>

#include <algorithm>
#include <random>

namespace
{
class TOLV_TREE_VIEW_COPY_TEST : public TREE_VIEW_TEST
{
protected:
    void SetUp() override
    {
        TREE_VIEW_TEST::SetUp();
        m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
        QGuiApplication::clipboard()->clear();
    }

    void TearDown() override
    {
        QGuiApplication::clipboard()->clear();
        TREE_VIEW_TEST::TearDown();
    }

    void select(const QModelIndex& index, bool whole_row = true) const
    {
        QItemSelectionModel::SelectionFlags flags = QItemSelectionModel::Select;
        if (whole_row)
            flags |= QItemSelectionModel::Rows;
        m_view->selectionModel()->select(index, flags);
    }

    static QString get_copied_text()
    {
        return QGuiApplication::clipboard()->text();
    }

    static QList<TOLV_INSTANCE_NAME> get_copied_names()
    {
        return TOLV_DATA_TRANSFER_MANAGER::get_instance()
            ->get_instance_name_list_transfer_data_from_clipboard()
            .value<TOLV_INSTANCE_NAME_LIST>()
            .get_list();
    }

    std::string dump(const QModelIndex& index, int depth) const
    {
        const std::string path = TEST_ENVIRONMENT::get_folder() + "/tree.txt";
        std::ofstream out(path);
        m_view->dump_tree_view_data(index, out, depth);
        out.close();
        return TEST_ENVIRONMENT::read_file(path);
    }
};
} // namespace

// ---- Copying --------------------------------------------------------------------------------------------------------

TEST_F(TOLV_TREE_VIEW_COPY_TEST, rows_selected_in_reverse_are_copied_in_tree_order)
{
    select(index(m_spare));
    select(index(m_clk));
    select(index(m_top));
    m_view->on_copy_selection(false, nullptr);
    EXPECT_EQ(QStringLiteral("top\t\nclk\t\nspare\t\n"), get_copied_text());
}

TEST_F(TOLV_TREE_VIEW_COPY_TEST, parents_come_before_their_children_though_all_cells_are_selected)
{
    for (const QStandardItem* item : {m_pin, m_clk, m_ram, m_fifo, m_spare, m_top})
    {
        for (const int column : {2, 1, 0})
            select(index(item, column), false);
    }
    m_view->on_copy_selection(false, nullptr);
    EXPECT_EQ(QStringLiteral("top\t\nfifo\t\nram\t\nclk\t\nspare\t\npin\t\n"), get_copied_text());
}

TEST_F(TOLV_TREE_VIEW_COPY_TEST, all_columns_keep_their_trailing_tab)
{
    select(index(m_fifo));
    m_view->on_copy_selection(true, nullptr);
    EXPECT_EQ(QStringLiteral("fifo\tblock\t3\t\n"), get_copied_text());
}

TEST_F(TOLV_TREE_VIEW_COPY_TEST, hidden_columns_are_left_out_but_for_the_first)
{
    m_view->setColumnHidden(1, true);
    select(index(m_fifo));
    m_view->on_copy_selection(true, nullptr);
    EXPECT_EQ(QStringLiteral("fifo\t3\t\n"), get_copied_text());
    m_view->setColumnHidden(0, true);
    m_view->on_copy_selection(true, nullptr);
    EXPECT_EQ(QStringLiteral("fifo\t3\t\n"), get_copied_text());
}

TEST_F(TOLV_TREE_VIEW_COPY_TEST, columns_are_copied_by_number_however_they_are_shown)
{
    m_view->header()->moveSection(2, 0);
    select(index(m_fifo));
    m_view->on_copy_selection(true, nullptr);
    EXPECT_EQ(QStringLiteral("fifo\tblock\t3\t\n"), get_copied_text());
}

TEST_F(TOLV_TREE_VIEW_COPY_TEST, a_cell_that_does_not_exist_gives_its_tab)
{
    m_fifo->setColumnCount(1);
    select(index(m_ram));
    m_view->on_copy_selection(true, nullptr);
    EXPECT_EQ(QStringLiteral("ram\t\t\t\n"), get_copied_text());
}

TEST_F(TOLV_TREE_VIEW_COPY_TEST, names_are_copied_with_the_text)
{
    select(index(m_fifo));
    select(index(m_top));
    m_view->on_copy_selection(true, nullptr);
    const QList<TOLV_INSTANCE_NAME> names = get_copied_names();
    ASSERT_EQ(2, names.size());
    EXPECT_EQ("top", names.at(0).m_name);
    EXPECT_EQ("fifo", names.at(1).m_name);
    EXPECT_EQ(3, names.at(1).m_type);
    EXPECT_FALSE(names.at(1).m_flag);
    EXPECT_EQ(0U, names.at(1).m_number);
}

TEST_F(TOLV_TREE_VIEW_COPY_TEST, a_prefix_stands_before_text_and_name)
{
    select(index(m_clk));
    m_view->on_copy_selection(true, "chip|");
    EXPECT_EQ(QStringLiteral("chip|clk\tnet\t0\t\n"), get_copied_text());
    ASSERT_EQ(1, get_copied_names().size());
    EXPECT_EQ("chip|clk", get_copied_names().at(0).m_name);
}

TEST_F(TOLV_TREE_VIEW_COPY_TEST, prefix_and_name_are_in_the_local_encoding)
{
    const QString prefix = QString::fromUtf8("\xe2\x82\xac|"); // in no one-byte alphabet of the first 256 characters
    const QString name = QString::fromUtf8("\xcf\x89_clk");
    m_clk->setText(name);
    select(index(m_clk));
    m_view->on_copy_selection(false, prefix.toLocal8Bit().constData());
    EXPECT_EQ(prefix + name + QStringLiteral("\t\n"), get_copied_text());
    ASSERT_EQ(1, get_copied_names().size());
    // The clipboard takes the bytes of a name for single characters, on purpose.
    const QString on_clipboard = QString::fromLatin1((prefix + name).toLocal8Bit());
    EXPECT_EQ(on_clipboard.toLocal8Bit().toStdString(), get_copied_names().at(0).m_name);
}

TEST_F(TOLV_TREE_VIEW_COPY_TEST, cells_outside_the_first_column_copy_nothing)
{
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    select(index(m_top, 1), false);
    select(index(m_fifo, 2), false);
    m_view->on_copy_selection(true, "prefix");
    EXPECT_EQ(QStringLiteral("before"), get_copied_text());
    m_view->clearSelection();
    m_view->on_copy_selection(true, nullptr);
    EXPECT_EQ(QStringLiteral("before"), get_copied_text());
}

TEST_F(TOLV_TREE_VIEW_COPY_TEST, what_cannot_be_selected_or_is_disabled_is_not_copied)
{
    m_clk->setEnabled(false);
    m_fifo->setSelectable(false);
    m_view->expandAll();
    m_view->selectAll();
    m_view->on_copy_selection(false, nullptr);
    EXPECT_EQ(QStringLiteral("top\t\nram\t\nspare\t\npin\t\n"), get_copied_text());
}

TEST_F(TOLV_TREE_VIEW_COPY_TEST, without_a_model_nothing_is_copied)
{
    QGuiApplication::clipboard()->setText(QStringLiteral("before"));
    m_view->setModel(nullptr);
    m_view->on_copy_selection(true, nullptr);
    EXPECT_EQ(QStringLiteral("before"), get_copied_text());
}

TEST_F(TOLV_TREE_VIEW_COPY_TEST, copying_works_behind_a_proxy)
{
    QIdentityProxyModel proxy;
    proxy.setSourceModel(m_model.get());
    m_view->setModel(&proxy);
    m_view->expandAll();
    m_view->selectAll();
    m_view->on_copy_selection(false, nullptr);
    EXPECT_EQ(QStringLiteral("top\t\nfifo\t\nram\t\nclk\t\nspare\t\npin\t\n"), get_copied_text());
    m_view->setModel(nullptr);
}

TEST_F(TOLV_TREE_VIEW_COPY_TEST, a_user_selects_and_the_rows_come_in_order)
{
    m_view->expandAll();
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    const auto click = [&](const QStandardItem* item, Qt::KeyboardModifiers modifiers)
    { GUI_DRIVER::click(m_view->viewport(), m_view->visualRect(index(item)).center(), Qt::LeftButton, modifiers); };
    click(m_pin, Qt::NoModifier);
    click(m_ram, Qt::ControlModifier);
    click(m_top, Qt::ControlModifier);
    m_view->on_copy_selection(false, nullptr);
    EXPECT_EQ(QStringLiteral("top\t\nram\t\npin\t\n"), get_copied_text());
}

TEST_F(TOLV_TREE_VIEW_COPY_TEST, any_selection_of_first_cells_comes_as_the_order_of_indexes_sorts_it)
{
    std::mt19937 engine(1);
    QVector<QStandardItem*> items = {m_top, m_fifo, m_ram, m_clk, m_spare, m_pin};
    while (items.size() < 300)
    {
        QStandardItem* const parent = items.at(static_cast<int>(engine() % static_cast<unsigned int>(items.size())));
        items << add_row(parent, qPrintable(QStringLiteral("n%1").arg(items.size())), "block", 0);
    }
    for (int round = 0; round < 10; ++round)
    {
        std::shuffle(items.begin(), items.end(), engine);
        m_view->clearSelection();
        for (int i = 0; i < 100; ++i)
            select(index(items.at(i)), engine() % 2 == 0);
        QModelIndexList expected;
        const QModelIndexList selected = m_view->selectionModel()->selectedIndexes();
        std::copy_if(selected.begin(), selected.end(), std::back_inserter(expected),
                     [](const QModelIndex& index) { return index.column() == 0; });
        std::stable_sort(expected.begin(), expected.end(), tolv_tree_order_indexes);
        QString expected_text;
        for (const QModelIndex& index : qAsConst(expected))
            expected_text += index.data().toString() + QStringLiteral("\t\n");
        m_view->on_copy_selection(false, nullptr);
        EXPECT_EQ(expected_text, get_copied_text());
    }
}

// ---- Dumps ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_TREE_VIEW_COPY_TEST, the_whole_tree_is_dumped_one_level_deeper_each)
{
    EXPECT_EQ("|-top\troot\t7\t\n"
              "|--fifo\tblock\t3\t\n"
              "|---ram\tmemory\t2\t\n"
              "|--clk\tnet\t0\t\n"
              "|-spare\troot\t0\t\n"
              "|--pin\tnet\t0\t\n",
              dump(QModelIndex(), 0));
}

TEST_F(TOLV_TREE_VIEW_COPY_TEST, a_row_at_depth_zero_has_nothing_before_it)
{
    EXPECT_EQ("fifo\tblock\t3\t\n|-ram\tmemory\t2\t\n", dump(index(m_fifo), 0));
    EXPECT_EQ("fifo\tblock\t3\t\nram\tmemory\t2\t\n", dump(index(m_fifo), -1));
}

TEST_F(TOLV_TREE_VIEW_COPY_TEST, a_row_at_depth_two_has_two_dashes)
{
    EXPECT_EQ("|--clk\tnet\t0\t\n", dump(index(m_clk), 2));
}

TEST_F(TOLV_TREE_VIEW_COPY_TEST, hidden_columns_are_not_dumped_nor_is_the_mark_of_a_hidden_first_one)
{
    m_view->setColumnHidden(1, true);
    EXPECT_EQ("|-clk\t0\t\n", dump(index(m_clk), 1));
    m_view->setColumnHidden(0, true);
    EXPECT_EQ("0\t\n", dump(index(m_clk), 1));
}

TEST_F(TOLV_TREE_VIEW_COPY_TEST, cells_that_do_not_exist_are_not_dumped)
{
    m_fifo->setColumnCount(1);
    EXPECT_EQ("ram\t\n", dump(index(m_ram), 0));
}

TEST_F(TOLV_TREE_VIEW_COPY_TEST, texts_are_dumped_in_the_local_encoding)
{
    const QString text = QStringLiteral("m") + QChar(0xb5);
    m_clk->setText(text);
    EXPECT_EQ(text.toLocal8Bit().toStdString() + "\tnet\t0\t\n", dump(index(m_clk), 0));
}

TEST_F(TOLV_TREE_VIEW_COPY_TEST, dumping_needs_a_model)
{
    m_view->setModel(nullptr);
    std::ofstream out;
    EXPECT_INTERNAL_ERROR(m_view->dump_tree_view_data(QModelIndex(), out, 0), "view_model != NULL");
}
