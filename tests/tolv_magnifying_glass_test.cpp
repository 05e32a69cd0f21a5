#include "internal_error_trap.h"
#include "picture.h"
#include "tolv_magnifying_glass_widget.h"
#include "tolv_zoom_overlay_fixture.h"

#include <QApplication>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace
{
class TOLV_MAGNIFYING_GLASS_TEST : public TOLV_ZOOM_OVERLAY_TEST
{
protected:
    void SetUp() override
    {
        TOLV_ZOOM_OVERLAY_TEST::SetUp();
        TOLV_MAGNIFYING_GLASS_WIDGET::s_size_factor = 2.0;
        TOLV_MAGNIFYING_GLASS_WIDGET::s_scale_factor = 3.0;
        begin_magnifying();
    }

    void begin_magnifying()
    {
        view->on_press = [this](QMouseEvent* event)
        { TOLV_MAGNIFYING_GLASS_WIDGET::magnifying(area.get(), view, event->globalPos()); };
    }

    /// Presses at a point of the scroll area and releases after a step.
    void magnify(const QPoint& point, const std::function<void()>& step)
    {
        run_to_the_end({view->mapFrom(area.get(), point)}, Qt::LeftButton,
                       [&]
                       {
                           step();
                           GUI_DRIVER::release(area.get(), point);
                       });
        EXPECT_FALSE(view->is_busy);
        EXPECT_EQ(nullptr, get_glass());
    }

    /// The picture of the scroll area with the lens at a point.
    QImage take_picture(const QPoint& point, int ratio = 1)
    {
        QImage picture;
        magnify(point, [&] { picture = render_widget(area.get(), ratio); });
        return picture;
    }

    /// The view draws a red rectangle, logical.
    void draw_red(const QRect& rect)
    {
        view->on_paint = [rect](QPainter* painter) { painter->fillRect(rect, Qt::red); };
    }

    /// What a painter of the glass begins with.
    QPen get_handle_pen() const
    {
        return QPen(area->palette().color(QPalette::WindowText));
    }

    TOLV_MAGNIFYING_GLASS_WIDGET* get_glass() const
    {
        return area->findChild<TOLV_MAGNIFYING_GLASS_WIDGET*>();
    }

    /// Within the lens colours are seen through the tint of its rim: 63 of 255 parts (150, 150, 200).
    static QColor get_tinted(const QColor& color)
    {
        return {(color.red() * 192 + 150 * 63) / 255, (color.green() * 192 + 150 * 63) / 255,
                (color.blue() * 192 + 200 * 63) / 255};
    }
};

const QColor RED(255, 0, 0);
constexpr QPoint CENTRE(250, 200);
} // namespace

