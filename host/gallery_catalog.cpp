#include "gallery_catalog.h"

#include "gallery_tables.h"
#include "tolv_brush.h"
#include "tolv_color.h"
#include "tolv_create_action.h"
#include "tolv_font.h"
#include "tolv_global.h"
#include "tolv_icon.h"
#include "tolv_pen.h"

#include <QAction>
#include <QCoreApplication>

#include <memory>

namespace
{
constexpr const char* CONTEXT = "GALLERY_CATALOG";

struct KIND_TEXTS
{
    const char* title;
    const char* singular;
    const char* key;
    int count;
    const char* call; ///< "%1" is the name
};

constexpr KIND_TEXTS KINDS[GALLERY_KIND_COUNT] = {
    {QT_TRANSLATE_NOOP("GALLERY_CATALOG", "Actions"), QT_TRANSLATE_NOOP("GALLERY_CATALOG", "action"), "actions",
     TOLV_ACTION_COUNT, "tolv_create_action(%1, parent)"},
    {QT_TRANSLATE_NOOP("GALLERY_CATALOG", "Icons"), QT_TRANSLATE_NOOP("GALLERY_CATALOG", "icon"), "icons",
     TOLV_ICON_COUNT, "tolv_get_icon(%1)"},
    {QT_TRANSLATE_NOOP("GALLERY_CATALOG", "Cursors"), QT_TRANSLATE_NOOP("GALLERY_CATALOG", "cursor"), "cursors",
     TOLV_CURSOR_COUNT, "tolv_get_cursor(%1)"},
    {QT_TRANSLATE_NOOP("GALLERY_CATALOG", "Pixmaps"), QT_TRANSLATE_NOOP("GALLERY_CATALOG", "pixmap"), "pixmaps",
     TOLV_PIXMAP_COUNT, "tolv_get_pixmap(%1)"},
    {QT_TRANSLATE_NOOP("GALLERY_CATALOG", "Movies"), QT_TRANSLATE_NOOP("GALLERY_CATALOG", "movie"), "movies",
     TOLV_MOVIE_COUNT, "tolv_get_movie(%1)"},
    {QT_TRANSLATE_NOOP("GALLERY_CATALOG", "Colours"), QT_TRANSLATE_NOOP("GALLERY_CATALOG", "colour"), "colours",
     TOLV_COLOR_COUNT, "TOLV_COLOR(%1).get_color()"},
    {QT_TRANSLATE_NOOP("GALLERY_CATALOG", "Pens"), QT_TRANSLATE_NOOP("GALLERY_CATALOG", "pen"), "pens", TOLV_PEN_COUNT,
     "*TOLV_PEN(%1).get_pen()"},
    {QT_TRANSLATE_NOOP("GALLERY_CATALOG", "Brushes"), QT_TRANSLATE_NOOP("GALLERY_CATALOG", "brush"), "brushes",
     TOLV_BRUSH_COUNT, "*TOLV_BRUSH(%1).get_brush()"},
    {QT_TRANSLATE_NOOP("GALLERY_CATALOG", "Fonts"), QT_TRANSLATE_NOOP("GALLERY_CATALOG", "font"), "fonts",
     TOLV_FONT_COUNT, "*TOLV_FONT(%1).get_font()"},
};

QString tr(const char* text)
{
    return QCoreApplication::translate(CONTEXT, text);
}

GALLERY_ENTRY make_action_entry(int value)
{
    const auto action = static_cast<TOLV_ACTION_ENUM>(value);
    const std::unique_ptr<QAction> made(tolv_create_action(action, nullptr));
    GALLERY_ENTRY entry;
    entry.value = value;
    entry.name = tolv_get_action_enum_string(action);
    entry.texts = QStringList{tolv_get_menu_text_without_symbol(action),
                              made->shortcut().toString(QKeySequence::NativeText), entry.name, made->statusTip()};
    entry.icon = made->icon();
    return entry;
}

GALLERY_ENTRY make_icon_entry(int value)
{
    const QString name = QString::fromLatin1(gallery_get_icon_row(value).name);
    return {value, name, {name}, tolv_get_icon(static_cast<TOLV_ICON_ENUM>(value))};
}

/// A kind with nothing but names in its grid.
template <typename ROW, int COUNT>
QVector<GALLERY_ENTRY> make_named_entries(const ROW& (*get_row)(int))
{
    QVector<GALLERY_ENTRY> entries;
    entries.reserve(COUNT);
    for (int value = 1; value <= COUNT; ++value)
    {
        const QString name = QString::fromLatin1(get_row(value).name);
        entries.append({value, name, {name}, QIcon()});
    }
    return entries;
}

QVector<GALLERY_ENTRY> make_color_entries()
{
    QVector<GALLERY_ENTRY> entries;
    entries.reserve(TOLV_COLOR_COUNT);
    for (const TOLV_INITIAL_COLOR& row : tolv_get_initial_colors())
    {
        const QString name = QString::fromLatin1(row.name);
        const QString user = TOLV_COLOR::can_change_default_color(row.resource) ? tr("yes") : tr("no");
        entries.append({row.resource, name, {gallery_get_text(TOLV_COLOR(row.resource).get_color()), name, user}, {}});
    }
    return entries;
}

QVector<GALLERY_ENTRY> make_pen_entries()
{
    QVector<GALLERY_ENTRY> entries;
    entries.reserve(TOLV_PEN_COUNT);
    for (const TOLV_INITIAL_PEN& row : tolv_get_initial_pens())
    {
        const TOLV_PEN pen(row.resource);
        const QString name = QString::fromLatin1(row.name);
        const QStringList texts{QString(), name, QString::number(pen.get_width()), gallery_get_text(pen.get_style()),
                                gallery_get_color_name(pen.get_color())};
        entries.append({row.resource, name, texts, {}});
    }
    return entries;
}

QVector<GALLERY_ENTRY> make_brush_entries()
{
    QVector<GALLERY_ENTRY> entries;
    entries.reserve(TOLV_BRUSH_COUNT);
    for (const TOLV_INITIAL_BRUSH& row : tolv_get_initial_brushes())
    {
        const TOLV_BRUSH brush(row.resource);
        const QString name = gallery_get_brush_name(row.resource);
        const QStringList texts{QString(), name, gallery_get_text(brush.get_style()),
                                gallery_get_color_name(brush.get_color())};
        entries.append({row.resource, name, texts, {}});
    }
    return entries;
}

QVector<GALLERY_ENTRY> make_font_entries()
{
    QVector<GALLERY_ENTRY> entries;
    entries.reserve(TOLV_FONT_COUNT);
    for (const TOLV_INITIAL_FONT& row : tolv_get_initial_fonts())
    {
        const TOLV_FONT font(row.resource);
        const QString name = QString::fromLatin1(row.name);
        const QStringList texts{QString(), name, QString::number(font.get_point_size()),
                                gallery_get_text(*font.get_font()), font.get_face_name()};
        entries.append({row.resource, name, texts, {}});
    }
    return entries;
}
} // namespace

