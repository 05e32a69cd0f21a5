#include "paint_counter.h"
#include "tolv_dock_titlebar_fixture.h"

#include <QApplication>
#include <QMenu>
#include <QMouseEvent>
#include <QTest>

/// The squares on the surface of the title bar: where they are, what hits them, and what a hit does.

namespace
{
class TOLV_DOCK_TITLEBAR_SQUARES_TEST : public TOLV_DOCK_TITLEBAR_FIXTURE
{
protected:
    TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM hit(int x, int y, QRect rect) const
    {
        TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM button = TITLEBAR_BUTTON_MENU;
        m_bar->icon_hit_test(QPoint(x, y), rect, button);
        return button;
    }

    /// Whether a button is the one below the mouse, as hosts see it.
    bool is_active(TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM button) const
    {
        QPixmap empty(14, 14);
        empty.fill(Qt::transparent);
        const QColor ground = m_bar->get_title_bar_button(button, QIcon(empty)).toImage().pixelColor(0, 0);
        return ground == QApplication::palette().color(QPalette::Window).lighter(110);
    }

    /// A point of the button's square in the bar as it stands, or lies.
    QPoint get_point(TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM button, bool vertical) const
    {
        const QRect rect = vertical ? QRect(QPoint(0, 0), m_bar->size().transposed()) : m_bar->rect();
        const QPoint point = m_bar->get_icon_position(button, rect) + QPoint(7, 7);
        return vertical ? QPoint(point.y(), rect.right() - point.x()) : point;
    }

    /// Where on the screen the tool tip is.
    static QRect get_tooltip()
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (const QWidget* const window : windows)
        {
            if (window->windowType() == Qt::ToolTip && window->isVisible())
                return window->geometry();
        }
        return {};
    }

    /// Presses on the bar's own surface.
    void press(TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM button, bool vertical)
    {
        QTest::mousePress(m_bar, Qt::LeftButton, Qt::NoModifier, get_point(button, vertical));
    }
};

/// A bar of 200 by 24 pixels: its right edge is 199.
const QRect LYING(0, 0, 200, 24);
const QRect STANDING(0, 0, 24, 200);
} // namespace

// ---- Places ---------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, the_enumerators_have_their_values)
{
    EXPECT_EQ(0, TITLEBAR_BUTTON_NONE);
    EXPECT_EQ(1, TITLEBAR_BUTTON_MENU);
    EXPECT_EQ(2, TITLEBAR_BUTTON_PIN);
    EXPECT_EQ(3, TITLEBAR_BUTTON_DETACH);
    EXPECT_EQ(4, TITLEBAR_BUTTON_CLOSE);
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, the_squares_are_counted_from_the_right_edge_without_the_hidden_ones)
{
    const struct
    {
        bool close, detach, pin;
        int close_x, detach_x, pin_x, menu_x;
    } rows[] = {{true, true, true, 183, 169, 155, 141},   {true, true, false, 183, 169, 155, 155},
                {true, false, true, 183, 169, 169, 155},  {true, false, false, 183, 169, 169, 169},
                {false, true, true, 183, 183, 169, 155},  {false, true, false, 183, 183, 169, 169},
                {false, false, true, 183, 183, 183, 169}, {false, false, false, 183, 183, 183, 183}};
    for (const auto& row : rows)
    {
        SCOPED_TRACE(testing::Message() << row.close << row.detach << row.pin);
        m_dock->set_close_button_visibility(row.close);
        m_dock->set_detach_button_visibility(row.detach);
        m_dock->set_pushpin_button_visibility(row.pin);
        EXPECT_EQ(QPoint(row.close_x, 7), m_bar->get_icon_position(TITLEBAR_BUTTON_CLOSE, LYING));
        EXPECT_EQ(QPoint(row.detach_x, 7), m_bar->get_icon_position(TITLEBAR_BUTTON_DETACH, LYING));
        EXPECT_EQ(QPoint(row.pin_x, 7), m_bar->get_icon_position(TITLEBAR_BUTTON_PIN, LYING));
        EXPECT_EQ(QPoint(row.menu_x, 7), m_bar->get_icon_position(TITLEBAR_BUTTON_MENU, LYING));
    }
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, half_the_height_is_rounded_down)
{
    EXPECT_EQ(7, m_bar->get_icon_position(TITLEBAR_BUTTON_CLOSE, QRect(0, 0, 200, 25)).y());
    EXPECT_EQ(8, m_bar->get_icon_position(TITLEBAR_BUTTON_PIN, QRect(0, 0, 200, 26)).y());
    EXPECT_EQ(-5, m_bar->get_icon_position(TITLEBAR_BUTTON_MENU, QRect(0, 0, 200, 1)).y());
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, only_the_right_edge_of_a_rectangle_elsewhere_counts)
{
    EXPECT_EQ(QPoint(223, 7), m_bar->get_icon_position(TITLEBAR_BUTTON_CLOSE, LYING.translated(40, 90)));
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, what_is_no_button_with_a_square_is_at_the_origin)
{
    EXPECT_EQ(QPoint(0, 0), m_bar->get_icon_position(TITLEBAR_BUTTON_NONE, LYING));
    const auto unknown = static_cast<TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM>(5);
    EXPECT_EQ(QPoint(0, 0), m_bar->get_icon_position(unknown, LYING));
}

