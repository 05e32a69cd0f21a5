#include "picture.h"
#include "tolv_dock_titlebar_fixture.h"
#include "tolv_icon.h"
#include "tolv_vertical_label.h"

#include <QApplication>
#include <QBoxLayout>
#include <QFrame>
#include <QLabel>
#include <QPainter>
#include <QStyle>

#include <vector>

/// What the title bar is made of: both forms, and which of them shows.

namespace
{
class TOLV_DOCK_TITLEBAR_FORM_TEST : public TOLV_DOCK_TITLEBAR_FIXTURE
{
protected:
    template <typename T>
    T* find(const char* name) const
    {
        return GUI_DRIVER::find_widget<T>(m_bar, QLatin1String(name));
    }
};

/// A button as the form describes it; an icon size of 0 is the style's own.
struct BUTTON_ROW
{
    const char* kind;
    int height;
    int icon_size;
    const char* tooltip;
    const char* text;
    bool is_checkable;
    bool is_hidden;
};

const BUTTON_ROW BUTTON_ROWS[] = {
    {"float", 18, 0, "Float", "F", true, true},      {"search", 18, 0, "Search", "S", true, true},
    {"menu", 18, 24, "Menu", "M", false, true},      {"pin", 16, 12, "Auto Hide", "P", true, false},
    {"detach", 18, 24, "Detach", "D", false, false}, {"close", 18, 24, "Close", "C", false, false}};

/// The names of what a layout holds, in its order.
std::vector<std::string> get_names(const QBoxLayout& layout)
{
    std::vector<std::string> names;
    names.reserve(layout.count());
    for (int i = 0; i < layout.count(); ++i)
        names.push_back(layout.itemAt(i)->widget()->objectName().toStdString());
    return names;
}

std::vector<int> get_margins(const QLayout& layout)
{
    const QMargins margins = layout.contentsMargins();
    return {margins.left(), margins.top(), margins.right(), margins.bottom()};
}

QImage get_picture(const QIcon& icon, QIcon::State state = QIcon::Off)
{
    return icon.pixmap(QSize(32, 32), QIcon::Normal, state).toImage();
}

/// The rectangle around all that a picture shows.
QRect get_ink(const QImage& picture)
{
    QRegion ink;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (picture.pixelColor(x, y).alpha() > 128)
                ink += QRect(x, y, 1, 1);
    return ink.boundingRect();
}
} // namespace

