#include "tolv_mdi_area.h"

#include "cfg.h"
#include "cfgq_registry.h"
#include "gui_driver.h"
#include "gui_test.h"
#include "internal_error_trap.h"
#include "module_recorder.h"
#include "picture.h"
#include "thr_drl.h"
#include "tolv_clickable_label.h"
#include "tolv_color.h"
#include "tolv_font.h"
#include "tolv_image.h"
#include "ver.h"

#include <QCloseEvent>
#include <QLabel>
#include <QMdiSubWindow>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>

#include <memory>

namespace
{
using LINES = std::vector<std::string>;

/// A document that may refuse to close.
class DOCUMENT : public QWidget
{
public:
    explicit DOCUMENT(const QString& title)
    {
        setWindowTitle(title);
        setAttribute(Qt::WA_DeleteOnClose);
    }
    bool m_refuses = false;
    int m_close_count = 0;

protected:
    void closeEvent(QCloseEvent* event) override
    {
        ++m_close_count;
        event->setAccepted(!m_refuses);
    }
};

/// Gathers what of a widget is painted again.
class PAINTED_REGION : public QObject
{
public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            m_region += static_cast<QPaintEvent*>(event)->region();
        return false;
    }
    QRegion m_region;
};

class TOLV_MDI_AREA_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        get_key().remove(get_name());
        make_area();
    }
    void TearDown() override
    {
        m_area.reset();
        TOLV_GUI_TEST::TearDown();
    }

    static CFGQ_REGISTRY_KEY get_key()
    {
        return CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_MDI_AREA);
    }
    static QString get_name()
    {
        return QString::fromLatin1(CFGQ_TOLV_SHOW_MDI_TABS);
    }

    void make_area()
    {
        m_area = std::make_unique<TOLV_MDI_AREA>();
        m_area->setMinimumSize(1, 1);
        resize_area(QSize(760, 540));
        ASSERT_TRUE(GUI_DRIVER::show(m_area.get()));
    }
    void resize_area(const QSize& size)
    {
        m_area->resize(size);
        GUI_DRIVER::process_posted();
    }
    /// An area that shows windows in place of tabs.
    void make_area_of_windows()
    {
        get_key().set_value(get_name(), false);
        make_area();
    }

    DOCUMENT* add(const char* title, bool is_modified = false)
    {
        auto* const document = new DOCUMENT(QString::fromLatin1(title));
        QMdiSubWindow* const window = m_area->addSubWindow(document);
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->show();
        document->setWindowModified(is_modified);
        return document;
    }

    QTabBar* get_tab_bar() const
    {
        return m_area->findChild<QTabBar*>();
    }
    QString get_tooltip(int index) const
    {
        return get_tab_bar()->tabToolTip(index);
    }

    /// The documentation's picture and the notification centre's.
    QList<TOLV_CLICKABLE_LABEL*> get_pictures() const
    {
        return m_area->viewport()->findChildren<TOLV_CLICKABLE_LABEL*>(QString(), Qt::FindDirectChildrenOnly);
    }

    /// What an empty area must look like, but for the two pictures.
    QImage draw_background(const QBrush& brush, qreal ratio = 1.0) const
    {
        const QSize size = m_area->viewport()->size();
        QImage picture(size * ratio, QImage::Format_ARGB32_Premultiplied);
        picture.setDevicePixelRatio(ratio);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.fillRect(QRect(QPoint(0, 0), size), brush);
        const QPixmap watermark(QStringLiteral(":/pixmaps/tolv_mdi_watermark.png"));
        const QPoint corner(size.width() / 2 - watermark.width() / 2, size.height() / 2 - watermark.height() / 2);
        painter.drawPixmap(corner, watermark);
        painter.setPen(Qt::white);
        painter.setFont(*TOLV_FONT(TOLV_MDI_BACKGROUND_FONT).get_font());
        const std::string text = ver_get_version_string() + " " + ver_get_install_type_string();
        painter.drawText(QRect(corner.x(), corner.y() + watermark.height(), watermark.width(), 50), 34,
                         QString::fromStdString(text));
        return picture;
    }

    /// Leaves only what the area itself paints.
    void hide_pictures() const
    {
        const QList<TOLV_CLICKABLE_LABEL*> pictures = get_pictures();
        for (TOLV_CLICKABLE_LABEL* picture : pictures)
            picture->hide();
    }

    const QColor BLUE{0, 113, 197};
    MODULE_RECORDER m_recorder;
    std::unique_ptr<TOLV_MDI_AREA> m_area;
};
} // namespace

