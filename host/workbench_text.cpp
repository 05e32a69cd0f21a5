#include "workbench_text.h"

#include <QLocale>

QString workbench_to_qstring(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

QString workbench_format_count(std::uint64_t count)
{
    return QLocale().toString(static_cast<qulonglong>(count));
}
