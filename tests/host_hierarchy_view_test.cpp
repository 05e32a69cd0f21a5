#include "drawing_pane.h"
#include "hierarchy_graph_pane.h"
#include "hierarchy_graph_scene.h"
#include "hierarchy_graph_view.h"
#include "host_workbench_fixture.h"
#include "netlist_reader.h"
#include "workbench_documents.h"

#include "gui_answers.h"
#include "input_script.h"
#include "picture.h"

#include "tolv_birds_eye_view.h"
#include "tolv_color.h"
#include "tolv_create_action.h"
#include "tolv_mdi_area.h"
#include "tolv_set_zoom_dlg.h"
#include "tolv_tool_bar.h"

#include <QAction>
#include <QComboBox>
#include <QHelpEvent>
#include <QLabel>
#include <QMdiSubWindow>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolTip>

namespace
{
/// "top" holds two of "a" and one of "b"; "a" holds three of "b".
const char SAMPLE[] = R"({"modules":{
"top":{"cells":{"u_a":{"type":"a"},"u_b":{"type":"b"},"u_c":{"type":"a"}}},
"a":{"cells":{"x":{"type":"b"},"y":{"type":"b"},"z":{"type":"b"}}},
"b":{"cells":{"f":{"type":"FF"}}}}})";

/// The pane alone, with a small design.
class host_hierarchy_view : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        m_netlist = NETLIST_READER::read_text(SAMPLE, "sample.json").netlist;
        m_pane = std::make_unique<HIERARCHY_GRAPH_PANE>();
        m_pane->resize(700, 500);
        app().set_main_window(m_pane.get());
    }

    void TearDown() override
    {
        m_pane.reset();
        TOLV_GUI_TEST::TearDown();
    }

    void show()
    {
        view().set_netlist(m_netlist);
        ASSERT_TRUE(GUI_DRIVER::show(m_pane.get()));
        ASSERT_TRUE(GUI_DRIVER::wait_for([this] { return !view().is_drawing(); }, 30000));
        ASSERT_NE(view().get_graph(), nullptr);
        GUI_DRIVER::process_posted();
    }

    HIERARCHY_GRAPH_VIEW& view() const
    {
        return *m_pane->get_view();
    }

    HIERARCHY_GRAPH_SCENE& scene() const
    {
        return *view().get_scene();
    }

    const HIERARCHY_GRAPH::NODE& node(std::uint32_t number) const
    {
        return view().get_graph()->get_nodes()[number];
    }

    QPoint get_place(std::uint32_t number) const
    {
        return view().mapFromScene(node(number).rect.center());
    }

    QAction* find_action(TOLV_ACTION_ENUM command) const
    {
        const std::unique_ptr<QAction> named(tolv_create_action(command, nullptr));
        const QList<QAction*> actions = m_pane->get_tool_bar()->actions();
        const auto found = std::find_if(actions.begin(), actions.end(),
                                        [&](const QAction* action) { return action->text() == named->text(); });
        return found != actions.end() ? *found : nullptr;
    }

    /// A press in the drawing runs an event loop of its own until the button is released.
    void drag(const QPoint& from, const QPoint& to) const
    {
        QWidget* const viewport = view().viewport();
        INPUT_SCRIPT script;
        script.then([=] { GUI_DRIVER::press(viewport, from); });
        if (from != to)
        {
            for (const QPoint& point : GUI_DRIVER::get_way(from, to))
                script.then([=] { GUI_DRIVER::move_to(viewport, point); });
        }
        script.then([=] { GUI_DRIVER::release(viewport, to); });
        EXPECT_TRUE(script.run());
        GUI_DRIVER::process_posted();
    }

    void click(std::uint32_t number) const
    {
        drag(get_place(number), get_place(number));
    }

    using NUMBERS = std::vector<std::uint32_t>;

    std::shared_ptr<const NETLIST> m_netlist;
    std::unique_ptr<HIERARCHY_GRAPH_PANE> m_pane;
};

