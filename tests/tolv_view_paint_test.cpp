#include "gui_driver.h"
#include "gui_test.h"
#include "picture.h"
#include "recording_paint_device.h"
#include "tolv_view.h"

#include <QLabel>
#include <QPaintEvent>
#include <QPainter>
#include <QPrinter>
#include <QPropertyAnimation>

namespace
{
/// Draws one rectangle, and remembers what it was called with.
class DRAWING_VIEW : public TOLV_VIEW
{
public:
    int count = 0;
    QRect last_rect;
    QWidget* last_widget = nullptr;
    bool last_printing = true;
    QRect last_event_rect;

    void paint(QPainter* painter, QPaintEvent* event, QWidget* widget, QRect rect, bool printing) override
    {
        ++count;
        last_rect = rect;
        last_widget = widget;
        last_printing = printing;
        last_event_rect = event->rect();
        painter->fillRect(QRect(12, 23, 4, 5), Qt::red);
    }
};

class TOLV_VIEW_PAINT_TEST : public TOLV_GUI_TEST
{
};

/// A view of 1000 by 1000 pixels, with a rectangle located in it.
class TOLV_VIEW_LOCATE_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        view = std::make_unique<TOLV_VIEW>();
        view->resize(1000, 1000);
    }
    void TearDown() override
    {
        view.reset();
        TOLV_GUI_TEST::TearDown();
    }

    void locate(const QRect& rect, int duration = 400)
    {
        view->animate_selection_rect(rect, Qt::green, duration);
    }
    QLabel* label() const
    {
        return view->findChild<QLabel*>();
    }
    QPropertyAnimation* animation() const
    {
        return view->findChild<QPropertyAnimation*>();
    }

    std::unique_ptr<TOLV_VIEW> view;
};
} // namespace

// ---- On the screen --------------------------------------------------------------------------------------------------

TEST_F(TOLV_VIEW_PAINT_TEST, the_view_draws_itself_in_logical_coordinates)
{
    DRAWING_VIEW view;
    view.resize(120, 90);
    view.set_logical_size(QRect(10, 20, 30, 20));
    view.set_zoom(3.0F); // 90 by 60, in the middle: margins 15
    const QImage picture = render_widget(&view);
    EXPECT_EQ(QRect(15 + 2 * 3, 15 + 3 * 3, 12, 15), find_color_rect(picture, Qt::red));
    EXPECT_EQ(1, view.count);
    EXPECT_EQ(&view, view.last_widget);
    EXPECT_EQ(QRect(0, 0, 120, 90), view.last_rect);
    EXPECT_FALSE(view.last_printing);
    EXPECT_EQ(QRect(0, 0, 120, 90), view.last_event_rect);
}

TEST_F(TOLV_VIEW_PAINT_TEST, a_part_that_is_painted_anew_is_told_by_the_event_and_the_whole_by_the_rectangle)
{
    DRAWING_VIEW view;
    view.resize(120, 90);
    ASSERT_TRUE(GUI_DRIVER::show(&view));
    ASSERT_TRUE(GUI_DRIVER::wait_for([&] { return view.count > 0; }));
    GUI_DRIVER::process_posted();
    view.count = 0;
    view.repaint(10, 20, 30, 40);
    EXPECT_EQ(1, view.count);
    EXPECT_EQ(QRect(0, 0, 120, 90), view.last_rect);
    EXPECT_EQ(QRect(10, 20, 30, 40), view.last_event_rect);
}

TEST_F(TOLV_VIEW_PAINT_TEST, a_dense_screen_shows_the_same_at_more_pixels)
{
    DRAWING_VIEW view;
    view.resize(120, 90);
    view.set_logical_size(QRect(10, 20, 30, 20));
    view.set_zoom(3.0F);
    EXPECT_EQ(QRect(42, 48, 24, 30), find_color_rect(render_widget(&view, 2.0), Qt::red));
}

TEST_F(TOLV_VIEW_PAINT_TEST, a_view_of_no_size_paints_nothing)
{
    DRAWING_VIEW view;
    view.set_logical_size(QRect(0, 0, 0, 0));
    view.resize(0, 0);
    view.show();
    QCoreApplication::processEvents();
    EXPECT_EQ(0, view.count);
}

