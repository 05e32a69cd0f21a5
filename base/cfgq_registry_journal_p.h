#pragma once

#include <QHash>
#include <QString>

#include <vector>

/// A change of one value that the store does not hold yet.
struct CFGQ_REGISTRY_CHANGE
{
    bool is_removal = false;
    QString text; ///< the new value as the store writes it
};

using CFGQ_REGISTRY_CHANGES = QHash<QString, CFGQ_REGISTRY_CHANGE>; ///< by the value's key

/// What a process has changed and not yet written to the store, as a file of lines beside the store.
///
/// Bringing a change into the store costs a rewrite of the whole file, adding a line here a few microseconds. So
/// changes are collected, and yet none is lost when the process dies on the way, by abort() or by a signal: the file
/// stays behind, the system takes its lock away, and the next process that writes or opens the store brings it in.
class CFGQ_REGISTRY_JOURNAL
{
public:
    /// A journal for the store at `store_path`. Nothing is created before the first append().
    explicit CFGQ_REGISTRY_JOURNAL(const QString& store_path);
    ~CFGQ_REGISTRY_JOURNAL();
    CFGQ_REGISTRY_JOURNAL(const CFGQ_REGISTRY_JOURNAL&) = delete;
    CFGQ_REGISTRY_JOURNAL& operator=(const CFGQ_REGISTRY_JOURNAL&) = delete;

    /// Adds a change. False where it could not be written whole.
    bool append(const QString& key, const CFGQ_REGISTRY_CHANGE& change);

    /// Removes the file: its changes are in the store.
    void discard();

    /// A journal whose process is gone, locked by this one until it is destroyed.
    class ORPHAN
    {
    public:
        ORPHAN(const QString& path, int descriptor);
        ~ORPHAN();
        ORPHAN(ORPHAN&& other) noexcept;
        ORPHAN(const ORPHAN&) = delete;
        ORPHAN& operator=(const ORPHAN&) = delete;
        ORPHAN& operator=(ORPHAN&&) = delete;

        /// Adds its changes to `*changes`. A line without its end is one that was never acknowledged, and is left
        /// out. False where other lines do not parse; those that do are added.
        bool read(CFGQ_REGISTRY_CHANGES* changes) const;

        const QString& get_path() const;

    private:
        QString m_path;
        int m_descriptor;
    };

    /// All journals beside the store that no living process holds, by name.
    static std::vector<ORPHAN> take_orphans(const QString& store_path);

private:
    bool open();

    QString m_store_path;
    QString m_path;
    int m_descriptor;
};
