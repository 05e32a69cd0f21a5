// A hierarchy of 10^3 modules: making its graph, setting up its scene, and a frame of the view with all of it, with a part
// of it at 100 percent, and after a change of the selection.

#include "gui_bench.h"
#include "hierarchy_graph_scene.h"
#include "hierarchy_graph_view.h"
#include "netlist_reader.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <string>

namespace
{
const int MODULES = 1000;
const int CHILDREN = 4;
const QSize FRAME(1000, 1000);

/// A tree of modules whose leaves are used by two others, too.
const std::shared_ptr<const NETLIST>& get_netlist()
{
    const auto make = []
    {
        std::string text;
        for (int i = 0; i < MODULES; ++i)
        {
            std::string cells;
            const auto add = [&cells](int child)
            {
                cells.append(cells.empty() ? "" : ",").append("\"u_").append(std::to_string(child));
                cells.append(R"(":{"type":"module_)").append(std::to_string(child)).append("\"}");
            };
            for (int child = CHILDREN * i + 1; child <= CHILDREN * i + CHILDREN && child < MODULES; ++child)
                add(child);
            if (i > 20 && i < 120)
                add(MODULES - i);
            text.append(i > 0 ? ",\"module_" : "\"module_").append(std::to_string(i));
            text.append(R"(":{"cells":{)").append(cells).append("}}");
        }
        return NETLIST_READER::read_text(R"({"modules":{)" + text + "}}", "tree.json").netlist;
    };
    static const std::shared_ptr<const NETLIST> netlist = make();
    return netlist;
}

const std::shared_ptr<const HIERARCHY_GRAPH>& get_graph()
{
    static const std::shared_ptr<const HIERARCHY_GRAPH> graph = HIERARCHY_GRAPH::make(get_netlist()).graph;
    return graph;
}

void make_graph(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(HIERARCHY_GRAPH::make(get_netlist()).graph.get());
    state.counters["modules"] = double(get_graph()->get_nodes().size());
    state.counters["edges"] = double(get_graph()->get_edges().size());
}
BENCHMARK(make_graph)->Unit(benchmark::kMillisecond);

void set_up_scene(benchmark::State& state)
{
    HIERARCHY_GRAPH_SCENE scene;
    for ([[maybe_unused]] auto _ : state)
        scene.set_graph(get_graph());
}
BENCHMARK(set_up_scene)->Unit(benchmark::kMillisecond);

/// @param level of zoom; 0 for all of the graph
void paint_view(benchmark::State& state, double level, bool selects)
{
    HIERARCHY_GRAPH_VIEW view;
    view.get_scene()->set_graph(get_graph());
    view.resize(FRAME);
    view.show();
    view.zoom_fit();
    if (level > 0)
        view.zoom_by(level / view.get_level());
    QApplication::processEvents();
    QImage image(FRAME, QImage::Format_ARGB32_Premultiplied);
    std::uint32_t node = 0;
    for ([[maybe_unused]] auto _ : state)
    {
        if (selects)
            view.get_scene()->select({node = (node + 1) % MODULES});
        QPainter painter(&image);
        view.render(&painter, QRectF(image.rect()), view.viewport()->rect());
    }
}
BENCHMARK_CAPTURE(paint_view, whole, 0, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(paint_view, full_size, 1, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(paint_view, whole_with_another_selection, 0, true)->Unit(benchmark::kMillisecond);
} // namespace

int main(int argc, char** argv)
{
    return GUI_BENCH::run(argc, argv);
}