// ---- Tabs or windows ------------------------------------------------------------------------------------------------

TEST_F(TOLV_MDI_AREA_TEST, documents_are_in_tabs_where_nothing_is_stored)
{
    EXPECT_EQ(QMdiArea::TabbedView, m_area->viewMode());
    EXPECT_TRUE(m_area->tabsClosable());
    EXPECT_TRUE(m_area->tabsMovable());
    ASSERT_NE(nullptr, get_tab_bar());
    EXPECT_EQ(Qt::ElideNone, get_tab_bar()->elideMode());
    EXPECT_TRUE(get_tab_bar()->documentMode());
    EXPECT_FALSE(get_tab_bar()->expanding());
    EXPECT_EQ(2, CFGQ_REGISTRY_KEY::SUB_KEY_MDI_AREA);
    EXPECT_FALSE(get_key().get_value(get_name(), nullptr));
}

TEST_F(TOLV_MDI_AREA_TEST, the_stored_choice_is_taken_at_the_making)
{
    make_area_of_windows();
    EXPECT_EQ(QMdiArea::SubWindowView, m_area->viewMode());
    EXPECT_EQ(nullptr, get_tab_bar());
    get_key().set_value(get_name(), true);
    make_area();
    EXPECT_EQ(QMdiArea::TabbedView, m_area->viewMode());
}

TEST_F(TOLV_MDI_AREA_TEST, the_choice_can_be_taken_anew)
{
    add("top.v");
    get_key().set_value(get_name(), false);
    m_area->set_tabs();
    EXPECT_EQ(QMdiArea::SubWindowView, m_area->viewMode());
    EXPECT_EQ(nullptr, get_tab_bar());
    get_key().set_value(get_name(), true);
    m_area->set_tabs();
    EXPECT_EQ(QMdiArea::TabbedView, m_area->viewMode());
    EXPECT_EQ(1, get_tab_bar()->count());
    EXPECT_FALSE(get_tab_bar()->expanding());
    EXPECT_EQ(Qt::ElideNone, get_tab_bar()->elideMode());
}

TEST_F(TOLV_MDI_AREA_TEST, the_tab_bar_is_set_up_whatever_it_was_before)
{
    get_tab_bar()->setElideMode(Qt::ElideRight);
    get_tab_bar()->setDocumentMode(false);
    get_tab_bar()->setExpanding(true);
    m_area->set_tabs();
    EXPECT_EQ(Qt::ElideNone, get_tab_bar()->elideMode());
    EXPECT_TRUE(get_tab_bar()->documentMode());
    EXPECT_FALSE(get_tab_bar()->expanding());
}

TEST_F(TOLV_MDI_AREA_TEST, a_damaged_choice_counts_as_what_it_says_at_most)
{
    // What is no truth value is none; what cannot be read at all leaves tabs.
    for (const auto& [stored, mode] :
         {std::make_pair(QVariant(QStringLiteral("false")), QMdiArea::SubWindowView),
          std::make_pair(QVariant(0), QMdiArea::SubWindowView), std::make_pair(QVariant(1), QMdiArea::TabbedView),
          std::make_pair(QVariant(QStringLiteral("true")), QMdiArea::TabbedView)})
    {
        get_key().set_value(get_name(), stored);
        m_area->set_tabs();
        EXPECT_EQ(mode, m_area->viewMode()) << stored.toString().toStdString();
    }
}

