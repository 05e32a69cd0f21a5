#include "tolv_tree_filtering_p.h"

#include "tolv_mem.h"
#include "tolv_tree_filter_proxy_model.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QItemSelectionModel>
#include <QScopedValueRollback>
#include <QSignalBlocker>

#include <algorithm>

TOLV_MEM_INITIALIZER();

namespace
{
// What is known of a row.
constexpr quint16 ASKED = 0x1;         ///< the base class has asked about it, so its level is mapped
constexpr quint16 MAPPED = 0x2;        ///< and the base class has mapped it
constexpr quint16 STAYS = 0x4;         ///< the proxy is to show it
constexpr quint16 MARKED = 0x8;        ///< it goes, or comes, before all others
constexpr quint16 ITSELF_KNOWN = 0x10; ///< ITSELF says whether it matches itself
constexpr quint16 ITSELF = 0x20;
constexpr quint16 CHILDREN_KNOWN = 0x40; ///< CHILDREN says whether something below it matches
constexpr quint16 CHILDREN = 0x80;
constexpr quint16 ACCEPTED_KNOWN = 0x100; ///< ACCEPTED says what the rules make of it
constexpr quint16 ACCEPTED = 0x200;

/// Cost is counted in rows of a level, each of which the base class touches for each run. For each run it also goes through
/// all persistent indexes and their ancestors, which takes as long as so many rows.
constexpr qint64 COST_OF_PERSISTENT_INDEX = 10;
/// Up to these, the base class does a change run by run.
constexpr qint64 MAX_RUNS = 1000;
constexpr qint64 MAX_COST = 2000000;
/// What the runs with persistent indexes may cost: those that views hold as their current row and at the ends of their
/// selections, and those of others, which are mostly no more than expanded. The ones that would cost more become invalid
/// with no more ado.
constexpr qint64 MAX_COST_FOR_VIEWS = 20000000;
constexpr qint64 MAX_COST_FOR_OTHERS = 2000000;
/// Above this number of cells the selection model takes a short cut in a change of layout, if all of them are selected,
/// that holds only as long as no rows come.
constexpr qint64 MAX_CELLS_WITHOUT_SHORT_CUT = 1000;

/// What the views that show a model hold of it in their selections.
QModelIndexList get_indexes_of_views(const QAbstractItemModel& model)
{
    QModelIndexList result;
    const QWidgetList widgets = qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr
                                    ? QApplication::allWidgets()
                                    : QWidgetList();
    for (const QWidget* widget : widgets)
    {
        const auto* view = qobject_cast<const QAbstractItemView*>(widget);
        if (view == nullptr || view->model() != &model || view->selectionModel() == nullptr)
            continue;
        result.append(view->selectionModel()->currentIndex());
        const QItemSelection selection = view->selectionModel()->selection();
        for (const QItemSelectionRange& range : selection)
            result << range.topLeft() << range.bottomRight();
    }
    return result;
}

void set_known(quint16& bits, quint16 known, quint16 value, bool is_true)
{
    bits = static_cast<quint16>(bits | known | (is_true ? value : 0));
}
} // namespace

TOLV_TREE_FILTERING::TOLV_TREE_FILTERING(TOLV_TREE_FILTER_PROXY_MODEL& proxy) : m_proxy(proxy)
{
}

TOLV_TREE_FILTERING::~TOLV_TREE_FILTERING() = default;

// A view may ask in the middle of a step, when the base class tells it of rows that come and go. Levels that are mapped
// for it are mapped by the rules.
TOLV_TREE_FILTERING::QUESTION::QUESTION(TOLV_TREE_FILTERING& filtering)
    : m_filtering(filtering), m_answer(filtering.m_answer)
{
    ++m_filtering.m_question_depth;
    m_filtering.m_answer = ANSWER_BY_RULES;
}

TOLV_TREE_FILTERING::QUESTION::~QUESTION()
{
    m_filtering.m_answer = m_answer;
    if (--m_filtering.m_question_depth == 0)
        m_filtering.m_has_line = false;
}

