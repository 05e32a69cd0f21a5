#include "workbench_constraints.h"

#include "assignment_file.h"
#include "assignment_model.h"
#include "assignment_view.h"

#include "tolv_create_action.h"
#include "tolv_global.h"
#include "tolv_icon.h"
#include "tolv_tool_bar.h"

#include <QAction>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>
#include <QVBoxLayout>

namespace
{
/// The file that belongs to a design.
QString get_file_beside(const QString& design)
{
    const QFileInfo info(design);
    return info.path() + QLatin1Char('/') + info.completeBaseName() + QStringLiteral(".constraints");
}
} // namespace

WORKBENCH_CONSTRAINTS::WORKBENCH_CONSTRAINTS(QWidget* window)
    : QObject(window), m_window(window), m_model(new ASSIGNMENT_MODEL(this)), m_panel(new QWidget(window)),
      m_view(new ASSIGNMENT_VIEW(m_model, m_panel)),
      m_save(new QAction(tolv_get_icon(TOLV_CONSTRAINT_FILE_ICON), tr("&Save Constraints"), this))
{
    m_panel->setObjectName(QStringLiteral("assignment_panel"));
    auto* const bar = new TOLV_TOOL_BAR(tr("Assignments"), m_panel);
    bar->setObjectName(QStringLiteral("assignment_tool_bar"));
    bar->setIconSize(QSize(16, 16)); // the table needs the height
    auto* const add = new QAction(tolv_get_icon(TOLV_ASSIGNMENT_ADD_ICON), tr("&Add Assignment"), m_view);
    auto* const remove = new QAction(tolv_get_icon(TOLV_ASSIGNMENT_REMOVE_ICON), tr("&Remove Assignments"), m_view);
    add->setToolTip(tr("Adds a row behind the current one"));
    remove->setToolTip(tr("Removes the selected rows (Del)"));
    bar->addAction(add_action(add, QStringLiteral("add_assignment"), SLOT(add_row())));
    bar->addAction(m_remove = add_action(remove, QStringLiteral("remove_assignments"), SLOT(remove_rows())));
    bar->addSeparator();
    // The keys are the table's: another window may have the same ones.
    const auto create = [this](TOLV_ACTION_ENUM command)
    {
        QAction* const action = tolv_create_action(command, m_view);
        action->setShortcut(QKeySequence());
        return action;
    };
    m_copy = add_action(create(TOLV_COPY_ACTION), QStringLiteral("copy_assignments"), SLOT(copy_rows()));
    QAction* const paste =
        add_action(create(TOLV_PASTE_ACTION), QStringLiteral("paste_assignments"), SLOT(paste_rows()));
    m_undo = create(TOLV_UNDO_ACTION);
    m_redo = create(TOLV_REDO_ACTION);
    m_undo->setObjectName(QStringLiteral("undo_assignments"));
    m_redo->setObjectName(QStringLiteral("redo_assignments"));
    TOLV_SAFE_CONNECT(m_undo, SIGNAL(triggered()), m_model, SLOT(undo()));
    TOLV_SAFE_CONNECT(m_redo, SIGNAL(triggered()), m_model, SLOT(redo()));
    m_view->addActions({m_undo, m_redo});
    bar->addActions({m_copy, paste});
    bar->addSeparator();
    bar->addActions({m_undo, m_redo});
    bar->addSeparator();
    m_save->setObjectName(QStringLiteral("save_constraints"));
    bar->addAction(m_save);
    auto* const layout = new QVBoxLayout(m_panel);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(bar);
    layout->addWidget(m_view);
    m_panel->setFocusProxy(m_view);
    TOLV_SAFE_CONNECT(m_save, SIGNAL(triggered()), this, SLOT(save()));
    TOLV_SAFE_CONNECT(m_model, SIGNAL(changed()), this, SLOT(update_actions()));
    TOLV_SAFE_CONNECT(m_view, SIGNAL(selection_changed()), this, SLOT(update_actions()));
    TOLV_SAFE_CONNECT(m_view, SIGNAL(complained(QString)), this, SIGNAL(warned(QString)));
    update_actions();
}

WORKBENCH_CONSTRAINTS::~WORKBENCH_CONSTRAINTS()
{
    delete m_panel.data(); // before the model that it shows
}

ASSIGNMENT_MODEL* WORKBENCH_CONSTRAINTS::get_model() const
{
    return m_model;
}

QWidget* WORKBENCH_CONSTRAINTS::get_panel() const
{
    return m_panel;
}

