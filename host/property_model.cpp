#include "property_model.h"

#include <QFont>

namespace
{
// The internal id of a group; that of a row is the number of its group, counted from 1.
constexpr quintptr GROUP_ID = 0;
} // namespace

PROPERTY_MODEL::PROPERTY_MODEL(QObject* parent) : QAbstractItemModel(parent)
{
}

void PROPERTY_MODEL::set_groups(const QVector<GROUP>& groups)
{
    beginResetModel();
    m_groups.clear();
    for (const GROUP& group : groups)
    {
        if (!group.rows.isEmpty())
            m_groups.append(group);
    }
    endResetModel();
}

QModelIndex PROPERTY_MODEL::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return QModelIndex();
    return createIndex(row, column, parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : GROUP_ID);
}

QModelIndex PROPERTY_MODEL::parent(const QModelIndex& child) const
{
    if (!child.isValid() || is_group(child))
        return QModelIndex();
    return createIndex(static_cast<int>(child.internalId()) - 1, 0, GROUP_ID);
}

int PROPERTY_MODEL::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return m_groups.size();
    return is_group(parent) && parent.column() == 0 ? m_groups[parent.row()].rows.size() : 0;
}

int PROPERTY_MODEL::columnCount(const QModelIndex&) const
{
    return 2;
}

QVariant PROPERTY_MODEL::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    if (is_group(index))
    {
        if (role == Qt::FontRole)
        {
            QFont font;
            font.setBold(true);
            return font;
        }
        return role == Qt::DisplayRole && index.column() == 0 ? m_groups[index.row()].title : QVariant();
    }
    const QPair<QString, QString>& row = m_groups[static_cast<int>(index.internalId()) - 1].rows[index.row()];
    if (role == Qt::DisplayRole)
        return index.column() == 0 ? row.first : row.second;
    if (role == Qt::ToolTipRole)
        return row.second.left(2000).toHtmlEscaped();
    return QVariant();
}

QVariant PROPERTY_MODEL::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section > 1)
        return QVariant();
    return section == 0 ? tr("Property") : tr("Value");
}

bool PROPERTY_MODEL::is_group(const QModelIndex& index) const
{
    return index.internalId() == GROUP_ID;
}
