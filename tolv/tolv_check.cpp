#include "tolv_check.h"

#include "msg_internal_error.h"
#include "tolv_mem.h"

#include <QFileInfo>

TOLV_MEM_INITIALIZER();

void tolv_report_internal_error(const char* text, const char* source_path, int line)
{
    const QByteArray source_name = QFileInfo(QString::fromLocal8Bit(source_path)).completeBaseName().toLocal8Bit();
    MSG_INTERNAL_ERROR::report(text, "TOLV", source_name.constData(), line);
}
