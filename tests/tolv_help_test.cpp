// The hand-over to the help module, and the controls with a question mark.

#include "tolv_help.h"

#include "cfg.h"
#include "child_process.h"
#include "gui_driver.h"
#include "gui_test.h"
#include "internal_error_trap.h"
#include "module_recorder.h"
#include "picture.h"
#include "test_environment.h"
#include "tolv_help_dyn.h"

#include <QApplication>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QProxyStyle>
#include <QRadioButton>
#include <QStyle>

#include <memory>

namespace
{
using LINES = std::vector<std::string>;

const char* const SWITCH = "show_dialog_help_topic";

/// Shows the base class's protected parts.
class OPEN_CHECKBOX : public TOLV_CHECKBOX_WITH_HELP
{
public:
    using TOLV_CHECKBOX_WITH_HELP::m_help_label;
    using TOLV_CHECKBOX_WITH_HELP::m_layout;
};

/// A row whose control is gone.
class EMPTY_ROW : public TOLV_CHECKBOX_WITH_HELP
{
public:
    QWidget* get_help_widget() const override
    {
        return nullptr;
    }
};

/// A style with larger small icons for one widget.
class UNEVEN_STYLE : public QProxyStyle
{
public:
    explicit UNEVEN_STYLE(const QWidget* large) : QProxyStyle(QStringLiteral("Fusion")), m_large(large)
    {
    }
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override
    {
        if (metric == PM_SmallIconSize)
            return widget == m_large ? 33 : 16;
        return QProxyStyle::pixelMetric(metric, option, widget);
    }

private:
    const QWidget* m_large;
};

class TOLV_HELP_TEST : public TOLV_GUI_TEST
{
};
} // namespace

// ---- The module -----------------------------------------------------------------------------------------------------

TEST(TOLV_HELP_DYN, the_module_is_loaded_by_the_first_call_and_stays)
{
    MODULE_RECORDER recorder;
    help_dyn_show_context("pumps");
    help_dyn_show_context("");
    help_dyn_show_context("a topic\twith blanks");
    EXPECT_EQ((LINES{"load help", "topic pumps", "topic ", "topic a topic\twith blanks"}), recorder.take_lines());
}

TEST(TOLV_HELP_DYN, a_module_that_is_loaded_is_not_looked_for_again)
{
    MODULE_RECORDER recorder;
    help_dyn_show_context("");
    const SCOPED_ENVIRONMENT_VARIABLE path("NORVANE_MODULE_PATH", TEST_ENVIRONMENT::get_folder().c_str());
    help_dyn_show_context("fans");
    EXPECT_EQ((LINES{"load help", "topic ", "topic fans"}), recorder.take_lines());
}

TEST(TOLV_HELP_DYN, a_module_that_cannot_be_loaded_is_an_internal_error_each_time)
{
    TEST_ENVIRONMENT::write_file("mod_help.so", "no module");
    const SCOPED_ENVIRONMENT_VARIABLE path("NORVANE_MODULE_PATH", TEST_ENVIRONMENT::get_folder().c_str());
    const TRAPPED_INTERNAL_ERROR error = CATCH_INTERNAL_ERROR(help_dyn_show_context("pumps"));
    EXPECT_EQ(thr_drl_get_error(), error.text);
    EXPECT_EQ("mod_help", thr_drl_get_error_data());
    EXPECT_EQ("TOLV", error.tag);
    EXPECT_INTERNAL_ERROR(help_dyn_show_context("pumps"), thr_drl_get_error());

    MODULE_RECORDER recorder;
    help_dyn_show_context("fans");
    EXPECT_EQ((LINES{"load help", "topic fans"}), recorder.take_lines());
}

TEST(TOLV_HELP_DYN, a_module_without_the_function_is_an_internal_error_each_time)
{
    const HOLLOW_MODULES hollow;
    for (int i = 0; i < 2; ++i)
    {
        const TRAPPED_INTERNAL_ERROR error = CATCH_INTERNAL_ERROR(help_dyn_show_context("pumps"));
        EXPECT_EQ(thr_drl_get_error(), error.text);
        EXPECT_EQ("help_dyn_show_context_impl", thr_drl_get_error_data());
    }
}

// ---- The question mark ----------------------------------------------------------------------------------------------

TEST_F(TOLV_HELP_TEST, the_picture_is_four_fifths_of_a_small_icon)
{
    const TOLV_HELP_LABEL label;
    const int size = label.style()->pixelMetric(QStyle::PM_SmallIconSize) * 8 / 10;
    const QPixmap picture = label.pixmap(Qt::ReturnByValue);
    EXPECT_EQ(QSize(size, size), picture.size());
    const QIcon icon(QStringLiteral(":/icons/svg/tolv_help.svg"));
    expect_same_picture(icon.pixmap(size, size).toImage(), picture.toImage());
    EXPECT_EQ(Qt::AlignLeft | Qt::AlignVCenter, label.alignment());
    EXPECT_EQ(Qt::NoFocus, label.focusPolicy());
}