TOLV_TREE_FILTERING::KEPT_ANSWERS::KEPT_ANSWERS(TOLV_TREE_FILTERING& filtering)
    : m_question(filtering), m_filtering(filtering)
{
    ++m_filtering.m_keep_depth;
}

TOLV_TREE_FILTERING::KEPT_ANSWERS::~KEPT_ANSWERS()
{
    if (--m_filtering.m_keep_depth == 0)
        m_filtering.forget();
}

bool TOLV_TREE_FILTERING::accepts(int row, const QModelIndex& parent)
{
    switch (m_answer)
    {
    case ANSWER_NO:
        m_was_asked = true;
        return false;
    case ANSWER_AS_MAPPED:
        return record(row, parent);
    case ANSWER_AS_MARKED:
        return get_mark(row, parent);
    case ANSWER_FORCED:
        if (m_forced_row.row() == row && m_forced_row.parent() == parent)
            return m_forced_answer;
        break;
    default:
        break;
    }
    if (parent == m_asked_parent)
        m_was_asked = true;
    if (m_change_depth > 0 && parent.isValid() && !is_shown(parent))
        return false;
    return accepts_by_rules_once(row, parent);
}

bool TOLV_TREE_FILTERING::accepts_itself(int row, const QModelIndex& parent)
{
    if (m_keep_depth == 0)
        return m_proxy.filter_accepts_row_itself(row, parent);
    if (const quint16* bits = get_bits(row, parent); bits != nullptr && (*bits & ITSELF_KNOWN) != 0)
        return (*bits & ITSELF) != 0;
    const bool result = m_proxy.filter_accepts_row_itself(row, parent);
    if (quint16* bits = get_bits(row, parent))
        set_known(*bits, ITSELF_KNOWN, ITSELF, result);
    return result;
}

bool TOLV_TREE_FILTERING::accepts_children(int row, const QModelIndex& parent)
{
    if (m_keep_depth == 0)
        return m_proxy.children_is_accepted(row, parent);
    if (const quint16* bits = get_bits(row, parent); bits != nullptr && (*bits & CHILDREN_KNOWN) != 0)
        return (*bits & CHILDREN) != 0;
    const bool result = m_proxy.children_is_accepted(row, parent);
    if (quint16* bits = get_bits(row, parent))
        set_known(*bits, CHILDREN_KNOWN, CHILDREN, result);
    return result;
}

bool TOLV_TREE_FILTERING::accepts_line(const QModelIndex& index)
{
    if (m_question_depth > 0 && m_has_line && m_line_end == index)
        return m_is_line_accepted;
    bool result = false;
    for (QModelIndex i = index; i.isValid() && !result; i = i.parent())
        result = accepts_itself(i.row(), i.parent());
    m_has_line = m_question_depth > 0;
    m_line_end = index;
    m_is_line_accepted = result;
    return result;
}

bool TOLV_TREE_FILTERING::is_to_be_shown(const QModelIndex& index)
{
    const QScopedValueRollback<bool> uncounted(m_is_counting, false);
    return m_proxy.filterAcceptsRow(index.row(), index.parent());
}

bool TOLV_TREE_FILTERING::is_mapped(int row, const QModelIndex& parent)
{
    if (m_is_looking_up)
        return false;
    const QScopedValueRollback<bool> looking_up(m_is_looking_up, true);
    const QAbstractItemModel* source = m_proxy.sourceModel();
    const int column_count = source->columnCount(parent);
    int column = 0;
    while (column < column_count && !m_proxy.filterAcceptsColumn(column, parent))
        ++column;
    return column < column_count &&
           m_proxy.QSortFilterProxyModel::mapFromSource(source->index(row, column, parent)).isValid();
}

bool TOLV_TREE_FILTERING::is_shown(const QModelIndex& index) const
{
    return m_proxy.mapFromSource(index).isValid();
}

