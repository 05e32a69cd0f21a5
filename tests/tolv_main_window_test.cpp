#include "tolv_main_window.h"

#include "gui_answers.h"
#include "gui_driver.h"
#include "gui_test.h"
#include "input_script.h"
#include "internal_error_trap.h"
#include "module_recorder.h"
#include "tolv_dock_widget_button_bar.h"
#include "tolv_tree_view.h"

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QVBoxLayout>
#include <QWindow>

#include <memory>

namespace
{
using TOPICS = std::vector<std::string>;

/// Counts what a host overrides.
class HOST_WINDOW : public TOLV_MAIN_WINDOW
{
public:
    int m_update_count = 0;

    void update_actions() override
    {
        ++m_update_count;
    }
};

class HELPFUL_TREE : public TOLV_TREE_VIEW
{
public:
    bool m_answer = true;
    int m_count = 0;

    bool handle_f1_help() override
    {
        ++m_count;
        return m_answer;
    }
};

class TOLV_MAIN_WINDOW_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        m_window = std::make_unique<HOST_WINDOW>();
        m_window->resize(400, 300);
        auto* const central = new QWidget;
        auto* const layout = new QVBoxLayout(central);
        m_edit = new QLineEdit;
        layout->addWidget(m_edit);
        m_window->setCentralWidget(central);
    }
    void TearDown() override
    {
        m_window.reset();
        TOLV_GUI_TEST::TearDown();
    }

    QMenu* add_menu(const char* title, std::initializer_list<const char*> texts)
    {
        QMenu* const menu = m_window->menuBar()->addMenu(QString::fromLatin1(title));
        for (const char* text : texts)
            menu->addAction(QString::fromLatin1(text));
        return menu;
    }

    QAction* find(const char* name) const
    {
        return m_window->get_main_menu_action(QString::fromLatin1(name));
    }

    /// Opens a menu of the menu bar by the mouse, runs steps while it is open, and closes it.
    void with_open_menu(QMenu* menu, const std::function<void()>& steps)
    {
        answer_next_menu(
            [&](QMenu* opened)
            {
                EXPECT_EQ(menu, opened);
                steps();
                menu->close();
            });
        QMenuBar* const bar = m_window->menuBar();
        GUI_DRIVER::click(bar, bar->actionGeometry(menu->menuAction()).center());
        GUI_DRIVER::wait_for([menu] { return !menu->isVisible(); });
    }

    std::unique_ptr<HOST_WINDOW> m_window;
    QLineEdit* m_edit = nullptr;
    MODULE_RECORDER m_recorder;
};

constexpr Qt::ToolBarArea SIDES[] = {Qt::LeftToolBarArea, Qt::RightToolBarArea, Qt::TopToolBarArea,
                                     Qt::BottomToolBarArea};
} // namespace

// ---- The window -----------------------------------------------------------------------------------------------------

TEST_F(TOLV_MAIN_WINDOW_TEST, docks_can_be_nested)
{
    EXPECT_TRUE(m_window->isDockNestingEnabled());
}

TEST_F(TOLV_MAIN_WINDOW_TEST, each_edge_has_a_side_bar_that_is_hidden)
{
    EXPECT_EQ(4, m_window->m_button_bars.size());
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    for (const Qt::ToolBarArea area : SIDES)
    {
        SCOPED_TRACE(area);
        TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = m_window->m_button_bars.value(area);
        ASSERT_NE(nullptr, bar);
        EXPECT_EQ(m_window.get(), bar->parent());
        EXPECT_EQ(area, m_window->toolBarArea(bar));
        EXPECT_FALSE(bar->isVisible());
    }
    m_window->hide();
}

TEST_F(TOLV_MAIN_WINDOW_TEST, the_side_bars_are_made_left_right_top_bottom)
{
    const QList<TOLV_DOCK_WIDGET_BUTTON_BAR*> bars =
        m_window->findChildren<TOLV_DOCK_WIDGET_BUTTON_BAR*>(QString(), Qt::FindDirectChildrenOnly);
    ASSERT_EQ(4, bars.size());
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(m_window->m_button_bars.value(SIDES[i]), bars.at(i));
}

TEST_F(TOLV_MAIN_WINDOW_TEST, a_separator_darkens_under_the_pointer)
{
    EXPECT_EQ(QStringLiteral("QMainWindow::separator:hover { background: darkgray; }"), m_window->styleSheet());
}

TEST_F(TOLV_MAIN_WINDOW_TEST, one_action_stands_for_the_help_key)
{
    const QList<QAction*> actions = m_window->actions();
    ASSERT_EQ(1, actions.size());
    EXPECT_EQ(QStringLiteral("F1 Help"), actions.at(0)->text());
    EXPECT_EQ(QKeySequence(Qt::Key_F1), actions.at(0)->shortcut());
    EXPECT_EQ(Qt::WidgetWithChildrenShortcut, actions.at(0)->shortcutContext());
    EXPECT_EQ(m_window.get(), actions.at(0)->parent());
}

