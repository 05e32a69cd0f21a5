#include "tolv_tree_filter_proxy_model.h"

#include "tolv_global.h"
#include "tolv_mem.h"
#include "tolv_tree_filter_changes_p.h"
#include "tolv_tree_filtering_p.h"

#include <QRegExp>
#include <QStringList>

#include <utility>

TOLV_MEM_INITIALIZER();

namespace
{
/// Rows that matched, of whichever proxy of the process filtered last.
int s_result_counter = 0;
/// The proxy that filtered last; null if there is none any more.
TOLV_TREE_FILTER_PROXY_MODEL* s_last_filtered = nullptr;
} // namespace

TOLV_TREE_FILTER_PROXY_MODEL::TOLV_TREE_FILTER_PROXY_MODEL(QObject* parent)
    : QSortFilterProxyModel(parent), m_filtering(std::make_unique<TOLV_TREE_FILTERING>(*this)),
      m_changes(std::make_unique<TOLV_TREE_FILTER_CHANGES>(*this, *m_filtering))
{
}

TOLV_TREE_FILTER_PROXY_MODEL::~TOLV_TREE_FILTER_PROXY_MODEL()
{
    if (s_last_filtered == this)
        s_last_filtered = nullptr;
}

int TOLV_TREE_FILTER_PROXY_MODEL::get_search_result_count()
{
    if (s_last_filtered != nullptr)
        s_last_filtered->m_filtering->count_all();
    return s_result_counter;
}

QRegularExpression TOLV_TREE_FILTER_PROXY_MODEL::process_keyword_expression(QString keyword) const
{
    static const QRegularExpression white_space(QStringLiteral("\\s+"));
    const QString escaped = tolv_escape_regexp_chars(keyword);
    QString pattern = std::move(keyword); // a single word stands as it is
    if (pattern.startsWith(QLatin1Char('"')) && pattern.endsWith(QLatin1Char('"')))
        pattern = tolv_escape_regexp_chars(pattern.mid(1, pattern.length() - 2));
    else if (pattern.contains(QLatin1Char('*')))
        pattern = QString(escaped).replace(QLatin1String("\\*"), QLatin1String(".*"));
    else if (pattern.contains(white_space))
    {
        const QStringList words = escaped.split(white_space, Qt::SkipEmptyParts);
        pattern = words.join(QString());
        if (words.size() > 1)
            pattern = QLatin1String("^(?=.*") + words.join(QLatin1String(")(?=.*")) + QLatin1Char(')');
    }
    return QRegularExpression(pattern, QRegularExpression::CaseInsensitiveOption);
}

void TOLV_TREE_FILTER_PROXY_MODEL::set_include_child(bool include)
{
    m_include_child = include;
}

void TOLV_TREE_FILTER_PROXY_MODEL::set_include_invisible_root_child(bool include)
{
    m_include_invisible_root_child = include;
}

void TOLV_TREE_FILTER_PROXY_MODEL::clear_filter_column_list()
{
    m_filter_columns.clear();
}

void TOLV_TREE_FILTER_PROXY_MODEL::insert_filter_column(int column)
{
    m_filter_columns.append(column);
}

void TOLV_TREE_FILTER_PROXY_MODEL::setFilterRegularExpression(const QRegularExpression& expression)
{
    m_filtering->filter([&] { QSortFilterProxyModel::setFilterRegularExpression(expression); });
}

void TOLV_TREE_FILTER_PROXY_MODEL::setFilterRegularExpression(const QString& pattern)
{
    m_filtering->filter([&] { QSortFilterProxyModel::setFilterRegularExpression(pattern); });
}

// Of each change of the source model, one of ours has to hear before the base class does, and one after it.
void TOLV_TREE_FILTER_PROXY_MODEL::setSourceModel(QAbstractItemModel* source)
{
    m_filtering->forget();
    m_changes->leave(sourceModel());
    m_changes->hear_before(source);
    QSortFilterProxyModel::setSourceModel(source);
    m_changes->hear_after(source);
}

QModelIndex TOLV_TREE_FILTER_PROXY_MODEL::index(int row, int column, const QModelIndex& parent) const
{
    const TOLV_TREE_FILTERING::QUESTION question(*m_filtering);
    return QSortFilterProxyModel::index(row, column, parent);
}

int TOLV_TREE_FILTER_PROXY_MODEL::rowCount(const QModelIndex& parent) const
{
    const TOLV_TREE_FILTERING::QUESTION question(*m_filtering);
    return QSortFilterProxyModel::rowCount(parent);
}

