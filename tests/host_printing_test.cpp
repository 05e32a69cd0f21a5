#include "drawing_pane.h"
#include "floorplan_view.h"
#include "hierarchy_graph_pane.h"
#include "hierarchy_graph_scene.h"
#include "hierarchy_graph_view.h"
#include "netlist_reader.h"
#include "schematic_view.h"

#include "gui_answers.h"
#include "gui_driver.h"
#include "gui_test.h"
#include "picture.h"
#include "recording_paint_device.h"
#include "test_environment.h"

#include "tolv_color.h"
#include "tolv_zoom_scroll_area.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QPrinter>
#include <QRegularExpression>

#include <cmath>

namespace
{
const double MILLIMETRES_PER_INCH = 25.4;
const double POINTS_PER_INCH = 72;

std::shared_ptr<const NETLIST> read_shipped(const char* form)
{
    return NETLIST_READER::read_file(std::string(WORKBENCH_DESIGNS "/serial_station_") + form + ".json").netlist;
}

/// The panes with the shipped design; each test prints without a printer.
class host_printing : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        m_schematic_view = new SCHEMATIC_VIEW;
        m_schematic = std::make_unique<DRAWING_PANE>(m_schematic_view, "Schematic");
        m_floorplan_view = new FLOORPLAN_VIEW;
        m_floorplan = std::make_unique<DRAWING_PANE>(m_floorplan_view, "Floorplan");
        m_hierarchy = std::make_unique<HIERARCHY_GRAPH_PANE>();
    }

    void TearDown() override
    {
        m_schematic.reset();
        m_floorplan.reset();
        m_hierarchy.reset();
        TOLV_GUI_TEST::TearDown();
    }

    void show_schematic()
    {
        const std::shared_ptr<const NETLIST> netlist = read_shipped("rtl");
        m_schematic_view->set_module(netlist, netlist->top_modules[0]);
        ASSERT_TRUE(GUI_DRIVER::show(m_schematic.get()));
        ASSERT_TRUE(GUI_DRIVER::wait_for([this] { return !m_schematic_view->is_drawing(); }, 30000));
    }

    void show_floorplan()
    {
        const std::shared_ptr<const NETLIST> netlist = read_shipped("placed");
        m_floorplan_view->set_plan(std::make_shared<const FLOORPLAN>(netlist, netlist->top_modules[0]));
        ASSERT_TRUE(GUI_DRIVER::show(m_floorplan.get()));
    }

    void show_hierarchy()
    {
        m_hierarchy->get_view()->set_netlist(read_shipped("rtl"));
        ASSERT_TRUE(GUI_DRIVER::show(m_hierarchy.get()));
        ASSERT_TRUE(GUI_DRIVER::wait_for([this] { return !m_hierarchy->get_view()->is_drawing(); }, 30000));
    }

    static QString get_file()
    {
        return QString::fromStdString(TEST_ENVIRONMENT::get_folder() + "/printed.pdf");
    }

    /// Into a file, on paper of which all but the margins (left, top, right, bottom) is printable.
    static void set_up(QPrinter& printer, int resolution, const QMarginsF& millimetres = QMarginsF(10, 10, 10, 10))
    {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(get_file());
        printer.setResolution(resolution);
        printer.setPageSize(QPageSize(QPageSize::A4));
        EXPECT_TRUE(printer.setPageMargins(millimetres, QPageLayout::Millimeter));
    }

    static QSize get_page_size(const QPrinter& printer)
    {
        return printer.pageLayout().paintRectPixels(printer.resolution()).size();
    }

    /// What the printable part of the page gets, on magenta.
    static QImage print_image(const DRAWING_FRAME& frame, const QPrinter& printer)
    {
        QImage image(get_page_size(printer), QImage::Format_ARGB32_Premultiplied);
        const int dots_per_metre = int(std::lround(printer.resolution() * 1000 / MILLIMETRES_PER_INCH));
        image.setDotsPerMeterX(dots_per_metre);
        image.setDotsPerMeterY(dots_per_metre);
        image.fill(Qt::magenta);
        QPainter painter(&image);
        frame.paint_page(&painter, &printer);
        return image;
    }

    static QImage print_image(const DRAWING_FRAME& frame, int resolution = 96)
    {
        QPrinter printer;
        set_up(printer, resolution);
        frame.prepare_printer(&printer);
        return print_image(frame, printer);
    }

    static QByteArray print_pdf(const DRAWING_FRAME& frame, QPrinter& printer)
    {
        QPainter painter;
        EXPECT_TRUE(painter.begin(&printer));
        frame.paint_page(&painter, &printer);
        EXPECT_TRUE(painter.end());
        QFile file(get_file());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll();
    }

    /// The size of the paper in a PDF file, in points.
    static QSize get_paper(const QByteArray& pdf)
    {
        static const QRegularExpression box(R"(/MediaBox \[0 0 (\S+) (\S+)\])");
        const QRegularExpressionMatch match = box.match(QString::fromLatin1(pdf.constData(), pdf.size()));
        EXPECT_TRUE(match.hasMatch());
        return QSizeF(match.captured(1).toDouble(), match.captured(2).toDouble()).toSize();
    }

    /// The first stream of a PDF file, which draws its page, unpacked.
    static QByteArray get_page_stream(const QByteArray& pdf)
    {
        const QByteArray mark("stream\n");
        for (int at = pdf.indexOf(mark); at >= 0; at = pdf.indexOf(mark, at + 1))
        {
            const QByteArray text = qUncompress(QByteArray("\0\1\0\0", 4) + pdf.mid(at + mark.size()));
            if (text.contains(" cm\n"))
                return text;
        }
        return QByteArray();
    }

    SCHEMATIC_VIEW* m_schematic_view = nullptr;
    FLOORPLAN_VIEW* m_floorplan_view = nullptr;
    std::unique_ptr<DRAWING_PANE> m_schematic;
    std::unique_ptr<DRAWING_PANE> m_floorplan;
    std::unique_ptr<HIERARCHY_GRAPH_PANE> m_hierarchy;
};

