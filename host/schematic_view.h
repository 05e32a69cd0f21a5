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

signals:
    /// The drawing of the module is there, or it turned out that there is none.
    void drawn();

protected:
    void paint_drawing(QPainter* painter, const QRect& exposed, TARGET target) override;
    QString get_item_text(std::uint32_t item) const override;
    QString get_net_text(std::uint32_t net) const override;
    QColor get_highlight_color() const override;

private slots:
    void take_drawing();

private:
    QString get_state_text() const;

    std::shared_ptr<const NETLIST> m_netlist;
    std::uint32_t m_module = 0;
    std::shared_ptr<const SCHEMATIC> m_schematic;
    bool m_is_drawing = false;
    QFutureWatcher<std::shared_ptr<const SCHEMATIC>> m_watcher;
    SCHEMATIC_PAINTER m_painter;
};
