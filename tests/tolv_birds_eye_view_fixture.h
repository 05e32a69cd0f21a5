#pragma once

#include "gui_driver.h"
#include "gui_test.h"
#include "tolv_birds_eye_view.h"
#include "tolv_view.h"
#include "tolv_zoom_scroll_area.h"

#include <QAction>
#include <QPainter>
#include <QScrollBar>
#include <QToolButton>

#include <memory>

/// A drawing with a red left and a green right half, that remembers how its overview was asked for.
class TWO_COLOR_VIEW : public TOLV_VIEW
{
public:
    TWO_COLOR_VIEW() : TOLV_VIEW(nullptr)
    {
    }
    QTransform overview_transform;
    bool is_antialiased = false;
    QWidget* overview_widget = nullptr;
    QRect overview_rect;
    int overview_count = 0;

    void paint(QPainter* painter, QPaintEvent* /*event*/, QWidget* /*widget*/, QRect /*rect*/,
               bool /*printing*/) override
    {
        draw(painter);
    }
    void paint_birds_eye_view(QPainter* painter, QPaintEvent* /*event*/, QWidget* widget, QRect rect) override
    {
        overview_transform = painter->transform();
        is_antialiased = painter->testRenderHint(QPainter::Antialiasing);
        overview_widget = widget;
        overview_rect = rect;
        ++overview_count;
        draw(painter);
    }

private:
    void draw(QPainter* painter) const
    {
        QRect left = get_logical_rect();
        left.setWidth(left.width() / 2);
        painter->fillRect(get_logical_rect(), Qt::green);
        painter->fillRect(left, Qt::red);
    }
};

/// A scroll area that remembers the rectangles to which it zooms.
class RECORDED_AREA : public TOLV_ZOOM_SCROLL_AREA
{
public:
    RECORDED_AREA() : TOLV_ZOOM_SCROLL_AREA(nullptr)
    {
    }
    QList<QRect> rects;

    void zoom_rect(const QRect& rect) override
    {
        rects << rect;
        TOLV_ZOOM_SCROLL_AREA::zoom_rect(rect);
    }
};

/// A scroll area of 700 by 500 pixels without a frame, with a drawing of 1000 by 500 units and its bird's eye view. The
/// scroll bars are on for good unless a test says otherwise.
class TOLV_BIRDS_EYE_VIEW_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        area = std::make_unique<RECORDED_AREA>();
        area->setFrameShape(QFrame::NoFrame);
        area->setGeometry(40, 40, 700, 500);
        view = new TWO_COLOR_VIEW;
        view->set_logical_size(QRect(0, 0, 1000, 500));
        area->set_view(view, true);
        dock = area->get_birds_eye_view();
        ASSERT_NE(nullptr, dock);
        body = dock->get_view_widget();
        ASSERT_NE(nullptr, body);
        ASSERT_TRUE(GUI_DRIVER::show(area.get()));
    }
    void TearDown() override
    {
        area.reset();
        TOLV_GUI_TEST::TearDown();
    }

    void set_bars(Qt::ScrollBarPolicy policy)
    {
        area->setHorizontalScrollBarPolicy(policy);
        area->setVerticalScrollBarPolicy(policy);
        GUI_DRIVER::process_posted();
    }
    /// Shows the overview as a user does.
    void open()
    {
        area->get_action(TOLV_BIRDS_EYE_VIEW_ACTION)->trigger();
        GUI_DRIVER::process_posted();
    }
    /// Sets the zoom to a level and scrolls to a logical point.
    void zoom_to(float level, const QPoint& top_left)
    {
        view->set_zoom(level);
        GUI_DRIVER::process_posted();
        area->horizontalScrollBar()->setValue(view->get_physical(top_left).x());
        area->verticalScrollBar()->setValue(view->get_physical(top_left).y());
        GUI_DRIVER::process_posted();
    }
    QToolButton* get_button(const char* name) const
    {
        return GUI_DRIVER::find_widget<QToolButton>(dock->titleBarWidget(), QString::fromLatin1(name));
    }
    QPoint get_scroll_position() const
    {
        return {area->horizontalScrollBar()->value(), area->verticalScrollBar()->value()};
    }
    /// The names of the corner buttons that show, in their order.
    QStringList get_moves() const
    {
        static const char* const names[] = {"m_goto_bottom_right_button", "m_goto_bottom_left_button",
                                            "m_goto_top_right_button",    "m_goto_top_left_button",
                                            "m_goto_top_button",          "m_goto_bottom_button",
                                            "m_goto_right_button",        "m_goto_left_button"};
        QStringList moves;
        for (const char* const name : names)
        {
            if (!get_button(name)->isHidden())
                moves
                    << QString::fromLatin1(name).section(QLatin1String("m_goto_"), 1).remove(QStringLiteral("_button"));
        }
        return moves;
    }

    std::unique_ptr<RECORDED_AREA> area;
    TWO_COLOR_VIEW* view = nullptr;
    TOLV_BIRDS_EYE_VIEW* dock = nullptr;
    TOLV_BIRDS_EYE_VIEW_WIDGET* body = nullptr;
};
