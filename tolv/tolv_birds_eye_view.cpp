#include "tolv_birds_eye_view.h"

#include "tolv_check.h"
#include "tolv_global.h"
#include "tolv_graphics_scene.h"
#include "tolv_mem.h"
#include "tolv_view.h"
#include "tolv_view_arithmetic.h"
#include "tolv_zoom_scroll_area.h"
#include "ui_tolv_birds_eye_view_titlebar.h"

#include <QEvent>
#include <QScrollBar>

TOLV_MEM_INITIALIZER();

TOLV_BIRDS_EYE_VIEW::TOLV_BIRDS_EYE_VIEW(TOLV_ZOOM_SCROLL_AREA* scroll_area, TOLV_VIEW* view)
    : TOLV_DOCK_WIDGET(QStringLiteral("Bird's Eye View"), scroll_area), m_is_view_mode(true),
      m_birds_eye_view(new TOLV_BIRDS_EYE_VIEW_WIDGET(scroll_area, view, this)),
      m_titlebar(new TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET(view, this))
{
    setup(m_birds_eye_view);
    update_titlebar_button_status();
    TOLV_SAFE_CONNECT(this, SIGNAL(topLevelChanged(bool)), this, SLOT(on_top_level_changed(bool)));
}

TOLV_BIRDS_EYE_VIEW::TOLV_BIRDS_EYE_VIEW(TOLV_GRAPHICS_SCENE* scene, QWidget* parent)
    : TOLV_DOCK_WIDGET(QStringLiteral("Bird's Eye View"), parent), m_is_view_mode(false),
      m_birds_eye_graphics_view(new TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET(scene, this)),
      m_titlebar(new TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET(scene, this))
{
    setup(m_birds_eye_graphics_view);
    setFixedSize(TOLV_BIRDS_EYE_VIEW::sizeHint());
    update_titlebar_button_status();
    TOLV_SAFE_CONNECT(this, SIGNAL(topLevelChanged(bool)), this, SLOT(on_top_level_changed(bool)));
    if (const auto* const area = qobject_cast<QAbstractScrollArea*>(parent); area != nullptr)
        area->viewport()->installEventFilter(this);
}

TOLV_BIRDS_EYE_VIEW::~TOLV_BIRDS_EYE_VIEW() = default;

void TOLV_BIRDS_EYE_VIEW::setup(QWidget* body)
{
    setMinimumWidth(0); // a tall drawing has an overview that is narrower than a dock window otherwise is
    setFeatures(QDockWidget::DockWidgetMovable);
    setFeatures(QDockWidget::DockWidgetClosable); // and nothing else: it is moved by its own title bar
    setAllowedAreas(Qt::AllDockWidgetAreas);
    setWidget(body);
    setAutoFillBackground(true);
    setTitleBarWidget(m_titlebar);
    connect_buttons();
}

void TOLV_BIRDS_EYE_VIEW::connect_buttons()
{
    const auto& ui = *m_titlebar->m_ui;
    for (const QToolButton* const button : {ui.m_goto_bottom_right_button, ui.m_goto_bottom_left_button,
                                            ui.m_goto_top_right_button, ui.m_goto_top_left_button})
        TOLV_SAFE_CONNECT(button, SIGNAL(clicked()), this, SLOT(do_move_widget_to_diagonal()));
    TOLV_SAFE_CONNECT(ui.m_goto_top_button, SIGNAL(clicked()), this, SLOT(do_move_widget_to_top()));
    TOLV_SAFE_CONNECT(ui.m_goto_bottom_button, SIGNAL(clicked()), this, SLOT(do_move_widget_to_bottom()));
    TOLV_SAFE_CONNECT(ui.m_goto_right_button, SIGNAL(clicked()), this, SLOT(do_move_widget_to_right()));
    TOLV_SAFE_CONNECT(ui.m_goto_left_button, SIGNAL(clicked()), this, SLOT(do_move_widget_to_left()));
    TOLV_SAFE_CONNECT(ui.m_close_button, SIGNAL(clicked(bool)), this, SLOT(setVisible(bool)));
    TOLV_SAFE_CONNECT(m_titlebar, SIGNAL(update_parent_geometry(QPoint)), this, SLOT(do_update_geometry(QPoint)));
}

