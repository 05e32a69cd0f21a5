#include "tolv_dialog.h"

#include "cfgq_registry.h"
#include "child_process.h"
#include "gen.h"
#include "gui_answers.h"
#include "gui_driver.h"
#include "gui_test.h"
#include "internal_error_trap.h"
#include "module_recorder.h"
#include "msg.h"
#include "test_environment.h"
#include "tolv_main_window.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMdiArea>
#include <QPushButton>
#include <QSignalSpy>
#include <QVBoxLayout>

#include <algorithm>
#include <filesystem>
#include <memory>

namespace
{
using TOPICS = std::vector<std::string>;

/// A dialog with its protected parts open.
class OPEN_DIALOG : public TOLV_DIALOG
{
public:
    using TOLV_DIALOG::m_geometry_key;
    using TOLV_DIALOG::m_restore_pending;
    using TOLV_DIALOG::m_save_pending;
    using TOLV_DIALOG::TOLV_DIALOG;
};

/// A dialog with a topic of its own.
class PUMP_DIALOG : public TOLV_DIALOG
{
public:
    std::string get_help_topic_string() override
    {
        return "pump/pressure";
    }
};

/// A dialog that writes down what happens to its geometry.
class WATCHED_DIALOG : public TOLV_DIALOG
{
public:
    using TOLV_DIALOG::TOLV_DIALOG;

    QList<QPoint> m_positions; ///< without the frame
    QList<bool> m_pending_at_resize;

protected:
    void moveEvent(QMoveEvent* event) override
    {
        TOLV_DIALOG::moveEvent(event);
        m_positions << geometry().topLeft();
    }
    void resizeEvent(QResizeEvent* event) override
    {
        TOLV_DIALOG::resizeEvent(event);
        m_pending_at_resize << m_restore_pending;
    }
};

class TOLV_DIALOG_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        CFGQ_REGISTRY_KEY key(CFGQ_REGISTRY_KEY::SUB_KEY_GUI);
        const QStringList names = key.get_value_names();
        for (const QString& name : names)
            key.remove(name);
        m_dialog = make_dialog(QStringLiteral("My Dialog"));
    }
    void TearDown() override
    {
        m_dialog.reset();
        TOLV_GUI_TEST::TearDown();
    }

    static std::unique_ptr<OPEN_DIALOG> make_dialog(const QString& title)
    {
        auto dialog = std::make_unique<OPEN_DIALOG>();
        dialog->setWindowTitle(title);
        return dialog;
    }

    static QString get_key(const QString& rest)
    {
        return QString::fromStdString(gen_get_module_filename()) + rest;
    }

    static QVariant get_stored(const QString& rest)
    {
        QVariant value;
        CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_GUI).get_value(get_key(rest), &value);
        return value;
    }

    static void store(const QString& rest, const QVariant& value)
    {
        CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_GUI).set_value(get_key(rest), value);
    }

    /// What a dialog at this place would store.
    static QByteArray get_geometry(const QRect& rect)
    {
        QDialog dialog;
        dialog.setGeometry(rect);
        return dialog.saveGeometry();
    }

    /// The place that stored bytes stand for.
    static QRect get_rect(const QVariant& geometry)
    {
        QDialog dialog;
        EXPECT_TRUE(dialog.restoreGeometry(geometry.toByteArray()));
        return dialog.geometry();
    }

    /// What a program of that name, a copy of the child, stores for its dialog.
    static std::string store_in_program(const std::string& program, const std::vector<std::string>& arguments = {})
    {
        const std::string folder = TEST_ENVIRONMENT::get_folder() + "/programs";
        const std::string path = folder + '/' + program;
        std::filesystem::create_directories(folder);
        std::filesystem::copy_file(get_child_path("tolv_dialog_child"), path);
        const CHILD_RESULT result = run_child(path, arguments, {{"NORVANE_REGISTRY_FILE", path + ".ini"}});
        EXPECT_EQ(0, result.exit_status) << result.err;
        return result.out;
    }

    const QString MY_DIALOG = QStringLiteral("My_DialogDialogGeometry");
    const QRect FIRST{90, 80, 300, 200};
    const QRect SECOND{60, 70, 400, 220};
    MODULE_RECORDER m_recorder;
    std::unique_ptr<OPEN_DIALOG> m_dialog;
};
} // namespace