void TOLV_TREE_FILTERING::filter(const std::function<void()>& change)
{
    m_is_all_counted = false;
    if (m_proxy.sourceModel() == nullptr || m_keep_depth > 0 || m_change_depth > 0)
    {
        forget();
        change();
        return;
    }
    const KEPT_ANSWERS kept(*this);
    m_was_disturbed = false;
    const bool was_mapped = record_levels(change);
    if (!was_mapped)
        return;
    decide();
    if (m_was_disturbed)
    {
        m_proxy.invalidate();
        return;
    }
    // The order of rows that are sorted once and not kept sorted would be lost in a change of layout.
    const EXTENT extent = get_extent();
    const bool is_order_old = m_proxy.sortColumn() >= 0 && !m_proxy.dynamicSortFilter();
    if (extent.run_count == 0)
        return;
    if (is_order_old || (extent.run_count <= MAX_RUNS && extent.cost <= MAX_COST))
    {
        m_proxy.QSortFilterProxyModel::invalidateFilter();
        return;
    }
    take_out_marked_rows();
    m_proxy.invalidate();
    map_levels_again();
}

void TOLV_TREE_FILTERING::filter_again()
{
    const QScopedValueRollback<bool> uncounted(m_is_counting, false);
    filter([this] { m_proxy.QSortFilterProxyModel::invalidateFilter(); });
}

void TOLV_TREE_FILTERING::count_all()
{
    const QAbstractItemModel* source = m_proxy.sourceModel();
    if (m_is_all_counted || source == nullptr || m_keep_depth > 0)
        return;
    m_is_all_counted = true;
    const KEPT_ANSWERS kept(*this);
    std::vector<QModelIndex> open{QModelIndex()};
    while (!open.empty())
    {
        const QModelIndex parent = open.back();
        open.pop_back();
        const int count = m_proxy.rowCount(parent);
        for (int row = 0; row < count; ++row)
        {
            const QModelIndex index = m_proxy.index(row, 0, parent);
            if (index.isValid() && source->rowCount(m_proxy.mapToSource(index)) > 0)
                open.push_back(index);
        }
    }
}

void TOLV_TREE_FILTERING::forget()
{
    m_was_disturbed = true;
    m_level_of.clear();
    m_levels.clear();
    m_last_level = nullptr;
    m_has_line = false;
}

void TOLV_TREE_FILTERING::look_again(const QModelIndex& index)
{
    const bool is_done =
        QMetaObject::invokeMethod(&m_proxy, "_q_sourceDataChanged", Qt::DirectConnection, Q_ARG(QModelIndex, index),
                                  Q_ARG(QModelIndex, index), Q_ARG(QVector<int>, QVector<int>()));
    if (!is_done)
        m_proxy.QSortFilterProxyModel::invalidateFilter();
}

// Levels below a hidden row may be mapped, from before or for a change there, without a row. They are dropped with a row
// that goes, and so the row comes and goes once unseen. A row that a subclass wants to stay is then seen as it is.
void TOLV_TREE_FILTERING::show(const QModelIndex& index)
{
    if (!is_to_be_shown(index))
        return;
    if (m_proxy.sourceModel()->rowCount(index) > 0)
    {
        const QSignalBlocker unseen(m_proxy);
        const QScopedValueRollback<int> forced(m_answer, ANSWER_FORCED);
        m_forced_row = index;
        for (const bool answer : {true, false})
        {
            m_forced_answer = answer;
            look_again(index);
        }
    }
    if (is_mapped(index.row(), index.parent()))
        m_proxy.invalidate();
    else
        look_again(index);
}

void TOLV_TREE_FILTERING::begin_change()
{
    ++m_change_depth;
    ++m_question_depth;
}

void TOLV_TREE_FILTERING::end_change()
{
    if (m_change_depth == 0)
        return;
    --m_change_depth;
    if (--m_question_depth == 0)
        m_has_line = false;
}

void TOLV_TREE_FILTERING::end_all_changes()
{
    while (m_change_depth > 0)
        end_change();
}

bool TOLV_TREE_FILTERING::take_was_asked(const QModelIndex& parent)
{
    const bool result = m_was_asked;
    m_was_asked = false;
    m_asked_parent = parent;
    return result;
}

