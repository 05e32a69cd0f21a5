#pragma once

#include "module_export.h"

#include "tolv_dock_widget.h"

#include <QPersistentModelIndex>
#include <QPointer>
#include <QVector>

class NAVIGATOR_TREE_VIEW;
class QAbstractItemModel;
class QComboBox;
class QLabel;
class QModelIndex;
class QSortFilterProxyModel;
class QStackedWidget;
class TOLV_MAIN_WINDOW;
class TOLV_TREE_FILTER_PROXY_MODEL;

/// One page of the project: a tree of what the tool hands over, with a line that filters it. A tool that does not link
/// to the module uses slots and signals by name:
///
///     QMetaObject::invokeMethod(dock, "set_source_model", Q_ARG(QAbstractItemModel*, model));
///
/// A model of the class TOLV_TREE_FILTER_MODEL is filtered by its own filter, any other by one of the page. Indexes in
/// signals and slots are those of the tool's model: of the filter's source, where it has a filter. The model stays the
/// tool's.
///
/// Columns whose headers say true in Qt::UserRole are hidden until the user shows them. Rows are dragged and copied as
/// the model's own data. A filter that has a property "match_count" is asked for it, so that it need not look at all
/// rows to count them. What is unfolded before a filtering is so again behind it.
class NAVIGATOR_PAGE_DOCK : public TOLV_DOCK_WIDGET
{
    Q_OBJECT

public:
    /// @param page "hierarchy", "files", "design_units" or "ip_components"
    NAVIGATOR_PAGE_DOCK(const QString& page, QWidget* parent);
    /// Stores the columns.
    ~NAVIGATOR_PAGE_DOCK() override;

    /// The tree, with the object name of the page.
    NAVIGATOR_TREE_VIEW* get_view() const;

public slots:
    /// Shows a model, null for none.
    void set_source_model(QAbstractItemModel* model);
    /// Makes an index of the tool's model the current one, visible and with its parents open; one that the filter hides
    /// ends the filtering.
    void set_current(const QModelIndex& index);
    /// Unfolds all rows, or as many as anybody can look at.
    void unfold_all();

signals:
    /// Another row is the current one.
    void current_changed(const QModelIndex& index);
    /// A row was double-clicked, or Enter pressed on it.
    void activated(const QModelIndex& index);
    /// The icon of a row was clicked, where it is a button.
    void icon_clicked(const QModelIndex& index);

private slots:
    void save_columns();
    void load_columns_later();
    void load_columns();
    void apply_filter(const QString& text);
    void report_current();
    void report_activated(const QModelIndex& index);
    void report_icon(const QModelIndex& index);
    void take_unfolding(bool is_complete);
    void refresh_filtering();

private:
    QModelIndex map_to_source(const QModelIndex& index) const;
    void connect_selection();
    void end_filter();
    QSortFilterProxyModel* make_filter(QAbstractItemModel* model);
    void unfold_matches(const TOLV_TREE_FILTER_PROXY_MODEL& filter);
    void show_note();

    NAVIGATOR_TREE_VIEW* m_view;
    QLabel* m_note;
    QPointer<QSortFilterProxyModel> m_filter;  ///< null where there is no model
    QVector<QPersistentModelIndex> m_unfolded; ///< before the filtering, in the tool's model
    QString m_keyword;                         ///< of the filtering
    bool m_is_all_unfolded = true;
    bool m_has_columns = false; ///< those of the model have been loaded once
};

/// The project navigator: all pages in one window, one shown at a time.
class NAVIGATOR_DOCK : public TOLV_DOCK_WIDGET
{
    Q_OBJECT

public:
    explicit NAVIGATOR_DOCK(QWidget* parent);

public slots:
    /// Hands a model to a page, by the page's name; an unknown name is ignored.
    void set_page_model(const QString& page, QAbstractItemModel* model);

signals:
    /// A row of a page was double-clicked, or Enter pressed on it.
    void activated(const QString& page, const QModelIndex& index);

private slots:
    void report_activated(const QModelIndex& index);

private:
    QComboBox* m_chooser;
    QStackedWidget* m_pages;
};

MODULE_EXPORT TOLV_DOCK_WIDGET* mod_navigator_create_dock_widget(TOLV_MAIN_WINDOW* main_window);
MODULE_EXPORT TOLV_DOCK_WIDGET* mod_navigator_hierarchy_create_dock_widget(TOLV_MAIN_WINDOW* main_window);
MODULE_EXPORT TOLV_DOCK_WIDGET* mod_navigator_files_create_dock_widget(TOLV_MAIN_WINDOW* main_window);
MODULE_EXPORT TOLV_DOCK_WIDGET* mod_navigator_design_units_create_dock_widget(TOLV_MAIN_WINDOW* main_window);
MODULE_EXPORT TOLV_DOCK_WIDGET* mod_navigator_ip_components_create_dock_widget(TOLV_MAIN_WINDOW* main_window);
