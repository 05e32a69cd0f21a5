#include "message_watch.h"
#include "test_application.h"
#include "test_environment.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>

namespace
{
/// Ends the application behind the last test. What Qt says meanwhile fails the run.
class APPLICATION_END : public testing::Environment
{
public:
    void TearDown() override
    {
        if (TEST_APPLICATION::get_kind() == TEST_APPLICATION::KIND_NONE)
            return;
        MESSAGE_WATCH::begin();
        TEST_APPLICATION::finish();
        MESSAGE_WATCH::end();
    }
};

/// What the user's desktop would do to sizes, colours and input.
void set_fixed_surroundings()
{
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    setenv("LC_ALL", "C.UTF-8", 1);
    setlocale(LC_ALL, "");
    for (const char* name : {"LANGUAGE", "QT_FONT_DPI", "QT_SCREEN_SCALE_FACTORS", "QT_AUTO_SCREEN_SCALE_FACTOR",
                             "QT_ENABLE_HIGHDPI_SCALING", "QT_SCALE_FACTOR_ROUNDING_POLICY", "QT_IM_MODULE",
                             "XDG_CURRENT_DESKTOP", "KDE_FULL_SESSION", "GNOME_DESKTOP_SESSION_ID", "DESKTOP_SESSION"})
        unsetenv(name);
}
} // namespace

int main(int argc, char** argv)
{
    set_fixed_surroundings();
    const TEST_ENVIRONMENT environment;
    testing::InitGoogleTest(&argc, argv);
    TEST_APPLICATION::set_arguments(argc, argv);
    testing::AddGlobalTestEnvironment(new APPLICATION_END);
    return RUN_ALL_TESTS();
}
