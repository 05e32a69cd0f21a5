#pragma once

#include "tolv_export.h"
#include "tolv_icon_enum.h"

#include "fio.h"

#include <QIcon>
#include <QString>
#include <QStringList>

/// Icons by enumerator. The pictures are embedded in the library, and hosts never name a file. For the GUI thread only.

/// A copy of the icon; a null icon for a value that is no icon's, without a report. The first call makes all icons of
/// the table, which reads no file: a file is loaded when an icon of it is first asked for something. The icons share
/// their pictures, so that any number of copies holds one picture per file and size.
TOLV_EXPORT QIcon tolv_get_icon(TOLV_ICON_ENUM icon);

/// The icon's files as resource paths (":/icons/..." or ":icons/...", which Qt treats alike) for those who need the
/// pictures themselves: one file, or of the three icons with two the one for the state off, or for the smaller size,
/// first. Empty for a value that is no icon's.
TOLV_EXPORT QStringList tolv_get_icon_file_names(TOLV_ICON_ENUM icon);

/// The icon of an enumerator's name ("TOLV_COPY_ICON", letter case counts); TOLV_ICON_NONE where there is none.
TOLV_EXPORT TOLV_ICON_ENUM tolv_get_icon_enum(const QString& name);

/// The icon of a type of files; that of TOLV_GENERIC_FILE_ICON for all types without one of their own.
TOLV_EXPORT QIcon tolv_get_file_type_icon(FIO_FILE_TYPE type);
