// The switch for the background of a trial build is read once in a process.

#include "gui_test.h"
#include "test_environment.h"
#include "tolv_mdi_area.h"

namespace
{
class TOLV_MDI_AREA_SWITCH_TEST : public TOLV_GUI_TEST
{
};
} // namespace

TEST_F(TOLV_MDI_AREA_SWITCH_TEST, the_switch_gives_the_background_of_a_trial_build_and_is_read_once)
{
    {
        const SCOPED_CONFIGURATION beta("show_beta_background", "1");
        EXPECT_EQ(Qt::TexturePattern, TOLV_MDI_AREA().background().style());
    }
    EXPECT_EQ(Qt::TexturePattern, TOLV_MDI_AREA().background().style());
}
