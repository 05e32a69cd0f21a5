#pragma once

#include "gui_driver.h"
#include "gui_test.h"
#include "input_script.h"
#include "tolv_image.h"
#include "tolv_view.h"
#include "tolv_zoom_scroll_area.h"

#include <QBitmap>
#include <QDialog>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

#include <functional>
#include <memory>

/// A scroll area that remembers the zoom commands that it gets instead of carrying them out.
class COMMAND_AREA : public TOLV_ZOOM_SCROLL_AREA
{
public:
    COMMAND_AREA() : TOLV_ZOOM_SCROLL_AREA(nullptr)
    {
    }
    QStringList commands;
    std::function<void()> on_command;

    void zoom_in(QPoint* point, float delta) override
    {
        add(QStringLiteral("in %1%2").arg(delta).arg(point != nullptr ? QStringLiteral(" at a point") : QString()));
    }
    void zoom_out(QPoint* point, float delta) override
    {
        add(QStringLiteral("out %1%2").arg(delta).arg(point != nullptr ? QStringLiteral(" at a point") : QString()));
    }
    void zoom_fit() override
    {
        add(QStringLiteral("fit"));
    }
    void zoom_rect(const QRect& rect) override
    {
        add(QStringLiteral("rect %1 %2 %3 %4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height()));
    }

private:
    void add(const QString& command)
    {
        commands << command;
        if (on_command)
            on_command();
    }
};

/// A view that begins an interaction at a press, by itself.
class PRESSED_VIEW : public TOLV_VIEW
{
public:
    explicit PRESSED_VIEW(QWidget* parent) : TOLV_VIEW(parent)
    {
        QPalette white = palette();
        white.setColor(QPalette::Window, Qt::white);
        setPalette(white);
        setAutoFillBackground(true);
    }
    std::function<void(QMouseEvent*)> on_press;
    std::function<void(QPainter*)> on_paint;
    QStringList commands;
    QList<QEvent::Type> seen;
    bool is_busy = false;
    bool allows_selection = true;
    bool supports_gestures = false;
    int paint_count = 0;
    QWidget* lens_widget = nullptr; ///< of the last paint for a lens, as are the next two
    QRect lens_rect;
    bool lens_flag = true;

    bool is_rect_selection_enabled() const override
    {
        return allows_selection;
    }
    bool current_mode_supports_mouse_gesture(const QPoint& /*point*/) override
    {
        return supports_gestures;
    }
    void do_rect_selection(const QRect& rect, const QPoint& point) override
    {
        commands << QStringLiteral("select %1 %2 %3 %4 to %5 %6")
                        .arg(rect.x())
                        .arg(rect.y())
                        .arg(rect.width())
                        .arg(rect.height())
                        .arg(point.x())
                        .arg(point.y());
    }
    void selection_mode_no_mouse_gesture(QMouseEvent* event) override
    {
        commands << QStringLiteral("click %1").arg(event->button());
    }
    void paint(QPainter* painter, QPaintEvent* event, QWidget* widget, QRect rect, bool flag) override
    {
        TOLV_VIEW::paint(painter, event, widget, rect, flag);
        if (is_magnifying())
        {
            lens_widget = widget;
            lens_rect = rect;
            lens_flag = flag;
        }
        if (on_paint)
            on_paint(painter);
    }

protected:
    bool event(QEvent* event) override
    {
        seen << event->type();
        return TOLV_VIEW::event(event);
    }
    void mousePressEvent(QMouseEvent* event) override
    {
        if (!on_press || is_busy)
            return;
        const QPointer<PRESSED_VIEW> guard(this);
        seen.clear();
        is_busy = true;
        on_press(event);
        if (guard != nullptr)
            is_busy = false;
    }
    void paintEvent(QPaintEvent* event) override
    {
        ++paint_count;
        TOLV_VIEW::paintEvent(event);
    }
};

/// A view of 500 by 400 pixels that fills a scroll area of this size, 100 percent of its drawing. What begins at a press
/// is for the test to say, by view->on_press.
class TOLV_ZOOM_OVERLAY_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        area = std::make_unique<COMMAND_AREA>();
        area->setFrameShape(QFrame::NoFrame);
        area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        area->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        area->setWidgetResizable(true);
        area->setGeometry(120, 110, 500, 400);
        view = new PRESSED_VIEW(area.get());
        view->set_logical_size(QRect(0, 0, 500, 400));
        area->setWidget(view);
        ASSERT_TRUE(GUI_DRIVER::show(area.get()));
        ASSERT_EQ(QSize(500, 400), view->size());
    }
    void TearDown() override
    {
        let_go();
        area.reset();
        TOLV_GUI_TEST::TearDown();
    }

