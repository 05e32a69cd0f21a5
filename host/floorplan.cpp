#include "floorplan.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <map>
#include <optional>
#include <string_view>
#include <unordered_map>

namespace
{
// In units of the drawing, within a tile.
const int MARGIN = 12;
const int FIRST_TRACK = 8; ///< of the wires, from the left and from the top
const int TRACK_PITCH = 4;
const int COLUMN_TRACKS = 22;
const int ROW_TRACKS = 58;
const int PIN_X = 98;
const int SITE_X = 104;
const int SITE_GAP = 4; ///< between two sites
/// Wires from this length on are few in a real chip, and many of them in a hostile file must not fill the memory.
const int LONG_WIRE = 32 * FLOORPLAN::TILE_SIZE;

struct TILE
{
    int column = 0;
    int row = 0;
};

/// A place such as "X5/Y14/lc4": its tile and the name behind it.
struct LOCATION
{
    TILE tile;
    std::string_view name;
};

/// Takes a number off the front of the text.
bool take_number(std::string_view* text, int* number)
{
    const char* const end = text->data() + text->size();
    const auto [stop, error] = std::from_chars(text->data(), end, *number);
    if (error != std::errc() || *number < 0 || *number > FLOORPLAN::LARGEST_COLUMN)
        return false;
    text->remove_prefix(std::size_t(stop - text->data()));
    return true;
}

bool take_text(std::string_view* text, std::string_view start)
{
    if (text->substr(0, start.size()) != start)
        return false;
    text->remove_prefix(start.size());
    return true;
}

std::optional<LOCATION> parse_location(std::string_view text)
{
    LOCATION result;
    if (!take_text(&text, "X") || !take_number(&text, &result.tile.column) || !take_text(&text, "/Y") ||
        !take_number(&text, &result.tile.row) || !take_text(&text, "/") || text.empty())
        return std::nullopt;
    result.name = text;
    return result;
}

/// Where the wire in front of a pip lies: "6.5.lutff_7:cout" of the name "6.5.lutff_7:cout.->.6.6.carry_in_mux". A pip
/// of another form gives its own place.
LOCATION get_source(const LOCATION& pip)
{
    LOCATION result;
    std::string_view text = pip.name;
    const std::size_t arrow = text.find(".->.");
    if (arrow == std::string_view::npos)
        return pip;
    text = text.substr(0, arrow);
    if (!take_number(&text, &result.tile.column) || !take_text(&text, ".") || !take_number(&text, &result.tile.row) ||
        !take_text(&text, ".") || text.empty())
        return pip;
    result.name = text;
    return result;
}

/// "lc4" is the name "lc" and the number 4; a name without a number that can be one of a site has number 0.
struct SITE_NAME
{
    std::string_view base;
    int number = 0;
};

SITE_NAME split_site_name(std::string_view name)
{
    const std::size_t last = name.find_last_not_of("0123456789");
    const std::size_t first_digit = last == std::string_view::npos ? 0 : last + 1;
    std::string_view digits = name.substr(first_digit);
    int number = 0;
    if (digits.empty() || digits.size() > 2 || !take_number(&digits, &number) ||
        number > FLOORPLAN::LARGEST_SITE_NUMBER)
        return {name, 0};
    return {name.substr(0, first_digit), number};
}

bool contains(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

FLOORPLAN::KIND get_kind(std::string_view type)
{
    if (contains(type, "RAM") || contains(type, "BRAM") || contains(type, "EBR") || contains(type, "DP16KD"))
        return FLOORPLAN::KIND::MEMORY;
    if (contains(type, "DSP") || contains(type, "MULT") || contains(type, "MAC16"))
        return FLOORPLAN::KIND::ARITHMETIC;
    if (contains(type, "PLL") || contains(type, "_GB") || contains(type, "OSC") || contains(type, "DCC"))
        return FLOORPLAN::KIND::CLOCK;
    if (contains(type, "IO") || contains(type, "IOB"))
        return FLOORPLAN::KIND::IO;
    if (contains(type, "LC") || contains(type, "LUT") || contains(type, "FF") || contains(type, "SLICE") ||
        contains(type, "COMB"))
        return FLOORPLAN::KIND::LOGIC;
    return FLOORPLAN::KIND::OTHER;
}

/// The same for the same text in each run of each build.
std::uint32_t get_hash(std::string_view text)
{
    std::uint32_t hash = 2166136261u;
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619u;
    return hash ^ (hash >> 15);
}
} // namespace

/// What is needed only while a floorplan comes into being.
struct FLOORPLAN::BUILDER
{
    struct PLACED_CELL
    {
        TILE tile;
        SITE_NAME name;
        std::uint32_t cell;
    };

