#include "host_preferences_fixture.h"

#include <QMenu>

#include <algorithm>

using host_preferences_use = PREFERENCES_TEST;

// ---- Searching ------------------------------------------------------------------------------------------------------

TEST_F(host_preferences_use, a_search_wants_each_word_in_the_title_the_tool_or_the_name)
{
    open();
    const int all = get_shown().size();
    EXPECT_GT(all, 400);
    search("net LINE floor");
    EXPECT_EQ((QStringList{"Floorplan/Net line", "Floorplan/Selected net line"}), get_shown());
    EXPECT_EQ(TOLV_FLP_NET_LINE_COLOR, m_page->get_resource());
    search("TOLV_MSW_ERROR");
    EXPECT_EQ(QStringList{"Messages/Error"}, get_shown());
    EXPECT_EQ("Messages: Error", find<QLabel>("row_title")->text());
    search("nothing like this");
    EXPECT_EQ(QStringList(), get_shown());
    EXPECT_TRUE(find<QLabel>("nothing_found")->isVisible());
    EXPECT_FALSE(find<QTreeView>("rows")->isVisible());
    EXPECT_FALSE(find<QLineEdit>("color_text")->isEnabled());
    find<QLineEdit>("search")->clear();
    EXPECT_EQ(all, get_shown().size());
    EXPECT_TRUE(find<QTreeView>("rows")->isVisible());
    press("cancel_button");
}

TEST_F(host_preferences_use, enter_and_escape_in_the_search_do_not_end_the_dialog)
{
    open_at("TOLV_FLP_NET_LINE_COLOR");
    type_color("#112233");
    search("net");
    GUI_DRIVER::key_click(find<QLineEdit>("search"), Qt::Key_Return);
    ASSERT_FALSE(m_dialog.isNull());
    EXPECT_TRUE(m_dialog->isVisible());
    GUI_DRIVER::key_click(find<QLineEdit>("search"), Qt::Key_Escape);
    EXPECT_TRUE(m_dialog->isVisible());
    EXPECT_EQ("", find<QLineEdit>("search")->text());
    EXPECT_EQ(QColor(0x11, 0x22, 0x33), get_color(TOLV_FLP_NET_LINE_COLOR));
    GUI_DRIVER::key_click(find<QLineEdit>("search"), Qt::Key_Escape);
    GUI_DRIVER::process_posted();
    EXPECT_TRUE(m_dialog.isNull());
}

TEST_F(host_preferences_use, a_click_on_a_sample_chooses_its_row)
{
    open_at("TOLV_MSW_ERROR_COLOR");
    auto* const canvas = find<PREFERENCES_CANVAS>("canvas");
    GUI_DRIVER::click(canvas, canvas->get_rect(TOLV_MSW_WARNING_COLOR).center());
    EXPECT_EQ(TOLV_MSW_WARNING_COLOR, m_page->get_resource());
    search("error");
    GUI_DRIVER::click(canvas, canvas->get_rect(TOLV_MSW_INFO_COLOR).center()); // the search hides it
    EXPECT_EQ(TOLV_MSW_INFO_COLOR, m_page->get_resource());
    EXPECT_EQ("", find<QLineEdit>("search")->text());
    press("cancel_button");
}

TEST_F(host_preferences_use, the_chosen_sample_is_scrolled_into_view)
{
    open_at("TOLV_FLP_LEGEND_TEXT_COLOR");
    auto* const preview = find<PREFERENCES_PREVIEW>("preview");
    const auto is_seen = [&](int resource)
    {
        const QRect rect = preview->get_canvas()->get_rect(resource);
        return preview->get_canvas()->visibleRegion().contains(rect.center());
    };
    EXPECT_TRUE(GUI_DRIVER::wait_for([&] { return is_seen(TOLV_FLP_LEGEND_TEXT_COLOR); }));
    EXPECT_FALSE(is_seen(TOLV_FLP_BACKGROUND_COLOR));
    ASSERT_TRUE(m_dialog->select("TOLV_FLP_BACKGROUND_COLOR"));
    EXPECT_TRUE(is_seen(TOLV_FLP_BACKGROUND_COLOR));
    press("cancel_button");
}

// ---- Keyboard and screen reader -------------------------------------------------------------------------------------

