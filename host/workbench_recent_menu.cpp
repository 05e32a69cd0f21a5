#include "workbench_recent_menu.h"

#include "fio.h"
#include "tolv_create_action.h"
#include "tolv_global.h"
#include "tolv_icon.h"
#include "workbench_recent_files.h"

#include <QAction>
#include <QFile>
#include <QMenu>

namespace
{
constexpr int LARGEST_WIDTH = 80; // of a path, in characters
}

WORKBENCH_RECENT_MENU::WORKBENCH_RECENT_MENU(QMenu* menu) : QObject(menu), m_menu(menu)
{
    menu->setTitle(QString::fromLatin1(tolv_get_menu_text(TOLV_RECENT_FILES_ACTION)));
    menu->menuAction()->setStatusTip(QString::fromLatin1(tolv_get_statustip(TOLV_RECENT_FILES_ACTION)));
    TOLV_SAFE_CONNECT(menu, SIGNAL(aboutToShow()), this, SLOT(fill()));
}

void WORKBENCH_RECENT_MENU::fill()
{
    m_menu->clear();
    const QStringList files = WORKBENCH_RECENT_FILES::get();
    for (int i = 0; i < files.size(); ++i)
        add_file(i + 1, files[i]);
    if (files.isEmpty())
    {
        QAction* const none = tolv_create_action(TOLV_NO_RECENT_FILES_ACTION, m_menu);
        none->setEnabled(false);
        m_menu->addAction(none);
    }
    m_menu->addSeparator();
    QAction* const clear = tolv_create_action(TOLV_CLEAR_RECENT_FILES_ACTION, m_menu);
    clear->setEnabled(!files.isEmpty());
    TOLV_SAFE_CONNECT(clear, SIGNAL(triggered()), this, SLOT(clear_list()));
    m_menu->addAction(clear);
}

void WORKBENCH_RECENT_MENU::choose()
{
    const auto* const action = qobject_cast<QAction*>(sender());
    if (action != nullptr)
        emit file_chosen(action->data().toString());
}

void WORKBENCH_RECENT_MENU::clear_list()
{
    WORKBENCH_RECENT_FILES::clear();
}

void WORKBENCH_RECENT_MENU::add_file(int number, const QString& file)
{
    const QFontMetrics metrics = m_menu->fontMetrics();
    QString shown = metrics.elidedText(file, Qt::ElideMiddle, metrics.averageCharWidth() * LARGEST_WIDTH);
    shown.replace(QLatin1Char('&'), QStringLiteral("&&"));
    const QByteArray name = QFile::encodeName(file);
    QAction* const action =
        m_menu->addAction(tolv_get_file_type_icon(fio_get_file_type(std::string(name.constData(), name.size()))),
                          QStringLiteral("&%1  %2").arg(number).arg(shown));
    action->setData(file);
    action->setStatusTip(file);
    TOLV_SAFE_CONNECT(action, SIGNAL(triggered()), this, SLOT(choose()));
}