TEST_F(TOLV_MDI_AREA_TEST, close_buttons_can_be_seen_on_a_dark_and_on_a_light_palette)
{
    const std::pair<QColor, QColor> palettes[] = {{QColor(40, 42, 46), QColor(230, 232, 235)},
                                                  {QColor(240, 240, 240), QColor(20, 20, 20)}};
    add("top.v");
    for (const auto& [ground, text] : palettes)
    {
        QPalette palette(ground, ground);
        palette.setColor(QPalette::WindowText, text);
        m_area->setPalette(palette);
        QWidget* button = get_tab_bar()->tabButton(0, QTabBar::RightSide);
        if (button == nullptr)
            button = get_tab_bar()->tabButton(0, QTabBar::LeftSide);
        ASSERT_NE(nullptr, button);
        const QImage picture = render_widget(button);
        EXPECT_TRUE(is_same_color(text, picture.pixelColor(picture.width() / 2, picture.height() / 2), 30));
    }
}

// ---- Tool tips ------------------------------------------------------------------------------------------------------

TEST_F(TOLV_MDI_AREA_TEST, each_tab_gets_its_text_as_its_tool_tip)
{
    add("top.v");
    add("pump[*].v", true);
    m_area->update_tab_tooltips();
    EXPECT_EQ(QStringLiteral("top.v"), get_tooltip(0));
    EXPECT_EQ(QStringLiteral("pump*.v"), get_tooltip(1));
}

TEST_F(TOLV_MDI_AREA_TEST, a_tab_gets_a_tool_tip_where_its_text_is_the_title)
{
    add("top.v");
    add("pump.v");
    m_area->update_tab_tooltip(QStringLiteral("top.v"), QStringLiteral("/designs/top.v"), 0);
    m_area->update_tab_tooltip(QStringLiteral("top.v"), QStringLiteral("/designs/top.v"), 1);
    m_area->update_tab_tooltip(QStringLiteral("pump"), QStringLiteral("/designs/pump.v"), 1);
    EXPECT_EQ(QStringLiteral("/designs/top.v"), get_tooltip(0));
    EXPECT_EQ(QString(), get_tooltip(1));
}

TEST_F(TOLV_MDI_AREA_TEST, the_mark_of_a_modified_document_is_taken_out_of_title_and_tool_tip)
{
    add("top.v");
    m_area->update_tab_tooltip(QStringLiteral("top[*].v[*]"), QStringLiteral(" /designs/[*]top.v[*] "), 0);
    EXPECT_EQ(QStringLiteral(" /designs/top.v "), get_tooltip(0)); // not trimmed
}

TEST_F(TOLV_MDI_AREA_TEST, a_tool_tip_of_blanks_is_not_set)
{
    add("top.v");
    m_area->update_tab_tooltips();
    for (const char* text : {"", "   ", "\t\n", "[*]", " [*] "})
        m_area->update_tab_tooltip(QStringLiteral("top.v"), QString::fromLatin1(text), 0);
    EXPECT_EQ(QStringLiteral("top.v"), get_tooltip(0));
}

TEST_F(TOLV_MDI_AREA_TEST, a_negative_index_is_the_current_tab_where_its_text_is_the_title)
{
    add("top.v");
    add("pump.v");
    ASSERT_EQ(1, get_tab_bar()->currentIndex());
    m_area->update_tab_tooltip(QStringLiteral("top.v"), QStringLiteral("of top"), -1);
    EXPECT_EQ(QString(), get_tooltip(0));
    EXPECT_EQ(QString(), get_tooltip(1));
    m_area->update_tab_tooltip(QStringLiteral("pump.v"), QStringLiteral("of pump"), -5);
    EXPECT_EQ(QStringLiteral("of pump"), get_tooltip(1));
}

TEST_F(TOLV_MDI_AREA_TEST, a_tab_that_does_not_exist_is_ignored)
{
    m_area->update_tab_tooltip(QString(), QStringLiteral("tip"), -1);
    m_area->update_tab_tooltip(QString(), QStringLiteral("tip"), 0);
    DOCUMENT* const document = add("");
    for (const int index : {-1, 1, 100})
        m_area->close_tab(index);
    EXPECT_EQ(0, document->m_close_count);
    m_area->update_tab_tooltip(QString(), QStringLiteral("tip"), 1);
    EXPECT_EQ(QString(), get_tooltip(0));
}

