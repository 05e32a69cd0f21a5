#include "gui_driver.h"
#include "gui_test.h"
#include "input_script.h"
#include "x11_pointer.h"

#include <QApplication>
#include <QDrag>
#include <QDropEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPushButton>
#include <QSignalSpy>

namespace
{
/// Two windows side by side under a window manager.
class SUPPORT_DISPLAY_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        ASSERT_EQ("xcb", QGuiApplication::platformName()) << "run it through tests/tools/with_display";
        first = std::make_unique<QWidget>();
        first->setGeometry(100, 100, 300, 200);
        second = std::make_unique<QWidget>();
        second->setGeometry(600, 100, 300, 200);
        ASSERT_TRUE(GUI_DRIVER::show(first.get()));
        ASSERT_TRUE(GUI_DRIVER::show(second.get()));
        ASSERT_TRUE(GUI_DRIVER::wait_for([&] { return is_settled(first.get()) && is_settled(second.get()); }));
    }
    void TearDown() override
    {
        first.reset();
        second.reset();
        TOLV_GUI_TEST::TearDown();
    }

    /// Whether the window has its frame and stands where the application thinks.
    static bool is_settled(const QWidget* window)
    {
        return get_title_height(window) > 0 &&
               X11_POINTER::get_window_position(window->winId()) == window->geometry().topLeft();
    }
    static int get_title_height(const QWidget* window)
    {
        return window->geometry().top() - window->frameGeometry().top();
    }
    static QPoint get_title_middle(const QWidget* window)
    {
        return QPoint(window->frameGeometry().center().x(),
                      window->frameGeometry().top() + get_title_height(window) / 2);
    }

    std::unique_ptr<QWidget> first;
    std::unique_ptr<QWidget> second;
};

class DRAG_SOURCE : public QWidget
{
public:
    using QWidget::QWidget;
    Qt::DropAction result = Qt::IgnoreAction;

protected:
    void mousePressEvent(QMouseEvent*) override
    {
    }
    void mouseMoveEvent(QMouseEvent*) override
    {
        auto* const drag = new QDrag(this);
        auto* const mime_data = new QMimeData;
        mime_data->setText("cell");
        drag->setMimeData(mime_data);
        result = drag->exec(Qt::CopyAction);
    }
};

class DRAG_TARGET : public QWidget
{
public:
    explicit DRAG_TARGET(QWidget* parent) : QWidget(parent)
    {
        setAcceptDrops(true);
    }
    QString dropped;

protected:
    void dragEnterEvent(QDragEnterEvent* event) override
    {
        event->acceptProposedAction();
    }
    void dropEvent(QDropEvent* event) override
    {
        dropped = event->mimeData()->text();
        event->acceptProposedAction();
    }
};
} // namespace

TEST_F(SUPPORT_DISPLAY_TEST, a_click_on_the_title_activates_the_window)
{
    EXPECT_TRUE(second->isActiveWindow());
    X11_POINTER::click(get_title_middle(first.get()));
    EXPECT_TRUE(GUI_DRIVER::wait_for([&] { return first->isActiveWindow(); }));
    EXPECT_FALSE(second->isActiveWindow());
}

TEST_F(SUPPORT_DISPLAY_TEST, a_window_is_dragged_by_its_title)
{
    const QPoint before = first->geometry().topLeft();
    const QPoint title = get_title_middle(first.get());
    // The window manager tells the application of the new place only behind the release; the server knows it at once.
    const auto get_way = [&] { return X11_POINTER::get_window_position(first->winId()) - before; };
    ASSERT_EQ(QPoint(0, 0), get_way());
    X11_POINTER::move_to(title);
    X11_POINTER::press();
    // It needs a few moves before it takes the pointer over, and counts from one of them.
    constexpr int REACH = 5;
    int step = 0;
    EXPECT_TRUE(GUI_DRIVER::wait_for(
        [&]
        {
            X11_POINTER::move_to(title + QPoint(++step % (REACH + 1), 0));
            return !get_way().isNull();
        }));
    X11_POINTER::move_to(title + QPoint(40, 60));
    EXPECT_TRUE(GUI_DRIVER::wait_for([&] { return get_way().y() == 60 && std::abs(get_way().x() - 40) <= REACH; }));
    const QPoint after = before + get_way();
    X11_POINTER::release();
    EXPECT_TRUE(GUI_DRIVER::wait_for([&] { return first->geometry().topLeft() == after; }));
}

TEST_F(SUPPORT_DISPLAY_TEST, a_real_click_arrives_in_the_widget)
{
    QPushButton button("Go", first.get());
    button.setGeometry(10, 10, 80, 30);
    button.show();
    QSignalSpy spy(&button, &QPushButton::clicked);
    X11_POINTER::click(button.mapToGlobal(QPoint(40, 15)));
    EXPECT_TRUE(GUI_DRIVER::wait_for([&] { return spy.count() == 1; }));
}

TEST_F(SUPPORT_DISPLAY_TEST, data_is_really_dragged_from_one_window_to_another)
{
    DRAG_SOURCE source(first.get());
    source.setGeometry(0, 0, 300, 200);
    source.show();
    DRAG_TARGET target(second.get());
    target.setGeometry(0, 0, 300, 200);
    target.show();
    const QPoint from = source.mapToGlobal(QPoint(50, 50));
    const QPoint to = target.mapToGlobal(QPoint(50, 50));
    INPUT_SCRIPT script;
    script.then(
        [&]
        {
            X11_POINTER::move_to(from);
            X11_POINTER::press();
            X11_POINTER::move_to(from + QPoint(20, 0));
        });
    for (const QPoint& position : GUI_DRIVER::get_way(from + QPoint(20, 0), to))
        script.then([=] { X11_POINTER::move_to(position); });
    script.wait_until([&] { return QCursor::pos() == to; }).then([] { X11_POINTER::release(); });
    script.wait_until([&] { return !target.dropped.isEmpty(); });
    EXPECT_TRUE(script.run());
    EXPECT_EQ("cell", target.dropped);
    EXPECT_TRUE(GUI_DRIVER::wait_for([&] { return source.result == Qt::CopyAction; }));
}
