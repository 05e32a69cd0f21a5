#pragma once

#include "base_export.h"

/// The budget of processors that the tools' parallel algorithms share.
class TOLV_BASE_EXPORT PUT_PROCESSOR_MANAGER
{
public:
    /// Sets the budget: physical cores and logical processors that the process may keep busy. Values below 1 count as
    /// 1. A later call replaces the earlier one.
    static void initialize(int core_count, int logical_count);

    /// The first argument of the last initialize(), 1 before it.
    static int get_core_count();

    /// The second argument of the last initialize(), 1 before it.
    static int get_logical_count();

    /// Whether initialize() has been called.
    static bool is_initialized();
};
