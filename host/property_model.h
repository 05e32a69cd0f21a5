#pragma once

#include <QAbstractItemModel>
#include <QPair>
#include <QVector>

/// Names and values in titled groups: two levels, two columns. What it shows is small; it is replaced as a whole.
class PROPERTY_MODEL : public QAbstractItemModel
{
    Q_OBJECT

public:
    struct GROUP
    {
        QString title;
        QVector<QPair<QString, QString>> rows; ///< name, value
    };

    explicit PROPERTY_MODEL(QObject* parent = nullptr);

    /// Groups without rows are left out.
    void set_groups(const QVector<GROUP>& groups);

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    bool is_group(const QModelIndex& index) const;

    QVector<GROUP> m_groups;
};
