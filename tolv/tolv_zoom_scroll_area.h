#pragma once

#include "tolv_action_auto.h"
#include "tolv_export.h"

#include <QEvent>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QScrollArea>

class QAction;
class QActionGroup;
class QComboBox;
class QMouseEvent;
class TOLV_BIRDS_EYE_VIEW;
class TOLV_TOOL_BAR;
class TOLV_VIEW;

/// The scroll area around one TOLV_VIEW. It owns what a user does to a drawing beside selecting: zooming about a point
/// that stays in place, panning, magnifying, the tools and actions for them, and the bird's eye view.
///
/// The tool is whichever of the zoom, pan and magnifying tool actions is checked; with none of them the host's own
/// selection tool is at work. Put the three into an exclusive QActionGroup by insert_modes(). Mouse and keys of the view
/// pass through here first, as this is an event filter on the view; what neither a tool nor a gesture takes reaches the
/// view as ever. Gestures, drags and the lens run nested event loops, and the view or this area may be deleted or hidden
/// in the middle of them, a press with the right button by deleteLater() only, as Qt asks for.
///
/// Zoom levels that are signalled or shown are those of the user: 1 is 100 percent, whatever the view's scaling is.
/// Rectangles are inclusive, as QRect is. Without a view most operations are the internal error "m_view != NULL". The area
/// and what is in it run from left to right in every language: the values of its bars are pixels of the view.
class TOLV_EXPORT TOLV_ZOOM_SCROLL_AREA : public QScrollArea
{
    Q_OBJECT

public:
    explicit TOLV_ZOOM_SCROLL_AREA(QWidget* parent = nullptr);
    ~TOLV_ZOOM_SCROLL_AREA() override;

    /// Attaches the view, which is not owned by this; null is the internal error "view != NULL". A view that has no
    /// parent yet becomes the resizable content of the area, which then owns it as QScrollArea::setWidget() says; one
    /// that has been placed already, by itself or inside of another widget, stays there.
    /// @param has_birds_eye_view whether there is a bird's eye view, hidden at first, and the magnifying tool; otherwise
    ///                           the actions of both are invisible
    void set_view(TOLV_VIEW* view, bool has_birds_eye_view);
    /// Null before set_view(), and when the view has been deleted.
    TOLV_VIEW* get_view() const;
    /// Null where there is none.
    TOLV_BIRDS_EYE_VIEW* get_birds_eye_view() const;
    void hide_birds_eye_view() const;

    /// The action of one of the nine commands TOLV_ZOOM_TOOL_ACTION, TOLV_PAN_TOOL_ACTION, TOLV_ZOOM_FIT_ACTION,
    /// TOLV_ZOOM_SELECTION_ACTION, TOLV_ZOOM_IN_ACTION, TOLV_ZOOM_OUT_ACTION, TOLV_MAGNIFYING_TOOL_ACTION,
    /// TOLV_ZOOM_ACTION and TOLV_BIRDS_EYE_VIEW_ACTION; null for all others.
    QAction* get_action(TOLV_ACTION_ENUM action) const;
    /// Enables or disables the area and all nine actions.
    void set_enabled(bool enabled);
    /// Shows or hides all nine actions.
    void show_actions(bool visible);

    /// Puts the zoom, magnifying and pan tool into a group, in this order, and follows the group's choice. A null group is
    /// skipped, as null widgets are below.
    void insert_modes(QActionGroup* group);
    /// Takes them out again. What the group triggers is still followed.
    void remove_modes(QActionGroup* group);
    /// The same for a tool bar; null is the internal error "bar != NULL".
    void add_mode_actions(TOLV_TOOL_BAR* bar);
    void remove_mode_actions(TOLV_TOOL_BAR* bar);
    /// Inserts zoom in, zoom out, zoom, fit in window and fit selection in this order into a widget, behind its other
    /// actions where `before` is null.
    void insert_actions(QWidget* widget, QAction* before);
    void remove_actions(QWidget* widget);

    /// Whether a press with the right button in zoom mode may begin a zoom drag; true at first.
    bool is_zoom_drag_enabled() const;
    void set_zoom_drag_enabled(bool enabled);
    /// Whether data that is dragged over the view scrolls it near the edges; true at first.
    bool is_scroll_on_drag_move() const;
    void set_scroll_on_drag_move(bool enabled);

    /// The point moved by the values of the scroll bars.
    QPoint map_coord_from_scroll_area_to_view(QPoint point) const;
    /// False with the pan or magnifying tool, else the view's own answer. The point is physical.
    bool current_mode_supports_mouse_gesture(const QPoint& point) const;
    /// Posts a move of the mouse to the view, where the pointer is, so that hover effects follow content that has moved
    /// under a still pointer.
    void send_fake_mouse_event();

