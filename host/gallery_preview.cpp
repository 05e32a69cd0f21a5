#include "gallery_preview.h"

#include "gallery_samples.h"
#include "tolv_create_action.h"
#include "tolv_global.h"
#include "tolv_icon.h"
#include "tolv_image.h"

#include <QAction>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionMenuItem>
#include <QStyleOptionToolButton>

#include <algorithm>
#include <memory>

namespace
{
constexpr int MARGIN = 10;
constexpr int ICON_SIZES[] = {16, 24, 32, 48, 64};

QStyleOptionMenuItem make_menu_item(const QWidget& widget, const QAction& action, const QRect& rect, bool is_selected)
{
    QStyleOptionMenuItem item;
    item.initFrom(&widget);
    item.rect = rect;
    item.state = QStyle::State_Enabled | QStyle::State_Active;
    if (is_selected)
        item.state |= QStyle::State_Selected;
    item.menuItemType = QStyleOptionMenuItem::Normal;
    item.text = action.text();
    if (!action.shortcut().isEmpty())
        item.text += QLatin1Char('\t') + action.shortcut().toString(QKeySequence::NativeText);
    item.icon = action.icon();
    item.maxIconWidth = widget.style()->pixelMetric(QStyle::PM_SmallIconSize) + 4;
    item.tabWidth = widget.fontMetrics().horizontalAdvance(action.shortcut().toString(QKeySequence::NativeText));
    item.menuHasCheckableItems = action.isCheckable();
    item.checkType = action.isCheckable() ? QStyleOptionMenuItem::NonExclusive : QStyleOptionMenuItem::NotCheckable;
    item.checked = is_selected && action.isCheckable();
    item.menuRect = rect;
    item.font = widget.font();
    return item;
}

QStyleOptionToolButton make_tool_button(const QWidget& widget, const QAction& action)
{
    QStyleOptionToolButton button;
    button.initFrom(&widget);
    button.state = QStyle::State_Enabled | QStyle::State_Active | QStyle::State_Raised | QStyle::State_AutoRaise |
                   QStyle::State_MouseOver;
    button.subControls = QStyle::SC_ToolButton;
    button.activeSubControls = QStyle::SC_ToolButton;
    button.icon = action.icon();
    button.iconSize = QSize(24, 24);
    button.text = action.iconText();
    button.toolButtonStyle = action.icon().isNull() ? Qt::ToolButtonTextOnly : Qt::ToolButtonIconOnly;
    button.font = widget.font();
    return button;
}
} // namespace

GALLERY_PREVIEW::GALLERY_PREVIEW(GALLERY_SAMPLES* samples, QWidget* parent) : QWidget(parent), m_samples(samples)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    TOLV_SAFE_CONNECT(samples, SIGNAL(moved()), this, SLOT(update()));
}

void GALLERY_PREVIEW::set_thing(GALLERY_KIND kind, int value)
{
    m_kind = kind;
    m_value = value;
    if (kind == GALLERY_CURSORS && value != 0)
        setCursor(tolv_get_cursor(static_cast<TOLV_CURSOR_ENUM>(value)));
    else
        unsetCursor();
    setToolTip(kind == GALLERY_CURSORS && value != 0 ? tr("The pointer has this form here") : QString());
    update();
}

QSize GALLERY_PREVIEW::sizeHint() const
{
    return QSize(300, 210);
}

void GALLERY_PREVIEW::paintEvent(QPaintEvent*)
{
    if (m_value == 0)
        return;
    QPainter painter(this);
    const QRect inner = rect().adjusted(MARGIN, MARGIN, -MARGIN, -MARGIN);
    if (m_kind == GALLERY_ICONS)
        paint_icon(&painter, inner);
    else if (m_kind == GALLERY_ACTIONS)
        paint_action(&painter, inner);
    else
        m_samples->paint(&painter, inner, m_kind, m_value, palette());
}

