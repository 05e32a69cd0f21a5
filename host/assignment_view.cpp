#include "assignment_view.h"

#include "assignment_model.h"

#include "cfgq_registry.h"
#include "tolv_data_transfer_manager.h"
#include "tolv_global.h"

#include <QCompleter>
#include <QDropEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QMimeData>

#include <algorithm>

namespace
{
const char* const REGISTRY_STRING = "workbench_assignments";
const int MAX_NAMES = 1000; ///< rows whose names are offered

QStringList get_known_names(const QAbstractItemModel& model)
{
    QStringList names{QStringLiteral("DRIVE_STRENGTH"), QStringLiteral("IO_STANDARD"), QStringLiteral("KEEP"),
                      QStringLiteral("KEEP_HIERARCHY"), QStringLiteral("LOCATION"),    QStringLiteral("MAX_FAN_OUT"),
                      QStringLiteral("REGION"),         QStringLiteral("SLEW_RATE")};
    for (int row = 0; row < std::min(model.rowCount(), MAX_NAMES); ++row)
        names.append(model.index(row, ASSIGNMENT_MODEL::COLUMN_NAME).data().toString());
    names.removeDuplicates();
    names.removeAll(QString());
    names.sort();
    return names;
}
} // namespace

// ---- The delegate ---------------------------------------------------------------------------------------------------

ASSIGNMENT_DELEGATE::ASSIGNMENT_DELEGATE(QObject* parent) : TOLV_TREE_ITEM_DELEGATE(parent)
{
}

ASSIGNMENT_DELEGATE::~ASSIGNMENT_DELEGATE() = default;

QWidget* ASSIGNMENT_DELEGATE::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex& index) const
{
    auto* const editor = new QLineEdit(parent);
    editor->setObjectName(QStringLiteral("assignment_editor"));
    editor->setFrame(false);
    if (index.column() == ASSIGNMENT_MODEL::COLUMN_NAME)
    {
        auto* const completer = new QCompleter(get_known_names(*index.model()), editor);
        completer->setCaseSensitivity(Qt::CaseInsensitive);
        editor->setCompleter(completer);
    }
    return editor;
}

// ---- The view -------------------------------------------------------------------------------------------------------

ASSIGNMENT_VIEW::ASSIGNMENT_VIEW(ASSIGNMENT_MODEL* model, QWidget* parent)
    : TOLV_TREE_VIEW(parent, TOLV_TREE_STYLE_GRID | TOLV_TREE_STYLE_NO_BRANCHES), m_assignments(model)
{
    setObjectName(QStringLiteral("assignments"));
    setAccessibleName(tr("Assignments"));
    set_registry_string(QString::fromLatin1(REGISTRY_STRING));
    setItemDelegate(new ASSIGNMENT_DELEGATE(this));
    setModel(model);
    setRootIsDecorated(false);
    setSelectionBehavior(QAbstractItemView::SelectItems);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                    QAbstractItemView::AnyKeyPressed);
    setDragDropMode(QAbstractItemView::DragDrop);
    setDefaultDropAction(Qt::CopyAction);
    setTextElideMode(Qt::ElideMiddle);
    const CFGQ_REGISTRY_KEY columns(CFGQ_REGISTRY_KEY(CFGQ_REGISTRY_KEY::SUB_KEY_TREE_COLUMNS), REGISTRY_STRING);
    QVariant stored;
    if (columns.get_value(model->headerData(0, Qt::Horizontal).toString() + QStringLiteral("_column_size"), &stored))
        load_column_visibility_from_registry();
    else
        set_first_widths(); // not those of contents that are not there yet
}

ASSIGNMENT_VIEW::~ASSIGNMENT_VIEW()
{
    save_column_visibility_to_registry();
}

