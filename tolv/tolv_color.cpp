#include "tolv_color.h"

#include "tolv_gdi_access_p.h"
#include "tolv_mem.h"

TOLV_MEM_INITIALIZER();

TOLV_COLOR::TOLV_COLOR(TOLV_COLOR_RESOURCE color) : m_color_resource(color)
{
}

TOLV_COLOR::TOLV_COLOR(const QColor& color) : m_color_resource(TOLV_MIN_COLOR), m_color(color)
{
}

TOLV_COLOR::TOLV_COLOR(const TOLV_COLOR& rhs) = default;

TOLV_COLOR::~TOLV_COLOR() = default;

QDataStream& TOLV_COLOR::operator<<(QDataStream& stream) const
{
    return stream << TOLV_GDI_STREAM_VERSION << static_cast<int>(m_color_resource) << m_color;
}

QDataStream& TOLV_COLOR::operator>>(QDataStream& stream)
{
    if (!tolv_read_stream_version(stream, "Error in TOLV_COLOR::operator >>"))
        return stream;
    int number = 0;
    QColor color;
    stream >> number >> color;
    if (!tolv_is_stream_ok(stream))
        return stream;
    const auto resource = static_cast<TOLV_COLOR_RESOURCE>(number);
    if (resource != TOLV_MIN_COLOR && !tolv_require_gdi_manager()->has_color(resource))
    {
        stream.setStatus(QDataStream::ReadCorruptData);
        return stream;
    }
    m_color_resource = resource;
    m_color = color;
    return stream;
}

TOLV_COLOR& TOLV_COLOR::operator=(const TOLV_COLOR& rhs) = default;

bool TOLV_COLOR::operator==(const TOLV_COLOR& rhs) const
{
    if (m_color_resource != rhs.m_color_resource)
        return false;
    return m_color_resource != TOLV_MIN_COLOR || m_color == rhs.m_color;
}

bool TOLV_COLOR::operator!=(const TOLV_COLOR& rhs) const
{
    return !(*this == rhs);
}

void TOLV_COLOR::set_color(TOLV_COLOR_RESOURCE color)
{
    TOLV_CHECK(color != TOLV_MIN_COLOR);
    if (color != TOLV_MIN_COLOR)
        m_color_resource = color;
}

void TOLV_COLOR::set_color(const QColor& color)
{
    m_color_resource = TOLV_MIN_COLOR;
    m_color = color;
}

QColor TOLV_COLOR::get_color() const
{
    if (m_color_resource == TOLV_MIN_COLOR)
        return m_color;
    return tolv_require_gdi_manager()->get_color(m_color_resource);
}

TOLV_COLOR_RESOURCE TOLV_COLOR::get_color_resource() const
{
    return m_color_resource;
}

void TOLV_COLOR::set_default_color(TOLV_COLOR_RESOURCE resource, const QColor& color)
{
    tolv_require_gdi_manager()->set_color(resource, color);
}

bool TOLV_COLOR::can_change_default_color(TOLV_COLOR_RESOURCE resource)
{
    return tolv_require_gdi_manager()->can_change_color(resource);
}

void TOLV_COLOR::save_colors_in_registry()
{
    tolv_require_gdi_manager()->save_colors_in_registry();
}

void TOLV_COLOR::reset_colors(const std::set<TOLV_COLOR_RESOURCE>& color_set)
{
    TOLV_CHECK(!color_set.empty());
    tolv_require_gdi_manager()->reset_colors(color_set);
}

void TOLV_COLOR::refresh_pen_and_brush_colors()
{
    tolv_require_gdi_manager()->refresh_pen_and_brush_colors();
}

QColor TOLV_COLOR::get_default_color(TOLV_COLOR_RESOURCE resource)
{
    return tolv_require_gdi_manager()->get_default_color(resource);
}

QDataStream& operator<<(QDataStream& stream, const TOLV_COLOR& color)
{
    return color.operator<<(stream);
}

QDataStream& operator>>(QDataStream& stream, TOLV_COLOR& color)
{
    return color.operator>>(stream);
}
