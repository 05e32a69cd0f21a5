#include "tolv_tab_close_marks.h"

#include "tolv_mem.h"

#include <QAbstractButton>
#include <QChildEvent>
#include <QPainter>
#include <QPainterPath>
#include <QTabBar>

TOLV_MEM_INITIALIZER();

namespace
{
constexpr qreal MARK_SHARE = 0.22; // of the button's width that the mark reaches from its middle
constexpr qreal LINE_WIDTH = 1.5;
constexpr qreal GROUND_RADIUS = 2.5;
constexpr qreal OTHER_TAB_STRENGTH = 0.65; // of the text's colour
constexpr qreal HOVER_STRENGTH = 0.18;
constexpr qreal PRESS_STRENGTH = 0.34;

QColor weaken(QColor color, qreal strength)
{
    color.setAlphaF(color.alphaF() * strength);
    return color;
}
} // namespace

void TOLV_TAB_CLOSE_MARKS::install(QTabBar* bar)
{
    if (bar != nullptr && bar->findChild<TOLV_TAB_CLOSE_MARKS*>(QString(), Qt::FindDirectChildrenOnly) == nullptr)
        new TOLV_TAB_CLOSE_MARKS(bar);
}

TOLV_TAB_CLOSE_MARKS::TOLV_TAB_CLOSE_MARKS(QTabBar* bar) : QObject(bar), m_bar(bar)
{
    const QObjectList& children = bar->children();
    for (QObject* child : children)
        watch(child);
    bar->installEventFilter(this);
}

TOLV_TAB_CLOSE_MARKS::~TOLV_TAB_CLOSE_MARKS() = default;

bool TOLV_TAB_CLOSE_MARKS::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_bar)
    {
        // Only a child that is polished is of its class already.
        if (event->type() == QEvent::ChildPolished)
            watch(static_cast<QChildEvent*>(event)->child());
        return false;
    }
    auto* const button = qobject_cast<QAbstractButton*>(watched);
    if (button == nullptr || event->type() != QEvent::Paint)
        return false;
    paint(button);
    return true;
}

void TOLV_TAB_CLOSE_MARKS::watch(QObject* child)
{
    if (child->inherits("CloseButton")) // QTabBar's own, which no header of Qt shows
        child->installEventFilter(this);
}

void TOLV_TAB_CLOSE_MARKS::paint(QAbstractButton* button) const
{
    const QColor color = button->palette().color(QPalette::WindowText);
    const bool is_hovered = button->isEnabled() && button->underMouse();
    QPainter painter(button);
    painter.setRenderHint(QPainter::Antialiasing);
    if (is_hovered || button->isDown())
    {
        painter.setPen(Qt::NoPen);
        painter.setBrush(weaken(color, button->isDown() ? PRESS_STRENGTH : HOVER_STRENGTH));
        painter.drawRoundedRect(button->rect(), GROUND_RADIUS, GROUND_RADIUS);
    }
    const bool is_strong = is_hovered || button->isDown() || is_on_current_tab(button);
    painter.setPen(
        QPen(is_strong ? color : weaken(color, OTHER_TAB_STRENGTH), LINE_WIDTH, Qt::SolidLine, Qt::RoundCap));
    const QPointF middle = QRectF(button->rect()).center();
    const qreal reach = qMin(button->width(), button->height()) * MARK_SHARE;
    QPainterPath cross; // one stroke: two lines would be twice as strong where they meet
    cross.moveTo(middle - QPointF(reach, reach));
    cross.lineTo(middle + QPointF(reach, reach));
    cross.moveTo(middle - QPointF(reach, -reach));
    cross.lineTo(middle + QPointF(reach, -reach));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(cross);
}

bool TOLV_TAB_CLOSE_MARKS::is_on_current_tab(const QAbstractButton* button) const
{
    const int tab = m_bar->currentIndex();
    return m_bar->tabButton(tab, QTabBar::LeftSide) == button || m_bar->tabButton(tab, QTabBar::RightSide) == button;
}