bool TOLV_TREE_FILTERING::accepts_by_rules(int row, const QModelIndex& parent)
{
    if (accepts_itself(row, parent) || (m_proxy.m_include_invisible_root_child && !parent.isValid()))
    {
        if (m_is_counting)
            TOLV_TREE_FILTER_PROXY_MODEL::count_match();
        return true;
    }
    return (m_proxy.m_include_child && accepts_line(parent)) || accepts_children(row, parent);
}

bool TOLV_TREE_FILTERING::accepts_by_rules_once(int row, const QModelIndex& parent)
{
    if (m_keep_depth == 0)
        return accepts_by_rules(row, parent);
    if (const quint16* bits = get_bits(row, parent); bits != nullptr && (*bits & ACCEPTED_KNOWN) != 0)
        return (*bits & ACCEPTED) != 0;
    const bool result = accepts_by_rules(row, parent);
    if (quint16* bits = get_bits(row, parent))
        set_known(*bits, ACCEPTED_KNOWN, ACCEPTED, result);
    return result;
}

TOLV_TREE_FILTERING::LEVEL* TOLV_TREE_FILTERING::find_level(const QModelIndex& parent)
{
    if (m_last_level != nullptr && m_last_level->parent == parent)
        return m_last_level;
    LEVEL* level = m_level_of.value(parent, nullptr);
    if (level != nullptr)
        m_last_level = level;
    return level;
}

TOLV_TREE_FILTERING::LEVEL& TOLV_TREE_FILTERING::get_level(const QModelIndex& parent)
{
    if (LEVEL* level = find_level(parent))
        return *level;
    m_levels.push_back(std::make_unique<LEVEL>());
    LEVEL* level = m_levels.back().get();
    level->parent = parent;
    level->rows.resize(static_cast<std::size_t>(m_proxy.sourceModel()->rowCount(parent)));
    m_level_of.insert(parent, level);
    m_last_level = level;
    return *level;
}

quint16* TOLV_TREE_FILTERING::get_bits(int row, const QModelIndex& parent)
{
    LEVEL& level = get_level(parent);
    const auto i = static_cast<std::size_t>(row);
    return row >= 0 && i < level.rows.size() ? &level.rows[i] : nullptr;
}

bool TOLV_TREE_FILTERING::get_mark(int row, const QModelIndex& parent)
{
    const LEVEL* level = find_level(parent);
    const auto i = static_cast<std::size_t>(row);
    if (level == nullptr || !level->is_recorded || row < 0 || i >= level->rows.size())
        return is_mapped(row, parent);
    const bool is_marked = level->is_reachable && (level->rows[i] & MARKED) != 0;
    return ((level->rows[i] & MAPPED) != 0) != is_marked;
}

bool TOLV_TREE_FILTERING::record(int row, const QModelIndex& parent)
{
    const bool result = is_mapped(row, parent);
    LEVEL& level = get_level(parent);
    const auto i = static_cast<std::size_t>(row);
    if (row < 0 || i >= level.rows.size() || (level.rows[i] & ASKED) != 0)
        return result;
    level.is_recorded = true;
    set_known(level.rows[i], ASKED, MAPPED, result);
    if (result)
        level.mapped.push_back(row);
    return result;
}

// Where there is a filter already, the base class would map the top level by it only to filter it again: that level is
// mapped without a row first. False if no row is mapped.
bool TOLV_TREE_FILTERING::record_levels(const std::function<void()>& change)
{
    {
        const QScopedValueRollback<int> none(m_answer, ANSWER_NO);
        m_was_asked = false;
        if (!m_proxy.has_empty_pattern())
            m_proxy.QSortFilterProxyModel::rowCount(QModelIndex());
    }
    if (m_was_asked)
    {
        {
            const QScopedValueRollback<int> none(m_answer, ANSWER_NO);
            change();
        }
        m_proxy.invalidate();
        return false;
    }
    {
        const QScopedValueRollback<int> as_mapped(m_answer, ANSWER_AS_MAPPED);
        m_was_disturbed = false;
        change();
    }
    return !m_levels.empty() || m_was_disturbed;
}

