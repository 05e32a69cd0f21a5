#pragma once

#include "drawing_view.h"
#include "schematic_painter.h"

#include <QFutureWatcher>

#include <memory>

/// The schematic of a module. Items are boxes. The drawing is made on a thread of its own; until it is there, and where
/// there can be none, a line of text says so. GUI thread.
class SCHEMATIC_VIEW : public DRAWING_VIEW
{
    Q_OBJECT

public:
    explicit SCHEMATIC_VIEW(QWidget* parent = nullptr);
    ~SCHEMATIC_VIEW() override;

    /// Begins to draw a module; a null netlist empties the view. A drawing that is not yet done is given up.
    void set_module(const std::shared_ptr<const NETLIST>& netlist, std::uint32_t module);
    /// The drawing that is shown; null for none.
    const std::shared_ptr<const SCHEMATIC>& get_schematic() const;
    bool is_drawing() const;

    std::uint32_t get_cell_of_item(std::uint32_t item) const override;
    void paint(QPainter* painter, QPaintEvent* event, QWidget* widget, QRect rect, bool printing) override;
    void paint_birds_eye_view(QPainter* painter, QPaintEvent* event, QWidget* widget, QRect rect) override;

signals:
    /// The drawing of the module is there, or it turned out that there is none.
    void drawn();

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

private slots:
    void take_drawing();

private:
    QString get_state_text() const;
    void paint_schematic(QPainter* painter, const QRect& exposed) const;

    std::shared_ptr<const NETLIST> m_netlist;
    std::uint32_t m_module = 0;
    std::shared_ptr<const SCHEMATIC> m_schematic;
    bool m_is_drawing = false;
    QFutureWatcher<std::shared_ptr<const SCHEMATIC>> m_watcher;
    SCHEMATIC_PAINTER m_painter;
};
