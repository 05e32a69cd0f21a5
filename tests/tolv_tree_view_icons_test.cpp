// Clicks on the icons of items.

#include "tolv_tree_view_fixture.h"

#include "gui_driver.h"
#include "picture.h"
#include "recording_style.h"
#include "tolv_tree_item_delegate.h"

#include <QIcon>
#include <QMouseEvent>
#include <QPixmap>
#include <QSignalSpy>

#include <memory>
#include <vector>

namespace
{
std::vector<QString>& get_debug_messages()
{
    static std::vector<QString> messages;
    return messages;
}
QtMessageHandler s_next_handler = nullptr;

void note_debug_message(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (type == QtDebugMsg)
        get_debug_messages().push_back(text);
    s_next_handler(type, context, text);
}

/// What qDebug() says in a scope.
class SCOPED_DEBUG_MESSAGES
{
public:
    SCOPED_DEBUG_MESSAGES()
    {
        get_debug_messages().clear();
        s_next_handler = qInstallMessageHandler(note_debug_message);
    }
    ~SCOPED_DEBUG_MESSAGES()
    {
        qInstallMessageHandler(s_next_handler);
    }
    SCOPED_DEBUG_MESSAGES(const SCOPED_DEBUG_MESSAGES&) = delete;
    SCOPED_DEBUG_MESSAGES& operator=(const SCOPED_DEBUG_MESSAGES&) = delete;
};

/// A tree in which "fifo" and "clk" have clickable icons and "spare" has an icon that is none.
class TOLV_TREE_VIEW_ICONS_TEST : public TREE_VIEW_TEST
{
protected:
    void SetUp() override
    {
        TREE_VIEW_TEST::SetUp();
        m_view->set_style(TOLV_TREE_STYLE_CLICKABLE_ICONS);
        m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
        for (QStandardItem* const item : {m_top, m_fifo, m_clk, m_spare})
            item->setIcon(make_icon(Qt::blue));
        for (QStandardItem* const item : {m_top, m_fifo, m_clk}) // all rows are as high as the first one
            item->setData(true, TOLV_TREE_ROLE_CLICKABLE_ICON);
        m_fifo->setIcon(make_icon(Qt::red));
        m_view->expand(index(m_top));
        ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
        GUI_DRIVER::hover(m_view->viewport(), QPoint(500, 350));
        m_icon = find_color_rect(render_widget(m_view->viewport()), Qt::red);
        ASSERT_EQ(QSize(16, 16), m_icon.size());
    }

    static QIcon make_icon(const QColor& color)
    {
        QPixmap pixmap(16, 16);
        pixmap.fill(color);
        return QIcon(pixmap);
    }

    QModelIndexList get_selected() const
    {
        return m_view->selectionModel()->selectedRows();
    }
    /// The same place on the icon of another item of that level.
    QPoint get_icon_of(const QStandardItem* item) const
    {
        return m_icon.center() + m_view->visualRect(index(item)).topLeft() -
               m_view->visualRect(index(m_fifo)).topLeft();
    }
    void press(const QPoint& position)
    {
        GUI_DRIVER::press(m_view->viewport(), position);
    }
    void release(const QPoint& position)
    {
        GUI_DRIVER::release(m_view->viewport(), position);
    }

    QRect m_icon; ///< where the icon of "fifo" is seen
};
} // namespace

TEST_F(TOLV_TREE_VIEW_ICONS_TEST, a_click_on_an_icon_is_told_and_selects_nothing)
{
    const QSignalSpy clicked(m_view, SIGNAL(icon_clicked(QModelIndex)));
    const QSignalSpy plain_clicked(m_view, SIGNAL(clicked(QModelIndex)));
    m_view->setCurrentIndex(index(m_spare));
    press(m_icon.center());
    EXPECT_EQ(index(m_fifo), m_view->get_pressed_icon_index());
    EXPECT_EQ(0, clicked.count());
    release(m_icon.center());
    EXPECT_FALSE(m_view->get_pressed_icon_index().isValid());
    ASSERT_EQ(1, clicked.count());
    EXPECT_EQ(index(m_fifo), clicked.at(0).at(0).value<QModelIndex>());
    EXPECT_EQ(0, plain_clicked.count());
    EXPECT_EQ(QModelIndexList{index(m_spare)}, get_selected());
    EXPECT_EQ(index(m_spare), m_view->currentIndex());
}

