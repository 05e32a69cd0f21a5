#include "preferences_dialog.h"

#include "preferences_editors.h"
#include "preferences_page.h"
#include "preferences_session.h"
#include "tolv_global.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>
#include <QTabWidget>
#include <QVBoxLayout>

PREFERENCES_DIALOG::PREFERENCES_DIALOG(QWidget* parent)
    : QDialog(parent), m_session(new PREFERENCES_SESSION(this)), m_tabs(new QTabWidget(this)), m_state(new QLabel(this))
{
    setObjectName(QStringLiteral("preferences_dialog"));
    setWindowTitle(tr("Preferences[*]"));
    m_tabs->setObjectName(QStringLiteral("preferences_tabs"));
    m_tabs->setAccessibleName(tr("Pages of the preferences"));
    create_pages();
    m_state->setObjectName(QStringLiteral("state_label"));
    create_buttons();
    auto* const bottom = new QHBoxLayout;
    bottom->addWidget(m_state, 1);
    bottom->addWidget(m_buttons);
    auto* const layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs, 1);
    layout->addLayout(bottom);
    TOLV_SAFE_CONNECT(m_session, SIGNAL(changed()), this, SLOT(show_state()));
    TOLV_SAFE_CONNECT(m_session, SIGNAL(changed()), this, SIGNAL(resources_changed()));
    auto* const find = new QShortcut(QKeySequence::Find, this);
    TOLV_SAFE_CONNECT(find, SIGNAL(activated()), this, SLOT(focus_search()));
    resize(fontMetrics().averageCharWidth() * 138, fontMetrics().height() * 38);
    show_state();
    focus_search();
}

PREFERENCES_DIALOG::~PREFERENCES_DIALOG() = default;

void PREFERENCES_DIALOG::set_page(PAGE page)
{
    m_tabs->setCurrentIndex(page);
    focus_search();
}

bool PREFERENCES_DIALOG::select(const QString& what)
{
    const QStringList pages{QStringLiteral("colours"), QStringLiteral("fonts"), QStringLiteral("lines")};
    if (pages.contains(what))
    {
        set_page(static_cast<PAGE>(pages.indexOf(what)));
        return true;
    }
    for (const PAGE page : {PAGE_COLORS, PAGE_FONTS, PAGE_LINES})
    {
        if (!get_page(page)->select_name(what))
            continue;
        set_page(page);
        return true;
    }
    return false;
}

PREFERENCES_PAGE* PREFERENCES_DIALOG::get_page(PAGE page) const
{
    return static_cast<PREFERENCES_PAGE*>(m_tabs->widget(page));
}

void PREFERENCES_DIALOG::accept()
{
    setFocus(); // a field that is being edited gives its value now
    if (m_session->save())
        QDialog::accept();
    else
        QMessageBox::warning(this, tr("Preferences"),
                             tr("The preferences cannot be written. They stay in force until the workbench ends."));
}

void PREFERENCES_DIALOG::reject()
{
    setFocus(); // likewise: not behind our back, when the window has gone
    if (m_session->count_unsaved() > 0)
        m_session->restore();
    QDialog::reject();
}

void PREFERENCES_DIALOG::keyPressEvent(QKeyEvent* event)
{
    QLineEdit* const search = get_current_page()->get_search();
    if (event->key() == Qt::Key_Escape && search->hasFocus() && !search->text().isEmpty())
        search->clear(); // the first Escape ends the search, not the dialog
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
    {
        // Enter belongs to the field or row with the focus: it must not save and close behind the user's back.
        if (auto* const button = qobject_cast<QPushButton*>(focusWidget()))
            button->click();
    }
    else
        QDialog::keyPressEvent(event);
}

void PREFERENCES_DIALOG::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    m_save->setDefault(false); // the box makes it so; see keyPressEvent()
}

void PREFERENCES_DIALOG::show_state()
{
    const int count = m_session->count_unsaved();
    setWindowModified(count > 0);
    m_save->setEnabled(count > 0);
    if (count == 0)
        m_state->clear();
    else
        m_state->setText(count == 1 ? tr("1 change is not saved") : tr("%1 changes are not saved").arg(count));
}

void PREFERENCES_DIALOG::focus_search()
{
    get_current_page()->get_search()->setFocus(Qt::ShortcutFocusReason);
    get_current_page()->get_search()->selectAll();
}

void PREFERENCES_DIALOG::create_pages()
{
    auto* const colors =
        new PREFERENCES_PAGE(*m_session, m_session->get_colors(), new PREFERENCES_COLOR_EDITOR(*m_session),
                             {tr("Colours"), tr("This &Colour"), tr("&All Colours")}, m_tabs);
    colors->setObjectName(QStringLiteral("colors_page"));
    m_tabs->addTab(colors, tr("&Colours"));
    auto* const fonts =
        new PREFERENCES_PAGE(*m_session, m_session->get_fonts(), new PREFERENCES_FONT_EDITOR(*m_session),
                             {tr("Fonts"), tr("This &Font"), tr("&All Fonts")}, m_tabs);
    fonts->setObjectName(QStringLiteral("fonts_page"));
    m_tabs->addTab(fonts, tr("&Fonts"));
    auto* const lines = new PREFERENCES_PAGE(*m_session, m_session->get_pens(), new PREFERENCES_PEN_EDITOR(*m_session),
                                             {tr("Lines"), tr("This &Line"), tr("&All Lines")}, m_tabs);
    lines->setObjectName(QStringLiteral("lines_page"));
    m_tabs->addTab(lines, tr("&Lines"));
}

void PREFERENCES_DIALOG::create_buttons()
{
    m_buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    m_save = m_buttons->button(QDialogButtonBox::Save);
    m_save->setObjectName(QStringLiteral("save_button"));
    m_save->setText(tr("&Save"));
    m_save->setAutoDefault(false);
    QPushButton* const cancel = m_buttons->button(QDialogButtonBox::Cancel);
    cancel->setObjectName(QStringLiteral("cancel_button"));
    cancel->setText(tr("Cancel"));
    cancel->setAutoDefault(false);
    TOLV_SAFE_CONNECT(m_buttons, SIGNAL(accepted()), this, SLOT(accept()));
    TOLV_SAFE_CONNECT(m_buttons, SIGNAL(rejected()), this, SLOT(reject()));
}

PREFERENCES_PAGE* PREFERENCES_DIALOG::get_current_page() const
{
    return static_cast<PREFERENCES_PAGE*>(m_tabs->currentWidget());
}
