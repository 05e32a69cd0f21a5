#include "tolv_pen.h"

#include "tolv_gdi_access_p.h"
#include "tolv_mem.h"

#include <QIODevice>
#include <QTransform>

TOLV_MEM_INITIALIZER();

namespace
{
/// The shared pen with the attributes of this one.
QPen* share_pen(const QPen& pen)
{
    return tolv_require_gdi_manager()->get_custom_pen(pen.style(), pen.capStyle(), pen.joinStyle(), pen.width(),
                                                      pen.color());
}

/// Whether the pen that comes next on the stream is one that Qt can be given to read. Qt believes what it reads: a
/// brush that claims a texture or a gradient, and a huge number of dashes, end the process. No pen of ours has them.
/// In versions before Qt 4.3, whose pens begin otherwise, and at the end of the data nothing is refused.
bool is_plain_pen_next(const QDataStream& stream)
{
    constexpr int BYTES_UP_TO_DASHES = 256; // more than enough
    constexpr quint32 MOST_DASHES = 64;
    if (stream.device() == nullptr || stream.version() < QDataStream::Qt_4_3)
        return true;
    QDataStream ahead(stream.device()->peek(BYTES_UP_TO_DASHES));
    ahead.setVersion(stream.version());
    ahead.setByteOrder(stream.byteOrder());
    ahead.setFloatingPointPrecision(stream.floatingPointPrecision());
    quint16 style = 0;
    bool is_cosmetic = false;
    double width = 0;
    quint8 brush_style = 0;
    QColor color;
    QTransform transform;
    double miter_limit = 0;
    quint32 dash_count = 0;
    ahead >> style >> is_cosmetic >> width >> brush_style >> color;
    if (tolv_is_stream_ok(ahead) && brush_style > Qt::DiagCrossPattern)
        return false;
    ahead >> transform >> miter_limit >> dash_count;
    return !tolv_is_stream_ok(ahead) || dash_count <= MOST_DASHES;
}
} // namespace

TOLV_PEN::TOLV_PEN(TOLV_PEN_RESOURCE pen)
    : m_pen_resource(TOLV_MIN_PEN), m_pen(nullptr), m_color(TOLV_WINDOW_TEXT_COLOR)
{
    set_pen(pen);
}

TOLV_PEN::TOLV_PEN(const QPen& pen) : m_pen_resource(TOLV_MIN_PEN), m_pen(nullptr), m_color(TOLV_WINDOW_TEXT_COLOR)
{
    set_pen(pen);
}

TOLV_PEN::TOLV_PEN(const TOLV_PEN& rhs) : m_pen_resource(rhs.m_pen_resource), m_pen(rhs.m_pen), m_color(rhs.m_color)
{
    if (m_pen_resource != TOLV_MIN_PEN)
        return;
    TOLV_CHECK_TEXT(rhs.m_pen != nullptr, "rhs.m_pen != NULL");
    if (rhs.m_pen != nullptr)
        m_pen = share_pen(*rhs.m_pen);
}

TOLV_PEN::~TOLV_PEN()
{
    m_pen = nullptr;
}

QDataStream& TOLV_PEN::operator<<(QDataStream& stream) const
{
    stream << TOLV_GDI_STREAM_VERSION << static_cast<int>(m_pen_resource) << (m_pen != nullptr ? 1 : 0);
    if (m_pen != nullptr)
        stream << *m_pen;
    return stream << m_color;
}

QDataStream& TOLV_PEN::operator>>(QDataStream& stream)
{
    if (!tolv_read_stream_version(stream, "Error at TOLV_PEN::operator >>"))
        return stream;
    int number = 0;
    int has_pen = 0;
    QPen pen;
    TOLV_COLOR color = m_color;
    stream >> number >> has_pen;
    if (has_pen != 0 && !is_plain_pen_next(stream))
        stream.setStatus(QDataStream::ReadCorruptData);
    if (!tolv_is_stream_ok(stream))
        return stream;
    if (has_pen != 0)
        stream >> pen;
    stream >> color;
    if (!tolv_is_stream_ok(stream))
        return stream;
    const auto resource = static_cast<TOLV_PEN_RESOURCE>(number);
    if (resource != TOLV_MIN_PEN && !tolv_require_gdi_manager()->has_pen(resource))
    {
        stream.setStatus(QDataStream::ReadCorruptData);
        return stream;
    }
    m_pen_resource = resource;
    m_color = color;
    if (has_pen != 0 && resource == TOLV_MIN_PEN)
        m_pen = share_pen(pen);
    if (m_pen == nullptr) // meant: a pointer that is there stays, even if the resource is another one now
        m_pen = tolv_require_gdi_manager()->get_pen(resource);
    return stream;
}

TOLV_PEN& TOLV_PEN::operator=(const TOLV_PEN& rhs) = default;

