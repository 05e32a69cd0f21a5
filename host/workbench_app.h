#pragma once

#include "command_line.h"
#include "tolv_app.h"

#include <QPointer>

class GALLERY_WINDOW;
class PREFERENCES_DIALOG;
class WORKBENCH_WINDOW;

/// The workbench's application object: an example of how a host uses TOLV_APP. run() is the whole life of the tool
/// behind the command line.
class WORKBENCH_APP : public TOLV_APP
{
    Q_OBJECT

public:
    /// Runs the entry sequence, the window and the event loop. Returns the exit status of the process. To be called once,
    /// from main(), with its arguments.
    static int run(int argc, const char** argv, const COMMAND_LINE& command_line);

    WORKBENCH_APP(int& argc, char** argv);
    ~WORKBENCH_APP() override;

    QWidget* get_main_window() override;

    /// The shipped design, beside the program's folder; empty where it is not installed.
    static QString find_shipped_design();

private slots:
    void finish_loading();
    void finish_drawing();

private:
    int run_window(const COMMAND_LINE& command_line);
    bool open_what_is_wanted();
    bool open_preferences();
    bool open_gallery();
    bool write_screenshot();
    void fail(const QString& text);

    COMMAND_LINE m_command_line;
    QPointer<WORKBENCH_WINDOW> m_window;
    QPointer<PREFERENCES_DIALOG> m_preferences; ///< those that the command line has opened
    QPointer<GALLERY_WINDOW> m_gallery;         ///< likewise
    int m_exit_status = 0;
};
