#pragma once

#include "tolv_tree_item_delegate.h"
#include "tolv_tree_view.h"

class ASSIGNMENT_MODEL;

/// Edits a cell of the assignments. The names of assignments are completed: those that stand in the table already, and a
/// few that many tools know.
class ASSIGNMENT_DELEGATE : public TOLV_TREE_ITEM_DELEGATE
{
    Q_OBJECT

public:
    explicit ASSIGNMENT_DELEGATE(QObject* parent);
    ~ASSIGNMENT_DELEGATE() override;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

/// The table of assignments. Cells are edited in place; the arrow keys go from cell to cell. Commands act on the rows of
/// all selected cells. Instances from the navigator, assignments and texts are pasted in and dropped.
class ASSIGNMENT_VIEW : public TOLV_TREE_VIEW
{
    Q_OBJECT

public:
    /// @param model not owned; must outlive the view
    ASSIGNMENT_VIEW(ASSIGNMENT_MODEL* model, QWidget* parent);
    /// Stores the columns.
    ~ASSIGNMENT_VIEW() override;

    /// Rows with a selected cell, in order.
    QVector<int> get_selected_rows() const;

public slots:
    /// Adds an empty row behind the current one and begins to edit it.
    void add_row();
    void remove_rows();
    void copy_rows();
    /// Behind the last selected row, or at the end.
    void paste_rows();

signals:
    /// A paste or a drop has brought nothing, or not all.
    void complained(const QString& text);
    /// Other cells are selected.
    void selection_changed();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

private:
    void set_first_widths();
    bool paste(const QMimeData* pasted, int row);

    ASSIGNMENT_MODEL* m_assignments;
};
