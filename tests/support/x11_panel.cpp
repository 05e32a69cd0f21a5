#include "x11_panel.h"

#include <gtest/gtest.h>

#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>

X11_PANEL::X11_PANEL(std::uint32_t height) : m_connection(xcb_connect(nullptr, nullptr))
{
    if (xcb_connection_has_error(m_connection) != 0)
    {
        ADD_FAILURE() << "there is no X server";
        return;
    }
    const xcb_screen_t* const screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
    m_window = xcb_generate_id(m_connection);
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, screen->root, 0, 0, screen->width_in_pixels,
                      static_cast<std::uint16_t>(height), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0,
                      nullptr);
    const std::uint32_t type = get_atom("_NET_WM_WINDOW_TYPE_DOCK");
    set_property("_NET_WM_WINDOW_TYPE", "ATOM", 1, &type);
    const std::uint32_t strut[] = {0, 0, height, 0}; // left, right, top, bottom
    set_property("_NET_WM_STRUT", "CARDINAL", 4, strut);
    xcb_map_window(m_connection, m_window);
    xcb_flush(m_connection);
}

X11_PANEL::~X11_PANEL()
{
    xcb_disconnect(m_connection);
}

void X11_PANEL::set_property(const char* name, const char* type, std::uint32_t count, const std::uint32_t* values) const
{
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_window, get_atom(name), get_atom(type), 32, count,
                        values);
}

std::uint32_t X11_PANEL::get_atom(const char* name) const
{
    const xcb_intern_atom_cookie_t cookie =
        xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    xcb_intern_atom_reply_t* const reply = xcb_intern_atom_reply(m_connection, cookie, nullptr);
    const std::uint32_t atom = reply != nullptr ? reply->atom : 0;
    free(reply);
    return atom;
}
