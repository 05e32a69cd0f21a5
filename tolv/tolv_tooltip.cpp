#include "tolv_tooltip.h"

#include "tolv_check.h"
#include "tolv_mem.h"

#include <QApplication>
#include <QCursor>
#include <QScreen>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QStylePainter>
#include <QTimerEvent>
#include <QToolTip>

TOLV_MEM_INITIALIZER();

namespace
{
/// A time that is not measured.
constexpr int NEVER = -1;
/// From the pointer to the tip, both ways.
constexpr int DISTANCE_TO_POINTER = 25;
/// The tip's further way to the left and up where it stands out of the screen.
constexpr int STEP_LEFT = 5;
constexpr int STEP_UP = 25;
} // namespace

TOLV_TOOLTIP::TOLV_TOOLTIP(QWidget* parent) : QLabel(parent, Qt::ToolTip)
{
    setForegroundRole(QPalette::ToolTipText);
    setBackgroundRole(QPalette::ToolTipBase);
    setPalette(QToolTip::palette());
    ensurePolished();
    setMargin(style()->pixelMetric(QStyle::PM_ToolTipLabelFrameWidth, nullptr, this) + 1);
    setFrameStyle(QFrame::NoFrame);
    setAlignment(Qt::AlignLeft);
    setIndent(1);
    setWordWrap(true);
    qApp->installEventFilter(this);
    setWindowOpacity(style()->styleHint(QStyle::SH_ToolTipLabel_Opacity, nullptr, this) / 255.0);
    setAttribute(Qt::WA_MouseTracking);
    setAttribute(Qt::WA_QuitOnClose, false); // with its parent hidden it would count as the last window of the tool
    close();
}

TOLV_TOOLTIP::~TOLV_TOOLTIP() = default;

void TOLV_TOOLTIP::show_tooltip(const QString& text)
{
    if (m_delay == NEVER || text == this->text())
        return;
    close();
    m_display_timer.stop(); // the time of the tip before must not close this one
    m_delay_timer.start(m_delay, this);
    setText(text);
}

void TOLV_TOOLTIP::hide_tooltip()
{
    restart_display_timer();
}

void TOLV_TOOLTIP::hide_immediately()
{
    m_display_timer.stop();
    m_delay_timer.stop();
    setText(QString());
    close();
}

void TOLV_TOOLTIP::show_immediately()
{
    fit_to_text();
    place_tooltip(QCursor::pos() + QPoint(DISTANCE_TO_POINTER, DISTANCE_TO_POINTER));
    if (!text().isEmpty())
        show();
    restart_display_timer();
}

void TOLV_TOOLTIP::restart_display_timer()
{
    if (m_display_time != NEVER)
        m_display_timer.start(m_display_time, this);
}

void TOLV_TOOLTIP::place_tooltip(const QPoint& pos)
{
    TOLV_CHECK_TEXT(qApp != nullptr, "qApp != nullptr");
    if (qApp == nullptr)
        return;
    const QScreen* const screen = QGuiApplication::screenAt(pos);
    const int right = screen != nullptr ? screen->geometry().right() : -1;
    const int bottom = screen != nullptr ? screen->geometry().bottom() : -1;
    QPoint place = pos;
    if (pos.x() + width() - 1 + 1 > right + 1)
        place.rx() -= width() - 1 + STEP_LEFT;
    if (pos.y() + height() - 1 + 1 > bottom + 1)
        place.ry() -= height() - 1 + STEP_UP;
    move(place);
}

bool TOLV_TOOLTIP::eventFilter([[maybe_unused]] QObject* watched, QEvent* event)
{
    switch (event->type())
    {
    case QEvent::FocusIn:
    case QEvent::FocusOut:
    case QEvent::Leave:
    case QEvent::WindowActivate:
    case QEvent::WindowDeactivate:
    case QEvent::Wheel:
        hide_immediately();
        break;
    default:
        break;
    }
    return false;
}

void TOLV_TOOLTIP::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_display_timer.timerId())
    {
        m_display_timer.stop();
        hide_immediately();
    }
    else if (event->timerId() == m_delay_timer.timerId())
    {
        m_delay_timer.stop();
        show_immediately();
    }
    else
    {
        QLabel::timerEvent(event);
    }
}

void TOLV_TOOLTIP::paintEvent(QPaintEvent* event)
{
    QStylePainter painter(this);
    QStyleOptionFrame option;
    option.initFrom(this);
    painter.drawPrimitive(QStyle::PE_PanelTipLabel, option);
    painter.end();
    QLabel::paintEvent(event);
}

/// The size that show() would give the window, before it is placed by that size. A size that the owner has set stays.
void TOLV_TOOLTIP::fit_to_text()
{
    if (testAttribute(Qt::WA_Resized))
        return;
    adjustSize();
    setAttribute(Qt::WA_Resized, false);
}
