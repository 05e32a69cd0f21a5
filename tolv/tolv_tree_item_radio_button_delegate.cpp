#include "tolv_tree_item_radio_button_delegate.h"

#include "tolv_mem.h"
#include "tolv_tree_model.h"

#include <QApplication>
#include <QStyle>

#include <algorithm>

TOLV_MEM_INITIALIZER();

namespace
{
/// Values of TOLV_TREE_ROLE_RADIO_STATE.
constexpr int RADIO_STATE_ON = 256;
constexpr int RADIO_STATE_OFF = 257;

bool is_radio_button(const QModelIndex& index)
{
    const QVariant value = index.data(TOLV_TREE_ROLE_RADIO_BUTTON);
    return value.canConvert<bool>() && value.toBool();
}

QStyle::State get_radio_state(const QModelIndex& index)
{
    bool is_number = false;
    const int state = index.data(TOLV_TREE_ROLE_RADIO_STATE).toInt(&is_number);
    if (is_number && state == RADIO_STATE_ON)
        return QStyle::State_On;
    if (is_number && state == RADIO_STATE_OFF)
        return QStyle::State_Off;
    return QStyle::State_None;
}
} // namespace

// NOLINTBEGIN(bugprone-parent-virtual-call): Qt's paint() is meant where it stands below, to leave out clickable icons.
// clazy:excludeall=skipped-base-method

TOLV_TREE_ITEM_RADIO_BUTTON_DELEGATE::TOLV_TREE_ITEM_RADIO_BUTTON_DELEGATE(QObject* parent)
    : TOLV_TREE_ITEM_DELEGATE(parent)
{
}

TOLV_TREE_ITEM_RADIO_BUTTON_DELEGATE::~TOLV_TREE_ITEM_RADIO_BUTTON_DELEGATE() = default;

void TOLV_TREE_ITEM_RADIO_BUTTON_DELEGATE::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                                 const QModelIndex& index) const
{
    if (!is_radio_button(index))
    {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem opt = option;
    initStyleOption(&opt, index);
    const int width = QApplication::style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth);
    const int spacing = QApplication::style()->pixelMetric(QStyle::PM_RadioButtonLabelSpacing);
    const int left = opt.rect.left();

    opt.rect.setLeft(left + width + spacing);
    QStyledItemDelegate::paint(painter, opt, index);

    const QStyle* const style = opt.widget != nullptr ? opt.widget->style() : QApplication::style();
    opt.rect.setLeft(left);
    opt.rect.setRight(left + width + spacing);
    style->drawPrimitive(QStyle::PE_PanelItemViewItem, &opt, painter, opt.widget);

    opt.rect = style->subElementRect(QStyle::SE_CheckBoxIndicator, &option, opt.widget).translated(spacing / 2, 0);
    opt.state |= get_radio_state(index);
    style->drawPrimitive(QStyle::PE_IndicatorRadioButton, &opt, painter, opt.widget);
}

// NOLINTEND(bugprone-parent-virtual-call)

QSize TOLV_TREE_ITEM_RADIO_BUTTON_DELEGATE::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QSize size = TOLV_TREE_ITEM_DELEGATE::sizeHint(option, index);
    if (is_radio_button(index))
        size.setHeight(
            std::max(size.height(), QApplication::style()->pixelMetric(QStyle::PM_ExclusiveIndicatorHeight)));
    return size;
}