// ---- Parts ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, the_bar_is_the_dock_windows_title_bar)
{
    EXPECT_EQ(m_bar, m_dock->titleBarWidget());
    EXPECT_EQ(m_dock, m_bar->parentWidget());
    EXPECT_TRUE(m_bar->testAttribute(Qt::WA_MouseTracking));
}

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, a_new_bar_has_the_name_title_and_size_of_its_form)
{
    const TOLV_DOCK_WIDGET_TITLEBAR_WIDGET bar(nullptr);
    EXPECT_EQ(QStringLiteral("TOLV_DOCK_WIDGET_TITLEBAR_WIDGET"), bar.objectName());
    EXPECT_EQ(QStringLiteral("Frame"), bar.windowTitle());
    EXPECT_EQ(QSize(295, 341), bar.size());
    EXPECT_TRUE(bar.get_title().isEmpty());
    EXPECT_TRUE(bar.get_pinned());
    EXPECT_EQ(nullptr, bar.parentWidget());
}

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, two_frames_lie_one_above_the_other)
{
    const auto* const layout = find<QVBoxLayout>("verticalLayout_2");
    EXPECT_EQ(layout, m_bar->layout());
    EXPECT_EQ(0, layout->spacing());
    EXPECT_EQ(std::vector<int>({0, 0, 0, 0}), get_margins(*layout));
    EXPECT_EQ(std::vector<std::string>({"m_frame", "m_frame_v"}), get_names(*layout));
    EXPECT_EQ(QFrame::StyledPanel, find<QFrame>("m_frame")->frameShape());
    EXPECT_EQ(QFrame::StyledPanel, find<QFrame>("m_frame_v")->frameShape());
}

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, the_lying_form_reads_from_title_to_close)
{
    const auto* const layout = find<QHBoxLayout>("m_h_layout");
    EXPECT_EQ(layout, find<QFrame>("m_frame")->layout());
    EXPECT_EQ(0, layout->spacing());
    EXPECT_EQ(std::vector<int>({1, 2, 1, 2}), get_margins(*layout));
    EXPECT_EQ(std::vector<std::string>({"m_title", "m_float_button", "m_search_button", "m_menu_button", "m_pin_button",
                                        "m_detach_button", "m_close_button"}),
              get_names(*layout));
}

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, the_standing_form_reads_from_close_to_title)
{
    const auto* const layout = find<QVBoxLayout>("m_v_layout");
    EXPECT_EQ(layout, find<QFrame>("m_frame_v")->layout());
    EXPECT_EQ(0, layout->spacing());
    EXPECT_EQ(std::vector<int>({2, 1, 2, 1}), get_margins(*layout));
    EXPECT_EQ(std::vector<std::string>({"m_close_button_v", "m_detach_button_v", "m_pin_button_v", "m_menu_button_v",
                                        "m_search_button_v", "m_float_button_v", "m_title_v"}),
              get_names(*layout));
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(Qt::AlignHCenter, layout->itemAt(i)->alignment()) << i;
    EXPECT_EQ(Qt::Alignment(), layout->itemAt(6)->alignment());
}

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, each_button_is_as_its_row_says_in_both_forms)
{
    const QSize default_icon_size = QToolButton().iconSize();
    for (const BUTTON_ROW& row : BUTTON_ROWS)
        for (const bool vertical : {false, true})
        {
            SCOPED_TRACE(std::string(row.kind) + (vertical ? " standing" : " lying"));
            const QToolButton* const button = get_button(row.kind, vertical);
            EXPECT_EQ(QSize(16, row.height), button->minimumSize());
            EXPECT_EQ(QSize(16, row.height), button->maximumSize());
            const QSize icon_size(row.icon_size, row.icon_size);
            EXPECT_EQ(row.icon_size == 0 ? default_icon_size : icon_size, button->iconSize());
            EXPECT_EQ(QLatin1String(row.tooltip), button->toolTip());
            EXPECT_EQ(QLatin1String(row.text), button->text());
            EXPECT_EQ(row.is_checkable, button->isCheckable());
            EXPECT_EQ(row.is_hidden, button->isHidden());
            EXPECT_TRUE(button->autoRaise());
            EXPECT_EQ(Qt::NoFocus, button->focusPolicy());
            EXPECT_TRUE(button->styleSheet().isEmpty());
        }
}

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, only_the_menu_button_pops_up_at_once)
{
    for (const bool vertical : {false, true})
    {
        EXPECT_EQ(QToolButton::InstantPopup, get_button("menu", vertical)->popupMode());
        EXPECT_EQ(QToolButton::DelayedPopup, get_button("float", vertical)->popupMode());
    }
}

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, the_close_button_keeps_its_height)
{
    for (const bool vertical : {false, true})
    {
        EXPECT_EQ(QSizePolicy::Minimum, get_button("close", vertical)->sizePolicy().horizontalPolicy());
        EXPECT_EQ(QSizePolicy::Fixed, get_button("close", vertical)->sizePolicy().verticalPolicy());
    }
}

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, the_titles_take_the_room_that_is_left)
{
    const auto* const title = find<QLabel>("m_title");
    EXPECT_EQ(QSizePolicy::Expanding, title->sizePolicy().horizontalPolicy());
    EXPECT_EQ(QSizePolicy::Preferred, title->sizePolicy().verticalPolicy());
    const auto* const title_v = find<TOLV_VERTICAL_LABEL>("m_title_v");
    EXPECT_EQ(QSizePolicy::Preferred, title_v->sizePolicy().horizontalPolicy());
    EXPECT_EQ(QSizePolicy::Ignored, title_v->sizePolicy().verticalPolicy());
    EXPECT_EQ(QSize(0, 16), title_v->minimumSize());
    const TOLV_DOCK_WIDGET_TITLEBAR_WIDGET bar(nullptr);
    EXPECT_EQ(QStringLiteral("Title"), bar.findChild<QLabel*>(QStringLiteral("m_title"))->text());
    EXPECT_EQ(QStringLiteral("Title"), bar.findChild<QLabel*>(QStringLiteral("m_title_v"))->text());
}

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, the_buttons_have_the_same_icons_in_both_forms)
{
    const struct
    {
        const char* kind;
        TOLV_ICON_ENUM icon;
    } rows[] = {{"pin", TOLV_PUSHPIN_DOCKWIDGET_ICON},
                {"menu", TOLV_MENU_DOCKWIDGET_ICON},
                {"search", TOLV_SEARCH_DOCKWIDGET_ICON},
                {"float", TOLV_FLOAT_DOCKWIDGET_ICON}};
    for (const bool vertical : {false, true})
    {
        for (const auto& row : rows)
            EXPECT_EQ(tolv_get_icon(row.icon).cacheKey(), get_button(row.kind, vertical)->icon().cacheKey())
                << row.kind;
        expect_same_picture(get_picture(m_bar->style()->standardIcon(QStyle::SP_DockWidgetCloseButton)),
                            get_picture(get_button("close", vertical)->icon()));
        expect_same_picture(get_picture(m_bar->style()->standardIcon(QStyle::SP_TitleBarNormalButton)),
                            get_picture(get_button("detach", vertical)->icon()));
    }
}

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, the_pin_is_down_while_it_is_pushed_in)
{
    const QIcon icon = get_button("pin", false)->icon();
    expect_same_picture(get_picture(QIcon(QStringLiteral(":/icons/svg/tolv_pushpin_up_dockwidget.svg"))),
                        get_picture(icon, QIcon::Off));
    expect_same_picture(get_picture(QIcon(QStringLiteral(":/icons/svg/tolv_pushpin_down_dockwidget.svg"))),
                        get_picture(icon, QIcon::On));
    const QRect up = get_ink(get_picture(icon, QIcon::Off));
    const QRect down = get_ink(get_picture(icon, QIcon::On));
    EXPECT_GT(up.width(), up.height()) << "a pin that is pulled out lies";
    EXPECT_GT(down.height(), down.width()) << "a pin that is pushed in stands";
}

