#include "host_preferences_fixture.h"

#include "child_process.h"
#include "test_environment.h"
#include "tolv_font.h"
#include "tolv_pen.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QHeaderView>
#include <QMenu>
#include <QPlainTextEdit>
#include <QSpinBox>
#include <QTableView>
#include <QTextBlock>
#include <QTextLayout>

using host_preferences = PREFERENCES_TEST;

// ---- Opening --------------------------------------------------------------------------------------------------------

TEST_F(host_preferences, the_menu_and_the_shortcut_open_them_once)
{
    auto* const action = find_in<QAction>(m_window.get(), "preferences_action");
    EXPECT_FALSE(action->shortcut().isEmpty());
    GUI_DRIVER::key_click(m_window.get(), Qt::Key_Comma, Qt::ControlModifier);
    m_dialog = find_in<PREFERENCES_DIALOG>(m_window.get(), "preferences_dialog");
    ASSERT_FALSE(m_dialog.isNull());
    EXPECT_EQ(m_dialog, m_window->open_preferences());
    m_dialog->reject();
    GUI_DRIVER::process_posted();
    EXPECT_TRUE(m_dialog.isNull());
}

TEST_F(host_preferences, the_first_row_is_chosen_and_nothing_is_unsaved)
{
    open();
    EXPECT_EQ(TOLV_GENERAL_BACKGROUND_COLOR, m_page->get_resource());
    EXPECT_EQ("General: Background", find<QLabel>("row_title")->text());
    EXPECT_EQ("", get_state());
    EXPECT_FALSE(m_dialog->isWindowModified());
    EXPECT_FALSE(find_in<QPushButton>(m_dialog, "save_button")->isEnabled());
    press("cancel_button");
}

TEST_F(host_preferences, what_does_not_exist_cannot_be_selected)
{
    open();
    EXPECT_FALSE(m_dialog->select("TOLV_RED_COLOR")); // may not be changed
    EXPECT_FALSE(m_dialog->select("TOLV_TOOLTIP_FONT"));
    EXPECT_FALSE(m_dialog->select("TOLV_BLACK_PEN"));
    EXPECT_FALSE(m_dialog->select("TOLV_PGST_IDLE_FILL_COLOR"));
    EXPECT_FALSE(m_dialog->select(""));
    EXPECT_TRUE(m_dialog->select("lines"));
    EXPECT_TRUE(m_dialog->select("TOLV_GUI_FONT"));
    EXPECT_EQ(1, find_in<QTabWidget>(m_dialog, "preferences_tabs")->currentIndex());
    m_dialog->reject();
}

// ---- Colours --------------------------------------------------------------------------------------------------------

TEST_F(host_preferences, a_typed_colour_is_in_force_and_in_the_preview_at_once)
{
    open_at("TOLV_FLP_RAM_BLOCK_FILL_COLOR");
    const QColor before = get_color(TOLV_FLP_RAM_BLOCK_FILL_COLOR);
    const QColor after(0x12, 0xab, 0x34);
    EXPECT_GT(count_in_sample(TOLV_FLP_RAM_BLOCK_FILL_COLOR, before), 200);
    EXPECT_EQ(0, count_in_sample(TOLV_FLP_RAM_BLOCK_FILL_COLOR, after));
    type_color("#12ab3");
    EXPECT_EQ(before, get_color(TOLV_FLP_RAM_BLOCK_FILL_COLOR)); // not complete
    type_color("#12ab34");
    EXPECT_EQ(after, get_color(TOLV_FLP_RAM_BLOCK_FILL_COLOR));
    EXPECT_EQ(0, count_in_sample(TOLV_FLP_RAM_BLOCK_FILL_COLOR, before));
    EXPECT_GT(count_in_sample(TOLV_FLP_RAM_BLOCK_FILL_COLOR, after), 200);
    EXPECT_EQ("not saved", get_state_of_row());
    EXPECT_EQ("1 change is not saved", get_state());
    EXPECT_TRUE(m_dialog->isWindowModified());
    EXPECT_EQ("Built-in: " + before.name(), find<QLabel>("default_label")->text());
    press("cancel_button");
}

