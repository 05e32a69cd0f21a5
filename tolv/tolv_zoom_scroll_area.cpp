#include "tolv_zoom_scroll_area.h"

#include "tolv_birds_eye_view.h"
#include "tolv_check.h"
#include "tolv_create_action.h"
#include "tolv_global.h"
#include "tolv_mem.h"
#include "tolv_set_zoom_dlg.h"
#include "tolv_tool_bar.h"
#include "tolv_view.h"
#include "tolv_view_arithmetic.h"

#include <QAction>
#include <QActionGroup>
#include <QComboBox>
#include <QCoreApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTimer>

#include <algorithm>

TOLV_MEM_INITIALIZER();

namespace
{
/// More steps than any zoom needs that comes to an end at all.
constexpr int MOST_STEPS_TO_SELECTION = 64;
} // namespace

// ---- Construction ---------------------------------------------------------------------------------------------------

TOLV_ZOOM_SCROLL_AREA::TOLV_ZOOM_SCROLL_AREA(QWidget* parent)
    : QScrollArea(parent), m_zoom_tool_action(tolv_create_action(TOLV_ZOOM_TOOL_ACTION, this)),
      m_pan_tool_action(tolv_create_action(TOLV_PAN_TOOL_ACTION, this)),
      m_zoom_fit_action(tolv_create_action(TOLV_ZOOM_FIT_ACTION, this)),
      m_zoom_selection_action(tolv_create_action(TOLV_ZOOM_SELECTION_ACTION, this)),
      m_zoom_in_action(tolv_create_action(TOLV_ZOOM_IN_ACTION, this)),
      m_zoom_out_action(tolv_create_action(TOLV_ZOOM_OUT_ACTION, this)),
      m_magnifying_tool_action(tolv_create_action(TOLV_MAGNIFYING_TOOL_ACTION, this)),
      m_zoom_dialog_action(tolv_create_action(TOLV_ZOOM_ACTION, this)),
      m_birds_eye_view_action(tolv_create_action(TOLV_BIRDS_EYE_VIEW_ACTION, this))
{
    setLayoutDirection(Qt::LeftToRight); // else Qt counts the values of the horizontal bar from the right
    // Until they are first laid out, Qt has them larger than they ever get, and zoom_on_logical_rect() reckons with them.
    verticalScrollBar()->resize(verticalScrollBar()->sizeHint());
    horizontalScrollBar()->resize(horizontalScrollBar()->sizeHint());
    TOLV_SAFE_CONNECT(m_zoom_in_action, SIGNAL(triggered()), this, SLOT(zoom_in()));
    TOLV_SAFE_CONNECT(m_zoom_out_action, SIGNAL(triggered()), this, SLOT(zoom_out()));
    TOLV_SAFE_CONNECT(m_zoom_fit_action, SIGNAL(triggered()), this, SLOT(zoom_fit()));
    TOLV_SAFE_CONNECT(m_zoom_dialog_action, SIGNAL(triggered()), this, SLOT(open_set_zoom_dlg()));
    TOLV_SAFE_CONNECT(m_zoom_selection_action, SIGNAL(triggered()), this, SLOT(zoom_selected()));
    TOLV_SAFE_CONNECT(m_pan_tool_action, SIGNAL(toggled(bool)), this, SLOT(end_pan()));
}

TOLV_ZOOM_SCROLL_AREA::~TOLV_ZOOM_SCROLL_AREA() = default;

void TOLV_ZOOM_SCROLL_AREA::set_view(TOLV_VIEW* view, bool has_birds_eye_view)
{
    TOLV_CHECK_TEXT(view != nullptr, "view != NULL");
    if (view == nullptr)
        return;
    m_view = view;
    if (view->parentWidget() == nullptr || view->parentWidget() == this)
    {
        setWidget(view);
        setWidgetResizable(true);
    }
    view->installEventFilter(this);
    TOLV_SAFE_CONNECT(view, SIGNAL(about_to_be_deleted()), this, SLOT(forget_view()));
    m_magnifying_tool_action->setVisible(has_birds_eye_view);
    m_birds_eye_view_action->setVisible(has_birds_eye_view);
    remove_birds_eye_view(); // of a view before this one
    if (has_birds_eye_view)
        create_birds_eye_view();
}

void TOLV_ZOOM_SCROLL_AREA::forget_view()
{
    if (sender() != m_view)
        return;
    m_view = nullptr;
    end_pan();
    remove_birds_eye_view(); // it has nothing to show any more, and even its size is the view's to say
}