// ---- Place and size -------------------------------------------------------------------------------------------------

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, the_first_lens_has_a_radius_of_100_and_a_power_of_3)
{
    EXPECT_EQ(2.0, TOLV_MAGNIFYING_GLASS_WIDGET::s_size_factor);
    EXPECT_EQ(3.0, TOLV_MAGNIFYING_GLASS_WIDGET::s_scale_factor);
    magnify(CENTRE,
            [&]
            {
                ASSERT_NE(nullptr, get_glass());
                EXPECT_EQ(area.get(), get_glass()->parentWidget());
                EXPECT_TRUE(get_glass()->isVisible());
                EXPECT_TRUE(get_glass()->hasMouseTracking());
                EXPECT_EQ(Qt::StrongFocus, get_glass()->focusPolicy());
                EXPECT_EQ(QRect(150, 100, 300, 300), get_glass()->geometry());
            });
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, the_box_reaches_one_radius_further_than_the_lens)
{
    EXPECT_EQ(QRect(150, 100, 300, 300), TOLV_MAGNIFYING_GLASS_WIDGET::get_bounding_box(CENTRE, 100, 0));
    EXPECT_EQ(QRect(140, 90, 330, 330), TOLV_MAGNIFYING_GLASS_WIDGET::get_bounding_box(CENTRE, 100, 10));
    // Halves away from zero: -39.5, 20.5 and 151.5.
    EXPECT_EQ(QRect(-40, 21, 152, 152), TOLV_MAGNIFYING_GLASS_WIDGET::get_bounding_box(QPointF(11, 71), 50.5, 0));
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, the_lens_follows_the_pointer_with_the_left_button)
{
    magnify(CENTRE,
            [&]
            {
                GUI_DRIVER::move_to(area.get(), QPoint(120, 140));
                EXPECT_EQ(QRect(20, 40, 300, 300), get_glass()->geometry());
                QMouseEvent rounded(QEvent::MouseMove, QPointF(), QPointF(),
                                    QPointF(area->mapToGlobal(QPoint(0, 0))) + QPointF(200.5, 200.4), Qt::NoButton,
                                    Qt::LeftButton, Qt::NoModifier);
                QApplication::sendEvent(view, &rounded);
                EXPECT_EQ(QRect(101, 100, 300, 300), get_glass()->geometry());
            });
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, a_move_without_exactly_the_left_button_changes_nothing)
{
    magnify(
        CENTRE,
        [&]
        {
            for (const Qt::MouseButtons buttons :
                 {Qt::MouseButtons(Qt::NoButton), Qt::MouseButtons(Qt::RightButton), Qt::LeftButton | Qt::RightButton})
            {
                QMouseEvent event(QEvent::MouseMove, QPointF(10, 10), view->mapToGlobal(QPoint(10, 10)), Qt::NoButton,
                                  buttons, Qt::NoModifier);
                QApplication::sendEvent(view, &event);
                EXPECT_EQ(QRect(150, 100, 300, 300), get_glass()->geometry());
            }
        });
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, a_press_counts_as_a_move)
{
    magnify(CENTRE,
            [&]
            {
                QMouseEvent event(QEvent::MouseButtonPress, QPointF(200, 150), view->mapToGlobal(QPoint(200, 150)),
                                  Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
                QApplication::sendEvent(view, &event);
                EXPECT_EQ(QRect(100, 50, 300, 300), get_glass()->geometry());
            });
}

// ---- Wheel ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, the_wheel_changes_the_power_by_one_down_to_one)
{
    magnify(CENTRE,
            [&]
            {
                const auto turn = [&](int delta)
                {
                    GUI_DRIVER::wheel(area.get(), CENTRE, QPoint(0, delta));
                    return TOLV_MAGNIFYING_GLASS_WIDGET::s_scale_factor;
                };
                EXPECT_EQ(4.0, turn(120));
                EXPECT_EQ(5.0, turn(1));
                EXPECT_EQ(4.0, turn(0)); // not up is down
                EXPECT_EQ(3.0, turn(-120));
                EXPECT_EQ(2.0, turn(-1));
                EXPECT_EQ(1.0, turn(-120));
                EXPECT_EQ(1.0, turn(-120));
                for (int i = 0; i < 50; ++i)
                    turn(120);
                EXPECT_EQ(51.0, TOLV_MAGNIFYING_GLASS_WIDGET::s_scale_factor);
                EXPECT_EQ(2.0, TOLV_MAGNIFYING_GLASS_WIDGET::s_size_factor);
                EXPECT_EQ(QRect(150, 100, 300, 300), get_glass()->geometry());
            });
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, the_wheel_with_control_changes_the_size_from_50_to_250_pixels)
{
    magnify(CENTRE,
            [&]
            {
                const auto turn = [&](int delta)
                {
                    GUI_DRIVER::wheel(area.get(), CENTRE, QPoint(0, delta), Qt::ControlModifier);
                    return get_glass()->geometry();
                };
                EXPECT_EQ(QRect(100, 50, 450, 450), turn(120));
                EXPECT_EQ(QRect(50, 0, 600, 600), turn(120));
                EXPECT_EQ(QRect(0, -50, 750, 750), turn(120));
                EXPECT_EQ(QRect(0, -50, 750, 750), turn(120));
                EXPECT_EQ(5.0, TOLV_MAGNIFYING_GLASS_WIDGET::s_size_factor);
                for (int i = 0; i < 4; ++i)
                    turn(-120);
                EXPECT_EQ(QRect(200, 150, 150, 150), get_glass()->geometry());
                EXPECT_EQ(QRect(200, 150, 150, 150), turn(-120));
                EXPECT_EQ(1.0, TOLV_MAGNIFYING_GLASS_WIDGET::s_size_factor);
                EXPECT_EQ(3.0, TOLV_MAGNIFYING_GLASS_WIDGET::s_scale_factor);
            });
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, the_next_lens_has_the_last_size_and_power)
{
    magnify(CENTRE,
            [&]
            {
                GUI_DRIVER::wheel(area.get(), CENTRE, QPoint(0, 120), Qt::ControlModifier);
                GUI_DRIVER::wheel(area.get(), CENTRE, QPoint(0, 120));
            });
    magnify(CENTRE, [&] { EXPECT_EQ(QRect(100, 50, 450, 450), get_glass()->geometry()); });
    EXPECT_EQ(4.0, TOLV_MAGNIFYING_GLASS_WIDGET::s_scale_factor);
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, neither_wheel_nor_buttons_nor_moves_reach_the_view)
{
    magnify(CENTRE,
            [&]
            {
                view->seen.clear();
                GUI_DRIVER::wheel(area.get(), CENTRE, QPoint(0, 120));
                QWheelEvent direct(QPointF(10, 10), view->mapToGlobal(QPoint(10, 10)), QPoint(), QPoint(0, 120),
                                   Qt::LeftButton, Qt::NoModifier, Qt::NoScrollPhase, false);
                direct.ignore();
                QApplication::sendEvent(view, &direct);
                EXPECT_TRUE(direct.isAccepted());
                EXPECT_EQ(5.0, TOLV_MAGNIFYING_GLASS_WIDGET::s_scale_factor);
                GUI_DRIVER::move_to(area.get(), QPoint(120, 140));
                for (const QEvent::Type type : {QEvent::Wheel, QEvent::MouseMove, QEvent::MouseButtonPress})
                    EXPECT_FALSE(view->seen.contains(type)) << type;
                QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
                QApplication::sendEvent(view, &key);
                EXPECT_TRUE(view->seen.contains(QEvent::KeyPress)); // all else does
            });
    EXPECT_FALSE(view->seen.contains(QEvent::MouseButtonRelease));
}

// ---- What the lens shows --------------------------------------------------------------------------------------------

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, the_middle_of_the_lens_shows_what_is_under_the_pointer_three_times_as_large)
{
    draw_red(QRect(250, 195, 10, 10));
    for (const int ratio : {1, 2})
    {
        SCOPED_TRACE(ratio);
        const QImage picture = take_picture(CENTRE, ratio);
        // Columns 250 to 260 become 250 to 280, rows 195 to 205 become 185 to 215.
        EXPECT_EQ(QRect(250 * ratio, 185 * ratio, 30 * ratio, 30 * ratio),
                  find_color_rect(picture, get_tinted(RED), 2));
        EXPECT_EQ(0, count_pixels(picture, RED)); // not seen in its own size
        EXPECT_TRUE(is_same_color(get_tinted(Qt::white), picture.pixelColor(240 * ratio, 200 * ratio), 2));
    }
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, nothing_is_seen_through_a_view_that_paints_no_ground)
{
    QPalette palette = view->palette();
    palette.setColor(QPalette::Window, QColor(200, 220, 240));
    view->setPalette(palette);
    draw_red(QRect(280, 200, 4, 4)); // at 340 to 352 in the lens, near its edge
    const QImage picture = take_picture(CENTRE);
    EXPECT_EQ(0, count_pixels(picture, get_tinted(RED), 2, QRect(270, 190, 30, 30)));
    EXPECT_TRUE(is_same_color(get_tinted(QColor(200, 220, 240)), picture.pixelColor(282, 202), 2));
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, the_power_counts_on_top_of_the_zoom_of_the_view)
{
    view->set_zoom_internal(2.0F);
    view->update_transform();
    GUI_DRIVER::process_posted();
    draw_red(QRect(125, 100, 5, 5)); // physical 250 to 260, 200 to 210
    EXPECT_EQ(QRect(250, 200, 30, 30), find_color_rect(take_picture(CENTRE), get_tinted(RED), 2));
    TOLV_MAGNIFYING_GLASS_WIDGET::s_scale_factor = 1.0;
    EXPECT_EQ(QRect(250, 200, 10, 10), find_color_rect(take_picture(CENTRE), get_tinted(RED), 2));
    TOLV_MAGNIFYING_GLASS_WIDGET::s_scale_factor = 5.0;
    EXPECT_EQ(QRect(250, 200, 50, 50), find_color_rect(take_picture(CENTRE), get_tinted(RED), 2));
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, a_scrolled_drawing_shows_what_is_under_the_pointer)
{
    view->set_logical_size(QRect(0, 0, 1500, 1200));
    GUI_DRIVER::process_posted();
    area->horizontalScrollBar()->setValue(300);
    area->verticalScrollBar()->setValue(170);
    ASSERT_EQ(QPoint(-300, -170), view->pos());
    draw_red(QRect(550, 370, 10, 10)); // at (250, 200) of the scroll area
    EXPECT_EQ(QRect(250, 200, 30, 30), find_color_rect(take_picture(CENTRE), get_tinted(RED), 2));
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, a_drawing_that_does_not_begin_at_zero_shows_what_is_under_the_pointer)
{
    view->set_logical_size(QRect(1000, -2000, 500, 400));
    GUI_DRIVER::process_posted();
    draw_red(QRect(1250, -1800, 10, 10));
    EXPECT_EQ(QRect(250, 200, 30, 30), find_color_rect(take_picture(CENTRE), get_tinted(RED), 2));
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, a_drawing_smaller_than_the_scroll_area_shows_what_is_under_the_pointer)
{
    view->set_logical_size(QRect(0, 0, 100, 100)); // centred, from column 200 and row 150 on
    GUI_DRIVER::process_posted();
    draw_red(QRect(50, 50, 10, 10));
    EXPECT_EQ(QRect(250, 200, 30, 30), find_color_rect(take_picture(CENTRE), get_tinted(RED), 2));
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, the_lens_is_round_with_a_dark_rim_and_a_handle)
{
    for (const int ratio : {1, 2})
    {
        SCOPED_TRACE(ratio);
        const QImage picture = take_picture(CENTRE, ratio);
        const auto get_color = [&](double x, double y) { return picture.pixelColor(int(x * ratio), int(y * ratio)); };
        for (const QPoint& way : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, -1)})
        {
            const auto at = [&](double distance)
            { return get_color(250 + way.x() * distance, 200 + way.y() * distance); };
            EXPECT_TRUE(is_same_color(get_tinted(Qt::white), at(88), 2)); // even up to nine tenths
            // Black with alpha 127 over white at nineteen twentieths.
            EXPECT_NEAR(128, at(95).red(), 14);
            EXPECT_EQ(QColor(Qt::white), at(103));
        }
        // From the rim at 1.7 radii on, downwards to the right, the handle reaches to 2.8 radii from the box's corner.
        int dark = 0;
        for (int i = 185; i < 270; ++i)
            dark += get_color(150 + i, 100 + i) != QColor(Qt::white) ? 1 : 0;
        EXPECT_GT(dark, 60);
        EXPECT_EQ(QColor(Qt::white), get_color(150 + 20, 100 + 280)); // no handle to the left
        EXPECT_EQ(QColor(Qt::white), get_color(150 + 295, 100 + 295));
    }
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, the_handle_grows_with_the_lens)
{
    // Across the handle, at right angles to it, as far behind the rim as the radius is long.
    const auto get_width = [&](double size_factor)
    {
        TOLV_MAGNIFYING_GLASS_WIDGET::s_size_factor = size_factor;
        const QImage picture = take_picture(CENTRE);
        const QPoint middle = CENTRE + QPoint(1, 1) * int(60 * size_factor);
        int first = 100;
        int last = -100;
        for (int i = -25; i <= 25; ++i)
        {
            if (picture.pixelColor(middle + QPoint(i, -i)) == QColor(Qt::white))
                continue;
            first = std::min(first, i);
            last = std::max(last, i);
        }
        EXPECT_NEAR(0, first + last, 1); // in the middle
        return last - first + 1;
    };
    EXPECT_NEAR(7, get_width(1.0), 1);  // a fifth of 50: 10 pixels are 7 steps along a diagonal
    EXPECT_NEAR(14, get_width(2.0), 1); // 20 pixels
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, the_outline_of_the_lens_is_smooth)
{
    const QImage picture = take_picture(CENTRE);
    int between = 0;
    for (int y = 0; y <= 200; ++y)
        for (int x = 0; x <= 100; ++x) // the left half, without the handle
        {
            const double distance = std::hypot(x - 100, y - 100);
            const int lightness = picture.pixelColor(150 + x, 100 + y).lightness();
            between += distance > 98.5 && distance < 102 && lightness > 40 && lightness < 200 ? 1 : 0;
        }
    EXPECT_GT(between, 200); // of some 314 pixels of the outline
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, the_handle_is_hatched_in_gray)
{
    const QImage picture = take_picture(CENTRE);
    int gray = 0;
    int white = 0;
    for (int along = 90; along < 160; ++along) // behind the rim, in front of the round end
        for (int across = -4; across <= 4; ++across)
        {
            const QColor color = picture.pixelColor(CENTRE + QPoint(along + across, along - across));
            gray += is_same_color(Qt::gray, color) ? 1 : 0;
            white += is_same_color(Qt::white, color) ? 1 : 0;
        }
    EXPECT_EQ(70 * 9, gray + white);
    EXPECT_GT(gray, 6 * white); // seven eighths are covered
    EXPECT_GT(white, 20);
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, the_handle_lies_slanting_behind_the_lens)
{
    view->setAutoFillBackground(false);
    for (const double size : {1.0, 1.1, 2.0, 5.0}) // at 1.1 the handle has an odd width
    {
        SCOPED_TRACE(size);
        TOLV_MAGNIFYING_GLASS_WIDGET::s_size_factor = size;
        QImage picture;
        magnify(CENTRE, [&] { picture = render_widget(get_glass()); });
        const int radius = qRound(50 * size);
        QImage expected(picture.size(), picture.format());
        expected.fill(area->palette().color(QPalette::Window));
        QPainter painter(&expected);
        painter.setPen(get_handle_pen());
        painter.setBrush(QBrush(QColor(160, 160, 164), Qt::Dense2Pattern));
        painter.rotate(-45);
        painter.translate(-radius, radius);
        const int width = radius / 5;
        painter.drawRoundedRect(QRect(radius - width / 2, radius, width, 2 * radius), 15, 15, Qt::AbsoluteSize);
        painter.end();
        const auto get_outside = [&](QImage image)
        {
            QPainter eraser(&image);
            eraser.setCompositionMode(QPainter::CompositionMode_Clear);
            eraser.setBrush(Qt::black);
            eraser.drawEllipse(-2, -2, 2 * radius + 4, 2 * radius + 4);
            eraser.end();
            return image;
        };
        EXPECT_TRUE(expect_same_picture(get_outside(expected), get_outside(picture)));
    }
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, on_a_dark_palette_the_ground_of_the_lens_is_dark_and_its_outline_light)
{
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(45, 45, 45));
    palette.setColor(QPalette::WindowText, Qt::white);
    area->setPalette(palette);
    view->setPalette(palette);
    draw_red(QRect(250, 195, 10, 10));
    for (const int ratio : {1, 2})
    {
        SCOPED_TRACE(ratio);
        const QImage picture = take_picture(CENTRE, ratio);
        const auto get_color = [&](int x, int y) { return picture.pixelColor(x * ratio, y * ratio); };
        EXPECT_TRUE(is_same_color(get_tinted(QColor(45, 45, 45)), get_color(220, 200), 2));
        EXPECT_TRUE(is_same_color(get_tinted(RED), get_color(260, 200), 2));
        EXPECT_GT(get_color(250, 100).lightness(), 100) << "the outline at the top of the lens";
        EXPECT_LT(get_color(250, 105).lightness(), 45) << "the dark rim inside of it";
        EXPECT_EQ(QColor(45, 45, 45), get_color(250, 96));
    }
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, the_view_is_told_that_it_paints_for_the_lens)
{
    bool is_told = false;
    view->on_paint = [&](QPainter*)
    {
        if (!view->is_magnifying())
            return;
        is_told = true;
        EXPECT_EQ(QRect(0, 0, 300, 300), view->get_magnifying_rect());
    };
    magnify(CENTRE,
            [&]
            {
                get_glass()->repaint();
                EXPECT_FALSE(view->is_magnifying());
                EXPECT_EQ(QRect(), view->get_magnifying_rect());
            });
    EXPECT_TRUE(is_told);
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, what_is_under_the_pointer_is_reckoned_in_float)
{
    view->set_zoom_internal(0.3F);
    view->update_transform();
    GUI_DRIVER::process_posted();
    QTransform transform;
    view->on_paint = [&](QPainter* painter)
    {
        if (view->is_magnifying())
            transform = painter->transform();
    };
    magnify(CENTRE, [&] { get_glass()->repaint(); });
    const QPoint origin = view->get_logical(QPoint(0, 0));
    const double scale = double(0.3F) * 3.0;
    QTransform expected;
    expected.scale(scale, scale);
    expected.translate(-(double(250.0F / 0.3F + float(origin.x())) - 100 / scale),
                       -(double(200.0F / 0.3F + float(origin.y())) - 100 / scale));
    EXPECT_DOUBLE_EQ(expected.dx(), transform.dx());
    EXPECT_DOUBLE_EQ(expected.dy(), transform.dy());
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, the_paint_of_the_lens_has_its_own_transform_and_arguments)
{
    QTransform transform;
    view->on_paint = [&](QPainter* painter)
    {
        if (view->is_magnifying())
            transform = painter->transform();
    };
    magnify(CENTRE, [&] { get_glass()->repaint(); });
    // In the middle of the lens, at (100, 100), stands the logical point (250, 200).
    EXPECT_EQ(QTransform(3, 0, 0, 3, 100 - 750, 100 - 600), transform);
    EXPECT_EQ(view, view->lens_widget);
    EXPECT_EQ(QRect(0, 0, 300, 300), view->lens_rect);
    EXPECT_FALSE(view->lens_flag);
}

