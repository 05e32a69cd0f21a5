#pragma once

#include "tolv_export.h"

#include <QDockWidget>
#include <QPointer>
#include <QSize>
#include <QString>

#include <string>

class QAction;
class QMenu;
class QTimer;
class TOLV_DOCK_WIDGET_BUTTON;
class TOLV_DOCK_WIDGET_BUTTON_BAR;
class TOLV_DOCK_WIDGET_TITLEBAR_WIDGET;
class TOLV_MAIN_WINDOW;
class TOLV_TREE_VIEW;
enum TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM : int;

namespace tinyxml2
{
class XMLElement;
}

/// The dock window of all tools, and what the factories of dockable windows return. It has a title bar with a pin: a
/// window that is not pinned leaves the dock area and is reached through a button on the side bar at its edge of the
/// main window. Subclasses add a content, a help topic, an own title bar. GUI thread.
///
/// A window is docked, unpinned, floating or closed. The pin leads from docked to unpinned and back; floating pins the
/// window and hides the pin; close_widget() closes, and a closed window that is shown, by whatever route, is docked and
/// pinned. The side button of an unpinned window shows and hides it and leaves the state as it is, and so does hiding
/// the window in any other way than by close_widget().
///
/// The place of a window is the host's to save: after QMainWindow::restoreState() the state follows the window. What
/// Qt does not save is the pin: a host calls set_is_pinned(false) for the windows that were unpinned before the
/// windows get their places, and each gets its side button with its place.
///
/// The parent owns the window. The window owns its title bar and its side button. Without a main window of the class
/// TOLV_MAIN_WINDOW there is nowhere to unpin to: a window with another parent has no pin button, and one without a
/// parent has one that only hides it.
class TOLV_EXPORT TOLV_DOCK_WIDGET : public QDockWidget
{
    Q_OBJECT

public:
    /// Where a window is in its life.
    enum DOCK_STATE
    {
        DOCK_STATE_DOCKED = 0,
        DOCK_STATE_UNPINNED = 1,
        DOCK_STATE_FLOATING = 2,
        DOCK_STATE_CLOSED = 3
    };

