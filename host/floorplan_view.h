#pragma once

#include "drawing_view.h"
#include "floorplan_painter.h"

#include <memory>

/// The floorplan of a placed design. Items are sites. GUI thread.
class FLOORPLAN_VIEW : public DRAWING_VIEW
{
    Q_OBJECT

public:
    explicit FLOORPLAN_VIEW(QWidget* parent = nullptr);
    ~FLOORPLAN_VIEW() override;

    /// Shows another plan; null for none.
    void set_plan(std::shared_ptr<const FLOORPLAN> plan);
    const std::shared_ptr<const FLOORPLAN>& get_plan() const;

    FLOORPLAN_PAINTER::COLORING get_coloring() const;
    bool get_shows_wires() const;

    std::uint32_t get_cell_of_item(std::uint32_t item) const override;
    void paint(QPainter* painter, QPaintEvent* event, QWidget* widget, QRect rect, bool printing) override;
    void paint_birds_eye_view(QPainter* painter, QPaintEvent* event, QWidget* widget, QRect rect) override;

public slots:
    /// Colours the cells by module, or by what they are.
    void set_colored_by_module(bool by_module);
    void set_shows_wires(bool shows_wires);

protected:
    std::uint32_t find_item(const QPoint& logical) const override;
    std::uint32_t find_net(const QPoint& logical, int distance) const override;
    std::vector<std::uint32_t> find_items_within(const QRect& logical) const override;
    std::uint32_t find_item_of_cell(std::uint32_t cell) const override;
    QRect get_item_rect(std::uint32_t item) const override;
    std::vector<std::uint32_t> get_nets_of_item(std::uint32_t item) const override;
    QString get_item_text(std::uint32_t item) const override;
    QString get_net_text(std::uint32_t net) const override;
    QColor get_highlight_color() const override;

private:
    void paint_plan(QPainter* painter, const QRect& exposed, bool is_overview) const;

    std::shared_ptr<const FLOORPLAN> m_plan;
    FLOORPLAN_PAINTER m_painter;
    FLOORPLAN_PAINTER::COLORING m_coloring = FLOORPLAN_PAINTER::COLORING_MODULE;
    bool m_shows_wires = true;
};