TEST_F(host_hierarchy_view, the_graph_is_made_when_the_view_is_shown)
{
    QSignalSpy drawn(&view(), SIGNAL(drawn()));
    view().set_netlist(m_netlist);
    GUI_DRIVER::process_posted();
    EXPECT_FALSE(view().is_drawing());
    EXPECT_EQ(view().get_state_text(), "Drawing the hierarchy ...");
    ASSERT_TRUE(GUI_DRIVER::show(m_pane.get()));
    EXPECT_TRUE(GUI_DRIVER::wait_for([&] { return drawn.count() == 1; }));
    ASSERT_NE(view().get_graph(), nullptr);
    EXPECT_EQ(view().get_state_text(), "");
    view().set_netlist(m_netlist); // the same: nothing to do
    EXPECT_FALSE(view().is_drawing());
    view().set_netlist(nullptr);
    EXPECT_EQ(view().get_graph(), nullptr);
    EXPECT_EQ(view().get_state_text(), "");
}

TEST_F(host_hierarchy_view, a_netlist_without_a_graph_says_why)
{
    const auto netlist = std::make_shared<NETLIST>();
    NETLIST_MODULE module;
    module.name = netlist->names.add("own");
    NETLIST_CELL cell;
    cell.module = 0;
    module.cells.push_back(cell);
    module.instances.push_back(0);
    netlist->modules.push_back(std::move(module));
    view().set_netlist(netlist);
    ASSERT_TRUE(GUI_DRIVER::show(m_pane.get()));
    EXPECT_TRUE(GUI_DRIVER::wait_for([this] { return !view().is_drawing(); }));
    EXPECT_EQ(view().get_graph(), nullptr);
    EXPECT_EQ(view().get_state_text(), "The netlist is damaged: a module contains itself (own > own).");
    const QImage picture = render_widget(view().viewport());
    EXPECT_GT(count_pixels(picture, TOLV_COLOR(TOLV_HIER_TEXT_COLOR).get_color(), 40), 100);
    // Nothing in it does harm.
    find_action(TOLV_ZOOM_FIT_ACTION)->trigger();
    find_action(TOLV_ZOOM_SELECTION_ACTION)->trigger();
    GUI_DRIVER::key_click(&view(), Qt::Key_Right);
    GUI_DRIVER::wheel(view().viewport(), QPoint(50, 50), QPoint(0, 120), Qt::ControlModifier);
    drag(QPoint(20, 20), QPoint(200, 200));
}