TEST_F(TOLV_HELP_TEST, the_size_is_the_styles_for_the_parent_and_cut_off)
{
    QWidget window;
    QApplication::setStyle(new UNEVEN_STYLE(&window)); // the application owns it
    const auto* const label = new TOLV_HELP_LABEL(&window);
    EXPECT_EQ(QSize(26, 26), label->pixmap(Qt::ReturnByValue).size()); // 33 times 8 is 264
    const TOLV_HELP_LABEL elsewhere;
    EXPECT_EQ(QSize(12, 12), elsewhere.pixmap(Qt::ReturnByValue).size());
}

TEST_F(TOLV_HELP_TEST, the_picture_is_sharp_on_a_fine_screen)
{
    const CHILD_RESULT result = run_child("tolv_help_child", {}, {{"QT_SCALE_FACTOR", "2"}});
    EXPECT_EQ("12 24 2\n", result.out) << result.err;
    const CHILD_RESULT with_attribute = run_child("tolv_help_child", {"high_dpi"}, {{"QT_SCALE_FACTOR", "2"}});
    EXPECT_EQ("12 24 2\n", with_attribute.out) << with_attribute.err;
}

TEST_F(TOLV_HELP_TEST, the_switch_shows_the_question_mark)
{
    EXPECT_EQ(17, CFG_INI_VAR_SHOW_DIALOG_HELP_TOPIC);
    QWidget window;
    auto* const hidden = new TOLV_HELP_LABEL(&window);
    const SCOPED_CONFIGURATION on(SWITCH, "1");
    auto* const shown = new TOLV_HELP_LABEL(&window);
    ASSERT_TRUE(GUI_DRIVER::show(&window));
    EXPECT_FALSE(hidden->isVisible());
    EXPECT_TRUE(shown->isVisible());
}

TEST_F(TOLV_HELP_TEST, the_question_mark_shows_itself_in_a_window_that_is_on_the_screen)
{
    QWidget window;
    ASSERT_TRUE(GUI_DRIVER::show(&window));
    EXPECT_FALSE((new TOLV_HELP_LABEL(&window))->isVisible());
    const SCOPED_CONFIGURATION on(SWITCH, "1");
    EXPECT_TRUE((new TOLV_HELP_LABEL(&window))->isVisible());
}

TEST_F(TOLV_HELP_TEST, a_hidden_question_mark_keeps_picture_and_tool_tip)
{
    OPEN_CHECKBOX box;
    box.set_help_tooltip("Pumps");
    EXPECT_TRUE(box.m_help_label->isHidden());
    EXPECT_FALSE(box.m_help_label->pixmap(Qt::ReturnByValue).isNull());
    EXPECT_EQ(QStringLiteral("<html>Pumps</html>"), box.m_help_label->toolTip());
}

// ---- The row --------------------------------------------------------------------------------------------------------

TEST_F(TOLV_HELP_TEST, the_base_has_no_control)
{
    TOLV_WIDGET_WITH_HELP base;
    EXPECT_INTERNAL_ERROR(base.get_help_widget(), "Illegal call to get_help_widget, please call the derived classes.");
    EXPECT_INTERNAL_ERROR(base.setup(), "Illegal call to get_help_widget, please call the derived classes.");
}

TEST_F(TOLV_HELP_TEST, control_question_mark_and_a_stretch_stand_in_a_row)
{
    const OPEN_CHECKBOX box;
    ASSERT_EQ(box.layout(), box.m_layout);
    ASSERT_EQ(3, box.m_layout->count());
    EXPECT_EQ(box.m_widget, box.m_layout->itemAt(0)->widget());
    EXPECT_EQ(box.m_help_label, box.m_layout->itemAt(1)->widget());
    EXPECT_NE(nullptr, box.m_layout->itemAt(2)->spacerItem());
    EXPECT_EQ(5, box.m_layout->spacing());
    EXPECT_EQ(QMargins(0, 0, 0, 0), box.m_layout->contentsMargins());
}

TEST_F(TOLV_HELP_TEST, the_question_mark_stands_beside_the_control_however_wide_the_row)
{
    const SCOPED_CONFIGURATION on(SWITCH, "1");
    TOLV_LABEL_WITH_HELP row(QStringLiteral("Pressure"));
    row.resize(400, 40);
    ASSERT_TRUE(GUI_DRIVER::show(&row));
    const auto* const mark =
        GUI_DRIVER::find_widget<TOLV_HELP_LABEL>(&row, [](const TOLV_HELP_LABEL*) { return true; });
    ASSERT_NE(nullptr, mark);
    EXPECT_EQ(row.m_widget->sizeHint().width(), row.m_widget->width());
    EXPECT_EQ(row.m_widget->geometry().right() + 1 + 5, mark->geometry().left());
}

