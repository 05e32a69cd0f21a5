#pragma once

/// The cursors of the suite, 1 to 9. Their files and hot spots stand in tolv_cursor_table.def.
enum TOLV_CURSOR_ENUM : int
{
    TOLV_CURSOR_NONE = 0, ///< no cursor
#define TOLV_CURSOR_ROW(enumerator, bitmap, mask, hot_x, hot_y) enumerator,
#include "tolv_cursor_table.def"
#undef TOLV_CURSOR_ROW
    TOLV_CURSOR_END ///< one behind the last cursor
};

/// The number of cursors, and the value of the last one.
constexpr int TOLV_CURSOR_COUNT = TOLV_CURSOR_END - 1;
static_assert(TOLV_CURSOR_COUNT == 9, "the table of cursors has 9 rows");
static_assert(TOLV_ZOOM_IN_CURSOR == 1 && TOLV_ZOOM_OUT_CURSOR == 2 && TOLV_CLOCK_ASSIGNMENT_CURSOR == 3 &&
                  TOLV_CREATE_REGION_CURSOR == 4 && TOLV_MOVE_CURSOR == 5 && TOLV_ARROW_CURSOR == 6 &&
                  TOLV_FORBIDDEN_CURSOR == 7 && TOLV_ARROW_FORBIDDEN_CURSOR == 8 && TOLV_MAGNIFYING_CURSOR == 9,
              "the values of cursors are fixed");
