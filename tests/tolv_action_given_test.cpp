// The commands whose rows are fixed to the letter: hosts, scripts and stored layouts rely on them.

#include "gui_test.h"
#include "tolv_create_action.h"
#include "tolv_icon.h"

#include <QAction>
#include <QKeySequence>

#include <iterator>
#include <memory>

namespace
{
struct GIVEN_ROW
{
    TOLV_ACTION_ENUM action;
    int value;
    const char* name;
    const char* menu_text;
    const char* statustip;
    const char* custom_shortcut;            ///< empty for none
    QKeySequence::StandardKey standard_key; ///< QKeySequence::UnknownKey for none
    TOLV_ICON_ENUM icon;                    ///< TOLV_ICON_NONE for none
    bool is_checkable;
};

const GIVEN_ROW GIVEN_ROWS[] = {
    {TOLV_ABOUT_NORVANE_ACTION, 1, "TOLV_ABOUT_NORVANE_ACTION", "&About Norvane",
     "Displays program information, version number, and copyright", "", QKeySequence::UnknownKey, TOLV_ICON_NONE,
     false},
    {TOLV_NEW_ACTION, 323, "TOLV_NEW_ACTION", "&New...", "Creates a new file", "", QKeySequence::New, TOLV_NEW_ICON,
     false},
    {TOLV_OPEN_ACTION, 410, "TOLV_OPEN_ACTION", "&Open...", "Opens an existing file", "", QKeySequence::Open,
     TOLV_OPEN_ICON, false},
    {TOLV_CLOSE_ACTION, 65, "TOLV_CLOSE_ACTION", "&Close", "Closes the current file", "Ctrl+F4",
     QKeySequence::UnknownKey, TOLV_ICON_NONE, false},
    {TOLV_CLOSE_ALL_ACTION, 66, "TOLV_CLOSE_ALL_ACTION", "Close Al&l", "Closes all open windows", "",
     QKeySequence::UnknownKey, TOLV_ICON_NONE, false},
    {TOLV_SAVE_ACTION, 526, "TOLV_SAVE_ACTION", "&Save", "Saves the current file", "", QKeySequence::Save,
     TOLV_SAVE_ICON, false},
    {TOLV_SAVE_AS_ACTION, 528, "TOLV_SAVE_AS_ACTION", "Save &As...", "Saves the current file with a new name", "",
     QKeySequence::UnknownKey, TOLV_ICON_NONE, false},
    {TOLV_SAVE_ALL_ACTION, 527, "TOLV_SAVE_ALL_ACTION", "Save All", "Saves all open files", "Ctrl+Shift+S",
     QKeySequence::UnknownKey, TOLV_SAVE_ALL_ICON, false},
    {TOLV_PAGE_SETUP_ACTION, 418, "TOLV_PAGE_SETUP_ACTION", "Page Set&up...",
     "Sets margins, page orientation, and other layout options", "", QKeySequence::UnknownKey, TOLV_PAGE_SETUP_ICON,
     false},
    {TOLV_PRINT_ACTION, 444, "TOLV_PRINT_ACTION", "&Print...", "Prints the current file", "", QKeySequence::Print,
     TOLV_PRINT_ICON, false},
    {TOLV_PRINT_PREVIEW_ACTION, 447, "TOLV_PRINT_PREVIEW_ACTION", "Print Pre&view",
     "Shows how a file will look when it is printed", "", QKeySequence::UnknownKey, TOLV_PRINT_PREVIEW_ICON, false},
    {TOLV_EXIT_ACTION, 158, "TOLV_EXIT_ACTION", "E&xit", "Exits after prompting you to save any unsaved files",
     "Alt+F4", QKeySequence::UnknownKey, TOLV_ICON_NONE, false},
    {TOLV_UNDO_ACTION, 731, "TOLV_UNDO_ACTION", "&Undo", "Reverses the last action", "", QKeySequence::Undo,
     TOLV_UNDO_ICON, false},
    {TOLV_REDO_ACTION, 479, "TOLV_REDO_ACTION", "&Redo", "Reverses the last Undo", "", QKeySequence::Redo,
     TOLV_REDO_ICON, false},
    {TOLV_CUT_ACTION, 118, "TOLV_CUT_ACTION", "Cu&t", "Cuts the selection and puts it on the Clipboard", "",
     QKeySequence::Cut, TOLV_CUT_ICON, false},
    {TOLV_COPY_ACTION, 77, "TOLV_COPY_ACTION", "&Copy", "Copies the selection to the Clipboard", "", QKeySequence::Copy,
     TOLV_COPY_ICON, false},
    {TOLV_PASTE_ACTION, 420, "TOLV_PASTE_ACTION", "&Paste", "Inserts the contents of the Clipboard", "",
     QKeySequence::Paste, TOLV_PASTE_ICON, false},
    {TOLV_DELETE_ACTION, 127, "TOLV_DELETE_ACTION", "&Delete", "Deletes the selection", "", QKeySequence::Delete,
     TOLV_DELETE_ICON, false},
    {TOLV_SELECT_ALL_ACTION, 539, "TOLV_SELECT_ALL_ACTION", "Select &All", "Selects everything in the file", "",
     QKeySequence::SelectAll, TOLV_ICON_NONE, false},
    {TOLV_FIND_ACTION, 185, "TOLV_FIND_ACTION", "&Find...", "Searches for specified text", "", QKeySequence::Find,
     TOLV_FIND_ICON, false},
    {TOLV_FIND_NEXT_ACTION, 186, "TOLV_FIND_NEXT_ACTION", "Find Ne&xt",
     "Searches for the next occurrence of the specified text", "F3", QKeySequence::UnknownKey, TOLV_FIND_NEXT_ICON,
     false},
    {TOLV_FIND_PREVIOUS_ACTION, 187, "TOLV_FIND_PREVIOUS_ACTION", "Find P&revious",
     "Searches for the previous occurrence of the specified text", "Shift+F3", QKeySequence::UnknownKey,
     TOLV_FIND_PREVIOUS_ICON, false},
    {TOLV_REPLACE_ACTION, 495, "TOLV_REPLACE_ACTION", "R&eplace...", "Replaces specified text with new text", "Ctrl+H",
     QKeySequence::UnknownKey, TOLV_REPLACE_ICON, false},
    {TOLV_GOTO_ACTION, 224, "TOLV_GOTO_ACTION", "&Go To...", "Moves to a specified location in the file", "Ctrl+G",
     QKeySequence::UnknownKey, TOLV_GOTO_ICON, false},
    {TOLV_REFRESH_ACTION, 482, "TOLV_REFRESH_ACTION", "&Refresh", "Refreshes the current view", "",
     QKeySequence::UnknownKey, TOLV_REFRESH_ICON, false},
    {TOLV_CUSTOMIZE_ACTION, 115, "TOLV_CUSTOMIZE_ACTION", "Customi&ze...", "Customizes the user interface", "",
     QKeySequence::UnknownKey, TOLV_CUSTOMIZE_TOOLBAR_ICON, false},
    {TOLV_OPTIONS_ACTION, 414, "TOLV_OPTIONS_ACTION", "&Options...", "Changes user preferences and options", "",
     QKeySequence::UnknownKey, TOLV_ICON_NONE, false},
    {TOLV_SETTINGS_ACTION, 547, "TOLV_SETTINGS_ACTION", "&Settings...", "Change the Settings", "Ctrl+Shift+E",
     QKeySequence::UnknownKey, TOLV_SETTINGS_ICON, false},
    {TOLV_FULLSCREEN_ACTION, 191, "TOLV_FULLSCREEN_ACTION", "F&ull Screen", "Turns Full Screen mode on and off",
     "Ctrl+Alt+Space", QKeySequence::UnknownKey, TOLV_FULLSCREEN_ICON, true},
    {TOLV_CASCADE_ACTION, 51, "TOLV_CASCADE_ACTION", "&Cascade", "Arranges all the child windows in a cascade pattern",
     "Shift+F5", QKeySequence::UnknownKey, TOLV_ICON_NONE, false},
    {TOLV_TILE_ACTION, 721, "TOLV_TILE_ACTION", "&Tile", "Arranges all child windows in a tile pattern", "Shift+F4",
     QKeySequence::UnknownKey, TOLV_ICON_NONE, false},
    {TOLV_MORE_WINDOWS_ACTION, 317, "TOLV_MORE_WINDOWS_ACTION", "&More Windows...", "Activate this window", "",
     QKeySequence::UnknownKey, TOLV_ICON_NONE, false},
    {TOLV_SPLIT_WINDOW_ACTION, 653, "TOLV_SPLIT_WINDOW_ACTION", "Split &Window", "Splits schematic view into two", "",
     QKeySequence::UnknownKey, TOLV_ICON_NONE, true},
    {TOLV_NORVANE_HELP_ACTION, 469, "TOLV_NORVANE_HELP_ACTION", "&Help Topics", "Displays program help topics", "",
     QKeySequence::UnknownKey, TOLV_HELP_ICON, false},
    {TOLV_HELP_ACTION, 242, "TOLV_HELP_ACTION", "&Help", "Display help for the currently selected message", "",
     QKeySequence::HelpContents, TOLV_ICON_NONE, false},
    {TOLV_ZOOM_ACTION, 765, "TOLV_ZOOM_ACTION", "&Zoom...", "Control how large the file contents appear on screen", "",
     QKeySequence::UnknownKey, TOLV_ZOOM_ICON, false},
    {TOLV_ZOOM_FIT_ACTION, 766, "TOLV_ZOOM_FIT_ACTION", "&Fit in Window",
     "Changes the display scale to fit the entire view into the current window", "Ctrl+Alt+W", QKeySequence::UnknownKey,
     TOLV_ZOOM_FIT_ICON, false},
    {TOLV_ZOOM_IN_ACTION, 767, "TOLV_ZOOM_IN_ACTION", "Zoom &In", "Zooms in to increase the scale of objects displayed",
     "Ctrl+Space", QKeySequence::UnknownKey, TOLV_ZOOM_IN_ICON, false},
    {TOLV_ZOOM_OUT_ACTION, 768, "TOLV_ZOOM_OUT_ACTION", "Zoom &Out",
     "Zooms out to decrease the scale of objects displayed", "Ctrl+Shift+Space", QKeySequence::UnknownKey,
     TOLV_ZOOM_OUT_ICON, false},
    {TOLV_ZOOM_SELECTION_ACTION, 769, "TOLV_ZOOM_SELECTION_ACTION", "Fit Selection in Window",
     "Changes the display scale to fit the selection into the current window", "Ctrl+Shift+W", QKeySequence::UnknownKey,
     TOLV_ZOOM_SELECTION_ICON, false},
    {TOLV_ZOOM_TOOL_ACTION, 770, "TOLV_ZOOM_TOOL_ACTION", "Zoom Tool", "Zooms in and out. Hold Shift to zoom out.", "",
     QKeySequence::UnknownKey, TOLV_ZOOM_TOOL_ICON, true},
    {TOLV_SELECTION_TOOL_ACTION, 538, "TOLV_SELECTION_TOOL_ACTION", "Selection Tool", "Selects objects and text", "",
     QKeySequence::UnknownKey, TOLV_SELECTION_TOOL_ICON, true},
    {TOLV_PAN_TOOL_ACTION, 419, "TOLV_PAN_TOOL_ACTION", "Hand Tool",
     "Grab the document to pan side to side or up and down", "", QKeySequence::UnknownKey, TOLV_PAN_TOOL_ICON, true},
    {TOLV_MAGNIFYING_TOOL_ACTION, 309, "TOLV_MAGNIFYING_TOOL_ACTION", "Magnifying Glass Tool",
     "Click to magnify area under the pointer", "", QKeySequence::UnknownKey, TOLV_MAGNIFYING_TOOL_ICON, true},
    {TOLV_AREA_SELECTION_TOOL_ACTION, 30, "TOLV_AREA_SELECTION_TOOL_ACTION", "Area Selection Tool",
     "Selects multiple objects in an area", "", QKeySequence::UnknownKey, TOLV_AREA_SELECTION_TOOL_ICON, true},
    {TOLV_DETAILED_TOOLTIPS_ACTION, 136, "TOLV_DETAILED_TOOLTIPS_ACTION", "&Detailed Tooltip",
     "Enables additional detail in tooltips", "", QKeySequence::UnknownKey, TOLV_DETAILED_TOOLTIP_ICON, true},
};

class TOLV_ACTION_GIVEN_TEST : public TOLV_GUI_TEST
{
};
} // namespace

