#pragma once

#include "cfgq_registry_format_p.h"
#include "cfgq_registry_journal_p.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHash>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <map>
#include <vector>

/// The user's store of settings as this process sees it: every value of the file in memory, and the changes that the
/// file does not hold yet.
///
/// Reading touches the memory only. A change goes to the memory and to the journal, and with the next turn of the event
/// loop into the file; without an application object it goes into the file at once. Reading the file anew, merging and
/// saving is one transaction of QSettings under a lock of our own, for QSettings alone would lose a write that another
/// process makes in the same millisecond with a file of the same length, and would write over a damaged file.
class CFGQ_REGISTRY_STORE
{
public:
    /// What is known of one value.
    struct VALUE
    {
        enum STATE
        {
            STATE_TEXT,     ///< only the text: nobody has asked for the value yet
            STATE_DECODED,  ///< `value` is what `text` says
            STATE_BAD,      ///< the text is of no known form; the value counts as missing and is kept as it is
            STATE_TRANSIENT ///< a value that no file can hold; it lives in this process only
        };
        STATE state = STATE_TEXT;
        QString text;
        QVariant value;
    };

    /// A folder by its escaped path. Lives as long as the store.
    struct FOLDER
    {
        QString path;
        QHash<QString, VALUE> values;
    };

    /// The one store of the process; opened, and where it is damaged set aside, by the first call.
    static CFGQ_REGISTRY_STORE& get();
    /// Writes what is pending and forgets the store. Harmless where it is not open.
    static void close();
    /// Counts the openings: what was learnt from a store of another generation is stale.
    static unsigned int get_generation();

    FOLDER* get_folder(const QString& path);
    bool get_value(FOLDER* folder, const QString& name, QVariant* value);
    bool set_value(FOLDER* folder, const QString& name, const QVariant& value);
    bool remove(FOLDER* folder, const QString& name);
    QStringList get_child_names(const QString& path) const;

    bool flush();
    void migrate();
    const QString& get_set_aside_path() const;

private:
    explicit CFGQ_REGISTRY_STORE(const QString& path);
    ~CFGQ_REGISTRY_STORE();

    bool change(FOLDER* folder, const QString& name, const CFGQ_REGISTRY_CHANGE& change);
    bool must_write_at_once() const;
    void schedule();
    bool read_only();
    bool run_transaction();
    bool prepare_file(CFGQ_REGISTRY_CHANGES* changes, std::vector<CFGQ_REGISTRY_FORMAT::ROW>* rows);
    bool write_and_load(const CFGQ_REGISTRY_CHANGES& changes);
    void load(const std::vector<CFGQ_REGISTRY_FORMAT::ROW>& rows);
    void apply_pending();
    CFGQ_REGISTRY_CHANGES get_all_values() const;
    bool import_flat_layout(const QString& path);

    QString m_path;
    QString m_set_aside_path;
    std::map<QString, FOLDER> m_folders;
    CFGQ_REGISTRY_CHANGES m_pending;
    CFGQ_REGISTRY_JOURNAL m_journal;
    QPointer<QCoreApplication> m_scheduled_in; ///< the application whose event loop will write what is pending
    QElapsedTimer m_pending_since;
    qint64 m_process_id; ///< a forked child must not write what its parent is about to write
};
