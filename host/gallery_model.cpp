#include "gallery_model.h"

#include "tolv_string_cmp.h"

#include <algorithm>

// ---- The model ------------------------------------------------------------------------------------------------------

GALLERY_MODEL::GALLERY_MODEL(GALLERY_KIND kind, QObject* parent)
    : QAbstractTableModel(parent), m_kind(kind), m_entries(GALLERY_CATALOG::make_entries(kind))
{
}

GALLERY_KIND GALLERY_MODEL::get_kind() const
{
    return m_kind;
}

void GALLERY_MODEL::refresh()
{
    m_entries = GALLERY_CATALOG::make_entries(m_kind); // as many as before, with the same names
    emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

QModelIndex GALLERY_MODEL::find_name(const QString& name) const
{
    const auto entry = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&name](const GALLERY_ENTRY& each) { return each.name == name; });
    return entry == m_entries.end() ? QModelIndex() : index(static_cast<int>(entry - m_entries.begin()), 0);
}

int GALLERY_MODEL::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_entries.size();
}

int GALLERY_MODEL::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : GALLERY_CATALOG::get_columns(m_kind).size();
}

QVariant GALLERY_MODEL::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    const GALLERY_ENTRY& entry = m_entries[index.row()];
    switch (role)
    {
    case Qt::DisplayRole:
        return entry.texts[index.column()];
    case Qt::DecorationRole:
        return index.column() == 0 && !entry.icon.isNull() ? QVariant(entry.icon) : QVariant();
    case Qt::ToolTipRole:
        return GALLERY_CATALOG::has_tiles(m_kind) ? entry.name : entry.texts[index.column()];
    case Qt::AccessibleTextRole:
        return entry.texts[index.column()].isEmpty() ? entry.name : entry.texts[index.column()];
    case ROLE_VALUE:
        return entry.value;
    case ROLE_NAME:
        return entry.name;
    case ROLE_SEARCH:
        return entry.texts.join(QLatin1Char('\n'));
    default:
        return QVariant();
    }
}

QVariant GALLERY_MODEL::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 || section >= columnCount())
        return QVariant();
    return GALLERY_CATALOG::get_columns(m_kind).at(section);
}

// ---- The filter -----------------------------------------------------------------------------------------------------

GALLERY_FILTER::GALLERY_FILTER(GALLERY_MODEL* model, QObject* parent) : QSortFilterProxyModel(parent), m_model(model)
{
    model->setParent(this);
    setSourceModel(model);
}

GALLERY_MODEL* GALLERY_FILTER::get_model() const
{
    return m_model;
}

void GALLERY_FILTER::set_search(const QString& text)
{
    const QStringList words = text.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words == m_words)
        return;
    m_words = words;
    invalidateFilter();
}

bool GALLERY_FILTER::filterAcceptsRow(int source_row, const QModelIndex& source_parent) const
{
    if (m_words.isEmpty())
        return true;
    const QModelIndex index = sourceModel()->index(source_row, 0, source_parent);
    const QString text = index.data(GALLERY_MODEL::ROLE_SEARCH).toString();
    return std::all_of(m_words.begin(), m_words.end(),
                       [&text](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
}

bool GALLERY_FILTER::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    const QString left_text = left.data().toString();
    const QString right_text = right.data().toString();
    if (left_text.isEmpty() && right_text.isEmpty()) // a column of pictures
        return left.row() < right.row();
    return tolv_string_cmp(left_text, right_text) < 0;
}
