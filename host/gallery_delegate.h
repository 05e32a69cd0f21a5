#pragma once

#include "gallery_catalog.h"

#include <QStyledItemDelegate>

class GALLERY_SAMPLES;

/// Paints a row of a table: a sample of the thing in the first column, its value beside it where it has one. Actions
/// have their icon there, as any item has.
class GALLERY_ROW_DELEGATE : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// @param samples must outlive the delegate
    GALLERY_ROW_DELEGATE(GALLERY_KIND kind, GALLERY_SAMPLES* samples, QObject* parent = nullptr);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    const GALLERY_KIND m_kind;
    GALLERY_SAMPLES* m_samples;
};

/// Paints a tile of a grid: the picture, the name below it in up to two lines.
class GALLERY_TILE_DELEGATE : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /// @param samples must outlive the delegate
    GALLERY_TILE_DELEGATE(GALLERY_KIND kind, GALLERY_SAMPLES* samples, QObject* parent = nullptr);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    QSize get_picture_size(const QStyleOptionViewItem& option) const;

    const GALLERY_KIND m_kind;
    GALLERY_SAMPLES* m_samples;
};
