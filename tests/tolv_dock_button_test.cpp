#include "gui_driver.h"
#include "gui_test.h"
#include "paint_counter.h"
#include "picture.h"
#include "tolv_dock_widget.h"
#include "tolv_dock_widget_button.h"
#include "tolv_dock_widget_button_bar.h"
#include "tolv_dock_widget_titlebar.h"
#include "tolv_icon.h"
#include "tolv_main_window.h"

#include <QMenuBar>
#include <QPainter>
#include <QSignalSpy>
#include <QStyle>
#include <QStyleOptionToolButton>
#include <QTextEdit>
#include <QTransform>

#include <algorithm>
#include <memory>

namespace
{
constexpr Qt::ToolBarArea AREAS[] = {Qt::LeftToolBarArea, Qt::RightToolBarArea, Qt::TopToolBarArea,
                                     Qt::BottomToolBarArea};

class TOLV_DOCK_BUTTON_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        m_window = std::make_unique<TOLV_MAIN_WINDOW>();
        m_window->resize(700, 480);
        m_window->setCentralWidget(new QTextEdit);
    }

    void TearDown() override
    {
        m_window.reset();
        TOLV_GUI_TEST::TearDown();
    }

    TOLV_DOCK_WIDGET* add_dock(const char* title, Qt::DockWidgetArea area = Qt::LeftDockWidgetArea) const
    {
        auto* const dock = new TOLV_DOCK_WIDGET(QLatin1String(title), m_window.get());
        dock->setWidget(new QTextEdit);
        m_window->addDockWidget(area, dock);
        return dock;
    }

    /// A dock window that is unpinned, with its button on the bar at its edge.
    TOLV_DOCK_WIDGET* add_unpinned_dock(const char* title, Qt::DockWidgetArea area = Qt::LeftDockWidgetArea) const
    {
        TOLV_DOCK_WIDGET* const dock = add_dock(title, area);
        dock->click_titlebar_button(TITLEBAR_BUTTON_PIN);
        return dock;
    }

    /// The button of a dock window, on whichever bar it is.
    TOLV_DOCK_WIDGET_BUTTON* find_button(const TOLV_DOCK_WIDGET* dock) const
    {
        return GUI_DRIVER::find_widget<TOLV_DOCK_WIDGET_BUTTON>(
            m_window.get(), [&](const TOLV_DOCK_WIDGET_BUTTON* button) { return button->get_dock() == dock; });
    }

    std::unique_ptr<TOLV_MAIN_WINDOW> m_window;
};

/// A button's picture, in its own size, for an edge.
QImage paint(TOLV_DOCK_WIDGET_BUTTON& button, Qt::ToolBarArea area, qreal ratio = 1.0)
{
    button.set_area(area);
    button.resize(button.sizeHint());
    return render_widget(&button, ratio);
}

QImage turn(const QImage& picture, int degrees)
{
    QImage turned = picture.transformed(QTransform().rotate(degrees));
    turned.setDevicePixelRatio(picture.devicePixelRatio());
    return turned;
}

/// What the style makes of a tool button, on the colour of the window.
QImage paint_by_style(const QToolButton& button)
{
    class OPTION_SOURCE : public QToolButton
    {
    public:
        using QToolButton::initStyleOption;
    };
    QStyleOptionToolButton option;
    (button.*&OPTION_SOURCE::initStyleOption)(&option);
    QImage picture(button.size(), QImage::Format_ARGB32_Premultiplied);
    picture.fill(button.palette().color(QPalette::Window));
    QPainter painter(&picture);
    button.style()->drawComplexControl(QStyle::CC_ToolButton, &option, &painter, &button);
    return picture;
}
} // namespace

// ---- Making ---------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_BUTTON_TEST, a_new_button_shows_the_title_beside_an_icon_and_stands_at_the_left)
{
    TOLV_DOCK_WIDGET* const dock = add_dock("Messages");
    const TOLV_DOCK_WIDGET_BUTTON button(dock);
    EXPECT_EQ(dock, button.get_dock());
    EXPECT_EQ(Qt::LeftToolBarArea, button.get_area());
    EXPECT_EQ(nullptr, button.parent());
    EXPECT_TRUE(button.autoRaise());
    EXPECT_EQ(Qt::ToolButtonTextBesideIcon, button.toolButtonStyle());
    EXPECT_EQ(QStringLiteral("Messages"), button.text());
    EXPECT_TRUE(button.isCheckable());
    EXPECT_FALSE(button.isChecked());
    EXPECT_EQ(Qt::NoFocus, button.focusPolicy());
}

