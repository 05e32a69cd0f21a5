#include "hierarchy_filter_model.h"
#include "hierarchy_model.h"
#include "host_netlist_fixture.h"
#include "netlist_generator.h"
#include "netlist_reader.h"

#include "gui_test.h"

#include "tolv_data_transfer_manager.h"
#include "tolv_instance_name.h"

#include <QAbstractItemModelTester>
#include <QIcon>
#include <QMimeData>
#include <QSignalSpy>

namespace
{
using TESTER = QAbstractItemModelTester;

const char* const TEXT = R"({"modules":{
    "leaf":{"attributes":{"hdlname":"\\leaf_source"},
        "ports":{"a":{"direction":"input","bits":[2]},"q":{"direction":"output","bits":[3]}},
        "cells":{"c":{"type":"LUT"},"d":{"type":"LUT"},"e":{"type":"DFF"}},
        "netnames":{"a":{"bits":[2]}}},
    "mid":{"cells":{"u1":{"type":"leaf"},"x":{"type":"LUT"},"u2":{"type":"leaf"}}},
    "top":{"attributes":{"top":"1"},"cells":{"m":{"type":"mid"},"l":{"type":"leaf"}}},
    "other":{"cells":{"x":{"type":"DFF"}}}}})";
enum MODULE
{
    LEAF,
    MID,
    TOP,
    OTHER
};

std::shared_ptr<const NETLIST> read(const std::string& text = TEXT)
{
    return read_netlist(text);
}

QStringList row_at(const QAbstractItemModel& model, int row, const QModelIndex& parent = QModelIndex())
{
    QStringList texts;
    for (int column = 0; column < model.columnCount(parent); ++column)
        texts.append(model.index(row, column, parent).data().toString());
    return texts;
}

/// All rows of a model, each as its names from the top.
QStringList paths_of(const QAbstractItemModel& model, const QModelIndex& parent = QModelIndex(),
                     const QString& above = QString())
{
    QStringList paths;
    for (int row = 0; row < model.rowCount(parent); ++row)
    {
        const QModelIndex index = model.index(row, 0, parent);
        paths << above + index.data().toString();
        paths << paths_of(model, index, paths.constLast() + QLatin1Char('/'));
    }
    return paths;
}

class host_hierarchy_model : public TOLV_GUI_TEST
{
protected:
    HIERARCHY_MODEL m_model;
};

class host_hierarchy_filter : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        m_model = std::make_unique<HIERARCHY_MODEL>();
        m_filter_model = std::make_unique<HIERARCHY_FILTER_MODEL>(m_model.get(), nullptr);
        m_filter = m_filter_model->get_filter_model();
    }

    void TearDown() override
    {
        m_filter_model.reset();
        m_model.reset();
        TOLV_GUI_TEST::TearDown();
    }

    QStringList filtered(const char* keyword)
    {
        m_filter->regexp_filter(QString::fromLatin1(keyword));
        return paths_of(*m_filter);
    }

    qulonglong count() const
    {
        return m_filter->property("match_count").toULongLong();
    }

    std::unique_ptr<HIERARCHY_MODEL> m_model;
    std::unique_ptr<HIERARCHY_FILTER_MODEL> m_filter_model;
    TOLV_TREE_FILTER_PROXY_MODEL* m_filter = nullptr;
};
} // namespace

// ---- The model ------------------------------------------------------------------------------------------------------

TEST_F(host_hierarchy_model, keeps_the_rules_of_models_while_it_is_filled_and_emptied)
{
    const TESTER tester(&m_model, TESTER::FailureReportingMode::Fatal);
    m_model.set_netlist(read());
    m_model.set_netlist(read_design("synth"));
    EXPECT_TRUE(m_model.find_path({"serial_station", "u_uart", "u_rx_fifo"}).isValid());
    m_model.set_netlist(nullptr);
    EXPECT_EQ(0, m_model.rowCount());
    EXPECT_FALSE(m_model.hasChildren());
    EXPECT_EQ(QStringList(), paths_of(m_model));
}

