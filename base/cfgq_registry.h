#pragma once

#include "base_export.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <memory>

/// The user's registry: settings that a user changes in the tools and that survive the process, one store per user.
///
/// The store lies where the environment variable `NORVANE_REGISTRY_FILE` says, and otherwise in
/// `norvane/registry.ini` below the user's configuration folder (`XDG_CONFIG_HOME`, else `~/.config`).
///
/// Reading touches the memory only: the store is read at the first access. A change is in force in this process at once,
/// and is kept on the disk before set_value() or remove() returns. It reaches the store itself, where other processes see
/// it, with the next turn of the event loop, one second later at most where further changes come, and in any case with
/// CFGQ_REGISTRY::flush() and at the process's end; without a QCoreApplication it reaches the store at once. Saving
/// hundreds of values in a row so costs one save. A process that ends by abort() or by a signal loses nothing: what it
/// left is brought in by the next process that opens or writes the store.
///
/// Several processes may read and write at once: saving takes over what the others stored meanwhile and loses nothing,
/// and it reaches the disk whole or not at all. This process sees what others wrote when it next saves or calls
/// CFGQ_REGISTRY::flush(). Where two change the same value, the later save wins.
///
/// A store that is damaged (cut short, no text, written by something else, no file at all) is moved aside to a file beside
/// it, named with the time and a counter, and the tools come up with their defaults; a start never fails for it. If that
/// happens while a process runs, its values go into the new store.
///
/// All operations belong to the GUI thread.

/// Administration of the whole store.
class TOLV_BASE_EXPORT CFGQ_REGISTRY
{
public:
    /// Brings settings of an older layout into the present one. Called once per process, before anything is read or
    /// written; a store of the present layout or of a newer one is left untouched. Layout 0 is a plain INI file beside the
    /// store with the ending ".conf" (`registry.conf`), whose keys are sub key, folders and name ("52/Color_version"); it
    /// is read into a store that has no layout yet, and stays as it is for the older tools.
    static void migrate_registry_settings();

    /// Writes what is pending to the store and takes over what other processes wrote. Returns false where something is
    /// pending that cannot be written; the values of this process stay in force then.
    static bool flush();

    /// Version of the layout that this build writes.
    static int get_layout_version();

    /// The file to which this process moved a damaged store, for a host that wants to tell its user; empty for none.
    static QString get_set_aside_file();

    /// Writes what is pending and forgets the opened store, so that the next access reads it anew. For tests and for
    /// hosts that switch users.
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

    /// Opens the folder `path` (segments divided by "/", empty ones ignored, local 8-bit encoding; null or empty for
    /// none) below `sub_key`. Nothing is created until a value is written.
    explicit CFGQ_REGISTRY_KEY(SUB_KEY sub_key, const char* path = nullptr);

    /// Opens the child folder `name` (local 8-bit encoding) of `parent`. The name is one segment, whatever characters it
    /// has; a null or empty one is the parent itself.
    CFGQ_REGISTRY_KEY(const CFGQ_REGISTRY_KEY& parent, const char* name);

    ~CFGQ_REGISTRY_KEY();
    CFGQ_REGISTRY_KEY(const CFGQ_REGISTRY_KEY& other);
    CFGQ_REGISTRY_KEY& operator=(const CFGQ_REGISTRY_KEY& other);

    /// Reads a value. Returns whether it exists; `*value` is written only then. A null `value` only asks for existence.
    /// A stored text that is damaged counts as missing. Names may hold any characters, "/" and non-ASCII included, may be
    /// empty, and are case-sensitive.
    bool get_value(const QString& name, QVariant* value) const;

    /// Stores a value: any type that QVariant can put on a data stream, also an invalid one. Returns false where it
    /// cannot reach the disk, or is of a type that no stream takes; it then lives as long as the process.
    bool set_value(const QString& name, const QVariant& value);

    /// Removes a value; harmless where there is none. Returns false where the removal cannot reach the disk.
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
