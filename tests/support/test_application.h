#pragma once

#include "tolv_app.h"

#include <QPointer>

/// The application of the tests, as a host derives its own: its main window is what a test sets.
class TEST_APP : public TOLV_APP
{
public:
    TEST_APP(int& argc, char** argv);
    ~TEST_APP() override;

    QWidget* get_main_window() override;
    /// Sets the main window; null for none. The test keeps it, and it may die while it is set.
    void set_main_window(QWidget* window);

private:
    QPointer<QWidget> m_main_window;
};

/// The one application object of the test process. It is made at first use, by the fixtures of gui_test.h, and ends in
/// order behind the last test.
///
/// A process has one TOLV_APP in its life. Tests with the plain application can come before or behind it; a TOLV_APP
/// behind another one fails, so run such a mixture by ctest, which gives each test a process of its own.
class TEST_APPLICATION
{
public:
    enum KIND
    {
        KIND_NONE,  ///< no application object
        KIND_PLAIN, ///< a QApplication, nothing of the library
        KIND_TOLV   ///< TEST_APP, behind the entry sequence of a host
    };

    /// The command line of the test program, as gtest left it. It must live as long as the process.
    static void set_arguments(int argc, char** argv);
    static int get_argc();
    static char** get_argv();

    /// Sees to it that the application is of this kind; another one is ended first. Fails the test where it cannot.
    static void require(KIND kind);

    /// Ends the application that is there, in order.
    static void finish();

    static KIND get_kind();
    /// The application of the tests; null unless the kind is KIND_TOLV.
    static TEST_APP* get_test_app();

    /// Gives the application the font of the tests, DejaVu Sans 9 pt: the platforms differ in theirs, and with it all
    /// sizes.
    static void set_test_font();
};
