#include "preferences_session.h"

#include "cfgq_registry.h"
#include "preferences_names.h"
#include "tolv_font_attributes.h"
#include "tolv_gdi_manager.h"
#include "tolv_gdi_tables.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QPixmap>

#include <algorithm>
#include <functional>

namespace
{
TOLV_COLOR_RESOURCE to_color(int resource)
{
    return static_cast<TOLV_COLOR_RESOURCE>(resource);
}

TOLV_FONT_RESOURCE to_font(int resource)
{
    return static_cast<TOLV_FONT_RESOURCE>(resource);
}

TOLV_PEN_RESOURCE to_pen(int resource)
{
    return static_cast<TOLV_PEN_RESOURCE>(resource);
}

/// A framed picture that looks the same in chosen rows.
QIcon make_icon(const QSize& size, const QColor& ground, const std::function<void(QPainter&, const QRect&)>& paint)
{
    const qreal ratio = qApp->devicePixelRatio();
    QPixmap pixmap(size * ratio);
    pixmap.setDevicePixelRatio(ratio);
    const QRect rect(QPoint(0, 0), size);
    QPainter painter(&pixmap);
    painter.fillRect(rect, ground);
    paint(painter, rect);
    painter.setPen(QPen(QGuiApplication::palette().color(QPalette::Mid), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect.adjusted(0, 0, -1, -1));
    painter.end();
    QIcon icon;
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Selected, QIcon::Active})
        icon.addPixmap(pixmap, mode);
    return icon;
}
} // namespace

// ---- Tables in general ----------------------------------------------------------------------------------------------

PREFERENCES_TABLE::PREFERENCES_TABLE() = default;

PREFERENCES_TABLE::~PREFERENCES_TABLE() = default;

const QVector<PREFERENCES_TABLE::ROW>& PREFERENCES_TABLE::get_rows() const
{
    return m_rows;
}

const PREFERENCES_TABLE::ROW* PREFERENCES_TABLE::find_row(int resource) const
{
    const auto number = m_numbers.find(resource);
    return number == m_numbers.end() ? nullptr : &m_rows[number->second];
}

int PREFERENCES_TABLE::count_unsaved() const
{
    return static_cast<int>(
        std::count_if(m_rows.begin(), m_rows.end(), [this](const ROW& row) { return is_unsaved(row.resource); }));
}

void PREFERENCES_TABLE::add_row(int resource, const char* name)
{
    const PREFERENCES_NAME shown = PREFERENCES_NAME::from_enumerator(QString::fromLatin1(name));
    m_numbers[resource] = m_rows.size();
    m_rows.append({resource, shown.group, shown.title, QString::fromLatin1(name)});
}

// ---- Colours --------------------------------------------------------------------------------------------------------

PREFERENCES_COLORS::PREFERENCES_COLORS()
{
    for (const TOLV_INITIAL_COLOR& row : tolv_get_initial_colors())
    {
        if (TOLV_COLOR::can_change_default_color(row.resource))
            add_row(row.resource, row.name);
    }
    take_snapshot();
}

QString PREFERENCES_COLORS::get_value(int resource) const
{
    const QColor color = get_color(resource);
    return color.isValid() ? color.name() : QStringLiteral("?");
}

QIcon PREFERENCES_COLORS::get_icon(int resource, const QSize& size) const
{
    return make_icon(size, get_color(resource), [](QPainter&, const QRect&) {});
}

PREFERENCES_SAMPLE PREFERENCES_COLORS::make_sample(const ROW& row) const
{
    return PREFERENCES_SAMPLE::of_color(row.resource, row.name);
}

bool PREFERENCES_COLORS::is_changed(int resource) const
{
    return get_color(resource) != TOLV_COLOR::get_default_color(to_color(resource));
}

bool PREFERENCES_COLORS::is_unsaved(int resource) const
{
    const auto saved = m_snapshot.find(resource);
    return saved != m_snapshot.end() && get_color(resource) != saved->second;
}

void PREFERENCES_COLORS::reset(const QSet<int>& resources)
{
    std::set<TOLV_COLOR_RESOURCE> colors;
    for (const int resource : resources)
        colors.insert(to_color(resource));
    if (!colors.empty())
        TOLV_COLOR::reset_colors(colors);
}

void PREFERENCES_COLORS::restore()
{
    for (const auto& [resource, color] : m_snapshot)
        TOLV_COLOR::set_default_color(to_color(resource), color);
}

void PREFERENCES_COLORS::take_snapshot()
{
    for (const ROW& row : get_rows())
        m_snapshot[row.resource] = get_color(row.resource);
}

QColor PREFERENCES_COLORS::get_color(int resource)
{
    return TOLV_COLOR(to_color(resource)).get_color();
}

// ---- Fonts ----------------------------------------------------------------------------------------------------------

