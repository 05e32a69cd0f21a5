// A schematic of 10^3 cells and more: a whole frame without texts, one with, and a part of it at 100 percent, beside a
// QGraphicsView with the same boxes, lines and texts.

#include "gui_bench.h"
#include "netlist_reader.h"
#include "schematic.h"
#include "schematic_painter.h"

#include <QGraphicsScene>
#include <QGraphicsSimpleTextItem>
#include <QGraphicsView>
#include <QImage>
#include <QPainter>

#include <string>

namespace
{
const int CELLS = 1400;
const QSize FRAME(1000, 1000);

/// Look-up tables that take their inputs from some of those before them.
std::string make_module()
{
    std::string cells;
    std::string nets;
    for (int i = 0; i < CELLS; ++i)
    {
        const std::string number = std::to_string(i);
        const auto get_source = [i](int step) { return std::to_string(i >= step ? i - step + 2 : i % 7 + 2); };
        cells.append(i > 0 ? "," : "").append("\"lut_").append(number);
        cells.append(R"(":{"type":"SB_LUT4","port_directions":{"I0":"input","I1":"input","I2":"input","O":"output"},)");
        cells.append(R"("connections":{"I0":[)" + get_source(11) + R"(],"I1":[)" + get_source(37) + R"(],"I2":["0"],)");
        cells.append(R"("O":[)" + std::to_string(i + 2) + "]}}");
        nets.append(i > 0 ? "," : "").append("\"data_").append(number).append(R"(":{"bits":[)");
        nets.append(std::to_string(i + 2)).append("]}");
    }
    return R"({"modules":{"wide":{"cells":{)" + cells + R"(},"netnames":{)" + nets + "}}}}";
}

const SCHEMATIC& get_schematic()
{
    static const std::shared_ptr<const SCHEMATIC> schematic =
        SCHEMATIC::make(NETLIST_READER::read_text(make_module(), "wide.json").netlist, 0);
    return *schematic;
}

/// A frame in the middle of the drawing; a scale of 0 shows all of it.
QTransform get_transform(double scale)
{
    const QRectF bounds = get_schematic().bounds;
    if (scale == 0)
        scale = std::min(FRAME.width() / bounds.width(), FRAME.height() / bounds.height());
    QTransform transform = QTransform::fromTranslate(FRAME.width() / 2.0, FRAME.height() / 2.0);
    transform.scale(scale, scale);
    return transform.translate(-bounds.center().x(), -bounds.center().y());
}

void paint_schematic(benchmark::State& state, double scale)
{
    const SCHEMATIC& schematic = get_schematic();
    const SCHEMATIC_PAINTER painter;
    const QTransform transform = get_transform(scale);
    QImage image(FRAME, QImage::Format_ARGB32_Premultiplied);
    const QRect visible = transform.inverted().mapRect(QRectF(image.rect())).toAlignedRect();
    int boxes = 0;
    for (const SCHEMATIC::BOX& box : schematic.boxes)
        boxes += box.rect.intersects(visible) ? 1 : 0;
    for ([[maybe_unused]] auto _ : state)
    {
        QPainter to_image(&image);
        to_image.fillRect(image.rect(), painter.get_background_color());
        to_image.setTransform(transform);
        painter.paint(to_image, schematic, visible, transform.m11(), SCHEMATIC_PAINTER::STYLE());
    }
    state.counters["boxes"] = boxes;
}
BENCHMARK_CAPTURE(paint_schematic, whole, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(paint_schematic, half_size, 0.5)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(paint_schematic, full_size, 1)->Unit(benchmark::kMillisecond);

void add_text(QGraphicsItem* parent, const QPointF& position, const QString& text, const QFont& font)
{
    auto* const item = new QGraphicsSimpleTextItem(text, parent);
    item->setFont(font);
    item->setPos(position);
}

void fill_scene(QGraphicsScene& scene)
{
    const SCHEMATIC& schematic = get_schematic();
    QFont font;
    font.setPixelSize(11);
    for (const SCHEMATIC::WIRE& wire : schematic.wires)
        scene.addLine(QLineF(wire.from, wire.to), QPen(Qt::darkGreen, 0));
    for (const SCHEMATIC::BOX& box : schematic.boxes)
    {
        QGraphicsItem* const item = scene.addRect(box.rect, QPen(Qt::black, 0), Qt::lightGray);
        add_text(item, box.rect.topLeft(), box.title, font);
        add_text(item, box.rect.topLeft() + QPoint(0, 16), box.name, font);
        for (const SCHEMATIC::PIN& pin : box.pins)
        {
            add_text(item, pin.position, pin.name, font);
            if (!pin.label.isEmpty())
                add_text(item, pin.position - QPoint(40, 0), pin.label, font);
        }
    }
}

void paint_graphics_view(benchmark::State& state, double scale)
{
    QGraphicsScene scene;
    fill_scene(scene);
    scene.setSceneRect(get_schematic().bounds);
    QGraphicsView view(&scene);
    view.setFrameShape(QFrame::NoFrame);
    view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.resize(FRAME);
    const QTransform transform = get_transform(scale);
    view.setTransform(QTransform::fromScale(transform.m11(), transform.m11()));
    view.centerOn(get_schematic().bounds.center());
    QImage image(FRAME, QImage::Format_ARGB32_Premultiplied);
    view.grab(); // makes the index of the scene
    for ([[maybe_unused]] auto _ : state)
    {
        QPainter to_image(&image);
        view.render(&to_image, QRectF(image.rect()), view.viewport()->rect());
    }
}
BENCHMARK_CAPTURE(paint_graphics_view, whole, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(paint_graphics_view, half_size, 0.5)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(paint_graphics_view, full_size, 1)->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char** argv)
{
    return GUI_BENCH::run(argc, argv);
}
