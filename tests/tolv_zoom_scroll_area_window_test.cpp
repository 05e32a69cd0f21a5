#include "gui_answers.h"
#include "paint_counter.h"
#include "tolv_birds_eye_view.h"
#include "tolv_set_zoom_dlg.h"
#include "tolv_zoom_fixture.h"

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>

namespace
{
/// The bird's eye view of an area, in which it is hidden at first.
class TOLV_ZOOM_SCROLL_AREA_OVERVIEW_TEST : public ZOOM_TEST
{
protected:
    TOLV_ZOOM_SCROLL_AREA_OVERVIEW_TEST()
    {
        has_birds_eye_view = true;
    }
    TOLV_BIRDS_EYE_VIEW* overview() const
    {
        return area->get_birds_eye_view();
    }
};

/// The dialog that asks for a level.
class TOLV_ZOOM_SCROLL_AREA_DIALOG_TEST : public ZOOM_TEST
{
protected:
    /// Opens the dialog, notes what it offers, enters a text and ends it by a key, which leaves the pointer where it is.
    void enter(const QString& text, Qt::Key end = Qt::Key_Return)
    {
        answer_next_dialog(
            [=](QDialog* dialog)
            {
                auto* const box = dialog->findChild<QComboBox*>();
                ASSERT_NE(nullptr, box);
                offered.clear();
                for (int i = 0; i < box->count(); ++i)
                    offered << box->itemText(i);
                shown = box->currentText();
                shown_index = box->currentIndex();
                insert_policy = box->insertPolicy();
                box->lineEdit()->selectAll();
                GUI_DRIVER::type(box->lineEdit(), text);
                GUI_DRIVER::key_click(box->lineEdit(), end);
            });
        action(TOLV_ZOOM_ACTION)->trigger();
    }

    QStringList offered;
    QString shown;
    int shown_index = -1;
    QComboBox::InsertPolicy insert_policy = QComboBox::NoInsert;
};
} // namespace

// ---- Bird's eye view ------------------------------------------------------------------------------------------------

