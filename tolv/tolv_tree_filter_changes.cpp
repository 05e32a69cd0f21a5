#include "tolv_tree_filter_changes_p.h"

#include "tolv_global.h"
#include "tolv_mem.h"
#include "tolv_tree_filter_proxy_model.h"
#include "tolv_tree_filtering_p.h"

#include <QAbstractItemModel>

#include <algorithm>
#include <typeinfo>

TOLV_MEM_INITIALIZER();

namespace
{
/// Above this number of changed rows with children all is filtered again, without a look at the rows.
constexpr int MAX_LINES_TO_LOOK_AT = 32;

/// What the source model says when no answer about its rows holds any more.
const char* const UNSETTLING_SIGNALS[] = {SIGNAL(columnsAboutToBeInserted(QModelIndex, int, int)),
                                          SIGNAL(columnsAboutToBeRemoved(QModelIndex, int, int)),
                                          SIGNAL(modelAboutToBeReset())};
} // namespace

TOLV_TREE_FILTER_CHANGES::TOLV_TREE_FILTER_CHANGES(TOLV_TREE_FILTER_PROXY_MODEL& proxy, TOLV_TREE_FILTERING& filtering)
    : m_proxy(proxy), m_filtering(filtering)
{
    TOLV_SAFE_CONNECT(&proxy, SIGNAL(rowsRemoved(QModelIndex, int, int)), this, SLOT(note_removed_rows()));
}

void TOLV_TREE_FILTER_CHANGES::hear_before(QAbstractItemModel* source)
{
    if (source == nullptr)
        return;
    for (const char* signal : UNSETTLING_SIGNALS)
        TOLV_SAFE_CONNECT(source, signal, this, SLOT(forget()));
    TOLV_SAFE_CONNECT(source, SIGNAL(rowsAboutToBeMoved(QModelIndex, int, int, QModelIndex, int)), this,
                      SLOT(begin_move(QModelIndex, int, int, QModelIndex)));
    TOLV_SAFE_CONNECT(source, SIGNAL(columnsAboutToBeMoved(QModelIndex, int, int, QModelIndex, int)), this,
                      SLOT(begin_move(QModelIndex, int, int, QModelIndex)));
    TOLV_SAFE_CONNECT(
        source, SIGNAL(layoutAboutToBeChanged(QList<QPersistentModelIndex>, QAbstractItemModel::LayoutChangeHint)),
        this, SLOT(begin_layout_change(QList<QPersistentModelIndex>)));
    TOLV_SAFE_CONNECT(source, SIGNAL(dataChanged(QModelIndex, QModelIndex, QVector<int>)), this,
                      SLOT(begin_data_change(QModelIndex)));
    TOLV_SAFE_CONNECT(source, SIGNAL(rowsAboutToBeInserted(QModelIndex, int, int)), this, SLOT(forget()));
    TOLV_SAFE_CONNECT(source, SIGNAL(rowsInserted(QModelIndex, int, int)), this, SLOT(begin_insertion()));
    TOLV_SAFE_CONNECT(source, SIGNAL(rowsAboutToBeRemoved(QModelIndex, int, int)), this,
                      SLOT(begin_removal(QModelIndex, int, int)));
}

void TOLV_TREE_FILTER_CHANGES::hear_after(QAbstractItemModel* source)
{
    if (source == nullptr)
        return;
    TOLV_SAFE_CONNECT(source, SIGNAL(dataChanged(QModelIndex, QModelIndex, QVector<int>)), this,
                      SLOT(end_data_change(QModelIndex, QModelIndex, QVector<int>)));
    TOLV_SAFE_CONNECT(source, SIGNAL(rowsInserted(QModelIndex, int, int)), this,
                      SLOT(end_insertion(QModelIndex, int, int)));
    TOLV_SAFE_CONNECT(source, SIGNAL(rowsRemoved(QModelIndex, int, int)), this, SLOT(end_removal(QModelIndex)));
    TOLV_SAFE_CONNECT(source, SIGNAL(rowsMoved(QModelIndex, int, int, QModelIndex, int)), this,
                      SLOT(end_layout_change()));
    TOLV_SAFE_CONNECT(source, SIGNAL(layoutChanged(QList<QPersistentModelIndex>, QAbstractItemModel::LayoutChangeHint)),
                      this, SLOT(end_layout_change()));
    TOLV_SAFE_CONNECT(source, SIGNAL(columnsInserted(QModelIndex, int, int)), this,
                      SLOT(end_column_change(QModelIndex, int)));
    TOLV_SAFE_CONNECT(source, SIGNAL(columnsRemoved(QModelIndex, int, int)), this,
                      SLOT(end_column_change(QModelIndex, int)));
    TOLV_SAFE_CONNECT(source, SIGNAL(columnsMoved(QModelIndex, int, int, QModelIndex, int)), this,
                      SLOT(end_layout_change()));
    TOLV_SAFE_CONNECT(source, SIGNAL(columnsMoved(QModelIndex, int, int, QModelIndex, int)), this,
                      SLOT(end_column_move(QModelIndex, int, int, QModelIndex, int)));
}

