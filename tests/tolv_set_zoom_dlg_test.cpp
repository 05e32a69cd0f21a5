#include "gui_answers.h"
#include "gui_driver.h"
#include "gui_test.h"
#include "tolv_multipage_setup_dlg.h"
#include "tolv_set_zoom_dlg.h"
#include "tolv_view.h"
#include "tolv_zoom_scroll_area.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QVBoxLayout>

#include <limits>
#include <memory>

namespace
{
QStringList get_items(const TOLV_SET_ZOOM_DLG& dialog)
{
    QStringList items;
    for (int i = 0; i < dialog.get_combo_box()->count(); ++i)
        items << dialog.get_combo_box()->itemText(i);
    return items;
}

class TOLV_SET_ZOOM_DLG_TEST : public TOLV_GUI_TEST
{
protected:
    /// What the dialog makes of a text that is typed into its box.
    static float get_zoom_of_typed(const QString& text, float min = 12.5F, float max = 400)
    {
        TOLV_SET_ZOOM_DLG dialog(min, max);
        GUI_DRIVER::show(&dialog);
        dialog.get_combo_box()->lineEdit()->selectAll();
        GUI_DRIVER::type(dialog.get_combo_box()->lineEdit(), text);
        return dialog.get_selected_zoom();
    }
};

/// A scroll area with a view of 100 by 100 units and limits from 12.5 to 400 percent, where 2 is 100 percent.
class TOLV_ZOOM_DIALOG_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        area = std::make_unique<TOLV_ZOOM_SCROLL_AREA>();
        view = new TOLV_VIEW;
        view->set_logical_size(QRect(0, 0, 100, 100));
        view->set_zoom_scaling(2);
        view->set_zoom_min_max(0.125F, 4);
        area->set_view(view, false);
        area->setGeometry(120, 110, 402, 302);
        ASSERT_TRUE(GUI_DRIVER::show(area.get()));
    }
    void TearDown() override
    {
        area.reset();
        TOLV_GUI_TEST::TearDown();
    }

    /// Opens the dialog and lets a function deal with it.
    void run_dialog(const std::function<void(TOLV_SET_ZOOM_DLG*)>& answer)
    {
        answer_next_dialog([&](QDialog* dialog) { answer(static_cast<TOLV_SET_ZOOM_DLG*>(dialog)); });
        area->get_action(TOLV_ZOOM_ACTION)->trigger();
    }

    std::unique_ptr<TOLV_ZOOM_SCROLL_AREA> area;
    TOLV_VIEW* view = nullptr;
};

class TOLV_MULTIPAGE_SETUP_DLG_TEST : public TOLV_GUI_TEST
{
};
} // namespace

// ---- The list -------------------------------------------------------------------------------------------------------

TEST_F(TOLV_SET_ZOOM_DLG_TEST, the_list_doubles_between_the_limits_and_ends_in_fit)
{
    const TOLV_SET_ZOOM_DLG dialog(12.5F, 400);
    EXPECT_EQ(QStringList({"12.5%", "25.0%", "50.0%", "100.0%", "200.0%", "400.0%", "Fit in Window"}),
              get_items(dialog));
    EXPECT_FALSE(dialog.get_combo_box()->itemData(6).isValid());
    EXPECT_EQ(QStringLiteral("12.5%"), dialog.get_current_text());
}

TEST_F(TOLV_SET_ZOOM_DLG_TEST, narrow_limits_leave_100_percent_alone)
{
    EXPECT_EQ(QStringList({"100.0%", "Fit in Window"}), get_items(TOLV_SET_ZOOM_DLG(50.1F, 199.9F)));
    EXPECT_EQ(QStringList({"100.0%", "Fit in Window"}), get_items(TOLV_SET_ZOOM_DLG(150, 160)));
    EXPECT_EQ(QStringList({"50.0%", "100.0%", "200.0%", "Fit in Window"}), get_items(TOLV_SET_ZOOM_DLG(50, 200)));
}

TEST_F(TOLV_SET_ZOOM_DLG_TEST, limits_without_bounds_end_the_list_nevertheless)
{
    const TOLV_SET_ZOOM_DLG dialog(0, std::numeric_limits<float>::infinity());
    EXPECT_EQ(QStringLiteral("Fit in Window"), get_items(dialog).constLast());
    EXPECT_TRUE(get_items(dialog).contains(QStringLiteral("12.5%")));
}

