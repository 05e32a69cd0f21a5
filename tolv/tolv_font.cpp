#include "tolv_font.h"

#include "tolv_font_attributes.h"
#include "tolv_gdi_access_p.h"
#include "tolv_mem.h"

#include <new>

TOLV_MEM_INITIALIZER();

namespace
{
/// Reads a font. Qt believes the number of families that it reads, and throws where there is no room for them.
void read_font(QDataStream& stream, QFont* font)
{
    try
    {
        stream >> *font;
    }
    catch (const std::bad_alloc&)
    {
        stream.setStatus(QDataStream::ReadCorruptData);
    }
}
} // namespace

TOLV_FONT::TOLV_FONT(TOLV_FONT_RESOURCE font)
    : m_font_resource(TOLV_MIN_FONT), m_font(nullptr), m_text_color(TOLV_WINDOW_TEXT_COLOR),
      m_background_color(TOLV_WINDOW_TEXT_COLOR)
{
    set_font(font);
}

TOLV_FONT::TOLV_FONT(const TOLV_FONT& rhs) = default;

TOLV_FONT::~TOLV_FONT()
{
    m_font = nullptr;
}

QDataStream& TOLV_FONT::operator<<(QDataStream& stream) const
{
    stream << TOLV_GDI_STREAM_VERSION << static_cast<int>(m_font_resource) << (m_font != nullptr ? 1 : 0);
    if (m_font != nullptr)
        stream << *m_font;
    return stream << m_text_color << m_background_color;
}

QDataStream& TOLV_FONT::operator>>(QDataStream& stream)
{
    if (!tolv_read_stream_version(stream, "Error at TOLV_FONT::operator >>"))
        return stream;
    int number = 0;
    int has_stored_font = 0;
    QFont font;
    TOLV_COLOR text_color = m_text_color;
    TOLV_COLOR background_color = m_background_color;
    stream >> number >> has_stored_font;
    if (has_stored_font != 0)
        read_font(stream, &font);
    stream >> text_color >> background_color;
    if (!tolv_is_stream_ok(stream))
        return stream;
    const auto resource = static_cast<TOLV_FONT_RESOURCE>(number);
    if (resource != TOLV_MIN_FONT && !tolv_require_gdi_manager()->has_font(resource))
    {
        stream.setStatus(QDataStream::ReadCorruptData);
        return stream;
    }
    m_font_resource = resource;
    if (has_stored_font != 0)
        m_font = new QFont(font); // meant: copies of this object share it, and nobody frees it
    m_text_color = text_color;
    m_background_color = background_color;
    return stream;
}

TOLV_FONT& TOLV_FONT::operator=(const TOLV_FONT& rhs) = default;

bool TOLV_FONT::operator==(const TOLV_FONT& rhs) const
{
    if (m_font_resource != rhs.m_font_resource)
        return false;
    if (m_font_resource != TOLV_MIN_FONT)
        return true;
    if (m_text_color != rhs.m_text_color || m_background_color != rhs.m_background_color)
        return false;
    TOLV_CHECK_TEXT(m_font != nullptr, "m_font != NULL");
    TOLV_CHECK_TEXT(rhs.m_font != nullptr, "rhs.m_font != NULL");
    return m_font != nullptr && rhs.m_font != nullptr && *m_font == *rhs.m_font;
}

bool TOLV_FONT::operator!=(const TOLV_FONT& rhs) const
{
    return !(*this == rhs);
}

void TOLV_FONT::set_font(TOLV_FONT_RESOURCE font)
{
    TOLV_CHECK(font != TOLV_MIN_FONT);
    if (font == TOLV_MIN_FONT)
        return;
    m_font = tolv_require_gdi_manager()->get_font(font, nullptr, nullptr);
    m_font_resource = font;
}

void TOLV_FONT::set_font(const TOLV_COLOR& text, const TOLV_COLOR& background, const QString& face, int point,
                         bool bold, bool italic)
{
    change_attributes(
        [&](TOLV_FONT_ATTRIBUTES& attributes)
        {
            attributes.family = face;
            attributes.point_size = point;
            attributes.bold = bold;
            attributes.italic = italic;
            m_text_color = text;
            m_background_color = background;
        });
}

QFont* TOLV_FONT::get_font() const
{
    return m_font;
}

TOLV_FONT_RESOURCE TOLV_FONT::get_font_resource() const
{
    return m_font_resource;
}

/// Makes a named font custom: it remembers its named colours, and keeps the pointer until the caller has another one.
void TOLV_FONT::detach()
{
    if (m_font_resource == TOLV_MIN_FONT)
        return;
    TOLV_COLOR_RESOURCE text_color = TOLV_MIN_COLOR;
    TOLV_COLOR_RESOURCE background_color = TOLV_MIN_COLOR;
    tolv_require_gdi_manager()->get_font(m_font_resource, &text_color, &background_color);
    m_text_color.set_color(text_color);
    m_background_color.set_color(background_color);
    m_font_resource = TOLV_MIN_FONT;
}

