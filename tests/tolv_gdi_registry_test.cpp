#include "tolv_gdi_fixture.h"

#include "child_process.h"
#include "test_environment.h"
#include "tolv_font.h"
#include "tolv_gdi_stored_form_p.h"
#include "tolv_gdi_tables.h"
#include "tolv_pen.h"

#include <QApplication>
#include <QPalette>

#include <random>

using TOLV_GDI_REGISTRY_TEST = GDI_TEST;

namespace
{
constexpr const char* KEYWORD = "TOLV_TXED_KEYWORD_TEXT_COLOR";
constexpr const char* NET_PEN = "TOLV_FLP_NET_PEN";
constexpr const char* LEGEND = "TOLV_FLP_LEGEND_FONT";

const QColor KEYWORD_COLOR(0, 51, 179);

/// The font of the legend as it is without any setting.
void expect_default_legend(const TOLV_GDI_MANAGER& manager, const std::string& what)
{
    TOLV_COLOR_RESOURCE text = TOLV_MIN_COLOR;
    TOLV_COLOR_RESOURCE background = TOLV_MIN_COLOR;
    const QFont* const font = manager.get_font(TOLV_FLP_LEGEND_FONT, &text, &background);
    EXPECT_EQ(QStringLiteral("Korvex Clear"), font->family()) << what;
    EXPECT_EQ(9, font->pointSize()) << what;
    EXPECT_FALSE(font->bold()) << what;
    EXPECT_EQ(TOLV_FLP_LEGEND_TEXT_COLOR, text) << what;
    EXPECT_EQ(TOLV_FLP_LEGEND_BACKGROUND_COLOR, background) << what;
    EXPECT_TRUE(manager.can_change_font(TOLV_FLP_LEGEND_FONT)) << what;
}

void expect_default_net_pen(const TOLV_GDI_MANAGER& manager, const std::string& what)
{
    EXPECT_EQ(QPen(manager.get_color(TOLV_FLP_NET_LINE_COLOR), 1, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin),
              *manager.get_pen(TOLV_FLP_NET_PEN))
        << what;
    EXPECT_EQ(TOLV_FLP_NET_LINE_COLOR, manager.get_pen_color(TOLV_FLP_NET_PEN)) << what;
}
} // namespace

// ---- Colours --------------------------------------------------------------------------------------------------------

TEST_F(TOLV_GDI_REGISTRY_TEST, lies_under_sub_key_52)
{
    EXPECT_EQ(52, CFGQ_REGISTRY_KEY::SUB_KEY_GUI);
    manager().set_color(TOLV_TXED_KEYWORD_TEXT_COLOR, QColor(1, 2, 3));
    manager().save_colors_in_registry();
    EXPECT_EQ("#010203", stored(KEYWORD));
    EXPECT_EQ("11", stored("Color_version"));
}

TEST_F(TOLV_GDI_REGISTRY_TEST, brings_a_saved_color_back)
{
    manager().set_color(TOLV_TXED_KEYWORD_TEXT_COLOR, QColor(1, 2, 3, 4));
    manager().save_colors_in_registry();
    restart();
    EXPECT_EQ(QColor(1, 2, 3), manager().get_color(TOLV_TXED_KEYWORD_TEXT_COLOR)); // alpha is lost
    EXPECT_EQ(KEYWORD_COLOR, manager().get_default_color(TOLV_TXED_KEYWORD_TEXT_COLOR));
}

TEST_F(TOLV_GDI_REGISTRY_TEST, stores_only_colors_that_differ_and_that_users_can_change)
{
    manager().save_colors_in_registry();
    EXPECT_EQ(QStringList{"Color_version"}, registry().get_value_names());
    manager().set_color(TOLV_TXED_KEYWORD_TEXT_COLOR, QColor(1, 2, 3));
    manager().save_colors_in_registry();
    EXPECT_EQ((QStringList{"Color_version", KEYWORD}), registry().get_value_names());
}