TEST_F(host_hierarchy_model, shows_tops_and_instances_with_their_modules_and_counts)
{
    m_model.set_netlist(read());
    QStringList titles;
    QList<bool> hidden;
    for (int column = 0; column < m_model.columnCount(); ++column)
    {
        titles << m_model.headerData(column, Qt::Horizontal).toString();
        hidden << m_model.headerData(column, Qt::Horizontal, HIERARCHY_MODEL::HIDDEN_AT_FIRST_ROLE).toBool();
    }
    EXPECT_EQ((QStringList{"Instance", "Module", "Cells", "Nets", "Instances", "Ports"}), titles);
    EXPECT_EQ((QList<bool>{false, false, false, true, true, true}), hidden);
    ASSERT_EQ(2, m_model.rowCount());
    EXPECT_EQ((QStringList{"top", "top", "10", "0", "4", "0"}), row_at(m_model, 0));
    EXPECT_EQ((QStringList{"other", "other", "1", "0", "0", "0"}), row_at(m_model, 1));
    const QModelIndex top = m_model.index(0, 0);
    ASSERT_EQ(2, m_model.rowCount(top));
    EXPECT_EQ((QStringList{"m", "mid", "7", "0", "2", "0"}), row_at(m_model, 0, top));
    EXPECT_EQ((QStringList{"l", "leaf_source", "3", "1", "0", "2"}), row_at(m_model, 1, top));
    EXPECT_EQ("leaf", m_model.index(1, 0, top).data(Qt::ToolTipRole).toString());
    EXPECT_EQ(int(LEAF), int(m_model.get_module(m_model.index(1, 0, top))));
    EXPECT_EQ(QVariant(Qt::AlignVCenter | Qt::AlignRight), m_model.index(0, 2).data(Qt::TextAlignmentRole));
    EXPECT_EQ(QVariant(Qt::AlignVCenter | Qt::AlignLeft), m_model.index(0, 1).data(Qt::TextAlignmentRole));
}

TEST_F(host_hierarchy_model, all_instances_are_there_without_fetching)
{
    m_model.set_netlist(read());
    QSignalSpy spy(&m_model, SIGNAL(rowsInserted(QModelIndex, int, int)));
    EXPECT_EQ((QStringList{"top", "top/m", "top/m/u1", "top/m/u2", "top/l", "other"}), paths_of(m_model));
    EXPECT_FALSE(m_model.canFetchMore(m_model.index(0, 0)));
    EXPECT_EQ(0, spy.count());
    EXPECT_FALSE(m_model.hasChildren(m_model.index(0, 1)));
    EXPECT_FALSE(m_model.hasChildren(m_model.find_path({"top", "l"})));
}

TEST_F(host_hierarchy_model, the_icon_of_each_instance_is_a_button)
{
    m_model.set_netlist(read());
    const QModelIndex top = m_model.index(0, 0);
    for (const QModelIndex& index : {top, m_model.index(0, 0, top)})
    {
        EXPECT_TRUE(index.data(7256).toBool());
        EXPECT_FALSE(index.data(Qt::DecorationRole).value<QIcon>().isNull());
        EXPECT_FALSE(index.siblingAtColumn(1).data(7256).isValid());
        EXPECT_FALSE(index.siblingAtColumn(1).data(Qt::DecorationRole).isValid());
    }
    EXPECT_NE(top.data(Qt::DecorationRole).value<QIcon>().pixmap(16).toImage(),
              m_model.index(0, 0, top).data(Qt::DecorationRole).value<QIcon>().pixmap(16).toImage());
}

TEST_F(host_hierarchy_model, a_path_leads_to_an_instance_and_back)
{
    m_model.set_netlist(read());
    const QModelIndex index = m_model.find_path({"top", "m", "u2"});
    ASSERT_TRUE(index.isValid());
    EXPECT_EQ((QStringList{"top", "m", "u2"}), m_model.get_path(index));
    EXPECT_EQ(1, index.row());
    EXPECT_FALSE(m_model.find_path({"top", "m", "x"}).isValid()); // a leaf cell
    EXPECT_FALSE(m_model.find_path({"m"}).isValid());
    EXPECT_FALSE(m_model.find_path({}).isValid());
    EXPECT_EQ(QStringList(), m_model.get_path(QModelIndex()));
}

TEST_F(host_hierarchy_model, an_instance_is_found_by_its_cell)
{
    m_model.set_netlist(read());
    const QModelIndex mid = m_model.find_path({"top", "m"});
    EXPECT_EQ("u2", m_model.find_instance(mid, 2).data().toString());
    EXPECT_FALSE(m_model.find_instance(mid, 1).isValid());
    EXPECT_FALSE(m_model.find_instance(mid, 99).isValid());
    EXPECT_FALSE(m_model.find_instance(QModelIndex(), 0).isValid());
}

