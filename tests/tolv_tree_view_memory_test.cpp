// Paths of items, and the tree view's memory of what is expanded.

#include "tolv_tree_view_fixture.h"

#include "gui_driver.h"

#include <QIdentityProxyModel>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStringListModel>

namespace
{
using MEMORY = QMap<QString, bool>;
using CHECK_MEMORY = QMap<QString, int>;

class TOLV_TREE_VIEW_MEMORY_TEST : public TREE_VIEW_TEST
{
protected:
    void SetUp() override
    {
        TREE_VIEW_TEST::SetUp();
        m_proxy.setSourceModel(m_model.get());
    }

    void TearDown() override
    {
        m_proxy.setSourceModel(nullptr);
        TREE_VIEW_TEST::TearDown();
    }

    /// The view as it is behind a filter.
    void show_proxy()
    {
        m_view->setModel(&m_proxy);
    }

    QModelIndex proxy_index(const QStandardItem* item) const
    {
        return m_proxy.mapFromSource(index(item));
    }

    bool is_expanded(const QStandardItem* item) const
    {
        return m_view->isExpanded(index(item));
    }

    /// Which of the items with children are expanded, all in the order of the model.
    QStringList get_expanded() const
    {
        QStringList texts;
        for (const QStandardItem* item : {m_top, m_fifo, m_spare})
        {
            if (is_expanded(item))
                texts << item->text();
        }
        return texts;
    }

    QIdentityProxyModel m_proxy;
};

const char* const TOP = "top";
const char* const FIFO = "top||fifo";
const char* const RAM = "top||fifo||ram";
const char* const CLK = "top||clk";
const char* const SPARE = "spare";
const char* const PIN = "spare||pin";
} // namespace

// ---- Paths ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, a_path_reads_from_the_top_down)
{
    EXPECT_EQ(TOP, m_view->get_path(index(m_top)));
    EXPECT_EQ(RAM, m_view->get_path(index(m_ram)));
    EXPECT_EQ(RAM, m_view->get_path(m_ram));
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, the_path_of_another_cell_ends_with_its_own_text)
{
    EXPECT_EQ(QStringLiteral("top||fifo||memory"), m_view->get_path(index(m_ram, 1)));
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, separators_in_texts_are_not_escaped)
{
    m_ram->setText(QStringLiteral("a||b"));
    EXPECT_EQ(QStringLiteral("top||fifo||a||b"), m_view->get_path(m_ram));
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, behind_a_proxy_a_path_is_the_text_alone)
{
    show_proxy();
    EXPECT_EQ(QStringLiteral("ram"), m_view->get_path(proxy_index(m_ram)));
    EXPECT_EQ(QString(), m_view->get_path(m_ram)); // items belong to a QStandardItemModel
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, what_stands_nowhere_has_an_empty_path)
{
    EXPECT_EQ(QString(), m_view->get_path(QModelIndex()));
    EXPECT_EQ(QString(), m_view->get_path(nullptr));
    const QStandardItem loose(QStringLiteral("loose"));
    EXPECT_EQ(QString(), m_view->get_path(const_cast<QStandardItem*>(&loose)));
    show_proxy();
    EXPECT_EQ(QString(), m_view->get_path(QModelIndex()));
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, a_check_state_other_than_two_and_zero_is_partial)
{
    EXPECT_EQ(Qt::Checked, m_view->get_check_state(2));
    EXPECT_EQ(Qt::Unchecked, m_view->get_check_state(0));
    for (const int state : {1, -1, 3, 2147483647})
        EXPECT_EQ(Qt::PartiallyChecked, m_view->get_check_state(state));
    EXPECT_EQ(Qt::Checked, m_view->get_check_state(Qt::Checked));
    EXPECT_EQ(Qt::Unchecked, m_view->get_check_state(Qt::Unchecked));
    EXPECT_EQ(Qt::PartiallyChecked, m_view->get_check_state(Qt::PartiallyChecked));
}

