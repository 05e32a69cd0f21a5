#include "gallery_window.h"

#include "gallery_details.h"
#include "gallery_model.h"
#include "gallery_page.h"
#include "gallery_samples.h"
#include "tolv_create_action.h"
#include "tolv_global.h"
#include "tolv_icon.h"
#include "workbench_palette.h"

#include <QAbstractItemView>
#include <QAction>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace
{
constexpr int ICON_SIZES[] = {16, 24, 32, 64};
constexpr int INITIAL_ICON_SIZE = 32;

enum KIND_COLUMN
{
    COLUMN_TITLE,
    COLUMN_COUNT
};

GALLERY_KIND to_kind(int kind)
{
    return static_cast<GALLERY_KIND>(kind);
}

bool shows_icons(GALLERY_KIND kind)
{
    return kind == GALLERY_ACTIONS || kind == GALLERY_ICONS;
}

bool is_drawing_resource(GALLERY_KIND kind)
{
    return kind >= GALLERY_COLORS && kind <= GALLERY_FONTS;
}
} // namespace

GALLERY_WINDOW::GALLERY_WINDOW(QWidget* parent)
    : TOLV_DIALOG(parent, Qt::Window | Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint),
      m_samples(new GALLERY_SAMPLES(this)), m_stack(new QStackedWidget(this)),
      m_details(new GALLERY_DETAILS(m_samples, this)), m_status(new QLabel(this))
{
    setObjectName(QStringLiteral("gallery_window"));
    setWindowTitle(tr("Gallery"));
    setWindowIcon(tolv_get_icon(TOLV_COLOR_THEME_ICON));
    QWidget* const tools = create_tools();
    create_kinds();
    auto* const splitter = new QSplitter(this);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_kinds);
    splitter->addWidget(m_stack);
    splitter->addWidget(m_details);
    splitter->setStretchFactor(1, 2);
    splitter->setStretchFactor(2, 1);
    const int character = fontMetrics().averageCharWidth();
    splitter->setSizes({character * 20, character * 100, character * 50});
    m_status->setObjectName(QStringLiteral("status_label"));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* const close_button = buttons->button(QDialogButtonBox::Close);
    close_button->setObjectName(QStringLiteral("close_button"));
    close_button->setAutoDefault(false);
    TOLV_SAFE_CONNECT(buttons, SIGNAL(rejected()), this, SLOT(reject()));
    auto* const bottom = new QHBoxLayout;
    bottom->addWidget(m_status, 1);
    bottom->addWidget(buttons);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(tools);
    layout->addWidget(splitter, 1);
    layout->addLayout(bottom);
    TOLV_SAFE_CONNECT(m_details, SIGNAL(copy_name_wanted()), this, SLOT(copy_name()));
    TOLV_SAFE_CONNECT(m_details, SIGNAL(copy_call_wanted()), this, SLOT(copy_call()));
    create_find_action();
    const QWidgetList chain =
        QWidgetList{m_search, m_size, m_dark, m_kinds} + m_details->get_tab_chain() + QWidgetList{close_button};
    for (int i = 1; i < chain.size(); ++i)
        setTabOrder(chain[i - 1], chain[i]);
    resize(character * 175, fontMetrics().height() * 42);
    apply_ground();
    m_kinds->setCurrentItem(m_kinds->topLevelItem(GALLERY_ACTIONS));
    focus_search();
}

GALLERY_WINDOW::~GALLERY_WINDOW() = default;

bool GALLERY_WINDOW::select(const QString& what)
{
    for (int i = 0; i < GALLERY_KIND_COUNT; ++i)
    {
        const GALLERY_KIND kind = to_kind(i);
        const bool is_kind = what == GALLERY_CATALOG::get_key(kind);
        if (!is_kind && !get_filter(kind)->get_model()->find_name(what).isValid())
            continue;
        m_kinds->setCurrentItem(m_kinds->topLevelItem(kind));
        if (is_kind || get_page(kind)->select_name(what))
            return true;
        m_search->clear();
        return get_page(kind)->select_name(what);
    }
    return false;
}

void GALLERY_WINDOW::use_size(const QSize& size)
{
    m_restore_pending = false;
    m_save_pending = false;
    resize(size);
}

GALLERY_KIND GALLERY_WINDOW::get_kind() const
{
    return to_kind(m_kinds->indexOfTopLevelItem(m_kinds->currentItem()));
}

GALLERY_PAGE* GALLERY_WINDOW::get_page(GALLERY_KIND kind)
{
    if (m_pages[kind] == nullptr)
    {
        auto* const page = new GALLERY_PAGE(get_filter(kind), m_samples, m_stack);
        page->setObjectName(GALLERY_CATALOG::get_key(kind) + QStringLiteral("_page"));
        page->set_icon_size(m_size->currentData().toInt());
        page->set_ground(workbench_get_palette(m_dark->isChecked()));
        m_stack->addWidget(page);
        m_pages[kind] = page;
        setTabOrder(m_kinds, page->get_view());
        add_copy_actions(page);
        page->show_rows();
        TOLV_SAFE_CONNECT(page, SIGNAL(current_changed()), this, SLOT(show_current()));
        TOLV_SAFE_CONNECT(page, SIGNAL(activated()), this, SLOT(copy_name()));
        if (kind == GALLERY_MOVIES)
            TOLV_SAFE_CONNECT(m_samples, SIGNAL(moved()), page->get_view()->viewport(), SLOT(update()));
    }
    return m_pages[kind];
}

