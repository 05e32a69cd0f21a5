#include "schematic_graph_p.h"

#include "netlist_bit_names.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <unordered_map>

namespace
{
using namespace SCHEMATIC_MEASURES;
using PIN_NUMBER = SCHEMATIC_GRAPH::PIN_NUMBER;

const std::size_t LARGEST_FAN_OUT = 14; ///< a net with more sinks is told by name

QString to_text(std::string_view text)
{
    return QString::fromUtf8(text.data(), int(text.size()));
}

int get_width(const QString& text)
{
    return text.size() * CHARACTER_WIDTH;
}

bool contains(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

SCHEMATIC::KIND get_kind(const NETLIST& netlist, const NETLIST_CELL& cell)
{
    if (netlist.is_instance(cell))
        return SCHEMATIC::KIND::INSTANCE;
    const std::string_view type = netlist.names.get(cell.type);
    if (contains(type, "RAM") || contains(type, "$mem"))
        return SCHEMATIC::KIND::MEMORY;
    if (contains(type, "DFF") || contains(type, "dff") || contains(type, "latch"))
        return SCHEMATIC::KIND::REGISTER;
    if (contains(type, "mux") || contains(type, "MUX"))
        return SCHEMATIC::KIND::MULTIPLEXER;
    if (!type.empty() && type[0] == '$')
        return SCHEMATIC::KIND::OPERATOR;
    return SCHEMATIC::KIND::LOGIC;
}

bool is_clock_pin(const QString& name)
{
    return name == QLatin1String("C") || name.contains(QLatin1String("CLK"), Qt::CaseInsensitive);
}
} // namespace

namespace
{
class BUILDER
{
public:
    BUILDER(const NETLIST& netlist, const NETLIST_MODULE& module, SCHEMATIC* schematic)
        : m_netlist(netlist), m_module(module), m_bit_names(netlist, module), m_schematic(*schematic)
    {
    }

    SCHEMATIC_GRAPH run()
    {
        for (std::uint32_t i = 0; i < m_module.ports.size(); ++i)
            add_port(i);
        for (std::uint32_t i = 0; i < m_module.cells.size(); ++i)
            add_cell(i);
        find_drivers();
        connect_sinks();
        make_nets();
        size_boxes();
        return std::move(m_graph);
    }

private:
    enum ROLE
    {
        ROLE_DRIVER,
        ROLE_SINK,
        ROLE_NEITHER ///< inout, or not told
    };

    void add_pin(SCHEMATIC::BOX& box, const QString& name, ROLE role, bool is_left, NETLIST_RANGE bits)
    {
        SCHEMATIC::PIN pin;
        pin.name = name;
        pin.is_left = is_left;
        pin.width = std::max(bits.count, 1u);
        m_roles.push_back({{std::uint32_t(m_schematic.boxes.size()), std::uint32_t(box.pins.size())}, role, bits});
        box.pins.push_back(pin);
    }

    void add_port(std::uint32_t index)
    {
        const NETLIST_PORT& port = m_module.ports[index];
        SCHEMATIC::BOX box;
        box.index = index;
        box.title = to_text(m_netlist.names.get(port.name));
        switch (port.direction)
        {
        case NETLIST_DIRECTION::INPUT:
            box.kind = SCHEMATIC::KIND::INPUT_PORT;
            add_pin(box, QString(), ROLE_DRIVER, false, port.bits);
            break;
        case NETLIST_DIRECTION::OUTPUT:
            box.kind = SCHEMATIC::KIND::OUTPUT_PORT;
            add_pin(box, QString(), ROLE_SINK, true, port.bits);
            break;
        case NETLIST_DIRECTION::INOUT:
        case NETLIST_DIRECTION::UNKNOWN:
            box.kind = SCHEMATIC::KIND::INOUT_PORT;
            add_pin(box, QString(), ROLE_NEITHER, true, port.bits);
            break;
        }
        m_schematic.boxes.push_back(std::move(box));
    }

    void add_cell(std::uint32_t index)
    {
        const NETLIST_CELL& cell = m_module.cells[index];
        SCHEMATIC::BOX box;
        box.kind = get_kind(m_netlist, cell);
        box.index = index;
        box.title = to_text(m_netlist.is_instance(cell) ? m_netlist.get_display_name(m_netlist.modules[cell.module])
                                                        : m_netlist.names.get(cell.type));
        box.name = to_text(m_netlist.names.get(cell.name));
        for (const NETLIST_CONNECTION& connection : m_module.get_connections(cell.connections))
        {
            const QString name = to_text(m_netlist.names.get(connection.port));
            const ROLE role = connection.direction == NETLIST_DIRECTION::INPUT    ? ROLE_SINK
                              : connection.direction == NETLIST_DIRECTION::OUTPUT ? ROLE_DRIVER
                                                                                  : ROLE_NEITHER;
            add_pin(box, name, role, role != ROLE_DRIVER, connection.bits);
        }
        m_schematic.boxes.push_back(std::move(box));
    }

    void find_drivers()
    {
        for (const ROLE_OF_PIN& pin : m_roles)
        {
            if (pin.role != ROLE_DRIVER)
                continue;
            for (const NETLIST_BIT bit : m_module.get_bits(pin.bits))
            {
                if (bit.is_net())
                    m_driver_of_bit.emplace(bit.get_net(), pin.number);
            }
        }
    }

