#include "gui_test.h"
#include "internal_error_trap.h"
#include "tolv_view.h"

#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>

#include <cmath>
#include <limits>

namespace
{
/// A view whose visible part a test sets.
class FRAMED_VIEW : public TOLV_VIEW
{
public:
    QRect visible;
    QRect get_viewport_rect() const override
    {
        return visible;
    }
};

class EXPOSED_VIEW : public TOLV_VIEW
{
public:
    using TOLV_VIEW::m_base_transform;
};

class TOLV_VIEW_TEST : public TOLV_GUI_TEST
{
};
} // namespace

// ---- Construction and defaults --------------------------------------------------------------------------------------

TEST_F(TOLV_VIEW_TEST, a_new_view_holds_one_logical_unit_at_zoom_one)
{
    const TOLV_VIEW view;
    EXPECT_EQ(1.0F, view.get_zoom());
    EXPECT_EQ(0.001F, view.get_zoom_min());
    EXPECT_EQ(16777215.0F, view.get_zoom_max());
    EXPECT_EQ(1.0F, view.get_zoom_scaling());
    EXPECT_EQ(QRect(0, 0, 1, 1), view.get_logical_rect());
    EXPECT_FALSE(view.is_magnifying());
    EXPECT_EQ(QRect(), view.get_magnifying_rect());
    EXPECT_TRUE(view.get_transform().isIdentity());
}

TEST_F(TOLV_VIEW_TEST, what_a_host_does_not_override_does_nothing)
{
    TOLV_VIEW view;
    view.paint(nullptr, nullptr, nullptr, QRect(), false);
    view.paint_birds_eye_view(nullptr, nullptr, nullptr, QRect());
    view.do_rect_selection(QRect(), QPoint());
    view.selection_mode_no_mouse_gesture(nullptr);
    EXPECT_EQ(QRect(), view.get_selected_rect());
    EXPECT_FALSE(view.get_selected_rect().isValid());
    EXPECT_TRUE(view.is_rect_selection_enabled());
    EXPECT_FALSE(view.current_mode_supports_mouse_gesture(QPoint()));
}

// ---- Limits ---------------------------------------------------------------------------------------------------------

TEST_F(TOLV_VIEW_TEST, the_widget_never_outgrows_the_largest_widget)
{
    TOLV_VIEW view;
    view.set_logical_size(QRect(0, 0, 1000, 2000)); // 16777215 / 2000 = 8388
    EXPECT_EQ(8388.0F, view.get_zoom_max());
    view.set_max(8389.0F);
    EXPECT_EQ(8388.0F, view.get_zoom_max());
    view.set_max(8387.5F);
    EXPECT_EQ(8387.5F, view.get_zoom_max());
    view.set_logical_size(QRect(0, 0, 300, 7)); // 16777215 / 300 = 55924
    view.set_max(60000.0F);
    EXPECT_EQ(55924.0F, view.get_zoom_max());
}

TEST_F(TOLV_VIEW_TEST, a_maximum_once_lowered_does_not_rise_again)
{
    TOLV_VIEW view;
    view.set_logical_size(QRect(0, 0, 2000, 1000));
    view.set_logical_size(QRect(0, 0, 10, 10));
    EXPECT_EQ(8388.0F, view.get_zoom_max());
}

TEST_F(TOLV_VIEW_TEST, an_extent_beyond_the_largest_widget_limits_nothing)
{
    TOLV_VIEW view;
    view.set_logical_size(QRect(0, 0, 16777216, 10));
    view.set_max(5.0F);
    EXPECT_EQ(5.0F, view.get_zoom_max());
    view.set_zoom(4.0F);
    EXPECT_EQ(QSize(16777214, 40), view.minimumSize()); // without a warning of Qt, to whom one more means none
    EXPECT_EQ(4.0, view.get_transform().m11());
}

TEST_F(TOLV_VIEW_TEST, an_extent_of_nothing_allows_the_largest_zoom)
{
    TOLV_VIEW view;
    view.set_logical_size(QRect(0, 0, 0, 0));
    view.set_max(std::numeric_limits<float>::max());
    EXPECT_EQ(16777215.0F, view.get_zoom_max());
    view.zoom_fit(QSize(100, 100));
    EXPECT_EQ(16777215.0F, view.get_zoom());
    EXPECT_EQ(QSize(0, 0), view.minimumSize());
}