QString GALLERY_CATALOG::get_title(GALLERY_KIND kind)
{
    return tr(KINDS[kind].title);
}

QString GALLERY_CATALOG::get_singular(GALLERY_KIND kind)
{
    return tr(KINDS[kind].singular);
}

QString GALLERY_CATALOG::get_key(GALLERY_KIND kind)
{
    return QString::fromLatin1(KINDS[kind].key);
}

int GALLERY_CATALOG::get_count(GALLERY_KIND kind)
{
    return KINDS[kind].count;
}

bool GALLERY_CATALOG::has_tiles(GALLERY_KIND kind)
{
    return kind >= GALLERY_ICONS && kind <= GALLERY_MOVIES;
}

QStringList GALLERY_CATALOG::get_columns(GALLERY_KIND kind)
{
    switch (kind)
    {
    case GALLERY_ACTIONS:
        return {tr("Command"), tr("Shortcut"), tr("Name"), tr("Status tip")};
    case GALLERY_COLORS:
        return {tr("Colour"), tr("Name"), tr("Changeable")};
    case GALLERY_PENS:
        return {tr("Pen"), tr("Name"), tr("Width"), tr("Style"), tr("Colour")};
    case GALLERY_BRUSHES:
        return {tr("Brush"), tr("Name"), tr("Style"), tr("Colour")};
    case GALLERY_FONTS:
        return {tr("Font"), tr("Name"), tr("Points"), tr("Style"), tr("Family")};
    case GALLERY_ICONS:
    case GALLERY_CURSORS:
    case GALLERY_PIXMAPS:
    case GALLERY_MOVIES:
    case GALLERY_KIND_COUNT:
        break;
    }
    return {tr("Name")};
}

int GALLERY_CATALOG::get_name_column(GALLERY_KIND kind)
{
    if (kind == GALLERY_ACTIONS)
        return 2;
    return has_tiles(kind) ? 0 : 1;
}

QVector<GALLERY_ENTRY> GALLERY_CATALOG::make_entries(GALLERY_KIND kind)
{
    QVector<GALLERY_ENTRY> entries;
    switch (kind)
    {
    case GALLERY_ACTIONS:
    case GALLERY_ICONS:
        entries.reserve(get_count(kind));
        for (int value = 1; value <= get_count(kind); ++value)
            entries.append(kind == GALLERY_ACTIONS ? make_action_entry(value) : make_icon_entry(value));
        break;
    case GALLERY_CURSORS:
        return make_named_entries<GALLERY_CURSOR_ROW, TOLV_CURSOR_COUNT>(gallery_get_cursor_row);
    case GALLERY_PIXMAPS:
        return make_named_entries<GALLERY_FILE_ROW, TOLV_PIXMAP_COUNT>(gallery_get_pixmap_row);
    case GALLERY_MOVIES:
        return make_named_entries<GALLERY_FILE_ROW, TOLV_MOVIE_COUNT>(gallery_get_movie_row);
    case GALLERY_COLORS:
        return make_color_entries();
    case GALLERY_PENS:
        return make_pen_entries();
    case GALLERY_BRUSHES:
        return make_brush_entries();
    case GALLERY_FONTS:
        return make_font_entries();
    case GALLERY_KIND_COUNT:
        break;
    }
    return entries;
}

QString GALLERY_CATALOG::get_call(GALLERY_KIND kind, const QString& name)
{
    return QString::fromLatin1(KINDS[kind].call).arg(name);
}
