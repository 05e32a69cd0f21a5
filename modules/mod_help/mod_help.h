#pragma once

#include "module_export.h"

#include <string>

/// Shows the help about a topic in the help window; local 8-bit encoding. GUI thread.
MODULE_EXPORT void help_dyn_show_context_impl(const std::string& topic);
