#pragma once

#include "qt_printers.h"
#include "test_place.h"

#include <gtest/gtest.h>

#include <QPoint>
#include <QString>
#include <QWidget>

#include <functional>

class QMimeData;

/// Drives widgets as a user does: real input through the window, so that activation, grabs, focus, shortcuts, event
/// filters and the propagation from child to parent take part.
///
/// Positions are in the widget's coordinates, in pixels; MAPPED_DRIVER takes them in coordinates of a drawing. After
/// each operation all pending events have been delivered, and QCursor::pos() is where the pointer is; under a window
/// system it stays where the button was pressed until the release (X11_POINTER moves the system's own). The pointer can
/// be out of the widget only while a button is held.
///
/// A target that is null, hidden, disabled, behind another widget or behind a modal dialog, and a position outside of
/// it, fail the test at the place of the call, and nothing is sent. What runs a nested event loop does not return until
/// the loop ends: see INPUT_SCRIPT, answer_next_dialog() and answer_next_menu().
class GUI_DRIVER
{
public:
    /// The one object of a class below `parent` (null: in all windows) that has this object name. Fails the test and
    /// gives null where there is none or where there are several. `T` is any class derived from QObject.
    template <typename T>
    static T* find_widget(const QObject* parent, const QString& object_name, TEST_PLACE place = TEST_PLACE::here())
    {
        return find_widget<T>(
            parent, [&](const T* candidate) { return candidate->objectName() == object_name; }, place,
            QStringLiteral("named \"%1\"").arg(object_name));
    }

    /// The one that satisfies a condition.
    template <typename T>
    static T* find_widget(const QObject* parent, const std::function<bool(const T*)>& condition,
                          TEST_PLACE place = TEST_PLACE::here(),
                          const QString& description = QStringLiteral("that fits"))
    {
        T* result = nullptr;
        int count = 0;
        for (QObject* object : get_objects(parent))
        {
            T* const candidate = dynamic_cast<T*>(object);
            if (candidate == nullptr || !condition(candidate))
                continue;
            result = candidate;
            ++count;
        }
        if (count == 1)
            return result;
        ADD_FAILURE_AT(place.file, place.line) << "there are " << count << " objects of "
                                               << T::staticMetaObject.className() << " " << description.toStdString();
        return nullptr;
    }

    /// Shows a window and waits until it is on the screen and active. False, and a failed test, where it does not come
    /// up.
    static bool show(QWidget* window, TEST_PLACE place = TEST_PLACE::here());

    /// Moves the pointer, with whatever buttons are held.
    static void move_to(QWidget* widget, const QPoint& position, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                        TEST_PLACE place = TEST_PLACE::here());
    /// Moves the pointer over the widget with no button held: to its middle, or to a position.
    static void hover(QWidget* widget, TEST_PLACE place = TEST_PLACE::here());
    static void hover(QWidget* widget, const QPoint& position, TEST_PLACE place = TEST_PLACE::here());

    /// Puts the pointer anywhere on the screen with no button held, and has whatever lies below it told as the platform
    /// does it.
    static void place_pointer(const QPoint& screen_position);

    /// Moves there and presses a button, which stays held.
    static void press(QWidget* widget, const QPoint& position, Qt::MouseButton button = Qt::LeftButton,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier, TEST_PLACE place = TEST_PLACE::here());
    /// Moves there and releases the button, which must be held.
    static void release(QWidget* widget, const QPoint& position, Qt::MouseButton button = Qt::LeftButton,
                        Qt::KeyboardModifiers modifiers = Qt::NoModifier, TEST_PLACE place = TEST_PLACE::here());
    /// Press and release. Two clicks never make a double click.
    static void click(QWidget* widget, const QPoint& position, Qt::MouseButton button = Qt::LeftButton,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier, TEST_PLACE place = TEST_PLACE::here());
    /// In the middle of the widget.
    static void click(QWidget* widget, TEST_PLACE place = TEST_PLACE::here());
    static void double_click(QWidget* widget, const QPoint& position, Qt::MouseButton button = Qt::LeftButton,
                             Qt::KeyboardModifiers modifiers = Qt::NoModifier, TEST_PLACE place = TEST_PLACE::here());
    /// Press, a move for each pixel of the way, release. The way is fixed on the screen when the drag begins: a widget
    /// that moves under the pointer does not bend it. Only the beginning must lie in the widget.
    static void drag(QWidget* widget, const QPoint& from, const QPoint& to, Qt::MouseButton button = Qt::LeftButton,
                     Qt::KeyboardModifiers modifiers = Qt::NoModifier, TEST_PLACE place = TEST_PLACE::here());
    /// The points of such a way behind its first one, one pixel apart in the direction of the longer side.
    static QVector<QPoint> get_way(const QPoint& from, const QPoint& to);

