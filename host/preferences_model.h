#pragma once

#include <QAbstractItemModel>
#include <QSet>
#include <QSize>
#include <QSortFilterProxyModel>
#include <QStringList>
#include <QVector>

class PREFERENCES_SESSION;
class PREFERENCES_TABLE;

/// The rows of a table of the preferences below the tools that they belong to: two levels. What is shown follows the
/// session.
class PREFERENCES_MODEL : public QAbstractItemModel
{
    Q_OBJECT

public:
    enum COLUMN
    {
        COLUMN_NAME,
        COLUMN_VALUE,
        COLUMN_STATE, ///< "changed", "not saved", or nothing; how many of them in the row of a tool
        COLUMN_COUNT
    };

    enum ROLE
    {
        ROLE_RESOURCE = Qt::UserRole, ///< the enumerator; 0 in the row of a tool
        ROLE_GROUP,                   ///< title of the tool
        ROLE_SEARCH                   ///< all texts by which a row can be found
    };

    /// Both must outlive the model.
    PREFERENCES_MODEL(PREFERENCES_SESSION& session, const PREFERENCES_TABLE& table, QObject* parent = nullptr);

    /// Size of the samples in COLUMN_VALUE, in logical pixels.
    void set_sample_size(const QSize& size);

    /// The row of a resource; invalid for none.
    QModelIndex find_resource(int resource) const;
    /// The resources of a tool.
    QSet<int> get_resources(const QString& group) const;
    /// All resources.
    QSet<int> get_resources() const;

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private slots:
    void refresh();

private:
    struct GROUP
    {
        QString title;
        QVector<int> rows; ///< numbers of the table's rows
    };

    QVariant get_group_data(const GROUP& group, int column, int role) const;
    QVariant get_row_data(int number, int column, int role) const;
    QString get_group_state(const GROUP& group) const;
    QString get_state(int resource) const;

    const PREFERENCES_TABLE& m_table;
    QVector<GROUP> m_groups;
    QSize m_sample_size = QSize(28, 14);
};

/// The rows in which each word of a search occurs, in their own title, in that of their tool or in the enumerator's
/// name, and the tools of these rows.
class PREFERENCES_FILTER : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit PREFERENCES_FILTER(QObject* parent = nullptr);

    /// Words divided by blanks, letter case aside; an empty text shows all.
    void set_search(const QString& text);

protected:
    bool filterAcceptsRow(int source_row, const QModelIndex& source_parent) const override;

private:
    QStringList m_words;
};
