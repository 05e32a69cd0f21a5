#include "tolv_graphics_view.h"

#include "cfg.h"
#include "gen.h"
#include "tolv_birds_eye_view.h"
#include "tolv_check.h"
#include "tolv_font.h"
#include "tolv_global.h"
#include "tolv_graphics_scene.h"
#include "tolv_icon.h"
#include "tolv_mem.h"
#include "tolv_perf_debug.h"
#include "tolv_viewport.h"

#include <QAction>
#include <QPaintEvent>
#include <QPainter>
#include <QTextOption>

#include <algorithm>

TOLV_MEM_INITIALIZER();

namespace
{
constexpr quint64 LONGEST_TIME_IN_USEC = 10000;
/// Where the text of the display begins, in the viewport.
constexpr QRectF TEXT_PLACE(10, 10, 10, 10);
constexpr double DISPLAY_OPACITY = 0.7;
/// How much further than the display the part on its right is painted anew when the view scrolls.
constexpr int RIGHT_MARGIN = 19;
} // namespace

TOLV_GRAPHICS_VIEW::TOLV_GRAPHICS_VIEW(QWidget* parent)
    : QGraphicsView(parent), m_paint_start_usec(gen_get_usec_wallclock())
{
    auto* const own_viewport = new TOLV_VIEWPORT;
    own_viewport->perf_debug()->clear();
    own_viewport->setBackgroundRole(QPalette::Base); // as the viewport of a scroll area has it by itself
    own_viewport->setAutoFillBackground(true);
    setViewport(own_viewport);
}

TOLV_GRAPHICS_VIEW::~TOLV_GRAPHICS_VIEW() = default;

// ---- Bird's eye view ------------------------------------------------------------------------------------------------

void TOLV_GRAPHICS_VIEW::create_birds_eye_view()
{
    TOLV_CHECK_TEXT(scene() != nullptr, "scene()!=nullptr");
    if (scene() == nullptr)
        return;
    if (m_birds_eye_view != nullptr)
    {
        m_birds_eye_view->hide();
        m_birds_eye_view->deleteLater(); // a rectangle may just be drawn in it
    }
    m_birds_eye_view = new TOLV_BIRDS_EYE_VIEW(qobject_cast<TOLV_GRAPHICS_SCENE*>(scene()), this);
    create_birds_eye_view_action();
}

void TOLV_GRAPHICS_VIEW::create_birds_eye_view_action()
{
    TOLV_BIRDS_EYE_VIEW* const dock = m_birds_eye_view;
    delete m_birds_eye_view_action.data();
    auto* const action = new QAction(tolv_get_icon(TOLV_BIRDS_EYE_VIEW_ICON), QStringLiteral("Bird's Eye View"), this);
    m_birds_eye_view_action = action;
    action->setToolTip(QStringLiteral("Open birds eye view"));
    action->setEnabled(true);
    action->setCheckable(true);
    action->setChecked(false);
    TOLV_SAFE_CONNECT(action, SIGNAL(triggered(bool)), dock, SLOT(setVisible(bool)));
    // So the action always shows the dock and never hides it; this is meant.
    connect(action, &QAction::triggered, dock, [dock, action] { dock->set_visible_and_raise(action); });
    TOLV_SAFE_CONNECT(dock, SIGNAL(dock_widget_active_state_changed(bool)), action, SLOT(setChecked(bool)));
}

TOLV_BIRDS_EYE_VIEW* TOLV_GRAPHICS_VIEW::get_birds_eye_view() const
{
    return m_birds_eye_view;
}

QAction* TOLV_GRAPHICS_VIEW::get_birds_eye_view_action() const
{
    return m_birds_eye_view_action;
}

void TOLV_GRAPHICS_VIEW::focus_on_scene_rect(const QRectF& rect)
{
    fitInView(rect, Qt::KeepAspectRatio);
}

void TOLV_GRAPHICS_VIEW::preset_bev_transform(const QTransform& transform, bool combine)
{
    TOLV_CHECK(m_birds_eye_view != nullptr);
    if (m_birds_eye_view == nullptr)
        return;
    TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET* const overview = m_birds_eye_view->get_graphics_view_widget();
    overview->setTransform(transform, combine);
    overview->set_default_transform(overview->transform());
    viewport()->update(); // which tells the overview where the visible part now is
}

void TOLV_GRAPHICS_VIEW::combine_with_default_bev_transform(const QTransform& transform)
{
    TOLV_CHECK(m_birds_eye_view != nullptr);
    if (m_birds_eye_view == nullptr)
        return;
    TOLV_BIRDS_EYE_GRAPHICS_VIEW_WIDGET* const overview = m_birds_eye_view->get_graphics_view_widget();
    overview->setTransform(overview->get_default_transform() * transform, false);
    viewport()->update(); // as above
}

