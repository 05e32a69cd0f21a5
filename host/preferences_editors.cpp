#include "preferences_editors.h"

#include "preferences_names.h"
#include "preferences_session.h"
#include "tolv_gdi_tables.h"
#include "tolv_global.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QCompleter>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QSignalBlocker>
#include <QSpinBox>

#include <algorithm>

namespace
{
constexpr int SMALLEST_SIZE = 4; // points
constexpr int LARGEST_SIZE = 96;
constexpr int LARGEST_WIDTH = 99; // pixels

/// The families that can be stored, which divides them from the rest by a comma, with the names that the font system
/// resolves by itself.
QStringList get_families()
{
    QStringList families = QFontDatabase().families();
    families << QStringLiteral("Monospace") << QStringLiteral("Sans Serif") << QStringLiteral("Serif");
    families.erase(std::remove_if(families.begin(), families.end(),
                                  [](const QString& family) { return family.contains(QLatin1Char(',')); }),
                   families.end());
    families.removeDuplicates();
    families.sort(Qt::CaseInsensitive);
    return families;
}

/// A label and its widget, side by side.
void add_field(QGridLayout* layout, int row, int column, const QString& title, QWidget* field)
{
    auto* const label = new QLabel(title, layout->parentWidget());
    label->setBuddy(field);
    layout->addWidget(label, row, column);
    layout->addWidget(field, row, column + 1);
    field->setAccessibleName(QString(title).remove(QLatin1Char('&')).remove(QLatin1Char(':')));
}
} // namespace

// ---- The button -----------------------------------------------------------------------------------------------------

PREFERENCES_COLOR_BUTTON::PREFERENCES_COLOR_BUTTON(const QString& text, QWidget* parent) : QPushButton(text, parent)
{
    setAutoDefault(false);
    setIconSize(QSize(fontMetrics().height() * 2, fontMetrics().height()));
    TOLV_SAFE_CONNECT(this, SIGNAL(clicked()), this, SLOT(ask()));
}

void PREFERENCES_COLOR_BUTTON::set_color(const QColor& color)
{
    m_color = color;
    QPixmap pixmap(iconSize() * devicePixelRatioF());
    pixmap.fill(palette().color(QPalette::Mid));
    const int frame = qRound(devicePixelRatioF());
    QPainter painter(&pixmap);
    painter.fillRect(pixmap.rect().adjusted(frame, frame, -frame, -frame), color);
    painter.end();
    pixmap.setDevicePixelRatio(devicePixelRatioF());
    setIcon(QIcon(pixmap));
    setAccessibleDescription(color.isValid() ? color.name() : QString());
}

void PREFERENCES_COLOR_BUTTON::ask()
{
    const QColor before = m_color;
    QColorDialog dialog(m_color, this);
    dialog.setOption(QColorDialog::DontUseNativeDialog); // reports colours that are tried out on all desktops
    dialog.setWindowTitle(tr("Choose a Colour"));
    TOLV_SAFE_CONNECT(&dialog, SIGNAL(currentColorChanged(QColor)), this, SLOT(report(QColor)));
    if (dialog.exec() == QDialog::Accepted)
        report(dialog.selectedColor());
    else
        report(before);
}

void PREFERENCES_COLOR_BUTTON::report(const QColor& color)
{
    if (color != m_color)
        emit color_chosen(color);
}

// ---- Editors in general ---------------------------------------------------------------------------------------------

PREFERENCES_EDITOR::PREFERENCES_EDITOR(PREFERENCES_SESSION& session, QWidget* parent)
    : QWidget(parent), m_session(session)
{
    setEnabled(false);
    TOLV_SAFE_CONNECT(&session, SIGNAL(changed()), this, SLOT(refresh()));
}

void PREFERENCES_EDITOR::set_resource(int resource)
{
    m_resource = resource;
    setEnabled(resource != 0);
    refresh();
}

int PREFERENCES_EDITOR::get_resource() const
{
    return m_resource;
}

PREFERENCES_SESSION& PREFERENCES_EDITOR::get_session() const
{
    return m_session;
}

void PREFERENCES_EDITOR::refresh()
{
    if (m_resource != 0)
        show_values();
}

// ---- Colours --------------------------------------------------------------------------------------------------------