TEST_F(TOLV_GDI_REGISTRY_TEST, a_color_set_back_leaves_the_registry_at_the_next_save)
{
    manager().set_color(TOLV_TXED_KEYWORD_TEXT_COLOR, QColor(1, 2, 3));
    manager().save_colors_in_registry();
    manager().reset_colors({TOLV_TXED_KEYWORD_TEXT_COLOR});
    EXPECT_TRUE(is_stored(KEYWORD));
    manager().save_colors_in_registry();
    EXPECT_FALSE(is_stored(KEYWORD));
}

TEST_F(TOLV_GDI_REGISTRY_TEST, a_new_default_reaches_users_who_never_changed_the_color)
{
    manager().save_colors_in_registry();
    EXPECT_FALSE(is_stored(KEYWORD)); // nothing stands in the way of another built-in value
    // An earlier release stored what was its own default, and saves it away.
    store(KEYWORD, "#0033b3");
    restart();
    manager().save_colors_in_registry();
    EXPECT_FALSE(is_stored(KEYWORD));
}

TEST_F(TOLV_GDI_REGISTRY_TEST, colors_of_another_version_do_not_count_until_the_next_save)
{
    for (const QVariant& version : {QVariant(10), QVariant(12), QVariant("eleven"), QVariant(), QVariant(QByteArray())})
    {
        store("Color_version", version);
        store(KEYWORD, "#010203");
        store("TOLV_EMPTY_VIEW_COLOR", "#040506");
        restart();
        EXPECT_EQ(KEYWORD_COLOR, manager().get_color(TOLV_TXED_KEYWORD_TEXT_COLOR));
        EXPECT_EQ(QColor(192, 192, 192), manager().get_color(TOLV_EMPTY_VIEW_COLOR));
        EXPECT_EQ("#010203", stored(KEYWORD)); // a mismatch removes nothing
        manager().set_color(TOLV_EMPTY_VIEW_COLOR, QColor(7, 8, 9));
        manager().save_colors_in_registry();
        EXPECT_EQ("11", stored("Color_version"));
        EXPECT_FALSE(is_stored(KEYWORD));
        EXPECT_EQ("#070809", stored("TOLV_EMPTY_VIEW_COLOR"));
    }
    registry().remove("Color_version");
    store(KEYWORD, "#010203");
    restart();
    EXPECT_EQ(KEYWORD_COLOR, manager().get_color(TOLV_TXED_KEYWORD_TEXT_COLOR));
}

TEST_F(TOLV_GDI_REGISTRY_TEST, a_version_counts_as_the_number_that_it_converts_to)
{
    store("Color_version", "11");
    store(KEYWORD, "#010203");
    restart();
    EXPECT_EQ(QColor(1, 2, 3), manager().get_color(TOLV_TXED_KEYWORD_TEXT_COLOR));
}

TEST_F(TOLV_GDI_REGISTRY_TEST, fixed_and_system_colors_are_never_read)
{
    store("Color_version", 11);
    store("TOLV_RED_COLOR", "#010203");
    store("TOLV_WINDOW_TEXT_COLOR", "#010203");
    store("TOLV_PWRH_HOT_FILL_COLOR", "#010203");
    restart();
    EXPECT_EQ(QColor(255, 0, 0), manager().get_color(TOLV_RED_COLOR));
    EXPECT_EQ(QApplication::palette().color(QPalette::WindowText), manager().get_color(TOLV_WINDOW_TEXT_COLOR));
    EXPECT_EQ(QColor(0xf4, 0x6d, 0x43), manager().get_color(TOLV_PWRH_HOT_FILL_COLOR));
}

TEST_F(TOLV_GDI_REGISTRY_TEST, a_text_that_is_no_color_gives_an_invalid_color)
{
    store("Color_version", 11);
    const QVariant values[] = {"no such colour", "", "#12", QString(1 << 20, 'x'), QString::fromUtf8("größe"), 5};
    for (const QVariant& value : values)
    {
        store(KEYWORD, value);
        restart();
        EXPECT_FALSE(manager().get_color(TOLV_TXED_KEYWORD_TEXT_COLOR).isValid());
        EXPECT_EQ(KEYWORD_COLOR, manager().get_default_color(TOLV_TXED_KEYWORD_TEXT_COLOR));
    }
    store(KEYWORD, "steelblue");
    restart();
    EXPECT_EQ(QColor(70, 130, 180), manager().get_color(TOLV_TXED_KEYWORD_TEXT_COLOR));
}