/// A font without one is an internal error.
bool TOLV_FONT::has_font() const
{
    TOLV_CHECK_TEXT(m_font != nullptr, "m_font != NULL");
    return m_font != nullptr;
}

/// Makes the font the custom one with the attributes that `change` leaves behind.
template <class CHANGE>
void TOLV_FONT::change_attributes(const CHANGE& change)
{
    if (!has_font())
        return;
    detach();
    TOLV_FONT_ATTRIBUTES attributes = TOLV_FONT_ATTRIBUTES::from_font(*m_font);
    change(attributes);
    m_font = tolv_require_gdi_manager()->get_custom_font(attributes);
}

/// Sets one of the colours of a font; a named font becomes the custom one with the same attributes.
void TOLV_FONT::change_color(TOLV_COLOR* member, const QColor& value)
{
    if (m_font_resource != TOLV_MIN_FONT)
        change_attributes([](TOLV_FONT_ATTRIBUTES&) {});
    member->set_color(value);
}

void TOLV_FONT::set_text_color(const TOLV_COLOR& color)
{
    if (has_font())
        change_color(&m_text_color, color.get_color());
}

void TOLV_FONT::set_background_color(const TOLV_COLOR& color)
{
    if (has_font())
        change_color(&m_background_color, color.get_color());
}

void TOLV_FONT::set_face_name(const QString& face_name)
{
    TOLV_CHECK(!face_name.isEmpty());
    if (!face_name.isEmpty())
        change_attributes([&](TOLV_FONT_ATTRIBUTES& attributes) { attributes.family = face_name; });
}

void TOLV_FONT::set_point_size(int point_size)
{
    change_attributes([=](TOLV_FONT_ATTRIBUTES& attributes) { attributes.point_size = point_size; });
}

void TOLV_FONT::set_bold(bool bold)
{
    change_attributes([=](TOLV_FONT_ATTRIBUTES& attributes) { attributes.bold = bold; });
}

void TOLV_FONT::set_italic(bool italic)
{
    change_attributes([=](TOLV_FONT_ATTRIBUTES& attributes) { attributes.italic = italic; });
}

TOLV_COLOR TOLV_FONT::get_text_color() const
{
    if (m_font_resource == TOLV_MIN_FONT)
        return m_text_color;
    TOLV_COLOR_RESOURCE color = TOLV_MIN_COLOR;
    tolv_require_gdi_manager()->get_font(m_font_resource, &color, nullptr);
    return TOLV_COLOR(color);
}

TOLV_COLOR TOLV_FONT::get_background_color() const
{
    if (m_font_resource == TOLV_MIN_FONT)
        return m_background_color;
    TOLV_COLOR_RESOURCE color = TOLV_MIN_COLOR;
    tolv_require_gdi_manager()->get_font(m_font_resource, nullptr, &color);
    return TOLV_COLOR(color);
}

QString TOLV_FONT::get_face_name() const
{
    return has_font() ? m_font->family() : QString();
}

int TOLV_FONT::get_point_size() const
{
    return has_font() ? m_font->pointSize() : 0;
}

bool TOLV_FONT::get_bold() const
{
    return has_font() && TOLV_FONT_ATTRIBUTES::is_bold_weight(m_font->weight());
}

bool TOLV_FONT::get_italic() const
{
    return has_font() && m_font->style() != QFont::StyleNormal;
}

bool TOLV_FONT::can_change_default_font(TOLV_FONT_RESOURCE resource)
{
    return tolv_require_gdi_manager()->can_change_font(resource);
}

void TOLV_FONT::set_default_font(TOLV_FONT_RESOURCE resource, const TOLV_FONT* font)
{
    tolv_require_gdi_manager()->set_font(resource, font);
}

void TOLV_FONT::save_fonts_in_registry()
{
    tolv_require_gdi_manager()->save_fonts_in_registry();
}

void TOLV_FONT::reset_fonts(const std::set<TOLV_FONT_RESOURCE>& font_set)
{
    TOLV_CHECK(!font_set.empty());
    tolv_require_gdi_manager()->reset_fonts(font_set);
}

TOLV_FONT TOLV_FONT::get_default_font(TOLV_FONT_RESOURCE resource)
{
    return tolv_require_gdi_manager()->get_default_font(resource);
}

QDataStream& operator<<(QDataStream& stream, const TOLV_FONT& font)
{
    return font.operator<<(stream);
}

QDataStream& operator>>(QDataStream& stream, TOLV_FONT& font)
{
    return font.operator>>(stream);
}