TEST_F(TOLV_TREE_VIEW_ICONS_TEST, three_pixels_around_the_icon_belong_to_it)
{
    const QRect button = m_icon.adjusted(-3, -3, 3, 3);
    ASSERT_TRUE(m_view->visualRect(index(m_fifo))
                    .adjusted(0, 1, 0, -1)
                    .contains(QRect(m_icon.left(), button.top(), 1, button.height())));
    const QSignalSpy clicked(m_view, SIGNAL(icon_clicked(QModelIndex)));
    const int x = m_icon.center().x();
    const int y = m_icon.center().y();
    for (const QPoint& inside :
         {QPoint(button.left(), y), QPoint(button.right(), y), QPoint(x, button.top()), QPoint(x, button.bottom())})
        GUI_DRIVER::click(m_view->viewport(), inside);
    EXPECT_EQ(4, clicked.count());
    for (const QPoint& outside : {QPoint(button.left() - 1, y), QPoint(button.right() + 1, y),
                                  QPoint(x, button.top() - 1), QPoint(x, button.bottom() + 1)})
    {
        press(outside);
        EXPECT_FALSE(m_view->get_pressed_icon_index().isValid());
        release(outside);
    }
    EXPECT_EQ(4, clicked.count());
}

TEST_F(TOLV_TREE_VIEW_ICONS_TEST, a_press_on_an_icon_without_the_role_is_eaten_and_nothing_told)
{
    m_fifo->setData(QVariant(), TOLV_TREE_ROLE_CLICKABLE_ICON);
    const QSignalSpy clicked(m_view, SIGNAL(icon_clicked(QModelIndex)));
    for (const QVariant& role : {QVariant(), QVariant(false)})
    {
        m_fifo->setData(role, TOLV_TREE_ROLE_CLICKABLE_ICON);
        press(m_icon.center());
        EXPECT_EQ(index(m_fifo), m_view->get_pressed_icon_index());
        release(m_icon.center());
        EXPECT_FALSE(m_view->get_pressed_icon_index().isValid());
    }
    EXPECT_EQ(QModelIndexList(), get_selected());
    EXPECT_EQ(0, clicked.count());
}

TEST_F(TOLV_TREE_VIEW_ICONS_TEST, a_release_elsewhere_tells_nothing)
{
    const QSignalSpy clicked(m_view, SIGNAL(icon_clicked(QModelIndex)));
    for (const QPoint& elsewhere :
         {m_icon.center() + QPoint(20, 0), m_icon.center() + QPoint(60, 0), get_icon_of(m_clk), QPoint(500, 350)})
    {
        press(m_icon.center());
        release(elsewhere);
        EXPECT_FALSE(m_view->get_pressed_icon_index().isValid());
    }
    EXPECT_EQ(0, clicked.count());
}

TEST_F(TOLV_TREE_VIEW_ICONS_TEST, a_click_on_an_icon_is_no_click_on_its_item_though_one_went_before)
{
    const QSignalSpy clicked(m_view, SIGNAL(icon_clicked(QModelIndex)));
    const QSignalSpy plain_clicked(m_view, SIGNAL(clicked(QModelIndex)));
    GUI_DRIVER::click(m_view->viewport(), m_icon.center() + QPoint(20, 0));
    EXPECT_EQ(1, plain_clicked.count());
    EXPECT_EQ(0, clicked.count());
    GUI_DRIVER::click(m_view->viewport(), m_icon.center());
    EXPECT_EQ(1, plain_clicked.count());
    EXPECT_EQ(1, clicked.count());
}

