#include "hierarchy_model.h"

#include "tolv_data_transfer_manager.h"
#include "tolv_icon.h"
#include "tolv_instance_name.h"
#include "tolv_tree_model.h"
#include "workbench_text.h"

#include <QMimeData>

#include <algorithm>
#include <limits>

/// An instance that somebody has looked into; the first node is the invisible root.
struct HIERARCHY_MODEL::NODE
{
    NODE* parent = nullptr;
    int row = 0;
    int depth = 0; ///< 1 for a top
    std::uint32_t module = NETLIST_CELL::NO_MODULE;
    std::vector<NODE*> children; ///< by row; null for those that nobody has looked into. Empty before the first
};

HIERARCHY_MODEL::HIERARCHY_MODEL(QObject* parent) : QAbstractItemModel(parent), m_nodes(1)
{
}

HIERARCHY_MODEL::~HIERARCHY_MODEL() = default;

void HIERARCHY_MODEL::set_netlist(std::shared_ptr<const NETLIST> netlist)
{
    beginResetModel();
    m_netlist = std::move(netlist);
    m_nodes.clear();
    m_nodes.emplace_back();
    count_instances();
    endResetModel();
}

const std::shared_ptr<const NETLIST>& HIERARCHY_MODEL::get_netlist() const
{
    return m_netlist;
}

std::uint32_t HIERARCHY_MODEL::get_module(const QModelIndex& index) const
{
    return get_child_module(*static_cast<const NODE*>(index.internalPointer()), index.row());
}

QStringList HIERARCHY_MODEL::get_path(const QModelIndex& index) const
{
    QStringList path;
    for (QModelIndex i = index; i.isValid(); i = parent(i))
        path.prepend(get_child_name(*static_cast<const NODE*>(i.internalPointer()), i.row()));
    return path;
}

QModelIndex HIERARCHY_MODEL::find_path(const QStringList& path) const
{
    QModelIndex found;
    for (const QString& name : path)
    {
        const NODE& node = *get_node(found);
        const int count = get_child_count(node);
        int row = 0;
        while (row < count && get_child_name(node, row) != name)
            ++row;
        if (row == count)
            return QModelIndex();
        found = index(row, 0, found);
    }
    return found;
}

QModelIndex HIERARCHY_MODEL::find_instance(const QModelIndex& parent, std::uint32_t cell) const
{
    if (!parent.isValid())
        return QModelIndex();
    const std::vector<std::uint32_t>& instances = m_netlist->modules[get_module(parent)].instances;
    const auto found = std::lower_bound(instances.begin(), instances.end(), cell); // in the order of the cells
    if (found == instances.end() || *found != cell)
        return QModelIndex();
    return index(static_cast<int>(found - instances.begin()), 0, parent);
}

QModelIndex HIERARCHY_MODEL::index(int row, int column, const QModelIndex& parent) const
{
    return hasIndex(row, column, parent) ? createIndex(row, column, get_node(parent)) : QModelIndex();
}

QModelIndex HIERARCHY_MODEL::parent(const QModelIndex& child) const
{
    if (!child.isValid())
        return QModelIndex();
    const NODE& node = *static_cast<const NODE*>(child.internalPointer());
    return node.parent != nullptr ? createIndex(node.row, 0, node.parent) : QModelIndex();
}

QModelIndex HIERARCHY_MODEL::sibling(int row, int column, const QModelIndex& index) const
{
    if (!index.isValid() || row < 0 || column < 0 || column >= COLUMN_COUNT)
        return QModelIndex();
    const bool is_there = row < get_child_count(*static_cast<const NODE*>(index.internalPointer()));
    return is_there ? createIndex(row, column, index.internalPointer()) : QModelIndex();
}