TOLV_VIEW* TOLV_ZOOM_SCROLL_AREA::get_view() const
{
    return m_view;
}

TOLV_BIRDS_EYE_VIEW* TOLV_ZOOM_SCROLL_AREA::get_birds_eye_view() const
{
    return m_birds_eye_view;
}

void TOLV_ZOOM_SCROLL_AREA::hide_birds_eye_view() const
{
    if (m_birds_eye_view != nullptr)
        m_birds_eye_view->hide();
}

/// Later, as a rectangle may just be drawn in it.
void TOLV_ZOOM_SCROLL_AREA::remove_birds_eye_view()
{
    if (m_birds_eye_view == nullptr)
        return;
    m_birds_eye_view->hide();
    m_birds_eye_view_action->disconnect(m_birds_eye_view);
    m_birds_eye_view->deleteLater();
    m_birds_eye_view = nullptr;
}

void TOLV_ZOOM_SCROLL_AREA::create_birds_eye_view()
{
    m_birds_eye_view = new TOLV_BIRDS_EYE_VIEW(this, m_view);
    m_birds_eye_view->hide();
    m_birds_eye_view_action->setChecked(false);
    TOLV_BIRDS_EYE_VIEW* const overview = m_birds_eye_view;
    QAction* const action = m_birds_eye_view_action;
    connect(action, &QAction::triggered, overview, [=] { overview->set_visible_and_raise(action); });
    TOLV_SAFE_CONNECT(overview, SIGNAL(dock_widget_active_state_changed(bool)), action, SLOT(setChecked(bool)));
    TOLV_SAFE_CONNECT(m_view.data(), SIGNAL(update_birds_eye_view_size()), overview, SLOT(update_geometry()));
}

QAction* TOLV_ZOOM_SCROLL_AREA::get_action(TOLV_ACTION_ENUM action) const
{
    switch (action)
    {
    case TOLV_ZOOM_TOOL_ACTION:
        return m_zoom_tool_action;
    case TOLV_PAN_TOOL_ACTION:
        return m_pan_tool_action;
    case TOLV_ZOOM_FIT_ACTION:
        return m_zoom_fit_action;
    case TOLV_ZOOM_SELECTION_ACTION:
        return m_zoom_selection_action;
    case TOLV_ZOOM_IN_ACTION:
        return m_zoom_in_action;
    case TOLV_ZOOM_OUT_ACTION:
        return m_zoom_out_action;
    case TOLV_MAGNIFYING_TOOL_ACTION:
        return m_magnifying_tool_action;
    case TOLV_ZOOM_ACTION:
        return m_zoom_dialog_action;
    case TOLV_BIRDS_EYE_VIEW_ACTION:
        return m_birds_eye_view_action;
    default:
        return nullptr;
    }
}

QList<QAction*> TOLV_ZOOM_SCROLL_AREA::get_actions() const
{
    return {m_zoom_tool_action,       m_pan_tool_action,    m_zoom_fit_action,
            m_zoom_selection_action,  m_zoom_in_action,     m_zoom_out_action,
            m_magnifying_tool_action, m_zoom_dialog_action, m_birds_eye_view_action};
}

QList<QAction*> TOLV_ZOOM_SCROLL_AREA::get_tool_actions() const
{
    return {m_zoom_tool_action, m_magnifying_tool_action, m_pan_tool_action};
}

QList<QAction*> TOLV_ZOOM_SCROLL_AREA::get_zoom_actions() const
{
    return {m_zoom_in_action, m_zoom_out_action, m_zoom_dialog_action, m_zoom_fit_action, m_zoom_selection_action};
}

void TOLV_ZOOM_SCROLL_AREA::set_enabled(bool enabled)
{
    setEnabled(enabled);
    const QList<QAction*> actions = get_actions();
    for (QAction* const action : actions)
        action->setEnabled(enabled);
}

void TOLV_ZOOM_SCROLL_AREA::show_actions(bool visible)
{
    const QList<QAction*> actions = get_actions();
    for (QAction* const action : actions)
        action->setVisible(visible);
}

void TOLV_ZOOM_SCROLL_AREA::insert_modes(QActionGroup* group)
{
    if (group == nullptr)
        return;
    const QList<QAction*> actions = get_tool_actions();
    for (QAction* const action : actions)
        group->addAction(action);
    TOLV_SAFE_CONNECT(group, SIGNAL(triggered(QAction*)), this, SLOT(on_switch_mode(QAction*)));
}