    /// Releases what is held although its widget may be gone.
    static void let_go()
    {
        if (GUI_DRIVER::get_buttons() == Qt::NoButton)
            return;
        QWidget rest;
        rest.setGeometry(120, 110, 100, 100);
        GUI_DRIVER::show(&rest);
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton})
            if (GUI_DRIVER::get_buttons() & button)
                GUI_DRIVER::release(&rest, QPoint(10, 10), button);
    }

    /// Whether the view shows one of the suite's cursors, by its picture.
    bool has_cursor(TOLV_CURSOR_ENUM cursor) const
    {
        const QBitmap shown = view->cursor().bitmap(Qt::ReturnByValue);
        return !shown.isNull() && shown.toImage() == tolv_get_cursor(cursor).bitmap(Qt::ReturnByValue).toImage();
    }

    /// A release without the move that a real one may come with.
    void send_release(const QPoint& position, Qt::MouseButton button = Qt::LeftButton,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QMouseEvent event(QEvent::MouseButtonRelease, position, view->mapToGlobal(position), button, Qt::NoButton,
                          modifiers);
        QApplication::sendEvent(view, &event);
    }

    /// Presses, moves along the points and lets a step run in the middle, by which the interaction must come to its end.
    void run_to_the_end(const QVector<QPoint>& points, Qt::MouseButton button, const std::function<void()>& step,
                        Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        INPUT_SCRIPT script;
        script.then([&] { GUI_DRIVER::press(view, points.first(), button, modifiers); });
        for (int i = 1; i < points.size(); ++i)
            script.then([=, point = points.at(i)] { GUI_DRIVER::move_to(view, point, modifiers); });
        script.then(step);
        EXPECT_TRUE(script.run());
    }

    /// The ways in which a view can go away under an interaction, each in a fresh window; `begin` sets view->on_press.
    void for_each_way_of_going(const std::function<void()>& begin, const std::function<void(const char*)>& check,
                               const QVector<QPoint>& points, Qt::MouseButton button,
                               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        struct WAY
        {
            const char* name;
            std::function<void()> go;
        };
        std::vector<WAY> ways = {
            {"the view is hidden", [&] { view->hide(); }},
            {"the window is hidden", [&] { area->hide(); }},
            {"the window is closed", [&] { area->close(); }},
            {"the view is to be deleted later", [&] { view->deleteLater(); }},
            {"the window is to be deleted later", [&] { area.release()->deleteLater(); }},
            {"the window is closed and by that deleted",
             [&]
             {
                 area->setAttribute(Qt::WA_DeleteOnClose);
                 area.release()->close();
             }},
            {"the view is taken out of its window", [&] { view->setParent(nullptr); }},
            {"a modal dialog opens", [&] { open_dialog(); }},
        };
        if (button !=
            Qt::RightButton) // Qt itself sends a context menu event behind a right press, to whatever is there
        {
            ways.push_back({"the view is deleted", [&] { delete view; }});
            ways.push_back({"the window is deleted", [&] { area.reset(); }});
        }
        for (const WAY& way : ways)
        {
            SCOPED_TRACE(way.name);
            begin();
            const QPointer<QWidget> guard(view);
            run_to_the_end(points, button, way.go, modifiers);
            if (QByteArray(way.name).contains("deleted"))
            {
                GUI_DRIVER::process_posted();
                EXPECT_EQ(nullptr, guard);
            }
            check(way.name);
            dialog.reset();
            if (guard != nullptr && guard->parent() == nullptr)
                delete guard;
            TearDown();
            SetUp();
        }
    }

    void open_dialog()
    {
        dialog = std::make_unique<QDialog>();
        dialog->setModal(true);
        GUI_DRIVER::show(dialog.get());
    }

    std::unique_ptr<COMMAND_AREA> area;
    PRESSED_VIEW* view = nullptr;
    std::unique_ptr<QDialog> dialog;
};