TEST_F(TOLV_GDI_REGISTRY_TEST, the_general_background_once_loaded_is_written_at_every_save)
{
    manager().save_colors_in_registry();
    EXPECT_FALSE(is_stored("TOLV_GENERAL_BACKGROUND_COLOR"));
    manager().set_color(TOLV_GENERAL_BACKGROUND_COLOR, QColor(1, 2, 3));
    manager().save_colors_in_registry();
    restart();
    EXPECT_EQ(QColor(1, 2, 3), manager().get_color(TOLV_GENERAL_BACKGROUND_COLOR));
    manager().reset_colors({TOLV_GENERAL_BACKGROUND_COLOR});
    manager().save_colors_in_registry();
    const QColor window = QApplication::palette().color(QPalette::Window);
    EXPECT_EQ(window.name().toStdString(), stored("TOLV_GENERAL_BACKGROUND_COLOR"));
}

TEST_F(TOLV_GDI_REGISTRY_TEST, a_save_of_colors_refreshes_pens_and_brushes)
{
    manager().set_color(TOLV_FLP_NET_LINE_COLOR, QColor(1, 2, 3));
    EXPECT_NE(QColor(1, 2, 3), manager().get_pen(TOLV_FLP_NET_PEN)->color());
    manager().save_colors_in_registry();
    EXPECT_EQ(QColor(1, 2, 3), manager().get_pen(TOLV_FLP_NET_PEN)->color());
}

// ---- Pens -----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_GDI_REGISTRY_TEST, stores_all_pens_in_their_form)
{
    manager().save_pens_in_registry();
    EXPECT_EQ("2", stored("Pen_version"));
    EXPECT_EQ("TOLV_BLACK_COLOR 1 16 0 1 4278190080", stored("TOLV_BLACK_PEN"));
    EXPECT_EQ("TOLV_CLKN_SPINE_LINE_COLOR 1 0 0 10 4286260252", stored("TOLV_CLKN_SPINE_PEN"));
    EXPECT_EQ(154, registry().get_value_names().size());
    EXPECT_FALSE(is_stored("Color_version"));
    EXPECT_FALSE(is_stored("Font_version"));
}

TEST_F(TOLV_GDI_REGISTRY_TEST, brings_saved_pens_back_in_the_color_of_the_resource)
{
    manager().set_pen_width(TOLV_FLP_NET_PEN, 4);
    manager().set_pen_color(TOLV_FLP_NET_PEN, TOLV_GREEN_COLOR);
    manager().save_pens_in_registry();
    restart();
    EXPECT_EQ(QPen(QColor(0, 255, 0), 4, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin),
              *manager().get_pen(TOLV_FLP_NET_PEN));
    EXPECT_EQ(TOLV_GREEN_COLOR, manager().get_pen_color(TOLV_FLP_NET_PEN));
    store(NET_PEN, "TOLV_RED_COLOR 3 32 128 2 1"); // the last number is for readers alone
    restart();
    EXPECT_EQ(QPen(QColor(255, 0, 0), 2, Qt::DotLine, Qt::RoundCap, Qt::RoundJoin),
              *manager().get_pen(TOLV_FLP_NET_PEN));
}

TEST_F(TOLV_GDI_REGISTRY_TEST, a_pen_with_an_unknown_color_keeps_its_style_and_width)
{
    store("Pen_version", 2);
    store(NET_PEN, "  TOLV_LOST_COLOR   2 0\t0 6 0  ");
    restart();
    EXPECT_EQ(QPen(manager().get_color(TOLV_FLP_NET_LINE_COLOR), 6, Qt::DashLine, Qt::FlatCap, Qt::MiterJoin),
              *manager().get_pen(TOLV_FLP_NET_PEN));
    EXPECT_EQ(TOLV_FLP_NET_LINE_COLOR, manager().get_pen_color(TOLV_FLP_NET_PEN));
}

