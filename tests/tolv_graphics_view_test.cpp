#include "cfg.h"
#include "gui_driver.h"
#include "gui_test.h"
#include "input_script.h"
#include "internal_error_trap.h"
#include "paint_counter.h"
#include "picture.h"
#include "recording_paint_device.h"
#include "tolv_birds_eye_view.h"
#include "tolv_font.h"
#include "tolv_graphics_scene.h"
#include "tolv_graphics_view.h"
#include "tolv_icon.h"
#include "tolv_perf_debug.h"
#include "tolv_viewport.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QGraphicsRectItem>
#include <QMouseEvent>
#include <QRegularExpression>
#include <QRubberBand>
#include <QScreen>
#include <QScrollBar>

#include <memory>

namespace
{
/// Opens what is protected, and remembers what it is told.
class OPEN_GRAPHICS_VIEW : public TOLV_GRAPHICS_VIEW
{
public:
    using TOLV_GRAPHICS_VIEW::get_paint_time_text;
    QList<QRectF> focused;

    void focus_on_scene_rect(const QRectF& rect) override
    {
        focused << rect;
        TOLV_GRAPHICS_VIEW::focus_on_scene_rect(rect);
    }
};

/// Counts a time while it is painted.
class COUNTED_ITEM : public QGraphicsRectItem
{
public:
    using QGraphicsRectItem::QGraphicsRectItem;
    int paint_count = 0;

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override
    {
        ++paint_count;
        QGraphicsRectItem::paint(painter, option, widget);
        static_cast<TOLV_VIEWPORT*>(widget)->perf_debug()->add("counted items", 7);
    }
};

/// A view of 600 by 400 pixels without a frame of a scene of 2000 by 1000, red on the left and green on the right.
class TOLV_GRAPHICS_VIEW_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        scene = std::make_unique<TOLV_GRAPHICS_SCENE>();
        scene->setSceneRect(0, 0, 2000, 1000);
        scene->addRect(1000, 0, 1000, 1000, Qt::NoPen, Qt::green);
        item = new COUNTED_ITEM(0, 0, 1000, 1000);
        item->setPen(Qt::NoPen);
        item->setBrush(Qt::red);
        scene->addItem(item);
        view = std::make_unique<OPEN_GRAPHICS_VIEW>();
        view->setScene(scene.get());
        view->setFrameShape(QFrame::NoFrame);
        view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view->setGeometry(60, 60, 600, 400);
    }
    void TearDown() override
    {
        view.reset();
        scene.reset();
        TOLV_GUI_TEST::TearDown();
    }

    /// Shows the view with its bird's eye view, scrolled to the top left.
    void open()
    {
        view->create_birds_eye_view();
        dock = view->get_birds_eye_view();
        body = dock->get_graphics_view_widget();
        ASSERT_TRUE(GUI_DRIVER::show(view.get()));
        view->get_birds_eye_view_action()->trigger();
        scroll_to(QPoint(0, 0));
    }
    void scroll_to(const QPoint& position)
    {
        view->horizontalScrollBar()->setValue(position.x());
        view->verticalScrollBar()->setValue(position.y());
        GUI_DRIVER::process_posted();
    }
    QPoint get_scroll_position() const
    {
        return {view->horizontalScrollBar()->value(), view->verticalScrollBar()->value()};
    }

    std::unique_ptr<TOLV_GRAPHICS_SCENE> scene;
    std::unique_ptr<OPEN_GRAPHICS_VIEW> view;
    COUNTED_ITEM* item = nullptr;
    TOLV_BIRDS_EYE_VIEW* dock = nullptr;
    TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET* body = nullptr;
};

const QRect TOP_LEFT_OF_OVERLAY(8, 9, 40, 10);
} // namespace

// ---- The view -------------------------------------------------------------------------------------------------------

