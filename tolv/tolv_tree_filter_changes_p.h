#pragma once

#include <QList>
#include <QModelIndex>
#include <QObject>
#include <QPersistentModelIndex>
#include <QVector>

class QAbstractItemModel;
class TOLV_TREE_FILTERING;
class TOLV_TREE_FILTER_PROXY_MODEL;

/// Keeps the rules of TOLV_TREE_FILTER_PROXY_MODEL while the source model changes under a filter. The base class of the
/// proxy looks only at the rows that have changed; this looks at their ancestors and descendants.
class TOLV_TREE_FILTER_CHANGES : public QObject
{
    Q_OBJECT

public:
    TOLV_TREE_FILTER_CHANGES(TOLV_TREE_FILTER_PROXY_MODEL& proxy, TOLV_TREE_FILTERING& filtering);

    /// Connects what has to hear of a change before the base class does; null for no model.
    void hear_before(QAbstractItemModel* source);
    /// Connects what has to hear of a change after it.
    void hear_after(QAbstractItemModel* source);
    /// Disconnects both.
    void leave(QAbstractItemModel* source);

private slots:
    void forget();
    void begin_move(const QModelIndex& from, int first, int last, const QModelIndex& to);
    void begin_layout_change(const QList<QPersistentModelIndex>& parents);
    void end_layout_change();
    void begin_data_change(const QModelIndex& top_left);
    void end_data_change(const QModelIndex& top_left, const QModelIndex& bottom_right, const QVector<int>& roles);
    void begin_insertion();
    void end_insertion(const QModelIndex& parent, int first, int last);
    void begin_removal(const QModelIndex& parent, int first, int last);
    void end_removal(const QModelIndex& parent);
    void end_column_change(const QModelIndex& parent, int first);
    void end_column_move(const QModelIndex& from, int first, int last, const QModelIndex& to, int before);
    void note_removed_rows();

private:
    bool is_hidden(const QModelIndex& parent) const;
    bool is_filtered() const;
    bool may_search_from(int column) const;
    bool has_match(const QModelIndex& parent, int first, int last);
    void show_ancestors(QModelIndex index);
    void hide_ancestors(QModelIndex index);
    bool may_descendants_differ(const QModelIndex& parent, int first, int last);
    bool has_line_changed(const QModelIndex& index);

    TOLV_TREE_FILTER_PROXY_MODEL& m_proxy;
    TOLV_TREE_FILTERING& m_filtering;
    bool m_has_removed_rows = false; ///< the proxy, in a change of data
    bool m_was_unmapped = false;     ///< the level of the changed range
    bool m_is_removing_match = false;
    bool m_is_unheard_layout_change = false; ///< the base class does nothing about it
};