TEST_F(TOLV_GDI_REGISTRY_TEST, a_pen_of_the_wrong_form_has_its_default)
{
    store("Pen_version", 2);
    const QVariant values[] = {
        "TOLV_RED_COLOR 2 0 0 6",
        "TOLV_RED_COLOR 2 0 0 6 0 0",
        "",
        "      ",
        "TOLV_RED_COLOR two 0 0 6 0",
        "TOLV_RED_COLOR 99 0 0 6 0",
        "TOLV_RED_COLOR -1 0 0 6 0",
        "TOLV_RED_COLOR 6 0 0 6 0",
        "TOLV_RED_COLOR 2 1 0 6 0",
        "TOLV_RED_COLOR 2 0 1 6 0",
        "TOLV_RED_COLOR 2 0 0 -6 0",
        "TOLV_RED_COLOR 2 0 0 32768 0",
        "TOLV_RED_COLOR 2 0 0 99999999999999999999 0",
        "TOLV_RED_COLOR 2 0 0 6.5 0",
        QString(1 << 20, 'x'),
        QString("x ").repeated(1 << 19),
        QVariantList{1, 2, 3},
        QVariant(),
    };
    for (const QVariant& value : values)
    {
        store(NET_PEN, value);
        restart();
        expect_default_net_pen(manager(), value.toString().left(60).toStdString());
    }
}

TEST_F(TOLV_GDI_REGISTRY_TEST, pens_of_another_version_do_not_count)
{
    store("Pen_version", 1);
    store(NET_PEN, "TOLV_RED_COLOR 2 0 0 6 0");
    restart();
    expect_default_net_pen(manager(), "version 1");
}

// ---- Fonts ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_GDI_REGISTRY_TEST, stores_all_fonts_in_their_form_and_the_colors_along)
{
    manager().set_color(TOLV_TXED_KEYWORD_TEXT_COLOR, QColor(1, 2, 3));
    manager().save_fonts_in_registry();
    EXPECT_EQ("11", stored("Font_version"));
    EXPECT_EQ("1 TOLV_WINDOW_TEXT_COLOR TOLV_WINDOW_BACKGROUND_COLOR 10 1 0 1 0 0 4, Korvex Clear",
              stored("TOLV_GUI_BOLD_UNDERLINE_FONT"));
    EXPECT_EQ("0 TOLV_GRAY_COLOR TOLV_DARK_GRAY_COLOR 10 0 0 0 0 0 0, Korvex Clear",
              stored("TOLV_MDI_BACKGROUND_FONT"));
    EXPECT_EQ("1 TOLV_TXED_COMMENT_TEXT_COLOR TOLV_TXED_BACKGROUND_COLOR 10 0 1 0 0 1 2, Monospace",
              stored("TOLV_TXED_COMMENT_FONT"));
    EXPECT_EQ("11", stored("Color_version"));
    EXPECT_EQ("#010203", stored(KEYWORD));
    EXPECT_FALSE(is_stored("Pen_version"));
    EXPECT_EQ(102 + 3, registry().get_value_names().size());
}

TEST_F(TOLV_GDI_REGISTRY_TEST, weights_of_58_and_above_are_stored_as_bold)
{
    QFont* const font = manager().get_font(TOLV_FLP_LEGEND_FONT, nullptr, nullptr);
    for (const auto& [weight, expected] : std::vector<std::pair<int, const char*>>{
             {57, "1 TOLV_FLP_LEGEND_TEXT_COLOR TOLV_FLP_LEGEND_BACKGROUND_COLOR 9 0 1 0 1 0 0, Korvex Clear"},
             {58, "1 TOLV_FLP_LEGEND_TEXT_COLOR TOLV_FLP_LEGEND_BACKGROUND_COLOR 9 1 1 0 1 0 0, Korvex Clear"}})
    {
        font->setWeight(weight);
        font->setStyle(QFont::StyleOblique);
        font->setStrikeOut(true);
        manager().save_fonts_in_registry();
        EXPECT_EQ(expected, stored(LEGEND));
    }
}

