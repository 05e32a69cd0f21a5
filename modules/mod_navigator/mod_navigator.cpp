#include "mod_navigator.h"

#include "tolv_global.h"
#include "tolv_main_window.h"
#include "tolv_tree_filter_model.h"
#include "tolv_tree_filter_proxy_model.h"
#include "tolv_tree_view.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QStackedWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace
{
const int LARGEST_COLUMN = 60; ///< characters that a column is wide before the user widens it

struct PAGE
{
    const char* name;
    const char* title;
};

const PAGE PAGES[] = {{"hierarchy", QT_TRANSLATE_NOOP("NAVIGATOR_DOCK", "Hierarchy")},
                      {"files", QT_TRANSLATE_NOOP("NAVIGATOR_DOCK", "Files")},
                      {"design_units", QT_TRANSLATE_NOOP("NAVIGATOR_DOCK", "Design Units")},
                      {"ip_components", QT_TRANSLATE_NOOP("NAVIGATOR_DOCK", "IP Components")}};

QString get_page_title(const QString& page)
{
    for (const PAGE& row : PAGES)
    {
        if (page == QLatin1String(row.name))
            return NAVIGATOR_DOCK::tr(row.title);
    }
    return page;
}
} // namespace

NAVIGATOR_PAGE_DOCK::NAVIGATOR_PAGE_DOCK(const QString& page, QWidget* parent)
    : TOLV_DOCK_WIDGET(get_page_title(page), parent), m_view(new TOLV_TREE_VIEW(this))
{
    setObjectName(page + QStringLiteral("_dock"));
    m_view->setObjectName(page);
    m_view->setAccessibleName(windowTitle());
    m_view->set_registry_string(QStringLiteral("navigator_") + page);
    m_view->setUniformRowHeights(true);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    initialize_with_search_widget(m_view, true);
    TOLV_SAFE_CONNECT(this, SIGNAL(filter_option_changed(QString)), this, SLOT(apply_filter(QString)));
    TOLV_SAFE_CONNECT(m_view, SIGNAL(activated(QModelIndex)), this, SLOT(report_activated(QModelIndex)));
}

NAVIGATOR_PAGE_DOCK::~NAVIGATOR_PAGE_DOCK()
{
    save_columns();
}

TOLV_TREE_VIEW* NAVIGATOR_PAGE_DOCK::get_view() const
{
    return m_view;
}

void NAVIGATOR_PAGE_DOCK::set_source_model(QAbstractItemModel* model)
{
    save_columns();
    QSortFilterProxyModel* const old_filter = m_filter;
    if (old_filter != nullptr && old_filter->sourceModel() != nullptr)
        old_filter->sourceModel()->disconnect(this);
    m_view->setModel(nullptr);
    m_filter = make_filter(model);
    if (old_filter != nullptr && old_filter->parent() == this)
        old_filter->deleteLater();
    if (m_filter == nullptr)
        return;
    m_view->setModel(m_filter);
    m_view->header()->setMinimumSectionSize(m_view->fontMetrics().averageCharWidth() * 6);
    if (m_filter->rowCount() == 1)
        m_view->expand(m_filter->index(0, 0));
    connect_selection();
    TOLV_SAFE_CONNECT(model, SIGNAL(modelAboutToBeReset()), this, SLOT(save_columns()));
    TOLV_SAFE_CONNECT(model, SIGNAL(modelReset()), this, SLOT(load_columns_later()));
    load_columns_later();
}

/// The model's own filter, or a new one; null without a model.
QSortFilterProxyModel* NAVIGATOR_PAGE_DOCK::make_filter(QAbstractItemModel* model)
{
    if (model == nullptr)
        return nullptr;
    const auto* const filtered = qobject_cast<TOLV_TREE_FILTER_MODEL*>(model);
    if (filtered != nullptr && filtered->get_filter_model() != nullptr)
        return filtered->get_filter_model();
    auto* const filter = new TOLV_TREE_FILTER_PROXY_MODEL(this);
    filter->setSourceModel(model);
    return filter;
}

void NAVIGATOR_PAGE_DOCK::save_columns()
{
    if (m_view->model() != nullptr && m_view->model()->rowCount() > 0)
        m_view->save_column_visibility_to_registry();
}

/// Columns without a stored width take that of their contents, which the tool may be about to unfold.
void NAVIGATOR_PAGE_DOCK::load_columns_later()
{
    QTimer::singleShot(0, this, SLOT(load_columns()));
}

void NAVIGATOR_PAGE_DOCK::load_columns()
{
    if (m_view->model() == nullptr || m_view->model()->rowCount() == 0)
        return;
    m_view->load_column_visibility_from_registry();
    const int largest = m_view->fontMetrics().averageCharWidth() * LARGEST_COLUMN;
    for (int column = 0; column < m_view->model()->columnCount(); ++column)
    {
        if (m_view->columnWidth(column) > largest)
            m_view->setColumnWidth(column, largest);
    }
}

void NAVIGATOR_PAGE_DOCK::connect_selection()
{
    // A view makes itself a new selection model with each model.
    TOLV_SAFE_CONNECT(m_view->selectionModel(), SIGNAL(currentChanged(QModelIndex, QModelIndex)), this,
                      SLOT(report_current()));
}