    explicit TOLV_DOCK_WIDGET(const QString& title, QWidget* parent = nullptr,
                              Qt::WindowFlags flags = Qt::WindowFlags());
    explicit TOLV_DOCK_WIDGET(QWidget* parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    /// From a description in XML: the text of the child `setWindowTitle` is the title; `setFeatures` has children of
    /// any name whose texts name features ("DockWidgetClosable", "DockWidgetMovable", "DockWidgetFloatable",
    /// "DockWidgetVerticalTitleBar", "AllDockWidgetFeatures", "NoDockWidgetFeatures"). Other names are passed over, and
    /// where no name is known the features stay as they are. A null element describes nothing.
    TOLV_DOCK_WIDGET(const tinyxml2::XMLElement* element, QWidget* parent, Qt::WindowFlags flags = Qt::WindowFlags());
    /// The same from a text in UTF-8; its first element is the description. A text that is no XML describes nothing.
    TOLV_DOCK_WIDGET(QWidget* parent, Qt::WindowFlags flags, const std::string& xml);
    /// Takes the side button along.
    ~TOLV_DOCK_WIDGET() override;

    /// For subclasses with a long content; nothing here.
    virtual void scroll_to_bottom() const;
    /// Topic of the window's help, local 8-bit encoding: the window title and, right behind it, the accessible name of
    /// the parent.
    virtual std::string get_help_topic_string();

    /// Whether the window keeps its place in the dock area, and its DOCK_STATE: what hosts store with a layout.
    bool get_is_pinned() const;
    int get_state() const;

    /// Pins the window, or hides it at once as unpinned. The side bars stay as they are: the pin of the title bar sees
    /// to them, and a host calls add_button().
    void set_is_pinned(bool pinned);
    /// The menu of the title bar's menu button, which is shown. The caller keeps the menu.
    void set_menu(QMenu* menu);
    /// Puts a widget into the title bar.
    void add_titlebar_widget(QWidget* widget);
    /// What a click on a button of the title bar does. Without a title bar the internal error "m_titlebar != NULL".
    void click_titlebar_button(TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM button);

    /// Which buttons the title bar has. At first close, detach and pin; a floating window has no pin, whatever was
    /// asked for before it floated, and gets it back when it docks.
    void set_close_button_visibility(bool visible);
    void set_detach_button_visibility(bool visible);
    void set_pushpin_button_visibility(bool visible);
    void set_menu_button_visibility(bool visible);
    void set_float_button_visibility(bool visible);
    void set_search_button_visibility(bool visible);

    /// Forces the window to a size in pixels that its dock area would not grant it; a negative length is left alone.
    /// The minimum and maximum sizes are narrowed for it and come back after a millisecond; a call before that narrows
    /// them further.
    void set_size(int width, int height);

    /// Makes the tree the content, with a line above it that the search button shows and hides and whose text
    /// filter_option_changed() tells. A hidden line keeps its text and goes on filtering. Nothing where the tree is
    /// null or the flag false.
    void initialize_with_search_widget(TOLV_TREE_VIEW* tree, bool use_search);

    /// The side bar of a dock area; the left one for what is no single area.
    Qt::ToolBarArea to_toolbar_area(Qt::DockWidgetArea area) const;
    /// Whether the mouse is in the window. On the top and on the left: in it, or at most 3 pixels beyond its right and
    /// lower edge. Elsewhere: no further than the margin beyond its left and upper edge, and anywhere to the right and
    /// below. Both are meant.
    bool is_within_widget(int margin) const;

public slots:
    /// Shows or hides; what is shown is raised, too.
    void set_visible_and_raise(bool visible);
    /// Shows, raises and checks the action. Null is the internal error "action".
    void set_visible_and_raise(QAction* action);
    /// Lets a docked window float, and docks a floating one.
    void detach();
    /// Shows the window. One that is unpinned and has had a side button gets it on the bar again.
    void open_widget();
    /// Closes the window and takes its button from the side bar. The argument counts for nothing.
    void close_widget(bool value = false);
    /// Puts the side button of the window on the bar of its area, unchecked, and stops the hiding. Nothing without a
    /// main window. A button that is new goes on the bar twice, which is meant: the bar's map has the second action.
    void add_button();
    /// The window has got its place. The top and the bottom give it the vertical title bar, which it keeps until it
    /// floats; an unpinned window without a side button gets one.
    void dock_location_changed(Qt::DockWidgetArea area);
    /// The window has begun to float, or is docked again, which opens it.
    void floating_status_changed(bool floating);
    /// Opens the help on get_help_topic_string().
    void help_button_clicked();
    /// Hides an unpinned window that the mouse has left, or looks again in 500 ms. The library never calls this first:
    /// a host that wants unpinned windows to go by themselves does.
    void delay_tick();
    /// The end of set_size().
    void restore_min_max_sizes();

signals:
    /// The window has been shown, or hidden.
    void dock_widget_active_state_changed(bool active);
    /// The float and the search button of the title bar.
    void float_button_clicked(bool checked);
    void search_button_clicked(bool checked);
    /// The text of the filter line has changed.
    void filter_option_changed(QString filter_text);
    /// Never emitted by the library: for hosts to announce that their window is about to go.
    void pre_window_existing();

protected:
    bool event(QEvent* event) override;
    void childEvent(QChildEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

    QTimer* m_delay_timer = nullptr;                       ///< of delay_tick(), a child
    QPointer<TOLV_DOCK_WIDGET_TITLEBAR_WIDGET> m_titlebar; ///< a child; null when a host has deleted it
    Qt::DockWidgetArea m_area = Qt::BottomDockWidgetArea;  ///< the last known
    QPointer<TOLV_MAIN_WINDOW> m_main_window;              ///< the parent, where it is of that class
    QPointer<TOLV_DOCK_WIDGET_BUTTON>
        m_button; ///< made when first needed, then kept; without a parent while off the bar
    bool m_is_pinned = true;
    int m_state = DOCK_STATE_DOCKED;
    bool m_show_close_button = true;   ///< what was last asked for
    bool m_show_detach_button = true;  ///< what was last asked for
    bool m_show_pushpin_button = true; ///< what was last asked for; in force again when the window docks
    QSize m_saved_min_size;            ///< of set_size(), until they are in force again
    QSize m_saved_max_size;            ///< of set_size(), until they are in force again

private:
    // One family: they read each other's members.
    friend class TOLV_DOCK_WIDGET_BUTTON;
    friend class TOLV_DOCK_WIDGET_TITLEBAR_WIDGET;
    friend class TOLV_MAIN_WINDOW;

    void setup(QWidget* parent);
    void xml_customize(const tinyxml2::XMLElement* element);
    void customize_features(const tinyxml2::XMLElement& features);
    void make_button(Qt::ToolBarArea area);
    TOLV_DOCK_WIDGET_BUTTON_BAR* get_button_bar() const;
    void remove_button_from_bar();
    void show_pin_state();
    void begin_to_float();
    void end_to_float();
    void reseat();
    void wire_help_button(const QWidget& child);
};
