#include "tolv_interaction_loop_p.h"

#include "tolv_global.h"
#include "tolv_mem.h"

#include <QCoreApplication>
#include <QEvent>

TOLV_MEM_INITIALIZER();

TOLV_INTERACTION_LOOP::TOLV_INTERACTION_LOOP(QWidget* widget, QObject* filter) : m_widget(widget), m_filter(filter)
{
    TOLV_SAFE_CONNECT(widget, SIGNAL(destroyed()), this, SLOT(quit()));
}

bool TOLV_INTERACTION_LOOP::run()
{
    if (!m_widget->isVisible())
        return false; // no event would ever end it
    m_widget->installEventFilter(m_filter);
    QCoreApplication::instance()->installEventFilter(this);
    exec();
    QCoreApplication::instance()->removeEventFilter(this);
    if (m_widget != nullptr && m_filter != nullptr)
        m_widget->removeEventFilter(m_filter);
    for (const QPointer<QObject>& object : qAsConst(m_to_delete))
        if (object != nullptr)
            object->deleteLater();
    return m_widget != nullptr && !m_is_broken;
}

bool TOLV_INTERACTION_LOOP::eventFilter(QObject* watched, QEvent* event)
{
    const bool is_cut_off =
        watched == m_widget && (event->type() == QEvent::Hide || event->type() == QEvent::WindowBlocked);
    const bool is_to_be_deleted = event->type() == QEvent::DeferredDelete && contains_widget(watched);
    if (is_to_be_deleted)
        m_to_delete << watched;
    if (is_cut_off || is_to_be_deleted)
    {
        m_is_broken = true;
        exit(0);
    }
    return is_to_be_deleted;
}

bool TOLV_INTERACTION_LOOP::contains_widget(const QObject* object) const
{
    for (const QObject* ancestor = m_widget; ancestor != nullptr; ancestor = ancestor->parent())
        if (ancestor == object)
            return true;
    return false;
}
