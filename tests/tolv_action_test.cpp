#include "gui_test.h"
#include "internal_error_trap.h"
#include "tolv_action_auto.h"
#include "tolv_global.h"

#include <limits>
#include <type_traits>

namespace
{
class TOLV_ACTION_TEST : public TOLV_TEST
{
};

const char* const ILLEGAL_ACTION = "The calling function has passed an illegal TOLV_ACTION_ENUM";

TOLV_ACTION_ENUM to_action(int value)
{
    return static_cast<TOLV_ACTION_ENUM>(value);
}

template <typename FUNCTION>
void for_each_action(FUNCTION function)
{
    for (int value = 1; value <= TOLV_ACTION_COUNT; ++value)
    {
        SCOPED_TRACE(qPrintable(tolv_get_action_enum_string(to_action(value))));
        function(to_action(value));
    }
}

template <typename LOOK_UP>
int count_texts(LOOK_UP look_up)
{
    int count = 0;
    for_each_action([&](TOLV_ACTION_ENUM action) { count += *look_up(action) != '\0' ? 1 : 0; });
    return count;
}
} // namespace

// ---- Look-ups -------------------------------------------------------------------------------------------------------

TEST_F(TOLV_ACTION_TEST, the_commands_run_from_1_to_770)
{
    EXPECT_EQ(0, TOLV_ACTION_NONE);
    EXPECT_EQ(1, TOLV_ABOUT_NORVANE_ACTION);
    EXPECT_EQ(770, TOLV_ZOOM_TOOL_ACTION);
    EXPECT_EQ(770, TOLV_ACTION_COUNT);
}

TEST_F(TOLV_ACTION_TEST, there_is_one_translator)
{
    EXPECT_EQ(&TOLV_ACTION_TRANSLATOR::get_instance(), &TOLV_ACTION_TRANSLATOR::get_instance());
    EXPECT_TRUE(std::is_empty_v<TOLV_ACTION_TRANSLATOR>);
    EXPECT_FALSE(std::is_copy_constructible_v<TOLV_ACTION_TRANSLATOR>);
}

TEST_F(TOLV_ACTION_TEST, each_row_has_the_texts_that_the_table_of_its_kind_has)
{
    EXPECT_EQ(770, count_texts(tolv_get_menu_text));
    EXPECT_EQ(769, count_texts(tolv_get_statustip));
    EXPECT_EQ(88, count_texts(tolv_get_custom_shortcut));
    EXPECT_EQ(1, count_texts(tolv_get_tooltip));
    EXPECT_EQ(0, count_texts(tolv_get_tcl_function));
}

TEST_F(TOLV_ACTION_TEST, an_absent_datum_is_an_empty_text_and_no_null_pointer)
{
    EXPECT_STREQ("", tolv_get_statustip(TOLV_NO_RECENT_FILES_ACTION));
    EXPECT_STREQ("", tolv_get_custom_shortcut(TOLV_ABOUT_NORVANE_ACTION));
    EXPECT_STREQ("", tolv_get_custom_shortcut(TOLV_COPY_ACTION)); // its key is a standard one
    EXPECT_STREQ("", tolv_get_tooltip(TOLV_COPY_ACTION));
    EXPECT_STREQ("", tolv_get_tcl_function(TOLV_COPY_ACTION));
}

TEST_F(TOLV_ACTION_TEST, only_the_help_topics_have_a_tool_tip_of_their_own)
{
    EXPECT_STREQ("Help Topics", tolv_get_tooltip(TOLV_NORVANE_HELP_ACTION));
}