TEST_F(TOLV_SET_ZOOM_DLG_TEST, it_is_built_as_its_form_says)
{
    TOLV_SET_ZOOM_DLG dialog(12.5F, 400);
    EXPECT_EQ(QStringLiteral("Zoom"), dialog.windowTitle());
    EXPECT_EQ(QSize(278, 74), dialog.size());
    EXPECT_EQ(QStringLiteral("Magnification:"), GUI_DRIVER::find_widget<QLabel>(&dialog, "label")->text());
    const auto* const box = GUI_DRIVER::find_widget<QComboBox>(&dialog, "comboBox");
    EXPECT_TRUE(box->isEditable());
    EXPECT_EQ(QComboBox::InsertAlphabetically, box->insertPolicy());
    EXPECT_FALSE(box->duplicatesEnabled());
    const auto* const buttons = GUI_DRIVER::find_widget<QDialogButtonBox>(&dialog, "buttonBox");
    EXPECT_EQ(Qt::Vertical, buttons->orientation());
    EXPECT_EQ(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, buttons->standardButtons());
}

TEST_F(TOLV_SET_ZOOM_DLG_TEST, it_comes_up_as_large_as_it_was_and_with_its_text_selected)
{
    {
        TOLV_SET_ZOOM_DLG dialog(12.5F, 400);
        ASSERT_TRUE(GUI_DRIVER::show(&dialog));
        EXPECT_EQ(QStringLiteral("12.5%"), dialog.get_combo_box()->lineEdit()->selectedText());
        dialog.resize(411, 99);
        dialog.done(QDialog::Rejected);
    }
    TOLV_SET_ZOOM_DLG dialog(12.5F, 400);
    ASSERT_TRUE(GUI_DRIVER::show(&dialog));
    EXPECT_EQ(QSize(411, 99), dialog.size());
}

TEST_F(TOLV_SET_ZOOM_DLG_TEST, ok_accepts_and_cancel_rejects)
{
    TOLV_SET_ZOOM_DLG dialog(12.5F, 400);
    answer_next_dialog(QStringLiteral("OK"));
    EXPECT_EQ(QDialog::Accepted, dialog.exec());
    answer_next_dialog(QStringLiteral("Cancel"));
    EXPECT_EQ(QDialog::Rejected, dialog.exec());
}

// ---- What is typed --------------------------------------------------------------------------------------------------

TEST_F(TOLV_SET_ZOOM_DLG_TEST, a_number_counts_with_and_without_the_sign)
{
    EXPECT_EQ(150.0F, get_zoom_of_typed(QStringLiteral("150")));
    EXPECT_EQ(150.0F, get_zoom_of_typed(QStringLiteral("150%")));
    EXPECT_EQ(33.5F, get_zoom_of_typed(QStringLiteral("33.5%")));
}

TEST_F(TOLV_SET_ZOOM_DLG_TEST, a_number_beyond_a_limit_becomes_the_limit)
{
    EXPECT_EQ(400.0F, get_zoom_of_typed(QStringLiteral("99999")));
    EXPECT_EQ(12.5F, get_zoom_of_typed(QStringLiteral("1")));
}

TEST_F(TOLV_SET_ZOOM_DLG_TEST, the_seventh_digit_and_the_second_decimal_are_refused)
{
    TOLV_SET_ZOOM_DLG dialog(12.5F, 400);
    ASSERT_TRUE(GUI_DRIVER::show(&dialog));
    QLineEdit* const line = dialog.get_combo_box()->lineEdit();
    const std::pair<const char*, const char*> typed_and_kept[] = {
        {"1234567", "123456"}, {"12.34", "12.3"}, {"x1", "1"}, {"50%%", "50%"}, {".5", "5"}, {"-5", "5"}};
    for (const auto& [typed, kept] : typed_and_kept)
    {
        line->selectAll();
        GUI_DRIVER::key_click(line, Qt::Key_Delete);
        GUI_DRIVER::type(line, QString::fromLatin1(typed));
        EXPECT_EQ(QString::fromLatin1(kept), dialog.get_current_text()) << typed;
    }
}

TEST_F(TOLV_SET_ZOOM_DLG_TEST, what_is_no_number_counts_as_100_percent)
{
    TOLV_SET_ZOOM_DLG dialog(12.5F, 400);
    dialog.get_combo_box()->setCurrentIndex(6);
    EXPECT_EQ(QStringLiteral("Fit in Window"), dialog.get_current_text());
    EXPECT_EQ(100.0F, dialog.get_selected_zoom());
    dialog.get_combo_box()->setEditText(QString());
    EXPECT_EQ(100.0F, dialog.get_selected_zoom());
}

