// The label that stands on its side, and the one that can be pressed.

#include "gui_driver.h"
#include "gui_test.h"
#include "picture.h"
#include "tolv_clickable_label.h"
#include "tolv_vertical_label.h"

#include <QPainter>
#include <QSignalSpy>

#include <memory>

namespace
{
class TOLV_VERTICAL_LABEL_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        m_label = std::make_unique<TOLV_VERTICAL_LABEL>();
        QPalette palette;
        palette.setColor(QPalette::Window, Qt::white);
        palette.setColor(QPalette::WindowText, Qt::black);
        m_label->setPalette(palette);
        m_label->setAutoFillBackground(true);
        m_label->setText(QStringLiteral("Hierarchy"));
    }
    void TearDown() override
    {
        m_label.reset();
        TOLV_GUI_TEST::TearDown();
    }

    /// What a text looks like that is drawn lying, in a widget as wide as the label is high, turned to the left.
    QImage draw_turned(const QString& text, const QRect& rect, const QColor& color, qreal ratio = 1.0) const
    {
        QImage picture(m_label->size() * ratio, QImage::Format_ARGB32_Premultiplied);
        picture.setDevicePixelRatio(ratio);
        picture.fill(Qt::white);
        QPainter painter(&picture);
        painter.setFont(m_label->font());
        painter.setPen(color);
        painter.translate(0, m_label->height());
        painter.rotate(-90);
        painter.drawText(rect, static_cast<int>(m_label->alignment()), text);
        return picture;
    }

    std::unique_ptr<TOLV_VERTICAL_LABEL> m_label;
};

class TOLV_CLICKABLE_LABEL_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        m_label = std::make_unique<TOLV_CLICKABLE_LABEL>();
        m_label->resize(80, 30);
        ASSERT_TRUE(GUI_DRIVER::show(m_label.get()));
    }

    void TearDown() override
    {
        m_label.reset();
        TOLV_GUI_TEST::TearDown();
    }

    std::unique_ptr<TOLV_CLICKABLE_LABEL> m_label;
};
} // namespace

// ---- Standing on its side -------------------------------------------------------------------------------------------

TEST_F(TOLV_VERTICAL_LABEL_TEST, the_hints_are_those_of_a_label_with_width_and_height_exchanged)
{
    m_label->setMargin(3);
    m_label->setIndent(5);
    QLabel lying(m_label->text());
    lying.setMargin(3);
    lying.setIndent(5);
    EXPECT_EQ(lying.sizeHint().transposed(), m_label->sizeHint());
    EXPECT_EQ(lying.minimumSizeHint().transposed(), m_label->minimumSizeHint());
    EXPECT_GT(m_label->sizeHint().height(), m_label->sizeHint().width());
    for (QLabel* label : {&lying, static_cast<QLabel*>(m_label.get())})
    {
        label->setText(QStringLiteral("Hierarchy of the whole design"));
        label->setWordWrap(true); // where the two hints differ
    }
    ASSERT_NE(lying.sizeHint(), lying.minimumSizeHint());
    EXPECT_EQ(lying.sizeHint().transposed(), m_label->sizeHint());
    EXPECT_EQ(lying.minimumSizeHint().transposed(), m_label->minimumSizeHint());
}

TEST_F(TOLV_VERTICAL_LABEL_TEST, the_text_runs_from_bottom_to_top)
{
    for (const qreal ratio : {1.0, 2.0})
    {
        SCOPED_TRACE(ratio);
        m_label->resize(30, 120);
        expect_same_picture(draw_turned(m_label->text(), QRect(0, 0, 120, 30), Qt::black, ratio),
                            render_widget(m_label.get(), ratio));
    }
}

TEST_F(TOLV_VERTICAL_LABEL_TEST, the_alignment_turns_with_the_text)
{
    m_label->resize(40, 150);
    for (const Qt::Alignment alignment : {Qt::AlignLeft | Qt::AlignTop, Qt::AlignRight | Qt::AlignBottom,
                                          Qt::AlignHCenter | Qt::AlignVCenter, Qt::AlignLeft | Qt::AlignBottom})
    {
        SCOPED_TRACE(static_cast<int>(alignment));
        m_label->setAlignment(alignment);
        expect_same_picture(draw_turned(m_label->text(), QRect(0, 0, 150, 40), Qt::black),
                            render_widget(m_label.get()));
    }
    // Left is where one begins to read: below.
    m_label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    const QRect ink = find_color_rect(render_widget(m_label.get()), Qt::black, 100);
    EXPECT_GT(ink.bottom(), 140);
    EXPECT_GT(ink.top(), 60);
    EXPECT_LT(ink.left(), 10);
}

TEST_F(TOLV_VERTICAL_LABEL_TEST, frame_and_margin_stay_free)
{
    m_label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_label->setMargin(7);
    m_label->setContentsMargins(2, 4, 6, 8);
    m_label->resize(50, 150);
    // In the picture the contents are x 9 to 36 and y 11 to 134: 28 wide, 124 high.
    expect_same_picture(draw_turned(m_label->text(), QRect(150 - 135, 9, 124, 28), Qt::black),
                        render_widget(m_label.get()));
}

TEST_F(TOLV_VERTICAL_LABEL_TEST, a_text_that_does_not_fit_ends_in_an_ellipsis)
{
    m_label->setText(QStringLiteral("Hierarchy of the whole design"));
    m_label->resize(30, 80);
    const QString cut = m_label->fontMetrics().elidedText(m_label->text(), Qt::ElideRight, 80);
    ASSERT_TRUE(cut.endsWith(QChar(0x2026)));
    expect_same_picture(draw_turned(cut, QRect(0, 0, 80, 30), Qt::black), render_widget(m_label.get()));
}

