#pragma once

#include "tolv_export.h"

#include <QString>

/// The commands of the suite: one row of tolv_action_table.def each, reached by enumerator. What a row says here is
/// final English text, neither copied nor translated; tolv_create_action() makes a ready QAction of it.

/// The commands, alphabetical in ASCII order, 1 to 770 without gaps. Only TOLV_NORVANE_HELP_ACTION stands elsewhere,
/// at its fixed value.
enum TOLV_ACTION_ENUM : int
{
    TOLV_ACTION_NONE = 0, ///< no command
#define TOLV_ACTION_ROW(name, menu_text, statustip, key_kind, key, icon, check, menu) TOLV_##name##_ACTION,
#include "tolv_action_table.def"
#undef TOLV_ACTION_ROW
    TOLV_ACTION_END ///< one behind the last command
};

/// The number of commands, and the value of the last one.
constexpr int TOLV_ACTION_COUNT = TOLV_ACTION_END - 1;
static_assert(TOLV_ACTION_COUNT == 770, "the table of commands has 770 rows");

// ---- Look-ups -------------------------------------------------------------------------------------------------------

/// The texts of the commands as tables indexed by the enumerator; "translator" means from an enumerator to a text.
/// There is one object, which has no state of its own. Each member returns a text that lives as long as the process
/// and is never null; a row that lacks the datum has an empty text. A value other than 1 to 770 is the internal error
/// "The calling function has passed an illegal TOLV_ACTION_ENUM".
class TOLV_EXPORT TOLV_ACTION_TRANSLATOR
{
public:
    /// The only object.
    static const TOLV_ACTION_TRANSLATOR& get_instance();

    TOLV_ACTION_TRANSLATOR(const TOLV_ACTION_TRANSLATOR&) = delete;
    TOLV_ACTION_TRANSLATOR& operator=(const TOLV_ACTION_TRANSLATOR&) = delete;

    /// The text in menus, with "&" before the mnemonic, "&&" for an ampersand, and "..." where a dialog follows.
    const char* get_menu_text(TOLV_ACTION_ENUM action) const;

    /// The text in the status bar; empty for one row.
    const char* get_statustip(TOLV_ACTION_ENUM action) const;

    /// The key of a row that has one of its own, as portable text; empty for rows with a standard key or none.
    const char* get_custom_shortcut(TOLV_ACTION_ENUM action) const;

    /// The tool tip of the row that has a particular one, TOLV_NORVANE_HELP_ACTION.
    const char* get_tooltip(TOLV_ACTION_ENUM action) const;

    /// The Tcl function behind the command. No row has one.
    const char* get_tcl_function(TOLV_ACTION_ENUM action) const;

private:
    TOLV_ACTION_TRANSLATOR() = default;

    static const char* const m_action_menu_text_table[TOLV_ACTION_COUNT + 1];
    static const char* const m_action_statustip_table[TOLV_ACTION_COUNT + 1];
    static const char* const m_action_custom_shortcut_table[TOLV_ACTION_COUNT + 1];
    static const char* const m_action_tcl_function_table[TOLV_ACTION_COUNT + 1];
    static const char* const m_action_tooltip_table[TOLV_ACTION_COUNT + 1];
};

/// The members of TOLV_ACTION_TRANSLATOR as free functions.
TOLV_EXPORT const char* tolv_get_menu_text(TOLV_ACTION_ENUM action);
TOLV_EXPORT const char* tolv_get_statustip(TOLV_ACTION_ENUM action);
TOLV_EXPORT const char* tolv_get_custom_shortcut(TOLV_ACTION_ENUM action);
TOLV_EXPORT const char* tolv_get_tooltip(TOLV_ACTION_ENUM action);
TOLV_EXPORT const char* tolv_get_tcl_function(TOLV_ACTION_ENUM action);

// ---- Names ----------------------------------------------------------------------------------------------------------

/// The enumerator's name, "TOLV_COPY_ACTION"; empty for a value that is no command's.
TOLV_EXPORT QString tolv_get_action_enum_string(TOLV_ACTION_ENUM action);

/// The command with this very name, letter case included; TOLV_ACTION_NONE where there is none.
TOLV_EXPORT TOLV_ACTION_ENUM tolv_get_action_enum(const QString& name);

// ---- Texts by name --------------------------------------------------------------------------------------------------

/// The texts of each row as constants: `TOLV_ACTION_MENU_TEXT_<NAME>`, `TOLV_ACTION_STATUSTIP_<NAME>`, and
/// `TOLV_ACTION_CUSTOM_SHORTCUT_<NAME>` for the rows with a key of their own.
#define TOLV_ACTION_SHORTCUT_NO_KEY(name)
#define TOLV_ACTION_SHORTCUT_STANDARD_KEY(name)
#define TOLV_ACTION_SHORTCUT_CUSTOM_KEY(name) extern TOLV_EXPORT const char* const TOLV_ACTION_CUSTOM_SHORTCUT_##name;
#define TOLV_ACTION_ROW(name, menu_text, statustip, key_kind, key, icon, check, menu)                                  \
    extern TOLV_EXPORT const char* const TOLV_ACTION_MENU_TEXT_##name;                                                 \
    extern TOLV_EXPORT const char* const TOLV_ACTION_STATUSTIP_##name;                                                 \
    TOLV_ACTION_SHORTCUT_##key_kind(name)
#include "tolv_action_table.def"
#undef TOLV_ACTION_ROW
#undef TOLV_ACTION_SHORTCUT_CUSTOM_KEY
#undef TOLV_ACTION_SHORTCUT_STANDARD_KEY
#undef TOLV_ACTION_SHORTCUT_NO_KEY