// ---- Frame ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DIALOG_TEST, the_title_bar_has_no_context_help_button)
{
    EXPECT_FALSE(m_dialog->windowFlags() & Qt::WindowContextHelpButtonHint);
    const TOLV_DIALOG asked_for(nullptr, Qt::WindowTitleHint | Qt::WindowContextHelpButtonHint);
    EXPECT_FALSE(asked_for.windowFlags() & Qt::WindowContextHelpButtonHint);
    EXPECT_TRUE(asked_for.windowFlags() & Qt::WindowTitleHint);
}

TEST_F(TOLV_DIALOG_TEST, the_dialog_has_a_size_grip)
{
    EXPECT_TRUE(m_dialog->isSizeGripEnabled());
}

TEST_F(TOLV_DIALOG_TEST, a_dialog_belongs_to_its_parent)
{
    QWidget parent;
    const auto* const dialog = new TOLV_DIALOG(&parent);
    EXPECT_EQ(&parent, dialog->parentWidget());
}

// ---- Help -----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DIALOG_TEST, one_action_stands_for_the_key)
{
    const QList<QAction*> actions = m_dialog->actions();
    ASSERT_EQ(1, actions.size());
    EXPECT_EQ(QStringLiteral("F1 Help"), actions.at(0)->text());
    EXPECT_EQ(QKeySequence(Qt::Key_F1), actions.at(0)->shortcut());
    EXPECT_EQ(Qt::WidgetWithChildrenShortcut, actions.at(0)->shortcutContext());
    EXPECT_EQ(m_dialog.get(), actions.at(0)->parent());
}

TEST_F(TOLV_DIALOG_TEST, the_key_in_a_child_shows_help_on_the_title)
{
    auto* const edit = new QLineEdit(m_dialog.get());
    ASSERT_TRUE(GUI_DRIVER::show(m_dialog.get()));
    GUI_DRIVER::key_click(edit, Qt::Key_F1);
    EXPECT_EQ((TOPICS{"My Dialog"}), m_recorder.take_topics());
    GUI_DRIVER::key_click(edit, Qt::Key_F1, Qt::ShiftModifier);
    EXPECT_EQ((TOPICS{}), m_recorder.take_topics());
    m_dialog->hide();
}

TEST_F(TOLV_DIALOG_TEST, the_key_in_a_dialog_is_not_its_parents)
{
    OPEN_DIALOG inner(m_dialog.get());
    inner.setWindowTitle(QStringLiteral("Inner"));
    auto* const edit = new QLineEdit(&inner);
    ASSERT_TRUE(GUI_DRIVER::show(m_dialog.get()));
    ASSERT_TRUE(GUI_DRIVER::show(&inner));
    GUI_DRIVER::key_click(edit, Qt::Key_F1);
    EXPECT_EQ((TOPICS{"Inner"}), m_recorder.take_topics());
    inner.hide();
    m_dialog->hide();
}

TEST_F(TOLV_DIALOG_TEST, the_key_in_a_dialog_among_the_documents_is_the_dialogs)
{
    TOLV_MAIN_WINDOW window;
    auto* const area = new QMdiArea;
    area->setAccessibleName(QStringLiteral("documents"));
    window.setCentralWidget(area);
    auto* const dialog = new PUMP_DIALOG;
    auto* const edit = new QLineEdit(dialog);
    auto* const other = new QLineEdit;
    area->addSubWindow(dialog);
    area->addSubWindow(other);
    ASSERT_TRUE(GUI_DRIVER::show(&window));
    for (int i = 0; i < 2; ++i) // twice, as Qt gives a key that several want to one after the other
    {
        GUI_DRIVER::key_click(edit, Qt::Key_F1);
        EXPECT_EQ((TOPICS{"pump/pressure"}), m_recorder.take_topics());
    }
    GUI_DRIVER::key_click(other, Qt::Key_F1);
    EXPECT_EQ((TOPICS{"documents"}), m_recorder.take_topics());
}

TEST_F(TOLV_DIALOG_TEST, a_subclass_has_its_own_topic)
{
    PUMP_DIALOG dialog;
    dialog.setWindowTitle(QStringLiteral("Pump"));
    dialog.help_button_clicked();
    EXPECT_EQ((TOPICS{"pump/pressure"}), m_recorder.take_topics());
}

