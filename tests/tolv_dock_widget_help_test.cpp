#include "internal_error_trap.h"
#include "module_recorder.h"
#include "tolv_dock_fixture.h"
#include "tolv_tree_view.h"

#include <QAction>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

// Help and the filter line of dock windows.

namespace
{
using TOPICS = std::vector<std::string>;

class TOLV_DOCK_WIDGET_HELP_TEST : public TOLV_DOCK_FIXTURE
{
protected:
    MODULE_RECORDER m_recorder;
};

class TOPIC_DOCK : public TEST_DOCK
{
public:
    using TEST_DOCK::TEST_DOCK;

    std::string get_help_topic_string() override
    {
        return "own topic of " + windowTitle().toStdString();
    }
};

/// A content with buttons, one below the other.
class BUTTON_PAGE : public QWidget
{
public:
    BUTTON_PAGE()
    {
        setLayout(new QVBoxLayout);
    }
    QPushButton* add(const QString& text, const QString& name = QString())
    {
        auto* const button = new QPushButton(text);
        button->setObjectName(name);
        layout()->addWidget(button);
        return button;
    }
};

using TOLV_DOCK_WIDGET_FILTER_TEST = TOLV_DOCK_FIXTURE;
} // namespace

// ---- Topic ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_WIDGET_HELP_TEST, the_topic_is_the_title_with_the_name_of_the_parent_right_behind_it)
{
    m_window->setAccessibleName("workbench");
    TEST_DOCK dock("Console ", m_window.get());
    EXPECT_EQ("Console workbench", dock.get_help_topic_string());
    dock.setWindowTitle(QString::fromUtf8("Pr\u00FCfung"));
    EXPECT_EQ(QString::fromUtf8("Pr\u00FCfungworkbench").toLocal8Bit().toStdString(), dock.get_help_topic_string());
    TEST_DOCK alone("Console", nullptr);
    EXPECT_EQ("Console", alone.get_help_topic_string());
}

TEST_F(TOLV_DOCK_WIDGET_HELP_TEST, a_new_title_makes_the_topic_the_accessible_name)
{
    m_window->setAccessibleName("-bench");
    TOPIC_DOCK own("Console", m_window.get());
    EXPECT_EQ(QString(), own.accessibleName()); // the constructor's title is no change
    own.setWindowTitle("Messages");
    EXPECT_EQ("own topic of Messages", own.accessibleName());
    TEST_DOCK plain(m_window.get());
    plain.setWindowTitle("Messages");
    EXPECT_EQ("Messages-bench", plain.accessibleName());
}

TEST_F(TOLV_DOCK_WIDGET_HELP_TEST, asking_for_help_shows_the_topic_of_the_subclass)
{
    TOPIC_DOCK dock("Console", m_window.get());
    dock.help_button_clicked();
    EXPECT_EQ((TOPICS{"own topic of Console"}), m_recorder.take_topics());
}

TEST_F(TOLV_DOCK_WIDGET_HELP_TEST, f1_in_a_floating_window_shows_its_topic)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    dock->widget()->setFocusPolicy(Qt::StrongFocus);
    ASSERT_TRUE(show());
    dock->setFloating(true);
    ASSERT_TRUE(GUI_DRIVER::show(dock));
    GUI_DRIVER::key_click(dock->widget(), Qt::Key_F1);
    EXPECT_EQ((TOPICS{"Console"}), m_recorder.take_topics());
    GUI_DRIVER::key_click(dock->widget(), Qt::Key_F2);
    EXPECT_EQ((TOPICS{}), m_recorder.take_topics());
}

