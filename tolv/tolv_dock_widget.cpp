#include "tolv_dock_widget.h"

#include "tolv_check.h"
#include "tolv_dock_widget_button.h"
#include "tolv_dock_widget_button_bar.h"
#include "tolv_dock_widget_titlebar.h"
#include "tolv_global.h"
#include "tolv_help_dyn.h"
#include "tolv_icon.h"
#include "tolv_main_window.h"
#include "tolv_mem.h"
#include "tolv_msg.h"
#include "tolv_tree_view.h"

#include <QAction>
#include <QChildEvent>
#include <QCursor>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QStylePainter>
#include <QTimer>
#include <QVBoxLayout>

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
    delete m_button; // which leaves its bar by itself
}

void TOLV_DOCK_WIDGET::setup(QWidget* parent)
{
    m_delay_timer = new QTimer(this);

    TOLV_SAFE_CONNECT(this, SIGNAL(dockLocationChanged(Qt::DockWidgetArea)), this,
                      SLOT(dock_location_changed(Qt::DockWidgetArea)));
    TOLV_SAFE_CONNECT(this, SIGNAL(topLevelChanged(bool)), this, SLOT(floating_status_changed(bool)));
    TOLV_SAFE_CONNECT(m_delay_timer, SIGNAL(timeout()), this, SLOT(delay_tick()));

    m_titlebar = new TOLV_DOCK_WIDGET_TITLEBAR_WIDGET(this);
    setTitleBarWidget(m_titlebar);
    TOLV_SAFE_CONNECT(m_titlebar, SIGNAL(search_button_clicked(bool)), this, SIGNAL(search_button_clicked(bool)));
    TOLV_SAFE_CONNECT(m_titlebar, SIGNAL(float_button_clicked(bool)), this, SIGNAL(float_button_clicked(bool)));

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

void TOLV_DOCK_WIDGET::set_menu(QMenu* menu)
{
    if (m_titlebar != nullptr)
        m_titlebar->set_menu(menu);
}

void TOLV_DOCK_WIDGET::add_titlebar_widget(QWidget* widget)
{
    if (m_titlebar != nullptr)
        m_titlebar->add_widget(widget);
}

void TOLV_DOCK_WIDGET::click_titlebar_button(TOLV_DOCK_WIDGET_TITLEBAR_WIDGET_BUTTON_ENUM button)
{
    TOLV_CHECK_TEXT(m_titlebar != nullptr, "m_titlebar != NULL");
    if (m_titlebar != nullptr)
        m_titlebar->press_button(button);
}

void TOLV_DOCK_WIDGET::set_close_button_visibility(bool visible)
{
    m_show_close_button = visible;
    if (m_titlebar != nullptr)
        m_titlebar->set_close_visible(visible);
}

void TOLV_DOCK_WIDGET::set_detach_button_visibility(bool visible)
{
    m_show_detach_button = visible;
    if (m_titlebar != nullptr)
        m_titlebar->set_detach_visible(visible);
}

void TOLV_DOCK_WIDGET::set_pushpin_button_visibility(bool visible)
{
    m_show_pushpin_button = visible;
    if (m_titlebar != nullptr)
        m_titlebar->set_pin_visible(visible);
}

void TOLV_DOCK_WIDGET::set_menu_button_visibility(bool visible)
{
    if (m_titlebar != nullptr)
        m_titlebar->set_menu_visible(visible);
}

void TOLV_DOCK_WIDGET::set_float_button_visibility(bool visible)
{
    if (m_titlebar != nullptr)
        m_titlebar->set_float_visible(visible);
}

void TOLV_DOCK_WIDGET::set_search_button_visibility(bool visible)
{
    if (m_titlebar != nullptr)
        m_titlebar->set_search_visible(visible);
}

void TOLV_DOCK_WIDGET::set_size(int width, int height)
{
    if (!m_saved_max_size.isValid()) // a call while they are narrowed must not take them for the window's own
    {
        m_saved_min_size = minimumSize();
        m_saved_max_size = maximumSize();
    }
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

void TOLV_DOCK_WIDGET::initialize_with_search_widget(TOLV_TREE_VIEW* tree, bool use_search)
{
    if (tree == nullptr || !use_search)
        return;
    set_search_button_visibility(true);

    auto* const container = new QWidget(this);
    setWidget(container);
    auto* const layout = new QVBoxLayout(container);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);

    auto* const line = new QLineEdit(this);
    line->addAction(tolv_get_icon(TOLV_FILTER_ICON), QLineEdit::LeadingPosition);
    line->setPlaceholderText(QStringLiteral("<<Filter>>"));
    QAction* const clear_action = line->addAction(tolv_get_icon(TOLV_GRAY_X_ICON), QLineEdit::TrailingPosition);
    clear_action->setText(QString());
    clear_action->setToolTip(QStringLiteral("Clear"));
    line->hide();

    layout->addWidget(line);
    layout->addWidget(tree);
    container->setFocusProxy(tree);

    TOLV_SAFE_CONNECT(clear_action, SIGNAL(triggered()), line, SLOT(clear()));
    TOLV_SAFE_CONNECT(this, SIGNAL(search_button_clicked(bool)), line, SLOT(setVisible(bool)));
    TOLV_SAFE_CONNECT(line, SIGNAL(textChanged(QString)), this, SIGNAL(filter_option_changed(QString)));
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
    if (!isWindow() && !m_is_pinned && m_button != nullptr)
        add_button();
    show_pin_state();
    if (TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = get_button_bar(); bar != nullptr)
        bar->repaint();
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
    if (m_main_window == nullptr)
        return;
    const Qt::ToolBarArea area = to_toolbar_area(m_main_window->dockWidgetArea(this));
    if (m_button != nullptr)
    {
        m_button->set_area(area);
        m_button->setChecked(false);
    }
    else
    {
        make_button(area);
    }
    // A new button goes on the bar twice, which is meant: the bar's map keeps the second action.
    if (TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = get_button_bar(); bar != nullptr)
    {
        bar->add_button(m_button);
        bar->repaint();
    }
    m_delay_timer->stop();
}

void TOLV_DOCK_WIDGET::make_button(Qt::ToolBarArea area)
{
    m_button = new TOLV_DOCK_WIDGET_BUTTON(this, nullptr);
    m_button->set_area(area);
    if (TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = get_button_bar(); bar != nullptr)
        bar->add_button(m_button);
}

TOLV_DOCK_WIDGET_BUTTON_BAR* TOLV_DOCK_WIDGET::get_button_bar() const
{
    if (m_button == nullptr || m_main_window == nullptr)
        return nullptr;
    return m_main_window->m_button_bars.value(m_button->get_area());
}

void TOLV_DOCK_WIDGET::remove_button_from_bar()
{
    TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = get_button_bar();
    if (bar == nullptr)
        return;
    bar->remove_button(m_button);
    bar->repaint();
}

void TOLV_DOCK_WIDGET::show_pin_state()
{
    if (m_titlebar != nullptr)
        m_titlebar->set_pinned(m_is_pinned);
}

void TOLV_DOCK_WIDGET::dock_location_changed(Qt::DockWidgetArea area)
{
    if (area != Qt::NoDockWidgetArea)
        m_area = area; // Qt tells of no area when a window begins to float: the last one is kept
    if (m_state != DOCK_STATE_FLOATING)
    {
        if (area == Qt::TopDockWidgetArea || area == Qt::BottomDockWidgetArea)
            setFeatures(features() | DockWidgetVerticalTitleBar);
        if (m_button == nullptr && m_state == DOCK_STATE_UNPINNED && m_main_window != nullptr)
            make_button(to_toolbar_area(area));
    }
    if (m_titlebar != nullptr)
        m_titlebar->update_added_widget_to_vert_or_horz();
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
    setFeatures(features() & ~DockWidgetFeatures(DockWidgetVerticalTitleBar));
    m_is_pinned = true;
    m_state = DOCK_STATE_FLOATING;
    if (m_titlebar != nullptr)
    {
        m_titlebar->set_pin_visible(false);
        m_titlebar->update_added_widget_to_vert_or_horz();
    }
    remove_button_from_bar();
}

void TOLV_DOCK_WIDGET::end_to_float()
{
    if (m_titlebar != nullptr)
        m_titlebar->set_pin_visible(m_show_pushpin_button);
    // One that docks by itself is left alone, because asking again would break off the drag that is just putting it
    // down; so is one without a parent, which cannot dock and would be told so for ever.
    if (isFloating() && parentWidget() != nullptr)
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
    if (m_is_pinned || is_within_widget(HIDE_MARGIN))
    {
        m_delay_timer->start(HIDE_POLL_INTERVAL);
        return;
    }
    hide();
    if (m_button != nullptr)
        m_button->setChecked(false);
}

void TOLV_DOCK_WIDGET::restore_min_max_sizes()
{
    if (!m_saved_max_size.isValid())
        return; // they are not narrowed
    setMinimumSize(m_saved_min_size);
    setMaximumSize(m_saved_max_size);
    m_saved_min_size = QSize();
    m_saved_max_size = QSize();
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
        const std::optional<DockWidgetFeatures> feature = find_feature(QString::fromUtf8(get_text(*child)));
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
            m_titlebar->set_title(windowTitle());
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
    auto* const window = qobject_cast<QMainWindow*>(parentWidget());
    if (window == nullptr)
        return;
    const Qt::DockWidgetArea area = window->dockWidgetArea(this);
    if (area == m_area || area == Qt::NoDockWidgetArea)
        return;
    window->removeDockWidget(this);
    window->addDockWidget(area, this);
    emit topLevelChanged(false);
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
        m_titlebar->set_title(windowTitle()); // by whatever route it has come
    QDockWidget::paintEvent(event);
}

void TOLV_DOCK_WIDGET::showEvent(QShowEvent* event)
{
    QDockWidget::showEvent(event);
    emit dock_widget_active_state_changed(true);
    if (m_state == DOCK_STATE_CLOSED)
        set_is_pinned(true);
    if (m_titlebar != nullptr)
        m_titlebar->update_button_active_state();
}

void TOLV_DOCK_WIDGET::hideEvent(QHideEvent* event)
{
    QDockWidget::hideEvent(event);
    emit dock_widget_active_state_changed(false);
}
