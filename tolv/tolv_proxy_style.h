#pragma once

#include "tolv_export.h"

#include <QProxyStyle>

/// The style of all tools of the suite: Qt's "Fusion" on every platform, with dock separators that look like splitter
/// handles, no arrow on a combo box that has no choice to offer, and dialog buttons in the Windows order without icons.
/// TOLV_APP::copy_argv_for_qt() sets it; the application owns it.
class TOLV_EXPORT TOLV_PROXY_STYLE : public QProxyStyle
{
    Q_OBJECT

public:
    TOLV_PROXY_STYLE();

    /// A dock separator (PE_IndicatorDockWidgetResizeHandle) is drawn as CE_Splitter, horizontal where it is higher than
    /// wide.
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget = nullptr) const override;
    /// Keeps combo boxes with and without an arrow apart in the cache of pictures that Fusion draws combo boxes from.
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget = nullptr) const override;
    /// The arrow of a disabled combo box with fewer than two items is a null rectangle.
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl sub_control,
                         const QWidget* widget = nullptr) const override;
    /// 0 for SH_DialogButtonLayout (the Windows order) and SH_DialogButtonBox_ButtonsHaveIcons.
    int styleHint(StyleHint hint, const QStyleOption* option = nullptr, const QWidget* widget = nullptr,
                  QStyleHintReturn* return_data = nullptr) const override;
};
