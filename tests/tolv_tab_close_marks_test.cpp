#include "tolv_tab_close_marks.h"

#include "gui_driver.h"
#include "gui_test.h"
#include "picture.h"

#include <QSignalSpy>
#include <QTabBar>
#include <QToolButton>

#include <memory>

namespace
{
const QColor GROUND{40, 42, 46};
const QColor INK{230, 220, 80};

/// A tab bar with two tabs that can be closed, the first one current, in colours that occur nowhere else.
class TOLV_TAB_CLOSE_MARKS_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        m_bar = std::make_unique<QTabBar>();
        m_bar->setTabsClosable(true);
        QPalette palette(GROUND, GROUND);
        palette.setColor(QPalette::WindowText, INK);
        palette.setColor(QPalette::Disabled, QPalette::WindowText, QColor(120, 120, 120));
        m_bar->setPalette(palette);
        m_bar->addTab(QString());
        m_bar->addTab(QString());
        m_bar->resize(200, 40);
    }

    void TearDown() override
    {
        m_bar.reset();
        TOLV_GUI_TEST::TearDown();
    }

    QWidget* get_button(int tab) const
    {
        QWidget* const right = m_bar->tabButton(tab, QTabBar::RightSide);
        return right != nullptr ? right : m_bar->tabButton(tab, QTabBar::LeftSide);
    }

    QImage paint_button(int tab, qreal ratio = 1.0) const
    {
        return render_widget(get_button(tab), ratio);
    }

    static QColor get_middle(const QImage& picture)
    {
        return picture.pixelColor(picture.width() / 2, picture.height() / 2);
    }

    /// How much of a colour is ink, the rest being ground.
    static qreal get_strength(const QColor& color)
    {
        return qreal(color.red() - GROUND.red()) / (INK.red() - GROUND.red());
    }

    std::unique_ptr<QTabBar> m_bar;
};
} // namespace

TEST_F(TOLV_TAB_CLOSE_MARKS_TEST, the_mark_of_the_current_tab_has_the_colour_of_its_text)
{
    GUI_DRIVER::show(m_bar.get());
    EXPECT_FALSE(is_same_color(INK, get_middle(paint_button(0)), 20)); // the style's own
    TOLV_TAB_CLOSE_MARKS::install(m_bar.get());
    for (const qreal ratio : {1.0, 2.0})
        EXPECT_TRUE(is_same_color(INK, get_middle(paint_button(0, ratio)), 20)) << ratio;
}

TEST_F(TOLV_TAB_CLOSE_MARKS_TEST, the_mark_is_a_cross_with_room_around_it)
{
    GUI_DRIVER::show(m_bar.get());
    TOLV_TAB_CLOSE_MARKS::install(m_bar.get());
    const QImage picture = paint_button(0, 8.0); // large, so that no edge is soft
    const int size = picture.width();
    ASSERT_EQ(size, picture.height());
    const QRect ink = find_color_rect(picture, INK);
    EXPECT_NEAR(size * 0.5, ink.center().x(), 1);
    EXPECT_NEAR(size * 0.5, ink.center().y(), 1);
    EXPECT_NEAR(size * 0.52, ink.width(), size * 0.06);
    EXPECT_NEAR(size * 0.52, ink.height(), size * 0.06);
    for (const QPoint& arm : {QPoint(-1, -1), QPoint(1, -1), QPoint(-1, 1), QPoint(1, 1)})
        EXPECT_EQ(INK, picture.pixelColor(QPoint(size, size) / 2 + arm * (size / 6)));
    for (const QPoint& gap : {QPoint(-1, 0), QPoint(1, 0), QPoint(0, -1), QPoint(0, 1)})
        EXPECT_EQ(GROUND, picture.pixelColor(QPoint(size, size) / 2 + gap * (size / 6)));
}

