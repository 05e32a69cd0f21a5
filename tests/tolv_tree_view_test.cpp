// The tree view as it is made, and its header.

#include "tolv_tree_view_fixture.h"

#include "gui_driver.h"
#include "test_environment.h"
#include "tolv_tree_header_view.h"
#include "tolv_tree_item_delegate.h"

#include <QLineEdit>
#include <QSignalSpy>

using TOLV_TREE_VIEW_TEST = TREE_VIEW_TEST;

TEST_F(TOLV_TREE_VIEW_TEST, a_new_view_has_what_hosts_rely_on)
{
    const OPEN_TREE_VIEW view(m_window.get(), 0x11);
    EXPECT_EQ(0x11U, view.m_style);
    EXPECT_TRUE(view.testAttribute(Qt::WA_MouseTracking));
    EXPECT_TRUE(view.viewport()->hasMouseTracking());
    EXPECT_TRUE(view.uniformRowHeights());
    ASSERT_NE(nullptr, qobject_cast<TOLV_TREE_ITEM_DELEGATE*>(view.itemDelegate()));
    EXPECT_EQ(&view, view.itemDelegate()->parent());
    EXPECT_FALSE(view.m_is_check_state_tracked);
    EXPECT_TRUE(view.m_expansion_memory.isEmpty());
    EXPECT_TRUE(view.m_check_state_memory.isEmpty());
    EXPECT_TRUE(view.m_always_hidden_columns.isEmpty());
    EXPECT_FALSE(view.m_pressed_icon_index.isValid());
    EXPECT_EQ(QString(), view.get_registry_string());
}

TEST_F(TOLV_TREE_VIEW_TEST, the_hidden_line_edit_is_never_shown)
{
    const QLineEdit* const line_edit = m_view->m_line_edit;
    ASSERT_NE(nullptr, line_edit);
    EXPECT_EQ(m_view, line_edit->parent());
    EXPECT_TRUE(line_edit->isReadOnly());
    EXPECT_EQ(Qt::NoFocus, line_edit->focusPolicy());
    EXPECT_TRUE(line_edit->testAttribute(Qt::WA_TransparentForMouseEvents));
    EXPECT_TRUE(line_edit->isHidden());
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    EXPECT_FALSE(line_edit->isVisible());
}

TEST_F(TOLV_TREE_VIEW_TEST, the_header_is_the_librarys_own)
{
    const QHeaderView* const header = m_view->header();
    EXPECT_EQ(m_view->m_header, header);
    EXPECT_NE(nullptr, qobject_cast<const TOLV_TREE_HEADER_VIEW*>(header));
    EXPECT_EQ(m_view, header->parent());
    EXPECT_EQ(Qt::Horizontal, header->orientation());
    EXPECT_EQ(Qt::CustomContextMenu, header->contextMenuPolicy());
    EXPECT_TRUE(header->stretchLastSection());
}

TEST_F(TOLV_TREE_VIEW_TEST, another_header_can_take_the_place_of_the_librarys)
{
    m_view->setHeader(new QHeaderView(Qt::Horizontal, m_view));
    EXPECT_EQ(nullptr, m_view->m_header);
    m_view->perform_signal_mapper_menu_action(1);
    EXPECT_TRUE(m_view->isColumnHidden(1));
}

TEST_F(TOLV_TREE_VIEW_TEST, a_view_without_the_focus_keeps_its_background)
{
    QPalette palette = m_window->palette();
    palette.setColor(QPalette::Active, QPalette::Base, Qt::yellow);
    palette.setColor(QPalette::Inactive, QPalette::Base, Qt::red);
    m_window->setPalette(palette);
    const OPEN_TREE_VIEW view(m_window.get(), 0);
    const QBrush brush = view.palette().brush(QPalette::Inactive, QPalette::Base);
    EXPECT_EQ(QColor(Qt::yellow), brush.color());
    EXPECT_EQ(Qt::SolidPattern, brush.style());
    EXPECT_EQ(QColor(Qt::yellow), view.palette().color(QPalette::Active, QPalette::Base));
}

TEST_F(TOLV_TREE_VIEW_TEST, the_tool_tip_switch_is_read_at_construction)
{
    EXPECT_FALSE(m_view->m_is_tooltip_enabled);
    {
        const SCOPED_CONFIGURATION configuration("tolv_tree_enable_tooltip", "on");
        EXPECT_FALSE(m_view->m_is_tooltip_enabled);
        EXPECT_TRUE(OPEN_TREE_VIEW(m_window.get(), 0).m_is_tooltip_enabled);
    }
    EXPECT_FALSE(OPEN_TREE_VIEW(m_window.get(), 0).m_is_tooltip_enabled);
}

TEST_F(TOLV_TREE_VIEW_TEST, help_is_left_to_the_main_window)
{
    EXPECT_FALSE(m_view->handle_f1_help());
}

TEST_F(TOLV_TREE_VIEW_TEST, the_view_tells_when_the_pointer_enters_the_header)
{
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    GUI_DRIVER::hover(m_view->viewport());
    const QSignalSpy entered_header(m_view->m_header, SIGNAL(mouse_enter()));
    const QSignalSpy entered(m_view, SIGNAL(header_mouse_enter()));
    GUI_DRIVER::hover(m_view->header()->viewport());
    EXPECT_EQ(1, entered_header.count());
    EXPECT_EQ(1, entered.count());
    GUI_DRIVER::hover(m_view->viewport());
    EXPECT_EQ(1, entered.count());
}

TEST_F(TOLV_TREE_VIEW_TEST, the_signals_have_the_arguments_that_hosts_connect)
{
    for (const char* signal : {SIGNAL(column_visibility_changed(int)), SIGNAL(mouse_double_click(QMouseEvent*)),
                               SIGNAL(filter_option_changed(QString, bool, bool)), SIGNAL(clear_filter()),
                               SIGNAL(set_filter_text_changed(QStringList, QString)), SIGNAL(header_mouse_enter()),
                               SIGNAL(icon_clicked(QModelIndex))})
    {
        const QByteArray signature = QMetaObject::normalizedSignature(signal + 1);
        EXPECT_LE(0, TOLV_TREE_VIEW::staticMetaObject.indexOfSignal(signature.constData())) << signal;
    }
    for (const char* slot :
         {SLOT(custom_context_menu(QPoint)), SLOT(perform_signal_mapper_menu_action(int)), SLOT(header_enter())})
    {
        const QByteArray signature = QMetaObject::normalizedSignature(slot + 1);
        EXPECT_LE(0, TOLV_TREE_VIEW::staticMetaObject.indexOfSlot(signature.constData())) << slot;
    }
}
