#include "tolv_image.h"

#include "tolv_check.h"
#include "tolv_mem.h"

#include "msg_internal_error.h"

#include <QBitmap>
#include <QByteArray>
#include <QMovie>
#include <QString>

TOLV_MEM_INITIALIZER();

namespace
{
struct CURSOR_ROW
{
    const char* bitmap;
    const char* mask;
    int hot_x;
    int hot_y;
};

constexpr CURSOR_ROW CURSOR_ROWS[] = {
#define TOLV_CURSOR_ROW(enumerator, bitmap, mask, hot_x, hot_y) {":/cursors/" bitmap, ":/cursors/" mask, hot_x, hot_y},
#include "tolv_cursor_table.def"
#undef TOLV_CURSOR_ROW
};

constexpr const char* PIXMAP_FILES[] = {
#define TOLV_PIXMAP_ROW(enumerator, file) ":/pixmaps/" file,
#include "tolv_pixmap_table.def"
#undef TOLV_PIXMAP_ROW
};

constexpr const char* MOVIE_FILES[] = {
#define TOLV_MOVIE_ROW(enumerator, file) file,
#include "tolv_movie_table.def"
#undef TOLV_MOVIE_ROW
};
} // namespace

QCursor tolv_get_cursor(TOLV_CURSOR_ENUM cursor)
{
    if (cursor < 1 || cursor > TOLV_CURSOR_COUNT)
    {
        tolv_report_internal_error("Invalid cursor type", __FILE__, __LINE__);
        return {};
    }
    const CURSOR_ROW& row = CURSOR_ROWS[cursor - 1];
    const QBitmap mask(QString::fromLatin1(row.mask));
    const QBitmap bitmap(QString::fromLatin1(row.bitmap));
    return QCursor(bitmap, mask, row.hot_x, row.hot_y);
}

QPixmap tolv_get_pixmap(TOLV_PIXMAP_ENUM pixmap)
{
    if (pixmap < 1 || pixmap > TOLV_PIXMAP_COUNT)
    {
        // The place by which reports of it are known.
        MSG_INTERNAL_ERROR::report("Invalid pixmap type", "TOLV", "tolv_global", 285);
        return {};
    }
    return QPixmap(QString::fromLatin1(PIXMAP_FILES[pixmap - 1]));
}

QMovie* tolv_get_movie(TOLV_MOVIE_ENUM movie)
{
    if (movie < 1 || movie > TOLV_MOVIE_COUNT)
    {
        tolv_report_internal_error("Invalid movie type", __FILE__, __LINE__);
        return nullptr;
    }
    return new QMovie(QString::fromLatin1(MOVIE_FILES[movie - 1]), QByteArray(), nullptr);
}
