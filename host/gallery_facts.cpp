#include "gallery_catalog.h"
#include "gallery_tables.h"
#include "tolv_brush.h"
#include "tolv_color.h"
#include "tolv_create_action.h"
#include "tolv_font.h"
#include "tolv_icon.h"
#include "tolv_image.h"
#include "tolv_pen.h"

#include <QAction>
#include <QBitmap>
#include <QCoreApplication>
#include <QMetaEnum>
#include <QMovie>
#include <QPalette>

#include <memory>

namespace
{
using FACTS = QVector<GALLERY_FACT>;

QString tr(const char* text)
{
    return QCoreApplication::translate("GALLERY_CATALOG", text);
}

QString get_size_text(const QSize& size)
{
    return tr("%1 by %2 pixels").arg(size.width()).arg(size.height());
}

/// A line that is left out where there is nothing to say.
void append_text(FACTS& facts, const char* title, const QString& text)
{
    if (!text.isEmpty())
        facts.append({tr(title), text});
}

FACTS describe_action(int value)
{
    const auto action = static_cast<TOLV_ACTION_ENUM>(value);
    const std::unique_ptr<QAction> made(tolv_create_action(action, nullptr));
    const GALLERY_ACTION_ROW& row = gallery_get_action_row(value);
    FACTS facts;
    append_text(facts, QT_TRANSLATE_NOOP("GALLERY_CATALOG", "Menu text"), made->text());
    append_text(facts, QT_TRANSLATE_NOOP("GALLERY_CATALOG", "Menu"), QString::fromLatin1(row.menu));
    append_text(facts, QT_TRANSLATE_NOOP("GALLERY_CATALOG", "Shortcut"),
                made->shortcut().toString(QKeySequence::NativeText));
    append_text(facts, QT_TRANSLATE_NOOP("GALLERY_CATALOG", "Tool tip"), made->toolTip());
    append_text(facts, QT_TRANSLATE_NOOP("GALLERY_CATALOG", "Status tip"), made->statusTip());
    append_text(facts, QT_TRANSLATE_NOOP("GALLERY_CATALOG", "Check mark"), made->isCheckable() ? tr("yes") : tr("no"));
    if (row.icon != TOLV_ICON_NONE)
        facts.append({tr("Icon"), QString::fromLatin1(gallery_get_icon_row(row.icon).name)});
    return facts;
}

FACTS describe_icon(int value)
{
    const auto icon = static_cast<TOLV_ICON_ENUM>(value);
    FACTS facts;
    for (const QString& file : tolv_get_icon_file_names(icon))
        facts.append({tr("File"), file});
    QStringList sizes;
    for (const QSize& size : tolv_get_icon(icon).availableSizes())
        sizes.append(QStringLiteral("%1x%2").arg(size.width()).arg(size.height()));
    append_text(facts, QT_TRANSLATE_NOOP("GALLERY_CATALOG", "Sizes"), sizes.join(QStringLiteral(", ")));
    for (int action = 1; action <= TOLV_ACTION_COUNT; ++action)
    {
        if (gallery_get_action_row(action).icon == icon)
            facts.append({tr("Action"), tolv_get_action_enum_string(static_cast<TOLV_ACTION_ENUM>(action))});
    }
    return facts;
}

FACTS describe_cursor(int value)
{
    const QCursor cursor = tolv_get_cursor(static_cast<TOLV_CURSOR_ENUM>(value));
    const GALLERY_CURSOR_ROW& row = gallery_get_cursor_row(value);
    return {{tr("Hot spot"), QStringLiteral("%1, %2").arg(cursor.hotSpot().x()).arg(cursor.hotSpot().y())},
            {tr("Size"), get_size_text(cursor.bitmap(Qt::ReturnByValue).size())},
            {tr("Bitmap"), QString::fromLatin1(row.bitmap)},
            {tr("Mask"), QString::fromLatin1(row.mask)}};
}

FACTS describe_pixmap(int value)
{
    return {{tr("File"), QString::fromLatin1(gallery_get_pixmap_row(value).file)},
            {tr("Size"), get_size_text(tolv_get_pixmap(static_cast<TOLV_PIXMAP_ENUM>(value)).size())}};
}

FACTS describe_movie(int value)
{
    const std::unique_ptr<QMovie> movie(tolv_get_movie(static_cast<TOLV_MOVIE_ENUM>(value)));
    movie->jumpToFrame(0);
    return {{tr("File"), movie->fileName()},
            {tr("Size"), get_size_text(movie->frameRect().size())},
            {tr("Frames"), QString::number(movie->frameCount())},
            {tr("Frame time"), tr("%1 ms").arg(movie->nextFrameDelay())}};
}

FACTS describe_color(int value)
{
    const auto resource = static_cast<TOLV_COLOR_RESOURCE>(value);
    FACTS facts{{tr("Colour"), gallery_get_text(TOLV_COLOR(resource).get_color())},
                {tr("Built-in"), gallery_get_text(TOLV_COLOR::get_default_color(resource))},
                {tr("Changeable"), TOLV_COLOR::can_change_default_color(resource) ? tr("yes") : tr("no")}};
    for (const TOLV_INITIAL_COLOR& row : tolv_get_initial_colors())
    {
        const auto roles = QMetaEnum::fromType<QPalette::ColorRole>();
        if (row.resource == resource && (row.is_system || row.palette_role != 0))
            facts.append({tr("Palette role"), QString::fromLatin1(roles.valueToKey(row.palette_role))});
    }
    for (const TOLV_INITIAL_PEN& row : tolv_get_initial_pens())
    {
        if (row.color == resource)
            facts.append({tr("Pen"), QString::fromLatin1(row.name)});
    }
    for (const TOLV_INITIAL_BRUSH& row : tolv_get_initial_brushes())
    {
        if (row.color == resource)
            facts.append({tr("Brush"), gallery_get_brush_name(row.resource)});
    }
    return facts;
}

FACTS describe_pen(int value)
{
    const TOLV_PEN pen(static_cast<TOLV_PEN_RESOURCE>(value));
    const QString width = pen.get_width() == 0 ? tr("0 (one pixel at any zoom)") : QString::number(pen.get_width());
    return {{tr("Colour"), gallery_get_color_name(pen.get_color())},
            {tr("Width"), width},
            {tr("Style"), gallery_get_text(pen.get_style())},
            {tr("Cap"), gallery_get_text(pen.get_cap_style())},
            {tr("Join"), gallery_get_text(pen.get_pen()->joinStyle())}};
}

FACTS describe_brush(int value)
{
    const TOLV_BRUSH brush(static_cast<TOLV_BRUSH_RESOURCE>(value));
    return {{tr("Colour"), gallery_get_color_name(brush.get_color())},
            {tr("Style"), gallery_get_text(brush.get_style())}};
}

FACTS describe_font(int value)
{
    const auto resource = static_cast<TOLV_FONT_RESOURCE>(value);
    const TOLV_FONT font(resource);
    return {{tr("Family"), font.get_face_name()},
            {tr("Points"), QString::number(font.get_point_size())},
            {tr("Style"), gallery_get_text(*font.get_font())},
            {tr("Text colour"), gallery_get_color_name(font.get_text_color())},
            {tr("Ground"), gallery_get_color_name(font.get_background_color())},
            {tr("Changeable"), TOLV_FONT::can_change_default_font(resource) ? tr("yes") : tr("no")}};
}

FACTS describe_by_kind(GALLERY_KIND kind, int value)
{
    switch (kind)
    {
    case GALLERY_ACTIONS:
        return describe_action(value);
    case GALLERY_ICONS:
        return describe_icon(value);
    case GALLERY_CURSORS:
        return describe_cursor(value);
    case GALLERY_PIXMAPS:
        return describe_pixmap(value);
    case GALLERY_MOVIES:
        return describe_movie(value);
    case GALLERY_COLORS:
        return describe_color(value);
    case GALLERY_PENS:
        return describe_pen(value);
    case GALLERY_BRUSHES:
        return describe_brush(value);
    case GALLERY_FONTS:
        return describe_font(value);
    case GALLERY_KIND_COUNT:
        break;
    }
    return {};
}
} // namespace

QVector<GALLERY_FACT> GALLERY_CATALOG::describe(GALLERY_KIND kind, int value)
{
    FACTS facts = describe_by_kind(kind, value);
    facts.append({tr("Value"), QString::number(value)});
    return facts;
}