TEST_F(host_preferences, the_preview_stands_on_the_ground_of_the_tool)
{
    open_at("TOLV_WAVE_BACKGROUND_COLOR");
    const QPoint corner = find<QWidget>("canvas")->rect().bottomRight();
    EXPECT_EQ(get_color(TOLV_WAVE_BACKGROUND_COLOR), QColor(render_preview().pixel(corner)));
    type_color("#402010");
    EXPECT_EQ(QColor(0x40, 0x20, 0x10), QColor(render_preview().pixel(corner)));
    press("cancel_button");
}

TEST_F(host_preferences, lines_of_the_preview_follow_their_colour)
{
    open_at("TOLV_CLKN_TRUNK_LINE_COLOR");
    type_color("#1234ff");
    EXPECT_GT(count_in_sample(TOLV_CLKN_TRUNK_LINE_COLOR, QColor(0x12, 0x34, 0xff)), 50);
    EXPECT_EQ(QColor(0x12, 0x34, 0xff), TOLV_PEN(TOLV_CLKN_TRUNK_PEN).get_pen()->color());
    press("cancel_button");
}

TEST_F(host_preferences, a_colour_can_be_typed_as_a_name_or_as_digits_alone)
{
    open_at("TOLV_WAVE_MARKER_LINE_COLOR");
    type_color("navy");
    GUI_DRIVER::key_click(find<QLineEdit>("color_text"), Qt::Key_Return);
    EXPECT_EQ(QColor("navy"), get_color(TOLV_WAVE_MARKER_LINE_COLOR));
    EXPECT_EQ("#000080", find<QLineEdit>("color_text")->text());
    type_color("ABCDEF");
    GUI_DRIVER::key_click(find<QLineEdit>("color_text"), Qt::Key_Return);
    EXPECT_EQ(QColor(0xab, 0xcd, 0xef), get_color(TOLV_WAVE_MARKER_LINE_COLOR));
    type_color("no colour");
    GUI_DRIVER::key_click(find<QLineEdit>("color_text"), Qt::Key_Return);
    EXPECT_EQ("#abcdef", find<QLineEdit>("color_text")->text());
    EXPECT_EQ(QColor(0xab, 0xcd, 0xef), get_color(TOLV_WAVE_MARKER_LINE_COLOR));
    ASSERT_FALSE(m_dialog.isNull()); // Enter belongs to the field
    press("cancel_button");
}

TEST_F(host_preferences, colours_that_are_tried_out_in_the_dialog_are_seen_at_once)
{
    open_at("TOLV_NLV_CELL_LINE_COLOR");
    const QColor before = get_color(TOLV_NLV_CELL_LINE_COLOR);
    answer_next_dialog(
        [](QDialog* dialog)
        {
            static_cast<QColorDialog*>(dialog)->setCurrentColor(QColor(1, 2, 3));
            EXPECT_EQ(QColor(1, 2, 3), get_color(TOLV_NLV_CELL_LINE_COLOR));
            dialog->reject();
        });
    press("color_button");
    EXPECT_EQ(before, get_color(TOLV_NLV_CELL_LINE_COLOR));
    answer_next_dialog(
        [](QDialog* dialog)
        {
            static_cast<QColorDialog*>(dialog)->setCurrentColor(QColor(4, 5, 6));
            dialog->accept();
        });
    ASSERT_TRUE(GUI_DRIVER::focus(find<QTreeView>("rows")));
    GUI_DRIVER::key_click(find<QTreeView>("rows"), Qt::Key_Return); // as the button does
    EXPECT_EQ(QColor(4, 5, 6), get_color(TOLV_NLV_CELL_LINE_COLOR));
    EXPECT_EQ("#040506", find<QLineEdit>("color_text")->text());
    press("cancel_button");
}

TEST_F(host_preferences, a_damaged_setting_is_shown_as_such_and_can_be_replaced)
{
    get_registry().set_value("Color_version", 11);
    get_registry().set_value("TOLV_CONS_TEXT_COLOR", "no colour");
    start();
    open_at("TOLV_CONS_TEXT_COLOR");
    EXPECT_FALSE(get_color(TOLV_CONS_TEXT_COLOR).isValid());
    EXPECT_EQ("", find<QLineEdit>("color_text")->text());
    EXPECT_EQ("changed", get_state_of_row());
    reset("This Colour");
    EXPECT_EQ(QColor(32, 32, 32), get_color(TOLV_CONS_TEXT_COLOR));
    press("cancel_button");
    EXPECT_FALSE(get_color(TOLV_CONS_TEXT_COLOR).isValid());
}

