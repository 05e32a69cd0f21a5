#pragma once

/// The icons of the suite, alphabetical, 1 to 784 without gaps. What each one shows and which files it has stands in
/// tolv_icon_table.def.
enum TOLV_ICON_ENUM : int
{
    TOLV_ICON_NONE = 0, ///< no icon
#define TOLV_ICON_ROW(enumerator, form, first_file, second_file) enumerator,
#include "tolv_icon_table.def"
#undef TOLV_ICON_ROW
    TOLV_ICON_END ///< one behind the last icon
};

/// The number of icons, and the value of the last one.
constexpr int TOLV_ICON_COUNT = TOLV_ICON_END - 1;
static_assert(TOLV_ICON_COUNT == 784, "the table of icons has 784 rows");