TEST_F(TOLV_TREE_VIEW_ICONS_TEST, a_press_elsewhere_and_a_release_on_the_icon_tell_nothing)
{
    const QSignalSpy clicked(m_view, SIGNAL(icon_clicked(QModelIndex)));
    press(m_icon.center() + QPoint(60, 0));
    release(m_icon.center());
    EXPECT_EQ(0, clicked.count());
    EXPECT_EQ(QModelIndexList{index(m_fifo)}, get_selected());
}

TEST_F(TOLV_TREE_VIEW_ICONS_TEST, a_drag_from_an_icon_selects_nothing)
{
    const QPoint to = m_view->visualRect(index(m_spare)).center();
    GUI_DRIVER::drag(m_view->viewport(), m_icon.center(), to);
    EXPECT_EQ(QModelIndexList(), get_selected());
    m_view->set_style(0);
    GUI_DRIVER::drag(m_view->viewport(), m_icon.center(), to);
    EXPECT_EQ(3, get_selected().size());
}

TEST_F(TOLV_TREE_VIEW_ICONS_TEST, other_buttons_and_other_places_select)
{
    const QSignalSpy clicked(m_view, SIGNAL(icon_clicked(QModelIndex)));
    GUI_DRIVER::click(m_view->viewport(), m_icon.center(), Qt::RightButton);
    EXPECT_EQ(QModelIndexList{index(m_fifo)}, get_selected());
    GUI_DRIVER::click(m_view->viewport(), m_view->visualRect(index(m_clk)).center());
    EXPECT_EQ(QModelIndexList{index(m_clk)}, get_selected());
    EXPECT_EQ(0, clicked.count());
}

TEST_F(TOLV_TREE_VIEW_ICONS_TEST, another_press_forgets_the_icon_that_is_held)
{
    const QSignalSpy clicked(m_view, SIGNAL(icon_clicked(QModelIndex)));
    press(m_icon.center());
    GUI_DRIVER::press(m_view->viewport(), m_icon.center(), Qt::RightButton);
    EXPECT_FALSE(m_view->get_pressed_icon_index().isValid());
    GUI_DRIVER::release(m_view->viewport(), m_icon.center(), Qt::RightButton);
    release(m_icon.center());
    EXPECT_EQ(0, clicked.count());
}

TEST_F(TOLV_TREE_VIEW_ICONS_TEST, the_icon_of_a_disabled_item_is_eaten_and_nothing_told)
{
    m_fifo->setEnabled(false);
    const QSignalSpy clicked(m_view, SIGNAL(icon_clicked(QModelIndex)));
    press(m_icon.center());
    EXPECT_EQ(index(m_fifo), m_view->get_pressed_icon_index());
    release(m_icon.center());
    EXPECT_FALSE(m_view->get_pressed_icon_index().isValid());
    EXPECT_EQ(0, clicked.count());
}

TEST_F(TOLV_TREE_VIEW_ICONS_TEST, an_item_without_an_icon_is_selected_wherever_it_is_pressed)
{
    m_fifo->setData(QVariant(), Qt::DecorationRole);
    const QRect rect = m_view->visualRect(index(m_fifo));
    GUI_DRIVER::click(m_view->viewport(), QPoint(rect.left() + 1, rect.center().y()));
    EXPECT_EQ(QModelIndexList{index(m_fifo)}, get_selected());
}

TEST_F(TOLV_TREE_VIEW_ICONS_TEST, an_item_that_goes_while_it_is_pressed_is_forgotten)
{
    const QSignalSpy clicked(m_view, SIGNAL(icon_clicked(QModelIndex)));
    press(m_icon.center());
    m_model->removeRow(0);
    GUI_DRIVER::process_posted();
    EXPECT_FALSE(m_view->get_pressed_icon_index().isValid());
    release(m_icon.center());
    EXPECT_EQ(0, clicked.count());
}

TEST_F(TOLV_TREE_VIEW_ICONS_TEST, without_the_flag_icons_are_part_of_their_items)
{
    m_view->set_style(0);
    const QSignalSpy clicked(m_view, SIGNAL(icon_clicked(QModelIndex)));
    press(m_icon.center());
    EXPECT_FALSE(m_view->get_pressed_icon_index().isValid());
    release(m_icon.center());
    EXPECT_EQ(QModelIndexList{index(m_fifo)}, get_selected());
    EXPECT_EQ(0, clicked.count());
}

