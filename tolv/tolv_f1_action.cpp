#include "tolv_f1_action.h"

#include "tolv_global.h"
#include "tolv_mem.h"

#include <QApplication>
#include <QShortcutEvent>
#include <QWidget>

TOLV_MEM_INITIALIZER();

namespace
{
/// The help action of the innermost window around a widget; null where there is none.
TOLV_F1_ACTION* find_innermost(const QWidget* widget)
{
    for (; widget != nullptr; widget = widget->parentWidget())
    {
        const QList<QAction*> actions = widget->actions();
        for (QAction* action : actions)
            if (auto* const f1_action = qobject_cast<TOLV_F1_ACTION*>(action); f1_action != nullptr)
                return f1_action;
    }
    return nullptr;
}
} // namespace

TOLV_F1_ACTION::TOLV_F1_ACTION(QWidget* window, const char* slot) : QAction(QStringLiteral("F1 Help"), window)
{
    setShortcut(QKeySequence(QStringLiteral("F1")));
    setShortcutContext(Qt::WidgetWithChildrenShortcut);
    window->addAction(this);
    TOLV_SAFE_CONNECT(this, SIGNAL(triggered()), window, slot);
}

TOLV_F1_ACTION::~TOLV_F1_ACTION() = default;

/// Qt calls a key ambiguous that several windows around the focus want, and by itself triggers none of their actions.
bool TOLV_F1_ACTION::event(QEvent* event)
{
    if (event->type() != QEvent::Shortcut || !static_cast<QShortcutEvent*>(event)->isAmbiguous())
        return QAction::event(event);
    TOLV_F1_ACTION* const innermost = find_innermost(QApplication::focusWidget());
    if (innermost == nullptr)
        return QAction::event(event);
    innermost->trigger();
    return true;
}
