#include "picture.h"
#include "tolv_drag_tracker.h"
#include "tolv_magnifying_glass_widget.h"
#include "tolv_mouse_gesture_widget.h"
#include "tolv_zoom_drag.h"
#include "tolv_zoom_overlay_fixture.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QRubberBand>
#include <QTest>
#include <QWindow>

namespace
{
struct INTERACTION
{
    const char* name;
    Qt::MouseButton button;
    std::function<void(const QPoint&)> run;
};

/// All interactions that run a nested event loop, each as the handler of a press begins it.
class TOLV_INTERACTION_LOOP_TEST : public TOLV_ZOOM_OVERLAY_TEST
{
protected:
    void TearDown() override
    {
        TOLV_ZOOM_DRAG_WIDGET::m_use_zoom_drag = false;
        TOLV_ZOOM_OVERLAY_TEST::TearDown();
    }

    std::vector<INTERACTION> get_rectangles()
    {
        return {{"rectangle", Qt::LeftButton,
                 [this](const QPoint& point) { result = TOLV_DRAG_TRACKER::track_rect(view, point, area.get(), 0.0); }},
                {"handle", Qt::LeftButton, [this](const QPoint& point) {
                     result = TOLV_DRAG_TRACKER::track_rect(view, point, QPoint(9, 9), QPoint(9, 60), nullptr, 0.0);
                 }}};
    }
    std::vector<INTERACTION> get_strokes()
    {
        return {{"stroke", Qt::LeftButton,
                 [this](const QPoint& point)
                 { TOLV_MOUSE_GESTURE_WIDGET::show_mouse_gesture(area.get(), view, point); }},
                {"selecting stroke", Qt::LeftButton, [this](const QPoint& point) {
                     TOLV_SELECTION_MODE_MOUSE_GESTURE_WIDGET::show_mouse_gesture(area.get(), view, point);
                 }}};
    }
    std::vector<INTERACTION> get_others()
    {
        return {{"zoom drag", Qt::RightButton,
                 [this](const QPoint& point) { TOLV_ZOOM_DRAG_WIDGET::start_zoom_drag(area.get(), view, point); }},
                {"lens", Qt::LeftButton, [this](const QPoint& point) {
                     TOLV_MAGNIFYING_GLASS_WIDGET::magnifying(area.get(), view, view->mapToGlobal(point));
                 }}};
    }
    std::vector<INTERACTION> get_all()
    {
        std::vector<INTERACTION> all;
        for (const auto& group : {get_rectangles(), get_strokes(), get_others()})
            all.insert(all.end(), group.begin(), group.end());
        return all;
    }

    /// The next press begins the interaction.
    void begin(const INTERACTION& interaction)
    {
        result = QRect(1, 2, 3, 4);
        view->on_press = [run = interaction.run](QMouseEvent* event)
        {
            const auto own_run = run; // outlives the view, which may go in the middle
            own_run(event->pos());
        };
    }

    /// Begins the interaction, moves, and lets a step run in the middle, by which it must have ended.
    void run_to_the_end_of(const INTERACTION& interaction, const std::function<void()>& step)
    {
        area->commands.clear();
        view->commands.clear();
        begin(interaction);
        run_to_the_end({QPoint(300, 300), QPoint(200, 200)}, interaction.button, step);
        EXPECT_FALSE(view->is_busy);
        EXPECT_FALSE(has_overlay());
        let_go();
        view->on_press = nullptr;
    }

    /// A key, for whatever widget gets it when nothing in particular has the focus.
    void click_key(Qt::Key key)
    {
        QTest::keyClick(area->windowHandle(), key);
    }

    bool has_overlay() const
    {
        for (const QWidget* const child : area->findChildren<QWidget*>())
            if (dynamic_cast<const TOLV_MOUSE_GESTURE_WIDGET*>(child) != nullptr ||
                dynamic_cast<const TOLV_ZOOM_DRAG_WIDGET*>(child) != nullptr ||
                dynamic_cast<const TOLV_MAGNIFYING_GLASS_WIDGET*>(child) != nullptr ||
                dynamic_cast<const QRubberBand*>(child) != nullptr)
                return true;
        return false;
    }

    QRect result;
};

QRect get_rect(int left, int top, int right, int bottom)
{
    return {QPoint(left, top), QPoint(right, bottom)};
}
} // namespace

