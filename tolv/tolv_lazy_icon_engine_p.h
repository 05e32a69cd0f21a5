#pragma once

#include <QIcon>
#include <QIconEngine>
#include <QSize>
#include <QString>
#include <QVector>

/// An engine that only remembers files, and has Qt make the engine for them when it is first asked for something. (Qt's
/// own way looks at each file when it is added, some 50 microseconds for a vector file.) From then on all goes to Qt's
/// engine, so that what is painted, streamed and answered is Qt's to the last pixel. Icons of the same files share one
/// engine of Qt's, until one of them is changed.
///
/// Qt's engine stays out of reach behind a QIcon; it is asked through that icon with Qt's scaling of icons switched off, as the
/// outer icon has done the scaling already.
class TOLV_LAZY_ICON_ENGINE : public QIconEngine
{
public:
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    void addPixmap(const QPixmap& pixmap, QIcon::Mode mode, QIcon::State state) override;
    /// Remembers the file. After the first use it goes to Qt's engine at once.
    void addFile(const QString& file_name, const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    /// The key of Qt's engine: a streamed icon is read without this class.
    QString key() const override;
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

    /// The icon that stands on Qt's engine, made here at the first call.
    const QIcon& icon() const;
    /// Text that differs for different files.
    QString get_sharing_key() const;

    QVector<FILE_ENTRY> m_files; ///< until m_icon is made
    mutable QIcon m_icon;
    mutable bool m_is_made = false;
};
