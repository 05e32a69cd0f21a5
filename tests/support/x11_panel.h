#pragma once

#include <cstdint>

struct xcb_connection_t;

/// A panel along the upper edge of the screen, as a desktop has it, while the object lives: the window manager keeps that
/// room free, and available geometries are smaller. For tests that run under a window system only. The application hears
/// of it by an event, so wait for what it brings about. Without an X server the construction fails the test.
class X11_PANEL
{
public:
    /// @param height in pixels of the screen
    explicit X11_PANEL(std::uint32_t height);
    ~X11_PANEL();
    X11_PANEL(const X11_PANEL&) = delete;
    X11_PANEL& operator=(const X11_PANEL&) = delete;

private:
    void set_property(const char* name, const char* type, std::uint32_t count, const std::uint32_t* values) const;
    std::uint32_t get_atom(const char* name) const;

    xcb_connection_t* m_connection; ///< its own; the window goes with it
    std::uint32_t m_window = 0;
};
