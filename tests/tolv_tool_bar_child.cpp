// Prints what tool bars make of this screen: whether a value is stored, the choice, what is stored then, what is stored
// once a tool bar has been made, and whether its icons are large. "-" stands for nothing stored.
// usage: tolv_tool_bar_child

#include "cfgq_registry.h"
#include "tolv_app.h"
#include "tolv_font.h"
#include "tolv_tool_bar.h"

#include <QFontMetrics>
#include <QScreen>

#include <cstdio>

static const char* get_stored()
{
    QVariant value;
    if (!CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_TOOL_BARS)
             .get_value(QString::fromLatin1(CFGQ_TOLV_TOOLBAR_LARGE_ICONS), &value))
        return "-";
    return value.toBool() ? "true" : "false";
}

int main(int argc, char** argv)
{
    char** const qt_argv = TOLV_APP::copy_argv_for_qt(argc, const_cast<const char**>(argv));
    int qt_argc = argc;
    TOLV_APP app(qt_argc, qt_argv);
    const QSize screen = QGuiApplication::primaryScreen()->availableGeometry().size();
    std::printf("%dx%d %s ", screen.width(), screen.height(), get_stored());
    const bool large = TOLV_TOOL_BAR::get_large_icon_setting(nullptr);
    std::printf("%s %s ", large ? "large" : "small", get_stored());
    const TOLV_TOOL_BAR bar;
    const int line_height = QFontMetrics(*TOLV_FONT(TOLV_GUI_FONT).get_font()).height();
    std::printf("%s %s\n", get_stored(), bar.iconSize().height() > line_height ? "large" : "small");
    return 0;
}
