#pragma once

#include "tolv_export.h"

#include <QRect>
#include <QTransform>
#include <QWidget>

class QLabel;
class QMouseEvent;
class QPrinter;
class QPropertyAnimation;

/// The base class of every zoomable drawing: a widget inside of a TOLV_ZOOM_SCROLL_AREA that keeps the rectangle of its
/// content, a zoom factor with limits, and the transform between the two kinds of coordinates. Logical coordinates are
/// the integers that the host draws in; physical coordinates are pixels of this widget.
///
/// A host derives from it, overrides paint() and what it needs of the selection, and calls in this order: constructor,
/// set_logical_size(), if wanted set_zoom_scaling() and set_zoom_min_max(), then TOLV_ZOOM_SCROLL_AREA::set_view(), which
/// takes care of scrolling. The view itself knows nothing of scroll bars but what get_viewport_rect() reads.
///
/// The raw zoom factor is physical pixels per logical unit. The scaling is the raw factor that counts as 100 percent to
/// the user, whose level is the raw factor divided by the scaling.
class TOLV_EXPORT TOLV_VIEW : public QWidget
{
    Q_OBJECT

public:
    /// A stretch of painting in physical coordinates, within a painter that has the transform of the view: the
    /// constructor saves the painter and takes its transform away, the destructor restores the painter.
    class TOLV_EXPORT TOLV_PHYSICAL_DRAWING_HANDLE
    {
    public:
        /// The painter must outlive the handle.
        explicit TOLV_PHYSICAL_DRAWING_HANDLE(QPainter* painter);
        ~TOLV_PHYSICAL_DRAWING_HANDLE();
        TOLV_PHYSICAL_DRAWING_HANDLE(const TOLV_PHYSICAL_DRAWING_HANDLE&) = delete;
        TOLV_PHYSICAL_DRAWING_HANDLE& operator=(const TOLV_PHYSICAL_DRAWING_HANDLE&) = delete;

    private:
        QPainter* m_painter;
    };

    /// A view of the one logical unit at (0, 0), with a raw zoom of 1, limits 0.001 and 16777215, and a scaling of 1.
    explicit TOLV_VIEW(QWidget* parent = nullptr);
    ~TOLV_VIEW() override;

    // ---- What a host overrides ----

    /// Draws the content; nothing here. paintEvent() calls it for the screen, TOLV_MAGNIFYING_GLASS_WIDGET for its lens
    /// (see is_magnifying()), a host's own code for paper.
    /// @param painter  already has the transform that brings logical coordinates to where they belong
    /// @param event    the paint event; its region is in pixels of `widget`, or of the lens
    /// @param widget   the view
    /// @param rect     the whole rectangle that is painted on, in pixels
    /// @param printing whether it is for paper; the library passes false
    virtual void paint(QPainter* painter, QPaintEvent* event, QWidget* widget, QRect rect, bool printing);
    /// Draws the content into the bird's eye view; nothing here. The painter already has the transform from logical
    /// coordinates, and `rect` is in pixels of the overview.
    virtual void paint_birds_eye_view(QPainter* painter, QPaintEvent* event, QWidget* widget, QRect rect);
    /// The bounds of what is selected, logical. A rectangle that is not valid, as the default QRect() here, for none.
    virtual QRect get_selected_rect() const;
    /// The part of the view that the scroll area around it shows, physical, as if there were no scroll bars; without a
    /// scroll area the geometry of the widget.
    virtual QRect get_viewport_rect() const;
    /// Whether a stroke to the south-east selects what is in its rectangle, rather than zooming; true here.
    virtual bool is_rect_selection_enabled() const;
    /// Selects what is in a rectangle, physical; nothing here.
    /// @param point where the stroke ended
    virtual void do_rect_selection(const QRect& rect, const QPoint& point);
    /// A click, or a press that is no stroke, where current_mode_supports_mouse_gesture(); nothing here.
    virtual void selection_mode_no_mouse_gesture(QMouseEvent* event);
    /// Whether a press at a physical point, with no tool chosen, may begin a stroke; false here, so that presses reach
    /// the view as ever.
    virtual bool current_mode_supports_mouse_gesture(const QPoint& point);

public slots:
    /// Multiplies the raw zoom by `delta`, within the limits. Returns the ratio that was really applied: 1 at a limit.
    /// A delta that is not above 0 is the internal error "delta > 0.0f", as it is in zoom_out().
    virtual float zoom_in(float delta = 1.25F);
    /// Divides the raw zoom by `delta`; the ratio returned is above 1 where it became smaller.
    virtual float zoom_out(float delta = 1.25F);
    /// Sets the raw zoom so that all content fits into `size` pixels, within the limits; the scaling has no part in it.
    virtual void zoom_fit(const QSize& size);
    /// Sets the zoom to a level of the user, 1 for 100 percent, within the limits. A factor that is not above 0 is the
    /// internal error "factor > 0.0f".
    virtual void set_zoom(float factor);