// ---- Resetting ------------------------------------------------------------------------------------------------------

TEST_F(host_preferences, a_row_a_group_or_all_can_be_reset)
{
    const QColor red(255, 1, 2);
    for (const TOLV_COLOR_RESOURCE resource :
         {TOLV_FLP_TILE_LINE_COLOR, TOLV_FLP_NET_LINE_COLOR, TOLV_FLP_TEXT_COLOR, TOLV_RPT_TEXT_COLOR})
        TOLV_COLOR::set_default_color(resource, red);
    open_at("TOLV_FLP_TILE_LINE_COLOR");
    EXPECT_EQ("changed", get_state_of_row());
    reset("This Colour");
    EXPECT_EQ(TOLV_COLOR::get_default_color(TOLV_FLP_TILE_LINE_COLOR), get_color(TOLV_FLP_TILE_LINE_COLOR));
    EXPECT_EQ(red, get_color(TOLV_FLP_NET_LINE_COLOR));
    reset("This Group");
    EXPECT_NE(red, get_color(TOLV_FLP_NET_LINE_COLOR));
    EXPECT_NE(red, get_color(TOLV_FLP_TEXT_COLOR));
    EXPECT_EQ(red, get_color(TOLV_RPT_TEXT_COLOR));
    reset("All Colours");
    EXPECT_NE(red, get_color(TOLV_RPT_TEXT_COLOR));
    EXPECT_EQ("4 changes are not saved", get_state());
    press("cancel_button");
    EXPECT_EQ(red, get_color(TOLV_RPT_TEXT_COLOR));
}

TEST_F(host_preferences, there_is_nothing_to_reset_where_all_is_built_in)
{
    open_at("TOLV_FLP_TILE_LINE_COLOR");
    answer_next_menu(
        [](QMenu* menu)
        {
            for (const QAction* action : menu->actions())
                EXPECT_FALSE(action->isEnabled()) << action->text().toStdString();
            menu->close();
        });
    open_reset_menu();
    press("cancel_button");
}

TEST_F(host_preferences, a_font_is_reset_with_its_colours)
{
    open_at("TOLV_FLP_LEGEND_FONT");
    find<QSpinBox>("font_size")->setValue(20);
    find<QCheckBox>("font_italic")->setChecked(true);
    TOLV_COLOR::set_default_color(TOLV_FLP_LEGEND_TEXT_COLOR, Qt::red);
    reset("This Font");
    EXPECT_EQ(9, TOLV_FONT(TOLV_FLP_LEGEND_FONT).get_point_size());
    EXPECT_FALSE(TOLV_FONT(TOLV_FLP_LEGEND_FONT).get_italic());
    EXPECT_EQ(QColor(223, 230, 236), get_color(TOLV_FLP_LEGEND_TEXT_COLOR));
    EXPECT_EQ(9, find<QSpinBox>("font_size")->value());
    EXPECT_EQ("", get_state());
    press("cancel_button");
}

// ---- Cancelling and saving ------------------------------------------------------------------------------------------

