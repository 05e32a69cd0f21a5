#include "gallery_delegate.h"

#include "gallery_model.h"
#include "gallery_samples.h"

#include <QApplication>
#include <QPainter>

#include <algorithm>

namespace
{
constexpr int NAME_LINES = 2;
constexpr int MARGIN = 6; // around a tile's picture, in pixels

/// A name that can be broken behind each underscore.
QString make_breakable(QString name)
{
    return name.replace(QLatin1Char('_'), QStringLiteral("_\u200b"));
}

/// The names of tiles are smaller than other texts.
QFont get_name_font(const QStyleOptionViewItem& option)
{
    QFont font = option.font;
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * 0.88);
    return font;
}

/// What is chosen keeps its ground: on the colour of the selection it might not be seen.
void paint_plate(QPainter* painter, const QRect& picture, const QStyleOptionViewItem& item)
{
    if ((item.state & QStyle::State_Selected) != 0)
        painter->fillRect(picture.adjusted(-1, -1, 1, 1), item.palette.base());
}

QPalette::ColorGroup get_color_group(const QStyleOptionViewItem& option)
{
    if ((option.state & QStyle::State_Enabled) == 0)
        return QPalette::Disabled;
    return (option.state & QStyle::State_Active) != 0 ? QPalette::Normal : QPalette::Inactive;
}
} // namespace

// ---- Rows -----------------------------------------------------------------------------------------------------------

GALLERY_ROW_DELEGATE::GALLERY_ROW_DELEGATE(GALLERY_KIND kind, GALLERY_SAMPLES* samples, QObject* parent)
    : QStyledItemDelegate(parent), m_kind(kind), m_samples(samples)
{
}

void GALLERY_ROW_DELEGATE::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    if (index.column() != 0)
    {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QStyle& style = *item.widget->style();
    if (m_kind == GALLERY_ACTIONS)
    {
        const QIcon icon = item.icon;
        item.icon = QIcon();
        style.drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
        const QRect place = style.subElementRect(QStyle::SE_ItemViewItemDecoration, &item, item.widget);
        if (!icon.isNull())
        {
            paint_plate(painter, place, item);
            icon.paint(painter, place);
        }
        return;
    }
    QRect sample = option.rect.adjusted(4, 2, -4, -2);
    if (m_kind == GALLERY_COLORS)
        sample.setWidth(sample.height() * 2);
    else
        item.text.clear();
    item.decorationSize = QSize(sample.width() + 4, sample.height()); // the text stands behind it
    style.drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);
    paint_plate(painter, sample, item);
    m_samples->paint(painter, sample, m_kind, index.data(GALLERY_MODEL::ROLE_VALUE).toInt(), item.palette);
}

void GALLERY_ROW_DELEGATE::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.column() == 0)
        option->features |= QStyleOptionViewItem::HasDecoration; // also where there is none: texts stand in a line
}

QSize GALLERY_ROW_DELEGATE::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    if (m_kind == GALLERY_ACTIONS)
        size.setHeight(std::max(size.height(), option.decorationSize.height() + 4));
    else
        size.setHeight(std::max(size.height(), option.fontMetrics.height() * 3 / 2));
    return size;
}

// ---- Tiles ----------------------------------------------------------------------------------------------------------

GALLERY_TILE_DELEGATE::GALLERY_TILE_DELEGATE(GALLERY_KIND kind, GALLERY_SAMPLES* samples, QObject* parent)
    : QStyledItemDelegate(parent), m_kind(kind), m_samples(samples)
{
}

void GALLERY_TILE_DELEGATE::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const QString name = item.text;
    item.text.clear();
    item.icon = QIcon();
    item.features &= ~(QStyleOptionViewItem::HasDisplay | QStyleOptionViewItem::HasDecoration);
    item.rect.adjust(1, 1, -1, -1);
    item.showDecorationSelected = true; // the whole tile
    item.widget->style()->drawControl(QStyle::CE_ItemViewItem, &item, painter, item.widget);

    const QSize size = get_picture_size(option);
    const QRect picture(
        QPoint(option.rect.left() + (option.rect.width() - size.width()) / 2, option.rect.top() + MARGIN), size);
    paint_plate(painter, picture, item);
    m_samples->paint(painter, picture, m_kind, index.data(GALLERY_MODEL::ROLE_VALUE).toInt(), item.palette);

    painter->save();
    painter->setFont(get_name_font(option));
    const bool is_selected = (option.state & QStyle::State_Selected) != 0;
    painter->setPen(
        item.palette.color(get_color_group(option), is_selected ? QPalette::HighlightedText : QPalette::Text));
    const QRect text(option.rect.left() + 3, picture.bottom() + 1 + MARGIN / 2, option.rect.width() - 6,
                     option.rect.bottom() - picture.bottom() - MARGIN / 2);
    painter->drawText(text, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, make_breakable(name));
    painter->restore();
}

QSize GALLERY_TILE_DELEGATE::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    Q_UNUSED(index)
    const QFontMetrics metrics(get_name_font(option));
    const QSize picture = get_picture_size(option);
    return QSize(std::max(picture.width() + 2 * MARGIN, metrics.averageCharWidth() * 26),
                 picture.height() + metrics.lineSpacing() * NAME_LINES + 2 * MARGIN);
}

QSize GALLERY_TILE_DELEGATE::get_picture_size(const QStyleOptionViewItem& option) const
{
    switch (m_kind)
    {
    case GALLERY_CURSORS:
        return QSize(128, 128); // each pixel as four by four
    case GALLERY_PIXMAPS:
        return QSize(200, 130);
    case GALLERY_MOVIES:
        return QSize(128, 64);
    default:
        return option.decorationSize;
    }
}
