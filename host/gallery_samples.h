#pragma once

#include "gallery_catalog.h"

#include <QHash>
#include <QMovie>
#include <QPixmap>

#include <memory>
#include <vector>

class QPainter;
class QPalette;
class QRect;

/// Paints the things of the gallery. Pictures that are costly to make are kept; nothing is made before it is painted.
class GALLERY_SAMPLES : public QObject
{
    Q_OBJECT

public:
    explicit GALLERY_SAMPLES(QObject* parent = nullptr);

    /// Paints a thing into a rectangle, on the palette's Base. Icons fill the rectangle; pixmaps are made smaller where
    /// they do not fit, never larger.
    void paint(QPainter* painter, const QRect& rect, GALLERY_KIND kind, int value, const QPalette& palette);

    /// Movies play only while someone looks; they stand at their first frame before.
    void set_playing(bool is_playing);
    bool is_playing() const;

signals:
    /// A movie has come to another frame.
    void moved();

private:
    void paint_cursor(QPainter* painter, const QRect& rect, int value);
    void paint_pixmap(QPainter* painter, const QRect& rect, const QPixmap& pixmap);
    QMovie* get_movie(int value);

    QHash<int, QPixmap> m_pixmaps; ///< by enumerator
    std::vector<std::unique_ptr<QMovie>> m_movies;
    bool m_is_playing = false;
};
