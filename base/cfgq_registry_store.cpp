#include "cfgq_registry_store_p.h"

#include "cfgq_registry.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
const int LOCK_TIMEOUT = 10000;       ///< milliseconds to wait for another process's transaction
const int COLLECTING_TIME = 1000;     ///< milliseconds after which a change no longer waits for the event loop
const char LAYOUT_FOLDER[] = "store"; ///< no sub key: those are numbers
const char LAYOUT_NAME[] = "layout";

CFGQ_REGISTRY_STORE* s_store = nullptr;
unsigned int s_generation = 0;

QString get_store_path()
{
    const QString path = QFile::decodeName(qgetenv("NORVANE_REGISTRY_FILE"));
    if (!path.isEmpty())
        return QFileInfo(path).absoluteFilePath();
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QLatin1String("/norvane/registry.ini");
}

bool make_folder_of(const QString& path)
{
    const QString folder = QFileInfo(path).path();
    if (QFileInfo(folder).isDir())
        return true;
    return QDir().mkpath(folder) &&
           QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

/// The lock that all processes take around a transaction, a file beside the store. The system takes it away with its
/// process, however that ends.
class STORE_LOCK
{
public:
    explicit STORE_LOCK(const QString& store_path)
        : m_descriptor(::open(QFile::encodeName(store_path + QLatin1String(".lockfile")).constData(),
                              O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, S_IRUSR | S_IWUSR))
    {
        QElapsedTimer timer;
        timer.start();
        while (m_descriptor >= 0 && ::flock(m_descriptor, LOCK_EX | LOCK_NB) != 0)
        {
            if ((errno != EWOULDBLOCK && errno != EINTR) || timer.elapsed() > LOCK_TIMEOUT)
            {
                ::close(m_descriptor);
                m_descriptor = -1;
                return;
            }
            QThread::usleep(200);
        }
    }

    ~STORE_LOCK()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }

    STORE_LOCK(const STORE_LOCK&) = delete;
    STORE_LOCK& operator=(const STORE_LOCK&) = delete;

    bool is_held() const
    {
        return m_descriptor >= 0;
    }

private:
    int m_descriptor;
};

enum FILE_STATE
{
    FILE_STATE_MISSING,
    FILE_STATE_WHOLE,
    FILE_STATE_DAMAGED
};

/// Reads a store. Opens nothing but plain files: the open call of a pipe would never return.
FILE_STATE look_at(const QString& path, std::vector<CFGQ_REGISTRY_FORMAT::ROW>* rows)
{
    struct stat status;
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return errno == ENOENT || errno == ENOTDIR ? FILE_STATE_MISSING : FILE_STATE_DAMAGED;
    QFile file(path);
    if (!S_ISREG(status.st_mode) || !file.open(QIODevice::ReadOnly) || !CFGQ_REGISTRY_FORMAT::read_rows(file, rows))
        return FILE_STATE_DAMAGED;
    return FILE_STATE_WHOLE;
}

/// Renames a file to a name beside it that is still free; an empty text where that fails.
QString set_aside(const QString& path)
{
    const QString stamp = QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMddTHHmmss"));
    for (int counter = 1; counter <= 10000; ++counter)
    {
        QString target = QStringLiteral("%1.damaged-%2-%3").arg(path, stamp).arg(counter);
        struct stat status;
        if (::lstat(QFile::encodeName(target).constData(), &status) == 0)
            continue;
        if (::rename(QFile::encodeName(path).constData(), QFile::encodeName(target).constData()) == 0)
            return target;
        return QString();
    }
    return QString();
}

/// Time of the last change in milliseconds, as exact as QSettings looks at it; 0 for a missing file.
qint64 get_change_time(const QString& path)
{
    struct stat status;
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return 0;
    return qint64(status.st_mtim.tv_sec) * 1000 + status.st_mtim.tv_nsec / 1000000;
}

/// QSettings takes a file of the same length and time for the one that it has read, and the clock of a file system
/// stands still for milliseconds. So each state of the file gets a time of its own.
void make_newer_than(const QString& path, qint64 time)
{
    const qint64 present_time = get_change_time(path);
    if (present_time == 0 || present_time > time)
        return;
    ++time;
    const timespec times[2] = {{0, UTIME_OMIT}, {time_t(time / 1000), long(time % 1000) * 1000000}};
    ::utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0);
}

QString get_layout_key()
{
    return CFGQ_REGISTRY_FORMAT::make_key(QLatin1String(LAYOUT_FOLDER), QLatin1String(LAYOUT_NAME));
}

