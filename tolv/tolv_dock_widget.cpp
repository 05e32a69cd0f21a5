#include "tolv_dock_widget.h"

#include "tolv_check.h"
#include "tolv_global.h"
#include "tolv_help_dyn.h"
#include "tolv_main_window.h"
#include "tolv_mem.h"
#include "tolv_msg.h"

#include <QAction>
#include <QChildEvent>
#include <QCursor>
#include <QKeyEvent>
#include <QMainWindow>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QStylePainter>
#include <QTimer>

#include <tinyxml2.h>

#include <optional>

TOLV_MEM_INITIALIZER();

namespace
{
constexpr int MINIMUM_WIDTH = 200;
constexpr int HIDE_MARGIN = 3;          // pixels that the mouse may be off the window
constexpr int HIDE_POLL_INTERVAL = 500; // milliseconds
constexpr int RESTORE_SIZES_DELAY = 1;  // milliseconds

/// The text of an element, which is its first child node; null where there is none.
const char* get_text(const tinyxml2::XMLElement& element)
{
    const tinyxml2::XMLNode* const text = element.FirstChild();
    return text != nullptr ? text->Value() : nullptr;
}

std::optional<QDockWidget::DockWidgetFeatures> find_feature(const QString& name)
{
    struct FEATURE_NAME
    {
        const char* name;
        QDockWidget::DockWidgetFeatures value;
    };
    static const FEATURE_NAME names[] = {{"DockWidgetClosable", QDockWidget::DockWidgetClosable},
                                         {"DockWidgetMovable", QDockWidget::DockWidgetMovable},
                                         {"DockWidgetFloatable", QDockWidget::DockWidgetFloatable},
                                         {"DockWidgetVerticalTitleBar", QDockWidget::DockWidgetVerticalTitleBar},
                                         {"AllDockWidgetFeatures", QDockWidget::DockWidgetClosable |
                                                                       QDockWidget::DockWidgetMovable |
                                                                       QDockWidget::DockWidgetFloatable},
                                         {"NoDockWidgetFeatures", QDockWidget::NoDockWidgetFeatures}};
    for (const FEATURE_NAME& feature : names)
    {
        if (name == QLatin1String(feature.name))
            return feature.value;
    }
    return std::nullopt;
}

const QPushButton* find_help_button(const QWidget& parent)
{
    const QList<QPushButton*> buttons = parent.findChildren<QPushButton*>();
    for (const QPushButton* button : buttons)
    {
        if (button->text() == QLatin1String("Help") || button->objectName().contains(QLatin1String("help")))
            return button;
    }
    return nullptr;
}
} // namespace

TOLV_DOCK_WIDGET::TOLV_DOCK_WIDGET(const QString& title, QWidget* parent, Qt::WindowFlags flags)
    : QDockWidget(title, parent, flags)
{
    setup(parent);
}

TOLV_DOCK_WIDGET::TOLV_DOCK_WIDGET(QWidget* parent, Qt::WindowFlags flags) : QDockWidget(parent, flags)
{
    setup(parent);
}

TOLV_DOCK_WIDGET::TOLV_DOCK_WIDGET(const tinyxml2::XMLElement* element, QWidget* parent, Qt::WindowFlags flags)
    : QDockWidget(parent, flags)
{
    setup(parent);
    xml_customize(element);
}

TOLV_DOCK_WIDGET::TOLV_DOCK_WIDGET(QWidget* parent, Qt::WindowFlags flags, const std::string& xml)
    : QDockWidget(parent, flags)
{
    tinyxml2::XMLDocument document;
    document.Parse(xml.c_str());
    setup(parent);
    xml_customize(document.FirstChildElement());
}

TOLV_DOCK_WIDGET::~TOLV_DOCK_WIDGET()
{
}

void TOLV_DOCK_WIDGET::setup(QWidget* parent)
{
    m_delay_timer = new QTimer(this);

    TOLV_SAFE_CONNECT(this, SIGNAL(dockLocationChanged(Qt::DockWidgetArea)), this,
                      SLOT(dock_location_changed(Qt::DockWidgetArea)));
    TOLV_SAFE_CONNECT(this, SIGNAL(topLevelChanged(bool)), this, SLOT(floating_status_changed(bool)));
    TOLV_SAFE_CONNECT(m_delay_timer, SIGNAL(timeout()), this, SLOT(delay_tick()));

    setMouseTracking(true);
    setMinimumWidth(MINIMUM_WIDTH);
    set_is_pinned(true);
    if (parent == nullptr)
        return;
    m_main_window = qobject_cast<TOLV_MAIN_WINDOW*>(parent);
    if (m_main_window == nullptr)
        set_pushpin_button_visibility(false);
}

void TOLV_DOCK_WIDGET::scroll_to_bottom() const
{
}

std::string TOLV_DOCK_WIDGET::get_help_topic_string()
{
    QString topic = windowTitle();
    if (const QWidget* const parent = parentWidget(); parent != nullptr)
        topic += parent->accessibleName();
    return topic.toLocal8Bit().toStdString();
}

bool TOLV_DOCK_WIDGET::get_is_pinned() const
{
    return m_is_pinned;
}