// ---- Saving ---------------------------------------------------------------------------------------------------------

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, saving_remembers_every_path_and_leaves_as_expanded)
{
    m_view->expand(index(m_top));
    m_view->save_expandable_state(false);
    EXPECT_EQ(MEMORY({{TOP, true}, {FIFO, false}, {RAM, true}, {CLK, true}, {SPARE, false}, {PIN, true}}),
              m_view->m_expansion_memory);
    EXPECT_TRUE(m_view->m_check_state_memory.isEmpty());
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, saving_with_clear_leaves_only_the_last_row_at_the_top)
{
    m_view->expandAll();
    m_view->save_expandable_state(false);
    m_view->save_expandable_state(true);
    EXPECT_EQ(MEMORY({{SPARE, true}, {PIN, true}}), m_view->m_expansion_memory);
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, saving_without_clear_keeps_what_is_no_longer_there)
{
    m_view->save_expandable_state(false);
    m_fifo->setText(QStringLiteral("stack"));
    m_view->save_expandable_state(false);
    EXPECT_TRUE(m_view->m_expansion_memory.contains(FIFO));
    EXPECT_TRUE(m_view->m_expansion_memory.contains(QStringLiteral("top||stack")));
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, saving_one_index_remembers_it_and_what_is_below)
{
    m_view->expand(index(m_fifo));
    m_view->save_expandable_state(index(m_fifo), false);
    EXPECT_EQ(MEMORY({{FIFO, true}, {RAM, true}}), m_view->m_expansion_memory);
    m_view->save_expandable_state(index(m_clk), true);
    EXPECT_EQ(MEMORY({{CLK, true}}), m_view->m_expansion_memory);
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, saving_the_invalid_index_remembers_all_even_with_clear)
{
    m_view->expand(index(m_spare));
    m_view->m_expansion_memory.insert(QStringLiteral("old"), true);
    m_view->save_expandable_state(QModelIndex(), true);
    EXPECT_EQ(MEMORY({{TOP, false}, {FIFO, false}, {RAM, true}, {CLK, true}, {SPARE, true}, {PIN, true}}),
              m_view->m_expansion_memory);
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, saving_an_item_and_saving_an_index_without_item_are_the_same)
{
    const MEMORY expected({{FIFO, false}, {RAM, true}});
    m_view->save_expandable_state(m_fifo, QModelIndex(), true);
    EXPECT_EQ(expected, m_view->m_expansion_memory);
    m_view->m_expansion_memory.clear();
    m_view->save_expandable_state(nullptr, index(m_fifo), false);
    EXPECT_EQ(expected, m_view->m_expansion_memory);
    // The flag is only handed on.
    m_view->save_expandable_state(m_clk, QModelIndex(), true);
    EXPECT_EQ(3, m_view->m_expansion_memory.size());
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, saving_no_item_and_no_index_remembers_all)
{
    m_view->save_expandable_state(nullptr, QModelIndex(), false);
    EXPECT_EQ(6, m_view->m_expansion_memory.size());
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, siblings_of_one_text_share_an_entry)
{
    add_row(m_top, "fifo", "block", 1);
    m_view->expand(index(m_fifo));
    m_view->save_expandable_state(false);
    EXPECT_TRUE(m_view->m_expansion_memory.value(FIFO)); // the second is a leaf, saved last
    EXPECT_EQ(6, m_view->m_expansion_memory.size());
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, a_row_without_an_item_in_its_first_column_is_passed_over)
{
    m_fifo->setChild(1, 1, new QStandardItem(QStringLiteral("lone cell")));
    m_view->save_expandable_state(false);
    EXPECT_EQ(6, m_view->m_expansion_memory.size());
    EXPECT_TRUE(m_view->restore_expandable_state());
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, behind_a_proxy_the_rows_at_the_top_are_not_remembered_with_the_whole_tree)
{
    show_proxy();
    m_view->setExpanded(proxy_index(m_top), true);
    m_view->setExpanded(proxy_index(m_fifo), true);
    m_view->save_expandable_state(false);
    EXPECT_EQ(MEMORY({{QStringLiteral("fifo"), true},
                      {QStringLiteral("ram"), true},
                      {QStringLiteral("clk"), true},
                      {QStringLiteral("pin"), true}}),
              m_view->m_expansion_memory);
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, behind_a_proxy_the_invalid_index_remembers_the_rows_at_the_top_too)
{
    show_proxy();
    m_view->setExpanded(proxy_index(m_top), true);
    m_view->save_expandable_state(QModelIndex(), true);
    EXPECT_EQ(6, m_view->m_expansion_memory.size());
    EXPECT_TRUE(m_view->m_expansion_memory.value(QStringLiteral("top")));
    EXPECT_FALSE(m_view->m_expansion_memory.value(QStringLiteral("spare"), true));
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, check_states_are_remembered_where_they_are_tracked)
{
    m_top->setCheckState(Qt::Checked);
    m_fifo->setCheckState(Qt::PartiallyChecked);
    m_ram->setCheckState(Qt::Unchecked);
    m_view->m_is_check_state_tracked = true;
    m_view->save_expandable_state(index(m_top), false);
    // An item that has never been checked counts as unchecked.
    EXPECT_EQ(CHECK_MEMORY({{TOP, 2}, {FIFO, 1}, {RAM, 0}, {CLK, 0}}), m_view->m_check_state_memory);
    m_view->save_expandable_state(index(m_ram), true);
    EXPECT_EQ(CHECK_MEMORY({{RAM, 0}}), m_view->m_check_state_memory);
}

