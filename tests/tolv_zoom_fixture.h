#pragma once

#include "gui_driver.h"
#include "gui_test.h"
#include "tolv_image.h"
#include "tolv_view.h"
#include "tolv_zoom_scroll_area.h"

#include <QAction>
#include <QBitmap>
#include <QCursor>
#include <QDragEnterEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QScrollBar>
#include <QSignalSpy>

#include <memory>

/// A view that remembers what reaches it, and answers as a test wants it to.
class PROBE_VIEW : public TOLV_VIEW
{
public:
    QList<QEvent::Type> seen; ///< mouse and key events, as they reach the view itself
    QList<QPoint> moves_without_buttons;
    QRect selected;
    bool supports_gestures = false;
    QList<QPoint> plain_presses; ///< presses that were handed over as no gesture
    std::function<void(QPainter*)> draw;

    QRect get_selected_rect() const override
    {
        return selected;
    }
    bool current_mode_supports_mouse_gesture(const QPoint& /*point*/) override
    {
        return supports_gestures;
    }
    void selection_mode_no_mouse_gesture(QMouseEvent* event) override
    {
        plain_presses << event->pos();
    }
    void paint(QPainter* painter, QPaintEvent* /*event*/, QWidget* /*widget*/, QRect /*rect*/,
               bool /*printing*/) override
    {
        if (draw)
            draw(painter);
    }

protected:
    void dragEnterEvent(QDragEnterEvent* event) override
    {
        event->accept();
    }
    bool event(QEvent* event) override
    {
        switch (event->type())
        {
        case QEvent::MouseMove:
            if (static_cast<QMouseEvent*>(event)->buttons() == Qt::NoButton)
                moves_without_buttons << static_cast<QMouseEvent*>(event)->pos();
            Q_FALLTHROUGH();
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::ContextMenu:
            seen << event->type();
            break;
        default:
            break;
        }
        return TOLV_VIEW::event(event);
    }
};

/// A zoom scroll area of 400 by 300 pixels without a frame, on the screen, with scroll bars 20 pixels thick, and in it a
/// drawing of 1000 by 1000 logical units at zoom 1. So the viewport measures 380 by 280, and the bars go to 620 and 720.
class ZOOM_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        // Off the view, so that no step is about the pointer unless a test brings it there; before the view comes up,
        // so that a window system has nothing to tell of it later.
        QCursor::setPos(700, 500);
        area = std::make_unique<TOLV_ZOOM_SCROLL_AREA>();
        area->setFrameShape(QFrame::NoFrame);
        area->setGeometry(100, 100, 400, 300);
        area->setStyleSheet(
            QStringLiteral("QScrollBar:vertical { width: 20px; } QScrollBar:horizontal { height: 20px; }"));
        view = new PROBE_VIEW;
        view->setMouseTracking(true);
        view->set_logical_size(QRect(0, 0, 1000, 1000));
        area->set_view(view, has_birds_eye_view);
        ASSERT_TRUE(GUI_DRIVER::show(area.get()));
        ASSERT_EQ(QSize(380, 280), area->viewport()->size());
        ASSERT_EQ(620, h()->maximum());
        ASSERT_EQ(720, v()->maximum());
        ASSERT_TRUE(GUI_DRIVER::wait_for([this] { return !view->testAttribute(Qt::WA_UnderMouse); }));
        ASSERT_EQ(QPoint(700, 500), QCursor::pos());
    }

    void TearDown() override
    {
        if (GUI_DRIVER::get_buttons() != Qt::NoButton) // the view went away under a held button
        {
            QWidget rest;
            rest.setGeometry(100, 100, 100, 100);
            GUI_DRIVER::show(&rest);
            for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton, Qt::MiddleButton})
            {
                if (GUI_DRIVER::get_buttons().testFlag(button))
                    GUI_DRIVER::release(&rest, QPoint(50, 50), button);
            }
        }
        area.reset();
        TOLV_GUI_TEST::TearDown();
    }

    QScrollBar* h() const
    {
        return area->horizontalScrollBar();
    }
    QScrollBar* v() const
    {
        return area->verticalScrollBar();
    }
    QPoint values() const
    {
        return {h()->value(), v()->value()};
    }
    void scroll_to(int x, int y)
    {
        h()->setValue(x);
        v()->setValue(y);
    }
    QAction* action(TOLV_ACTION_ENUM command) const
    {
        return area->get_action(command);
    }
    /// Whether the view shows a cursor of the suite. They have bitmaps, no pixmap.
    bool has_cursor(TOLV_CURSOR_ENUM cursor) const
    {
        const QCursor expected = tolv_get_cursor(cursor);
        const QCursor actual = view->cursor();
        return actual.shape() == Qt::BitmapCursor && actual.hotSpot() == expected.hotSpot() &&
               actual.bitmap(Qt::ReturnByValue).toImage() == expected.bitmap(Qt::ReturnByValue).toImage() &&
               actual.mask(Qt::ReturnByValue).toImage() == expected.mask(Qt::ReturnByValue).toImage();
    }
    /// Moves without buttons that the view felt since the last call.
    int take_moves()
    {
        const int count = view->moves_without_buttons.size();
        view->moves_without_buttons.clear();
        return count;
    }
    /// A pixel of the viewport in the coordinates of the view, as long as nothing scrolls.
    QPoint in_view(int x, int y) const
    {
        return QPoint(x, y) + values();
    }

    std::unique_ptr<TOLV_ZOOM_SCROLL_AREA> area;
    QPointer<PROBE_VIEW> view;
    bool has_birds_eye_view = false;
};
