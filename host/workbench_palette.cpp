#include "workbench_palette.h"

#include <QApplication>
#include <QStyle>

namespace
{
/// Those of a dark desktop, for the Fusion style.
QPalette get_dark_palette()
{
    QPalette palette(QColor(0x35, 0x38, 0x3c), QColor(0x2b, 0x2d, 0x30));
    palette.setColor(QPalette::Base, QColor(0x1f, 0x21, 0x23));
    palette.setColor(QPalette::AlternateBase, QColor(0x27, 0x29, 0x2c));
    palette.setColor(QPalette::ToolTipBase, QColor(0x35, 0x38, 0x3c));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
    {
        palette.setColor(role, QColor(0xe4, 0xe6, 0xe8));
        palette.setColor(QPalette::Disabled, role, QColor(0x85, 0x88, 0x8c));
    }
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, QColor(0x95, 0x98, 0x9c));
    palette.setColor(QPalette::Link, QColor(0x78, 0xb4, 0xff));
    palette.setColor(QPalette::Highlight, QColor(0x2f, 0x65, 0xa8));
    palette.setColor(QPalette::Inactive, QPalette::Highlight, QColor(0x45, 0x50, 0x5e));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}
} // namespace

QPalette workbench_get_palette(bool is_dark)
{
    return is_dark ? get_dark_palette() : QApplication::style()->standardPalette();
}
