#include "tolv_tree_filter_model.h"

#include "tolv_check.h"
#include "tolv_mem.h"
#include "tolv_tree_filter_proxy_model.h"

TOLV_MEM_INITIALIZER();

TOLV_TREE_FILTER_MODEL::TOLV_TREE_FILTER_MODEL(QObject* parent) : TOLV_TREE_MODEL(parent)
{
}

TOLV_TREE_FILTER_MODEL::~TOLV_TREE_FILTER_MODEL()
{
    if (m_filter_model != nullptr && m_filter_model->parent() == nullptr)
        delete m_filter_model.data();
}

void TOLV_TREE_FILTER_MODEL::create_filter_model(int column)
{
    TOLV_CHECK_TEXT(m_filter_model == nullptr, "m_filter_model == NULL");
    if (m_filter_model != nullptr && m_filter_model->parent() == nullptr)
        delete m_filter_model.data();
    m_filter_model = new TOLV_TREE_FILTER_PROXY_MODEL(parent());
    m_filter_model->setSourceModel(this);
    m_filter_model->setFilterKeyColumn(column);
}

TOLV_TREE_FILTER_PROXY_MODEL* TOLV_TREE_FILTER_MODEL::get_filter_model() const
{
    return m_filter_model;
}

QAbstractItemModel* TOLV_TREE_FILTER_MODEL::get_view_model()
{
    if (m_filter_model != nullptr)
        return m_filter_model;
    return this;
}

bool TOLV_TREE_FILTER_MODEL::has_children(QModelIndex index) const
{
    return m_filter_model != nullptr ? m_filter_model->hasChildren(index) : hasChildren(index);
}

QStandardItem* TOLV_TREE_FILTER_MODEL::get_item_from_index(QModelIndex index) const
{
    return itemFromIndex(map_index_to_source(index));
}

QModelIndex TOLV_TREE_FILTER_MODEL::get_index_from_item(QStandardItem* item) const
{
    return map_index_from_source(indexFromItem(item));
}

QModelIndex TOLV_TREE_FILTER_MODEL::map_index_to_source(QModelIndex index) const
{
    return m_filter_model != nullptr ? m_filter_model->mapToSource(index) : index;
}

QModelIndex TOLV_TREE_FILTER_MODEL::map_index_from_source(QModelIndex index) const
{
    return m_filter_model != nullptr ? m_filter_model->mapFromSource(index) : index;
}

bool TOLV_TREE_FILTER_MODEL::match_filter_index_from_model_source(QModelIndex index) const
{
    return m_filter_model == nullptr || m_filter_model->mapFromSource(index).isValid();
}

void TOLV_TREE_FILTER_MODEL::set_include_child(bool include)
{
    if (m_filter_model != nullptr)
        m_filter_model->set_include_child(include);
}

void TOLV_TREE_FILTER_MODEL::set_include_invisible_root_child(bool include)
{
    if (TOLV_TREE_FILTER_PROXY_MODEL* filter_model = require_filter_model())
        filter_model->set_include_invisible_root_child(include);
}

void TOLV_TREE_FILTER_MODEL::clear_filter_column_list()
{
    if (TOLV_TREE_FILTER_PROXY_MODEL* filter_model = require_filter_model())
        filter_model->clear_filter_column_list();
}

void TOLV_TREE_FILTER_MODEL::insert_filter_column(int column)
{
    if (TOLV_TREE_FILTER_PROXY_MODEL* filter_model = require_filter_model())
        filter_model->insert_filter_column(column);
}

TOLV_TREE_FILTER_PROXY_MODEL* TOLV_TREE_FILTER_MODEL::require_filter_model() const
{
    TOLV_CHECK_TEXT(m_filter_model != nullptr, "m_filter_model != NULL");
    return m_filter_model;
}
