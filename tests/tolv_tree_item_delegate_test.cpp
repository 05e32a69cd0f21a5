// What the delegates of trees draw, and the sizes that they ask for.

#include "tolv_tree_view_fixture.h"

#include "gui_driver.h"
#include "picture.h"
#include "recording_style.h"
#include "tolv_tree_item_delegate.h"
#include "tolv_tree_item_radio_button_delegate.h"

#include <QApplication>
#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QTreeView>

#include <algorithm>

namespace
{
const QRect CELL(10, 20, 120, 30);

class TOLV_TREE_ITEM_DELEGATE_TEST : public TREE_VIEW_TEST
{
protected:
    void SetUp() override
    {
        TREE_VIEW_TEST::SetUp();
        m_view->set_style(TOLV_TREE_STYLE_CLICKABLE_ICONS);
        QIcon icon;
        add_pixmap(icon, Qt::red, QIcon::Normal, QIcon::Off);
        add_pixmap(icon, Qt::green, QIcon::Normal, QIcon::On);
        add_pixmap(icon, Qt::blue, QIcon::Selected, QIcon::Off);
        add_pixmap(icon, Qt::yellow, QIcon::Selected, QIcon::On);
        m_fifo->setIcon(icon);
        m_fifo->setData(true, TOLV_TREE_ROLE_CLICKABLE_ICON);
        ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
        GUI_DRIVER::hover(m_view->viewport(), QPoint(500, 350));
        m_view->setStyle(&m_style);
        GUI_DRIVER::process_posted();
    }
    void TearDown() override
    {
        m_view->setStyle(nullptr);
        TREE_VIEW_TEST::TearDown();
    }

    static void add_pixmap(QIcon& icon, const QColor& color, QIcon::Mode mode, QIcon::State state)
    {
        QPixmap pixmap(16, 16);
        pixmap.fill(color);
        icon.addPixmap(pixmap, mode, state);
    }

    QStyleOptionViewItem get_option(QStyle::State state = QStyle::State_None) const
    {
        QStyleOptionViewItem option = m_view->viewOptions();
        option.rect = CELL;
        option.state = QStyle::State_Enabled | QStyle::State_Active | state;
        return option;
    }

    /// A picture of an item alone; what was told to the style is in m_style.
    QImage paint(const QAbstractItemDelegate& delegate, const QStyleOptionViewItem& option, const QModelIndex& index)
    {
        QImage picture(200, 100, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::white);
        m_style.clear();
        QPainter painter(&picture);
        delegate.paint(&painter, option, index);
        return picture;
    }
    QImage paint(QStyle::State state = QStyle::State_None)
    {
        return paint(m_delegate, get_option(state), index(m_fifo));
    }

    /// Where the icon stands in the cell.
    QRect get_icon_rect() const
    {
        QStyleOptionViewItem option = get_option();
        m_delegate.initStyleOption(&option, index(m_fifo));
        return m_view->style()->subElementRect(QStyle::SE_ItemViewItemDecoration, &option, m_view);
    }

    RECORDING_STYLE m_style;
    TOLV_TREE_ITEM_DELEGATE m_delegate;
};
} // namespace

// ---- Items ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_TREE_ITEM_DELEGATE_TEST, an_invalid_index_is_an_internal_error)
{
    const INTERNAL_ERROR_TRAP trap;
    const TRAPPED_INTERNAL_ERROR error = CATCH_INTERNAL_ERROR(paint(m_delegate, get_option(), QModelIndex()));
    EXPECT_EQ("index.isValid()", error.text);
    EXPECT_EQ("TOLV", error.tag);
}

TEST_F(TOLV_TREE_ITEM_DELEGATE_TEST, a_widget_that_is_no_tree_view_is_an_internal_error)
{
    const INTERNAL_ERROR_TRAP trap;
    QTreeView other;
    QStyleOptionViewItem option = get_option();
    for (const QWidget* widget : {static_cast<const QWidget*>(&other), static_cast<const QWidget*>(nullptr)})
    {
        option.widget = widget;
        EXPECT_INTERNAL_ERROR(paint(m_delegate, option, index(m_fifo)), "tree_view != nullptr");
    }
}