TEST_F(TOLV_GRAPHICS_VIEW_TEST, its_viewport_carries_the_times_of_the_last_paint)
{
    const auto* const viewport = qobject_cast<TOLV_VIEWPORT*>(view->viewport());
    ASSERT_NE(nullptr, viewport);
    EXPECT_EQ(std::string(), viewport->perf_debug()->get_performance_info_string());
    ASSERT_TRUE(GUI_DRIVER::show(view.get()));
    for (int i = 0; i < 3; ++i)
        view->viewport()->repaint();
    EXPECT_EQ(std::string("\ncounted items: 7 usec (1 calls)"), viewport->perf_debug()->get_performance_info_string());
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, it_paints_its_background_as_a_graphics_view_does)
{
    QGraphicsView plain(scene.get());
    plain.setFrameShape(QFrame::NoFrame);
    plain.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    plain.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scene->clear();
    plain.resize(view->size());
    EXPECT_TRUE(expect_same_picture(render_widget(&plain), render_widget(view.get())));
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, it_focuses_on_a_rectangle_with_its_proportions)
{
    ASSERT_TRUE(GUI_DRIVER::show(view.get()));
    view->focus_on_scene_rect(QRectF(0, 0, 1000, 100));
    EXPECT_FLOAT_EQ(float(view->transform().m11()), float(view->transform().m22()));
    EXPECT_NEAR(0.596, view->transform().m11(), 1e-3); // 600 pixels less 4
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, without_a_scene_or_a_birds_eye_view_it_paints_all_the_same)
{
    EXPECT_TRUE(is_same_color(Qt::red, render_widget(view.get()).pixelColor(10, 10)));
    view->create_birds_eye_view();
    view->setScene(nullptr);
    EXPECT_FALSE(render_widget(view.get()).isNull());
    EXPECT_EQ(QRect(), view->get_birds_eye_view()->get_graphics_view_widget()->get_focus_rect());
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, what_needs_a_birds_eye_view_is_an_internal_error_without)
{
    const char* const text = "m_birds_eye_view != nullptr";
    EXPECT_INTERNAL_ERROR(view->preset_bev_transform(QTransform(), false), text);
    EXPECT_INTERNAL_ERROR(view->combine_with_default_bev_transform(QTransform()), text);
    EXPECT_INTERNAL_ERROR(view->update_birds_eye_view(), text);
    EXPECT_INTERNAL_ERROR(view->hide_birds_eye_view(), text);
    EXPECT_INTERNAL_ERROR(view->set_bev_source_graphics_view(nullptr), "gv != nullptr");
    view->set_bev_source_graphics_view(view.get());
    view->setScene(nullptr);
    EXPECT_INTERNAL_ERROR(view->create_birds_eye_view(), "scene()!=nullptr");
    EXPECT_EQ(nullptr, view->get_birds_eye_view_action());
}

// ---- The display of times -------------------------------------------------------------------------------------------