TEST_F(host_preferences_use, mnemonics_do_not_clash)
{
    open();
    for (const PREFERENCES_DIALOG::PAGE page :
         {PREFERENCES_DIALOG::PAGE_COLORS, PREFERENCES_DIALOG::PAGE_FONTS, PREFERENCES_DIALOG::PAGE_LINES})
    {
        m_dialog->set_page(page);
        QStringList texts;
        for (const auto* button : m_dialog->findChildren<QAbstractButton*>())
        {
            if (button->isVisible())
                texts.append(button->text());
        }
        for (const auto* label : m_dialog->findChildren<QLabel*>())
        {
            if (label->isVisible() && label->buddy() != nullptr)
                texts.append(label->text());
        }
        const auto* const tabs = find_in<QTabWidget>(m_dialog, "preferences_tabs");
        for (int tab = 0; tab < tabs->count(); ++tab)
            texts.append(tabs->tabText(tab));
        QString seen;
        for (const QString& text : texts)
        {
            const int mark = text.indexOf('&');
            if (mark < 0)
                continue; // Cancel, whose key is Escape
            EXPECT_FALSE(seen.contains(text[mark + 1].toLower())) << page << " " << text.toStdString();
            seen += text[mark + 1].toLower();
        }
        EXPECT_GE(seen.size(), 7);
        for (const auto* menu : m_dialog->get_page(page)->findChildren<QMenu*>("reset_menu"))
        {
            QString keys;
            for (const QAction* action : menu->actions())
            {
                const QString text = action->text();
                keys += text[text.indexOf('&') + 1].toLower();
            }
            std::sort(keys.begin(), keys.end());
            EXPECT_TRUE(std::adjacent_find(keys.begin(), keys.end()) == keys.end()) << keys.toStdString();
        }
    }
    press("cancel_button");
}

TEST_F(host_preferences_use, tab_goes_from_the_search_to_the_rows_the_editor_and_the_buttons)
{
    const QStringList orders[] = {
        {"search", "rows", "color_text", "color_button", "reset_button", "save_button", "cancel_button"},
        {"search", "rows", "font_family", "font_size", "font_bold", "font_italic", "text_color", "background_color",
         "reset_button", "save_button", "cancel_button"},
        {"search", "rows", "pen_width", "pen_color", "reset_button", "save_button", "cancel_button"}};
    const char* const rows[] = {"TOLV_FLP_NET_LINE_COLOR", "TOLV_FLP_LEGEND_FONT", "TOLV_FLP_NET_PEN"};
    open_at("TOLV_WAVE_TEXT_COLOR");
    type_color("#010203"); // so that Save can be pressed
    for (int page = 0; page < 3; ++page)
    {
        ASSERT_TRUE(m_dialog->select(rows[page]));
        m_page = m_dialog->get_page(static_cast<PREFERENCES_DIALOG::PAGE>(page));
        auto* const first = find<QLineEdit>("search");
        ASSERT_TRUE(GUI_DRIVER::focus(first));
        QStringList order;
        for (int i = 0; i < 20; ++i)
        {
            order.append(QApplication::focusWidget()->objectName());
            GUI_DRIVER::key_click(QApplication::focusWidget(), Qt::Key_Tab);
            if (QApplication::focusWidget() == first)
                break;
        }
        order.removeAll(QStringLiteral("qt_tabwidget_tabbar"));
        EXPECT_EQ(orders[page], order);
    }
    press("cancel_button");
}

TEST_F(host_preferences_use, what_takes_the_focus_has_a_name_for_a_screen_reader)
{
    open();
    for (const char* page : {"colors_page", "fonts_page", "lines_page"})
    {
        m_page = find_in<PREFERENCES_PAGE>(m_dialog, page);
        int count = 0;
        for (const auto* widget : m_page->findChildren<QWidget*>())
        {
            // What has no name of its own is a part of a widget of Qt, or shows its text.
            const auto* const button = qobject_cast<const QAbstractButton*>(widget);
            const bool is_part = widget->objectName().isEmpty() || widget->objectName().startsWith("qt_");
            if (is_part || (widget->focusPolicy() & Qt::TabFocus) == 0 || widget->window() != m_dialog)
                continue;
            const QString name = button != nullptr ? button->text() : widget->accessibleName();
            EXPECT_NE("", name) << page << " " << widget->objectName().toStdString();
            ++count;
        }
        EXPECT_GE(count, 5);
    }
    press("cancel_button");
}

TEST_F(host_preferences_use, the_find_key_leads_to_the_search)
{
    open_at("TOLV_FLP_LEGEND_FONT");
    ASSERT_TRUE(GUI_DRIVER::focus(find<QTreeView>("rows")));
    GUI_DRIVER::key_click(find<QTreeView>("rows"), Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(find<QLineEdit>("search"), QApplication::focusWidget());
    press("cancel_button");
}