PREFERENCES_COLOR_EDITOR::PREFERENCES_COLOR_EDITOR(PREFERENCES_SESSION& session, QWidget* parent)
    : PREFERENCES_EDITOR(session, parent), m_text(new QLineEdit(this)),
      m_button(new PREFERENCES_COLOR_BUTTON(tr("C&hange..."), this)), m_default(new QLabel(this))
{
    m_button->setObjectName(QStringLiteral("color_button"));
    m_button->setAccessibleName(tr("Change the colour"));
    m_text->setObjectName(QStringLiteral("color_text"));
    m_text->setToolTip(tr("#rrggbb in hexadecimal digits, or a name such as \"navy\""));
    m_text->setMaxLength(40);
    m_text->setFixedWidth(fontMetrics().averageCharWidth() * 16);
    m_default->setObjectName(QStringLiteral("default_label"));
    auto* const layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    add_field(layout, 0, 0, tr("&Value:"), m_text);
    layout->addWidget(m_button, 0, 2);
    layout->addWidget(m_default, 0, 3);
    layout->setColumnStretch(4, 1);
    TOLV_SAFE_CONNECT(m_button, SIGNAL(color_chosen(QColor)), this, SLOT(take_color(QColor)));
    TOLV_SAFE_CONNECT(m_text, SIGNAL(textEdited(QString)), this, SLOT(take_typed_text(QString)));
    TOLV_SAFE_CONNECT(m_text, SIGNAL(editingFinished()), this, SLOT(take_text()));
}

void PREFERENCES_COLOR_EDITOR::begin_change()
{
    m_button->click();
}

void PREFERENCES_COLOR_EDITOR::show_values()
{
    const QColor color = PREFERENCES_COLORS::get_color(get_resource());
    m_button->set_color(color);
    const QString text = m_text->text().trimmed();
    const bool is_typed = m_text->hasFocus() && QColor::isValidColor(text) && QColor(text).rgb() == color.rgb();
    if (!is_typed)
        m_text->setText(color.isValid() ? color.name() : QString());
    const bool is_changed = get_session().get_colors().is_changed(get_resource());
    const QString default_name = TOLV_COLOR::get_default_color(static_cast<TOLV_COLOR_RESOURCE>(get_resource())).name();
    m_default->setText(is_changed ? tr("Built-in: %1").arg(default_name) : tr("Built-in value"));
}

void PREFERENCES_COLOR_EDITOR::take_color(const QColor& color)
{
    if (get_resource() != 0)
        get_session().set_color(static_cast<TOLV_COLOR_RESOURCE>(get_resource()), color);
}

void PREFERENCES_COLOR_EDITOR::take_typed_text(const QString& text)
{
    const QString trimmed = text.trimmed();
    if (trimmed.size() == 7 && trimmed.startsWith(QLatin1Char('#')) && QColor::isValidColor(trimmed))
        take_color(QColor(trimmed));
}

void PREFERENCES_COLOR_EDITOR::take_text()
{
    QString text = m_text->text().trimmed();
    const QColor shown = PREFERENCES_COLORS::get_color(get_resource());
    if (!QColor::isValidColor(text) && QColor::isValidColor(QLatin1Char('#') + text))
        text.prepend(QLatin1Char('#')); // digits alone
    if (QColor::isValidColor(text) && QColor(text).rgb() != shown.rgb())
        take_color(QColor(text));
    const QColor color = PREFERENCES_COLORS::get_color(get_resource());
    m_text->setText(color.isValid() ? color.name() : QString());
}

// ---- Fonts ----------------------------------------------------------------------------------------------------------