TEST_F(TOLV_DIALOG_TEST, the_topic_is_in_the_local_encoding)
{
    m_dialog->setWindowTitle(QStringLiteral("Ger\u00e4t"));
    EXPECT_EQ(QStringLiteral("Ger\u00e4t").toLocal8Bit().toStdString(), m_dialog->get_help_topic_string());
}

TEST_F(TOLV_DIALOG_TEST, a_help_button_shows_help)
{
    auto* const button = new QPushButton(QStringLiteral("Help"), m_dialog.get());
    const SCOPED_EXPECTED_DEBUG_RECORD found("TOLV", "Found a Help button");
    ASSERT_TRUE(GUI_DRIVER::show(m_dialog.get()));
    GUI_DRIVER::click(button);
    EXPECT_EQ((TOPICS{"My Dialog"}), m_recorder.take_topics());
    ASSERT_EQ(1U, msg_get_debug_records().size());
    EXPECT_EQ("Found a Help button", msg_get_debug_records()[0].text);
    EXPECT_EQ(2, msg_get_debug_records()[0].level);
    m_dialog->hide();
}

TEST_F(TOLV_DIALOG_TEST, a_help_button_that_is_polished_again_shows_help_once)
{
    QPushButton button(QStringLiteral("Help"), m_dialog.get());
    const SCOPED_EXPECTED_DEBUG_RECORD found("TOLV", "Found a Help button");
    const QSignalSpy clicked(&button, SIGNAL(clicked()));
    const QSignalSpy rejected(m_dialog.get(), SIGNAL(rejected()));
    QObject::connect(&button, SIGNAL(clicked()), m_dialog.get(), SLOT(reject())); // a host's own links stay
    for (int i = 0; i < 3; ++i)
    {
        QChildEvent polished(QEvent::ChildPolished, &button);
        QCoreApplication::sendEvent(m_dialog.get(), &polished);
    }
    button.click();
    EXPECT_EQ((TOPICS{"My Dialog"}), m_recorder.take_topics());
    EXPECT_EQ(3U, msg_get_debug_records().size());
    EXPECT_EQ(1, clicked.count());
    EXPECT_EQ(1, rejected.count());
}

TEST_F(TOLV_DIALOG_TEST, a_help_button_is_found_when_it_is_polished_and_not_before)
{
    QPushButton button(QStringLiteral("Help"));
    QDialogButtonBox box(QDialogButtonBox::Help);
    button.setParent(m_dialog.get());
    box.setParent(m_dialog.get());
    button.click();
    box.button(QDialogButtonBox::Help)->click();
    EXPECT_EQ((TOPICS{}), m_recorder.take_topics());
    EXPECT_TRUE(msg_get_debug_records().empty());
}

TEST_F(TOLV_DIALOG_TEST, a_help_button_that_comes_later_is_found)
{
    ASSERT_TRUE(GUI_DRIVER::show(m_dialog.get()));
    const SCOPED_EXPECTED_DEBUG_RECORD found("TOLV", "Found a Help button");
    auto* const button = new QPushButton(QStringLiteral("Help"), m_dialog.get());
    button->show();
    GUI_DRIVER::click(button);
    EXPECT_EQ((TOPICS{"My Dialog"}), m_recorder.take_topics());
    m_dialog->hide();
}

TEST_F(TOLV_DIALOG_TEST, only_the_very_text_makes_a_help_button)
{
    auto* const layout = new QVBoxLayout(m_dialog.get());
    for (const char* text : {"&Help", "help", "Help...", "HELP", " Help", ""})
        layout->addWidget(new QPushButton(QString::fromLatin1(text)));
    auto* const inner = new QWidget;
    layout->addWidget(inner);
    new QPushButton(QStringLiteral("Help"), inner); // not a direct child
    ASSERT_TRUE(GUI_DRIVER::show(m_dialog.get()));
    const QList<QPushButton*> buttons = m_dialog->findChildren<QPushButton*>();
    ASSERT_EQ(7, buttons.size());
    for (QPushButton* button : buttons)
        button->click();
    EXPECT_EQ((TOPICS{}), m_recorder.take_topics());
    EXPECT_TRUE(msg_get_debug_records().empty());
    m_dialog->hide();
}