TEST_F(host_hierarchy_view, a_click_selects_a_module_and_control_one_more)
{
    show();
    QSignalSpy changed(&view(), SIGNAL(selection_changed()));
    click(1);
    EXPECT_EQ(scene().get_selection(), NUMBERS{1});
    EXPECT_EQ(view().accessibleDescription(), "a, 2 instances, 3 cells");
    GUI_DRIVER::click(view().viewport(), get_place(0), Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(scene().get_selection(), (NUMBERS{0, 1}));
    EXPECT_EQ(view().accessibleDescription(), "2 modules");
    GUI_DRIVER::click(view().viewport(), get_place(1), Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(scene().get_selection(), NUMBERS{0});
    drag(QPoint(3, 3), QPoint(3, 3));
    EXPECT_TRUE(scene().get_selection().empty());
    EXPECT_EQ(view().accessibleDescription(), "");
    EXPECT_EQ(changed.count(), 4);
}

TEST_F(host_hierarchy_view, a_rectangle_selects_the_modules_that_lie_whole_in_it)
{
    show();
    const QRect rect = view().mapFromScene(node(0).rect | node(1).rect).boundingRect().adjusted(-4, -4, 4, 4);
    drag(rect.topLeft(), rect.bottomRight());
    EXPECT_EQ(scene().get_selection(), (NUMBERS{0, 1}));
    const QRect less = view().mapFromScene(node(0).rect).boundingRect();
    drag(less.topLeft() - QPoint(4, 4), less.center() + QPoint(10, 30));
    EXPECT_TRUE(scene().get_selection().empty());
}

TEST_F(host_hierarchy_view, a_stroke_shows_its_rectangle_and_what_it_will_do)
{
    show();
    QWidget* const viewport = view().viewport();
    INPUT_SCRIPT script;
    script.then([=] { GUI_DRIVER::press(viewport, QPoint(10, 10)); });
    script.then([=] { GUI_DRIVER::move_to(viewport, QPoint(300, 200)); });
    script.then(
        [=]
        {
            const auto* const label = viewport->findChild<QLabel*>();
            ASSERT_NE(label, nullptr);
            EXPECT_EQ(label->text(), "select");
            const QImage picture = render_widget(viewport);
            const QColor highlight = viewport->palette().color(QPalette::Highlight);
            EXPECT_EQ(picture.pixelColor(150, 10), highlight);
            EXPECT_EQ(picture.pixelColor(300, 100), highlight);
        });
    script.then([=] { GUI_DRIVER::move_to(viewport, QPoint(300, 5)); });
    script.then([=] { EXPECT_EQ(viewport->findChild<QLabel*>()->text(), "zoom out 99%"); });
    script.then([=] { GUI_DRIVER::move_to(viewport, QPoint(12, 60)); });
    script.then([=] { GUI_DRIVER::move_to(viewport, QPoint(5, 60)); });
    script.then([=] { EXPECT_EQ(viewport->findChild<QLabel*>()->text(), "zoom fit"); });
    script.then([=] { GUI_DRIVER::key_click(viewport, Qt::Key_Escape); });
    script.then([=] { GUI_DRIVER::release(viewport, QPoint(5, 60)); });
    EXPECT_TRUE(script.run());
    EXPECT_EQ(viewport->findChild<QLabel*>(), nullptr);
}

TEST_F(host_hierarchy_view, strokes_zoom_by_their_height)
{
    show();
    const double level = view().get_level();
    drag(QPoint(300, 300), QPoint(250, 200));
    EXPECT_NEAR(view().get_level(), level * 1.2, 1e-6);
    drag(QPoint(300, 300), QPoint(350, 200));
    EXPECT_NEAR(view().get_level(), level * 1.2 * 0.8, 1e-6);
    drag(QPoint(300, 300), QPoint(200, 300));
    EXPECT_NEAR(view().get_level(), level, 1e-6);
    drag(QPoint(300, 300), QPoint(291, 291)); // a click
    EXPECT_NEAR(view().get_level(), level, 1e-6);
}

TEST_F(host_hierarchy_view, a_view_that_goes_away_in_a_stroke_ends_it)
{
    show();
    QWidget* const viewport = view().viewport();
    INPUT_SCRIPT script;
    script.then([=] { GUI_DRIVER::press(viewport, QPoint(10, 10)); });
    script.then([=] { GUI_DRIVER::move_to(viewport, QPoint(60, 60)); });
    script.then([this] { m_pane->hide(); });
    EXPECT_TRUE(script.run());
    EXPECT_TRUE(scene().get_selection().empty());
    EXPECT_EQ(viewport->findChild<QLabel*>(), nullptr);
}

TEST_F(host_hierarchy_view, a_double_click_and_return_open_a_module)
{
    show();
    QSignalSpy activated(&view(), SIGNAL(module_activated(int)));
    const QPoint place = get_place(2);
    QMouseEvent double_click(QEvent::MouseButtonDblClick, place, view().viewport()->mapToGlobal(place), Qt::LeftButton,
                             Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view().viewport(), &double_click);
    ASSERT_EQ(activated.count(), 1);
    EXPECT_EQ(activated.takeFirst().at(0).toInt(), 2);
    click(1);
    GUI_DRIVER::key_click(&view(), Qt::Key_Return);
    ASSERT_EQ(activated.count(), 1);
    EXPECT_EQ(activated.takeFirst().at(0).toInt(), 1);
    scene().select({0, 1});
    GUI_DRIVER::key_click(&view(), Qt::Key_Return); // which one?
    EXPECT_EQ(activated.count(), 0);
}

TEST_F(host_hierarchy_view, arrows_go_along_the_edges_and_the_columns)
{
    m_netlist = NETLIST_READER::read_text(R"({"modules":{"top":{"cells":{"a":{"type":"a"},"b":{"type":"b"}}},
        "a":{"cells":{"f":{"type":"FF"}}},"b":{"cells":{"f":{"type":"FF"}}}}})",
                                          "sample.json")
                    .netlist;
    show();
    const bool is_a_above = node(1).rect.y() < node(2).rect.y();
    const NUMBERS upper{is_a_above ? 1u : 2u};
    const NUMBERS lower{is_a_above ? 2u : 1u};
    view().set_current_module(0);
    GUI_DRIVER::key_click(&view(), Qt::Key_Right); // begins where the window is
    EXPECT_EQ(scene().get_selection(), NUMBERS{0});
    GUI_DRIVER::key_click(&view(), Qt::Key_Right);
    EXPECT_EQ(scene().get_selection().size(), 1u);
    GUI_DRIVER::key_click(&view(), Qt::Key_Up);
    EXPECT_EQ(scene().get_selection(), upper);
    GUI_DRIVER::key_click(&view(), Qt::Key_Up); // there is no more
    EXPECT_EQ(scene().get_selection(), upper);
    GUI_DRIVER::key_click(&view(), Qt::Key_Down);
    EXPECT_EQ(scene().get_selection(), lower);
    GUI_DRIVER::key_click(&view(), Qt::Key_Left);
    EXPECT_EQ(scene().get_selection(), NUMBERS{0});
    GUI_DRIVER::key_click(&view(), Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(scene().get_selection(), (NUMBERS{0, 1, 2}));
    GUI_DRIVER::key_click(&view(), Qt::Key_Escape);
    EXPECT_TRUE(scene().get_selection().empty());
}

