#pragma once

/// Visibility: what hosts use carries TOLV_EXPORT, all else stays inside the library. The attribute is the same on both
/// sides, so that a host's type information for an exported class is the library's own.
#define TOLV_EXPORT __attribute__((visibility("default")))
