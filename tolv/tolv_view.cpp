#include "tolv_view.h"

#include "tolv_check.h"
#include "tolv_mem.h"
#include "tolv_view_arithmetic.h"

#include <QLabel>
#include <QPainter>
#include <QPrinter>
#include <QPropertyAnimation>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>
#include <cfloat>

TOLV_MEM_INITIALIZER();

namespace
{
/// A rectangle that spans no more than this in one direction is widened to be located, so that its shorter side
/// reaches twice WIDENED_SIDE less its own length.
constexpr int WIDEST_SMALL_SPAN = 48;
constexpr int WIDENED_SIDE = 50;

/// How often an extent fits into the largest size of a widget; 0 for one that is larger.
int get_quotient(int extent)
{
    return extent == 0 ? QWIDGETSIZE_MAX : QWIDGETSIZE_MAX / extent;
}

/// An extent in physical coordinates.
int scale_extent(int logical, float zoom)
{
    return tolv_truncate(float(logical) * zoom);
}

/// What is left on either side of content in the middle of an extent, the half pixel cut off.
int get_margin(int visible, int content)
{
    return tolv_truncate((double(visible) - content) / 2);
}

/// What Qt takes for the smallest size of a widget: the largest size itself would stand for none.
int limit_to_widget_size(int extent)
{
    return std::clamp(extent, 0, QWIDGETSIZE_MAX - 1);
}
} // namespace

// ---- Stretches in physical coordinates ------------------------------------------------------------------------------

TOLV_VIEW::TOLV_PHYSICAL_DRAWING_HANDLE::TOLV_PHYSICAL_DRAWING_HANDLE(QPainter* painter) : m_painter(painter)
{
    m_painter->save();
    m_painter->setTransform(QTransform());
}

TOLV_VIEW::TOLV_PHYSICAL_DRAWING_HANDLE::~TOLV_PHYSICAL_DRAWING_HANDLE()
{
    m_painter->restore();
}

// ---- Construction ---------------------------------------------------------------------------------------------------

TOLV_VIEW::TOLV_VIEW(QWidget* parent) : QWidget(parent), m_zoom_max(FLT_MAX), m_logical_rect(tolv_make_rect(0, 0, 0, 0))
{
    set_max(FLT_MAX);
    set_min(0.001F);
}

TOLV_VIEW::~TOLV_VIEW()
{
    emit about_to_be_deleted();
    hide(); // ends what goes on with the mouse while this is a view yet
}

// ---- What a host overrides ------------------------------------------------------------------------------------------

void TOLV_VIEW::paint(QPainter* /*painter*/, QPaintEvent* /*event*/, QWidget* /*widget*/, QRect /*rect*/,
                      bool /*printing*/)
{
}

void TOLV_VIEW::paint_birds_eye_view(QPainter* /*painter*/, QPaintEvent* /*event*/, QWidget* /*widget*/, QRect /*rect*/)
{
}

QRect TOLV_VIEW::get_selected_rect() const
{
    return {};
}

QRect TOLV_VIEW::get_viewport_rect() const
{
    for (QObject* ancestor = parent(); ancestor != nullptr; ancestor = ancestor->parent())
    {
        const auto* const area = static_cast<QScrollArea*>(ancestor->qt_metacast("QScrollArea"));
        if (area == nullptr)
            continue;
        const QPoint top_left(area->horizontalScrollBar()->value(), area->verticalScrollBar()->value());
        return {top_left, area->maximumViewportSize()};
    }
    return geometry();
}

bool TOLV_VIEW::is_rect_selection_enabled() const
{
    return true;
}

void TOLV_VIEW::do_rect_selection(const QRect& /*rect*/, const QPoint& /*point*/)
{
}

void TOLV_VIEW::selection_mode_no_mouse_gesture(QMouseEvent* /*event*/)
{
}

bool TOLV_VIEW::current_mode_supports_mouse_gesture(const QPoint& /*point*/)
{
    return false;
}

// ---- Zoom -----------------------------------------------------------------------------------------------------------

float TOLV_VIEW::zoom_in(float delta)
{
    TOLV_CHECK_TEXT(delta > 0.0F, "delta > 0.0f");
    const float old_zoom = m_zoom;
    const float new_zoom = set_zoom_internal(delta * old_zoom);
    update_transform();
    return new_zoom / old_zoom;
}

float TOLV_VIEW::zoom_out(float delta)
{
    TOLV_CHECK_TEXT(delta > 0.0F, "delta > 0.0f");
    return 1.0F / zoom_in(1.0F / delta);
}