TEST_F(TOLV_GDI_REGISTRY_TEST, brings_saved_fonts_back)
{
    store("Font_version", 11);
    store(LEGEND, "0 TOLV_RED_COLOR TOLV_LOST_COLOR 13 1 1 1 1 1 7,  Some Family , not this");
    restart();
    TOLV_COLOR_RESOURCE text = TOLV_MIN_COLOR;
    TOLV_COLOR_RESOURCE background = TOLV_MIN_COLOR;
    const QFont* const font = manager().get_font(TOLV_FLP_LEGEND_FONT, &text, &background);
    EXPECT_EQ(TOLV_RED_COLOR, text);
    EXPECT_EQ(TOLV_FLP_LEGEND_BACKGROUND_COLOR, background);
    EXPECT_FALSE(manager().can_change_font(TOLV_FLP_LEGEND_FONT));
    EXPECT_EQ(QStringLiteral("Some Family"), font->family());
    EXPECT_EQ(13, font->pointSize());
    EXPECT_EQ(75, font->weight());
    EXPECT_TRUE(font->italic() && font->underline() && font->strikeOut() && font->fixedPitch());
    EXPECT_EQ(QFont::Monospace, font->styleHint());
    EXPECT_FALSE(font->kerning());
}

TEST_F(TOLV_GDI_REGISTRY_TEST, flags_of_a_font_are_set_only_by_1_but_its_changeability_by_anything)
{
    store("Font_version", 11);
    store(LEGEND, "-3 A B 13 2 -1 3 7 10 0, F");
    restart();
    const QFont* const font = manager().get_font(TOLV_FLP_LEGEND_FONT, nullptr, nullptr);
    EXPECT_EQ(13, font->pointSize());
    EXPECT_FALSE(font->bold() || font->italic() || font->underline() || font->strikeOut() || font->fixedPitch());
    EXPECT_TRUE(manager().can_change_font(TOLV_FLP_LEGEND_FONT));
}

TEST_F(TOLV_GDI_REGISTRY_TEST, fields_of_a_font_need_no_comma_behind_the_last)
{
    store("Font_version", 11);
    store(LEGEND, "1\tA\nB  13 1 0 0 0 0 0 junk, F"); // ten fields were read, what follows does not matter
    restart();
    EXPECT_EQ(13, manager().get_font(TOLV_FLP_LEGEND_FONT, nullptr, nullptr)->pointSize());
}

TEST_F(TOLV_GDI_REGISTRY_TEST, a_font_of_the_wrong_form_has_its_default)
{
    store("Font_version", 11);
    const QString name_1000 = QString(1000, 'N');
    const QVariant values[] = {
        "0 TOLV_RED_COLOR TOLV_RED_COLOR 13 1 0 0 0 0 0",
        "0 TOLV_RED_COLOR TOLV_RED_COLOR 13 1 0 0 0 0 0,",
        "0 TOLV_RED_COLOR TOLV_RED_COLOR 13 1 0 0 0 0 0,   \t ",
        "0 TOLV_RED_COLOR TOLV_RED_COLOR 13 1 0 0 0 0 0, ,F",
        "0 TOLV_RED_COLOR TOLV_RED_COLOR 13 1 0 0 0 0, F",
        "0 TOLV_RED_COLOR 13 1 0 0 0 0 0, F",
        "x TOLV_RED_COLOR TOLV_RED_COLOR 13 1 0 0 0 0 0, F",
        "0 TOLV_RED_COLOR TOLV_RED_COLOR big 1 0 0 0 0 0, F",
        "0 TOLV_RED_COLOR TOLV_RED_COLOR 0 1 0 0 0 0 0, F",
        "0 TOLV_RED_COLOR TOLV_RED_COLOR -13 1 0 0 0 0 0, F",
        "0 TOLV_RED_COLOR TOLV_RED_COLOR 4097 1 0 0 0 0 0, F",
        "0 TOLV_RED_COLOR TOLV_RED_COLOR 2147483648 1 0 0 0 0 0, F",
        "0 TOLV_RED_COLOR TOLV_RED_COLOR 4294967309 1 0 0 0 0 0, F",
        "0 TOLV_RED_COLOR TOLV_RED_COLOR 99999999999999999999999999 1 0 0 0 0 0, F",
        "0 TOLV_RED_COLOR TOLV_RED_COLOR 13 1 0 0 0 0 99, F",
        "0 TOLV_RED_COLOR TOLV_RED_COLOR 13 1 0 0 0 0 -1, F",
        "0 TOLV_RED_COLOR TOLV_RED_COLOR 13 1 0 0 0 0 -, F",
        "",
        ",",
        "0 " + name_1000 + " TOLV_RED_COLOR 13 1 0 0 0 0 0, F",
        "0 TOLV_RED_COLOR " + name_1000 + " 13 1 0 0 0 0 0, F",
        "0 " + name_1000 + " 13 1 0 0 0 0 0 0, F", // in pieces, these would be ten fields
        "0 A B 13 1 0 0 0 0 0, " + QString(1 << 20, 'F'),
        QString(1 << 20, 'x'),
        QString("0 ").repeated(1 << 19),
        QVariantList{1, 2, 3},
    };
    for (const QVariant& value : values)
    {
        store(LEGEND, value);
        restart();
        expect_default_legend(manager(), value.toString().left(80).toStdString());
    }
}