TEST_F(host_hierarchy_view, the_wheel_zooms_about_the_pointer_and_scrolls)
{
    show();
    view().zoom_by(5 / view().get_level());
    find_action(TOLV_ZOOM_IN_ACTION)->trigger();
    find_action(TOLV_ZOOM_OUT_ACTION)->trigger();
    EXPECT_NEAR(view().get_level(), 5, 1e-6);
    view().centerOn(view().sceneRect().center());
    const QPoint place = view().viewport()->rect().center();
    const QPointF held = view().mapToScene(place);
    const double level = view().get_level();
    GUI_DRIVER::wheel(view().viewport(), place, QPoint(0, 120), Qt::ControlModifier);
    EXPECT_NEAR(view().get_level(), level * 1.25, 1e-6);
    EXPECT_LE((view().mapFromScene(held) - place).manhattanLength(), 2);
    GUI_DRIVER::wheel(view().viewport(), place, QPoint(0, -120), Qt::ControlModifier | Qt::AltModifier);
    EXPECT_NEAR(view().get_level(), level * 1.25 / 1.01, 1e-6);
    const int vertical = view().verticalScrollBar()->value();
    const int horizontal = view().horizontalScrollBar()->value();
    GUI_DRIVER::wheel(view().viewport(), place, QPoint(0, 120));
    EXPECT_EQ(view().verticalScrollBar()->value(), vertical - 3 * view().verticalScrollBar()->singleStep());
    GUI_DRIVER::wheel(view().viewport(), place, QPoint(0, -120), Qt::ShiftModifier);
    EXPECT_EQ(view().horizontalScrollBar()->value(), horizontal + 3 * view().horizontalScrollBar()->singleStep());
}

TEST_F(host_hierarchy_view, the_level_stays_within_its_limits)
{
    show();
    view().zoom_by(1e6);
    EXPECT_EQ(view().get_level(), HIERARCHY_GRAPH_VIEW::LARGEST_LEVEL);
    view().zoom_by(1e-6);
    EXPECT_EQ(view().get_level(), HIERARCHY_GRAPH_VIEW::SMALLEST_LEVEL);
    auto* const label = GUI_DRIVER::find_widget<QLabel>(m_pane.get(), "zoom_level");
    EXPECT_EQ(label->text(), "1 %");
    view().set_netlist(NETLIST_READER::read_text(R"({"modules":{"one":{}}})", "one.json").netlist);
    ASSERT_TRUE(GUI_DRIVER::wait_for([this] { return !view().is_drawing(); }));
    EXPECT_EQ(view().get_level(), HIERARCHY_GRAPH_VIEW::LARGEST_FIT_LEVEL); // a small graph is not blown up
    EXPECT_EQ(label->text(), "150 %");
}