// ---- Which form shows -----------------------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, no_form_shows_before_the_first_painting)
{
    TOLV_DOCK_WIDGET_TITLEBAR_WIDGET bar(nullptr);
    const auto* const frame = bar.findChild<QFrame*>(QStringLiteral("m_frame"));
    const auto* const frame_v = bar.findChild<QFrame*>(QStringLiteral("m_frame_v"));
    EXPECT_TRUE(frame->isHidden());
    EXPECT_TRUE(frame_v->isHidden());
    render_widget(&bar);
    EXPECT_FALSE(frame->isHidden());
    EXPECT_TRUE(frame_v->isHidden());
}

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, the_feature_decides_at_each_painting_which_form_shows)
{
    const auto* const frame = find<QFrame>("m_frame");
    const auto* const frame_v = find<QFrame>("m_frame_v");
    EXPECT_TRUE(frame->isVisible());
    EXPECT_FALSE(frame_v->isVisible());
    set_vertical(true);
    EXPECT_FALSE(frame->isVisible());
    EXPECT_TRUE(frame_v->isVisible());
    set_vertical(false);
    EXPECT_TRUE(frame->isVisible());
    EXPECT_FALSE(frame_v->isVisible());
}

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, the_size_hint_is_that_of_the_form_in_force_and_2_pixels_across)
{
    EXPECT_EQ(find<QHBoxLayout>("m_h_layout")->sizeHint() + QSize(0, 2), m_bar->sizeHint());
    EXPECT_EQ(m_bar->sizeHint().height(), m_bar->height());
    set_vertical(true);
    EXPECT_EQ(find<QVBoxLayout>("m_v_layout")->sizeHint() + QSize(2, 0), m_bar->sizeHint());
    EXPECT_EQ(m_bar->sizeHint().width(), m_bar->width());
}

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, no_button_is_cut_off_in_either_form)
{
    m_dock->set_menu_button_visibility(true);
    m_dock->set_search_button_visibility(true);
    m_dock->set_float_button_visibility(true);
    for (const bool vertical : {false, true})
    {
        set_vertical(vertical);
        for (const BUTTON_ROW& row : BUTTON_ROWS)
        {
            const QToolButton* const button = get_button(row.kind, vertical);
            EXPECT_TRUE(button->isVisible()) << row.kind;
            EXPECT_EQ(QRegion(button->rect()), button->visibleRegion()) << row.kind;
        }
    }
}

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, the_title_is_painted_along_the_form_in_force)
{
    m_dock->setWindowTitle(QStringLiteral("MMMMMMMMMM"));
    const auto get_ink = [&](const char* name)
    {
        auto* const label = find<QLabel>(name);
        return find_color_rect(render_widget(label), label->palette().color(label->foregroundRole()), 60);
    };
    const QRect lying = get_ink("m_title");
    EXPECT_GT(lying.width(), 4 * lying.height());
    set_vertical(true);
    const QRect standing = get_ink("m_title_v");
    EXPECT_GT(standing.height(), 4 * standing.width());
}

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, both_forms_are_painted_whole_on_a_screen_of_twice_the_density)
{
    m_dock->setWindowTitle(QStringLiteral("MMMMMMMMMM"));
    m_dock->set_menu_button_visibility(true);
    m_dock->set_search_button_visibility(true);
    m_dock->set_float_button_visibility(true);
    for (const bool vertical : {false, true})
    {
        SCOPED_TRACE(vertical);
        set_vertical(vertical);
        const auto* const label = find<QLabel>(vertical ? "m_title_v" : "m_title");
        const QColor ink = label->palette().color(label->foregroundRole());
        QRect title[2];
        for (const int ratio : {1, 2})
        {
            const QImage picture = render_widget(m_bar, ratio);
            EXPECT_EQ(m_bar->size() * ratio, picture.size());
            for (const BUTTON_ROW& row : BUTTON_ROWS)
            {
                const QToolButton* const button = get_button(row.kind, vertical);
                const QRect place(button->mapTo(m_bar, QPoint(2, 2)) * ratio, (button->size() - QSize(4, 4)) * ratio);
                const QImage face = picture.copy(place);
                const int plain = count_pixels(face, face.pixelColor(0, 0), 8);
                EXPECT_GT(face.width() * face.height() - plain, 15 * ratio * ratio) << row.kind << " at " << ratio;
            }
            const QRect place(label->mapTo(m_bar, QPoint(0, 0)) * ratio, label->size() * ratio);
            title[ratio - 1] = find_color_rect(picture.copy(place), ink, 60);
        }
        EXPECT_NEAR(2 * title[0].width(), title[1].width(), 6);
        EXPECT_NEAR(2 * title[0].height(), title[1].height(), 6);
        EXPECT_GT(std::max(title[0].width(), title[0].height()), 60);
    }
}

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, the_title_stands_in_both_forms_as_plain_text)
{
    m_dock->setWindowTitle(QStringLiteral("<b>A & B</b>"));
    EXPECT_EQ(QStringLiteral("<b>A & B</b>"), m_bar->get_title());
    EXPECT_EQ(QStringLiteral("<b>A & B</b>"), find<QLabel>("m_title")->text());
    EXPECT_EQ(QStringLiteral("<b>A & B</b>"), find<QLabel>("m_title_v")->text());
    EXPECT_EQ(Qt::PlainText, find<QLabel>("m_title")->textFormat());
}