TEST_F(TOLV_INTERACTION_LOOP_TEST, the_release_ends_every_interaction_and_gives_the_view_its_events_back)
{
    for (const INTERACTION& interaction : get_all())
    {
        SCOPED_TRACE(interaction.name);
        run_to_the_end_of(interaction, [&] { GUI_DRIVER::release(view, QPoint(200, 200), interaction.button); });
        view->seen.clear();
        GUI_DRIVER::click(view, QPoint(50, 50));
        GUI_DRIVER::wheel(view, QPoint(50, 50), QPoint(0, 120));
        for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::Wheel})
            EXPECT_TRUE(view->seen.contains(type)) << type;
    }
}

TEST_F(TOLV_INTERACTION_LOOP_TEST, every_interaction_ends_without_a_result_when_its_view_goes_away)
{
    for (const INTERACTION& interaction : get_all())
    {
        SCOPED_TRACE(interaction.name);
        for_each_way_of_going([&] { begin(interaction); },
                              [&](const char* /*way*/)
                              {
                                  if (interaction.name == get_rectangles()[0].name ||
                                      interaction.name == get_rectangles()[1].name)
                                  {
                                      EXPECT_EQ(QRect(), result);
                                  }
                                  if (area == nullptr)
                                      return;
                                  EXPECT_EQ(QStringList(), area->commands);
                                  EXPECT_FALSE(has_overlay());
                              },
                              {QPoint(300, 300), QPoint(200, 200)}, interaction.button);
    }
}

TEST_F(TOLV_INTERACTION_LOOP_TEST, no_interaction_begins_in_a_view_that_is_not_visible)
{
    for (const INTERACTION& interaction : get_all())
    {
        SCOPED_TRACE(interaction.name);
        view->hide();
        INPUT_SCRIPT script; // in time, or it fails
        script.then([&] { interaction.run(QPoint(20, 20)); });
        EXPECT_TRUE(script.run());
        EXPECT_FALSE(has_overlay());
        EXPECT_EQ(QStringList(), area->commands);
    }
    EXPECT_EQ(QRect(), result);
}

TEST_F(TOLV_INTERACTION_LOOP_TEST, the_release_of_a_second_button_ends_all_but_strokes_which_its_press_ends)
{
    const auto get_second = [](const INTERACTION& interaction)
    { return interaction.button == Qt::LeftButton ? Qt::RightButton : Qt::LeftButton; };
    for (const INTERACTION& interaction : get_strokes())
    {
        SCOPED_TRACE(interaction.name);
        run_to_the_end_of(interaction, [&] { GUI_DRIVER::press(view, QPoint(200, 200), Qt::RightButton); });
        EXPECT_EQ(QStringList(), area->commands + view->commands);
    }
    for (const auto& group : {get_rectangles(), get_others()})
        for (const INTERACTION& interaction : group)
        {
            SCOPED_TRACE(interaction.name);
            run_to_the_end_of(interaction,
                              [&]
                              {
                                  view->seen.clear();
                                  GUI_DRIVER::press(view, QPoint(200, 200), get_second(interaction));
                                  EXPECT_TRUE(view->is_busy);
                                  EXPECT_FALSE(view->seen.contains(QEvent::MouseButtonPress));
                                  GUI_DRIVER::release(view, QPoint(200, 200), get_second(interaction));
                              });
        }
}

TEST_F(TOLV_INTERACTION_LOOP_TEST, escape_ends_rectangles_and_nothing_else)
{
    for (const INTERACTION& interaction : get_rectangles())
    {
        SCOPED_TRACE(interaction.name);
        run_to_the_end_of(interaction, [&] { click_key(Qt::Key_Escape); });
        EXPECT_EQ(QRect(), result);
    }
    for (const auto& group : {get_strokes(), get_others()})
        for (const INTERACTION& interaction : group)
        {
            SCOPED_TRACE(interaction.name);
            run_to_the_end_of(interaction,
                              [&]
                              {
                                  click_key(Qt::Key_Escape);
                                  EXPECT_TRUE(view->is_busy);
                                  GUI_DRIVER::release(view, QPoint(200, 200), interaction.button);
                              });
        }
}