TEST_F(TOLV_ZOOM_SCROLL_AREA_OVERVIEW_TEST, the_overview_is_a_hidden_child_at_first)
{
    ASSERT_NE(nullptr, overview());
    EXPECT_EQ(area.get(), overview()->parent());
    EXPECT_TRUE(overview()->isHidden());
    EXPECT_TRUE(action(TOLV_BIRDS_EYE_VIEW_ACTION)->isVisible());
    EXPECT_TRUE(action(TOLV_MAGNIFYING_TOOL_ACTION)->isVisible());
    EXPECT_FALSE(action(TOLV_BIRDS_EYE_VIEW_ACTION)->isChecked());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_OVERVIEW_TEST, the_action_shows_it_and_follows_it)
{
    QAction* const show = action(TOLV_BIRDS_EYE_VIEW_ACTION);
    show->trigger();
    EXPECT_TRUE(overview()->isVisible());
    EXPECT_TRUE(show->isChecked());
    area->hide_birds_eye_view();
    EXPECT_TRUE(overview()->isHidden());
    EXPECT_FALSE(show->isChecked());
    overview()->show();
    EXPECT_TRUE(show->isChecked());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_OVERVIEW_TEST, it_is_painted_anew_with_the_view_whatever_the_tool_is)
{
    action(TOLV_BIRDS_EYE_VIEW_ACTION)->trigger();
    PAINT_COUNTER paints(overview());
    for (const TOLV_ACTION_ENUM tool : {TOLV_COPY_ACTION, TOLV_ZOOM_TOOL_ACTION, TOLV_PAN_TOOL_ACTION})
    {
        if (action(tool) != nullptr)
            action(tool)->setChecked(true);
        GUI_DRIVER::process_posted();
        paints.m_count = 0;
        view->update(QRect(370, 270, 5, 5)); // not covered by the overview
        EXPECT_TRUE(GUI_DRIVER::wait_for([&] { return paints.m_count > 0; })) << tool;
    }
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_OVERVIEW_TEST, at_rest_neither_of_them_is_painted)
{
    action(TOLV_BIRDS_EYE_VIEW_ACTION)->trigger();
    int paints = 0;
    view->draw = [&](QPainter*) { ++paints; };
    view->update();
    EXPECT_TRUE(GUI_DRIVER::wait_for([&] { return paints > 0; }));
    GUI_DRIVER::process_posted();
    paints = 0;
    for (int i = 0; i < 20; ++i)
        GUI_DRIVER::process_posted();
    EXPECT_EQ(0, paints); // the one does not call for the other for ever
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_OVERVIEW_TEST, it_stays_in_its_corner_when_the_area_is_resized)
{
    action(TOLV_BIRDS_EYE_VIEW_ACTION)->trigger();
    area->resize(900, 700);
    GUI_DRIVER::process_posted();
    overview()->do_move_widget_to_right();
    const int margin = area->width() - overview()->geometry().right();
    area->resize(800, 650);
    GUI_DRIVER::process_posted();
    EXPECT_EQ(margin, area->width() - overview()->geometry().right());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_OVERVIEW_TEST, it_takes_the_proportions_of_another_drawing)
{
    area->resize(900, 700);
    action(TOLV_BIRDS_EYE_VIEW_ACTION)->trigger();
    EXPECT_EQ(overview()->get_size(), overview()->size());
    const int height = overview()->height();
    view->set_logical_size(QRect(0, 0, 2000, 1000)); // 300 by 150 in place of 300 by 300
    EXPECT_EQ(height - 150, overview()->height());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_OVERVIEW_TEST, another_view_gets_an_overview_of_its_own_or_none)
{
    const QPointer<TOLV_BIRDS_EYE_VIEW> first(overview());
    action(TOLV_BIRDS_EYE_VIEW_ACTION)->trigger();
    area->set_view(new TOLV_VIEW, true);
    ASSERT_NE(nullptr, overview());
    EXPECT_NE(first, overview());
    EXPECT_TRUE(overview()->isHidden());
    EXPECT_FALSE(action(TOLV_BIRDS_EYE_VIEW_ACTION)->isChecked());
    const QPointer<TOLV_BIRDS_EYE_VIEW> second(overview());
    area->set_view(new TOLV_VIEW, false);
    EXPECT_EQ(nullptr, overview());
    GUI_DRIVER::process_posted();
    EXPECT_EQ(nullptr, first);
    EXPECT_EQ(nullptr, second);
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_OVERVIEW_TEST, it_goes_with_its_view)
{
    action(TOLV_BIRDS_EYE_VIEW_ACTION)->trigger();
    const QPointer<TOLV_BIRDS_EYE_VIEW> gone(overview());
    delete view;
    EXPECT_EQ(nullptr, overview());
    EXPECT_TRUE(gone == nullptr || gone->isHidden());
    area->resize(500, 400);
    GUI_DRIVER::process_posted();
    EXPECT_EQ(nullptr, gone);
    area->hide_birds_eye_view();
    EXPECT_FALSE(action(TOLV_BIRDS_EYE_VIEW_ACTION)->isChecked());
}

// ---- The dialog -----------------------------------------------------------------------------------------------------

