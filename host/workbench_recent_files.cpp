#include "workbench_recent_files.h"

#include "cfgq_registry.h"

namespace
{
constexpr int VERSION = 1;

CFGQ_REGISTRY_KEY get_key()
{
    return CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_GUI, "norvane_workbench/recent_files");
}

void store(const QStringList& files)
{
    CFGQ_REGISTRY_KEY key = get_key();
    key.set_value(QStringLiteral("version"), VERSION);
    key.set_value(QStringLiteral("files"), files);
}
} // namespace

QStringList WORKBENCH_RECENT_FILES::get()
{
    const CFGQ_REGISTRY_KEY key = get_key();
    QVariant version;
    QVariant files;
    if (!key.get_value(QStringLiteral("version"), &version) || version.toInt() != VERSION ||
        !key.get_value(QStringLiteral("files"), &files))
        return QStringList();
    return files.toStringList().mid(0, LARGEST_COUNT);
}

void WORKBENCH_RECENT_FILES::add(const QString& file)
{
    QStringList files = get();
    files.removeAll(file);
    files.prepend(file);
    store(files.mid(0, LARGEST_COUNT));
}

void WORKBENCH_RECENT_FILES::clear()
{
    store(QStringList());
}
