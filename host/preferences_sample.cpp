#include "preferences_sample.h"

#include "preferences_names.h"
#include "tolv_contrast.h"
#include "tolv_gdi_manager.h"
#include "tolv_gdi_tables.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>
#include <map>

namespace
{
constexpr int MARGIN = 4; // pixels between a sample and what is beside it
constexpr int FIGURE_WIDTH = 44;
constexpr double LEAST_CONTRAST = 3;

/// The two colours of the sheet on which a tool draws.
struct SHEET
{
    TOLV_COLOR_RESOURCE ground = TOLV_WINDOW_BACKGROUND_COLOR;
    TOLV_COLOR_RESOURCE text = TOLV_MIN_COLOR;
};

std::map<QString, SHEET> find_sheets()
{
    std::map<QString, SHEET> sheets;
    for (const TOLV_INITIAL_COLOR& row : tolv_get_initial_colors())
    {
        const PREFERENCES_NAME name = PREFERENCES_NAME::from_enumerator(QString::fromLatin1(row.name));
        if (row.can_change && name.title == QLatin1String("Background"))
            sheets[name.group].ground = row.resource;
        else if (row.can_change && name.title == QLatin1String("Text"))
            sheets[name.group].text = row.resource;
    }
    return sheets;
}

SHEET get_sheet(const QString& group)
{
    static const std::map<QString, SHEET> s_sheets = find_sheets();
    const auto sheet = s_sheets.find(group);
    return sheet == s_sheets.end() ? SHEET() : sheet->second;
}

/// The colour row of the name with one part replaced; TOLV_MIN_COLOR for none.
TOLV_COLOR_RESOURCE find_partner(QString name, const char* part, const char* other_part)
{
    if (!name.contains(QLatin1String(part)))
        return TOLV_MIN_COLOR;
    name.replace(QLatin1String(part), QLatin1String(other_part));
    return TOLV_GDI_MANAGER::get_instance()->get_color_resource(name.toStdString());
}

/// What lies under a text colour of that name.
TOLV_COLOR_RESOURCE find_ground(const QString& name, TOLV_COLOR_RESOURCE ground_of_group)
{
    if (name == QLatin1String("TOLV_MSW_HIGHLIGHT_KEYWORD_COLOR"))
        return TOLV_MSW_HIGHLIGHT_KEYWORD_BG_COLOR;
    const TOLV_COLOR_RESOURCE ground = find_partner(name, "_TEXT_COLOR", "_BACKGROUND_COLOR");
    const TOLV_COLOR_RESOURCE fill = find_partner(name, "_TEXT_COLOR", "_COLOR"); // of the progress bar
    if (ground != TOLV_MIN_COLOR)
        return ground;
    return fill != TOLV_MIN_COLOR ? fill : ground_of_group;
}

/// What is written on a ground of that name; TOLV_MIN_COLOR for nothing.
TOLV_COLOR_RESOURCE find_text(const QString& name)
{
    if (name == QLatin1String("TOLV_MSW_HIGHLIGHT_KEYWORD_BG_COLOR"))
        return TOLV_MSW_HIGHLIGHT_KEYWORD_COLOR;
    return find_partner(name, "_BACKGROUND_COLOR", "_TEXT_COLOR");
}

template <typename VALUE, typename ROWS, typename IS_IT>
std::optional<VALUE> find_resource(const ROWS& rows, const IS_IT& is_it)
{
    const auto row = std::find_if(rows.begin(), rows.end(), is_it);
    return row == rows.end() ? std::nullopt : std::optional<VALUE>(row->resource);
}
} // namespace

