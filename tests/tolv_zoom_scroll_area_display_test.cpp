#include "tolv_zoom_fixture.h"
#include "x11_pointer.h"

namespace
{
/// The pointer is the one of the X server here, which Qt is told of and moves as on a user's screen.
class TOLV_ZOOM_SCROLL_AREA_DISPLAY_TEST : public ZOOM_TEST
{
protected:
    /// A pixel of the viewport on the screen.
    QPoint on_screen(const QPoint& in_viewport) const
    {
        return area->viewport()->mapToGlobal(in_viewport);
    }
    /// Brings the pointer there and waits until the view knows.
    void move_to(const QPoint& in_viewport)
    {
        X11_POINTER::move_to(on_screen(in_viewport));
        ASSERT_TRUE(GUI_DRIVER::wait_for([this] { return view->testAttribute(Qt::WA_UnderMouse); }));
        ASSERT_EQ(on_screen(in_viewport), QCursor::pos());
    }
};
} // namespace

TEST_F(TOLV_ZOOM_SCROLL_AREA_DISPLAY_TEST, the_pan_tool_holds_the_drawing_under_the_pointer)
{
    action(TOLV_PAN_TOOL_ACTION)->setChecked(true);
    scroll_to(100, 200);
    move_to(QPoint(200, 150));
    X11_POINTER::press();
    EXPECT_TRUE(GUI_DRIVER::wait_for([this] { return view->cursor().shape() == Qt::ClosedHandCursor; }));
    for (const QPoint& way : {QPoint(-10, -5), QPoint(-37, -21), QPoint(13, 39)})
    {
        X11_POINTER::move_to(on_screen(QPoint(200, 150) + way));
        EXPECT_TRUE(GUI_DRIVER::wait_for([&] { return values() == QPoint(100, 200) - way; }));
        EXPECT_EQ(QPoint(300, 350), view->mapFromGlobal(QCursor::pos()));
    }
    X11_POINTER::release();
    EXPECT_TRUE(GUI_DRIVER::wait_for([this] { return view->cursor().shape() == Qt::OpenHandCursor; }));
    X11_POINTER::move_to(on_screen(QPoint(50, 50)));
    EXPECT_TRUE(GUI_DRIVER::wait_for([this] { return view->mapFromGlobal(QCursor::pos()) == in_view(50, 50); }));
    GUI_DRIVER::process_posted();
    EXPECT_EQ(QPoint(87, 161), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DISPLAY_TEST, clicks_of_the_zoom_tool_leave_the_pointer_on_its_point)
{
    action(TOLV_ZOOM_TOOL_ACTION)->setChecked(true);
    scroll_to(100, 200);
    move_to(QPoint(60, 80));
    X11_POINTER::press();
    X11_POINTER::release();
    EXPECT_TRUE(GUI_DRIVER::wait_for([this] { return view->get_zoom() == 1.25F; }));
    GUI_DRIVER::process_posted();
    EXPECT_EQ(QPoint(140, 270), values());
    EXPECT_EQ(on_screen(QPoint(60, 80)), QCursor::pos());

    view->set_zoom(1.0F);
    GUI_DRIVER::process_posted();
    scroll_to(0, 0); // from where the drawing cannot be scrolled along
    move_to(QPoint(200, 150));
    X11_POINTER::press(Qt::RightButton);
    X11_POINTER::release(Qt::RightButton);
    EXPECT_TRUE(GUI_DRIVER::wait_for([this] { return view->get_zoom() < 1.0F; }));
    EXPECT_TRUE(GUI_DRIVER::wait_for([this] { return QCursor::pos() == on_screen(QPoint(160, 120)); }));
    EXPECT_EQ(QPoint(0, 0), values());
}

TEST_F(TOLV_ZOOM_SCROLL_AREA_DISPLAY_TEST, a_command_zooms_about_the_pointer_that_rests_on_the_view)
{
    scroll_to(100, 200);
    move_to(QPoint(60, 80));
    action(TOLV_ZOOM_IN_ACTION)->trigger();
    GUI_DRIVER::process_posted();
    EXPECT_EQ(QPoint(140, 270), values());
    EXPECT_EQ(on_screen(QPoint(60, 80)), QCursor::pos());
    X11_POINTER::move_to(QPoint(1000, 900));
    EXPECT_TRUE(GUI_DRIVER::wait_for([this] { return !view->testAttribute(Qt::WA_UnderMouse); }));
    action(TOLV_ZOOM_OUT_ACTION)->trigger(); // about the middle: (330, 410) * 0.8 - (190, 140)
    GUI_DRIVER::process_posted();
    EXPECT_EQ(QPoint(74, 188), values());
    EXPECT_EQ(QPoint(1000, 900), QCursor::pos());
}