TEST_F(TOLV_DOCK_BUTTON_TEST, a_button_has_the_icon_of_its_windows_entry_in_the_main_menu)
{
    QMenu* const view = m_window->menuBar()->addMenu(QStringLiteral("&View"));
    QMenu* const docks = view->addMenu(QStringLiteral("&Dock Windows"));
    const QIcon icon = tolv_get_icon(TOLV_COPY_ICON);
    docks->addAction(icon, QStringLiteral("&Messages"));
    docks->addAction(QStringLiteral("&Status"));
    EXPECT_EQ(icon.cacheKey(), TOLV_DOCK_WIDGET_BUTTON(add_dock("Messages")).icon().cacheKey());
    EXPECT_TRUE(TOLV_DOCK_WIDGET_BUTTON(add_dock("Status")).icon().isNull());
}

TEST_F(TOLV_DOCK_BUTTON_TEST, a_window_without_an_entry_in_the_main_menu_has_a_button_of_text_only)
{
    m_window->menuBar()->addMenu(QStringLiteral("Messages"))->addAction(QStringLiteral("Other"));
    EXPECT_TRUE(TOLV_DOCK_WIDGET_BUTTON(add_dock("Messages")).icon().isNull());
}

TEST_F(TOLV_DOCK_BUTTON_TEST, a_window_without_a_main_window_has_a_button_of_text_only)
{
    TOLV_DOCK_WIDGET dock(QStringLiteral("Messages"));
    const TOLV_DOCK_WIDGET_BUTTON button(&dock);
    EXPECT_EQ(QStringLiteral("Messages"), button.text());
    EXPECT_TRUE(button.icon().isNull());
}

TEST_F(TOLV_DOCK_BUTTON_TEST, a_button_without_a_window_does_nothing)
{
    TOLV_DOCK_WIDGET_BUTTON button(nullptr);
    EXPECT_EQ(nullptr, button.get_dock());
    EXPECT_TRUE(button.text().isEmpty());
    button.on_clicked(true);
    button.on_clicked(false);
    EXPECT_FALSE(paint(button, Qt::LeftToolBarArea).isNull());
}

TEST_F(TOLV_DOCK_BUTTON_TEST, a_button_forgets_a_window_that_is_gone)
{
    auto dock = std::make_unique<TOLV_DOCK_WIDGET>(QStringLiteral("Messages"));
    TOLV_DOCK_WIDGET_BUTTON button(dock.get());
    dock.reset();
    EXPECT_EQ(nullptr, button.get_dock());
    button.on_clicked(true);
    EXPECT_FALSE(paint(button, Qt::TopToolBarArea).isNull());
    EXPECT_EQ(QStringLiteral("Messages"), button.text());
}

// ---- Size and picture -----------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_BUTTON_TEST, the_size_hint_stands_at_the_left_and_at_the_right)
{
    TOLV_DOCK_WIDGET_BUTTON button(add_dock("Messages"));
    QToolButton plain;
    plain.setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    plain.setAutoRaise(true);
    plain.setText(QStringLiteral("Messages"));
    const QSize hint = plain.sizeHint();
    ASSERT_GT(hint.width(), hint.height());
    EXPECT_EQ(hint.transposed(), button.sizeHint());
    for (const Qt::ToolBarArea area : AREAS)
    {
        button.set_area(area);
        EXPECT_EQ(area, button.get_area());
        const bool is_turned = area == Qt::LeftToolBarArea || area == Qt::RightToolBarArea;
        EXPECT_EQ(is_turned ? hint.transposed() : hint, button.sizeHint()) << area;
    }
    button.set_area(Qt::NoToolBarArea);
    EXPECT_EQ(hint, button.sizeHint());
}

TEST_F(TOLV_DOCK_BUTTON_TEST, setting_the_edge_paints_the_button_again)
{
    const TOLV_DOCK_WIDGET* const dock = add_unpinned_dock("Messages");
    GUI_DRIVER::show(m_window.get());
    TOLV_DOCK_WIDGET_BUTTON* const button = find_button(dock);
    GUI_DRIVER::process_posted();
    const PAINT_COUNTER counter(button);
    GUI_DRIVER::process_posted();
    ASSERT_EQ(0, counter.m_count);
    button->set_area(Qt::LeftToolBarArea);
    EXPECT_TRUE(GUI_DRIVER::wait_for([&] { return counter.m_count > 0; }));
}

