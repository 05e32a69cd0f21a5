#include "gui_test.h"
#include "picture.h"
#include "tolv_proxy_style.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QMainWindow>
#include <QPainter>
#include <QProxyStyle>
#include <QPushButton>
#include <QStyleOption>

namespace
{
/// The style of the application.
class TOLV_PROXY_STYLE_TEST : public TOLV_GUI_TEST
{
};

/// Notes what is drawn as a control.
class RECORDING_STYLE : public TOLV_PROXY_STYLE
{
public:
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override
    {
        m_element = element;
        m_is_horizontal = option->state.testFlag(State_Horizontal);
        m_rect = option->rect;
        m_widget = widget;
        TOLV_PROXY_STYLE::drawControl(element, option, painter, widget);
    }

    mutable ControlElement m_element = CE_CustomBase;
    mutable bool m_is_horizontal = false;
    mutable QRect m_rect;
    mutable const QWidget* m_widget = nullptr;
};

QRect get_arrow_rect(const QComboBox& combo_box)
{
    QStyleOptionComboBox option;
    option.initFrom(&combo_box);
    return combo_box.style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, &combo_box);
}

/// Whether anything is drawn in the middle of the place where a combo box has its arrow.
bool shows_arrow(QComboBox& combo_box)
{
    const QImage picture = render_widget(&combo_box);
    const QPoint middle(combo_box.width() - 10, combo_box.height() / 2);
    // Along a line across the arrow; the ground shades only from top to bottom.
    for (int x = -5; x <= 5; ++x)
    {
        if (picture.pixel(middle + QPoint(x, 0)) != picture.pixel(middle))
            return true;
    }
    return false;
}
} // namespace

TEST_F(TOLV_PROXY_STYLE_TEST, the_application_has_it_on_top_of_fusion)
{
    const auto* const style = qobject_cast<TOLV_PROXY_STYLE*>(QApplication::style());
    ASSERT_NE(nullptr, style);
    EXPECT_STREQ("QFusionStyle", style->baseStyle()->metaObject()->className());
}

// ---- Dock separators ------------------------------------------------------------------------------------------------

TEST_F(TOLV_PROXY_STYLE_TEST, a_dock_separator_is_drawn_as_a_splitter_along_its_longer_side)
{
    const RECORDING_STYLE style;
    const QWidget widget;
    const std::pair<QRect, bool> cases[] = {
        {QRect(2, 3, 6, 50), true}, {QRect(2, 3, 50, 6), false}, {QRect(2, 3, 20, 20), false}};
    for (const auto& [rect, is_horizontal] : cases)
    {
        for (const bool was_horizontal : {false, true})
        {
            QImage picture(60, 60, QImage::Format_RGB32);
            picture.fill(Qt::white);
            QPainter painter(&picture);
            QStyleOption option;
            option.rect = rect;
            option.state.setFlag(QStyle::State_Horizontal, was_horizontal);
            style.m_element = QStyle::CE_CustomBase;
            style.drawPrimitive(QStyle::PE_IndicatorDockWidgetResizeHandle, &option, &painter, &widget);
            painter.end();
            EXPECT_EQ(QStyle::CE_Splitter, style.m_element);
            EXPECT_EQ(is_horizontal, style.m_is_horizontal);
            EXPECT_EQ(rect, style.m_rect);
            EXPECT_EQ(&widget, style.m_widget);
            EXPECT_EQ(was_horizontal, option.state.testFlag(QStyle::State_Horizontal)) << "the caller's option changed";

            QImage splitter(60, 60, QImage::Format_RGB32);
            splitter.fill(Qt::white);
            QPainter splitter_painter(&splitter);
            option.state.setFlag(QStyle::State_Horizontal, is_horizontal);
            style.baseStyle()->drawControl(QStyle::CE_Splitter, &option, &splitter_painter, &widget);
            splitter_painter.end();
            EXPECT_EQ(splitter, picture);
        }
    }
}

TEST_F(TOLV_PROXY_STYLE_TEST, other_primitives_are_those_of_fusion)
{
    const RECORDING_STYLE style;
    QStyleOption option;
    option.rect = QRect(0, 0, 13, 13);
    option.state = QStyle::State_Enabled | QStyle::State_On;
    QImage picture(13, 13, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QImage expected = picture;
    QPainter painter(&picture);
    style.drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &painter);
    painter.end();
    QPainter expected_painter(&expected);
    style.baseStyle()->drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &expected_painter);
    expected_painter.end();
    EXPECT_EQ(expected, picture);
    EXPECT_EQ(QStyle::CE_CustomBase, style.m_element);
}

// ---- Combo boxes ----------------------------------------------------------------------------------------------------

