#pragma once

#include "hierarchy_graph.h"

#include "tolv_graphics_scene.h"

#include <QColor>
#include <QFont>

#include <memory>
#include <vector>

/// The drawing of a hierarchy graph, with the named colours and fonts. Modules can be selected; the edges at what is
/// selected stand out. Counts and names show where they can be read. GUI thread.
class HIERARCHY_GRAPH_SCENE : public TOLV_GRAPHICS_SCENE
{
    Q_OBJECT

public:
    static constexpr std::uint32_t NONE = HIERARCHY_GRAPH::NONE;

    /// The named colours and fonts as they are now.
    struct STYLE
    {
        QColor background;
        QColor fill;
        QColor top_fill;
        QColor empty_fill;
        QColor selected_fill;
        QColor outline;
        QColor name;
        QColor top_name;
        QColor details;
        QColor edge;
        QColor lit_edge;
        QFont name_font;
        QFont top_name_font;
        QFont details_font;
        qreal line_width = 0; ///< on paper, in units; 0 for the screen
        bool shows_selection = true;
    };

    explicit HIERARCHY_GRAPH_SCENE(QObject* parent = nullptr);
    ~HIERARCHY_GRAPH_SCENE() override;

    /// Shows another graph, with nothing selected; null for none.
    void set_graph(std::shared_ptr<const HIERARCHY_GRAPH> graph);
    const std::shared_ptr<const HIERARCHY_GRAPH>& get_graph() const;

    /// The selected nodes, in ascending order.
    const std::vector<std::uint32_t>& get_selection() const;
    void select(std::vector<std::uint32_t> nodes);
    /// Selects a node, or no longer.
    void toggle(std::uint32_t node);
    /// Selects the nodes that lie whole in a rectangle.
    void select_within(const QRectF& rect);
    /// The bounds of what is selected; a null rectangle where nothing is.
    QRectF get_selected_rect() const;

    /// The node that the rest of the window shows; it has a thick outline. NONE for none.
    void set_current_node(std::uint32_t node);
    std::uint32_t get_current_node() const;

    /// The node at a place; NONE for none.
    std::uint32_t find_node(const QPointF& position) const;
    /// What a tip says of a node, or of an edge.
    QString get_node_text(std::uint32_t node) const;
    QString get_edge_text(std::uint32_t edge) const;

    const STYLE& get_style() const;
    /// Takes the named colours and fonts anew.
    void apply_drawing_resources();
    /// Draws the whole graph on paper, without what is selected.
    /// @param page       where, in the painter's coordinates; the graph is in its middle, as large as it can be
    /// @param line_width of what is one pixel wide on the screen, in the painter's coordinates
    void print(QPainter* painter, const QRectF& page, qreal line_width);

signals:
    void selection_of_nodes_changed();

protected:
    void drawBackground(QPainter* painter, const QRectF& rect) override;

private:
    class NODE_ITEM;
    class EDGE_ITEM;

    void show_selection();

    std::shared_ptr<const HIERARCHY_GRAPH> m_graph;
    std::vector<NODE_ITEM*> m_node_items; ///< by node; the scene owns them
    std::vector<EDGE_ITEM*> m_edge_items; ///< by edge
    std::vector<std::uint32_t> m_selection;
    std::uint32_t m_current_node = NONE;
    STYLE m_style;
};
