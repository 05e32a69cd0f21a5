// A chip of 10^4 cells and 10^5 pieces of wire: setting its drawing up, a whole frame, and a frame that shows one
// percent of it, beside a QGraphicsView with the same rectangles and lines. Then, in a window, a step of the wheel and a
// step of the pan tool up to the end of the repaint.

#include "floorplan.h"
#include "floorplan_painter.h"
#include "floorplan_view.h"
#include "gui_bench.h"
#include "netlist_generator.h"
#include "netlist_reader.h"

#include "tolv_zoom_scroll_area.h"

#include <QAction>
#include <QApplication>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <cstdio>

namespace
{
const int SIDE = 36;
const int PIPS = 6;
const QSize FRAME(1000, 1000);

const std::shared_ptr<const NETLIST>& get_netlist()
{
    static const std::shared_ptr<const NETLIST> netlist =
        NETLIST_READER::read_text(NETLIST_GENERATOR::make_placed(SIDE, PIPS), "chip.json").netlist;
    return netlist;
}

const FLOORPLAN& get_plan()
{
    static const FLOORPLAN plan(get_netlist(), get_netlist()->top_modules[0]);
    return plan;
}

void set_up_floorplan(benchmark::State& state)
{
    get_netlist();
    for ([[maybe_unused]] auto _ : state)
    {
        const FLOORPLAN plan(get_netlist(), get_netlist()->top_modules[0]);
        benchmark::DoNotOptimize(plan.get_wires().size());
    }
    state.counters["sites"] = double(get_plan().get_sites().size());
    state.counters["wires"] = double(get_plan().get_wires().size());
}
BENCHMARK(set_up_floorplan)->Unit(benchmark::kMillisecond);

/// @param part of each side of the drawing that the frame shows
void paint_floorplan(benchmark::State& state, double part, bool shows_names)
{
    FLOORPLAN_PAINTER::STYLE style;
    style.shows_names = shows_names;
    const FLOORPLAN& plan = get_plan();
    const FLOORPLAN_PAINTER painter;
    const double scale = FRAME.width() / (plan.get_bounds().width() * part);
    const QTransform transform = QTransform::fromScale(scale, scale);
    QImage image(FRAME, QImage::Format_ARGB32_Premultiplied);
    for ([[maybe_unused]] auto _ : state)
    {
        QPainter to_image(&image);
        painter.paint(to_image, plan, transform, image.rect(), style);
    }
}
BENCHMARK_CAPTURE(paint_floorplan, whole, 1.0, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(paint_floorplan, one_percent, 0.1, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(paint_floorplan, one_percent_with_names, 0.1, true)->Unit(benchmark::kMillisecond);

void fill_scene(QGraphicsScene& scene)
{
    const FLOORPLAN& plan = get_plan();
    const FLOORPLAN_PAINTER painter;
    const QPen wire_pen(QColor(TOLV_COLOR(TOLV_FLP_NET_LINE_COLOR).get_color()), 0);
    for (const FLOORPLAN::SITE& site : plan.get_sites())
        scene.addRect(site.rect, QPen(Qt::black, 0), painter.get_site_color(site, FLOORPLAN_PAINTER::COLORING_KIND));
    for (const FLOORPLAN::WIRE& wire : plan.get_wires())
        scene.addLine(wire.x1, wire.y1, wire.x2, wire.y2, wire_pen);
}

void set_up_graphics_scene(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state)
    {
        QGraphicsScene scene;
        fill_scene(scene);
        benchmark::DoNotOptimize(scene.itemsBoundingRect());
    }
}
BENCHMARK(set_up_graphics_scene)->Unit(benchmark::kMillisecond);

void paint_graphics_view(benchmark::State& state, double part)
{
    QGraphicsScene scene;
    fill_scene(scene);
    QGraphicsView view(&scene);
    view.setFrameShape(QFrame::NoFrame);
    view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.resize(FRAME);
    const double scale = FRAME.width() / (get_plan().get_bounds().width() * part);
    view.setTransform(QTransform::fromScale(scale, scale));
    QImage image(FRAME, QImage::Format_ARGB32_Premultiplied);
    view.grab(); // makes the index of the scene
    for ([[maybe_unused]] auto _ : state)
    {
        QPainter to_image(&image);
        view.render(&to_image, QRectF(image.rect()), view.viewport()->rect());
    }
}
BENCHMARK_CAPTURE(paint_graphics_view, whole, 1.0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(paint_graphics_view, one_percent, 0.1)->Unit(benchmark::kMillisecond);

// ---- In a window ----------------------------------------------------------------------------------------------------

/// Counts what reaches the screen.
class COUNTING_VIEW : public FLOORPLAN_VIEW
{
protected:
    void paintEvent(QPaintEvent* event) override
    {
        FLOORPLAN_VIEW::paintEvent(event);
        ++GUI_BENCH::s_paints;
    }
};

/// The plan in its scroll area.
struct PLAN_WINDOW
{
    explicit PLAN_WINDOW(double part)
    {
        area.resize(FRAME);
        area.set_view(view, false);
        view->set_plan(std::make_shared<const FLOORPLAN>(get_netlist(), get_netlist()->top_modules[0]));
        area.show();
        QApplication::processEvents();
        const QRect bounds = view->get_plan()->get_bounds();
        QRect shown(QPoint(0, 0), bounds.size() * part);
        shown.moveCenter(bounds.center());
        area.zoom_on_logical_rect(shown);
        QApplication::processEvents();
    }

    FLOORPLAN_VIEW* view = new COUNTING_VIEW;
    TOLV_ZOOM_SCROLL_AREA area;
};

/// @param part of each side of the drawing that the window shows
void wheel_step_on_floorplan(benchmark::State& state, double part)
{
    PLAN_WINDOW window(part);
    int delta = 120;
    for ([[maybe_unused]] auto _ : state)
    {
        GUI_BENCH::turn_wheel(window.area.viewport(), delta);
        delta = -delta;
    }
}
BENCHMARK_CAPTURE(wheel_step_on_floorplan, whole, 1.0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(wheel_step_on_floorplan, quarter, 0.5)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(wheel_step_on_floorplan, one_percent, 0.1)->Unit(benchmark::kMillisecond);

/// The pan tool under a pointer that goes to and fro by some pixels.
void pan_step_on_floorplan(benchmark::State& state, double part)
{
    PLAN_WINDOW window(part);
    window.area.get_action(TOLV_PAN_TOOL_ACTION)->setChecked(true);
    const QPoint place = window.area.viewport()->rect().center();
    QMouseEvent press(QEvent::MouseButtonPress, place, window.view->mapToGlobal(place), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(window.view, &press);
    const QPoint start = window.view->mapToGlobal(place);
    int offset = 7;
    for ([[maybe_unused]] auto _ : state)
    {
        QMouseEvent move(QEvent::MouseMove, window.view->mapFromGlobal(start), start + QPoint(offset, offset),
                         Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        GUI_BENCH::wait_for_paint([&] { QApplication::sendEvent(window.view, &move); });
        offset = -offset;
    }
}
BENCHMARK_CAPTURE(pan_step_on_floorplan, quarter, 0.5)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(pan_step_on_floorplan, one_percent, 0.1)->Unit(benchmark::kMillisecond);

struct SCENE_WINDOW
{
    explicit SCENE_WINDOW(double part)
    {
        fill_scene(scene);
        view.resize(FRAME);
        view.setTransformationAnchor(QGraphicsView::AnchorUnderMouse);
        view.show();
        QRectF shown = scene.sceneRect();
        const QPointF middle = shown.center();
        shown.setSize(shown.size() * part);
        shown.moveCenter(middle);
        view.fitInView(shown);
        QApplication::processEvents();
    }

    QGraphicsScene scene;
    ZOOMING_GRAPHICS_VIEW view{&scene};
};

void wheel_step_on_graphics_view(benchmark::State& state, double part)
{
    SCENE_WINDOW window(part);
    int delta = 120;
    for ([[maybe_unused]] auto _ : state)
    {
        GUI_BENCH::turn_wheel(window.view.viewport(), delta);
        delta = -delta;
    }
}
BENCHMARK_CAPTURE(wheel_step_on_graphics_view, whole, 1.0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(wheel_step_on_graphics_view, quarter, 0.5)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(wheel_step_on_graphics_view, one_percent, 0.1)->Unit(benchmark::kMillisecond);

void pan_step_on_graphics_view(benchmark::State& state, double part)
{
    SCENE_WINDOW window(part);
    int offset = 14;
    for ([[maybe_unused]] auto _ : state)
    {
        GUI_BENCH::wait_for_paint(
            [&]
            {
                for (QScrollBar* bar : {window.view.horizontalScrollBar(), window.view.verticalScrollBar()})
                    bar->setValue(bar->value() + offset);
            });
        offset = -offset;
    }
}
BENCHMARK_CAPTURE(pan_step_on_graphics_view, quarter, 0.5)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(pan_step_on_graphics_view, one_percent, 0.1)->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char** argv)
{
    return GUI_BENCH::run(argc, argv);
}