TEST_F(TOLV_DOCK_BUTTON_TEST, a_lying_button_looks_like_a_tool_button_on_the_windows_colour)
{
    m_window->menuBar()
        ->addMenu(QStringLiteral("View"))
        ->addAction(tolv_get_icon(TOLV_COPY_ICON), QStringLiteral("Messages"));
    TOLV_DOCK_WIDGET_BUTTON button(add_dock("Messages"));
    for (const Qt::ToolBarArea area : {Qt::TopToolBarArea, Qt::BottomToolBarArea})
    {
        const QImage unchecked = paint(button, area);
        expect_same_picture(paint_by_style(button), unchecked);
        button.setChecked(true);
        const QImage checked = paint(button, area);
        expect_same_picture(paint_by_style(button), checked);
        EXPECT_NE(unchecked, checked);
        button.setChecked(false);
    }
}

TEST_F(TOLV_DOCK_BUTTON_TEST, the_picture_is_turned_upwards_at_the_left_and_downwards_at_the_right)
{
    m_window->menuBar()
        ->addMenu(QStringLiteral("View"))
        ->addAction(tolv_get_icon(TOLV_COPY_ICON), QStringLiteral("Messages"));
    TOLV_DOCK_WIDGET_BUTTON button(add_dock("Messages"));
    for (const qreal ratio : {1.0, 2.0})
        for (const bool checked : {false, true})
        {
            SCOPED_TRACE(testing::Message() << ratio << checked);
            button.setChecked(checked);
            const QImage lying = paint(button, Qt::TopToolBarArea, ratio);
            EXPECT_GT(lying.width(), lying.height());
            expect_same_picture(turn(lying, -90), paint(button, Qt::LeftToolBarArea, ratio));
            expect_same_picture(turn(lying, 90), paint(button, Qt::RightToolBarArea, ratio));
            expect_same_picture(lying, paint(button, Qt::BottomToolBarArea, ratio));
        }
}

TEST_F(TOLV_DOCK_BUTTON_TEST, the_icon_is_at_the_lower_end_at_the_left_and_at_the_upper_end_at_the_right)
{
    QPixmap spot(16, 16);
    spot.fill(Qt::magenta);
    m_window->menuBar()->addMenu(QStringLiteral("View"))->addAction(QIcon(spot), QStringLiteral("Messages"));
    TOLV_DOCK_WIDGET_BUTTON button(add_dock("Messages"));
    const int middle = button.sizeHint().height() / 2;
    EXPECT_GT(find_color_rect(paint(button, Qt::LeftToolBarArea), Qt::magenta).top(), middle);
    EXPECT_LT(find_color_rect(paint(button, Qt::RightToolBarArea), Qt::magenta).bottom(), middle);
    EXPECT_LT(find_color_rect(paint(button, Qt::TopToolBarArea), Qt::magenta).right(), middle);
}

TEST_F(TOLV_DOCK_BUTTON_TEST, a_dense_picture_is_painted_densely)
{
    TOLV_DOCK_WIDGET_BUTTON button(add_dock("Messages"));
    const QImage coarse = paint(button, Qt::LeftToolBarArea, 1.0);
    const QImage dense = paint(button, Qt::LeftToolBarArea, 2.0);
    ASSERT_EQ(coarse.size() * 2, dense.size());
    bool is_only_magnified = true;
    for (int y = 0; y < dense.height(); ++y)
        for (int x = 0; x < dense.width(); ++x)
            is_only_magnified = is_only_magnified && dense.pixel(x, y) == coarse.pixel(x / 2, y / 2);
    EXPECT_FALSE(is_only_magnified);
}

TEST_F(TOLV_DOCK_BUTTON_TEST, the_ground_has_the_windows_colour_of_the_buttons_palette)
{
    TOLV_DOCK_WIDGET_BUTTON button(add_dock("Messages"));
    QPalette palette = button.palette();
    palette.setColor(QPalette::Window, QColor(10, 60, 90));
    palette.setColor(QPalette::Disabled, QPalette::Window, QColor(90, 60, 10));
    button.setPalette(palette);
    for (const Qt::ToolBarArea area : AREAS)
    {
        button.setEnabled(true);
        EXPECT_EQ(QColor(10, 60, 90), paint(button, area).pixelColor(0, 0)) << area;
        button.setEnabled(false);
        EXPECT_EQ(QColor(90, 60, 10), paint(button, area).pixelColor(0, 0)) << area;
    }
}

TEST_F(TOLV_DOCK_BUTTON_TEST, a_new_title_reaches_the_button_with_the_next_painting)
{
    TOLV_DOCK_WIDGET* const dock = add_dock("Messages");
    TOLV_DOCK_WIDGET_BUTTON button(dock);
    const QImage before = paint(button, Qt::TopToolBarArea);
    dock->setWindowTitle(QStringLiteral("Output"));
    EXPECT_EQ(QStringLiteral("Messages"), button.text());
    const QImage after = paint(button, Qt::TopToolBarArea);
    EXPECT_EQ(QStringLiteral("Output"), button.text());
    EXPECT_NE(before, after);
}