TEST_F(TOLV_GRAPHICS_VIEW_TEST, times_above_10000_microseconds_are_given_in_milliseconds)
{
    EXPECT_EQ(QStringLiteral("\nQGraphicsView::paintEvent: 1 usec, 1000000 fps"), view->get_paint_time_text(1));
    EXPECT_EQ(QStringLiteral("\nQGraphicsView::paintEvent: 10000 usec, 100 fps"), view->get_paint_time_text(10000));
    EXPECT_EQ(QStringLiteral("\nQGraphicsView::paintEvent: 10 msec, 99 fps"), view->get_paint_time_text(10001));
    EXPECT_EQ(QStringLiteral("\nQGraphicsView::paintEvent: 1999 msec, 0 fps"), view->get_paint_time_text(1999999));
    EXPECT_EQ(QStringLiteral("\nQGraphicsView::paintEvent: 0 usec, 1000000 fps"), view->get_paint_time_text(0));
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, times_are_displayed_only_with_the_switch)
{
    EXPECT_EQ(0, count_pixels(render_widget(view.get()), QColor(255, 178, 178), 2, TOP_LEFT_OF_OVERLAY));
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, the_switch_displays_the_times_over_a_light_ground)
{
    cfg_set_value("tolv_graphics_view_perf_debug", "on");
    ASSERT_TRUE(GUI_DRIVER::show(view.get()));
    scroll_to(QPoint(0, 0));
    view->viewport()->repaint();
    const QImage picture = view->grab().toImage();
    // White of opacity 0.7 over red, from two pixels left of the text and one above.
    EXPECT_TRUE(is_same_color(QColor(255, 178, 178), picture.pixelColor(8, 9), 2));
    EXPECT_TRUE(is_same_color(Qt::red, picture.pixelColor(7, 9)));
    EXPECT_TRUE(is_same_color(Qt::red, picture.pixelColor(8, 8)));
    EXPECT_GT(count_pixels(picture, Qt::black, 60, QRect(10, 10, 200, 60)), 50) << "the text";
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, the_display_tells_what_was_painted_and_what_took_how_long)
{
    cfg_set_value("tolv_graphics_view_perf_debug", "on");
    scene->clear();
    view->viewport()->resize(600, 400);
    RECORDING_PAINT_DEVICE device;
    view->viewport()->render(&device, QPoint(0, 0), QRegion(10, 20, 300, 40));
    QStringList lines;
    for (const PAINT_COMMAND& command : device.find(QStringLiteral("text")))
    {
        lines << command.text.section(QLatin1Char('"'), 1, 1);
        EXPECT_EQ(QColor(Qt::black), command.pen.color());
        EXPECT_EQ(1.0, command.opacity);
    }
    ASSERT_EQ(3, lines.size());
    QPixmap screen(10, 10); // of the density for which a widget measures its texts
    QPainter painter(&screen);
    painter.setFont(*TOLV_FONT(TOLV_GUI_FONT).get_font());
    const QRectF text_rect = painter.boundingRect(QRectF(10, 10, 10, 10), Qt::AlignLeft, lines.join(QLatin1Char('\n')));
    painter.end();
    const QRect ground = text_rect.adjusted(-2, -1, 2, 1).toRect();
    EXPECT_TRUE(device.contains(
        QStringLiteral("rect %1 %2 %3 %4").arg(ground.x()).arg(ground.y()).arg(ground.width()).arg(ground.height())));
    EXPECT_EQ(QStringLiteral("Painting performance:"), lines.at(0));
    EXPECT_EQ(QStringLiteral("QPaintEvent::rect(): (10, 20), (309, 59)"), lines.at(1));
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^QGraphicsView::paintEvent: \\d+ [um]sec, \\d+ fps$"))
                    .match(lines.at(2))
                    .hasMatch());
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, the_switch_is_read_once)
{
    EXPECT_FALSE(render_widget(view.get()).isNull());
    cfg_set_value("tolv_graphics_view_perf_debug", "on");
    EXPECT_EQ(0, count_pixels(render_widget(view.get()), QColor(255, 178, 178), 2, TOP_LEFT_OF_OVERLAY));
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, a_scroll_has_the_display_painted_anew_and_what_is_on_its_right)
{
    cfg_set_value("tolv_graphics_view_perf_debug", "on");
    ASSERT_TRUE(GUI_DRIVER::show(view.get()));
    scroll_to(QPoint(100, 100));
    view->viewport()->repaint(); // behind which the display has the width of this text
    const QImage picture = view->screen()->grabWindow(view->winId()).toImage();
    const QRect display = find_color_rect(picture, QColor(255, 178, 178), 2);
    ASSERT_EQ(QPoint(8, 9), display.topLeft());
    const PAINT_COUNTER watch(view->viewport());
    scroll_to(QPoint(100, 97));
    EXPECT_TRUE(watch.m_painted.contains(QPoint(display.right() + 20, display.top())));
    EXPECT_FALSE(watch.m_painted.contains(QPoint(display.right() + 21, display.top())));
    EXPECT_TRUE(watch.m_painted.contains(QPoint(display.left(), display.bottom() + 3))) << "where it was moved to";
    EXPECT_FALSE(watch.m_painted.contains(QPoint(display.left(), display.bottom() + 4)));
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, a_scroll_leaves_no_trace_of_the_display)
{
    cfg_set_value("tolv_graphics_view_perf_debug", "on");
    ASSERT_TRUE(GUI_DRIVER::show(view.get()));
    scroll_to(QPoint(100, 100));
    for (int i = 0; i < 5; ++i)
        scroll_to(QPoint(100 + 7 * i, 100 + 11 * i));
    const QImage now = view->screen()->grabWindow(view->window()->winId()).toImage();
    ASSERT_FALSE(now.isNull());
    const QRect light = find_color_rect(now, QColor(255, 178, 178), 2);
    EXPECT_EQ(QPoint(8, 9), light.topLeft());
    EXPECT_EQ(0, count_pixels(now, QColor(255, 178, 178), 2, QRect(0, 0, 600, 9)));
}

