#include "hierarchy_model.h"

#include "workbench_text.h"

struct HIERARCHY_MODEL::NODE
{
    NODE* parent = nullptr;
    int row = 0;
    std::uint32_t module = 0;
    std::uint32_t cell = 0; ///< in the parent's module; without meaning for a top
    bool is_fetched = false;
    std::vector<std::unique_ptr<NODE>> children;

    void add_child(std::uint32_t child_module, std::uint32_t child_cell)
    {
        auto child = std::make_unique<NODE>();
        child->parent = this;
        child->row = static_cast<int>(children.size());
        child->module = child_module;
        child->cell = child_cell;
        children.push_back(std::move(child));
    }
};

HIERARCHY_MODEL::HIERARCHY_MODEL(QObject* parent) : QAbstractItemModel(parent), m_root(std::make_unique<NODE>())
{
}

HIERARCHY_MODEL::~HIERARCHY_MODEL() = default;

void HIERARCHY_MODEL::set_netlist(std::shared_ptr<const NETLIST> netlist)
{
    beginResetModel();
    m_netlist = std::move(netlist);
    m_root = std::make_unique<NODE>();
    m_root->is_fetched = true;
    if (m_netlist != nullptr)
    {
        for (const std::uint32_t top : m_netlist->top_modules)
            m_root->add_child(top, 0);
    }
    endResetModel();
}

std::uint32_t HIERARCHY_MODEL::get_module(const QModelIndex& index) const
{
    return get_node(index)->module;
}

QStringList HIERARCHY_MODEL::get_path(const QModelIndex& index) const
{
    QStringList path;
    for (const NODE* node = get_node(index); node != m_root.get(); node = node->parent)
        path.prepend(get_name(*node));
    return path;
}

QModelIndex HIERARCHY_MODEL::find_path(const QStringList& path)
{
    QModelIndex found;
    for (const QString& name : path)
    {
        fetchMore(found);
        const NODE* const node = get_node(found);
        QModelIndex next;
        for (std::size_t i = 0; i < node->children.size() && !next.isValid(); ++i)
        {
            if (get_name(*node->children[i]) == name)
                next = index(static_cast<int>(i), 0, found);
        }
        if (!next.isValid())
            return QModelIndex();
        found = next;
    }
    return found;
}

QModelIndex HIERARCHY_MODEL::find_instance(const QModelIndex& parent, std::uint32_t cell)
{
    if (!parent.isValid())
        return QModelIndex();
    fetchMore(parent);
    for (const std::unique_ptr<NODE>& child : get_node(parent)->children)
    {
        if (child->cell == cell)
            return index(child->row, 0, parent);
    }
    return QModelIndex();
}

QModelIndex HIERARCHY_MODEL::index(int row, int column, const QModelIndex& parent) const
{
    if (!hasIndex(row, column, parent))
        return QModelIndex();
    return createIndex(row, column, get_node(parent)->children[static_cast<std::size_t>(row)].get());
}

QModelIndex HIERARCHY_MODEL::parent(const QModelIndex& child) const
{
    if (!child.isValid())
        return QModelIndex();
    NODE* const node = get_node(child)->parent;
    return node == m_root.get() ? QModelIndex() : createIndex(node->row, 0, node);
}

int HIERARCHY_MODEL::rowCount(const QModelIndex& parent) const
{
    return parent.column() > 0 ? 0 : static_cast<int>(get_node(parent)->children.size());
}

int HIERARCHY_MODEL::columnCount(const QModelIndex&) const
{
    return COLUMN_COUNT;
}

bool HIERARCHY_MODEL::hasChildren(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return !m_root->children.empty();
    return parent.column() == 0 && !m_netlist->modules[get_node(parent)->module].instances.empty();
}

bool HIERARCHY_MODEL::canFetchMore(const QModelIndex& parent) const
{
    return parent.isValid() && hasChildren(parent) && !get_node(parent)->is_fetched;
}

void HIERARCHY_MODEL::fetchMore(const QModelIndex& parent)
{
    if (!canFetchMore(parent))
        return;
    NODE* const node = get_node(parent);
    const NETLIST_MODULE& module = m_netlist->modules[node->module];
    beginInsertRows(parent, 0, static_cast<int>(module.instances.size()) - 1);
    node->is_fetched = true;
    node->children.reserve(module.instances.size());
    for (const std::uint32_t cell : module.instances)
        node->add_child(module.cells[cell].module, cell);
    endInsertRows();
}

QVariant HIERARCHY_MODEL::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    const NODE& node = *get_node(index);
    const NETLIST_MODULE& module = m_netlist->modules[node.module];
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignVCenter | (index.column() == COLUMN_CELLS ? Qt::AlignRight : Qt::AlignLeft));
    if (role == Qt::ToolTipRole)
        return workbench_to_qstring(m_netlist->names.get(module.name)).toHtmlEscaped();
    if (role != Qt::DisplayRole)
        return QVariant();
    switch (index.column())
    {
    case COLUMN_INSTANCE:
        return get_name(node);
    case COLUMN_MODULE:
        return workbench_to_qstring(m_netlist->get_display_name(module));
    default:
        return workbench_format_count(module.leaf_cell_count);
    }
}

QVariant HIERARCHY_MODEL::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return QVariant();
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignVCenter | (section == COLUMN_CELLS ? Qt::AlignRight : Qt::AlignLeft));
    if (role != Qt::DisplayRole)
        return QVariant();
    switch (section)
    {
    case COLUMN_INSTANCE:
        return tr("Instance");
    case COLUMN_MODULE:
        return tr("Module");
    case COLUMN_CELLS:
        return tr("Cells");
    default:
        return QVariant();
    }
}

HIERARCHY_MODEL::NODE* HIERARCHY_MODEL::get_node(const QModelIndex& index) const
{
    return index.isValid() ? static_cast<NODE*>(index.internalPointer()) : m_root.get();
}

QString HIERARCHY_MODEL::get_name(const NODE& node) const
{
    if (node.parent == m_root.get())
        return workbench_to_qstring(m_netlist->get_display_name(m_netlist->modules[node.module]));
    const NETLIST_MODULE& parent = m_netlist->modules[node.parent->module];
    return workbench_to_qstring(m_netlist->names.get(parent.cells[node.cell].name));
}
