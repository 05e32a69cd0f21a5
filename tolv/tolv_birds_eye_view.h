#pragma once

#include "tolv_dock_widget.h"
#include "tolv_export.h"
#include "tolv_graphics_view.h"

#include <QFrame>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QSize>
#include <QTransform>
#include <QWidget>

#include <memory>

class TOLV_GRAPHICS_SCENE;
class TOLV_VIEW;
class TOLV_ZOOM_SCROLL_AREA;

namespace Ui
{
class Birds_Eye_View_TitleBar_Widget;
}

/// The corner of the drawing that a bird's eye view floats in.
enum BIRDS_EYE_VIEW_LOCATION : int
{
    BIRDS_EYE_TOP_LEFT = 0,
    BIRDS_EYE_TOP_RIGHT = 1,
    BIRDS_EYE_BOTTOM_LEFT = 2,
    BIRDS_EYE_BOTTOM_RIGHT = 3
};

/// The body of the bird's eye view of a TOLV_VIEW: the whole drawing, stretched to 300 pixels in the longer direction,
/// and the overlay, a translucent rectangle around the part that is visible. A drag with the left button moves that
/// part, a rectangle drawn with the right button zooms to it.
///
/// It follows the scroll bars and the zoom of its area. The drawing is painted by TOLV_VIEW::paint_birds_eye_view().
class TOLV_EXPORT TOLV_BIRDS_EYE_VIEW_WIDGET : public QFrame
{
    Q_OBJECT

public:
    TOLV_BIRDS_EYE_VIEW_WIDGET(TOLV_ZOOM_SCROLL_AREA* scroll_area, TOLV_VIEW* view, QWidget* parent);
    ~TOLV_BIRDS_EYE_VIEW_WIDGET() override;

    /// The size of the overview, in pixels: the longer side 300, the shorter one in proportion to the drawing. Without a
    /// view the internal error "m_source_view != NULL".
    QSize get_size() const;
    QSize sizeHint() const override;

    /// What it scrolls.
    TOLV_ZOOM_SCROLL_AREA* get_scroll_area() const;
    /// The overlay as it was painted last, in pixels of this widget.
    QRect get_focus_rect() const;

protected:
    void paintEvent(QPaintEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;

private:
    float get_scale_x() const;
    float get_scale_y() const;
    QPoint get_offset() const;
    QRect compute_focus_rect() const;
    void paint_drawing(QPaintEvent* e);
    void paint_focus_rect();
    void zoom_by_rect(const QPoint& start);

    QPointer<TOLV_ZOOM_SCROLL_AREA> m_scroll_area;
    QPointer<TOLV_VIEW> m_source_view;
    QRect m_focus_rect;
    QPoint m_last_point; ///< of the drag under way
};

/// The body of the bird's eye view of a TOLV_GRAPHICS_VIEW: the whole scene, and the overlay. The mouse does what it does
/// in TOLV_BIRDS_EYE_VIEW_WIDGET. The graphics view that it scrolls is at first the parent of its parent.
class TOLV_EXPORT TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET : public TOLV_GRAPHICS_VIEW
{
    Q_OBJECT

public:
    /// A parent without a parent is the internal error "parent()->parent() != nullptr"; a grandparent that is no
    /// TOLV_GRAPHICS_VIEW is not scrolled.
    TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET(TOLV_GRAPHICS_SCENE* scene, QWidget* parent);
    ~TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET() override;

    /// As of TOLV_BIRDS_EYE_VIEW_WIDGET. Without a scene the internal error "m_source_graphics_scene != NULL".
    QSize get_size() const;
    QSize sizeHint() const override;

    /// Tells what part of the scene is visible, in its coordinates. The overlay is drawn there.
    void set_focus_rect(const QRectF& scene_rect);
    /// The overlay, in pixels of the viewport.
    QRect get_focus_rect() const;
    /// Draws the overlay; part of a paint of the viewport.
    void paint_focus_rect();

    /// What it scrolls; may be null.
    TOLV_GRAPHICS_VIEW* get_source_graphics_view() const;
    void set_source_graphics_view(TOLV_GRAPHICS_VIEW* view);
    /// The transform that TOLV_GRAPHICS_VIEW::combine_with_default_bev_transform() starts from; at first the one that fits
    /// the scene in.
    const QTransform& get_default_transform() const;
    void set_default_transform(const QTransform& transform);

protected:
    void paintEvent(QPaintEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;
    void mouseReleaseEvent(QMouseEvent* e) override;
    /// The second press of two counts like any other.
    void mouseDoubleClickEvent(QMouseEvent* e) override;

private:
    void focus_by_rect(const QPoint& start);

    QPointer<TOLV_GRAPHICS_SCENE> m_source_graphics_scene;
    QPointer<TOLV_GRAPHICS_VIEW> m_source_graphics_view;
    QTransform m_default_transform;
    QRect m_focus_rect;
    QRect m_painted_focus_rect;
    QPoint m_last_point;
};

/// The title bar of a bird's eye view: buttons that move it to another corner, and the one that closes it. A drag with
/// the left button moves the window.
class TOLV_EXPORT TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET : public QWidget
{
    Q_OBJECT

public:
    /// For one of the two kinds of bird's eye view, to which the parent must belong.
    TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET(TOLV_VIEW* view, QWidget* parent);
    TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET(TOLV_GRAPHICS_SCENE* scene, QWidget* parent);
    ~TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET() override;