    /// Of a tile: the base names of its sites, in order.
    using TILE_NAMES = std::vector<std::string_view>;

    explicit BUILDER(FLOORPLAN& floorplan);

    void read_places();
    void read_groups();
    void read_routing();
    void place_sites();
    void place_wires();

    FLOORPLAN& plan;
    const NETLIST& netlist;
    const NETLIST_MODULE& module;
    std::vector<PLACED_CELL> cells;
    std::map<std::string_view, int> site_counts; ///< of a base name: how many sites of it a tile has
    std::unordered_map<std::size_t, TILE_NAMES> tile_names;
    std::vector<std::uint32_t> group_of_cell;
    std::vector<std::pair<std::uint32_t, std::string_view>> routing; ///< net and its records
    int largest_column = -1;
    int largest_row = -1;

private:
    void include(TILE tile);
    int get_site_count(const TILE_NAMES& names) const;
    QRect get_site_rect(const TILE_NAMES& names, const PLACED_CELL& cell) const;
    QPoint get_wire_place(const LOCATION& wire) const;
    void add_wire(const QPoint& from, const QPoint& to, std::uint32_t net);
    void for_each_record(std::string_view text,
                         const std::function<void(const LOCATION&, const std::optional<LOCATION>&)>& use) const;
};

FLOORPLAN::BUILDER::BUILDER(FLOORPLAN& floorplan)
    : plan(floorplan), netlist(*floorplan.m_netlist), module(floorplan.get_module())
{
}

void FLOORPLAN::BUILDER::include(TILE tile)
{
    largest_column = std::max(largest_column, tile.column);
    largest_row = std::max(largest_row, tile.row);
}

void FLOORPLAN::BUILDER::read_places()
{
    const NETLIST_NAME key = netlist.names.find("NEXTPNR_BEL");
    for (std::uint32_t i = 0; i < module.cells.size(); ++i)
    {
        const NETLIST_NAME value = module.find_property(module.cells[i].attributes, key);
        const std::optional<LOCATION> location = parse_location(netlist.names.get(value));
        if (!location)
        {
            ++plan.m_unplaced_count;
            continue;
        }
        include(location->tile);
        const SITE_NAME name = split_site_name(location->name);
        int& count = site_counts[name.base];
        count = std::max(count, name.number + 1);
        cells.push_back({location->tile, name, i});
    }
}

void FLOORPLAN::BUILDER::read_groups()
{
    std::map<std::string_view, std::uint32_t> numbers{{"", 0}};
    const auto get_group = [&](std::uint32_t cell)
    {
        const std::string_view name = netlist.names.get(module.cells[cell].name);
        const std::size_t dot = name.empty() || name[0] == '$' ? std::string_view::npos : name.find('.');
        return dot == std::string_view::npos ? std::string_view() : name.substr(0, dot);
    };
    for (const PLACED_CELL& cell : cells)
        numbers.emplace(get_group(cell.cell), 0);
    for (auto& [name, number] : numbers)
    {
        number = std::uint32_t(plan.m_groups.size());
        plan.m_groups.emplace_back(name);
    }
    group_of_cell.resize(module.cells.size());
    for (const PLACED_CELL& cell : cells)
        group_of_cell[cell.cell] = numbers[get_group(cell.cell)];
}

/// Calls for the records of a net whose wire has a place, with the pip where it has one.
void FLOORPLAN::BUILDER::for_each_record(
    std::string_view text, const std::function<void(const LOCATION&, const std::optional<LOCATION>&)>& use) const
{
    const auto take_field = [&text]
    {
        const std::size_t end = std::min(text.find(';'), text.size());
        const std::string_view field = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        return field;
    };
    while (!text.empty())
    {
        const std::optional<LOCATION> wire = parse_location(take_field());
        const std::optional<LOCATION> pip = parse_location(take_field());
        take_field(); // the strength
        if (wire)
            use(*wire, pip);
    }
}

void FLOORPLAN::BUILDER::read_routing()
{
    const NETLIST_NAME key = netlist.names.find("ROUTING");
    for (std::uint32_t i = 0; i < module.nets.size(); ++i)
    {
        const NETLIST_NAME value = module.find_property(module.nets[i].attributes, key);
        const std::string_view records = netlist.names.get(value);
        if (records.empty())
            continue;
        routing.emplace_back(i, records);
        for_each_record(records,
                        [this](const LOCATION& wire, const std::optional<LOCATION>& pip)
                        {
                            include(wire.tile);
                            if (!pip)
                                return;
                            include(pip->tile);
                            include(get_source(*pip).tile);
                        });
    }
}

int FLOORPLAN::BUILDER::get_site_count(const TILE_NAMES& names) const
{
    int count = 0;
    for (const std::string_view name : names)
        count += site_counts.at(name);
    return count;
}

QRect FLOORPLAN::BUILDER::get_site_rect(const TILE_NAMES& names, const PLACED_CELL& cell) const
{
    int slot = cell.name.number;
    for (const std::string_view name : names)
    {
        if (name == cell.name.base)
            break;
        slot += site_counts.at(name);
    }
    const int count = get_site_count(names);
    const int height = TILE_SIZE - 2 * MARGIN;
    const int bottom = MARGIN + height * slot / count;
    const int top = MARGIN + height * (slot + 1) / count;
    const QRect tile = plan.get_tile_rect(cell.tile.column, cell.tile.row);
    return QRect(tile.x() + SITE_X, tile.y() + TILE_SIZE - top, TILE_SIZE - SITE_X - MARGIN,
                 std::max(top - bottom - SITE_GAP, 1));
}

void FLOORPLAN::BUILDER::place_sites()
{
    for (const PLACED_CELL& cell : cells)
    {
        TILE_NAMES& names = tile_names[plan.get_tile_index(cell.tile.column, cell.tile.row)];
        const auto place = std::lower_bound(names.begin(), names.end(), cell.name.base);
        if (place == names.end() || *place != cell.name.base)
            names.insert(place, cell.name.base);
    }
    plan.m_sites.reserve(cells.size());
    for (const PLACED_CELL& cell : cells)
    {
        const std::size_t tile = plan.get_tile_index(cell.tile.column, cell.tile.row);
        const KIND kind = get_kind(netlist.names.get(module.cells[cell.cell].type));
        plan.m_tile_kinds[tile] = std::min(plan.m_tile_kinds[tile], kind);
        plan.m_sites.push_back({get_site_rect(tile_names[tile], cell), cell.cell, group_of_cell[cell.cell], kind});
    }
}

/// Wires at pins ("lutff_3:in_1") end beside their site, all others have a track by their name.
QPoint FLOORPLAN::BUILDER::get_wire_place(const LOCATION& wire) const
{
    const QPoint tile = plan.get_tile_rect(wire.tile.column, wire.tile.row).topLeft();
    const std::uint32_t hash = get_hash(wire.name);
    const std::size_t colon = wire.name.find(':');
    const auto names = tile_names.find(plan.get_tile_index(wire.tile.column, wire.tile.row));
    if (colon == std::string_view::npos || names == tile_names.end())
        return tile + QPoint(FIRST_TRACK + TRACK_PITCH * int(hash % COLUMN_TRACKS),
                             FIRST_TRACK + TRACK_PITCH * int(hash / COLUMN_TRACKS % ROW_TRACKS));
    const int count = get_site_count(names->second);
    const int slot = std::min(split_site_name(wire.name.substr(0, colon)).number, count - 1);
    const int height = (TILE_SIZE - 2 * MARGIN) / count;
    const int offset = height > SITE_GAP + 1 ? int(hash % std::uint32_t(height - SITE_GAP)) : 0;
    return tile + QPoint(PIN_X, TILE_SIZE - MARGIN - height * (slot + 1) + SITE_GAP / 2 + offset);
}

void FLOORPLAN::BUILDER::add_wire(const QPoint& from, const QPoint& to, std::uint32_t net)
{
    if (from != to)
        plan.m_wires.push_back({std::min(from.x(), to.x()), std::min(from.y(), to.y()), std::max(from.x(), to.x()),
                                std::max(from.y(), to.y()), net});
}

void FLOORPLAN::BUILDER::place_wires()
{
    plan.m_wires_of_net.resize(module.nets.size());
    for (const auto& [net, records] : routing)
    {
        NETLIST_RANGE& range = plan.m_wires_of_net[net];
        range.first = std::uint32_t(plan.m_wires.size());
        for_each_record(records,
                        [this, number = net](const LOCATION& wire, const std::optional<LOCATION>& pip)
                        {
                            if (!pip)
                                return;
                            const QPoint from = get_wire_place(get_source(*pip));
                            const QPoint to = get_wire_place(wire);
                            const QPoint corner(to.x(), from.y());
                            add_wire(from, corner, number);
                            add_wire(corner, to, number);
                        });
        range.count = std::uint32_t(plan.m_wires.size()) - range.first;
        for (const NETLIST_BIT bit : module.get_bits(module.nets[net].bits))
        {
            if (bit.is_net())
                plan.m_net_of_bit[bit.get_net()] = net;
        }
    }
}

FLOORPLAN::FLOORPLAN(std::shared_ptr<const NETLIST> netlist, std::uint32_t module)
    : m_netlist(std::move(netlist)), m_module(module)
{
    BUILDER builder(*this);
    builder.read_places();
    builder.read_groups();
    builder.read_routing();
    m_tile_count = QSize(builder.largest_column + 1, builder.largest_row + 1);
    m_tile_kinds.assign(std::size_t(m_tile_count.width()) * std::size_t(m_tile_count.height()), KIND::OTHER);
    builder.place_sites();
    builder.place_wires();
    build_index();
}

bool FLOORPLAN::is_placed(const NETLIST& netlist, const NETLIST_MODULE& module)
{
    const NETLIST_NAME key = netlist.names.find("NEXTPNR_BEL");
    return key != NETLIST_NAMES::NONE && std::any_of(module.cells.begin(), module.cells.end(),
                                                     [&](const NETLIST_CELL& cell)
                                                     {
                                                         const NETLIST_NAME value =
                                                             module.find_property(cell.attributes, key);
                                                         return parse_location(netlist.names.get(value)).has_value();
                                                     });
}

const NETLIST& FLOORPLAN::get_netlist() const
{
    return *m_netlist;
}

const NETLIST_MODULE& FLOORPLAN::get_module() const
{
    return m_netlist->modules[m_module];
}

QSize FLOORPLAN::get_tile_count() const
{
    return m_tile_count;
}

QRect FLOORPLAN::get_bounds() const
{
    return QRect(QPoint(0, 0), m_tile_count * TILE_SIZE);
}

QPoint FLOORPLAN::get_tile_at(const QPoint& position) const
{
    if (!get_bounds().contains(position))
        return QPoint(-1, -1);
    return QPoint(position.x() / TILE_SIZE, m_tile_count.height() - 1 - position.y() / TILE_SIZE);
}

QRect FLOORPLAN::get_tile_rect(int column, int row) const
{
    return QRect(column * TILE_SIZE, (m_tile_count.height() - 1 - row) * TILE_SIZE, TILE_SIZE, TILE_SIZE);
}

FLOORPLAN::KIND FLOORPLAN::get_tile_kind(int column, int row) const
{
    return m_tile_kinds[get_tile_index(column, row)];
}

const std::vector<FLOORPLAN::SITE>& FLOORPLAN::get_sites() const
{
    return m_sites;
}

const std::vector<FLOORPLAN::WIRE>& FLOORPLAN::get_wires() const
{
    return m_wires;
}

const std::vector<std::string>& FLOORPLAN::get_groups() const
{
    return m_groups;
}

std::uint32_t FLOORPLAN::get_unplaced_count() const
{
    return m_unplaced_count;
}

std::uint32_t FLOORPLAN::find_item(const QPoint& position) const
{
    const QRect tiles = get_tiles(QRect(position, QSize(1, 1)));
    if (tiles.isEmpty())
        return NONE;
    const std::size_t tile = std::size_t(tiles.y()) * std::size_t(m_tile_count.width()) + std::size_t(tiles.x());
    for (std::uint32_t i = m_first_site[tile]; i < m_first_site[tile + 1]; ++i)
    {
        if (m_sites[i].rect.contains(position))
            return i;
    }
    return NONE;
}

std::uint32_t FLOORPLAN::find_item_of_cell(std::uint32_t cell) const
{
    return cell < m_site_of_cell.size() ? m_site_of_cell[cell] : NONE;
}

std::uint32_t FLOORPLAN::find_net(const QPoint& position, int distance) const
{
    const auto get_gap = [](int value, int low, int high) { return std::max({low - value, value - high, 0}); };
    std::uint32_t nearest = NONE;
    int nearest_distance = distance + 1;
    const QRect rect(position - QPoint(distance, distance), position + QPoint(distance, distance));
    visit_wires(rect,
                [&](const WIRE* wires, std::size_t count)
                {
                    for (const WIRE* wire = wires; wire != wires + count; ++wire)
                    {
                        const int gap = std::max(get_gap(position.x(), wire->x1, wire->x2),
                                                 get_gap(position.y(), wire->y1, wire->y2));
                        if (gap >= nearest_distance)
                            continue;
                        nearest_distance = gap;
                        nearest = wire->net;
                    }
                });
    return nearest;
}

std::vector<std::uint32_t> FLOORPLAN::find_items_within(const QRect& rect) const
{
    std::vector<std::uint32_t> result;
    visit_sites(rect,
                [&](const SITE* sites, std::size_t count)
                {
                    for (const SITE* site = sites; site != sites + count; ++site)
                    {
                        if (rect.contains(site->rect))
                            result.push_back(std::uint32_t(site - m_sites.data()));
                    }
                });
    return result;
}

QRect FLOORPLAN::get_item_rect(std::uint32_t item) const
{
    return m_sites[item].rect;
}

std::uint32_t FLOORPLAN::get_cell_of_item(std::uint32_t item) const
{
    return m_sites[item].cell;
}

std::vector<std::uint32_t> FLOORPLAN::get_nets_of_item(std::uint32_t item) const
{
    return get_nets_of_cell(m_sites[item].cell);
}

std::vector<std::uint32_t> FLOORPLAN::get_nets_of_cell(std::uint32_t cell) const
{
    std::vector<std::uint32_t> nets;
    const NETLIST_MODULE& module = get_module();
    for (const NETLIST_CONNECTION& connection : module.get_connections(module.cells[cell].connections))
    {
        for (const NETLIST_BIT bit : module.get_bits(connection.bits))
        {
            const auto net = bit.is_net() ? m_net_of_bit.find(bit.get_net()) : m_net_of_bit.end();
            if (net != m_net_of_bit.end())
                nets.push_back(net->second);
        }
    }
    std::sort(nets.begin(), nets.end());
    nets.erase(std::unique(nets.begin(), nets.end()), nets.end());
    return nets;
}

NETLIST_RANGE FLOORPLAN::get_wires_of_net(std::uint32_t net) const
{
    return m_wires_of_net[net];
}

void FLOORPLAN::visit_sites(const QRect& rect, const std::function<void(const SITE*, std::size_t count)>& visit) const
{
    const QRect tiles = get_tiles(rect);
    for (int y = tiles.top(); y <= tiles.bottom(); ++y)
    {
        const std::size_t line = std::size_t(y) * std::size_t(m_tile_count.width());
        const std::uint32_t first = m_first_site[line + std::size_t(tiles.left())];
        const std::uint32_t end = m_first_site[line + std::size_t(tiles.right()) + 1];
        if (first < end)
            visit(&m_sites[first], end - first);
    }
}

void FLOORPLAN::visit_wires(const QRect& rect, const std::function<void(const WIRE*, std::size_t count)>& visit) const
{
    const QRect tiles = get_tiles(rect);
    if (tiles.isEmpty() || m_wires.empty())
        return;
    if (tiles.size() == m_tile_count)
    {
        visit(m_wires.data(), m_wires.size());
        return;
    }
    for (const WIRE& wire : m_long_wires)
    {
        if (wire.x1 <= rect.right() && wire.x2 >= rect.left() && wire.y1 <= rect.bottom() && wire.y2 >= rect.top())
            visit(&wire, 1);
    }
    for (int y = tiles.top(); y <= tiles.bottom(); ++y)
    {
        for (int x = tiles.left(); x <= tiles.right(); ++x)
        {
            const std::size_t tile = std::size_t(y) * std::size_t(m_tile_count.width()) + std::size_t(x);
            for (std::uint32_t i = m_first_wire_entry[tile]; i < m_first_wire_entry[tile + 1]; ++i)
            {
                // A wire counts with the first of the asked tiles that it crosses.
                const WIRE& wire = m_wire_entries[i];
                if (std::max(wire.x1 / TILE_SIZE, tiles.left()) == x && std::max(wire.y1 / TILE_SIZE, tiles.top()) == y)
                    visit(&wire, 1);
            }
        }
    }
}

std::size_t FLOORPLAN::get_tile_index(int column, int row) const
{
    return std::size_t(m_tile_count.height() - 1 - row) * std::size_t(m_tile_count.width()) + std::size_t(column);
}

QRect FLOORPLAN::get_tiles(const QRect& rect) const
{
    const QRect part = rect.normalized() & get_bounds();
    if (part.isEmpty())
        return QRect();
    return QRect(QPoint(part.left() / TILE_SIZE, part.top() / TILE_SIZE),
                 QPoint(part.right() / TILE_SIZE, part.bottom() / TILE_SIZE));
}

void FLOORPLAN::build_index()
{
    const std::size_t width = std::size_t(m_tile_count.width());
    const auto get_tile = [&](int x, int y) { return std::size_t(y / TILE_SIZE) * width + std::size_t(x / TILE_SIZE); };
    const auto is_before = [&](const SITE& a, const SITE& b)
    { return get_tile(a.rect.x(), a.rect.y()) < get_tile(b.rect.x(), b.rect.y()); };
    std::stable_sort(m_sites.begin(), m_sites.end(), is_before);
    m_first_site.assign(m_tile_kinds.size() + 1, 0);
    m_site_of_cell.assign(get_module().cells.size(), NONE);
    for (std::uint32_t i = 0; i < m_sites.size(); ++i)
    {
        ++m_first_site[get_tile(m_sites[i].rect.x(), m_sites[i].rect.y()) + 1];
        m_site_of_cell[m_sites[i].cell] = i;
    }
    for (std::size_t i = 1; i < m_first_site.size(); ++i)
        m_first_site[i] += m_first_site[i - 1];

    build_wire_index();
}

void FLOORPLAN::build_wire_index()
{
    const std::size_t width = std::size_t(m_tile_count.width());
    const auto is_long = [](const WIRE& wire) { return wire.x2 - wire.x1 + wire.y2 - wire.y1 > LONG_WIRE; };
    const auto for_each_tile = [&](const auto& use)
    {
        for (const WIRE& wire : m_wires)
        {
            if (is_long(wire))
                continue;
            for (int y = wire.y1 / TILE_SIZE; y <= wire.y2 / TILE_SIZE; ++y)
            {
                for (int x = wire.x1 / TILE_SIZE; x <= wire.x2 / TILE_SIZE; ++x)
                    use(wire, std::size_t(y) * width + std::size_t(x));
            }
        }
    };
    std::copy_if(m_wires.begin(), m_wires.end(), std::back_inserter(m_long_wires), is_long);
    m_first_wire_entry.assign(m_tile_kinds.size() + 1, 0);
    for_each_tile([&](const WIRE&, std::size_t tile) { ++m_first_wire_entry[tile + 1]; });
    for (std::size_t i = 1; i < m_first_wire_entry.size(); ++i)
        m_first_wire_entry[i] += m_first_wire_entry[i - 1];
    m_wire_entries.resize(m_first_wire_entry.back());
    std::vector<std::uint32_t> next(m_first_wire_entry.begin(), m_first_wire_entry.end() - 1);
    for_each_tile([&](const WIRE& wire, std::size_t tile) { m_wire_entries[next[tile]++] = wire; });
}

QString floorplan_get_kind_text(FLOORPLAN::KIND kind)
{
    switch (kind)
    {
    case FLOORPLAN::KIND::LOGIC:
        return QStringLiteral("Logic");
    case FLOORPLAN::KIND::MEMORY:
        return QStringLiteral("Memory");
    case FLOORPLAN::KIND::ARITHMETIC:
        return QStringLiteral("Arithmetic");
    case FLOORPLAN::KIND::IO:
        return QStringLiteral("Input and output");
    case FLOORPLAN::KIND::CLOCK:
        return QStringLiteral("Clock");
    case FLOORPLAN::KIND::OTHER:
        break;
    }
    return QStringLiteral("Other");
}