TEST_F(TOLV_VIEW_TEST, a_rectangle_inside_out_is_survived)
{
    TOLV_VIEW view;
    view.set_logical_size(QRect(QPoint(10, 10), QPoint(-10, -10)));
    view.set_zoom(3.0F);
    view.zoom_fit(QSize(100, 100));
    EXPECT_EQ(view.get_zoom_min(), view.get_zoom());
    EXPECT_EQ(QSize(0, 0), view.minimumSize());
}

TEST_F(TOLV_VIEW_TEST, the_limits_are_above_zero)
{
    TOLV_VIEW view;
    EXPECT_INTERNAL_ERROR(view.set_min(0.0F), "min > 0.0f");
    EXPECT_INTERNAL_ERROR(view.set_min(-1.0F), "min > 0.0f");
    EXPECT_INTERNAL_ERROR(view.set_max(0.0F), "max > 0.0f");
    EXPECT_INTERNAL_ERROR(view.set_zoom_min_max(1.0F, -1.0F), "max > 0.0f");
    EXPECT_INTERNAL_ERROR(view.set_zoom_scaling(0.0F), "zoom_scaling > 0.0f");
    EXPECT_INTERNAL_ERROR(view.set_zoom(0.0F), "factor > 0.0f");
    EXPECT_INTERNAL_ERROR(view.zoom_in(0.0F), "delta > 0.0f");
    EXPECT_INTERNAL_ERROR(view.zoom_out(0.0F), "delta > 0.0f");
    EXPECT_INTERNAL_ERROR(view.zoom_out(-2.0F), "delta > 0.0f");
    EXPECT_INTERNAL_ERROR(view.zoom_in(std::nanf("")), "delta > 0.0f");
    EXPECT_EQ(16777215.0F, view.get_zoom_max());
    EXPECT_EQ(1.0F, view.get_zoom());
}

TEST_F(TOLV_VIEW_TEST, limits_of_the_user_are_multiplied_by_the_scaling)
{
    TOLV_VIEW view;
    view.set_zoom_scaling(4.0F);
    view.set_zoom_min_max(0.5F, 8.0F);
    EXPECT_EQ(2.0F, view.get_zoom_min());
    EXPECT_EQ(32.0F, view.get_zoom_max());
}

TEST_F(TOLV_VIEW_TEST, a_scaling_of_two_doubles_the_limits_and_halves_the_level)
{
    TOLV_VIEW view;
    view.set_min(0.25F);
    view.set_max(8.0F);
    view.set_zoom_scaling(2.0F);
    EXPECT_EQ(0.5F, view.get_zoom_min());
    EXPECT_EQ(16.0F, view.get_zoom_max());
    EXPECT_EQ(1.0F, view.get_zoom());
    EXPECT_EQ(0.5F, view.get_zoom_level());
    view.set_zoom_scaling(1.0F); // in relation to the scaling of before
    EXPECT_EQ(0.25F, view.get_zoom_min());
    EXPECT_EQ(8.0F, view.get_zoom_max());
}

// ---- Zoom -----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_VIEW_TEST, a_zoom_outside_of_the_limits_becomes_the_limit)
{
    TOLV_VIEW view;
    view.set_min(0.5F);
    view.set_max(4.0F);
    EXPECT_EQ(4.0F, view.set_zoom_internal(4.5F));
    EXPECT_EQ(4.0F, view.get_zoom());
    EXPECT_EQ(0.5F, view.set_zoom_internal(0.25F));
    EXPECT_EQ(3.0F, view.set_zoom_internal(3.0F));
    view.set_min(8.0F); // above the maximum: the minimum counts
    EXPECT_EQ(8.0F, view.set_zoom_internal(6.0F));
    EXPECT_EQ(1.0, view.get_transform().m11()); // the transform waits for update_transform()
}

TEST_F(TOLV_VIEW_TEST, zooming_returns_the_ratio_that_was_really_applied)
{
    TOLV_VIEW view;
    view.set_min(0.5F);
    view.set_max(4.0F);
    EXPECT_EQ(1.25F, view.zoom_in());
    EXPECT_EQ(1.25F, view.get_zoom());
    EXPECT_EQ(1.25F, view.zoom_out());
    EXPECT_EQ(1.0F, view.get_zoom());
    EXPECT_EQ(3.0F, view.zoom_in(3.0F));
    EXPECT_EQ(float(4.0F / 3.0F), view.zoom_in(3.0F));
    EXPECT_EQ(4.0F, view.get_zoom());
    view.set_zoom(1.0F);
    EXPECT_EQ(2.0F, view.zoom_out(16.0F));
    EXPECT_EQ(0.5F, view.get_zoom());
    EXPECT_EQ(1.0F, view.zoom_out(16.0F));
}