// ---- Hits -----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, a_square_takes_14_pixels_and_its_edges)
{
    EXPECT_EQ(TITLEBAR_BUTTON_CLOSE, hit(183, 7, LYING));
    EXPECT_EQ(TITLEBAR_BUTTON_CLOSE, hit(197, 7, LYING));
    EXPECT_EQ(TITLEBAR_BUTTON_CLOSE, hit(183, 21, LYING));
    EXPECT_EQ(TITLEBAR_BUTTON_CLOSE, hit(197, 21, LYING));
    EXPECT_EQ(TITLEBAR_BUTTON_NONE, hit(198, 14, LYING));
    EXPECT_EQ(TITLEBAR_BUTTON_NONE, hit(190, 6, LYING));
    EXPECT_EQ(TITLEBAR_BUTTON_NONE, hit(190, 22, LYING));
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, where_squares_touch_close_goes_before_detach_before_pin_before_menu)
{
    m_dock->set_menu_button_visibility(true);
    EXPECT_EQ(TITLEBAR_BUTTON_DETACH, hit(182, 14, LYING));
    EXPECT_EQ(TITLEBAR_BUTTON_DETACH, hit(169, 14, LYING));
    EXPECT_EQ(TITLEBAR_BUTTON_PIN, hit(168, 14, LYING));
    EXPECT_EQ(TITLEBAR_BUTTON_PIN, hit(155, 14, LYING));
    EXPECT_EQ(TITLEBAR_BUTTON_MENU, hit(154, 14, LYING));
    EXPECT_EQ(TITLEBAR_BUTTON_MENU, hit(141, 14, LYING));
    EXPECT_EQ(TITLEBAR_BUTTON_NONE, hit(140, 14, LYING));
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, a_hidden_button_has_no_square)
{
    m_dock->set_close_button_visibility(false);
    m_dock->set_detach_button_visibility(false);
    EXPECT_EQ(TITLEBAR_BUTTON_PIN, hit(190, 14, LYING));
    EXPECT_EQ(TITLEBAR_BUTTON_NONE, hit(182, 14, LYING));
    m_dock->set_pushpin_button_visibility(false);
    EXPECT_EQ(TITLEBAR_BUTTON_NONE, hit(190, 14, LYING));
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, a_menu_button_gets_its_square_by_its_visibility_and_not_by_a_menu)
{
    QMenu menu;
    m_dock->set_menu(&menu);
    EXPECT_EQ(TITLEBAR_BUTTON_NONE, hit(148, 14, LYING));
    m_dock->set_menu_button_visibility(true);
    EXPECT_EQ(TITLEBAR_BUTTON_MENU, hit(148, 14, LYING));
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, search_and_float_have_no_square)
{
    m_dock->set_search_button_visibility(true);
    m_dock->set_float_button_visibility(true);
    for (int x = 0; x < 155; ++x)
        EXPECT_EQ(TITLEBAR_BUTTON_NONE, hit(x, 14, LYING)) << x;
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, in_a_standing_bar_the_squares_are_counted_from_the_upper_edge)
{
    set_vertical(true);
    EXPECT_EQ(TITLEBAR_BUTTON_CLOSE, hit(7, 2, STANDING));
    EXPECT_EQ(TITLEBAR_BUTTON_CLOSE, hit(21, 16, STANDING));
    EXPECT_EQ(TITLEBAR_BUTTON_DETACH, hit(14, 17, STANDING));
    EXPECT_EQ(TITLEBAR_BUTTON_DETACH, hit(14, 30, STANDING));
    EXPECT_EQ(TITLEBAR_BUTTON_PIN, hit(14, 31, STANDING));
    EXPECT_EQ(TITLEBAR_BUTTON_PIN, hit(14, 44, STANDING));
    EXPECT_EQ(TITLEBAR_BUTTON_NONE, hit(14, 45, STANDING));
    EXPECT_EQ(TITLEBAR_BUTTON_NONE, hit(14, 1, STANDING));
    EXPECT_EQ(TITLEBAR_BUTTON_NONE, hit(6, 10, STANDING));
    EXPECT_EQ(TITLEBAR_BUTTON_NONE, hit(22, 10, STANDING));
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, a_standing_bar_elsewhere_is_laid_down_about_its_upper_left_corner)
{
    set_vertical(true);
    const QRect rect = STANDING.translated(10, 20);
    EXPECT_EQ(TITLEBAR_BUTTON_CLOSE, hit(-3, 22, rect));
    EXPECT_EQ(TITLEBAR_BUTTON_CLOSE, hit(11, 36, rect));
    EXPECT_EQ(TITLEBAR_BUTTON_NONE, hit(-4, 30, rect));
    EXPECT_EQ(TITLEBAR_BUTTON_NONE, hit(12, 30, rect));
    EXPECT_EQ(TITLEBAR_BUTTON_NONE, hit(4, 21, rect));
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, a_hit_shows_the_buttons_tool_tip_and_a_miss_hides_it)
{
    m_dock->set_menu_button_visibility(true);
    const struct
    {
        int x;
        const char* text;
    } rows[] = {{190, "Close"}, {175, "Detach"}, {161, "Auto Hide"}, {147, "Open Menu"}};
    for (const auto& row : rows)
    {
        GUI_DRIVER::place_pointer(QPoint(200, 150));
        hit(row.x, 14, LYING);
        EXPECT_TRUE(QToolTip::isVisible());
        EXPECT_EQ(QLatin1String(row.text), QToolTip::text());
        const QPoint place = get_tooltip().topLeft() - QPoint(200, 150); // a little below the pointer
        EXPECT_LT(place.manhattanLength(), 40);
    }
    hit(10, 14, LYING);
    EXPECT_TRUE(GUI_DRIVER::wait_for([] { return !QToolTip::isVisible(); }));
}

