#include "gui_driver.h"
#include "gui_test.h"
#include "xtcl.h"

#include "tolv_dock_mgr.h"
#include "tolv_dock_widget.h"
#include "tolv_main_window.h"
#include "tolv_tree_view.h"

#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTemporaryDir>

namespace
{
/// The modules as a host sees them: by name alone.
class MODULE_DOCKS_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        m_window = std::make_unique<TOLV_MAIN_WINDOW>(nullptr, Qt::WindowFlags());
        m_window->resize(700, 500);
    }

    void TearDown() override
    {
        m_window.reset();
        TOLV_GUI_TEST::TearDown();
    }

    TOLV_DOCK_WIDGET* make(TOLV_DOCK_ENUM dock)
    {
        TOLV_DOCK_WIDGET* const widget = m_window->get_dock_mgr()->create_dock_widget(dock, m_window.get());
        EXPECT_NE(widget, nullptr);
        m_window->addDockWidget(Qt::LeftDockWidgetArea, widget);
        GUI_DRIVER::show(m_window.get());
        return widget;
    }

    static QString evaluate(const char* command)
    {
        std::string result;
        EXPECT_EQ(xtcl_post(command, true, &result), 0) << result;
        return QString::fromStdString(result);
    }

    std::unique_ptr<TOLV_MAIN_WINDOW> m_window;
};

TEST_F(MODULE_DOCKS_TEST, messages_are_listed_and_can_be_cleared)
{
    TOLV_DOCK_WIDGET* const dock = make(TOLV_DOCK_MESSAGES);
    EXPECT_EQ(dock->windowTitle(), "Messages");
    auto* const text = GUI_DRIVER::find_widget<QPlainTextEdit>(dock, "messages");
    EXPECT_TRUE(QMetaObject::invokeMethod(dock, "add_note", Q_ARG(QString, QStringLiteral("all is well"))));
    EXPECT_TRUE(QMetaObject::invokeMethod(dock, "add_error", Q_ARG(QString, QStringLiteral("nothing is"))));
    const QStringList lines = text->toPlainText().split('\n');
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].endsWith("  all is well"));
    EXPECT_TRUE(lines[1].endsWith("  Error: nothing is"));
    EXPECT_TRUE(text->isReadOnly());
    EXPECT_TRUE(QMetaObject::invokeMethod(dock, "clear"));
    EXPECT_EQ(text->toPlainText(), "");
}

TEST_F(MODULE_DOCKS_TEST, a_task_has_one_row_that_follows_it)
{
    TOLV_DOCK_WIDGET* const dock = make(TOLV_DOCK_STATUS);
    auto* const view = GUI_DRIVER::find_widget<QTreeView>(dock, "tasks");
    const auto set_task = [dock](const char* name, int percent, const char* state)
    {
        EXPECT_TRUE(QMetaObject::invokeMethod(dock, "set_task", Q_ARG(QString, QString::fromLatin1(name)),
                                              Q_ARG(int, percent), Q_ARG(QString, QString::fromLatin1(state))));
    };
    set_task("Read", 150, "Done");
    set_task("Place", 10, "Running");
    set_task("Place", -5, "Failed");
    const QAbstractItemModel& model = *view->model();
    ASSERT_EQ(model.rowCount(), 2);
    EXPECT_EQ(model.index(0, 1).data(), "100 %");
    EXPECT_EQ(model.index(1, 0).data(), "Place");
    EXPECT_EQ(model.index(1, 1).data(), "0 %");
    EXPECT_EQ(model.index(1, 2).data(), "Failed");
    EXPECT_TRUE(model.index(1, 3).data().toString().endsWith(" s"));
}