TEST_F(TOLV_TREE_VIEW_ICONS_TEST, a_flag_taken_away_while_an_icon_is_pressed_ends_the_press)
{
    const QSignalSpy clicked(m_view, SIGNAL(icon_clicked(QModelIndex)));
    press(m_icon.center());
    m_view->set_style(0);
    release(m_icon.center());
    EXPECT_FALSE(m_view->get_pressed_icon_index().isValid());
    EXPECT_EQ(0, clicked.count());
}

TEST_F(TOLV_TREE_VIEW_ICONS_TEST, with_another_delegate_icons_are_part_of_their_items)
{
    m_view->setItemDelegate(new QStyledItemDelegate(m_view));
    const QSignalSpy clicked(m_view, SIGNAL(icon_clicked(QModelIndex)));
    GUI_DRIVER::click(m_view->viewport(), m_icon.center());
    EXPECT_EQ(QModelIndexList{index(m_fifo)}, get_selected());
    EXPECT_EQ(0, clicked.count());
}

TEST_F(TOLV_TREE_VIEW_ICONS_TEST, press_and_release_are_noted_for_developers)
{
    const SCOPED_DEBUG_MESSAGES messages;
    press(m_icon.center());
    ASSERT_EQ(1U, get_debug_messages().size());
    EXPECT_TRUE(get_debug_messages().at(0).startsWith(QStringLiteral("Hit the icon! QModelIndex(0,0,")));
    release(m_icon.center());
    ASSERT_EQ(2U, get_debug_messages().size());
    EXPECT_TRUE(get_debug_messages().at(1).startsWith(QStringLiteral("Released over the icon QModelIndex(0,0,")));
}

TEST_F(TOLV_TREE_VIEW_ICONS_TEST, drawing_is_noted_by_the_switch_alone)
{
    const SCOPED_DEBUG_MESSAGES messages;
    render_widget(m_view->viewport());
    EXPECT_TRUE(get_debug_messages().empty());
}

TEST_F(TOLV_TREE_VIEW_ICONS_TEST, a_double_click_is_told_before_the_view_reacts)
{
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    struct SEEN
    {
        bool is_expanded = true;
        QPoint position;
    };
    const auto seen = std::make_shared<SEEN>();
    QObject::connect(m_view, &TOLV_TREE_VIEW::mouse_double_click, m_view,
                     [this, seen](const QMouseEvent* event)
                     {
                         seen->is_expanded = m_view->isExpanded(index(m_fifo));
                         seen->position = event->pos();
                     });
    const QPoint text = m_icon.center() + QPoint(30, 0);
    GUI_DRIVER::double_click(m_view->viewport(), text);
    EXPECT_FALSE(seen->is_expanded);
    EXPECT_EQ(text, seen->position);
    EXPECT_TRUE(m_view->isExpanded(index(m_fifo)));
}

// ---- What is seen ---------------------------------------------------------------------------------------------------

namespace
{
class TOLV_TREE_VIEW_ICON_BUTTON_TEST : public TOLV_TREE_VIEW_ICONS_TEST
{
protected:
    void SetUp() override
    {
        TOLV_TREE_VIEW_ICONS_TEST::SetUp();
        m_view->setStyle(&m_style);
        GUI_DRIVER::process_posted();
        m_style.clear();
    }
    void TearDown() override
    {
        m_view->setStyle(nullptr);
        TOLV_TREE_VIEW_ICONS_TEST::TearDown();
    }

