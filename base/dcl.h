#pragma once

#include "base_export.h"

/// The environment of the product.
class TOLV_BASE_EXPORT DCL_ENV
{
public:
    /// Whether the suite runs in its alternative mode: the environment variable `NORVANE_ALT_MODE` is set to anything
    /// but the empty text or "0". Read at every call.
    static bool is_alt_mode();
};
