#include "mod_messages.h"

#include "message_view.h"

#include "tolv_create_action.h"
#include "tolv_global.h"
#include "tolv_main_window.h"

#include <QMenu>
#include <QScrollBar>

MESSAGES_DOCK::MESSAGES_DOCK(QWidget* parent) : TOLV_DOCK_WIDGET(tr("Messages"), parent), m_view(new MESSAGE_VIEW(this))
{
    setObjectName(QStringLiteral("messages_dock"));
    m_view->setObjectName(QStringLiteral("messages"));
    setWidget(m_view);
    setFocusProxy(m_view);

    auto* const menu = new QMenu(this);
    QAction* const copy = menu->addAction(tr("&Copy"));
    TOLV_SAFE_CONNECT(copy, SIGNAL(triggered()), m_view, SLOT(copy()));
    QAction* const select_all = menu->addAction(tr("Select &All"));
    TOLV_SAFE_CONNECT(select_all, SIGNAL(triggered()), m_view, SLOT(selectAll()));
    menu->addSeparator();
    QAction* const clear_all = menu->addAction(tr("C&lear"));
    TOLV_SAFE_CONNECT(clear_all, SIGNAL(triggered()), this, SLOT(clear()));
    set_menu(menu);
}

void MESSAGES_DOCK::scroll_to_bottom() const
{
    m_view->verticalScrollBar()->setValue(m_view->verticalScrollBar()->maximum());
}

void MESSAGES_DOCK::add_note(const QString& text)
{
    m_view->add_note(text);
}

void MESSAGES_DOCK::add_error(const QString& text)
{
    m_view->add_error(text);
}

void MESSAGES_DOCK::clear()
{
    m_view->clear();
}

void MESSAGES_DOCK::apply_drawing_resources()
{
    m_view->apply_drawing_resources();
}

TOLV_DOCK_WIDGET* mod_messages_create_dock_widget(TOLV_MAIN_WINDOW* main_window)
{
    return new MESSAGES_DOCK(main_window);
}
