#pragma once

#include "tolv_export.h"

#include <QList>
#include <QRegularExpression>
#include <QSortFilterProxyModel>
#include <QString>

#include <memory>

class TOLV_TREE_FILTER_CHANGES;
class TOLV_TREE_FILTERING;

/// The filter of a tree: the syntax of what a user types, the rules for the rows that stay, and the count of matches.
/// Usually made by TOLV_TREE_FILTER_MODEL, but stands on any source model, too.
///
/// A row stays if it matches itself, if one of its ancestors does (set_include_child()), or if one of its descendants
/// does. What matches is said by two virtual operations, filter_accepts_row_itself() and children_is_accepted(). Their
/// answers may depend on state of a subclass: nothing that they said is used beyond the filtering, or the first showing
/// of a level, for which they were asked. After a change of its own state a subclass calls invalidateFilter() or filters
/// again. Within one filtering each may be asked only once for a row.
///
/// The rules also hold while the source model changes under a filter, rows as well as the columns that are searched: rows
/// come and go with the ancestors and descendants that match. With dynamicSortFilter() off they hold from one filtering to
/// the next only. Selection, current row and expansion are a view's; rows that stay keep them. Sorting is that
/// of QSortFilterProxyModel.
///
/// Large trees: levels of the tree are filtered when they are first asked for, as in QSortFilterProxyModel. A filtering
/// that takes out or brings back many rows that are shown in many places is announced to views as a change of layout,
/// not row by row; rows that are selected, current or expanded are still announced as removed one by one.
class TOLV_EXPORT TOLV_TREE_FILTER_PROXY_MODEL : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit TOLV_TREE_FILTER_PROXY_MODEL(QObject* parent = nullptr);
    ~TOLV_TREE_FILTER_PROXY_MODEL() override;

    /// How many rows have matched by themselves in the last filtering of any proxy of the process, rows at the top that
    /// always stay among them; not their ancestors and descendants. Rows that the proxy has not looked at yet, as no
    /// view has asked for them, are looked at now. Rows that are looked at again later, as they have changed, count
    /// again.
    static int get_search_result_count();

    /// The expression that a keyword stands for, always one without regard to letter case. `keyword` comes trimmed.
    /// - In double quotes: the text between them, literally. A lone double quote gives an empty pattern.
    /// - With a star: all literally, but each star stands for any text. Not anchored.
    /// - With white space: all of the words, literally, in any order.
    /// - A single word: a regular expression as it stands; this is meant. An invalid one matches nothing.
    QRegularExpression process_keyword_expression(QString keyword) const;

    /// Whether rows below a row that matches stay, from the next filtering on; true at first.
    void set_include_child(bool include);
    /// Whether all rows at the top stay, from the next filtering on; false at first.
    void set_include_invisible_root_child(bool include);
    /// From the next filtering on, only the key column is searched.
    void clear_filter_column_list();
    /// From the next filtering on, searches the display texts of these columns, too: in list order, each with one blank
    /// behind it, as one text, in which the words of a keyword may stand in different columns. No check for duplicates.
    void insert_filter_column(int column);

    /// What QSortFilterProxyModel does, announced to views as a filtering by keyword is.
    void setFilterRegularExpression(const QRegularExpression& expression);
    void setFilterRegularExpression(const QString& pattern);

    void setSourceModel(QAbstractItemModel* source) override;
    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    bool hasChildren(const QModelIndex& parent = QModelIndex()) const override;
    /// Invalid for a row that is not shown, also because a row above it is not.
    QModelIndex mapFromSource(const QModelIndex& source_index) const override;

public slots:
    /// Announces a filtering by filter_start(), then filters. The slot for an edit line.
    /// @param match_case without effect: case never matters
    /// @param filter     see regexp_filter()
    void start_filter(QString keyword, bool match_case, bool filter);
    /// Filters by a keyword, which is trimmed first, and says so by filter_content(); or, with `filter` false, leaves the
    /// search to the receivers of search_content() and holds a pattern of one blank itself. Then comes filter_cancel()
    /// for an empty pattern, which all rows match, or filter_done().
    /// @param match_case without effect: case never matters
    void regexp_filter(QString keyword, bool match_case, bool filter);
    /// The same with `filter` true.
    void regexp_filter(QString keyword, bool match_case);
    /// The same with `match_case` and `filter` true.
    void regexp_filter(QString keyword);

signals:
    /// start_filter() begins: the rows are still as before, and a host can save the expansion of its view.
    void filter_start();
    /// The rows are filtered, and get_search_result_count() tells how many match.
    void filter_done();
    /// The pattern is empty: the tree is unfiltered.
    void filter_cancel();
    /// What to search for in search mode.
    void search_content(QRegularExpression regExp);
    /// What the rows are filtered by.
    void filter_content(QRegularExpression regExp);

protected:
    /// Filters again, as QSortFilterProxyModel does, announced to views as a filtering by keyword is.
    void invalidateFilter();
    /// Applies the rules to a row of the source model, and counts it if it matches itself or always stays at the top.
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

public:
    /// Whether a row of the source model matches, apart from its ancestors and descendants: in the key column, as the
    /// base class has it, or in the joined text of the inserted columns.
    virtual bool filter_accepts_row_itself(int row, const QModelIndex& parent) const;
    /// Whether a descendant of a row of the source model matches, by both virtual operations.
    virtual bool children_is_accepted(int row, const QModelIndex& parent) const;

private:
    friend class TOLV_TREE_FILTER_CHANGES;
    friend class TOLV_TREE_FILTERING;

    /// Counts a row that matches.
    static void count_match();
    /// Whether there is no expression that a row could fail to match, in either form that the base class knows.
    bool has_empty_pattern() const;

    bool m_include_child = true;
    bool m_include_invisible_root_child = false;
    QList<int> m_filter_columns;

    std::unique_ptr<TOLV_TREE_FILTERING> m_filtering;
    std::unique_ptr<TOLV_TREE_FILTER_CHANGES> m_changes;
};