TEST_F(host_preferences, cancelling_brings_back_what_was_in_force)
{
    TOLV_COLOR::set_default_color(TOLV_FLP_NET_LINE_COLOR, QColor(9, 8, 7)); // not the built-in one
    TOLV_FONT(TOLV_FLP_LEGEND_FONT).get_font()->setUnderline(true);          // as a stored setting can be
    open_at("TOLV_FLP_NET_LINE_COLOR");
    type_color("#ff0000");
    ASSERT_TRUE(m_dialog->select("TOLV_FLP_LEGEND_FONT"));
    m_page = m_dialog->get_page(PREFERENCES_DIALOG::PAGE_FONTS);
    find<QSpinBox>("font_size")->setValue(31);
    reset("All Fonts");
    find<QSpinBox>("font_size")->setValue(32);
    ASSERT_TRUE(m_dialog->select("TOLV_FLP_NET_PEN"));
    m_page = m_dialog->get_page(PREFERENCES_DIALOG::PAGE_LINES);
    find<QSpinBox>("pen_width")->setValue(7);
    EXPECT_EQ("3 changes are not saved", get_state());
    GUI_DRIVER::key_click(find<QSpinBox>("pen_width"), Qt::Key_Escape);
    GUI_DRIVER::process_posted();
    EXPECT_TRUE(m_dialog.isNull());
    EXPECT_EQ(QColor(9, 8, 7), get_color(TOLV_FLP_NET_LINE_COLOR));
    EXPECT_EQ(QColor(9, 8, 7), TOLV_PEN(TOLV_FLP_NET_PEN).get_pen()->color());
    EXPECT_EQ(1, TOLV_PEN(TOLV_FLP_NET_PEN).get_width());
    EXPECT_EQ(9, TOLV_FONT(TOLV_FLP_LEGEND_FONT).get_point_size());
    EXPECT_TRUE(TOLV_FONT(TOLV_FLP_LEGEND_FONT).get_font()->underline());
    EXPECT_EQ(QStringList(), get_registry().get_value_names());
}

TEST_F(host_preferences, a_name_that_is_still_being_typed_does_not_come_into_force_behind_the_end)
{
    open_at("TOLV_FLP_NET_LINE_COLOR");
    type_color("navy");
    GUI_DRIVER::key_click(find<QLineEdit>("color_text"), Qt::Key_Escape);
    GUI_DRIVER::process_posted();
    EXPECT_TRUE(m_dialog.isNull());
    EXPECT_EQ(QColor(127, 214, 143), get_color(TOLV_FLP_NET_LINE_COLOR));
}

TEST_F(host_preferences, what_is_saved_is_found_by_the_next_process)
{
    open_at("TOLV_FLP_NET_LINE_COLOR");
    type_color("#112233");
    ASSERT_TRUE(m_dialog->select("TOLV_FLP_LEGEND_FONT"));
    m_page = m_dialog->get_page(PREFERENCES_DIALOG::PAGE_FONTS);
    find<QSpinBox>("font_size")->setValue(17);
    find<QCheckBox>("font_bold")->setChecked(true);
    ASSERT_TRUE(m_dialog->select("TOLV_FLP_NET_PEN"));
    m_page = m_dialog->get_page(PREFERENCES_DIALOG::PAGE_LINES);
    find<QSpinBox>("pen_width")->setValue(5);
    save();
    const CHILD_RESULT child = run_child("tolv_gdi_child", {"print"});
    EXPECT_EQ(0, child.exit_status) << child.err;
    const std::string color = std::to_string(TOLV_FLP_NET_LINE_COLOR);
    EXPECT_EQ("#112233\n5 1 16 #112233 " + color + "\nKorvex Clear 17 1 0 #dfe6ec\n", child.out);
}

TEST_F(host_preferences, a_change_of_a_colour_alone_stores_no_font_and_no_line)
{
    open_at("TOLV_FLP_NET_LINE_COLOR");
    type_color("#112233");
    save();
    EXPECT_EQ((QStringList{"Color_version", "TOLV_FLP_NET_LINE_COLOR"}), get_registry().get_value_names());
    open_at("TOLV_FLP_NET_LINE_COLOR");
    EXPECT_EQ("changed", get_state_of_row());
    reset("This Colour");
    save();
    EXPECT_EQ(QStringList{"Color_version"}, get_registry().get_value_names());
}

TEST_F(host_preferences, a_change_of_a_line_alone_stores_the_lines)
{
    open_at("TOLV_FLP_NET_PEN");
    find<QSpinBox>("pen_width")->setValue(4);
    save();
    EXPECT_TRUE(is_stored("Pen_version"));
    EXPECT_FALSE(is_stored("Color_version"));
    EXPECT_FALSE(is_stored("Font_version"));
    restart_resources();
    EXPECT_EQ(4, TOLV_PEN(TOLV_FLP_NET_PEN).get_width());
}

