#include "netlist_table_model.h"

#include "tolv_global.h"
#include "workbench_text.h"

namespace
{
/// The indices of a vector as the source declares them: "[7:0]", "[0:7]"; empty for a plain bit.
QString format_range(const NETLIST_PORT& port)
{
    if (port.bits.count == 0 || (port.bits.count == 1 && port.offset == 0))
        return QString();
    const qint64 low = port.offset;
    const qint64 high = low + port.bits.count - 1;
    return QStringLiteral("[%1:%2]").arg(port.is_upward ? low : high).arg(port.is_upward ? high : low);
}

/// Places in source files, which the tools write as "uart.v:34.17-38.6|fifo.v:12.5-14.8", each as file and line. Those
/// in the tool's own files ("+/...") are left out, unless there are no others.
QString format_source(const QString& text)
{
    QStringList places;
    QStringList tool_places;
    for (const QString& place : text.split(QLatin1Char('|'), Qt::SkipEmptyParts))
    {
        const int colon = place.lastIndexOf(QLatin1Char(':'));
        const int point = colon < 0 ? -1 : place.indexOf(QLatin1Char('.'), colon);
        QStringList& list = place.startsWith(QLatin1String("+/")) ? tool_places : places;
        if (!list.contains(place.left(point)))
            list.append(place.left(point));
    }
    return (places.isEmpty() ? tool_places : places).join(QStringLiteral(", "));
}

/// The same for a tip, one place a line.
QString format_tip(const QString& text)
{
    return text.toHtmlEscaped().replace(QLatin1Char('|'), QStringLiteral("<br>"));
}
} // namespace

// ---- The base -------------------------------------------------------------------------------------------------------

void NETLIST_TABLE_MODEL::set_module(std::shared_ptr<const NETLIST> netlist, std::uint32_t module)
{
    beginResetModel();
    m_netlist = std::move(netlist);
    m_module = module;
    if (m_netlist != nullptr)
        prepare();
    endResetModel();
}

int NETLIST_TABLE_MODEL::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() || m_netlist == nullptr ? 0 : get_row_count();
}

int NETLIST_TABLE_MODEL::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_columns.size();
}

QVariant NETLIST_TABLE_MODEL::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    const bool is_number = m_columns[index.column()].is_number;
    switch (role)
    {
    case Qt::DisplayRole:
        if (is_number)
            return workbench_format_count(get_number(index.row(), index.column()));
        return get_text(index.row(), index.column());
    case Qt::ToolTipRole:
        return is_number ? QVariant() : format_tip(get_full_text(index.row(), index.column()));
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignVCenter | (is_number ? Qt::AlignRight : Qt::AlignLeft));
    default:
        return QVariant();
    }
}

QVariant NETLIST_TABLE_MODEL::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= m_columns.size())
        return QVariant();
    if (role == Qt::DisplayRole)
        return m_columns[section].title;
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignVCenter | (m_columns[section].is_number ? Qt::AlignRight : Qt::AlignLeft));
    return QVariant();
}

const QVector<NETLIST_TABLE_MODEL::COLUMN>& NETLIST_TABLE_MODEL::get_columns() const
{
    return m_columns;
}

QString NETLIST_TABLE_MODEL::get_full_text(int row, int column) const
{
    return get_text(row, column);
}

NETLIST_TABLE_MODEL::NETLIST_TABLE_MODEL(QVector<COLUMN> columns, QObject* parent)
    : QAbstractTableModel(parent), m_columns(std::move(columns))
{
}

const NETLIST& NETLIST_TABLE_MODEL::get_netlist() const
{
    return *m_netlist;
}

const NETLIST_MODULE& NETLIST_TABLE_MODEL::get_module() const
{
    return m_netlist->modules[m_module];
}

std::uint32_t NETLIST_TABLE_MODEL::get_module_index() const
{
    return m_module;
}

// ---- Cells ----------------------------------------------------------------------------------------------------------

CELL_TABLE_MODEL::CELL_TABLE_MODEL(QObject* parent)
    : NETLIST_TABLE_MODEL({{tr("Name"), false},
                           {tr("Type"), false},
                           {tr("Location"), false},
                           {tr("Source"), false},
                           {tr("Ports"), true}},
                          parent)
{
}

bool CELL_TABLE_MODEL::has_locations() const
{
    return m_has_locations;
}

std::uint64_t CELL_TABLE_MODEL::get_number(int row, int) const
{
    return get_module().cells[static_cast<std::size_t>(row)].connections.count;
}

QString CELL_TABLE_MODEL::get_text(int row, int column) const
{
    const NETLIST_CELL& cell = get_module().cells[static_cast<std::size_t>(row)];
    const NETLIST_NAMES& names = get_netlist().names;
    switch (column)
    {
    case COLUMN_NAME:
        return workbench_to_qstring(names.get(cell.name));
    case COLUMN_TYPE:
        if (get_netlist().is_instance(cell))
            return workbench_to_qstring(get_netlist().get_display_name(get_netlist().modules[cell.module]));
        return workbench_to_qstring(names.get(cell.type));
    case COLUMN_LOCATION:
        return workbench_to_qstring(names.get(get_module().find_property(cell.attributes, m_location_key)));
    default:
        return format_source(get_full_text(row, column));
    }
}

QString CELL_TABLE_MODEL::get_full_text(int row, int column) const
{
    if (column != COLUMN_SOURCE)
        return get_text(row, column);
    const NETLIST_RANGE attributes = get_module().cells[static_cast<std::size_t>(row)].attributes;
    return workbench_to_qstring(get_netlist().names.get(get_module().find_property(attributes, m_source_key)));
}

