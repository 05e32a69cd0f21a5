#include "tolv_birds_eye_view.h"

#include "tolv_birds_eye_view_p.h"
#include "tolv_check.h"
#include "tolv_graphics_scene.h"
#include "tolv_icon.h"
#include "tolv_mem.h"
#include "tolv_view.h"
#include "tolv_view_arithmetic.h"
#include "ui_tolv_birds_eye_view_titlebar.h"

#include <QMouseEvent>

TOLV_MEM_INITIALIZER();

TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET::TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET(TOLV_VIEW* view, QWidget* parent)
    : QWidget(parent), m_is_view_mode(true), m_ui(std::make_unique<Ui::Birds_Eye_View_TitleBar_Widget>()),
      m_source_view(view)
{
    setup();
}

TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET::TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET(TOLV_GRAPHICS_SCENE* scene, QWidget* parent)
    : QWidget(parent), m_is_view_mode(false), m_ui(std::make_unique<Ui::Birds_Eye_View_TitleBar_Widget>()),
      m_source_graphics_scene(scene)
{
    setup();
}

TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET::~TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET() = default;

void TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET::setup()
{
    m_ui->setupUi(this);
    m_ui->m_icon_button->setIcon(tolv_get_icon(TOLV_BIRDS_EYE_VIEW_ICON));
    m_ui->m_goto_bottom_right_button->setIcon(tolv_get_icon(TOLV_GOTO_BOTTOM_RIGHT_ICON));
    m_ui->m_goto_bottom_left_button->setIcon(tolv_get_icon(TOLV_GOTO_BOTTOM_LEFT_ICON));
    m_ui->m_goto_top_right_button->setIcon(tolv_get_icon(TOLV_GOTO_TOP_RIGHT_ICON));
    m_ui->m_goto_top_left_button->setIcon(tolv_get_icon(TOLV_GOTO_TOP_LEFT_ICON));
    m_ui->m_goto_top_button->setIcon(tolv_get_icon(TOLV_GOTO_TOP_ICON));
    m_ui->m_goto_bottom_button->setIcon(tolv_get_icon(TOLV_GOTO_BOTTOM_ICON));
    m_ui->m_goto_right_button->setIcon(tolv_get_icon(TOLV_GOTO_ICON));
    m_ui->m_goto_left_button->setIcon(tolv_get_icon(TOLV_GOTO_LEFT_ICON));
    m_ui->m_close_button->setIcon(tolv_get_icon(TOLV_CLOSE_PANE_ICON));
}

QSize TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET::get_size() const
{
    QRect bounds;
    if (m_is_view_mode)
    {
        TOLV_CHECK_TEXT(m_source_view != nullptr, "m_source_view != NULL");
        if (m_source_view == nullptr)
            return {0, height()};
        bounds = m_source_view->get_logical_rect();
    }
    else
    {
        TOLV_CHECK_TEXT(m_source_graphics_scene != nullptr, "m_source_graphics_scene != NULL");
        if (m_source_graphics_scene == nullptr)
            return {0, height()};
        bounds = tolv_get_scene_bounds(m_source_graphics_scene->sceneRect());
    }
    return {tolv_get_overview_size(bounds).width(), height()};
}

QSize TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET::sizeHint() const
{
    return get_size();
}

void TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET::show_moves(BIRDS_EYE_VIEW_LOCATION location)
{
    const bool is_top = location == BIRDS_EYE_TOP_LEFT || location == BIRDS_EYE_TOP_RIGHT;
    const bool is_bottom = location == BIRDS_EYE_BOTTOM_LEFT || location == BIRDS_EYE_BOTTOM_RIGHT;
    const bool is_left = location == BIRDS_EYE_TOP_LEFT || location == BIRDS_EYE_BOTTOM_LEFT;
    const bool is_right = location == BIRDS_EYE_TOP_RIGHT || location == BIRDS_EYE_BOTTOM_RIGHT;
    m_ui->m_goto_top_left_button->setVisible(location == BIRDS_EYE_BOTTOM_RIGHT);
    m_ui->m_goto_top_right_button->setVisible(location == BIRDS_EYE_BOTTOM_LEFT);
    m_ui->m_goto_bottom_left_button->setVisible(location == BIRDS_EYE_TOP_RIGHT);
    m_ui->m_goto_bottom_right_button->setVisible(location == BIRDS_EYE_TOP_LEFT);
    m_ui->m_goto_top_button->setVisible(is_bottom);
    m_ui->m_goto_bottom_button->setVisible(is_top);
    m_ui->m_goto_left_button->setVisible(is_right);
    m_ui->m_goto_right_button->setVisible(is_left);
}

void TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET::mousePressEvent(QMouseEvent* e)
{
    if (e->buttons() == Qt::LeftButton)
        m_drag_offset = tolv_get_local_position(*e) - geometry().topLeft();
}

void TOLV_BIRDS_EYE_VIEW_TITLEBAR_WIDGET::mouseMoveEvent(QMouseEvent* e)
{
    if (e->buttons() == Qt::LeftButton)
        emit update_parent_geometry(tolv_get_global_position(*e) - m_drag_offset);
}
