#pragma once

#include "gui_test.h"
#include "internal_error_trap.h"

#include "cfgq_registry.h"
#include "tolv_tree_model.h"
#include "tolv_tree_view.h"

#include <QStandardItem>
#include <QString>
#include <QWidget>

#include <memory>

/// The tree view with what it keeps for derived classes laid open.
class OPEN_TREE_VIEW : public TOLV_TREE_VIEW
{
public:
    using TOLV_TREE_VIEW::TOLV_TREE_VIEW;

    using TOLV_TREE_VIEW::m_always_hidden_columns;
    using TOLV_TREE_VIEW::m_check_state_memory;
    using TOLV_TREE_VIEW::m_expansion_memory;
    using TOLV_TREE_VIEW::m_header;
    using TOLV_TREE_VIEW::m_is_check_state_tracked;
    using TOLV_TREE_VIEW::m_is_tooltip_enabled;
    using TOLV_TREE_VIEW::m_line_edit;
    using TOLV_TREE_VIEW::m_pressed_icon_index;
    using TOLV_TREE_VIEW::m_style;

    using TOLV_TREE_VIEW::drawRow;
    using TOLV_TREE_VIEW::viewOptions;
    using TOLV_TREE_VIEW::viewportEvent;
};

/// Tests of the tree view: a window with the object name "design_window", a tree in it, and a model with the columns
/// "Name", "Type" and "Area".
///
///     top            root   7
///         fifo       block  3
///             ram    memory 2
///         clk        net    0
///     spare          root   0
///         pin        net    0
class TREE_VIEW_TEST : public TOLV_GUI_TEST
{
protected:
    void SetUp() override
    {
        TOLV_GUI_TEST::SetUp();
        CFGQ_REGISTRY_KEY stored_columns = open_folder("design_window");
        for (const QString& name : stored_columns.get_value_names())
            stored_columns.remove(name);
        m_window = std::make_unique<QWidget>();
        m_window->setObjectName(QStringLiteral("design_window"));
        m_window->resize(600, 400);
        m_model = std::make_unique<TOLV_TREE_MODEL>(nullptr);
        fill_model();
        m_view = make_view();
    }

    void TearDown() override
    {
        m_window.reset();
        m_model.reset();
        TOLV_GUI_TEST::TearDown();
    }

    /// The folder of a tree in the registry, under the stored number of all trees.
    static CFGQ_REGISTRY_KEY open_folder(const char* name)
    {
        return CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY(static_cast<CFGQ_REGISTRY_KEY::SUB_KEY>(21)), name);
    }

    /// Another view of the same window.
    OPEN_TREE_VIEW* make_view() const
    {
        auto* const view = new OPEN_TREE_VIEW(m_window.get(), 0);
        view->resize(600, 400);
        view->setModel(m_model.get());
        return view;
    }

    QStandardItem* add_row(QStandardItem* parent, const char* name, const char* type, int area) const
    {
        auto* const item = new QStandardItem(QString::fromLatin1(name));
        auto* const area_item = new QStandardItem;
        area_item->setData(area, Qt::DisplayRole);
        (parent != nullptr ? parent : m_model->invisibleRootItem())
            ->appendRow({item, new QStandardItem(QString::fromLatin1(type)), area_item});
        return item;
    }

    /// The index of an item.
    QModelIndex index(const QStandardItem* item, int column = 0) const
    {
        const QModelIndex result = m_model->indexFromItem(item);
        return result.sibling(result.row(), column);
    }

    std::unique_ptr<QWidget> m_window;
    std::unique_ptr<TOLV_TREE_MODEL> m_model;
    OPEN_TREE_VIEW* m_view = nullptr;
    QStandardItem* m_top = nullptr;
    QStandardItem* m_fifo = nullptr;
    QStandardItem* m_ram = nullptr;
    QStandardItem* m_clk = nullptr;
    QStandardItem* m_spare = nullptr;
    QStandardItem* m_pin = nullptr;

private:
    void fill_model()
    {
        m_model->setHorizontalHeaderLabels({QStringLiteral("Name"), QStringLiteral("Type"), QStringLiteral("Area")});
        m_top = add_row(nullptr, "top", "root", 7);
        m_fifo = add_row(m_top, "fifo", "block", 3);
        m_ram = add_row(m_fifo, "ram", "memory", 2);
        m_clk = add_row(m_top, "clk", "net", 0);
        m_spare = add_row(nullptr, "spare", "root", 0);
        m_pin = add_row(m_spare, "pin", "net", 0);
    }
};
