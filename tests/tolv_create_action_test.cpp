#include "gui_test.h"
#include "tolv_create_action.h"
#include "tolv_global.h"
#include "tolv_icon.h"

#include <QAction>
#include <QKeySequence>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QSignalSpy>
#include <QTest>

#include <limits>
#include <memory>
#include <vector>

namespace
{
/// Remembers which actions were triggered.
class TRIGGER_RECORDER : public QObject
{
    Q_OBJECT

public:
    std::vector<QAction*> m_actions;

public slots:
    void record()
    {
        m_actions.push_back(qobject_cast<QAction*>(sender()));
    }
};

class TOLV_CREATE_ACTION_TEST : public TOLV_GUI_TEST
{
};

TOLV_ACTION_ENUM to_action(int value)
{
    return static_cast<TOLV_ACTION_ENUM>(value);
}

/// All 770 actions, in the order of their values.
std::vector<std::unique_ptr<QAction>> make_all_actions()
{
    std::vector<std::unique_ptr<QAction>> actions;
    for (int value = 1; value <= TOLV_ACTION_COUNT; ++value)
        actions.emplace_back(tolv_create_action(to_action(value), nullptr));
    return actions;
}

template <typename PREDICATE>
int count_actions(PREDICATE predicate)
{
    int count = 0;
    for (const auto& action : make_all_actions())
        count += predicate(*action) ? 1 : 0;
    return count;
}

/// The tool tip that an action was given; empty where it shows Qt's own, made of the menu text.
QString get_own_tooltip(TOLV_ACTION_ENUM action)
{
    const std::unique_ptr<QAction> made(tolv_create_action(action, nullptr));
    made->setText(QString());
    return made->toolTip();
}
} // namespace

// ---- Rows -----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_CREATE_ACTION_TEST, an_action_belongs_to_its_parent)
{
    auto parent = std::make_unique<QObject>();
    const QAction* const action = tolv_create_action(TOLV_COPY_ACTION, parent.get());
    const QSignalSpy destroyed(action, SIGNAL(destroyed()));
    EXPECT_EQ(parent.get(), action->parent());
    parent.reset();
    EXPECT_EQ(1, destroyed.count());
}

TEST_F(TOLV_CREATE_ACTION_TEST, each_call_makes_an_action)
{
    const std::unique_ptr<QAction> one(tolv_create_action(TOLV_COPY_ACTION, nullptr));
    const std::unique_ptr<QAction> other(tolv_create_action(TOLV_COPY_ACTION, nullptr));
    EXPECT_NE(one.get(), other.get());
    EXPECT_EQ(one->icon().cacheKey(), other->icon().cacheKey());
}

TEST_F(TOLV_CREATE_ACTION_TEST, as_many_rows_have_each_feature_as_the_suite_says)
{
    EXPECT_EQ(770, count_actions([](const QAction& action) { return !action.text().isEmpty(); }));
    EXPECT_EQ(350, count_actions([](const QAction& action) { return !action.icon().isNull(); }));
    EXPECT_EQ(104, count_actions([](const QAction& action) { return !action.shortcut().isEmpty(); }));
    EXPECT_EQ(140, count_actions([](const QAction& action) { return action.isCheckable(); }));
    EXPECT_EQ(1, count_actions([](const QAction& action) { return action.statusTip().isEmpty(); }));
    EXPECT_EQ(0, count_actions([](const QAction& action) { return action.isChecked(); }));
}

TEST_F(TOLV_CREATE_ACTION_TEST, sixteen_commands_have_a_standard_key)
{
    int count = 0;
    for (int value = 1; value <= TOLV_ACTION_COUNT; ++value)
    {
        const std::unique_ptr<QAction> action(tolv_create_action(to_action(value), nullptr));
        count += !action->shortcut().isEmpty() && *tolv_get_custom_shortcut(to_action(value)) == '\0' ? 1 : 0;
    }
    EXPECT_EQ(16, count);
}

