// The tree of frozen columns as a host puts it over the left part of its main tree, under a user's hands.

#include "tolv_frozen_tree_view_fixture.h"

#include "picture.h"

#include <QEvent>
#include <QHeaderView>
#include <QSignalSpy>

#include <set>

namespace
{
/// What a host does for frozen columns: the first column stands in the frozen view, which covers it in the main one.
class FROZEN_COLUMN : public QObject
{
public:
    FROZEN_COLUMN(TOLV_TREE_VIEW* main_view, TOLV_FROZEN_TREE_VIEW* frozen) : m_main(main_view), m_frozen(frozen)
    {
        for (TOLV_TREE_VIEW* const view : {main_view, static_cast<TOLV_TREE_VIEW*>(frozen)})
        {
            view->setSelectionMode(QAbstractItemView::ExtendedSelection);
            view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
        }
        m_frozen->setFrameShape(QFrame::NoFrame);
        m_frozen->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        m_frozen->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        m_frozen->header()->setStretchLastSection(false);
        m_main->viewport()->installEventFilter(this);
        connect_expansion();
        connect_scroll_bars();
        connect_headers();
        take_model();
    }

    /// After a model has been set in both views.
    void take_model()
    {
        m_frozen->setSelectionModel(m_main->selectionModel());
        for (int column = 1; column < m_frozen->header()->count(); ++column)
            m_frozen->setColumnHidden(column, true);
        m_frozen->setColumnWidth(0, m_main->columnWidth(0));
        m_frozen->sync_expanded_state();
        place();
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Resize)
            place();
        return QObject::eventFilter(watched, event);
    }

private:
    void place()
    {
        const QRect area = m_main->viewport()->geometry();
        const int top = m_main->header()->geometry().top();
        m_frozen->setGeometry(area.left(), top, m_main->columnWidth(0), area.bottom() + 1 - top);
    }

    void connect_expansion()
    {
        const auto follow = [this](const QModelIndex& index) { m_frozen->sync_expanded_state(m_main, index); };
        connect(m_main, &QTreeView::expanded, this, follow);
        connect(m_main, &QTreeView::collapsed, this, follow);
        connect(m_frozen, &QTreeView::expanded, m_main, &QTreeView::expand);
        connect(m_frozen, &QTreeView::collapsed, m_main, &QTreeView::collapse);
    }

    void connect_scroll_bars()
    {
        QScrollBar* const main_bar = m_main->verticalScrollBar();
        QScrollBar* const frozen_bar = m_frozen->verticalScrollBar();
        connect(main_bar, &QScrollBar::valueChanged, frozen_bar, &QScrollBar::setValue);
        connect(frozen_bar, &QScrollBar::valueChanged, main_bar, &QScrollBar::setValue);
    }

    void connect_headers()
    {
        const auto take_width = [this](int column, int /*old_width*/, int width)
        {
            if (column != 0 || width == 0)
                return;
            m_main->setColumnWidth(0, width);
            m_frozen->setColumnWidth(0, width);
            place();
        };
        connect(m_main->header(), &QHeaderView::sectionResized, this, take_width);
        connect(m_frozen->header(), &QHeaderView::sectionResized, this, take_width);
        connect(m_frozen->header(), &QHeaderView::sortIndicatorChanged, m_main->header(),
                &QHeaderView::setSortIndicator);
    }

    TOLV_TREE_VIEW* m_main;
    TOLV_FROZEN_TREE_VIEW* m_frozen;
};

class TOLV_FROZEN_TREE_VIEW_HOST_TEST : public FROZEN_TREE_VIEW_TEST
{
protected:
    void SetUp() override
    {
        FROZEN_TREE_VIEW_TEST::SetUp();
        m_main->setColumnWidth(0, 130);
        for (int column = 1; column < COLUMN_COUNT; ++column)
            m_main->setColumnWidth(column, 150);
        m_host = std::make_unique<FROZEN_COLUMN>(m_main, m_frozen);
        ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
        GUI_DRIVER::hover(m_main->viewport(), QPoint(300, 200));
    }

