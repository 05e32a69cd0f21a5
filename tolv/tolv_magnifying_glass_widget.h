#pragma once

#include "tolv_export.h"

#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QWidget>

class QEventLoop;
class TOLV_VIEW;
class TOLV_ZOOM_SCROLL_AREA;

/// A round lens with a handle that follows the pointer over a view while the left button is held, and shows what is under
/// it at a higher zoom: the view paints itself into the lens. The zoom scroll area begins it at a press by magnifying(),
/// which returns when a button is released, or when the view is hidden, deleted or cut off from the mouse by a modal
/// dialog.
///
/// The wheel makes the lens stronger or weaker; with Control larger or smaller. Size and strength stay for the next time.
///
/// The widget is a child of the scroll area, made for one press. It belongs to magnifying(), and goes with a scroll area
/// that is deleted in the middle.
class TOLV_EXPORT TOLV_MAGNIFYING_GLASS_WIDGET : public QWidget
{
    Q_OBJECT

public:
    /// The size of the lens, for the life of the process: its radius in units of 50 pixels, 1 to 5.
    static double s_size_factor;
    /// The zoom of the lens in relation to that of the view, for the life of the process; 1 or more.
    static double s_scale_factor;

    /// Shows the lens in a nested event loop. A null scroll area is the internal error "scroll_area != NULL", a null view
    /// "view != NULL".
    /// @param global_point the point of the press, on the screen
    static void magnifying(TOLV_ZOOM_SCROLL_AREA* scroll_area, TOLV_VIEW* view, QPoint global_point);

    /// Made by magnifying().
    TOLV_MAGNIFYING_GLASS_WIDGET(TOLV_ZOOM_SCROLL_AREA* scroll_area, TOLV_VIEW* view, QPoint global_point);
    ~TOLV_MAGNIFYING_GLASS_WIDGET() override;

    /// The square that holds a lens and its handle: from the upper left corner of the lens one and a half times as far as
    /// its diameter. All in pixels, rounded half away from zero.
    /// @param extra widens the lens
    static QRect get_bounding_box(const QPointF& centre, double radius, double extra);

protected:
    /// Takes presses, moves, the release and the wheel from the view.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void run();
    bool is_under_way() const;
    void follow_pointer(QMouseEvent* event);
    QPoint convert_to_widget_coordinate(const QPoint& global) const;
    void update_widget_geometry(const QPoint& center);
    QRectF get_lens_rect() const;
    QTransform get_lens_transform() const;
    void paint_handle();
    void paint_content(QPaintEvent* event);
    void paint_rim();

    QEventLoop* m_event_loop = nullptr;            ///< set while the lens is shown
    QPointer<TOLV_ZOOM_SCROLL_AREA> m_scroll_area; ///< the parent
    QPointer<TOLV_VIEW> m_view;                    ///< null once it is deleted
    QPoint m_center;                               ///< of the lens, in the coordinates of the scroll area
    double m_radius;                               ///< of the lens
};
