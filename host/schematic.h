#pragma once

#include "drawing.h"
#include "netlist.h"

#include <QPoint>
#include <QRect>
#include <QString>

#include <cstdint>
#include <memory>
#include <vector>

/// The drawing of one module: its ports and cells as boxes in columns from left to right, its nets as lines along the
/// axes. All measures are whole units, at 100 % one pixel each; y grows downwards.
///
/// A net with very many pins, such as a clock, is not drawn: its pins carry its name instead, as do pins that nothing
/// drives and pins at a constant.
class SCHEMATIC : public DRAWING
{
public:
    enum class KIND : std::uint8_t
    {
        INSTANCE, ///< of a module of the design
        REGISTER,
        MULTIPLEXER,
        OPERATOR,
        MEMORY,
        LOGIC, ///< any other cell
        INPUT_PORT,
        OUTPUT_PORT,
        INOUT_PORT
    };

    struct PIN
    {
        QString name;
        QString label; ///< what stands at the pin in the place of a line; empty for none
        QPoint position;
        bool is_left = true;       ///< at which side of its box
        bool is_constant = false;  ///< what `label` says
        bool is_connected = false; ///< has a line
        std::uint32_t width = 1;   ///< in bits
    };

    struct BOX
    {
        KIND kind = KIND::LOGIC;
        std::uint32_t index = 0; ///< of the cell or port in the module
        QRect rect;
        QString title; ///< of a cell its type, of a port its name
        QString name;  ///< of a cell; empty for a port
        std::vector<PIN> pins;

        bool is_port() const;
    };

    /// What one pin drives.
    struct NET
    {
        QString name;
        std::uint32_t width = 1; ///< in bits
        bool is_clock = false;
    };

    /// Horizontal or vertical; the first end is the left or upper one.
    struct WIRE
    {
        QPoint from;
        QPoint to;
        std::uint32_t net = 0;
    };

    /// Where three or more lines of a net meet.
    struct JUNCTION
    {
        QPoint position;
        std::uint32_t net = 0;
    };

    /// More boxes than this take too long to place, and nobody could read them.
    static constexpr std::size_t LARGEST_BOX_COUNT = 1500;

    /// Draws a module; takes from milliseconds to some seconds, and may be called on any thread. Null where the module
    /// has more boxes than LARGEST_BOX_COUNT, or where there was no memory to place them.
    /// @param netlist not null
    static std::shared_ptr<const SCHEMATIC> make(const std::shared_ptr<const NETLIST>& netlist, std::uint32_t module);
    /// How many boxes a module would have.
    static std::size_t get_box_count(const NETLIST_MODULE& module);

    std::vector<BOX> boxes;
    std::vector<NET> nets;
    std::vector<WIRE> wires; ///< by net
    std::vector<JUNCTION> junctions;
    QRect bounds; ///< of all of it, with a margin

    // Items are boxes.
    QRect get_bounds() const override;
    std::uint32_t find_item(const QPoint& position) const override;
    std::vector<std::uint32_t> find_items_within(const QRect& rect) const override;
    std::uint32_t find_item_of_cell(std::uint32_t cell) const override;
    QRect get_item_rect(std::uint32_t item) const override;
    std::uint32_t get_cell_of_item(std::uint32_t item) const override;
    std::uint32_t find_net(const QPoint& position, int distance) const override;
    std::vector<std::uint32_t> get_nets_of_item(std::uint32_t item) const override;
};

// Measures of the drawing, in its units.
namespace SCHEMATIC_MEASURES
{
constexpr int PIN_PITCH = 18;
constexpr int CHARACTER_WIDTH = 7; ///< room for a character of a name
constexpr int CELL_HEADER = 36;    ///< two lines of text: title and name
constexpr int PORT_HEIGHT = 22;
constexpr int STUB_LENGTH = 10; ///< of the line between a pin and its label
constexpr int PIN_NAME_MARGIN = 5;
constexpr int LARGEST_LABEL_WIDTH = 160;
constexpr int TRACK_PITCH = 8;     ///< between two vertical lines
constexpr int CHANNEL_MARGIN = 16; ///< between a column of boxes and the first vertical line
} // namespace SCHEMATIC_MEASURES
