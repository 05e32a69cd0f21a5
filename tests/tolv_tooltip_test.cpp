#include "tolv_tooltip.h"

#include "gui_driver.h"
#include "gui_test.h"
#include "picture.h"
#include "recording_style.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QScreen>
#include <QScrollBar>
#include <QSignalSpy>
#include <QToolTip>

#include <memory>

namespace
{
class OPEN_TOOLTIP : public TOLV_TOOLTIP
{
public:
    using TOLV_TOOLTIP::TOLV_TOOLTIP;

    using TOLV_TOOLTIP::m_delay;
    using TOLV_TOOLTIP::m_delay_timer;
    using TOLV_TOOLTIP::m_display_time;
    using TOLV_TOOLTIP::m_display_timer;
};

class TOLV_TOOLTIP_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        m_window = std::make_unique<QPlainTextEdit>();
        m_window->setPlainText(QString(200, QLatin1Char('\n')));
        m_window->resize(300, 200);
        m_window->move(20, 20);
        ASSERT_TRUE(GUI_DRIVER::show(m_window.get()));
        GUI_DRIVER::hover(m_window->viewport());
        m_tip = new OPEN_TOOLTIP(m_window.get());
    }
    void TearDown() override
    {
        m_window.reset();
        TOLV_GUI_TEST::TearDown();
    }

    /// Shows a text with no delay worth the name.
    void show_at_once(const char* text) const
    {
        m_tip->m_delay = 0;
        m_tip->show_tooltip(QString::fromLatin1(text));
        ASSERT_TRUE(GUI_DRIVER::wait_for([this] { return m_tip->isVisible(); }));
    }
    bool is_closed() const
    {
        return !m_tip->isVisible() && m_tip->text().isEmpty() && !m_tip->m_delay_timer.isActive() &&
               !m_tip->m_display_timer.isActive();
    }
    bool is_waiting() const
    {
        return !m_tip->isVisible() && m_tip->m_delay_timer.isActive() && !m_tip->m_display_timer.isActive();
    }
    bool is_shown() const
    {
        return m_tip->isVisible() && !m_tip->m_delay_timer.isActive() && m_tip->m_display_timer.isActive();
    }

    std::unique_ptr<QPlainTextEdit> m_window;
    OPEN_TOOLTIP* m_tip = nullptr;
};
} // namespace

TEST_F(TOLV_TOOLTIP_TEST, a_new_tip_is_closed_and_looks_like_the_platforms)
{
    EXPECT_TRUE(is_closed());
    EXPECT_EQ(5000, m_tip->m_display_time);
    EXPECT_EQ(1000, m_tip->m_delay);
    EXPECT_EQ(Qt::ToolTip, m_tip->windowType());
    EXPECT_EQ(QPalette::ToolTipText, m_tip->foregroundRole());
    EXPECT_EQ(QPalette::ToolTipBase, m_tip->backgroundRole());
    EXPECT_EQ(QToolTip::palette().color(QPalette::ToolTipBase), m_tip->palette().color(QPalette::ToolTipBase));
    EXPECT_EQ(m_tip->style()->pixelMetric(QStyle::PM_ToolTipLabelFrameWidth, nullptr, m_tip) + 1, m_tip->margin());
    EXPECT_EQ(QFrame::NoFrame, m_tip->frameStyle());
    EXPECT_EQ(Qt::AlignLeft, m_tip->alignment());
    EXPECT_EQ(1, m_tip->indent());
    EXPECT_TRUE(m_tip->wordWrap());
    EXPECT_TRUE(m_tip->testAttribute(Qt::WA_MouseTracking));
    EXPECT_NEAR(m_tip->style()->styleHint(QStyle::SH_ToolTipLabel_Opacity, nullptr, m_tip) / 255.0,
                m_tip->windowOpacity(), 0.01);
}

TEST_F(TOLV_TOOLTIP_TEST, a_tip_has_the_colours_of_the_platforms_tips_and_is_ready_to_be_measured)
{
    const QPalette platforms = QToolTip::palette();
    QPalette changed = platforms;
    changed.setColor(QPalette::ToolTipBase, Qt::magenta);
    QToolTip::setPalette(changed);
    const TOLV_TOOLTIP tip(m_window.get());
    QToolTip::setPalette(platforms);
    EXPECT_EQ(QColor(Qt::magenta), tip.palette().color(QPalette::ToolTipBase));
    EXPECT_TRUE(tip.testAttribute(Qt::WA_WState_Polished));
}

// ---- States ---------------------------------------------------------------------------------------------------------

