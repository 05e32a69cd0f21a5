#include "tolv_tool_bar.h"

#include "cfg.h"
#include "cfgq_registry.h"
#include "tolv_font.h"
#include "tolv_help_dyn.h"
#include "tolv_main_window.h"
#include "tolv_mem.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>

TOLV_MEM_INITIALIZER();

namespace
{
constexpr int LARGE_ICONS_SCREEN_WIDTH = 1600;
constexpr int LARGE_ICONS_SCREEN_HEIGHT = 1080;

QString get_value_name()
{
    return QString::fromLatin1(CFGQ_TOLV_TOOLBAR_LARGE_ICONS);
}

/// The choice where none is stored. Only the answer of a small screen is stored at once, which is meant.
bool derive_large_icon_setting(CFGQ_REGISTRY_KEY* key)
{
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return true;
    const QRect available = screen->availableGeometry();
    if (available.width() >= LARGE_ICONS_SCREEN_WIDTH && available.height() >= LARGE_ICONS_SCREEN_HEIGHT)
        return true;
    key->set_value(get_value_name(), false);
    return false;
}
} // namespace

TOLV_TOOL_BAR::TOLV_TOOL_BAR(const QString& title, QWidget* parent) : QToolBar(title, parent)
{
    setup();
}

TOLV_TOOL_BAR::TOLV_TOOL_BAR(QWidget* parent) : QToolBar(parent)
{
    setup();
}

TOLV_TOOL_BAR::~TOLV_TOOL_BAR() = default;

void TOLV_TOOL_BAR::setup()
{
    set_large_icons(get_large_icon_setting(parentWidget()));
    // While the bar is being made that is this class's own topic, whatever a subclass says.
    setAccessibleName(QString::fromLocal8Bit(TOLV_TOOL_BAR::get_help_topic_string().c_str()));
}

bool TOLV_TOOL_BAR::get_large_icon_setting(QWidget*)
{
    static const bool s_small_icons = cfg_is_on("small_icons");
    CFGQ_REGISTRY_KEY key(CFGQ_REGISTRY_KEY::SUB_KEY_TOOL_BARS);
    QVariant stored;
    const bool large = key.get_value(get_value_name(), &stored) ? stored.toBool() : derive_large_icon_setting(&key);
    return large && !s_small_icons;
}

void TOLV_TOOL_BAR::set_large_icons(bool large)
{
    int size = QFontMetrics(*TOLV_FONT(TOLV_GUI_FONT).get_font()).height();
    if (large)
        size = static_cast<int>(size * 1.5);
    setIconSize(QSize(size, size));
    CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_TOOL_BARS).set_value(get_value_name(), large);
}

void TOLV_TOOL_BAR::set_large_icons(TOLV_MAIN_WINDOW* window, bool large)
{
    if (window == nullptr)
        return;
    const QList<TOLV_TOOL_BAR*> bars = window->findChildren<TOLV_TOOL_BAR*>();
    for (TOLV_TOOL_BAR* bar : bars)
        bar->set_large_icons(large);
}

std::string TOLV_TOOL_BAR::get_help_topic_string()
{
    return "Customize";
}

void TOLV_TOOL_BAR::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_F1)
        help_dyn_show_context(get_help_topic_string());
    else
        QWidget::keyPressEvent(event);
}
