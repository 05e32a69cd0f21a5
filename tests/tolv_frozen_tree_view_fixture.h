#pragma once

#include "gui_driver.h"
#include "gui_test.h"
#include "internal_error_trap.h"

#include "tolv_frozen_tree_view.h"
#include "tolv_tree_model.h"

#include <QScrollBar>
#include <QStandardItem>
#include <QWidget>

#include <memory>

/// Tests of frozen columns: a window with a main tree and a frozen one, nothing connected, on one model of five columns
/// and forty blocks.
///
///     block 0        cell 0 0   cell 0 1 ...
///         pin 0
///             bit
///         pin 1
///     block 1
///     ...
class FROZEN_TREE_VIEW_TEST : public TOLV_GUI_TEST
{
protected:
    static constexpr int BLOCK_COUNT = 40;
    static constexpr int COLUMN_COUNT = 5;

    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        m_window = std::make_unique<QWidget>();
        m_window->setObjectName(QStringLiteral("design_window"));
        m_window->setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
        m_window->resize(420, 300);
        m_model = std::make_unique<TOLV_TREE_MODEL>(nullptr);
        fill(*m_model);
        m_main = new TOLV_TREE_VIEW(m_window.get(), 0);
        m_main->resize(420, 300);
        m_main->setModel(m_model.get());
        m_frozen = new TOLV_FROZEN_TREE_VIEW(m_main);
        m_frozen->resize(140, 300);
        m_frozen->setModel(m_model.get());
    }

    void TearDown() override
    {
        m_window.reset();
        m_model.reset();
        TOLV_GUI_TEST::TearDown();
    }

    static QList<QStandardItem*> make_row(const QString& name, int number)
    {
        QList<QStandardItem*> row{new QStandardItem(name)};
        for (int column = 1; column < COLUMN_COUNT; ++column)
            row << new QStandardItem(QStringLiteral("cell %1 %2").arg(number).arg(column));
        return row;
    }

    static void fill(QStandardItemModel& model)
    {
        model.setHorizontalHeaderLabels({QStringLiteral("Name"), QStringLiteral("Type"), QStringLiteral("Area"),
                                         QStringLiteral("Delay"), QStringLiteral("Clock")});
        for (int block = 0; block < BLOCK_COUNT; ++block)
        {
            const QList<QStandardItem*> row = make_row(QStringLiteral("block %1").arg(block), block);
            for (int pin = 0; pin < 2; ++pin)
                row.at(0)->appendRow(make_row(QStringLiteral("pin %1").arg(pin), block));
            row.at(0)->child(0)->appendRow(make_row(QStringLiteral("bit"), block));
            model.appendRow(row);
        }
    }

    QModelIndex block(int row) const
    {
        return m_model->index(row, 0);
    }

    QModelIndex pin(int block_row, int row) const
    {
        return m_model->index(row, 0, block(block_row));
    }

    /// The expanded items of a view that have rows, each by the rows on the way to it ("3" or "3/0").
    static QStringList get_expanded(const QTreeView& view)
    {
        QStringList result;
        append_expanded(view, QModelIndex(), QString(), result);
        return result;
    }

    static int scroll_value(const QTreeView* view)
    {
        return view->verticalScrollBar()->value();
    }

    std::unique_ptr<QWidget> m_window;
    std::unique_ptr<TOLV_TREE_MODEL> m_model;
    TOLV_TREE_VIEW* m_main = nullptr;
    TOLV_FROZEN_TREE_VIEW* m_frozen = nullptr;

private:
    static void append_expanded(const QTreeView& view, const QModelIndex& parent, const QString& way,
                                QStringList& result)
    {
        for (int row = 0; row < view.model()->rowCount(parent); ++row)
        {
            const QModelIndex index = view.model()->index(row, 0, parent);
            const QString name = way + QString::number(row);
            if (view.isExpanded(index) && view.model()->rowCount(index) > 0)
                result << name;
            append_expanded(view, index, name + QLatin1Char('/'), result);
        }
    }
};