TEST_F(TOLV_TOOLTIP_TEST, a_tip_waits_is_shown_and_closes)
{
    m_tip->m_delay = 50;
    m_tip->m_display_time = 50;
    m_tip->show_tooltip(QStringLiteral("clk: 100 MHz"));
    EXPECT_TRUE(is_waiting());
    EXPECT_TRUE(GUI_DRIVER::wait_for([this] { return is_shown(); }));
    EXPECT_EQ(QStringLiteral("clk: 100 MHz"), m_tip->text());
    EXPECT_TRUE(GUI_DRIVER::wait_for([this] { return is_closed(); }));
}

TEST_F(TOLV_TOOLTIP_TEST, the_same_text_again_leaves_the_delay_running)
{
    m_tip->m_delay = 100;
    m_tip->show_tooltip(QStringLiteral("clk"));
    m_tip->m_delay = 1000000;
    m_tip->show_tooltip(QStringLiteral("clk"));
    EXPECT_TRUE(GUI_DRIVER::wait_for([this] { return is_shown(); }));
    m_tip->show_tooltip(QStringLiteral("clk"));
    EXPECT_TRUE(is_shown());
}

TEST_F(TOLV_TOOLTIP_TEST, another_text_closes_the_tip_and_waits_anew)
{
    show_at_once("clk");
    m_tip->m_delay = 1000000;
    m_tip->show_tooltip(QStringLiteral("reset"));
    EXPECT_TRUE(is_waiting()); // the time of the tip before is no longer measured
    EXPECT_EQ(QStringLiteral("reset"), m_tip->text());
}

TEST_F(TOLV_TOOLTIP_TEST, a_delay_of_minus_one_means_no_tips)
{
    m_tip->m_delay = -1;
    m_tip->show_tooltip(QStringLiteral("clk"));
    EXPECT_TRUE(is_closed());
}

TEST_F(TOLV_TOOLTIP_TEST, a_display_time_of_minus_one_means_tips_that_stay)
{
    m_tip->m_display_time = -1;
    show_at_once("clk");
    m_tip->restart_display_timer();
    m_tip->hide_tooltip();
    EXPECT_FALSE(m_tip->m_display_timer.isActive());
    EXPECT_TRUE(m_tip->isVisible());
}

TEST_F(TOLV_TOOLTIP_TEST, hiding_lets_the_tip_go_in_its_own_time)
{
    show_at_once("clk");
    m_tip->m_display_time = 100;
    m_tip->hide_tooltip();
    EXPECT_TRUE(is_shown());
    EXPECT_TRUE(GUI_DRIVER::wait_for([this] { return is_closed(); }));
}

TEST_F(TOLV_TOOLTIP_TEST, hiding_immediately_closes_the_tip_at_once)
{
    show_at_once("clk");
    m_tip->hide_immediately();
    EXPECT_TRUE(is_closed());
    m_tip->m_delay = 1000000;
    m_tip->show_tooltip(QStringLiteral("clk"));
    m_tip->hide_immediately();
    EXPECT_TRUE(is_closed());
}

TEST_F(TOLV_TOOLTIP_TEST, an_empty_text_is_not_shown)
{
    m_tip->show_immediately();
    EXPECT_FALSE(m_tip->isVisible());
    EXPECT_TRUE(m_tip->m_display_timer.isActive());
}

TEST_F(TOLV_TOOLTIP_TEST, the_events_that_end_a_tip_close_it_and_no_others)
{
    for (const QEvent::Type type : {QEvent::FocusIn, QEvent::FocusOut, QEvent::Leave, QEvent::WindowActivate,
                                    QEvent::WindowDeactivate, QEvent::Wheel})
    {
        show_at_once("clk");
        QEvent event(type);
        EXPECT_FALSE(m_tip->eventFilter(m_window.get(), &event));
        EXPECT_TRUE(is_closed()) << type;
    }
    show_at_once("clk");
    for (const QEvent::Type type : {QEvent::MouseMove, QEvent::Enter, QEvent::KeyPress, QEvent::MouseButtonPress})
    {
        QEvent event(type);
        EXPECT_FALSE(m_tip->eventFilter(m_window.get(), &event));
        EXPECT_TRUE(is_shown()) << type;
    }
}

TEST_F(TOLV_TOOLTIP_TEST, the_wheel_closes_the_tip_and_scrolls)
{
    show_at_once("clk");
    GUI_DRIVER::wheel(m_window->viewport(), QPoint(10, 10), QPoint(0, -120));
    EXPECT_TRUE(is_closed());
    EXPECT_LT(0, m_window->verticalScrollBar()->value());
}