TEST_F(host_printing, the_floorplan_fills_the_printable_part_in_the_middle)
{
    show_floorplan();
    const QColor edge = TOLV_COLOR(TOLV_FLP_DIE_EDGE_LINE_COLOR).get_color();
    const QRect bounds = m_floorplan_view->get_plan()->get_bounds();
    for (const QMarginsF& margins : {QMarginsF(10, 10, 10, 10), QMarginsF(60, 10, 5, 30), QMarginsF(10, 120, 10, 20)})
    {
        QPrinter printer;
        set_up(printer, 96, margins);
        const QSize page = get_page_size(printer);
        const QRect drawn = find_color_rect(print_image(*m_floorplan, printer), edge);
        const double scale = std::min(double(page.width()) / bounds.width(), double(page.height()) / bounds.height());
        EXPECT_NEAR(drawn.width(), bounds.width() * scale, 2);
        EXPECT_NEAR(drawn.height(), bounds.height() * scale, 2);
        EXPECT_NEAR(drawn.center().x(), page.width() / 2.0, 2);
        EXPECT_NEAR(drawn.center().y(), page.height() / 2.0, 2);
        EXPECT_TRUE(QRect(QPoint(0, 0), page).contains(drawn));
    }
}

TEST_F(host_printing, the_schematic_and_the_graph_are_whole_and_in_the_middle)
{
    show_schematic();
    show_hierarchy();
    const auto check = [](const QImage& image, const QSizeF& size)
    {
        // The ground is that of the drawing; what is drawn on it has a margin of its own.
        const double scale = std::min(image.width() / size.width(), image.height() / size.height());
        const QRectF room((image.width() - size.width() * scale) / 2, (image.height() - size.height() * scale) / 2,
                          size.width() * scale, size.height() * scale);
        const QRgb ground = image.pixel(room.toRect().topLeft() + QPoint(2, 2));
        EXPECT_NE(QColor(ground), QColor(Qt::magenta));
        QRect ground_rect;
        QRect drawn;
        for (int y = 0; y < image.height(); ++y)
        {
            for (int x = 0; x < image.width(); ++x)
            {
                if (image.pixel(x, y) == QColor(Qt::magenta).rgb())
                    continue;
                ground_rect |= QRect(x, y, 1, 1);
                if (image.pixel(x, y) != ground && room.adjusted(2, 2, -2, -2).contains(x, y))
                    drawn |= QRect(x, y, 1, 1);
            }
        }
        EXPECT_TRUE(room.adjusted(-2, -2, 2, 2).contains(ground_rect)) << "with nothing beside it";
        EXPECT_TRUE(QRectF(ground_rect).contains(room.adjusted(2, 2, -2, -2)));
        EXPECT_GT(drawn.width(), 0.8 * room.width());
        EXPECT_GT(drawn.height(), 0.8 * room.height());
        EXPECT_TRUE(room.adjusted(4, 4, -4, -4).contains(drawn)) << "with its margin";
    };
    check(print_image(*m_schematic), m_schematic_view->get_schematic()->bounds.size());
    QImage graph = print_image(*m_hierarchy);
    check(graph, m_hierarchy->get_view()->sceneRect().size());
}