TEST_F(TOLV_INTERACTION_LOOP_TEST, a_modifier_ends_strokes_at_the_next_move_and_nothing_else)
{
    for (const Qt::KeyboardModifier modifier : {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier})
    {
        SCOPED_TRACE(modifier);
        const auto move = [&] { GUI_DRIVER::move_to(view, QPoint(150, 150), modifier); };
        for (const INTERACTION& interaction : get_strokes())
        {
            SCOPED_TRACE(interaction.name);
            run_to_the_end_of(interaction, move);
            EXPECT_EQ(QStringList(), area->commands + view->commands);
        }
        for (const auto& group : {get_rectangles(), get_others()})
            for (const INTERACTION& interaction : group)
            {
                SCOPED_TRACE(interaction.name);
                run_to_the_end_of(interaction,
                                  [&]
                                  {
                                      move();
                                      EXPECT_TRUE(view->is_busy);
                                      GUI_DRIVER::release(view, QPoint(150, 150), interaction.button, modifier);
                                  });
                const bool zooms = interaction.button == Qt::RightButton;
                EXPECT_EQ(zooms ? QStringList(QStringLiteral("in 1.3")) : QStringList(),
                          area->commands + view->commands);
            }
    }
}

// ---- Keys during a rectangle ----------------------------------------------------------------------------------------

TEST_F(TOLV_INTERACTION_LOOP_TEST, keys_of_a_rectangle_are_caught_where_nothing_has_the_focus)
{
    area->setFocusPolicy(Qt::NoFocus);
    if (QApplication::focusWidget() != nullptr)
        QApplication::focusWidget()->clearFocus();
    run_to_the_end_of(get_rectangles()[0],
                      [&]
                      {
                          EXPECT_EQ(nullptr, QApplication::focusWidget());
                          click_key(Qt::Key_Escape);
                      });
    EXPECT_EQ(QRect(), result);
}

TEST_F(TOLV_INTERACTION_LOOP_TEST, keys_of_a_rectangle_are_caught_when_the_focus_moves_in_the_middle)
{
    QLineEdit first(area.get());
    QLineEdit second(area.get());
    first.show();
    second.show();
    ASSERT_TRUE(GUI_DRIVER::focus(&first));
    run_to_the_end_of(get_rectangles()[0],
                      [&]
                      {
                          second.setFocus();
                          click_key(Qt::Key_A);
                          first.setFocus();
                          click_key(Qt::Key_A);
                          EXPECT_TRUE(view->is_busy);
                          second.setFocus();
                          click_key(Qt::Key_Escape);
                      });
    EXPECT_EQ(QRect(), result);
    EXPECT_EQ(QString(), first.text() + second.text());
    click_key(Qt::Key_B);
    first.setFocus();
    click_key(Qt::Key_C);
    EXPECT_EQ(QStringLiteral("cb"), first.text() + second.text());
}

// ---- A window as the tracked widget ---------------------------------------------------------------------------------

TEST_F(TOLV_INTERACTION_LOOP_TEST, a_window_that_is_tracked_itself_is_painted_in_the_middle)
{
    PRESSED_VIEW window(nullptr);
    window.setGeometry(130, 120, 200, 150);
    ASSERT_TRUE(GUI_DRIVER::show(&window));
    QRect rect;
    window.on_press = [&](QMouseEvent* event)
    { rect = TOLV_DRAG_TRACKER::track_rect(&window, event->pos(), nullptr, 0.0); };
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(&window, QPoint(20, 20)); })
        .then([&] { window.paint_count = 0; })
        .then([&] { GUI_DRIVER::move_to(&window, QPoint(120, 100)); })
        .wait_until([&] { return window.paint_count > 0; })
        .then([&] { GUI_DRIVER::release(&window, QPoint(120, 100)); });
    EXPECT_TRUE(script.run());
    EXPECT_EQ(get_rect(20, 20, 120, 100), rect);
}

// ---- On a dark palette ----------------------------------------------------------------------------------------------

namespace
{
const QColor GROUND(45, 45, 45);
const QColor HIGHLIGHT(40, 130, 220);

/// Rubber band, stroke and zoom drag over a view that is dark.
class TOLV_DARK_OVERLAY_TEST : public TOLV_INTERACTION_LOOP_TEST
{
protected:
    void SetUp() override
    {
        TOLV_INTERACTION_LOOP_TEST::SetUp();
        m_light = QApplication::palette();
        QPalette dark(GROUND, GROUND);
        dark.setColor(QPalette::Highlight, HIGHLIGHT);
        QApplication::setPalette(dark);
        view->setPalette(dark);
    }
    void TearDown() override
    {
        QApplication::setPalette(m_light);
        TOLV_INTERACTION_LOOP_TEST::TearDown();
    }