TEST_F(TOLV_GDI_REGISTRY_TEST, names_in_a_font_may_have_999_characters_and_a_family_any)
{
    store("Font_version", 11);
    store(LEGEND,
          "0 " + QString(999, 'N') + " " + QString(999, 'M') + " 13 1 0 0 0 0 0, " + QString::fromUtf8("Größe"));
    restart();
    TOLV_COLOR_RESOURCE text = TOLV_MIN_COLOR;
    const QFont* const font = manager().get_font(TOLV_FLP_LEGEND_FONT, &text, nullptr);
    EXPECT_EQ(13, font->pointSize());
    EXPECT_EQ(QString::fromUtf8("Größe"), font->family());
    EXPECT_EQ(TOLV_FLP_LEGEND_TEXT_COLOR, text); // no colour has such a name
}

TEST_F(TOLV_GDI_REGISTRY_TEST, fonts_of_another_version_do_not_count)
{
    store("Font_version", 10);
    store(LEGEND, "0 TOLV_RED_COLOR TOLV_RED_COLOR 13 1 0 0 0 0 0, F");
    restart();
    expect_default_legend(manager(), "version 10");
}

TEST_F(TOLV_GDI_REGISTRY_TEST, every_stored_form_reads_as_what_was_written)
{
    for (const TOLV_INITIAL_PEN& row : tolv_get_initial_pens())
    {
        TOLV_STORED_PEN pen;
        ASSERT_TRUE(TOLV_STORED_PEN::parse(TOLV_STORED_PEN::format("NAME", *manager().get_pen(row.resource)), &pen));
        EXPECT_EQ("NAME", pen.color_name);
        EXPECT_EQ(std::tie(row.style, row.cap, row.join, row.width), std::tie(pen.style, pen.cap, pen.join, pen.width));
    }
    for (const TOLV_INITIAL_FONT& row : tolv_get_initial_fonts())
    {
        const QFont& font = *manager().get_font(row.resource, nullptr, nullptr);
        TOLV_STORED_FONT read;
        ASSERT_TRUE(TOLV_STORED_FONT::parse(TOLV_STORED_FONT::format(row.can_change, "TEXT", "BACK", font), &read));
        EXPECT_EQ(row.can_change, read.can_change);
        EXPECT_EQ("TEXT", read.text_color_name);
        EXPECT_EQ("BACK", read.background_color_name);
        EXPECT_EQ(TOLV_FONT_ATTRIBUTES::from_row(row).get_key(), read.attributes.get_key());
    }
}