TEST_F(TOLV_TREE_ITEM_DELEGATE_TEST, an_item_is_drawn_as_qt_does)
{
    for (const QStyle::State state : {QStyle::State(), QStyle::State_Selected | QStyle::State_HasFocus})
        expect_same_picture(paint(QStyledItemDelegate(), get_option(state), index(m_clk)),
                            paint(m_delegate, get_option(state), index(m_clk)));
}

TEST_F(TOLV_TREE_ITEM_DELEGATE_TEST, the_focus_rectangle_is_left_out_with_its_flag)
{
    const auto has_focus = [this]
    {
        paint(m_delegate, get_option(QStyle::State_HasFocus), index(m_clk));
        return m_style.m_items.at(0).state.testFlag(QStyle::State_HasFocus);
    };
    EXPECT_TRUE(has_focus());
    m_view->set_style(TOLV_TREE_STYLE_NO_FOCUS_RECT);
    EXPECT_FALSE(has_focus());
}

// ---- Clickable icons ------------------------------------------------------------------------------------------------

TEST_F(TOLV_TREE_ITEM_DELEGATE_TEST, a_clickable_icon_is_a_tool_button_around_the_icon)
{
    paint(QStyle::State_Selected);
    ASSERT_EQ(1, m_style.m_buttons.size());
    const QStyleOptionToolButton button = m_style.m_buttons.at(0);
    EXPECT_EQ(get_icon_rect().adjusted(-3, -3, 3, 3), button.rect);
    EXPECT_EQ(QSize(16, 16), button.iconSize);
    EXPECT_EQ(m_fifo->icon().cacheKey(), button.icon.cacheKey());
    EXPECT_EQ(QStyle::State_Enabled | QStyle::State_Active | QStyle::State_Selected | QStyle::State_AutoRaise,
              button.state);
    EXPECT_EQ(QStyle::SC_ToolButton, button.subControls);
    EXPECT_EQ(QStyle::SC_None, button.activeSubControls);
    EXPECT_EQ(QStyleOptionToolButton::None, button.features);
    EXPECT_EQ(m_view->palette().color(QPalette::Button), button.palette.color(QPalette::Button));
}

TEST_F(TOLV_TREE_ITEM_DELEGATE_TEST, the_pointer_lights_a_button_up_only_in_the_cell_of_a_hovered_item)
{
    const auto get_active = [this](QStyle::State state)
    {
        paint(state);
        return m_style.m_buttons.at(0).activeSubControls;
    };
    GUI_DRIVER::hover(m_view->viewport(), CELL.bottomRight());
    EXPECT_EQ(QStyle::SC_All, get_active(QStyle::State_MouseOver));
    EXPECT_TRUE(m_style.m_buttons.at(0).state.testFlag(QStyle::State_Raised));
    EXPECT_EQ(QStyle::SC_None, get_active(QStyle::State_None));
    GUI_DRIVER::hover(m_view->viewport(), CELL.bottomRight() + QPoint(1, 0));
    EXPECT_EQ(QStyle::SC_None, get_active(QStyle::State_MouseOver));
    EXPECT_FALSE(m_style.m_buttons.at(0).state.testFlag(QStyle::State_Raised));
}

TEST_F(TOLV_TREE_ITEM_DELEGATE_TEST, a_held_button_sinks_the_pressed_icon_alone_and_leaves_others_flat)
{
    const auto get_state = [this](const QModelIndex& pressed)
    {
        m_view->m_pressed_icon_index = pressed;
        paint(QStyle::State_MouseOver);
        return m_style.m_buttons.at(0).state & (QStyle::State_Raised | QStyle::State_Sunken);
    };
    GUI_DRIVER::press(m_view->viewport(), CELL.bottomRight()); // on no icon
    EXPECT_EQ(QStyle::State_Raised, get_state(QModelIndex()));
    EXPECT_EQ(QStyle::State_Sunken, get_state(index(m_fifo)));
    EXPECT_EQ(QStyle::SC_All, m_style.m_buttons.at(0).activeSubControls);
    EXPECT_EQ(QStyle::State_None, get_state(index(m_clk)));
    EXPECT_EQ(QStyle::SC_None, m_style.m_buttons.at(0).activeSubControls);
    GUI_DRIVER::release(m_view->viewport(), CELL.bottomRight());
    EXPECT_EQ(QStyle::State_Raised, get_state(index(m_fifo)));
}

