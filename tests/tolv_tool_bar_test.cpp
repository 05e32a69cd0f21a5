#include "tolv_tool_bar.h"

#include "cfgq_registry.h"
#include "child_process.h"
#include "gui_driver.h"
#include "gui_test.h"
#include "module_recorder.h"
#include "tolv_font.h"
#include "tolv_gdi_manager.h"
#include "tolv_main_window.h"

#include <QDockWidget>
#include <QFontMetrics>
#include <QKeyEvent>
#include <QLineEdit>

#include <memory>

namespace
{
using TOPICS = std::vector<std::string>;

class PUMP_BAR : public TOLV_TOOL_BAR
{
public:
    using TOLV_TOOL_BAR::TOLV_TOOL_BAR;

    std::string get_help_topic_string() override
    {
        return "Pump bar";
    }
};

/// Takes keys that what lies in it leaves over.
class KEY_TAKER : public QWidget
{
public:
    QList<int> m_keys;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        m_keys << event->key();
    }
};

class TOLV_TOOL_BAR_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        forget();
    }

    static CFGQ_REGISTRY_KEY get_key()
    {
        return CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_TOOL_BARS);
    }
    static QString get_name()
    {
        return QString::fromLatin1(CFGQ_TOLV_TOOLBAR_LARGE_ICONS);
    }
    static void forget()
    {
        get_key().remove(get_name());
    }
    static void store(const QVariant& value)
    {
        get_key().set_value(get_name(), value);
    }
    /// Invalid where nothing is stored.
    static QVariant get_stored()
    {
        QVariant value;
        get_key().get_value(get_name(), &value);
        return value;
    }

    static QSize get_small_size()
    {
        const int height = QFontMetrics(*TOLV_FONT(TOLV_GUI_FONT).get_font()).height();
        return {height, height};
    }
    static QSize get_large_size()
    {
        const int height = get_small_size().height() * 3 / 2; // cut off, not rounded
        return {height, height};
    }

    /// What the child says of itself on a screen of that size, in the pixels that a program sees.
    static std::string run_on_screen(const std::string& size, const std::string& configuration = "")
    {
        CFGQ_REGISTRY::flush();
        const CHILD_RESULT result =
            run_child("tolv_tool_bar_child", {},
                      {{"QT_QPA_PLATFORM", "vnc:size=" + size + ":port=0"}, {"NORVANE_CFG", configuration}});
        EXPECT_EQ(0, result.exit_status) << result.err;
        return result.out;
    }
};
} // namespace

// ---- Without an application -----------------------------------------------------------------------------------------

TEST(TOLV_TOOL_BAR_CHOICE, without_a_screen_icons_are_large_and_nothing_is_stored)
{
    ASSERT_EQ(nullptr, QGuiApplication::primaryScreen());
    EXPECT_TRUE(TOLV_TOOL_BAR::get_large_icon_setting(nullptr));
    const CFGQ_REGISTRY_KEY key(CFGQ_REGISTRY_KEY::SUB_KEY_TOOL_BARS);
    EXPECT_FALSE(key.get_value(QString::fromLatin1(CFGQ_TOLV_TOOLBAR_LARGE_ICONS), nullptr));
}

// ---- Icons ----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_TOOL_BAR_TEST, small_icons_are_a_line_high_and_large_ones_half_as_high_again)
{
    TOLV_TOOL_BAR bar;
    bar.set_large_icons(true);
    EXPECT_EQ(get_large_size(), bar.iconSize());
    EXPECT_EQ(QVariant(true), get_stored());
    bar.set_large_icons(false);
    EXPECT_EQ(get_small_size(), bar.iconSize());
    EXPECT_EQ(QVariant(false), get_stored());
    EXPECT_EQ(59, CFGQ_REGISTRY_KEY::SUB_KEY_TOOL_BARS);
}

