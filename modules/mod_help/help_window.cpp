#include "help_window.h"

#include "tolv_global.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStatusBar>
#include <QStyle>
#include <QTextBrowser>
#include <QToolBar>
#include <QVBoxLayout>

HELP_WINDOW::HELP_WINDOW(QWidget* parent)
    : QMainWindow(parent), m_browser(new QTextBrowser(this)), m_search_line(new QLineEdit(this)),
      m_list(new QListWidget(this))
{
    setObjectName(QStringLiteral("help_window"));
    setWindowTitle(tr("Norvane Help"));
    setAttribute(Qt::WA_DeleteOnClose);
    resize(880, 620);
    m_browser->setObjectName(QStringLiteral("help_page"));
    m_browser->setAccessibleName(tr("Help page"));
    m_browser->document()->setDocumentMargin(16);
    create_tool_bar();
    create_list();
    TOLV_SAFE_CONNECT(m_browser, SIGNAL(sourceChanged(QUrl)), this, SLOT(mark_page()));
}

HELP_WINDOW& HELP_WINDOW::get()
{
    static QPointer<HELP_WINDOW> window;
    if (window == nullptr)
    {
        window = new HELP_WINDOW;
        TOLV_SAFE_CONNECT(QCoreApplication::instance(), SIGNAL(aboutToQuit()), window.data(), SLOT(close()));
    }
    return *window;
}

void HELP_WINDOW::create_tool_bar()
{
    QToolBar* const bar = addToolBar(tr("Navigation"));
    bar->setObjectName(QStringLiteral("help_tool_bar"));
    bar->setMovable(false);
    QAction* const back = bar->addAction(style()->standardIcon(QStyle::SP_ArrowBack), tr("Back"));
    back->setShortcut(QKeySequence::Back);
    back->setEnabled(false);
    TOLV_SAFE_CONNECT(back, SIGNAL(triggered()), m_browser, SLOT(backward()));
    TOLV_SAFE_CONNECT(m_browser, SIGNAL(backwardAvailable(bool)), back, SLOT(setEnabled(bool)));
    QAction* const forward = bar->addAction(style()->standardIcon(QStyle::SP_ArrowForward), tr("Forward"));
    forward->setShortcut(QKeySequence::Forward);
    forward->setEnabled(false);
    TOLV_SAFE_CONNECT(forward, SIGNAL(triggered()), m_browser, SLOT(forward()));
    TOLV_SAFE_CONNECT(m_browser, SIGNAL(forwardAvailable(bool)), forward, SLOT(setEnabled(bool)));
    QAction* const home = bar->addAction(style()->standardIcon(QStyle::SP_DirHomeIcon), tr("Contents"));
    TOLV_SAFE_CONNECT(home, SIGNAL(triggered()), m_browser, SLOT(home()));
}

void HELP_WINDOW::create_list()
{
    auto* const left = new QWidget(this);
    auto* const layout = new QVBoxLayout(left);
    layout->setContentsMargins(4, 4, 0, 4);
    layout->setSpacing(4);
    layout->addWidget(m_search_line);
    layout->addWidget(m_list);
    m_search_line->setObjectName(QStringLiteral("help_search"));
    m_search_line->setPlaceholderText(tr("Search the help"));
    m_search_line->setAccessibleName(tr("Search the help"));
    m_search_line->setClearButtonEnabled(true);
    m_list->setObjectName(QStringLiteral("help_pages"));
    m_list->setAccessibleName(tr("Pages of the help"));
    auto* const splitter = new QSplitter(this);
    splitter->addWidget(left);
    splitter->addWidget(m_browser);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({220, 660});
    setCentralWidget(splitter);
    search(QString());
    TOLV_SAFE_CONNECT(m_search_line, SIGNAL(textChanged(QString)), this, SLOT(search(QString)));
    TOLV_SAFE_CONNECT(m_list, SIGNAL(itemSelectionChanged()), this, SLOT(open_chosen_page()));
}

void HELP_WINDOW::show_topic(const QString& topic)
{
    const HELP_TOPICS::PAGE* const page = HELP_TOPICS::find(topic);
    m_search_line->clear();
    m_browser->setSource(QUrl(HELP_TOPICS::get_url(page != nullptr ? *page : HELP_TOPICS::get_pages().constFirst())));
    mark_page();
    if (page == nullptr && !topic.trimmed().isEmpty())
        statusBar()->showMessage(tr("Nothing is written about \"%1\" yet.").arg(topic.simplified()));
    else
        statusBar()->clearMessage();
    show();
    raise();
    activateWindow();
}

void HELP_WINDOW::search(const QString& text)
{
    {
        const QSignalBlocker blocker(m_list);
        m_list->clear();
        for (const HELP_TOPICS::PAGE* page : HELP_TOPICS::search(text))
        {
            auto* const item = new QListWidgetItem(page->title, m_list);
            item->setData(Qt::UserRole, HELP_TOPICS::get_url(*page));
        }
    }
    mark_page();
}

void HELP_WINDOW::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QMainWindow::keyPressEvent(event);
}

void HELP_WINDOW::open_chosen_page()
{
    const QList<QListWidgetItem*> chosen = m_list->selectedItems();
    if (!chosen.isEmpty())
        m_browser->setSource(QUrl(chosen.constFirst()->data(Qt::UserRole).toString()));
}

/// The list shows which page is open, whatever way led there.
void HELP_WINDOW::mark_page()
{
    const QSignalBlocker blocker(m_list);
    m_list->setCurrentItem(nullptr);
    for (int i = 0; i < m_list->count(); ++i)
    {
        if (QUrl(m_list->item(i)->data(Qt::UserRole).toString()) == m_browser->source())
            m_list->setCurrentRow(i);
    }
}
