#pragma once

#include "base_export.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

/// The user's registry: settings that a user changes in the tools and that survive the process, one store per user.
///
/// Several processes may read and write at once: a write takes over what the others stored meanwhile and loses nothing,
/// and it reaches the disk whole or not at all. A store that is damaged (cut short, not text, written by something
/// else) is moved aside to a file beside it and the tools come up with their defaults; a start never fails for it.
///
/// The store lies where the environment variable `NORVANE_REGISTRY_FILE` says, and otherwise in the user's
/// configuration folder. All operations belong to the GUI thread.

/// Administration of the whole store.
class TOLV_BASE_EXPORT CFGQ_REGISTRY
{
public:
    /// Brings settings of an older layout into the present one. Called once per process, before anything is read;
    /// a store of the present layout is left untouched.
    static void migrate_registry_settings();

    /// Writes what is pending to the disk and takes over what other processes wrote. Returns false where the store
    /// cannot be written; the values of this process stay in force then.
    static bool flush();

    /// Version of the layout that this build writes.
    static int get_layout_version();

    /// Forgets the opened store, so that the next access reads it anew. For tests and for hosts that switch users.
    static void close();
};

/// One folder of the registry: a numbered sub key, an optional path below it, and the values in it.
class TOLV_BASE_EXPORT CFGQ_REGISTRY_KEY
{
public:
    /// Numbers of the top folders. They are stored data: a number is never given to another purpose.
    enum SUB_KEY
    {
        SUB_KEY_MDI_AREA = 2,      ///< presentation of the multiple-document area
        SUB_KEY_TREE_COLUMNS = 21, ///< column state of tree views, a child key per tree
        SUB_KEY_GUI = 52,          ///< drawing resources, window geometry, navigator state
        SUB_KEY_TOOL_BARS = 59,    ///< presentation of tool bars
    };

    /// Opens the folder `path` (segments divided by "/", local 8-bit encoding; null or empty for none) below
    /// `sub_key`. Nothing is created until a value is written.
    explicit CFGQ_REGISTRY_KEY(SUB_KEY sub_key, const char* path = nullptr);

    /// Opens the child folder `name` (local 8-bit encoding) of `parent`.
    CFGQ_REGISTRY_KEY(const CFGQ_REGISTRY_KEY& parent, const char* name);

    ~CFGQ_REGISTRY_KEY();
    CFGQ_REGISTRY_KEY(const CFGQ_REGISTRY_KEY& other);
    CFGQ_REGISTRY_KEY& operator=(const CFGQ_REGISTRY_KEY& other);

    /// Reads a value. Returns whether it exists; `*value` is written only then. A null `value` only asks for existence.
    /// Names may hold any characters, "/" and non-ASCII included, and are case-sensitive.
    bool get_value(const QString& name, QVariant* value) const;

    /// Stores a value: any type that QVariant can put on a data stream. Returns false where the store cannot be
    /// written; the value then lives as long as the process.
    bool set_value(const QString& name, const QVariant& value);

    /// Removes a value; harmless where there is none.
    bool remove(const QString& name);

    /// Names of the values in this folder, sorted; folders below are not listed.
    QStringList get_value_names() const;

    /// Names of the folders directly below this one, sorted.
    QStringList get_child_names() const;

private:
    struct IMPL;
    std::unique_ptr<IMPL> m_impl;
};

/// Value name, in SUB_KEY_TOOL_BARS: whether tool bars show large icons (bool).
TOLV_BASE_EXPORT extern const char* const CFGQ_TOLV_TOOLBAR_LARGE_ICONS;

/// Value name, in SUB_KEY_MDI_AREA: whether documents are shown in tabs (bool).
TOLV_BASE_EXPORT extern const char* const CFGQ_TOLV_SHOW_MDI_TABS;