CFGQ_REGISTRY_CHANGE make_layout_change()
{
    CFGQ_REGISTRY_CHANGE change;
    CFGQ_REGISTRY_FORMAT::encode(CFGQ_REGISTRY::get_layout_version(), &change.text);
    return change;
}
} // namespace

CFGQ_REGISTRY_STORE& CFGQ_REGISTRY_STORE::get()
{
    if (s_store == nullptr)
    {
        s_store = new CFGQ_REGISTRY_STORE(get_store_path());
        ++s_generation;
        static const bool is_registered = std::atexit(&CFGQ_REGISTRY_STORE::close) == 0;
        Q_UNUSED(is_registered);
    }
    return *s_store;
}

void CFGQ_REGISTRY_STORE::close()
{
    delete s_store;
    s_store = nullptr;
}

unsigned int CFGQ_REGISTRY_STORE::get_generation()
{
    return s_generation;
}

CFGQ_REGISTRY_STORE::CFGQ_REGISTRY_STORE(const QString& path)
    : m_path(path), m_journal(path), m_process_id(QCoreApplication::applicationPid())
{
    flush();
}

CFGQ_REGISTRY_STORE::~CFGQ_REGISTRY_STORE()
{
    if (!m_pending.isEmpty() && m_process_id == ::getpid())
        flush();
}

CFGQ_REGISTRY_STORE::FOLDER* CFGQ_REGISTRY_STORE::get_folder(const QString& path)
{
    FOLDER& folder = m_folders[path];
    if (folder.path.isNull())
        folder.path = path;
    return &folder;
}

bool CFGQ_REGISTRY_STORE::get_value(FOLDER* folder, const QString& name, QVariant* value)
{
    const auto i = folder->values.find(name);
    if (i == folder->values.end())
        return false;
    if (i->state == VALUE::STATE_TEXT)
        i->state = CFGQ_REGISTRY_FORMAT::decode(i->text, &i->value) ? VALUE::STATE_DECODED : VALUE::STATE_BAD;
    if (i->state == VALUE::STATE_BAD)
        return false;
    if (value != nullptr)
        *value = i->value;
    return true;
}

bool CFGQ_REGISTRY_STORE::set_value(FOLDER* folder, const QString& name, const QVariant& value)
{
    CFGQ_REGISTRY_CHANGE new_value;
    if (!CFGQ_REGISTRY_FORMAT::encode(value, &new_value.text))
    {
        folder->values[name] = {VALUE::STATE_TRANSIENT, QString(), value};
        return false;
    }
    folder->values[name] = {VALUE::STATE_DECODED, new_value.text, value};
    return change(folder, name, new_value);
}

bool CFGQ_REGISTRY_STORE::remove(FOLDER* folder, const QString& name)
{
    // Also where this process knows of no such value: another one can have stored it since.
    folder->values.remove(name);
    return change(folder, name, {true, QString()});
}

QStringList CFGQ_REGISTRY_STORE::get_child_names(const QString& path) const
{
    QStringList names;
    const QString start = path + QLatin1Char('/');
    for (auto i = m_folders.lower_bound(start); i != m_folders.end() && i->first.startsWith(start); ++i)
    {
        QString name;
        if (!i->second.values.isEmpty() &&
            CFGQ_REGISTRY_FORMAT::unescape_name(i->first.mid(start.size()).section(QLatin1Char('/'), 0, 0), &name))
            names << name;
    }
    names.sort();
    names.removeDuplicates();
    return names;
}

bool CFGQ_REGISTRY_STORE::change(FOLDER* folder, const QString& name, const CFGQ_REGISTRY_CHANGE& change)
{
    const QString key = CFGQ_REGISTRY_FORMAT::make_key(folder->path, name);
    if (m_pending.isEmpty())
        m_pending_since.start();
    m_pending.insert(key, change);
    if (must_write_at_once())
        return flush() || m_journal.append(key, change);
    if (!make_folder_of(m_path) || !m_journal.append(key, change))
        return flush();
    schedule();
    return true;
}

bool CFGQ_REGISTRY_STORE::must_write_at_once() const
{
    const QCoreApplication* application = QCoreApplication::instance();
    return application == nullptr || QCoreApplication::closingDown() ||
           application->thread() != QThread::currentThread() || m_pending_since.hasExpired(COLLECTING_TIME);
}

void CFGQ_REGISTRY_STORE::schedule()
{
    if (m_scheduled_in == QCoreApplication::instance())
        return;
    m_scheduled_in = QCoreApplication::instance();
    QTimer::singleShot(0, QCoreApplication::instance(),
                       [generation = s_generation]
                       {
                           if (s_store != nullptr && s_generation == generation)
                               s_store->flush();
                       });
}

