#include "mod_console.h"

#include "console_view.h"
#include "tcl_session.h"

#include "tolv_global.h"
#include "tolv_main_window.h"
#include "xtcl.h"

#include <QDir>
#include <QFileSystemWatcher>
#include <QHBoxLayout>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

CONSOLE_DOCK::CONSOLE_DOCK(QWidget* parent)
    : TOLV_DOCK_WIDGET(tr("Tcl Console"), parent), m_view(new CONSOLE_VIEW(this))
{
    setObjectName(QStringLiteral("console_dock"));
    setWidget(m_view);
    setFocusProxy(m_view);
    auto* const menu = new QMenu(this);
    QAction* const clear_all = menu->addAction(tr("C&lear"));
    TOLV_SAFE_CONNECT(clear_all, SIGNAL(triggered()), this, SLOT(clear()));
    set_menu(menu);
}

void CONSOLE_DOCK::scroll_to_bottom() const
{
    m_view->scroll_to_bottom();
}

void CONSOLE_DOCK::run(const QString& command)
{
    m_view->run(command);
}

void CONSOLE_DOCK::clear()
{
    m_view->clear();
}

TCL_SCRIPTS_DOCK::TCL_SCRIPTS_DOCK(QWidget* parent)
    : TOLV_DOCK_WIDGET(tr("Tcl Scripts"), parent), m_session(new TCL_SESSION(this)), m_list(new QListWidget(this)),
      m_run_button(new QPushButton(tr("&Run"), this)), m_watcher(new QFileSystemWatcher(this))
{
    setObjectName(QStringLiteral("tcl_scripts_dock"));
    auto* const content = new QWidget(this);
    auto* const layout = new QVBoxLayout(content);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(m_list);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_run_button);
    layout->addLayout(buttons);
    m_list->setObjectName(QStringLiteral("scripts"));
    m_list->setAccessibleName(tr("Tcl scripts"));
    m_run_button->setObjectName(QStringLiteral("run_script"));
    setWidget(content);
    setFocusProxy(m_list);
    TOLV_SAFE_CONNECT(m_list, SIGNAL(itemActivated(QListWidgetItem*)), this, SLOT(run_selected()));
    TOLV_SAFE_CONNECT(m_list, SIGNAL(itemSelectionChanged()), this, SLOT(update_button()));
    TOLV_SAFE_CONNECT(m_run_button, SIGNAL(clicked()), this, SLOT(run_selected()));
    TOLV_SAFE_CONNECT(m_watcher, SIGNAL(directoryChanged(QString)), this, SLOT(refresh()));
    set_folder(QDir::currentPath());
}

void TCL_SCRIPTS_DOCK::set_folder(const QString& folder)
{
    const QStringList watched = m_watcher->directories();
    if (!watched.isEmpty())
        m_watcher->removePaths(watched);
    m_folder = QDir(folder).absolutePath();
    if (QDir(m_folder).exists())
        m_watcher->addPath(m_folder);
    refresh();
}

void TCL_SCRIPTS_DOCK::refresh()
{
    const QString chosen = m_list->currentItem() != nullptr ? m_list->currentItem()->text() : QString();
    m_list->clear();
    m_list->addItems(QDir(m_folder).entryList({QStringLiteral("*.tcl")}, QDir::Files | QDir::Readable, QDir::Name));
    const QList<QListWidgetItem*> same = m_list->findItems(chosen, Qt::MatchExactly);
    if (!same.isEmpty())
        m_list->setCurrentItem(same.constFirst());
    update_button();
}

void TCL_SCRIPTS_DOCK::update_button()
{
    m_run_button->setEnabled(m_list->currentItem() != nullptr);
}

void TCL_SCRIPTS_DOCK::run_selected()
{
    if (m_list->currentItem() == nullptr)
        return;
    const QString file = QDir(m_folder).filePath(m_list->currentItem()->text());
    const std::string quoted = xtcl_transform_string(file.toStdString());
    const TCL_SESSION::RESULT result =
        m_session->evaluate(QStringLiteral("source \"%1\"").arg(QString::fromStdString(quoted)));
    emit script_finished(file, result.is_ok, result.text);
}

TOLV_DOCK_WIDGET* mod_console_create_dock_widget(TOLV_MAIN_WINDOW* main_window)
{
    return new CONSOLE_DOCK(main_window);
}

TOLV_DOCK_WIDGET* mod_console_tcl_scripts_create_dock_widget(TOLV_MAIN_WINDOW* main_window)
{
    return new TCL_SCRIPTS_DOCK(main_window);
}