PREFERENCES_FONTS::PREFERENCES_FONTS(PREFERENCES_COLORS& colors) : m_colors(colors)
{
    for (const TOLV_INITIAL_FONT& row : tolv_get_initial_fonts())
    {
        if (TOLV_FONT::can_change_default_font(row.resource))
            add_row(row.resource, row.name);
    }
    take_snapshot();
}

QString PREFERENCES_FONTS::get_value(int resource) const
{
    const TOLV_FONT font(to_font(resource));
    QString value = QObject::tr("%1 %2").arg(font.get_face_name()).arg(font.get_point_size());
    if (font.get_bold())
        value += QObject::tr(", bold");
    if (font.get_italic())
        value += QObject::tr(", italic");
    return value;
}

QIcon PREFERENCES_FONTS::get_icon(int resource, const QSize& size) const
{
    const TOLV_FONT font(to_font(resource));
    return make_icon(size, font.get_background_color().get_color(),
                     [&](QPainter& painter, const QRect& rect)
                     {
                         QFont shown = *font.get_font();
                         shown.setPixelSize(
                             std::max(1, rect.height() * 3 / 4)); // the picture is small; the size stands beside it
                         painter.setFont(shown);
                         painter.setPen(font.get_text_color().get_color());
                         painter.drawText(rect, Qt::AlignCenter, QStringLiteral("Ab"));
                     });
}

PREFERENCES_SAMPLE PREFERENCES_FONTS::make_sample(const ROW& row) const
{
    return PREFERENCES_SAMPLE::of_font(row.resource, row.name);
}

bool PREFERENCES_FONTS::is_changed(int resource) const
{
    const auto rows = tolv_get_initial_fonts();
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [resource](const TOLV_INITIAL_FONT& each) { return each.resource == resource; });
    const QFont& font = *TOLV_FONT(to_font(resource)).get_font();
    if (row == rows.end() ||
        TOLV_FONT_ATTRIBUTES::from_font(font).get_key() != TOLV_FONT_ATTRIBUTES::from_row(*row).get_key())
        return row != rows.end();
    const QSet<int> colors = get_colors(resource);
    return std::any_of(colors.begin(), colors.end(), [this](int color) { return m_colors.is_changed(color); });
}

bool PREFERENCES_FONTS::is_unsaved(int resource) const
{
    const QSet<int> colors = get_colors(resource);
    return is_font_unsaved(resource) ||
           std::any_of(colors.begin(), colors.end(), [this](int color) { return m_colors.is_unsaved(color); });
}

int PREFERENCES_FONTS::count_unsaved() const
{
    return static_cast<int>(std::count_if(get_rows().begin(), get_rows().end(),
                                          [this](const ROW& row) { return is_font_unsaved(row.resource); }));
}

void PREFERENCES_FONTS::reset(const QSet<int>& resources)
{
    std::set<TOLV_FONT_RESOURCE> fonts;
    QSet<int> colors;
    for (const int resource : resources)
    {
        fonts.insert(to_font(resource));
        colors += get_colors(resource);
    }
    if (!fonts.empty())
        TOLV_FONT::reset_fonts(fonts);
    m_colors.reset(colors);
}

void PREFERENCES_FONTS::restore()
{
    // Through the live pointer: a reset also touches attributes that set_default_font() does not take over.
    for (const auto& [resource, font] : m_snapshot)
        *TOLV_FONT(to_font(resource)).get_font() = font;
}

void PREFERENCES_FONTS::take_snapshot()
{
    for (const ROW& row : get_rows())
        m_snapshot[row.resource] = *TOLV_FONT(to_font(row.resource)).get_font();
}

bool PREFERENCES_FONTS::is_font_unsaved(int resource) const
{
    const auto saved = m_snapshot.find(resource);
    return saved != m_snapshot.end() &&
           TOLV_FONT_ATTRIBUTES::from_font(*TOLV_FONT(to_font(resource)).get_font()).get_key() !=
               TOLV_FONT_ATTRIBUTES::from_font(saved->second).get_key();
}

QSet<int> PREFERENCES_FONTS::get_colors(int resource)
{
    const TOLV_FONT font(to_font(resource));
    QSet<int> colors;
    for (const TOLV_COLOR& color : {font.get_text_color(), font.get_background_color()})
    {
        if (TOLV_COLOR::can_change_default_color(color.get_color_resource()))
            colors.insert(color.get_color_resource());
    }
    return colors;
}

// ---- Pens -----------------------------------------------------------------------------------------------------------

PREFERENCES_PENS::PREFERENCES_PENS()
{
    for (const TOLV_INITIAL_PEN& row : tolv_get_initial_pens())
    {
        if (!TOLV_COLOR::can_change_default_color(row.color))
            continue; // the plain pens and those of the system are what their names say
        add_row(row.resource, row.name);
        m_defaults[row.resource] = {row.width, row.color};
    }
    take_snapshot();
}

QString PREFERENCES_PENS::get_value(int resource) const
{
    const int width = get(resource).width;
    return width == 0 ? QObject::tr("hairline") : QObject::tr("%1 px").arg(width);
}