PREFERENCES_FONT_EDITOR::PREFERENCES_FONT_EDITOR(PREFERENCES_SESSION& session, QWidget* parent)
    : PREFERENCES_EDITOR(session, parent), m_family(new QComboBox(this)), m_size(new QSpinBox(this)),
      m_bold(new QCheckBox(tr("&Bold"), this)), m_italic(new QCheckBox(tr("&Italic"), this)),
      m_text_color(new PREFERENCES_COLOR_BUTTON(tr("Te&xt..."), this)),
      m_background_color(new PREFERENCES_COLOR_BUTTON(tr("Back&ground..."), this))
{
    m_family->setObjectName(QStringLiteral("font_family"));
    m_family->setEditable(true);
    m_family->setInsertPolicy(QComboBox::NoInsert);
    m_family->addItems(get_families());
    m_family->completer()->setCompletionMode(QCompleter::PopupCompletion);
    m_family->setMinimumContentsLength(14);
    m_family->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_size->setObjectName(QStringLiteral("font_size"));
    m_size->setRange(SMALLEST_SIZE, LARGEST_SIZE);
    m_size->setSuffix(tr(" pt"));
    m_bold->setObjectName(QStringLiteral("font_bold"));
    m_italic->setObjectName(QStringLiteral("font_italic"));
    m_text_color->setObjectName(QStringLiteral("text_color"));
    m_text_color->setAccessibleName(tr("Text colour"));
    m_background_color->setObjectName(QStringLiteral("background_color"));
    m_background_color->setAccessibleName(tr("Background colour"));
    auto* const layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    add_field(layout, 0, 0, tr("Famil&y:"), m_family);
    add_field(layout, 0, 2, tr("Si&ze:"), m_size);
    auto* const row = new QHBoxLayout;
    row->addWidget(m_bold);
    row->addWidget(m_italic);
    row->addSpacing(12);
    row->addWidget(m_text_color);
    row->addWidget(m_background_color);
    row->addStretch();
    layout->addLayout(row, 1, 0, 1, 5);
    layout->setColumnStretch(4, 1);
    TOLV_SAFE_CONNECT(m_family, SIGNAL(activated(int)), this, SLOT(take_family()));
    TOLV_SAFE_CONNECT(m_family->lineEdit(), SIGNAL(editingFinished()), this, SLOT(take_family()));
    TOLV_SAFE_CONNECT(m_size, SIGNAL(valueChanged(int)), this, SLOT(take_values()));
    TOLV_SAFE_CONNECT(m_bold, SIGNAL(toggled(bool)), this, SLOT(take_values()));
    TOLV_SAFE_CONNECT(m_italic, SIGNAL(toggled(bool)), this, SLOT(take_values()));
    TOLV_SAFE_CONNECT(m_text_color, SIGNAL(color_chosen(QColor)), this, SLOT(take_text_color(QColor)));
    TOLV_SAFE_CONNECT(m_background_color, SIGNAL(color_chosen(QColor)), this, SLOT(take_background_color(QColor)));
}

void PREFERENCES_FONT_EDITOR::begin_change()
{
    m_family->setFocus(Qt::OtherFocusReason);
    m_family->lineEdit()->selectAll();
}

void PREFERENCES_FONT_EDITOR::show_values()
{
    const QSignalBlocker blockers[] = {QSignalBlocker(m_family), QSignalBlocker(m_size), QSignalBlocker(m_bold),
                                       QSignalBlocker(m_italic)};
    const TOLV_FONT font(get_font());
    const QString family = font.get_face_name();
    if (m_family->findText(family, Qt::MatchFixedString) < 0)
        m_family->addItem(family); // stored on another machine, perhaps
    m_family->setCurrentIndex(m_family->findText(family, Qt::MatchFixedString));
    m_size->setMaximum(std::max(LARGEST_SIZE, font.get_point_size())); // what is stored is shown as it is
    m_size->setMinimum(std::min(SMALLEST_SIZE, font.get_point_size()));
    m_size->setValue(font.get_point_size());
    m_bold->setChecked(font.get_bold());
    m_italic->setChecked(font.get_italic());
    show_color(m_text_color, font.get_text_color().get_color_resource());
    show_color(m_background_color, font.get_background_color().get_color_resource());
}

void PREFERENCES_FONT_EDITOR::take_family()
{
    if (get_resource() == 0)
        return;
    const int index = m_family->findText(m_family->currentText().trimmed(), Qt::MatchFixedString);
    const QString family = index < 0 ? QString() : m_family->itemText(index);
    const TOLV_FONT font(get_font());
    if (family.isEmpty() || family == font.get_face_name())
        m_family->setEditText(font.get_face_name()); // no such family: back to what is in force
    else
    {
        m_family->setCurrentIndex(index);
        take_values();
    }
}

void PREFERENCES_FONT_EDITOR::take_values()
{
    if (get_resource() == 0)
        return;
    TOLV_FONT font(get_font());
    const int index = m_family->currentIndex();
    const QString family = index < 0 ? font.get_face_name() : m_family->itemText(index);
    font.set_font(font.get_text_color(), font.get_background_color(), family, m_size->value(), m_bold->isChecked(),
                  m_italic->isChecked());
    get_session().set_font(get_font(), font);
}

void PREFERENCES_FONT_EDITOR::take_text_color(const QColor& color)
{
    TOLV_FONT font(get_font());
    font.set_text_color(color);
    get_session().set_font(get_font(), font);
}

void PREFERENCES_FONT_EDITOR::take_background_color(const QColor& color)
{
    TOLV_FONT font(get_font());
    font.set_background_color(color);
    get_session().set_font(get_font(), font);
}

TOLV_FONT_RESOURCE PREFERENCES_FONT_EDITOR::get_font() const
{
    return static_cast<TOLV_FONT_RESOURCE>(get_resource());
}

