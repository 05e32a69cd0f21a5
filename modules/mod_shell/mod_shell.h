#pragma once

#include "module_export.h"

#include <string>

/// Searches the product's site for a text in the user's web browser. GUI thread.
/// @param text local 8-bit encoding; white space at its ends does not count
/// @param mode 0; other values are kept for later
MODULE_EXPORT void shell_dyn_launch_external_web_browser(const std::string& text, int mode);