TEST_F(TOLV_DIALOG_TEST, the_help_button_of_a_button_box_shows_help)
{
    auto* const box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Help, m_dialog.get());
    const QSignalSpy requested(box, SIGNAL(helpRequested())); // a host's own links stay
    const SCOPED_EXPECTED_DEBUG_RECORD found("TOLV", "Found a button box with a Help button");
    ASSERT_TRUE(GUI_DRIVER::show(m_dialog.get()));
    GUI_DRIVER::click(box->button(QDialogButtonBox::Help));
    EXPECT_EQ((TOPICS{"My Dialog"}), m_recorder.take_topics());
    QChildEvent polished(QEvent::ChildPolished, box);
    QCoreApplication::sendEvent(m_dialog.get(), &polished);
    GUI_DRIVER::click(box->button(QDialogButtonBox::Help));
    EXPECT_EQ((TOPICS{"My Dialog"}), m_recorder.take_topics());
    EXPECT_EQ(2, requested.count());
    EXPECT_EQ("Found a button box with a Help button", msg_get_debug_records()[0].text);
    m_dialog->hide();
}

TEST_F(TOLV_DIALOG_TEST, the_role_makes_the_help_button_of_a_box)
{
    auto* const box = new QDialogButtonBox(m_dialog.get());
    QPushButton* const button = box->addButton(QStringLiteral("Explain"), QDialogButtonBox::HelpRole);
    const SCOPED_EXPECTED_DEBUG_RECORD found("TOLV", "Found a button box with a Help button");
    ASSERT_TRUE(GUI_DRIVER::show(m_dialog.get()));
    GUI_DRIVER::click(button);
    EXPECT_EQ((TOPICS{"My Dialog"}), m_recorder.take_topics());
    m_dialog->hide();
}

TEST_F(TOLV_DIALOG_TEST, a_button_box_without_help_is_left_alone)
{
    auto* const box = new QDialogButtonBox(QDialogButtonBox::Apply, m_dialog.get());
    ASSERT_TRUE(GUI_DRIVER::show(m_dialog.get()));
    GUI_DRIVER::click(box->button(QDialogButtonBox::Apply));
    EXPECT_EQ((TOPICS{}), m_recorder.take_topics());
    m_dialog->hide();
}

// ---- Geometry -------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DIALOG_TEST, the_geometry_is_stored_under_program_and_title)
{
    m_dialog->setGeometry(FIRST);
    m_dialog->restore_save_geometry(true);
    EXPECT_EQ(QStringList(get_key(MY_DIALOG)), CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_GUI).get_value_names());
    EXPECT_EQ(QVariant::ByteArray, get_stored(MY_DIALOG).type());
    EXPECT_EQ(FIRST, get_rect(get_stored(MY_DIALOG)));
    EXPECT_EQ(52, CFGQ_REGISTRY_KEY::SUB_KEY_GUI);
}

TEST_F(TOLV_DIALOG_TEST, the_key_is_made_of_program_and_title_without_blanks)
{
    EXPECT_EQ("toolMy_DialogDialogGeometry\n", store_in_program("tool"));
    EXPECT_EQ("my_first_toolMy_DialogDialogGeometry\n", store_in_program("my first tool"));
    EXPECT_EQ("tool_2pump_or_fanDialogGeometry\n", store_in_program("tool 2", {"pump or fan"}));
}

TEST_F(TOLV_DIALOG_TEST, a_key_of_its_own_stands_in_place_of_the_title)
{
    m_dialog->m_geometry_key = QStringLiteral("pump or fan");
    m_dialog->restore_save_geometry(true);
    EXPECT_EQ(QStringList(get_key(QStringLiteral("pump_or_fanDialogGeometry"))),
              CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_GUI).get_value_names());
}

TEST_F(TOLV_DIALOG_TEST, each_title_has_a_geometry)
{
    m_dialog->setGeometry(FIRST);
    m_dialog->restore_save_geometry(true);
    m_dialog->setWindowTitle(QStringLiteral("Other"));
    m_dialog->setGeometry(SECOND);
    m_dialog->restore_save_geometry(true);
    EXPECT_EQ(FIRST, get_rect(get_stored(MY_DIALOG)));
    EXPECT_EQ(SECOND, get_rect(get_stored(QStringLiteral("OtherDialogGeometry"))));
}