QIcon PREFERENCES_PENS::get_icon(int resource, const QSize& size) const
{
    const QColor ground = TOLV_COLOR(preferences_get_ground(find_row(resource)->group)).get_color();
    return make_icon(size, ground,
                     [resource](QPainter& painter, const QRect& rect)
                     {
                         painter.setPen(*TOLV_PEN(to_pen(resource)).get_pen());
                         painter.setClipRect(rect);
                         painter.drawLine(rect.left() + 3, rect.center().y(), rect.right() - 3, rect.center().y());
                     });
}

PREFERENCES_SAMPLE PREFERENCES_PENS::make_sample(const ROW& row) const
{
    return PREFERENCES_SAMPLE::of_pen(row.resource, row.name);
}

bool PREFERENCES_PENS::is_changed(int resource) const
{
    const auto row = m_defaults.find(resource);
    return row != m_defaults.end() && get(resource) != row->second;
}

bool PREFERENCES_PENS::is_unsaved(int resource) const
{
    const auto saved = m_snapshot.find(resource);
    return saved != m_snapshot.end() && get(resource) != saved->second;
}

void PREFERENCES_PENS::reset(const QSet<int>& resources)
{
    for (const int resource : resources)
    {
        const auto row = m_defaults.find(resource);
        if (row != m_defaults.end())
            set(resource, row->second);
    }
}

void PREFERENCES_PENS::restore()
{
    for (const auto& [resource, value] : m_snapshot)
        set(resource, value);
}

void PREFERENCES_PENS::take_snapshot()
{
    for (const ROW& row : get_rows())
        m_snapshot[row.resource] = get(row.resource);
}

bool PREFERENCES_PENS::VALUE::operator!=(const VALUE& other) const
{
    return width != other.width || color != other.color;
}

PREFERENCES_PENS::VALUE PREFERENCES_PENS::get(int resource)
{
    const TOLV_PEN pen(to_pen(resource));
    return {pen.get_width(), pen.get_color().get_color_resource()};
}

void PREFERENCES_PENS::set(int resource, const VALUE& value)
{
    TOLV_PEN::set_default_pen_width(to_pen(resource), value.width);
    TOLV_PEN::set_default_pen_color(to_pen(resource), value.color);
}

// ---- The session ----------------------------------------------------------------------------------------------------

PREFERENCES_SESSION::PREFERENCES_SESSION(QObject* parent) : QObject(parent), m_fonts(m_colors)
{
}

PREFERENCES_SESSION::~PREFERENCES_SESSION() = default;

PREFERENCES_COLORS& PREFERENCES_SESSION::get_colors()
{
    return m_colors;
}

PREFERENCES_FONTS& PREFERENCES_SESSION::get_fonts()
{
    return m_fonts;
}

PREFERENCES_PENS& PREFERENCES_SESSION::get_pens()
{
    return m_pens;
}

void PREFERENCES_SESSION::set_color(TOLV_COLOR_RESOURCE resource, const QColor& color)
{
    // Stored without alpha, so shown without it.
    TOLV_COLOR::set_default_color(resource, color.isValid() ? QColor(color.rgb()) : color);
    report_change();
}

void PREFERENCES_SESSION::set_font(TOLV_FONT_RESOURCE resource, const TOLV_FONT& font)
{
    TOLV_FONT::set_default_font(resource, &font);
    report_change();
}

void PREFERENCES_SESSION::set_pen(TOLV_PEN_RESOURCE resource, int width, TOLV_COLOR_RESOURCE color)
{
    TOLV_PEN::set_default_pen_width(resource, width);
    TOLV_PEN::set_default_pen_color(resource, color);
    report_change();
}

void PREFERENCES_SESSION::reset(PREFERENCES_TABLE& table, const QSet<int>& resources)
{
    table.reset(resources);
    report_change();
}

int PREFERENCES_SESSION::count_unsaved() const
{
    return m_colors.count_unsaved() + m_fonts.count_unsaved() + m_pens.count_unsaved();
}

bool PREFERENCES_SESSION::save()
{
    // Fonts and pens are stored whole: only where there is something to keep, so that the others follow new defaults.
    if (m_fonts.count_unsaved() > 0)
        TOLV_FONT::save_fonts_in_registry();
    else if (m_colors.count_unsaved() > 0)
        TOLV_COLOR::save_colors_in_registry();
    if (m_pens.count_unsaved() > 0)
        TOLV_PEN::save_pens_in_registry();
    if (!CFGQ_REGISTRY::flush())
        return false;
    m_colors.take_snapshot();
    m_fonts.take_snapshot();
    m_pens.take_snapshot();
    report_change();
    return true;
}

void PREFERENCES_SESSION::restore()
{
    m_fonts.restore();
    m_colors.restore();
    m_pens.restore();
    report_change();
}

void PREFERENCES_SESSION::report_change()
{
    TOLV_COLOR::refresh_pen_and_brush_colors();
    emit changed();
}