void TOLV_VIEW::zoom_fit(const QSize& size)
{
    set_zoom_internal(std::min(float(size.width() - 1) / float(m_logical_rect.width()),
                               float(size.height() - 1) / float(m_logical_rect.height())));
    update_transform();
}

void TOLV_VIEW::set_zoom(float factor)
{
    TOLV_CHECK_TEXT(factor > 0.0F, "factor > 0.0f");
    set_zoom_internal(factor * m_zoom_scaling);
    update_transform();
}

void TOLV_VIEW::on_stop_animation_rect()
{
    if (m_animation_label_rect == nullptr)
        return;
    TOLV_CHECK_TEXT(m_animation_property != nullptr, "m_animation_property != NULL");
    m_animation_property->stop();
    m_animation_label_rect->hide();
}

void TOLV_VIEW::set_logical_size(const QRect& rect)
{
    m_logical_rect = rect;
    set_max(m_zoom_max);
    update_transform();
    emit update_birds_eye_view_size();
}

void TOLV_VIEW::set_min(float min)
{
    TOLV_CHECK_TEXT(min > 0.0F, "min > 0.0f");
    m_zoom_min = min;
}

void TOLV_VIEW::set_max(float max)
{
    TOLV_CHECK_TEXT(max > 0.0F, "max > 0.0f");
    const int limit = std::min(get_quotient(m_logical_rect.width()), get_quotient(m_logical_rect.height()));
    m_zoom_max = limit > 0 && max > float(limit) ? float(limit) : max;
}

void TOLV_VIEW::set_zoom_min_max(float min, float max)
{
    set_min(min * m_zoom_scaling);
    set_max(max * m_zoom_scaling);
}

void TOLV_VIEW::set_zoom_scaling(float zoom_scaling)
{
    TOLV_CHECK_TEXT(zoom_scaling > 0.0F, "zoom_scaling > 0.0f");
    const float ratio = zoom_scaling / m_zoom_scaling;
    set_min(ratio * m_zoom_min);
    set_max(ratio * m_zoom_max);
    m_zoom_scaling = zoom_scaling;
}

float TOLV_VIEW::set_zoom_internal(float zoom)
{
    m_zoom = m_zoom_min > zoom ? m_zoom_min : std::min(m_zoom_max, zoom);
    return m_zoom;
}

// ---- Transform ------------------------------------------------------------------------------------------------------

void TOLV_VIEW::update_transform()
{
    const int width = scale_extent(m_logical_rect.width(), m_zoom);
    const int height = scale_extent(m_logical_rect.height(), m_zoom);
    setMinimumSize(limit_to_widget_size(width), limit_to_widget_size(height));
    if (parentWidget() != nullptr)
        parentWidget()->updateGeometry();

    double tx = scale_extent(m_logical_rect.left(), m_zoom);
    double ty = scale_extent(m_logical_rect.top(), m_zoom);
    const QRect visible = get_viewport_rect();
    const QSize span = tolv_get_span(visible);
    if (width <= span.width())
        tx -= get_margin(visible.width(), width);
    if (height <= span.height())
        ty -= get_margin(visible.height(), height);
    m_transform = m_base_transform * QTransform(m_zoom, 0, 0, m_zoom, -tx, -ty);
    m_inverse_transform = m_transform.inverted();
}

float TOLV_VIEW::get_zoom() const
{
    return m_zoom;
}

float TOLV_VIEW::get_zoom_min() const
{
    return m_zoom_min;
}

float TOLV_VIEW::get_zoom_max() const
{
    return m_zoom_max;
}

float TOLV_VIEW::get_zoom_scaling() const
{
    return m_zoom_scaling;
}

float TOLV_VIEW::get_zoom_level() const
{
    return m_zoom / m_zoom_scaling;
}

QRect TOLV_VIEW::get_logical_rect() const
{
    return m_logical_rect;
}

const QTransform& TOLV_VIEW::get_transform() const
{
    return m_transform;
}

const QTransform& TOLV_VIEW::get_inverse_transform() const
{
    return m_inverse_transform;
}

bool TOLV_VIEW::is_magnifying() const
{
    return m_magnifying;
}

QRect TOLV_VIEW::get_magnifying_rect() const
{
    return m_magnifying_rect;
}

QPoint TOLV_VIEW::get_physical(const QPoint& logical) const
{
    return m_transform.map(logical);
}

QRect TOLV_VIEW::get_physical(const QRect& logical) const
{
    return m_transform.mapRect(logical);
}