// ---- The scroll area's use of it ------------------------------------------------------------------------------------

TEST_F(TOLV_ZOOM_DIALOG_TEST, it_offers_the_levels_of_the_user_and_the_current_one)
{
    view->set_zoom(1);
    run_dialog(
        [&](TOLV_SET_ZOOM_DLG* dialog)
        {
            EXPECT_EQ(QStringList({"12.5%", "25.0%", "50.0%", "100.0%", "200.0%", "400.0%", "Fit in Window"}),
                      get_items(*dialog));
            EXPECT_EQ(QStringLiteral("100.0%"), dialog->get_current_text());
            EXPECT_EQ(QComboBox::InsertAlphabetically, dialog->get_combo_box()->insertPolicy());
            dialog->reject();
        });
    EXPECT_EQ(1.0F, view->get_zoom_level());
}

TEST_F(TOLV_ZOOM_DIALOG_TEST, a_level_in_between_is_added_at_the_end)
{
    view->set_zoom(1.333F);
    run_dialog(
        [&](TOLV_SET_ZOOM_DLG* dialog)
        {
            EXPECT_EQ(QStringLiteral("133.3%"), get_items(*dialog).constLast());
            EXPECT_EQ(8, dialog->get_combo_box()->count());
            EXPECT_EQ(7, dialog->get_combo_box()->currentIndex());
            EXPECT_FALSE(dialog->get_combo_box()->itemData(7).isValid());
            EXPECT_EQ(QComboBox::InsertAtTop, dialog->get_combo_box()->insertPolicy());
            dialog->reject();
        });
}

TEST_F(TOLV_ZOOM_DIALOG_TEST, the_chosen_level_is_set_in_both_directions)
{
    view->set_zoom(1);
    QSignalSpy levels(area.get(), &TOLV_ZOOM_SCROLL_AREA::zoom_level_changed);
    for (const auto& [text, level] : {std::pair("200.0%", 2.0F), std::pair("25.0%", 0.25F), std::pair("9999", 4.0F)})
    {
        run_dialog(
            [&, chosen = QString::fromLatin1(text)](TOLV_SET_ZOOM_DLG* dialog)
            {
                dialog->get_combo_box()->setEditText(chosen);
                GUI_DRIVER::click(dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok));
            });
        EXPECT_FLOAT_EQ(level, view->get_zoom_level());
        EXPECT_FLOAT_EQ(level, levels.constLast().at(0).toFloat());
    }
}

TEST_F(TOLV_ZOOM_DIALOG_TEST, fit_in_window_fits)
{
    run_dialog(
        [&](TOLV_SET_ZOOM_DLG* dialog)
        {
            dialog->get_combo_box()->setCurrentText(QStringLiteral("Fit in Window"));
            dialog->accept();
        });
    EXPECT_FLOAT_EQ(float(area->maximumViewportSize().height() - 1) / 100, view->get_zoom());
}

TEST_F(TOLV_ZOOM_DIALOG_TEST, a_view_that_goes_away_meanwhile_is_left_alone)
{
    run_dialog(
        [&](TOLV_SET_ZOOM_DLG* dialog)
        {
            delete view;
            dialog->accept();
        });
    EXPECT_EQ(nullptr, area->get_view());
}

// ---- Pages ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_MULTIPAGE_SETUP_DLG_TEST, it_asks_for_the_pages_in_each_direction)
{
    TOLV_MULTIPAGE_SETUP_DLG dialog(3, 7);
    EXPECT_EQ(QStringLiteral("Multipage Setup"), dialog.windowTitle());
    QStringList texts;
    const QList<QLabel*> labels = dialog.findChildren<QLabel*>();
    for (const QLabel* const label : labels)
    {
        texts << label->text();
        EXPECT_EQ(texts.size() == 1, label->wordWrap());
    }
    EXPECT_EQ(QStringList({"Specify the number of pages you want to fit this Block Design File for printing.",
                           "Fit to:", "pages wide by", "pages tall"}),
              texts);
    EXPECT_EQ(QString(), dialog.findChild<QGroupBox*>()->title());
    EXPECT_EQ(Qt::Horizontal, dialog.findChild<QDialogButtonBox*>()->orientation());
    EXPECT_EQ(3, dialog.get_pages_wide());
    EXPECT_EQ(7, dialog.get_pages_tall());
    for (const char* const name : {"m_pages_wide", "m_pages_tall"})
    {
        const auto* const box = GUI_DRIVER::find_widget<QSpinBox>(&dialog, QString::fromLatin1(name));
        EXPECT_EQ(1, box->minimum());
        EXPECT_EQ(20, box->maximum());
    }
}

