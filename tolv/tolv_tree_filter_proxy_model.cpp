#include "tolv_tree_filter_proxy_model.h"

#include "tolv_global.h"
#include "tolv_mem.h"

#include <QStringList>

TOLV_MEM_INITIALIZER();

/// State of a filtering under way.
class TOLV_TREE_FILTERING
{
};

namespace
{
/// Rows that matched, of whichever proxy of the process filtered last.
int s_result_counter = 0;
} // namespace

TOLV_TREE_FILTER_PROXY_MODEL::TOLV_TREE_FILTER_PROXY_MODEL(QObject* parent) : QSortFilterProxyModel(parent)
{
}

TOLV_TREE_FILTER_PROXY_MODEL::~TOLV_TREE_FILTER_PROXY_MODEL() = default;

int TOLV_TREE_FILTER_PROXY_MODEL::get_search_result_count()
{
    return s_result_counter;
}

QRegularExpression TOLV_TREE_FILTER_PROXY_MODEL::process_keyword_expression(QString keyword) const
{
    static const QRegularExpression white_space(QStringLiteral("\\s+"));
    const QString escaped = tolv_escape_regexp_chars(keyword);
    QString pattern = keyword;
    if (keyword.startsWith(QLatin1Char('"')) && keyword.endsWith(QLatin1Char('"')))
        pattern = tolv_escape_regexp_chars(keyword.mid(1, keyword.length() - 2));
    else if (keyword.contains(QLatin1Char('*')))
        pattern = QString(escaped).replace(QLatin1String("\\*"), QLatin1String(".*"));
    else if (keyword.contains(white_space))
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

void TOLV_TREE_FILTER_PROXY_MODEL::setSourceModel(QAbstractItemModel* source)
{
    QSortFilterProxyModel::setSourceModel(source);
}

QModelIndex TOLV_TREE_FILTER_PROXY_MODEL::index(int row, int column, const QModelIndex& parent) const
{
    return QSortFilterProxyModel::index(row, column, parent);
}

int TOLV_TREE_FILTER_PROXY_MODEL::rowCount(const QModelIndex& parent) const
{
    return QSortFilterProxyModel::rowCount(parent);
}

bool TOLV_TREE_FILTER_PROXY_MODEL::hasChildren(const QModelIndex& parent) const
{
    return QSortFilterProxyModel::hasChildren(parent);
}

QModelIndex TOLV_TREE_FILTER_PROXY_MODEL::mapFromSource(const QModelIndex& source_index) const
{
    return QSortFilterProxyModel::mapFromSource(source_index);
}

void TOLV_TREE_FILTER_PROXY_MODEL::start_filter(QString keyword, bool match_case, bool filter)
{
    emit filter_start();
    s_result_counter = 0;
    regexp_filter(keyword, match_case, filter);
}

void TOLV_TREE_FILTER_PROXY_MODEL::regexp_filter(QString keyword, bool match_case, bool filter)
{
    Q_UNUSED(match_case)
    const QRegularExpression expression = process_keyword_expression(keyword.trimmed());
    s_result_counter = 0;
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
    regexp_filter(keyword, match_case, true);
}

void TOLV_TREE_FILTER_PROXY_MODEL::regexp_filter(QString keyword)
{
    regexp_filter(keyword, true, true);
}

bool TOLV_TREE_FILTER_PROXY_MODEL::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    if (filter_accepts_row_itself(row, parent) || (m_include_invisible_root_child && !parent.isValid()))
    {
        ++s_result_counter;
        return true;
    }
    if (m_include_child)
    {
        for (QModelIndex p = parent; p.isValid(); p = p.parent())
        {
            if (filter_accepts_row_itself(p.row(), p.parent()))
                return true;
        }
    }
    return children_is_accepted(row, parent);
}

bool TOLV_TREE_FILTER_PROXY_MODEL::filter_accepts_row_itself(int row, const QModelIndex& parent) const
{
    if (QSortFilterProxyModel::filterAcceptsRow(row, parent))
        return true;
    if (m_filter_columns.isEmpty())
        return false;
    QString text;
    for (const int column : m_filter_columns)
    {
        const QModelIndex index = sourceModel()->index(row, column, parent);
        text += sourceModel()->data(index, Qt::DisplayRole).toString() + QLatin1Char(' ');
    }
    return text.contains(filterRegularExpression());
}

bool TOLV_TREE_FILTER_PROXY_MODEL::children_is_accepted(int row, const QModelIndex& parent) const
{
    const QModelIndex index = sourceModel()->index(row, 0, parent);
    if (!index.isValid())
        return false;
    const int count = sourceModel()->rowCount(index);
    for (int child = 0; child < count; ++child)
    {
        if (filter_accepts_row_itself(child, index) || children_is_accepted(child, index))
            return true;
    }
    return false;
}