bool TOLV_PEN::operator==(const TOLV_PEN& rhs) const
{
    if (m_pen_resource != rhs.m_pen_resource)
        return false;
    if (m_pen_resource != TOLV_MIN_PEN)
        return true;
    if (m_color != rhs.m_color)
        return false;
    TOLV_CHECK_TEXT(m_pen != nullptr, "m_pen != NULL");
    TOLV_CHECK_TEXT(rhs.m_pen != nullptr, "rhs.m_pen != NULL");
    if (m_pen == rhs.m_pen)
        return true;
    return m_pen != nullptr && rhs.m_pen != nullptr && m_pen->style() == rhs.m_pen->style() &&
           m_pen->capStyle() == rhs.m_pen->capStyle() && m_pen->joinStyle() == rhs.m_pen->joinStyle() &&
           m_pen->width() == rhs.m_pen->width() && m_pen->color() == rhs.m_pen->color();
}

bool TOLV_PEN::operator!=(const TOLV_PEN& rhs) const
{
    return !(*this == rhs);
}

void TOLV_PEN::set_pen(TOLV_PEN_RESOURCE pen)
{
    TOLV_CHECK(pen != TOLV_MIN_PEN);
    if (pen == TOLV_MIN_PEN)
        return;
    m_pen = tolv_require_gdi_manager()->get_pen(pen);
    m_pen_resource = pen;
}

void TOLV_PEN::set_pen(const QPen& pen)
{
    m_pen_resource = TOLV_MIN_PEN;
    m_color.set_color(pen.color());
    m_pen = share_pen(pen);
}

QPen* TOLV_PEN::get_pen() const
{
    return m_pen;
}

TOLV_PEN_RESOURCE TOLV_PEN::get_pen_resource() const
{
    return m_pen_resource;
}

/// Makes a named pen custom: it remembers its named colour, and keeps the pointer until the caller has another one.
void TOLV_PEN::detach()
{
    if (m_pen_resource == TOLV_MIN_PEN)
        return;
    m_color.set_color(tolv_require_gdi_manager()->get_pen_color(m_pen_resource));
    m_pen_resource = TOLV_MIN_PEN;
}

void TOLV_PEN::set_color(const TOLV_COLOR& color)
{
    TOLV_CHECK_TEXT(m_pen != nullptr, "m_pen != NULL");
    if (m_pen == nullptr)
        return;
    m_pen_resource = TOLV_MIN_PEN;
    m_color = color; // meant: a named colour stays named here, where a brush keeps its value
    m_pen = tolv_require_gdi_manager()->get_custom_pen(m_pen->style(), m_pen->capStyle(), m_pen->joinStyle(),
                                                       m_pen->width(), m_color.get_color());
}

TOLV_COLOR TOLV_PEN::get_color() const
{
    if (m_pen_resource == TOLV_MIN_PEN)
        return m_color;
    return TOLV_COLOR(tolv_require_gdi_manager()->get_pen_color(m_pen_resource));
}

void TOLV_PEN::set_width(int width)
{
    TOLV_CHECK_TEXT(m_pen != nullptr, "m_pen != NULL");
    if (m_pen == nullptr)
        return;
    detach();
    m_pen = tolv_require_gdi_manager()->get_custom_pen(m_pen->style(), m_pen->capStyle(), m_pen->joinStyle(), width,
                                                       m_pen->color());
}

void TOLV_PEN::set_style(Qt::PenStyle style)
{
    TOLV_CHECK_TEXT(m_pen != nullptr, "m_pen != NULL");
    if (m_pen == nullptr)
        return;
    detach();
    m_pen = tolv_require_gdi_manager()->get_custom_pen(style, m_pen->capStyle(), m_pen->joinStyle(), m_pen->width(),
                                                       m_pen->color());
}

/// The pen whose attributes are this object's: the table's for a named pen, whatever m_pen points at.
const QPen* TOLV_PEN::get_current_pen() const
{
    if (m_pen_resource != TOLV_MIN_PEN)
        return tolv_require_gdi_manager()->get_pen(m_pen_resource);
    TOLV_CHECK_TEXT(m_pen != nullptr, "m_pen != NULL");
    return m_pen;
}

int TOLV_PEN::get_width() const
{
    const QPen* const pen = get_current_pen();
    return pen != nullptr ? pen->width() : 0;
}

Qt::PenStyle TOLV_PEN::get_style() const
{
    const QPen* const pen = get_current_pen();
    return pen != nullptr ? pen->style() : Qt::NoPen;
}

Qt::PenCapStyle TOLV_PEN::get_cap_style() const
{
    const QPen* const pen = get_current_pen();
    return pen != nullptr ? pen->capStyle() : Qt::FlatCap;
}

void TOLV_PEN::set_default_pen_width(TOLV_PEN_RESOURCE resource, int width)
{
    tolv_require_gdi_manager()->set_pen_width(resource, width);
}

void TOLV_PEN::set_default_pen_color(TOLV_PEN_RESOURCE resource, TOLV_COLOR_RESOURCE color)
{
    tolv_require_gdi_manager()->set_pen_color(resource, color);
}

void TOLV_PEN::save_pens_in_registry()
{
    tolv_require_gdi_manager()->save_pens_in_registry();
}

QDataStream& operator<<(QDataStream& stream, const TOLV_PEN& pen)
{
    return pen.operator<<(stream);
}

QDataStream& operator>>(QDataStream& stream, TOLV_PEN& pen)
{
    return pen.operator>>(stream);
}