TEST_F(host_hierarchy_view, the_whole_graph_shows_until_the_user_zooms)
{
    show();
    m_pane->resize(400, 300);
    EXPECT_TRUE(GUI_DRIVER::wait_for([this] { return view().get_level() < 1; }));
    const QRect shown = view().mapFromScene(view().sceneRect()).boundingRect();
    EXPECT_LE(shown.width(), view().viewport()->width() + 2);
    view().zoom_in();
    const double level = view().get_level();
    m_pane->resize(700, 500);
    GUI_DRIVER::process_posted();
    EXPECT_EQ(view().get_level(), level);
}

TEST_F(host_hierarchy_view, the_selection_fills_the_view)
{
    show();
    find_action(TOLV_ZOOM_SELECTION_ACTION)->trigger(); // of nothing
    const double level = view().get_level();
    scene().select({1});
    find_action(TOLV_ZOOM_SELECTION_ACTION)->trigger();
    EXPECT_GT(view().get_level(), level * 1.5);
    const QRect shown = view().mapFromScene(node(1).rect).boundingRect();
    EXPECT_TRUE(view().viewport()->rect().adjusted(-2, -2, 2, 2).contains(shown));
    EXPECT_GT(shown.width(), view().viewport()->width() - 30);
}

TEST_F(host_hierarchy_view, the_tools_zoom_and_pan)
{
    show();
    find_action(TOLV_ZOOM_TOOL_ACTION)->trigger();
    EXPECT_EQ(view().get_tool(), HIERARCHY_GRAPH_VIEW::TOOL_ZOOM);
    const double level = view().get_level();
    drag(get_place(1), get_place(1));
    EXPECT_NEAR(view().get_level(), level * 1.25, 1e-6);
    EXPECT_TRUE(scene().get_selection().empty());
    GUI_DRIVER::click(view().viewport(), get_place(1), Qt::RightButton);
    EXPECT_NEAR(view().get_level(), level, 1e-6);
    GUI_DRIVER::click(view().viewport(), get_place(1), Qt::LeftButton, Qt::ShiftModifier);
    EXPECT_NEAR(view().get_level(), level * 0.8, 1e-6);
    const QRect rect = view().mapFromScene(node(1).rect).boundingRect();
    drag(rect.topLeft(), rect.bottomRight());
    EXPECT_GT(view().get_level(), level * 1.5);

    find_action(TOLV_PAN_TOOL_ACTION)->trigger();
    EXPECT_EQ(view().viewport()->cursor().shape(), Qt::OpenHandCursor);
    const int value = view().horizontalScrollBar()->value();
    GUI_DRIVER::press(view().viewport(), QPoint(200, 200));
    EXPECT_EQ(view().viewport()->cursor().shape(), Qt::ClosedHandCursor);
    GUI_DRIVER::move_to(view().viewport(), QPoint(230, 200));
    GUI_DRIVER::release(view().viewport(), QPoint(230, 200));
    EXPECT_EQ(view().horizontalScrollBar()->value(), value - 30);
    EXPECT_EQ(view().viewport()->cursor().shape(), Qt::OpenHandCursor);
}

TEST_F(host_hierarchy_view, control_and_shift_pan_whatever_the_tool)
{
    show();
    view().zoom_by(4);
    view().centerOn(node(1).rect.center());
    const int value = view().horizontalScrollBar()->value();
    const Qt::KeyboardModifiers both = Qt::ControlModifier | Qt::ShiftModifier;
    GUI_DRIVER::press(view().viewport(), QPoint(200, 200), Qt::LeftButton, both);
    GUI_DRIVER::move_to(view().viewport(), QPoint(190, 200), both);
    GUI_DRIVER::release(view().viewport(), QPoint(190, 200), Qt::LeftButton, both);
    EXPECT_EQ(view().horizontalScrollBar()->value(), value + 10);
    EXPECT_EQ(view().get_tool(), HIERARCHY_GRAPH_VIEW::TOOL_SELECT);
    EXPECT_EQ(view().viewport()->cursor().shape(), Qt::ArrowCursor);
}