void TOLV_TREE_FILTERING::decide()
{
    const std::size_t count = m_levels.size();
    for (std::size_t i = 0; i < count && !m_was_disturbed; ++i)
    {
        LEVEL& level = *m_levels[i];
        if (!level.is_recorded)
            continue;
        const QModelIndex parent = level.parent;
        level.is_reachable = !parent.isValid();
        if (parent.isValid())
        {
            const LEVEL* above = find_level(parent.parent());
            const quint16 bits = above != nullptr ? above->rows.at(static_cast<std::size_t>(parent.row())) : 0;
            level.is_reachable = above != nullptr && above->is_reachable && (bits & MAPPED) != 0 && (bits & STAYS) != 0;
        }
        const std::size_t row_count = level.is_reachable ? level.rows.size() : 0;
        for (std::size_t row = 0; row < row_count; ++row)
        {
            if ((level.rows[row] & ASKED) == 0)
                continue;
            const bool stays = m_proxy.filterAcceptsRow(static_cast<int>(row), parent);
            if (m_was_disturbed)
                return;
            set_known(level.rows[row], 0, STAYS, stays);
        }
    }
}

TOLV_TREE_FILTERING::EXTENT TOLV_TREE_FILTERING::get_extent() const
{
    EXTENT extent;
    const qint64 persistent_count = m_proxy.persistentIndexList().size();
    const bool is_sorted = m_proxy.sortColumn() >= 0;
    for (const std::unique_ptr<LEVEL>& level : m_levels)
    {
        if (level->is_reachable)
            add_extent(*level, is_sorted, persistent_count, extent);
    }
    return extent;
}

void TOLV_TREE_FILTERING::add_extent(const LEVEL& level, bool is_sorted, qint64 persistent_count, EXTENT& extent) const
{
    qint64 run_count = 0;
    bool is_in_run = false;
    for (const int row : level.mapped)
    {
        const bool goes = (level.rows[static_cast<std::size_t>(row)] & STAYS) == 0;
        run_count += goes && !is_in_run ? 1 : 0;
        is_in_run = goes;
    }
    is_in_run = false;
    for (const quint16 bits : level.rows)
    {
        if ((bits & STAYS) == 0)
            continue;
        const bool comes = (bits & MAPPED) == 0;
        run_count += comes && (!is_in_run || is_sorted) ? 1 : 0; // where it comes to among sorted rows is not known
        is_in_run = comes;
    }
    extent.run_count += run_count;
    extent.cost += run_count * (static_cast<qint64>(level.rows.size()) + persistent_count * COST_OF_PERSISTENT_INDEX);
}

// A current row or a selection that goes moves to rows nearby, which may themselves be about to go: hence again, until no
// such row is left.
void TOLV_TREE_FILTERING::take_out_marked_rows()
{
    qint64 budget_for_views = MAX_COST_FOR_VIEWS;
    qint64 budget_for_others = MAX_COST_FOR_OTHERS;
    bool has_marks = mark_rows_that_come();
    while (true)
    {
        const QModelIndexList persistent = m_proxy.persistentIndexList();
        has_marks = mark_rows_that_go(get_indexes_of_views(m_proxy), persistent.size(), budget_for_views) || has_marks;
        has_marks = mark_rows_that_go(persistent, persistent.size(), budget_for_others) || has_marks;
        if (!has_marks)
            return;
        {
            const QScopedValueRollback<int> as_marked(m_answer, ANSWER_AS_MARKED);
            m_proxy.QSortFilterProxyModel::invalidateFilter();
        }
        if (m_was_disturbed)
            return;
        apply_marks();
        has_marks = false;
    }
}

