#include "gallery_details.h"

#include "gallery_preview.h"
#include "tolv_font.h"
#include "tolv_global.h"
#include "tolv_icon.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace
{
QString to_cell(const QString& text, const char* style)
{
    return QStringLiteral("<td style=\"%1\">%2</td>").arg(QLatin1String(style), text.toHtmlEscaped());
}

QString make_html(GALLERY_KIND kind, int value, const QString& name, const QPalette& palette)
{
    const QString code = QStringLiteral("<p><b>%1</b></p><table width=\"100%\" cellpadding=\"5\" bgcolor=\"%2\"><tr>"
                                        "<td style=\"font-family:'%3'\">%4</td></tr></table>")
                             .arg(name.toHtmlEscaped(), palette.color(QPalette::AlternateBase).name(),
                                  TOLV_FONT(TOLV_TABLE_MONOSPACE_FONT).get_face_name(),
                                  GALLERY_CATALOG::get_call(kind, name).toHtmlEscaped());
    QString rows;
    QString last_title;
    const QVector<GALLERY_FACT> facts = GALLERY_CATALOG::describe(kind, value);
    for (const GALLERY_FACT& fact : facts)
    {
        const QString title = fact.title == last_title ? QString() : fact.title;
        rows +=
            QStringLiteral("<tr>%1%2</tr>")
                .arg(to_cell(title, "padding-right:12px; white-space:pre"), to_cell(fact.text, "padding-bottom:3px"));
        last_title = fact.title;
    }
    return QStringLiteral("%1<p></p><table>%2</table>").arg(code, rows);
}
} // namespace

GALLERY_DETAILS::GALLERY_DETAILS(GALLERY_SAMPLES* samples, QWidget* parent)
    : QWidget(parent), m_preview(new GALLERY_PREVIEW(samples, this)), m_text(new QTextBrowser(this))
{
    m_preview->setObjectName(QStringLiteral("preview"));
    auto* const frame = new QFrame(this);
    frame->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    auto* const frame_layout = new QVBoxLayout(frame);
    frame_layout->setContentsMargins(1, 1, 1, 1);
    frame_layout->addWidget(m_preview);
    m_text->setObjectName(QStringLiteral("facts"));
    m_text->setAccessibleName(tr("Description of the chosen thing"));
    m_text->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_text->setOpenLinks(false);
    m_copy_name = create_button("copy_name_button", tr("Copy &Name"), tr("Copies the name for C++ to the Clipboard"),
                                SIGNAL(copy_name_wanted()));
    m_copy_call =
        create_button("copy_call_button", tr("Copy C&all"),
                      tr("Copies the expression that asks for it in C++ to the Clipboard"), SIGNAL(copy_call_wanted()));
    m_copy_name->setIcon(tolv_get_icon(TOLV_COPY_ICON));
    auto* const buttons = new QHBoxLayout;
    buttons->addWidget(m_copy_name);
    buttons->addWidget(m_copy_call);
    buttons->addStretch();
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(frame);
    layout->addWidget(m_text, 1);
    layout->addLayout(buttons);
    setMinimumWidth(fontMetrics().averageCharWidth() * 30);
}

void GALLERY_DETAILS::set_thing(GALLERY_KIND kind, int value, const QString& name)
{
    m_preview->set_thing(kind, value);
    m_preview->setAccessibleName(name);
    m_text->setHtml(value == 0 ? QString() : make_html(kind, value, name, palette()));
    m_copy_name->setEnabled(value != 0);
    m_copy_call->setEnabled(value != 0);
}

QWidgetList GALLERY_DETAILS::get_tab_chain() const
{
    return {m_text, m_copy_name, m_copy_call};
}

void GALLERY_DETAILS::set_ground(const QPalette& palette)
{
    m_preview->setPalette(palette);
}

QPushButton* GALLERY_DETAILS::create_button(const char* object_name, const QString& text, const QString& tool_tip,
                                            const char* signal)
{
    auto* const button = new QPushButton(text, this);
    button->setObjectName(QString::fromLatin1(object_name));
    button->setToolTip(tool_tip);
    button->setAutoDefault(false);
    TOLV_SAFE_CONNECT(button, SIGNAL(clicked()), this, signal);
    return button;
}