bool CFGQ_REGISTRY_STORE::flush()
{
    m_scheduled_in.clear();
    if (m_pending.isEmpty() && !QFileInfo(QFileInfo(m_path).path()).isDir())
        return true;
    if (!make_folder_of(m_path))
        return false;
    const STORE_LOCK lock(m_path);
    const bool is_written = lock.is_held() ? run_transaction() : read_only();
    m_pending_since.start();
    return is_written;
}

/// What can be done without the lock, for instance in a folder that is not ours: saving is atomic, so reading is safe.
bool CFGQ_REGISTRY_STORE::read_only()
{
    std::vector<CFGQ_REGISTRY_FORMAT::ROW> rows;
    if (look_at(m_path, &rows) == FILE_STATE_WHOLE)
        load(rows);
    return m_pending.isEmpty();
}

/// Under the lock: sets a damaged file aside, brings in what dead processes left and what is pending, and takes over
/// what others wrote. False where something is pending that could not be written.
bool CFGQ_REGISTRY_STORE::run_transaction()
{
    CFGQ_REGISTRY_CHANGES changes;
    const qint64 old_time = get_change_time(m_path);
    std::vector<CFGQ_REGISTRY_FORMAT::ROW> rows;
    if (!prepare_file(&changes, &rows))
        return m_pending.isEmpty();

    const std::vector<CFGQ_REGISTRY_JOURNAL::ORPHAN> orphans = CFGQ_REGISTRY_JOURNAL::take_orphans(m_path);
    QStringList damaged_journals;
    for (const CFGQ_REGISTRY_JOURNAL::ORPHAN& orphan : orphans)
    {
        if (!orphan.read(&changes))
            damaged_journals << orphan.get_path();
    }
    for (auto i = m_pending.constBegin(); i != m_pending.constEnd(); ++i)
        changes.insert(i.key(), i.value());
    if (changes.isEmpty())
        load(rows);
    else if (!write_and_load(changes))
        return m_pending.isEmpty();

    make_newer_than(m_path, old_time);
    m_pending.clear();
    m_journal.discard();
    for (const CFGQ_REGISTRY_JOURNAL::ORPHAN& orphan : orphans)
    {
        if (!damaged_journals.contains(orphan.get_path()) || set_aside(orphan.get_path()).isEmpty())
            QFile::remove(orphan.get_path());
    }
    return true;
}

/// Moves a damaged file out of the way. `*changes` gets what the new file has to hold from the start: all that this
/// process knows, and the layout, so that no older settings are taken for the ones that went. `*rows` gets the content
/// of a whole one. False where the file cannot be moved.
bool CFGQ_REGISTRY_STORE::prepare_file(CFGQ_REGISTRY_CHANGES* changes, std::vector<CFGQ_REGISTRY_FORMAT::ROW>* rows)
{
    // Left by a process that died in its transaction; nobody is in one now.
    QFile::remove(m_path + QLatin1String(".lock"));

    if (look_at(m_path, rows) != FILE_STATE_DAMAGED)
        return true;
    const QString target = set_aside(m_path);
    if (target.isEmpty())
        return false;
    m_set_aside_path = target;
    *changes = get_all_values();
    if (!changes->contains(get_layout_key()))
        changes->insert(get_layout_key(), make_layout_change());
    return true;
}

bool CFGQ_REGISTRY_STORE::write_and_load(const CFGQ_REGISTRY_CHANGES& changes)
{
    // Anew each time: the status of a QSettings object that failed once stays at that.
    QSettings settings(m_path, CFGQ_REGISTRY_FORMAT::get_settings_format());
    settings.setFallbacksEnabled(false);
    // Once more, behind what QSettings keeps for the process: what is pending at the end is written before that goes.
    static const bool is_registered = std::atexit(&CFGQ_REGISTRY_STORE::close) == 0;
    Q_UNUSED(is_registered);
    bool has_values = false;
    for (auto i = changes.constBegin(); i != changes.constEnd(); ++i)
    {
        has_values = has_values || !i->is_removal;
        if (i->is_removal)
            settings.remove(i.key());
        else
            settings.setValue(i.key(), i->text);
    }
    if (has_values && !settings.contains(get_layout_key()))
        settings.setValue(get_layout_key(), make_layout_change().text);
    settings.sync();

    std::vector<CFGQ_REGISTRY_FORMAT::ROW> rows;
    for (const QString& key : settings.allKeys())
    {
        CFGQ_REGISTRY_FORMAT::ROW row;
        if (!CFGQ_REGISTRY_FORMAT::split_key(key, &row.folder, &row.name))
            continue;
        row.text = settings.value(key).toString();
        rows.push_back(row);
    }
    load(rows);
    return settings.status() == QSettings::NoError;
}

