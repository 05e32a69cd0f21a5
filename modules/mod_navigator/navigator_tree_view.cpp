#include "navigator_tree_view.h"

#include "tolv_create_action.h"
#include "tolv_data_transfer_manager.h"
#include "tolv_global.h"

#include <QContextMenuEvent>
#include <QFrame>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSortFilterProxyModel>

namespace
{
const int LARGEST_SHARE = 70; ///< of the width that names may take, in percent

void set_look(QTreeView* view)
{
    view->setUniformRowHeights(true);
    view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view->setDragDropMode(QAbstractItemView::DragOnly);
    view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setTextElideMode(Qt::ElideMiddle);
}
} // namespace

// ---- The names ------------------------------------------------------------------------------------------------------

NAVIGATOR_NAME_VIEW::NAVIGATOR_NAME_VIEW(NAVIGATOR_TREE_VIEW* tree) : TOLV_FROZEN_TREE_VIEW(tree), m_tree(tree)
{
    set_look(this);
    set_style(TOLV_TREE_STYLE_CLICKABLE_ICONS);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    header()->setStretchLastSection(false);
    setFocusPolicy(Qt::ClickFocus);
    setFocusProxy(tree);
    hide();
}

void NAVIGATOR_NAME_VIEW::open_rows(const QModelIndexList& rows)
{
    const QSignalBlocker blocker(this);
    scheduleDelayedItemsLayout();
    for (const QModelIndex& row : rows)
        expand(row);
    executeDelayedItemsLayout();
}

void NAVIGATOR_NAME_VIEW::populate_column_selection_menu(QMenu* menu)
{
    m_tree->populate_column_selection_menu(menu);
}

void NAVIGATOR_NAME_VIEW::contextMenuEvent(QContextMenuEvent* event)
{
    m_tree->show_menu(event->globalPos());
}

// ---- The tree -------------------------------------------------------------------------------------------------------

NAVIGATOR_TREE_VIEW::NAVIGATOR_TREE_VIEW(const QString& object_name, QWidget* parent)
    : TOLV_TREE_VIEW(parent, TOLV_TREE_STYLE_CLICKABLE_ICONS), m_names(new NAVIGATOR_NAME_VIEW(this)),
      m_border(new QWidget(this))
{
    setObjectName(object_name);
    m_names->setObjectName(object_name + QStringLiteral("_names"));
    set_look(this);
    header()->setMinimumSectionSize(fontMetrics().averageCharWidth() * 6);
    m_names->header()->setMinimumSectionSize(header()->minimumSectionSize());
    m_border->setAutoFillBackground(true);
    m_border->setBackgroundRole(QPalette::Mid);
    m_border->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_border->hide();
    viewport()->installEventFilter(this);
    TOLV_SAFE_CONNECT(this, SIGNAL(expanded(QModelIndex)), this, SLOT(follow_expanded(QModelIndex)));
    TOLV_SAFE_CONNECT(this, SIGNAL(collapsed(QModelIndex)), this, SLOT(follow_collapsed(QModelIndex)));
    TOLV_SAFE_CONNECT(m_names, SIGNAL(expanded(QModelIndex)), this, SLOT(expand(QModelIndex)));
    TOLV_SAFE_CONNECT(m_names, SIGNAL(collapsed(QModelIndex)), this, SLOT(collapse(QModelIndex)));
    TOLV_SAFE_CONNECT(m_names, SIGNAL(icon_clicked(QModelIndex)), this, SIGNAL(icon_clicked(QModelIndex)));
    TOLV_SAFE_CONNECT(m_names, SIGNAL(activated(QModelIndex)), this, SIGNAL(activated(QModelIndex)));
    QScrollBar* const bar = verticalScrollBar();
    QScrollBar* const names_bar = m_names->verticalScrollBar();
    TOLV_SAFE_CONNECT(bar, SIGNAL(valueChanged(int)), names_bar, SLOT(setValue(int)));
    TOLV_SAFE_CONNECT(names_bar, SIGNAL(valueChanged(int)), bar, SLOT(setValue(int)));
    TOLV_SAFE_CONNECT(horizontalScrollBar(), SIGNAL(rangeChanged(int, int)), this, SLOT(place_names()));
    TOLV_SAFE_CONNECT(header(), SIGNAL(sectionResized(int, int, int)), this, SLOT(take_width(int, int, int)));
    TOLV_SAFE_CONNECT(m_names->header(), SIGNAL(sectionResized(int, int, int)), this, SLOT(take_width(int, int, int)));
}