    /// The width of the overview, and its own height. Without a source the internal error "m_source_view != NULL" or
    /// "m_source_graphics_scene != NULL".
    QSize get_size() const;
    QSize sizeHint() const override;

    /// Shows the buttons of the moves that are possible from a corner.
    void show_moves(BIRDS_EYE_VIEW_LOCATION location);

signals:
    /// The title bar has been dragged: the window's top left corner belongs at this point, global.
    void update_parent_geometry(QPoint global_point);

protected:
    void mousePressEvent(QMouseEvent* e) override;
    void mouseMoveEvent(QMouseEvent* e) override;

private:
    void setup();

    const bool m_is_view_mode;
    const std::unique_ptr<Ui::Birds_Eye_View_TitleBar_Widget> m_ui;
    QPointer<TOLV_VIEW> m_source_view;
    QPointer<TOLV_GRAPHICS_SCENE> m_source_graphics_scene;
    QPoint m_drag_offset;

    friend class TOLV_BIRDS_EYE_VIEW; // connects the buttons
};

/// A small overview of a whole drawing that floats in a corner of the drawing and shows which part of it is visible. It
/// is a dock window by class, so that menus and side bars can handle it, but Qt may neither move nor detach it.
///
/// TOLV_ZOOM_SCROLL_AREA::set_view() and TOLV_GRAPHICS_VIEW::create_birds_eye_view() make it. It stays in its corner when
/// the drawing's window is resized. Its corner is the top left one until a button or a drag of the title bar changes it.
///
/// A location that is no corner, and a move that its corner does not offer, are the internal error
/// "Unsupported bird's eye view location enum".
class TOLV_EXPORT TOLV_BIRDS_EYE_VIEW : public TOLV_DOCK_WIDGET
{
    Q_OBJECT

public:
    /// Of a view, as a child of the scroll area around it.
    TOLV_BIRDS_EYE_VIEW(TOLV_ZOOM_SCROLL_AREA* scroll_area, TOLV_VIEW* view);
    /// Of a scene; the parent is the TOLV_GRAPHICS_VIEW that shows it.
    TOLV_BIRDS_EYE_VIEW(TOLV_GRAPHICS_SCENE* scene, QWidget* parent);
    ~TOLV_BIRDS_EYE_VIEW() override;

    /// The size of title bar and overview together.
    QSize get_size() const;
    QSize sizeHint() const override;

    /// The corner of the drawing that the overview keeps to.
    BIRDS_EYE_VIEW_LOCATION get_location() const;
    /// The body, of which there is one of the two.
    TOLV_BIRDS_EYE_VIEW_WIDGET* get_view_widget() const;
    TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET* get_graphics_view_widget() const;

    /// Places the window in its corner of a rectangle of the parent. Right and bottom of the rectangle count as outside,
    /// which is meant: a window in the bottom right corner leaves one pixel more free than one in the top left does.
    void update_geometry(const QRect& rect, int width, int height);
    /// Shows the buttons of the moves that are possible now.
    void update_titlebar_button_status();
    /// What the window may float in: the parent without its visible scroll bars.
    QRect get_scroll_area_visible_rect() const;

public slots:
    /// The moves to another corner. To a side, the window keeps its place along that side.
    void do_move_widget_to_left();
    void do_move_widget_to_right();
    void do_move_widget_to_top();
    void do_move_widget_to_bottom();
    void do_move_widget_to_diagonal();
    /// Moves the window's top left corner to a global point, unless a part of it would leave the visible rectangle. The
    /// corner that it belongs to is then the quadrant of the point; on the centre lines the bottom right one.
    void do_update_geometry(QPoint global_point);
    /// Places the window in its corner, with the size that the drawing asks for.
    void update_geometry();
    /// A window that docks goes to the top left of its parent.
    void on_top_level_changed(bool top_level);

protected:
    /// Watches the viewport of a graphics view, to stay in the corner when it is resized.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setup(QWidget* body);
    void connect_buttons();
    QWidget* get_host() const;
    void move_to_location(BIRDS_EYE_VIEW_LOCATION location, const QRect& rect);
    BIRDS_EYE_VIEW_LOCATION get_quadrant(const QRect& visible, const QPoint& point) const;
    static BIRDS_EYE_VIEW_LOCATION report_unsupported_location(BIRDS_EYE_VIEW_LOCATION location);

    const bool m_is_view_mode;
    TOLV_BIRDS_EYE_VIEW_WIDGET* m_birds_eye_view = nullptr;                   ///< a child
    TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET* m_birds_eye_graphics_view = nullptr; ///< a child
    TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET* m_titlebar = nullptr; ///< a child, in place of the base's own title bar
    BIRDS_EYE_VIEW_LOCATION m_location = BIRDS_EYE_TOP_LEFT;
};
