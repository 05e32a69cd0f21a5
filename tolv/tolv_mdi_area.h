#pragma once

#include "tolv_export.h"

#include <QMdiArea>
#include <QString>

/// The middle of a main window, where the open documents are, in tabs or in windows as the user's registry says
/// (SUB_KEY_MDI_AREA, CFGQ_TOLV_SHOW_MDI_TABS). Behind them are a watermark with the product's version and, at the lower
/// right, two pictures that open web pages. The title of a document has "[*]" where Qt shows that it is modified. The
/// close buttons of the tabs have the colour of their text (TOLV_TAB_CLOSE_MARKS).
///
/// The operations on tabs take the first QTabBar below the area, which is the area's own in tabs; without one they do
/// nothing.
class TOLV_EXPORT TOLV_MDI_AREA : public QMdiArea
{
    Q_OBJECT

public:
    explicit TOLV_MDI_AREA(QWidget* parent = nullptr);
    ~TOLV_MDI_AREA() override;

    /// Shows tabs or windows, as the registry says now; tabs where it says nothing. The constructor has done so.
    void set_tabs();
    /// Gives each tab its own text as its tool tip.
    void update_tab_tooltips();
    /// Gives a tab a tool tip, provided that the tab's text is the title and the tool tip is more than blanks; "[*]"
    /// counts in neither.
    /// @param index the tab, negative for the current one; one that does not exist is ignored
    void update_tab_tooltip(const QString& title, const QString& tool_tip, int index);

public slots:
    /// Closes the document whose title is the tab's text; it may refuse. Of several with one title the first closes,
    /// whichever tab it was. For hosts to connect; a tab that does not exist is ignored.
    void close_tab(int index);
    /// Open a web page by way of the module "mod_webnav.dll"; that it, or its function, is missing is an internal error
    /// with the loader's text.
    void on_documentation_pressed();
    void on_notification_center_pressed();

protected:
    void paintEvent(QPaintEvent* event) override;
    /// Scrolls the documents alone, where a host has given the area scroll bars: what is behind them keeps its place.
    void scrollContentsBy(int dx, int dy) override;

private:
    void set_up_background();
    void set_up_pictures();
};
