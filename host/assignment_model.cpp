#include "assignment_model.h"

#include "tolv_data_transfer_manager.h"
#include "tolv_instance_name.h"

#include <QMimeData>

#include <algorithm>

namespace
{
const int LARGEST_UNDO = 100;          ///< changes that can be undone
const int LARGEST_UNDO_ROWS = 1000000; ///< rows that are kept for it

const char* const ASSIGNMENT_FORMAT = "application/x-norvane_assignment_list_data";
const char* const INSTANCE_FORMAT = "application/x-norvane_instance_name_list_data";

/// A damaged payload gives records with nothing in them.
bool is_empty(const TOLV_ASSIGNMENT& assignment)
{
    return assignment.m_field_1.isEmpty() && assignment.m_field_2.isEmpty() && assignment.m_field_3.isEmpty() &&
           assignment.m_field_4.isEmpty() && assignment.m_field_5.isEmpty() && assignment.m_field_6.isEmpty() &&
           assignment.m_field_7.isEmpty();
}

/// Texts of a row are one line each.
QString make_line(QString text)
{
    for (QChar& character : text)
    {
        if (character.unicode() < ' ')
            character = QLatin1Char(' ');
    }
    return text;
}

void make_lines(TOLV_ASSIGNMENT* assignment)
{
    for (QString* text : {&assignment->m_field_1, &assignment->m_field_2, &assignment->m_field_3})
        *text = make_line(*text);
}
} // namespace

ASSIGNMENT_MODEL::ASSIGNMENT_MODEL(QObject* parent) : QAbstractTableModel(parent)
{
}

ASSIGNMENT_MODEL::~ASSIGNMENT_MODEL() = default;

void ASSIGNMENT_MODEL::set_assignments(const TOLV_ASSIGNMENT_LIST& assignments)
{
    beginResetModel();
    m_rows = assignments.get_list();
    m_undo.clear();
    m_redo.clear();
    m_is_modified = false;
    endResetModel();
    emit changed();
}

TOLV_ASSIGNMENT_LIST ASSIGNMENT_MODEL::get_assignments() const
{
    TOLV_ASSIGNMENT_LIST assignments;
    for (const TOLV_ASSIGNMENT& row : m_rows)
        assignments.insert(row);
    return assignments;
}

bool ASSIGNMENT_MODEL::is_modified() const
{
    return m_is_modified;
}

void ASSIGNMENT_MODEL::set_saved()
{
    m_is_modified = false;
    emit changed();
}

int ASSIGNMENT_MODEL::paste(const QMimeData* pasted, int row, int* left_out)
{
    ROWS rows = read(pasted);
    const int more = std::max(0, rows.size() - LARGEST_PASTE);
    if (left_out != nullptr)
        *left_out = more;
    if (more > 0)
        rows = rows.mid(0, LARGEST_PASTE);
    if (rows.isEmpty())
        return 0;
    row = row < 0 || row > m_rows.size() ? m_rows.size() : row;
    remember();
    beginInsertRows(QModelIndex(), row, row + rows.size() - 1);
    m_rows = m_rows.mid(0, row) + rows + m_rows.mid(row);
    endInsertRows();
    emit changed();
    return rows.size();
}

void ASSIGNMENT_MODEL::remove(const QVector<int>& rows)
{
    QVector<int> order;
    for (const int row : rows)
    {
        if (row >= 0 && row < m_rows.size())
            order.append(row);
    }
    std::sort(order.begin(), order.end());
    order.erase(std::unique(order.begin(), order.end()), order.end());
    if (order.isEmpty())
        return;
    remember();
    while (!order.isEmpty()) // run by run, from the end
    {
        const int last = order.takeLast();
        int first = last;
        while (!order.isEmpty() && order.constLast() == first - 1)
            first = order.takeLast();
        beginRemoveRows(QModelIndex(), first, last);
        m_rows.erase(m_rows.begin() + first, m_rows.begin() + last + 1);
        endRemoveRows();
    }
    emit changed();
}

bool ASSIGNMENT_MODEL::can_undo() const
{
    return !m_undo.isEmpty();
}

bool ASSIGNMENT_MODEL::can_redo() const
{
    return !m_redo.isEmpty();
}

int ASSIGNMENT_MODEL::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

int ASSIGNMENT_MODEL::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : COLUMN_COUNT;
}

