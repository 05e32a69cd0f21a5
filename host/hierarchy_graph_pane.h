#pragma once

#include "drawing_frame.h"

class HIERARCHY_GRAPH_VIEW;

/// The hierarchy graph with its tool bar and its bird's eye view.
class HIERARCHY_GRAPH_PANE : public DRAWING_FRAME
{
    Q_OBJECT

public:
    explicit HIERARCHY_GRAPH_PANE(QWidget* parent = nullptr);
    ~HIERARCHY_GRAPH_PANE() override;

    HIERARCHY_GRAPH_VIEW* get_view() const;

    void paint_page(QPainter* painter, const QPrinter* printer) const override;

protected:
    void fit_drawing() override;
    QSizeF get_drawing_size() const override;

private slots:
    void choose_tool(QAction* action);
    void take_graph();

private:
    void fill_tool_bar();
    QAction* add_tool(TOLV_ACTION_ENUM command, int tool);
    void add_step(TOLV_ACTION_ENUM command, const char* slot);

    HIERARCHY_GRAPH_VIEW* m_view;
    QAction* m_behind_overview; ///< what stands behind the action of the bird's eye view, which each graph has anew
};