QModelIndex NAVIGATOR_PAGE_DOCK::map_to_source(const QModelIndex& index) const
{
    return m_filter != nullptr ? m_filter->mapToSource(index) : QModelIndex();
}

void NAVIGATOR_PAGE_DOCK::set_current(const QModelIndex& index)
{
    if (m_filter == nullptr || index.model() != m_filter->sourceModel())
        return;
    if (index.isValid() && !m_filter->mapFromSource(index).isValid())
        end_filter();
    const QModelIndex shown = m_filter->mapFromSource(index);
    m_view->setCurrentIndex(shown);
    m_view->scrollTo(shown);
}

/// Empties the line, too, so that it says what is in force.
void NAVIGATOR_PAGE_DOCK::end_filter()
{
    auto* const line = widget()->findChild<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly);
    if (line != nullptr && !line->text().isEmpty())
        line->clear();
    else
        emit filter_option_changed(QString());
}

void NAVIGATOR_PAGE_DOCK::apply_filter(const QString& text)
{
    auto* const filter = qobject_cast<TOLV_TREE_FILTER_PROXY_MODEL*>(m_filter);
    if (filter == nullptr)
        return;
    // What was open before the filtering is open again behind it; rows that match are opened up to the top.
    const bool is_filtering = !text.trimmed().isEmpty();
    const bool was_filtering = !filter->filterRegularExpression().pattern().isEmpty();
    if (is_filtering && !was_filtering)
        m_view->save_expandable_state(QModelIndex(), true);
    filter->start_filter(text, false, true);
    if (is_filtering)
        m_view->expandAll();
    else if (was_filtering)
        m_view->restore_expandable_state();
}

void NAVIGATOR_PAGE_DOCK::report_current()
{
    emit current_changed(map_to_source(m_view->currentIndex()));
}

void NAVIGATOR_PAGE_DOCK::report_activated(const QModelIndex& index)
{
    emit activated(map_to_source(index));
}

NAVIGATOR_DOCK::NAVIGATOR_DOCK(QWidget* parent)
    : TOLV_DOCK_WIDGET(tr("Project Navigator"), parent), m_chooser(new QComboBox(this)),
      m_pages(new QStackedWidget(this))
{
    setObjectName(QStringLiteral("navigator_dock"));
    auto* const content = new QWidget(this);
    auto* const layout = new QVBoxLayout(content);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->setSpacing(2);
    m_chooser->setObjectName(QStringLiteral("page_chooser"));
    m_chooser->setAccessibleName(tr("Page of the navigator"));
    for (const PAGE& row : PAGES)
    {
        m_chooser->addItem(tr(row.title));
        auto* const view = new TOLV_TREE_VIEW(m_pages);
        view->setObjectName(QString::fromLatin1(row.name));
        view->setAccessibleName(tr(row.title));
        view->set_registry_string(QStringLiteral("navigator_") + QLatin1String(row.name));
        view->setEditTriggers(QAbstractItemView::NoEditTriggers);
        TOLV_SAFE_CONNECT(view, SIGNAL(activated(QModelIndex)), this, SLOT(report_activated(QModelIndex)));
        m_pages->addWidget(view);
    }
    layout->addWidget(m_chooser);
    layout->addWidget(m_pages);
    setWidget(content);
    TOLV_SAFE_CONNECT(m_chooser, SIGNAL(currentIndexChanged(int)), m_pages, SLOT(setCurrentIndex(int)));
}

void NAVIGATOR_DOCK::set_page_model(const QString& page, QAbstractItemModel* model)
{
    if (auto* const view = m_pages->findChild<TOLV_TREE_VIEW*>(page, Qt::FindDirectChildrenOnly))
        view->setModel(model);
}

void NAVIGATOR_DOCK::report_activated(const QModelIndex& index)
{
    emit activated(m_pages->currentWidget()->objectName(), index);
}

TOLV_DOCK_WIDGET* mod_navigator_create_dock_widget(TOLV_MAIN_WINDOW* main_window)
{
    return new NAVIGATOR_DOCK(main_window);
}

TOLV_DOCK_WIDGET* mod_navigator_hierarchy_create_dock_widget(TOLV_MAIN_WINDOW* main_window)
{
    return new NAVIGATOR_PAGE_DOCK(QStringLiteral("hierarchy"), main_window);
}

TOLV_DOCK_WIDGET* mod_navigator_files_create_dock_widget(TOLV_MAIN_WINDOW* main_window)
{
    return new NAVIGATOR_PAGE_DOCK(QStringLiteral("files"), main_window);
}

TOLV_DOCK_WIDGET* mod_navigator_design_units_create_dock_widget(TOLV_MAIN_WINDOW* main_window)
{
    return new NAVIGATOR_PAGE_DOCK(QStringLiteral("design_units"), main_window);
}

TOLV_DOCK_WIDGET* mod_navigator_ip_components_create_dock_widget(TOLV_MAIN_WINDOW* main_window)
{
    return new NAVIGATOR_PAGE_DOCK(QStringLiteral("ip_components"), main_window);
}