TEST_F(TOLV_TAB_CLOSE_MARKS_TEST, the_mark_of_another_tab_is_weaker)
{
    GUI_DRIVER::show(m_bar.get());
    TOLV_TAB_CLOSE_MARKS::install(m_bar.get());
    EXPECT_NEAR(0.65, get_strength(get_middle(paint_button(1))), 0.05);
    m_bar->setCurrentIndex(1);
    EXPECT_NEAR(1.0, get_strength(get_middle(paint_button(1))), 0.05);
    EXPECT_NEAR(0.65, get_strength(get_middle(paint_button(0))), 0.05);
}

TEST_F(TOLV_TAB_CLOSE_MARKS_TEST, the_mark_under_the_mouse_stands_out_and_more_so_when_it_is_pressed)
{
    GUI_DRIVER::show(m_bar.get());
    TOLV_TAB_CLOSE_MARKS::install(m_bar.get());
    const auto get_ground = [&] // beside the cross
    {
        const QImage picture = paint_button(1);
        return get_strength(picture.pixelColor(picture.width() / 2, 2));
    };
    EXPECT_EQ(0.0, get_ground());
    GUI_DRIVER::hover(get_button(1));
    EXPECT_NEAR(0.18, get_ground(), 0.02);
    EXPECT_NEAR(1.0, get_strength(get_middle(paint_button(1))), 0.05);
    GUI_DRIVER::press(get_button(1), get_button(1)->rect().center());
    EXPECT_NEAR(0.34, get_ground(), 0.02);
    GUI_DRIVER::release(get_button(1), get_button(1)->rect().center());
    GUI_DRIVER::hover(get_button(0));
    EXPECT_EQ(0.0, get_ground());
}

TEST_F(TOLV_TAB_CLOSE_MARKS_TEST, a_disabled_mark_has_the_disabled_texts_colour_and_heeds_no_mouse)
{
    GUI_DRIVER::show(m_bar.get());
    TOLV_TAB_CLOSE_MARKS::install(m_bar.get());
    GUI_DRIVER::hover(get_button(0));
    m_bar->setEnabled(false);
    const QImage picture = paint_button(0);
    EXPECT_TRUE(is_same_color(QColor(120, 120, 120), get_middle(picture), 20));
    EXPECT_EQ(GROUND, picture.pixelColor(picture.width() / 2, 2));
}

TEST_F(TOLV_TAB_CLOSE_MARKS_TEST, tabs_that_come_later_and_a_second_call_make_no_difference)
{
    TOLV_TAB_CLOSE_MARKS::install(nullptr);
    TOLV_TAB_CLOSE_MARKS::install(m_bar.get());
    TOLV_TAB_CLOSE_MARKS::install(m_bar.get());
    EXPECT_EQ(1, m_bar->findChildren<TOLV_TAB_CLOSE_MARKS*>().size());
    GUI_DRIVER::show(m_bar.get());
    const QImage expected = paint_button(0);
    EXPECT_TRUE(is_same_color(INK, get_middle(expected), 20));
    m_bar->setCurrentIndex(m_bar->addTab(QString()));
    GUI_DRIVER::process_posted();
    expect_same_picture(expected, paint_button(2));
}

TEST_F(TOLV_TAB_CLOSE_MARKS_TEST, a_button_of_the_hosts_own_is_left_alone)
{
    auto* const own = new QToolButton;
    own->setText(QStringLiteral("#"));
    own->resize(16, 16);
    m_bar->setTabButton(1, QTabBar::RightSide, own);
    GUI_DRIVER::show(m_bar.get());
    const QImage expected = paint_button(1);
    TOLV_TAB_CLOSE_MARKS::install(m_bar.get());
    expect_same_picture(expected, paint_button(1));
}

TEST_F(TOLV_TAB_CLOSE_MARKS_TEST, a_click_on_the_mark_asks_for_the_closing)
{
    GUI_DRIVER::show(m_bar.get());
    TOLV_TAB_CLOSE_MARKS::install(m_bar.get());
    const QSignalSpy close_requests(m_bar.get(), SIGNAL(tabCloseRequested(int)));
    GUI_DRIVER::click(get_button(1));
    ASSERT_EQ(1, close_requests.count());
    EXPECT_EQ(1, close_requests.constFirst().constFirst().toInt());
}