TEST_F(TOLV_DIALOG_TEST, the_first_show_restores_the_geometry)
{
    store(MY_DIALOG, get_geometry(FIRST));
    ASSERT_TRUE(GUI_DRIVER::show(m_dialog.get()));
    EXPECT_EQ(FIRST, m_dialog->geometry());
    EXPECT_FALSE(m_dialog->m_restore_pending);

    m_dialog->hide();
    m_dialog->setGeometry(SECOND);
    m_dialog->show();
    EXPECT_EQ(SECOND, m_dialog->geometry());
    m_dialog->hide();
}

TEST_F(TOLV_DIALOG_TEST, the_stored_place_comes_behind_the_one_that_qt_chose)
{
    store(MY_DIALOG, get_geometry(FIRST));
    QWidget parent;
    parent.setGeometry(300, 200, 400, 300);
    ASSERT_TRUE(GUI_DRIVER::show(&parent));
    WATCHED_DIALOG dialog(&parent);
    dialog.setWindowTitle(QStringLiteral("My Dialog"));
    dialog.resize(200, 100);
    ASSERT_TRUE(GUI_DRIVER::show(&dialog));
    EXPECT_EQ(FIRST, dialog.geometry());
    const QRect middle = parent.geometry().adjusted(50, 50, -50, -50); // Qt's choice
    const auto chosen = std::find_if(dialog.m_positions.cbegin(), dialog.m_positions.cend(),
                                     [&middle](const QPoint& position) { return middle.contains(position); });
    ASSERT_NE(dialog.m_positions.cend(), chosen);
    EXPECT_NE(dialog.m_positions.cend(), std::find(chosen, dialog.m_positions.cend(), FIRST.topLeft()));
    dialog.hide();
}

TEST_F(TOLV_DIALOG_TEST, the_restore_is_no_longer_pending_while_it_happens)
{
    store(MY_DIALOG, get_geometry(FIRST));
    WATCHED_DIALOG dialog;
    dialog.setWindowTitle(QStringLiteral("My Dialog"));
    dialog.resize(200, 100);
    ASSERT_TRUE(GUI_DRIVER::show(&dialog));
    ASSERT_FALSE(dialog.m_pending_at_resize.isEmpty());
    EXPECT_FALSE(dialog.m_pending_at_resize.last());
    dialog.hide();
}

TEST_F(TOLV_DIALOG_TEST, a_dialog_that_was_maximised_comes_up_so)
{
    m_dialog->setGeometry(FIRST);
    ASSERT_TRUE(GUI_DRIVER::show(m_dialog.get()));
    m_dialog->showMaximized();
    m_dialog->accept();
    m_dialog = make_dialog(QStringLiteral("My Dialog"));
    ASSERT_TRUE(GUI_DRIVER::show(m_dialog.get()));
    EXPECT_TRUE(m_dialog->isMaximized());
    EXPECT_EQ(FIRST, m_dialog->normalGeometry());
    m_dialog->hide();
}

TEST_F(TOLV_DIALOG_TEST, a_dialog_that_wants_none_is_not_restored_and_saved_nevertheless)
{
    store(MY_DIALOG, get_geometry(FIRST));
    m_dialog->m_restore_pending = false;
    m_dialog->setGeometry(SECOND);
    ASSERT_TRUE(GUI_DRIVER::show(m_dialog.get()));
    EXPECT_EQ(SECOND, m_dialog->geometry());
    m_dialog->accept();
    EXPECT_EQ(SECOND, get_rect(get_stored(MY_DIALOG)));
}

TEST_F(TOLV_DIALOG_TEST, stored_rubbish_changes_nothing)
{
    m_dialog->setGeometry(FIRST);
    store(MY_DIALOG, QByteArray("rubbish"));
    m_dialog->restore_save_geometry(false);
    EXPECT_EQ(FIRST, m_dialog->geometry());
    store(MY_DIALOG, 12);
    m_dialog->restore_save_geometry(false);
    EXPECT_EQ(FIRST, m_dialog->geometry());
}

TEST_F(TOLV_DIALOG_TEST, nothing_stored_changes_nothing)
{
    m_dialog->setGeometry(FIRST);
    m_dialog->restore_save_geometry(false);
    EXPECT_EQ(FIRST, m_dialog->geometry());
}