// ---- Mouse ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, a_press_on_a_square_does_what_its_button_does)
{
    for (const bool vertical : {false, true})
    {
        SCOPED_TRACE(vertical);
        set_vertical(vertical);
        press(TITLEBAR_BUTTON_PIN, vertical);
        EXPECT_FALSE(m_dock->get_is_pinned());
        m_dock->show();
        press(TITLEBAR_BUTTON_PIN, vertical);
        EXPECT_TRUE(m_dock->get_is_pinned());

        press(TITLEBAR_BUTTON_CLOSE, vertical);
        EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_CLOSED, m_dock->get_state());
        m_dock->show();
        GUI_DRIVER::process_posted();

        press(TITLEBAR_BUTTON_DETACH, vertical);
        EXPECT_TRUE(m_dock->isFloating());
        m_dock->detach();
        EXPECT_FALSE(m_dock->isFloating());
    }
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, a_press_beside_the_buttons_reaches_their_squares)
{
    // The squares of a standing bar lie a little to the right of its buttons.
    set_vertical(true);
    const QPoint point(m_bar->width() / 2 - 5 + 14, 10);
    QWidget* const hit_widget = m_bar->childAt(point);
    ASSERT_EQ(nullptr, qobject_cast<QToolButton*>(hit_widget));
    GUI_DRIVER::press(hit_widget, hit_widget->mapFrom(m_bar, point));
    EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_CLOSED, m_dock->get_state());
    GUI_DRIVER::release(m_window->centralWidget(), QPoint(300, 100));
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, a_press_on_the_square_of_a_hidden_button_does_nothing)
{
    const QPoint point = get_point(TITLEBAR_BUTTON_PIN, false);
    m_dock->set_pushpin_button_visibility(false);
    QTest::mousePress(m_bar, Qt::LeftButton, Qt::NoModifier, point);
    EXPECT_TRUE(m_dock->get_is_pinned());
    EXPECT_TRUE(m_dock->isVisible());
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, a_press_on_a_square_acts_where_the_button_lies_elsewhere)
{
    get_button("close", false)->setVisible(false);
    press(TITLEBAR_BUTTON_CLOSE, false);
    EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_CLOSED, m_dock->get_state());
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, a_press_on_the_square_of_the_menu_opens_no_menu)
{
    QMenu menu;
    menu.addAction(QStringLiteral("Clear"));
    m_dock->set_menu(&menu);
    m_dock->set_menu_button_visibility(true);
    press(TITLEBAR_BUTTON_MENU, false);
    GUI_DRIVER::process_posted();
    EXPECT_FALSE(menu.isVisible());
    EXPECT_TRUE(m_dock->isVisible());
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, only_a_press_on_a_square_is_kept_from_the_dock_window)
{
    TOLV_DOCK_WIDGET_TITLEBAR_WIDGET bar(nullptr);
    bar.resize(200, 24);
    const auto send = [&](QEvent::Type type, const QPoint& point)
    {
        QMouseEvent event(type, point, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&bar, &event);
        return event.isAccepted();
    };
    EXPECT_TRUE(send(QEvent::MouseButtonPress, QPoint(190, 14)));
    EXPECT_FALSE(send(QEvent::MouseButtonPress, QPoint(50, 14)));
    EXPECT_FALSE(send(QEvent::MouseMove, QPoint(190, 14)));
    EXPECT_FALSE(send(QEvent::MouseMove, QPoint(50, 14)));
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, a_press_button_call_does_what_a_press_does)
{
    m_bar->press_button(TITLEBAR_BUTTON_NONE);
    m_bar->press_button(TITLEBAR_BUTTON_MENU);
    EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_DOCKED, m_dock->get_state());
    m_bar->press_button(TITLEBAR_BUTTON_PIN);
    EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_UNPINNED, m_dock->get_state());
    m_bar->press_button(TITLEBAR_BUTTON_PIN);
    EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_DOCKED, m_dock->get_state());
    m_bar->press_button(TITLEBAR_BUTTON_DETACH);
    EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_FLOATING, m_dock->get_state());
    m_bar->press_button(TITLEBAR_BUTTON_CLOSE);
    EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_CLOSED, m_dock->get_state());
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, a_move_over_a_square_makes_its_button_the_active_one)
{
    EXPECT_FALSE(is_active(TITLEBAR_BUTTON_CLOSE));
    QMouseEvent over_close(QEvent::MouseMove, get_point(TITLEBAR_BUTTON_CLOSE, false), Qt::NoButton, Qt::NoButton,
                           Qt::NoModifier);
    QCoreApplication::sendEvent(m_bar, &over_close);
    EXPECT_TRUE(is_active(TITLEBAR_BUTTON_CLOSE));
    QMouseEvent over_title(QEvent::MouseMove, QPoint(5, 10), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_bar, &over_title);
    EXPECT_FALSE(is_active(TITLEBAR_BUTTON_CLOSE));
    EXPECT_TRUE(is_active(TITLEBAR_BUTTON_NONE));
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, the_active_button_is_the_one_below_the_mouse_until_the_mouse_leaves)
{
    QToolButton* const close = get_button("close", false);
    GUI_DRIVER::hover(close, close->mapFrom(m_bar, get_point(TITLEBAR_BUTTON_CLOSE, false)));
    m_bar->update_button_active_state();
    EXPECT_TRUE(is_active(TITLEBAR_BUTTON_CLOSE));
    GUI_DRIVER::hover(m_window->centralWidget());
    EXPECT_FALSE(is_active(TITLEBAR_BUTTON_CLOSE));
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, a_window_that_is_shown_below_the_mouse_has_its_button_active_at_once)
{
    QToolButton* const close = get_button("close", false);
    const QPoint on_close = get_point(TITLEBAR_BUTTON_CLOSE, false);
    GUI_DRIVER::hover(close, close->mapFrom(m_bar, on_close));
    m_dock->hide();
    m_bar->update_button_active_state(QPoint(5, 10));
    ASSERT_FALSE(is_active(TITLEBAR_BUTTON_CLOSE));
    m_dock->show();
    EXPECT_TRUE(is_active(TITLEBAR_BUTTON_CLOSE));
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, the_bar_is_painted_anew_for_its_active_button)
{
    GUI_DRIVER::process_posted();
    const PAINT_COUNTER paintings(m_bar);
    m_bar->update_button_active_state(get_point(TITLEBAR_BUTTON_CLOSE, false));
    EXPECT_EQ(0, paintings.m_count);
    GUI_DRIVER::process_posted();
    EXPECT_EQ(1, paintings.m_count);
}

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, the_squares_lie_on_their_buttons_where_one_reads_from_right_to_left)
{
    const Qt::LayoutDirection old_direction = QApplication::layoutDirection();
    QApplication::setLayoutDirection(Qt::RightToLeft);
    GUI_DRIVER::process_posted();
    const QToolButton* const close = get_button("close", false);
    const QToolButton* const pin = get_button("pin", false);
    EXPECT_GT(close->mapTo(m_bar, QPoint(0, 0)).x(), pin->mapTo(m_bar, QPoint(0, 0)).x());
    EXPECT_EQ(close, m_bar->childAt(get_point(TITLEBAR_BUTTON_CLOSE, false)));
    QApplication::setLayoutDirection(old_direction);
}

// ---- Without a window -----------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_TITLEBAR_SQUARES_TEST, a_bar_that_outlives_its_window_does_nothing)
{
    set_vertical(true);
    const std::unique_ptr<TOLV_DOCK_WIDGET_TITLEBAR_WIDGET> bar(m_bar);
    m_dock->setTitleBarWidget(nullptr);
    bar->setParent(nullptr);
    delete m_dock;
    bar->press_button(TITLEBAR_BUTTON_CLOSE);
    bar->press_button(TITLEBAR_BUTTON_DETACH);
    EXPECT_EQ(TITLEBAR_BUTTON_CLOSE, hit(190, 14, LYING)); // it lies
    ASSERT_TRUE(GUI_DRIVER::show(bar.get()));
    GUI_DRIVER::process_posted();
    GUI_DRIVER::click(get_button("close", false));
    EXPECT_TRUE(bar->isVisible());
}
