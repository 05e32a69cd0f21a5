#include "netlist_properties.h"

#include "workbench_text.h"

#include <QCoreApplication>

namespace
{
using GROUP = PROPERTY_MODEL::GROUP;

QString translate(const char* text)
{
    return QCoreApplication::translate("netlist_properties", text);
}

GROUP describe_properties(const char* title, const NETLIST& netlist, const NETLIST_MODULE& module, NETLIST_RANGE range)
{
    GROUP group{translate(title), {}};
    for (const NETLIST_PROPERTY& property : module.get_properties(range))
    {
        group.rows.append({workbench_to_qstring(netlist.names.get(property.key)),
                           workbench_to_qstring(netlist.names.get(property.value))});
    }
    return group;
}

QString describe_direction(NETLIST_DIRECTION direction)
{
    const char* const text = netlist_get_direction_text(direction);
    return *text == '\0' ? QStringLiteral("?") : QString::fromLatin1(text);
}
} // namespace

QVector<PROPERTY_MODEL::GROUP> netlist_describe_module(const NETLIST& netlist, const NETLIST_MODULE& module)
{
    GROUP group{translate("Module"), {}};
    group.rows.append({translate("Name"), workbench_to_qstring(netlist.names.get(module.name))});
    group.rows.append({translate("Ports"), workbench_format_count(module.ports.size())});
    group.rows.append({translate("Cells"), workbench_format_count(module.cells.size())});
    group.rows.append({translate("Nets"), workbench_format_count(module.nets.size())});
    return {group, describe_properties("Attributes", netlist, module, module.attributes)};
}

QVector<PROPERTY_MODEL::GROUP> netlist_describe_cell(const NETLIST& netlist, const NETLIST_MODULE& module,
                                                     const NETLIST_CELL& cell, const NETLIST_BIT_NAMES& bit_names)
{
    GROUP group{translate("Cell"), {}};
    group.rows.append({translate("Name"), workbench_to_qstring(netlist.names.get(cell.name))});
    group.rows.append({translate("Type"), workbench_to_qstring(netlist.names.get(cell.type))});
    GROUP connections{translate("Connections"), {}};
    for (const NETLIST_CONNECTION& connection : module.get_connections(cell.connections))
    {
        const QString port = QStringLiteral("%1 (%2)").arg(workbench_to_qstring(netlist.names.get(connection.port)),
                                                           describe_direction(connection.direction));
        const QString bits = workbench_to_qstring(bit_names.get_text(connection.bits));
        connections.rows.append({port, bits.isEmpty() ? translate("not connected") : bits});
    }
    return {group, connections, describe_properties("Parameters", netlist, module, cell.parameters),
            describe_properties("Attributes", netlist, module, cell.attributes)};
}

QVector<PROPERTY_MODEL::GROUP> netlist_describe_port(const NETLIST& netlist, const NETLIST_PORT& port,
                                                     const NETLIST_BIT_NAMES& bit_names)
{
    GROUP group{translate("Port"), {}};
    group.rows.append({translate("Name"), workbench_to_qstring(netlist.names.get(port.name))});
    group.rows.append({translate("Direction"), describe_direction(port.direction)});
    group.rows.append({translate("Width"), workbench_format_count(port.bits.count)});
    group.rows.append({translate("Bits"), workbench_to_qstring(bit_names.get_text(port.bits))});
    return {group};
}

QVector<PROPERTY_MODEL::GROUP> netlist_describe_net(const NETLIST& netlist, const NETLIST_MODULE& module,
                                                    const NETLIST_NET& net)
{
    GROUP group{translate("Net"), {}};
    group.rows.append({translate("Name"), workbench_to_qstring(netlist.names.get(net.name))});
    group.rows.append({translate("Width"), workbench_format_count(net.bits.count)});
    return {group, describe_properties("Attributes", netlist, module, net.attributes)};
}