TEST_F(MODULE_DOCKS_TEST, the_console_evaluates_what_is_typed_and_shows_what_is_printed)
{
    TOLV_DOCK_WIDGET* const dock = make(TOLV_DOCK_CONSOLE);
    auto* const output = GUI_DRIVER::find_widget<QPlainTextEdit>(dock, "console_output");
    auto* const line = GUI_DRIVER::find_widget<QLineEdit>(dock, "console_line");
    GUI_DRIVER::type(line, "expr 6*7");
    GUI_DRIVER::key_click(line, Qt::Key_Return);
    EXPECT_EQ(output->toPlainText(), "% expr 6*7\n42\n");
    EXPECT_TRUE(QMetaObject::invokeMethod(dock, "clear"));
    EXPECT_TRUE(
        QMetaObject::invokeMethod(dock, "run", Q_ARG(QString, QStringLiteral("puts -nonewline \"a\\u00e4\"; puts b"))));
    EXPECT_EQ(output->toPlainText(), QString::fromUtf8("% puts -nonewline \"a\\u00e4\"; puts b\na\xc3\xa4"
                                                       "b\n"));
    EXPECT_TRUE(QMetaObject::invokeMethod(dock, "clear"));
    GUI_DRIVER::type(line, "no_such_command");
    GUI_DRIVER::key_click(line, Qt::Key_Return);
    EXPECT_EQ(output->toPlainText(), "% no_such_command\ninvalid command name \"no_such_command\"\n");
}

TEST_F(MODULE_DOCKS_TEST, a_command_may_have_several_lines_and_earlier_ones_come_back)
{
    TOLV_DOCK_WIDGET* const dock = make(TOLV_DOCK_CONSOLE);
    auto* const output = GUI_DRIVER::find_widget<QPlainTextEdit>(dock, "console_output");
    auto* const line = GUI_DRIVER::find_widget<QLineEdit>(dock, "console_line");
    const auto enter = [line](const char* text)
    {
        GUI_DRIVER::type(line, text);
        GUI_DRIVER::key_click(line, Qt::Key_Return);
    };
    enter("set total {");
    enter("1 2}");
    EXPECT_EQ(output->toPlainText(), "% set total {\n> 1 2}\n\n1 2\n");
    GUI_DRIVER::type(line, "half");
    GUI_DRIVER::key_click(line, Qt::Key_Up);
    EXPECT_EQ(line->text(), "1 2}");
    GUI_DRIVER::key_click(line, Qt::Key_Up);
    GUI_DRIVER::key_click(line, Qt::Key_Up);
    EXPECT_EQ(line->text(), "set total {");
    GUI_DRIVER::key_click(line, Qt::Key_Down);
    GUI_DRIVER::key_click(line, Qt::Key_Down);
    EXPECT_EQ(line->text(), "half");
    GUI_DRIVER::key_click(line, Qt::Key_Escape);
    EXPECT_EQ(line->text(), "");
    enter("puts {");
    GUI_DRIVER::key_click(line, Qt::Key_Escape);
    EXPECT_TRUE(QMetaObject::invokeMethod(dock, "clear"));
    enter("expr 1+1");
    EXPECT_EQ(output->toPlainText(), "% expr 1+1\n2\n");
}

TEST_F(MODULE_DOCKS_TEST, tab_completes_a_command_and_lists_several)
{
    TOLV_DOCK_WIDGET* const dock = make(TOLV_DOCK_CONSOLE);
    auto* const output = GUI_DRIVER::find_widget<QPlainTextEdit>(dock, "console_output");
    auto* const line = GUI_DRIVER::find_widget<QLineEdit>(dock, "console_line");
    evaluate("proc norvane_alpha {} {}; proc norvane_beta {} {}");
    GUI_DRIVER::type(line, "norv");
    GUI_DRIVER::key_click(line, Qt::Key_Tab);
    EXPECT_EQ(line->text(), "norvane_");
    EXPECT_EQ(output->toPlainText(), "norvane_alpha norvane_beta\n");
    GUI_DRIVER::type(line, "b");
    GUI_DRIVER::key_click(line, Qt::Key_Tab);
    EXPECT_EQ(line->text(), "norvane_beta ");
    GUI_DRIVER::type(line, "[exit; {");
    GUI_DRIVER::key_click(line, Qt::Key_Tab);
    EXPECT_EQ(line->text(), "norvane_beta [exit; {");
}

