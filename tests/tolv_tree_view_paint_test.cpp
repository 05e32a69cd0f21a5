// Flags of the look: grid lines, rows, branches, the focus rectangle.

#include "tolv_tree_view_fixture.h"

#include "gui_driver.h"
#include "picture.h"
#include "recording_paint_device.h"
#include "recording_style.h"

#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>

namespace
{
class TOLV_TREE_VIEW_PAINT_TEST : public TREE_VIEW_TEST
{
protected:
    void SetUp() override
    {
        TREE_VIEW_TEST::SetUp();
        set_colors(QColor(0xd0, 0xe0, 0xf0), Qt::white, Qt::black);
        m_view->header()->setStretchLastSection(false);
        m_view->setColumnWidth(0, 200);
        m_view->setColumnWidth(1, 150);
        m_view->setColumnWidth(2, 100);
        m_view->expandAll();
        ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    }

    void set_colors(const QColor& window, const QColor& base, const QColor& text)
    {
        QPalette palette = m_view->palette();
        palette.setColor(QPalette::Window, window);
        palette.setColor(QPalette::Base, base);
        palette.setColor(QPalette::Text, text);
        m_view->setPalette(palette);
    }

    void set_style(unsigned int style)
    {
        m_view->set_style(style);
        GUI_DRIVER::process_posted();
    }

    QColor get_grid_color() const
    {
        const QStyleOptionViewItem option = m_view->viewOptions();
        return QColor(static_cast<QRgb>(m_view->style()->styleHint(QStyle::SH_Table_GridLineColor, &option, m_view)));
    }

    /// The lines that the row of an item gets beyond those that it has without a grid.
    QStringList get_lines(const QModelIndex& index, const QSize& device_size = QSize(600, 400))
    {
        QStyleOptionViewItem option = m_view->viewOptions();
        option.rect = m_view->visualRect(index);
        option.rect.setLeft(0);
        option.rect.setWidth(m_view->viewport()->width());
        RECORDING_PAINT_DEVICE device(device_size);
        QPainter painter(&device);
        painter.setPen(Qt::magenta);
        m_view->drawRow(&painter, option, index);
        EXPECT_EQ(QPen(Qt::magenta), painter.pen());
        painter.end();
        QStringList lines;
        for (const PAINT_COMMAND& command : device.find(QStringLiteral("line ")))
            if (command.pen.color() == get_grid_color())
                lines << command.text;
        return lines;
    }

    /// A grid line as it is recorded.
    static QString line(int x1, int y1, int x2, int y2)
    {
        return QStringLiteral("line %1 %2 %3 %4").arg(x1).arg(y1).arg(x2).arg(y2);
    }
    QString vertical(int x, const QRect& row) const
    {
        return line(x, row.top(), x, row.bottom());
    }

    /// At two pixels for one, Qt draws a line on the first of the pixels that it is at, and on the one before.
    void expect_grid_in_picture(int ratio)
    {
        const QImage picture = render_widget(m_view->viewport(), ratio);
        for (const QStandardItem* item : {m_top, m_fifo, m_ram, m_clk, m_spare, m_pin})
        {
            const QRect cell = m_view->visualRect(index(item, 2));
            const int y = cell.center().y() * ratio;
            for (const int x : {199 * ratio, 349 * ratio, 449 * ratio})
            {
                EXPECT_EQ(get_grid_color(), picture.pixelColor(x, y)) << x;
                EXPECT_EQ(get_grid_color(), picture.pixelColor(x + 1 - ratio, y)) << x;
                EXPECT_NE(get_grid_color(), picture.pixelColor(x + 1, y)) << x;
                EXPECT_NE(get_grid_color(), picture.pixelColor(x - ratio, y)) << x;
            }
            const QRect below(0, cell.bottom() * ratio, picture.width(), 1);
            EXPECT_EQ(450 * ratio - (ratio - 1), count_pixels(picture, get_grid_color(), 0, below));
        }
    }
};
} // namespace

TEST_F(TOLV_TREE_VIEW_PAINT_TEST, the_flags_have_the_values_that_hosts_store)
{
    EXPECT_EQ(0x1U, TOLV_TREE_STYLE_GRID);
    EXPECT_EQ(0x10U, TOLV_TREE_STYLE_NO_BRANCHES);
    EXPECT_EQ(0x100U, TOLV_TREE_STYLE_CLICKABLE_ICONS);
    EXPECT_EQ(0x1000U, TOLV_TREE_STYLE_NO_FOCUS_RECT);
}