    /// The picture of the view after a drag from (100, 100), at both densities.
    void take_pictures(const INTERACTION& interaction, const QPoint& to,
                       const std::function<void(const QImage&, int)>& check)
    {
        begin(interaction);
        run_to_the_end({QPoint(100, 100), to}, interaction.button,
                       [&]
                       {
                           for (const int ratio : {1, 2})
                           {
                               SCOPED_TRACE(ratio);
                               check(render_widget(view, ratio), ratio);
                           }
                           GUI_DRIVER::release(view, to, interaction.button);
                       });
    }

private:
    QPalette m_light;
};
} // namespace

TEST_F(TOLV_DARK_OVERLAY_TEST, a_rubber_band_stands_out_and_lets_the_view_be_seen)
{
    view->on_paint = [](QPainter* painter) { painter->fillRect(QRect(150, 120, 20, 20), Qt::white); };
    take_pictures(get_rectangles()[0], QPoint(300, 250),
                  [](const QImage& picture, int ratio)
                  {
                      const auto get_color = [&](int x, int y) { return picture.pixelColor(x * ratio, y * ratio); };
                      const QColor inside = get_color(200, 200);
                      EXPECT_GT(inside.blue(), GROUND.blue() + 40);
                      EXPECT_GT(inside.blue(), inside.red()) << "tinted by the highlight colour";
                      EXPECT_GT(get_color(160, 130).lightness(), inside.lightness() + 40) << "what lies below";
                      EXPECT_NE(inside, get_color(100, 200)) << "an edge";
                      EXPECT_NE(GROUND, get_color(100, 200));
                      EXPECT_EQ(GROUND, get_color(99, 200));
                      EXPECT_EQ(GROUND, get_color(302, 200));
                      EXPECT_EQ(GROUND, get_color(200, 99));
                      EXPECT_EQ(GROUND, get_color(200, 252));
                  });
}

TEST_F(TOLV_DARK_OVERLAY_TEST, a_stroke_has_the_highlight_colour_and_half_of_a_lighter_one_inside)
{
    const QColor fill = HIGHLIGHT.lighter(150);
    const QColor mixed((GROUND.red() + fill.red()) / 2, (GROUND.green() + fill.green()) / 2,
                       (GROUND.blue() + fill.blue()) / 2);
    take_pictures(get_strokes()[0], QPoint(300, 250),
                  [&](const QImage& picture, int ratio)
                  {
                      EXPECT_TRUE(is_same_color(mixed, picture.pixelColor(200 * ratio, 200 * ratio), 2));
                      EXPECT_EQ(HIGHLIGHT, picture.pixelColor(100 * ratio, 200 * ratio));
                      EXPECT_EQ(GROUND, picture.pixelColor(97 * ratio, 200 * ratio));
                  });
}

TEST_F(TOLV_DARK_OVERLAY_TEST, the_labels_are_light_with_text_in_the_highlight_colour)
{
    const auto check = [](const QLabel& label, const QImage& picture, int ratio)
    {
        const QRect place(label.mapTo(label.window(), QPoint(0, 0)) * ratio, label.size() * ratio);
        // White with 200 parts of 255.
        const QColor ground(209, 209, 209);
        EXPECT_GT(count_pixels(picture, ground, 2, place), place.width() * place.height() / 3);
        EXPECT_GT(count_pixels(picture, HIGHLIGHT, 30, place), 10 * ratio);
    };
    take_pictures(get_strokes()[0], QPoint(300, 250),
                  [&](const QImage& picture, int ratio)
                  { check(*view->findChild<TOLV_MOUSE_GESTURE_WIDGET*>()->findChild<QLabel*>(), picture, ratio); });
    take_pictures(get_others()[0], QPoint(160, 180),
                  [&](const QImage& picture, int ratio)
                  {
                      check(*view->findChild<TOLV_ZOOM_DRAG_WIDGET*>()->findChild<QLabel*>(), picture, ratio);
                      EXPECT_TRUE(is_same_color(HIGHLIGHT, picture.pixelColor(130 * ratio, 140 * ratio), 2));
                  });
}
