#pragma once

#include "tolv_check.h"

/// A check in one of the source files of TOLV_TREE_VIEW: whichever it stands in, the report names the class's own.
#define TOLV_TREE_VIEW_CHECK(condition, text)                                                                          \
    do                                                                                                                 \
    {                                                                                                                  \
        if (!(condition))                                                                                              \
            tolv_report_internal_error(text, "tolv_tree_view.cpp", __LINE__);                                          \
    } while (false)