TEST_F(TOLV_CREATE_ACTION_TEST, each_action_has_what_its_row_says)
{
#define KEY_OF_NO_KEY(key) QKeySequence()
#define KEY_OF_CUSTOM_KEY(key) QKeySequence(QStringLiteral(key))
#define KEY_OF_STANDARD_KEY(key) QKeySequence(QKeySequence::key)
#define IS_PLAIN false
#define IS_CHECKABLE true
    struct EXPECTED_ROW
    {
        TOLV_ACTION_ENUM action;
        const char* menu_text;
        const char* statustip;
        QKeySequence key;
        TOLV_ICON_ENUM icon;
        bool is_checkable;
    };
    const std::vector<EXPECTED_ROW> rows = {
#define TOLV_ACTION_ROW(name, menu_text, statustip, key_kind, key, icon, check, menu)                                  \
    {TOLV_##name##_ACTION, menu_text, statustip, KEY_OF_##key_kind(key), icon, IS_##check},
#include "tolv_action_table.def"
#undef TOLV_ACTION_ROW
    };
#undef IS_CHECKABLE
#undef IS_PLAIN
#undef KEY_OF_STANDARD_KEY
#undef KEY_OF_CUSTOM_KEY
#undef KEY_OF_NO_KEY
    for (const EXPECTED_ROW& row : rows)
    {
        SCOPED_TRACE(row.menu_text);
        const std::unique_ptr<QAction> action(tolv_create_action(row.action, nullptr));
        EXPECT_EQ(QLatin1String(row.menu_text), action->text());
        EXPECT_EQ(QLatin1String(row.statustip), action->statusTip());
        EXPECT_EQ(row.key, action->shortcut());
        EXPECT_EQ(row.is_checkable, action->isCheckable());
        EXPECT_EQ(row.icon == TOLV_ICON_NONE, action->icon().isNull());
        if (row.icon != TOLV_ICON_NONE)
        {
            EXPECT_EQ(tolv_get_icon(row.icon).cacheKey(), action->icon().cacheKey());
        }
    }
}

TEST_F(TOLV_CREATE_ACTION_TEST, fitting_the_selection_cannot_be_checked_though_the_mouse_tools_can)
{
    const std::unique_ptr<QAction> zoom_selection(tolv_create_action(TOLV_ZOOM_SELECTION_ACTION, nullptr));
    EXPECT_FALSE(zoom_selection->isCheckable());
    const std::unique_ptr<QAction> zoom_tool(tolv_create_action(TOLV_ZOOM_TOOL_ACTION, nullptr));
    EXPECT_TRUE(zoom_tool->isCheckable());
    EXPECT_EQ(nullptr, zoom_tool->actionGroup()); // the builder of the tool bar makes the group
}

// ---- Tool tips ------------------------------------------------------------------------------------------------------

TEST_F(TOLV_CREATE_ACTION_TEST, a_tool_tip_names_the_standard_key)
{
    EXPECT_EQ(QStringLiteral("Copy - Ctrl+C"), get_own_tooltip(TOLV_COPY_ACTION));
    EXPECT_EQ(QStringLiteral("Delete - Del"), get_own_tooltip(TOLV_DELETE_ACTION));
    EXPECT_EQ(QStringLiteral("Help - F1"), get_own_tooltip(TOLV_HELP_ACTION));
}

TEST_F(TOLV_CREATE_ACTION_TEST, a_tool_tip_names_the_custom_key)
{
    EXPECT_EQ(QStringLiteral("Close - Ctrl+F4"), get_own_tooltip(TOLV_CLOSE_ACTION));
    EXPECT_EQ(QStringLiteral("Settings - Ctrl+Shift+E"), get_own_tooltip(TOLV_SETTINGS_ACTION));
    EXPECT_EQ(QStringLiteral("Start Analysis & Synthesis - Ctrl+Alt+Y"),
              get_own_tooltip(TOLV_START_ANALYSIS_AND_SYNTHESIS_ACTION));
}

TEST_F(TOLV_CREATE_ACTION_TEST, the_help_topics_have_the_tool_tip_of_the_table)
{
    EXPECT_EQ(QStringLiteral("Help Topics"), get_own_tooltip(TOLV_NORVANE_HELP_ACTION));
}

TEST_F(TOLV_CREATE_ACTION_TEST, a_command_without_a_key_leaves_its_tool_tip_to_qt)
{
    const std::unique_ptr<QAction> action(tolv_create_action(TOLV_SAVE_AS_ACTION, nullptr));
    EXPECT_EQ(QStringLiteral("Save As"), action->toolTip());
    action->setText(QStringLiteral("&Another"));
    EXPECT_EQ(QStringLiteral("Another"), action->toolTip());
}

TEST_F(TOLV_CREATE_ACTION_TEST, the_tool_tips_are_those_of_the_keys_and_the_table)
{
    for (int value = 1; value <= TOLV_ACTION_COUNT; ++value)
    {
        const TOLV_ACTION_ENUM action = to_action(value);
        const std::unique_ptr<QAction> made(tolv_create_action(action, nullptr));
        QString expected = QString::fromLatin1(tolv_get_tooltip(action));
        if (!made->shortcut().isEmpty())
            expected = tolv_get_menu_text_without_symbol(action) + QStringLiteral(" - ") +
                       made->shortcut().toString(QKeySequence::PortableText);
        EXPECT_EQ(expected, get_own_tooltip(action)) << tolv_get_menu_text(action);
    }
}

// ---- No command -----------------------------------------------------------------------------------------------------

TEST_F(TOLV_CREATE_ACTION_TEST, no_command_gives_a_bare_action_without_a_report)
{
    for (const int value : {0, 771, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
    {
        SCOPED_TRACE(value);
        QObject parent;
        const QAction* const action = tolv_create_action(to_action(value), &parent);
        ASSERT_NE(nullptr, action);
        EXPECT_EQ(&parent, action->parent());
        EXPECT_EQ(QString(), action->text());
        EXPECT_EQ(QString(), action->statusTip());
        EXPECT_EQ(QString(), action->toolTip());
        EXPECT_TRUE(action->shortcut().isEmpty());
        EXPECT_TRUE(action->icon().isNull());
        EXPECT_FALSE(action->isCheckable());
    }
}

// ---- In a window ----------------------------------------------------------------------------------------------------

// One window with every command of the suite: the hardest case for keys that clash.
TEST_F(TOLV_CREATE_ACTION_TEST, each_key_triggers_its_own_command_alone)
{
    QMainWindow window;
    window.setFocusPolicy(Qt::StrongFocus); // some keys are for the widget with the focus
    TRIGGER_RECORDER recorder;
    std::vector<QAction*> actions;
    for (int value = 1; value <= TOLV_ACTION_COUNT; ++value)
    {
        QAction* const action = tolv_create_action(to_action(value), &window);
        window.addAction(action);
        TOLV_SAFE_CONNECT(action, SIGNAL(triggered()), &recorder, SLOT(record()));
        if (!action->shortcut().isEmpty())
        {
            actions.push_back(action);
        }
    }
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    ASSERT_EQ(104U, actions.size());
    for (QAction* const action : actions)
    {
        recorder.m_actions.clear();
        QTest::keySequence(&window, action->shortcut());
        EXPECT_EQ(std::vector<QAction*>{action}, recorder.m_actions)
            << qPrintable(action->text()) << ": " << qPrintable(action->shortcut().toString());
    }
}

TEST_F(TOLV_CREATE_ACTION_TEST, f1_is_the_window_s_though_its_menus_show_the_help_of_messages)
{
    QMainWindow window;
    auto* const field = new QLineEdit(&window);
    window.setCentralWidget(field);
    QAction* const message_help = tolv_create_action(TOLV_HELP_ACTION, &window);
    window.menuBar()->addMenu(QStringLiteral("&Messages"))->addAction(message_help);
    auto* const window_help = new QAction(QStringLiteral("F1 Help"), &window);
    window_help->setShortcut(QKeySequence(QStringLiteral("F1")));
    window_help->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    window.addAction(window_help);
    TRIGGER_RECORDER recorder;
    TOLV_SAFE_CONNECT(message_help, SIGNAL(triggered()), &recorder, SLOT(record()));
    TOLV_SAFE_CONNECT(window_help, SIGNAL(triggered()), &recorder, SLOT(record()));
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    field->setFocus();
    QTest::keyClick(field, Qt::Key_F1);
    EXPECT_EQ(std::vector<QAction*>{window_help}, recorder.m_actions);
}

TEST_F(TOLV_CREATE_ACTION_TEST, f1_is_the_help_of_messages_in_the_widget_that_has_the_action)
{
    QWidget window;
    QWidget list(&window);
    QLineEdit field(&list);
    QLineEdit elsewhere(&window);
    QAction* const message_help = tolv_create_action(TOLV_HELP_ACTION, &list);
    list.addAction(message_help);
    TRIGGER_RECORDER recorder;
    TOLV_SAFE_CONNECT(message_help, SIGNAL(triggered()), &recorder, SLOT(record()));
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    elsewhere.setFocus();
    QTest::keyClick(&elsewhere, Qt::Key_F1);
    EXPECT_TRUE(recorder.m_actions.empty());
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_F1);
    EXPECT_EQ(std::vector<QAction*>{message_help}, recorder.m_actions);
}

#include "tolv_create_action_test.moc"