TEST_F(TOLV_ACTION_TEST, the_free_functions_give_the_translators_texts)
{
    const TOLV_ACTION_TRANSLATOR& translator = TOLV_ACTION_TRANSLATOR::get_instance();
    for_each_action(
        [&](TOLV_ACTION_ENUM action)
        {
            EXPECT_EQ(translator.get_menu_text(action), tolv_get_menu_text(action));
            EXPECT_EQ(translator.get_statustip(action), tolv_get_statustip(action));
            EXPECT_EQ(translator.get_custom_shortcut(action), tolv_get_custom_shortcut(action));
            EXPECT_EQ(translator.get_tooltip(action), tolv_get_tooltip(action));
            EXPECT_EQ(translator.get_tcl_function(action), tolv_get_tcl_function(action));
        });
}

TEST_F(TOLV_ACTION_TEST, a_look_up_of_no_command_is_an_internal_error)
{
    const TOLV_ACTION_TRANSLATOR& translator = TOLV_ACTION_TRANSLATOR::get_instance();
    for (const int value : {0, 771, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
    {
        SCOPED_TRACE(value);
        EXPECT_INTERNAL_ERROR(tolv_get_menu_text(to_action(value)), ILLEGAL_ACTION);
        EXPECT_INTERNAL_ERROR(tolv_get_statustip(to_action(value)), ILLEGAL_ACTION);
        EXPECT_INTERNAL_ERROR(tolv_get_custom_shortcut(to_action(value)), ILLEGAL_ACTION);
        EXPECT_INTERNAL_ERROR(tolv_get_tooltip(to_action(value)), ILLEGAL_ACTION);
        EXPECT_INTERNAL_ERROR(tolv_get_tcl_function(to_action(value)), ILLEGAL_ACTION);
        EXPECT_INTERNAL_ERROR(translator.get_menu_text(to_action(value)), ILLEGAL_ACTION);
        EXPECT_INTERNAL_ERROR(tolv_get_menu_text_without_symbol(to_action(value)), ILLEGAL_ACTION);
    }
}

TEST_F(TOLV_ACTION_TEST, the_internal_error_names_the_table_of_the_commands)
{
    const TRAPPED_INTERNAL_ERROR error = CATCH_INTERNAL_ERROR(tolv_get_menu_text(TOLV_ACTION_NONE));
    EXPECT_EQ("TOLV", error.tag);
    EXPECT_EQ("tolv_action_auto", error.file);
}

// ---- Texts by name --------------------------------------------------------------------------------------------------

TEST_F(TOLV_ACTION_TEST, each_row_has_its_texts_as_constants)
{
#define TOLV_ACTION_ROW(name, menu_text, statustip, key_kind, key, icon, check, menu)                                  \
    EXPECT_STREQ(tolv_get_menu_text(TOLV_##name##_ACTION), TOLV_ACTION_MENU_TEXT_##name);                              \
    EXPECT_STREQ(tolv_get_statustip(TOLV_##name##_ACTION), TOLV_ACTION_STATUSTIP_##name);
#include "tolv_action_table.def"
#undef TOLV_ACTION_ROW
}

TEST_F(TOLV_ACTION_TEST, each_row_with_a_key_of_its_own_has_it_as_a_constant)
{
    int count = 0;
#define EXPECT_NO_KEY(name)
#define EXPECT_STANDARD_KEY(name)
#define EXPECT_CUSTOM_KEY(name)                                                                                        \
    EXPECT_STREQ(tolv_get_custom_shortcut(TOLV_##name##_ACTION), TOLV_ACTION_CUSTOM_SHORTCUT_##name);                  \
    ++count;
#define TOLV_ACTION_ROW(name, menu_text, statustip, key_kind, key, icon, check, menu) EXPECT_##key_kind(name)
#include "tolv_action_table.def"
#undef TOLV_ACTION_ROW
#undef EXPECT_CUSTOM_KEY
#undef EXPECT_STANDARD_KEY
#undef EXPECT_NO_KEY
    EXPECT_EQ(88, count);
}

TEST_F(TOLV_ACTION_TEST, the_constants_have_plain_names)
{
    EXPECT_STREQ("&New...", TOLV_ACTION_MENU_TEXT_NEW);
    EXPECT_STREQ("Creates a new file", TOLV_ACTION_STATUSTIP_NEW);
    EXPECT_STREQ("Ctrl+F4", TOLV_ACTION_CUSTOM_SHORTCUT_CLOSE);
}

// ---- Names ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_ACTION_TEST, a_name_leads_back_to_its_command)
{
    for_each_action([](TOLV_ACTION_ENUM action)
                    { EXPECT_EQ(action, tolv_get_action_enum(tolv_get_action_enum_string(action))); });
}

TEST_F(TOLV_ACTION_TEST, a_name_is_the_enumerators)
{
#define TOLV_ACTION_ROW(name, menu_text, statustip, key_kind, key, icon, check, menu)                                  \
    EXPECT_EQ(QStringLiteral("TOLV_" #name "_ACTION"), tolv_get_action_enum_string(TOLV_##name##_ACTION));
#include "tolv_action_table.def"
#undef TOLV_ACTION_ROW
}

TEST_F(TOLV_ACTION_TEST, the_names_are_alphabetical_but_for_the_help_topics)
{
    QString last;
    for_each_action(
        [&](TOLV_ACTION_ENUM action)
        {
            if (action == TOLV_NORVANE_HELP_ACTION)
                return;
            const QString name = tolv_get_action_enum_string(action);
            EXPECT_LT(last, name);
            last = name;
        });
    EXPECT_EQ(469, TOLV_NORVANE_HELP_ACTION);
}

TEST_F(TOLV_ACTION_TEST, no_command_has_no_name_and_no_report)
{
    for (const int value : {0, 771, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        EXPECT_EQ(QString(), tolv_get_action_enum_string(to_action(value))) << value;
}

TEST_F(TOLV_ACTION_TEST, an_unknown_name_is_no_command)
{
    for (const char* const name : {"", "TOLV_", "COPY", "TOLV_COPY", "tolv_copy_action", "TOLV_COPY_ACTION ",
                                   " TOLV_COPY_ACTION", "TOLV_NO_SUCH_ACTION", "TOLV_ACTION_NONE"})
        EXPECT_EQ(TOLV_ACTION_NONE, tolv_get_action_enum(QLatin1String(name))) << name;
    EXPECT_EQ(TOLV_ACTION_NONE, tolv_get_action_enum(QString()));
}

// ---- Plain texts ----------------------------------------------------------------------------------------------------

TEST_F(TOLV_ACTION_TEST, a_plain_text_has_no_mnemonic_and_no_dots)
{
    EXPECT_EQ(QStringLiteral("Save As"), tolv_get_menu_text_without_symbol(TOLV_SAVE_AS_ACTION));
    EXPECT_EQ(QStringLiteral("Close All"), tolv_get_menu_text_without_symbol(TOLV_CLOSE_ALL_ACTION));
    EXPECT_EQ(QStringLiteral("Zoom Tool"), tolv_get_menu_text_without_symbol(TOLV_ZOOM_TOOL_ACTION));
}

TEST_F(TOLV_ACTION_TEST, a_plain_text_keeps_an_ampersand_that_stands_for_itself)
{
    EXPECT_EQ(QStringLiteral("Start Analysis & Elaboration"),
              tolv_get_menu_text_without_symbol(TOLV_START_ANALYSIS_AND_ELABORATION_ACTION));
    EXPECT_EQ(QStringLiteral("Start Analysis & Synthesis"),
              tolv_get_menu_text_without_symbol(TOLV_START_ANALYSIS_AND_SYNTHESIS_ACTION));
}

TEST_F(TOLV_ACTION_TEST, no_plain_text_has_a_mark_left)
{
    for_each_action(
        [](TOLV_ACTION_ENUM action)
        {
            QString text = tolv_get_menu_text_without_symbol(action);
            EXPECT_FALSE(text.isEmpty());
            EXPECT_FALSE(text.contains(QLatin1String("...")));
            EXPECT_FALSE(text.remove(QLatin1String(" & ")).contains(QLatin1Char('&')));
        });
}