NAVIGATOR_TREE_VIEW::~NAVIGATOR_TREE_VIEW() = default;

void NAVIGATOR_TREE_VIEW::show_model(QSortFilterProxyModel* model)
{
    m_model = model;
    m_names->setModel(model);
    setModel(model);
    if (model == nullptr)
        return;
    const QItemSelectionModel* const own_selection = m_names->selectionModel();
    m_names->setSelectionModel(selectionModel());
    delete own_selection;
    for (int column = 1; column < model->columnCount(); ++column)
        m_names->setColumnHidden(column, true);
    m_names->setColumnWidth(0, columnWidth(0));
    m_names->sync_expanded_state(); // nothing is open yet: this scrolls
    place_names();
}

void NAVIGATOR_TREE_VIEW::unfold(const QModelIndex& index, const std::function<bool(const QModelIndex&)>& is_wanted)
{
    if (m_model == nullptr)
        return;
    QModelIndexList rows;
    QModelIndexList level{index};
    int count = 0;
    bool is_complete = true;
    while (!level.isEmpty() && is_complete)
    {
        QModelIndexList next_level;
        for (const QModelIndex& parent : qAsConst(level))
        {
            const int row_count = m_model->rowCount(parent);
            is_complete = count + row_count <= LARGEST_UNFOLDING;
            if (parent.isValid() && (is_complete || rows.isEmpty()))
                rows.append(parent);
            if (!is_complete)
                break;
            count += row_count;
            for (int row = 0; row < row_count; ++row)
            {
                const QModelIndex child = m_model->index(row, 0, parent);
                if (m_model->hasChildren(child) && (!is_wanted || is_wanted(child)))
                    next_level.append(child);
            }
        }
        level = next_level;
    }
    open_rows(rows);
    emit unfolding_ended(is_complete);
}

QVector<QPersistentModelIndex> NAVIGATOR_TREE_VIEW::get_unfolded() const
{
    QVector<QPersistentModelIndex> rows;
    int budget = LARGEST_SEARCH;
    if (m_model != nullptr)
        collect_unfolded(QModelIndex(), true, &budget, &rows);
    return rows;
}

void NAVIGATOR_TREE_VIEW::set_unfolded(const QVector<QPersistentModelIndex>& source_rows)
{
    if (m_model == nullptr)
        return;
    fold_all();
    QModelIndexList rows;
    for (const QPersistentModelIndex& source : source_rows)
    {
        const QModelIndex row = source.isValid() ? m_model->mapFromSource(source) : QModelIndex();
        if (row.isValid())
            rows.append(row);
    }
    open_rows(rows);
}

void NAVIGATOR_TREE_VIEW::show_menu(const QPoint& global_position)
{
    if (m_model == nullptr)
        return;
    const bool has_selection = selectionModel()->hasSelection();
    QMenu menu;
    menu.setObjectName(QStringLiteral("navigator_menu"));
    add_action(&menu, TOLV_COPY_ACTION, SLOT(copy_selection()), has_selection);
    add_action(&menu, TOLV_COPY_ROWS_ACTION, SLOT(copy_rows()), has_selection);
    menu.addSeparator();
    add_action(&menu, TOLV_EXPAND_SELECTED_ACTION, SLOT(unfold_selected()), currentIndex().isValid());
    add_action(&menu, TOLV_EXPAND_ALL_ACTION, SLOT(unfold_all()), true);
    add_action(&menu, TOLV_COLLAPSE_ALL_ACTION, SLOT(fold_all()), true);
    menu.exec(global_position);
}

void NAVIGATOR_TREE_VIEW::unfold_all()
{
    unfold(QModelIndex());
}

void NAVIGATOR_TREE_VIEW::unfold_selected()
{
    unfold(currentIndex().siblingAtColumn(0));
}

void NAVIGATOR_TREE_VIEW::fold_all()
{
    collapseAll();
    m_names->collapse_all();
}