void TOLV_TREE_FILTER_CHANGES::leave(QAbstractItemModel* source)
{
    if (source != nullptr)
        QObject::disconnect(source, nullptr, this, nullptr);
    m_filtering.end_all_changes();
}

void TOLV_TREE_FILTER_CHANGES::forget()
{
    m_filtering.forget();
}

void TOLV_TREE_FILTER_CHANGES::begin_move(const QModelIndex& from, int first, int last, const QModelIndex& to)
{
    Q_UNUSED(first)
    Q_UNUSED(last)
    begin_layout_change({from, to});
}

// The base class takes a move for a change of layout, and leaves levels alone if all of them lie below hidden rows. But
// these may be mapped, from before, and would be shown as they are now when their turn comes.
void TOLV_TREE_FILTER_CHANGES::begin_layout_change(const QList<QPersistentModelIndex>& parents)
{
    m_filtering.forget();
    m_is_unheard_layout_change =
        !parents.isEmpty() && std::all_of(parents.cbegin(), parents.cend(),
                                          [this](const QPersistentModelIndex& parent) { return is_hidden(parent); });
}

void TOLV_TREE_FILTER_CHANGES::end_layout_change()
{
    if (m_is_unheard_layout_change)
        m_proxy.invalidate();
    m_is_unheard_layout_change = false;
}

// The level is mapped here, by what the rows are now, as the base class would do.
void TOLV_TREE_FILTER_CHANGES::begin_data_change(const QModelIndex& top_left)
{
    m_filtering.forget();
    m_has_removed_rows = false;
    m_was_unmapped = false;
    const QModelIndex parent = top_left.parent();
    if (is_filtered() && top_left.isValid() && !is_hidden(parent))
    {
        m_filtering.take_was_asked(parent);
        m_filtering.is_mapped(top_left.row(), parent);
        m_was_unmapped = m_filtering.take_was_asked(QModelIndex());
    }
    m_filtering.begin_change();
}

void TOLV_TREE_FILTER_CHANGES::end_data_change(const QModelIndex& top_left, const QModelIndex& bottom_right,
                                               const QVector<int>& roles)
{
    m_filtering.end_change();
    if (!is_filtered() || !top_left.isValid() || !bottom_right.isValid())
        return;
    const QAbstractItemModel* source = m_proxy.sourceModel();
    const QModelIndex parent = top_left.parent();
    const int first = top_left.row();
    const int last = std::min(bottom_right.row(), source->rowCount(parent) - 1);
    if (is_hidden(parent))
    {
        if (has_match(parent, first, last))
            show_ancestors(parent);
        return;
    }
    const bool may_hide_ancestors = m_has_removed_rows || m_was_unmapped;
    if (parent.isValid() && may_hide_ancestors)
        hide_ancestors(parent);
    const bool is_text = roles.isEmpty() || roles.contains(m_proxy.filterRole()) || roles.contains(Qt::DisplayRole) ||
                         roles.contains(Qt::EditRole);
    if (is_text && m_proxy.m_include_child && may_descendants_differ(parent, first, last))
        m_filtering.filter_again();
}

void TOLV_TREE_FILTER_CHANGES::begin_insertion()
{
    m_filtering.forget();
    m_filtering.begin_change();
}

void TOLV_TREE_FILTER_CHANGES::end_insertion(const QModelIndex& parent, int first, int last)
{
    m_filtering.end_change();
    if (is_filtered() && is_hidden(parent) && has_match(parent, first, last))
        show_ancestors(parent);
}

void TOLV_TREE_FILTER_CHANGES::begin_removal(const QModelIndex& parent, int first, int last)
{
    m_filtering.forget();
    m_is_removing_match = is_filtered() && parent.isValid() && has_match(parent, first, last);
}

void TOLV_TREE_FILTER_CHANGES::end_removal(const QModelIndex& parent)
{
    if (m_is_removing_match)
        hide_ancestors(parent);
    m_is_removing_match = false;
}

// The base class does not look at rows whose cells have changed places.
void TOLV_TREE_FILTER_CHANGES::end_column_change(const QModelIndex& parent, int first)
{
    if (is_filtered() && may_search_from(first) && m_proxy.sourceModel()->rowCount(parent) > 0)
        m_filtering.filter_again();
}

