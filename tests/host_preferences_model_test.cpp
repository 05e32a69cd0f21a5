#include "preferences_model.h"
#include "preferences_names.h"
#include "preferences_session.h"
#include "tolv_contrast.h"

#include "cfgq_registry.h"
#include "gui_test.h"
#include "tolv_gdi_manager.h"
#include "tolv_gdi_tables.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QIcon>
#include <QPalette>
#include <QSet>
#include <QSignalSpy>

#include <algorithm>

using host_preferences_model = TOLV_GUI_TEST;

namespace
{
using TESTER = QAbstractItemModelTester;

QString read(const char* name)
{
    const PREFERENCES_NAME shown = PREFERENCES_NAME::from_enumerator(QString::fromLatin1(name));
    return shown.group + ": " + shown.title;
}

/// Sets the palette for a scope.
class SCOPED_PALETTE
{
public:
    explicit SCOPED_PALETTE(const QColor& base) : m_before(QApplication::palette())
    {
        QPalette palette = m_before;
        palette.setColor(QPalette::Base, base);
        QApplication::setPalette(palette);
    }

    ~SCOPED_PALETTE()
    {
        QApplication::setPalette(m_before);
    }

private:
    QPalette m_before;
};
} // namespace

// ---- Names ----------------------------------------------------------------------------------------------------------

TEST_F(host_preferences_model, names_are_read_as_a_tool_and_a_title)
{
    EXPECT_EQ("Floorplan: Net line", read("TOLV_FLP_NET_LINE_COLOR"));
    EXPECT_EQ("Floorplan: I/O bank fill", read("TOLV_FLP_IO_BANK_FILL_COLOR"));
    EXPECT_EQ("RTL viewer: Bidirectional port fill", read("TOLV_RTLV_BIDIR_PORT_FILL_COLOR"));
    EXPECT_EQ("Netlist viewer: Don't touch fill", read("TOLV_NLV_DONT_TOUCH_FILL_COLOR"));
    EXPECT_EQ("Progress bar: In progress text", read("TOLV_PROG_BAR_IN_PROGRESS_TEXT_COLOR"));
    EXPECT_EQ("Messages: Highlighted keyword background", read("TOLV_MSW_HIGHLIGHT_KEYWORD_BG_COLOR"));
    EXPECT_EQ("Messages: Text", read("TOLV_MSG_TEXT_FONT"));
    EXPECT_EQ("General: Windows, bold", read("TOLV_GUI_BOLD_FONT"));
    EXPECT_EQ("General: Background", read("TOLV_GENERAL_BACKGROUND_COLOR"));
    EXPECT_EQ("Floorplan: Drop outline", read("TOLV_FLP_DROP_OUTLINE_PEN"));
    EXPECT_EQ("Other: Flpx net line", read("TOLV_FLPX_NET_LINE_COLOR"));
    EXPECT_EQ("Other: ", read(""));
}

TEST_F(host_preferences_model, every_row_has_a_known_tool_and_a_title_of_its_own)
{
    PREFERENCES_SESSION session;
    const PREFERENCES_TABLE* const tables[] = {&session.get_colors(), &session.get_fonts(), &session.get_pens()};
    for (const PREFERENCES_TABLE* table : tables)
    {
        QSet<QString> seen;
        for (const PREFERENCES_TABLE::ROW& row : table->get_rows())
        {
            EXPECT_NE("Other", row.group) << row.name.toStdString();
            EXPECT_NE("", row.title) << row.name.toStdString();
            const QString shown = row.group + "/" + row.title;
            EXPECT_FALSE(seen.contains(shown)) << shown.toStdString();
            seen.insert(shown);
        }
    }
}

TEST_F(host_preferences_model, rows_are_those_that_may_be_changed)
{
    PREFERENCES_SESSION session;
    const auto colors = tolv_get_initial_colors();
    const auto can_change = [](const auto& row) { return row.can_change; };
    EXPECT_EQ(std::count_if(colors.begin(), colors.end(), can_change), session.get_colors().get_rows().size());
    const auto fonts = tolv_get_initial_fonts();
    EXPECT_EQ(std::count_if(fonts.begin(), fonts.end(), can_change), session.get_fonts().get_rows().size());
    for (const PREFERENCES_TABLE::ROW& row : session.get_colors().get_rows())
        EXPECT_TRUE(TOLV_COLOR::can_change_default_color(static_cast<TOLV_COLOR_RESOURCE>(row.resource)));
    for (const PREFERENCES_TABLE::ROW& row : session.get_pens().get_rows())
        EXPECT_TRUE(TOLV_COLOR::can_change_default_color(
            TOLV_PEN(static_cast<TOLV_PEN_RESOURCE>(row.resource)).get_color().get_color_resource()));
    EXPECT_NE(nullptr, session.get_pens().find_row(TOLV_FLP_NET_PEN));
    EXPECT_EQ(nullptr, session.get_pens().find_row(TOLV_BLACK_PEN));
}

// ---- Models ---------------------------------------------------------------------------------------------------------

TEST_F(host_preferences_model, models_keep_the_rules_while_values_and_searches_change)
{
    PREFERENCES_SESSION session;
    PREFERENCES_TABLE* const tables[] = {&session.get_colors(), &session.get_fonts(), &session.get_pens()};
    for (PREFERENCES_TABLE* table : tables)
    {
        PREFERENCES_MODEL model(session, *table);
        PREFERENCES_FILTER filter;
        filter.setSourceModel(&model);
        const TESTER tester(&model, TESTER::FailureReportingMode::Warning);
        const TESTER filter_tester(&filter, TESTER::FailureReportingMode::Warning);
        for (const char* text : {"net", "nothing like this", "floor line", ""})
        {
            filter.set_search(QString::fromLatin1(text));
            session.set_color(TOLV_FLP_NET_LINE_COLOR, QColor(text[0], 2, 3));
        }
        session.reset(*table, model.get_resources());
        session.restore();
    }
}

