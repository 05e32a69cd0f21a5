#pragma once

#include "netlist.h"

#include "tolv_tree_filter_model.h"
#include "tolv_tree_filter_proxy_model.h"

#include <QRegularExpression>

#include <memory>
#include <vector>

class HIERARCHY_MODEL;

/// The filter of the hierarchy, over the names of instance and module as one text. What is below an instance depends on
/// its module alone: whether it holds a match is found once for each module in a filtering, not for each instance, so
/// that a design of any number of instances is filtered in the time that its file takes.
class HIERARCHY_FILTER : public TOLV_TREE_FILTER_PROXY_MODEL
{
    Q_OBJECT
    /// Instances of the whole design that match by themselves; stops at the largest value. Without a look at the rows.
    Q_PROPERTY(qulonglong match_count READ get_match_count NOTIFY filter_done)

public:
    /// @param hierarchy not owned
    HIERARCHY_FILTER(HIERARCHY_MODEL* hierarchy, QObject* parent);
    ~HIERARCHY_FILTER() override;

    qulonglong get_match_count() const;

    bool filter_accepts_row_itself(int row, const QModelIndex& parent) const override;
    /// Levels that are too deep to be shown count, too.
    bool children_is_accepted(int row, const QModelIndex& parent) const override;

private:
    /// What the expression makes of a module.
    struct MATCHES
    {
        std::vector<bool> instances; ///< those that match by themselves, in the order of the module
        std::uint64_t below = 0;     ///< matches in it and below
    };

    const NETLIST* prepare() const;
    bool matches(const QString& instance, const QString& module) const;
    MATCHES find_matches(const NETLIST& netlist, const NETLIST_MODULE& module) const;
    bool is_top_match(const NETLIST& netlist, std::uint32_t module) const;

    HIERARCHY_MODEL* m_hierarchy;
    // Of the filtering that is in force.
    mutable std::weak_ptr<const NETLIST> m_netlist;
    mutable QRegularExpression m_expression;
    mutable std::vector<MATCHES> m_matches; ///< by module
};

/// The hierarchy as a tree model with a filter: what the navigator gets. It has no items of its own. The source of the
/// filter is a HIERARCHY_MODEL, whose instances cost nothing until they are looked at, and map_index_to_source() and the
/// like lead to that model.
class HIERARCHY_FILTER_MODEL : public TOLV_TREE_FILTER_MODEL
{
    Q_OBJECT

public:
    /// @param hierarchy not owned
    HIERARCHY_FILTER_MODEL(HIERARCHY_MODEL* hierarchy, QObject* parent);
    ~HIERARCHY_FILTER_MODEL() override;
};