TEST_F(TOLV_TREE_ITEM_DELEGATE_TEST, the_icon_is_that_of_the_items_state)
{
    m_style.m_is_mute = true; // what is left is the delegate's own icon
    const QPoint center = get_icon_rect().center();
    EXPECT_EQ(QColor(Qt::red), paint().pixelColor(center));
    EXPECT_EQ(QColor(Qt::green), paint(QStyle::State_Open).pixelColor(center));
    EXPECT_EQ(QColor(Qt::blue), paint(QStyle::State_Selected).pixelColor(center));
    EXPECT_EQ(QColor(Qt::yellow), paint(QStyle::State_Selected | QStyle::State_Open).pixelColor(center));
}

TEST_F(TOLV_TREE_ITEM_DELEGATE_TEST, without_role_flag_icon_or_enabled_state_there_is_no_button)
{
    paint();
    EXPECT_EQ(1, m_style.m_buttons.size());
    m_view->set_style(0);
    paint();
    EXPECT_EQ(0, m_style.m_buttons.size());
    m_view->set_style(TOLV_TREE_STYLE_CLICKABLE_ICONS);
    QStyleOptionViewItem disabled = get_option();
    disabled.state &= ~QStyle::State_Enabled;
    expect_same_picture(paint(QStyledItemDelegate(), disabled, index(m_fifo)),
                        paint(m_delegate, disabled, index(m_fifo)));
    paint(m_delegate, disabled, index(m_fifo)); // of the two before, either may have been drawn last
    EXPECT_EQ(0, m_style.m_buttons.size());
    m_fifo->setData(false, TOLV_TREE_ROLE_CLICKABLE_ICON);
    paint();
    EXPECT_EQ(0, m_style.m_buttons.size());
    m_fifo->setData(true, TOLV_TREE_ROLE_CLICKABLE_ICON);
    for (const QVariant& no_icon : {QVariant(), QVariant(QIcon())})
    {
        m_fifo->setData(no_icon, Qt::DecorationRole);
        expect_same_picture(paint(QStyledItemDelegate(), get_option(), index(m_fifo)), paint());
        paint();
        EXPECT_EQ(0, m_style.m_buttons.size());
    }
}

// ---- Sizes ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_TREE_ITEM_DELEGATE_TEST, an_item_is_two_pixels_higher_and_three_more_for_a_clickable_icon)
{
    const QStyledItemDelegate qts;
    const QStyleOptionViewItem option = get_option();
    EXPECT_EQ(qts.sizeHint(option, index(m_clk)) + QSize(0, 2), m_delegate.sizeHint(option, index(m_clk)));
    for (const unsigned int style : {0U, 0x100U, 0x101U})
    {
        m_view->set_style(style);
        EXPECT_EQ(qts.sizeHint(option, index(m_fifo)) + QSize(0, 5), m_delegate.sizeHint(option, index(m_fifo)));
    }
    m_fifo->setData(false, TOLV_TREE_ROLE_CLICKABLE_ICON);
    EXPECT_EQ(qts.sizeHint(option, index(m_fifo)) + QSize(0, 2), m_delegate.sizeHint(option, index(m_fifo)));
    EXPECT_EQ(qts.sizeHint(option, QModelIndex()) + QSize(0, 2), m_delegate.sizeHint(option, QModelIndex()));
    m_clk->setData(QSize(-1, -1), Qt::SizeHintRole);
    EXPECT_EQ(QSize(-1, -1), m_delegate.sizeHint(option, index(m_clk)));
}

TEST_F(TOLV_TREE_ITEM_DELEGATE_TEST, the_rows_have_that_height)
{
    QTreeView plain;
    plain.setStyle(&m_style);
    plain.setModel(m_model.get());
    const int height = plain.visualRect(index(m_top)).height();
    EXPECT_EQ(height + 2, m_view->visualRect(index(m_top)).height());
    m_top->setData(true, TOLV_TREE_ROLE_CLICKABLE_ICON);
    GUI_DRIVER::process_posted();
    EXPECT_EQ(height + 5, m_view->visualRect(index(m_top)).height());
    plain.setStyle(nullptr);
}

// ---- Radio buttons --------------------------------------------------------------------------------------------------

