#pragma once

#include <QHash>
#include <QModelIndex>
#include <QVector>

#include <functional>
#include <memory>
#include <vector>

class TOLV_TREE_FILTER_PROXY_MODEL;

/// The workings of TOLV_TREE_FILTER_PROXY_MODEL: applies the rules to rows and brings a new filter into effect.
///
/// The base class of the proxy keeps the mapping of rows. It can be reached only by its public operations and by what it
/// asks of filterAcceptsRow(), so much is done here by answering that question in one way or another. A new filter is
/// brought into effect in these steps:
/// 1. The base class gets the filter, and hears of each row that all stays as it is. What it asks is the record of all
///    levels of the tree that are mapped.
/// 2. The rules are applied to the rows of the record. No row is asked twice, as the answers are kept until the end.
/// 3. The base class takes out and brings in rows run by run, and each run costs it time in proportion to all rows beside
///    it and to all persistent indexes. If that is little, it does so, and that is all.
/// 4. Else it first takes out the runs with persistent indexes in them, so that views move their current row and their
///    selection as ever; all other rows come and go in one change of layout, and the levels of the record are mapped
///    again.
class TOLV_TREE_FILTERING
{
public:
    explicit TOLV_TREE_FILTERING(TOLV_TREE_FILTER_PROXY_MODEL& proxy);
    ~TOLV_TREE_FILTERING();
    Q_DISABLE_COPY_MOVE(TOLV_TREE_FILTERING)

    /// For the time of one question to the proxy, which may map levels: what holds for all rows of a level is found only
    /// once.
    class QUESTION
    {
    public:
        explicit QUESTION(TOLV_TREE_FILTERING& filtering);
        ~QUESTION();
        Q_DISABLE_COPY_MOVE(QUESTION)

    private:
        TOLV_TREE_FILTERING& m_filtering;
        const int m_answer;
    };

    /// For the time of some work: no row is asked twice.
    class KEPT_ANSWERS
    {
    public:
        explicit KEPT_ANSWERS(TOLV_TREE_FILTERING& filtering);
        ~KEPT_ANSWERS();
        Q_DISABLE_COPY_MOVE(KEPT_ANSWERS)

    private:
        QUESTION m_question;
        TOLV_TREE_FILTERING& m_filtering;
    };

    /// What the base class of the proxy is to be told about a row.
    bool accepts(int row, const QModelIndex& parent);
    /// Whether a row matches itself, by the virtual operation.
    bool accepts_itself(int row, const QModelIndex& parent);
    /// Whether something below a row matches, by the virtual operation.
    bool accepts_children(int row, const QModelIndex& parent);
    /// Whether a row or something above it matches itself; false for the invisible root.
    bool accepts_line(const QModelIndex& index);
    /// The proxy's own answer about a row, uncounted.
    bool is_to_be_shown(const QModelIndex& index);

    /// Whether the base class has mapped the row. Maps its level.
    bool is_mapped(int row, const QModelIndex& parent);
    /// Whether the proxy shows the row. Maps the levels above it.
    bool is_shown(const QModelIndex& index) const;

    /// Brings a new filter into effect. `change` has the base class ask about all rows that it has mapped.
    void filter(const std::function<void()>& change);
    /// Filters again without counting.
    void filter_again();
    /// Maps all that is not mapped yet, and so counts it.
    void count_all();
    /// The source model changes: no answer is kept.
    void forget();

    /// Has the base class look at a row again, which shows or hides it.
    void look_again(const QModelIndex& index);
    /// Shows a row that is hidden, if it is to be shown, and nothing below it as it was mapped before.
    void show(const QModelIndex& index);

    /// The base class is about to hear of a change in the source model. Until end_change(), rows below hidden rows stay
    /// hidden: the base class has no way to tell views of them.
    void begin_change();
    /// The base class has heard of it.
    void end_change();
    /// There is another source model.
    void end_all_changes();
    /// Whether a row of this level has been asked about since the call before for any level.
    bool take_was_asked(const QModelIndex& parent);

private:
    enum ANSWER : int
    {
        ANSWER_BY_RULES,
        ANSWER_NO,
        ANSWER_AS_MAPPED, ///< and record the question
        ANSWER_AS_MARKED, ///< as mapped, but for rows that are to go or to come first
        ANSWER_FORCED     ///< for one row
    };

    /// What is known of a level of the source model: some bits for each row.
    struct LEVEL
    {
        QModelIndex parent;
        std::vector<quint16> rows;
        std::vector<int> mapped; ///< rows that the base class has mapped, in its order
        bool is_recorded = false;
        bool is_reachable = false; ///< the proxy shows the parent and will go on
        bool has_marks = false;
    };

    /// How much a change is that the base class would do run by run.
    struct EXTENT
    {
        qint64 run_count = 0;
        qint64 cost = 0;
    };

    bool accepts_by_rules(int row, const QModelIndex& parent);
    bool accepts_by_rules_once(int row, const QModelIndex& parent);
    LEVEL* find_level(const QModelIndex& parent);
    LEVEL& get_level(const QModelIndex& parent);
    quint16* get_bits(int row, const QModelIndex& parent);
    bool get_mark(int row, const QModelIndex& parent);
    bool record(int row, const QModelIndex& parent);

    bool record_levels(const std::function<void()>& change);
    void decide();
    EXTENT get_extent() const;
    void add_extent(const LEVEL& level, bool is_sorted, qint64 persistent_count, EXTENT& extent) const;
    void take_out_marked_rows();
    bool mark_rows_that_come();
    bool mark_rows_that_go(const QModelIndexList& indexes, qint64 persistent_count, qint64& budget);
    bool mark_run(const QModelIndex& source, qint64 cost, qint64& budget);
    QModelIndex find_row_that_goes(const QModelIndex& source);
    void apply_marks();
    void map_levels_again();

    TOLV_TREE_FILTER_PROXY_MODEL& m_proxy;
    int m_answer = ANSWER_BY_RULES;
    bool m_forced_answer = false;
    QModelIndex m_forced_row;
    bool m_is_looking_up = false;
    bool m_is_counting = true;
    bool m_is_all_counted = false;

    int m_question_depth = 0;
    bool m_has_line = false; ///< the two below are known
    QModelIndex m_line_end;
    bool m_is_line_accepted = false;

    int m_keep_depth = 0;
    bool m_was_disturbed = false; ///< the source model changed in the middle of a filtering
    QHash<QModelIndex, LEVEL*> m_level_of;
    std::vector<std::unique_ptr<LEVEL>> m_levels; ///< in the order of their making, parents before children
    LEVEL* m_last_level = nullptr;

    int m_change_depth = 0;
    bool m_was_asked = false;
    QModelIndex m_asked_parent;
};