TEST_F(TOLV_MAIN_WINDOW_TEST, hosts_override_the_update_of_actions)
{
    TOLV_MAIN_WINDOW().update_actions();
    EXPECT_TRUE(QMetaObject::invokeMethod(m_window.get(), "update_actions"));
    EXPECT_EQ(1, m_window->m_update_count);
}

TEST_F(TOLV_MAIN_WINDOW_TEST, a_window_has_one_manager_of_docks)
{
    TOLV_DOCK_MGR* const manager = m_window->get_dock_mgr();
    EXPECT_NE(nullptr, manager);
    EXPECT_EQ(manager, m_window->get_dock_mgr());
    HOST_WINDOW other;
    EXPECT_NE(manager, other.get_dock_mgr());
}

TEST_F(TOLV_MAIN_WINDOW_TEST, a_layout_with_the_side_bars_can_be_saved_and_restored)
{
    m_window->m_button_bars.value(Qt::LeftToolBarArea)->show();
    const QByteArray state = m_window->saveState(); // an unnamed bar would be a warning of Qt's
    HOST_WINDOW other;
    EXPECT_TRUE(other.restoreState(state));
    EXPECT_FALSE(other.m_button_bars.value(Qt::LeftToolBarArea)->isHidden());
    EXPECT_TRUE(other.m_button_bars.value(Qt::RightToolBarArea)->isHidden());
}

// ---- Actions of the main menu ---------------------------------------------------------------------------------------

TEST_F(TOLV_MAIN_WINDOW_TEST, an_action_is_found_by_its_text_and_mnemonics_do_not_count)
{
    const QMenu* const menu = add_menu("&Edit", {"&Copy", "Find && Replace", "P&aste"});
    EXPECT_EQ(menu->actions().at(0), find("Copy"));
    EXPECT_EQ(menu->actions().at(0), find("&Copy"));
    EXPECT_EQ(menu->actions().at(0), find("Co&py"));
    EXPECT_EQ(menu->actions().at(1), find("Find  Replace"));
    EXPECT_EQ(menu->actions().at(1), find("Find && Replace"));
    EXPECT_EQ(menu->actions().at(2), find("Paste"));
}

TEST_F(TOLV_MAIN_WINDOW_TEST, only_the_whole_text_counts)
{
    add_menu("Edit", {"&Copy", ""});
    for (const char* name : {"copy", "Cop", "Copy ", "", "&"})
        EXPECT_EQ(nullptr, find(name)) << name;
}

TEST_F(TOLV_MAIN_WINDOW_TEST, the_title_of_a_menu_is_no_action)
{
    QMenu* const menu = add_menu("&File", {"Open"});
    EXPECT_EQ(nullptr, find("File"));
    const QAction* const entry = menu->addAction(QStringLiteral("File"));
    EXPECT_EQ(entry, find("&File"));
    EXPECT_EQ(entry, find("F&ile"));
}

TEST_F(TOLV_MAIN_WINDOW_TEST, the_first_action_in_depth_wins)
{
    QMenu* const file = add_menu("File", {"New"});
    QMenu* const recent = file->addMenu(QStringLiteral("Recent"));
    const QAction* const deep = recent->addAction(QStringLiteral("Open"));
    file->addAction(QStringLiteral("Open"));
    add_menu("View", {"Open", "Zoom"});
    EXPECT_EQ(deep, find("Open"));
    EXPECT_NE(nullptr, find("Zoom"));
}

TEST_F(TOLV_MAIN_WINDOW_TEST, an_action_on_the_menu_bar_itself_is_found)
{
    add_menu("File", {"Open"});
    const QAction* const action = m_window->menuBar()->addAction(QStringLiteral("&Run"));
    EXPECT_EQ(action, find("Run"));
}

TEST_F(TOLV_MAIN_WINDOW_TEST, a_window_without_a_menu_has_no_actions_and_gets_no_menu)
{
    EXPECT_EQ(nullptr, find("Open"));
    EXPECT_EQ(nullptr, m_window->menuWidget());
}

TEST_F(TOLV_MAIN_WINDOW_TEST, a_list_of_actions_can_be_searched)
{
    QAction copy(QStringLiteral("&Copy"));
    QAction paste(QStringLiteral("Paste"));
    EXPECT_EQ(&paste, m_window->find_main_menu_action(QStringLiteral("Paste"), {&copy, &paste}));
    EXPECT_EQ(nullptr, m_window->find_main_menu_action(QStringLiteral("&Copy"), {&copy, &paste}));
    EXPECT_EQ(nullptr, m_window->find_main_menu_action(QStringLiteral("Copy"), {}));
}

