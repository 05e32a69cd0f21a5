#include "mod_status.h"

#include "tolv_main_window.h"

#include <QApplication>
#include <QDateTime>
#include <QHeaderView>
#include <QStyledItemDelegate>
#include <QTreeView>

#include <algorithm>

namespace
{
const int PERCENT_ROLE = Qt::UserRole + 1;
const int START_ROLE = Qt::UserRole + 2; ///< milliseconds since the epoch

class PROGRESS_DELEGATE : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        QStyleOptionViewItem background = option;
        initStyleOption(&background, index);
        background.text.clear();
        QStyle* const style = option.widget != nullptr ? option.widget->style() : QApplication::style();
        style->drawControl(QStyle::CE_ItemViewItem, &background, painter, option.widget);
        QStyleOptionProgressBar bar;
        bar.rect = option.rect.adjusted(2, 2, -2, -2);
        bar.palette = option.palette;
        bar.state = option.state | QStyle::State_Horizontal;
        bar.direction = option.direction;
        bar.fontMetrics = option.fontMetrics;
        bar.minimum = 0;
        bar.maximum = 100;
        bar.progress = index.data(PERCENT_ROLE).toInt();
        bar.text = index.data().toString();
        bar.textAlignment = Qt::AlignCenter;
        bar.textVisible = true;
        style->drawControl(QStyle::CE_ProgressBar, &bar, painter, option.widget);
    }
};

QString get_time_text(qint64 milliseconds)
{
    return STATUS_DOCK::tr("%1 s").arg(double(milliseconds) / 1000, 0, 'f', 1);
}
} // namespace

STATUS_DOCK::STATUS_DOCK(QWidget* parent)
    : TOLV_DOCK_WIDGET(tr("Status"), parent), m_model(0, COLUMN_COUNT), m_view(new QTreeView(this))
{
    setObjectName(QStringLiteral("status_dock"));
    m_model.setHorizontalHeaderLabels({tr("Task"), tr("Progress"), tr("State"), tr("Time")});
    m_view->setObjectName(QStringLiteral("tasks"));
    m_view->setAccessibleName(tr("Tasks"));
    m_view->setModel(&m_model);
    m_view->setRootIsDecorated(false);
    m_view->setUniformRowHeights(true);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_view->setItemDelegateForColumn(COLUMN_PROGRESS, new PROGRESS_DELEGATE(m_view));
    m_view->header()->resizeSection(COLUMN_TASK, 160);
    setWidget(m_view);
    setFocusProxy(m_view);
}

void STATUS_DOCK::set_task(const QString& name, int percent, const QString& state)
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const QList<QStandardItem*> found = m_model.findItems(name, Qt::MatchExactly, COLUMN_TASK);
    const int shown_percent = std::min(std::max(percent, 0), 100);
    int row = found.isEmpty() ? -1 : found.constFirst()->row();
    const bool is_start = row < 0 || shown_percent < m_model.item(row, COLUMN_PROGRESS)->data(PERCENT_ROLE).toInt();
    if (row < 0)
    {
        row = m_model.rowCount();
        m_model.appendRow({new QStandardItem(name), new QStandardItem, new QStandardItem, new QStandardItem});
    }
    QStandardItem* const task = m_model.item(row, COLUMN_TASK);
    if (is_start)
        task->setData(now, START_ROLE);
    QStandardItem* const progress = m_model.item(row, COLUMN_PROGRESS);
    progress->setData(shown_percent, PERCENT_ROLE);
    progress->setText(tr("%1 %").arg(shown_percent));
    m_model.item(row, COLUMN_STATE)->setText(state);
    m_model.item(row, COLUMN_TIME)->setText(get_time_text(now - task->data(START_ROLE).toLongLong()));
    m_view->scrollTo(m_model.index(row, COLUMN_TASK));
}

void STATUS_DOCK::clear()
{
    m_model.removeRows(0, m_model.rowCount());
}

TOLV_DOCK_WIDGET* mod_status_create_dock_widget(TOLV_MAIN_WINDOW* main_window)
{
    return new STATUS_DOCK(main_window);
}
