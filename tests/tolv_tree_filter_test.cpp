#include "internal_error_trap.h"
#include "tolv_tree_filter_fixture.h"

#include "msg_internal_error.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace
{
class TREE_FILTER : public TOLV_TEST
{
protected:
    void SetUp() override
    {
        TOLV_TEST::SetUp();
        m_model.create_filter_model(0);
        m_filter = m_model.get_filter_model();
    }

    QStandardItem* add(QStandardItem* parent, const QStringList& cells)
    {
        QList<QStandardItem*> items;
        for (const QString& cell : cells)
            items.append(new QStandardItem(cell));
        parent->appendRow(items);
        return items.constFirst();
    }
    QStandardItem* add(const QStringList& cells)
    {
        return add(m_model.invisibleRootItem(), cells);
    }

    QString pattern_of(const QString& keyword) const
    {
        return m_filter->process_keyword_expression(keyword).pattern();
    }

    bool does_match(const QString& keyword, const QString& text) const
    {
        return text.contains(m_filter->process_keyword_expression(keyword));
    }

    QStringList rows() const
    {
        return get_rows(*m_filter);
    }

    QObject m_parent;
    TOLV_TREE_FILTER_MODEL m_model{&m_parent};
    TOLV_TREE_FILTER_PROXY_MODEL* m_filter = nullptr;
    QStringList m_calls;
    int m_count_when_done = -1;
};

TEST_F(TREE_FILTER, the_pattern_of_a_phrase_is_its_text)
{
    EXPECT_EQ(QStringLiteral("a b"), pattern_of(QStringLiteral("\"a b\"")));
    EXPECT_EQ(QStringLiteral("a\\.\\*b"), pattern_of(QStringLiteral("\"a.*b\"")));
    EXPECT_TRUE(does_match(QStringLiteral("\"a b\""), QStringLiteral("xa bx")));
    EXPECT_FALSE(does_match(QStringLiteral("\"a b\""), QStringLiteral("b a")));
}

TEST_F(TREE_FILTER, a_lone_quote_gives_an_empty_pattern)
{
    EXPECT_EQ(QString(), pattern_of(QStringLiteral("\"")));
    EXPECT_EQ(QString(), pattern_of(QStringLiteral("\"\"")));
}

TEST_F(TREE_FILTER, a_quote_at_one_end_is_no_phrase)
{
    EXPECT_EQ(QStringLiteral("\"a"), pattern_of(QStringLiteral("\"a")));
    EXPECT_EQ(QStringLiteral("^(?=.*\"a)(?=.*b)"), pattern_of(QStringLiteral("\"a b")));
}

TEST_F(TREE_FILTER, a_star_stands_for_any_text_and_all_else_is_literal)
{
    EXPECT_EQ(QStringLiteral("foo.*bar"), pattern_of(QStringLiteral("foo*bar")));
    EXPECT_EQ(QStringLiteral(".*a\\.b\\?c d.*"), pattern_of(QStringLiteral("*a.b?c d*")));
    EXPECT_TRUE(does_match(QStringLiteral("foo*bar"), QStringLiteral("foo_x_bar")));
    EXPECT_TRUE(does_match(QStringLiteral("foo*bar"), QStringLiteral("a foobar b")));
    EXPECT_FALSE(does_match(QStringLiteral("a.b*"), QStringLiteral("axb")));
    EXPECT_TRUE(does_match(QStringLiteral("a.b*"), QStringLiteral("a.b")));
    EXPECT_FALSE(does_match(QStringLiteral("a?b*"), QStringLiteral("b")));
}

TEST_F(TREE_FILTER, of_several_words_each_must_occur_in_any_order)
{
    EXPECT_EQ(QStringLiteral("^(?=.*a)(?=.*b\\.)"), pattern_of(QStringLiteral("a \t b.")));
    EXPECT_TRUE(does_match(QStringLiteral("a b"), QStringLiteral("b a")));
    EXPECT_TRUE(does_match(QStringLiteral("a b"), QStringLiteral("ab")));
    EXPECT_FALSE(does_match(QStringLiteral("a b"), QStringLiteral("a")));
    EXPECT_FALSE(does_match(QStringLiteral("a b."), QStringLiteral("a bc")));
}

TEST_F(TREE_FILTER, white_space_around_one_word_leaves_the_word_literal)
{
    EXPECT_EQ(QStringLiteral("a\\."), pattern_of(QStringLiteral(" a.")));
    EXPECT_EQ(QString(), pattern_of(QStringLiteral("  ")));
}

TEST_F(TREE_FILTER, a_word_with_percent_and_number_is_no_placeholder)
{
    EXPECT_EQ(QStringLiteral("^(?=.*%1)(?=.*%2)"), pattern_of(QStringLiteral("%1 %2")));
}

TEST_F(TREE_FILTER, a_single_word_is_a_regular_expression)
{
    EXPECT_EQ(QStringLiteral("^a[0-9].$"), pattern_of(QStringLiteral("^a[0-9].$")));
    EXPECT_TRUE(does_match(QStringLiteral("a.b"), QStringLiteral("axb")));
}

TEST_F(TREE_FILTER, letter_case_never_matters)
{
    for (const char* keyword : {"ABC", "\"ABC\"", "A*C", "C AB"})
    {
        const QRegularExpression expression = m_filter->process_keyword_expression(QLatin1String(keyword));
        EXPECT_EQ(QRegularExpression::CaseInsensitiveOption, expression.patternOptions()) << keyword;
        EXPECT_TRUE(QStringLiteral("xabcx").contains(expression)) << keyword;
    }
    add({"abc"});
    add({"def"});
    m_filter->regexp_filter(QStringLiteral("ABC"), true);
    EXPECT_EQ(QStringList({"abc"}), rows());
    m_filter->regexp_filter(QStringLiteral("DEF"), true, true);
    EXPECT_EQ(QStringList({"def"}), rows());
}

TEST_F(TREE_FILTER, without_a_keyword_all_rows_stay)
{
    add(add({"a"}), {"b"});
    EXPECT_EQ(QStringList({"a", ".b"}), rows());
    m_filter->regexp_filter(QStringLiteral("b$"));
    m_filter->regexp_filter(QString());
    EXPECT_EQ(QStringList({"a", ".b"}), rows());
}

TEST_F(TREE_FILTER, an_invalid_expression_matches_nothing)
{
    add({"a"});
    const SCOPED_EXPECTED_WARNING warning("invalid QRegularExpression object");
    m_filter->regexp_filter(QStringLiteral("[a"));
    EXPECT_EQ(QStringList(), rows());
    m_filter->set_include_invisible_root_child(true);
    m_filter->regexp_filter(QStringLiteral("[a"));
    EXPECT_EQ(QStringList({"a"}), rows());
}

TEST_F(TREE_FILTER, ancestors_and_descendants_of_a_match_stay)
{
    QStandardItem* a = add({"a"});
    QStandardItem* x = add(a, {"x"});
    add(add(x, {"b"}), {"c"});
    add(a, {"d"});
    add({"e"});
    m_filter->regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(QStringList({"a", ".x", "..b", "...c"}), rows());
    m_filter->set_include_child(false);
    m_filter->regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(QStringList({"a", ".x"}), rows());
}

TEST_F(TREE_FILTER, without_children_the_descendants_that_match_stay)
{
    QStandardItem* x = add({"x"});
    add(x, {"b"});
    add(x, {"x2"});
    m_filter->set_include_child(false);
    m_filter->regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(QStringList({"x", ".x2"}), rows());
}

TEST_F(TREE_FILTER, rows_at_the_top_stay_on_demand_and_count)
{
    QStandardItem* a = add({"a"});
    add(a, {"b"});
    add({"x"});
    m_model.set_include_invisible_root_child(true);
    m_filter->regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(QStringList({"a", "x"}), rows());
    EXPECT_EQ(2, TOLV_TREE_FILTER_PROXY_MODEL::get_search_result_count());
    m_model.set_include_invisible_root_child(false);
    m_filter->regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(QStringList({"x"}), rows());
}

TEST_F(TREE_FILTER, only_the_key_column_is_searched_without_a_column_list)
{
    add({"a", "x"});
    m_filter->regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(QStringList(), rows());
    TOLV_TREE_FILTER_MODEL other;
    other.create_filter_model(1);
    other.appendRow({new QStandardItem(QStringLiteral("a")), new QStandardItem(QStringLiteral("x"))});
    other.get_filter_model()->regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(QStringList({"a"}), get_rows(*other.get_filter_model()));
}

TEST_F(TREE_FILTER, the_words_of_a_keyword_may_stand_in_different_columns)
{
    add({"key", "a", "b"});
    add({"key2", "b", "a"});
    m_model.insert_filter_column(1);
    m_model.insert_filter_column(2);
    m_filter->regexp_filter(QStringLiteral("a b"));
    EXPECT_EQ(QStringList({"key", "key2"}), rows());
    m_filter->regexp_filter(QStringLiteral("\"a b\""));
    EXPECT_EQ(QStringList({"key"}), rows());
    m_filter->regexp_filter(QStringLiteral("key a"));
    EXPECT_EQ(QStringList(), rows()) << "the key column is not among the joined ones";
    m_filter->regexp_filter(QStringLiteral("key2"));
    EXPECT_EQ(QStringList({"key2"}), rows()) << "but is searched alone";
    m_model.insert_filter_column(0);
    m_filter->regexp_filter(QStringLiteral("key2 a"));
    EXPECT_EQ(QStringList({"key2"}), rows());
    m_model.clear_filter_column_list();
    m_filter->regexp_filter(QStringLiteral("a b"));
    EXPECT_EQ(QStringList(), rows());
}

TEST_F(TREE_FILTER, columns_are_joined_in_list_order_each_with_a_blank_behind_it)
{
    add({"key", "a", "b"});
    m_model.insert_filter_column(2);
    m_model.insert_filter_column(1);
    m_model.insert_filter_column(1);
    m_filter->regexp_filter(QStringLiteral("^b\\x20a\\x20a\\x20$"));
    EXPECT_EQ(QStringList({"key"}), rows());
}

TEST_F(TREE_FILTER, a_fixed_text_or_a_wildcard_set_by_the_base_class_is_searched_in_the_joined_columns_too)
{
    add({"key", "a.b"});
    add({"key2", "axb"});
    m_model.insert_filter_column(1);
    m_filter->setFilterFixedString(QStringLiteral("a.b"));
    EXPECT_EQ(QStringList({"key"}), rows());
    m_filter->setFilterWildcard(QStringLiteral("a*b"));
    EXPECT_EQ(QStringList({"key", "key2"}), rows());
    m_filter->setFilterWildcard(QStringLiteral("b*a"));
    EXPECT_EQ(QStringList(), rows());
    QStandardItem* a = add({"a"});
    EXPECT_EQ(QStringList(), rows());
    add(a, {"c", "b x a"});
    EXPECT_EQ(QStringList({"a", ".c"}), rows()) << "and the rules hold while the source changes";
    m_filter->regexp_filter(QStringLiteral("key2"));
    EXPECT_EQ(QStringList({"key2"}), rows());
}

TEST_F(TREE_FILTER, a_pattern_can_be_set_as_a_text)
{
    add({"ab"});
    add({"a.b"});
    m_filter->setFilterRegularExpression(QStringLiteral("^a.$"));
    EXPECT_EQ(QStringList({"ab"}), rows());
}

TEST_F(TREE_FILTER, signals_come_in_their_order)
{
    add({"a"});
    QObject::connect(m_filter, &TOLV_TREE_FILTER_PROXY_MODEL::filter_start, m_filter, [this] { m_calls << "start"; });
    QObject::connect(m_filter, &TOLV_TREE_FILTER_PROXY_MODEL::filter_done, m_filter, [this] { m_calls << "done"; });
    QObject::connect(m_filter, &TOLV_TREE_FILTER_PROXY_MODEL::filter_cancel, m_filter, [this] { m_calls << "cancel"; });
    QObject::connect(m_filter, &TOLV_TREE_FILTER_PROXY_MODEL::search_content, m_filter,
                     [this](const QRegularExpression& e) { m_calls << "search " + e.pattern(); });
    QObject::connect(m_filter, &TOLV_TREE_FILTER_PROXY_MODEL::filter_content, m_filter,
                     [this](const QRegularExpression& e) {
                         m_calls << "filter " + e.pattern() + (m_filter->filterRegularExpression() == e ? " set" : "");
                     });
    m_filter->start_filter(QStringLiteral("  a  "), false, true);
    EXPECT_EQ(QStringList({"start", "filter a set", "done"}), m_calls);
    m_calls.clear();
    m_filter->start_filter(QStringLiteral("a*b"), true, false);
    EXPECT_EQ(QStringList({"start", "search a.*b", "done"}), m_calls);
    EXPECT_EQ(QStringLiteral(" "), m_filter->filterRegularExpression().pattern());
    m_calls.clear();
    m_filter->regexp_filter(QStringLiteral(" \t "));
    EXPECT_EQ(QStringList({"filter  set", "cancel"}), m_calls);
    m_calls.clear();
    m_filter->regexp_filter(QStringLiteral("\""), true, false);
    EXPECT_EQ(QStringList({"search ", "cancel"}), m_calls);
    EXPECT_EQ(QStringLiteral(" "), m_filter->filterRegularExpression().pattern());
    m_calls.clear();
    m_filter->regexp_filter(QStringLiteral("b"), true);
    EXPECT_EQ(QStringList({"filter b set", "done"}), m_calls);
}

TEST_F(TREE_FILTER, signals_and_slots_have_their_names_and_order)
{
    const QMetaObject& meta = TOLV_TREE_FILTER_PROXY_MODEL::staticMetaObject;
    QStringList names;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        names.append(QString::fromLatin1(meta.method(i).methodSignature()));
    EXPECT_EQ(
        QStringList({"filter_start()", "filter_done()", "filter_cancel()", "search_content(QRegularExpression)",
                     "filter_content(QRegularExpression)", "start_filter(QString,bool,bool)",
                     "regexp_filter(QString,bool,bool)", "regexp_filter(QString,bool)", "regexp_filter(QString)"}),
        names);
}

TEST_F(TREE_FILTER, search_mode_keeps_rows_with_a_blank)
{
    add({"a b"});
    add({"ab"});
    m_filter->regexp_filter(QStringLiteral("ab"), true, false);
    EXPECT_EQ(QStringList({"a b"}), rows());
}

TEST_F(TREE_FILTER, the_count_is_that_of_the_rows_that_match_themselves)
{
    QStandardItem* a = add({"a"});
    QStandardItem* x = add(a, {"x1"});
    add(add(x, {"b"}), {"x2"});
    add({"c"});
    QObject::connect(m_filter, &TOLV_TREE_FILTER_PROXY_MODEL::filter_done, m_filter,
                     [this] { m_count_when_done = TOLV_TREE_FILTER_PROXY_MODEL::get_search_result_count(); });
    m_filter->regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(2, m_count_when_done) << "when nothing has been shown yet";
    EXPECT_EQ(QStringList({"a", ".x1", "..b", "...x2"}), rows());
    EXPECT_EQ(2, TOLV_TREE_FILTER_PROXY_MODEL::get_search_result_count());
    m_filter->start_filter(QStringLiteral("c"), true, true);
    EXPECT_EQ(1, m_count_when_done) << "when all has been shown";
    m_filter->start_filter(QStringLiteral("[abc]"), true, true);
    EXPECT_EQ(3, m_count_when_done);
    m_filter->regexp_filter(QStringLiteral("x2"));
    rows();
    EXPECT_EQ(1, TOLV_TREE_FILTER_PROXY_MODEL::get_search_result_count());
}

TEST_F(TREE_FILTER, the_count_is_that_of_the_filter_that_filtered_last)
{
    add({"x1"});
    add({"x2"});
    TOLV_TREE_FILTER_MODEL other;
    other.create_filter_model(0);
    other.appendRow(new QStandardItem(QStringLiteral("x")));
    m_filter->regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(2, TOLV_TREE_FILTER_PROXY_MODEL::get_search_result_count());
    other.get_filter_model()->regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(1, TOLV_TREE_FILTER_PROXY_MODEL::get_search_result_count());
}

TEST_F(TREE_FILTER, the_count_outlives_its_filter)
{
    {
        TOLV_TREE_FILTER_MODEL other;
        other.create_filter_model(0);
        other.appendRow(new QStandardItem(QStringLiteral("x")));
        other.get_filter_model()->regexp_filter(QStringLiteral("x"));
        EXPECT_EQ(1, TOLV_TREE_FILTER_PROXY_MODEL::get_search_result_count());
    }
    EXPECT_EQ(1, TOLV_TREE_FILTER_PROXY_MODEL::get_search_result_count());
}

/// A filter whose rules hold more than the expression, and that tells how often it was asked.
class OWN_RULES : public TOLV_TREE_FILTER_PROXY_MODEL
{
public:
    using TOLV_TREE_FILTER_PROXY_MODEL::invalidateFilter;

    QString wanted;
    bool looks_below = true;
    mutable int itself_count = 0;

    bool filter_accepts_row_itself(int row, const QModelIndex& parent) const override
    {
        ++itself_count;
        if (!wanted.isEmpty())
            return sourceModel()->index(row, 0, parent).data().toString() == wanted;
        return TOLV_TREE_FILTER_PROXY_MODEL::filter_accepts_row_itself(row, parent);
    }
    bool children_is_accepted(int row, const QModelIndex& parent) const override
    {
        return looks_below && TOLV_TREE_FILTER_PROXY_MODEL::children_is_accepted(row, parent);
    }
};

TEST_F(TREE_FILTER, the_virtual_operations_decide_and_a_change_of_their_state_is_seen)
{
    QStandardItem* a = add({"a"});
    add(a, {"x"});
    add({"b"});
    OWN_RULES filter;
    filter.setSourceModel(&m_model);
    filter.wanted = QStringLiteral("x");
    filter.invalidateFilter();
    EXPECT_EQ(QStringList({"a", ".x"}), get_rows(filter));
    filter.wanted = QStringLiteral("b");
    filter.invalidateFilter();
    EXPECT_EQ(QStringList({"b"}), get_rows(filter));
    filter.wanted = QStringLiteral("x");
    filter.looks_below = false;
    filter.regexp_filter(QStringLiteral("unused"));
    EXPECT_EQ(QStringList(), get_rows(filter));
    filter.looks_below = true;
    filter.regexp_filter(QStringLiteral("unused"));
    EXPECT_EQ(QStringList({"a", ".x"}), get_rows(filter));
}

TEST_F(TREE_FILTER, in_one_filtering_a_shown_row_is_asked_once)
{
    QStandardItem* item = m_model.invisibleRootItem();
    for (int level = 0; level < 6; ++level)
    {
        for (int i = 0; i < 9; ++i)
            add(item, {"leaf"});
        item = add(item, {"branch"});
    }
    OWN_RULES filter;
    filter.setSourceModel(&m_model);
    get_rows(filter);
    filter.itself_count = 0;
    filter.regexp_filter(QStringLiteral("leaf"));
    EXPECT_EQ(60, filter.itself_count);
    get_rows(filter);
    EXPECT_EQ(60, filter.itself_count);
    EXPECT_EQ(54, TOLV_TREE_FILTER_PROXY_MODEL::get_search_result_count());
    EXPECT_EQ(60, filter.itself_count);
}

TEST_F(TREE_FILTER, levels_that_nobody_asks_for_are_not_looked_at)
{
    QStandardItem* a = add({"a"});
    for (int i = 0; i < 100; ++i)
        add(a, {"x"});
    OWN_RULES filter;
    filter.setSourceModel(&m_model);
    filter.regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(0, filter.itself_count);
    EXPECT_EQ(1, filter.rowCount());
    EXPECT_EQ(2, filter.itself_count);
}

TEST_F(TREE_FILTER, a_second_filter_over_an_unseen_tree_asks_only_by_the_new_expression)
{
    for (int i = 0; i < 100; ++i)
        add({"x"});
    OWN_RULES filter;
    filter.setSourceModel(&m_model);
    filter.regexp_filter(QStringLiteral("y"));
    filter.regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(0, filter.itself_count);
    EXPECT_EQ(100, filter.rowCount());
    EXPECT_EQ(100, filter.itself_count);
}

TEST_F(TREE_FILTER, a_row_is_mapped_only_where_it_is_shown)
{
    QStandardItem* a = add({"a"});
    QStandardItem* b = add(a, {"b"});
    QStandardItem* x = add({"x"});
    EXPECT_TRUE(m_model.match_filter_index_from_model_source(b->index()));
    m_filter->regexp_filter(QStringLiteral("x"));
    EXPECT_FALSE(m_model.match_filter_index_from_model_source(a->index()));
    EXPECT_FALSE(m_model.match_filter_index_from_model_source(b->index()));
    EXPECT_TRUE(m_model.match_filter_index_from_model_source(x->index()));
    EXPECT_EQ(m_filter->index(0, 0), m_model.map_index_from_source(x->index()));
    EXPECT_EQ(x->index(), m_model.map_index_to_source(m_filter->index(0, 0)));
    EXPECT_EQ(x, m_model.get_item_from_index(m_filter->index(0, 0)));
    EXPECT_EQ(m_filter->index(0, 0), m_model.get_index_from_item(x));
    EXPECT_FALSE(m_model.get_index_from_item(a).isValid());
    EXPECT_EQ(nullptr, m_model.get_item_from_index(QModelIndex()));
}

TEST_F(TREE_FILTER, whether_a_row_has_children_is_said_of_what_is_shown)
{
    QStandardItem* a = add({"ax"});
    add(a, {"b"});
    EXPECT_TRUE(m_model.has_children(m_filter->index(0, 0)));
    m_model.set_include_child(false);
    m_filter->regexp_filter(QStringLiteral("x"));
    EXPECT_FALSE(m_model.has_children(m_filter->index(0, 0)));
    EXPECT_TRUE(m_model.has_children(QModelIndex()));
}

TEST_F(TREE_FILTER, the_model_works_without_a_filter)
{
    TOLV_TREE_FILTER_MODEL model;
    auto* a = new QStandardItem(QStringLiteral("a"));
    a->appendRow(new QStandardItem(QStringLiteral("b")));
    model.appendRow(a);
    EXPECT_EQ(nullptr, model.get_filter_model());
    EXPECT_EQ(&model, model.get_view_model());
    EXPECT_TRUE(model.has_children(a->index()));
    EXPECT_FALSE(model.has_children(a->child(0)->index()));
    EXPECT_EQ(a, model.get_item_from_index(a->index()));
    EXPECT_EQ(a->index(), model.get_index_from_item(a));
    EXPECT_EQ(a->index(), model.map_index_to_source(a->index()));
    EXPECT_EQ(a->index(), model.map_index_from_source(a->index()));
    EXPECT_TRUE(model.match_filter_index_from_model_source(a->index()));
    EXPECT_TRUE(model.match_filter_index_from_model_source(QModelIndex()));
    model.set_include_child(false);
    EXPECT_INTERNAL_ERROR(model.set_include_invisible_root_child(true), "m_filter_model != NULL");
    EXPECT_INTERNAL_ERROR(model.clear_filter_column_list(), "m_filter_model != NULL");
    EXPECT_INTERNAL_ERROR(model.insert_filter_column(0), "m_filter_model != NULL");
}

TEST_F(TREE_FILTER, the_filter_is_a_child_of_the_models_parent)
{
    EXPECT_EQ(&m_parent, m_filter->parent());
    EXPECT_EQ(&m_model, m_filter->sourceModel());
    EXPECT_EQ(0, m_filter->filterKeyColumn());
    EXPECT_EQ(m_filter, m_model.get_view_model());
    QPointer<TOLV_TREE_FILTER_PROXY_MODEL> orphan;
    {
        TOLV_TREE_FILTER_MODEL model;
        model.create_filter_model(2);
        orphan = model.get_filter_model();
        EXPECT_EQ(2, orphan->filterKeyColumn());
    }
    EXPECT_EQ(nullptr, orphan.data());
}

TEST_F(TREE_FILTER, a_second_filter_is_an_internal_error)
{
    const TRAPPED_INTERNAL_ERROR error = CATCH_INTERNAL_ERROR(m_model.create_filter_model(0));
    EXPECT_EQ("m_filter_model == NULL", error.text);
    EXPECT_EQ("TOLV", error.tag);
    EXPECT_EQ("tolv_tree_filter_model", error.file);
}

TEST_F(TREE_FILTER, a_second_filter_takes_the_place_of_the_first_when_the_report_returns)
{
    const auto old_handler = MSG_INTERNAL_ERROR::set_handler([](auto&&...) {});
    m_model.create_filter_model(1);
    MSG_INTERNAL_ERROR::set_handler(old_handler);
    EXPECT_NE(m_filter, m_model.get_filter_model());
    EXPECT_EQ(1, m_model.get_filter_model()->filterKeyColumn());
}

TEST_F(TREE_FILTER, a_filter_that_somebody_deletes_is_gone)
{
    delete m_filter;
    EXPECT_EQ(nullptr, m_model.get_filter_model());
    EXPECT_EQ(&m_model, m_model.get_view_model());
}

TEST_F(TREE_FILTER, without_a_source_model_a_filtering_is_harmless)
{
    TOLV_TREE_FILTER_PROXY_MODEL filter;
    QSignalSpy done(&filter, SIGNAL(filter_done()));
    filter.insert_filter_column(0);
    filter.regexp_filter(QStringLiteral("x"));
    EXPECT_EQ(1, done.size());
    EXPECT_EQ(0, filter.rowCount());
    EXPECT_EQ(0, TOLV_TREE_FILTER_PROXY_MODEL::get_search_result_count());
    filter.filter_accepts_row_itself(0, QModelIndex());
    EXPECT_FALSE(filter.children_is_accepted(0, QModelIndex()));
}

TEST_F(TREE_FILTER, the_source_model_can_be_changed)
{
    add({"x"});
    QStandardItemModel other;
    other.appendRow(new QStandardItem(QStringLiteral("other x")));
    m_filter->regexp_filter(QStringLiteral("x"));
    m_filter->setSourceModel(&other);
    EXPECT_EQ(QStringList({"other x"}), rows());
    add({"x2"});
    other.item(0)->setText(QStringLiteral("y"));
    EXPECT_EQ(QStringList(), rows());
}
} // namespace
