#pragma once

#include "tolv_export.h"

#include <QIcon>
#include <QIconEngine>
#include <QSize>
#include <QString>
#include <QVector>

/// An engine that only remembers files, and has Qt make the engine for them when it is first asked for something. (Qt's
/// own way looks at each file when it is added, some 50 microseconds for a vector file.) From then on all goes to Qt's
/// engine, so that what is painted, streamed and answered is Qt's to the last pixel. The icons of tolv_get_icon() stand
/// on it; hosts with many icons of their own can use it alike:
///
///     QIcon icon(new TOLV_LAZY_ICON_ENGINE);
///     icon.addFile(":/tool/load.svg");
///
/// Engines to which the same files were added share one engine of Qt's, which stays as long as the process, until one of
/// them is changed after its first use. Before the first use an icon is null if it has files and none of them exists.
/// For the GUI thread only.
///
/// Qt's engine stays out of reach behind a QIcon. It is asked through that icon with Qt's scaling of icons switched off,
/// as the outer icon has done the scaling already.
class TOLV_EXPORT TOLV_LAZY_ICON_ENGINE : public QIconEngine
{
public:
    /// The rectangle is one of the size that actualSize() gives, as QIcon::paint() sees to.
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    /// @param size in the pixels of the screen
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    /// Counts as the first use.
    void addPixmap(const QPixmap& pixmap, QIcon::Mode mode, QIcon::State state) override;
    /// Remembers the file. After the first use it goes to Qt's engine at once.
    void addFile(const QString& file_name, const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    /// The key of Qt's engine: a streamed icon is read without this class.
    QString key() const override;
    /// A copy of its own: what is added to one of the two does not show in the other.
    QIconEngine* clone() const override;
    bool write(QDataStream& out) const override;
    QList<QSize> availableSizes(QIcon::Mode mode, QIcon::State state) const override;
    QString iconName() const override;
    void virtual_hook(int id, void* data) override;

private:
    /// One call of addFile().
    struct FILE_ENTRY
    {
        QString name;
        QSize size;
        QIcon::Mode mode;
        QIcon::State state;
    };

    /// Before the first use, whether there are files and none of them exists; then what Qt's engine says.
    bool is_null() const;
    /// The icon that stands on Qt's engine, made here at the first call.
    const QIcon& icon() const;
    /// Adds the files to an icon of Qt's, each once.
    void add_files(QIcon& icon) const;
    /// Text that differs for different files.
    QString get_sharing_key() const;

    QVector<FILE_ENTRY> m_files; ///< until m_icon is made
    mutable QIcon m_icon;
    mutable bool m_is_made = false;
};
