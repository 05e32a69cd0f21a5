#pragma once

#include "drawing.h"

#include "tolv_view.h"

#include <cstdint>
#include <memory>
#include <vector>

/// What the drawings of the workbench have in common: a click chooses a cell or lights up a net, a rectangle drawn with
/// the left button to the lower right chooses the cells in it, a double click opens a cell, and tips tell what lies
/// under the pointer. Subclasses make the drawing, paint it and find the words for it.
class DRAWING_VIEW : public TOLV_VIEW
{
    Q_OBJECT

public:
    static constexpr std::uint32_t NONE = DRAWING::NONE;

    /// The chosen items, in ascending order.
    const std::vector<std::uint32_t>& get_selection() const;
    /// The nets that are lit up, in ascending order.
    const std::vector<std::uint32_t>& get_lit_nets() const;

    /// Chooses items, and lights up the nets at the only one.
    void select(std::vector<std::uint32_t> items);
    /// Chooses no item and lights up a net; NONE for none.
    void light_up(std::uint32_t net);
    /// Chooses the item of a cell and draws the user's eye to it. False where the drawing does not have it.
    bool locate_cell(std::uint32_t cell);

    /// The cell of an item in its module; NONE for what is no cell.
    std::uint32_t get_cell_of_item(std::uint32_t item) const;

    void paint(QPainter* painter, QPaintEvent* event, QWidget* widget, QRect rect, bool printing) override;
    void paint_birds_eye_view(QPainter* painter, QPaintEvent* event, QWidget* widget, QRect rect) override;
    QRect get_selected_rect() const override;
    void do_rect_selection(const QRect& rect, const QPoint& point) override;
    void selection_mode_no_mouse_gesture(QMouseEvent* event) override;
    bool current_mode_supports_mouse_gesture(const QPoint& point) override;

signals:
    /// Another item or another net is chosen; get_cell_of_item() tells which cell it is.
    void selection_changed();
    /// The user wants to go into a cell.
    void cell_activated(int cell);
    /// The selection shall be made visible; logical.
    void reveal_requested(const QRect& rect);

protected:
    enum TARGET
    {
        TARGET_SCREEN,
        TARGET_OVERVIEW,
        TARGET_PAPER
    };

    explicit DRAWING_VIEW(QWidget* parent);

    /// Shows another drawing, with nothing chosen; null for none.
    void set_drawing(std::shared_ptr<const DRAWING> drawing);

    bool event(QEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

    /// Paints the drawing, or says why there is none.
    /// @param painter draws in logical coordinates
    /// @param exposed the part to paint, in pixels of what is painted on
    virtual void paint_drawing(QPainter* painter, const QRect& exposed, TARGET target) = 0;
    /// Whether nets can be seen.
    virtual bool shows_nets() const;
    /// What a tip says.
    virtual QString get_item_text(std::uint32_t item) const = 0;
    virtual QString get_net_text(std::uint32_t net) const = 0;
    /// Colour of what draws the user's eye.
    virtual QColor get_highlight_color() const = 0;

private:
    std::uint32_t find_item(const QPoint& logical) const;
    std::uint32_t find_net(const QPoint& logical) const;
    int get_tolerance() const;

    std::shared_ptr<const DRAWING> m_drawing;
    std::vector<std::uint32_t> m_selection;
    std::vector<std::uint32_t> m_lit_nets;
};
