#pragma once

#include "base_export.h"

#include <string>

/// Configuration: named switches and numbers that an installation, a user's environment or the host sets.
///
/// A value is looked for in this order, the first hit wins: what the host set with cfg_set_value(); the environment
/// variable `NORVANE_CFG`, a list `key=value;key=value`; the installation's configuration file, whose path stands in the
/// environment variable `NORVANE_CFG_FILE` or, without it, is `norvane.ini` beside the executable. Environment and file
/// are read once, at the first look-up. Keys are case-sensitive. All functions may be called on any thread.

/// Switches that older tools know by number. Only the three that the graphical library reads have a name here.
enum CFG_INI_VAR_ENUM
{
    CFG_INI_VAR_DEVELOPER_INTERNAL_ERROR_FORM = 12, ///< internal errors show the developer's form (default off)
    CFG_INI_VAR_SHOW_DIALOG_HELP_TOPIC = 17,        ///< dialogs show their help topic in a label (default off)
    CFG_INI_VAR_LOG_USER_ACTIONS = 29,              ///< the action logger hooks every control (default off)
};

/// The key under which a numbered switch is looked up ("developer_internal_error_form" ...); an empty string for a
/// number that has no name.
TOLV_BASE_EXPORT std::string cfg_get_ini_var_name(CFG_INI_VAR_ENUM variable);

/// Whether a switch is on. On are, in any letter case, "1", "on", "true", "yes" and any non-zero integer; off are "0",
/// "off", "false", "no" and the empty text. Any other text, a null key and a missing value give `default_value`.
TOLV_BASE_EXPORT bool cfg_is_on(const char* key, bool default_value = false);

/// The same for a numbered switch.
TOLV_BASE_EXPORT bool cfg_is_on(CFG_INI_VAR_ENUM variable, bool default_value = false);

/// An integer value, decimal or with a leading "0x"; `default_value` where none is set, where the text is no integer or
/// where it does not fit an int.
TOLV_BASE_EXPORT int cfg_get_int_value(const char* key, int default_value = 0);

/// A text value; `default_value` where none is set.
TOLV_BASE_EXPORT std::string cfg_get_string_value(const char* key, const std::string& default_value = std::string());

/// Sets a value for the rest of the process, over environment and file. The library reads most keys once, into
/// function-local statics: set them before the application object is made.
TOLV_BASE_EXPORT void cfg_set_value(const std::string& key, const std::string& value);

/// Takes back what cfg_set_value() set for the key.
TOLV_BASE_EXPORT void cfg_unset_value(const std::string& key);