QSize TOLV_BIRDS_EYE_VIEW::get_size() const
{
    TOLV_CHECK_TEXT(m_titlebar != nullptr, "m_titlebar != NULL");
    if (m_is_view_mode)
        TOLV_CHECK_TEXT(m_birds_eye_view != nullptr, "m_birds_eye_view != NULL");
    else
        TOLV_CHECK_TEXT(m_birds_eye_graphics_view != nullptr, "m_birds_eye_graphics_view != NULL");
    const QSize titlebar_size = m_titlebar->get_size();
    const QSize bird_eye_view_size =
        m_is_view_mode ? m_birds_eye_view->get_size() : m_birds_eye_graphics_view->get_size();
    TOLV_CHECK(titlebar_size.width() == bird_eye_view_size.width());
    return {titlebar_size.width(), titlebar_size.height() + bird_eye_view_size.height()};
}

QSize TOLV_BIRDS_EYE_VIEW::sizeHint() const
{
    return get_size();
}

BIRDS_EYE_VIEW_LOCATION TOLV_BIRDS_EYE_VIEW::get_location() const
{
    return m_location;
}

TOLV_BIRDS_EYE_VIEW_WIDGET* TOLV_BIRDS_EYE_VIEW::get_view_widget() const
{
    return m_birds_eye_view;
}

TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET* TOLV_BIRDS_EYE_VIEW::get_graphics_view_widget() const
{
    return m_birds_eye_graphics_view;
}

// ---- Place ----------------------------------------------------------------------------------------------------------

void TOLV_BIRDS_EYE_VIEW::update_geometry(const QRect& rect, int width, int height)
{
    // Right and bottom are exclusive here; this is meant.
    const int right_left = rect.right() - width;
    const int bottom_top = rect.bottom() - height;
    QPoint top_left = rect.topLeft();
    switch (m_location)
    {
    case BIRDS_EYE_TOP_LEFT:
        break;
    case BIRDS_EYE_TOP_RIGHT:
        top_left.setX(right_left);
        break;
    case BIRDS_EYE_BOTTOM_LEFT:
        top_left.setY(bottom_top);
        break;
    case BIRDS_EYE_BOTTOM_RIGHT:
        top_left = QPoint(right_left, bottom_top);
        break;
    default:
        report_unsupported_location(m_location);
        return;
    }
    setGeometry(QRect(top_left, QSize(width, height)));
}

void TOLV_BIRDS_EYE_VIEW::update_titlebar_button_status()
{
    m_titlebar->show_moves(m_location);
}

QWidget* TOLV_BIRDS_EYE_VIEW::get_host() const
{
    if (m_is_view_mode)
    {
        TOLV_CHECK_TEXT(m_birds_eye_view != nullptr, "m_birds_eye_view != NULL");
        return m_birds_eye_view->get_scroll_area();
    }
    TOLV_CHECK_TEXT(parentWidget() != nullptr, "parentWidget() != NULL");
    return parentWidget();
}

QRect TOLV_BIRDS_EYE_VIEW::get_scroll_area_visible_rect() const
{
    const QWidget* const host = get_host();
    if (host == nullptr)
        return {};
    int right = host->width() - 1;
    int bottom = host->height() - 1;
    if (const auto* const area = qobject_cast<const QAbstractScrollArea*>(host); area != nullptr)
    {
        if (area->verticalScrollBar()->isVisible())
            right -= area->verticalScrollBar()->width();
        if (area->horizontalScrollBar()->isVisible())
            bottom -= area->horizontalScrollBar()->height();
    }
    return tolv_make_rect(0, 0, right, bottom);
}

void TOLV_BIRDS_EYE_VIEW::move_to_location(BIRDS_EYE_VIEW_LOCATION location, const QRect& rect)
{
    m_location = location;
    update_geometry(rect, width(), height());
    update_titlebar_button_status();
}

BIRDS_EYE_VIEW_LOCATION TOLV_BIRDS_EYE_VIEW::report_unsupported_location(BIRDS_EYE_VIEW_LOCATION location)
{
    TOLV_CHECK_TEXT(false, "Unsupported bird's eye view location enum");
    return location;
}

void TOLV_BIRDS_EYE_VIEW::do_move_widget_to_left()
{
    if (m_location != BIRDS_EYE_TOP_RIGHT && m_location != BIRDS_EYE_BOTTOM_RIGHT)
    {
        report_unsupported_location(m_location);
        return;
    }
    const QRect visible = get_scroll_area_visible_rect();
    // As right and bottom are exclusive, y() + height() keeps the place.
    move_to_location(m_location == BIRDS_EYE_TOP_RIGHT ? BIRDS_EYE_TOP_LEFT : BIRDS_EYE_BOTTOM_LEFT,
                     tolv_make_rect(visible.left(), y(), visible.right(), y() + height()));
}

