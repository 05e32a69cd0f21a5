#pragma once

#include "tolv_assignment.h"

#include <QAbstractTableModel>
#include <QStringList>
#include <QVector>

/// The assignments of a design as a table: what is assigned, to which instance, and whether it counts. A row is a
/// TOLV_ASSIGNMENT: its first text is the instance, the second the assignment's name, the third the value, the flag
/// whether it is enabled; the others are kept as they are and not shown.
///
/// Rows are copied and dragged as assignments and as a text with a line for each row and tabs between its columns. What
/// is dropped or pasted may be assignments, instance names or such a text, in this order of preference: instance names,
/// and lines without a tab, make rows without an assignment's name. Every change can be undone.
class ASSIGNMENT_MODEL : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum COLUMN_NUMBER
    {
        COLUMN_TO,
        COLUMN_NAME,
        COLUMN_VALUE,
        COLUMN_ENABLED, ///< a check box, with a word for it where boxes are hard to see
        COLUMN_COUNT
    };

    /// Rows that are taken over in one go.
    static constexpr int LARGEST_PASTE = 100000;

    explicit ASSIGNMENT_MODEL(QObject* parent = nullptr);
    ~ASSIGNMENT_MODEL() override;

    /// Replaces all; there is nothing to undo behind it, and the table counts as saved.
    void set_assignments(const TOLV_ASSIGNMENT_LIST& assignments);
    TOLV_ASSIGNMENT_LIST get_assignments() const;

    /// Whether anything was changed since set_assignments() or set_saved().
    bool is_modified() const;
    void set_saved();

    /// Takes over what the data holds, from row `row` on. Returns how many rows came in: 0 where the data holds nothing
    /// of the kind. What is more than LARGEST_PASTE is left out and counted in `left_out`, which may be null.
    int paste(const QMimeData* pasted, int row, int* left_out = nullptr);
    /// Removes rows, in any order, as one change.
    void remove(const QVector<int>& rows);

    bool can_undo() const;
    bool can_redo() const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    bool insertRows(int row, int count, const QModelIndex& parent = QModelIndex()) override;
    bool removeRows(int row, int count, const QModelIndex& parent = QModelIndex()) override;
    QStringList mimeTypes() const override;
    /// The caller owns it; null without an index.
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    bool canDropMimeData(const QMimeData* dropped, Qt::DropAction action, int row, int column,
                         const QModelIndex& parent) const override;
    bool dropMimeData(const QMimeData* dropped, Qt::DropAction action, int row, int column,
                      const QModelIndex& parent) override;
    Qt::DropActions supportedDropActions() const override;

public slots:
    void undo();
    void redo();

signals:
    /// Rows have come, gone or changed, or been saved.
    void changed();

private:
    using ROWS = QList<TOLV_ASSIGNMENT>;

    static ROWS read(const QMimeData* pasted);
    static ROWS read_text(const QString& text);
    QString* get_text(int row, int column);
    void remember();
    void replace_by(QVector<ROWS>* stack, QVector<ROWS>* others);

    ROWS m_rows;
    QVector<ROWS> m_undo; ///< the table before each change, the latest last
    QVector<ROWS> m_redo;
    bool m_is_modified = false;
};