void TOLV_GRAPHICS_VIEW::update_birds_eye_view()
{
    TOLV_CHECK(m_birds_eye_view != nullptr);
    if (m_birds_eye_view != nullptr)
        m_birds_eye_view->get_graphics_view_widget()->viewport()->update();
}

void TOLV_GRAPHICS_VIEW::hide_birds_eye_view()
{
    TOLV_CHECK(m_birds_eye_view != nullptr);
    if (m_birds_eye_view != nullptr)
        m_birds_eye_view->hide();
}

void TOLV_GRAPHICS_VIEW::set_bev_source_graphics_view(TOLV_GRAPHICS_VIEW* gv)
{
    TOLV_CHECK(gv != nullptr);
    if (gv != nullptr && m_birds_eye_view != nullptr)
        m_birds_eye_view->get_graphics_view_widget()->set_source_graphics_view(gv);
}

// ---- Painting -------------------------------------------------------------------------------------------------------

void TOLV_GRAPHICS_VIEW::paintEvent(QPaintEvent* e)
{
    static const bool shows_performance = cfg_is_on("tolv_graphics_view_perf_debug");
    show_focus_in_birds_eye_view();
    clear_performance_info();
    m_paint_start_usec = gen_get_usec_wallclock();
    QGraphicsView::paintEvent(e);
    if (shows_performance)
        paint_perf_debug(e);
}

void TOLV_GRAPHICS_VIEW::show_focus_in_birds_eye_view()
{
    if (scene() == nullptr || m_birds_eye_view == nullptr)
        return;
    m_birds_eye_view->get_graphics_view_widget()->set_focus_rect(mapToScene(viewport()->contentsRect()).boundingRect());
}

void TOLV_GRAPHICS_VIEW::clear_performance_info()
{
    if (const auto* const own_viewport = qobject_cast<TOLV_VIEWPORT*>(viewport()); own_viewport != nullptr)
        own_viewport->perf_debug()->clear();
}

QString TOLV_GRAPHICS_VIEW::get_performance_text(const QRect& painted) const
{
    QString text = QStringLiteral("Painting performance:");
    text += QStringLiteral("\nQPaintEvent::rect(): (%1, %2), (%3, %4)")
                .arg(painted.left())
                .arg(painted.top())
                .arg(painted.right())
                .arg(painted.bottom());
    text += get_paint_time_text(gen_get_usec_wallclock() - m_paint_start_usec);
    if (const auto* const own_viewport = qobject_cast<TOLV_VIEWPORT*>(viewport()); own_viewport != nullptr)
        text += QString::fromStdString(own_viewport->perf_debug()->get_performance_info_string());
    return text;
}

QString TOLV_GRAPHICS_VIEW::get_paint_time_text(quint64 elapsed_usec)
{
    const bool is_long = elapsed_usec > LONGEST_TIME_IN_USEC;
    return QStringLiteral("\nQGraphicsView::paintEvent: %1 %2, %3 fps")
        .arg(is_long ? elapsed_usec / 1000 : elapsed_usec)
        .arg(is_long ? QStringLiteral("msec") : QStringLiteral("usec"))
        .arg(1000000 / std::max<quint64>(elapsed_usec, 1)); // the clock may stand still for a small paint
}

void TOLV_GRAPHICS_VIEW::paint_perf_debug(QPaintEvent* e)
{
    const QString text = get_performance_text(e->rect());
    QPainter painter(viewport());
    painter.setFont(*TOLV_FONT(TOLV_GUI_FONT).get_font());
    painter.setOpacity(1.0);
    painter.setPen(QPen(Qt::black, 0, Qt::SolidLine));
    const QRectF text_rect = painter.boundingRect(TEXT_PLACE, Qt::AlignLeft, text);
    m_perf_overlay_rect = QRectF(text_rect.x() - 2, text_rect.y() - 1, text_rect.width() + 4, text_rect.height() + 2);
    painter.setOpacity(DISPLAY_OPACITY);
    painter.fillRect(m_perf_overlay_rect.toRect(), Qt::white);
    painter.setOpacity(1.0);
    painter.drawText(text_rect, text, QTextOption());
}

void TOLV_GRAPHICS_VIEW::scrollContentsBy(int dx, int dy)
{
    QGraphicsView::scrollContentsBy(dx, dy);
    // The display stays where it is, while its pixels have been moved along with all others.
    viewport()->update(m_perf_overlay_rect.translated(dx, dy).toRect());
    QRect in_place = m_perf_overlay_rect.toRect();
    in_place.setRight(in_place.x() + in_place.width() + RIGHT_MARGIN);
    viewport()->update(in_place);
}
