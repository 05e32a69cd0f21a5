#include "tolv_interaction_loop_p.h"

#include "tolv_global.h"
#include "tolv_mem.h"

#include <QEvent>

TOLV_MEM_INITIALIZER();

TOLV_INTERACTION_LOOP::TOLV_INTERACTION_LOOP(QWidget* widget, QObject* filter) : m_widget(widget), m_filter(filter)
{
    TOLV_SAFE_CONNECT(widget, SIGNAL(destroyed()), this, SLOT(quit()));
}

bool TOLV_INTERACTION_LOOP::run()
{
    m_widget->installEventFilter(m_filter);
    m_widget->installEventFilter(this); // in front of the filter
    exec();
    if (m_widget == nullptr)
        return false;
    m_widget->removeEventFilter(this);
    if (m_filter != nullptr)
        m_widget->removeEventFilter(m_filter);
    return !m_is_broken;
}

bool TOLV_INTERACTION_LOOP::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_widget && (event->type() == QEvent::Hide || event->type() == QEvent::DeferredDelete))
    {
        m_is_broken = true;
        exit(0);
    }
    return false;
}
