#include "x11_pointer.h"

#include <gtest/gtest.h>

#include <QAbstractNativeEventFilter>
#include <QDeadlineTimer>
#include <QGuiApplication>
#include <QPoint>
#include <QTimer>
#include <QWindow>

#include <xcb/xcb.h>
#include <xcb/xcbext.h>

#include <cstdlib>
#include <cstring>

namespace
{
/// The request of the extension XTEST that makes the server believe in an input device.
struct FAKE_INPUT_REQUEST
{
    std::uint8_t major_opcode;
    std::uint8_t minor_opcode;
    std::uint16_t length;
    std::uint8_t type;
    std::uint8_t detail;
    std::uint8_t padding_1[2];
    std::uint32_t time;
    xcb_window_t root;
    std::uint8_t padding_2[8];
    std::int16_t root_x;
    std::int16_t root_y;
    std::uint8_t padding_3[7];
    std::uint8_t device;
};
static_assert(sizeof(FAKE_INPUT_REQUEST) == 36, "as the protocol has it");

constexpr std::uint8_t FAKE_INPUT_OPCODE = 2;

xcb_extension_t* get_test_extension()
{
    static xcb_extension_t extension = {"XTEST", 0};
    return &extension;
}

/// A connection of its own, for the life of the process; null, and a failed test, without a server or the extension.
xcb_connection_t* get_connection()
{
    static xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    const xcb_query_extension_reply_t* reply = nullptr;
    if (xcb_connection_has_error(connection) == 0)
        reply = xcb_get_extension_data(connection, get_test_extension());
    if (reply != nullptr && reply->present)
        return connection;
    ADD_FAILURE() << "there is no X server with the extension XTEST";
    return nullptr;
}

void send_input(std::uint8_t type, std::uint8_t detail, const QPoint& position)
{
    xcb_connection_t* const connection = get_connection();
    if (connection == nullptr)
        return;
    FAKE_INPUT_REQUEST request;
    std::memset(&request, 0, sizeof(request));
    request.type = type;
    request.detail = detail;
    request.root_x = static_cast<std::int16_t>(position.x());
    request.root_y = static_cast<std::int16_t>(position.y());
    // The library wants two free entries in front of the request's own.
    iovec parts[3] = {};
    parts[2].iov_base = &request;
    parts[2].iov_len = sizeof(request);
    const xcb_protocol_request_t description = {1, get_test_extension(), FAKE_INPUT_OPCODE, 1};
    xcb_send_request(connection, 0, parts + 2, &description);
    free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr)); // a round trip
}

std::uint8_t get_button_number(Qt::MouseButton button)
{
    if (button == Qt::RightButton)
        return 3;
    return button == Qt::MiddleButton ? 2 : 1;
}

/// Takes out a message that a test sends to the application, which comes in behind all events before it.
class MESSAGE_WATCH_FILTER : public QAbstractNativeEventFilter
{
public:
    explicit MESSAGE_WATCH_FILTER(xcb_atom_t type) : m_type(type)
    {
        qApp->installNativeEventFilter(this);
    }

    bool nativeEventFilter(const QByteArray&, void* message, long*) override
    {
        constexpr std::uint8_t SENT = 0x80; // set in events that come from other clients
        const auto* const event = static_cast<const xcb_client_message_event_t*>(message);
        if ((event->response_type & ~SENT) != XCB_CLIENT_MESSAGE || event->type != m_type)
            return false;
        m_has_come = true;
        return true;
    }
    bool has_come() const
    {
        return m_has_come;
    }

private:
    xcb_atom_t m_type;
    bool m_has_come = false;
};

xcb_atom_t get_atom(xcb_connection_t* connection, const char* name)
{
    const xcb_intern_atom_cookie_t cookie =
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    xcb_intern_atom_reply_t* const reply = xcb_intern_atom_reply(connection, cookie, nullptr);
    const xcb_atom_t atom = reply != nullptr ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    free(reply);
    return atom;
}

/// A window of the application that the server knows; 0 for none.
xcb_window_t get_any_window()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow* const window : windows)
    {
        if (window->handle() != nullptr)
            return static_cast<xcb_window_t>(window->winId());
    }
    return XCB_WINDOW_NONE;
}
} // namespace

void X11_POINTER::move_to(const QPoint& position)
{
    send_input(XCB_MOTION_NOTIFY, 0, position);
}

void X11_POINTER::press(Qt::MouseButton button)
{
    send_input(XCB_BUTTON_PRESS, get_button_number(button), QPoint());
}

void X11_POINTER::release(Qt::MouseButton button)
{
    send_input(XCB_BUTTON_RELEASE, get_button_number(button), QPoint());
}

void X11_POINTER::click(const QPoint& position, Qt::MouseButton button)
{
    move_to(position);
    press(button);
    release(button);
}

void X11_POINTER::wait_for_events()
{
    constexpr int TIMEOUT = 5000; // milliseconds
    xcb_connection_t* const connection = get_connection();
    const xcb_window_t window = get_any_window();
    if (connection == nullptr || window == XCB_WINDOW_NONE)
        return; // nobody is told anything
    xcb_client_message_event_t message;
    std::memset(&message, 0, sizeof(message));
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = get_atom(connection, "TOLV_TEST_MARK");
    const MESSAGE_WATCH_FILTER filter(message.type);
    xcb_send_event(connection, 0, window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&message));
    xcb_flush(connection);

    QTimer tick; // so that the event loop returns although nothing comes
    tick.start(2);
    const QDeadlineTimer deadline(TIMEOUT);
    while (!filter.has_come() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    if (!filter.has_come())
        ADD_FAILURE() << "the X server has not sent a message back within " << TIMEOUT << " ms";
    QCoreApplication::processEvents(); // what came before the message may wait to be delivered
}

QPoint X11_POINTER::get_window_position(std::uintptr_t window)
{
    xcb_connection_t* const connection = get_connection();
    if (connection == nullptr)
        return {};
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const xcb_translate_coordinates_cookie_t cookie =
        xcb_translate_coordinates(connection, static_cast<xcb_window_t>(window), root, 0, 0);
    xcb_translate_coordinates_reply_t* const reply = xcb_translate_coordinates_reply(connection, cookie, nullptr);
    if (reply == nullptr)
    {
        ADD_FAILURE() << "the X server does not know the window";
        return {};
    }
    const QPoint result(reply->dst_x, reply->dst_y);
    free(reply);
    return result;
}