// ---- The picture for painting hosts ---------------------------------------------------------------------------------

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, a_painted_button_stands_on_the_windows_colour_lighter_below_the_mouse)
{
    QPixmap spot(14, 14);
    spot.fill(Qt::transparent);
    QPainter(&spot).fillRect(5, 5, 4, 4, Qt::red);
    const QColor ground = QApplication::palette().color(QPalette::Window);

    const QImage idle = m_bar->get_title_bar_button(TITLEBAR_BUTTON_CLOSE, QIcon(spot)).toImage();
    EXPECT_EQ(QSize(14, 14), idle.size());
    EXPECT_EQ(QRect(5, 5, 4, 4), find_color_rect(idle, Qt::red));
    EXPECT_EQ(14 * 14 - 16, count_pixels(idle, ground));

    m_bar->update_button_active_state(m_bar->get_icon_position(TITLEBAR_BUTTON_CLOSE, m_bar->rect()));
    const QImage active = m_bar->get_title_bar_button(TITLEBAR_BUTTON_CLOSE, QIcon(spot)).toImage();
    EXPECT_EQ(14 * 14 - 16, count_pixels(active, ground.lighter(110)));
    const QImage other = m_bar->get_title_bar_button(TITLEBAR_BUTTON_DETACH, QIcon(spot)).toImage();
    EXPECT_EQ(14 * 14 - 16, count_pixels(other, ground));
}

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, the_ground_of_a_painted_button_is_the_applications_and_not_the_bars)
{
    m_bar->setPalette(QPalette(Qt::red));
    QPixmap empty(14, 14);
    empty.fill(Qt::transparent);
    const QImage picture = m_bar->get_title_bar_button(TITLEBAR_BUTTON_PIN, QIcon(empty)).toImage();
    EXPECT_EQ(14 * 14, count_pixels(picture, QApplication::palette().color(QPalette::Window)));
}

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, a_painted_button_is_as_large_as_its_icon_up_to_14_pixels)
{
    QPixmap small(9, 7);
    small.fill(Qt::blue);
    EXPECT_EQ(QSize(9, 7), m_bar->get_title_bar_button(TITLEBAR_BUTTON_PIN, QIcon(small)).size());
    QPixmap large(64, 64);
    large.fill(Qt::blue);
    EXPECT_EQ(QSize(14, 14), m_bar->get_title_bar_button(TITLEBAR_BUTTON_PIN, QIcon(large)).size());
    EXPECT_TRUE(m_bar->get_title_bar_button(TITLEBAR_BUTTON_PIN, QIcon()).isNull());
}

TEST_F(TOLV_DOCK_TITLEBAR_FORM_TEST, a_painted_button_takes_the_picture_of_the_state_off)
{
    QPixmap off(14, 14);
    off.fill(Qt::green);
    QPixmap on(14, 14);
    on.fill(Qt::red);
    QIcon icon(off);
    icon.addPixmap(on, QIcon::Normal, QIcon::On);
    EXPECT_EQ(14 * 14, count_pixels(m_bar->get_title_bar_button(TITLEBAR_BUTTON_PIN, icon).toImage(), Qt::green));
}
