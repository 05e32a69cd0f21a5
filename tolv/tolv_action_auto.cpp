#include "tolv_action_auto.h"

#include "tolv_check.h"
#include "tolv_mem.h"

#include <QLatin1String>
#include <QMap>

#include <string_view>

TOLV_MEM_INITIALIZER();

// ---- Texts by name --------------------------------------------------------------------------------------------------

#define TOLV_ACTION_SHORTCUT_NO_KEY(name, key)
#define TOLV_ACTION_SHORTCUT_STANDARD_KEY(name, key)
#define TOLV_ACTION_SHORTCUT_CUSTOM_KEY(name, key) const char* const TOLV_ACTION_CUSTOM_SHORTCUT_##name = key;
#define TOLV_ACTION_ROW(name, menu_text, statustip, key_kind, key, icon, check, menu)                                  \
    const char* const TOLV_ACTION_MENU_TEXT_##name = menu_text;                                                        \
    const char* const TOLV_ACTION_STATUSTIP_##name = statustip;                                                        \
    TOLV_ACTION_SHORTCUT_##key_kind(name, key)
#include "tolv_action_table.def"
#undef TOLV_ACTION_ROW
#undef TOLV_ACTION_SHORTCUT_CUSTOM_KEY
#undef TOLV_ACTION_SHORTCUT_STANDARD_KEY
#undef TOLV_ACTION_SHORTCUT_NO_KEY

// ---- Tables ---------------------------------------------------------------------------------------------------------

const char* const TOLV_ACTION_TRANSLATOR::m_action_menu_text_table[] = {
    "",
#define TOLV_ACTION_ROW(name, menu_text, statustip, key_kind, key, icon, check, menu) menu_text,
#include "tolv_action_table.def"
#undef TOLV_ACTION_ROW
};

const char* const TOLV_ACTION_TRANSLATOR::m_action_statustip_table[] = {
    "",
#define TOLV_ACTION_ROW(name, menu_text, statustip, key_kind, key, icon, check, menu) statustip,
#include "tolv_action_table.def"
#undef TOLV_ACTION_ROW
};

#define TOLV_ACTION_SHORTCUT_NO_KEY(key) ""
#define TOLV_ACTION_SHORTCUT_STANDARD_KEY(key) ""
#define TOLV_ACTION_SHORTCUT_CUSTOM_KEY(key) key
const char* const TOLV_ACTION_TRANSLATOR::m_action_custom_shortcut_table[] = {
    "",
#define TOLV_ACTION_ROW(name, menu_text, statustip, key_kind, key, icon, check, menu)                                  \
    TOLV_ACTION_SHORTCUT_##key_kind(key),
#include "tolv_action_table.def"
#undef TOLV_ACTION_ROW
};
#undef TOLV_ACTION_SHORTCUT_CUSTOM_KEY
#undef TOLV_ACTION_SHORTCUT_STANDARD_KEY
#undef TOLV_ACTION_SHORTCUT_NO_KEY

const char* const TOLV_ACTION_TRANSLATOR::m_action_tcl_function_table[] = {
    "",
#define TOLV_ACTION_ROW(name, menu_text, statustip, key_kind, key, icon, check, menu) "",
#include "tolv_action_table.def"
#undef TOLV_ACTION_ROW
};

namespace
{
/// One row has a tool tip of its own; those with a key get one made of the menu text and the key.
constexpr const char* get_tooltip_of_row(TOLV_ACTION_ENUM action)
{
    return action == TOLV_NORVANE_HELP_ACTION ? "Help Topics" : "";
}
} // namespace