TEST_F(host_preferences, saving_where_nothing_can_be_written_says_so_and_stays_open)
{
    const std::string file = TEST_ENVIRONMENT::write_file("no_folder", "");
    open_at("TOLV_FLP_NET_LINE_COLOR");
    type_color("#112233");
    {
        const SCOPED_ENVIRONMENT_VARIABLE registry("NORVANE_REGISTRY_FILE", (file + "/registry.ini").c_str());
        CFGQ_REGISTRY::close();
        QString text;
        answer_next_dialog(
            [&text](QDialog* dialog)
            {
                text = dialog->findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))->text();
                dialog->accept();
            });
        press("save_button");
        EXPECT_EQ("The preferences cannot be written. They stay in force until the workbench ends.", text);
        ASSERT_FALSE(m_dialog.isNull());
        EXPECT_EQ("1 change is not saved", get_state());
        CFGQ_REGISTRY::close();
    }
    save();
    EXPECT_TRUE(is_stored("TOLV_FLP_NET_LINE_COLOR"));
}

// ---- Fonts and lines ------------------------------------------------------------------------------------------------

TEST_F(host_preferences, a_font_can_be_changed_with_its_colours)
{
    open_at("TOLV_FLP_LEGEND_FONT");
    const QImage before = render_preview();
    find<QSpinBox>("font_size")->setValue(16);
    EXPECT_EQ(16, TOLV_FONT(TOLV_FLP_LEGEND_FONT).get_point_size());
    EXPECT_NE(before, render_preview());
    auto* const family = find<QComboBox>("font_family");
    ASSERT_TRUE(GUI_DRIVER::focus(family));
    family->lineEdit()->selectAll();
    GUI_DRIVER::type(family, "monospace");
    GUI_DRIVER::key_click(family, Qt::Key_Tab);
    EXPECT_EQ("Monospace", TOLV_FONT(TOLV_FLP_LEGEND_FONT).get_face_name());
    answer_next_dialog(
        [](QDialog* dialog)
        {
            static_cast<QColorDialog*>(dialog)->setCurrentColor(QColor(4, 5, 6));
            dialog->accept();
        });
    press("background_color");
    EXPECT_EQ(QColor(4, 5, 6), get_color(TOLV_FLP_LEGEND_BACKGROUND_COLOR));
    EXPECT_GT(count_in_sample(TOLV_FLP_LEGEND_FONT, QColor(4, 5, 6)), 1000);
    EXPECT_EQ("2 changes are not saved", get_state());
    press("cancel_button");
    EXPECT_EQ("Korvex Clear", TOLV_FONT(TOLV_FLP_LEGEND_FONT).get_face_name());
}

TEST_F(host_preferences, a_family_that_does_not_exist_is_not_taken)
{
    open_at("TOLV_FLP_LEGEND_FONT");
    auto* const family = find<QComboBox>("font_family");
    for (const char* text : {"Nobody's Sans", "  ", "Sans, Serif"})
    {
        ASSERT_TRUE(GUI_DRIVER::focus(family));
        family->lineEdit()->selectAll();
        GUI_DRIVER::type(family, QString::fromLatin1(text));
        GUI_DRIVER::key_click(family, Qt::Key_Tab);
        EXPECT_EQ("Korvex Clear", family->currentText()) << text;
        EXPECT_EQ("Korvex Clear", TOLV_FONT(TOLV_FLP_LEGEND_FONT).get_face_name()) << text;
    }
    EXPECT_EQ("", get_state());
    press("cancel_button");
}

TEST_F(host_preferences, colours_of_the_desktop_cannot_be_changed_with_a_font)
{
    open_at("TOLV_MSG_TEXT_FONT");
    EXPECT_FALSE(find<QPushButton>("text_color")->isEnabled());
    EXPECT_FALSE(find<QPushButton>("background_color")->isEnabled());
    find<QCheckBox>("font_bold")->setChecked(true);
    EXPECT_TRUE(TOLV_FONT(TOLV_MSG_TEXT_FONT).get_bold());
    ASSERT_TRUE(m_dialog->select("TOLV_FLP_REGION_NAME_FONT"));
    EXPECT_TRUE(find<QPushButton>("background_color")->isEnabled());
    EXPECT_EQ("Also the colour of: Location, Bank name, Device title",
              find<QPushButton>("background_color")->toolTip());
    press("cancel_button");
}