TEST_F(TOLV_DOCK_WIDGET_HELP_TEST, the_window_takes_f1_and_leaves_other_keys_to_its_parent)
{
    TEST_DOCK dock("Console", m_window.get());
    QKeyEvent f1(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
    QCoreApplication::sendEvent(&dock, &f1);
    EXPECT_TRUE(f1.isAccepted());
    EXPECT_EQ((TOPICS{"Console"}), m_recorder.take_topics());
    QKeyEvent f2(QEvent::KeyPress, Qt::Key_F2, Qt::NoModifier);
    QCoreApplication::sendEvent(&dock, &f2);
    EXPECT_FALSE(f2.isAccepted());
    EXPECT_EQ((TOPICS{}), m_recorder.take_topics());
}

TEST_F(TOLV_DOCK_WIDGET_HELP_TEST, f1_in_a_docked_window_shows_its_topic_through_the_main_window)
{
    TEST_DOCK* const dock = add_dock(QString(), Qt::LeftDockWidgetArea);
    dock->setWindowTitle("Messages");
    dock->widget()->setFocusPolicy(Qt::StrongFocus);
    ASSERT_TRUE(show());
    GUI_DRIVER::key_click(dock->widget(), Qt::Key_F1);
    EXPECT_EQ((TOPICS{"Messages"}), m_recorder.take_topics());
}

// ---- Help buttons ---------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_WIDGET_HELP_TEST, a_help_button_in_the_content_shows_the_topic)
{
    const SCOPED_EXPECTED_DEBUG_RECORD record("TOLV", "Found a Help button");
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    auto* const page = new BUTTON_PAGE;
    QPushButton* const run = page->add("Run");
    QPushButton* const help = page->add("Help");
    dock->setWidget(page);
    ASSERT_TRUE(show());
    GUI_DRIVER::click(run);
    EXPECT_EQ((TOPICS{}), m_recorder.take_topics());
    GUI_DRIVER::click(help);
    EXPECT_EQ((TOPICS{"Console"}), m_recorder.take_topics());
}

TEST_F(TOLV_DOCK_WIDGET_HELP_TEST, a_button_is_found_by_its_name_at_any_depth)
{
    const SCOPED_EXPECTED_DEBUG_RECORD record("TOLV", "Found a Help button");
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    auto* const page = new BUTTON_PAGE;
    auto* const inner = new BUTTON_PAGE;
    page->layout()->addWidget(inner);
    QPushButton* const help = inner->add("?", "my_help_button");
    dock->setWidget(page);
    ASSERT_TRUE(show());
    GUI_DRIVER::click(help);
    EXPECT_EQ((TOPICS{"Console"}), m_recorder.take_topics());
}

TEST_F(TOLV_DOCK_WIDGET_HELP_TEST, buttons_that_only_look_alike_are_left_alone)
{
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    auto* const page = new BUTTON_PAGE;
    const QList<QPushButton*> buttons = {page->add("&Help"), page->add("help"), page->add("Help..."),
                                         page->add("?", "myHelpButton")};
    dock->setWidget(page);
    ASSERT_TRUE(show()); // a debug record would fail the test
    for (QPushButton* const button : buttons)
        GUI_DRIVER::click(button);
    EXPECT_EQ((TOPICS{}), m_recorder.take_topics());
}

TEST_F(TOLV_DOCK_WIDGET_HELP_TEST, only_the_first_button_that_fits_is_wired)
{
    const SCOPED_EXPECTED_DEBUG_RECORD record("TOLV", "Found a Help button");
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    auto* const page = new BUTTON_PAGE;
    QPushButton* const first = page->add("?", "help_first");
    QPushButton* const second = page->add("Help");
    dock->setWidget(page);
    ASSERT_TRUE(show());
    GUI_DRIVER::click(second);
    EXPECT_EQ((TOPICS{}), m_recorder.take_topics());
    GUI_DRIVER::click(first);
    EXPECT_EQ((TOPICS{"Console"}), m_recorder.take_topics());
}

TEST_F(TOLV_DOCK_WIDGET_HELP_TEST, a_help_button_is_wired_once_however_often_its_page_is_polished)
{
    const SCOPED_EXPECTED_DEBUG_RECORD record("TOLV", "Found a Help button");
    TEST_DOCK* const dock = add_dock("Console", Qt::LeftDockWidgetArea);
    auto* const page = new BUTTON_PAGE;
    QPushButton* const help = page->add("Help");
    dock->setWidget(page);
    ASSERT_TRUE(show());
    for (int i = 0; i < 3; ++i)
    {
        QChildEvent polished(QEvent::ChildPolished, page);
        QApplication::sendEvent(dock, &polished);
    }
    GUI_DRIVER::click(help);
    EXPECT_EQ((TOPICS{"Console"}), m_recorder.take_topics());
}

TEST_F(TOLV_DOCK_WIDGET_HELP_TEST, children_that_are_no_widgets_are_passed_over)
{
    TEST_DOCK dock("Console", m_window.get());
    QObject thing;
    QChildEvent polished(QEvent::ChildPolished, &thing);
    QApplication::sendEvent(&dock, &polished);
    QChildEvent added(QEvent::ChildAdded, dock.m_titlebar);
    QApplication::sendEvent(&dock, &added);
    EXPECT_EQ((TOPICS{}), m_recorder.take_topics());
}

// ---- Filter line ----------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_WIDGET_FILTER_TEST, nothing_is_made_without_a_tree_or_unless_it_is_asked_for)
{
    TEST_DOCK dock("Hierarchy", m_window.get());
    TOLV_TREE_VIEW tree;
    dock.initialize_with_search_widget(nullptr, true);
    dock.initialize_with_search_widget(&tree, false);
    EXPECT_EQ(nullptr, dock.widget());
    EXPECT_EQ(0, dock.get_shown("search"));
    EXPECT_EQ(nullptr, tree.parent());
}

TEST_F(TOLV_DOCK_WIDGET_FILTER_TEST, the_tree_stands_below_a_line_that_is_hidden_at_first)
{
    TEST_DOCK* const dock = add_dock("Hierarchy", Qt::LeftDockWidgetArea);
    auto* const tree = new TOLV_TREE_VIEW;
    dock->initialize_with_search_widget(tree, true);
    EXPECT_EQ(1, dock->get_shown("search"));

    QWidget* const container = dock->widget();
    ASSERT_NE(nullptr, container);
    EXPECT_EQ(tree, container->focusProxy());
    auto* const layout = qobject_cast<QVBoxLayout*>(container->layout());
    ASSERT_NE(nullptr, layout);
    EXPECT_EQ(QMargins(0, 0, 0, 0), layout->contentsMargins());
    EXPECT_EQ(0, layout->spacing());
    ASSERT_EQ(2, layout->count());
    auto* const line = qobject_cast<QLineEdit*>(layout->itemAt(0)->widget());
    ASSERT_NE(nullptr, line);
    EXPECT_EQ(tree, layout->itemAt(1)->widget());
    EXPECT_TRUE(line->isHidden());
    EXPECT_EQ("<<Filter>>", line->placeholderText());

    const QList<QAction*> actions = line->actions();
    ASSERT_EQ(2, actions.size());
    const QAction* const filter_action = actions.at(0);
    const QAction* const clear_action = actions.at(1);
    EXPECT_EQ(QIcon(":/icons/svg/tolv_filter.svg").pixmap(16).toImage(), filter_action->icon().pixmap(16).toImage());
    EXPECT_EQ(QIcon(":/icons/svg/tolv_gray_x.svg").pixmap(16).toImage(), clear_action->icon().pixmap(16).toImage());
    EXPECT_EQ(QString(), clear_action->text());
    EXPECT_EQ("Clear", clear_action->toolTip());
}

TEST_F(TOLV_DOCK_WIDGET_FILTER_TEST, the_search_button_shows_the_line_and_typing_in_it_tells_the_text)
{
    TEST_DOCK* const dock = add_dock("Hierarchy", Qt::LeftDockWidgetArea);
    dock->initialize_with_search_widget(new TOLV_TREE_VIEW, true);
    auto* const line = dock->widget()->findChild<QLineEdit*>();
    const QSignalSpy spy(dock, SIGNAL(filter_option_changed(QString)));
    ASSERT_TRUE(show());
    GUI_DRIVER::click(dock->get_button_in_force("search"));
    EXPECT_TRUE(line->isVisible());
    GUI_DRIVER::type(line, "cpu");
    EXPECT_EQ((QList<QVariantList>{{"c"}, {"cp"}, {"cpu"}}), spy);

    // Hidden, the line keeps its text and goes on filtering: nothing is told.
    GUI_DRIVER::click(dock->get_button_in_force("search"));
    EXPECT_TRUE(line->isHidden());
    EXPECT_EQ("cpu", line->text());
    EXPECT_EQ(3, spy.count());
}

TEST_F(TOLV_DOCK_WIDGET_FILTER_TEST, the_x_clears_the_line)
{
    TEST_DOCK* const dock = add_dock("Hierarchy", Qt::LeftDockWidgetArea);
    dock->initialize_with_search_widget(new TOLV_TREE_VIEW, true);
    auto* const line = dock->widget()->findChild<QLineEdit*>();
    ASSERT_TRUE(show());
    GUI_DRIVER::click(dock->get_button_in_force("search"));
    GUI_DRIVER::type(line, "cpu");
    const QSignalSpy spy(dock, SIGNAL(filter_option_changed(QString)));
    const QList<QToolButton*> buttons = line->findChildren<QToolButton*>();
    ASSERT_EQ(2, buttons.size());
    // The later one in the order of places is the x at the end of the line.
    GUI_DRIVER::click(buttons.at(0)->x() > buttons.at(1)->x() ? buttons.at(0) : buttons.at(1));
    EXPECT_EQ(QString(), line->text());
    EXPECT_EQ((QList<QVariantList>{{QString()}}), spy);
}

TEST_F(TOLV_DOCK_WIDGET_FILTER_TEST, the_line_that_is_gone_with_its_window_leaves_nothing_behind)
{
    for (int i = 0; i < 3; ++i)
    {
        TEST_DOCK* const dock = add_dock("Hierarchy", Qt::LeftDockWidgetArea);
        const QPointer<TOLV_TREE_VIEW> tree(new TOLV_TREE_VIEW);
        dock->initialize_with_search_widget(tree, true);
        delete dock;
        EXPECT_TRUE(tree.isNull());
    }
}
