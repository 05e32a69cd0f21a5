#include "tolv_dock_widget_button_bar.h"

#include "tolv_mem.h"

TOLV_MEM_INITIALIZER();

namespace
{
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