void PREFERENCES_FONT_EDITOR::show_color(PREFERENCES_COLOR_BUTTON* button, TOLV_COLOR_RESOURCE color)
{
    button->set_color(PREFERENCES_COLORS::get_color(color));
    const bool can_change = TOLV_COLOR::can_change_default_color(color);
    button->setEnabled(can_change);
    button->setToolTip(can_change ? get_sharers(color) : tr("This colour is fixed or follows the desktop."));
}

QString PREFERENCES_FONT_EDITOR::get_sharers(TOLV_COLOR_RESOURCE color) const
{
    QStringList sharers;
    for (const PREFERENCES_TABLE::ROW& row : get_session().get_fonts().get_rows())
    {
        const TOLV_FONT font(static_cast<TOLV_FONT_RESOURCE>(row.resource));
        if (row.resource != get_resource() && (font.get_text_color().get_color_resource() == color ||
                                               font.get_background_color().get_color_resource() == color))
            sharers.append(row.title);
    }
    const int count = sharers.size();
    if (count > 4)
        sharers = sharers.mid(0, 4) << tr("%1 more").arg(count - 4);
    return count == 0 ? tr("No other font has this colour.")
                      : tr("Also the colour of: %1").arg(sharers.join(QStringLiteral(", ")));
}

// ---- Lines ----------------------------------------------------------------------------------------------------------

PREFERENCES_PEN_EDITOR::PREFERENCES_PEN_EDITOR(PREFERENCES_SESSION& session, QWidget* parent)
    : PREFERENCES_EDITOR(session, parent), m_width(new QSpinBox(this)), m_color(new QComboBox(this))
{
    m_width->setObjectName(QStringLiteral("pen_width"));
    m_width->setRange(0, LARGEST_WIDTH);
    m_width->setSuffix(tr(" px"));
    m_width->setSpecialValueText(tr("Hairline"));
    m_width->setToolTip(tr("A hairline is one pixel wide at any zoom."));
    m_color->setObjectName(QStringLiteral("pen_color"));
    m_color->setMinimumContentsLength(24);
    m_color->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_color->setIconSize(QSize(fontMetrics().height() * 2, fontMetrics().height()));
    auto* const layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    add_field(layout, 0, 0, tr("&Width:"), m_width);
    add_field(layout, 0, 2, tr("C&olour:"), m_color);
    layout->setColumnStretch(4, 1);
    TOLV_SAFE_CONNECT(m_width, SIGNAL(valueChanged(int)), this, SLOT(take_values()));
    TOLV_SAFE_CONNECT(m_color, SIGNAL(activated(int)), this, SLOT(take_values()));
}

void PREFERENCES_PEN_EDITOR::begin_change()
{
    m_width->setFocus(Qt::OtherFocusReason);
    m_width->selectAll();
}

void PREFERENCES_PEN_EDITOR::show_values()
{
    const QSignalBlocker blockers[] = {QSignalBlocker(m_width), QSignalBlocker(m_color)};
    const TOLV_PEN pen(get_pen());
    m_width->setMaximum(std::max(LARGEST_WIDTH, pen.get_width())); // what is stored is shown as it is
    m_width->setValue(pen.get_width());
    m_color->clear();
    const QString group = get_session().get_pens().find_row(get_resource())->group;
    for (const PREFERENCES_TABLE::ROW& row : get_session().get_colors().get_rows())
    {
        if (row.group == group)
            add_color(static_cast<TOLV_COLOR_RESOURCE>(row.resource));
    }
    const TOLV_COLOR_RESOURCE color = pen.get_color().get_color_resource();
    if (m_color->findData(color) < 0)
        add_color(color);
    m_color->setCurrentIndex(m_color->findData(color));
}

void PREFERENCES_PEN_EDITOR::take_values()
{
    if (get_resource() != 0 && m_color->currentIndex() >= 0)
        get_session().set_pen(get_pen(), m_width->value(),
                              static_cast<TOLV_COLOR_RESOURCE>(m_color->currentData().toInt()));
}

TOLV_PEN_RESOURCE PREFERENCES_PEN_EDITOR::get_pen() const
{
    return static_cast<TOLV_PEN_RESOURCE>(get_resource());
}

void PREFERENCES_PEN_EDITOR::add_color(TOLV_COLOR_RESOURCE color)
{
    const auto rows = tolv_get_initial_colors();
    const auto row = std::find_if(rows.begin(), rows.end(),
                                  [color](const TOLV_INITIAL_COLOR& each) { return each.resource == color; });
    if (row != rows.end())
        m_color->addItem(get_session().get_colors().get_icon(color, m_color->iconSize()),
                         PREFERENCES_NAME::from_enumerator(QString::fromLatin1(row->name)).title, color);
}
