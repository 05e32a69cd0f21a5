#include "tolv_dialog.h"

#include "cfgq_registry.h"
#include "gen.h"
#include "tolv_f1_action.h"
#include "tolv_global.h"
#include "tolv_help_dyn.h"
#include "tolv_mem.h"
#include "tolv_msg.h"

#include <QChildEvent>
#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QPushButton>

#include <algorithm>

TOLV_MEM_INITIALIZER();

namespace
{
bool has_help_button(const QDialogButtonBox& box)
{
    const QList<QAbstractButton*> buttons = box.buttons();
    return std::any_of(buttons.begin(), buttons.end(),
                       [&box](QAbstractButton* button)
                       { return box.buttonRole(button) == QDialogButtonBox::HelpRole; });
}
} // namespace

TOLV_DIALOG::TOLV_DIALOG(QWidget* parent, Qt::WindowFlags flags) : QDialog(parent, flags)
{
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    setSizeGripEnabled(true);
    new TOLV_F1_ACTION(this, SLOT(help_button_clicked()));
}

TOLV_DIALOG::~TOLV_DIALOG()
{
    save_geometry();
}

QString TOLV_DIALOG::get_geometry_key() const
{
    QString key = QString::fromLocal8Bit(gen_get_module_filename().c_str());
    if (m_geometry_key.isEmpty())
        key += windowTitle();
    key += m_geometry_key + QStringLiteral("DialogGeometry");
    return key.replace(QLatin1Char(' '), QLatin1Char('_'));
}

void TOLV_DIALOG::restore_save_geometry(bool save)
{
    CFGQ_REGISTRY_KEY registry_key(CFGQ_REGISTRY_KEY::SUB_KEY_GUI);
    const QString key = get_geometry_key();
    QVariant geometry;
    if (save)
        registry_key.set_value(key, saveGeometry());
    else if (registry_key.get_value(key, &geometry))
        restoreGeometry(geometry.toByteArray());
}

void TOLV_DIALOG::save_geometry()
{
    if (!m_save_pending)
        return;
    m_save_pending = false;
    restore_save_geometry(true);
}

std::string TOLV_DIALOG::get_help_topic_string()
{
    return windowTitle().toLocal8Bit().toStdString();
}

void TOLV_DIALOG::help_button_clicked()
{
    help_dyn_show_context(get_help_topic_string());
}

void TOLV_DIALOG::done(int result)
{
    save_geometry();
    QDialog::done(result);
}

void TOLV_DIALOG::closeEvent(QCloseEvent* event)
{
    save_geometry();
    event->accept();
}

void TOLV_DIALOG::showEvent(QShowEvent* event)
{
    QDialog::showEvent(event);
    if (!m_restore_pending)
        return;
    m_restore_pending = false;
    restore_save_geometry(false);
}

void TOLV_DIALOG::childEvent(QChildEvent* event)
{
    QDialog::childEvent(event);
    if (event->type() == QEvent::ChildPolished)
        wire_help(event->child());
}

/// A child can be polished any number of times; the link stays single.
void TOLV_DIALOG::wire_help(QObject* child)
{
    auto* const button = qobject_cast<QPushButton*>(child);
    if (button != nullptr && button->text() == QLatin1String("Help"))
    {
        MSG_TOLV::DEBUG_MSG("%s", "Found a Help button")->send();
        disconnect(button, SIGNAL(clicked()), this, SLOT(help_button_clicked()));
        TOLV_SAFE_CONNECT(button, SIGNAL(clicked()), this, SLOT(help_button_clicked()));
        return;
    }
    auto* const box = qobject_cast<QDialogButtonBox*>(child);
    if (box != nullptr && has_help_button(*box))
    {
        MSG_TOLV::DEBUG_MSG("%s", "Found a button box with a Help button")->send();
        disconnect(box, SIGNAL(helpRequested()), this, SLOT(help_button_clicked()));
        TOLV_SAFE_CONNECT(box, SIGNAL(helpRequested()), this, SLOT(help_button_clicked()));
    }
}