TEST_F(host_preferences_model, a_change_is_told_for_the_row_and_its_tool)
{
    PREFERENCES_SESSION session;
    PREFERENCES_MODEL model(session, session.get_colors());
    const QModelIndex row = model.find_resource(TOLV_FLP_NET_LINE_COLOR);
    ASSERT_TRUE(row.isValid());
    EXPECT_EQ("Net line", row.data());
    EXPECT_EQ("Floorplan", row.parent().data());
    const auto state = [&row](bool of_group)
    { return (of_group ? row.parent() : row).sibling(of_group ? row.parent().row() : row.row(), 2).data().toString(); };
    EXPECT_EQ("", state(false));
    QSignalSpy spy(&model, SIGNAL(dataChanged(QModelIndex, QModelIndex, QVector<int>)));
    session.set_color(TOLV_FLP_NET_LINE_COLOR, QColor(1, 2, 3));
    EXPECT_GT(spy.count(), 0);
    EXPECT_EQ("not saved", state(false));
    EXPECT_EQ("1 not saved", state(true));
    EXPECT_EQ("#010203", row.sibling(row.row(), 1).data());
    EXPECT_TRUE(session.save());
    EXPECT_EQ("changed", state(false));
    EXPECT_EQ("1 changed", state(true));
    session.reset(session.get_colors(), {TOLV_FLP_NET_LINE_COLOR});
    EXPECT_EQ("not saved", state(false));
    EXPECT_TRUE(session.save());
    EXPECT_EQ("", state(false));
    EXPECT_EQ("", state(true));
}

TEST_F(host_preferences_model, a_sample_has_the_colour_also_in_a_chosen_row)
{
    PREFERENCES_SESSION session;
    session.set_color(TOLV_FLP_NET_LINE_COLOR, QColor(1, 2, 3));
    const QIcon icon = session.get_colors().get_icon(TOLV_FLP_NET_LINE_COLOR, QSize(20, 10));
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Selected})
        EXPECT_EQ(QColor(1, 2, 3), QColor(icon.pixmap(QSize(20, 10), mode).toImage().pixel(10, 5)));
    session.restore();
}

TEST_F(host_preferences_model, a_colour_that_fonts_share_counts_as_one_change_and_shows_in_each)
{
    PREFERENCES_SESSION session;
    TOLV_FONT font(TOLV_FLP_REGION_NAME_FONT);
    font.set_background_color(QColor(1, 2, 3));
    session.set_font(TOLV_FLP_REGION_NAME_FONT, font);
    EXPECT_EQ(1, session.count_unsaved());
    EXPECT_TRUE(session.get_fonts().is_unsaved(TOLV_FLP_REGION_NAME_FONT));
    EXPECT_TRUE(session.get_fonts().is_unsaved(TOLV_FLP_BANK_NAME_FONT));
    EXPECT_TRUE(session.get_fonts().is_changed(TOLV_FLP_BANK_NAME_FONT));
    EXPECT_FALSE(session.get_fonts().is_unsaved(TOLV_FLP_LEGEND_FONT));
    session.restore();
    EXPECT_EQ(0, session.count_unsaved());
}

TEST_F(host_preferences_model, alpha_does_not_come_into_force)
{
    PREFERENCES_SESSION session;
    session.set_color(TOLV_FLP_NET_LINE_COLOR, QColor(1, 2, 3, 50));
    EXPECT_EQ(QColor(1, 2, 3), TOLV_COLOR(TOLV_FLP_NET_LINE_COLOR).get_color());
    session.restore();
}

// ---- Colours that can be read ---------------------------------------------------------------------------------------

TEST_F(host_preferences_model, contrast_is_that_of_light_and_dark)
{
    EXPECT_NEAR(21, tolv_get_contrast(Qt::black, Qt::white), 0.01);
    EXPECT_NEAR(1, tolv_get_contrast(Qt::red, Qt::red), 0.01);
    EXPECT_NEAR(4.0, tolv_get_contrast(Qt::white, Qt::red), 0.01);
    EXPECT_EQ(QColor(Qt::black), tolv_get_contrast_color(Qt::yellow));
    EXPECT_EQ(QColor(Qt::white), tolv_get_contrast_color(Qt::blue));
}

TEST_F(host_preferences_model, built_in_text_colours_are_lighter_on_a_dark_ground_and_chosen_ones_stay)
{
    const TOLV_COLOR warning(TOLV_MSW_WARNING_COLOR);
    {
        const SCOPED_PALETTE light(Qt::white);
        EXPECT_EQ(warning.get_color(), tolv_get_readable_color(TOLV_MSW_WARNING_COLOR));
    }
    const QColor ground(30, 30, 30);
    const SCOPED_PALETTE dark(ground);
    const QColor shown = tolv_get_readable_color(TOLV_MSW_WARNING_COLOR);
    EXPECT_LT(tolv_get_contrast(warning.get_color(), ground), 2);
    EXPECT_GE(tolv_get_contrast(shown, ground), 4.5);
    EXPECT_EQ(warning.get_color().hslHue(), shown.hslHue());
    TOLV_COLOR::set_default_color(TOLV_MSW_WARNING_COLOR, QColor(0, 0, 100));
    EXPECT_EQ(QColor(0, 0, 100), tolv_get_readable_color(TOLV_MSW_WARNING_COLOR));
    TOLV_COLOR::reset_colors({TOLV_MSW_WARNING_COLOR});
}
