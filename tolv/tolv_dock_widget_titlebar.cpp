#include "tolv_dock_widget_titlebar.h"

#include "tolv_check.h"
#include "tolv_dock_widget.h"
#include "tolv_dock_widget_button.h"
#include "tolv_dock_widget_button_bar.h"
#include "tolv_global.h"
#include "tolv_icon.h"
#include "tolv_main_window.h"
#include "tolv_mem.h"
#include "ui_tolv_dock_widget_titlebar.h"

#include <QApplication>
#include <QCursor>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

TOLV_MEM_INITIALIZER();

namespace
{
/// Side of a button's square.
constexpr int SQUARE_SIZE = 14;

/// The buttons with a square, in the order in which they are tried.
constexpr TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM SQUARES[] = {TITLEBAR_BUTTON_CLOSE, TITLEBAR_BUTTON_DETACH,
                                                                    TITLEBAR_BUTTON_PIN, TITLEBAR_BUTTON_MENU};

QString get_square_tooltip(TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM button)
{
    switch (button)
    {
    case TITLEBAR_BUTTON_CLOSE:
        return TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::tr("Close");
    case TITLEBAR_BUTTON_DETACH:
        return TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::tr("Detach");
    case TITLEBAR_BUTTON_PIN:
        return TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::tr("Auto Hide");
    case TITLEBAR_BUTTON_MENU:
        return TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::tr("Open Menu");
    default:
        return QString();
    }
}

/// A point of a bar that stands, as seen in the bar laid down: its upper end becomes the right one.
QPoint lay_down(QPoint point, QRect rect)
{
    return {rect.bottom() + rect.left() - point.y(), point.x() + rect.top() - rect.left()};
}

void set_pair_icon(QToolButton* horizontal, QToolButton* vertical, const QIcon& icon)
{
    horizontal->setIcon(icon);
    vertical->setIcon(icon);
}

void set_pair_visible(QToolButton* horizontal, QToolButton* vertical, bool visible)
{
    horizontal->setVisible(visible);
    vertical->setVisible(visible);
}

void set_pair_checked(QToolButton* horizontal, QToolButton* vertical, bool checked)
{
    horizontal->setChecked(checked);
    vertical->setChecked(checked);
}
} // namespace

TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::TOLV_DOCK_WIDGET_TITLEBAR_WIDGET(TOLV_DOCK_WIDGET* dock)
    : QWidget(dock), m_dock(dock), m_ui(std::make_unique<Ui::TOLV_DOCK_WIDGET_TITLEBAR_WIDGET>())
{
    setAttribute(Qt::WA_MouseTracking);
    // The squares are counted from the right: mirrored, the close button's would lie on the title.
    setLayoutDirection(Qt::LeftToRight);
    m_ui->setupUi(this);
    set_icons();
    set_pair_visible(m_ui->m_menu_button, m_ui->m_menu_button_v, false);
    set_pair_visible(m_ui->m_search_button, m_ui->m_search_button_v, false);
    set_pair_visible(m_ui->m_float_button, m_ui->m_float_button_v, false);
    connect_buttons();
    for (QToolButton* button : {m_ui->m_close_button_v, m_ui->m_detach_button_v, m_ui->m_pin_button_v,
                                m_ui->m_menu_button_v, m_ui->m_search_button_v, m_ui->m_float_button_v})
        m_ui->m_v_layout->setAlignment(button, Qt::AlignHCenter);
    m_ui->m_frame->hide();
    m_ui->m_frame_v->hide();
}

TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::~TOLV_DOCK_WIDGET_TITLEBAR_WIDGET() = default;

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::set_title(const QString& title)
{
    m_title_text = title;
    m_ui->m_title->setText(title);
    m_ui->m_title_v->setText(title);
}