void TOLV_ZOOM_SCROLL_AREA::remove_modes(QActionGroup* group)
{
    if (group == nullptr)
        return;
    const QList<QAction*> actions = get_tool_actions();
    for (QAction* const action : actions)
        group->removeAction(action);
}

void TOLV_ZOOM_SCROLL_AREA::add_mode_actions(TOLV_TOOL_BAR* bar)
{
    TOLV_CHECK_TEXT(bar != nullptr, "bar != NULL");
    if (bar != nullptr)
        bar->addActions(get_tool_actions());
}

void TOLV_ZOOM_SCROLL_AREA::remove_mode_actions(TOLV_TOOL_BAR* bar)
{
    TOLV_CHECK_TEXT(bar != nullptr, "bar != NULL");
    if (bar == nullptr)
        return;
    const QList<QAction*> actions = get_tool_actions();
    for (QAction* const action : actions)
        bar->removeAction(action);
}

void TOLV_ZOOM_SCROLL_AREA::insert_actions(QWidget* widget, QAction* before)
{
    if (widget != nullptr)
        widget->insertActions(before, get_zoom_actions());
}

void TOLV_ZOOM_SCROLL_AREA::remove_actions(QWidget* widget)
{
    if (widget == nullptr)
        return;
    const QList<QAction*> actions = get_zoom_actions();
    for (QAction* const action : actions)
        widget->removeAction(action);
}

bool TOLV_ZOOM_SCROLL_AREA::is_zoom_drag_enabled() const
{
    return m_zoom_drag_enabled;
}

void TOLV_ZOOM_SCROLL_AREA::set_zoom_drag_enabled(bool enabled)
{
    m_zoom_drag_enabled = enabled;
}

bool TOLV_ZOOM_SCROLL_AREA::is_scroll_on_drag_move() const
{
    return m_scroll_on_drag_move;
}

void TOLV_ZOOM_SCROLL_AREA::set_scroll_on_drag_move(bool enabled)
{
    m_scroll_on_drag_move = enabled;
}

QPoint TOLV_ZOOM_SCROLL_AREA::map_coord_from_scroll_area_to_view(QPoint point) const
{
    return point + QPoint(horizontalScrollBar()->value(), verticalScrollBar()->value());
}

bool TOLV_ZOOM_SCROLL_AREA::current_mode_supports_mouse_gesture(const QPoint& point) const
{
    if (m_pan_tool_action->isChecked() || m_magnifying_tool_action->isChecked())
        return false;
    return m_view != nullptr && m_view->current_mode_supports_mouse_gesture(point);
}

void TOLV_ZOOM_SCROLL_AREA::send_fake_mouse_event()
{
    if (m_view == nullptr)
        return;
    const QPoint global = QCursor::pos();
    QCoreApplication::postEvent(m_view, new QMouseEvent(QEvent::MouseMove, m_view->mapFromGlobal(global),
                                                        m_view->window()->mapFromGlobal(global), global, Qt::NoButton,
                                                        Qt::NoButton, Qt::NoModifier));
}

// ---- Zoom to rectangles ---------------------------------------------------------------------------------------------

void TOLV_ZOOM_SCROLL_AREA::zoom_on_logical_rect(const QRect& rect)
{
    check_rect(rect);
    QSize max_size = maximumViewportSize();
    if (verticalScrollBar() != nullptr)
        max_size.rwidth() -= verticalScrollBar()->width();
    if (horizontalScrollBar() != nullptr)
        max_size.rheight() -= horizontalScrollBar()->height();
    TOLV_CHECK(max_size.width() > 0 && max_size.height() > 0);
    set_fit_zoom(rect, max_size);
    set_scroll_maxima();
    scroll_to_centre(m_view->get_physical(rect), max_size);
    finish_zoom();
}

void TOLV_ZOOM_SCROLL_AREA::scroll_to_logical_rect(const QRect& rect)
{
    check_rect(rect);
    const QSize max_size = maximumViewportSize();
    TOLV_CHECK(max_size.width() > 0 && max_size.height() > 0);
    scroll_to_centre(m_view->get_physical(rect), max_size);
    m_view->update();
}

void TOLV_ZOOM_SCROLL_AREA::zoom_rect(const QRect& rect)
{
    check_rect(rect);
    const QRect logical = m_view->get_logical(rect);
    set_fit_zoom(logical, get_max_size());
    set_scroll_maxima();
    scroll_to_centre(m_view->get_physical(logical), get_page_size());
    finish_zoom();
}

