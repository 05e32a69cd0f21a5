#pragma once

#include "gui_test.h"
#include "internal_error_trap.h"

#include "cfgq_registry.h"
#include "tolv_gdi_manager.h"

#include <QString>
#include <QVariant>

/// Tests of the drawing resources: a plain application, an empty registry and a fresh manager.
class GDI_TEST : public PLAIN_GUI_TEST
{
protected:
    void SetUp() override
    {
        PLAIN_GUI_TEST::SetUp();
        for (const QString& name : registry().get_value_names())
            registry().remove(name);
        restart();
    }

    /// The manager as the next start makes it.
    static void restart()
    {
        tolv_delete_gdi_manager();
        tolv_create_gdi_manager();
    }

    static TOLV_GDI_MANAGER& manager()
    {
        return *TOLV_GDI_MANAGER::get_instance();
    }

    /// The folder of the drawing resources, under its stored number.
    static CFGQ_REGISTRY_KEY registry()
    {
        return CFGQ_REGISTRY_KEY(static_cast<CFGQ_REGISTRY_KEY::SUB_KEY>(52));
    }

    static void store(const char* name, const QVariant& value)
    {
        registry().set_value(QString::fromLatin1(name), value);
    }

    /// The stored text; "<none>" where nothing is stored.
    static std::string stored(const char* name)
    {
        QVariant value;
        return registry().get_value(QString::fromLatin1(name), &value) ? value.toString().toStdString() : "<none>";
    }

    static bool is_stored(const char* name)
    {
        return registry().get_value(QString::fromLatin1(name), nullptr);
    }
};