// ---- Clicks ---------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_BUTTON_TEST, a_click_shows_the_window_and_another_hides_it_at_each_edge)
{
    const struct
    {
        const char* title;
        Qt::DockWidgetArea area;
        Qt::ToolBarArea bar_area;
    } rows[] = {{"Left", Qt::LeftDockWidgetArea, Qt::LeftToolBarArea},
                {"Right", Qt::RightDockWidgetArea, Qt::RightToolBarArea},
                {"Top", Qt::TopDockWidgetArea, Qt::TopToolBarArea},
                {"Bottom", Qt::BottomDockWidgetArea, Qt::BottomToolBarArea}};
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.title);
        const TOLV_DOCK_WIDGET* const dock = add_unpinned_dock(row.title, row.area);
        GUI_DRIVER::show(m_window.get());
        GUI_DRIVER::process_posted();
        TOLV_DOCK_WIDGET_BUTTON* const button = find_button(dock);
        EXPECT_EQ(row.bar_area, button->get_area());
        EXPECT_FALSE(dock->isVisible());

        GUI_DRIVER::click(button);
        EXPECT_TRUE(button->isChecked());
        EXPECT_TRUE(dock->isVisible());
        EXPECT_EQ(row.area, m_window->dockWidgetArea(const_cast<TOLV_DOCK_WIDGET*>(dock)));
        EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_UNPINNED, dock->get_state());

        GUI_DRIVER::click(button);
        EXPECT_FALSE(button->isChecked());
        EXPECT_FALSE(dock->isVisible());
        EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_UNPINNED, dock->get_state());
        EXPECT_FALSE(dock->get_is_pinned());
    }
}

TEST_F(TOLV_DOCK_BUTTON_TEST, at_most_one_window_of_an_edge_is_out)
{
    const TOLV_DOCK_WIDGET* const first = add_unpinned_dock("First");
    const TOLV_DOCK_WIDGET* const second = add_unpinned_dock("Second");
    const TOLV_DOCK_WIDGET* const third = add_unpinned_dock("Third");
    const TOLV_DOCK_WIDGET* const elsewhere = add_unpinned_dock("Elsewhere", Qt::RightDockWidgetArea);
    GUI_DRIVER::show(m_window.get());
    GUI_DRIVER::click(find_button(elsewhere));
    for (const TOLV_DOCK_WIDGET* dock : {second, first, third, second})
    {
        GUI_DRIVER::click(find_button(dock));
        for (const TOLV_DOCK_WIDGET* other : {first, second, third})
        {
            EXPECT_EQ(other == dock, other->isVisible());
            EXPECT_EQ(other == dock, find_button(other)->isChecked());
        }
        EXPECT_TRUE(elsewhere->isVisible());
        EXPECT_TRUE(find_button(elsewhere)->isChecked());
    }
}

TEST_F(TOLV_DOCK_BUTTON_TEST, the_window_comes_before_the_others_of_the_edge_go)
{
    const TOLV_DOCK_WIDGET* const first = add_unpinned_dock("First");
    const TOLV_DOCK_WIDGET* const second = add_unpinned_dock("Second");
    GUI_DRIVER::show(m_window.get());
    GUI_DRIVER::click(find_button(first));
    const auto order = std::make_shared<QStringList>();
    QObject::connect(second, &TOLV_DOCK_WIDGET::dock_widget_active_state_changed, second,
                     [order](bool active) { *order << (active ? QStringLiteral("second comes") : QString()); });
    QObject::connect(first, &TOLV_DOCK_WIDGET::dock_widget_active_state_changed, first,
                     [order](bool active) { *order << (active ? QString() : QStringLiteral("first goes")); });
    GUI_DRIVER::click(find_button(second));
    EXPECT_EQ(QStringList({"second comes", "first goes"}), *order);
}

