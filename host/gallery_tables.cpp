#include "gallery_tables.h"

#include "tolv_color.h"

#include <QCoreApplication>
#include <QMetaEnum>
#include <QStringList>

#include <algorithm>

namespace
{
constexpr GALLERY_ACTION_ROW ACTION_ROWS[] = {
#define TOLV_ACTION_ROW(name, menu_text, statustip, key_kind, key, icon, check, menu) {icon, menu},
#include "tolv_action_table.def"
#undef TOLV_ACTION_ROW
};

constexpr GALLERY_ICON_ROW ICON_ROWS[] = {
#define TOLV_ICON_ROW(enumerator, form, first_file, second_file) {#enumerator},
#include "tolv_icon_table.def"
#undef TOLV_ICON_ROW
};

constexpr GALLERY_CURSOR_ROW CURSOR_ROWS[] = {
#define TOLV_CURSOR_ROW(enumerator, bitmap, mask, hot_x, hot_y) {#enumerator, ":/cursors/" bitmap, ":/cursors/" mask},
#include "tolv_cursor_table.def"
#undef TOLV_CURSOR_ROW
};

constexpr GALLERY_FILE_ROW PIXMAP_ROWS[] = {
#define TOLV_PIXMAP_ROW(enumerator, file) {#enumerator, ":/pixmaps/" file},
#include "tolv_pixmap_table.def"
#undef TOLV_PIXMAP_ROW
};

constexpr GALLERY_FILE_ROW MOVIE_ROWS[] = {
#define TOLV_MOVIE_ROW(enumerator, file) {#enumerator, file},
#include "tolv_movie_table.def"
#undef TOLV_MOVIE_ROW
};

struct BRUSH_NAME
{
    TOLV_BRUSH_RESOURCE resource;
    const char* name;
};

constexpr BRUSH_NAME BRUSH_NAMES[] = {
#define TOLV_BRUSH_ROW(resource, value, color, style) {resource, #resource},
#include "tolv_brush_table.def"
#undef TOLV_BRUSH_ROW
};

/// "DashDotLine" as "dash dot", without the kind at the end.
template <typename ENUM>
QString get_enum_text(ENUM value, const char* kind)
{
    QString text = QString::fromLatin1(QMetaEnum::fromType<ENUM>().valueToKey(value));
    if (text.endsWith(QLatin1String(kind)))
        text.chop(static_cast<int>(qstrlen(kind)));
    for (int i = text.size() - 1; i > 0; --i)
    {
        if (text[i].isUpper() || (text[i].isDigit() && !text[i - 1].isDigit()))
            text.insert(i, QLatin1Char(' '));
    }
    return text.toLower();
}

QString tr(const char* text)
{
    return QCoreApplication::translate("GALLERY_CATALOG", text);
}
} // namespace

const GALLERY_ACTION_ROW& gallery_get_action_row(int action)
{
    return ACTION_ROWS[action - 1];
}

const GALLERY_ICON_ROW& gallery_get_icon_row(int icon)
{
    return ICON_ROWS[icon - 1];
}

const GALLERY_CURSOR_ROW& gallery_get_cursor_row(int cursor)
{
    return CURSOR_ROWS[cursor - 1];
}

const GALLERY_FILE_ROW& gallery_get_pixmap_row(int pixmap)
{
    return PIXMAP_ROWS[pixmap - 1];
}

const GALLERY_FILE_ROW& gallery_get_movie_row(int movie)
{
    return MOVIE_ROWS[movie - 1];
}

QString gallery_get_brush_name(TOLV_BRUSH_RESOURCE resource)
{
    const auto* const row = std::find_if(std::begin(BRUSH_NAMES), std::end(BRUSH_NAMES),
                                         [resource](const BRUSH_NAME& each) { return each.resource == resource; });
    return QString::fromLatin1(row->name);
}

QString gallery_get_color_name(const TOLV_COLOR& color)
{
    for (const TOLV_INITIAL_COLOR& row : tolv_get_initial_colors())
    {
        if (row.resource == color.get_color_resource())
            return QString::fromLatin1(row.name);
    }
    return gallery_get_text(color.get_color());
}

QString gallery_get_text(const QColor& color)
{
    return color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
}

QString gallery_get_text(Qt::PenStyle style)
{
    return get_enum_text(style, "Line");
}

QString gallery_get_text(Qt::PenCapStyle cap)
{
    return get_enum_text(cap, "Cap");
}

QString gallery_get_text(Qt::PenJoinStyle join)
{
    return get_enum_text(join, "Join");
}

QString gallery_get_text(Qt::BrushStyle style)
{
    return style == Qt::NoBrush ? tr("no") : get_enum_text(style, "Pattern");
}

QString gallery_get_text(const QFont& font)
{
    QStringList words;
    if (font.bold())
        words.append(tr("bold"));
    if (font.italic())
        words.append(tr("italic"));
    if (font.underline())
        words.append(tr("underlined"));
    if (font.strikeOut())
        words.append(tr("struck out"));
    if (font.fixedPitch())
        words.append(tr("fixed pitch"));
    return words.isEmpty() ? tr("regular") : words.join(QStringLiteral(", "));
}