void TOLV_ZOOM_SCROLL_AREA::zoom_out_rect(const QRect& rect)
{
    check_rect(rect);
    const QSize max_size = get_max_size();
    const QRect logical = m_view->get_logical(rect);
    // Not divided by the scaling, unlike in zoom_rect(); this is meant.
    m_view->set_zoom(std::max(float(logical.width() + 1) / float(max_size.width()),
                              float(logical.height() + 1) / float(max_size.height())));
    set_scroll_maxima();
    const QPoint top_left = m_view->get_physical(logical).topLeft();
    verticalScrollBar()->setValue(top_left.y());
    horizontalScrollBar()->setValue(top_left.x());
    finish_zoom();
}

void TOLV_ZOOM_SCROLL_AREA::zoom_selected()
{
    TOLV_CHECK_TEXT(m_view != nullptr, "m_view != NULL");
    const QRect selected = m_view->get_selected_rect();
    if (!selected.isValid())
        return;
    zoom_until_visible(selected);
    const QRect physical = m_view->get_physical(selected);
    if (physical.isValid())
        zoom_rect(physical);
}

void TOLV_ZOOM_SCROLL_AREA::zoom_until_visible(const QRect& logical)
{
    float step = 1.1F;
    for (int i = 0; i < MOST_STEPS_TO_SELECTION && !m_view->get_physical(logical).isValid(); ++i)
    {
        step = step / m_view->get_zoom_level();
        zoom_in(nullptr, step);
    }
    // Steps about a scaling that is far off can go to and fro for ever, and the maximum can be too low.
    if (!m_view->get_physical(logical).isValid())
        set_fit_zoom(logical, get_max_size());
}

void TOLV_ZOOM_SCROLL_AREA::set_fit_zoom(const QRect& logical, const QSize& max_size)
{
    const float factor = std::min(float(max_size.width() + 1) / float(logical.width()),
                                  float(max_size.height() + 1) / float(logical.height()));
    m_view->set_zoom(factor / m_view->get_zoom_scaling());
}

void TOLV_ZOOM_SCROLL_AREA::set_scroll_maxima()
{
    verticalScrollBar()->setMaximum(m_view->height());
    horizontalScrollBar()->setMaximum(m_view->width());
}

void TOLV_ZOOM_SCROLL_AREA::scroll_to_centre(const QRect& physical, const QSize& visible_size)
{
    verticalScrollBar()->setValue(physical.top() - (visible_size.height() - physical.height()) / 2);
    horizontalScrollBar()->setValue(physical.left() - (visible_size.width() - physical.width()) / 2);
}

QSize TOLV_ZOOM_SCROLL_AREA::get_page_size() const
{
    return {horizontalScrollBar()->pageStep(), verticalScrollBar()->pageStep()};
}

QSize TOLV_ZOOM_SCROLL_AREA::get_max_size() const
{
    return maximumViewportSize().expandedTo(QSize(0, 0)); // an area that is squeezed flat has less than nothing
}

void TOLV_ZOOM_SCROLL_AREA::check_rect(const QRect& rect) const
{
    TOLV_CHECK_TEXT(m_view != nullptr, "m_view != NULL");
    TOLV_CHECK(rect.isNull() == false);
    TOLV_CHECK(rect.isEmpty() == false);
}

void TOLV_ZOOM_SCROLL_AREA::finish_zoom()
{
    emit zoom_level_changed(m_view->get_zoom_level());
    if (m_view != nullptr)
        m_view->update();
}

// ---- Steps ----------------------------------------------------------------------------------------------------------

void TOLV_ZOOM_SCROLL_AREA::zoom_in(QPoint* p, float delta)
{
    TOLV_CHECK_TEXT(m_view != nullptr, "m_view != NULL");
    TOLV_CHECK(delta != 0);
    QScrollBar* const h = horizontalScrollBar();
    QScrollBar* const v = verticalScrollBar();
    const QPoint centre(h->value() + h->pageStep() / 2, v->value() + v->pageStep() / 2);
    const bool is_about_pointer = p == nullptr && m_view->testAttribute(Qt::WA_UnderMouse);
    QPoint anchor = p != nullptr ? *p : centre;
    if (is_about_pointer)
    {
        anchor = m_view->mapFromGlobal(QCursor::pos());
        m_logical_anchor = m_view->get_logical(anchor);
    }
    const QPoint offset = centre - anchor;

    // The page steps are crossed; this is meant.
    const qint64 h_size = qint64(h->maximum()) + v->pageStep();
    const qint64 v_size = qint64(v->maximum()) + h->pageStep();
    // The ratio that was really applied: at the limits another one than was asked for.
    const float factor = delta > 1.0F ? m_view->zoom_in(delta) : 1.0F / m_view->zoom_out(1.0F / delta);
    h->setMaximum(tolv_truncate(float(h_size) * factor));
    v->setMaximum(tolv_truncate(float(v_size) * factor));
    anchor = QPoint(tolv_round(float(anchor.x()) * factor), tolv_round(float(anchor.y()) * factor));
    const QPoint half_page(h->pageStep() / 2, v->pageStep() / 2);
    h->setValue(tolv_limit_to_int(double(anchor.x()) - half_page.x() + offset.x()));
    v->setValue(tolv_limit_to_int(double(anchor.y()) - half_page.y() + offset.y()));

    finish_zoom();
    send_fake_mouse_event();
    if (is_about_pointer)
        adjust_cursor_later();
}