TEST_F(TOLV_TREE_VIEW_PAINT_TEST, the_style_is_what_was_set)
{
    EXPECT_EQ(0U, m_view->get_style());
    m_view->set_style(0x1101);
    EXPECT_EQ(0x1101U, m_view->get_style());
    EXPECT_EQ(0x10U, OPEN_TREE_VIEW(m_window.get(), 0x10).get_style());
}

// ---- Grid -----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_TREE_VIEW_PAINT_TEST, a_tree_without_a_grid_has_no_lines)
{
    EXPECT_EQ(QStringList(), get_lines(index(m_fifo)));
    EXPECT_EQ(0, count_pixels(render_widget(m_view->viewport()), get_grid_color()));
}

TEST_F(TOLV_TREE_VIEW_PAINT_TEST, grid_lines_stand_to_the_right_of_cells_and_below_the_row)
{
    set_style(TOLV_TREE_STYLE_GRID);
    const QRect row = m_view->visualRect(index(m_fifo, 2));
    EXPECT_EQ((QStringList{vertical(199, row), vertical(349, row), vertical(449, row),
                           line(0, row.bottom(), 449, row.bottom())}),
              get_lines(index(m_fifo)));
}

TEST_F(TOLV_TREE_VIEW_PAINT_TEST, hidden_columns_have_no_lines_and_moved_ones_theirs)
{
    set_style(TOLV_TREE_STYLE_GRID);
    m_view->setColumnHidden(1, true);
    const QRect row = m_view->visualRect(index(m_fifo, 2));
    EXPECT_EQ((QStringList{vertical(199, row), vertical(299, row), line(0, row.bottom(), 299, row.bottom())}),
              get_lines(index(m_fifo)));
    m_view->header()->moveSection(2, 0);
    EXPECT_EQ((QStringList{vertical(99, row), vertical(299, row), line(0, row.bottom(), 299, row.bottom())}),
              get_lines(index(m_fifo)));
}

TEST_F(TOLV_TREE_VIEW_PAINT_TEST, without_visible_columns_the_line_below_leads_out_of_the_view)
{
    set_style(TOLV_TREE_STYLE_GRID);
    const QRect row = m_view->visualRect(index(m_fifo));
    QStyleOptionViewItem option = m_view->viewOptions();
    option.rect = QRect(0, row.top(), 600, row.height());
    for (int column = 0; column < 3; ++column)
        m_view->setColumnHidden(column, true);
    RECORDING_PAINT_DEVICE device;
    QPainter painter(&device);
    m_view->drawRow(&painter, option, index(m_fifo));
    painter.end();
    EXPECT_TRUE(device.contains(line(0, row.bottom(), -1, row.bottom()))) << device.get_texts().size();
}

TEST_F(TOLV_TREE_VIEW_PAINT_TEST, columns_out_of_the_view_have_no_lines)
{
    set_style(TOLV_TREE_STYLE_GRID);
    m_view->setColumnWidth(1, 900); // to 1099; column 2 lies behind the right edge
    const QRect row = m_view->visualRect(index(m_fifo));
    const QRect whole_row(0, row.top(), m_view->viewport()->width(), row.height());
    EXPECT_EQ((QStringList{vertical(199, whole_row), line(0, row.bottom(), 1099, row.bottom())}),
              get_lines(index(m_fifo)));
    m_view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    GUI_DRIVER::process_posted();
    m_view->horizontalScrollBar()->setValue(250); // column 0 lies behind the left edge
    EXPECT_EQ((QStringList{line(0, row.bottom(), 849, row.bottom())}), get_lines(index(m_fifo)));
}

TEST_F(TOLV_TREE_VIEW_PAINT_TEST, a_vertical_line_may_stand_one_pixel_behind_the_painted_area)
{
    set_style(TOLV_TREE_STYLE_GRID);
    const QRect row = m_view->visualRect(index(m_fifo, 2));
    const QString below = line(0, row.bottom(), 449, row.bottom());
    EXPECT_EQ((QStringList{vertical(199, row), vertical(349, row), vertical(449, row), below}),
              get_lines(index(m_fifo), QSize(449, 400)));
    EXPECT_EQ((QStringList{vertical(199, row), vertical(349, row), below}), get_lines(index(m_fifo), QSize(448, 400)));
}

