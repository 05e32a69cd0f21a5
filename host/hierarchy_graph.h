#pragma once

#include "netlist.h"

#include <QCoreApplication>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <vector>

/// The modules of a design as a graph, from the tops at the left to the modules that hold no other at the right: a node
/// for each module, however often it is used, and an edge from a module to each one that it instantiates. Modules of
/// libraries, which only describe cells, are not in it. Measures are units, at 100 % one pixel each; y grows downwards.
///
/// Built once, on any thread, and not changed any more. Keeps the netlist alive.
class HIERARCHY_GRAPH
{
    Q_DECLARE_TR_FUNCTIONS(HIERARCHY_GRAPH)

public:
    static constexpr std::uint32_t NONE = 0xffffffff;
    /// More than these take too long to place, and nobody could read them.
    static constexpr std::size_t LARGEST_NODE_COUNT = 3000;
    static constexpr std::size_t LARGEST_EDGE_COUNT = 4000;

    struct NODE
    {
        std::uint32_t module = 0; ///< index in the netlist
        QString name;             ///< of the module
        QString details;          ///< how often it is there, and its size
        /// How many instances of it the whole design has; of a top one more. Stops at the largest value.
        std::uint64_t instance_count = 0;
        bool is_top = false;
        bool is_empty = false; ///< there is no cell in it, nor in what it holds
        QRectF rect;
        std::vector<std::uint32_t> parents;  ///< nodes that instantiate it, from the upper one down
        std::vector<std::uint32_t> children; ///< nodes that it instantiates, likewise
    };

    struct EDGE
    {
        std::uint32_t parent = 0;     ///< node
        std::uint32_t child = 0;      ///< node
        std::uint32_t first_cell = 0; ///< of the instances, the first one's index in the parent's module
        std::uint64_t count = 0;      ///< of instances of the child in the parent
        QPainterPath line;
        QRectF label_rect; ///< room for the count
    };

    struct RESULT
    {
        std::shared_ptr<const HIERARCHY_GRAPH> graph; ///< null where there can be none
        QString error;                                ///< then the reason, for the user
    };

    /// Takes from milliseconds to some seconds. A netlist that has no module, or too many of them, in which a module
    /// contains itself, or whose cells refer to what is not there, has no graph.
    /// @param netlist not null
    static RESULT make(const std::shared_ptr<const NETLIST>& netlist);

    const NETLIST& get_netlist() const;
    const std::vector<NODE>& get_nodes() const;
    const std::vector<EDGE>& get_edges() const;
    /// Of all of it, with a margin.
    QRectF get_bounds() const;

    /// The node of a module; NONE for none.
    std::uint32_t find_node(std::uint32_t module) const;
    /// Names of instances from a top down to one instance of the node's module, the first in the order of the file.
    QStringList get_path(std::uint32_t node) const;

private:
    class BUILDER;

    std::shared_ptr<const NETLIST> m_netlist;
    std::vector<NODE> m_nodes; ///< in the order of the modules
    std::vector<EDGE> m_edges; ///< by parent
    QRectF m_bounds;
};
