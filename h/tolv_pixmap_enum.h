#pragma once

/// The pixmaps of the suite, 1 to 22: splash screens, banners, watermarks. Their files stand in tolv_pixmap_table.def.
enum TOLV_PIXMAP_ENUM : int
{
    TOLV_PIXMAP_NONE = 0, ///< no pixmap
#define TOLV_PIXMAP_ROW(enumerator, file) enumerator,
#include "tolv_pixmap_table.def"
#undef TOLV_PIXMAP_ROW
    TOLV_PIXMAP_END ///< one behind the last pixmap
};

/// The number of pixmaps, and the value of the last one.
constexpr int TOLV_PIXMAP_COUNT = TOLV_PIXMAP_END - 1;
static_assert(TOLV_PIXMAP_COUNT == 22, "the table of pixmaps has 22 rows");
static_assert(TOLV_SPLASH_SCREEN_PIXMAP == 1 && TOLV_DOCUMENTATION_URL_PIXMAP == 10 &&
                  TOLV_NOTIFICATION_CENTER_PIXMAP == 11 && TOLV_MDI_WATERMARK_PIXMAP == 12 &&
                  TOLV_WELCOME_SCREEN_PIXMAP == 13 && TOLV_OUT_OF_DATE_WATERMARK_PIXMAP == 14 &&
                  TOLV_MWPIM_CEC_PIXMAP == 15 && TOLV_MWPIM_CONFIG_PIXMAP == 16 &&
                  TOLV_WEB_WELCOME_SCREEN_PIXMAP == 17 && TOLV_TEDQ_ERROR_INDICATOR_PIXMAP == 20 &&
                  TOLV_IP_UPGRADE_SCREENSHOT_PIXMAP == 21 && TOLV_KORVEX_LOGO_PIXMAP == 22,
              "the values of these pixmaps are fixed");
