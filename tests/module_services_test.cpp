#include "gui_driver.h"
#include "gui_test.h"

#include "tolv_help_dyn.h"
#include "tolv_module.h"

#include <QApplication>
#include <QDesktopServices>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QStatusBar>
#include <QTextBrowser>
#include <QUrl>

namespace
{
/// Takes the addresses that would go to the web browser.
class BROWSER_STAND_IN : public QObject
{
    Q_OBJECT

public:
    BROWSER_STAND_IN()
    {
        QDesktopServices::setUrlHandler(QStringLiteral("https"), this, "take");
    }

    ~BROWSER_STAND_IN() override
    {
        QDesktopServices::unsetUrlHandler(QStringLiteral("https"));
    }

    QStringList urls;

public slots:
    void take(const QUrl& url)
    {
        urls << url.toString(QUrl::FullyEncoded);
    }
};

class MODULE_SERVICES_TEST : public TOLV_GUI_TEST
{
protected:
    static QMainWindow* get_help_window()
    {
        return GUI_DRIVER::find_widget<QMainWindow>(nullptr, "help_window");
    }

    static QString get_page()
    {
        return GUI_DRIVER::find_widget<QTextBrowser>(get_help_window(), "help_page")->source().fileName();
    }

    static void close_help()
    {
        get_help_window()->close();
        GUI_DRIVER::process_posted();
    }
};

TEST_F(MODULE_SERVICES_TEST, pages_of_the_site_open_by_number)
{
    BROWSER_STAND_IN browser;
    const TOLV_MODULE module("mod_webnav.dll");
    for (const int page : {3, 11, 12, 99})
        module.call<void(int)>("webnav_dyn_locate_to_web_page_based_on_enum", page);
    EXPECT_EQ(browser.urls,
              QStringList({"https://norvane.example/support/service-request", "https://norvane.example/documentation",
                           "https://norvane.example/notifications", "https://norvane.example/"}));
}

TEST_F(MODULE_SERVICES_TEST, pages_open_by_address_encoded_or_not)
{
    BROWSER_STAND_IN browser;
    const TOLV_MODULE module("mod_webnav");
    module.call<void(const std::string&)>("webnav_dyn_locate_to_web_page_based_on_url",
                                          std::string("https://a.example/b c"));
    module.call<void(const std::string&)>("webnav_dyn_go_to_encoded_url", std::string("https://a.example/?q=%2B+x"));
    EXPECT_EQ(browser.urls, QStringList({"https://a.example/b%20c", "https://a.example/?q=%2B+x"}));
}

TEST_F(MODULE_SERVICES_TEST, a_text_is_searched_on_the_web_as_it_is)
{
    BROWSER_STAND_IN browser;
    TOLV_MODULE("mod_shell")
        .call<void(const std::string&, int)>("shell_dyn_launch_external_web_browser", std::string(" a+b & c=d\n"), 0);
    EXPECT_EQ(browser.urls, QStringList({"https://norvane.example/search?q=a%2Bb%20%26%20c%3Dd"}));
}

TEST_F(MODULE_SERVICES_TEST, help_opens_the_page_about_a_topic)
{
    struct CASE
    {
        const char* topic;
        const char* page;
    };
    for (const CASE& row :
         {CASE{"Messages", "messages.html"}, CASE{"MessagesNorvane Workbench", "messages.html"},
          CASE{"&Open Design...", "designs.html"}, CASE{"hierarchy", "hierarchy.html"},
          CASE{"Tcl Scripts", "console.html"}, CASE{"Customize", "docking.html"}, CASE{"", "index.html"}})
    {
        help_dyn_show_context(row.topic);
        EXPECT_EQ(get_page(), row.page) << row.topic;
        EXPECT_EQ(get_help_window()->statusBar()->currentMessage(), "") << row.topic;
    }
    help_dyn_show_context("Warp drive");
    EXPECT_EQ(get_page(), "index.html");
    EXPECT_EQ(get_help_window()->statusBar()->currentMessage(), "Nothing is written about \"Warp drive\" yet.");
    close_help();
}

TEST_F(MODULE_SERVICES_TEST, every_page_is_there_and_its_links_lead_somewhere)
{
    help_dyn_show_context("");
    auto* const list = GUI_DRIVER::find_widget<QListWidget>(get_help_window(), "help_pages");
    auto* const browser = GUI_DRIVER::find_widget<QTextBrowser>(get_help_window(), "help_page");
    EXPECT_EQ(list->count(), 14);
    QRegExp link("href=\"([^\"]*)\"");
    for (int i = 0; i < list->count(); ++i)
    {
        list->setCurrentRow(i);
        EXPECT_EQ(browser->documentTitle(), list->item(i)->text());
        EXPECT_GT(browser->toPlainText().size(), 100);
        const QString html = browser->toHtml();
        for (int place = 0; (place = link.indexIn(html, place)) >= 0; ++place)
        {
            const QVariant page = browser->loadResource(QTextDocument::HtmlResource, QUrl("qrc:/help/" + link.cap(1)));
            EXPECT_TRUE(page.isValid()) << link.cap(1).toStdString();
        }
    }
    close_help();
}

TEST_F(MODULE_SERVICES_TEST, the_help_is_searched_by_words_and_escape_closes_it)
{
    help_dyn_show_context("");
    GUI_DRIVER::show(get_help_window());
    auto* const list = GUI_DRIVER::find_widget<QListWidget>(get_help_window(), "help_pages");
    auto* const line = GUI_DRIVER::find_widget<QLineEdit>(get_help_window(), "help_search");
    GUI_DRIVER::type(line, "dollar variables");
    ASSERT_EQ(list->count(), 1);
    EXPECT_EQ(list->item(0)->text(), "Tcl console");
    GUI_DRIVER::click(list->viewport(), list->visualItemRect(list->item(0)).center());
    EXPECT_EQ(get_page(), "console.html");
    GUI_DRIVER::key_click(list, Qt::Key_Escape);
    GUI_DRIVER::process_posted();
    for (const QWidget* window : QApplication::topLevelWidgets())
        EXPECT_NE(window->objectName(), "help_window");
}
} // namespace

#include "module_services_test.moc"