TEST_F(host_hierarchy_model, a_design_of_a_thousand_billion_instances_costs_only_what_is_looked_at)
{
    m_model.set_netlist(read(NETLIST_GENERATOR::make_doubling(40, 1)));
    QStringList path{"m40"};
    for (int i = 0; i < 40; ++i)
        path.append("v");
    EXPECT_EQ("m0", m_model.find_path(path).siblingAtColumn(1).data().toString());
    EXPECT_EQ("2,199,023,255,550", m_model.index(0, HIERARCHY_MODEL::COLUMN_INSTANCES).data().toString());
}

TEST_F(host_hierarchy_model, a_count_without_end_stops_at_the_largest_value)
{
    m_model.set_netlist(read(NETLIST_GENERATOR::make_doubling(70, 1)));
    EXPECT_EQ("18,446,744,073,709,551,615", m_model.index(0, HIERARCHY_MODEL::COLUMN_INSTANCES).data().toString());
}

TEST_F(host_hierarchy_model, a_hierarchy_that_is_too_deep_is_cut_and_says_so)
{
    m_model.set_netlist(read(NETLIST_GENERATOR::make_doubling(600, 1)));
    QModelIndex index = m_model.index(0, 0);
    int levels = 1;
    for (; m_model.hasChildren(index); ++levels)
        index = m_model.index(1, 0, index);
    EXPECT_EQ(500, levels);
    EXPECT_EQ(500, m_model.get_path(index).size());
    EXPECT_FALSE(m_model.index(0, 0, index).isValid());
    EXPECT_EQ("m101<br>The hierarchy goes on below; no more than 500 levels are shown.",
              index.data(Qt::ToolTipRole).toString());
    EXPECT_EQ("m102", index.parent().data(Qt::ToolTipRole).toString());
}

TEST_F(host_hierarchy_model, data_of_instances_are_their_paths_in_the_order_of_the_tree)
{
    m_model.set_netlist(read());
    const QModelIndexList indexes{m_model.find_path({"other"}), m_model.find_path({"top", "m", "u2"}),
                                  m_model.find_path({"top"}), m_model.find_path({"top"}).siblingAtColumn(1),
                                  m_model.find_path({"top", "m", "u1"})};
    const std::unique_ptr<QMimeData> data(m_model.mimeData(indexes));
    EXPECT_EQ("top\ntop/m/u1\ntop/m/u2\nother\n", data->text());
    const auto names = TOLV_DATA_TRANSFER_MANAGER::get_instance()
                           ->get_instance_name_list_transfer_data(data.get())
                           .value<TOLV_INSTANCE_NAME_LIST>();
    QStringList texts;
    for (const TOLV_INSTANCE_NAME& name : names.get_list())
    {
        texts << QString::fromStdString(name.m_name);
        EXPECT_EQ(TOLV_INSTANCE_NAME_TYPE_PLAIN, name.m_type);
    }
    EXPECT_EQ((QStringList{"top", "top/m/u1", "top/m/u2", "other"}), texts);
    EXPECT_EQ(nullptr, m_model.mimeData({}));
    EXPECT_EQ(nullptr, m_model.mimeData({m_model.index(0, 1)}));
    EXPECT_TRUE(m_model.flags(m_model.index(0, 0)).testFlag(Qt::ItemIsDragEnabled));
    EXPECT_EQ(Qt::CopyAction, m_model.supportedDragActions());
}

// ---- The filter -----------------------------------------------------------------------------------------------------

TEST_F(host_hierarchy_filter, keeps_the_rules_of_models_while_designs_and_filters_come_and_go)
{
    const TESTER tester(m_filter, TESTER::FailureReportingMode::Fatal);
    m_model->set_netlist(read());
    filtered("u2");
    m_model->set_netlist(read_design("synth"));
    filtered("fifo");
    filtered("");
    m_model->set_netlist(nullptr);
    filtered("fifo");
    EXPECT_EQ(0, m_filter->rowCount());
}

TEST_F(host_hierarchy_filter, sees_every_instance_of_the_design)
{
    m_model->set_netlist(read());
    EXPECT_EQ((QStringList{"top", "top/m", "top/m/u2"}), filtered("u2"));
    EXPECT_EQ(1u, count());
    EXPECT_EQ((QStringList{"top", "top/m", "top/m/u1", "top/m/u2", "top/l"}), filtered("LEAF_source"));
    EXPECT_EQ(3u, count());
    EXPECT_EQ(QStringList(), filtered("nowhere"));
    EXPECT_EQ(0u, count());
    EXPECT_EQ(6, filtered("").size());
    EXPECT_EQ(6u, count());
}