TEST_F(TOLV_ZOOM_SCROLL_AREA_DIALOG_TEST, the_dialog_shows_the_level_in_force)
{
    view->set_min(0.125F);
    view->set_max(4.0F);
    enter(QStringLiteral("100.0%"), Qt::Key_Escape);
    EXPECT_EQ((QStringList{QStringLiteral("12.5%"), QStringLiteral("25.0%"), QStringLiteral("50.0%"),
                           QStringLiteral("100.0%"), QStringLiteral("200.0%"), QStringLiteral("400.0%"),
                           QStringLiteral("Fit in Window")}),
              offered);
    EXPECT_EQ(QStringLiteral("100.0%"), shown);
    EXPECT_EQ(3, shown_index);
    EXPECT_EQ(QComboBox::InsertAlphabetically, insert_policy);
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DIALOG_TEST, a_level_that_is_not_in_the_list_comes_at_its_end)
{
    view->set_max(2.0F);
    view->set_min(0.5F);
    view->set_zoom(1.23F);
    enter(QStringLiteral("1"), Qt::Key_Escape);
    EXPECT_EQ((QStringList{QStringLiteral("50.0%"), QStringLiteral("100.0%"), QStringLiteral("200.0%"),
                           QStringLiteral("Fit in Window"), QStringLiteral("123.0%")}),
              offered);
    EXPECT_EQ(QStringLiteral("123.0%"), shown);
    EXPECT_EQ(4, shown_index);
    EXPECT_EQ(QComboBox::InsertAtTop, insert_policy);
    EXPECT_EQ(1.23F, view->get_zoom());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DIALOG_TEST, levels_and_limits_are_those_of_the_user)
{
    view->set_zoom_scaling(2.0F);
    view->set_min(1.0F);
    view->set_max(4.0F);
    view->set_zoom(1.0F); // raw 2
    enter(QStringLiteral("150"));
    EXPECT_EQ((QStringList{QStringLiteral("50.0%"), QStringLiteral("100.0%"), QStringLiteral("200.0%"),
                           QStringLiteral("Fit in Window")}),
              offered);
    EXPECT_FLOAT_EQ(3.0F, view->get_zoom());
    enter(QStringLiteral("99999"));
    EXPECT_FLOAT_EQ(4.0F, view->get_zoom());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DIALOG_TEST, the_level_entered_is_reached_by_a_step_in_or_out)
{
    scroll_to(100, 200);
    enter(QStringLiteral("150%"));
    EXPECT_FLOAT_EQ(1.5F, view->get_zoom());
    EXPECT_EQ(QPoint(435 - 190, 510 - 140), values()); // (290, 340) * 1.5
    GUI_DRIVER::process_posted();
    enter(QStringLiteral("75.0%"));
    EXPECT_FLOAT_EQ(0.75F, view->get_zoom());
    EXPECT_EQ(QPoint(218 - 190, 255 - 140), values()); // (435, 510) / 2, halves up
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DIALOG_TEST, fit_in_window_fits)
{
    answer_next_dialog(
        [](QDialog* dialog)
        {
            auto* const box = dialog->findChild<QComboBox*>();
            box->setCurrentIndex(box->findText(QStringLiteral("Fit in Window")));
            GUI_DRIVER::click(dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok));
        });
    area->open_set_zoom_dlg();
    EXPECT_EQ(0.299F, view->get_zoom());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DIALOG_TEST, the_keyboard_alone_will_do)
{
    answer_next_dialog(
        [](QDialog* dialog)
        {
            // As it comes up: a text typed replaces the one shown.
            ASSERT_TRUE(GUI_DRIVER::wait_for([&] { return dialog->isAncestorOf(QApplication::focusWidget()); }));
            QWidget* const focus = QApplication::focusWidget();
            GUI_DRIVER::type(focus, QStringLiteral("150"));
            GUI_DRIVER::key_click(focus, Qt::Key_Return);
        });
    area->open_set_zoom_dlg();
    EXPECT_FLOAT_EQ(1.5F, view->get_zoom());
    answer_next_dialog(
        [](QDialog* dialog)
        {
            auto* const box = dialog->findChild<QComboBox*>();
            GUI_DRIVER::key_click(box, Qt::Key_Up); // from the 150 percent at the end
            EXPECT_EQ(QStringLiteral("Fit in Window"), box->currentText());
            GUI_DRIVER::key_click(box, Qt::Key_Return);
        });
    area->open_set_zoom_dlg();
    EXPECT_EQ(0.299F, view->get_zoom());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DIALOG_TEST, a_dialog_that_is_cancelled_changes_nothing)
{
    const QSignalSpy levels(area.get(), SIGNAL(zoom_level_changed(float)));
    enter(QStringLiteral("150"), Qt::Key_Escape);
    EXPECT_EQ(1.0F, view->get_zoom());
    EXPECT_EQ(0, levels.count());
    EXPECT_EQ(nullptr, area->findChild<TOLV_SET_ZOOM_DLG*>());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DIALOG_TEST, a_view_that_goes_while_the_dialog_asks_is_not_zoomed)
{
    answer_next_dialog(
        [this](QDialog* dialog)
        {
            delete view;
            GUI_DRIVER::click(dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok));
        });
    area->open_set_zoom_dlg();
    EXPECT_EQ(nullptr, area->get_view());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DIALOG_TEST, an_area_that_goes_while_the_dialog_asks_takes_the_dialog_along)
{
    answer_next_dialog([this](QDialog* /*dialog*/) { area.reset(); });
    action(TOLV_ZOOM_ACTION)->trigger();
    EXPECT_EQ(nullptr, area);
}
