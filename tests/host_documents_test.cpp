#include "drawing_pane.h"
#include "floorplan_view.h"
#include "host_workbench_fixture.h"
#include "schematic_view.h"
#include "workbench_docks.h"
#include "workbench_documents.h"
#include "workbench_module_view.h"

#include "cfgq_registry.h"
#include "input_script.h"

#include "tolv_dock_widget.h"
#include "tolv_dock_widget_titlebar.h"
#include "tolv_mdi_area.h"
#include "tolv_tool_bar.h"
#include "tolv_zoom_scroll_area.h"

#include <QAction>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QSignalSpy>
#include <QTabBar>
#include <QToolTip>

namespace
{
/// The workbench with a design, driven as a user does.
class host_documents : public WORKBENCH_TEST
{
protected:
    void SetUp() override
    {
        WORKBENCH_TEST::SetUp();
        make_window();
    }

    void open(const char* name)
    {
        if (!m_window->isVisible())
        {
            ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
        }
        m_window->open_file(QStringLiteral(WORKBENCH_DESIGNS "/serial_station_%1.json").arg(QLatin1String(name)));
        GUI_DRIVER::wait_for([this] { return !m_window->is_loading() && !documents().is_drawing(); }, 30000);
        GUI_DRIVER::process_posted();
    }

    WORKBENCH_DOCUMENTS& documents() const
    {
        return *m_window->get_documents();
    }

    SCHEMATIC_VIEW* schematic() const
    {
        return qobject_cast<SCHEMATIC_VIEW*>(documents().get_schematic()->get_view());
    }

    FLOORPLAN_VIEW* floorplan() const
    {
        return qobject_cast<FLOORPLAN_VIEW*>(documents().get_floorplan()->get_view());
    }

    QTabBar* tabs() const
    {
        return m_window->findChild<TOLV_MDI_AREA*>()->findChild<QTabBar*>(QString(), Qt::FindDirectChildrenOnly);
    }

    QStringList get_tab_texts() const
    {
        QStringList texts;
        for (int i = 0; i < tabs()->count(); ++i)
            texts << tabs()->tabText(i);
        return texts;
    }

    /// A press in a drawing runs an event loop of its own until the button is released.
    static void click_in(QWidget* view, const QPoint& position)
    {
        drag_in(view, position, position);
    }

    static void drag_in(QWidget* view, const QPoint& from, const QPoint& to)
    {
        INPUT_SCRIPT script;
        script.then([=] { GUI_DRIVER::press(view, from); });
        if (from != to)
        {
            for (const QPoint& point : GUI_DRIVER::get_way(from, to))
                script.then([=] { GUI_DRIVER::move_to(view, point); });
        }
        script.then([=] { GUI_DRIVER::release(view, to); });
        EXPECT_TRUE(script.run());
        GUI_DRIVER::process_posted();
    }

