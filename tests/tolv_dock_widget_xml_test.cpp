#include "tolv_dock_fixture.h"

#include <tinyxml2.h>

// Dock windows that are described in XML.

namespace
{
class TOLV_DOCK_WIDGET_XML_TEST : public TOLV_DOCK_FIXTURE
{
protected:
    std::unique_ptr<TEST_DOCK> make(const std::string& xml)
    {
        return std::make_unique<TEST_DOCK>(m_window.get(), Qt::WindowFlags(), xml);
    }
    /// The features for what stands inside of `setFeatures`; -1 where it is not the one of a new window and the same
    /// from an element.
    int get_features(const std::string& features)
    {
        const std::string xml = "<dock><setFeatures>" + features + "</setFeatures></dock>";
        tinyxml2::XMLDocument document;
        document.Parse(xml.c_str());
        const TEST_DOCK from_element(document.FirstChildElement(), m_window.get());
        const std::unique_ptr<TEST_DOCK> from_text = make(xml);
        EXPECT_EQ(int(from_element.features()), int(from_text->features()));
        return int(from_text->features());
    }
};

/// What a window has that nobody described.
constexpr int FEATURES_OF_OLD = 7;
} // namespace

TEST_F(TOLV_DOCK_WIDGET_XML_TEST, a_title_and_features_come_from_the_description)
{
    const std::unique_ptr<TEST_DOCK> dock =
        make("<?xml version=\"1.0\"?><!-- a console --><console><setFeatures><feature>DockWidgetClosable</feature>"
             "<feature>DockWidgetFloatable</feature></setFeatures><other>1</other>"
             "<setWindowTitle>Pr\xC3\xBC"
             "fung</setWindowTitle></console>");
    EXPECT_EQ(QString::fromUtf8("Pr\xC3\xBC"
                                "fung"),
              dock->windowTitle());
    EXPECT_EQ(dock->windowTitle(), dock->m_titlebar->get_title());
    EXPECT_EQ(dock->windowTitle(), dock->accessibleName());
    EXPECT_EQ(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetFloatable, dock->features());
    EXPECT_EQ(m_window.get(), dock->m_main_window);
    EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_DOCKED, dock->m_state);
}

TEST_F(TOLV_DOCK_WIDGET_XML_TEST, flags_and_parent_reach_the_window)
{
    QWidget plain;
    const TEST_DOCK from_text(&plain, Qt::Tool, "<d/>");
    EXPECT_EQ(Qt::Tool, from_text.windowType());
    EXPECT_EQ(&plain, from_text.parent());
    EXPECT_EQ(0, from_text.get_shown("pin"));
    const tinyxml2::XMLElement* const no_element = nullptr;
    const TEST_DOCK from_element(no_element, &plain, Qt::Tool);
    EXPECT_EQ(Qt::Tool, from_element.windowType());
    EXPECT_EQ(&plain, from_element.parent());
}

TEST_F(TOLV_DOCK_WIDGET_XML_TEST, each_feature_has_its_name)
{
    EXPECT_EQ(1, get_features("<f>DockWidgetClosable</f>"));
    EXPECT_EQ(2, get_features("<f>DockWidgetMovable</f>"));
    EXPECT_EQ(4, get_features("<f>DockWidgetFloatable</f>"));
    EXPECT_EQ(8, get_features("<f>DockWidgetVerticalTitleBar</f>"));
    EXPECT_EQ(7, get_features("<f>AllDockWidgetFeatures</f>"));
    EXPECT_EQ(0, get_features("<f>NoDockWidgetFeatures</f>"));
}

TEST_F(TOLV_DOCK_WIDGET_XML_TEST, features_add_up_under_any_element)
{
    EXPECT_EQ(9, get_features("<a>DockWidgetClosable</a><b>DockWidgetVerticalTitleBar</b>"));
    EXPECT_EQ(15, get_features("<a>DockWidgetVerticalTitleBar</a>text between<a>AllDockWidgetFeatures</a>"));
    EXPECT_EQ(2, get_features("<a>NoDockWidgetFeatures</a><a>DockWidgetMovable</a>"));
    EXPECT_EQ(2, get_features("<a><![CDATA[DockWidgetMovable]]></a>"));
}