void TOLV_ZOOM_SCROLL_AREA::zoom_out(QPoint* p, float delta)
{
    TOLV_CHECK(delta != 0);
    zoom_in(p, float(1.0 / delta));
}

void TOLV_ZOOM_SCROLL_AREA::zoom_fit()
{
    TOLV_CHECK_TEXT(m_view != nullptr, "m_view != NULL");
    m_view->zoom_fit(maximumViewportSize());
    finish_zoom();
}

void TOLV_ZOOM_SCROLL_AREA::adjust_cursor()
{
    if (m_view == nullptr || !m_view->isVisible())
        return;
    const QPoint global = m_view->mapToGlobal(m_view->get_physical(m_logical_anchor));
    m_view->repaint();
    QCursor::setPos(global);
}

void TOLV_ZOOM_SCROLL_AREA::adjust_cursor_later()
{
    QTimer::singleShot(0, this, &TOLV_ZOOM_SCROLL_AREA::adjust_cursor);
}

void TOLV_ZOOM_SCROLL_AREA::set_zoom(float factor)
{
    TOLV_CHECK_TEXT(m_view != nullptr, "m_view != NULL");
    m_view->set_zoom(factor);
}

void TOLV_ZOOM_SCROLL_AREA::open_set_zoom_dlg()
{
    TOLV_CHECK_TEXT(m_view != nullptr, "m_view != NULL");
    const float scaling = m_view->get_zoom_scaling();
    const QPointer<TOLV_ZOOM_SCROLL_AREA> self(this);
    const QPointer<TOLV_SET_ZOOM_DLG> dialog =
        new TOLV_SET_ZOOM_DLG(100 * m_view->get_zoom_min() / scaling, 100 * m_view->get_zoom_max() / scaling, this);
    select_current_level(*dialog->get_combo_box());
    // The dialog runs an event loop, in which anything here can go away.
    if (dialog->exec() == QDialog::Accepted && self != nullptr && m_view != nullptr && dialog != nullptr)
        apply_chosen_level(dialog->get_current_text(), dialog->get_selected_zoom() / 100);
    delete dialog.data();
}

/// A level that is not in the list is added to it.
void TOLV_ZOOM_SCROLL_AREA::select_current_level(QComboBox& combo_box) const
{
    const QString text = TOLV_SET_ZOOM_DLG::get_percent_text(m_view->get_zoom_level() * 100);
    if (combo_box.findData(text, Qt::DisplayRole, Qt::MatchCaseSensitive) < 0)
    {
        combo_box.setInsertPolicy(QComboBox::InsertAtTop);
        combo_box.insertItem(combo_box.count(), text, QVariant());
    }
    combo_box.setCurrentIndex(combo_box.findData(text, Qt::DisplayRole, Qt::MatchCaseSensitive));
}

void TOLV_ZOOM_SCROLL_AREA::apply_chosen_level(const QString& text, float wanted)
{
    const float current = m_view->get_zoom_level();
    if (text == QLatin1String("Fit in Window"))
        zoom_fit();
    else if (wanted > current)
        zoom_in(nullptr, wanted / current);
    else
        zoom_out(nullptr, current / wanted);
}

// ---- Events ---------------------------------------------------------------------------------------------------------

void TOLV_ZOOM_SCROLL_AREA::resizeEvent(QResizeEvent* e)
{
    QScrollArea::resizeEvent(e);
    if (m_birds_eye_view != nullptr && m_view != nullptr)
        m_birds_eye_view->update_geometry();
    if (m_view != nullptr)
        m_view->update_transform();
}
