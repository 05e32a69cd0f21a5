#pragma once

#include "tolv_export.h"

#include <QApplication>

class GEN_UNDO_REDO_MGR;

/// The application object. A host makes exactly one, of this class or of its own subclass, and keeps to this order:
///
///     char** qt_argv = TOLV_APP::copy_argv_for_qt(argc, argv); // before any other Qt object
///     int qt_argc = argc;                                      // Qt takes out what it understands
///     TOLV_APP app(qt_argc, qt_argv);
///     app.init_instance(argc, argv);                           // the original arguments
///     ... build the windows ...
///     const int result = app.exec();
///     app.exit_instance();
///     ... destroy app ...
///
/// There is no way back: a second TOLV_APP in one process is not provided for. The object owns what lives as long as
/// the application: the undo/redo manager, the application fonts and the drawing resources; colours, pens, brushes and
/// fonts of the library must not be used once it is gone. Everything belongs to the thread of main(), which becomes the
/// GUI thread. Nothing here reports an error to the user.
class TOLV_EXPORT TOLV_APP : public QApplication
{
    Q_OBJECT

public:
    /// Prepares the process for Qt: message routing, the allocator's release rate, the environment that Qt reads, the
    /// style. (Qt looks at a `-style` argument and at QT_STYLE_OVERRIDE later, so these still win.) Returns a deep copy
    /// of the arguments for the constructor; none is added, removed or changed. The caller owns the array and its
    /// strings, each made with array new, for the life of the process.
    /// @param argc number of arguments; with 0 or less the result is null, and all else is done all the same
    /// @param argv the arguments, no null among the first `argc`: copying stops at one, and the entries behind it are
    ///             left undefined; null counts as no arguments
    static char** copy_argv_for_qt(int argc, const char** argv);

    /// @param argc a variable that lives as long as the application
    /// @param argv what copy_argv_for_qt() returned
    TOLV_APP(int& argc, char** argv);
    ~TOLV_APP() override;

    /// Brings the services up: messaging, the Tcl queue (flushed ten times a second from now on until the object goes),
    /// memory tracking, profiling, the budget of processors. Always returns true.
    virtual bool init_instance(int argc, const char** argv);

    /// Takes messaging, profiling and memory tracking down. The object itself lives on.
    virtual void exit_instance();

    /// The host's main window; null here. Hosts override it.
    virtual QWidget* get_main_window();

private slots:
    void flush_tcl_queue();

private:
    void initialize_processor_manager();

    GEN_UNDO_REDO_MGR* m_undo_redo_mgr = nullptr; ///< owned
    bool m_was_ui_process = false;                ///< gen_get_is_ui_process() before this object
    bool m_was_qt = false;                        ///< gen_get_is_qt() before this object
};

/// The application object; null before its constructor, behind its destructor, and in a process whose application
/// object is of another class. Callers check for null.
TOLV_EXPORT TOLV_APP* tolv_get_app();

/// Makes the fonts of the library's resources known to the application. A font that is missing or damaged is skipped.
TOLV_EXPORT void tolv_load_fonts_from_resources();

/// Removes all application fonts, also those that a host has added.
TOLV_EXPORT void tolv_remove_loaded_fonts();

/// Asks the allocator to give freed memory back to the system quickly, unless the user has set the environment
/// variable `TCMALLOC_RELEASE_RATE` (to anything), and reports the rate in force.
TOLV_EXPORT void set_release_rate();