namespace
{
class TOLV_TREE_ITEM_RADIO_BUTTON_DELEGATE_TEST : public TOLV_TREE_ITEM_DELEGATE_TEST
{
protected:
    void SetUp() override
    {
        TOLV_TREE_ITEM_DELEGATE_TEST::SetUp();
        m_clk->setData(true, TOLV_TREE_ROLE_RADIO_BUTTON);
        m_width = QApplication::style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth);
        m_spacing = QApplication::style()->pixelMetric(QStyle::PM_RadioButtonLabelSpacing);
    }

    QImage paint_radio(const QVariant& state, QStyle::State item_state = QStyle::State_None)
    {
        m_clk->setData(state, TOLV_TREE_ROLE_RADIO_STATE);
        return paint(m_radio, get_option(item_state), index(m_clk));
    }
    /// On, off or neither, as it was drawn.
    QStyle::State get_drawn_state(const QVariant& state)
    {
        paint_radio(state);
        const auto indicators = m_style.get_primitives(QStyle::PE_IndicatorRadioButton);
        EXPECT_EQ(1, indicators.size());
        return indicators.value(0).state & (QStyle::State_On | QStyle::State_Off);
    }

    int m_width = 0;
    int m_spacing = 0;
    TOLV_TREE_ITEM_RADIO_BUTTON_DELEGATE m_radio;
};
} // namespace

TEST_F(TOLV_TREE_ITEM_RADIO_BUTTON_DELEGATE_TEST, the_state_of_the_indicator_is_256_for_on_and_257_for_off)
{
    EXPECT_EQ(QStyle::State_On, get_drawn_state(256));
    EXPECT_EQ(QStyle::State_Off, get_drawn_state(257));
    EXPECT_EQ(QStyle::State_On, get_drawn_state(QStringLiteral("256")));
    for (const QVariant& neither : {QVariant(100), QVariant(), QVariant(QStringLiteral("on")), QVariant(QSize(1, 1))})
        EXPECT_EQ(QStyle::State_None, get_drawn_state(neither)) << neither.typeName();
}

TEST_F(TOLV_TREE_ITEM_RADIO_BUTTON_DELEGATE_TEST, the_text_stands_to_the_right_of_the_indicator)
{
    paint_radio(256);
    ASSERT_EQ(1, m_style.m_items.size());
    EXPECT_EQ(CELL.adjusted(m_width + m_spacing, 0, 0, 0), m_style.m_items.at(0).rect);
    QStyleOptionViewItem option = get_option();
    const QRect indicator = m_style.subElementRect(QStyle::SE_CheckBoxIndicator, &option, m_view);
    EXPECT_EQ(indicator.translated(m_spacing / 2, 0),
              m_style.get_primitives(QStyle::PE_IndicatorRadioButton).value(0).rect);
}

TEST_F(TOLV_TREE_ITEM_RADIO_BUTTON_DELEGATE_TEST, the_indicator_is_placed_by_the_applications_style)
{
    /// An indicator and a distance from it that no other style here has; half of the distance is not a whole pixel.
    class WIDE_INDICATOR_STYLE : public QProxyStyle
    {
    public:
        WIDE_INDICATOR_STYLE() : QProxyStyle(QStringLiteral("fusion"))
        {
        }
        int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
        {
            if (metric == PM_ExclusiveIndicatorWidth)
                return 31;
            return metric == PM_RadioButtonLabelSpacing ? 7 : QProxyStyle::pixelMetric(metric, option, widget);
        }
    };
    QApplication::setStyle(new WIDE_INDICATOR_STYLE);
    paint_radio(256); // the view has a style of its own
    ASSERT_EQ(1, m_style.m_items.size());
    EXPECT_EQ(CELL.adjusted(31 + 7, 0, 0, 0), m_style.m_items.at(0).rect);
    const QStyleOptionViewItem option = get_option();
    const QRect indicator = m_style.subElementRect(QStyle::SE_CheckBoxIndicator, &option, m_view);
    EXPECT_EQ(indicator.translated(3, 0), m_style.get_primitives(QStyle::PE_IndicatorRadioButton).value(0).rect);
    const auto panels = m_style.get_primitives(QStyle::PE_PanelItemViewItem);
    EXPECT_EQ(QRect(CELL.left(), CELL.top(), 31 + 7 + 1, CELL.height()), panels.value(1).rect);
    m_clk->setData(QSize(50, 1), Qt::SizeHintRole); // the width of the indicator makes nothing higher
    EXPECT_EQ(m_style.pixelMetric(QStyle::PM_ExclusiveIndicatorHeight),
              m_radio.sizeHint(option, index(m_clk)).height());
    QApplication::setStyle(QStringLiteral("fusion"));
}

