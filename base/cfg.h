#pragma once

#include "base_export.h"

#include <string>

/// Configuration: named switches, numbers and texts that an installation, a user's environment or the host sets.
///
/// A value is looked for in this order, the first hit wins: what the host set with cfg_set_value(); the environment
/// variable `NORVANE_CFG`, a list `key=value;key=value`; the installation's configuration file, whose path stands in the
/// environment variable `NORVANE_CFG_FILE` or, where that is unset or empty, is `norvane.ini` beside the executable.
/// Environment and file are read once, at the first look-up. Keys are case-sensitive. All functions may be called on
/// any thread, at any time between the start and the end of the process; a look-up of a number or a switch allocates
/// nothing.
///
/// The file is UTF-8 text with one `key = value` per line; blanks around key and value do not count, and a value in
/// double quotes keeps the blanks inside them. Lines that begin with ";" or "#" are comments. Keys before the first
/// section line and those of the section `[norvane]` are looked up by their own name, those of another section as
/// `section/key`. The last of several lines with one key holds, in the file as in the environment. What cannot be
/// read is skipped and never stops a start: a line without "=" or with a NUL in it, the lines below a damaged section
/// line, a file that is missing, no regular file, or larger than 16 MiB.

/// Switches that older tools know by number. Only the three that the graphical library reads have a name here.
enum CFG_INI_VAR_ENUM
{
    CFG_INI_VAR_DEVELOPER_INTERNAL_ERROR_FORM = 12, ///< internal errors show the developer's form (default off)
    CFG_INI_VAR_SHOW_DIALOG_HELP_TOPIC = 17,        ///< dialogs show their help topic in a label (default off)
    CFG_INI_VAR_LOG_USER_ACTIONS = 29,              ///< the action logger hooks every control (default off)
};

/// The key under which a numbered switch is looked up: "developer_internal_error_form", "show_dialog_help_topic",
/// "log_user_actions"; an empty text for a number that has no name.
TOLV_BASE_EXPORT std::string cfg_get_ini_var_name(CFG_INI_VAR_ENUM variable);

/// Whether a switch is on. On are, in any letter case, "1", "on", "true", "yes" and any non-zero integer; off are "0",
/// "off", "false", "no", any integer of value zero and the empty text. Blanks around the text do not count. Any other
/// text, a null key and a missing value give `default_value`.
TOLV_BASE_EXPORT bool cfg_is_on(const char* key, bool default_value = false);

/// The same for a numbered switch; a number that has no name gives `default_value`.
TOLV_BASE_EXPORT bool cfg_is_on(CFG_INI_VAR_ENUM variable, bool default_value = false);

/// An integer value, decimal or with a leading "0x", with or without a sign; `default_value` for a null key, where none
/// is set, where the text is no integer or where it does not fit an int. Blanks around the text do not count.
TOLV_BASE_EXPORT int cfg_get_int_value(const char* key, int default_value = 0);

/// A text value; `default_value` for a null key and where none is set.
TOLV_BASE_EXPORT std::string cfg_get_string_value(const char* key, const std::string& default_value = std::string());

/// Sets a value for the rest of the process, over environment and file. An empty key is ignored. The library reads most
/// keys once, into function-local statics: set them before the application object is made.
TOLV_BASE_EXPORT void cfg_set_value(const std::string& key, const std::string& value);

/// Takes back what cfg_set_value() set for the key, so that environment and file count again; harmless where nothing
/// was set.
TOLV_BASE_EXPORT void cfg_unset_value(const std::string& key);
