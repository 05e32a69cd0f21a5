// Copying of selected rows, and dumps.

#include "tolv_tree_view.h"

#include "tolv_data_transfer_manager.h"
#include "tolv_instance_name.h"
#include "tolv_mem.h"
#include "tolv_tree_model.h"
#include "tolv_tree_view_p.h"

#include <QHeaderView>
#include <QItemSelectionModel>

#include <string>

TOLV_MEM_INITIALIZER();

namespace
{
QString get_text(const QModelIndex& index)
{
    return index.data(Qt::DisplayRole).toString();
}

/// The selected first cells, in the order of the tree. The same as selectedIndexes(), sorted and without the other
/// columns, but the others are not even listed: with a million rows they would be most of the work. Left in the list,
/// they would also spoil the order, as a cell of another column stands on a par with the children of its row.
QModelIndexList get_selected_rows(const QItemSelectionModel& selection_model)
{
    const QAbstractItemModel* const model = selection_model.model();
    const QItemSelection selection = selection_model.selection();
    QModelIndexList rows;
    for (const QItemSelectionRange& range : selection)
    {
        if (range.left() > 0)
            continue;
        const QModelIndex parent = range.parent();
        for (int row = range.top(); row <= range.bottom(); ++row)
        {
            const QModelIndex index = model->index(row, 0, parent);
            const Qt::ItemFlags flags = index.flags();
            if (index.isValid() && flags.testFlag(Qt::ItemIsSelectable) && flags.testFlag(Qt::ItemIsEnabled))
                rows.append(index);
        }
    }
    tolv_tree_sort_indexes(rows);
    return rows;
}

void write_local_8_bit(std::ofstream& out, const QString& text)
{
    const QByteArray bytes = text.toLocal8Bit();
    out.write(bytes.constData(), bytes.size());
}
} // namespace

void TOLV_TREE_VIEW::on_copy_selection(bool all_columns, const char* prefix)
{
    const QItemSelectionModel* const selection_model = selectionModel();
    if (selection_model == nullptr)
        return;
    const QString prefix_text = QString::fromLocal8Bit(prefix);
    QString whole_text;
    TOLV_INSTANCE_NAME_LIST names;
    const QModelIndexList rows = get_selected_rows(*selection_model);
    for (const QModelIndex& index : rows)
    {
        const QString text = prefix_text + get_text(index);
        whole_text += text + QLatin1Char('\t');
        TOLV_INSTANCE_NAME name;
        name.m_name = text.toLocal8Bit().toStdString();
        names.insert(name);
        for (int column = 1; all_columns && column < header()->count(); ++column)
        {
            if (!isColumnHidden(column))
                whole_text += get_text(index.sibling(index.row(), column)) + QLatin1Char('\t');
        }
        whole_text += QLatin1Char('\n');
    }
    if (whole_text.isEmpty())
        return;
    TOLV_DATA_TRANSFER_MANAGER* const data_transfer_manager = TOLV_DATA_TRANSFER_MANAGER::get_instance();
    TOLV_TREE_VIEW_CHECK(data_transfer_manager != nullptr, "data_transfer_manager != NULL");
    if (data_transfer_manager == nullptr)
        return;
    data_transfer_manager->create_mime_data();
    data_transfer_manager->add_text_format_into_clipboard(whole_text);
    data_transfer_manager->add_instance_name_format_into_clipboard(names);
}

void TOLV_TREE_VIEW::dump_tree_view_data(const QModelIndex& index, std::ofstream& out, int depth)
{
    if (!has_model())
        return;
    for (int column = 0; index.isValid() && column < header()->count(); ++column)
    {
        const QModelIndex cell = index.sibling(index.row(), column);
        if (!cell.isValid() || isColumnHidden(column))
            continue;
        if (column == 0 && depth >= 1)
            out << '|' << std::string(static_cast<std::size_t>(depth), '-');
        write_local_8_bit(out, get_text(cell));
        out << '\t';
    }
    if (index.isValid())
        out << '\n';
    for (int row = 0; row < model()->rowCount(index); ++row)
    {
        const QModelIndex item_index = model()->index(row, 0, index);
        TOLV_TREE_VIEW_CHECK(item_index.isValid(), "item_index.isValid()");
        if (item_index.isValid())
            dump_tree_view_data(item_index, out, depth + 1);
    }
}
