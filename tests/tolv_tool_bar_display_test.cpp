// The size of the icons on a screen of which a panel takes a part.

#include "cfgq_registry.h"
#include "gui_driver.h"
#include "gui_test.h"
#include "tolv_tool_bar.h"
#include "x11_panel.h"

#include <QGuiApplication>
#include <QScreen>

namespace
{
using TOLV_TOOL_BAR_DISPLAY_TEST = TOLV_GUI_TEST;

/// Invalid where nothing is stored.
QVariant get_stored()
{
    QVariant value;
    CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_TOOL_BARS)
        .get_value(QString::fromLatin1(CFGQ_TOLV_TOOLBAR_LARGE_ICONS), &value);
    return value;
}

bool wait_for_available(const QSize& size)
{
    return GUI_DRIVER::wait_for([&size]
                                { return QGuiApplication::primaryScreen()->availableGeometry().size() == size; });
}
} // namespace

TEST_F(TOLV_TOOL_BAR_DISPLAY_TEST, what_a_panel_takes_of_the_screen_does_not_count)
{
    CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_TOOL_BARS).remove(QString::fromLatin1(CFGQ_TOLV_TOOLBAR_LARGE_ICONS));
    ASSERT_TRUE(wait_for_available(QSize(1600, 1080))) << "run it through tests/tools/with_display";
    EXPECT_TRUE(TOLV_TOOL_BAR::get_large_icon_setting(nullptr));
    EXPECT_FALSE(get_stored().isValid());
    const X11_PANEL panel(1);
    ASSERT_TRUE(wait_for_available(QSize(1600, 1079)));
    EXPECT_EQ(QSize(1600, 1080), QGuiApplication::primaryScreen()->size());
    EXPECT_FALSE(TOLV_TOOL_BAR::get_large_icon_setting(nullptr));
    EXPECT_EQ(QVariant(false), get_stored());
}