TEST_F(TOLV_GDI_REGISTRY_TEST, damaged_forms_give_a_row_in_range_or_none)
{
    const QString pens[] = {"TOLV_RED_COLOR 3 32 128 2 1", "TOLV_FLP_NET_LINE_COLOR 1 16 0 10 4286568079"};
    const QString fonts[] = {"0 TOLV_RED_COLOR TOLV_LOST_COLOR 13 1 1 1 1 1 7, Some Family",
                             QString::fromUtf8("1 A B 24 0 0 0 0 0 0, Größe, no")};
    const QString pieces[] = {"",
                              " ",
                              "  ",
                              "0",
                              "-1",
                              "99999999999",
                              "2147483648",
                              "-2147483649",
                              ",",
                              ", ",
                              "%s",
                              "\n\t",
                              "x",
                              "+7",
                              "1e9",
                              QString(1, QChar(0)),
                              "é",
                              QString(1000, 'N'),
                              QString(QChar(0xd800))};
    std::mt19937 random(7); // the same damages in every run
    const auto damage = [&](QString text)
    {
        for (unsigned i = 0, count = 1 + random() % 3; i < count; ++i)
        {
            const int place = static_cast<int>(random() % (text.size() + 1));
            text.replace(place, static_cast<int>(random() % 4), pieces[random() % std::size(pieces)]);
        }
        return text;
    };
    int accepted = 0;
    for (int i = 0; i < 20000; ++i)
    {
        TOLV_STORED_PEN pen;
        if (TOLV_STORED_PEN::parse(damage(pens[i % 2]), &pen))
        {
            ++accepted;
            EXPECT_TRUE(pen.width >= 0 && pen.width <= 32767 && pen.style <= Qt::DashDotDotLine);
            EXPECT_FALSE(pen.color_name.empty());
        }
        TOLV_STORED_FONT font;
        if (TOLV_STORED_FONT::parse(damage(fonts[i % 2]), &font))
        {
            ++accepted;
            EXPECT_TRUE(font.attributes.point_size > 0 && font.attributes.point_size <= 4096);
            EXPECT_TRUE(font.attributes.style_hint >= 0 && font.attributes.style_hint <= QFont::Fantasy);
            EXPECT_FALSE(font.attributes.family.isEmpty());
            EXPECT_LT(font.text_color_name.size(), 1000U);
            EXPECT_LT(font.background_color_name.size(), 1000U);
        }
    }
    EXPECT_GT(accepted, 1000);
    EXPECT_LT(accepted, 39000);
}

// ---- Regression mode, other processes -------------------------------------------------------------------------------

TEST_F(TOLV_GDI_REGISTRY_TEST, a_regression_test_ignores_what_is_stored_but_saves)
{
    store("Color_version", 11);
    store("Pen_version", 2);
    store("Font_version", 11);
    store(KEYWORD, "#010203");
    store(NET_PEN, "TOLV_RED_COLOR 2 0 0 6 0");
    store(LEGEND, "0 TOLV_RED_COLOR TOLV_RED_COLOR 13 1 0 0 0 0 0, F");
    const SCOPED_ENVIRONMENT_VARIABLE regression_mode("NORVANE_REGTEST", "1");
    restart();
    EXPECT_EQ(KEYWORD_COLOR, manager().get_color(TOLV_TXED_KEYWORD_TEXT_COLOR));
    expect_default_net_pen(manager(), "regression mode");
    expect_default_legend(manager(), "regression mode");
    manager().set_color(TOLV_EMPTY_VIEW_COLOR, QColor(7, 8, 9));
    manager().save_fonts_in_registry();
    manager().save_pens_in_registry();
    EXPECT_EQ("#070809", stored("TOLV_EMPTY_VIEW_COLOR"));
    EXPECT_FALSE(is_stored(KEYWORD));
    EXPECT_EQ("TOLV_FLP_NET_LINE_COLOR 1 16 0 1 4286568079", stored(NET_PEN));
}

TEST_F(TOLV_GDI_REGISTRY_TEST, a_second_process_sees_what_the_first_saved)
{
    CFGQ_REGISTRY::flush();
    const CHILD_RESULT before = run_child("tolv_gdi_child", {"print"});
    EXPECT_EQ("#7fd68f\n1 1 16 #7fd68f " + std::to_string(TOLV_FLP_NET_LINE_COLOR) + "\nKorvex Clear 9 0 0 #dfe6ec\n",
              before.out)
        << before.err;
    const CHILD_RESULT change = run_child("tolv_gdi_child", {"change_and_save"});
    ASSERT_EQ(0, change.exit_status) << change.err;
    const CHILD_RESULT after = run_child("tolv_gdi_child", {"print"});
    EXPECT_EQ("#112233\n5 1 16 #7fb2f0 " + std::to_string(TOLV_FLP_REGION_LINE_COLOR) + "\nGröße Sans 13 1 1 #010203\n",
              after.out)
        << after.err;
    const CHILD_RESULT regression = run_child("tolv_gdi_child", {"print"}, {{"NORVANE_REGTEST", "1"}});
    EXPECT_EQ(before.out, regression.out);
}