void NAVIGATOR_TREE_VIEW::copy_selection()
{
    QModelIndexList rows = selectionModel() != nullptr ? selectionModel()->selectedRows() : QModelIndexList();
    if (rows.isEmpty())
        return;
    QMimeData* const copied = m_model->mimeData(rows);
    if (copied != nullptr && copied->hasText())
    {
        TOLV_DATA_TRANSFER_MANAGER::get_instance()->inserting_to_clipboard(copied);
        return;
    }
    delete copied;
    on_copy_selection(true, nullptr);
}

void NAVIGATOR_TREE_VIEW::copy_rows()
{
    on_copy_selection(true, nullptr);
}

void NAVIGATOR_TREE_VIEW::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        copy_selection();
    else if (event->key() == Qt::Key_Asterisk) // without an end, Qt's own would unfold all there is
        unfold_selected();
    else
        TOLV_TREE_VIEW::keyPressEvent(event);
}

void NAVIGATOR_TREE_VIEW::contextMenuEvent(QContextMenuEvent* event)
{
    show_menu(event->globalPos());
}

bool NAVIGATOR_TREE_VIEW::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == viewport() && event->type() == QEvent::Resize)
        place_names();
    return TOLV_TREE_VIEW::eventFilter(watched, event);
}

void NAVIGATOR_TREE_VIEW::follow_expanded(const QModelIndex& index)
{
    m_names->expand(index);
}

void NAVIGATOR_TREE_VIEW::follow_collapsed(const QModelIndex& index)
{
    m_names->collapse(index);
}

void NAVIGATOR_TREE_VIEW::take_width(int column, int, int width)
{
    if (column != 0 || m_is_taking_width)
        return;
    m_is_taking_width = true;
    setColumnWidth(0, width);
    m_names->setColumnWidth(0, width);
    m_is_taking_width = false;
    place_names();
}

/// Puts the names over the first column of the tree, or takes them away.
void NAVIGATOR_TREE_VIEW::place_names()
{
    const QRect area = viewport()->geometry();
    const int width = columnWidth(0);
    const bool is_shown =
        m_model != nullptr && horizontalScrollBar()->maximum() > 0 && width * 100 <= area.width() * LARGEST_SHARE;
    const int top = header()->geometry().top();
    m_names->setGeometry(area.left(), top, width, area.bottom() + 1 - top);
    m_border->setGeometry(area.left() + width - 1, top, 1, area.bottom() + 1 - top);
    m_names->setVisible(is_shown);
    m_border->setVisible(is_shown);
    m_border->raise();
    m_names->verticalScrollBar()->setValue(verticalScrollBar()->value());
}

/// Opens rows in both views.
void NAVIGATOR_TREE_VIEW::open_rows(const QModelIndexList& rows)
{
    m_names->open_rows(rows);
    {
        const QSignalBlocker blocker(this); // the names know already
        scheduleDelayedItemsLayout();
        for (const QModelIndex& row : rows)
            expand(row);
        executeDelayedItemsLayout();
    }
    m_names->verticalScrollBar()->setValue(verticalScrollBar()->value());
}

/// @param is_seen whether all rows above are open
void NAVIGATOR_TREE_VIEW::collect_unfolded(const QModelIndex& parent, bool is_seen, int* budget,
                                           QVector<QPersistentModelIndex>* rows) const
{
    const int count = m_model->rowCount(parent);
    if (!is_seen)
        *budget -= count;
    for (int row = 0; row<count&& * budget> 0; ++row)
    {
        const QModelIndex index = m_model->index(row, 0, parent);
        if (!m_model->hasChildren(index))
            continue;
        const bool is_open = isExpanded(index);
        if (is_open)
            rows->append(m_model->mapToSource(index));
        collect_unfolded(index, is_seen && is_open, budget, rows);
    }
}

void NAVIGATOR_TREE_VIEW::add_action(QMenu* menu, TOLV_ACTION_ENUM command, const char* slot, bool is_enabled)
{
    QAction* const action = tolv_create_action(command, menu);
    action->setEnabled(is_enabled);
    TOLV_SAFE_CONNECT(action, SIGNAL(triggered()), this, slot);
    menu->addAction(action);
}