// ---- Restoring ------------------------------------------------------------------------------------------------------

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, restoring_brings_back_what_was_expanded)
{
    m_view->expand(index(m_top));
    m_view->expand(index(m_fifo));
    m_view->save_expandable_state(false);
    m_view->collapseAll();
    m_view->expand(index(m_spare));
    EXPECT_TRUE(m_view->restore_expandable_state());
    EXPECT_EQ(QStringList({QStringLiteral("top"), QStringLiteral("fifo")}), get_expanded());
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, restoring_goes_by_path_in_a_model_filled_anew)
{
    m_view->expand(index(m_fifo));
    m_view->save_expandable_state(false);
    m_model->removeRows(0, 2);
    const QStandardItem* const spare = add_row(nullptr, "spare", "root", 0);
    QStandardItem* const top = add_row(nullptr, "top", "root", 0);
    QStandardItem* const fifo = add_row(top, "fifo", "block", 0);
    add_row(fifo, "ram", "memory", 0);
    m_view->restore_expandable_state();
    EXPECT_TRUE(is_expanded(fifo));
    EXPECT_FALSE(is_expanded(top));
    EXPECT_FALSE(is_expanded(spare));
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, restoring_collapses_what_is_unknown)
{
    m_view->save_expandable_state(index(m_spare), true);
    m_view->expandAll();
    m_view->restore_expandable_state();
    EXPECT_EQ(QStringList(), get_expanded());
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, a_leaf_that_comes_back_with_children_is_expanded)
{
    m_view->save_expandable_state(false);
    add_row(m_clk, "buffer", "cell", 0);
    m_view->restore_expandable_state();
    EXPECT_TRUE(is_expanded(m_clk));
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, restoring_answers_whether_anything_is_remembered)
{
    EXPECT_FALSE(m_view->restore_expandable_state());
    EXPECT_FALSE(m_view->restore_expandable_state(index(m_top)));
    m_view->m_expansion_memory.insert(QStringLiteral("unknown"), true);
    EXPECT_TRUE(m_view->restore_expandable_state());
    EXPECT_TRUE(m_view->restore_expandable_state(index(m_top)));
    EXPECT_TRUE(m_view->restore_expandable_state(QModelIndex()));
    m_model->removeRows(0, 2);
    EXPECT_FALSE(m_view->restore_expandable_state()); // no row has answered
    EXPECT_TRUE(m_view->restore_expandable_state(QModelIndex()));
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, restoring_one_index_leaves_the_others_alone)
{
    m_view->expandAll();
    m_view->save_expandable_state(false);
    m_view->collapseAll();
    m_view->restore_expandable_state(index(m_fifo));
    EXPECT_EQ(QStringList({QStringLiteral("fifo")}), get_expanded());
    m_view->restore_expandable_state(m_top);
    EXPECT_EQ(QStringList({QStringLiteral("top"), QStringLiteral("fifo")}), get_expanded());
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, restoring_the_invalid_index_restores_all)
{
    m_view->expandAll();
    m_view->save_expandable_state(false);
    m_view->collapseAll();
    m_view->restore_expandable_state(QModelIndex());
    EXPECT_EQ(QStringList({QStringLiteral("top"), QStringLiteral("fifo"), QStringLiteral("spare")}), get_expanded());
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, behind_a_proxy_one_index_alone_is_restored_by_its_text)
{
    show_proxy();
    m_view->m_expansion_memory = MEMORY({{QStringLiteral("top"), true}, {QStringLiteral("fifo"), true}});
    m_view->setExpanded(proxy_index(m_spare), true);
    EXPECT_TRUE(m_view->restore_expandable_state(proxy_index(m_top)));
    EXPECT_TRUE(m_view->isExpanded(proxy_index(m_top)));
    EXPECT_FALSE(m_view->isExpanded(proxy_index(m_fifo)));
    m_view->restore_expandable_state(proxy_index(m_fifo));
    EXPECT_TRUE(m_view->isExpanded(proxy_index(m_fifo)));
    EXPECT_TRUE(m_view->isExpanded(proxy_index(m_spare)));
    m_view->restore_expandable_state();
    EXPECT_FALSE(m_view->isExpanded(proxy_index(m_spare)));
    m_view->restore_expandable_state(m_spare); // items belong to a QStandardItemModel: nothing happens
    EXPECT_FALSE(m_view->isExpanded(proxy_index(m_spare)));
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, restoring_writes_partial_check_states_where_they_are_tracked)
{
    class FOLLOWING_VIEW : public OPEN_TREE_VIEW
    {
    public:
        using OPEN_TREE_VIEW::OPEN_TREE_VIEW;
        void item_check_state_changed(QString path) override
        {
            m_paths << path;
        }
        QStringList m_paths;
    };
    FOLLOWING_VIEW view(m_window.get(), 0);
    view.setModel(m_model.get());
    m_top->setCheckState(Qt::Checked);
    view.m_is_check_state_tracked = true;
    view.save_expandable_state(false);
    EXPECT_EQ(2, view.m_check_state_memory.value(TOP));
    view.restore_expandable_state();
    for (const QStandardItem* item : {m_top, m_fifo, m_ram, m_clk, m_spare, m_pin})
        EXPECT_EQ(QVariant(1), item->data(Qt::CheckStateRole)) << item->text().toStdString();
    EXPECT_EQ(QStringList(), view.m_paths); // the remembered states are not read back
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, restoring_leaves_check_states_alone_where_they_are_not_tracked)
{
    m_top->setCheckState(Qt::Checked);
    m_view->save_expandable_state(false);
    m_view->restore_expandable_state();
    EXPECT_EQ(Qt::Checked, m_top->checkState());
    EXPECT_FALSE(m_ram->data(Qt::CheckStateRole).isValid());
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, null_items_and_loose_items_are_harmless)
{
    m_view->expandAll();
    m_view->restore_expandable_state(static_cast<QStandardItem*>(nullptr));
    QStandardItem loose(QStringLiteral("loose"));
    m_view->restore_expandable_state(&loose);
    m_view->save_expandable_state(&loose, QModelIndex(), false);
    EXPECT_TRUE(m_view->m_expansion_memory.isEmpty());
    EXPECT_EQ(3, get_expanded().size());
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, looking_back_needs_a_valid_index_that_was_expanded)
{
    m_view->expand(index(m_top));
    m_view->save_expandable_state(false);
    m_view->collapseAll();
    EXPECT_TRUE(m_view->was_item_expanded_previously(index(m_top)));
    EXPECT_FALSE(m_view->was_item_expanded_previously(index(m_fifo)));
    EXPECT_TRUE(m_view->was_item_expanded_previously(index(m_ram)));
    EXPECT_FALSE(m_view->was_item_expanded_previously(QModelIndex()));
    m_fifo->setText(QStringLiteral("stack"));
    EXPECT_FALSE(m_view->was_item_expanded_previously(index(m_ram)));
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, all_but_restoring_the_whole_tree_need_a_model)
{
    m_view->setModel(nullptr);
    const char* const error = "view_model != NULL";
    EXPECT_INTERNAL_ERROR(m_view->get_path(QModelIndex()), error);
    EXPECT_INTERNAL_ERROR(m_view->save_expandable_state(true), error);
    EXPECT_INTERNAL_ERROR(m_view->save_expandable_state(QModelIndex(), true), error);
    EXPECT_INTERNAL_ERROR(m_view->save_expandable_state(nullptr, QModelIndex(), true), error);
    EXPECT_INTERNAL_ERROR(m_view->restore_expandable_state(QModelIndex()), error);
    EXPECT_INTERNAL_ERROR(m_view->was_item_expanded_previously(QModelIndex()), error);
    EXPECT_FALSE(m_view->restore_expandable_state());
    const TRAPPED_INTERNAL_ERROR report = CATCH_INTERNAL_ERROR(m_view->get_path(QModelIndex()));
    EXPECT_EQ("TOLV", report.tag);
    EXPECT_EQ("tolv_tree_view", report.file);
}

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, a_model_whose_rows_have_no_index_is_an_internal_error)
{
    class ROWS_WITHOUT_INDEX : public QStringListModel
    {
    public:
        int rowCount(const QModelIndex& parent) const override
        {
            return parent.isValid() || !m_is_open ? 0 : 3;
        }
        QModelIndex index(int, int, const QModelIndex&) const override
        {
            return QModelIndex();
        }
        bool m_is_open = false;
    };
    ROWS_WITHOUT_INDEX model;
    m_view->setModel(&model);
    model.m_is_open = true;
    EXPECT_INTERNAL_ERROR(m_view->save_expandable_state(QModelIndex(), false), "item_index.isValid()");
    EXPECT_INTERNAL_ERROR(m_view->restore_expandable_state(QModelIndex()), "item_index.isValid()");
    model.m_is_open = false;
    m_view->setModel(nullptr);
}

