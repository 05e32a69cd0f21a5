#include "preferences_model.h"

#include "preferences_session.h"
#include "tolv_global.h"

#include <QFont>

#include <algorithm>

namespace
{
// The internal id of a group; that of a row is the number of its group, counted from 1.
constexpr quintptr GROUP_ID = 0;
} // namespace

// ---- The model ------------------------------------------------------------------------------------------------------

PREFERENCES_MODEL::PREFERENCES_MODEL(PREFERENCES_SESSION& session, const PREFERENCES_TABLE& table, QObject* parent)
    : QAbstractItemModel(parent), m_table(table)
{
    for (int number = 0; number < table.get_rows().size(); ++number)
    {
        const QString& title = table.get_rows()[number].group;
        auto group =
            std::find_if(m_groups.begin(), m_groups.end(), [&title](const GROUP& each) { return each.title == title; });
        if (group == m_groups.end())
            group = m_groups.insert(m_groups.end(), {title, {}});
        group->rows.append(number);
    }
    TOLV_SAFE_CONNECT(&session, SIGNAL(changed()), this, SLOT(refresh()));
}

void PREFERENCES_MODEL::set_sample_size(const QSize& size)
{
    m_sample_size = size;
    refresh();
}

QModelIndex PREFERENCES_MODEL::find_resource(int resource) const
{
    for (int group = 0; group < m_groups.size(); ++group)
    {
        const QVector<int>& rows = m_groups[group].rows;
        for (int row = 0; row < rows.size(); ++row)
        {
            if (m_table.get_rows()[rows[row]].resource == resource)
                return index(row, COLUMN_NAME, index(group, 0));
        }
    }
    return QModelIndex();
}

QSet<int> PREFERENCES_MODEL::get_resources(const QString& group) const
{
    QSet<int> resources;
    for (const PREFERENCES_TABLE::ROW& row : m_table.get_rows())
    {
        if (row.group == group)
            resources.insert(row.resource);
    }
    return resources;
}

QSet<int> PREFERENCES_MODEL::get_resources() const
{
    QSet<int> resources;
    for (const PREFERENCES_TABLE::ROW& row : m_table.get_rows())
        resources.insert(row.resource);
    return resources;
}

QModelIndex PREFERENCES_MODEL::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return QModelIndex();
    return createIndex(row, column, parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : GROUP_ID);
}

QModelIndex PREFERENCES_MODEL::parent(const QModelIndex& child) const
{
    if (!child.isValid() || child.internalId() == GROUP_ID)
        return QModelIndex();
    return createIndex(static_cast<int>(child.internalId()) - 1, 0, GROUP_ID);
}

int PREFERENCES_MODEL::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return m_groups.size();
    return parent.internalId() == GROUP_ID && parent.column() == 0 ? m_groups[parent.row()].rows.size() : 0;
}

int PREFERENCES_MODEL::columnCount(const QModelIndex&) const
{
    return COLUMN_COUNT;
}

QVariant PREFERENCES_MODEL::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    if (index.internalId() == GROUP_ID)
        return get_group_data(m_groups[index.row()], index.column(), role);
    return get_row_data(m_groups[static_cast<int>(index.internalId()) - 1].rows[index.row()], index.column(), role);
}

QVariant PREFERENCES_MODEL::headerData(int section, Qt::Orientation orientation, int role) const
{
    const QString titles[] = {tr("Name"), tr("Value"), tr("State")};
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= COLUMN_COUNT)
        return QVariant();
    return titles[section];
}

void PREFERENCES_MODEL::refresh()
{
    for (int group = 0; group < m_groups.size(); ++group)
    {
        const QModelIndex parent = index(group, 0);
        emit dataChanged(index(0, 0, parent), index(m_groups[group].rows.size() - 1, COLUMN_COUNT - 1, parent));
    }
    if (!m_groups.isEmpty())
        emit dataChanged(index(0, 0), index(m_groups.size() - 1, COLUMN_COUNT - 1));
}

QVariant PREFERENCES_MODEL::get_group_data(const GROUP& group, int column, int role) const
{
    if (role == ROLE_RESOURCE)
        return 0;
    if (role == ROLE_GROUP)
        return group.title;
    if (role == Qt::FontRole && column == COLUMN_NAME)
    {
        QFont font;
        font.setBold(true);
        return font;
    }
    if (role == Qt::DisplayRole && column != COLUMN_VALUE)
        return column == COLUMN_NAME ? group.title : get_group_state(group);
    return QVariant();
}

QVariant PREFERENCES_MODEL::get_row_data(int number, int column, int role) const
{
    const PREFERENCES_TABLE::ROW& row = m_table.get_rows()[number];
    switch (role)
    {
    case ROLE_RESOURCE:
        return row.resource;
    case ROLE_GROUP:
        return row.group;
    case ROLE_SEARCH:
        return row.group + QLatin1Char('\n') + row.title + QLatin1Char('\n') + row.name;
    case Qt::ToolTipRole:
        return row.name;
    case Qt::DecorationRole:
        return column == COLUMN_VALUE ? QVariant(m_table.get_icon(row.resource, m_sample_size)) : QVariant();
    case Qt::DisplayRole:
        if (column == COLUMN_NAME)
            return row.title;
        return column == COLUMN_VALUE ? m_table.get_value(row.resource) : get_state(row.resource);
    default:
        return QVariant();
    }
}

QString PREFERENCES_MODEL::get_group_state(const GROUP& group) const
{
    int unsaved = 0;
    int changed = 0;
    for (const int number : group.rows)
    {
        unsaved += m_table.is_unsaved(m_table.get_rows()[number].resource) ? 1 : 0;
        changed += m_table.is_changed(m_table.get_rows()[number].resource) ? 1 : 0;
    }
    if (unsaved > 0)
        return tr("%1 not saved").arg(unsaved);
    return changed > 0 ? tr("%1 changed").arg(changed) : QString();
}

QString PREFERENCES_MODEL::get_state(int resource) const
{
    if (m_table.is_unsaved(resource))
        return tr("not saved");
    return m_table.is_changed(resource) ? tr("changed") : QString();
}

// ---- The filter -----------------------------------------------------------------------------------------------------

PREFERENCES_FILTER::PREFERENCES_FILTER(QObject* parent) : QSortFilterProxyModel(parent)
{
    setRecursiveFilteringEnabled(true);
    setDynamicSortFilter(false); // values change, names do not
}

void PREFERENCES_FILTER::set_search(const QString& text)
{
    m_words = text.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    invalidateFilter();
}

bool PREFERENCES_FILTER::filterAcceptsRow(int source_row, const QModelIndex& source_parent) const
{
    if (!source_parent.isValid())
        return m_words.isEmpty(); // a tool is shown for the sake of its rows
    const QString text =
        sourceModel()->index(source_row, 0, source_parent).data(PREFERENCES_MODEL::ROLE_SEARCH).toString();
    return std::all_of(m_words.begin(), m_words.end(),
                       [&text](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
}
