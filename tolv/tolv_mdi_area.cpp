#include "tolv_mdi_area.h"

#include "cfg.h"
#include "cfgq_registry.h"
#include "tolv_clickable_label.h"
#include "tolv_color.h"
#include "tolv_font.h"
#include "tolv_global.h"
#include "tolv_image.h"
#include "tolv_mem.h"
#include "tolv_module.h"
#include "tolv_tab_close_marks.h"
#include "ver.h"

#include <QHBoxLayout>
#include <QMdiSubWindow>
#include <QPainter>
#include <QTabBar>
#include <QVBoxLayout>

TOLV_MEM_INITIALIZER();

namespace
{
enum WEB_PAGE
{
    WEB_PAGE_DOCUMENTATION = 11,
    WEB_PAGE_NOTIFICATION_CENTER = 12
};

void open_web_page(WEB_PAGE page)
{
    TOLV_MODULE("mod_webnav.dll").call<void(int)>("webnav_dyn_locate_to_web_page_based_on_enum", page);
}

QTabBar* find_tab_bar(const TOLV_MDI_AREA& area)
{
    return area.findChild<QTabBar*>();
}

QString remove_modified_mark(QString text)
{
    return text.remove(QLatin1String("[*]"));
}

/// The text that a document's tab has.
QString get_tab_text(const QMdiSubWindow& window)
{
    const QString title = remove_modified_mark(window.windowTitle());
    return window.isWindowModified() ? title + QLatin1Char('*') : title;
}

QString get_version_text()
{
    return QString::fromLocal8Bit((ver_get_version_string() + " " + ver_get_install_type_string()).c_str());
}

TOLV_CLICKABLE_LABEL* create_picture(TOLV_PIXMAP_ENUM pixmap)
{
    auto* const label = new TOLV_CLICKABLE_LABEL;
    label->setPixmap(tolv_get_pixmap(pixmap));
    label->setCursor(Qt::PointingHandCursor);
    label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return label;
}
} // namespace

TOLV_MDI_AREA::TOLV_MDI_AREA(QWidget* parent) : QMdiArea(parent)
{
    set_up_background();
    set_tabs();
    set_up_pictures();
}

TOLV_MDI_AREA::~TOLV_MDI_AREA() = default;

void TOLV_MDI_AREA::set_up_background()
{
    static const bool s_show_beta_background = cfg_is_on("show_beta_background");
    if (ver_is_beta() || s_show_beta_background)
        setBackground(QBrush(QPixmap(QStringLiteral(":icons/tolv_beta.png"))));
    else
        setBackground(QBrush(TOLV_COLOR(TOLV_KORVEX_BLUE_COLOR).get_color()));
}

void TOLV_MDI_AREA::set_up_pictures()
{
    TOLV_CLICKABLE_LABEL* const documentation = create_picture(TOLV_DOCUMENTATION_URL_PIXMAP);
    TOLV_CLICKABLE_LABEL* const notification_center = create_picture(TOLV_NOTIFICATION_CENTER_PIXMAP);
    TOLV_SAFE_CONNECT(documentation, SIGNAL(pressed()), this, SLOT(on_documentation_pressed()));
    TOLV_SAFE_CONNECT(notification_center, SIGNAL(pressed()), this, SLOT(on_notification_center_pressed()));

    auto* const column = new QVBoxLayout;
    column->addWidget(documentation);
    column->addWidget(notification_center);
    auto* const row = new QHBoxLayout;
    row->addStretch();
    row->addLayout(column);
    auto* const whole = new QVBoxLayout;
    whole->addStretch();
    whole->addLayout(row);
    viewport()->setLayout(whole);
}

void TOLV_MDI_AREA::set_tabs()
{
    QVariant show_tabs(true);
    CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_MDI_AREA)
        .get_value(QString::fromLatin1(CFGQ_TOLV_SHOW_MDI_TABS), &show_tabs);
    if (!show_tabs.toBool())
    {
        setViewMode(SubWindowView);
        return;
    }
    setViewMode(TabbedView);
    setTabsClosable(true);
    setTabsMovable(true);
    if (QTabBar* const bar = find_tab_bar(*this); bar != nullptr)
    {
        bar->setElideMode(Qt::ElideNone);
        bar->setDocumentMode(true);
        bar->setExpanding(false);
        TOLV_TAB_CLOSE_MARKS::install(bar);
    }
}

void TOLV_MDI_AREA::update_tab_tooltips()
{
    QTabBar* const bar = find_tab_bar(*this);
    if (bar == nullptr)
        return;
    for (int index = 0; index < bar->count(); ++index)
        bar->setTabToolTip(index, bar->tabText(index));
}

void TOLV_MDI_AREA::update_tab_tooltip(const QString& title, const QString& tool_tip, int index)
{
    QTabBar* const bar = find_tab_bar(*this);
    if (bar == nullptr)
        return;
    if (index < 0)
        index = bar->currentIndex();
    const QString cleaned_tool_tip = remove_modified_mark(tool_tip);
    if (cleaned_tool_tip.trimmed().isEmpty() || index < 0 || index >= bar->count())
        return;
    if (bar->tabText(index) == remove_modified_mark(title))
        bar->setTabToolTip(index, cleaned_tool_tip);
}

void TOLV_MDI_AREA::close_tab(int index)
{
    const QTabBar* const bar = find_tab_bar(*this);
    if (bar == nullptr || index < 0 || index >= bar->count())
        return;
    const QString text = bar->tabText(index);
    const QList<QMdiSubWindow*> windows = subWindowList(CreationOrder);
    for (QMdiSubWindow* window : windows)
    {
        if (get_tab_text(*window) != text)
            continue;
        window->close();
        return;
    }
}

void TOLV_MDI_AREA::on_documentation_pressed()
{
    open_web_page(WEB_PAGE_DOCUMENTATION);
}

void TOLV_MDI_AREA::on_notification_center_pressed()
{
    open_web_page(WEB_PAGE_NOTIFICATION_CENTER);
}

void TOLV_MDI_AREA::paintEvent(QPaintEvent* event)
{
    QMdiArea::paintEvent(event); // has a painter of its own, so it goes before ours

    const QPixmap watermark = tolv_get_pixmap(TOLV_MDI_WATERMARK_PIXMAP);
    const int x = viewport()->width() / 2 - watermark.width() / 2;
    const int y = viewport()->height() / 2 - watermark.height() / 2;
    QPainter painter(viewport());
    painter.drawPixmap(x, y, watermark);
    painter.setFont(*TOLV_FONT(TOLV_MDI_BACKGROUND_FONT).get_font());
    painter.setPen(TOLV_COLOR(TOLV_WHITE_COLOR).get_color());
    painter.drawText(QRect(x, y + watermark.height(), watermark.width(), 50), Qt::AlignRight | Qt::AlignTop,
                     get_version_text());
}

void TOLV_MDI_AREA::scrollContentsBy(int dx, int dy)
{
    QMdiArea::scrollContentsBy(dx, dy); // moves pixels and children of the viewport, whatever they are
    if (QLayout* const pictures = viewport()->layout(); pictures != nullptr)
    {
        pictures->invalidate();
        pictures->activate();
    }
    viewport()->update();
}