QPoint TOLV_VIEW::get_logical(const QPoint& physical) const
{
    return m_inverse_transform.map(physical);
}

QRect TOLV_VIEW::get_logical(const QRect& physical) const
{
    return m_inverse_transform.mapRect(physical);
}

QSize TOLV_VIEW::get_logical(const QSize& physical) const
{
    return {tolv_truncate(float(physical.width()) / m_zoom), tolv_truncate(float(physical.height()) / m_zoom)};
}

// ---- Painting -------------------------------------------------------------------------------------------------------

void TOLV_VIEW::adjust_painter(QPainter* painter) const
{
    painter->setTransform(m_transform, false);
}

void TOLV_VIEW::adjust_painter(QPainter* painter, const QPrinter* printer) const
{
    const QRect page = printer->pageLayout().paintRectPixels(printer->resolution());
    const float scale = std::min(float(page.width()) / float(m_logical_rect.width() + 1),
                                 float(page.height()) / float(m_logical_rect.height() + 1));
    // The place on the page is scaled along with the content; this is meant.
    const float dx = float(page.left() - m_logical_rect.left()) * scale;
    const float dy = float(page.top() - m_logical_rect.top()) * scale;
    painter->setTransform(QTransform(scale, 0, 0, scale, dx, dy), false);
}

void TOLV_VIEW::adjust_size_to_ratio(double ratio, QSize& size)
{
    if (!(ratio > 0.0))
        return;
    const double height = size.width() * ratio;
    const double width = size.height() / ratio;
    const bool is_high = ratio >= 1.0 ? height >= size.height() : width < size.width();
    if (is_high)
        size.setHeight(tolv_truncate(height));
    else
        size.setWidth(tolv_truncate(width));
}

void TOLV_VIEW::paintEvent(QPaintEvent* event)
{
    QPainter painter(this);
    adjust_painter(&painter);
    paint(&painter, event, this, rect(), false);
}

void TOLV_VIEW::resizeEvent(QResizeEvent* event)
{
    update_transform();
    QWidget::resizeEvent(event);
}

// ---- Locating -------------------------------------------------------------------------------------------------------

void TOLV_VIEW::animate_selection_rect(const QRect& rect, const QColor& color, int duration_ms)
{
    if (m_animation_label_rect == nullptr)
        create_animation();
    QPalette palette = m_animation_label_rect->palette();
    palette.setBrush(m_animation_label_rect->backgroundRole(), QBrush(color));
    palette.setBrush(m_animation_label_rect->foregroundRole(), QBrush(color));
    m_animation_label_rect->setPalette(palette);

    QRect start = rect;
    const QRect visible = get_viewport_rect();
    if (start.width() >= visible.width() / 10 && start.height() >= visible.height() / 10)
    {
        m_animation_label_rect->hide(); // where it may be from another rectangle
    }
    else
    {
        const QSize span = tolv_get_span(start);
        if (span.width() <= WIDEST_SMALL_SPAN || span.height() <= WIDEST_SMALL_SPAN)
        {
            const int margin = WIDENED_SIDE - std::min(start.width(), start.height());
            start.adjust(-margin, -margin, margin, margin);
        }
        show_animation_label(start);
    }

    const QPoint centre((start.left() + start.right()) / 2, (start.top() + start.bottom()) / 2);
    m_animation_property->setCurrentTime(0);
    m_animation_property->setDuration(std::max(0, duration_ms));
    m_animation_property->setStartValue(start);
    m_animation_property->setEndValue(QRect(centre, QSize(0, 0)));
    m_animation_property->start(QAbstractAnimation::KeepWhenStopped);
}

void TOLV_VIEW::create_animation()
{
    m_animation_label_rect = new QLabel(QStringLiteral("Hid"), this);
    TOLV_CHECK_TEXT(m_animation_label_rect != nullptr, "Failed to construct m_animation_label_rect.");
    m_animation_label_rect->setFrameStyle(QFrame::Box);
    m_animation_label_rect->setAutoFillBackground(true);
    m_animation_label_rect->setAttribute(Qt::WA_TransparentForMouseEvents); // hover and clicks go to the view below
    m_animation_property = new QPropertyAnimation(m_animation_label_rect, "geometry", this);
    TOLV_CHECK_TEXT(m_animation_property != nullptr, "Failed to construct m_animation_property.");
}

void TOLV_VIEW::show_animation_label(const QRect& rect)
{
    m_animation_label_rect->resize(rect.size());
    m_animation_label_rect->adjustSize();
    m_animation_label_rect->move(rect.topLeft());
    m_animation_label_rect->show();
}