QString TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::get_title() const
{
    return m_title_text;
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::set_pinned(bool pinned)
{
    m_pinned = pinned;
    set_pair_checked(m_ui->m_pin_button, m_ui->m_pin_button_v, pinned);
}

bool TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::get_pinned() const
{
    return m_pinned;
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::set_close_visible(bool visible)
{
    m_close_visible = visible;
    set_pair_visible(m_ui->m_close_button, m_ui->m_close_button_v, visible);
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::set_detach_visible(bool visible)
{
    m_detach_visible = visible;
    set_pair_visible(m_ui->m_detach_button, m_ui->m_detach_button_v, visible);
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::set_pin_visible(bool visible)
{
    m_pin_visible = visible;
    set_pair_visible(m_ui->m_pin_button, m_ui->m_pin_button_v, visible);
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::set_menu_visible(bool visible)
{
    m_menu_visible = visible;
    set_pair_visible(m_ui->m_menu_button, m_ui->m_menu_button_v, visible);
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::set_float_visible(bool visible)
{
    m_float_visible = visible;
    set_pair_visible(m_ui->m_float_button, m_ui->m_float_button_v, visible);
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::set_search_visible(bool visible)
{
    m_search_visible = visible;
    set_pair_visible(m_ui->m_search_button, m_ui->m_search_button_v, visible);
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::set_menu(QMenu* menu)
{
    set_pair_visible(m_ui->m_menu_button, m_ui->m_menu_button_v, true);
    m_menu = menu;
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::add_widget(QWidget* widget)
{
    if (widget == nullptr)
        return;
    m_added_widgets.append(widget);
    m_ui->m_h_layout->insertWidget(m_ui->m_h_layout->indexOf(m_ui->m_menu_button), widget);
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::update_added_widget_to_vert_or_horz()
{
    if (is_vertical())
        insert_added_widgets_to_layout(m_ui->m_v_layout, m_ui->m_v_layout->indexOf(m_ui->m_menu_button_v) + 1);
    else
        insert_added_widgets_to_layout(m_ui->m_h_layout, m_ui->m_h_layout->indexOf(m_ui->m_title) + 1);
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::insert_added_widgets_to_layout(QBoxLayout* layout, int index)
{
    TOLV_CHECK(layout);
    if (layout == nullptr)
        return;
    for (const QPointer<QWidget>& widget : qAsConst(m_added_widgets))
    {
        if (widget != nullptr)
            layout->insertWidget(index, widget);
    }
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::press_button(TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM button)
{
    if (button == TITLEBAR_BUTTON_PIN)
        toggle_pin(!m_pinned);
    if (m_dock == nullptr)
        return;
    if (button == TITLEBAR_BUTTON_CLOSE)
        m_dock->close_widget(true);
    else if (button == TITLEBAR_BUTTON_DETACH)
        m_dock->detach();
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::update_button_active_state()
{
    update_button_active_state(mapFromGlobal(QCursor::pos()));
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::update_button_active_state(QPoint position)
{
    icon_hit_test(position, rect(), m_active_button);
    update();
}

QPoint TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::get_icon_position(TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM button,
                                                           QRect rect) const
{
    const int close = m_close_visible ? 1 : 0;
    const int detach = m_detach_visible ? 1 : 0;
    const int pin = m_pin_visible ? 1 : 0;
    const int y = rect.height() / 2 - 5;
    switch (button)
    {
    case TITLEBAR_BUTTON_CLOSE:
        return {rect.right() - 16, y};
    case TITLEBAR_BUTTON_DETACH:
        return {rect.right() - 2 - (close + 1) * SQUARE_SIZE, y};
    case TITLEBAR_BUTTON_PIN:
        return {rect.right() - 2 - (close + 1 + detach) * SQUARE_SIZE, y};
    case TITLEBAR_BUTTON_MENU:
        return {rect.right() - 2 - (close + 2 + detach - (1 - pin)) * SQUARE_SIZE, y};
    default:
        return {0, 0};
    }
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::icon_hit_test(QPoint point, QRect rect,
                                                     TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM& button) const
{
    if (is_vertical())
    {
        point = lay_down(point, rect);
        rect.setSize(rect.size().transposed());
    }
    button = get_button_at(point, rect);
    if (button == TITLEBAR_BUTTON_NONE)
        QToolTip::showText(QPoint(0, 0), QString());
    else
        QToolTip::showText(QCursor::pos(), get_square_tooltip(button));
}

QPixmap TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::get_title_bar_button(TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM button,
                                                               const QIcon& icon) const
{
    const QPixmap picture = icon.pixmap(QSize(SQUARE_SIZE, SQUARE_SIZE), QIcon::Normal, QIcon::Off);
    const QColor ground = QApplication::palette().color(QPalette::Window);
    QPixmap result(picture.size());
    result.setDevicePixelRatio(picture.devicePixelRatio());
    result.fill(m_active_button == button ? ground.lighter(110) : ground);
    if (!result.isNull())
        QPainter(&result).drawPixmap(0, 0, picture);
    return result;
}

QSize TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::sizeHint() const
{
    return is_vertical() ? m_ui->m_v_layout->sizeHint() + QSize(2, 0) : m_ui->m_h_layout->sizeHint() + QSize(0, 2);
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::toggle_pin(bool value)
{
    TOLV_CHECK_TEXT(m_dock != nullptr, "Dock widget parent is not set up yet");
    if (m_dock == nullptr)
        return;
    m_dock->set_is_pinned(value);
    if (m_dock->m_is_pinned)
        remove_side_button();
    else
        m_dock->add_button();
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::menu_button_pressed()
{
    const QToolButton* const button = is_vertical() ? m_ui->m_menu_button_v : m_ui->m_menu_button;
    const QPoint place = button->parentWidget()->mapToGlobal(button->frameGeometry().bottomLeft());
    const QPointer<TOLV_DOCK_WIDGET_TITLEBAR_WIDGET> guard(this);
    if (m_menu != nullptr)
        m_menu->exec(place);
    // An action of the menu may have done away with the dock window.
    if (guard == nullptr)
        return;
    m_ui->m_menu_button->setDown(false);
    m_ui->m_menu_button_v->setDown(false);
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::search_button_clicked_slot(bool checked)
{
    set_pair_checked(m_ui->m_search_button, m_ui->m_search_button_v, checked);
    emit search_button_clicked(checked);
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::float_button_clicked_slot(bool checked)
{
    set_pair_checked(m_ui->m_float_button, m_ui->m_float_button_v, checked);
    emit float_button_clicked(checked);
}

bool TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::event(QEvent* event)
{
    const bool result = QWidget::event(event);
    if (event->type() == QEvent::Leave)
        update_button_active_state();
    return result;
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::mousePressEvent(QMouseEvent* event)
{
    TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM button = TITLEBAR_BUTTON_NONE;
    icon_hit_test(event->pos(), rect(), button);
    if (button == TITLEBAR_BUTTON_NONE)
        event->ignore();
    else
        press_button(button);
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::mouseMoveEvent(QMouseEvent* event)
{
    update_button_active_state(event->pos());
    event->ignore();
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::paintEvent(QPaintEvent* event)
{
    const bool vertical = is_vertical();
    (vertical ? m_ui->m_frame : static_cast<QWidget*>(m_ui->m_frame_v))->hide();
    (vertical ? m_ui->m_frame_v : static_cast<QWidget*>(m_ui->m_frame))->show();
    QWidget::paintEvent(event);
}

bool TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::is_vertical() const
{
    return m_dock != nullptr && m_dock->features().testFlag(QDockWidget::DockWidgetVerticalTitleBar);
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::set_icons()
{
    set_pair_icon(m_ui->m_close_button, m_ui->m_close_button_v,
                  style()->standardIcon(QStyle::SP_DockWidgetCloseButton));
    set_pair_icon(m_ui->m_detach_button, m_ui->m_detach_button_v,
                  style()->standardIcon(QStyle::SP_TitleBarNormalButton));
    set_pair_icon(m_ui->m_pin_button, m_ui->m_pin_button_v, tolv_get_icon(TOLV_PUSHPIN_DOCKWIDGET_ICON));
    set_pair_icon(m_ui->m_menu_button, m_ui->m_menu_button_v, tolv_get_icon(TOLV_MENU_DOCKWIDGET_ICON));
    set_pair_icon(m_ui->m_search_button, m_ui->m_search_button_v, tolv_get_icon(TOLV_SEARCH_DOCKWIDGET_ICON));
    set_pair_icon(m_ui->m_float_button, m_ui->m_float_button_v, tolv_get_icon(TOLV_FLOAT_DOCKWIDGET_ICON));
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::connect_buttons()
{
    connect_pair(m_ui->m_pin_button, m_ui->m_pin_button_v, SIGNAL(clicked(bool)), this, SLOT(toggle_pin(bool)));
    if (m_dock != nullptr)
    {
        connect_pair(m_ui->m_close_button, m_ui->m_close_button_v, SIGNAL(clicked()), m_dock, SLOT(close_widget()));
        connect_pair(m_ui->m_detach_button, m_ui->m_detach_button_v, SIGNAL(clicked()), m_dock, SLOT(detach()));
    }
    connect_pair(m_ui->m_menu_button, m_ui->m_menu_button_v, SIGNAL(pressed()), this, SLOT(menu_button_pressed()));
    connect_pair(m_ui->m_search_button, m_ui->m_search_button_v, SIGNAL(clicked(bool)), this,
                 SLOT(search_button_clicked_slot(bool)));
    connect_pair(m_ui->m_float_button, m_ui->m_float_button_v, SIGNAL(clicked(bool)), this,
                 SLOT(float_button_clicked_slot(bool)));
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::connect_pair(QToolButton* horizontal, QToolButton* vertical, const char* signal,
                                                    const QObject* receiver, const char* method)
{
    TOLV_SAFE_CONNECT(horizontal, signal, receiver, method);
    TOLV_SAFE_CONNECT(vertical, signal, receiver, method);
}

bool TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::is_wanted(TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM button) const
{
    switch (button)
    {
    case TITLEBAR_BUTTON_CLOSE:
        return m_close_visible;
    case TITLEBAR_BUTTON_DETACH:
        return m_detach_visible;
    case TITLEBAR_BUTTON_PIN:
        return m_pin_visible;
    case TITLEBAR_BUTTON_MENU:
        return m_menu_visible;
    default:
        return false;
    }
}

TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM
TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::get_button_at(QPoint point, QRect rect) const
{
    for (const TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM button : SQUARES)
    {
        // A square reaches from its corner to the corner plus its side, edges included: 15 pixels.
        const QRect square(get_icon_position(button, rect), QSize(SQUARE_SIZE + 1, SQUARE_SIZE + 1));
        if (is_wanted(button) && square.contains(point))
            return button;
    }
    return TITLEBAR_BUTTON_NONE;
}

void TOLV_DOCK_WIDGET_TITLEBAR_WIDGET::remove_side_button() const
{
    const TOLV_MAIN_WINDOW* const main_window = m_dock->m_main_window;
    TOLV_DOCK_WIDGET_BUTTON* const button = m_dock->m_button;
    if (main_window == nullptr || button == nullptr)
        return;
    TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = main_window->m_button_bars.value(button->get_area());
    if (bar == nullptr)
        return;
    bar->remove_button(button);
    bar->repaint();
}
