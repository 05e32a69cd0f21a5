#pragma once

#include "tolv_action_auto.h"

#include <QSizeF>
#include <QWidget>

class QActionGroup;
class QLabel;
class QPainter;
class QPrinter;
class TOLV_TOOL_BAR;

/// A drawing with what a user needs around it, whatever class it is of: a tool bar with the tools and the steps of
/// zooming, the level of zoom, and the way to the printer. The whole drawing is shown until the user zooms. Subclasses
/// add the drawing, and fill the tool bar between add_selection_tool() and add_level().
class DRAWING_FRAME : public QWidget
{
    Q_OBJECT

public:
    ~DRAWING_FRAME() override;

    /// For actions of the drawing's own.
    TOLV_TOOL_BAR* get_tool_bar() const;
    /// A printer as the drawing wants it: the page lies on its side where the drawing is wider than high.
    void prepare_printer(QPrinter* printer) const;
    /// Draws one page: the whole drawing within the margins, in the middle, as large as it can be, without what is
    /// chosen in it.
    /// @param painter on the printer, or on whatever has its origin where the printable part of the page begins
    virtual void paint_page(QPainter* painter, const QPrinter* printer) const = 0;

public slots:
    /// Shows the whole drawing, now or as soon as the pane is visible. For a new drawing.
    void show_all();
    /// Sends the drawing to a printer that the user chooses, or into a file.
    void print();

protected:
    /// @param help_topic the accessible name
    DRAWING_FRAME(const QString& help_topic, QWidget* parent);

    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

    /// Puts the drawing under the tool bar. The keyboard focus goes to `view`.
    void set_drawing(QWidget* drawing, QWidget* view);
    /// Makes the tool that is chosen at first.
    QAction* add_selection_tool();
    QActionGroup* get_tools() const;
    /// Puts the level of zoom at the end of the tool bar.
    void add_level();

    /// Shows the whole drawing, and has its level of zoom told by show_level().
    virtual void fit_drawing() = 0;
    /// The size of the drawing, in any unit.
    virtual QSizeF get_drawing_size() const = 0;

protected slots:
    /// @param level of zoom, 1 for 100 percent
    void show_level(float level);

private slots:
    void fit_now();

private:
    TOLV_TOOL_BAR* m_tool_bar;
    QActionGroup* m_tools;
    QLabel* m_level_label;
    bool m_is_fit_pending = true;
    bool m_shows_all = true;
    bool m_is_fitting = false;
};
