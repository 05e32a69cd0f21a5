#pragma once

#include "netlist_names.h"

#include <gsl/span>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// A netlist in memory, as the reader leaves it. It is handed round as `std::shared_ptr<const NETLIST>`: nobody changes
/// it any more, so any thread may read it without a lock. It is built for designs of 10^5 cells and more: records are
/// small, texts are numbers (NETLIST_NAMES), and what belongs to a cell or net is a range in one flat vector of its
/// module.

/// One bit of a port, connection or net: a net of the module, by its number, or a constant.
class NETLIST_BIT
{
public:
    static constexpr std::uint32_t LARGEST_NET = 0x7fffffff;

    /// @param net 0 to LARGEST_NET
    static NETLIST_BIT from_net(std::uint32_t net);
    /// @param sign '0', '1', 'x' or 'z'
    static NETLIST_BIT from_constant(char sign);

    bool is_net() const;
    /// Number of the net; only where is_net().
    std::uint32_t get_net() const;
    /// '0', '1', 'x' or 'z'; only where not is_net().
    char get_constant() const;

private:
    explicit NETLIST_BIT(std::uint32_t code);

    std::uint32_t m_code; ///< the net's number, or the constant's sign with the highest bit set
};

enum class NETLIST_DIRECTION : std::uint8_t
{
    UNKNOWN, ///< the file does not say
    INPUT,
    OUTPUT,
    INOUT
};

/// A piece of one of a module's flat vectors.
struct NETLIST_RANGE
{
    std::uint32_t first = 0;
    std::uint32_t count = 0;
};

/// An attribute or a parameter. Numbers are kept as their decimal text.
struct NETLIST_PROPERTY
{
    NETLIST_NAME key = NETLIST_NAMES::EMPTY;
    NETLIST_NAME value = NETLIST_NAMES::EMPTY;
};

/// A port of a module.
struct NETLIST_PORT
{
    NETLIST_NAME name = NETLIST_NAMES::EMPTY;
    NETLIST_DIRECTION direction = NETLIST_DIRECTION::UNKNOWN;
    bool is_upward = false;  ///< the leftmost index is the lowest: [0:7]
    std::int32_t offset = 0; ///< lowest index
    NETLIST_RANGE bits;      ///< from the lowest index upwards
};

/// What lies at one port of a cell.
struct NETLIST_CONNECTION
{
    NETLIST_NAME port = NETLIST_NAMES::EMPTY;
    NETLIST_DIRECTION direction = NETLIST_DIRECTION::UNKNOWN;
    NETLIST_RANGE bits; ///< empty where the port is open
};

/// A cell: of the technology, or an instance of another module of the file.
struct NETLIST_CELL
{
    static constexpr std::uint32_t NO_MODULE = 0xffffffff;

    NETLIST_NAME name = NETLIST_NAMES::EMPTY;
    NETLIST_NAME type = NETLIST_NAMES::EMPTY;
    std::uint32_t module = NO_MODULE; ///< index of the module that describes the type, library modules included
    bool has_hidden_name = false;     ///< a tool made the name up
    NETLIST_RANGE connections;
    NETLIST_RANGE parameters;
    NETLIST_RANGE attributes;
};

/// A named net or bus. Several names may stand for the same bits.
struct NETLIST_NET
{
    NETLIST_NAME name = NETLIST_NAMES::EMPTY;
    bool has_hidden_name = false;
    bool is_upward = false;
    std::int32_t offset = 0;
    NETLIST_RANGE bits;
    NETLIST_RANGE attributes;
};

/// A module. The order of ports, cells and nets is that of the file.
struct NETLIST_MODULE
{
    NETLIST_NAME name = NETLIST_NAMES::EMPTY;
    /// It only describes a cell of the technology (attribute "blackbox" or "whitebox"): cells of that type are leaves.
    bool is_library = false;
    NETLIST_RANGE attributes;
    std::vector<NETLIST_PORT> ports;
    std::vector<NETLIST_CELL> cells;
    std::vector<NETLIST_NET> nets;

    std::vector<std::uint32_t> instances; ///< indices of those cells that are instances of modules
    /// Cells of the technology in it and in all instances below it. Stops at the largest value.
    std::uint64_t leaf_cell_count = 0;

    // What the ranges point into.
    std::vector<NETLIST_BIT> bits;
    std::vector<NETLIST_CONNECTION> connections;
    std::vector<NETLIST_PROPERTY> properties;

    gsl::span<const NETLIST_BIT> get_bits(NETLIST_RANGE range) const;
    gsl::span<const NETLIST_CONNECTION> get_connections(NETLIST_RANGE range) const;
    gsl::span<const NETLIST_PROPERTY> get_properties(NETLIST_RANGE range) const;
    /// The value of a property in the range; NETLIST_NAMES::NONE where it has none of that key.
    NETLIST_NAME find_property(NETLIST_RANGE range, NETLIST_NAME key) const;
};

/// A whole file.
struct NETLIST
{
    std::string file;    ///< where it was read from
    std::string creator; ///< the tool that wrote it
    NETLIST_NAMES names;
    std::vector<NETLIST_MODULE> modules;
    /// The modules that begin the hierarchy: those marked as top, then all others that are instantiated nowhere and do
    /// not come from a library. Never empty in a netlist that the reader gave out.
    std::vector<std::uint32_t> top_modules;
    /// All modules, each behind those that it instantiates.
    std::vector<std::uint32_t> bottom_up;

    /// Whether the cell is an instance of a module of the design.
    bool is_instance(const NETLIST_CELL& cell) const;

    /// Name of a module for the user: a module that was made for certain parameters has the name that its source gives
    /// it ("sync_fifo"), where the file tells it.
    std::string_view get_display_name(const NETLIST_MODULE& module) const;
};

/// Name of a direction as the file has it; an empty text for UNKNOWN.
const char* netlist_get_direction_text(NETLIST_DIRECTION direction);