TEST_F(host_printing, a_wide_drawing_lays_the_page_on_its_side)
{
    show_floorplan();
    QPrinter printer;
    set_up(printer, 96);
    const auto get_orientation = [&](const char* cells)
    {
        const std::string text = std::string(R"({"modules":{"chip":{"cells":{)") + cells + "}}}}";
        const std::shared_ptr<const NETLIST> netlist = NETLIST_READER::read_text(text, "chip.json").netlist;
        m_floorplan_view->set_plan(std::make_shared<const FLOORPLAN>(netlist, 0));
        m_floorplan->prepare_printer(&printer);
        return printer.pageLayout().orientation();
    };
    EXPECT_EQ(get_orientation(R"("a":{"type":"L","attributes":{"NEXTPNR_BEL":"X3/Y1/lc0"}})"), QPageLayout::Landscape);
    EXPECT_EQ(get_paper(print_pdf(*m_floorplan, printer)), QSize(842, 595));
    EXPECT_EQ(get_orientation(R"("a":{"type":"L","attributes":{"NEXTPNR_BEL":"X1/Y3/lc0"}})"), QPageLayout::Portrait);
    EXPECT_EQ(get_paper(print_pdf(*m_floorplan, printer)), QSize(595, 842));
    EXPECT_EQ(printer.docName(), "Floorplan");
}

TEST_F(host_printing, a_file_has_one_page_that_begins_behind_the_margins)
{
    show_schematic();
    show_floorplan();
    show_hierarchy();
    for (const DRAWING_FRAME* frame :
         {static_cast<const DRAWING_FRAME*>(m_schematic.get()), static_cast<const DRAWING_FRAME*>(m_floorplan.get()),
          static_cast<const DRAWING_FRAME*>(m_hierarchy.get())})
    {
        QPrinter printer;
        set_up(printer, 600, QMarginsF(30, 15, 10, 10));
        const QByteArray pdf = print_pdf(*frame, printer);
        EXPECT_TRUE(pdf.startsWith("%PDF-"));
        EXPECT_EQ(pdf.count("/Type /Page\n"), 1);
        EXPECT_EQ(get_paper(pdf), QSize(595, 842));
        // What the pictures of the other tests take for granted: a printer's own origin lies behind the margins.
        static const QRegularExpression matrix(R"(\n(\S+) 0 0 (\S+) (\S+) (\S+) cm\n)");
        const QString stream = QString::fromLatin1(get_page_stream(pdf));
        const QRegularExpressionMatch match = matrix.match(stream);
        ASSERT_TRUE(match.hasMatch()) << stream.left(200).toStdString();
        EXPECT_NEAR(match.captured(1).toDouble(), POINTS_PER_INCH / 600, 1e-4);
        EXPECT_NEAR(match.captured(3).toDouble(), 30 / MILLIMETRES_PER_INCH * POINTS_PER_INCH, 1);
        EXPECT_GT(stream.size(), 2000);
    }
}

TEST_F(host_printing, what_is_chosen_or_visible_makes_no_difference)
{
    show_schematic();
    show_floorplan();
    show_hierarchy();
    const QImage schematic = print_image(*m_schematic);
    const QImage floorplan = print_image(*m_floorplan);
    const QImage hierarchy = print_image(*m_hierarchy);
    m_schematic_view->select({2});
    m_floorplan_view->select({5});
    m_hierarchy->get_view()->get_scene()->select({1});
    m_hierarchy->get_view()->set_current_module(0);
    m_schematic->get_area()->zoom_in(nullptr, 5);
    m_floorplan->get_area()->zoom_in(nullptr, 5);
    m_hierarchy->get_view()->zoom_by(5);
    EXPECT_TRUE(expect_same_picture(schematic, print_image(*m_schematic)));
    EXPECT_TRUE(expect_same_picture(floorplan, print_image(*m_floorplan)));
    // Edges that cross lie in another order.
    EXPECT_TRUE(expect_same_picture(hierarchy, print_image(*m_hierarchy), 2));
    // Nor does the printing to what is chosen on the screen.
    EXPECT_EQ(m_schematic_view->get_selection().size(), 1u);
    EXPECT_TRUE(m_hierarchy->get_view()->get_scene()->get_style().shows_selection);
}