void WORKBENCH_CONSTRAINTS::fill_menu(QMenu* menu)
{
    QAction* const open = menu->addAction(tr("Open &Constraints..."));
    open->setObjectName(QStringLiteral("open_constraints"));
    open->setStatusTip(tr("Reads the assignments of the design from a file"));
    TOLV_SAFE_CONNECT(open, SIGNAL(triggered()), this, SLOT(ask_for_file()));
    m_save->setStatusTip(tr("Writes the assignments of the design to their file"));
    menu->addAction(m_save);
    QAction* const save_as_action = menu->addAction(tr("Save Constraints &As..."));
    save_as_action->setObjectName(QStringLiteral("save_constraints_as"));
    save_as_action->setStatusTip(tr("Writes the assignments of the design to another file"));
    TOLV_SAFE_CONNECT(save_as_action, SIGNAL(triggered()), this, SLOT(save_as()));
}

void WORKBENCH_CONSTRAINTS::set_design(const QString& file)
{
    if (file == m_design)
        return;
    if (m_model->is_modified())
    {
        if (m_design.isEmpty())
            m_design = file; // they were made for it, before it was opened
        else
            emit noted(tr("The assignments are those of the design before, and not saved yet"));
        return;
    }
    m_design = file;
    m_model->set_assignments(TOLV_ASSIGNMENT_LIST());
    m_file.clear();
    if (!m_design.isEmpty() && QFileInfo::exists(get_file_beside(m_design)))
        open_file(get_file_beside(m_design));
}

bool WORKBENCH_CONSTRAINTS::open_file(const QString& file)
{
    TOLV_ASSIGNMENT_LIST assignments;
    const QString error = assignment_file_read(file, &assignments);
    if (!error.isEmpty())
    {
        emit failed(error);
        return false;
    }
    m_file = file;
    m_model->set_assignments(assignments);
    emit noted(tr("Opened %1, assignments: %2")
                   .arg(QFileInfo(file).fileName(), QString::number(assignments.get_list().size())));
    return true;
}

const QString& WORKBENCH_CONSTRAINTS::get_file() const
{
    return m_file;
}

bool WORKBENCH_CONSTRAINTS::confirm_close()
{
    if (!m_model->is_modified())
        return true;
    QMessageBox box(QMessageBox::Question, tr("Norvane Workbench"), tr("The assignments have been changed."),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, m_window);
    box.setObjectName(QStringLiteral("save_constraints_box"));
    box.setInformativeText(tr("Do you want to save them?"));
    box.setDefaultButton(QMessageBox::Save);
    const int answer = box.exec();
    return answer == QMessageBox::Discard || (answer == QMessageBox::Save && save());
}

bool WORKBENCH_CONSTRAINTS::save()
{
    if (!m_file.isEmpty())
        return save_to(m_file);
    // A file that this table was not read from is not overwritten without a question.
    const bool is_free = !m_design.isEmpty() && !QFileInfo::exists(get_file_beside(m_design));
    return is_free ? save_to(get_file_beside(m_design)) : save_as();
}

bool WORKBENCH_CONSTRAINTS::save_as()
{
    const QString start = !m_file.isEmpty() ? m_file : !m_design.isEmpty() ? get_file_beside(m_design) : QString();
    const QString file = QFileDialog::getSaveFileName(m_window, tr("Save Constraints"), start,
                                                      tr("Constraints (*.constraints);;All files (*)"));
    return !file.isEmpty() && save_to(file);
}

void WORKBENCH_CONSTRAINTS::ask_for_file()
{
    if (!confirm_close())
        return;
    const QString start = !m_file.isEmpty() ? m_file : QFileInfo(m_design).path();
    const QString file = QFileDialog::getOpenFileName(m_window, tr("Open Constraints"), start,
                                                      tr("Constraints (*.constraints);;All files (*)"));
    if (!file.isEmpty())
        open_file(file);
}

void WORKBENCH_CONSTRAINTS::update_actions()
{
    const bool has_selection = m_view->selectionModel()->hasSelection();
    m_remove->setEnabled(has_selection);
    m_copy->setEnabled(has_selection);
    m_undo->setEnabled(m_model->can_undo());
    m_redo->setEnabled(m_model->can_redo());
    m_save->setEnabled(m_model->is_modified());
}

/// Adds a command of the table to its menu.
QAction* WORKBENCH_CONSTRAINTS::add_action(QAction* action, const QString& object_name, const char* slot)
{
    action->setObjectName(object_name);
    TOLV_SAFE_CONNECT(action, SIGNAL(triggered()), m_view, slot);
    m_view->addAction(action);
    return action;
}

bool WORKBENCH_CONSTRAINTS::save_to(const QString& file)
{
    const QString error = assignment_file_write(file, m_model->get_assignments());
    if (!error.isEmpty())
    {
        emit failed(error);
        return false;
    }
    m_file = file;
    m_model->set_saved();
    emit noted(tr("Saved %1").arg(QFileInfo(file).fileName()));
    return true;
}