TEST_F(TOLV_TREE_ITEM_RADIO_BUTTON_DELEGATE_TEST, a_radio_button_with_a_clickable_icon_is_no_tool_button)
{
    m_fifo->setData(true, TOLV_TREE_ROLE_RADIO_BUTTON);
    paint(m_radio, get_option(), index(m_fifo));
    EXPECT_EQ(1, m_style.get_primitives(QStyle::PE_IndicatorRadioButton).size());
    EXPECT_EQ(0, m_style.m_buttons.size());
}

TEST_F(TOLV_TREE_ITEM_RADIO_BUTTON_DELEGATE_TEST, a_selection_runs_under_the_indicator)
{
    const QImage picture = paint_radio(257, QStyle::State_Selected);
    const auto panels = m_style.get_primitives(QStyle::PE_PanelItemViewItem);
    ASSERT_EQ(2, panels.size()); // the item's own, and the strip
    EXPECT_EQ(QRect(CELL.left(), CELL.top(), m_width + m_spacing + 1, CELL.height()), panels.at(1).rect);
    const QColor highlight = m_view->palette().color(QPalette::Active, QPalette::Highlight);
    EXPECT_EQ(highlight, picture.pixelColor(CELL.topLeft()));
    EXPECT_EQ(highlight, picture.pixelColor(CELL.left() + m_width + m_spacing, CELL.top()));
    EXPECT_EQ(highlight, picture.pixelColor(CELL.bottomRight()));
    EXPECT_EQ(QColor(Qt::white), picture.pixelColor(CELL.left() - 1, CELL.top()));
}

TEST_F(TOLV_TREE_ITEM_RADIO_BUTTON_DELEGATE_TEST, an_indicator_that_is_on_is_filled)
{
    const QImage on = paint_radio(256);
    const QPoint center = m_style.get_primitives(QStyle::PE_IndicatorRadioButton).value(0).rect.center();
    const QImage off = paint_radio(257);
    const QImage neither = paint_radio(100);
    EXPECT_LT(on.pixelColor(center).lightness() + 50, off.pixelColor(center).lightness());
    EXPECT_EQ(off.pixelColor(center), neither.pixelColor(center));
}

TEST_F(TOLV_TREE_ITEM_RADIO_BUTTON_DELEGATE_TEST, other_items_are_drawn_as_qt_does_without_clickable_icons)
{
    for (const QVariant& role : {QVariant(), QVariant(false), QVariant(QSize(1, 1))})
    {
        m_fifo->setData(role, TOLV_TREE_ROLE_RADIO_BUTTON);
        expect_same_picture(paint(QStyledItemDelegate(), get_option(), index(m_fifo)),
                            paint(m_radio, get_option(), index(m_fifo)));
        paint(m_radio, get_option(), index(m_fifo));
        EXPECT_EQ(0, m_style.m_buttons.size());
        EXPECT_EQ(0, m_style.get_primitives(QStyle::PE_IndicatorRadioButton).size());
    }
}

TEST_F(TOLV_TREE_ITEM_RADIO_BUTTON_DELEGATE_TEST, an_item_is_at_least_as_high_as_its_indicator)
{
    const int indicator = QApplication::style()->pixelMetric(QStyle::PM_ExclusiveIndicatorHeight);
    const QStyleOptionViewItem option = get_option();
    for (const int height : {1, indicator - 3, indicator - 2, indicator, indicator + 10})
    {
        m_clk->setData(QSize(50, height), Qt::SizeHintRole);
        EXPECT_EQ(QSize(50, std::max(height + 2, indicator)), m_radio.sizeHint(option, index(m_clk)));
    }
    m_clk->setData(QSize(50, 1), Qt::SizeHintRole);
    m_clk->setData(false, TOLV_TREE_ROLE_RADIO_BUTTON);
    EXPECT_EQ(QSize(50, 3), m_radio.sizeHint(option, index(m_clk)));
}
