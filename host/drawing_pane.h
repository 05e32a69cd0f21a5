#pragma once

#include <QWidget>

class DRAWING_VIEW;
class QActionGroup;
class QLabel;
class TOLV_TOOL_BAR;
class TOLV_ZOOM_SCROLL_AREA;

/// A drawing with what a user needs around it: a tool bar with the tools and the steps of zooming, the scroll area, and
/// the level of zoom. The whole drawing is shown until the user zooms.
class DRAWING_PANE : public QWidget
{
    Q_OBJECT

public:
    /// @param view becomes part of the pane
    DRAWING_PANE(DRAWING_VIEW* view, const QString& help_topic, QWidget* parent = nullptr);

    DRAWING_VIEW* get_view() const;
    TOLV_ZOOM_SCROLL_AREA* get_area() const;
    /// For actions of the drawing's own.
    TOLV_TOOL_BAR* get_tool_bar() const;

public slots:
    /// Shows the whole drawing, now or as soon as the pane is visible. For a new drawing.
    void show_all();
    /// Sends the drawing to a printer that the user chooses, or into a file.
    void print();

protected:
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private slots:
    void show_level(float level);
    void reveal(const QRect& rect);
    void end_temporary_tool();
    void fit_now();

private:
    void create_tool_bar();

    DRAWING_VIEW* m_view;
    TOLV_ZOOM_SCROLL_AREA* m_area;
    TOLV_TOOL_BAR* m_tool_bar;
    QActionGroup* m_tools;
    QLabel* m_level_label;
    bool m_is_fit_pending = true;
    bool m_shows_all = true;
    bool m_is_fitting = false;
};
