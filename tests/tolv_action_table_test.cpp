// What makes the table fit for menus: words, marks, keys and icons that agree with each other.

#include "gui_test.h"
#include "tolv_action_auto.h"
#include "tolv_icon_enum.h"

#include <QKeySequence>
#include <QRegularExpression>

#include <map>
#include <set>
#include <vector>

namespace
{
class TOLV_ACTION_TABLE_TEST : public PLAIN_GUI_TEST
{
};

struct ACTION_ROW
{
    TOLV_ACTION_ENUM action;
    QString name;
    QString menu_text;
    QString statustip;
    QString key; ///< a custom key; empty for rows with a standard one
    TOLV_ICON_ENUM icon;
    QString menu;
};

/// A row as it is written; plain data, which compiles at once where 770 rows of strings take minutes.
struct WRITTEN_ROW
{
    TOLV_ACTION_ENUM action;
    const char* name;
    const char* menu_text;
    const char* statustip;
    const char* key;
    TOLV_ICON_ENUM icon;
    const char* menu;
};

#define KEY_OF_NO_KEY(key) ""
#define KEY_OF_CUSTOM_KEY(key) key
#define KEY_OF_STANDARD_KEY(key) ""
constexpr WRITTEN_ROW WRITTEN_ROWS[] = {
#define TOLV_ACTION_ROW(name, menu_text, statustip, key_kind, key, icon, check, menu)                                  \
    {TOLV_##name##_ACTION, #name, menu_text, statustip, KEY_OF_##key_kind(key), icon, menu},
#include "tolv_action_table.def"
#undef TOLV_ACTION_ROW
};
#undef KEY_OF_STANDARD_KEY
#undef KEY_OF_CUSTOM_KEY
#undef KEY_OF_NO_KEY

std::vector<ACTION_ROW> make_rows()
{
    std::vector<ACTION_ROW> rows;
    for (const WRITTEN_ROW& row : WRITTEN_ROWS)
        rows.push_back({row.action, row.name, row.menu_text, row.statustip, row.key, row.icon, row.menu});
    return rows;
}

/// The letter behind a single "&"; a null character where there is none.
QChar get_mnemonic(const ACTION_ROW& row)
{
    QString text = row.menu_text;
    text.remove(QLatin1String("&&"));
    const int mark = text.indexOf(QLatin1Char('&'));
    return mark >= 0 && mark + 1 < text.size() ? text.at(mark + 1).toUpper() : QChar();
}

/// The keys that Qt gives its standard commands, here and under X11 with any desktop.
std::set<QString> make_standard_keys()
{
    std::set<QString> keys;
    for (int key = QKeySequence::HelpContents; key <= QKeySequence::Cancel; ++key)
    {
        for (const QKeySequence& sequence : QKeySequence::keyBindings(static_cast<QKeySequence::StandardKey>(key)))
            keys.insert(sequence.toString(QKeySequence::PortableText));
    }
    // Under X11 alone, or with KDE or GNOME.
    for (const char* const key :
         {"Ctrl+,", "Ctrl+.", "Ctrl+D", "Ctrl+E", "Ctrl+F11", "Ctrl+K", "Ctrl+Q", "Ctrl+R", "Ctrl+Shift+A",
          "Ctrl+Shift+F", "Ctrl+Shift+Ins", "Ctrl+Shift+N", "Ctrl+Shift+S", "F14", "F16", "F18", "F20"})
        keys.insert(QLatin1String(key));
    return keys;
}
} // namespace

// ---- Texts ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_ACTION_TABLE_TEST, a_menu_text_has_at_most_one_mnemonic_and_it_marks_a_letter_or_digit)
{
    for (const ACTION_ROW& row : make_rows())
    {
        QString text = row.menu_text;
        text.remove(QLatin1String("&&"));
        EXPECT_LE(text.count(QLatin1Char('&')), 1) << qPrintable(row.name);
        if (text.contains(QLatin1Char('&')))
        {
            EXPECT_TRUE(get_mnemonic(row).isLetterOrNumber()) << qPrintable(row.name);
        }
    }
}

TEST_F(TOLV_ACTION_TABLE_TEST, the_texts_are_tidy_ascii)
{
    const QRegularExpression untidy(QStringLiteral("[^\\x20-\\x7E]|^ | $|  |\\.\\.\\.."));
    for (const ACTION_ROW& row : make_rows())
    {
        EXPECT_FALSE(row.menu_text.contains(untidy)) << qPrintable(row.name);
        EXPECT_FALSE(row.statustip.contains(untidy)) << qPrintable(row.name);
        EXPECT_FALSE(row.menu.isEmpty()) << qPrintable(row.name);
    }
}

// The few rows in another form are fixed to the letter.
TEST_F(TOLV_ACTION_TABLE_TEST, a_status_tip_says_in_one_sentence_what_the_command_does)
{
    const QRegularExpression sentence(QStringLiteral("^[A-Z][a-z]+s\\b.*[^.]$"));
    const std::set<TOLV_ACTION_ENUM> others = {TOLV_SETTINGS_ACTION,
                                               TOLV_MORE_WINDOWS_ACTION,
                                               TOLV_HELP_ACTION,
                                               TOLV_ZOOM_ACTION,
                                               TOLV_PAN_TOOL_ACTION,
                                               TOLV_ZOOM_TOOL_ACTION,
                                               TOLV_MAGNIFYING_TOOL_ACTION,
                                               TOLV_NO_RECENT_FILES_ACTION};
    for (const ACTION_ROW& row : make_rows())
        EXPECT_NE(others.count(row.action) != 0, sentence.match(row.statustip).hasMatch()) << qPrintable(row.name);
}

TEST_F(TOLV_ACTION_TABLE_TEST, no_two_commands_have_the_same_status_tip)
{
    std::map<QString, QString> names;
    for (const ACTION_ROW& row : make_rows())
        EXPECT_TRUE(names.emplace(row.statustip, row.name).second)
            << qPrintable(row.name) << " and " << qPrintable(names[row.statustip]);
}

TEST_F(TOLV_ACTION_TABLE_TEST, the_status_tip_is_missing_where_a_menu_only_says_that_it_is_empty)
{
    for (const ACTION_ROW& row : make_rows())
        EXPECT_EQ(row.action == TOLV_NO_RECENT_FILES_ACTION, row.statustip.isEmpty()) << qPrintable(row.name);
}

// ---- Menus ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_ACTION_TABLE_TEST, the_mnemonics_of_a_menu_are_distinct)
{
    std::map<std::pair<QString, QChar>, QString> names;
    for (const ACTION_ROW& row : make_rows())
    {
        const std::pair<QString, QChar> mnemonic(row.menu, get_mnemonic(row));
        if (!mnemonic.second.isNull())
        {
            EXPECT_TRUE(names.emplace(mnemonic, row.name).second)
                << qPrintable(row.menu) << ": " << qPrintable(row.name) << " and " << qPrintable(names[mnemonic]);
        }
    }
}

TEST_F(TOLV_ACTION_TABLE_TEST, the_texts_of_a_menu_are_distinct)
{
    std::map<std::pair<QString, QString>, QString> names;
    for (const ACTION_ROW& row : make_rows())
    {
        const std::pair<QString, QString> text(row.menu, QString(row.menu_text).remove(QLatin1Char('&')));
        EXPECT_TRUE(names.emplace(text, row.name).second)
            << qPrintable(row.menu) << ": " << qPrintable(row.name) << " and " << qPrintable(names[text]);
    }
}

TEST_F(TOLV_ACTION_TABLE_TEST, the_icons_of_a_menu_are_distinct)
{
    std::map<std::pair<QString, int>, QString> names;
    for (const ACTION_ROW& row : make_rows())
    {
        const std::pair<QString, int> icon(row.menu, row.icon);
        if (row.icon != TOLV_ICON_NONE)
        {
            EXPECT_TRUE(names.emplace(icon, row.name).second)
                << qPrintable(row.menu) << ": " << qPrintable(row.name) << " and " << qPrintable(names[icon]);
        }
    }
}

TEST_F(TOLV_ACTION_TABLE_TEST, no_menu_is_longer_than_a_user_can_survey)
{
    std::map<QString, int> counts;
    for (const ACTION_ROW& row : make_rows())
        EXPECT_LE(++counts[row.menu], 22) << qPrintable(row.menu);
}

TEST_F(TOLV_ACTION_TABLE_TEST, the_locate_menu_has_its_thirteen_commands)
{
    std::set<TOLV_ACTION_ENUM> actions;
    for (const ACTION_ROW& row : make_rows())
    {
        if (row.menu == QLatin1String("Locate"))
            actions.insert(row.action);
    }
    EXPECT_EQ((std::set<TOLV_ACTION_ENUM>{TOLV_LOCATE_IN_CONSTRAINT_TABLE_ACTION, TOLV_LOCATE_IN_PACKAGE_PLANNER_ACTION,
                                          TOLV_LOCATE_IN_FLOORPLAN_ACTION, TOLV_LOCATE_IN_PROPERTY_VIEW_ACTION,
                                          TOLV_LOCATE_IN_NETLIST_VIEW_ACTION, TOLV_LOCATE_IN_NETLIST_MAP_VIEW_ACTION,
                                          TOLV_LOCATE_IN_NETLIST_TIMING_VIEW_ACTION,
                                          TOLV_LOCATE_IN_NETLIST_SPEED_VIEW_ACTION, TOLV_LOCATE_IN_SOURCE_FILE_ACTION,
                                          TOLV_LOCATE_IN_WAVE_VIEW_ACTION, TOLV_LOCATE_IN_BLOCK_PLANNER_ACTION,
                                          TOLV_LOCATE_IN_STATE_VIEW_ACTION, TOLV_LOCATE_IN_NETLIST_ANALYSIS_ACTION}),
              actions);
}

// ---- Keys -----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_ACTION_TABLE_TEST, a_key_is_one_stroke_in_the_portable_form_that_qt_writes)
{
    for (const ACTION_ROW& row : make_rows())
    {
        if (row.key.isEmpty())
            continue;
        const QKeySequence sequence = QKeySequence::fromString(row.key, QKeySequence::PortableText);
        EXPECT_EQ(1, sequence.count()) << qPrintable(row.name);
        EXPECT_EQ(row.key, sequence.toString(QKeySequence::PortableText)) << qPrintable(row.name);
        EXPECT_EQ(sequence, QKeySequence(row.key)) << qPrintable(row.name); // the same key in native form
    }
}

// Any window may show any command, so that a key stands for one command in the whole suite.
TEST_F(TOLV_ACTION_TABLE_TEST, no_two_commands_have_the_same_key)
{
    std::map<QString, QString> names;
    for (const ACTION_ROW& row : make_rows())
    {
        if (!row.key.isEmpty())
        {
            EXPECT_TRUE(names.emplace(row.key, row.name).second)
                << qPrintable(row.key) << ": " << qPrintable(row.name) << " and " << qPrintable(names[row.key]);
        }
    }
    EXPECT_EQ(88U, names.size());
}

// What text fields, lists and desktops do with a key stays theirs, but for the rows whose key is fixed.
TEST_F(TOLV_ACTION_TABLE_TEST, no_key_is_a_standard_one)
{
    const std::set<QString> standard_keys = make_standard_keys();
    const std::set<TOLV_ACTION_ENUM> fixed = {TOLV_CLOSE_ACTION,   TOLV_FIND_NEXT_ACTION, TOLV_FIND_PREVIOUS_ACTION,
                                              TOLV_REPLACE_ACTION, TOLV_GOTO_ACTION,      TOLV_SAVE_ALL_ACTION};
    for (const ACTION_ROW& row : make_rows())
    {
        if (!row.key.isEmpty())
        {
            EXPECT_EQ(fixed.count(row.action), standard_keys.count(row.key))
                << qPrintable(row.name) << ": " << qPrintable(row.key);
        }
    }
}

TEST_F(TOLV_ACTION_TABLE_TEST, no_key_is_one_that_desktops_keep_for_themselves)
{
    const QRegularExpression desktop_key(QStringLiteral(
        "^(Alt\\+F\\d+|Alt\\+(Tab|Space|Esc)|Ctrl\\+Alt\\+(F\\d+|Left|Right|Up|Down|Del|Backspace|T|L|D)|"
        "Ctrl\\+Shift\\+U|Ctrl\\+\\.|Ctrl\\+;)$"));
    for (const ACTION_ROW& row : make_rows())
    {
        if (row.action != TOLV_EXIT_ACTION) // fixed
        {
            EXPECT_FALSE(row.key.contains(desktop_key)) << qPrintable(row.name) << ": " << qPrintable(row.key);
        }
    }
}

TEST_F(TOLV_ACTION_TABLE_TEST, no_key_is_one_that_opens_a_menu_or_types_a_character)
{
    const QRegularExpression menu_key(QStringLiteral("^(Alt\\+[A-Z]|F10|Shift\\+F10|(Shift\\+)?[^F+]|Space)$"));
    for (const ACTION_ROW& row : make_rows())
        EXPECT_FALSE(row.key.contains(menu_key)) << qPrintable(row.name) << ": " << qPrintable(row.key);
}