TEST_F(TOLV_TOOLTIP_TEST, the_pointer_that_leaves_closes_a_tip_that_waits)
{
    m_tip->m_delay = 1000000;
    m_tip->show_tooltip(QStringLiteral("clk"));
    GUI_DRIVER::hover(m_window->verticalScrollBar());
    EXPECT_TRUE(is_closed());
}

TEST_F(TOLV_TOOLTIP_TEST, a_tip_that_closes_is_never_the_last_window)
{
    const QSignalSpy last_window_closed(&app(), SIGNAL(lastWindowClosed()));
    m_window->hide();
    EXPECT_FALSE(m_tip->testAttribute(Qt::WA_QuitOnClose)); // without a running event loop nothing is told anyway
    const TOLV_TOOLTIP other(m_window.get());
    m_tip->hide_immediately();
    EXPECT_EQ(0, last_window_closed.count());
}

// ---- Places ---------------------------------------------------------------------------------------------------------

TEST_F(TOLV_TOOLTIP_TEST, a_tip_stands_25_pixels_from_the_pointer_as_large_as_its_text)
{
    show_at_once("clk");
    EXPECT_EQ(QCursor::pos() + QPoint(25, 25), m_tip->pos());
    EXPECT_EQ(m_tip->sizeHint(), m_tip->size());
    const QSize small = m_tip->size();
    show_at_once("clk: the clock of the receiver");
    EXPECT_EQ(m_tip->sizeHint(), m_tip->size());
    EXPECT_LT(small.width() * small.height(), m_tip->width() * m_tip->height());
}

TEST_F(TOLV_TOOLTIP_TEST, a_size_that_the_owner_has_set_stays)
{
    m_tip->resize(100, 50);
    show_at_once("clk: the clock of the receiver");
    EXPECT_EQ(QSize(100, 50), m_tip->size());
}

TEST_F(TOLV_TOOLTIP_TEST, a_tip_at_the_edge_of_the_screen_moves_by_its_size)
{
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    m_tip->resize(100, 50);
    const auto get_step = [this](const QPoint& position)
    {
        m_tip->place_tooltip(position);
        return m_tip->pos() - position;
    };
    const int last_x = screen.right() + 1 - 100;
    const int last_y = screen.bottom() + 1 - 50;
    EXPECT_EQ(QPoint(0, 0), get_step(QPoint(last_x, last_y)));
    EXPECT_EQ(QPoint(-104, 0), get_step(QPoint(last_x + 1, last_y)));
    EXPECT_EQ(QPoint(0, -74), get_step(QPoint(last_x, last_y + 1)));
    EXPECT_EQ(QPoint(-104, -74), get_step(screen.bottomRight()));
}

TEST_F(TOLV_TOOLTIP_TEST, a_tip_near_the_corner_is_placed_by_the_size_of_its_text)
{
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    m_window->move(screen.bottomRight() - QPoint(150, 100));
    GUI_DRIVER::process_posted();
    QCursor::setPos(screen.bottomRight() - QPoint(30, 30));
    GUI_DRIVER::process_posted();
    m_tip->setText(QStringLiteral("a text that is not short"));
    m_tip->show_immediately();
    EXPECT_EQ(QCursor::pos() + QPoint(25, 25) - QPoint(m_tip->width() + 4, m_tip->height() + 24), m_tip->pos());
    EXPECT_TRUE(screen.contains(m_tip->geometry()));
}

TEST_F(TOLV_TOOLTIP_TEST, where_there_is_no_screen_all_is_behind_the_edge)
{
    m_tip->resize(100, 50);
    m_tip->place_tooltip(QPoint(5000, 4000));
    EXPECT_EQ(QPoint(4896, 3926), m_tip->pos());
}

// ---- Look -----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_TOOLTIP_TEST, the_panel_of_a_tip_lies_under_the_text)
{
    RECORDING_STYLE style;
    m_tip->setStyle(&style);
    m_tip->setText(QStringLiteral("clk"));
    m_tip->resize(80, 40);
    style.clear();
    const QImage picture = render_widget(m_tip);
    const auto panels = style.get_primitives(QStyle::PE_PanelTipLabel);
    ASSERT_EQ(1, panels.size());
    EXPECT_EQ(QRect(0, 0, 80, 40), panels.at(0).rect);
    EXPECT_EQ(m_tip->palette().color(QPalette::ToolTipBase), picture.pixelColor(70, 30));
    EXPECT_LT(0, count_pixels(picture, m_tip->palette().color(QPalette::ToolTipText), 8, QRect(2, 2, 60, 30)));
    m_tip->setStyle(nullptr);
}