PREFERENCES_SAMPLE PREFERENCES_SAMPLE::of_color(int resource, const QString& name)
{
    const auto color = static_cast<TOLV_COLOR_RESOURCE>(resource);
    PREFERENCES_SAMPLE sample(get_color_kind(name), resource, name, color);
    const auto draws_in_it = [color](const auto& row) { return row.color == color; };
    if (sample.m_kind == KIND_TEXT)
    {
        sample.m_ground = find_ground(name, sample.m_ground.get_color_resource());
        sample.m_font = find_resource<TOLV_FONT>(tolv_get_initial_fonts(),
                                                 [color](const auto& row) { return row.text_color == color; });
    }
    else if (sample.m_kind == KIND_FILL)
        sample.m_brush = find_resource<TOLV_BRUSH>(tolv_get_initial_brushes(), draws_in_it);
    else if (sample.m_kind == KIND_LINE)
        sample.m_pen = find_resource<TOLV_PEN>(tolv_get_initial_pens(), draws_in_it);
    return sample;
}

PREFERENCES_SAMPLE PREFERENCES_SAMPLE::of_font(int resource, const QString& name)
{
    const TOLV_FONT font(static_cast<TOLV_FONT_RESOURCE>(resource));
    PREFERENCES_SAMPLE sample(KIND_FONT, resource, name, font.get_text_color().get_color_resource());
    sample.m_ground = font.get_background_color();
    sample.m_font = font;
    return sample;
}

PREFERENCES_SAMPLE PREFERENCES_SAMPLE::of_pen(int resource, const QString& name)
{
    const TOLV_PEN pen(static_cast<TOLV_PEN_RESOURCE>(resource));
    PREFERENCES_SAMPLE sample(KIND_LINE, resource, name, pen.get_color().get_color_resource());
    sample.m_pen = pen;
    return sample;
}

PREFERENCES_SAMPLE::PREFERENCES_SAMPLE(KIND kind, int resource, const QString& name, TOLV_COLOR_RESOURCE color)
    : m_kind(kind), m_resource(resource), m_color(color), m_ground(TOLV_WINDOW_BACKGROUND_COLOR),
      m_text(TOLV_WINDOW_TEXT_COLOR)
{
    const PREFERENCES_NAME shown = PREFERENCES_NAME::from_enumerator(name);
    m_title = shown.title;
    const SHEET sheet = get_sheet(shown.group);
    m_ground = sheet.ground;
    const TOLV_COLOR_RESOURCE own_text = find_text(name);
    if (own_text != TOLV_MIN_COLOR)
        m_text = own_text;
    else if (sheet.text != TOLV_MIN_COLOR)
        m_text = sheet.text;
}

int PREFERENCES_SAMPLE::get_resource() const
{
    return m_resource;
}

bool PREFERENCES_SAMPLE::is_wide() const
{
    return m_kind == KIND_FONT;
}

int PREFERENCES_SAMPLE::get_height(const QFont& label_font) const
{
    const int height = QFontMetrics(label_font).height();
    const int font_height = m_kind == KIND_FONT ? QFontMetrics(*m_font->get_font()).height() : 0;
    return std::max(height, font_height) + 2 * MARGIN;
}

const QRect& PREFERENCES_SAMPLE::get_rect() const
{
    return m_rect;
}

void PREFERENCES_SAMPLE::set_rect(const QRect& rect)
{
    m_rect = rect;
}

void PREFERENCES_SAMPLE::paint(QPainter& painter, const QColor& label) const
{
    painter.save();
    painter.setClipRect(m_rect);
    if (m_kind == KIND_GROUND)
        paint_ground(painter, label);
    else if (m_kind == KIND_FILL)
        paint_fill(painter, label);
    else if (m_kind == KIND_LINE)
        paint_line(painter, label);
    else
        paint_text(painter);
    painter.restore();
}

PREFERENCES_SAMPLE::KIND PREFERENCES_SAMPLE::get_color_kind(const QString& name)
{
    static const struct
    {
        const char* suffix;
        KIND kind;
    } KINDS[] = {{"_BACKGROUND_COLOR", KIND_GROUND}, {"_BG_COLOR", KIND_GROUND}, {"_TEXT_COLOR", KIND_TEXT},
                 {"_LINE_COLOR", KIND_LINE},         {"_GRID_COLOR", KIND_LINE}, {"_BORDER_COLOR", KIND_LINE},
                 {"_FILL_COLOR", KIND_FILL}};
    for (const auto& each : KINDS)
    {
        if (name.endsWith(QLatin1String(each.suffix)))
            return each.kind;
    }
    return name.startsWith(QLatin1String("TOLV_MSW_")) ? KIND_TEXT : KIND_FILL;
}