TEST_F(TOLV_VIEW_TEST, a_step_at_the_maximum_changes_nothing)
{
    TOLV_VIEW view;
    view.set_logical_size(QRect(5, 5, 100, 100));
    view.set_max(2.0F);
    view.set_zoom(2.0F);
    const QTransform before = view.get_transform();
    EXPECT_EQ(1.0F, view.zoom_in(1.25F));
    EXPECT_EQ(before, view.get_transform());
    EXPECT_EQ(2.0F, view.get_zoom());
}

TEST_F(TOLV_VIEW_TEST, zooming_out_goes_through_the_overridden_zooming_in)
{
    class COUNTING_VIEW : public TOLV_VIEW
    {
    public:
        float last_delta = 0.0F;
        float zoom_in(float delta) override
        {
            last_delta = delta;
            return 0.5F;
        }
    };
    COUNTING_VIEW view;
    EXPECT_EQ(2.0F, view.zoom_out(4.0F));
    EXPECT_EQ(0.25F, view.last_delta);
}

TEST_F(TOLV_VIEW_TEST, setting_the_zoom_counts_in_levels_and_fitting_does_not)
{
    TOLV_VIEW view;
    view.set_logical_size(QRect(0, 0, 100, 50));
    view.set_zoom_scaling(4.0F);
    view.set_zoom(0.5F);
    EXPECT_EQ(2.0F, view.get_zoom());
    view.zoom_fit(QSize(301, 201)); // the lesser of 300 / 100 and 200 / 50
    EXPECT_EQ(3.0F, view.get_zoom());
    EXPECT_EQ(3.0, view.get_transform().m11());
    view.zoom_fit(QSize(501, 126)); // of 5 and 125 / 50
    EXPECT_EQ(2.5F, view.get_zoom());
}

TEST_F(TOLV_VIEW_TEST, a_size_of_nothing_fits_at_the_minimum)
{
    TOLV_VIEW view;
    view.set_logical_size(QRect(0, 0, 100, 50));
    view.zoom_fit(QSize(0, 0));
    EXPECT_EQ(view.get_zoom_min(), view.get_zoom());
    view.zoom_fit(QSize(1, 100));
    EXPECT_EQ(view.get_zoom_min(), view.get_zoom());
}

TEST_F(TOLV_VIEW_TEST, a_new_logical_size_is_told_to_the_overview)
{
    TOLV_VIEW view;
    const QSignalSpy told(&view, SIGNAL(update_birds_eye_view_size()));
    view.set_logical_size(QRect(0, 0, 100, 50));
    EXPECT_EQ(1, told.count());
    EXPECT_EQ(QRect(0, 0, 100, 50), view.get_logical_rect());
    EXPECT_EQ(QSize(100, 50), view.minimumSize());
}

// ---- Transform ------------------------------------------------------------------------------------------------------

TEST_F(TOLV_VIEW_TEST, the_extents_in_pixels_are_cut_off)
{
    FRAMED_VIEW view;
    view.set_logical_size(QRect(0, 0, 55, 7));
    view.set_zoom(0.3F); // 16.5 and 2.1
    EXPECT_EQ(QSize(16, 2), view.minimumSize());
    view.set_zoom(1.99F); // 109.45 and 13.93
    EXPECT_EQ(QSize(109, 13), view.minimumSize());
}

TEST_F(TOLV_VIEW_TEST, the_origin_is_cut_off_towards_zero)
{
    FRAMED_VIEW view;
    view.visible = QRect(0, 0, 10, 10);
    view.set_logical_size(QRect(-5, 7, 1000, 1000));
    view.set_zoom(0.5F); // -2.5 and 3.5
    EXPECT_EQ(QTransform(0.5, 0, 0, 0.5, 2, -3), view.get_transform());
}

TEST_F(TOLV_VIEW_TEST, content_that_is_narrower_than_the_visible_part_is_centred)
{
    FRAMED_VIEW view;
    view.visible = QRect(0, 0, 200, 101);
    view.set_logical_size(QRect(10, 20, 50, 30));
    view.set_zoom(2.0F); // 100 by 60: margins (200 - 100) / 2 = 50 and 41 / 2 = 20
    EXPECT_EQ(QTransform(2, 0, 0, 2, 50 - 20, 20 - 40), view.get_transform());
    EXPECT_EQ(QPoint(50, 20), view.get_physical(QPoint(10, 20)));
    view.visible = QRect(0, 0, 101, 61); // as wide as 100 is "not above" 100; half of the one pixel is none
    view.update_transform();
    EXPECT_EQ(QTransform(2, 0, 0, 2, -20, -40), view.get_transform());
}

