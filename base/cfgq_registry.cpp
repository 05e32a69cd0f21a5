#include "cfgq_registry.h"

#include "cfgq_registry_format_p.h"
#include "cfgq_registry_store_p.h"

const char* const CFGQ_TOLV_TOOLBAR_LARGE_ICONS = "Large_toolbar_icons";
const char* const CFGQ_TOLV_SHOW_MDI_TABS = "Show_MDI_tabs";

void CFGQ_REGISTRY::migrate_registry_settings()
{
    CFGQ_REGISTRY_STORE::get().migrate();
}

bool CFGQ_REGISTRY::flush()
{
    return CFGQ_REGISTRY_STORE::get().flush();
}

int CFGQ_REGISTRY::get_layout_version()
{
    return 1;
}

QString CFGQ_REGISTRY::get_set_aside_file()
{
    return CFGQ_REGISTRY_STORE::get().get_set_aside_path();
}

void CFGQ_REGISTRY::close()
{
    CFGQ_REGISTRY_STORE::close();
}

/// The folder's place, and the folder itself as long as the store is the one in which it was found.
struct CFGQ_REGISTRY_KEY::IMPL
{
    QString path;
    CFGQ_REGISTRY_STORE::FOLDER* folder = nullptr;
    unsigned int generation = 0;

    CFGQ_REGISTRY_STORE& open()
    {
        CFGQ_REGISTRY_STORE& store = CFGQ_REGISTRY_STORE::get();
        if (folder == nullptr || generation != CFGQ_REGISTRY_STORE::get_generation())
        {
            folder = store.get_folder(path);
            generation = CFGQ_REGISTRY_STORE::get_generation();
        }
        return store;
    }
};

CFGQ_REGISTRY_KEY::CFGQ_REGISTRY_KEY(SUB_KEY sub_key, const char* path) : m_impl(std::make_unique<IMPL>())
{
    m_impl->path = QString::number(sub_key);
    const QStringList segments = QString::fromLocal8Bit(path).split(QLatin1Char('/'), Qt::SkipEmptyParts);
    for (const QString& segment : segments)
        m_impl->path += QLatin1Char('/') + CFGQ_REGISTRY_FORMAT::escape_name(segment);
}

CFGQ_REGISTRY_KEY::CFGQ_REGISTRY_KEY(const CFGQ_REGISTRY_KEY& parent, const char* name)
    : m_impl(std::make_unique<IMPL>())
{
    m_impl->path = parent.m_impl->path;
    if (name != nullptr && *name != '\0')
        m_impl->path += QLatin1Char('/') + CFGQ_REGISTRY_FORMAT::escape_name(QString::fromLocal8Bit(name));
}

CFGQ_REGISTRY_KEY::~CFGQ_REGISTRY_KEY() = default;

CFGQ_REGISTRY_KEY::CFGQ_REGISTRY_KEY(const CFGQ_REGISTRY_KEY& other) : m_impl(std::make_unique<IMPL>(*other.m_impl))
{
}

CFGQ_REGISTRY_KEY& CFGQ_REGISTRY_KEY::operator=(const CFGQ_REGISTRY_KEY& other)
{
    *m_impl = *other.m_impl;
    return *this;
}

bool CFGQ_REGISTRY_KEY::get_value(const QString& name, QVariant* value) const
{
    CFGQ_REGISTRY_STORE& store = m_impl->open();
    return store.get_value(m_impl->folder, name, value);
}

bool CFGQ_REGISTRY_KEY::set_value(const QString& name, const QVariant& value)
{
    CFGQ_REGISTRY_STORE& store = m_impl->open();
    return store.set_value(m_impl->folder, name, value);
}

bool CFGQ_REGISTRY_KEY::remove(const QString& name)
{
    CFGQ_REGISTRY_STORE& store = m_impl->open();
    return store.remove(m_impl->folder, name);
}

QStringList CFGQ_REGISTRY_KEY::get_value_names() const
{
    m_impl->open();
    QStringList names = m_impl->folder->values.keys();
    names.sort();
    return names;
}

QStringList CFGQ_REGISTRY_KEY::get_child_names() const
{
    return m_impl->open().get_child_names(m_impl->path);
}
