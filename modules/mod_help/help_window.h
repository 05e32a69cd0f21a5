#pragma once

#include "help_topics.h"

#include <QMainWindow>

class QLineEdit;
class QListWidget;
class QTextBrowser;

/// The viewer of the help: the pages at the left, with a line to search them, and the page that is read.
class HELP_WINDOW : public QMainWindow
{
    Q_OBJECT

public:
    explicit HELP_WINDOW(QWidget* parent = nullptr);

    /// The one window of the process, made when it is first asked for or has been closed since. It goes with the
    /// application.
    static HELP_WINDOW& get();

    /// Opens the page about a topic. For a topic that nothing is written about the entrance, which then says so; for an
    /// empty one just the entrance.
    void show_topic(const QString& topic);

public slots:
    /// Lists only the pages that have the words in them.
    void search(const QString& text);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private slots:
    void open_chosen_page();
    void mark_page();

private:
    void create_tool_bar();
    void create_list();

    QTextBrowser* m_browser;
    QLineEdit* m_search_line;
    QListWidget* m_list;
};