bool TOLV_TREE_FILTERING::mark_rows_that_come()
{
    bool has_marks = false;
    for (const std::unique_ptr<LEVEL>& level : m_levels)
    {
        const qint64 column_count = m_proxy.sourceModel()->columnCount(level->parent);
        if (!level->is_reachable ||
            static_cast<qint64>(level->mapped.size()) * column_count <= MAX_CELLS_WITHOUT_SHORT_CUT)
            continue;
        const auto first = std::find_if(level->rows.begin(), level->rows.end(),
                                        [](quint16 bits) { return (bits & STAYS) != 0 && (bits & MAPPED) == 0; });
        if (first == level->rows.end())
            continue;
        *first = static_cast<quint16>(*first | MARKED);
        level->has_marks = true;
        has_marks = true;
    }
    return has_marks;
}

bool TOLV_TREE_FILTERING::mark_rows_that_go(const QModelIndexList& indexes, qint64 persistent_count, qint64& budget)
{
    bool has_marks = false;
    for (const QModelIndex& index : indexes)
    {
        const QModelIndex row = index.isValid() ? find_row_that_goes(m_proxy.mapToSource(index)) : QModelIndex();
        if (row.isValid())
            has_marks = mark_run(row, persistent_count * COST_OF_PERSISTENT_INDEX, budget) || has_marks;
    }
    return has_marks;
}

bool TOLV_TREE_FILTERING::mark_run(const QModelIndex& source, qint64 cost, qint64& budget)
{
    LEVEL& level = *find_level(source.parent());
    const auto goes = [&level](int row) { return (level.rows[static_cast<std::size_t>(row)] & STAYS) == 0; };
    cost += static_cast<qint64>(level.rows.size());
    if (cost > budget || (level.rows[static_cast<std::size_t>(source.row())] & MARKED) != 0)
        return false;
    const auto place = std::find(level.mapped.cbegin(), level.mapped.cend(), source.row());
    if (place == level.mapped.cend())
        return false;
    budget -= cost;
    auto first = place;
    while (first != level.mapped.cbegin() && goes(*(first - 1)))
        --first;
    for (auto i = first; i != level.mapped.cend() && goes(*i); ++i)
        level.rows[static_cast<std::size_t>(*i)] |= MARKED;
    level.has_marks = true;
    return true;
}

/// The topmost of a row and its ancestors that goes; invalid if all stay.
QModelIndex TOLV_TREE_FILTERING::find_row_that_goes(const QModelIndex& source)
{
    QModelIndex result;
    for (QModelIndex i = source; i.isValid(); i = i.parent())
    {
        const LEVEL* level = find_level(i.parent());
        if (level == nullptr || !level->is_reachable)
            continue;
        const quint16 bits = level->rows.at(static_cast<std::size_t>(i.row()));
        if ((bits & MAPPED) != 0 && (bits & STAYS) == 0)
            result = i;
    }
    return result;
}

void TOLV_TREE_FILTERING::apply_marks()
{
    for (const std::unique_ptr<LEVEL>& level : m_levels)
    {
        if (!level->has_marks)
            continue;
        std::vector<quint16>& rows = level->rows;
        const auto has_gone = [&rows](int row)
        { return (rows[static_cast<std::size_t>(row)] & (MARKED | STAYS)) == MARKED; };
        level->mapped.erase(std::remove_if(level->mapped.begin(), level->mapped.end(), has_gone), level->mapped.end());
        for (std::size_t row = 0; row < rows.size(); ++row)
        {
            if ((rows[row] & MARKED) == 0)
                continue;
            rows[row] = static_cast<quint16>((rows[row] & ~MARKED) ^ MAPPED);
        }
        level->has_marks = false;
    }
}

void TOLV_TREE_FILTERING::map_levels_again()
{
    const std::size_t count = m_levels.size();
    for (std::size_t i = 0; i < count && !m_was_disturbed; ++i)
    {
        const LEVEL& level = *m_levels[i];
        if (!level.is_reachable)
            continue;
        const QModelIndex proxy_parent = m_proxy.mapFromSource(level.parent);
        if (proxy_parent.isValid() || !level.parent.isValid())
            m_proxy.rowCount(proxy_parent);
    }
}
