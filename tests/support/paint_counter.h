#pragma once

#include <QEvent>
#include <QObject>
#include <QWidget>

/// Counts the paintings of a widget from its construction on.
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
            ++m_count;
        return QObject::eventFilter(object, event);
    }

    int m_count = 0;
};