QVector<int> ASSIGNMENT_VIEW::get_selected_rows() const
{
    QVector<int> rows;
    const QItemSelection selection = selectionModel()->selection();
    for (const QItemSelectionRange& range : selection)
    {
        for (int row = range.top(); row <= range.bottom(); ++row)
            rows.append(row);
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

void ASSIGNMENT_VIEW::add_row()
{
    const int row = currentIndex().isValid() ? currentIndex().row() + 1 : m_assignments->rowCount();
    if (!m_assignments->insertRows(row, 1))
        return;
    const QModelIndex index = m_assignments->index(row, ASSIGNMENT_MODEL::COLUMN_TO);
    setCurrentIndex(index);
    edit(index);
}

void ASSIGNMENT_VIEW::remove_rows()
{
    m_assignments->remove(get_selected_rows());
}

void ASSIGNMENT_VIEW::copy_rows()
{
    QModelIndexList indexes;
    const QVector<int> rows = get_selected_rows();
    for (const int row : rows)
        indexes.append(m_assignments->index(row, ASSIGNMENT_MODEL::COLUMN_TO));
    if (QMimeData* const copied = m_assignments->mimeData(indexes))
        TOLV_DATA_TRANSFER_MANAGER::get_instance()->inserting_to_clipboard(copied);
}

void ASSIGNMENT_VIEW::paste_rows()
{
    const QVector<int> rows = get_selected_rows();
    const int row = rows.isEmpty() ? m_assignments->rowCount() : rows.constLast() + 1;
    paste(TOLV_DATA_TRANSFER_MANAGER::get_instance()->get_mime_data_from_clipboard(), row);
}

void ASSIGNMENT_VIEW::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        copy_rows();
    else if (event->matches(QKeySequence::Paste))
        paste_rows();
    else if (event->matches(QKeySequence::Delete))
        remove_rows();
    else if (event->matches(QKeySequence::Undo))
        m_assignments->undo();
    else if (event->matches(QKeySequence::Redo))
        m_assignments->redo();
    else
        TOLV_TREE_VIEW::keyPressEvent(event);
}

void ASSIGNMENT_VIEW::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu menu;
    menu.addActions(actions());
    menu.exec(event->globalPos());
}

/// The place that Qt finds for the drop counts, but what cannot be read is told.
void ASSIGNMENT_VIEW::dropEvent(QDropEvent* event)
{
    const QModelIndex at = indexAt(event->pos());
    int row = at.isValid() ? at.row() : m_assignments->rowCount();
    if (at.isValid() && event->pos().y() > visualRect(at).center().y())
        ++row;
    if (m_assignments->canDropMimeData(event->mimeData(), event->dropAction(), row, 0, QModelIndex()) &&
        paste(event->mimeData(), row))
        event->acceptProposedAction();
    else
        event->ignore();
    stopAutoScroll();
    setState(NoState);
    viewport()->update();
}

void ASSIGNMENT_VIEW::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    TOLV_TREE_VIEW::selectionChanged(selected, deselected);
    emit selection_changed();
}

void ASSIGNMENT_VIEW::set_first_widths()
{
    const int character = fontMetrics().averageCharWidth();
    const int widths[] = {48, 24, 24, 12};
    for (int column = 0; column < ASSIGNMENT_MODEL::COLUMN_COUNT; ++column)
        setColumnWidth(column, character * widths[column]);
}

/// Chooses the rows that have come.
bool ASSIGNMENT_VIEW::paste(const QMimeData* pasted, int row)
{
    int left_out = 0;
    const int count = m_assignments->paste(pasted, row, &left_out);
    if (count == 0)
    {
        emit complained(tr("There is nothing among the pasted data that can be assigned to"));
        return false;
    }
    if (left_out > 0)
        emit complained(tr("No more than %1 rows are pasted at once; %2 were left out")
                            .arg(QLocale().toString(count), QLocale().toString(left_out)));
    const QModelIndex first = m_assignments->index(row, ASSIGNMENT_MODEL::COLUMN_TO);
    const QModelIndex last = m_assignments->index(row + count - 1, ASSIGNMENT_MODEL::COLUMN_ENABLED);
    setCurrentIndex(first);
    selectionModel()->select(QItemSelection(first, last), QItemSelectionModel::ClearAndSelect);
    scrollTo(last);
    scrollTo(first);
    return true;
}