TEST_F(host_hierarchy_view, the_dialog_sets_the_level)
{
    show();
    const double fit = view().get_level();
    const auto answer = [this](const QString& text)
    {
        answer_next_dialog(
            [&](QDialog* dialog)
            {
                auto* const zoom = qobject_cast<TOLV_SET_ZOOM_DLG*>(dialog);
                ASSERT_NE(zoom, nullptr);
                zoom->get_combo_box()->setCurrentText(text);
                zoom->accept();
            });
        find_action(TOLV_ZOOM_ACTION)->trigger();
    };
    answer("200%");
    EXPECT_NEAR(view().get_level(), 2, 1e-6);
    answer("Fit in Window");
    EXPECT_EQ(view().get_level(), fit);
}

TEST_F(host_hierarchy_view, tips_tell_of_modules_and_edges)
{
    show();
    EXPECT_EQ(scene().get_edge_text(0), "top holds 2 instances of a");
    EXPECT_EQ(scene().get_edge_text(1), "top holds one b");
    const QPoint place = get_place(1);
    QHelpEvent help(QEvent::ToolTip, place, view().viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(view().viewport(), &help);
    EXPECT_EQ(QToolTip::text(), scene().get_node_text(1));
    QToolTip::hideText();
    EXPECT_EQ(scene().get_node_text(1), "a<br>2 instances, 3 cells<br>Modules that hold it: 1, that it holds: 1");
}

TEST_F(host_hierarchy_view, colours_are_the_named_ones)
{
    show();
    view().zoom_by(1 / view().get_level());
    const auto get_color = [this](std::uint32_t number)
    {
        const QRect rect = view().mapFromScene(node(number).rect).boundingRect();
        return render_widget(view().viewport()).pixelColor(rect.left() + 5, rect.center().y());
    };
    EXPECT_EQ(get_color(0), TOLV_COLOR(TOLV_HIER_TOP_LEVEL_BACKGROUND_COLOR).get_color());
    EXPECT_EQ(get_color(1), TOLV_COLOR(TOLV_HIER_PARTITION_FILL_COLOR).get_color());
    scene().select({1});
    EXPECT_EQ(get_color(1), TOLV_COLOR(TOLV_RTLV_SELECTED_FILL_COLOR).get_color());
    const QImage picture = render_widget(view().viewport());
    EXPECT_EQ(picture.pixelColor(1, 1), TOLV_COLOR(TOLV_HIER_BACKGROUND_COLOR).get_color());
    EXPECT_GT(count_pixels(picture, TOLV_COLOR(TOLV_RTLV_SELECTED_NET_LINE_COLOR).get_color(), 60), 50);
    TOLV_COLOR::set_default_color(TOLV_HIER_PARTITION_FILL_COLOR, QColor(1, 2, 3));
    scene().select({});
    view().apply_drawing_resources();
    EXPECT_EQ(get_color(1), QColor(1, 2, 3));
}

TEST_F(host_hierarchy_view, the_birds_eye_view_shows_the_graph_and_moves_the_view)
{
    show();
    view().zoom_by(4);
    QAction* const action = view().get_birds_eye_view_action();
    ASSERT_NE(action, nullptr);
    EXPECT_TRUE(m_pane->get_tool_bar()->actions().contains(action));
    action->trigger();
    GUI_DRIVER::process_posted();
    TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET* const overview = view().get_birds_eye_view()->get_graphics_view_widget();
    EXPECT_TRUE(overview->isVisible());
    EXPECT_EQ(overview->scene(), &scene());
    const QPoint before = view().mapFromScene(QPointF());
    const QPoint middle = overview->get_focus_rect().center();
    GUI_DRIVER::drag(overview->viewport(), middle, middle + QPoint(-20, 0));
    EXPECT_NE(view().mapFromScene(QPointF()), before);
    // Another design has an overview of its own.
    view().set_netlist(NETLIST_READER::read_text(R"({"modules":{"one":{}}})", "one.json").netlist);
    EXPECT_FALSE(view().get_birds_eye_view()->isVisible());
    ASSERT_TRUE(GUI_DRIVER::wait_for([this] { return !view().is_drawing(); }));
    EXPECT_TRUE(m_pane->get_tool_bar()->actions().contains(view().get_birds_eye_view_action()));
    EXPECT_EQ(view().get_birds_eye_view()->get_graphics_view_widget()->get_size(),
              QSize(300, int(300 / (scene().sceneRect().width() / scene().sceneRect().height()))));
}

// ---- In the workbench -----------------------------------------------------------------------------------------------

class host_hierarchy_document : public WORKBENCH_TEST
{
protected:
    void SetUp() override
    {
        WORKBENCH_TEST::SetUp();
        make_and_show_window();
        m_window->open_file(QStringLiteral(WORKBENCH_DESIGNS "/serial_station_rtl.json"));
        wait();
    }

    void wait() const
    {
        GUI_DRIVER::wait_for([this] { return !m_window->is_loading() && !m_window->get_documents()->is_drawing(); },
                             30000);
        GUI_DRIVER::process_posted();
    }

    HIERARCHY_GRAPH_VIEW& view() const
    {
        return *m_window->get_documents()->get_hierarchy()->get_view();
    }
};

TEST_F(host_hierarchy_document, the_command_opens_the_graph_and_a_module_opens_its_schematic)
{
    EXPECT_EQ(view().get_graph(), nullptr); // nobody has looked at it
    GUI_DRIVER::find_widget<QAction>(m_window.get(), "hierarchy_graph_action")->trigger();
    wait();
    ASSERT_NE(view().get_graph(), nullptr);
    EXPECT_EQ(m_window->get_documents()->get_active_drawing(), m_window->get_documents()->get_hierarchy());
    EXPECT_EQ(view().get_scene()->get_current_node(),
              view().get_graph()->find_node(m_window->get_netlist()->top_modules[0]));
    const auto& nodes = view().get_graph()->get_nodes();
    const auto uart = std::find_if(nodes.begin(), nodes.end(), [](const auto& node) { return node.name == "uart"; });
    ASSERT_NE(uart, nodes.end());
    const QPoint place = view().mapFromScene(uart->rect.center());
    QMouseEvent double_click(QEvent::MouseButtonDblClick, place, view().viewport()->mapToGlobal(place), Qt::LeftButton,
                             Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view().viewport(), &double_click);
    EXPECT_EQ(m_window->get_selected_path(), QStringList({"serial_station", "u_uart"}));
    EXPECT_EQ(m_window->get_documents()->get_active_drawing(), m_window->get_documents()->get_schematic());
    EXPECT_EQ(view().get_scene()->get_current_node(), std::uint32_t(uart - nodes.begin()));
    wait();
}

TEST_F(host_hierarchy_document, it_closes_and_opens_again_as_the_others_do)
{
    WORKBENCH_DOCUMENTS& documents = *m_window->get_documents();
    documents.show_document(WORKBENCH_DOCUMENTS::DOCUMENT_HIERARCHY);
    wait();
    m_window->findChild<TOLV_MDI_AREA*>()->activeSubWindow()->close();
    GUI_DRIVER::process_posted();
    EXPECT_FALSE(view().isVisible());
    documents.show_document(WORKBENCH_DOCUMENTS::DOCUMENT_HIERARCHY);
    EXPECT_TRUE(view().isVisible());
    EXPECT_NE(view().get_graph(), nullptr);
    m_window->open_file(QStringLiteral(WORKBENCH_DESIGNS "/serial_station_synth.json"));
    wait();
    ASSERT_NE(view().get_graph(), nullptr);
    EXPECT_EQ(&view().get_graph()->get_netlist(), m_window->get_netlist().get());
}
} // namespace
