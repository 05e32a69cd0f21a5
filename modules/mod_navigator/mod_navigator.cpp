#include "mod_navigator.h"

#include "navigator_tree_view.h"
#include "tolv_global.h"
#include "tolv_main_window.h"
#include "tolv_tree_filter_model.h"
#include "tolv_tree_filter_proxy_model.h"
#include "tolv_tree_view.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
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
    : TOLV_DOCK_WIDGET(get_page_title(page), parent), m_view(new NAVIGATOR_TREE_VIEW(page, this)),
      m_note(new QLabel(this))
{
    setObjectName(page + QStringLiteral("_dock"));
    m_view->setAccessibleName(windowTitle());
    m_view->set_registry_string(QStringLiteral("navigator_") + page);
    initialize_with_search_widget(m_view, true);
    m_note->setObjectName(page + QStringLiteral("_note"));
    m_note->setMargin(2);
    m_note->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed); // a long note must not widen the window
    m_note->hide();
    widget()->layout()->addWidget(m_note);
    TOLV_SAFE_CONNECT(this, SIGNAL(filter_option_changed(QString)), this, SLOT(apply_filter(QString)));
    TOLV_SAFE_CONNECT(m_view, SIGNAL(icon_clicked(QModelIndex)), this, SLOT(report_icon(QModelIndex)));
    TOLV_SAFE_CONNECT(m_view, SIGNAL(unfolding_ended(bool)), this, SLOT(take_unfolding(bool)));
    TOLV_SAFE_CONNECT(m_view, SIGNAL(activated(QModelIndex)), this, SLOT(report_activated(QModelIndex)));
}

NAVIGATOR_PAGE_DOCK::~NAVIGATOR_PAGE_DOCK()
{
    save_columns();
}

NAVIGATOR_TREE_VIEW* NAVIGATOR_PAGE_DOCK::get_view() const
{
    return m_view;
}

void NAVIGATOR_PAGE_DOCK::set_source_model(QAbstractItemModel* model)
{
    save_columns();
    QSortFilterProxyModel* const old_filter = m_filter;
    if (old_filter != nullptr)
        old_filter->disconnect(this);
    m_view->show_model(nullptr);
    m_unfolded.clear();
    m_has_columns = false;
    m_filter = make_filter(model);
    if (old_filter != nullptr && old_filter->parent() == this)
        old_filter->deleteLater();
    show_note();
    if (m_filter == nullptr)
        return;
    m_view->show_model(m_filter);
    if (m_filter->rowCount() == 1)
        m_view->expand(m_filter->index(0, 0));
    connect_selection();
    TOLV_SAFE_CONNECT(m_filter, SIGNAL(modelAboutToBeReset()), this, SLOT(save_columns()));
    TOLV_SAFE_CONNECT(m_filter, SIGNAL(modelReset()), this, SLOT(load_columns_later()));
    TOLV_SAFE_CONNECT(m_filter, SIGNAL(modelReset()), this, SLOT(refresh_filtering()));
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
    for (int column = 1; column < m_view->model()->columnCount() && !m_has_columns; ++column)
    {
        if (m_view->model()->headerData(column, Qt::Horizontal, Qt::UserRole).toBool())
            m_view->setColumnHidden(column, true);
    }
    m_has_columns = true;
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
    if (m_view->currentIndex().siblingAtColumn(0) != shown) // the answer to a click must not undo a selection
        m_view->setCurrentIndex(shown);
    m_view->scrollTo(shown);
}

void NAVIGATOR_PAGE_DOCK::unfold_all()
{
    m_view->unfold_all();
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
    const bool was_filtering = !filter->filterRegularExpression().pattern().isEmpty();
    if (!was_filtering)
        m_unfolded = m_view->get_unfolded();
    m_keyword = text;
    filter->start_filter(text, false, true);
    if (!filter->filterRegularExpression().pattern().isEmpty())
    {
        unfold_matches(*filter);
        return;
    }
    m_is_all_unfolded = true;
    if (was_filtering)
    {
        m_view->set_unfolded(m_unfolded);
        m_view->scrollTo(m_view->currentIndex());
    }
    show_note();
}

/// Unfolds the ways to all rows that match, but not what is below the last match of a way.
void NAVIGATOR_PAGE_DOCK::unfold_matches(const TOLV_TREE_FILTER_PROXY_MODEL& filter)
{
    m_view->fold_all();
    m_view->unfold(QModelIndex(),
                   [&filter](const QModelIndex& index)
                   {
                       const QModelIndex source = filter.mapToSource(index);
                       return filter.children_is_accepted(source.row(), source.parent());
                   });
}

void NAVIGATOR_PAGE_DOCK::take_unfolding(bool is_complete)
{
    m_is_all_unfolded = is_complete;
    show_note();
}

/// The rows are new, the filter is in force as before.
void NAVIGATOR_PAGE_DOCK::refresh_filtering()
{
    m_unfolded.clear();
    m_is_all_unfolded = true;
    auto* const filter = qobject_cast<TOLV_TREE_FILTER_PROXY_MODEL*>(m_filter);
    if (filter != nullptr && !filter->filterRegularExpression().pattern().isEmpty())
    {
        filter->start_filter(m_keyword, false, true); // counts anew
        unfold_matches(*filter);
    }
    else
        show_note();
}

/// Says how many rows match, and that rows were left out.
void NAVIGATOR_PAGE_DOCK::show_note()
{
    QStringList texts;
    const auto* const filter = qobject_cast<TOLV_TREE_FILTER_PROXY_MODEL*>(m_filter);
    if (filter != nullptr && !filter->filterRegularExpression().pattern().isEmpty())
    {
        const QVariant property = filter->property("match_count");
        const qulonglong count = property.isValid()
                                     ? property.toULongLong()
                                     : qulonglong(TOLV_TREE_FILTER_PROXY_MODEL::get_search_result_count());
        texts << (count == 0   ? tr("No matches")
                  : count == 1 ? tr("1 match")
                               : tr("%1 matches").arg(QLocale().toString(count)));
    }
    if (!m_is_all_unfolded)
        texts << tr("only the first %1 rows are unfolded")
                     .arg(QLocale().toString(NAVIGATOR_TREE_VIEW::LARGEST_UNFOLDING));
    QString text = texts.join(QStringLiteral("; "));
    if (!text.isEmpty())
        text[0] = text.at(0).toUpper();
    m_note->setText(text);
    m_note->setToolTip(text);
    m_note->setVisible(!text.isEmpty());
}

void NAVIGATOR_PAGE_DOCK::report_current()
{
    emit current_changed(map_to_source(m_view->currentIndex()));
}

void NAVIGATOR_PAGE_DOCK::report_activated(const QModelIndex& index)
{
    emit activated(map_to_source(index));
}

void NAVIGATOR_PAGE_DOCK::report_icon(const QModelIndex& index)
{
    emit icon_clicked(map_to_source(index));
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