// ---- The end --------------------------------------------------------------------------------------------------------

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, the_cursor_is_a_cross_during_and_the_magnifier_after)
{
    magnify(CENTRE, [&] { EXPECT_EQ(Qt::CrossCursor, view->cursor().shape()); });
    EXPECT_TRUE(has_cursor(TOLV_MAGNIFYING_CURSOR));
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, the_release_of_any_button_ends_it)
{
    run_to_the_end({CENTRE}, Qt::LeftButton, [&] { send_release(CENTRE, Qt::RightButton); });
    EXPECT_FALSE(view->is_busy);
    EXPECT_EQ(nullptr, get_glass());
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, a_release_on_the_lens_itself_ends_it)
{
    run_to_the_end({CENTRE}, Qt::LeftButton,
                   [&]
                   {
                       QMouseEvent event(QEvent::MouseButtonRelease, QPointF(100, 100), Qt::LeftButton, Qt::NoButton,
                                         Qt::NoModifier);
                       QApplication::sendEvent(get_glass(), &event);
                   });
    EXPECT_FALSE(view->is_busy);
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, it_ends_when_its_view_goes_away)
{
    for_each_way_of_going([&] { begin_magnifying(); },
                          [&](const char* /*way*/)
                          {
                              if (area != nullptr)
                              {
                                  EXPECT_EQ(nullptr, get_glass());
                              }
                          },
                          {CENTRE, QPoint(200, 150)}, Qt::LeftButton);
}

TEST_F(TOLV_MAGNIFYING_GLASS_TEST, null_arguments_are_internal_errors)
{
    EXPECT_INTERNAL_ERROR(TOLV_MAGNIFYING_GLASS_WIDGET::magnifying(nullptr, view, CENTRE), "scroll_area != NULL");
    EXPECT_INTERNAL_ERROR(TOLV_MAGNIFYING_GLASS_WIDGET::magnifying(area.get(), nullptr, CENTRE), "view != NULL");
}
