#include "cfgq_registry_journal_p.h"

#include "cfgq_registry_format_p.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace
{
const char SUFFIX[] = ".journal-";

bool write_all(int descriptor, const QByteArray& data)
{
    for (int done = 0; done < data.size();)
    {
        const ssize_t count = ::write(descriptor, data.constData() + done, size_t(data.size() - done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        done += int(count);
    }
    return true;
}

/// "+key TAB text" sets a value and "-key" removes one; neither part holds a TAB or a line end.
bool parse_line(const QByteArray& line, CFGQ_REGISTRY_CHANGES* changes)
{
    const QString text = QString::fromUtf8(line);
    const int tab = text.indexOf(QLatin1Char('\t'));
    const bool is_removal = text.startsWith(QLatin1Char('-'));
    if (text.toUtf8() != line || is_removal != (tab < 0) || !(is_removal || text.startsWith(QLatin1Char('+'))))
        return false;
    const QString key = text.mid(1, is_removal ? -1 : tab - 1);
    QString folder;
    QString name;
    if (!CFGQ_REGISTRY_FORMAT::split_key(key, &folder, &name))
        return false;
    changes->insert(key, {is_removal, is_removal ? QString() : text.mid(tab + 1)});
    return true;
}

/// The journals beside a store, by name. Every start of a tool looks for them, and the folder can hold many other files.
QStringList get_journal_paths(const QString& store_path)
{
    const QFileInfo store(store_path);
    const QByteArray start = QFile::encodeName(store.fileName() + QLatin1String(SUFFIX));
    const QByteArray folder = QFile::encodeName(store.path());
    QStringList paths;
    std::error_code error;
    std::filesystem::directory_iterator entry(folder.constData(), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error))
    {
        const std::string name = entry->path().filename().string();
        if (name.compare(0, size_t(start.size()), start.constData()) == 0)
            paths << store.path() + QLatin1Char('/') + QFile::decodeName(name.c_str());
    }
    paths.sort();
    return paths;
}
} // namespace

CFGQ_REGISTRY_JOURNAL::CFGQ_REGISTRY_JOURNAL(const QString& store_path) : m_store_path(store_path), m_descriptor(-1)
{
}

CFGQ_REGISTRY_JOURNAL::~CFGQ_REGISTRY_JOURNAL()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

bool CFGQ_REGISTRY_JOURNAL::append(const QString& key, const CFGQ_REGISTRY_CHANGE& change)
{
    if (m_descriptor < 0 && !open())
        return false;
    const QByteArray line =
        change.is_removal ? '-' + key.toUtf8() + '\n' : '+' + key.toUtf8() + '\t' + change.text.toUtf8() + '\n';
    const off_t start = ::lseek(m_descriptor, 0, SEEK_END);
    if (write_all(m_descriptor, line))
        return true;
    // Half a line would spoil the one that follows.
    if (::ftruncate(m_descriptor, start) != 0)
        (void)write_all(m_descriptor, "\n");
    return false;
}

void CFGQ_REGISTRY_JOURNAL::discard()
{
    if (m_descriptor < 0)
        return;
    ::unlink(QFile::encodeName(m_path).constData());
    ::close(m_descriptor);
    m_descriptor = -1;
}

bool CFGQ_REGISTRY_JOURNAL::open()
{
    // Another machine can have a process of this number on the same store, hence the counter.
    for (int counter = 1; counter <= 100; ++counter)
    {
        m_path = QStringLiteral("%1%2%3-%4").arg(m_store_path, QLatin1String(SUFFIX)).arg(::getpid()).arg(counter);
        m_descriptor = ::open(QFile::encodeName(m_path).constData(), O_RDWR | O_CREAT | O_EXCL | O_APPEND | O_CLOEXEC,
                              S_IRUSR | S_IWUSR);
        if (m_descriptor < 0 && errno != EEXIST)
            return false;
        if (m_descriptor < 0)
            continue;
        // Between these two calls another process can have taken the still unlocked file for an orphan.
        struct stat status;
        if (::flock(m_descriptor, LOCK_EX | LOCK_NB) == 0 && ::fstat(m_descriptor, &status) == 0 && status.st_nlink > 0)
            return true;
        ::close(m_descriptor);
        m_descriptor = -1;
    }
    return false;
}

CFGQ_REGISTRY_JOURNAL::ORPHAN::ORPHAN(const QString& path, int descriptor) : m_path(path), m_descriptor(descriptor)
{
}

CFGQ_REGISTRY_JOURNAL::ORPHAN::~ORPHAN()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

CFGQ_REGISTRY_JOURNAL::ORPHAN::ORPHAN(ORPHAN&& other) noexcept
    : m_path(std::move(other.m_path)), m_descriptor(other.m_descriptor)
{
    other.m_descriptor = -1;
}

bool CFGQ_REGISTRY_JOURNAL::ORPHAN::read(CFGQ_REGISTRY_CHANGES* changes) const
{
    QFile file;
    if (!file.open(m_descriptor, QIODevice::ReadOnly) || !file.seek(0))
        return false;
    bool is_clean = true;
    while (!file.atEnd())
    {
        QByteArray line = file.readLine();
        if (!line.endsWith('\n'))
            break;
        line.chop(1);
        is_clean = parse_line(line, changes) && is_clean;
    }
    return is_clean;
}

const QString& CFGQ_REGISTRY_JOURNAL::ORPHAN::get_path() const
{
    return m_path;
}

std::vector<CFGQ_REGISTRY_JOURNAL::ORPHAN> CFGQ_REGISTRY_JOURNAL::take_orphans(const QString& store_path)
{
    std::vector<ORPHAN> orphans;
    for (const QString& path : get_journal_paths(store_path))
    {
        const int descriptor =
            ::open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
        if (descriptor < 0)
            continue;
        ORPHAN orphan(path, descriptor);
        struct stat status;
        if (::flock(descriptor, LOCK_EX | LOCK_NB) == 0 && ::fstat(descriptor, &status) == 0 && status.st_nlink > 0)
            orphans.push_back(std::move(orphan));
    }
    return orphans;
}