    /// The button of an item as it is drawn now.
    QStyleOptionToolButton get_button(const QStandardItem* item)
    {
        m_style.clear();
        render_widget(m_view->viewport());
        for (const QStyleOptionToolButton& button : qAsConst(m_style.m_buttons))
            if (button.rect.contains(get_icon_of(item)))
                return button;
        ADD_FAILURE() << "no button";
        return QStyleOptionToolButton();
    }
    bool is_raised(const QStandardItem* item)
    {
        return get_button(item).state.testFlag(QStyle::State_Raised);
    }
    bool is_sunken(const QStandardItem* item)
    {
        return get_button(item).state.testFlag(QStyle::State_Sunken);
    }
    bool is_flat(const QStandardItem* item)
    {
        const QStyleOptionToolButton button = get_button(item);
        return (button.state & (QStyle::State_Raised | QStyle::State_Sunken)) == 0 &&
               button.activeSubControls == QStyle::SC_None;
    }

    RECORDING_STYLE m_style;
};
} // namespace

TEST_F(TOLV_TREE_VIEW_ICON_BUTTON_TEST, a_button_lights_up_under_the_pointer)
{
    EXPECT_TRUE(is_flat(m_fifo));
    GUI_DRIVER::hover(m_view->viewport(), m_icon.center());
    EXPECT_TRUE(is_raised(m_fifo));
    EXPECT_EQ(QStyle::SC_All, get_button(m_fifo).activeSubControls);
    EXPECT_TRUE(is_flat(m_clk));
    GUI_DRIVER::hover(m_view->viewport(), m_icon.center() + QPoint(50, 0)); // on the text of the same cell
    EXPECT_TRUE(is_raised(m_fifo));
    GUI_DRIVER::hover(m_view->viewport(), m_view->visualRect(index(m_fifo, 1)).center());
    EXPECT_TRUE(is_flat(m_fifo));
}

TEST_F(TOLV_TREE_VIEW_ICON_BUTTON_TEST, a_button_sinks_when_it_is_pressed)
{
    press(m_icon.center());
    EXPECT_TRUE(is_sunken(m_fifo));
    EXPECT_FALSE(is_raised(m_fifo));
    GUI_DRIVER::move_to(m_view->viewport(), get_icon_of(m_clk));
    EXPECT_TRUE(is_flat(m_clk)); // the button held over another icon moves neither
    EXPECT_TRUE(is_flat(m_fifo));
    GUI_DRIVER::move_to(m_view->viewport(), m_icon.center());
    EXPECT_TRUE(is_sunken(m_fifo));
    release(m_icon.center());
    EXPECT_TRUE(is_raised(m_fifo));
}

TEST_F(TOLV_TREE_VIEW_ICON_BUTTON_TEST, each_step_is_drawn_at_once)
{
    const auto is_drawn = [this](const std::function<void()>& step)
    {
        m_style.clear();
        step();
        return !m_style.m_buttons.isEmpty();
    };
    EXPECT_TRUE(is_drawn([&] { GUI_DRIVER::hover(m_view->viewport(), m_icon.center()); }));
    EXPECT_TRUE(is_drawn([&] { GUI_DRIVER::hover(m_view->viewport(), m_icon.center() + QPoint(1, 0)); }));
    EXPECT_TRUE(is_drawn([&] { press(m_icon.center() + QPoint(1, 0)); }));
    EXPECT_TRUE(is_drawn([&] { release(m_icon.center() + QPoint(1, 0)); }));
}

TEST_F(TOLV_TREE_VIEW_ICON_BUTTON_TEST, the_button_stands_three_pixels_around_the_icon)
{
    for (const qreal ratio : {1.0, 2.0})
    {
        const int scale = static_cast<int>(ratio);
        GUI_DRIVER::hover(m_view->viewport(), QPoint(500, 350));
        const QImage flat = render_widget(m_view->viewport(), ratio);
        press(m_icon.center());
        const QImage sunken = render_widget(m_view->viewport(), ratio);
        release(m_icon.center());
        const QRect button = m_icon.adjusted(-3, -3, 3, 3);
        const QPoint inside(button.left() + 1, button.center().y());
        EXPECT_NE(flat.pixelColor(inside * scale), sunken.pixelColor(inside * scale)) << ratio;
        EXPECT_EQ(flat.pixelColor(m_icon.center() * scale), QColor(Qt::red));
        EXPECT_EQ(button, get_button(m_fifo).rect);
    }
}