int TOLV_DOCK_WIDGET::get_state() const
{
    return m_state;
}

void TOLV_DOCK_WIDGET::set_is_pinned(bool pinned)
{
    m_is_pinned = pinned;
    if (!pinned)
        hide();
    m_state = pinned ? DOCK_STATE_DOCKED : DOCK_STATE_UNPINNED;
    show_pin_state();
}

void TOLV_DOCK_WIDGET::set_menu(QMenu*)
{
}

void TOLV_DOCK_WIDGET::add_titlebar_widget(QWidget*)
{
}

void TOLV_DOCK_WIDGET::click_titlebar_button(TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM)
{
    TOLV_CHECK_TEXT(m_titlebar != nullptr, "m_titlebar != NULL");
}

void TOLV_DOCK_WIDGET::set_close_button_visibility(bool visible)
{
    m_show_close_button = visible;
}

void TOLV_DOCK_WIDGET::set_detach_button_visibility(bool visible)
{
    m_show_detach_button = visible;
}

void TOLV_DOCK_WIDGET::set_pushpin_button_visibility(bool visible)
{
    m_show_pushpin_button = visible;
    show_pin_buttons(visible);
}

void TOLV_DOCK_WIDGET::set_menu_button_visibility(bool)
{
}

void TOLV_DOCK_WIDGET::set_float_button_visibility(bool)
{
}

void TOLV_DOCK_WIDGET::set_search_button_visibility(bool)
{
}

void TOLV_DOCK_WIDGET::set_size(int width, int height)
{
    m_saved_min_size = minimumSize();
    m_saved_max_size = maximumSize();
    if (width >= 0)
    {
        if (width <= this->width())
            setMaximumWidth(width);
        else
            setMinimumWidth(width);
    }
    if (height >= 0)
    {
        if (height <= this->height())
            setMaximumHeight(height);
        else
            setMinimumHeight(height);
    }
    QTimer::singleShot(RESTORE_SIZES_DELAY, this, SLOT(restore_min_max_sizes()));
}

void TOLV_DOCK_WIDGET::initialize_with_search_widget(TOLV_TREE_VIEW*, bool)
{
}

Qt::ToolBarArea TOLV_DOCK_WIDGET::to_toolbar_area(Qt::DockWidgetArea area) const
{
    switch (area)
    {
    case Qt::TopDockWidgetArea:
        return Qt::TopToolBarArea;
    case Qt::BottomDockWidgetArea:
        return Qt::BottomToolBarArea;
    case Qt::RightDockWidgetArea:
        return Qt::RightToolBarArea;
    default:
        return Qt::LeftToolBarArea;
    }
}

bool TOLV_DOCK_WIDGET::is_within_widget(int margin) const
{
    const QPoint position = mapFromGlobal(QCursor::pos());
    if (m_area != Qt::TopDockWidgetArea && m_area != Qt::LeftDockWidgetArea)
        return -margin <= position.x() && -margin <= position.y();
    return QRect(QPoint(0, 0), QPoint(width() - 1 + HIDE_MARGIN, height() - 1 + HIDE_MARGIN)).contains(position);
}

void TOLV_DOCK_WIDGET::set_visible_and_raise(bool visible)
{
    setVisible(visible);
    if (visible)
        raise();
}

void TOLV_DOCK_WIDGET::set_visible_and_raise(QAction* action)
{
    TOLV_CHECK(action);
    if (action == nullptr)
        return;
    setVisible(true);
    raise();
    action->setChecked(true);
}

void TOLV_DOCK_WIDGET::detach()
{
    setFloating(!isWindow());
}

void TOLV_DOCK_WIDGET::open_widget()
{
    if (!isWindow() && !m_is_pinned && !m_button.isNull())
        add_button();
    show_pin_state();
    repaint_button_bar();
    show();
}

void TOLV_DOCK_WIDGET::close_widget(bool)
{
    m_state = DOCK_STATE_CLOSED;
    remove_button_from_bar();
    m_is_pinned = false;
    show_pin_state();
    hide();
}

void TOLV_DOCK_WIDGET::add_button()
{
}

void TOLV_DOCK_WIDGET::make_button(Qt::ToolBarArea)
{
}

TOLV_DOCK_WIDGET_BUTTON_BAR* TOLV_DOCK_WIDGET::get_button_bar() const
{
    return nullptr;
}

void TOLV_DOCK_WIDGET::remove_button_from_bar()
{
}

void TOLV_DOCK_WIDGET::repaint_button_bar() const
{
}

void TOLV_DOCK_WIDGET::show_pin_state()
{
}

void TOLV_DOCK_WIDGET::show_pin_buttons(bool)
{
}

void TOLV_DOCK_WIDGET::show_title()
{
}

void TOLV_DOCK_WIDGET::dock_location_changed(Qt::DockWidgetArea area)
{
    m_area = area;
    QTimer::singleShot(0, this, SLOT(repaint()));
}

void TOLV_DOCK_WIDGET::floating_status_changed(bool floating)
{
    if (floating)
        begin_to_float();
    else
        end_to_float();
    QTimer::singleShot(0, this, SLOT(repaint()));
}

