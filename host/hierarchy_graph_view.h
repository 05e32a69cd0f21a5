#pragma once

#include "hierarchy_graph.h"

#include "tolv_graphics_view.h"

#include <QFutureWatcher>

#include <memory>

class HIERARCHY_GRAPH_SCENE;

/// The hierarchy of a design as a graph of its modules. The graph is made on a thread of its own, when the view is shown
/// for the first time with the design; until it is there, and where there can be none, a line of text says so.
///
/// A click selects a module, with Control one more; a double click or Return opens it. A stroke with the left button
/// draws a rectangle that selects, or zooms, as in the other drawings; so do the wheel, and the tools. The arrow keys go
/// along the edges and from module to module of a column. GUI thread.
class HIERARCHY_GRAPH_VIEW : public TOLV_GRAPHICS_VIEW
{
    Q_OBJECT

public:
    static constexpr double SMALLEST_LEVEL = 0.01; ///< of zoom; 1 for 100 percent
    static constexpr double LARGEST_LEVEL = 8;
    /// What zoom_fit() makes of a small graph.
    static constexpr double LARGEST_FIT_LEVEL = 1.5;

    enum TOOL
    {
        TOOL_SELECT,
        TOOL_ZOOM,
        TOOL_PAN
    };

    explicit HIERARCHY_GRAPH_VIEW(QWidget* parent = nullptr);
    ~HIERARCHY_GRAPH_VIEW() override;

    /// Shows another netlist; null for none. A graph that is not yet done is given up.
    void set_netlist(const std::shared_ptr<const NETLIST>& netlist);
    /// Marks the module that the rest of the window shows.
    void set_current_module(std::uint32_t module);
    HIERARCHY_GRAPH_SCENE* get_scene() const;
    /// The graph that is shown; null for none.
    const std::shared_ptr<const HIERARCHY_GRAPH>& get_graph() const;
    /// Whether a graph is being made; drawn() tells its end.
    bool is_drawing() const;
    /// What stands in the place of the graph; empty where there is one.
    QString get_state_text() const;

    void set_tool(TOOL tool);
    TOOL get_tool() const;

    /// The level of zoom, 1 for 100 percent.
    double get_level() const;
    /// Zooms by a factor, as far as the limits go, with a point of the viewport held in its place as far as the drawing
    /// can be scrolled.
    void zoom_by(double factor, const QPoint& point);
    /// About the middle of the viewport.
    void zoom_by(double factor);
    /// Zooms to a rectangle of the scene, as far as the limits go.
    void focus_on_scene_rect(const QRectF& rect) override;
    void apply_drawing_resources();

public slots:
    void zoom_in();
    void zoom_out();
    void zoom_fit();
    /// Nothing where nothing is selected.
    void zoom_selected();
    /// Lets the user choose the level in a dialog.
    void ask_for_zoom();

signals:
    /// The graph is there, or it turned out that there is none.
    void drawn();
    void zoom_level_changed(float level);
    /// Another module is selected, or none.
    void selection_changed();
    /// The user wants to see a module of the netlist.
    void module_activated(int module);

protected:
    void showEvent(QShowEvent* event) override;
    void drawForeground(QPainter* painter, const QRectF& rect) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private slots:
    void take_graph();
    void describe_selection();

private:
    void begin_drawing();
    void set_level(double level);
    void run_stroke(const QPoint& start);
    void begin_pan(const QPoint& global);
    void click(const QPoint& point, bool is_more);
    void activate(std::uint32_t node);
    bool go(int key);
    std::uint32_t find_neighbour(std::uint32_t node, int key) const;
    void scroll_by_wheel(const QWheelEvent& event);
    void update_cursor();

    HIERARCHY_GRAPH_SCENE* m_scene;
    std::shared_ptr<const NETLIST> m_netlist;
    std::uint32_t m_current_module = HIERARCHY_GRAPH::NONE;
    QFutureWatcher<HIERARCHY_GRAPH::RESULT> m_watcher;
    QString m_error;
    bool m_is_pending = false; ///< the graph is to be made when the view is shown
    bool m_is_drawing = false;
    TOOL m_tool = TOOL_SELECT;
    bool m_is_panning = false;
    QPoint m_pan_start;  ///< global
    QPoint m_pan_values; ///< of the scroll bars then
};