void CELL_TABLE_MODEL::prepare()
{
    m_location_key = get_netlist().names.find("NEXTPNR_BEL");
    m_source_key = get_netlist().names.find("src");
    m_has_locations = false;
    for (std::size_t i = 0; m_location_key != NETLIST_NAMES::NONE && !m_has_locations && i < get_module().cells.size();
         ++i)
    {
        const NETLIST_RANGE attributes = get_module().cells[i].attributes;
        m_has_locations = get_module().find_property(attributes, m_location_key) != NETLIST_NAMES::NONE;
    }
}

int CELL_TABLE_MODEL::get_row_count() const
{
    return static_cast<int>(get_module().cells.size());
}

// ---- Ports ----------------------------------------------------------------------------------------------------------

PORT_TABLE_MODEL::PORT_TABLE_MODEL(QObject* parent)
    : NETLIST_TABLE_MODEL({{tr("Name"), false}, {tr("Direction"), false}, {tr("Range"), false}, {tr("Width"), true}},
                          parent)
{
}

std::uint64_t PORT_TABLE_MODEL::get_number(int row, int) const
{
    return get_module().ports[static_cast<std::size_t>(row)].bits.count;
}

QString PORT_TABLE_MODEL::get_text(int row, int column) const
{
    const NETLIST_PORT& port = get_module().ports[static_cast<std::size_t>(row)];
    switch (column)
    {
    case COLUMN_NAME:
        return workbench_to_qstring(get_netlist().names.get(port.name));
    case COLUMN_DIRECTION:
        return QString::fromLatin1(netlist_get_direction_text(port.direction));
    default:
        return format_range(port);
    }
}

void PORT_TABLE_MODEL::prepare()
{
}

int PORT_TABLE_MODEL::get_row_count() const
{
    return static_cast<int>(get_module().ports.size());
}

// ---- Nets -----------------------------------------------------------------------------------------------------------

NET_TABLE_MODEL::NET_TABLE_MODEL(QObject* parent)
    : NETLIST_TABLE_MODEL({{tr("Name"), false},
                           {tr("Source"), false},
                           {tr("Width"), true},
                           {tr("Drivers"), true},
                           {tr("Sinks"), true},
                           {tr("Fan-out"), true}},
                          parent)
{
}

std::uint64_t NET_TABLE_MODEL::get_number(int row, int column) const
{
    const NETLIST_NET& net = get_module().nets[static_cast<std::size_t>(row)];
    if (column == COLUMN_WIDTH)
        return net.bits.count;
    const NETLIST_CONNECTIVITY::NET_COUNTS counts = m_connectivity.get_net(get_module(), net);
    return column == COLUMN_DRIVERS ? counts.drivers : column == COLUMN_SINKS ? counts.sinks : counts.fan_out;
}

QString NET_TABLE_MODEL::get_text(int row, int column) const
{
    const NETLIST_NET& net = get_module().nets[static_cast<std::size_t>(row)];
    const NETLIST_NAMES& names = get_netlist().names;
    if (column == COLUMN_NAME)
        return workbench_to_qstring(names.get(net.name));
    return format_source(get_full_text(row, column));
}

QString NET_TABLE_MODEL::get_full_text(int row, int column) const
{
    if (column != COLUMN_SOURCE)
        return get_text(row, column);
    const NETLIST_RANGE attributes = get_module().nets[static_cast<std::size_t>(row)].attributes;
    return workbench_to_qstring(get_netlist().names.get(get_module().find_property(attributes, m_source_key)));
}

void NET_TABLE_MODEL::prepare()
{
    m_connectivity = NETLIST_CONNECTIVITY(get_module());
    m_source_key = get_netlist().names.find("src");
}

int NET_TABLE_MODEL::get_row_count() const
{
    return static_cast<int>(get_module().nets.size());
}

// ---- Types ----------------------------------------------------------------------------------------------------------

TYPE_TABLE_MODEL::TYPE_TABLE_MODEL(QObject* parent)
    : NETLIST_TABLE_MODEL({{tr("Type"), false}, {tr("Here"), true}, {tr("In total"), true}}, parent)
{
}

std::uint64_t TYPE_TABLE_MODEL::get_number(int row, int column) const
{
    const NETLIST_TYPE_COUNT& count = m_counts[static_cast<std::size_t>(row)];
    return column == COLUMN_IN_MODULE ? count.in_module : count.in_hierarchy;
}

QString TYPE_TABLE_MODEL::get_text(int row, int) const
{
    const NETLIST_TYPE_COUNT& count = m_counts[static_cast<std::size_t>(row)];
    if (count.is_module)
        return workbench_to_qstring(get_netlist().get_display_name(get_netlist().modules[count.module]));
    return workbench_to_qstring(get_netlist().names.get(count.type));
}

void TYPE_TABLE_MODEL::prepare()
{
    m_counts = netlist_count_by_type(get_netlist(), get_module_index());
}

int TYPE_TABLE_MODEL::get_row_count() const
{
    return static_cast<int>(m_counts.size());
}

// ---- Sorting --------------------------------------------------------------------------------------------------------

NETLIST_SORT_PROXY::NETLIST_SORT_PROXY(NETLIST_TABLE_MODEL* table, QObject* parent)
    : QSortFilterProxyModel(parent), m_table(table)
{
    setDynamicSortFilter(true);
    setSourceModel(table);
}

bool NETLIST_SORT_PROXY::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    const int column = left.column();
    if (m_table->get_columns()[column].is_number)
        return m_table->get_number(left.row(), column) < m_table->get_number(right.row(), column);
    return tolv_string_cmp(m_table->get_text(left.row(), column), m_table->get_text(right.row(), column)) < 0;
}
