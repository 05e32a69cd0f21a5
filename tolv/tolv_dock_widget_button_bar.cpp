#include "tolv_dock_widget_button_bar.h"

#include "tolv_dock_widget_button.h"
#include "tolv_mem.h"

#include <QAction>
#include <QPainter>

TOLV_MEM_INITIALIZER();

namespace
{
constexpr int EDGE = 2; // pixels that are the style's

QString get_bar_title(Qt::ToolBarArea area)
{
    switch (area)
    {
    case Qt::LeftToolBarArea:
        return QStringLiteral("Left Button Toolbar");
    case Qt::RightToolBarArea:
        return QStringLiteral("Right Button Toolbar");
    case Qt::TopToolBarArea:
        return QStringLiteral("Top Button Toolbar");
    case Qt::BottomToolBarArea:
        return QStringLiteral("Bottom Button Toolbar");
    default:
        return QString();
    }
}
} // namespace

TOLV_DOCK_WIDGET_BUTTON_BAR::TOLV_DOCK_WIDGET_BUTTON_BAR(Qt::ToolBarArea area, QWidget* parent) : QToolBar(parent)
{
    setMovable(false);
    setIconSize(QSize(16, 16));
    setWindowTitle(get_bar_title(area));
}

TOLV_DOCK_WIDGET_BUTTON_BAR::~TOLV_DOCK_WIDGET_BUTTON_BAR() = default;

void TOLV_DOCK_WIDGET_BUTTON_BAR::add_button(TOLV_DOCK_WIDGET_BUTTON* button)
{
    if (button == nullptr)
        return;
    leave_other_bar(button);
    QAction* const action = addWidget(button);
    m_buttons[button] = action;
    action->setVisible(true);
    if (!isVisible())
        show();
}

void TOLV_DOCK_WIDGET_BUTTON_BAR::remove_button(TOLV_DOCK_WIDGET_BUTTON* button)
{
    if (button == nullptr)
        return;
    leave_other_bar(button);
    removeAction(m_buttons.take(button));
    button->setParent(nullptr);
    if (m_buttons.isEmpty())
        hide();
}

void TOLV_DOCK_WIDGET_BUTTON_BAR::paintEvent(QPaintEvent* event)
{
    QToolBar::paintEvent(event);
    QPainter(this).fillRect(rect().adjusted(EDGE, EDGE, -EDGE, -EDGE), palette().color(QPalette::Window));
}

void TOLV_DOCK_WIDGET_BUTTON_BAR::leave_other_bar(TOLV_DOCK_WIDGET_BUTTON* button)
{
    auto* const bar = qobject_cast<TOLV_DOCK_WIDGET_BUTTON_BAR*>(button->parentWidget());
    if (bar != nullptr && bar != this)
        bar->remove_button(button);
}