TEST_F(TOLV_DOCK_WIDGET_XML_TEST, unknown_features_are_passed_over)
{
    EXPECT_EQ(2, get_features("<a>DockWidgetFlying</a><a>DockWidgetMovable</a><a>7</a>"));
    for (const char* const unknown :
         {"<a>DockWidgetFlying</a>", "<a>dockwidgetmovable</a>", "<a>QDockWidgetMovable</a>",
          "<a> DockWidgetMovable</a>", "<DockWidgetMovable/>", "<a/>", "<a></a>", "<a/><b/>", "", "DockWidgetMovable",
          "<a><b>DockWidgetMovable</b></a>"})
        EXPECT_EQ(FEATURES_OF_OLD, get_features(unknown)) << unknown;
    EXPECT_EQ(0, get_features("<a/><a>DockWidgetFlying</a><a>NoDockWidgetFeatures</a>"));
}

TEST_F(TOLV_DOCK_WIDGET_XML_TEST, only_the_first_of_each_child_counts)
{
    const std::unique_ptr<TEST_DOCK> dock =
        make("<d><setWindowTitle>First</setWindowTitle><setWindowTitle>Second</setWindowTitle>"
             "<setFeatures><a>DockWidgetMovable</a></setFeatures><setFeatures><a>DockWidgetClosable</a></setFeatures>"
             "</d>");
    EXPECT_EQ("First", dock->windowTitle());
    EXPECT_EQ(QDockWidget::DockWidgetMovable, dock->features());
}

TEST_F(TOLV_DOCK_WIDGET_XML_TEST, only_the_first_element_of_a_text_counts)
{
    EXPECT_EQ(
        "One",
        make("<a><setWindowTitle>One</setWindowTitle></a><a><setWindowTitle>Two</setWindowTitle></a>")->windowTitle());
    EXPECT_EQ(QString(), make("<a><deeper><setWindowTitle>One</setWindowTitle></deeper></a>")->windowTitle());
}

TEST_F(TOLV_DOCK_WIDGET_XML_TEST, what_describes_nothing_gives_a_plain_window)
{
    for (const char* const xml :
         {"", " ", "no XML", "<", "<d", "<d>", "<d><setWindowTitle>Title", "<d><setWindowTitle>Title</d>",
          "<d><setWindowTitle/></d>", "<d><setWindowTitle></setWindowTitle></d>", "<d/>", "<!-- d -->",
          "<d><setfeatures><a>NoDockWidgetFeatures</a></setfeatures><SetWindowTitle>T</SetWindowTitle></d>",
          "<d setWindowTitle='T' setFeatures='NoDockWidgetFeatures'/>", "\x01\xFF\xFE"})
    {
        SCOPED_TRACE(xml);
        const std::unique_ptr<TEST_DOCK> dock = make(xml);
        EXPECT_EQ(QString(), dock->windowTitle());
        EXPECT_EQ(FEATURES_OF_OLD, int(dock->features()));
        EXPECT_EQ(TOLV_DOCK_WIDGET::DOCK_STATE_DOCKED, dock->m_state);
        EXPECT_NE(nullptr, dock->titleBarWidget());
    }
    const tinyxml2::XMLElement* const no_element = nullptr;
    const TEST_DOCK dock(no_element, m_window.get());
    EXPECT_EQ(QString(), dock.windowTitle());
    EXPECT_EQ(FEATURES_OF_OLD, int(dock.features()));
}

TEST_F(TOLV_DOCK_WIDGET_XML_TEST, the_title_is_the_first_child_of_its_element_whatever_it_is)
{
    EXPECT_EQ("T & U", make("<d><setWindowTitle>T &amp; U</setWindowTitle></d>")->windowTitle());
    EXPECT_EQ(" note ", make("<d><setWindowTitle><!-- note -->T</setWindowTitle></d>")->windowTitle());
    EXPECT_EQ("b", make("<d><setWindowTitle><b>T</b></setWindowTitle></d>")->windowTitle());
}
