#pragma once

#include "netlist.h"
#include "tolv_icon_enum.h"

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QVector>

#include <memory>

class DRAWING_FRAME;
class DRAWING_PANE;
class FLOORPLAN_VIEW;
class HIERARCHY_GRAPH_PANE;
class QMdiSubWindow;
class SCHEMATIC_VIEW;
class TOLV_MDI_AREA;
class WORKBENCH_MODULE_VIEW;

/// The documents in the middle of the window: the schematic of the chosen module, its tables, for a placed design the
/// floorplan of the chip, and the hierarchy of the design as a graph. A document that is closed stays and can be opened again.
class WORKBENCH_DOCUMENTS : public QObject
{
    Q_OBJECT

public:
    enum DOCUMENT
    {
        DOCUMENT_SCHEMATIC,
        DOCUMENT_TABLES,
        DOCUMENT_FLOORPLAN,
        DOCUMENT_HIERARCHY,
        DOCUMENT_COUNT
    };

    /// @param area gets the documents; none is open at first
    WORKBENCH_DOCUMENTS(TOLV_MDI_AREA* area, QObject* parent);
    ~WORKBENCH_DOCUMENTS() override;

    WORKBENCH_MODULE_VIEW* get_module_view() const;
    DRAWING_PANE* get_schematic() const;
    DRAWING_PANE* get_floorplan() const;
    HIERARCHY_GRAPH_PANE* get_hierarchy() const;
    /// The drawing that is in front; null where the tables are, or nothing.
    DRAWING_FRAME* get_active_drawing() const;
    /// Whether a drawing is still being made; `drawn()` tells its end.
    bool is_drawing() const;
    /// Whether the design has a floorplan.
    bool has_floorplan() const;

    /// Shows a module of a netlist, null for none.
    /// @param path names of the instances from the top to the one that is shown
    void set_module(const std::shared_ptr<const NETLIST>& netlist, std::uint32_t module, const QStringList& path);
    void apply_drawing_resources();

public slots:
    /// Brings a document to the front, opening it again where it was closed. Nothing for a floorplan where the design
    /// has none.
    void show_document(int document);
    /// Shows the documents as the user's registry says, in tabs where it says nothing, whatever they were arranged to.
    void reset_view();
    /// Gives the document in front the keyboard focus.
    void focus_document();
    /// The cell is chosen: the drawings show it. -1 for none.
    void show_cell(int cell);

signals:
    /// The user wants to go into this cell of the module.
    void cell_activated(int cell);
    /// A cell is chosen in a drawing.
    void cell_chosen(int cell);
    /// The user wants to see the schematic of a module: names of the instances from the top to one of it.
    void instance_activated(const QStringList& path);
    /// The schematic of the module, or the graph of the hierarchy, is there, or it turned out that there is none.
    void drawn();
    /// Whether there is a floorplan has changed.
    void floorplan_available(bool available);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void report_schematic_cell();
    void report_floorplan_cell();
    void fit_schematic();
    void enter_floorplan_cell(int cell);
    void enter_module(int module);

private:
    void add_document(DOCUMENT document, QWidget* widget, const QString& title, TOLV_ICON_ENUM icon);
    void open_window(int document);
    void close_window(int document);
    void set_floorplan_module(const std::shared_ptr<const NETLIST>& netlist, std::uint32_t module);
    void report_cell(DRAWING_PANE* pane);
    void update_tooltips();

    TOLV_MDI_AREA* m_area;
    WORKBENCH_MODULE_VIEW* m_module_view;
    SCHEMATIC_VIEW* m_schematic_view;
    FLOORPLAN_VIEW* m_floorplan_view;
    DRAWING_PANE* m_schematic;
    DRAWING_PANE* m_floorplan;
    HIERARCHY_GRAPH_PANE* m_hierarchy;
    std::uint32_t m_module = 0;                 ///< the one that is shown
    QStringList m_path;                         ///< of its instance
    QVector<QPointer<QWidget>> m_widgets;       ///< by DOCUMENT; owned by their window while they are open
    QVector<QPointer<QMdiSubWindow>> m_windows; ///< by DOCUMENT; null for one that is closed
    bool m_is_reporting = false;
};
