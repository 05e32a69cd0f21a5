#include "drawing_frame.h"

#include "tolv_create_action.h"
#include "tolv_global.h"
#include "tolv_tool_bar.h"

#include <QAction>
#include <QActionGroup>
#include <QLabel>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QTimer>
#include <QVBoxLayout>

#include <cmath>

DRAWING_FRAME::DRAWING_FRAME(const QString& help_topic, QWidget* parent)
    : QWidget(parent), m_tool_bar(new TOLV_TOOL_BAR(this)), m_tools(new QActionGroup(this)),
      m_level_label(new QLabel(this))
{
    setAccessibleName(help_topic);
    auto* const own_layout = new QVBoxLayout(this);
    own_layout->setContentsMargins(0, 0, 0, 0);
    own_layout->setSpacing(0);
    own_layout->addWidget(m_tool_bar);
    m_tool_bar->setMovable(false);
    m_tools->setExclusive(true);
}

DRAWING_FRAME::~DRAWING_FRAME() = default;

TOLV_TOOL_BAR* DRAWING_FRAME::get_tool_bar() const
{
    return m_tool_bar;
}

void DRAWING_FRAME::set_drawing(QWidget* drawing, QWidget* view)
{
    layout()->addWidget(drawing);
    setFocusProxy(view);
}

QAction* DRAWING_FRAME::add_selection_tool()
{
    QAction* const selection_tool = tolv_create_action(TOLV_SELECTION_TOOL_ACTION, this);
    selection_tool->setCheckable(true);
    selection_tool->setChecked(true);
    m_tools->addAction(selection_tool);
    m_tool_bar->addAction(selection_tool);
    return selection_tool;
}

QActionGroup* DRAWING_FRAME::get_tools() const
{
    return m_tools;
}

void DRAWING_FRAME::add_level()
{
    m_tool_bar->addSeparator();
    m_level_label->setObjectName(QStringLiteral("zoom_level"));
    m_level_label->setAccessibleName(tr("Zoom level"));
    m_level_label->setMargin(4);
    m_level_label->setMinimumWidth(m_level_label->fontMetrics().horizontalAdvance(QStringLiteral("1600 %")) + 12);
    m_level_label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_tool_bar->addWidget(m_level_label);
}

void DRAWING_FRAME::show_all()
{
    m_shows_all = true;
    m_is_fit_pending = true;
    if (isVisible())
        fit_now();
}

void DRAWING_FRAME::prepare_printer(QPrinter* printer) const
{
    const QSizeF size = get_drawing_size();
    printer->setPageOrientation(size.width() > size.height() ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer->setDocName(accessibleName());
}

void DRAWING_FRAME::print()
{
    QPrinter printer(QPrinter::HighResolution);
    prepare_printer(&printer);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    QPainter painter;
    if (painter.begin(&printer))
        paint_page(&painter, &printer);
}

void DRAWING_FRAME::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    // The layout gives the sizes first.
    if (m_is_fit_pending)
        QTimer::singleShot(0, this, SLOT(fit_now()));
}

void DRAWING_FRAME::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    if (m_shows_all && isVisible())
        QTimer::singleShot(0, this, SLOT(fit_now()));
}

void DRAWING_FRAME::fit_now()
{
    m_is_fit_pending = false;
    m_is_fitting = true;
    fit_drawing();
    m_is_fitting = false;
}

void DRAWING_FRAME::show_level(float level)
{
    m_shows_all = m_is_fitting;
    m_level_label->setText(tr("%1 %").arg(std::lround(level * 100)));
}