const char* const TOLV_ACTION_TRANSLATOR::m_action_tooltip_table[] = {
    "",
#define TOLV_ACTION_ROW(name, menu_text, statustip, key_kind, key, icon, check, menu)                                  \
    get_tooltip_of_row(TOLV_##name##_ACTION),
#include "tolv_action_table.def"
#undef TOLV_ACTION_ROW
};

namespace
{
constexpr QLatin1String NAMES[] = {
    QLatin1String("", 0),
#define TOLV_ACTION_ROW(name, menu_text, statustip, key_kind, key, icon, check, menu)                                  \
    QLatin1String("TOLV_" #name "_ACTION", sizeof("TOLV_" #name "_ACTION") - 1),
#include "tolv_action_table.def"
#undef TOLV_ACTION_ROW
};

// ---- What must hold of the table ------------------------------------------------------------------------------------

enum class KEY_KIND
{
    NO_KEY,
    CUSTOM_KEY,
    STANDARD_KEY
};

enum class CHECK
{
    PLAIN,
    CHECKABLE
};

struct ACTION_ROW
{
    std::string_view statustip;
    std::string_view icon;
    KEY_KIND key_kind;
    CHECK check;
};

constexpr ACTION_ROW ROWS[] = {
#define TOLV_ACTION_ROW(name, menu_text, statustip, key_kind, key, icon, check, menu)                                  \
    {statustip, #icon, KEY_KIND::key_kind, CHECK::check},
#include "tolv_action_table.def"
#undef TOLV_ACTION_ROW
};

template <typename PREDICATE>
constexpr int count_rows(PREDICATE predicate)
{
    int count = 0;
    for (const ACTION_ROW& row : ROWS)
        count += predicate(row) ? 1 : 0;
    return count;
}

constexpr bool are_names_in_order()
{
    std::string_view last;
    for (int action = 1; action <= TOLV_ACTION_COUNT; ++action)
    {
        const std::string_view name(NAMES[action].data(), static_cast<std::size_t>(NAMES[action].size()));
        if (action == TOLV_NORVANE_HELP_ACTION)
            continue;
        if (name <= last)
            return false;
        last = name;
    }
    return true;
}

static_assert(are_names_in_order());
static_assert(count_rows([](const ACTION_ROW& row) { return row.key_kind == KEY_KIND::CUSTOM_KEY; }) == 88);
static_assert(count_rows([](const ACTION_ROW& row) { return row.key_kind == KEY_KIND::STANDARD_KEY; }) == 16);
static_assert(count_rows([](const ACTION_ROW& row) { return row.icon != "TOLV_ICON_NONE"; }) == 350);
static_assert(count_rows([](const ACTION_ROW& row) { return row.check == CHECK::CHECKABLE; }) == 140);
static_assert(count_rows([](const ACTION_ROW& row) { return row.statustip.empty(); }) == 1);

// The values that hosts and stored data rely on.
static_assert(TOLV_ABOUT_NORVANE_ACTION == 1);
static_assert(TOLV_AREA_SELECTION_TOOL_ACTION == 30);
static_assert(TOLV_CASCADE_ACTION == 51);
static_assert(TOLV_CLOSE_ACTION == 65);
static_assert(TOLV_CLOSE_ALL_ACTION == 66);
static_assert(TOLV_COPY_ACTION == 77);
static_assert(TOLV_CUSTOMIZE_ACTION == 115);
static_assert(TOLV_CUT_ACTION == 118);
static_assert(TOLV_DELETE_ACTION == 127);
static_assert(TOLV_DETAILED_TOOLTIPS_ACTION == 136);
static_assert(TOLV_EXIT_ACTION == 158);
static_assert(TOLV_FIND_ACTION == 185);
static_assert(TOLV_FIND_NEXT_ACTION == 186);
static_assert(TOLV_FIND_PREVIOUS_ACTION == 187);
static_assert(TOLV_FULLSCREEN_ACTION == 191);
static_assert(TOLV_GOTO_ACTION == 224);
static_assert(TOLV_HELP_ACTION == 242);
static_assert(TOLV_MAGNIFYING_TOOL_ACTION == 309);
static_assert(TOLV_MORE_WINDOWS_ACTION == 317);
static_assert(TOLV_NEW_ACTION == 323);
static_assert(TOLV_OPEN_ACTION == 410);
static_assert(TOLV_OPTIONS_ACTION == 414);
static_assert(TOLV_PAGE_SETUP_ACTION == 418);
static_assert(TOLV_PAN_TOOL_ACTION == 419);
static_assert(TOLV_PASTE_ACTION == 420);
static_assert(TOLV_PRINT_ACTION == 444);
static_assert(TOLV_PRINT_PREVIEW_ACTION == 447);
static_assert(TOLV_NORVANE_HELP_ACTION == 469);
static_assert(TOLV_REDO_ACTION == 479);
static_assert(TOLV_REFRESH_ACTION == 482);
static_assert(TOLV_REPLACE_ACTION == 495);
static_assert(TOLV_SAVE_ACTION == 526);
static_assert(TOLV_SAVE_ALL_ACTION == 527);
static_assert(TOLV_SAVE_AS_ACTION == 528);
static_assert(TOLV_SELECTION_TOOL_ACTION == 538);
static_assert(TOLV_SELECT_ALL_ACTION == 539);
static_assert(TOLV_SETTINGS_ACTION == 547);
static_assert(TOLV_SPLIT_WINDOW_ACTION == 653);
static_assert(TOLV_TILE_ACTION == 721);
static_assert(TOLV_UNDO_ACTION == 731);
static_assert(TOLV_ZOOM_ACTION == 765);
static_assert(TOLV_ZOOM_FIT_ACTION == 766);
static_assert(TOLV_ZOOM_IN_ACTION == 767);
static_assert(TOLV_ZOOM_OUT_ACTION == 768);
static_assert(TOLV_ZOOM_SELECTION_ACTION == 769);
static_assert(TOLV_ZOOM_TOOL_ACTION == 770);
} // namespace

// ---- Look-ups -------------------------------------------------------------------------------------------------------

namespace
{
bool is_action(TOLV_ACTION_ENUM action)
{
    return action > TOLV_ACTION_NONE && action < TOLV_ACTION_END;
}

const char* get_entry(const char* const* table, TOLV_ACTION_ENUM action)
{
    const bool is_legal = is_action(action);
    TOLV_CHECK_TEXT(is_legal, "The calling function has passed an illegal TOLV_ACTION_ENUM");
    return table[is_legal ? action : TOLV_ACTION_NONE];
}
} // namespace

const TOLV_ACTION_TRANSLATOR& TOLV_ACTION_TRANSLATOR::get_instance()
{
    static const TOLV_ACTION_TRANSLATOR instance;
    return instance;
}

const char* TOLV_ACTION_TRANSLATOR::get_menu_text(TOLV_ACTION_ENUM action) const
{
    return get_entry(m_action_menu_text_table, action);
}

const char* TOLV_ACTION_TRANSLATOR::get_statustip(TOLV_ACTION_ENUM action) const
{
    return get_entry(m_action_statustip_table, action);
}

const char* TOLV_ACTION_TRANSLATOR::get_custom_shortcut(TOLV_ACTION_ENUM action) const
{
    return get_entry(m_action_custom_shortcut_table, action);
}

const char* TOLV_ACTION_TRANSLATOR::get_tooltip(TOLV_ACTION_ENUM action) const
{
    return get_entry(m_action_tooltip_table, action);
}

const char* TOLV_ACTION_TRANSLATOR::get_tcl_function(TOLV_ACTION_ENUM action) const
{
    return get_entry(m_action_tcl_function_table, action);
}

const char* tolv_get_menu_text(TOLV_ACTION_ENUM action)
{
    return TOLV_ACTION_TRANSLATOR::get_instance().get_menu_text(action);
}

const char* tolv_get_statustip(TOLV_ACTION_ENUM action)
{
    return TOLV_ACTION_TRANSLATOR::get_instance().get_statustip(action);
}

const char* tolv_get_custom_shortcut(TOLV_ACTION_ENUM action)
{
    return TOLV_ACTION_TRANSLATOR::get_instance().get_custom_shortcut(action);
}

const char* tolv_get_tooltip(TOLV_ACTION_ENUM action)
{
    return TOLV_ACTION_TRANSLATOR::get_instance().get_tooltip(action);
}

const char* tolv_get_tcl_function(TOLV_ACTION_ENUM action)
{
    return TOLV_ACTION_TRANSLATOR::get_instance().get_tcl_function(action);
}

// ---- Names ----------------------------------------------------------------------------------------------------------

QString tolv_get_action_enum_string(TOLV_ACTION_ENUM action)
{
    return is_action(action) ? QString(NAMES[action]) : QString();
}

TOLV_ACTION_ENUM tolv_get_action_enum(const QString& name)
{
    static QMap<QString, TOLV_ACTION_ENUM> actions;
    if (actions.isEmpty())
    {
        for (int action = 1; action <= TOLV_ACTION_COUNT; ++action)
            actions.insert(actions.cend(), NAMES[action], static_cast<TOLV_ACTION_ENUM>(action));
    }
    return actions.value(name, TOLV_ACTION_NONE);
}
