#pragma once

#include "tolv_export.h"

#include <QIcon>
#include <QList>
#include <QPixmap>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QString>
#include <QWidget>

#include <memory>

class QBoxLayout;
class QMenu;
class QToolButton;
class TOLV_DOCK_WIDGET;

namespace Ui
{
class TOLV_DOCK_WIDGET_TITLEBAR_WIDGET;
}

/// The buttons of a dock window's title bar that have a square of their own on its surface.
enum TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM : int
{
    TITLEBAR_BUTTON_NONE = 0,
    TITLEBAR_BUTTON_MENU = 1,
    TITLEBAR_BUTTON_PIN = 2,
    TITLEBAR_BUTTON_DETACH = 3,
    TITLEBAR_BUTTON_CLOSE = 4
};

/// The title bar of a TOLV_DOCK_WIDGET, which makes it, owns it and tells it the title, the pin and which buttons are
/// wanted. It has two complete forms, one that lies and one that stands, and shows the standing one while the dock
/// window has the feature QDockWidget::DockWidgetVerticalTitleBar. So each button exists twice, and both are always in
/// the same state. Float, search and menu are hidden at first.
///
/// Beside its buttons the bar has squares on its surface, counted from its right edge (the upper edge where it stands),
/// for close, detach, pin and menu. A press on the square of a button that is wanted does what the button does, wherever
/// the button itself lies. So the lying form reads from left to right in every application, those that read from right to
/// left included.
class TOLV_EXPORT TOLV_DOCK_WIDGET_TITLEBAR_WIDGET : public QWidget
{
    Q_OBJECT

public:
    /// @param dock the dock window, which is the parent too. Without one the bar lies, and its buttons do nothing.
    explicit TOLV_DOCK_WIDGET_TITLEBAR_WIDGET(TOLV_DOCK_WIDGET* dock);
    ~TOLV_DOCK_WIDGET_TITLEBAR_WIDGET() override;

    /// The title in both forms, as plain text.
    void set_title(const QString& title);
    QString get_title() const;
    /// Shows the pin as pushed in or not. Nothing happens to the dock window: see toggle_pin().
    void set_pinned(bool pinned);
    bool get_pinned() const;
    /// Which buttons are wanted: shows or hides both of the kind, and for the first four gives or takes their square.
    void set_close_visible(bool visible);
    void set_detach_visible(bool visible);
    void set_pin_visible(bool visible);
    void set_menu_visible(bool visible);
    void set_float_visible(bool visible);
    void set_search_visible(bool visible);
    /// The menu of the menu button, which the caller keeps; null for none. It shows both menu buttons, but gives them no
    /// square: that is set_menu_visible().
    void set_menu(QMenu* menu);

    /// Adds a widget in front of the menu button of the lying form; the bar takes it as a child. Nothing happens for null.
    void add_widget(QWidget* widget);
    /// Moves the added widgets to the form in force: right behind the title, or behind the menu button where the bar
    /// stands. Those added later come to stand before the others, and the place is another one than that of
    /// add_widget(): both are meant.
    void update_added_widget_to_vert_or_horz();
    /// Puts all added widgets into a layout, each in turn at the same index. A null layout is the internal error
    /// "layout".
    void insert_added_widgets_to_layout(QBoxLayout* layout, int index);

    /// What a press on the button's square does: closes the dock window, detaches it or turns the pin. Nothing for the
    /// menu, which only the button itself opens, and for no button.
    void press_button(TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM button);
    /// Remembers the button whose square the mouse is on and shows its tool tip.
    void update_button_active_state();
    /// The same for a position in the bar.
    void update_button_active_state(QPoint position);
    /// Upper left corner of a button's square in a bar that lies and has this rectangle; (0, 0) for a button without a
    /// square.
    QPoint get_icon_position(TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM button, QRect rect) const;
    /// The wanted button whose square the point is in, 14 pixels from its corner and edges included, for a bar with this
    /// rectangle, lying or standing as the feature says. Shows the button's tool tip at the mouse; without a hit hides
    /// the tool tip and gives TITLEBAR_BUTTON_NONE.
    void icon_hit_test(QPoint point, QRect rect, TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM& button) const;
    /// An icon of 14 pixels on the colour of windows, which is lighter for the button that the mouse is on. For hosts
    /// that paint a bar of their own.
    QPixmap get_title_bar_button(TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM button, const QIcon& icon) const;

    /// That of the form in force, with 2 pixels more across, for its frame.
    QSize sizeHint() const override;

public slots:
    /// Pins the dock window, or unpins it, and takes its side button off the bar at the edge or puts it there. Without
    /// a dock window the internal error "Dock widget parent is not set up yet".
    void toggle_pin(bool value);
    /// Opens the menu below the menu button and returns when it is closed.
    void menu_button_pressed();
    /// Set both buttons of the pair and send the signal.
    void search_button_clicked_slot(bool checked);
    void float_button_clicked_slot(bool checked);

signals:
    /// A click on a search or a float button, with its new state.
    void search_button_clicked(bool checked);
    void float_button_clicked(bool checked);

protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    /// Leaves the event to the dock window, which is dragged by it.
    void mouseMoveEvent(QMouseEvent* event) override;
    /// Brings out the form that is in force.
    void paintEvent(QPaintEvent* event) override;

private:
    bool is_vertical() const;
    void set_icons();
    void connect_buttons();
    void connect_pair(QToolButton* horizontal, QToolButton* vertical, const char* signal, const QObject* receiver,
                      const char* method);
    bool is_wanted(TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM button) const;
    TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM get_button_at(QPoint point, QRect rect) const;
    void remove_side_button() const;

    QPointer<TOLV_DOCK_WIDGET> m_dock; ///< the parent at first; null for none
    QString m_title_text;
    bool m_float_visible = false;
    bool m_search_visible = false;
    bool m_menu_visible = false;
    bool m_pinned = true;
    bool m_pin_visible = true;
    bool m_detach_visible = true;
    bool m_close_visible = true;
    TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM m_active_button = TITLEBAR_BUTTON_NONE; ///< below the mouse
    std::unique_ptr<Ui::TOLV_DOCK_WIDGET_TITLEBAR_WIDGET> m_ui;
    QPointer<QMenu> m_menu;                   ///< not owned
    QList<QPointer<QWidget>> m_added_widgets; ///< in the order of their adding
};
