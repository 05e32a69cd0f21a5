#pragma once

#include "base_export.h"

#include <string>
#include <vector>

/// Number of different physical cores behind the given logical processors, from the folder in which the system
/// describes them (`<folder>/cpu<number>/topology`). False where one of them is not described, and for an empty list;
/// `*count` stays as it is then.
TOLV_BASE_EXPORT bool gen_count_cores(const std::string& folder, const std::vector<int>& processors, int* count);