void PREFERENCES_SAMPLE::paint_ground(QPainter& painter, const QColor& label) const
{
    const QColor color = m_color.get_color();
    painter.fillRect(m_rect, color);
    QColor frame = label;
    frame.setAlpha(90); // or the ground of the tool itself would be no sample
    painter.setPen(QPen(frame, 1));
    painter.drawRect(m_rect.adjusted(0, 0, -1, -1));
    const QColor text = m_text.get_color();
    paint_label(painter, m_rect,
                tolv_get_contrast(text, color) < LEAST_CONTRAST ? tolv_get_contrast_color(color) : text);
}

void PREFERENCES_SAMPLE::paint_fill(QPainter& painter, const QColor& label) const
{
    const QRect figure = get_figure();
    painter.fillRect(figure, m_brush ? *m_brush->get_brush() : QBrush(m_color.get_color()));
    QColor frame = label;
    frame.setAlpha(130);
    painter.setPen(QPen(frame, 1));
    painter.drawRect(figure.adjusted(0, 0, -1, -1));
    paint_label(painter, m_rect.adjusted(figure.width() + MARGIN, 0, 0, 0), label);
}

void PREFERENCES_SAMPLE::paint_line(QPainter& painter, const QColor& label) const
{
    const QRect figure = get_figure();
    painter.setPen(m_pen ? *m_pen->get_pen() : QPen(m_color.get_color(), 1));
    const int bend = figure.center().x();
    const QPoint points[] = {{figure.left() + 2, figure.bottom() - 2},
                             {bend, figure.bottom() - 2},
                             {bend, figure.top() + 2},
                             {figure.right() - 2, figure.top() + 2}};
    painter.drawPolyline(points, 4);
    paint_label(painter, m_rect.adjusted(figure.width() + MARGIN, 0, 0, 0), label);
}

void PREFERENCES_SAMPLE::paint_text(QPainter& painter) const
{
    painter.fillRect(m_rect, m_ground.get_color());
    if (m_font)
    {
        QFont font = *m_font->get_font();
        if (m_kind == KIND_TEXT) // a sample of the colour: the font's size is for the page of fonts
            font.setPointSizeF(painter.font().pointSizeF());
        painter.setFont(font);
    }
    paint_label(painter, m_rect, get_text_color());
}

void PREFERENCES_SAMPLE::paint_label(QPainter& painter, const QRect& rect, const QColor& color) const
{
    const QRect inner = rect.adjusted(MARGIN, 0, -MARGIN, 0);
    painter.setPen(color);
    painter.drawText(inner, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(m_title, Qt::ElideRight, inner.width()));
}

QColor PREFERENCES_SAMPLE::get_text_color() const
{
    const TOLV_COLOR color = m_kind == KIND_FONT ? m_font->get_text_color() : m_color;
    if (m_ground.get_color_resource() != TOLV_WINDOW_BACKGROUND_COLOR || color.get_color_resource() == TOLV_MIN_COLOR)
        return color.get_color();
    return tolv_get_readable_color(color.get_color_resource());
}

QRect PREFERENCES_SAMPLE::get_figure() const
{
    return QRect(m_rect.left() + MARGIN, m_rect.top() + MARGIN - 1, FIGURE_WIDTH, m_rect.height() - 2 * MARGIN + 2);
}

// ---- Colours of a tool ----------------------------------------------------------------------------------------------

TOLV_COLOR_RESOURCE preferences_get_ground(const QString& group)
{
    return get_sheet(group).ground;
}

QColor preferences_get_label_color(const QString& group)
{
    const SHEET sheet = get_sheet(group);
    const QColor ground = TOLV_COLOR(sheet.ground).get_color();
    const QColor text = TOLV_COLOR(sheet.text == TOLV_MIN_COLOR ? TOLV_WINDOW_TEXT_COLOR : sheet.text).get_color();
    return tolv_get_contrast(text, ground) < LEAST_CONTRAST ? tolv_get_contrast_color(ground) : text;
}
