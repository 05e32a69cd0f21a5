#pragma once

#include "drawing_frame.h"

class DRAWING_VIEW;
class QAction;
class TOLV_ZOOM_SCROLL_AREA;

/// A drawing on a TOLV_VIEW, in its scroll area, with the tools and the bird's eye view that the area has.
class DRAWING_PANE : public DRAWING_FRAME
{
    Q_OBJECT

public:
    /// @param view becomes part of the pane
    DRAWING_PANE(DRAWING_VIEW* view, const QString& help_topic, QWidget* parent = nullptr);

    DRAWING_VIEW* get_view() const;
    TOLV_ZOOM_SCROLL_AREA* get_area() const;

    void paint_page(QPainter* painter, const QPrinter* printer) const override;

protected:
    void fit_drawing() override;
    QSizeF get_drawing_size() const override;

private slots:
    void reveal(const QRect& rect);
    void follow_tool(QAction* tool);
    void end_temporary_tool();

private:
    void fill_tool_bar();

    DRAWING_VIEW* m_view;
    TOLV_ZOOM_SCROLL_AREA* m_area;
    QAction* m_selection_tool = nullptr;
    QAction* m_tool = nullptr;        ///< the one chosen
    QAction* m_tool_before = nullptr; ///< what end_temporary_tool() chooses again
};
