#pragma once

#include "module_export.h"

#include "tolv_dock_widget.h"

#include <QPointer>

class QAbstractItemModel;
class QComboBox;
class QModelIndex;
class QSortFilterProxyModel;
class QStackedWidget;
class TOLV_MAIN_WINDOW;
class TOLV_TREE_VIEW;

/// One page of the project: a tree of what the tool hands over, with a line that filters it. A tool that does not link
/// to the module uses slots and signals by name:
///
///     QMetaObject::invokeMethod(dock, "set_source_model", Q_ARG(QAbstractItemModel*, model));
///
/// A model of the class TOLV_TREE_FILTER_MODEL is filtered by its own filter, any other by one of the page. Indexes in
/// signals and slots are those of the tool's model. The model stays the tool's.
class NAVIGATOR_PAGE_DOCK : public TOLV_DOCK_WIDGET
{
    Q_OBJECT

public:
    /// @param page "hierarchy", "files", "design_units" or "ip_components"
    NAVIGATOR_PAGE_DOCK(const QString& page, QWidget* parent);
    /// Stores the columns.
    ~NAVIGATOR_PAGE_DOCK() override;

    /// The tree, with the object name of the page.
    TOLV_TREE_VIEW* get_view() const;

public slots:
    /// Shows a model, null for none.
    void set_source_model(QAbstractItemModel* model);
    /// Makes an index of the tool's model the current one, visible and with its parents open; one that the filter hides
    /// ends the filtering.
    void set_current(const QModelIndex& index);

signals:
    /// Another row is the current one.
    void current_changed(const QModelIndex& index);
    /// A row was double-clicked, or Enter pressed on it.
    void activated(const QModelIndex& index);

private slots:
    void save_columns();
    void load_columns_later();
    void load_columns();
    void apply_filter(const QString& text);
    void report_current();
    void report_activated(const QModelIndex& index);

private:
    QModelIndex map_to_source(const QModelIndex& index) const;
    void connect_selection();
    void end_filter();
    QSortFilterProxyModel* make_filter(QAbstractItemModel* model);

    TOLV_TREE_VIEW* m_view;
    QPointer<QSortFilterProxyModel> m_filter; ///< null where there is no model
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