TEST_F(TOLV_DIALOG_TEST, a_dialog_is_saved_when_it_is_done)
{
    m_dialog->setGeometry(FIRST);
    ASSERT_TRUE(GUI_DRIVER::show(m_dialog.get()));
    const QSignalSpy finished(m_dialog.get(), SIGNAL(finished(int)));
    m_dialog->done(7);
    EXPECT_EQ(FIRST, get_rect(get_stored(MY_DIALOG)));
    EXPECT_FALSE(m_dialog->m_save_pending);
    EXPECT_EQ(7, m_dialog->result());
    EXPECT_EQ(1, finished.count());
}

TEST_F(TOLV_DIALOG_TEST, what_is_saved_is_the_geometry_before_the_dialog_is_done)
{
    m_dialog->setGeometry(FIRST);
    ASSERT_TRUE(GUI_DRIVER::show(m_dialog.get()));
    QObject::connect(m_dialog.get(), &QDialog::finished, m_dialog.get(), [&] { m_dialog->setGeometry(SECOND); });
    m_dialog->done(0);
    EXPECT_EQ(FIRST, get_rect(get_stored(MY_DIALOG)));
}

TEST_F(TOLV_DIALOG_TEST, a_dialog_is_saved_when_the_user_presses_escape)
{
    m_dialog->setGeometry(FIRST);
    ASSERT_TRUE(GUI_DRIVER::show(m_dialog.get()));
    GUI_DRIVER::key_click(m_dialog.get(), Qt::Key_Escape);
    EXPECT_FALSE(m_dialog->isVisible());
    EXPECT_EQ(FIRST, get_rect(get_stored(MY_DIALOG)));
}

TEST_F(TOLV_DIALOG_TEST, a_dialog_is_saved_when_its_window_closes)
{
    m_dialog->setGeometry(FIRST);
    ASSERT_TRUE(GUI_DRIVER::show(m_dialog.get()));
    EXPECT_TRUE(m_dialog->close());
    EXPECT_FALSE(m_dialog->isVisible());
    EXPECT_EQ(FIRST, get_rect(get_stored(MY_DIALOG)));
}

TEST_F(TOLV_DIALOG_TEST, closing_the_window_does_not_reject)
{
    ASSERT_TRUE(GUI_DRIVER::show(m_dialog.get()));
    const QSignalSpy rejected(m_dialog.get(), SIGNAL(rejected()));
    m_dialog->close();
    EXPECT_EQ(0, rejected.count());
}

TEST_F(TOLV_DIALOG_TEST, closing_the_window_ends_a_modal_run)
{
    answer_next_dialog([](QDialog* dialog) { dialog->close(); });
    EXPECT_EQ(QDialog::Rejected, m_dialog->exec());
}

TEST_F(TOLV_DIALOG_TEST, a_dialog_is_saved_when_it_is_destroyed)
{
    m_dialog->setGeometry(FIRST);
    m_dialog.reset();
    EXPECT_EQ(FIRST, get_rect(get_stored(MY_DIALOG)));
}

TEST_F(TOLV_DIALOG_TEST, a_dialog_is_saved_once_in_its_life)
{
    m_dialog->setGeometry(FIRST);
    ASSERT_TRUE(GUI_DRIVER::show(m_dialog.get()));
    m_dialog->accept();
    m_dialog->setGeometry(SECOND);
    m_dialog->show();
    m_dialog->accept();
    m_dialog->close();
    m_dialog->save_geometry();
    m_dialog.reset();
    EXPECT_EQ(FIRST, get_rect(get_stored(MY_DIALOG)));
}

TEST_F(TOLV_DIALOG_TEST, the_next_dialog_of_the_kind_is_where_the_last_one_was)
{
    ASSERT_TRUE(GUI_DRIVER::show(m_dialog.get()));
    m_dialog->setGeometry(SECOND);
    GUI_DRIVER::process_posted();
    m_dialog->accept();
    m_dialog = make_dialog(QStringLiteral("My Dialog"));
    ASSERT_TRUE(GUI_DRIVER::show(m_dialog.get()));
    EXPECT_EQ(SECOND, m_dialog->geometry());
    m_dialog->hide();
}