void TOLV_TREE_FILTER_CHANGES::end_column_move(const QModelIndex& from, int first, int last, const QModelIndex& to,
                                               int before)
{
    Q_UNUSED(last)
    end_column_change(from, from == to ? std::min(first, before) : first);
    if (from != to)
        end_column_change(to, before);
}

void TOLV_TREE_FILTER_CHANGES::note_removed_rows()
{
    m_has_removed_rows = true;
}

/// Whether a level lies below a hidden row.
bool TOLV_TREE_FILTER_CHANGES::is_hidden(const QModelIndex& parent) const
{
    return parent.isValid() && !m_filtering.is_shown(parent);
}

/// Whether there is something to keep: without a pattern the rules of this class let every row stay, those of a subclass
/// may not. Rows that the base class does not filter anew when they change are left alone here, too.
bool TOLV_TREE_FILTER_CHANGES::is_filtered() const
{
    return m_proxy.dynamicSortFilter() &&
           (!m_proxy.has_empty_pattern() || typeid(m_proxy) != typeid(TOLV_TREE_FILTER_PROXY_MODEL));
}

/// Whether rows are searched in this column or in one behind it. A subclass may look anywhere.
bool TOLV_TREE_FILTER_CHANGES::may_search_from(int column) const
{
    const QList<int>& columns = m_proxy.m_filter_columns;
    const int key_column = m_proxy.filterKeyColumn(); // -1 stands for all
    return typeid(m_proxy) != typeid(TOLV_TREE_FILTER_PROXY_MODEL) || key_column < 0 || key_column >= column ||
           std::any_of(columns.cbegin(), columns.cend(), [column](int i) { return i >= column; });
}

bool TOLV_TREE_FILTER_CHANGES::has_match(const QModelIndex& parent, int first, int last)
{
    for (int row = first; row <= last; ++row)
    {
        if (m_filtering.accepts_itself(row, parent) || m_filtering.accepts_children(row, parent))
            return true;
    }
    return false;
}

/// Shows the topmost of the hidden rows from this one up; what lies below it comes with it.
void TOLV_TREE_FILTER_CHANGES::show_ancestors(QModelIndex index)
{
    for (QModelIndex parent = index.parent(); is_hidden(parent); parent = index.parent())
        index = parent;
    m_filtering.show(index);
}

/// Hides the topmost of the rows from this one up that have lost their last match.
void TOLV_TREE_FILTER_CHANGES::hide_ancestors(QModelIndex index)
{
    QModelIndex top;
    {
        const TOLV_TREE_FILTERING::KEPT_ANSWERS kept(m_filtering);
        for (; index.isValid() && !m_filtering.is_to_be_shown(index); index = index.parent())
            top = index;
    }
    if (top.isValid() && m_filtering.is_shown(top))
        m_filtering.look_again(top);
}

/// Whether rows below shown rows of a range are shown, or hidden, that should not be.
bool TOLV_TREE_FILTER_CHANGES::may_descendants_differ(const QModelIndex& parent, int first, int last)
{
    const QAbstractItemModel* source = m_proxy.sourceModel();
    QVector<QModelIndex> lines;
    for (int row = first; row <= last; ++row)
    {
        const QModelIndex index = source->index(row, 0, parent);
        if (source->rowCount(index) > 0 && m_filtering.is_mapped(row, parent))
            lines.append(index);
        if (lines.size() > MAX_LINES_TO_LOOK_AT)
            return true;
    }
    const TOLV_TREE_FILTERING::KEPT_ANSWERS kept(m_filtering);
    return std::any_of(lines.cbegin(), lines.cend(),
                       [this](const QModelIndex& index) { return has_line_changed(index); });
}

/// Whether what this row and those above it say to the rows below is not what these have heard: seen at the first that
/// has no match of its own.
bool TOLV_TREE_FILTER_CHANGES::has_line_changed(const QModelIndex& index)
{
    const QAbstractItemModel* source = m_proxy.sourceModel();
    const bool is_accepted = m_filtering.accepts_line(index);
    const int count = source->rowCount(index);
    for (int row = 0; row < count; ++row)
    {
        if (!m_filtering.accepts_itself(row, index) && !m_filtering.accepts_children(row, index))
            return m_filtering.is_mapped(row, index) != is_accepted;
    }
    for (int row = 0; row < count; ++row)
    {
        const QModelIndex child = source->index(row, 0, index);
        if (!m_filtering.accepts_itself(row, index) && source->rowCount(child) > 0 && has_line_changed(child))
            return true;
    }
    return false;
}