    /// Ends the animation of animate_selection_rect() and hides its label. For the host to connect to what ends the
    /// highlight.
    void on_stop_animation_rect();

signals:
    /// The logical rectangle has changed, and with it the proportions of an overview.
    void update_birds_eye_view_size();
    /// The view is being deleted, and still a view; the host's part of it is gone.
    void about_to_be_deleted();

public:
    /// Sets the bounds of the content, logical, and lowers the maximum of the zoom where the widget would become too
    /// large; it does not rise again when the content shrinks.
    void set_logical_size(const QRect& rect);
    /// The limits of the raw zoom. Not above 0 is the internal error "min > 0.0f" or "max > 0.0f". The maximum is no
    /// higher than keeps the widget below Qt's largest size of a widget, 16777215. The zoom itself is not touched.
    void set_min(float min);
    void set_max(float max);
    /// The same as levels of the user.
    void set_zoom_min_max(float min, float max);
    /// Sets what counts as 100 percent. The limits change along, so that they keep their levels; the raw zoom stays, and
    /// the user's level changes. Not above 0 is the internal error "zoom_scaling > 0.0f".
    void set_zoom_scaling(float zoom_scaling);
    /// Sets the raw zoom within the limits and returns it. The transform is not touched: call update_transform().
    float set_zoom_internal(float zoom);
    /// Brings the transform and the minimum size of the widget in line with zoom, content and surroundings. Content
    /// smaller than the visible part is centred.
    void update_transform();

    /// Raw zoom, its limits, and the scaling.
    float get_zoom() const;
    float get_zoom_min() const;
    float get_zoom_max() const;
    float get_zoom_scaling() const;
    /// The level that the user sees, 1 for 100 percent.
    float get_zoom_level() const;
    /// The bounds of the content.
    QRect get_logical_rect() const;
    /// From logical to physical, and back.
    const QTransform& get_transform() const;
    const QTransform& get_inverse_transform() const;
    /// Whether paint() runs for a magnifying lens, and the rectangle of that lens in its own pixels; the default QRect()
    /// otherwise.
    bool is_magnifying() const;
    QRect get_magnifying_rect() const;

    /// Maps a place or a rectangle by the transform.
    QPoint get_physical(const QPoint& logical) const;
    QRect get_physical(const QRect& logical) const;
    /// Maps a place or a rectangle by the inverse transform.
    QPoint get_logical(const QPoint& physical) const;
    QRect get_logical(const QRect& physical) const;
    /// Each side divided by the raw zoom and cut off.
    QSize get_logical(const QSize& physical) const;

    /// Makes a painter on this widget draw in logical coordinates.
    void adjust_painter(QPainter* painter) const;
    /// Makes a painter on paper draw in logical coordinates, all content on the printable part of the page.
    void adjust_painter(QPainter* painter, const QPrinter* printer) const;
    /// Makes a size grow in one direction, never shrink, to a ratio of height by width. Nothing for a ratio that is not
    /// above 0.
    static void adjust_size_to_ratio(double ratio, QSize& size);

    /// Draws the user's eye to a rectangle, physical: a filled label shrinks from it to its centre. A small rectangle is
    /// widened; none is shown for one that is a tenth of the visible part or more in both directions, which is seen
    /// without. An animation under way is begun anew. The mouse goes through the label.
    void animate_selection_rect(const QRect& rect, const QColor& color, int duration_ms);

protected:
    /// Calls paint() with a painter that draws in logical coordinates.
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

    QTransform m_base_transform; ///< comes before the zoom; the identity unless a host sets another one

private:
    friend class TOLV_MAGNIFYING_GLASS_WIDGET; // marks the paint that it asks for

    void create_animation();
    void show_animation_label(const QRect& rect);

    QTransform m_transform;
    QTransform m_inverse_transform;
    float m_zoom_min = 0.001F;
    float m_zoom_max;
    float m_zoom = 1.0F;
    float m_zoom_scaling = 1.0F;
    QRect m_logical_rect;
    bool m_magnifying = false;
    QRect m_magnifying_rect;
    QLabel* m_animation_label_rect = nullptr; ///< null, as is the next one, until there was an animation
    QPropertyAnimation* m_animation_property = nullptr;
};
