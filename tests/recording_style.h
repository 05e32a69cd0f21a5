#pragma once

#include <QProxyStyle>
#include <QStyleOptionToolButton>
#include <QStyleOptionViewItem>
#include <QVector>

/// Fusion, and a record of the items, tool buttons and primitive elements that it was told to draw.
class RECORDING_STYLE : public QProxyStyle
{
public:
    struct PRIMITIVE
    {
        PrimitiveElement element;
        QRect rect;
        State state;
    };

    RECORDING_STYLE() : QProxyStyle(QStringLiteral("fusion"))
    {
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override
    {
        if (const auto* const item = qstyleoption_cast<const QStyleOptionViewItem*>(option))
        {
            m_items.append(*item);
            if (m_is_mute)
                return;
        }
        QProxyStyle::drawControl(element, option, painter, widget);
    }
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override
    {
        if (const auto* const button = qstyleoption_cast<const QStyleOptionToolButton*>(option))
        {
            m_buttons.append(*button);
            if (m_is_mute)
                return;
        }
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        m_primitives.append({element, option->rect, option->state});
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }

    QVector<PRIMITIVE> get_primitives(PrimitiveElement element) const
    {
        QVector<PRIMITIVE> result;
        for (const PRIMITIVE& primitive : qAsConst(m_primitives))
            if (primitive.element == element)
                result.append(primitive);
        return result;
    }
    void clear()
    {
        m_items.clear();
        m_buttons.clear();
        m_primitives.clear();
    }

    /// Draw no items and no tool buttons, only record them.
    bool m_is_mute = false;
    mutable QVector<QStyleOptionViewItem> m_items;
    mutable QVector<QStyleOptionToolButton> m_buttons;
    mutable QVector<PRIMITIVE> m_primitives;
};
