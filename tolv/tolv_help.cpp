#include "tolv_help.h"

#include "cfg.h"
#include "tolv_check.h"
#include "tolv_icon.h"
#include "tolv_mem.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QRadioButton>
#include <QStyle>

TOLV_MEM_INITIALIZER();

namespace
{
const char* const ILLEGAL_CALL = "Illegal call to get_help_widget, please call the derived classes.";

/// The picture, `size` pixels wide and high, sharp on the screen that the widget is on.
QPixmap get_picture(const QWidget& widget, int size)
{
    const bool qt_scales = QCoreApplication::testAttribute(Qt::AA_UseHighDpiPixmaps);
    const qreal ratio = qt_scales ? 1.0 : widget.devicePixelRatioF();
    QPixmap picture = tolv_get_icon(TOLV_HELP_ICON).pixmap(QSize(size, size) * ratio, QIcon::Normal, QIcon::Off);
    if (!qt_scales)
        picture.setDevicePixelRatio(ratio);
    return picture;
}

void remove_first(QString* text, QLatin1String part)
{
    const int position = text->indexOf(part);
    if (position >= 0)
        text->remove(position, part.size());
}
} // namespace

// ---- The question mark ----------------------------------------------------------------------------------------------

TOLV_HELP_LABEL::TOLV_HELP_LABEL(QWidget* parent, Qt::WindowFlags flags) : QLabel(parent, flags)
{
    const int size = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, parent) * 8 / 10;
    setPixmap(get_picture(*this, size));
    setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setFocusPolicy(Qt::NoFocus);
    setVisible(cfg_is_on(CFG_INI_VAR_SHOW_DIALOG_HELP_TOPIC));
}

TOLV_HELP_LABEL::~TOLV_HELP_LABEL() = default;

// ---- The row --------------------------------------------------------------------------------------------------------

TOLV_WIDGET_WITH_HELP::TOLV_WIDGET_WITH_HELP(QWidget* parent, Qt::WindowFlags flags)
    : QWidget(parent, flags), m_help_label(new TOLV_HELP_LABEL(this)), m_layout(new QHBoxLayout(this))
{
}

TOLV_WIDGET_WITH_HELP::~TOLV_WIDGET_WITH_HELP() = default;

QWidget* TOLV_WIDGET_WITH_HELP::get_help_widget() const
{
    TOLV_CHECK_TEXT(false, ILLEGAL_CALL);
    return nullptr;
}

void TOLV_WIDGET_WITH_HELP::setup()
{
    m_layout->addWidget(get_help_widget());
    m_layout->addWidget(m_help_label);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(5);
    m_layout->addStretch();
    setLayout(m_layout);
}

void TOLV_WIDGET_WITH_HELP::set_tooltip(const QString& text)
{
    if (QWidget* const widget = get_help_widget(); widget != nullptr)
        widget->setToolTip(text);
}

void TOLV_WIDGET_WITH_HELP::set_help_tooltip(const std::string& text)
{
    QString body = QString::fromLocal8Bit(text.c_str());
    body.replace(QLatin1Char('\n'), QLatin1String("<br>"));
    m_help_label->setToolTip(QStringLiteral("<html>") + body + QStringLiteral("</html>"));
}

std::string TOLV_WIDGET_WITH_HELP::get_help_tooltip() const
{
    QString text = m_help_label->toolTip();
    remove_first(&text, QLatin1String("<html>"));
    remove_first(&text, QLatin1String("</html>"));
    return text.toLocal8Bit().toStdString();
}

void TOLV_WIDGET_WITH_HELP::set_contents_margins(int left, int top, int right, int bottom)
{
    m_layout->setContentsMargins(left, top, right, bottom);
}

// ---- The controls ---------------------------------------------------------------------------------------------------

TOLV_LABEL_WITH_HELP::TOLV_LABEL_WITH_HELP(const QString& text, QWidget* parent, Qt::WindowFlags flags)
    : TOLV_WIDGET_WITH_HELP(parent, flags), m_widget(new QLabel(text, this))
{
    m_widget->setFocusPolicy(Qt::NoFocus);
    setFocusPolicy(Qt::NoFocus);
    TOLV_WIDGET_WITH_HELP::setup();
}

TOLV_LABEL_WITH_HELP::TOLV_LABEL_WITH_HELP(QWidget* parent, Qt::WindowFlags flags)
    : TOLV_WIDGET_WITH_HELP(parent, flags), m_widget(new QLabel(this))
{
    TOLV_WIDGET_WITH_HELP::setup();
}

TOLV_LABEL_WITH_HELP::~TOLV_LABEL_WITH_HELP() = default;

QWidget* TOLV_LABEL_WITH_HELP::get_help_widget() const
{
    return m_widget;
}

TOLV_CHECKBOX_WITH_HELP::TOLV_CHECKBOX_WITH_HELP(QWidget* parent, Qt::WindowFlags flags)
    : TOLV_WIDGET_WITH_HELP(parent, flags), m_widget(new QCheckBox(this))
{
    TOLV_WIDGET_WITH_HELP::setup();
}

TOLV_CHECKBOX_WITH_HELP::~TOLV_CHECKBOX_WITH_HELP() = default;

QWidget* TOLV_CHECKBOX_WITH_HELP::get_help_widget() const
{
    return m_widget;
}

TOLV_RADIOBUTTON_WITH_HELP::TOLV_RADIOBUTTON_WITH_HELP(QWidget* parent, Qt::WindowFlags flags)
    : TOLV_WIDGET_WITH_HELP(parent, flags), m_widget(new QRadioButton(this))
{
    TOLV_WIDGET_WITH_HELP::setup();
}

TOLV_RADIOBUTTON_WITH_HELP::~TOLV_RADIOBUTTON_WITH_HELP() = default;

QWidget* TOLV_RADIOBUTTON_WITH_HELP::get_help_widget() const
{
    return m_widget;
}
