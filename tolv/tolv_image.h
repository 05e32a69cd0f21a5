#pragma once

#include "tolv_cursor_enum.h"
#include "tolv_export.h"
#include "tolv_movie_enum.h"
#include "tolv_pixmap_enum.h"

#include <QCursor>
#include <QPixmap>

class QMovie;

/// Cursors, pixmaps and movies by enumerator. The pictures are embedded in the library; each call reads them anew, and
/// nothing is kept. For the GUI thread only.

/// The cursor. A value that is no cursor's is the internal error "Invalid cursor type"; where that returns, the result
/// is the arrow.
TOLV_EXPORT QCursor tolv_get_cursor(TOLV_CURSOR_ENUM cursor);

/// The pixmap. A value that is no pixmap's is the internal error "Invalid pixmap type"; where that returns, the result
/// is null.
TOLV_EXPORT QPixmap tolv_get_pixmap(TOLV_PIXMAP_ENUM pixmap);

/// A new movie, not started, that the caller owns; it has no parent. A value that is no movie's is the internal error
/// "Invalid movie type"; where that returns, the result is null.
TOLV_EXPORT QMovie* tolv_get_movie(TOLV_MOVIE_ENUM movie);
