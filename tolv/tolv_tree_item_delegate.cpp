#include "tolv_tree_item_delegate.h"

#include "tolv_check.h"
#include "tolv_mem.h"
#include "tolv_tree_model.h"
#include "tolv_tree_view.h"

#include "cfg.h"

#include <QApplication>
#include <QCursor>
#include <QDebug>
#include <QPainter>
#include <QStyleOptionToolButton>

TOLV_MEM_INITIALIZER();

namespace
{
constexpr int ADDITIONAL_HEIGHT = 2;

bool has_clickable_icon(const QModelIndex& index)
{
    return index.data(TOLV_TREE_ROLE_CLICKABLE_ICON).toBool();
}

/// Whether the size is asked for by a tree that lays out its rows. Qt asks for the height of a row with a width of -1,
/// which it has in no other place, and leaves no other way to make rows higher than their items.
bool is_for_row_height(const QStyleOptionViewItem& option)
{
    return option.rect.width() == -1;
}

/// The button flat, as it stands with the pointer elsewhere.
QStyleOptionToolButton make_icon_button(const QStyleOptionViewItem& item, const QRect& icon_rect)
{
    constexpr int PADDING = TOLV_TREE_ITEM_DELEGATE::ICON_BUTTON_PADDING;
    QStyleOptionToolButton button;
    button.direction = item.direction;
    button.palette = item.palette;
    button.fontMetrics = item.fontMetrics;
    button.styleObject = item.styleObject;
    button.icon = item.icon;
    button.iconSize = icon_rect.size();
    button.rect = icon_rect.adjusted(-PADDING, -PADDING, PADDING, PADDING);
    button.state = item.state | QStyle::State_AutoRaise;
    button.subControls = QStyle::SC_ToolButton;
    button.features = QStyleOptionToolButton::None;
    button.activeSubControls = QStyle::SC_All;
    return button;
}

/// Lights the button up or sinks it, as the pointer and the pressed icon have it.
void follow_pointer(QStyleOptionToolButton& button, bool is_hovering, const QModelIndex& pressed,
                    const QModelIndex& index)
{
    const bool is_another_pressed = pressed.isValid() && pressed != index; // of two icons only the pressed one moves
    if (!is_hovering || is_another_pressed)
        button.activeSubControls = QStyle::SC_None;
    else if (pressed == index && (QApplication::mouseButtons() & Qt::LeftButton) != 0)
        button.state |= QStyle::State_Sunken;
    else
        button.state |= QStyle::State_Raised;
}

void draw_clickable_icon(QPainter* painter, const QStyleOptionViewItem& opt, const QModelIndex& index,
                         const TOLV_TREE_VIEW& tree_view, bool is_tested)
{
    const QStyle* const style = tree_view.style();
    const QRect icon_rect = style->subElementRect(QStyle::SE_ItemViewItemDecoration, &opt, opt.widget);
    if (!icon_rect.isValid() || opt.icon.isNull() || !opt.state.testFlag(QStyle::State_Enabled))
        return;
    opt.icon.paint(painter, icon_rect, opt.decorationAlignment,
                   opt.state.testFlag(QStyle::State_Selected) ? QIcon::Selected : QIcon::Normal,
                   opt.state.testFlag(QStyle::State_Open) ? QIcon::On : QIcon::Off);

    QStyleOptionToolButton button = make_icon_button(opt, icon_rect);
    const QPoint position = tree_view.viewport()->mapFromGlobal(QCursor::pos());
    follow_pointer(button, opt.rect.contains(position) && button.state.testFlag(QStyle::State_MouseOver),
                   tree_view.get_pressed_icon_index(), index);
    if (is_tested)
        qDebug() << "opt.rect" << opt.rect << "iconRect" << icon_rect << "tb.rect" << button.rect << "pos" << position
                 << "padding" << TOLV_TREE_ITEM_DELEGATE::ICON_BUTTON_PADDING;
    style->drawComplexControl(QStyle::CC_ToolButton, &button, painter, opt.widget);
}
} // namespace

TOLV_TREE_ITEM_DELEGATE::TOLV_TREE_ITEM_DELEGATE(QObject* parent) : QStyledItemDelegate(parent)
{
}

TOLV_TREE_ITEM_DELEGATE::~TOLV_TREE_ITEM_DELEGATE() = default;

void TOLV_TREE_ITEM_DELEGATE::paint(QPainter* painter, const QStyleOptionViewItem& option,
                                    const QModelIndex& index) const
{
    TOLV_CHECK(index.isValid());
    if (!index.isValid())
        return;
    QStyleOptionViewItem opt = option;
    initStyleOption(&opt, index);
    const auto* const tree_view = qobject_cast<const TOLV_TREE_VIEW*>(opt.widget);
    TOLV_CHECK(tree_view != nullptr);
    if (tree_view == nullptr)
        return;
    const unsigned int tree_style = tree_view->get_style();
    if ((tree_style & TOLV_TREE_STYLE_NO_FOCUS_RECT) != 0)
        opt.state &= ~QStyle::State_HasFocus;
    tree_view->style()->drawControl(QStyle::CE_ItemViewItem, &opt, painter, opt.widget);

    static const bool s_is_tested = cfg_is_on("test_clickable_icons");
    if (s_is_tested || ((tree_style & TOLV_TREE_STYLE_CLICKABLE_ICONS) != 0 && has_clickable_icon(index)))
        draw_clickable_icon(painter, opt, index, *tree_view, s_is_tested);
}

QSize TOLV_TREE_ITEM_DELEGATE::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    static const bool s_is_tested = cfg_is_on("test_clickable_icons");
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    if (size.isValid())
    {
        size.rheight() += ADDITIONAL_HEIGHT;
        const auto* const tree_view = qobject_cast<const TOLV_TREE_VIEW*>(option.widget);
        if (is_for_row_height(option) && tree_view != nullptr)
            size.rheight() += tree_view->get_grid_line_height();
    }
    if (index.isValid() && (s_is_tested || has_clickable_icon(index)))
        size.rheight() += ICON_BUTTON_PADDING;
    return size;
}

void TOLV_TREE_ITEM_DELEGATE::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
}
