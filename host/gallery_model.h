#pragma once

#include "gallery_catalog.h"

#include <QAbstractTableModel>
#include <QSortFilterProxyModel>

/// All things of one kind, a row each.
class GALLERY_MODEL : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum ROLE
    {
        ROLE_VALUE = Qt::UserRole, ///< the enumerator, an int
        ROLE_NAME,                 ///< its name
        ROLE_SEARCH                ///< all texts of the row, the name included
    };

    explicit GALLERY_MODEL(GALLERY_KIND kind, QObject* parent = nullptr);

    GALLERY_KIND get_kind() const;
    /// Reads the values that are in force now.
    void refresh();
    /// The row's first cell; invalid where nothing has the name.
    QModelIndex find_name(const QString& name) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    const GALLERY_KIND m_kind;
    QVector<GALLERY_ENTRY> m_entries;
};

/// The rows that have all words of a search, in any order and letter case, in any of their texts. Sorting compares
/// numbers as numbers.
class GALLERY_FILTER : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    /// The model becomes the filter's.
    explicit GALLERY_FILTER(GALLERY_MODEL* model, QObject* parent = nullptr);

    GALLERY_MODEL* get_model() const;
    void set_search(const QString& text);

protected:
    bool filterAcceptsRow(int source_row, const QModelIndex& source_parent) const override;
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    GALLERY_MODEL* m_model;
    QStringList m_words;
};