    /// Zooms so that a logical rectangle fills the visible part, which scroll bars narrow, and centres it. Internal
    /// errors: "rect.isNull() == false", "rect.isEmpty() == false", and "max_size.width() > 0 && max_size.height() > 0"
    /// where no part is visible.
    virtual void zoom_on_logical_rect(const QRect& rect);
    /// Centres a logical rectangle without zooming; the same internal errors.
    virtual void scroll_to_logical_rect(const QRect& rect);

public slots:
    /// Zooms so that a rectangle of the view, physical, fills the visible part, and centres it. Internal errors:
    /// "rect.isNull() == false", "rect.isEmpty() == false".
    virtual void zoom_rect(const QRect& rect);
    /// Sets the cursor of a tool that has been chosen; other actions leave it alone.
    void on_switch_mode(QAction* action);
    /// One step of zooming: by `delta` as far as the limits go, with the point `p` (physical) held in its place. Without
    /// a point the step is about the pointer, which then goes along with the content, if it is over the view, else about
    /// the middle of the visible part. A delta of 0 is the internal error "delta != 0".
    virtual void zoom_in(QPoint* p = nullptr, float delta = 1.25F);
    /// The same with the inverse of `delta`.
    virtual void zoom_out(QPoint* p = nullptr, float delta = 1.25F);
    /// Zooms so that all content is visible.
    virtual void zoom_fit();
    /// A step of a drag with the pan tool; true where the event is consumed.
    /// @param point where the pointer is, global
    bool pan_view(QEvent::Type event_type, QPoint point, Qt::MouseButtons mouse_button = Qt::LeftButton);
    /// A press in zoom mode that is no stroke: zooms a step about the last press. With `show_right_click_rect` a press
    /// that zooms out may first drag a rectangle to zoom out to.
    void zoom_mode_no_mouse_gesture(QMouseEvent* mouse_event, bool show_right_click_rect = true);
    /// Repaints the view and brings the pointer back to the point of the drawing that it was on before the last step.
    void adjust_cursor();
    /// Zooms to what is selected; nothing where nothing is.
    virtual void zoom_selected();
    /// Zooms out so that what is visible now shrinks into a rectangle of the view (physical). The factor counts as a level
    /// of the user though it is none; this is meant. Internal errors as of zoom_rect().
    virtual void zoom_out_rect(const QRect& rect);
    /// Sets the view's level of zoom, leaving the scroll bars to the caller.
    virtual void set_zoom(float factor);
    /// Lets the user choose the level in a dialog.
    void open_set_zoom_dlg();

signals:
    /// The zoom has been set, by whichever way of this class, to this level of the user.
    void zoom_level_changed(float zoom_level);
    /// The temporary pan by Control and Shift is over: the host may go back to the tool of before.
    void pan_mode_off();

protected:
    bool eventFilter(QObject* obj, QEvent* e) override;
    void wheelEvent(QWheelEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;
    /// Scrolls at the release of the arrow and page keys, not at the press; this is meant.
    void keyReleaseEvent(QKeyEvent* e) override;
    void resizeEvent(QResizeEvent* e) override;

private slots:
    void forget_view();
    void end_pan();

private:
    QList<QAction*> get_actions() const;
    QList<QAction*> get_tool_actions() const;
    QList<QAction*> get_zoom_actions() const;
    void remove_birds_eye_view();
    void create_birds_eye_view();

    void set_fit_zoom(const QRect& logical, const QSize& max_size);
    void set_scroll_maxima();
    void scroll_to_centre(const QRect& physical, const QSize& visible_size);
    QSize get_page_size() const;
    QSize get_max_size() const;
    void check_rect(const QRect& rect) const;
    void finish_zoom();
    void select_current_level(QComboBox& combo_box) const;
    void apply_chosen_level(const QString& text, float wanted);
    void zoom_until_visible(const QRect& logical);
    void adjust_cursor_later();

    void follow_view(QEvent* e);
    void begin_temporary_pan(const QEvent& e);
    bool end_temporary_pan(const QEvent& e);
    bool zoom_mode_event_filter(QEvent* e);
    void zoom_mode_press(QMouseEvent* e);
    void zoom_mode_mouse_press_event(QEvent* e, bool allow_gesture);
    void zoom_mode_double_click(const QMouseEvent& e);
    bool run_zoom_drag();
    bool pan_mode_event_filter(QEvent* e);
    bool magnifying_mode_event_filter(QEvent* e);
    bool no_mode_event_filter(QEvent* e);
    bool other_event_filter(QEvent* e);
    void zoom_by_wheel(const QWheelEvent& e);
    void scroll_by_wheel(const QWheelEvent& e);
    void scroll_by_key(const QKeyEvent& e);

    QAction* m_zoom_tool_action;
    QAction* m_pan_tool_action;
    QAction* m_zoom_fit_action;
    QAction* m_zoom_selection_action;
    QAction* m_zoom_in_action;
    QAction* m_zoom_out_action;
    QAction* m_magnifying_tool_action;
    QAction* m_zoom_dialog_action;
    QAction* m_birds_eye_view_action;
    QPointer<TOLV_VIEW> m_view;                     ///< not owned
    QPointer<TOLV_BIRDS_EYE_VIEW> m_birds_eye_view; ///< a child
    QPoint m_mouse_position;                        ///< of the last press or move, physical; global while panning
    QPoint m_logical_anchor;                        ///< what adjust_cursor() brings the pointer back to
    bool m_panning = false;
    bool m_zoom_drag_enabled = true;
    bool m_scroll_on_drag_move = true;
    int m_pan_start_h = 0; ///< the scroll bars when the pan began
    int m_pan_start_v = 0;
};
