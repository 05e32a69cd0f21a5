#pragma once

#include "module_export.h"

#include "tolv_dock_widget.h"

#include <QStandardItemModel>

class QTreeView;
class TOLV_MAIN_WINDOW;

/// The window of running and finished tasks: a row for each, with its state, a progress bar and the time it took. A tool
/// reports by the slot, by name.
class STATUS_DOCK : public TOLV_DOCK_WIDGET
{
    Q_OBJECT

public:
    enum COLUMN_NUMBER
    {
        COLUMN_TASK,
        COLUMN_PROGRESS,
        COLUMN_STATE,
        COLUMN_TIME,
        COLUMN_COUNT
    };

    explicit STATUS_DOCK(QWidget* parent);

public slots:
    /// Says how a task stands; a name that is new makes a row, and one that begins again starts its time anew.
    /// @param percent 0 to 100; what lies outside counts as the nearer end
    /// @param state   a word for the user: "Running", "Done", "Failed"
    void set_task(const QString& name, int percent, const QString& state);
    void clear();

private:
    QStandardItemModel m_model;
    QTreeView* m_view;
};

MODULE_EXPORT TOLV_DOCK_WIDGET* mod_status_create_dock_widget(TOLV_MAIN_WINDOW* main_window);
