#pragma once

#include <QApplication>
#include <QGraphicsView>
#include <QWheelEvent>

#include <benchmark/benchmark.h>

/// What benchmarks of widgets have in common: the main program, and events with the repaint that they bring about.
class GUI_BENCH
{
public:
    /// All of main(). Needs no display unless QT_QPA_PLATFORM names one.
    static int run(int argc, char** argv)
    {
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        const QApplication app(argc, argv);
        benchmark::Initialize(&argc, argv);
        if (benchmark::ReportUnrecognizedArguments(argc, argv))
            return 1;
        benchmark::RunSpecifiedBenchmarks();
        return 0;
    }

    /// The paintings so far; whoever is measured counts them.
    inline static int s_paints = 0;

    /// Makes a change and returns behind the next painting.
    template <typename CHANGE>
    static void wait_for_paint(CHANGE change)
    {
        const int paints = s_paints;
        change();
        do
        {
            QApplication::processEvents();
        } while (s_paints == paints);
    }

    /// A notch of the wheel (120 or -120) with Control held in the middle of a viewport, and all that comes of it.
    static void turn_wheel(QWidget* viewport, int delta)
    {
        const QPoint position = viewport->rect().center();
        QWheelEvent event(position, viewport->mapToGlobal(position), QPoint(), QPoint(0, delta), Qt::NoButton,
                          Qt::ControlModifier, Qt::NoScrollPhase, false);
        wait_for_paint([&] { QApplication::sendEvent(viewport, &event); });
    }
};

/// A graphics view that zooms with the wheel, as its documentation shows it.
class ZOOMING_GRAPHICS_VIEW : public QGraphicsView
{
public:
    using QGraphicsView::QGraphicsView;

protected:
    void wheelEvent(QWheelEvent* event) override
    {
        const qreal factor = event->angleDelta().y() > 0 ? 1.25 : 0.8;
        scale(factor, factor);
        event->accept();
    }
    void paintEvent(QPaintEvent* event) override
    {
        QGraphicsView::paintEvent(event);
        ++GUI_BENCH::s_paints;
    }
};