TEST_F(TOLV_DOCK_BUTTON_TEST, a_host_may_take_buttons_off_the_bar_when_it_hears_of_a_window_that_goes)
{
    QVector<TOLV_DOCK_WIDGET*> docks;
    for (const char* title : {"A", "B", "C", "D"})
        docks << add_unpinned_dock(title);
    GUI_DRIVER::show(m_window.get());
    TOLV_DOCK_WIDGET_BUTTON_BAR* const bar = m_window->m_button_bars.value(Qt::LeftToolBarArea);
    // Whichever of them goes first, the others lose their buttons and stay.
    const QObject scope; // of the connections
    TOLV_DOCK_WIDGET_BUTTON* const chosen = bar->m_buttons.firstKey();
    for (TOLV_DOCK_WIDGET* dock : qAsConst(docks))
    {
        dock->show();
        QObject::connect(dock, &TOLV_DOCK_WIDGET::dock_widget_active_state_changed, &scope,
                         [=](bool active)
                         {
                             const QList<TOLV_DOCK_WIDGET_BUTTON*> present = bar->m_buttons.keys();
                             for (TOLV_DOCK_WIDGET_BUTTON* button : present)
                             {
                                 if (!active && button != chosen && button->get_dock() != dock)
                                     delete button;
                             }
                         });
    }
    chosen->on_clicked(true);
    EXPECT_EQ(2, bar->m_buttons.size());
    EXPECT_EQ(3, std::count_if(docks.begin(), docks.end(), [](const QWidget* dock) { return dock->isVisible(); }));
}

TEST_F(TOLV_DOCK_BUTTON_TEST, unchecking_the_other_buttons_is_no_click)
{
    const TOLV_DOCK_WIDGET* const first = add_unpinned_dock("First");
    const TOLV_DOCK_WIDGET* const second = add_unpinned_dock("Second");
    GUI_DRIVER::show(m_window.get());
    GUI_DRIVER::click(find_button(first));
    const QSignalSpy clicked(find_button(first), SIGNAL(clicked(bool)));
    const QSignalSpy toggled(find_button(first), SIGNAL(toggled(bool)));
    GUI_DRIVER::click(find_button(second));
    EXPECT_EQ(0, clicked.count());
    EXPECT_EQ(1, toggled.count());
}

TEST_F(TOLV_DOCK_BUTTON_TEST, a_second_button_of_the_same_window_stays_as_it_is)
{
    TOLV_DOCK_WIDGET* const dock = add_unpinned_dock("First");
    auto* const twin = new TOLV_DOCK_WIDGET_BUTTON(dock);
    m_window->m_button_bars.value(Qt::LeftToolBarArea)->add_button(twin);
    twin->setChecked(true);
    GUI_DRIVER::show(m_window.get());
    m_window->m_button_bars.value(Qt::LeftToolBarArea)->m_buttons.firstKey()->on_clicked(true);
    EXPECT_TRUE(dock->isVisible());
    EXPECT_TRUE(twin->isChecked());
}

TEST_F(TOLV_DOCK_BUTTON_TEST, a_click_brings_a_window_in_front_of_the_tabs_beside_it)
{
    TOLV_DOCK_WIDGET* const front = add_dock("Front");
    TOLV_DOCK_WIDGET* const dock = add_dock("Messages");
    m_window->tabifyDockWidget(dock, front);
    dock->click_titlebar_button(TITLEBAR_BUTTON_PIN);
    GUI_DRIVER::show(m_window.get());
    GUI_DRIVER::click(find_button(dock));
    GUI_DRIVER::process_posted();
    EXPECT_FALSE(dock->visibleRegion().isEmpty());
    EXPECT_TRUE(front->visibleRegion().isEmpty());
}

TEST_F(TOLV_DOCK_BUTTON_TEST, unchecking_takes_a_floating_window_back)
{
    TOLV_DOCK_WIDGET* const dock = add_unpinned_dock("Messages");
    GUI_DRIVER::show(m_window.get());
    TOLV_DOCK_WIDGET_BUTTON* const button = find_button(dock);
    GUI_DRIVER::click(button);
    dock->detach();
    ASSERT_TRUE(dock->isFloating());
    const QSignalSpy active(dock, SIGNAL(dock_widget_active_state_changed(bool)));
    button->on_clicked(false);
    EXPECT_FALSE(dock->isFloating());
    ASSERT_FALSE(active.isEmpty());
    EXPECT_FALSE(active.constFirst().value(0).toBool()); // hidden first
    // What docks again is opened.
    EXPECT_TRUE(dock->isVisible());
    EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_DOCKED, dock->get_state());
}

TEST_F(TOLV_DOCK_BUTTON_TEST, a_window_without_side_bars_is_shown_and_hidden_by_its_button)
{
    QMainWindow window;
    auto* const dock = new TOLV_DOCK_WIDGET(QStringLiteral("Messages"), &window);
    window.addDockWidget(Qt::LeftDockWidgetArea, dock);
    GUI_DRIVER::show(&window);
    TOLV_DOCK_WIDGET_BUTTON button(dock);
    dock->hide();
    button.on_clicked(true);
    EXPECT_TRUE(dock->isVisible());
    button.on_clicked(false);
    EXPECT_FALSE(dock->isVisible());
}