TEST_F(TOLV_MAIN_WINDOW_TEST, a_null_action_is_an_internal_error)
{
    EXPECT_INTERNAL_ERROR(m_window->find_main_menu_action(QStringLiteral("Copy"), {nullptr}), "a != NULL");
}

// ---- Help -----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_MAIN_WINDOW_TEST, the_topic_is_the_accessible_name_of_the_focus_widget)
{
    m_edit->setAccessibleName(QStringLiteral("Pr\u00fcfung"));
    m_window->centralWidget()->setAccessibleName(QStringLiteral("central"));
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    GUI_DRIVER::key_click(m_edit, Qt::Key_F1);
    EXPECT_EQ((TOPICS{QStringLiteral("Pr\u00fcfung").toLocal8Bit().toStdString()}), m_recorder.take_topics());
}

TEST_F(TOLV_MAIN_WINDOW_TEST, the_nearest_parent_with_a_name_gives_the_topic)
{
    m_window->setAccessibleName(QStringLiteral("window"));
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    GUI_DRIVER::key_click(m_edit, Qt::Key_F1);
    EXPECT_EQ((TOPICS{"window"}), m_recorder.take_topics());
    m_window->centralWidget()->setAccessibleName(QStringLiteral("central"));
    GUI_DRIVER::key_click(m_edit, Qt::Key_F1);
    EXPECT_EQ((TOPICS{"central"}), m_recorder.take_topics());
}

TEST_F(TOLV_MAIN_WINDOW_TEST, without_any_name_the_topic_is_empty)
{
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    GUI_DRIVER::key_click(m_edit, Qt::Key_F1);
    EXPECT_EQ((TOPICS{""}), m_recorder.take_topics());
}

TEST_F(TOLV_MAIN_WINDOW_TEST, without_a_focus_the_topic_is_empty)
{
    m_window->setAccessibleName(QStringLiteral("window"));
    ASSERT_EQ(nullptr, QApplication::focusWidget());
    m_window->f1_help();
    EXPECT_EQ((TOPICS{""}), m_recorder.take_topics());
}

TEST_F(TOLV_MAIN_WINDOW_TEST, the_key_in_a_floating_dock_is_the_windows_own_business)
{
    auto* const dock = new QDockWidget(m_window.get());
    auto* const edit = new QLineEdit(dock);
    dock->setWidget(edit);
    edit->setAccessibleName(QStringLiteral("floating"));
    m_window->addDockWidget(Qt::LeftDockWidgetArea, dock);
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    GUI_DRIVER::key_click(edit, Qt::Key_F1);
    EXPECT_EQ((TOPICS{"floating"}), m_recorder.take_topics());
    dock->setFloating(true);
    GUI_DRIVER::wait_for(
        [dock] { return dock->isWindow() && dock->windowHandle() != nullptr && dock->windowHandle()->isExposed(); });
    GUI_DRIVER::key_click(edit, Qt::Key_F1);
    EXPECT_EQ((TOPICS{}), m_recorder.take_topics());
    dock->setFloating(false);
}

TEST_F(TOLV_MAIN_WINDOW_TEST, a_tree_that_shows_help_of_its_own_ends_the_search)
{
    auto* const tree = new HELPFUL_TREE;
    tree->setAccessibleName(QStringLiteral("tree"));
    m_window->setCentralWidget(tree);
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    GUI_DRIVER::key_click(tree, Qt::Key_F1);
    EXPECT_EQ((TOPICS{}), m_recorder.take_topics());
    EXPECT_EQ(1, tree->m_count);
    tree->m_answer = false;
    GUI_DRIVER::key_click(tree, Qt::Key_F1);
    EXPECT_EQ((TOPICS{"tree"}), m_recorder.take_topics());
    EXPECT_EQ(2, tree->m_count);
}

TEST_F(TOLV_MAIN_WINDOW_TEST, only_the_focus_widget_itself_is_asked_as_a_tree)
{
    auto* const tree = new HELPFUL_TREE;
    tree->setAccessibleName(QStringLiteral("tree"));
    auto* const inner = new QLineEdit(tree);
    m_window->setCentralWidget(tree);
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    GUI_DRIVER::key_click(inner, Qt::Key_F1);
    EXPECT_EQ((TOPICS{"tree"}), m_recorder.take_topics());
    EXPECT_EQ(0, tree->m_count);
}

