#pragma once

#include "tolv_export.h"
#include "tolv_tree_model.h"

#include <QPointer>

class TOLV_TREE_FILTER_PROXY_MODEL;

/// A tree model that can own a filter, and that hides from its users whether it has one: a host fills it as any tree
/// model, calls create_filter_model() where the tree shall be filtered, and gives views the model that
/// get_view_model() answers. Indexes of views are handed to the operations below as they are; they are those of the
/// filter where there is one, and of this model where there is none.
///
///     auto* model = new TOLV_TREE_FILTER_MODEL(this);
///     model->create_filter_model(0);
///     view->setModel(model->get_view_model());
///     TOLV_SAFE_CONNECT(edit, SIGNAL(...), model->get_filter_model(), SLOT(start_filter(QString, bool, bool)));
///
/// The filter is a child of this model's parent, not of this model; without a parent it dies with this model. Once there
/// is a filter there is no way back.
class TOLV_EXPORT TOLV_TREE_FILTER_MODEL : public TOLV_TREE_MODEL
{
    Q_OBJECT

public:
    explicit TOLV_TREE_FILTER_MODEL(QObject* parent = nullptr);
    ~TOLV_TREE_FILTER_MODEL() override;

    /// Makes the filter, with `column` as its filter key column. To be called once: a second call is the internal error
    /// "m_filter_model == NULL", and should that return, a new filter takes the place of the old one.
    void create_filter_model(int column);
    /// The filter, for its signals and slots; null before create_filter_model().
    TOLV_TREE_FILTER_PROXY_MODEL* get_filter_model() const;
    /// What a view shows: the filter if there is one, else this model.
    QAbstractItemModel* get_view_model();

    /// Whether a row of the view has children there.
    bool has_children(QModelIndex index) const;
    /// The item of a row of the view; null for an invalid index.
    QStandardItem* get_item_from_index(QModelIndex index) const;
    /// The index of an item in the view; invalid for an item that is filtered out.
    QModelIndex get_index_from_item(QStandardItem* item) const;
    /// From an index of the view to one of this model.
    QModelIndex map_index_to_source(QModelIndex index) const;
    /// From an index of this model to one of the view; invalid for a row that is filtered out.
    QModelIndex map_index_from_source(QModelIndex index) const;
    /// Whether the row of an index of this model is shown now; always true without a filter.
    bool match_filter_index_from_model_source(QModelIndex index) const;

    /// Whether rows below a row that matches stay, from the next filtering on; true at first. Without a filter this does
    /// nothing, unlike the three below: these are called only after create_filter_model(), and are else the internal
    /// error "m_filter_model != NULL".
    void set_include_child(bool include);
    /// Whether all rows at the top stay, from the next filtering on; false at first.
    void set_include_invisible_root_child(bool include);
    /// From the next filtering on, only the key column is searched.
    void clear_filter_column_list();
    /// From the next filtering on, searches this column, too, together with the others of the list. A column inserted
    /// twice stands twice in the searched text.
    void insert_filter_column(int column);

protected:
    /// The filter; null before create_filter_model().
    QPointer<TOLV_TREE_FILTER_PROXY_MODEL> m_filter_model;

private:
    /// The filter for an operation that needs one; the internal error if there is none.
    TOLV_TREE_FILTER_PROXY_MODEL* require_filter_model() const;
};