void TOLV_DOCK_WIDGET::begin_to_float()
{
    setFeatures(features() & ~QDockWidget::DockWidgetFeatures(DockWidgetVerticalTitleBar));
    m_is_pinned = true;
    m_state = DOCK_STATE_FLOATING;
    show_pin_buttons(false);
    remove_button_from_bar();
}

void TOLV_DOCK_WIDGET::end_to_float()
{
    show_pin_buttons(m_show_pushpin_button);
    setFloating(false);
    open_widget();
    m_state = DOCK_STATE_DOCKED;
}

void TOLV_DOCK_WIDGET::help_button_clicked()
{
    help_dyn_show_context(get_help_topic_string());
}

void TOLV_DOCK_WIDGET::delay_tick()
{
    m_delay_timer->stop();
    if (is_within_widget(HIDE_MARGIN) || m_is_pinned)
    {
        m_delay_timer->start(HIDE_POLL_INTERVAL);
        return;
    }
    hide();
}

void TOLV_DOCK_WIDGET::restore_min_max_sizes()
{
    if (!m_saved_max_size.isValid())
        return; // set_size() was never called
    setMinimumSize(m_saved_min_size);
    setMaximumSize(m_saved_max_size);
}

void TOLV_DOCK_WIDGET::xml_customize(const tinyxml2::XMLElement* element)
{
    if (element == nullptr)
        return;
    const tinyxml2::XMLElement* const title = element->FirstChildElement("setWindowTitle");
    if (title != nullptr && get_text(*title) != nullptr)
        setWindowTitle(QString::fromUtf8(get_text(*title)));
    const tinyxml2::XMLElement* const feature_list = element->FirstChildElement("setFeatures");
    if (feature_list != nullptr)
        customize_features(*feature_list);
}

void TOLV_DOCK_WIDGET::customize_features(const tinyxml2::XMLElement& features)
{
    DockWidgetFeatures found = NoDockWidgetFeatures;
    bool is_any_known = false;
    for (const tinyxml2::XMLElement* child = features.FirstChildElement(); child != nullptr;
         child = child->NextSiblingElement())
    {
        const char* const name = get_text(*child);
        const std::optional<DockWidgetFeatures> feature = find_feature(QString::fromUtf8(name));
        if (!feature.has_value())
            continue;
        found |= *feature;
        is_any_known = true;
    }
    if (is_any_known)
        setFeatures(found);
}

bool TOLV_DOCK_WIDGET::event(QEvent* event)
{
    const bool result = QDockWidget::event(event);
    switch (event->type())
    {
    case QEvent::MouseButtonPress:
        if (const auto* const window = qobject_cast<QMainWindow*>(parentWidget()); window != nullptr)
            m_area = window->dockWidgetArea(this);
        break;
    case QEvent::MouseButtonRelease:
        reseat();
        break;
    case QEvent::WindowTitleChange:
        if (m_titlebar != nullptr)
        {
            setAccessibleName(QString::fromLocal8Bit(get_help_topic_string().c_str()));
            show_title();
        }
        break;
    case QEvent::Leave:
        if (!m_is_pinned && m_delay_timer->isActive())
            m_delay_timer->stop();
        break;
    default:
        break;
    }
    return result;
}

void TOLV_DOCK_WIDGET::reseat()
{
}

void TOLV_DOCK_WIDGET::childEvent(QChildEvent* event)
{
    QDockWidget::childEvent(event);
    if (event->type() == QEvent::ChildPolished && event->child()->isWidgetType())
        wire_help_button(*static_cast<QWidget*>(event->child()));
}

void TOLV_DOCK_WIDGET::wire_help_button(const QWidget& child)
{
    const QPushButton* const button = find_help_button(child);
    if (button == nullptr)
        return;
    MSG_TOLV::DEBUG_MSG("%s", "Found a Help button")->send();
    // A child can be polished any number of times; the link stays single.
    disconnect(button, SIGNAL(clicked()), this, SLOT(help_button_clicked()));
    TOLV_SAFE_CONNECT(button, SIGNAL(clicked()), this, SLOT(help_button_clicked()));
}

void TOLV_DOCK_WIDGET::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_F1)
        help_button_clicked();
    else
        QWidget::keyPressEvent(event);
}

void TOLV_DOCK_WIDGET::paintEvent(QPaintEvent* event)
{
    if (isWindow())
    {
        QStyleOptionFrame option;
        option.initFrom(this);
        option.lineWidth = 1;
        QStylePainter(this).drawPrimitive(QStyle::PE_FrameWindow, option);
    }
    if (m_titlebar != nullptr)
        show_title();
    QDockWidget::paintEvent(event);
}

void TOLV_DOCK_WIDGET::showEvent(QShowEvent* event)
{
    QDockWidget::showEvent(event);
    emit dock_widget_active_state_changed(true);
    if (m_state == DOCK_STATE_CLOSED)
        set_is_pinned(true);
}

void TOLV_DOCK_WIDGET::hideEvent(QHideEvent* event)
{
    QDockWidget::hideEvent(event);
    emit dock_widget_active_state_changed(false);
}