void TOLV_BIRDS_EYE_VIEW::do_move_widget_to_right()
{
    if (m_location != BIRDS_EYE_TOP_LEFT && m_location != BIRDS_EYE_BOTTOM_LEFT)
    {
        report_unsupported_location(m_location);
        return;
    }
    const QRect visible = get_scroll_area_visible_rect();
    move_to_location(m_location == BIRDS_EYE_TOP_LEFT ? BIRDS_EYE_TOP_RIGHT : BIRDS_EYE_BOTTOM_RIGHT,
                     tolv_make_rect(visible.left(), y(), visible.right(), y() + height()));
}

void TOLV_BIRDS_EYE_VIEW::do_move_widget_to_top()
{
    if (m_location != BIRDS_EYE_BOTTOM_LEFT && m_location != BIRDS_EYE_BOTTOM_RIGHT)
    {
        report_unsupported_location(m_location);
        return;
    }
    const QRect visible = get_scroll_area_visible_rect();
    move_to_location(m_location == BIRDS_EYE_BOTTOM_LEFT ? BIRDS_EYE_TOP_LEFT : BIRDS_EYE_TOP_RIGHT,
                     tolv_make_rect(x(), visible.top(), x() + width(), visible.bottom()));
}

void TOLV_BIRDS_EYE_VIEW::do_move_widget_to_bottom()
{
    if (m_location != BIRDS_EYE_TOP_LEFT && m_location != BIRDS_EYE_TOP_RIGHT)
    {
        report_unsupported_location(m_location);
        return;
    }
    const QRect visible = get_scroll_area_visible_rect();
    move_to_location(m_location == BIRDS_EYE_TOP_LEFT ? BIRDS_EYE_BOTTOM_LEFT : BIRDS_EYE_BOTTOM_RIGHT,
                     tolv_make_rect(x(), visible.top(), x() + width(), visible.bottom()));
}

void TOLV_BIRDS_EYE_VIEW::do_move_widget_to_diagonal()
{
    if (m_location < BIRDS_EYE_TOP_LEFT || m_location > BIRDS_EYE_BOTTOM_RIGHT)
    {
        report_unsupported_location(m_location);
        return;
    }
    // The values of opposite corners add up.
    move_to_location(BIRDS_EYE_VIEW_LOCATION(BIRDS_EYE_BOTTOM_RIGHT - m_location), get_scroll_area_visible_rect());
}

void TOLV_BIRDS_EYE_VIEW::do_update_geometry(QPoint global_point)
{
    const QWidget* const host = get_host();
    if (host == nullptr)
        return;
    const QRect visible = get_scroll_area_visible_rect();
    const QPoint point = host->mapFromGlobal(global_point);
    const QRect rect(point, size());
    if (!visible.contains(rect))
        return;
    setGeometry(rect);
    m_location = get_quadrant(visible, point);
    update_titlebar_button_status();
}

BIRDS_EYE_VIEW_LOCATION TOLV_BIRDS_EYE_VIEW::get_quadrant(const QRect& visible, const QPoint& point) const
{
    const int half_width = visible.width() / 2;
    const int half_height = visible.height() / 2;
    const bool is_left = point.x() <= visible.left() + half_width - 1;
    const bool is_top = point.y() <= visible.top() + half_height - 1;
    // The centre lines belong to neither half.
    const bool is_right = point.x() >= visible.left() + half_width + 1;
    const bool is_bottom = point.y() >= visible.top() + half_height + 1;
    if (is_left && is_top)
        return BIRDS_EYE_TOP_LEFT;
    if (is_right && is_top)
        return BIRDS_EYE_TOP_RIGHT;
    return is_left && is_bottom ? BIRDS_EYE_BOTTOM_LEFT : BIRDS_EYE_BOTTOM_RIGHT;
}

void TOLV_BIRDS_EYE_VIEW::update_geometry()
{
    const QSize size = get_size().expandedTo(minimumSize()); // the buttons need their width over a narrow drawing, too
    update_geometry(get_scroll_area_visible_rect(), size.width(), size.height());
}

void TOLV_BIRDS_EYE_VIEW::on_top_level_changed(bool top_level)
{
    if (!top_level)
        setGeometry(QRect(QPoint(0, 0), size()));
}

bool TOLV_BIRDS_EYE_VIEW::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize && !isWindow())
        update_geometry(get_scroll_area_visible_rect(), width(), height());
    return TOLV_DOCK_WIDGET::eventFilter(watched, event);
}
