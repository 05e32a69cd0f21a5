// The switch of the configuration that makes all icons buttons. It is read once in the process, so it stands by itself.

#include "tolv_tree_view_fixture.h"

#include "gui_driver.h"
#include "picture.h"
#include "recording_style.h"
#include "test_environment.h"
#include "tolv_tree_item_delegate.h"

#include <QIcon>
#include <QPixmap>
#include <QSignalSpy>

#include <memory>

namespace
{
QString& get_last_debug_message()
{
    static QString message;
    return message;
}
QtMessageHandler s_next_handler = nullptr;

void note_debug_message(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (type == QtDebugMsg)
        get_last_debug_message() = text;
    s_next_handler(type, context, text);
}

class TOLV_TREE_VIEW_ICONS_SWITCH_TEST : public TREE_VIEW_TEST
{
protected:
    void SetUp() override
    {
        m_configuration = std::make_unique<SCOPED_CONFIGURATION>("test_clickable_icons", "on");
        TREE_VIEW_TEST::SetUp();
        QPixmap pixmap(16, 16);
        pixmap.fill(Qt::red);
        m_fifo->setIcon(QIcon(pixmap));
        m_view->expandAll();
        ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
        m_icon = find_color_rect(render_widget(m_view->viewport()), Qt::red);
        ASSERT_EQ(QSize(16, 16), m_icon.size());
    }
    void TearDown() override
    {
        TREE_VIEW_TEST::TearDown();
        m_configuration.reset();
    }

    std::unique_ptr<SCOPED_CONFIGURATION> m_configuration;
    QRect m_icon;
};
} // namespace

TEST_F(TOLV_TREE_VIEW_ICONS_SWITCH_TEST, a_press_on_any_icon_is_eaten_and_only_the_role_makes_it_a_click)
{
    const QSignalSpy clicked(m_view, SIGNAL(icon_clicked(QModelIndex)));
    GUI_DRIVER::press(m_view->viewport(), m_icon.center());
    EXPECT_EQ(index(m_fifo), m_view->get_pressed_icon_index());
    EXPECT_EQ(QModelIndexList(), m_view->selectionModel()->selectedRows());
    GUI_DRIVER::release(m_view->viewport(), m_icon.center());
    EXPECT_FALSE(m_view->get_pressed_icon_index().isValid());
    EXPECT_EQ(0, clicked.count());
    m_fifo->setData(true, TOLV_TREE_ROLE_CLICKABLE_ICON);
    GUI_DRIVER::click(m_view->viewport(), m_icon.center());
    EXPECT_EQ(1, clicked.count());
}

TEST_F(TOLV_TREE_VIEW_ICONS_SWITCH_TEST, the_move_is_drawn_and_left_to_qt)
{
    RECORDING_STYLE style;
    m_view->setStyle(&style);
    GUI_DRIVER::hover(m_view->viewport(), m_icon.center());
    style.clear();
    GUI_DRIVER::hover(m_view->viewport(), m_icon.center() + QPoint(1, 0));
    EXPECT_EQ(1, style.m_buttons.size());
    m_view->setStyle(nullptr);
    // Only the flag keeps a drag from an icon from selecting.
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    GUI_DRIVER::click(m_view->viewport(), m_view->visualRect(index(m_clk, 1)).center());
    GUI_DRIVER::drag(m_view->viewport(), m_icon.center(), m_view->visualRect(index(m_spare)).center());
    EXPECT_LT(1, m_view->selectionModel()->selectedRows().size());
}

TEST_F(TOLV_TREE_VIEW_ICONS_SWITCH_TEST, all_items_are_drawn_with_their_geometry_told)
{
    s_next_handler = qInstallMessageHandler(note_debug_message);
    RECORDING_STYLE style;
    m_view->setStyle(&style);
    style.clear();
    render_widget(m_view->viewport());
    qInstallMessageHandler(s_next_handler);
    m_view->setStyle(nullptr);
    ASSERT_EQ(1, style.m_buttons.size()); // no other item has an icon
    const QRect cell = m_view->visualRect(index(m_fifo));
    QString expected;
    QDebug(&expected) << "opt.rect" << cell << "iconRect" << m_icon << "tb.rect" << m_icon.adjusted(-3, -3, 3, 3)
                      << "pos" << m_view->viewport()->mapFromGlobal(QCursor::pos()) << "padding" << 3;
    EXPECT_EQ(expected.trimmed(), get_last_debug_message().trimmed());
}

TEST_F(TOLV_TREE_VIEW_ICONS_SWITCH_TEST, all_items_have_room_for_the_frame)
{
    const TOLV_TREE_ITEM_DELEGATE delegate;
    const QStyledItemDelegate qts;
    const QStyleOptionViewItem option = m_view->viewOptions();
    for (const QModelIndex& each : {index(m_fifo), index(m_clk, 2)})
        EXPECT_EQ(qts.sizeHint(option, each) + QSize(0, 5), delegate.sizeHint(option, each));
    EXPECT_EQ(qts.sizeHint(option, QModelIndex()) + QSize(0, 2), delegate.sizeHint(option, QModelIndex()));
}