TEST_F(MODULE_DOCKS_TEST, the_last_console_gives_puts_back)
{
    const QString before = evaluate("info commands ::puts ");
    TOLV_DOCK_WIDGET* const first = make(TOLV_DOCK_CONSOLE);
    TOLV_DOCK_WIDGET* const second = make(TOLV_DOCK_CONSOLE);
    EXPECT_EQ(evaluate("info procs ::puts"), "::puts");
    delete first;
    EXPECT_EQ(evaluate("info procs ::puts"), "::puts");
    delete second;
    EXPECT_EQ(evaluate("info procs ::puts"), "");
    EXPECT_EQ(evaluate("info commands ::puts "), before);
    EXPECT_EQ(evaluate("info commands ::tolv_console*"), "");
}

TEST_F(MODULE_DOCKS_TEST, scripts_of_a_folder_are_listed_and_run)
{
    const QTemporaryDir folder;
    const auto write = [&](const QString& name, const QByteArray& text)
    {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    };
    write("b [x].tcl", "set ::ran yes; return done");
    write("a.tcl", "error broken");
    write("notes.txt", "no script");
    TOLV_DOCK_WIDGET* const dock = make(TOLV_DOCK_TCL_SCRIPTS);
    EXPECT_EQ(dock->windowTitle(), "Tcl Scripts");
    auto* const list = GUI_DRIVER::find_widget<QListWidget>(dock, "scripts");
    auto* const button = GUI_DRIVER::find_widget<QPushButton>(dock, "run_script");
    EXPECT_TRUE(QMetaObject::invokeMethod(dock, "set_folder", Q_ARG(QString, folder.path())));
    ASSERT_EQ(list->count(), 2);
    EXPECT_FALSE(button->isEnabled());
    QSignalSpy finished(dock, SIGNAL(script_finished(QString, bool, QString)));
    list->setCurrentRow(1);
    GUI_DRIVER::click(button);
    ASSERT_EQ(finished.count(), 1);
    EXPECT_EQ(finished[0][0].toString(), folder.filePath("b [x].tcl"));
    EXPECT_TRUE(finished[0][1].toBool());
    EXPECT_EQ(finished[0][2].toString(), "done");
    EXPECT_EQ(evaluate("set ::ran"), "yes");
    list->setCurrentRow(0);
    GUI_DRIVER::key_click(list, Qt::Key_Return);
    ASSERT_EQ(finished.count(), 2);
    EXPECT_FALSE(finished[1][1].toBool());
    EXPECT_EQ(finished[1][2].toString(), "broken");
    write("c.tcl", "");
    EXPECT_TRUE(GUI_DRIVER::wait_for([list] { return list->count() == 3; }));
}