TEST_F(TOLV_MDI_AREA_TEST, without_tabs_there_is_nothing_to_do)
{
    make_area_of_windows();
    DOCUMENT* const document = add("top.v");
    m_area->update_tab_tooltips();
    m_area->update_tab_tooltip(QStringLiteral("top.v"), QStringLiteral("tip"), 0);
    m_area->close_tab(0);
    EXPECT_EQ(0, document->m_close_count);
    EXPECT_EQ(1, m_area->subWindowList().size());
}

TEST_F(TOLV_MDI_AREA_TEST, the_tabs_are_the_areas_own_and_not_those_in_a_document)
{
    auto* const pages = new QTabWidget;
    pages->setWindowTitle(QStringLiteral("top.v"));
    pages->addTab(new QWidget, QStringLiteral("pump.v"));
    m_area->addSubWindow(pages)->show();
    m_area->update_tab_tooltips();
    EXPECT_EQ(QStringLiteral("top.v"), get_tooltip(0));
    EXPECT_EQ(QString(), pages->tabToolTip(0));
}

// ---- Closing --------------------------------------------------------------------------------------------------------

TEST_F(TOLV_MDI_AREA_TEST, a_document_is_closed_by_the_text_of_its_tab)
{
    add("top.v");
    add("pump.v");
    add("fan.v");
    m_area->close_tab(1);
    GUI_DRIVER::process_posted();
    ASSERT_EQ(2, m_area->subWindowList().size());
    EXPECT_EQ(QStringLiteral("top.v"), get_tab_bar()->tabText(0));
    EXPECT_EQ(QStringLiteral("fan.v"), get_tab_bar()->tabText(1));
}

TEST_F(TOLV_MDI_AREA_TEST, a_moved_tab_closes_its_own_document)
{
    add("top.v");
    add("pump.v");
    get_tab_bar()->moveTab(0, 1);
    m_area->close_tab(0);
    GUI_DRIVER::process_posted();
    ASSERT_EQ(1, get_tab_bar()->count());
    EXPECT_EQ(QStringLiteral("top.v"), get_tab_bar()->tabText(0));
}

TEST_F(TOLV_MDI_AREA_TEST, a_modified_document_closes)
{
    add("top.v[*]");
    add("pump.v[*]", true);
    ASSERT_EQ(QStringLiteral("top.v"), get_tab_bar()->tabText(0));
    ASSERT_EQ(QStringLiteral("pump.v*"), get_tab_bar()->tabText(1));
    m_area->close_tab(1);
    GUI_DRIVER::process_posted();
    ASSERT_EQ(1, get_tab_bar()->count());
    EXPECT_EQ(QStringLiteral("top.v"), get_tab_bar()->tabText(0));
}

TEST_F(TOLV_MDI_AREA_TEST, the_star_is_looked_for_at_the_end_only)
{
    DOCUMENT* const document = add("pump[*].v", true);
    ASSERT_EQ(QStringLiteral("pump*.v"), get_tab_bar()->tabText(0));
    m_area->close_tab(0);
    EXPECT_EQ(0, document->m_close_count);
}

TEST_F(TOLV_MDI_AREA_TEST, of_two_documents_with_one_title_the_first_closes)
{
    DOCUMENT* const first = add("top.v");
    DOCUMENT* const second = add("top.v");
    first->m_refuses = true; // and is not asked again
    m_area->close_tab(1);
    EXPECT_EQ(1, first->m_close_count);
    EXPECT_EQ(0, second->m_close_count);
    EXPECT_EQ(2, m_area->subWindowList().size());
}

TEST_F(TOLV_MDI_AREA_TEST, the_list_is_that_of_creation_whatever_is_in_front)
{
    const DOCUMENT* const first = add("top.v");
    DOCUMENT* const second = add("top.v");
    m_area->setActiveSubWindow(m_area->subWindowList().at(0));
    second->m_refuses = true;
    m_area->close_tab(0);
    EXPECT_EQ(0, second->m_close_count);
    Q_UNUSED(first)
}

TEST_F(TOLV_MDI_AREA_TEST, the_buttons_of_the_tabs_can_be_connected_to_the_closing)
{
    DOCUMENT* const document = add("top.v");
    document->m_refuses = true;
    ASSERT_TRUE(QMetaObject::invokeMethod(m_area.get(), "close_tab", Q_ARG(int, 0)));
    EXPECT_EQ(1, document->m_close_count);
}

