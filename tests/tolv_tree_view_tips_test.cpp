// Tool tips of cells, and the levels that they count with.

#include "tolv_tree_view_fixture.h"

#include "gui_driver.h"

#include <QHelpEvent>
#include <QPixmap>
#include <QToolTip>

#include <optional>

namespace
{
class TOLV_TREE_VIEW_TIPS_TEST : public TREE_VIEW_TEST
{
protected:
    void SetUp() override
    {
        TREE_VIEW_TEST::SetUp();
        m_view->expandAll();
        for (int column = 0; column < 3; ++column)
            m_view->setColumnWidth(column, 100);
        ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    }
    void TearDown() override
    {
        hide_tip();
        TREE_VIEW_TEST::TearDown();
    }

    static void hide_tip()
    {
        QToolTip::hideText();
        GUI_DRIVER::wait_for([] { return !QToolTip::isVisible(); });
    }

    /// Makes a cell so wide, without its level.
    void set_width(const QModelIndex& index, int width)
    {
        m_model->itemFromIndex(index)->setData(QSize(width, 20), Qt::SizeHintRole);
    }

    /// What the view says to a request for a tip at a point of it.
    bool request(const QPoint& position)
    {
        QHelpEvent event(QEvent::ToolTip, position, m_view->viewport()->mapToGlobal(position));
        return m_view->viewportEvent(&event);
    }
    /// The tip of a cell; nothing where there is none.
    std::optional<QString> get_tip(const QModelIndex& index)
    {
        hide_tip();
        EXPECT_FALSE(request(m_view->visualRect(index).center()));
        return QToolTip::isVisible() ? std::optional<QString>(QToolTip::text()) : std::nullopt;
    }
};

constexpr std::nullopt_t NO_TIP = std::nullopt;
} // namespace

TEST_F(TOLV_TREE_VIEW_TIPS_TEST, a_text_as_wide_as_its_column_has_no_tip_and_a_wider_one_has)
{
    set_width(index(m_top), 100);
    EXPECT_EQ(NO_TIP, get_tip(index(m_top)));
    set_width(index(m_top), 101);
    EXPECT_EQ(QStringLiteral("top"), get_tip(index(m_top)));
    set_width(index(m_fifo, 1), 100);
    EXPECT_EQ(NO_TIP, get_tip(index(m_fifo, 1)));
    set_width(index(m_fifo, 1), 101);
    EXPECT_EQ(QStringLiteral("block"), get_tip(index(m_fifo, 1)));
}

TEST_F(TOLV_TREE_VIEW_TIPS_TEST, an_item_deeper_in_the_tree_has_less_room)
{
    set_width(index(m_ram), 100 - 2 * m_view->indentation());
    EXPECT_EQ(NO_TIP, get_tip(index(m_ram)));
    set_width(index(m_ram), 101 - 2 * m_view->indentation());
    EXPECT_EQ(QStringLiteral("ram"), get_tip(index(m_ram)));
}

TEST_F(TOLV_TREE_VIEW_TIPS_TEST, an_icon_in_the_first_column_takes_one_indentation)
{
    for (QStandardItem* const item : {m_top, m_model->itemFromIndex(index(m_top, 1))})
        item->setData(QColor(Qt::red), Qt::DecorationRole);
    set_width(index(m_top), 100 - m_view->indentation());
    EXPECT_EQ(NO_TIP, get_tip(index(m_top)));
    set_width(index(m_top), 101 - m_view->indentation());
    EXPECT_EQ(QStringLiteral("top"), get_tip(index(m_top)));
    set_width(index(m_top, 1), 100);
    EXPECT_EQ(NO_TIP, get_tip(index(m_top, 1)));
}

TEST_F(TOLV_TREE_VIEW_TIPS_TEST, without_a_decorated_root_the_first_column_needs_one_indentation_less)
{
    m_view->setRootIsDecorated(false);
    set_width(index(m_top), 100 + m_view->indentation());
    EXPECT_EQ(NO_TIP, get_tip(index(m_top)));
    set_width(index(m_top), 101 + m_view->indentation());
    EXPECT_EQ(QStringLiteral("top"), get_tip(index(m_top)));
    set_width(index(m_top, 1), 101);
    EXPECT_EQ(QStringLiteral("root"), get_tip(index(m_top, 1)));
}

TEST_F(TOLV_TREE_VIEW_TIPS_TEST, the_tip_that_an_item_has_wins)
{
    m_top->setToolTip(QStringLiteral("The whole design"));
    EXPECT_EQ(QStringLiteral("The whole design"), get_tip(index(m_top)));
    set_width(index(m_top), 101);
    EXPECT_EQ(QStringLiteral("The whole design"), get_tip(index(m_top)));
    m_top->setToolTip(QString());
    EXPECT_EQ(QStringLiteral("top"), get_tip(index(m_top)));
}

TEST_F(TOLV_TREE_VIEW_TIPS_TEST, a_cell_without_a_text_is_left_to_qt)
{
    QStandardItem* const cell = m_model->itemFromIndex(index(m_top, 1));
    cell->setData(QVariant(), Qt::DisplayRole);
    cell->setToolTip(QStringLiteral("Qt's"));
    EXPECT_TRUE(request(m_view->visualRect(index(m_top, 1)).center())); // false is the answer where it is not Qt's
    EXPECT_EQ(QStringLiteral("Qt's"), QToolTip::text());
    cell->setToolTip(QString());
    cell->setData(QSize(200, 20), Qt::SizeHintRole);
    hide_tip();
    request(m_view->visualRect(index(m_top, 1)).center());
    EXPECT_FALSE(QToolTip::isVisible());
}

TEST_F(TOLV_TREE_VIEW_TIPS_TEST, a_tip_goes_where_there_is_no_item)
{
    set_width(index(m_top), 101);
    ASSERT_EQ(QStringLiteral("top"), get_tip(index(m_top)));
    EXPECT_FALSE(request(QPoint(50, m_view->viewport()->height() - 5)));
    EXPECT_TRUE(GUI_DRIVER::wait_for([] { return !QToolTip::isVisible(); }));
}

TEST_F(TOLV_TREE_VIEW_TIPS_TEST, a_pointer_that_rests_brings_the_tip)
{
    set_width(index(m_clk), 101);
    GUI_DRIVER::hover(m_view->viewport(), m_view->visualRect(index(m_clk)).center());
    EXPECT_TRUE(GUI_DRIVER::wait_for([] { return QToolTip::isVisible(); }));
    EXPECT_EQ(QStringLiteral("clk"), QToolTip::text());
}

TEST_F(TOLV_TREE_VIEW_TIPS_TEST, levels_count_in_the_first_column)
{
    EXPECT_EQ(0, m_view->get_item_level(index(m_top)));
    EXPECT_EQ(1, m_view->get_item_level(index(m_fifo)));
    EXPECT_EQ(2, m_view->get_item_level(index(m_ram)));
    EXPECT_EQ(0, m_view->get_item_level(index(m_ram, 1)));
}

TEST_F(TOLV_TREE_VIEW_TIPS_TEST, the_level_of_no_item_tells_whether_there_is_a_model)
{
    EXPECT_EQ(0, m_view->get_item_level(QModelIndex()));
    m_view->setModel(nullptr);
    EXPECT_EQ(-1, m_view->get_item_level(QModelIndex()));
}