TEST_F(TOLV_VERTICAL_LABEL_TEST, the_room_for_the_ellipsis_is_what_the_margin_leaves)
{
    m_label->setText(QStringLiteral("Hierarchy of the whole design"));
    m_label->setMargin(10);
    m_label->resize(40, 100);
    const QString cut = m_label->fontMetrics().elidedText(m_label->text(), Qt::ElideRight, 80);
    expect_same_picture(draw_turned(cut, QRect(10, 10, 80, 20), Qt::black), render_widget(m_label.get()));
}

TEST_F(TOLV_VERTICAL_LABEL_TEST, a_label_of_its_own_size_shows_all_of_its_text)
{
    for (const char* text : {"W", "fff", "Project Navigator", "IP Catalogue, all vendors", "jjj"})
        for (int size = 7; size < 20; ++size)
        {
            SCOPED_TRACE(testing::Message() << text << " in " << size);
            QFont font = m_label->font();
            font.setPixelSize(size);
            m_label->setFont(font);
            m_label->setText(QString::fromLatin1(text));
            m_label->resize(m_label->sizeHint());
            EXPECT_EQ(m_label->text(),
                      m_label->fontMetrics().elidedText(m_label->text(), Qt::ElideRight, m_label->height()));
            expect_same_picture(
                draw_turned(m_label->text(), QRect(0, 0, m_label->height(), m_label->width()), Qt::black),
                render_widget(m_label.get()));
        }
}

TEST_F(TOLV_VERTICAL_LABEL_TEST, an_ampersand_is_a_character)
{
    m_label->setText(QStringLiteral("A&B"));
    m_label->resize(30, 100);
    expect_same_picture(draw_turned(QStringLiteral("A&B"), QRect(0, 0, 100, 30), Qt::black),
                        render_widget(m_label.get()));
}

TEST_F(TOLV_VERTICAL_LABEL_TEST, the_text_has_the_colour_of_its_role)
{
    QPalette palette = m_label->palette();
    palette.setColor(QPalette::Link, Qt::red);
    m_label->setPalette(palette);
    m_label->setForegroundRole(QPalette::Link);
    m_label->resize(30, 100);
    expect_same_picture(draw_turned(m_label->text(), QRect(0, 0, 100, 30), Qt::red), render_widget(m_label.get()));
}

TEST_F(TOLV_VERTICAL_LABEL_TEST, a_label_that_is_disabled_is_drawn_so)
{
    QPalette palette = m_label->palette();
    palette.setColor(QPalette::Disabled, QPalette::WindowText, Qt::blue);
    palette.setColor(QPalette::Disabled, QPalette::Window, Qt::white);
    m_label->setPalette(palette);
    m_label->setEnabled(false);
    m_label->resize(30, 100);
    expect_same_picture(draw_turned(m_label->text(), QRect(0, 0, 100, 30), Qt::blue), render_widget(m_label.get()));
}

TEST_F(TOLV_VERTICAL_LABEL_TEST, a_label_of_no_size_draws_nothing)
{
    m_label->setMargin(20);
    m_label->resize(10, 10);
    EXPECT_EQ(100, count_pixels(render_widget(m_label.get()), Qt::white));
}

// ---- Pressed --------------------------------------------------------------------------------------------------------

TEST_F(TOLV_CLICKABLE_LABEL_TEST, a_press_is_said_once_and_a_release_not_at_all)
{
    const QSignalSpy pressed(m_label.get(), SIGNAL(pressed()));
    GUI_DRIVER::press(m_label.get(), QPoint(10, 10));
    EXPECT_EQ(1, pressed.count());
    GUI_DRIVER::release(m_label.get(), QPoint(10, 10));
    EXPECT_EQ(1, pressed.count());
}

TEST_F(TOLV_CLICKABLE_LABEL_TEST, any_button_counts)
{
    const QSignalSpy pressed(m_label.get(), SIGNAL(pressed()));
    GUI_DRIVER::click(m_label.get(), QPoint(10, 10), Qt::MiddleButton);
    EXPECT_EQ(1, pressed.count());
    GUI_DRIVER::hover(m_label.get(), QPoint(20, 10));
    EXPECT_EQ(1, pressed.count());
}

TEST_F(TOLV_CLICKABLE_LABEL_TEST, a_double_click_is_two_presses)
{
    const QSignalSpy pressed(m_label.get(), SIGNAL(pressed()));
    GUI_DRIVER::double_click(m_label.get(), QPoint(10, 10));
    EXPECT_EQ(2, pressed.count());
}

TEST_F(TOLV_CLICKABLE_LABEL_TEST, a_press_does_not_reach_what_lies_below)
{
    TOLV_CLICKABLE_LABEL outer;
    outer.resize(100, 60);
    auto* const inner = new TOLV_CLICKABLE_LABEL(&outer);
    inner->setText(QStringLiteral("Documentation"));
    inner->resize(50, 30);
    ASSERT_TRUE(GUI_DRIVER::show(&outer));
    const QSignalSpy outer_pressed(&outer, SIGNAL(pressed()));
    const QSignalSpy inner_pressed(inner, SIGNAL(pressed()));
    GUI_DRIVER::click(inner, QPoint(10, 10));
    EXPECT_EQ(1, inner_pressed.count());
    EXPECT_EQ(0, outer_pressed.count());
}
