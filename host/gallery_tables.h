#pragma once

#include "tolv_action_auto.h"
#include "tolv_cursor_enum.h"
#include "tolv_gdi_tables.h"
#include "tolv_icon_enum.h"
#include "tolv_movie_enum.h"
#include "tolv_pixmap_enum.h"

#include <QColor>
#include <QFont>
#include <QPoint>
#include <QString>

class TOLV_COLOR;

/// The columns of the library's tables that no function of it gives, and values as texts. An enumerator must be one of
/// its table.

struct GALLERY_ACTION_ROW
{
    TOLV_ICON_ENUM icon; ///< TOLV_ICON_NONE for none
    const char* menu;    ///< where tools show it: "File > New"
};

struct GALLERY_ICON_ROW
{
    const char* name;
};

struct GALLERY_CURSOR_ROW
{
    const char* name;
    const char* bitmap; ///< resource path
    const char* mask;   ///< likewise
};

struct GALLERY_FILE_ROW
{
    const char* name;
    const char* file; ///< resource path
};

const GALLERY_ACTION_ROW& gallery_get_action_row(int action);
const GALLERY_ICON_ROW& gallery_get_icon_row(int icon);
const GALLERY_CURSOR_ROW& gallery_get_cursor_row(int cursor);
const GALLERY_FILE_ROW& gallery_get_pixmap_row(int pixmap);
const GALLERY_FILE_ROW& gallery_get_movie_row(int movie);
QString gallery_get_brush_name(TOLV_BRUSH_RESOURCE resource);

/// The name of a colour's resource; of a colour that has none, its value.
QString gallery_get_color_name(const TOLV_COLOR& color);
/// "#rrggbb", with the alpha in front where the colour is not opaque.
QString gallery_get_text(const QColor& color);
QString gallery_get_text(Qt::PenStyle style);
QString gallery_get_text(Qt::PenCapStyle cap);
QString gallery_get_text(Qt::PenJoinStyle join);
QString gallery_get_text(Qt::BrushStyle style);
/// What a font is beside its family and size: "bold, italic"; "regular" for nothing of all.
QString gallery_get_text(const QFont& font);