TEST_F(TOLV_TOOL_BAR_TEST, the_height_is_that_of_the_gui_font_and_half_a_pixel_is_cut_off)
{
    QFont* const font = TOLV_GDI_MANAGER::get_instance()->get_font(TOLV_GUI_FONT, nullptr, nullptr);
    const QFont usual = *font;
    int size = 30;
    for (font->setPixelSize(size); QFontMetrics(*font).height() % 2 == 0; font->setPixelSize(size))
        ++size;
    const int height = QFontMetrics(*font).height();
    TOLV_TOOL_BAR bar;
    EXPECT_EQ(QSize(height, height), bar.iconSize());
    bar.set_large_icons(true);
    EXPECT_EQ(QSize(height + height / 2, height + height / 2), bar.iconSize());
    *font = usual;
}

TEST_F(TOLV_TOOL_BAR_TEST, a_new_bar_takes_the_stored_choice)
{
    store(true);
    EXPECT_EQ(get_large_size(), TOLV_TOOL_BAR().iconSize());
    store(false);
    EXPECT_EQ(get_small_size(), TOLV_TOOL_BAR(QStringLiteral("File")).iconSize());
}

TEST_F(TOLV_TOOL_BAR_TEST, the_choice_goes_to_all_tool_bars_of_a_window)
{
    TOLV_MAIN_WINDOW window;
    auto* const own = new TOLV_TOOL_BAR(QStringLiteral("File"), &window);
    window.addToolBar(own);
    auto* const dock = new QDockWidget(&window);
    auto* const nested = new TOLV_TOOL_BAR(dock);
    auto* const plain = new QToolBar(&window);
    const QSize plain_size = plain->iconSize();
    const TOLV_TOOL_BAR elsewhere;
    const QSize elsewhere_size = elsewhere.iconSize();
    ASSERT_EQ(get_small_size(), elsewhere_size);

    TOLV_TOOL_BAR::set_large_icons(&window, true);
    EXPECT_EQ(get_large_size(), own->iconSize());
    EXPECT_EQ(get_large_size(), nested->iconSize());
    EXPECT_EQ(plain_size, plain->iconSize());
    EXPECT_EQ(elsewhere_size, elsewhere.iconSize());
    EXPECT_EQ(QVariant(true), get_stored());
}

TEST_F(TOLV_TOOL_BAR_TEST, no_window_has_no_tool_bars)
{
    TOLV_TOOL_BAR::set_large_icons(nullptr, true);
    EXPECT_FALSE(get_stored().isValid());
}

TEST_F(TOLV_TOOL_BAR_TEST, a_window_without_tool_bars_stores_nothing)
{
    TOLV_MAIN_WINDOW window;
    TOLV_TOOL_BAR::set_large_icons(&window, true);
    EXPECT_FALSE(get_stored().isValid());
}

// ---- The choice -----------------------------------------------------------------------------------------------------

TEST_F(TOLV_TOOL_BAR_TEST, the_stored_choice_holds_whatever_the_screen)
{
    store(true);
    EXPECT_TRUE(TOLV_TOOL_BAR::get_large_icon_setting(nullptr));
    store(false);
    EXPECT_FALSE(TOLV_TOOL_BAR::get_large_icon_setting(nullptr));
    EXPECT_EQ("1600x1080 false small false false small\n", run_on_screen("1600x1080"));
}

TEST_F(TOLV_TOOL_BAR_TEST, a_small_screen_stores_its_answer_at_once)
{
    EXPECT_FALSE(TOLV_TOOL_BAR::get_large_icon_setting(nullptr)); // 800 by 600
    EXPECT_EQ(QVariant(false), get_stored());
}

TEST_F(TOLV_TOOL_BAR_TEST, a_screen_that_is_not_wide_enough_gets_small_icons)
{
    EXPECT_EQ("1599x1200 - small false false small\n", run_on_screen("1599x1200"));
}

TEST_F(TOLV_TOOL_BAR_TEST, a_screen_that_is_not_high_enough_gets_small_icons)
{
    EXPECT_EQ("1920x1079 - small false false small\n", run_on_screen("1920x1079"));
}

TEST_F(TOLV_TOOL_BAR_TEST, a_large_screen_gets_large_icons_and_stores_nothing_until_a_bar_is_made)
{
    EXPECT_EQ("1600x1080 - large - true large\n", run_on_screen("1600x1080"));
}