TEST_F(TOLV_VIEW_TEST, content_is_centred_in_each_direction_by_itself)
{
    FRAMED_VIEW view;
    view.visible = QRect(0, 0, 200, 61); // width 200 is above 199, height 61 not above 60
    view.set_logical_size(QRect(0, 0, 200, 20));
    EXPECT_EQ(QTransform(1, 0, 0, 1, 0, 20), view.get_transform()); // 41 / 2
}

TEST_F(TOLV_VIEW_TEST, the_base_transform_comes_before_the_zoom)
{
    EXPOSED_VIEW view;
    view.resize(10, 10);
    view.set_logical_size(QRect(0, 0, 100, 100));
    view.m_base_transform = QTransform(1, 0, 0, -1, 0, 100); // upside down
    view.set_zoom(2.0F);
    EXPECT_EQ(QPoint(20, 180), view.get_physical(QPoint(10, 10)));
    EXPECT_EQ(QPoint(10, 10), view.get_logical(QPoint(20, 180)));
}

TEST_F(TOLV_VIEW_TEST, physical_and_logical_are_each_others_inverse)
{
    FRAMED_VIEW view;
    view.visible = QRect(0, 0, 10, 10);
    view.set_logical_size(QRect(100, 200, 1000, 1000));
    view.set_zoom(4.0F);
    EXPECT_EQ(QPoint(40, 80), view.get_physical(QPoint(110, 220)));
    EXPECT_EQ(QPoint(110, 220), view.get_logical(QPoint(40, 80)));
    EXPECT_EQ(QRect(40, 80, 12, 20), view.get_physical(QRect(110, 220, 3, 5)));
    EXPECT_EQ(QRect(110, 220, 3, 5), view.get_logical(QRect(40, 80, 12, 20)));
    EXPECT_EQ(view.get_inverse_transform(), view.get_transform().inverted());
}

TEST_F(TOLV_VIEW_TEST, a_logical_size_is_cut_off)
{
    TOLV_VIEW view;
    view.set_zoom(4.0F);
    EXPECT_EQ(QSize(2, 1), view.get_logical(QSize(11, 7)));
    EXPECT_EQ(QSize(0, -1), view.get_logical(QSize(3, -7)));
    view.set_zoom(0.1F); // a little more than 0.1: 10 in float, 9.99999985 in double
    EXPECT_EQ(QSize(10, 20), view.get_logical(QSize(1, 2)));
}

TEST_F(TOLV_VIEW_TEST, a_resized_view_centres_anew)
{
    TOLV_VIEW view;
    view.set_logical_size(QRect(0, 0, 100, 100));
    view.resize(200, 300);
    view.show();
    EXPECT_EQ(QTransform(1, 0, 0, 1, 50, 100), view.get_transform());
    view.resize(140, 160);
    EXPECT_EQ(QTransform(1, 0, 0, 1, 20, 30), view.get_transform());
}

TEST_F(TOLV_VIEW_TEST, without_a_scroll_area_the_visible_part_is_the_geometry)
{
    QWidget parent;
    TOLV_VIEW view(&parent);
    view.setGeometry(7, 8, 90, 60);
    EXPECT_EQ(QRect(7, 8, 90, 60), view.get_viewport_rect());
}

TEST_F(TOLV_VIEW_TEST, in_a_scroll_area_the_visible_part_is_the_viewport_without_bars_at_the_values_of_the_bars)
{
    QScrollArea area;
    area.setFrameShape(QFrame::NoFrame);
    area.resize(300, 200);
    auto* const container = new QWidget; // the area need not be the parent
    auto* const view = new TOLV_VIEW(container);
    container->resize(1000, 1000);
    area.setWidget(container);
    area.show();
    area.horizontalScrollBar()->setValue(123);
    area.verticalScrollBar()->setValue(45);
    EXPECT_EQ(QRect(123, 45, 300, 200), view->get_viewport_rect());
}