int TOLV_TREE_FILTER_PROXY_MODEL::columnCount(const QModelIndex& parent) const
{
    const TOLV_TREE_FILTERING::QUESTION question(*m_filtering);
    return QSortFilterProxyModel::columnCount(parent);
}

bool TOLV_TREE_FILTER_PROXY_MODEL::hasChildren(const QModelIndex& parent) const
{
    const TOLV_TREE_FILTERING::QUESTION question(*m_filtering);
    return QSortFilterProxyModel::hasChildren(parent);
}

// The base class looks at the row alone, and maps levels below hidden rows for it.
QModelIndex TOLV_TREE_FILTER_PROXY_MODEL::mapFromSource(const QModelIndex& source_index) const
{
    const TOLV_TREE_FILTERING::QUESTION question(*m_filtering);
    if (source_index.isValid() && source_index.model() == sourceModel())
    {
        const QModelIndex parent = source_index.parent();
        if (parent.isValid() && !mapFromSource(parent).isValid())
            return QModelIndex();
    }
    return QSortFilterProxyModel::mapFromSource(source_index);
}

void TOLV_TREE_FILTER_PROXY_MODEL::start_filter(QString keyword, bool match_case, bool filter)
{
    emit filter_start();
    s_result_counter = 0;
    regexp_filter(std::move(keyword), match_case, filter);
}

void TOLV_TREE_FILTER_PROXY_MODEL::regexp_filter(QString keyword, bool match_case, bool filter)
{
    Q_UNUSED(match_case)
    keyword = std::move(keyword).trimmed();
    const QRegularExpression expression = process_keyword_expression(std::move(keyword));
    s_result_counter = 0;
    s_last_filtered = this;
    if (filter)
    {
        setFilterRegularExpression(expression);
        emit filter_content(expression);
    }
    else
    {
        setFilterRegularExpression(QRegularExpression(QStringLiteral(" "), expression.patternOptions()));
        emit search_content(expression);
    }
    if (expression.pattern().isEmpty())
        emit filter_cancel();
    else
        emit filter_done();
}

void TOLV_TREE_FILTER_PROXY_MODEL::regexp_filter(QString keyword, bool match_case)
{
    regexp_filter(std::move(keyword), match_case, true);
}

void TOLV_TREE_FILTER_PROXY_MODEL::regexp_filter(QString keyword)
{
    regexp_filter(std::move(keyword), true, true);
}

void TOLV_TREE_FILTER_PROXY_MODEL::invalidateFilter()
{
    m_filtering->filter([this] { QSortFilterProxyModel::invalidateFilter(); });
}

bool TOLV_TREE_FILTER_PROXY_MODEL::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    return m_filtering->accepts(row, parent);
}

bool TOLV_TREE_FILTER_PROXY_MODEL::filter_accepts_row_itself(int row, const QModelIndex& parent) const
{
    if (QSortFilterProxyModel::filterAcceptsRow(row, parent))
        return true;
    if (m_filter_columns.isEmpty() || sourceModel() == nullptr)
        return false;
    QString text;
    for (const int column : m_filter_columns)
    {
        const QModelIndex index = sourceModel()->index(row, column, parent);
        text += sourceModel()->data(index, Qt::DisplayRole).toString() + QLatin1Char(' ');
    }
    // A host may have set a wildcard or a fixed text by the base class.
    const QRegExp old_form = filterRegExp();
    return old_form.isEmpty() ? text.contains(filterRegularExpression()) : text.contains(old_form);
}

bool TOLV_TREE_FILTER_PROXY_MODEL::children_is_accepted(int row, const QModelIndex& parent) const
{
    if (sourceModel() == nullptr)
        return false;
    const QModelIndex index = sourceModel()->index(row, 0, parent);
    if (!index.isValid())
        return false;
    const int count = sourceModel()->rowCount(index);
    for (int child = 0; child < count; ++child)
    {
        if (m_filtering->accepts_itself(child, index) || m_filtering->accepts_children(child, index))
            return true;
    }
    return false;
}

void TOLV_TREE_FILTER_PROXY_MODEL::count_match()
{
    ++s_result_counter;
}

bool TOLV_TREE_FILTER_PROXY_MODEL::has_empty_pattern() const
{
    return filterRegularExpression().pattern().isEmpty() && filterRegExp().isEmpty();
}