TEST_F(host_hierarchy_filter, what_is_below_a_match_stays)
{
    m_model->set_netlist(read());
    EXPECT_EQ((QStringList{"top", "top/m", "top/m/u1", "top/m/u2"}), filtered("mid"));
    EXPECT_EQ(1u, count());
    m_filter_model->set_include_child(false);
    EXPECT_EQ((QStringList{"top", "top/m"}), filtered("mid "));
    EXPECT_EQ((QStringList{"top", "top/m"}), filtered("m*mid"));
}

TEST_F(host_hierarchy_filter, words_may_stand_in_both_columns)
{
    m_model->set_netlist(read());
    EXPECT_EQ((QStringList{"top", "top/m", "top/m/u1"}), filtered("source u1"));
    EXPECT_EQ((QStringList{"top", "top/m", "top/m/u1"}), filtered("\"u1 leaf\""));
    EXPECT_EQ(QStringList(), filtered("\"leaf u1\""));
    EXPECT_EQ(QStringList(), filtered("u1 mid"));
    EXPECT_EQ((QStringList{"top", "top/l"}), filtered("^l$"));
}

TEST_F(host_hierarchy_filter, an_invalid_expression_matches_nothing)
{
    m_model->set_netlist(read());
    EXPECT_EQ(QStringList(), filtered("(u1"));
    EXPECT_EQ(0u, count());
}

TEST_F(host_hierarchy_filter, finds_what_the_filter_of_the_library_finds)
{
    m_model->set_netlist(read_design("synth"));
    TOLV_TREE_FILTER_PROXY_MODEL plain;
    plain.setSourceModel(m_model.get());
    plain.setFilterKeyColumn(0);
    plain.insert_filter_column(0);
    plain.insert_filter_column(1);
    for (const char* keyword :
         {"fifo", "u_uart", "u_*fifo", "uart rx", "u", "^u_", "\"u_tx\"", "serial", "zz", "[a-f]$"})
    {
        plain.regexp_filter(QString::fromLatin1(keyword));
        const QStringList expected = paths_of(plain);
        const int expected_count = TOLV_TREE_FILTER_PROXY_MODEL::get_search_result_count();
        EXPECT_EQ(expected, filtered(keyword)) << keyword;
        EXPECT_EQ(qulonglong(expected_count), count()) << keyword;
    }
}

TEST_F(host_hierarchy_filter, a_design_without_end_is_filtered_by_its_modules)
{
    m_model->set_netlist(read(NETLIST_GENERATOR::make_doubling(70, 1)));
    m_filter->regexp_filter("m0");
    EXPECT_EQ(~qulonglong(0), count());
    QModelIndex index = m_filter->index(0, 0);
    for (int i = 0; i < 70; ++i)
    {
        ASSERT_EQ(2, m_filter->rowCount(index));
        index = m_filter->index(1, 0, index);
    }
    EXPECT_EQ("m0", index.siblingAtColumn(1).data().toString());
    m_filter->regexp_filter("nowhere");
    EXPECT_EQ(0, m_filter->rowCount());
}

TEST_F(host_hierarchy_filter, a_new_design_is_filtered_as_the_one_before)
{
    m_model->set_netlist(read());
    filtered("u1");
    m_model->set_netlist(read_design("synth"));
    EXPECT_EQ(QStringList(), paths_of(*m_filter));
    EXPECT_EQ(0u, count());
    m_model->set_netlist(read());
    EXPECT_EQ((QStringList{"top", "top/m", "top/m/u1"}), paths_of(*m_filter));
}

TEST_F(host_hierarchy_filter, the_model_maps_rows_to_the_hierarchy_and_has_no_items)
{
    m_model->set_netlist(read());
    filtered("u2");
    const QModelIndex source = m_model->find_path({"top", "m", "u2"});
    const QModelIndex shown = m_filter_model->map_index_from_source(source);
    EXPECT_EQ("u2", shown.data().toString());
    EXPECT_EQ(source, m_filter_model->map_index_to_source(shown));
    EXPECT_TRUE(m_filter_model->match_filter_index_from_model_source(source));
    EXPECT_FALSE(m_filter_model->match_filter_index_from_model_source(m_model->find_path({"top", "l"})));
    EXPECT_FALSE(m_filter_model->has_children(shown));
    EXPECT_EQ(nullptr, m_filter_model->get_item_from_index(shown));
    EXPECT_FALSE(m_filter_model->get_next(source).isValid());
}
