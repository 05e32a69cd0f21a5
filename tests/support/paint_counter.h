#pragma once

#include <QEvent>
#include <QObject>
#include <QPaintEvent>
#include <QRegion>
#include <QWidget>

/// Counts the paintings of a widget, and keeps what they painted, from its construction on.
class PAINT_COUNTER : public QObject
{
public:
    explicit PAINT_COUNTER(QWidget* widget)
    {
        widget->installEventFilter(this);
    }

    bool eventFilter(QObject* object, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
        {
            ++m_count;
            m_painted |= static_cast<QPaintEvent*>(event)->region();
        }
        return QObject::eventFilter(object, event);
    }

    int m_count = 0;
    QRegion m_painted;
};
