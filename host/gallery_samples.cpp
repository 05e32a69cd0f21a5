#include "gallery_samples.h"

#include "tolv_brush.h"
#include "tolv_color.h"
#include "tolv_contrast.h"
#include "tolv_font.h"
#include "tolv_global.h"
#include "tolv_icon.h"
#include "tolv_image.h"
#include "tolv_pen.h"

#include <QBitmap>
#include <QPainter>
#include <QPalette>

#include <algorithm>

namespace
{
constexpr double VISIBLE_CONTRAST = 1.6; // less is lost on the ground

/// A colour on which a sample can be seen: the ground itself where that will do.
QColor get_sample_ground(const QColor& color, const QPalette& palette)
{
    QColor ground = palette.color(QPalette::Base);
    if (tolv_get_contrast(color, ground) < VISIBLE_CONTRAST)
        ground =
            tolv_get_contrast_color(color) == QColor(Qt::white) ? QColor(0xf4, 0xf4, 0xf4) : QColor(0x30, 0x32, 0x35);
    return ground;
}

void paint_ground(QPainter* painter, const QRect& rect, const QColor& ground, const QPalette& palette)
{
    if (ground != palette.color(QPalette::Base))
        painter->fillRect(rect, ground);
}

/// The outline of an area, half as strong as a text.
void paint_outline(QPainter* painter, const QRect& rect, const QPalette& palette)
{
    QColor color = palette.color(QPalette::Text);
    color.setAlpha(110);
    painter->setPen(QPen(color, 0));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(rect.adjusted(0, 0, -1, -1));
}

void paint_color(QPainter* painter, const QRect& rect, int value, const QPalette& palette)
{
    const QColor color = TOLV_COLOR(static_cast<TOLV_COLOR_RESOURCE>(value)).get_color();
    if (color.alpha() < 255)
    {
        painter->fillRect(rect, Qt::white);
        painter->fillRect(rect, QBrush(QColor(0xb0, 0xb0, 0xb0), Qt::Dense4Pattern));
    }
    painter->fillRect(rect, color);
    paint_outline(painter, rect, palette);
}

void paint_pen(QPainter* painter, const QRect& rect, int value, const QPalette& palette)
{
    const QPen pen = *TOLV_PEN(static_cast<TOLV_PEN_RESOURCE>(value)).get_pen();
    paint_ground(painter, rect, get_sample_ground(pen.color(), palette), palette);
    painter->setPen(pen);
    painter->setBrush(Qt::NoBrush);
    const QRect inner = rect.adjusted(8, 4, -9, -5);
    if (rect.height() < 60)
    {
        painter->drawLine(inner.left(), inner.center().y(), inner.right(), inner.center().y());
        return;
    }
    // With corners and a slope: caps and joins show.
    const int step = inner.width() / 4;
    const int top = inner.top() + inner.height() / 4;
    const int bottom = inner.bottom() - inner.height() / 4;
    const QPoint points[] = {
        {inner.left(), bottom},         {inner.left() + step, bottom},     {inner.left() + step, top},
        {inner.left() + 2 * step, top}, {inner.left() + 3 * step, bottom}, {inner.right(), bottom}};
    painter->drawPolyline(points, 6);
}

void paint_brush(QPainter* painter, const QRect& rect, int value, const QPalette& palette)
{
    const QBrush brush = *TOLV_BRUSH(static_cast<TOLV_BRUSH_RESOURCE>(value)).get_brush();
    if (brush.style() != Qt::SolidPattern && brush.style() != Qt::NoBrush)
        paint_ground(painter, rect, get_sample_ground(brush.color(), palette), palette);
    painter->setBrushOrigin(rect.topLeft());
    painter->fillRect(rect, brush);
    paint_outline(painter, rect, palette);
}

void paint_font(QPainter* painter, const QRect& rect, int value)
{
    const TOLV_FONT font(static_cast<TOLV_FONT_RESOURCE>(value));
    painter->fillRect(rect, font.get_background_color().get_color());
    painter->setFont(*font.get_font());
    painter->setPen(font.get_text_color().get_color());
    const bool is_small = rect.height() < 60;
    const QString text = is_small ? QStringLiteral("fifo_ctrl[7:0] Ag 0O 1Il")
                                  : QStringLiteral("fifo_ctrl[7:0]\nAg Qq 0O 1Il\n<= := -- // {}");
    painter->drawText(rect.adjusted(6, 0, -6, 0), is_small ? Qt::AlignVCenter : Qt::AlignCenter, text);
}

/// A rectangle of that size in the middle of another one.
QRect get_middle(const QRect& rect, const QSize& size)
{
    const QSize rest = rect.size() - size;
    return QRect(rect.topLeft() + QPoint(rest.width() / 2, rest.height() / 2), size);
}

/// What a cursor looks like on the screen.
QImage make_cursor_picture(const QCursor& cursor)
{
    const QImage bitmap = cursor.bitmap(Qt::ReturnByValue).toImage().convertToFormat(QImage::Format_RGB32);
    const QImage mask = cursor.mask(Qt::ReturnByValue).toImage().convertToFormat(QImage::Format_RGB32);
    QImage picture(bitmap.size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    for (int y = 0; y < picture.height(); ++y)
    {
        for (int x = 0; x < picture.width(); ++x)
        {
            if (qGray(mask.pixel(x, y)) < 128)
                picture.setPixelColor(x, y, qGray(bitmap.pixel(x, y)) < 128 ? Qt::black : Qt::white);
        }
    }
    return picture;
}
} // namespace

GALLERY_SAMPLES::GALLERY_SAMPLES(QObject* parent) : QObject(parent)
{
    m_movies.resize(TOLV_MOVIE_COUNT);
}

void GALLERY_SAMPLES::paint(QPainter* painter, const QRect& rect, GALLERY_KIND kind, int value, const QPalette& palette)
{
    painter->save();
    painter->setClipRect(rect, Qt::IntersectClip);
    switch (kind)
    {
    case GALLERY_ICONS:
        tolv_get_icon(static_cast<TOLV_ICON_ENUM>(value)).paint(painter, rect);
        break;
    case GALLERY_CURSORS:
        paint_cursor(painter, rect, value);
        break;
    case GALLERY_PIXMAPS:
        if (!m_pixmaps.contains(value))
            m_pixmaps.insert(value, tolv_get_pixmap(static_cast<TOLV_PIXMAP_ENUM>(value)));
        paint_pixmap(painter, rect, m_pixmaps[value]);
        break;
    case GALLERY_MOVIES:
        paint_pixmap(painter, rect, get_movie(value)->currentPixmap());
        break;
    case GALLERY_COLORS:
        paint_color(painter, rect, value, palette);
        break;
    case GALLERY_PENS:
        paint_pen(painter, rect, value, palette);
        break;
    case GALLERY_BRUSHES:
        paint_brush(painter, rect, value, palette);
        break;
    case GALLERY_FONTS:
        paint_font(painter, rect, value);
        break;
    case GALLERY_ACTIONS:
    case GALLERY_KIND_COUNT:
        break;
    }
    painter->restore();
}

void GALLERY_SAMPLES::set_playing(bool is_playing)
{
    if (is_playing == m_is_playing)
        return;
    m_is_playing = is_playing;
    for (int value = 1; value <= TOLV_MOVIE_COUNT; ++value)
    {
        if (is_playing)
            get_movie(value)->start();
        else
            get_movie(value)->stop();
    }
}

bool GALLERY_SAMPLES::is_playing() const
{
    return m_is_playing;
}

void GALLERY_SAMPLES::paint_cursor(QPainter* painter, const QRect& rect, int value)
{
    const QCursor cursor = tolv_get_cursor(static_cast<TOLV_CURSOR_ENUM>(value));
    const QImage picture = make_cursor_picture(cursor);
    const int scale = std::max(1, std::min(rect.width() / picture.width(), rect.height() / picture.height()));
    const QSize size = picture.size() * scale;
    const QPoint corner = get_middle(rect, size).topLeft();
    // A ground between black and white: both are in a cursor.
    painter->fillRect(QRect(corner, size), QColor(0x9a, 0xa4, 0xae));
    painter->drawImage(QRect(corner, size), picture);
    // The hot spot is a pixel; a ring around its middle, and a line to each side of it.
    const QPointF hot = QPointF(corner) + (QPointF(cursor.hotSpot()) + QPointF(0.5, 0.5)) * scale;
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    const double radius = scale * 1.6;
    for (const QPen& pen : {QPen(QColor(255, 255, 255, 200), 3), QPen(QColor(0xe0, 0x10, 0x30), 1.4)})
    {
        painter->setPen(pen);
        painter->drawEllipse(hot, radius, radius);
        for (const QPointF& side : {QPointF(1, 0), QPointF(-1, 0), QPointF(0, 1), QPointF(0, -1)})
            painter->drawLine(hot + side * radius * 0.6, hot + side * radius * 1.7);
    }
}

void GALLERY_SAMPLES::paint_pixmap(QPainter* painter, const QRect& rect, const QPixmap& pixmap)
{
    if (pixmap.isNull())
        return;
    const QSize whole = pixmap.size() / pixmap.devicePixelRatio();
    QSize size = whole;
    if (size.width() > rect.width() || size.height() > rect.height())
        size.scale(rect.size(), Qt::KeepAspectRatio);
    const QRect target = get_middle(rect, size);
    const QSize pixels = size * painter->device()->devicePixelRatioF();
    // Smooth even where it is a tenth as large.
    painter->drawPixmap(target, size == whole ? pixmap
                                              : pixmap.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
}

QMovie* GALLERY_SAMPLES::get_movie(int value)
{
    std::unique_ptr<QMovie>& movie = m_movies[static_cast<std::size_t>(value) - 1];
    if (movie == nullptr)
    {
        movie.reset(tolv_get_movie(static_cast<TOLV_MOVIE_ENUM>(value)));
        movie->jumpToFrame(0);
        TOLV_SAFE_CONNECT(movie.get(), SIGNAL(frameChanged(int)), this, SIGNAL(moved()));
    }
    return movie.get();
}
