#pragma once

#include "tolv_action_auto.h"
#include "tolv_frozen_tree_view.h"
#include "tolv_tree_view.h"

#include <QPointer>
#include <QVector>

#include <functional>

class NAVIGATOR_TREE_VIEW;
class QMenu;
class QSortFilterProxyModel;

/// The names of a navigator's tree, in front of it: see NAVIGATOR_TREE_VIEW. Keys go to the tree.
class NAVIGATOR_NAME_VIEW : public TOLV_FROZEN_TREE_VIEW
{
    Q_OBJECT

public:
    explicit NAVIGATOR_NAME_VIEW(NAVIGATOR_TREE_VIEW* tree);

    /// Opens rows with one layout at the end, and no signals.
    void open_rows(const QModelIndexList& rows);
    /// The columns of the tree.
    void populate_column_selection_menu(QMenu* menu) override;

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    NAVIGATOR_TREE_VIEW* m_tree;
};

/// The tree of a navigator page. Its first column, the names, stands still when the tree is scrolled sideways: where
/// there is something to scroll, a NAVIGATOR_NAME_VIEW stands over it, unless names take up most of the width.
///
/// A tree may have more rows than anybody can wait for. What unfolds many rows stops at LARGEST_UNFOLDING and says so by
/// unfolding_ended(); it is told to both views row by row, as comparing the two would visit all rows of the model.
///
/// The standard key copies the selected rows as the model's own data, as a drag takes them; a model without such data is
/// copied with all visible columns.
class NAVIGATOR_TREE_VIEW : public TOLV_TREE_VIEW
{
    Q_OBJECT

public:
    /// Rows that one command brings to the eye.
    static constexpr int LARGEST_UNFOLDING = 10000;
    /// Rows below folded ones in which open rows are looked for.
    static constexpr int LARGEST_SEARCH = 20000;

    /// @param object_name that of the names is followed by "_names"
    NAVIGATOR_TREE_VIEW(const QString& object_name, QWidget* parent);
    ~NAVIGATOR_TREE_VIEW() override;

    /// In place of setModel(), null for none; the selection model is new behind it.
    void show_model(QSortFilterProxyModel* model);

    /// Unfolds what is below a row, for an invalid index all, level by level, as far as `is_wanted` says yes to a row; an
    /// empty function always does.
    void unfold(const QModelIndex& index, const std::function<bool(const QModelIndex&)>& is_wanted = {});
    /// Rows that are open, as indexes of the source model. Below folded rows only so many are looked at.
    QVector<QPersistentModelIndex> get_unfolded() const;
    /// Unfolds these rows, as far as they are shown, and folds all others.
    void set_unfolded(const QVector<QPersistentModelIndex>& source_rows);

    /// Runs the menu of the selected rows.
    void show_menu(const QPoint& global_position);

public slots:
    void unfold_all();
    void unfold_selected();
    void fold_all();
    /// Copies the selected rows, see above. Nothing selected leaves the clipboard alone.
    void copy_selection();
    /// Copies the selected rows as a text with all columns that are shown.
    void copy_rows();

signals:
    /// An unfolding has ended; `is_complete` tells whether nothing was left out.
    void unfolding_ended(bool is_complete);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void follow_expanded(const QModelIndex& index);
    void follow_collapsed(const QModelIndex& index);
    void take_width(int column, int old_width, int width);
    void place_names();

private:
    void open_rows(const QModelIndexList& rows);
    void collect_unfolded(const QModelIndex& parent, bool is_seen, int* budget,
                          QVector<QPersistentModelIndex>* rows) const;
    void add_action(QMenu* menu, TOLV_ACTION_ENUM command, const char* slot, bool is_enabled);

    NAVIGATOR_NAME_VIEW* m_names;
    QWidget* m_border; ///< a line behind the names
    QPointer<QSortFilterProxyModel> m_model;
    bool m_is_taking_width = false;
};