Qt::ItemFlags ASSIGNMENT_MODEL::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    const Qt::ItemFlags flags =
        Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
    return flags | (index.column() == COLUMN_ENABLED ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
}

QVariant ASSIGNMENT_MODEL::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return QVariant();
    const TOLV_ASSIGNMENT& row = m_rows.at(index.row());
    if (role == Qt::CheckStateRole && index.column() == COLUMN_ENABLED)
        return row.m_flag ? Qt::Checked : Qt::Unchecked;
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return QVariant();
    switch (index.column())
    {
    case COLUMN_TO:
        return row.m_field_1;
    case COLUMN_NAME:
        return row.m_field_2;
    case COLUMN_VALUE:
        return row.m_field_3;
    case COLUMN_ENABLED:
        return role == Qt::DisplayRole ? QVariant(row.m_flag ? tr("on") : tr("off")) : QVariant();
    default:
        return QVariant();
    }
}

bool ASSIGNMENT_MODEL::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const bool is_check = role == Qt::CheckStateRole && index.column() == COLUMN_ENABLED;
    if (!index.isValid() || (!is_check && (role != Qt::EditRole || index.column() == COLUMN_ENABLED)))
        return false;
    if (is_check ? data(index, role) == value : data(index, role).toString() == make_line(value.toString()))
        return true; // nothing to undo
    remember();
    if (is_check)
        m_rows[index.row()].m_flag = value.toInt() == Qt::Checked;
    else
        *get_text(index.row(), index.column()) = make_line(value.toString());
    emit dataChanged(index, index);
    emit changed();
    return true;
}

QVariant ASSIGNMENT_MODEL::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const char* const titles[] = {QT_TR_NOOP("To"), QT_TR_NOOP("Assignment"), QT_TR_NOOP("Value"),
                                         QT_TR_NOOP("Enabled")};
    if (orientation != Qt::Horizontal || section < 0 || section >= COLUMN_COUNT)
        return QVariant();
    if (role == Qt::DisplayRole)
        return tr(titles[section]);
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignVCenter | Qt::AlignLeft);
    return QVariant();
}

bool ASSIGNMENT_MODEL::insertRows(int row, int count, const QModelIndex& parent)
{
    if (parent.isValid() || row < 0 || row > m_rows.size() || count < 1 || count > LARGEST_PASTE)
        return false;
    remember();
    beginInsertRows(QModelIndex(), row, row + count - 1);
    for (int i = 0; i < count; ++i)
        m_rows.insert(row, TOLV_ASSIGNMENT());
    endInsertRows();
    emit changed();
    return true;
}

bool ASSIGNMENT_MODEL::removeRows(int row, int count, const QModelIndex& parent)
{
    if (parent.isValid() || row < 0 || count < 1 || row > m_rows.size() - count)
        return false;
    QVector<int> rows;
    for (int i = 0; i < count; ++i)
        rows.append(row + i);
    remove(rows);
    return true;
}

QStringList ASSIGNMENT_MODEL::mimeTypes() const
{
    return {QString::fromLatin1(ASSIGNMENT_FORMAT), QString::fromLatin1(INSTANCE_FORMAT), QStringLiteral("text/plain")};
}