TEST_F(TOLV_TOOL_BAR_TEST, the_switch_overrules_a_large_screen_and_is_stored_by_the_first_bar)
{
    EXPECT_EQ("1600x1080 - small - false small\n", run_on_screen("1600x1080", "small_icons=1"));
}

TEST_F(TOLV_TOOL_BAR_TEST, the_switch_overrules_the_stored_choice)
{
    store(true);
    EXPECT_EQ("1600x1080 true small true false small\n", run_on_screen("1600x1080", "small_icons=1"));
}

TEST_F(TOLV_TOOL_BAR_TEST, on_a_small_screen_the_switch_lets_the_answer_be_stored_all_the_same)
{
    EXPECT_EQ("800x600 - small false false small\n", run_on_screen("800x600", "small_icons=1"));
}

TEST_F(TOLV_TOOL_BAR_TEST, the_switch_is_read_once)
{
    store(true);
    EXPECT_TRUE(TOLV_TOOL_BAR::get_large_icon_setting(nullptr));
    const SCOPED_CONFIGURATION small("small_icons", "1");
    EXPECT_TRUE(TOLV_TOOL_BAR::get_large_icon_setting(nullptr));
}

// ---- Help -----------------------------------------------------------------------------------------------------------

TEST_F(TOLV_TOOL_BAR_TEST, the_accessible_name_is_the_topic_of_the_class)
{
    EXPECT_EQ(QStringLiteral("Customize"), TOLV_TOOL_BAR().accessibleName());
    EXPECT_EQ(QStringLiteral("Customize"), TOLV_TOOL_BAR(QStringLiteral("File")).accessibleName());
    // A subclass does not exist yet when its base gives the name.
    EXPECT_EQ(QStringLiteral("Customize"), PUMP_BAR().accessibleName());
}

TEST_F(TOLV_TOOL_BAR_TEST, the_key_shows_help_on_the_topic_and_other_keys_do_not)
{
    MODULE_RECORDER recorder;
    PUMP_BAR bar;
    bar.setFocusPolicy(Qt::StrongFocus);
    bar.resize(200, 40);
    ASSERT_TRUE(GUI_DRIVER::show(&bar));
    GUI_DRIVER::key_click(&bar, Qt::Key_F2);
    EXPECT_EQ((TOPICS{}), recorder.take_topics());
    GUI_DRIVER::key_click(&bar, Qt::Key_F1);
    EXPECT_EQ((TOPICS{"Pump bar"}), recorder.take_topics());
}

TEST_F(TOLV_TOOL_BAR_TEST, other_keys_are_left_to_what_lies_around_the_bar)
{
    MODULE_RECORDER recorder;
    KEY_TAKER window;
    window.resize(300, 100);
    TOLV_TOOL_BAR bar(&window);
    bar.resize(200, 40);
    bar.setFocusPolicy(Qt::StrongFocus);
    ASSERT_TRUE(GUI_DRIVER::show(&window));
    for (const Qt::Key key : {Qt::Key_F2, Qt::Key_Space, Qt::Key_F1, Qt::Key_Help})
        GUI_DRIVER::key_click(&bar, key);
    EXPECT_EQ((QList<int>{Qt::Key_F2, Qt::Key_Space, Qt::Key_Help}), window.m_keys);
    EXPECT_EQ((TOPICS{"Customize"}), recorder.take_topics());
    GUI_DRIVER::key_click(&bar, Qt::Key_F1, Qt::ShiftModifier); // the key alone counts
    EXPECT_EQ((TOPICS{"Customize"}), recorder.take_topics());
}

TEST_F(TOLV_TOOL_BAR_TEST, the_key_in_a_bar_of_a_window_shows_the_same_help)
{
    MODULE_RECORDER recorder;
    TOLV_MAIN_WINDOW window;
    auto* const bar = new TOLV_TOOL_BAR(&window);
    auto* const edit = new QLineEdit;
    bar->addWidget(edit);
    window.addToolBar(bar);
    ASSERT_TRUE(GUI_DRIVER::show(&window));
    GUI_DRIVER::key_click(edit, Qt::Key_F1);
    EXPECT_EQ((TOPICS{"Customize"}), recorder.take_topics());
}