    /// Turns the wheel, in eighths of a degree: (0, 120) is one notch up.
    static void wheel(QWidget* widget, const QPoint& position, const QPoint& angle_delta,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier, TEST_PLACE place = TEST_PLACE::here());

    /// Buttons that this driver holds.
    static Qt::MouseButtons get_buttons();

    /// Gives the widget the keyboard focus, its window the activation, and waits for both.
    static bool focus(QWidget* widget, TEST_PLACE place = TEST_PLACE::here());
    /// A key for the widget, which gets the focus first if it has not got it. In a popup the key goes to the popup.
    static void key_click(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                          TEST_PLACE place = TEST_PLACE::here());
    static void key_press(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                          TEST_PLACE place = TEST_PLACE::here());
    static void key_release(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                            TEST_PLACE place = TEST_PLACE::here());
    /// A text, character by character (Latin-1).
    static void type(QWidget* widget, const QString& text, TEST_PLACE place = TEST_PLACE::here());

    /// Drags data over the widget and drops it there, as the platform does it when a drag comes in from outside.
    /// Returns the action that was accepted, Qt::IgnoreAction for none.
    static Qt::DropAction drop(QWidget* widget, const QPoint& position, const QMimeData* data,
                               Qt::DropActions actions = Qt::CopyAction,
                               Qt::KeyboardModifiers modifiers = Qt::NoModifier, TEST_PLACE place = TEST_PLACE::here());

    /// Runs the event loop until the condition holds. False, and a failed test, where it does not within the time.
    static bool wait_for(const std::function<bool()>& condition, int timeout_milliseconds = 5000,
                         TEST_PLACE place = TEST_PLACE::here());

    /// Delivers what is posted and what has come in, deletions included; timers that are due fire.
    static void process_posted();

    /// Whether input can reach the widget there; fails the test with the reason where not.
    static bool can_reach(QWidget* widget, const QPoint& position, TEST_PLACE place = TEST_PLACE::here());

private:
    static QList<QObject*> get_objects(const QObject* parent);
};

/// The driver in coordinates of a drawing, for one view. Each position is mapped to the nearest pixel when it is used,
/// so that a view that scrolls or zooms in between is followed.
class MAPPED_DRIVER
{
public:
    /// From coordinates of the drawing to pixels of the widget.
    using MAPPING = std::function<QPointF(const QPointF&)>;

    MAPPED_DRIVER(QWidget* widget, MAPPING mapping);

    void move_to(const QPointF& position, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
                 TEST_PLACE place = TEST_PLACE::here()) const;
    void press(const QPointF& position, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier, TEST_PLACE place = TEST_PLACE::here()) const;
    void release(const QPointF& position, Qt::MouseButton button = Qt::LeftButton,
                 Qt::KeyboardModifiers modifiers = Qt::NoModifier, TEST_PLACE place = TEST_PLACE::here()) const;
    void click(const QPointF& position, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier, TEST_PLACE place = TEST_PLACE::here()) const;
    void double_click(const QPointF& position, Qt::MouseButton button = Qt::LeftButton,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier, TEST_PLACE place = TEST_PLACE::here()) const;
    /// Both ends are mapped when the drag begins.
    void drag(const QPointF& from, const QPointF& to, Qt::MouseButton button = Qt::LeftButton,
              Qt::KeyboardModifiers modifiers = Qt::NoModifier, TEST_PLACE place = TEST_PLACE::here()) const;
    void wheel(const QPointF& position, const QPoint& angle_delta, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
               TEST_PLACE place = TEST_PLACE::here()) const;

    /// The pixel of a position.
    QPoint get_pixel(const QPointF& position) const;

private:
    QWidget* m_widget;
    MAPPING m_mapping;
};
