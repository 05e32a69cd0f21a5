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

public slots:
    /// Colours the cells by module, or by what they are.
    void set_colored_by_module(bool by_module);
    void set_shows_wires(bool shows_wires);

protected:
    void paint_drawing(QPainter* painter, const QRect& exposed, TARGET target) override;
    bool shows_nets() const override;
    QString get_item_text(std::uint32_t item) const override;
    QString get_net_text(std::uint32_t net) const override;
    QColor get_highlight_color() const override;

private:
    std::shared_ptr<const FLOORPLAN> m_plan;
    FLOORPLAN_PAINTER m_painter;
    FLOORPLAN_PAINTER::COLORING m_coloring = FLOORPLAN_PAINTER::COLORING_MODULE;
    bool m_shows_wires = true;
};
