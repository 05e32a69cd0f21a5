#pragma once

#include "base_export.h"

/// Whether the process runs as a regression test: the configuration switch "regtest_mode" is on, or the environment
/// variable `NORVANE_REGTEST` is set to anything but the empty text or "0". Stored drawing resources are ignored then.
/// Read at every call, on any thread.
TOLV_BASE_EXPORT bool tst_is_regtest_mode();