TEST_F(TOLV_TREE_VIEW_PAINT_TEST, where_columns_count_from_the_right_the_grid_does)
{
    set_style(TOLV_TREE_STYLE_GRID);
    m_view->setLayoutDirection(Qt::RightToLeft);
    GUI_DRIVER::process_posted();
    const QStringList lines = get_lines(index(m_fifo));
    const int right = m_view->viewport()->width() - 1;
    const QRect row = m_view->visualRect(index(m_fifo, 2));
    EXPECT_EQ((QStringList{vertical(right, row), vertical(right - 200, row), vertical(right - 350, row),
                           line(0, row.bottom(), right, row.bottom())}),
              lines);
}

TEST_F(TOLV_TREE_VIEW_PAINT_TEST, the_grid_is_seen)
{
    set_style(TOLV_TREE_STYLE_GRID);
    expect_grid_in_picture(1);
    expect_grid_in_picture(2);
}

TEST_F(TOLV_TREE_VIEW_PAINT_TEST, the_grid_is_seen_on_a_dark_ground)
{
    set_colors(QColor(0x48, 0x50, 0x58), Qt::black, Qt::white);
    set_style(TOLV_TREE_STYLE_GRID);
    expect_grid_in_picture(1);
    expect_grid_in_picture(2);
}

TEST_F(TOLV_TREE_VIEW_PAINT_TEST, rows_with_a_grid_are_one_pixel_higher)
{
    const int height = m_view->visualRect(index(m_fifo)).height();
    const QSize hint = m_view->sizeHintForIndex(index(m_fifo));
    EXPECT_EQ(m_view->QTreeView::sizeHintForIndex(index(m_fifo)), hint);
    set_style(TOLV_TREE_STYLE_GRID);
    EXPECT_EQ(height + 1, m_view->visualRect(index(m_fifo)).height());
    EXPECT_EQ(hint + QSize(0, 1), m_view->sizeHintForIndex(index(m_fifo)));
    EXPECT_EQ(hint, m_view->QTreeView::sizeHintForIndex(index(m_fifo)));
    m_view->setUniformRowHeights(false);
    GUI_DRIVER::process_posted();
    EXPECT_EQ(height + 1, m_view->visualRect(index(m_spare)).height());
    set_style(0);
    EXPECT_EQ(height, m_view->visualRect(index(m_spare)).height());
}

TEST_F(TOLV_TREE_VIEW_PAINT_TEST, an_invalid_size_stays_as_it_is)
{
    set_style(TOLV_TREE_STYLE_GRID);
    EXPECT_EQ(QSize(), m_view->sizeHintForIndex(QModelIndex()));
    m_clk->setData(QSize(-1, -1), Qt::SizeHintRole);
    EXPECT_EQ(QSize(), m_view->sizeHintForIndex(index(m_clk)));
}

// ---- Branches and focus ---------------------------------------------------------------------------------------------

TEST_F(TOLV_TREE_VIEW_PAINT_TEST, branch_indicators_can_be_left_out)
{
    RECORDING_STYLE style;
    m_view->setStyle(&style);
    GUI_DRIVER::process_posted();
    style.clear();
    render_widget(m_view->viewport());
    EXPECT_FALSE(style.get_primitives(QStyle::PE_IndicatorBranch).isEmpty());
    set_style(TOLV_TREE_STYLE_NO_BRANCHES);
    style.clear();
    render_widget(m_view->viewport());
    EXPECT_TRUE(style.get_primitives(QStyle::PE_IndicatorBranch).isEmpty());
    EXPECT_EQ(18, style.m_items.size());
    m_view->setStyle(nullptr);
}

TEST_F(TOLV_TREE_VIEW_PAINT_TEST, the_focus_rectangle_can_be_left_out)
{
    RECORDING_STYLE style;
    m_view->setStyle(&style);
    m_view->setCurrentIndex(index(m_fifo));
    ASSERT_TRUE(GUI_DRIVER::focus(m_view));
    style.clear();
    render_widget(m_view->viewport());
    EXPECT_EQ(1, style.get_primitives(QStyle::PE_FrameFocusRect).size());
    set_style(TOLV_TREE_STYLE_NO_FOCUS_RECT);
    style.clear();
    render_widget(m_view->viewport());
    EXPECT_EQ(0, style.get_primitives(QStyle::PE_FrameFocusRect).size());
    m_view->setStyle(nullptr);
}

TEST_F(TOLV_TREE_VIEW_PAINT_TEST, a_new_style_is_drawn_at_once)
{
    RECORDING_STYLE style;
    m_view->setStyle(&style);
    GUI_DRIVER::process_posted();
    style.clear();
    set_style(TOLV_TREE_STYLE_NO_BRANCHES);
    EXPECT_EQ(18, style.m_items.size());
    m_view->setStyle(nullptr);
}