int HIERARCHY_MODEL::rowCount(const QModelIndex& parent) const
{
    if (!parent.isValid())
        return get_child_count(m_nodes.front());
    const NODE& above = *static_cast<const NODE*>(parent.internalPointer());
    if (parent.column() > 0 || above.depth + 1 >= LARGEST_DEPTH)
        return 0;
    return static_cast<int>(m_netlist->modules[get_child_module(above, parent.row())].instances.size());
}

int HIERARCHY_MODEL::columnCount(const QModelIndex&) const
{
    return COLUMN_COUNT;
}

bool HIERARCHY_MODEL::hasChildren(const QModelIndex& parent) const
{
    return rowCount(parent) > 0;
}

Qt::ItemFlags HIERARCHY_MODEL::flags(const QModelIndex& index) const
{
    return index.isValid() ? QAbstractItemModel::flags(index) | Qt::ItemIsDragEnabled : Qt::NoItemFlags;
}

QVariant HIERARCHY_MODEL::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    const NODE& above = *static_cast<const NODE*>(index.internalPointer());
    const int column = index.column();
    switch (role)
    {
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignVCenter | (column > COLUMN_MODULE ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::ToolTipRole:
        return get_tip(above, index.row());
    case TOLV_TREE_ROLE_CLICKABLE_ICON:
        return column == COLUMN_INSTANCE ? QVariant(true) : QVariant();
    case Qt::DecorationRole:
        if (column != COLUMN_INSTANCE)
            return QVariant();
        if (m_top_icon.isNull())
        {
            m_top_icon = tolv_get_icon(TOLV_MODULE_TOP_ICON);
            m_instance_icon = tolv_get_icon(TOLV_MODULE_ICON);
        }
        return above.parent == nullptr ? m_top_icon : m_instance_icon;
    case Qt::DisplayRole:
        break;
    default:
        return QVariant();
    }
    const NETLIST_MODULE& module = m_netlist->modules[get_child_module(above, index.row())];
    if (column == COLUMN_INSTANCE)
        return get_child_name(above, index.row());
    if (column == COLUMN_MODULE)
        return workbench_to_qstring(m_netlist->get_display_name(module));
    return workbench_format_count(get_number(module, column));
}

QVariant HIERARCHY_MODEL::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const char* const titles[] = {QT_TR_NOOP("Instance"), QT_TR_NOOP("Module"),    QT_TR_NOOP("Cells"),
                                         QT_TR_NOOP("Nets"),     QT_TR_NOOP("Instances"), QT_TR_NOOP("Ports")};
    if (orientation != Qt::Horizontal || section < 0 || section >= COLUMN_COUNT)
        return QVariant();
    switch (role)
    {
    case Qt::DisplayRole:
        return tr(titles[section]);
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignVCenter | (section > COLUMN_MODULE ? Qt::AlignRight : Qt::AlignLeft));
    case HIDDEN_AT_FIRST_ROLE:
        return section >= COLUMN_NETS;
    default:
        return QVariant();
    }
}

QStringList HIERARCHY_MODEL::mimeTypes() const
{
    return {QStringLiteral("application/x-norvane_instance_name_list_data"), QStringLiteral("text/plain")};
}

QMimeData* HIERARCHY_MODEL::mimeData(const QModelIndexList& indexes) const
{
    QModelIndexList rows;
    for (const QModelIndex& index : indexes)
    {
        if (index.isValid() && index.column() == COLUMN_INSTANCE)
            rows.append(index);
    }
    if (rows.isEmpty())
        return nullptr;
    tolv_tree_sort_indexes(rows);
    QString text;
    TOLV_INSTANCE_NAME_LIST names;
    for (const QModelIndex& row : qAsConst(rows))
    {
        const QString path = get_path(row).join(QLatin1Char('/'));
        text += path + QLatin1Char('\n');
        TOLV_INSTANCE_NAME name;
        name.m_name = path.toLocal8Bit().toStdString();
        names.insert(name);
    }
    TOLV_DATA_TRANSFER_MANAGER* const manager = TOLV_DATA_TRANSFER_MANAGER::get_instance();
    manager->create_mime_data();
    manager->add_text_format(text);
    manager->add_instance_name_format(names);
    return manager->get_mime_data();
}

