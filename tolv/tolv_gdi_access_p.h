#pragma once

#include "tolv_check.h"
#include "tolv_gdi_manager.h"

#include <QDataStream>

/// What the value classes share.

/// The manager, for a statement; none is an internal error.
inline TOLV_GDI_MANAGER* tolv_require_gdi_manager()
{
    TOLV_GDI_MANAGER* const gdi_mgr = TOLV_GDI_MANAGER::get_instance();
    TOLV_CHECK_TEXT(gdi_mgr != nullptr, "gdi_mgr != NULL");
    return gdi_mgr;
}

/// Format of all value classes on a stream.
constexpr int TOLV_GDI_STREAM_VERSION = 1;

/// Whether all reads so far have succeeded.
inline bool tolv_is_stream_ok(const QDataStream& stream)
{
    return stream.status() == QDataStream::Ok;
}

/// Reads the format of a value class. A stream that ends before it is no format, and no error of ours; another format
/// is the internal error with the given text. Returns whether to read on.
inline bool tolv_read_stream_version(QDataStream& stream, const char* error_text)
{
    int version = 0;
    stream >> version;
    if (!tolv_is_stream_ok(stream))
        return false;
    TOLV_CHECK_TEXT(version == TOLV_GDI_STREAM_VERSION, error_text);
    return version == TOLV_GDI_STREAM_VERSION;
}