TEST_F(host_preferences, a_line_can_be_changed)
{
    open_at("TOLV_FLP_NET_PEN");
    find<QSpinBox>("pen_width")->setValue(6);
    auto* const colors = find<QComboBox>("pen_color");
    EXPECT_EQ("Net line", colors->currentText());
    ASSERT_TRUE(GUI_DRIVER::focus(colors));
    GUI_DRIVER::key_click(colors, Qt::Key_Down);
    const TOLV_PEN pen(TOLV_FLP_NET_PEN);
    EXPECT_EQ(6, pen.get_width());
    EXPECT_EQ(TOLV_FLP_SELECTED_NET_LINE_COLOR, pen.get_color().get_color_resource());
    EXPECT_GT(count_in_sample(TOLV_FLP_NET_PEN, get_color(TOLV_FLP_SELECTED_NET_LINE_COLOR)), 100);
    reset("This Line");
    EXPECT_EQ(1, pen.get_width());
    EXPECT_EQ("Net line", colors->currentText());
    press("cancel_button");
}

// ---- The workbench --------------------------------------------------------------------------------------------------

TEST_F(host_preferences, messages_are_written_in_the_colours_and_the_font_that_are_in_force)
{
    m_window->open_file("/nonexistent.json");
    ASSERT_TRUE(GUI_DRIVER::wait_for([this] { return !m_window->is_loading(); }));
    const auto* const messages = find_in<QPlainTextEdit>(m_window.get(), "messages");
    const auto get_color_of = [](const QTextBlock& line)
    { return line.layout()->formats().value(0).format.foreground().color(); };
    EXPECT_EQ(get_color(TOLV_MSW_INFO_COLOR), get_color_of(messages->document()->firstBlock()));
    EXPECT_EQ(get_color(TOLV_MSW_ERROR_COLOR), get_color_of(messages->document()->lastBlock()));
    open_at("TOLV_MSW_ERROR_COLOR");
    type_color("#a000a0");
    EXPECT_EQ(QColor(0xa0, 0x00, 0xa0), get_color_of(messages->document()->lastBlock()));
    EXPECT_EQ(get_color(TOLV_MSW_INFO_COLOR), get_color_of(messages->document()->firstBlock()));
    ASSERT_TRUE(m_dialog->select("TOLV_MSG_TEXT_FONT"));
    m_page = m_dialog->get_page(PREFERENCES_DIALOG::PAGE_FONTS);
    find<QSpinBox>("font_size")->setValue(15);
    EXPECT_EQ(15, messages->font().pointSize());
    press("cancel_button");
    EXPECT_EQ(QColor(255, 0, 0), get_color_of(messages->document()->lastBlock()));
    EXPECT_EQ(10, messages->font().pointSize());
}

TEST_F(host_preferences, tables_and_windows_are_written_in_the_fonts_that_are_in_force)
{
    const auto* const table = find_in<QTableView>(m_window.get(), "cell_table");
    EXPECT_EQ("Monospace", table->font().family());
    EXPECT_EQ(8, table->font().pointSize());
    const QFont window_font = QApplication::font();
    open_at("TOLV_TABLE_MONOSPACE_FONT");
    find<QSpinBox>("font_size")->setValue(20);
    EXPECT_EQ(20, table->font().pointSize());
    EXPECT_GT(table->verticalHeader()->defaultSectionSize(), 25);
    EXPECT_EQ(window_font, QApplication::font());
    ASSERT_TRUE(m_dialog->select("TOLV_GUI_FONT"));
    find<QSpinBox>("font_size")->setValue(12);
    EXPECT_EQ(12, QApplication::font().pointSize());
    EXPECT_EQ(20, table->font().pointSize());
    EXPECT_EQ(12, table->horizontalHeader()->font().pointSize());
    press("cancel_button");
    EXPECT_EQ(10, QApplication::font().pointSize());
    EXPECT_EQ(8, table->font().pointSize());
    TEST_APPLICATION::set_test_font();
}