TEST_F(TOLV_HELP_TEST, margins_go_to_the_row)
{
    OPEN_CHECKBOX box;
    box.set_contents_margins(1, 2, 3, 4);
    EXPECT_EQ(QMargins(1, 2, 3, 4), box.m_layout->contentsMargins());
}

TEST_F(TOLV_HELP_TEST, each_text_goes_to_its_place)
{
    OPEN_CHECKBOX box;
    box.set_tooltip(QStringLiteral("short"));
    box.set_help_tooltip("long");
    EXPECT_EQ(QStringLiteral("short"), box.m_widget->toolTip());
    EXPECT_EQ(QStringLiteral("<html>long</html>"), box.m_help_label->toolTip());
    EXPECT_EQ(QString(), box.toolTip());
}

TEST_F(TOLV_HELP_TEST, a_tool_tip_for_no_control_goes_nowhere)
{
    EMPTY_ROW row;
    row.set_tooltip(QStringLiteral("short"));
    EXPECT_EQ(QString(), row.m_widget->toolTip());
    EXPECT_EQ(QString(), row.toolTip());
}

TEST_F(TOLV_HELP_TEST, a_row_whose_layout_was_taken_away_ends_in_order)
{
    auto box = std::make_unique<OPEN_CHECKBOX>();
    delete box->layout();
    box.reset();
    auto base = std::make_unique<TOLV_WIDGET_WITH_HELP>(); // never set up
    base->set_contents_margins(1, 2, 3, 4);
    EXPECT_EQ(QMargins(1, 2, 3, 4), base->layout()->contentsMargins());
    delete base->layout();
    base.reset();
}

TEST_F(TOLV_HELP_TEST, line_ends_become_breaks_and_stay_so)
{
    OPEN_CHECKBOX box;
    box.set_help_tooltip("one\ntwo\n\nfour");
    EXPECT_EQ(QStringLiteral("<html>one<br>two<br><br>four</html>"), box.m_help_label->toolTip());
    EXPECT_EQ("one<br>two<br><br>four", box.get_help_tooltip());
}

TEST_F(TOLV_HELP_TEST, the_first_frame_is_taken_off)
{
    OPEN_CHECKBOX box;
    EXPECT_EQ("", box.get_help_tooltip());
    const std::string text = QStringLiteral("Ger\u00e4t").toLocal8Bit().toStdString();
    box.set_help_tooltip(text);
    EXPECT_EQ(text, box.get_help_tooltip());
    box.set_help_tooltip("a<html>b</html>c");
    EXPECT_EQ("a<html>bc</html>", box.get_help_tooltip());
}

// ---- The controls ---------------------------------------------------------------------------------------------------

TEST_F(TOLV_HELP_TEST, each_class_has_its_control)
{
    const TOLV_CHECKBOX_WITH_HELP box;
    EXPECT_EQ(box.m_widget, box.get_help_widget());
    EXPECT_NE(nullptr, qobject_cast<QCheckBox*>(box.get_help_widget()));
    EXPECT_EQ(&box, box.m_widget->parentWidget());
    const TOLV_RADIOBUTTON_WITH_HELP button;
    EXPECT_EQ(button.m_widget, button.get_help_widget());
    EXPECT_NE(nullptr, qobject_cast<QRadioButton*>(button.get_help_widget()));
    EXPECT_EQ(&button, button.m_widget->parentWidget());
    const TOLV_LABEL_WITH_HELP label(QStringLiteral("Pressure"));
    EXPECT_EQ(label.m_widget, label.get_help_widget());
    EXPECT_EQ(QStringLiteral("Pressure"), label.m_widget->text());
    EXPECT_EQ(&label, label.m_widget->parentWidget());
    const TOLV_LABEL_WITH_HELP empty;
    EXPECT_EQ(QString(), empty.m_widget->text());
}

TEST_F(TOLV_HELP_TEST, a_label_with_a_text_takes_no_focus)
{
    const TOLV_LABEL_WITH_HELP label(QStringLiteral("Pressure"));
    EXPECT_EQ(Qt::NoFocus, label.focusPolicy());
    EXPECT_EQ(Qt::NoFocus, label.m_widget->focusPolicy());
}

TEST_F(TOLV_HELP_TEST, a_control_answers_to_the_mouse)
{
    TOLV_CHECKBOX_WITH_HELP box;
    box.m_widget->setText(QStringLiteral("Pressure"));
    ASSERT_TRUE(GUI_DRIVER::show(&box));
    GUI_DRIVER::click(box.m_widget, QPoint(8, box.m_widget->height() / 2));
    EXPECT_TRUE(box.m_widget->isChecked());
}