TEST_F(TOLV_VIEW_PAINT_TEST, a_painter_adjusted_to_the_view_has_its_transform_and_no_other)
{
    TOLV_VIEW view;
    view.resize(10, 10);
    view.set_logical_size(QRect(10, 20, 100, 100));
    view.set_zoom(2.0F);
    RECORDING_PAINT_DEVICE device;
    QPainter painter(&device);
    painter.translate(77, 88);
    view.adjust_painter(&painter);
    EXPECT_EQ(QTransform(2, 0, 0, 2, -20, -40), painter.transform());
}

TEST_F(TOLV_VIEW_PAINT_TEST, a_stretch_in_physical_coordinates_leaves_the_painter_as_it_was)
{
    RECORDING_PAINT_DEVICE device;
    QPainter painter(&device);
    const QTransform transform(2, 0, 0, 2, 5, 6);
    painter.setTransform(transform);
    painter.setPen(Qt::blue);
    {
        const TOLV_VIEW::TOLV_PHYSICAL_DRAWING_HANDLE handle(&painter);
        EXPECT_TRUE(painter.transform().isIdentity());
        painter.setPen(Qt::red);
        painter.drawRect(1, 2, 3, 4);
    }
    EXPECT_EQ(transform, painter.transform());
    EXPECT_EQ(QColor(Qt::blue), painter.pen().color());
    painter.end();
    const auto commands = device.find(QStringLiteral("rect"));
    ASSERT_EQ(1, commands.size());
    EXPECT_TRUE(commands.at(0).transform.isIdentity());
}

// ---- On paper -------------------------------------------------------------------------------------------------------

TEST_F(TOLV_VIEW_PAINT_TEST, a_page_takes_all_content_into_its_printable_part)
{
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setResolution(72);
    printer.setPageLayout(QPageLayout(QPageSize(QSizeF(720, 360), QPageSize::Point), QPageLayout::Portrait,
                                      QMarginsF(36, 18, 36, 18), QPageLayout::Point));
    ASSERT_EQ(QRect(36, 18, 648, 324), printer.pageLayout().paintRectPixels(72));
    RECORDING_PAINT_DEVICE device;
    QPainter painter(&device);
    painter.translate(1, 1);

    TOLV_VIEW view;
    view.set_logical_size(QRect(10, 20, 99, 53));
    view.adjust_painter(&painter, &printer); // the lesser of 648 / 100 and 324 / 54; (36 - 10) * 6, (18 - 20) * 6
    EXPECT_EQ(QTransform(6, 0, 0, 6, 156, -12), painter.transform());

    view.set_logical_size(QRect(0, 0, 323, 10)); // 648 / 324 and 324 / 11; the margin is scaled, too
    view.adjust_painter(&painter, &printer);
    EXPECT_EQ(QTransform(2, 0, 0, 2, 72, 36), painter.transform());
}

TEST_F(TOLV_VIEW_PAINT_TEST, the_resolution_of_the_printer_counts)
{
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setPageLayout(QPageLayout(QPageSize(QSizeF(720, 360), QPageSize::Point), QPageLayout::Portrait,
                                      QMarginsF(0, 0, 0, 0), QPageLayout::Point));
    printer.setResolution(144); // 1440 by 720
    RECORDING_PAINT_DEVICE device;
    QPainter painter(&device);
    TOLV_VIEW view;
    view.set_logical_size(QRect(0, 0, 143, 71));
    view.adjust_painter(&painter, &printer);
    EXPECT_EQ(QTransform(10, 0, 0, 10, 0, 0), painter.transform());
}

// ---- Locating -------------------------------------------------------------------------------------------------------

TEST_F(TOLV_VIEW_LOCATE_TEST, the_label_is_made_at_the_first_use_and_kept)
{
    EXPECT_EQ(nullptr, label());
    EXPECT_EQ(nullptr, animation());
    locate(QRect(100, 100, 60, 60));
    ASSERT_NE(nullptr, label());
    const QLabel* const first = label();
    EXPECT_EQ(QStringLiteral("Hid"), label()->text());
    EXPECT_EQ(QFrame::Box, label()->frameStyle());
    EXPECT_TRUE(label()->autoFillBackground());
    ASSERT_NE(nullptr, animation());
    EXPECT_EQ(label(), animation()->targetObject());
    EXPECT_EQ(QByteArray("geometry"), animation()->propertyName());
    EXPECT_EQ(view.get(), animation()->parent());
    locate(QRect(200, 100, 60, 60));
    EXPECT_EQ(1, view->findChildren<QLabel*>().size());
    EXPECT_EQ(first, label());
    EXPECT_EQ(1, view->findChildren<QPropertyAnimation*>().size());
}

