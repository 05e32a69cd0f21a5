#include "gallery_page.h"

#include "gallery_delegate.h"
#include "gallery_model.h"
#include "gallery_samples.h"
#include "tolv_global.h"

#include <QHeaderView>
#include <QLabel>
#include <QListView>
#include <QTreeView>
#include <QVBoxLayout>

GALLERY_PAGE::GALLERY_PAGE(GALLERY_FILTER* filter, GALLERY_SAMPLES* samples, QWidget* parent)
    : QWidget(parent), m_filter(filter), m_samples(samples),
      m_none(new QLabel(tr("Nothing here fits the search."), this))
{
    m_view = GALLERY_CATALOG::has_tiles(get_kind()) ? create_tiles() : create_table();
    m_view->setObjectName(QStringLiteral("things"));
    m_view->setAccessibleName(GALLERY_CATALOG::get_title(get_kind()));
    m_view->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_none->setObjectName(QStringLiteral("nothing_found"));
    m_none->setAlignment(Qt::AlignCenter);
    m_none->hide();
    setMinimumWidth(fontMetrics().averageCharWidth() * 40);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_none, 1);
    TOLV_SAFE_CONNECT(m_view->selectionModel(), SIGNAL(currentChanged(QModelIndex, QModelIndex)), this,
                      SIGNAL(current_changed()));
    TOLV_SAFE_CONNECT(m_view, SIGNAL(activated(QModelIndex)), this, SIGNAL(activated()));
}

GALLERY_KIND GALLERY_PAGE::get_kind() const
{
    return m_filter->get_model()->get_kind();
}

QAbstractItemView* GALLERY_PAGE::get_view() const
{
    return m_view;
}

void GALLERY_PAGE::set_icon_size(int size)
{
    m_view->setIconSize(QSize(size, size));
    if (auto* const tiles = qobject_cast<QListView*>(m_view))
        tiles->setGridSize(tiles->sizeHintForIndex(m_filter->index(0, 0)) + QSize(4, 4));
    m_view->scrollTo(m_view->currentIndex());
}

void GALLERY_PAGE::set_ground(const QPalette& palette)
{
    // To each widget itself: below a window with a style sheet, as main windows have one, palettes are not inherited.
    setPalette(palette);
    for (QWidget* widget : findChildren<QWidget*>())
        widget->setPalette(palette);
}

bool GALLERY_PAGE::select_name(const QString& name)
{
    const QModelIndex index = m_filter->mapFromSource(m_filter->get_model()->find_name(name));
    if (!index.isValid())
        return false;
    m_view->setCurrentIndex(index);
    m_view->scrollTo(index);
    return true;
}

void GALLERY_PAGE::show_rows()
{
    const bool has_rows = m_filter->rowCount() > 0;
    m_view->setVisible(has_rows);
    m_none->setVisible(!has_rows);
    if (m_view->currentIndex().isValid())
        m_view->scrollTo(m_view->currentIndex());
    else if (has_rows)
        m_view->setCurrentIndex(m_filter->index(0, 0));
}

int GALLERY_PAGE::get_value() const
{
    return m_view->currentIndex().data(GALLERY_MODEL::ROLE_VALUE).toInt();
}

QString GALLERY_PAGE::get_name() const
{
    return m_view->currentIndex().data(GALLERY_MODEL::ROLE_NAME).toString();
}

QAbstractItemView* GALLERY_PAGE::create_tiles()
{
    auto* const view = new QListView(this);
    view->setModel(m_filter);
    view->setItemDelegate(new GALLERY_TILE_DELEGATE(get_kind(), m_samples, view));
    view->setViewMode(QListView::IconMode);
    view->setMovement(QListView::Static);
    view->setResizeMode(QListView::Adjust);
    view->setLayoutMode(QListView::SinglePass);
    view->setUniformItemSizes(true);
    view->setWordWrap(true);
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    view->setSelectionRectVisible(false);
    return view;
}

QAbstractItemView* GALLERY_PAGE::create_table()
{
    auto* const view = new QTreeView(this);
    view->setModel(m_filter);
    view->setItemDelegate(new GALLERY_ROW_DELEGATE(get_kind(), m_samples, view));
    view->setRootIsDecorated(false);
    view->setUniformRowHeights(true);
    view->setAllColumnsShowFocus(true);
    view->setAlternatingRowColors(true);
    view->header()->setSortIndicator(-1, Qt::AscendingOrder); // the order of the table, until the user wants another
    view->setSortingEnabled(true);
    view->header()->setSectionsMovable(false);
    m_view = view;
    size_columns();
    return view;
}

void GALLERY_PAGE::size_columns()
{
    QHeaderView* const header = static_cast<QTreeView*>(m_view)->header();
    const int character = fontMetrics().averageCharWidth();
    const int name = GALLERY_CATALOG::get_name_column(get_kind());
    const bool is_text_wide = get_kind() == GALLERY_ACTIONS || get_kind() == GALLERY_FONTS;
    header->setStretchLastSection(true);
    for (int column = 0; column < header->count() - 1; ++column)
    {
        int width = get_kind() == GALLERY_ACTIONS ? 16 : 11;
        if (column == 0)
            width = is_text_wide ? 36 : 22;
        else if (column == name)
            width = 46;
        else if (get_kind() == GALLERY_FONTS && column == 3)
            width = 22;
        header->resizeSection(column, character * width);
    }
}