    void TearDown() override
    {
        m_host.reset();
        FROZEN_TREE_VIEW_TEST::TearDown();
    }

    /// Both views show the same rows, expanded alike, at the same height.
    void expect_in_step() const
    {
        EXPECT_EQ(get_expanded(*m_main), get_expanded(*m_frozen));
        EXPECT_EQ(scroll_value(m_main), scroll_value(m_frozen));
        EXPECT_EQ(m_main->viewport()->height(), m_frozen->viewport()->height());
        int row_count = 0;
        for (QModelIndex index = m_frozen->indexAt(QPoint(2, 2)); index.isValid(); index = m_frozen->indexBelow(index))
        {
            const QRect in_frozen = m_frozen->visualRect(index);
            const QRect in_main = m_main->visualRect(index);
            if (in_frozen.top() >= m_frozen->viewport()->height())
                break;
            EXPECT_EQ(in_main.top(), in_frozen.top()) << index.data().toString().toStdString();
            EXPECT_EQ(in_main.height(), in_frozen.height());
            ++row_count;
        }
        EXPECT_LE(5, row_count);
    }

    QPoint middle(const QModelIndex& index) const
    {
        return m_frozen->visualRect(index).center();
    }

    QPoint branch(const QModelIndex& index) const
    {
        const QRect rect = m_frozen->visualRect(index);
        return QPoint(rect.left() - m_frozen->indentation() / 2, rect.center().y());
    }

    /// The rows of the window as wide as the frozen column, as they are seen.
    QImage picture_of_first_column() const
    {
        const QPoint corner = m_main->viewport()->mapTo(m_window.get(), QPoint());
        return render_widget(m_window.get())
            .copy(QRect(corner, QSize(m_frozen->width(), m_main->viewport()->height())));
    }

    int sideways() const
    {
        return m_main->horizontalScrollBar()->value();
    }

    std::unique_ptr<FROZEN_COLUMN> m_host;
};
} // namespace

// ---- Scrolling ------------------------------------------------------------------------------------------------------

TEST_F(TOLV_FROZEN_TREE_VIEW_HOST_TEST, the_wheel_over_either_part_scrolls_both)
{
    GUI_DRIVER::wheel(m_frozen->viewport(), QPoint(40, 60), QPoint(0, -120));
    const int after_one = scroll_value(m_frozen);
    EXPECT_LT(0, after_one);
    expect_in_step();
    GUI_DRIVER::wheel(m_main->viewport(), QPoint(300, 60), QPoint(0, -120));
    EXPECT_LT(after_one, scroll_value(m_main));
    expect_in_step();
    for (int i = 0; i < 30; ++i)
        GUI_DRIVER::wheel(m_frozen->viewport(), QPoint(40, 60), QPoint(0, -120));
    EXPECT_EQ(m_main->verticalScrollBar()->maximum(), scroll_value(m_frozen));
    expect_in_step();
}

TEST_F(TOLV_FROZEN_TREE_VIEW_HOST_TEST, rows_scrolled_by_pixels_stay_in_step)
{
    m_main->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_frozen->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_main->expand(block(3));
    m_main->verticalScrollBar()->setValue(37);
    m_frozen->sync_expanded_state();
    EXPECT_EQ(37, scroll_value(m_frozen));
    expect_in_step();
}

TEST_F(TOLV_FROZEN_TREE_VIEW_HOST_TEST, the_first_column_stays_while_the_others_go_sideways)
{
    GUI_DRIVER::click(m_frozen->viewport(), branch(block(1)));
    GUI_DRIVER::click(m_frozen->viewport(), middle(block(2)));
    GUI_DRIVER::hover(m_main->viewport(), QPoint(300, 200));
    const QImage before = picture_of_first_column();
    const QImage rows_before = render_widget(m_main->viewport());
    m_main->horizontalScrollBar()->setValue(210);
    GUI_DRIVER::process_posted();
    ASSERT_EQ(210, sideways());
    expect_same_picture(before, picture_of_first_column());
    EXPECT_NE(rows_before, render_widget(m_main->viewport()));
}