TEST_F(TOLV_ACTION_GIVEN_TEST, the_rows_have_their_values_and_names)
{
    for (const GIVEN_ROW& row : GIVEN_ROWS)
    {
        EXPECT_EQ(row.value, row.action) << row.name;
        EXPECT_EQ(QLatin1String(row.name), tolv_get_action_enum_string(row.action));
        EXPECT_EQ(row.action, tolv_get_action_enum(QLatin1String(row.name))) << row.name;
    }
}

TEST_F(TOLV_ACTION_GIVEN_TEST, the_rows_have_their_texts)
{
    for (const GIVEN_ROW& row : GIVEN_ROWS)
    {
        SCOPED_TRACE(row.name);
        EXPECT_STREQ(row.menu_text, tolv_get_menu_text(row.action));
        EXPECT_STREQ(row.statustip, tolv_get_statustip(row.action));
        EXPECT_STREQ(row.custom_shortcut, tolv_get_custom_shortcut(row.action));
    }
}

TEST_F(TOLV_ACTION_GIVEN_TEST, the_actions_are_what_the_rows_say)
{
    for (const GIVEN_ROW& row : GIVEN_ROWS)
    {
        SCOPED_TRACE(row.name);
        const std::unique_ptr<QAction> action(tolv_create_action(row.action, nullptr));
        EXPECT_EQ(QLatin1String(row.menu_text), action->text());
        EXPECT_EQ(QLatin1String(row.statustip), action->statusTip());
        EXPECT_EQ(row.is_checkable, action->isCheckable());
        const QKeySequence key = row.standard_key != QKeySequence::UnknownKey
                                     ? QKeySequence(row.standard_key)
                                     : QKeySequence(QLatin1String(row.custom_shortcut));
        EXPECT_EQ(key, action->shortcut());
        const QIcon icon = row.icon != TOLV_ICON_NONE ? tolv_get_icon(row.icon) : QIcon();
        EXPECT_EQ(icon.cacheKey(), action->icon().cacheKey());
        EXPECT_EQ(icon.isNull(), action->icon().isNull());
    }
}

// What the list above has, so that no row of it gets lost.
TEST_F(TOLV_ACTION_GIVEN_TEST, there_are_46_such_rows)
{
    int shortcut_count = 0;
    int icon_count = 0;
    int check_count = 0;
    for (const GIVEN_ROW& row : GIVEN_ROWS)
    {
        shortcut_count += *row.custom_shortcut != '\0' || row.standard_key != QKeySequence::UnknownKey ? 1 : 0;
        icon_count += row.icon != TOLV_ICON_NONE ? 1 : 0;
        check_count += row.is_checkable ? 1 : 0;
    }
    EXPECT_EQ(46U, std::size(GIVEN_ROWS));
    EXPECT_EQ(28, shortcut_count);
    EXPECT_EQ(34, icon_count);
    EXPECT_EQ(8, check_count);
}