void GALLERY_WINDOW::apply_drawing_resources()
{
    for (int i = 0; i < GALLERY_KIND_COUNT; ++i)
    {
        if (is_drawing_resource(to_kind(i)) && m_filters[i] != nullptr)
            m_filters[i]->get_model()->refresh();
    }
    apply_ground();
    show_current();
}

void GALLERY_WINDOW::keyPressEvent(QKeyEvent* event)
{
    const bool is_searching = m_search->hasFocus();
    if (event->key() == Qt::Key_Escape && is_searching && !m_search->text().isEmpty())
        m_search->clear(); // the first Escape ends the search, not the window
    else if (is_searching &&
             (event->key() == Qt::Key_Down || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
        get_page(get_kind())->get_view()->setFocus();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
    {
        if (auto* const button = qobject_cast<QPushButton*>(focusWidget()))
            button->click();
    }
    else
        TOLV_DIALOG::keyPressEvent(event);
}

void GALLERY_WINDOW::showEvent(QShowEvent* event)
{
    TOLV_DIALOG::showEvent(event);
    play_movies();
}

void GALLERY_WINDOW::hideEvent(QHideEvent* event)
{
    TOLV_DIALOG::hideEvent(event);
    play_movies();
}

void GALLERY_WINDOW::search(const QString& text)
{
    for (int i = 0; i < GALLERY_KIND_COUNT; ++i)
    {
        get_filter(to_kind(i))->set_search(text);
        if (m_pages[i] != nullptr)
            m_pages[i]->show_rows();
    }
    show_counts();
    show_current();
}

void GALLERY_WINDOW::show_kind()
{
    m_stack->setCurrentWidget(get_page(get_kind()));
    m_size->setEnabled(shows_icons(get_kind()));
    play_movies();
    show_current();
}

void GALLERY_WINDOW::show_current()
{
    const GALLERY_KIND kind = get_kind();
    const GALLERY_PAGE* const page = get_page(kind);
    m_details->set_thing(kind, page->get_value(), page->get_name());
    show_status();
}

void GALLERY_WINDOW::apply_icon_size()
{
    for (GALLERY_PAGE* const page : m_pages)
    {
        if (page != nullptr)
            page->set_icon_size(m_size->currentData().toInt());
    }
}

void GALLERY_WINDOW::apply_ground()
{
    const QPalette palette = workbench_get_palette(m_dark->isChecked());
    for (GALLERY_PAGE* const page : m_pages)
    {
        if (page != nullptr)
            page->set_ground(palette);
    }
    m_details->set_ground(palette);
}

void GALLERY_WINDOW::focus_search()
{
    m_search->setFocus(Qt::ShortcutFocusReason);
    m_search->selectAll();
}

void GALLERY_WINDOW::copy_name()
{
    copy(get_page(get_kind())->get_name());
}

void GALLERY_WINDOW::copy_call()
{
    const QString name = get_page(get_kind())->get_name();
    copy(name.isEmpty() ? QString() : GALLERY_CATALOG::get_call(get_kind(), name));
}

QWidget* GALLERY_WINDOW::create_tools()
{
    auto* const tools = new QWidget(this);
    m_search = new QLineEdit(tools);
    m_search->setObjectName(QStringLiteral("search"));
    m_search->setAccessibleName(tr("Search"));
    m_search->setPlaceholderText(tr("Words of a name or a text"));
    m_search->setClearButtonEnabled(true);
    auto* const search_label = new QLabel(tr("S&earch:"), tools);
    search_label->setBuddy(m_search);
    m_size = new QComboBox(tools);
    m_size->setObjectName(QStringLiteral("icon_size"));
    m_size->setAccessibleName(tr("Size of icons"));
    for (const int size : ICON_SIZES)
        m_size->addItem(tr("%1 pixels").arg(size), size);
    m_size->setCurrentIndex(m_size->findData(INITIAL_ICON_SIZE));
    auto* const size_label = new QLabel(tr("&Icons:"), tools);
    size_label->setBuddy(m_size);
    m_dark = new QCheckBox(tr("&Dark ground"), tools);
    m_dark->setObjectName(QStringLiteral("dark_ground"));
    m_dark->setToolTip(tr("Shows everything on a dark ground"));
    m_dark->setChecked(QGuiApplication::palette().color(QPalette::Base).lightness() < 128);
    auto* const layout = new QHBoxLayout(tools);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(search_label);
    layout->addWidget(m_search, 1);
    layout->addSpacing(fontMetrics().averageCharWidth() * 2);
    layout->addWidget(size_label);
    layout->addWidget(m_size);
    layout->addSpacing(fontMetrics().averageCharWidth());
    layout->addWidget(m_dark);
    TOLV_SAFE_CONNECT(m_search, SIGNAL(textChanged(QString)), this, SLOT(search(QString)));
    TOLV_SAFE_CONNECT(m_size, SIGNAL(currentIndexChanged(int)), this, SLOT(apply_icon_size()));
    TOLV_SAFE_CONNECT(m_dark, SIGNAL(toggled(bool)), this, SLOT(apply_ground()));
    return tools;
}

void GALLERY_WINDOW::create_kinds()
{
    m_kinds = new QTreeWidget(this);
    m_kinds->setObjectName(QStringLiteral("kinds"));
    m_kinds->setAccessibleName(tr("What to show"));
    m_kinds->setColumnCount(2);
    m_kinds->setHeaderHidden(true);
    m_kinds->setRootIsDecorated(false);
    m_kinds->setUniformRowHeights(true);
    m_kinds->setAllColumnsShowFocus(true);
    m_kinds->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    for (int i = 0; i < GALLERY_KIND_COUNT; ++i)
    {
        auto* const item = new QTreeWidgetItem(m_kinds, {GALLERY_CATALOG::get_title(to_kind(i))});
        item->setTextAlignment(COLUMN_COUNT, Qt::AlignRight | Qt::AlignVCenter);
    }
    m_kinds->header()->setStretchLastSection(false);
    m_kinds->header()->setSectionResizeMode(COLUMN_TITLE, QHeaderView::Stretch);
    m_kinds->header()->setSectionResizeMode(COLUMN_COUNT, QHeaderView::ResizeToContents);
    m_kinds->setMinimumWidth(fontMetrics().averageCharWidth() * 18);
    m_kinds->setMaximumWidth(fontMetrics().averageCharWidth() * 30);
    show_counts();
    TOLV_SAFE_CONNECT(m_kinds, SIGNAL(currentItemChanged(QTreeWidgetItem*, QTreeWidgetItem*)), this, SLOT(show_kind()));
}

void GALLERY_WINDOW::create_find_action()
{
    QAction* const find = tolv_create_action(TOLV_FIND_ACTION, this);
    addAction(find);
    TOLV_SAFE_CONNECT(find, SIGNAL(triggered()), this, SLOT(focus_search()));
}

void GALLERY_WINDOW::add_copy_actions(GALLERY_PAGE* page)
{
    QAction* const copy_name_action = tolv_create_action(TOLV_COPY_ACTION, page);
    copy_name_action->setText(tr("Copy &Name"));
    copy_name_action->setShortcutContext(Qt::WidgetShortcut); // the description has a Copy of its own
    auto* const copy_call_action = new QAction(tr("Copy C&all"), page);
    page->get_view()->addActions({copy_name_action, copy_call_action});
    TOLV_SAFE_CONNECT(copy_name_action, SIGNAL(triggered()), this, SLOT(copy_name()));
    TOLV_SAFE_CONNECT(copy_call_action, SIGNAL(triggered()), this, SLOT(copy_call()));
}

GALLERY_FILTER* GALLERY_WINDOW::get_filter(GALLERY_KIND kind)
{
    if (m_filters[kind] == nullptr)
    {
        m_filters[kind] = new GALLERY_FILTER(new GALLERY_MODEL(kind), this);
        m_filters[kind]->set_search(m_search->text());
    }
    return m_filters[kind];
}

int GALLERY_WINDOW::count_matches(GALLERY_KIND kind)
{
    return m_search->text().trimmed().isEmpty() ? GALLERY_CATALOG::get_count(kind) : get_filter(kind)->rowCount();
}

void GALLERY_WINDOW::show_counts()
{
    for (int i = 0; i < GALLERY_KIND_COUNT; ++i)
    {
        const int count = count_matches(to_kind(i));
        QTreeWidgetItem* const item = m_kinds->topLevelItem(i);
        item->setText(COLUMN_COUNT, QString::number(count));
        const QPalette::ColorGroup group = count == 0 ? QPalette::Disabled : QPalette::Normal;
        for (const int column : {COLUMN_TITLE, COLUMN_COUNT})
            item->setForeground(column, m_kinds->palette().brush(group, QPalette::Text));
    }
}

void GALLERY_WINDOW::show_status()
{
    const GALLERY_KIND kind = get_kind();
    const QString title = GALLERY_CATALOG::get_title(kind).toLower();
    const int matches = count_matches(kind);
    const int all = GALLERY_CATALOG::get_count(kind);
    m_status->setText(matches == all ? tr("%1 %2").arg(all).arg(title)
                                     : tr("%1 of %2 %3").arg(matches).arg(all).arg(title));
}

void GALLERY_WINDOW::play_movies()
{
    m_samples->set_playing(isVisible() && get_kind() == GALLERY_MOVIES);
}

void GALLERY_WINDOW::copy(const QString& text)
{
    if (text.isEmpty())
        return;
    QGuiApplication::clipboard()->setText(text);
    m_status->setText(tr("Copied: %1").arg(text));
}