void GALLERY_PREVIEW::paint_icon(QPainter* painter, const QRect& rect) const
{
    const QIcon icon = tolv_get_icon(static_cast<TOLV_ICON_ENUM>(m_value));
    const int line = fontMetrics().height();
    int sum = 0;
    for (const int size : ICON_SIZES)
        sum += size;
    const int gap = std::max(4, (rect.width() - sum) / 5);
    int x = rect.left() + gap / 2;
    const int bottom = rect.top() + 64;
    for (const int size : ICON_SIZES)
    {
        icon.paint(painter, QRect(x, bottom - size, size, size));
        paint_caption(painter, QRect(x - gap / 2, bottom + 2, size + gap, line), QString::number(size));
        x += size + gap;
    }

    const std::pair<QIcon::Mode, QString> modes[] = {{QIcon::Normal, tr("off")},
                                                     {QIcon::Normal, tr("on")},
                                                     {QIcon::Disabled, tr("disabled")},
                                                     {QIcon::Selected, tr("selected")}};
    const int width = rect.width() / 4;
    const int top = bottom + 2 * line;
    for (int i = 0; i < 4; ++i)
    {
        const QRect place(rect.left() + i * width + (width - 32) / 2, top + 4, 32, 32);
        if (modes[i].first == QIcon::Selected)
            painter->fillRect(place.adjusted(-4, -4, 4, 4), palette().highlight());
        icon.paint(painter, place, Qt::AlignCenter, modes[i].first, i == 1 ? QIcon::On : QIcon::Off);
        paint_caption(painter, QRect(rect.left() + i * width, top + 42, width, line), modes[i].second);
    }
}

void GALLERY_PREVIEW::paint_action(QPainter* painter, const QRect& rect) const
{
    const std::unique_ptr<QAction> action(tolv_create_action(static_cast<TOLV_ACTION_ENUM>(m_value), nullptr));
    const int line = fontMetrics().height();

    QStyleOptionToolButton button = make_tool_button(*this, *action);
    QSize size = action->icon().isNull() ? QSize(fontMetrics().horizontalAdvance(action->iconText()) + line, line + 6)
                                         : button.iconSize + QSize(8, 8);
    size = style()->sizeFromContents(QStyle::CT_ToolButton, &button, size, this).boundedTo(rect.size());
    button.rect = QRect(QPoint(rect.center().x() - size.width() / 2, rect.top() + 6), size);
    style()->drawComplexControl(QStyle::CC_ToolButton, &button, painter, this);

    const QSize item_size(0, std::max(line + 8, style()->pixelMetric(QStyle::PM_SmallIconSize) + 6));
    QRect item_rect(rect.left(), button.rect.bottom() + line, rect.width(), item_size.height());
    painter->fillRect(item_rect.adjusted(0, 0, 0, item_rect.height()), palette().window());
    for (const bool is_selected : {false, true})
    {
        const QStyleOptionMenuItem item = make_menu_item(*this, *action, item_rect, is_selected);
        style()->drawControl(QStyle::CE_MenuItem, &item, painter, this);
        item_rect.translate(0, item_rect.height());
    }
    QStyleOptionFrame frame;
    frame.initFrom(this);
    frame.rect = QRect(rect.left(), button.rect.bottom() + line, rect.width(), 2 * item_size.height());
    frame.lineWidth = 1;
    style()->drawPrimitive(QStyle::PE_FrameMenu, &frame, painter, this);
    paint_caption(painter, QRect(rect.left(), frame.rect.bottom() + 8, rect.width(), line * 3), action->statusTip());
}

void GALLERY_PREVIEW::paint_caption(QPainter* painter, const QRect& rect, const QString& text) const
{
    QColor color = palette().color(QPalette::Text);
    color.setAlpha(170);
    painter->setPen(color);
    painter->drawText(rect, Qt::AlignHCenter | Qt::AlignTop | Qt::TextWordWrap, text);
}