TEST_F(TOLV_FROZEN_TREE_VIEW_HOST_TEST, the_first_column_looks_as_the_main_tree_draws_it)
{
    m_main->expand(block(1));
    m_main->expand(pin(1, 0));
    m_main->verticalScrollBar()->setValue(1);
    m_main->selectionModel()->select(block(3), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    m_frozen->hide();
    const QImage alone = picture_of_first_column();
    m_frozen->show();
    m_main->horizontalScrollBar()->setValue(210);
    GUI_DRIVER::process_posted();
    EXPECT_TRUE(expect_same_picture(alone, picture_of_first_column()));
    std::set<QRgb> colors;
    for (int y = 0; y < alone.height(); ++y)
    {
        for (int x = 0; x < alone.width(); ++x)
            colors.insert(alone.pixel(x, y));
    }
    EXPECT_LT(4U, colors.size()); // there was something to compare
}

// ---- Expansion and keys ---------------------------------------------------------------------------------------------

TEST_F(TOLV_FROZEN_TREE_VIEW_HOST_TEST, a_click_on_a_branch_of_the_frozen_part_expands_both)
{
    GUI_DRIVER::click(m_frozen->viewport(), branch(block(2)));
    EXPECT_EQ(QStringList("2"), get_expanded(*m_main));
    expect_in_step();
    GUI_DRIVER::click(m_frozen->viewport(), branch(pin(2, 0)));
    EXPECT_EQ(QStringList({"2", "2/0"}), get_expanded(*m_main));
    expect_in_step();
    GUI_DRIVER::click(m_frozen->viewport(), branch(block(2)));
    EXPECT_EQ(QStringList("2/0"), get_expanded(*m_main));
    expect_in_step();
}

TEST_F(TOLV_FROZEN_TREE_VIEW_HOST_TEST, the_keys_of_the_main_tree_expand_both)
{
    m_main->setCurrentIndex(block(1));
    GUI_DRIVER::key_click(m_main, Qt::Key_Plus);
    EXPECT_EQ(QStringList("1"), get_expanded(*m_frozen));
    expect_in_step();
    GUI_DRIVER::key_click(m_main, Qt::Key_Asterisk);
    EXPECT_TRUE(m_frozen->isExpanded(pin(1, 0)));
    expect_in_step();
    GUI_DRIVER::key_click(m_main, Qt::Key_Minus);
    EXPECT_FALSE(m_frozen->isExpanded(block(1)));
    expect_in_step();
}

TEST_F(TOLV_FROZEN_TREE_VIEW_HOST_TEST, collapsing_at_the_end_leaves_both_at_the_new_end)
{
    m_main->expand(block(BLOCK_COUNT - 1));
    m_main->expand(block(BLOCK_COUNT - 2));
    m_main->verticalScrollBar()->setValue(m_main->verticalScrollBar()->maximum());
    GUI_DRIVER::process_posted();
    expect_in_step();
    GUI_DRIVER::click(m_frozen->viewport(), branch(block(BLOCK_COUNT - 2)));
    EXPECT_EQ(m_main->verticalScrollBar()->maximum(), scroll_value(m_frozen));
    expect_in_step();
}

TEST_F(TOLV_FROZEN_TREE_VIEW_HOST_TEST, the_down_key_moves_both_past_the_last_visible_row)
{
    GUI_DRIVER::click(m_frozen->viewport(), middle(block(0)));
    for (int i = 0; i < 25; ++i)
        GUI_DRIVER::key_click(m_frozen, Qt::Key_Down);
    EXPECT_EQ(block(25), m_main->currentIndex());
    EXPECT_LT(0, scroll_value(m_main));
    expect_in_step();
    GUI_DRIVER::key_click(m_main, Qt::Key_Home);
    EXPECT_EQ(block(0), m_frozen->currentIndex());
    EXPECT_EQ(0, scroll_value(m_frozen));
    expect_in_step();
}

// ---- Selection ------------------------------------------------------------------------------------------------------

TEST_F(TOLV_FROZEN_TREE_VIEW_HOST_TEST, rows_selected_in_either_part_are_selected_in_both)
{
    GUI_DRIVER::click(m_frozen->viewport(), middle(block(1)));
    EXPECT_TRUE(m_main->selectionModel()->isRowSelected(1, QModelIndex()));
    GUI_DRIVER::click(m_main->viewport(), QPoint(300, middle(block(4)).y()), Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_EQ(4, m_frozen->selectionModel()->selectedRows().size());
    GUI_DRIVER::click(m_frozen->viewport(), middle(block(2)), Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(3, m_main->selectionModel()->selectedRows().size());

    // The selected rows have the same ground on both sides of the border; the mark of the focus is another matter.
    m_frozen->clearFocus();
    GUI_DRIVER::hover(m_main->viewport(), QPoint(300, 200));
    const QImage picture = render_widget(m_window.get());
    for (const int row : {1, 2, 3, 4, 5})
    {
        const QRect rect = m_frozen->visualRect(block(row));
        const QPoint left = m_frozen->viewport()->mapTo(m_window.get(), rect.topRight() + QPoint(-2, 2));
        EXPECT_EQ(picture.pixel(left), picture.pixel(left + QPoint(10, 0))) << row;
    }
    const auto ground = [&](int row)
    {
        return picture.pixel(
            m_frozen->viewport()->mapTo(m_window.get(), m_frozen->visualRect(block(row)).topRight() + QPoint(-2, 2)));
    };
    EXPECT_EQ(ground(1), ground(3));
    EXPECT_NE(ground(1), ground(2));
}

// ---- Columns --------------------------------------------------------------------------------------------------------

TEST_F(TOLV_FROZEN_TREE_VIEW_HOST_TEST, the_border_of_the_frozen_header_resizes_both)
{
    QWidget* const header = m_frozen->header()->viewport();
    GUI_DRIVER::drag(header, QPoint(128, 8), QPoint(98, 8));
    EXPECT_EQ(100, m_frozen->columnWidth(0));
    EXPECT_EQ(100, m_main->columnWidth(0));
    EXPECT_EQ(100, m_frozen->width());
    expect_in_step();
}

TEST_F(TOLV_FROZEN_TREE_VIEW_HOST_TEST, the_window_may_grow_and_shrink)
{
    for (const QSize size : {QSize(700, 420), QSize(260, 180), QSize(420, 300)})
    {
        m_window->resize(size);
        m_main->resize(size);
        GUI_DRIVER::process_posted();
        m_main->verticalScrollBar()->setValue(m_main->verticalScrollBar()->maximum());
        EXPECT_EQ(m_main->verticalScrollBar()->maximum(), m_frozen->verticalScrollBar()->maximum());
        expect_in_step();
    }
}

TEST_F(TOLV_FROZEN_TREE_VIEW_HOST_TEST, other_columns_are_hidden_and_moved_behind_the_frozen_one)
{
    m_main->expand(block(1));
    const QImage before = picture_of_first_column();
    m_main->perform_signal_mapper_menu_action(2);
    m_main->header()->moveSection(4, 1);
    GUI_DRIVER::process_posted();
    EXPECT_TRUE(m_main->isColumnHidden(2));
    EXPECT_EQ(1, m_main->header()->visualIndex(4));
    expect_same_picture(before, picture_of_first_column());
    expect_in_step();
    m_main->perform_signal_mapper_menu_action(2);
    EXPECT_TRUE(m_frozen->isColumnHidden(2));
    expect_in_step();
}

TEST_F(TOLV_FROZEN_TREE_VIEW_HOST_TEST, several_columns_can_be_frozen_in_another_order)
{
    m_frozen->setColumnHidden(2, false);
    m_frozen->header()->moveSection(2, 0);
    m_frozen->resize(280, m_frozen->height());
    m_main->expand(block(1));
    m_main->expand(pin(1, 0));
    expect_in_step();
    const QSignalSpy entered(m_frozen, SIGNAL(mouse_hover_entered(QModelIndex)));
    GUI_DRIVER::hover(m_frozen->viewport(), QPoint(10, middle(block(0)).y()));
    ASSERT_EQ(1, entered.count());
    EXPECT_EQ(m_model->index(0, 2), entered.at(0).at(0).toModelIndex());
}

TEST_F(TOLV_FROZEN_TREE_VIEW_HOST_TEST, sorting_from_the_frozen_header_keeps_both_in_step)
{
    m_frozen->setSortingEnabled(true);
    m_frozen->sortByColumn(0, Qt::AscendingOrder);
    const QPersistentModelIndex ninth =
        m_model->indexFromItem(m_model->findItems(QStringLiteral("block 9")).constFirst());
    m_main->expand(ninth);
    expect_in_step();
    const QString first = m_frozen->indexAt(QPoint(2, 2)).data().toString();
    GUI_DRIVER::click(m_frozen->header()->viewport(), QPoint(50, 8));
    GUI_DRIVER::process_posted();
    EXPECT_NE(first, m_frozen->indexAt(QPoint(2, 2)).data().toString());
    EXPECT_TRUE(m_frozen->isExpanded(ninth));
    EXPECT_EQ(1, get_expanded(*m_frozen).size());
    expect_in_step();
    m_frozen->sync_expanded_state();
    EXPECT_TRUE(m_frozen->isExpanded(ninth));
    expect_in_step();
}

// ---- Changes of the model -------------------------------------------------------------------------------------------

TEST_F(TOLV_FROZEN_TREE_VIEW_HOST_TEST, rows_come_and_go_in_both)
{
    m_main->expand(block(1));
    m_main->expand(block(4));
    m_model->insertRow(0, make_row(QStringLiteral("new"), 0));
    m_model->removeRows(3, 1);
    m_model->item(2)->insertRow(1, make_row(QStringLiteral("pin new"), 1));
    GUI_DRIVER::process_posted();
    EXPECT_EQ(QStringList({"2", "4"}), get_expanded(*m_frozen));
    expect_in_step();
}

TEST_F(TOLV_FROZEN_TREE_VIEW_HOST_TEST, a_model_that_starts_anew_leaves_both_in_step)
{
    m_main->expand(block(1));
    m_main->verticalScrollBar()->setValue(8);
    expect_in_step();
    m_model->clear();
    GUI_DRIVER::process_posted();
    EXPECT_EQ(0, scroll_value(m_frozen));
    m_frozen->sync_expanded_state();
    EXPECT_EQ(QStringList(), get_expanded(*m_frozen));

    fill(*m_model);
    m_host->take_model();
    m_main->expand(block(2));
    m_main->verticalScrollBar()->setValue(3);
    GUI_DRIVER::process_posted();
    EXPECT_EQ(QStringList("2"), get_expanded(*m_frozen));
    expect_in_step();
}

TEST_F(TOLV_FROZEN_TREE_VIEW_HOST_TEST, both_go_over_to_another_model)
{
    m_main->expand(block(1));
    TOLV_TREE_MODEL other(nullptr);
    fill(other);
    m_main->setModel(&other);
    m_main->expand(other.index(6, 0)); // the frozen view, with the model of before, takes no notice
    EXPECT_EQ(QStringList("1"), get_expanded(*m_frozen));
    m_frozen->setModel(&other);
    m_host->take_model();
    m_main->verticalScrollBar()->setValue(5);
    EXPECT_EQ(QStringList("6"), get_expanded(*m_frozen));
    expect_in_step();
    m_host.reset();
    m_main->setModel(nullptr);
    m_frozen->setModel(nullptr);
}