// ---- Many rows ------------------------------------------------------------------------------------------------------

TEST_F(TOLV_TREE_VIEW_MEMORY_TEST, many_changes_end_with_rows_and_scroll_bar_up_to_date)
{
    m_model->removeRows(0, 2);
    for (int i = 0; i < 100; ++i)
        add_row(add_row(nullptr, qPrintable(QString::number(i)), "block", 0), "leaf", "net", 0);
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    m_view->expandAll();
    GUI_DRIVER::process_posted();
    const int expanded_maximum = m_view->verticalScrollBar()->maximum();
    const QRect expanded_rect = m_view->visualRect(m_model->index(3, 0));
    m_view->save_expandable_state(false);
    m_view->collapseAll();
    GUI_DRIVER::process_posted();
    ASSERT_LT(m_view->verticalScrollBar()->maximum(), expanded_maximum);

    const QSignalSpy expanded(m_view, SIGNAL(expanded(QModelIndex)));
    m_view->restore_expandable_state();
    EXPECT_EQ(expanded_maximum, m_view->verticalScrollBar()->maximum());
    EXPECT_EQ(expanded_rect, m_view->visualRect(m_model->index(3, 0)));
    QList<QModelIndex> told;
    for (const QList<QVariant>& arguments : expanded)
    {
        const QModelIndex index = arguments.at(0).toModelIndex();
        if (!index.parent().isValid())
            told << index;
    }
    ASSERT_EQ(100, told.size());
    EXPECT_EQ(m_model->index(42, 0), told.at(42));
}