// ---- Background -----------------------------------------------------------------------------------------------------

TEST_F(TOLV_MDI_AREA_TEST, an_empty_area_shows_the_watermark_and_the_version_on_blue)
{
    ASSERT_EQ(BLUE, TOLV_COLOR(TOLV_KORVEX_BLUE_COLOR).get_color());
    EXPECT_EQ(QBrush(BLUE), m_area->background());
    hide_pictures();
    for (const qreal ratio : {1.0, 2.0})
    {
        SCOPED_TRACE(ratio);
        expect_same_picture(draw_background(BLUE, ratio), render_widget(m_area->viewport(), ratio));
    }
}

TEST_F(TOLV_MDI_AREA_TEST, the_version_stands_below_the_watermark_at_its_right_edge)
{
    hide_pictures();
    resize_area(QSize(701, 501)); // odd: the halves are cut off
    const QSize size = m_area->viewport()->size();
    const QSize watermark = tolv_get_pixmap(TOLV_MDI_WATERMARK_PIXMAP).size();
    const int right = size.width() / 2 - watermark.width() / 2 + watermark.width() - 1;
    const int top = size.height() / 2 - watermark.height() / 2 + watermark.height();
    const QImage picture = render_widget(m_area->viewport());
    const QRect below(0, top, size.width(), size.height() - top);
    const QRect ink = find_color_rect(picture.copy(below), Qt::white, 120);
    ASSERT_FALSE(ink.isEmpty());
    EXPECT_LE(right - 3, ink.right());
    EXPECT_LE(ink.right(), right);
    EXPECT_LT(ink.bottom(), 20);
}

TEST_F(TOLV_MDI_AREA_TEST, the_watermark_of_an_area_that_is_too_small_is_cut_on_all_sides)
{
    hide_pictures();
    resize_area(QSize(101, 91));
    ASSERT_LT(m_area->viewport()->width(), 120);
    expect_same_picture(draw_background(BLUE), render_widget(m_area->viewport()));
}

TEST_F(TOLV_MDI_AREA_TEST, a_background_that_a_host_sets_holds)
{
    hide_pictures();
    m_area->setBackground(QBrush(Qt::darkGreen));
    expect_same_picture(draw_background(Qt::darkGreen), render_widget(m_area->viewport()));
}

TEST_F(TOLV_MDI_AREA_TEST, a_trial_build_has_a_tiled_background)
{
    const QPixmap tile(QStringLiteral(":icons/tolv_beta.png"));
    ASSERT_FALSE(tile.isNull());
    ASSERT_FALSE(ver_is_beta());
    const SCOPED_CONFIGURATION beta("beta_version", "1");
    make_area();
    hide_pictures();
    EXPECT_EQ(Qt::TexturePattern, m_area->background().style());
    expect_same_picture(draw_background(QBrush(tile)), render_widget(m_area->viewport()));
}

// ---- Pictures -------------------------------------------------------------------------------------------------------

TEST_F(TOLV_MDI_AREA_TEST, two_pictures_stand_in_the_lower_right_corner)
{
    const QList<TOLV_CLICKABLE_LABEL*> pictures = get_pictures();
    ASSERT_EQ(2, pictures.size());
    const QSize area = m_area->viewport()->size();
    const QPixmap pixmaps[] = {tolv_get_pixmap(TOLV_DOCUMENTATION_URL_PIXMAP),
                               tolv_get_pixmap(TOLV_NOTIFICATION_CENTER_PIXMAP)};
    for (int i = 0; i < 2; ++i)
    {
        const TOLV_CLICKABLE_LABEL* const picture = pictures.at(i);
        EXPECT_EQ(pixmaps[i].toImage(), picture->pixmap(Qt::ReturnByValue).toImage());
        EXPECT_EQ(pixmaps[i].size(), picture->size());
        EXPECT_EQ(13, picture->cursor().shape());
        EXPECT_EQ(QSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed), picture->sizePolicy());
        EXPECT_LT(area.width() - picture->geometry().right(), 30);
        EXPECT_EQ(pictures.at(0)->x(), picture->x());
    }
    EXPECT_LT(pictures.at(0)->geometry().bottom(), pictures.at(1)->y());
    EXPECT_LT(area.height() - pictures.at(1)->geometry().bottom(), 30);

    resize_area(m_area->size() - QSize(100, 50)); // they keep to their corner
    EXPECT_EQ(area - QSize(100, 50), m_area->viewport()->size());
    EXPECT_LT(m_area->viewport()->width() - pictures.at(0)->geometry().right(), 30);
    EXPECT_LT(m_area->viewport()->height() - pictures.at(1)->geometry().bottom(), 30);
}