// ---- The bird's eye view --------------------------------------------------------------------------------------------

TEST_F(TOLV_GRAPHICS_VIEW_TEST, the_action_shows_the_birds_eye_view)
{
    view->create_birds_eye_view();
    QAction* const action = view->get_birds_eye_view_action();
    ASSERT_NE(nullptr, action);
    EXPECT_EQ(view.get(), action->parent());
    EXPECT_EQ(QStringLiteral("Bird's Eye View"), action->text());
    EXPECT_EQ(QStringLiteral("Open birds eye view"), action->toolTip());
    EXPECT_TRUE(action->isEnabled());
    EXPECT_TRUE(action->isCheckable());
    EXPECT_FALSE(action->isChecked());
    EXPECT_TRUE(expect_same_picture(tolv_get_icon(TOLV_BIRDS_EYE_VIEW_ICON).pixmap(16).toImage(),
                                    action->icon().pixmap(16).toImage()));
    ASSERT_TRUE(GUI_DRIVER::show(view.get()));
    view->hide_birds_eye_view();
    EXPECT_FALSE(action->isChecked());
    action->trigger();
    EXPECT_TRUE(view->get_birds_eye_view()->isVisible());
    EXPECT_TRUE(action->isChecked());
    action->trigger(); // which shows it again, rather than hide it
    EXPECT_TRUE(view->get_birds_eye_view()->isVisible());
    EXPECT_TRUE(action->isChecked());
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, it_has_the_size_of_its_overview_for_good)
{
    open();
    EXPECT_EQ(QRect(0, 0, 300, 170), dock->geometry());
    EXPECT_EQ(QSize(300, 150), body->size());
    EXPECT_EQ(QSize(298, 148), body->viewport()->size());
    EXPECT_EQ(QSize(300, 170), dock->minimumSize());
    EXPECT_EQ(QSize(300, 170), dock->maximumSize());
    EXPECT_EQ(17, body->frameStyle());
    EXPECT_EQ(Qt::ScrollBarAlwaysOff, body->horizontalScrollBarPolicy());
    EXPECT_EQ(Qt::ScrollBarAlwaysOff, body->verticalScrollBarPolicy());
    EXPECT_TRUE(body->hasMouseTracking());
    EXPECT_EQ(view.get(), body->get_source_graphics_view());
    EXPECT_EQ(nullptr, dock->get_view_widget());
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, the_extent_of_a_scene_is_counted_in_whole_units)
{
    open();
    scene->setSceneRect(QRectF(0.4, 0.0, 2.2, 1.0)); // columns 0 to 2, row 0
    EXPECT_EQ(QSize(300, 100), body->get_size());
    scene->setSceneRect(QRectF(0.6, 0.0, 3.0, 1.4)); // columns 1 to 3, row 0
    EXPECT_EQ(QSize(300, 100), body->get_size());
    scene->setSceneRect(QRectF(0.0, -0.5, 1.0, 4.0)); // column 0, rows -1 to 3: 3.5 becomes 4
    EXPECT_EQ(QSize(60, 300), body->get_size());
    scene->setSceneRect(QRectF(0.0, 0.0, 2000.0, 1000.0));
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, a_second_birds_eye_view_takes_the_place_of_the_first)
{
    open();
    const QPointer<TOLV_BIRDS_EYE_VIEW> first(dock);
    const QPointer<QAction> first_action(view->get_birds_eye_view_action());
    view->create_birds_eye_view();
    EXPECT_FALSE(first->isVisible());
    EXPECT_EQ(nullptr, first_action);
    GUI_DRIVER::process_posted();
    EXPECT_EQ(nullptr, first);
    EXPECT_EQ(1, view->findChildren<TOLV_BIRDS_EYE_VIEW*>().size());
    view->get_birds_eye_view_action()->trigger();
    EXPECT_TRUE(view->get_birds_eye_view()->isVisible());
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, an_overview_without_a_grandparent_is_an_internal_error)
{
    EXPECT_INTERNAL_ERROR(TOLV_BIRDS_EYE_VIEW(scene.get(), nullptr), "parent()->parent() != nullptr");
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, the_overview_of_another_widget_scrolls_nothing)
{
    QWidget parent;
    parent.resize(500, 400);
    TOLV_BIRDS_EYE_VIEW other(scene.get(), &parent);
    EXPECT_EQ(nullptr, other.get_graphics_view_widget()->get_source_graphics_view());
    EXPECT_EQ(QRect(0, 0, 500, 400), other.get_scroll_area_visible_rect());
    ASSERT_TRUE(GUI_DRIVER::show(&parent));
    GUI_DRIVER::drag(other.get_graphics_view_widget()->viewport(), QPoint(10, 10), QPoint(40, 30));
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, transforms_of_the_overview_start_from_the_preset_one)
{
    open();
    const QTransform fitted = body->transform();
    EXPECT_EQ(fitted, body->get_default_transform());
    view->combine_with_default_bev_transform(QTransform::fromScale(2, 1));
    view->combine_with_default_bev_transform(QTransform::fromScale(1, 2));
    EXPECT_EQ(fitted * QTransform::fromScale(1, 2), body->transform());
    view->preset_bev_transform(QTransform::fromScale(0.1, 0.1), false);
    view->preset_bev_transform(QTransform::fromScale(2, 2), true);
    EXPECT_EQ(QTransform::fromScale(2, 2) * QTransform::fromScale(0.1, 0.1), body->transform());
    EXPECT_EQ(body->transform(), body->get_default_transform());
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, the_overlay_follows_a_change_of_the_overview)
{
    open();
    scroll_to(QPoint(400, 200));
    const auto get_expected = [&] { return body->mapFromScene(QRectF(400, 200, 600, 400)).boundingRect(); };
    view->preset_bev_transform(QTransform::fromScale(0.1, 0.1), false);
    GUI_DRIVER::process_posted();
    EXPECT_EQ(get_expected(), body->get_focus_rect());
    view->combine_with_default_bev_transform(QTransform::fromScale(0.5, 0.5));
    GUI_DRIVER::process_posted();
    EXPECT_EQ(get_expected(), body->get_focus_rect());
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, the_overlay_follows_the_visible_part)
{
    open();
    scroll_to(QPoint(1000, 500));
    const QRect expected = body->mapFromScene(QRectF(1000, 500, 600, 400)).boundingRect();
    EXPECT_NEAR(expected.left(), body->get_focus_rect().left(), 1);
    EXPECT_NEAR(expected.width(), body->get_focus_rect().width(), 1);
    const QImage picture = render_widget(body->viewport());
    QColor color = body->palette().color(QPalette::Highlight);
    const QColor mixed(color.red() * 80 / 255, (255 * 175 + color.green() * 80) / 255, color.blue() * 80 / 255);
    EXPECT_TRUE(is_same_color(mixed, picture.pixelColor(body->get_focus_rect().center()), 2));
    EXPECT_TRUE(is_same_color(Qt::black, picture.pixelColor(body->get_focus_rect().topLeft())));
    EXPECT_TRUE(is_same_color(Qt::red, picture.pixelColor(20, 20)));
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, the_smallest_overlay_of_a_scene_has_five_pixels)
{
    open();
    body->set_focus_rect(QRectF(1000, 500, 1, 1));
    EXPECT_EQ(QSize(5, 5), body->get_focus_rect().size());
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, painting_of_the_overview_comes_to_an_end)
{
    open();
    scroll_to(QPoint(500, 100));
    for (int i = 0; i < 10; ++i)
        GUI_DRIVER::process_posted();
    const int count = item->paint_count;
    for (int i = 0; i < 20; ++i)
        GUI_DRIVER::process_posted();
    EXPECT_EQ(count, item->paint_count);
    view->update_birds_eye_view();
    GUI_DRIVER::process_posted();
    EXPECT_EQ(count + 1, item->paint_count);
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, a_drag_of_the_overlay_scrolls_the_view)
{
    open();
    scroll_to(QPoint(400, 200));
    const QPoint start = body->get_focus_rect().center();
    GUI_DRIVER::press(body->viewport(), start);
    EXPECT_EQ(Qt::ClosedHandCursor, body->cursor().shape());
    GUI_DRIVER::move_to(body->viewport(), start + QPoint(10, 5));
    // 2000 by 1000 pixels over 300 by 150: 66.7 and 33.3.
    EXPECT_EQ(QPoint(466, 233), get_scroll_position());
    GUI_DRIVER::release(body->viewport(), start + QPoint(10, 5));
    EXPECT_EQ(Qt::ArrowCursor, body->cursor().shape());
    GUI_DRIVER::hover(body->viewport(), start);
    EXPECT_EQ(Qt::OpenHandCursor, body->cursor().shape());
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, a_press_outside_of_the_overlay_brings_its_centre_to_the_next_move)
{
    open();
    const QPoint centre = body->get_focus_rect().center();
    GUI_DRIVER::press(body->viewport(), centre + QPoint(100, 60));
    EXPECT_EQ(QPoint(0, 0), get_scroll_position());
    GUI_DRIVER::move_to(body->viewport(), centre + QPoint(99, 60));
    EXPECT_EQ(QPoint(660, 400), get_scroll_position());
    GUI_DRIVER::release(body->viewport(), centre + QPoint(99, 60));
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, the_second_press_of_a_double_click_begins_a_drag_like_any_other)
{
    open();
    QWidget* const viewport = body->viewport();
    const QPoint centre = body->get_focus_rect().center();
    QMouseEvent press(QEvent::MouseButtonDblClick, centre + QPoint(100, 60), viewport->mapToGlobal(QPoint(0, 0)),
                      Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(viewport, &press);
    QMouseEvent move(QEvent::MouseMove, centre + QPoint(30, 0), viewport->mapToGlobal(QPoint(0, 0)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(viewport, &move);
    EXPECT_EQ(QPoint(200, 0), get_scroll_position());
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, it_can_be_told_to_scroll_another_view)
{
    open();
    TOLV_GRAPHICS_VIEW other;
    other.setScene(scene.get());
    other.resize(300, 200);
    ASSERT_TRUE(GUI_DRIVER::show(&other));
    view->activateWindow();
    view->raise();
    other.horizontalScrollBar()->setValue(0);
    view->set_bev_source_graphics_view(&other);
    EXPECT_EQ(&other, body->get_source_graphics_view());
    const QPoint start = body->get_focus_rect().center();
    GUI_DRIVER::drag(body->viewport(), start, start + QPoint(20, 0));
    EXPECT_GT(other.horizontalScrollBar()->value(), 100);
    EXPECT_EQ(QPoint(0, 0), get_scroll_position());
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, a_rectangle_drawn_in_the_overview_is_focused_on)
{
    open();
    QRectF expected;
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(body->viewport(), QPoint(60, 30), Qt::RightButton); });
    script.then([&] { GUI_DRIVER::move_to(body->viewport(), QPoint(100, 50)); });
    script.then(
        [&]
        {
            EXPECT_EQ(Qt::SizeAllCursor, body->cursor().shape());
            // The ratio 2 adds half of the width to the height.
            expected = body->mapToScene(QRect(QPoint(60, 30), QPoint(100, 70))).boundingRect();
            GUI_DRIVER::release(body->viewport(), QPoint(100, 50), Qt::RightButton);
        });
    EXPECT_TRUE(script.run());
    ASSERT_EQ(1, view->focused.size());
    EXPECT_EQ(expected, view->focused.constFirst());
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, a_right_click_focuses_on_five_pixels_of_the_overview)
{
    open();
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(body->viewport(), QPoint(60, 30), Qt::RightButton); });
    script.then([&] { GUI_DRIVER::release(body->viewport(), QPoint(60, 30), Qt::RightButton); });
    EXPECT_TRUE(script.run());
    ASSERT_EQ(1, view->focused.size());
    EXPECT_EQ(body->mapToScene(QRect(60, 30, 5, 5)).boundingRect(), view->focused.constFirst());
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, a_rectangle_that_is_cancelled_is_not_focused_on)
{
    open();
    ASSERT_TRUE(GUI_DRIVER::focus(view.get()));
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(body->viewport(), QPoint(60, 30), Qt::RightButton); });
    script.then([&] { GUI_DRIVER::move_to(body->viewport(), QPoint(100, 50)); });
    script.then([&] { GUI_DRIVER::key_click(view.get(), Qt::Key_Escape); });
    script.then([&] { GUI_DRIVER::release(body->viewport(), QPoint(100, 50), Qt::RightButton); });
    EXPECT_TRUE(script.run());
    EXPECT_TRUE(view->focused.isEmpty());
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, an_overview_that_goes_away_in_the_middle_of_a_rectangle_ends_it)
{
    std::unique_ptr<QDialog> dialog;
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"it is closed", [&] { dock->hide(); }},
        {"the window is closed", [&] { view->close(); }},
        {"it is to be deleted later", [&] { dock->deleteLater(); }},
        {"another one takes its place", [&] { view->create_birds_eye_view(); }},
        {"the view is to be deleted later", [&] { view.release()->deleteLater(); }},
        {"a modal dialog opens",
         [&]
         {
             dialog = std::make_unique<QDialog>();
             dialog->setModal(true);
             GUI_DRIVER::show(dialog.get());
         }},
    };
    for (const auto& [name, go] : ways)
    {
        SCOPED_TRACE(name);
        open();
        INPUT_SCRIPT script;
        script.then([&] { GUI_DRIVER::press(body->viewport(), QPoint(60, 30), Qt::RightButton); });
        script.then([&] { GUI_DRIVER::move_to(body->viewport(), QPoint(100, 50)); });
        script.then(go);
        EXPECT_TRUE(script.run());
        GUI_DRIVER::process_posted();
        if (view != nullptr)
        {
            EXPECT_TRUE(view->focused.isEmpty());
            EXPECT_EQ(nullptr, view->findChild<QRubberBand*>());
        }
        dialog.reset();
        QWidget rest;
        rest.setGeometry(60, 60, 100, 100);
        GUI_DRIVER::show(&rest);
        GUI_DRIVER::release(&rest, QPoint(10, 10), Qt::RightButton);
        rest.hide();
        TearDown();
        SetUp();
    }
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, a_scene_that_goes_in_the_middle_of_a_rectangle_leaves_nothing_to_focus_on)
{
    open();
    INPUT_SCRIPT script;
    script.then([&] { GUI_DRIVER::press(body->viewport(), QPoint(60, 30), Qt::RightButton); });
    script.then([&] { scene.reset(); });
    script.then([&] { GUI_DRIVER::release(body->viewport(), QPoint(100, 50), Qt::RightButton); });
    EXPECT_TRUE(script.run());
    EXPECT_FALSE(render_widget(view.get()).isNull());
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, it_stays_in_its_corner_of_the_view)
{
    open();
    dock->do_move_widget_to_diagonal();
    EXPECT_EQ(QPoint(600 - 1 - 300, 400 - 1 - 170), dock->pos());
    view->resize(500, 350);
    GUI_DRIVER::process_posted();
    EXPECT_EQ(QPoint(500 - 1 - 300, 350 - 1 - 170), dock->pos());
    view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    GUI_DRIVER::process_posted();
    EXPECT_EQ(499 - 300 - view->verticalScrollBar()->width(), dock->x());
}

TEST_F(TOLV_GRAPHICS_VIEW_TEST, an_overview_whose_scene_is_gone_goes_on)
{
    open();
    scene.reset();
    GUI_DRIVER::process_posted();
    GUI_DRIVER::click(body->viewport(), QPoint(20, 20), Qt::RightButton);
    GUI_DRIVER::drag(body->viewport(), QPoint(20, 20), QPoint(60, 60));
    view->resize(500, 300);
    GUI_DRIVER::process_posted();
    EXPECT_FALSE(render_widget(view.get()).isNull());
    EXPECT_INTERNAL_ERROR(body->get_size(), "m_source_graphics_scene != NULL");
}
