#include "drawing_pane.h"

#include "drawing_view.h"

#include "tolv_create_action.h"
#include "tolv_global.h"
#include "tolv_tool_bar.h"
#include "tolv_zoom_scroll_area.h"

#include <QAction>
#include <QActionGroup>
#include <QLabel>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QTimer>
#include <QVBoxLayout>

#include <cmath>

DRAWING_PANE::DRAWING_PANE(DRAWING_VIEW* view, const QString& help_topic, QWidget* parent)
    : QWidget(parent), m_view(view), m_area(new TOLV_ZOOM_SCROLL_AREA(this)), m_tool_bar(new TOLV_TOOL_BAR(this)),
      m_tools(new QActionGroup(this)), m_level_label(new QLabel(this))
{
    setAccessibleName(help_topic);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_tool_bar);
    layout->addWidget(m_area);
    m_area->setFrameShape(QFrame::NoFrame);
    m_area->set_view(view, true);
    setFocusProxy(view);
    create_tool_bar();
    TOLV_SAFE_CONNECT(m_area, SIGNAL(zoom_level_changed(float)), this, SLOT(show_level(float)));
    TOLV_SAFE_CONNECT(m_area, SIGNAL(pan_mode_off()), this, SLOT(end_temporary_tool()));
    TOLV_SAFE_CONNECT(view, SIGNAL(reveal_requested(QRect)), this, SLOT(reveal(QRect)));
}

DRAWING_VIEW* DRAWING_PANE::get_view() const
{
    return m_view;
}

TOLV_ZOOM_SCROLL_AREA* DRAWING_PANE::get_area() const
{
    return m_area;
}

TOLV_TOOL_BAR* DRAWING_PANE::get_tool_bar() const
{
    return m_tool_bar;
}

void DRAWING_PANE::create_tool_bar()
{
    m_tool_bar->setMovable(false);
    m_tools->setExclusive(true);
    QAction* const selection_tool = tolv_create_action(TOLV_SELECTION_TOOL_ACTION, this);
    selection_tool->setCheckable(true);
    selection_tool->setChecked(true);
    m_tools->addAction(selection_tool);
    m_area->insert_modes(m_tools);
    m_tool_bar->addAction(selection_tool);
    m_area->add_mode_actions(m_tool_bar);
    m_tool_bar->addSeparator();
    m_area->insert_actions(m_tool_bar, nullptr);
    m_tool_bar->addAction(m_area->get_action(TOLV_BIRDS_EYE_VIEW_ACTION));
    m_tool_bar->addSeparator();
    m_level_label->setObjectName(QStringLiteral("zoom_level"));
    m_level_label->setAccessibleName(tr("Zoom level"));
    m_level_label->setMargin(4);
    m_level_label->setMinimumWidth(m_level_label->fontMetrics().horizontalAdvance(QStringLiteral("1600 %")) + 12);
    m_level_label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_tool_bar->addWidget(m_level_label);
}

void DRAWING_PANE::show_all()
{
    m_shows_all = true;
    m_is_fit_pending = true;
    if (isVisible())
        fit_now();
}

void DRAWING_PANE::print()
{
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    QPainter painter(&printer);
    m_view->adjust_painter(&painter, &printer);
    m_view->paint(&painter, nullptr, m_view, printer.pageLayout().paintRectPixels(printer.resolution()), true);
}

void DRAWING_PANE::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    // The layout gives the sizes first.
    if (m_is_fit_pending)
        QTimer::singleShot(0, this, SLOT(fit_now()));
}

void DRAWING_PANE::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (m_shows_all && isVisible())
        QTimer::singleShot(0, this, SLOT(fit_now()));
}

void DRAWING_PANE::fit_now()
{
    m_is_fit_pending = false;
    m_is_fitting = true;
    m_area->zoom_fit();
    m_is_fitting = false;
}

void DRAWING_PANE::show_level(float level)
{
    m_shows_all = m_is_fitting;
    m_level_label->setText(tr("%1 %").arg(std::lround(level * 100)));
}

void DRAWING_PANE::reveal(const QRect& rect)
{
    if (isVisible() && !rect.isEmpty())
        m_area->scroll_to_logical_rect(rect);
}

void DRAWING_PANE::end_temporary_tool()
{
    QAction* const first = m_tools->actions().constFirst();
    first->setChecked(true);
}
