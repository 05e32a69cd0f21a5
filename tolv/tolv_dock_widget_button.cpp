#include "tolv_dock_widget_button.h"

#include "tolv_dock_widget.h"
#include "tolv_dock_widget_button_bar.h"
#include "tolv_global.h"
#include "tolv_main_window.h"
#include "tolv_mem.h"

#include <QAction>
#include <QPaintEngine>
#include <QPainter>
#include <QPixmap>
#include <QStyle>
#include <QStyleOptionToolButton>

TOLV_MEM_INITIALIZER();

namespace
{
/// The button as it looks before it is turned, as dense as what it is painted on.
QPixmap paint_upright(const QToolButton& button, const QStyleOptionToolButton& option, qreal ratio)
{
    QPixmap pixmap(QSizeF(QSizeF(option.rect.size()) * ratio).toSize());
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(button.palette().color(QPalette::Window));
    QPainter painter(&pixmap);
    button.style()->drawComplexControl(QStyle::CC_ToolButton, &option, &painter, &button);
    return pixmap;
}
} // namespace

TOLV_DOCK_WIDGET_BUTTON::TOLV_DOCK_WIDGET_BUTTON(TOLV_DOCK_WIDGET* dock, QWidget* parent)
    : QToolButton(parent), m_dock(dock)
{
    setAutoRaise(true);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setCheckable(true);
    setFocusPolicy(Qt::NoFocus);
    if (dock != nullptr)
    {
        setText(dock->windowTitle());
        const TOLV_MAIN_WINDOW* const main_window = dock->m_main_window;
        if (main_window != nullptr)
        {
            const QAction* const action = main_window->get_main_menu_action(dock->windowTitle());
            if (action != nullptr)
                setIcon(action->icon());
        }
    }
    TOLV_SAFE_CONNECT(this, SIGNAL(clicked(bool)), this, SLOT(on_clicked(bool)));
}

TOLV_DOCK_WIDGET_BUTTON::~TOLV_DOCK_WIDGET_BUTTON()
{
    // A bar that is being destroyed itself is no longer of this class.
    auto* const bar = qobject_cast<TOLV_DOCK_WIDGET_BUTTON_BAR*>(parentWidget());
    if (bar != nullptr)
        bar->remove_button(this);
}

void TOLV_DOCK_WIDGET_BUTTON::set_area(Qt::ToolBarArea area)
{
    m_toolbar_area = area;
    update();
}

Qt::ToolBarArea TOLV_DOCK_WIDGET_BUTTON::get_area() const
{
    return m_toolbar_area;
}

TOLV_DOCK_WIDGET* TOLV_DOCK_WIDGET_BUTTON::get_dock() const
{
    return m_dock;
}

QSize TOLV_DOCK_WIDGET_BUTTON::sizeHint() const
{
    const QSize hint = QToolButton::sizeHint();
    return is_turned() ? hint.transposed() : hint;
}

void TOLV_DOCK_WIDGET_BUTTON::on_clicked(bool checked)
{
    if (m_dock == nullptr)
        return;
    if (!checked)
    {
        m_dock->hide();
        m_dock->setFloating(false);
        return;
    }
    m_dock->show();
    m_dock->raise();
    hide_other_docks();
}

void TOLV_DOCK_WIDGET_BUTTON::paintEvent(QPaintEvent*)
{
    if (m_dock != nullptr)
        setText(m_dock->windowTitle());
    QStyleOptionToolButton option;
    initStyleOption(&option);
    if (is_turned())
        option.rect.setSize(option.rect.size().transposed());

    QPainter painter(this);
    const QPixmap pixmap = paint_upright(*this, option, painter.paintEngine()->paintDevice()->devicePixelRatioF());
    QPoint place(0, 0);
    if (m_toolbar_area == Qt::LeftToolBarArea)
    {
        painter.rotate(-90);
        place.setX(-option.rect.width());
    }
    else if (m_toolbar_area == Qt::RightToolBarArea)
    {
        painter.rotate(90);
        place.setY(-option.rect.height());
    }
    painter.drawPixmap(place, pixmap);
}

bool TOLV_DOCK_WIDGET_BUTTON::is_turned() const
{
    return m_toolbar_area == Qt::LeftToolBarArea || m_toolbar_area == Qt::RightToolBarArea;
}

void TOLV_DOCK_WIDGET_BUTTON::hide_other_docks() const
{
    const TOLV_MAIN_WINDOW* const main_window = m_dock->m_main_window;
    const TOLV_DOCK_WIDGET_BUTTON_BAR* const bar =
        main_window != nullptr ? main_window->m_button_bars.value(m_toolbar_area) : nullptr;
    if (bar == nullptr)
        return;
    // A copy: what hears of a window that hides may change the bar.
    const QList<TOLV_DOCK_WIDGET_BUTTON*> buttons = bar->m_buttons.keys();
    for (TOLV_DOCK_WIDGET_BUTTON* button : buttons)
    {
        if (button == this || !bar->m_buttons.contains(button) || button->m_dock == m_dock)
            continue;
        if (button->m_dock != nullptr)
            button->m_dock->hide();
        button->setChecked(false);
    }
}
