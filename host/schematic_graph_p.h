#pragma once

#include "schematic.h"

#include <vector>

/// What is to be placed: the boxes of a drawing with their sizes, and which pin drives which.
struct SCHEMATIC_GRAPH
{
    struct PIN_NUMBER
    {
        std::uint32_t box = 0;
        std::uint32_t pin = 0;
    };
    struct EDGE
    {
        PIN_NUMBER from;
        PIN_NUMBER to;
        std::uint32_t net = 0; ///< those of a net follow each other
    };

    std::vector<EDGE> edges;
    // Room that labels need beside each box.
    std::vector<int> left_margins;
    std::vector<int> right_margins;
};

/// Makes the boxes of the module, sizes included, and the nets between them.
SCHEMATIC_GRAPH schematic_build(const NETLIST& netlist, const NETLIST_MODULE& module, SCHEMATIC* schematic);

/// Gives the boxes their places and draws the lines. False where the layout failed.
bool schematic_place(const SCHEMATIC_GRAPH& graph, SCHEMATIC* schematic);

/// Where Graphviz would have the middle of each box, and where its edges run.
struct SCHEMATIC_PLACES
{
    std::vector<QPointF> boxes;
    std::vector<std::vector<QPointF>> edges; ///< points along each edge, from its beginning to its end
};

/// Runs Graphviz, whose library serves one caller at a time: others wait. False where it failed.
bool schematic_run_graphviz(const SCHEMATIC_GRAPH& graph, const SCHEMATIC& schematic, SCHEMATIC_PLACES* places);

/// Draws the lines once the boxes have their columns and heights; moves the boxes apart in x as the lines need it.
/// @param columns of each box, from 0
void schematic_route(const SCHEMATIC_GRAPH& graph, const SCHEMATIC_PLACES& places,
                     const std::vector<std::uint32_t>& columns, SCHEMATIC* schematic);