TEST_F(TOLV_PROXY_STYLE_TEST, only_a_disabled_combo_box_without_choice_has_no_arrow)
{
    for (const int count : {0, 1, 2, 3})
    {
        for (const bool is_enabled : {false, true})
        {
            QComboBox combo_box;
            combo_box.resize(120, 24);
            for (int i = 0; i < count; ++i)
                combo_box.addItem(QString());
            combo_box.setEnabled(is_enabled);
            const bool has_arrow = is_enabled || count >= 2;
            EXPECT_EQ(has_arrow, !get_arrow_rect(combo_box).isNull()) << count << is_enabled;
            EXPECT_EQ(has_arrow, shows_arrow(combo_box)) << count << is_enabled;
        }
    }
}

TEST_F(TOLV_PROXY_STYLE_TEST, a_combo_box_gains_and_loses_its_arrow_with_its_choice)
{
    QComboBox combo_box;
    combo_box.resize(120, 24);
    combo_box.addItem(QString());
    combo_box.setEnabled(false);
    for (int round = 0; round < 2; ++round)
    {
        EXPECT_FALSE(shows_arrow(combo_box));
        combo_box.addItem(QString());
        EXPECT_TRUE(shows_arrow(combo_box));
        combo_box.removeItem(1);
    }
}

TEST_F(TOLV_PROXY_STYLE_TEST, other_parts_and_other_widgets_keep_their_rectangles)
{
    QComboBox combo_box;
    combo_box.resize(120, 24);
    combo_box.setEnabled(false);
    QWidget widget;
    widget.setEnabled(false);
    QStyleOptionComboBox option;
    option.initFrom(&combo_box);
    const auto* const style = qobject_cast<TOLV_PROXY_STYLE*>(QApplication::style());
    const QStyle* const fusion = style->baseStyle();
    for (const QStyle::SubControl part :
         {QStyle::SC_ComboBoxFrame, QStyle::SC_ComboBoxEditField, QStyle::SC_ComboBoxListBoxPopup})
        EXPECT_EQ(fusion->subControlRect(QStyle::CC_ComboBox, &option, part, &combo_box),
                  style->subControlRect(QStyle::CC_ComboBox, &option, part, &combo_box));
    EXPECT_FALSE(style->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, &widget).isNull());
    EXPECT_FALSE(style->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, nullptr).isNull());
    EXPECT_EQ(fusion->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, nullptr),
              style->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, nullptr));
}

// ---- Dialog buttons -------------------------------------------------------------------------------------------------

namespace
{
/// Wants the opposite of the suite's dialog buttons.
class CONTRARY_STYLE : public QProxyStyle
{
public:
    CONTRARY_STYLE() : QProxyStyle(QStringLiteral("Fusion"))
    {
    }
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override
    {
        if (hint == SH_DialogButtonLayout)
            return QDialogButtonBox::GnomeLayout;
        if (hint == SH_DialogButtonBox_ButtonsHaveIcons)
            return 1;
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
};
} // namespace

TEST_F(TOLV_PROXY_STYLE_TEST, dialog_buttons_heed_no_wish_of_the_base_style)
{
    TOLV_PROXY_STYLE style;
    style.setBaseStyle(new CONTRARY_STYLE);
    ASSERT_EQ(QDialogButtonBox::GnomeLayout, style.baseStyle()->styleHint(QStyle::SH_DialogButtonLayout));
    EXPECT_EQ(QDialogButtonBox::WinLayout, style.styleHint(QStyle::SH_DialogButtonLayout));
    EXPECT_EQ(0, style.styleHint(QStyle::SH_DialogButtonBox_ButtonsHaveIcons));
}

TEST_F(TOLV_PROXY_STYLE_TEST, dialog_buttons_stand_in_the_windows_order_without_icons)
{
    EXPECT_EQ(QDialogButtonBox::WinLayout, QApplication::style()->styleHint(QStyle::SH_DialogButtonLayout));
    EXPECT_EQ(0, QApplication::style()->styleHint(QStyle::SH_DialogButtonBox_ButtonsHaveIcons));
    QDialogButtonBox box(QDialogButtonBox::Cancel | QDialogButtonBox::Ok);
    box.resize(400, 40);
    render_widget(&box); // lays the buttons out
    const QPushButton* const ok = box.button(QDialogButtonBox::Ok);
    const QPushButton* const cancel = box.button(QDialogButtonBox::Cancel);
    EXPECT_LT(ok->geometry().right(), cancel->geometry().left());
    EXPECT_TRUE(ok->icon().isNull());
    EXPECT_TRUE(cancel->icon().isNull());
}

TEST_F(TOLV_PROXY_STYLE_TEST, other_hints_are_those_of_fusion)
{
    const auto* const style = qobject_cast<TOLV_PROXY_STYLE*>(QApplication::style());
    for (const QStyle::StyleHint hint :
         {QStyle::SH_EtchDisabledText, QStyle::SH_ComboBox_Popup, QStyle::SH_ItemView_ArrowKeysNavigateIntoChildren,
          QStyle::SH_ToolTip_WakeUpDelay, QStyle::SH_Slider_AbsoluteSetButtons})
        EXPECT_EQ(style->baseStyle()->styleHint(hint), style->styleHint(hint)) << hint;
    EXPECT_NE(0, style->styleHint(QStyle::SH_ToolTip_WakeUpDelay));
}
