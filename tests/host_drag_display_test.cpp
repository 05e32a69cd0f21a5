// Instances that are really dragged from the navigator to the table of assignments, with the server's own pointer.

#include "assignment_model.h"
#include "assignment_view.h"
#include "host_workbench_fixture.h"
#include "workbench_constraints.h"

#include "input_script.h"
#include "x11_pointer.h"

#include "tolv_dock_widget.h"
#include "tolv_tree_view.h"

#include <QApplication>

namespace
{
class host_drag_display : public WORKBENCH_TEST
{
protected:
    void SetUp() override
    {
        WORKBENCH_TEST::SetUp();
        ASSERT_EQ("xcb", QGuiApplication::platformName()) << "run it through tests/tools/with_display";
        make_and_show_window();
        m_window->open_file(QStringLiteral(WORKBENCH_DESIGNS "/serial_station_synth.json"));
        GUI_DRIVER::wait_for([this] { return !m_window->is_loading(); }, 30000);
        GUI_DRIVER::find_widget<TOLV_DOCK_WIDGET>(m_window.get(), QStringLiteral("assignments_dock"))
            ->set_visible_and_raise(true);
        GUI_DRIVER::process_posted();
    }
};
} // namespace

TEST_F(host_drag_display, an_instance_is_dragged_from_the_navigator_into_the_table)
{
    auto* const tree = GUI_DRIVER::find_widget<TOLV_TREE_VIEW>(m_window.get(), QStringLiteral("hierarchy"));
    auto* const names = GUI_DRIVER::find_widget<TOLV_TREE_VIEW>(m_window.get(), QStringLiteral("hierarchy_names"));
    auto* const table = GUI_DRIVER::find_widget<ASSIGNMENT_VIEW>(m_window.get(), QStringLiteral("assignments"));
    ASSIGNMENT_MODEL& model = *m_window->get_constraints()->get_model();
    QTreeView* const source = names->isVisible() ? names : tree;
    const QModelIndex bridge = source->model()->index(0, 0, source->model()->index(0, 0));
    ASSERT_EQ("u_bridge", bridge.data().toString());
    // Behind the icon, which is a button.
    const QRect row = source->visualRect(bridge);
    const QPoint from = source->viewport()->mapToGlobal(QPoint(row.left() + 50, row.center().y()));
    const QPoint to = table->viewport()->mapToGlobal(table->viewport()->rect().center());

    // Qt's drag runs a loop of its own from the first moves to the release.
    INPUT_SCRIPT script;
    script.then([&] { X11_POINTER::move_to(from); });
    script.then([&] { X11_POINTER::press(); });
    script.wait_until([&] { return source->selectionModel()->isSelected(bridge); });
    for (int step = 1; step <= 20; ++step)
    {
        const QPoint position = from + (to - from) * step / 20;
        script.then([position] { X11_POINTER::move_to(position); });
        script.then([] { X11_POINTER::wait_for_events(); });
    }
    script.then([] { X11_POINTER::release(); });
    script.wait_until([&] { return model.rowCount() == 1; });
    EXPECT_TRUE(script.run());
    ASSERT_EQ(1, model.rowCount());
    EXPECT_EQ("serial_station/u_bridge", model.index(0, ASSIGNMENT_MODEL::COLUMN_TO).data().toString());
    EXPECT_TRUE(model.is_modified());
    model.set_saved();
}