TEST_F(TOLV_MULTIPAGE_SETUP_DLG_TEST, the_sentence_stands_in_one_row)
{
    TOLV_MULTIPAGE_SETUP_DLG dialog(3, 7);
    const auto* const column = qobject_cast<QVBoxLayout*>(dialog.layout());
    ASSERT_NE(nullptr, column);
    ASSERT_EQ(3, column->count());
    EXPECT_NE(nullptr, qobject_cast<QLabel*>(column->itemAt(0)->widget()));
    EXPECT_NE(nullptr, qobject_cast<QDialogButtonBox*>(column->itemAt(2)->widget()));
    const auto* const group = qobject_cast<QGroupBox*>(column->itemAt(1)->widget());
    ASSERT_NE(nullptr, group);
    const auto* const grid = qobject_cast<QGridLayout*>(group->layout());
    ASSERT_NE(nullptr, grid);
    EXPECT_EQ(1, grid->rowCount());
    QStringList sentence;
    for (int i = 0; i < grid->columnCount(); ++i)
    {
        const QWidget* const widget = grid->itemAtPosition(0, i)->widget();
        const auto* const label = qobject_cast<const QLabel*>(widget);
        sentence << (label != nullptr ? label->text() : widget->objectName());
    }
    EXPECT_EQ(QStringList({"Fit to:", "m_pages_wide", "pages wide by", "m_pages_tall", "pages tall"}), sentence);
}

TEST_F(TOLV_MULTIPAGE_SETUP_DLG_TEST, the_keyboard_goes_from_the_first_number_to_the_buttons)
{
    TOLV_MULTIPAGE_SETUP_DLG dialog(3, 7);
    ASSERT_TRUE(GUI_DRIVER::show(&dialog));
    const auto* const buttons = dialog.findChild<QDialogButtonBox*>();
    const auto get_focus_name = [] { return QApplication::focusWidget()->objectName(); };
    EXPECT_EQ(QStringLiteral("m_pages_wide"), get_focus_name());
    GUI_DRIVER::type(&dialog, QStringLiteral("5")); // in place of the 3
    EXPECT_EQ(5, dialog.get_pages_wide());
    GUI_DRIVER::key_click(&dialog, Qt::Key_Tab);
    EXPECT_EQ(QStringLiteral("m_pages_tall"), get_focus_name());
    GUI_DRIVER::key_click(&dialog, Qt::Key_Tab);
    EXPECT_TRUE(buttons->isAncestorOf(QApplication::focusWidget()));
    GUI_DRIVER::key_click(&dialog, Qt::Key_Tab);
    EXPECT_TRUE(buttons->isAncestorOf(QApplication::focusWidget()));
    GUI_DRIVER::key_click(&dialog, Qt::Key_Tab);
    EXPECT_EQ(QStringLiteral("m_pages_wide"), get_focus_name());
}

TEST_F(TOLV_MULTIPAGE_SETUP_DLG_TEST, numbers_out_of_range_show_as_the_nearest)
{
    const TOLV_MULTIPAGE_SETUP_DLG dialog(21, 0);
    EXPECT_EQ(20, dialog.get_pages_wide());
    EXPECT_EQ(1, dialog.get_pages_tall());
}

TEST_F(TOLV_MULTIPAGE_SETUP_DLG_TEST, what_is_typed_is_told_after_ok)
{
    TOLV_MULTIPAGE_SETUP_DLG dialog(1, 1);
    answer_next_dialog(
        [&](QDialog* shown)
        {
            auto* const wide = GUI_DRIVER::find_widget<QSpinBox>(shown, QStringLiteral("m_pages_wide"));
            GUI_DRIVER::key_click(wide, Qt::Key_Up);
            GUI_DRIVER::key_click(wide, Qt::Key_Up);
            GUI_DRIVER::click(shown->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok));
        });
    EXPECT_EQ(QDialog::Accepted, dialog.exec());
    EXPECT_EQ(3, dialog.get_pages_wide());
    EXPECT_EQ(1, dialog.get_pages_tall());
    answer_next_dialog(QStringLiteral("Cancel"));
    EXPECT_EQ(QDialog::Rejected, dialog.exec());
}