    SCHEMATIC::PIN& get_pin(PIN_NUMBER number)
    {
        return m_schematic.boxes[number.box].pins[number.pin];
    }

    /// For each sink the pins that drive its bits; those with nothing but constants or names get their label.
    void connect_sinks()
    {
        for (const ROLE_OF_PIN& pin : m_roles)
        {
            if (pin.role == ROLE_DRIVER || pin.bits.count == 0)
                continue;
            std::map<std::pair<std::uint32_t, std::uint32_t>, int> drivers;
            bool has_nets = false;
            for (const NETLIST_BIT bit : m_module.get_bits(pin.bits))
            {
                has_nets = has_nets || bit.is_net();
                const auto driver = bit.is_net() ? m_driver_of_bit.find(bit.get_net()) : m_driver_of_bit.end();
                if (driver != m_driver_of_bit.end())
                    ++drivers[{driver->second.box, driver->second.pin}];
            }
            for (const auto& [driver, count] : drivers)
                m_sinks[driver].push_back(pin.number);
            if (drivers.empty())
            {
                get_pin(pin.number).label = get_bits_text(pin.bits);
                get_pin(pin.number).is_constant = !has_nets;
            }
        }
    }

    QString get_bits_text(NETLIST_RANGE bits) const
    {
        return QString::fromStdString(m_bit_names.get_text(bits));
    }

    NETLIST_RANGE get_bits(PIN_NUMBER number) const
    {
        const auto is_before = [](const ROLE_OF_PIN& pin, PIN_NUMBER wanted)
        { return std::make_pair(pin.number.box, pin.number.pin) < std::make_pair(wanted.box, wanted.pin); };
        return std::lower_bound(m_roles.begin(), m_roles.end(), number, is_before)->bits;
    }

    void make_nets()
    {
        for (const auto& [driver, sinks] : m_sinks)
        {
            const PIN_NUMBER from{driver.first, driver.second};
            SCHEMATIC::NET net;
            net.name = get_bits_text(get_bits(from));
            net.width = get_pin(from).width;
            net.is_clock = std::any_of(sinks.begin(), sinks.end(),
                                       [this](PIN_NUMBER sink) { return is_clock_pin(get_pin(sink).name); });
            if (sinks.size() > LARGEST_FAN_OUT)
            {
                get_pin(from).label = net.name;
                for (const PIN_NUMBER sink : sinks)
                    get_pin(sink).label = get_bits_text(get_bits(sink));
                continue;
            }
            for (const PIN_NUMBER sink : sinks)
            {
                m_graph.edges.push_back({from, sink, std::uint32_t(m_schematic.nets.size())});
                get_pin(sink).is_connected = true;
            }
            get_pin(from).is_connected = true;
            m_schematic.nets.push_back(net);
        }
    }

    void size_boxes()
    {
        for (SCHEMATIC::BOX& box : m_schematic.boxes)
        {
            int rows[2] = {0, 0};
            int widths[2] = {0, 0};
            int margins[2] = {0, 0};
            const int header = box.is_port() ? 0 : CELL_HEADER;
            for (SCHEMATIC::PIN& pin : box.pins)
            {
                const int side = pin.is_left ? 0 : 1;
                pin.position.setY(box.is_port() ? PORT_HEIGHT / 2 : header + rows[side] * PIN_PITCH + PIN_PITCH / 2);
                ++rows[side];
                widths[side] = std::max(widths[side], get_width(pin.name) + 2 * PIN_NAME_MARGIN);
                if (!pin.label.isEmpty())
                    margins[side] = std::max(margins[side], STUB_LENGTH + 2 * PIN_NAME_MARGIN +
                                                                std::min(get_width(pin.label), LARGEST_LABEL_WIDTH));
            }
            const int text_width =
                std::min(std::max(get_width(box.title), get_width(box.name)), 2 * LARGEST_LABEL_WIDTH);
            const int width = std::max({text_width + 4 * PIN_NAME_MARGIN, widths[0] + widths[1], 48});
            const int height =
                box.is_port() ? PORT_HEIGHT : header + std::max({rows[0], rows[1], 1}) * PIN_PITCH + PIN_NAME_MARGIN;
            box.rect = QRect(0, 0, width, height);
            m_graph.left_margins.push_back(margins[0]);
            m_graph.right_margins.push_back(margins[1]);
        }
    }

    struct ROLE_OF_PIN
    {
        PIN_NUMBER number;
        ROLE role;
        NETLIST_RANGE bits;
    };

    const NETLIST& m_netlist;
    const NETLIST_MODULE& m_module;
    NETLIST_BIT_NAMES m_bit_names;
    SCHEMATIC& m_schematic;
    SCHEMATIC_GRAPH m_graph;
    std::vector<ROLE_OF_PIN> m_roles; ///< by box and pin
    std::unordered_map<std::uint32_t, PIN_NUMBER> m_driver_of_bit;
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::vector<PIN_NUMBER>> m_sinks; ///< by the pin that drives
};
} // namespace

SCHEMATIC_GRAPH schematic_build(const NETLIST& netlist, const NETLIST_MODULE& module, SCHEMATIC* schematic)
{
    return BUILDER(netlist, module, schematic).run();
}
