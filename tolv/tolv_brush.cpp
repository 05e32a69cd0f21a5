#include "tolv_brush.h"

#include "tolv_gdi_access_p.h"
#include "tolv_mem.h"

TOLV_MEM_INITIALIZER();

TOLV_BRUSH::TOLV_BRUSH(TOLV_BRUSH_RESOURCE brush)
    : m_brush_resource(TOLV_MIN_BRUSH), m_brush(nullptr), m_color(TOLV_WINDOW_TEXT_COLOR)
{
    set_brush(brush);
}

TOLV_BRUSH::TOLV_BRUSH(const QBrush& brush)
    : m_brush_resource(TOLV_MIN_BRUSH), m_brush(nullptr), m_color(TOLV_WINDOW_TEXT_COLOR)
{
    set_brush(brush);
}

TOLV_BRUSH::TOLV_BRUSH(Qt::BrushStyle style, const TOLV_COLOR& color)
    : m_brush_resource(TOLV_MIN_BRUSH), m_brush(nullptr), m_color(TOLV_WINDOW_TEXT_COLOR)
{
    set_brush(style, color);
}

TOLV_BRUSH::TOLV_BRUSH(const TOLV_BRUSH& rhs) = default;

TOLV_BRUSH::~TOLV_BRUSH()
{
    m_brush = nullptr;
}

QDataStream& TOLV_BRUSH::operator<<(QDataStream& stream) const
{
    return stream << TOLV_GDI_STREAM_VERSION << static_cast<int>(m_brush_resource) << m_color;
}

QDataStream& TOLV_BRUSH::operator>>(QDataStream& stream)
{
    if (!tolv_read_stream_version(stream, "Error in TOLV_BRUSH::operator >>"))
        return stream;
    int number = 0;
    TOLV_COLOR color = m_color;
    stream >> number >> color;
    if (!tolv_is_stream_ok(stream))
        return stream;
    const auto resource = static_cast<TOLV_BRUSH_RESOURCE>(number);
    if (resource != TOLV_MIN_BRUSH && !tolv_require_gdi_manager()->has_brush(resource))
    {
        stream.setStatus(QDataStream::ReadCorruptData);
        return stream;
    }
    m_brush_resource = resource;
    m_color = color;
    m_brush = nullptr; // meant, even for a named brush: unlike a pen, a brush that was read must be set anew
    return stream;
}

TOLV_BRUSH& TOLV_BRUSH::operator=(const TOLV_BRUSH& rhs) = default;

bool TOLV_BRUSH::operator==(const TOLV_BRUSH& rhs) const
{
    if (m_brush_resource != rhs.m_brush_resource)
        return false;
    if (m_brush_resource != TOLV_MIN_BRUSH)
        return true;
    if (m_color != rhs.m_color)
        return false;
    TOLV_CHECK_TEXT(m_brush != nullptr, "m_brush != NULL");
    TOLV_CHECK_TEXT(rhs.m_brush != nullptr, "rhs.m_brush != NULL");
    if (m_brush == rhs.m_brush)
        return true;
    return m_brush != nullptr && rhs.m_brush != nullptr && m_brush->style() == rhs.m_brush->style() &&
           m_brush->color() == rhs.m_brush->color();
}

bool TOLV_BRUSH::operator!=(const TOLV_BRUSH& rhs) const
{
    return !(*this == rhs);
}

void TOLV_BRUSH::set_brush(TOLV_BRUSH_RESOURCE brush)
{
    TOLV_CHECK(brush != TOLV_MIN_BRUSH);
    if (brush == TOLV_MIN_BRUSH)
        return;
    m_brush = tolv_require_gdi_manager()->get_brush(brush);
    m_brush_resource = brush;
}

void TOLV_BRUSH::set_brush(const QBrush& brush)
{
    set_brush(brush.style(), brush.color());
}

void TOLV_BRUSH::set_brush(Qt::BrushStyle style, const TOLV_COLOR& color)
{
    m_brush_resource = TOLV_MIN_BRUSH;
    m_color = color;
    m_brush = tolv_require_gdi_manager()->get_custom_brush(style, color.get_color());
}

QBrush* TOLV_BRUSH::get_brush() const
{
    return m_brush;
}

TOLV_BRUSH_RESOURCE TOLV_BRUSH::get_brush_resource() const
{
    return m_brush_resource;
}

void TOLV_BRUSH::set_color(const TOLV_COLOR& color)
{
    TOLV_CHECK_TEXT(m_brush != nullptr, "m_brush != NULL");
    if (m_brush == nullptr)
        return;
    m_brush_resource = TOLV_MIN_BRUSH;
    m_color = TOLV_COLOR(color.get_color()); // meant: the value, where a pen keeps a named colour
    m_brush = tolv_require_gdi_manager()->get_custom_brush(m_brush->style(), m_color.get_color());
}

TOLV_COLOR TOLV_BRUSH::get_color() const
{
    if (m_brush_resource == TOLV_MIN_BRUSH)
        return m_color;
    return TOLV_COLOR(tolv_require_gdi_manager()->get_brush_color(m_brush_resource));
}

void TOLV_BRUSH::set_style(Qt::BrushStyle style)
{
    TOLV_CHECK_TEXT(m_brush != nullptr, "m_brush != NULL");
    if (m_brush == nullptr)
        return;
    if (m_brush_resource != TOLV_MIN_BRUSH)
        m_color.set_color(tolv_require_gdi_manager()->get_brush_color(m_brush_resource));
    m_brush_resource = TOLV_MIN_BRUSH;
    m_brush = tolv_require_gdi_manager()->get_custom_brush(style, m_brush->color());
}

Qt::BrushStyle TOLV_BRUSH::get_style() const
{
    const QBrush* const brush =
        m_brush_resource != TOLV_MIN_BRUSH ? tolv_require_gdi_manager()->get_brush(m_brush_resource) : m_brush;
    TOLV_CHECK_TEXT(brush != nullptr, "m_brush != NULL");
    return brush != nullptr ? brush->style() : Qt::NoBrush;
}

void TOLV_BRUSH::set_default_brush_color(TOLV_BRUSH_RESOURCE resource, TOLV_COLOR_RESOURCE color)
{
    tolv_require_gdi_manager()->set_brush_color(resource, color);
}

QDataStream& operator<<(QDataStream& stream, const TOLV_BRUSH& brush)
{
    return brush.operator<<(stream);
}

QDataStream& operator>>(QDataStream& stream, TOLV_BRUSH& brush)
{
    return brush.operator>>(stream);
}
