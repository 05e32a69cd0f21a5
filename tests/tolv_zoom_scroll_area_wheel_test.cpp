#include "tolv_zoom_fixture.h"

#include <QLabel>

#include <random>
#include <vector>

namespace
{
class TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST : public ZOOM_TEST
{
protected:
    void wheel(const QPoint& point, int delta, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        GUI_DRIVER::wheel(view, point, QPoint(0, delta), modifiers);
    }
};
} // namespace

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, a_notch_scrolls_three_single_steps_down_or_up)
{
    ASSERT_EQ(20, v()->singleStep());
    scroll_to(100, 200);
    wheel(in_view(50, 50), -120);
    EXPECT_EQ(QPoint(100, 260), values());
    wheel(in_view(50, 50), 240);
    EXPECT_EQ(QPoint(100, 140), values());
    wheel(in_view(50, 50), 1200);
    EXPECT_EQ(QPoint(100, 0), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, parts_of_a_notch_are_cut_off_towards_zero)
{
    scroll_to(100, 200);
    wheel(in_view(50, 50), 7); // 20 * 7 * 3 / 120 = 3.5
    EXPECT_EQ(197, v()->value());
    wheel(in_view(50, 50), -7);
    EXPECT_EQ(200, v()->value());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, shift_scrolls_to_the_side)
{
    scroll_to(100, 200);
    wheel(in_view(50, 50), -120, Qt::ShiftModifier);
    EXPECT_EQ(QPoint(160, 200), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, shift_counts_as_the_keyboard_has_it)
{
    scroll_to(100, 200);
    GUI_DRIVER::key_press(area.get(), Qt::Key_A, Qt::ShiftModifier);
    QWheelEvent without(QPointF(50, 50), area->viewport()->mapToGlobal(QPoint(50, 50)), QPoint(), QPoint(0, -120),
                        Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(area->viewport(), &without);
    EXPECT_EQ(QPoint(160, 200), values());
    GUI_DRIVER::key_release(area.get(), Qt::Key_A);
    QWheelEvent with(QPointF(50, 50), area->viewport()->mapToGlobal(QPoint(50, 50)), QPoint(), QPoint(0, -120),
                     Qt::NoButton, Qt::ShiftModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(area->viewport(), &with);
    EXPECT_EQ(QPoint(160, 260), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, it_is_the_slider_that_moves)
{
    v()->setTracking(false); // so that the value stays behind
    wheel(in_view(50, 50), -120);
    wheel(in_view(50, 50), -120);
    EXPECT_EQ(120, v()->sliderPosition());
    EXPECT_EQ(0, v()->value());
    GUI_DRIVER::key_click(area.get(), Qt::Key_Down);
    EXPECT_EQ(180, v()->sliderPosition());
    GUI_DRIVER::key_click(area.get(), Qt::Key_Up);
    EXPECT_EQ(120, v()->sliderPosition());
    h()->setTracking(false);
    GUI_DRIVER::key_click(area.get(), Qt::Key_Right);
    GUI_DRIVER::key_click(area.get(), Qt::Key_Right);
    EXPECT_EQ(120, h()->sliderPosition());
    GUI_DRIVER::key_click(area.get(), Qt::Key_Left);
    EXPECT_EQ(60, h()->sliderPosition());
    EXPECT_EQ(QPoint(0, 0), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, the_pixel_under_the_pointer_is_the_nearest_one)
{
    scroll_to(102, 200);
    const QPointF position(59.5, 80.4); // (162, 280) of the view, which becomes (202.5, 350)
    QWheelEvent event(position, position + area->viewport()->mapToGlobal(QPoint(0, 0)), QPoint(), QPoint(0, 120),
                      Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(area->viewport(), &event);
    EXPECT_EQ(QPoint(203 - 60, 350 - 80), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, alt_scrolls_25_times_finer)
{
    scroll_to(100, 200);
    wheel(in_view(50, 50), -120, Qt::AltModifier); // 20 * 360 / 3000 = 2.4
    EXPECT_EQ(QPoint(100, 202), values());
    wheel(in_view(50, 50), 120, Qt::AltModifier);
    EXPECT_EQ(QPoint(100, 200), values());
    wheel(in_view(50, 50), -120, Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_EQ(QPoint(102, 200), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, a_notch_that_alt_has_turned_to_the_side_counts_all_the_same)
{
    scroll_to(100, 200);
    GUI_DRIVER::wheel(view, in_view(50, 50), QPoint(-120, 0), Qt::AltModifier);
    EXPECT_EQ(QPoint(100, 202), values());
    GUI_DRIVER::wheel(view, in_view(50, 50), QPoint(120, 0), Qt::AltModifier | Qt::ControlModifier);
    EXPECT_FLOAT_EQ(1.01F, view->get_zoom());
    GUI_DRIVER::wheel(view, in_view(50, 50), QPoint(-120, 0)); // a wheel that really goes to the side
    EXPECT_FLOAT_EQ(1.01F, view->get_zoom());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, each_turn_of_the_wheel_lets_the_view_feel_a_move)
{
    GUI_DRIVER::hover(view, in_view(50, 50));
    take_moves();
    wheel(in_view(50, 50), -120);
    EXPECT_GE(take_moves(), 1);
    EXPECT_EQ(in_view(50, 50), view->mapFromGlobal(QCursor::pos()));
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, control_zooms_about_the_pointer)
{
    scroll_to(100, 200);
    wheel(in_view(60, 80), 120, Qt::ControlModifier); // (160, 280) * 1.25
    EXPECT_EQ(1.25F, view->get_zoom());
    EXPECT_EQ(QPoint(200 - 60, 350 - 80), values());
    EXPECT_EQ(QPoint(160, 280), view->get_logical(view->mapFromGlobal(QCursor::pos())));
    wheel(in_view(60, 80), -120, Qt::ControlModifier);
    EXPECT_FLOAT_EQ(1.0F, view->get_zoom());
    EXPECT_EQ(QPoint(100, 200), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, control_and_alt_zoom_in_fine_steps)
{
    wheel(in_view(60, 80), 120, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_FLOAT_EQ(1.01F, view->get_zoom());
    wheel(in_view(60, 80), -120, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_FLOAT_EQ(1.0F, view->get_zoom());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, control_and_shift_zoom_as_control_alone_does)
{
    wheel(in_view(60, 80), 120, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(1.25F, view->get_zoom());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, every_set_of_modifiers_has_its_meaning)
{
    const Qt::KeyboardModifier keys[] = {Qt::ControlModifier, Qt::ShiftModifier, Qt::AltModifier, Qt::MetaModifier};
    for (int set = 0; set < 16; ++set)
    {
        SCOPED_TRACE(set);
        Qt::KeyboardModifiers modifiers;
        for (int i = 0; i < 4; ++i)
            modifiers.setFlag(keys[i], (set & (1 << i)) != 0);
        const bool zooms = modifiers.testFlag(Qt::ControlModifier);
        const bool is_fine = modifiers.testFlag(Qt::AltModifier);
        for (const int delta : {120, -120})
        {
            view->set_zoom(1.0F);
            GUI_DRIVER::process_posted();
            scroll_to(100, 200);
            wheel(in_view(60, 80), delta, modifiers);
            const float step = is_fine ? 1.01F : 1.25F;
            EXPECT_FLOAT_EQ(!zooms ? 1.0F : delta > 0 ? step : 1 / step, view->get_zoom());
            const int pixels = (is_fine ? 2 : 60) * (delta > 0 ? -1 : 1);
            if (!zooms)
                EXPECT_EQ(modifiers.testFlag(Qt::ShiftModifier) ? QPoint(100 + pixels, 200) : QPoint(100, 200 + pixels),
                          values());
            else if (is_fine) // (160, 280) by 1.01 or 1 / 1.01
                EXPECT_EQ(delta > 0 ? QPoint(162 - 60, 283 - 80) : QPoint(158 - 60, 277 - 80), values());
            else
                EXPECT_EQ(delta > 0 ? QPoint(200 - 60, 350 - 80) : QPoint(128 - 60, 224 - 80), values());
        }
    }
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, notches_at_either_limit_move_neither_the_drawing_nor_the_pointer)
{
    const QSignalSpy levels(area.get(), SIGNAL(zoom_level_changed(float)));
    int count = 0;
    for (const int delta : {120, -120})
    {
        view->set_max(delta > 0 ? 1.0F : 16.0F);
        view->set_min(delta > 0 ? 0.001F : 1.0F);
        for (const QPoint& point : {QPoint(3, 2), QPoint(60, 80), QPoint(377, 279)})
        {
            for (const Qt::KeyboardModifiers modifiers :
                 {Qt::KeyboardModifiers(Qt::ControlModifier), Qt::ControlModifier | Qt::AltModifier})
            {
                scroll_to(101, 203);
                GUI_DRIVER::hover(view, in_view(point.x(), point.y()));
                const QPoint pointer = QCursor::pos();
                const QTransform transform = view->get_transform();
                wheel(in_view(point.x(), point.y()), delta, modifiers);
                EXPECT_EQ(1.0F, view->get_zoom());
                EXPECT_EQ(transform, view->get_transform());
                EXPECT_EQ(QPoint(101, 203), values());
                EXPECT_EQ(QPoint(620, 720), QPoint(h()->maximum(), v()->maximum()));
                EXPECT_EQ(pointer, QCursor::pos());
                EXPECT_EQ(++count, levels.count()); // told all the same
            }
        }
    }
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, the_move_that_the_view_feels_knows_of_no_button_and_no_key)
{
    class MOVE_RECORDER : public QObject
    {
    public:
        std::vector<QMouseEvent> moves;
        bool eventFilter(QObject* /*watched*/, QEvent* event) override
        {
            if (event->type() == QEvent::MouseMove)
                moves.push_back(*static_cast<QMouseEvent*>(event));
            return false;
        }
    };
    GUI_DRIVER::hover(view, in_view(50, 60));
    GUI_DRIVER::press(view, in_view(50, 60), Qt::LeftButton, Qt::AltModifier);
    MOVE_RECORDER recorder;
    view->installEventFilter(&recorder);
    area->send_fake_mouse_event();
    EXPECT_TRUE(recorder.moves.empty()); // posted
    GUI_DRIVER::process_posted();
    view->removeEventFilter(&recorder);
    GUI_DRIVER::release(view, in_view(50, 60));
    ASSERT_EQ(1U, recorder.moves.size());
    const QMouseEvent& move = recorder.moves.front();
    EXPECT_EQ(Qt::NoButton, move.button());
    EXPECT_EQ(Qt::MouseButtons(Qt::NoButton), move.buttons());
    EXPECT_EQ(Qt::KeyboardModifiers(Qt::NoModifier), move.modifiers());
    EXPECT_EQ(QPointF(in_view(50, 60)), move.localPos());
    EXPECT_EQ(QPointF(50, 60), move.windowPos());
    EXPECT_EQ(QPointF(view->mapToGlobal(in_view(50, 60))), move.screenPos());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, a_rectangle_being_located_keeps_nothing_from_the_view)
{
    view->animate_selection_rect(QRect(20, 30, 30, 20), Qt::green, 60000); // a label of 90 by 80
    const auto* const label = view->findChild<QLabel*>();
    ASSERT_NE(nullptr, label);
    ASSERT_TRUE(label->isVisible() && label->geometry().contains(QPoint(31, 41)));
    take_moves();
    GUI_DRIVER::hover(view, QPoint(30, 40));
    EXPECT_EQ(QPoint(30, 40),
              view->moves_without_buttons.isEmpty() ? QPoint() : view->moves_without_buttons.constLast());
    view->seen.clear();
    GUI_DRIVER::click(view, QPoint(31, 41));
    EXPECT_EQ(1, view->seen.count(QEvent::MouseButtonPress));
    view->on_stop_animation_rect();
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, a_wheel_to_the_side_zooms_out_as_one_that_does_not_turn_up)
{
    GUI_DRIVER::wheel(view, in_view(60, 80), QPoint(120, 0), Qt::ControlModifier);
    EXPECT_FLOAT_EQ(0.8F, view->get_zoom());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, the_wheel_is_taken_even_where_there_is_nothing_to_scroll)
{
    class PARENT : public QWidget
    {
    public:
        int count = 0;

    protected:
        void wheelEvent(QWheelEvent* event) override
        {
            ++count;
            QWidget::wheelEvent(event);
        }
    };
    PARENT parent;
    parent.resize(200, 200);
    TOLV_ZOOM_SCROLL_AREA inner(&parent);
    inner.setGeometry(0, 0, 200, 200);
    inner.set_view(new TOLV_VIEW, false);
    ASSERT_TRUE(GUI_DRIVER::show(&parent));
    GUI_DRIVER::wheel(inner.get_view(), QPoint(50, 50), QPoint(0, 120));
    EXPECT_EQ(0, parent.count);
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, a_frame_around_the_viewport_does_not_shift_the_anchor)
{
    area->setFrameStyle(QFrame::Box);
    area->setLineWidth(7);
    GUI_DRIVER::process_posted();
    scroll_to(100, 200);
    wheel(QPoint(160, 280), 120, Qt::ControlModifier);
    EXPECT_EQ(QPoint(160, 280), view->get_logical(view->mapFromGlobal(QCursor::pos())));
    EXPECT_EQ(QPoint(200 - 60, 350 - 80), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, the_point_under_the_pointer_stays_within_a_pixel_over_many_steps)
{
    view->set_logical_size(QRect(0, 0, 100000, 120000)); // finer than a pixel
    view->set_min(0.05F);
    view->set_max(0.5F);
    view->set_zoom(0.2F);
    GUI_DRIVER::process_posted();
    scroll_to(10000, 12000);
    std::mt19937 random(7);
    const auto get_below = [&](unsigned limit) { return int(random() % limit); };
    int at_limit = 0;
    for (int i = 0; i < 50; ++i)
    {
        SCOPED_TRACE(i);
        const QPoint pointer(get_below(380), get_below(280));
        const QPointF logical = view->get_inverse_transform().map(QPointF(pointer + values()));
        const float zoom = view->get_zoom();
        const Qt::KeyboardModifiers fine = get_below(4) == 0 ? Qt::AltModifier : Qt::NoModifier;
        const int notch = get_below(20) < 14 ? 120 : -120;
        GUI_DRIVER::wheel(area->viewport(), pointer, QPoint(0, notch), Qt::ControlModifier | fine);
        at_limit += view->get_zoom() == zoom ? 1 : 0;

        // As far as the drawing goes; it does here.
        ASSERT_TRUE(h()->value() > 0 && h()->value() < h()->maximum());
        ASSERT_TRUE(v()->value() > 0 && v()->value() < v()->maximum());
        const QPointF now = view->get_transform().map(logical) - values();
        EXPECT_NEAR(pointer.x(), now.x(), 1.0);
        EXPECT_NEAR(pointer.y(), now.y(), 1.0);
        const QPoint cursor = area->viewport()->mapFromGlobal(QCursor::pos());
        EXPECT_NEAR(now.x(), cursor.x(), 1.0);
        EXPECT_NEAR(now.y(), cursor.y(), 1.0);
    }
    EXPECT_GT(at_limit, 0);
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, the_pointer_stays_on_its_point_whatever_the_origin_is)
{
    // The origin in pixels is cut off, so that the content may move by two pixels; the pointer moves along.
    view->set_logical_size(QRect(-50000, -70000, 100000, 120000));
    view->set_zoom(0.2F);
    GUI_DRIVER::process_posted();
    scroll_to(10000, 12000);
    std::mt19937 random(11);
    for (int i = 0; i < 50; ++i)
    {
        SCOPED_TRACE(i);
        const QPoint pointer(int(random() % 380), int(random() % 280));
        const QPointF logical = view->get_inverse_transform().map(QPointF(pointer + values()));
        const int notch = view->get_zoom() < 0.2F || (view->get_zoom() < 0.6F && random() % 2 == 0) ? 120 : -120;
        GUI_DRIVER::wheel(area->viewport(), pointer, QPoint(0, notch), Qt::ControlModifier);
        const QPointF now = view->get_transform().map(logical) - values();
        const QPoint cursor = area->viewport()->mapFromGlobal(QCursor::pos());
        EXPECT_NEAR(now.x(), cursor.x(), 1.0);
        EXPECT_NEAR(now.y(), cursor.y(), 1.0);
        EXPECT_NEAR(pointer.x(), now.x(), 2.0);
        EXPECT_NEAR(pointer.y(), now.y(), 2.0);
    }
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_WHEEL_TEST, the_view_is_repainted_before_the_pointer_moves)
{
    int painted_before_move = 0;
    view->draw = [&](QPainter*) { ++painted_before_move; };
    GUI_DRIVER::hover(view, in_view(100, 50));
    painted_before_move = 0;
    QPoint at_paint;
    view->draw = [&](QPainter*)
    {
        if (painted_before_move++ == 0)
            at_paint = QCursor::pos();
    };
    const QPoint before = QCursor::pos();
    area->zoom_out(nullptr, 1.25F); // scrolled to the corner: the pointer has to move
    area->adjust_cursor();
    EXPECT_GE(painted_before_move, 1);
    EXPECT_EQ(before, at_paint);
    EXPECT_NE(before, QCursor::pos());
}
