#pragma once

#include "drawing.h"
#include "netlist.h"

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

/// A placed and routed module as a drawing: the chip's tiles, the sites that cells occupy and the wires of the nets.
/// Where things lie comes from the attributes that the place and route tool writes: "NEXTPNR_BEL" of a cell
/// ("X5/Y14/lc4": the site lc4 in the tile of column 5 and row 14) and "ROUTING" of a net (records "wire;pip;strength",
/// whose names begin with the tile, too).
///
/// The drawing is in whole units, TILE_SIZE of them for a tile, x to the right and y down; row 0 of the chip is at the
/// bottom. The left part of a tile is for wires, the right part for its sites, number 0 lowest. Where in its tile a wire
/// runs is not known, so each name has a place of its own: the same name always the same one.
///
/// Built once, on any thread, and not changed any more. Keeps the netlist alive.
class FLOORPLAN : public DRAWING
{
public:
    static constexpr int TILE_SIZE = 256;
    static constexpr int LARGEST_COLUMN = 4095;    ///< and row; what lies beyond counts as not placed
    static constexpr int LARGEST_SITE_NUMBER = 63; ///< of a name such as "lc4"; a higher one is part of the name

    enum class KIND : std::uint8_t
    {
        LOGIC,
        MEMORY,
        ARITHMETIC,
        IO,
        CLOCK,
        OTHER
    };

    /// A cell at its site.
    struct SITE
    {
        QRect rect;
        std::uint32_t cell = 0;  ///< index in the module
        std::uint32_t group = 0; ///< index in get_groups()
        KIND kind = KIND::OTHER;
    };

    /// A piece of a net, horizontal or vertical: both ends belong to it, and the first one is the left or upper one.
    struct WIRE
    {
        std::int32_t x1 = 0;
        std::int32_t y1 = 0;
        std::int32_t x2 = 0;
        std::int32_t y2 = 0;
        std::uint32_t net = 0; ///< index in the module
    };

    /// @param netlist not null
    /// @param module  index in the netlist
    FLOORPLAN(std::shared_ptr<const NETLIST> netlist, std::uint32_t module);

    /// Whether any cell of the module has a place.
    static bool is_placed(const NETLIST& netlist, const NETLIST_MODULE& module);

    const NETLIST& get_netlist() const;
    const NETLIST_MODULE& get_module() const;

    /// Columns and rows of tiles, 0 of both where nothing is placed.
    QSize get_tile_count() const;
    /// Column and row of the tile at a place; x or y is -1 outside.
    QPoint get_tile_at(const QPoint& position) const;
    /// The area of a tile.
    QRect get_tile_rect(int column, int row) const;
    /// What the sites of a tile are; OTHER where none is known.
    KIND get_tile_kind(int column, int row) const;

    const std::vector<SITE>& get_sites() const;
    const std::vector<WIRE>& get_wires() const; ///< those of a net follow each other
    /// Names of the instances at the top of the hierarchy that cells belong to, as their names tell ("u_uart" of
    /// "u_uart.line"); the empty name, of cells of the top itself, is the first one.
    const std::vector<std::string>& get_groups() const;
    /// Cells whose place is missing or is none.
    std::uint32_t get_unplaced_count() const;

    // Items are sites.
    /// All tiles together.
    QRect get_bounds() const override;
    std::uint32_t find_item(const QPoint& position) const override;
    std::vector<std::uint32_t> find_items_within(const QRect& rect) const override;
    std::uint32_t find_item_of_cell(std::uint32_t cell) const override;
    QRect get_item_rect(std::uint32_t item) const override;
    std::uint32_t get_cell_of_item(std::uint32_t item) const override;
    std::uint32_t find_net(const QPoint& position, int distance) const override;
    std::vector<std::uint32_t> get_nets_of_item(std::uint32_t item) const override;

    /// Nets at the cell's pins that are routed, each once.
    std::vector<std::uint32_t> get_nets_of_cell(std::uint32_t cell) const;
    /// Range of get_wires() that belongs to a net.
    NETLIST_RANGE get_wires_of_net(std::uint32_t net) const;

    /// Calls for each site that can touch the rectangle, each once.
    void visit_sites(const QRect& rect, const std::function<void(const SITE*, std::size_t count)>& visit) const;
    /// Calls with wires that can touch the rectangle, in pieces; a wire comes once.
    void visit_wires(const QRect& rect, const std::function<void(const WIRE*, std::size_t count)>& visit) const;

private:
    struct BUILDER;

    std::size_t get_tile_index(int column, int row) const;
    /// The tiles that a rectangle touches, as columns and rows counted from the upper left; empty for none.
    QRect get_tiles(const QRect& rect) const;
    void build_index();
    void build_wire_index();

    std::shared_ptr<const NETLIST> m_netlist;
    std::uint32_t m_module;
    QSize m_tile_count;
    std::vector<KIND> m_tile_kinds;
    std::vector<SITE> m_sites; ///< by tile, lines of tiles from the top
    std::vector<WIRE> m_wires; ///< by net
    std::vector<std::string> m_groups;
    std::uint32_t m_unplaced_count = 0;
    std::vector<std::uint32_t> m_site_of_cell;
    std::vector<NETLIST_RANGE> m_wires_of_net;
    std::unordered_map<std::uint32_t, std::uint32_t> m_net_of_bit; ///< bits of routed nets
    std::vector<std::uint32_t> m_first_site;       ///< of each tile, in the order of m_sites, and one behind the last
    std::vector<std::uint32_t> m_first_wire_entry; ///< of each tile, and one behind the last
    std::vector<WIRE> m_wire_entries;              ///< of each tile the wires that cross it, but for the long ones
    std::vector<WIRE> m_long_wires;                ///< looked at for any rectangle
};

/// Name of a kind for the user: "Logic".
QString floorplan_get_kind_text(FLOORPLAN::KIND kind);