TEST_F(TOLV_MAIN_WINDOW_TEST, a_popup_is_asked_in_place_of_a_tree_with_the_focus)
{
    auto* const tree = new HELPFUL_TREE;
    m_window->setCentralWidget(tree);
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    GUI_DRIVER::focus(tree);
    HELPFUL_TREE popup;
    popup.setWindowFlags(Qt::Popup);
    popup.show();
    ASSERT_EQ(&popup, QApplication::activePopupWidget());
    m_window->f1_help();
    EXPECT_EQ(1, popup.m_count);
    popup.close();
    QWidget other(m_window.get(), Qt::Popup);
    other.setAccessibleName(QStringLiteral("other"));
    other.show();
    m_window->f1_help();
    other.close();
    EXPECT_EQ((TOPICS{"other"}), m_recorder.take_topics());
    EXPECT_EQ(0, tree->m_count);
}

TEST_F(TOLV_MAIN_WINDOW_TEST, in_an_open_menu_the_active_action_is_the_topic)
{
    QMenu* const menu = add_menu("&File", {"&Open...", "Save &As"});
    m_edit->setAccessibleName(QStringLiteral("edit"));
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    GUI_DRIVER::focus(m_edit);
    with_open_menu(menu,
                   [&]
                   {
                       GUI_DRIVER::key_click(menu, Qt::Key_Down);
                       GUI_DRIVER::key_click(menu, Qt::Key_F1);
                       GUI_DRIVER::key_click(menu, Qt::Key_Down);
                       GUI_DRIVER::key_click(menu, Qt::Key_F1);
                   });
    EXPECT_EQ((TOPICS{"&Open...", "Save &As"}), m_recorder.take_topics());
}

TEST_F(TOLV_MAIN_WINDOW_TEST, in_an_open_menu_with_no_active_action_the_title_is_the_topic)
{
    QMenu* const menu = add_menu("&File", {"&Open..."});
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    GUI_DRIVER::focus(m_edit);
    with_open_menu(menu,
                   [&]
                   {
                       EXPECT_EQ(nullptr, menu->activeAction());
                       GUI_DRIVER::key_click(menu, Qt::Key_F1);
                   });
    EXPECT_EQ((TOPICS{"&File"}), m_recorder.take_topics());
}

TEST_F(TOLV_MAIN_WINDOW_TEST, an_active_action_without_a_text_gives_an_empty_topic)
{
    QMenu* const menu = add_menu("&File", {""});
    menu->setAccessibleName(QStringLiteral("menu"));
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    GUI_DRIVER::focus(m_edit);
    with_open_menu(menu,
                   [&]
                   {
                       menu->setActiveAction(menu->actions().at(0));
                       GUI_DRIVER::key_click(menu, Qt::Key_F1);
                   });
    EXPECT_EQ((TOPICS{""}), m_recorder.take_topics());
}

TEST_F(TOLV_MAIN_WINDOW_TEST, in_an_open_menu_below_a_menu_that_one_is_asked)
{
    QMenu* const menu = add_menu("&File", {"&Open..."});
    QMenu* const recent = menu->addMenu(QStringLiteral("&Recent"));
    recent->addAction(QStringLiteral("&pump.json"));
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    GUI_DRIVER::focus(m_edit);
    answer_next_menu(
        [&](QMenu*)
        {
            menu->setActiveAction(recent->menuAction());
            GUI_DRIVER::key_click(menu, Qt::Key_F1);
            // The active action's menu opens by itself in a while, and its answer closes both.
            if (menu->isVisible() && !recent->isVisible())
                GUI_DRIVER::key_click(menu, Qt::Key_Right);
        });
    answer_next_menu(
        [&](QMenu* opened)
        {
            EXPECT_EQ(recent, opened);
            recent->setActiveAction(recent->actions().at(0));
            GUI_DRIVER::key_click(recent, Qt::Key_F1);
            recent->close();
            menu->close();
        });
    QMenuBar* const bar = m_window->menuBar();
    GUI_DRIVER::click(bar, bar->actionGeometry(menu->menuAction()).center());
    GUI_DRIVER::wait_for([&] { return !menu->isVisible() && !recent->isVisible(); });
    EXPECT_EQ((TOPICS{"&Recent", "&pump.json"}), m_recorder.take_topics());
}

TEST_F(TOLV_MAIN_WINDOW_TEST, another_popup_is_walked_up_from_like_a_focus_widget)
{
    m_edit->setAccessibleName(QStringLiteral("edit"));
    ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
    GUI_DRIVER::focus(m_edit);
    QWidget popup(m_window.get(), Qt::Popup);
    popup.resize(50, 50);
    popup.show();
    ASSERT_EQ(&popup, QApplication::activePopupWidget());
    m_window->f1_help();
    m_window->setAccessibleName(QStringLiteral("window"));
    m_window->f1_help();
    popup.setAccessibleName(QStringLiteral("popup"));
    m_window->f1_help();
    EXPECT_EQ((TOPICS{"", "window", "popup"}), m_recorder.take_topics());
    popup.close();
}