    TOLV_DOCK_WIDGET* dock(const char* name) const
    {
        return GUI_DRIVER::find_widget<TOLV_DOCK_WIDGET>(m_window.get(), QString::fromLatin1(name));
    }
};

TEST_F(host_documents, a_placed_design_has_a_floorplan_and_others_have_none)
{
    open("rtl");
    EXPECT_FALSE(documents().has_floorplan());
    QStringList texts = get_tab_texts();
    texts.sort();
    EXPECT_EQ(texts, QStringList({"Cells, Ports and Nets", "Schematic"}));
    EXPECT_FALSE(m_window->findChild<QAction*>("TOLV_FLOORPLAN_ACTION")->isEnabled());
    open("placed");
    EXPECT_TRUE(documents().has_floorplan());
    EXPECT_TRUE(get_tab_texts().contains("Floorplan"));
    EXPECT_TRUE(m_window->findChild<QAction*>("TOLV_FLOORPLAN_ACTION")->isEnabled());
    open("synth");
    EXPECT_FALSE(get_tab_texts().contains("Floorplan"));
}

TEST_F(host_documents, a_pan_for_the_time_being_gives_the_tool_of_before_back)
{
    open("rtl");
    documents().show_document(WORKBENCH_DOCUMENTS::DOCUMENT_SCHEMATIC);
    GUI_DRIVER::process_posted();
    const TOLV_ZOOM_SCROLL_AREA* const area = documents().get_schematic()->get_area();
    QAction* const selection = documents().get_schematic()->get_tool_bar()->actions().constFirst();
    QWidget* const view = schematic();
    const auto pan = [&]
    {
        const QPoint start = view->mapFrom(area->viewport(), area->viewport()->rect().center());
        GUI_DRIVER::focus(view);
        GUI_DRIVER::click(view, start, Qt::LeftButton, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_TRUE(area->get_action(TOLV_PAN_TOOL_ACTION)->isChecked());
        EXPECT_EQ(Qt::OpenHandCursor, view->cursor().shape());
        GUI_DRIVER::key_release(view, Qt::Key_Control);
    };
    pan();
    EXPECT_TRUE(selection->isChecked());
    EXPECT_EQ(Qt::ArrowCursor, view->cursor().shape());
    area->get_action(TOLV_ZOOM_TOOL_ACTION)->trigger();
    pan();
    EXPECT_TRUE(area->get_action(TOLV_ZOOM_TOOL_ACTION)->isChecked());
    EXPECT_EQ(Qt::BitmapCursor, view->cursor().shape());
    selection->trigger();
    EXPECT_EQ(Qt::ArrowCursor, view->cursor().shape());
}

TEST_F(host_documents, a_document_that_is_closed_opens_again)
{
    open("rtl");
    documents().show_document(WORKBENCH_DOCUMENTS::DOCUMENT_SCHEMATIC);
    emit tabs()->tabCloseRequested(tabs()->currentIndex());
    GUI_DRIVER::process_posted();
    EXPECT_EQ(get_tab_texts(), QStringList("Cells, Ports and Nets"));
    m_window->findChild<QAction*>("TOLV_NETLIST_VIEW_ACTION")->trigger();
    EXPECT_EQ(get_tab_texts().size(), 2);
    EXPECT_TRUE(schematic()->isVisible());
}

TEST_F(host_documents, the_whole_drawing_shows_until_the_user_zooms)
{
    open("rtl");
    TOLV_ZOOM_SCROLL_AREA* const area = documents().get_schematic()->get_area();
    const float level = schematic()->get_zoom_level();
    EXPECT_GT(level, 0.1F);
    EXPECT_LT(schematic()->get_physical(schematic()->get_logical_rect()).width(), area->viewport()->width() + 2);
    auto* const label = GUI_DRIVER::find_widget<QLabel>(documents().get_schematic(), "zoom_level");
    EXPECT_EQ(label->text(), QStringLiteral("%1 %").arg(qRound(level * 100)));
    m_window->resize(m_window->width() + 200, m_window->height());
    EXPECT_TRUE(GUI_DRIVER::wait_for([&] { return schematic()->get_zoom_level() > level; }));
    area->zoom_in();
    const float zoomed = schematic()->get_zoom_level();
    EXPECT_EQ(label->text(), QStringLiteral("%1 %").arg(qRound(zoomed * 100)));
    m_window->resize(m_window->width() - 200, m_window->height());
    GUI_DRIVER::process_posted();
    EXPECT_EQ(schematic()->get_zoom_level(), zoomed);
}

TEST_F(host_documents, a_click_chooses_a_cell_in_both_the_drawing_and_the_tables)
{
    open("rtl");
    const SCHEMATIC& drawing = *schematic()->get_schematic();
    const std::uint32_t box = drawing.find_item_of_cell(3);
    click_in(schematic(), schematic()->get_physical(drawing.boxes[box].rect.center()));
    EXPECT_EQ(schematic()->get_selection(), std::vector<std::uint32_t>{box});
    EXPECT_FALSE(schematic()->get_lit_nets().empty());
    EXPECT_EQ(documents().get_module_view()->get_current_row(), 3);
    click_in(schematic(), QPoint(2, 2));
    EXPECT_TRUE(schematic()->get_selection().empty());
    EXPECT_TRUE(schematic()->get_lit_nets().empty());
    documents().get_module_view()->select_cell(5);
    EXPECT_EQ(schematic()->get_selection(), std::vector<std::uint32_t>{drawing.find_item_of_cell(5)});
}

TEST_F(host_documents, a_drag_to_the_lower_right_chooses_the_cells_in_the_rectangle)
{
    open("rtl");
    const SCHEMATIC& drawing = *schematic()->get_schematic();
    const QRect rect =
        schematic()->get_physical(drawing.boxes[drawing.find_item_of_cell(2)].rect).adjusted(-4, -4, 4, 4);
    drag_in(schematic(), rect.topLeft(), rect.bottomRight());
    EXPECT_EQ(schematic()->get_selection(), std::vector<std::uint32_t>{drawing.find_item_of_cell(2)});
}

TEST_F(host_documents, a_double_click_goes_into_an_instance)
{
    open("rtl");
    const SCHEMATIC& drawing = *schematic()->get_schematic();
    const auto box = std::find_if(drawing.boxes.begin(), drawing.boxes.end(),
                                  [](const SCHEMATIC::BOX& b) { return b.name == "u_uart"; });
    ASSERT_NE(box, drawing.boxes.end());
    const QPoint place = schematic()->get_physical(box->rect.center());
    QMouseEvent double_click(QEvent::MouseButtonDblClick, place, schematic()->mapToGlobal(place), Qt::LeftButton,
                             Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(schematic(), &double_click);
    EXPECT_EQ(m_window->get_selected_path(), QStringList({"serial_station", "u_uart"}));
    EXPECT_TRUE(GUI_DRIVER::wait_for([this] { return !documents().is_drawing(); }));
    EXPECT_EQ(schematic()->get_schematic()->boxes.size(), 21u);
}

TEST_F(host_documents, the_floorplan_lights_up_the_nets_of_a_chosen_cell)
{
    open("placed");
    documents().show_document(WORKBENCH_DOCUMENTS::DOCUMENT_FLOORPLAN);
    GUI_DRIVER::process_posted();
    const FLOORPLAN& plan = *floorplan()->get_plan();
    const std::uint32_t site = plan.find_item_of_cell(20);
    click_in(floorplan(), floorplan()->get_physical(plan.get_sites()[site].rect.center()));
    EXPECT_EQ(floorplan()->get_selection(), std::vector<std::uint32_t>{site});
    EXPECT_EQ(floorplan()->get_lit_nets(), plan.get_nets_of_cell(20));
    EXPECT_EQ(documents().get_module_view()->get_current_row(), 20);
    EXPECT_EQ(floorplan()->get_selected_rect(), plan.get_sites()[site].rect);
    auto* const by_module = GUI_DRIVER::find_widget<QAction>(documents().get_floorplan(), "color_by_module");
    by_module->trigger();
    EXPECT_EQ(floorplan()->get_coloring(), FLOORPLAN_PAINTER::COLORING_KIND);
    GUI_DRIVER::find_widget<QAction>(documents().get_floorplan(), "show_routing")->trigger();
    EXPECT_FALSE(floorplan()->get_shows_wires());
}

TEST_F(host_documents, a_module_that_is_too_large_says_so)
{
    open("rtl");
    QSignalSpy drawn(schematic(), SIGNAL(drawn()));
    schematic()->set_module(nullptr, 0);
    EXPECT_FALSE(schematic()->is_drawing());
    schematic()->set_module(m_window->get_netlist(), 0);
    EXPECT_TRUE(schematic()->is_drawing());
    schematic()->set_module(m_window->get_netlist(), 1);
    EXPECT_TRUE(drawn.wait());
    EXPECT_EQ(drawn.count(), 1); // of the second one alone
}

TEST_F(host_documents, the_layout_comes_back_with_its_pins)
{
    m_window->keep_layout();
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    dock("totals_dock")->click_titlebar_button(TITLEBAR_BUTTON_PIN);
    EXPECT_EQ(dock("totals_dock")->get_state(), TOLV_DOCK_WIDGET::DOCK_STATE_UNPINNED);
    dock("property_dock")->setFloating(true);
    dock("status_dock")->close_widget();
    GUI_DRIVER::process_posted();
    m_window->close();
    make_window();
    m_window->keep_layout();
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    EXPECT_EQ(dock("totals_dock")->get_state(), TOLV_DOCK_WIDGET::DOCK_STATE_UNPINNED);
    EXPECT_FALSE(dock("totals_dock")->isVisible());
    EXPECT_TRUE(dock("property_dock")->isFloating());
    EXPECT_FALSE(dock("status_dock")->isVisible());
    EXPECT_TRUE(dock("hierarchy_dock")->isVisible());
    m_window->findChild<QAction*>("TOLV_RESET_LAYOUT_ACTION")->trigger();
    GUI_DRIVER::process_posted();
    EXPECT_EQ(dock("totals_dock")->get_state(), TOLV_DOCK_WIDGET::DOCK_STATE_DOCKED);
    EXPECT_TRUE(dock("totals_dock")->isVisible());
    EXPECT_FALSE(dock("property_dock")->isFloating());
}

TEST_F(host_documents, a_damaged_layout_leaves_the_usual_one)
{
    CFGQ_REGISTRY_KEY key(CFGQ_REGISTRY_KEY::SUB_KEY_GUI, "norvane_workbench/layout");
    key.set_value("version", 2);
    key.set_value("geometry", QByteArray("noise"));
    key.set_value("state", QByteArray("noise"));
    key.set_value("unpinned", QStringList{"totals_dock", "nobody"});
    m_window->keep_layout();
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    for (const char* name : {"hierarchy_dock", "totals_dock", "property_dock", "messages_dock"})
        EXPECT_TRUE(dock(name)->isVisible()) << name;
    EXPECT_EQ(dock("totals_dock")->get_state(), TOLV_DOCK_WIDGET::DOCK_STATE_DOCKED);
}
} // namespace
