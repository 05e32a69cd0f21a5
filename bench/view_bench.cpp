// What the view class and its scroll area add to a host's own painting, beside plain Qt in the same run: a drawing of
// 10000 rectangles in a window of 1000 by 1000 pixels, all of it visible or one percent of it, and a step of the wheel up
// to the end of its repaint.

#include "gui_bench.h"
#include "tolv_view.h"
#include "tolv_zoom_scroll_area.h"

#include <QApplication>
#include <QGraphicsRectItem>
#include <QGraphicsView>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include <memory>

namespace
{
constexpr int WINDOW = 1000;
constexpr int SIDE = 100; // shapes in a row, and rows
constexpr int PITCH = 100;
constexpr int SHAPE = 80;
constexpr QRect DRAWING(0, 0, SIDE* PITCH, SIDE* PITCH);

QRect get_shape(int column, int row)
{
    return {column * PITCH, row * PITCH, SHAPE, SHAPE};
}

/// The host's own painting, the same in all: the shapes that the logical rectangle touches.
void paint_shapes(QPainter* painter, const QRect& logical)
{
    const int first_column = qBound(0, logical.left() / PITCH, SIDE);
    const int last_column = qBound(-1, logical.right() / PITCH, SIDE - 1);
    const int first_row = qBound(0, logical.top() / PITCH, SIDE);
    const int last_row = qBound(-1, logical.bottom() / PITCH, SIDE - 1);
    for (int row = first_row; row <= last_row; ++row)
    {
        for (int column = first_column; column <= last_column; ++column)
            painter->fillRect(get_shape(column, row), (row + column) % 2 == 0 ? Qt::darkBlue : Qt::darkGreen);
    }
    ++GUI_BENCH::s_paints;
}

/// The view of a host.
class SHAPE_VIEW : public TOLV_VIEW
{
public:
    void paint(QPainter* painter, QPaintEvent* event, QWidget* /*widget*/, QRect /*rect*/, bool /*printing*/) override
    {
        paint_shapes(painter, get_logical(event->rect()));
    }
};

/// The same without the class.
class SHAPE_WIDGET : public QWidget
{
public:
    QTransform transform;

protected:
    void paintEvent(QPaintEvent* event) override
    {
        QPainter painter(this);
        painter.setTransform(transform);
        paint_shapes(&painter, transform.inverted().mapRect(event->rect()));
    }
};

/// A view in its scroll area, on the screen.
struct VIEW_WINDOW
{
    VIEW_WINDOW()
    {
        area.resize(WINDOW, WINDOW);
        view->set_logical_size(DRAWING);
        area.set_view(view, false);
        area.show();
        QApplication::processEvents();
    }
    void show_part(float zoom, const QRect& logical)
    {
        area.set_zoom(zoom);
        QApplication::processEvents();
        area.scroll_to_logical_rect(logical);
        QApplication::processEvents();
    }

    SHAPE_VIEW* view = new SHAPE_VIEW;
    TOLV_ZOOM_SCROLL_AREA area;
};

/// Zooms that show all of the drawing, and a hundredth of it.
constexpr float ALL = 0.095F;
constexpr float HUNDREDTH = 0.95F;
constexpr QRect MIDDLE(4000, 4000, 1000, 1000);

void repaint_view(benchmark::State& state, float zoom)
{
    VIEW_WINDOW window;
    window.show_part(zoom, MIDDLE);
    for ([[maybe_unused]] auto _ : state)
        window.view->repaint();
}
BENCHMARK_CAPTURE(repaint_view, all_visible, ALL)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(repaint_view, one_percent_visible, HUNDREDTH)->Unit(benchmark::kMicrosecond);

void repaint_bare_widget(benchmark::State& state, float zoom)
{
    VIEW_WINDOW model;
    model.show_part(zoom, MIDDLE);
    QScrollArea area;
    area.resize(WINDOW, WINDOW);
    auto* const widget = new SHAPE_WIDGET;
    widget->transform = model.view->get_transform();
    widget->resize(model.view->size());
    area.setWidget(widget);
    area.show();
    QApplication::processEvents();
    area.horizontalScrollBar()->setValue(model.area.horizontalScrollBar()->value());
    area.verticalScrollBar()->setValue(model.area.verticalScrollBar()->value());
    QApplication::processEvents();
    for ([[maybe_unused]] auto _ : state)
        widget->repaint();
}
BENCHMARK_CAPTURE(repaint_bare_widget, all_visible, ALL)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(repaint_bare_widget, one_percent_visible, HUNDREDTH)->Unit(benchmark::kMicrosecond);

void wheel_step_of_view(benchmark::State& state, float zoom)
{
    VIEW_WINDOW window;
    window.show_part(zoom, MIDDLE);
    int delta = 120;
    for ([[maybe_unused]] auto _ : state)
    {
        GUI_BENCH::turn_wheel(window.area.viewport(), delta);
        delta = -delta;
    }
}
BENCHMARK_CAPTURE(wheel_step_of_view, all_visible, ALL)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(wheel_step_of_view, one_percent_visible, HUNDREDTH)->Unit(benchmark::kMicrosecond);

void wheel_step_of_graphics_view(benchmark::State& state, qreal zoom)
{
    QGraphicsScene scene(DRAWING);
    for (int row = 0; row < SIDE; ++row)
    {
        for (int column = 0; column < SIDE; ++column)
            scene.addRect(get_shape(column, row), Qt::NoPen, (row + column) % 2 == 0 ? Qt::darkBlue : Qt::darkGreen);
    }
    ZOOMING_GRAPHICS_VIEW view(&scene);
    view.setTransformationAnchor(QGraphicsView::AnchorUnderMouse);
    view.resize(WINDOW, WINDOW);
    view.show();
    view.scale(zoom, zoom);
    view.centerOn(MIDDLE.center());
    QApplication::processEvents();
    int delta = 120;
    for ([[maybe_unused]] auto _ : state)
    {
        GUI_BENCH::turn_wheel(view.viewport(), delta);
        delta = -delta;
    }
}
BENCHMARK_CAPTURE(wheel_step_of_graphics_view, all_visible, ALL)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(wheel_step_of_graphics_view, one_percent_visible, HUNDREDTH)->Unit(benchmark::kMicrosecond);
} // namespace

int main(int argc, char** argv)
{
    return GUI_BENCH::run(argc, argv);
}
