#include "tolv_proxy_style.h"

#include "tolv_mem.h"

#include <QComboBox>
#include <QStyleFactory>
#include <QStyleOption>

TOLV_MEM_INITIALIZER();

namespace
{
/// Whether the widget is a combo box that is disabled and has no choice to offer.
bool is_combo_box_without_choice(const QWidget* widget)
{
    const auto* const combo_box = qobject_cast<const QComboBox*>(widget);
    return combo_box != nullptr && combo_box->testAttribute(Qt::WA_Disabled) && combo_box->count() < 2;
}
} // namespace

TOLV_PROXY_STYLE::TOLV_PROXY_STYLE() : QProxyStyle(nullptr)
{
    setBaseStyle(QStyleFactory::create(QStringLiteral("Fusion")));
}

void TOLV_PROXY_STYLE::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                     const QWidget* widget) const
{
    if (element != PE_IndicatorDockWidgetResizeHandle)
    {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    QStyleOption splitter = *option;
    splitter.state.setFlag(State_Horizontal, splitter.rect.height() > splitter.rect.width());
    drawControl(CE_Splitter, &splitter, painter, widget);
}

void TOLV_PROXY_STYLE::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                          const QWidget* widget) const
{
    const auto* const combo_option = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (control != CC_ComboBox || combo_option == nullptr || !is_combo_box_without_choice(widget))
    {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    // Fusion keeps what it has drawn by the option alone. An active part that no combo box has makes a key of its own.
    QStyleOptionComboBox copy = *combo_option;
    copy.activeSubControls |= SC_CustomBase;
    QProxyStyle::drawComplexControl(control, &copy, painter, widget);
}

QRect TOLV_PROXY_STYLE::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                       SubControl sub_control, const QWidget* widget) const
{
    if (control == CC_ComboBox && sub_control == SC_ComboBoxArrow && is_combo_box_without_choice(widget))
        return {};
    return QProxyStyle::subControlRect(control, option, sub_control, widget);
}

int TOLV_PROXY_STYLE::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                QStyleHintReturn* return_data) const
{
    if (hint == SH_DialogButtonLayout || hint == SH_DialogButtonBox_ButtonsHaveIcons)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, return_data);
}