TEST_F(TOLV_VIEW_TEST, the_smallest_size_of_the_view_reaches_the_scroll_area)
{
    QScrollArea area;
    area.setFrameShape(QFrame::NoFrame);
    area.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area.resize(300, 200);
    auto* const view = new TOLV_VIEW;
    view->set_logical_size(QRect(0, 0, 400, 500));
    area.setWidget(view);
    area.setWidgetResizable(true);
    area.show();
    QCoreApplication::processEvents();
    EXPECT_EQ(100, area.horizontalScrollBar()->maximum());
    EXPECT_EQ(300, area.verticalScrollBar()->maximum());
    view->set_zoom(2.0F);
    QCoreApplication::processEvents();
    EXPECT_EQ(500, area.horizontalScrollBar()->maximum());
    EXPECT_EQ(800, area.verticalScrollBar()->maximum());
    view->set_zoom(0.25F); // 100 by 125: centred, with the bars at 0
    QCoreApplication::processEvents();
    EXPECT_EQ(0, area.horizontalScrollBar()->maximum());
    EXPECT_EQ(QTransform(0.25, 0, 0, 0.25, 100, 37), view->get_transform());
}

// ---- Size to ratio --------------------------------------------------------------------------------------------------

TEST_F(TOLV_VIEW_TEST, a_size_grows_to_a_ratio_of_height_by_width)
{
    const auto adjusted = [](double ratio, QSize size)
    {
        TOLV_VIEW::adjust_size_to_ratio(ratio, size);
        return size;
    };
    EXPECT_EQ(QSize(100, 200), adjusted(2.0, QSize(100, 150)));
    EXPECT_EQ(QSize(100, 200), adjusted(2.0, QSize(100, 200)));
    EXPECT_EQ(QSize(150, 300), adjusted(2.0, QSize(100, 300)));
    EXPECT_EQ(QSize(33, 49), adjusted(1.5, QSize(33, 10)));   // 49.5
    EXPECT_EQ(QSize(67, 101), adjusted(1.5, QSize(10, 101))); // 67.33
    EXPECT_EQ(QSize(66, 100), adjusted(1.5, QSize(10, 100))); // 66.67
    EXPECT_EQ(QSize(16, 10), adjusted(0.6, QSize(5, 10)));    // 16.67
    EXPECT_EQ(QSize(100, 100), adjusted(1.0, QSize(100, 40)));
    EXPECT_EQ(QSize(200, 100), adjusted(0.5, QSize(100, 100)));
    EXPECT_EQ(QSize(200, 100), adjusted(0.5, QSize(200, 100)));
    EXPECT_EQ(QSize(300, 150), adjusted(0.5, QSize(300, 100)));
    EXPECT_EQ(QSize(301, 150), adjusted(0.5, QSize(301, 100))); // 150.5
    EXPECT_EQ(QSize(13, 10), adjusted(0.75, QSize(5, 10)));     // 13.33
}

TEST_F(TOLV_VIEW_TEST, a_ratio_that_is_not_above_zero_leaves_the_size_alone)
{
    for (const double ratio : {0.0, -1.0, std::numeric_limits<double>::quiet_NaN()})
    {
        QSize size(30, 40);
        TOLV_VIEW::adjust_size_to_ratio(ratio, size);
        EXPECT_EQ(QSize(30, 40), size);
    }
}

// ---- End ------------------------------------------------------------------------------------------------------------

TEST_F(TOLV_VIEW_TEST, a_view_tells_of_its_end_while_it_is_one_yet)
{
    auto view = std::make_unique<TOLV_VIEW>();
    view->show();
    bool is_view = false;
    bool is_visible = false;
    QObject::connect(view.get(), &TOLV_VIEW::about_to_be_deleted, view.get(),
                     [&, v = view.get()]
                     {
                         is_view = qobject_cast<TOLV_VIEW*>(static_cast<QObject*>(v)) != nullptr;
                         is_visible = v->isVisible();
                     });
    view.reset();
    EXPECT_TRUE(is_view);
    EXPECT_TRUE(is_visible);
}

TEST_F(TOLV_VIEW_TEST, a_view_that_is_deleted_goes_off_the_screen_while_it_is_one_yet)
{
    class HIDE_WATCH : public QObject
    {
    public:
        int count = 0;
        bool eventFilter(QObject* watched, QEvent* event) override
        {
            count += event->type() == QEvent::Hide && qobject_cast<TOLV_VIEW*>(watched) != nullptr ? 1 : 0;
            return false;
        }
    };
    HIDE_WATCH watch;
    auto view = std::make_unique<TOLV_VIEW>();
    view->show();
    view->installEventFilter(&watch);
    view.reset();
    EXPECT_EQ(1, watch.count);
}