TEST_F(TOLV_MDI_AREA_TEST, documents_cover_the_pictures)
{
    add("top.v");
    const QList<TOLV_CLICKABLE_LABEL*> pictures = get_pictures();
    const QWidget* const on_top = m_area->viewport()->childAt(pictures.at(0)->geometry().center());
    EXPECT_NE(pictures.at(0), on_top);
    EXPECT_TRUE(m_area->subWindowList().at(0)->isAncestorOf(on_top));
}

TEST_F(TOLV_MDI_AREA_TEST, what_is_behind_documents_keeps_its_place_when_they_are_scrolled)
{
    make_area_of_windows();
    m_area->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    add("top.v");
    QMdiSubWindow* const window = m_area->subWindowList().at(0);
    window->setGeometry(m_area->width() - 50, 20, 200, 100);
    GUI_DRIVER::process_posted();
    QScrollBar* const bar = m_area->horizontalScrollBar();
    ASSERT_GT(bar->maximum(), 0);
    const QRect places[] = {get_pictures().at(0)->geometry(), get_pictures().at(1)->geometry()};
    PAINTED_REGION painted;
    m_area->viewport()->installEventFilter(&painted);
    bar->setValue(bar->maximum());
    GUI_DRIVER::process_posted();
    EXPECT_EQ(m_area->width() - 50 - bar->maximum(), window->x());
    EXPECT_EQ(places[0], get_pictures().at(0)->geometry());
    EXPECT_EQ(places[1], get_pictures().at(1)->geometry());
    // All that the window does not cover itself.
    EXPECT_EQ(QRegion(m_area->viewport()->rect()),
              (painted.m_region + window->geometry()) & m_area->viewport()->rect());
}

TEST_F(TOLV_MDI_AREA_TEST, a_press_on_a_picture_opens_its_page)
{
    GUI_DRIVER::click(get_pictures().at(0));
    EXPECT_EQ((LINES{"load webnav", "page 11", "unload webnav"}), m_recorder.take_lines());
    GUI_DRIVER::click(get_pictures().at(1));
    EXPECT_EQ((LINES{"load webnav", "page 12", "unload webnav"}), m_recorder.take_lines());
}

TEST_F(TOLV_MDI_AREA_TEST, a_module_that_cannot_be_loaded_is_an_internal_error)
{
    TEST_ENVIRONMENT::write_file("mod_webnav.so", "no module");
    const SCOPED_ENVIRONMENT_VARIABLE nowhere("NORVANE_MODULE_PATH", TEST_ENVIRONMENT::get_folder().c_str());
    const TRAPPED_INTERNAL_ERROR error = CATCH_INTERNAL_ERROR(m_area->on_documentation_pressed());
    EXPECT_EQ(thr_drl_get_error(), error.text);
    EXPECT_EQ("mod_webnav.dll", thr_drl_get_error_data());
    EXPECT_EQ("TOLV", error.tag);
    EXPECT_EQ("tolv_mdi_area", error.file);
    EXPECT_INTERNAL_ERROR(m_area->on_notification_center_pressed(), thr_drl_get_error());
}

TEST_F(TOLV_MDI_AREA_TEST, a_module_without_the_function_is_an_internal_error)
{
    const HOLLOW_MODULES hollow;
    const TRAPPED_INTERNAL_ERROR error = CATCH_INTERNAL_ERROR(m_area->on_documentation_pressed());
    EXPECT_EQ(thr_drl_get_error(), error.text);
    EXPECT_EQ("webnav_dyn_locate_to_web_page_based_on_enum", thr_drl_get_error_data());
}