TEST_F(MODULE_DOCKS_TEST, a_navigator_page_filters_a_model_and_brings_the_expansion_back)
{
    QStandardItemModel model;
    model.setHorizontalHeaderLabels({"Instance", "Module"});
    for (const char* name : {"u_uart", "u_timer"})
    {
        auto* const item = new QStandardItem(QString::fromLatin1(name));
        item->appendRow(new QStandardItem(QString::fromLatin1(name) + "_fifo"));
        item->appendRow(new QStandardItem("u_core"));
        model.appendRow({item, new QStandardItem("m")});
    }
    TOLV_DOCK_WIDGET* const dock = make(TOLV_DOCK_NAVIGATOR_HIERARCHY);
    EXPECT_EQ(dock->windowTitle(), "Hierarchy");
    auto* const view = GUI_DRIVER::find_widget<TOLV_TREE_VIEW>(dock, "hierarchy");
    QAbstractItemModel* const source = &model;
    ASSERT_TRUE(QMetaObject::invokeMethod(dock, "set_source_model", Q_ARG(QAbstractItemModel*, source)));
    QAbstractItemModel& shown = *view->model();
    view->expand(shown.index(1, 0));
    emit dock->filter_option_changed("timer_f");
    ASSERT_EQ(shown.rowCount(), 1);
    EXPECT_EQ(shown.index(0, 0).data(), "u_timer");
    EXPECT_EQ(shown.rowCount(shown.index(0, 0)), 1);
    EXPECT_TRUE(view->isExpanded(shown.index(0, 0)));
    emit dock->filter_option_changed("");
    EXPECT_EQ(shown.rowCount(), 2);
    EXPECT_FALSE(view->isExpanded(shown.index(0, 0)));
    EXPECT_TRUE(view->isExpanded(shown.index(1, 0)));

    QSignalSpy activated(dock, SIGNAL(activated(QModelIndex)));
    QSignalSpy current(dock, SIGNAL(current_changed(QModelIndex)));
    auto* const line = GUI_DRIVER::find_widget<QLineEdit>(dock, [dock](const QLineEdit* edit)
                                                          { return edit->parent() == dock->widget(); });
    line->setText("uart");
    EXPECT_EQ(shown.rowCount(), 1);
    const QModelIndex timer = model.index(1, 0);
    ASSERT_TRUE(QMetaObject::invokeMethod(dock, "set_current", Q_ARG(QModelIndex, timer)));
    EXPECT_EQ(shown.rowCount(), 2);
    EXPECT_EQ(line->text(), "");
    EXPECT_EQ(current.constLast().constFirst().toModelIndex(), timer);
    GUI_DRIVER::key_click(view, Qt::Key_Return);
    ASSERT_EQ(activated.count(), 1);
    EXPECT_EQ(activated[0][0].toModelIndex(), timer);

    QAbstractItemModel* const none = nullptr;
    ASSERT_TRUE(QMetaObject::invokeMethod(dock, "set_source_model", Q_ARG(QAbstractItemModel*, none)));
    EXPECT_EQ(view->model(), nullptr);
}

TEST_F(MODULE_DOCKS_TEST, the_project_navigator_has_a_page_for_each_model)
{
    QStandardItemModel files;
    files.appendRow(new QStandardItem("top.v"));
    TOLV_DOCK_WIDGET* const dock = make(TOLV_DOCK_NAVIGATOR);
    auto* const chooser = GUI_DRIVER::find_widget<QComboBox>(dock, "page_chooser");
    ASSERT_EQ(chooser->count(), 4);
    EXPECT_EQ(chooser->itemText(3), "IP Components");
    QAbstractItemModel* const source = &files;
    ASSERT_TRUE(QMetaObject::invokeMethod(dock, "set_page_model", Q_ARG(QString, QStringLiteral("files")),
                                          Q_ARG(QAbstractItemModel*, source)));
    ASSERT_TRUE(QMetaObject::invokeMethod(dock, "set_page_model", Q_ARG(QString, QStringLiteral("unknown")),
                                          Q_ARG(QAbstractItemModel*, source)));
    chooser->setCurrentIndex(1);
    auto* const view = GUI_DRIVER::find_widget<TOLV_TREE_VIEW>(dock, "files");
    EXPECT_TRUE(view->isVisible());
    QSignalSpy activated(dock, SIGNAL(activated(QString, QModelIndex)));
    view->setCurrentIndex(files.index(0, 0));
    GUI_DRIVER::key_click(view, Qt::Key_Return);
    ASSERT_EQ(activated.count(), 1);
    EXPECT_EQ(activated[0][0].toString(), "files");
}

TEST_F(MODULE_DOCKS_TEST, each_page_of_the_navigator_has_its_title)
{
    EXPECT_EQ(make(TOLV_DOCK_NAVIGATOR_FILES)->windowTitle(), "Files");
    EXPECT_EQ(make(TOLV_DOCK_NAVIGATOR_DESIGN_UNITS)->windowTitle(), "Design Units");
    EXPECT_EQ(make(TOLV_DOCK_NAVIGATOR_IP_COMPONENTS)->windowTitle(), "IP Components");
}
} // namespace