TEST_F(TOLV_VIEW_LOCATE_TEST, the_label_is_all_of_the_colour)
{
    locate(QRect(100, 100, 60, 60));
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
    {
        for (const auto role : {label()->backgroundRole(), label()->foregroundRole()})
        {
            EXPECT_EQ(QColor(Qt::green), label()->palette().brush(group, role).color());
            EXPECT_EQ(Qt::SolidPattern, label()->palette().brush(group, role).style());
        }
    }
    animation()->pause();
    const QImage picture = render_widget(view.get());
    EXPECT_EQ(QRect(100, 100, 60, 60), find_color_rect(picture, Qt::green));
    EXPECT_EQ(60 * 60, count_pixels(picture, Qt::green));
}

TEST_F(TOLV_VIEW_LOCATE_TEST, a_thin_rectangle_grows_by_what_its_lesser_side_lacks)
{
    locate(QRect(100, 300, 5, 200)); // 45 on each side
    EXPECT_EQ(QRect(55, 255, 95, 290), animation()->startValue().toRect());
    EXPECT_EQ(QRect(102, 399, 0, 0), animation()->endValue().toRect()); // (55 + 149) / 2, (255 + 544) / 2
    EXPECT_TRUE(label()->isVisibleTo(view.get()));
}

TEST_F(TOLV_VIEW_LOCATE_TEST, a_span_of_48_grows_and_one_of_49_does_not)
{
    locate(QRect(10, 10, 49, 60));
    EXPECT_EQ(QRect(9, 9, 51, 62), animation()->startValue().toRect());
    locate(QRect(10, 10, 60, 49));
    EXPECT_EQ(QRect(9, 9, 62, 51), animation()->startValue().toRect());
    locate(QRect(10, 10, 50, 60));
    EXPECT_EQ(QRect(10, 10, 50, 60), animation()->startValue().toRect());
}

TEST_F(TOLV_VIEW_LOCATE_TEST, a_tenth_of_the_visible_part_in_both_directions_needs_no_label)
{
    view->resize(1009, 1009); // integer tenths: 100
    locate(QRect(300, 300, 100, 100));
    ASSERT_NE(nullptr, label());
    EXPECT_TRUE(label()->isHidden());
    EXPECT_EQ(QAbstractAnimation::Running, animation()->state());
    EXPECT_EQ(QRect(300, 300, 100, 100), animation()->startValue().toRect());
    locate(QRect(300, 300, 99, 100));
    EXPECT_FALSE(label()->isHidden());
    locate(QRect(300, 300, 100, 100));
    EXPECT_TRUE(label()->isHidden());
    locate(QRect(300, 300, 100, 99));
    EXPECT_FALSE(label()->isHidden());
}

TEST_F(TOLV_VIEW_LOCATE_TEST, the_label_shrinks_to_the_centre_within_the_time)
{
    locate(QRect(100, 100, 60, 80), 500);
    EXPECT_EQ(500, animation()->duration());
    EXPECT_EQ(QAbstractAnimation::Running, animation()->state());
    EXPECT_EQ(QRect(100, 100, 60, 80), label()->geometry());
    animation()->setCurrentTime(500);
    EXPECT_EQ(QRect(129, 139, 0, 0), label()->geometry());
    EXPECT_EQ(QAbstractAnimation::Stopped, animation()->state());
    GUI_DRIVER::process_posted();
    EXPECT_NE(nullptr, animation()); // kept when stopped
}

TEST_F(TOLV_VIEW_LOCATE_TEST, another_rectangle_begins_anew)
{
    locate(QRect(100, 100, 60, 60), 500);
    animation()->setCurrentTime(250);
    locate(QRect(500, 500, 70, 70), 300);
    EXPECT_EQ(QRect(500, 500, 70, 70), label()->geometry());
    EXPECT_EQ(0, animation()->currentTime());
    EXPECT_EQ(300, animation()->duration());
}

TEST_F(TOLV_VIEW_LOCATE_TEST, stopping_hides_the_label)
{
    view->on_stop_animation_rect(); // nothing to stop
    EXPECT_EQ(nullptr, label());
    locate(QRect(100, 100, 60, 60));
    view->on_stop_animation_rect();
    EXPECT_EQ(QAbstractAnimation::Stopped, animation()->state());
    EXPECT_TRUE(label()->isHidden());
}

TEST_F(TOLV_VIEW_LOCATE_TEST, no_time_and_an_empty_rectangle_are_survived)
{
    locate(QRect(), 0);
    locate(QRect(100, 100, 60, 60), -5);
    EXPECT_EQ(0, animation()->duration());
}
