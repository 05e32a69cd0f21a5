#include "tolv_lazy_icon_engine.h"

#include "tolv_mem.h"

#include <QDataStream>
#include <QFile>
#include <QGuiApplication>
#include <QHash>
#include <QPixmap>
#include <QtMath>

#include <algorithm>

TOLV_MEM_INITIALIZER();

namespace
{
/// Keeps Qt from scaling what it is asked for to the density of the screen, for a scope.
class UNSCALED_ICONS
{
public:
    UNSCALED_ICONS() : m_was_scaled(QCoreApplication::testAttribute(Qt::AA_UseHighDpiPixmaps))
    {
        if (m_was_scaled)
            QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, false);
    }
    ~UNSCALED_ICONS()
    {
        if (m_was_scaled)
            QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
    }
    Q_DISABLE_COPY_MOVE(UNSCALED_ICONS)

private:
    const bool m_was_scaled;
};

/// An icon as it is streamed: the key of its engine, and what the engine writes.
struct STREAMED_ICON
{
    QString key;
    QByteArray data;
};

STREAMED_ICON stream_icon(const QIcon& icon, int version)
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setVersion(version);
    out << icon;
    QDataStream in(bytes);
    in.setVersion(version);
    STREAMED_ICON result;
    in >> result.key;
    result.data = bytes.mid(static_cast<int>(in.device()->pos()));
    return result;
}

/// The file for denser screens, "name@2x.png", that QIcon::addFile() adds by itself behind "name.png"; empty for none.
QString find_denser_file(const QString& file_name)
{
    const int dot = file_name.lastIndexOf(QLatin1Char('.'));
    if (dot < 0 || qApp == nullptr || qEnvironmentVariableIsSet("QT_HIGHDPI_DISABLE_2X_IMAGE_LOADING"))
        return {};
    for (int density = std::min(qCeil(qApp->devicePixelRatio()), 9); density > 1; --density)
    {
        QString denser_name = QStringLiteral("%1@%2x%3").arg(file_name.left(dot)).arg(density).arg(file_name.mid(dot));
        if (QFile::exists(denser_name))
            return denser_name;
    }
    return {};
}

/// The icons on Qt's engines, by their files.
QHash<QString, QIcon>& get_shared_icons()
{
    static QHash<QString, QIcon> shared_icons;
    return shared_icons;
}
} // namespace

void TOLV_LAZY_ICON_ENGINE::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state)
{
    // Qt's engine scales by the painter's device here, which is its own affair.
    icon().paint(painter, rect, Qt::AlignCenter, mode, state);
}

QSize TOLV_LAZY_ICON_ENGINE::actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state)
{
    const UNSCALED_ICONS unscaled;
    return icon().actualSize(size, mode, state);
}

QPixmap TOLV_LAZY_ICON_ENGINE::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state)
{
    const UNSCALED_ICONS unscaled;
    return icon().pixmap(size, mode, state);
}

void TOLV_LAZY_ICON_ENGINE::addPixmap(const QPixmap& pixmap, QIcon::Mode mode, QIcon::State state)
{
    icon();
    m_icon.addPixmap(pixmap, mode, state);
}

void TOLV_LAZY_ICON_ENGINE::addFile(const QString& file_name, const QSize& size, QIcon::Mode mode, QIcon::State state)
{
    if (m_is_made)
        m_icon.addFile(file_name, size, mode, state);
    else
        m_files.append({file_name, size, mode, state});
}

QString TOLV_LAZY_ICON_ENGINE::key() const
{
    return stream_icon(icon(), QDataStream::Qt_DefaultCompiledVersion).key;
}

QIconEngine* TOLV_LAZY_ICON_ENGINE::clone() const
{
    return new TOLV_LAZY_ICON_ENGINE(*this);
}

bool TOLV_LAZY_ICON_ENGINE::write(QDataStream& out) const
{
    const QByteArray data = stream_icon(icon(), out.version()).data;
    return out.writeRawData(data.constData(), data.size()) == data.size();
}

QList<QSize> TOLV_LAZY_ICON_ENGINE::availableSizes(QIcon::Mode mode, QIcon::State state) const
{
    return icon().availableSizes(mode, state);
}

QString TOLV_LAZY_ICON_ENGINE::iconName() const
{
    return icon().name();
}

void TOLV_LAZY_ICON_ENGINE::virtual_hook(int id, void* data)
{
    switch (id)
    {
    case QIconEngine::AvailableSizesHook:
    {
        auto* const argument = static_cast<AvailableSizesArgument*>(data);
        argument->sizes = availableSizes(argument->mode, argument->state);
        break;
    }
    case QIconEngine::IconNameHook:
        *static_cast<QString*>(data) = iconName();
        break;
    case QIconEngine::IsNullHook:
        *static_cast<bool*>(data) = is_null();
        break;
    case QIconEngine::ScaledPixmapHook:
    {
        // The size is in the pixels of the screen already.
        auto* const argument = static_cast<ScaledPixmapArgument*>(data);
        argument->pixmap = pixmap(argument->size, argument->mode, argument->state);
        break;
    }
    default:
        QIconEngine::virtual_hook(id, data);
    }
}

bool TOLV_LAZY_ICON_ENGINE::is_null() const
{
    if (m_is_made)
        return m_icon.isNull();
    // QIcon asks before each file that is added, and drops an engine that is null.
    return !m_files.isEmpty() && std::none_of(m_files.begin(), m_files.end(),
                                              [](const FILE_ENTRY& file) { return QFile::exists(file.name); });
}

const QIcon& TOLV_LAZY_ICON_ENGINE::icon() const
{
    if (m_is_made)
        return m_icon;
    m_is_made = true;
    QIcon& shared_icon = get_shared_icons()[get_sharing_key()];
    if (shared_icon.isNull())
        add_files(shared_icon);
    m_icon = shared_icon;
    return m_icon;
}

void TOLV_LAZY_ICON_ENGINE::add_files(QIcon& icon) const
{
    for (int i = 0; i < m_files.size(); ++i)
    {
        const FILE_ENTRY& file = m_files[i];
        icon.addFile(file.name, file.size, file.mode, file.state);
        // The outer icon has found the file for denser screens already, and the inner one has found it again.
        const bool is_followed = i + 1 < m_files.size() && m_files[i + 1].size == file.size &&
                                 m_files[i + 1].mode == file.mode && m_files[i + 1].state == file.state;
        if (is_followed && m_files[i + 1].name == find_denser_file(file.name))
            ++i;
    }
}

QString TOLV_LAZY_ICON_ENGINE::get_sharing_key() const
{
    QString key;
    for (const FILE_ENTRY& file : m_files)
    {
        key += QStringLiteral("%1|%2|%3|%4|%5\n")
                   .arg(file.mode)
                   .arg(file.state)
                   .arg(file.size.width())
                   .arg(file.size.height())
                   .arg(file.name);
    }
    return key;
}