TEST_F(host_printing, lines_are_as_thick_on_paper_as_on_a_screen)
{
    show_schematic();
    const int resolution = 600;
    const QImage image = print_image(*m_schematic, resolution);
    const SCHEMATIC& schematic = *m_schematic_view->get_schematic();
    const auto wire = std::max_element(
        schematic.wires.begin(), schematic.wires.end(),
        [&](const SCHEMATIC::WIRE& a, const SCHEMATIC::WIRE& b)
        {
            const auto get_length = [&](const SCHEMATIC::WIRE& w) {
                return schematic.nets[w.net].width == 1 && !schematic.nets[w.net].is_clock ? w.to.y() - w.from.y() : -1;
            };
            return get_length(a) < get_length(b);
        });
    const QRect bounds = schematic.bounds;
    const double scale =
        std::min(double(image.width()) / (bounds.width() + 1), double(image.height()) / (bounds.height() + 1));
    const QPointF origin((image.width() - bounds.width() * scale) / 2 - bounds.left() * scale,
                         (image.height() - bounds.height() * scale) / 2 - bounds.top() * scale);
    const QPoint middle = (QPointF((wire->from + wire->to)) / 2 * scale + origin).toPoint();
    const QColor color = TOLV_COLOR(TOLV_RTLV_NET_LINE_COLOR).get_color();
    const int thickness = count_pixels(image, color, 0, QRect(middle - QPoint(8, 0), middle + QPoint(8, 0)));
    EXPECT_NEAR(thickness, resolution / 96.0, 1.5);
}

TEST_F(host_printing, a_printer_gets_shapes_and_texts_and_no_picture)
{
    show_schematic();
    show_floorplan();
    show_hierarchy();
    QPrinter printer;
    set_up(printer, 96);
    RECORDING_PAINT_DEVICE schematic(get_page_size(printer));
    {
        QPainter painter(&schematic);
        m_schematic->paint_page(&painter, &printer);
    }
    EXPECT_FALSE(schematic.find("text").isEmpty());
    EXPECT_FALSE(schematic.find("line").isEmpty());
    EXPECT_TRUE(schematic.find("image").isEmpty());
    RECORDING_PAINT_DEVICE floorplan(get_page_size(printer));
    {
        QPainter painter(&floorplan);
        m_floorplan->paint_page(&painter, &printer);
    }
    EXPECT_GT(floorplan.find("rect").size(), int(m_floorplan_view->get_plan()->get_sites().size()));
    EXPECT_TRUE(floorplan.find("image").isEmpty());
    RECORDING_PAINT_DEVICE hierarchy(get_page_size(printer));
    {
        QPainter painter(&hierarchy);
        m_hierarchy->paint_page(&painter, &printer);
    }
    QStringList texts;
    for (const PAINT_COMMAND& command : hierarchy.find("text"))
        texts << command.text;
    EXPECT_FALSE(texts.filter("uart").isEmpty());
    EXPECT_TRUE(hierarchy.find("image").isEmpty());
}

TEST_F(host_printing, an_empty_pane_prints_an_empty_page)
{
    ASSERT_TRUE(GUI_DRIVER::show(m_schematic.get()));
    for (const DRAWING_FRAME* frame :
         {static_cast<const DRAWING_FRAME*>(m_schematic.get()), static_cast<const DRAWING_FRAME*>(m_floorplan.get()),
          static_cast<const DRAWING_FRAME*>(m_hierarchy.get())})
    {
        QPrinter printer;
        set_up(printer, 96);
        frame->prepare_printer(&printer);
        EXPECT_EQ(print_pdf(*frame, printer).count("/Type /Page\n"), 1);
    }
}
} // namespace
