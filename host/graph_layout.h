#pragma once

#include <QPointF>
#include <QSize>
#include <QSizeF>

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

/// A layered layout from left to right, by the Graphviz library: add boxes and the lines between them, run it, ask for
/// the places. On any thread; the library serves one caller at a time, so a second layout waits in its constructor until
/// the first one is deleted. Measures are whole units; y grows downwards.
class GRAPH_LAYOUT
{
public:
    /// One piece of a line: its ends and the two points that bend it.
    using CURVE = std::array<QPointF, 4>;

    GRAPH_LAYOUT();
    ~GRAPH_LAYOUT();
    GRAPH_LAYOUT(const GRAPH_LAYOUT&) = delete;
    GRAPH_LAYOUT& operator=(const GRAPH_LAYOUT&) = delete;

    /// An attribute of the whole drawing, as the library names it: "nodesep" in inches of 72 units.
    void set_attribute(const char* name, const std::string& value);
    /// Lines leave boxes in the middle of the right side, and come in at the middle of the left one, rather than anywhere.
    void use_middles_of_sides();
    /// Boxes and lines are numbered from 0 in the order in which they come.
    void add_box(const QSize& size);
    /// @param label what stands at the line, only for its room; empty for none
    void add_line(std::uint32_t from, std::uint32_t to, const std::string& label = std::string());
    /// Puts boxes into the first column, or the last one.
    void set_first_column(const std::vector<std::uint32_t>& boxes);
    void set_last_column(const std::vector<std::uint32_t>& boxes);

    /// Finds the places; once. False where it failed, for want of memory.
    bool run();

    /// The middle of a box.
    QPointF get_box(std::uint32_t number) const;
    /// The way of a line, from its beginning to its end; empty where there is none.
    std::vector<CURVE> get_line(std::uint32_t number) const;
    /// Finds the middle of a line's label. False where it has none.
    bool get_label(std::uint32_t number, QPointF* middle) const;

private:
    struct IMPL;
    std::unique_ptr<IMPL> m_impl;
};
