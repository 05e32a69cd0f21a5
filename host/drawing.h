#pragma once

#include <QPoint>
#include <QRect>

#include <cstdint>
#include <vector>

class QPainter;

/// What a DRAWING_VIEW shows of a module: items, most of which are its cells, and nets, in whole units, y downwards. Both
/// go by number. Built once, on any thread, and then constant.
class DRAWING
{
public:
    static constexpr std::uint32_t NONE = 0xffffffff;

    virtual ~DRAWING();

    /// Bounds of all of it.
    virtual QRect get_bounds() const = 0;
    /// The item at a place; NONE for none.
    virtual std::uint32_t find_item(const QPoint& position) const = 0;
    /// The items that lie in the rectangle with all their area, in ascending order.
    virtual std::vector<std::uint32_t> find_items_within(const QRect& rect) const = 0;
    /// The item of a cell; NONE where the drawing does not have it.
    virtual std::uint32_t find_item_of_cell(std::uint32_t cell) const = 0;
    virtual QRect get_item_rect(std::uint32_t item) const = 0;
    /// The cell of an item, by its index in the module; NONE for an item that is no cell.
    virtual std::uint32_t get_cell_of_item(std::uint32_t item) const = 0;
    /// The net whose line is nearest to a place, not farther off than `distance`; NONE for none.
    virtual std::uint32_t find_net(const QPoint& position, int distance) const = 0;
    /// The nets that have a line at an item, each once, in ascending order.
    virtual std::vector<std::uint32_t> get_nets_of_item(std::uint32_t item) const = 0;

    /// How many pixels of what is painted on count as one of a usual screen, of 96 to the inch: more on paper.
    static double get_pixel_size(const QPainter& painter);

protected:
    DRAWING() = default;
    DRAWING(const DRAWING&) = default;
    DRAWING& operator=(const DRAWING&) = default;
    DRAWING(DRAWING&&) = default;
    DRAWING& operator=(DRAWING&&) = default;
};