QMimeData* ASSIGNMENT_MODEL::mimeData(const QModelIndexList& indexes) const
{
    QVector<int> rows;
    for (const QModelIndex& index : indexes)
    {
        if (index.isValid())
            rows.append(index.row());
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    if (rows.isEmpty())
        return nullptr;
    QString text;
    TOLV_ASSIGNMENT_LIST assignments;
    for (const int at : qAsConst(rows))
    {
        const TOLV_ASSIGNMENT& row = m_rows.at(at);
        assignments.insert(row);
        const QString state = row.m_flag ? QStringLiteral("on") : QStringLiteral("off");
        text +=
            QStringList{row.m_field_1, row.m_field_2, row.m_field_3, state}.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    TOLV_DATA_TRANSFER_MANAGER* const manager = TOLV_DATA_TRANSFER_MANAGER::get_instance();
    manager->create_mime_data();
    manager->add_text_format(text);
    manager->add_assignment_list_format(assignments);
    return manager->get_mime_data();
}

bool ASSIGNMENT_MODEL::canDropMimeData(const QMimeData* dropped, Qt::DropAction action, int, int,
                                       const QModelIndex&) const
{
    if (dropped == nullptr || action != Qt::CopyAction)
        return false;
    return dropped->hasFormat(QString::fromLatin1(ASSIGNMENT_FORMAT)) ||
           dropped->hasFormat(QString::fromLatin1(INSTANCE_FORMAT)) || (dropped->hasText() && !dropped->hasUrls());
}

bool ASSIGNMENT_MODEL::dropMimeData(const QMimeData* dropped, Qt::DropAction action, int row, int column,
                                    const QModelIndex& parent)
{
    if (!canDropMimeData(dropped, action, row, column, parent))
        return false;
    return paste(dropped, row < 0 && parent.isValid() ? parent.row() : row) > 0;
}

Qt::DropActions ASSIGNMENT_MODEL::supportedDropActions() const
{
    return Qt::CopyAction;
}

void ASSIGNMENT_MODEL::undo()
{
    replace_by(&m_undo, &m_redo);
}

void ASSIGNMENT_MODEL::redo()
{
    replace_by(&m_redo, &m_undo);
}

/// What other tools write is not to be trusted: payloads end in the middle, or hold anything.
ASSIGNMENT_MODEL::ROWS ASSIGNMENT_MODEL::read(const QMimeData* pasted)
{
    ROWS rows;
    if (pasted == nullptr)
        return rows;
    const TOLV_DATA_TRANSFER_MANAGER& manager = *TOLV_DATA_TRANSFER_MANAGER::get_instance();
    const auto assignments = manager.get_assignment_list_transfer_data(pasted).value<TOLV_ASSIGNMENT_LIST>();
    for (TOLV_ASSIGNMENT assignment : assignments.get_list())
    {
        if (is_empty(assignment))
            continue;
        make_lines(&assignment);
        rows.append(assignment);
    }
    if (!rows.isEmpty())
        return rows;
    const auto names = manager.get_instance_name_list_transfer_data(pasted).value<TOLV_INSTANCE_NAME_LIST>();
    for (const TOLV_INSTANCE_NAME& name : names.get_list())
    {
        TOLV_ASSIGNMENT assignment;
        assignment.m_field_1 = make_line(QString::fromLocal8Bit(name.m_name.data(), int(name.m_name.size())));
        if (!assignment.m_field_1.isEmpty())
            rows.append(assignment);
    }
    if (rows.isEmpty() && pasted->hasText() && !pasted->hasUrls())
        rows = read_text(pasted->text());
    return rows;
}

ASSIGNMENT_MODEL::ROWS ASSIGNMENT_MODEL::read_text(const QString& text)
{
    ROWS rows;
    const QStringList lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : lines)
    {
        const QStringList texts = line.split(QLatin1Char('\t'));
        TOLV_ASSIGNMENT assignment;
        assignment.m_field_1 = texts.value(COLUMN_TO).trimmed();
        assignment.m_field_2 = texts.value(COLUMN_NAME).trimmed();
        assignment.m_field_3 = texts.value(COLUMN_VALUE).trimmed();
        assignment.m_flag = texts.value(COLUMN_ENABLED).trimmed() != QLatin1String("off");
        make_lines(&assignment);
        if (!is_empty(assignment))
            rows.append(assignment);
    }
    return rows;
}

QString* ASSIGNMENT_MODEL::get_text(int row, int column)
{
    TOLV_ASSIGNMENT& assignment = m_rows[row];
    return column == COLUMN_TO     ? &assignment.m_field_1
           : column == COLUMN_NAME ? &assignment.m_field_2
                                   : &assignment.m_field_3;
}

/// A change is about to be made. The tables that are kept share their rows' memory.
void ASSIGNMENT_MODEL::remember()
{
    m_redo.clear();
    m_undo.append(m_rows);
    m_is_modified = true;
    int row_count = 0;
    int kept = 0;
    while (kept < m_undo.size() && kept < LARGEST_UNDO)
    {
        row_count += m_undo.at(m_undo.size() - 1 - kept).size();
        if (kept > 0 && row_count > LARGEST_UNDO_ROWS)
            break;
        ++kept;
    }
    m_undo.remove(0, m_undo.size() - kept);
}

/// Takes the table from one stack and puts the present one on the other.
void ASSIGNMENT_MODEL::replace_by(QVector<ROWS>* stack, QVector<ROWS>* others)
{
    if (stack->isEmpty())
        return;
    beginResetModel();
    others->append(m_rows);
    m_rows = stack->takeLast();
    m_is_modified = true;
    endResetModel();
    emit changed();
}