/// Takes over the content of the file. What this process knows beyond it (values that are pending, values that no file
/// can hold) stays in force.
void CFGQ_REGISTRY_STORE::load(const std::vector<CFGQ_REGISTRY_FORMAT::ROW>& rows)
{
    QHash<QString, QHash<QString, VALUE>> old_folders;
    for (auto& [path, folder] : m_folders)
        old_folders[path].swap(folder.values);
    FOLDER* folder = nullptr;
    QHash<QString, VALUE> old_values;
    for (const CFGQ_REGISTRY_FORMAT::ROW& row : rows)
    {
        if (folder == nullptr || folder->path != row.folder)
        {
            folder = get_folder(row.folder);
            old_values = old_folders.value(row.folder);
        }
        const auto old_value = old_values.constFind(row.name);
        const bool is_known = old_value != old_values.constEnd() && old_value->text == row.text;
        folder->values[row.name] = is_known ? *old_value : VALUE{VALUE::STATE_TEXT, row.text, QVariant()};
    }
    for (auto i = old_folders.constBegin(); i != old_folders.constEnd(); ++i)
    {
        for (auto j = i->constBegin(); j != i->constEnd(); ++j)
        {
            if (j->state == VALUE::STATE_TRANSIENT)
                get_folder(i.key())->values[j.key()] = j.value();
        }
    }
    apply_pending();
}

void CFGQ_REGISTRY_STORE::apply_pending()
{
    for (auto i = m_pending.constBegin(); i != m_pending.constEnd(); ++i)
    {
        QString path;
        QString name;
        if (!CFGQ_REGISTRY_FORMAT::split_key(i.key(), &path, &name))
            continue;
        FOLDER* folder = get_folder(path);
        const VALUE present = folder->values.value(name);
        if (present.state == VALUE::STATE_TRANSIENT)
            continue; // set after the change that is pending
        if (i->is_removal)
            folder->values.remove(name);
        else if (present.text != i->text)
            folder->values[name] = {VALUE::STATE_TEXT, i->text, QVariant()};
    }
}

CFGQ_REGISTRY_CHANGES CFGQ_REGISTRY_STORE::get_all_values() const
{
    CFGQ_REGISTRY_CHANGES result;
    for (const auto& [path, folder] : m_folders)
    {
        for (auto i = folder.values.constBegin(); i != folder.values.constEnd(); ++i)
        {
            if (i->state != VALUE::STATE_TRANSIENT)
                result.insert(CFGQ_REGISTRY_FORMAT::make_key(path, i.key()), {false, i->text});
        }
    }
    return result;
}

void CFGQ_REGISTRY_STORE::migrate()
{
    QVariant layout;
    get_value(get_folder(QLatin1String(LAYOUT_FOLDER)), QLatin1String(LAYOUT_NAME), &layout);
    const QFileInfo store(m_path);
    const QFileInfo old_store(store.path() + QLatin1Char('/') + store.completeBaseName() + QLatin1String(".conf"));
    if (layout.toInt() >= 1 || !old_store.isFile())
        return;
    if (import_flat_layout(old_store.filePath()))
        change(get_folder(QLatin1String(LAYOUT_FOLDER)), QLatin1String(LAYOUT_NAME), make_layout_change());
    flush();
}

/// Layout 0: a plain INI file whose keys are the sub key, the folders and the name, divided by "/". Values that the
/// present store has already win. False where the file cannot be read.
bool CFGQ_REGISTRY_STORE::import_flat_layout(const QString& path)
{
    QSettings old_settings(path, QSettings::IniFormat);
    old_settings.setIniCodec("UTF-8");
    if (old_settings.status() == QSettings::AccessError)
        return false;
    for (const QString& key : old_settings.allKeys())
    {
        QStringList segments = key.split(QLatin1Char('/'), Qt::SkipEmptyParts);
        bool is_sub_key = false;
        segments.value(0).toUInt(&is_sub_key);
        if (!is_sub_key || segments.size() < 2)
            continue;
        const QString name = segments.takeLast();
        for (QString& segment : segments)
            segment = CFGQ_REGISTRY_FORMAT::escape_name(segment);
        FOLDER* folder = get_folder(segments.join(QLatin1Char('/')));
        if (!folder->values.contains(name))
            set_value(folder, name, old_settings.value(key));
    }
    return true;
}

const QString& CFGQ_REGISTRY_STORE::get_set_aside_path() const
{
    return m_set_aside_path;
}
