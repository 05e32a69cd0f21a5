#pragma once

#include "tolv_export.h"

#include <QAction>
#include <QGraphicsView>
#include <QPointer>
#include <QRectF>

class QPaintEvent;
class QTransform;
class TOLV_BIRDS_EYE_VIEW;

/// The base class of views that are built on Qt's graphics view, rather than on TOLV_VIEW. It adds a bird's eye view of
/// the scene, and a display of how long a paint took.
///
/// A host sets its scene, which must be a TOLV_GRAPHICS_SCENE if there is to be a bird's eye view, calls
/// create_birds_eye_view() and puts get_birds_eye_view_action() into a menu. The dock belongs to this view and floats
/// over it.
///
/// The viewport is a TOLV_VIEWPORT: items add the time that they take to its counters while they are painted. Where the
/// configuration switch "tolv_graphics_view_perf_debug" is on at the first paint of the process, each paint shows them.
class TOLV_EXPORT TOLV_GRAPHICS_VIEW : public QGraphicsView
{
    Q_OBJECT

public:
    explicit TOLV_GRAPHICS_VIEW(QWidget* parent = nullptr);
    ~TOLV_GRAPHICS_VIEW() override;

    /// Makes the bird's eye view and its action, in place of those of before. Its size and scale are those of the scene
    /// rectangle of this moment, so that the scene should be complete. Without a scene the internal error
    /// "scene()!=nullptr".
    void create_birds_eye_view();
    /// Null before create_birds_eye_view().
    TOLV_BIRDS_EYE_VIEW* get_birds_eye_view() const;
    /// Shows the bird's eye view, and is checked while it is visible. Null before create_birds_eye_view().
    QAction* get_birds_eye_view_action() const;

    /// Zooms to a rectangle of the scene: what a rectangle drawn in the bird's eye view does.
    virtual void focus_on_scene_rect(const QRectF& rect);

    /// Gives the overview a transform that holds from now on, in place of the one that fits the scene in, or combined
    /// with it. This and the next three are the internal error "m_birds_eye_view != nullptr" without a bird's eye view.
    void preset_bev_transform(const QTransform& transform, bool combine);
    /// Lets a transform follow on the one of preset_bev_transform(); not on what this operation set before.
    void combine_with_default_bev_transform(const QTransform& transform);
    /// Repaints the overview.
    void update_birds_eye_view();
    void hide_birds_eye_view();
    /// Lets the bird's eye view of this view scroll another one. Null is the internal error "gv != nullptr". Nothing
    /// without a bird's eye view.
    void set_bev_source_graphics_view(TOLV_GRAPHICS_VIEW* gv);

protected:
    void paintEvent(QPaintEvent* e) override;
    void scrollContentsBy(int dx, int dy) override;

    /// The line on the duration of a paint, in microseconds; above 10000 it is given in milliseconds, the fraction cut
    /// off. Begun with a line feed.
    static QString get_paint_time_text(quint64 elapsed_usec);

private:
    void create_birds_eye_view_action();
    void show_focus_in_birds_eye_view();
    void clear_performance_info();
    QString get_performance_text(const QRect& painted) const;
    void paint_perf_debug(QPaintEvent* e);

    QPointer<TOLV_BIRDS_EYE_VIEW> m_birds_eye_view; ///< a child
    QPointer<QAction> m_birds_eye_view_action;      ///< a child
    quint64 m_paint_start_usec;                     ///< wall clock
    QRectF m_perf_overlay_rect;                     ///< what the display covered last, in the viewport
};