Qt::DropActions HIERARCHY_MODEL::supportedDragActions() const
{
    return Qt::CopyAction;
}

/// The node of an index, made where there is none yet.
HIERARCHY_MODEL::NODE* HIERARCHY_MODEL::get_node(const QModelIndex& index) const
{
    if (!index.isValid())
        return &m_nodes.front();
    NODE& above = *static_cast<NODE*>(index.internalPointer());
    if (above.children.empty())
        above.children.resize(static_cast<std::size_t>(get_child_count(above)));
    NODE*& node = above.children[static_cast<std::size_t>(index.row())];
    if (node == nullptr)
    {
        m_nodes.emplace_back();
        node = &m_nodes.back();
        node->parent = &above;
        node->row = index.row();
        node->depth = above.depth + 1;
        node->module = get_child_module(above, index.row());
    }
    return node;
}

int HIERARCHY_MODEL::get_child_count(const NODE& node) const
{
    if (m_netlist == nullptr || node.depth >= LARGEST_DEPTH)
        return 0;
    return static_cast<int>(node.parent == nullptr ? m_netlist->top_modules.size()
                                                   : m_netlist->modules[node.module].instances.size());
}

std::uint32_t HIERARCHY_MODEL::get_child_module(const NODE& node, int row) const
{
    const auto at = static_cast<std::size_t>(row);
    if (node.parent == nullptr)
        return m_netlist->top_modules[at];
    const NETLIST_MODULE& module = m_netlist->modules[node.module];
    return module.cells[module.instances[at]].module;
}

QString HIERARCHY_MODEL::get_child_name(const NODE& node, int row) const
{
    if (node.parent == nullptr)
        return workbench_to_qstring(m_netlist->get_display_name(m_netlist->modules[get_child_module(node, row)]));
    const NETLIST_MODULE& module = m_netlist->modules[node.module];
    return workbench_to_qstring(
        m_netlist->names.get(module.cells[module.instances[static_cast<std::size_t>(row)]].name));
}

QString HIERARCHY_MODEL::get_tip(const NODE& parent, int row) const
{
    const NETLIST_MODULE& module = m_netlist->modules[get_child_module(parent, row)];
    QString name = workbench_to_qstring(m_netlist->names.get(module.name)).toHtmlEscaped();
    if (parent.depth + 1 < LARGEST_DEPTH || module.instances.empty())
        return name;
    return tr("%1<br>The hierarchy goes on below; no more than %2 levels are shown.")
        .arg(name, QString::number(LARGEST_DEPTH));
}

std::uint64_t HIERARCHY_MODEL::get_number(const NETLIST_MODULE& module, int column) const
{
    switch (column)
    {
    case COLUMN_CELLS:
        return module.leaf_cell_count;
    case COLUMN_NETS:
        return module.nets.size();
    case COLUMN_PORTS:
        return module.ports.size();
    default:
        return m_instance_counts[static_cast<std::size_t>(&module - m_netlist->modules.data())];
    }
}

void HIERARCHY_MODEL::count_instances()
{
    constexpr std::uint64_t LARGEST = std::numeric_limits<std::uint64_t>::max();
    m_instance_counts.assign(m_netlist != nullptr ? m_netlist->modules.size() : 0, 0);
    for (std::size_t i = 0; i < m_instance_counts.size(); ++i)
    {
        const std::uint32_t module = m_netlist->bottom_up[i];
        std::uint64_t& count = m_instance_counts[module];
        for (const std::uint32_t cell : m_netlist->modules[module].instances)
        {
            const std::uint64_t below = m_instance_counts[m_netlist->modules[module].cells[cell].module];
            const std::uint64_t more = below == LARGEST ? LARGEST : below + 1;
            count = count > LARGEST - more ? LARGEST : count + more;
        }
    }
}
